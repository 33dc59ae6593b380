// Figures for the planners, not a pass/fail test, one line each:
// - the day page's rebuild (grid and navigator) as the days fill up;
// - the month and week planners' rebuild with the widget's repaint, on a
//   month of 40 entries (some days with six or more) and on the same month
//   with a daily series of fifteen years beside it.
//
//   bench_views [calendar-path]
//
// Given a path, the month of 40 entries is also written there as a calendar,
// to open and look at.
#include "appointments/ui/sticker_pictures.h"
#include "core/clock.h"
#include "core/modal.h"
#include "grid/ui/grid_widget.h"
#include "state/app_state.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/navigator.h"
#include "views/week_view.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace orva;

namespace {

class SilentModal final : public Modal {
  public:
    void message(const QString& text, MsgStyle) override {
        std::fprintf(stderr, "message: %s\n", qPrintable(text));
    }
    Answer ask_yes_no(const QString&, MsgStyle) override { return Answer::No; }
    QString save_file_dialog(const QString&) override { return {}; }
    QString open_file_dialog(const QString&, const QString&) override { return {}; }
    bool print_dialog(PrintSetup&) override { return false; }
    bool choose_color(quint32&) override { return false; }
    void open_form(const QString&) override {}
};

// The window as the planners see it: a 1280x800 frame at 96 dpi.
class BenchWindow final : public NoWindow {
  public:
    QRect work_area() const override { return {0, 0, 1280 * 15, 770 * 15}; }
    QRect frame() const override { return {0, 0, 1280 * 15, 800 * 15}; }
};

void must(int e, const char* what) {
    if (e == 0) return;
    std::fprintf(stderr, "%s failed with error %d\n", what, e);
    std::exit(1);
}

appt_rec entry(const QDate& d, const QString& id, const QString& start, const QString& end,
               const QString& text, const QString& type) {
    appt_rec r;
    r.appt_first_date = d.toString(QStringLiteral("MMddyyyy"));
    r.appt_date = r.appt_first_date;
    r.appt_start = start;
    r.appt_end = end;
    r.appt_id = id;
    r.appt_text = text;
    r.appt_type = type;
    r.appt_occurs = QStringLiteral("0 ");
    r.appt_occurs_month = QStringLiteral("0 ");
    r.appt_occurs_every = QStringLiteral("0 ");
    r.appt_until = d.toString(QStringLiteral("MM/dd/yy"));
    r.appt_rem_lead = QStringLiteral("0 ");
    r.appt_rem_unit = QStringLiteral("0 ");
    r.appt_rem_anim = QStringLiteral("1 ");
    r.appt_pattern = QStringLiteral("1 ");
    return r;
}

// Forty entries of a busy November: a few crowded days, untimed ones, long
// texts and entries without a sticker.
std::vector<appt_rec> busy_month() {
    struct Item {
        int day;
        const char* start;
        const char* end;
        const char* text;
        const char* type;
    };
    static const Item items[] = {
        {2, "08:00", "09:00", "Gym", ""},
        {2, "09:30", "10:30", "Weekly planning with the team", "Computer"},
        {2, "11:00", "11:30", "Call the garage about the brakes", "Phone2"},
        {2, "12:30", "13:30", "Lunch with Anna", "Silverware"},
        {2, "15:00", "16:00", "Dentist", "Dentist"},
        {2, "18:00", "19:00", "Choir rehearsal", "Music"},
        {2, "20:00", "21:00", "Read the contract draft", "Openbook"},
        {3, "     ", "     ", "Dad's birthday", "Birthday"},
        {4, "10:00", "11:00", "Budget review", "Dollar sign"},
        {5, "07:30", "08:00", "Take the car in for service", "Car"},
        {6, "19:30", "22:00", "Concert at the town hall", "Audio"},
        {9, "08:00", "09:00", "Gym", ""},
        {9, "09:00", "09:30", "Stand-up", "Computer"},
        {9, "10:00", "12:00", "Workshop: quarterly goals and the road map for next year",
         "Lightbulb"},
        {9, "13:00", "14:00", "Interview a new hire", ""},
        {9, "14:30", "15:00", "Pick up parcel", "Mailbox"},
        {9, "16:00", "17:00", "Doctor", "Doctor"},
        {10, "     ", "     ", "Recycling day", "Trash"},
        {11, "18:30", "20:00", "Parents' evening at school", "House"},
        {12, "12:00", "13:00", "Lunch with Ben", "Coffee"},
        {13, "     ", "     ", "Pay the rent", "Dollar sign"},
        {14, "09:00", "17:00", "Cycling trip along the river", "Bicycle"},
        {16, "08:00", "09:00", "Gym", ""},
        {16, "09:30", "10:00", "Sprint review", "Computer"},
        {16, "11:00", "12:00", "Call the bank", "Phone2"},
        {16, "14:00", "15:00", "Haircut", ""},
        {16, "19:00", "21:00", "Football training", "football"},
        {18, "10:00", "11:00", "Team meeting", "Computer"},
        {19, "17:00", "18:00", "Piano lesson", "Music"},
        {20, "     ", "     ", "Mum arrives", "Airplane"},
        {21, "09:00", "10:00", "Dentist", "Dentist"},
        {21, "09:30", "11:00", "Team meeting", "Computer"},
        {21, "     ", "     ", "Mum's birthday", "Birthday"},
        {21, "13:00", "17:30", "Hike up the hill", "Backpack"},
        {23, "08:00", "09:00", "Gym", ""},
        {24, "20:00", "22:00", "Board games night", "Cards"},
        {26, "     ", "     ", "Thanksgiving", "Holiday"},
        {27, "10:00", "12:00", "Christmas shopping", "Gift"},
        {29, "11:00", "12:00", "Brunch at the lake", "Coffee"},
        {30, "16:00", "17:00", "Year-end report due", "Pen Tip"},
    };
    std::vector<appt_rec> out;
    int n = 0;
    for (const Item& i : items)
        out.push_back(entry(QDate(2026, 11, i.day),
                            QStringLiteral("N%1").arg(++n, 4, 10, QLatin1Char('0')),
                            QString::fromLatin1(i.start), QString::fromLatin1(i.end),
                            QString::fromLatin1(i.text), QString::fromLatin1(i.type)));
    return out;
}

// A daily series of fifteen years, one key for all, ending this month.
std::vector<appt_rec> daily_series() {
    std::vector<appt_rec> out;
    const QDate last(2026, 11, 30);
    for (QDate d = last.addYears(-15).addDays(1); d <= last; d = d.addDays(1)) {
        appt_rec r =
            entry(d, QStringLiteral("S0000000001"), QStringLiteral("07:00"),
                  QStringLiteral("07:15"), QStringLiteral("Vitamins"), QStringLiteral("Alarm"));
        r.appt_first_date = last.addYears(-15).addDays(1).toString(QStringLiteral("MMddyyyy"));
        r.appt_occurs = QStringLiteral("1 ");
        r.appt_until = last.toString(QStringLiteral("MM/dd/yy"));
        out.push_back(r);
    }
    return out;
}

void write_rows(AppState& s, const std::vector<appt_rec>& rows) {
    Archive::Command command(s.archive, s.cal_path);
    for (size_t from = 0; from < rows.size(); from += occur_limit) {
        s.occur_count = 0;
        for (size_t i = from; i < rows.size() && s.occur_count < occur_limit; ++i)
            *s.occur_row(++s.occur_count) = rows[i];
        must(write_occurs(s, s.cal_path), "write_occurs");
    }
    must(command.finish(), "commit");
}

template <typename F> double median_ms(F&& f, int reps = 41) {
    std::vector<double> t;
    for (int i = 0; i < reps; ++i) {
        QElapsedTimer timer;
        timer.start();
        f();
        t.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(t.begin(), t.end());
    return t[t.size() / 2];
}

// A month of `per_day` entries a day, spread over the working hours so that
// they overlap as a busy calendar does.
void fill_days(AppState& s, int per_day) {
    s.appt_count = 0;
    for (int d = 1; d <= 31; ++d)
        for (int k = 0; k < per_day; ++k) {
            appt_rec* r = s.appt_row(++s.appt_count);
            if (!r) return;
            const QDate day(2026, 3, d);
            const QTime at = QTime(8, 0).addSecs(60 * 25 * k);
            *r = entry(day,
                       QStringLiteral("%1%2")
                           .arg(d, 2, 10, QLatin1Char('0'))
                           .arg(k, 10, 10, QLatin1Char('0')),
                       at.toString(QStringLiteral("HH:mm")),
                       at.addSecs(3600).toString(QStringLiteral("HH:mm")),
                       QStringLiteral("Entry %1").arg(k), QStringLiteral("Car"));
        }
}

void day_figures() {
    for (int per_day : {4, 20, 190}) {
        auto s = std::make_unique<AppState>();
        s->cur_date = QDate(2026, 3, 15);
        s->today_day = 15;
        s->grid_font_name = QStringLiteral("DejaVu Sans");
        s->grid_font_size = QStringLiteral("9");
        s->vsSched.set_extent(14000, 10000);
        s->Cal.set_extent(4700, 2760);
        fill_days(*s, per_day);
        const double day = median_ms([&] {
            s->vsSched.Clear();
            build_day_rows(s->view(), s->options());
            format_day_grid(*s);
            s->first_row.clear();
            s->first_col.clear();
            fill_day(s->store(), s->view(), s->options());
            size_sched_cols(*s);
        });
        const double cal = median_ms([&] { fill_cal(s->store(), s->view(), s->cur_date); });
        std::printf("rebuild day_%d_a_day median_ms=%.2f\n", per_day, day);
        std::printf("rebuild navigator_%d_a_day median_ms=%.2f\n", per_day, cal);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    FixedClock clock(QDateTime(QDate(2026, 11, 21), QTime(9, 40)));
    install_clock(&clock);
    SilentModal modal;
    install_modal(&modal);
    BenchWindow window;
    if (argc == 1) day_figures();

    QTemporaryDir dir;
    auto s = std::make_unique<AppState>();
    s->app_path = dir.path();
    s->cal_path =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : dir.filePath(QStringLiteral("calendar.cal"));
    s->cur_date = clock.today();
    s->today_day = s->cur_date.day();
    s->grid_font_name = QStringLiteral("DejaVu Sans");
    s->grid_font_size = QStringLiteral("9");
    s->grid_font_color = QStringLiteral("0");
    s->window = &window;
    docombos(*s, *s);

    GridWidget widget;
    widget.resize(1250, 640);
    widget.setGrid(&s->vsOvervw);
    widget.set_picture_provider(planner_pictures());
    widget.show();
    s->vsOvervw.set_extent(1250 * 15, 640 * 15);

    const auto figure = [&](const char* name, bool week) {
        const double ms = median_ms([&] {
            if (week)
                imageWeek_Click(*s, window);
            else
                imageMonth_Click(*s, window);
            widget.refresh();
            // Rendered into a picture: the offscreen screen would skip a
            // repaint it never shows.
            (void)widget.grab();
        });
        std::printf("rebuild %s median_ms=%.2f\n", name, ms);
        std::fprintf(stderr, "  %s: %d rows in the table, %d laid, %d x %d cells\n", name,
                     int(s->appt_count), int(week ? s->week_appts : s->month_appts),
                     s->vsOvervw.Rows(), s->vsOvervw.Cols());
    };

    write_rows(*s, busy_month());
    must(load_appts(*s, s->cur_date, s->cal_path, 0), "load_appts");
    figure("month_40", false);
    figure("week_40", true);

    if (argc > 1) {
        std::fprintf(stderr, "calendar written to %s\n", argv[1]);
    } else {
        write_rows(*s, daily_series());
        must(load_appts(*s, s->cur_date, s->cal_path, 0), "load_appts");
        figure("month_series", false);
        figure("week_series", true);
    }
    s->window = nullptr;
    widget.setGrid(nullptr);
    install_modal(nullptr);
    install_clock(nullptr);
    return 0;
}
