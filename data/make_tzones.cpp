// Writes the T-Zone table, Tzones.ach with its member Tzones.grd, from the
// time-zone database of the system it runs on. The table is committed; the
// build only compiles this program. To regenerate (say, once a year, since
// the daylight-saving days are those of one year):
//
//   cmake --build <build dir> --target make_tzones
//   <build dir>/data/make_tzones data/Tzones.ach [year]
//
// The year defaults to the current one. The zones that cannot be written
// into the table, and those it can only approximate, are printed.
//
// One row per zone of the database's country table (zone.tab, through
// QTimeZone), named as a user looks for it: "Berlin, Germany",
// "Knox (Indiana), United States"; plus "GMT" and "UTC". Columns:
//   0  name
//   1  standard offset in hours: "+1", "-5", "0", "+5.5", "-3.5"
//   3  "1" when the zone keeps daylight saving this year, else empty
//   4  first day of daylight saving, "MMDD", empty when there is none
//   5  last day of daylight saving, "MMDD", empty when there is none
// Row 0 is a fixed heading row: the form lists names from row 1 on.

#include "grid/grid.h"
#include "store/archive.h"

#include <QCoreApplication>
#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <QMap>
#include <QTextStream>
#include <QTimeZone>
#include <algorithm>
#include <sqlite3.h>
#include <vector>

namespace {

struct Row {
    QString name, offset, check, first, last;
    QString id;
};

// The offset column holds whole hours or a half: anything else (+5:45)
// would be read back wrongly, so such zones stay out of the table.
bool writable_offset(int secs) {
    return secs % 1800 == 0;
}

QString offset_text(int secs) {
    const int halves = secs / 1800;
    QString text = QString::number(std::abs(halves) / 2);
    if (halves % 2) text += QStringLiteral(".5");
    if (halves > 0) return QLatin1Char('+') + text;
    if (halves < 0) return QLatin1Char('-') + text;
    return text;
}

QString pretty(QString part) {
    return part.replace(QLatin1Char('_'), QLatin1Char(' '));
}

// "America/Indiana/Knox" in the United States is "Knox (Indiana), United
// States"; "America/Argentina/Salta" is "Salta, Argentina", since the middle
// part only repeats the country.
QString zone_name(const QByteArray& id, const QTimeZone& tz) {
    const QStringList parts = QString::fromLatin1(id).split(QLatin1Char('/'));
    QString country = tz.territory() == QLocale::AnyTerritory
                          ? pretty(parts.first())
                          : QLocale::territoryToString(tz.territory());
    QString name = pretty(parts.last());
    if (parts.size() > 2 && pretty(parts[1]) != country)
        name += QStringLiteral(" (") + pretty(parts[1]) + QLatin1Char(')');
    return name + QStringLiteral(", ") + country;
}

struct Period {
    QDateTime from, to; // UTC instants; invalid when open at that end of the year
    int offset = 0;     // seconds from UTC
};

// The stretches of one offset that make up the year, in order.
std::vector<Period> periods_of(const QTimeZone& tz, int year) {
    const QDateTime begin(QDate(year, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime end(QDate(year + 1, 1, 1), QTime(0, 0), Qt::UTC);
    std::vector<Period> out{{QDateTime(), QDateTime(), tz.offsetFromUtc(begin)}};
    for (const QTimeZone::OffsetData& t : tz.transitions(begin, end.addSecs(-1))) {
        if (t.offsetFromUtc == out.back().offset) continue;
        out.back().to = t.atUtc;
        out.push_back({t.atUtc, QDateTime(), t.offsetFromUtc});
    }
    return out;
}

QString mmdd(const QDateTime& utc, int offset) {
    return utc.addSecs(offset).date().toString(QStringLiteral("MMdd"));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        out << "usage: make_tzones <Tzones.ach> [year]\n";
        return 2;
    }
    const QString target = args[1];
    const int year = args.size() > 2 ? args[2].toInt() : QDate::currentDate().year();

    std::vector<Row> rows;
    QStringList left_out, approximated;
    for (const QByteArray& id : QTimeZone::availableTimeZoneIds()) {
        // The UTC+hh:mm ids are offsets, not places, and the Etc/ zones are
        // the same offsets again; GMT and UTC are added once below.
        if (!id.contains('/') || id.startsWith("Etc/")) continue;
        const QTimeZone tz(id);
        if (!tz.isValid()) continue;
        const std::vector<Period> periods = periods_of(tz, year);
        int low = periods.front().offset, high = low;
        for (const Period& p : periods) {
            low = std::min(low, p.offset);
            high = std::max(high, p.offset);
        }
        const QString name = zone_name(id, tz);
        if (!writable_offset(low)) {
            left_out << QStringLiteral("%1 (%2, %3)")
                            .arg(name, QString::fromLatin1(id),
                                 QStringLiteral("UTC%1%2:%3")
                                     .arg(low < 0 ? '-' : '+')
                                     .arg(std::abs(low) / 3600)
                                     .arg(std::abs(low) % 3600 / 60, 2, 10, QLatin1Char('0')));
            continue;
        }
        Row row{name, offset_text(low), {}, {}, {}, QString::fromLatin1(id)};
        // The lower offset is standard time and the higher one daylight
        // time, whatever the database flags: Dublin's summer is its standard
        // time there, and a user looks for it as daylight saving.
        std::vector<Period> summer;
        for (const Period& p : periods)
            if (p.offset != low) summer.push_back(p);
        if (summer.size() == 1 && summer[0].from.isValid() && summer[0].to.isValid()) {
            row.first = mmdd(summer[0].from, summer[0].offset);
            row.last = mmdd(summer[0].to, summer[0].offset);
        } else if (summer.size() == 2 && !summer[0].from.isValid() && !summer[1].to.isValid()) {
            // Daylight saving across the new year, as below the equator: it
            // begins late in the year and ends early in it.
            row.first = mmdd(summer[1].from, summer[1].offset);
            row.last = mmdd(summer[0].to, summer[0].offset);
        } else if (!summer.empty()) {
            approximated << QStringLiteral("%1 (%2): offsets change more than twice in %3, kept "
                                           "at standard time all year")
                                .arg(name, QString::fromLatin1(id))
                                .arg(year);
        }
        if (!row.first.isEmpty()) {
            row.check = QStringLiteral("1");
            // The form adds one hour in daylight time and nothing else.
            if (high - low != 3600)
                approximated << QStringLiteral("%1 (%2): daylight saving of %3 minutes, shown as "
                                               "one hour")
                                    .arg(name, QString::fromLatin1(id))
                                    .arg((high - low) / 60);
        }
        rows.push_back(row);
    }

    // Ids are unique in the database, but two places could still read alike
    // once named; the id then tells them apart.
    QMap<QString, int> seen;
    for (const Row& r : rows)
        ++seen[r.name];
    for (Row& r : rows)
        if (seen[r.name] > 1) r.name += QStringLiteral(" (") + r.id + QLatin1Char(')');

    rows.push_back({QStringLiteral("GMT"), QStringLiteral("0"), {}, {}, {}, "Etc/GMT"});
    rows.push_back({QStringLiteral("UTC"), QStringLiteral("0"), {}, {}, {}, "Etc/UTC"});
    std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.name < b.name; });

    orva::Grid g(int(rows.size()) + 1, 6);
    g.setFixedRows(1);
    const QStringList heading{QStringLiteral("Zone"),
                              QStringLiteral("GMT offset"),
                              QString(),
                              QStringLiteral("Daylight saving"),
                              QStringLiteral("From"),
                              QStringLiteral("To")};
    for (int c = 0; c < heading.size(); ++c)
        g.setTextMatrix(0, c, heading[c]);
    for (size_t i = 0; i < rows.size(); ++i) {
        const int r = int(i) + 1;
        g.setTextMatrix(r, 0, rows[i].name);
        g.setTextMatrix(r, 1, rows[i].offset);
        g.setTextMatrix(r, 3, rows[i].check);
        g.setTextMatrix(r, 4, rows[i].first);
        g.setTextMatrix(r, 5, rows[i].last);
    }

    // Written afresh, so that no member of an older table survives.
    QFile::remove(target);
    int e = 0;
    {
        orva::Archive archive;
        e = archive.put(target, QStringLiteral("Tzones.grd"), g.save_bytes());
    }
    if (e) {
        out << "cannot write " << target << ": error " << e << "\n";
        return 1;
    }
    // The store leaves its files in WAL mode; a shipped file in that mode
    // cannot be read where it may not be written (an installed share
    // folder), and readers would leave a log and an index beside it.
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(target).constData(), &db, SQLITE_OPEN_READWRITE,
                        nullptr) != SQLITE_OK ||
        sqlite3_exec(db, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr) != SQLITE_OK) {
        out << "cannot set the journal of " << target << ": " << sqlite3_errmsg(db) << "\n";
        sqlite3_close(db);
        return 1;
    }
    sqlite3_close(db);

    int with_dst = 0;
    for (const Row& r : rows)
        if (!r.first.isEmpty()) ++with_dst;
    out << "wrote " << target << ": " << rows.size() << " zones for " << year << ", " << with_dst
        << " with daylight saving\n";
    out << "left out (offset not a whole or half hour): " << left_out.size() << "\n";
    for (const QString& s : left_out)
        out << "  " << s << "\n";
    if (!approximated.isEmpty()) {
        out << "approximated: " << approximated.size() << "\n";
        for (const QString& s : approximated)
            out << "  " << s << "\n";
    }
    return 0;
}
