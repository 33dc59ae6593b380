// Figures for the calendar store, not a pass/fail test. It builds a calendar
// of fifteen years (40 entries a month, a quarter of them reminded, plus a
// daily fifteen-year series with a reminder on every occurrence) and times the
// four commands a user runs most against it, through the same steps the
// editor's OK and Delete take. Syncs are counted by an I/O shim under SQLite.
// Each figure is one line, so runs compare line by line:
//   command <name> median_ms=<x> syncs=<n>
//   file_bytes=<n>
#include "support/io_shim.h"
#include "support/large_calendar.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace orva;
using orva::testing::IoShim;
using orva::testing::LargeCalendar;
using orva::testing::must;

namespace {

struct Sample {
    double ms;
    long syncs;
};

template <typename F> Sample measure(F&& f) {
    IoShim& io = IoShim::install();
    io.reset_counts();
    QElapsedTimer t;
    t.start();
    f();
    return {double(t.nsecsElapsed()) / 1e6, io.syncs()};
}

void report(const char* name, std::vector<Sample> v) {
    std::sort(v.begin(), v.end(), [](const Sample& a, const Sample& b) { return a.ms < b.ms; });
    const double ms = v[v.size() / 2].ms;
    std::sort(v.begin(), v.end(),
              [](const Sample& a, const Sample& b) { return a.syncs < b.syncs; });
    std::printf("command %s median_ms=%.1f syncs=%ld\n", name, ms, v[v.size() / 2].syncs);
}

} // namespace

int main() {
    IoShim::install();
    LargeCalendar b;
    b.build_singles();
    b.save_series(QStringLiteral("Morning run"));
    const int appts = b.lines(u'c'), rmdrs = b.lines(u'r');
    const int members = int(b.s->archive.members(b.s->cal_path).size());
    b.s->archive.close(b.s->cal_path);
    const qint64 bytes = QFileInfo(b.s->cal_path).size();
    std::printf("calendar appt_lines=%d rmdr_lines=%d members=%d\n", appts, rmdrs, members);
    b.s->cur_date = b.clock.today();
    must(load_appts(*b.s, b.s->cur_date, b.s->cal_path, 0), "load_appts");

    std::vector<Sample> single;
    for (int i = 0; i < 21; ++i)
        single.push_back(measure([&] { b.save_single(i); }));

    std::vector<Sample> save, edit, del;
    for (int i = 0; i < 7; ++i) {
        const QString text = QStringLiteral("Evening walk %1").arg(i);
        const QString longer = text + QStringLiteral(", long loop");
        save.push_back(measure([&] { b.save_series(text); }));
        edit.push_back(measure([&] { b.edit_series(text, longer); }));
        del.push_back(measure([&] { b.delete_series(longer); }));
    }
    report("single_save", single);
    report("series_save", save);
    report("series_edit", edit);
    report("series_delete", del);
    std::printf("file_bytes=%lld\n", static_cast<long long>(bytes));
    return 0;
}
