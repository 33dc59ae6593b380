#include "grid/grid.h"

#include <gtest/gtest.h>
#include <limits>

namespace orva {
namespace {

// --- geometry ------------------------------------------------------------------

TEST(Grid, WidthsAndHeightsAreTwipsWithMinusOneForTheDefault) {
    Grid g(2, 2);
    EXPECT_EQ(g.ColWidth(0), Grid::default_col_width);
    EXPECT_EQ(g.RowHeight(0), Grid::default_row_height);
    g.setColWidth(0, 3200);
    g.setRowHeight(1, 800);
    EXPECT_EQ(g.ColWidth(0), 3200);
    EXPECT_EQ(g.RowHeight(1), 800);
    g.setColWidth(0, -1);
    EXPECT_EQ(g.ColWidth(0), Grid::default_col_width);
}

TEST(Grid, HiddenFlagsAreKeptPerRowAndColumn) {
    Grid g(3, 3);
    g.setRowHidden(1, true);
    g.setColHidden(2, true);
    EXPECT_EQ(g.RowHidden(0), false);
    EXPECT_EQ(g.RowHidden(1), true);
    EXPECT_EQ(g.ColHidden(2), true);
    g.setColHidden(2, false);
    EXPECT_EQ(g.ColHidden(2), false);
}

TEST(Grid, RowPosCountsFixedRowsThenRowsFromTheTopRow) {
    Grid g(6, 1);
    g.setFixedRows(1);
    g.setRowHeight(0, 800);
    g.setRowHeight(2, 400);
    g.setRowHidden(3, true);
    EXPECT_EQ(g.RowPos(0), 0);
    EXPECT_EQ(g.RowPos(1), 800);
    EXPECT_EQ(g.RowPos(4), 800 + 255 + 400);
    g.setTopRow(2);
    EXPECT_EQ(g.RowPos(2), 800);
    EXPECT_EQ(g.RowPos(1), 800 - 255);
}

TEST(Grid, ColPosAddsTheWidthsOfShownColumns) {
    Grid g(1, 4);
    g.setColWidth(0, 500);
    g.setColHidden(1, true);
    EXPECT_EQ(g.ColPos(3), 500 + 1000);
}

// --- sizes no screen could show, as a grid file may hold them ---------------------

constexpr int int_top = std::numeric_limits<int>::max();
constexpr int int_bottom = std::numeric_limits<int>::min();

TEST(Grid, RowPosPastTheRangeOfAnIntStandsAtItsEnd) {
    Grid g(6, 1);
    g.setRowHeight(2, int_top);
    EXPECT_EQ(g.RowPos(2), 2 * 255);
    EXPECT_EQ(g.RowPos(5), int_top);
    g.setTopRow(5);
    EXPECT_EQ(g.RowPos(0), int_bottom);
}

TEST(Grid, ColPosPastTheRangeOfAnIntStandsAtItsEnd) {
    Grid g(1, 4);
    g.setFixedCols(2);
    g.setColWidth(0, int_top);
    g.setColWidth(1, int_top);
    EXPECT_EQ(g.ColPos(1), int_top);
    EXPECT_EQ(g.ColPos(3), int_top);
}

TEST(Grid, AutoSizeOfTextInAFontTooBigForAnyScreenMakesTheWidestColumn) {
    Grid g(2, 2);
    g.setFontSize(1e308);
    g.setTextMatrix(0, 0, QStringLiteral("abc"));
    g.AutoSize(0, 1);
    EXPECT_EQ(g.ColWidth(0), int_top);
    EXPECT_EQ(g.ColWidth(1), 120);
}

TEST(Grid, AutoSizeByAMeasureThatGivesTheWidestIntKeepsIt) {
    Grid g(1, 1);
    g.setTextMatrix(0, 0, QStringLiteral("abc"));
    g.set_measure([](const QString&, const QString&, double, bool, bool) { return int_top; });
    g.AutoSize(0);
    EXPECT_EQ(g.ColWidth(0), int_top);
}

TEST(Grid, ShowCellKeepsTheRequestForTheView) {
    Grid g(50, 2);
    g.setTopRow(20);
    const quint64 serial = g.scroll_serial();
    g.ShowCell(5, 1);
    EXPECT_EQ(g.shown_row(), 5);
    EXPECT_EQ(g.shown_col(), 1);
    EXPECT_EQ(g.TopRow(), 5);
    EXPECT_EQ(g.scroll_serial(), serial + 1);
}

TEST(Grid, TopRowNeverNamesAFixedRow) {
    Grid g(10, 1);
    g.setFixedRows(2);
    g.setTopRow(0);
    EXPECT_EQ(g.TopRow(), 2);
    g.setTopRow(15);
    EXPECT_EQ(g.error(), err::subscript);
}

TEST(Grid, AutoSizeWidensToTheLongestTextByTheMeasure) {
    Grid g(3, 2);
    g.setTextMatrix(0, 0, QStringLiteral("abc"));
    g.setTextMatrix(1, 0, QStringLiteral("abcdefgh"));
    g.setRowHidden(1, true);
    g.setTextMatrix(2, 1, QStringLiteral("x"));
    g.set_measure(
        [](const QString& t, const QString&, double, bool, bool) { return int(t.size()) * 100; });
    g.AutoSize(0, 1);
    EXPECT_EQ(g.ColWidth(0), 800 + 120);
    EXPECT_EQ(g.ColWidth(1), 100 + 120);
}

TEST(Grid, AutoSizeWithoutAViewGrowsWithTheText) {
    Grid g(2, 1);
    g.setTextMatrix(0, 0, QStringLiteral(" 12:00 am"));
    g.AutoSize(0);
    const int short_width = g.ColWidth(0);
    g.setTextMatrix(1, 0, QStringLiteral(" 12:00 am and a good deal more"));
    g.AutoSize(0);
    EXPECT_GT(short_width, 120);
    EXPECT_GT(g.ColWidth(0), short_width);
}

} // namespace
} // namespace orva
