#pragma once

#include "appointments/stickers.h"
#include "state/app_state.h"

#include <QDate>
#include <QTime>

namespace orva {

// frmAppt1, the one form through which an entry is made, changed or copied,
// as the logic sees it. The dialog copies these to and from widgets of the
// same names; the save works from here, so the form stays loaded until the
// save has finished. While it is loaded AppState::appt_form points at it.
struct ApptForm {
    QString caption;
    QString Text1; // description, at most text1_limit bytes of UTF-8
    StickerList typeIcombo;
    QDate apptDTPicker; // first date of the entry
    QDate apptDTPicker_min, apptDTPicker_max;
    QTime aptTimePick1, aptTimePick2; // start, end
    bool pickers_enabled = true;      // the two time pickers together
    bool Check1 = false;              // "Timed"
    bool Check2 = false;              // "All Day"
    bool Check2_enabled = true;
    QString Notes;             // at most notes_limit bytes of UTF-8
    QString txtApptDt;         // the occurrence opened, in long date form
    bool appt_dt_shown = true; // txtApptDt, lblApptDt and imgApptDt
    QString lblDateTime = QStringLiteral("Start Date:");
    QString lblRem, lblOccur;
    bool delCmd_enabled = true;
    QDate kept_cur_date; // cur_date when the form loaded

    // Kept at load for the change check of an edit.
    QString was_text, was_type, was_first_date, was_start, was_end, was_until, was_notes;
    qint16 was_occurs = 0, was_every = 0, was_month = 0;
    qint16 was_spare1 = 0, was_spare2 = 0;       // never assigned
    bool timed_touched = false;                  // Check1 or Check2 clicked
    bool end_touched = false;                    // the end picker changed
    QString occurs_field = QStringLiteral("0 "); // appt_occurs on its way into a row
};

// What the description field holds, in bytes of UTF-8 (not characters).
inline constexpr int text1_limit = decltype(appt_rec::appt_text)::width;
inline const QString text1_prompt = QStringLiteral("Type a description into this box...");
inline const QString no_rem_caption =
    QStringLiteral("No reminders for this appointment. Click button to add.");
inline const QString end_before_start_msg = QStringLiteral("End time is less than Start Time");
inline const QString until_before_first_msg =
    QStringLiteral("End date is less than start date.  Check recurring appointment settings!");

// A date in the system's short form, as message texts and captions show it.
QString short_date_text(const QDate& d);
// A date in the system's long form ("Long date").
QString long_date_text(const QDate& d);

// Form load: the tick stops, the three modes (copy, new, edit) fill the
// controls and the kept values, the shared rule and reminder are set.
void init_appt_form(const Shared& store, const OptionsState& options, EditorState& editing,
                    RunState& run, ApptForm& f);

// The handlers run after the widget changed: f already holds the new value.
void Check1_Click(ApptForm& f);
void Check2_Click(const OptionsState& options, ApptForm& f);
void aptTimePick1_Change(const OptionsState& options, const EditorState& editing, ApptForm& f);
void aptTimePick2_Change(const OptionsState& options, ApptForm& f);
void apptDTPicker_Change(EditorState& editing, ApptForm& f);

// lblRem from the first reminder of rmdr_tbl that belongs to row `row`.
void set_rem_caption(const Shared& store, ApptForm& f, int row);

// OK: validation, then the save. True when the form unloads: not after a
// message, and not when the calendar file refused the save.
bool Command1_Click(AppState& s, ApptForm& f);
// Cancel and the close box: nothing is saved, appt_copy is cleared, and the
// tick stays off.
void Command2_Click(EditorState& editing, ApptForm& f);
// "Set recurring appointment": frmOccurs over the form.
void Command4_Click(ApptForm& f);
// "Add or Edit Reminders".
void cmdRem_Click(AppState& s, ApptForm& f);
// "Edit Notes": frmNotes for the editor.
void Image6_Click(EditorState& editing, ApptForm& f);

// The start picker's value, and the end picker's, as "hh:mm".
QString start_text(const ApptForm& f);
QString end_text(const ApptForm& f);

} // namespace orva
