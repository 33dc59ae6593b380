#include "shell/tick.h"

#include "core/clock.h"
#include "reminders/dispatch.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/month_view.h"
#include "views/navigator.h"
#include "views/week_view.h"

namespace orva {

void Timer1_Timer(AppState& s, WindowPort& w) {
    mark_now_row(s);
    const QDate today = clock().today();
    // Any other date counts, an earlier one too: the user may have set the
    // clock back.
    if (today != s.tick_date) day_rollover(s, w, today);
    // A tick that runs while a note is open leaves what came due since to the
    // first tick after it closes: one note at a time, and no row is lost, for
    // it is still "F".
    if (s.delivering) return;
    if (!scan_rmdrs(s.store(), s.reminders())) return;
    deliver_rmdrs(s);
}

void day_rollover(AppState& s, WindowPort& w, const QDate& today) {
    s.cur_day = today.day();
    clear_detail(s);
    format_day_grid(s);
    s.cur_date = today;
    // A month that cannot be read shows empty; the window tells which once
    // the tick is over, as after any event.
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    (void)load_rmdrs(s, s.cur_date, s.cal_path, 0);
    docombos(s.store(), s.view());
    if (s.view_month) {
        imageMonth_Click(s, w);
    } else if (s.view_week) {
        imageWeek_Click(s, w);
    } else if (s.view_day) {
        set_label1(s, w, s.cur_date);
        build_day_rows(s.view(), s.options());
        fill_cal(s.store(), s.view(), today);
        fill_day(s.store(), s.view(), s.options());
        size_sched_cols(s.view());
        show_detail(s.store(), s.view(), s.options(), s.editing(), s.cur_row, s.cur_col);
    }
    s.tick_date = today;
}

} // namespace orva
