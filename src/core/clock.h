#pragma once

#include <QDate>
#include <QDateTime>

namespace orva {

// The one source of "today" and "now". Nothing else in the program reads the
// system clock, so tests and the tick logic can run at any date.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

class SystemClock final : public Clock {
  public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

// A clock that stands still until moved; for tests and for replaying a day.
class FixedClock final : public Clock {
  public:
    explicit FixedClock(QDateTime at) : at_(std::move(at)) {}
    QDateTime now() const override { return at_; }
    void set(QDateTime at) { at_ = std::move(at); }
    void advance_secs(qint64 secs) { at_ = at_.addSecs(secs); }

  private:
    QDateTime at_;
};

// The installed clock; a SystemClock until something else is installed.
// The caller keeps ownership of what it installs and must outlive its use.
Clock& clock();
void install_clock(Clock* c);

} // namespace orva
