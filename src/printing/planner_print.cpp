#include "printing/planner_print.h"

#include <algorithm>
#include <cmath>

namespace orva {
namespace {

// Rounds twips down to whole pixels of `twips_per_pixel`.
int whole_pixels(double twips, double twips_per_pixel) {
    if (twips_per_pixel <= 0) return int(twips);
    return int(std::floor(twips / twips_per_pixel) * twips_per_pixel);
}

QString label1_text(PlannerState& view) {
    return view.ctl(QStringLiteral("Label1")).text;
}

// The day's columns on paper: column 0 at its label width, the thin spacers
// as they are, and the normal shown columns sharing what is left evenly.
void share_day_widths(Grid& g, int thin_width) {
    if (g.Cols() == 0) return;
    g.setColWidth(0, day_label_width);
    int thin = 0, normal = 0;
    for (int c = 1; c < g.Cols(); ++c) {
        if (g.ColHidden(c)) continue;
        if (g.ColWidth(c) == thin_width)
            ++thin;
        else
            ++normal;
    }
    if (normal == 0) return;
    const int each = (g.Width() - day_label_width - thin * thin_width) / normal;
    if (each <= 0) return;
    for (int c = 1; c < g.Cols(); ++c)
        if (!g.ColHidden(c) && g.ColWidth(c) != thin_width) g.setColWidth(c, each);
}

} // namespace

void prt_day(AppState& s, WindowPort& w) {
    PrintJob job(s, w, s.vsPrtgrd);
    Grid& g = s.vsPrtgrd;
    const Grid& source = s.vsSched;
    const int sel_row1 = s.sel_row1, sel_row2 = s.sel_row2;
    const bool range = sel_row1 >= 0 && (sel_row1 != sel_row2 || s.sel_col1 != s.sel_col2);
    s.sel_row1 = s.sel_col1 = s.sel_row2 = s.sel_col2 = -1;
    if (!job.copy(source)) return;

    copy_cell_colors(source, g);
    // The clock's mark is the screen's, not the day's.
    for (int r = 0; r < g.Rows(); ++r)
        for (int c = 0; c < g.Cols(); ++c)
            if (g.Cell(CellSetting::BackColor, r, c).toUInt() == s.now_color)
                g.setCell(CellSetting::BackColor, r, c, source.BackColor());
    g.setFixedRows(0);
    g.setFixedCols(0);

    if (range) {
        const int top = std::min(sel_row1, sel_row2), bottom = std::max(sel_row1, sel_row2);
        for (int r = 0; r < g.Rows(); ++r)
            if (r < top || r > bottom) g.setRowHidden(r, true);
    }
    const bool no_selection = !range;

    g.set_extent(portrait_page - 2 * s.margin_lr, g.Height());
    add_title_row(g, s, label1_text(s), source.Cols(), title_points);
    if (g.Rows() > 0) g.setRowHeight(g.Rows() - 1, day_last_row_height);
    share_day_widths(g, s.blankColWidth);

    if (!job.setup(1, no_selection)) return;
    const QString name = printed_on_text();
    if (!s.print_selection)
        for (int r = 0; r < g.Rows(); ++r)
            g.setRowHidden(r, false);
    if (s.printer.orientation == 2) pLset_day(g, s.blankColWidth);
    job.print(name);
}

void pLset_day(Grid& g, int thin_width) {
    g.set_extent(landscape_grid, g.Height());
    if (g.Cols() == 0) return;
    int normal = 0;
    for (int c = 2; c < g.Cols(); c += 2)
        if (!g.ColHidden(c) && g.ColWidth(c) != thin_width) ++normal;
    if (normal == 0) return;
    const int each = (letter_height - g.ColWidth(0)) / normal;
    for (int c = 2; c < g.Cols(); c += 2)
        if (!g.ColHidden(c) && g.ColWidth(c) != thin_width) g.setColWidth(c, each);
}

void prt_week(AppState& s, WindowPort& w) {
    PrintJob job(s, w, s.vsPrtgrd);
    Grid& g = s.vsPrtgrd;
    const Grid& source = s.vsOvervw;
    if (!job.copy(source)) return;
    copy_cell_colors(source, g);
    g.setFixedRows(0);
    g.setFixedCols(0);
    add_title_row(g, s, label1_text(s), 20, title_points);

    if (!job.setup(2, true)) return;
    const QString name = printed_on_text();
    pSet_wk(g, page_twips(s.printer));
    job.print(name);
}

QSize pSet_size(const QSize& page) {
    if (page.width() < letter_width || page.height() < letter_height)
        return QSize(page.width() - page_allowance, page.height() - page_allowance);
    return QSize(set_grid_width, set_grid_height);
}

void pSet_wk(Grid& g, const QSize& page) {
    const QSize size = pSet_size(page);
    g.set_extent(size.width(), size.height());
    if (g.Rows() == 0 || g.Cols() == 0) return;
    const int first = size.height() / 10;
    g.setRowHeight(0, first);
    if (g.Rows() > 1) {
        const int each = (size.height() - first) / (g.Rows() - 1);
        for (int r = 1; r < g.Rows(); ++r)
            g.setRowHeight(r, each);
    }
    const int width = size.width() / g.Cols();
    for (int c = 0; c < g.Cols(); ++c)
        g.setColWidth(c, width);
}

void prt_month(AppState& s, WindowPort& w) {
    PrintJob job(s, w, s.vsPrtgrd);
    Grid& g = s.vsPrtgrd;
    const Grid& source = s.vsOvervw;
    if (!job.copy(source)) return;
    copy_cell_colors(source, g);

    add_title_row(g, s, label1_text(s), g.Cols(), title_points);
    g.setRowHeight(0, month_title_height);

    // Each day gets a box of its own: the week's box alone leaves the days
    // of a week running into each other on paper.
    constexpr int block_rows = 5;
    const int first_week_row = 2; // title, then the weekday names
    const Color box = s.label1_back_color;
    for (int top = first_week_row; top + block_rows - 1 < g.Rows(); top += block_rows)
        for (int c = 0; c < g.Cols(); ++c) {
            g.Select(top, c, top + block_rows - 1, c);
            g.CellBorder(box, 1, 1, 1, 1, 0, 0);
        }

    if (!job.setup(1, true)) return;
    const QString name = printed_on_text();
    pSet_mth(g, page_twips(s.printer), s.twips_per_pixel_x, s.twips_per_pixel_y);
    job.print(name);
}

void pSet_mth(Grid& g, const QSize& page, double twips_per_pixel_x, double twips_per_pixel_y) {
    const QSize size = pSet_size(page);
    g.set_extent(size.width(), size.height());
    if (g.Rows() == 0 || g.Cols() == 0) return;
    if (g.Rows() > 1) {
        // The rows there are share the page: a month of four weeks gets
        // taller rows than one of six.
        const int each = whole_pixels(double(size.height() - g.RowHeight(0)) / (g.Rows() - 1),
                                      twips_per_pixel_y);
        for (int r = 1; r < g.Rows(); ++r)
            g.setRowHeight(r, each);
    }
    const int width = whole_pixels(double(size.width()) / g.Cols(), twips_per_pixel_x);
    for (int c = 0; c < g.Cols(); ++c)
        g.setColWidth(c, width);
}

void prt_month3() {}

void imagePrint_Click(AppState& s, WindowPort& w) {
    if (s.view_month)
        prt_month(s, w);
    else if (s.view_week)
        prt_week(s, w);
    else
        prt_day(s, w);
    w.set_busy(false);
}

void mnuFilePrint_Click(AppState& s, WindowPort& w) {
    imagePrint_Click(s, w);
}

} // namespace orva
