#include "grid/grid.h"

#include <algorithm>

namespace orva {

Grid::Grid(int rows, int cols) {
    resize(s_, std::max(rows, 0), std::max(cols, 0));
    fix_cursor(s_);
}

Grid::Grid(const Grid& o)
    : s_(o.s_), top_row_(o.top_row_), left_col_(o.left_col_), shown_row_(o.shown_row_),
      shown_col_(o.shown_col_), redraw_(o.redraw_), tool_tip_(o.tool_tip_), measure_(o.measure_) {}

Grid& Grid::operator=(const Grid& o) {
    if (this == &o) return *this;
    s_ = o.s_;
    top_row_ = o.top_row_;
    left_col_ = o.left_col_;
    shown_row_ = o.shown_row_;
    shown_col_ = o.shown_col_;
    ++scroll_serial_;
    tool_tip_ = o.tool_tip_;
    touch();
    return *this;
}

Grid::~Grid() = default;

void Grid::touch() {
    ++version_;
    if (redraw_ != 0 && changed_) changed_();
}

bool Grid::in_range(int row, int col) const {
    return row >= 0 && row < s_.rows && col >= 0 && col < s_.cols;
}

bool Grid::check(int row, int col) const {
    if (in_range(row, col)) return true;
    fail(err::subscript);
    return false;
}

void Grid::resize(State& st, int rows, int cols) {
    if (cols == st.cols) {
        st.cells.resize(size_t(rows) * cols);
    } else {
        std::vector<CellData> next(size_t(rows) * cols);
        const int keep_r = std::min(rows, st.rows), keep_c = std::min(cols, st.cols);
        for (int r = 0; r < keep_r; ++r)
            for (int c = 0; c < keep_c; ++c)
                next[size_t(r) * cols + c] = std::move(st.cells[size_t(r) * st.cols + c]);
        st.cells = std::move(next);
    }
    st.row_height.resize(rows, -1);
    st.row_hidden.resize(rows, 0);
    st.merge_row.resize(rows, 0);
    st.col_width.resize(cols, -1);
    st.col_hidden.resize(cols, 0);
    st.merge_col.resize(cols, 0);
    st.col_align.resize(cols, int(Align::General));
    st.col_type.resize(cols, int(ColType::Text));
    st.rows = rows;
    st.cols = cols;
    st.fixed_rows = std::min(st.fixed_rows, rows);
    st.fixed_cols = std::min(st.fixed_cols, cols);
}

void Grid::fix_cursor(State& st) {
    auto fix = [](int& cur, int& sel, int n, int fixed) {
        if (n == 0) {
            cur = sel = -1;
            return;
        }
        if (cur < 0) cur = std::min(fixed, n - 1);
        cur = std::min(cur, n - 1);
        if (sel < 0) sel = cur;
        sel = std::min(sel, n - 1);
    };
    fix(st.row, st.row_sel, st.rows, st.fixed_rows);
    fix(st.col, st.col_sel, st.cols, st.fixed_cols);
}

// --- size and cursor ----------------------------------------------------

int Grid::Rows() const {
    return s_.rows;
}
int Grid::Cols() const {
    return s_.cols;
}

void Grid::setRows(int n) {
    if (n < 0) return fail(err::bad_value);
    resize(s_, n, s_.cols);
    fix_cursor(s_);
    top_row_ = std::clamp(top_row_, 0, std::max(n - 1, 0));
    touch();
}

void Grid::setCols(int n) {
    if (n < 0) return fail(err::bad_value);
    resize(s_, s_.rows, n);
    fix_cursor(s_);
    left_col_ = std::clamp(left_col_, 0, std::max(n - 1, 0));
    touch();
}

int Grid::Row() const {
    return s_.row;
}
int Grid::Col() const {
    return s_.col;
}
int Grid::RowSel() const {
    return s_.row_sel;
}
int Grid::ColSel() const {
    return s_.col_sel;
}

void Grid::setRow(int r) {
    if (r < 0 || r >= s_.rows) return fail(err::subscript);
    s_.row = s_.row_sel = r;
    touch();
}

void Grid::setCol(int c) {
    if (c < 0 || c >= s_.cols) return fail(err::subscript);
    s_.col = s_.col_sel = c;
    touch();
}

void Grid::Select(int row, int col) {
    Select(row, col, row, col);
}

void Grid::Select(int row, int col, int rowsel, int colsel) {
    if (!in_range(row, col) || !in_range(rowsel, colsel)) return fail(err::subscript);
    s_.row = row;
    s_.col = col;
    s_.row_sel = rowsel;
    s_.col_sel = colsel;
    touch();
}

int Grid::FixedRows() const {
    return s_.fixed_rows;
}
int Grid::FixedCols() const {
    return s_.fixed_cols;
}

void Grid::setFixedRows(int n) {
    if (n < 0) return fail(err::bad_value);
    if (n > s_.rows) resize(s_, n, s_.cols);
    s_.fixed_rows = n;
    fix_cursor(s_);
    touch();
}

void Grid::setFixedCols(int n) {
    if (n < 0) return fail(err::bad_value);
    if (n > s_.cols) resize(s_, s_.rows, n);
    s_.fixed_cols = n;
    fix_cursor(s_);
    touch();
}

// --- grid-wide appearance --------------------------------------------------

Color Grid::BackColor() const {
    return s_.back;
}
void Grid::setBackColor(Color c) {
    s_.back = c & 0xFFFFFF;
    touch();
}
Color Grid::ForeColor() const {
    return s_.fore;
}
void Grid::setForeColor(Color c) {
    s_.fore = c & 0xFFFFFF;
    touch();
}
Color Grid::BackColorFixed() const {
    return s_.back_fixed;
}
void Grid::setBackColorFixed(Color c) {
    s_.back_fixed = c & 0xFFFFFF;
    touch();
}
Color Grid::ForeColorFixed() const {
    return s_.fore_fixed;
}
void Grid::setForeColorFixed(Color c) {
    s_.fore_fixed = c & 0xFFFFFF;
    touch();
}
Color Grid::GridColor() const {
    return s_.grid_color;
}
void Grid::setGridColor(Color c) {
    s_.grid_color = c & 0xFFFFFF;
    touch();
}
QString Grid::FontName() const {
    return s_.font_name;
}
void Grid::setFontName(const QString& n) {
    s_.font_name = n;
    touch();
}
double Grid::FontSize() const {
    return s_.font_size;
}
void Grid::setFontSize(double pt) {
    if (pt <= 0) return fail(err::bad_value);
    s_.font_size = pt;
    touch();
}
bool Grid::FontBold() const {
    return s_.font_bold;
}
void Grid::setFontBold(bool b) {
    s_.font_bold = b;
    touch();
}
bool Grid::FontItalic() const {
    return s_.font_italic;
}
void Grid::setFontItalic(bool b) {
    s_.font_italic = b;
    touch();
}
bool Grid::Editable() const {
    return s_.editable;
}
void Grid::setEditable(bool e) {
    s_.editable = e;
    touch();
}
bool Grid::WordWrap() const {
    return s_.word_wrap;
}
void Grid::setWordWrap(bool on) {
    s_.word_wrap = on;
    touch();
}

// --- drawing -------------------------------------------------------------

int Grid::Redraw() const {
    return redraw_;
}

void Grid::setRedraw(int mode) {
    const bool was_on = redraw_ != 0;
    redraw_ = mode;
    if (was_on == (mode != 0)) return;
    ++version_;
    if (changed_) changed_();
}

void Grid::set_changed_hook(std::function<void()> hook) {
    changed_ = std::move(hook);
}

} // namespace orva
