#include "views/week_view.h"

#include "core/event_loop.h"
#include "core/modal.h"
#include "state/options.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/navigator.h"
#include "views/status.h"

#include <QLocale>

namespace orva {
namespace {

QString data_of(const Grid& g, int row, int col) {
    return g.Cell(CellSetting::Data, row, col).toString();
}

// The rows a day's free-cell data covers: its header and its lines.
struct DayRange {
    int first, last;
};
DayRange data_range(int wd) {
    switch (wd) {
    case 2:
    case 3:
    case 4:
        return {0, 9};
    case 5:
    case 6:
        return {10, 18};
    case 7:
        return {10, 14};
    default: // Sunday
        return {15, 18};
    }
}

// The row of a day's next line, or of its "more..." when the day is full.
int line_row(PlannerState& view, int wd, bool& overflow) {
    const qint16 r = ++view.week_row[size_t(wd)];
    overflow = false;
    switch (wd) {
    case 2:
    case 3:
    case 4:
        overflow = r > 9;
        return overflow ? 9 : r;
    case 7:
        overflow = r > 14;
        return overflow ? 14 : r;
    default: // Thursday, Friday, Sunday
        overflow = r >= 19;
        return overflow ? 18 : r;
    }
}

// One entry's line at (row, col), or "more..." over the day's last line.
void write_line(const Shared& store, PlannerState& view, const OptionsState& options, int row,
                int col, int index, bool overflow) {
    Grid& g = view.vsOvervw;
    g.setCell(CellSetting::FontSize, row, col, grid_font_points(options));
    if (!options.grid_font_name.isEmpty())
        g.setCell(CellSetting::FontName, row, col, options.grid_font_name);
    g.setCell(CellSetting::FontBold, row, col, options.grid_font_bold);
    g.setCell(CellSetting::ForeColor, row, col, font_color(options).value_or(g.ForeColor()));
    g.setCell(CellSetting::PictureAlignment, row, col, int(Align::LeftCenter));
    if (overflow) {
        // The line keeps the data of the entry it covers.
        g.setTextMatrix(row, col, more_text);
        g.setCell(CellSetting::Picture, row, col, QVariant());
        g.setCell(CellSetting::Alignment, row, col, int(Align::CenterCenter));
        return;
    }
    const appt_rec* a = store.appt_row(index);
    if (!a) return;
    const QString type = rtrim(a->appt_type);
    const QString text = rtrim(a->appt_text);
    const bool times = options.menus.mnuShowTimes;
    QString shown;
    if (!type.isEmpty()) {
        shown = (times ? format_field_ampm(a->appt_start, false) : QString()) +
                QStringLiteral("   ") + text;
        g.setCell(CellSetting::Picture, row, col, type);
    } else {
        // Five or six blanks: a line without a picture starts its text where
        // a line with one does.
        shown = times ? QStringLiteral("     ") + format_field_ampm(a->appt_start, false) +
                            QStringLiteral("   ") + text
                      : QStringLiteral("      ") + text;
    }
    g.setTextMatrix(row, col, shown);
    g.setCell(CellSetting::Data, row, col,
              data_of(g, row, col) + QStringLiteral(" index=") + QString::number(index));
    g.setCell(CellSetting::Alignment, row, col, int(Align::LeftCenter));
}

} // namespace

QDate week_start_of(const QDate& d) {
    const int w = d.dayOfWeek() % 7 + 1; // Sunday 1
    return w != 1 ? d.addDays(2 - w) : d.addDays(-6);
}

QDate week_end_of(const QDate& d) {
    const int w = d.dayOfWeek() % 7 + 1;
    return w != 1 ? d.addDays(8 - w) : d;
}

int week_col(int wd) {
    switch (wd) {
    case 2:
    case 5:
        return 0;
    case 3:
    case 6:
        return 1;
    default:
        return 2;
    }
}

int week_header_row(int wd) {
    if (wd == 1) return 15;
    return wd <= 4 ? 0 : 10;
}

int week_cursor_row(int wd) {
    return week_header_row(wd) + 1;
}

QString week_header_text(const QDate& d) {
    const QLocale loc;
    return loc.dayName(d.dayOfWeek(), QLocale::ShortFormat) + QStringLiteral("  ") +
           loc.monthName(d.month()) + QLatin1Char(' ') +
           QStringLiteral("%1,%2").arg(d.day(), 2, 10, QLatin1Char('0')).arg(d.year());
}

void setup_week_grid(PlannerState& view) {
    Grid& g = view.vsOvervw;
    g.setRows(0);
    g.setCols(week_cols);
    g.Clear();
    g.setRows(week_rows);
    g.setFixedRows(0);
    g.setFixedCols(0);
    g.setMergeCells(MergeMode::Never);
    for (int c = 0; c < week_cols; ++c) {
        g.setMergeCol(c, false);
        g.setColHidden(c, false);
        g.setColAlignment(c, Align::General);
    }
    for (int r = 0; r < week_rows; ++r) {
        g.setMergeRow(r, false);
        g.setRowHidden(r, false);
    }
    g.setEditable(true);
    const int h = g.Height() / week_rows - 1;
    const int w = g.Width() / week_cols - 1 - 30;
    if (h > 0)
        for (int r = 0; r < week_rows; ++r)
            g.setRowHeight(r, h);
    if (w > 0)
        for (int c = 0; c < week_cols; ++c)
            g.setColWidth(c, w);
}

void imageWeek_Click(AppState& s, WindowPort& w) {
    const bool switching = !s.ctl(QStringLiteral("vsOvervw")).visible || !s.view_week;
    w.set_busy(true);
    s.view_week = true;
    s.view_month = false;
    s.view_day = false;
    s.week_appts = 0;
    Grid& g = s.vsOvervw;
    g.setRedraw(0);

    s.week_start = week_start_of(s.cur_date);
    s.week_end = week_end_of(s.cur_date);
    const bool spanning = s.week_start.month() != s.week_end.month();
    if (spanning) {
        // Both months, from the Monday's on: the step that crossed the month
        // end is the one that loads them.
        (void)load_appts(s, s.week_start, s.cal_path, 1);
        (void)load_rmdrs(s, s.week_start, s.cal_path, 1);
    }
    const bool combos_differ = !combos_show(s, s.week_start);

    Grid& sg = s.vsSortGrid;
    sg.setRows(0);
    sg.setCols(6);
    sg.setFixedRows(0);
    sg.setFixedCols(0);
    sg.Clear();
    for (int i = 1; i <= s.appt_count; ++i) {
        const appt_rec* a = s.appt_row(i);
        if (!a) continue;
        const QString date_text = a->appt_date.str();
        const QDate odate = text_to_date(date_text);
        s.srtwkday = odate.isValid() ? odate.dayOfWeek() % 7 + 1 : 0;
        if (s.srtwkday == 0) {
            // A row whose date cannot be read.
            modal().message(srtwkday_zero_text + date_text + QStringLiteral(" odate = ") +
                                odate.toString(QStringLiteral("M/d/yyyy")),
                            MsgStyle::Plain);
            continue;
        }
        if (odate < s.week_start || odate > s.week_end) continue;
        const int r = sg.Rows();
        sg.setRows(r + 1);
        sg.setTextMatrix(r, 0, date_text.mid(2, 2));
        sg.setTextMatrix(r, 1, a->appt_start.str());
        sg.setTextMatrix(r, 2, a->appt_id.str());
        sg.setTextMatrix(r, 3, QString::number(i));
        sg.setTextMatrix(r, 4, QString::number(s.srtwkday));
        sg.setTextMatrix(r, 5, odate.toString(QStringLiteral("MMddyyyy")));
    }
    if (sg.Rows() > 0) {
        // As text: over a month end 30, 31, 1, 2 sort apart, which matters
        // not, for each line finds its day by its weekday.
        sg.Select(0, 0, sg.Rows() - 1, 1);
        sg.Sort(SortOrder::StringAscending);
    }

    s.week_row.fill(0); // Monday to Wednesday start at 0
    s.week_row[5] = s.week_row[6] = s.week_row[7] = 10;
    s.week_row[1] = 15;
    const int cur_wd = s.cur_date.dayOfWeek() % 7 + 1;
    setup_week_grid(s.view());
    for (int k = 0; k < 7; ++k) {
        const QDate day = s.week_start.addDays(k);
        const int wd = day.dayOfWeek() % 7 + 1;
        const int col = week_col(wd);
        const int header = week_header_row(wd);
        const DayRange range = data_range(wd);
        for (int r = range.first; r <= range.last; ++r)
            g.setCell(CellSetting::Data, r, col, overvw_free_data(day));
        g.setTextMatrix(header, col, week_header_text(day));
        g.setCell(CellSetting::FontBold, header, col, true);
        g.setCell(CellSetting::Alignment, header, col, int(Align::CenterCenter));
    }
    set_overvw_color(s.view(), s.options());

    for (int r = 0; r < sg.Rows(); ++r) {
        ++s.week_appts;
        const int wd = sg.TextMatrix(r, 4).toInt();
        if (wd < 1 || wd > 7) continue;
        s.srtwkday = wd;
        bool overflow = false;
        const int row = line_row(s.view(), wd, overflow);
        write_line(s.store(), s.view(), s.options(), row, week_col(wd), sg.TextMatrix(r, 3).toInt(),
                   overflow);
        yield_events();
    }

    const QLocale loc;
    const QString label = loc.toString(s.week_start, QLocale::LongFormat) + QStringLiteral("  - ") +
                          loc.toString(s.week_end, QLocale::LongFormat);
    set_label1_text(s, w, label);
    show_status(s.store(), s.view());
    g.Select(week_cursor_row(cur_wd), week_col(cur_wd));
    s.ctl(QStringLiteral("mnuColor")).enabled = false;

    if (switching) {
        for (const char* n : {"vsSched", "Cal", "TabStrip1", "Frame2", "Frame1"})
            s.ctl(QString::fromLatin1(n)).visible = false;
        s.ctl(QStringLiteral("vsOvervw")).visible = true;
        for (const char* n : {"imgSkins", "imgRem", "imgTlist", "imgTzone", "Label11", "Label18",
                              "Label10", "Label12"})
            s.ctl(QString::fromLatin1(n)).visible = true;
    }
    w.layout_view();
    resize_mth_grd(s.view(), s.options());
    g.setRedraw(2);
    // Only a week across two months moves the month list.
    if (combos_differ) point_combos(s, s.week_start, spanning);
    w.set_busy(false);
    save_options(s.store(), s.view(), s.options(), w);
}

} // namespace orva
