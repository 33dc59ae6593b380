// Bad files of every kind a disk, another program or a person can leave where
// the calendar should be, each opened through the program's real start-up in
// a real main window. Whatever the file, the program starts, says what it
// found, and leaves the file exactly as it was.
#include "core/clock.h"
#include "shell/file_commands.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"
#include "store/calendar_file.h"
#include "store/member_format.h"
#include "store/store_fixtures.h"
#include "support/io_shim.h"
#include "support/scripted_modal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <sqlite3.h>

namespace orva {
namespace {

const QDate today(2026, 11, 21);

QByteArray month_lines(int count = 3) {
    QByteArray out;
    for (int i = 0; i < count; ++i) {
        const QString id = QStringLiteral("2109%1001111").arg(i, 2, 10, QLatin1Char('0'));
        out += appt_line(
                   testing::make_appt(QStringLiteral("11212026"), id,
                                      QStringLiteral("%1:00").arg(9 + i, 2, 10, QLatin1Char('0')),
                                      QStringLiteral("Entry %1").arg(i))) +
               "\r\n";
    }
    return out;
}

void write_file(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

void sql(const QString& file, const char* statements) {
    testing::run_sql(file, statements);
}

// The stored (deflated) bytes of a member, and their replacement, behind the
// store's back.
QByteArray raw_data(const QString& file, const char* member) {
    sqlite3* db = nullptr;
    QByteArray out;
    sqlite3_open(QFile::encodeName(file).constData(), &db);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "SELECT data FROM sqlar WHERE name=?1", -1, &st, nullptr);
    sqlite3_bind_text(st, 1, member, -1, SQLITE_STATIC);
    if (sqlite3_step(st) == SQLITE_ROW)
        out = QByteArray(static_cast<const char*>(sqlite3_column_blob(st, 0)),
                         sqlite3_column_bytes(st, 0));
    sqlite3_finalize(st);
    sqlite3_close(db);
    return out;
}

void set_raw_data(const QString& file, const char* member, const QByteArray& data) {
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(file).constData(), &db);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "UPDATE sqlar SET data=?2 WHERE name=?1", -1, &st, nullptr);
    sqlite3_bind_text(st, 1, member, -1, SQLITE_STATIC);
    sqlite3_bind_blob(st, 2, data.constData(), int(data.size()), SQLITE_TRANSIENT);
    EXPECT_EQ(sqlite3_step(st), SQLITE_DONE);
    sqlite3_finalize(st);
    sqlite3_close(db);
}

// Puts a member through the store itself, so that its checksum matches what
// was put: the damage is in the lines, not on the disk.
void put_member(const QString& cal, const QString& member, const QByteArray& bytes) {
    Archive a;
    EXPECT_EQ(a.put(cal, member, bytes), 0);
    a.close(cal);
}

struct Kind {
    const char* name;
    // Prepares the folder; `make_calendar` leaves a sound calendar of the
    // day with three entries, as a run of the program left it.
    std::function<void(const QString& dir, const QString& cal,
                       const std::function<void()>& make_calendar)>
        prepare;
    // What the user is told, in order.
    std::function<std::vector<QString>(const QString& cal)> told;
    bool unreadable = false;
    int entries = -1; // the entries of the day that still show, where known
};

void PrintTo(const Kind& k, std::ostream* os) {
    *os << k.name;
}

std::vector<QString> refused(const QString& cal, int e) {
    return {refused_text(cal, e)};
}
std::vector<QString> damaged(const QString& cal) {
    return {damaged_member_text(cal, QStringLiteral("c2611.cal"))};
}
std::vector<QString> nothing(const QString&) {
    return {};
}
auto not_calendar = [](const QString& cal) { return refused(cal, err::not_calendar); };
auto damaged_file = [](const QString& cal) { return refused(cal, err::bad_file); };

void truncate_to(const QString& cal, qint64 size) {
    QFile f(cal);
    ASSERT_TRUE(f.resize(size));
}

// Lines with one field overwritten at a byte offset.
QByteArray with_field(QByteArray lines, int offset, const QByteArray& field) {
    lines.replace(offset, field.size(), field);
    return lines;
}

std::vector<Kind> kinds() {
    using Make = const std::function<void()>&;
    return {
        {"ZeroBytes", [](const QString&, const QString& cal, Make) { write_file(cal, {}); },
         not_calendar},
        {"TruncatedInsideTheHeader",
         [](const QString&, const QString& cal, Make make) {
             make();
             truncate_to(cal, 50);
         },
         damaged_file},
        {"TruncatedAfterTheFirstPage",
         [](const QString&, const QString& cal, Make make) {
             make();
             truncate_to(cal, 4096 + 100);
         },
         damaged_file},
        {"TruncatedToHalf",
         [](const QString&, const QString& cal, Make make) {
             make();
             truncate_to(cal, QFileInfo(cal).size() / 2);
         },
         damaged_file},
        {"TruncatedByOneByte",
         [](const QString&, const QString& cal, Make make) {
             make();
             truncate_to(cal, QFileInfo(cal).size() - 1);
         },
         damaged_file},
        {"TextFile",
         [](const QString&, const QString& cal, Make) {
             write_file(cal, "Dentist on Tuesday\nCall Bob\n");
         },
         not_calendar},
        {"Directory",
         [](const QString&, const QString& cal, Make) { ASSERT_TRUE(QDir().mkpath(cal)); },
         not_calendar},
        {"NoReadPermission", [](const QString&, const QString&, Make make) { make(); },
         [](const QString& cal) { return refused(cal, err::denied); }, true},
        {"ForeignSqliteDatabase",
         [](const QString&, const QString& cal, Make) {
             sql(cal, "CREATE TABLE songs(title TEXT); INSERT INTO songs VALUES('Blue Moon')");
         },
         not_calendar},
        {"ArchiveOfAnotherProgram",
         [](const QString&, const QString& cal, Make) {
             sql(cal, "PRAGMA application_id=1234; CREATE TABLE sqlar(name TEXT PRIMARY KEY, "
                      "mode INT, mtime INT, sz INT, data BLOB)");
         },
         not_calendar},
        {"ArchiveTableOfAnotherShape",
         [](const QString&, const QString& cal, Make) {
             sql(cal, "CREATE TABLE sqlar(name TEXT PRIMARY KEY, data BLOB); INSERT INTO sqlar "
                      "VALUES('c2611.cal', x'00')");
         },
         not_calendar},
        {"BitFlipsInAMembersData",
         [](const QString&, const QString& cal, Make make) {
             make();
             QByteArray d = raw_data(cal, "c2611.cal");
             ASSERT_GT(d.size(), 20);
             d[d.size() / 2] = char(d[d.size() / 2] ^ 0x10);
             d[d.size() / 3] = char(d[d.size() / 3] ^ 0x01);
             set_raw_data(cal, "c2611.cal", d);
         },
         damaged},
        {"BitFlipInAMembersChecksum",
         [](const QString&, const QString& cal, Make make) {
             make();
             sql(cal, "UPDATE sqlar SET crc = (crc | 4) - (crc & 4) WHERE name='c2611.cal'");
         },
         damaged},
        {"MemberWithoutItsData",
         [](const QString&, const QString& cal, Make make) {
             make();
             sql(cal, "UPDATE sqlar SET data = NULL WHERE name='c2611.cal'");
         },
         damaged},
        {"MemberWithAWrongSize",
         [](const QString&, const QString& cal, Make make) {
             make();
             sql(cal, "UPDATE sqlar SET sz = sz + 700 WHERE name='c2611.cal'");
         },
         damaged},
        {"TabInAStartField",
         [](const QString&, const QString& cal, Make make) {
             make();
             put_member(cal, "c2611.cal", with_field(month_lines(), 16, "\t9:00"));
         },
         nothing, false, 3},
        {"TabInADateField",
         [](const QString&, const QString& cal, Make make) {
             make();
             put_member(cal, "c2611.cal", with_field(month_lines(), 8, "11\t21026"));
         },
         damaged, false, 2},
        {"LastLineCutShort",
         [](const QString&, const QString& cal, Make make) {
             make();
             put_member(cal, "c2611.cal", month_lines().chopped(300));
         },
         damaged, false, 2},
        {"LineCutInTheMiddle",
         [](const QString&, const QString& cal, Make make) {
             make();
             QByteArray lines = month_lines(4);
             lines.remove(appt_line_width + 2 + 100, 37);
             put_member(cal, "c2611.cal", lines);
         },
         damaged},
        {"WrongLineWidths",
         [](const QString&, const QString& cal, Make make) {
             make();
             QByteArray lines = month_lines(4);
             lines.replace("\r\n", "   \r\n");
             put_member(cal, "c2611.cal", lines);
         },
         damaged},
        {"MemberOfTheWrongKind",
         [](const QString&, const QString& cal, Make make) {
             make();
             QByteArray rmdrs;
             for (int i = 0; i < 4; ++i)
                 rmdrs += rmdr_line(testing::make_rmdr(QStringLiteral("11/21/26"),
                                                       QStringLiteral("21090000111%1").arg(i))) +
                          "\r\n";
             put_member(cal, "c2611.cal", rmdrs);
         },
         damaged},
        {"BinaryMember",
         [](const QString&, const QString& cal, Make make) {
             make();
             QByteArray junk;
             for (int i = 0; i < 3000; ++i)
                 junk += char((i * 7919) % 256);
             put_member(cal, "c2611.cal", junk);
         },
         damaged},
        {"LockFileEmpty",
         [](const QString& dir, const QString&, Make make) {
             make();
             write_file(dir + QStringLiteral("/orvacal.lock"), {});
         },
         nothing, false, 3},
        {"LockFileGarbage",
         [](const QString& dir, const QString&, Make make) {
             make();
             write_file(dir + QStringLiteral("/orvacal.lock"), "\xff\xfe garbage \x01\x02\n\n");
         },
         nothing, false, 3},
        {"LockFileOfAProcessLongGone",
         [](const QString& dir, const QString&, Make make) {
             make();
             write_file(dir + QStringLiteral("/orvacal.lock"), "2147483646\nlocalhost\n");
         },
         nothing, false, 3},
    };
}

class DamagedFile : public ::testing::TestWithParam<Kind> {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
    }
    void TearDown() override { install_clock(nullptr); }

    QString cal() const { return dir.filePath(QStringLiteral("calendar.cal")); }

    struct Run {
        AppState state;
        std::unique_ptr<SingleInstance> instance;
        std::unique_ptr<frmCal> window;
        bool started = false;
    };
    std::unique_ptr<Run> launch() {
        auto run = std::make_unique<Run>();
        run->state.app_path = dir.path();
        run->instance = std::make_unique<SingleInstance>(dir.path());
        run->window = std::make_unique<frmCal>(run->state);
        run->started = run->window->start(*run->instance);
        return run;
    }

    // A calendar as a first run of the program leaves it, with three entries
    // today put in afterwards.
    void make_calendar() {
        { auto first = launch(); }
        put_member(cal(), QStringLiteral("c2611.cal"), month_lines());
        m.shown.clear();
    }

    // The file, or the folder's listing where the calendar is a folder.
    QByteArray state_of(const QString& path) const {
        if (QFileInfo(path).isDir())
            return QDir(path).entryList(QDir::AllEntries).join('|').toUtf8();
        return testing::file_bytes(path);
    }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(today, QTime(10, 0))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
};

TEST_P(DamagedFile, ProgramStartsSaysWhatItFoundAndLeavesTheFileAsItWas) {
    const Kind& kind = GetParam();
    kind.prepare(dir.path(), cal(), [this] { make_calendar(); });
    ASSERT_FALSE(HasFatalFailure());
    const bool existed = QFileInfo::exists(cal());
    const QByteArray before = state_of(cal());
    const QString backups = dir.filePath(QStringLiteral("backups"));
    const QByteArray backups_before = state_of(backups);

    testing::IoShim& io = testing::IoShim::install();
    if (kind.unreadable) io.set_unreadable_path(cal());
    {
        auto run = launch();
        EXPECT_TRUE(run->started) << "the program runs";
        EXPECT_EQ(m.messages(), kind.told(cal()));
        // The day planner shows, with whatever could be read.
        EXPECT_TRUE(run->state.view_day);
        if (kind.entries >= 0) {
            EXPECT_EQ(run->state.appt_count, kind.entries);
        }
        run->window->close();
    }
    io.set_unreadable_path(QString());

    EXPECT_EQ(QFileInfo::exists(cal()), existed);
    EXPECT_EQ(state_of(cal()), before) << "the file changed";
    EXPECT_EQ(state_of(backups), backups_before)
        << "nothing was changed, so nothing needed keeping";
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedFile, ::testing::ValuesIn(kinds()),
                         [](const ::testing::TestParamInfo<Kind>& i) {
                             return std::string(i.param.name);
                         });

} // namespace
} // namespace orva
