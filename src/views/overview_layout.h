#pragma once

#include "views/day_layout.h"

namespace orva {

// Where the month and week planners put the main form's controls, in twips
// from the top-left corner of the client area, as layout_day does for the
// day planner. Both keep the band (Label1) on top and vsOvervw at top 1080,
// left 0.
//
// Month: the tool strip and the month controls share one line under the
// band; the grid takes the width below.
// Week: the tool strip stands upright in a strip of 1236 on the right, the
// month controls take the line under the band, and the grid the rest.
inline constexpr int week_strip_width = 1236;

Placement layout_month(int width, int height);
Placement layout_week(int width, int height);

// Gives vsOvervw the extent of the placement and, while a month or week is
// up, sizes its rows and columns to it.
void apply_overview_extents(PlannerState& view, const OptionsState& options, const Placement& p);

} // namespace orva
