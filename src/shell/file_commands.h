#pragma once

#include "store/shared.h"

#include <QDate>
#include <QString>
#include <functional>

namespace orva {

// The File menu's calendar commands: they ask and tell through the modal
// seam, and work the calendar file through the store, each change in one
// command of it.

// What the File commands need of the rest of the program. A hook that is not
// set falls away; the command goes on with the next step.
struct CalendarHooks {
    std::function<QDate()> shown_month;      // the navigator's month and year
    std::function<void()> load_options;      // options of the new cal_path
    std::function<void()> reset_counters;    // day, week and month counters to 0
    std::function<void()> rebuild_view;      // the current planner, ending in an options save
    std::function<void(bool)> enable_delete; // the File > Delete command
};

// File > New, File > Open, File > Delete, with their dialogs and messages
// through the modal seam.
void new_calendar(Shared& s, const CalendarHooks& h);
void open_calendar(Shared& s, const CalendarHooks& h);
void delete_calendar(Shared& s, const CalendarHooks& h);

// What the user is told when a calendar cannot take changes (at start and on
// open), when File New could not write the new file (the error number
// follows), and when File Delete could not remove it.
QString cannot_write_text(const QString& cal_file);
QString couldnt_create_text(const QString& cal_file);
QString couldnt_delete_calendar_text(const QString& cal_file);
// A calendar file refused at start or at File > Open (error 321: not a
// calendar; 75: damaged; any other: it cannot be read), and a data folder
// where no lock can be taken.
QString refused_text(const QString& cal_file, int error);
QString folder_unwritable_text(const QString& folder);
QString damaged_member_text(const QString& cal_file, const QString& member);
QString backup_failed_text(const QString& cal_file, int error);

// Tells the user what the store noted since the last call: damaged members
// (each once) and a daily backup that could not be made. The window runs it
// after every command; start-up and File > Open at their end.
void report_store_notices(Shared& s);

} // namespace orva
