#include "store/calendar_file.h"

#include "store/member_format.h"
#include "store_fixtures.h"

#include <QFile>
#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

using namespace orva;
using orva::testing::make_appt;
using orva::testing::make_rmdr;
using orva::testing::Snapshot;
using orva::testing::snapshot;

namespace {

// A calendar with appointments in two of the months the series will touch and
// a reminder member, closed again before any child is forked so that no
// connection crosses the fork.
struct CrashSafety : ::testing::Test {
    std::unique_ptr<orva::testing::StoreEnv> env = std::make_unique<orva::testing::StoreEnv>();
    Snapshot before;

    void SetUp() override {
        env->append_appt(make_appt("03012026", "OLD1"));
        env->append_appt(make_appt("05012026", "OLD2"));
        env->append_rmdr(make_rmdr("03/01/26", "OLD1"));
        env->s.archive.close(env->cal);
        before = snapshot(env->cal);
        ASSERT_EQ(before.size(), 3u);
    }

    // Forks a child that writes a weekly series over March to June 2026 in one
    // command; with kill_after > 0 it kills itself after that many member writes.
    int run_child(int kill_after) {
        const QString app_path = env->dir.path();
        const QString cal = env->cal;
        const pid_t pid = fork();
        if (pid == 0) {
            auto s = std::make_unique<Shared>();
            s->app_path = app_path;
            int writes = 0;
            s->archive.set_after_write_hook([&](const QString&) {
                if (++writes == kill_after) raise(SIGKILL);
            });
            const QDate first(2026, 3, 3);
            s->occur_count = 0;
            for (QDate d = first; d < QDate(2026, 7, 1); d = d.addDays(7))
                *s->occur_row(++s->occur_count) =
                    make_appt(d.toString("MMddyyyy"), "SERIES", "07:00");
            Archive::Command command(s->archive, cal);
            if (write_occurs(*s, cal) != 0 || command.finish() != 0) _exit(1);
            _exit(0);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        return status;
    }
};

} // namespace

TEST_F(CrashSafety, KilledCommandLeavesTheFileAsItWasBefore) {
    const int status = run_child(2);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);

    // The next open must find a sound archive (quick_check passes) holding
    // exactly the members and bytes from before the command.
    Archive a;
    QByteArray probe;
    EXPECT_EQ(a.get(env->cal, "c2603.cal", probe), 0);
    EXPECT_EQ(snapshot(env->cal), before);
    // Nothing but the calendar and SQLite's log beside it is left in the
    // folder: no copy of a member, no temporary file.
    EXPECT_EQ(env->loose_files(), QStringList());
    // A journal left behind must not stand in the way of the next command.
    EXPECT_EQ(a.put(env->cal, "c2607.cal", "next"), 0);
    EXPECT_EQ(snapshot(env->cal).size(), before.size() + 1);
}

TEST_F(CrashSafety, CompletedCommandLeavesEveryMember) {
    const int status = run_child(0);
    ASSERT_TRUE(WIFEXITED(status));
    ASSERT_EQ(WEXITSTATUS(status), 0);

    const Snapshot after = snapshot(env->cal);
    QStringList names;
    for (const auto& [name, bytes] : after)
        names << name;
    EXPECT_EQ(names,
              QStringList({"c2603.cal", "c2604.cal", "c2605.cal", "c2606.cal", "r2603.rmd"}));
    // March keeps its old line and gains its five Tuesdays: 3, 10, 17, 24, 31.
    EXPECT_EQ(after.at("c2603.cal").size(), 477 * 6);
    EXPECT_TRUE(after.at("c2603.cal").startsWith(before.at("c2603.cal")));
    EXPECT_EQ(after.at("r2603.rmd"), before.at("r2603.rmd"));
}
