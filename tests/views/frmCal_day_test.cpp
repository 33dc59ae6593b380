#include "core/clock.h"
#include "grid/ui/grid_model.h"
#include "grid/ui/grid_widget.h"
#include "main_window_fixture.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"
#include "store/calendar_file.h"
#include "store/store_fixtures.h"
#include "support/accessible.h"
#include "support/scripted_modal.h"
#include "views/day_view.h"
#include "views/status.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orva {
namespace {

class DayPage : public testing::MainWindowTest {
  protected:
    QRect rect_of(QWidget* w) {
        return QRect(w->mapTo(run->window.get(), QPoint(0, 0)), w->size());
    }
};

QString data(AppState& s, int r, int c) {
    return s.vsSched.Cell(CellSetting::Data, r, c).toString();
}

TEST_F(DayPage, StartShowsTheDaysEntriesSideBySideWithTheFirstInThePane) {
    launch();
    AppState& st = s();
    EXPECT_TRUE(st.view_day);
    EXPECT_EQ(data(st, 0, 2), "3");  // untimed first
    EXPECT_EQ(data(st, 19, 2), "1"); // 09:00
    EXPECT_EQ(data(st, 20, 4), "2"); // 09:30 beside it
    EXPECT_EQ(data(st, 27, 2), "4"); // 13:00 .. 17:30
    EXPECT_EQ(data(st, 35, 2), "4");
    EXPECT_EQ(st.vsSched.Cell(CellSetting::Picture, 19, 2).toString(), "Dentist");
    EXPECT_EQ(st.vsSched.Cell(CellSetting::BackColor, 20, 6).toUInt(), st.now_color);
    auto* pane = find<QGroupBox>("Frame2");
    ASSERT_NE(pane, nullptr);
    EXPECT_TRUE(pane->isVisible());
    EXPECT_EQ(st.vsDtl.TextMatrix(0, 1).trimmed(), "Mum's birthday");
    EXPECT_EQ(find<QTextEdit>("rtNotes")->toPlainText().trimmed(), "Bring the insurance card");
    EXPECT_TRUE(find<QLabel>("Label1")->text().startsWith("  "));
    EXPECT_EQ(find<QComboBox>("Combo1")->currentText(), "November");
    EXPECT_EQ(find<QComboBox>("Combo2")->currentText(), "2026");
    EXPECT_EQ(find<QLabel>("nbrAppts")->text(), "4   Appointments");
    EXPECT_EQ(find<QLabel>("yrDay")->text(), "  Day   325");
}

TEST_F(DayPage, GridIsReadableAsATableByAssistiveTools) {
    launch();
    QAccessibleInterface* ai = QAccessible::queryAccessibleInterface(sched());
    ASSERT_NE(ai, nullptr);
    EXPECT_EQ(ai->role(), QAccessible::Table);
    EXPECT_EQ(ai->text(QAccessible::Name), "Day planner");
    EXPECT_EQ(ai->text(QAccessible::Description), "vsSched");
    QAccessibleTableInterface* table = ai->tableInterface();
    ASSERT_NE(table, nullptr);
    bool found = false;
    for (int r = 0; r < table->rowCount() && !found; ++r)
        for (int c = 0; c < table->columnCount() && !found; ++c)
            if (QAccessibleInterface* cell = table->cellAt(r, c))
                found = cell->text(QAccessible::Name).contains("Team meeting");
    EXPECT_TRUE(found);
}

TEST_F(DayPage, ScreenReaderHearsWhatTheWindowShowsAndToolsFindTheControlsByName) {
    launch();
    using testing::spoken_description;
    using testing::spoken_name;
    // Labels and status panels: their text, now and after it changes.
    auto* band = find<QLabel>("Label1");
    ASSERT_NE(band, nullptr);
    EXPECT_EQ(spoken_name(band), long_date_label(QDate(2026, 11, 21)));
    EXPECT_EQ(spoken_description(band), "Label1");
    const struct {
        const char* object;
        QString text;
    } panels[] = {
        {"nbrAppts", "4   Appointments"},
        {"cFile", s().cal_path},
        {"yrDay", "  Day   325"},
        {"daysLeft", "40 Days remain"},
    };
    for (const auto& p : panels) {
        auto* l = find<QLabel>(p.object);
        ASSERT_NE(l, nullptr) << p.object;
        EXPECT_EQ(l->parentWidget(), run->window->statusBar());
        EXPECT_EQ(spoken_name(l), p.text) << p.object;
        EXPECT_EQ(spoken_description(l), p.object);
    }
    EXPECT_EQ(spoken_name(find<QLabel>("lblNotes")), "Appointment Notes:");
    EXPECT_EQ(spoken_description(find<QLabel>("lblNotes")), "lblNotes");

    // Grids, pickers and boxes: what they are for.
    const struct {
        const char* object;
        const char* spoken;
    } named[] = {
        {"vsSched", "Day planner"},
        {"Cal", "Navigator calendar"},
        {"vsDtl", "Appointment details"},
        {"Combo1", "Month"},
        {"Combo2", "Year"},
        {"rtNotes", "Appointment notes"},
        {"Frame2", "Detail pane"},
        {"StatusBar1", "Status bar"},
        {"Frame3", "Tools"},
    };
    for (const auto& n : named) {
        QWidget* w = find<QWidget>(n.object);
        ASSERT_NE(w, nullptr) << n.object;
        EXPECT_EQ(spoken_name(w), n.spoken) << n.object;
        EXPECT_EQ(spoken_description(w), n.object);
    }
    // A list's name says what it is for; the item chosen is its value.
    QAccessibleInterface* month = QAccessible::queryAccessibleInterface(find<QComboBox>("Combo1"));
    ASSERT_NE(month, nullptr);
    EXPECT_EQ(month->role(), QAccessible::ComboBox);
    EXPECT_EQ(month->text(QAccessible::Value), "November");
    // A tab strip speaks its selected tab, whose caption is what shows.
    EXPECT_EQ(spoken_name(find<QTabBar>("TabStrip1")), "Appointment Details");
    // Buttons: the caption, or the tip of a picture alone.
    EXPECT_EQ(spoken_name(find<QToolButton>("imageDay")), "Day");
    EXPECT_EQ(spoken_name(find<QToolButton>("ImageArrow1")), "Next");
    EXPECT_EQ(spoken_name(find<QToolButton>("imgPriorMth")), "Prior Month");
    EXPECT_EQ(spoken_name(find<QToolButton>("imgDtlNext")), "Next appointment");
    EXPECT_EQ(spoken_description(find<QToolButton>("imgDtlNext")), "imgDtlNext");
    for (QWidget* w : run->window->findChildren<QWidget*>()) {
        if (w->objectName().isEmpty() || !w->isVisible()) continue;
        if (qobject_cast<QLabel*>(w) || qobject_cast<QAbstractButton*>(w) ||
            qobject_cast<GridWidget*>(w) || qobject_cast<QComboBox*>(w)) {
            EXPECT_NE(spoken_name(w), w->objectName()) << w->objectName().toStdString();
            if (w->objectName() == u"corner") continue; // a grid's own cell
            EXPECT_EQ(spoken_description(w), w->objectName()) << w->objectName().toStdString();
        }
    }

    // The caption of the pane speaks the entry shown, and the date band the
    // next day once the arrow is pressed.
    const QRect cell = sched()->cell_rect(20, 4);
    QTest::mouseClick(sched()->viewport(), Qt::LeftButton, {},
                      sched()->viewport()->mapFrom(sched(), cell.center()));
    auto* caption = find<QLabel>("lblDtlCaption");
    ASSERT_NE(caption, nullptr);
    EXPECT_TRUE(caption->text().endsWith("Team meeting"));
    EXPECT_EQ(spoken_name(caption), caption->text());
    EXPECT_EQ(spoken_description(caption), "lblDtlCaption");
    find<QToolButton>("ImageArrow1")->click();
    EXPECT_EQ(spoken_name(band), long_date_label(QDate(2026, 11, 22)));
    EXPECT_EQ(spoken_name(find<QLabel>("nbrAppts")), "0   Appointments");
}

TEST_F(DayPage, PageIsLaidOutWithoutOverlapAt1280x800And1920x1080) {
    for (QSize size : {QSize(1280, 800), QSize(1920, 1080)}) {
        launch(size);
        const QRect grid = rect_of(sched());
        const QRect nav = rect_of(find<QWidget>("Cal"));
        const QRect pane = rect_of(find<QGroupBox>("Frame2"));
        const QRect band = rect_of(find<QLabel>("Label1"));
        const QRect client = run->window->centralWidget()->geometry();
        EXPECT_FALSE(grid.intersects(nav)) << size.width();
        EXPECT_FALSE(grid.intersects(pane)) << size.width();
        EXPECT_FALSE(nav.intersects(pane)) << size.width();
        EXPECT_FALSE(band.intersects(grid)) << size.width();
        EXPECT_TRUE(client.contains(grid)) << size.width();
        EXPECT_TRUE(client.contains(pane)) << size.width();
        EXPECT_GT(grid.width(), size.width() / 2);
        EXPECT_EQ(grid.top() - client.top(), 72); // 1080 twips at 96 dpi
        run.reset();
    }
}

TEST_F(DayPage, PaneShowsItsCaptionWholeAboveThePicturesAndEveryRowOfTheFacts) {
    add("215", "09:45", "10:15", "Quarterly planning with the whole team and guests", "Computer");
    for (QSize size : {QSize(1280, 800), QSize(1920, 1080)}) {
        launch(size);
        if (!s().menus.mnuShowTimes) find<QAction>("mnuShowTimes")->trigger();
        sched()->refresh();
        ASSERT_EQ(data(s(), 20, 6), "5");
        const QRect cell = sched()->cell_rect(20, 6);
        ASSERT_FALSE(cell.isEmpty());
        QTest::mouseClick(sched()->viewport(), Qt::LeftButton, {},
                          sched()->viewport()->mapFrom(sched(), cell.center()));

        auto* pane = find<QGroupBox>("Frame2");
        auto* caption = find<QLabel>("lblDtlCaption");
        ASSERT_NE(caption, nullptr);
        EXPECT_EQ(caption->text(), "9:45 am   Quarterly planning with the whole team and guests");
        EXPECT_TRUE(caption->isVisible());
        EXPECT_EQ(caption->parentWidget(), pane);
        // Whole: the wrapped text needs no more height than the label has.
        EXPECT_LE(caption->heightForWidth(caption->width()), caption->height()) << size.width();
        const char* const parts[] = {"lblDtlCaption", "imgDtlAppt", "imgDtlNote", "imgDtlPrior",
                                     "imgDtlNext",    "vsDtl",      "lblNotes",   "rtNotes"};
        for (const char* a : parts) {
            QWidget* wa = find<QWidget>(a);
            ASSERT_NE(wa, nullptr) << a;
            EXPECT_TRUE(pane->contentsRect().contains(wa->geometry())) << a << size.width();
            for (const char* b : parts) {
                if (a == b) continue;
                EXPECT_FALSE(wa->geometry().intersects(find<QWidget>(b)->geometry()))
                    << a << " over " << b << " at " << size.width();
            }
        }

        auto* facts = find<GridWidget>("vsDtl");
        facts->refresh();
        EXPECT_FALSE(facts->verticalScrollBar()->isVisible()) << size.width();
        // The longest line is wider than the pane of a smaller window, which
        // scrolls sideways; a wide window's pane shows it whole.
        if (size.width() < 1600)
            EXPECT_GT(facts->horizontalScrollBar()->maximum(), 0) << size.width();
        else
            EXPECT_FALSE(facts->horizontalScrollBar()->isVisible()) << size.width();
        for (int r = 0; r < 6; ++r) {
            const QRect row = facts->cell_rect(r, 1);
            EXPECT_GE(row.top(), facts->viewport()->geometry().top()) << r << " " << size.width();
            EXPECT_LE(row.bottom(), facts->viewport()->geometry().bottom())
                << r << " " << size.width();
        }
        run.reset();
    }
}

TEST_F(DayPage, FollowsResizing) {
    launch(QSize(1280, 800));
    const int before = sched()->width();
    const int side_before = find<QWidget>("Cal")->width();
    run->window->resize(1600, 900);
    QApplication::processEvents();
    // A quarter of the window goes to the navigator and pane, the rest of the
    // growth to the day grid.
    EXPECT_EQ(find<QWidget>("Cal")->width() - side_before, 80);
    EXPECT_EQ(sched()->width() - before, 240);
    // The columns are sized against the width they can fill.
    EXPECT_NEAR(s().vsSched.Width(), sched()->columns_room() * 15, 15);
    EXPECT_LT(sched()->columns_room(), sched()->width());
}

TEST_F(DayPage, ThreeOverlappingEntriesFitWithoutAHorizontalScrollBar) {
    add("215", "09:45", "10:15", "Call the garage", "Car");
    for (QSize size : {QSize(1280, 800), QSize(1920, 1080)}) {
        launch(size);
        // 09:45 overlaps both the dentist and the meeting: three columns.
        ASSERT_EQ(data(s(), 20, 2), "1") << size.width();
        ASSERT_EQ(data(s(), 20, 4), "2") << size.width();
        ASSERT_EQ(data(s(), 20, 6), "5") << size.width();
        QScrollBar* bar = sched()->horizontalScrollBar();
        EXPECT_FALSE(bar->isVisible()) << size.width();
        EXPECT_EQ(bar->maximum(), 0) << size.width();
        // The spare column to type into shows whole beside the last block.
        const QRect spare = sched()->cell_rect(20, 8);
        ASSERT_FALSE(spare.isEmpty()) << size.width();
        EXPECT_LE(spare.right(), sched()->viewport()->geometry().right()) << size.width();
        run.reset();
    }
}

TEST_F(DayPage, AFourthOverlapKeepsTheWidthOfTheOthersAndScrollsSideways) {
    add("215", "09:45", "10:15", "Call the garage", "Car");
    add("216", "09:50", "10:20", "Coffee with Ann", "Coffee");
    launch();
    ASSERT_EQ(data(s(), 20, 8), "6");
    EXPECT_EQ(s().vsSched.ColWidth(8), s().vsSched.ColWidth(2));
    EXPECT_TRUE(sched()->horizontalScrollBar()->isVisible());
}

TEST_F(DayPage, StatusBarCheckHidesAndShowsTheBar) {
    launch();
    auto* check = find<QAction>("mnuStat");
    ASSERT_NE(check, nullptr);
    EXPECT_TRUE(check->isChecked());
    check->trigger();
    EXPECT_FALSE(run->window->statusBar()->isVisible());
    EXPECT_FALSE(check->isChecked());
    check->trigger();
    EXPECT_TRUE(run->window->statusBar()->isVisible());
}

TEST_F(DayPage, ClickingAnEntryShowsItInThePane) {
    launch();
    const QRect cell = sched()->cell_rect(20, 4);
    ASSERT_FALSE(cell.isEmpty());
    QTest::mouseClick(sched()->viewport(), Qt::LeftButton, {},
                      sched()->viewport()->mapFrom(sched(), cell.center()));
    EXPECT_EQ(s().vsDtl.TextMatrix(0, 1).trimmed(), "Team meeting");
    EXPECT_EQ(s().vsDtl.TextMatrix(1, 1), "09:30 am  -  11:00 am     [ 1 hour  30 minutes ]");
    EXPECT_TRUE(find<QToolButton>("imgDtlNote")->isEnabled());
}

TEST_F(DayPage, ClickInALongBlockMakesTheClickedRowCurrentAndNextGoesOnFromThere) {
    launch();
    // The hike, 01:00 to 05:30 pm, is one merged block over rows 27 to 35 of
    // column 2; row 33 is 04:00 pm.
    ASSERT_EQ(data(s(), 27, 2), "4");
    ASSERT_EQ(data(s(), 35, 2), "4");
    s().vsSched.ShowCell(33, 2);
    sched()->refresh();
    const QRect cell = sched()->cell_rect(33, 2);
    ASSERT_FALSE(cell.isEmpty());
    ASSERT_GT(sched()->rowSpan(27, 1), 1); // drawn as one block
    QTest::mouseClick(sched()->viewport(), Qt::LeftButton, {},
                      sched()->viewport()->mapFrom(sched(), cell.center()));
    EXPECT_EQ(s().cur_row, 33);
    EXPECT_EQ(s().cur_col, 2);
    EXPECT_EQ(s().vsSched.Row(), 33);
    EXPECT_EQ(s().vsDtl.TextMatrix(0, 1).trimmed(), "Hike up the hill");
    EXPECT_EQ(find<QGroupBox>("Frame2")->isVisible(), true);

    QTest::mouseClick(find<QToolButton>("imgDtlNext"), Qt::LeftButton);
    EXPECT_EQ(s().cur_row, 34);
    EXPECT_EQ(s().cur_col, 2);
    EXPECT_EQ(s().vsSched.Row(), 34);
    EXPECT_EQ(s().vsDtl.TextMatrix(0, 1).trimmed(), "Hike up the hill");
    EXPECT_TRUE(m.messages().empty());
}

// The bounding box of the pixels in `part` of a widget's picture that differ
// from `back`.
QRect drawn_on(QWidget* w, const QRect& part, const QColor& back) {
    const QImage img = w->grab().toImage();
    QRect box;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            if (img.pixelColor(x, y) != back) box |= QRect(x, y, 1, 1);
    return box;
}

TEST_F(DayPage, AStickerInTheDayGridIsAsTallAsARow) {
    launch();
    // The dentist's block, 09:00 to 10:00, two rows in column 2.
    const QRect block = sched()->cell_rect(19, 2).united(sched()->cell_rect(20, 2));
    const int row = sched()->cell_rect(19, 2).height();
    ASSERT_GE(row, 17);
    // The picture stands at the left, inside the block's box.
    const QRect left(block.left() + 2, block.top() + 2, row + 2, block.height() - 4);
    const QRect picture = drawn_on(sched(), left, qt_color(s().appt_back_color));
    ASSERT_FALSE(picture.isEmpty());
    EXPECT_GE(picture.height(), row - 3);
    EXPECT_LE(picture.height(), row);
}

TEST_F(DayPage, TheNavigatorsMarkSitsBesideTheDayNumberNotOnIt) {
    launch();
    // Saturday the 21st, with the day's stickers, is in row 3 of the month.
    auto* cal = find<GridWidget>("Cal");
    ASSERT_EQ(s().Cal.TextMatrix(3, 6), " 21");
    ASSERT_FALSE(s().Cal.Cell(CellSetting::Picture, 3, 6).toString().isEmpty());
    const QRect cell = cal->cell_rect(3, 6);
    const QFont font = cal->model()->data(cal->model()->index(2, 6), Qt::FontRole).value<QFont>();
    const QFontMetrics fm(font, cal);
    const int digits = fm.horizontalAdvance(QStringLiteral("21"));
    const QRect number(cell.right() - 3 - digits, cell.top() + 1, digits, fm.height());
    // Coloured pixels are the mark's: the number and the lines are grey.
    const QImage img = cal->grab().toImage();
    QRect mark;
    for (int y = cell.top(); y < cell.bottom(); ++y)
        for (int x = cell.left(); x < cell.right(); ++x) {
            const QColor c = img.pixelColor(x, y);
            if (c.hsvSaturation() > 80 && c.value() > 60) mark |= QRect(x, y, 1, 1);
        }
    ASSERT_FALSE(mark.isEmpty());
    EXPECT_FALSE(mark.intersects(number));
    EXPECT_GE(mark.height(), 14);
}

TEST_F(DayPage, NextDayArrowMovesTheWholePage) {
    launch();
    find<QToolButton>("ImageArrow1")->click();
    EXPECT_EQ(s().cur_date, QDate(2026, 11, 22));
    EXPECT_EQ(data(s(), 19, 2), "");
    EXPECT_EQ(find<QLabel>("nbrAppts")->text(), "0   Appointments");
}

TEST_F(DayPage, TypingIntoAFreeCellMakesAnEntryThatARestartShows) {
    launch();
    m.forms["frmQuick"] = [&] { s().appt_row(s().appt_count)->appt_end = "15:00"; };
    // Row 29 is 02:00 pm; column 4 is free there.
    s().vsSched.Select(29, 4);
    sched()->refresh();
    sched()->setFocus();
    QTest::keyClick(sched(), 'C');
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, "all Bob");
    EXPECT_EQ(line->text(), "Call Bob");
    QTest::keyClick(line, Qt::Key_Return);
    QApplication::processEvents();

    ASSERT_NE(m.last(u"form"), nullptr);
    EXPECT_EQ(m.last(u"form")->text, "frmQuick");
    QByteArray member;
    EXPECT_EQ(s().archive.get(s().cal_path, "c2611.cal", member), 0);
    EXPECT_EQ(member.size(), 5 * 477);
    EXPECT_TRUE(member.contains("1121202611212026"
                                "14:0015:00"));

    run->window->close();
    run.reset();
    launch();
    bool shown = false;
    for (int c = 2; c < 20; c += 2)
        shown = shown || s().vsSched.TextMatrix(29, c).endsWith("Call Bob");
    EXPECT_TRUE(shown);
}

TEST_F(DayPage, StickerDroppedOnADayShowsThereOnThePickColour) {
    launch();
    auto* cal = find<GridWidget>("Cal");
    const QRect cell = cal->cell_rect(2, 3); // Tuesday the 10th
    ASSERT_FALSE(cell.isEmpty());
    QMimeData mime;
    mime.setText("Pumpkin");
    const QPoint at = cal->viewport()->mapFrom(cal, cell.center());
    QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(cal->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(at), Qt::CopyAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(cal->viewport(), &drop);
    EXPECT_EQ(s().Cal.Cell(CellSetting::Picture, 2, 3).toString(), "Pumpkin");
    EXPECT_EQ(s().Cal.Cell(CellSetting::BackColor, 2, 3).toUInt(), 8454143u);
}

TEST_F(DayPage, TypingOnASpacerLandsInTheColumnBesideIt) {
    launch();
    s().vsSched.Select(40, 1);
    sched()->refresh();
    sched()->setFocus();
    QTest::keyClick(sched(), Qt::Key_W);
    QApplication::processEvents();
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), "w");
    EXPECT_EQ(s().vsSched.Col(), 2);
}

TEST_F(DayPage, EditMenuHoldsAddCopyEditAndDeleteWithTheirKeys) {
    launch();
    const struct {
        const char* name;
        const char* caption;
        QKeySequence keys;
    } entries[] = {
        {"mnuadd", "Add appointment", QKeySequence(Qt::CTRL | Qt::Key_A)},
        {"mnuCopy", "Copy appointment", QKeySequence(Qt::CTRL | Qt::Key_C)},
        {"mnuEditA", "Edit Appointment", QKeySequence(Qt::CTRL | Qt::Key_E)},
        {"mnudelete", "Delete Appointment", QKeySequence(Qt::CTRL | Qt::Key_D)},
    };
    for (const auto& e : entries) {
        auto* a = find<QAction>(e.name);
        ASSERT_NE(a, nullptr) << e.name;
        EXPECT_EQ(a->text(), e.caption);
        EXPECT_EQ(a->shortcut(), e.keys);
    }
    auto* add = find<QToolButton>("imageReminder");
    auto* del = find<QToolButton>("imageClock");
    ASSERT_TRUE(add && del);
    EXPECT_EQ(add->text(), "Add");
    EXPECT_EQ(add->toolTip(), "Add an appointment");
    EXPECT_EQ(del->text(), "Delete");
    EXPECT_EQ(del->toolTip(), "Delete Appointment");
}

TEST_F(DayPage, AddToolOpensTheEditorOnTheSelectedRow) {
    launch();
    s().vsSched.Select(29, 4);
    sched()->refresh();
    QTest::mouseClick(find<QToolButton>("imageReminder"), Qt::LeftButton);
    ASSERT_NE(m.last(u"form"), nullptr);
    EXPECT_EQ(m.last(u"form")->text, "frmAppt1");
    EXPECT_TRUE(s().new_appt);
    EXPECT_EQ(s().edit_start, " 02:00 pm");
}

TEST_F(DayPage, DeleteToolRemovesTheSelectedEntryFromTheFileAndTheGrid) {
    launch();
    // 09:00 to 10:00, the Dentist, stands in column 2 from row 19.
    ASSERT_TRUE(s().vsSched.TextMatrix(19, 2).endsWith("Dentist"));
    s().vsSched.Select(19, 2);
    m.answers.push_back(Answer::Yes);
    QTest::mouseClick(find<QToolButton>("imageClock"), Qt::LeftButton);
    ASSERT_NE(m.last(u"question"), nullptr);
    EXPECT_EQ(m.last(u"question")->text, "Confirm delete of appointment: 'Dentist' ?");
    QByteArray member;
    EXPECT_EQ(s().archive.get(s().cal_path, "c2611.cal", member), 0);
    EXPECT_EQ(member.size(), 3 * 477);
    EXPECT_FALSE(member.contains("Dentist"));
    for (int c = 2; c < 20; ++c)
        EXPECT_FALSE(s().vsSched.TextMatrix(19, c).endsWith("Dentist"));
    EXPECT_EQ(s().status_panels[panel_count].text, "3   Appointments");
}

} // namespace
} // namespace orva

namespace orva {
namespace {

class ToolPictures : public testing::MainWindowTest {};

TEST_F(ToolPictures, FindTZoneAndTListOpenTheirFormsWithTheirCaptionsAndTips) {
    launch();
    struct Tool {
        const char* name;
        const char* caption;
        const char* tip;
        const char* form;
    };
    for (const Tool& t : {Tool{"imageFind", "Find", "Find appointments", "frmSearch"},
                          Tool{"imgTzone", "T- Zone", "Time Zones", "frmTzone"},
                          Tool{"imgTlist", "T- List", "To Do list", "frmToDo"}}) {
        auto* b = find<QToolButton>(t.name);
        ASSERT_NE(b, nullptr) << t.name;
        EXPECT_TRUE(b->isVisible()) << t.name;
        EXPECT_EQ(b->text(), t.caption);
        EXPECT_EQ(b->toolTip(), t.tip);
        QTest::mouseClick(b, Qt::LeftButton);
        const auto* opened = m.last(u"form");
        ASSERT_NE(opened, nullptr) << t.name;
        EXPECT_EQ(opened->text, t.form);
    }
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(ToolPictures, TListAndTZoneOpenWithNoCalendarOpen) {
    launch();
    s().cal_path.clear();
    QTest::mouseClick(find<QToolButton>("imgTlist"), Qt::LeftButton);
    QTest::mouseClick(find<QToolButton>("imgTzone"), Qt::LeftButton);
    std::vector<QString> forms;
    for (const auto& shown : m.shown)
        if (shown.kind == u"form") forms.push_back(shown.text);
    EXPECT_EQ(forms, (std::vector<QString>{QStringLiteral("frmToDo"), QStringLiteral("frmTzone")}));
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(ToolPictures, TListAndTZoneStandInTheWeekAndMonthPlannersToo) {
    launch();
    for (const char* view : {"imageWeek", "imageMonth"}) {
        QTest::mouseClick(find<QToolButton>(view), Qt::LeftButton);
        QApplication::processEvents();
        for (const char* tool : {"imageFind", "imgTlist", "imgTzone"})
            EXPECT_TRUE(find<QToolButton>(tool)->isVisible()) << view << " " << tool;
    }
}

} // namespace
} // namespace orva
