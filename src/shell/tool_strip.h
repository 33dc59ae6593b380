#pragma once

#include "state/planner_state.h"

#include <QString>
#include <vector>

namespace orva {

// A picture of the tool strip as designed, with the label under it. The
// window shows the label as the picture's own caption and builds the strip
// from these rows in order, leaving out a picture it has nothing to run for.
struct ToolPicture {
    QString key;     // the picture's name, its object name
    QString label;   // the label under it ("Label15")
    QString caption; // the label's text
    QString tip;
    QString icon;            // a freedesktop icon name
    QString emoji;           // our own picture where the desktop theme has no such icon
    bool gap_before = false; // a gap on the strip sets it apart from the one before
};

// imageDay to Image3. The names imageReminder and imageClock are crossed with
// what they do, and stay so: the first adds, the second deletes.
const std::vector<ToolPicture>& tool_pictures();

// The label under a picture; "" for a picture without one.
QString label_of_tool(const QString& picture);

// The mouse moves over a picture or its label: the label lights up. True
// when a look changed.
bool tool_hover(PlannerState& view, const QString& picture);

// The mouse moves over the band, the frames or a grid: each lit label is
// cleared and its picture drawn unpressed again. True when a look changed.
bool tool_hover_off(PlannerState& view);

// A mouse button goes down (or up) on a picture, also on the navigator's
// arrows: down it looks pressed, up no longer. True when a look changed.
bool tool_press(PlannerState& view, const QString& picture, bool down);

} // namespace orva
