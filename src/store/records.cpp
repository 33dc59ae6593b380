#include "store/records.h"

#include "core/clock.h"

#include <QTime>
#include <limits>
#include <optional>

namespace orva {
namespace {

// Minutes since midnight of an "hh:mm" or "h:mm" text; nothing when it is not
// a time. Days are ranked by time value, so "9:00" must beat "10:00".
std::optional<int> minutes_of(const QString& hhmm) {
    const QTime time = hhmm_to_time(hhmm);
    if (!time.isValid()) return std::nullopt;
    return time.hour() * 60 + time.minute();
}

// Counts are signed 16-bit. A raise past the top fails and leaves the count
// where it stood, as an overflowing assignment always did; wrapping round to
// a negative count would put later rows nowhere and every loop over the table
// would run backwards.
void count_up(qint16& n) {
    if (n < std::numeric_limits<qint16>::max()) ++n;
}

int two_digits(const QString& s, int from, bool* ok) {
    return s.mid(from, 2).trimmed().toInt(ok);
}

} // namespace

Tables::Tables() : appt_tbl(appt_limit + 1), occur_tbl(occur_limit + 1), rmdr_tbl(rmdr_limit + 1) {
    clear_days();
}

appt_rec* Tables::appt_row(int r) {
    return r >= 1 && r <= appt_limit ? &appt_tbl[r] : nullptr;
}
const appt_rec* Tables::appt_row(int r) const {
    return r >= 1 && r <= appt_limit ? &appt_tbl[r] : nullptr;
}
appt_rec* Tables::occur_row(int r) {
    return r >= 1 && r <= occur_limit ? &occur_tbl[r] : nullptr;
}
rmdr_rec* Tables::rmdr_row(int r) {
    return r >= 1 && r <= rmdr_limit ? &rmdr_tbl[r] : nullptr;
}
const rmdr_rec* Tables::rmdr_row(int r) const {
    return r >= 1 && r <= rmdr_limit ? &rmdr_tbl[r] : nullptr;
}

void Tables::clear_appts() {
    // Rows above the count keep their old text on purpose: nothing reads them.
    for (int r = 1; r <= appt_count; ++r)
        if (appt_rec* row = appt_row(r)) *row = appt_rec{};
}

void Tables::clear_days() {
    for (int d = 1; d <= day_limit; ++d) {
        day_tbl[d].day_time = day_none.toString();
        day_tbl[d].day_type.blank();
        day_tbl[d].day_index.blank();
    }
}

void Tables::add_appt_row() {
    count_up(appt_count);
    count_up(appt_next);
    // Past the limit the row is lost but the count has gone up: the quiet
    // overflow callers expect.
    if (appt_rec* row = appt_row(appt_next)) {
        row->appt_first_date = cur.cur_first_date;
        row->appt_date = cur.cur_appt_date;
        row->appt_start = cur.cur_start;
        row->appt_end = cur.cur_end;
        row->appt_id = cur.cur_id;
        row->appt_text = cur.cur_text;
        row->appt_type = cur.cur_type;
        row->appt_occurs = number_field(cur.cur_occurs);
        row->appt_occurs_month = number_field(cur.cur_occurs_month);
        row->appt_occurs_every = number_field(cur.cur_occurs_every);
        row->appt_until = cur.cur_until;
        row->appt_rem_lead = number_field(cur.cur_rem_lead);
        row->appt_rem_unit = number_field(cur.cur_rem_unit);
        row->appt_rem_anim = number_field(cur.cur_rem_anim);
        row->appt_rem_text = cur.cur_rem_text;
        row->appt_notes = cur.cur_notes;
        row->appt_pattern = cur.cur_pattern;
    }
    if (appt_yymm(cur.cur_appt_date) == yymm_of(cur_date)) note_day();
}

void Tables::note_day() {
    bool ok = false;
    const int d = two_digits(cur.cur_appt_date, 2, &ok);
    if (!ok || d < 1 || d > day_limit) return;
    day_rec& day = day_tbl[d];

    // A start that is no time, blank or not, ranks as an untimed entry: the
    // planner shows it in the untimed row too.
    const auto start = minutes_of(cur.cur_start);
    const QString t = start ? QTime(*start / 60, *start % 60).toString(QStringLiteral("hh:mm"))
                            : QStringLiteral("00:00");
    const QString type = cur.cur_type.trimmed().isEmpty() ? QStringLiteral("Alarm") : cur.cur_type;
    // The index keeps two characters, so row 123 reads as 12: callers rely on it.
    const QString index = QString::number(appt_count);

    if (day.day_time.str() == day_none) {
        day.day_type = type;
        day.day_time = t;
        day.day_index = index;
        return;
    }
    const auto now_min = minutes_of(t);
    const auto day_min = minutes_of(day.day_time.str());
    // Strictly earlier: on a tie the first loaded keeps the day.
    if (now_min && day_min && *now_min < *day_min) {
        day.day_time = t;
        day.day_index = index;
        day.day_type = type;
    }
}

void Tables::add_rmdr_row() {
    count_up(rmdr_count);
    rmdr_rec* row = rmdr_row(rmdr_count);
    if (!row) return;
    row->rmdr_first_date = cur.cur_first_date;
    row->rmdr_start = cur.cur_start;
    row->rmdr_end = cur.cur_end;
    row->rmdr_id = cur.cur_id;
    row->rmdr_text = cur.cur_text;
    row->rmdr_type = cur.cur_type;
    row->rmdr_appt_date = cur.cur_rmdr_appt_date;
    row->rmdr_date = cur.cur_appt_date;
    row->rmdr_time = cur.cur_rmdr_time;
    row->rmdr_fired = cur.cur_rmdr_fired;
    row->rmdr_anim = number_field(cur.cur_rem_anim);
    row->rmdr_alarm_text = cur.cur_rem_text;
    row->rmdr_again_count = number_field(cur.cur_again_count);
}

void Tables::appt_to_cur(const appt_rec& row) {
    cur.cur_first_date = row.appt_first_date;
    cur.cur_appt_date = row.appt_date;
    cur.cur_start = row.appt_start;
    cur.cur_end = row.appt_end;
    cur.cur_id = row.appt_id;
    cur.cur_text = row.appt_text;
    cur.cur_type = row.appt_type;
    cur.cur_occurs = field_number(row.appt_occurs, cur.cur_occurs);
    cur.cur_occurs_month = field_number(row.appt_occurs_month, cur.cur_occurs_month);
    cur.cur_occurs_every = field_number(row.appt_occurs_every, cur.cur_occurs_every);
    cur.cur_until = row.appt_until;
    cur.cur_rem_lead = field_number(row.appt_rem_lead, cur.cur_rem_lead);
    cur.cur_rem_unit = field_number(row.appt_rem_unit, cur.cur_rem_unit);
    cur.cur_rem_anim = field_number(row.appt_rem_anim, cur.cur_rem_anim);
    cur.cur_rem_text = row.appt_rem_text;
    cur.cur_notes = row.appt_notes;
    cur.cur_pattern = row.appt_pattern;
}

void Tables::rmdr_to_cur(const rmdr_rec& row) {
    cur.cur_first_date = row.rmdr_first_date;
    cur.cur_start = row.rmdr_start;
    cur.cur_end = row.rmdr_end;
    cur.cur_id = row.rmdr_id;
    cur.cur_text = row.rmdr_text;
    cur.cur_type = row.rmdr_type;
    cur.cur_rmdr_appt_date = row.rmdr_appt_date;
    cur.cur_appt_date = row.rmdr_date;
    cur.cur_rmdr_time = row.rmdr_time;
    cur.cur_rmdr_fired = row.rmdr_fired;
    cur.cur_rem_anim = field_number(row.rmdr_anim, cur.cur_rem_anim);
    cur.cur_rem_text = row.rmdr_alarm_text;
    cur.cur_again_count = field_number(row.rmdr_again_count, cur.cur_again_count);
}

QDate text_to_date(const QString& mmddyyyy) {
    bool okm = false, okd = false, oky = false;
    const int m = two_digits(mmddyyyy, 0, &okm);
    const int d = two_digits(mmddyyyy, 2, &okd);
    const int y = mmddyyyy.mid(4, 4).trimmed().toInt(&oky);
    if (!okm || !okd || !oky) return {};
    return QDate(y, m, d);
}

QDate short_to_date(const QString& mm_dd_yy) {
    return text_to_date(mm_dd_yy.mid(0, 2) + mm_dd_yy.mid(3, 2) + QStringLiteral("20") +
                        mm_dd_yy.mid(6, 2));
}

bool is_line_date(const QString& mmddyyyy) {
    if (mmddyyyy.size() != 8) return false;
    for (QChar c : mmddyyyy)
        if (c < u'0' || c > u'9') return false;
    return text_to_date(mmddyyyy).isValid();
}

bool is_short_line_date(const QString& mm_dd_yy) {
    if (mm_dd_yy.size() != 8) return false;
    for (int i : {0, 1, 3, 4, 6, 7})
        if (mm_dd_yy[i] < u'0' || mm_dd_yy[i] > u'9') return false;
    return short_to_date(mm_dd_yy).isValid();
}

QString appt_yymm(const QString& mmddyyyy) {
    return mmddyyyy.mid(6, 2) + mmddyyyy.mid(0, 2);
}
QString rmdr_yymm(const QString& mm_dd_yy) {
    return mm_dd_yy.mid(6, 2) + mm_dd_yy.mid(0, 2);
}
QString yymm_of(const QDate& d) {
    return d.toString(QStringLiteral("yyMM"));
}

qint16 field_number(const QString& text, qint16 keep) {
    bool ok = false;
    const qint16 v = text.trimmed().toShort(&ok);
    // A failed conversion is passed over by the load, so the member keeps the
    // previous line's value.
    return ok ? v : keep;
}

QString number_field(qint16 v) {
    return QString::number(v).leftJustified(2, u' ', true);
}

QTime hhmm_to_time(const QString& t) {
    // Only the blanks that pad a field are passed over: a tab, a line end or
    // a sign among the digits makes the text no time at all, where a lenient
    // number reader would have found one in it.
    qsizetype from = 0, to = t.size();
    while (from < to && t[from] == u' ')
        ++from;
    while (to > from && t[to - 1] == u' ')
        --to;
    const QStringView x = QStringView(t).sliced(from, to - from);
    const qsizetype colon = x.indexOf(u':');
    auto number = [](QStringView digits, int& out) {
        if (digits.isEmpty() || digits.size() > 2) return false;
        out = 0;
        for (QChar c : digits) {
            if (c < u'0' || c > u'9') return false;
            out = out * 10 + (c.unicode() - u'0');
        }
        return true;
    };
    int h = 0, m = 0;
    if (colon < 1 || !number(x.first(colon), h) || !number(x.sliced(colon + 1), m)) return QTime();
    return QTime(h, m);
}

QString rtrim(const QString& field) {
    qsizetype n = field.size();
    while (n > 0 && field.at(n - 1) == QLatin1Char(' '))
        --n;
    return field.left(n);
}

QString appt_id_at(const QDateTime& now) {
    const QString ms = QString::number(now.date().month()) + QString::number(now.time().second());
    return now.toString(QStringLiteral("dd")) + now.toString(QStringLiteral("HHmmss")) +
           ms.rightJustified(4, QLatin1Char('0'));
}

QString new_appt_id() {
    return appt_id_at(clock().now());
}

} // namespace orva
