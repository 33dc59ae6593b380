#include "appointments/appt_editor.h"

#include "appointments/recurrence.h"
#include "appointments/saving.h"
#include "core/clock.h"
#include "core/modal.h"
#include "reminders/reminder_setup.h"
#include "views/day_view.h"

#include <QLocale>
#include <QRegularExpression>

namespace orva {

namespace {

const QString hhmm = QStringLiteral("HH:mm");

// work_start / work_end ("8:00:00 AM") as times; the All Day pair.
QTime work_time(const QString& text, int fallback_hour) {
    const QTime t = QLocale::c().toTime(text.trimmed(), QStringLiteral("h:mm:ss AP"));
    return t.isValid() ? t : QTime(fallback_hour, 0);
}
QTime work_start_time(const OptionsState& options) {
    return work_time(options.work_start, 8);
}
QTime work_end_time(const OptionsState& options) {
    return work_time(options.work_end, 17);
}

// The time a caller hands over: "hh:mm", a row label " 09:30 am", or a date
// and time as text ("3/15/2026 9:10:00 AM"). Invalid when there is none.
QTime handed_time(const QString& text) {
    static const QRegularExpression re(
        QStringLiteral("(\\d{1,2}):(\\d{2})(?::\\d{2})?\\s*([AaPp][Mm])?\\s*$"));
    const QRegularExpressionMatch m = re.match(text.trimmed());
    if (!m.hasMatch()) return QTime();
    int h = m.captured(1).toInt();
    const int min = m.captured(2).toInt();
    const QString ap = m.captured(3).toLower();
    if (ap == u"am" && h == 12) h = 0;
    if (ap == u"pm" && h < 12) h += 12;
    return QTime(h, min);
}

// Check2 follows the pickers: ticked exactly when they stand on the working day.
void follow_all_day(const OptionsState& options, ApptForm& f) {
    f.Check2 =
        f.aptTimePick1 == work_start_time(options) && f.aptTimePick2 == work_end_time(options);
}

void set_timed(ApptForm& f, bool timed) {
    f.Check1 = timed;
    f.pickers_enabled = timed;
    f.Check2_enabled = timed;
}

void load_existing(const OptionsState& options, EditorState& editing, ApptForm& f,
                   const appt_rec& a) {
    f.Text1 = rtrim(a.appt_text);
    f.was_text = f.Text1;
    f.was_type = rtrim(a.appt_type);
    f.typeIcombo.select_type(f.was_type);

    if (a.appt_pattern.str() == u"1 ") {
        editing.occ_period = field_number(a.appt_occurs, 0);
        editing.occ_every = field_number(a.appt_occurs_every, 0);
        f.was_occurs = editing.occ_period;
        f.was_every = editing.occ_every;
        editing.occ_by_period = true;
        editing.occ_by_weekday = false;
    } else {
        editing.occ_ordinal = field_number(a.appt_occurs, 0);
        editing.occ_weekday = field_number(a.appt_occurs_every, 0);
        editing.occ_month = field_number(a.appt_occurs_month, 0);
        f.was_occurs = editing.occ_ordinal;
        f.was_every = editing.occ_weekday;
        f.was_month = editing.occ_month;
        editing.occ_by_period = false;
        editing.occ_by_weekday = true;
    }

    editing.rem_lead = editing.old_lead = field_number(a.appt_rem_lead, 0);
    editing.rem_unit = editing.old_unit = field_number(a.appt_rem_unit, 0);
    // A stored 0 means no messenger, the same as 1.
    const qint16 anim = field_number(a.appt_rem_anim, 1);
    editing.rem_anim = editing.old_anim = anim == 0 ? qint16(1) : anim;
    editing.rem_sound = editing.old_sound = rtrim(a.appt_rem_text);

    f.was_first_date = a.appt_first_date;
    f.apptDTPicker = text_to_date(a.appt_first_date);
    editing.edit_date = f.apptDTPicker;
    f.txtApptDt = long_date_text(text_to_date(a.appt_date));

    const bool timed = !a.appt_start.is_blank();
    if (timed) {
        f.aptTimePick1 = hhmm_to_time(a.appt_start);
        const QTime end = hhmm_to_time(a.appt_end);
        f.aptTimePick2 = end.isValid() ? end : f.aptTimePick1;
    }
    f.was_start = a.appt_start;
    f.was_end = a.appt_end;
    set_timed(f, timed);
    // Judged on what the pickers hold, so an untimed entry can come up ticked
    // too when they were left on the working day.
    follow_all_day(options, f);

    editing.occ_until = a.appt_until;
    f.was_until = editing.occ_until;
    f.Notes = rtrim(a.appt_notes);
    f.was_notes = f.Notes;
    f.delCmd_enabled = true;
    f.appt_dt_shown = true;
}

void load_new(EditorState& editing, ApptForm& f) {
    f.caption = QStringLiteral("New Appointment");
    f.Text1 = text1_prompt;
    f.typeIcombo.list_index = f.typeIcombo.items.empty() ? -1 : 0;
    editing.occ_period = editing.occ_every = editing.occ_ordinal = editing.occ_weekday =
        editing.occ_month = 0;
    editing.occ_by_period = true;
    editing.occ_by_weekday = false;
    f.apptDTPicker = editing.edit_date;
    f.txtApptDt = long_date_text(editing.edit_date);
    f.appt_dt_shown = false;

    const bool timed = editing.edit_start != u" ";
    if (timed) {
        const QTime t = handed_time(editing.edit_start);
        f.aptTimePick1 = f.aptTimePick2 = t.isValid() ? t : QTime(0, 0);
    }
    set_timed(f, timed);
    f.Check2 = false;

    editing.occ_until = editing.edit_date.toString(QStringLiteral("MM/dd/yy"));
    f.Notes = QStringLiteral(" ");
    f.delCmd_enabled = false;
    f.lblRem = no_rem_caption;
    f.lblOccur = QStringLiteral("Click button to add recurring appointments.");
}

} // namespace

QString short_date_text(const QDate& d) {
    return QLocale().toString(d, QLocale::ShortFormat);
}

QString long_date_text(const QDate& d) {
    return QLocale().toString(d, QLocale::LongFormat);
}

QString start_text(const ApptForm& f) {
    return f.aptTimePick1.toString(hhmm);
}

QString end_text(const ApptForm& f) {
    return f.aptTimePick2.toString(hhmm);
}

void init_appt_form(const Shared& store, const OptionsState& options, EditorState& editing,
                    RunState& run, ApptForm& f) {
    run.timer1_enabled = false;
    editing.appt_changed = false;
    f.timed_touched = false;
    f.kept_cur_date = store.cur_date;
    fill_stickers(f.typeIcombo, QStringLiteral("frmAppt1"));
    if (f.Text1.isEmpty()) f.Text1 = text1_prompt;
    // The pickers' design value: an untimed entry's stand at midnight.
    f.aptTimePick1 = f.aptTimePick2 = QTime(0, 0);

    const appt_rec* row = store.appt_row(editing.edit_index);
    const appt_rec none;
    if (editing.appt_copy) {
        f.caption = QStringLiteral("Copy Appointment to:");
        load_existing(options, editing, f, row ? *row : none);
        set_rem_caption(store, f, editing.edit_index);
        // Left as the form was designed: a copy does not tell its rule here.
        f.lblOccur = QStringLiteral(
            "This appointment occurs one time.  Click to change number of occurrences.");
    } else if (editing.new_appt) {
        load_new(editing, f);
    } else {
        f.caption = QStringLiteral("Edit Appointment");
        load_existing(options, editing, f, row ? *row : none);
        set_rem_caption(store, f, editing.edit_index);
        set_occurs_caption(store, f, editing.edit_index);
    }

    f.apptDTPicker_min = QDate(2000, 1, 1);
    f.apptDTPicker_max = clock().today().addYears(15);
}

void Check1_Click(ApptForm& f) {
    if (!f.Check1) {
        f.pickers_enabled = false;
        f.aptTimePick1 = f.aptTimePick2 = QTime(0, 0);
        f.Check2_enabled = false;
    } else {
        f.pickers_enabled = true;
        f.Check2_enabled = true;
    }
    f.lblDateTime = QStringLiteral("Start Date:");
    f.timed_touched = true;
}

void Check2_Click(const OptionsState& options, ApptForm& f) {
    if (f.Check2) {
        f.aptTimePick1 = QTime(8, 0);
        f.aptTimePick2 = QTime(17, 0);
        // Setting the end is a change of the end picker like any other: a
        // later start no longer drags it along.
        f.end_touched = true;
        follow_all_day(options, f);
    }
    f.timed_touched = true;
}

void aptTimePick1_Change(const OptionsState& options, const EditorState& editing, ApptForm& f) {
    // The end follows the start until the user touches it.
    if (editing.new_appt && !f.end_touched && f.aptTimePick2 != f.aptTimePick1)
        f.aptTimePick2 = f.aptTimePick1;
    follow_all_day(options, f);
}

void aptTimePick2_Change(const OptionsState& options, ApptForm& f) {
    f.end_touched = true;
    follow_all_day(options, f);
}

void apptDTPicker_Change(EditorState& editing, ApptForm& f) {
    // Moving the first date of a period rule resets its end to that date; the
    // user sets the rule again to keep a series.
    if (editing.occ_by_period)
        editing.occ_until = f.apptDTPicker.toString(QStringLiteral("MM/dd/yy"));
}

void set_rem_caption(const Shared& store, ApptForm& f, int row) {
    const appt_rec* a = store.appt_row(row);
    if (a) {
        for (int i = 1; i <= store.rmdr_count; ++i) {
            const rmdr_rec* r = store.rmdr_row(i);
            if (!r) break;
            if (r->rmdr_appt_date.str() != a->appt_date.str() ||
                r->rmdr_id.str() != a->appt_id.str() || r->rmdr_end.str() != a->appt_end.str() ||
                r->rmdr_start.str() != a->appt_start.str() ||
                r->rmdr_first_date.str() != a->appt_first_date.str())
                continue;
            const QString state =
                r->rmdr_fired.str() == u"T" ? QStringLiteral("expired") : QStringLiteral("active");
            f.lblRem = QStringLiteral("Reminder set for ") +
                       short_date_text(short_to_date(r->rmdr_date)) + QStringLiteral(" at ") +
                       format_hh_mm_ampm(hhmm_to_time(r->rmdr_time)) + QStringLiteral("  (") +
                       state + QStringLiteral("). ") + QStringLiteral("  Click button to edit.");
            return;
        }
    }
    f.lblRem = no_rem_caption;
}

bool Command1_Click(AppState& s, ApptForm& f) {
    s.timer1_enabled = false;
    const QString start = start_text(f), end = end_text(f);
    // Compared by half-hour rows of the day grid, not by the minute.
    if (end_slot(end, start) < start_slot(start)) {
        modal().message(end_before_start_msg, MsgStyle::Information);
        return false;
    }
    if (f.apptDTPicker > short_to_date(s.occ_until)) {
        modal().message(until_before_first_msg, MsgStyle::Information);
        return false;
    }
    // A save the calendar file refused keeps the editor open.
    return save_appt(s, f);
}

void Command2_Click(EditorState& editing, ApptForm& f) {
    Q_UNUSED(f);
    // The tick stays off: it comes back with the next event that switches it on.
    editing.appt_copy = false;
}

void Command4_Click(ApptForm& f) {
    Q_UNUSED(f);
    modal().open_form(QStringLiteral("frmOccurs"));
}

void cmdRem_Click(AppState& s, ApptForm& f) {
    Q_UNUSED(f);
    s.caller_form = QStringLiteral("apptfrm");
    open_rem_setup(s, s.caller_form);
}

void Image6_Click(EditorState& editing, ApptForm& f) {
    Q_UNUSED(f);
    // What the pop-up edits is not copied into Notes: it only marks the entry
    // as changed through notes_dirty.
    editing.caller_form = QStringLiteral("apptfrm");
    modal().open_form(QStringLiteral("frmNotes"));
}

} // namespace orva
