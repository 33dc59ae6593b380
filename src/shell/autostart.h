#pragma once

#include "state/app_state.h"

#include <QByteArray>
#include <QString>

namespace orva {

// "Start when computer starts": an XDG autostart entry, which the desktop
// runs at login. The check is an option of the calendar (column 19); the
// entry belongs to the user, so calendars with different checks share it.

// $XDG_CONFIG_HOME/autostart, or ~/.config/autostart when the variable is
// unset or not an absolute path.
QString autostart_folder();
// The entry's file in that folder.
QString autostart_entry_path();
inline const QString autostart_file_name = QStringLiteral("orvacal.desktop");

// The entry's text for the program at `program` (an absolute path). It runs
// the program with the argument "0", which the program does not read.
QByteArray autostart_entry(const QString& program);

// Writes the entry whole or not at all, making the folder when missing.
// Returns 0, or an error number: 70 permission denied, 61 disk full, 76 a
// folder on the way missing or a file, 57 an I/O error, 75 anything else.
int create_start_link(const QString& program);
// Removes the entry. An entry already gone is no failure. Same numbers.
int delete_start_link();

// Toggles the check and the entry at once: checked, it unchecks and deletes
// the entry; unchecked, it writes the entry and checks, even when the write
// failed. A failure is told as the text below plus its number, information
// style, and the command goes on. The options are saved with the new check.
void mnuStart_Click(Shared& store, const PlannerState& view, OptionsState& options, WindowPort& w,
                    const QString& program);

inline const QString create_link_failed_text = QStringLiteral("couldn't create start menu link ");
inline const QString delete_link_failed_text = QStringLiteral("couldn't delete start menu link ");

} // namespace orva
