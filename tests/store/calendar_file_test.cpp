#include "core/event_loop.h"
#include "store/calendar_file.h"

#include "store/member_format.h"
#include "store_fixtures.h"
#include "support/io_shim.h"
#include "support/scripted_modal.h"

#include <QDir>
#include <QFile>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace orva;
using orva::testing::make_appt;
using orva::testing::make_rmdr;
using orva::testing::ModalGuard;
using orva::testing::ScriptedModal;

namespace {

struct CalendarFile : ::testing::Test {
    std::unique_ptr<orva::testing::StoreEnv> env = std::make_unique<orva::testing::StoreEnv>();
    Shared& s = env->s;
    QString& cal = env->cal;

    QByteArray member(const QString& name) {
        QByteArray b;
        const int e = s.archive.get(cal, name, b);
        if (e != 0 && e != 53) ADD_FAILURE() << "reading " << name.toStdString() << " gave " << e;
        return b;
    }
    void put_member(const QString& name, const QByteArray& b) {
        ASSERT_EQ(s.archive.put(cal, name, b), 0);
    }
    // The lines kept by a delete by key that must succeed.
    int kept_after_delete(MemberKind kind, const QString& yymm, const QString& key) {
        int kept = -1;
        EXPECT_EQ(delete_by_key(s, cal, kind, yymm, key, &kept), 0);
        return kept;
    }
    // Stores a member whose deflated bytes are damaged, as a failing disk
    // may leave one: it cannot be read back.
    void put_damaged_member(const QString& name) {
        s.archive.close(cal);
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(cal).constData(), &db), SQLITE_OK);
        const QByteArray sql =
            "UPDATE sqlar SET sz = 9000, data = x'789c0102' WHERE name = '" + name.toUtf8() + "'";
        EXPECT_EQ(sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_changes(db), 1);
        sqlite3_close(db);
    }
    // One reminder in each month from `first` for `months` months.
    void rmdr_each_month(QDate first, int months) {
        for (int i = 0; i < months; ++i) {
            const QDate d = first.addMonths(i);
            env->append_rmdr(make_rmdr(d.toString("MM/dd/yy"), "R" + yymm_of(d)));
        }
    }
    QStringList loaded_rmdr_months() const {
        QStringList out;
        for (int r = 1; r <= s.rmdr_count; ++r)
            out << rmdr_yymm(s.rmdr_row(r)->rmdr_date);
        return out;
    }
};

} // namespace

TEST(MemberNames, AreKindThenYymm) {
    EXPECT_EQ(appt_member_name("2603"), QString("c2603.cal"));
    EXPECT_EQ(rmdr_member_name("2603"), QString("r2603.rmd"));
}

TEST_F(CalendarFile, MonthWithNoMemberLoadsEmptyWithoutAMessage) {
    ScriptedModal m;
    ModalGuard guard(&m);
    env->append_appt(make_appt("04012026", "A1"));
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_TRUE(m.shown.empty());
    EXPECT_TRUE(env->loose_files().isEmpty());
}

TEST_F(CalendarFile, MissingCalendarLoadsEmptyAndIsNotCreated) {
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_EQ(s.rmdr_count, 0);
    EXPECT_FALSE(QFile::exists(cal));
}

TEST_F(CalendarFile, AppendingCreatesTheMember) {
    env->append_appt(make_appt("04012026", "A1"));
    EXPECT_EQ(s.archive.members(cal), QStringList{"c2604.cal"});
}

TEST_F(CalendarFile, AppendedAppointmentLineIs477Bytes) {
    s.appt_count = 1;
    *s.appt_row(1) = make_appt("03202026", "A1");
    ASSERT_EQ(write_appts(s, cal, append_mode, 1), 0);
    const QByteArray bytes = member("c2603.cal");
    EXPECT_EQ(bytes.size(), 477);
    EXPECT_EQ(bytes.right(2), "\r\n");
    ASSERT_EQ(write_appts(s, cal, append_mode, 1), 0);
    EXPECT_EQ(member("c2603.cal").size(), 2 * 477);
}

TEST_F(CalendarFile, AppendedReminderLineIs273Bytes) {
    env->append_rmdr(make_rmdr("03/20/26", "A1"));
    EXPECT_EQ(member("r2603.rmd").size(), 273);
}

TEST_F(CalendarFile, WriteStepsLeaveNoLooseCopyBehind) {
    env->append_appt(make_appt("03202026", "A1"));
    env->append_rmdr(make_rmdr("03/20/26", "A1"));
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2603", "nobody"), 1);
    EXPECT_EQ(env->loose_files(), QStringList());
}

TEST_F(CalendarFile, LoadFillsTheTableAndSummarisesTheDays) {
    env->append_appt(make_appt("03202026", "A1", "14:00", "Late"));
    env->append_appt(make_appt("03202026", "A2", "08:00", "Early"));
    s.cur_date = QDate(2026, 3, 15);
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_next, 2);
    EXPECT_EQ(appt_line(*s.appt_row(1)), appt_line(make_appt("03202026", "A1", "14:00", "Late")));
    EXPECT_EQ(s.day_tbl[20].day_time.str(), QString("08:00"));
    EXPECT_EQ(s.day_tbl[20].day_index.str(), QString("2 "));
}

TEST_F(CalendarFile, LoadOfAMonthWithNoAppointmentsLeavesEveryDayAtSentinel) {
    env->append_appt(make_appt("03202026", "A1"));
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    s.cur_date = QDate(2026, 4, 1);
    ASSERT_EQ(load_appts(s, QDate(2026, 4, 1), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 0);
    for (int d = 1; d <= 31; ++d)
        EXPECT_EQ(s.day_tbl[d].day_time.str(), QString("40404")) << d;
}

TEST_F(CalendarFile, ReloadBlanksTheRowsOfTheLastLoad) {
    env->append_appt(make_appt("03202026", "A1"));
    env->append_appt(make_appt("03212026", "A2"));
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(load_appts(s, QDate(2026, 5, 1), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 0);
    EXPECT_TRUE(s.appt_row(1)->appt_id.is_blank());
    EXPECT_TRUE(s.appt_row(2)->appt_id.is_blank());
}

TEST_F(CalendarFile, ExtraMonthsReadTheFollowingMembersToo) {
    env->append_appt(make_appt("03302026", "A1"));
    env->append_appt(make_appt("04022026", "A2"));
    env->append_appt(make_appt("05022026", "A3"));
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 29), cal, 1), 0);
    ASSERT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_row(2)->appt_id.trimmed(), QString("A2"));
}

TEST_F(CalendarFile, NumberFieldWithNoDigitsKeepsThePreviousLinesValue) {
    appt_rec first = make_appt("03202026", "A1");
    first.appt_rem_lead = QString("30");
    appt_rec second = make_appt("03212026", "A2");
    second.appt_rem_lead = QString("  ");
    put_member("c2603.cal", appt_line(first) + "\r\n" + appt_line(second) + "\r\n");
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_row(2)->appt_rem_lead.str(), QString("30"));
}

TEST_F(CalendarFile, LineEndInsideATextFieldDoesNotSplitTheLine) {
    env->append_appt(make_appt("03202026", "A1", "09:00", "one\r\ntwo"));
    env->append_appt(make_appt("03212026", "A2"));
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_row(1)->appt_text.trimmed(), QString("one\r\ntwo"));
    EXPECT_EQ(s.appt_row(2)->appt_id.trimmed(), QString("A2"));
}

TEST_F(CalendarFile, LineCutShortIsSkippedAndLoggedAndTheLinesBeforeItLoad) {
    const QByteArray whole = appt_line(make_appt("03202026", "A1")) + "\r\n";
    const QByteArray cut = appt_line(make_appt("03212026", "A2")).left(300);
    put_member("c2603.cal", whole + cut);
    orva::testing::StoreLog log;
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_id.trimmed(), QString("A1"));
    EXPECT_EQ(log.count({"c2603.cal", "line 2", "cut short"}), 1)
        << log.lines.join('\n').toStdString();
}

TEST_F(CalendarFile, LineWhoseFieldsAreWholeButWhoseEndingIsMissingLoads) {
    put_member("c2603.cal", appt_line(make_appt("03202026", "A1")) + "\r\n" +
                                appt_line(make_appt("03212026", "A2")));
    orva::testing::StoreLog log;
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_row(2)->appt_id.trimmed(), QString("A2"));
    EXPECT_TRUE(log.lines.isEmpty());
}

TEST_F(CalendarFile, LineWithNoRealDateIsSkippedAndLoggedAndTheRestOfTheMonthShows) {
    QByteArray bytes;
    for (const char* date : {"03202026", "03322026", "0320 026", "\t3202026", "03202026"})
        bytes += appt_line(make_appt(date, "D")) + "\r\n";
    put_member("c2603.cal", bytes);
    orva::testing::StoreLog log;
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 2);
    EXPECT_EQ(log.count({"c2603.cal", "no usable date"}), 3) << log.lines.join('\n').toStdString();
    EXPECT_EQ(log.count({"line 2"}), 1);
    EXPECT_EQ(log.count({"line 4"}), 1);
}

TEST_F(CalendarFile, ReminderLineWithNoRealDueDateIsSkippedAndLogged) {
    QByteArray bytes;
    for (const char* due : {"03/10/26", "02/30/26", "03/1x/26", "03-11-26"})
        bytes += rmdr_line(make_rmdr(due, "R")) + "\r\n";
    put_member("r2603.rmd", bytes + rmdr_line(make_rmdr("03/12/26", "cut")).left(100));
    orva::testing::StoreLog log;
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    // The separators are never read: "03-11-26" is the eleventh of March.
    ASSERT_EQ(s.rmdr_count, 2);
    EXPECT_EQ(s.rmdr_row(2)->rmdr_date.str(), QString("03-11-26"));
    EXPECT_EQ(log.count({"r2603.rmd", "no usable date"}), 2);
    EXPECT_EQ(log.count({"r2603.rmd", "line 5", "cut short"}), 1);
}

TEST_F(CalendarFile, TabInAStartFieldIsKeptWithItsLine) {
    appt_rec tabbed = make_appt("03202026", "A1", "\t9:00");
    env->append_appt(tabbed);
    env->append_appt(make_appt("03212026", "A2"));
    orva::testing::StoreLog log;
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 2);
    EXPECT_EQ(s.appt_row(1)->appt_start.str(), QString("\t9:00"));
    EXPECT_TRUE(log.lines.isEmpty());
}

TEST_F(CalendarFile, AnyByteInTheTextAndNoteFieldsLoads) {
    appt_rec a = make_appt("03202026", "A1");
    QByteArray line = appt_line(a);
    for (int i = 0; i < 50; ++i)
        line[int(offsetof(appt_rec, appt_text)) + i] = char(i * 5);
    for (int i = 0; i < 200; ++i)
        line[int(offsetof(appt_rec, appt_notes)) + i] = char(255 - i);
    put_member("c2603.cal", line + "\r\n" + appt_line(make_appt("03212026", "A2")) + "\r\n");
    ASSERT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 2);
    // Not UTF-8, so read as Latin-1; the control bytes come through as they are.
    const QByteArray ascii = line.mid(int(offsetof(appt_rec, appt_text)), 26);
    EXPECT_TRUE(s.appt_row(1)->appt_text.str().startsWith(QString::fromLatin1(ascii)));
    EXPECT_EQ(s.appt_row(2)->appt_id.trimmed(), QString("A2"));
}

TEST_F(CalendarFile, Utf8TextNotesAndSoundSurviveAWriteAndAReload) {
    const QStringList texts = orva::testing::texts_in_many_scripts();
    for (int i = 0; i < texts.size(); ++i) {
        appt_rec a = make_appt("03202026", "U" + QString::number(i), "09:00", texts[i]);
        a.appt_notes = texts[i] + " notes";
        a.appt_rem_text = "/sounds/" + texts[i] + ".wav";
        env->append_appt(a);
    }
    const QByteArray bytes = member("c2603.cal");
    ASSERT_EQ(bytes.size(), texts.size() * 477);
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_EQ(bytes.mid(i * 477 + offsetof(appt_rec, appt_text), 50),
                  texts[i].toUtf8().leftJustified(50, ' '))
            << i;
    EXPECT_FALSE(bytes.contains('?'));

    EXPECT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        const appt_rec& r = *s.appt_row(i + 1);
        EXPECT_EQ(r.appt_text.trimmed(), texts[i]);
        EXPECT_EQ(r.appt_notes.trimmed(), texts[i] + " notes");
        EXPECT_EQ(r.appt_rem_text.trimmed(), "/sounds/" + texts[i] + ".wav");
    }
}

TEST_F(CalendarFile, Utf8ReminderTextAndSoundSurviveAWriteAndAReload) {
    const QStringList texts = orva::testing::texts_in_many_scripts();
    for (int i = 0; i < texts.size(); ++i) {
        rmdr_rec r = make_rmdr("03/20/26", "U" + QString::number(i));
        r.rmdr_text = texts[i];
        r.rmdr_alarm_text = "/sounds/" + texts[i] + ".wav";
        env->append_rmdr(r);
    }
    const QByteArray bytes = member("r2603.rmd");
    ASSERT_EQ(bytes.size(), texts.size() * 273);
    EXPECT_FALSE(bytes.contains('?'));
    EXPECT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.rmdr_count, texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(s.rmdr_row(i + 1)->rmdr_text.trimmed(), texts[i]);
        EXPECT_EQ(s.rmdr_row(i + 1)->rmdr_alarm_text.trimmed(), "/sounds/" + texts[i] + ".wav");
    }
}

TEST_F(CalendarFile, Utf8MemberWrittenAsLatin1LoadsAndIsRewrittenAsUtf8) {
    appt_rec old = make_appt("03202026", "OLD");
    std::memcpy(old.appt_text.c, "Caf\xe9 cr\xe8me", 10);
    put_member("c2603.cal", appt_line(old) + "\r\n");
    EXPECT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_text.trimmed(), QString::fromUtf8("Café crème"));

    EXPECT_EQ(write_appts(s, cal, rewrite_mode, 1), 0);
    const QByteArray bytes = member("c2603.cal");
    ASSERT_EQ(bytes.size(), 477);
    EXPECT_EQ(bytes.mid(offsetof(appt_rec, appt_text), 50),
              QByteArray("Caf\xc3\xa9 cr\xc3\xa8me").leftJustified(50, ' '));
}

TEST_F(CalendarFile, MemberOf6001LinesCountsThemAllButStores6000) {
    QByteArray bytes;
    for (int i = 1; i <= 6001; ++i)
        bytes += appt_line(make_appt("04022026", QString::number(i))) + "\r\n";
    put_member("c2604.cal", bytes);
    ASSERT_EQ(load_appts(s, QDate(2026, 4, 1), cal, 0), 0);
    EXPECT_EQ(s.appt_count, 6001);
    EXPECT_EQ(s.appt_row(6001), nullptr);
    EXPECT_EQ(s.appt_row(6000)->appt_id.trimmed(), QString("6000"));
}

TEST_F(CalendarFile, WriteOccursAppendsEachRowToItsMonthInOrder) {
    env->append_appt(make_appt("03012026", "OLD"));
    const QStringList dates{"03102026", "03172026", "04072026", "05052026"};
    s.occur_count = qint16(dates.size());
    for (int i = 0; i < dates.size(); ++i)
        *s.occur_row(i + 1) = make_appt(dates[i], "S1");
    ASSERT_EQ(write_occurs(s, cal), 0);
    EXPECT_EQ(s.archive.members(cal), QStringList({"c2603.cal", "c2604.cal", "c2605.cal"}));
    EXPECT_EQ(member("c2603.cal"), appt_line(make_appt("03012026", "OLD")) + "\r\n" +
                                       appt_line(make_appt("03102026", "S1")) + "\r\n" +
                                       appt_line(make_appt("03172026", "S1")) + "\r\n");
    EXPECT_EQ(member("c2605.cal").size(), 477);
    EXPECT_EQ(env->loose_files(), QStringList());
}

TEST_F(CalendarFile, RewriteReplacesOnlyTheMonthsThatHaveRows) {
    env->append_appt(make_appt("03012026", "M1"));
    env->append_appt(make_appt("03022026", "M2"));
    env->append_appt(make_appt("04012026", "APR"));
    s.appt_count = 1;
    *s.appt_row(1) = make_appt("03052026", "ONLY");
    ASSERT_EQ(write_appts(s, cal, rewrite_mode, 1), 0);
    EXPECT_EQ(member("c2603.cal"), appt_line(make_appt("03052026", "ONLY")) + "\r\n");
    EXPECT_EQ(member("c2604.cal").size(), 477);
}

TEST_F(CalendarFile, RewriteOfScatteredMonthKeepsOnlyItsLastRun) {
    s.appt_count = 3;
    *s.appt_row(1) = make_appt("03052026", "A");
    *s.appt_row(2) = make_appt("04052026", "B");
    *s.appt_row(3) = make_appt("03062026", "C");
    ASSERT_EQ(write_appts(s, cal, rewrite_mode, 3), 0);
    EXPECT_EQ(member("c2603.cal"), appt_line(make_appt("03062026", "C")) + "\r\n");
}

TEST_F(CalendarFile, SaveRmdrsRewriteCarriesTheDeliveredFlagToTheFile) {
    env->append_rmdr(make_rmdr("03/10/26", "A1"));
    env->append_rmdr(make_rmdr("03/11/26", "A2"));
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    ASSERT_EQ(s.rmdr_count, 2);
    s.rmdr_row(2)->rmdr_fired = QString("T");
    ASSERT_EQ(save_rmdrs(s, rewrite_mode, cal), 0);
    const QByteArray bytes = member("r2603.rmd");
    ASSERT_EQ(bytes.size(), 2 * 273);
    EXPECT_EQ(bytes.mid(116, 1), "F");
    EXPECT_EQ(bytes.mid(273 + 116, 1), "T");
}

TEST_F(CalendarFile, SaveRmdrsOtherModeAppendsTheLastRow) {
    env->append_rmdr(make_rmdr("03/10/26", "A1"));
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    s.rmdr_count = 2;
    *s.rmdr_row(2) = make_rmdr("04/01/26", "NEW");
    ASSERT_EQ(save_rmdrs(s, append_mode, cal), 0);
    EXPECT_EQ(member("r2603.rmd").size(), 273);
    EXPECT_EQ(member("r2604.rmd"), rmdr_line(make_rmdr("04/01/26", "NEW")) + "\r\n");
}

TEST_F(CalendarFile, DeleteByKeyKeepsOtherLinesByteForByte) {
    const appt_rec keep1 = make_appt("03052026", "KEEP1");
    const appt_rec keep2 = make_appt("03072026", "KEEP2");
    env->append_appt(keep1);
    env->append_appt(make_appt("03062026", "GONE"));
    env->append_appt(keep2);
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2603", "GONE"), 2);
    EXPECT_EQ(member("c2603.cal"), appt_line(keep1) + "\r\n" + appt_line(keep2) + "\r\n");
    EXPECT_EQ(env->loose_files(), QStringList());
}

TEST_F(CalendarFile, DeletingTheLastLineRemovesTheMember) {
    env->append_appt(make_appt("03062026", "GONE"));
    env->append_appt(make_appt("04062026", "OTHER"));
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2603", "GONE"), 0);
    EXPECT_EQ(s.archive.members(cal), QStringList{"c2604.cal"});
    EXPECT_EQ(env->loose_files(), QStringList());
}

TEST_F(CalendarFile, DeletingTheLastReminderLineRemovesTheMember) {
    env->append_rmdr(make_rmdr("03/10/26", "GONE"));
    env->append_rmdr(make_rmdr("03/11/26", "GONE"));
    EXPECT_EQ(kept_after_delete(MemberKind::reminders, "2603", "GONE"), 0);
    EXPECT_TRUE(s.archive.members(cal).isEmpty());
}

TEST_F(CalendarFile, DeleteByKeyOnAMissingMonthChangesNothing) {
    env->append_appt(make_appt("03062026", "A1"));
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2604", "A1"), 0);
    EXPECT_EQ(s.archive.members(cal), QStringList{"c2603.cal"});
}

TEST_F(CalendarFile, DeleteByKeyLeavesAMemberItCouldNotReadUntouched) {
    env->append_appt(make_appt("03062026", "GONE"));
    put_damaged_member("c2603.cal");
    int kept = -1;
    EXPECT_EQ(delete_by_key(s, cal, MemberKind::appointments, "2603", "GONE", &kept), 75);
    EXPECT_EQ(kept, 0);
    EXPECT_EQ(s.archive.members(cal), QStringList{"c2603.cal"}) << "not taken for an empty month";
}

TEST_F(CalendarFile, DeleteByKeyOfAMonthWithoutTheKeyRewritesNothing) {
    env->append_appt(make_appt("03062026", "KEEP"));
    Archive::Command command(s.archive, cal);
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2603", "OTHER"), 1);
    int writes = 0;
    s.archive.set_after_write_hook([&](const QString&) { ++writes; });
    EXPECT_EQ(command.finish(), 0);
    EXPECT_EQ(writes, 0);
}

TEST_F(CalendarFile, AppendToAMemberThatCannotBeReadFailsAndKeepsTheMonth) {
    env->append_appt(make_appt("03062026", "OLD1"));
    env->append_appt(make_appt("03072026", "OLD2"));
    put_damaged_member("c2603.cal");
    s.appt_count = 1;
    *s.appt_row(1) = make_appt("03202026", "NEW");
    EXPECT_EQ(write_appts(s, cal, append_mode, 1), 75);
    s.archive.close(cal);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(cal).constData(), &db), SQLITE_OK);
    sqlite3_stmt* st = nullptr;
    ASSERT_EQ(
        sqlite3_prepare_v2(db, "SELECT sz FROM sqlar WHERE name='c2603.cal'", -1, &st, nullptr),
        SQLITE_OK);
    ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(st, 0), 9000) << "the month is not replaced by the new line alone";
    sqlite3_finalize(st);
    sqlite3_close(db);
}

TEST_F(CalendarFile, DeleteByKeyMatchesTheWholeKeyNotAPrefix) {
    env->append_appt(make_appt("03062026", "150900001234"));
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2603", "1509"), 1);
}

class LoadRmdrsSpan : public CalendarFile,
                      public ::testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(LoadRmdrsSpan, ReadsTheMonthsBackAndTheDatesOwnMonth) {
    const auto [months_back, members] = GetParam();
    rmdr_each_month(QDate(2025, 1, 10), 16); // Jan 2025 to Apr 2026
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 31), cal, months_back), 0);
    QStringList expected;
    for (int i = members - 1; i >= 0; --i)
        expected << yymm_of(QDate(2026, 3, 1).addMonths(-i));
    EXPECT_EQ(loaded_rmdr_months(), expected);
}

INSTANTIATE_TEST_SUITE_P(CalendarFile, LoadRmdrsSpan,
                         ::testing::Values(std::pair{0, 4}, std::pair{1, 4}, std::pair{2, 4},
                                           std::pair{3, 4}, std::pair{4, 5}, std::pair{7, 8}),
                         [](const ::testing::TestParamInfo<std::pair<int, int>>& i) {
                             return "MonthsBack" + std::to_string(i.param.first) + "Reads" +
                                    std::to_string(i.param.second) + "Members";
                         });

TEST_F(CalendarFile, ReminderDueNextMonthWaitsUntilTheMonthRollsOver) {
    env->append_rmdr(make_rmdr("04/01/26", "NEXT", "00:05"));
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 31), cal, 0), 0);
    EXPECT_EQ(s.rmdr_count, 0);
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 4, 1), cal, 0), 0);
    ASSERT_EQ(s.rmdr_count, 1);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_id.trimmed(), QString("NEXT"));
}

TEST_F(CalendarFile, LoadRmdrsBlanksEveryRowOfTheLastLoad) {
    env->append_rmdr(make_rmdr("03/10/26", "A1"));
    ASSERT_EQ(load_rmdrs(s, QDate(2026, 3, 15), cal, 0), 0);
    *s.rmdr_row(4500) = make_rmdr("03/10/26", "HIGH");
    ASSERT_EQ(load_rmdrs(s, QDate(2027, 3, 15), cal, 0), 0);
    EXPECT_EQ(s.rmdr_count, 0);
    EXPECT_TRUE(s.rmdr_row(1)->rmdr_id.is_blank());
    EXPECT_TRUE(s.rmdr_row(4500)->rmdr_id.is_blank());
}

TEST_F(CalendarFile, ExtractOfAMissingMemberGives53AndNoBytes) {
    env->append_appt(make_appt("04012026", "A1"));
    QByteArray bytes("junk");
    EXPECT_EQ(extract_appt_member(s, cal, bytes, "2603"), 53);
    EXPECT_TRUE(bytes.isEmpty());
    EXPECT_EQ(extract_rmdr_member(s, cal, bytes, "2603"), 53);
    EXPECT_EQ(extract_appt_member(s, cal, bytes, "2604"), 0);
    EXPECT_EQ(bytes.size(), 477);
}

TEST_F(CalendarFile, MemberFileLeftInTheDataFolderIsNeverRead) {
    QFile stale(env->dir.filePath("r2603.rmd"));
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.write(QByteArray(271, 'x') + "\r\n");
    stale.close();
    ASSERT_EQ(load_rmdr_month(s, "2603", cal), 0);
    EXPECT_EQ(s.rmdr_count, 0);
}

TEST_F(CalendarFile, LoadOfAMemberThatCannotBeReadSaysSoAndLoadsTheOtherMonths) {
    env->append_appt(make_appt("03062026", "MARCH"));
    env->append_appt(make_appt("04062026", "APRIL"));
    put_damaged_member("c2603.cal");
    EXPECT_EQ(load_appts(s, QDate(2026, 3, 15), cal, 1), 75);
    ASSERT_EQ(s.appt_count, 1);
    EXPECT_EQ(s.appt_row(1)->appt_id.trimmed(), QString("APRIL"));
}

TEST_F(CalendarFile, WriteRunWhileALoadReportsProgressJoinsTheOpenCommand) {
    env->append_appt(make_appt("03052026", "A1"));
    env->append_appt(make_appt("03062026", "A2"));
    Archive other;
    QByteArray seen;
    bool wrote = false;
    // A click handled while the caller keeps its window alive makes an entry
    // of its own.
    s.progress = [&] {
        if (wrote) return;
        wrote = true;
        s.occur_count = 1;
        *s.occur_row(1) = make_appt("04012026", "CLICK");
        EXPECT_EQ(write_occurs(s, cal), 0);
        EXPECT_EQ(other.get(cal, "c2604.cal", seen), 53);
    };
    {
        Archive::Command command(s.archive, cal);
        ASSERT_EQ(load_appts(s, QDate(2026, 3, 1), cal, 0), 0);
        EXPECT_TRUE(seen.isEmpty()) << "the inner write must not commit before the command ends";
        EXPECT_EQ(command.finish(), 0);
    }
    s.progress = nullptr;
    ASSERT_TRUE(wrote);
    EXPECT_EQ(s.appt_count, 2);
    EXPECT_EQ(other.get(cal, "c2604.cal", seen), 0);
    EXPECT_EQ(seen.size(), 477);
}

TEST_F(CalendarFile, StoreNeverRunsTheEventLoopAndReportsProgressOncePerMember) {
    int yields = 0, reports = 0;
    install_yield_hook([&] { ++yields; });
    s.progress = [&] { ++reports; };
    s.occur_count = 0;
    for (QDate d(2026, 3, 1); d < QDate(2026, 6, 1); d = d.addDays(1))
        *s.occur_row(++s.occur_count) = make_appt(d.toString("MMddyyyy"), "DAILY");
    EXPECT_EQ(write_occurs(s, cal), 0);
    EXPECT_EQ(reports, 3) << "March, April and May";
    EXPECT_EQ(load_appts(s, QDate(2026, 3, 1), cal, 1), 0);
    EXPECT_EQ(reports, 5);
    EXPECT_EQ(kept_after_delete(MemberKind::appointments, "2604", "DAILY"), 0);
    EXPECT_EQ(reports, 6);
    install_yield_hook(nullptr);
    s.progress = nullptr;
    EXPECT_EQ(yields, 0);
}
