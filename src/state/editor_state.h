#pragma once

#include <QDate>
#include <QString>

namespace orva {

struct ApptForm;

// What a caller hands the appointment editor and what the editor and its
// dialogs (recurrence, reminder setup, notes) hand back: the entry to open,
// the rule and the reminder in force, and the outcome of an edit's change
// check.
struct EditorState {
    // --- hand-over to the editor ----------------------------------------
    bool new_appt = false;
    int edit_index = 0; // row of appt_tbl
    QDate edit_date;
    QString edit_start; // the row's time label, " " for untimed
    bool appt_from_planner = false;
    bool appt_copy = false;

    // --- the rule and the reminder in force in the editor ----------------
    qint16 occ_period = 0;  // 0 once, 1 daily, 2 weekly, 3 monthly, 4 yearly
    qint16 occ_every = 0;   // interval row (step - 1); the weekday under the second option
    qint16 occ_ordinal = 0; // 0 first .. 4 last
    qint16 occ_weekday = 0; // 0 Sunday .. 6 Saturday
    qint16 occ_month = 0;   // 0 every month, 1 January .. 12 December
    QString occ_until;      // "mm/dd/yy"
    bool occ_by_period = true, occ_by_weekday = false; // exactly one is true
    qint16 rem_lead = 0, rem_unit = 0, rem_anim = 1;
    QString rem_sound; // path of the alarm sound, or empty
    qint16 old_lead = 0, old_unit = 0, old_anim = 1;
    QString old_sound;
    // Set by an edit's change check: reminders to rebuild (past ones written
    // as delivered), the record to rewrite, the sticker changed.
    bool mark_past = false, appt_changed = false, type_changed = false;
    // The editor while it is loaded, so the dialogs it opens can read and set
    // its controls; null when it is not.
    ApptForm* appt_form = nullptr;

    // --- notes ------------------------------------------------------------
    QString notes_text;  // in and out of frmNotes
    QString notes_shown; // what frmNotes opened with
    bool notes_dirty = false;
    QString caller_form; // "apptfrm" or "dtlfrm"
};

} // namespace orva
