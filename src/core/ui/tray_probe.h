#pragma once

#include <functional>

namespace orva {

// Whether the desktop has a tray that shows our icon now. On a bare X server
// and on some Wayland desktops there is none, and a hidden window could not
// be brought back. Qt's answer, unless a test installed its own.
bool system_tray_available();

// A test's answer in place of Qt's; an empty function puts Qt's back.
void install_tray_probe(std::function<bool()> probe);

} // namespace orva
