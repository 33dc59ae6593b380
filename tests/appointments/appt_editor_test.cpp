#include "appointments/appt_editor.h"

#include "editor_fixtures.h"
#include "views/day_view.h"

#include <gtest/gtest.h>

using namespace orva;
using namespace orva::testing;

namespace {

struct Editor : ::testing::Test {
    EditorEnv env;
    AppState& s = env.s;
    ApptForm& f = env.f;

    // A saved entry on 03/15/2026 from start to end, reloaded into appt_tbl.
    int saved(const QString& id, const QString& start, const QString& end,
              const QString& text = QStringLiteral("Dentist")) {
        env.add(env.entry(id, start, end, text));
        return env.row_of(id);
    }
};

} // namespace

// --- form load --------------------------------------------------------------------

TEST_F(Editor, NewEntryLoadsWithThePromptAndNoDeleteButton) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:30"));
    EXPECT_EQ(f.caption, "New Appointment");
    EXPECT_EQ(f.Text1, "Type a description into this box...");
    EXPECT_EQ(f.typeIcombo.list_index, 0);
    EXPECT_EQ(f.apptDTPicker, QDate(2026, 3, 15));
    EXPECT_EQ(f.aptTimePick1, QTime(9, 30));
    EXPECT_EQ(f.aptTimePick2, QTime(9, 30));
    EXPECT_TRUE(f.Check1);
    EXPECT_TRUE(f.pickers_enabled);
    EXPECT_TRUE(f.Check2_enabled);
    EXPECT_FALSE(f.delCmd_enabled);
    EXPECT_FALSE(f.appt_dt_shown);
    EXPECT_EQ(f.Notes, " ");
    EXPECT_EQ(s.occ_until, "03/15/26");
    EXPECT_TRUE(s.occ_by_period);
    EXPECT_EQ(f.lblRem, "No reminders for this appointment. Click button to add.");
    EXPECT_EQ(f.lblOccur, "Click button to add recurring appointments.");
    EXPECT_EQ(f.lblDateTime, "Start Date:");
    EXPECT_FALSE(s.timer1_enabled);
}

TEST_F(Editor, DateLimitsRunFrom2000ToFifteenYearsAhead) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:30"));
    EXPECT_EQ(f.apptDTPicker_min, QDate(2000, 1, 1));
    EXPECT_EQ(f.apptDTPicker_max, QDate(2041, 3, 15));
}

TEST_F(Editor, NewUntimedEntryFromRowZeroOpensWithTimedClearAndAllDayDisabled) {
    rebuild(s);
    s.vsSched.Select(0, 2);
    sched_hand_over(s.store(), s.view(), s.editing(), 0, 2);
    ASSERT_EQ(s.edit_start, " ");
    env.load();
    EXPECT_FALSE(f.Check1);
    EXPECT_FALSE(f.Check2_enabled);
    EXPECT_FALSE(f.pickers_enabled);
}

TEST_F(Editor, RowLabelOfTheDayGridGivesTheStartTime) {
    sched_hand_over(s.store(), s.view(), s.editing(), 29, 2);
    ASSERT_EQ(s.edit_start, " 02:00 pm");
    env.load();
    EXPECT_EQ(f.aptTimePick1, QTime(14, 0));
    sched_hand_over(s.store(), s.view(), s.editing(), 1, 2);
    env.load();
    EXPECT_EQ(f.aptTimePick1, QTime(0, 0));
    EXPECT_TRUE(f.Check1);
}

TEST_F(Editor, EditLoadsEveryFieldAndKeepsTheOldValues) {
    appt_rec a = env.entry("k1", "10:00", "11:30", "Dentist", "Car");
    a.appt_notes = QStringLiteral("bring card");
    a.appt_rem_lead = QStringLiteral("15");
    a.appt_rem_unit = QStringLiteral("1 ");
    a.appt_rem_anim = QStringLiteral("3 ");
    a.appt_rem_text = QStringLiteral("/snd/bell.wav");
    a.appt_until = QStringLiteral("03/15/26");
    env.add(a);
    env.open_edit(env.row_of("k1"));
    EXPECT_EQ(f.caption, "Edit Appointment");
    EXPECT_EQ(f.Text1, "Dentist");
    EXPECT_EQ(f.was_text, "Dentist");
    EXPECT_EQ(f.typeIcombo.selected_key(), "Car");
    EXPECT_EQ(f.was_type, "Car");
    EXPECT_EQ(f.aptTimePick1, QTime(10, 0));
    EXPECT_EQ(f.aptTimePick2, QTime(11, 30));
    EXPECT_EQ(f.was_start, "10:00");
    EXPECT_EQ(f.was_end, "11:30");
    EXPECT_EQ(f.Notes, "bring card");
    EXPECT_EQ(s.rem_lead, 15);
    EXPECT_EQ(s.old_lead, 15);
    EXPECT_EQ(s.rem_unit, 1);
    EXPECT_EQ(s.rem_anim, 3);
    EXPECT_EQ(s.rem_sound, "/snd/bell.wav");
    EXPECT_EQ(s.old_sound, "/snd/bell.wav");
    EXPECT_EQ(f.was_first_date, "03152026");
    EXPECT_EQ(f.txtApptDt, long_date_text(QDate(2026, 3, 15)));
    EXPECT_TRUE(f.appt_dt_shown);
    EXPECT_TRUE(f.delCmd_enabled);
    EXPECT_EQ(f.lblOccur, "This appointment occurs one time.  Click button to change occurrences.");
}

TEST_F(Editor, CopyModeKeepsItsDesignedRecurrenceCaption) {
    const int r = saved("k1", "10:00", "11:00");
    s.appt_copy = true;
    s.new_appt = true;
    s.edit_index = r;
    env.load();
    EXPECT_EQ(f.caption, "Copy Appointment to:");
    EXPECT_EQ(f.Text1, "Dentist");
    EXPECT_EQ(f.lblOccur,
              "This appointment occurs one time.  Click to change number of occurrences.");
    EXPECT_TRUE(f.delCmd_enabled);
}

TEST_F(Editor, TimedEntryFromEightToFiveReopensWithAllDayTicked) {
    env.open_edit(saved("k1", "08:00", "17:00"));
    EXPECT_TRUE(f.Check2);
    env.open_edit(saved("k2", "08:00", "16:30"));
    EXPECT_FALSE(f.Check2);
}

TEST_F(Editor, WeekdayRuleLoadsIntoTheOrdinalVariables) {
    appt_rec a = env.entry("k1", "10:00", "11:00", "Club");
    a.appt_pattern = QStringLiteral("2 ");
    a.appt_occurs = QStringLiteral("4 ");
    a.appt_occurs_every = QStringLiteral("5 ");
    a.appt_occurs_month = QStringLiteral("3 ");
    env.add(a);
    env.open_edit(env.row_of("k1"));
    EXPECT_FALSE(s.occ_by_period);
    EXPECT_TRUE(s.occ_by_weekday);
    EXPECT_EQ(s.occ_ordinal, 4);
    EXPECT_EQ(s.occ_weekday, 5);
    EXPECT_EQ(s.occ_month, 3);
    EXPECT_EQ(f.was_occurs, 4);
    EXPECT_EQ(f.was_every, 5);
    EXPECT_EQ(f.was_month, 3);
}

// --- the check boxes and pickers --------------------------------------------------

TEST_F(Editor, ClearingTimedSetsBothPickersToMidnightAndDisablesThem) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:30"));
    f.Check1 = false;
    Check1_Click(f);
    EXPECT_FALSE(f.pickers_enabled);
    EXPECT_EQ(f.aptTimePick1, QTime(0, 0));
    EXPECT_EQ(f.aptTimePick2, QTime(0, 0));
    EXPECT_FALSE(f.Check2_enabled);
    EXPECT_TRUE(f.timed_touched);
    f.Check1 = true;
    Check1_Click(f);
    EXPECT_TRUE(f.pickers_enabled);
    EXPECT_TRUE(f.Check2_enabled);
}

TEST_F(Editor, AllDayPutsTheWorkingDayIntoThePickers) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:30"));
    f.Check2 = true;
    Check2_Click(s, f);
    EXPECT_EQ(f.aptTimePick1, QTime(8, 0));
    EXPECT_EQ(f.aptTimePick2, QTime(17, 0));
    EXPECT_TRUE(f.Check2);
    EXPECT_TRUE(f.timed_touched);
    f.Check2 = false;
    Check2_Click(s, f);
    EXPECT_EQ(f.aptTimePick1, QTime(8, 0)); // cleared: the pickers stay
}

TEST_F(Editor, EndFollowsTheStartUntilTheUserTouchesIt) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:30"));
    f.aptTimePick1 = QTime(10, 0);
    aptTimePick1_Change(s.options(), s.editing(), f);
    EXPECT_EQ(f.aptTimePick2, QTime(10, 0));
    f.aptTimePick2 = QTime(11, 0);
    aptTimePick2_Change(s, f);
    f.aptTimePick1 = QTime(10, 30);
    aptTimePick1_Change(s.options(), s.editing(), f);
    EXPECT_EQ(f.aptTimePick2, QTime(11, 0));
}

TEST_F(Editor, EndDoesNotFollowTheStartOfAnExistingEntry) {
    env.open_edit(saved("k1", "10:00", "11:00"));
    f.aptTimePick1 = QTime(10, 30);
    aptTimePick1_Change(s.options(), s.editing(), f);
    EXPECT_EQ(f.aptTimePick2, QTime(11, 0));
}

TEST_F(Editor, PickersOnTheWorkingDayTickAllDayAndOffItClearIt) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("08:00"));
    f.aptTimePick2 = QTime(17, 0);
    aptTimePick2_Change(s, f);
    EXPECT_TRUE(f.Check2);
    f.aptTimePick2 = QTime(16, 0);
    aptTimePick2_Change(s, f);
    EXPECT_FALSE(f.Check2);
}

TEST_F(Editor, MovingTheDateOfAPeriodRuleResetsItsEnd) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    env.rule(1, 0, QStringLiteral("03/31/26"));
    f.apptDTPicker = QDate(2026, 3, 20);
    apptDTPicker_Change(s, f);
    EXPECT_EQ(s.occ_until, "03/20/26");
}

TEST_F(Editor, MovingTheDateOfAWeekdayRuleLeavesItsEnd) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    env.weekday_rule(0, 1, 0, QStringLiteral("12/31/26"));
    f.apptDTPicker = QDate(2026, 3, 20);
    apptDTPicker_Change(s, f);
    EXPECT_EQ(s.occ_until, "12/31/26");
}

// --- validation -------------------------------------------------------------------

struct SlotCase {
    const char* name;
    QTime start, end;
    bool accepted;
};

class EditorSlots : public Editor, public ::testing::WithParamInterface<SlotCase> {};

TEST_P(EditorSlots, EndIsComparedByHalfHourRows) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("Call");
    f.aptTimePick1 = GetParam().start;
    f.aptTimePick2 = GetParam().end;
    EXPECT_EQ(env.ok(), GetParam().accepted);
    if (GetParam().accepted) {
        EXPECT_TRUE(env.m.messages().empty());
    } else {
        ASSERT_EQ(env.m.messages().size(), 1u);
        EXPECT_EQ(env.m.messages()[0], "End time is less than Start Time");
        EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Information);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Editor, EditorSlots,
    ::testing::Values(
        SlotCase{"StartNineTenEndNineFiveSameRowIsAccepted", QTime(9, 10), QTime(9, 5), true},
        SlotCase{"StartNineEndEightFortyFiveIsRefused", QTime(9, 0), QTime(8, 45), false},
        SlotCase{"StartNineEndNineIsAccepted", QTime(9, 0), QTime(9, 0), true},
        SlotCase{"StartNineThirtyEndNineThirtyIsAccepted", QTime(9, 30), QTime(9, 30), true}),
    [](const ::testing::TestParamInfo<SlotCase>& i) { return std::string(i.param.name); });

TEST_F(Editor, RefusedTimesKeepTheFormOpenWithItsState) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("Call");
    f.aptTimePick2 = QTime(8, 0);
    EXPECT_FALSE(env.ok());
    EXPECT_EQ(f.Text1, "Call");
    EXPECT_EQ(env.all_appts().size(), 0u);
}

TEST_F(Editor, UntimedEntryPassesTheTimeTest) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral(" "));
    f.Text1 = QStringLiteral("Birthday");
    EXPECT_TRUE(env.ok());
    ASSERT_EQ(env.all_appts().size(), 1u);
    EXPECT_TRUE(env.all_appts()[0].appt_start.is_blank());
}

TEST_F(Editor, MovingTheFirstDateOfADailySeriesSavesOneOccurrenceOnThatDay) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("Walk");
    env.rule(1, 0, QStringLiteral("03/31/26"));
    f.apptDTPicker = QDate(2026, 3, 18);
    apptDTPicker_Change(s, f);
    ASSERT_TRUE(env.ok());
    EXPECT_EQ(s.occ_until, "03/18/26");
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_date.str(), "03182026");
    EXPECT_EQ(rows[0].appt_occurs.str(), "1 ");
}

TEST_F(Editor, WeekdayRuleWithTheDatePastItsEndBringsTheEndDateMessage) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    env.weekday_rule(0, 1, 0, QStringLiteral("04/30/26"));
    f.apptDTPicker = QDate(2026, 5, 4);
    apptDTPicker_Change(s, f);
    EXPECT_FALSE(env.ok());
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0],
              "End date is less than start date.  Check recurring appointment settings!");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Information);
    EXPECT_EQ(env.all_appts().size(), 0u);
}

TEST_F(Editor, EndDateEqualToTheFirstDatePasses) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    env.weekday_rule(0, 1, 0, QStringLiteral("03/15/26"));
    EXPECT_TRUE(env.ok());
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(Editor, EmptyOrPromptDescriptionIsSavedAsItStands) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    ASSERT_TRUE(env.ok());
    ASSERT_EQ(env.all_appts().size(), 1u);
    EXPECT_EQ(env.all_appts()[0].appt_text.trimmed(), "Type a description into this box...");
}

// --- Cancel -----------------------------------------------------------------------

TEST_F(Editor, CancelSavesNothingClearsTheCopyAndLeavesTheTickOff) {
    const int r = saved("k1", "10:00", "11:00");
    const auto before = env.snapshot();
    s.appt_copy = true;
    s.new_appt = true;
    s.edit_index = r;
    env.load();
    f.Text1 = QStringLiteral("Changed");
    Command2_Click(s, f);
    EXPECT_FALSE(s.appt_copy);
    EXPECT_FALSE(s.timer1_enabled);
    EXPECT_EQ(env.snapshot(), before);
}

// --- the caption of the reminder ------------------------------------------------

TEST_F(Editor, ReminderCaptionTellsTheFirstMatchingReminder) {
    const int r = saved("k1", "10:00", "11:00");
    rmdr_rec m = make_rmdr("03/15/26", "k1", "09:45");
    m.rmdr_start = QStringLiteral("10:00");
    m.rmdr_end = QStringLiteral("11:00");
    s.rmdr_count = 1;
    *s.rmdr_row(1) = m;
    set_rem_caption(s, f, r);
    EXPECT_EQ(f.lblRem, "Reminder set for " + short_date_text(QDate(2026, 3, 15)) +
                            " at 09:45 am  (active).   Click button to edit.");
    s.rmdr_row(1)->rmdr_fired = QStringLiteral("T");
    set_rem_caption(s, f, r);
    EXPECT_TRUE(f.lblRem.contains("(expired)"));
    s.rmdr_row(1)->rmdr_start = QStringLiteral("10:30");
    set_rem_caption(s, f, r);
    EXPECT_EQ(f.lblRem, "No reminders for this appointment. Click button to add.");
}

// --- the dialogs it opens -------------------------------------------------------

TEST_F(Editor, ReminderButtonOpensTheSetupForTheEditor) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    cmdRem_Click(s, f);
    EXPECT_EQ(s.caller_form, "apptfrm");
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmRem1");
}

TEST_F(Editor, RecurrenceAndNotesButtonsOpenTheirForms) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    Command4_Click(f);
    EXPECT_EQ(env.m.last(u"form")->text, "frmOccurs");
    Image6_Click(s, f);
    EXPECT_EQ(env.m.last(u"form")->text, "frmNotes");
    EXPECT_EQ(s.caller_form, "apptfrm");
}
