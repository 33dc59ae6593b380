#include "grid/grid.h"
#include "grid/grid_internal.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QMetaType>
#include <QSaveFile>
#include <algorithm>
#include <utility>

namespace orva {

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
            root[QStringLiteral("word_wrap")] = s.word_wrap;
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
            // Written only when in use, so that grids without them keep the
            // bytes they always had and a member saved again is not rewritten.
            if (std::any_of(s.col_type.begin(), s.col_type.end(), [](int t) { return t != 0; }))
                root[QStringLiteral("col_type")] = int_array(s.col_type);
            if (s.row_height_min > 0) root[QStringLiteral("row_height_min")] = s.row_height_min;
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
        // A file names its size in a few bytes, and every cell, row and column
        // it names is kept in memory and written back on the next save: a
        // hundred bytes asking for millions of rows of no columns would take
        // gigabytes. The grids of this program have a few hundred cells.
        constexpr qint64 max_entries = 1'000'000;
        if (rows < 0 || cols < 0 || qint64(rows) * cols + rows + cols > max_entries) return false;
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
            next.word_wrap = root.value(QStringLiteral("word_wrap")).toBool();
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
            ints("col_type", next.col_type, int(ColType::Text));
            // A type this version does not know shows as text rather than
            // refusing the whole grid.
            for (int& t : next.col_type)
                if (t != int(ColType::Boolean)) t = int(ColType::Text);
            next.row_height_min =
                std::max(root.value(QStringLiteral("row_height_min")).toInt(0), 0);
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
