#pragma once

#include "grid/grid.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTimeZone>
#include <optional>

namespace orva {

// The form's copy of a zone as the system describes it. Biases are in
// minutes and count the other way from offsets: UTC = local time + bias, so
// Berlin has Bias -60 and a DaylightBias of -60 on top of it in summer.
struct TimeZoneInfo {
    int Bias = 0;
    QString StandardName;
    QDateTime StandardDate; // when standard time begins this year; invalid without daylight time
    int StandardBias = 0;
    QString DaylightName;
    QDateTime DaylightDate; // when daylight time begins this year; invalid without it
    int DaylightBias = 0;
};

// "Tzone - Find dates and times around the World" as the logic sees it.
//
// The form's date-times (time1, time2 and what GetGmtTime and zone_now give)
// are wall-clock readings of some zone, carried as Qt::UTC date-times so that
// adding hours to them never meets a daylight-saving gap of the machine's
// own zone.
struct TzoneForm {
    Grid vsTzones; // hidden: the zone table, sorted by name, heading in row 0

    QStringList List1, List2; // zone names; index + 1 is a row of vsTzones
    int List1_index = -1;     // -1: nothing selected
    int List2_index = -1;
    QString Text1, Text2, Text3, Text4; // Text1 Text3 Text4: the sentence; Text2 the local zone
    QString Label2, lblTz24;            // the local time, 12-hour with the date, and 24-hour
    QString Label3, zone124Lbl;         // the time in zone 1
    QString Label4, zone224lbl;         // the time in zone 2

    int zone_row = 0; // grid row of the list clicked last
    bool zone_in_dst = false;
    bool zone_checked = false; // column 3 of zone_row; nothing reads it
    // Day 0 of the date serial, as a date-time that was never set reads.
    QDateTime time1 = date_zero();
    QDateTime time2 = date_zero();
    QString name1, name2;

    TimeZoneInfo tz;      // the local zone, with the rest of the "Pacific" key read at opening
    int tz_result = 0;    // 1 standard time, 2 daylight time, as the local zone was read
    bool pacific = false; // whether the local zone is 8 hours west; nothing reads it
    int local_hours = 0;  // nothing reads it either

    static QDateTime date_zero() { return QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC); }
};

// What the help box and the about box show, and the texts of the form.
inline const QString tzone_title = QStringLiteral("Tzone - Find dates and times around the World");
inline const QString tzone_help_text =
    QStringLiteral(" Tzone allows you to calculate the time difference between two different time "
                   "zones of the world.\n"
                   "  It also displays the current time and Time zone. Differences in daylight "
                   "saving and standard times are automatically handled. \n"
                   " Select a Time Zone from Time Zone1 Listbox and from Time Zone 2 Listbox then "
                   "click the Calculate Differences \n"
                   "  button to see the time difference.");
inline const QString tzone_about_text = QStringLiteral("Orva Calendar - Tzone");
inline const QString select_zone1_text = QStringLiteral("Select from Time Zone 1");
inline const QString select_zone2_text = QStringLiteral("Select from Time Zone 2");
inline const QString file_not_found_text = QStringLiteral("File not found: ");

// app_path + "/Tzones.ach"; its member "Tzones.grd" is the zone table.
QString tzones_archive_path(const QString& app_path);

// Opening: the local time and zone, then the zone table from the archive in
// app_path into vsTzones and both lists. A missing archive (or member) shows
// "File not found: " + the archive's path and leaves the lists empty; any
// other failure to read it leaves them empty silently.
void Form_Load(TzoneForm& f, const QString& app_path);

// A click in a list, with its index already set: notes the zone and its time.
// An index of -1 does nothing.
void List1_Click(TzoneForm& f);
void List2_Click(TzoneForm& f);
// A double click: the name goes through read_zone_key, and the hours it
// gives become time1 (time2) as a date serial. Calculate overwrites them.
void List1_DblClick(TzoneForm& f);
void List2_DblClick(TzoneForm& f);

// Calculate: the sentence of how zone 1 stands to zone 2 in Text1, Text3,
// Text4; a warning instead when a list has no selection.
void Command1_Click(TzoneForm& f);
// Help (Command2 and mnuContent), and the about box.
void Command2_Click();
void mnuAbout_Click();

// True when the zone in `row` of the table is in daylight saving on `today`,
// by its columns 4 and 5 ("MMDD" first and last day). Keeps the program's
// reading of a period across the new year: only its part from the first day
// to the end of the year counts.
bool xTimes(const Grid& zones, int row, QDate today);

// The time now in the zone of `row`: GMT plus the offset of column 1, one
// hour more when `in_dst`. A half hour is always added, whatever the sign, so
// "-3.5" comes out 2 h 30 min behind GMT. None when column 1 is no number.
std::optional<QDateTime> zone_now(const Grid& zones, int row, bool in_dst);

// Text3 for zone 1 being `minutes` ahead of zone 2 (negative: behind).
QString time_difference_sentence(int minutes);

// Seconds to add to GMT to get local time: the system zone's offset at the
// clock's present moment (positive east of Greenwich, daylight time included).
int GetTimeDifference();
// The same for any zone at any moment.
int GetTimeDifference(const QTimeZone& zone, const QDateTime& at);
// A local wall-clock date-time taken back to GMT; without one, the present.
QDateTime GetGmtTime();
QDateTime GetGmtTime(const QDateTime& local);
// A GMT wall-clock date-time taken forward to local time.
QDateTime GetTimeHere(const QDateTime& gmt);

// Reads `zone` at `at` into `info`; returns 2 when `at` is in its daylight
// time, else 1 (0 for an invalid zone, leaving `info` as it was).
int get_time_zone_information(const QTimeZone& zone, const QDateTime& at, TimeZoneInfo& info);

// Fills `info` from the zone of that name: an IANA id ("Europe/Berlin"), a
// Windows zone key ("Pacific Standard Time", or "Pacific" without the
// " Standard Time") or a name of the zone table ("Berlin, Germany"). Bias is
// not among what it takes, so the hours returned are those of the Bias
// already in `info`, in whole hours west of Greenwich ("8" when that is
// Pacific time). Empty, leaving `info` as it was, when no zone has the name.
QString read_zone_key(const QString& name, TimeZoneInfo& info);

} // namespace orva
