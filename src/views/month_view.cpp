#include "views/month_view.h"

#include "appointments/delete_copy.h"
#include "core/clock.h"
#include "core/event_loop.h"
#include "core/modal.h"
#include "state/options.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/navigator.h"
#include "views/refresh.h"
#include "views/status.h"
#include "views/week_view.h"

#include <QLocale>
#include <algorithm>

namespace orva {
namespace {

constexpr int month_cols = 7;
constexpr int block_rows = 5; // a row of day numbers and four lines
constexpr int lines_per_day = 4;
constexpr int key_delete = 0x01000007; // Qt::Key_Delete

const QString month_header =
    QStringLiteral("^Sunday|^Monday|^Tuesday|^Wednesday|^Thursday|^Friday|^Saturday");

QString data_of(const Grid& g, int row, int col) {
    return g.Cell(CellSetting::Data, row, col).toString();
}

bool in_grid(const Grid& g, int row, int col) {
    return row >= 0 && col >= 0 && row < g.Rows() && col < g.Cols();
}

// Sorts the month's rows of appt_tbl by day, then start, and lays them into
// month_list. Only the month number is compared: a second month loaded for a
// spanning week stays out, a row of the same month of another year would not.
void fill_month_list(const Shared& store, PlannerState& view, int month) {
    for (int d = 1; d < PlannerState::month_list_days; ++d)
        view.month_list[size_t(d)].fill({});
    Grid& sg = view.vsSortGrid;
    sg.setRows(0);
    sg.setCols(4);
    sg.setFixedRows(0);
    sg.setFixedCols(0);
    sg.Clear();
    for (int i = 1; i <= store.appt_count; ++i) {
        const appt_rec* a = store.appt_row(i);
        if (!a) continue;
        const QString date = a->appt_date.str();
        if (date.left(2).toInt() != month) continue;
        // Cell by cell: a tab inside a field would shift the columns.
        const int r = sg.Rows();
        sg.setRows(r + 1);
        sg.setTextMatrix(r, 0, date.mid(2, 2));
        sg.setTextMatrix(r, 1, a->appt_start.str());
        sg.setTextMatrix(r, 2, a->appt_id.str());
        sg.setTextMatrix(r, 3, QString::number(i));
    }
    if (sg.Rows() == 0) return;
    sg.Select(0, 0, sg.Rows() - 1, 1);
    sg.Sort(SortOrder::StringAscending);
    int day_before = -1, n = 0;
    for (int r = 0; r < sg.Rows(); ++r) {
        const int day = sg.TextMatrix(r, 0).toInt();
        if (day != day_before) n = 0;
        day_before = day;
        if (day < 0 || day >= PlannerState::month_list_days ||
            n >= PlannerState::month_list_slots) {
            ++n;
            continue;
        }
        view.month_list[size_t(day)][size_t(n)] = {qint16(day),
                                                   qint16(sg.TextMatrix(r, 3).toInt())};
        ++n;
    }
}

// The text of a month line, and whether it carries a picture.
QString month_line_text(const OptionsState& options, const appt_rec& a) {
    if (a.appt_start.is_blank()) return QStringLiteral(" ") + rtrim(a.appt_text);
    if (options.menus.mnuShowTimes)
        return format_field_ampm(a.appt_start, false) + QStringLiteral("   ") + rtrim(a.appt_text);
    return rtrim(a.appt_text);
}

// The four lines of day `d`, whose day-number row is `date_row`.
void fill_month_day(const Shared& store, PlannerState& view, const OptionsState& options, int d,
                    int date_row, int col) {
    Grid& g = view.vsOvervw;
    const auto& list = view.month_list[size_t(d)];
    int total = 0;
    while (total < PlannerState::month_list_slots && list[size_t(total)].index != 0)
        ++total;
    const int last = date_row + lines_per_day;
    int t = date_row + 1;
    int j = 0;
    for (int pass = 0; pass < lines_per_day; ++pass) {
        if (j >= PlannerState::month_list_slots || list[size_t(j)].index == 0) continue;
        const int i = list[size_t(j)].index;
        const appt_rec* a = store.appt_row(i);
        if (a) {
            QString text = month_line_text(options, *a);
            const QString type = rtrim(a->appt_type);
            if (!type.isEmpty()) {
                g.setCell(CellSetting::Picture, t, col, type);
                g.setCell(CellSetting::PictureAlignment, t, col, int(Align::LeftCenter));
            } else {
                // No picture: one blank further in.
                text.prepend(QLatin1Char(' '));
            }
            g.setCell(CellSetting::Alignment, t, col, int(Align::General));
            g.setTextMatrix(t, col, text);
            g.setCell(CellSetting::Data, t, col,
                      data_of(g, t, col) + QStringLiteral(" index=") + QString::number(i));
        }
        ++t;
        if (t <= last) {
            // A lone entry stays at position 0 and fills every line, which
            // merge into one tall cell.
            if (total > 1) ++j;
        } else if (j + 1 < PlannerState::month_list_slots && list[size_t(j + 1)].index != 0) {
            g.setCell(CellSetting::Picture, last, col, QVariant());
            g.setTextMatrix(last, col, more_text);
            g.setCell(CellSetting::FontUnderline, last, col, true);
            g.setCell(CellSetting::Alignment, last, col, int(Align::CenterCenter));
        }
        g.setMergeCol(col, true);
        yield_events();
    }
}

bool week_header_cell(int row, int col) {
    return row == 0 || row == 10 || (row == 15 && col == 2);
}

// A row of appt_tbl made from a text typed into vsOvervw: a one-time entry
// on cur_date at the present time, as the day planner's quick add makes one.
void overvw_appt_rec(Shared& store, int index, const QString& id, const QString& text) {
    appt_rec* a = store.appt_row(index);
    if (!a) return;
    fill_quick_row(*a, store.cur_date, id, text);
    const QString now = clock().now().time().toString(QStringLiteral("HH:mm"));
    a->appt_start = now;
    a->appt_end = now;
}

} // namespace

int month_weeks(const QDate& d) {
    const QDate first(d.year(), d.month(), 1);
    const int first_wday = first.dayOfWeek() % 7; // 0 Sunday
    const int rest = d.daysInMonth() - (7 - first_wday);
    return rest / 7 + 1 + (rest % 7 ? 1 : 0);
}

QString overvw_free_data(const QDate& d) {
    return d.toString(QStringLiteral("MMddyyyy")) + QLatin1Char('?');
}

void imageMonth_Click(AppState& s, WindowPort& w) {
    const bool switching = !s.ctl(QStringLiteral("vsOvervw")).visible || !s.view_month;
    s.view_month = true;
    s.view_week = false;
    s.view_day = false;
    s.month_appts = 0;
    w.set_busy(true);
    for (const char* n : {"mnudelete", "mnuCopy", "mnuEditA"})
        s.ctl(QString::fromLatin1(n)).enabled = false;

    // The lists follow the date; nothing is read.
    const QDate cur = s.cur_date;
    if (!combos_show(s, cur)) point_combos(s, cur);

    fill_month_list(s.store(), s.view(), cur.month());

    s.first_day = QDate(cur.year(), cur.month(), 1);
    s.next_first_day = s.first_day.addMonths(1);
    s.month_days = int(s.first_day.daysTo(s.next_first_day));
    s.first_wday = s.first_day.dayOfWeek() % 7;
    const int weeks = month_weeks(cur);
    s.FiveWeeks = weeks == 5;

    Grid& g = s.vsOvervw;
    g.setRedraw(0);
    g.setRows(0);
    g.setCols(month_cols);
    g.Clear();
    g.setRows(weeks * block_rows + 1);
    g.setFixedCols(0);
    g.setFixedRows(1);
    g.setFormatString(month_header);
    g.setMergeCells(MergeMode::Free);
    for (int c = 0; c < month_cols; ++c) {
        g.setMergeCol(c, false);
        g.setColHidden(c, false);
    }
    for (int r = 0; r < g.Rows(); ++r) {
        g.setMergeRow(r, false);
        g.setRowHidden(r, false);
    }
    g.setEditable(true);
    const Color box = s.label1_back_color;
    for (int k = 0; k < weeks; ++k) {
        g.Select(1 + block_rows * k, 0, block_rows * (k + 1), month_cols - 1);
        g.CellBorder(box, 1, 1, 1, 1, 0, 0);
    }
    set_overvw_color(s.view(), s.options());
    set_mth_fonts(s.view(), s.options());

    for (int d = 1; d <= s.month_days; ++d) {
        const int pos = s.first_wday + d - 1;
        const int col = pos % month_cols;
        const int date_row = 1 + block_rows * (pos / month_cols);
        const QDate day(cur.year(), cur.month(), d);
        const QString free = overvw_free_data(day);
        for (int r = date_row; r < date_row + block_rows; ++r)
            g.setCell(CellSetting::Data, r, col, free);
        g.setTextMatrix(date_row, col, QStringLiteral(" ") + QString::number(d));
        g.setCell(CellSetting::Alignment, date_row, col, int(Align::RightTop));
        if (d == cur.day()) {
            s.sel_mth_row = date_row;
            s.sel_mth_col = col;
        }
        fill_month_day(s.store(), s.view(), s.options(), d, date_row, col);
    }
    g.Select(int(s.sel_mth_row), int(s.sel_mth_col));

    s.month_appts = s.appt_count;
    const QString label =
        QLocale().monthName(cur.month()) + QStringLiteral("   ") + QString::number(cur.year());
    set_label1_text(s, w, label);
    show_status(s.store(), s.view());
    if (switching) {
        for (const char* n : {"Frame1", "Cal", "vsSched", "TabStrip1", "Frame2"})
            s.ctl(QString::fromLatin1(n)).visible = false;
        s.ctl(QStringLiteral("vsOvervw")).visible = true;
        s.ctl(QStringLiteral("mnuColor")).enabled = false;
    }
    // Laid out on a refill too: the page's sizes depend on the rows a month
    // takes.
    w.layout_view();
    resize_mth_grd(s.view(), s.options());
    g.setRedraw(2);
    w.set_busy(false);
    save_options(s.store(), s.view(), s.options(), w);
}

void refill_overview(AppState& s, WindowPort& w) {
    if (s.view_month)
        imageMonth_Click(s, w);
    else if (s.view_week)
        imageWeek_Click(s, w);
}

void extract_ptr(PlannerState& view, int from, int row, int col) {
    view.ptr_found = false;
    const Grid& g = view.vsOvervw;
    const QString d = in_grid(g, row, col) ? data_of(g, row, col) : QString();
    for (int i = std::min<int>(from, int(d.size())); i >= 1; --i) {
        const QChar c = d.at(i - 1);
        if (c == u'=') {
            view.ptrPos = qint16(i + 1);
            view.ptr_len = qint16(from - i);
            view.ptr_found = true;
            return;
        }
        if (c == u'?') return;
    }
}

int overvw_entry(PlannerState& view, int row, int col) {
    const Grid& g = view.vsOvervw;
    if (!in_grid(g, row, col)) return 0;
    const QString d = data_of(g, row, col);
    extract_ptr(view, int(d.size()), row, col);
    if (!view.ptr_found) return 0;
    return d.mid(view.ptrPos - 1, view.ptr_len).trimmed().toInt();
}

QString cell_date(const Grid& g) {
    if (!in_grid(g, g.Row(), g.Col())) return {};
    const QString d = data_of(g, g.Row(), g.Col());
    const qsizetype q = d.indexOf(u'?');
    return q < 0 ? QString() : d.left(q);
}

QDate overvw_day(const Grid& g, int row, int col) {
    if (!in_grid(g, row, col)) return {};
    const QString d = data_of(g, row, col);
    const qsizetype q = d.indexOf(u'?');
    return q < 0 ? QDate() : text_to_date(d.left(q));
}

void overvw_tip(const Shared& store, PlannerState& view, int row, int col) {
    Grid& g = view.vsOvervw;
    if (row != -1 && col != -1) {
        if (const appt_rec* a = store.appt_row(overvw_entry(view, row, col))) {
            g.setToolTipText(format_field_ampm(a->appt_start, true) + QStringLiteral(" - ") +
                             format_field_ampm(a->appt_end, true) + QStringLiteral("  ") +
                             rtrim(a->appt_text));
            return;
        }
    }
    g.setToolTipText(QString());
}

void set_overvw_color(PlannerState& view, const OptionsState& options) {
    Grid& g = view.vsOvervw;
    const Grid& sched = view.vsSched;
    g.setBackColor(sched.BackColor());
    g.setBackColorFixed(sched.BackColorFixed());
    g.setForeColorFixed(sched.ForeColorFixed());
    const int last_col = g.Cols() - 1;
    if (last_col < 0) return;
    const auto paint = [&](int row, Color c) {
        if (row < g.Rows()) g.setCell(CellSetting::ForeColor, row, 0, row, last_col, c);
    };
    if (view.view_week) {
        const auto header = [&](int row, int col1, int col2) {
            if (row >= g.Rows() || col2 > last_col) return;
            g.setCell(CellSetting::BackColor, row, col1, row, col2, sched.BackColorFixed());
            g.setCell(CellSetting::ForeColor, row, col1, row, col2, sched.ForeColorFixed());
        };
        header(0, 0, last_col);
        header(10, 0, last_col);
        header(15, 2, 2);
        return;
    }
    const Color lines = font_color(options).value_or(g.ForeColor());
    // The first row of day numbers takes the planner's text colour, the
    // others the navigator's: so it was designed.
    paint(1, sched.ForeColor());
    for (int k = 1; k * block_rows + 1 < g.Rows(); ++k)
        paint(k * block_rows + 1, view.Cal.ForeColor());
    for (int r = 1; r < g.Rows(); ++r)
        if ((r - 1) % block_rows != 0) paint(r, lines);
}

void set_mth_fonts(PlannerState& view, const OptionsState& options) {
    Grid& g = view.vsOvervw;
    const int last_col = g.Cols() - 1;
    if (last_col < 0) return;
    const double pt = grid_font_points(options);
    for (int r = 1; r < g.Rows(); ++r) {
        const bool date_row = (r - 1) % block_rows == 0;
        g.setCell(CellSetting::FontSize, r, 0, r, last_col, date_row ? pt + 2 : pt);
        g.setCell(CellSetting::FontBold, r, 0, r, last_col,
                  date_row ? true : options.grid_font_bold);
    }
}

void resize_mth_grd(PlannerState& view, const OptionsState& options) {
    Grid& g = view.vsOvervw;
    if (g.Rows() < 1 || g.Cols() < 1) return;
    g.setWordWrap(true);
    const bool large = grid_font_points(options) > 12;
    const int min_w = large ? 2240 : 1902;
    const int min_h = large ? 438 : 360;
    // The week planner's rows take the whole height; the month keeps the
    // allowance off both.
    const int rows_room = view.view_week ? g.Height() : g.Height() - overvw_allowance;
    const int w = std::max((g.Width() - overvw_allowance) / g.Cols(), min_w);
    const int h = std::max(rows_room / g.Rows(), min_h);
    for (int c = 0; c < g.Cols(); ++c)
        g.setColWidth(c, w);
    for (int r = 0; r < g.Rows(); ++r)
        g.setRowHeight(r, h);
}

namespace {
void follow_line(PlannerState& view, int row, int col) {
    Grid& g = view.vsOvervw;
    const QString d = in_grid(g, row, col) ? data_of(g, row, col) : QString();
    const QString text = in_grid(g, row, col) ? g.TextMatrix(row, col) : QString();
    const bool entry = !d.isEmpty() && !text.isEmpty();
    for (const char* n : {"mnuCopy", "mnuEditA", "mnudelete"})
        view.ctl(QString::fromLatin1(n)).enabled = entry;
    if (in_grid(g, row, col)) g.Select(row, col);
}
} // namespace

void vsOvervw_RightClick(PlannerState& view, int row, int col) {
    follow_line(view, row, col);
}

void vsOvervw_Click(AppState& s, WindowPort& w, int row, int col) {
    Grid& g = s.vsOvervw;
    const QString text = in_grid(g, row, col) ? g.TextMatrix(row, col) : QString();
    follow_line(s, row, col);
    const QDate day = text_to_date(cell_date(g));
    if (text == more_text) {
        // The day opens with all its entries.
        if (day.isValid()) s.cur_date = day;
        imageDay_Click(s.store(), s.view(), s.options(), s.editing(), w);
        return;
    }
    s.cur_date = day.isValid() ? day : clock().today();
}

void vsOvervw_DblClick(AppState& s, int row, int col) {
    if (s.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Warning);
        return;
    }
    Grid& g = s.vsOvervw;
    if (!in_grid(g, row, col)) return;
    if (data_of(g, row, col).isEmpty() || g.TextMatrix(row, col) == more_text) return;
    s.timer1_enabled = false;
    s.new_appt = false;
    const QDate day = overvw_day(g, row, col);
    const int index = overvw_entry(s.view(), row, col);
    if (const appt_rec* a = s.ptr_found ? s.appt_row(index) : nullptr) {
        s.edit_index = index;
        s.edit_start = a->appt_start.str();
        if (day.isValid()) s.cur_date = day;
    } else {
        s.edit_start = QLocale::c().toString(clock().now(), QStringLiteral("M/d/yyyy h:mm:ss AP"));
        s.new_appt = true;
        s.rem_lead = 0;
        s.rem_unit = 0;
        s.rem_anim = 1;
        s.edit_index = 0;
        s.edit_date = day.isValid() ? day : s.cur_date;
    }
    open_editor(s.editing(), s.run());
}

bool vsOvervw_BeforeEdit(AppState& s, int row, int col) {
    Grid& g = s.vsOvervw;
    if (!in_grid(g, row, col)) return true;
    const QString d = data_of(g, row, col);
    if (d.isEmpty() || d == u" ") return true;
    if (s.view_week && week_header_cell(row, col)) return true;
    const QDate day = overvw_day(g, row, col);
    if (day.isValid()) s.cur_date = day;
    s.new_appt = false;
    if (overvw_entry(s.view(), row, col) != 0 || s.ptr_found) {
        modal().message(dbl_click_overvw_text, MsgStyle::Information);
        return true;
    }
    return false;
}

void vsOvervw_AfterEdit(AppState& s, WindowPort& w, int row, int col) {
    Grid& g = s.vsOvervw;
    if (!in_grid(g, row, col)) return;
    if (s.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Warning);
        g.setTextMatrix(row, col, QString());
        return;
    }
    const QString typed = g.TextMatrix(row, col);
    if (typed.isEmpty() || typed == u" ") return;

    s.timer1_enabled = false;
    ++s.appt_count;
    const int index = s.appt_count;
    if (!s.appt_row(index)) {
        // The table is full: the row cannot be made, and nothing is written.
        --s.appt_count;
        refill_overview(s, w);
        s.timer1_enabled = true;
        modal().message(couldnt_update_msg, MsgStyle::Critical);
        return;
    }
    overvw_appt_rec(s.store(), index, new_appt_id(), typed);
    s.quick_left = g.ColPos(col);
    s.quick_top = g.RowPos(row);
    const QRect f = w.frame();
    if (f.isValid() && g.Width() + s.quick_left > f.width()) s.quick_left = f.width() - 5160;
    modal().open_form(QStringLiteral("frmQuick"));

    {
        Archive::Command command(s.archive, s.cal_path);
        int e = write_appts(s, s.cal_path, append_mode, index);
        if (!e) e = load_appts(s, s.cur_date, s.cal_path, 0);
        command.abort(e);
        if (command.finish() != err::none) {
            report_failed_update(s);
            return;
        }
    }
    refill_overview(s, w);
    s.timer1_enabled = true;
    // Where the typing was, one column to the left, as the planner always put it.
    if (col >= 1 && in_grid(g, row, col - 1)) g.Select(row, col - 1);
}

bool vsOvervw_KeyDown(AppState& s, int key) {
    if (key != key_delete) return false;
    const Grid& g = s.vsOvervw;
    if (!in_grid(g, g.Row(), g.Col()) || g.TextMatrix(g.Row(), g.Col()).isEmpty()) return false;
    imageClock_Click(s);
    return true;
}

void vsOvervw_MouseMove(const Shared& store, PlannerState& view, const OptionsState& options,
                        int buttons, int row, int col) {
    if (buttons != 0 || !options.menus.mnuTips) return;
    overvw_tip(store, view, row, col);
}

OverviewCell overvw_target(const PlannerState& view) {
    const Grid& g = view.vsOvervw;
    if (in_grid(g, g.MouseRow(), g.MouseCol())) return {g.MouseRow(), g.MouseCol()};
    if (in_grid(g, g.Row(), g.Col())) return {g.Row(), g.Col()};
    return {};
}

} // namespace orva
