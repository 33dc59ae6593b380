#include "grid/grid.h"
#include "support/grid_text.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using orva::testing::column_text;

// --- sorting -------------------------------------------------------------------

TEST(Grid, StringSortKeepsEqualKeysInTheirOrder) {
    Grid g(0, 3);
    g.AddItem(QStringLiteral("10:00\tB\t1"));
    g.AddItem(QStringLiteral("09:00\tA\t2"));
    g.AddItem(QStringLiteral("10:00\tA\t3"));
    g.AddItem(QStringLiteral("     \tZ\t4"));
    g.AddItem(QStringLiteral("09:00\tA\t5"));
    g.Sort(SortOrder::StringAscending, 0);
    EXPECT_EQ(column_text(g, 2), QStringLiteral("4|2|5|1|3"));
}

TEST(Grid, SortOverTwoColumnsUsesTheSecondToBreakTies) {
    Grid g(0, 3);
    g.AddItem(QStringLiteral("10:00\tB\t1"));
    g.AddItem(QStringLiteral("10:00\tA\t2"));
    g.AddItem(QStringLiteral("09:00\tC\t3"));
    g.Sort(SortOrder::StringAscending, 0, 1);
    EXPECT_EQ(column_text(g, 2), QStringLiteral("3|2|1"));
}

TEST(Grid, SortWithoutColumnsUsesTheSelectedOnes) {
    Grid g(0, 3);
    g.AddItem(QStringLiteral("z\t10:00\tB"));
    g.AddItem(QStringLiteral("a\t10:00\tA"));
    g.AddItem(QStringLiteral("m\t09:00\tC"));
    g.Select(0, 1, 2, 2);
    g.Sort(SortOrder::StringAscending);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("m|a|z"));
}

TEST(Grid, SortLeavesFixedRowsInPlace) {
    Grid g(0, 1);
    g.AddItem(QStringLiteral("zz heading"));
    g.AddItem(QStringLiteral("b"));
    g.AddItem(QStringLiteral("a"));
    g.setFixedRows(1);
    g.Sort(SortOrder::StringAscending, 0);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("zz heading|a|b"));
}

TEST(Grid, SortMovesFormatAndRowSettingsWithTheRow) {
    Grid g(0, 1);
    g.AddItem(QStringLiteral("b"));
    g.AddItem(QStringLiteral("a"));
    g.setCell(CellSetting::Data, 1, 0, QStringLiteral("of a"));
    g.setRowHeight(1, 600);
    g.Sort(SortOrder::StringAscending, 0);
    EXPECT_EQ(g.Cell(CellSetting::Data, 0, 0).toString(), QStringLiteral("of a"));
    EXPECT_EQ(g.RowHeight(0), 600);
    EXPECT_EQ(g.RowHeight(1), Grid::default_row_height);
}

TEST(Grid, NumericSortComparesNumbersNotTexts) {
    Grid g(0, 1);
    for (const char* t : {"10", "9", "100", "-1"})
        g.AddItem(QString::fromLatin1(t));
    g.Sort(SortOrder::NumericAscending, 0);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("-1|9|10|100"));
    g.Sort(SortOrder::StringAscending, 0);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("-1|10|100|9"));
    g.Sort(SortOrder::NumericDescending, 0);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("100|10|9|-1"));
}

TEST(Grid, StringSortIsCaseSensitiveGenericIsNot) {
    Grid g(0, 1);
    for (const char* t : {"b", "B", "a"})
        g.AddItem(QString::fromLatin1(t));
    g.Sort(SortOrder::StringAscending, 0);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("B|a|b"));
    g.Sort(SortOrder::GenericAscending, 0);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("a|B|b"));
}

TEST(Grid, DescendingSortStaysStable) {
    Grid g(0, 2);
    g.AddItem(QStringLiteral("1\tfirst"));
    g.AddItem(QStringLiteral("2\tonly"));
    g.AddItem(QStringLiteral("1\tsecond"));
    g.Sort(SortOrder::StringDescending, 0);
    EXPECT_EQ(column_text(g, 1), QStringLiteral("only|first|second"));
}

} // namespace
} // namespace orva
