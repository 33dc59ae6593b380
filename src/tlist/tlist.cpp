#include "tlist/tlist.h"

#include "appointments/appt_editor.h"
#include "core/clock.h"
#include "help/help.h"
#include "help/help_topics.h"
#include "views/day_view.h"

#include <algorithm>

namespace orva {

namespace {

using namespace todo_col;

struct Range {
    int top = -1, left = -1, bottom = -1, right = -1;
    bool valid() const { return top >= 0 && left >= 0; }
};

Range selection(const Grid& g) {
    if (g.Row() < 0 || g.Col() < 0) return {};
    return {std::min(g.Row(), g.RowSel()), std::min(g.Col(), g.ColSel()),
            std::max(g.Row(), g.RowSel()), std::max(g.Col(), g.ColSel())};
}

// The options' font name and size on columns 2 and 3 of a row. A size that
// is no number leaves the cells without one, as fills pass over bad fields.
void options_font(Grid& g, int row, const OptionsState& options) {
    if (row < 0 || row >= g.Rows()) return;
    if (!options.grid_font_name.isEmpty())
        g.setCell(CellSetting::FontName, row, text, row, stamp, options.grid_font_name);
    bool ok = false;
    const double pt = options.grid_font_size.trimmed().toDouble(&ok);
    if (ok && pt > 0) g.setCell(CellSetting::FontSize, row, text, row, stamp, pt);
}

// Columns 2 and 3 fitted to their longest text, but never narrower than
// designed: cut to the longest line, the text column would leave no room to
// type a longer one, and an empty stamp column would all but vanish.
void fit_columns(ToDoForm& f) {
    Grid& g = f.vsToDo;
    g.AutoSize(text, stamp);
    g.setColWidth(text, std::max(g.ColWidth(text), f.text_width));
    g.setColWidth(stamp, std::max(g.ColWidth(stamp), todo_stamp_width));
}

void show_icon(Grid& g, int row, const QString& key) {
    g.setCell(CellSetting::Picture, row, icon, key);
    g.setCell(CellSetting::PictureAlignment, row, icon, int(Align::RightCenter));
}

bool in_sheet(const Grid& g, int row, int col) {
    return row >= 0 && row < g.Rows() && col >= 0 && col < g.Cols();
}

void note_cell(ToDoForm& f) {
    f.row_now = f.vsToDo.Row();
    f.col_now = f.vsToDo.Col();
}

// Leading blanks are a line's level: all of them go at once, so one press
// brings a line of any depth back to the margin.
QString without_level(const QString& line) {
    qsizetype i = 0;
    while (i < line.size() && line[i] == u' ')
        ++i;
    return line.mid(i);
}

void toggle_font(Grid& g, CellSetting s) {
    const Range r = selection(g);
    if (!r.valid()) return;
    const bool on = g.Cell(s, r.top, r.left).toBool();
    g.setCell(s, r.top, r.left, r.bottom, r.right, !on);
}

void delete_rows(Grid& g) {
    const Range r = selection(g);
    if (!r.valid()) return;
    for (int row = r.bottom; row >= r.top; --row)
        g.RemoveItem(row);
    // The sheet keeps its number of rows.
    for (int i = r.top; i <= r.bottom; ++i)
        g.AddItem(QStringLiteral(" \t "));
}

void insert_row(Grid& g, const OptionsState& options) {
    const int row = std::max(g.Row(), -1) + 1;
    g.AddItem(QStringLiteral(" "), row);
    options_font(g, row, options);
    g.setCell(CellSetting::PictureAlignment, row, icon, int(Align::RightCenter));
}

void checkmark(ToDoForm& f) {
    Grid& g = f.vsToDo;
    if (!in_sheet(g, f.row_now, check)) return;
    const bool box = g.CellChecked(f.row_now, check) != CheckBox::None;
    g.setCellChecked(f.row_now, check, box ? CheckBox::None : CheckBox::Unchecked);
}

void color(ToDoForm& f) {
    Grid& g = f.vsToDo;
    if (!in_sheet(g, f.row_now, f.col_now)) return;
    quint32 c = g.Cell(CellSetting::ForeColor, f.row_now, f.col_now).toUInt();
    if (!modal().choose_color(c)) return;
    g.setCell(CellSetting::ForeColor, f.row_now, f.col_now, QVariant::fromValue<Color>(c));
}

} // namespace

QString todo_stamp() {
    const QDateTime now = clock().now();
    return short_date_text(now.date()) + u' ' + format_hh_mm_ampm(now.time()).toUpper();
}

int todo_picture_number(const QString& key) {
    if (key.isEmpty()) return 0;
    const auto& table = sticker_table();
    for (size_t i = 0; i < table.size(); ++i)
        if (table[i].key == key) return int(i) + 1;
    return 0;
}

QString todo_picture_key(const QString& cell) {
    bool ok = false;
    const int n = cell.trimmed().toInt(&ok);
    const auto& table = sticker_table();
    if (!ok || n < 0 || size_t(n) >= table.size()) return {};
    return table[size_t(n)].key;
}

void frmToDo_Load(Shared& store, PlannerState& view, const OptionsState& options, ToDoForm& f) {
    Grid& g = f.vsToDo;
    g.setRedraw(0);
    QByteArray bytes;
    // No calendar, no member yet, or a member the grid cannot read: the
    // sheet stays empty and becomes a new one below.
    if (!store.cal_path.isEmpty() && store.archive.get(store.cal_path, todo_member, bytes) == 0)
        g.load_bytes(bytes);
    store.archive.clear_error();
    g.clear_error();

    g.setCols(todo_col::count);
    g.setFixedRows(0);
    g.setFixedCols(0);
    g.setBackColor(rgb(255, 255, 255));
    g.setRowHeightMin(todo_row_height);
    g.setColDataType(check, ColType::Boolean);
    const int width = g.Width() > 0 ? g.Width() : todo_grid_width;
    f.text_width = width / 2 + 200;
    g.setColWidth(check, 400);
    g.setColWidth(icon, 400);
    g.setColWidth(text, f.text_width);
    g.setColWidth(stamp, todo_stamp_width);
    g.setColHidden(picture, true);
    if (!options.grid_font_name.isEmpty()) g.setFontName(options.grid_font_name);
    bool ok = false;
    const double pt = options.grid_font_size.trimmed().toDouble(&ok);
    if (ok && pt > 0) g.setFontSize(pt);

    fill_stickers(f.typeIcombo, QStringLiteral("frmToDo"));
    f.typeIcombo.list_index = 0;

    if (g.Rows() == 0) {
        g.setRows(todo_new_rows);
        g.setTextMatrix(1, text, todo_first_line);
    }
    for (int row = g.Rows() - 1; row >= 0; --row) {
        options_font(g, row, options);
        const QString key = todo_picture_key(g.TextMatrix(row, picture));
        if (!key.isEmpty()) show_icon(g, row, key);
    }
    fit_columns(f);
    g.setEditable(true);
    g.Select(0, text);
    note_cell(f);
    g.setRedraw(2);
    view.ctl(QStringLiteral("mnuTlist")).enabled = false;
}

int save_todo(Shared& store, const Grid& sheet) {
    if (store.cal_path.isEmpty()) return err::not_found;
    Archive::Command command(store.archive, store.cal_path);
    const int put = store.archive.put(store.cal_path, todo_member, sheet.save_bytes());
    const int finished = command.finish();
    return put ? put : finished;
}

int frmToDo_Unload(Shared& store, PlannerState& view, ToDoForm& f) {
    const int e = f.cancelled ? 0 : save_todo(store, f.vsToDo);
    view.ctl(QStringLiteral("mnuTlist")).enabled = true;
    return e;
}

void Command1_Click(ToDoForm& f) {
    f.cancelled = false;
}

void Command2_Click(ToDoForm& f) {
    f.cancelled = true;
}

void Toolbar1_ButtonClick(ToDoForm& f, const OptionsState& options, HelpState& help,
                          const QString& key, ClipText& clip) {
    Grid& g = f.vsToDo;
    const Range sel = selection(g);
    if (key == u"Copy" || key == u"Cut") {
        if (!sel.valid()) return;
        clip.text = g.Clip();
        clip.changed = true;
        if (key == u"Cut")
            g.setCell(CellSetting::Text, sel.top, sel.left, sel.bottom, sel.right, QString());
    } else if (key == u"Paste") {
        // An empty clipboard would wipe the cell under the cursor: nothing to
        // paste is no paste.
        if (!clip.text.isEmpty()) g.setClip(clip.text);
    } else if (key == u"Color") {
        color(f);
    } else if (key == u"Italics") {
        toggle_font(g, CellSetting::FontItalic);
    } else if (key == u"Bold") {
        toggle_font(g, CellSetting::FontBold);
    } else if (key == u"Insert") {
        insert_row(g, options);
    } else if (key == u"Tab Right") {
        for (int row = sel.top; sel.valid() && row <= sel.bottom; ++row)
            g.setTextMatrix(row, text, QStringLiteral("    ") + g.TextMatrix(row, text));
    } else if (key == u"Tab Left") {
        for (int row = sel.top; sel.valid() && row <= sel.bottom; ++row)
            g.setTextMatrix(row, text, without_level(g.TextMatrix(row, text)));
    } else if (key == u"Timestamp") {
        g.setColHidden(stamp, !g.ColHidden(stamp));
    } else if (key == u"Checkmark") {
        checkmark(f);
    } else if (key == u"Delete") {
        delete_rows(g);
    } else if (key == u"Print") {
        print_todo(f);
    } else if (key == u"Help") {
        show_help(help, topic_of_form(QStringLiteral("frmToDo")));
    }
    // "Font Size" stands on the toolbar with no action.
    g.clear_error();
}

bool print_Tsetup(ToDoForm& f) {
    return modal().print_dialog(f.print_setup);
}

void print_todo(ToDoForm& f) {
    Grid& g = f.vsToDo;
    const int row = g.Row(), col = g.Col(), row_sel = g.RowSel(), col_sel = g.ColSel();
    g.setRedraw(0);
    for (int r = g.Rows() - 1; r >= 0; --r)
        if (g.TextMatrix(r, text).isEmpty()) g.setRowHidden(r, true);

    // The heading goes into the text column: the check and icon columns
    // are too narrow to show it.
    g.AddItem(QStringLiteral("\t\t") + f.Label2, 0);
    g.setFixedRows(1);
    for (int c = 0; c < g.Cols(); ++c)
        if (g.Cell(CellSetting::FontSize, 0, c).toDouble() < 14)
            g.setCell(CellSetting::FontSize, 0, c, 14.0);
    g.setCell(CellSetting::FontBold, 0, 0, 0, g.Cols() - 1, true);
    g.AddItem(QString(), 1);

    if (print_Tsetup(f) && f.print) f.print(g, f.print_setup);

    g.RemoveItem(1);
    g.RemoveItem(0);
    g.setFixedRows(0);
    for (int r = 0; r < g.Rows(); ++r)
        g.setRowHidden(r, false);
    if (row >= 0 && col >= 0) g.Select(row, col, row_sel, col_sel);
    g.clear_error();
    g.setRedraw(2);
}

void Image1_Click(ToDoForm& f, const OptionsState& options) {
    Grid& g = f.vsToDo;
    g.AddItem(QStringLiteral(" "));
    const int row = g.Rows() - 1;
    g.setRowHeight(row, todo_row_height);
    options_font(g, row, options);
    g.Select(row, text);
    g.ShowCell(row, text);
    note_cell(f);
}

void typeIcombo_Click(ToDoForm& f) {
    Grid& g = f.vsToDo;
    if (!in_sheet(g, f.row_now, picture)) return;
    const auto& items = f.typeIcombo.items;
    const int i = f.typeIcombo.list_index;
    const QString key = i >= 0 && size_t(i) < items.size() ? items[size_t(i)].key : QString();
    const int number = todo_picture_number(key);
    if (number == 0) {
        g.setTextMatrix(f.row_now, picture, QString());
        g.setCell(CellSetting::Picture, f.row_now, icon, QString());
        return;
    }
    g.setTextMatrix(f.row_now, picture, QString::number(number - 1));
    show_icon(g, f.row_now, key);
}

void vsToDo_EnterCell(ToDoForm& f) {
    Grid& g = f.vsToDo;
    if (g.Row() >= 0 && g.Col() >= 0 && g.Col() < text)
        g.Select(g.Row(), text, g.RowSel(), g.ColSel());
    note_cell(f);
}

void vsToDo_BeforeEdit(ToDoForm& f, int row, int col, bool& cancel) {
    Grid& g = f.vsToDo;
    if (col >= text || !in_sheet(g, row, text)) return;
    g.Select(row, text);
    note_cell(f);
    if (col == icon) cancel = true;
}

void vsToDo_AfterEdit(ToDoForm& f, int row, int col) {
    Q_UNUSED(col);
    Grid& g = f.vsToDo;
    if (!in_sheet(g, row, stamp)) return;
    g.setTextMatrix(row, stamp, todo_stamp());
    fit_columns(f);
}

void vsToDo_BeforeMouseDown(ToDoForm& f, Qt::MouseButton button, bool& cancel) {
    Q_UNUSED(f);
    if (button == Qt::RightButton) cancel = true;
}

} // namespace orva
