#pragma once

#include "store/archive.h"
#include "store/records.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace orva {

// The shared module of the store: the tables, the open calendar and the
// application folder. Forms talk through these, not through arguments. One
// instance lives for the process; tests make their own.
struct Shared : Tables {
    QString app_path; // the per-user data folder
    QString cal_path; // the open calendar file; empty when none is open
    QDate tick_date;  // the date seen by the last tick
    // The reminder months ("yymm") the last load_rmdrs read, found or not:
    // rmdr_tbl holds every line of these and of no other month.
    QStringList rmdr_months;
    // The open calendar cannot take changes, and the user has been told so.
    bool cal_read_only = false;
    // The calendar of the last start was refused (it was none, or damaged)
    // and the user has been told; no calendar is open until one is chosen.
    bool cal_refused = false;
    Archive archive;
    // Called once for each member that long store work reads or writes, so
    // that the caller can keep its window alive; the store never runs an
    // event loop itself. None by default.
    std::function<void()> progress;

    void report_progress() const {
        if (progress) progress();
    }
};

} // namespace orva
