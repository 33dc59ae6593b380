#include "grid/ui/grid_printer.h"

#include <QByteArray>
#include <QFile>
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
    ASSERT_TRUE(print_grid(list_of(5), s, QStringLiteral("Five entries"), 720));
    EXPECT_EQ(pages_of(s.output_file), 1);
}

TEST_F(GridPrinter, ALongListRunsOnOverMorePages) {
    const PrintSetup s = to(QStringLiteral("long.pdf"));
    ASSERT_TRUE(print_grid(list_of(300), s, QStringLiteral("Three hundred"), 720));
    EXPECT_GT(pages_of(s.output_file), 3);
}

TEST_F(GridPrinter, HiddenRowsTakeNoRoom) {
    Grid g = list_of(300);
    for (int r = 11; r <= 300; ++r)
        g.setRowHidden(r, true);
    const PrintSetup s = to(QStringLiteral("hidden.pdf"));
    ASSERT_TRUE(print_grid(g, s, {}, 720));
    EXPECT_EQ(pages_of(s.output_file), 1);
}

TEST_F(GridPrinter, LandscapePagesAreShorterSoALongListNeedsMoreOfThem) {
    PrintSetup portrait = to(QStringLiteral("portrait.pdf"));
    PrintSetup landscape = to(QStringLiteral("landscape.pdf"));
    landscape.orientation = 2;
    ASSERT_TRUE(print_grid(list_of(300), portrait, {}, 720));
    ASSERT_TRUE(print_grid(list_of(300), landscape, {}, 720));
    EXPECT_GT(pages_of(landscape.output_file), pages_of(portrait.output_file));
}

TEST_F(GridPrinter, AFileThatCannotBeWrittenFails) {
    const PrintSetup s = to(QStringLiteral("missing/folder/out.pdf"));
    EXPECT_FALSE(print_grid(list_of(5), s, {}, 720));
    EXPECT_FALSE(QFile::exists(s.output_file));
}

TEST_F(GridPrinter, TheGridIsLeftAsItWas) {
    const Grid g = list_of(40);
    const QByteArray before = g.save_bytes();
    ASSERT_TRUE(print_grid(g, to(QStringLiteral("same.pdf")), QStringLiteral("t"), 720));
    EXPECT_EQ(g.save_bytes(), before);
}

} // namespace
} // namespace orva
