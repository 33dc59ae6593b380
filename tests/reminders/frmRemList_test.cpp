#include "../support/accessible.h"
#include "../views/main_window_fixture.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_widget.h"
#include "rem_list_fixtures.h"
#include "reminders/ui/frmRemList.h"

#include <QApplication>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::RemListEnv;

struct FrmRemListDialog : ::testing::Test {
    RemListEnv env;
    AppState& s = env.s;

    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    // A fixture year: the planner stands on Saturday 2026-11-21, so the
    // tables hold the reminders of August to November only. The alarms lie
    // in six months of 2026, one of them for an entry of January 2027, one
    // is delivered, and two fall outside the year.
    void fill_year() {
        s.cur_date = QDate(2026, 11, 21);
        const auto add = [this](QDate day, const char* id, const char* start, const char* text,
                                QDate due, const char* fired = "F") {
            const appt_rec a = env.entry(day, QString::fromLatin1(id), QString::fromLatin1(start),
                                         QString::fromLatin1(text));
            env.alarm(a, due, QStringLiteral("07:45"), QString::fromLatin1(fired));
        };
        add(QDate(2026, 2, 10), "T1", "09:00", "Tax papers", QDate(2026, 2, 9));
        add(QDate(2026, 3, 10), "D1", "14:00", "Dentist", QDate(2026, 3, 10));
        add(QDate(2026, 7, 1), "P1", "06:00", "Trip", QDate(2026, 6, 30));
        add(QDate(2026, 11, 20), "M1", "10:00", "Team meeting", QDate(2026, 11, 20), "T");
        add(QDate(2026, 12, 31), "N1", "20:00", "Party", QDate(2026, 12, 31));
        add(QDate(2027, 1, 2), "F1", "08:00", "Flight", QDate(2026, 12, 31));
        add(QDate(2025, 12, 31), "X1", "09:00", "Last year", QDate(2025, 12, 31));
        add(QDate(2027, 1, 3), "X2", "09:00", "Next year", QDate(2027, 1, 1));
        ASSERT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
        ASSERT_EQ(load_rmdrs(s, s.cur_date, s.cal_path, 0), 0);
    }
    void refresh_range(FrmRemList& dlg, const QDate& from, const QDate& to) {
        child<QDateEdit>(dlg, "srchDTPicker1")->setDate(from);
        child<QDateEdit>(dlg, "srchDTPicker2")->setDate(to);
        QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    }
    static QPoint cell_point(FrmRemList& dlg, int row, int col) {
        auto* grid = dlg.findChild<GridWidget*>(QStringLiteral("vsRmdr"));
        grid->refresh();
        const QRect r = grid->cell_rect(row, col);
        EXPECT_FALSE(r.isEmpty()) << row << "," << col;
        return grid->viewport()->mapFrom(grid, r.center());
    }
    static void double_click(FrmRemList& dlg, int row, int col) {
        auto* grid = dlg.findChild<GridWidget*>(QStringLiteral("vsRmdr"));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell_point(dlg, row, col));
    }
    static QStringList subjects(FrmRemList& dlg) {
        QStringList out;
        const Grid& g = dlg.form().vsRmdr;
        for (int r = 1; r < g.Rows(); ++r)
            out << g.TextMatrix(r, 3);
        return out;
    }
};

TEST_F(FrmRemListDialog, ControlsCarryTheirNamesCaptionsAndSpokenNames) {
    FrmRemList dlg(s);
    dlg.show();
    EXPECT_EQ(dlg.windowTitle(), "Reminders  ");
    EXPECT_EQ(child<QRadioButton>(dlg, "optDisplay0")->text(), "Show Pending reminders");
    EXPECT_EQ(child<QRadioButton>(dlg, "optDisplay1")->text(), "Show expired reminders");
    EXPECT_EQ(child<QRadioButton>(dlg, "optDisplay2")->text(), "Show all ");
    EXPECT_TRUE(child<QRadioButton>(dlg, "optDisplay2")->isChecked());
    EXPECT_EQ(child<QPushButton>(dlg, "Command1")->text(), "Refresh");
    EXPECT_EQ(child<QPushButton>(dlg, "Command2")->text(), "Help");
    auto* grid = child<GridWidget>(dlg, "vsRmdr");
    EXPECT_EQ(testing::spoken_name(grid), "Reminders list");
    EXPECT_EQ(testing::spoken_description(grid), "vsRmdr");
    auto* from = child<QDateEdit>(dlg, "srchDTPicker1");
    EXPECT_EQ(testing::spoken_name(from), "From date");
    EXPECT_EQ(testing::spoken_description(from), "srchDTPicker1");
    EXPECT_EQ(testing::spoken_name(child<QDateEdit>(dlg, "srchDTPicker2")), "To date");
    EXPECT_EQ(testing::spoken_name(child<QRadioButton>(dlg, "optDisplay0")),
              "Show Pending reminders");
    EXPECT_EQ(testing::spoken_description(child<QRadioButton>(dlg, "optDisplay0")), "optDisplay0");
    auto* count = child<QLabel>(dlg, "lblCnt");
    EXPECT_EQ(count->text(), "0 reminders");
    EXPECT_EQ(testing::spoken_name(count), "0 reminders");
    EXPECT_EQ(from->date(), QDate(2026, 3, 9));
    EXPECT_EQ(child<QDateEdit>(dlg, "srchDTPicker2")->date(), QDate(2026, 3, 15));
}

TEST_F(FrmRemListDialog, AYearOfAFixtureCalendarListsItsRemindersInOrderWithTheCount) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    refresh_range(dlg, QDate(2026, 1, 1), QDate(2026, 12, 31));
    EXPECT_EQ(subjects(dlg),
              (QStringList{"Tax papers", "Dentist", "Trip", "Team meeting", "Party", "Flight"}));
    EXPECT_EQ(child<QLabel>(dlg, "lblCnt")->text(), "6 reminders");
    const Grid& g = dlg.form().vsRmdr;
    // February lies before the four months the tables hold; the list reads
    // the member itself and shows the never-delivered alarm as active.
    for (int i = 1; i <= s.rmdr_count; ++i)
        EXPECT_NE(s.rmdr_row(i)->rmdr_id.trimmed(), "T1");
    EXPECT_EQ(g.TextMatrix(1, 5), "Active");
    EXPECT_EQ(g.TextMatrix(4, 5), "Expired");
    EXPECT_EQ(g.TextMatrix(6, 4), RemListEnv::shown(QDate(2026, 12, 31)) + " 07:45 am");
    EXPECT_EQ(g.TextMatrix(6, 6), "270102");
    // The table the screen reader walks holds the same rows.
    EXPECT_EQ(child<GridWidget>(dlg, "vsRmdr")->model()->rowCount(), 6);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(FrmRemListDialog, PendingOptionAndRefreshShowOnlyTheActiveOnes) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    QTest::mouseClick(child<QRadioButton>(dlg, "optDisplay0"), Qt::LeftButton);
    refresh_range(dlg, QDate(2026, 11, 1), QDate(2026, 12, 31));
    EXPECT_EQ(subjects(dlg), (QStringList{"Party", "Flight"}));
    EXPECT_EQ(child<QLabel>(dlg, "lblCnt")->text(), "2 reminders");
    QTest::mouseClick(child<QRadioButton>(dlg, "optDisplay1"), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(subjects(dlg), QStringList{"Team meeting"});
    EXPECT_EQ(child<QLabel>(dlg, "lblCnt")->text(), "1 reminder ");
}

TEST_F(FrmRemListDialog, EnterInADateBoxRefreshesTheList) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    auto* to = child<QDateEdit>(dlg, "srchDTPicker2");
    child<QDateEdit>(dlg, "srchDTPicker1")->setDate(QDate(2026, 11, 1));
    to->setDate(QDate(2026, 12, 31));
    to->setFocus();
    QTest::keyClick(to, Qt::Key_Return);
    EXPECT_EQ(subjects(dlg), (QStringList{"Team meeting", "Party", "Flight"}));
}

TEST_F(FrmRemListDialog, FromDateAfterToDateShowsTheErrorBoxAndKeepsTheList) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    refresh_range(dlg, QDate(2026, 11, 1), QDate(2026, 11, 30));
    ASSERT_EQ(subjects(dlg), QStringList{"Team meeting"});
    refresh_range(dlg, QDate(2026, 12, 1), QDate(2026, 1, 1));
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "From date greater than To date");
    EXPECT_EQ(subjects(dlg), QStringList{"Team meeting"});
    EXPECT_EQ(child<QLabel>(dlg, "lblCnt")->text(), "1 reminder ");
}

TEST_F(FrmRemListDialog, HelpButtonOpensTheHelpViewerAtTheListsTopic) {
    FrmRemList dlg(s);
    dlg.show();
    QString handed;
    env.m.forms[QStringLiteral("frmHelpIdx")] = [&] { handed = s.help_topic; };
    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmHelpIdx");
    EXPECT_EQ(handed, QStringLiteral("topics/reminder_list.html"));
}

TEST_F(FrmRemListDialog, DoubleClickOnTheSubjectOpensThatEntry) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    refresh_range(dlg, QDate(2026, 1, 1), QDate(2026, 12, 31));
    QString opened;
    env.m.forms[QStringLiteral("frmAppt1")] = [&] {
        opened = s.appt_row(s.edit_index)->appt_id.trimmed();
    };
    double_click(dlg, 3, 3);
    EXPECT_EQ(opened, "P1");
    EXPECT_TRUE(dlg.isVisible());
    EXPECT_EQ(s.cur_date, QDate(2026, 11, 21));
}

TEST_F(FrmRemListDialog, DoubleClickOnTheDayShowsItInTheDayPlannerAndTheListStaysOpen) {
    fill_year();
    s.view_day = false;
    s.view_month = true;
    FrmRemList dlg(s);
    dlg.show();
    refresh_range(dlg, QDate(2026, 1, 1), QDate(2026, 12, 31));
    double_click(dlg, 2, 0);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 10));
    EXPECT_TRUE(s.view_day);
    EXPECT_FALSE(s.view_month);
    EXPECT_TRUE(dlg.isVisible());
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(FrmRemListDialog, EnterOnARowDoesWhatADoubleClickDoes) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    refresh_range(dlg, QDate(2026, 1, 1), QDate(2026, 12, 31));
    auto* grid = child<GridWidget>(dlg, "vsRmdr");
    dlg.form().vsRmdr.Select(2, 1);
    grid->refresh();
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 10));
    EXPECT_TRUE(dlg.isVisible());
}

TEST_F(FrmRemListDialog, ANarrowWindowIsWidenedToItsLeastWidth) {
    FrmRemList dlg(s);
    dlg.show();
    dlg.resize(300, 500);
    QApplication::processEvents();
    EXPECT_GE(dlg.width(), 10170 * dlg.logicalDpiX() / 1440);
}

TEST_F(FrmRemListDialog, TheShownColumnsFitBesideTheScrollBar) {
    fill_year();
    FrmRemList dlg(s);
    dlg.show();
    refresh_range(dlg, QDate(2026, 1, 1), QDate(2026, 12, 31));
    dlg.resize(dlg.width() + 200, dlg.height() + 100);
    QApplication::processEvents();
    auto* grid = child<GridWidget>(dlg, "vsRmdr");
    const Grid& g = dlg.form().vsRmdr;
    int total = 0;
    for (int c = 0; c < 6; ++c)
        total += grid->twips_to_px(g.ColWidth(c));
    EXPECT_LE(total, grid->columns_room());
    // The count line stands below the grid.
    EXPECT_GE(child<QLabel>(dlg, "lblCnt")->y(), grid->geometry().bottom());
}

// --- the main window's way in ------------------------------------------------

class ReminderPicture : public testing::MainWindowTest {};

TEST_F(ReminderPicture, StandsInTheStripWithItsCaptionAndTipAndOpensTheList) {
    launch();
    auto* b = find<QToolButton>("imgRem");
    ASSERT_NE(b, nullptr);
    EXPECT_TRUE(b->isVisible());
    EXPECT_EQ(b->text(), "Reminders");
    EXPECT_EQ(b->toolTip(), "List of reminders");
    EXPECT_EQ(testing::spoken_description(b), "imgRem");
    int listed = -1;
    m.forms[QStringLiteral("frmRemList")] = [&] {
        FrmRemList dlg(s());
        listed = dlg.form().vsRmdr.Rows() - 1;
    };
    QTest::mouseClick(b, Qt::LeftButton);
    ASSERT_NE(m.last(u"form"), nullptr);
    EXPECT_EQ(m.last(u"form")->text, "frmRemList");
    EXPECT_EQ(listed, 0) << "the fixture's entries have no reminders";
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(ReminderPicture, WithNoCalendarOpenTellsSelectAndOpenACalendarFirst) {
    launch();
    s().cal_path.clear();
    QTest::mouseClick(find<QToolButton>("imgRem"), Qt::LeftButton);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], " Select and Open a Calendar first");
    EXPECT_EQ(m.last(u"form"), nullptr);
}

TEST_F(ReminderPicture, StandsInTheWeekAndMonthPlannersToo) {
    launch();
    for (const char* view : {"imageWeek", "imageMonth", "imageDay"}) {
        QTest::mouseClick(find<QToolButton>(view), Qt::LeftButton);
        QApplication::processEvents();
        EXPECT_TRUE(find<QToolButton>("imgRem")->isVisible()) << view;
    }
}

} // namespace
} // namespace orva
