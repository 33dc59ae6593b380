#include "core/clock.h"
#include "grid/ui/grid_model.h"
#include "grid/ui/grid_widget.h"
#include "main_window_fixture.h"
#include "shell/single_instance.h"
#include "shell/tick.h"
#include "shell/ui/frmCal.h"
#include "store/calendar_file.h"
#include "store/store_fixtures.h"
#include "support/accessible.h"
#include "support/scripted_modal.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/status.h"
#include "views/week_view.h"

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
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orva {
namespace {

// The main window's entries of Saturday 2026-11-21 and one on Monday the
// 2nd, the clock at 09:40.
class Planners : public testing::MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        add("215", "08:00", "09:00", "Gym", "", "11022026");
    }
    GridWidget* overvw() { return run->window->findChild<GridWidget*>("vsOvervw"); }
    void click(const char* tool) {
        auto* b = find<QToolButton>(tool);
        ASSERT_NE(b, nullptr) << tool;
        QTest::mouseClick(b, Qt::LeftButton);
        QApplication::processEvents();
        overvw()->refresh();
    }
    // Types `text` into cell (row, col) of vsOvervw and ends the edit.
    void type_into(int row, int col, const QString& text) {
        s().vsOvervw.Select(row, col);
        overvw()->refresh();
        overvw()->setFocus();
        QTest::keyClick(overvw(), text.at(0).toLatin1());
        auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(line, nullptr);
        QTest::keyClicks(line, text.mid(1));
        QTest::keyClick(line, Qt::Key_Return);
        QApplication::processEvents();
    }
    QByteArray member(const char* name) {
        QByteArray bytes;
        EXPECT_EQ(s().archive.get(s().cal_path, name, bytes), 0);
        return bytes;
    }
};

QString data(const Grid& g, int r, int c) {
    return g.Cell(CellSetting::Data, r, c).toString();
}

TEST_F(Planners, ToolPicturesSwitchDayWeekMonthDayWithTheEntriesOnScreen) {
    launch();
    auto* week = find<QToolButton>("imageWeek");
    auto* month = find<QToolButton>("imageMonth");
    ASSERT_NE(week, nullptr);
    ASSERT_NE(month, nullptr);
    EXPECT_EQ(week->text(), "Wk");
    EXPECT_EQ(week->toolTip(), "weekly planner");
    EXPECT_EQ(month->text(), "Mth");
    EXPECT_EQ(month->toolTip(), "montly calendar");

    click("imageWeek");
    EXPECT_TRUE(s().view_week);
    EXPECT_TRUE(overvw()->isVisible());
    EXPECT_FALSE(sched()->isVisible());
    EXPECT_FALSE(find<GridWidget>("Cal")->isVisible());
    EXPECT_FALSE(find<QGroupBox>("Frame2")->isVisible());
    EXPECT_EQ(s().vsOvervw.Rows(), 20);
    EXPECT_EQ(s().vsOvervw.TextMatrix(12, 2), "9:00 am   Dentist");
    EXPECT_EQ(s().vsOvervw.TextMatrix(10, 2), week_header_text(QDate(2026, 11, 21)));
    EXPECT_EQ(find<QLabel>("Label1")->text(),
              QLocale().toString(QDate(2026, 11, 16), QLocale::LongFormat) + "  - " +
                  QLocale().toString(QDate(2026, 11, 22), QLocale::LongFormat));
    EXPECT_EQ(find<QLabel>("nbrAppts")->text(), "4   Appointments");
    EXPECT_EQ(s().vsOvervw.Row(), 11); // Saturday's first line
    EXPECT_EQ(s().vsOvervw.Col(), 2);

    click("imageMonth");
    EXPECT_TRUE(s().view_month);
    EXPECT_FALSE(s().view_week);
    EXPECT_TRUE(overvw()->isVisible());
    EXPECT_EQ(s().vsOvervw.Rows(), 26); // November 2026: five weeks
    EXPECT_EQ(s().vsOvervw.TextMatrix(11, 6), " 21");
    EXPECT_EQ(s().vsOvervw.TextMatrix(13, 6), "9:00 am   Dentist");
    EXPECT_EQ(s().vsOvervw.TextMatrix(2, 1), " 8:00 am   Gym");
    EXPECT_EQ(s().vsOvervw.TextMatrix(5, 1), " 8:00 am   Gym");
    EXPECT_EQ(find<QLabel>("Label1")->text(), QLocale().monthName(11) + "   2026");
    EXPECT_EQ(find<QLabel>("nbrAppts")->text(), "5   Appointments");

    click("imageDay");
    EXPECT_TRUE(s().view_day);
    EXPECT_FALSE(overvw()->isVisible());
    EXPECT_TRUE(sched()->isVisible());
    EXPECT_TRUE(find<GridWidget>("Cal")->isVisible());
    EXPECT_EQ(data(s().vsSched, 19, 2), "1"); // the Dentist at 09:00
}

TEST_F(Planners, TypingIntoAFreeMonthLineWritesAnEntryThatTheRefillShows) {
    launch();
    click("imageMonth");
    m.forms["frmQuick"] = [&] { s().appt_row(s().appt_count)->appt_end = "10:00"; };
    // Tuesday the 10th: day numbers in row 6 of column 2, lines 7 to 10.
    ASSERT_EQ(s().vsOvervw.TextMatrix(6, 2), " 10");
    type_into(7, 2, "Call Bob");

    ASSERT_NE(m.last(u"form"), nullptr);
    EXPECT_EQ(m.last(u"form")->text, "frmQuick");
    const QByteArray c2611 = member("c2611.cal");
    EXPECT_EQ(c2611.size(), 6 * 477);
    EXPECT_TRUE(c2611.contains("1110202611102026"
                               "09:4010:00"));
    EXPECT_TRUE(s().vsOvervw.TextMatrix(7, 2).endsWith("Call Bob"));
    EXPECT_TRUE(data(s().vsOvervw, 7, 2).startsWith("11102026? index="));
    EXPECT_EQ(s().vsOvervw.Col(), 1); // one column to the left, as always
    EXPECT_TRUE(s().timer1_enabled);
}

TEST_F(Planners, TypingOverADayNumberMakesAnEntryAndTheRefillRestoresTheNumber) {
    launch();
    click("imageMonth");
    type_into(6, 2, "Dentist again");
    EXPECT_EQ(member("c2611.cal").size(), 6 * 477);
    EXPECT_EQ(s().vsOvervw.TextMatrix(6, 2), " 10");
    EXPECT_TRUE(s().vsOvervw.TextMatrix(7, 2).endsWith("Dentist again"));
}

TEST_F(Planners, DeleteKeyInTheWeekPlannerRemovesTheEntryFromFileAndGrid) {
    launch();
    click("imageWeek");
    ASSERT_EQ(s().vsOvervw.TextMatrix(12, 2), "9:00 am   Dentist");
    s().vsOvervw.Select(12, 2);
    overvw()->refresh();
    overvw()->setFocus();
    m.answers.push_back(Answer::Yes);
    QTest::keyClick(overvw(), Qt::Key_Delete);
    QApplication::processEvents();

    ASSERT_NE(m.last(u"question"), nullptr);
    EXPECT_EQ(m.last(u"question")->text, "Confirm delete of appointment: 'Dentist' ?");
    const QByteArray c2611 = member("c2611.cal");
    EXPECT_EQ(c2611.size(), 4 * 477);
    EXPECT_FALSE(c2611.contains("Dentist"));
    EXPECT_TRUE(s().view_week);
    EXPECT_EQ(s().vsOvervw.TextMatrix(12, 2), "9:30 am   Team meeting");
    EXPECT_EQ(find<QLabel>("nbrAppts")->text(), "3   Appointments");
}

TEST_F(Planners, DeleteToolWithNoEntrysLineSaysSoInTheMonthPlanner) {
    launch();
    click("imageMonth");
    s().vsOvervw.Select(7, 2); // a free line of the 10th
    overvw()->refresh();
    click("imageClock");
    EXPECT_EQ(m.last(u"message")->text, "Select appointment first");
    EXPECT_EQ(member("c2611.cal").size(), 5 * 477);
}

TEST_F(Planners, DoubleClickOnAMonthLineOpensItsEntryInTheEditor) {
    launch();
    click("imageMonth");
    bool opened = false;
    m.forms["frmAppt1"] = [&] {
        opened = true;
        EXPECT_FALSE(s().new_appt);
        EXPECT_EQ(s().appt_row(s().edit_index)->appt_text.trimmed(), "Dentist");
        EXPECT_EQ(s().edit_start, "09:00");
        EXPECT_TRUE(s().appt_from_planner);
    };
    const QRect cell = overvw()->cell_rect(13, 6);
    ASSERT_FALSE(cell.isEmpty());
    QTest::mouseDClick(overvw()->viewport(), Qt::LeftButton, {},
                       overvw()->viewport()->mapFrom(overvw(), cell.center()));
    EXPECT_TRUE(opened);
    EXPECT_FALSE(s().timer1_enabled); // Cancel leaves the tick off
}

TEST_F(Planners, TheViewShowingAtExitComesBackAtTheNextStart) {
    launch();
    click("imageWeek");
    run->window->close();
    run.reset();
    launch();
    EXPECT_TRUE(s().view_week);
    EXPECT_TRUE(overvw()->isVisible());
    EXPECT_FALSE(sched()->isVisible());
    EXPECT_EQ(s().vsOvervw.TextMatrix(12, 2), "9:00 am   Dentist");

    click("imageMonth");
    run->window->close();
    run.reset();
    launch();
    EXPECT_TRUE(s().view_month);
    EXPECT_EQ(s().vsOvervw.TextMatrix(13, 6), "9:00 am   Dentist");
}

TEST_F(Planners, AtMidnightTheWeekPlannerJumpsToTheWeekOfTheNewToday) {
    launch();
    click("imageWeek");
    ASSERT_EQ(s().week_start, QDate(2026, 11, 16));
    clk.set(QDateTime(QDate(2026, 11, 23), QTime(0, 0, 6)));
    Timer1_Timer(s(), *run->window);
    EXPECT_TRUE(s().view_week);
    EXPECT_EQ(s().week_start, QDate(2026, 11, 23));
    EXPECT_EQ(s().week_end, QDate(2026, 11, 29));
    EXPECT_EQ(s().vsOvervw.TextMatrix(0, 0), week_header_text(QDate(2026, 11, 23)));
}

TEST_F(Planners, ArrowsStepAWeekInTheWeekPlannerAndSaySo) {
    launch();
    click("imageWeek");
    auto* next = find<QToolButton>("ImageArrow1");
    QTest::mouseMove(next);
    QApplication::processEvents();
    EXPECT_EQ(next->toolTip(), "Next Week");
    EXPECT_EQ(find<QToolButton>("ImageArrow0")->toolTip(), "Prior Week");
    click("ImageArrow1");
    EXPECT_EQ(s().cur_date, QDate(2026, 11, 28));
    EXPECT_EQ(s().week_start, QDate(2026, 11, 23));
    // Into December: both months are loaded and the lists follow the Monday.
    click("ImageArrow1");
    EXPECT_EQ(s().week_start, QDate(2026, 11, 30));
    EXPECT_EQ(find<QComboBox>("Combo1")->currentText(), "November");
}

TEST_F(Planners, MonthLineTipShowsTheWholeEntryWhileTipsAreOn) {
    launch();
    click("imageMonth");
    ASSERT_TRUE(s().menus.mnuTips);
    const QRect cell = overvw()->cell_rect(15, 6);
    QTest::mouseMove(overvw()->viewport(), overvw()->viewport()->mapFrom(overvw(), cell.center()));
    QApplication::processEvents();
    EXPECT_EQ(overvw()->toolTip(), "01:00 pm - 05:30 pm  Hike up the hill");
}

TEST_F(Planners, FileNewAndOpenShowThePlannerThatIsUpAndTheOneTheOptionsName) {
    launch();
    click("imageMonth");
    const QString first = s().cal_path;
    const QString fresh = dir.filePath("fresh.cal");
    m.file_answers.push_back(fresh);
    find<QAction>("mnuNew")->trigger();
    QApplication::processEvents();
    EXPECT_EQ(s().cal_path, fresh);
    EXPECT_TRUE(s().view_month);
    EXPECT_TRUE(overvw()->isVisible());
    EXPECT_EQ(s().vsOvervw.TextMatrix(11, 6), " 21");
    EXPECT_EQ(s().vsOvervw.TextMatrix(13, 6), ""); // the new calendar is empty

    click("imageWeek");
    m.file_answers.push_back(first);
    find<QAction>("mnuOpen")->trigger();
    QApplication::processEvents();
    overvw()->refresh();
    // The first calendar's options were saved with the month up.
    EXPECT_EQ(s().cal_path, first);
    EXPECT_TRUE(s().view_month);
    EXPECT_FALSE(s().view_week);
    EXPECT_EQ(s().vsOvervw.TextMatrix(13, 6), "9:00 am   Dentist");
}

TEST_F(Planners, RightButtonPopUpActsOnTheLineItWasOpenedOn) {
    launch();
    click("imageMonth");
    s().vsOvervw.Select(7, 2); // a free line elsewhere
    overvw()->refresh();
    const QRect cell = overvw()->cell_rect(13, 6);
    const QPoint at = overvw()->viewport()->mapFrom(overvw(), cell.center());
    QTimer::singleShot(0, [] {
        if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    });
    QTest::mousePress(overvw()->viewport(), Qt::RightButton, {}, at);
    QApplication::processEvents();
    EXPECT_EQ(s().vsOvervw.Row(), 13);
    EXPECT_EQ(s().vsOvervw.Col(), 6);
    m.answers.push_back(Answer::No);
    find<QAction>("mnudelete")->trigger();
    ASSERT_NE(m.last(u"question"), nullptr);
    EXPECT_EQ(m.last(u"question")->text, "Confirm delete of appointment: 'Dentist' ?");
    EXPECT_EQ(member("c2611.cal").size(), 5 * 477);
}

// The page at the two usual screen sizes: the grid fills the width under the
// band, its columns share it evenly, and the week keeps the tool pictures in
// a strip at the right.
class PlannerPages : public Planners, public ::testing::WithParamInterface<QSize> {};

TEST_P(PlannerPages, MonthAndWeekPagesFitTheWindowAndFollowItsSize) {
    launch(GetParam());
    click("imageMonth");
    QWidget* page = run->window->centralWidget();
    const QRect grid = overvw()->geometry();
    EXPECT_GE(grid.top(), find<QLabel>("Label1")->geometry().bottom());
    EXPECT_LE(grid.right(), page->width());
    EXPECT_GT(grid.width(), page->width() * 9 / 10);
    const int col_px = overvw()->columnWidth(0);
    EXPECT_GT(col_px * 7, grid.width() * 8 / 10);
    EXPECT_LE(col_px * 7, grid.width());
    // The month's controls share the line of the tool strip.
    const QRect strip = find<QFrame>("Frame3")->geometry();
    const QRect combo = find<QComboBox>("Combo1")->geometry();
    EXPECT_TRUE(strip.intersects(combo));
    EXPECT_TRUE(combo.isValid() && find<QComboBox>("Combo1")->isVisible());

    click("imageWeek");
    const QRect wgrid = overvw()->geometry();
    const QRect wstrip = find<QFrame>("Frame3")->geometry();
    EXPECT_GE(wstrip.left(), wgrid.right());
    EXPECT_LT(wstrip.width(), 120);
    const QRect day_tool = find<QToolButton>("imageDay")->geometry();
    const QRect month_tool = find<QToolButton>("imageMonth")->geometry();
    EXPECT_GT(month_tool.top(), day_tool.top()); // upright
    EXPECT_GT(overvw()->columnWidth(0) * 3, wgrid.width() * 8 / 10);

    const int before = overvw()->columnWidth(0);
    run->window->resize(GetParam() + QSize(200, 0));
    QApplication::processEvents();
    overvw()->refresh();
    EXPECT_GT(overvw()->columnWidth(0), before);
}

INSTANTIATE_TEST_SUITE_P(Sizes, PlannerPages,
                         ::testing::Values(QSize(1280, 800), QSize(1920, 1080)));

} // namespace
} // namespace orva
