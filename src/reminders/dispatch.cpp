#include "reminders/dispatch.h"

#include "appointments/appt_editor.h"
#include "appointments/stickers.h"
#include "core/clock.h"
#include "core/event_loop.h"
#include "core/logging.h"
#include "core/modal.h"
#include "core/notifier.h"
#include "reminders/messenger.h"
#include "store/calendar_file.h"
#include "views/day_view.h"
#include "views/refresh.h"

#include <algorithm>

namespace orva {
namespace {

constexpr int col_line = 0, col_text = 1, col_sort = 2, col_sort2 = 3;

// A delivery's sound: "mp3" the MP3 route, "wav" the WAV route, any other
// ending (an empty path among them) nothing.
void start_delivery_sound(const QString& path) {
    const QString ending = sound_ending(path);
    if (ending == u"mp3")
        play_mp3(rtrim(path));
    else if (ending == u"wav")
        play_wav(rtrim(path));
}

} // namespace

QString sound_ending(const QString& path) {
    return rtrim(path).right(3).toLower();
}

int hhnn_number(const QTime& t) {
    return t.hour() * 100 + t.minute();
}

namespace {

// Two digits at `at` of a field, or -1.
int two_digits(const char* c, int at) {
    const auto digit = [](char ch) { return ch >= '0' && ch <= '9' ? ch - '0' : -1; };
    const int hi = digit(c[at]), lo = digit(c[at + 1]);
    return hi < 0 || lo < 0 ? -1 : hi * 10 + lo;
}

// A date as its "yy/mm/dd" text would sort: the two-digit year first.
int yymmdd_key(int yy, int mm, int dd) {
    return yy * 10000 + mm * 100 + dd;
}

// Dated before today as "yy/mm/dd" text: due whatever its time; dated today:
// due from its minute on. A due time that is no time counts as midnight, so
// that the row is not left behind for good.
bool due_at_key(const rmdr_rec& r, int due_key, int today_key, int now_hhnn) {
    if (due_key < today_key) return true;
    if (due_key != today_key) return false;
    const char* t = r.rmdr_time.c;
    int hh = two_digits(t, 0), nn = two_digits(t, 3);
    if (hh < 0 || nn < 0 || t[2] != ':' || hh > 23 || nn > 59) {
        const QTime at = hhmm_to_time(r.rmdr_time);
        hh = at.isValid() ? at.hour() : 0;
        nn = at.isValid() ? at.minute() : 0;
    }
    return hh * 100 + nn <= now_hhnn;
}

// The scan runs over the whole table every six seconds: the fields are read
// where they stand, which gives what the text comparison gives.
bool due_at(const rmdr_rec& r, int today_key, int now_hhnn) {
    const char* d = r.rmdr_date.c;
    const int mm = two_digits(d, 0), dd = two_digits(d, 3), yy = two_digits(d, 6);
    if (mm < 0 || dd < 0 || yy < 0 || !QDate::isValid(2000 + yy, mm, dd)) {
        // Not the plain form: the general reader decides, as the load did.
        const QDate due = short_to_date(r.rmdr_date);
        if (!due.isValid()) return false;
        return due_at_key(r, yymmdd_key(due.year() % 100, due.month(), due.day()), today_key,
                          now_hhnn);
    }
    return due_at_key(r, yymmdd_key(yy, mm, dd), today_key, now_hhnn);
}

} // namespace

bool rmdr_due(const rmdr_rec& r, const QDateTime& now) {
    const QDate today = now.date();
    return due_at(r, yymmdd_key(today.year() % 100, today.month(), today.day()),
                  hhnn_number(now.time()));
}

bool scan_rmdrs(Shared& store, ReminderState& rem) {
    rem.preview_anim = rem.preview_sound = false;
    const QDateTime now = clock().now();
    const QDate today = now.date();
    const int today_key = yymmdd_key(today.year() % 100, today.month(), today.day());
    const int now_hhnn = hhnn_number(now.time());
    bool delivered = false;
    for (int i = 1; i <= store.rmdr_count; ++i) {
        const rmdr_rec* r = store.rmdr_row(i);
        // A delivered row is passed over whether due or not: asked first, it
        // spares the date of most of the table.
        if (!r || r->rmdr_fired.c[0] != 'F') continue;
        if (!due_at(*r, today_key, now_hhnn)) continue;
        add_to_note(store, rem, i);
        delivered = true;
    }
    yield_events();
    return delivered;
}

QString note_time_text(const QTime& t) {
    return format_hh_mm_ampm(t).toUpper();
}

QString note_line(const rmdr_rec& r) {
    const QTime start = hhmm_to_time(r.rmdr_start);
    // An untimed entry's start is blank: its reminder counts from midnight.
    return short_date_text(text_to_date(r.rmdr_appt_date)) + QStringLiteral("   ") +
           note_time_text(start.isValid() ? start : QTime(0, 0));
}

void add_to_note(Shared& store, ReminderState& rem, int i) {
    rmdr_rec* r = store.rmdr_row(i);
    if (!r) return;
    Grid& g = rem.note.gRmdr;
    const QString line = note_line(*r);
    r->rmdr_fired = QStringLiteral("T");
    rem.note.rows.push_back(i);
    g.AddItem(line + QLatin1Char('\t') + rtrim(r->rmdr_text) + QLatin1Char('\t') + line);
    g.setFormatString(note_format);
    const int row = g.Rows() - 1;
    const QString type = rtrim(r->rmdr_type);
    if (!type.isEmpty() && !picture_emoji(type).isEmpty()) {
        g.setCell(CellSetting::Picture, row, col_line, type);
        g.setCell(CellSetting::PictureAlignment, row, col_line, int(Align::LeftCenter));
    }
    if (g.Row() == 0) {
        rem.msg_sound = r->rmdr_alarm_text.str();
        rem.msg_anim = QString::number(field_number(r->rmdr_anim, 0));
        rem.note_row = i;
        // The cursor on the first reminder: later rows of this note leave the
        // delivery's messenger, sound and row alone.
        g.setRow(row);
    }
    size_note_cols(rem.note);
}

QString notification_body(const Shared& store, const std::vector<int>& rows) {
    QStringList lines;
    for (int i : rows)
        if (const rmdr_rec* r = store.rmdr_row(i))
            lines << note_line(*r) + QStringLiteral("  ") + rtrim(r->rmdr_text);
    return lines.join(QLatin1Char('\n'));
}

void deliver_rmdrs(AppState& s) {
    s.delivering = true;
    s.preview_anim = s.preview_sound = false;
    modal().open_form(QStringLiteral("frmAnimate"));
    start_delivery_sound(s.msg_sound);
    RemNote& note = s.note;
    note.caption = long_date_text(clock().today());
    const bool one = note.gRmdr.Rows() < 3;
    note.Check1_visible = one;
    note.Check1_enabled = one;

    notifier().post(note.caption, notification_body(s, note.rows));

    modal().open_form(QStringLiteral("frmRemnote"));
    // The seam may return with the note still filled (no window to close it):
    // the next delivery starts from an empty one all the same.
    note = RemNote{};

    const int saved = save_rmdrs(s, rewrite_mode, s.cal_path);
    s.delivering = false;
    if (saved != err::none) {
        // The rows stay "F" on file and come again at the next tick; the user
        // hears of it rather than meeting them again unexplained.
        qCWarning(lcStore) << "delivered reminders not written, error" << saved;
        report_failed_update(s);
        return;
    }
    (void)load_rmdrs(s, s.cur_date, s.cal_path, 0);
}

void frmRemnote_Load(ReminderState& rem) {
    RemNote& note = rem.note;
    Grid& g = note.gRmdr;
    if (rem.preview_sound || rem.preview_anim) {
        note.caption = note_preview_title;
        g = Grid(2, 4);
        g.setFormatString(note_format);
        g.setTextMatrix(1, col_text, rem.preview_sound ? sound_preview_text : messenger_preview_text);
        note.Check1_enabled = false;
        note.Check1_visible = true;
    }
    g.setFixedRows(1);
    g.setColHidden(col_sort, true);
    g.setColHidden(col_sort2, true);
    if (g.Rows() > 2) g.Sort(SortOrder::GenericAscending, col_sort, col_sort2);
    g.setCol(col_line);
    size_note(rem);
}

void size_note_cols(RemNote& note) {
    Grid& g = note.gRmdr;
    if (g.Width() <= 0) return;
    const int first = int(g.Width() * 0.35);
    g.setColWidth(col_line, first);
    g.setColWidth(col_text, g.Width() - first);
    g.setColHidden(col_sort, true);
    g.setColHidden(col_sort2, true);
}

void size_note(ReminderState& rem) {
    size_note_cols(rem.note);
    Grid& g = rem.note.gRmdr;
    if (!(rem.preview_sound || rem.preview_anim) || g.Rows() != 2 || g.Height() <= 0) return;
    // The sentence row takes what the heading leaves of the grid.
    const int heading = g.RowHeight(0) > 0 ? g.RowHeight(0) : Grid::default_row_height;
    g.setRowHeight(1, std::max(Grid::default_row_height, g.Height() - heading));
}

void Check1_Click(ReminderState& rem) {
    if (rem.note.Check1 == 1) modal().open_form(QStringLiteral("frmReRmdr"));
}

void frmRemnote_OK(ReminderState& rem) {
    rem.note = RemNote{};
    close_all_sound();
}

void frmReRmdr_Load(ReRmdrForm& f) {
    f.comboReRmdr.clear();
    for (int m = 1; m <= 59; ++m)
        f.comboReRmdr << QString::number(m);
    f.list_index = 0;
}

void frmReRmdr_OK(Shared& store, ReminderState& rem, const ReRmdrForm& f) {
    rmdr_rec* r = store.rmdr_row(rem.note_row);
    if (!r) return;
    const int minutes = f.list_index + 1;
    const QTime at = hhmm_to_time(r->rmdr_time);
    const QDateTime old_moment(short_to_date(r->rmdr_date), at.isValid() ? at : QTime(0, 0));
    if (!old_moment.isValid()) return;
    // From when it was due, not from now: a reminder delivered late and armed
    // for fewer minutes than it was late comes back at the next tick.
    const QString text = old_moment.addSecs(60 * minutes)
                             .toString(QStringLiteral("MM/dd/yy hh:mm:ss"))
                             .replace(QLatin1Char('-'), QLatin1Char('/'));
    r->rmdr_fired = QStringLiteral("F");
    r->rmdr_date = text.left(8);
    r->rmdr_time = text.mid(9, 5);
    r->rmdr_again_count = number_field(qint16(field_number(r->rmdr_again_count, 1) + 1));
}

} // namespace orva
