#pragma once

#include "state/app_state.h"

namespace orva {

// The options of the open calendar: one row of 20 text columns in vsSettings,
// stored as the member "Calopt.tmp" of the calendar file, so that opening
// another calendar also changes how the planner looks.

constexpr int options_cols = 20;
inline const QString options_member = QStringLiteral("Calopt.tmp");

// Reads the options of cal_path; a missing member gives the defaults, saved
// at once so the member exists from then on.
void load_options(Shared& store, PlannerState& view, OptionsState& options, RunState& run,
                  WindowPort& w);
// Puts the row of vsSettings into effect. A row from a version with fewer
// columns is repaired: the member is dropped and saved again with 20.
void apply_options(Shared& store, PlannerState& view, OptionsState& options, WindowPort& w);
// Resets every option and saves. Deliberately does not apply them: after the
// Restore command the current skin stays on screen until the next start, and
// startup_move stays up, which leaves resizing without layout and save.
void default_options(Shared& store, PlannerState& view, OptionsState& options, RunState& run,
                     WindowPort& w);
// Brings the row up to date from the variables and the window and stores it.
// A failure shows "Error saving settings. Error Number : " and the number.
void save_options(Shared& store, const PlannerState& view, OptionsState& options, WindowPort& w);
// Shows that message for error number `e`, except for a calendar the user has
// already been told cannot be written.
void report_options_error(const Shared& store, int e);

} // namespace orva
