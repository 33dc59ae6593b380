#include "view_fixtures.h"

#include "appointments/quick_add.h"
#include "views/day_view.h"
#include "views/status.h"

#include <gtest/gtest.h>

#include <QObject>
#include <cstddef>

namespace orva::testing {
namespace {

QString data(const AppState& s, int row, int col) {
    return s.vsSched.Cell(CellSetting::Data, row, col).toString();
}

class DayGrid : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;
};

// --- time to row ------------------------------------------------------------

struct SlotCase {
    const char* name;
    const char* start;
    const char* end;
    int start_row;
    int end_row;
};

class Slots : public ::testing::TestWithParam<SlotCase> {};

TEST_P(Slots, MapTimesToHalfHourRows) {
    const SlotCase& c = GetParam();
    EXPECT_EQ(start_slot(c.start), c.start_row);
    EXPECT_EQ(end_slot(c.end, c.start), c.end_row);
}

INSTANTIATE_TEST_SUITE_P(
    DayView, Slots,
    ::testing::Values(SlotCase{"NineToTenIsRows19And20", "09:00", "10:00", 19, 20},
                      SlotCase{"TenPastToTwentyPastIsRow19", "09:10", "09:20", 19, 19},
                      SlotCase{"ZeroLengthOccupiesItsSlot", "09:00", "09:00", 19, 19},
                      SlotCase{"EndAt0931TakesTheWholeHalfHour", "09:00", "09:31", 19, 20},
                      SlotCase{"Minute29IsTheFirstHalf", "09:29", "09:29", 19, 19},
                      SlotCase{"Minute30IsTheSecondHalf", "09:30", "09:30", 20, 20},
                      SlotCase{"HalfHourEndClosesWithSlotBefore", "09:00", "09:30", 19, 19},
                      SlotCase{"ZeroLengthOnHalfHour", "09:30", "09:30", 20, 20},
                      SlotCase{"EndAtMidnightIsRowZero", "22:00", "00:00", 45, 0},
                      SlotCase{"BlankStartAndEndAreRowZero", "     ", "     ", 0, 0}),
    [](const ::testing::TestParamInfo<SlotCase>& i) { return std::string(i.param.name); });

// --- the rows ---------------------------------------------------------------

TEST_F(DayGrid, RowsCarryTheFixedTwelveHourLabels) {
    build_day_rows(s.view(), s.options());
    format_day_grid(s);
    ASSERT_EQ(s.vsSched.Rows(), 49);
    ASSERT_EQ(s.vsSched.Cols(), 20);
    EXPECT_EQ(s.vsSched.FixedCols(), 1);
    EXPECT_EQ(s.vsSched.TextMatrix(0, 0), " ");
    EXPECT_EQ(s.vsSched.TextMatrix(1, 0), " 12:00 am");
    EXPECT_EQ(s.vsSched.TextMatrix(2, 0), " 12:30 am");
    EXPECT_EQ(s.vsSched.TextMatrix(3, 0), " 01:00 am");
    EXPECT_EQ(s.vsSched.TextMatrix(24, 0), " 11:30 am");
    EXPECT_EQ(s.vsSched.TextMatrix(25, 0), " 12:00 pm");
    EXPECT_EQ(s.vsSched.TextMatrix(27, 0), " 01:00 pm");
    EXPECT_EQ(s.vsSched.TextMatrix(48, 0), " 11:30 pm");
}

TEST_F(DayGrid, SpacersHoldBlankAndAppointmentColumnsNothing) {
    build_day_rows(s.view(), s.options());
    for (int c = 1; c < 20; c += 2) {
        EXPECT_EQ(data(s, 0, c), "blank") << c;
        EXPECT_EQ(data(s, 48, c), "blank") << c;
        EXPECT_EQ(s.vsSched.ColWidth(c), s.blankColWidth);
    }
    for (int c = 2; c < 20; c += 2)
        EXPECT_EQ(data(s, 10, c), "") << c;
}

TEST_F(DayGrid, RowHeightsFollowTheFontSize) {
    build_day_rows(s.view(), s.options());
    EXPECT_EQ(s.vsSched.RowHeight(0), 800);
    EXPECT_EQ(s.vsSched.RowHeight(1), 270);
    s.grid_font_size = "18";
    build_day_rows(s.view(), s.options());
    EXPECT_EQ(s.vsSched.RowHeight(1), 400);
    EXPECT_EQ(s.vsSched.RowHeight(48), 400);
}

TEST_F(DayGrid, EmptyDayShowsOneSpacerAndOneColumn) {
    rebuild(s);
    EXPECT_FALSE(s.vsSched.ColHidden(1));
    EXPECT_FALSE(s.vsSched.ColHidden(2));
    for (int c = 3; c < 20; ++c)
        EXPECT_TRUE(s.vsSched.ColHidden(c)) << c;
    EXPECT_GT(s.vsSched.ColWidth(2), 5000); // room to type
}

TEST_F(DayGrid, RebuildScrollsToSevenOClock) {
    rebuild(s);
    EXPECT_EQ(s.vsSched.TopRow(), 15);
}

TEST_F(DayGrid, EarlyFirstBlockScrollsUpToIt) {
    env.add(env.entry("a", "05:00", "06:00", "Early run"));
    rebuild(s);
    EXPECT_EQ(s.vsSched.TopRow(), 11);
}

// --- laying out ---------------------------------------------------------------

TEST_F(DayGrid, OverlappingEntriesSitSideBySide) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    env.add(env.entry("b", "09:30", "11:00", "Meeting"));
    rebuild(s);
    EXPECT_EQ(data(s, 19, 2), "1");
    EXPECT_EQ(data(s, 20, 2), "1");
    EXPECT_EQ(data(s, 21, 2), "");
    EXPECT_EQ(data(s, 20, 4), "2");
    EXPECT_EQ(data(s, 22, 4), "2");
    EXPECT_EQ(data(s, 19, 4), "");
    EXPECT_FALSE(s.vsSched.ColHidden(3));
    EXPECT_FALSE(s.vsSched.ColHidden(5));
    EXPECT_FALSE(s.vsSched.ColHidden(6));
    EXPECT_TRUE(s.vsSched.ColHidden(7));
    EXPECT_EQ(s.day_appts, 2);
}

TEST_F(DayGrid, BlockTextShowsTheStartWhenTimesAreOn) {
    env.add(env.entry("a", "14:05", "15:00", "Dentist"));
    s.menus.mnuShowTimes = true;
    rebuild(s);
    EXPECT_EQ(s.vsSched.TextMatrix(29, 2), "2:05 pm   Dentist");
    s.menus.mnuShowTimes = false;
    rebuild(s);
    EXPECT_EQ(s.vsSched.TextMatrix(29, 2), "Dentist");
}

TEST_F(DayGrid, Utf8TextsShowInTheirBlocksAfterARebuild) {
    const QStringList texts = texts_in_many_scripts();
    for (int i = 0; i < texts.size(); ++i) {
        const QString start = QTime(8 + i, 0).toString("HH:mm");
        env.add(env.entry("k" + QString::number(i), start, start, texts[i]));
    }
    s.menus.mnuShowTimes = false;
    rebuild(s);
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_EQ(s.vsSched.TextMatrix(17 + 2 * i, 2), texts[i]) << i;
    s.menus.mnuShowTimes = true;
    rebuild(s);
    EXPECT_EQ(s.vsSched.TextMatrix(27, 2), "1:00 pm   " + texts[5]);
}

TEST_F(DayGrid, TimedBlockIsBoxedPaintedAndPictured) {
    s.appt_back_color = rgb(255, 255, 0);
    env.add(env.entry("a", "09:00", "10:00", "Dentist", "Car"));
    rebuild(s);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::BackColor, 19, 2).toUInt(), rgb(255, 255, 0));
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Picture, 20, 2).toString(), "Car");
    EXPECT_EQ(s.vsSched.Cell(CellSetting::PictureAlignment, 19, 2).toInt(), int(Align::LeftCenter));
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Alignment, 19, 2).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(s.vsSched.border(19, 2).color, rgb(0, 0, 125));
    EXPECT_EQ(s.vsSched.border(19, 2).top, 1);
}

TEST_F(DayGrid, UnknownStickerLeavesNoPicture) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist", "NoSuchKey"));
    rebuild(s);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Picture, 19, 2).toString(), "");
    EXPECT_EQ(data(s, 19, 2), "1");
}

TEST_F(DayGrid, TouchingEqualTextsStayApart) {
    s.menus.mnuShowTimes = false;
    env.add(env.entry("a", "09:00", "10:00", "Gym"));
    env.add(env.entry("b", "10:00", "11:00", "Gym"));
    rebuild(s);
    EXPECT_EQ(data(s, 21, 2), "2");
    EXPECT_EQ(s.vsSched.TextMatrix(20, 2), "Gym");
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), " Gym");
    EXPECT_NE(s.vsSched.merged_range(21, 2).row1, 19);
}

TEST_F(DayGrid, EqualTextsWithAGapKeepTheirText) {
    s.menus.mnuShowTimes = false;
    env.add(env.entry("a", "09:00", "10:00", "Gym"));
    env.add(env.entry("b", "11:00", "12:00", "Gym"));
    rebuild(s);
    EXPECT_EQ(s.vsSched.TextMatrix(19, 2), "Gym");
    EXPECT_EQ(s.vsSched.TextMatrix(23, 2), "Gym");
}

TEST_F(DayGrid, UntimedEntriesFillRowZeroLeftToRight) {
    for (int i = 0; i < 4; ++i)
        env.add(env.entry(QString("u%1").arg(i), "     ", "     ", QString("Note %1").arg(i)));
    rebuild(s);
    EXPECT_EQ(data(s, 0, 2), "1");
    EXPECT_EQ(data(s, 0, 4), "2");
    EXPECT_EQ(data(s, 0, 6), "3");
    EXPECT_EQ(data(s, 0, 8), "4");
    EXPECT_FALSE(s.vsSched.cell_has(CellSetting::BackColor, 0, 2));
    EXPECT_EQ(s.vsSched.border(0, 2).top, 0);
}

TEST_F(DayGrid, EndAtMidnightLandsWhereTheLastColumnStood) {
    env.add(env.entry("a", "09:00", "10:00", "First"));
    env.add(env.entry("b", "09:30", "10:30", "Second"));
    env.add(env.entry("c", "22:00", "00:00", "Late"));
    rebuild(s);
    EXPECT_EQ(end_slot("00:00", "22:00"), 0);
    EXPECT_EQ(data(s, 45, 4), "3");
    EXPECT_EQ(s.cur_col, 4);
}

TEST_F(DayGrid, TenthOverlapOverwritesTheLastColumnAndStillCounts) {
    for (int i = 0; i < 10; ++i)
        env.add(env.entry(QString("k%1").arg(i), "09:00", "10:00", QString("Entry %1").arg(i)));
    rebuild(s);
    for (int c = 2; c <= 16; c += 2)
        EXPECT_EQ(data(s, 19, c), QString::number(c / 2)) << c;
    EXPECT_EQ(data(s, 19, 18), "10");
    EXPECT_EQ(s.day_appts, 10);
    EXPECT_EQ(s.status_panels[panel_count].text, "10   Appointments");
}

TEST_F(DayGrid, DayOrderIsByStartTextThenKey) {
    env.add(env.entry("b", "09:00", "09:30", "Second key"));
    env.add(env.entry("a", "09:00", "09:30", "First key"));
    env.add(env.entry("z", "     ", "     ", "Untimed"));
    rebuild(s);
    EXPECT_EQ(data(s, 19, 2), "2");
    EXPECT_EQ(data(s, 19, 4), "1");
    EXPECT_EQ(s.first_row, "0");
    EXPECT_EQ(s.first_col, "2");
}

// --- fields as a damaged file may hold them -------------------------------------

TEST_F(DayGrid, TabInAStartFieldLeavesTheEntryUntimed) {
    env.add(env.entry("a", "\t9:00", "10:00", "Tabbed start"));
    env.add(env.entry("b", "11:00", "11:30", "Plain"));
    rebuild(s);
    EXPECT_EQ(s.day_appts, 2);
    EXPECT_EQ(data(s, 0, 2), "1");
    EXPECT_EQ(data(s, 1, 2), ""); // no block stretched down to its end
    EXPECT_EQ(data(s, 23, 2), "2");
}

TEST_F(DayGrid, StartWithATabAmongItsDigitsIsNoTime) {
    EXPECT_FALSE(hhmm_to_time("09:\t0").isValid());
    EXPECT_FALSE(hhmm_to_time("0\t:00").isValid());
    EXPECT_FALSE(hhmm_to_time("09:+5").isValid());
    EXPECT_EQ(start_slot("9\t:00"), 0);
    EXPECT_EQ(hhmm_to_time(" 9:05"), QTime(9, 5));
}

TEST_F(DayGrid, TabInAKeyCannotSendTheDaySortToARowPastTheTable) {
    env.add(env.entry("A\t7001", "09:00", "10:00", "Tabbed key"));
    rebuild(s);
    EXPECT_EQ(s.day_appts, 1);
    EXPECT_EQ(data(s, 19, 2), "1");
    EXPECT_EQ(data(s, 20, 2), "1");
}

TEST_F(DayGrid, TabInTheTextIsShownAsPartOfTheText) {
    env.add(env.entry("a", "09:00", "10:00", "one\ttwo"));
    s.menus.mnuShowTimes = false;
    rebuild(s);
    EXPECT_EQ(s.vsSched.TextMatrix(19, 2), "one\ttwo");
}

TEST_F(DayGrid, RowNumbersPastTheTableAreLeftOutOfTheDay) {
    env.add(env.entry("a", "09:00", "10:00", "Stored"));
    // The quiet overflow: the count stands past the rows that could be kept.
    s.appt_count = appt_limit + 5;
    rebuild(s);
    EXPECT_EQ(s.day_appts, 1);
    EXPECT_EQ(data(s, 19, 2), "1");
}

TEST_F(DayGrid, OtherDaysAreLeftOut) {
    appt_rec other = env.entry("a", "09:00", "10:00", "Tomorrow");
    other.appt_date = "03162026";
    env.add(other);
    rebuild(s);
    EXPECT_EQ(data(s, 19, 2), "");
    EXPECT_EQ(s.day_appts, 0);
    EXPECT_EQ(s.status_panels[panel_count].text, "0   Appointments");
}

TEST_F(DayGrid, OneEntryIsCountedInTheSingular) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    EXPECT_EQ(s.status_panels[panel_count].text, "1   Appointment");
}

TEST_F(DayGrid, FindReportsWhereTheEntryLies) {
    env.add(env.entry("a", "09:00", "10:00", "First"));
    env.add(env.entry("b", "09:30", "10:30", "Second"));
    s.vsSched.Clear();
    build_day_rows(s.view(), s.options());
    format_day_grid(s);
    s.edit_date = s.cur_date;
    int row = -1, col = -1;
    fill_day_find(s.store(), s.view(), s.options(), s.editing(), "b", row, col);
    EXPECT_EQ(row, 20);
    EXPECT_EQ(col, 4);
}

TEST_F(DayGrid, AtMostThreeColumnsShareTheWidth) {
    for (int i = 0; i < 4; ++i)
        env.add(env.entry(QString("k%1").arg(i), "09:00", "10:00", QString("E%1").arg(i)));
    rebuild(s);
    const int fixed = s.vsSched.ColWidth(0) + s.blankColWidth * 5 + 420;
    const int w = (s.vsSched.Width() - fixed) / 3;
    EXPECT_EQ(s.vsSched.ColWidth(2), w);
    EXPECT_EQ(s.vsSched.ColWidth(8), w);
    EXPECT_EQ(s.vsSched.ColWidth(10), 320);
}

TEST_F(DayGrid, OneEntryTakesTheWholeWidthLessTheSpare) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    const int fixed = s.vsSched.ColWidth(0) + s.blankColWidth * 2 + 420;
    EXPECT_EQ(s.vsSched.ColWidth(2), s.vsSched.Width() - fixed);
    EXPECT_EQ(s.vsSched.ColWidth(4), 320);
}

// --- the clock's row --------------------------------------------------------

TEST_F(DayGrid, NowMarkerPaintsOnlyFreeCellsOfTheClocksRow) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    s.appt_back_color = rgb(255, 255, 0);
    mark_now_row(s); // 09:10 is row 19
    EXPECT_EQ(s.now_row, 19);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::BackColor, 19, 4).toUInt(), s.now_color);
    EXPECT_NE(s.vsSched.Cell(CellSetting::BackColor, 19, 2).toUInt(), s.now_color);
    env.clock.set(QDateTime(s.cur_date, QTime(9, 40)));
    mark_now_row(s);
    EXPECT_EQ(s.now_row, 20);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::BackColor, 19, 4).toUInt(), s.vsSched.BackColor());
    EXPECT_EQ(s.vsSched.Cell(CellSetting::BackColor, 20, 4).toUInt(), s.now_color);
}

// --- tips, clicks and the hand-over ----------------------------------------

TEST_F(DayGrid, TipShowsTimesAndTextOnAnEntryOnly) {
    env.add(env.entry("a", "09:00", "10:30", "Dentist"));
    rebuild(s);
    s.menus.mnuTips = true;
    vsSched_MouseDown(s, 1, 19, 2);
    vsSched_MouseMove(s.store(), s.view(), s.options(), 0, 19, 2);
    EXPECT_EQ(s.vsSched.ToolTipText(), "9:00 am - 10:30 am  Dentist");
    vsSched_MouseMove(s.store(), s.view(), s.options(), 0, 30, 2);
    EXPECT_EQ(s.vsSched.ToolTipText(), "");
}

TEST_F(DayGrid, TipFollowsTheColumnOfTheLastPressNotTheMouse) {
    env.add(env.entry("a", "09:00", "10:30", "Dentist"));
    rebuild(s);
    vsSched_MouseDown(s, 1, 19, 0);
    vsSched_MouseMove(s.store(), s.view(), s.options(), 0, 19, 2);
    EXPECT_EQ(s.vsSched.ToolTipText(), "");
    s.menus.mnuTips = false;
    vsSched_MouseDown(s, 1, 19, 2);
    vsSched_MouseMove(s.store(), s.view(), s.options(), 0, 19, 2);
    EXPECT_EQ(s.vsSched.ToolTipText(), "");
}

TEST_F(DayGrid, ClickOnFreeCellDisablesTheEntryCommands) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    vsSched_Click(s.store(), s.view(), s.options(), s.editing(), 19, 2);
    EXPECT_TRUE(s.ctl("mnuEditA").enabled);
    EXPECT_FALSE(s.new_appt);
    vsSched_Click(s.store(), s.view(), s.options(), s.editing(), 30, 2);
    EXPECT_FALSE(s.ctl("imgDtlAppt").enabled);
    EXPECT_FALSE(s.ctl("mnudelete").enabled);
    EXPECT_FALSE(s.ctl("mnuCopy").enabled);
    EXPECT_TRUE(s.new_appt);
    EXPECT_EQ(s.ctl("Frame2").text, " 02:30 pm");
    EXPECT_EQ(s.ctl("rtNotes").text, " ");
}

TEST_F(DayGrid, ClickOnSpacerLeavesNewApptAlone) {
    rebuild(s);
    s.new_appt = false;
    vsSched_Click(s.store(), s.view(), s.options(), s.editing(), 19, 1);
    EXPECT_FALSE(s.new_appt);
    EXPECT_EQ(s.cur_col, 1);
}

TEST_F(DayGrid, DoubleClickOnFreeRowHandsOverANewEntry) {
    rebuild(s);
    s.timer1_enabled = true;
    bool ticking_inside = true;
    env.m.forms["frmAppt1"] = [&] { ticking_inside = s.timer1_enabled; };
    vsSched_DblClick(s.store(), s.view(), s.editing(), s.run(), 21, 2);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_FALSE(ticking_inside);
    EXPECT_TRUE(s.new_appt);
    EXPECT_EQ(s.edit_start, " 10:00 am");
    EXPECT_EQ(s.edit_index, 0);
    EXPECT_EQ(s.edit_date, s.cur_date);
    EXPECT_EQ(s.rem_anim, 1);
    EXPECT_TRUE(s.appt_from_planner);
}

TEST_F(DayGrid, DoubleClickOnEntryHandsOverItsRow) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    vsSched_DblClick(s.store(), s.view(), s.editing(), s.run(), 20, 2);
    EXPECT_FALSE(s.new_appt);
    EXPECT_EQ(s.edit_index, 1);
}

TEST_F(DayGrid, DoubleClickInRowZeroStartsUntimed) {
    rebuild(s);
    vsSched_DblClick(s.store(), s.view(), s.editing(), s.run(), 0, 2);
    EXPECT_EQ(s.edit_start, " ");
}

TEST_F(DayGrid, DoubleClickOnSpacerDoesNothing) {
    rebuild(s);
    vsSched_DblClick(s.store(), s.view(), s.editing(), s.run(), 19, 1);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(DayGrid, DoubleClickWithoutCalendarAsksForOne) {
    rebuild(s);
    s.cal_path.clear();
    vsSched_DblClick(s.store(), s.view(), s.editing(), s.run(), 19, 2);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], " Select and Open a Calendar first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(DayGrid, TabWithNoRowGoesToTheClocksRow) {
    rebuild(s);
    s.vsSched.setRow(0);
    s.vsSched.setCol(0);
    EXPECT_TRUE(vsSched_KeyDown(s, Qt::Key_Tab));
    EXPECT_EQ(s.vsSched.Row(), 19);
    s.vsSched.Select(30, 2);
    EXPECT_FALSE(vsSched_KeyDown(s, Qt::Key_Tab));
}

TEST_F(DayGrid, ReleasingTheButtonNotesTheSelection) {
    rebuild(s);
    s.vsSched.Select(19, 2, 22, 4);
    vsSched_MouseUp(s);
    EXPECT_EQ(s.sel_row1, 19);
    EXPECT_EQ(s.sel_col1, 2);
    EXPECT_EQ(s.sel_row2, 22);
    EXPECT_EQ(s.sel_col2, 4);
}

// --- typing into the grid ----------------------------------------------------

TEST_F(DayGrid, TypingOnASpacerMovesIntoTheNextColumn) {
    rebuild(s);
    EXPECT_TRUE(vsSched_BeforeEdit(s, 21, 3));
    EXPECT_FALSE(s.vsSched.ColHidden(4));
    EXPECT_EQ(s.vsSched.Row(), 21);
    EXPECT_EQ(s.vsSched.Col(), 4);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(DayGrid, TypingOnAnEntryIsRefusedWithAHint) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    EXPECT_TRUE(vsSched_BeforeEdit(s, 19, 2));
    EXPECT_TRUE(vsSched_BeforeEdit(s, 19, 1)); // spacer beside an entry
    ASSERT_EQ(env.m.messages().size(), 2u);
    EXPECT_EQ(env.m.messages()[0], "Double click to edit appointment or click the Edit Details "
                                   "button in the Appointment Details tab.");
    EXPECT_FALSE(vsSched_BeforeEdit(s, 30, 2));
}

TEST_F(DayGrid, TypedEntryRowIsFilledAsAOneTimeEntry) {
    rebuild(s);
    s.vsSched.setTextMatrix(21, 2, "Call Bob");
    s.appt_count = 1;
    quick_appt_rec(s.store(), s.view(), 1, "151234560312", 21, 2);
    const appt_rec& a = *s.appt_row(1);
    EXPECT_EQ(a.appt_first_date.str(), "03152026");
    EXPECT_EQ(a.appt_date.str(), "03152026");
    EXPECT_EQ(a.appt_start.str(), "10:00");
    EXPECT_EQ(a.appt_end.str(), "10:00");
    EXPECT_EQ(a.appt_id.str(), "151234560312");
    EXPECT_EQ(a.appt_text.trimmed(), "Call Bob");
    EXPECT_EQ(a.appt_type.str(), QString("0").leftJustified(15));
    EXPECT_EQ(a.appt_occurs.str(), "0 ");
    EXPECT_EQ(a.appt_occurs_month.str(), "0 ");
    EXPECT_EQ(a.appt_occurs_every.str(), "0 ");
    EXPECT_EQ(a.appt_until.str(), "03/15/26");
    EXPECT_EQ(a.appt_rem_lead.str(), "0 ");
    EXPECT_EQ(a.appt_rem_unit.str(), "0 ");
    EXPECT_EQ(a.appt_rem_anim.str(), "1 ");
    EXPECT_TRUE(a.appt_rem_text.is_blank());
    EXPECT_TRUE(a.appt_notes.is_blank());
    EXPECT_EQ(a.appt_pattern.str(), "1 ");
}

struct LabelCase {
    const char* name;
    int row;
    const char* time;
};

class TypedTimes : public ::testing::TestWithParam<LabelCase> {};

TEST_P(TypedTimes, RowLabelBecomesTwentyFourHourTime) {
    ViewEnv env;
    build_day_rows(env.s.view(), env.s.options());
    env.s.vsSched.setTextMatrix(GetParam().row, 2, "x");
    env.s.appt_count = 1;
    quick_appt_rec(env.s.store(), env.s.view(), 1, "id", GetParam().row, 2);
    EXPECT_EQ(env.s.appt_row(1)->appt_start.str(), GetParam().time);
    EXPECT_EQ(env.s.appt_row(1)->appt_end.str(), GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(DayView, TypedTimes,
                         ::testing::Values(LabelCase{"MidnightRowGivesZeroHour", 1, "00:00"},
                                           LabelCase{"HalfPastMidnightGivesZeroThirty", 2, "00:30"},
                                           LabelCase{"MorningStaysAsWritten", 20, "09:30"},
                                           LabelCase{"NoonRowGivesTwelve", 25, "12:00"},
                                           LabelCase{"AfternoonGoesToTwentyFourHours", 28, "13:30"},
                                           LabelCase{"UntimedRowGivesBlanks", 0, "     "}),
                         [](const ::testing::TestParamInfo<LabelCase>& i) {
                             return std::string(i.param.name);
                         });

class TypedEntry : public DayGrid {
  protected:
    void type(int row, int col, const QString& text) {
        s.vsSched.Select(row, col); // the cell editor sits on the cursor
        s.vsSched.setTextMatrix(row, col, text);
        vsSched_AfterEdit(s, env.w, row, col, QString());
    }
    // March's member; empty when there is none.
    QByteArray member() {
        QByteArray b;
        const int e = s.archive.get(s.cal_path, "c2603.cal", b);
        if (e != 0 && e != 53) ADD_FAILURE() << "reading c2603.cal gave " << e;
        return b;
    }
};

TEST_F(TypedEntry, ConfirmedQuickAddWritesOneLineAndSurvivesARestart) {
    rebuild(s);
    env.m.forms["frmQuick"] = [&] {
        appt_rec& a = *s.appt_row(s.appt_count);
        a.appt_type = "Car";
        a.appt_end = "11:00";
    };
    type(21, 2, "Call Bob");
    const QByteArray b = member();
    ASSERT_EQ(b.size(), 477);
    EXPECT_TRUE(b.endsWith("\r\n"));
    EXPECT_TRUE(b.startsWith("0315202603152026"
                             "10:0011:00"));

    // A new run reads the entry back from the file.
    AppState fresh;
    fresh.app_path = s.app_path;
    fresh.cal_path = s.cal_path;
    fresh.cur_date = s.cur_date;
    fresh.vsSched.set_extent(12000, 9000);
    EXPECT_EQ(load_appts(fresh, fresh.cur_date, fresh.cal_path, 0), 0);
    rebuild(fresh);
    ASSERT_EQ(fresh.appt_count, 1);
    EXPECT_EQ(data(fresh, 21, 2), "1");
    EXPECT_EQ(data(fresh, 22, 2), "1");
    EXPECT_EQ(fresh.vsSched.TextMatrix(21, 2), "10:00 am   Call Bob");
    EXPECT_EQ(fresh.vsSched.Cell(CellSetting::Picture, 21, 2).toString(), "Car");
}

TEST_F(TypedEntry, GridIsRebuiltWithTheEntrySelected) {
    rebuild(s);
    env.m.forms["frmQuick"] = [&] { s.appt_row(s.appt_count)->appt_end = "11:00"; };
    type(21, 2, "Call Bob");
    EXPECT_EQ(s.appt_count, 1); // reloaded from the file, not counted twice
    EXPECT_EQ(s.day_appts, 1);
    EXPECT_EQ(s.vsSched.Row(), 21);
    EXPECT_EQ(s.vsSched.Col(), 2);
    EXPECT_EQ(data(s, 22, 2), "1");
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(s.status_panels[panel_count].text, "1   Appointment");
}

TEST_F(TypedEntry, CancelledQuickAddStillKeepsAOneRowEntry) {
    rebuild(s);
    env.m.forms["frmQuick"] = [&] {
        QuickForm f;
        frmQuick_Load(s.store(), s.view(), f);
        frmQuick_Cancel(s, f);
    };
    type(21, 2, "Call Bob");
    ASSERT_EQ(member().size(), 477);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_end.str(), "10:00");
    EXPECT_EQ(s.appt_row(1)->appt_type.trimmed(), "0");
    EXPECT_EQ(data(s, 21, 2), "1");
    EXPECT_EQ(data(s, 22, 2), "");
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Picture, 21, 2).toString(), "");
}

TEST_F(TypedEntry, TypingInRowZeroMakesAnUntimedEntry) {
    rebuild(s);
    type(0, 2, "Holiday");
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_TRUE(s.appt_row(1)->appt_start.is_blank());
    EXPECT_TRUE(s.appt_row(1)->appt_end.is_blank());
    EXPECT_EQ(data(s, 0, 2), "1");
}

TEST_F(TypedEntry, LongTextIsCutToFiftyAfterTheRebuild) {
    rebuild(s);
    s.menus.mnuShowTimes = false;
    const QString longer = QString(60, QLatin1Char('x'));
    type(25, 2, longer);
    EXPECT_EQ(s.appt_row(1)->appt_text.str(), QString(50, QLatin1Char('x')));
    EXPECT_EQ(s.vsSched.TextMatrix(25, 2), QString(50, QLatin1Char('x')));
}

TEST_F(TypedEntry, Utf8TextTypedIntoAFreeCellIsStoredAndShownAfterTheRebuild) {
    rebuild(s);
    s.menus.mnuShowTimes = false;
    const QStringList texts = texts_in_many_scripts();
    for (int i = 0; i < texts.size(); ++i) {
        type(17 + 2 * i, 2, texts[i]);
        env.clock.advance_secs(1);
    }
    const QByteArray b = member();
    ASSERT_EQ(b.size(), texts.size() * 477);
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_EQ(b.mid(i * 477 + offsetof(appt_rec, appt_text), 50),
                  texts[i].toUtf8().leftJustified(50, ' '))
            << i;
    EXPECT_FALSE(b.contains('?'));

    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    rebuild(s);
    for (int i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(s.appt_row(i + 1)->appt_text.trimmed(), texts[i]);
        EXPECT_EQ(s.vsSched.TextMatrix(17 + 2 * i, 2), texts[i]) << i;
    }
}

TEST_F(TypedEntry, Utf8LongTextIsCutToFiftyBytesBetweenCharacters) {
    rebuild(s);
    s.menus.mnuShowTimes = false;
    type(25, 2, "αβγδεζηθικλμνξοπρστυφχψωάέ"); // 26 letters, 52 bytes
    env.clock.advance_secs(1);
    type(27, 2, QString(47, u'x') + "🎉");
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    rebuild(s);
    EXPECT_EQ(s.vsSched.TextMatrix(25, 2), "αβγδεζηθικλμνξοπρστυφχψωά");
    EXPECT_EQ(s.vsSched.TextMatrix(27, 2), QString(47, u'x'));
    const QByteArray b = member();
    ASSERT_EQ(b.size(), 2 * 477);
    EXPECT_EQ(b.mid(offsetof(appt_rec, appt_text), 50), QByteArray("αβγδεζηθικλμνξοπρστυφχψωά"));
    EXPECT_EQ(b.mid(477 + offsetof(appt_rec, appt_text), 50), QByteArray(47, 'x') + "   ");
}

TEST_F(TypedEntry, NoonRowStoresTwelve) {
    rebuild(s);
    type(25, 2, "Lunch");
    EXPECT_EQ(s.appt_row(1)->appt_start.str(), "12:00");
}

TEST_F(TypedEntry, BlankOrUnchangedTextDoesNothing) {
    rebuild(s);
    type(21, 2, " ");
    type(22, 2, "");
    s.vsSched.setTextMatrix(23, 2, "same");
    vsSched_AfterEdit(s, env.w, 23, 2, "same");
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_TRUE(member().isEmpty());
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(TypedEntry, WithoutACalendarTheCellIsEmptied) {
    rebuild(s);
    s.cal_path.clear();
    type(21, 2, "Call Bob");
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "");
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], " Select and Open a Calendar first");
    EXPECT_EQ(s.appt_count, 0);
}

// --- the Day picture ----------------------------------------------------------

TEST_F(DayGrid, DayPictureShowsTheDayWithTheFirstBlockInThePane) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    imageDay_Click(s.store(), s.view(), s.options(), s.editing(), env.w);
    EXPECT_TRUE(s.view_day);
    EXPECT_FALSE(s.view_week);
    EXPECT_FALSE(s.view_month);
    EXPECT_EQ(data(s, 19, 2), "1");
    EXPECT_TRUE(s.ctl("Frame2").visible);
    EXPECT_EQ(s.cur_row, 19);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1).trimmed(), "Dentist");
    EXPECT_TRUE(s.ctl("Label1").text.startsWith("  "));
    EXPECT_EQ(s.now_row, 19);
    EXPECT_EQ(env.w.layouts, 1);
    EXPECT_FALSE(s.ctl("vsOvervw").visible);
    EXPECT_EQ(s.Combo1.text(), "March");
    EXPECT_EQ(s.Combo2.text(), "2026");
}

TEST_F(DayGrid, DayPictureOnTheDayPlannerOnlyRefreshes) {
    imageDay_Click(s.store(), s.view(), s.options(), s.editing(), env.w);
    imageDay_Click(s.store(), s.view(), s.options(), s.editing(), env.w);
    EXPECT_EQ(env.w.layouts, 1);
}

} // namespace
} // namespace orva::testing
