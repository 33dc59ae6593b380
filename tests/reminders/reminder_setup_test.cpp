#include "../views/view_fixtures.h"
#include "reminders/reminder_setup.h"
#include "store/member_format.h"

#include <QDir>
#include <QLocale>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace orva {
namespace {

using testing::ViewEnv;

// The lines of one member of the calendar file; empty when it is missing.
QStringList member_lines(AppState& s, const QString& member) {
    QByteArray bytes;
    if (s.archive.get(s.cal_path, member, bytes) != 0) return {};
    QStringList out = QString::fromLatin1(bytes).split(QStringLiteral("\r\n"));
    if (!out.isEmpty() && out.back().isEmpty()) out.pop_back();
    return out;
}

bool has_member(AppState& s, const QString& member) {
    QByteArray bytes;
    return s.archive.get(s.cal_path, member, bytes) == 0;
}

// An appointment with a reminder of `lead` in `unit` (0 minutes, 1 hours,
// 2 days) on "mmddyyyy" at "hh:mm" (blanks for untimed).
appt_rec with_lead(const QString& date, const QString& start, int lead, int unit,
                   const QString& id = QStringLiteral("010915000312")) {
    appt_rec a = testing::make_appt(date, id, start);
    if (start.trimmed().isEmpty()) {
        a.appt_start.blank();
        a.appt_end.blank();
    }
    a.appt_rem_lead = number_field(qint16(lead));
    a.appt_rem_unit = number_field(qint16(unit));
    a.appt_rem_anim = QStringLiteral("2 ");
    a.appt_rem_text = QStringLiteral("/home/me/ring.wav");
    return a;
}

struct Reminders : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;
    ApptForm editor;

    // The editor is loaded with its "Timed" box as given.
    void editing(bool timed) {
        editor.Check1 = timed;
        s.appt_form = &editor;
    }
    void one_row(const appt_rec& a) {
        s.appt_count = 1;
        *s.appt_row(1) = a;
    }
};

// --- due moment -------------------------------------------------------------

using ReminderDue = Reminders;

TEST_F(ReminderDue, ThirtyMinutesBeforeMarchFirstAtQuarterPastMidnightLandsInFebruary) {
    editing(true);
    one_row(with_lead(QStringLiteral("03012026"), QStringLiteral("00:15"), 30, 0));
    EXPECT_EQ(add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, 1), 0);

    ASSERT_EQ(s.rmdr_count, 1);
    const rmdr_rec& r = *s.rmdr_row(1);
    EXPECT_EQ(r.rmdr_date.str(), "02/28/26");
    EXPECT_EQ(r.rmdr_time.str(), "23:45");
    const QStringList feb = member_lines(s, QStringLiteral("r2602.rmd"));
    ASSERT_EQ(feb.size(), 1);
    EXPECT_EQ(feb[0].toLatin1(), rmdr_line(r));
    EXPECT_FALSE(has_member(s, QStringLiteral("r2603.rmd")));
}

TEST_F(ReminderDue, UntimedEntryOneDayBeforeFallsAtMidnightOfTheDayBefore) {
    editing(false);
    // The start the row carries does not count: the box says untimed.
    one_row(with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 1, 2));
    EXPECT_EQ(add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, 1), 0);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_date.str(), "03/19/26");
    EXPECT_EQ(s.rmdr_row(1)->rmdr_time.str(), "00:00");
}

TEST_F(ReminderDue, TimedBoxCountsFromTheStart) {
    editing(true);
    one_row(with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 1, 2));
    EXPECT_EQ(add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, 1), 0);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_date.str(), "03/19/26");
    EXPECT_EQ(s.rmdr_row(1)->rmdr_time.str(), "14:30");
}

TEST_F(ReminderDue, WithoutAnEditorABlankStartCountsFromMidnight) {
    s.appt_form = nullptr;
    rmdr_rec r;
    make_rmdr(s, r, with_lead(QStringLiteral("03202026"), QStringLiteral("     "), 2, 1));
    EXPECT_EQ(r.rmdr_date.str(), "03/19/26");
    EXPECT_EQ(r.rmdr_time.str(), "22:00");
    make_rmdr(s, r, with_lead(QStringLiteral("03202026"), QStringLiteral("09:00"), 2, 1));
    EXPECT_EQ(r.rmdr_date.str(), "03/20/26");
    EXPECT_EQ(r.rmdr_time.str(), "07:00");
}

TEST_F(ReminderDue, DoesNotDependOnTheMachineTimeZone) {
    const QByteArray was = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    tzset();
    // 02:00 to 03:00 of this day does not exist in New York.
    const QString due =
        rmdr_due_text(with_lead(QStringLiteral("03082026"), QStringLiteral("03:30"), 1, 1), true);
    const QString back =
        rmdr_due_text(with_lead(QStringLiteral("11012026"), QStringLiteral("01:30"), 30, 0), true);
    qputenv("TZ", was);
    tzset();
    EXPECT_EQ(due, "03/08/26 02:30:00");
    EXPECT_EQ(back, "11/01/26 01:00:00");
}

struct DueRow {
    const char* name;
    const char* date;
    const char* start; // blanks: untimed
    int lead, unit;
    const char* due;
};

class DueMoment : public ::testing::TestWithParam<DueRow> {};

TEST_P(DueMoment, IsTheStartLessTheLeadByCalendarRules) {
    const DueRow& row = GetParam();
    const appt_rec a = with_lead(QString::fromLatin1(row.date), QString::fromLatin1(row.start),
                                 row.lead, row.unit);
    EXPECT_EQ(rmdr_due_text(a, !a.appt_start.is_blank()), QString::fromLatin1(row.due));
}

const DueRow due_rows[] = {
    {"MinutesWithinTheDay", "03152026", "09:00", 15, 0, "03/15/26 08:45:00"},
    {"ZeroLeadIsTheStartItself", "03152026", "09:00", 0, 0, "03/15/26 09:00:00"},
    {"HoursAcrossMidnight", "03152026", "01:00", 2, 1, "03/14/26 23:00:00"},
    {"FiftyNineHoursAcrossTwoDays", "03152026", "10:00", 59, 1, "03/12/26 23:00:00"},
    {"DaysAcrossAMonthEnd", "05022026", "08:00", 3, 2, "04/29/26 08:00:00"},
    {"DaysIntoALeapDay", "03012028", "08:00", 1, 2, "02/29/28 08:00:00"},
    {"MinutesAcrossNewYear", "01012027", "00:10", 20, 0, "12/31/26 23:50:00"},
    {"UntimedMinutesFallTheEveningBefore", "03152026", "     ", 45, 0, "03/14/26 23:15:00"},
    {"OtherUnitCountsAsMinutes", "03152026", "09:00", 10, 7, "03/15/26 08:50:00"},
};

INSTANTIATE_TEST_SUITE_P(Leads, DueMoment, ::testing::ValuesIn(due_rows),
                         [](const ::testing::TestParamInfo<DueRow>& info) {
                             return std::string(info.param.name);
                         });

// --- the row ----------------------------------------------------------------

using ReminderRow = Reminders;

TEST_F(ReminderRow, CopiesTheAppointmentAndWaitsWithAgainCountOne) {
    editing(true);
    appt_rec a = with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 10, 0);
    a.appt_first_date = QStringLiteral("03062026");
    a.appt_end = QStringLiteral("15:00");
    a.appt_text = QStringLiteral("Board meeting");
    a.appt_type = QStringLiteral("Car");
    rmdr_rec r;
    r.rmdr_fired = QStringLiteral("T");
    r.rmdr_again_count = QStringLiteral("4 ");
    make_rmdr(s, r, a);
    EXPECT_EQ(r.rmdr_first_date.str(), "03062026");
    EXPECT_EQ(r.rmdr_start.str(), "14:30");
    EXPECT_EQ(r.rmdr_end.str(), "15:00");
    EXPECT_EQ(r.rmdr_id.str(), "010915000312");
    EXPECT_EQ(r.rmdr_text.trimmed(), "Board meeting");
    EXPECT_EQ(r.rmdr_type.trimmed(), "Car");
    EXPECT_EQ(r.rmdr_appt_date.str(), "03202026");
    EXPECT_EQ(r.rmdr_date.str(), "03/20/26");
    EXPECT_EQ(r.rmdr_time.str(), "14:20");
    EXPECT_EQ(r.rmdr_fired.str(), "F");
    EXPECT_EQ(r.rmdr_anim.str(), "2 ");
    EXPECT_EQ(r.rmdr_alarm_text.trimmed(), "/home/me/ring.wav");
    EXPECT_EQ(r.rmdr_again_count.str(), "1 ");
}

struct PastRow {
    const char* name;
    const char* date;
    const char* start;
    const char* fired; // with mark_past set; the clock reads 03/15/26 09:10
};

class MarkPast : public ::testing::TestWithParam<PastRow> {};

TEST_P(MarkPast, DeliversOnlyMomentsAlreadyGone) {
    ViewEnv env;
    env.s.mark_past = true;
    const PastRow& row = GetParam();
    rmdr_rec r;
    make_rmdr(env.s, r,
              with_lead(QString::fromLatin1(row.date), QString::fromLatin1(row.start), 0, 0));
    EXPECT_EQ(r.rmdr_fired.str(), QString::fromLatin1(row.fired));

    env.s.mark_past = false;
    make_rmdr(env.s, r,
              with_lead(QString::fromLatin1(row.date), QString::fromLatin1(row.start), 0, 0));
    EXPECT_EQ(r.rmdr_fired.str(), "F") << "a new entry's rows all wait";
}

const PastRow past_rows[] = {
    {"YesterdayIsPast", "03142026", "23:59", "T"},
    {"LastYearIsPast", "12312025", "10:00", "T"},
    {"EarlierTodayIsPast", "03152026", "09:09", "T"},
    {"ThisVeryMinuteWaits", "03152026", "09:10", "F"},
    {"LaterTodayWaits", "03152026", "09:30", "F"},
    {"TomorrowWaits", "03162026", "00:00", "F"},
};

INSTANTIATE_TEST_SUITE_P(Moments, MarkPast, ::testing::ValuesIn(past_rows),
                         [](const ::testing::TestParamInfo<PastRow>& info) {
                             return std::string(info.param.name);
                         });

// --- add_rmdr ---------------------------------------------------------------

using AddRmdr = Reminders;

TEST_F(AddRmdr, OneRowRaisesTheCountAndAppendsToItsMember) {
    editing(true);
    EXPECT_EQ(append_rmdr_line(
                  s, s.cal_path,
                  testing::make_rmdr(QStringLiteral("03/10/26"), QStringLiteral("100915000312"))),
              0);
    s.rmdr_count = 2;
    one_row(with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 5, 0));
    EXPECT_EQ(add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, 1), 0);
    EXPECT_EQ(s.rmdr_count, 3);
    EXPECT_EQ(s.rmdr_row(3)->rmdr_time.str(), "14:25");
    const QStringList mar = member_lines(s, QStringLiteral("r2603.rmd"));
    ASSERT_EQ(mar.size(), 2);
    EXPECT_EQ(mar[1].toLatin1(), rmdr_line(*s.rmdr_row(3)));
}

TEST_F(AddRmdr, RowsPastTheTableLimitArePassedOverSilently) {
    editing(true);
    s.rmdr_count = rmdr_limit;
    one_row(with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 5, 0));
    EXPECT_EQ(add_rmdr(s.store(), s.editing(), append_mode, s.cal_path, 1), 0);
    EXPECT_EQ(s.rmdr_count, rmdr_limit + 1);
    EXPECT_EQ(s.rmdr_row(rmdr_limit + 1), nullptr);
    EXPECT_TRUE(s.archive.members(s.cal_path).filter(QStringLiteral(".rmd")).isEmpty());
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(AddRmdr, RebuildMakesOneRowForEveryAppointmentInView) {
    s.appt_form = nullptr;
    s.rmdr_count = 9;
    s.appt_count = 3;
    *s.appt_row(1) = with_lead(QStringLiteral("03012026"), QStringLiteral("00:15"), 30, 0,
                               QStringLiteral("010001000312"));
    *s.appt_row(2) = with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 1, 1,
                               QStringLiteral("200002000312"));
    *s.appt_row(3) = with_lead(QStringLiteral("04022026"), QStringLiteral("     "), 2, 2,
                               QStringLiteral("020003000312"));
    EXPECT_EQ(add_rmdr(s.store(), s.editing(), rewrite_mode, s.cal_path, 0), 0);
    EXPECT_EQ(s.rmdr_count, 3);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_date.str(), "02/28/26");
    EXPECT_EQ(s.rmdr_row(2)->rmdr_time.str(), "13:30");
    EXPECT_EQ(s.rmdr_row(3)->rmdr_date.str(), "03/31/26");
    EXPECT_EQ(s.rmdr_row(3)->rmdr_time.str(), "00:00");
    EXPECT_EQ(member_lines(s, QStringLiteral("r2602.rmd")).size(), 1);
    EXPECT_EQ(member_lines(s, QStringLiteral("r2603.rmd")).size(), 2);
    EXPECT_FALSE(has_member(s, QStringLiteral("r2604.rmd")));
}

// --- make_series_rmdrs ------------------------------------------------------

using SeriesRmdrs = Reminders;

TEST_F(SeriesRmdrs, AreWrittenMonthByMonthOneMonthEarlierWhereTheLeadCrossesIt) {
    editing(true);
    s.rmdr_count = 7;
    s.occur_count = 4;
    const char* dates[] = {"03012026", "03152026", "04012026", "05012026"};
    for (int i = 1; i <= 4; ++i)
        *s.occur_row(i) =
            with_lead(QString::fromLatin1(dates[i - 1]), QStringLiteral("00:15"), 30, 0);
    EXPECT_EQ(make_series_rmdrs(s.store(), s.editing()), 0);

    EXPECT_EQ(s.rmdr_count, 7) << "the count is the caller's to reload";
    EXPECT_EQ(s.rmdr_row(1)->rmdr_date.str(), "02/28/26");
    EXPECT_EQ(s.rmdr_row(2)->rmdr_date.str(), "03/14/26");
    EXPECT_EQ(s.rmdr_row(3)->rmdr_date.str(), "03/31/26");
    EXPECT_EQ(s.rmdr_row(4)->rmdr_date.str(), "04/30/26");
    const QStringList feb = member_lines(s, QStringLiteral("r2602.rmd"));
    const QStringList mar = member_lines(s, QStringLiteral("r2603.rmd"));
    const QStringList apr = member_lines(s, QStringLiteral("r2604.rmd"));
    ASSERT_EQ(feb.size(), 1);
    ASSERT_EQ(mar.size(), 2);
    ASSERT_EQ(apr.size(), 1);
    EXPECT_EQ(mar[0].toLatin1(), rmdr_line(*s.rmdr_row(2)));
    EXPECT_EQ(mar[1].toLatin1(), rmdr_line(*s.rmdr_row(3)));
    EXPECT_FALSE(has_member(s, QStringLiteral("r2605.rmd")));
    EXPECT_TRUE(QDir(env.dir.path()).entryList({QStringLiteral("*.rmd")}, QDir::Files).isEmpty())
        << "no loose copy is left behind";
}

TEST_F(SeriesRmdrs, OfAnEditMarkTheirPastRowsDelivered) {
    editing(true);
    s.mark_past = true;
    s.occur_count = 3;
    *s.occur_row(1) = with_lead(QStringLiteral("03082026"), QStringLiteral("09:00"), 15, 0);
    *s.occur_row(2) = with_lead(QStringLiteral("03152026"), QStringLiteral("09:20"), 15, 0);
    *s.occur_row(3) = with_lead(QStringLiteral("03152026"), QStringLiteral("09:30"), 15, 0);
    EXPECT_EQ(make_series_rmdrs(s.store(), s.editing()), 0);
    const QStringList mar = member_lines(s, QStringLiteral("r2603.rmd"));
    ASSERT_EQ(mar.size(), 3);
    EXPECT_EQ(mar[0].mid(116, 1), "T");
    EXPECT_EQ(mar[1].mid(116, 1), "T"); // 09:05 is before 09:10
    EXPECT_EQ(mar[2].mid(116, 1), "F"); // 09:15 is still to come
}

TEST_F(SeriesRmdrs, RowsPastTheTableLimitArePassedOver) {
    editing(true);
    s.occur_count = rmdr_limit + 2;
    const QDate first(2026, 1, 1);
    for (int i = 1; i <= s.occur_count; ++i)
        *s.occur_row(i) = with_lead(first.addDays(i - 1).toString(QStringLiteral("MMddyyyy")),
                                    QStringLiteral("12:00"), 1, 1);
    EXPECT_EQ(make_series_rmdrs(s.store(), s.editing()), 0);
    qsizetype lines = 0;
    for (const QString& m : s.archive.members(s.cal_path))
        if (m.endsWith(QStringLiteral(".rmd"))) lines += member_lines(s, m).size();
    EXPECT_EQ(lines, rmdr_limit);
    const QStringList last = member_lines(s, rmdr_member_name(yymm_of(first.addDays(4499))));
    ASSERT_FALSE(last.isEmpty());
    EXPECT_EQ(last.back().mid(95, 8), first.addDays(4499).toString(QStringLiteral("MMddyyyy")));
    EXPECT_TRUE(env.m.shown.empty());
}

// --- the dialog's logic -----------------------------------------------------

struct RemSetup : Reminders {
    RemForm f;

    // The editor open on row 1 of appt_tbl, an entry of 03/20/2026 14:30.
    appt_rec& editing_row(bool is_new) {
        s.new_appt = is_new;
        s.rem_from = QStringLiteral("apptfrm");
        one_row(with_lead(QStringLiteral("03202026"), QStringLiteral("14:30"), 15, 0));
        s.edit_index = 1;
        editor.Text1 = QStringLiteral("Dentist");
        editor.apptDTPicker = QDate(2026, 3, 20);
        editor.aptTimePick1 = QTime(14, 30);
        editor.aptTimePick2 = QTime(15, 0);
        editing(true);
        return *s.appt_row(1);
    }
    void delivered_row(const appt_rec& a, const QString& fired, const QString& again) {
        ++s.rmdr_count;
        rmdr_rec& r = *s.rmdr_row(s.rmdr_count);
        make_rmdr(s, r, a);
        r.rmdr_fired = fired;
        r.rmdr_again_count = again;
    }
};

TEST_F(RemSetup, AmountsAboveFiftyNineCannotBeChosen) {
    editing_row(false);
    s.rem_lead = 59;
    frmRem1_Load(s, f);
    ASSERT_EQ(f.advComboN.items.size(), 60);
    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(f.advComboN.items[i], QString::number(i));
    EXPECT_EQ(f.advComboN.list_index, 59);
    EXPECT_EQ(f.advComboN.text(), "59");
}

TEST_F(RemSetup, UnitAndMessengerListsAreFixed) {
    editing_row(false);
    frmRem1_Load(s, f);
    EXPECT_EQ(f.advComboInt.items, QStringList({"Minutes before", "Hours before", "Days before"}));
    EXPECT_EQ(f.animateIcombo.items,
              QStringList({" None", " Plane Towing USA Banner", " Plane with no Banner"}));
    EXPECT_EQ(f.animate_keys, QStringList({"None", "Flag", "Plane"}));
}

TEST_F(RemSetup, ListsShowTheWorkingValues) {
    editing_row(false);
    s.rem_lead = 30;
    s.rem_unit = 1;
    s.rem_anim = 3;
    frmRem1_Load(s, f);
    EXPECT_EQ(f.advComboN.list_index, 30);
    EXPECT_EQ(f.advComboInt.list_index, 1);
    EXPECT_EQ(f.animateIcombo.list_index, 2);
}

TEST_F(RemSetup, NewAppointmentHidesTheShownCountAndLeavesTheSoundEmpty) {
    editing_row(true);
    s.rem_sound = QStringLiteral("/home/me/ring.wav");
    s.rem_lead = 10;
    s.old_lead = 7;
    frmRem1_Load(s, f);
    EXPECT_FALSE(f.lblNtimes_visible);
    EXPECT_EQ(f.alarmTxt, "");
    EXPECT_EQ(s.old_lead, 7);
}

TEST_F(RemSetup, EditNotesTheOpeningValuesAndShowsTheSound) {
    editing_row(false);
    s.rem_lead = 10;
    s.rem_unit = 2;
    s.rem_anim = 3;
    s.rem_sound = QStringLiteral("/home/me/ring.wav");
    frmRem1_Load(s, f);
    EXPECT_TRUE(f.lblNtimes_visible);
    EXPECT_EQ(f.alarmTxt, "/home/me/ring.wav");
    EXPECT_EQ(s.old_lead, 10);
    EXPECT_EQ(s.old_unit, 2);
    EXPECT_EQ(s.old_anim, 3);
}

TEST_F(RemSetup, WaitingRowShowsNotShownYetEvenAfterARemindAgain) {
    const appt_rec& a = editing_row(false);
    delivered_row(a, QStringLiteral("F"), QStringLiteral("3 "));
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblNtimes, "* This reminder has not been shown yet!");
}

TEST_F(RemSetup, DeliveredOnceReadsTime) {
    const appt_rec& a = editing_row(false);
    delivered_row(a, QStringLiteral("T"), QStringLiteral("1 "));
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblNtimes, "* This reminder has been shown 1 time this month");
}

TEST_F(RemSetup, DeliveredAgainReadsTimes) {
    const appt_rec& a = editing_row(false);
    delivered_row(a, QStringLiteral("T"), QStringLiteral("12"));
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblNtimes, "* This reminder has been shown 12 times this month");
}

TEST_F(RemSetup, OnlyTheFirstMatchingRowCounts) {
    const appt_rec& a = editing_row(false);
    appt_rec other = a;
    other.appt_date = QStringLiteral("03272026");
    delivered_row(other, QStringLiteral("T"), QStringLiteral("5 "));
    delivered_row(a, QStringLiteral("F"), QStringLiteral("2 "));
    delivered_row(a, QStringLiteral("T"), QStringLiteral("4 "));
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblNtimes, "* This reminder has not been shown yet!");
}

TEST_F(RemSetup, RowOfAnotherOccurrenceIsNoMatch) {
    const appt_rec& a = editing_row(false);
    appt_rec other = a;
    other.appt_start = QStringLiteral("14:31");
    delivered_row(other, QStringLiteral("T"), QStringLiteral("2 "));
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblNtimes, "* This reminder has not been shown yet!");
}

TEST_F(RemSetup, RemindMeReadsAtUntilTheDayViewIsFilled) {
    editing_row(false);
    s.day_filled = false;
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblRemindMe, "Remind me at : ");
    s.day_filled = true;
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblRemindMe, "Remind me: ");
}

TEST_F(RemSetup, SliderTakesTheSpeedAndZeroIsStoredBackAsOne) {
    editing_row(false);
    s.anim_speed = 4;
    frmRem1_Load(s, f);
    EXPECT_EQ(f.Slider1, 4);
    s.anim_speed = 0;
    frmRem1_Load(s, f);
    EXPECT_EQ(f.Slider1, 1);
    EXPECT_EQ(s.anim_speed, 1);
}

TEST_F(RemSetup, SliderChangeSetsTheSpeed) {
    editing_row(false);
    frmRem1_Load(s, f);
    f.Slider1 = 7;
    Slider1_Change(s, f);
    EXPECT_EQ(s.anim_speed, 7);
}

TEST_F(RemSetup, TitleAndLabelComeFromTheEditor) {
    editing_row(false);
    frmRem1_Load(s, f);
    EXPECT_EQ(f.caption, "Reminder Setup for - Dentist");
    EXPECT_EQ(f.lblAppt, "  02:30 pm   03/20/2026");
}

TEST_F(RemSetup, UntimedEntryShowsItsMidnightInTheTimedForm) {
    editing_row(false);
    editor.Check1 = false;
    editor.aptTimePick1 = QTime(0, 0);
    editor.aptTimePick2 = QTime(0, 0);
    frmRem1_Load(s, f);
    EXPECT_EQ(f.lblAppt, "  12:00 am   03/20/2026");
}

TEST(RemApptLabel, UntimedFormOnlyForLiteralZeroTimes) {
    EXPECT_EQ(rem_appt_label("00:00", "00:00", "03/20/2026"),
              "Untimed appointment - Reminders based on 12:00 AM time    Appt Date   03/20/2026");
    EXPECT_EQ(rem_appt_label("00:00", "01:00 am", "03/20/2026"), "  00:00   03/20/2026");
    EXPECT_EQ(rem_appt_label("12:00 am", "12:00 am", "03/20/2026"), "  12:00 am   03/20/2026");
}

TEST(AmPmText, IsTwoDigitLowerCaseWhateverTheLocale) {
    const QLocale was;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(am_pm_text(QTime(0, 0)), "12:00 am");
    EXPECT_EQ(am_pm_text(QTime(9, 5)), "09:05 am");
    EXPECT_EQ(am_pm_text(QTime(12, 0)), "12:00 pm");
    EXPECT_EQ(am_pm_text(QTime(23, 59)), "11:59 pm");
    QLocale::setDefault(was);
}

TEST_F(RemSetup, OkWithAChangeMarksTheEditorsReminderLabel) {
    editing_row(false);
    s.rem_lead = 15;
    editor.lblRem = QStringLiteral("before");
    frmRem1_Load(s, f);
    f.animateIcombo.list_index = 1;
    EXPECT_TRUE(frmRem1_OK(s, f));
    EXPECT_EQ(editor.lblRem, " Reminder was changed.");
    EXPECT_EQ(s.rem_anim, 2);
}

TEST_F(RemSetup, OkWithoutAChangeLeavesTheEditorsReminderLabel) {
    editing_row(false);
    s.rem_lead = 15;
    s.rem_unit = 1;
    s.rem_anim = 3;
    s.rem_sound = QStringLiteral("/home/me/ring.wav");
    editor.lblRem = QStringLiteral("before");
    frmRem1_Load(s, f);
    EXPECT_TRUE(frmRem1_OK(s, f));
    EXPECT_EQ(editor.lblRem, "before");
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(RemSetup, OkStoresAllFour) {
    editing_row(false);
    s.rem_lead = 15;
    frmRem1_Load(s, f);
    f.advComboN.list_index = 45;
    f.advComboInt.list_index = 2;
    f.animateIcombo.list_index = 2;
    f.alarmTxt = QStringLiteral("/home/me/bell.mp3");
    EXPECT_TRUE(frmRem1_OK(s, f));
    EXPECT_EQ(s.rem_lead, 45);
    EXPECT_EQ(s.rem_unit, 2);
    EXPECT_EQ(s.rem_anim, 3);
    EXPECT_EQ(s.rem_sound, "/home/me/bell.mp3");
}

TEST_F(RemSetup, ZeroLeadAsksFirstAndNoKeepsTheDialogOpenWithTheLeadAlreadyZero) {
    editing_row(false);
    s.rem_lead = 15;
    s.rem_unit = 0;
    frmRem1_Load(s, f);
    f.advComboN.list_index = 0;
    f.advComboInt.list_index = 1;
    env.m.answers.push_back(Answer::No);
    EXPECT_FALSE(frmRem1_OK(s, f));
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].kind, "question");
    EXPECT_EQ(env.m.shown[0].text, " Setting a reminder to zero time will deactivate the "
                                   "reminder.  Do you want to continue? ");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Question);
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_unit, 0) << "nothing after the question is stored";

    frmRem1_Cancel(f);
    EXPECT_EQ(s.rem_lead, 0) << "Cancel keeps the lead written before the question";
}

TEST_F(RemSetup, ZeroLeadYesStoresAndCloses) {
    editing_row(false);
    s.rem_lead = 15;
    frmRem1_Load(s, f);
    f.advComboN.list_index = 0;
    f.advComboInt.list_index = 2;
    env.m.answers.push_back(Answer::Yes);
    EXPECT_TRUE(frmRem1_OK(s, f));
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_unit, 2);
}

TEST_F(RemSetup, CancelKeepsTheWorkingValues) {
    editing_row(false);
    s.rem_lead = 15;
    s.rem_unit = 1;
    frmRem1_Load(s, f);
    f.advComboN.list_index = 40;
    f.advComboInt.list_index = 2;
    frmRem1_Cancel(f);
    EXPECT_EQ(s.rem_lead, 15);
    EXPECT_EQ(s.rem_unit, 1);
}

TEST_F(RemSetup, BrowseOffersTheWavFilterWithItsNamePreset) {
    editing_row(false);
    frmRem1_Load(s, f);
    env.m.file_answers.push_back(QStringLiteral("/home/me/Sounds/chime.wav"));
    Command5_Click(f);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown.back().kind, "open");
    EXPECT_EQ(env.m.shown.back().text, "WAV Files (*.wav)|*.cal|MP3 Files (*.MP3)|*.MP3");
    EXPECT_EQ(env.m.shown.back().preset, "*.wav");
    EXPECT_EQ(f.alarmTxt, "/home/me/Sounds/chime.wav");
}

TEST_F(RemSetup, BrowseIgnoresThePatternsABlankAndNothing) {
    editing_row(false);
    s.rem_sound = QStringLiteral("/home/me/ring.wav");
    frmRem1_Load(s, f);
    for (const char* answer : {"*.wav", "*.MP3", " ", ""}) {
        env.m.file_answers.push_back(QString::fromLatin1(answer));
        Command5_Click(f);
        EXPECT_EQ(f.alarmTxt, "/home/me/ring.wav") << answer;
    }
}

TEST_F(RemSetup, AnyMessengerSelectionVoidsTheChoice) {
    editing_row(false);
    s.msg_anim = QStringLiteral("2");
    frmRem1_Load(s, f);
    f.animateIcombo.list_index = 2;
    animateIcombo_Click(s, f);
    EXPECT_EQ(s.msg_anim, "Jet Set");
}

// --- open_rem_setup ----------------------------------------------------------

struct OpenRemSetup : RemSetup {
    // What the dialog showed when the seam opened it.
    RemForm seen;
    bool opened = false;

    // The dialog loads, then `act` plays the user's part.
    void dialog_does(std::function<void(RemForm&)> act) {
        env.m.forms[QStringLiteral("frmRem1")] = [this, act] {
            opened = true;
            frmRem1_Load(s, seen);
            act(seen);
        };
    }
    // A stored row of 03/15/2026 in appt_tbl and on file, as a load leaves it.
    appt_rec& stored(const QString& start, int lead) {
        appt_rec a = with_lead(QStringLiteral("03152026"), start, lead, 0);
        a.appt_rem_anim = QStringLiteral("0 ");
        a.appt_text = QStringLiteral("Dentist");
        env.add(a);
        return *s.appt_row(1);
    }
};

TEST_F(OpenRemSetup, FromTheEditorOpensTheDialogAndNotesWhoAsked) {
    editing_row(false);
    dialog_does([](RemForm&) {});
    open_rem_setup(s, QStringLiteral("apptfrm"));
    EXPECT_TRUE(opened);
    EXPECT_EQ(s.rem_from, "apptfrm");
    EXPECT_EQ(env.m.last(u"form")->text, "frmRem1");
    EXPECT_EQ(seen.caption, "Reminder Setup for - Dentist");
}

TEST_F(OpenRemSetup, StoredRowLoadsItsReminderAndTitle) {
    stored(QStringLiteral("09:30"), 20);
    dialog_does([](RemForm&) {});
    open_rem_setup(s, QStringLiteral("CalDtlRem"), 1);
    EXPECT_EQ(s.rem_from, "CalDtlRem");
    EXPECT_EQ(s.rem_row, 1);
    EXPECT_EQ(s.rem_lead, 20);
    EXPECT_EQ(s.rem_unit, 0);
    EXPECT_EQ(s.rem_anim, 1) << "a stored 0 counts as none";
    EXPECT_EQ(s.rem_sound, "/home/me/ring.wav");
    EXPECT_EQ(seen.caption, "Reminder Setup - Dentist");
    EXPECT_EQ(seen.lblAppt, "  09:30 am   03/15/2026");
    EXPECT_EQ(seen.advComboN.list_index, 20);
}

TEST_F(OpenRemSetup, StoredUntimedRowHasItsOwnLabel) {
    stored(QStringLiteral("     "), 20);
    dialog_does([](RemForm&) {});
    open_rem_setup(s, QStringLiteral("CalDtlRem"), 1);
    EXPECT_EQ(seen.lblAppt,
              "Untimed appointment - Reminder based on 12:00 AM time   Appt Date   03/15/2026");
}

TEST_F(OpenRemSetup, StoredRowWithATabInItsStartIsLabelledUntimedAsThePlannerShowsIt) {
    stored(QStringLiteral("\t9:30"), 20);
    dialog_does([](RemForm&) {});
    open_rem_setup(s, QStringLiteral("CalDtlRem"), 1);
    EXPECT_EQ(seen.lblAppt,
              "Untimed appointment - Reminder based on 12:00 AM time   Appt Date   03/15/2026");
}

TEST_F(OpenRemSetup, StoredRowIsNeverTakenForANewEntry) {
    stored(QStringLiteral("09:30"), 20);
    s.new_appt = true; // left over from the last editor
    dialog_does([](RemForm&) {});
    open_rem_setup(s, QStringLiteral("CalDtlRem"), 1);
    EXPECT_TRUE(seen.lblNtimes_visible);
    EXPECT_EQ(seen.alarmTxt, "/home/me/ring.wav");
}

TEST_F(OpenRemSetup, StoredRowLeftAsItWasWritesNothing) {
    stored(QStringLiteral("09:30"), 20);
    const QStringList before = member_lines(s, QStringLiteral("c2603.cal"));
    dialog_does([this](RemForm& f) { EXPECT_TRUE(frmRem1_OK(s, f)); });
    open_rem_setup(s, QStringLiteral("CalDtlRem"), 1);
    EXPECT_EQ(member_lines(s, QStringLiteral("c2603.cal")), before);
    EXPECT_TRUE(s.archive.members(s.cal_path).filter(QStringLiteral(".rmd")).isEmpty());
}

TEST_F(OpenRemSetup, StoredRowChangedIsRewrittenAndItsRemindersRebuilt) {
    stored(QStringLiteral("09:30"), 20);
    appt_rec other = with_lead(QStringLiteral("03182026"), QStringLiteral("11:00"), 0, 0,
                               QStringLiteral("180011000312"));
    env.add(other);
    ASSERT_EQ(s.appt_count, 2);
    dialog_does([this](RemForm& f) {
        f.advComboN.list_index = 2;
        f.advComboInt.list_index = 1;
        EXPECT_TRUE(frmRem1_OK(s, f));
    });
    open_rem_setup(s, QStringLiteral("CalDtlRem"), 1);

    const QStringList appts = member_lines(s, QStringLiteral("c2603.cal"));
    ASSERT_EQ(appts.size(), 2);
    EXPECT_EQ(appts[0].mid(117, 6), "2 1 1 ");
    EXPECT_EQ(appts[1].mid(26, 12), "180011000312");
    // The rebuild makes a row for every entry in view, the other's too.
    const QStringList rmdrs = member_lines(s, QStringLiteral("r2603.rmd"));
    ASSERT_EQ(rmdrs.size(), 2);
    EXPECT_EQ(rmdrs[0].mid(103, 8), "03/15/26");
    EXPECT_EQ(rmdrs[0].mid(111, 5), "07:30");
    EXPECT_EQ(rmdrs[1].mid(103, 8), "03/18/26");
    EXPECT_EQ(rmdrs[1].mid(111, 5), "11:00");
    EXPECT_EQ(s.rmdr_count, 2) << "reloaded from the file";
    EXPECT_EQ(s.rmdr_row(1)->rmdr_time.str(), "07:30");
}

// --- previews ---------------------------------------------------------------

using Preview = Reminders;

TEST_F(Preview, SoundPathOfBlanksWarnsToSelectAFileFirst) {
    RemForm f;
    f.alarmTxt = QString(150, QLatin1Char(' '));
    prevwCmd_Click(s, f, 0);
    ASSERT_EQ(env.m.messages(), std::vector<QString>{"You must select a file first "});
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
    EXPECT_FALSE(s.preview_sound);
}

TEST_F(Preview, EmptySoundPathWarnsToSelectAFile) {
    RemForm f;
    prevwCmd_Click(s, f, 0);
    EXPECT_EQ(env.m.messages(), std::vector<QString>{"You must select a file "});
}

TEST_F(Preview, SoundPreviewOpensTheNoteInItsSoundMode) {
    RemForm f;
    f.alarmTxt = QStringLiteral("/home/me/ring.wav");
    bool seen = false;
    env.m.forms["frmRemnote"] = [&] { seen = s.preview_sound && !s.preview_anim; };
    prevwCmd_Click(s, f, 0);
    EXPECT_TRUE(seen);
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(Preview, MessengerNoneDoesNothing) {
    RemForm f;
    f.animateIcombo.items = {" None", " Plane Towing USA Banner", " Plane with no Banner"};
    f.animateIcombo.list_index = 0;
    prevwCmd_Click(s, f, 1);
    EXPECT_TRUE(env.m.shown.empty());
    EXPECT_FALSE(s.preview_anim);
}

TEST_F(Preview, MessengerPreviewSetsTheChoiceFromTheList) {
    RemForm f;
    f.animateIcombo.items = {" None", " Plane Towing USA Banner", " Plane with no Banner"};
    f.animateIcombo.list_index = 1;
    prevwCmd_Click(s, f, 1);
    EXPECT_EQ(s.msg_anim, "2");
    ASSERT_EQ(env.m.shown.size(), 2u);
    EXPECT_EQ(env.m.shown[0].text, "frmAnimate");
    EXPECT_EQ(env.m.shown[1].text, "frmRemnote");
    EXPECT_TRUE(s.preview_anim);
}

} // namespace
} // namespace orva
