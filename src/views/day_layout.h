#pragma once

#include "state/app_state.h"

#include <QRect>
#include <map>

namespace orva {

// Where the day planner puts the main form's controls, in twips from the
// top-left corner of the form's client area (menu and status bar excluded).
// Keys are the controls' names; Frame2's children (its caption lblDtlCaption,
// vsDtl, rtNotes, the detail pictures, lblNotes) are relative to Frame2.
using Placement = std::map<QString, QRect>;

inline constexpr int band_height = 420; // Label1's band
inline constexpr int sched_top = 1080;  // vsSched
inline constexpr int sched_left = 24;
// Every page keeps at least this size; a smaller window scrolls off.
inline constexpr int page_min_width = 12000, page_min_height = 7800;
// The tool strip (Frame3) under the band.
inline constexpr int strip_top = band_height;
inline constexpr int strip_height = sched_top - band_height - 30;
inline constexpr int side_width = 4700; // navigator, tab strip and pane, at least
inline constexpr int margin = 120;
// vsDtl as designed; its rows are computed from this extent, and the control
// is given the room those rows take (dtl_rows_height), which is more.
inline constexpr int dtl_left = 120, dtl_top = 495, dtl_width = 4455, dtl_height = 1750;
// Frame2's caption: two lines, so the longest text with its start time shows
// whole in the pane's width.
inline constexpr int dtl_caption_height = 480;

// The day page for a client area of width x height twips. Nothing shrinks
// below a size the controls can still be used at; a smaller window scrolls
// off at the right and bottom instead.
Placement layout_day(int width, int height);

// Gives vsSched and Cal the extents of the placement, vsDtl its designed
// extent, and sizes what depends on them: the appointment columns and the
// navigator's cells.
void apply_day_extents(PlannerState& view, const Placement& p);

} // namespace orva
