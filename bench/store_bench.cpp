// Figures for the calendar store, not a pass/fail test: how long the month
// members take to write, load and delete at the sizes the tables allow.
#include "shell/clock.h"
#include "store/calendar_file.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>

using namespace orva;

namespace {

appt_rec appt_on(const QDate& d, const QString& id) {
    appt_rec r;
    r.appt_first_date = d.toString(QStringLiteral("MMddyyyy"));
    r.appt_date = r.appt_first_date;
    r.appt_start = QStringLiteral("09:00");
    r.appt_end = QStringLiteral("10:00");
    r.appt_id = id;
    r.appt_text = QStringLiteral("Weekly review");
    r.appt_occurs = QStringLiteral("2 ");
    r.appt_pattern = QStringLiteral("1 ");
    return r;
}

rmdr_rec rmdr_on(const QDate& d, const QString& id) {
    rmdr_rec r;
    r.rmdr_id = id;
    r.rmdr_text = QStringLiteral("Weekly review");
    r.rmdr_appt_date = d.toString(QStringLiteral("MMddyyyy"));
    r.rmdr_date = d.toString(QStringLiteral("MM/dd/yy"));
    r.rmdr_time = QStringLiteral("08:30");
    r.rmdr_fired = QStringLiteral("F");
    r.rmdr_again_count = QStringLiteral("1 ");
    return r;
}

template <typename F> double ms(F&& f) {
    QElapsedTimer t;
    t.start();
    f();
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace

int main() {
    QTemporaryDir dir;
    FixedClock fixed(QDateTime(QDate(2026, 3, 15), QTime(9, 0)));
    install_clock(&fixed);
    auto s = std::make_unique<Shared>();
    s->app_path = dir.path();
    const QString cal = dir.filePath(QStringLiteral("bench.cal"));
    const QString id = QStringLiteral("150900001234");

    // A daily series of 5,500 occurrences runs just over 15 years.
    const QDate first(2012, 1, 1);
    s->occur_count = 0;
    for (QDate d = first; s->occur_count < 5500; d = d.addDays(1))
        *s->occur_row(++s->occur_count) = appt_on(d, id);
    const QDate end = first.addDays(5500 - 1);
    double t = ms([&] {
        Archive::Command command(s->archive, cal);
        write_occurs(*s, cal);
    });
    std::printf("write_occurs %d rows (%s to %s): %.1f ms\n", int(s->occur_count),
                qPrintable(first.toString(Qt::ISODate)), qPrintable(end.toString(Qt::ISODate)), t);

    // A month of 6000 lines.
    s->occur_count = 6000;
    for (int i = 1; i <= 6000; ++i)
        *s->occur_row(i) = appt_on(QDate(2030, 1, 1 + i % 28), id);
    write_occurs(*s, cal);
    s->cur_date = QDate(2030, 1, 15);
    t = ms([&] { load_appts(*s, QDate(2030, 1, 15), cal, 0); });
    std::printf("load_appts one month of %d lines: %.1f ms\n", int(s->appt_count), t);

    // Thirteen months of reminders, 300 a month.
    for (int m = 0; m <= 12; ++m) {
        s->rmdr_count = 0;
        const QDate month = QDate(2025, 3, 1).addMonths(m);
        for (int i = 0; i < 300; ++i)
            *s->rmdr_row(++s->rmdr_count) = rmdr_on(month.addDays(i % 28), id);
        save_rmdrs(*s, 2, cal);
    }
    t = ms([&] { load_rmdrs(*s, QDate(2026, 3, 15), cal, 12); });
    std::printf("load_rmdrs months_back 12 (%d rows): %.1f ms\n", int(s->rmdr_count), t);

    // Delete the series of the first write, month by month, as a delete of an
    // entry does.
    int months = 0;
    t = ms([&] {
        Archive::Command command(s->archive, cal);
        for (QDate d = first; d <= end; d = d.addMonths(1), ++months)
            delete_by_key(*s, cal, MemberKind::appointments, yymm_of(d), id);
    });
    std::printf("delete_by_key over %d months: %.1f ms\n", months, t);

    t = ms([&] {
        Archive::Command command(s->archive, cal);
        for (int m = 0; m <= 12; ++m)
            delete_by_key(*s, cal, MemberKind::reminders, yymm_of(QDate(2025, 3, 1).addMonths(m)),
                          id);
    });
    std::printf("delete_by_key reminders over 13 months: %.1f ms\n", t);
    install_clock(nullptr);
    return 0;
}
