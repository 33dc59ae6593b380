#include "shell/tray.h"

#include "core/clock.h"
#include "core/modal.h"
#include "views/day_view.h"

#include <QLocale>

namespace orva {

QString format_hh_mm_ss_ampm(const QTime& t) {
    const int h12 = t.hour() % 12 == 0 ? 12 : t.hour() % 12;
    return QStringLiteral("%1:%2:%3 %4")
        .arg(h12, 2, 10, QLatin1Char('0'))
        .arg(t.minute(), 2, 10, QLatin1Char('0'))
        .arg(t.second(), 2, 10, QLatin1Char('0'))
        .arg(t.hour() < 12 ? QStringLiteral("am") : QStringLiteral("pm"));
}

QString tray_tip_text(const PlannerState& view) {
    const QDateTime now = clock().now();
    // A date joined to a text reads as the system's short date.
    return QStringLiteral("Orva Calendar   ") +
           QLocale().toString(now.date(), QLocale::ShortFormat) + QStringLiteral("  ") +
           format_hh_mm_ss_ampm(now.time()) + QStringLiteral("    ") +
           QString::number(view.day_appts) + QStringLiteral(" appointments today");
}

void cSysTray1_MouseUp(RunState& run, WindowPort& w, int button) {
    if (button == 1) {
        if (w.window_hidden())
            sysCalender_Click(run, w);
        else
            mnuHide_Click(run, w);
        return;
    }
    if (button == 2 && !w.window_hidden()) run.sysCalender_enabled = false;
}

void mnuHide_Click(RunState& run, WindowPort& w) {
    run.sysCalender_enabled = w.hide_to_tray();
}

void sysCalender_Click(RunState& run, WindowPort& w) {
    run.sysCalender_enabled = false;
    w.show_window();
}

void open_with_calendar(const Shared& store, const QString& form) {
    if (store.cal_path.isEmpty()) {
        // A slip of the user's, so an information box rather than a warning.
        modal().message(no_calendar_text, MsgStyle::Information);
        return;
    }
    modal().open_form(form);
}

} // namespace orva
