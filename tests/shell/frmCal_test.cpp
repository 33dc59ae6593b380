#include "core/clock.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"
#include "store/calendar_file.h"
#include "store/store_fixtures.h"
#include "support/accessible.h"
#include "support/scripted_modal.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

class MainWindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
    }
    void TearDown() override { install_clock(nullptr); }

    // One run of the program: a fresh shared module and a real main window.
    struct Run {
        AppState state;
        std::unique_ptr<SingleInstance> instance;
        std::unique_ptr<frmCal> window;
    };
    std::unique_ptr<Run> launch() {
        auto run = std::make_unique<Run>();
        run->state.app_path = dir.path();
        run->instance = std::make_unique<SingleInstance>(dir.path());
        run->window = std::make_unique<frmCal>(run->state);
        EXPECT_TRUE(run->window->start(*run->instance));
        return run;
    }

    void add_today_reminder(Shared& sh) {
        EXPECT_EQ(append_rmdr_line(sh, sh.cal_path,
                                   testing::make_rmdr(QStringLiteral("11/21/26"),
                                                      QStringLiteral("211000001111"))),
                  0);
    }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
};

TEST_F(MainWindowTest, RecordWrittenByOneRunIsReadBackByTheNext) {
    {
        auto run = launch();
        AppState& s = run->state;
        s.cur.cur_first_date = s.cur.cur_appt_date = QStringLiteral("11212026");
        s.cur.cur_start = QStringLiteral("09:30");
        s.cur.cur_end = QStringLiteral("10:30");
        s.cur.cur_id = QStringLiteral("210930001930");
        s.cur.cur_text = QStringLiteral("Dentist, Dr. Haas");
        s.cur.cur_type = QStringLiteral("Tooth");
        s.cur.cur_pattern = QStringLiteral("1 ");
        s.cur.cur_until = QStringLiteral("11/21/26");
        s.cur.cur_notes = QStringLiteral("Bring the card");
        s.add_appt_row();
        EXPECT_EQ(write_appts(s, s.cal_path, append_mode, s.appt_count), 0);
        run->window->close();
        EXPECT_TRUE(run->window->ended());
    }
    auto run = launch();
    const AppState& s = run->state;
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_tbl[1].appt_text.trimmed(), QStringLiteral("Dentist, Dr. Haas"));
    EXPECT_EQ(s.appt_tbl[1].appt_notes.trimmed(), QStringLiteral("Bring the card"));
    EXPECT_EQ(s.appt_tbl[1].appt_start.str(), QStringLiteral("09:30"));
    EXPECT_EQ(s.day_tbl[21].day_time.str(), QStringLiteral("09:30"));
    EXPECT_EQ(s.day_tbl[21].day_type.trimmed(), QStringLiteral("Tooth"));
    QByteArray member;
    ASSERT_EQ(run->state.archive.get(s.cal_path, QStringLiteral("c2611.cal"), member), 0);
    EXPECT_EQ(member.size(), 477);
    EXPECT_TRUE(member.endsWith("\r\n"));
}

TEST_F(MainWindowTest, TitledAndNamedForAssistiveTools) {
    auto run = launch();
    frmCal& w = *run->window;
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Orva Calendar"));
    EXPECT_EQ(testing::spoken_name(&w), QStringLiteral("Orva Calendar"));
    EXPECT_EQ(testing::spoken_description(&w), QStringLiteral("frmCal"));
    auto* label = w.findChild<QLabel*>(QStringLiteral("Label1"));
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->text().contains(QStringLiteral("2026")));
    EXPECT_EQ(testing::spoken_name(label), label->text());
    EXPECT_EQ(testing::spoken_description(label), QStringLiteral("Label1"));
    auto* grid = w.findChild<QWidget*>(QStringLiteral("vsSched"));
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(testing::spoken_name(grid), QStringLiteral("Day planner"));
    EXPECT_EQ(testing::spoken_description(grid), QStringLiteral("vsSched"));
    EXPECT_NE(w.findChild<QStatusBar*>(QStringLiteral("StatusBar1")), nullptr);
    EXPECT_NE(w.findChild<QAction*>(QStringLiteral("mnuExit")), nullptr);
}

TEST_F(MainWindowTest, CloseBoxWithReminderPendingAndAnswerNoKeepsTheWindow) {
    auto run = launch();
    add_today_reminder(run->state);
    m.answers.push_back(Answer::No);
    EXPECT_FALSE(run->window->close());
    EXPECT_FALSE(run->window->ended());
    EXPECT_TRUE(run->window->isVisible());
    ASSERT_NE(m.last(u"question"), nullptr);
}

TEST_F(MainWindowTest, CtrlXAsksTheSameQuestionAndYesEnds) {
    auto run = launch();
    add_today_reminder(run->state);
    m.answers.push_back(Answer::Yes);
    QApplication::setActiveWindow(run->window.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(run->window.get()));
    QTest::keyClick(run->window.get(), Qt::Key_X, Qt::ControlModifier);
    ASSERT_NE(m.last(u"question"), nullptr);
    EXPECT_TRUE(m.last(u"question")->text.startsWith(QStringLiteral("Pending reminders")));
    EXPECT_TRUE(run->window->ended());
}

TEST_F(MainWindowTest, WindowComesUpWhereTheOptionsPlaceIt) {
    auto run = launch();
    frmCal& w = *run->window;
    const double tpp = w.twips_per_pixel_x();
    const QRect area = w.work_area();
    EXPECT_NEAR(w.frame().width(), area.width() * 0.9, 2 * tpp);
    EXPECT_NEAR(w.frame().left(), area.left(), 2 * tpp);
}

TEST_F(MainWindowTest, OpeningCalendarWithoutOptionsGivesDefaultsAndNinetyPercentWindow) {
    auto run = launch();
    frmCal& w = *run->window;
    const QString other = dir.filePath(QStringLiteral("other.cal"));
    ASSERT_EQ(run->state.archive.put(other, QStringLiteral("c2611.cal"), QByteArray()), 0);
    w.move_to(QRect(300, 300, 6000, 5000));
    m.file_answers.push_back(other);
    w.findChild<QAction*>(QStringLiteral("mnuOpen"))->trigger();

    EXPECT_EQ(run->state.cal_path, other);
    EXPECT_TRUE(run->state.archive.members(other).contains(QStringLiteral("Calopt.tmp")));
    const QRect area = w.work_area();
    const double tpp = w.twips_per_pixel_x();
    EXPECT_NEAR(w.frame().width(), area.width() * 0.9, 2 * tpp);
    EXPECT_NEAR(w.frame().left(), area.left(), 2 * tpp);
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(MainWindowTest, OpeningTheCalendarAlreadyOpenIsRefused) {
    auto run = launch();
    m.file_answers.push_back(run->state.cal_path);
    run->window->findChild<QAction*>(QStringLiteral("mnuOpen"))->trigger();
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QStringLiteral("Calendar  already open "));
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
}

TEST_F(MainWindowTest, DeletingTheCalendarDisablesTheDeleteCommand) {
    auto run = launch();
    const QString cal = run->state.cal_path;
    m.answers.push_back(Answer::Yes);
    QAction* del = run->window->findChild<QAction*>(QStringLiteral("mnuFileDelCal"));
    del->trigger();
    EXPECT_FALSE(QFile::exists(cal));
    EXPECT_TRUE(run->state.cal_path.isEmpty());
    EXPECT_FALSE(del->isEnabled());
}

TEST_F(MainWindowTest, ProgramStartedInFreshDataFolderCreatesCalendarHoldingOptions) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), dir.path());
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(ORVACAL_BIN), {});
    ASSERT_TRUE(p.waitForStarted(10000));
    const QString cal = dir.filePath(QStringLiteral("orvacal/calendar.cal"));
    Archive a;
    QStringList members;
    for (int i = 0; i < 100 && members.isEmpty(); ++i) {
        QTest::qWait(100);
        if (QFile::exists(cal)) members = a.members(cal);
    }
    a.close(cal);
    p.kill();
    p.waitForFinished(5000);
    EXPECT_EQ(members, QStringList{QStringLiteral("Calopt.tmp")});
}

} // namespace
} // namespace orva
