#include "core/ui/tray_probe.h"

#include <QSystemTrayIcon>

namespace orva {
namespace {

std::function<bool()>& probe() {
    static std::function<bool()> p;
    return p;
}

} // namespace

bool system_tray_available() {
    if (probe()) return probe()();
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void install_tray_probe(std::function<bool()> p) {
    probe() = std::move(p);
}

} // namespace orva
