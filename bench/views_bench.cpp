// Figures for the day planner, not a pass/fail test: how long a whole
// rebuild of the day page takes as the month and the day fill up.
#include "core/clock.h"
#include "state/app_state.h"
#include "views/day_view.h"
#include "views/navigator.h"

#include <QElapsedTimer>
#include <cstdio>
#include <memory>

using namespace orva;

namespace {

template <typename F> double ms(F&& f, int reps = 20) {
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < reps; ++i)
        f();
    return double(t.nsecsElapsed()) / 1e6 / reps;
}

// A month of `per_day` entries a day, spread over the working hours so that
// they overlap as a busy calendar does.
void fill_month(AppState& s, int per_day) {
    s.appt_count = 0;
    for (int d = 1; d <= 31; ++d)
        for (int k = 0; k < per_day; ++k) {
            appt_rec* r = s.appt_row(++s.appt_count);
            if (!r) return;
            const QString day = QDate(2026, 3, d).toString(QStringLiteral("MMddyyyy"));
            r->appt_first_date = day;
            r->appt_date = day;
            const QTime at = QTime(8, 0).addSecs(60 * 25 * k);
            r->appt_start = at.toString(QStringLiteral("HH:mm"));
            r->appt_end = at.addSecs(3600).toString(QStringLiteral("HH:mm"));
            r->appt_id = QStringLiteral("%1%2")
                             .arg(d, 2, 10, QLatin1Char('0'))
                             .arg(k, 10, 10, QLatin1Char('0'));
            r->appt_text = QStringLiteral("Entry %1").arg(k);
            r->appt_type = QStringLiteral("Car");
        }
}

} // namespace

int main() {
    FixedClock fixed(QDateTime(QDate(2026, 3, 15), QTime(9, 0)));
    install_clock(&fixed);
    std::printf("%-44s %10s\n", "step", "ms");
    for (int per_day : {4, 20, 190}) {
        auto s = std::make_unique<AppState>();
        s->cur_date = fixed.today();
        s->today_day = 15;
        s->grid_font_name = QStringLiteral("DejaVu Sans");
        s->grid_font_size = QStringLiteral("9");
        s->vsSched.set_extent(14000, 10000);
        s->Cal.set_extent(4700, 2760);
        fill_month(*s, per_day);
        const double day = ms([&] {
            s->vsSched.Clear();
            build_day_rows(s->view(), s->options());
            format_day_grid(*s);
            s->first_row.clear();
            s->first_col.clear();
            fill_day(s->store(), s->view(), s->options());
            size_sched_cols(*s);
        });
        const double cal = ms([&] { fill_cal(s->store(), s->view(), s->cur_date); });
        std::printf("day rebuild, %3d entries a day (%4d rows)  %10.2f\n", per_day,
                    int(s->appt_count), day);
        std::printf("navigator fill, same month                   %10.2f\n", cal);
    }
    install_clock(nullptr);
    return 0;
}
