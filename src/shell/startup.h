#pragma once

#include "state/app_state.h"

namespace orva {

class SingleInstance;

inline const QString already_running_text = QStringLiteral(
    "Orva Calendar already running.  Click minimized window or Click the ICON in the taskbar.");

// Calendar months from one date to another (day of month ignored); negative
// when `to` lies before `from`.
int months_between(const QDate& from, const QDate& to);

// Start-up of the main form. app_path must be set. Returns false when another
// instance runs or the data folder cannot be written: the message has been
// shown and nothing else has happened. A calendar file that is none, or is
// damaged, is refused with a message and left untouched; the program then
// runs with no calendar open.
bool Form_Load(AppState& s, WindowPort& w, SingleInstance& instance);

// Keeps the window on the work area, lays out the planner and saves the
// placement; stands aside while startup_move is up.
void Form_Resize(Shared& store, const PlannerState& view, OptionsState& options,
                 const RunState& run, WindowPort& w);

// The close box. Returns true when closing is cancelled (the user said No).
bool Form_Unload(Shared& store, const PlannerState& view, OptionsState& options, RunState& run,
                 WindowPort& w);

// The one way out. Asks when undelivered reminders for today exist; ends the
// program unless the user answers No, which sets stay_open.
void confirm_exit(Shared& store, const PlannerState& view, OptionsState& options, RunState& run,
                  WindowPort& w);

// Reminders dated today and not yet delivered; their time is not looked at.
int pending_today(const Shared& store);

inline const QString exit_question_text =
    QStringLiteral("Pending reminders for the day will not be displayed if you exit now.\n"
                   "(Use the Hide feature to remain active.)\n"
                   "Do you still want to exit? ");

} // namespace orva
