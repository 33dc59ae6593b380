#include "grid/grid.h"
#include "grid/grid_internal.h"

#include <QStringList>
#include <algorithm>
#include <optional>
#include <utility>

namespace orva {

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

} // namespace

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

ColType Grid::ColDataType(int col) const {
    if (col < 0 || col >= s_.cols) {
        fail(err::subscript);
        return ColType::Text;
    }
    return ColType(s_.col_type[col]);
}

void Grid::setColDataType(int col, ColType t) {
    if (col < 0 || col >= s_.cols) return fail(err::subscript);
    if (t != ColType::Text && t != ColType::Boolean) return fail(err::bad_value);
    s_.col_type[col] = int(t);
    touch();
}

CheckBox Grid::CellChecked(int row, int col) const {
    if (!check(row, col)) return CheckBox::None;
    if (ColType(s_.col_type[col]) != ColType::Boolean) return CheckBox::None;
    const QString& text = at(row, col).text;
    if (text.trimmed().isEmpty()) return CheckBox::None;
    return text == check_false ? CheckBox::Unchecked : CheckBox::Checked;
}

void Grid::setCellChecked(int row, int col, CheckBox box) {
    if (!check(row, col)) return;
    at(row, col).text = box == CheckBox::None        ? QString()
                        : box == CheckBox::Unchecked ? check_false
                                                     : check_true;
    touch();
}

QString Grid::Clip() const {
    if (s_.row < 0 || s_.col < 0) return {};
    const int r1 = std::min(s_.row, s_.row_sel), r2 = std::max(s_.row, s_.row_sel);
    const int c1 = std::min(s_.col, s_.col_sel), c2 = std::max(s_.col, s_.col_sel);
    QStringList rows;
    for (int r = r1; r <= r2; ++r) {
        QStringList cells;
        for (int c = c1; c <= c2; ++c)
            cells << at(r, c).text;
        rows << cells.join(QLatin1Char('\t'));
    }
    return rows.join(QLatin1Char('\n'));
}

void Grid::setClip(const QString& text) {
    if (s_.row < 0 || s_.col < 0) return;
    const int r1 = std::min(s_.row, s_.row_sel), r2 = std::max(s_.row, s_.row_sel);
    const int c1 = std::min(s_.col, s_.col_sel), c2 = std::max(s_.col, s_.col_sel);
    const bool one_cell = r1 == r2 && c1 == c2;
    const int last_row = one_cell ? s_.rows - 1 : r2;
    const int last_col = one_cell ? s_.cols - 1 : c2;
    QString t = text;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (t.endsWith(QLatin1Char('\n'))) t.chop(1);
    const QStringList lines = t.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size() && r1 + i <= last_row; ++i) {
        const QStringList cells = lines[i].split(QLatin1Char('\t'));
        for (int j = 0; j < cells.size() && c1 + j <= last_col; ++j)
            at(r1 + i, c1 + j).text = cells[j];
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

} // namespace orva
