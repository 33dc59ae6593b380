#pragma once

#include "state/app_state.h"

#include <QDateTime>

namespace orva {

// The last three characters of a right-trimmed sound path, lowered: what
// chooses the route a sound plays by.
QString sound_ending(const QString& path);

// Format(t, "hhnn") read as a whole number: 09:05 is 905.
int hhnn_number(const QTime& t);

// Whether row `r` has come due at `now`, by whole minutes. A row dated before
// today is due whatever its time; the dates are compared as "yy/mm/dd" text,
// so a row of 99/12/31 is not before 00/01/01. A due time that is no time
// counts as the start of its day, so such a row is never left behind.
bool rmdr_due(const rmdr_rec& r, const QDateTime& now);

// The scan of a tick: the preview flags cleared, then every due row still
// "F" handed to add_to_note in table order. True when one was delivered.
bool scan_rmdrs(Shared& store, ReminderState& rem);

// A row of rmdr_tbl into the note: marked "T", its line added, its sticker's
// picture in column 0. The first row of an empty note names the delivery's
// messenger, sound and note_row.
void add_to_note(Shared& store, ReminderState& rem, int i);

// The delivery after a scan that delivered: the messenger flies, the sound
// starts, the note opens (and is posted to the desktop's notifications);
// when it closes the rows are written back and the table reloaded.
void deliver_rmdrs(AppState& s);

// "hh:mm AM/PM", the note's form of a start ("09:05 AM", "12:00 AM").
QString note_time_text(const QTime& t);
// The line of a row in the note: its entry's date in the short form, three
// blanks, its start.
QString note_line(const rmdr_rec& r);

// What the desktop notification of a delivery says: one line a row, time and
// text.
QString notification_body(const Shared& store, const std::vector<int>& rows);

// The note opening: sort keys hidden, rows sorted by them, cursor in column
// 0; in a preview its one sentence row instead.
void frmRemnote_Load(ReminderState& rem);
// Column 0 takes 0.35 of the grid's width, column 1 the rest.
void size_note_cols(RemNote& note);
// The columns, and in a preview the sentence row filling the grid below its
// heading; again whenever the grid's extent changes.
void size_note(ReminderState& rem);
// "Remind me again" clicked: ticked, it opens frmReRmdr.
void Check1_Click(ReminderState& rem);
// OK of the note: the note is cleared, a playing sound stopped.
void frmRemnote_OK(ReminderState& rem);

void frmReRmdr_Load(ReRmdrForm& f);
// Arms row note_row again list_index + 1 minutes after it was due.
void frmReRmdr_OK(Shared& store, ReminderState& rem, const ReRmdrForm& f);

inline const QString note_preview_title = QStringLiteral("Reminder Preview");
inline const QString sound_preview_text =
    QStringLiteral(" You can set an alarm to sound when this reminder pop-up is displayed!");
inline const QString messenger_preview_text =
    QStringLiteral(" You can set an an animated messenger to play immediately before this "
                   "reminder pop-up is displayed!");
inline const QString note_format = QStringLiteral("^Appt Date/Time|^Description");

} // namespace orva
