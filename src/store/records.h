#pragma once

#include "core/field_text.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>
#include <array>
#include <cstring>
#include <vector>

namespace orva {

// A fixed-width text field: N bytes of UTF-8, padded with blanks on the
// right. Assigning cuts a longer value to N bytes between two characters
// (see cut_to_bytes); reading takes a field that is not UTF-8 as Latin-1. The
// bytes are the same in memory and on a member line.
template <int N> struct Fixed {
    char c[N];

    Fixed() { std::memset(c, ' ', N); }
    Fixed(const QString& s) { assign(s); } // NOLINT: fields read like text
    Fixed& operator=(const QString& s) {
        assign(s);
        return *this;
    }
    void assign(const QString& s) { put_field_text(c, N, s); }
    void blank() { std::memset(c, ' ', N); }
    QString str() const { return field_text(c, N); }
    operator QString() const { return str(); } // NOLINT
    QString trimmed() const { return str().trimmed(); }
    bool is_blank() const {
        for (char ch : c)
            if (ch != ' ') return false;
        return true;
    }
    static constexpr int width = N;
    bool operator==(const Fixed& o) const { return std::memcmp(c, o.c, N) == 0; }
};

// One occurrence of an appointment: 17 fields, 475 bytes, laid out
// exactly as on a member line.
struct appt_rec {
    Fixed<8> appt_first_date; // "mmddyyyy", first date of the series
    Fixed<8> appt_date;       // "mmddyyyy", this occurrence; names its month member
    Fixed<5> appt_start;      // "hh:mm", blank when untimed
    Fixed<5> appt_end;        // "hh:mm", blank with appt_start
    Fixed<12> appt_id;        // shared by every occurrence of a series
    Fixed<50> appt_text;
    Fixed<15> appt_type;  // sticker key; blank means none
    Fixed<2> appt_occurs; // number field
    Fixed<2> appt_occurs_month;
    Fixed<2> appt_occurs_every;
    Fixed<8> appt_until;    // "mm/dd/yy"
    Fixed<2> appt_rem_lead; // "0 " means no reminder
    Fixed<2> appt_rem_unit; // 0 minutes, 1 hours, 2 days; others count as minutes
    Fixed<2> appt_rem_anim;
    Fixed<150> appt_rem_text; // path of the alarm sound
    Fixed<200> appt_notes;
    Fixed<2> appt_pattern; // "1 " by period, "2 " by ordinal weekday
};
static_assert(sizeof(appt_rec) == 475, "a member line depends on this width");

// One pending or delivered alarm: 13 fields, 271 bytes.
struct rmdr_rec {
    Fixed<8> rmdr_first_date;
    Fixed<5> rmdr_start;
    Fixed<5> rmdr_end;
    Fixed<12> rmdr_id;
    Fixed<50> rmdr_text;
    Fixed<15> rmdr_type;
    Fixed<8> rmdr_appt_date; // "mmddyyyy"
    Fixed<8> rmdr_date;      // "mm/dd/yy", due date; names its month member
    Fixed<5> rmdr_time;      // "hh:nn", due time
    Fixed<1> rmdr_fired;     // "F" waiting, "T" delivered
    Fixed<2> rmdr_anim;
    Fixed<150> rmdr_alarm_text;
    Fixed<2> rmdr_again_count; // "1 " when made
};
static_assert(sizeof(rmdr_rec) == 271, "a member line depends on this width");

// Summary of one day of the month in view; memory only.
struct day_rec {
    Fixed<5> day_time;  // earliest "hh:mm", "00:00" untimed, "40404" no appointment
    Fixed<15> day_type; // appt_type of that appointment, "Alarm" when it has none
    Fixed<2> day_index; // its appt_tbl row, cut to two characters by design
};

// The transfer record between a member line and a table row. Number fields
// are signed 16-bit so a row's number field is the text turned into an
// integer and back ("07" comes back as "7 ").
struct cur_rec {
    QString cur_first_date, cur_appt_date, cur_start, cur_end, cur_id, cur_text, cur_type;
    qint16 cur_occurs = 0, cur_occurs_month = 0, cur_occurs_every = 0;
    QString cur_until;
    qint16 cur_rem_lead = 0, cur_rem_unit = 0, cur_rem_anim = 0;
    QString cur_rem_text, cur_notes, cur_pattern;
    // Members only reminder lines use.
    QString cur_rmdr_appt_date, cur_rmdr_time, cur_rmdr_fired;
    qint16 cur_again_count = 0;
    QString rec_end; // the two characters that end a line
    int rec_end_len = 2;
};

constexpr int appt_limit = 6000;
constexpr int occur_limit = 6000;
constexpr int rmdr_limit = 4500;
constexpr int day_limit = 31;
constexpr int appt_line_width = 475; // without the CR LF
constexpr int rmdr_line_width = 271;
constexpr QStringView day_none = u"40404";

// The record tables and the transfer record. Rows count from 1; row 0 is never
// used. A row past a table's limit is not stored, but the count still goes up,
// and reading such a row gives nothing: callers rely on that quiet overflow.
struct Tables {
    Tables();

    std::vector<appt_rec> appt_tbl;             // 1..appt_limit
    std::vector<appt_rec> occur_tbl;            // 1..occur_limit
    std::vector<rmdr_rec> rmdr_tbl;             // 1..rmdr_limit
    std::array<day_rec, day_limit + 1> day_tbl; // 1..31, day d of cur_date's month
    qint16 appt_count = 0, occur_count = 0, rmdr_count = 0;
    qint16 appt_next = 0; // running row during a load; moves with appt_count
    cur_rec cur;
    QDate cur_date; // the date the planners show; anchor of every load

    // Row r of a table, or nullptr when r is outside 1..limit.
    appt_rec* appt_row(int r);
    const appt_rec* appt_row(int r) const;
    appt_rec* occur_row(int r);
    rmdr_rec* rmdr_row(int r);
    const rmdr_rec* rmdr_row(int r) const;

    // Blanks every field of rows 1..appt_count; leaves the count alone.
    void clear_appts();
    // Every day_tbl row to "40404", blank type, blank index.
    void clear_days();
    // Raises appt_count and appt_next, copies cur into row appt_next (numbers
    // back to text), and notes the day when cur_appt_date lies in cur_date's
    // month.
    void add_appt_row();
    void note_day();
    // Raises rmdr_count and copies cur into that row.
    void add_rmdr_row();
    // Copies row r of appt_tbl into cur (the reverse of add_appt_row). Number
    // fields with no digits keep the value cur held from the line before.
    void appt_to_cur(const appt_rec& row);
    // The same for a reminder line: it shares the appointment's members where
    // it can, and rmdr_date travels in cur_appt_date.
    void rmdr_to_cur(const rmdr_rec& row);
};

// "mmddyyyy" to a date: month from characters 1-2, day 3-4, year 5-8. An
// impossible date gives an invalid QDate.
QDate text_to_date(const QString& mmddyyyy);
// "mm/dd/yy" to a date; the century is always 20.
QDate short_to_date(const QString& mm_dd_yy);
// Whether a line's own date can place it: digits wherever the date is read
// ("mmddyyyy" for appt_date, "mm/dd/yy" for rmdr_date, the separators never
// read) naming a real day. The load skips a line whose date fails this.
bool is_line_date(const QString& mmddyyyy);
bool is_short_line_date(const QString& mm_dd_yy);
// The yymm of the member that stores an appointment ("mmddyyyy": 7-8 then 1-2)
// or a reminder ("mm/dd/yy": 7-8 then 1-2).
QString appt_yymm(const QString& mmddyyyy);
QString rmdr_yymm(const QString& mm_dd_yy);
// Format(d, "yymm").
QString yymm_of(const QDate& d);

// The key of a new entry, 12 characters: day of the month "dd", the time
// "hhnnss", then month number and seconds without leading zeros, left-filled
// with zeros to four ("0412", "1259"). No more unique than its clock: two
// entries saved in the same second on the same day of any month share it.
QString appt_id_at(const QDateTime& now);
// appt_id_at the clock's now.
QString new_appt_id();

// "hh:mm" (or "h:mm") text of a time field to a time; the blanks that pad a
// field may stand around it. Invalid for blanks or any other character: every
// reader of a start, end or due time takes a field that is no time as none.
QTime hhmm_to_time(const QString& t);

// A field's text without the blanks that pad it on the right.
QString rtrim(const QString& field);

// A number field's text to a 16-bit integer. A field with no digits leaves
// `keep` unchanged (the value of the line before).
qint16 field_number(const QString& text, qint16 keep);
// A 16-bit integer back to a two-character field, left-justified and cut.
QString number_field(qint16 v);

} // namespace orva
