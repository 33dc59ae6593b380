#include "grid/ui/grid_widget.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

QColor pixel(GridWidget& w, const QPoint& p) {
    const QImage img = w.grab().toImage();
    return img.pixelColor(p);
}

// Where a point of the widget lies in the viewport that takes the mouse.
QPoint in_viewport(GridWidget& w, const QPoint& widget_pos) {
    return w.viewport()->mapFrom(&w, widget_pos);
}

class GridWidgetTest : public ::testing::Test {
  protected:
    void SetUp() override {
        grid.setRows(8);
        grid.setCols(5);
        w.resize(600, 400);
        w.setGrid(&grid);
        w.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    }

    // Fixed first row and column, so grid and view indexes differ by one.
    void with_headings() {
        grid.setFixedRows(1);
        grid.setFixedCols(1);
        for (int c = 1; c < grid.Cols(); ++c)
            grid.setTextMatrix(0, c, QStringLiteral("Head %1").arg(c));
        for (int r = 1; r < grid.Rows(); ++r)
            grid.setTextMatrix(r, 0, QStringLiteral("Row %1").arg(r));
        grid.setColWidth(0, 900);
        w.refresh();
    }

    Grid grid;
    GridWidget w;
};

TEST_F(GridWidgetTest, ShowsTheGridItWasGiven) {
    EXPECT_EQ(w.grid(), &grid);
    EXPECT_EQ(w.model()->rowCount(), 8);
    EXPECT_EQ(w.model()->columnCount(), 5);
}

TEST_F(GridWidgetTest, PaintsACellInItsBackColourWithRedInTheLowByte) {
    grid.setCell(CellSetting::BackColor, 2, 1, rgb(200, 40, 10));
    w.refresh();
    const QRect r = w.cell_rect(2, 1);
    ASSERT_FALSE(r.isEmpty());
    EXPECT_EQ(pixel(w, r.center()), QColor(200, 40, 10));
    EXPECT_EQ(pixel(w, w.cell_rect(3, 1).center()), QColor(255, 255, 255));
}

TEST_F(GridWidgetTest, DrawsGridLinesInTheGridColour) {
    grid.setGridColor(rgb(0, 160, 0));
    w.refresh();
    const QRect r = w.cell_rect(1, 1);
    EXPECT_EQ(pixel(w, QPoint(r.right(), r.center().y())), QColor(0, 160, 0));
    EXPECT_EQ(pixel(w, QPoint(r.center().x(), r.bottom())), QColor(0, 160, 0));
}

TEST_F(GridWidgetTest, DrawsTheTextInTheForeColour) {
    grid.setTextMatrix(1, 1, QStringLiteral("WWWWWW"));
    grid.setCell(CellSetting::ForeColor, 1, 1, rgb(0, 0, 255));
    grid.setCell(CellSetting::FontBold, 1, 1, true);
    w.refresh();
    const QImage img = w.grab().toImage();
    const QRect r = w.cell_rect(1, 1);
    int blue = 0;
    for (int x = r.left(); x < r.right(); ++x)
        for (int y = r.top(); y < r.bottom(); ++y)
            if (img.pixelColor(x, y).blue() > 150 && img.pixelColor(x, y).red() < 100) ++blue;
    EXPECT_GT(blue, 10);
}

TEST_F(GridWidgetTest, HiddenRowsAndColumnsTakeNoSpace) {
    grid.setRowHidden(2, true);
    grid.setColHidden(1, true);
    w.refresh();
    EXPECT_EQ(w.cell_rect(2, 0), QRect());
    EXPECT_EQ(w.cell_rect(3, 0).top(), w.cell_rect(1, 0).bottom() + 1);
    EXPECT_EQ(w.cell_rect(0, 2).left(), w.cell_rect(0, 0).right() + 1);
}

TEST_F(GridWidgetTest, TwipsBecomePixelsAtTheLogicalDpi) {
    grid.setColWidth(1, 1440);
    grid.setRowHeight(1, 720);
    grid.setColWidth(2, 100);
    w.refresh();
    EXPECT_EQ(w.columnWidth(1), w.logicalDpiX());
    EXPECT_EQ(w.rowHeight(1), qRound(720.0 * w.logicalDpiY() / 1440.0));
    EXPECT_EQ(w.columnWidth(2), qRound(100.0 * w.logicalDpiX() / 1440.0));
    EXPECT_EQ(w.twips_to_px(2880), 2 * w.logicalDpiX());
}

TEST_F(GridWidgetTest, EqualVerticalTextsBecomeOneSpan) {
    grid.setMergeCells(MergeMode::Free);
    grid.setMergeCol(2, true);
    for (int r = 1; r <= 3; ++r)
        grid.setTextMatrix(r, 2, QStringLiteral("Dentist"));
    grid.setTextMatrix(4, 2, QStringLiteral(" Dentist"));
    w.refresh();
    EXPECT_EQ(w.rowSpan(1, 2), 3);
    EXPECT_EQ(w.rowSpan(4, 2), 1);
    EXPECT_EQ(w.columnSpan(1, 2), 1);
}

TEST_F(GridWidgetTest, SpansFollowTheGridWhenItChanges) {
    grid.setMergeCells(MergeMode::Free);
    grid.setMergeCol(2, true);
    grid.setTextMatrix(1, 2, QStringLiteral("x"));
    grid.setTextMatrix(2, 2, QStringLiteral("x"));
    w.refresh();
    EXPECT_EQ(w.rowSpan(1, 2), 2);
    grid.setTextMatrix(2, 2, QStringLiteral("y"));
    w.refresh();
    EXPECT_EQ(w.rowSpan(1, 2), 1);
}

TEST_F(GridWidgetTest, AMergedBlockUnderAFixedColumnCoversItsRows) {
    with_headings();
    grid.setMergeCells(MergeMode::Free);
    grid.setMergeCol(2, true);
    for (int r = 2; r <= 4; ++r)
        grid.setTextMatrix(r, 2, QStringLiteral("Lunch"));
    w.refresh();
    EXPECT_EQ(w.rowSpan(1, 1), 3); // view row 1, column 1 is grid cell (2, 2)
    const QRect block = w.visualRect(w.model()->index(1, 1));
    EXPECT_EQ(block.height(), w.rowHeight(1) + w.rowHeight(2) + w.rowHeight(3));
}

TEST_F(GridWidgetTest, DrawsAPictureFromTheProviderLeftCentre) {
    w.set_picture_provider([](const QString& key, int) {
        if (key != QLatin1String("red")) return QPixmap();
        QPixmap pm(12, 12);
        pm.fill(Qt::red);
        return pm;
    });
    grid.setRowHeight(1, 600);
    grid.setColWidth(1, 2000);
    grid.setCell(CellSetting::Picture, 1, 1, QStringLiteral("red"));
    grid.setCell(CellSetting::PictureAlignment, 1, 1, int(Align::LeftCenter));
    grid.setCell(CellSetting::Picture, 1, 2, QStringLiteral("unknown"));
    w.refresh();
    const QRect r = w.cell_rect(1, 1);
    EXPECT_EQ(pixel(w, QPoint(r.left() + 8, r.center().y())), QColor(Qt::red));
    EXPECT_EQ(pixel(w, QPoint(r.right() - 8, r.center().y())), QColor(Qt::white));
    EXPECT_EQ(pixel(w, QPoint(r.left() + 8, r.top() + 3)), QColor(Qt::white));
    const QRect unknown = w.cell_rect(1, 2);
    EXPECT_EQ(pixel(w, QPoint(unknown.left() + 8, unknown.center().y())), QColor(Qt::white));
}

// A provider that answers every key with a red square of the size asked for.
QPixmap red_square(const QString&, int px) {
    QPixmap pm(px, px);
    pm.fill(Qt::red);
    return pm;
}

// The red pixels' bounding box inside a part of the widget.
QRect red_box(GridWidget& w, const QRect& part) {
    const QImage img = w.grab().toImage();
    QRect box;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            if (img.pixelColor(x, y) == QColor(Qt::red)) box |= QRect(x, y, 1, 1);
    return box;
}

TEST_F(GridWidgetTest, APictureIsAsTallAsItsRow) {
    w.set_picture_provider(red_square);
    grid.setRowHeight(1, 360); // 24 pixels
    grid.setColWidth(1, 3000);
    grid.setTextMatrix(1, 1, QStringLiteral("Dentist"));
    grid.setCell(CellSetting::Picture, 1, 1, QStringLiteral("Dentist"));
    grid.setCell(CellSetting::PictureAlignment, 1, 1, int(Align::LeftCenter));
    w.refresh();
    const QRect cell = w.cell_rect(1, 1);
    ASSERT_EQ(cell.height(), 24);
    // All of the row but the line the cell keeps at its bottom.
    EXPECT_EQ(red_box(w, cell), QRect(cell.left() + 2, cell.top(), 23, 23));
}

TEST_F(GridWidgetTest, ARowMadeVeryTallKeepsItsPictureToTwoLinesOfText) {
    w.set_picture_provider(red_square);
    grid.setRowHeight(1, 1500); // 100 pixels
    grid.setColWidth(1, 3000);
    grid.setTextMatrix(1, 1, QStringLiteral("Birthday"));
    grid.setCell(CellSetting::Picture, 1, 1, QStringLiteral("Birthday"));
    grid.setCell(CellSetting::PictureAlignment, 1, 1, int(Align::LeftCenter));
    w.refresh();
    const QRect cell = w.cell_rect(1, 1);
    const QFont font = w.model()->data(w.model()->index(1, 1), Qt::FontRole).value<QFont>();
    const int lines = 2 * QFontMetrics(font, &w).height();
    ASSERT_LT(lines, 99);
    const QRect box = red_box(w, cell);
    EXPECT_EQ(box.height(), lines);
    EXPECT_NEAR(box.center().y(), cell.center().y(), 1);
}

TEST_F(GridWidgetTest, APictureInAMergedBlockIsOneRowHighAndCentredOnTheBlock) {
    w.set_picture_provider(red_square);
    grid.setMergeCells(MergeMode::Free);
    grid.setMergeCol(1, true);
    grid.setColWidth(1, 3000);
    for (int r = 2; r <= 4; ++r) {
        grid.setRowHeight(r, 360); // 24 pixels
        grid.setTextMatrix(r, 1, QStringLiteral("Hike"));
        grid.setCell(CellSetting::Picture, r, 1, QStringLiteral("Backpack"));
        grid.setCell(CellSetting::PictureAlignment, r, 1, int(Align::LeftCenter));
    }
    w.refresh();
    const QRect block = w.visualRect(w.model()->index(2, 1)).translated(w.viewport()->pos());
    const QRect box = red_box(w, block);
    ASSERT_EQ(w.rowHeight(2), 24);
    EXPECT_EQ(box.height(), 23);
    EXPECT_NEAR(box.center().y(), block.center().y(), 1);
}

TEST_F(GridWidgetTest, ACentredPictureKeepsClearOfTheTextItSharesTheCellWith) {
    w.set_picture_provider(red_square);
    grid.setRowHeight(1, 420);
    grid.setColWidth(1, 660); // a navigator's day: 44 x 28 pixels
    grid.setTextMatrix(1, 1, QStringLiteral(" 23"));
    grid.setCell(CellSetting::Alignment, 1, 1, int(Align::RightTop));
    grid.setCell(CellSetting::Picture, 1, 1, QStringLiteral("Birthday"));
    grid.setCell(CellSetting::PictureAlignment, 1, 1, int(Align::CenterCenter));
    w.refresh();
    const QRect cell = w.cell_rect(1, 1);
    const QFontMetrics fm(w.model()->data(w.model()->index(1, 1), Qt::FontRole).value<QFont>());
    const int digits = fm.horizontalAdvance(QStringLiteral("23"));
    const QRect number(cell.right() - 3 - digits, cell.top() + 1, digits, fm.height());
    const QRect box = red_box(w, cell);
    ASSERT_FALSE(box.isEmpty());
    EXPECT_FALSE(box.intersects(number));
    EXPECT_GE(box.height(), 16); // beside the number, not squeezed under it
}

TEST_F(GridWidgetTest, ALongTextIsCutAtItsEndSoItsStartShowsBesideThePicture) {
    w.set_picture_provider(red_square);
    grid.setColWidth(1, 1500); // 100 pixels
    grid.setRowHeight(1, 300);
    // Its start and its end are ink, its middle blank: centred and cut at
    // both sides it would show nothing at all.
    grid.setTextMatrix(1, 1, QStringLiteral("W") + QString(90, u' ') + QStringLiteral("W"));
    grid.setCell(CellSetting::Alignment, 1, 1, int(Align::CenterCenter));
    grid.setCell(CellSetting::Picture, 1, 1, QStringLiteral("Computer"));
    grid.setCell(CellSetting::PictureAlignment, 1, 1, int(Align::LeftCenter));
    w.refresh();
    const QRect cell = w.cell_rect(1, 1);
    const QRect picture = red_box(w, cell);
    ASSERT_FALSE(picture.isEmpty());
    const QImage img = w.grab().toImage();
    int ink_on_picture = 0, ink_beside = 0;
    for (int y = cell.top() + 1; y < cell.bottom(); ++y) {
        for (int x = cell.left() + 1; x < cell.right(); ++x) {
            const QColor px = img.pixelColor(x, y);
            const bool ink = px.lightness() < 100;
            if (ink && picture.contains(x, y)) ++ink_on_picture;
            if (ink && x > picture.right() + 2 && x < picture.right() + 12) ++ink_beside;
        }
    }
    EXPECT_EQ(ink_on_picture, 0);
    EXPECT_GT(ink_beside, 0); // the start is read right after the picture
}

TEST_F(GridWidgetTest, WithoutAProviderACellHasNoPicture) {
    grid.setCell(CellSetting::Picture, 1, 1, QStringLiteral("red"));
    w.refresh();
    const QRect r = w.cell_rect(1, 1);
    EXPECT_EQ(pixel(w, QPoint(r.left() + 6, r.center().y())), QColor(Qt::white));
}

TEST_F(GridWidgetTest, DrawsTheCellBorderInItsColour) {
    grid.setRowHeight(2, 600);
    grid.Select(2, 1, 2, 1);
    grid.CellBorder(rgb(0, 0, 125), 2, 2, 2, 2, 0, 0);
    grid.Select(0, 0);
    w.refresh();
    const QRect r = w.cell_rect(2, 1);
    EXPECT_EQ(pixel(w, QPoint(r.left(), r.center().y())), QColor(0, 0, 125));
    EXPECT_EQ(pixel(w, QPoint(r.center().x(), r.top() + 1)), QColor(0, 0, 125));
    EXPECT_EQ(pixel(w, QPoint(r.right() - 1, r.center().y())), QColor(0, 0, 125));
    EXPECT_EQ(pixel(w, r.center()), QColor(Qt::white));
}

TEST_F(GridWidgetTest, FixedRowAndColumnStayAsHeadersInTheFixedColour) {
    grid.setBackColorFixed(rgb(10, 100, 200));
    with_headings();
    EXPECT_EQ(w.horizontalHeader()->isVisible(), true);
    EXPECT_EQ(w.verticalHeader()->isVisible(), true);
    EXPECT_EQ(w.verticalHeader()->width(), w.twips_to_px(900));
    EXPECT_EQ(w.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Head 2"));
    EXPECT_EQ(w.model()->headerData(2, Qt::Vertical).toString(), QStringLiteral("Row 3"));
    const QRect head = w.cell_rect(0, 3);
    EXPECT_EQ(pixel(w, QPoint(head.left() + 2, head.top() + 2)), QColor(10, 100, 200));
    const QRect label = w.cell_rect(5, 0);
    EXPECT_EQ(pixel(w, QPoint(label.right() - 2, label.top() + 2)), QColor(10, 100, 200));
}

TEST_F(GridWidgetTest, CellWhereBothHeadersMeetShowsItsTextInTheFixedColour) {
    grid.setBackColorFixed(rgb(10, 100, 200));
    grid.setTextMatrix(0, 0, QStringLiteral("Time"));
    with_headings();
    auto* corner = w.findChild<QLabel*>(QStringLiteral("corner"));
    ASSERT_NE(corner, nullptr);
    EXPECT_TRUE(corner->isVisible());
    EXPECT_EQ(corner->text(), QStringLiteral("Time"));
    EXPECT_EQ(corner->accessibleName(), QStringLiteral("Time"));
    EXPECT_EQ(corner->width(), w.verticalHeader()->width());
    EXPECT_EQ(pixel(w, corner->geometry().topLeft() + QPoint(1, 1)), QColor(10, 100, 200));

    grid.setFixedRows(0);
    w.refresh();
    EXPECT_FALSE(corner->isVisible());
}

TEST_F(GridWidgetTest, TheFixedColumnStaysWhenTheGridScrollsSideways) {
    with_headings();
    grid.setCols(30);
    w.refresh();
    const QRect before = w.cell_rect(3, 0);
    w.horizontalScrollBar()->setValue(w.horizontalScrollBar()->maximum());
    EXPECT_EQ(w.cell_rect(3, 0), before);
    EXPECT_GT(grid.LeftCol(), 1);
}

TEST_F(GridWidgetTest, TopRowScrollsTheView) {
    grid.setRows(49);
    grid.setTopRow(15);
    QCoreApplication::processEvents();
    EXPECT_EQ(w.rowAt(0), 15);
    EXPECT_EQ(grid.TopRow(), 15);
}

TEST_F(GridWidgetTest, ShowCellBringsTheCellIntoView) {
    grid.setRows(200);
    w.refresh();
    grid.ShowCell(150, 2);
    QCoreApplication::processEvents();
    const QRect r = w.cell_rect(150, 2);
    EXPECT_EQ(w.viewport()->geometry().contains(r.center()), true);
}

TEST_F(GridWidgetTest, ARebuildLeavesTheViewWhereItWasScrolled) {
    grid.setRows(100);
    grid.Select(0, 0);
    grid.setTopRow(40);
    QCoreApplication::processEvents();
    ASSERT_EQ(w.rowAt(0), 40);
    grid.setTextMatrix(0, 1, QStringLiteral("a change far above"));
    grid.setCell(CellSetting::BackColor, 1, 1, rgb(1, 2, 3));
    QCoreApplication::processEvents();
    EXPECT_EQ(w.rowAt(0), 40);
    EXPECT_EQ(grid.TopRow(), 40);
}

TEST_F(GridWidgetTest, ChangesReachTheViewOncePerEventLoopTurn) {
    QSignalSpy resets(w.model(), &QAbstractItemModel::modelReset);
    for (int r = 0; r < 8; ++r)
        grid.setTextMatrix(r, 0, QStringLiteral("x"));
    grid.AddItem(QStringLiteral("new"));
    EXPECT_EQ(resets.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(w.model()->rowCount(), 9);
}

TEST_F(GridWidgetTest, RedrawOffHoldsTheViewUntilItComesBackOn) {
    QSignalSpy resets(w.model(), &QAbstractItemModel::modelReset);
    grid.setRedraw(0);
    EXPECT_EQ(w.updatesEnabled(), false);
    for (int i = 0; i < 5; ++i)
        grid.AddItem(QStringLiteral("bulk"));
    QCoreApplication::processEvents();
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(w.model()->rowCount(), 8);
    grid.setRedraw(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(w.updatesEnabled(), true);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(w.model()->rowCount(), 13);
}

TEST_F(GridWidgetTest, ClickGivesTheGridRowAndColumn) {
    with_headings();
    QSignalSpy clicks(&w, &GridWidget::cellClicked);
    QSignalSpy downs(&w, &GridWidget::mouseDown);
    QSignalSpy ups(&w, &GridWidget::mouseUp);
    QTest::mouseClick(w.viewport(), Qt::LeftButton, Qt::NoModifier,
                      in_viewport(w, w.cell_rect(3, 2).center()));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks.at(0).at(0).toInt(), 3);
    EXPECT_EQ(clicks.at(0).at(1).toInt(), 2);
    ASSERT_EQ(downs.count(), 1);
    EXPECT_EQ(downs.at(0).at(0).toInt(), 3);
    EXPECT_EQ(downs.at(0).at(2).value<Qt::MouseButton>(), Qt::LeftButton);
    EXPECT_EQ(ups.count(), 1);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 2);
    EXPECT_EQ(grid.MouseRow(), 3);
    EXPECT_EQ(grid.MouseCol(), 2);
}

TEST_F(GridWidgetTest, ClickInAMergedBlockGivesTheRowUnderThePointerAndPutsTheCursorThere) {
    grid.setMergeCells(MergeMode::Free);
    grid.setMergeCol(2, true);
    for (int r = 2; r <= 5; ++r)
        grid.setTextMatrix(r, 2, QStringLiteral("Lunch"));
    w.refresh();
    ASSERT_EQ(w.rowSpan(2, 2), 4);
    QSignalSpy clicks(&w, &GridWidget::cellClicked);
    QSignalSpy downs(&w, &GridWidget::mouseDown);
    const QRect block = w.cell_rect(2, 2);
    // The middle of the block's fourth row, grid row 5.
    const QPoint at(block.center().x(), block.top() + 3 * w.rowHeight(2) + w.rowHeight(5) / 2);
    QTest::mouseClick(w.viewport(), Qt::LeftButton, Qt::NoModifier, in_viewport(w, at));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks.at(0).at(0).toInt(), 5);
    EXPECT_EQ(clicks.at(0).at(1).toInt(), 2);
    EXPECT_EQ(downs.at(0).at(0).toInt(), 5);
    EXPECT_EQ(grid.Row(), 5);
    EXPECT_EQ(grid.Col(), 2);
    EXPECT_EQ(w.cell_at(at).row, 5);
    w.refresh();
    EXPECT_EQ(grid.Row(), 5); // the view's own cursor does not pull it back
}

TEST_F(GridWidgetTest, ClickOnAFixedColumnGivesColumnZero) {
    with_headings();
    QSignalSpy clicks(&w, &GridWidget::cellClicked);
    const QRect label = w.cell_rect(4, 0);
    QTest::mouseClick(w.verticalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      w.verticalHeader()->viewport()->mapFrom(&w, label.center()));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks.at(0).at(0).toInt(), 4);
    EXPECT_EQ(clicks.at(0).at(1).toInt(), 0);
}

TEST_F(GridWidgetTest, DoubleClickGivesTheGridRowAndColumn) {
    with_headings();
    QSignalSpy doubles(&w, &GridWidget::cellDoubleClicked);
    QTest::mouseDClick(w.viewport(), Qt::LeftButton, Qt::NoModifier,
                       in_viewport(w, w.cell_rect(5, 3).center()));
    ASSERT_EQ(doubles.count(), 1);
    EXPECT_EQ(doubles.at(0).at(0).toInt(), 5);
    EXPECT_EQ(doubles.at(0).at(1).toInt(), 3);
}

TEST_F(GridWidgetTest, RightButtonReportsTheCellAndLeavesTheCursor) {
    with_headings();
    grid.Select(1, 1);
    w.refresh();
    QSignalSpy rights(&w, &GridWidget::rightClicked);
    QSignalSpy downs(&w, &GridWidget::mouseDown);
    QTest::mousePress(w.viewport(), Qt::RightButton, Qt::ShiftModifier,
                      in_viewport(w, w.cell_rect(4, 2).center()));
    ASSERT_EQ(rights.count(), 1);
    EXPECT_EQ(rights.at(0).at(0).toInt(), 4);
    EXPECT_EQ(rights.at(0).at(1).toInt(), 2);
    ASSERT_EQ(downs.count(), 1);
    EXPECT_EQ(downs.at(0).at(2).value<Qt::MouseButton>(), Qt::RightButton);
    EXPECT_EQ(downs.at(0).at(3).value<Qt::KeyboardModifiers>(), Qt::ShiftModifier);
    EXPECT_EQ(grid.Row(), 1);
    QTest::mouseRelease(w.viewport(), Qt::RightButton, Qt::ShiftModifier,
                        in_viewport(w, w.cell_rect(4, 2).center()));
}

TEST_F(GridWidgetTest, MouseMoveKeepsMouseRowAndColUpToDate) {
    with_headings();
    const QPoint at = in_viewport(w, w.cell_rect(6, 3).center());
    QMouseEvent move(QEvent::MouseMove, at, w.viewport()->mapToGlobal(at), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QSignalSpy moves(&w, &GridWidget::mouseMoved);
    QApplication::sendEvent(w.viewport(), &move);
    EXPECT_EQ(grid.MouseRow(), 6);
    EXPECT_EQ(grid.MouseCol(), 3);
    ASSERT_EQ(moves.count(), 1);
    EXPECT_EQ(moves.at(0).at(0).toInt(), 6);
}

TEST_F(GridWidgetTest, KeyDownGivesTheCursorCellAndCanBeSwallowed) {
    with_headings();
    grid.Select(2, 2);
    w.refresh();
    w.setFocus();
    int seen_row = -1, seen_col = -1, seen_key = 0;
    bool swallow_next = true;
    QObject::connect(&w, &GridWidget::keyDown, &w,
                     [&](int row, int col, int key, Qt::KeyboardModifiers, bool* swallow) {
                         seen_row = row;
                         seen_col = col;
                         seen_key = key;
                         *swallow = swallow_next;
                     });
    QTest::keyClick(&w, Qt::Key_Down);
    EXPECT_EQ(seen_key, int(Qt::Key_Down));
    EXPECT_EQ(seen_row, 2);
    EXPECT_EQ(seen_col, 2);
    EXPECT_EQ(grid.Row(), 2);
    swallow_next = false;
    QTest::keyClick(&w, Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 3);
}

TEST_F(GridWidgetTest, TypingEditsTheCellAndCommitEmitsAfterEdit) {
    grid.setEditable(true);
    grid.Select(2, 3);
    w.refresh();
    w.setFocus();
    QSignalSpy before(&w, &GridWidget::beforeEdit);
    QSignalSpy after(&w, &GridWidget::afterEdit);
    QSignalSpy edit_keys(&w, &GridWidget::keyDownEdit);
    QTest::keyClick(&w, Qt::Key_D);
    ASSERT_EQ(before.count(), 1);
    EXPECT_EQ(before.at(0).at(0).toInt(), 2);
    EXPECT_EQ(before.at(0).at(1).toInt(), 3);
    auto* editor = w.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("entist"));
    QTest::keyClick(editor, Qt::Key_Tab);
    ASSERT_EQ(after.count(), 1);
    EXPECT_EQ(after.at(0).at(0).toInt(), 2);
    EXPECT_EQ(after.at(0).at(1).toInt(), 3);
    EXPECT_EQ(after.at(0).at(2).toString().toLower(), QStringLiteral("dentist"));
    EXPECT_EQ(grid.TextMatrix(2, 3).toLower(), QStringLiteral("dentist"));
    ASSERT_GE(edit_keys.count(), 1);
    EXPECT_EQ(edit_keys.last().at(2).toInt(), int(Qt::Key_Tab));
}

TEST_F(GridWidgetTest, AnOpenEditorSurvivesAChangeElsewhereInTheGrid) {
    grid.setEditable(true);
    grid.Select(2, 3);
    w.refresh();
    w.setFocus();
    QSignalSpy after(&w, &GridWidget::afterEdit);
    QTest::keyClick(&w, Qt::Key_D);
    auto* editor = w.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    // A tick repaints a row while the user types.
    grid.setCell(CellSetting::BackColor, 6, 1, rgb(253, 225, 228));
    QApplication::processEvents();
    ASSERT_TRUE(w.is_editing());
    QTest::keyClicks(editor, QStringLiteral("ay"));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    ASSERT_EQ(after.count(), 1);
    EXPECT_EQ(grid.TextMatrix(2, 3).toLower(), QStringLiteral("day"));
}

TEST_F(GridWidgetTest, ARefreshBeforeTheQueuedSyncLeavesTheEditorOpen) {
    grid.setEditable(true);
    grid.Select(4, 2); // queues a sync
    w.refresh();       // and applies it at once
    w.setFocus();
    QTest::keyClick(&w, Qt::Key_X);
    ASSERT_TRUE(w.is_editing());
    QApplication::processEvents(); // the queued sync has nothing left to do
    EXPECT_TRUE(w.is_editing());
}

TEST_F(GridWidgetTest, ACancelledBeforeEditPreventsEditing) {
    grid.setEditable(true);
    grid.setTextMatrix(5, 1, QStringLiteral("keep"));
    grid.Select(5, 1);
    w.refresh();
    w.setFocus();
    QObject::connect(&w, &GridWidget::beforeEdit, &w,
                     [](int, int, bool* cancel) { *cancel = true; });
    QSignalSpy after(&w, &GridWidget::afterEdit);
    QTest::keyClick(&w, Qt::Key_K);
    EXPECT_EQ(w.findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(w.is_editing(), false);
    EXPECT_EQ(after.count(), 0);
    EXPECT_EQ(grid.TextMatrix(5, 1), QStringLiteral("keep"));
    EXPECT_EQ(grid.Row(), 5);
}

TEST_F(GridWidgetTest, AReadOnlyGridNeverStartsAnEdit) {
    grid.Select(1, 1);
    w.refresh();
    w.setFocus();
    QSignalSpy before(&w, &GridWidget::beforeEdit);
    QTest::keyClick(&w, Qt::Key_A);
    EXPECT_EQ(before.count(), 0);
    EXPECT_EQ(w.findChild<QLineEdit*>(), nullptr);
}

TEST_F(GridWidgetTest, AccessibilitySeesATableOfTheGridsTexts) {
    with_headings();
    grid.setTextMatrix(3, 2, QStringLiteral("Dentist"));
    w.refresh();
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&w);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->role(), QAccessible::Table);
    QAccessibleTableInterface* t = table->tableInterface();
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->rowCount(), grid.Rows() - 1);
    EXPECT_EQ(t->columnCount(), grid.Cols() - 1);
    QAccessibleInterface* cell = t->cellAt(2, 1);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Name), grid.TextMatrix(3, 2));
    QAccessibleTableCellInterface* ci = cell->tableCellInterface();
    ASSERT_NE(ci, nullptr);
    const QList<QAccessibleInterface*> heads = ci->columnHeaderCells();
    ASSERT_EQ(heads.size(), 1);
    EXPECT_EQ(heads.at(0)->text(QAccessible::Name), grid.TextMatrix(0, 2));
    const QList<QAccessibleInterface*> labels = ci->rowHeaderCells();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.at(0)->text(QAccessible::Name), grid.TextMatrix(3, 0));
    // Qt hands header cells out without keeping them in its cache, so the
    // asker owns them, as a screen reader's bridge would.
    for (QAccessibleInterface* h : heads + labels)
        if (QAccessible::uniqueId(h) == 0)
            QAccessible::deleteAccessibleInterface(QAccessible::registerAccessibleInterface(h));
}

TEST_F(GridWidgetTest, AutoSizeMeasuresWithTheScreensFonts) {
    grid.setTextMatrix(1, 0, QStringLiteral(" 12:00 am"));
    grid.AutoSize(0);
    const QFontMetrics fm(w.gridModel()->cell_data(1, 0, Qt::FontRole).value<QFont>(), &w);
    const int expected =
        qRound(fm.horizontalAdvance(QStringLiteral(" 12:00 am")) * 1440.0 / w.logicalDpiX()) + 120;
    EXPECT_EQ(grid.ColWidth(0), expected);
}

TEST_F(GridWidgetTest, ShowsAnotherGridWhenGivenOne) {
    Grid other(2, 2);
    other.setTextMatrix(1, 1, QStringLiteral("other"));
    w.setGrid(&other);
    EXPECT_EQ(w.model()->rowCount(), 2);
    EXPECT_EQ(w.model()->index(1, 1).data().toString(), QStringLiteral("other"));
    QSignalSpy resets(w.model(), &QAbstractItemModel::modelReset);
    grid.setTextMatrix(0, 0, QStringLiteral("no longer shown"));
    QCoreApplication::processEvents();
    EXPECT_EQ(resets.count(), 0);
    w.setGrid(nullptr);
    EXPECT_EQ(w.model()->rowCount(), 0);
}

TEST_F(GridWidgetTest, PaintingLeavesNoErrorForTheLogic) {
    with_headings();
    grid.clear_error();
    w.grab();
    grid.setRows(2);
    w.grab(); // the view still has the old size until the queued refresh
    QCoreApplication::processEvents();
    w.grab();
    EXPECT_EQ(grid.error(), err::none);
}

// --- check boxes -------------------------------------------------------------

class GridCheckBoxTest : public GridWidgetTest {
  protected:
    void SetUp() override {
        GridWidgetTest::SetUp();
        grid.setColDataType(1, ColType::Boolean);
        grid.setEditable(true);
        grid.setTextMatrix(2, 1, Grid::check_false);
        grid.setTextMatrix(3, 1, Grid::check_true);
        grid.setTextMatrix(4, 1, QStringLiteral(" "));
        w.refresh();
    }
    void click(int row, int col) {
        QTest::mouseClick(w.viewport(), Qt::LeftButton, Qt::NoModifier,
                          in_viewport(w, w.cell_rect(row, col).center()));
    }
};

TEST_F(GridCheckBoxTest, AScreenReaderHearsACheckableCellAndWhetherItIsTicked) {
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&w);
    ASSERT_NE(table, nullptr);
    QAccessibleTableInterface* t = table->tableInterface();
    ASSERT_NE(t, nullptr);
    QAccessibleInterface* empty_box = t->cellAt(2, 1);
    QAccessibleInterface* ticked = t->cellAt(3, 1);
    QAccessibleInterface* no_box = t->cellAt(4, 1);
    ASSERT_TRUE(empty_box && ticked && no_box);
    EXPECT_TRUE(empty_box->state().checkable);
    EXPECT_FALSE(empty_box->state().checked);
    EXPECT_TRUE(ticked->state().checkable);
    EXPECT_TRUE(ticked->state().checked);
    EXPECT_FALSE(no_box->state().checkable);
    // The box is what the cell says, not its "0" or "-1".
    EXPECT_EQ(ticked->text(QAccessible::Name), QString());
}

TEST_F(GridCheckBoxTest, TheBoxIsDrawnAndChangesWithItsTick) {
    const QRect r = w.cell_rect(2, 1);
    const QRect no_box = w.cell_rect(4, 1);
    const QImage img = w.grab().toImage();
    const QImage box = img.copy(r.adjusted(1, 1, -2, -2));
    const QImage blank = img.copy(no_box.adjusted(1, 1, -2, -2));
    EXPECT_NE(box, blank);
    const QImage tick = img.copy(w.cell_rect(3, 1).adjusted(1, 1, -2, -2));
    EXPECT_NE(box, tick);
    // No text "0" beside it: the same box, whatever the text of a tick.
    grid.setTextMatrix(3, 1, QStringLiteral("1"));
    w.refresh();
    EXPECT_EQ(w.grab().toImage().copy(w.cell_rect(3, 1).adjusted(1, 1, -2, -2)), tick);
}

TEST_F(GridCheckBoxTest, AClickTicksTheBoxBetweenBeforeEditAndAfterEdit) {
    QSignalSpy before(&w, &GridWidget::beforeEdit);
    QSignalSpy after(&w, &GridWidget::afterEdit);
    bool ticked_before_edit = true;
    QObject::connect(&w, &GridWidget::beforeEdit, &w, [&](int row, int col, bool*) {
        ticked_before_edit = grid.CellChecked(row, col) == CheckBox::Checked;
    });
    click(2, 1);
    ASSERT_EQ(before.count(), 1);
    EXPECT_FALSE(ticked_before_edit);
    EXPECT_EQ(grid.TextMatrix(2, 1), "-1");
    ASSERT_EQ(after.count(), 1);
    EXPECT_EQ(after.at(0).at(0).toInt(), 2);
    EXPECT_EQ(after.at(0).at(1).toInt(), 1);
    EXPECT_EQ(after.at(0).at(2).toString(), "-1");
    click(2, 1);
    EXPECT_EQ(grid.TextMatrix(2, 1), "0");
    EXPECT_EQ(after.count(), 2);
}

TEST_F(GridCheckBoxTest, SpaceTicksTheBoxOfTheCurrentCell) {
    grid.Select(3, 1);
    w.refresh();
    w.setFocus();
    QSignalSpy after(&w, &GridWidget::afterEdit);
    QTest::keyClick(&w, Qt::Key_Space);
    EXPECT_EQ(grid.TextMatrix(3, 1), "0");
    EXPECT_EQ(after.count(), 1);
    EXPECT_EQ(w.findChild<QLineEdit*>(), nullptr);
}

TEST_F(GridCheckBoxTest, ACancelledBeforeEditLeavesTheBoxAsItWas) {
    QObject::connect(&w, &GridWidget::beforeEdit, &w,
                     [](int, int, bool* cancel) { *cancel = true; });
    QSignalSpy after(&w, &GridWidget::afterEdit);
    click(3, 1);
    EXPECT_EQ(grid.TextMatrix(3, 1), "-1");
    EXPECT_EQ(after.count(), 0);
}

TEST_F(GridCheckBoxTest, ACellWithoutABoxOrAGridNotEditableTakesNoTick) {
    QSignalSpy before(&w, &GridWidget::beforeEdit);
    click(4, 1);
    click(5, 1);
    EXPECT_EQ(grid.TextMatrix(4, 1), " ");
    EXPECT_EQ(grid.TextMatrix(5, 1), "");
    grid.setEditable(false);
    w.refresh();
    click(2, 1);
    EXPECT_EQ(grid.TextMatrix(2, 1), "0");
    EXPECT_EQ(before.count(), 0);
    EXPECT_FALSE(w.toggle_check(2, 1));
}

TEST_F(GridCheckBoxTest, ABooleanCellTakesNoTypedText) {
    grid.Select(2, 1);
    w.refresh();
    w.setFocus();
    QTest::keyClick(&w, Qt::Key_D);
    EXPECT_EQ(w.findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(grid.TextMatrix(2, 1), "0");
}

TEST_F(GridWidgetTest, CommitEditWritesWhatIsTypedAndClosesTheEditor) {
    grid.setEditable(true);
    grid.Select(2, 3);
    w.refresh();
    w.setFocus();
    QSignalSpy after(&w, &GridWidget::afterEdit);
    w.commit_edit(); // nothing open: nothing happens
    EXPECT_EQ(after.count(), 0);
    QTest::keyClick(&w, Qt::Key_M);
    auto* editor = w.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("ilk"));
    w.commit_edit();
    EXPECT_FALSE(w.is_editing());
    ASSERT_EQ(after.count(), 1);
    EXPECT_EQ(grid.TextMatrix(2, 3).toLower(), "milk");
}

} // namespace
} // namespace orva

namespace orva {
namespace {

// A planner grid is hidden with its drawing switched off (a view change
// turns redraw off first). The parent must still paint over the place it
// took, or the old cells stay on screen between the controls shown next.
TEST(GridWidgetHide, HidingAGridWithRedrawOffRepaintsThePlaceItTook) {
    QWidget page;
    page.resize(300, 200);
    page.setAutoFillBackground(true);
    QPalette p = page.palette();
    p.setColor(QPalette::Window, QColor(0, 0, 255));
    page.setPalette(p);
    Grid grid;
    grid.setRows(4);
    grid.setCols(2);
    GridWidget w(&page);
    w.setGrid(&grid);
    w.setGeometry(10, 10, 200, 150);
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    QApplication::processEvents();
    const auto at_grid = [&] {
        return page.screen()->grabWindow(page.winId()).toImage().pixelColor(100, 80);
    };
    ASSERT_NE(at_grid(), QColor(0, 0, 255));

    grid.setRedraw(0);
    w.refresh();
    w.hide();
    // The repaint is posted; a loaded machine may take a while to run it.
    for (int i = 0; i < 100 && at_grid() != QColor(0, 0, 255); ++i)
        QTest::qWait(20);
    EXPECT_EQ(at_grid(), QColor(0, 0, 255));
}

} // namespace
} // namespace orva
