#include "core/logging.h"

namespace orva {

Q_LOGGING_CATEGORY(lcStore, "orvacal.store")

} // namespace orva
