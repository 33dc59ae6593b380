#pragma once

#include "state/app_state.h"

#include <QDate>
#include <QString>

namespace orva {

// The month planner on vsOvervw, and what the month and week planners share.
//
// vsOvervw ties a cell to its entry only through the cell's data: the day as
// "mmddyyyy" followed by "?" on every cell of a day (a free line, the date
// row, a week header), and on a line that shows an entry " index=" and the
// entry's appt_tbl row after that: "03142026? index=57". The grids are
// rebuilt whole after every change, so the number is always the row of the
// table as last loaded.
//
// The month: header row 0 with the weekday names, then five rows a week, a
// row of day numbers and four lines, so a day shows up to four entries (with
// five or more, three and "more..."); a lone entry fills all four lines as
// one tall cell.

inline const QString more_text = QStringLiteral("more...");
inline const QString dbl_click_overvw_text = QStringLiteral("Double click to edit appointment");

// Weeks the month of `d` takes on the planner (4, 5 or 6), counting from
// Sunday.
int month_weeks(const QDate& d);
// Data of a free cell of day `d`: "mmddyyyy?".
QString overvw_free_data(const QDate& d);

// The Month tool picture: fills vsOvervw with the month of cur_date from what
// appt_tbl holds (no member is read), switches the page to the month layout
// when another planner was up, and saves the options.
void imageMonth_Click(AppState& s, WindowPort& w);
// Rebuilds whichever of the month and week planners is up.
void refill_overview(AppState& s, WindowPort& w);

// Finds the row number in the data of (row, col), scanning back from
// position `from` (1-based, the data's length): "=" gives ptrPos (where the
// number starts, 1-based) and ptr_len; a "?" or empty data is no number.
void extract_ptr(PlannerState& view, int from, int row, int col);
// extract_ptr over the whole data of (row, col): the appt_tbl row, or 0.
int overvw_entry(PlannerState& view, int row, int col);
// The "mmddyyyy" before the "?" in the data of the grid's current cell; ""
// when the data has no "?".
QString cell_date(const Grid& g);
// The day of cell (row, col); invalid when the cell carries none.
QDate overvw_day(const Grid& g, int row, int col);

// The tool-tip of an entry's line: "hh:mm am/pm - hh:mm am/pm  text";
// cleared anywhere else.
void overvw_tip(const Shared& store, PlannerState& view, int row, int col);
// Colours of vsOvervw from vsSched, Cal and the options' font colour, in the
// month or the week layout, whichever is up.
void set_overvw_color(PlannerState& view, const OptionsState& options);
// Day-number rows bold at the font size + 2; lines at the font size.
void set_mth_fonts(PlannerState& view, const OptionsState& options);
// Twips of vsOvervw's extent that the month's sizing keeps off the width
// (both planners) and the height (the month), for the grid's frame and
// scroll bars.
inline constexpr int overvw_allowance = 400;
// Row heights and column widths from vsOvervw's extent, no smaller than
// 1902 x 360 twips (2240 x 438 above size 12). Sizes the week planner too.
void resize_mth_grd(PlannerState& view, const OptionsState& options);

// Events of vsOvervw in either planner, with grid rows and columns.
void vsOvervw_Click(AppState& s, WindowPort& w, int row, int col);
void vsOvervw_DblClick(AppState& s, int row, int col);
// The right button on a cell: the cell becomes the selected one and the Edit
// commands follow it as after a click, so the pop-up acts on that line.
void vsOvervw_RightClick(PlannerState& view, int row, int col);
// Returns true when the edit is to be cancelled.
bool vsOvervw_BeforeEdit(AppState& s, int row, int col);
// A text typed into a free line (or over a day number) becomes a one-time
// entry at the present time on that day, through frmQuick.
void vsOvervw_AfterEdit(AppState& s, WindowPort& w, int row, int col);
// Delete on a line deletes its entry. Returns true when the key was used.
bool vsOvervw_KeyDown(AppState& s, int key);
void vsOvervw_MouseMove(const Shared& store, PlannerState& view, const OptionsState& options,
                        int buttons, int row, int col);

// The cell the Edit commands act on in vsOvervw: the one under the mouse
// while the mouse is over the grid, else the selected one; row -1 when there
// is neither.
struct OverviewCell {
    int row = -1, col = -1;
};
OverviewCell overvw_target(const PlannerState& view);

} // namespace orva
