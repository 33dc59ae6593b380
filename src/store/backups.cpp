#include "store/backups.h"

#include "core/errors.h"
#include "core/logging.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace orva {
namespace {

const QString stamp_format = QStringLiteral("yyyyMMdd-HHmmss");
const QString part_suffix = QStringLiteral(".part");

QString base_of(const QString& cal_file) {
    return QFileInfo(cal_file).completeBaseName();
}

// The copies of `cal_file` in its backups folder, named by their moment.
QFileInfoList copies(const QString& cal_file) {
    const QRegularExpression name(QStringLiteral("^") +
                                  QRegularExpression::escape(base_of(cal_file)) +
                                  QStringLiteral(R"(-(\d{8}-\d{6})\.cal$)"));
    QFileInfoList out;
    for (const QFileInfo& f : QDir(backup_folder(cal_file)).entryInfoList(QDir::Files, QDir::Name))
        if (name.match(f.fileName()).hasMatch()) out << f;
    return out;
}

bool sync_file(const QString& path) {
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

int copy_into(sqlite3* src, const QString& part) {
    sqlite3* dest = nullptr;
    int rc = sqlite3_open_v2(QFile::encodeName(part).constData(), &dest,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    // The copy is synced once, whole, before it is named; a journal of its
    // own would only sync it page by page.
    if (rc == SQLITE_OK)
        rc = sqlite3_exec(dest, "PRAGMA journal_mode=OFF", nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_exec(dest, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK) {
        sqlite3_backup* b = sqlite3_backup_init(dest, "main", src, "main");
        if (!b) {
            rc = sqlite3_errcode(dest);
        } else {
            rc = sqlite3_backup_step(b, -1);
            const int fin = sqlite3_backup_finish(b);
            if (rc == SQLITE_DONE) rc = fin;
        }
    }
    if (rc != SQLITE_OK)
        qCWarning(lcStore) << "backup into" << part << "failed:" << sqlite3_errstr(rc);
    sqlite3_close_v2(dest);
    if (rc != SQLITE_OK) return (rc & 0xff) == SQLITE_FULL ? err::disk_full : err::io;
    return sync_file(part) ? err::none : err::io;
}

} // namespace

QString backup_folder(const QString& cal_file) {
    return QFileInfo(cal_file).absoluteDir().filePath(QStringLiteral("backups"));
}

QStringList backups_of(const QString& cal_file) {
    QStringList out;
    for (const QFileInfo& f : copies(cal_file))
        out << f.absoluteFilePath();
    return out;
}

bool has_backup_on(const QString& cal_file, const QDate& day) {
    const QString prefix = base_of(cal_file) + u'-' + day.toString(QStringLiteral("yyyyMMdd"));
    for (const QFileInfo& f : copies(cal_file))
        if (f.fileName().startsWith(prefix)) return true;
    return false;
}

int take_backup(const QString& cal_file, const QDateTime& now, int keep) {
    const QString folder = backup_folder(cal_file);
    if (!QDir().mkpath(folder)) {
        qCWarning(lcStore) << "cannot make" << folder;
        return err::denied;
    }
    QDir dir(folder);
    // A copy a crash cut short is no copy.
    for (const QString& left :
         dir.entryList({base_of(cal_file) + QStringLiteral("-*.cal.part")}, QDir::Files))
        dir.remove(left);

    const QString name =
        base_of(cal_file) + u'-' + now.toString(stamp_format) + QStringLiteral(".cal");
    const QString target = dir.filePath(name);
    const QString part = target + part_suffix;
    // A connection of its own: the caller's holds the write lock, and a
    // connection that writes cannot be copied from. With the log, this one
    // still reads the file as the last commit left it.
    sqlite3* src = nullptr;
    int e = sqlite3_open_v2(QFile::encodeName(cal_file).constData(), &src, SQLITE_OPEN_READONLY,
                            nullptr) == SQLITE_OK
                ? copy_into(src, part)
                : err::io;
    sqlite3_close_v2(src);
    if (e) {
        QFile::remove(part);
        return e;
    }
    QFile::remove(target);
    if (!QFile::rename(part, target)) {
        QFile::remove(part);
        return err::io;
    }
    sync_file(folder);

    QFileInfoList kept = copies(cal_file);
    while (kept.size() > keep)
        QFile::remove(kept.takeFirst().absoluteFilePath());
    return err::none;
}

} // namespace orva
