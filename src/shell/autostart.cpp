#include "shell/autostart.h"

#include "core/errors.h"
#include "core/logging.h"
#include "core/modal.h"
#include "state/options.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

#include <filesystem>

namespace orva {
namespace {

int from_errno(int e) {
    switch (e) {
    case EACCES:
    case EPERM:
    case EROFS:
        return err::denied;
    case ENOSPC:
    case EDQUOT:
        return err::disk_full;
    case ENOENT:
    case ENOTDIR:
        return err::path_not_found;
    case EIO:
        return err::io;
    default:
        return err::bad_file;
    }
}

// A value of the Exec key: quoted when it holds anything the launcher would
// split or expand, with the quoting's own escapes, then the escapes every
// string value of the file takes.
QString exec_arg(const QString& arg) {
    QString v = arg;
    v.replace(QLatin1Char('%'), QStringLiteral("%%"));
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    bool quote = false;
    for (QChar c : v)
        if (reserved.contains(c)) quote = true;
    if (quote) {
        QString q;
        for (QChar c : v) {
            if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') q += QLatin1Char('\\');
            q += c;
        }
        v = QLatin1Char('"') + q + QLatin1Char('"');
    }
    v.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    return v;
}

int write_all(int fd, const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        done += n;
    }
    return 0;
}

} // namespace

QString autostart_folder() {
    QString base = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (base.isEmpty() || !QDir::isAbsolutePath(base))
        base = QDir::homePath() + QStringLiteral("/.config");
    return base + QStringLiteral("/autostart");
}

QString autostart_entry_path() {
    return autostart_folder() + QLatin1Char('/') + autostart_file_name;
}

QByteArray autostart_entry(const QString& program) {
    // TryExec lets the desktop pass over an entry whose program was moved or
    // removed, rather than report a failed start at every login.
    const QString text =
        QStringLiteral("[Desktop Entry]\n"
                       "Type=Application\n"
                       "Name=Orva Calendar\n"
                       "Comment=Planner and reminders\n"
                       "Icon=x-office-calendar\n"
                       "TryExec=%1\n"
                       "Exec=%2 0\n"
                       "Terminal=false\n"
                       "X-GNOME-Autostart-enabled=true\n")
            .arg(QString(program).replace(QLatin1Char('\\'), QStringLiteral("\\\\")),
                 exec_arg(program));
    return text.toUtf8();
}

int create_start_link(const QString& program) {
    std::error_code ec;
    std::filesystem::create_directories(QFile::encodeName(autostart_folder()).toStdString(), ec);
    if (ec) return from_errno(ec.value());
    // Written beside the entry and renamed over it, so the desktop never
    // reads half an entry.
    const QByteArray path = QFile::encodeName(autostart_entry_path());
    const QByteArray part = path + ".part";
    const int fd = ::open(part.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) return from_errno(errno);
    int e = write_all(fd, autostart_entry(program));
    if (::close(fd) != 0 && e == 0) e = errno;
    if (e == 0 && ::rename(part.constData(), path.constData()) != 0) e = errno;
    if (e != 0) {
        ::unlink(part.constData());
        return from_errno(e);
    }
    return err::none;
}

int delete_start_link() {
    const QByteArray path = QFile::encodeName(autostart_entry_path());
    if (::unlink(path.constData()) == 0 || errno == ENOENT) return err::none;
    return from_errno(errno);
}

void mnuStart_Click(Shared& store, const PlannerState& view, OptionsState& options, WindowPort& w,
                    const QString& program) {
    if (options.menus.mnuStart) {
        options.menus.mnuStart = false;
        if (const int e = delete_start_link()) {
            qCWarning(lcShell) << "autostart entry not removed, error" << e;
            modal().message(delete_link_failed_text + QString::number(e), MsgStyle::Information);
        }
    } else {
        if (const int e = create_start_link(program)) {
            qCWarning(lcShell) << "autostart entry not written, error" << e;
            modal().message(create_link_failed_text + QString::number(e), MsgStyle::Information);
        }
        options.menus.mnuStart = true;
    }
    save_options(store, view, options, w);
    w.sync_menus();
}

} // namespace orva
