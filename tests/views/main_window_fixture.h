#pragma once

#include "core/clock.h"
#include "grid/ui/grid_widget.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"
#include "store/calendar_file.h"
#include "store/store_fixtures.h"
#include "support/scripted_modal.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace orva::testing {

// The main window on a calendar holding a morning of overlapping, untimed and
// long entries on Saturday 2026-11-21, with the clock at 09:40. Tests add
// more entries before launch() and may launch again after closing.
class MainWindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
        add("211", "09:00", "10:00", "Dentist", "Dentist");
        add("212", "09:30", "11:00", "Team meeting", "Computer");
        add("213", "     ", "     ", "Mum's birthday", "Birthday");
        add("214", "13:00", "17:30", "Hike up the hill", "Backpack");
    }
    void TearDown() override {
        run.reset();
        install_clock(nullptr);
    }
    // One more entry on `day` ("mmddyyyy"), written to the calendar.
    void add(const char* id, const char* start, const char* end, const char* text, const char* type,
             const char* day = "11212026") {
        Shared seed;
        seed.app_path = dir.path();
        seed.cal_path = dir.filePath("calendar.cal");
        appt_rec r = make_appt(day, id, start, text);
        r.appt_start = QString::fromLatin1(start);
        r.appt_end = QString::fromLatin1(end);
        r.appt_type = QString::fromLatin1(type);
        r.appt_notes = QStringLiteral("Bring the insurance card");
        seed.occur_count = 1;
        *seed.occur_row(1) = r;
        EXPECT_EQ(write_occurs(seed, seed.cal_path), 0);
    }

    struct Run {
        AppState state;
        std::unique_ptr<SingleInstance> instance;
        std::unique_ptr<frmCal> window;
    };
    void launch(QSize size = QSize(1280, 800)) {
        run = std::make_unique<Run>();
        run->state.app_path = dir.path();
        run->instance = std::make_unique<SingleInstance>(dir.path());
        run->window = std::make_unique<frmCal>(run->state);
        ASSERT_TRUE(run->window->start(*run->instance));
        run->window->resize(size);
        run->window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(run->window.get()));
        QApplication::processEvents();
        for (const char* g : {"vsSched", "vsOvervw"})
            if (auto* w = run->window->findChild<GridWidget*>(g)) w->refresh();
    }
    AppState& s() { return run->state; }
    GridWidget* sched() { return run->window->findChild<GridWidget*>("vsSched"); }
    template <typename T> T* find(const char* name) { return run->window->findChild<T*>(name); }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(9, 40))};
    ScriptedModal m;
    ModalGuard guard{&m};
    std::unique_ptr<Run> run;
};

} // namespace orva::testing
