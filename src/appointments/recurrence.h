#pragma once

#include "appointments/appt_editor.h"

#include <QDateTime>
#include <QStringList>

namespace orva {

// Date arithmetic by interval letter: "yyyy" years, "m" months, "ww" weeks,
// "d" days, "h" hours, "n" minutes, "s" seconds (the last three move a moment,
// not a date). Months and years clamp to the last day of the target month; an
// unknown letter leaves the moment as it is.
QDateTime date_add(const QString& letter, qint64 n, const QDateTime& at);
QDate date_add(const QString& letter, qint64 n, const QDate& d);

// The interval letter of a period rule's appt_occurs text: "1 " "d", "2 "
// "ww", "3 " "m", "4 " "yyyy"; "" for anything else.
QString period_letter(const QString& occurs);

// frmOccurs ("Recurring Appointment") as the logic sees it.
struct OccursForm {
    ComboList occursCombo;   // "once" .. "yearly"
    ComboList EveryCombo;    // the intervals of the chosen period
    ComboList occursWCombo;  // "First" .. "Last"
    ComboList everyWkDCombo; // "Sunday" .. "Saturday"
    ComboList mthCombo;      // "Every month", "January" .. "December"
    bool occursCombo_enabled = true, EveryCombo_enabled = true;
    bool occursWCombo_enabled = true, everyWkDCombo_enabled = true, mthCombo_enabled = true;
    bool untilDTPicker_enabled = true;
    bool Option1 = false, Option2 = false;                     // by period, by weekday of the month
    QDate untilDTPicker, untilDTPicker_min, untilDTPicker_max; // "End Date:"
    Color untilDTPicker_CalendarBackColor = rgb(255, 255, 255); // the day grid's
    QString Label1;                                             // what the rule hangs on
};

// The picker keeps its value inside its limits, as the dialog's date widget
// does; an invalid date stands for the minimum.
void set_until(OccursForm& f, const QDate& d);

// Rows of EveryCombo for a period (0 once .. 4 yearly), with the two blanks
// the daily, monthly and yearly rows carry before the unit; empty for any
// other period.
QStringList every_items(int period);

// The fixed lists of the form, index from 0.
QStringList period_items();  // occursCombo
QStringList ordinal_items(); // occursWCombo
QStringList weekday_items(); // everyWkDCombo, Sunday first
QStringList month_items();   // mthCombo, "Every month" first

// A date as the number yymmdd (two-digit year), the key the generators
// compare; 260315 for 2026-03-15, 0 for an invalid date.
int yymmdd_key(const QDate& d);
// The same key read from "mm/dd/yy" text (characters 7-8, 1-2, 4-5); the
// leading digits count, so text without them gives 0.
int until_key(const QString& mm_dd_yy);

// Form load: limits, the four fixed lists, then the option of the rule in
// force with its click.
void frmOccurs_Load(const PlannerState& view, EditorState& editing, const ApptForm& editor,
                    OccursForm& f);
void Option1_Click(EditorState& editing, const ApptForm& editor, OccursForm& f);
void Option2_Click(EditorState& editing, const ApptForm& editor, OccursForm& f);
// Runs after occursCombo's selection changed.
void occursCombo_Click(const EditorState& editing, const ApptForm& editor, OccursForm& f);
// Runs after mthCombo's selection changed.
void mthCombo_Click(const EditorState& editing, const ApptForm& editor, OccursForm& f);
// OK: the rule goes to the shared occ_ variables and the editor's lblOccur.
// Cancel needs no step of its own.
void frmOccurs_OK(EditorState& editing, ApptForm& editor, OccursForm& f);

// The generators fill rows 1.. of occur_tbl from the editor's controls and
// the shared rule; occur_count is the count. Rows in the first date's month
// also go into appt_tbl at once. More than occur_limit rows bring the
// "Too many appts!" message.
// Pattern "2 " (occ_by_period false) goes to the weekday rule; otherwise the
// period of `occurs` ("1 ".."4 "), any other text doing nothing.
void build_occurs(Shared& store, const EditorState& editing, const ApptForm& f,
                  const QString& occurs, const QString& key);
// Starts at row occur_count, which build_occurs has set to 1.
void build_period_occurs(Shared& store, const EditorState& editing, const ApptForm& f,
                         const QString& letter, const QString& key);
void build_weekday_occurs(Shared& store, const EditorState& editing, const ApptForm& f,
                          const QString& key);

// The occ_ordinal / occ_weekday day of the month of c that is not before
// `first`: date_text "mmddyyyy", yymm "yymm", key yymmdd as a number. Only
// the year and month of c count. "Last" (ordinal 4) is the last such day of
// the month. When there is none the three outputs are left as they were.
void find_weekday_in_month(const EditorState& editing, const QDate& first, const QDate& c,
                           QString& date_text, QString& yymm, int& key);

// The phrase of a rule ("every 3 days", "last Friday of March"). Pattern
// "2 " gives the weekday phrase, any other the interval words; an index
// outside its list gives no words (pattern "1 ") or an empty part ("2 ").
QString occurs_words(const QString& pattern, int occurs, int every, int month);
// The sentence lblOccur shows for a rule ending on `until`.
QString occurs_caption(const QString& pattern, int occurs, int every, int month,
                       const QDate& until);
// lblOccur of the editor from row `row` of appt_tbl.
void set_occurs_caption(const Shared& store, ApptForm& f, int row);

inline const QString too_many_msg = QStringLiteral(" Could not complete update.  Too many appts!");

} // namespace orva
