#include "views/day_view.h"

#include "appointments/delete_copy.h"
#include "appointments/stickers.h"
#include "core/clock.h"
#include "core/modal.h"
#include "state/options.h"
#include "store/calendar_file.h"
#include "views/detail_pane.h"
#include "views/navigator.h"
#include "views/refresh.h"
#include "views/status.h"

#include <QLocale>
#include <algorithm>

namespace orva {
namespace {

constexpr int untimed_height = 800;       // twips, row 0
constexpr int small_font_height = 270;    // half-hour rows up to size 10
constexpr int large_font_height = 400;    // above size 10
constexpr int label_col_max = 3200;       // twips
constexpr int spare_col_width = 320;      // the free column right of the last used
constexpr int scroll_bar_allowance = 420; // twips kept free of appointment columns
constexpr int inner_line = 500;           // inner lines of a block's box

QString data_of(const Grid& g, int row, int col) {
    return g.Cell(CellSetting::Data, row, col).toString();
}

// The text a block shows: with "Show Times" the start in front, `gap` blanks
// apart (three for a fill, four for a typed entry, as the program always had).
QString block_text(const OptionsState& options, const QString& start, const QString& text,
                   int gap) {
    QString out = options.menus.mnuShowTimes ? format_field_ampm(start, false) +
                                                   QString(gap, QLatin1Char(' ')) + rtrim(text)
                                             : rtrim(text);
    return out.isEmpty() ? QStringLiteral(" ") : out;
}

// Picture of a sticker key, or none when no picture answers to it.
QVariant picture_of(const QString& type) {
    const QString key = rtrim(type);
    if (key.isEmpty() || picture_emoji(key).isEmpty()) return QVariant();
    return key;
}

void set_block_controls(PlannerState& view, bool on) {
    for (const char* n :
         {"imgDtlAppt", "imgDtlNote", "prtdtlImg", "mnuEditA", "mnudelete", "mnuCopy"})
        view.ctl(QString::fromLatin1(n)).enabled = on;
}

// The day rebuilt around a change already in appt_tbl; the navigator keeps
// its selected cell.
void refill_after_quick(Shared& store, PlannerState& view, const OptionsState& options,
                        EditorState& editing, const QString& id, int& row, int& col) {
    const qint16 sel_row = view.cal_sel_row, sel_col = view.cal_sel_col;
    Color sel_back = 0;
    const bool had_sel = sel_row > 0 && sel_row < view.Cal.Rows() && sel_col < view.Cal.Cols();
    if (had_sel) sel_back = view.Cal.Cell(CellSetting::BackColor, sel_row, sel_col).toUInt();

    view.vsSched.setRedraw(0);
    view.vsSched.Clear();
    build_day_rows(view, options);
    format_day_grid(view);
    view.first_row.clear();
    view.first_col.clear();
    editing.edit_date = store.cur_date;
    fill_day_find(store, view, options, editing, id, row, col);
    fill_cal(store, view, store.cur_date);
    if (had_sel) {
        view.cal_sel_row = sel_row;
        view.cal_sel_col = sel_col;
        view.Cal.setCell(CellSetting::BackColor, sel_row, sel_col, sel_back);
    }
    view.vsSched.setRedraw(2);
}

} // namespace

QString day_row_label(int row) {
    if (row <= 0) return QStringLiteral(" ");
    const int half = (row - 1) % 2;
    const int hour24 = (row - 1) / 2;
    const int hour12 = hour24 % 12 == 0 ? 12 : hour24 % 12;
    return QStringLiteral(" %1:%2 %3")
        .arg(hour12, 2, 10, QLatin1Char('0'))
        .arg(half ? QStringLiteral("30") : QStringLiteral("00"))
        .arg(hour24 < 12 ? QStringLiteral("am") : QStringLiteral("pm"));
}

QString format_h_mm_ampm(const QTime& t) {
    const int h12 = t.hour() % 12 == 0 ? 12 : t.hour() % 12;
    return QStringLiteral("%1:%2 %3")
        .arg(h12)
        .arg(t.minute(), 2, 10, QLatin1Char('0'))
        .arg(t.hour() < 12 ? QStringLiteral("am") : QStringLiteral("pm"));
}

QString format_hh_mm_ampm(const QTime& t) {
    const int h12 = t.hour() % 12 == 0 ? 12 : t.hour() % 12;
    return QStringLiteral("%1:%2 %3")
        .arg(h12, 2, 10, QLatin1Char('0'))
        .arg(t.minute(), 2, 10, QLatin1Char('0'))
        .arg(t.hour() < 12 ? QStringLiteral("am") : QStringLiteral("pm"));
}

QString format_field_ampm(const QString& field, bool two_digit_hour) {
    const QTime t = hhmm_to_time(field);
    if (!t.isValid()) return field;
    return two_digit_hour ? format_hh_mm_ampm(t) : format_h_mm_ampm(t);
}

QString long_date_label(const QDate& d) {
    return QStringLiteral("  ") + QLocale().toString(d, QLocale::LongFormat);
}

int start_slot(const QString& t) {
    const QTime x = hhmm_to_time(t);
    if (!x.isValid()) return 0;
    return x.hour() * 2 + 1 + (x.minute() > 29 ? 1 : 0);
}

int end_slot(const QString& end, const QString& start) {
    const QTime e = hhmm_to_time(end);
    if (!e.isValid()) return 0;
    const QTime st = hhmm_to_time(start);
    const int d = st.isValid() ? st.secsTo(e) / 60 : 0;
    const int m = e.minute();
    const int h2 = e.hour() * 2;
    if (m == 0) return d == 0 ? h2 + 1 : h2;
    if (m == 30) return d == 0 ? h2 + 2 : h2 + 1;
    return m < 30 ? h2 + 1 : h2 + 2;
}

double grid_font_points(const OptionsState& options) {
    bool ok = false;
    const double pt = options.grid_font_size.toDouble(&ok);
    return ok && pt > 0 ? pt : 9;
}

void apply_grid_font(const OptionsState& options, Grid& g) {
    if (!options.grid_font_name.isEmpty()) g.setFontName(options.grid_font_name);
    g.setFontSize(grid_font_points(options));
    g.setFontBold(options.grid_font_bold);
    g.setFontItalic(options.grid_font_italic);
}

void set_sched_font(PlannerState& view, const OptionsState& options) {
    apply_grid_font(options, view.vsSched);
    if (const auto fore = font_color(options)) view.vsSched.setForeColor(*fore);
}

void build_day_rows(PlannerState& view, const OptionsState& options) {
    Grid& g = view.vsSched;
    g.setRows(0);
    g.setCols(day_cols);
    g.setFixedRows(0);
    g.setFixedCols(1);
    for (int r = 0; r < day_rows; ++r) {
        g.AddItem(day_row_label(r));
        for (int c = 1; c < day_cols; c += 2)
            g.setCell(CellSetting::Data, r, c, blank_data);
    }
    const double pt = grid_font_points(options);
    const QString font = options.grid_font_name.isEmpty() ? g.FontName() : options.grid_font_name;
    g.setCell(CellSetting::FontName, 0, 0, day_rows - 1, day_cols - 1, font);
    g.setCell(CellSetting::FontSize, 0, 0, day_rows - 1, day_cols - 1, pt);
    g.setCell(CellSetting::FontBold, 0, 0, day_rows - 1, day_cols - 1, options.grid_font_bold);
    g.setColAlignment(0, Align::RightCenter);
    g.setRowHeight(0, untimed_height);
    const int h = pt <= 10 ? small_font_height : large_font_height;
    for (int r = 1; r < day_rows; ++r)
        g.setRowHeight(r, h);
    for (int c = 1; c < day_cols; c += 2)
        g.setColWidth(c, view.blankColWidth);
    g.AutoSize(0);
    if (g.ColWidth(0) > label_col_max) g.setColWidth(0, label_col_max);
    g.setTopRow(scroll_row);
}

void format_day_grid(PlannerState& view) {
    Grid& g = view.vsSched;
    if (g.Cols() < day_cols) g.setCols(day_cols);
    g.setFixedCols(1);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(0, true);
    for (int c = 2; c < day_cols; c += 2)
        g.setMergeCol(c, true);
    for (int c = 1; c < day_cols; ++c)
        g.setColHidden(c, true);
    g.setColHidden(1, false);
    g.setColHidden(2, false);
    g.setEditable(true);
}

void place_appt(PlannerState& view, const OptionsState& options, const QString& start,
                const QString& end, const QString& id, const QString& type, const QString& text,
                int index, QString& first_row, QString& first_col) {
    Q_UNUSED(id);
    Grid& g = view.vsSched;
    // A start that is no time leaves the block without one: it lies in the
    // untimed row, whatever its end says.
    const bool timed = hhmm_to_time(start).isValid();
    const int st = timed ? start_slot(start) : 0;
    const int en = timed ? end_slot(end, start) : 0;

    // A column is taken only when the whole range is free in it; spacers are
    // opened on the way, which is what widens the grid to the right.
    int col = -1;
    for (int c = 1; c < g.Cols() && col < 0; ++c) {
        for (int r = st; r <= en; ++r) {
            const QString d = data_of(g, r, c);
            if (d.isEmpty()) {
                if (r == en) {
                    col = c;
                    break;
                }
                continue;
            }
            if (d == blank_data) g.setColHidden(c, false);
            break;
        }
    }
    if (col >= 0) view.slot_col = qint16(col);
    // Nothing free: the block goes over the last column used. Before any
    // placement there is none, and the label column must never be written.
    if (col < 0) col = view.slot_col >= 2 ? view.slot_col : 2;
    view.slot_row = qint16(st);

    g.Select(st, col, en, col);
    if (first_row.isEmpty()) {
        first_row = QString::number(st);
        first_col = QString::number(col);
        if (st != 0 && st < g.TopRow()) g.setTopRow(st);
    }
    view.cur_row = qint16(st);
    view.cur_col = qint16(col);
    if (st != 0) g.CellBorder(block_border_color, 1, 1, 1, 1, inner_line, inner_line);

    QString shown = block_text(options, start, text, 3);
    // Two equal texts that touch would merge into one cell.
    const QString idx = QString::number(index);
    if (st > 0) {
        const QString d = data_of(g, st - 1, col);
        if (!d.isEmpty() && d != idx && g.TextMatrix(st - 1, col) == shown)
            shown.prepend(QLatin1Char(' '));
    }
    if (en + 1 < g.Rows()) {
        const QString d = data_of(g, en + 1, col);
        // The row count test uses the start row, not the end row, as it always has.
        if (!d.isEmpty() && st < g.Rows() - 1 && d != idx && g.TextMatrix(en + 1, col) == shown)
            shown.prepend(QLatin1Char(' '));
    }

    const int r1 = std::min(st, en), r2 = std::max(st, en);
    const QVariant pic = picture_of(type);
    g.setCell(CellSetting::Picture, r1, col, r2, col, pic);
    g.setCell(CellSetting::PictureAlignment, r1, col, r2, col, int(Align::LeftCenter));
    g.setCell(CellSetting::Alignment, r1, col, r2, col, int(Align::CenterCenter));
    g.setCell(CellSetting::Text, r1, col, r2, col, shown);
    if (st != 0) g.setCell(CellSetting::BackColor, r1, col, r2, col, options.appt_back_color);
    g.setCell(CellSetting::Data, r1, col, r2, col, index);

    if (col + 1 < g.Cols()) g.setColHidden(col + 1, false);
    if (col + 2 < g.Cols()) g.setColHidden(col + 2, false);
    set_sched_font(view, options);
}

namespace {

// The lines of one day in the order of the day: by the text of appt_start,
// then appt_id; blank starts first. The table keeps the order of the file.
// Only rows of appt_tbl that exist come back.
std::vector<int> day_order(const Shared& store, PlannerState& view,
                           const std::function<bool(const appt_rec&)>& on_day) {
    Grid& sg = view.vsSortGrid;
    sg.setRows(0);
    sg.setCols(3);
    sg.setFixedRows(0);
    sg.setFixedCols(0);
    sg.Clear();
    for (int i = 1; i <= store.appt_count; ++i) {
        const appt_rec* a = store.appt_row(i);
        if (!a || !on_day(*a)) continue;
        // Cell by cell, not as one tab-joined line: a tab may stand in any
        // field, and split there it would shift the row number out of its
        // column.
        const int r = sg.Rows();
        sg.setRows(r + 1);
        sg.setTextMatrix(r, 0, a->appt_start.str());
        sg.setTextMatrix(r, 1, a->appt_id.str());
        sg.setTextMatrix(r, 2, QString::number(i));
    }
    std::vector<int> out;
    if (sg.Rows() == 0) return out;
    sg.Select(0, 0, sg.Rows() - 1, 1);
    sg.Sort(SortOrder::StringAscending);
    for (int r = 0; r < sg.Rows(); ++r) {
        const int i = sg.TextMatrix(r, 2).toInt();
        if (store.appt_row(i)) out.push_back(i);
    }
    return out;
}

} // namespace

void fill_day(const Shared& store, PlannerState& view, const OptionsState& options) {
    view.day_appts = 0;
    const QString day = store.cur_date.toString(QStringLiteral("MMddyyyy"));
    for (int i :
         day_order(store, view, [&](const appt_rec& a) { return a.appt_date.str() == day; })) {
        const appt_rec& a = *store.appt_row(i);
        place_appt(view, options, a.appt_start, a.appt_end, a.appt_id, a.appt_type, a.appt_text, i,
                   view.first_row, view.first_col);
        ++view.day_appts;
    }
    show_status(store, view);
}

void fill_day_find(const Shared& store, PlannerState& view, const OptionsState& options,
                   const EditorState& editing, const QString& id, int& row, int& col) {
    view.day_appts = 0;
    const QDate day = editing.edit_date;
    const QString key = id.trimmed();
    for (int i : day_order(store, view,
                           [&](const appt_rec& a) { return text_to_date(a.appt_date) == day; })) {
        const appt_rec& a = *store.appt_row(i);
        place_appt(view, options, a.appt_start, a.appt_end, a.appt_id, a.appt_type, a.appt_text, i,
                   view.first_row, view.first_col);
        ++view.day_appts;
        if (a.appt_id.trimmed() == key) {
            row = view.cur_row;
            col = view.cur_col;
        }
    }
    size_sched_cols(view);
    set_sched_font(view, options);
    show_status(store, view);
}

void size_sched_cols(PlannerState& view) {
    Grid& g = view.vsSched;
    int bcolcnt = 0, colcnt = 0;
    for (int c = 1; c < g.Cols(); ++c) {
        if (g.ColHidden(c)) continue;
        if (g.ColWidth(c) == view.blankColWidth)
            ++bcolcnt;
        else
            ++colcnt;
    }
    const int fixed = g.ColWidth(0) + view.blankColWidth * bcolcnt + scroll_bar_allowance;
    if (colcnt <= 1) {
        // An empty day: its one free column takes the width, so there is
        // room to type; there is no used column for a spare to follow.
        const int w = g.Width() - fixed;
        if (w > view.blankColWidth)
            for (int c = 1; c < g.Cols(); ++c)
                if (!g.ColHidden(c) && g.ColWidth(c) != view.blankColWidth) g.setColWidth(c, w);
        return;
    }
    const int divisor = std::min(colcnt - 1, 3);
    const int last = colcnt - 1 + bcolcnt;
    const int w = (g.Width() - fixed) / divisor;
    for (int c = 1; c <= last && c < g.Cols(); ++c)
        if (g.ColWidth(c) > view.blankColWidth && w > view.blankColWidth) g.setColWidth(c, w);
    if (last + 1 < g.Cols()) g.setColWidth(last + 1, spare_col_width);
}

void mark_now_row(PlannerState& view) {
    Grid& g = view.vsSched;
    view.now_row = qint16(start_slot(clock().now().time().toString(QStringLiteral("HH:mm"))));
    for (int c = 1; c < g.Cols(); ++c) {
        if (view.now_row_old >= 0 && view.now_row_old < g.Rows() &&
            g.TextMatrix(view.now_row_old, c).isEmpty())
            g.setCell(CellSetting::BackColor, view.now_row_old, c, g.BackColor());
    }
    for (int c = 1; c < g.Cols(); ++c) {
        if (view.now_row < g.Rows() && g.TextMatrix(view.now_row, c).isEmpty())
            g.setCell(CellSetting::BackColor, view.now_row, c, view.now_color);
    }
    view.now_row_old = view.now_row;
}

void sched_tip(const Shared& store, PlannerState& view, int row, int col) {
    Grid& g = view.vsSched;
    if (row > -1 && row < g.Rows() && col >= 0 && col < g.Cols()) {
        const QString d = data_of(g, row, col);
        if (!d.isEmpty() && d != blank_data) {
            if (const appt_rec* a = store.appt_row(d.toInt())) {
                g.setToolTipText(format_field_ampm(a->appt_start, false) + QStringLiteral(" - ") +
                                 format_field_ampm(a->appt_end, false) + QStringLiteral("  ") +
                                 rtrim(a->appt_text));
                return;
            }
        }
    }
    g.setToolTipText(QString());
}

void quick_appt_rec(Shared& store, const PlannerState& view, int index, const QString& id, int row,
                    int col) {
    appt_rec* a = store.appt_row(index);
    if (!a) return;
    fill_quick_row(*a, store.cur_date, id, view.vsSched.TextMatrix(row, col));
    if (row == 0) {
        a->appt_start.blank();
        a->appt_end.blank();
    } else {
        const QString label = view.vsSched.TextMatrix(row, 0);
        QString five = label.mid(1, 5);
        if (label.mid(7, 2).toUpper() == u"AM") {
            if (five == u"12:00") five = QStringLiteral("00:00");
            if (five == u"12:30") five = QStringLiteral("00:30");
            a->appt_start = five;
            a->appt_end = five;
        } else {
            const QTime t = hhmm_to_time(five);
            const QTime pm = t.isValid() && t.hour() < 12 ? t.addSecs(12 * 3600) : t;
            const QString hhmm = pm.toString(QStringLiteral("HH:mm"));
            a->appt_start = hhmm;
            a->appt_end = hhmm;
        }
    }
}

void fill_quick_row(appt_rec& a, const QDate& day, const QString& id, const QString& text) {
    const QString date = day.toString(QStringLiteral("MMddyyyy"));
    a.appt_first_date = date;
    a.appt_date = date;
    a.appt_id = id;
    a.appt_text = text;
    a.appt_type = QStringLiteral("0");
    a.appt_occurs = number_field(0);
    a.appt_occurs_month = QStringLiteral("0");
    a.appt_occurs_every = number_field(0);
    a.appt_until = day.toString(QStringLiteral("MM/dd/yy")).replace(u'-', u'/');
    a.appt_rem_lead = number_field(0);
    a.appt_rem_unit = number_field(0);
    a.appt_rem_anim = number_field(1);
    a.appt_rem_text.blank();
    a.appt_notes.blank();
    a.appt_pattern = QStringLiteral("1 ");
}

void set_label1(PlannerState& view, WindowPort& w, const QDate& d) {
    set_label1_text(view, w, long_date_label(d));
}

void set_label1_text(PlannerState& view, WindowPort& w, const QString& text) {
    view.ctl(QStringLiteral("Label1")).text = text;
    w.show_long_date(text);
}

void fill_day_core(const Shared& store, PlannerState& view, const OptionsState& options,
                   EditorState& editing) {
    view.first_row.clear();
    view.first_col.clear();
    fill_day(store, view, options);
    view.day_filled = true;
    size_sched_cols(view);
    show_first_block(store, view, options, editing);
}

void rebuild_day(const Shared& store, PlannerState& view, const OptionsState& options,
                 EditorState& editing) {
    view.vsSched.Clear();
    format_day_grid(view);
    build_day_rows(view, options);
    fill_day_core(store, view, options, editing);
    mark_now_row(view);
    fill_cal(store, view, store.cur_date);
    mark_cur_day(store, view);
}

void show_first_block(const Shared& store, PlannerState& view, const OptionsState& options,
                      EditorState& editing) {
    if (view.tab_key != u"appt") return;
    view.ctl(QStringLiteral("Frame2")).visible = true;
    if (!view.first_row.isEmpty()) {
        view.cur_row = qint16(view.first_row.toInt());
        view.cur_col = qint16(view.first_col.toInt());
        show_detail(store, view, options, editing, view.cur_row, view.cur_col);
    }
}

void imageDay_Click(Shared& store, PlannerState& view, OptionsState& options, EditorState& editing,
                    WindowPort& w) {
    const bool switching = !view.ctl(QStringLiteral("vsSched")).visible || !view.view_day;
    view.view_week = false;
    view.view_month = false;
    view.view_day = true;

    view.Cal.setRedraw(0);
    view.vsSched.setRedraw(0);
    view.Cal.Clear();
    view.vsSched.Clear();
    clear_detail(view);
    docombos(store, view);
    build_day_rows(view, options);
    format_day_grid(view);
    fill_cal(store, view, store.cur_date);
    fill_day_core(store, view, options, editing);
    set_label1(view, w, store.cur_date);

    view.now_row = qint16(start_slot(clock().now().time().toString(QStringLiteral("HH:mm"))));
    view.now_row_old = view.now_row;
    mark_now_row(view);
    mark_cur_day(store, view);

    if (switching) {
        view.ctl(QStringLiteral("mnuColor")).enabled = true;
        view.vsOvervw.setRedraw(0);
        w.layout_view();
        for (const char* n : {"Cal", "vsSched", "TabStrip1", "imgRem", "imgSkins", "imgTlist",
                              "imgTzone", "Label11", "Label18", "Label10", "Label12", "Frame1"})
            view.ctl(QString::fromLatin1(n)).visible = true;
        view.ctl(QStringLiteral("vsOvervw")).visible = false;
        w.show_day_view();
    }
    view.vsSched.setRedraw(2);
    view.Cal.setRedraw(2);
    save_options(store, view, options, w);
    show_status(store, view);
}

void vsSched_Click(const Shared& store, PlannerState& view, const OptionsState& options,
                   EditorState& editing, int row, int col) {
    view.cur_row = qint16(row);
    view.cur_col = qint16(col);
    const Grid& g = view.vsSched;
    const QString d = row >= 0 && col >= 0 ? data_of(g, row, col) : QString();
    if (d.isEmpty() || d == blank_data) {
        view.vsDtl.Clear();
        view.ctl(QStringLiteral("rtNotes")).text = QStringLiteral(" ");
        set_block_controls(view, false);
        if (d.isEmpty()) editing.new_appt = true;
        view.ctl(QStringLiteral("Frame2")).text = row >= 0 ? g.TextMatrix(row, 0) : QString();
    } else {
        set_block_controls(view, true);
        view.ctl(QStringLiteral("imgDtlPrior")).enabled = true;
        view.ctl(QStringLiteral("imgDtlNext")).enabled = true;
        editing.new_appt = false;
        show_detail(store, view, options, editing, view.cur_row, view.cur_col);
    }
    show_status(store, view);
}

void hand_over_new(Shared& store, EditorState& editing) {
    editing.new_appt = true;
    editing.rem_lead = 0;
    editing.rem_unit = 0;
    editing.rem_anim = 1;
    editing.edit_index = 0;
    editing.edit_date = store.cur_date;
}

void sched_hand_over(Shared& store, const PlannerState& view, EditorState& editing, int row,
                     int col) {
    const Grid& g = view.vsSched;
    editing.edit_start = row > 0 ? g.TextMatrix(row, 0) : QStringLiteral(" ");
    const QString d = data_of(g, row, col);
    if (d.isEmpty()) {
        hand_over_new(store, editing);
    } else {
        editing.new_appt = false;
        editing.edit_index = d.toInt();
    }
}

void open_editor(EditorState& editing, RunState& run) {
    run.timer1_enabled = false;
    editing.appt_from_planner = true;
    // No restart here: a save switches the tick on again in its closing step,
    // while Cancel leaves it off until the next event that enables it.
    modal().open_form(QStringLiteral("frmAppt1"));
}

void vsSched_DblClick(Shared& store, const PlannerState& view, EditorState& editing, RunState& run,
                      int row, int col) {
    if (store.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Warning);
        return;
    }
    if (row < 0 || col < 1) return;
    if (data_of(view.vsSched, row, col) == blank_data) return;
    run.timer1_enabled = false;
    sched_hand_over(store, view, editing, row, col);
    open_editor(editing, run);
}

bool vsSched_BeforeEdit(PlannerState& view, int row, int col) {
    Grid& g = view.vsSched;
    if (row < 0 || col < 1) return true;
    const QString d = data_of(g, row, col);
    if (d == blank_data) {
        if (col + 1 < g.Cols() && data_of(g, row, col + 1).isEmpty()) {
            // Typing that starts on a spacer belongs in the column beside it.
            g.setColHidden(col + 1, false);
            g.Select(row, col + 1);
            return true;
        }
        modal().message(dbl_click_to_edit_text, MsgStyle::Information);
        return true;
    }
    if (!d.isEmpty()) {
        modal().message(dbl_click_to_edit_text, MsgStyle::Information);
        return true;
    }
    return false;
}

void vsSched_AfterEdit(AppState& s, WindowPort& w, int row, int col, const QString& before) {
    Q_UNUSED(w);
    Grid& g = s.vsSched;
    if (s.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Warning);
        g.setTextMatrix(row, col, QString());
        return;
    }
    const QString typed = g.TextMatrix(row, col);
    if (typed.isEmpty() || typed == u" " || typed == before) return;

    s.timer1_enabled = false;
    ++s.appt_count;
    const int index = s.appt_count;
    const QString id = new_appt_id();
    quick_appt_rec(s.store(), s.view(), index, id, row, col);
    g.setCell(CellSetting::Data, row, col, index);
    s.quick_left = g.ColPos(col);
    s.quick_top = g.RowPos(row);
    modal().open_form(QStringLiteral("frmQuick"));

    appt_rec* a = s.appt_row(index);
    if (a) {
        // The times come back from the form; the block is painted at once so
        // the entry shows where it was typed while the file is written.
        const QString start = a->appt_start, end = a->appt_end;
        const bool timed = hhmm_to_time(start).isValid();
        const int st = timed ? start_slot(start) : 0;
        const int en = timed ? std::max(st, end_slot(end, start)) : st;
        if (st != 0) {
            g.Select(st, col, en, col);
            g.CellBorder(block_border_color, 1, 1, 1, 1, inner_line, inner_line);
        }
        const QString shown = block_text(s, start, a->appt_text, 4);
        for (int r = st; r <= en && r < g.Rows(); ++r) {
            if (!a->appt_type.is_blank())
                g.setCell(CellSetting::Picture, r, col, picture_of(a->appt_type));
            g.setCell(CellSetting::PictureAlignment, r, col, int(Align::LeftCenter));
            g.setCell(CellSetting::Alignment, r, col, int(Align::CenterCenter));
            g.setTextMatrix(r, col, shown);
            if (r > 0) g.setCell(CellSetting::BackColor, r, col, s.appt_back_color);
            g.setCell(CellSetting::Data, r, col, index);
        }
        if (col + 1 < g.Cols()) g.setColHidden(col + 1, false);
        if (col + 2 < g.Cols()) g.setColHidden(col + 2, false);
        size_sched_cols(s);

        {
            Archive::Command command(s.archive, s.cal_path);
            int e = write_appts(s, s.cal_path, append_mode, index);
            if (!e) e = load_appts(s, s.cur_date, s.cal_path, 0);
            command.abort(e);
            if (command.finish() != err::none) {
                // The block painted while the file was written goes with the
                // rebuild: the day shows what the file holds.
                s.new_appt = false;
                report_failed_update(s);
                return;
            }
        }
        int at_row = row, at_col = col;
        refill_after_quick(s.store(), s.view(), s.options(), s.editing(), id, at_row, at_col);
        g.Select(at_row, at_col);
        g.ShowCell(at_row, at_col);
        s.cur_row = qint16(at_row);
        s.cur_col = qint16(at_col);
        set_block_controls(s, true);
        s.new_appt = false;
        show_detail(s.store(), s.view(), s.options(), s.editing(), at_row, at_col);
    }
    s.timer1_enabled = true;
    show_status(s.store(), s.view());
}

bool vsSched_KeyDown(AppState& s, int key) {
    constexpr int key_tab = 0x01000001;    // Qt::Key_Tab
    constexpr int key_delete = 0x01000007; // Qt::Key_Delete
    if (key == key_delete) {
        imageClock_Click(s);
        return true;
    }
    if (key != key_tab) return false;
    Grid& g = s.vsSched;
    if (g.Row() >= 0 && g.Col() >= 1) return false;
    const int now = start_slot(clock().now().time().toString(QStringLiteral("HH:mm")));
    g.Select(now, 2);
    g.ShowCell(now, 2);
    return true;
}

void vsSched_MouseDown(PlannerState& view, int button, int row, int col) {
    Q_UNUSED(row);
    constexpr int left_button = 1;
    if (button == left_button) view.mouse_col_noted = col;
}

void vsSched_MouseUp(PlannerState& view) {
    const Grid& g = view.vsSched;
    view.sel_row1 = g.Row();
    view.sel_col1 = g.Col();
    view.sel_row2 = g.RowSel();
    view.sel_col2 = g.ColSel();
}

void vsSched_MouseMove(const Shared& store, PlannerState& view, const OptionsState& options,
                       int buttons, int row, int col) {
    if (buttons != 0 || !options.menus.mnuTips) return;
    // The column of the last left press decides, not the one under the mouse.
    if (view.mouse_col_noted > 0) sched_tip(store, view, row, col);
}

} // namespace orva
