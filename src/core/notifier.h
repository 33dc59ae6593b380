#pragma once

#include <QString>

namespace orva {

// The desktop's notification service, where it runs one. A delivered reminder
// is also posted there, so that it reaches a user who is looking at another
// workspace; without a service nothing is posted and nothing else changes.
class Notifier {
  public:
    virtual ~Notifier() = default;
    virtual void post(const QString& summary, const QString& body) = 0;
};

// The installed notifier; a silent one until the program installs its own.
Notifier& notifier();
void install_notifier(Notifier* n);

} // namespace orva
