#include "store/calendar_file.h"

#include "core/clock.h"
#include "core/logging.h"
#include "store/member_format.h"

#include <QFile>
#include <QFileInfo>
#include <map>

namespace orva {

namespace {

QString member_of(MemberKind kind, const QString& yymm) {
    return kind == MemberKind::appointments ? appt_member_name(yymm) : rmdr_member_name(yymm);
}

// Collects lines one month member at a time, as the write routines walk their
// tables: a change of month stores the member just built before the next one
// is read. Rows of one month must stand together, or the rewrite mode loses
// the earlier ones.
class MonthWriter {
  public:
    MonthWriter(Shared& s, const QString& cal_file, MemberKind kind, int io_mode)
        : s_(s), cal_(cal_file), kind_(kind), io_mode_(io_mode) {}
    ~MonthWriter() {
        // Every caller finishes; this only keeps an early return from
        // dropping a month without a word.
        if (open_)
            if (const int e = finish()) qCWarning(lcStore) << "month left unstored, error" << e;
    }
    MonthWriter(const MonthWriter&) = delete;
    MonthWriter& operator=(const MonthWriter&) = delete;

    [[nodiscard]] int line(const QString& yymm, const QByteArray& bytes) {
        if (!open_ || yymm != yymm_) {
            if (const int e = finish()) return e;
            if (const int e = start(yymm)) return e;
        }
        member_ += bytes;
        member_.append(line_end, line_end_len);
        return 0;
    }

    [[nodiscard]] int finish() {
        if (!open_) return 0;
        open_ = false;
        return s_.archive.put(cal_, member_of(kind_, yymm_), member_);
    }

    // Drops the open month without storing it: its member keeps what it held.
    void abandon() { open_ = false; }

  private:
    [[nodiscard]] int start(const QString& yymm) {
        s_.report_progress();
        yymm_ = yymm;
        member_.clear();
        if (io_mode_ != rewrite_mode) {
            const int e = s_.archive.get(cal_, member_of(kind_, yymm), member_);
            // A member that could not be read must not be replaced by the new
            // lines alone: the month's other entries would be gone.
            if (e != err::none && e != err::not_found) return e;
        }
        open_ = true;
        return 0;
    }

    Shared& s_;
    QString cal_;
    MemberKind kind_;
    int io_mode_;
    QString yymm_;
    QByteArray member_;
    bool open_ = false;
};

// Reads a member record by record and hands each usable one on. Any byte may
// stand in a field; what the fields mean is the table's business. Only a line
// that cannot be placed is passed over: one cut short by the member's end, or
// one whose own date (`date_of`) names no day. The rest of the month loads.
template <class Rec, class DateOk, class Take>
void read_member(Shared& s, const QString& cal_file, const QByteArray& member, const QString& name,
                 bool (MemberReader::*read)(Rec&, QByteArray&, int), DateOk date_ok, Take take) {
    MemberReader in(member);
    Rec rec;
    QByteArray rec_end;
    int line = 0;
    while (!in.at_end()) {
        ++line;
        const bool whole = (in.*read)(rec, rec_end, s.cur.rec_end_len);
        s.cur.rec_end = QString::fromLatin1(rec_end);
        if (!whole) {
            qCWarning(lcStore) << name << "line" << line << "is cut short; skipped";
            // The user hears of it once, as of a member found damaged.
            s.archive.report_damaged(cal_file, name);
            continue;
        }
        if (!date_ok(rec)) {
            qCWarning(lcStore) << name << "line" << line << "has no usable date; skipped";
            s.archive.report_damaged(cal_file, name);
            continue;
        }
        take(rec);
    }
}

// 53 is the ordinary sign of a month without a member; anything else is worth
// a line in the log, since the month then shows less than the file holds.
int load_result(int e, const QString& what) {
    if (e == err::not_found) return err::none;
    if (e != err::none) qCWarning(lcStore) << "could not read" << what << "error" << e;
    return e;
}

} // namespace

QString appt_member_name(const QString& yymm) {
    return QStringLiteral("c") + yymm + QStringLiteral(".cal");
}
QString rmdr_member_name(const QString& yymm) {
    return QStringLiteral("r") + yymm + QStringLiteral(".rmd");
}

int extract_appt_member(Shared& s, const QString& cal_file, QByteArray& member,
                        const QString& yymm) {
    s.archive.clear_error();
    return s.archive.get(cal_file, appt_member_name(yymm), member);
}

int extract_rmdr_member(Shared& s, const QString& cal_file, QByteArray& member,
                        const QString& yymm) {
    s.archive.clear_error();
    return s.archive.get(cal_file, rmdr_member_name(yymm), member);
}

int load_appts(Shared& s, const QDate& date, const QString& cal_file, int extra_months) {
    s.cur.rec_end_len = 2;
    s.clear_appts();
    s.appt_count = 0;
    s.appt_next = 0;
    s.clear_days();
    QDate d = date;
    int first_error = err::none;
    for (int i = 0; i <= extra_months; ++i) {
        s.archive.clear_error();
        const int e = load_appt_month(s, yymm_of(d), cal_file);
        if (first_error == err::none) first_error = e;
        d = d.addMonths(1);
    }
    return first_error;
}

int load_appt_month(Shared& s, const QString& yymm, const QString& cal_file) {
    s.report_progress();
    QByteArray member;
    const int e = extract_appt_member(s, cal_file, member, yymm);
    if (e != err::none) return load_result(e, appt_member_name(yymm));
    read_member<appt_rec>(
        s, cal_file, member, appt_member_name(yymm), &MemberReader::read_appt,
        [](const appt_rec& rec) { return is_line_date(rec.appt_date); },
        [&s](const appt_rec& rec) {
            s.appt_to_cur(rec);
            s.add_appt_row();
        });
    return err::none;
}

int load_rmdrs(Shared& s, const QDate& date, const QString& cal_file, int months_back) {
    s.cur.rec_end_len = 2;
    s.rmdr_count = 0;
    s.appt_next = 0;
    for (rmdr_rec& row : s.rmdr_tbl)
        row = rmdr_rec{};
    // At least the three months before this one, so that alarms left undelivered
    // at the last close are still found.
    if (months_back < 4) months_back = 3;
    QDate d = date.addMonths(-months_back);
    int first_error = err::none;
    s.rmdr_months.clear();
    for (int i = 1; i <= months_back + 1; ++i) {
        const int e = load_rmdr_month(s, yymm_of(d), cal_file);
        // A month cut off by the table's limit is not the table's to rewrite.
        if (s.rmdr_count <= rmdr_limit) s.rmdr_months << yymm_of(d);
        if (first_error == err::none) first_error = e;
        d = d.addMonths(1);
    }
    return first_error;
}

int load_rmdr_month(Shared& s, const QString& yymm, const QString& cal_file) {
    s.report_progress();
    QByteArray member;
    const int e = extract_rmdr_member(s, cal_file, member, yymm);
    if (e != err::none) return load_result(e, rmdr_member_name(yymm));
    read_member<rmdr_rec>(
        s, cal_file, member, rmdr_member_name(yymm), &MemberReader::read_rmdr,
        [](const rmdr_rec& rec) { return is_short_line_date(rec.rmdr_date); },
        [&s](const rmdr_rec& rec) {
            s.rmdr_to_cur(rec);
            s.add_rmdr_row();
        });
    return err::none;
}

int write_appts(Shared& s, const QString& cal_file, int io_mode, int row) {
    Archive::Command command(s.archive, cal_file);
    if (io_mode == rewrite_mode) {
        MonthWriter out(s, cal_file, MemberKind::appointments, rewrite_mode);
        for (int r = 1; r <= row; ++r)
            if (const appt_rec* rec = s.appt_row(r))
                if (const int e = out.line(appt_yymm(rec->appt_date), appt_line(*rec))) return e;
        if (const int e = out.finish()) return e;
        return command.finish();
    }
    const appt_rec* rec = s.appt_row(row);
    if (!rec) return command.finish();
    MonthWriter out(s, cal_file, MemberKind::appointments, append_mode);
    if (const int e = out.line(appt_yymm(rec->appt_date), appt_line(*rec))) return e;
    if (const int e = out.finish()) return e;
    return command.finish();
}

int write_occurs(Shared& s, const QString& cal_file) {
    Archive::Command command(s.archive, cal_file);
    MonthWriter out(s, cal_file, MemberKind::appointments, append_mode);
    for (int r = 1; r <= s.occur_count; ++r) {
        const appt_rec* rec = s.occur_row(r);
        if (!rec) {
            // A row past the table's limit cannot be read: the writing stops
            // there, and the month it had open is not stored.
            out.abandon();
            return command.finish();
        }
        if (const int e = out.line(appt_yymm(rec->appt_date), appt_line(*rec))) return e;
    }
    if (const int e = out.finish()) return e;
    return command.finish();
}

namespace {

// What names one reminder among the lines of its month: the entry's key, the
// date of the occurrence and its start. A delivered or re-armed row keeps it.
QByteArray rmdr_key(const rmdr_rec& r) {
    return QByteArray(r.rmdr_id.c, sizeof r.rmdr_id.c) +
           QByteArray(r.rmdr_appt_date.c, sizeof r.rmdr_appt_date.c) +
           QByteArray(r.rmdr_start.c, sizeof r.rmdr_start.c);
}

// A month the table does not hold whole keeps every line it has; a row of the
// table takes the place of the line it names, or joins the month.
QByteArray merge_rmdr_month(const QByteArray& on_file, const std::vector<const rmdr_rec*>& rows) {
    std::map<QByteArray, const rmdr_rec*> by_key;
    for (const rmdr_rec* r : rows)
        by_key.try_emplace(rmdr_key(*r), r);
    QByteArray out;
    MemberReader in(on_file);
    rmdr_rec rec;
    QByteArray rec_end;
    while (!in.at_end()) {
        if (!in.read_rmdr(rec, rec_end, line_end_len)) break;
        const auto it = by_key.find(rmdr_key(rec));
        if (it != by_key.end() && it->second) {
            out += rmdr_line(*it->second);
            it->second = nullptr; // written; a second line of that name stays as it was
        } else {
            out += rmdr_line(rec);
        }
        out.append(line_end, line_end_len);
    }
    for (const rmdr_rec* r : rows) {
        const auto it = by_key.find(rmdr_key(*r));
        if (it == by_key.end() || it->second != r) continue;
        out += rmdr_line(*r);
        out.append(line_end, line_end_len);
        it->second = nullptr;
    }
    return out;
}

} // namespace

int save_rmdrs(Shared& s, int io_mode, const QString& cal_file) {
    if (io_mode != rewrite_mode) {
        if (const rmdr_rec* last = s.rmdr_row(s.rmdr_count))
            return append_rmdr_line(s, cal_file, *last);
        return err::none;
    }
    // Each month is written once from all of its rows, wherever they stand in
    // the table: a row that remind-again moved into another month stands
    // among its old neighbours, and a walk that stored a month each time it
    // came back to it would keep only the month's last run of rows.
    QStringList months;
    std::map<QString, std::vector<const rmdr_rec*>> rows;
    for (int r = 1; r <= s.rmdr_count; ++r) {
        const rmdr_rec* rec = s.rmdr_row(r);
        if (!rec) continue;
        const QString yymm = rmdr_yymm(rec->rmdr_date);
        auto [it, first] = rows.try_emplace(yymm);
        if (first) months << yymm;
        it->second.push_back(rec);
    }
    Archive::Command command(s.archive, cal_file);
    for (const QString& yymm : months) {
        s.report_progress();
        const QString name = rmdr_member_name(yymm);
        QByteArray member;
        if (s.rmdr_months.contains(yymm)) {
            // The table holds every line of this month: it is the month.
            for (const rmdr_rec* r : rows[yymm]) {
                member += rmdr_line(*r);
                member.append(line_end, line_end_len);
            }
        } else {
            QByteArray on_file;
            const int e = s.archive.get(cal_file, name, on_file);
            if (e != err::none && e != err::not_found) return e;
            member = merge_rmdr_month(on_file, rows[yymm]);
        }
        if (const int e = s.archive.put(cal_file, name, member)) return e;
    }
    return command.finish();
}

int append_rmdr_line(Shared& s, const QString& cal_file, const rmdr_rec& r) {
    Archive::Command command(s.archive, cal_file);
    MonthWriter out(s, cal_file, MemberKind::reminders, append_mode);
    if (const int e = out.line(rmdr_yymm(r.rmdr_date), rmdr_line(r))) return e;
    if (const int e = out.finish()) return e;
    return command.finish();
}

int append_rmdr_rows(Shared& s, const QString& cal_file, int first, int last) {
    Archive::Command command(s.archive, cal_file);
    MonthWriter out(s, cal_file, MemberKind::reminders, append_mode);
    for (int r = first; r <= last; ++r)
        if (const rmdr_rec* rec = s.rmdr_row(r))
            if (const int e = out.line(rmdr_yymm(rec->rmdr_date), rmdr_line(*rec))) return e;
    if (const int e = out.finish()) return e;
    return command.finish();
}

int delete_by_key(Shared& s, const QString& cal_file, MemberKind kind, const QString& yymm,
                  const QString& key, int* kept_out) {
    if (kept_out) *kept_out = 0;
    const bool appts = kind == MemberKind::appointments;
    const QString name = member_of(kind, yymm);
    s.report_progress();
    QByteArray member;
    s.archive.clear_error();
    const int got = s.archive.get(cal_file, name, member);
    // A missing month has nothing to delete. One that could not be read must
    // not be taken for an empty one: the rewrite would remove every line it
    // holds.
    if (got == err::not_found) return err::none;
    if (got != err::none) return got;

    MemberReader in(member);
    const Fixed<12> id(key);
    QByteArray out;
    out.reserve(member.size());
    int kept = 0, lines = 0;
    QByteArray rec_end;
    while (!in.at_end()) {
        ++lines;
        if (appts) {
            appt_rec rec;
            in.read_appt(rec, rec_end, s.cur.rec_end_len);
            if (rec.appt_id == id) continue;
            out.append(reinterpret_cast<const char*>(&rec), appt_line_width);
        } else {
            rmdr_rec rec;
            in.read_rmdr(rec, rec_end, s.cur.rec_end_len);
            if (rec.rmdr_id == id) continue;
            out.append(reinterpret_cast<const char*>(&rec), rmdr_line_width);
        }
        out.append(line_end, line_end_len);
        ++kept;
    }
    if (kept_out) *kept_out = kept;
    if (kept == lines && kept > 0) return err::none; // no line of the key: nothing changes
    // A month's member disappears with its last line.
    return kept == 0 ? s.archive.drop(cal_file, name) : s.archive.put(cal_file, name, out);
}

} // namespace orva
