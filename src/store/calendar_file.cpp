#include "store/calendar_file.h"

#include "shell/clock.h"
#include "shell/event_loop.h"
#include "shell/modal.h"
#include "store/member_format.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

namespace orva {

QString Shared::loose(const QString& name) const {
    return app_path + u'/' + name;
}

namespace {

constexpr int append_mode = 8;
constexpr int rewrite_mode = 2;

// Writes lines into loose copies one month member at a time, as the write
// routines walk their tables: a change of month adds the open copy back and
// deletes it before the next member is extracted. Rows of one month must stand
// together, or the rewrite mode loses the earlier ones.
class MonthWriter {
  public:
    MonthWriter(Shared& s, const QString& cal_file, MemberKind kind, int io_mode)
        : s_(s), cal_(cal_file), kind_(kind), io_mode_(io_mode) {}
    ~MonthWriter() { finish(); }
    MonthWriter(const MonthWriter&) = delete;
    MonthWriter& operator=(const MonthWriter&) = delete;

    void line(const QString& yymm, const QByteArray& bytes) {
        if (!open_ || yymm != yymm_) {
            finish();
            start(yymm);
        }
        file_.write(bytes);
        file_.write(line_end, line_end_len);
    }

    void finish() {
        if (!open_) return;
        open_ = false;
        // The text must have reached the file before the add.
        file_.close();
        s_.archive.run(cal_, path_, Archive::add);
        QFile::remove(path_);
    }

    // Drops the open month without storing it: its member keeps what it held.
    void abandon() {
        if (!open_) return;
        open_ = false;
        file_.close();
        QFile::remove(path_);
    }

  private:
    void start(const QString& yymm) {
        yymm_ = yymm;
        if (kind_ == MemberKind::appointments)
            extract_appt_member(s_, cal_, path_, yymm);
        else
            extract_rmdr_member(s_, cal_, path_, yymm);
        file_.setFileName(path_);
        const auto mode = io_mode_ == rewrite_mode ? QIODevice::WriteOnly | QIODevice::Truncate
                                                   : QIODevice::WriteOnly | QIODevice::Append;
        // A file that cannot be opened swallows its lines; the add then stores
        // whatever stands there, as the unguarded routine would.
        file_.open(mode);
        open_ = true;
    }

    Shared& s_;
    QString cal_;
    MemberKind kind_;
    int io_mode_;
    QString yymm_, path_;
    QFile file_;
    bool open_ = false;
};

QDate today() {
    return clock().today();
}

void call(const std::function<void()>& f) {
    if (f) f();
}

// Reads a loose member line by line into cur and hands each record on,
// yielding once per line; then deletes the copy. No copy means the month has
// no member: it loads empty, without a word.
template <class Rec, class Take>
void read_member(Shared& s, const QString& path, void (MemberReader::*read)(Rec&, QByteArray&, int),
                 Take take) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return;
    MemberReader in(f);
    Rec rec;
    QByteArray rec_end;
    while (!in.at_end()) {
        (in.*read)(rec, rec_end, s.cur.rec_end_len);
        s.cur.rec_end = QString::fromLatin1(rec_end);
        take(rec);
        yield_events();
    }
    f.close();
    QFile::remove(path);
}

} // namespace

QString appt_member_name(const QString& yymm) {
    return QStringLiteral("c") + yymm + QStringLiteral(".cal");
}
QString rmdr_member_name(const QString& yymm) {
    return QStringLiteral("r") + yymm + QStringLiteral(".rmd");
}

int extract_appt_member(Shared& s, const QString& cal_file, QString& loose_path,
                        const QString& yymm) {
    loose_path = s.loose(appt_member_name(yymm));
    QFile::remove(loose_path);
    s.archive.clear_error();
    return s.archive.run(cal_file, loose_path, Archive::extract);
}

int extract_rmdr_member(Shared& s, const QString& cal_file, QString& loose_path,
                        const QString& yymm) {
    // Nothing is deleted first; the extract replaces a copy left by a crash.
    // When the month has no member such a copy is stale, and reading or
    // appending to it would bring back lines the file no longer has.
    loose_path = s.loose(rmdr_member_name(yymm));
    s.rmdr_temp_path = loose_path;
    s.archive.clear_error();
    const int e = s.archive.run(cal_file, loose_path, Archive::extract);
    if (e == err::not_found) QFile::remove(loose_path);
    return e;
}

void load_appts(Shared& s, const QDate& date, const QString& cal_file, int extra_months) {
    s.cur.rec_end_len = 2;
    s.clear_appts();
    s.appt_count = 0;
    s.appt_next = 0;
    s.clear_days();
    QDate d = date;
    for (int i = 0; i <= extra_months; ++i) {
        s.archive.clear_error();
        load_appt_month(s, yymm_of(d), cal_file);
        d = d.addMonths(1);
    }
}

void load_appt_month(Shared& s, const QString& yymm, const QString& cal_file) {
    QString path;
    extract_appt_member(s, cal_file, path, yymm);
    read_member<appt_rec>(s, path, &MemberReader::read_appt, [&s](const appt_rec& rec) {
        s.appt_to_cur(rec);
        s.add_appt_row();
    });
}

void load_rmdrs(Shared& s, const QDate& date, const QString& cal_file, int months_back) {
    s.cur.rec_end_len = 2;
    s.rmdr_count = 0;
    s.appt_next = 0;
    for (rmdr_rec& row : s.rmdr_tbl)
        row = rmdr_rec{};
    // At least the three months before this one, so that alarms left undelivered
    // at the last close are still found.
    if (months_back < 4) months_back = 3;
    QDate d = date.addMonths(-months_back);
    for (int i = 1; i <= months_back + 1; ++i) {
        load_rmdr_month(s, yymm_of(d), cal_file);
        d = d.addMonths(1);
    }
}

void load_rmdr_month(Shared& s, const QString& yymm, const QString& cal_file) {
    QString path;
    extract_rmdr_member(s, cal_file, path, yymm);
    read_member<rmdr_rec>(s, path, &MemberReader::read_rmdr, [&s](const rmdr_rec& rec) {
        s.rmdr_to_cur(rec);
        s.add_rmdr_row();
    });
}

void write_appts(Shared& s, const QString& cal_file, int io_mode, int row) {
    Archive::Command command(s.archive, cal_file);
    if (io_mode == rewrite_mode) {
        MonthWriter out(s, cal_file, MemberKind::appointments, rewrite_mode);
        for (int r = 1; r <= row; ++r)
            if (const appt_rec* rec = s.appt_row(r))
                out.line(appt_yymm(rec->appt_date), appt_line(*rec));
        return;
    }
    const appt_rec* rec = s.appt_row(row);
    if (!rec) return;
    MonthWriter out(s, cal_file, MemberKind::appointments, append_mode);
    out.line(appt_yymm(rec->appt_date), appt_line(*rec));
}

void write_occurs(Shared& s, const QString& cal_file) {
    Archive::Command command(s.archive, cal_file);
    MonthWriter out(s, cal_file, MemberKind::appointments, append_mode);
    for (int r = 1; r <= s.occur_count; ++r) {
        const appt_rec* rec = s.occur_row(r);
        if (!rec) {
            // A row past the table's limit cannot be read: the writing stops
            // there, and the month it had open is not stored.
            out.abandon();
            return;
        }
        out.line(appt_yymm(rec->appt_date), appt_line(*rec));
    }
}

void save_rmdrs(Shared& s, int io_mode, const QString& cal_file) {
    if (io_mode != rewrite_mode) {
        if (const rmdr_rec* last = s.rmdr_row(s.rmdr_count)) append_rmdr_line(s, cal_file, *last);
        return;
    }
    Archive::Command command(s.archive, cal_file);
    MonthWriter out(s, cal_file, MemberKind::reminders, rewrite_mode);
    for (int r = 1; r <= s.rmdr_count; ++r)
        if (const rmdr_rec* rec = s.rmdr_row(r))
            out.line(rmdr_yymm(rec->rmdr_date), rmdr_line(*rec));
}

void append_rmdr_line(Shared& s, const QString& cal_file, const rmdr_rec& r) {
    MonthWriter out(s, cal_file, MemberKind::reminders, append_mode);
    out.line(rmdr_yymm(r.rmdr_date), rmdr_line(r));
}

void append_rmdr_rows(Shared& s, const QString& cal_file, int first, int last) {
    Archive::Command command(s.archive, cal_file);
    MonthWriter out(s, cal_file, MemberKind::reminders, append_mode);
    for (int r = first; r <= last; ++r)
        if (const rmdr_rec* rec = s.rmdr_row(r))
            out.line(rmdr_yymm(rec->rmdr_date), rmdr_line(*rec));
}

int delete_by_key(Shared& s, const QString& cal_file, MemberKind kind, const QString& yymm,
                  const QString& key) {
    const bool appts = kind == MemberKind::appointments;
    QString path;
    const int extracted = appts ? extract_appt_member(s, cal_file, path, yymm)
                                : extract_rmdr_member(s, cal_file, path, yymm);
    // A member that could not be read must not be taken for an empty one:
    // the rewrite below would remove it with every line it holds.
    if (extracted != err::none) {
        QFile::remove(path);
        return 0;
    }

    QTemporaryFile temp(s.loose(QStringLiteral("orvaXXXXXX.tmp")));
    temp.open();

    const Fixed<12> id(key);
    int kept = 0;
    QFile f(path);
    if (f.open(QIODevice::ReadOnly)) {
        MemberReader in(f);
        QByteArray rec_end;
        while (!in.at_end()) {
            yield_events();
            QByteArray line;
            if (appts) {
                appt_rec rec;
                in.read_appt(rec, rec_end, s.cur.rec_end_len);
                if (rec.appt_id == id) continue;
                line = appt_line(rec);
            } else {
                rmdr_rec rec;
                in.read_rmdr(rec, rec_end, s.cur.rec_end_len);
                if (rec.rmdr_id == id) continue;
                line = rmdr_line(rec);
            }
            temp.write(line);
            temp.write(line_end, line_end_len);
            ++kept;
        }
        f.close();
    }
    temp.close();
    QFile::remove(path);

    if (kept == 0) {
        // A month's member disappears with its last line.
        s.archive.run(cal_file, path, Archive::remove);
    } else {
        QFile::copy(temp.fileName(), path);
        s.archive.run(cal_file, path, Archive::add);
        QFile::remove(path);
    }
    return kept;
}

void new_calendar(Shared& s, const CalendarHooks& h) {
    const QString chosen = modal().save_file_dialog(QStringLiteral("cal Files (*.cal)|*.cal"));
    if (chosen.isEmpty()) return;
    if (chosen.right(3).toLower() != QLatin1String("cal")) {
        modal().message(QStringLiteral("Only files with .CAL extension are allowed"),
                        MsgStyle::Information);
        return;
    }

    QDate shown = h.shown_month ? h.shown_month() : s.cur_date;
    if (!shown.isValid()) shown = today();
    const QString yymm = QStringLiteral("%1").arg((shown.year() % 100) * 100 + shown.month(), 4, 10,
                                                  QLatin1Char('0'));
    // The stub's loose copy stands in app_path like every other member, so it
    // can never stand on a file of the user's beside the calendar.
    const QString base = QFileInfo(chosen.left(chosen.size() - 4)).fileName();
    const QString stub = s.loose(base + yymm + QStringLiteral(".cal"));

    s.archive.clear_error();
    if (s.archive.run(chosen, stub, Archive::extract) == 0) {
        modal().message(QStringLiteral("Cannot create new Calendar  ' ") + chosen +
                            QStringLiteral("  '  already exists! "),
                        MsgStyle::Warning);
        QFile::remove(stub);
        return;
    }
    // The stub and the options member the rebuild saves land together.
    Archive::Command command(s.archive, chosen);
    {
        QFile f(stub);
        f.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    }
    s.archive.run(chosen, stub, Archive::add);
    QFile::remove(stub);

    if (h.enable_delete) h.enable_delete(true);
    s.cal_path = chosen;
    s.cur_date = today();
    call(h.reset_counters);
    s.clear_days();
    s.clear_appts();
    call(h.rebuild_view);
}

void open_calendar(Shared& s, const CalendarHooks& h) {
    const QString chosen = modal().open_file_dialog(QStringLiteral("cal Files (*.CAL)|*.cal"));
    if (chosen.isEmpty()) return;
    if (chosen == s.cal_path) {
        modal().message(QStringLiteral("Calendar  already open "), MsgStyle::Critical);
        return;
    }
    if (!QFileInfo(chosen).isFile()) {
        modal().message(chosen + u'\n' +
                            QStringLiteral(" doesn't exist.  Check specified path and name."),
                        MsgStyle::Plain);
        return;
    }

    s.cal_path = chosen;
    s.cur_date = today();
    // Options repaired or defaulted on open are written in one go.
    Archive::Command command(s.archive, chosen);
    call(h.load_options);
    call(h.reset_counters);
    s.clear_days();
    s.clear_appts();
    if (h.enable_delete) h.enable_delete(true);
    load_appts(s, s.cur_date, s.cal_path, 0);
    load_rmdrs(s, s.cur_date, s.cal_path, 0);
    call(h.rebuild_view);
}

void delete_calendar(Shared& s, const CalendarHooks& h) {
    if (s.cal_path.isEmpty()) {
        modal().message(QStringLiteral("You must Open a Calendar before you can delete"),
                        MsgStyle::Warning);
        return;
    }
    if (modal().ask_yes_no(QStringLiteral("This will delete the current Calendar - ") + s.cal_path +
                               QStringLiteral(".  OK?"),
                           MsgStyle::Question) != Answer::Yes)
        return;

    s.archive.close(s.cal_path);
    QFile::remove(s.cal_path);
    if (h.enable_delete) h.enable_delete(false);
    s.cur_date = today();
    s.clear_days();
    s.cal_path.clear();
    call(h.reset_counters);
    s.clear_appts();
    s.appt_count = 0;
    s.appt_next = 0;
    call(h.rebuild_view);
}

} // namespace orva
