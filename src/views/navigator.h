#pragma once

#include "state/app_state.h"

namespace orva {

// The navigator: the month grid Cal (row 0 the "SUN".."SAT" header, rows 1..6
// the days, columns Sunday..Saturday), the month list Combo1, the year list
// Combo2, the month buttons and the day arrows. Every move of cur_date ends
// in a refill of the planner that is up.

inline constexpr Color white = 16777215;

// Builds the month of `date` in Cal: header, day texts (" 5"), right-top,
// day_tbl pictures, today_day white and bold; sizes 7 columns and 6 day
// rows from Cal's extent.
void fill_cal(const Shared& store, PlannerState& view, const QDate& date);
// The cells from Cal's extent: 7 columns of width / 7 - 10 and, always for 6
// day rows so the grid does not jump between months, rows of
// (height - header) / 6 - 10. A size that would be negative is not applied.
void size_cal_cells(PlannerState& view);
// Moves the selected mark to (row, col); row 0 does nothing. The white cell
// of today_day never shows the selection.
void mark_cal_day(PlannerState& view, int row, int col);
// Finds the cell whose text is cur_date's day number and marks it.
void mark_cur_day(const Shared& store, PlannerState& view);
// Fills both lists and points them at cur_date.
void docombos(const Shared& store, PlannerState& view);
// A change of either list while combo_lock is off: today's day number
// clamped into the chosen month becomes cur_date, the month is loaded and
// the planner refilled.
void month_changed(AppState& s, WindowPort& w);
// Points the year list (and the month list with `month_too`) at `date`,
// with combo_lock on, so no change handler runs and nothing is read.
void point_combos(PlannerState& view, const QDate& date, bool month_too = true);
// Whether the lists show the month and year of `date`.
bool combos_show(const PlannerState& view, const QDate& date);
// Points the lists at `date`, loading its month when it differs from theirs.
void sync_combos(Shared& store, PlannerState& view, const QDate& date);
// The day arrows: 0 back, 1 forward (a week in the week planner).
void ImageArrow_Click(AppState& s, WindowPort& w, int index);
// Tool-tips of the arrows, set as the mouse moves over them.
void ImageArrow_MouseMove(PlannerState& view);
void imgPriorMth_Click(AppState& s, WindowPort& w);
void imgNextMth_Click(AppState& s, WindowPort& w);
// Events of Cal, with grid rows and columns.
void Cal_Click(AppState& s, WindowPort& w, int row, int col);
void Cal_DblClick(Shared& store, const PlannerState& view, EditorState& editing, RunState& run,
                  int row, int col);
// Tab and Shift+Tab step a day; returns true when the key was used.
bool Cal_KeyDown(AppState& s, WindowPort& w, int key, bool shift);
// A picture dropped on a day cell: shown there, left-centre, on the pick
// colour; display only.
void Cal_DragDrop(PlannerState& view, int row, int col, const QString& picture_key);

} // namespace orva
