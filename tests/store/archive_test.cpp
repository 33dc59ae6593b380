#include "store/archive.h"

#include "store_fixtures.h"
#include "support/io_shim.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace orva;

namespace {

struct SqliteArchive : ::testing::Test {
    QTemporaryDir dir;
    QString cal = dir.filePath("work.cal");
    Archive a;

    QString write_loose(const QString& name, const QByteArray& bytes) {
        const QString p = dir.filePath(name);
        QFile f(p);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(bytes);
        return p;
    }
    static QByteArray read(const QString& p) {
        QFile f(p);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }
};

// Runs one statement on its own connection and returns the first column of
// every row.
QStringList query(const QString& file, const char* sql) {
    QStringList out;
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(file).constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_busy_timeout(db, 2000);
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) == SQLITE_OK)
        while (sqlite3_step(st) == SQLITE_ROW)
            out << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    sqlite3_close(db);
    return out;
}

} // namespace

TEST_F(SqliteArchive, PutCreatesTheArchiveWithTheSqlarTable) {
    EXPECT_EQ(a.put(cal, "c2603.cal", "line\r\n"), 0);
    ASSERT_TRUE(QFile::exists(cal));
    EXPECT_EQ(query(cal, "SELECT name || ' ' || type || ' ' || pk FROM pragma_table_info('sqlar')"),
              QStringList({"name TEXT 1", "mode INT 0", "mtime INT 0", "sz INT 0", "data BLOB 0",
                           "crc INT 0"}));
    EXPECT_EQ(query(cal, "PRAGMA application_id"), QStringList{QString::number(0x4F525641)});
    EXPECT_EQ(query(cal, "SELECT name FROM sqlar"), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, MembersAreStoredDeflatedWithTheirOriginalSize) {
    const QByteArray bytes =
        QByteArray("0315202603152026 Dentist").leftJustified(475, ' ').repeated(40);
    ASSERT_EQ(a.put(cal, "c2603.cal", bytes), 0);
    const QStringList row = query(cal, "SELECT sz || ' ' || length(data) || ' ' || mode FROM sqlar")
                                .value(0)
                                .split(' ');
    ASSERT_EQ(row.size(), 3);
    EXPECT_EQ(row[0], QString::number(bytes.size()));
    EXPECT_LT(row[1].toInt(), bytes.size() / 10) << "blank-padded lines deflate many times";
    EXPECT_EQ(row[2], "33188");
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, bytes);
}

TEST_F(SqliteArchive, MemberThatDoesNotDeflateIsStoredAsItStands) {
    const QByteArray bytes = "x";
    ASSERT_EQ(a.put(cal, "c2603.cal", bytes), 0);
    EXPECT_EQ(query(cal, "SELECT sz || ' ' || length(data) FROM sqlar"), QStringList{"1 1"});
}

TEST_F(SqliteArchive, EmptyMemberIsAZeroLengthBlobNotNull) {
    ASSERT_EQ(a.put(cal, "work2603.cal", {}), 0);
    EXPECT_EQ(query(cal, "SELECT typeof(data) || ' ' || sz FROM sqlar"), QStringList{"blob 0"});
    QByteArray got("junk");
    EXPECT_EQ(a.get(cal, "work2603.cal", got), 0);
    EXPECT_TRUE(got.isEmpty());
}

TEST_F(SqliteArchive, GetFromAMissingArchiveGives53AndCreatesNothing) {
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
    EXPECT_EQ(a.error(), 53);
    EXPECT_FALSE(QFile::exists(cal));
}

TEST_F(SqliteArchive, GetOfAMissingMemberGives53) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
    QByteArray got("junk");
    EXPECT_EQ(a.get(cal, "c2604.cal", got), 53);
    EXPECT_TRUE(got.isEmpty());
}

TEST_F(SqliteArchive, ErrorStaysUntilCleared) {
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
    ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
    EXPECT_EQ(a.error(), 53);
    a.clear_error();
    EXPECT_EQ(a.error(), 0);
}

TEST_F(SqliteArchive, PutReplacesAMemberOfTheSameName) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "old"), 0);
    ASSERT_EQ(a.put(cal, "c2603.cal", "new"), 0);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "new");
    EXPECT_EQ(a.members(cal), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, PutWithNoFileNameGives52) {
    EXPECT_EQ(a.put(QString(), "c2603.cal", "x"), 52);
}

TEST_F(SqliteArchive, DropDeletesTheMember) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
    ASSERT_EQ(a.put(cal, "r2603.rmd", "y"), 0);
    EXPECT_EQ(a.drop(cal, "c2603.cal"), 0);
    EXPECT_EQ(a.members(cal), QStringList{"r2603.rmd"});
}

TEST_F(SqliteArchive, DropOfAMissingMemberGives53) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
    EXPECT_EQ(a.drop(cal, "c2604.cal"), 53);
    EXPECT_EQ(a.drop(dir.filePath("none.cal"), "c2603.cal"), 53);
    EXPECT_FALSE(QFile::exists(dir.filePath("none.cal")));
}

TEST_F(SqliteArchive, FileThatIsNoArchiveGives321AndIsLeftAlone) {
    write_loose("work.cal", QByteArray("this is a letter, not a calendar\n").repeated(200));
    const QByteArray before = read(cal);
    EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 321);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 321);
    {
        Archive::Command cmd(a, cal);
        EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 321) << "a command on it refuses every write";
        EXPECT_EQ(cmd.finish(), 321);
    }
    EXPECT_EQ(read(cal), before);
}

TEST_F(SqliteArchive, DamagedArchiveFailsQuickCheckWith75) {
    // Bytes that do not deflate, so the member spans several pages.
    QByteArray noise(20000, '\0');
    for (int i = 0; i < noise.size(); ++i)
        noise[i] = char((i * 7919 + i / 13) & 0xFF);
    ASSERT_EQ(a.put(cal, "c2603.cal", noise), 0);
    a.close(cal);
    QByteArray bytes = read(cal);
    // Scribble over the second page, the root of the member table's b-tree.
    const int page = 4096;
    ASSERT_GT(bytes.size(), 2 * page);
    for (int i = page; i < 2 * page; ++i)
        bytes[i] = char(0xA5);
    write_loose("work.cal", bytes);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 75);
}

TEST_F(SqliteArchive, DeletedFileIsNotReadThroughTheCachedConnection) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
    QFile::remove(cal);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
    EXPECT_FALSE(QFile::exists(cal));
}

TEST_F(SqliteArchive, CommandKeepsItsWritesFromOthersUntilItEnds) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    Archive other;
    QByteArray got;
    {
        Archive::Command cmd(a, cal);
        EXPECT_EQ(a.put(cal, "c2603.cal", "during"), 0);
        EXPECT_EQ(a.put(cal, "c2604.cal", "new"), 0);
        EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
        EXPECT_EQ(got, "before");
        EXPECT_EQ(other.get(cal, "c2604.cal", got), 53);
        EXPECT_EQ(cmd.finish(), 0);
    }
    EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "during");
    EXPECT_EQ(other.get(cal, "c2604.cal", got), 0);
}

TEST_F(SqliteArchive, CommandReadsBackWhatItHasWrittenAndDropped) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    ASSERT_EQ(a.put(cal, "c2605.cal", "old"), 0);
    Archive::Command cmd(a, cal);
    ASSERT_EQ(a.put(cal, "c2603.cal", "during"), 0);
    ASSERT_EQ(a.put(cal, "c2604.cal", "new"), 0);
    ASSERT_EQ(a.drop(cal, "c2605.cal"), 0);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "during");
    EXPECT_EQ(a.get(cal, "c2605.cal", got), 53);
    EXPECT_EQ(a.drop(cal, "c2605.cal"), 53);
    EXPECT_EQ(a.members(cal), QStringList({"c2603.cal", "c2604.cal"}));
    EXPECT_EQ(cmd.finish(), 0);
}

TEST_F(SqliteArchive, NestedCommandJoinsTheOuterTransaction) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    Archive other;
    QByteArray got;
    {
        Archive::Command outer(a, cal);
        {
            Archive::Command inner(a, cal);
            ASSERT_EQ(a.put(cal, "c2603.cal", "inner"), 0);
            EXPECT_EQ(inner.finish(), 0);
        }
        EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
        EXPECT_EQ(got, "before") << "the inner command must not commit on its own";
        EXPECT_EQ(outer.finish(), 0);
    }
    EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "inner");
}

TEST_F(SqliteArchive, AbortedCommandLeavesTheFileByteForByte) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    a.close(cal);
    const QByteArray file_before = read(cal);
    {
        Archive::Command cmd(a, cal);
        ASSERT_EQ(a.put(cal, "c2603.cal", "during"), 0);
        ASSERT_EQ(a.put(cal, "c2604.cal", "new"), 0);
        cmd.abort(57);
        EXPECT_EQ(a.put(cal, "c2605.cal", "later"), 57) << "a failed command refuses writes";
        EXPECT_EQ(a.command_error(cal), 57);
        EXPECT_EQ(cmd.finish(), 57);
    }
    EXPECT_EQ(a.command_error(cal), 0);
    a.close(cal);
    EXPECT_EQ(read(cal), file_before);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "before");
    EXPECT_EQ(a.members(cal), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, FailedInnerCommandFailsTheOuterOne) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    Archive::Command outer(a, cal);
    {
        Archive::Command inner(a, cal);
        ASSERT_EQ(a.put(cal, "c2603.cal", "inner"), 0);
        inner.abort(61);
        EXPECT_EQ(inner.finish(), 61);
    }
    EXPECT_EQ(a.put(cal, "c2604.cal", "x"), 61);
    EXPECT_EQ(outer.finish(), 61);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "before");
}

TEST_F(SqliteArchive, FailedCommandRemovesTheFileItCreated) {
    {
        Archive::Command cmd(a, cal);
        ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
        cmd.abort(61);
        EXPECT_EQ(cmd.finish(), 61);
    }
    EXPECT_FALSE(QFile::exists(cal));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());
}

TEST_F(SqliteArchive, CommandOnAMissingFileCreatesItOnlyWhenAMemberIsAdded) {
    {
        Archive::Command cmd(a, cal);
        QByteArray got;
        EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
        EXPECT_EQ(cmd.finish(), 0);
    }
    EXPECT_FALSE(QFile::exists(cal));
    {
        Archive::Command cmd(a, cal);
        ASSERT_EQ(a.put(cal, "c2603.cal", "x"), 0);
        EXPECT_EQ(cmd.finish(), 0);
    }
    Archive other;
    EXPECT_EQ(other.members(cal), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, CommandThatFindsTheWriteLockTakenFailsWholeAfterTheTimeout) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open_v2(QFile::encodeName(cal).constData(), &holder, SQLITE_OPEN_READWRITE,
                              nullptr),
              SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    a.set_busy_timeout_ms(50);
    {
        Archive::Command cmd(a, cal);
        EXPECT_EQ(a.put(cal, "c2603.cal", "during"), 70);
        EXPECT_EQ(a.put(cal, "c2604.cal", "new"), 70);
        EXPECT_EQ(cmd.finish(), 70);
    }
    sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(holder);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "before");
    EXPECT_EQ(a.members(cal), QStringList{"c2603.cal"}) << "no part of it was written";
}

TEST_F(SqliteArchive, FileOpenedReadOnlyIsFoundUnwritable) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    EXPECT_EQ(a.check_writable(cal), 0);
    a.close(cal);
    orva::testing::IoShim& io = orva::testing::IoShim::install();
    io.set_read_only_path(cal);
    Archive ro;
    EXPECT_EQ(ro.check_writable(cal), 70);
    {
        Archive::Command cmd(ro, cal);
        EXPECT_EQ(ro.put(cal, "c2603.cal", "during"), 70);
        EXPECT_EQ(cmd.finish(), 70);
    }
    QByteArray got;
    EXPECT_EQ(ro.get(cal, "c2603.cal", got), 0) << "reading still works";
    EXPECT_EQ(got, "before");
    io.set_read_only_path(QString());
}

TEST_F(SqliteArchive, MissingFileInAWritableFolderIsWritable) {
    EXPECT_EQ(a.check_writable(cal), 0);
    EXPECT_FALSE(QFile::exists(cal));
    EXPECT_EQ(a.check_writable(QString()), 52);
}

TEST_F(SqliteArchive, AfterWriteHookRunsOnlyInsideACommand) {
    QStringList seen;
    a.set_after_write_hook([&](const QString& m) { seen << m; });
    ASSERT_EQ(a.put(cal, "c2601.cal", "x"), 0);
    EXPECT_EQ(seen, QStringList{"c2601.cal"});
    seen.clear();
    {
        Archive::Command cmd(a, cal);
        ASSERT_EQ(a.put(cal, "c2602.cal", "x"), 0);
        ASSERT_EQ(a.drop(cal, "c2601.cal"), 0);
        EXPECT_TRUE(seen.isEmpty()) << "held in memory until the command finishes";
        EXPECT_EQ(cmd.finish(), 0);
    }
    EXPECT_EQ(seen, QStringList({"c2601.cal", "c2602.cal"}));
}

TEST_F(SqliteArchive, CloseDropsAnOpenCommandsWrites) {
    ASSERT_EQ(a.put(cal, "c2603.cal", "before"), 0);
    {
        Archive::Command cmd(a, cal);
        ASSERT_EQ(a.put(cal, "c2603.cal", "during"), 0);
        a.close(cal);
        cmd.abort(57);
    }
    Archive other;
    QByteArray got;
    EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "before");
}

TEST_F(SqliteArchive, SqliteShellListsAndExtractsTheMembers) {
    const QString shell = QStandardPaths::findExecutable("sqlite3");
    if (shell.isEmpty()) GTEST_SKIP() << "no sqlite3 shell on this machine";
    const QByteArray month = QByteArray("appointments").leftJustified(475, ' ').repeated(30);
    ASSERT_EQ(a.put(cal, "c2603.cal", month), 0);
    ASSERT_EQ(a.put(cal, "r2603.rmd", "reminders\r\n"), 0);
    a.close(cal);

    QProcess list;
    list.start(shell, {cal, "-At"});
    ASSERT_TRUE(list.waitForFinished(10000));
    EXPECT_EQ(QString::fromUtf8(list.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts),
              QStringList({"c2603.cal", "r2603.rmd"}));

    QTemporaryDir out;
    QProcess extract;
    extract.setWorkingDirectory(out.path());
    extract.start(shell, {cal, "-Ax"});
    ASSERT_TRUE(extract.waitForFinished(10000));
    EXPECT_EQ(read(out.filePath("c2603.cal")), month) << "a deflated member extracts whole";
}

TEST_F(SqliteArchive, MemberCompressedBySqliteShellIsReadable) {
    const QString shell = QStandardPaths::findExecutable("sqlite3");
    if (shell.isEmpty()) GTEST_SKIP() << "no sqlite3 shell on this machine";
    QTemporaryDir in;
    QFile f(in.filePath("c2603.cal"));
    f.open(QIODevice::WriteOnly);
    const QByteArray bytes = QByteArray("0315202603152026").repeated(100);
    f.write(bytes);
    f.close();
    QProcess add;
    add.setWorkingDirectory(in.path());
    add.start(shell, {cal, "-Ac", "c2603.cal"});
    ASSERT_TRUE(add.waitForFinished(10000));
    if (query(cal, "SELECT sz = length(data) FROM sqlar") != QStringList{"0"})
        GTEST_SKIP() << "this sqlite3 shell stores members uncompressed";
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, bytes);
}

TEST_F(SqliteArchive, CalendarBeingMadeByAnotherConnectionIsSeenOnceItIsCommitted) {
    Archive writer;
    QStringList seen_during;
    writer.set_after_write_hook([&](const QString&) { seen_during = a.members(cal); });
    {
        Archive::Command cmd(writer, cal);
        ASSERT_EQ(writer.put(cal, "Calopt.tmp", "x"), 0);
        ASSERT_EQ(cmd.finish(), 0);
    }
    EXPECT_EQ(seen_during, QStringList()) << "nothing committed yet";
    EXPECT_EQ(a.members(cal), QStringList{"Calopt.tmp"});
}

TEST_F(SqliteArchive, ReadOnlyArchiveReadsAShippedFileWithoutTouchingIt) {
    const QString shipped = dir.filePath("Tzones.ach");
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/Tzones.ach"), shipped));
    const QByteArray before = read(shipped);
    Archive reader;
    reader.set_read_only(true);
    QByteArray bytes;
    ASSERT_EQ(reader.get(shipped, "Tzones.grd", bytes), 0);
    EXPECT_FALSE(bytes.isEmpty());
    EXPECT_EQ(reader.put(shipped, "extra", "x"), err::denied);
    reader.close(shipped);
    EXPECT_EQ(read(shipped), before);
    EXPECT_FALSE(QFile::exists(shipped + "-wal"));
    EXPECT_FALSE(QFile::exists(shipped + "-shm"));
}

TEST_F(SqliteArchive, ReadOnlyArchiveCreatesNoMissingFile) {
    Archive reader;
    reader.set_read_only(true);
    const QString missing = dir.filePath("none.ach");
    EXPECT_EQ(reader.put(missing, "m", "x"), err::not_found);
    EXPECT_FALSE(QFile::exists(missing));
}
