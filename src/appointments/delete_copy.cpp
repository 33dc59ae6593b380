#include "appointments/delete_copy.h"

#include "appointments/recurrence.h"
#include "appointments/saving.h"
#include "core/clock.h"
#include "core/event_loop.h"
#include "core/modal.h"
#include "reminders/reminder_setup.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/month_view.h"
#include "views/status.h"

namespace orva {

namespace {

// Year and month as one number, so months compare across years.
int ym(const QDate& d) {
    return d.year() * 100 + d.month();
}
int ym(const QDateTime& d) {
    return ym(d.date());
}

// The interval of a period rule's occurs text; a one-time entry steps by days.
QString walk_letter(const QString& occurs) {
    const QString l = period_letter(occurs);
    return l.isEmpty() ? QStringLiteral("d") : l;
}

QString lead_letter(qint16 unit) {
    switch (unit) {
    case 1:
        return QStringLiteral("h");
    case 2:
        return QStringLiteral("d");
    default:
        return QStringLiteral("n");
    }
}

// The data of the selected cell of the day grid; "" when none is selected.
QString selected_data(const PlannerState& view) {
    const Grid& g = view.vsSched;
    if (g.Row() < 0 || g.Col() < 1 || g.Row() >= g.Rows() || g.Col() >= g.Cols()) return {};
    return g.Cell(CellSetting::Data, g.Row(), g.Col()).toString();
}

bool holds_entry(const QString& data) {
    return !data.isEmpty() && data != blank_data;
}

bool calendar_open(const Shared& store) {
    if (!store.cal_path.isEmpty()) return true;
    modal().message(no_calendar_text, MsgStyle::Warning);
    return false;
}

// The appt_tbl row of the entry selected in the day planner, 0 after the
// message that asks for one (in `style`) or when no calendar is open.
int selected_entry(const Shared& store, const PlannerState& view, MsgStyle style) {
    if (!calendar_open(store)) return 0;
    const QString d = selected_data(view);
    if (!holds_entry(d)) {
        modal().message(select_appt_first_msg, style);
        return 0;
    }
    return d.toInt();
}

// The cursor on the time labels of column 0 is no selection of a row.
bool row_selected(const Grid& g) {
    return g.Row() >= 0 && g.Col() >= 1;
}

// The time label of the selected row, one blank for the untimed row.
QString selected_row_time(const PlannerState& view) {
    const Grid& g = view.vsSched;
    return g.Row() > 0 ? g.TextMatrix(g.Row(), 0) : QStringLiteral(" ");
}

bool overview_up(const PlannerState& view) {
    return view.view_month || view.view_week;
}

// The entry of the line the Edit commands act on in the week or month
// planner (see overvw_target), 0 after the message that tells what is
// missing.
int overview_entry(PlannerState& view) {
    const OverviewCell at = overvw_target(view);
    if (at.row < 0) {
        modal().message(click_to_select_msg, MsgStyle::Warning);
        return 0;
    }
    const int index = overvw_entry(view, at.row, at.col);
    if (index == 0) modal().message(select_appt_first_overvw_msg, MsgStyle::Warning);
    return index;
}

} // namespace

bool delCmd_Click(AppState& s) {
    Grid& g = s.vsSched;
    const int keep_row = g.Row(), keep_col = g.Col();
    const int r = s.edit_index;
    const appt_rec* a = s.appt_row(r);
    if (r == 0 || !a) {
        modal().message(couldnt_delete_msg, MsgStyle::Critical);
        return false;
    }
    const QDate first = text_to_date(a->appt_first_date);
    const QString end = a->appt_end, start = a->appt_start, until = a->appt_until;
    const qint16 every = field_number(a->appt_occurs_every, 0);
    const QString occurs = a->appt_occurs;
    const qint16 lead = field_number(a->appt_rem_lead, 0);
    const qint16 unit = field_number(a->appt_rem_unit, 0);
    const QString key = a->appt_id, pattern = a->appt_pattern;
    const QString t = rtrim(a->appt_text);

    const QString question =
        pattern != u"1 " || occurs != u"0 "
            ? QStringLiteral("This will delete all occurrences of appointment: '") + t +
                  QStringLiteral("' Do you want to continue?")
            : QStringLiteral("Confirm delete of appointment: '") + t + QStringLiteral("' ?");
    if (modal().ask_yes_no(question, MsgStyle::Question) != Answer::Yes) return false;

    {
        Archive::Command command(s.archive, s.cal_path);
        int e = delete_series(s, first, end, start, key, until, every, occurs, pattern);
        // Wider than the edit's test on purpose: a lead of 0 walks too and
        // finds nothing to drop.
        if (!e && lead >= 0)
            e = delete_series_rmdrs(s, first, end, start, key, until, lead, unit, every, occurs,
                                    pattern);
        if (!e) e = load_appts(s, s.cur_date, s.cal_path, 0);
        if (!e) e = load_rmdrs(s, s.cur_date, s.cal_path, s.months_back);
        command.abort(e);
        if (command.finish() != err::none) {
            report_failed_update(s);
            return false;
        }
    }

    if (overview_up(s)) {
        refill_overview(s, s.window_port());
    } else {
        rebuild_day(s.store(), s.view(), s.options(), s.editing());
        TabStrip1_Click(s);
        clear_detail(s);
        // The old cell's data is not written back: it names the row just deleted.
        if (keep_row >= 0 && keep_col >= 0 && keep_row < g.Rows() && keep_col < g.Cols())
            g.Select(keep_row, keep_col);
        show_status(s.store(), s.view());
    }
    return true;
}

int delete_series(Shared& store, const QDate& first, const QString& end, const QString& start,
                  const QString& key, const QString& until, qint16 every, const QString& occurs,
                  const QString& pattern) {
    Q_UNUSED(end);
    Q_UNUSED(start);
    const int step = every + 1;
    const QString letter = walk_letter(occurs);
    const bool by_weekday = pattern == u"2 ";
    QDate cursor = first;
    QDate u = short_to_date(until);
    if (!u.isValid() || ym(u) < ym(cursor)) u = cursor;

    Archive::Command command(store.archive, store.cal_path);
    while (cursor.isValid() && ym(cursor) <= ym(u)) {
        const int m = ym(cursor);
        if (const int e = delete_by_key(store, store.cal_path, MemberKind::appointments,
                                        yymm_of(cursor), key))
            return e;
        if (by_weekday) {
            cursor = cursor.addMonths(1);
        } else {
            while (cursor.isValid() && ym(cursor) <= m)
                cursor = date_add(letter, step, cursor);
        }
        yield_events();
    }
    return command.finish();
}

int delete_series_rmdrs(Shared& store, const QDate& first, const QString& end, const QString& start,
                        const QString& key, const QString& until, qint16 lead, qint16 unit,
                        qint16 every, const QString& occurs, const QString& pattern) {
    Q_UNUSED(end);
    Q_UNUSED(start);
    const int step = every + 1;
    const QString letter = walk_letter(occurs);
    const QString back = lead_letter(unit);
    const bool by_weekday = pattern == u"2 ";
    // Each month is read where the reminder of its first possible occurrence
    // falls: the base date moved back by the lead.
    QDateTime b(first, QTime(0, 0), Qt::UTC);
    QDateTime cursor = date_add(back, -lead, b);
    const QDate u = short_to_date(until);
    int last = u.isValid() ? ym(u) : ym(cursor);
    if (last < ym(cursor)) last = ym(cursor);

    Archive::Command command(store.archive, store.cal_path);
    while (cursor.isValid() && ym(cursor) <= last) {
        const int m = ym(cursor);
        if (const int e = delete_by_key(store, store.cal_path, MemberKind::reminders,
                                        yymm_of(cursor.date()), key))
            return e;
        do {
            b = by_weekday ? b.addMonths(1) : date_add(letter, step, b);
            cursor = date_add(back, -lead, b);
        } while (!by_weekday && cursor.isValid() && ym(cursor) <= m);
        yield_events();
    }
    return command.finish();
}

int copy_appt(AppState& s, ApptForm& f) {
    s.appt_copy = false;
    const int r = s.edit_index;
    if (r == 0) {
        modal().message(couldnt_update_msg, MsgStyle::Critical);
        return err::none;
    }
    ++s.appt_count;
    const int n = s.appt_count;
    const QString key = new_appt_id();
    // A copy is new: its alarms in the past are written as waiting.
    s.mark_past = false;

    Archive::Command command(s.archive, s.cal_path);
    f.occurs_field = number_field(s.occ_by_period ? s.occ_period : s.occ_ordinal);
    if (!s.occ_by_period || f.occurs_field != u"0 ") {
        if (!s.occ_by_period)
            build_weekday_occurs(s.store(), s.editing(), f, key);
        else
            build_occurs(s.store(), s.editing(), f, f.occurs_field, key);
        if (const int e = write_occurs(s, s.cal_path)) return e;
        if (s.rem_lead > 0)
            if (const int e = make_series_rmdrs(s.store(), s.editing())) return e;
        if (const int e = load_rmdrs(s, clock().today(), s.cal_path, s.months_back)) return e;
    } else {
        fill_appt_row(s.store(), s.editing(), f, n, key);
        if (const int e = write_appts(s, s.cal_path, append_mode, n)) return e;
        const appt_rec* row = s.appt_row(n);
        if (row && field_number(row->appt_rem_lead, 0) != 0)
            if (const int e = add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, n))
                return e;
        if (const int e = load_rmdrs(s, s.cur_date, s.cal_path, s.months_back)) return e;
    }
    if (const int e = load_appts(s, s.cur_date, s.cal_path, 0)) return e;
    refresh_planner(s);
    return command.finish();
}

void imageReminder_Click(AppState& s) {
    if (!calendar_open(s)) return;
    hand_over_new(s.store(), s.editing());
    const bool day_up = !s.view_month && !s.view_week;
    s.edit_start = day_up && row_selected(s.vsSched)
                       ? selected_row_time(s)
                       : clock().now().time().toString(QStringLiteral("HH:mm"));
    open_editor(s.editing(), s.run());
}

void imageClock_Click(AppState& s) {
    if (overview_up(s)) {
        if (!calendar_open(s)) return;
        const OverviewCell at = overvw_target(s);
        if (at.row >= 0 &&
            s.vsOvervw.Cell(CellSetting::Data, at.row, at.col).toString().isEmpty()) {
            modal().message(select_appt_first_msg, MsgStyle::Warning);
            return;
        }
        const int index = overview_entry(s);
        if (index == 0) return;
        s.edit_index = index;
        delCmd_Click(s);
        return;
    }
    const int index = selected_entry(s.store(), s.view(), MsgStyle::Warning);
    if (index == 0) return;
    s.edit_index = index;
    delCmd_Click(s);
}

void mnuCopy_Click(AppState& s) {
    if (overview_up(s)) {
        if (!calendar_open(s)) return;
        const OverviewCell at = overvw_target(s);
        if (at.row < 0) {
            modal().message(click_to_select_msg, MsgStyle::Warning);
            return;
        }
        const Grid& g = s.vsOvervw;
        if (g.Cell(CellSetting::Data, at.row, at.col).toString().isEmpty()) return;
        if (g.TextMatrix(at.row, at.col) == more_text) {
            modal().message(QStringLiteral("nothing to copy"), MsgStyle::Information);
            return;
        }
        const int index = overvw_entry(s, at.row, at.col);
        const appt_rec* a = s.appt_row(index);
        if (index == 0 || !a) {
            if (s.view_week)
                modal().message(QStringLiteral("Problem copying appointment"), MsgStyle::Critical);
            else
                modal().message(select_appt_first_overvw_msg, MsgStyle::Warning);
            return;
        }
        s.new_appt = true;
        s.appt_copy = true;
        s.edit_index = index;
        s.edit_start = a->appt_start.str();
        const QDate day = overvw_day(g, at.row, at.col);
        if (day.isValid()) s.edit_date = day;
        s.timer1_enabled = false;
        open_editor(s.editing(), s.run());
        return;
    }
    // Checked before the flags are set, so a refused copy cannot leave the
    // next opening of the editor in copy mode.
    const int index = selected_entry(s.store(), s.view(), MsgStyle::Information);
    if (index == 0) return;
    s.new_appt = true;
    s.appt_copy = true;
    s.edit_start = selected_row_time(s);
    s.edit_index = index;
    s.timer1_enabled = false;
    open_editor(s.editing(), s.run());
}

void mnuEditA_Click(AppState& s) {
    if (overview_up(s)) {
        if (!calendar_open(s)) return;
        if (overview_entry(s) == 0) return;
        const OverviewCell at = overvw_target(s);
        vsOvervw_DblClick(s, at.row, at.col);
        return;
    }
    if (selected_entry(s.store(), s.view(), MsgStyle::Warning) == 0) return;
    const Grid& g = s.vsSched;
    sched_hand_over(s.store(), s.view(), s.editing(), g.Row(), g.Col());
    open_editor(s.editing(), s.run());
}

} // namespace orva
