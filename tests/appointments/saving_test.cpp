#include "appointments/saving.h"

#include "appointments/delete_copy.h"
#include "appointments/recurrence.h"
#include "editor_fixtures.h"
#include "views/status.h"

#include <QFile>
#include <csignal>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orva;
using namespace orva::testing;

namespace {

struct Saving : ::testing::Test {
    EditorEnv env;
    AppState& s = env.s;
    ApptForm& f = env.f;

    // A new entry through the editor: text, times, then OK; the clock moves on
    // a second so the next save gets a key of its own.
    void save_new(const QDate& date, const QString& start, const QString& end,
                  const QString& text) {
        env.open_new(date, start);
        f.Text1 = text;
        if (start != u" ") f.aptTimePick2 = QTime::fromString(end, "HH:mm");
        ASSERT_TRUE(env.ok());
        env.clock.advance_secs(1);
    }
    void save_series(const QDate& first, int period, int every, const QString& until,
                     const QString& text) {
        env.open_new(first, QStringLiteral("07:00"));
        f.Text1 = text;
        f.aptTimePick2 = QTime(7, 30);
        env.rule(period, every, until);
        ASSERT_TRUE(env.ok());
        env.clock.advance_secs(1);
    }
    // Opens the entry `id` as shown on cur_date.
    void edit(const QString& id) {
        EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
        const int r = env.row_of(id);
        ASSERT_NE(r, 0) << id.toStdString();
        env.open_edit(r);
    }
    QString id_of_first() { return env.all_appts().at(0).appt_id.trimmed(); }
};

} // namespace

// --- the key ----------------------------------------------------------------------

TEST_F(Saving, KeyIsDayTimeThenMonthAndSecondsFilledToFour) {
    EXPECT_EQ(appt_id_at(QDateTime(QDate(2026, 4, 5), QTime(14, 3, 12))), "051403120412");
    EXPECT_EQ(appt_id_at(QDateTime(QDate(2026, 12, 5), QTime(14, 3, 59))), "051403591259");
    EXPECT_EQ(appt_id_at(QDateTime(QDate(2026, 1, 5), QTime(14, 3, 7))), "051403070017");
}

TEST_F(Saving, TwoEntriesSavedInTheSameSecondShareAKeyAndGoTogether) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("First");
    ASSERT_TRUE(env.ok());
    env.open_new(QDate(2026, 3, 15), QStringLiteral("11:00"));
    f.Text1 = QStringLiteral("Second");
    ASSERT_TRUE(env.ok());
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].appt_id, rows[1].appt_id);

    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    s.edit_index = 1;
    env.m.answers.push_back(Answer::Yes);
    ASSERT_TRUE(delCmd_Click(s));
    EXPECT_EQ(env.all_appts().size(), 0u);
}

TEST_F(Saving, SavesInDifferentSecondsOfTheSameMinuteGetDifferentKeys) {
    save_new(QDate(2026, 3, 15), "09:00", "09:30", "First");
    save_new(QDate(2026, 3, 15), "10:00", "10:30", "Second");
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_NE(rows[0].appt_id, rows[1].appt_id);
}

// --- new entries ------------------------------------------------------------------

TEST_F(Saving, NewOneTimeEntryIsWrittenWithEveryFieldOfTheForm) {
    env.open_new(QDate(2026, 3, 20), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("Dentist");
    f.aptTimePick2 = QTime(10, 15);
    f.typeIcombo.select_type(QStringLiteral("Car"));
    f.Notes = QStringLiteral("bring card");
    s.rem_sound = QStringLiteral("/snd/bell.wav");
    ASSERT_TRUE(env.ok());
    const auto rows = env.appts_in("2603");
    ASSERT_EQ(rows.size(), 1u);
    const appt_rec& a = rows[0];
    EXPECT_EQ(a.appt_first_date.str(), "03202026");
    EXPECT_EQ(a.appt_date.str(), "03202026");
    EXPECT_EQ(a.appt_start.str(), "09:00");
    EXPECT_EQ(a.appt_end.str(), "10:15");
    EXPECT_EQ(a.appt_id.str(), appt_id_at(env.clock.now()));
    EXPECT_EQ(a.appt_text.trimmed(), "Dentist");
    EXPECT_EQ(a.appt_type.trimmed(), "Car");
    EXPECT_EQ(a.appt_occurs.str(), "0 ");
    EXPECT_EQ(a.appt_occurs_month.str(), "0 ");
    EXPECT_EQ(a.appt_occurs_every.str(), "0 ");
    EXPECT_EQ(a.appt_until.str(), "03/20/26");
    EXPECT_EQ(a.appt_rem_lead.str(), "0 ");
    EXPECT_EQ(a.appt_rem_anim.str(), "1 ");
    EXPECT_EQ(a.appt_rem_text.trimmed(), "/snd/bell.wav");
    EXPECT_EQ(a.appt_notes.trimmed(), "bring card");
    EXPECT_EQ(a.appt_pattern.str(), "1 ");
}

TEST_F(Saving, SaveEndsWithCalendarUpdatedTheTickOnAndTheDayRebuilt) {
    s.vsSched.Select(19, 2);
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    EXPECT_EQ(s.status_panels[panel_count].text, " Calendar Updated ");
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.vsSched.Cell(CellSetting::Data, 19, 2).toString(), "1");
    EXPECT_TRUE(s.vsSched.TextMatrix(19, 2).endsWith("Dentist"));
    EXPECT_EQ(s.vsSched.Row(), 19);
    EXPECT_EQ(s.vsSched.Col(), 2);
    EXPECT_EQ(s.ctl("Frame2").text, s.vsSched.TextMatrix(19, 2));
}

TEST_F(Saving, DailySeriesWithItsEndOnTheFirstDateYieldsOneRowOccursOne) {
    save_series(QDate(2026, 3, 15), 1, 0, "03/15/26", "Walk");
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_occurs.str(), "1 ");
}

TEST_F(Saving, SeriesGoesToTheMemberOfEachOccurrence) {
    save_series(QDate(2026, 3, 31), 3, 0, "06/30/26", "Rent");
    ASSERT_EQ(env.appts_in("2603").size(), 1u);
    ASSERT_EQ(env.appts_in("2604").size(), 1u);
    EXPECT_EQ(env.appts_in("2604")[0].appt_date.str(), "04302026");
    EXPECT_EQ(env.appts_in("2605")[0].appt_date.str(), "05312026");
    EXPECT_EQ(env.appts_in("2606")[0].appt_date.str(), "06302026");
    for (const appt_rec& a : env.all_appts()) {
        EXPECT_EQ(a.appt_first_date.str(), "03312026");
        EXPECT_EQ(a.appt_occurs.str(), "3 ");
        EXPECT_EQ(a.appt_pattern.str(), "1 ");
    }
}

TEST_F(Saving, NotesOfASeriesAreCopiedToEveryOccurrenceAndAnEditRewritesThemAll) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("07:00"));
    f.Text1 = QStringLiteral("Walk");
    f.Notes = QStringLiteral("old shoes");
    env.rule(1, 0, QStringLiteral("04/05/26"));
    ASSERT_TRUE(env.ok());
    auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 22u);
    for (const appt_rec& a : rows)
        EXPECT_EQ(a.appt_notes.trimmed(), "old shoes");

    edit(rows[0].appt_id.trimmed());
    f.Notes = QStringLiteral("new shoes");
    ASSERT_TRUE(env.ok());
    rows = env.all_appts();
    ASSERT_EQ(rows.size(), 22u);
    for (const appt_rec& a : rows)
        EXPECT_EQ(a.appt_notes.trimmed(), "new shoes");
}

TEST_F(Saving, WeekdaySeriesIsWrittenWithPatternTwo) {
    env.open_new(QDate(2026, 3, 1), QStringLiteral("19:00"));
    f.Text1 = QStringLiteral("Club");
    env.weekday_rule(4, 5, 0, QStringLiteral("06/30/26")); // last Friday
    ASSERT_TRUE(env.ok());
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].appt_date.str(), "03272026");
    EXPECT_EQ(rows[3].appt_date.str(), "06262026");
    for (const appt_rec& a : rows) {
        EXPECT_EQ(a.appt_pattern.str(), "2 ");
        EXPECT_EQ(a.appt_occurs.str(), "4 ");
        EXPECT_EQ(a.appt_occurs_every.str(), "5 ");
    }
}

TEST_F(Saving, MoreThanSixThousandOccurrencesBringTheMessageAndStopTheWriting) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("07:00"));
    f.Text1 = QStringLiteral("Too often");
    // Daily to the end of 2042 is some 6,140 rows; the pickers would not go
    // that far, the rule does.
    env.rule(1, 0, QStringLiteral("12/31/42"));
    ASSERT_TRUE(env.ok());
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], " Could not complete update.  Too many appts!");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(s.status_panels[panel_count].text, " Calendar Updated ");
    // Every month before the one open at the 6001st row is written; that one is not.
    const QString key = appt_id_at(env.clock.now());
    int written = 0;
    QDate last;
    for (const appt_rec& a : env.all_appts())
        if (a.appt_id.str() == key) {
            ++written;
            last = std::max(last, text_to_date(a.appt_date));
        }
    const QDate row6000 = QDate(2026, 3, 15).addDays(5999);
    EXPECT_EQ(last, QDate(row6000.year(), row6000.month(), 1).addDays(-1));
    EXPECT_EQ(written, QDate(2026, 3, 15).daysTo(last) + 1);
}

// --- text in any language -----------------------------------------------------------

TEST_F(Saving, Utf8DescriptionNotesAndSoundRoundTripThroughTheEditor) {
    const QStringList texts = texts_in_many_scripts();
    for (int i = 0; i < texts.size(); ++i) {
        env.open_new(QDate(2026, 3, 20), QTime(8 + i, 0).toString("HH:mm"));
        f.Text1 = texts[i];
        f.Notes = texts[i] + " notes";
        s.rem_lead = 10;
        s.rem_sound = "/snd/" + texts[i] + ".wav";
        ASSERT_TRUE(env.ok());
        env.clock.advance_secs(1);
    }
    const auto rows = env.appts_in("2603");
    const auto rmdrs = env.rmdrs_in("2603");
    ASSERT_EQ(rows.size(), size_t(texts.size()));
    ASSERT_EQ(rmdrs.size(), size_t(texts.size()));
    for (int i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(QByteArray(rows[i].appt_text.c, text1_limit),
                  texts[i].toUtf8().leftJustified(text1_limit, ' '));
        EXPECT_EQ(rows[i].appt_notes.trimmed(), texts[i] + " notes");
        EXPECT_EQ(rows[i].appt_rem_text.trimmed(), "/snd/" + texts[i] + ".wav");
        EXPECT_EQ(rmdrs[i].rmdr_text.trimmed(), texts[i]);
        EXPECT_EQ(rmdrs[i].rmdr_alarm_text.trimmed(), "/snd/" + texts[i] + ".wav");
    }

    // Opened again, the editor shows what was typed.
    s.cur_date = QDate(2026, 3, 20);
    for (int i = 0; i < texts.size(); ++i) {
        edit(rows[i].appt_id.trimmed());
        EXPECT_EQ(f.Text1, texts[i]);
        EXPECT_EQ(f.Notes, texts[i] + " notes");
        EXPECT_EQ(s.rem_sound, "/snd/" + texts[i] + ".wav");
        Command2_Click(s, f);
    }
}

TEST_F(Saving, Utf8DescriptionPastItsFiftyBytesKeepsWholeLetters) {
    // 26 Greek letters are 52 bytes.
    save_new(QDate(2026, 3, 20), "09:00", "10:00", "αβγδεζηθικλμνξοπρστυφχψωάέ");
    const auto rows = env.appts_in("2603");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_text.str(), "αβγδεζηθικλμνξοπρστυφχψωά");
    EXPECT_EQ(QByteArray(rows[0].appt_text.c, 50), QByteArray("αβγδεζηθικλμνξοπρστυφχψωά"));
}

TEST_F(Saving, Utf8EmojiThatWouldStraddleTheDescriptionsEndIsDroppedWhole) {
    save_new(QDate(2026, 3, 20), "09:00", "10:00", QString(47, u'a') + "🎉");
    const auto rows = env.appts_in("2603");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(QByteArray(rows[0].appt_text.c, 50), QByteArray(47, 'a') + "   ");
}

TEST_F(Saving, Utf8NotesPastTheirTwoHundredBytesKeepWholeCharacters) {
    env.open_new(QDate(2026, 3, 20), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("Notes");
    f.Notes = QString(67, u'会'); // 201 bytes
    ASSERT_TRUE(env.ok());
    const auto rows = env.appts_in("2603");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(QByteArray(rows[0].appt_notes.c, 200), QString(66, u'会').toUtf8() + "  ");
}

// --- reminders of a save -----------------------------------------------------------

TEST_F(Saving, NewEntryWithALeadGetsItsReminderWaiting) {
    env.open_new(QDate(2026, 3, 20), QStringLiteral("09:00"));
    f.Text1 = QStringLiteral("Dentist");
    s.rem_lead = 30;
    s.rem_unit = 0;
    ASSERT_TRUE(env.ok());
    const auto r = env.rmdrs_in("2603");
    ASSERT_EQ(r.size(), 1u);
    EXPECT_EQ(r[0].rmdr_date.str(), "03/20/26");
    EXPECT_EQ(r[0].rmdr_time.str(), "08:30");
    EXPECT_EQ(r[0].rmdr_fired.str(), "F");
    EXPECT_EQ(s.rmdr_count, 1);
}

TEST_F(Saving, ThirtyMinutesBeforeMarchFirstAtQuarterPastMidnightLandsInFebruary) {
    env.open_new(QDate(2026, 3, 1), QStringLiteral("00:15"));
    f.Text1 = QStringLiteral("Night train");
    s.rem_lead = 30;
    s.rem_unit = 0;
    ASSERT_TRUE(env.ok());
    EXPECT_FALSE(env.has_member("r2603.rmd"));
    const auto r = env.rmdrs_in("2602");
    ASSERT_EQ(r.size(), 1u);
    EXPECT_EQ(r[0].rmdr_date.str(), "02/28/26");
    EXPECT_EQ(r[0].rmdr_time.str(), "23:45");
    EXPECT_EQ(r[0].rmdr_appt_date.str(), "03012026");
}

TEST_F(Saving, ALeadOfZeroMakesNoReminderAtAll) {
    env.open_new(QDate(2026, 3, 20), QStringLiteral("09:00"));
    s.rem_lead = 0;
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(env.all_rmdrs().empty());
}

TEST_F(Saving, NewSeriesKeepsItsPastRemindersWaiting) {
    env.open_new(QDate(2026, 3, 10), QStringLiteral("07:00"));
    env.rule(1, 0, QStringLiteral("03/20/26"));
    s.rem_lead = 1;
    s.rem_unit = 1;
    ASSERT_TRUE(env.ok());
    const auto r = env.all_rmdrs();
    ASSERT_EQ(r.size(), 11u);
    for (const rmdr_rec& x : r)
        EXPECT_EQ(x.rmdr_fired.str(), "F");
}

TEST_F(Saving, EditedSeriesWritesItsPastRemindersAsDelivered) {
    env.open_new(QDate(2026, 3, 10), QStringLiteral("07:00"));
    f.aptTimePick2 = QTime(7, 30);
    env.rule(1, 0, QStringLiteral("03/20/26"));
    s.rem_lead = 1;
    s.rem_unit = 1;
    ASSERT_TRUE(env.ok());
    edit(id_of_first());
    f.aptTimePick1 = QTime(10, 0); // due 09:00: today's is past at 09:10
    f.aptTimePick2 = QTime(10, 30);
    ASSERT_TRUE(env.ok());
    const auto r = env.all_rmdrs();
    ASSERT_EQ(r.size(), 11u);
    for (const rmdr_rec& x : r) {
        const QDate d = short_to_date(x.rmdr_date);
        EXPECT_EQ(x.rmdr_time.str(), "09:00");
        EXPECT_EQ(x.rmdr_fired.str(), d <= QDate(2026, 3, 15) ? "T" : "F")
            << x.rmdr_date.str().toStdString();
    }
}

// --- the change check of an edit ------------------------------------------------

TEST_F(Saving, OkOnAnUnchangedTimedEntryWritesNothingAndStillShowsCalendarUpdated) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    int writes = 0;
    s.archive.set_after_write_hook([&](const QString&) { ++writes; });
    const auto before = env.snapshot();
    ASSERT_TRUE(env.ok());
    EXPECT_FALSE(s.appt_changed);
    EXPECT_EQ(writes, 0);
    EXPECT_EQ(env.snapshot(), before);
    EXPECT_EQ(s.status_panels[panel_count].text, " Calendar Updated ");
    EXPECT_TRUE(s.timer1_enabled);
}

TEST_F(Saving, PatternTwoEntryIsRewrittenOnEveryOk) {
    env.open_new(QDate(2026, 3, 1), QStringLiteral("19:00"));
    f.Text1 = QStringLiteral("Club");
    env.weekday_rule(2, 3, 0, QStringLiteral("05/31/26"));
    ASSERT_TRUE(env.ok());
    s.cur_date = QDate(2026, 3, 18);
    edit(id_of_first());
    int writes = 0;
    s.archive.set_after_write_hook([&](const QString&) { ++writes; });
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_TRUE(s.mark_past);
    EXPECT_GT(writes, 0);
    EXPECT_EQ(env.all_appts().size(), 3u);
}

TEST_F(Saving, OkOnAnUntimedEntryAlwaysRewritesIt) {
    save_new(QDate(2026, 3, 15), " ", "", "Birthday");
    edit(id_of_first());
    int writes = 0;
    s.archive.set_after_write_hook([&](const QString&) { ++writes; });
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_TRUE(s.mark_past);
    EXPECT_GT(writes, 0);
    ASSERT_EQ(env.all_appts().size(), 1u);
    EXPECT_TRUE(env.all_appts()[0].appt_start.is_blank());
}

TEST_F(Saving, ChangedTextRewritesTheRecordAndItsReminders) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    f.Text1 = QStringLiteral("Dentist, Dr Li");
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_TRUE(s.mark_past);
    EXPECT_FALSE(s.type_changed);
    ASSERT_EQ(env.all_appts().size(), 1u);
    EXPECT_EQ(env.all_appts()[0].appt_text.trimmed(), "Dentist, Dr Li");
}

TEST_F(Saving, ChangedStickerSetsAllThreeFlags) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    f.typeIcombo.select_type(QStringLiteral("Car"));
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_TRUE(s.mark_past);
    EXPECT_TRUE(s.type_changed);
}

TEST_F(Saving, DeleteVirtualStickerBlanksTheTypeOfEveryOccurrence) {
    env.open_new(QDate(2026, 3, 15), QStringLiteral("07:00"));
    f.Text1 = QStringLiteral("Drive");
    f.typeIcombo.select_type(QStringLiteral("Car"));
    env.rule(2, 0, QStringLiteral("05/31/26"));
    ASSERT_TRUE(env.ok());
    for (const appt_rec& a : env.all_appts())
        ASSERT_EQ(a.appt_type.trimmed(), "Car");
    edit(id_of_first());
    env.rule(2, 0, QStringLiteral("05/31/26"));
    const auto& items = f.typeIcombo.items;
    const auto del = std::find_if(items.begin(), items.end(), [](const StickerList::Item& i) {
        return i.caption == sticker_delete_caption;
    });
    ASSERT_NE(del, items.end());
    f.typeIcombo.list_index = int(del - items.begin());
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.type_changed);
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 12u);
    for (const appt_rec& a : rows)
        EXPECT_TRUE(a.appt_type.is_blank()) << a.appt_date.str().toStdString();
}

TEST_F(Saving, NewSoundAloneReachesTheRowsAndNotTheReminders) {
    env.open_new(QDate(2026, 3, 20), QStringLiteral("09:00"));
    s.rem_lead = 10;
    s.rem_sound = QStringLiteral("/snd/old.wav");
    ASSERT_TRUE(env.ok());
    env.clock.advance_secs(1);
    s.cur_date = QDate(2026, 3, 20);
    edit(id_of_first());
    s.rem_sound = QStringLiteral("/snd/new.wav");
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_FALSE(s.mark_past);
    EXPECT_EQ(env.all_appts()[0].appt_rem_text.trimmed(), "/snd/new.wav");
    ASSERT_EQ(env.all_rmdrs().size(), 1u);
    EXPECT_EQ(env.all_rmdrs()[0].rmdr_alarm_text.trimmed(), "/snd/old.wav");
}

TEST_F(Saving, DirtyNotesRewriteTheRecordOnly) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    s.notes_dirty = true;
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_FALSE(s.mark_past);
}

TEST_F(Saving, ClickingTimedRewritesTheRecord) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    f.Check1 = true;
    Check1_Click(f);
    ASSERT_TRUE(env.ok());
    EXPECT_TRUE(s.appt_changed);
    EXPECT_FALSE(s.mark_past);
}

TEST_F(Saving, OneTimeEntryMovedToAnotherMonthLeavesTheOldMemberAndEndsTheNewOne) {
    env.add(make_appt("03102026", "OTHER3", "08:00", "Stays in March"));
    env.add(make_appt("04022026", "OTHER4", "08:00", "Stays in April"));
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    ASSERT_EQ(env.appts_in("2603").size(), 2u);
    const QString id = env.appts_in("2603")[1].appt_id.trimmed();
    edit(id);
    f.apptDTPicker = QDate(2026, 4, 20);
    apptDTPicker_Change(s, f);
    ASSERT_TRUE(env.ok());
    const auto march = env.appts_in("2603");
    ASSERT_EQ(march.size(), 1u);
    EXPECT_EQ(march[0].appt_id.trimmed(), "OTHER3");
    const auto april = env.appts_in("2604");
    ASSERT_EQ(april.size(), 2u);
    EXPECT_EQ(april[0].appt_id.trimmed(), "OTHER4");
    EXPECT_EQ(april[1].appt_id.trimmed(), id);
    EXPECT_EQ(april[1].appt_date.str(), "04202026");
}

TEST_F(Saving, SeriesCanBecomeASingleEntryAndKeepsItsKey) {
    save_series(QDate(2026, 3, 15), 1, 0, "04/15/26", "Walk");
    const QString id = id_of_first();
    edit(id);
    env.rule(0, 0, s.occ_until);
    ASSERT_TRUE(env.ok());
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_id.trimmed(), id);
    EXPECT_EQ(rows[0].appt_occurs.str(), "0 ");
}

TEST_F(Saving, EditWithNoRowGivesCouldntCompleteUpdateAndStillEnds) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    s.edit_index = 0;
    f.Text1 = QStringLiteral("Changed");
    const auto before = env.snapshot();
    ASSERT_TRUE(env.ok());
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Couldn't complete update");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(env.snapshot(), before);
    EXPECT_EQ(s.status_panels[panel_count].text, " Calendar Updated ");
    EXPECT_TRUE(s.timer1_enabled);
}

// --- one command, one transaction -------------------------------------------------

// The edit of a weekly series deletes it from four months and writes it again,
// and the four members reach the file together at the end: a process killed
// after any of them, even the last, before the commit leaves the file as it was.
TEST_F(Saving, AKilledEditLeavesTheOldSeriesWhole) {
    save_series(QDate(2026, 3, 3), 2, 0, "06/30/26", "Swim");
    const QString id = id_of_first();
    s.archive.close(s.cal_path);
    const auto before = env.snapshot();
    s.archive.close(s.cal_path);
    ASSERT_EQ(env.all_appts().size(), 18u);
    s.archive.close(s.cal_path);

    for (int kill_after : {1, 2, 4}) {
        const pid_t pid = fork();
        if (pid == 0) {
            int writes = 0;
            s.archive.set_after_write_hook([&](const QString&) {
                if (++writes == kill_after) raise(SIGKILL);
            });
            edit(id);
            f.Text1 = QStringLiteral("Swim, new pool");
            env.ok();
            _exit(0);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << kill_after;
        EXPECT_EQ(env.snapshot(), before) << kill_after;
        s.archive.close(s.cal_path);
    }
}

// --- a command the file refuses ---------------------------------------------------

namespace {

// Another process's connection holding the calendar's write lock.
struct LockHolder {
    sqlite3* db = nullptr;
    explicit LockHolder(const QString& cal) {
        EXPECT_EQ(sqlite3_open_v2(QFile::encodeName(cal).constData(), &db, SQLITE_OPEN_READWRITE,
                                  nullptr),
                  SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ~LockHolder() {
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    }
};

} // namespace

TEST_F(Saving, SaveWhileAnotherProcessHoldsTheWriteLockStoresNothingAndSaysSo) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    const auto before = env.snapshot();
    s.archive.set_busy_timeout_ms(50);
    LockHolder other(s.cal_path);
    env.m.shown.clear();

    env.open_new(QDate(2026, 3, 3), QStringLiteral("07:00"));
    f.Text1 = QStringLiteral("Swim");
    f.aptTimePick2 = QTime(7, 30);
    env.rule(2, 0, QStringLiteral("06/30/26"));
    EXPECT_FALSE(env.ok()) << "the editor stays open with what was typed";

    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Couldn't complete update");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_NE(s.status_panels[panel_count].text, " Calendar Updated ");
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_TRUE(s.new_appt) << "a second OK saves it as new again";
    EXPECT_EQ(env.snapshot(), before) << "not one occurrence was stored";
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_text.trimmed(), QString("Dentist"));
}

TEST_F(Saving, RefusedCopyKeepsTheEditorInCopyMode) {
    save_new(QDate(2026, 3, 15), "09:00", "10:00", "Dentist");
    edit(id_of_first());
    s.new_appt = true;
    s.appt_copy = true;
    s.archive.set_busy_timeout_ms(50);
    LockHolder other(s.cal_path);
    EXPECT_FALSE(env.ok());
    EXPECT_TRUE(s.appt_copy);
    EXPECT_EQ(env.all_appts().size(), 1u);
}

TEST_F(Saving, DeleteWhileAnotherProcessHoldsTheWriteLockKeepsTheSeriesWhole) {
    save_series(QDate(2026, 3, 3), 2, 0, "06/30/26", "Swim");
    const auto before = env.snapshot();
    EXPECT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    s.archive.set_busy_timeout_ms(50);
    LockHolder other(s.cal_path);
    env.m.shown.clear();
    s.edit_index = 1;
    env.m.answers.push_back(Answer::Yes);
    EXPECT_FALSE(delCmd_Click(s));
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "Couldn't complete update");
    EXPECT_EQ(env.snapshot(), before);
    EXPECT_EQ(s.appt_count, 5) << "the planner still shows March's five Tuesdays";
}
