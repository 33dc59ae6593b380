#include "shell/single_instance.h"

#include "core/logging.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orva {

SingleInstance::SingleInstance(const QString& folder) : folder_(folder) {}

SingleInstance::~SingleInstance() {
    if (fd_ >= 0) ::close(fd_);
}

SingleInstance::Result SingleInstance::acquire() {
    if (fd_ >= 0) return Result::acquired;
    const QByteArray path =
        QFile::encodeName(QDir(folder_).filePath(QStringLiteral("orvacal.lock")));
    const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        qCWarning(lcStore) << "cannot open the lock file" << path << std::strerror(errno);
        return Result::unwritable;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int e = errno;
        ::close(fd);
        if (e == EWOULDBLOCK) return Result::running;
        qCWarning(lcStore) << "cannot lock" << path << std::strerror(e);
        return Result::unwritable;
    }
    // What stands in the file is only for a person looking: the kernel's
    // lock alone decides.
    const QByteArray pid = QByteArray::number(qint64(::getpid())) + '\n';
    if (::ftruncate(fd, 0) == 0 && ::write(fd, pid.constData(), size_t(pid.size())) < 0)
        qCWarning(lcStore) << "cannot note the process in" << path;
    fd_ = fd;
    return Result::acquired;
}

} // namespace orva
