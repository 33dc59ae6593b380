#include "core/logging.h"

namespace orva {

Q_LOGGING_CATEGORY(lcStore, "orvacal.store")
Q_LOGGING_CATEGORY(lcSound, "orvacal.sound")
Q_LOGGING_CATEGORY(lcShell, "orvacal.shell")

} // namespace orva
