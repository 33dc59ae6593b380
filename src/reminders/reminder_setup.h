#pragma once

#include "appointments/appt_editor.h"

#include <QTime>

namespace orva {

// frmRem1 as the logic sees it. The dialog writes only the shared rem_lead,
// rem_unit, rem_anim and rem_sound; reminder rows are made when the entry is
// saved.
struct RemForm {
    QString caption;          // "Reminder Setup for - " + description
    ComboList advComboN;      // "0" .. "59": an item's index is its value
    ComboList advComboInt;    // "Minutes before", "Hours before", "Days before"
    ComboList animateIcombo;  // " None", " Plane Towing USA Banner", " Plane with no Banner"
    QStringList animate_keys; // picture keys of animateIcombo: "None", "Flag", "Plane"
    QString alarmTxt;         // path of the sound
    QString lblAppt, lblRemindMe, lblNtimes;
    bool lblNtimes_visible = true;
    int Slider1 = 1; // messenger speed
};

// What the sound path field holds, in bytes of UTF-8 (not characters).
inline constexpr int sound_limit = decltype(appt_rec::appt_rem_text)::width;
static_assert(sound_limit == decltype(rmdr_rec::rmdr_alarm_text)::width,
              "an entry's sound is copied whole into its reminders");

inline const QString zero_lead_question = QStringLiteral(
    " Setting a reminder to zero time will deactivate the reminder.  Do you want to continue? ");
inline const QString rem_changed_caption = QStringLiteral(" Reminder was changed.");
inline const QString wav_filter = QStringLiteral("WAV Files (*.wav)|*.cal|MP3 Files (*.MP3)|*.MP3");
// The name the file dialog opens with; handed back unchanged it means nothing
// was chosen.
inline const QString wav_preset = QStringLiteral("*.wav");
// For a file dialog that cannot open. The seam has no such failure, so nothing
// shows it yet.
inline const QString wav_dialog_error = QStringLiteral("Error opening WAV file dialog");
inline const QString select_file_first_text = QStringLiteral("You must select a file first ");
inline const QString select_file_text = QStringLiteral("You must select a file ");
inline const QString not_shown_yet = QStringLiteral("* This reminder has not been shown yet!");

// Starts the setup: from the editor ("apptfrm") or for row `row` of appt_tbl
// ("CalDtlRem", which stores what changed when the dialog returns). Sets
// rem_from and rem_row, then opens "frmRem1" through the modal seam.
void open_rem_setup(AppState& s, const QString& from, int row = 0);

// Dialog load: lists, selections, title, lblAppt, lblNtimes, lblRemindMe,
// Slider1.
void frmRem1_Load(AppState& s, RemForm& f);
// OK: false while the dialog stays open (No to the zero-lead question).
bool frmRem1_OK(EditorState& editing, RemForm& f);
// Cancel: the working variables keep their values.
void frmRem1_Cancel(RemForm& f);
// Browse: the file dialog; the chosen name into alarmTxt.
void Command5_Click(RemForm& f);
// Any selection on the messenger list.
void animateIcombo_Click(ReminderState& reminders, RemForm& f);
void Slider1_Change(OptionsState& options, RemForm& f);
// Preview: index 0 plays the chosen sound and shows the note's sound preview;
// index 1 flies the chosen messenger and shows the messenger preview.
void prevwCmd_Click(ReminderState& reminders, RemForm& f, int index);

// A time as "hh:mm am/pm": two-digit hour 01..12, lower-case "am"/"pm",
// whatever the system's locale ("12:00 am" for midnight).
QString am_pm_text(const QTime& t);
// lblAppt of a setup from the editor. T and E are the start and end as
// "hh:mm am/pm", D the date as "mm/dd/yyyy". The untimed form needs T and E
// to read "00:00", which that format never gives: an untimed entry shows
// its midnight like any other time.
QString rem_appt_label(const QString& t, const QString& e, const QString& d);
// lblNtimes for a count of deliveries this month.
QString ntimes_text(int count);
// How often the reminder of appointment `a` has been shown: the again count
// of the first row of rmdr_tbl with the same first date, start, end, key and
// date, when that row is "T"; 0 when it is "F" or there is none.
int shown_count(const Shared& store, const appt_rec& a);

// The due moment of an appointment row's reminder as "mm/dd/yy hh:nn:ss":
// appt_date at appt_start (midnight when not timed) less the lead. Empty for
// an appt_date that is no date.
QString rmdr_due_text(const appt_rec& a, bool timed);

// Fills `out` for appointment row `a`: the copied fields, the due date and
// time, "F" (or "T" for a moment already past while mark_past is set), and
// again count "1 ".
void make_rmdr(const EditorState& editing, rmdr_rec& out, const appt_rec& a);
// Mode 8: one reminder for row `row` of appt_tbl, appended to its member.
// Mode 2: rmdr_count to 0 and a reminder for every row of appt_tbl.
// Returns 0 or the store's error number.
[[nodiscard]] int add_rmdr(Shared& store, const EditorState& editing, int mode,
                           const QString& cal_file, int row);
// A reminder for every row of occur_tbl, written month by month.
[[nodiscard]] int make_series_rmdrs(Shared& store, const EditorState& editing);
// The four working variables into row `row` of appt_tbl, its month member
// rewritten, and the reminders rebuilt (add_rmdr mode 2), in one command.
[[nodiscard]] int store_rem_settings(Shared& store, const EditorState& editing, int row);

} // namespace orva
