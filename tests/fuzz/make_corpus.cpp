// Writes the seed inputs of the fuzz targets into the folder given (the
// committed ones are in tests/fuzz/corpus): a few small, real inputs of each
// kind, made by the program's own writers so they stay in step with them.
// The seeds named found_* are not written here: they are inputs a fuzzing
// run found, kept byte for byte as it found them.
//
//   build-fuzz/tests/fuzz/make_fuzz_corpus tests/fuzz/corpus

#include "fuzz_support.h"
#include "member_split.h"

#include "shell/single_instance.h"
#include "shell/startup.h"
#include "state/options.h"
#include "store/calendar_file.h"
#include "store/member_format.h"
#include "tlist/tlist.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/navigator.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <limits>
#include <memory>
#include <sqlite3.h>

using namespace orva;

namespace {

QString out_root;

void write(const QString& target, const QString& name, const QByteArray& bytes) {
    const QString dir = out_root + QLatin1Char('/') + target;
    QDir().mkpath(dir);
    QFile f(dir + QLatin1Char('/') + name);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) {
        fprintf(stderr, "cannot write %s\n", qPrintable(f.fileName()));
        exit(1);
    }
}

appt_rec appt(const char* date, const char* id, const char* start, const char* end,
              const QString& text, const char* type = "Car") {
    appt_rec r;
    r.appt_first_date = QString::fromLatin1(date);
    r.appt_date = QString::fromLatin1(date);
    r.appt_start = QString::fromLatin1(start);
    r.appt_end = QString::fromLatin1(end);
    r.appt_id = QString::fromLatin1(id);
    r.appt_text = text;
    r.appt_type = QString::fromLatin1(type);
    r.appt_occurs = QStringLiteral("0 ");
    r.appt_occurs_month = QStringLiteral("0 ");
    r.appt_occurs_every = QStringLiteral("0 ");
    r.appt_until = QStringLiteral("03/15/26");
    r.appt_rem_lead = QStringLiteral("0 ");
    r.appt_rem_unit = QStringLiteral("0 ");
    r.appt_rem_anim = QStringLiteral("1 ");
    r.appt_pattern = QStringLiteral("1 ");
    return r;
}

rmdr_rec rmdr(const appt_rec& a, const char* due, const char* time, const char* fired) {
    rmdr_rec r;
    r.rmdr_first_date = a.appt_first_date;
    r.rmdr_start = a.appt_start;
    r.rmdr_end = a.appt_end;
    r.rmdr_id = a.appt_id;
    r.rmdr_text = a.appt_text;
    r.rmdr_type = a.appt_type;
    r.rmdr_appt_date = a.appt_date;
    r.rmdr_date = QString::fromLatin1(due);
    r.rmdr_time = QString::fromLatin1(time);
    r.rmdr_fired = QString::fromLatin1(fired);
    r.rmdr_anim = QStringLiteral("1 ");
    r.rmdr_again_count = QStringLiteral("1 ");
    return r;
}

QByteArray lines(const std::vector<appt_rec>& rows) {
    QByteArray out;
    for (const appt_rec& r : rows)
        out += appt_line(r) + line_end;
    return out;
}

QByteArray lines(const std::vector<rmdr_rec>& rows) {
    QByteArray out;
    for (const rmdr_rec& r : rows)
        out += rmdr_line(r) + line_end;
    return out;
}

QByteArray with_reminders(const QByteArray& appts, const QByteArray& rmdrs) {
    return appts + fuzz::member_split.toByteArray() + rmdrs;
}

// --- member lines -------------------------------------------------------------

std::vector<appt_rec> march_day() {
    appt_rec dentist = appt("03152026", "150900001234", "09:00", "10:00", "Dentist");
    dentist.appt_rem_lead = QStringLiteral("30");
    appt_rec meeting = appt("03152026", "150900011234", "09:30", "11:00", "Meeting", "Meeting");
    appt_rec untimed = appt("03152026", "150900021234", "     ", "     ", "Birthday", "Cake");
    untimed.appt_notes = QStringLiteral("Call at noon\r\nBring the card");
    return {dentist, meeting, untimed};
}

void member_lines() {
    const std::vector<appt_rec> day = march_day();
    write("member_lines", "day_with_reminders",
          with_reminders(lines(day),
                         lines(std::vector<rmdr_rec>{rmdr(day[0], "03/15/26", "08:30", "F"),
                                                     rmdr(day[0], "03/14/26", "08:30", "T")})));

    appt_rec series = appt("03032026", "030800001203", "18:00", "18:30",
                           QString::fromUtf8("Caf\u00e9 cr\u00e8me \u4f1a\u8bae"), "");
    series.appt_occurs = QStringLiteral("1 ");
    series.appt_occurs_every = QStringLiteral("2 ");
    series.appt_pattern = QStringLiteral("2 ");
    series.appt_until = QStringLiteral("12/31/26");
    std::vector<appt_rec> month;
    for (const char* date : {"03032026", "03102026", "03172026", "03242026", "03312026"}) {
        series.appt_date = QString::fromLatin1(date);
        month.push_back(series);
    }
    write("member_lines", "weekly_series_utf8", lines(month));

    // Every field filled, a long note and the alarm path included.
    appt_rec full = appt("03152026", "151000001203", "23:31", "23:59",
                         QStringLiteral("Late call with the team in Tokyo"), "Phone");
    full.appt_rem_lead = QStringLiteral("2 ");
    full.appt_rem_unit = QStringLiteral("1 ");
    full.appt_rem_text = QStringLiteral("/usr/share/sounds/alarm.wav");
    full.appt_notes = QString(190, QLatin1Char('n'));
    write("member_lines", "full_line", lines(std::vector<appt_rec>{full}));

    // The inputs that crashed the day sort: a tab in a start field, and one in
    // a key that put a row number past the table into the sort's last column.
    appt_rec tab_start = appt("03152026", "150900001234", "\t9:00", "10:00", "Tabbed start");
    write("member_lines", "tab_in_start", lines(std::vector<appt_rec>{tab_start, day[1]}));
    appt_rec tab_key = appt("03152026", "A\t7001", "09:00", "10:00", "Tabbed key");
    write("member_lines", "tab_in_key", lines(std::vector<appt_rec>{tab_key}));

    // Lines the load passes over, between lines it keeps: a day that does not
    // exist, a tab in a date, a reminder due on no day.
    std::vector<appt_rec> dated = day;
    dated[1].appt_date = QStringLiteral("03322026");
    dated.push_back(appt("\t3152026", "150900031234", "12:00", "13:00", "Tab in the date"));
    write("member_lines", "no_real_date",
          with_reminders(lines(dated),
                         lines(std::vector<rmdr_rec>{rmdr(day[0], "02/30/26", "08:30", "F"),
                                                     rmdr(day[0], "03/15/26", "08:30", "F")})));

    // A member cut off in its last line, and a reminder member alone.
    write("member_lines", "cut_short", lines(day).left(2 * 477 + 300));
    write("member_lines", "reminders_only",
          with_reminders(QByteArray(),
                         lines(std::vector<rmdr_rec>{rmdr(day[0], "03/15/26", "08:30", "F")})));
}

// --- options row and grid files ----------------------------------------------

struct Headless {
    std::unique_ptr<AppState> s = std::make_unique<AppState>();
    fuzz::FuzzWindow w{s->view()};
    QTemporaryDir dir;

    Headless() {
        s->app_path = dir.path();
        s->cal_path = dir.filePath(QStringLiteral("calendar.cal"));
        s->cur_date = orva::clock().today();
        s->today_day = s->cur_date.day();
    }
};

void options_row() {
    {
        Headless h;
        default_options(h.s->store(), h.s->view(), h.s->options(), h.s->run(), h.w);
        write("options_row", "defaults", h.s->vsSettings.save_bytes());
    }
    {
        Headless h;
        default_options(h.s->store(), h.s->view(), h.s->options(), h.s->run(), h.w);
        Grid& g = h.s->vsSettings;
        const QStringList row = {"mnuForest", "3",   "8454143",  "2",     "True",
                                 "Noto Sans", "18",  "255",      "True",  "True",
                                 "mthvw",     "F",   "11022024", "9000",  "14000",
                                 "300",       "450", "2",        "False", "True"};
        for (int c = 0; c < row.size(); ++c)
            g.setTextMatrix(0, c, row[c]);
        write("options_row", "month_view_big_font", g.save_bytes());
        // A row saved by a version with fewer columns.
        g.setCols(12);
        write("options_row", "older_short_row", g.save_bytes());
    }
}

void grid_file() {
    Headless h;
    AppState& s = *h.s;
    default_options(s.store(), s.view(), s.options(), s.run(), h.w);
    write("grid_file", "options_row", s.vsSettings.save_bytes());
    s.grid_font_name = QStringLiteral("DejaVu Sans");
    s.grid_font_size = QStringLiteral("9");
    fill_cal(s.store(), s.view(), s.cur_date);
    mark_cur_day(s.store(), s.view());
    write("grid_file", "navigator_month", s.Cal.save_bytes());

    s.occur_count = 3;
    const std::vector<appt_rec> day = march_day();
    for (int i = 0; i < 3; ++i)
        *s.occur_row(i + 1) = day[size_t(i)];
    (void)write_occurs(s, s.cal_path);
    (void)load_appts(s, s.cur_date, s.cal_path, 0);
    build_day_rows(s.view(), s.options());
    format_day_grid(s);
    fill_day(s.store(), s.view(), s.options());
    s.vsSched.Select(19, 2);
    show_detail(s.store(), s.view(), s.options(), s.editing(), 19, 2);
    write("grid_file", "detail_pane", s.vsDtl.save_bytes());
    write("grid_file", "detail_pane_contents", s.vsDtl.save_bytes(GridSave::Contents));

    // A small block merged down a column, with its box, as the day grid draws one.
    Grid g(4, 3);
    g.setFixedCols(1);
    g.setMergeCells(MergeMode::Free);
    g.setMergeCol(1, true);
    for (int r = 1; r <= 3; ++r) {
        g.setTextMatrix(r, 0, day_row_label(r + 18));
        g.setTextMatrix(r, 1, QStringLiteral("9:00 am   Dentist"));
        g.setCell(CellSetting::Data, r, 1, 1);
        g.setCell(CellSetting::BackColor, r, 1, 65535);
        g.setCell(CellSetting::Picture, r, 1, QStringLiteral("Car"));
    }
    g.setCell(CellSetting::Data, 1, 2, QStringLiteral("blank"));
    g.Select(1, 1, 3, 1);
    g.CellBorder(rgb(0, 0, 125), 1, 1, 1, 1, 500, 500);
    g.setColHidden(2, true);
    write("grid_file", "merged_block", g.save_bytes());
    write("grid_file", "merged_block_format", g.save_bytes(GridSave::Format));

    // A row as tall as a file can ask: the rows below it were once placed by
    // a sum past the range of an int.
    Grid tall(6, 2);
    tall.setRowHeight(2, std::numeric_limits<int>::max());
    write("grid_file", "row_of_the_tallest_height", tall.save_bytes());

    // A to-do sheet as its member holds it: a check-box column with ticked,
    // empty and absent boxes, a least row height, styled and indented lines.
    {
        Shared store;
        PlannerState view;
        OptionsState options;
        ToDoForm sheet;
        frmToDo_Load(store, view, options, sheet);
        Grid& t = sheet.vsToDo;
        t.setTextMatrix(2, todo_col::text, QStringLiteral("    Call the plumber"));
        t.setCellChecked(1, todo_col::check, CheckBox::Checked);
        t.setCellChecked(2, todo_col::check, CheckBox::Unchecked);
        t.setCell(CellSetting::FontBold, 1, todo_col::text, true);
        t.setCell(CellSetting::ForeColor, 2, todo_col::text, rgb(200, 0, 0));
        write("grid_file", "todo_sheet", t.save_bytes());
    }
}

// --- whole calendar files ----------------------------------------------------

// The calendar rewritten with 512-byte pages and no log, so that a seed is a
// few kilobytes; the program turns its log back on when it opens it.
QByteArray compact(const QString& path) {
    sqlite3* db = nullptr;
    if (sqlite3_open(QFile::encodeName(path).constData(), &db) != SQLITE_OK) exit(1);
    for (const char* sql : {"PRAGMA journal_mode=DELETE", "PRAGMA page_size=512", "VACUUM"})
        if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            fprintf(stderr, "%s: %s\n", sql, sqlite3_errmsg(db));
            exit(1);
        }
    sqlite3_close(db);
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) exit(1);
    return f.readAll();
}

// Starts the program headless on an empty folder, lets `fill` change the
// calendar, closes it and returns its bytes.
template <class Fill> QByteArray calendar(Fill fill) {
    QByteArray bytes;
    {
        Headless h;
        SingleInstance instance(h.dir.path());
        if (!Form_Load(*h.s, h.w, instance)) exit(1);
        fill(*h.s, h.w);
        h.s->archive.close(h.s->cal_path);
        bytes = compact(h.s->cal_path);
    }
    return bytes;
}

void calendar_open() {
    write("calendar_open", "first_run", calendar([](AppState&, WindowPort&) {}));

    write("calendar_open", "march_with_reminders", calendar([](AppState& s, WindowPort&) {
              const std::vector<appt_rec> day = march_day();
              s.occur_count = 3;
              for (int i = 0; i < 3; ++i)
                  *s.occur_row(i + 1) = day[size_t(i)];
              (void)write_occurs(s, s.cal_path);
              (void)append_rmdr_line(s, s.cal_path, rmdr(day[0], "03/15/26", "08:30", "F"));
              (void)append_rmdr_line(s, s.cal_path, rmdr(day[0], "01/20/26", "08:30", "F"));
          }));

    write("calendar_open", "month_view_long_absence", calendar([](AppState& s, WindowPort& w) {
              s.view_month = true;
              save_options(s.store(), s.view(), s.options(), w);
              s.vsSettings.setTextMatrix(0, 12, QStringLiteral("06012024"));
              (void)s.archive.put(s.cal_path, options_member, s.vsSettings.save_bytes());
              const appt_rec a = march_day()[0];
              (void)append_rmdr_line(s, s.cal_path, rmdr(a, "07/01/24", "08:30", "F"));
              (void)append_rmdr_line(s, s.cal_path, rmdr(a, "12/24/25", "18:00", "F"));
          }));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
        return 2;
    }
    out_root = QString::fromLocal8Bit(argv[1]);
    fuzz::init_process();
    member_lines();
    options_row();
    grid_file();
    calendar_open();
    return 0;
}
