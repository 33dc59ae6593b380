#include "reminders/reminder_setup.h"

#include "core/clock.h"
#include "core/modal.h"
#include "reminders/dispatch.h"
#include "reminders/messenger.h"
#include "store/calendar_file.h"
#include "views/refresh.h"

#include <algorithm>

namespace orva {

namespace {

constexpr int max_lead = 59;
constexpr int minutes_per_day = 24 * 60;

const QString from_row = QStringLiteral("CalDtlRem");

// Leads above 59 are not offered: a longer lead takes the next unit.
QStringList lead_items() {
    QStringList out;
    for (int i = 0; i <= max_lead; ++i)
        out << QString::number(i);
    return out;
}

// Minutes after midnight of a time field; -1 when it is no time.
int minutes_of(const QString& hhmm) {
    const QTime t = hhmm_to_time(hhmm);
    return t.isValid() ? t.hour() * 60 + t.minute() : -1;
}

QString date_text(const QDate& d) {
    return d.toString(QStringLiteral("MM/dd/yyyy"));
}

// The lists show the stored numbers; a value no list holds shows as its
// nearest sense (a unit other than 0..2 counts as minutes, a messenger 0 as
// none), so OK never stores an index the lists do not have.
int unit_index(int unit) {
    return unit >= 0 && unit <= 2 ? unit : 0;
}
int anim_index(int anim) {
    return anim >= 1 && anim <= 3 ? anim - 1 : 0;
}

// Title and lblAppt of a setup from the editor, read off its pickers.
void label_from_editor(const EditorState& editing, RemForm& f) {
    const ApptForm* e = editing.appt_form;
    f.caption = QStringLiteral("Reminder Setup for - ") + (e ? e->Text1 : QString());
    if (!e) {
        f.lblAppt.clear();
        return;
    }
    f.lblAppt = rem_appt_label(am_pm_text(e->aptTimePick1), am_pm_text(e->aptTimePick2),
                               date_text(e->apptDTPicker));
}

// Title and lblAppt of a setup for a stored row. The row's own blank start,
// not a picker, tells that it is untimed.
void label_from_row(const appt_rec* a, RemForm& f) {
    f.caption = QStringLiteral("Reminder Setup - ") + (a ? rtrim(a->appt_text) : QString());
    if (!a) {
        f.lblAppt.clear();
        return;
    }
    const QString d = date_text(text_to_date(a->appt_date));
    const int start = minutes_of(a->appt_start);
    if (a->appt_start.is_blank() || start < 0) {
        f.lblAppt = QStringLiteral("Untimed appointment - Reminder based on 12:00 AM time ") +
                    QStringLiteral("  Appt Date   ") + d;
        return;
    }
    f.lblAppt = QStringLiteral("  ") + am_pm_text(QTime(start / 60, start % 60)) +
                QStringLiteral("   ") + d;
}

bool is_past(const QString& rmdr_date, const QString& rmdr_time) {
    const QDate due = short_to_date(rmdr_date);
    if (!due.isValid()) return false;
    const QDate today = clock().today();
    if (due < today) return true;
    return due == today && rmdr_time < clock().now().toString(QStringLiteral("HH:mm"));
}

} // namespace

QString am_pm_text(const QTime& t) {
    if (!t.isValid()) return QString();
    const int h12 = t.hour() % 12 == 0 ? 12 : t.hour() % 12;
    return QStringLiteral("%1:%2 %3")
        .arg(h12, 2, 10, QLatin1Char('0'))
        .arg(t.minute(), 2, 10, QLatin1Char('0'))
        .arg(t.hour() < 12 ? QStringLiteral("am") : QStringLiteral("pm"));
}

QString rem_appt_label(const QString& t, const QString& e, const QString& d) {
    if (t == u"00:00" && e == u"00:00")
        return QStringLiteral("Untimed appointment - Reminders based on 12:00 AM time") +
               QStringLiteral("    Appt Date   ") + d;
    return QStringLiteral("  ") + t + QStringLiteral("   ") + d;
}

QString ntimes_text(int count) {
    if (count == 0) return not_shown_yet;
    return QStringLiteral("* This reminder has been shown ") + QString::number(count) +
           (count == 1 ? QStringLiteral(" time this month") : QStringLiteral(" times this month"));
}

int shown_count(const Shared& store, const appt_rec& a) {
    const int last = std::min<int>(store.rmdr_count, rmdr_limit);
    for (int r = 1; r <= last; ++r) {
        const rmdr_rec* m = store.rmdr_row(r);
        if (!m) break;
        if (m->rmdr_first_date == a.appt_first_date && m->rmdr_start == a.appt_start &&
            m->rmdr_end == a.appt_end && m->rmdr_id == a.appt_id &&
            m->rmdr_appt_date == a.appt_date) {
            // Only the first match counts, delivered or not: a remind-again
            // raises the count of a row that is "F" again.
            if (m->rmdr_fired.str() != u"T") return 0;
            return field_number(m->rmdr_again_count, 0);
        }
    }
    return 0;
}

void open_rem_setup(AppState& s, const QString& from, int row) {
    s.rem_from = from;
    s.rem_row = row;
    if (from != from_row) {
        modal().open_form(QStringLiteral("frmRem1"));
        return;
    }
    const appt_rec* a = s.appt_row(row);
    if (!a) return;
    s.rem_lead = field_number(a->appt_rem_lead, 0);
    s.rem_unit = field_number(a->appt_rem_unit, 0);
    s.rem_anim = field_number(a->appt_rem_anim, 0);
    if (s.rem_anim == 0) s.rem_anim = 1;
    s.rem_sound = rtrim(a->appt_rem_text);
    const qint16 lead = s.rem_lead, unit = s.rem_unit, anim = s.rem_anim;
    const QString sound = s.rem_sound;

    modal().open_form(QStringLiteral("frmRem1"));

    if (s.rem_lead == lead && s.rem_unit == unit && s.rem_anim == anim && s.rem_sound == sound)
        return;
    Archive::Command command(s.archive, s.cal_path);
    int e = store_rem_settings(s.store(), s.editing(), row);
    // The rebuild leaves rmdr_tbl holding what it made, not what the file
    // now has; the tick must scan the file's rows.
    if (!e) e = load_rmdrs(s, s.cur_date, s.cal_path, 0);
    command.abort(e);
    if (command.finish() != err::none) report_failed_update(s);
}

void frmRem1_Load(AppState& s, RemForm& f) {
    f.advComboN.items = lead_items();
    f.advComboInt.items = {QStringLiteral("Minutes before"), QStringLiteral("Hours before"),
                           QStringLiteral("Days before")};
    f.animateIcombo.items = {QStringLiteral(" None"), QStringLiteral(" Plane Towing USA Banner"),
                             QStringLiteral(" Plane with no Banner")};
    f.animate_keys = {QStringLiteral("None"), QStringLiteral("Flag"), QStringLiteral("Plane")};
    f.advComboN.list_index = std::clamp<int>(s.rem_lead, 0, max_lead);
    f.advComboInt.list_index = unit_index(s.rem_unit);
    f.animateIcombo.list_index = anim_index(s.rem_anim);

    const bool stored_row = s.rem_from == from_row;
    // new_appt is the editor's flag and outlives it; a stored row is never
    // new, whatever the last editor left there.
    if (s.new_appt && !stored_row) {
        // alarmTxt stays empty even when rem_sound holds a path chosen
        // earlier in this editor: OK then stores the empty text.
        f.lblNtimes_visible = false;
    } else {
        s.old_lead = s.rem_lead;
        s.old_unit = s.rem_unit;
        s.old_anim = s.rem_anim;
        f.alarmTxt = s.rem_sound;
        f.lblNtimes_visible = true;
        const appt_rec* a = s.appt_row(stored_row ? s.rem_row : s.edit_index);
        f.lblNtimes = ntimes_text(a ? shown_count(s, *a) : 0);
    }

    f.lblRemindMe =
        s.day_filled ? QStringLiteral("Remind me: ") : QStringLiteral("Remind me at : ");
    if (s.anim_speed == 0) s.anim_speed = 1;
    f.Slider1 = s.anim_speed;

    if (stored_row)
        label_from_row(s.appt_row(s.rem_row), f);
    else
        label_from_editor(s, f);
}

bool frmRem1_OK(EditorState& editing, RemForm& f) {
    const qint16 amount = qint16(std::max(0, f.advComboN.list_index));
    const qint16 unit = qint16(std::max(0, f.advComboInt.list_index));
    const qint16 anim = qint16(std::max(0, f.animateIcombo.list_index) + 1);
    if (amount != editing.rem_lead || unit != editing.rem_unit || anim != editing.rem_anim ||
        f.alarmTxt != editing.rem_sound) {
        if (editing.appt_form) editing.appt_form->lblRem = rem_changed_caption;
    }
    // Written before the question on purpose: a No keeps the dialog open with
    // the lead already 0, and a Cancel after it keeps that 0.
    editing.rem_lead = amount;
    if (amount == 0 && modal().ask_yes_no(zero_lead_question, MsgStyle::Question) != Answer::Yes)
        return false;
    editing.rem_unit = unit;
    editing.rem_anim = anim;
    editing.rem_sound = f.alarmTxt;
    return true;
}

void frmRem1_Cancel(RemForm&) {}

void Command5_Click(RemForm& f) {
    const QString chosen = modal().open_file_dialog(wav_filter, wav_preset);
    // The patterns come back when the user confirms the preset name itself.
    if (chosen.isEmpty() || chosen == wav_preset || chosen == u"*.MP3" || chosen == u" ") return;
    f.alarmTxt = chosen;
}

void animateIcombo_Click(ReminderState& reminders, RemForm&) {
    // Neither "2" nor "3": no messenger flies until Preview or a due reminder
    // chooses one again.
    reminders.msg_anim = QStringLiteral("Jet Set");
}

void prevwCmd_Click(ReminderState& reminders, RemForm& f, int index) {
    if (index == 0) {
        if (f.alarmTxt == QString(sound_limit, QLatin1Char(' '))) {
            modal().message(select_file_first_text, MsgStyle::Warning);
            return;
        }
        if (f.alarmTxt.isEmpty()) {
            modal().message(select_file_text, MsgStyle::Warning);
            return;
        }
        const QString path = rtrim(f.alarmTxt);
        // Only "mp3" goes the MP3 way; any other ending is tried as a WAV.
        if (sound_ending(path) == u"mp3")
            play_mp3(path);
        else
            play_wav(path);
        reminders.preview_sound = true;
        modal().open_form(QStringLiteral("frmRemnote"));
        return;
    }
    // The list's first item is "None": nothing to preview.
    const int item = f.animateIcombo.list_index + 1;
    if (item <= 1) return;
    reminders.msg_anim = QString::number(item);
    modal().open_form(QStringLiteral("frmAnimate"));
    reminders.preview_anim = true;
    modal().open_form(QStringLiteral("frmRemnote"));
}

void Slider1_Change(OptionsState& options, RemForm& f) {
    options.anim_speed = qint16(f.Slider1);
}

QString rmdr_due_text(const appt_rec& a, bool timed) {
    QDate day = text_to_date(a.appt_date);
    if (!day.isValid()) return QString();
    int minutes = 0;
    if (timed) minutes = std::max(0, minutes_of(a.appt_start));

    // Whole days and minutes on a plain date, so that no time zone and no
    // daylight-saving change can move the moment.
    const qint64 lead = field_number(a.appt_rem_lead, 0);
    qint64 total = minutes;
    qint64 days = 0;
    switch (field_number(a.appt_rem_unit, 0)) {
    case 1:
        total -= lead * 60;
        break;
    case 2:
        days = -lead;
        break;
    default:
        total -= lead;
        break;
    }
    qint64 carry = total / minutes_per_day;
    total %= minutes_per_day;
    if (total < 0) {
        total += minutes_per_day;
        --carry;
    }
    day = day.addDays(days + carry);
    // The separator is written here, not taken from the system's settings,
    // so no "-" can reach the file.
    return day.toString(QStringLiteral("MM/dd/yy")) + u' ' +
           QTime(int(total / 60), int(total % 60)).toString(QStringLiteral("HH:mm:ss"));
}

void make_rmdr(const EditorState& editing, rmdr_rec& out, const appt_rec& a) {
    // The editor's "Timed" box decides, not appt_start: an untimed entry's
    // reminder counts from midnight. With no editor loaded (a stored row set
    // up in place) the row's own blank start is the only sign left.
    const bool timed = editing.appt_form ? editing.appt_form->Check1 : !a.appt_start.is_blank();
    const QString due = rmdr_due_text(a, timed);

    out.rmdr_first_date = a.appt_first_date;
    out.rmdr_start = a.appt_start;
    out.rmdr_end = a.appt_end;
    out.rmdr_id = a.appt_id;
    out.rmdr_text = a.appt_text;
    out.rmdr_type = a.appt_type;
    out.rmdr_appt_date = a.appt_date;
    out.rmdr_date = due.mid(0, 8);
    out.rmdr_time = due.mid(9, 5);
    out.rmdr_anim = a.appt_rem_anim;
    out.rmdr_alarm_text = a.appt_rem_text;
    out.rmdr_again_count = QStringLiteral("1 ");
    // An edit must not deliver the past occurrences of its series again.
    const bool past = editing.mark_past && is_past(out.rmdr_date, out.rmdr_time);
    out.rmdr_fired = past ? QStringLiteral("T") : QStringLiteral("F");
}

int add_rmdr(Shared& store, const EditorState& editing, int mode, const QString& cal_file,
             int row) {
    Archive::Command command(store.archive, cal_file);
    if (mode == rewrite_mode) {
        // Appends a row for every entry in view, whatever its lead, beside the
        // lines already there; nothing in the menus reaches it.
        store.rmdr_count = 0;
        const int last = std::min<int>(store.appt_count, appt_limit);
        for (int r = 1; r <= last; ++r) {
            ++store.rmdr_count;
            const appt_rec* a = store.appt_row(r);
            if (rmdr_rec* out = store.rmdr_row(store.rmdr_count); out && a)
                make_rmdr(editing, *out, *a);
        }
        if (const int e = append_rmdr_rows(store, cal_file, 1, store.rmdr_count)) return e;
        return command.finish();
    }
    // The count rises even past the table's end, as every table's does; the
    // row itself is passed over without a word.
    ++store.rmdr_count;
    rmdr_rec* out = store.rmdr_row(store.rmdr_count);
    const appt_rec* a = store.appt_row(row);
    if (!out || !a) return command.finish();
    make_rmdr(editing, *out, *a);
    if (const int e = append_rmdr_line(store, cal_file, *out)) return e;
    return command.finish();
}

int make_series_rmdrs(Shared& store, const EditorState& editing) {
    Archive::Command command(store.archive, store.cal_path);
    // Rows go over whatever rmdr_tbl held; the caller's reload restores it.
    const int last = store.occur_count;
    for (int i = 1; i <= last; ++i) {
        rmdr_rec* out = store.rmdr_row(i);
        const appt_rec* a = store.occur_row(i);
        if (out && a) make_rmdr(editing, *out, *a);
    }
    if (const int e = append_rmdr_rows(store, store.cal_path, 1, last)) return e;
    return command.finish();
}

int store_rem_settings(Shared& store, const EditorState& editing, int row) {
    appt_rec* a = store.appt_row(row);
    if (!a) return err::none;
    a->appt_rem_lead = number_field(editing.rem_lead);
    a->appt_rem_unit = number_field(editing.rem_unit);
    a->appt_rem_anim = number_field(editing.rem_anim);
    a->appt_rem_text = editing.rem_sound;
    Archive::Command command(store.archive, store.cal_path);
    // appt_tbl mirrors the members it was loaded from, month by month, so
    // rewriting all of it changes only the month of this row; a rewrite of
    // rows 1..row alone would drop the later rows of that month.
    if (const int e = write_appts(store, store.cal_path, rewrite_mode, store.appt_count)) return e;
    if (const int e = add_rmdr(store, editing, rewrite_mode, store.cal_path, row)) return e;
    return command.finish();
}

} // namespace orva
