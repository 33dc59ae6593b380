// Figures for the save path, not a pass/fail test: a daily series over fifteen
// years with a reminder on every occurrence, saved new, edited and deleted
// through the same steps the editor's OK and Delete take.
#include "support/large_calendar.h"

#include <QElapsedTimer>
#include <cstdio>

using namespace orva;
using orva::testing::LargeCalendar;
using orva::testing::must;

namespace {

template <typename F> double ms(F&& f) {
    QElapsedTimer t;
    t.start();
    f();
    return double(t.nsecsElapsed()) / 1e6;
}

int lines_of(AppState& s, QChar kind) {
    int n = 0;
    for (const QString& m : s.archive.members(s.cal_path)) {
        if (m.at(0) != kind) continue;
        QByteArray b;
        must(s.archive.get(s.cal_path, m, b), "reading a member");
        n += int(b.count('\n'));
    }
    return n;
}

} // namespace

int main() {
    LargeCalendar cal;
    AppState& s = *cal.s;

    const double save = ms([&] { cal.save_series(QStringLiteral("Morning run")); });
    const int rows = lines_of(s, u'c'), rmdrs = lines_of(s, u'r');

    // Open today's occurrence, change its text, OK: the whole series and its
    // reminders are deleted and made again.
    must(load_appts(s, s.cur_date, s.cal_path, 0), "load_appts");
    const double edit = ms([&] {
        cal.edit_series(QStringLiteral("Morning run"), QStringLiteral("Morning run, long loop"));
    });
    const int rows_after_edit = lines_of(s, u'c'), rmdrs_after_edit = lines_of(s, u'r');
    s.appt_form = nullptr;

    must(load_appts(s, s.cur_date, s.cal_path, 0), "load_appts");
    const double del = ms([&] { cal.delete_series(QStringLiteral("Morning run, long loop")); });
    const int rows_left = lines_of(s, u'c'), rmdrs_left = lines_of(s, u'r');

    std::printf("Daily series over 15 years with a 30-minute reminder on each occurrence\n");
    std::printf("  save new:  %8.1f ms  (%d occurrences, %d reminders written)\n", save, rows,
                rmdrs);
    std::printf("  edit (OK): %8.1f ms  (%d occurrences, %d reminders after)\n", edit,
                rows_after_edit, rmdrs_after_edit);
    std::printf("  delete:    %8.1f ms  (%d occurrences, %d reminders left)\n", del, rows_left,
                rmdrs_left);
    return 0;
}
