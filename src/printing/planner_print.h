#pragma once

#include "printing/print_setup.h"
#include "state/app_state.h"

#include <QSize>

namespace orva {

// The print jobs of the planners: what is on the screen goes on paper. Each
// copies its planner into vsPrtgrd through the grid file, gives it the
// band's caption as a title row and sizes that fit the page, asks the print
// dialog, and prints the copies with "printed on" at the foot of the page.
// Sizes are in twips.

// The day planner (vsSched). The clock's coloured row is printed plain; a
// range of more than one cell selected in the grid (sel_row1 ..) may be
// printed alone, the dialog offering it. sel_row1 .. sel_col2 are -1 after.
void prt_day(AppState& s, WindowPort& w);
// For a landscape page: the grid 13680 wide, and the normal columns from
// column 2 on, every second one, sharing 15840 less column 0's width.
void pLset_day(Grid& g, int thin_width);
// The week planner (vsOvervw in the week), landscape preset.
void prt_week(AppState& s, WindowPort& w);
// The grid's size on `page`: 10800 x 14400, or the page less 1440 each way
// when the page is narrower than letter or lower.
QSize pSet_size(const QSize& page);
// The week's print grid sized for `page`: row 0 a tenth of the height, the
// other rows sharing the rest, the columns sharing the width.
void pSet_wk(Grid& g, const QSize& page);
// The month planner (vsOvervw in the month), with a title row 860 high and a
// box around each day's cells.
void prt_month(AppState& s, WindowPort& w);
// The month's print grid sized for `page`: rows from 1 share the height
// left under row 0, columns the width, each rounded down to whole screen
// pixels of the sizes given.
void pSet_mth(Grid& g, const QSize& page, double twips_per_pixel_x, double twips_per_pixel_y);
// Kept as a public name; it does nothing.
void prt_month3();

// The Print tool picture and File > Print: the month planner's job in the
// month, the week's in the week, else the day's; the pointer is back after.
void imagePrint_Click(AppState& s, WindowPort& w);
void mnuFilePrint_Click(AppState& s, WindowPort& w);

} // namespace orva
