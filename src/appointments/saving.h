#pragma once

#include "appointments/appt_editor.h"
#include "views/refresh.h"

#include <QDateTime>
#include <QString>

namespace orva {

// All 17 fields of row `row` of appt_tbl from the editor, with key `key`.
void fill_appt_row(Shared& store, const EditorState& editing, const ApptForm& f, int row,
                   const QString& key);
// Fields 1 to 16 of occur_tbl row `source` into appt_tbl row `target`;
// appt_pattern comes from the rule in force.
void copy_occur_row(Shared& store, const EditorState& editing, int target, int source);

// The steps of OK after validation, in the editor's three modes, as one
// command of the calendar file: when a step fails, nothing of it is stored
// and report_failed_update tells the user. True when it was stored.
bool save_appt(AppState& s, ApptForm& f);
// The change check of an edited entry (ten tests, the first that fires ends
// the testing), then upd_appt when the record is to be rewritten. Returns 0
// or the store's error number.
[[nodiscard]] int apply_edit(AppState& s, ApptForm& f);
// Replaces the series of row `row`, which began on `first_date`, by what the
// editor now holds. The key stays. Returns 0 or the store's error number.
[[nodiscard]] int upd_appt(AppState& s, ApptForm& f, int row, const QDate& first_date);
// Closing steps of every save: counters, " Calendar Updated ", the tick on.
// The caller unloads the form.
void end_update(const Shared& store, PlannerState& view, RunState& run);

} // namespace orva
