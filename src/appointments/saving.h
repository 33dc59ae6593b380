#pragma once

#include <QDateTime>
#include <QString>

namespace orva {

// The key of a new entry, 12 characters: day of the month "dd", the time
// "hhnnss", then month number and seconds without leading zeros, left-filled
// with zeros to four ("0412", "1259"). No more unique than its clock: two
// entries saved in the same second on the same day of any month share it.
QString appt_id_at(const QDateTime& now);
// appt_id_at the clock's now.
QString new_appt_id();

} // namespace orva
