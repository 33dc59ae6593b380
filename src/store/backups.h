#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace orva {

// Rolling copies of a calendar, kept in a "backups" folder beside it and named
// by the calendar and the moment they were taken, "<name>-yyyyMMdd-HHmmss.cal".
// Each is a calendar file of its own: opening it is the whole of a restore.

inline constexpr int backups_kept = 7;

// <the calendar's folder>/backups
QString backup_folder(const QString& cal_file);
// The copies kept of `cal_file`, oldest first, as full paths.
QStringList backups_of(const QString& cal_file);
// True when a copy of `cal_file` was taken on `day`.
bool has_backup_on(const QString& cal_file, const QDate& day);
// Copies the calendar as its last commit left it into the backups folder
// through SQLite's online backup API, then keeps only the newest `keep`
// copies. The copy is made in memory and written into a file without a name,
// linked into the folder once whole and synced, so a crash leaves no part of
// it behind (where the file system has no such files, a passing name renamed
// when whole, never taken for a copy). Returns 0 or an error number.
[[nodiscard]] int take_backup(const QString& cal_file, const QDateTime& now,
                              int keep = backups_kept);

} // namespace orva
