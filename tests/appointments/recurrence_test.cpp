#include "../views/view_fixtures.h"
#include "appointments/recurrence.h"
#include "core/event_loop.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

QString iso(const QDate& d) {
    return d.toString(Qt::ISODate);
}

// The editor and the shared rule as the save leaves them for the generators:
// a timed entry from 09:00 to 10:00 with a sticker, notes and a reminder.
struct Recurrence : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;
    ApptForm f;
    const QString key = QStringLiteral("150910000309");

    Recurrence() {
        f.Text1 = QStringLiteral("Dentist");
        fill_stickers(f.typeIcombo, QStringLiteral("frmAppt1"));
        f.typeIcombo.select_type(QStringLiteral("Car"));
        f.aptTimePick1 = QTime(9, 0);
        f.aptTimePick2 = QTime(10, 0);
        f.pickers_enabled = true;
        f.Notes = QStringLiteral("Bring the card");
        f.apptDTPicker = env.clock.today();
        f.apptDTPicker_min = QDate(2000, 1, 1);
        f.apptDTPicker_max = env.clock.today().addYears(15);
        s.rem_lead = 30;
        s.rem_unit = 0;
        s.rem_anim = 2;
        s.rem_sound = QStringLiteral("/sounds/bell.wav");
    }
    ~Recurrence() override { install_yield_hook(nullptr); }

    // A period rule (pattern "1 ") from `first` to `until`, built as the save
    // builds it.
    void by_period(const QDate& first, const QString& until, int period, int every) {
        f.apptDTPicker = first;
        s.occ_by_period = true;
        s.occ_by_weekday = false;
        s.occ_period = qint16(period);
        s.occ_every = qint16(every);
        s.occ_until = until;
        f.occurs_field = number_field(s.occ_period);
        build_occurs(s.store(), s.editing(), f, f.occurs_field, key);
    }
    // A weekday rule (pattern "2 "): ordinal 0 first .. 4 last, weekday 0
    // Sunday .. 6 Saturday, month 0 every month or 1..12.
    void by_weekday(const QDate& first, const QString& until, int ordinal, int weekday, int month) {
        f.apptDTPicker = first;
        s.occ_by_period = false;
        s.occ_by_weekday = true;
        s.occ_ordinal = qint16(ordinal);
        s.occ_weekday = qint16(weekday);
        s.occ_month = qint16(month);
        s.occ_every = qint16(weekday);
        s.occ_until = until;
        f.occurs_field = number_field(s.occ_ordinal);
        build_occurs(s.store(), s.editing(), f, f.occurs_field, key);
    }
    // appt_date of rows 1..occur_count, as ISO dates.
    QStringList dates() {
        QStringList out;
        for (int r = 1; r <= s.occur_count; ++r)
            if (const appt_rec* row = s.occur_row(r)) out << iso(text_to_date(row->appt_date));
        return out;
    }
    // The dialog's state after its load over this editor.
    OccursForm loaded() {
        s.appt_form = &f;
        OccursForm o;
        frmOccurs_Load(s.view(), s.editing(), f, o);
        return o;
    }
};

// --- date addition ---------------------------------------------------------

struct DateAddRow {
    const char* name;
    const char* letter;
    qint64 n;
    QDate from, expected;
};

class DateAdd : public ::testing::TestWithParam<DateAddRow> {};

TEST_P(DateAdd, GivesTheDate) {
    const DateAddRow& r = GetParam();
    EXPECT_EQ(iso(date_add(QString::fromLatin1(r.letter), r.n, r.from)), iso(r.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Recurrence, DateAdd,
    ::testing::Values(
        DateAddRow{"MonthFromJanuary31ClampsToFebruary28", "m", 1, {2026, 1, 31}, {2026, 2, 28}},
        DateAddRow{"MonthFromJanuary31InALeapYearClampsToFebruary29",
                   "m",
                   1,
                   {2028, 1, 31},
                   {2028, 2, 29}},
        DateAddRow{"TwoMonthsFromJanuary31GivesMarch31", "m", 2, {2026, 1, 31}, {2026, 3, 31}},
        DateAddRow{"MonthBackFromMarch31ClampsToFebruary28", "m", -1, {2026, 3, 31}, {2026, 2, 28}},
        DateAddRow{"YearFromFebruary29ClampsToFebruary28", "yyyy", 1, {2028, 2, 29}, {2029, 2, 28}},
        DateAddRow{
            "FourYearsFromFebruary29GivesFebruary29", "yyyy", 4, {2028, 2, 29}, {2032, 2, 29}},
        DateAddRow{"WeekIsSevenDays", "ww", 3, {2026, 3, 15}, {2026, 4, 5}},
        DateAddRow{"DaysCrossTheYearEnd", "d", 3, {2026, 12, 30}, {2027, 1, 2}},
        DateAddRow{"UnknownLetterLeavesTheDate", "q", 3, {2026, 3, 15}, {2026, 3, 15}}),
    [](const ::testing::TestParamInfo<DateAddRow>& i) { return std::string(i.param.name); });

TEST_F(Recurrence, DateAddMovesAMomentByHoursAndMinutesAcrossMidnight) {
    const QDateTime at(QDate(2026, 3, 15), QTime(23, 30));
    EXPECT_EQ(date_add(QStringLiteral("h"), 2, at), QDateTime(QDate(2026, 3, 16), QTime(1, 30)));
    EXPECT_EQ(date_add(QStringLiteral("n"), -45, at), QDateTime(QDate(2026, 3, 15), QTime(22, 45)));
    EXPECT_EQ(date_add(QStringLiteral("m"), 1, at), QDateTime(QDate(2026, 4, 15), QTime(23, 30)));
}

TEST_F(Recurrence, PeriodLetterMapsTheFourPeriodsAndNothingElse) {
    EXPECT_EQ(period_letter(QStringLiteral("1 ")), "d");
    EXPECT_EQ(period_letter(QStringLiteral("2 ")), "ww");
    EXPECT_EQ(period_letter(QStringLiteral("3 ")), "m");
    EXPECT_EQ(period_letter(QStringLiteral("4 ")), "yyyy");
    EXPECT_EQ(period_letter(QStringLiteral("0 ")), "");
    EXPECT_EQ(period_letter(QStringLiteral("5 ")), "");
    EXPECT_EQ(period_letter(QStringLiteral("")), "");
}

TEST_F(Recurrence, KeysAreTwoDigitYearMonthDayNumbers) {
    EXPECT_EQ(yymmdd_key(QDate(2026, 3, 15)), 260315);
    EXPECT_EQ(yymmdd_key(QDate(2000, 1, 2)), 102);
    EXPECT_EQ(yymmdd_key(QDate()), 0);
    EXPECT_EQ(until_key(QStringLiteral("12/31/26")), 261231);
    EXPECT_EQ(until_key(QStringLiteral("01/05/07")), 70105);
    EXPECT_EQ(until_key(QStringLiteral("")), 0);
}

// --- lists -----------------------------------------------------------------

struct EveryRow {
    const char* name;
    int period;
    QStringList items;
};

class EveryComboRows : public ::testing::TestWithParam<EveryRow> {};

TEST_P(EveryComboRows, AreExactly) {
    EXPECT_EQ(every_items(GetParam().period), GetParam().items);
}

INSTANTIATE_TEST_SUITE_P(
    Recurrence, EveryComboRows,
    ::testing::Values(EveryRow{"OnceHasOneBlankRow", 0, {" "}},
                      EveryRow{"DailyHasTwoBlanksBeforeDays",
                               1,
                               {"every day", "every 2  days", "every 3  days", "every 4  days",
                                "every 5  days", "every 6  days"}},
                      EveryRow{"WeeklyHasOneBlankBeforeWeeks",
                               2,
                               {"once weekly", "every 2 weeks", "every 3 weeks"}},
                      EveryRow{"MonthlyHasTwoBlanksBeforeMonths",
                               3,
                               {"once monthly", "every 2  months", "every 3  months",
                                "every 4  months", "every 5  months", "every 6  months",
                                "every 7  months", "every 8  months", "every 9  months",
                                "every 10  months", "every 11  months"}},
                      EveryRow{"YearlyHasTwoBlanksBeforeYears",
                               4,
                               {"once yearly", "every 2  years", "every 3  years", "every 4  years",
                                "every 5  years"}},
                      EveryRow{"OtherPeriodHasNone", 5, {}}),
    [](const ::testing::TestParamInfo<EveryRow>& i) { return std::string(i.param.name); });

TEST_F(Recurrence, FixedListsOfTheFormAreExactly) {
    EXPECT_EQ(period_items(), QStringList({"once", "daily", "weekly", "monthly", "yearly"}));
    EXPECT_EQ(ordinal_items(), QStringList({"First", "Second", "Third", "Fourth", "Last"}));
    EXPECT_EQ(weekday_items(), QStringList({"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday",
                                            "Friday", "Saturday"}));
    EXPECT_EQ(month_items(),
              QStringList({"Every month", "January", "February", "March", "April", "May", "June",
                           "July", "August", "September", "October", "November", "December"}));
}

// --- words and captions ----------------------------------------------------

struct WordsRow {
    const char* name;
    const char* pattern;
    int occurs, every, month;
    const char* words;
};

class OccursWords : public ::testing::TestWithParam<WordsRow> {};

TEST_P(OccursWords, AreThePhrase) {
    const WordsRow& r = GetParam();
    EXPECT_EQ(occurs_words(QString::fromLatin1(r.pattern), r.occurs, r.every, r.month),
              QString::fromLatin1(r.words));
}

INSTANTIATE_TEST_SUITE_P(
    Recurrence, OccursWords,
    ::testing::Values(
        WordsRow{"OnceHasNoWords", "1 ", 0, 0, 0, ""},
        WordsRow{"Daily0", "1 ", 1, 0, 0, "every day"},
        WordsRow{"Daily1", "1 ", 1, 1, 0, "every 2 days"},
        WordsRow{"Daily2", "1 ", 1, 2, 0, "every 3 days"},
        WordsRow{"Daily3", "1 ", 1, 3, 0, "every 4 days"},
        WordsRow{"Daily4", "1 ", 1, 4, 0, "every 5 days"},
        WordsRow{"Daily5", "1 ", 1, 5, 0, "every 6 days"},
        WordsRow{"Daily6IsPastTheEnd", "1 ", 1, 6, 0, ""},
        WordsRow{"DailyNegativeIsPastTheEnd", "1 ", 1, -1, 0, ""},
        WordsRow{"Weekly0", "1 ", 2, 0, 0, "once weekly"},
        WordsRow{"Weekly1", "1 ", 2, 1, 0, "every 2 weeks"},
        WordsRow{"Weekly2", "1 ", 2, 2, 0, "every 3 weeks"},
        WordsRow{"Weekly3IsPastTheEnd", "1 ", 2, 3, 0, ""},
        WordsRow{"Monthly0", "1 ", 3, 0, 0, "once monthly"},
        WordsRow{"Monthly1", "1 ", 3, 1, 0, "every 2 months"},
        WordsRow{"Monthly2", "1 ", 3, 2, 0, "every 3 months"},
        WordsRow{"Monthly3", "1 ", 3, 3, 0, "every 4 months"},
        WordsRow{"Monthly4", "1 ", 3, 4, 0, "every 5 months"},
        WordsRow{"Monthly5", "1 ", 3, 5, 0, "every 6 months"},
        WordsRow{"Monthly6", "1 ", 3, 6, 0, "every 7 months"},
        WordsRow{"Monthly7", "1 ", 3, 7, 0, "every 8 months"},
        WordsRow{"Monthly8", "1 ", 3, 8, 0, "every 9 months"},
        WordsRow{"Monthly9", "1 ", 3, 9, 0, "every 10 months"},
        WordsRow{"Monthly10", "1 ", 3, 10, 0, "every 11 months"},
        WordsRow{"Monthly11IsPastTheEnd", "1 ", 3, 11, 0, ""},
        WordsRow{"Yearly0", "1 ", 4, 0, 0, "once yearly"},
        WordsRow{"Yearly1", "1 ", 4, 1, 0, "every 2 years"},
        WordsRow{"Yearly2", "1 ", 4, 2, 0, "every 3 years"},
        WordsRow{"Yearly3", "1 ", 4, 3, 0, "every 4 years"},
        WordsRow{"Yearly4", "1 ", 4, 4, 0, "every 5 years"},
        WordsRow{"Yearly5IsPastTheEnd", "1 ", 4, 5, 0, ""},
        WordsRow{"PeriodFiveHasNoWords", "1 ", 5, 0, 0, ""},
        WordsRow{"MonthIsIgnoredByPeriod", "1 ", 3, 1, 7, "every 2 months"},
        WordsRow{"FirstSundayOfEveryMonth", "2 ", 0, 0, 0, "first Sunday of every month"},
        WordsRow{"SecondMondayOfJanuary", "2 ", 1, 1, 1, "second Monday of January"},
        WordsRow{"ThirdTuesdayOfJune", "2 ", 2, 2, 6, "third Tuesday of June"},
        WordsRow{"FourthWednesdayOfSeptember", "2 ", 3, 3, 9, "fourth Wednesday of September"},
        WordsRow{"LastThursdayOfNovember", "2 ", 4, 4, 11, "last Thursday of November"},
        WordsRow{"LastFridayOfDecember", "2 ", 4, 5, 12, "last Friday of December"},
        WordsRow{"FirstSaturdayOfMarch", "2 ", 0, 6, 3, "first Saturday of March"},
        WordsRow{"OrdinalPastTheEndIsEmpty", "2 ", 5, 1, 0, " Monday of every month"},
        WordsRow{"WeekdayPastTheEndIsEmpty", "2 ", 0, 7, 2, "first  of February"},
        WordsRow{"MonthPastTheEndIsEmpty", "2 ", 1, 0, 13, "second Sunday of "}),
    [](const ::testing::TestParamInfo<WordsRow>& i) { return std::string(i.param.name); });

TEST_F(Recurrence, CaptionOfAOneTimeRuleAsksForTheButton) {
    EXPECT_EQ(occurs_caption(QStringLiteral("1 "), 0, 0, 0, QDate(2026, 3, 15)),
              "This appointment occurs one time.  Click button to change occurrences.");
}

TEST_F(Recurrence, CaptionOfAPeriodRuleNamesIntervalAndEnd) {
    const QDate until(2026, 12, 31);
    EXPECT_EQ(occurs_caption(QStringLiteral("1 "), 1, 1, 0, until),
              "This appointment occurs every 2 days until " + short_date_text(until));
    EXPECT_EQ(occurs_caption(QStringLiteral("1 "), 4, 0, 0, until),
              "This appointment occurs once yearly until " + short_date_text(until));
}

TEST_F(Recurrence, CaptionOfAWeekdayRuleSaysOnThe) {
    const QDate until(2027, 6, 30);
    EXPECT_EQ(occurs_caption(QStringLiteral("2 "), 4, 5, 3, until),
              "This appointment occurs on the last Friday of March until " +
                  short_date_text(until));
    // Ordinal 0 under pattern "2 " is the first, not "one time".
    EXPECT_EQ(occurs_caption(QStringLiteral("2 "), 0, 1, 0, until),
              "This appointment occurs on the first Monday of every month until " +
                  short_date_text(until));
}

TEST_F(Recurrence, SetOccursCaptionReadsTheRowsRuleWithCentury20) {
    s.appt_count = 2;
    appt_rec& a = *s.appt_row(2);
    a = testing::make_appt(QStringLiteral("03152026"), key);
    a.appt_pattern = QStringLiteral("2 ");
    a.appt_occurs = QStringLiteral("1 ");
    a.appt_occurs_every = QStringLiteral("2 ");
    a.appt_occurs_month = QStringLiteral("0 ");
    a.appt_until = QStringLiteral("06/30/27");
    set_occurs_caption(s, f, 2);
    EXPECT_EQ(f.lblOccur, "This appointment occurs on the second Tuesday of every month until " +
                              short_date_text(QDate(2027, 6, 30)));

    a.appt_pattern = QStringLiteral("1 ");
    a.appt_occurs = QStringLiteral("3 ");
    a.appt_occurs_every = QStringLiteral("10");
    set_occurs_caption(s, f, 2);
    EXPECT_EQ(f.lblOccur, "This appointment occurs every 11 months until " +
                              short_date_text(QDate(2027, 6, 30)));

    a.appt_occurs = QStringLiteral("0 ");
    set_occurs_caption(s, f, 2);
    EXPECT_EQ(f.lblOccur, "This appointment occurs one time.  Click button to change occurrences.");
}

// --- the edge cases of the rule --------------------------------------------

TEST_F(Recurrence, DailyFromTodayToTodayGivesOneRowWithOccursOne) {
    by_period(env.clock.today(), QStringLiteral("03/15/26"), 1, 0);
    EXPECT_EQ(s.occur_count, 1);
    EXPECT_EQ(dates(), QStringList({"2026-03-15"}));
    EXPECT_EQ(s.occur_row(1)->appt_occurs.str(), "1 ");
    EXPECT_EQ(s.occur_row(1)->appt_pattern.str(), "1 ");
    EXPECT_TRUE(s.occur_row(2)->appt_date.is_blank());
}

TEST_F(Recurrence, EveryTwoWeeksReopenedAndConfirmedBecomesOnceWeekly) {
    s.new_appt = false;
    s.occ_by_period = true;
    s.occ_period = 2;
    s.occ_every = 1; // "every 2 weeks"
    s.occ_until = QStringLiteral("06/30/26");
    OccursForm o = loaded();
    EXPECT_EQ(o.occursCombo.list_index, 2);
    EXPECT_EQ(o.EveryCombo.text(), "once weekly");
    frmOccurs_OK(s, f, o);
    EXPECT_EQ(s.occ_every, 0);
    EXPECT_EQ(s.occ_period, 2);
    EXPECT_EQ(f.lblOccur,
              "This appointment occurs once weekly until " + short_date_text(QDate(2026, 6, 30)));
}

TEST_F(Recurrence, MonthlyOnThe31stGivesTwelveRowsOnEachMonthsLastDay) {
    by_period(QDate(2026, 1, 31), QStringLiteral("12/31/26"), 3, 0);
    EXPECT_EQ(s.occur_count, 12);
    EXPECT_EQ(dates(), QStringList({"2026-01-31", "2026-02-28", "2026-03-31", "2026-04-30",
                                    "2026-05-31", "2026-06-30", "2026-07-31", "2026-08-31",
                                    "2026-09-30", "2026-10-31", "2026-11-30", "2026-12-31"}));
}

TEST_F(Recurrence, EveryElevenMonthsFromJanuary31GivesDecember31ThenNovember30) {
    by_period(QDate(2026, 1, 31), QStringLiteral("12/31/27"), 3, 10);
    EXPECT_EQ(dates(), QStringList({"2026-01-31", "2026-12-31", "2027-11-30"}));
}

TEST_F(Recurrence, February29YearlyEveryTwoYearsGivesFebruary28AndFebruary29OnLeapYears) {
    by_period(QDate(2028, 2, 29), QStringLiteral("12/31/37"), 4, 1);
    EXPECT_EQ(dates(),
              QStringList({"2028-02-29", "2030-02-28", "2032-02-29", "2034-02-28", "2036-02-29"}));
}

TEST_F(Recurrence, LastFridayAfterThatMonthsLastFridayGivesNoRowForTheFirstMonth) {
    // March 27 2026 is the month's last Friday; the entry starts a day later.
    by_weekday(QDate(2026, 3, 28), QStringLiteral("06/30/26"), 4, 5, 0);
    EXPECT_EQ(dates(), QStringList({"2026-04-24", "2026-05-29", "2026-06-26"}));
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_EQ(s.occur_row(1)->appt_first_date.str(), "03282026");
}

TEST_F(Recurrence, FirstMondayOfMarchFromJulyStartsNextYear) {
    by_weekday(QDate(2026, 7, 10), QStringLiteral("12/31/29"), 0, 1, 3);
    EXPECT_EQ(dates(), QStringList({"2027-03-01", "2028-03-06", "2029-03-05"}));
    for (int r = 1; r <= s.occur_count; ++r) {
        EXPECT_EQ(s.occur_row(r)->appt_first_date.str(), "07102026") << r;
        EXPECT_EQ(s.occur_row(r)->appt_occurs_month.str(), "3 ") << r;
    }
}

TEST_F(Recurrence, FourthAlwaysFindsADayAndOnlyLastReachesAFifth) {
    s.occ_ordinal = 3;
    const QDate first(2026, 1, 1);
    for (QDate month(2026, 1, 1); month < QDate(2029, 1, 1); month = month.addMonths(1)) {
        for (int wd = 0; wd < 7; ++wd) {
            s.occ_weekday = qint16(wd);
            QString text, yymm;
            int stamp = 0;
            find_weekday_in_month(s, first, month, text, yymm, stamp);
            const QDate d = text_to_date(text);
            ASSERT_TRUE(d.isValid()) << iso(month).toStdString() << " weekday " << wd;
            EXPECT_EQ(d.dayOfWeek() % 7, wd);
            EXPECT_GE(d.day(), 22);
            EXPECT_LE(d.day(), 28);
            EXPECT_EQ(yymm, yymm_of(month));
        }
    }
    // March 2026 has five Sundays: the fourth is the 22nd, the last the 29th.
    s.occ_weekday = 0;
    QString text, yymm;
    int stamp = 0;
    find_weekday_in_month(s, first, QDate(2026, 3, 1), text, yymm, stamp);
    EXPECT_EQ(text, "03222026");
    s.occ_ordinal = 4;
    find_weekday_in_month(s, first, QDate(2026, 3, 1), text, yymm, stamp);
    EXPECT_EQ(text, "03292026");
    EXPECT_EQ(stamp, 260329);
}

TEST_F(Recurrence, WeeklyLabelNamesTheWeekdayAndTheSeriesStaysOnIt) {
    s.new_appt = true;
    f.apptDTPicker = QDate(2026, 3, 18); // a Wednesday
    s.occ_period = 2;
    s.occ_until = QStringLiteral("03/18/26");
    OccursForm o = loaded();
    EXPECT_EQ(o.Label1, "on  Wednesday");
    frmOccurs_OK(s, f, o);
    EXPECT_EQ(s.occ_until, "03/31/26");

    by_period(f.apptDTPicker, s.occ_until, 2, 0);
    EXPECT_EQ(dates(), QStringList({"2026-03-18", "2026-03-25"}));
    by_period(f.apptDTPicker, QStringLiteral("04/30/26"), 2, 1);
    EXPECT_EQ(dates(), QStringList({"2026-03-18", "2026-04-01", "2026-04-15", "2026-04-29"}));
    for (int r = 1; r <= s.occur_count; ++r)
        EXPECT_EQ(text_to_date(s.occur_row(r)->appt_date).dayOfWeek(), Qt::Wednesday) << r;
}

TEST_F(Recurrence, NewEntryClickingMthComboGetsTheLastDayOfTheMonthBeforeNextYear) {
    s.new_appt = true;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    Option2_Click(s, f, o);
    EXPECT_EQ(iso(o.untilDTPicker), "2027-03-15");
    o.mthCombo.list_index = 5;
    mthCombo_Click(s, f, o);
    EXPECT_EQ(iso(o.untilDTPicker), "2027-02-28");
}

TEST_F(Recurrence, NewEntryClickingMthComboAfterALeapFebruaryClampsTheYear) {
    s.new_appt = true;
    f.apptDTPicker = QDate(2028, 3, 20);
    s.occ_until = QStringLiteral("03/20/28");
    OccursForm o = loaded();
    Option2_Click(s, f, o);
    mthCombo_Click(s, f, o);
    // February 29 2028 plus one year.
    EXPECT_EQ(iso(o.untilDTPicker), "2029-02-28");
}

TEST_F(Recurrence, EditedEntryClickingMthComboTakesTheEndDateAsItIs) {
    s.new_appt = false;
    s.occ_by_period = false;
    s.occ_until = QStringLiteral("09/15/26");
    OccursForm o = loaded();
    o.mthCombo.list_index = 2;
    mthCombo_Click(s, f, o);
    EXPECT_EQ(iso(o.untilDTPicker), "2026-09-15");
}

// The editor's date change is the other half of this case and is tested with
// the editor; here the form leaves what that change reads as it should.
TEST_F(Recurrence, WeekdayRuleReopenedAfterTheFirstDateMovedKeepsItsEndDate) {
    s.new_appt = false;
    s.occ_by_period = true;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    o.Option1 = false;
    o.Option2 = true;
    Option2_Click(s, f, o);
    o.untilDTPicker = QDate(2026, 9, 30);
    frmOccurs_OK(s, f, o);
    EXPECT_FALSE(s.occ_by_period);
    EXPECT_TRUE(s.occ_by_weekday);
    EXPECT_EQ(s.occ_until, "09/30/26");

    f.apptDTPicker = QDate(2026, 4, 20);
    OccursForm again = loaded();
    EXPECT_TRUE(again.Option2);
    EXPECT_EQ(iso(again.untilDTPicker_min), "2026-04-20");
    EXPECT_EQ(iso(again.untilDTPicker), "2026-09-30");
}

// --- series as tables ------------------------------------------------------

struct SeriesRow {
    const char* name;
    QDate first;
    const char* until;
    bool by_period;
    int a, b, c; // period, every, - or ordinal, weekday, month
    QStringList dates;
};

class Series : public Recurrence, public ::testing::WithParamInterface<SeriesRow> {};

TEST_P(Series, GivesTheDates) {
    const SeriesRow& r = GetParam();
    if (r.by_period)
        by_period(r.first, QString::fromLatin1(r.until), r.a, r.b);
    else
        by_weekday(r.first, QString::fromLatin1(r.until), r.a, r.b, r.c);
    EXPECT_EQ(dates(), r.dates);
}

INSTANTIATE_TEST_SUITE_P(
    Recurrence, Series,
    ::testing::Values(
        SeriesRow{"EveryThreeDaysStopsAtTheEndDate",
                  {2026, 3, 15},
                  "03/24/26",
                  true,
                  1,
                  2,
                  0,
                  {"2026-03-15", "2026-03-18", "2026-03-21", "2026-03-24"}},
        SeriesRow{"EverySixDaysEndsBeforeAnEndDateOffTheStep",
                  {2026, 3, 15},
                  "03/26/26",
                  true,
                  1,
                  5,
                  0,
                  {"2026-03-15", "2026-03-21"}},
        SeriesRow{"DailyRunsOverTheYearEnd",
                  {2026, 12, 30},
                  "01/02/27",
                  true,
                  1,
                  0,
                  0,
                  {"2026-12-30", "2026-12-31", "2027-01-01", "2027-01-02"}},
        SeriesRow{"EveryThreeWeeks",
                  {2026, 3, 15},
                  "05/01/26",
                  true,
                  2,
                  2,
                  0,
                  {"2026-03-15", "2026-04-05", "2026-04-26"}},
        SeriesRow{"MonthlyFromJanuary31InALeapYear",
                  {2028, 1, 31},
                  "05/31/28",
                  true,
                  3,
                  0,
                  0,
                  {"2028-01-31", "2028-02-29", "2028-03-31", "2028-04-30", "2028-05-31"}},
        SeriesRow{"February29YearlyGivesFebruary28ForThreeYears",
                  {2028, 2, 29},
                  "03/01/32",
                  true,
                  4,
                  0,
                  0,
                  {"2028-02-29", "2029-02-28", "2030-02-28", "2031-02-28", "2032-02-29"}},
        SeriesRow{"EveryFiveYears",
                  {2026, 3, 15},
                  "03/15/36",
                  true,
                  4,
                  4,
                  0,
                  {"2026-03-15", "2031-03-15", "2036-03-15"}},
        SeriesRow{"SecondTuesdayCountsFromTheFirstOfTheMonth",
                  {2026, 3, 12},
                  "05/31/26",
                  false,
                  1,
                  2,
                  0,
                  {"2026-04-14", "2026-05-12"}},
        SeriesRow{"FirstSundayIncludesTheFirstDateItself",
                  {2026, 3, 1},
                  "05/31/26",
                  false,
                  0,
                  0,
                  0,
                  {"2026-03-01", "2026-04-05", "2026-05-03"}},
        SeriesRow{"LastSundayTakesAFifthSunday",
                  {2026, 3, 1},
                  "05/31/26",
                  false,
                  4,
                  0,
                  0,
                  {"2026-03-29", "2026-04-26", "2026-05-31"}},
        SeriesRow{"ThirdThursdayOfNovemberEachYear",
                  {2026, 3, 15},
                  "12/31/28",
                  false,
                  2,
                  4,
                  11,
                  {"2026-11-19", "2027-11-18", "2028-11-16"}},
        SeriesRow{"WeekdayPastTheEndDateEndsTheSeries",
                  {2026, 3, 15},
                  "05/02/26",
                  false,
                  0,
                  6,
                  0,
                  {"2026-04-04", "2026-05-02"}}),
    [](const ::testing::TestParamInfo<SeriesRow>& i) { return std::string(i.param.name); });

// The editor refuses such a rule before a save; the generator itself leaves
// the count at the 1 build_occurs set, on a row it has blanked.
TEST_F(Recurrence, EndBeforeTheFirstDateFillsNoRowAndLeavesTheCountAtOne) {
    *s.occur_row(1) = testing::make_appt(QStringLiteral("01012026"), QStringLiteral("oldkey"));
    by_period(QDate(2026, 3, 15), QStringLiteral("03/14/26"), 1, 0);
    EXPECT_EQ(s.occur_count, 1);
    EXPECT_TRUE(s.occur_row(1)->appt_date.is_blank());
    EXPECT_TRUE(s.occur_row(1)->appt_id.is_blank());
    EXPECT_EQ(s.appt_count, 0);
}

// --- rows --------------------------------------------------------------------

TEST_F(Recurrence, PeriodRowsCarryTheEditorAndTheRule) {
    by_period(QDate(2026, 3, 30), QStringLiteral("05/01/26"), 3, 0);
    ASSERT_EQ(s.occur_count, 2);
    const appt_rec& r = *s.occur_row(2);
    EXPECT_EQ(r.appt_first_date.str(), "03302026");
    EXPECT_EQ(r.appt_date.str(), "04302026");
    EXPECT_EQ(r.appt_start.str(), "09:00");
    EXPECT_EQ(r.appt_end.str(), "10:00");
    EXPECT_EQ(r.appt_id.str(), key);
    EXPECT_EQ(r.appt_text.trimmed(), "Dentist");
    EXPECT_EQ(r.appt_type.trimmed(), "Car");
    EXPECT_EQ(r.appt_occurs.str(), "3 ");
    EXPECT_EQ(r.appt_occurs_month.str(), "0 ");
    EXPECT_EQ(r.appt_occurs_every.str(), "0 ");
    EXPECT_EQ(r.appt_until.str(), "05/01/26");
    EXPECT_EQ(r.appt_rem_lead.str(), "30");
    EXPECT_EQ(r.appt_rem_unit.str(), "0 ");
    EXPECT_EQ(r.appt_rem_anim.str(), "2 ");
    EXPECT_EQ(r.appt_rem_text.trimmed(), "/sounds/bell.wav");
    EXPECT_EQ(r.appt_notes.trimmed(), "Bring the card");
    EXPECT_EQ(r.appt_pattern.str(), "1 ");
}

TEST_F(Recurrence, WeekdayRowsCarryOrdinalMonthAndWeekday) {
    f.pickers_enabled = false;
    by_weekday(QDate(2026, 3, 1), QStringLiteral("04/30/26"), 2, 3, 0);
    ASSERT_EQ(s.occur_count, 2);
    const appt_rec& r = *s.occur_row(2);
    EXPECT_EQ(r.appt_first_date.str(), "03012026");
    EXPECT_EQ(r.appt_date.str(), "04152026");
    EXPECT_TRUE(r.appt_start.is_blank());
    EXPECT_TRUE(r.appt_end.is_blank());
    EXPECT_EQ(r.appt_occurs.str(), "2 ");
    EXPECT_EQ(r.appt_occurs_every.str(), "3 ");
    EXPECT_EQ(r.appt_occurs_month.str(), "0 ");
    EXPECT_EQ(r.appt_until.str(), "04/30/26");
    EXPECT_EQ(r.appt_pattern.str(), "2 ");
    EXPECT_EQ(r.appt_id.str(), key);
}

TEST_F(Recurrence, UntimedPeriodRowsHaveBlankTimes) {
    f.pickers_enabled = false;
    by_period(QDate(2026, 3, 15), QStringLiteral("03/16/26"), 1, 0);
    ASSERT_EQ(s.occur_count, 2);
    EXPECT_TRUE(s.occur_row(2)->appt_start.is_blank());
    EXPECT_TRUE(s.occur_row(2)->appt_end.is_blank());
}

TEST_F(Recurrence, PeriodRowsInTheFirstMonthAreCopiedIntoApptTbl) {
    s.appt_count = 2;
    *s.appt_row(3) = testing::make_appt(QStringLiteral("01012026"), QStringLiteral("untouched"));
    by_period(QDate(2026, 3, 30), QStringLiteral("04/02/26"), 1, 0);
    EXPECT_EQ(s.occur_count, 4);
    EXPECT_EQ(s.appt_count, 4);
    EXPECT_EQ(s.appt_row(3)->appt_date.str(), "03302026");
    EXPECT_EQ(s.appt_row(4)->appt_date.str(), "03312026");
    EXPECT_EQ(s.appt_row(4)->appt_id.str(), key);
    EXPECT_EQ(s.appt_row(4)->appt_pattern.str(), "1 ");
    EXPECT_TRUE(s.appt_row(5)->appt_date.is_blank());
}

TEST_F(Recurrence, WeekdayRowsInTheFirstMonthAreCopiedIntoApptTbl) {
    s.appt_count = 1;
    by_weekday(QDate(2026, 3, 1), QStringLiteral("04/30/26"), 0, 0, 0);
    EXPECT_EQ(s.occur_count, 2);
    EXPECT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_row(2)->appt_date.str(), "03012026");
    EXPECT_EQ(s.appt_row(2)->appt_pattern.str(), "2 ");
    EXPECT_TRUE(s.appt_row(3)->appt_date.is_blank());
}

TEST_F(Recurrence, GenerationBlanksTheFiveKeyFieldsOfEveryRowFirst) {
    appt_rec& old = *s.occur_row(4000);
    old = testing::make_appt(QStringLiteral("01012026"), QStringLiteral("oldkey"));
    by_period(QDate(2026, 3, 15), QStringLiteral("03/16/26"), 1, 0);
    EXPECT_TRUE(old.appt_first_date.is_blank());
    EXPECT_TRUE(old.appt_date.is_blank());
    EXPECT_TRUE(old.appt_start.is_blank());
    EXPECT_TRUE(old.appt_end.is_blank());
    EXPECT_TRUE(old.appt_id.is_blank());
    EXPECT_EQ(old.appt_text.trimmed(), "Dentist"); // the others are left
    EXPECT_EQ(old.appt_until.str(), "12/31/26");
}

TEST_F(Recurrence, BuildOccursSetsTheCountToOneAndPassesOverOtherPeriodTexts) {
    s.occur_count = 77;
    *s.occur_row(1) = testing::make_appt(QStringLiteral("01012026"), QStringLiteral("oldkey"));
    s.occ_by_period = true;
    s.occ_until = QStringLiteral("12/31/26");
    build_occurs(s.store(), s.editing(), f, QStringLiteral("0 "), key);
    EXPECT_EQ(s.occur_count, 1);
    EXPECT_EQ(s.occur_row(1)->appt_id.trimmed(), "oldkey");
    build_occurs(s.store(), s.editing(), f, QStringLiteral("5 "), key);
    EXPECT_EQ(s.occur_row(1)->appt_id.trimmed(), "oldkey");
}

TEST_F(Recurrence, BuildOccursUsesTheWeekdayRuleWhateverTheText) {
    f.apptDTPicker = QDate(2026, 3, 1);
    s.occ_by_period = false;
    s.occ_ordinal = 0;
    s.occ_weekday = 0;
    s.occ_month = 0;
    s.occ_until = QStringLiteral("04/30/26");
    build_occurs(s.store(), s.editing(), f, QStringLiteral("0 "), key);
    EXPECT_EQ(dates(), QStringList({"2026-03-01", "2026-04-05"}));
}

TEST_F(Recurrence, GeneratorsYieldOncePerStep) {
    int yields = 0;
    install_yield_hook([&] { ++yields; });
    by_period(QDate(2026, 3, 15), QStringLiteral("03/19/26"), 1, 0);
    EXPECT_EQ(yields, 5);
    yields = 0;
    // March gives no row, then April and May; the month past the end is the
    // last step.
    by_weekday(QDate(2026, 3, 28), QStringLiteral("05/31/26"), 4, 5, 0);
    EXPECT_EQ(s.occur_count, 2);
    EXPECT_EQ(yields, 3);
}

TEST_F(Recurrence, FindWeekdayLeavesTheOutputsWhenTheDayIsBeforeTheFirstDate) {
    s.occ_ordinal = 1;
    s.occ_weekday = 2;
    QString text = QStringLiteral("kept"), yymm = QStringLiteral("kept");
    int stamp = 42;
    find_weekday_in_month(s, QDate(2026, 3, 12), QDate(2026, 3, 31), text, yymm, stamp);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(yymm, "kept");
    EXPECT_EQ(stamp, 42);
    find_weekday_in_month(s, QDate(2026, 3, 12), QDate(2026, 4, 30), text, yymm, stamp);
    EXPECT_EQ(text, "04142026");
    EXPECT_EQ(yymm, "2604");
    EXPECT_EQ(stamp, 260414);
}

// --- the table's limit -------------------------------------------------------

TEST_F(Recurrence, TooManyPeriodRowsEndAtTheTableWithOneCriticalMessage) {
    s.appt_count = 0;
    by_period(QDate(2026, 1, 1), QStringLiteral("12/31/99"), 1, 0);
    EXPECT_EQ(s.occur_count, 6001);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].kind, "message");
    EXPECT_EQ(env.m.shown[0].text, " Could not complete update.  Too many appts!");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Critical);
    EXPECT_EQ(iso(text_to_date(s.occur_row(6000)->appt_date)),
              iso(QDate(2026, 1, 1).addDays(5999)));
    EXPECT_EQ(s.appt_count, 31);
}

TEST_F(Recurrence, ExactlySixThousandPeriodRowsBringNoMessage) {
    const QDate first(2026, 1, 1);
    by_period(first, first.addDays(5999).toString(QStringLiteral("MM/dd/yy")), 1, 0);
    EXPECT_EQ(s.occur_count, 6000);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(Recurrence, TooManyWeekdayRowsEndTheLoopAtTheMessage) {
    // The two-digit year of the comparison lets a rule that ends in 2099 run
    // on past 2100, so only the table stops it.
    by_weekday(QDate(2026, 1, 1), QStringLiteral("12/31/99"), 0, 0, 0);
    EXPECT_EQ(s.occur_count, 6001);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, " Could not complete update.  Too many appts!");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Critical);
    // Month by month up to the end of 2099: December is row 888.
    EXPECT_EQ(s.occur_row(888)->appt_date.str(), "12062099");
    EXPECT_FALSE(s.occur_row(6000)->appt_date.is_blank());
}

// --- the form's logic --------------------------------------------------------

TEST_F(Recurrence, LoadSetsTheEndDateLimitsAndTheFourLists) {
    f.apptDTPicker = QDate(2026, 4, 2);
    s.occ_until = QStringLiteral("04/02/26");
    OccursForm o = loaded();
    EXPECT_EQ(iso(o.untilDTPicker_min), "2026-04-02");
    EXPECT_EQ(iso(o.untilDTPicker_max), "2041-03-15");
    EXPECT_EQ(o.occursCombo.items, period_items());
    EXPECT_EQ(o.occursWCombo.items, ordinal_items());
    EXPECT_EQ(o.everyWkDCombo.items, weekday_items());
    EXPECT_EQ(o.mthCombo.items, month_items());
}

TEST_F(Recurrence, LoadOfAPeriodRuleChoosesOption1) {
    s.new_appt = false;
    s.occ_by_period = true;
    s.occ_period = 3;
    s.occ_every = 4;
    s.occ_ordinal = 2;
    s.occ_until = QStringLiteral("11/30/26");
    OccursForm o = loaded();
    EXPECT_TRUE(o.Option1);
    EXPECT_FALSE(o.Option2);
    EXPECT_EQ(o.occursCombo.list_index, 3);
    EXPECT_EQ(o.EveryCombo.items, every_items(3));
    EXPECT_EQ(o.EveryCombo.list_index, 0);
    EXPECT_EQ(o.occursWCombo.list_index, 0);
    EXPECT_EQ(o.everyWkDCombo.list_index, 0);
    EXPECT_EQ(o.mthCombo.list_index, 0);
    EXPECT_TRUE(o.occursCombo_enabled);
    EXPECT_TRUE(o.EveryCombo_enabled);
    EXPECT_TRUE(o.untilDTPicker_enabled);
    EXPECT_FALSE(o.occursWCombo_enabled);
    EXPECT_FALSE(o.everyWkDCombo_enabled);
    EXPECT_FALSE(o.mthCombo_enabled);
    EXPECT_EQ(o.Label1, "on day 15");
    EXPECT_EQ(iso(o.untilDTPicker), "2026-11-30");
    EXPECT_TRUE(s.occ_by_period);
    EXPECT_FALSE(s.occ_by_weekday);
}

TEST_F(Recurrence, LoadOfAOneTimeRuleLeavesTheEndDateDisabled) {
    s.occ_by_period = true;
    s.occ_period = 0;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    EXPECT_EQ(o.EveryCombo.items, QStringList({" "}));
    EXPECT_FALSE(o.untilDTPicker_enabled);
    EXPECT_TRUE(o.EveryCombo_enabled);
    EXPECT_EQ(o.Label1, "");
}

TEST_F(Recurrence, LoadOfAWeekdayRuleShowsItsRowsAndChoosesOption2) {
    s.new_appt = false;
    s.occ_by_period = false;
    s.occ_by_weekday = true;
    s.occ_period = 3;
    s.occ_ordinal = 4;
    s.occ_weekday = 5;
    s.occ_month = 3;
    s.occ_until = QStringLiteral("12/31/28");
    OccursForm o = loaded();
    EXPECT_FALSE(o.Option1);
    EXPECT_TRUE(o.Option2);
    EXPECT_EQ(o.occursWCombo.text(), "Last");
    EXPECT_EQ(o.everyWkDCombo.text(), "Friday");
    EXPECT_EQ(o.mthCombo.text(), "March");
    EXPECT_EQ(o.occursCombo.list_index, 0);
    EXPECT_FALSE(o.occursCombo_enabled);
    EXPECT_FALSE(o.EveryCombo_enabled);
    EXPECT_TRUE(o.occursWCombo_enabled);
    EXPECT_TRUE(o.everyWkDCombo_enabled);
    EXPECT_TRUE(o.mthCombo_enabled);
    EXPECT_TRUE(o.untilDTPicker_enabled);
    EXPECT_EQ(o.Label1, "");
    EXPECT_EQ(iso(o.untilDTPicker), "2028-12-31");
}

TEST_F(Recurrence, Option2ClickAddsAYearToTheEndOfANewEntry) {
    s.new_appt = true;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    Option2_Click(s, f, o);
    EXPECT_EQ(iso(o.untilDTPicker), "2027-03-15");
    EXPECT_FALSE(s.occ_by_period);
    EXPECT_TRUE(s.occ_by_weekday);
}

TEST_F(Recurrence, EndDateStaysInsideThePickersLimits) {
    s.new_appt = false;
    f.apptDTPicker = QDate(2026, 5, 1);
    s.occ_by_period = false;
    s.occ_until = QStringLiteral("04/10/26");
    OccursForm o = loaded();
    EXPECT_EQ(iso(o.untilDTPicker), "2026-05-01");
    set_until(o, QDate(2050, 1, 1));
    EXPECT_EQ(iso(o.untilDTPicker), "2041-03-15");
}

struct OfferRow {
    const char* name;
    int period;
    bool new_appt;
    QDate first;
    const char* until;
    const char* label;
    QDate offer;
};

class OccursComboOffer : public Recurrence, public ::testing::WithParamInterface<OfferRow> {};

TEST_P(OccursComboOffer, SetsLabelAndEndDate) {
    const OfferRow& r = GetParam();
    s.new_appt = r.new_appt;
    f.apptDTPicker = r.first;
    s.occ_until = QString::fromLatin1(r.until);
    OccursForm o = loaded();
    o.occursCombo.list_index = r.period;
    occursCombo_Click(s, f, o);
    EXPECT_EQ(o.Label1, QString::fromLatin1(r.label));
    EXPECT_EQ(iso(o.untilDTPicker), iso(r.offer));
    EXPECT_EQ(o.EveryCombo.items, every_items(r.period));
    EXPECT_EQ(o.EveryCombo.list_index, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Recurrence, OccursComboOffer,
    ::testing::Values(
        OfferRow{"NewOnceKeepsTheDate", 0, true, {2026, 3, 15}, "03/15/26", "", {2026, 3, 15}},
        OfferRow{
            "NewDailyOffersTheMonthEnd", 1, true, {2026, 3, 15}, "03/15/26", "", {2026, 3, 31}},
        OfferRow{"NewWeeklyOffersTheMonthEnd",
                 2,
                 true,
                 {2026, 3, 15},
                 "03/15/26",
                 "on  Sunday",
                 {2026, 3, 31}},
        OfferRow{"NewMonthlyOffersDecember",
                 3,
                 true,
                 {2026, 3, 15},
                 "03/15/26",
                 "on day 15",
                 {2026, 12, 15}},
        OfferRow{"NewYearlyOffersFourteenYears",
                 4,
                 true,
                 {2026, 3, 15},
                 "03/15/26",
                 "on  March 15",
                 {2040, 3, 15}},
        // The month's length comes from the end date, the day from the first
        // date.
        OfferRow{"NewDailyMixesTheEndMonthWithTheFirstDay",
                 1,
                 true,
                 {2026, 3, 20},
                 "04/10/26",
                 "",
                 {2026, 4, 20}},
        OfferRow{"NewWeeklyUsesTheEndDatesOwnDay",
                 2,
                 true,
                 {2026, 3, 20},
                 "04/10/26",
                 "on  Friday",
                 {2026, 4, 30}},
        OfferRow{"NewMonthlyFromAnEndInApril",
                 3,
                 true,
                 {2026, 3, 20},
                 "04/10/26",
                 "on day 20",
                 {2026, 12, 10}},
        OfferRow{"EditedDailyKeepsTheDate", 1, false, {2026, 3, 15}, "06/30/26", "", {2026, 6, 30}},
        OfferRow{"EditedWeeklyKeepsTheDate",
                 2,
                 false,
                 {2026, 3, 15},
                 "06/30/26",
                 "on  Sunday",
                 {2026, 6, 30}},
        OfferRow{"EditedMonthlyKeepsTheDate",
                 3,
                 false,
                 {2026, 3, 15},
                 "06/30/26",
                 "on day 15",
                 {2026, 6, 30}},
        OfferRow{"EditedYearlyKeepsTheDate",
                 4,
                 false,
                 {2026, 3, 15},
                 "06/30/26",
                 "on  March 15",
                 {2026, 6, 30}}),
    [](const ::testing::TestParamInfo<OfferRow>& i) { return std::string(i.param.name); });

TEST_F(Recurrence, OnceLeavesEndDateAndIntervalEnabledAsTheyWere) {
    s.occ_period = 1;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    ASSERT_TRUE(o.untilDTPicker_enabled);
    o.occursCombo.list_index = 0;
    occursCombo_Click(s, f, o);
    EXPECT_TRUE(o.untilDTPicker_enabled);
    EXPECT_TRUE(o.EveryCombo_enabled);

    Option1_Click(s, f, o); // occ_period 1 again, then the once row by hand
    o.untilDTPicker_enabled = false;
    o.occursCombo.list_index = 0;
    occursCombo_Click(s, f, o);
    EXPECT_FALSE(o.untilDTPicker_enabled);
}

TEST_F(Recurrence, OkWithOption1StoresThePeriodRuleAndTheCaption) {
    s.new_appt = true;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    o.occursCombo.list_index = 1;
    occursCombo_Click(s, f, o);
    o.EveryCombo.list_index = 2;
    frmOccurs_OK(s, f, o);
    EXPECT_EQ(s.occ_period, 1);
    EXPECT_EQ(s.occ_every, 2);
    EXPECT_EQ(s.occ_ordinal, 0);
    EXPECT_EQ(s.occ_weekday, 0);
    EXPECT_EQ(s.occ_month, 0);
    EXPECT_EQ(s.occ_until, "03/31/26");
    EXPECT_TRUE(s.occ_by_period);
    EXPECT_EQ(f.lblOccur,
              "This appointment occurs every 3 days until " + short_date_text(QDate(2026, 3, 31)));
}

TEST_F(Recurrence, OkWithOnceSaysOneTime) {
    s.occ_period = 0;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    frmOccurs_OK(s, f, o);
    EXPECT_EQ(s.occ_period, 0);
    EXPECT_EQ(s.occ_every, 0);
    EXPECT_EQ(f.lblOccur, "This appointment occurs one time.  Click button to change occurrences.");
}

TEST_F(Recurrence, OkWithOption2StoresTheWeekdayInOccEveryToo) {
    s.new_appt = true;
    s.occ_period = 3;
    s.occ_until = QStringLiteral("03/15/26");
    OccursForm o = loaded();
    o.Option1 = false;
    o.Option2 = true;
    Option2_Click(s, f, o);
    o.occursWCombo.list_index = 1;
    o.everyWkDCombo.list_index = 2;
    o.mthCombo.list_index = 0;
    frmOccurs_OK(s, f, o);
    EXPECT_EQ(s.occ_every, 2);
    EXPECT_EQ(s.occ_weekday, 2);
    EXPECT_EQ(s.occ_ordinal, 1);
    EXPECT_EQ(s.occ_month, 0);
    EXPECT_EQ(s.occ_period, 0); // the first row Option2 left in occursCombo
    EXPECT_EQ(s.occ_until, "03/15/27");
    EXPECT_EQ(f.lblOccur, "This appointment occurs on the second Tuesday of every month until " +
                              short_date_text(QDate(2027, 3, 15)));
}

TEST_F(Recurrence, CancelKeepsTheRuleButNotTheOptionFlags) {
    s.new_appt = false;
    s.occ_by_period = true;
    s.occ_period = 1;
    s.occ_every = 3;
    s.occ_until = QStringLiteral("04/30/26");
    f.lblOccur = QStringLiteral("as it was");
    OccursForm o = loaded();
    o.Option1 = false;
    o.Option2 = true;
    Option2_Click(s, f, o);
    o.occursWCombo.list_index = 3;
    o.untilDTPicker = QDate(2026, 8, 1);
    // Cancel: the form goes with no step of its own.
    EXPECT_EQ(s.occ_period, 1);
    EXPECT_EQ(s.occ_every, 3);
    EXPECT_EQ(s.occ_ordinal, 0);
    EXPECT_EQ(s.occ_until, "04/30/26");
    EXPECT_EQ(f.lblOccur, "as it was");
    EXPECT_FALSE(s.occ_by_period);
    EXPECT_TRUE(s.occ_by_weekday);
}

} // namespace
} // namespace orva
