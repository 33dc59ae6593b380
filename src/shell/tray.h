#pragma once

#include "state/app_state.h"

#include <QTime>

namespace orva {

// The tray icon, Hide and the window's two states, visible or hidden. The
// window is hidden only while a tray shows our icon; without one, Hide and a
// start with the system minimise it instead, so it can always be reached
// again. sysCalender_enabled is true exactly while the window is hidden.

// Format(t, "hh:mm:ss am/pm"): two-digit hour 01..12, lower-case "am"/"pm",
// whatever the system's locale.
QString format_hh_mm_ss_ampm(const QTime& t);

// The icon's tip: "Orva Calendar   " + today's short date + "  " + the time
// now + "    " + day_appts + " appointments today". day_appts counts what the
// day grid holds, which is today's only while today is in view.
QString tray_tip_text(const PlannerState& view);

// A button of the tray icon, 1 left, 2 right. The left button is a pure
// toggle between visible and hidden. The right one only disables sysCalender
// while the window shows; the window then pops sysmenu up.
void cSysTray1_MouseUp(RunState& run, WindowPort& w, int button);

// Hide: enables sysCalender and hides the window; the program keeps ticking.
// Without a tray the window is minimised and sysCalender stays off.
void mnuHide_Click(RunState& run, WindowPort& w);

// The tray's "Calendar": the window shows again.
void sysCalender_Click(RunState& run, WindowPort& w);

// The menu's and the tray's ways to a tool: with no calendar open, the
// message " Select and Open a Calendar first" and no form. The tool pictures
// open their forms without this test.
void open_with_calendar(const Shared& store, const QString& form);

// The hidden, disabled mnuRem's message, which no user can bring up.
inline const QString future_enhancement_text = QStringLiteral("future enhancement");

} // namespace orva
