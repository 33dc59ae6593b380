#include "appointments/recurrence.h"

#include "appointments/saving.h"
#include "core/clock.h"
#include "core/event_loop.h"
#include "core/modal.h"

#include <algorithm>

namespace orva {

namespace {

const QStringList& weekday_names() {
    static const QStringList names{QStringLiteral("Sunday"),   QStringLiteral("Monday"),
                                   QStringLiteral("Tuesday"),  QStringLiteral("Wednesday"),
                                   QStringLiteral("Thursday"), QStringLiteral("Friday"),
                                   QStringLiteral("Saturday")};
    return names;
}

const QStringList& month_names() {
    static const QStringList names{
        QStringLiteral("January"), QStringLiteral("February"), QStringLiteral("March"),
        QStringLiteral("April"),   QStringLiteral("May"),      QStringLiteral("June"),
        QStringLiteral("July"),    QStringLiteral("August"),   QStringLiteral("September"),
        QStringLiteral("October"), QStringLiteral("November"), QStringLiteral("December")};
    return names;
}

// The entry of `list` at `i`, or "" outside it.
QString item_at(const QStringList& list, int i) {
    return i >= 0 && i < list.size() ? list[i] : QString();
}

// Weekday with Sunday as 1, as the rule's everyWkDCombo index + 1 counts.
int weekday_of(const QDate& d) {
    return d.dayOfWeek() % 7 + 1;
}

// The leading digits of a text as a number, 0 when it starts with none: a
// slash or a blank stops the reading, it is no error.
int leading_number(QStringView text) {
    qsizetype i = 0;
    while (i < text.size() && text[i] == u' ')
        ++i;
    int n = 0;
    while (i < text.size() && text[i].isDigit() && n < 100000000)
        n = n * 10 + text[i++].digitValue();
    return n;
}

// A day of a month counted from the 1st, so that day 0 is the last day of
// the month before.
QDate day_of_month(int year, int month, int day) {
    return QDate(year, month, 1).addDays(day - 1);
}

// The editor's greatest first date; the editor sets it at load, but a form
// opened over an editor that has not yet done so still offers a sensible end.
QDate first_date_max(const ApptForm& editor) {
    return editor.apptDTPicker_max.isValid() ? editor.apptDTPicker_max
                                             : clock().today().addYears(15);
}

void select_first(ComboList& c) {
    c.list_index = c.items.isEmpty() ? -1 : 0;
}

void blank_occur_keys(Shared& store) {
    for (int r = 1; r <= occur_limit; ++r) {
        appt_rec* row = store.occur_row(r);
        row->appt_start.blank();
        row->appt_end.blank();
        row->appt_first_date.blank();
        row->appt_id.blank();
        row->appt_date.blank();
    }
}

// The fields every generated row takes alike, whatever the pattern.
void fill_common(const EditorState& editing, const ApptForm& f, appt_rec& row, const QDate& first,
                 const QDate& at, const QString& key) {
    row.appt_first_date = first.toString(QStringLiteral("MMddyyyy"));
    row.appt_date = at.toString(QStringLiteral("MMddyyyy"));
    if (f.pickers_enabled) {
        row.appt_start = start_text(f);
        row.appt_end = end_text(f);
    } else {
        row.appt_start.blank();
        row.appt_end.blank();
    }
    row.appt_id = key;
    row.appt_text = f.Text1;
    row.appt_type = f.typeIcombo.selected_key();
    row.appt_until = editing.occ_until;
    row.appt_rem_lead = number_field(editing.rem_lead);
    row.appt_rem_unit = number_field(editing.rem_unit);
    row.appt_rem_anim = number_field(editing.rem_anim);
    row.appt_rem_text = editing.rem_sound;
    row.appt_notes = f.Notes;
}

} // namespace

QDateTime date_add(const QString& letter, qint64 n, const QDateTime& at) {
    if (letter == u"h") return at.addSecs(n * 3600);
    if (letter == u"n") return at.addSecs(n * 60);
    if (letter == u"s") return at.addSecs(n);
    QDateTime out = at;
    out.setDate(date_add(letter, n, at.date()));
    return out;
}

QDate date_add(const QString& letter, qint64 n, const QDate& d) {
    if (letter == u"yyyy") return d.addYears(int(n));
    if (letter == u"m") return d.addMonths(int(n));
    if (letter == u"ww") return d.addDays(n * 7);
    if (letter == u"d") return d.addDays(n);
    return d;
}

QString period_letter(const QString& occurs) {
    if (occurs == u"1 ") return QStringLiteral("d");
    if (occurs == u"2 ") return QStringLiteral("ww");
    if (occurs == u"3 ") return QStringLiteral("m");
    if (occurs == u"4 ") return QStringLiteral("yyyy");
    return {};
}

void set_until(OccursForm& f, const QDate& d) {
    if (!d.isValid()) {
        f.untilDTPicker = f.untilDTPicker_min;
        return;
    }
    QDate v = d;
    if (f.untilDTPicker_max.isValid() && v > f.untilDTPicker_max) v = f.untilDTPicker_max;
    if (f.untilDTPicker_min.isValid() && v < f.untilDTPicker_min) v = f.untilDTPicker_min;
    f.untilDTPicker = v;
}

QStringList every_items(int period) {
    QStringList out;
    switch (period) {
    case 0:
        out << QStringLiteral(" ");
        break;
    case 1:
        out << QStringLiteral("every day");
        for (int n = 2; n <= 6; ++n)
            out << QStringLiteral("every %1  days").arg(n);
        break;
    case 2:
        out << QStringLiteral("once weekly");
        for (int n = 2; n <= 3; ++n)
            out << QStringLiteral("every %1 weeks").arg(n);
        break;
    case 3:
        out << QStringLiteral("once monthly");
        for (int n = 2; n <= 11; ++n)
            out << QStringLiteral("every %1  months").arg(n);
        break;
    case 4:
        out << QStringLiteral("once yearly");
        for (int n = 2; n <= 5; ++n)
            out << QStringLiteral("every %1  years").arg(n);
        break;
    default:
        break;
    }
    return out;
}

QStringList period_items() {
    return {QStringLiteral("once"), QStringLiteral("daily"), QStringLiteral("weekly"),
            QStringLiteral("monthly"), QStringLiteral("yearly")};
}

QStringList ordinal_items() {
    return {QStringLiteral("First"), QStringLiteral("Second"), QStringLiteral("Third"),
            QStringLiteral("Fourth"), QStringLiteral("Last")};
}

QStringList weekday_items() {
    return weekday_names();
}

QStringList month_items() {
    return QStringList{QStringLiteral("Every month")} + month_names();
}

int yymmdd_key(const QDate& d) {
    return d.isValid() ? d.toString(QStringLiteral("yyMMdd")).toInt() : 0;
}

int until_key(const QString& mm_dd_yy) {
    return leading_number(mm_dd_yy.mid(6, 2) + mm_dd_yy.mid(0, 2) + mm_dd_yy.mid(3, 2));
}

void frmOccurs_Load(const PlannerState& view, EditorState& editing, const ApptForm& editor,
                    OccursForm& f) {
    f.untilDTPicker_min = editor.apptDTPicker;
    f.untilDTPicker_max = clock().today().addYears(15);
    f.untilDTPicker_CalendarBackColor = view.vsSched.BackColor();
    f.occursCombo.items = period_items();
    f.occursWCombo.items = ordinal_items();
    f.everyWkDCombo.items = weekday_items();
    f.mthCombo.items = month_items();
    if (!editing.occ_by_period) {
        f.occursWCombo.list_index = editing.occ_ordinal;
        f.everyWkDCombo.list_index = editing.occ_weekday;
        f.mthCombo.list_index = editing.occ_month;
        f.Option1 = false;
        f.Option2 = true;
        Option2_Click(editing, editor, f);
    } else {
        f.Option1 = true;
        f.Option2 = false;
        Option1_Click(editing, editor, f);
    }
}

void Option1_Click(EditorState& editing, const ApptForm& editor, OccursForm& f) {
    f.occursWCombo_enabled = false;
    f.everyWkDCombo_enabled = false;
    f.mthCombo_enabled = false;
    f.untilDTPicker_enabled = false;
    f.occursCombo_enabled = true;
    f.EveryCombo_enabled = true;
    editing.occ_by_period = true;
    editing.occ_by_weekday = false;
    f.occursCombo.list_index = editing.occ_period;
    occursCombo_Click(editing, editor, f);
    select_first(f.occursWCombo);
    select_first(f.everyWkDCombo);
    select_first(f.mthCombo);
}

void Option2_Click(EditorState& editing, const ApptForm&, OccursForm& f) {
    f.occursWCombo_enabled = true;
    f.everyWkDCombo_enabled = true;
    f.untilDTPicker_enabled = true;
    f.mthCombo_enabled = true;
    f.occursCombo_enabled = false;
    f.EveryCombo_enabled = false;
    editing.occ_by_period = false;
    editing.occ_by_weekday = true;
    f.Label1.clear();
    select_first(f.occursCombo);
    QDate until = short_to_date(editing.occ_until);
    if (editing.new_appt) until = until.addYears(1);
    set_until(f, until);
}

void occursCombo_Click(const EditorState& editing, const ApptForm& editor, OccursForm& f) {
    const QDate d = short_to_date(editing.occ_until);
    const QDate first = editor.apptDTPicker;
    const int period = f.occursCombo.list_index;
    f.EveryCombo.clear();
    f.EveryCombo.items = every_items(period);

    QDate offer = d;
    if (d.isValid()) {
        // The month's length is taken from the end date, the day from the
        // first date: for a new entry the two are the same day.
        const QDate month_start(d.year(), d.month(), 1);
        const int n = int(month_start.daysTo(month_start.addMonths(1)));
        switch (period) {
        case 1:
            offer = d.addDays(n - first.day());
            break;
        case 2:
            offer = d.addDays(n - d.day());
            break;
        case 3:
            offer = d.addMonths(12 - d.month());
            break;
        case 4:
            offer = d.addYears(first_date_max(editor).year() - clock().today().year() - 1);
            break;
        default:
            break;
        }
    }

    switch (period) {
    case 0:
    case 1:
        f.Label1.clear();
        break;
    case 2:
        f.Label1 = QStringLiteral("on  ") + item_at(weekday_names(), weekday_of(first) - 1);
        break;
    case 3:
        f.Label1 = QStringLiteral("on day ") + QString::number(first.day());
        break;
    case 4:
        f.Label1 = QStringLiteral("on  ") + item_at(month_names(), first.month() - 1) +
                   QStringLiteral(" ") + QString::number(first.day());
        break;
    default:
        break;
    }
    if (period >= 1 && period <= 4) {
        f.untilDTPicker_enabled = true;
        f.EveryCombo_enabled = true;
    }
    set_until(f, editing.new_appt ? offer : d);
    select_first(f.EveryCombo);
}

void mthCombo_Click(const EditorState& editing, const ApptForm&, OccursForm& f) {
    if (!editing.new_appt) {
        set_until(f, short_to_date(editing.occ_until));
        return;
    }
    // Characters 3-4 are the slash and the first digit of the day, which read
    // as day 0: the last day of the month before. Kept as it is.
    const int month = leading_number(editing.occ_until.mid(0, 2));
    const int day = leading_number(editing.occ_until.mid(2, 2));
    const int year = 2000 + leading_number(editing.occ_until.mid(6, 2));
    if (month < 1 || month > 12) return;
    set_until(f, day_of_month(year, month, day).addYears(1));
}

void frmOccurs_OK(EditorState& editing, ApptForm& editor, OccursForm& f) {
    QString pattern;
    int occurs = 0, every = 0, month = 0;
    if (f.Option1) {
        editing.occ_every = qint16(f.EveryCombo.list_index);
        pattern = QStringLiteral("1 ");
        occurs = f.occursCombo.list_index;
        every = editing.occ_every;
    } else {
        editing.occ_every = qint16(f.everyWkDCombo.list_index);
        pattern = QStringLiteral("2 ");
        occurs = f.occursWCombo.list_index;
        every = editing.occ_every;
        month = f.mthCombo.list_index;
    }
    editing.occ_period = qint16(f.occursCombo.list_index);
    editing.occ_ordinal = qint16(f.occursWCombo.list_index);
    editing.occ_weekday = qint16(f.everyWkDCombo.list_index);
    editing.occ_month = qint16(f.mthCombo.list_index);
    editing.occ_until = f.untilDTPicker.toString(QStringLiteral("MM/dd/yy"));
    editor.lblOccur = occurs_caption(pattern, occurs, every, month, f.untilDTPicker);
}

void build_occurs(Shared& store, const EditorState& editing, const ApptForm& f,
                  const QString& occurs, const QString& key) {
    store.occur_count = 1;
    if (!editing.occ_by_period) {
        build_weekday_occurs(store, editing, f, key);
        return;
    }
    const QString letter = period_letter(occurs);
    if (letter.isEmpty()) return;
    build_period_occurs(store, editing, f, letter, key);
}

void build_period_occurs(Shared& store, const EditorState& editing, const ApptForm& f,
                         const QString& letter, const QString& key) {
    blank_occur_keys(store);
    const int step = editing.occ_every + 1;
    const QDate first = f.apptDTPicker;
    if (!first.isValid()) return;
    const int last = until_key(editing.occ_until);
    const QString first_yymm = yymm_of(first);
    qint64 i = 0;
    QDate t = first;
    int stamp = yymmdd_key(t);
    while (stamp <= last) {
        appt_rec* row = store.occur_row(store.occur_count);
        // The row past the table cannot be stored; that ends the series.
        if (!row) return;
        fill_common(editing, f, *row, first, t, key);
        row->appt_occurs = number_field(editing.occ_period);
        row->appt_occurs_month = QStringLiteral("0 ");
        row->appt_occurs_every = number_field(editing.occ_every);
        row->appt_pattern = QStringLiteral("1 ");
        if (yymm_of(t) == first_yymm) {
            ++store.appt_count;
            copy_occur_row(store, editing, store.appt_count, store.occur_count);
        }
        ++i;
        // Always from the first date: stepping from the occurrence before
        // would lose a month end after the first short month.
        t = date_add(letter, step * i, first);
        stamp = yymmdd_key(t);
        if (stamp <= last) ++store.occur_count;
        if (store.occur_count > occur_limit) modal().message(too_many_msg, MsgStyle::Critical);
        yield_events();
    }
}

void build_weekday_occurs(Shared& store, const EditorState& editing, const ApptForm& f,
                          const QString& key) {
    store.occur_count = 0;
    blank_occur_keys(store);
    const QDate first = f.apptDTPicker;
    // Only the year and month of c are read, so the day may be any.
    QDate c = editing.occ_month != 0 ? QDate(first.year(), editing.occ_month, 1) : first;
    // A month outside the list would never find a day and never end.
    if (!c.isValid()) return;
    QString date_text, yymm;
    int stamp = 0;
    find_weekday_in_month(editing, first, c, date_text, yymm, stamp);
    const int last = until_key(editing.occ_until);
    const QString first_yymm = yymm_of(first);
    while (stamp <= last) {
        if (!date_text.isEmpty()) {
            ++store.occur_count;
            if (store.occur_count > occur_limit) {
                modal().message(too_many_msg, MsgStyle::Critical);
                break;
            }
            appt_rec& row = *store.occur_row(store.occur_count);
            fill_common(editing, f, row, first, text_to_date(date_text), key);
            row.appt_occurs = number_field(editing.occ_ordinal);
            row.appt_occurs_month = number_field(editing.occ_month);
            row.appt_occurs_every = number_field(editing.occ_weekday);
            row.appt_pattern = QStringLiteral("2 ");
            if (yymm == first_yymm) {
                ++store.appt_count;
                copy_occur_row(store, editing, store.appt_count, store.occur_count);
            }
        }
        c = editing.occ_month == 0 ? date_add(QStringLiteral("m"), 1, c)
                                   : date_add(QStringLiteral("yyyy"), 1, c);
        find_weekday_in_month(editing, first, c, date_text, yymm, stamp);
        yield_events();
    }
}

void find_weekday_in_month(const EditorState& editing, const QDate& first, const QDate& c,
                           QString& date_text, QString& yymm, int& key) {
    if (!c.isValid()) return;
    const bool last = editing.occ_ordinal == 4;
    const int wanted = editing.occ_ordinal + 1;
    const int weekday = editing.occ_weekday + 1;
    const int first_key = yymmdd_key(first);
    const QDate month_start(c.year(), c.month(), 1);
    const int days = int(month_start.daysTo(month_start.addMonths(1)));
    int counted = 0;
    for (int day = 1; day <= days; ++day) {
        const QDate d = month_start.addDays(day - 1);
        if (weekday_of(d) != weekday) continue;
        ++counted;
        // The count starts at the 1st whatever the first date: the second
        // Tuesday stays the calendar's second Tuesday.
        if (!last && counted != wanted) continue;
        if (yymmdd_key(d) < first_key) continue;
        date_text = d.toString(QStringLiteral("MMddyyyy"));
        yymm = yymm_of(d);
        key = yymmdd_key(d);
        if (!last) return;
    }
}

QString occurs_words(const QString& pattern, int occurs, int every, int month) {
    if (pattern == u"2 ") {
        static const QStringList ordinals{QStringLiteral("first"), QStringLiteral("second"),
                                          QStringLiteral("third"), QStringLiteral("fourth"),
                                          QStringLiteral("last")};
        const QString month_words =
            month == 0 ? QStringLiteral("every month") : item_at(month_names(), month - 1);
        return item_at(ordinals, occurs) + QStringLiteral(" ") + item_at(weekday_names(), every) +
               QStringLiteral(" of ") + month_words;
    }
    struct Unit {
        const char* first; // the words of step 1
        const char* plural;
        int greatest;
    };
    static const Unit units[] = {
        {"every day", "days", 6},
        {"once weekly", "weeks", 3},
        {"once monthly", "months", 11},
        {"once yearly", "years", 5},
    };
    if (occurs < 1 || occurs > 4) return {};
    const Unit& u = units[occurs - 1];
    if (every < 0 || every >= u.greatest) return {};
    if (every == 0) return QString::fromLatin1(u.first);
    return QStringLiteral("every %1 %2").arg(every + 1).arg(QLatin1String(u.plural));
}

QString occurs_caption(const QString& pattern, int occurs, int every, int month,
                       const QDate& until) {
    const QString words = occurs_words(pattern, occurs, every, month);
    const QString d = short_date_text(until);
    if (pattern == u"2 ")
        return QStringLiteral("This appointment occurs on the ") + words +
               QStringLiteral(" until ") + d;
    if (occurs == 0)
        return QStringLiteral(
            "This appointment occurs one time.  Click button to change occurrences.");
    return QStringLiteral("This appointment occurs ") + words + QStringLiteral(" until ") + d;
}

void set_occurs_caption(const Shared& store, ApptForm& f, int row) {
    const appt_rec* a = store.appt_row(row);
    if (!a) return;
    const QString pattern = a->appt_pattern;
    f.lblOccur = occurs_caption(
        pattern, field_number(a->appt_occurs, 0), field_number(a->appt_occurs_every, 0),
        field_number(a->appt_occurs_month, 0), short_to_date(a->appt_until));
}

} // namespace orva
