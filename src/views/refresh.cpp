#include "views/refresh.h"

#include "core/modal.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/month_view.h"
#include "views/status.h"
#include "views/week_view.h"

namespace orva {

void report_failed_update(AppState& s) {
    // The file is as it was before the command; so must the tables be.
    (void)load_rmdrs(s, s.cur_date, s.cal_path, s.months_back);
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    refresh_planner(s);
    show_status(s.store(), s.view());
    s.timer1_enabled = true;
    modal().message(couldnt_update_msg, MsgStyle::Critical);
}

void refresh_planner(AppState& s) {
    if (s.view_month || s.view_week) {
        refill_overview(s, s.window_port());
        return;
    }
    const Shared& store = s.store();
    PlannerState& view = s.view();
    const OptionsState& options = s.options();
    EditorState& editing = s.editing();
    Grid& g = view.vsSched;
    const int row = g.Row(), col = g.Col();
    rebuild_day(store, view, options, editing);
    // The cell that was current stays current. Its old data is not written
    // back: after a rebuild it could name a row that now holds another entry.
    if (row >= 0 && col >= 0 && row < g.Rows() && col < g.Cols()) {
        g.Select(row, col);
        const QString d = g.Cell(CellSetting::Data, row, col).toString();
        if (view.tab_key == u"appt" && !d.isEmpty() && d != blank_data) {
            view.cur_row = qint16(row);
            view.cur_col = qint16(col);
            show_detail(store, view, options, editing, row, col);
        }
    }
}

void show_planner(AppState& s) {
    WindowPort& w = s.window_port();
    if (s.view_month)
        imageMonth_Click(s, w);
    else if (s.view_week)
        imageWeek_Click(s, w);
    else
        imageDay_Click(s.store(), s.view(), s.options(), s.editing(), w);
}

} // namespace orva
