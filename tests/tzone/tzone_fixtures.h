#pragma once

#include "../support/scripted_modal.h"
#include "core/clock.h"
#include "grid/grid.h"
#include "store/archive.h"
#include "tzone/tzone.h"

#include <QByteArray>
#include <QTemporaryDir>
#include <ctime>
#include <gtest/gtest.h>
#include <initializer_list>

namespace orva::testing {

// One row of a zone table as the form reads it: columns 0, 1, 3, 4 and 5.
struct ZoneRow {
    QString name, offset, first = {}, last = {}, check = {};
};

// A table as the shipped one is laid out: a heading in fixed row 0, then the
// zones in the order given (the form sorts them itself).
inline Grid zone_table(std::initializer_list<ZoneRow> rows) {
    Grid g(int(rows.size()) + 1, 6);
    g.setFixedRows(1);
    g.setTextMatrix(0, 0, QStringLiteral("Zone"));
    int r = 1;
    for (const ZoneRow& z : rows) {
        g.setTextMatrix(r, 0, z.name);
        g.setTextMatrix(r, 1, z.offset);
        g.setTextMatrix(r, 3, z.check);
        g.setTextMatrix(r, 4, z.first);
        g.setTextMatrix(r, 5, z.last);
        ++r;
    }
    return g;
}

// Writes `table` as the member Tzones.grd of app_path/Tzones.ach.
inline void write_zone_table(const QString& app_path, const Grid& table) {
    Archive a;
    ASSERT_EQ(
        a.put(tzones_archive_path(app_path), QStringLiteral("Tzones.grd"), table.save_bytes()), 0);
}

// The machine's zone for the life of a test; the one before comes back after.
class SystemZone {
  public:
    explicit SystemZone(const char* tz)
        : had_(qEnvironmentVariableIsSet("TZ")), old_(qgetenv("TZ")) {
        qputenv("TZ", tz);
        tzset();
    }
    ~SystemZone() {
        if (had_)
            qputenv("TZ", old_);
        else
            qunsetenv("TZ");
        tzset();
    }

  private:
    bool had_;
    QByteArray old_;
};

// The T-Zone form under test: a temporary application folder, the machine's
// zone UTC and the clock stopped on Wednesday 2026-07-15 at 14:05:09, and a
// scripted modal seam.
struct TzoneEnv {
    SystemZone zone{"UTC"};
    QTemporaryDir dir;
    FixedClock clock{QDateTime(QDate(2026, 7, 15), QTime(14, 5, 9))};
    ScriptedModal m;
    ModalGuard guard{&m};

    TzoneEnv() { install_clock(&clock); }
    ~TzoneEnv() { install_clock(nullptr); }

    QString app_path() const { return dir.path(); }
};

// A small world: a half-hour zone, GMT, Berlin with summer time and New York
// with its own, given out of order.
inline Grid small_world() {
    return zone_table({
        {QStringLiteral("New York, United States"), QStringLiteral("-5"), QStringLiteral("0308"),
         QStringLiteral("1101"), QStringLiteral("1")},
        {QStringLiteral("Colombo, Sri Lanka"), QStringLiteral("+5.5")},
        {QStringLiteral("GMT"), QStringLiteral("0")},
        {QStringLiteral("Berlin, Germany"), QStringLiteral("+1"), QStringLiteral("0329"),
         QStringLiteral("1025"), QStringLiteral("1")},
    });
}

} // namespace orva::testing
