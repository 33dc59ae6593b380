#include "view_fixtures.h"

#include "views/status.h"

#include <gtest/gtest.h>

namespace orva::testing {
namespace {

struct YearCase {
    const char* name;
    QDate date;
    int day;
    int left;
};

class YearPosition : public ::testing::TestWithParam<YearCase> {};

TEST_P(YearPosition, CountsFromDecemberThirtyFirstBefore) {
    const YearCase& c = GetParam();
    EXPECT_EQ(year_day(c.date), c.day);
    EXPECT_EQ(days_remaining(c.date), c.left);
}

INSTANTIATE_TEST_SUITE_P(
    Status, YearPosition,
    ::testing::Values(YearCase{"JanuaryFirstCommon", QDate(2026, 1, 1), 1, 364},
                      YearCase{"JanuaryFirstLeap", QDate(2028, 1, 1), 1, 365},
                      YearCase{"MidMarch", QDate(2026, 3, 15), 74, 291},
                      YearCase{"LeapDay", QDate(2028, 2, 29), 60, 306},
                      YearCase{"MarchFirstLeap", QDate(2028, 3, 1), 61, 305},
                      YearCase{"JanuaryThirtyFirst", QDate(2026, 1, 31), 31, 334},
                      YearCase{"DecemberThirtyFirstCommon", QDate(2026, 12, 31), 365, 0},
                      YearCase{"DecemberThirtyFirstLeap", QDate(2028, 12, 31), 366, 0}),
    [](const ::testing::TestParamInfo<YearCase>& i) { return std::string(i.param.name); });

class Status : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;

    QString panel(const char* key) { return s.status_panels[QString::fromLatin1(key)].text; }
    QString tip(const char* key) { return s.status_panels[QString::fromLatin1(key)].tip; }
};

TEST_F(Status, JanuaryFirstIsDayOne) {
    s.cur_date = QDate(2026, 1, 1);
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Day   1");
    EXPECT_EQ(panel("daysLeft"), "364 Days remain");
    s.cur_date = QDate(2028, 1, 1);
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("daysLeft"), "365 Days remain");
}

TEST_F(Status, DecemberThirtyFirstLeavesNothing) {
    s.cur_date = QDate(2026, 12, 31);
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Day   365");
    EXPECT_EQ(panel("daysLeft"), "0 Days remain");
    s.view_week = true;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Week   52");
    EXPECT_EQ(panel("daysLeft"), "0 Weeks remain");
}

TEST_F(Status, FirstSixDaysAreWeekZero) {
    s.view_week = true;
    s.cur_date = QDate(2026, 1, 6);
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Week   0");
    EXPECT_EQ(panel("daysLeft"), "52 Weeks remain");
    s.cur_date = QDate(2026, 1, 7);
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Week   1");
    EXPECT_EQ(panel("daysLeft"), "51 Weeks remain");
}

TEST_F(Status, DayPlannerPanels) {
    s.day_appts = 3;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("nbrAppts "), "3   Appointments");
    EXPECT_EQ(panel("cFile"), s.cal_path);
    EXPECT_EQ(panel("yrDay"), "  Day   74");
    EXPECT_EQ(panel("daysLeft"), "291 Days remain");
}

TEST_F(Status, WeekPlannerCountsTheWeek) {
    s.view_week = true;
    s.day_appts = 1;
    s.week_appts = 9;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("nbrAppts "), "9   Appointments");
    EXPECT_EQ(panel("yrDay"), "  Week   10");
    EXPECT_EQ(panel("daysLeft"), "42 Weeks remain");
}

TEST_F(Status, MonthPlannerShowsTheMonth) {
    s.view_month = true;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Month   3");
    EXPECT_EQ(panel("daysLeft"), "9 months remain");
    s.cur_date = QDate(2026, 12, 1);
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("yrDay"), "  Month   12");
    EXPECT_EQ(panel("daysLeft"), "0 months remain");
}

TEST_F(Status, SingularForOnePluralForNone) {
    s.day_appts = 1;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("nbrAppts "), "1   Appointment");
    s.day_appts = 0;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("nbrAppts "), "0   Appointments");
}

TEST_F(Status, MonthCountIsAllLoadedRows) {
    // Two months loaded after a spanning week: the planner counts every row.
    s.view_month = true;
    s.day_appts = 2;
    s.month_appts = 7;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("nbrAppts "), "7   Appointments");
    s.month_appts = 1;
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("nbrAppts "), "1   Appointment");
}

TEST_F(Status, FileIsTheCalendarPathAsItStands) {
    s.cal_path.clear();
    show_status(s.store(), s.view());
    EXPECT_EQ(panel("cFile"), "");
}

TEST_F(Status, RecountEnablesClockPrintAndLabels) {
    for (const char* n : {"imageClock", "imagePrint", "Label2", "Label7"})
        s.ctl(n).enabled = false;
    show_status(s.store(), s.view());
    for (const char* n : {"imageClock", "imagePrint", "Label2", "Label7"})
        EXPECT_TRUE(s.ctl(n).enabled) << n;
}

TEST_F(Status, TipsFollowThePlanner) {
    StatusBar1_MouseMove(s);
    EXPECT_EQ(tip("yrDay"), "Number of days  since beginning of year ");
    EXPECT_EQ(tip("daysLeft"), "Days remaining for selected Year ");
    s.view_week = true;
    StatusBar1_MouseMove(s);
    EXPECT_EQ(tip("yrDay"), "Week number ");
    EXPECT_EQ(tip("daysLeft"), "Weeks remaining in the year ");
    s.view_week = false;
    s.view_month = true;
    StatusBar1_MouseMove(s);
    EXPECT_EQ(tip("yrDay"), "Month number ");
    EXPECT_EQ(tip("daysLeft"), "Months remaining in the year ");
}

TEST_F(Status, MenuTogglesTheBarAndLaysOutAgain) {
    ASSERT_TRUE(s.menus.mnuStat);
    mnuStat_Click(s, env.w);
    EXPECT_FALSE(s.menus.mnuStat);
    EXPECT_FALSE(env.w.status_bar);
    EXPECT_EQ(env.w.layouts, 1);
    mnuStat_Click(s, env.w);
    EXPECT_TRUE(s.menus.mnuStat);
    EXPECT_TRUE(env.w.status_bar);
    EXPECT_EQ(env.w.layouts, 2);
}

} // namespace
} // namespace orva::testing
