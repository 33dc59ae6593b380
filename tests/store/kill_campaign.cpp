// The commands a user runs most on a calendar of fifteen years (a daily
// series saved, edited and deleted, a single entry, the options), each run in
// a forked child and killed with SIGKILL: half of the kills at a random moment
// of the command's run, half just before a random one of the writes,
// truncates, syncs and deletes it makes through SQLite. The first change of
// the day makes every command take the daily backup first, so the kills land
// in that copy as well as in the commit.
//
// After every kill the calendar must pass SQLite's quick_check, every member
// must match its CRC-32, and the members must be exactly those from before the
// command or exactly those the command leaves when it runs to the end. The
// killed process leaves its log (calendar.cal-wal and -shm) beside the file,
// as SQLite always does; that is no leftover, but the next connection that
// closes must fold it back and remove it. Anything else in the folder is a
// stray, except a backup of today that opens, passes its check and holds the
// calendar as it stood before the command.
//
// Usage: kill_campaign [kills] [seed]. The last line of the output is
//   kills=<n> half=<n> unsound=<n> stray=<n>
// and the program fails when any of the last three is not 0.
#include "state/options.h"
#include "store/backups.h"
#include "store_fixtures.h"
#include "support/fake_window.h"
#include "support/io_shim.h"
#include "support/large_calendar.h"

#include <QDir>
#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace orva;
using orva::testing::FakeWindow;
using orva::testing::IoShim;
using orva::testing::LargeCalendar;
using orva::testing::must;
using orva::testing::quick_check_ok;
using orva::testing::Snapshot;

namespace {

long campaign_kills = 200;
unsigned campaign_seed = 0;

struct Tally {
    long kills = 0;
    long half = 0;    // neither the state before nor the state after
    long unsound = 0; // quick_check or a checksum failed
    long stray = 0;   // something left in the folder that should not be
};
Tally tally;

struct Scenario {
    const char* name;
    std::function<void(LargeCalendar&, FakeWindow&)> run;
    Snapshot after = {};
    double ms = 0;                        // how long the command ran to its end
    long changes = 0;                     // the file changes it made through SQLite on the way
    long before_seen = 0, after_seen = 0; // kills that left the one or the other
};

// Every member of `file` through the store, as the program would read it
// next: false when the file does not open or a member fails its checksum.
bool read_all(const QString& file, Snapshot& out) {
    out.clear();
    Archive a;
    const QStringList names = a.members(file);
    bool sound = a.error() == 0;
    for (const QString& name : names)
        sound = a.get(file, name, out[name]) == 0 && sound;
    for (const Archive::Notice& n : a.take_notices())
        sound = sound && n.kind != Archive::Notice::damaged_member;
    return sound;
}

void copy_folder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const QDir src(from);
    for (const QFileInfo& f : src.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const QString target = QDir(to).filePath(f.fileName());
        if (f.isDir())
            copy_folder(f.filePath(), target);
        else
            must(QFile::copy(f.filePath(), target) ? 0 : 1, "copying the calendar");
    }
}

// Where to kill a child: after a pause from the start of its command, or just
// before its nth file change. With neither, the command runs to its end.
struct KillPoint {
    std::chrono::microseconds after{0};
    long change = 0;
    bool never() const { return after.count() == 0 && change == 0; }
};

struct ChildRun {
    int status = 0;
    double ms = 0;
    long changes = 0;
};

// Forks a child that runs the scenario's command on the planner as it stands
// here (the parent holds no connection to the file, so none crosses the fork)
// and kills it at `at`.
ChildRun run_child(LargeCalendar& b, const Scenario& sc, const KillPoint& at) {
    int fds[2];
    must(pipe(fds), "pipe");
    const pid_t pid = fork();
    must(pid < 0 ? 1 : 0, "fork");
    if (pid == 0) {
        ::close(fds[0]);
        IoShim& io = IoShim::install();
        io.reset_counts();
        io.kill_at_change(at.change);
        FakeWindow w;
        const char started = 's';
        if (write(fds[1], &started, 1) != 1) _exit(3);
        sc.run(b, w);
        const long changes = io.changes();
        if (write(fds[1], &changes, sizeof changes) != sizeof changes) _exit(3);
        _exit(b.modal.told ? 2 : 0);
    }
    ::close(fds[1]);
    ChildRun r;
    char started = 0;
    const bool began = read(fds[0], &started, 1) == 1;
    QElapsedTimer t;
    t.start();
    if (began && at.after.count() > 0) {
        std::this_thread::sleep_for(at.after);
        kill(pid, SIGKILL);
    }
    if (at.never() && read(fds[0], &r.changes, sizeof r.changes) != sizeof r.changes)
        r.changes = -1;
    waitpid(pid, &r.status, 0);
    r.ms = double(t.nsecsElapsed()) / 1e6;
    ::close(fds[0]);
    return r;
}

QStringList entries(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                  QDir::System);
}

// What lies in the calendar's folder besides `allowed`.
QStringList loose_in(const QString& folder, const QStringList& allowed) {
    QStringList out;
    for (const QString& name : entries(folder))
        if (!allowed.contains(name)) out << name;
    return out;
}

// The files in backups/ other than those the calendar started with and a
// whole copy of it as it stood before the command.
QStringList bad_backups(const QString& cal, const std::set<QString>& kept, const Snapshot& before) {
    QStringList out;
    const QDir backups(backup_folder(cal));
    const QStringList made = backups_of(cal);
    for (const QString& name : entries(backups.path())) {
        if (kept.count(name)) continue;
        const QString path = backups.filePath(name);
        Snapshot copy;
        const bool whole =
            made.contains(path) && quick_check_ok(path) && read_all(path, copy) && copy == before;
        if (!whole) out << QStringLiteral("backups/") + name;
    }
    return out;
}

std::vector<Scenario> scenarios() {
    return {
        {"SeriesSave",
         [](LargeCalendar& b, FakeWindow&) { b.save_series(QStringLiteral("Evening walk")); }},
        {"SeriesEdit",
         [](LargeCalendar& b, FakeWindow&) {
             b.edit_series(QStringLiteral("Morning run"), QStringLiteral("Morning run, long loop"));
         }},
        {"SeriesDelete",
         [](LargeCalendar& b, FakeWindow&) { b.delete_series(QStringLiteral("Morning run")); }},
        {"SingleSave", [](LargeCalendar& b, FakeWindow&) { b.save_single(1); }},
        {"ReminderWriteBack",
         [](LargeCalendar& b, FakeWindow&) {
             // A delivery's write-back: the first rows delivered, one armed
             // again into the month after the loaded ones.
             AppState& s = *b.s;
             must(load_rmdrs(s, s.cur_date, s.cal_path, 0), "load_rmdrs");
             for (int i = 1; i <= std::min<int>(40, s.rmdr_count); ++i)
                 s.rmdr_row(i)->rmdr_fired = QStringLiteral("T");
             if (rmdr_rec* r = s.rmdr_row(1)) {
                 r->rmdr_fired = QStringLiteral("F");
                 r->rmdr_date = s.cur_date.addMonths(1).toString(QStringLiteral("MM/dd/yy"));
             }
             must(save_rmdrs(s, rewrite_mode, s.cal_path), "save_rmdrs");
         }},
        {"OptionsSave",
         [](LargeCalendar& b, FakeWindow& w) {
             b.s->menus.mnuTips = !b.s->menus.mnuTips;
             save_options(b.s->store(), b.s->view(), b.s->options(), w);
         }},
    };
}

} // namespace

TEST(KillCampaign, EveryKilledCommandLeavesTheCalendarBeforeOrAfterIt) {
    IoShim::install();
    // Built yesterday, with yesterday's backup; today's first change takes
    // another.
    LargeCalendar b(QDate(2026, 3, 14));
    b.build_singles();
    b.save_series(QStringLiteral("Morning run"));
    const QString cal = b.s->cal_path, folder = b.dir.path();
    const QString name = QFileInfo(cal).fileName();
    b.s->archive.close(cal);
    QTemporaryDir start;
    copy_folder(folder, start.path());
    std::set<QString> kept;
    for (const QString& p : backups_of(cal))
        kept.insert(QFileInfo(p).fileName());
    ASSERT_EQ(kept.size(), 1u);

    b.clock.set(QDateTime(QDate(2026, 3, 15), QTime(9, 10)));
    b.s->cur_date = b.clock.today();
    must(load_appts(*b.s, b.s->cur_date, cal, 0), "load_appts");
    must(load_rmdrs(*b.s, b.s->cur_date, cal, b.s->months_back), "load_rmdrs");
    b.s->archive.close(cal);
    ASSERT_GT(b.row_with_text(QStringLiteral("Morning run")), 0);
    const auto restore = [&] {
        QDir(folder).removeRecursively();
        copy_folder(start.path(), folder);
    };
    Snapshot before;
    ASSERT_TRUE(read_all(cal, before));

    std::vector<Scenario> all = scenarios();
    for (Scenario& sc : all) {
        // Run twice to the end: the state after must not depend on the run,
        // or a kill would be taken for one that left half a command.
        for (int pass = 0; pass < 2; ++pass) {
            restore();
            const ChildRun r = run_child(b, sc, {});
            ASSERT_TRUE(WIFEXITED(r.status) && WEXITSTATUS(r.status) == 0) << sc.name;
            Snapshot after;
            ASSERT_TRUE(read_all(cal, after)) << sc.name;
            ASSERT_TRUE(after != before) << sc.name << " changed nothing";
            if (pass == 1) {
                ASSERT_TRUE(after == sc.after) << sc.name << " is not repeatable";
            }
            sc.after = std::move(after);
            sc.ms = r.ms;
            sc.changes = r.changes;
        }
        ASSERT_GT(sc.changes, 0) << sc.name;
    }

    std::mt19937 rng(campaign_seed);
    for (long i = 0; i < campaign_kills; ++i) {
        Scenario& sc = all[size_t(i / 2) % all.size()];
        KillPoint at;
        QString where;
        if (i % 2 == 0) {
            const auto us = std::max<long>(1, long(sc.ms * 1000));
            at.after = std::chrono::microseconds(std::uniform_int_distribution<long>(1, us)(rng));
            where = QStringLiteral("after %1 us").arg(at.after.count());
        } else {
            at.change = std::uniform_int_distribution<long>(1, sc.changes)(rng);
            where = QStringLiteral("before change %1 of %2").arg(at.change).arg(sc.changes);
        }
        restore();
        run_child(b, sc, at);
        ++tally.kills;

        // Looked at before anything opens the file: the next open would roll
        // back a journal and remove it.
        QStringList left = loose_in(folder, {name, name + "-wal", name + "-shm", "backups"});
        const bool checked = quick_check_ok(cal);
        Snapshot now;
        const bool sound = read_all(cal, now) && checked;
        // The checks' connection was the last one: closing it folds the log
        // back into the file and removes it with its index.
        for (const QString& n :
             loose_in(folder, {name, "backups"}) + bad_backups(cal, kept, before))
            if (!left.contains(n)) left << n;
        const bool was_before = now == before, was_after = now == sc.after;
        sc.before_seen += was_before;
        sc.after_seen += was_after;
        const auto tell = [&](const char* what, const QString& more = {}) {
            std::printf("kill %ld: %s %s: %s %s\n", i + 1, sc.name, qPrintable(where), what,
                        qPrintable(more));
        };
        if (!sound) {
            ++tally.unsound;
            tell("unsound");
        }
        if (!was_before && !was_after) {
            ++tally.half;
            tell("neither before nor after");
        }
        if (!left.isEmpty()) {
            ++tally.stray;
            tell("left", left.join(u' '));
        }
    }
    restore();

    for (const Scenario& sc : all)
        std::printf("%s: %.1f ms, %ld changes; %ld kills left it before, %ld after\n", sc.name,
                    sc.ms, sc.changes, sc.before_seen, sc.after_seen);
    EXPECT_EQ(tally.kills, campaign_kills);
    EXPECT_EQ(tally.half, 0);
    EXPECT_EQ(tally.unsound, 0);
    EXPECT_EQ(tally.stray, 0);
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) campaign_kills = std::atol(argv[1]);
    campaign_seed =
        argc > 2 ? unsigned(std::strtoul(argv[2], nullptr, 10)) : std::random_device{}();
    std::printf("kill campaign: %ld kills, seed %u\n", campaign_kills, campaign_seed);
    const int failed = RUN_ALL_TESTS();
    std::printf("kills=%ld half=%ld unsound=%ld stray=%ld\n", tally.kills, tally.half,
                tally.unsound, tally.stray);
    std::fflush(stdout);
    return failed || tally.half || tally.unsound || tally.stray ? 1 : 0;
}
