#include "views/day_layout.h"
#include "views/detail_pane.h"

#include <gtest/gtest.h>

#include <ostream>

namespace orva {

// Lets a failing comparison show the rectangles.
inline void PrintTo(const QRect& r, std::ostream* os) {
    *os << "(" << r.x() << ", " << r.y() << ", " << r.width() << " x " << r.height() << ")";
}

namespace {

// Client areas in twips at 96 dpi (15 twips a pixel) of windows of
// 1280 x 800 and 1920 x 1080 less menu and status bar.
struct PageSize {
    const char* name;
    int width, height;
};

class DayLayout : public ::testing::TestWithParam<PageSize> {
  protected:
    Placement p = layout_day(GetParam().width, GetParam().height);
    QRect at(const char* name) {
        const auto it = p.find(QString::fromLatin1(name));
        EXPECT_NE(it, p.end()) << name;
        return it == p.end() ? QRect() : it->second;
    }
};

const char* const pane_children[] = {"lblDtlCaption", "imgDtlAppt", "imgDtlNote",
                                     "imgDtlPrior",   "imgDtlNext", "prtdtlImg",
                                     "vsDtl",         "lblNotes",   "rtNotes"};

TEST_P(DayLayout, PaneHoldsItsControlsOneUnderTheOtherWithoutOverlap) {
    const QRect frame(QPoint(0, 0), at("Frame2").size());
    for (const char* a : pane_children) {
        EXPECT_TRUE(frame.contains(at(a))) << a;
        for (const char* b : pane_children) {
            if (a == b) continue;
            EXPECT_FALSE(at(a).intersects(at(b))) << a << " over " << b;
        }
    }
    // The caption stands above the pictures, the pictures above the facts.
    EXPECT_LE(at("lblDtlCaption").bottom(), at("imgDtlAppt").top());
    EXPECT_LE(at("imgDtlAppt").bottom(), at("vsDtl").top());
    EXPECT_LE(at("vsDtl").bottom(), at("lblNotes").top());
    EXPECT_GE(at("rtNotes").height(), 600);
}

TEST_P(DayLayout, CaptionHasRoomForTwoLines) {
    EXPECT_GE(at("lblDtlCaption").height(), 2 * 225); // two lines of 10 points
    EXPECT_EQ(at("lblDtlCaption").width(), at("vsDtl").width());
}

TEST_P(DayLayout, FactsGridHasRoomForAllItsRows) {
    // Six rows computed from the designed 1750 twips take 2280.
    EXPECT_EQ(dtl_rows_height(dtl_height), 2280);
    EXPECT_GT(at("vsDtl").height(), dtl_rows_height(dtl_height));
}

TEST_P(DayLayout, PageControlsDoNotOverlap) {
    const char* const page[] = {"Label1", "Frame3",     "vsSched", "imgPriorMth", "Combo1",
                                "Combo2", "imgNextMth", "Cal",     "TabStrip1",   "Frame2"};
    for (const char* a : page)
        for (const char* b : page) {
            if (a == b) continue;
            EXPECT_FALSE(at(a).intersects(at(b))) << a << " over " << b;
        }
    EXPECT_LE(at("Frame2").bottom(), GetParam().height);
}

INSTANTIATE_TEST_SUITE_P(Windows, DayLayout,
                         ::testing::Values(PageSize{"w1280x800", 1280 * 15, 757 * 15},
                                           PageSize{"w1920x1080", 1920 * 15, 1037 * 15},
                                           PageSize{"w1152x720", 1152 * 15, 677 * 15}),
                         [](const ::testing::TestParamInfo<PageSize>& i) {
                             return std::string(i.param.name);
                         });

TEST(DayLayoutSide, NavigatorAndPaneTakeAQuarterOfAWideWindowAndTheirDesignedWidthElse) {
    const Placement narrow = layout_day(1152 * 15, 677 * 15);
    EXPECT_EQ(narrow.at("Frame2").width(), side_width);
    EXPECT_EQ(narrow.at("Cal").width(), side_width);
    EXPECT_EQ(narrow.at("vsDtl").width(), dtl_width);
    const Placement wide = layout_day(1920 * 15, 1037 * 15);
    EXPECT_EQ(wide.at("Frame2").width(), 1920 * 15 / 4);
    EXPECT_EQ(wide.at("Cal").width(), 1920 * 15 / 4);
    EXPECT_EQ(wide.at("vsDtl").width(), dtl_width + 1920 * 15 / 4 - side_width);
    EXPECT_EQ(wide.at("rtNotes").width(), wide.at("vsDtl").width());
    // The day grid keeps the rest, ending a margin before the navigator.
    EXPECT_EQ(wide.at("vsSched").right() + 1 + margin, wide.at("Cal").left());
}

TEST(DayLayoutExtents, FactsGridKeepsItsDesignedExtentWhateverRoomItGets) {
    AppState s;
    apply_day_extents(s, layout_day(1920 * 15, 1037 * 15));
    EXPECT_EQ(s.vsDtl.Width(), dtl_width);
    EXPECT_EQ(s.vsDtl.Height(), dtl_height);
}

} // namespace
} // namespace orva
