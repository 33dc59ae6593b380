#include "appointments/saving.h"

#include "appointments/delete_copy.h"
#include "appointments/recurrence.h"
#include "core/clock.h"
#include "core/modal.h"
#include "reminders/reminder_setup.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/status.h"

namespace orva {

void fill_appt_row(Shared& store, const EditorState& editing, const ApptForm& f, int row,
                   const QString& key) {
    appt_rec* a = store.appt_row(row);
    if (!a) return;
    const QString first = f.apptDTPicker.toString(QStringLiteral("MMddyyyy"));
    a->appt_first_date = first;
    a->appt_date = first;
    if (f.pickers_enabled) {
        a->appt_start = start_text(f);
        a->appt_end = end_text(f);
    } else {
        a->appt_start.blank();
        a->appt_end.blank();
    }
    a->appt_id = key;
    a->appt_text = cut_to_bytes(f.Text1, text1_limit);
    a->appt_type = f.typeIcombo.selected_key();
    a->appt_occurs = f.occurs_field;
    a->appt_occurs_month = number_field(editing.occ_month);
    a->appt_occurs_every = number_field(editing.occ_every);
    a->appt_until = editing.occ_until;
    a->appt_rem_lead = number_field(editing.rem_lead);
    a->appt_rem_unit = number_field(editing.rem_unit);
    a->appt_rem_anim = number_field(editing.rem_anim);
    a->appt_rem_text = editing.rem_sound;
    a->appt_notes = f.Notes;
    a->appt_pattern = editing.occ_by_period ? QStringLiteral("1 ") : QStringLiteral("2 ");
}

void copy_occur_row(Shared& store, const EditorState& editing, int target, int source) {
    appt_rec* src = store.occur_row(source);
    appt_rec* dst = store.appt_row(target);
    if (!src) return;
    src->appt_pattern = editing.occ_by_period ? QStringLiteral("1 ") : QStringLiteral("2 ");
    if (dst) *dst = *src;
}

namespace {

const QString one_time = QStringLiteral("0 ");

// Inside the command, so a read that fails fails the command too.
int reload_rmdrs(Shared& store, const RunState& run, const QDate& from) {
    return load_rmdrs(store, from, store.cal_path, run.months_back);
}

// Generates a series under the rule in force with `key` and writes it. The
// caller has set occurs_field.
int write_series(Shared& store, const EditorState& editing, ApptForm& f, const QString& key) {
    if (!editing.occ_by_period)
        build_weekday_occurs(store, editing, f, key);
    else
        build_occurs(store, editing, f, f.occurs_field, key);
    return write_occurs(store, store.cal_path);
}

// The occurs text of the rule in force: the ordinal of a weekday rule, the
// period of any other.
QString rule_occurs(const EditorState& editing) {
    return number_field(editing.occ_by_period ? editing.occ_period : editing.occ_ordinal);
}

QString as_mmddyy(const QString& until) {
    const QDate d = short_to_date(until);
    return d.isValid() ? d.toString(QStringLiteral("MMddyy")) : until;
}

} // namespace

bool save_appt(AppState& s, ApptForm& f) {
    // One user command, one transaction: a crash or a failed step leaves the
    // old series or the new one, never half of either.
    const bool was_new = s.new_appt, was_copy = s.appt_copy;
    Archive::Command command(s.archive, s.cal_path);
    int e = err::none;
    if (s.appt_copy) {
        e = copy_appt(s, f);
    } else if (!s.new_appt) {
        e = apply_edit(s, f);
    } else {
        s.mark_past = false;
        f.occurs_field = rule_occurs(s);
        const QString key = new_appt_id();
        if (!s.occ_by_period || f.occurs_field != one_time) {
            e = write_series(s.store(), s.editing(), f, key);
            if (!e && s.rem_lead > 0) e = make_series_rmdrs(s.store(), s.editing());
        } else {
            ++s.appt_count;
            fill_appt_row(s.store(), s.editing(), f, s.appt_count, key);
            e = write_appts(s, s.cal_path, append_mode, s.appt_count);
            if (!e && s.rem_lead > 0)
                e = add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, s.appt_count);
        }
        if (!e) e = reload_rmdrs(s.store(), s.run(), s.cur_date);
        if (!e) e = load_appts(s, s.cur_date, s.cal_path, 0);
        if (!e) refresh_planner(s);
    }
    command.abort(e);
    const int committed = command.finish();
    if (e || committed) {
        report_failed_update(s);
        // The editor stays up with what the user typed, in the mode it was
        // opened in, to be tried again or cancelled.
        s.new_appt = was_new;
        s.appt_copy = was_copy;
        return false;
    }
    end_update(s.store(), s.view(), s.run());
    return true;
}

int apply_edit(AppState& s, ApptForm& f) {
    s.mark_past = s.appt_changed = s.type_changed = false;
    const auto both = [&s] { s.appt_changed = s.mark_past = true; };
    if (s.old_lead != s.rem_lead || s.old_unit != s.rem_unit || s.old_anim != s.rem_anim ||
        f.was_occurs != s.occ_period || f.was_spare1 != s.occ_ordinal ||
        f.was_every != s.occ_every || f.was_spare2 != s.occ_weekday || f.was_month != s.occ_month)
        both();
    else if (start_text(f) != f.was_start)
        both(); // an untimed entry always lands here: its blank start never equals a time
    else if (end_text(f) != f.was_end)
        both();
    else if (as_mmddyy(f.was_until) != as_mmddyy(s.occ_until))
        both();
    else if (s.notes_dirty)
        s.appt_changed = true;
    else if (f.Text1 != f.was_text)
        both();
    else if (f.typeIcombo.selected_key() != f.was_type) {
        both();
        s.type_changed = true;
    } else if (s.rem_sound != s.old_sound)
        s.appt_changed = true; // the rows only: reminders made earlier keep their sound
    else if (f.apptDTPicker.toString(QStringLiteral("MMddyyyy")) != f.was_first_date)
        both();
    else if (f.Notes != f.was_notes || f.timed_touched)
        s.appt_changed = true;

    const QDate first = text_to_date(f.was_first_date);
    if (s.edit_index == 0) {
        modal().message(couldnt_update_msg, MsgStyle::Critical);
        return err::none;
    }
    if (s.appt_changed) return upd_appt(s, f, s.edit_index, first);
    return err::none;
}

int upd_appt(AppState& s, ApptForm& f, int row, const QDate& first_date) {
    const appt_rec* a = s.appt_row(row);
    if (!a) return err::none;
    // Taken before anything moves: the generation below reuses the tables.
    const QString end = a->appt_end, start = a->appt_start, until = a->appt_until;
    const qint16 every = field_number(a->appt_occurs_every, 0);
    const QString occurs = a->appt_occurs;
    const qint16 lead = field_number(a->appt_rem_lead, 0);
    const qint16 unit = field_number(a->appt_rem_unit, 0);
    const QString key = a->appt_id;
    const QString pattern = a->appt_pattern;

    Archive::Command command(s.archive, s.cal_path);
    f.occurs_field = occurs;
    if (!s.appt_copy)
        if (const int e = delete_series(s, first_date, end, start, key, until, every,
                                        f.occurs_field, pattern))
            return e;
    f.occurs_field = rule_occurs(s);

    const auto drop_old_rmdrs = [&]() -> int {
        if (lead > 0)
            return delete_series_rmdrs(s, first_date, end, start, key, until, lead, unit, every,
                                       occurs, pattern);
        return err::none;
    };
    if (!s.occ_by_period || f.occurs_field != one_time) {
        if (const int e = write_series(s.store(), s.editing(), f, key)) return e;
        if (s.mark_past) {
            if (const int e = drop_old_rmdrs()) return e;
            if (s.rem_lead > 0)
                if (const int e = make_series_rmdrs(s.store(), s.editing())) return e;
            if (const int e = reload_rmdrs(s.store(), s.run(), clock().today())) return e;
        }
    } else {
        fill_appt_row(s.store(), s.editing(), f, row, key);
        if (const int e = write_appts(s, s.cal_path, append_mode, row)) return e;
        if (s.mark_past) {
            if (const int e = drop_old_rmdrs()) return e;
            const appt_rec* now = s.appt_row(row);
            if (now && field_number(now->appt_rem_lead, 0) != 0)
                if (const int e = add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, row))
                    return e;
            if (const int e = reload_rmdrs(s.store(), s.run(), s.cur_date)) return e;
        }
    }
    if (const int e = load_appts(s, s.cur_date, s.cal_path, 0)) return e;
    // Opened from the search or the reminder list, the planner is left alone.
    if (s.view_month || s.view_week || s.appt_from_planner)
        refresh_planner(s);
    return command.finish();
}

void end_update(const Shared& store, PlannerState& view, RunState& run) {
    show_status(store, view);
    view.status_panels[panel_count].text = calendar_updated_text;
    run.timer1_enabled = true;
}

} // namespace orva
