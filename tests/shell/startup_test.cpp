#include "core/clock.h"
#include "shell/single_instance.h"
#include "shell/startup.h"
#include "state/options.h"
#include "store/calendar_file.h"
#include "store/member_format.h"
#include "store/store_fixtures.h"
#include "support/fake_window.h"
#include "support/io_shim.h"
#include "support/scripted_modal.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace orva {
namespace {

class StartupTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
        s.app_path = dir.path();
    }
    void TearDown() override { install_clock(nullptr); }

    QString cal() const { return dir.filePath(QStringLiteral("calendar.cal")); }

    // A reminder line due on `due`, as the reminder setup writes it.
    void add_reminder(const QDate& due, const QString& fired, const QString& id) {
        rmdr_rec r = testing::make_rmdr(due.toString(QStringLiteral("MM/dd/yy")), id);
        r.rmdr_fired = fired;
        Shared writer;
        writer.app_path = s.app_path;
        EXPECT_EQ(append_rmdr_line(writer, cal(), r), 0);
    }

    // Starts the program the way the window does, on a fresh shared module.
    bool start(AppState& st, testing::FakeWindow& win) {
        SingleInstance inst(dir.path());
        return Form_Load(st, win, inst);
    }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
    testing::FakeWindow w;
    AppState s;
};

TEST_F(StartupTest, SecondStartShowsMessageAndEndsLeavingFirstAlone) {
    SingleInstance first(dir.path());
    ASSERT_EQ(first.acquire(), SingleInstance::Result::acquired);

    SingleInstance second(dir.path());
    EXPECT_FALSE(Form_Load(s, w, second));
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QStringLiteral("Orva Calendar already running.  Click minimized "
                                              "window or Click the ICON in the taskbar."));
    EXPECT_TRUE(first.held());
    EXPECT_FALSE(QFile::exists(cal())) << "nothing else happens";
    EXPECT_EQ(w.moves, 0);
}

TEST_F(StartupTest, LockOfAProcessThatEndedDoesNotKeepTheNextStartOut) {
    {
        SingleInstance gone(dir.path());
        ASSERT_EQ(gone.acquire(), SingleInstance::Result::acquired);
    }
    SingleInstance next(dir.path());
    EXPECT_EQ(next.acquire(), SingleInstance::Result::acquired);
}

TEST_F(StartupTest, EmptyLockFileLeftBehindDoesNotKeepTheProgramOut) {
    QFile lock(dir.filePath(QStringLiteral("orvacal.lock")));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.close();
    EXPECT_TRUE(start(s, w));
    EXPECT_TRUE(m.messages().empty());
    EXPECT_TRUE(QFile::exists(cal()));
}

TEST_F(StartupTest, GarbageInTheLockFileDoesNotKeepTheProgramOut) {
    QFile lock(dir.filePath(QStringLiteral("orvacal.lock")));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("\x00\xff\x13 not a process 99999999999999\n\t");
    lock.close();
    EXPECT_TRUE(start(s, w));
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(StartupTest, LockHeldByALiveProcessKeepsTheSecondStartOut) {
    SingleInstance live(dir.path());
    ASSERT_EQ(live.acquire(), SingleInstance::Result::acquired);
    SingleInstance second(dir.path());
    EXPECT_EQ(second.acquire(), SingleInstance::Result::running);
    EXPECT_FALSE(second.held());
}

TEST_F(StartupTest, DataFolderThatCannotBeWrittenIsToldAsSuchNotAsAlreadyRunning) {
    // A plain file where the folder should be: nothing can be made inside.
    const QString blocked = dir.filePath(QStringLiteral("blocked"));
    QFile f(blocked);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    s.app_path = blocked + QStringLiteral("/orvacal");
    SingleInstance inst(s.app_path);
    EXPECT_FALSE(Form_Load(s, w, inst));
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0],
              "The folder " + s.app_path +
                  " cannot be written, so Orva Calendar cannot keep your Calendar there.  Check "
                  "the folder's permissions and the free space on its disk.");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(w.moves, 0) << "nothing else happens";
}

TEST_F(StartupTest, ForeignDatabaseAtStartIsRefusedLeftAsItWasAndTheProgramRunsWithoutACalendar) {
    testing::run_sql(cal(),
                     "CREATE TABLE songs(title TEXT); INSERT INTO songs VALUES('Blue Moon')");
    const QByteArray before = testing::file_bytes(cal());
    ASSERT_TRUE(start(s, w));
    Form_Resize(s.store(), s.view(), s.options(), s.run(), w);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "The file " + cal() +
                                   " is not an Orva Calendar and was not opened.  It has not "
                                   "been changed.  Open another Calendar or make a new one "
                                   "from the File menu.");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_TRUE(s.cal_path.isEmpty());
    EXPECT_TRUE(s.cal_refused);
    EXPECT_FALSE(s.delete_enabled);
    EXPECT_EQ(w.day_views, 1) << "the planner shows, empty";
    s.archive.close(cal());
    EXPECT_EQ(testing::file_bytes(cal()), before);
    EXPECT_FALSE(QFile::exists(cal() + QStringLiteral("-wal")));
}

TEST_F(StartupTest, CalendarTheUserMayNotReadIsRefusedAsUnreadable) {
    {
        AppState first;
        first.app_path = s.app_path;
        testing::FakeWindow w1;
        ASSERT_TRUE(start(first, w1));
    }
    const QByteArray before = testing::file_bytes(cal());
    testing::IoShim& io = testing::IoShim::install();
    io.set_unreadable_path(cal());
    m.shown.clear();
    const bool started = start(s, w);
    io.set_unreadable_path(QString());
    ASSERT_TRUE(started);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "The file " + cal() +
                                   " cannot be read and was not opened.  It has not been "
                                   "changed.  Open another Calendar or make a new one from "
                                   "the File menu.");
    EXPECT_EQ(testing::file_bytes(cal()), before);
}

TEST_F(StartupTest, FirstRunInFreshFolderShowsEmptyDayForTodayAndCreatesCalendarWithOptions) {
    ASSERT_TRUE(start(s, w));
    EXPECT_EQ(s.cal_path, cal());
    EXPECT_TRUE(QFile::exists(cal()));
    EXPECT_EQ(s.archive.members(cal()), QStringList{QStringLiteral("Calopt.tmp")});
    EXPECT_TRUE(s.view_day);
    EXPECT_EQ(s.cur_date, QDate(2026, 11, 21));
    EXPECT_EQ(s.tick_date, QDate(2026, 11, 21));
    EXPECT_EQ(s.cur_day, 21);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_EQ(w.day_views, 1);
    EXPECT_TRUE(w.long_date.startsWith(QStringLiteral("  ")));
    EXPECT_TRUE(w.long_date.contains(QStringLiteral("2026")));
    EXPECT_FALSE(s.startup_move);
    EXPECT_EQ(s.sel_row1, -1);
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(StartupTest, MonthsBackCountsCalendarMonthsSinceLastUse) {
    EXPECT_EQ(months_between(QDate(2026, 11, 30), QDate(2026, 12, 1)), 1);
    EXPECT_EQ(months_between(QDate(2026, 4, 1), QDate(2026, 11, 30)), 7);
    EXPECT_EQ(months_between(QDate(2025, 12, 31), QDate(2026, 1, 1)), 1);
    EXPECT_EQ(months_between(QDate(2026, 11, 21), QDate(2026, 11, 21)), 0);
    EXPECT_EQ(months_between(QDate(), QDate(2026, 11, 21)), 0);
}

TEST_F(StartupTest, RunAfterMonthsAwayHoldsAllOverdueRemindersOfThoseMonths) {
    clk.set(QDateTime(QDate(2026, 4, 10), QTime(9, 0)));
    {
        AppState first;
        first.app_path = s.app_path;
        testing::FakeWindow fw;
        ASSERT_TRUE(start(first, fw));
    }
    add_reminder(QDate(2026, 5, 2), QStringLiteral("F"), QStringLiteral("020900001234"));
    add_reminder(QDate(2026, 11, 20), QStringLiteral("F"), QStringLiteral("200900001234"));

    clk.set(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    ASSERT_TRUE(start(s, w));
    EXPECT_EQ(s.months_back, 7);
    ASSERT_EQ(s.rmdr_count, 2) << "May lies beyond the usual three months back";
    EXPECT_EQ(s.rmdr_tbl[1].rmdr_date.str(), QStringLiteral("05/02/26"));
}

TEST_F(StartupTest, TabInAStartFieldOfTodayStartsWithTheEntryUntimedBesideTheOthers) {
    // Once a SIGSEGV at every start: the tab split the day sort's row and a
    // row number that was no row reached the planner.
    const QByteArray bytes =
        appt_line(testing::make_appt("11212026", "210900001126", "\t9:00", "Tabbed")) + line_end +
        appt_line(testing::make_appt("11212026", "211100001126", "11:00", "Plain")) + line_end;
    {
        Shared writer;
        ASSERT_EQ(writer.archive.put(cal(), appt_member_name("2611"), bytes), 0);
    }
    ASSERT_TRUE(start(s, w));
    EXPECT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.day_appts, 2);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Data, 0, 2).toString(), QStringLiteral("1"));
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Data, 23, 2).toString(), QStringLiteral("2"));
    EXPECT_TRUE(m.messages().empty());
}

class ExitTest : public StartupTest {
  protected:
    void SetUp() override {
        StartupTest::SetUp();
        ASSERT_TRUE(start(s, w));
    }
};

TEST_F(ExitTest, NoPendingReminderEndsAtOnceWithoutAsking) {
    confirm_exit(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(w.ends, 1);
    EXPECT_EQ(m.last(u"question"), nullptr);
}

TEST_F(ExitTest, PendingReminderTodayAndAnswerNoKeepsTheProgramRunning) {
    add_reminder(QDate(2026, 11, 21), QStringLiteral("F"), QStringLiteral("211000001111"));
    m.answers.push_back(Answer::No);
    EXPECT_TRUE(Form_Unload(s.store(), s.view(), s.options(), s.run(), w))
        << "the close is cancelled";
    EXPECT_TRUE(s.stay_open);
    EXPECT_EQ(w.ends, 0);
    ASSERT_NE(m.last(u"question"), nullptr);
    EXPECT_EQ(m.last(u"question")->text,
              QStringLiteral("Pending reminders for the day will not be displayed if you exit "
                             "now.\n(Use the Hide feature to remain active.)\nDo you still want "
                             "to exit? "));
}

TEST_F(ExitTest, PendingReminderTodayAndAnswerYesEnds) {
    add_reminder(QDate(2026, 11, 21), QStringLiteral("F"), QStringLiteral("211000001111"));
    m.answers.push_back(Answer::Yes);
    EXPECT_FALSE(Form_Unload(s.store(), s.view(), s.options(), s.run(), w));
    EXPECT_EQ(w.ends, 1);
}

TEST_F(ExitTest, DeliveredReminderTodayAndOneDueTomorrowDoNotCount) {
    add_reminder(QDate(2026, 11, 21), QStringLiteral("T"), QStringLiteral("211000001111"));
    add_reminder(QDate(2026, 11, 22), QStringLiteral("F"), QStringLiteral("211000002222"));
    confirm_exit(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(w.ends, 1);
    EXPECT_EQ(m.last(u"question"), nullptr);
}

TEST_F(ExitTest, ExitSavesTheOptionsWithToday) {
    clk.set(QDateTime(QDate(2026, 11, 22), QTime(0, 5)));
    confirm_exit(s.store(), s.view(), s.options(), s.run(), w);
    AppState next;
    next.app_path = s.app_path;
    next.cal_path = cal();
    testing::FakeWindow w2;
    load_options(next.store(), next.view(), next.options(), next.run(), w2);
    EXPECT_EQ(next.last_used_date, QStringLiteral("11222026"));
}

TEST_F(ExitTest, WindowSavedOnVanishedMonitorComesBackToZeroAtNextResize) {
    s.form_left = 60000; // right of a 1920-pixel work area
    s.form_top = -3000;
    w.geometry = QRect(60000, -3000, 11910, 8550);
    Form_Resize(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(w.geometry.left(), 0);
    EXPECT_EQ(w.geometry.top(), 0);
    EXPECT_EQ(w.geometry.width(), 11910) << "the size is kept";
    EXPECT_EQ(s.form_left, 0);
}

TEST_F(ExitTest, ResizeOnTheWorkAreaKeepsThePlaceAndLaysOut) {
    s.form_left = 1500;
    s.form_top = 900;
    const int layouts = w.layouts;
    Form_Resize(s.store(), s.view(), s.options(), s.run(), w);
    EXPECT_EQ(w.geometry.left(), 1500);
    EXPECT_EQ(w.geometry.top(), 900);
    EXPECT_EQ(w.layouts, layouts + 1);
}

TEST_F(StartupTest, CalendarThatCannotBeWrittenIsToldOnceAtStartAndResizesStayQuiet) {
    {
        AppState first;
        first.app_path = s.app_path;
        testing::FakeWindow w1;
        ASSERT_TRUE(start(first, w1));
    }
    testing::IoShim& io = testing::IoShim::install();
    io.set_read_only_path(cal());
    m.shown.clear();
    ASSERT_TRUE(start(s, w));
    Form_Resize(s.store(), s.view(), s.options(), s.run(), w);
    Form_Resize(s.store(), s.view(), s.options(), s.run(), w);
    io.set_read_only_path(QString());
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0],
              "The Calendar " + cal() + " cannot be written.  Changes you make will not be saved.");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_TRUE(s.cal_read_only);
}

TEST_F(StartupTest, WritableCalendarStartsWithoutAWord) {
    ASSERT_TRUE(start(s, w));
    EXPECT_TRUE(m.messages().empty());
    EXPECT_FALSE(s.cal_read_only);
}

} // namespace
} // namespace orva
