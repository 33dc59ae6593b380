#include "views/detail_pane.h"

#include "core/modal.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/refresh.h"
#include "views/status.h"

#include <QLocale>
#include <algorithm>

namespace orva {
namespace {

constexpr int dtl_rows = 6;
constexpr int dtl_cols = 2;
constexpr int picture_col_width = 500; // twips
constexpr int min_row_height = 340;    // twips

const QString no_more_text = QStringLiteral("No more appointments to display");
const QString no_prior_text = QStringLiteral("No prior appointments to display");
const QString add_first_text = QStringLiteral("Add an appointment first!");
// The notes box's own copy of the message carries a leading blank.
const QString notes_add_first_text = QStringLiteral(" Add an appointment first!");
const QString use_toolbar_text =
    QStringLiteral(" Click the Edit Appointment button on the toolbar to edit appointments");

QString data_of(const Grid& g, int row, int col) {
    return g.Cell(CellSetting::Data, row, col).toString();
}

// A cell the walk stops at: one that shows an appointment.
bool holds_appt(const Grid& g, int row, int col) {
    const QString d = data_of(g, row, col);
    return !d.isEmpty() && d != blank_data;
}

void set_pictures(PlannerState& view, bool on) {
    for (const char* n : {"imgDtlAppt", "imgDtlNote", "imgDtlPrior", "imgDtlNext", "prtdtlImg"})
        view.ctl(QString::fromLatin1(n)).enabled = on;
}

// Column 1 fits its longest line, but never wider than twice the grid.
void size_text_col(Grid& g) {
    g.AutoSize(1);
    const int limit = 2 * g.Width();
    if (limit > 0 && g.ColWidth(1) > limit) g.setColWidth(1, limit);
}

void set_dtl_font(PlannerState& view, const OptionsState& options) {
    apply_grid_font(options, view.vsDtl);
}

// Row height within its limits: at least 340 twips, at most the grid's own
// height once the layout has given it one.
int limited_height(int grid_height, int h) {
    h = std::max(h, min_row_height);
    if (grid_height > 0) h = std::min(h, grid_height);
    return h;
}
int limited_height(const Grid& g, int h) {
    return limited_height(g.Height(), h);
}

// The walk's common end: the cell goes into the pane and becomes current.
void walk_to(const Shared& store, PlannerState& view, const OptionsState& options,
             EditorState& editing, int row, int col) {
    show_detail(store, view, options, editing, row, col);
    view.vsSched.Select(row, col);
    view.cur_row = qint16(row);
    view.cur_col = qint16(col);
    view.vsSched.ShowCell(row, col);
}

} // namespace

void clear_detail(PlannerState& view) {
    view.ctl(QStringLiteral("Frame2")).text.clear();
    view.vsDtl.Clear();
    view.ctl(QStringLiteral("rtNotes")).text = QStringLiteral(" ");
    set_pictures(view, false);
}

void show_detail(const Shared& store, PlannerState& view, const OptionsState& options,
                 EditorState& editing, int row, int col) {
    if (row == -1) return;
    const Grid& g = view.vsSched;
    const QString d = data_of(g, row, col);
    editing.edit_index = d.toInt();
    if (d.isEmpty()) {
        view.vsDtl.Clear();
        return;
    }
    const appt_rec* a = store.appt_row(editing.edit_index);
    if (a && a->appt_date.str() == store.cur_date.toString(QStringLiteral("MMddyyyy"))) {
        view.ctl(QStringLiteral("Frame2")).text = row > 0 ? g.TextMatrix(row, col) : QString();
        fill_dtl(store, view, options, editing.edit_index, row);
        view.vsSched.Select(view.cur_row, view.cur_col);
    }
    set_dtl_font(view, options);
    size_text_col(view.vsDtl);
}

QString dtl_duration(const QString& start, const QString& end) {
    const QTime t1 = hhmm_to_time(start), t2 = hhmm_to_time(end);
    const int n = t1.isValid() && t2.isValid() ? t1.secsTo(t2) / 60 : 0;
    const int h = n / 60, m = n % 60;
    const QString hs = QString::number(h), ms = QString::number(m);
    // "minutes" also for one minute: the wording was never made singular.
    if (h == 0)
        return m == 0 ? QStringLiteral(" ")
                      : QStringLiteral("     [ ") + ms + QStringLiteral(" minutes ]");
    const QString unit = h == 1 ? QStringLiteral(" hour") : QStringLiteral(" hours");
    if (m == 0) return QStringLiteral("     [ ") + hs + unit + QStringLiteral(" ] ");
    return QStringLiteral("     [ ") + hs + unit + QStringLiteral("  ") + ms +
           QStringLiteral(" minutes ]");
}

QString dtl_time_line(const appt_rec& a, int grid_row) {
    if (grid_row == 0) return QStringLiteral("Not timed ");
    return format_hh_mm_ampm(hhmm_to_time(a.appt_start)) + QStringLiteral("  -  ") +
           format_hh_mm_ampm(hhmm_to_time(a.appt_end)) + dtl_duration(a.appt_start, a.appt_end);
}

QString dtl_reminder_line(const Shared& store, const appt_rec& a) {
    if (field_number(a.appt_rem_lead, 0) <= 0) return QStringLiteral(" No reminders ");
    QString date, time, status = QStringLiteral("expired");
    for (int r = 1; r <= store.rmdr_count; ++r) {
        const rmdr_rec* m = store.rmdr_row(r);
        if (!m) break;
        if (m->rmdr_id.str() != a.appt_id.str() || m->rmdr_appt_date.str() != a.appt_date.str())
            continue;
        date = QLocale().toString(short_to_date(m->rmdr_date), QLocale::ShortFormat);
        const QTime t = hhmm_to_time(m->rmdr_time);
        if (t.isValid()) time = format_hh_mm_ampm(t);
        if (m->rmdr_fired.str() == u"F") status = QStringLiteral("active");
        break;
    }
    return QStringLiteral("Reminder set for :   ") + date + QStringLiteral("  @  ") + time +
           QStringLiteral("  (") + status + QStringLiteral(")");
}

QString dtl_count_line(const Shared& store, const appt_rec& a) {
    // Every row loaded counts, so after a spanning week two months add up.
    int n = 0;
    for (int r = 1; r <= store.appt_count; ++r) {
        const appt_rec* x = store.appt_row(r);
        if (!x) break;
        if (x->appt_id == a.appt_id) ++n;
    }
    return QStringLiteral(" Appointment occurs ") + QString::number(n) +
           (n < 2 ? QStringLiteral(" time this month") : QStringLiteral(" times this month"));
}

void fill_dtl(const Shared& store, PlannerState& view, const OptionsState& options, int index,
              int row) {
    const appt_rec* a = store.appt_row(index);
    if (!a) return;
    Grid& g = view.vsDtl;
    g.setRows(0);
    g.setCols(dtl_cols);
    g.setFixedRows(0);
    g.setFixedCols(0);
    g.Clear();
    const QString lines[dtl_rows] = {rtrim(a->appt_text),          dtl_time_line(*a, row),
                                     dtl_reminder_line(store, *a), dtl_count_line(store, *a),
                                     QStringLiteral(" "),          QStringLiteral(" ")};
    // Cell by cell: a tab in the entry's text is part of the text, not the
    // start of another cell.
    g.setRows(dtl_rows);
    for (int r = 0; r < dtl_rows; ++r) {
        g.setTextMatrix(r, 0, QStringLiteral(" "));
        g.setTextMatrix(r, 1, lines[r]);
    }

    const QString type = rtrim(a->appt_type);
    if (!type.isEmpty()) {
        g.setCell(CellSetting::Picture, 0, 0, type);
        g.setCell(CellSetting::PictureAlignment, 0, 0, int(Align::CenterCenter));
    }
    for (int r = 1; r <= 3; ++r) {
        g.setCell(CellSetting::Picture, r, 0, dtl_picture_keys[r - 1]);
        g.setCell(CellSetting::PictureAlignment, r, 0, int(Align::CenterCenter));
    }

    g.setColWidth(0, picture_col_width);
    const int h = g.Height() / dtl_rows - 1;
    g.setRowHeight(0, limited_height(g, 2 * h));
    for (int r = 1; r < dtl_rows; ++r)
        g.setRowHeight(r, limited_height(g, h));

    const QString font = options.grid_font_name.isEmpty() ? g.FontName() : options.grid_font_name;
    const int last = dtl_rows - 1;
    g.setCell(CellSetting::FontName, 0, 0, last, dtl_cols - 1, font);
    g.setCell(CellSetting::FontSize, 0, 0, last, dtl_cols - 1, grid_font_points(options));
    g.setCell(CellSetting::FontBold, 0, 0, last, dtl_cols - 1, options.grid_font_bold);
    if (const auto fore = font_color(options))
        g.setCell(CellSetting::ForeColor, 0, 0, last, dtl_cols - 1, *fore);
    size_text_col(g);

    view.ctl(QStringLiteral("rtNotes")).text = rtrim(a->appt_notes);
    set_pictures(view, true);
}

int dtl_rows_height(int grid_height) {
    const int h = grid_height / dtl_rows - 1;
    return limited_height(grid_height, 2 * h) + (dtl_rows - 1) * limited_height(grid_height, h);
}

void TabStrip1_Click(PlannerState& view) {
    if (view.tab_key == u"appt") view.ctl(QStringLiteral("Frame2")).visible = true;
}

void imgDtlNext_Click(const Shared& store, PlannerState& view, const OptionsState& options,
                      EditorState& editing) {
    const Grid& g = view.vsSched;
    const int start_row = std::max<int>(view.cur_row, 0);
    for (int r = start_row; r < g.Rows(); ++r) {
        for (int c = r == view.cur_row ? view.cur_col + 1 : 1; c < g.Cols(); ++c) {
            if (!holds_appt(g, r, c)) continue;
            walk_to(store, view, options, editing, r, c);
            return;
        }
    }
    modal().message(no_more_text, MsgStyle::Warning);
}

void imgDtlPrior_Click(const Shared& store, PlannerState& view, const OptionsState& options,
                       EditorState& editing) {
    if (view.cur_row == 0 && view.cur_col == 1) return;
    const Grid& g = view.vsSched;
    const int last_col = g.Cols() - 1;
    int start_row = view.cur_row, start_col = view.cur_col - 1;
    if (view.cur_col == 1) {
        start_row = view.cur_row - 1;
        start_col = last_col;
    }
    for (int r = std::min(start_row, g.Rows() - 1); r >= 0; --r) {
        for (int c = r == start_row ? std::min(start_col, last_col) : last_col; c >= 1; --c) {
            if (!holds_appt(g, r, c)) continue;
            walk_to(store, view, options, editing, r, c);
            return;
        }
    }
    modal().message(no_prior_text, MsgStyle::Warning);
}

void imgDtlAppt_Click(Shared& store, const PlannerState& view, EditorState& editing,
                      RunState& run) {
    const int row = view.vsSched.Row(), col = view.vsSched.Col();
    if (row < 0 || col < 0) return;
    run.timer1_enabled = false;
    sched_hand_over(store, view, editing, row, col);
    open_editor(editing, run);
}

void vsDtl_DblClick(Shared& store, PlannerState& view, EditorState& editing, RunState& run) {
    if (view.ctl(QStringLiteral("imgDtlAppt")).enabled)
        imgDtlAppt_Click(store, view, editing, run);
    else
        modal().message(add_first_text, MsgStyle::Information);
}

void vsDtl_KeyDown() {
    modal().message(use_toolbar_text, MsgStyle::Information);
}

void imgDtlNote_Click(AppState& s) {
    appt_rec* a = s.appt_row(s.edit_index);
    if (!a) return;
    s.timer1_enabled = false;
    // The whole field, blanks and all: the notes form tells an untouched
    // field by its 200 blanks.
    s.notes_text = a->appt_notes.str();
    const QString before = s.notes_text;
    s.caller_form = QStringLiteral("dtlfrm");
    modal().open_form(QStringLiteral("frmNotes"));
    // The form hands back the text without the field's padding: an untouched
    // note must not count as a change.
    if (rtrim(s.notes_text) != rtrim(before)) {
        // Only this occurrence: the rest of a series keeps its notes.
        a->appt_notes = s.notes_text;
        if (write_appts(s, s.cal_path, rewrite_mode, s.appt_count) != err::none) {
            // The note changed in the table only; the reload takes it back.
            report_failed_update(s);
            return;
        }
        s.ctl(QStringLiteral("rtNotes")).text = rtrim(s.notes_text);
    }
    // Also after Cancel: the words say the dialog has been through, and stay
    // until the next recount.
    s.status_panels[panel_count].text = calendar_updated_text;
    s.timer1_enabled = true;
}

void rtNotes_DblClick(AppState& s) {
    if (s.ctl(QStringLiteral("imgDtlNote")).enabled)
        imgDtlNote_Click(s);
    else
        modal().message(notes_add_first_text, MsgStyle::Information);
}

} // namespace orva
