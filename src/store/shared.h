#pragma once

#include "store/archive.h"
#include "store/records.h"

#include <QString>

namespace orva {

// The shared module of the store: the tables, the open calendar and the
// application folder. Forms talk through these, not through arguments. One
// instance lives for the process; tests make their own.
struct Shared : Tables {
    QString app_path;       // the per-user data folder; loose copies live here
    QString cal_path;       // the open calendar file; empty when none is open
    QDate tick_date;        // the date seen by the last tick
    QString rmdr_temp_path; // loose copy of the reminder member being worked on
    Archive archive;

    // app_path + "/" + name
    QString loose(const QString& name) const;
};

} // namespace orva
