#pragma once

#include "state/app_state.h"

#include <QString>

namespace orva {

// What the planner does after a command has changed the calendar file, or
// has failed to.

// Closing steps of a command the calendar file refused and rolled back whole:
// the tables are loaded again from the file, so the planner shows nothing the
// file lacks, and the user sees "Couldn't complete update". The tick runs
// again; the status bar keeps its counts and does not say " Calendar Updated ".
void report_failed_update(AppState& s);
// After a change of the store: the planner that is up is rebuilt; in the day
// planner the cell that was current stays current.
void refresh_planner(AppState& s);
// The planner that is up, drawn whole for cur_date: band, navigator and
// grid all show the one day (after a list has moved cur_date).
void show_planner(AppState& s);

inline const QString calendar_updated_text = QStringLiteral(" Calendar Updated ");
inline const QString couldnt_update_msg = QStringLiteral("Couldn't complete update");

} // namespace orva
