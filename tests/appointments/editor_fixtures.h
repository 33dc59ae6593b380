#pragma once

#include "../views/view_fixtures.h"
#include "appointments/appt_editor.h"
#include "store/member_format.h"

#include <vector>

namespace orva::testing {

// The editor under test over a planner (ViewEnv: Sunday 2026-03-15 09:10):
// the hand-over a caller makes, the form load, then whatever the user does to
// the form's fields, then OK. What lands in the calendar file is read back
// member by member.
struct EditorEnv : ViewEnv {
    ApptForm f;

    EditorEnv() {
        s.work_start = QStringLiteral("8:00:00 AM");
        s.work_end = QStringLiteral("5:00:00 PM");
        s.view_day = true;
        rebuild(s);
    }
    ~EditorEnv() { s.appt_form = nullptr; }

    void load() {
        f = ApptForm{};
        s.appt_form = &f;
        init_appt_form(s.store(), s.options(), s.editing(), s.run(), f);
    }
    // A new entry on `date` at `start` ("hh:mm", " " untimed), as a caller
    // hands it over.
    void open_new(const QDate& date, const QString& start) {
        hand_over_new(s.store(), s.editing());
        s.edit_date = date;
        s.edit_start = start;
        s.appt_copy = false;
        load();
    }
    // The entry in row `index` of appt_tbl.
    void open_edit(int index) {
        s.new_appt = false;
        s.appt_copy = false;
        s.edit_index = index;
        load();
    }
    // The row of appt_tbl whose key is `id`, 0 when there is none.
    int row_of(const QString& id) const {
        for (int r = 1; r <= s.appt_count; ++r)
            if (s.appt_row(r)->appt_id.trimmed() == id) return r;
        return 0;
    }
    // A period rule as frmOccurs leaves it.
    void rule(int period, int every, const QString& until) {
        s.occ_by_period = true;
        s.occ_by_weekday = false;
        s.occ_period = qint16(period);
        s.occ_every = qint16(every);
        s.occ_until = until;
    }
    // A weekday rule as frmOccurs leaves it.
    void weekday_rule(int ordinal, int weekday, int month, const QString& until) {
        s.occ_by_period = false;
        s.occ_by_weekday = true;
        s.occ_ordinal = qint16(ordinal);
        s.occ_weekday = qint16(weekday);
        s.occ_every = qint16(weekday);
        s.occ_month = qint16(month);
        s.occ_until = until;
    }
    bool ok() { return Command1_Click(s, f); }

    QByteArray member_bytes(const QString& name) {
        QByteArray b;
        const int e = s.archive.get(s.cal_path, name, b);
        if (e != 0 && e != 53) ADD_FAILURE() << "reading " << name.toStdString() << " gave " << e;
        return b;
    }
    bool has_member(const QString& name) { return s.archive.members(s.cal_path).contains(name); }
    std::vector<appt_rec> appts_in(const QString& yymm) {
        QByteArray bytes = member_bytes(QStringLiteral("c") + yymm + QStringLiteral(".cal"));
        MemberReader in(bytes);
        std::vector<appt_rec> out;
        QByteArray end;
        while (!in.at_end()) {
            appt_rec r;
            in.read_appt(r, end, 2);
            out.push_back(r);
        }
        return out;
    }
    std::vector<rmdr_rec> rmdrs_in(const QString& yymm) {
        QByteArray bytes = member_bytes(QStringLiteral("r") + yymm + QStringLiteral(".rmd"));
        MemberReader in(bytes);
        std::vector<rmdr_rec> out;
        QByteArray end;
        while (!in.at_end()) {
            rmdr_rec r;
            in.read_rmdr(r, end, 2);
            out.push_back(r);
        }
        return out;
    }
    // Every appointment line of the calendar, member by member in name order.
    std::vector<appt_rec> all_appts() {
        std::vector<appt_rec> out;
        for (const QString& m : s.archive.members(s.cal_path))
            if (m.startsWith(u'c') && m.endsWith(QLatin1String(".cal")))
                for (const appt_rec& r : appts_in(m.mid(1, 4)))
                    out.push_back(r);
        return out;
    }
    std::vector<rmdr_rec> all_rmdrs() {
        std::vector<rmdr_rec> out;
        for (const QString& m : s.archive.members(s.cal_path))
            if (m.startsWith(u'r') && m.endsWith(QLatin1String(".rmd")))
                for (const rmdr_rec& r : rmdrs_in(m.mid(1, 4)))
                    out.push_back(r);
        return out;
    }
    // The whole calendar file, member by member.
    std::map<QString, QByteArray> snapshot() {
        std::map<QString, QByteArray> out;
        for (const QString& m : s.archive.members(s.cal_path))
            EXPECT_EQ(s.archive.get(s.cal_path, m, out[m]), 0) << m.toStdString();
        return out;
    }
};

} // namespace orva::testing
