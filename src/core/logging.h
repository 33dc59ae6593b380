#pragma once

#include <QLoggingCategory>

namespace orva {

// Everything that goes wrong with a calendar file is logged here, whether the
// store met it or a command above it did.
Q_DECLARE_LOGGING_CATEGORY(lcStore)

} // namespace orva
