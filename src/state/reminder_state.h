#pragma once

#include <QString>

namespace orva {

// What the reminder setup and the delivery of reminders keep between the
// forms that share them.
struct ReminderState {
    QString rem_from; // who opened the reminder setup: "apptfrm" or "CalDtlRem"
    int rem_row = 0;  // the row of appt_tbl of a "CalDtlRem" setup
    QString msg_anim; // the messenger of the next flight ("2", "3"); anything else flies none
};

} // namespace orva
