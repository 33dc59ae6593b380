// Figures for the reminder scan, not a pass/fail test. Timer1 runs it every
// six seconds over the whole of rmdr_tbl, so a full table must cost far less
// than a millisecond.
#include "core/clock.h"
#include "reminders/dispatch.h"
#include "state/app_state.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace orva;

namespace {

// Four months of reminders as a busy calendar leaves them at the table's
// limit: the months before today delivered, today's and later ones waiting.
void fill_table(AppState& s, const QDate& today) {
    const QDate first = today.addMonths(-3);
    s.rmdr_count = 0;
    for (int i = 0; i < rmdr_limit; ++i) {
        rmdr_rec* r = s.rmdr_row(++s.rmdr_count);
        const QDate day = first.addDays(i * 120 / rmdr_limit);
        const QTime at = QTime(7, 0).addSecs(60 * 17 * (i % 40));
        r->rmdr_date = day.toString(QStringLiteral("MM/dd/yy"));
        r->rmdr_time = at.toString(QStringLiteral("HH:mm"));
        r->rmdr_appt_date = day.toString(QStringLiteral("MMddyyyy"));
        r->rmdr_start = at.addSecs(1800).toString(QStringLiteral("HH:mm"));
        r->rmdr_text = QStringLiteral("Reminder %1").arg(i);
        r->rmdr_fired = day < today ? QStringLiteral("T") : QStringLiteral("F");
    }
}

} // namespace

int main() {
    const QDate today(2026, 3, 15);
    FixedClock clk(QDateTime(today, QTime(6, 59)));
    install_clock(&clk);
    auto s = std::make_unique<AppState>();
    fill_table(*s, today);

    std::vector<double> us;
    for (int run = 0; run < 200; ++run) {
        QElapsedTimer t;
        t.start();
        const bool delivered = scan_rmdrs(*s, *s);
        us.push_back(double(t.nsecsElapsed()) / 1e3);
        if (delivered) {
            std::fprintf(stderr, "the scan delivered: the table is not what it should be\n");
            return 1;
        }
    }
    std::sort(us.begin(), us.end());
    std::printf("scan rows=%d median_us=%.1f\n", int(s->rmdr_count), us[us.size() / 2]);
    install_clock(nullptr);
    return 0;
}
