#include "core/notifier.h"

namespace orva {
namespace {

class SilentNotifier final : public Notifier {
  public:
    void post(const QString&, const QString&) override {}
};

SilentNotifier silent;
Notifier* current = &silent;

} // namespace

Notifier& notifier() {
    return *current;
}
void install_notifier(Notifier* n) {
    current = n ? n : &silent;
}

} // namespace orva
