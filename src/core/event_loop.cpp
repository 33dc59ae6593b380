#include "core/event_loop.h"

#include <utility>

namespace orva {
namespace {
std::function<void()>& hook() {
    static std::function<void()> h;
    return h;
}
} // namespace

void yield_events() {
    if (hook()) hook()();
}

void install_yield_hook(std::function<void()> h) {
    hook() = std::move(h);
}

} // namespace orva
