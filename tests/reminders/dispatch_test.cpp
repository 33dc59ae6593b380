#include "../support/recording_sound.h"
#include "../views/view_fixtures.h"
#include "core/notifier.h"
#include "reminders/dispatch.h"
#include "reminders/reminder_setup.h"
#include "shell/startup.h"
#include "shell/tick.h"
#include "store/member_format.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace orva {
namespace {

using testing::make_rmdr;
using testing::ViewEnv;

// Posts to the desktop as a test reads them back.
class RecordingNotifier final : public Notifier {
  public:
    struct Post {
        QString summary, body;
    };
    std::vector<Post> posts;
    void post(const QString& summary, const QString& body) override {
        posts.push_back({summary, body});
    }
};

struct Dispatch : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;
    RecordingNotifier desktop;
    testing::RecordingSound speakers;
    testing::SoundGuard sound_guard{&speakers};

    Dispatch() { install_notifier(&desktop); }
    ~Dispatch() override { install_notifier(nullptr); }

    void at(const QDate& d, const QTime& t) { env.clock.set(QDateTime(d, t)); }

    // Reminder lines straight into their members, then the table as a start
    // loads it.
    void on_file(std::initializer_list<rmdr_rec> rows) {
        for (const rmdr_rec& r : rows)
            ASSERT_EQ(append_rmdr_line(s, s.cal_path, r), 0);
        ASSERT_EQ(load_rmdrs(s, s.cur_date, s.cal_path, 0), 0);
    }
    static rmdr_rec due(const QString& date, const QString& time, const QString& id,
                        const QString& text = QStringLiteral("Dentist")) {
        rmdr_rec r = make_rmdr(date, id, time);
        r.rmdr_text = text;
        return r;
    }
    QStringList member_lines(const QString& name) {
        QByteArray bytes;
        if (s.archive.get(s.cal_path, name, bytes) != 0) return {};
        QStringList out = QString::fromLatin1(bytes).split(QStringLiteral("\r\n"));
        if (!out.isEmpty() && out.back().isEmpty()) out.pop_back();
        return out;
    }
    // The fired flag and text of each line of a member, "T Dentist".
    QStringList flags(const QString& name) {
        QStringList out;
        for (const QString& l : member_lines(name))
            out << l.mid(116, 1) + QLatin1Char(' ') + l.mid(30, 50).trimmed();
        return out;
    }
    int forms(const QString& name) const {
        int n = 0;
        for (const auto& shown : env.m.shown)
            if (shown.kind == u"form" && shown.text == name) ++n;
        return n;
    }
    // What the note shows in its two visible columns, row by row.
    QStringList note_texts() const {
        QStringList out;
        const Grid& g = s.note.gRmdr;
        for (int r = 1; r < g.Rows(); ++r)
            out << g.TextMatrix(r, 0) + QStringLiteral(" | ") + g.TextMatrix(r, 1);
        return out;
    }
};

TEST_F(Dispatch, DueTimeIsComparedByWholeMinutes) {
    at(QDate(2026, 3, 15), QTime(9, 4, 59));
    on_file({due("03/15/26", "09:05", "A")});
    EXPECT_FALSE(scan_rmdrs(s, s));
    EXPECT_EQ(s.rmdr_row(1)->rmdr_fired.str(), "F");
    at(QDate(2026, 3, 15), QTime(9, 5, 59));
    EXPECT_TRUE(scan_rmdrs(s, s));
    EXPECT_EQ(s.rmdr_row(1)->rmdr_fired.str(), "T");
}

TEST_F(Dispatch, ReminderOfLastNightIsDeliveredAtTheFirstTickToday) {
    on_file({due("03/14/26", "23:50", "A")});
    at(QDate(2026, 3, 15), QTime(0, 0, 6));
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 1);
    EXPECT_EQ(flags("r2603.rmd"), QStringList{"T Dentist"});
}

TEST_F(Dispatch, RowDatedBeforeTodayIsDueWhateverItsTime) {
    on_file({due("03/02/26", "23:59", "A")});
    at(QDate(2026, 3, 15), QTime(0, 1));
    EXPECT_TRUE(scan_rmdrs(s, s));
}

TEST_F(Dispatch, YearsAreComparedAsTwoDigitTextSo99IsNotBefore00) {
    rmdr_rec r = due("12/31/99", "08:00", "A");
    EXPECT_FALSE(rmdr_due(r, QDateTime(QDate(2100, 1, 1), QTime(12, 0))));
    EXPECT_TRUE(rmdr_due(r, QDateTime(QDate(2099, 12, 31), QTime(12, 0))));
}

TEST_F(Dispatch, TwoDueInOneTickShareOneNoteWithTheFirstRowsMessengerAndSound) {
    rmdr_rec first = due("03/15/26", "08:00", "A", "Dentist");
    first.rmdr_anim = QStringLiteral("3 ");
    first.rmdr_alarm_text = QStringLiteral("/sounds/first.xyz");
    rmdr_rec second = due("03/15/26", "09:00", "B", "Garage");
    second.rmdr_anim = QStringLiteral("2 ");
    second.rmdr_alarm_text = QStringLiteral("/sounds/second.xyz");
    on_file({first, second});
    RemNote seen;
    env.m.forms["frmRemnote"] = [&] { seen = s.note; };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmAnimate"), 1);
    EXPECT_EQ(forms("frmRemnote"), 1);
    EXPECT_EQ(seen.gRmdr.Rows(), 3);
    EXPECT_FALSE(seen.Check1_visible);
    EXPECT_EQ(s.msg_anim, "3");
    EXPECT_EQ(s.msg_sound.trimmed(), "/sounds/first.xyz");
    EXPECT_EQ(s.note_row, 1);
    EXPECT_EQ(flags("r2603.rmd"), (QStringList{"T Dentist", "T Garage"}));
}

TEST_F(Dispatch, OneDueRowOffersRemindMeAgain) {
    on_file({due("03/15/26", "08:00", "A")});
    RemNote seen;
    env.m.forms["frmRemnote"] = [&] { seen = s.note; };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(seen.gRmdr.Rows(), 2);
    EXPECT_TRUE(seen.Check1_visible);
    EXPECT_TRUE(seen.Check1_enabled);
}

TEST_F(Dispatch, NoMessengerAndNoSoundStillOpenTheNote) {
    rmdr_rec r = due("03/15/26", "08:00", "A");
    r.rmdr_anim = QStringLiteral("1 ");
    r.rmdr_alarm_text = QString();
    on_file({r});
    Timer1_Timer(s, env.w);
    EXPECT_EQ(s.msg_anim, "1");
    EXPECT_EQ(forms("frmRemnote"), 1);
}

TEST_F(Dispatch, NoteTitleIsTodaysLongDateAndTheNoteIsEmptyAfterwards) {
    on_file({due("03/15/26", "08:00", "A")});
    QString title;
    env.m.forms["frmRemnote"] = [&] { title = s.note.caption; };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(title, QLocale().toString(QDate(2026, 3, 15), QLocale::LongFormat));
    EXPECT_EQ(s.note.gRmdr.Rows(), 1);
    EXPECT_FALSE(s.delivering);
}

TEST_F(Dispatch, DeliveredRowIsNotDeliveredTwice) {
    on_file({due("03/15/26", "08:00", "A")});
    Timer1_Timer(s, env.w);
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 1);
}

TEST_F(Dispatch, TickInsideAnOpenNoteLeavesNewRowsForTheNextTick) {
    on_file({due("03/15/26", "08:00", "A"), due("03/15/26", "09:15", "B", "Garage")});
    env.m.forms["frmRemnote"] = [&] {
        // The note stands open while the clock passes 09:15 and a tick runs.
        at(QDate(2026, 3, 15), QTime(9, 16));
        Timer1_Timer(s, env.w);
    };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 1);
    EXPECT_EQ(flags("r2603.rmd"), (QStringList{"T Dentist", "F Garage"}));
    env.m.forms.clear();
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 2);
    EXPECT_EQ(flags("r2603.rmd"), (QStringList{"T Dentist", "T Garage"}));
}

TEST_F(Dispatch, ReminderWithoutStickerShowsTextOnlyInTheFirstColumn) {
    rmdr_rec plain = due("03/15/26", "08:00", "A");
    plain.rmdr_type = QString();
    rmdr_rec car = due("03/15/26", "08:30", "B", "Garage");
    car.rmdr_type = QStringLiteral("Car");
    on_file({plain, car});
    scan_rmdrs(s, s);
    const Grid& g = s.note.gRmdr;
    EXPECT_FALSE(g.cell_has(CellSetting::Picture, 1, 0));
    EXPECT_FALSE(g.TextMatrix(1, 0).isEmpty());
    EXPECT_EQ(g.Cell(CellSetting::Picture, 2, 0).toString(), "Car");
}

TEST_F(Dispatch, NoteRowReadsDateThreeBlanksAndUpperCaseTime) {
    rmdr_rec r = due("03/15/26", "08:00", "A", "Dentist");
    r.rmdr_start = QStringLiteral("14:05");
    on_file({r});
    scan_rmdrs(s, s);
    const QString date = QLocale().toString(QDate(2026, 3, 15), QLocale::ShortFormat);
    EXPECT_EQ(note_texts(), QStringList{date + "   02:05 PM | Dentist"});
    EXPECT_EQ(s.note.gRmdr.TextMatrix(1, 2), date + "   02:05 PM");
    EXPECT_EQ(s.note.gRmdr.TextMatrix(0, 0), "Appt Date/Time");
    EXPECT_EQ(s.note.gRmdr.TextMatrix(0, 1), "Description");
}

TEST_F(Dispatch, OpeningTheNoteHidesTheSortKeysAndSortsByThem) {
    rmdr_rec late = due("03/15/26", "08:00", "A", "Late");
    late.rmdr_start = QStringLiteral("11:00");
    rmdr_rec early = due("03/15/26", "08:00", "B", "Early");
    early.rmdr_start = QStringLiteral("10:00");
    on_file({late, early});
    scan_rmdrs(s, s);
    s.note.gRmdr.set_extent(6000, 2000);
    frmRemnote_Load(s);
    const Grid& g = s.note.gRmdr;
    EXPECT_TRUE(g.ColHidden(2));
    EXPECT_TRUE(g.ColHidden(3));
    EXPECT_EQ(g.TextMatrix(1, 1), "Early");
    EXPECT_EQ(g.TextMatrix(2, 1), "Late");
    EXPECT_EQ(g.Col(), 0);
    EXPECT_EQ(g.ColWidth(0), 2100);
    EXPECT_EQ(g.ColWidth(1), 3900);
}

TEST_F(Dispatch, RemindAgainCountsFromTheDueMomentIntoTheNextMonthsMember) {
    // March and April each hold other reminders; April is not loaded.
    s.cur_date = QDate(2026, 3, 31);
    ASSERT_EQ(append_rmdr_line(s, s.cal_path, due("04/20/26", "10:00", "APRIL", "April's")), 0);
    on_file({due("03/31/26", "23:50", "LATE", "Late"), due("03/31/26", "23:55", "STAY", "Stays")});
    at(QDate(2026, 3, 31), QTime(23, 50, 30));
    env.m.forms["frmRemnote"] = [&] {
        s.note.Check1 = 1;
        Check1_Click(s);
    };
    env.m.forms["frmReRmdr"] = [&] {
        ReRmdrForm f;
        frmReRmdr_Load(f);
        f.list_index = 14; // 15 minutes
        frmReRmdr_OK(s, s, f);
    };
    Timer1_Timer(s, env.w);
    ASSERT_EQ(forms("frmReRmdr"), 1);
    EXPECT_EQ(flags("r2603.rmd"), QStringList{"F Stays"});
    const QStringList april = member_lines("r2604.rmd");
    ASSERT_EQ(april.size(), 2);
    EXPECT_EQ(flags("r2604.rmd"), (QStringList{"F April's", "F Late"}));
    EXPECT_EQ(april[1].mid(103, 8), "04/01/26");
    EXPECT_EQ(april[1].mid(111, 5), "00:05");
    EXPECT_EQ(april[1].mid(269, 2), "2 ");
}

TEST_F(Dispatch, LaterRowOfALoadedMonthAfterAMovedRowDoesNotEmptyThatMonth) {
    s.cur_date = QDate(2026, 3, 31);
    on_file({due("03/31/26", "23:50", "LATE", "Late"), due("03/31/26", "23:58", "B", "Second"),
             due("03/31/26", "23:59", "C", "Third")});
    // Row 1 moved into April stands first; March's rows follow it.
    s.rmdr_row(1)->rmdr_date = QStringLiteral("04/01/26");
    ASSERT_EQ(save_rmdrs(s, rewrite_mode, s.cal_path), 0);
    EXPECT_EQ(flags("r2603.rmd"), (QStringList{"F Second", "F Third"}));
    EXPECT_EQ(flags("r2604.rmd"), QStringList{"F Late"});
}

TEST_F(Dispatch, WritingBackTwiceAddsAMovedRowOnlyOnce) {
    s.cur_date = QDate(2026, 3, 31);
    on_file({due("03/31/26", "23:50", "LATE", "Late")});
    s.rmdr_row(1)->rmdr_date = QStringLiteral("04/01/26");
    ASSERT_EQ(save_rmdrs(s, rewrite_mode, s.cal_path), 0);
    s.rmdr_row(1)->rmdr_fired = QStringLiteral("T");
    ASSERT_EQ(save_rmdrs(s, rewrite_mode, s.cal_path), 0);
    EXPECT_EQ(flags("r2604.rmd"), QStringList{"T Late"});
}

TEST_F(Dispatch, MonthWithNoRowLeftIsNotTouched) {
    s.cur_date = QDate(2026, 3, 15);
    on_file({due("02/10/26", "10:00", "FEB", "February"), due("03/15/26", "08:00", "A")});
    const QStringList before = member_lines("r2602.rmd");
    s.rmdr_count = 1;
    *s.rmdr_row(1) = due("03/15/26", "08:00", "A");
    s.rmdr_row(1)->rmdr_fired = QStringLiteral("T");
    ASSERT_EQ(save_rmdrs(s, rewrite_mode, s.cal_path), 0);
    EXPECT_EQ(member_lines("r2602.rmd"), before);
}

TEST_F(Dispatch, ArmedTwiceTheRowCountsThree) {
    on_file({due("03/15/26", "08:00", "A")});
    ReRmdrForm f;
    frmReRmdr_Load(f);
    s.note_row = 1;
    frmReRmdr_OK(s, s, f);
    frmReRmdr_OK(s, s, f);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_again_count.str(), "3 ");
    EXPECT_EQ(s.rmdr_row(1)->rmdr_time.str(), "08:02");
}

TEST_F(Dispatch, ArmedForFewerMinutesThanItWasLateItComesBackAtTheNextTick) {
    on_file({due("03/15/26", "08:00", "A")});
    at(QDate(2026, 3, 15), QTime(9, 0));
    env.m.forms["frmRemnote"] = [&] {
        s.note.Check1 = 1;
        Check1_Click(s);
    };
    env.m.forms["frmReRmdr"] = [&] {
        ReRmdrForm f;
        frmReRmdr_Load(f);
        frmReRmdr_OK(s, s, f);
    };
    Timer1_Timer(s, env.w);
    env.m.forms.clear();
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 2);
    EXPECT_EQ(flags("r2603.rmd"), QStringList{"T Dentist"});
}

TEST_F(Dispatch, CancelOfRemindAgainChangesNothing) {
    on_file({due("03/15/26", "08:00", "A")});
    env.m.forms["frmRemnote"] = [&] {
        s.note.Check1 = 1;
        Check1_Click(s); // frmReRmdr "closes" with nothing done
        EXPECT_EQ(s.note.Check1, 1);
    };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(flags("r2603.rmd"), QStringList{"T Dentist"});
    EXPECT_EQ(member_lines("r2603.rmd")[0].mid(269, 2), "1 ");
}

TEST_F(Dispatch, ClearingRemindMeAgainOpensNothing) {
    s.note.Check1 = 0;
    Check1_Click(s);
    EXPECT_EQ(forms("frmReRmdr"), 0);
}

TEST_F(Dispatch, RemindAgainListOffersOneToFiftyNineMinutesAndShowsOne) {
    ReRmdrForm f;
    frmReRmdr_Load(f);
    ASSERT_EQ(f.comboReRmdr.size(), 59);
    EXPECT_EQ(f.comboReRmdr.front(), "1");
    EXPECT_EQ(f.comboReRmdr.back(), "59");
    EXPECT_EQ(f.comboReRmdr[f.list_index], "1");
}

TEST_F(Dispatch, ClockJumpingSixHoursDeliversEveryPassedReminderAtTheFirstTick) {
    on_file({due("03/15/26", "10:00", "A", "Ten"), due("03/15/26", "13:30", "B", "Half past one"),
             due("03/15/26", "15:10", "C", "Ten past three"), due("03/15/26", "16:00", "D", "Four")});
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 0);
    at(QDate(2026, 3, 15), QTime(15, 10, 3)); // a machine asleep since 09:10
    RemNote seen;
    env.m.forms["frmRemnote"] = [&] { seen = s.note; };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(forms("frmRemnote"), 1);
    EXPECT_EQ(seen.gRmdr.Rows(), 4);
    EXPECT_EQ(flags("r2603.rmd"),
              (QStringList{"T Ten", "T Half past one", "T Ten past three", "F Four"}));
}

TEST_F(Dispatch, ClockJumpingTwoDaysRollsOverAndDeliversWhatPassed) {
    on_file({due("03/15/26", "22:00", "A", "Sunday night"), due("03/16/26", "12:00", "B", "Monday"),
             due("03/17/26", "09:00", "C", "Tuesday morning"),
             due("03/17/26", "18:00", "D", "Tuesday night")});
    at(QDate(2026, 3, 17), QTime(9, 10));
    Timer1_Timer(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 17));
    EXPECT_EQ(s.tick_date, QDate(2026, 3, 17));
    EXPECT_EQ(flags("r2603.rmd"), (QStringList{"T Sunday night", "T Monday", "T Tuesday morning",
                                               "F Tuesday night"}));
    EXPECT_EQ(forms("frmRemnote"), 1);
}

TEST_F(Dispatch, DeliveryIsPostedToTheDesktopWithEveryRow) {
    rmdr_rec a = due("03/15/26", "08:00", "A", "Dentist");
    a.rmdr_start = QStringLiteral("09:00");
    rmdr_rec b = due("03/15/26", "08:30", "B", "Garage");
    b.rmdr_start = QStringLiteral("09:30");
    on_file({a, b, due("03/15/26", "12:00", "C", "Lunch")});
    Timer1_Timer(s, env.w);
    ASSERT_EQ(desktop.posts.size(), 1u);
    const QString date = QLocale().toString(QDate(2026, 3, 15), QLocale::ShortFormat);
    EXPECT_EQ(desktop.posts[0].summary, QLocale().toString(QDate(2026, 3, 15), QLocale::LongFormat));
    EXPECT_EQ(desktop.posts[0].body,
              date + "   09:00 AM  Dentist\n" + date + "   09:30 AM  Garage");
}

TEST_F(Dispatch, NothingDueMeansNothingPosted) {
    on_file({due("03/15/26", "12:00", "C", "Lunch")});
    Timer1_Timer(s, env.w);
    EXPECT_TRUE(desktop.posts.empty());
    EXPECT_EQ(forms("frmAnimate"), 0);
}

TEST_F(Dispatch, ScanClearsThePreviewFlags) {
    s.preview_anim = s.preview_sound = true;
    Timer1_Timer(s, env.w);
    EXPECT_FALSE(s.preview_anim);
    EXPECT_FALSE(s.preview_sound);
}

TEST_F(Dispatch, SoundPreviewNoteHasOneSentenceRowAndNoRemindAgain) {
    s.preview_sound = true;
    s.note.gRmdr.set_extent(6000, 2000);
    frmRemnote_Load(s);
    EXPECT_EQ(s.note.caption, "Reminder Preview");
    ASSERT_EQ(s.note.gRmdr.Rows(), 2);
    EXPECT_EQ(s.note.gRmdr.TextMatrix(1, 1),
              " You can set an alarm to sound when this reminder pop-up is displayed!");
    EXPECT_FALSE(s.note.Check1_enabled);
}

TEST_F(Dispatch, MessengerPreviewSentenceKeepsItsDoubledAn) {
    s.preview_anim = true;
    frmRemnote_Load(s);
    EXPECT_EQ(s.note.caption, "Reminder Preview");
    EXPECT_EQ(s.note.gRmdr.TextMatrix(1, 1),
              " You can set an an animated messenger to play immediately before this reminder "
              "pop-up is displayed!");
    EXPECT_FALSE(s.note.Check1_enabled);
}

TEST_F(Dispatch, ExitAtElevenAtNightAsksForAnEightOClockReminderStillWaiting) {
    on_file({due("03/15/26", "08:00", "A")});
    at(QDate(2026, 3, 15), QTime(23, 0));
    env.m.answers.push_back(Answer::No);
    confirm_exit(s, s, s, s, env.w);
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text,
              "Pending reminders for the day will not be displayed if you exit now.\n"
              "(Use the Hide feature to remain active.)\n"
              "Do you still want to exit? ");
    EXPECT_TRUE(s.stay_open);
    EXPECT_EQ(env.w.ends, 0);
}

TEST_F(Dispatch, MidnightRollsTheDayPlannerOverToTheNewToday) {
    s.view_day = true;
    s.tick_date = QDate(2026, 3, 15);
    s.cur_date = QDate(2026, 2, 3); // the user was looking at another day
    env.add(env.entry("160900000001", "09:00", "10:00", "Monday's meeting"));
    at(QDate(2026, 3, 16), QTime(0, 0, 4));
    Timer1_Timer(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 16));
    EXPECT_EQ(s.tick_date, QDate(2026, 3, 16));
    EXPECT_EQ(s.cur_day, 16);
    EXPECT_EQ(env.w.long_date, long_date_label(QDate(2026, 3, 16)));
    EXPECT_EQ(s.Combo1.list_index, 2);
}

TEST_F(Dispatch, DateMovedBackwardsAlsoRollsOver) {
    s.view_day = true;
    s.tick_date = QDate(2026, 3, 15);
    at(QDate(2026, 3, 9), QTime(10, 0));
    Timer1_Timer(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 9));
    EXPECT_EQ(s.tick_date, QDate(2026, 3, 9));
}

TEST_F(Dispatch, SameDateDoesNotRollOver) {
    s.view_day = true;
    s.tick_date = QDate(2026, 3, 15);
    s.cur_date = QDate(2026, 2, 3);
    Timer1_Timer(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 2, 3));
}

TEST_F(Dispatch, KilledWhileTheNoteIsOpenTheRowIsStillWaitingAndComesAgainAfterTheNextStart) {
    on_file({due("03/15/26", "08:00", "A", "Dentist")});
    s.archive.close(s.cal_path);
    const QString app_path = s.app_path, cal = s.cal_path;
    const pid_t pid = fork();
    if (pid == 0) {
        // The program as it runs: the row delivered in memory, the note on the
        // screen, and then the end of the process before the note closes.
        AppState child;
        child.app_path = app_path;
        child.cal_path = cal;
        child.cur_date = QDate(2026, 3, 15);
        testing::ScriptedModal m;
        testing::ModalGuard guard{&m};
        m.forms["frmRemnote"] = [] { raise(SIGKILL); };
        if (load_rmdrs(child, child.cur_date, cal, 0) != 0) _exit(1);
        testing::FakeWindow w;
        Timer1_Timer(child, w);
        _exit(2);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    EXPECT_TRUE(testing::quick_check_ok(cal));

    // The next start reads it waiting and delivers it at its first tick.
    AppState next;
    next.app_path = app_path;
    next.cal_path = cal;
    next.cur_date = next.tick_date = QDate(2026, 3, 15);
    ASSERT_EQ(load_rmdrs(next, next.cur_date, cal, 0), 0);
    ASSERT_EQ(next.rmdr_count, 1);
    EXPECT_EQ(next.rmdr_row(1)->rmdr_fired.str(), "F");
    Timer1_Timer(next, env.w);
    EXPECT_EQ(forms("frmRemnote"), 1);
    s.archive.close(cal);
    EXPECT_EQ(flags("r2603.rmd"), QStringList{"T Dentist"});
}

// --- the delivery's sound ----------------------------------------------------

TEST_F(Dispatch, SoundStartsAfterTheMessengerAndPlaysBehindTheNote) {
    rmdr_rec r = due("03/15/26", "08:00", "A");
    r.rmdr_anim = QStringLiteral("2 ");
    r.rmdr_alarm_text = QStringLiteral("/home/me/ring.wav");
    on_file({r});
    QStringList order;
    env.m.forms["frmAnimate"] = [&] { order << "messenger, heard: " + speakers.calls.join(", "); };
    env.m.forms["frmRemnote"] = [&] { order << "note, heard: " + speakers.calls.join(", "); };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(order, (QStringList{"messenger, heard: ", "note, heard: wav /home/me/ring.wav"}));
}

TEST_F(Dispatch, UpperCaseMp3EndingPlaysThroughTheMp3Route) {
    rmdr_rec r = due("03/15/26", "08:00", "A");
    r.rmdr_alarm_text = QStringLiteral("/home/me/Music/Wake Up.MP3");
    on_file({r});
    Timer1_Timer(s, env.w);
    EXPECT_EQ(speakers.calls,
              (QStringList{"open /home/me/Music/Wake Up.MP3 MP3_Device1", "play MP3_Device1"}));
}

TEST_F(Dispatch, UnknownSoundEndingPlaysNothingAtDelivery) {
    rmdr_rec r = due("03/15/26", "08:00", "A");
    r.rmdr_alarm_text = QStringLiteral("/home/me/ring.ogg");
    on_file({r});
    Timer1_Timer(s, env.w);
    EXPECT_TRUE(speakers.calls.isEmpty());
    EXPECT_EQ(forms("frmRemnote"), 1);
}

TEST_F(Dispatch, ClosingTheNoteStopsWhatPlays) {
    rmdr_rec r = due("03/15/26", "08:00", "A");
    r.rmdr_alarm_text = QStringLiteral("/home/me/alarm.mp3");
    on_file({r});
    env.m.forms["frmRemnote"] = [&] { frmRemnote_OK(s); };
    Timer1_Timer(s, env.w);
    EXPECT_EQ(speakers.calls, (QStringList{"open /home/me/alarm.mp3 MP3_Device1", "play MP3_Device1",
                                           "stop", "close all"}));
}

TEST_F(Dispatch, SoundPreviewOfAnUnknownEndingGoesTheWavWay) {
    RemForm f;
    f.alarmTxt = QStringLiteral("/home/me/ring.ogg");
    prevwCmd_Click(s, f, 0);
    EXPECT_EQ(speakers.calls, QStringList{"wav /home/me/ring.ogg"});
    EXPECT_EQ(forms("frmRemnote"), 1);
}

TEST_F(Dispatch, SoundPreviewOfAnMp3GoesTheMp3Way) {
    RemForm f;
    f.alarmTxt = QStringLiteral("/home/me/ring.Mp3   ");
    prevwCmd_Click(s, f, 0);
    EXPECT_EQ(speakers.calls, (QStringList{"open /home/me/ring.Mp3 MP3_Device1", "play MP3_Device1"}));
}

} // namespace
} // namespace orva
