#include "shell/single_instance.h"

#include <QDir>
#include <QLockFile>

namespace orva {

SingleInstance::SingleInstance(const QString& folder)
    : lock_(std::make_unique<QLockFile>(QDir(folder).filePath(QStringLiteral("orvacal.lock")))) {
    // A lock left by a process that no longer runs is taken over at once.
    lock_->setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::acquire() {
    if (!held_) held_ = lock_->tryLock(0);
    return held_;
}

bool SingleInstance::held() const {
    return held_;
}

} // namespace orva
