#pragma once

#include "store/archive.h"
#include "store/records.h"

#include <QString>

namespace orva {

// The shared module of the store: the tables, the open calendar and the
// application folder. Forms talk through these, not through arguments. One
// instance lives for the process; tests make their own.
struct Shared : Tables {
    QString app_path; // the per-user data folder
    QString cal_path; // the open calendar file; empty when none is open
    QDate tick_date;  // the date seen by the last tick
    // The open calendar cannot take changes, and the user has been told so.
    bool cal_read_only = false;
    Archive archive;
};

} // namespace orva
