#pragma once

#include <QString>
#include <memory>

class QLockFile;

namespace orva {

// One running program per user data folder. A lock file in the folder is held
// for the life of the process; the system drops it when the process dies, so
// a crash never keeps the next start out.
class SingleInstance {
  public:
    explicit SingleInstance(const QString& folder);
    ~SingleInstance();
    // True when this process now holds the lock (or already held it).
    bool acquire();
    bool held() const;

  private:
    std::unique_ptr<QLockFile> lock_;
    bool held_ = false;
};

} // namespace orva
