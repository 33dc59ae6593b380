#include "reminders/rem_list.h"

#include "core/clock.h"
#include "core/modal.h"
#include "help/help.h"
#include "help/help_topics.h"
#include "store/calendar_file.h"
#include "store/member_format.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/refresh.h"

#include <QLocale>
#include <algorithm>
#include <tuple>

namespace orva {
namespace {

// The columns of vsRmdr; 6 to 12 are hidden and carry what finds the entry
// again.
enum : int {
    col_day = 0,
    col_time = 1,
    col_picture = 2,
    col_subject = 3,
    col_due = 4,
    col_status = 5,
    col_sort_key = 6,
    col_id = 7,
    col_date = 8,
    col_start = 9,
    col_end = 10,
    col_date_text = 11,
    col_first_date = 12,
};

// The shown columns' shares of the grid's width; the picture column has its
// own fixed width instead.
constexpr double col_shares[] = {0.202, 0.207, 0.0, 0.216, 0.192, 0.086};

// The room the grid leaves below itself for the count line, in twips.
constexpr int below_grid = 1060;

QString short_date(const QDate& d) {
    return d.isValid() ? QLocale().toString(d, QLocale::ShortFormat) : QString();
}

// yymmdd of an "mmddyyyy" field: the two-digit year sorts first.
QString sort_key(const QString& mmddyyyy) {
    return mmddyyyy.mid(6, 2) + mmddyyyy.left(2) + mmddyyyy.mid(2, 2);
}

// The weekday's name, two blanks and the day in the system's short form.
QString day_text(const QDate& d) {
    if (!d.isValid()) return QString();
    return QLocale().dayName(d.dayOfWeek(), QLocale::LongFormat) + QStringLiteral("  ") +
           short_date(d);
}

bool shown_by_option(int optDisplay, const rmdr_rec& r) {
    switch (optDisplay) {
    case 0:
        return rmdr_status(r) == rmdr_active;
    case 1:
        return rmdr_status(r) == rmdr_expired;
    default:
        return true;
    }
}

// The day a listed row's entry falls on; invalid for the heading or a row
// out of range.
QDate row_date(const RemListForm& f, int row) {
    const Grid& g = f.vsRmdr;
    if (row < g.FixedRows() || row >= g.Rows()) return {};
    return QDate::fromString(g.TextMatrix(row, col_date), Qt::ISODate);
}

void reload(AppState& s) {
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    (void)load_rmdrs(s, s.cur_date, s.cal_path, s.months_back);
}

} // namespace

void imgRem_Click(AppState& s) {
    if (s.cal_path.isEmpty()) {
        modal().message(no_calendar_text, MsgStyle::Warning);
        return;
    }
    modal().open_form(QStringLiteral("frmRemList"));
}

void sysRem_Click() {
    modal().open_form(QStringLiteral("frmRemList"));
}

std::pair<QDate, QDate> monday_to_sunday(const QDate& d) {
    const int w = d.dayOfWeek() % 7 + 1; // Sunday 1 .. Saturday 7
    if (w == 1) return {d.addDays(-6), d};
    return {d.addDays(2 - w), d.addDays(8 - w)};
}

void Form_Load(AppState& s, RemListForm& f) {
    init_rmdr(f);
    const QDate d = s.cur_date.isValid() ? s.cur_date : clock().today();
    if (s.view_month) {
        f.from_date = QDate(d.year(), d.month(), 1);
        f.to_date = QDate(d.year(), d.month(), d.daysInMonth());
    } else {
        std::tie(f.from_date, f.to_date) = monday_to_sunday(d);
    }
    f.optDisplay = 2;
    fill_rmdr(s, f);
}

void init_rmdr(RemListForm& f) {
    Grid& g = f.vsRmdr;
    g.setRedraw(0);
    g.Clear();
    g.setRows(1);
    g.setCols(rmdr_cols);
    g.setFixedRows(1);
    g.setFixedCols(0);
    g.setFormatString(rmdr_format);
    for (int c = col_sort_key; c < rmdr_cols; ++c)
        g.setColHidden(c, true);
    size_cols(f);
}

void size_cols(RemListForm& f) {
    Grid& g = f.vsRmdr;
    const int room = g.Width();
    for (int c = 0; c < col_sort_key; ++c)
        g.setColWidth(c, c == col_picture ? rmdr_picture_col_width : qRound(room * col_shares[c]));
}

void fill_rmdr(Shared& s, RemListForm& f) {
    f.months_read = 0;
    if (f.from_date.isValid() && f.to_date.isValid()) {
        const QString last = yymm_of(f.to_date);
        QDate c = f.from_date;
        // Compared as "yymm" text: a range cannot run on from 99 into 00.
        do {
            build_rmdr_list(s, f, yymm_of(c));
            c = c.addMonths(1);
        } while (yymm_of(c) <= last);
    }
    f.vsRmdr.setRedraw(1);
}

void build_rmdr_list(Shared& s, RemListForm& f, const QString& yymm) {
    ++f.months_read;
    QByteArray member;
    if (extract_rmdr_member(s, s.cal_path, member, yymm) == 0) {
        MemberReader in(member);
        rmdr_rec r;
        QByteArray rec_end;
        while (!in.at_end()) {
            if (!in.read_rmdr(r, rec_end, line_end_len)) {
                s.archive.report_damaged(s.cal_path, rmdr_member_name(yymm));
                continue;
            }
            // The range is the reminder's own day, not its entry's: a January
            // alarm for a February entry is a January row.
            const QDate due = short_to_date(r.rmdr_date.str());
            if (!due.isValid() || due < f.from_date || due > f.to_date) continue;
            if (!shown_by_option(f.optDisplay, r)) continue;
            add_rmdr_row(f, r);
        }
    }

    Grid& g = f.vsRmdr;
    const int last = g.Rows() - 1;
    if (last > g.FixedRows()) {
        // By the entry's day, then its start. Sorting each month in keeps the
        // whole list in order, since a month's alarms may belong to the next
        // month's entries.
        g.Sort(SortOrder::GenericAscending, col_start);
        g.Sort(SortOrder::GenericAscending, col_sort_key);
    }
    for (int row = 0; row <= last; ++row)
        g.setRowHeight(row, rmdr_row_height);
    if (last >= g.FixedRows())
        g.setCell(CellSetting::PictureAlignment, g.FixedRows(), col_picture, last, col_picture,
                  int(Align::CenterCenter));
    f.lblCnt = count_text(last);
}

void add_rmdr_row(RemListForm& f, const rmdr_rec& r) {
    Grid& g = f.vsRmdr;
    g.AddItem(QString());
    const int row = g.Rows() - 1;
    const QString appt_date = r.rmdr_appt_date.str();
    const QDate day = text_to_date(appt_date);
    const QString texts[rmdr_cols] = {
        day_text(day),
        format_field_ampm(r.rmdr_start.str(), true) + QStringLiteral(" - ") +
            format_field_ampm(r.rmdr_end.str(), true),
        QStringLiteral(" "),
        rtrim(r.rmdr_text.str()),
        short_date(short_to_date(r.rmdr_date.str())) + QStringLiteral(" ") +
            format_field_ampm(r.rmdr_time.str(), true),
        rmdr_status(r),
        sort_key(appt_date),
        r.rmdr_id.str(),
        // The day as a value, in a form that reads back whatever the locale.
        day.isValid() ? day.toString(Qt::ISODate) : QString(),
        r.rmdr_start.str(),
        r.rmdr_end.str(),
        appt_date,
        r.rmdr_first_date.str(),
    };
    // Cell by cell: a subject may hold a tab.
    for (int c = 0; c < rmdr_cols; ++c)
        g.setTextMatrix(row, c, texts[c]);
    const QString type = rtrim(r.rmdr_type.str());
    if (!type.isEmpty()) g.setCell(CellSetting::Picture, row, col_picture, type);
}

QString count_text(int rows) {
    return QString::number(rows) +
           (rows == 1 ? QStringLiteral(" reminder ") : QStringLiteral(" reminders"));
}

QString rmdr_status(const rmdr_rec& r) {
    return r.rmdr_fired.str() == u"T" ? rmdr_expired : rmdr_active;
}

void Command1_Click(Shared& s, RemListForm& f) {
    if (f.from_date > f.to_date) {
        modal().message(from_after_to_msg, MsgStyle::Critical);
        return;
    }
    f.busy = true;
    init_rmdr(f);
    fill_rmdr(s, f);
    f.busy = false;
}

void Command2_Click(HelpState& help) {
    show_help(help, topic_of_form(QStringLiteral("frmRemList")));
}

void vsRmdr_DblClick(AppState& s, RemListForm& f, int row, int col) {
    if (col == col_day || col == col_time)
        goto_rmdr_day(s, f, row);
    else if (col == col_picture || col == col_subject)
        open_rmdr_appt(s, f, row);
}

void goto_rmdr_day(AppState& s, RemListForm& f, int row) {
    const QDate date = row_date(f, row);
    if (!date.isValid()) return;
    s.cur_date = date;
    // imageDay_Click lays the day page out again when another planner was up
    // and puts the date in the band.
    s.view_month = false;
    s.view_week = false;
    reload(s);
    imageDay_Click(s.store(), s.view(), s.options(), s.editing(), s.window_port());
}

void open_rmdr_appt(AppState& s, RemListForm& f, int row) {
    const QDate date = row_date(f, row);
    if (!date.isValid()) return;
    const Grid& g = f.vsRmdr;
    const QDate kept = s.cur_date;
    const bool month_changed = g.TextMatrix(row, col_sort_key).left(4) != yymm_of(kept);
    s.cur_date = date;
    if (month_changed) reload(s);

    const QString first = g.TextMatrix(row, col_first_date);
    const QString day = g.TextMatrix(row, col_date_text);
    const QString start = g.TextMatrix(row, col_start);
    const QString end = g.TextMatrix(row, col_end);
    const QString id = g.TextMatrix(row, col_id);
    int index = 0;
    for (int i = 1; i <= s.appt_count && index == 0; ++i) {
        const appt_rec* a = s.appt_row(i);
        if (a && a->appt_first_date.str() == first && a->appt_date.str() == day &&
            a->appt_start.str() == start && a->appt_end.str() == end && a->appt_id.str() == id)
            index = i;
    }
    if (index == 0) {
        modal().message(appt_not_found_msg, MsgStyle::Critical);
        // cur_date stays on the row's day. When that loaded another month,
        // the planner is drawn for it: its cells name rows of appt_tbl, and
        // those now belong to that month.
        if (month_changed) show_planner(s);
        return;
    }

    s.edit_index = index;
    s.edit_start = start;
    s.new_appt = false;
    s.appt_from_planner = false;
    // Cleared here, so that a Cancel, which leaves them as they are, does
    // not pass for a save.
    s.appt_changed = false;
    s.mark_past = false;
    // The tick stands still while the editor holds a row of appt_tbl; it
    // comes back afterwards, since a Cancel would not switch it on again.
    const bool ticking = s.timer1_enabled;
    s.timer1_enabled = false;
    modal().open_form(QStringLiteral("frmAppt1"));
    if (ticking) s.timer1_enabled = true;

    if (month_changed) {
        s.cur_date = kept;
        reload(s);
    }
    // mark_past is the editor's sign that the reminders were made again.
    if (s.mark_past) {
        init_rmdr(f);
        fill_rmdr(s, f);
    }
    // A save drew the planner for the row's day; after going back to another
    // month it is drawn for the kept day again, so its cells and the tables
    // agree.
    if (month_changed || s.mark_past || s.appt_changed) show_planner(s);
}

void Form_Resize(RemListForm& f) {
    if (f.width < rem_list_min_width) f.width = rem_list_min_width;
    f.vsRmdr.set_extent(f.vsRmdr.Width(), std::max(0, f.height - f.grid_top - below_grid));
    size_cols(f);
}

} // namespace orva
