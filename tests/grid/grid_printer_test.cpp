#include "grid/ui/grid_printer.h"
#include "support/pdf_text.h"

#include <QByteArray>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orva {
namespace {

// Pages of a PDF as Qt writes it: one "/Type /Page" object each, besides the
// one "/Type /Pages" tree.
int pages_of(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return -1;
    const QByteArray pdf = f.readAll();
    return int(pdf.count("/Type /Page")) - int(pdf.count("/Type /Pages"));
}

Grid list_of(int rows) {
    Grid g(rows + 1, 3);
    g.setFixedRows(1);
    g.setFormatString(QStringLiteral("Description|^Date|^Notes"));
    for (int c = 0; c < 3; ++c)
        g.setColWidth(c, 3000);
    for (int r = 1; r <= rows; ++r) {
        g.setTextMatrix(r, 0, QStringLiteral("Entry %1").arg(r));
        g.setTextMatrix(r, 1, QStringLiteral("3/%1/26").arg(r % 28 + 1));
        g.setTextMatrix(r, 2, QStringLiteral("Notes of entry %1").arg(r));
    }
    return g;
}

struct GridPrinter : ::testing::Test {
    QTemporaryDir dir;
    PrintSetup to(const QString& name) {
        PrintSetup s;
        s.output_file = dir.filePath(name);
        return s;
    }
};

TEST_F(GridPrinter, AShortListIsOnePage) {
    const PrintSetup s = to(QStringLiteral("short.pdf"));
    ASSERT_TRUE(PrintGrid(list_of(5), s, QStringLiteral("Five entries"), 720, 720));
    EXPECT_EQ(pages_of(s.output_file), 1);
}

TEST_F(GridPrinter, ALongListRunsOnOverMorePages) {
    const PrintSetup s = to(QStringLiteral("long.pdf"));
    ASSERT_TRUE(PrintGrid(list_of(300), s, QStringLiteral("Three hundred"), 720, 720));
    EXPECT_GT(pages_of(s.output_file), 3);
}

TEST_F(GridPrinter, HiddenRowsTakeNoRoom) {
    Grid g = list_of(300);
    for (int r = 11; r <= 300; ++r)
        g.setRowHidden(r, true);
    const PrintSetup s = to(QStringLiteral("hidden.pdf"));
    ASSERT_TRUE(PrintGrid(g, s, {}, 720, 720));
    EXPECT_EQ(pages_of(s.output_file), 1);
}

TEST_F(GridPrinter, LandscapePagesAreShorterSoALongListNeedsMoreOfThem) {
    PrintSetup portrait = to(QStringLiteral("portrait.pdf"));
    PrintSetup landscape = to(QStringLiteral("landscape.pdf"));
    landscape.orientation = 2;
    ASSERT_TRUE(PrintGrid(list_of(300), portrait, {}, 720, 720));
    ASSERT_TRUE(PrintGrid(list_of(300), landscape, {}, 720, 720));
    EXPECT_GT(pages_of(landscape.output_file), pages_of(portrait.output_file));
}

TEST_F(GridPrinter, AFileThatCannotBeWrittenFails) {
    const PrintSetup s = to(QStringLiteral("missing/folder/out.pdf"));
    EXPECT_FALSE(PrintGrid(list_of(5), s, {}, 720, 720));
    EXPECT_FALSE(QFile::exists(s.output_file));
}

TEST_F(GridPrinter, TheGridIsLeftAsItWas) {
    const Grid g = list_of(40);
    const QByteArray before = g.save_bytes();
    ASSERT_TRUE(PrintGrid(g, to(QStringLiteral("same.pdf")), QStringLiteral("t"), 720, 720));
    EXPECT_EQ(g.save_bytes(), before);
}

TEST_F(GridPrinter, AMergedBlockIsPrintedOnceAcrossItsRows) {
    Grid g = list_of(6);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(0, true);
    for (int r = 2; r <= 5; ++r)
        g.setTextMatrix(r, 0, QStringLiteral("Long meeting"));
    const PrintSetup s = to(QStringLiteral("merged.pdf"));
    ASSERT_TRUE(PrintGrid(g, s, {}, 720, 720));
    EXPECT_EQ(testing::pdf_text(s.output_file).count(QStringLiteral("Long meeting")), 1);
}

TEST_F(GridPrinter, HiddenColumnsAreNotPrinted) {
    Grid g = list_of(3);
    g.setTextMatrix(1, 2, QStringLiteral("Secret"));
    g.setColHidden(2, true);
    const PrintSetup s = to(QStringLiteral("hidden_col.pdf"));
    ASSERT_TRUE(PrintGrid(g, s, {}, 720, 720));
    const QString text = testing::pdf_text(s.output_file);
    EXPECT_TRUE(text.contains(QStringLiteral("Entry 1")));
    EXPECT_FALSE(text.contains(QStringLiteral("Secret")));
}

TEST_F(GridPrinter, TheNameStandsAtTheFootOfEveryPageWithItsNumberAndTheHeadingsOnTop) {
    const PrintSetup s = to(QStringLiteral("footed.pdf"));
    ASSERT_TRUE(PrintGrid(list_of(300), s, QStringLiteral("Printed list"), 720, 720));
    const int pages = testing::pdf_pages(s.output_file);
    ASSERT_GT(pages, 1);
    const QString text = testing::pdf_text(s.output_file);
    EXPECT_EQ(text.count(QStringLiteral("Printed list")), pages);
    EXPECT_EQ(text.count(QStringLiteral("Description")), pages);
    // pdftotext closes up the blanks around the page number's slash.
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("1 ?/ ?%1").arg(pages))));
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("%1 ?/ ?%1").arg(pages))));
}

TEST_F(GridPrinter, ThePaperIsTheSetupsAndLetterWhenItNamesNone) {
    const PrintSetup letter = to(QStringLiteral("letter.pdf"));
    ASSERT_TRUE(PrintGrid(list_of(3), letter, {}, 720, 720));
    EXPECT_EQ(testing::pdf_page_size(letter.output_file), QStringLiteral("612 x 792"));
    PrintSetup a4 = to(QStringLiteral("a4.pdf"));
    a4.page_width = 11906;
    a4.page_height = 16838;
    ASSERT_TRUE(PrintGrid(list_of(3), a4, {}, 720, 720));
    EXPECT_TRUE(testing::pdf_page_size(a4.output_file).startsWith(QStringLiteral("595")));
}

TEST_F(GridPrinter, AGridWiderThanThePageIsScaledToItsWidth) {
    Grid g = list_of(3);
    for (int c = 0; c < 3; ++c)
        g.setColWidth(c, 9000);
    g.setTextMatrix(1, 2, QStringLiteral("Far right"));
    const PrintSetup s = to(QStringLiteral("wide.pdf"));
    ASSERT_TRUE(PrintGrid(g, s, {}, 720, 720));
    EXPECT_TRUE(testing::pdf_text(s.output_file).contains(QStringLiteral("Far right")));
    EXPECT_EQ(testing::pdf_pages(s.output_file), 1);
}

TEST_F(GridPrinter, CellPicturesAreAskedForAndTheirTextStillPrints) {
    Grid g = list_of(2);
    g.setCell(CellSetting::Picture, 1, 0, QStringLiteral("Car"));
    g.setCell(CellSetting::PictureAlignment, 1, 0, int(Align::LeftCenter));
    QStringList asked;
    const PictureProvider pictures = [&](const QString& key, int px) {
        asked << key;
        QPixmap pm(px, px);
        pm.fill(Qt::red);
        return pm;
    };
    const PrintSetup s = to(QStringLiteral("pictures.pdf"));
    ASSERT_TRUE(PrintGrid(g, s, {}, 720, 720, pictures));
    EXPECT_EQ(asked, QStringList{QStringLiteral("Car")});
    EXPECT_TRUE(testing::pdf_text(s.output_file).contains(QStringLiteral("Entry 1")));
}

} // namespace
} // namespace orva
