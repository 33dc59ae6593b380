#include "core/ui/dbus_notifier.h"

#include <QDebug>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QVariantMap>

namespace orva {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");

} // namespace

void DBusNotifier::post(const QString& summary, const QString& body) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const QDBusConnectionInterface* names = bus.interface();
    if (!names || !names->isServiceRegistered(service)) return;
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/Notifications"), service, QStringLiteral("Notify"));
    QVariantMap hints;
    // Critical: a reminder stays until the user has seen it, as the note does.
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(uchar(2)));
    hints.insert(QStringLiteral("desktop-entry"), QStringLiteral("orvacal"));
    call << QStringLiteral("Orva Calendar") << uint(0) << QStringLiteral("x-office-calendar")
         << summary << body << QStringList() << hints << int(-1);
    if (!bus.send(call)) qWarning() << "notification not sent:" << bus.lastError().message();
}

} // namespace orva
