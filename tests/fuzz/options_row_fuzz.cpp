// The options row: the input is the grid file stored as the member
// "Calopt.tmp", loaded and applied as at start-up, the day page laid out and
// filled with the fonts and colours it names, the window placed where it
// says, and the row saved and loaded back.

#include "fuzz_support.h"

#include "state/options.h"
#include "store/calendar_file.h"
#include "store/member_format.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/navigator.h"

#include <memory>

using namespace orva;

namespace {

// One timed and one untimed entry of the clock's day, so the fonts and the
// colour of the options reach blocks, the pane and the tool-tips.
QByteArray day_member() {
    QByteArray out;
    const QString day = orva::clock().today().toString(QStringLiteral("MMddyyyy"));
    for (const char* start : {"09:00", "     "}) {
        appt_rec r;
        r.appt_first_date = day;
        r.appt_date = day;
        r.appt_start = QString::fromLatin1(start);
        r.appt_end = QString::fromLatin1(start[0] == ' ' ? "     " : "10:30");
        r.appt_id = QStringLiteral("150910000309");
        r.appt_text = QStringLiteral("Dentist");
        r.appt_type = QStringLiteral("Car");
        r.appt_pattern = QStringLiteral("1 ");
        out += appt_line(r);
        out += "\r\n";
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::init_process();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::ScratchFolder& f = fuzz::scratch_folder();
    auto s = std::make_unique<AppState>();
    fuzz::FuzzWindow w(s->view());
    s->app_path = f.dir.path();
    s->cal_path = f.cal;
    s->cur_date = orva::clock().today();
    s->today_day = s->cur_date.day();
    fuzz::replace_members(s->archive, f.cal,
                          {{options_member, fuzz::bytes_of(data, size)},
                           {appt_member_name(yymm_of(s->cur_date)), day_member()}});

    load_options(s->store(), s->view(), s->options(), s->run(), w);
    (void)load_appts(*s, s->cur_date, f.cal, 0);

    s->view_day = true;
    clear_detail(*s);
    format_day_grid(*s);
    build_day_rows(s->view(), s->options());
    fill_cal(s->store(), s->view(), s->cur_date);
    fill_day_core(s->store(), s->view(), s->options(), s->editing());
    mark_now_row(*s);
    w.set_window_state(s->form_state);
    w.move_to(QRect(s->form_left, s->form_top, s->form_width, s->form_height));
    w.layout_view();
    for (int r : {0, 19})
        vsSched_Click(s->store(), s->view(), s->options(), s->editing(), r, 2);
    sched_tip(s->store(), s->view(), 19, 2);

    save_options(s->store(), s->view(), s->options(), w);
    load_options(s->store(), s->view(), s->options(), s->run(), w);
    return 0;
}
