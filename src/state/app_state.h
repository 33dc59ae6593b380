#pragma once

#include "core/window_port.h"
#include "state/editor_state.h"
#include "state/help_state.h"
#include "state/options_state.h"
#include "state/planner_state.h"
#include "state/print_state.h"
#include "state/reminder_state.h"
#include "state/run_state.h"
#include "store/shared.h"

namespace orva {

// The whole shared module, one part per owner: the store's tables and files
// (Shared), the planners (PlannerState), the options (OptionsState), the
// editor's hand-over (EditorState), the reminders (ReminderState), the
// running program (RunState), the help viewer's hand-over (HelpState) and
// the print jobs (PrintState). A routine takes the parts it uses, so that its
// signature says what it may change; only the commands that reach into all of
// them take the whole. One instance for the process; tests make their own.
struct AppState : Shared,
                  PlannerState,
                  OptionsState,
                  EditorState,
                  ReminderState,
                  RunState,
                  HelpState,
                  PrintState {
    Shared& store() { return *this; }
    PlannerState& view() { return *this; }
    OptionsState& options() { return *this; }
    EditorState& editing() { return *this; }
    ReminderState& reminders() { return *this; }
    RunState& run() { return *this; }
    HelpState& help() { return *this; }
    PrintState& printing() { return *this; }
};

} // namespace orva
