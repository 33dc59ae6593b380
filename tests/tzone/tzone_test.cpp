#include "tzone_fixtures.h"

#include <QFile>
#include <QLocale>
#include <QTimeZone>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::small_world;
using testing::SystemZone;
using testing::TzoneEnv;
using testing::write_zone_table;
using testing::zone_table;
using testing::ZoneRow;

QDateTime at(int y, int mo, int d, int h, int mi, int s = 0) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::UTC);
}

// A form opened on the small world, with the lists sorted as
// Berlin, Colombo, GMT, New York.
struct Tzone : ::testing::Test {
    TzoneEnv env;
    TzoneForm f;

    void open(const Grid& table = small_world()) {
        write_zone_table(env.app_path(), table);
        Form_Load(f, env.app_path());
    }
    int index_of(const QString& name) const { return int(f.List1.indexOf(name)); }
    void calculate(const QString& zone1, const QString& zone2) {
        f.List1_index = index_of(zone1);
        f.List2_index = index_of(zone2);
        ASSERT_GE(f.List1_index, 0) << zone1.toStdString();
        ASSERT_GE(f.List2_index, 0) << zone2.toStdString();
        Command1_Click(f);
    }
};

// --- opening ---------------------------------------------------------------

TEST_F(Tzone, ListsHoldTheNamesSortedFromRowOneAndIndexPlusOneIsTheGridRow) {
    open();
    const QStringList sorted{"Berlin, Germany", "Colombo, Sri Lanka", "GMT",
                             "New York, United States"};
    EXPECT_EQ(f.List1, sorted);
    EXPECT_EQ(f.List2, sorted);
    for (int i = 0; i < f.List1.size(); ++i)
        EXPECT_EQ(f.vsTzones.TextMatrix(i + 1, 0), f.List1[i]);
    EXPECT_EQ(f.vsTzones.TextMatrix(0, 0), "Zone");
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(Tzone, OpeningReadsTheShippedTableWithoutTouchingIt) {
    const QString table = tzones_archive_path(env.app_path());
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/Tzones.ach"), table));
    QFile file(table);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    Form_Load(f, env.app_path());
    EXPECT_GT(f.List1.size(), 400);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
    EXPECT_FALSE(QFile::exists(table + QStringLiteral("-wal")));
}

TEST_F(Tzone, MissingTableSaysFileNotFoundWithTheArchivePathAndTheListsStayEmpty) {
    Form_Load(f, env.app_path());
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].kind, "message");
    EXPECT_EQ(env.m.shown[0].text, "File not found: " + env.app_path() + "/Tzones.ach");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Critical);
    EXPECT_TRUE(f.List1.isEmpty());
    EXPECT_TRUE(f.List2.isEmpty());
    EXPECT_EQ(f.vsTzones.Rows(), 0);
}

TEST_F(Tzone, AnArchiveWithoutTheTableMemberCountsAsNotFound) {
    Archive a;
    ASSERT_EQ(a.put(tzones_archive_path(env.app_path()), "other.grd", QByteArray("x")), 0);
    Form_Load(f, env.app_path());
    EXPECT_EQ(env.m.messages(),
              std::vector<QString>{"File not found: " + env.app_path() + "/Tzones.ach"});
    EXPECT_TRUE(f.List1.isEmpty());
}

TEST_F(Tzone, LocalTimeShowsInTwelveAndTwentyFourHourForms) {
    open();
    EXPECT_EQ(f.Label2,
              "02:05 PM  " + QLocale::system().toString(QDate(2026, 7, 15), QLocale::ShortFormat));
    EXPECT_EQ(f.lblTz24, "14:05:09  (24 hour)");
}

TEST_F(Tzone, MorningLocalTimeKeepsTheLeadingZeroAndAm) {
    env.clock.set(QDateTime(QDate(2026, 1, 2), QTime(9, 7, 3)));
    open();
    EXPECT_TRUE(f.Label2.startsWith("09:07 AM  ")) << f.Label2.toStdString();
    EXPECT_EQ(f.lblTz24, "09:07:03  (24 hour)");
}

// --- the local zone comes from the operating system --------------------------

TEST_F(Tzone, LocalDaylightStateComesFromTheSystemNotTheTable) {
    SystemZone berlin("Europe/Berlin");
    env.clock.set(QDateTime(QDate(2026, 7, 15), QTime(14, 5, 9)));
    // The table knows Berlin without summer time; the system knows better.
    open(zone_table({{"Berlin, Germany", "+1"}}));
    const QTimeZone system("Europe/Berlin");
    ASSERT_NE(system.displayName(QTimeZone::DaylightTime, QTimeZone::LongName),
              system.displayName(QTimeZone::StandardTime, QTimeZone::LongName));
    EXPECT_EQ(f.tz_result, 2);
    EXPECT_EQ(f.Text2, system.displayName(QTimeZone::DaylightTime, QTimeZone::LongName));
    EXPECT_EQ(GetTimeDifference(), 7200);

    f.List1_index = 0;
    List1_Click(f);
    EXPECT_FALSE(f.zone_in_dst);
    // 14:05:09 in Berlin's summer is 12:05:09 GMT; the table adds one hour.
    EXPECT_EQ(f.time1, at(2026, 7, 15, 13, 5, 9));
}

TEST_F(Tzone, TableCanClaimDaylightTimeTheSystemDoesNotKeep) {
    SystemZone berlin("Europe/Berlin");
    env.clock.set(QDateTime(QDate(2026, 1, 15), QTime(10, 0)));
    open(zone_table({{"Berlin, Germany", "+1", "0101", "1231"}}));
    const QTimeZone system("Europe/Berlin");
    EXPECT_EQ(f.tz_result, 1);
    EXPECT_EQ(f.Text2, system.displayName(QTimeZone::StandardTime, QTimeZone::LongName));
    EXPECT_EQ(GetTimeDifference(), 3600);

    f.List1_index = 0;
    List1_Click(f);
    EXPECT_TRUE(f.zone_in_dst);
    EXPECT_EQ(f.time1, at(2026, 1, 15, 11, 0));
}

TEST_F(Tzone, GmtTimeAndTimeHereUndoEachOther) {
    SystemZone berlin("Europe/Berlin");
    env.clock.set(QDateTime(QDate(2026, 7, 15), QTime(14, 5, 9)));
    EXPECT_EQ(GetGmtTime(), at(2026, 7, 15, 12, 5, 9));
    EXPECT_EQ(GetGmtTime(at(2026, 12, 24, 18, 0)), at(2026, 12, 24, 16, 0))
        << "the difference is that of now, not of the date given";
    EXPECT_EQ(GetTimeHere(at(2026, 7, 15, 12, 5, 9)), at(2026, 7, 15, 14, 5, 9));
}

TEST_F(Tzone, TimeDifferenceIsSignedAndCountsWestAsNegative) {
    const QDateTime summer = at(2026, 7, 1, 12, 0);
    EXPECT_EQ(GetTimeDifference(QTimeZone("America/New_York"), summer), -4 * 3600);
    EXPECT_EQ(GetTimeDifference(QTimeZone("Asia/Kolkata"), summer), 19800);
    EXPECT_EQ(GetTimeDifference(QTimeZone("America/St_Johns"), summer), -9000);
}

// --- read_zone_key -----------------------------------------------------------

TEST_F(Tzone, ReadZoneKeyOfAnUnknownNameReturnsEmptyAndLeavesTheRecord) {
    TimeZoneInfo info;
    info.Bias = 123;
    info.StandardName = "as it was";
    EXPECT_EQ(read_zone_key("Nowhere In Particular", info), "");
    EXPECT_EQ(info.Bias, 123);
    EXPECT_EQ(info.StandardName, "as it was");
}

TEST_F(Tzone, ReadZoneKeyFillsTheRecordButGivesTheHoursOfItsOwnBias) {
    TimeZoneInfo info;
    info.Bias = 480;
    EXPECT_EQ(read_zone_key("Europe/Berlin", info), "8");
    EXPECT_EQ(info.Bias, 480);
    EXPECT_EQ(info.DaylightBias, -60);
    EXPECT_EQ(info.DaylightDate, at(2026, 3, 29, 1, 0));
    EXPECT_EQ(info.StandardDate, at(2026, 10, 25, 1, 0));
    EXPECT_EQ(info.DaylightName,
              QTimeZone("Europe/Berlin").displayName(QTimeZone::DaylightTime, QTimeZone::LongName));
}

TEST_F(Tzone, ReadZoneKeyKnowsWindowsKeysAndTheTablesNames) {
    TimeZoneInfo pacific, knox;
    EXPECT_EQ(read_zone_key("Pacific", pacific), "0");
    EXPECT_EQ(
        pacific.StandardName,
        QTimeZone("America/Los_Angeles").displayName(QTimeZone::StandardTime, QTimeZone::LongName));
    EXPECT_EQ(read_zone_key("Knox (Indiana), United States", knox), "0");
    EXPECT_EQ(knox.StandardName, QTimeZone("America/Indiana/Knox")
                                     .displayName(QTimeZone::StandardTime, QTimeZone::LongName));
}

TEST_F(Tzone, OpeningOnAMachineOnPacificTimeSetsTheFlagAndNothingVisible) {
    SystemZone pacific("America/Los_Angeles");
    env.clock.set(QDateTime(QDate(2026, 7, 15), QTime(14, 5, 9)));
    open();
    EXPECT_TRUE(f.pacific);
    EXPECT_EQ(f.local_hours, 8);
    EXPECT_EQ(
        f.Text2,
        QTimeZone("America/Los_Angeles").displayName(QTimeZone::DaylightTime, QTimeZone::LongName));
}

TEST_F(Tzone, DoubleClickPutsTheHoursIntoTheTimeAndCalculateOverwritesThem) {
    open();
    f.List1_index = index_of("GMT");
    List1_DblClick(f);
    EXPECT_EQ(f.time1, at(1899, 12, 30, 0, 0));
    f.List2_index = index_of("GMT");
    Command1_Click(f);
    EXPECT_EQ(f.time1, at(2026, 7, 15, 14, 5, 9));
}

// --- xTimes ------------------------------------------------------------------

TEST(TzoneDaylight, AZoneWithNoDaylightDatesIsNeverInDaylightTime) {
    const Grid g = zone_table({{"Empty", "0", "", ""}, {"Blank", "0", " ", " "}});
    for (QDate d(2026, 1, 1); d.year() == 2026; d = d.addDays(1)) {
        EXPECT_FALSE(xTimes(g, 1, d)) << d.toString(Qt::ISODate).toStdString();
        EXPECT_FALSE(xTimes(g, 2, d)) << d.toString(Qt::ISODate).toStdString();
    }
}

TEST(TzoneDaylight, AprilFirstToOctoberLastIncludesBothEnds) {
    const Grid g = zone_table({{"Zone", "+1", "0401", "1031"}});
    EXPECT_TRUE(xTimes(g, 1, QDate(2026, 4, 1)));
    EXPECT_TRUE(xTimes(g, 1, QDate(2026, 10, 31)));
    EXPECT_TRUE(xTimes(g, 1, QDate(2026, 7, 15)));
    EXPECT_FALSE(xTimes(g, 1, QDate(2026, 3, 31)));
    EXPECT_FALSE(xTimes(g, 1, QDate(2026, 11, 1)));
}

TEST(TzoneDaylight, PeriodAcrossTheNewYearCountsOnDecember15ButNotOnJanuary15) {
    const Grid g = zone_table({{"Zone", "+10", "1001", "0331"}});
    EXPECT_TRUE(xTimes(g, 1, QDate(2026, 12, 15)));
    EXPECT_TRUE(xTimes(g, 1, QDate(2026, 10, 1)));
    EXPECT_TRUE(xTimes(g, 1, QDate(2026, 12, 31)));
    EXPECT_FALSE(xTimes(g, 1, QDate(2026, 1, 15)));
    EXPECT_FALSE(xTimes(g, 1, QDate(2026, 3, 31)));
    EXPECT_FALSE(xTimes(g, 1, QDate(2026, 9, 30)));
}

TEST(TzoneDaylight, PeriodAcrossTheNewYearInTheYearBeforeATenKeepsCounting) {
    // 2009 + 1 is written "10": the period still runs to the end of 2009.
    const Grid g = zone_table({{"Zone", "+10", "1001", "0331"}});
    EXPECT_TRUE(xTimes(g, 1, QDate(2009, 12, 15)));
    EXPECT_FALSE(xTimes(g, 1, QDate(2009, 1, 15)));
}

TEST(TzoneDaylight, ARowOutsideTheTableIsNotInDaylightTime) {
    const Grid g = zone_table({{"Zone", "+1", "0101", "1231"}});
    EXPECT_FALSE(xTimes(g, 5, QDate(2026, 7, 1)));
}

// --- zone_now ----------------------------------------------------------------

TEST_F(Tzone, MinusThreeAndAHalfComesOutTwoAndAHalfHoursBehindGmt) {
    const Grid g = zone_table({{"St Johns, Canada", "-3.5"}});
    EXPECT_EQ(zone_now(g, 1, false), at(2026, 7, 15, 11, 35, 9));
    EXPECT_EQ(zone_now(g, 1, true), at(2026, 7, 15, 12, 35, 9));
}

TEST_F(Tzone, OffsetsInWholeAndHalfHoursAndDaylightTime) {
    const Grid g = zone_table({{"a", "+5.5"}, {"b", "-5"}, {"c", "0"}, {"d", "+1"}, {"e", "-0.5"}});
    EXPECT_EQ(zone_now(g, 1, false), at(2026, 7, 15, 19, 35, 9));
    EXPECT_EQ(zone_now(g, 2, false), at(2026, 7, 15, 9, 5, 9));
    EXPECT_EQ(zone_now(g, 2, true), at(2026, 7, 15, 10, 5, 9));
    EXPECT_EQ(zone_now(g, 3, false), at(2026, 7, 15, 14, 5, 9));
    EXPECT_EQ(zone_now(g, 4, true), at(2026, 7, 15, 16, 5, 9));
    EXPECT_EQ(zone_now(g, 5, false), at(2026, 7, 15, 14, 35, 9));
}

TEST_F(Tzone, AnOffsetThatIsNoNumberGivesNoTime) {
    const Grid g = zone_table({{"a", "east"}, {"b", ""}, {"c", ".5"}, {"d", "1.25"}});
    for (int row = 1; row <= 4; ++row)
        EXPECT_FALSE(zone_now(g, row, false).has_value()) << row;
}

// --- a click in a list ---------------------------------------------------------

TEST_F(Tzone, ClickShowsTheZonesTimeAndBlanksTheSentence) {
    open();
    f.Text1 = f.Text3 = f.Text4 = "old";
    f.List1_index = index_of("Berlin, Germany");
    List1_Click(f);
    EXPECT_EQ(f.zone_row, 1);
    EXPECT_TRUE(f.zone_in_dst);
    EXPECT_TRUE(f.zone_checked);
    EXPECT_EQ(f.name1, "Berlin, Germany");
    EXPECT_EQ(f.time1, at(2026, 7, 15, 16, 5, 9));
    EXPECT_EQ(f.zone124Lbl, "07/15/26  16:05:09 (24 hour)");
    const QLocale sys = QLocale::system();
    EXPECT_EQ(f.Label3, sys.toString(QDate(2026, 7, 15), QLocale::ShortFormat) + " " +
                            sys.toString(QTime(16, 5, 9), QLocale::ShortFormat));
    EXPECT_EQ(f.Text1, " ");
    EXPECT_EQ(f.Text3, " ");
    EXPECT_EQ(f.Text4, " ");

    f.List2_index = index_of("New York, United States");
    List2_Click(f);
    EXPECT_EQ(f.zone_row, 4);
    EXPECT_EQ(f.name2, "New York, United States");
    EXPECT_EQ(f.zone224lbl, "07/15/26  10:05:09 (24 hour)");
    EXPECT_EQ(f.time1, at(2026, 7, 15, 16, 5, 9)) << "zone 1 keeps its time";
}

TEST_F(Tzone, ARowWithANonNumericOffsetLeavesTheOldTime) {
    open(zone_table({{"Good", "+2"}, {"Odd", "two"}}));
    f.List1_index = 0;
    List1_Click(f);
    ASSERT_EQ(f.time1, at(2026, 7, 15, 16, 5, 9));
    env.clock.advance_secs(3600);
    f.List1_index = 1;
    List1_Click(f);
    EXPECT_EQ(f.time1, at(2026, 7, 15, 16, 5, 9));
    EXPECT_EQ(f.zone124Lbl, "07/15/26  16:05:09 (24 hour)");
    EXPECT_EQ(f.name1, "Odd");
    EXPECT_EQ(f.zone_row, 2);
}

TEST_F(Tzone, ANonNumericOffsetBeforeAnyTimeShowsTheSerialsDayZero) {
    open(zone_table({{"Odd", "two"}}));
    f.List2_index = 0;
    List2_Click(f);
    EXPECT_EQ(f.time2, at(1899, 12, 30, 0, 0));
    EXPECT_EQ(f.zone224lbl, "12/30/99  00:00:00 (24 hour)");
}

// --- Calculate -----------------------------------------------------------------

TEST_F(Tzone, TwoEqualZonesGiveIsTheSameTimeAs) {
    open();
    calculate("Berlin, Germany", "Berlin, Germany");
    EXPECT_EQ(f.Text1, "Berlin, Germany");
    EXPECT_EQ(f.Text3, "Is the same time as");
    EXPECT_EQ(f.Text4, "Berlin, Germany");
}

TEST_F(Tzone, ZonesAtPlusFiveAndAHalfAndZeroGiveTheSentenceForFiveHoursThirtyMinutes) {
    open();
    calculate("Colombo, Sri Lanka", "GMT");
    EXPECT_EQ(f.Text1, "Colombo, Sri Lanka");
    EXPECT_EQ(f.Text3, "is 5.5 Hour Later than");
    EXPECT_EQ(f.Text4, "GMT");
}

TEST_F(Tzone, CalculateTakesDaylightTimeOfBothZones) {
    open();
    calculate("Berlin, Germany", "New York, United States");
    EXPECT_EQ(f.Text3, "is 6 Hours Later than");
    calculate("New York, United States", "Colombo, Sri Lanka");
    EXPECT_EQ(f.Text3, "is 9.5 Hours Earlier than");
}

TEST_F(Tzone, CalculateRefreshesBothTimesFromTheClock) {
    open();
    calculate("GMT", "Berlin, Germany");
    env.clock.advance_secs(3 * 3600);
    Command1_Click(f);
    EXPECT_EQ(f.time1, at(2026, 7, 15, 17, 5, 9));
    EXPECT_EQ(f.time2, at(2026, 7, 15, 19, 5, 9));
    EXPECT_EQ(f.Text3, "is 2 Hours Earlier than");
}

TEST_F(Tzone, CalculateWithoutZone1WarnsAndNothingElseHappens) {
    open();
    f.List2_index = index_of("GMT");
    const TzoneForm before = f;
    Command1_Click(f);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, "Select from Time Zone 1");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Warning);
    EXPECT_EQ(f.Text1, before.Text1);
    EXPECT_EQ(f.Text3, before.Text3);
    EXPECT_EQ(f.Text4, before.Text4);
    EXPECT_EQ(f.time2, before.time2);
    EXPECT_EQ(f.zone224lbl, before.zone224lbl);
    EXPECT_EQ(f.name2, before.name2);
}

TEST_F(Tzone, CalculateWithoutZone2WarnsAndNothingElseHappens) {
    open();
    f.List1_index = index_of("GMT");
    const TzoneForm before = f;
    Command1_Click(f);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, "Select from Time Zone 2");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Warning);
    EXPECT_EQ(f.Text1, before.Text1);
    EXPECT_EQ(f.Text3, before.Text3);
    EXPECT_EQ(f.time1, before.time1);
    EXPECT_EQ(f.zone124Lbl, before.zone124Lbl);
    EXPECT_EQ(f.name1, before.name1);
}

TEST_F(Tzone, CalculateWithNeitherZoneAsksForZone1Only) {
    open();
    Command1_Click(f);
    EXPECT_EQ(env.m.messages(), std::vector<QString>{"Select from Time Zone 1"});
}

// --- help --------------------------------------------------------------------

TEST_F(Tzone, HelpBoxShowsItsFourLines) {
    Command2_Click();
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].kind, "message");
    const QStringList lines = env.m.shown[0].text.split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], " Tzone allows you to calculate the time difference between two different "
                        "time zones of the world.");
    EXPECT_EQ(lines[1], "  It also displays the current time and Time zone. Differences in "
                        "daylight saving and standard times are automatically handled. ");
    EXPECT_EQ(lines[2], " Select a Time Zone from Time Zone1 Listbox and from Time Zone 2 Listbox "
                        "then click the Calculate Differences ");
    EXPECT_EQ(lines[3], "  button to see the time difference.");
}

TEST_F(Tzone, AboutBoxShowsTheProductLine) {
    mnuAbout_Click();
    EXPECT_EQ(env.m.messages(), std::vector<QString>{"Orva Calendar - Tzone"});
}

// --- the sentences -------------------------------------------------------------

struct SentenceRow {
    const char* name;
    int minutes; // zone 1 ahead of zone 2
    const char* text;
};

const SentenceRow sentence_rows[] = {
    {"one_and_a_half_ahead_reads_earlier", 90, "is 1.5 Hour Earlier than"},
    {"one_and_a_half_behind", -90, "is 1.5 Hours Earlier than"},
    {"five_and_a_half_behind", -330, "is 5.5 Hours Earlier than"},
    {"two_and_a_half_ahead_singular_hour", 150, "is 2.5 Hour Later than"},
    {"five_and_a_half_ahead_singular_hour", 330, "is 5.5 Hour Later than"},
    {"half_behind", -30, ".5 Hours earlier than"},
    {"half_ahead", 30, ".5 Hours Later than"},
    {"one_ahead", 60, "is 1 Hour Later than"},
    {"one_behind", -60, "is 1 Hour Earlier than"},
    {"two_behind", -120, "is 2 Hours Earlier than"},
    {"eleven_behind", -660, "is 11 Hours Earlier than"},
    {"two_ahead", 120, "is 2 Hours Later than"},
    {"fourteen_ahead", 840, "is 14 Hours Later than"},
    {"same", 0, "Is the same time as"},
};

struct Sentence : ::testing::TestWithParam<SentenceRow> {};

TEST_P(Sentence, ReadsAsTheProgramAlwaysWroteIt) {
    EXPECT_EQ(time_difference_sentence(GetParam().minutes), QString::fromUtf8(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Differences, Sentence, ::testing::ValuesIn(sentence_rows),
                         [](const ::testing::TestParamInfo<SentenceRow>& info) {
                             return std::string(info.param.name);
                         });

} // namespace
} // namespace orva
