#pragma once

#include "state/app_state.h"

#include <QDate>
#include <QString>

namespace orva {

// The week planner on vsOvervw: Monday to Sunday laid out like a page of a
// paper diary, 20 rows and 3 columns. Monday, Tuesday and Wednesday head
// row 0 with nine lines each (rows 1-9); Thursday and Friday head row 10
// with eight (11-18); Saturday heads row 10 of the last column with four
// (11-14) and Sunday row 15 under it with three (16-18). Row 19 is never
// used. A day with more entries than lines shows "more..." on its last
// line. Cell data follows the month planner's convention.

inline constexpr int week_rows = 20;
inline constexpr int week_cols = 3;

// Monday and Sunday of the week of `d`; a Sunday ends its week.
QDate week_start_of(const QDate& d);
QDate week_end_of(const QDate& d);

// Column, header row and the cursor's row of a weekday number (1 Sunday ..
// 7 Saturday).
int week_col(int wd);
int week_header_row(int wd);
int week_cursor_row(int wd);

// Header of a day: the locale's abbreviated weekday name, two blanks and
// the date as "March 16,2026".
QString week_header_text(const QDate& d);

// Clears vsOvervw and gives it the week's shape.
void setup_week_grid(PlannerState& view);

// The Week tool picture: fills vsOvervw with the week of cur_date. A week
// that runs across two months loads both from the file (with their
// reminders); one inside a month uses what appt_tbl holds. Switches the page
// to the week layout when another planner was up, and saves the options.
void imageWeek_Click(AppState& s, WindowPort& w);

inline const QString srtwkday_zero_text = QStringLiteral(" srtwkday is zero because appt date = ");

} // namespace orva
