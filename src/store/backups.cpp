#include "store/backups.h"

#include "core/errors.h"
#include "core/logging.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
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

int error_of_errno(int e) {
    return e == ENOSPC || e == EDQUOT ? err::disk_full : err::io;
}

// The bytes of the calendar as its last commit left it: SQLite's online
// backup copies it page by page into a database of the memdb VFS, whose
// buffer is then the file. `mem` owns the bytes until it is closed.
int copy_to_memory(sqlite3* src, sqlite3*& mem, const unsigned char*& data, sqlite3_int64& size) {
    int rc = sqlite3_open_v2("backup", &mem, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, "memdb");
    if (rc == SQLITE_OK) {
        sqlite3_backup* b = sqlite3_backup_init(mem, "main", src, "main");
        if (!b) {
            rc = sqlite3_errcode(mem);
        } else {
            rc = sqlite3_backup_step(b, -1);
            const int fin = sqlite3_backup_finish(b);
            if (rc == SQLITE_DONE) rc = fin;
        }
    }
    if (rc == SQLITE_OK) {
        data = sqlite3_serialize(mem, "main", &size, SQLITE_SERIALIZE_NOCOPY);
        if (!data || size <= 0) rc = SQLITE_IOERR;
    }
    if (rc != SQLITE_OK) {
        qCWarning(lcStore) << "backup copy failed:" << sqlite3_errstr(rc);
        return (rc & 0xff) == SQLITE_FULL ? err::disk_full : err::io;
    }
    return err::none;
}

bool write_all(int fd, const unsigned char* p, sqlite3_int64 n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, p, size_t(n));
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) return false;
        p += w;
        n -= w;
    }
    return true;
}

// Writes the copy into a file without a name in `folder` and links it in as
// `target` once it is whole and synced: a crash before that leaves nothing,
// as the system frees a nameless file with its process. -1 when the file
// system or the missing /proc allows no such file; the caller then writes a
// named one.
int write_unnamed(const QString& folder, const QString& target, const unsigned char* data,
                  sqlite3_int64 size) {
    const int fd =
        ::open(QFile::encodeName(folder).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0644);
    if (fd < 0) return errno == ENOSPC || errno == EDQUOT ? err::disk_full : -1;
    int e = write_all(fd, data, size) && ::fsync(fd) == 0 ? err::none : error_of_errno(errno);
    if (e == err::none) {
        QFile::remove(target);
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(fd);
        if (::linkat(AT_FDCWD, self.constData(), AT_FDCWD, QFile::encodeName(target).constData(),
                     AT_SYMLINK_FOLLOW) != 0)
            e = errno == ENOENT ? -1 : error_of_errno(errno);
    }
    ::close(fd);
    return e;
}

// The same through a passing name, renamed when whole. A crash may leave the
// passing file; the next copy clears it and it is never taken for a copy.
int write_named(const QString& part, const QString& target, const unsigned char* data,
                sqlite3_int64 size) {
    const int fd =
        ::open(QFile::encodeName(part).constData(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0644);
    if (fd < 0) return error_of_errno(errno);
    int e = write_all(fd, data, size) && ::fsync(fd) == 0 ? err::none : error_of_errno(errno);
    ::close(fd);
    if (e == err::none) {
        QFile::remove(target);
        if (!QFile::rename(part, target)) e = err::io;
    }
    if (e != err::none) QFile::remove(part);
    return e;
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
    // A connection of its own: the caller's holds the write lock, and a
    // connection that writes cannot be copied from. With the log, this one
    // still reads the file as the last commit left it.
    sqlite3* src = nullptr;
    sqlite3* mem = nullptr;
    const unsigned char* data = nullptr;
    sqlite3_int64 size = 0;
    int e = sqlite3_open_v2(QFile::encodeName(cal_file).constData(), &src, SQLITE_OPEN_READONLY,
                            nullptr) == SQLITE_OK
                ? copy_to_memory(src, mem, data, size)
                : err::io;
    sqlite3_close_v2(src);
    if (e == err::none) {
        e = write_unnamed(folder, target, data, size);
        if (e < 0) e = write_named(target + part_suffix, target, data, size);
    }
    sqlite3_close_v2(mem);
    if (e != err::none) {
        qCWarning(lcStore) << "cannot write the backup" << target << "error" << e;
        return e;
    }
    sync_file(folder);

    QFileInfoList kept = copies(cal_file);
    while (kept.size() > keep)
        QFile::remove(kept.takeFirst().absoluteFilePath());
    return err::none;
}

} // namespace orva
