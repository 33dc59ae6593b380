#include "core/app_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace orva {

QString app_folder() {
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(dir);
    return dir;
}

QStringList shipped_data_files() {
    return {QStringLiteral("Tzones.ach"), QStringLiteral("Calendar.hlp1"),
            QStringLiteral("airp-tdc10.wav")};
}

void install_shipped_data(const QString& app_path) {
    // An installed program finds its data under the prefix; one run from the
    // build tree finds it in the build tree (what the build packs, the help
    // archive) and in the source tree (what is committed).
    QStringList sources{QStringLiteral(ORVACAL_SHARE_DIR)};
    if (QCoreApplication::instance())
        sources << QCoreApplication::applicationDirPath() + QStringLiteral("/../share/orvacal");
    sources << QStringLiteral(ORVACAL_BUILD_DATA_DIR) << QStringLiteral(ORVACAL_SOURCE_DATA_DIR);
    for (const QString& name : shipped_data_files()) {
        const QString target = QDir(app_path).filePath(name);
        if (QFile::exists(target)) continue;
        for (const QString& dir : sources) {
            const QString from = QDir(dir).filePath(name);
            if (QFile::exists(from) && QFile::copy(from, target)) break;
        }
    }
}

QString first_calendar_path(const QString& app_path) {
    return QDir(app_path).filePath(QStringLiteral("calendar.cal"));
}

} // namespace orva
