// The lines of a month's members: an appointment member and a reminder
// member loaded into the tables, the day planner filled from them, every
// block clicked into the detail pane and walked with Next.
//
// Input: the appointment member's bytes, then optionally `member_split` and
// the reminder member's bytes. The month is the one the first line's
// appt_date names when that is a date, else the clock's.

#include "fuzz_support.h"
#include "member_split.h"

#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/navigator.h"

#include <memory>

using namespace orva;

namespace {

void click_every_block(AppState& s) {
    const Grid& g = s.vsSched;
    for (int r = 0; r < g.Rows(); ++r) {
        for (int c = 1; c < g.Cols(); ++c) {
            const QString d = g.Cell(CellSetting::Data, r, c).toString();
            if (d.isEmpty() || d == blank_data) continue;
            vsSched_Click(s.store(), s.view(), s.options(), s.editing(), r, c);
            sched_tip(s.store(), s.view(), r, c);
        }
    }
}

void walk_the_day(AppState& s) {
    s.cur_row = 0;
    s.cur_col = 1;
    // Every step moves on or ends with its message; the grid has 49 x 20 cells.
    for (int step = 0; step < 49 * 20; ++step) {
        const qint16 row = s.cur_row, col = s.cur_col;
        imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
        if (s.cur_row == row && s.cur_col == col) break;
    }
    for (int step = 0; step < 49 * 20; ++step) {
        const qint16 row = s.cur_row, col = s.cur_col;
        imgDtlPrior_Click(s.store(), s.view(), s.options(), s.editing());
        if (s.cur_row == row && s.cur_col == col) break;
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::init_process();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray input = fuzz::bytes_of(data, size);
    const qsizetype split = input.indexOf(fuzz::member_split);
    const QByteArray appts = split < 0 ? input : input.left(split);
    const QByteArray rmdrs =
        split < 0 ? QByteArray() : input.mid(split + qsizetype(fuzz::member_split.size()));

    fuzz::ScratchFolder& f = fuzz::scratch_folder();
    auto s = std::make_unique<AppState>();
    fuzz::FuzzWindow w(s->view());
    s->app_path = f.dir.path();
    s->cal_path = f.cal;
    const QString first = QString::fromLatin1(appts.mid(8, 8));
    s->cur_date = is_line_date(first) ? text_to_date(first) : orva::clock().today();
    s->today_day = orva::clock().today().day();
    s->grid_font_name = QStringLiteral("DejaVu Sans");
    s->grid_font_size = QStringLiteral("9");
    s->grid_font_color = QStringLiteral("0");
    s->menus.mnuShowTimes = true;

    std::map<QString, QByteArray> members{{appt_member_name(yymm_of(s->cur_date)), appts}};
    if (split >= 0) members[rmdr_member_name(yymm_of(s->cur_date))] = rmdrs;
    fuzz::replace_members(s->archive, f.cal, members);

    (void)load_appts(*s, s->cur_date, f.cal, 0);
    (void)load_rmdrs(*s, s->cur_date, f.cal, 0);

    s->view_day = true;
    clear_detail(*s);
    format_day_grid(*s);
    build_day_rows(s->view(), s->options());
    fill_cal(s->store(), s->view(), s->cur_date);
    w.layout_view();
    fill_day_core(s->store(), s->view(), s->options(), s->editing());
    mark_now_row(*s);
    mark_cur_day(s->store(), s->view());
    click_every_block(*s);
    walk_the_day(*s);
    return 0;
}
