#pragma once

#include "appointments/appt_editor.h"
#include "appointments/delete_copy.h"
#include "core/clock.h"
#include "core/modal.h"
#include "state/app_state.h"
#include "store/calendar_file.h"
#include "views/day_view.h"

#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace orva::testing {

// Answers every question with Yes and shows nothing, counting the messages a
// command would have shown (a failed command always shows one).
class YesModal final : public Modal {
  public:
    int told = 0;
    void message(const QString&, MsgStyle) override { ++told; }
    Answer ask_yes_no(const QString&, MsgStyle) override { return Answer::Yes; }
    QString save_file_dialog(const QString&) override { return {}; }
    QString open_file_dialog(const QString&, const QString&) override { return {}; }
    bool print_dialog(PrintSetup&) override { return false; }
    bool choose_color(quint32&) override { return false; }
    void open_form(const QString&) override {}
};

// Building a calendar is no test of its own: a step that fails makes every
// figure and every check on it meaningless, so the program stops.
inline void must(int e, const char* what) {
    if (e == 0) return;
    std::fprintf(stderr, "%s failed with error %d\n", what, e);
    std::exit(1);
}

// Entry i of the month of d, from 08:00 on in half hours; three in eight are
// reminded 15 minutes ahead. Varied, every fourth carries a line of notes and
// every fifth the bicycle sticker.
inline appt_rec single_on(const QDate& d, int i, bool varied = false) {
    appt_rec r;
    r.appt_first_date = d.toString(QStringLiteral("MMddyyyy"));
    r.appt_date = r.appt_first_date;
    r.appt_start = QTime(8, 0).addSecs(1800 * (i % 18)).toString(QStringLiteral("HH:mm"));
    r.appt_end = QTime(9, 0).addSecs(1800 * (i % 18)).toString(QStringLiteral("HH:mm"));
    r.appt_id = QStringLiteral("B%1").arg(d.toString(QStringLiteral("yyMM")) + QString::number(i));
    r.appt_text = QStringLiteral("Entry %1 of the month").arg(i);
    r.appt_type = QStringLiteral("Meeting");
    r.appt_occurs = QStringLiteral("0 ");
    r.appt_occurs_month = QStringLiteral("0 ");
    r.appt_occurs_every = QStringLiteral("0 ");
    r.appt_until = d.toString(QStringLiteral("MM/dd/yy"));
    r.appt_rem_lead = i % 8 < 3 ? QStringLiteral("15") : QStringLiteral("0 ");
    r.appt_rem_unit = QStringLiteral("0 ");
    r.appt_rem_anim = QStringLiteral("1 ");
    r.appt_pattern = QStringLiteral("1 ");
    if (varied && i % 4 == 0) r.appt_notes = QStringLiteral("Bring the papers for entry %1").arg(i);
    if (varied && i % 5 == 0) r.appt_type = QStringLiteral("Bicycle");
    return r;
}

// The waiting reminder of a single_on entry, 15 minutes before its start.
inline rmdr_rec rmdr_of(const appt_rec& a) {
    rmdr_rec r;
    r.rmdr_first_date = a.appt_first_date;
    r.rmdr_start = a.appt_start;
    r.rmdr_end = a.appt_end;
    r.rmdr_id = a.appt_id;
    r.rmdr_text = a.appt_text;
    r.rmdr_type = a.appt_type;
    r.rmdr_appt_date = a.appt_date;
    const QDateTime due = QDateTime(text_to_date(a.appt_date),
                                    QTime::fromString(a.appt_start, QStringLiteral("HH:mm")))
                              .addSecs(-15 * 60);
    r.rmdr_date = due.toString(QStringLiteral("MM/dd/yy"));
    r.rmdr_time = due.toString(QStringLiteral("HH:mm"));
    r.rmdr_fired = QStringLiteral("F");
    r.rmdr_anim = QStringLiteral("1 ");
    r.rmdr_again_count = QStringLiteral("1 ");
    return r;
}

// The calendar of a long-time user and the commands run most against it,
// through the same steps the editor's OK and Delete take: a planner on the
// day view in a temporary folder, the clock stopped at 09:10 on `today`.
struct LargeCalendar {
    QTemporaryDir dir;
    FixedClock clock;
    YesModal modal;
    std::unique_ptr<AppState> s = std::make_unique<AppState>();
    ApptForm f;

    explicit LargeCalendar(const QDate& today = QDate(2026, 3, 15))
        : clock(QDateTime(today, QTime(9, 10))) {
        install_clock(&clock);
        install_modal(&modal);
        s->app_path = dir.path();
        s->cal_path = dir.filePath(QStringLiteral("calendar.cal"));
        s->cur_date = clock.today();
        s->work_start = QStringLiteral("8:00:00 AM");
        s->work_end = QStringLiteral("5:00:00 PM");
        s->view_day = true;
        s->vsSched.set_extent(12000, 9000);
        build_day_rows(s->view(), s->options());
        format_day_grid(*s);
    }
    ~LargeCalendar() {
        s->appt_form = nullptr;
        install_modal(nullptr);
        install_clock(nullptr);
    }
    LargeCalendar(const LargeCalendar&) = delete;
    LargeCalendar& operator=(const LargeCalendar&) = delete;

    // 40 entries in each of 180 months from this one, 15 of them reminded,
    // in one command.
    void build_singles(bool varied = false) {
        const QDate first(clock.today().year(), clock.today().month(), 1);
        std::vector<appt_rec> rows;
        for (int m = 0; m < 180; ++m) {
            const QDate month = first.addMonths(m);
            for (int i = 0; i < 40; ++i)
                rows.push_back(single_on(month.addDays(i % month.daysInMonth()), i, varied));
        }
        Archive::Command command(s->archive, s->cal_path);
        for (size_t from = 0; from < rows.size(); from += occur_limit) {
            s->occur_count = 0;
            for (size_t i = from; i < rows.size() && s->occur_count < occur_limit; ++i)
                *s->occur_row(++s->occur_count) = rows[i];
            must(write_occurs(*s, s->cal_path), "write_occurs");
        }
        s->rmdr_count = 0;
        for (const appt_rec& a : rows)
            if (a.appt_rem_lead.trimmed() != u"0") {
                *s->rmdr_row(++s->rmdr_count) = rmdr_of(a);
                if (s->rmdr_count == rmdr_limit) {
                    must(append_rmdr_rows(*s, s->cal_path, 1, s->rmdr_count), "append_rmdr_rows");
                    s->rmdr_count = 0;
                }
            }
        must(append_rmdr_rows(*s, s->cal_path, 1, s->rmdr_count), "append_rmdr_rows");
        must(command.finish(), "building the calendar");
    }

    void open_new(const QString& start) {
        hand_over_new(s->store(), s->editing());
        s->edit_date = s->cur_date;
        s->edit_start = start;
        f = ApptForm{};
        s->appt_form = &f;
        init_appt_form(s->store(), s->options(), s->editing(), s->run(), f);
    }

    // A daily series from today to fifteen years on, reminded 30 minutes ahead.
    void save_series(const QString& text) {
        clock.advance_secs(1);
        open_new(QStringLiteral("07:00"));
        f.Text1 = text;
        f.aptTimePick2 = QTime(7, 45);
        s->occ_by_period = true;
        s->occ_by_weekday = false;
        s->occ_period = 1;
        s->occ_every = 0;
        s->occ_until = clock.today().addYears(15).toString(QStringLiteral("MM/dd/yy"));
        s->rem_lead = 30;
        s->rem_unit = 0;
        Command1_Click(*s, f);
    }

    // The row of appt_tbl with this text, 0 when none.
    int row_with_text(const QString& text) const {
        for (int r = 1; r <= s->appt_count; ++r)
            if (rtrim(s->appt_row(r)->appt_text) == text) return r;
        return 0;
    }

    // Opens the series shown as `from`, renames it and moves it half an hour
    // earlier: OK deletes the series and its reminders and makes them again.
    void edit_series(const QString& from, const QString& to) {
        clock.advance_secs(1);
        s->new_appt = false;
        s->appt_copy = false;
        s->edit_index = row_with_text(from);
        f = ApptForm{};
        s->appt_form = &f;
        init_appt_form(s->store(), s->options(), s->editing(), s->run(), f);
        f.Text1 = to;
        f.aptTimePick1 = QTime(6, 30);
        f.aptTimePick2 = QTime(7, 30);
        Command1_Click(*s, f);
    }

    void delete_series(const QString& text) {
        s->edit_index = row_with_text(text);
        delCmd_Click(*s);
    }

    // A one-time entry today at 14:00, reminded 15 minutes ahead.
    void save_single(int i) {
        clock.advance_secs(1);
        open_new(QStringLiteral("14:00"));
        f.Text1 = QStringLiteral("Call %1").arg(i);
        f.aptTimePick2 = QTime(14, 30);
        s->occ_by_period = true;
        s->occ_by_weekday = false;
        s->occ_period = 0;
        s->rem_lead = 15;
        s->rem_unit = 0;
        Command1_Click(*s, f);
    }

    // Lines in the members whose name starts with `kind` ('c' or 'r').
    int lines(QChar kind) {
        int n = 0;
        for (const QString& m : s->archive.members(s->cal_path)) {
            if (m.at(0) != kind) continue;
            QByteArray b;
            must(s->archive.get(s->cal_path, m, b), "reading a member");
            n += int(b.count('\n'));
        }
        return n;
    }
};

} // namespace orva::testing
