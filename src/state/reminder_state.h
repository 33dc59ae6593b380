#pragma once

#include "grid/grid.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace orva {

// frmRemnote as the logic sees it: the grid of due reminders and the box that
// arms one again. It exists from the first add_to_note of a delivery until its
// OK, which clears it.
struct RemNote {
    // Columns: "Appt Date/Time" (with the sticker's picture), "Description",
    // and two hidden sort keys: the date and time text again, and nothing.
    Grid gRmdr{1, 4};
    QString caption = QStringLiteral("Reminder");
    bool Check1_visible = true;
    bool Check1_enabled = true;
    int Check1 = 0; // "Remind me again": 1 ticked
    std::vector<int> rows; // the rows of rmdr_tbl it delivers, in table order
};

// frmReRmdr: minutes, 1 to 59, to arm the note's reminder again.
struct ReRmdrForm {
    QStringList comboReRmdr;
    int list_index = 0;
};

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
    RemNote note;
    // A delivery is under way: its note or messenger is open.
    bool delivering = false;
};

} // namespace orva
