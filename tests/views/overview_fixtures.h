#pragma once

#include "view_fixtures.h"

#include <gtest/gtest.h>

namespace orva::testing {

// A month or week planner under test: vsOvervw with the extent it has in a
// window, times not shown unless a test asks for them, and readers of its
// cells.
class OverviewPlanner : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;

    OverviewPlanner(int width, int height) {
        s.vsOvervw.set_extent(width, height);
        s.menus.mnuShowTimes = false;
    }

    QString data(int row, int col) const {
        return s.vsOvervw.Cell(CellSetting::Data, row, col).toString();
    }
    QString text(int row, int col) const { return s.vsOvervw.TextMatrix(row, col); }
    QVariant cell(CellSetting c, int row, int col) const { return s.vsOvervw.Cell(c, row, col); }

    // An occurrence on day `d`; a start of blanks makes it untimed.
    static appt_rec on(const QDate& d, const QString& id, const QString& start, const QString& text,
                       const QString& type = QStringLiteral("Car"),
                       const QString& end = QStringLiteral("23:00")) {
        appt_rec r = make_appt(d.toString(QStringLiteral("MMddyyyy")), id, start, text);
        r.appt_start = start;
        r.appt_end = start.trimmed().isEmpty() ? start : end;
        r.appt_type = type;
        return r;
    }
    // n timed entries on `d`, one an hour from 08:00, texts "Entry 1".. .
    void add_many(const QDate& d, int n) {
        for (int i = 1; i <= n; ++i)
            env.add(on(d, QStringLiteral("e%1").arg(i), QTime(7 + i, 0).toString("HH:mm"),
                       QStringLiteral("Entry %1").arg(i)));
    }
};

} // namespace orva::testing
