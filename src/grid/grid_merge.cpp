#include "grid/grid.h"
#include "grid/grid_internal.h"

#include <algorithm>

namespace orva {

// --- merging and borders ---------------------------------------------------

MergeMode Grid::MergeCells() const {
    return s_.merge;
}

void Grid::setMergeCells(MergeMode m) {
    s_.merge = m;
    touch();
}

bool Grid::MergeRow(int row) const {
    if (row < 0 || row >= s_.rows) {
        fail(err::subscript);
        return false;
    }
    return s_.merge_row[row] != 0;
}

void Grid::setMergeRow(int row, bool on) {
    if (row < 0 || row >= s_.rows) return fail(err::subscript);
    s_.merge_row[row] = on;
    touch();
}

bool Grid::MergeCol(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return false;
    }
    return s_.merge_col[col] != 0;
}

void Grid::setMergeCol(int col, bool on) {
    if (col < 0 || col >= s_.cols) return fail(err::subscript);
    s_.merge_col[col] = on;
    touch();
}

bool Grid::same_text(int r1, int c1, int r2, int c2) const {
    const QString& a = at(r1, c1).text;
    return !a.isEmpty() && a == at(r2, c2).text;
}

bool Grid::merges_down(int row, int col) const {
    if (s_.merge == MergeMode::Never || row < 0 || row + 1 >= s_.rows || !s_.merge_col[col])
        return false;
    if ((row < s_.fixed_rows) != (row + 1 < s_.fixed_rows)) return false;
    if (!same_text(row, col, row + 1, col)) return false;
    const bool restrict =
        s_.merge == MergeMode::RestrictColumns || s_.merge == MergeMode::RestrictAll;
    return !restrict || col == 0 || merges_down(row, col - 1);
}

bool Grid::merges_right(int row, int col) const {
    if (s_.merge == MergeMode::Never || col < 0 || col + 1 >= s_.cols || !s_.merge_row[row])
        return false;
    if ((col < s_.fixed_cols) != (col + 1 < s_.fixed_cols)) return false;
    if (!same_text(row, col, row, col + 1)) return false;
    const bool restrict = s_.merge == MergeMode::RestrictRows || s_.merge == MergeMode::RestrictAll;
    return !restrict || row == 0 || merges_right(row - 1, col);
}

Grid::Span Grid::merged_range(int row, int col) const {
    if (!check(row, col)) return {row, col, row, col};
    int r1 = row, r2 = row;
    while (merges_down(r1 - 1, col))
        --r1;
    while (merges_down(r2, col))
        ++r2;
    if (r1 != r2) return {r1, col, r2, col};
    // A cell already in a vertical block cannot also join a horizontal one:
    // the blocks a view draws must not overlap.
    auto upright = [this](int r, int c) { return merges_down(r - 1, c) || merges_down(r, c); };
    auto joins = [&](int c) { return merges_right(row, c) && !upright(row, c + 1); };
    int c1 = col, c2 = col;
    while (c1 > 0 && joins(c1 - 1))
        --c1;
    while (joins(c2))
        ++c2;
    return {row, c1, row, c2};
}

void Grid::CellBorder(Color color, int left, int top, int right, int bottom, int vertical,
                      int horizontal) {
    if (s_.row < 0 || s_.col < 0) return fail(err::subscript);
    const int r1 = std::min(s_.row, s_.row_sel), r2 = std::max(s_.row, s_.row_sel);
    const int c1 = std::min(s_.col, s_.col_sel), c2 = std::max(s_.col, s_.col_sel);
    auto put = [](int& side, int w) {
        if (w >= 0) side = w;
    };
    for (int r = r1; r <= r2; ++r) {
        for (int c = c1; c <= c2; ++c) {
            CellBorderSpec& b = at(r, c).attrs().border;
            b.color = color & 0xFFFFFF;
            put(b.left, c == c1 ? left : vertical);
            put(b.right, c == c2 ? right : vertical);
            put(b.top, r == r1 ? top : horizontal);
            put(b.bottom, r == r2 ? bottom : horizontal);
        }
    }
    touch();
}

CellBorderSpec Grid::border(int row, int col) const {
    if (!check(row, col)) return {};
    const Attrs* a = at(row, col).fmt.get();
    return a ? a->border : CellBorderSpec{};
}

} // namespace orva
