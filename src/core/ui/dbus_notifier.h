#pragma once

#include "core/notifier.h"

namespace orva {

// Posts to org.freedesktop.Notifications on the session bus, when a service
// owns that name; otherwise posts nothing. Never waits for the service.
class DBusNotifier final : public Notifier {
  public:
    void post(const QString& summary, const QString& body) override;
};

} // namespace orva
