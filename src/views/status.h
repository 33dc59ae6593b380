#pragma once

#include "state/app_state.h"

namespace orva {

// Keys of the status-bar panels.
inline const QString panel_count = QStringLiteral("nbrAppts "); // the trailing blank is the key's
inline const QString panel_file = QStringLiteral("cFile");
inline const QString panel_year_pos = QStringLiteral("yrDay");
inline const QString panel_left = QStringLiteral("daysLeft");

// Recomputes every panel from cur_date, the view flags, the counters and
// cal_path, and enables imageClock, imagePrint, Label2 and Label7.
void show_status(const Shared& store, PlannerState& view);
// The panels' tool-tips, set as the mouse moves over the bar.
void StatusBar1_MouseMove(PlannerState& view);
// The "Show status bar" check: the bar follows it and the planner is laid
// out again.
void mnuStat_Click(OptionsState& options, WindowPort& w);

// Day of the year counted from the December 31 before (January 1 is 1).
int year_day(const QDate& d);
// Days from d to December 31 of its year (0 on December 31).
int days_remaining(const QDate& d);

} // namespace orva
