#pragma once

#include "../views/view_fixtures.h"
#include "printing/print_setup.h"
#include "views/day_view.h"
#include "views/detail_pane.h"

#include <QDir>
#include <gtest/gtest.h>
#include <vector>

namespace orva::testing {

// What one call of the installed print_grid saw: the grid as it was handed
// over, the setup, name and margins, and what stood around it.
struct PrintedCopy {
    Grid grid;
    int width = 0, height = 0; // the grid's extent, which a copy of it leaves behind
    PrintSetup setup;
    QString name;
    int margin_lr = 0, margin_tb = 0;
    bool ticking = true;
    bool copy_file_present = false;
};

// Stands in for the grid layer's PrintGrid: keeps each call and answers
// `ok` (false: the printer or file failed).
struct PrintRecorder {
    std::vector<PrintedCopy> copies;
    bool ok = true;

    void install(AppState& s) {
        s.print_grid = [this, &s](const Grid& g, const PrintSetup& setup, const QString& name,
                                  int lr, int tb) {
            copies.push_back({g, g.Width(), g.Height(), setup, name, lr, tb, s.timer1_enabled,
                              QDir(s.app_path).exists(print_copy_file)});
            return ok;
        };
    }
};

// The day planner of Sunday 2026-03-15 with the clock at 09:10: a timed
// entry over the clock's half hour, an untimed one and an afternoon one, the
// band's caption set, the tick running and a recorder for what is printed.
class PrintTest : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;
    ScriptedModal& m = env.m;
    PrintRecorder printed;

    void SetUp() override {
        env.add(env.entry(QStringLiteral("p1"), QStringLiteral("09:00"), QStringLiteral("10:00"),
                          QStringLiteral("Dentist")));
        env.add(env.entry(QStringLiteral("p2"), QStringLiteral("     "), QStringLiteral("     "),
                          QStringLiteral("Mum's birthday"), QStringLiteral("Birthday")));
        env.add(env.entry(QStringLiteral("p3"), QStringLiteral("14:00"), QStringLiteral("16:30"),
                          QStringLiteral("Hike up the hill"), QStringLiteral("Backpack")));
        rebuild(s);
        mark_now_row(s);
        set_label1(s, env.w, s.cur_date);
        s.view_day = true;
        s.timer1_enabled = true;
        printed.install(s);
    }

    // Accepts the next print dialog as it was preset, to a PDF file.
    void accept() { m.print_to_pdf.push_back(env.dir.filePath(QStringLiteral("out.pdf"))); }
    // Accepts it with `setup` as the user's choice.
    void accept(const PrintSetup& setup) { m.print_answers.push_back(setup); }

    bool copy_file_left() const { return QDir(s.app_path).exists(print_copy_file); }
};

} // namespace orva::testing
