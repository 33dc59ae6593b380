#include "views/overview_layout.h"

#include "views/month_view.h"

#include <algorithm>

namespace orva {
namespace {

constexpr int control_height = 360; // the month controls' line
constexpr int combo1_width = 2300, combo2_width = 1500;
constexpr int right_margin = 60;

// The month controls in a line from `x`: button, month, year, button.
void month_controls(Placement& p, int x, int y) {
    p[QStringLiteral("imgPriorMth")] = QRect(x, y, control_height, control_height);
    x += control_height + 60;
    p[QStringLiteral("Combo1")] = QRect(x, y, combo1_width, control_height);
    x += combo1_width + 60;
    p[QStringLiteral("Combo2")] = QRect(x, y, combo2_width, control_height);
    x += combo2_width + 60;
    p[QStringLiteral("imgNextMth")] = QRect(x, y, control_height, control_height);
}

constexpr int controls_width = 2 * control_height + combo1_width + combo2_width + 3 * 60;

} // namespace

Placement layout_month(int width, int height) {
    const int w = std::max(width, page_min_width);
    const int h = std::max(height, page_min_height);
    Placement p;
    p[QStringLiteral("Label1")] = QRect(0, 0, w, band_height);
    p[QStringLiteral("Frame3")] = QRect(0, strip_top, w, strip_height);
    month_controls(p, w - margin - controls_width, strip_top + (strip_height - control_height) / 2);
    p[QStringLiteral("vsOvervw")] = QRect(0, sched_top, w - right_margin, h - sched_top - margin);
    return p;
}

Placement layout_week(int width, int height) {
    const int w = std::max(width, page_min_width);
    const int h = std::max(height, page_min_height);
    Placement p;
    p[QStringLiteral("Label1")] = QRect(0, 0, w, band_height);
    p[QStringLiteral("Frame3")] =
        QRect(w - week_strip_width, strip_top, week_strip_width, h - strip_top);
    month_controls(p, margin, strip_top + (strip_height - control_height) / 2);
    p[QStringLiteral("vsOvervw")] =
        QRect(0, sched_top, w - week_strip_width - right_margin, h - sched_top - margin);
    return p;
}

void apply_overview_extents(PlannerState& view, const OptionsState& options, const Placement& p) {
    const auto it = p.find(QStringLiteral("vsOvervw"));
    if (it == p.end()) return;
    view.vsOvervw.set_extent(it->second.width(), it->second.height());
    if ((view.view_month || view.view_week) && view.vsOvervw.Rows() > 0)
        resize_mth_grd(view, options);
}

} // namespace orva
