#include "core/clock.h"

namespace orva {
namespace {
SystemClock system_clock;
Clock* current = &system_clock;
} // namespace

Clock& clock() {
    return *current;
}
void install_clock(Clock* c) {
    current = c ? c : &system_clock;
}

} // namespace orva
