#pragma once

#include "core/window_port.h"

namespace orva {

// What the running program itself keeps: how it was started and placed, the
// main tick's switch, and the state of the commands the main window offers.
struct RunState {
    bool startup_move = false;       // the window is being placed: resizing stands aside
    bool stay_open = false;          // the user declined to leave
    int months_back = 0;             // months since the calendar was last used
    bool delete_enabled = true;      // File > Delete
    bool sysCalender_enabled = true; // tray menu's "show calendar"
    // The main tick's switch; stopped around modal forms and date changes so
    // that a tick cannot refill a planner in the middle of a rebuild.
    bool timer1_enabled = false;
    // The main window, for a planner rebuilt at the end of a command that was
    // not started from it (the editor's save, a delete from the editor).
    // Unset, those rebuilds use a window that places nothing.
    WindowPort* window = nullptr;
    WindowPort& window_port() { return window ? *window : no_window(); }
};

} // namespace orva
