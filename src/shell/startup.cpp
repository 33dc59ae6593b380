#include "shell/startup.h"

#include "core/clock.h"
#include "core/modal.h"
#include "shell/file_commands.h"
#include "shell/single_instance.h"
#include "state/options.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/month_view.h"
#include "views/navigator.h"
#include "views/week_view.h"

namespace orva {
namespace {

void place_window(const OptionsState& options, RunState& run, WindowPort& w) {
    run.startup_move = true;
    w.set_window_state(options.form_state);
    w.move_to(QRect(options.form_left, options.form_top, options.form_width, options.form_height));
    w.layout_view();
    run.startup_move = false;
}

} // namespace

int months_between(const QDate& from, const QDate& to) {
    if (!from.isValid() || !to.isValid()) return 0;
    return (to.year() - from.year()) * 12 + (to.month() - from.month());
}

bool Form_Load(AppState& s, WindowPort& w, SingleInstance& instance) {
    switch (instance.acquire()) {
    case SingleInstance::Result::acquired:
        break;
    case SingleInstance::Result::running:
        modal().message(already_running_text, MsgStyle::Information);
        return false;
    case SingleInstance::Result::unwritable:
        modal().message(folder_unwritable_text(instance.folder()), MsgStyle::Critical);
        return false;
    }
    w.set_busy(true);

    s.twips_per_pixel_x = w.twips_per_pixel_x();
    s.twips_per_pixel_y = w.twips_per_pixel_y();
    s.twips_product = s.twips_per_pixel_x * s.twips_per_pixel_y;
    s.blankColWidth = qRound(3 * s.twips_per_pixel_x);

    s.cal_path = s.app_path + QStringLiteral("/calendar.cal");
    if (const int e = s.archive.check_calendar(s.cal_path)) {
        // Never adopted, never written: the user chooses another or makes one.
        modal().message(refused_text(s.cal_path, e), MsgStyle::Critical);
        s.cal_path.clear();
        s.cal_refused = true;
        s.delete_enabled = false;
    } else if (s.archive.check_writable(s.cal_path) != err::none) {
        // Told now, once, rather than by " Calendar Updated " over changes
        // that never reach the file.
        s.cal_read_only = true;
        modal().message(cannot_write_text(s.cal_path), MsgStyle::Warning);
    }
    // On a first run the calendar does not exist: the read finds no member,
    // the defaults apply, and their save creates the archive.
    load_options(s.store(), s.view(), s.options(), s.run(), w);

    const QDate today = clock().today();
    s.cur_day = today.day();
    s.sel_row1 = s.sel_col1 = s.sel_row2 = s.sel_col2 = -1;
    s.cur_date = today;
    s.tick_date = today;
    // The stored date is the one of the last run; a long absence widens the
    // reminder window so every overdue alarm comes up.
    s.months_back = months_between(text_to_date(s.last_used_date), s.cur_date);

    // A month that cannot be read shows empty; the log tells which.
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    (void)load_rmdrs(s, s.cur_date, s.cal_path, s.months_back);

    s.vsSched.setRedraw(0);
    s.Cal.setRedraw(0);
    s.today_day = today.day();
    docombos(s.store(), s.view());
    s.timer1_enabled = true;

    if (s.start_view == u"mthvw" || s.start_view == u"weekvw") {
        place_window(s.options(), s.run(), w);
        s.startup_move = true;
        if (s.start_view == u"mthvw") {
            imageMonth_Click(s, w);
            s.vsOvervw.ShowCell(0, 0);
        } else {
            imageWeek_Click(s, w);
        }
        s.startup_move = false;
        s.sysCalender_enabled = false;
    } else {
        s.view_day = true;
        clear_detail(s);
        format_day_grid(s);
        build_day_rows(s.view(), s.options());
        fill_cal(s.store(), s.view(), today);
        fill_day_core(s.store(), s.view(), s.options(), s.editing());
        set_label1(s, w, today);
        mark_now_row(s);
        mark_cur_day(s.store(), s.view());
        w.show_day_view();
        // Placing the window lays the page out, which sizes the columns to it.
        place_window(s.options(), s.run(), w);
        s.vsSched.setRedraw(2);
        s.Cal.setRedraw(2);
        s.sysCalender_enabled = false;
    }

    if (s.menus.mnuStart && w.hide_to_tray()) s.sysCalender_enabled = true;
    report_store_notices(s);
    w.set_busy(false);
    return true;
}

void Form_Resize(Shared& store, const PlannerState& view, OptionsState& options,
                 const RunState& run, WindowPort& w) {
    if (run.startup_move) return;
    const QRect area = w.work_area();
    if (options.form_top < 0 || options.form_top > area.top() + area.height()) options.form_top = 0;
    if (options.form_left < 0 || options.form_left > area.left() + area.width())
        options.form_left = 0;
    const QRect f = w.frame();
    w.move_to(QRect(options.form_left, options.form_top, f.width(), f.height()));
    options.form_height = f.height();
    options.form_width = f.width();
    w.layout_view();
    save_options(store, view, options, w);
}

bool Form_Unload(Shared& store, const PlannerState& view, OptionsState& options, RunState& run,
                 WindowPort& w) {
    run.stay_open = false;
    confirm_exit(store, view, options, run, w);
    return run.stay_open;
}

int pending_today(const Shared& store) {
    const QDate today = clock().today();
    int n = 0;
    for (int r = 1; r <= store.rmdr_count; ++r) {
        const rmdr_rec* row = store.rmdr_row(r);
        if (row && short_to_date(row->rmdr_date) == today && row->rmdr_fired.str() == u"F") ++n;
    }
    return n;
}

void confirm_exit(Shared& store, const PlannerState& view, OptionsState& options, RunState& run,
                  WindowPort& w) {
    // The table is made the one on file: a tick may have marked rows since.
    (void)load_rmdrs(store, store.cur_date, store.cal_path, 0);
    const int pending = pending_today(store);
    save_options(store, view, options, w);
    if (pending == 0) {
        w.end_program();
        return;
    }
    if (modal().ask_yes_no(exit_question_text, MsgStyle::Question) == Answer::No) {
        run.stay_open = true;
        return;
    }
    w.end_program();
}

} // namespace orva
