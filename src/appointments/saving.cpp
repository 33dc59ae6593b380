#include "appointments/saving.h"

#include "shell/clock.h"

namespace orva {

QString appt_id_at(const QDateTime& now) {
    const QString ms = QString::number(now.date().month()) + QString::number(now.time().second());
    return now.toString(QStringLiteral("dd")) + now.toString(QStringLiteral("HHmmss")) +
           ms.rightJustified(4, QLatin1Char('0'));
}

QString new_appt_id() {
    return appt_id_at(clock().now());
}

} // namespace orva
