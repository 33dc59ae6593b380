#pragma once

#include "../store/store_fixtures.h"
#include "../support/scripted_modal.h"
#include "core/clock.h"
#include "state/app_state.h"
#include "tlist/tlist.h"

#include <QTemporaryDir>
#include <memory>

namespace orva::testing {

// A T-List under test: a temporary application folder with a calendar path
// (the file is made by the first save), the clock stopped on Sunday
// 2026-03-15 at 09:10, the options' font "DejaVu Sans" 9, and a scripted
// modal seam.
struct ToDoEnv {
    QTemporaryDir dir;
    FixedClock clock{QDateTime(QDate(2026, 3, 15), QTime(9, 10))};
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
    ScriptedModal m;
    ModalGuard guard{&m};

    ToDoEnv() {
        install_clock(&clock);
        fresh_state();
    }
    ~ToDoEnv() { install_clock(nullptr); }

    AppState& s() { return *state; }

    // The program started anew on the same folder: a new shared module,
    // nothing remembered but the calendar file.
    void fresh_state() {
        if (state) state->archive.close(cal());
        state = std::make_unique<AppState>();
        state->app_path = dir.path();
        state->cal_path = cal();
        state->cur_date = clock.today();
        state->grid_font_name = QStringLiteral("DejaVu Sans");
        state->grid_font_size = QStringLiteral("9");
        state->grid_font_color = QStringLiteral("0");
    }

    QString cal() const { return dir.filePath(QStringLiteral("calendar.cal")); }

    // The sheet opened as the form opens it.
    std::unique_ptr<ToDoForm> open() {
        auto f = std::make_unique<ToDoForm>();
        frmToDo_Load(s().store(), s().view(), s().options(), *f);
        return f;
    }

    // The member as it stands in the file, read on a connection of its own;
    // empty when there is none.
    QByteArray member() {
        Archive a;
        QByteArray bytes;
        if (a.get(cal(), todo_member, bytes) != 0) return {};
        return bytes;
    }
};

} // namespace orva::testing
