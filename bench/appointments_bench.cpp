// Figures for the save path, not a pass/fail test: a daily series over fifteen
// years with a reminder on every occurrence, saved new, edited and deleted
// through the same steps the editor's OK and Delete take.
#include "appointments/appt_editor.h"
#include "appointments/delete_copy.h"
#include "appointments/saving.h"
#include "core/clock.h"
#include "core/modal.h"
#include "state/app_state.h"
#include "store/calendar_file.h"
#include "views/day_view.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace orva;

namespace {

// Answers every question with Yes and shows nothing.
class YesModal final : public Modal {
  public:
    void message(const QString&, MsgStyle) override {}
    Answer ask_yes_no(const QString&, MsgStyle) override { return Answer::Yes; }
    QString save_file_dialog(const QString&) override { return {}; }
    QString open_file_dialog(const QString&, const QString&) override { return {}; }
    void open_form(const QString&) override {}
};

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
        if (s.archive.get(s.cal_path, m, b) != 0) std::exit(1);
        n += int(b.count('\n'));
    }
    return n;
}

} // namespace

int main() {
    QTemporaryDir dir;
    FixedClock clock(QDateTime(QDate(2026, 3, 15), QTime(9, 10)));
    install_clock(&clock);
    YesModal modal;
    install_modal(&modal);

    auto s = std::make_unique<AppState>();
    s->app_path = dir.path();
    s->cal_path = dir.filePath(QStringLiteral("calendar.cal"));
    s->cur_date = clock.today();
    s->work_start = QStringLiteral("8:00:00 AM");
    s->work_end = QStringLiteral("5:00:00 PM");
    s->view_day = true;
    s->vsSched.set_extent(12000, 9000);
    build_day_rows(s->view(), s->options());
    format_day_grid(*s);

    // A new daily series from today to fifteen years on, reminded 30 minutes ahead.
    ApptForm f;
    hand_over_new(s->store(), s->editing());
    s->edit_start = QStringLiteral("07:00");
    s->appt_form = &f;
    init_appt_form(s->store(), s->options(), s->editing(), s->run(), f);
    f.Text1 = QStringLiteral("Morning run");
    f.aptTimePick2 = QTime(7, 45);
    s->occ_by_period = true;
    s->occ_period = 1;
    s->occ_every = 0;
    s->occ_until = clock.today().addYears(15).toString(QStringLiteral("MM/dd/yy"));
    s->rem_lead = 30;
    s->rem_unit = 0;
    const double save = ms([&] { Command1_Click(*s, f); });
    const int rows = lines_of(*s, u'c'), rmdrs = lines_of(*s, u'r');

    // Open today's occurrence, change its text, OK: the whole series and its
    // reminders are deleted and made again.
    clock.advance_secs(1);
    if (load_appts(*s, s->cur_date, s->cal_path, 0) != 0) return 1;
    s->new_appt = false;
    s->edit_index = 1;
    f = ApptForm{};
    init_appt_form(s->store(), s->options(), s->editing(), s->run(), f);
    f.Text1 = QStringLiteral("Morning run, long loop");
    f.aptTimePick1 = QTime(6, 30);
    f.aptTimePick2 = QTime(7, 30);
    const double edit = ms([&] { Command1_Click(*s, f); });
    const int rows_after_edit = lines_of(*s, u'c'), rmdrs_after_edit = lines_of(*s, u'r');
    s->appt_form = nullptr;

    if (load_appts(*s, s->cur_date, s->cal_path, 0) != 0) return 1;
    s->edit_index = 1;
    const double del = ms([&] { delCmd_Click(*s); });
    const int rows_left = lines_of(*s, u'c'), rmdrs_left = lines_of(*s, u'r');

    std::printf("Daily series over 15 years with a 30-minute reminder on each occurrence\n");
    std::printf("  save new:  %8.1f ms  (%d occurrences, %d reminders written)\n", save, rows,
                rmdrs);
    std::printf("  edit (OK): %8.1f ms  (%d occurrences, %d reminders after)\n", edit,
                rows_after_edit, rmdrs_after_edit);
    std::printf("  delete:    %8.1f ms  (%d occurrences, %d reminders left)\n", del, rows_left,
                rmdrs_left);
    install_modal(nullptr);
    install_clock(nullptr);
    return 0;
}
