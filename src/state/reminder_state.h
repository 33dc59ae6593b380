#pragma once

#include "grid/grid.h"

#include <QString>

namespace orva {

// What the reminder setup and the delivery of reminders keep between the
// forms that share them.
struct ReminderState {
    QString rem_from; // who opened the reminder setup: "apptfrm" or "CalDtlRem"
    int rem_row = 0;  // the row of appt_tbl of a "CalDtlRem" setup
    // The messenger of the delivery or preview: "2" plane towing the banner,
    // "3" plane alone; anything else flies none.
    QString msg_anim;
    QString msg_sound; // the sound path of the delivery, from rmdr_alarm_text
    int note_row = 0;  // the row of rmdr_tbl that remind-again acts on
    // True only while the reminder setup previews its sound or messenger; the
    // note then shows a sentence instead of reminders. Cleared at every tick.
    bool preview_anim = false;
    bool preview_sound = false;
};

} // namespace orva
