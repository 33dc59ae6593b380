#include "store/archive.h"

#include "store_fixtures.h"

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

TEST_F(SqliteArchive, AddCreatesTheArchiveWithTheSqlarTable) {
    EXPECT_EQ(a.run(cal, write_loose("c2603.cal", "line\r\n"), Archive::add), 0);
    ASSERT_TRUE(QFile::exists(cal));
    EXPECT_EQ(query(cal, "SELECT name || ' ' || type || ' ' || pk FROM pragma_table_info('sqlar')"),
              QStringList({"name TEXT 1", "mode INT 0", "mtime INT 0", "sz INT 0", "data BLOB 0"}));
    EXPECT_EQ(query(cal, "PRAGMA application_id"), QStringList{QString::number(0x4F525641)});
    EXPECT_EQ(query(cal, "SELECT name FROM sqlar"), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, MembersAreStoredUncompressedWithTheirSize) {
    const QByteArray bytes(2000, 'x'); // compressible, yet stored as it stands
    a.put(cal, "c2603.cal", bytes);
    EXPECT_EQ(query(cal, "SELECT sz || ' ' || length(data) || ' ' || mode FROM sqlar"),
              QStringList{"2000 2000 33188"});
}

TEST_F(SqliteArchive, EmptyMemberIsAZeroLengthBlobNotNull) {
    a.put(cal, "work2603.cal", {});
    EXPECT_EQ(query(cal, "SELECT typeof(data) || ' ' || sz FROM sqlar"), QStringList{"blob 0"});
    QByteArray got("junk");
    EXPECT_EQ(a.get(cal, "work2603.cal", got), 0);
    EXPECT_TRUE(got.isEmpty());
}

TEST_F(SqliteArchive, ExtractWritesTheMemberOverTheLooseFile) {
    a.put(cal, "c2603.cal", "fresh");
    const QString loose = write_loose("c2603.cal", "stale and longer");
    EXPECT_EQ(a.run(cal, loose, Archive::extract), 0);
    EXPECT_EQ(read(loose), "fresh");
}

TEST_F(SqliteArchive, ExtractFromAMissingArchiveGives53AndCreatesNothing) {
    const QString loose = dir.filePath("c2603.cal");
    EXPECT_EQ(a.run(cal, loose, Archive::extract), 53);
    EXPECT_EQ(a.error(), 53);
    EXPECT_FALSE(QFile::exists(cal));
    EXPECT_FALSE(QFile::exists(loose));
}

TEST_F(SqliteArchive, ExtractOfAMissingMemberGives53AndLeavesNoLooseFile) {
    a.put(cal, "c2603.cal", "x");
    const QString loose = dir.filePath("c2604.cal");
    EXPECT_EQ(a.run(cal, loose, Archive::extract), 53);
    EXPECT_FALSE(QFile::exists(loose));
}

TEST_F(SqliteArchive, ErrorStaysUntilCleared) {
    a.run(cal, dir.filePath("c2603.cal"), Archive::extract);
    a.put(cal, "c2603.cal", "x");
    EXPECT_EQ(a.error(), 53);
    a.clear_error();
    EXPECT_EQ(a.error(), 0);
}

TEST_F(SqliteArchive, AddReplacesAMemberOfTheSameName) {
    a.run(cal, write_loose("c2603.cal", "old"), Archive::add);
    a.run(cal, write_loose("c2603.cal", "new"), Archive::add);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "new");
    EXPECT_EQ(a.members(cal), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, AddOfAMissingFileGives53) {
    EXPECT_EQ(a.run(cal, dir.filePath("nothing.cal"), Archive::add), 53);
    EXPECT_FALSE(QFile::exists(cal));
}

TEST_F(SqliteArchive, RemoveDeletesTheMember) {
    a.put(cal, "c2603.cal", "x");
    a.put(cal, "r2603.rmd", "y");
    EXPECT_EQ(a.run(cal, dir.filePath("c2603.cal"), Archive::remove), 0);
    EXPECT_EQ(a.members(cal), QStringList{"r2603.rmd"});
}

TEST_F(SqliteArchive, RemoveOfAMissingMemberGives53) {
    a.put(cal, "c2603.cal", "x");
    EXPECT_EQ(a.run(cal, dir.filePath("c2604.cal"), Archive::remove), 53);
    EXPECT_EQ(a.drop(dir.filePath("none.cal"), "c2603.cal"), 53);
    EXPECT_FALSE(QFile::exists(dir.filePath("none.cal")));
}

TEST_F(SqliteArchive, FileThatIsNoArchiveGives75AndIsLeftAlone) {
    write_loose("work.cal", QByteArray("this is a letter, not a calendar\n").repeated(200));
    const QByteArray before = read(cal);
    EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 75);
    EXPECT_EQ(a.run(cal, dir.filePath("c2603.cal"), Archive::extract), 75);
    EXPECT_EQ(read(cal), before);
}

TEST_F(SqliteArchive, DamagedArchiveFailsQuickCheckWith75) {
    a.put(cal, "c2603.cal", QByteArray(20000, 'x'));
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
    a.put(cal, "c2603.cal", "x");
    QFile::remove(cal);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
    EXPECT_FALSE(QFile::exists(cal));
}

TEST_F(SqliteArchive, CommandKeepsItsWritesFromOthersUntilItEnds) {
    a.put(cal, "c2603.cal", "before");
    Archive other;
    QByteArray got;
    {
        Archive::Command cmd(a, cal);
        a.put(cal, "c2603.cal", "during");
        a.put(cal, "c2604.cal", "new");
        EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
        EXPECT_EQ(got, "before");
        EXPECT_EQ(other.get(cal, "c2604.cal", got), 53);
    }
    EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "during");
    EXPECT_EQ(other.get(cal, "c2604.cal", got), 0);
}

TEST_F(SqliteArchive, NestedCommandJoinsTheOuterTransaction) {
    a.put(cal, "c2603.cal", "before");
    Archive other;
    QByteArray got;
    {
        Archive::Command outer(a, cal);
        {
            Archive::Command inner(a, cal);
            a.put(cal, "c2603.cal", "inner");
        }
        EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
        EXPECT_EQ(got, "before") << "the inner command must not commit on its own";
    }
    EXPECT_EQ(other.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "inner");
}

TEST_F(SqliteArchive, CommandOnAMissingFileCreatesItOnlyWhenAMemberIsAdded) {
    {
        Archive::Command cmd(a, cal);
        QByteArray got;
        EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
    }
    EXPECT_FALSE(QFile::exists(cal));
    {
        Archive::Command cmd(a, cal);
        a.put(cal, "c2603.cal", "x");
    }
    Archive other;
    EXPECT_EQ(other.members(cal), QStringList{"c2603.cal"});
}

TEST_F(SqliteArchive, AfterWriteHookRunsOnlyInsideACommand) {
    QStringList seen;
    a.set_after_write_hook([&](const QString& m) { seen << m; });
    a.put(cal, "c2601.cal", "x");
    {
        Archive::Command cmd(a, cal);
        a.put(cal, "c2602.cal", "x");
        a.drop(cal, "c2601.cal");
    }
    EXPECT_EQ(seen, QStringList({"c2602.cal", "c2601.cal"}));
}

TEST_F(SqliteArchive, CloseDropsAnOpenCommandsWrites) {
    a.put(cal, "c2603.cal", "before");
    {
        Archive::Command cmd(a, cal);
        a.put(cal, "c2603.cal", "during");
        a.close(cal);
    }
    Archive other;
    QByteArray got;
    other.get(cal, "c2603.cal", got);
    EXPECT_EQ(got, "before");
}

TEST_F(SqliteArchive, SqliteShellListsAndExtractsTheMembers) {
    const QString shell = QStandardPaths::findExecutable("sqlite3");
    if (shell.isEmpty()) GTEST_SKIP() << "no sqlite3 shell on this machine";
    a.put(cal, "c2603.cal", "appointments\r\n");
    a.put(cal, "r2603.rmd", "reminders\r\n");
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
    EXPECT_EQ(read(out.filePath("c2603.cal")), "appointments\r\n");
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
