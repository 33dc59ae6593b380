#include "store/backups.h"

#include "store/calendar_file.h"
#include "store/member_format.h"
#include "store_fixtures.h"
#include "support/io_shim.h"

#include <QDir>
#include <QFileInfo>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orva;
using orva::testing::IoShim;
using orva::testing::make_appt;

namespace {

struct Backups : ::testing::Test {
    std::unique_ptr<orva::testing::StoreEnv> env = std::make_unique<orva::testing::StoreEnv>();
    Shared& s = env->s;

    // One entry saved on the clock's day, as a command saves it.
    void save_on(const QDate& day, const QString& id) {
        env->clock.set(QDateTime(day, QTime(10, 0)));
        env->append_appt(make_appt(day.toString("MMddyyyy"), id));
    }
    QStringList ids_in(const QString& cal_file, const QDate& month) {
        Archive other;
        QByteArray bytes;
        QStringList out;
        if (other.get(cal_file, appt_member_name(yymm_of(month)), bytes) != 0) return out;
        MemberReader in(bytes);
        QByteArray end;
        while (!in.at_end()) {
            appt_rec r;
            in.read_appt(r, end, 2);
            out << r.appt_id.trimmed();
        }
        return out;
    }
};

} // namespace

TEST_F(Backups, FirstChangeOfEachDayKeepsACopyOfTheCalendarAsItStood) {
    save_on(QDate(2026, 3, 1), "DAY0"); // makes the calendar: nothing to keep yet
    EXPECT_TRUE(backups_of(env->cal).isEmpty());
    save_on(QDate(2026, 3, 2), "DAY1");
    save_on(QDate(2026, 3, 2), "DAY1B");
    save_on(QDate(2026, 3, 3), "DAY2");
    save_on(QDate(2026, 3, 4), "DAY3");
    const QStringList copies = backups_of(env->cal);
    ASSERT_EQ(copies.size(), 3) << copies.join(", ").toStdString();
    EXPECT_EQ(QFileInfo(copies[0]).fileName(), QString("calendar-20260302-100000.cal"));
    EXPECT_EQ(QFileInfo(copies[0]).absolutePath(), QDir(env->dir.path()).filePath("backups"));
    // Each opens as a calendar holding what stood before that day's change.
    EXPECT_EQ(ids_in(copies[0], QDate(2026, 3, 1)), QStringList({"DAY0"}));
    EXPECT_EQ(ids_in(copies[1], QDate(2026, 3, 1)), QStringList({"DAY0", "DAY1", "DAY1B"}));
    EXPECT_EQ(ids_in(copies[2], QDate(2026, 3, 1)), QStringList({"DAY0", "DAY1", "DAY1B", "DAY2"}));
    EXPECT_EQ(env->loose_files(), QStringList());
}

TEST_F(Backups, AnEighthDayDropsTheOldestOfSeven) {
    save_on(QDate(2026, 3, 1), "DAY0");
    for (int d = 2; d <= 9; ++d)
        save_on(QDate(2026, 3, d), QStringLiteral("D%1").arg(d));
    const QStringList copies = backups_of(env->cal);
    ASSERT_EQ(copies.size(), 7);
    EXPECT_EQ(QFileInfo(copies.first()).fileName(), QString("calendar-20260303-100000.cal"));
    EXPECT_EQ(QFileInfo(copies.last()).fileName(), QString("calendar-20260309-100000.cal"));
}

TEST_F(Backups, CopyACrashCutShortIsNeverTakenForOne) {
    save_on(QDate(2026, 3, 1), "DAY0");
    ASSERT_TRUE(QDir().mkpath(backup_folder(env->cal)));
    QFile part(QDir(backup_folder(env->cal)).filePath("calendar-20260302-090000.cal.part"));
    ASSERT_TRUE(part.open(QIODevice::WriteOnly));
    part.write("half a copy");
    part.close();
    EXPECT_FALSE(has_backup_on(env->cal, QDate(2026, 3, 2)));
    save_on(QDate(2026, 3, 2), "DAY1");
    EXPECT_EQ(backups_of(env->cal).size(), 1);
    EXPECT_FALSE(part.exists()) << "the next copy clears what a crash left";
}

TEST_F(Backups, CopyThatCannotBeTakenIsToldAndTheChangeGoesAhead) {
    save_on(QDate(2026, 3, 1), "DAY0");
    // A file where the folder should be: no copy can be made there.
    QFile blocker(backup_folder(env->cal));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    (void)s.archive.take_notices();
    save_on(QDate(2026, 3, 2), "DAY1");
    const auto notices = s.archive.take_notices();
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].kind, Archive::Notice::backup_failed);
    EXPECT_EQ(ids_in(env->cal, QDate(2026, 3, 1)), QStringList({"DAY0", "DAY1"}));
    save_on(QDate(2026, 3, 2), "DAY1B");
    EXPECT_TRUE(s.archive.take_notices().empty()) << "tried once a day, not at every change";
}

TEST_F(Backups, CopyKilledAtAnyStepLeavesAWholeCopyOrNothing) {
    save_on(QDate(2026, 3, 1), "DAY0");
    s.archive.close(env->cal);
    const QDateTime now(QDate(2026, 3, 2), QTime(10, 0));
    IoShim& io = IoShim::install();
    io.reset_counts();
    ASSERT_EQ(take_backup(env->cal, now), 0);
    const long calls = io.calls();
    ASSERT_GT(calls, 0);
    QDir folder(backup_folder(env->cal));
    for (long n = 1; n <= calls; ++n) {
        ASSERT_TRUE(folder.removeRecursively());
        const pid_t pid = fork();
        if (pid == 0) {
            io.reset_counts();
            io.kill_at_call(n);
            (void)take_backup(env->cal, now);
            _exit(0);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "call " << n;
        // No half copy under any name: a crash must leave nothing for the
        // user to find and wonder about.
        for (const QString& name :
             folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
            EXPECT_EQ(name, QString("calendar-20260302-100000.cal")) << "call " << n;
        if (!backups_of(env->cal).isEmpty()) {
            EXPECT_EQ(ids_in(backups_of(env->cal)[0], QDate(2026, 3, 1)), QStringList({"DAY0"}));
        }
    }
}
