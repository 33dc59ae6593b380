#include "search/search.h"

#include "core/clock.h"
#include "core/event_loop.h"
#include "core/modal.h"
#include "store/calendar_file.h"
#include "store/member_format.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/refresh.h"

#include <QLocale>

namespace orva {
namespace {

// Hidden columns that carry the record, in the order add_hit writes them.
enum : int {
    col_text = 0,
    col_date = 1,
    col_begin = 2,
    col_end = 3,
    col_notes = 4,
    col_first_date = 5,
    col_date_text = 6,
    col_start_text = 7,
    col_end_text = 8,
    col_id = 9,
    col_sort_key = 21,
    col_last = 23,
};

QString left_trimmed(const QString& s) {
    qsizetype i = 0;
    while (i < s.size() && s.at(i) == QLatin1Char(' '))
        ++i;
    return s.mid(i);
}

QString short_date(const QDate& d) {
    return QLocale().toString(d, QLocale::ShortFormat);
}

// "yyyymmdd" of an "mmddyyyy" field, compared as text with the range.
QString day_key(const appt_rec& r) {
    const QString d = r.appt_date.str();
    return d.mid(4, 4) + d.left(2) + d.mid(2, 2);
}

// yymmdd of an "mmddyyyy" field: the two-digit year sorts first.
QString sort_key(const QString& mmddyyyy) {
    return mmddyyyy.mid(6, 2) + mmddyyyy.left(2) + mmddyyyy.mid(2, 2);
}

bool is_hit(SearchForm& f, const appt_rec& r) {
    switch (f.srch_kind) {
    case 0:
    case 1:
        f.matcher.set_text(f.srch_kind == 0 ? r.appt_text.str() : r.appt_notes.str());
        f.matcher.set_pattern(left_trimmed(f.apptText));
        return f.matcher.matches() > 0;
    case 2:
        if (f.srch_type == u"0") return true;
        return rtrim(r.appt_type.str()) == rtrim(f.srch_type);
    default:
        return true;
    }
}

bool overtaken(const SearchForm& f, quint64 serial) {
    return f.srch_stop || f.run_serial != serial;
}

void reload(AppState& s) {
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    (void)load_rmdrs(s, s.cur_date, s.cal_path, 0);
}

// The date of a listed row; invalid for the heading or a row out of range.
QDate row_date(const SearchForm& f, int row) {
    if (row < f.srchGrid.FixedRows() || row >= f.srchGrid.Rows()) return {};
    return text_to_date(f.srchGrid.TextMatrix(row, col_date_text));
}

} // namespace

int StringMatcher::matches() const {
    if (pattern_.isEmpty()) return 1;
    return int(text_.count(pattern_, case_));
}

QString hits_text(int hits, const QDate& from, const QDate& to) {
    const QString range = short_date(from) + QStringLiteral(" - ") + short_date(to);
    if (hits == 1) return QStringLiteral("1  Appointment found for date range ") + range;
    return QString::number(hits) + QStringLiteral("  Appointments found for date range ") + range;
}

QString print_title(const SearchForm& f) {
    return f.lblHits + QStringLiteral(" printed on ") +
           QLocale().toString(clock().today(), QLocale::LongFormat);
}

void Form_Load(SearchForm& f) {
    for (const char* n : {"srchGrid", "stopCmd", "lblResults", "imgPrint"})
        f.ctl(QString::fromLatin1(n)).visible = false;
    fill_stickers(f.typeIcombo, QStringLiteral("frmSearch"));
    f.typeIcombo.list_index = f.typeIcombo.items.empty() ? -1 : 0;
    f.srch_type = QStringLiteral("1");
    f.srchDTPicker1 = f.srchDTPicker2 = clock().today();
    f.height = 4280;
    f.srchGrid.setCols(srch_cols);
    f.srchGrid.setFormatString(srch_format);
    f.srchGrid.setFixedRows(1);
    f.srchGrid.setRows(1);
}

void fit_grid(SearchForm& f) {
    Grid& g = f.srchGrid;
    g.set_extent(f.width - f.grid_left - 270, f.height - f.grid_top - 420);
    share_columns(g, g.Width());
}

void share_columns(Grid& g, int room) {
    const int shares[] = {30, 20, 10, 10, 30};
    for (int c = 0; c < 5 && c < g.Cols(); ++c)
        g.setColWidth(c, room * shares[c] / 100);
}

void Command1_Click(Shared& s, SearchForm& f) {
    f.busy = true;
    f.srchGrid.setRows(std::min(f.srchGrid.Rows(), 1));
    f.lblHits.clear();
    f.srch_stop = false;
    if (f.height < 7680) f.height = 7680;
    fit_grid(f);
    for (const char* n : {"srchGrid", "stopCmd", "lblResults", "imgPrint"}) {
        Control& c = f.ctl(QString::fromLatin1(n));
        c.visible = true;
        c.enabled = true;
    }
    const quint64 serial = ++f.run_serial;
    if (f.shown) f.shown();
    run_search(s, f);
    if (f.run_serial != serial) return; // a newer search finished the form's state
    f.busy = false;
    f.ctl(QStringLiteral("stopCmd")).enabled = false;
    f.srch_stop = false;
}

void run_search(Shared& s, SearchForm& f) {
    const quint64 serial = f.run_serial;
    f.srch_hits = 0;
    f.first_yymm = yymm_of(f.srchDTPicker1);
    f.last_yymm = yymm_of(f.srchDTPicker2);
    f.first_day = f.srchDTPicker1.toString(QStringLiteral("yyyyMMdd"));
    f.last_day = f.srchDTPicker2.toString(QStringLiteral("yyyyMMdd"));
    f.srch_type = f.typeIcombo.selected_key();
    QDate c = f.srchDTPicker1;

    Grid& g = f.srchGrid;
    g.setRedraw(0);
    f.matcher.set_case_sensitive(f.Check1);
    g.setCols(srch_cols);
    g.setFormatString(srch_format);
    g.setFixedRows(1);
    fit_grid(f);
    for (int col = 5; col < srch_cols; ++col)
        g.setColHidden(col, true);

    while (!f.srch_stop) {
        if (!search_month(s, f, yymm_of(c))) break;
        c = c.addMonths(1);
        // Compared as "yymm" text, as the range always was: the loop cannot
        // cross from 99 into 00.
        if (yymm_of(c) > f.last_yymm) f.srch_stop = true;
    }
    if (f.run_serial != serial) return;

    f.lblHits = hits_text(f.srch_hits, f.srchDTPicker1, f.srchDTPicker2);
    if (g.Rows() > 1) {
        g.Select(1, col_sort_key, g.Rows() - 1, col_last);
        g.Sort(SortOrder::GenericAscending, col_sort_key, col_last);
    }
    g.setRedraw(1);
}

bool search_month(Shared& s, SearchForm& f, const QString& yymm) {
    const quint64 serial = f.run_serial;
    QByteArray member;
    if (extract_appt_member(s, s.cal_path, member, yymm) != 0) return !overtaken(f, serial);
    ++f.months_read;
    MemberReader in(member);
    appt_rec r;
    QByteArray rec_end;
    while (!in.at_end()) {
        if (!in.read_appt(r, rec_end, 2)) {
            s.archive.report_damaged(s.cal_path, appt_member_name(yymm));
            continue;
        }
        const QString key = day_key(r);
        if (key >= f.first_day && key <= f.last_day && is_hit(f, r)) add_hit(f, r);
        yield_events();
        if (overtaken(f, serial)) return false;
    }
    return true;
}

void add_hit(SearchForm& f, const appt_rec& r) {
    ++f.srch_hits;
    Grid& g = f.srchGrid;
    g.AddItem(QString());
    const int row = g.Rows() - 1;
    const QString date = r.appt_date.str();
    const QString texts[srch_cols] = {
        rtrim(r.appt_text.str()),
        short_date(text_to_date(date)),
        format_field_ampm(r.appt_start.str(), false),
        format_field_ampm(r.appt_end.str(), false),
        rtrim(r.appt_notes.str()),
        r.appt_first_date.str(),
        date,
        r.appt_start.str(),
        r.appt_end.str(),
        r.appt_id.str(),
        r.appt_text.str(),
        r.appt_type.str(),
        r.appt_occurs.str(),
        r.appt_occurs_month.str(),
        r.appt_occurs_every.str(),
        r.appt_until.str(),
        r.appt_rem_lead.str(),
        r.appt_rem_unit.str(),
        r.appt_rem_anim.str(),
        r.appt_rem_text.str(),
        r.appt_notes.str(),
        sort_key(date),
        r.appt_start.str(),
        r.appt_end.str(),
    };
    // Cell by cell rather than one tabbed line: notes may hold a tab.
    for (int c = 0; c < srch_cols && c < g.Cols(); ++c)
        g.setTextMatrix(row, c, texts[c]);
    const QString type = rtrim(r.appt_type.str());
    if (!type.isEmpty()) {
        g.setCell(CellSetting::Picture, row, col_text, type);
        g.setCell(CellSetting::PictureAlignment, row, col_text, int(Align::LeftCenter));
        g.setCell(CellSetting::Alignment, row, col_text, int(Align::LeftCenter));
    }
}

void stopCmd_Click(SearchForm& f) {
    f.srch_stop = true;
}

void ClearCmd_Click(SearchForm& f) {
    f.srchGrid.setRows(std::min(f.srchGrid.Rows(), 1));
    f.apptText = QStringLiteral(" ");
    f.ctl(QStringLiteral("stopCmd")).enabled = false;
    f.typeIcombo.list_index = f.typeIcombo.items.empty() ? -1 : 0;
    f.lblHits.clear();
    f.srch_type = QStringLiteral("1");
    f.srch_stop = false;
}

void srchGrid_Click(AppState& s, SearchForm& f, int row, int col) {
    if (col == col_text)
        goto_hit(s, f, row);
    else if (col == col_date)
        show_hit(s, f, row);
}

void goto_hit(AppState& s, SearchForm& f, int row) {
    const QDate date = row_date(f, row);
    if (!date.isValid()) return;
    const QDate kept = s.cur_date;
    const Grid& g = f.srchGrid;
    const QString d = g.TextMatrix(row, col_date_text);
    const QString start = g.TextMatrix(row, col_start_text);
    const QString end = g.TextMatrix(row, col_end_text);
    const QString id = g.TextMatrix(row, col_id);
    s.cur_date = date;
    const bool month_changed = yymm_of(date) != yymm_of(kept);
    if (month_changed) reload(s);

    int index = 0;
    for (int i = 1; i <= s.appt_count && index == 0; ++i) {
        const appt_rec* a = s.appt_row(i);
        if (a && a->appt_id.str() == id && a->appt_date.str() == d &&
            a->appt_start.str() == start && a->appt_end.str() == end)
            index = i;
    }
    if (index == 0) {
        // Changed or deleted since the search listed it (the editor opened
        // from this list may have done so).
        modal().message(hit_gone_msg, MsgStyle::Information);
        s.cur_date = kept;
        if (month_changed) reload(s);
        return;
    }
    s.edit_index = qint16(index);
    s.edit_start = start;
    s.new_appt = false;
    s.appt_from_planner = false;
    s.appt_changed = false;
    // The tick stands still while the editor holds a row of appt_tbl, as for
    // every editing; unlike the planner's Cancel, it comes back afterwards,
    // since nothing else on this road would switch it on again.
    const bool ticking = s.timer1_enabled;
    s.timer1_enabled = false;
    modal().open_form(QStringLiteral("frmAppt1"));
    if (ticking) s.timer1_enabled = true;

    if (month_changed || s.appt_changed) {
        s.cur_date = kept;
        reload(s);
        show_planner(s);
    }
}

void show_hit(AppState& s, SearchForm& f, int row) {
    const QDate date = row_date(f, row);
    if (!date.isValid()) return;
    s.cur_date = date;
    // imageDay_Click lays the day page out again when another planner was up.
    s.view_month = false;
    s.view_week = false;
    reload(s);
    imageDay_Click(s.store(), s.view(), s.options(), s.editing(), s.window_port());
    f.unload = true;
}

} // namespace orva
