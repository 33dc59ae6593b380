#include "tzone/tzone.h"

#include "core/clock.h"
#include "core/errors.h"
#include "core/modal.h"
#include "store/archive.h"

#include <QDir>
#include <QLocale>
#include <QLoggingCategory>
#include <cmath>

namespace orva {

namespace {

Q_LOGGING_CATEGORY(lcTzone, "orvacal.tzone")

// The form's arithmetic is on wall-clock readings; see TzoneForm.
QDateTime wall_clock(const QDateTime& t) {
    return QDateTime(t.date(), t.time(), Qt::UTC);
}

// "in the system's format": the locale's short date and time, never a zone
// name, since a reading of another zone carries none of its own.
QString system_date_time(const QDateTime& t) {
    const QLocale l = QLocale::system();
    return l.toString(t.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
           l.toString(t.time(), QLocale::ShortFormat);
}

bool empty_or_blank(const QString& s) {
    return s.isEmpty() || s == u" ";
}

// Whole hours as the offset column writes them: "+5", "-3", "0". Blanks
// around are allowed.
std::optional<int> whole_hours(const QString& text) {
    bool ok = false;
    const int h = text.trimmed().toInt(&ok);
    if (!ok) return std::nullopt;
    return h;
}

// The zone of a key name, an IANA id, or a name of the table ("Knox
// (Indiana), United States" is the id ending in "/Knox").
QTimeZone zone_by_name(const QString& name) {
    const QByteArray id = name.toUtf8();
    if (QTimeZone::isTimeZoneIdAvailable(id)) return QTimeZone(id);
    for (const QByteArray& key : {id, id + " Standard Time"}) {
        const QByteArray iana = QTimeZone::windowsIdToDefaultIanaId(key);
        if (!iana.isEmpty()) return QTimeZone(iana);
    }
    QString city = name.section(QLatin1Char(','), 0, 0).section(QStringLiteral(" ("), 0, 0);
    city = city.trimmed().replace(QLatin1Char(' '), QLatin1Char('_'));
    if (city.isEmpty()) return {};
    const QByteArray tail = '/' + city.toUtf8();
    for (const QByteArray& known : QTimeZone::availableTimeZoneIds())
        if (known.endsWith(tail)) return QTimeZone(known);
    return {};
}

// Steps 1 to 5 of a click, for either list.
void list_click(TzoneForm& f, const QStringList& list, int index, QDateTime& time, QString& name,
                QString& label, QString& label24) {
    if (index < 0 || index >= list.size()) return;
    const QString clicked = list[index];
    f.zone_row = index + 1;
    f.zone_checked = f.vsTzones.TextMatrix(f.zone_row, 3).trimmed() == u"1";
    f.zone_in_dst = xTimes(f.vsTzones, f.zone_row, clock().today());
    // A row whose offset is no number keeps the time the list had before.
    if (const std::optional<QDateTime> now = zone_now(f.vsTzones, f.zone_row, f.zone_in_dst))
        time = *now;
    label = system_date_time(time);
    label24 = time.toString(QStringLiteral("MM/dd/yy")) + QStringLiteral("  ") +
              time.toString(QStringLiteral("HH:mm:ss")) + QStringLiteral(" (24 hour)");
    name = clicked;
    f.Text1 = f.Text3 = f.Text4 = QStringLiteral(" ");
}

void list_double_click(TzoneForm& f, const QStringList& list, int index, QDateTime& time) {
    if (index < 0 || index >= list.size()) return;
    // The hours land in a date-time as a count of days from the serial's day
    // 0; nothing shows it before Calculate sets the time again.
    if (const std::optional<int> hours = whole_hours(read_zone_key(list[index], f.tz)))
        time = TzoneForm::date_zero().addDays(*hours);
}

} // namespace

QString tzones_archive_path(const QString& app_path) {
    return QDir(app_path).filePath(QStringLiteral("Tzones.ach"));
}

void Form_Load(TzoneForm& f, const QString& app_path) {
    const QDateTime now = clock().now();
    f.tz_result = get_time_zone_information(QTimeZone::systemTimeZone(), now, f.tz);
    f.Label2 = QLocale::c().toString(now.time(), QStringLiteral("hh:mm AP")) +
               QStringLiteral("  ") + QLocale::system().toString(now.date(), QLocale::ShortFormat);
    f.Text2 = f.tz_result == 2 ? f.tz.DaylightName : f.tz.StandardName;
    f.lblTz24 = now.time().toString(QStringLiteral("HH:mm:ss")) + QStringLiteral("  (24 hour)");

    if (read_zone_key(QStringLiteral("Pacific"), f.tz) == u"8") {
        f.pacific = true;
        f.local_hours = f.tz.Bias / 60;
    } else {
        f.pacific = false;
        f.local_hours = f.tz.Bias / 60 - 1;
    }

    const QString path = tzones_archive_path(app_path);
    QByteArray bytes;
    int e = 0;
    {
        // An archive of its own: the table is read once and its file let go,
        // whatever calendar the shared archive holds open.
        Archive archive;
        // Shipped data: read as it is, never touched.
        archive.set_read_only(true);
        e = archive.get(path, QStringLiteral("Tzones.grd"), bytes);
    }
    if (e == err::not_found) {
        modal().message(file_not_found_text + path, MsgStyle::Critical);
        return;
    }
    if (e != 0) {
        qCWarning(lcTzone) << "cannot read the zone table" << path << "error" << e;
        return;
    }
    if (!f.vsTzones.load_bytes(bytes)) {
        qCWarning(lcTzone) << "the zone table" << path << "is damaged";
        return;
    }
    f.vsTzones.Sort(SortOrder::StringAscending, 0);
    for (int r = 1; r < f.vsTzones.Rows(); ++r) {
        const QString name = f.vsTzones.TextMatrix(r, 0);
        f.List1 << name;
        f.List2 << name;
    }
}

void List1_Click(TzoneForm& f) {
    list_click(f, f.List1, f.List1_index, f.time1, f.name1, f.Label3, f.zone124Lbl);
}

void List2_Click(TzoneForm& f) {
    list_click(f, f.List2, f.List2_index, f.time2, f.name2, f.Label4, f.zone224lbl);
}

void List1_DblClick(TzoneForm& f) {
    list_double_click(f, f.List1, f.List1_index, f.time1);
}

void List2_DblClick(TzoneForm& f) {
    list_double_click(f, f.List2, f.List2_index, f.time2);
}

void Command1_Click(TzoneForm& f) {
    if (f.List1_index < 0) {
        modal().message(select_zone1_text, MsgStyle::Warning);
        return;
    }
    if (f.List2_index < 0) {
        modal().message(select_zone2_text, MsgStyle::Warning);
        return;
    }
    List1_Click(f);
    List2_Click(f);
    f.Text1 = f.name1;
    f.Text4 = f.name2;
    // The two times are read a moment apart; rounded to the minute, that
    // moment cannot turn two equal zones into ones a minute apart.
    const qint64 ms = f.time2.msecsTo(f.time1);
    f.Text3 = time_difference_sentence(int(std::llround(double(ms) / 60000.0)));
}

void Command2_Click() {
    modal().message(tzone_help_text, MsgStyle::Information);
}

void mnuAbout_Click() {
    modal().message(tzone_about_text, MsgStyle::Information);
}

bool xTimes(const Grid& zones, int row, QDate today) {
    QString t = today.toString(QStringLiteral("MMdd"));
    QString s = zones.TextMatrix(row, 4);
    QString e = zones.TextMatrix(row, 5);
    if (e < s) {
        // The year is put in front of both ends, but of today's year on the
        // first day: from January to the last day the period does not count.
        // The program always read it so.
        const QString yy = today.toString(QStringLiteral("yy"));
        s = yy + s;
        e = QString::number(yy.toInt() + 1) + e;
        t = today.toString(QStringLiteral("yyMMdd"));
    }
    if (empty_or_blank(s)) return false;
    if (empty_or_blank(e)) return false;
    return !(t < s) && !(t > e);
}

std::optional<QDateTime> zone_now(const Grid& zones, int row, bool in_dst) {
    const QString o = zones.TextMatrix(row, 1).trimmed();
    const bool half = o.endsWith(QStringLiteral(".5"));
    const std::optional<int> h = whole_hours(half ? o.chopped(2) : o);
    if (!h) return std::nullopt;
    QDateTime t = GetGmtTime().addSecs(qint64(*h + (in_dst ? 1 : 0)) * 3600);
    // Added whatever the sign of the hours: "-3.5" is 2 h 30 min behind GMT,
    // which the program has always shown and is to go on showing.
    if (half) t = t.addSecs(30 * 60);
    return t;
}

QString time_difference_sentence(int minutes) {
    const int h = minutes / 60; // both cut towards zero, m with the sign of D
    const int m = minutes % 60;
    const QString hours = QString::number(h < 0 ? -h : h);
    // "1.5 Hour Earlier" for 1.5 hours later and the singular Hour from 2.5
    // hours on: the sentences the program has always given.
    if (m != 0) {
        if (h == 1) return QStringLiteral("is 1.5 Hour Earlier than");
        if (h < 0) return QStringLiteral("is ") + hours + QStringLiteral(".5 Hours Earlier than");
        if (h >= 2) return QStringLiteral("is ") + hours + QStringLiteral(".5 Hour Later than");
        if (m < 0) return QStringLiteral(".5 Hours earlier than");
        return QStringLiteral(".5 Hours Later than");
    }
    if (h == 1) return QStringLiteral("is 1 Hour Later than");
    if (h == -1) return QStringLiteral("is 1 Hour Earlier than");
    if (h < -1) return QStringLiteral("is ") + hours + QStringLiteral(" Hours Earlier than");
    if (h >= 2) return QStringLiteral("is ") + hours + QStringLiteral(" Hours Later than");
    return QStringLiteral("Is the same time as");
}

int GetTimeDifference() {
    return GetTimeDifference(QTimeZone::systemTimeZone(), clock().now());
}

int GetTimeDifference(const QTimeZone& zone, const QDateTime& at) {
    return zone.isValid() ? zone.offsetFromUtc(at) : 0;
}

QDateTime GetGmtTime() {
    return GetGmtTime(clock().now());
}

QDateTime GetGmtTime(const QDateTime& local) {
    return wall_clock(local).addSecs(-GetTimeDifference());
}

QDateTime GetTimeHere(const QDateTime& gmt) {
    return wall_clock(gmt).addSecs(GetTimeDifference());
}

int get_time_zone_information(const QTimeZone& zone, const QDateTime& at, TimeZoneInfo& info) {
    if (!zone.isValid()) return 0;
    info = TimeZoneInfo{};
    info.Bias = -zone.standardTimeOffset(at) / 60;
    info.StandardName = zone.displayName(QTimeZone::StandardTime, QTimeZone::LongName);
    info.DaylightName = zone.displayName(QTimeZone::DaylightTime, QTimeZone::LongName);
    const int year = at.date().year();
    const QDateTime from(QDate(year, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime to(QDate(year, 12, 31), QTime(23, 59, 59), Qt::UTC);
    for (const QTimeZone::OffsetData& t : zone.transitions(from, to)) {
        if (t.daylightTimeOffset != 0 && !info.DaylightDate.isValid()) {
            info.DaylightDate = t.atUtc;
            info.DaylightBias = -t.daylightTimeOffset / 60;
        } else if (t.daylightTimeOffset == 0 && !info.StandardDate.isValid()) {
            info.StandardDate = t.atUtc;
        }
    }
    // A year without the switch into daylight time has no switch out of it
    // either that the record could pair with it.
    if (!info.DaylightDate.isValid()) info.StandardDate = QDateTime();
    return zone.isDaylightTime(at) ? 2 : 1;
}

QString read_zone_key(const QString& name, TimeZoneInfo& info) {
    const QTimeZone zone = zone_by_name(name);
    if (!zone.isValid()) return {};
    TimeZoneInfo key;
    get_time_zone_information(zone, clock().now(), key);
    info.StandardBias = key.StandardBias;
    info.DaylightBias = key.DaylightBias;
    info.StandardDate = key.StandardDate;
    info.DaylightDate = key.DaylightDate;
    info.StandardName = key.StandardName;
    info.DaylightName = key.DaylightName;
    return QString::number(std::lround(info.Bias / 60.0));
}

} // namespace orva
