#pragma once

#include <QLoggingCategory>

namespace orva {

// Everything that goes wrong with a calendar file is logged here, whether the
// store met it or a command above it did.
Q_DECLARE_LOGGING_CATEGORY(lcStore)

// Sounds that cannot play are logged here: the user hears nothing and, but
// for a fault of the sound system itself, is not told.
Q_DECLARE_LOGGING_CATEGORY(lcSound)

// The shell's dealings with the desktop: the tray and the autostart entry.
Q_DECLARE_LOGGING_CATEGORY(lcShell)

} // namespace orva
