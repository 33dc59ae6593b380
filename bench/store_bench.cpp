// Figures for the calendar store, not a pass/fail test. It builds a calendar
// of fifteen years (40 entries a month, a quarter of them reminded, plus a
// daily fifteen-year series with a reminder on every occurrence) and times the
// four commands a user runs most against it, through the same steps the
// editor's OK and Delete take. Syncs are counted by an I/O shim under SQLite.
// Each figure is one line, so runs compare line by line:
//   command <name> median_ms=<x> syncs=<n>
//   file_bytes=<n>
#include "appointments/appt_editor.h"
#include "appointments/delete_copy.h"
#include "core/clock.h"
#include "core/modal.h"
#include "state/app_state.h"
#include "store/calendar_file.h"
#include "support/io_shim.h"
#include "views/day_view.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace orva;
using orva::testing::IoShim;

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

// The bench measures commands that succeed; a setup step that fails makes
// every figure meaningless.
void must(int e, const char* what) {
    if (e == 0) return;
    std::fprintf(stderr, "%s failed with error %d\n", what, e);
    std::exit(1);
}

struct Sample {
    double ms;
    long syncs;
};

template <typename F> Sample measure(F&& f) {
    IoShim& io = IoShim::install();
    io.reset_counts();
    QElapsedTimer t;
    t.start();
    f();
    return {double(t.nsecsElapsed()) / 1e6, io.syncs()};
}

void report(const char* name, std::vector<Sample> v) {
    std::sort(v.begin(), v.end(), [](const Sample& a, const Sample& b) { return a.ms < b.ms; });
    const double ms = v[v.size() / 2].ms;
    std::sort(v.begin(), v.end(),
              [](const Sample& a, const Sample& b) { return a.syncs < b.syncs; });
    std::printf("command %s median_ms=%.1f syncs=%ld\n", name, ms, v[v.size() / 2].syncs);
}

appt_rec single_on(const QDate& d, int i) {
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
    return r;
}

rmdr_rec rmdr_of(const appt_rec& a) {
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

struct Bench {
    QTemporaryDir dir;
    FixedClock clock{QDateTime(QDate(2026, 3, 15), QTime(9, 10))};
    YesModal modal;
    std::unique_ptr<AppState> s = std::make_unique<AppState>();
    ApptForm f;

    Bench() {
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
    ~Bench() {
        s->appt_form = nullptr;
        install_modal(nullptr);
        install_clock(nullptr);
    }

    // 40 entries in each of 180 months from this one, 15 of them reminded.
    void build_singles() {
        const QDate first(2026, 3, 1);
        std::vector<appt_rec> rows;
        for (int m = 0; m < 180; ++m) {
            const QDate month = first.addMonths(m);
            for (int i = 0; i < 40; ++i)
                rows.push_back(single_on(month.addDays(i % month.daysInMonth()), i));
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

    int row_with_text(const QString& text) const {
        for (int r = 1; r <= s->appt_count; ++r)
            if (rtrim(s->appt_row(r)->appt_text) == text) return r;
        return 0;
    }

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

} // namespace

int main() {
    IoShim::install();
    Bench b;
    b.build_singles();
    b.save_series(QStringLiteral("Morning run"));
    const int appts = b.lines(u'c'), rmdrs = b.lines(u'r');
    const int members = int(b.s->archive.members(b.s->cal_path).size());
    b.s->archive.close(b.s->cal_path);
    const qint64 bytes = QFileInfo(b.s->cal_path).size();
    std::printf("calendar appt_lines=%d rmdr_lines=%d members=%d\n", appts, rmdrs, members);
    b.s->cur_date = b.clock.today();
    must(load_appts(*b.s, b.s->cur_date, b.s->cal_path, 0), "load_appts");

    std::vector<Sample> single;
    for (int i = 0; i < 21; ++i)
        single.push_back(measure([&] { b.save_single(i); }));

    std::vector<Sample> save, edit, del;
    for (int i = 0; i < 7; ++i) {
        const QString text = QStringLiteral("Evening walk %1").arg(i);
        const QString longer = text + QStringLiteral(", long loop");
        save.push_back(measure([&] { b.save_series(text); }));
        edit.push_back(measure([&] { b.edit_series(text, longer); }));
        del.push_back(measure([&] { b.delete_series(longer); }));
    }
    report("single_save", single);
    report("series_save", save);
    report("series_edit", edit);
    report("series_delete", del);
    std::printf("file_bytes=%lld\n", static_cast<long long>(bytes));
    return 0;
}
