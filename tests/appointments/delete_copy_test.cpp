#include "appointments/delete_copy.h"

#include "appointments/saving.h"
#include "editor_fixtures.h"
#include "views/day_view.h"
#include "views/status.h"

#include <gtest/gtest.h>

using namespace orva;
using namespace orva::testing;

namespace {

const QString long_question_head =
    QStringLiteral("This will delete all occurrences of appointment: '");

struct DeleteCopy : ::testing::Test {
    EditorEnv env;
    AppState& s = env.s;
    ApptForm& f = env.f;

    // Saves a series through the editor at 07:00 and moves the clock on.
    QString save_series(const QDate& first, int period, const QString& until, const QString& text,
                        int lead = 0) {
        env.open_new(first, QStringLiteral("07:00"));
        f.Text1 = text;
        f.aptTimePick2 = QTime(7, 30);
        env.rule(period, 0, until);
        s.rem_lead = qint16(lead);
        EXPECT_TRUE(env.ok());
        const QString id = appt_id_at(env.clock.now());
        env.clock.advance_secs(1);
        return id;
    }
    // Shows `date` in the day planner and selects the block of entry `id`.
    void select(const QDate& date, const QString& id) {
        s.cur_date = date;
        EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
        rebuild(s);
        int index = 0;
        for (int r = 1; r <= s.appt_count && index == 0; ++r)
            if (s.appt_row(r)->appt_id.trimmed() == id &&
                text_to_date(s.appt_row(r)->appt_date) == date)
                index = r;
        ASSERT_NE(index, 0);
        for (int r = 0; r < s.vsSched.Rows(); ++r)
            for (int c = 2; c < s.vsSched.Cols(); ++c)
                if (s.vsSched.Cell(CellSetting::Data, r, c).toString() == QString::number(index)) {
                    s.vsSched.Select(r, c);
                    return;
                }
        FAIL() << "entry not on the grid: row " << index << " date "
               << s.appt_row(index)->appt_date.str().toStdString() << " start "
               << s.appt_row(index)->appt_start.str().toStdString() << " day_appts " << s.day_appts;
    }
    int count_of(const QString& id) {
        int n = 0;
        for (const appt_rec& a : env.all_appts())
            if (a.appt_id.trimmed() == id) ++n;
        return n;
    }
    int rmdrs_of(const QString& id) {
        int n = 0;
        for (const rmdr_rec& r : env.all_rmdrs())
            if (r.rmdr_id.trimmed() == id) ++n;
        return n;
    }
};

} // namespace

// --- delete -------------------------------------------------------------------------

TEST_F(DeleteCopy, DeletingOneOccurrenceFromAnyDateRemovesAllOfThemPastOnesToo) {
    const QString id = save_series(QDate(2026, 1, 5), 2, "06/29/26", "Swim", 30);
    ASSERT_EQ(count_of(id), 26);
    ASSERT_EQ(rmdrs_of(id), 26);
    select(QDate(2026, 4, 13), id);
    env.m.answers.push_back(Answer::Yes);
    imageClock_Click(s);
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text, long_question_head + "Swim' Do you want to continue?");
    EXPECT_EQ(env.m.last(u"question")->style, MsgStyle::Question);
    EXPECT_EQ(count_of(id), 0);
    EXPECT_EQ(rmdrs_of(id), 0);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_EQ(s.day_appts, 0);
}

TEST_F(DeleteCopy, OneTimeEntryGetsTheShortQuestion) {
    env.add(make_appt("03152026", "K1", "09:00", "Dentist"));
    select(QDate(2026, 3, 15), "K1");
    env.m.answers.push_back(Answer::No);
    imageClock_Click(s);
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text, "Confirm delete of appointment: 'Dentist' ?");
}

TEST_F(DeleteCopy, WeekdaySeriesGetsTheLongQuestion) {
    appt_rec a = make_appt("03182026", "K1", "19:00", "Club");
    a.appt_pattern = QStringLiteral("2 ");
    a.appt_occurs = QStringLiteral("0 ");
    env.add(a);
    select(QDate(2026, 3, 18), "K1");
    imageClock_Click(s);
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text, long_question_head + "Club' Do you want to continue?");
}

TEST_F(DeleteCopy, NoLeavesEverythingAsItWas) {
    const QString id = save_series(QDate(2026, 3, 1), 1, "03/31/26", "Walk", 5);
    const auto before = env.snapshot();
    select(QDate(2026, 3, 15), id);
    env.m.answers.push_back(Answer::No);
    imageClock_Click(s);
    EXPECT_EQ(env.snapshot(), before);
}

TEST_F(DeleteCopy, MemberThatLosesItsLastLineIsRemoved) {
    env.add(make_appt("03102026", "STAY", "08:00", "Stays"));
    const QString id = save_series(QDate(2026, 3, 20), 1, "04/10/26", "Trip");
    ASSERT_TRUE(env.has_member("c2604.cal"));
    select(QDate(2026, 3, 20), id);
    env.m.answers.push_back(Answer::Yes);
    imageClock_Click(s);
    EXPECT_FALSE(env.has_member("c2604.cal"));
    ASSERT_TRUE(env.has_member("c2603.cal"));
    ASSERT_EQ(env.appts_in("2603").size(), 1u);
    EXPECT_EQ(env.appts_in("2603")[0].appt_id.trimmed(), "STAY");
}

TEST_F(DeleteCopy, KeptLinesKeepTheirOrder) {
    env.add(make_appt("03102026", "A", "08:00", "First"));
    env.add(make_appt("03152026", "GONE", "09:00", "Gone"));
    env.add(make_appt("03202026", "B", "08:00", "Second"));
    env.add(make_appt("03052026", "C", "08:00", "Third"));
    select(QDate(2026, 3, 15), "GONE");
    env.m.answers.push_back(Answer::Yes);
    imageClock_Click(s);
    const auto rows = env.appts_in("2603");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].appt_id.trimmed(), "A");
    EXPECT_EQ(rows[1].appt_id.trimmed(), "B");
    EXPECT_EQ(rows[2].appt_id.trimmed(), "C");
}

TEST_F(DeleteCopy, EntriesThatShareAKeyByTheClockGoTogether) {
    env.add(make_appt("03152026", "SAME", "09:00", "One"));
    env.add(make_appt("03152026", "SAME", "11:00", "Two"));
    env.add(make_appt("03152026", "OTHER", "13:00", "Three"));
    select(QDate(2026, 3, 15), "SAME");
    env.m.answers.push_back(Answer::Yes);
    imageClock_Click(s);
    const auto rows = env.appts_in("2603");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_id.trimmed(), "OTHER");
}

TEST_F(DeleteCopy, UntilBeforeTheFirstDateWalksExactlyTheFirstDatesMonth) {
    appt_rec a = make_appt("03152026", "K1", "09:00", "Odd");
    a.appt_until = QStringLiteral("01/01/26");
    a.appt_occurs = QStringLiteral("1 ");
    env.add(a);
    env.add(make_appt("02152026", "K1", "09:00", "Odd, earlier"));
    env.add(make_appt("04152026", "K1", "09:00", "Odd, later"));
    QStringList walked;
    s.archive.set_after_write_hook([&](const QString& m) { walked << m; });
    EXPECT_EQ(
        delete_series(s, QDate(2026, 3, 15), "10:00", "09:00", "K1", "01/01/26", 0, "1 ", "1 "), 0);
    EXPECT_EQ(walked, QStringList{"c2603.cal"});
    EXPECT_FALSE(env.has_member("c2603.cal"));
    EXPECT_TRUE(env.has_member("c2602.cal"));
    EXPECT_TRUE(env.has_member("c2604.cal"));
}

TEST_F(DeleteCopy, MonthlyWalkVisitsEachMonthOnceFromAMonthEnd) {
    for (const char* d : {"01312026", "02282026", "03312026", "04302026"}) {
        appt_rec a = make_appt(d, "M", "09:00", "Rent");
        a.appt_first_date = QStringLiteral("01312026");
        env.add(a);
    }
    QStringList walked;
    s.archive.set_after_write_hook([&](const QString& m) { walked << m; });
    EXPECT_EQ(
        delete_series(s, QDate(2026, 1, 31), "10:00", "09:00", "M", "04/30/26", 0, "3 ", "1 "), 0);
    EXPECT_EQ(walked, (QStringList{"c2601.cal", "c2602.cal", "c2603.cal", "c2604.cal"}));
    EXPECT_TRUE(env.all_appts().empty());
}

TEST_F(DeleteCopy, ReminderWalkStartsInTheMonthTheLeadReachesBackTo) {
    rmdr_rec r = make_rmdr("02/28/26", "K1", "23:45");
    EXPECT_EQ(append_rmdr_line(s, s.cal_path, r), 0);
    EXPECT_EQ(append_rmdr_line(s, s.cal_path, make_rmdr("03/01/26", "K2", "08:00")), 0);
    EXPECT_EQ(delete_series_rmdrs(s, QDate(2026, 3, 1), "01:00", "00:15", "K1", "03/01/26", 30, 0,
                                  0, "0 ", "1 "),
              0);
    EXPECT_FALSE(env.has_member("r2602.rmd"));
    EXPECT_EQ(env.rmdrs_in("2603").size(), 1u);
}

TEST_F(DeleteCopy, DeleteWorksWithoutTheEditorEverShown) {
    env.add(make_appt("03152026", "K1", "09:00", "Dentist"));
    select(QDate(2026, 3, 15), "K1");
    ASSERT_EQ(s.appt_form, nullptr);
    env.m.answers.push_back(Answer::Yes);
    imageClock_Click(s);
    EXPECT_TRUE(env.all_appts().empty());
    EXPECT_EQ(env.m.last(u"form"), nullptr);
    // The pane is emptied and the cell that was selected stays selected.
    EXPECT_EQ(s.ctl("rtNotes").text, " ");
    EXPECT_EQ(s.vsSched.Row(), 19);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Data, 19, 2).toString(), "");
}

TEST_F(DeleteCopy, DeleteFromTheEditorUsesItsRow) {
    env.add(make_appt("03152026", "K1", "09:00", "Dentist"));
    select(QDate(2026, 3, 15), "K1");
    env.open_edit(env.row_of("K1"));
    env.m.answers.push_back(Answer::Yes);
    EXPECT_TRUE(delCmd_Click(s));
    EXPECT_TRUE(env.all_appts().empty());
}

TEST_F(DeleteCopy, NoRowGivesCouldntDelete) {
    s.edit_index = 0;
    EXPECT_FALSE(delCmd_Click(s));
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Couldn't delete");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(env.m.last(u"question"), nullptr);
}

TEST_F(DeleteCopy, DeleteWithNothingSelectedAsksForAnAppointment) {
    rebuild(s);
    s.vsSched.Select(21, 2);
    imageClock_Click(s);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Select an appointment first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
    s.vsSched.Select(21, 3); // a spacer
    imageClock_Click(s);
    EXPECT_EQ(env.m.messages().size(), 2u);
}

TEST_F(DeleteCopy, EveryCommandWithoutACalendarAsksForOne) {
    s.cal_path.clear();
    imageClock_Click(s);
    mnuCopy_Click(s);
    imageReminder_Click(s);
    mnuEditA_Click(s);
    ASSERT_EQ(env.m.messages().size(), 4u);
    for (const QString& m : env.m.messages())
        EXPECT_EQ(m, " Select and Open a Calendar first");
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(DeleteCopy, DeleteKeyInTheDayGridDeletes) {
    env.add(make_appt("03152026", "K1", "09:00", "Dentist"));
    select(QDate(2026, 3, 15), "K1");
    env.m.answers.push_back(Answer::Yes);
    EXPECT_TRUE(vsSched_KeyDown(s, 0x01000007));
    EXPECT_TRUE(env.all_appts().empty());
}

// --- copy -------------------------------------------------------------------------

TEST_F(DeleteCopy, CopyOpensTheEditorInCopyModeOnTheSelectedEntry) {
    env.add(make_appt("03152026", "K1", "09:00", "Dentist"));
    select(QDate(2026, 3, 15), "K1");
    bool copy_inside = false;
    env.m.forms["frmAppt1"] = [&] {
        copy_inside = s.appt_copy && s.new_appt;
        env.load();
    };
    mnuCopy_Click(s);
    EXPECT_TRUE(copy_inside);
    EXPECT_EQ(f.caption, "Copy Appointment to:");
    EXPECT_EQ(s.edit_index, env.row_of("K1"));
    EXPECT_EQ(s.edit_start, " 09:00 am");
    EXPECT_TRUE(s.appt_from_planner);
    EXPECT_FALSE(s.timer1_enabled);
}

TEST_F(DeleteCopy, CopyWithNothingSelectedAsksForAnAppointmentAndLeavesNoCopyMode) {
    rebuild(s);
    s.vsSched.Select(21, 2);
    mnuCopy_Click(s);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Select an appointment first");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Information);
    EXPECT_FALSE(s.appt_copy);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(DeleteCopy, CopyIsANewEntryAndTheSourceIsUntouched) {
    appt_rec a = make_appt("03152026", "SRC", "09:00", "Dentist");
    a.appt_notes = QStringLiteral("bring card");
    env.add(a);
    const auto source_before = env.appts_in("2603");
    select(QDate(2026, 3, 15), "SRC");
    env.m.forms["frmAppt1"] = [&] {
        env.load();
        f.apptDTPicker = QDate(2026, 4, 2);
        apptDTPicker_Change(s, f);
        EXPECT_TRUE(env.ok());
    };
    mnuCopy_Click(s);
    EXPECT_FALSE(s.appt_copy);
    EXPECT_EQ(env.appts_in("2603").size(), 1u);
    EXPECT_EQ(env.appts_in("2603")[0].appt_text.str(), source_before[0].appt_text.str());
    const auto april = env.appts_in("2604");
    ASSERT_EQ(april.size(), 1u);
    EXPECT_NE(april[0].appt_id.trimmed(), "SRC");
    EXPECT_EQ(april[0].appt_id.str(), appt_id_at(env.clock.now()));
    EXPECT_EQ(april[0].appt_date.str(), "04022026");
    EXPECT_EQ(april[0].appt_notes.trimmed(), "bring card");
    EXPECT_EQ(april[0].appt_text.trimmed(), "Dentist");
    EXPECT_EQ(s.status_panels[panel_count].text, " Calendar Updated ");
}

TEST_F(DeleteCopy, CopiedDailySeriesOnAnotherDateBecomesOneOccurrence) {
    const QString id = save_series(QDate(2026, 3, 1), 1, "03/31/26", "Walk");
    select(QDate(2026, 3, 15), id);
    env.m.forms["frmAppt1"] = [&] {
        env.load();
        f.apptDTPicker = QDate(2026, 4, 10);
        apptDTPicker_Change(s, f);
        EXPECT_TRUE(env.ok());
    };
    mnuCopy_Click(s);
    EXPECT_EQ(count_of(id), 31);
    const auto april = env.appts_in("2604");
    ASSERT_EQ(april.size(), 1u);
    EXPECT_EQ(april[0].appt_date.str(), "04102026");
    EXPECT_EQ(april[0].appt_occurs.str(), "1 ");
}

TEST_F(DeleteCopy, CopiedAlarmsInThePastAreWrittenAsWaiting) {
    const QString id = save_series(QDate(2026, 3, 1), 1, "03/05/26", "Walk", 10);
    select(QDate(2026, 3, 3), id);
    s.mark_past = true; // left by an earlier edit
    env.m.forms["frmAppt1"] = [&] {
        env.load();
        env.rule(1, 0, QStringLiteral("03/12/26"));
        f.apptDTPicker = QDate(2026, 3, 8);
        EXPECT_TRUE(env.ok());
    };
    mnuCopy_Click(s);
    const QString copy = appt_id_at(env.clock.now());
    int past = 0;
    for (const rmdr_rec& r : env.all_rmdrs())
        if (r.rmdr_id.str() == copy) {
            EXPECT_EQ(r.rmdr_fired.str(), "F");
            if (short_to_date(r.rmdr_date) < QDate(2026, 3, 15)) ++past;
        }
    EXPECT_EQ(past, 5);
}

TEST_F(DeleteCopy, CopyWithNoRowGivesCouldntCompleteUpdate) {
    s.appt_copy = true;
    s.edit_index = 0;
    EXPECT_EQ(copy_appt(s, f), 0);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Couldn't complete update");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_FALSE(s.appt_copy);
}

// --- add and edit from the main window ----------------------------------------------

TEST_F(DeleteCopy, AddTakesTheSelectedRowsTime) {
    rebuild(s);
    s.vsSched.Select(25, 2);
    s.rem_lead = 9;
    imageReminder_Click(s);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_TRUE(s.new_appt);
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_anim, 1);
    EXPECT_EQ(s.edit_date, s.cur_date);
    EXPECT_EQ(s.edit_start, " 12:00 pm");
}

TEST_F(DeleteCopy, AddWithNoRowSelectedTakesTheClock) {
    rebuild(s);
    s.vsSched.setRow(0);
    s.vsSched.setCol(0);
    imageReminder_Click(s);
    EXPECT_EQ(s.edit_start, "09:10");
}

TEST_F(DeleteCopy, EditMenuOpensTheSelectedEntryOrAsksForOne) {
    env.add(make_appt("03152026", "K1", "09:00", "Dentist"));
    rebuild(s);
    s.vsSched.Select(21, 2);
    mnuEditA_Click(s);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Select an appointment first");
    select(QDate(2026, 3, 15), "K1");
    mnuEditA_Click(s);
    EXPECT_EQ(env.m.last(u"form")->text, "frmAppt1");
    EXPECT_FALSE(s.new_appt);
    EXPECT_EQ(s.edit_index, env.row_of("K1"));
}
