// Every I/O call a user command makes is failed in turn, one per run, with an
// I/O error and, for writes, also with a full disk. Whatever call fails, the
// command must fail whole: the file passes its check and holds exactly what
// it held before, the tables equal a fresh load of it, and the user was told.
#include "../appointments/editor_fixtures.h"
#include "appointments/delete_copy.h"
#include "reminders/reminder_setup.h"
#include "shell/file_commands.h"
#include "state/options.h"
#include "support/io_shim.h"
#include "views/detail_pane.h"

#include <QDir>
#include <QFile>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <sqlite3.h>

using namespace orva;
using orva::testing::EditorEnv;
using orva::testing::IoShim;
using orva::testing::quick_check_ok;
using orva::testing::Snapshot;
using orva::testing::snapshot;

namespace {

// The loaded tables as text, row by row, to compare with a fresh load.
QStringList tables_of(const Shared& s) {
    QStringList out;
    out << QStringLiteral("appts %1").arg(s.appt_count);
    for (int r = 1; r <= s.appt_count; ++r)
        if (const appt_rec* a = s.appt_row(r)) out << QString::fromLatin1(appt_line(*a).toHex());
    out << QStringLiteral("rmdrs %1").arg(s.rmdr_count);
    for (int r = 1; r <= s.rmdr_count; ++r)
        if (const rmdr_rec* m = s.rmdr_row(r)) out << QString::fromLatin1(rmdr_line(*m).toHex());
    return out;
}

QStringList fresh_load(const AppState& s) {
    auto fresh = std::make_unique<Shared>();
    fresh->app_path = s.app_path;
    fresh->cur_date = s.cur_date;
    EXPECT_EQ(load_appts(*fresh, s.cur_date, s.cal_path, 0), 0);
    EXPECT_EQ(load_rmdrs(*fresh, s.cur_date, s.cal_path, s.months_back), 0);
    return tables_of(*fresh);
}

// One user command and the calendar it runs against.
struct Scenario {
    const char* name;
    std::function<void(EditorEnv&)> setup; // not faulted
    std::function<void(EditorEnv&)> run;   // the command
    QString message;                       // what the user must be told, or its start
    // The file whose state must not change; the calendar when empty.
    std::function<QString(EditorEnv&)> file = {};
    // The command also takes the day's backup: a fault met there may instead
    // leave the change made whole, with the user told the backup failed.
    bool takes_backup = false;
};

void weekly_series(EditorEnv& e, const QString& text) {
    e.open_new(QDate(2026, 3, 3), QStringLiteral("07:00"));
    e.f.Text1 = text;
    e.f.aptTimePick2 = QTime(8, 0);
    e.rule(2, 0, QStringLiteral("06/30/26"));
    e.s.rem_lead = 15;
    e.s.rem_unit = 0;
    ASSERT_TRUE(e.ok());
    e.clock.advance_secs(1);
}

// Thirty entries a month for a year from March, their texts and notes varied
// enough that the members span many pages of the file, so that a command
// reads and writes pages it does not hold in memory.
void busy_year(EditorEnv& e) {
    quint32 seed = 2026;
    const auto word = [&seed] {
        static const char* const words[] = {"budget", "review", "dentist", "call", "garden",
                                            "train",  "piano",  "invoice", "walk", "lunch"};
        seed = seed * 1103515245u + 12345u;
        return QString::fromLatin1(words[(seed >> 16) % 10]) + QString::number(seed % 997);
    };
    e.s.occur_count = 0;
    for (int m = 0; m < 12; ++m)
        for (int i = 0; i < 30; ++i) {
            const QDate d = QDate(2026, 3, 1).addMonths(m).addDays(i % 28);
            appt_rec r = orva::testing::make_appt(d.toString(QStringLiteral("MMddyyyy")),
                                                  QStringLiteral("Y%1").arg(m * 100 + i),
                                                  QStringLiteral("18:00"), word() + u' ' + word());
            r.appt_notes = word() + u' ' + word() + u' ' + word() + u' ' + word();
            *e.s.occur_row(++e.s.occur_count) = r;
        }
    ASSERT_EQ(write_occurs(e.s, e.s.cal_path), 0);
}

// A busy year, an entry today and one in April, and a reminded weekly series,
// loaded for Sunday the 15th of March.
void calendar(EditorEnv& e) {
    busy_year(e);
    e.add(e.entry(QStringLiteral("A1"), QStringLiteral("10:00"), QStringLiteral("11:00"),
                  QStringLiteral("Dentist")));
    appt_rec april = orva::testing::make_appt(QStringLiteral("04022026"), QStringLiteral("A2"));
    e.add(april);
    weekly_series(e, QStringLiteral("Swim"));
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    ASSERT_EQ(load_rmdrs(e.s, e.s.cur_date, e.s.cal_path, e.s.months_back), 0);
    orva::testing::rebuild(e.s);
}

int row_of_text(const AppState& s, const QString& text) {
    for (int r = 1; r <= s.appt_count; ++r)
        if (rtrim(s.appt_row(r)->appt_text) == text) return r;
    return 0;
}

const QString couldnt = QStringLiteral("Couldn't complete update");

std::vector<Scenario> scenarios() {
    return {
        {"SeriesSave", calendar,
         [](EditorEnv& e) {
             e.open_new(QDate(2026, 3, 10), QStringLiteral("12:00"));
             e.f.Text1 = QStringLiteral("Lunch walk");
             e.f.aptTimePick2 = QTime(12, 30);
             e.rule(1, 1, QStringLiteral("05/31/26"));
             e.s.rem_lead = 10;
             e.ok();
         },
         couldnt},
        {"SeriesEdit", calendar,
         [](EditorEnv& e) {
             e.open_edit(row_of_text(e.s, QStringLiteral("Swim")));
             e.f.Text1 = QStringLiteral("Swim, new pool");
             e.f.aptTimePick1 = QTime(6, 30);
             e.f.aptTimePick2 = QTime(7, 30);
             e.ok();
         },
         couldnt},
        {"SeriesDelete", calendar,
         [](EditorEnv& e) {
             e.s.edit_index = row_of_text(e.s, QStringLiteral("Swim"));
             e.m.answers.push_back(Answer::Yes);
             delCmd_Click(e.s);
         },
         couldnt},
        {"TypedEntry", calendar,
         [](EditorEnv& e) {
             e.s.vsSched.Select(30, 2);
             e.s.vsSched.setTextMatrix(30, 2, QStringLiteral("Call Bob"));
             vsSched_AfterEdit(e.s, e.w, 30, 2, QString());
         },
         couldnt},
        {"NotesChange", calendar,
         [](EditorEnv& e) {
             e.s.edit_index = row_of_text(e.s, QStringLiteral("Dentist"));
             e.m.forms["frmNotes"] = [&e] { e.s.notes_text = QStringLiteral("Bring the X-rays"); };
             imgDtlNote_Click(e.s);
         },
         couldnt},
        {"OptionsSave", calendar,
         [](EditorEnv& e) {
             e.s.menus.mnuTips = !e.s.menus.mnuTips;
             save_options(e.s.store(), e.s.view(), e.s.options(), e.w);
         },
         QStringLiteral("Error saving settings. Error Number : ")},
        {"FileNew", calendar,
         [](EditorEnv& e) {
             e.m.file_answers.push_back(e.dir.filePath(QStringLiteral("work.cal")));
             CalendarHooks h;
             h.rebuild_view = [&e] { save_options(e.s.store(), e.s.view(), e.s.options(), e.w); };
             new_calendar(e.s, h);
         },
         QStringLiteral("Couldn't create new Calendar  ' "),
         [](EditorEnv& e) { return e.dir.filePath(QStringLiteral("work.cal")); }},
        {"FirstChangeOfTheDay",
         [](EditorEnv& e) {
             calendar(e);
             // A new day: the command's first write copies the file first.
             e.clock.set(QDateTime(QDate(2026, 3, 16), QTime(9, 0)));
         },
         [](EditorEnv& e) {
             e.open_new(QDate(2026, 3, 16), QStringLiteral("12:00"));
             e.f.Text1 = QStringLiteral("Lunch walk");
             e.f.aptTimePick2 = QTime(12, 30);
             e.rule(1, 1, QStringLiteral("05/31/26"));
             e.ok();
         },
         couldnt,
         {},
         true},
        {"ReminderRewrite", calendar,
         [](EditorEnv& e) {
             const int row = row_of_text(e.s, QStringLiteral("Dentist"));
             e.m.forms["frmRem1"] = [&e] { e.s.rem_lead = 20; };
             open_rem_setup(e.s, QStringLiteral("CalDtlRem"), row);
         },
         couldnt},
    };
}

// Names a scenario in test output instead of dumping its bytes.
void PrintTo(const Scenario& sc, std::ostream* os) {
    *os << sc.name;
}

struct Outcome {
    bool fired = false;
    QString kind;
};

// Runs the scenario once in a fresh folder with call `nth` of the command
// failing (0: none), checks what the user and the file are left with, and
// reports whether the fault was met.
Outcome run_once(const Scenario& sc, long nth, int write_code, long* calls = nullptr,
                 Snapshot* after = nullptr) {
    IoShim& io = IoShim::install();
    auto env = std::make_unique<EditorEnv>();
    EditorEnv& e = *env;
    sc.setup(e);
    if (::testing::Test::HasFatalFailure()) return {};
    const QString file = sc.file ? sc.file(e) : e.s.cal_path;
    // Closed, so that the command opens and checks the file itself: those
    // calls are failed in turn too.
    e.s.archive.close(e.s.cal_path);
    const Snapshot before = snapshot(file);
    const bool existed = QFile::exists(file);
    const QStringList tables_before = tables_of(e.s);
    e.m.shown.clear();

    io.reset_counts();
    io.fail_call(nth, write_code);
    sc.run(e);
    report_store_notices(e.s);
    const Outcome out{io.fired(), io.fired_kind()};
    io.fail_call(0, write_code);
    if (calls) *calls = io.calls();
    if (nth == 0) {
        if (after) {
            e.s.archive.close(file);
            *after = snapshot(file);
        }
        return out;
    }
    const QStringList backups =
        QDir(e.dir.filePath(QStringLiteral("backups"))).entryList(QDir::Files);
    for (const QString& name : backups)
        EXPECT_TRUE(name.endsWith(QLatin1String(".cal"))) << "a stray file: " << name.toStdString();

    const std::string where = std::string(sc.name) + " call " + std::to_string(nth) + " (" +
                              out.kind.toStdString() + ", code " + std::to_string(write_code) + ")";
    EXPECT_TRUE(out.fired) << where;
    if (sc.takes_backup && after) {
        bool backup_told = false;
        for (const QString& m : e.m.messages())
            backup_told = backup_told || m.startsWith(QLatin1String("Today's backup copy"));
        if (backup_told) {
            // The copy failed, the change went ahead whole.
            e.s.archive.close(file);
            EXPECT_TRUE(quick_check_ok(file)) << where;
            EXPECT_TRUE(snapshot(file) == *after) << where << ": the change is not whole";
            EXPECT_EQ(tables_of(e.s), fresh_load(e.s)) << where;
            EXPECT_EQ(e.s.status_panels[QStringLiteral("nbrAppts ")].text,
                      QString(" Calendar Updated "))
                << where;
            return out;
        }
    }
    bool told = false;
    for (const QString& m : e.m.messages())
        told = told || m.startsWith(sc.message);
    EXPECT_TRUE(told) << where << ": the user was not told";
    EXPECT_NE(e.s.status_panels[QStringLiteral("nbrAppts ")].text, QString(" Calendar Updated "))
        << where;
    e.s.archive.close(file);
    e.s.archive.close(e.s.cal_path);
    EXPECT_EQ(QFile::exists(file), existed) << where;
    if (existed) {
        EXPECT_TRUE(quick_check_ok(file)) << where;
        EXPECT_TRUE(snapshot(file) == before) << where << ": the file changed";
    }
    EXPECT_EQ(tables_of(e.s), fresh_load(e.s)) << where << ": the tables differ from the file";
    EXPECT_EQ(tables_of(e.s), tables_before) << where;
    const QStringList left = QDir(e.dir.path()).entryList(QDir::Files);
    for (const QString& name : left)
        EXPECT_TRUE(name.startsWith(QLatin1String("calendar.cal")))
            << where << ": " << name.toStdString();
    return out;
}

class FaultInjection : public ::testing::TestWithParam<Scenario> {};

} // namespace

TEST_P(FaultInjection, EveryFailedCallLeavesTheFileAsItWasAndTellsTheUser) {
    const Scenario& sc = GetParam();
    long total = 0;
    Snapshot after;
    run_once(sc, 0, SQLITE_IOERR_WRITE, &total, &after);
    ASSERT_GT(total, 0) << "the command made no I/O call";
    long injected = 0;
    for (long n = 1; n <= total; ++n) {
        const Outcome o = run_once(sc, n, SQLITE_IOERR_WRITE, nullptr, &after);
        injected += o.fired;
        if (o.kind == u"write") injected += run_once(sc, n, SQLITE_FULL, nullptr, &after).fired;
        if (HasFailure()) break;
    }
    std::printf("FaultInjection %s: %ld calls, %ld faults injected\n", sc.name, total, injected);
    EXPECT_GE(injected, total);
}

INSTANTIATE_TEST_SUITE_P(Commands, FaultInjection, ::testing::ValuesIn(scenarios()),
                         [](const ::testing::TestParamInfo<Scenario>& i) {
                             return std::string(i.param.name);
                         });
