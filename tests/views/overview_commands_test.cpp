#include "overview_fixtures.h"

#include "appointments/delete_copy.h"
#include "views/month_view.h"
#include "views/week_view.h"

#include <gtest/gtest.h>

namespace orva::testing {
namespace {

// The Edit commands (Add, Copy, Edit, Delete) while the month or the week
// planner is up: they act on the line under the mouse, or the selected one
// when the mouse is elsewhere.
class OverviewCommands : public OverviewPlanner {
  protected:
    OverviewCommands() : OverviewPlanner(17000, 9000) {}
    void month() { imageMonth_Click(s, env.w); }
    void week() { imageWeek_Click(s, env.w); }
    // The line the user picked, with the mouse gone to the menu.
    void pick(int row, int col) {
        s.vsOvervw.Select(row, col);
        s.vsOvervw.set_mouse_cell(-1, -1);
    }
    QByteArray member(const char* name) {
        QByteArray bytes;
        EXPECT_EQ(s.archive.get(s.cal_path, name, bytes), 0);
        return bytes;
    }
};

const QDate monday16(2026, 3, 16); // month: day numbers in row 11, column 1

TEST_F(OverviewCommands, DeleteFromTheMonthPlannerWorksWithTheEditorNeverShown) {
    add_many(monday16, 2);
    month();
    ASSERT_EQ(text(12, 1), "Entry 1");
    pick(12, 1);
    env.m.answers.push_back(Answer::Yes);
    imageClock_Click(s);
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text, "Confirm delete of appointment: 'Entry 1' ?");
    EXPECT_EQ(env.m.last(u"form"), nullptr);
    EXPECT_EQ(member("c2603.cal").size(), 477);
    EXPECT_TRUE(s.view_month);
    EXPECT_EQ(text(12, 1), "Entry 2");
    EXPECT_EQ(text(13, 1), "Entry 2"); // alone now: all four lines
}

TEST_F(OverviewCommands, TheLineUnderTheMouseDecidesOverTheSelectedOne) {
    add_many(monday16, 2);
    month();
    s.vsOvervw.Select(12, 1);
    s.vsOvervw.set_mouse_cell(13, 1);
    imageClock_Click(s);
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text, "Confirm delete of appointment: 'Entry 2' ?");
    EXPECT_EQ(member("c2603.cal").size(), 2 * 477); // answered No
}

TEST_F(OverviewCommands, DeleteOnAFreeLineOrOutsideTheMonthTellsWhatIsMissing) {
    month();
    pick(12, 1); // a free line of the 16th
    imageClock_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "Select appointment first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
    pick(22, 6); // after the 31st: no day at all
    imageClock_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "Select an appointment first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
}

TEST_F(OverviewCommands, EditAndDeleteWithNoCellSelectedAskForAClick) {
    s.view_month = true; // nothing filled yet: no cell to select
    imageClock_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "Click to select an appointment to delete");
    mnuEditA_Click(s);
    EXPECT_EQ(env.m.messages().size(), 2u);
    EXPECT_EQ(env.m.last(u"message")->text, "Click to select an appointment to delete");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
}

TEST_F(OverviewCommands, EditOpensTheSelectedLinesEntryAsADoubleClickWould) {
    add_many(monday16, 2);
    month();
    pick(13, 1);
    mnuEditA_Click(s);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_FALSE(s.new_appt);
    EXPECT_EQ(s.appt_row(s.edit_index)->appt_text.trimmed(), "Entry 2");
    EXPECT_EQ(s.edit_start, "09:00");
    pick(14, 1); // free
    mnuEditA_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "Select appointment first");
}

TEST_F(OverviewCommands, CopyOfALineOpensTheEditorInCopyModeOnThatDay) {
    add_many(monday16, 2);
    month();
    pick(13, 1);
    mnuCopy_Click(s);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_TRUE(s.new_appt);
    EXPECT_TRUE(s.appt_copy);
    EXPECT_EQ(s.appt_row(s.edit_index)->appt_text.trimmed(), "Entry 2");
    EXPECT_EQ(s.edit_date, monday16);
    EXPECT_TRUE(s.appt_from_planner);
    EXPECT_FALSE(s.timer1_enabled);
}

TEST_F(OverviewCommands, CopyOfMoreHasNothingToCopy) {
    add_many(monday16, 5);
    month();
    ASSERT_EQ(text(15, 1), more_text);
    pick(15, 1);
    mnuCopy_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "nothing to copy");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Information);
    EXPECT_FALSE(s.appt_copy);
}

TEST_F(OverviewCommands, CopyOfAFreeLineIsAProblemInTheWeekAndASelectionInTheMonth) {
    month();
    pick(12, 1);
    mnuCopy_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "Select appointment first");
    week();
    pick(5, 0);
    mnuCopy_Click(s);
    EXPECT_EQ(env.m.last(u"message")->text, "Problem copying appointment");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Critical);
    pick(19, 0); // row 19 carries nothing: nothing happens
    const size_t told = env.m.shown.size();
    mnuCopy_Click(s);
    EXPECT_EQ(env.m.shown.size(), told);
    EXPECT_FALSE(s.appt_copy);
}

TEST_F(OverviewCommands, AddInTheGridPlannersTakesThePresentTime) {
    week();
    imageReminder_Click(s);
    EXPECT_TRUE(s.new_appt);
    EXPECT_EQ(s.edit_start, "09:10");
    EXPECT_EQ(s.edit_date, s.cur_date);
}

TEST_F(OverviewCommands, WithoutACalendarEveryCommandSaysSo) {
    month();
    s.cal_path.clear();
    pick(12, 1);
    for (void (*command)(AppState&) :
         {imageClock_Click, mnuCopy_Click, mnuEditA_Click, imageReminder_Click}) {
        env.m.shown.clear();
        command(s);
        ASSERT_EQ(env.m.messages().size(), 1u);
        EXPECT_EQ(env.m.messages()[0], " Select and Open a Calendar first");
    }
}

} // namespace
} // namespace orva::testing
