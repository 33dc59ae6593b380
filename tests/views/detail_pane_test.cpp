#include "view_fixtures.h"

#include "appointments/quick_add.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/status.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace orva::testing {
namespace {

class DetailPane : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;

    // Puts (row, col) of the day grid into the pane as a click would.
    void select(int row, int col) {
        s.cur_row = qint16(row);
        s.cur_col = qint16(col);
        s.vsSched.Select(row, col);
        show_detail(s.store(), s.view(), s.options(), s.editing(), row, col);
    }
    const QString& frame() { return s.ctl("Frame2").text; }
};

appt_rec timed(const QString& start, const QString& end) {
    appt_rec a = make_appt("03152026", "x", start, "Dentist");
    a.appt_end = end;
    return a;
}

// --- the lines ----------------------------------------------------------------

struct DurationCase {
    const char* name;
    const char* start;
    const char* end;
    const char* text;
};

class Durations : public ::testing::TestWithParam<DurationCase> {};

TEST_P(Durations, ReadInHoursAndMinutes) {
    const DurationCase& c = GetParam();
    EXPECT_EQ(dtl_duration(c.start, c.end), QString::fromLatin1(c.text));
}

INSTANTIATE_TEST_SUITE_P(
    DetailPane, Durations,
    ::testing::Values(
        DurationCase{"ZeroIsOneBlank", "09:00", "09:00", " "},
        DurationCase{"MinutesOnly", "09:00", "09:30", "     [ 30 minutes ]"},
        DurationCase{"OneMinuteStaysPlural", "09:00", "09:01", "     [ 1 minutes ]"},
        DurationCase{"OneHour", "09:00", "10:00", "     [ 1 hour ] "},
        DurationCase{"OneHourAndMinutes", "09:00", "10:15", "     [ 1 hour  15 minutes ]"},
        DurationCase{"Hours", "09:00", "12:00", "     [ 3 hours ] "},
        DurationCase{"HoursAndMinutes", "08:10", "10:40", "     [ 2 hours  30 minutes ]"},
        DurationCase{"BlankTimesAreZero", "     ", "     ", " "}),
    [](const ::testing::TestParamInfo<DurationCase>& i) { return std::string(i.param.name); });

TEST_F(DetailPane, ZeroLengthTimedShowsEqualTimesAndBlankDuration) {
    EXPECT_EQ(dtl_time_line(timed("09:00", "09:00"), 19), "09:00 am  -  09:00 am ");
}

TEST_F(DetailPane, SixtyOneMinutesReadsOneHourOneMinutes) {
    EXPECT_EQ(dtl_time_line(timed("13:30", "14:31"), 28),
              "01:30 pm  -  02:31 pm     [ 1 hour  1 minutes ]");
}

TEST_F(DetailPane, RowZeroIsNotTimed) {
    EXPECT_EQ(dtl_time_line(timed("     ", "     "), 0), "Not timed ");
}

TEST_F(DetailPane, LeadZeroShowsNoReminders) {
    appt_rec a = timed("09:00", "10:00");
    a.appt_rem_lead = QStringLiteral("0 ");
    s.rmdr_count = 1;
    *s.rmdr_row(1) = make_rmdr("03/15/26", "x");
    EXPECT_EQ(dtl_reminder_line(s, a), " No reminders ");
    a.appt_rem_lead = QStringLiteral("-5");
    EXPECT_EQ(dtl_reminder_line(s, a), " No reminders ");
}

TEST_F(DetailPane, MissingReminderRowShowsExpired) {
    appt_rec a = timed("09:00", "10:00");
    a.appt_rem_lead = QStringLiteral("30");
    s.rmdr_count = 1;
    *s.rmdr_row(1) = make_rmdr("03/15/26", "someone");
    EXPECT_EQ(dtl_reminder_line(s, a), "Reminder set for :     @    (expired)");
}

TEST_F(DetailPane, WaitingReminderShowsShortDateTimeAndActive) {
    appt_rec a = timed("09:00", "10:00");
    a.appt_rem_lead = QStringLiteral("30");
    rmdr_rec other_day = make_rmdr("03/16/26", "x", "07:00");
    other_day.rmdr_appt_date = QStringLiteral("03162026");
    s.rmdr_count = 2;
    *s.rmdr_row(1) = other_day;
    *s.rmdr_row(2) = make_rmdr("03/14/26", "x", "08:30");
    const QString date = QLocale().toString(QDate(2026, 3, 14), QLocale::ShortFormat);
    EXPECT_EQ(dtl_reminder_line(s, a), "Reminder set for :   " + date + "  @  08:30 am  (active)");
    s.rmdr_row(2)->rmdr_fired = QStringLiteral("T");
    EXPECT_EQ(dtl_reminder_line(s, a), "Reminder set for :   " + date + "  @  08:30 am  (expired)");
}

TEST_F(DetailPane, FourOccurrencesCountFourOneUsesSingular) {
    const char* dates[] = {"03022026", "03092026", "03162026", "03232026"};
    s.occur_count = 5;
    for (int i = 0; i < 4; ++i)
        *s.occur_row(i + 1) = make_appt(dates[i], "series", "09:00", "Weekly");
    *s.occur_row(5) = make_appt("03152026", "single", "11:00", "Once");
    EXPECT_EQ(write_occurs(s, s.cal_path), 0);
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    ASSERT_EQ(s.appt_count, 5);
    EXPECT_EQ(dtl_count_line(s, *s.appt_row(1)), " Appointment occurs 4 times this month");
    EXPECT_EQ(dtl_count_line(s, *s.appt_row(5)), " Appointment occurs 1 time this month");
}

// --- the pane -------------------------------------------------------------------

TEST_F(DetailPane, FillBuildsSixRowsOfFactsAndPictures) {
    appt_rec a = env.entry("a", "09:00", "10:00", "Dentist", "Car");
    a.appt_notes = QStringLiteral("Bring the card");
    env.add(a);
    rebuild(s);
    select(19, 2);
    const Grid& g = s.vsDtl;
    ASSERT_EQ(g.Rows(), 6);
    ASSERT_EQ(g.Cols(), 2);
    EXPECT_EQ(g.TextMatrix(0, 1), "Dentist");
    EXPECT_EQ(g.TextMatrix(1, 1), "09:00 am  -  10:00 am     [ 1 hour ] ");
    EXPECT_EQ(g.TextMatrix(2, 1), " No reminders ");
    EXPECT_EQ(g.TextMatrix(3, 1), " Appointment occurs 1 time this month");
    for (int r = 0; r < 6; ++r)
        EXPECT_EQ(g.TextMatrix(r, 0), " ") << r;
    EXPECT_EQ(g.TextMatrix(4, 1), " ");
    EXPECT_EQ(g.TextMatrix(5, 1), " ");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 0, 0).toString(), "Car");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 1, 0).toString(), "DtlTime");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 2, 0).toString(), "DtlReminder");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 3, 0).toString(), "DtlCount");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 4, 0).toString(), "");
    for (int r = 0; r < 4; ++r)
        EXPECT_EQ(g.Cell(CellSetting::PictureAlignment, r, 0).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(g.ColWidth(0), 500);
    EXPECT_EQ(s.ctl("rtNotes").text, "Bring the card");
    EXPECT_EQ(frame(), s.vsSched.TextMatrix(19, 2));
    EXPECT_EQ(s.edit_index, 1);
    for (const char* n : {"imgDtlAppt", "imgDtlNote", "imgDtlPrior", "imgDtlNext", "prtdtlImg"})
        EXPECT_TRUE(s.ctl(n).enabled) << n;
}

TEST_F(DetailPane, TabsAndLineEndsInTheTextAndNotesStayInTheirLines) {
    appt_rec a = env.entry("a", "09:00", "10:00", "one\ttwo\tthree", "Car");
    a.appt_notes = QStringLiteral("first\r\nsecond\tcolumn");
    env.add(a);
    rebuild(s);
    select(19, 2);
    const Grid& g = s.vsDtl;
    ASSERT_EQ(g.Rows(), 6);
    EXPECT_EQ(g.TextMatrix(0, 1), "one\ttwo\tthree");
    EXPECT_EQ(g.TextMatrix(1, 1), "09:00 am  -  10:00 am     [ 1 hour ] ");
    EXPECT_EQ(s.ctl("rtNotes").text, "first\r\nsecond\tcolumn");
}

TEST_F(DetailPane, StartThatIsNoTimeShowsTheEntryWithoutTimes) {
    env.add(env.entry("a", "\t9:00", "10:00", "Tabbed"));
    rebuild(s);
    select(0, 2);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Tabbed");
    EXPECT_EQ(s.vsDtl.TextMatrix(1, 1), "Not timed ");
}

TEST_F(DetailPane, RowHeightsFollowTheGridWithinLimits) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    // 1750 high: a sixth less one is 290; the lines keep their 340.
    select(19, 2);
    EXPECT_EQ(s.vsDtl.RowHeight(0), 580);
    for (int r = 1; r < 6; ++r)
        EXPECT_EQ(s.vsDtl.RowHeight(r), 340) << r;
    s.vsDtl.set_extent(4455, 6000);
    select(19, 2);
    EXPECT_EQ(s.vsDtl.RowHeight(0), 1998);
    EXPECT_EQ(s.vsDtl.RowHeight(3), 999);
    s.vsDtl.set_extent(4455, 300);
    select(19, 2);
    EXPECT_EQ(s.vsDtl.RowHeight(0), 300);
    EXPECT_EQ(s.vsDtl.RowHeight(1), 300);
}

TEST_F(DetailPane, RowsHeightIsWhatTheFillGivesItsSixRows) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    for (int height : {1750, 6000, 300, 2100}) {
        s.vsDtl.set_extent(4455, height);
        select(19, 2);
        int sum = 0;
        for (int r = 0; r < 6; ++r)
            sum += s.vsDtl.RowHeight(r);
        EXPECT_EQ(dtl_rows_height(height), sum) << height;
    }
}

TEST_F(DetailPane, TextColumnFitsButStaysWithinTwiceTheGrid) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    EXPECT_GT(s.vsDtl.ColWidth(1), 1000);
    EXPECT_LE(s.vsDtl.ColWidth(1), 2 * 4455);
    s.vsDtl.set_extent(300, 1750);
    select(19, 2);
    EXPECT_EQ(s.vsDtl.ColWidth(1), 600);
}

TEST_F(DetailPane, CellsTakeTheOptionsFont) {
    s.grid_font_size = "12";
    s.grid_font_bold = true;
    s.grid_font_color = QString::number(rgb(0, 0, 200));
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    const Grid& g = s.vsDtl;
    EXPECT_EQ(g.Cell(CellSetting::FontName, 3, 1).toString(), "DejaVu Sans");
    EXPECT_DOUBLE_EQ(g.Cell(CellSetting::FontSize, 3, 1).toDouble(), 12.0);
    EXPECT_TRUE(g.Cell(CellSetting::FontBold, 0, 0).toBool());
    EXPECT_EQ(g.Cell(CellSetting::ForeColor, 5, 1).toUInt(), rgb(0, 0, 200));
    EXPECT_DOUBLE_EQ(g.FontSize(), 12.0);
    EXPECT_TRUE(g.FontBold());
}

TEST_F(DetailPane, NoTypeShowsBlankInsteadOfPicture) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist", ""));
    rebuild(s);
    select(19, 2);
    EXPECT_EQ(s.vsDtl.Cell(CellSetting::Picture, 0, 0).toString(), "");
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 0), " ");
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Dentist");
}

TEST_F(DetailPane, UntimedEntryHasNoCaptionAndIsNotTimed) {
    env.add(env.entry("u", "     ", "     ", "Birthday"));
    rebuild(s);
    s.ctl("Frame2").text = "old";
    select(0, 2);
    EXPECT_EQ(frame(), "");
    EXPECT_EQ(s.vsDtl.TextMatrix(1, 1), "Not timed ");
}

TEST_F(DetailPane, EntryOfAnotherDayOnlyTakesTheIndex) {
    env.add(make_appt("03202026", "other", "09:00", "Elsewhere"));
    rebuild(s);
    s.vsSched.setCell(CellSetting::Data, 19, 2, 1);
    s.ctl("Frame2").text = "kept";
    s.vsDtl.setRows(6);
    s.vsDtl.setCols(2);
    s.vsDtl.setTextMatrix(0, 1, "kept");
    select(19, 2);
    EXPECT_EQ(s.edit_index, 1);
    EXPECT_EQ(frame(), "kept");
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "kept");
}

TEST_F(DetailPane, FreeCellEmptiesTheGridAndRowMinusOneDoesNothing) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    show_detail(s.store(), s.view(), s.options(), s.editing(), -1, 2);
    EXPECT_EQ(s.edit_index, 1);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Dentist");
    show_detail(s.store(), s.view(), s.options(), s.editing(), 30, 2);
    EXPECT_EQ(s.edit_index, 0);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "");
}

TEST_F(DetailPane, ClearEmptiesEverything) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    clear_detail(s);
    EXPECT_EQ(frame(), "");
    EXPECT_EQ(s.ctl("rtNotes").text, " ");
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "");
    for (const char* n : {"imgDtlAppt", "imgDtlNote", "imgDtlPrior", "imgDtlNext", "prtdtlImg"})
        EXPECT_FALSE(s.ctl(n).enabled) << n;
}

TEST_F(DetailPane, ApptTabShowsTheFrame) {
    s.ctl("Frame2").visible = false;
    s.tab_key = "other";
    TabStrip1_Click(s);
    EXPECT_FALSE(s.ctl("Frame2").visible);
    s.tab_key = "appt";
    TabStrip1_Click(s);
    EXPECT_TRUE(s.ctl("Frame2").visible);
}

// --- walking ------------------------------------------------------------------

TEST_F(DetailPane, ForwardGoesToTheNextAppointment) {
    env.add(env.entry("a", "09:00", "09:30", "Dentist"));
    env.add(env.entry("b", "11:00", "11:30", "Lunch"));
    rebuild(s);
    select(19, 2);
    imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 23);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.vsSched.Row(), 23);
    EXPECT_EQ(s.vsSched.Col(), 2);
    EXPECT_EQ(s.vsSched.shown_row(), 23);
    EXPECT_EQ(s.edit_index, 2);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Lunch");
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(DetailPane, ForwardOnLastShowsNoMoreAndKeepsSelection) {
    env.add(env.entry("a", "09:00", "09:30", "Dentist"));
    env.add(env.entry("b", "11:00", "11:30", "Lunch"));
    rebuild(s);
    select(23, 2);
    imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, "No more appointments to display");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Warning);
    EXPECT_EQ(s.cur_row, 23);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.vsSched.Row(), 23);
    EXPECT_EQ(s.vsSched.Col(), 2);
    EXPECT_EQ(s.edit_index, 2);
}

TEST_F(DetailPane, TwoRowBlockIsVisitedOncePerRow) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 20);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.edit_index, 1);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Dentist");
    EXPECT_TRUE(env.m.shown.empty());
    imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "No more appointments to display");
}

TEST_F(DetailPane, WalkSkipsSpacersAndFreeCells) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    env.add(env.entry("b", "09:30", "11:00", "Meeting"));
    rebuild(s);
    select(19, 2);
    imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 20);
    EXPECT_EQ(s.cur_col, 2);
    imgDtlNext_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 20);
    EXPECT_EQ(s.cur_col, 4);
    EXPECT_EQ(s.edit_index, 2);
    imgDtlPrior_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 20);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.edit_index, 1);
}

TEST_F(DetailPane, BackFromFirstColumnStartsOnTheRowAbove) {
    env.add(env.entry("a", "09:00", "09:30", "Dentist"));
    rebuild(s);
    s.cur_row = 20;
    s.cur_col = 1;
    imgDtlPrior_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 19);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Dentist");
}

TEST_F(DetailPane, BackOnFirstShowsNoPrior) {
    env.add(env.entry("a", "09:00", "09:30", "Dentist"));
    rebuild(s);
    select(19, 2);
    imgDtlPrior_Click(s.store(), s.view(), s.options(), s.editing());
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, "No prior appointments to display");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Warning);
    EXPECT_EQ(s.cur_row, 19);
    EXPECT_EQ(s.cur_col, 2);
}

TEST_F(DetailPane, BackAtTopLeftDoesNothing) {
    env.add(env.entry("a", "09:00", "09:30", "Dentist"));
    rebuild(s);
    s.cur_row = 0;
    s.cur_col = 1;
    imgDtlPrior_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_TRUE(env.m.shown.empty());
    EXPECT_EQ(s.cur_row, 0);
    EXPECT_EQ(s.cur_col, 1);
}

TEST_F(DetailPane, ClickOnFreeCellKeepsWalkButtons) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    vsSched_Click(s.store(), s.view(), s.options(), s.editing(), 19, 2);
    ASSERT_TRUE(s.ctl("imgDtlNext").enabled);
    vsSched_Click(s.store(), s.view(), s.options(), s.editing(), 30, 2);
    EXPECT_TRUE(s.ctl("imgDtlPrior").enabled);
    EXPECT_TRUE(s.ctl("imgDtlNext").enabled);
    EXPECT_FALSE(s.ctl("imgDtlAppt").enabled);
    EXPECT_FALSE(s.ctl("imgDtlNote").enabled);
    EXPECT_EQ(frame(), s.vsSched.TextMatrix(30, 0));
    imgDtlPrior_Click(s.store(), s.view(), s.options(), s.editing());
    EXPECT_EQ(s.cur_row, 20);
    EXPECT_EQ(s.cur_col, 2);
    EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), "Dentist");
}

// --- editing from the pane ------------------------------------------------------

TEST_F(DetailPane, EditPictureHandsTheCurrentCellToTheEditor) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    s.new_appt = true;
    s.timer1_enabled = true;
    bool tick_off = false;
    env.m.forms["frmAppt1"] = [&] { tick_off = !s.timer1_enabled; };
    imgDtlAppt_Click(s.store(), s.view(), s.editing(), s.run());
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_TRUE(tick_off);
    EXPECT_FALSE(s.new_appt);
    EXPECT_EQ(s.edit_index, 1);
    EXPECT_EQ(s.edit_start, " 09:00 am");
    EXPECT_TRUE(s.appt_from_planner);
    // The form closed without a save, as Cancel does: the tick stays off.
    EXPECT_FALSE(s.timer1_enabled);
}

TEST_F(DetailPane, DoubleClickInDetailsNeedsAnAppointment) {
    clear_detail(s);
    vsDtl_DblClick(s.store(), s.view(), s.editing(), s.run());
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, "Add an appointment first!");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Information);

    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    vsDtl_DblClick(s.store(), s.view(), s.editing(), s.run());
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_EQ(s.edit_index, 1);
}

TEST_F(DetailPane, KeyInDetailsPointsToTheToolbar) {
    vsDtl_KeyDown();
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text,
              " Click the Edit Appointment button on the toolbar to edit appointments");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Information);
}

// --- notes ----------------------------------------------------------------------

TEST_F(DetailPane, ChangedNoteIsWrittenAndShown) {
    appt_rec a = env.entry("a", "09:00", "10:00", "Dentist");
    a.appt_notes = QStringLiteral("old");
    env.add(a);
    rebuild(s);
    select(19, 2);
    s.timer1_enabled = true;
    bool tick_off = false;
    env.m.forms["frmNotes"] = [&] {
        tick_off = !s.timer1_enabled;
        EXPECT_EQ(s.caller_form, "dtlfrm");
        EXPECT_EQ(s.notes_text.trimmed(), "old");
        s.notes_text = QStringLiteral("new");
    };
    imgDtlNote_Click(s);
    EXPECT_TRUE(tick_off);
    EXPECT_EQ(s.ctl("rtNotes").text, "new");
    EXPECT_EQ(s.status_panels["nbrAppts "].text, " Calendar Updated ");
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_notes.trimmed(), "new");
}

TEST_F(DetailPane, Utf8TextAndNotesShowInThePane) {
    const QStringList texts = texts_in_many_scripts();
    for (int i = 0; i < texts.size(); ++i) {
        const QString start = QTime(8 + i, 0).toString("HH:mm");
        appt_rec a = env.entry("k" + QString::number(i), start, start, texts[i]);
        a.appt_notes = texts[i] + " notes";
        env.add(a);
    }
    rebuild(s);
    for (int i = 0; i < texts.size(); ++i) {
        select(17 + 2 * i, 2);
        EXPECT_EQ(s.vsDtl.TextMatrix(0, 1), texts[i]);
        EXPECT_EQ(s.ctl("rtNotes").text, texts[i] + " notes");
    }
}

TEST_F(DetailPane, Utf8ChangedNoteIsWrittenAndShownWithinItsBytes) {
    appt_rec a = env.entry("a", "09:00", "10:00", "Συνάντηση");
    a.appt_notes = QStringLiteral("Встреча");
    env.add(a);
    rebuild(s);
    select(19, 2);
    QString typed;
    env.m.forms["frmNotes"] = [&] {
        NotesForm f;
        frmNotes_Load(s.options(), s.editing(), f);
        EXPECT_EQ(f.rtNotes, "Встреча");
        f.rtNotes = typed;
        frmNotes_OK(s, f);
    };

    typed = QStringLiteral("会议 Party 🎉");
    imgDtlNote_Click(s);
    EXPECT_EQ(s.ctl("rtNotes").text, typed);
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    EXPECT_EQ(s.appt_row(1)->appt_notes.trimmed(), typed);

    // 67 characters of three bytes are 201 for a field of 200.
    env.m.forms["frmNotes"] = [&] {
        NotesForm f;
        frmNotes_Load(s.options(), s.editing(), f);
        f.rtNotes = QString(67, u'会');
        frmNotes_OK(s, f);
    };
    select(19, 2);
    imgDtlNote_Click(s);
    EXPECT_EQ(s.ctl("rtNotes").text, QString(66, u'会'));
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    EXPECT_EQ(QByteArray(s.appt_row(1)->appt_notes.c, 200), QString(66, u'会').toUtf8() + "  ");
}

TEST_F(DetailPane, CountPanelReadsCalendarUpdatedEvenWhenNoteUnchanged) {
    appt_rec a = env.entry("a", "09:00", "10:00", "Dentist");
    a.appt_notes = QStringLiteral("old");
    env.add(a);
    rebuild(s);
    select(19, 2);
    ASSERT_EQ(s.status_panels["nbrAppts "].text, "1   Appointment");
    // A write would carry this text into the file.
    s.appt_row(1)->appt_text = QStringLiteral("Only in memory");
    imgDtlNote_Click(s);
    EXPECT_EQ(env.m.last(u"form")->text, "frmNotes");
    EXPECT_EQ(s.status_panels["nbrAppts "].text, " Calendar Updated ");
    EXPECT_EQ(s.ctl("rtNotes").text, "old");
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    EXPECT_EQ(s.appt_row(1)->appt_text.trimmed(), "Dentist");
}

TEST_F(DetailPane, CalendarUpdatedStaysUntilTheNextRecount) {
    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    imgDtlNote_Click(s);
    ASSERT_EQ(s.status_panels["nbrAppts "].text, " Calendar Updated ");
    show_status(s.store(), s.view());
    EXPECT_EQ(s.status_panels["nbrAppts "].text, "1   Appointment");
}

TEST_F(DetailPane, NotesDoubleClickNeedsAnAppointment) {
    clear_detail(s);
    rtNotes_DblClick(s);
    ASSERT_EQ(env.m.shown.size(), 1u);
    EXPECT_EQ(env.m.shown[0].text, " Add an appointment first!");
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Information);

    env.add(env.entry("a", "09:00", "10:00", "Dentist"));
    rebuild(s);
    select(19, 2);
    rtNotes_DblClick(s);
    EXPECT_EQ(env.m.last(u"form")->text, "frmNotes");
}

} // namespace
} // namespace orva::testing
