#pragma once

#include "../store/store_fixtures.h"
#include "../support/fake_window.h"
#include "../support/scripted_modal.h"
#include "core/clock.h"
#include "state/app_state.h"
#include "store/calendar_file.h"
#include "views/day_view.h"

#include <QTemporaryDir>

namespace orva::testing {

// A planner under test: a temporary application folder with an open calendar
// path, the clock stopped on Sunday 2026-03-15 at 09:10, a fresh shared
// module, a fake window and a scripted modal seam. The grids get the extents
// the main window gives them at 1280x800 so that sizing has something to work
// from.
// The day grid as a date change leaves it.
inline void rebuild(AppState& s) {
    s.vsSched.Clear();
    format_day_grid(s);
    build_day_rows(s.view(), s.options());
    s.first_row.clear();
    s.first_col.clear();
    fill_day(s.store(), s.view(), s.options());
    size_sched_cols(s);
}

struct ViewEnv {
    QTemporaryDir dir;
    FixedClock clock{QDateTime(QDate(2026, 3, 15), QTime(9, 10))};
    AppState s;
    FakeWindow w;
    ScriptedModal m;
    ModalGuard guard{&m};

    ViewEnv() {
        install_clock(&clock);
        s.app_path = dir.path();
        s.cal_path = dir.filePath(QStringLiteral("calendar.cal"));
        s.cur_date = clock.today();
        s.today_day = s.cur_date.day();
        s.grid_font_name = QStringLiteral("DejaVu Sans");
        s.grid_font_size = QStringLiteral("9");
        s.grid_font_color = QStringLiteral("0");
        s.vsSched.set_extent(12000, 9000);
        s.Cal.set_extent(3600, 2400);
        s.vsDtl.set_extent(4455, 1750);
    }
    ~ViewEnv() { install_clock(nullptr); }

    // Appends one occurrence to its month member through the store and
    // reloads cur_date's month, as a saved entry would be.
    void add(const appt_rec& r) {
        s.occur_count = 1;
        *s.occur_row(1) = r;
        ASSERT_EQ(write_occurs(s, s.cal_path), 0);
        ASSERT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    }
    // An entry on cur_date from start to end ("hh:mm", blanks for untimed).
    appt_rec entry(const QString& id, const QString& start, const QString& end, const QString& text,
                   const QString& type = QStringLiteral("Car")) const {
        appt_rec r = make_appt(s.cur_date.toString(QStringLiteral("MMddyyyy")), id, start, text);
        r.appt_start = start;
        r.appt_end = end;
        r.appt_type = type;
        return r;
    }
};

} // namespace orva::testing
