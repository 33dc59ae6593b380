#include "grid/grid.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orva {
namespace {

QString row_text(const Grid& g, int row) {
    QStringList cells;
    for (int c = 0; c < g.Cols(); ++c)
        cells << g.TextMatrix(row, c);
    return cells.join(QLatin1Char('|'));
}

QString column_text(const Grid& g, int col) {
    QStringList cells;
    for (int r = 0; r < g.Rows(); ++r)
        cells << g.TextMatrix(r, col);
    return cells.join(QLatin1Char('|'));
}

void write_file(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// --- size and contents -------------------------------------------------------

TEST(Grid, StartsWithTheSizeItWasGiven) {
    Grid g(3, 4);
    EXPECT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.Cols(), 4);
    EXPECT_EQ(g.TextMatrix(2, 3), QString());
    EXPECT_EQ(g.error(), err::none);
}

TEST(Grid, TextMatrixKeepsOneTextPerCell) {
    Grid g(2, 2);
    g.setTextMatrix(0, 1, QStringLiteral("a"));
    g.setTextMatrix(1, 0, QStringLiteral("b"));
    EXPECT_EQ(row_text(g, 0), QStringLiteral("|a"));
    EXPECT_EQ(row_text(g, 1), QStringLiteral("b|"));
}

TEST(Grid, AddItemSplitsTabsIntoCells) {
    Grid g(0, 3);
    g.AddItem(QStringLiteral("09:00\t17\t4"));
    g.AddItem(QStringLiteral("only"));
    ASSERT_EQ(g.Rows(), 2);
    EXPECT_EQ(row_text(g, 0), QStringLiteral("09:00|17|4"));
    EXPECT_EQ(row_text(g, 1), QStringLiteral("only||"));
}

TEST(Grid, AddItemDropsPiecesBeyondTheLastColumn) {
    Grid g(0, 2);
    g.AddItem(QStringLiteral("a\tb\tc\td"));
    EXPECT_EQ(g.Cols(), 2);
    EXPECT_EQ(row_text(g, 0), QStringLiteral("a|b"));
}

TEST(Grid, AddItemWithAPositionInsertsBeforeThatRow) {
    Grid g(0, 1);
    g.AddItem(QStringLiteral("first"));
    g.AddItem(QStringLiteral("third"));
    g.setRowHeight(1, 400);
    g.AddItem(QStringLiteral("second"), 1);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("first|second|third"));
    EXPECT_EQ(g.RowHeight(2), 400);
    EXPECT_EQ(g.RowHeight(1), Grid::default_row_height);
}

TEST(Grid, AddItemAtTheEndPositionAppends) {
    Grid g(1, 1);
    g.AddItem(QStringLiteral("x"), 1);
    EXPECT_EQ(g.error(), err::none);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("|x"));
}

TEST(Grid, AddItemPastTheEndFailsWithSubscript) {
    Grid g(1, 1);
    g.AddItem(QStringLiteral("x"), 5);
    EXPECT_EQ(g.error(), err::subscript);
    EXPECT_EQ(g.Rows(), 1);
}

TEST(Grid, RemoveItemTakesTheRowOut) {
    Grid g(0, 1);
    for (const char* t : {"a", "b", "c"})
        g.AddItem(QString::fromLatin1(t));
    g.setRowHidden(2, true);
    g.RemoveItem(1);
    EXPECT_EQ(column_text(g, 0), QStringLiteral("a|c"));
    EXPECT_EQ(g.RowHidden(1), true);
}

TEST(Grid, RemoveItemKeepsTheCursorInsideTheGrid) {
    Grid g(3, 1);
    g.setRow(2);
    g.RemoveItem(2);
    EXPECT_EQ(g.Row(), 1);
    EXPECT_EQ(g.RowSel(), 1);
}

TEST(Grid, ShrinkingRowsAndColsKeepsWhatFits) {
    Grid g(3, 3);
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            g.setTextMatrix(r, c, QStringLiteral("%1%2").arg(r).arg(c));
    g.setCell(CellSetting::BackColor, 1, 1, rgb(1, 2, 3));
    g.setColWidth(1, 1500);
    g.setCols(2);
    g.setRows(2);
    EXPECT_EQ(row_text(g, 0), QStringLiteral("00|01"));
    EXPECT_EQ(row_text(g, 1), QStringLiteral("10|11"));
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 1, 1).toUInt(), rgb(1, 2, 3));
    EXPECT_EQ(g.ColWidth(1), 1500);
}

TEST(Grid, GrowingAfterShrinkingGivesEmptyCells) {
    Grid g(2, 2);
    g.setTextMatrix(1, 1, QStringLiteral("gone"));
    g.setRows(1);
    g.setRows(2);
    g.setCols(3);
    EXPECT_EQ(g.TextMatrix(1, 1), QString());
    EXPECT_EQ(g.TextMatrix(1, 2), QString());
}

TEST(Grid, ClearEmptiesTextsDataAndFormatButKeepsTheSize) {
    Grid g(2, 2);
    g.setTextMatrix(0, 0, QStringLiteral("x"));
    g.setCell(CellSetting::Data, 0, 1, QStringLiteral("blank"));
    g.setCell(CellSetting::BackColor, 1, 1, rgb(9, 9, 9));
    g.Select(1, 1);
    g.CellBorder(rgb(0, 0, 125), 1, 1, 1, 1, 0, 0);
    g.setColWidth(0, 2000);
    g.Clear();
    EXPECT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.Cols(), 2);
    EXPECT_EQ(g.TextMatrix(0, 0), QString());
    EXPECT_EQ(g.Cell(CellSetting::Data, 0, 1).isValid(), false);
    EXPECT_EQ(g.cell_has(CellSetting::BackColor, 1, 1), false);
    EXPECT_EQ(g.border(1, 1), CellBorderSpec{});
    EXPECT_EQ(g.ColWidth(0), 2000);
}

// --- errors ------------------------------------------------------------------

TEST(Grid, ReadingOutsideTheGridSetsSubscriptAndGivesEmptyText) {
    Grid g(2, 2);
    g.clear_error();
    EXPECT_EQ(g.TextMatrix(2, 0), QString());
    EXPECT_EQ(g.error(), err::subscript);
    g.clear_error();
    EXPECT_EQ(g.TextMatrix(0, -1), QString());
    EXPECT_EQ(g.error(), err::subscript);
}

TEST(Grid, WritingOutsideTheGridSetsSubscriptAndChangesNothing) {
    Grid g(2, 2);
    const quint64 before = g.version();
    g.clear_error();
    g.setTextMatrix(5, 5, QStringLiteral("x"));
    EXPECT_EQ(g.error(), err::subscript);
    EXPECT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.version(), before);
    g.clear_error();
    g.setCell(CellSetting::BackColor, 0, 0, 1, 2, rgb(1, 1, 1));
    EXPECT_EQ(g.error(), err::subscript);
    EXPECT_EQ(g.cell_has(CellSetting::BackColor, 0, 0), false);
}

TEST(Grid, ErrorStaysUntilTheCallerClearsIt) {
    Grid g(1, 1);
    g.clear_error();
    g.setRow(3);
    g.setTextMatrix(0, 0, QStringLiteral("fine"));
    EXPECT_EQ(g.error(), err::subscript);
    g.clear_error();
    EXPECT_EQ(g.error(), err::none);
}

TEST(Grid, OutOfRangeGeometryAndFlagsSetSubscript) {
    Grid g(1, 1);
    auto expect_subscript = [&g](auto op) {
        g.clear_error();
        op();
        EXPECT_EQ(g.error(), err::subscript);
    };
    expect_subscript([&] { g.setColWidth(1, 10); });
    expect_subscript([&] { (void)g.RowHeight(-1); });
    expect_subscript([&] { g.setRowHidden(4, true); });
    expect_subscript([&] { (void)g.ColHidden(2); });
    expect_subscript([&] { g.setMergeCol(1, true); });
    expect_subscript([&] { g.RemoveItem(1); });
    expect_subscript([&] { g.Select(0, 0, 0, 1); });
    expect_subscript([&] { g.Sort(SortOrder::StringAscending, 1); });
    expect_subscript([&] { (void)g.merged_range(1, 0); });
}

TEST(Grid, UnknownAlignmentIsRefused) {
    Grid g(1, 1);
    g.clear_error();
    g.setCell(CellSetting::Alignment, 0, 0, 42);
    EXPECT_EQ(g.error(), err::bad_value);
    EXPECT_EQ(g.cell_has(CellSetting::Alignment, 0, 0), false);
}

// --- cursor ------------------------------------------------------------------

TEST(Grid, SelectSetsTheCursorAndTheFarCorner) {
    Grid g(5, 5);
    g.Select(1, 2, 3, 4);
    EXPECT_EQ(g.Row(), 1);
    EXPECT_EQ(g.Col(), 2);
    EXPECT_EQ(g.RowSel(), 3);
    EXPECT_EQ(g.ColSel(), 4);
    g.Select(2, 2);
    EXPECT_EQ(g.RowSel(), 2);
    EXPECT_EQ(g.ColSel(), 2);
}

TEST(Grid, SettingRowCollapsesTheSelection) {
    Grid g(5, 5);
    g.Select(1, 1, 4, 4);
    g.setRow(3);
    g.setCol(0);
    EXPECT_EQ(g.RowSel(), 3);
    EXPECT_EQ(g.ColSel(), 0);
}

TEST(Grid, AnEmptyGridHasNoCursor) {
    Grid g(0, 0);
    EXPECT_EQ(g.Row(), -1);
    EXPECT_EQ(g.Col(), -1);
    g.setCols(2);
    g.AddItem(QStringLiteral("a"));
    EXPECT_EQ(g.Row(), 0);
    EXPECT_EQ(g.Col(), 0);
}

TEST(Grid, MoreFixedRowsThanRowsGrowsTheGrid) {
    Grid g(0, 2);
    g.setFixedRows(1);
    EXPECT_EQ(g.Rows(), 1);
    EXPECT_EQ(g.FixedRows(), 1);
    g.setRows(0);
    EXPECT_EQ(g.FixedRows(), 0);
}

// --- cell settings -------------------------------------------------------------

TEST(Grid, CellRangeSetsEveryCellWithCornersInEitherOrder) {
    Grid g(4, 4);
    g.setCell(CellSetting::BackColor, 2, 2, 1, 1, rgb(10, 20, 30));
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            EXPECT_EQ(g.cell_has(CellSetting::BackColor, r, c),
                      r >= 1 && r <= 2 && c >= 1 && c <= 2)
                << r << "," << c;
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 2, 1).toUInt(), rgb(10, 20, 30));
}

TEST(Grid, CellTextIsTheSameTextAsTextMatrix) {
    Grid g(2, 2);
    g.setCell(CellSetting::Text, 0, 0, 1, 1, QStringLiteral("t"));
    EXPECT_EQ(g.TextMatrix(1, 1), QStringLiteral("t"));
    EXPECT_EQ(g.Cell(CellSetting::Text, 0, 0).toString(), QStringLiteral("t"));
}

TEST(Grid, CellKeepsEverySettingItWasGiven) {
    Grid g(1, 1);
    g.setCell(CellSetting::Data, 0, 0, 17);
    g.setCell(CellSetting::ForeColor, 0, 0, rgb(200, 0, 0));
    g.setCell(CellSetting::Picture, 0, 0, QStringLiteral("bday"));
    g.setCell(CellSetting::PictureAlignment, 0, 0, int(Align::RightCenter));
    g.setCell(CellSetting::Alignment, 0, 0, int(Align::CenterCenter));
    g.setCell(CellSetting::FontName, 0, 0, QStringLiteral("Serif"));
    g.setCell(CellSetting::FontSize, 0, 0, 14.5);
    g.setCell(CellSetting::FontBold, 0, 0, true);
    g.setCell(CellSetting::FontItalic, 0, 0, true);
    g.setCell(CellSetting::FontUnderline, 0, 0, true);
    EXPECT_EQ(g.Cell(CellSetting::Data, 0, 0).toInt(), 17);
    EXPECT_EQ(g.Cell(CellSetting::ForeColor, 0, 0).toUInt(), rgb(200, 0, 0));
    EXPECT_EQ(g.Cell(CellSetting::Picture, 0, 0).toString(), QStringLiteral("bday"));
    EXPECT_EQ(g.Cell(CellSetting::PictureAlignment, 0, 0).toInt(), int(Align::RightCenter));
    EXPECT_EQ(g.Cell(CellSetting::Alignment, 0, 0).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(g.Cell(CellSetting::FontName, 0, 0).toString(), QStringLiteral("Serif"));
    EXPECT_EQ(g.Cell(CellSetting::FontSize, 0, 0).toDouble(), 14.5);
    EXPECT_EQ(g.Cell(CellSetting::FontBold, 0, 0).toBool(), true);
    EXPECT_EQ(g.Cell(CellSetting::FontItalic, 0, 0).toBool(), true);
    EXPECT_EQ(g.Cell(CellSetting::FontUnderline, 0, 0).toBool(), true);
}

TEST(Grid, UnsetCellSettingsReadAsTheGridsOwn) {
    Grid g(2, 2);
    g.setFixedRows(1);
    g.setBackColor(rgb(1, 1, 1));
    g.setBackColorFixed(rgb(2, 2, 2));
    g.setForeColor(rgb(3, 3, 3));
    g.setForeColorFixed(rgb(4, 4, 4));
    g.setFontName(QStringLiteral("Mono"));
    g.setFontSize(11);
    g.setFontBold(true);
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 1, 0).toUInt(), rgb(1, 1, 1));
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 0, 0).toUInt(), rgb(2, 2, 2));
    EXPECT_EQ(g.Cell(CellSetting::ForeColor, 1, 1).toUInt(), rgb(3, 3, 3));
    EXPECT_EQ(g.Cell(CellSetting::ForeColor, 0, 1).toUInt(), rgb(4, 4, 4));
    EXPECT_EQ(g.Cell(CellSetting::FontName, 1, 1).toString(), QStringLiteral("Mono"));
    EXPECT_EQ(g.Cell(CellSetting::FontSize, 1, 1).toDouble(), 11.0);
    EXPECT_EQ(g.Cell(CellSetting::FontBold, 1, 1).toBool(), true);
    EXPECT_EQ(g.Cell(CellSetting::Alignment, 1, 1).toInt(), int(Align::General));
    EXPECT_EQ(g.Cell(CellSetting::PictureAlignment, 1, 1).toInt(), int(Align::LeftCenter));
    EXPECT_EQ(g.Cell(CellSetting::Picture, 1, 1).toString(), QString());
}

TEST(Grid, AnInvalidValueReturnsACellSettingToTheGrids) {
    Grid g(1, 1);
    g.setCell(CellSetting::BackColor, 0, 0, rgb(5, 5, 5));
    g.setCell(CellSetting::BackColor, 0, 0, QVariant());
    EXPECT_EQ(g.cell_has(CellSetting::BackColor, 0, 0), false);
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 0, 0).toUInt(), g.BackColor());
}

TEST(Grid, ColoursKeepRedInTheLowByte) {
    EXPECT_EQ(rgb(0, 0, 125), Color(125u << 16));
    EXPECT_EQ(rgb(253, 225, 228), Color(15000061));
    EXPECT_EQ(red_of(rgb(253, 225, 228)), 253);
    EXPECT_EQ(green_of(rgb(253, 225, 228)), 225);
    EXPECT_EQ(blue_of(rgb(253, 225, 228)), 228);
}

// --- headings ----------------------------------------------------------------

TEST(Grid, FormatStringWritesHeadingsIntoRowZero) {
    Grid g(0, 0);
    g.setFormatString(QStringLiteral("^Appt Date/Time|^Description"));
    EXPECT_EQ(g.Cols(), 2);
    EXPECT_EQ(g.Rows(), 1);
    EXPECT_EQ(row_text(g, 0), QStringLiteral("Appt Date/Time|Description"));
}

TEST(Grid, FormatStringSetsHeadingAndColumnAlignment) {
    Grid g(3, 4);
    g.setFormatString(QStringLiteral("^Centre|<Left|>Right|Plain"));
    EXPECT_EQ(g.Cols(), 4);
    EXPECT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.ColAlignment(0), Align::CenterCenter);
    EXPECT_EQ(g.ColAlignment(1), Align::LeftCenter);
    EXPECT_EQ(g.ColAlignment(2), Align::RightCenter);
    EXPECT_EQ(g.ColAlignment(3), Align::General);
    EXPECT_EQ(g.Cell(CellSetting::Alignment, 0, 0).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(g.Cell(CellSetting::Alignment, 2, 2).toInt(), int(Align::RightCenter));
    EXPECT_EQ(g.TextMatrix(0, 3), QStringLiteral("Plain"));
}

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

// --- drawing -------------------------------------------------------------------

TEST(Grid, ChangesTellTheViewWhileDrawingIsOn) {
    Grid g(2, 2);
    int calls = 0;
    g.set_changed_hook([&calls] { ++calls; });
    g.setTextMatrix(0, 0, QStringLiteral("a"));
    g.setCell(CellSetting::BackColor, 0, 0, rgb(1, 1, 1));
    EXPECT_EQ(calls, 2);
}

TEST(Grid, RedrawOffHoldsNoticesAndOnGivesOne) {
    Grid g(2, 2);
    int calls = 0;
    g.set_changed_hook([&calls] { ++calls; });
    g.setRedraw(0);
    EXPECT_EQ(calls, 1); // the view learns that it should hold its painting
    const quint64 before = g.version();
    for (int i = 0; i < 10; ++i)
        g.AddItem(QStringLiteral("row"));
    EXPECT_EQ(calls, 1);
    EXPECT_GT(g.version(), before);
    g.setRedraw(2);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(g.Redraw(), 2);
    g.setRedraw(1);
    EXPECT_EQ(calls, 2);
}

TEST(Grid, ACopyCarriesContentsButNotTheView) {
    Grid g(1, 1);
    int calls = 0;
    g.set_changed_hook([&calls] { ++calls; });
    g.setTextMatrix(0, 0, QStringLiteral("a"));
    Grid copy(g);
    copy.setTextMatrix(0, 0, QStringLiteral("b"));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("a"));
    g = copy;
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("b"));
}

// --- files ---------------------------------------------------------------------

Grid formatted_grid() {
    Grid g(0, 4);
    g.setFormatString(QStringLiteral("^Time|<Text|>Amount|Note"));
    g.setFixedRows(1);
    g.setFixedCols(1);
    g.AddItem(QStringLiteral(" 09:00 am\tDentist\t12\t"));
    g.AddItem(QStringLiteral(" 09:30 am\tDentist\t\tbring card"));
    g.AddItem(QStringLiteral(" 10:00 am\t\t\t"));
    g.setCell(CellSetting::Data, 1, 1, 2, 1, 7);
    g.setCell(CellSetting::Data, 3, 1, QStringLiteral("blank"));
    g.setCell(CellSetting::Data, 3, 2, 2.5);
    g.setCell(CellSetting::BackColor, 1, 1, 2, 1, rgb(255, 255, 192));
    g.setCell(CellSetting::ForeColor, 1, 1, rgb(0, 0, 128));
    g.setCell(CellSetting::Picture, 1, 1, QStringLiteral("dent"));
    g.setCell(CellSetting::PictureAlignment, 1, 1, int(Align::LeftCenter));
    g.setCell(CellSetting::Alignment, 1, 1, 2, 1, int(Align::CenterCenter));
    g.setCell(CellSetting::FontName, 2, 3, QStringLiteral("Serif"));
    g.setCell(CellSetting::FontSize, 2, 3, 12.0);
    g.setCell(CellSetting::FontBold, 2, 3, true);
    g.setCell(CellSetting::FontItalic, 2, 3, true);
    g.setCell(CellSetting::FontUnderline, 2, 3, true);
    g.Select(1, 1, 2, 1);
    g.CellBorder(rgb(0, 0, 125), 1, 1, 1, 1, 500, 500);
    g.setColWidth(0, 900);
    g.setColWidth(1, 3200);
    g.setRowHeight(0, 800);
    g.setRowHeight(3, 400);
    g.setRowHidden(3, true);
    g.setColHidden(2, true);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(1, true);
    g.setMergeRow(0, true);
    g.setBackColor(rgb(250, 250, 250));
    g.setForeColor(rgb(10, 10, 10));
    g.setBackColorFixed(rgb(200, 200, 200));
    g.setForeColorFixed(rgb(20, 20, 20));
    g.setGridColor(rgb(100, 100, 100));
    g.setFontName(QStringLiteral("Sans"));
    g.setFontSize(10);
    g.setFontBold(true);
    g.setFontItalic(true);
    g.setEditable(true);
    g.Select(2, 1);
    return g;
}

// Every cell and every setting, as one text, so a round trip compares whole.
QString dump(const Grid& g) {
    QStringList out;
    out << QStringLiteral("size %1x%2 fixed %3,%4 cursor %5,%6,%7,%8 merge %9")
               .arg(g.Rows())
               .arg(g.Cols())
               .arg(g.FixedRows())
               .arg(g.FixedCols())
               .arg(g.Row())
               .arg(g.Col())
               .arg(g.RowSel())
               .arg(g.ColSel())
               .arg(int(g.MergeCells()));
    out << QStringLiteral("colours %1 %2 %3 %4 %5 font %6 %7 %8 %9 editable %10")
               .arg(g.BackColor())
               .arg(g.ForeColor())
               .arg(g.BackColorFixed())
               .arg(g.ForeColorFixed())
               .arg(g.GridColor())
               .arg(g.FontName())
               .arg(g.FontSize())
               .arg(g.FontBold())
               .arg(g.FontItalic())
               .arg(g.Editable());
    for (int c = 0; c < g.Cols(); ++c)
        out << QStringLiteral("col %1 width %2 hidden %3 merge %4 align %5")
                   .arg(c)
                   .arg(g.ColWidth(c))
                   .arg(g.ColHidden(c))
                   .arg(g.MergeCol(c))
                   .arg(int(g.ColAlignment(c)));
    for (int r = 0; r < g.Rows(); ++r) {
        out << QStringLiteral("row %1 height %2 hidden %3 merge %4")
                   .arg(r)
                   .arg(g.RowHeight(r))
                   .arg(g.RowHidden(r))
                   .arg(g.MergeRow(r));
        for (int c = 0; c < g.Cols(); ++c) {
            QStringList cell;
            for (CellSetting s :
                 {CellSetting::Text, CellSetting::Data, CellSetting::BackColor,
                  CellSetting::ForeColor, CellSetting::Picture, CellSetting::PictureAlignment,
                  CellSetting::Alignment, CellSetting::FontName, CellSetting::FontSize,
                  CellSetting::FontBold, CellSetting::FontItalic, CellSetting::FontUnderline}) {
                const QVariant v = g.Cell(s, r, c);
                cell << QStringLiteral("%1:%2%3")
                            .arg(v.typeName() ? v.typeName() : "none")
                            .arg(v.toString())
                            .arg(g.cell_has(s, r, c) ? QStringLiteral("*") : QString());
            }
            const CellBorderSpec b = g.border(r, c);
            cell << QStringLiteral("border %1 %2 %3 %4 %5")
                        .arg(b.color)
                        .arg(b.left)
                        .arg(b.top)
                        .arg(b.right)
                        .arg(b.bottom);
            out << QStringLiteral("  %1,%2 %3").arg(r).arg(c).arg(cell.join(QLatin1Char(' ')));
        }
    }
    return out.join(QLatin1Char('\n'));
}

TEST(Grid, SaveAndLoadRestoreContentsAndFormatIntoAFreshGrid) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("copy.grd"));
    const Grid source = formatted_grid();
    ASSERT_TRUE(source.SaveGrid(path));
    Grid target;
    ASSERT_TRUE(target.LoadGrid(path));
    EXPECT_EQ(target.error(), err::none);
    EXPECT_EQ(dump(target).toStdString(), dump(source).toStdString());
    EXPECT_EQ(target.Cell(CellSetting::Data, 1, 1).typeId(), QMetaType::Int);
    EXPECT_EQ(target.Cell(CellSetting::Data, 3, 2).toDouble(), 2.5);
}

TEST(Grid, LoadReplacesWhatTheTargetHeldBefore) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("small.grd"));
    Grid small(1, 1);
    small.setTextMatrix(0, 0, QStringLiteral("only"));
    ASSERT_TRUE(small.SaveGrid(path));
    Grid target = formatted_grid();
    ASSERT_TRUE(target.LoadGrid(path));
    EXPECT_EQ(dump(target).toStdString(), dump(small).toStdString());
}

TEST(Grid, SavingContentsOnlyLeavesTheTargetsFormat) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("texts.grd"));
    ASSERT_TRUE(formatted_grid().SaveGrid(path, GridSave::Contents));
    Grid target(1, 1);
    target.setCell(CellSetting::BackColor, 0, 0, rgb(1, 2, 3));
    ASSERT_TRUE(target.LoadGrid(path));
    EXPECT_EQ(target.Rows(), 4);
    EXPECT_EQ(target.TextMatrix(1, 1), QStringLiteral("Dentist"));
    EXPECT_EQ(target.Cell(CellSetting::Data, 1, 1).toInt(), 7);
    EXPECT_EQ(target.Cell(CellSetting::BackColor, 0, 0).toUInt(), rgb(1, 2, 3));
    EXPECT_EQ(target.cell_has(CellSetting::BackColor, 1, 1), false);
    EXPECT_EQ(target.ColWidth(1), Grid::default_col_width);
}

TEST(Grid, LoadingAMissingFileSetsNotFoundAndKeepsTheGrid) {
    QTemporaryDir dir;
    Grid g = formatted_grid();
    const QString before = dump(g);
    g.clear_error();
    EXPECT_EQ(g.LoadGrid(dir.filePath(QStringLiteral("absent.grd"))), false);
    EXPECT_EQ(g.error(), err::not_found);
    EXPECT_EQ(dump(g).toStdString(), before.toStdString());
}

TEST(Grid, LoadingADamagedFileSetsBadFileAndKeepsTheGrid) {
    QTemporaryDir dir;
    const QString good = dir.filePath(QStringLiteral("good.grd"));
    ASSERT_TRUE(formatted_grid().SaveGrid(good));
    QFile f(good);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray whole = f.readAll();

    const std::vector<std::pair<const char*, QByteArray>> damaged = {
        {"cut short", whole.left(whole.size() / 2)},
        {"not json", QByteArrayLiteral("rows=3\ncols=2\n")},
        {"empty", QByteArray()},
        {"another format",
         QByteArrayLiteral(R"({"format":"x","version":1,"rows":1,"cols":1,"cells":[]})")},
        {"future version",
         QByteArrayLiteral(
             R"({"format":"orvacal-grid","version":99,"rows":1,"cols":1,"cells":[]})")},
        {"cell outside",
         QByteArrayLiteral(
             R"({"format":"orvacal-grid","version":1,"rows":1,"cols":1,"cells":[{"r":4,"c":0,"text":"x"}]})")},
        {"negative size",
         QByteArrayLiteral(
             R"({"format":"orvacal-grid","version":1,"rows":-2,"cols":1,"cells":[]})")},
    };
    for (const auto& [name, bytes] : damaged) {
        const QString path = dir.filePath(QString::fromLatin1(name) + QStringLiteral(".grd"));
        write_file(path, bytes);
        Grid g(2, 2);
        g.setTextMatrix(1, 1, QStringLiteral("kept"));
        const QString before = dump(g);
        g.clear_error();
        EXPECT_EQ(g.LoadGrid(path), false) << name;
        EXPECT_EQ(g.error(), err::bad_file) << name;
        EXPECT_EQ(dump(g).toStdString(), before.toStdString()) << name;
    }
}

TEST(Grid, SavingWhereNoFileCanBeWrittenSetsAnError) {
    QTemporaryDir dir;
    Grid g(1, 1);
    g.clear_error();
    EXPECT_EQ(g.SaveGrid(dir.filePath(QStringLiteral("no/such/folder/x.grd"))), false);
    EXPECT_NE(g.error(), err::none);
}

TEST(Grid, ReadsAFileOfTheFirstVersion) {
    Grid g;
    ASSERT_TRUE(g.LoadGrid(QStringLiteral(ORVACAL_TEST_DATA "/grid/version1.grd")));
    EXPECT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.Cols(), 2);
    EXPECT_EQ(g.FixedCols(), 1);
    EXPECT_EQ(g.TextMatrix(1, 0), QStringLiteral(" 12:00 am"));
    EXPECT_EQ(g.TextMatrix(1, 1), QStringLiteral("Dentist"));
    EXPECT_EQ(g.Cell(CellSetting::Data, 1, 1).toInt(), 4);
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 1, 1).toUInt(), rgb(255, 255, 192));
    EXPECT_EQ(g.border(1, 1), (CellBorderSpec{rgb(0, 0, 125), 1, 1, 1, 1}));
    EXPECT_EQ(g.RowHeight(0), 800);
    EXPECT_EQ(g.ColHidden(1), false);
    EXPECT_EQ(g.MergeCol(1), true);
    EXPECT_EQ(g.MergeCells(), MergeMode::Free);
}

} // namespace
} // namespace orva
