#include "core/ui/dbus_notifier.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>
#include <QVariantMap>
#include <gtest/gtest.h>

namespace orva {
namespace {

// A desktop's notification service as far as a post needs one: it keeps what
// it was asked to show.
class NotificationService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
  public:
    QStringList seen;
  public slots:
    uint Notify(const QString& app, uint, const QString&, const QString& summary,
                const QString& body, const QStringList&, const QVariantMap& hints, int) {
        seen << app + " | " + summary + " | " + body + " | urgency " +
                    QString::number(hints.value("urgency").toInt());
        return uint(seen.size());
    }
};

// A session bus of the test's own: the notifier reads its address at its
// first use, so every test of this program shares it.
class PrivateBus {
  public:
    PrivateBus() {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        if (!daemon_.waitForStarted(5000) || !daemon_.waitForReadyRead(5000)) return;
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
    }
    ~PrivateBus() {
        daemon_.kill();
        daemon_.waitForFinished(2000);
    }
    const QString& address() const { return address_; }

  private:
    QProcess daemon_;
    QString address_;
};

PrivateBus& bus() {
    static PrivateBus b;
    return b;
}

TEST(DesktopNotification, WithoutAServiceNothingIsPostedAndNothingWaits) {
    ASSERT_FALSE(bus().address().isEmpty()) << "dbus-daemon did not start";
    ASSERT_FALSE(QDBusConnection::sessionBus().interface()->isServiceRegistered(
        "org.freedesktop.Notifications"));
    DBusNotifier().post("Monday, 16 March 2026", "16/03/2026   09:00 AM  Dentist");
    SUCCEED();
}

TEST(DesktopNotification, ServiceOnTheBusReceivesTheDeliveryAsCritical) {
    ASSERT_FALSE(bus().address().isEmpty()) << "dbus-daemon did not start";
    QDBusConnection desktop = QDBusConnection::connectToBus(bus().address(), "desktop");
    ASSERT_TRUE(desktop.isConnected());
    NotificationService service;
    ASSERT_TRUE(desktop.registerObject("/org/freedesktop/Notifications", &service,
                                       QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(desktop.registerService("org.freedesktop.Notifications"));

    DBusNotifier().post("Monday, 16 March 2026",
                        "16/03/2026   09:00 AM  Dentist\n16/03/2026   09:30 AM  Garage");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !service.seen.isEmpty(); }, 5000));
    EXPECT_EQ(service.seen,
              QStringList{"Orva Calendar | Monday, 16 March 2026 | 16/03/2026   09:00 AM  "
                          "Dentist\n16/03/2026   09:30 AM  Garage | urgency 2"});
    desktop.unregisterService("org.freedesktop.Notifications");
    QDBusConnection::disconnectFromBus("desktop");
}

} // namespace
} // namespace orva

#include "dbus_notifier_test.moc"
