#include "views/navigator.h"

#include "core/clock.h"
#include "core/modal.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/month_view.h"
#include "views/week_view.h"

namespace orva {
namespace {

constexpr int cal_rows = 7; // the header and six weeks
constexpr int cal_cols = 7; // Sunday .. Saturday
constexpr int first_year = 2001;
constexpr int years_ahead = 15;
constexpr Color pick_color = 8454143;   // RGB(255,255,128)
constexpr int cell_margin = 10;         // twips kept off every column and row
constexpr int key_tab = 0x01000001;     // Qt::Key_Tab
constexpr int key_backtab = 0x01000002; // Qt::Key_Backtab, what Shift+Tab arrives as

const QString cal_header = QStringLiteral("^SUN|^MON|^TUE|^WED|^THU|^FRI|^SAT");

const QStringList& month_names() {
    static const QStringList names = {
        QStringLiteral("January"), QStringLiteral("February"), QStringLiteral("March"),
        QStringLiteral("April"),   QStringLiteral("May"),      QStringLiteral("June"),
        QStringLiteral("July"),    QStringLiteral("August"),   QStringLiteral("September"),
        QStringLiteral("October"), QStringLiteral("November"), QStringLiteral("December")};
    return names;
}

bool is_day_cell(const Grid& g, int row, int col) {
    return row >= 1 && row < g.Rows() && col >= 0 && col < g.Cols() &&
           !g.TextMatrix(row, col).isEmpty();
}

Color back_of(const Grid& g, int row, int col) {
    return Color(g.Cell(CellSetting::BackColor, row, col).toUInt());
}

void load_month(Shared& store, const QDate& d) {
    // A month that cannot be read shows empty; the log tells which.
    (void)load_appts(store, d, store.cal_path, 0);
    (void)load_rmdrs(store, d, store.cal_path, 0);
}

// The core every date change shares once cur_date is set and its month is in
// appt_tbl: an empty day grid, the day's entries, the first one in the pane.

} // namespace

void fill_cal(const Shared& store, PlannerState& view, const QDate& date) {
    if (!date.isValid()) return;
    view.first_day = QDate(date.year(), date.month(), 1);
    view.next_first_day = view.first_day.addMonths(1);
    view.month_days = int(view.first_day.daysTo(view.next_first_day));
    view.first_wday = view.first_day.dayOfWeek() % 7;

    Grid& g = view.Cal;
    g.setRows(cal_rows);
    g.setCols(cal_cols);
    g.setFixedRows(1);
    g.setFixedCols(0);
    g.Clear();
    g.setFormatString(cal_header);
    g.setCell(CellSetting::Alignment, 0, 0, 0, cal_cols - 1, int(Align::CenterCenter));
    g.setCell(CellSetting::FontBold, 0, 0, 0, cal_cols - 1, true);
    view.cal_pick_color = pick_color;

    int row = 1;
    int col = view.first_wday - 1;
    for (int d = 1; d <= view.month_days; ++d) {
        if (++col == cal_cols) {
            col = 0;
            ++row;
        }
        g.setTextMatrix(row, col, QStringLiteral(" ") + QString::number(d));
        g.setCell(CellSetting::Alignment, row, col, int(Align::RightTop));
        // A day whose entry has no sticker still carries "Alarm", so it shows
        // a mark; an empty day's type is blank and shows none.
        const QString type = store.day_tbl[size_t(d)].day_type.trimmed();
        if (!type.isEmpty()) {
            g.setCell(CellSetting::Picture, row, col, type);
            g.setCell(CellSetting::PictureAlignment, row, col, int(Align::CenterCenter));
        }
        g.setCell(CellSetting::BackColor, row, col, view.cal_back_color);
        if (d == view.today_day) {
            g.setCell(CellSetting::BackColor, row, col, white);
            g.setCell(CellSetting::FontBold, row, col, true);
            view.cal_row = qint16(row);
            view.cal_col = qint16(col);
            // Only the row: the column keeps what the last mark left.
            if (view.cal_sel_row == 0) view.cal_sel_row = qint16(row);
        }
    }

    size_cal_cells(view);
}

void size_cal_cells(PlannerState& view) {
    Grid& g = view.Cal;
    if (g.Cols() < cal_cols || g.Rows() < cal_rows) return;
    const int w = g.Width() / cal_cols - cell_margin;
    if (w >= 0)
        for (int c = 0; c < cal_cols; ++c)
            g.setColWidth(c, w);
    const int h = (g.Height() - g.RowHeight(0)) / 6 - cell_margin;
    if (h >= 0)
        for (int r = 1; r < cal_rows; ++r)
            g.setRowHeight(r, h);
}

void mark_cal_day(PlannerState& view, int row, int col) {
    view.cal_pick_color = pick_color;
    if (row == 0) return;
    Grid& g = view.Cal;
    // White is the today_day cell: it never takes the selection's colour and
    // never gives it back.
    if (view.cal_sel_row >= 1 && g.Rows() > view.cal_sel_row && view.cal_sel_col >= 0 &&
        view.cal_sel_col < g.Cols() && back_of(g, view.cal_sel_row, view.cal_sel_col) != white)
        g.setCell(CellSetting::BackColor, view.cal_sel_row, view.cal_sel_col, view.cal_back_color);
    if (row < 0 || row >= g.Rows() || col < 0 || col >= g.Cols()) return;
    g.Select(row, col);
    if (back_of(g, row, col) != white)
        g.setCell(CellSetting::BackColor, row, col, view.cal_pick_color);
    view.cal_sel_row = qint16(row);
    view.cal_sel_col = qint16(col);
}

void mark_cur_day(const Shared& store, PlannerState& view) {
    const Grid& g = view.Cal;
    const QString day = QString::number(store.cur_date.day());
    for (int c = 0; c < cal_cols && c < g.Cols(); ++c) {
        for (int r = 1; r < g.Rows(); ++r) {
            if (g.TextMatrix(r, c).trimmed() != day) continue;
            view.cal_row = qint16(r);
            view.cal_col = qint16(c);
            mark_cal_day(view, r, c);
            return;
        }
    }
}

void docombos(const Shared& store, PlannerState& view) {
    view.Combo1.clear();
    view.Combo2.clear();
    view.Combo1.items = month_names();
    const int last_year = clock().today().year() + years_ahead;
    int year_pos = 0;
    for (int y = first_year; y <= last_year; ++y) {
        if (y == store.cur_date.year()) year_pos = int(view.Combo2.items.size());
        view.Combo2.items << QString::number(y);
    }
    view.combo_lock = true;
    view.Combo1.list_index = store.cur_date.month() - 1;
    view.Combo2.list_index = year_pos;
    view.combo_lock = false;
}

void month_changed(AppState& s, WindowPort& w) {
    if (s.combo_lock) return;
    const int y = s.Combo2.text().toInt();
    const int m = s.Combo1.list_index + 1;
    const QDate first(y, m, 1);
    if (!first.isValid()) return;
    const int length = int(first.daysTo(first.addMonths(1)));
    // Today's day number is carried into the new month, not the one selected.
    int d = clock().today().day();
    while (d > length)
        --d;
    s.today_day = d;
    s.cur_date = QDate(y, m, d);

    s.timer1_enabled = false;
    w.set_busy(true);
    load_month(s, s.cur_date);
    if (s.view_month) {
        imageMonth_Click(s, w);
    } else if (s.view_week) {
        imageWeek_Click(s, w);
    } else {
        s.vsSched.setRedraw(0);
        s.Cal.setRedraw(0);
        clear_detail(s);
        s.vsSched.Clear();
        format_day_grid(s);
        build_day_rows(s.view(), s.options());
        set_label1(s, w, s.cur_date);
        s.edit_date = s.cur_date;
        fill_cal(s.store(), s.view(), s.cur_date);
        fill_day_core(s.store(), s.view(), s.options(), s.editing());
        s.vsSched.setRedraw(2);
        s.Cal.setRedraw(2);
    }
    w.set_busy(false);
    s.timer1_enabled = true;
}

void point_combos(PlannerState& view, const QDate& date, bool month_too) {
    view.combo_lock = true;
    if (month_too) view.Combo1.list_index = date.month() - 1;
    // A year outside the list leaves the list where it stood.
    const int year_pos = date.year() - first_year;
    if (year_pos >= 0 && year_pos < view.Combo2.items.size()) view.Combo2.list_index = year_pos;
    view.combo_lock = false;
}

bool combos_show(const PlannerState& view, const QDate& date) {
    return view.Combo1.list_index == date.month() - 1 &&
           view.Combo2.text() == QString::number(date.year());
}

void sync_combos(Shared& store, PlannerState& view, const QDate& date) {
    if (combos_show(view, date)) return;
    point_combos(view, date);
    load_month(store, date);
}

void ImageArrow_Click(AppState& s, WindowPort& w, int index) {
    Shared& store = s.store();
    PlannerState& view = s.view();
    const OptionsState& options = s.options();
    EditorState& editing = s.editing();
    if (store.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Plain);
        return;
    }
    w.set_busy(true);
    // The month planner steps by days, like the day planner.
    const int step = view.view_week ? 7 : 1;
    const QDate date = store.cur_date.addDays(index == 0 ? -step : step);
    store.cur_date = date;
    if (view.view_month) {
        // Nothing is loaded, also when the step crosses a month end: the new
        // month shows free days until the lists load it.
        imageMonth_Click(s, w);
    } else if (view.view_week) {
        imageWeek_Click(s, w);
    } else {
        view.vsSched.setRedraw(0);
        view.Cal.setRedraw(0);
        view.vsSched.Clear();
        format_day_grid(view);
        sync_combos(store, view, date);
        build_day_rows(view, options);
        fill_cal(store, view, date);
        set_label1(view, w, date);
        editing.edit_date = store.cur_date;
        clear_detail(view);
        fill_day_core(store, view, options, editing);
        mark_cur_day(store, view);
        mark_now_row(view);
        view.vsSched.setRedraw(2);
        view.Cal.setRedraw(2);
    }
    w.set_busy(false);
}

void ImageArrow_MouseMove(PlannerState& view) {
    // The month planner keeps the day texts: there, too, the step is a day.
    const bool week = view.view_week;
    view.ctl(QStringLiteral("ImageArrow0")).tip =
        week ? QStringLiteral("Prior Week") : QStringLiteral("Prior Day");
    view.ctl(QStringLiteral("ImageArrow1")).tip =
        week ? QStringLiteral("Next Week") : QStringLiteral("Next Day");
    view.ctl(QStringLiteral("Label4")).visible = true;
    view.ctl(QStringLiteral("Label5")).visible = true;
}

void imgPriorMth_Click(AppState& s, WindowPort& w) {
    if (s.Combo1.list_index > 0) {
        --s.Combo1.list_index;
        month_changed(s, w);
        return;
    }
    s.combo_lock = true;
    s.Combo1.list_index = 11;
    s.combo_lock = false;
    // At 2001 the year list has nothing before: the month list is left on
    // December while the view stays on January.
    if (s.Combo2.list_index > 0) {
        --s.Combo2.list_index;
        month_changed(s, w);
    }
}

void imgNextMth_Click(AppState& s, WindowPort& w) {
    if (s.Combo1.list_index < 11) {
        ++s.Combo1.list_index;
        month_changed(s, w);
        return;
    }
    s.combo_lock = true;
    s.Combo1.list_index = 0;
    s.combo_lock = false;
    // Past the last year of the list there is no item to go to and no
    // message for it: the month list alone has moved on to January.
    if (s.Combo2.list_index + 1 < s.Combo2.items.size()) {
        ++s.Combo2.list_index;
        month_changed(s, w);
    }
}

void Cal_Click(AppState& s, WindowPort& w, int row, int col) {
    Grid& g = s.Cal;
    if (!is_day_cell(g, row, col)) return;
    const QString text = QStringLiteral("%1%2%3")
                             .arg(s.Combo1.list_index + 1, 2, 10, QLatin1Char('0'))
                             .arg(g.TextMatrix(row, col).trimmed().toInt(), 2, 10, QLatin1Char('0'))
                             .arg(s.Combo2.text());
    const QDate date = text_to_date(text);
    if (!date.isValid()) return;

    s.cal_row = qint16(row);
    s.cal_col = qint16(col);
    s.timer1_enabled = false;
    w.set_busy(true);
    s.vsSched.setRedraw(0);

    // The month is already in appt_tbl: nothing is read.
    s.cur_date = date;
    s.edit_date = date;
    set_label1(s, w, date);
    s.vsSched.Clear();
    clear_detail(s);
    format_day_grid(s);
    build_day_rows(s.view(), s.options());
    fill_day_core(s.store(), s.view(), s.options(), s.editing());

    w.set_busy(false);
    mark_cal_day(s, s.cal_row, s.cal_col);
    mark_now_row(s);
    s.vsSched.setRedraw(2);
    s.timer1_enabled = true;
}

void Cal_DblClick(Shared& store, const PlannerState& view, EditorState& editing, RunState& run,
                  int row, int col) {
    const Grid& g = view.Cal;
    if (!is_day_cell(g, row, col)) return;
    if (store.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Warning);
        return;
    }
    const int d = g.TextMatrix(row, col).trimmed().toInt();
    if (d < 1 || d > day_limit) return;
    run.timer1_enabled = false;
    const day_rec& day = store.day_tbl[size_t(d)];
    if (day.day_time.str() != day_none) {
        editing.new_appt = false;
        // The index keeps two characters, so row 123 reads as 12: the editor
        // opens whatever stands there.
        editing.edit_index = day.day_index.trimmed().toInt();
    } else {
        hand_over_new(store, editing);
        editing.edit_start = clock().now().time().toString(QStringLiteral("HH:mm"));
    }
    editing.appt_from_planner = true;
    open_editor(editing, run);
}

bool Cal_KeyDown(AppState& s, WindowPort& w, int key, bool shift) {
    if (key == key_backtab || (key == key_tab && shift)) {
        ImageArrow_Click(s, w, 0);
        return true;
    }
    if (key == key_tab) {
        ImageArrow_Click(s, w, 1);
        return true;
    }
    return false;
}

void Cal_DragDrop(PlannerState& view, int row, int col, const QString& picture_key) {
    Grid& g = view.Cal;
    if (!is_day_cell(g, row, col)) return;
    g.setCell(CellSetting::Picture, row, col, picture_key);
    g.setCell(CellSetting::PictureAlignment, row, col, int(Align::LeftCenter));
    g.setCell(CellSetting::BackColor, row, col, pick_color);
}

} // namespace orva
