#pragma once

#include <functional>

namespace orva {

// Long loops (member reads, series generation) call this once per step so the
// window stays alive. A click or a tick may therefore run inside such a loop;
// the archive's command depth keeps them from splitting a transaction.
void yield_events();

// The application installs the real hook (the Qt event loop); without one,
// yield_events does nothing, which is what headless tests want.
void install_yield_hook(std::function<void()> hook);

} // namespace orva
