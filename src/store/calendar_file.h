#pragma once

#include "store/shared.h"

#include <QDate>
#include <QString>

namespace orva {

// Month members of a calendar file. A member is read whole into memory,
// changed there and stored back whole, inside the command's transaction; no
// copy of it ever touches the disk on the way.
//
// Every routine returns 0 or the error number of its first failed step (see
// errors.h); 53 from a read only means the month has no member, which is no
// failure. Inside an Archive::Command a failed step has already failed the
// whole command, so a caller may stop at once.

// The io_mode of the write routines: append the lines to what the member
// holds, or write the member anew with only them.
inline constexpr int append_mode = 8;
inline constexpr int rewrite_mode = 2;

// Member names, "c" + yymm + ".cal" and "r" + yymm + ".rmd".
QString appt_member_name(const QString& yymm);
QString rmdr_member_name(const QString& yymm);

// The bytes of the month's member. 53: no such member (bytes empty).
[[nodiscard]] int extract_appt_member(Shared& s, const QString& cal_file, QByteArray& member,
                                      const QString& yymm);
[[nodiscard]] int extract_rmdr_member(Shared& s, const QString& cal_file, QByteArray& member,
                                      const QString& yymm);

// Fills appt_tbl from the member of date's month and the extra_months after.
// A month that cannot be read is left out; the first such error is returned.
[[nodiscard]] int load_appts(Shared& s, const QDate& date, const QString& cal_file,
                             int extra_months);
[[nodiscard]] int load_appt_month(Shared& s, const QString& yymm, const QString& cal_file);
// Fills rmdr_tbl from earlier months up to date's month: months_back below 4
// reads the three months before and date's own; otherwise months_back before.
[[nodiscard]] int load_rmdrs(Shared& s, const QDate& date, const QString& cal_file,
                             int months_back);
[[nodiscard]] int load_rmdr_month(Shared& s, const QString& yymm, const QString& cal_file);

// io_mode 8 appends row `row` of appt_tbl to its member; 2 rewrites the
// members of rows 1..row, which must stand together by month.
[[nodiscard]] int write_appts(Shared& s, const QString& cal_file, int io_mode, int row);
// Appends rows 1..occur_count of occur_tbl to their members. A count past the
// table's limit stops the writing at the first missing row; the month then
// open is left as it was.
[[nodiscard]] int write_occurs(Shared& s, const QString& cal_file);
// io_mode 2 writes the rows of rmdr_tbl back, each month once: a month the
// last load_rmdrs read whole becomes its rows; any other keeps its lines, a
// row replacing the line of the same key, entry date and start or joining
// it. A month with no row is not touched. Any other value appends the last
// row.
[[nodiscard]] int save_rmdrs(Shared& s, int io_mode, const QString& cal_file);
// Appends one reminder line to the member of its rmdr_date.
[[nodiscard]] int append_rmdr_line(Shared& s, const QString& cal_file, const rmdr_rec& r);
// Appends rows first..last of rmdr_tbl to their members, one read and store
// per run of rows of the same month; rows past the table's limit are passed
// over.
[[nodiscard]] int append_rmdr_rows(Shared& s, const QString& cal_file, int first, int last);

enum class MemberKind { appointments, reminders };
// Rewrites one month's member without the lines whose id is `key`; a member
// with no line left is removed from the archive, a missing one is left
// missing. `kept`, when given, receives the number of lines kept.
[[nodiscard]] int delete_by_key(Shared& s, const QString& cal_file, MemberKind kind,
                                const QString& yymm, const QString& key, int* kept = nullptr);

} // namespace orva
