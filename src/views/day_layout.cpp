#include "views/day_layout.h"

#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/navigator.h"

#include <algorithm>

namespace orva {
namespace {

constexpr int month_row_height = 360;
constexpr int cal_height = 2760;
constexpr int tab_height = 380;
constexpr int picture_size = 390; // the detail pictures
constexpr int notes_label_height = 300;
constexpr int min_notes_height = 600;
// Beside its rows vsDtl needs room for its frame, for a horizontal scroll
// bar when a line is wider than the pane, and for its six rows each rounded
// to whole pixels.
constexpr int dtl_chrome = 360;

} // namespace

Placement layout_day(int width, int height) {
    const int w = std::max(width, page_min_width);
    const int h = std::max(height, page_min_height);
    Placement p;
    p[QStringLiteral("Label1")] = QRect(0, 0, w, band_height);
    p[QStringLiteral("Frame3")] = QRect(0, strip_top, w, strip_height);

    // A wide window gives the navigator and the pane a quarter of its width,
    // so the pane's longer lines (a time with its duration, a reminder) read
    // without scrolling sideways; never less than their designed width.
    const int side = std::max(side_width, w / 4);
    const int pane_inner = dtl_width + side - side_width;
    const int side_left = w - side - margin;
    p[QStringLiteral("vsSched")] =
        QRect(sched_left, sched_top, side_left - margin - sched_left, h - sched_top - margin);

    // The month line above the navigator: button, month, year, button.
    int x = side_left;
    const int y = sched_top;
    p[QStringLiteral("imgPriorMth")] = QRect(x, y, month_row_height, month_row_height);
    x += month_row_height + 60;
    const int combos = side - 2 * (month_row_height + 60);
    p[QStringLiteral("Combo1")] = QRect(x, y, combos * 3 / 5 - 30, month_row_height);
    p[QStringLiteral("Combo2")] =
        QRect(x + combos * 3 / 5 + 30, y, combos * 2 / 5 - 30, month_row_height);
    p[QStringLiteral("imgNextMth")] =
        QRect(side_left + side - month_row_height, y, month_row_height, month_row_height);

    const int cal_top = y + month_row_height + 90;
    p[QStringLiteral("Cal")] = QRect(side_left, cal_top, side, cal_height);

    const int tab_top = cal_top + cal_height + margin;
    p[QStringLiteral("TabStrip1")] = QRect(side_left, tab_top, side, tab_height);
    const int frame_top = tab_top + tab_height;

    // Inside Frame2, one under the other and none over another: the caption,
    // the pictures on one line, the facts with room for all their rows, the
    // notes taking what is left.
    const int caption_top = margin;
    p[QStringLiteral("lblDtlCaption")] =
        QRect(dtl_left, caption_top, pane_inner, dtl_caption_height);
    const int pictures_top = caption_top + dtl_caption_height + 30;
    int px = dtl_left;
    for (const char* n : {"imgDtlAppt", "imgDtlNote", "imgDtlPrior", "imgDtlNext", "prtdtlImg"}) {
        p[QString::fromLatin1(n)] = QRect(px, pictures_top, picture_size, picture_size);
        px += picture_size + 60;
    }
    const int facts_top = pictures_top + picture_size + 60;
    const int facts_height = dtl_rows_height(dtl_height) + dtl_chrome;
    p[QStringLiteral("vsDtl")] = QRect(dtl_left, facts_top, pane_inner, facts_height);
    const int label_top = facts_top + facts_height + 90;
    p[QStringLiteral("lblNotes")] = QRect(dtl_left, label_top, pane_inner, notes_label_height);
    const int notes_top = label_top + notes_label_height;

    const int frame_height =
        std::max(h - frame_top - margin, notes_top + min_notes_height + margin);
    p[QStringLiteral("Frame2")] = QRect(side_left, frame_top, side, frame_height);
    p[QStringLiteral("rtNotes")] =
        QRect(dtl_left, notes_top, pane_inner, frame_height - notes_top - margin);
    return p;
}

void apply_day_extents(PlannerState& view, const Placement& p) {
    const auto extent = [&](Grid& g, const char* name) {
        const auto it = p.find(QString::fromLatin1(name));
        if (it != p.end()) g.set_extent(it->second.width(), it->second.height());
    };
    extent(view.vsSched, "vsSched");
    extent(view.Cal, "Cal");
    view.vsDtl.set_extent(dtl_width, dtl_height);
    if (view.view_day && view.vsSched.Cols() > 0) size_sched_cols(view);
    size_cal_cells(view);
}

} // namespace orva
