#include "grid/grid.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaType>
#include <QSaveFile>
#include <algorithm>
#include <numeric>
#include <optional>

namespace orva {

struct Grid::Attrs {
    QVariant data;
    std::optional<Color> back, fore;
    QString picture; // empty: none
    std::optional<int> pic_align, align;
    QString font_name; // empty: the grid's
    std::optional<double> font_size;
    std::optional<bool> bold, italic, underline;
    CellBorderSpec border;

    bool has_format() const {
        return back || fore || !picture.isEmpty() || pic_align || align || !font_name.isEmpty() ||
               font_size || bold || italic || underline || border != CellBorderSpec{};
    }
    void clear_format() {
        QVariant keep = std::move(data);
        *this = Attrs{};
        data = std::move(keep);
    }
};

Grid::CellData::CellData() = default;
Grid::CellData::CellData(const CellData& o)
    : text(o.text), fmt(o.fmt ? std::make_unique<Attrs>(*o.fmt) : nullptr) {}
Grid::CellData::CellData(CellData&&) noexcept = default;
Grid::CellData& Grid::CellData::operator=(const CellData& o) {
    if (this != &o) {
        text = o.text;
        fmt = o.fmt ? std::make_unique<Attrs>(*o.fmt) : nullptr;
    }
    return *this;
}
Grid::CellData& Grid::CellData::operator=(CellData&&) noexcept = default;
Grid::CellData::~CellData() = default;
Grid::Attrs& Grid::CellData::attrs() {
    if (!fmt) fmt = std::make_unique<Attrs>();
    return *fmt;
}

namespace {

bool valid_align(int a) {
    return a >= int(Align::LeftTop) && a <= int(Align::General);
}

Color to_color(const QVariant& v) {
    return Color(v.toLongLong() & 0xFFFFFF);
}

// Without a view the width of a text is guessed from its point size: an
// average glyph is a little over half an em, and a point is 20 twips.
int estimate_twips(const QString& text, const QString&, double points, bool bold, bool) {
    double w = text.size() * points * 20.0 * 0.55;
    if (bold) w *= 1.1;
    return int(w + 0.5);
}

} // namespace

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

// --- contents -----------------------------------------------------------

QString Grid::TextMatrix(int row, int col) const {
    if (!check(row, col)) return {};
    return at(row, col).text;
}

void Grid::setTextMatrix(int row, int col, const QString& text) {
    if (!check(row, col)) return;
    at(row, col).text = text;
    touch();
}

QVariant Grid::Cell(CellSetting s, int row, int col) const {
    if (!check(row, col)) return {};
    const CellData& cd = at(row, col);
    const Attrs* a = cd.fmt.get();
    const bool fixed = row < s_.fixed_rows || col < s_.fixed_cols;
    switch (s) {
    case CellSetting::Text:
        return cd.text;
    case CellSetting::Data:
        return a ? a->data : QVariant();
    case CellSetting::BackColor:
        return QVariant::fromValue<Color>(a && a->back ? *a->back
                                          : fixed      ? s_.back_fixed
                                                       : s_.back);
    case CellSetting::ForeColor:
        return QVariant::fromValue<Color>(a && a->fore ? *a->fore
                                          : fixed      ? s_.fore_fixed
                                                       : s_.fore);
    case CellSetting::Picture:
        return a ? a->picture : QString();
    case CellSetting::PictureAlignment:
        return a && a->pic_align ? *a->pic_align : int(Align::LeftCenter);
    case CellSetting::Alignment:
        return a && a->align ? *a->align : s_.col_align[col];
    case CellSetting::FontName:
        return a && !a->font_name.isEmpty() ? a->font_name : s_.font_name;
    case CellSetting::FontSize:
        return a && a->font_size ? *a->font_size : s_.font_size;
    case CellSetting::FontBold:
        return a && a->bold ? *a->bold : s_.font_bold;
    case CellSetting::FontItalic:
        return a && a->italic ? *a->italic : s_.font_italic;
    case CellSetting::FontUnderline:
        return a && a->underline ? *a->underline : false;
    }
    return {};
}

bool Grid::cell_has(CellSetting s, int row, int col) const {
    if (!check(row, col)) return false;
    const CellData& cd = at(row, col);
    const Attrs* a = cd.fmt.get();
    switch (s) {
    case CellSetting::Text:
        return !cd.text.isEmpty();
    case CellSetting::Data:
        return a && a->data.isValid();
    case CellSetting::BackColor:
        return a && a->back;
    case CellSetting::ForeColor:
        return a && a->fore;
    case CellSetting::Picture:
        return a && !a->picture.isEmpty();
    case CellSetting::PictureAlignment:
        return a && a->pic_align;
    case CellSetting::Alignment:
        return a && a->align;
    case CellSetting::FontName:
        return a && !a->font_name.isEmpty();
    case CellSetting::FontSize:
        return a && a->font_size;
    case CellSetting::FontBold:
        return a && a->bold;
    case CellSetting::FontItalic:
        return a && a->italic;
    case CellSetting::FontUnderline:
        return a && a->underline;
    }
    return false;
}

void Grid::setCell(CellSetting s, int row, int col, const QVariant& v) {
    setCell(s, row, col, row, col, v);
}

void Grid::setCell(CellSetting s, int row1, int col1, int row2, int col2, const QVariant& v) {
    if (!in_range(row1, col1) || !in_range(row2, col2)) return fail(err::subscript);
    const bool unset = !v.isValid();
    if ((s == CellSetting::Alignment || s == CellSetting::PictureAlignment) && !unset &&
        !valid_align(v.toInt()))
        return fail(err::bad_value);
    if (s == CellSetting::FontSize && !unset && v.toDouble() <= 0) return fail(err::bad_value);
    if (row1 > row2) std::swap(row1, row2);
    if (col1 > col2) std::swap(col1, col2);
    for (int r = row1; r <= row2; ++r) {
        for (int c = col1; c <= col2; ++c) {
            CellData& cd = at(r, c);
            if (s == CellSetting::Text) {
                cd.text = v.toString();
                continue;
            }
            // An unset attribute on a plain cell must not allocate one.
            if (unset && !cd.fmt) continue;
            Attrs& a = cd.attrs();
            switch (s) {
            case CellSetting::Text:
                break;
            case CellSetting::Data:
                a.data = v;
                break;
            case CellSetting::BackColor:
                a.back = unset ? std::nullopt : std::optional<Color>(to_color(v));
                break;
            case CellSetting::ForeColor:
                a.fore = unset ? std::nullopt : std::optional<Color>(to_color(v));
                break;
            case CellSetting::Picture:
                a.picture = v.toString();
                break;
            case CellSetting::PictureAlignment:
                a.pic_align = unset ? std::nullopt : std::optional<int>(v.toInt());
                break;
            case CellSetting::Alignment:
                a.align = unset ? std::nullopt : std::optional<int>(v.toInt());
                break;
            case CellSetting::FontName:
                a.font_name = v.toString();
                break;
            case CellSetting::FontSize:
                a.font_size = unset ? std::nullopt : std::optional<double>(v.toDouble());
                break;
            case CellSetting::FontBold:
                a.bold = unset ? std::nullopt : std::optional<bool>(v.toBool());
                break;
            case CellSetting::FontItalic:
                a.italic = unset ? std::nullopt : std::optional<bool>(v.toBool());
                break;
            case CellSetting::FontUnderline:
                a.underline = unset ? std::nullopt : std::optional<bool>(v.toBool());
                break;
            }
        }
    }
    touch();
}

void Grid::AddItem(const QString& tabbed, int row) {
    if (row < 0) row = s_.rows;
    if (row > s_.rows) return fail(err::subscript);
    const int cols = s_.cols;
    s_.cells.insert(s_.cells.begin() + ptrdiff_t(row) * cols, size_t(cols), CellData());
    s_.row_height.insert(s_.row_height.begin() + row, -1);
    s_.row_hidden.insert(s_.row_hidden.begin() + row, 0);
    s_.merge_row.insert(s_.merge_row.begin() + row, 0);
    ++s_.rows;
    const QStringList pieces = tabbed.split(QLatin1Char('\t'));
    for (int c = 0; c < cols && c < pieces.size(); ++c)
        at(row, c).text = pieces[c];
    fix_cursor(s_);
    touch();
}

void Grid::RemoveItem(int row) {
    if (row < 0 || row >= s_.rows) return fail(err::subscript);
    const int cols = s_.cols;
    auto first = s_.cells.begin() + ptrdiff_t(row) * cols;
    s_.cells.erase(first, first + cols);
    s_.row_height.erase(s_.row_height.begin() + row);
    s_.row_hidden.erase(s_.row_hidden.begin() + row);
    s_.merge_row.erase(s_.merge_row.begin() + row);
    --s_.rows;
    s_.fixed_rows = std::min(s_.fixed_rows, s_.rows);
    fix_cursor(s_);
    touch();
}

void Grid::Clear() {
    for (CellData& cd : s_.cells) {
        cd.text.clear();
        cd.fmt.reset();
    }
    touch();
}

void Grid::setFormatString(const QString& fs) {
    const QStringList parts = fs.split(QLatin1Char('|'));
    if (parts.size() > s_.cols) resize(s_, s_.rows, int(parts.size()));
    if (s_.rows == 0) resize(s_, 1, s_.cols);
    fix_cursor(s_);
    for (int c = 0; c < parts.size(); ++c) {
        QString text = parts[c];
        std::optional<Align> a;
        if (text.startsWith(QLatin1Char('^')))
            a = Align::CenterCenter;
        else if (text.startsWith(QLatin1Char('<')))
            a = Align::LeftCenter;
        else if (text.startsWith(QLatin1Char('>')))
            a = Align::RightCenter;
        if (a) {
            text.remove(0, 1);
            s_.col_align[c] = int(*a);
            at(0, c).attrs().align = int(*a);
        }
        at(0, c).text = text;
    }
    touch();
}

Align Grid::ColAlignment(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return Align::General;
    }
    return Align(s_.col_align[col]);
}

void Grid::setColAlignment(int col, Align a) {
    if (col < 0 || col >= s_.cols) return fail(err::subscript);
    if (!valid_align(int(a))) return fail(err::bad_value);
    s_.col_align[col] = int(a);
    touch();
}

void Grid::Sort(SortOrder order, int col) {
    Sort(order, col, col);
}

void Grid::Sort(SortOrder order) {
    Sort(order, s_.col, s_.col_sel);
}

void Grid::Sort(SortOrder order, int col1, int col2) {
    if (col1 > col2) std::swap(col1, col2);
    if (col1 < 0 || col2 >= s_.cols) return fail(err::subscript);
    sort_rows(order, col1, col2);
    touch();
}

void Grid::sort_rows(SortOrder order, int col1, int col2) {
    const int first = s_.fixed_rows;
    const int n = s_.rows - first;
    if (n < 2) return;
    const bool descending = order == SortOrder::GenericDescending ||
                            order == SortOrder::NumericDescending ||
                            order == SortOrder::StringDescending;
    const bool numeric =
        order == SortOrder::NumericAscending || order == SortOrder::NumericDescending;
    const bool generic =
        order == SortOrder::GenericAscending || order == SortOrder::GenericDescending;

    auto compare = [&](const QString& a, const QString& b) -> int {
        if (numeric) {
            const double x = a.trimmed().toDouble(), y = b.trimmed().toDouble();
            return x < y ? -1 : (y < x ? 1 : 0);
        }
        if (generic) {
            bool ok_a = false, ok_b = false;
            const double x = a.trimmed().toDouble(&ok_a), y = b.trimmed().toDouble(&ok_b);
            if (ok_a && ok_b) return x < y ? -1 : (y < x ? 1 : 0);
            return a.compare(b, Qt::CaseInsensitive);
        }
        return a.compare(b, Qt::CaseSensitive);
    };

    std::vector<int> order_of(n);
    std::iota(order_of.begin(), order_of.end(), first);
    std::stable_sort(order_of.begin(), order_of.end(), [&](int ra, int rb) {
        for (int c = col1; c <= col2; ++c) {
            const int k = compare(at(ra, c).text, at(rb, c).text);
            if (k != 0) return descending ? k > 0 : k < 0;
        }
        return false;
    });

    const int cols = s_.cols;
    std::vector<CellData> moved(size_t(n) * cols);
    std::vector<int> heights(n);
    std::vector<char> hidden(n), merge(n);
    for (int i = 0; i < n; ++i) {
        const int src = order_of[i];
        for (int c = 0; c < cols; ++c)
            moved[size_t(i) * cols + c] = std::move(at(src, c));
        heights[i] = s_.row_height[src];
        hidden[i] = s_.row_hidden[src];
        merge[i] = s_.merge_row[src];
    }
    std::move(moved.begin(), moved.end(), s_.cells.begin() + ptrdiff_t(first) * cols);
    std::copy(heights.begin(), heights.end(), s_.row_height.begin() + first);
    std::copy(hidden.begin(), hidden.end(), s_.row_hidden.begin() + first);
    std::copy(merge.begin(), merge.end(), s_.merge_row.begin() + first);
}

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
    return s_.row_height[row] < 0 ? default_row_height : s_.row_height[row];
}

void Grid::setRowHeight(int row, int twips) {
    if (row < 0 || row >= s_.rows) return fail(err::subscript);
    if (twips < -1) return fail(err::bad_value);
    s_.row_height[row] = twips;
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
    int pos = 0;
    for (int r = 0; r < s_.fixed_rows && r < row; ++r)
        pos += h(r);
    if (row < s_.fixed_rows) return pos;
    const int top = TopRow();
    for (int r = top; r < row; ++r)
        pos += h(r);
    for (int r = row; r < top; ++r)
        pos -= h(r);
    return pos;
}

int Grid::ColPos(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return 0;
    }
    auto w = [this](int c) { return s_.col_hidden[c] ? 0 : ColWidth(c); };
    int pos = 0;
    for (int c = 0; c < s_.fixed_cols && c < col; ++c)
        pos += w(c);
    if (col < s_.fixed_cols) return pos;
    const int left = LeftCol();
    for (int c = left; c < col; ++c)
        pos += w(c);
    for (int c = col; c < left; ++c)
        pos -= w(c);
    return pos;
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
        s_.col_width[c] = widest + margin;
    }
    touch();
}

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

// --- files -----------------------------------------------------------------

// The file is JSON: readable when a print copy goes wrong, and nobody else
// reads it. Only cells with something in them are written.
struct GridFile {
    static constexpr const char* magic = "orvacal-grid";

    static QJsonObject data_json(const QVariant& v) {
        return QJsonObject{{QStringLiteral("type"), QString::fromLatin1(v.metaType().name())},
                           {QStringLiteral("value"), v.toString()}};
    }

    static QVariant data_from(const QJsonObject& o) {
        QVariant v(o.value(QStringLiteral("value")).toString());
        const QMetaType t =
            QMetaType::fromName(o.value(QStringLiteral("type")).toString().toUtf8());
        if (t.isValid() && t.id() != QMetaType::QString) {
            QVariant converted = v;
            if (converted.convert(t)) return converted;
        }
        return v;
    }

    static QJsonArray int_array(const std::vector<int>& v) {
        QJsonArray a;
        for (int x : v)
            a.append(x);
        return a;
    }

    static QJsonArray flags_on(const std::vector<char>& v) {
        QJsonArray a;
        for (size_t i = 0; i < v.size(); ++i)
            if (v[i]) a.append(int(i));
        return a;
    }

    static QJsonDocument save(const Grid& g, GridSave what) {
        const Grid::State& s = g.s_;
        const bool contents = what != GridSave::Format;
        const bool format = what != GridSave::Contents;
        QJsonObject root;
        root[QStringLiteral("format")] = QLatin1String(magic);
        root[QStringLiteral("version")] = Grid::file_version;
        root[QStringLiteral("what")] = int(what);
        root[QStringLiteral("rows")] = s.rows;
        root[QStringLiteral("cols")] = s.cols;
        if (format) {
            root[QStringLiteral("fixed_rows")] = s.fixed_rows;
            root[QStringLiteral("fixed_cols")] = s.fixed_cols;
            root[QStringLiteral("cursor")] = QJsonArray{s.row, s.col, s.row_sel, s.col_sel};
            root[QStringLiteral("top_row")] = g.top_row_;
            root[QStringLiteral("merge_cells")] = int(s.merge);
            root[QStringLiteral("editable")] = s.editable;
            root[QStringLiteral("colors")] =
                QJsonObject{{QStringLiteral("back"), qint64(s.back)},
                            {QStringLiteral("fore"), qint64(s.fore)},
                            {QStringLiteral("back_fixed"), qint64(s.back_fixed)},
                            {QStringLiteral("fore_fixed"), qint64(s.fore_fixed)},
                            {QStringLiteral("grid"), qint64(s.grid_color)}};
            root[QStringLiteral("font")] = QJsonObject{{QStringLiteral("name"), s.font_name},
                                                       {QStringLiteral("size"), s.font_size},
                                                       {QStringLiteral("bold"), s.font_bold},
                                                       {QStringLiteral("italic"), s.font_italic}};
            root[QStringLiteral("col_width")] = int_array(s.col_width);
            root[QStringLiteral("row_height")] = int_array(s.row_height);
            root[QStringLiteral("col_align")] = int_array(s.col_align);
            root[QStringLiteral("row_hidden")] = flags_on(s.row_hidden);
            root[QStringLiteral("col_hidden")] = flags_on(s.col_hidden);
            root[QStringLiteral("merge_row")] = flags_on(s.merge_row);
            root[QStringLiteral("merge_col")] = flags_on(s.merge_col);
        }
        QJsonArray cells;
        for (int r = 0; r < s.rows; ++r) {
            for (int c = 0; c < s.cols; ++c) {
                const Grid::CellData& cd = s.cells[size_t(r) * s.cols + c];
                const Grid::Attrs* a = cd.fmt.get();
                QJsonObject o;
                if (contents && !cd.text.isEmpty()) o[QStringLiteral("text")] = cd.text;
                if (contents && a && a->data.isValid())
                    o[QStringLiteral("data")] = data_json(a->data);
                if (format && a) {
                    if (a->back) o[QStringLiteral("back")] = qint64(*a->back);
                    if (a->fore) o[QStringLiteral("fore")] = qint64(*a->fore);
                    if (!a->picture.isEmpty()) o[QStringLiteral("picture")] = a->picture;
                    if (a->pic_align) o[QStringLiteral("picture_align")] = *a->pic_align;
                    if (a->align) o[QStringLiteral("align")] = *a->align;
                    if (!a->font_name.isEmpty()) o[QStringLiteral("font_name")] = a->font_name;
                    if (a->font_size) o[QStringLiteral("font_size")] = *a->font_size;
                    if (a->bold) o[QStringLiteral("bold")] = *a->bold;
                    if (a->italic) o[QStringLiteral("italic")] = *a->italic;
                    if (a->underline) o[QStringLiteral("underline")] = *a->underline;
                    const CellBorderSpec& b = a->border;
                    if (b != CellBorderSpec{})
                        o[QStringLiteral("border")] =
                            QJsonArray{qint64(b.color), b.left, b.top, b.right, b.bottom};
                }
                if (o.isEmpty()) continue;
                o[QStringLiteral("r")] = r;
                o[QStringLiteral("c")] = c;
                cells.append(o);
            }
        }
        root[QStringLiteral("cells")] = cells;
        return QJsonDocument(root);
    }

    // Builds the grid's next state from the file; false when the file does
    // not hold a grid, so the caller can leave everything as it was.
    static bool load(const QJsonDocument& doc, const Grid& g, GridSave what, Grid::State& next,
                     int& top_row) {
        if (!doc.isObject()) return false;
        const QJsonObject root = doc.object();
        if (root.value(QStringLiteral("format")).toString() != QLatin1String(magic)) return false;
        const int version = root.value(QStringLiteral("version")).toInt(-1);
        if (version < 1 || version > Grid::file_version) return false;
        const int rows = root.value(QStringLiteral("rows")).toInt(-1);
        const int cols = root.value(QStringLiteral("cols")).toInt(-1);
        constexpr qint64 max_cells = 10'000'000;
        if (rows < 0 || cols < 0 || qint64(rows) * cols > max_cells) return false;
        const auto file_what = GridSave(root.value(QStringLiteral("what")).toInt(0));
        const bool contents = what != GridSave::Format && file_what != GridSave::Format;
        const bool format = what != GridSave::Contents && file_what != GridSave::Contents;

        next = g.s_;
        top_row = g.top_row_;
        Grid::resize(next, rows, cols);
        if (contents) {
            for (Grid::CellData& cd : next.cells) {
                cd.text.clear();
                if (cd.fmt) cd.fmt->data = QVariant();
            }
        }
        if (format) {
            const Grid::State fresh;
            for (Grid::CellData& cd : next.cells)
                if (cd.fmt) cd.fmt->clear_format();
            next.fixed_rows = std::clamp(root.value(QStringLiteral("fixed_rows")).toInt(), 0, rows);
            next.fixed_cols = std::clamp(root.value(QStringLiteral("fixed_cols")).toInt(), 0, cols);
            const QJsonArray cur = root.value(QStringLiteral("cursor")).toArray();
            next.row = cur.at(0).toInt(-1);
            next.col = cur.at(1).toInt(-1);
            next.row_sel = cur.at(2).toInt(-1);
            next.col_sel = cur.at(3).toInt(-1);
            top_row = root.value(QStringLiteral("top_row")).toInt(0);
            const int merge = root.value(QStringLiteral("merge_cells")).toInt(0);
            if (merge < 0 || merge > int(MergeMode::RestrictAll)) return false;
            next.merge = MergeMode(merge);
            next.editable = root.value(QStringLiteral("editable")).toBool();
            const QJsonObject colors = root.value(QStringLiteral("colors")).toObject();
            auto color = [&](const char* key, Color dflt) {
                return Color(colors.value(QLatin1String(key)).toInteger(dflt) & 0xFFFFFF);
            };
            next.back = color("back", fresh.back);
            next.fore = color("fore", fresh.fore);
            next.back_fixed = color("back_fixed", fresh.back_fixed);
            next.fore_fixed = color("fore_fixed", fresh.fore_fixed);
            next.grid_color = color("grid", fresh.grid_color);
            const QJsonObject font = root.value(QStringLiteral("font")).toObject();
            next.font_name = font.value(QStringLiteral("name")).toString(fresh.font_name);
            next.font_size = font.value(QStringLiteral("size")).toDouble(fresh.font_size);
            next.font_bold = font.value(QStringLiteral("bold")).toBool();
            next.font_italic = font.value(QStringLiteral("italic")).toBool();
            auto ints = [&](const char* key, std::vector<int>& out, int dflt) {
                const QJsonArray a = root.value(QLatin1String(key)).toArray();
                for (size_t i = 0; i < out.size(); ++i)
                    out[i] = i < size_t(a.size()) ? a.at(qsizetype(i)).toInt(dflt) : dflt;
            };
            ints("col_width", next.col_width, -1);
            ints("row_height", next.row_height, -1);
            ints("col_align", next.col_align, int(Align::General));
            auto flags = [&](const char* key, std::vector<char>& out) {
                std::fill(out.begin(), out.end(), 0);
                for (const QJsonValue v : root.value(QLatin1String(key)).toArray()) {
                    const int i = v.toInt(-1);
                    if (i < 0 || size_t(i) >= out.size()) return false;
                    out[size_t(i)] = 1;
                }
                return true;
            };
            if (!flags("row_hidden", next.row_hidden) || !flags("col_hidden", next.col_hidden) ||
                !flags("merge_row", next.merge_row) || !flags("merge_col", next.merge_col))
                return false;
        }
        const QJsonValue cells_value = root.value(QStringLiteral("cells"));
        if (!cells_value.isArray()) return false;
        for (const QJsonValue cv : cells_value.toArray()) {
            const QJsonObject o = cv.toObject();
            const int r = o.value(QStringLiteral("r")).toInt(-1);
            const int c = o.value(QStringLiteral("c")).toInt(-1);
            if (r < 0 || r >= rows || c < 0 || c >= cols) return false;
            Grid::CellData& cd = next.cells[size_t(r) * cols + c];
            if (contents) {
                cd.text = o.value(QStringLiteral("text")).toString();
                if (o.contains(QStringLiteral("data")))
                    cd.attrs().data = data_from(o.value(QStringLiteral("data")).toObject());
            }
            if (!format) continue;
            auto has = [&](const char* key) { return o.contains(QLatin1String(key)); };
            auto val = [&](const char* key) { return o.value(QLatin1String(key)); };
            if (has("back")) cd.attrs().back = Color(val("back").toInteger() & 0xFFFFFF);
            if (has("fore")) cd.attrs().fore = Color(val("fore").toInteger() & 0xFFFFFF);
            if (has("picture")) cd.attrs().picture = val("picture").toString();
            if (has("picture_align")) cd.attrs().pic_align = val("picture_align").toInt();
            if (has("align")) cd.attrs().align = val("align").toInt();
            if (has("font_name")) cd.attrs().font_name = val("font_name").toString();
            if (has("font_size")) cd.attrs().font_size = val("font_size").toDouble();
            if (has("bold")) cd.attrs().bold = val("bold").toBool();
            if (has("italic")) cd.attrs().italic = val("italic").toBool();
            if (has("underline")) cd.attrs().underline = val("underline").toBool();
            if (has("border")) {
                const QJsonArray b = val("border").toArray();
                if (b.size() != 5) return false;
                cd.attrs().border =
                    CellBorderSpec{Color(b.at(0).toInteger() & 0xFFFFFF), b.at(1).toInt(),
                                   b.at(2).toInt(), b.at(3).toInt(), b.at(4).toInt()};
            }
        }
        for (Grid::CellData& cd : next.cells)
            if (cd.fmt && !cd.fmt->data.isValid() && !cd.fmt->has_format()) cd.fmt.reset();
        Grid::fix_cursor(next);
        return true;
    }
};

QByteArray Grid::save_bytes(GridSave what) const {
    return GridFile::save(*this, what).toJson(QJsonDocument::Indented);
}

bool Grid::load_bytes(const QByteArray& bytes, GridSave what) {
    QJsonParseError pe{};
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &pe);
    State next;
    int top_row = 0;
    if (pe.error != QJsonParseError::NoError || !GridFile::load(doc, *this, what, next, top_row)) {
        fail(err::bad_file);
        return false;
    }
    s_ = std::move(next);
    top_row_ = std::clamp(top_row, 0, std::max(s_.rows - 1, 0));
    ++scroll_serial_;
    touch();
    return true;
}

bool Grid::SaveGrid(const QString& path, GridSave what) const {
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly)) {
        fail(err::bad_file);
        return false;
    }
    f.write(save_bytes(what));
    if (!f.commit()) {
        fail(err::io);
        return false;
    }
    return true;
}

bool Grid::LoadGrid(const QString& path, GridSave what) {
    QFile f(path);
    if (!f.exists()) {
        fail(err::not_found);
        return false;
    }
    if (!f.open(QIODevice::ReadOnly)) {
        fail(err::bad_file);
        return false;
    }
    return load_bytes(f.readAll(), what);
}

} // namespace orva
