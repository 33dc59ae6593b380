// Figures for the search, not a pass/fail test. It builds a calendar of
// fifteen years (40 entries a month, every fourth with notes and every fifth
// with the bicycle sticker, plus a daily
// fifteen-year series) and times the search over the whole of it, as the
// Search button runs it: members read month by month, hits listed and sorted.
// Each figure is one line, so runs compare line by line:
//   search <name> median_ms=<x> hits=<n>
//   peer calcurse_15y median_ms=<x> hits=<n>   (only where calcurse is installed)
#include "core/event_loop.h"
#include "search/search.h"
#include "support/large_calendar.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace orva;
using orva::testing::LargeCalendar;

namespace {

constexpr int runs = 9;

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

struct Query {
    const char* name;
    int kind;
    QString text;
    QString sticker;
};

void time_search(LargeCalendar& b, const Query& q, const QDate& from, const QDate& to) {
    std::vector<double> ms;
    int hits = 0;
    for (int i = 0; i < runs; ++i) {
        SearchForm f;
        Form_Load(f);
        f.srch_kind = q.kind;
        f.apptText = q.text;
        if (!q.sticker.isEmpty()) f.typeIcombo.select_type(q.sticker);
        f.srchDTPicker1 = from;
        f.srchDTPicker2 = to;
        QElapsedTimer t;
        t.start();
        Command1_Click(*b.s, f);
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
        hits = f.srch_hits;
    }
    std::printf("search %s median_ms=%.1f hits=%d\n", q.name, median(ms), hits);
}

// The same entries in a peer's own appointment file, and its text query over
// the same fifteen years.
void time_peer(LargeCalendar& b, const QDate& from, const QDate& to) {
    const QString calcurse = QStandardPaths::findExecutable(QStringLiteral("calcurse"));
    if (calcurse.isEmpty()) return;
    const QString dir = b.dir.filePath(QStringLiteral("peer"));
    QDir().mkpath(dir);
    QFile apts(dir + QStringLiteral("/apts"));
    if (!apts.open(QIODevice::WriteOnly | QIODevice::Text)) return;
    QTextStream out(&apts);
    const auto stamp = [](const QDate& d, const QString& hhmm) {
        return d.toString(QStringLiteral("MM/dd/yyyy")) + QStringLiteral(" @ ") + hhmm;
    };
    const QDate first(from.year(), from.month(), 1);
    for (int m = 0; m < 180; ++m) {
        const QDate month = first.addMonths(m);
        for (int i = 0; i < 40; ++i) {
            const appt_rec r = orva::testing::single_on(month.addDays(i % month.daysInMonth()), i, true);
            const QDate d = text_to_date(r.appt_date.str());
            out << stamp(d, r.appt_start.str()) << " -> " << stamp(d, r.appt_end.str()) << " |"
                << r.appt_text.trimmed() << "\n";
        }
    }
    out << stamp(b.clock.today(), QStringLiteral("07:00")) << " -> "
        << stamp(b.clock.today(), QStringLiteral("07:45")) << " {1D -> "
        << b.clock.today().addYears(15).toString(QStringLiteral("MM/dd/yyyy")) << "} |Morning run\n";
    apts.close();
    std::vector<double> ms;
    int hits = 0;
    for (int i = 0; i < runs; ++i) {
        QProcess p;
        QElapsedTimer t;
        t.start();
        p.start(calcurse, {QStringLiteral("-D"), dir, QStringLiteral("-Q"),
                           QStringLiteral("--filter-type"), QStringLiteral("apt"),
                           QStringLiteral("--from"), from.toString(QStringLiteral("MM/dd/yyyy")),
                           QStringLiteral("--to"), to.toString(QStringLiteral("MM/dd/yyyy")),
                           QStringLiteral("--filter-pattern"), QStringLiteral("Entry 3"),
                           QStringLiteral("--format-apt"), QStringLiteral("%m\\n")});
        if (!p.waitForFinished(120000) || p.exitCode() != 0) return;
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
        hits = int(p.readAllStandardOutput().count('\n'));
    }
    std::printf("peer calcurse_15y median_ms=%.1f hits=%d\n", median(ms), hits);
}

} // namespace

int main() {
    LargeCalendar b;
    b.build_singles(true);
    b.save_series(QStringLiteral("Morning run"));
    // The program yields after every line; the hook it installs looks at a
    // timer each time and turns the event loop a few times a second.
    QElapsedTimer since_yield;
    since_yield.start();
    install_yield_hook([&since_yield] {
        if (since_yield.elapsed() < 40) return;
        since_yield.restart();
    });

    const QDate from(b.clock.today().year(), b.clock.today().month(), 1);
    const QDate to = from.addYears(15).addDays(-1);
    for (const Query& q : {Query{"text_15y", 0, QStringLiteral("Entry 3"), {}},
                           Query{"notes_15y", 1, QStringLiteral("papers"), {}},
                           Query{"sticker_15y", 2, {}, QStringLiteral("Bicycle")},
                           Query{"range_15y", 3, {}, {}}})
        time_search(b, q, from, to);
    time_peer(b, from, to);
    return 0;
}
