#pragma once

#include "../views/view_fixtures.h"
#include "reminders/rem_list.h"

#include <QLocale>

namespace orva::testing {

// The reminder list over a calendar in a temporary folder, the clock stopped
// on Sunday 2026-03-15 at 09:10 and the day planner up. The form is not
// loaded: a test writes its calendar first, then calls load().
struct RemListEnv : ViewEnv {
    RemListForm f;

    RemListEnv() {
        s.window = &w;
        s.view_day = true;
        f.vsRmdr.set_extent(10000, 5000);
    }

    void load() { Form_Load(s, f); }

    // An entry on `day` with key `id`, "hh:mm" start and an end 45 minutes
    // on, written to its month's member.
    appt_rec entry(const QDate& day, const QString& id, const QString& start,
                   const QString& text = QStringLiteral("Dentist")) {
        appt_rec r = make_appt(day.toString(QStringLiteral("MMddyyyy")), id, start, text);
        r.appt_end = start.left(3) + QStringLiteral("45");
        r.appt_type = QStringLiteral("Car");
        r.appt_rem_lead = QStringLiteral("30");
        s.occur_count = 1;
        *s.occur_row(1) = r;
        EXPECT_EQ(write_occurs(s, s.cal_path), 0);
        return r;
    }
    // The reminder of `a`, due on `due` at `time`, written to the member of
    // its own month; "T" once delivered.
    rmdr_rec alarm(const appt_rec& a, const QDate& due,
                   const QString& time = QStringLiteral("08:30"),
                   const QString& fired = QStringLiteral("F")) {
        rmdr_rec r;
        r.rmdr_first_date = a.appt_first_date.str();
        r.rmdr_start = a.appt_start.str();
        r.rmdr_end = a.appt_end.str();
        r.rmdr_id = a.appt_id.str();
        r.rmdr_text = a.appt_text.str();
        r.rmdr_type = a.appt_type.str();
        r.rmdr_appt_date = a.appt_date.str();
        r.rmdr_date = due.toString(QStringLiteral("MM/dd/yy"));
        r.rmdr_time = time;
        r.rmdr_fired = fired;
        r.rmdr_anim = QStringLiteral("1 ");
        r.rmdr_again_count = QStringLiteral("1 ");
        EXPECT_EQ(append_rmdr_line(s, s.cal_path, r), 0);
        return r;
    }
    // An entry and its alarm on the same day, due half an hour before it.
    appt_rec with_alarm(const QDate& day, const QString& id, const QString& start,
                        const QString& text = QStringLiteral("Dentist"),
                        const QString& fired = QStringLiteral("F")) {
        const appt_rec a = entry(day, id, start, text);
        const QTime t = QTime::fromString(start, QStringLiteral("HH:mm")).addSecs(-1800);
        alarm(a, day, t.toString(QStringLiteral("HH:mm")), fired);
        return a;
    }
    void range(const QDate& from, const QDate& to) {
        f.from_date = from;
        f.to_date = to;
    }
    void refresh() { Command1_Click(s, f); }

    // Column `col` of the listed rows, heading left out.
    QStringList column(int col) const {
        QStringList out;
        for (int r = 1; r < f.vsRmdr.Rows(); ++r)
            out << f.vsRmdr.TextMatrix(r, col);
        return out;
    }
    // The first row whose subject is `text`; -1 when none.
    int row_of(const QString& text) const {
        for (int r = 1; r < f.vsRmdr.Rows(); ++r)
            if (f.vsRmdr.TextMatrix(r, 3) == text) return r;
        return -1;
    }
    static QString shown(const QDate& d) { return QLocale().toString(d, QLocale::ShortFormat); }
};

} // namespace orva::testing
