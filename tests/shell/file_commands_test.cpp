#include "shell/file_commands.h"

#include "store/calendar_file.h"
#include "store/member_format.h"
#include "store/store_fixtures.h"
#include "support/io_shim.h"
#include "support/scripted_modal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace orva;
using orva::testing::make_appt;
using orva::testing::make_rmdr;
using orva::testing::ModalGuard;
using orva::testing::ScriptedModal;

// The File commands.

namespace {

struct FileCommands : ::testing::Test {
    std::unique_ptr<orva::testing::StoreEnv> env = std::make_unique<orva::testing::StoreEnv>();
    Shared& s = env->s;
    QString& cal = env->cal;
    ScriptedModal m;
    ModalGuard guard{&m};
    CalendarHooks hooks;
    QStringList calls;
    bool delete_enabled = false;

    void SetUp() override {
        hooks.shown_month = [] { return QDate(2026, 5, 1); };
        hooks.load_options = [this] { calls << "load_options"; };
        hooks.reset_counters = [this] { calls << "reset_counters"; };
        hooks.rebuild_view = [this] { calls << "rebuild_view"; };
        hooks.enable_delete = [this](bool on) {
            delete_enabled = on;
            calls << (on ? "enable_delete" : "disable_delete");
        };
        s.cal_path.clear();
    }
};

} // namespace

TEST_F(FileCommands, NewShowsASaveDialogForCalFiles) {
    new_calendar(s, hooks);
    ASSERT_NE(m.last(u"save"), nullptr);
    EXPECT_EQ(m.last(u"save")->text, QString("cal Files (*.cal)|*.cal"));
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(FileCommands, NewRefusesAnotherExtension) {
    m.file_answers.push_back(env->dir.filePath("work.txt"));
    new_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QString("Only files with .CAL extension are allowed"));
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Information);
    EXPECT_FALSE(QFile::exists(env->dir.filePath("work.txt")));
}

TEST_F(FileCommands, NewAcceptsUpperCaseExtension) {
    const QString chosen = env->dir.filePath("WORK.CAL");
    m.file_answers.push_back(chosen);
    new_calendar(s, hooks);
    EXPECT_TRUE(m.messages().empty());
    EXPECT_EQ(s.cal_path, chosen);
}

TEST_F(FileCommands, NewMakesAnArchiveWithTheStubOfTheShownMonth) {
    const QString chosen = env->dir.filePath("work.cal");
    m.file_answers.push_back(chosen);
    s.appt_count = 2;
    *s.appt_row(1) = make_appt("03012026", "OLD");
    s.day_tbl[1].day_time = QString("09:00");
    s.cur_date = QDate(2020, 1, 1);
    new_calendar(s, hooks);

    Archive other;
    EXPECT_EQ(other.members(chosen), QStringList{"work2605.cal"});
    QByteArray stub("junk");
    EXPECT_EQ(other.get(chosen, "work2605.cal", stub), 0);
    EXPECT_TRUE(stub.isEmpty());
    EXPECT_EQ(s.cal_path, chosen);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
    EXPECT_TRUE(delete_enabled);
    EXPECT_EQ(calls, QStringList({"enable_delete", "reset_counters", "rebuild_view"}));
    EXPECT_EQ(s.day_tbl[1].day_time.str(), QString("40404"));
    EXPECT_TRUE(s.appt_row(1)->appt_id.is_blank());
    EXPECT_EQ(s.appt_count, 2) << "the count stays as it was";
    EXPECT_EQ(env->loose_files(), QStringList());
    EXPECT_FALSE(QFile::exists(env->dir.filePath("work2605.cal")));
}

TEST_F(FileCommands, NewOnAnArchiveThatHasTheStubSaysItExists) {
    const QString chosen = env->dir.filePath("work.cal");
    ASSERT_EQ(s.archive.put(chosen, "work2605.cal", {}), 0);
    s.cal_path = cal;
    m.file_answers.push_back(chosen);
    new_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "Cannot create new Calendar  ' " + chosen + "  '  already exists! ");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_EQ(s.cal_path, cal);
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_FALSE(QFile::exists(env->dir.filePath("work2605.cal")));
}

TEST_F(FileCommands, NewOnAnArchiveLackingTheStubAddsItAndOpensIt) {
    const QString chosen = env->dir.filePath("work.cal");
    ASSERT_EQ(s.archive.put(chosen, "work2604.cal", {}), 0);
    ASSERT_EQ(s.archive.put(chosen, "c2604.cal", appt_line(make_appt("04012026", "KEPT")) + "\r\n"),
              0);
    m.file_answers.push_back(chosen);
    new_calendar(s, hooks);
    EXPECT_TRUE(m.messages().empty());
    EXPECT_EQ(s.archive.members(chosen),
              QStringList({"c2604.cal", "work2604.cal", "work2605.cal"}));
    EXPECT_EQ(s.cal_path, chosen);
}

TEST_F(FileCommands, NewWithoutHooksStillMakesTheCalendar) {
    const QString chosen = env->dir.filePath("bare.cal");
    m.file_answers.push_back(chosen);
    new_calendar(s, CalendarHooks{});
    EXPECT_EQ(s.archive.members(chosen), QStringList{"bare2603.cal"});
    EXPECT_EQ(s.cal_path, chosen);
}

TEST_F(FileCommands, NewThatCannotBeWrittenLeavesNoFileAndKeepsTheOpenCalendar) {
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    ASSERT_EQ(load_appts(s, s.cur_date, cal, 0), 0);
    delete_enabled = true;
    const QString chosen = env->dir.filePath("work.cal");
    m.file_answers.push_back(chosen);
    // The rebuild's options save is where the command fails.
    hooks.rebuild_view = [this] {
        calls << "rebuild_view";
        Archive::Command inner(s.archive, s.cal_path);
        inner.abort(61);
    };
    new_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "Couldn't create new Calendar  ' " + chosen +
                                   "  '.  Nothing was saved.  Error Number : 61");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_FALSE(QFile::exists(chosen));
    EXPECT_EQ(env->loose_files(), QStringList());
    EXPECT_EQ(s.cal_path, cal);
    EXPECT_TRUE(delete_enabled);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_id.trimmed(), QString("A1"));
}

TEST_F(FileCommands, OpenOfACalendarThatCannotBeWrittenSaysSoOnce) {
    const QString other = env->dir.filePath("other.cal");
    ASSERT_EQ(s.archive.put(other, "c2603.cal", appt_line(make_appt("03202026", "THERE")) + "\r\n"),
              0);
    s.archive.close(other);
    orva::testing::IoShim& io = orva::testing::IoShim::install();
    io.set_read_only_path(other);
    s.cal_path = cal;
    m.file_answers.push_back(other);
    open_calendar(s, hooks);
    io.set_read_only_path(QString());
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0],
              "The Calendar " + other + " cannot be written.  Changes you make will not be saved.");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_TRUE(s.cal_read_only);
    ASSERT_EQ(s.appt_count, 1) << "it still opens to be read";
}

TEST_F(FileCommands, DeleteThatCannotRemoveTheFileSaysSoAndKeepsTheCalendar) {
    // A folder where the calendar should be cannot be removed as a file.
    const QString odd = env->dir.filePath("odd.cal");
    ASSERT_TRUE(QDir().mkpath(odd + "/inside"));
    s.cal_path = odd;
    delete_enabled = true;
    m.answers.push_back(Answer::Yes);
    delete_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "Couldn't delete the Calendar - " + odd);
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(s.cal_path, odd);
    EXPECT_TRUE(delete_enabled);
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(FileCommands, OpenShowsAnOpenDialogForCalFiles) {
    open_calendar(s, hooks);
    ASSERT_NE(m.last(u"open"), nullptr);
    EXPECT_EQ(m.last(u"open")->text, QString("cal Files (*.CAL)|*.cal"));
}

TEST_F(FileCommands, OpeningTheCalendarAlreadyOpenIsRefused) {
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    m.file_answers.push_back(cal);
    open_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QString("Calendar  already open "));
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(s.appt_count, 0);
}

TEST_F(FileCommands, OpeningAVanishedPathLeavesTheOldCalendar) {
    s.cal_path = cal;
    const QString gone = env->dir.filePath("gone.cal");
    m.file_answers.push_back(gone);
    open_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], gone + "\n" + " doesn't exist.  Check specified path and name.");
    EXPECT_EQ(s.cal_path, cal);
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_FALSE(QFile::exists(gone));
}

TEST_F(FileCommands, OpenLoadsTheMonthAndItsRemindersOfToday) {
    const QString other = env->dir.filePath("other.cal");
    ASSERT_EQ(s.archive.put(other, "c2603.cal", appt_line(make_appt("03202026", "THERE")) + "\r\n"),
              0);
    ASSERT_EQ(s.archive.put(other, "r2601.rmd", rmdr_line(make_rmdr("01/20/26", "OLD")) + "\r\n"),
              0);
    s.cal_path = cal;
    s.cur_date = QDate(2025, 7, 1);
    m.file_answers.push_back(other);
    open_calendar(s, hooks);
    EXPECT_TRUE(m.messages().empty());
    EXPECT_EQ(s.cal_path, other);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_id.trimmed(), QString("THERE"));
    EXPECT_EQ(s.day_tbl[20].day_index.str(), QString("1 "));
    ASSERT_EQ(s.rmdr_count, 1);
    EXPECT_EQ(calls,
              QStringList({"load_options", "reset_counters", "enable_delete", "rebuild_view"}));
}

TEST_F(FileCommands, DeleteWithoutACalendarTellsToOpenOne) {
    delete_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QString("You must Open a Calendar before you can delete"));
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_EQ(m.last(u"question"), nullptr);
}

TEST_F(FileCommands, DeleteAnsweredNoKeepsTheCalendar) {
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    m.answers.push_back(Answer::No);
    delete_calendar(s, hooks);
    ASSERT_NE(m.last(u"question"), nullptr);
    EXPECT_EQ(m.last(u"question")->text,
              "This will delete the current Calendar - " + cal + ".  OK?");
    EXPECT_TRUE(QFile::exists(cal));
    EXPECT_EQ(s.cal_path, cal);
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(FileCommands, AfterDeleteTheCalendarIsGoneAndDeleteStaysDisabled) {
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    delete_enabled = true;
    m.answers.push_back(Answer::Yes);
    delete_calendar(s, hooks);

    EXPECT_FALSE(QFile::exists(cal));
    EXPECT_TRUE(s.cal_path.isEmpty());
    EXPECT_FALSE(delete_enabled);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_TRUE(s.appt_row(1)->appt_id.is_blank());
    EXPECT_EQ(s.day_tbl[1].day_time.str(), QString("40404"));
    EXPECT_EQ(calls, QStringList({"disable_delete", "reset_counters", "rebuild_view"}));

    calls.clear();
    delete_calendar(s, hooks);
    EXPECT_EQ(m.messages().back(), QString("You must Open a Calendar before you can delete"));
    EXPECT_FALSE(delete_enabled);
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(FileCommands, DeleteStaysDisabledUntilACalendarIsMade) {
    s.cal_path = cal;
    env->append_appt(make_appt("03012026", "A1"));
    m.answers.push_back(Answer::Yes);
    delete_calendar(s, hooks);
    EXPECT_FALSE(delete_enabled);
    m.file_answers.push_back(env->dir.filePath("fresh.cal"));
    new_calendar(s, hooks);
    EXPECT_TRUE(delete_enabled);
}

TEST_F(FileCommands, DeletedCalendarDoesNotComeBackThroughALaterLoad) {
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    m.answers.push_back(Answer::Yes);
    delete_calendar(s, hooks);
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_FALSE(QFile::exists(cal));
}

namespace {

// HOME and XDG_DATA_HOME pointed into a folder of the test for its life, so
// that the desktop's trash is one the test can look into.
struct TrashHome {
    QByteArray old_home = qgetenv("HOME"), old_data = qgetenv("XDG_DATA_HOME");
    QString data;
    explicit TrashHome(const QString& home) : data(home + "/.local/share") {
        QDir().mkpath(data);
        qputenv("HOME", home.toUtf8());
        qputenv("XDG_DATA_HOME", data.toUtf8());
    }
    ~TrashHome() {
        qputenv("HOME", old_home);
        qputenv("XDG_DATA_HOME", old_data);
    }
};

} // namespace

TEST_F(FileCommands, DeleteMovesTheCalendarToTheTrashWhereItStillOpens) {
    TrashHome home(env->dir.path());
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    m.answers.push_back(Answer::Yes);
    delete_calendar(s, hooks);
    EXPECT_FALSE(QFile::exists(cal));
    EXPECT_TRUE(m.messages().empty());
    const QString trashed = home.data + "/Trash/files/" + QFileInfo(cal).fileName();
    ASSERT_TRUE(QFile::exists(trashed));
    EXPECT_TRUE(
        QFile::exists(home.data + "/Trash/info/" + QFileInfo(cal).fileName() + ".trashinfo"));
    Archive a;
    QByteArray member;
    EXPECT_EQ(a.get(trashed, "c2603.cal", member), 0);
    EXPECT_TRUE(member.contains("A1"));
    a.close(trashed);
}

TEST_F(FileCommands, OpenRefusesAForeignDatabaseLeavesItAsItWasAndKeepsTheOpenCalendar) {
    env->append_appt(make_appt("03012026", "A1"));
    s.cal_path = cal;
    const QString foreign = env->dir.filePath("songs.cal");
    orva::testing::run_sql(foreign, "CREATE TABLE songs(title TEXT)");
    const QByteArray before = orva::testing::file_bytes(foreign);
    m.file_answers.push_back(foreign);
    open_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "The file " + foreign +
                                   " is not an Orva Calendar and was not opened.  It has not "
                                   "been changed.  Open another Calendar or make a new one "
                                   "from the File menu.");
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(s.cal_path, cal);
    EXPECT_TRUE(calls.isEmpty());
    s.archive.close(foreign);
    EXPECT_EQ(orva::testing::file_bytes(foreign), before);
}

TEST_F(FileCommands, OpenRefusesATextFileAndLeavesItAsItWas) {
    s.cal_path = cal;
    const QString text = env->dir.filePath("notes.cal");
    {
        QFile f(text);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("Shopping: milk, bread, eggs\n");
    }
    m.file_answers.push_back(text);
    open_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_TRUE(m.messages()[0].contains(" is not an Orva Calendar and was not opened."));
    EXPECT_EQ(orva::testing::file_bytes(text), QByteArray("Shopping: milk, bread, eggs\n"));
    EXPECT_EQ(s.cal_path, cal);
}

TEST_F(FileCommands, OpeningACalendarWithADamagedMemberShowsWhatCanBeReadAndTellsOnce) {
    const QString other = env->dir.filePath("other.cal");
    ASSERT_EQ(s.archive.put(other, "c2603.cal", appt_line(make_appt("03202026", "THERE")) + "\r\n"),
              0);
    s.archive.close(other);
    // One bit of the stored checksum turned: the bytes no longer match it.
    orva::testing::run_sql(other,
                           "UPDATE sqlar SET crc = (crc | 1) - (crc & 1) WHERE name='c2603.cal'");
    s.cal_path = cal;
    s.cur_date = QDate(2025, 7, 1);
    m.file_answers.push_back(other);
    open_calendar(s, hooks);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], "The Calendar " + other +
                                   " has a damaged part, c2603.cal.  What could be read of it "
                                   "is shown; it is not written over until you change that "
                                   "month.");
    EXPECT_EQ(s.cal_path, other);
    ASSERT_EQ(s.appt_count, 1);
    report_store_notices(s);
    EXPECT_EQ(m.messages().size(), 1u) << "told once";
}
