#include "grid/grid.h"
#include "support/grid_text.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using orva::testing::column_text;
using orva::testing::row_text;

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

// --- check-box columns ----------------------------------------------------------

TEST(Grid, ColumnsHoldTextUntilOneIsMadeBoolean) {
    Grid g(2, 3);
    EXPECT_EQ(g.ColDataType(0), ColType::Text);
    g.setColDataType(1, ColType::Boolean);
    EXPECT_EQ(g.ColDataType(1), ColType::Boolean);
    g.setCols(5);
    EXPECT_EQ(g.ColDataType(1), ColType::Boolean);
    EXPECT_EQ(g.ColDataType(4), ColType::Text);
    g.setColDataType(7, ColType::Boolean);
    EXPECT_EQ(g.error(), err::subscript);
    g.clear_error();
    g.setColDataType(0, ColType(9));
    EXPECT_EQ(g.error(), err::bad_value);
    EXPECT_EQ(g.ColDataType(0), ColType::Text);
}

TEST(Grid, ABooleanCellShowsItsBoxFromItsText) {
    Grid g(7, 2);
    g.setColDataType(0, ColType::Boolean);
    const QString texts[] = {"", " ", "   ", "0", "-1", "1", "x"};
    const CheckBox boxes[] = {CheckBox::None,      CheckBox::None,    CheckBox::None,
                              CheckBox::Unchecked, CheckBox::Checked, CheckBox::Checked,
                              CheckBox::Checked};
    for (int r = 0; r < 7; ++r) {
        g.setTextMatrix(r, 0, texts[r]);
        g.setTextMatrix(r, 1, texts[r]);
    }
    for (int r = 0; r < 7; ++r) {
        EXPECT_EQ(g.CellChecked(r, 0), boxes[r]) << "text \"" << texts[r].toStdString() << '"';
        EXPECT_EQ(g.CellChecked(r, 1), CheckBox::None) << "a text column, row " << r;
    }
}

TEST(Grid, ATickIsMinusOneAndAnEmptyBoxZero) {
    Grid g(1, 1);
    g.setColDataType(0, ColType::Boolean);
    g.setCellChecked(0, 0, CheckBox::Checked);
    EXPECT_EQ(g.TextMatrix(0, 0), "-1");
    g.setCellChecked(0, 0, CheckBox::Unchecked);
    EXPECT_EQ(g.TextMatrix(0, 0), "0");
    g.setCellChecked(0, 0, CheckBox::None);
    EXPECT_EQ(g.TextMatrix(0, 0), "");
    g.setCellChecked(3, 0, CheckBox::Checked);
    EXPECT_EQ(g.error(), err::subscript);
}

// --- the selection as clip text ----------------------------------------------------

Grid lettered(int rows, int cols) {
    Grid g(rows, cols);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c)
            g.setTextMatrix(r, c, QString(QChar(u'a' + r)) + QString::number(c));
    return g;
}

TEST(Grid, ClipIsTheSelectionWithTabsBetweenCellsAndNewlinesBetweenRows) {
    Grid g = lettered(4, 4);
    g.Select(2, 3, 1, 1); // chosen from its bottom-right corner
    EXPECT_EQ(g.Clip(), "b1\tb2\tb3\nc1\tc2\tc3");
    g.Select(3, 0);
    EXPECT_EQ(g.Clip(), "d0");
    g.setTextMatrix(3, 0, QString());
    EXPECT_EQ(g.Clip(), "");
    EXPECT_EQ(Grid().Clip(), "");
}

TEST(Grid, SetClipIsHeldToASelectedRange) {
    Grid g(4, 4);
    g.Select(1, 1, 2, 2);
    g.setClip(QStringLiteral("p\tq\tr\ns\tt\tu\nv\tw"));
    EXPECT_EQ(row_text(g, 0), "|||");
    EXPECT_EQ(row_text(g, 1), "|p|q|");
    EXPECT_EQ(row_text(g, 2), "|s|t|");
    EXPECT_EQ(row_text(g, 3), "|||");
}

TEST(Grid, SetClipFromOneCellRunsAsFarAsTheTextReaches) {
    Grid g(3, 3);
    g.Select(1, 1);
    g.setClip(QStringLiteral("p\tq\tr\ns\nv\tw"));
    EXPECT_EQ(row_text(g, 0), "||");
    EXPECT_EQ(row_text(g, 1), "|p|q");
    EXPECT_EQ(row_text(g, 2), "|s|");
    EXPECT_EQ(g.error(), err::none);
}

TEST(Grid, SetClipTakesAnyLineEndAndPassesOverTheLastOne) {
    Grid g(4, 2);
    g.Select(0, 0);
    g.setClip(QStringLiteral("a\r\nb\rc\n"));
    EXPECT_EQ(column_text(g, 0), "a|b|c|");
    g.Select(3, 1);
    g.setClip(QString());
    EXPECT_EQ(g.TextMatrix(3, 1), "");
}

TEST(Grid, ClipAndSetClipRoundTrip) {
    Grid g = lettered(3, 3);
    g.Select(0, 0, 1, 2);
    const QString clip = g.Clip();
    Grid h(3, 3);
    h.Select(1, 0);
    h.setClip(clip);
    EXPECT_EQ(row_text(h, 1), row_text(g, 0));
    EXPECT_EQ(row_text(h, 2), row_text(g, 1));
}

// --- least row height ---------------------------------------------------------------

TEST(Grid, TheLeastRowHeightRaisesLowerRowsOnly) {
    Grid g(3, 1);
    g.setRowHeight(1, 200);
    g.setRowHeight(2, 900);
    g.setRowHeightMin(350);
    EXPECT_EQ(g.RowHeight(0), 350);
    EXPECT_EQ(g.RowHeight(1), 350);
    EXPECT_EQ(g.RowHeight(2), 900);
    EXPECT_EQ(g.RowPos(2), 700);
    g.setRowHeightMin(0);
    EXPECT_EQ(g.RowHeight(1), 200);
    g.setRowHeightMin(-5);
    EXPECT_EQ(g.error(), err::bad_value);
    EXPECT_EQ(g.RowHeightMin(), 0);
}

} // namespace
} // namespace orva
