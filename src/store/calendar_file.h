#pragma once

#include "store/shared.h"

#include <QDate>
#include <QString>
#include <functional>

namespace orva {

// Month members of a calendar file. Nothing is changed inside the archive in
// place: a member is extracted to a loose copy in app_path, read or changed
// there as 8-bit text, added back, and the loose copy deleted. Every routine
// runs with errors passed over; only the ones noted report.

// Member names, "c" + yymm + ".cal" and "r" + yymm + ".rmd"; the loose copy of
// a member is Shared::loose(name).
QString appt_member_name(const QString& yymm);
QString rmdr_member_name(const QString& yymm);

// Forms the loose path, deletes a file left there from before, and extracts
// the member to it. Returns the archive's error number (53: no such member).
int extract_appt_member(Shared& s, const QString& cal_file, QString& loose_path,
                        const QString& yymm);
// The same for reminders, except that it deletes nothing first.
int extract_rmdr_member(Shared& s, const QString& cal_file, QString& loose_path,
                        const QString& yymm);

// Fills appt_tbl from the member of date's month and the extra_months after.
void load_appts(Shared& s, const QDate& date, const QString& cal_file, int extra_months);
void load_appt_month(Shared& s, const QString& yymm, const QString& cal_file);
// Fills rmdr_tbl from earlier months up to date's month: months_back below 4
// reads the three months before and date's own; otherwise months_back before.
void load_rmdrs(Shared& s, const QDate& date, const QString& cal_file, int months_back);
void load_rmdr_month(Shared& s, const QString& yymm, const QString& cal_file);

// io_mode 8 appends row `row` of appt_tbl to its member; 2 rewrites the
// members of rows 1..row, which must stand together by month.
void write_appts(Shared& s, const QString& cal_file, int io_mode, int row);
// Appends rows 1..occur_count of occur_tbl to their members. A count past the
// table's limit stops the writing at the first missing row; the month then
// open is left as it was.
void write_occurs(Shared& s, const QString& cal_file);
// io_mode 2 rewrites the members of every row of rmdr_tbl; any other value
// appends the last row.
void save_rmdrs(Shared& s, int io_mode, const QString& cal_file);
// Appends one reminder line to the member of its rmdr_date.
void append_rmdr_line(Shared& s, const QString& cal_file, const rmdr_rec& r);
// Appends rows first..last of rmdr_tbl to their members, one extract and add
// per run of rows of the same month; rows past the table's limit are passed
// over.
void append_rmdr_rows(Shared& s, const QString& cal_file, int first, int last);

enum class MemberKind { appointments, reminders };
// Rewrites one month's member without the lines whose id is `key`; a member
// with no line left is removed from the archive. Returns the lines kept.
int delete_by_key(Shared& s, const QString& cal_file, MemberKind kind, const QString& yymm,
                  const QString& key);

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

} // namespace orva
