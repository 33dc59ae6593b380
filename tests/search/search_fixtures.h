#pragma once

#include "../views/view_fixtures.h"
#include "core/event_loop.h"
#include "search/search.h"

#include <QLocale>

namespace orva::testing {

// A search over a calendar in a temporary folder, the clock stopped on Sunday
// 2026-03-15 at 09:10, the day planner up and the form loaded.
struct SearchEnv : ViewEnv {
    SearchForm f;

    SearchEnv() {
        s.window = &w;
        s.view_day = true;
        Form_Load(f);
    }
    ~SearchEnv() { install_yield_hook({}); }

    // One occurrence written to its month's member.
    void put(const appt_rec& r) {
        s.occur_count = 1;
        *s.occur_row(1) = r;
        ASSERT_EQ(write_occurs(s, s.cal_path), 0);
    }
    // A one-time entry on `day` ("hh:mm" times, blanks for untimed).
    appt_rec on(const QDate& day, const QString& id, const QString& start, const QString& text,
                const QString& type = QStringLiteral("Car")) {
        appt_rec r = make_appt(day.toString(QStringLiteral("MMddyyyy")), id, start, text);
        r.appt_end = start.trimmed().isEmpty() ? QStringLiteral("     ") : start.left(3) + QStringLiteral("45");
        r.appt_type = type;
        return r;
    }
    void range(const QDate& from, const QDate& to) {
        f.srchDTPicker1 = from;
        f.srchDTPicker2 = to;
    }
    void find_text(const QString& text) {
        f.srch_kind = 0;
        f.apptText = text;
        Command1_Click(s, f);
    }
    // Column `col` of the listed rows, heading left out.
    QStringList column(int col) const {
        QStringList out;
        for (int r = 1; r < f.srchGrid.Rows(); ++r)
            out << f.srchGrid.TextMatrix(r, col);
        return out;
    }
    static QString shown(const QDate& d) { return QLocale().toString(d, QLocale::ShortFormat); }
};

} // namespace orva::testing
