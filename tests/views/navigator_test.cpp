#include "view_fixtures.h"

#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/navigator.h"

#include <gtest/gtest.h>

namespace orva::testing {
namespace {

constexpr int key_tab = 0x01000001;
constexpr int key_backtab = 0x01000002;
constexpr Color pick = 8454143;
constexpr Color skin_back = rgb(200, 220, 240);

QString data(const AppState& s, int row, int col) {
    return s.vsSched.Cell(CellSetting::Data, row, col).toString();
}

Color back(const Grid& g, int row, int col) {
    return Color(g.Cell(CellSetting::BackColor, row, col).toUInt());
}

// The navigator's cell that shows day d, or (-1, -1).
std::pair<int, int> cell_of(const Grid& g, int d) {
    for (int r = 1; r < g.Rows(); ++r)
        for (int c = 0; c < g.Cols(); ++c)
            if (g.TextMatrix(r, c) == QStringLiteral(" ") + QString::number(d)) return {r, c};
    return {-1, -1};
}

class Navigator : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;

    Navigator() { s.cal_back_color = skin_back; }

    // The navigator as start-up leaves it: lists filled, cur_date's month shown.
    void show_month() {
        docombos(s.store(), s.view());
        fill_cal(s.store(), s.view(), s.cur_date);
    }
    void move_clock(const QDate& d) {
        env.clock.set(QDateTime(d, QTime(9, 10)));
        s.cur_date = d;
        s.today_day = d.day();
    }
    // Several entries written in one go, then cur_date's month reloaded.
    void add_all(const std::vector<appt_rec>& rows) {
        s.occur_count = qint16(rows.size());
        for (size_t i = 0; i < rows.size(); ++i)
            *s.occur_row(int(i) + 1) = rows[i];
        EXPECT_EQ(write_occurs(s, s.cal_path), 0);
        EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    }
};

// --- the month grid ---------------------------------------------------------

TEST_F(Navigator, HeaderIsCentredAndBold) {
    show_month();
    ASSERT_EQ(s.Cal.Rows(), 7);
    ASSERT_EQ(s.Cal.Cols(), 7);
    EXPECT_EQ(s.Cal.FixedRows(), 1);
    const char* names[] = {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};
    for (int c = 0; c < 7; ++c) {
        EXPECT_EQ(s.Cal.TextMatrix(0, c), QString::fromLatin1(names[c]));
        EXPECT_EQ(s.Cal.Cell(CellSetting::Alignment, 0, c).toInt(), int(Align::CenterCenter));
        EXPECT_TRUE(s.Cal.Cell(CellSetting::FontBold, 0, c).toBool());
    }
}

TEST_F(Navigator, DaysCarryALeadingBlankRightTopOnTheSkinColour) {
    show_month();
    // March 2026 begins on a Sunday.
    EXPECT_EQ(s.first_day, QDate(2026, 3, 1));
    EXPECT_EQ(s.next_first_day, QDate(2026, 4, 1));
    EXPECT_EQ(s.month_days, 31);
    EXPECT_EQ(s.first_wday, 0);
    EXPECT_EQ(s.Cal.TextMatrix(1, 0), " 1");
    EXPECT_EQ(s.Cal.TextMatrix(2, 4), " 12");
    EXPECT_EQ(s.Cal.TextMatrix(5, 2), " 31");
    EXPECT_EQ(s.Cal.TextMatrix(5, 3), "");
    EXPECT_EQ(s.Cal.Cell(CellSetting::Alignment, 2, 4).toInt(), int(Align::RightTop));
    EXPECT_EQ(back(s.Cal, 2, 4), skin_back);
    EXPECT_FALSE(s.Cal.Cell(CellSetting::FontBold, 2, 4).toBool());
}

TEST_F(Navigator, TodaysDayNumberIsWhiteAndBold) {
    s.cal_sel_row = 0;
    s.cal_sel_col = 4;
    show_month();
    EXPECT_EQ(back(s.Cal, 3, 0), white);
    EXPECT_TRUE(s.Cal.Cell(CellSetting::FontBold, 3, 0).toBool());
    EXPECT_EQ(s.cal_row, 3);
    EXPECT_EQ(s.cal_col, 0);
    // With nothing selected the row is taken, the column is left alone.
    EXPECT_EQ(s.cal_sel_row, 3);
    EXPECT_EQ(s.cal_sel_col, 4);
}

TEST_F(Navigator, TodaysNumberIsMarkedInAnyMonthShown) {
    fill_cal(s.store(), s.view(), QDate(2026, 8, 10));
    const auto [r, c] = cell_of(s.Cal, 15);
    ASSERT_GE(r, 1);
    EXPECT_EQ(back(s.Cal, r, c), white);
}

TEST_F(Navigator, SelectionSurvivesARefill) {
    s.cal_sel_row = 2;
    s.cal_sel_col = 5;
    show_month();
    EXPECT_EQ(s.cal_sel_row, 2);
    EXPECT_EQ(s.cal_sel_col, 5);
}

TEST_F(Navigator, DaysWithEntriesShowTheirSticker) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist", "Car"));
    appt_rec untyped = make_appt("03202026", "b", "09:00", "Lunch");
    untyped.appt_type = QString();
    env.add(untyped);
    show_month();
    const auto [r15, c15] = cell_of(s.Cal, 15);
    EXPECT_EQ(s.Cal.Cell(CellSetting::Picture, r15, c15).toString(), "Car");
    EXPECT_EQ(s.Cal.Cell(CellSetting::PictureAlignment, r15, c15).toInt(),
              int(Align::CenterCenter));
    const auto [r20, c20] = cell_of(s.Cal, 20);
    EXPECT_EQ(s.Cal.Cell(CellSetting::Picture, r20, c20).toString(), "Alarm");
    const auto [r21, c21] = cell_of(s.Cal, 21);
    EXPECT_EQ(s.Cal.Cell(CellSetting::Picture, r21, c21).toString(), "");
}

TEST_F(Navigator, FillResetsThePickColour) {
    s.cal_pick_color = 5;
    show_month();
    EXPECT_EQ(s.cal_pick_color, pick);
}

TEST_F(Navigator, SaturdayStart31DaysFillsSixRows) {
    fill_cal(s.store(), s.view(), QDate(2026, 8, 1));
    EXPECT_EQ(s.first_wday, 6);
    EXPECT_EQ(s.Cal.TextMatrix(1, 6), " 1");
    EXPECT_EQ(s.Cal.TextMatrix(1, 5), "");
    EXPECT_EQ(s.Cal.TextMatrix(2, 0), " 2");
    EXPECT_EQ(s.Cal.TextMatrix(6, 0), " 30");
    EXPECT_EQ(s.Cal.TextMatrix(6, 1), " 31");
    EXPECT_EQ(s.Cal.TextMatrix(6, 2), "");
}

TEST_F(Navigator, CommonFebruaryFromSundayFillsFourRowsSizedForSix) {
    fill_cal(s.store(), s.view(), QDate(2026, 2, 10));
    EXPECT_EQ(s.month_days, 28);
    EXPECT_EQ(s.Cal.TextMatrix(1, 0), " 1");
    EXPECT_EQ(s.Cal.TextMatrix(4, 6), " 28");
    for (int c = 0; c < 7; ++c)
        EXPECT_EQ(s.Cal.TextMatrix(5, c), "") << c;
    // 3600 x 2400 twips, header 255 high.
    for (int c = 0; c < 7; ++c)
        EXPECT_EQ(s.Cal.ColWidth(c), 3600 / 7 - 10) << c;
    for (int r = 1; r <= 6; ++r)
        EXPECT_EQ(s.Cal.RowHeight(r), (2400 - 255) / 6 - 10) << r;
}

TEST_F(Navigator, NegativeSizesAreNotApplied) {
    s.Cal.set_extent(50, 100);
    show_month();
    EXPECT_EQ(s.Cal.ColWidth(0), Grid::default_col_width);
    EXPECT_EQ(s.Cal.RowHeight(1), Grid::default_row_height);
}

// --- marking ----------------------------------------------------------------

TEST_F(Navigator, MarkingMovesThePickColourAndGivesTheOldCellItsColourBack) {
    show_month();
    mark_cal_day(s, 2, 3);
    EXPECT_EQ(back(s.Cal, 2, 3), pick);
    EXPECT_EQ(s.Cal.Row(), 2);
    EXPECT_EQ(s.Cal.Col(), 3);
    mark_cal_day(s, 4, 4);
    EXPECT_EQ(back(s.Cal, 2, 3), skin_back);
    EXPECT_EQ(back(s.Cal, 4, 4), pick);
    EXPECT_EQ(s.cal_sel_row, 4);
    EXPECT_EQ(s.cal_sel_col, 4);
}

TEST_F(Navigator, TodaysCellNeverShowsTheSelection) {
    show_month();
    mark_cal_day(s, 3, 0);
    EXPECT_EQ(back(s.Cal, 3, 0), white);
    mark_cal_day(s, 2, 2);
    EXPECT_EQ(back(s.Cal, 3, 0), white);
    EXPECT_EQ(back(s.Cal, 2, 2), pick);
}

TEST_F(Navigator, MarkingRowZeroDoesNothing) {
    show_month();
    mark_cal_day(s, 2, 3);
    s.cal_pick_color = 7;
    mark_cal_day(s, 0, 1);
    EXPECT_EQ(s.cal_pick_color, pick);
    EXPECT_EQ(back(s.Cal, 2, 3), pick);
    EXPECT_EQ(s.cal_sel_row, 2);
    EXPECT_EQ(s.cal_sel_col, 3);
}

TEST_F(Navigator, MarkCurDayFindsTheDayNumber) {
    s.cur_date = QDate(2026, 3, 12);
    show_month();
    mark_cur_day(s.store(), s.view());
    EXPECT_EQ(s.cal_row, 2);
    EXPECT_EQ(s.cal_col, 4);
    EXPECT_EQ(back(s.Cal, 2, 4), pick);
    // " 1" is not a full match for 12 nor is " 12" for 1.
    s.cur_date = QDate(2026, 3, 1);
    mark_cur_day(s.store(), s.view());
    EXPECT_EQ(s.cal_sel_row, 1);
    EXPECT_EQ(s.cal_sel_col, 0);
}

// --- the lists --------------------------------------------------------------

TEST_F(Navigator, ListsHoldMonthNamesAndYearsFrom2001ToFifteenAhead) {
    s.combo_lock = true;
    docombos(s.store(), s.view());
    ASSERT_EQ(s.Combo1.items.size(), 12);
    EXPECT_EQ(s.Combo1.items.front(), "January");
    EXPECT_EQ(s.Combo1.items[8], "September");
    EXPECT_EQ(s.Combo1.items.back(), "December");
    ASSERT_EQ(s.Combo2.items.size(), 41);
    EXPECT_EQ(s.Combo2.items.front(), "2001");
    EXPECT_EQ(s.Combo2.items.back(), "2041");
    EXPECT_EQ(s.Combo1.text(), "March");
    EXPECT_EQ(s.Combo2.text(), "2026");
    EXPECT_FALSE(s.combo_lock);
}

TEST_F(Navigator, YearOutsideTheListPointsAtTheFirst) {
    s.cur_date = QDate(1999, 6, 1);
    docombos(s.store(), s.view());
    EXPECT_EQ(s.Combo2.list_index, 0);
    EXPECT_EQ(s.Combo1.text(), "June");
}

TEST_F(Navigator, SyncCombosLoadsOnlyAnotherMonth) {
    env.add(make_appt("04022026", "apr", "09:00", "April thing"));
    show_month();
    sync_combos(s.store(), s.view(), QDate(2026, 3, 28));
    EXPECT_EQ(s.appt_count, 0);
    sync_combos(s.store(), s.view(), QDate(2026, 4, 2));
    EXPECT_EQ(s.Combo1.text(), "April");
    EXPECT_EQ(s.Combo2.text(), "2026");
    EXPECT_FALSE(s.combo_lock);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_id.trimmed(), "apr");
}

// --- month changes ----------------------------------------------------------

TEST_F(Navigator, MonthChangeLoadsTheMonthAndRebuildsTheDay) {
    env.add(make_appt("02152026", "feb", "09:00", "Dentist"));
    show_month();
    s.Combo1.list_index = 1;
    month_changed(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 2, 15));
    EXPECT_EQ(s.edit_date, QDate(2026, 2, 15));
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(data(s, 19, 2), "1");
    EXPECT_EQ(s.ctl("Label1").text, long_date_label(QDate(2026, 2, 15)));
    EXPECT_EQ(s.Cal.TextMatrix(4, 6), " 28");
    EXPECT_EQ(s.ctl("Frame2").text, s.vsSched.TextMatrix(19, 2));
    EXPECT_TRUE(s.timer1_enabled);
}

TEST_F(Navigator, ChangeFromThe31stToFebruaryUsesTodaysClampedDay) {
    show_month();
    const auto [r, c] = cell_of(s.Cal, 31);
    Cal_Click(s, env.w, r, c);
    ASSERT_EQ(s.cur_date, QDate(2026, 3, 31));
    s.Combo1.list_index = 1;
    month_changed(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 2, 15));
    EXPECT_EQ(s.today_day, 15);

    move_clock(QDate(2026, 1, 31));
    show_month();
    s.Combo1.list_index = 1;
    month_changed(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 2, 28));
    EXPECT_EQ(s.today_day, 28);
}

TEST_F(Navigator, LeapFebruaryFromThe30thGivesDay29) {
    move_clock(QDate(2028, 1, 30));
    show_month();
    s.Combo1.list_index = 1;
    month_changed(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2028, 2, 29));
    EXPECT_EQ(s.today_day, 29);
    const auto [r, c] = cell_of(s.Cal, 29);
    EXPECT_EQ(back(s.Cal, r, c), white);
}

TEST_F(Navigator, LockedListsDoNotChangeTheMonth) {
    show_month();
    s.Combo1.list_index = 1;
    s.combo_lock = true;
    month_changed(s, env.w);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
}

TEST_F(Navigator, PriorMonthStepsTheMonthList) {
    show_month();
    imgPriorMth_Click(s, env.w);
    EXPECT_EQ(s.Combo1.text(), "February");
    EXPECT_EQ(s.cur_date, QDate(2026, 2, 15));
}

TEST_F(Navigator, PriorMonthAtJanuaryGoesToDecemberOfTheYearBefore) {
    s.cur_date = QDate(2026, 1, 15);
    show_month();
    imgPriorMth_Click(s, env.w);
    EXPECT_EQ(s.Combo1.text(), "December");
    EXPECT_EQ(s.Combo2.text(), "2025");
    EXPECT_EQ(s.cur_date, QDate(2025, 12, 15));
}

TEST_F(Navigator, PriorMonthAtJanuary2001LeavesDecemberWithoutReload) {
    s.cur_date = QDate(2001, 1, 15);
    show_month();
    s.appt_count = 1;
    *s.appt_row(1) = make_appt("01152001", "kept");
    imgPriorMth_Click(s, env.w);
    EXPECT_EQ(s.Combo1.text(), "December");
    EXPECT_EQ(s.Combo2.text(), "2001");
    EXPECT_EQ(s.cur_date, QDate(2001, 1, 15));
    EXPECT_EQ(s.appt_count, 1);
    EXPECT_FALSE(s.combo_lock);
}

TEST_F(Navigator, NextMonthAtDecemberGoesToJanuaryOfTheYearAfter) {
    s.cur_date = QDate(2026, 12, 3);
    show_month();
    imgNextMth_Click(s, env.w);
    EXPECT_EQ(s.Combo1.text(), "January");
    EXPECT_EQ(s.Combo2.text(), "2027");
    EXPECT_EQ(s.cur_date, QDate(2027, 1, 15));
}

TEST_F(Navigator, NextMonthAtLastYearMovesMonthOnly) {
    s.cur_date = QDate(2041, 12, 15);
    show_month();
    s.appt_count = 1;
    *s.appt_row(1) = make_appt("12152041", "kept");
    imgNextMth_Click(s, env.w);
    EXPECT_EQ(s.Combo1.text(), "January");
    EXPECT_EQ(s.Combo2.text(), "2041");
    EXPECT_EQ(s.cur_date, QDate(2041, 12, 15));
    EXPECT_EQ(s.appt_count, 1);
    EXPECT_TRUE(env.m.shown.empty());
}

// --- clicks -------------------------------------------------------------------

TEST_F(Navigator, ClickOnDayRebuildsTheDayFromTheTable) {
    env.add(make_appt("03202026", "a", "09:00", "Dentist"));
    show_month();
    // What the table holds is shown: a reload would bring the file's text back.
    s.appt_row(1)->appt_text = QStringLiteral("Only in memory");
    s.timer1_enabled = false;
    const auto [r, c] = cell_of(s.Cal, 20);
    Cal_Click(s, env.w, r, c);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 20));
    EXPECT_EQ(s.edit_date, QDate(2026, 3, 20));
    EXPECT_EQ(s.ctl("Label1").text, long_date_label(QDate(2026, 3, 20)));
    EXPECT_EQ(env.w.long_date, long_date_label(QDate(2026, 3, 20)));
    EXPECT_EQ(data(s, 19, 2), "1");
    EXPECT_TRUE(s.vsSched.TextMatrix(19, 2).endsWith("Only in memory"));
    EXPECT_TRUE(s.ctl("Frame2").visible);
    EXPECT_EQ(s.ctl("Frame2").text, s.vsSched.TextMatrix(19, 2));
    EXPECT_EQ(s.edit_index, 1);
    EXPECT_EQ(s.cal_row, r);
    EXPECT_EQ(s.cal_col, c);
    EXPECT_EQ(back(s.Cal, r, c), pick);
    EXPECT_EQ(s.day_appts, 1);
    EXPECT_TRUE(s.timer1_enabled);
}

TEST_F(Navigator, ClickOnEmptyDayClearsThePane) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    show_month();
    const auto [r15, c15] = cell_of(s.Cal, 15);
    Cal_Click(s, env.w, r15, c15);
    ASSERT_TRUE(s.ctl("imgDtlAppt").enabled);
    const auto [r, c] = cell_of(s.Cal, 16);
    Cal_Click(s, env.w, r, c);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 16));
    EXPECT_EQ(s.day_appts, 0);
    EXPECT_EQ(data(s, 19, 2), "");
    EXPECT_FALSE(s.ctl("imgDtlAppt").enabled);
    EXPECT_EQ(s.ctl("rtNotes").text, " ");
}

TEST_F(Navigator, ClickOnEmptyCellOrHeaderDoesNothing) {
    show_month();
    s.timer1_enabled = true;
    Cal_Click(s, env.w, 0, 3);
    Cal_Click(s, env.w, 5, 3);
    Cal_Click(s, env.w, 6, 0);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
    EXPECT_EQ(s.cal_row, 3);
    EXPECT_EQ(s.cal_col, 0);
    EXPECT_EQ(back(s.Cal, 5, 3), s.Cal.BackColor());
    EXPECT_EQ(s.vsSched.Rows(), 0);
    EXPECT_TRUE(s.timer1_enabled);
    Cal_DblClick(s.store(), s.view(), s.editing(), s.run(), 0, 3);
    Cal_DblClick(s.store(), s.view(), s.editing(), s.run(), 5, 3);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(Navigator, DoubleClickOpensRowOfTwoCharacterIndex) {
    std::vector<appt_rec> rows;
    for (int i = 1; i <= 122; ++i)
        rows.push_back(make_appt("03102026", QString("f%1").arg(i), "10:00", "Filler"));
    rows.push_back(make_appt("03202026", "early", "08:00", "Early"));
    add_all(rows);
    ASSERT_EQ(s.appt_count, 123);
    ASSERT_EQ(s.appt_row(123)->appt_id.trimmed(), "early");
    show_month();
    const auto [r, c] = cell_of(s.Cal, 20);
    Cal_DblClick(s.store(), s.view(), s.editing(), s.run(), r, c);
    EXPECT_EQ(s.edit_index, 12);
    EXPECT_FALSE(s.new_appt);
    EXPECT_TRUE(s.appt_from_planner);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
}

TEST_F(Navigator, DoubleClickOnFreeDayStartsAnEntryAtTheClock) {
    show_month();
    s.new_appt = false;
    s.rem_lead = 5;
    s.rem_unit = 2;
    s.rem_anim = 4;
    s.edit_index = 9;
    const auto [r, c] = cell_of(s.Cal, 21);
    Cal_DblClick(s.store(), s.view(), s.editing(), s.run(), r, c);
    EXPECT_TRUE(s.new_appt);
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_unit, 0);
    EXPECT_EQ(s.rem_anim, 1);
    EXPECT_EQ(s.edit_index, 0);
    EXPECT_EQ(s.edit_date, QDate(2026, 3, 15));
    EXPECT_EQ(s.edit_start, "09:10");
    EXPECT_TRUE(s.appt_from_planner);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
}

TEST_F(Navigator, DoubleClickWithoutCalendarWarns) {
    show_month();
    s.cal_path.clear();
    const auto [r, c] = cell_of(s.Cal, 21);
    Cal_DblClick(s.store(), s.view(), s.editing(), s.run(), r, c);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, " Select and Open a Calendar first");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Warning);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(Navigator, DroppedPictureShowsOnThePickColour) {
    show_month();
    Cal_DragDrop(s, 2, 3, "Car");
    EXPECT_EQ(s.Cal.Cell(CellSetting::Picture, 2, 3).toString(), "Car");
    EXPECT_EQ(s.Cal.Cell(CellSetting::PictureAlignment, 2, 3).toInt(), int(Align::LeftCenter));
    EXPECT_EQ(back(s.Cal, 2, 3), pick);
    Cal_DragDrop(s, 0, 3, "Car");
    EXPECT_EQ(s.Cal.Cell(CellSetting::Picture, 0, 3).toString(), "");
}

// --- arrows -----------------------------------------------------------------

TEST_F(Navigator, ArrowAcrossMonthEndLoadsThroughSyncCombos) {
    s.cur_date = QDate(2026, 3, 31);
    env.add(make_appt("04012026", "apr", "09:00", "April fool"));
    ASSERT_EQ(s.appt_count, 0);
    show_month();
    ImageArrow_Click(s, env.w, 1);
    EXPECT_EQ(s.cur_date, QDate(2026, 4, 1));
    EXPECT_EQ(s.edit_date, QDate(2026, 4, 1));
    EXPECT_EQ(s.Combo1.text(), "April");
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(data(s, 19, 2), "1");
    EXPECT_EQ(s.ctl("Label1").text, long_date_label(QDate(2026, 4, 1)));
    // April 2026 begins on a Wednesday.
    EXPECT_EQ(s.Cal.TextMatrix(1, 3), " 1");
    EXPECT_EQ(s.cal_sel_row, 1);
    EXPECT_EQ(s.cal_sel_col, 3);
    EXPECT_EQ(back(s.Cal, 1, 3), pick);
    EXPECT_EQ(s.ctl("Frame2").text, s.vsSched.TextMatrix(19, 2));
}

TEST_F(Navigator, ArrowWithinTheMonthReadsNothing) {
    env.add(make_appt("03142026", "a", "09:00", "Dentist"));
    show_month();
    s.appt_row(1)->appt_text = QStringLiteral("Only in memory");
    ImageArrow_Click(s, env.w, 0);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 14));
    EXPECT_TRUE(s.vsSched.TextMatrix(19, 2).endsWith("Only in memory"));
}

TEST_F(Navigator, ArrowInWeekPlannerStepsAWeek) {
    show_month();
    s.view_week = true;
    ImageArrow_Click(s, env.w, 1);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 22));
    ImageArrow_Click(s, env.w, 0);
    ImageArrow_Click(s, env.w, 0);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 8));
}

TEST_F(Navigator, ArrowInMonthPlannerStepsADayAndLoadsNothing) {
    s.cur_date = QDate(2026, 3, 31);
    env.add(make_appt("04012026", "apr", "09:00", "April fool"));
    show_month();
    s.view_month = true;
    ImageArrow_Click(s, env.w, 1);
    EXPECT_EQ(s.cur_date, QDate(2026, 4, 1));
    // The lists follow the date, but no member is read: April shows free.
    EXPECT_EQ(s.Combo1.text(), "April");
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_EQ(s.vsOvervw.TextMatrix(1, 3), " 1");
    EXPECT_EQ(s.vsOvervw.TextMatrix(2, 3), "");
    EXPECT_EQ(s.vsOvervw.Cell(CellSetting::Data, 2, 3).toString(), "04012026?");
}

TEST_F(Navigator, ArrowWithoutCalendarShowsPlainMessage) {
    show_month();
    s.cal_path.clear();
    ImageArrow_Click(s, env.w, 1);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, " Select and Open a Calendar first");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Plain);
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
}

TEST_F(Navigator, ArrowTipsFollowThePlanner) {
    s.ctl("Label4").visible = false;
    s.ctl("Label5").visible = false;
    ImageArrow_MouseMove(s);
    EXPECT_EQ(s.ctl("ImageArrow0").tip, "Prior Day");
    EXPECT_EQ(s.ctl("ImageArrow1").tip, "Next Day");
    EXPECT_TRUE(s.ctl("Label4").visible);
    EXPECT_TRUE(s.ctl("Label5").visible);
    s.view_week = true;
    ImageArrow_MouseMove(s);
    EXPECT_EQ(s.ctl("ImageArrow0").tip, "Prior Week");
    EXPECT_EQ(s.ctl("ImageArrow1").tip, "Next Week");
    s.view_week = false;
    s.view_month = true;
    ImageArrow_MouseMove(s);
    EXPECT_EQ(s.ctl("ImageArrow0").tip, "Prior Day");
    EXPECT_EQ(s.ctl("ImageArrow1").tip, "Next Day");
}

TEST_F(Navigator, TabStepsForwardAndShiftTabBack) {
    show_month();
    EXPECT_TRUE(Cal_KeyDown(s, env.w, key_tab, false));
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 16));
    EXPECT_TRUE(Cal_KeyDown(s, env.w, key_tab, true));
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
    EXPECT_TRUE(
        Cal_KeyDown(s, env.w, key_backtab, true));
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 14));
    EXPECT_FALSE(Cal_KeyDown(s, env.w, 0x41, false));
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 14));
}

} // namespace
} // namespace orva::testing
