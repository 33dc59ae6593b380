#include "store/archive.h"

#include "store/member_codec.h"
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

struct ForeignAndDamaged : ::testing::Test {
    QTemporaryDir dir;
    QString cal = dir.filePath("work.cal");
    Archive a;

    static QByteArray read(const QString& p) {
        QFile f(p);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }
    void write(const QString& p, const QByteArray& b) {
        QFile f(p);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(b);
    }
    void sql(const QString& file, const char* statements) {
        orva::testing::run_sql(file, statements);
    }
    QByteArray month() const {
        return QByteArray("0315202603152026 Dentist")
            .leftJustified(475, ' ')
            .append("\r\n")
            .repeated(30);
    }
};

} // namespace

TEST_F(ForeignAndDamaged, DatabaseOfAnotherProgramIsRefusedAndLeftByteForByte) {
    sql(cal, "CREATE TABLE contacts(name TEXT, phone TEXT); INSERT INTO contacts VALUES('A','1');");
    const QByteArray before = read(cal);
    EXPECT_EQ(a.check_calendar(cal), 321);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 321);
    EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 321);
    a.close(cal);
    EXPECT_EQ(read(cal), before);
    EXPECT_FALSE(QFile::exists(cal + "-wal"));
}

TEST_F(ForeignAndDamaged, ArchiveOfAnotherProgramIsRefusedByItsApplicationId) {
    sql(cal, "CREATE TABLE sqlar(name TEXT PRIMARY KEY, mode INT, mtime INT, sz INT, data BLOB);"
             "PRAGMA application_id=1234;");
    const QByteArray before = read(cal);
    EXPECT_EQ(a.check_calendar(cal), 321);
    EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 321);
    EXPECT_EQ(read(cal), before);
}

TEST_F(ForeignAndDamaged, EmptyFileIsRefusedAndStaysEmpty) {
    write(cal, {});
    EXPECT_EQ(a.check_calendar(cal), 321);
    EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 321);
    EXPECT_EQ(QFileInfo(cal).size(), 0);
}

TEST_F(ForeignAndDamaged, EmptyFileWithALogBesideItIsAFirstSaveThatNeverCommitted) {
    write(cal, {});
    write(cal + "-wal", QByteArray(100, 'w'));
    EXPECT_EQ(a.check_calendar(cal), 0);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 53);
    EXPECT_EQ(a.put(cal, "c2603.cal", "x"), 0);
    EXPECT_EQ(a.members(cal), QStringList{"c2603.cal"});
}

TEST_F(ForeignAndDamaged, MissingFileAndFolderAreNoCalendarsOnlyWhenTheyAreSomethingElse) {
    EXPECT_EQ(a.check_calendar(cal), 0) << "missing: a calendar can be made there";
    ASSERT_TRUE(QDir().mkpath(cal));
    EXPECT_EQ(a.check_calendar(cal), 321);
}

TEST_F(ForeignAndDamaged, EveryMemberCarriesTheChecksumOfItsBytes) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(cal).constData(), &db), SQLITE_OK);
    sqlite3_stmt* st = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db, "SELECT crc FROM sqlar", -1, &st, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
    EXPECT_EQ(quint32(sqlite3_column_int64(st, 0)), member_crc(month()));
    sqlite3_finalize(st);
    sqlite3_close(db);
}

TEST_F(ForeignAndDamaged, MemberWhoseChecksumDisagreesIsToldOnceAndStillRead) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    sql(cal, "UPDATE sqlar SET crc = crc + 1");
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, month()) << "what could be read shows";
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    const auto notices = a.take_notices();
    ASSERT_EQ(notices.size(), 1u) << "told once, however often it is read";
    EXPECT_EQ(notices[0].kind, Archive::Notice::damaged_member);
    EXPECT_EQ(notices[0].member, QString("c2603.cal"));
    EXPECT_TRUE(a.take_notices().empty());
}

TEST_F(ForeignAndDamaged, WritingAMemberBackAsItStandsLeavesTheFileByteForByte) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    ASSERT_EQ(a.put(cal, "Calopt.tmp", QByteArray("options")), 0);
    a.close(cal);
    const QByteArray before = read(cal);
    int settled = 0;
    a.set_after_write_hook([&](const QString&) { ++settled; });
    EXPECT_EQ(a.put(cal, "Calopt.tmp", QByteArray("options")), 0);
    EXPECT_EQ(a.drop(cal, "c2699.cal"), 53) << "a member that is not there";
    a.close(cal);
    EXPECT_EQ(read(cal), before);
    EXPECT_EQ(settled, 1) << "the hook still hears the member";
    EXPECT_EQ(a.put(cal, "Calopt.tmp", QByteArray("options2")), 0);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "Calopt.tmp", got), 0);
    EXPECT_EQ(got, QByteArray("options2"));
}

TEST_F(ForeignAndDamaged, DamagedMemberWrittenBackWithItsOriginalBytesIsRepaired) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    // Same size and checksum, other bytes: only a full comparison tells.
    sql(cal, "UPDATE sqlar SET data = zeroblob(length(data)) WHERE name='c2603.cal'");
    EXPECT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, month());
    EXPECT_TRUE(a.take_notices().empty());
}

TEST_F(ForeignAndDamaged, FileCutShortByItsLastByteIsRefusedAsDamagedAndLeftAlone) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    QFile f(cal);
    ASSERT_TRUE(f.resize(f.size() - 1));
    const QByteArray before = read(cal);
    EXPECT_EQ(a.check_calendar(cal), err::bad_file);
    QByteArray got;
    EXPECT_NE(a.get(cal, "c2603.cal", got), 0);
    a.close(cal);
    EXPECT_EQ(read(cal), before);
}

TEST_F(ForeignAndDamaged, MemberCutShortGivesItsReadableStart) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    sql(cal, "UPDATE sqlar SET data = substr(data, 1, length(data) / 2)");
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_FALSE(got.isEmpty());
    EXPECT_LT(got.size(), month().size());
    EXPECT_TRUE(month().startsWith(got));
    EXPECT_EQ(a.take_notices().size(), 1u);
}

TEST_F(ForeignAndDamaged, MemberOfWhichNothingCanBeReadIsNoEmptyMonth) {
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    sql(cal, "UPDATE sqlar SET data = x'00112233'");
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 75);
    EXPECT_EQ(a.take_notices().size(), 1u);
}

TEST_F(ForeignAndDamaged, MemberTheSqliteShellAddedIsUncheckedNotDamaged) {
    sql(cal, "CREATE TABLE sqlar(name TEXT PRIMARY KEY, mode INT, mtime INT, sz INT, data BLOB);"
             "INSERT INTO sqlar VALUES('c2603.cal', 33188, 0, 3, 'abc');");
    EXPECT_EQ(a.check_calendar(cal), 0);
    QByteArray got;
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_EQ(got, "abc");
    EXPECT_TRUE(a.take_notices().empty());
    // The first change adds the checksum column beside the archive's own.
    ASSERT_EQ(a.put(cal, "c2604.cal", month()), 0);
    EXPECT_EQ(a.get(cal, "c2604.cal", got), 0);
    EXPECT_EQ(got, month());
    EXPECT_EQ(a.get(cal, "c2603.cal", got), 0);
    EXPECT_TRUE(a.take_notices().empty());
}

TEST_F(ForeignAndDamaged, SqliteShellStillExtractsMembersBesideTheChecksum) {
    const QString shell = QStandardPaths::findExecutable("sqlite3");
    if (shell.isEmpty()) GTEST_SKIP() << "no sqlite3 shell on this machine";
    ASSERT_EQ(a.put(cal, "c2603.cal", month()), 0);
    a.close(cal);
    QTemporaryDir out;
    QProcess extract;
    extract.setWorkingDirectory(out.path());
    extract.start(shell, {cal, "-Ax"});
    ASSERT_TRUE(extract.waitForFinished(10000));
    EXPECT_EQ(read(out.filePath("c2603.cal")), month());
}
