#include "grid/grid.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

// --- merging -------------------------------------------------------------------

TEST(Grid, EqualVerticalTextsInAMergeColumnFormOneBlock) {
    Grid g(6, 2);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(1, true);
    for (int r = 1; r <= 3; ++r)
        g.setTextMatrix(r, 1, QStringLiteral("Dentist"));
    g.setTextMatrix(4, 1, QStringLiteral(" Dentist"));
    EXPECT_EQ(g.merged_range(2, 1), (Grid::Span{1, 1, 3, 1}));
    EXPECT_EQ(g.merged_range(1, 1), (Grid::Span{1, 1, 3, 1}));
    EXPECT_EQ(g.merged_range(4, 1), (Grid::Span{4, 1, 4, 1}));
}

TEST(Grid, EmptyTextsNeverMerge) {
    Grid g(4, 1);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(0, true);
    EXPECT_EQ(g.merged_range(1, 0), (Grid::Span{1, 0, 1, 0}));
}

TEST(Grid, OnlyColumnsWithMergeOnMergeVertically) {
    Grid g(3, 2);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(0, true);
    for (int r = 0; r < 3; ++r)
        g.setCell(CellSetting::Text, r, 0, r, 1, QStringLiteral("x"));
    EXPECT_EQ(g.merged_range(1, 0), (Grid::Span{0, 0, 2, 0}));
    EXPECT_EQ(g.merged_range(1, 1), (Grid::Span{1, 1, 1, 1}));
}

TEST(Grid, MergeNeverKeepsEveryCellApart) {
    Grid g(3, 1);
    g.setMergeCol(0, true);
    g.setCell(CellSetting::Text, 0, 0, 2, 0, QStringLiteral("x"));
    EXPECT_EQ(g.merged_range(1, 0), (Grid::Span{1, 0, 1, 0}));
}

TEST(Grid, EqualTextsInAMergeRowFormOneTitle) {
    Grid g(2, 4);
    g.setMergeCells(MergeMode::Free);
    g.setMergeRow(0, true);
    g.setCell(CellSetting::Text, 0, 0, 0, 2, QStringLiteral("March 2024"));
    g.setTextMatrix(0, 3, QStringLiteral("x"));
    g.setCell(CellSetting::Text, 1, 0, 1, 3, QStringLiteral("same"));
    EXPECT_EQ(g.merged_range(0, 1), (Grid::Span{0, 0, 0, 2}));
    EXPECT_EQ(g.merged_range(1, 1), (Grid::Span{1, 1, 1, 1}));
}

TEST(Grid, BlocksDoNotCrossFromFixedRowsIntoScrollingOnes) {
    Grid g(3, 1);
    g.setFixedRows(1);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(0, true);
    g.setCell(CellSetting::Text, 0, 0, 2, 0, QStringLiteral("x"));
    EXPECT_EQ(g.merged_range(0, 0), (Grid::Span{0, 0, 0, 0}));
    EXPECT_EQ(g.merged_range(2, 0), (Grid::Span{1, 0, 2, 0}));
}

TEST(Grid, RestrictColumnsMergesOnlyWhereTheColumnToTheLeftMerges) {
    Grid g(3, 2);
    g.setMergeCells(MergeMode::RestrictColumns);
    g.setMergeCol(0, true);
    g.setMergeCol(1, true);
    g.setTextMatrix(0, 0, QStringLiteral("a"));
    g.setTextMatrix(1, 0, QStringLiteral("a"));
    g.setTextMatrix(2, 0, QStringLiteral("b"));
    g.setCell(CellSetting::Text, 0, 1, 2, 1, QStringLiteral("x"));
    EXPECT_EQ(g.merged_range(0, 1), (Grid::Span{0, 1, 1, 1}));
    EXPECT_EQ(g.merged_range(2, 1), (Grid::Span{2, 1, 2, 1}));
}

// --- borders -------------------------------------------------------------------

TEST(Grid, CellBorderGivesOuterSidesToTheEdgeAndInnerLinesBetweenCells) {
    Grid g(4, 4);
    const Color navy = rgb(0, 0, 125);
    g.Select(1, 1, 2, 2);
    g.CellBorder(navy, 1, 2, 3, 4, 5, 6);
    EXPECT_EQ(g.border(1, 1), (CellBorderSpec{navy, 1, 2, 5, 6}));
    EXPECT_EQ(g.border(1, 2), (CellBorderSpec{navy, 5, 2, 3, 6}));
    EXPECT_EQ(g.border(2, 1), (CellBorderSpec{navy, 1, 6, 5, 4}));
    EXPECT_EQ(g.border(2, 2), (CellBorderSpec{navy, 5, 6, 3, 4}));
    EXPECT_EQ(g.border(0, 0), CellBorderSpec{});
    EXPECT_EQ(g.border(3, 3), CellBorderSpec{});
}

TEST(Grid, CellBorderOnOneColumnBlockBoxesIt) {
    Grid g(5, 3);
    g.Select(1, 2, 3, 2);
    g.CellBorder(rgb(0, 0, 125), 1, 1, 1, 1, 500, 500);
    EXPECT_EQ(g.border(1, 2), (CellBorderSpec{rgb(0, 0, 125), 1, 1, 1, 500}));
    EXPECT_EQ(g.border(2, 2), (CellBorderSpec{rgb(0, 0, 125), 1, 500, 1, 500}));
    EXPECT_EQ(g.border(3, 2), (CellBorderSpec{rgb(0, 0, 125), 1, 500, 1, 1}));
}

TEST(Grid, NegativeBorderWidthLeavesThatSideAlone) {
    Grid g(1, 1);
    g.Select(0, 0);
    g.CellBorder(rgb(1, 0, 0), 2, 2, 2, 2, 0, 0);
    g.CellBorder(rgb(0, 1, 0), -1, 0, -1, -1, 0, 0);
    EXPECT_EQ(g.border(0, 0), (CellBorderSpec{rgb(0, 1, 0), 2, 0, 2, 2}));
}

} // namespace
} // namespace orva
