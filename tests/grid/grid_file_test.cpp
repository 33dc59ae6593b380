#include "grid/grid.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace orva {
namespace {

void write_file(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
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
        out << QStringLiteral("col %1 width %2 hidden %3 merge %4 align %5 type %6")
                   .arg(c)
                   .arg(g.ColWidth(c))
                   .arg(g.ColHidden(c))
                   .arg(g.MergeCol(c))
                   .arg(int(g.ColAlignment(c)))
                   .arg(int(g.ColDataType(c)));
    out << QStringLiteral("row height min %1").arg(g.RowHeightMin());
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
        {"millions of rows of no columns",
         QByteArrayLiteral(
             R"({"format":"orvacal-grid","version":1,"rows":14444444,"cols":0,"cells":[]})")},
        {"a million cells and more",
         QByteArrayLiteral(
             R"({"format":"orvacal-grid","version":1,"rows":1000,"cols":1000,"cells":[]})")},
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

TEST(Grid, RowOfTheTallestHeightAFileCanHoldLoadsAndPlacesTheRowsBelowItAtTheEnd) {
    // What the fuzzer found: a file asks for a row of 2147483647 twips, and
    // the position of the rows below it was summed past the range of an int.
    Grid saved(6, 2);
    saved.setRowHeight(2, std::numeric_limits<int>::max());
    Grid g;
    ASSERT_TRUE(g.load_bytes(saved.save_bytes()));
    EXPECT_EQ(g.RowHeight(2), std::numeric_limits<int>::max());
    EXPECT_EQ(g.RowPos(2), 2 * Grid::default_row_height);
    EXPECT_EQ(g.RowPos(5), std::numeric_limits<int>::max());
    EXPECT_EQ(g.save_bytes(), saved.save_bytes());
}

TEST(Grid, CellFontSizeOfAnySignFromAFileSizesItsColumnAsNoText) {
    Grid saved(1, 1);
    saved.setTextMatrix(0, 0, QStringLiteral("abc"));
    saved.setCell(CellSetting::FontSize, 0, 0, 7.25);
    QByteArray bytes = saved.save_bytes();
    ASSERT_TRUE(bytes.contains("7.25"));
    bytes.replace("7.25", "-1e308");
    Grid g;
    ASSERT_TRUE(g.load_bytes(bytes));
    g.AutoSize(0);
    EXPECT_EQ(g.ColWidth(0), 120);
}

TEST(Grid, FileOfAsManyRowsAndColumnsAsAGridMayHoldLoads) {
    // A million entries in all: cells, then a row and a column each.
    Grid g;
    ASSERT_TRUE(g.load_bytes(QByteArrayLiteral(
        R"({"format":"orvacal-grid","version":1,"rows":998,"cols":998,"cells":[]})")));
    EXPECT_EQ(g.Rows(), 998);
    ASSERT_TRUE(g.load_bytes(QByteArrayLiteral(
        R"({"format":"orvacal-grid","version":1,"rows":999999,"cols":0,"cells":[]})")));
    EXPECT_EQ(g.Rows(), 999999);
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

// --- check-box columns and least row height in the file ------------------------

TEST(Grid, ACheckBoxColumnAndTheLeastRowHeightSurviveASave) {
    Grid source(3, 3);
    source.setColDataType(0, ColType::Boolean);
    source.setTextMatrix(0, 0, Grid::check_false);
    source.setTextMatrix(1, 0, Grid::check_true);
    source.setRowHeightMin(350);
    source.setRowHeight(2, 600);
    Grid target;
    ASSERT_TRUE(target.load_bytes(source.save_bytes()));
    EXPECT_EQ(dump(target).toStdString(), dump(source).toStdString());
    EXPECT_EQ(target.ColDataType(0), ColType::Boolean);
    EXPECT_EQ(target.ColDataType(1), ColType::Text);
    EXPECT_EQ(target.CellChecked(0, 0), CheckBox::Unchecked);
    EXPECT_EQ(target.CellChecked(1, 0), CheckBox::Checked);
    EXPECT_EQ(target.CellChecked(2, 0), CheckBox::None);
    EXPECT_EQ(target.RowHeightMin(), 350);
    EXPECT_EQ(target.RowHeight(0), 350);
    EXPECT_EQ(target.RowHeight(2), 600);
}

// Grids that use neither keep the bytes they always had, so a member saved
// again by a newer program is not written again.
TEST(Grid, AGridWithoutCheckBoxesOrLeastHeightWritesNeitherKey) {
    Grid g = formatted_grid();
    const QByteArray bytes = g.save_bytes();
    EXPECT_FALSE(bytes.contains("col_type"));
    EXPECT_FALSE(bytes.contains("row_height_min"));
    g.setColDataType(1, ColType::Boolean);
    g.setRowHeightMin(300);
    EXPECT_TRUE(g.save_bytes().contains("col_type"));
    EXPECT_TRUE(g.save_bytes().contains("row_height_min"));
}

TEST(Grid, AFileWithoutTheNewKeysLoadsWithTextColumnsAndNoLeastHeight) {
    Grid g(2, 2);
    g.setColDataType(0, ColType::Boolean);
    g.setRowHeightMin(500);
    ASSERT_TRUE(g.LoadGrid(QStringLiteral(ORVACAL_TEST_DATA "/grid/version1.grd")));
    EXPECT_EQ(g.ColDataType(0), ColType::Text);
    EXPECT_EQ(g.ColDataType(1), ColType::Text);
    EXPECT_EQ(g.RowHeightMin(), 0);
    EXPECT_EQ(g.RowHeight(1), 270);
}

TEST(Grid, AColumnTypeThisVersionDoesNotKnowLoadsAsText) {
    Grid g;
    ASSERT_TRUE(g.load_bytes(QByteArrayLiteral(
        R"({"format":"orvacal-grid","version":1,"rows":1,"cols":3,"col_type":[1,7,-2],)"
        R"("row_height_min":-40,"cells":[{"r":0,"c":0,"text":"0"}]})")));
    EXPECT_EQ(g.ColDataType(0), ColType::Boolean);
    EXPECT_EQ(g.ColDataType(1), ColType::Text);
    EXPECT_EQ(g.ColDataType(2), ColType::Text);
    EXPECT_EQ(g.RowHeightMin(), 0);
    EXPECT_EQ(g.CellChecked(0, 0), CheckBox::Unchecked);
}

} // namespace
} // namespace orva
