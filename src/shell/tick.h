#pragma once

#include "state/app_state.h"

namespace orva {

// Timer1 of the main form: every 6000 ms while it is on.
inline constexpr int timer1_interval_ms = 6000;

// One tick: the now-marker, the day roll-over when today is not tick_date,
// then the reminder scan and, when it delivered, the delivery. It runs
// whether the window is shown or hidden.
void Timer1_Timer(AppState& s, WindowPort& w);

// A new date: the planner jumps to today, whatever date it showed, with the
// tables reloaded for it; tick_date takes today last.
void day_rollover(AppState& s, WindowPort& w, const QDate& today);

} // namespace orva
