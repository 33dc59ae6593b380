#pragma once

#include <QString>

namespace orva {

// One running program per user data folder. The lock is the kernel's on a
// file in the folder, held for the life of the process: it is gone the moment
// the process ends, however it ends, so an empty, garbled or left-over lock
// file never keeps the next start out. Only a live instance holds it.
class SingleInstance {
  public:
    enum class Result {
        acquired,   // this process holds the lock (or already held it)
        running,    // another instance of the program holds it
        unwritable, // the folder cannot be written: no lock can be taken there
    };

    explicit SingleInstance(const QString& folder);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    Result acquire();
    bool held() const { return fd_ >= 0; }
    QString folder() const { return folder_; }

  private:
    QString folder_;
    int fd_ = -1;
};

} // namespace orva
