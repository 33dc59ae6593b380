#pragma once

#include "grid/grid_types.h"

#include <QString>
#include <map>

namespace orva {

// A text colour over a back colour, as apply_skin gives them to a label.
struct LabelColors {
    Color back = 0;
    Color text = 0;
    bool operator==(const LabelColors&) const = default;
};

// What the skins leave on the main form besides the grids' own colours: the
// window renders these after every event it forwards. Until a skin applies,
// the form keeps its designed look, which is that of the standard skin.
struct SkinState {
    // By control name: Label1, the band's labels and the tool labels. A name
    // missing here keeps the designed colours.
    std::map<QString, LabelColors> labels;
    Color frame3_back = rgb(98, 98, 98); // the tool bar
    Color theme_back = rgb(0, 128, 128); // behind themePic
    QString themePic = QStringLiteral("Globe");
    // The grids' back colour outside their cells, which the grid itself does
    // not keep.
    Color sched_back_bkg = rgb(255, 255, 255);
    Color cal_back_bkg = rgb(255, 255, 255);
    // The skin menu item with the check mark; "" when none has one.
    QString checked_item;
};

} // namespace orva
