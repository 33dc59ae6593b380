#include "overview_fixtures.h"

#include "views/month_view.h"
#include "views/navigator.h"
#include "views/week_view.h"

#include <gtest/gtest.h>

namespace orva::testing {
namespace {

class WeekPlanner : public OverviewPlanner {
  protected:
    WeekPlanner() : OverviewPlanner(15000, 9000) {}
    void show() { imageWeek_Click(s, env.w); }
};

const QDate monday16(2026, 3, 16);
const QDate sunday22(2026, 3, 22);

QString header(const QDate& d) {
    return QLocale().dayName(d.dayOfWeek(), QLocale::ShortFormat) + "  " +
           QLocale().monthName(d.month()) + d.toString(" dd,yyyy");
}

// --- the week around a date -------------------------------------------------------

TEST_F(WeekPlanner, WeekRunsFromMondayAndASundayEndsIt) {
    EXPECT_EQ(week_start_of(QDate(2026, 3, 18)), monday16);
    EXPECT_EQ(week_end_of(QDate(2026, 3, 18)), sunday22);
    EXPECT_EQ(week_start_of(monday16), monday16);
    EXPECT_EQ(week_end_of(monday16), sunday22);
    EXPECT_EQ(week_start_of(QDate(2026, 3, 21)), monday16);
    EXPECT_EQ(week_start_of(sunday22), monday16);
    EXPECT_EQ(week_end_of(sunday22), sunday22);
}

TEST_F(WeekPlanner, SundayCurDateEndsTheWeekAndTakesTheCursorToRow16OfColumn2) {
    ASSERT_EQ(s.cur_date.dayOfWeek(), Qt::Sunday);
    show();
    EXPECT_EQ(s.week_start, QDate(2026, 3, 9));
    EXPECT_EQ(s.week_end, QDate(2026, 3, 15));
    EXPECT_EQ(s.vsOvervw.Row(), 16);
    EXPECT_EQ(s.vsOvervw.Col(), 2);
    EXPECT_EQ(text(15, 2), header(QDate(2026, 3, 15)));
}

TEST_F(WeekPlanner, CursorStandsBelowTheHeaderOfCurDate) {
    s.cur_date = QDate(2026, 3, 20); // a Friday
    show();
    EXPECT_EQ(s.vsOvervw.Row(), 11);
    EXPECT_EQ(s.vsOvervw.Col(), 1);
    s.cur_date = QDate(2026, 3, 18); // a Wednesday
    show();
    EXPECT_EQ(s.vsOvervw.Row(), 1);
    EXPECT_EQ(s.vsOvervw.Col(), 2);
}

// --- shape and headers ----------------------------------------------------------

TEST_F(WeekPlanner, GridHasTwentyRowsThreeColumnsAndNoFixedCells) {
    show();
    EXPECT_EQ(s.vsOvervw.Rows(), 20);
    EXPECT_EQ(s.vsOvervw.Cols(), 3);
    EXPECT_EQ(s.vsOvervw.FixedRows(), 0);
    EXPECT_EQ(s.vsOvervw.FixedCols(), 0);
}

TEST_F(WeekPlanner, HeaderReadsShortDayNameAndTheDate) {
    EXPECT_EQ(week_header_text(QDate(2026, 3, 5)), QLocale().dayName(4, QLocale::ShortFormat) +
                                                       "  " + QLocale().monthName(3) + " 05,2026");
    EXPECT_EQ(week_header_text(monday16), QLocale().dayName(1, QLocale::ShortFormat) + "  " +
                                              QLocale().monthName(3) + " 16,2026");
}

TEST_F(WeekPlanner, HeadersStandWhereTheDiaryPutsThem) {
    s.cur_date = monday16;
    show();
    EXPECT_EQ(text(0, 0), header(monday16));
    EXPECT_EQ(text(0, 1), header(QDate(2026, 3, 17)));
    EXPECT_EQ(text(0, 2), header(QDate(2026, 3, 18)));
    EXPECT_EQ(text(10, 0), header(QDate(2026, 3, 19)));
    EXPECT_EQ(text(10, 1), header(QDate(2026, 3, 20)));
    EXPECT_EQ(text(10, 2), header(QDate(2026, 3, 21)));
    EXPECT_EQ(text(15, 2), header(sunday22));
    EXPECT_TRUE(cell(CellSetting::FontBold, 15, 2).toBool());
    EXPECT_EQ(cell(CellSetting::Alignment, 10, 1).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(Color(cell(CellSetting::BackColor, 15, 2).toUInt()), s.vsSched.BackColorFixed());
    EXPECT_EQ(Color(cell(CellSetting::ForeColor, 0, 1).toUInt()), s.vsSched.ForeColorFixed());
}

TEST_F(WeekPlanner, EachDayCarriesItsDataOverItsHeaderAndLines) {
    s.cur_date = monday16;
    show();
    for (int r = 0; r <= 9; ++r) {
        EXPECT_EQ(data(r, 0), "03162026?") << r;
        EXPECT_EQ(data(r, 1), "03172026?") << r;
        EXPECT_EQ(data(r, 2), "03182026?") << r;
    }
    for (int r = 10; r <= 18; ++r) {
        EXPECT_EQ(data(r, 0), "03192026?") << r;
        EXPECT_EQ(data(r, 1), "03202026?") << r;
    }
    for (int r = 10; r <= 14; ++r)
        EXPECT_EQ(data(r, 2), "03212026?") << r;
    for (int r = 15; r <= 18; ++r)
        EXPECT_EQ(data(r, 2), "03222026?") << r;
}

TEST_F(WeekPlanner, RowNineteenIsNeverUsed) {
    s.cur_date = monday16;
    add_many(QDate(2026, 3, 19), 10);
    show();
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(data(19, c), "") << c;
        EXPECT_EQ(text(19, c), "") << c;
    }
    EXPECT_EQ(text(18, 0), "more...");
}

TEST_F(WeekPlanner, SwitchingToTheWeekSetsTheFlagsAndTheTitle) {
    s.view_month = true;
    s.cur_date = monday16;
    show();
    EXPECT_TRUE(s.view_week);
    EXPECT_FALSE(s.view_month);
    EXPECT_FALSE(s.view_day);
    EXPECT_FALSE(s.ctl("mnuColor").enabled);
    EXPECT_TRUE(s.ctl("vsOvervw").visible);
    EXPECT_FALSE(s.ctl("vsSched").visible);
    EXPECT_TRUE(s.ctl("imgTzone").visible);
    EXPECT_EQ(s.ctl("Label1").text, QLocale().toString(monday16, QLocale::LongFormat) + "  - " +
                                        QLocale().toString(sunday22, QLocale::LongFormat));
    EXPECT_GE(env.w.layouts, 1);
}

TEST_F(WeekPlanner, RowsShareTheWholeHeightAndColumnsTheWidthLessTheAllowance) {
    s.vsOvervw.set_extent(15000, 12000);
    show();
    // 12000 / 20 = 600; (15000 - 400) / 3 = 4866.
    EXPECT_EQ(s.vsOvervw.RowHeight(5), 600);
    EXPECT_EQ(s.vsOvervw.ColWidth(1), 4866);
    s.vsOvervw.set_extent(3000, 3000);
    show();
    EXPECT_EQ(s.vsOvervw.RowHeight(5), 360);
    EXPECT_EQ(s.vsOvervw.ColWidth(1), 1902);
}

// --- lines --------------------------------------------------------------------------

TEST_F(WeekPlanner, PicturedLineWithAndWithoutShowTimes) {
    s.cur_date = monday16;
    env.add(on(monday16, "a", "14:05", "Dentist", "Car"));
    s.menus.mnuShowTimes = true;
    show();
    EXPECT_EQ(text(1, 0), "2:05 pm   Dentist");
    EXPECT_EQ(cell(CellSetting::Picture, 1, 0).toString(), "Car");
    EXPECT_EQ(cell(CellSetting::PictureAlignment, 1, 0).toInt(), int(Align::LeftCenter));
    EXPECT_EQ(cell(CellSetting::Alignment, 1, 0).toInt(), int(Align::LeftCenter));
    EXPECT_EQ(data(1, 0), "03162026? index=1");
    s.menus.mnuShowTimes = false;
    show();
    EXPECT_EQ(text(1, 0), "   Dentist");
    EXPECT_EQ(cell(CellSetting::Picture, 1, 0).toString(), "Car");
}

TEST_F(WeekPlanner, LineWithoutPictureStartsWhereAPicturedTextStarts) {
    s.cur_date = monday16;
    env.add(on(monday16, "a", "09:00", "Gym", ""));
    s.menus.mnuShowTimes = true;
    show();
    EXPECT_EQ(text(1, 0), "     9:00 am   Gym");
    EXPECT_EQ(cell(CellSetting::Picture, 1, 0).toString(), "");
    s.menus.mnuShowTimes = false;
    show();
    EXPECT_EQ(text(1, 0), "      Gym");
    EXPECT_EQ(data(1, 0), "03162026? index=1");
}

TEST_F(WeekPlanner, UntimedLineShowsBlanksForItsStart) {
    s.cur_date = monday16;
    env.add(on(QDate(2026, 3, 17), "a", "     ", "Holiday", "Car"));
    s.menus.mnuShowTimes = true;
    show();
    EXPECT_EQ(text(1, 1), "        Holiday");
    EXPECT_EQ(data(1, 1), "03172026? index=1");
}

TEST_F(WeekPlanner, LinesOfADayFollowTheirStart) {
    s.cur_date = monday16;
    env.add(on(monday16, "a", "14:00", "Late"));
    env.add(on(monday16, "b", "     ", "All day"));
    env.add(on(monday16, "c", "09:00", "Early"));
    env.add(on(QDate(2026, 3, 21), "d", "10:00", "Saturday"));
    show();
    EXPECT_EQ(text(1, 0), "   All day");
    EXPECT_EQ(text(2, 0), "   Early");
    EXPECT_EQ(text(3, 0), "   Late");
    EXPECT_EQ(data(3, 0), "03162026? index=1");
    EXPECT_EQ(text(11, 2), "   Saturday");
    EXPECT_EQ(s.week_appts, 4);
}

TEST_F(WeekPlanner, EntriesOutsideTheWeekStayOut) {
    s.cur_date = monday16;
    env.add(on(QDate(2026, 3, 15), "a", "09:00", "Sunday before"));
    env.add(on(QDate(2026, 3, 23), "b", "09:00", "Monday after"));
    env.add(on(sunday22, "c", "09:00", "Sunday within"));
    show();
    EXPECT_EQ(s.week_appts, 1);
    EXPECT_EQ(text(16, 2), "   Sunday within");
    EXPECT_EQ(text(1, 0), "");
}

TEST_F(WeekPlanner, TenEntriesOnAMondayShowEightAndMore) {
    s.cur_date = monday16;
    add_many(monday16, 10);
    show();
    for (int i = 1; i <= 8; ++i) {
        EXPECT_EQ(text(i, 0), QStringLiteral("   Entry %1").arg(i)) << i;
        EXPECT_EQ(data(i, 0), QStringLiteral("03162026? index=%1").arg(i)) << i;
    }
    EXPECT_EQ(text(9, 0), "more...");
    EXPECT_EQ(cell(CellSetting::Alignment, 9, 0).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(cell(CellSetting::Picture, 9, 0).toString(), "");
    // The line keeps the data of the entry it covers.
    EXPECT_EQ(data(9, 0), "03162026? index=9");
    EXPECT_EQ(s.week_appts, 10);
}

TEST_F(WeekPlanner, NineEntriesOnAMondayAllShow) {
    s.cur_date = monday16;
    add_many(monday16, 9);
    show();
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(text(i, 0), QStringLiteral("   Entry %1").arg(i)) << i;
    EXPECT_EQ(data(9, 0), "03162026? index=9");
    EXPECT_EQ(text(10, 0), header(QDate(2026, 3, 19)));
}

TEST_F(WeekPlanner, FourthSundayEntryWritesMoreIntoRow18) {
    s.cur_date = sunday22;
    add_many(sunday22, 4);
    show();
    EXPECT_EQ(text(16, 2), "   Entry 1");
    EXPECT_EQ(text(17, 2), "   Entry 2");
    EXPECT_EQ(text(18, 2), "more...");
    EXPECT_EQ(data(18, 2), "03222026? index=3");
    EXPECT_EQ(data(19, 2), "");
    EXPECT_EQ(text(19, 2), "");
}

TEST_F(WeekPlanner, ThreeSundayEntriesAllShow) {
    s.cur_date = sunday22;
    add_many(sunday22, 3);
    show();
    EXPECT_EQ(text(18, 2), "   Entry 3");
}

TEST_F(WeekPlanner, FifthSaturdayEntryWritesMoreIntoRow14) {
    s.cur_date = monday16;
    add_many(QDate(2026, 3, 21), 5);
    show();
    EXPECT_EQ(text(13, 2), "   Entry 3");
    EXPECT_EQ(text(14, 2), "more...");
    EXPECT_EQ(text(15, 2), header(sunday22));
}

TEST_F(WeekPlanner, NinthThursdayEntryWritesMoreIntoRow18) {
    s.cur_date = monday16;
    add_many(QDate(2026, 3, 19), 9);
    show();
    EXPECT_EQ(text(17, 0), "   Entry 7");
    EXPECT_EQ(text(18, 0), "more...");
}

TEST_F(WeekPlanner, ClickOnMoreOpensThatDayInTheDayPlanner) {
    s.cur_date = QDate(2026, 3, 18);
    add_many(monday16, 10);
    show();
    ASSERT_EQ(text(9, 0), "more...");
    vsOvervw_Click(s, env.w, 9, 0);
    EXPECT_TRUE(s.view_day);
    EXPECT_FALSE(s.view_week);
    EXPECT_EQ(s.cur_date, monday16);
    EXPECT_EQ(s.day_appts, 10);
}

// --- months around the week ----------------------------------------------------------

TEST_F(WeekPlanner, WeekFromMonday29ToSunday4ShowsEntriesOfBothMonths) {
    const QDate mon(2027, 3, 29), fri(2027, 4, 2);
    ASSERT_EQ(mon.dayOfWeek(), Qt::Monday);
    s.cur_date = QDate(2027, 3, 31);
    env.add(on(mon, "m", "09:00", "March entry"));
    env.add(on(fri, "a", "09:00", "April entry"));
    env.add(on(QDate(2027, 4, 4), "s", "09:00", "Sunday entry"));
    ASSERT_EQ(s.appt_count, 1);
    show();
    EXPECT_EQ(s.week_start, mon);
    EXPECT_EQ(s.week_end, QDate(2027, 4, 4));
    EXPECT_EQ(s.appt_count, 3);
    EXPECT_EQ(text(1, 0), "   March entry");
    EXPECT_TRUE(data(1, 0).startsWith("03292027? index="));
    EXPECT_EQ(text(11, 1), "   April entry");
    EXPECT_TRUE(data(11, 1).startsWith("04022027? index="));
    EXPECT_EQ(text(16, 2), "   Sunday entry");
    const int i = overvw_entry(s.view(), 11, 1);
    ASSERT_NE(s.appt_row(i), nullptr);
    EXPECT_EQ(s.appt_row(i)->appt_text.trimmed(), "April entry");
    EXPECT_EQ(s.week_appts, 3);
}

TEST_F(WeekPlanner, WeekFromDecember29LoadsBothYearsAndMovesTheListsToTheMonday) {
    const QDate mon(2025, 12, 29);
    ASSERT_EQ(mon.dayOfWeek(), Qt::Monday);
    s.cur_date = QDate(2026, 1, 2);
    docombos(s.store(), s.view());
    ASSERT_EQ(s.Combo2.text(), "2026");
    env.add(on(QDate(2025, 12, 30), "d", "09:00", "December entry"));
    env.add(on(QDate(2026, 1, 2), "j", "09:00", "January entry"));
    ASSERT_EQ(s.appt_count, 1);
    show();
    EXPECT_EQ(s.appt_count, 2);
    EXPECT_EQ(text(1, 1), "   December entry");
    EXPECT_EQ(text(11, 1), "   January entry");
    EXPECT_EQ(s.Combo2.text(), "2025");
    EXPECT_EQ(s.Combo1.text(), QLocale().monthName(12));
    EXPECT_FALSE(s.combo_lock);
}

TEST_F(WeekPlanner, WeekInsideAMonthLeavesTheMonthListAlone) {
    s.cur_date = QDate(2026, 3, 18);
    docombos(s.store(), s.view());
    s.Combo1.list_index = 5;
    s.Combo2.list_index = 2027 - 2001;
    show();
    EXPECT_EQ(s.Combo1.text(), QLocale().monthName(6));
    EXPECT_EQ(s.Combo2.text(), "2026");
}

TEST_F(WeekPlanner, WeekInsideAMonthReadsNothing) {
    s.cur_date = monday16;
    env.add(on(monday16, "a", "09:00", "Dentist"));
    s.appt_row(1)->appt_text = QStringLiteral("Only in memory");
    show();
    EXPECT_EQ(text(1, 0), "   Only in memory");
}

TEST_F(WeekPlanner, UnreadableDateShowsTheSrtwkdayGuard) {
    s.cur_date = monday16;
    env.add(on(monday16, "a", "09:00", "Dentist"));
    env.add(on(QDate(2026, 3, 17), "b", "09:00", "Gym"));
    s.appt_row(1)->appt_date = QStringLiteral("13452026");
    show();
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_TRUE(
        env.m.messages()[0].startsWith(" srtwkday is zero because appt date = 13452026 odate = "))
        << env.m.messages()[0].toStdString();
    EXPECT_EQ(text(1, 1), "   Gym");
    EXPECT_EQ(text(1, 0), "");
    EXPECT_EQ(s.week_appts, 1);
}

// --- typing ------------------------------------------------------------------------

TEST_F(WeekPlanner, HeaderCellsCannotBeTyped) {
    s.cur_date = monday16;
    show();
    for (int c = 0; c < 3; ++c) {
        EXPECT_TRUE(vsOvervw_BeforeEdit(s, 0, c)) << c;
        EXPECT_TRUE(vsOvervw_BeforeEdit(s, 10, c)) << c;
    }
    EXPECT_TRUE(vsOvervw_BeforeEdit(s, 15, 2));
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(WeekPlanner, FreeLineCanBeTypedAndMovesCurDateToItsDay) {
    s.cur_date = monday16;
    show();
    s.new_appt = true;
    // Row 15 is a Thursday line in the first column, not a header.
    EXPECT_FALSE(vsOvervw_BeforeEdit(s, 15, 0));
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 19));
    EXPECT_FALSE(s.new_appt);
    EXPECT_FALSE(vsOvervw_BeforeEdit(s, 3, 2));
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 18));
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(WeekPlanner, UnusedRowCannotBeTyped) {
    s.cur_date = monday16;
    show();
    EXPECT_TRUE(vsOvervw_BeforeEdit(s, 19, 0));
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(WeekPlanner, LineWithAnEntryAsksForADoubleClick) {
    s.cur_date = monday16;
    env.add(on(monday16, "a", "09:00", "Dentist"));
    show();
    EXPECT_TRUE(vsOvervw_BeforeEdit(s, 1, 0));
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Double click to edit appointment");
}

TEST_F(WeekPlanner, TypingOnAFreeLineMakesAnEntryAndRefillsTheWeek) {
    s.cur_date = monday16;
    show();
    ASSERT_FALSE(vsOvervw_BeforeEdit(s, 4, 1));
    s.vsOvervw.setTextMatrix(4, 1, "Call Bob");
    vsOvervw_AfterEdit(s, env.w, 4, 1);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_date.str(), "03172026");
    EXPECT_TRUE(s.view_week);
    EXPECT_EQ(text(1, 1), "   Call Bob");
    EXPECT_EQ(data(1, 1), "03172026? index=1");
    EXPECT_EQ(text(4, 1), "");
}

} // namespace
} // namespace orva::testing
