#pragma once

#include "appointments/appt_editor.h"

namespace orva {

// Delete of row edit_index with all its occurrences and their reminders,
// after the question, as one command; the editor need not be shown. True
// when the entry was deleted (the editor then unloads), false when the user
// said No, there was no row, or the calendar file refused the change (the
// user has then been told and the file is as it was).
bool delCmd_Click(AppState& s);

// Rewrites every month member that can hold a row of the series, keeping
// the lines of other keys in their order; a member left empty is removed.
// Only the key decides; first, end and start give the walk its start.
// Returns 0 or the store's error number.
[[nodiscard]] int delete_series(Shared& store, const QDate& first, const QString& end,
                                const QString& start, const QString& key, const QString& until,
                                qint16 every, const QString& occurs, const QString& pattern);
// The same walk over the reminder members, each month moved back by the lead.
[[nodiscard]] int delete_series_rmdrs(Shared& store, const QDate& first, const QString& end,
                                      const QString& start, const QString& key,
                                      const QString& until, qint16 lead, qint16 unit, qint16 every,
                                      const QString& occurs, const QString& pattern);

// The copy save (OK of the editor in its copy mode): a new, independent entry.
// Returns 0 or the store's error number.
[[nodiscard]] int copy_appt(AppState& s, ApptForm& f);

// The tool pictures and Edit menu commands of the main window that reach the
// editor or the delete.
void imageReminder_Click(AppState& s); // "Add"; also mnuadd
void imageClock_Click(AppState& s);    // "Delete"; also mnudelete and the Delete key
void mnuCopy_Click(AppState& s);
void mnuEditA_Click(AppState& s);

inline const QString couldnt_delete_msg = QStringLiteral("Couldn't delete");
inline const QString select_appt_first_msg = QStringLiteral("Select an appointment first");
// The week and month planners' words: with no cell selected, and for a cell
// with no entry's line.
inline const QString click_to_select_msg =
    QStringLiteral("Click to select an appointment to delete");
inline const QString select_appt_first_overvw_msg = QStringLiteral("Select appointment first");

} // namespace orva
