#include "grid/grid.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orva {

namespace {

// Without a view the width of a text is guessed from its point size: an
// average glyph is a little over half an em, and a point is 20 twips.
int estimate_twips(const QString& text, const QString&, double points, bool bold, bool) {
    double w = text.size() * points * 20.0 * 0.55;
    if (bold) w *= 1.1;
    // A grid file may give a cell any point size a number can hold: a guess
    // past the range of an int is as wide as a column can be, not a
    // conversion with no defined result.
    if (!(w > 0)) return 0;
    return w < double(std::numeric_limits<int>::max()) ? int(w + 0.5)
                                                       : std::numeric_limits<int>::max();
}

// Each size fits an int, their sum need not: a grid file may ask for rows of
// any height. A position past the range of an int stands at its end.
int saturated(qint64 twips) {
    return int(std::clamp<qint64>(twips, std::numeric_limits<int>::min(),
                                  std::numeric_limits<int>::max()));
}

} // namespace

// --- geometry -------------------------------------------------------------

int Grid::ColWidth(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return 0;
    }
    return s_.col_width[col] < 0 ? default_col_width : s_.col_width[col];
}

void Grid::setColWidth(int col, int twips) {
    if (col < 0 || col >= s_.cols) return fail(err::subscript);
    if (twips < -1) return fail(err::bad_value);
    s_.col_width[col] = twips;
    touch();
}

int Grid::RowHeight(int row) const {
    if (row < 0 || row >= s_.rows) {
        fail(err::subscript);
        return 0;
    }
    const int own = s_.row_height[row] < 0 ? default_row_height : s_.row_height[row];
    return std::max(own, s_.row_height_min);
}

void Grid::setRowHeight(int row, int twips) {
    if (row < 0 || row >= s_.rows) return fail(err::subscript);
    if (twips < -1) return fail(err::bad_value);
    s_.row_height[row] = twips;
    touch();
}

int Grid::RowHeightMin() const {
    return s_.row_height_min;
}

void Grid::setRowHeightMin(int twips) {
    if (twips < 0) return fail(err::bad_value);
    s_.row_height_min = twips;
    touch();
}

bool Grid::RowHidden(int row) const {
    if (row < 0 || row >= s_.rows) {
        fail(err::subscript);
        return false;
    }
    return s_.row_hidden[row] != 0;
}

void Grid::setRowHidden(int row, bool hidden) {
    if (row < 0 || row >= s_.rows) return fail(err::subscript);
    s_.row_hidden[row] = hidden;
    touch();
}

bool Grid::ColHidden(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return false;
    }
    return s_.col_hidden[col] != 0;
}

void Grid::setColHidden(int col, bool hidden) {
    if (col < 0 || col >= s_.cols) return fail(err::subscript);
    s_.col_hidden[col] = hidden;
    touch();
}

int Grid::TopRow() const {
    return std::max(top_row_, s_.fixed_rows);
}

void Grid::setTopRow(int row) {
    if (row < 0 || row >= s_.rows) return fail(err::subscript);
    top_row_ = row;
    // A later TopRow wins over an earlier ShowCell, or the view would scroll
    // back to a cell nobody asks for any more.
    shown_row_ = shown_col_ = -1;
    ++scroll_serial_;
    touch();
}

int Grid::LeftCol() const {
    return std::max(left_col_, s_.fixed_cols);
}

void Grid::ShowCell(int row, int col) {
    if (!check(row, col)) return;
    shown_row_ = row;
    shown_col_ = col;
    // Without a view only scrolling up is certain: the height shown is unknown.
    if (row >= s_.fixed_rows && row < top_row_) top_row_ = row;
    ++scroll_serial_;
    touch();
}

void Grid::set_view_scroll(int top_row, int left_col) {
    top_row_ = std::max(top_row, 0);
    left_col_ = std::max(left_col, 0);
}

int Grid::RowPos(int row) const {
    if (row < 0 || row >= s_.rows) {
        fail(err::subscript);
        return 0;
    }
    auto h = [this](int r) { return s_.row_hidden[r] ? 0 : RowHeight(r); };
    qint64 pos = 0;
    for (int r = 0; r < s_.fixed_rows && r < row; ++r)
        pos += h(r);
    if (row < s_.fixed_rows) return saturated(pos);
    const int top = TopRow();
    for (int r = top; r < row; ++r)
        pos += h(r);
    for (int r = row; r < top; ++r)
        pos -= h(r);
    return saturated(pos);
}

int Grid::ColPos(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return 0;
    }
    auto w = [this](int c) { return s_.col_hidden[c] ? 0 : ColWidth(c); };
    qint64 pos = 0;
    for (int c = 0; c < s_.fixed_cols && c < col; ++c)
        pos += w(c);
    if (col < s_.fixed_cols) return saturated(pos);
    const int left = LeftCol();
    for (int c = left; c < col; ++c)
        pos += w(c);
    for (int c = col; c < left; ++c)
        pos -= w(c);
    return saturated(pos);
}

void Grid::set_measure(Measure m) {
    measure_ = std::move(m);
}

void Grid::AutoSize(int col1, int col2) {
    if (col2 < 0) col2 = col1;
    if (col1 > col2) std::swap(col1, col2);
    if (col1 < 0 || col2 >= s_.cols) return fail(err::subscript);
    const Measure& measure = measure_ ? measure_ : Measure(estimate_twips);
    constexpr int margin = 120; // twips, a few pixels on each side
    for (int c = col1; c <= col2; ++c) {
        int widest = 0;
        for (int r = 0; r < s_.rows; ++r) {
            const QString& text = at(r, c).text;
            if (text.isEmpty()) continue;
            widest = std::max(widest, measure(text, Cell(CellSetting::FontName, r, c).toString(),
                                              Cell(CellSetting::FontSize, r, c).toDouble(),
                                              Cell(CellSetting::FontBold, r, c).toBool(),
                                              Cell(CellSetting::FontItalic, r, c).toBool()));
        }
        s_.col_width[c] = std::min(widest, std::numeric_limits<int>::max() - margin) + margin;
    }
    touch();
}

} // namespace orva
