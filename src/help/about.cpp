#include "help/about.h"

namespace orva {

AboutText about_text() {
    return {QStringLiteral("About ") + QStringLiteral(ORVACAL_PROGRAM_NAME),
            QStringLiteral("Version %1.%2.%3")
                .arg(ORVACAL_VERSION_MAJOR)
                .arg(ORVACAL_VERSION_MINOR)
                .arg(ORVACAL_VERSION_PATCH)};
}

} // namespace orva
