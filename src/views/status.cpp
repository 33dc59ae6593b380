#include "views/status.h"

namespace orva {
namespace {

// December 31 of the year before: the date moved back to January (same day,
// clamped), then back by its own day number.
QDate dec31_before(const QDate& d) {
    const QDate jan = d.addMonths(1 - d.month());
    return jan.addDays(-jan.day());
}

// December 31 of the year: moved on to December, then on by 31 less its day.
QDate dec31_of(const QDate& d) {
    const QDate dec = d.addMonths(12 - d.month());
    return dec.addDays(31 - dec.day());
}

QString count_text(int n) {
    return QString::number(n) +
           (n == 1 ? QStringLiteral("   Appointment") : QStringLiteral("   Appointments"));
}

} // namespace

int year_day(const QDate& d) {
    if (!d.isValid()) return 0;
    return int(dec31_before(d).daysTo(d));
}

int days_remaining(const QDate& d) {
    if (!d.isValid()) return 0;
    return int(d.daysTo(dec31_of(d)));
}

void show_status(const Shared& store, PlannerState& view) {
    const QDate d = store.cur_date;
    const int n =
        view.view_week ? view.week_appts : (!view.view_month ? view.day_appts : view.month_appts);
    view.status_panels[panel_count].text = count_text(n);
    view.status_panels[panel_file].text = store.cal_path;

    const int day = year_day(d);
    // A plain count of sevens, not a calendar week: January 1 to 6 are week 0
    // and December 31 of a common year is week 52 with none left.
    const int week = day / 7;
    if (view.view_week) {
        view.status_panels[panel_year_pos].text =
            QStringLiteral("  Week   ") + QString::number(week);
        view.status_panels[panel_left].text =
            QString::number(52 - week) + QStringLiteral(" Weeks remain");
    } else if (view.view_month) {
        view.status_panels[panel_year_pos].text =
            QStringLiteral("  Month   ") + QString::number(d.month());
        view.status_panels[panel_left].text =
            QString::number(12 - d.month()) + QStringLiteral(" months remain");
    } else {
        view.status_panels[panel_year_pos].text = QStringLiteral("  Day   ") + QString::number(day);
        view.status_panels[panel_left].text =
            QString::number(days_remaining(d)) + QStringLiteral(" Days remain");
    }

    for (const char* name : {"imageClock", "imagePrint", "Label2", "Label7"})
        view.ctl(QString::fromLatin1(name)).enabled = true;
}

void StatusBar1_MouseMove(PlannerState& view) {
    StatusPanel& pos = view.status_panels[panel_year_pos];
    StatusPanel& left = view.status_panels[panel_left];
    if (view.view_week) {
        pos.tip = QStringLiteral("Week number ");
        left.tip = QStringLiteral("Weeks remaining in the year ");
    } else if (view.view_month) {
        pos.tip = QStringLiteral("Month number ");
        left.tip = QStringLiteral("Months remaining in the year ");
    } else {
        pos.tip = QStringLiteral("Number of days  since beginning of year ");
        left.tip = QStringLiteral("Days remaining for selected Year ");
    }
}

void mnuStat_Click(OptionsState& options, WindowPort& w) {
    options.menus.mnuStat = !options.menus.mnuStat;
    w.set_status_bar_visible(options.menus.mnuStat);
    w.sync_menus();
    // The month grid gives up the bar's height only while the bar shows.
    w.layout_view();
}

} // namespace orva
