#include "overview_fixtures.h"

#include "views/month_view.h"
#include "views/navigator.h"
#include "views/week_view.h"

#include <gtest/gtest.h>

namespace orva::testing {
namespace {

// The cell of the day-number row of `d` on its month's planner: weeks run
// Sunday to Saturday, five rows a week under the header row.
struct DayCell {
    int row, col;
};
DayCell day_cell(const QDate& d) {
    const int pos = QDate(d.year(), d.month(), 1).dayOfWeek() % 7 + d.day() - 1;
    return {1 + 5 * (pos / 7), pos % 7};
}

class MonthPlanner : public OverviewPlanner {
  protected:
    MonthPlanner() : OverviewPlanner(17000, 9000) {}
    void show() { imageMonth_Click(s, env.w); }
};

const QDate monday16(2026, 3, 16); // row 11, column 1 of March 2026

// --- shape of the month -------------------------------------------------------

TEST_F(MonthPlanner, HeaderNamesTheWeekdaysFromSunday) {
    show();
    ASSERT_EQ(s.vsOvervw.Cols(), 7);
    EXPECT_EQ(s.vsOvervw.FixedRows(), 1);
    EXPECT_EQ(s.vsOvervw.FixedCols(), 0);
    EXPECT_EQ(text(0, 0), "Sunday");
    EXPECT_EQ(text(0, 3), "Wednesday");
    EXPECT_EQ(text(0, 6), "Saturday");
}

TEST_F(MonthPlanner, FebruaryOfACommonYearBeginningOnSundayTakesFourWeeks) {
    const QDate feb(2026, 2, 10);
    ASSERT_EQ(QDate(2026, 2, 1).dayOfWeek(), Qt::Sunday);
    ASSERT_FALSE(QDate::isLeapYear(2026));
    s.cur_date = feb;
    show();
    EXPECT_EQ(month_weeks(feb), 4);
    EXPECT_EQ(s.vsOvervw.Rows(), 21);
    EXPECT_FALSE(s.FiveWeeks);
    EXPECT_EQ(text(1, 0), " 1");
    EXPECT_EQ(text(16, 6), " 28");
    EXPECT_EQ(data(20, 6), "02282026?");
}

TEST_F(MonthPlanner, ThirtyOneDayMonthBeginningOnSaturdayTakesSixWeeks) {
    const QDate aug(2026, 8, 20);
    ASSERT_EQ(QDate(2026, 8, 1).dayOfWeek(), Qt::Saturday);
    ASSERT_EQ(aug.daysInMonth(), 31);
    s.cur_date = aug;
    show();
    EXPECT_EQ(month_weeks(aug), 6);
    EXPECT_EQ(s.vsOvervw.Rows(), 31);
    EXPECT_FALSE(s.FiveWeeks);
    EXPECT_EQ(text(1, 6), " 1");
    EXPECT_EQ(text(26, 1), " 31");
    EXPECT_EQ(data(30, 1), "08312026?");
}

TEST_F(MonthPlanner, FiveWeekMonthTakesTwentySixRows) {
    show();
    EXPECT_EQ(s.vsOvervw.Rows(), 26);
    EXPECT_TRUE(s.FiveWeeks);
}

TEST_F(MonthPlanner, EveryCellOfADayCarriesTheDayAndAQuestionMark) {
    show();
    const DayCell c = day_cell(QDate(2026, 3, 14));
    ASSERT_EQ(c.row, 6);
    ASSERT_EQ(c.col, 6);
    for (int r = c.row; r < c.row + 5; ++r)
        EXPECT_EQ(data(r, c.col), "03142026?") << r;
    EXPECT_EQ(text(c.row, c.col), " 14");
    EXPECT_EQ(cell(CellSetting::Alignment, c.row, c.col).toInt(), int(Align::RightTop));
    // March 2026 ends on a Tuesday: the Wednesday after it is no day.
    EXPECT_EQ(data(21, 3), "");
    EXPECT_EQ(text(21, 3), "");
}

TEST_F(MonthPlanner, DateCellOfCurDateIsNotedAndSelected) {
    show();
    EXPECT_EQ(s.sel_mth_row, 11);
    EXPECT_EQ(s.sel_mth_col, 0);
    EXPECT_EQ(s.vsOvervw.Row(), 11);
    EXPECT_EQ(s.vsOvervw.Col(), 0);
}

TEST_F(MonthPlanner, SwitchingToTheMonthSetsTheFlagsAndTheTitle) {
    s.view_day = true;
    env.add(on(monday16, "a", "09:00", "Dentist"));
    for (const char* n : {"mnudelete", "mnuCopy", "mnuEditA"})
        s.ctl(n).enabled = true;
    show();
    EXPECT_TRUE(s.view_month);
    EXPECT_FALSE(s.view_day);
    EXPECT_FALSE(s.view_week);
    for (const char* n : {"mnudelete", "mnuCopy", "mnuEditA"})
        EXPECT_FALSE(s.ctl(n).enabled) << n;
    EXPECT_TRUE(s.ctl("vsOvervw").visible);
    EXPECT_FALSE(s.ctl("vsSched").visible);
    EXPECT_FALSE(s.ctl("Cal").visible);
    EXPECT_FALSE(s.ctl("mnuColor").enabled);
    EXPECT_EQ(s.ctl("Label1").text, QLocale().monthName(3) + "   2026");
    EXPECT_EQ(s.month_appts, s.appt_count);
    EXPECT_EQ(s.month_appts, 1);
    EXPECT_GE(env.w.layouts, 1);
}

TEST_F(MonthPlanner, ListsFollowCurDateWithoutReadingTheFile) {
    docombos(s.store(), s.view());
    env.add(on(QDate(2027, 4, 8), "b", "09:00", "April entry"));
    ASSERT_EQ(s.appt_count, 0);
    s.cur_date = QDate(2027, 4, 8);
    show();
    EXPECT_EQ(s.Combo1.text(), QLocale().monthName(4));
    EXPECT_EQ(s.Combo2.text(), "2027");
    EXPECT_EQ(s.appt_count, 0);
    const DayCell c = day_cell(s.cur_date);
    EXPECT_EQ(data(c.row + 1, c.col), "04082027?");
}

TEST_F(MonthPlanner, WeeksAreBoxedInTheTitleBandColour) {
    s.label1_back_color = rgb(10, 20, 30);
    show();
    for (int r : {1, 5, 6, 25}) {
        EXPECT_EQ(s.vsOvervw.border(r, 0).color, rgb(10, 20, 30)) << r;
        EXPECT_EQ(s.vsOvervw.border(r, 0).left, 1) << r;
    }
    EXPECT_EQ(s.vsOvervw.border(1, 3).top, 1);
    EXPECT_EQ(s.vsOvervw.border(5, 6).right, 1);
}

TEST_F(MonthPlanner, DayNumbersAreBoldAndTwoPointsLarger) {
    s.grid_font_bold = false;
    show();
    for (int r : {1, 6, 11, 16, 21}) {
        EXPECT_TRUE(cell(CellSetting::FontBold, r, 2).toBool()) << r;
        EXPECT_DOUBLE_EQ(cell(CellSetting::FontSize, r, 2).toDouble(), 11.0) << r;
    }
    for (int r : {2, 5, 12, 25}) {
        EXPECT_FALSE(cell(CellSetting::FontBold, r, 2).toBool()) << r;
        EXPECT_DOUBLE_EQ(cell(CellSetting::FontSize, r, 2).toDouble(), 9.0) << r;
    }
}

TEST_F(MonthPlanner, FirstDayNumberRowTakesThePlannerColourTheOthersTheNavigators) {
    s.vsSched.setForeColor(rgb(1, 2, 3));
    s.Cal.setForeColor(rgb(4, 5, 6));
    s.grid_font_color = QString::number(rgb(7, 8, 9));
    show();
    EXPECT_EQ(Color(cell(CellSetting::ForeColor, 1, 4).toUInt()), rgb(1, 2, 3));
    for (int r : {6, 11, 16, 21})
        EXPECT_EQ(Color(cell(CellSetting::ForeColor, r, 4).toUInt()), rgb(4, 5, 6)) << r;
    for (int r : {2, 10, 22, 25})
        EXPECT_EQ(Color(cell(CellSetting::ForeColor, r, 4).toUInt()), rgb(7, 8, 9)) << r;
}

TEST_F(MonthPlanner, CellsShareTheGridLessTheAllowanceWithinTheirMinimums) {
    s.vsOvervw.set_extent(17000, 16000);
    show();
    // 26 rows of March 2026: (16000 - 400) / 26 = 600; (17000 - 400) / 7 = 2371.
    EXPECT_EQ(s.vsOvervw.ColWidth(3), 2371);
    EXPECT_EQ(s.vsOvervw.RowHeight(7), 600);
    s.vsOvervw.set_extent(9000, 6000);
    show();
    EXPECT_EQ(s.vsOvervw.ColWidth(3), 1902);
    EXPECT_EQ(s.vsOvervw.RowHeight(7), 360);
    s.grid_font_size = "14";
    show();
    EXPECT_EQ(s.vsOvervw.ColWidth(3), 2240);
    EXPECT_EQ(s.vsOvervw.RowHeight(7), 438);
}

// --- lines of a day -----------------------------------------------------------

TEST_F(MonthPlanner, LoneEntryFillsItsDayOverAllFourLines) {
    env.add(on(monday16, "a", "09:00", "Dentist"));
    show();
    for (int r = 12; r <= 15; ++r) {
        EXPECT_EQ(text(r, 1), "Dentist") << r;
        EXPECT_EQ(data(r, 1), "03162026? index=1") << r;
        // A click anywhere in the tall cell finds the entry.
        EXPECT_EQ(overvw_entry(s.view(), r, 1), 1) << r;
    }
    EXPECT_TRUE(s.vsOvervw.MergeCol(1));
    EXPECT_EQ(s.vsOvervw.merged_range(13, 1), (Grid::Span{12, 1, 15, 1}));
}

TEST_F(MonthPlanner, TwoEntriesLeaveTheLastTwoLinesFree) {
    add_many(monday16, 2);
    show();
    EXPECT_EQ(text(12, 1), "Entry 1");
    EXPECT_EQ(data(12, 1), "03162026? index=1");
    EXPECT_EQ(text(13, 1), "Entry 2");
    EXPECT_EQ(data(13, 1), "03162026? index=2");
    for (int r = 14; r <= 15; ++r) {
        EXPECT_EQ(text(r, 1), "") << r;
        EXPECT_EQ(data(r, 1), "03162026?") << r;
    }
}

TEST_F(MonthPlanner, TypingOnAFreeLineMakesANewEntry) {
    add_many(monday16, 2);
    s.cur_date = QDate(2026, 3, 2);
    show();
    ASSERT_FALSE(vsOvervw_BeforeEdit(s, 14, 1));
    EXPECT_EQ(s.cur_date, monday16);
    EXPECT_FALSE(s.new_appt);
    EXPECT_TRUE(env.m.messages().empty());
    s.vsOvervw.setTextMatrix(14, 1, "Call Bob");
    vsOvervw_AfterEdit(s, env.w, 14, 1);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmQuick");
    ASSERT_EQ(s.appt_count, 3);
    const appt_rec* made = s.appt_row(3);
    EXPECT_EQ(made->appt_date.str(), "03162026");
    EXPECT_EQ(made->appt_text.trimmed(), "Call Bob");
    EXPECT_EQ(made->appt_start.str(), "09:10");
    EXPECT_EQ(made->appt_end.str(), "09:10");
    // Sorted by start: 08:00, 09:00, then the 09:10 just made.
    EXPECT_EQ(text(14, 1), "Call Bob");
    EXPECT_EQ(data(14, 1), "03162026? index=3");
    EXPECT_TRUE(s.timer1_enabled);
}

TEST_F(MonthPlanner, FourEntriesFillFourLinesWithoutMore) {
    add_many(monday16, 4);
    show();
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(text(11 + i, 1), QStringLiteral("Entry %1").arg(i)) << i;
        EXPECT_EQ(data(11 + i, 1), QStringLiteral("03162026? index=%1").arg(i)) << i;
    }
    EXPECT_FALSE(cell(CellSetting::FontUnderline, 15, 1).toBool());
}

TEST_F(MonthPlanner, FiveEntriesShowThreeAndMore) {
    add_many(monday16, 5);
    show();
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(text(11 + i, 1), QStringLiteral("Entry %1").arg(i)) << i;
    EXPECT_EQ(text(15, 1), "more...");
    EXPECT_TRUE(cell(CellSetting::FontUnderline, 15, 1).toBool());
    EXPECT_EQ(cell(CellSetting::Alignment, 15, 1).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(cell(CellSetting::Picture, 15, 1).toString(), "");
    EXPECT_EQ(cell(CellSetting::Picture, 14, 1).toString(), "Car");
}

TEST_F(MonthPlanner, UntimedEntriesShowWithALeadingBlank) {
    s.menus.mnuShowTimes = true;
    env.add(on(monday16, "a", "     ", "Lunch"));
    env.add(on(monday16, "b", "     ", "Walk"));
    show();
    EXPECT_EQ(text(12, 1), " Lunch");
    EXPECT_EQ(text(13, 1), " Walk");
    EXPECT_EQ(data(13, 1), "03162026? index=2");
}

TEST_F(MonthPlanner, UntimedEntriesComeBeforeTimedOnes) {
    env.add(on(monday16, "a", "14:00", "Late"));
    env.add(on(monday16, "b", "     ", "All day"));
    env.add(on(monday16, "c", "09:00", "Early"));
    show();
    EXPECT_EQ(text(12, 1), " All day");
    EXPECT_EQ(text(13, 1), "Early");
    EXPECT_EQ(text(14, 1), "Late");
    EXPECT_EQ(data(12, 1), "03162026? index=2");
    EXPECT_EQ(data(14, 1), "03162026? index=1");
}

TEST_F(MonthPlanner, TimedLineShowsItsStartOnlyWithShowTimes) {
    env.add(on(monday16, "a", "14:05", "Dentist"));
    env.add(on(monday16, "b", "09:00", "Gym"));
    s.menus.mnuShowTimes = true;
    show();
    EXPECT_EQ(text(12, 1), "9:00 am   Gym");
    EXPECT_EQ(text(13, 1), "2:05 pm   Dentist");
    s.menus.mnuShowTimes = false;
    show();
    EXPECT_EQ(text(12, 1), "Gym");
    EXPECT_EQ(text(13, 1), "Dentist");
}

TEST_F(MonthPlanner, LineWithoutPictureSitsOneBlankFurtherIn) {
    env.add(on(monday16, "a", "09:00", "Plain", ""));
    env.add(on(monday16, "b", "10:00", "Pictured", "Car"));
    env.add(on(monday16, "c", "     ", "Untimed", ""));
    show();
    EXPECT_EQ(text(12, 1), "  Untimed");
    EXPECT_EQ(text(13, 1), " Plain");
    EXPECT_EQ(cell(CellSetting::Picture, 13, 1).toString(), "");
    EXPECT_EQ(cell(CellSetting::Alignment, 13, 1).toInt(), int(Align::General));
    EXPECT_EQ(text(14, 1), "Pictured");
    EXPECT_EQ(cell(CellSetting::Picture, 14, 1).toString(), "Car");
    EXPECT_EQ(cell(CellSetting::PictureAlignment, 14, 1).toInt(), int(Align::LeftCenter));
    EXPECT_EQ(cell(CellSetting::Alignment, 14, 1).toInt(), int(Align::General));
}

TEST_F(MonthPlanner, RowOfTheSameMonthInAnotherYearShowsToo) {
    env.add(on(monday16, "a", "09:00", "Dentist"));
    s.appt_row(1)->appt_date = QStringLiteral("03162019");
    show();
    EXPECT_EQ(data(12, 1), "03162026? index=1");
}

TEST_F(MonthPlanner, ArrowIntoTheNextMonthBuildsItWithFreeDays) {
    s.cur_date = QDate(2026, 3, 31);
    docombos(s.store(), s.view());
    env.add(on(QDate(2026, 3, 31), "m", "09:00", "March entry"));
    env.add(on(QDate(2026, 4, 1), "a", "09:00", "April entry"));
    ASSERT_EQ(s.appt_count, 1);
    show();
    ASSERT_EQ(data(22, 2), "03312026? index=1");
    ImageArrow_Click(s, env.w, 1);
    EXPECT_EQ(s.cur_date, QDate(2026, 4, 1));
    EXPECT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_text.trimmed(), "March entry");
    // April 2026 begins on a Wednesday and takes five weeks.
    EXPECT_EQ(s.vsOvervw.Rows(), 26);
    EXPECT_EQ(text(1, 3), " 1");
    for (int r = 2; r <= 5; ++r) {
        EXPECT_EQ(data(r, 3), "04012026?") << r;
        EXPECT_EQ(text(r, 3), "") << r;
    }
    EXPECT_EQ(s.ctl("Label1").text, QLocale().monthName(4) + "   2026");
}

TEST_F(MonthPlanner, AfterASpanningWeekTheMonthListsOnlyItsOwnRows) {
    // Monday 29 March to Sunday 4 April 2027.
    s.cur_date = QDate(2027, 3, 30);
    env.add(on(QDate(2027, 3, 30), "m", "09:00", "March entry"));
    env.add(on(QDate(2027, 4, 2), "a", "09:00", "April entry"));
    ASSERT_EQ(s.appt_count, 1);
    imageWeek_Click(s, env.w);
    ASSERT_EQ(s.appt_count, 2);
    show();
    EXPECT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.vsSortGrid.Rows(), 1);
    const DayCell m = day_cell(QDate(2027, 3, 30));
    EXPECT_EQ(text(m.row + 1, m.col), "March entry");
    // The 2nd of March sits where April's 2nd would be listed, and stays free.
    const DayCell a = day_cell(QDate(2027, 3, 2));
    for (int r = a.row + 1; r < a.row + 5; ++r) {
        EXPECT_EQ(data(r, a.col), "03022027?") << r;
        EXPECT_EQ(text(r, a.col), "") << r;
    }
}

// --- typing -------------------------------------------------------------------

TEST_F(MonthPlanner, DateRowCanBeTypedOverAndTheRefillRestoresTheNumber) {
    show();
    ASSERT_FALSE(vsOvervw_BeforeEdit(s, 11, 1));
    EXPECT_EQ(s.cur_date, monday16);
    s.vsOvervw.setTextMatrix(11, 1, "Call Bob");
    vsOvervw_AfterEdit(s, env.w, 11, 1);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(text(11, 1), " 16");
    EXPECT_EQ(data(11, 1), "03162026?");
    EXPECT_EQ(text(12, 1), "Call Bob");
    EXPECT_EQ(data(12, 1), "03162026? index=1");
    // Back where the typing was, one column to the left.
    EXPECT_EQ(s.vsOvervw.Row(), 11);
    EXPECT_EQ(s.vsOvervw.Col(), 0);
}

TEST_F(MonthPlanner, TypingOnALineWithAnEntryAsksForADoubleClick) {
    add_many(monday16, 2);
    show();
    EXPECT_TRUE(vsOvervw_BeforeEdit(s, 13, 1));
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Double click to edit appointment");
}

TEST_F(MonthPlanner, CellOutsideTheMonthCannotBeTyped) {
    show();
    ASSERT_EQ(data(22, 3), "");
    EXPECT_TRUE(vsOvervw_BeforeEdit(s, 22, 3));
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(MonthPlanner, TypingWithoutACalendarEmptiesTheCell) {
    show();
    s.cal_path.clear();
    s.vsOvervw.setTextMatrix(12, 1, "Call Bob");
    vsOvervw_AfterEdit(s, env.w, 12, 1);
    EXPECT_EQ(text(12, 1), "");
    EXPECT_EQ(s.appt_count, 0);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], " Select and Open a Calendar first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
}

// --- reading a cell -----------------------------------------------------------

TEST_F(MonthPlanner, ExtractPtrFindsTheNumberAfterTheEquals) {
    show();
    const QString d = "03142026? index=57";
    s.vsOvervw.setCell(CellSetting::Data, 7, 6, d);
    extract_ptr(s.view(), int(d.size()), 7, 6);
    ASSERT_TRUE(s.ptr_found);
    EXPECT_EQ(s.ptrPos, 17);
    EXPECT_EQ(s.ptr_len, 2);
    EXPECT_EQ(d.mid(s.ptrPos - 1, s.ptr_len), "57");
    EXPECT_EQ(overvw_entry(s.view(), 7, 6), 57);
}

TEST_F(MonthPlanner, ExtractPtrStopsAtTheQuestionMarkOfAFreeCell) {
    show();
    s.ptr_found = true;
    extract_ptr(s.view(), 9, 7, 6);
    EXPECT_FALSE(s.ptr_found);
    EXPECT_EQ(overvw_entry(s.view(), 7, 6), 0);
}

TEST_F(MonthPlanner, ExtractPtrOnEmptyDataFindsNothing) {
    show();
    s.ptr_found = true;
    extract_ptr(s.view(), 0, 22, 3);
    EXPECT_FALSE(s.ptr_found);
}

TEST_F(MonthPlanner, CellDateReadsTheDayBeforeTheQuestionMark) {
    env.add(on(QDate(2026, 3, 14), "a", "09:00", "Dentist"));
    show();
    s.vsOvervw.Select(8, 6);
    EXPECT_EQ(cell_date(s.vsOvervw), "03142026");
    s.vsOvervw.Select(9, 5);
    EXPECT_EQ(cell_date(s.vsOvervw), "03132026");
}

TEST_F(MonthPlanner, TipShowsTwoDigitHoursAndTheText) {
    env.add(on(monday16, "a", "09:05", "Dentist", "Car", "14:30"));
    show();
    overvw_tip(s.store(), s.view(), 12, 1);
    EXPECT_EQ(s.vsOvervw.ToolTipText(), "09:05 am - 02:30 pm  Dentist");
    overvw_tip(s.store(), s.view(), 11, 1);
    EXPECT_EQ(s.vsOvervw.ToolTipText(), "");
}

TEST_F(MonthPlanner, MouseMoveShowsTheTipOnlyWithTipsOnAndNoButton) {
    env.add(on(monday16, "a", "09:05", "Dentist", "Car", "14:30"));
    show();
    s.menus.mnuTips = false;
    vsOvervw_MouseMove(s.store(), s.view(), s.options(), 0, 12, 1);
    EXPECT_EQ(s.vsOvervw.ToolTipText(), "");
    s.menus.mnuTips = true;
    vsOvervw_MouseMove(s.store(), s.view(), s.options(), 1, 12, 1);
    EXPECT_EQ(s.vsOvervw.ToolTipText(), "");
    vsOvervw_MouseMove(s.store(), s.view(), s.options(), 0, 12, 1);
    EXPECT_TRUE(s.vsOvervw.ToolTipText().startsWith("09:05 am"));
}

// --- clicks -------------------------------------------------------------------

TEST_F(MonthPlanner, ClickOnALineMovesCurDateAndEnablesTheEditCommands) {
    env.add(on(QDate(2026, 3, 14), "a", "09:00", "Dentist"));
    show();
    vsOvervw_Click(s, env.w, 8, 6);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 14));
    for (const char* n : {"mnuCopy", "mnuEditA", "mnudelete"})
        EXPECT_TRUE(s.ctl(n).enabled) << n;
    EXPECT_TRUE(s.view_month);
    vsOvervw_Click(s, env.w, 13, 1);
    EXPECT_EQ(s.cur_date, monday16);
    for (const char* n : {"mnuCopy", "mnuEditA", "mnudelete"})
        EXPECT_FALSE(s.ctl(n).enabled) << n;
}

TEST_F(MonthPlanner, ClickOnMoreOpensTheDayInTheDayPlanner) {
    add_many(monday16, 5);
    show();
    ASSERT_EQ(text(15, 1), "more...");
    vsOvervw_Click(s, env.w, 15, 1);
    EXPECT_TRUE(s.view_day);
    EXPECT_FALSE(s.view_month);
    EXPECT_EQ(s.cur_date, monday16);
    EXPECT_EQ(s.day_appts, 5);
}

TEST_F(MonthPlanner, DoubleClickOnALineOpensTheEditorOnItsEntry) {
    add_many(monday16, 2);
    show();
    vsOvervw_DblClick(s, 13, 1);
    EXPECT_FALSE(s.new_appt);
    EXPECT_EQ(s.edit_index, 2);
    EXPECT_EQ(s.edit_start, "09:00");
    EXPECT_EQ(s.cur_date, monday16);
    EXPECT_TRUE(s.appt_from_planner);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
}

TEST_F(MonthPlanner, DoubleClickOnAFreeLineStartsANewEntryOnThatDay) {
    show();
    s.rem_lead = 15;
    s.rem_anim = 0;
    s.edit_index = 7;
    vsOvervw_DblClick(s, 9, 5);
    EXPECT_TRUE(s.new_appt);
    EXPECT_EQ(s.edit_index, 0);
    EXPECT_EQ(s.edit_date, QDate(2026, 3, 13));
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_anim, 1);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
}

TEST_F(MonthPlanner, DoubleClickWithoutACalendarWarns) {
    show();
    s.cal_path.clear();
    vsOvervw_DblClick(s, 9, 5);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], " Select and Open a Calendar first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(MonthPlanner, DoubleClickOnMoreDoesNothing) {
    add_many(monday16, 5);
    show();
    vsOvervw_DblClick(s, 15, 1);
    EXPECT_TRUE(env.m.shown.empty());
}

} // namespace
} // namespace orva::testing
