#include "help/help_topics.h"
#include "rem_list_fixtures.h"

#include <gtest/gtest.h>

using namespace orva;
using namespace orva::testing;

namespace {

const QDate mar10(2026, 3, 10), mar12(2026, 3, 12);

// --- opening ---------------------------------------------------------------

TEST(RemListOpening, RangeIsTheWeekOfCurDateMondayToSunday) {
    RemListEnv e;
    e.s.cur_date = QDate(2026, 3, 11); // a Wednesday
    e.load();
    EXPECT_EQ(e.f.from_date, QDate(2026, 3, 9));
    EXPECT_EQ(e.f.to_date, QDate(2026, 3, 15));
}

TEST(RemListOpening, OnASundayTheWeekEndsThatDay) {
    RemListEnv e;
    e.load(); // Sunday 2026-03-15
    EXPECT_EQ(e.f.from_date, QDate(2026, 3, 9));
    EXPECT_EQ(e.f.to_date, QDate(2026, 3, 15));
}

TEST(RemListOpening, OnAMondayTheWeekStartsThatDay) {
    const auto [from, to] = monday_to_sunday(QDate(2026, 3, 16));
    EXPECT_EQ(from, QDate(2026, 3, 16));
    EXPECT_EQ(to, QDate(2026, 3, 22));
}

TEST(RemListOpening, TheWeekPlannerAlsoOpensOnTheWeek) {
    RemListEnv e;
    e.s.view_day = false;
    e.s.view_week = true;
    e.s.cur_date = QDate(2026, 12, 31); // a Thursday; the week runs into the new year
    e.load();
    EXPECT_EQ(e.f.from_date, QDate(2026, 12, 28));
    EXPECT_EQ(e.f.to_date, QDate(2027, 1, 3));
}

TEST(RemListOpening, WithTheMonthPlannerUpTheRangeIsThatWholeMonth) {
    RemListEnv e;
    e.s.view_day = false;
    e.s.view_month = true;
    e.s.cur_date = QDate(2026, 2, 11);
    e.load();
    EXPECT_EQ(e.f.from_date, QDate(2026, 2, 1));
    EXPECT_EQ(e.f.to_date, QDate(2026, 2, 28));
}

TEST(RemListOpening, ShowsAllWithThirteenColumnsAndTheHeadings) {
    RemListEnv e;
    e.f.optDisplay = 0;
    e.load();
    EXPECT_EQ(e.f.optDisplay, 2);
    const Grid& g = e.f.vsRmdr;
    EXPECT_EQ(g.Cols(), 13);
    EXPECT_EQ(g.FixedRows(), 1);
    EXPECT_EQ(g.FixedCols(), 0);
    EXPECT_EQ(g.Rows(), 1);
    const char* headings[] = {"Appt Date", "Time", "", "Subject", "Reminder set for:", "Status"};
    for (int c = 0; c < 6; ++c) {
        EXPECT_EQ(g.TextMatrix(0, c), QString::fromLatin1(headings[c])) << c;
        EXPECT_FALSE(g.ColHidden(c)) << c;
    }
    for (int c = 6; c < 13; ++c)
        EXPECT_TRUE(g.ColHidden(c)) << c;
    EXPECT_EQ(g.Redraw(), 1);
}

TEST(RemListOpening, ShownColumnsTakeTheirSharesAndThePictureColumnNineHundredTwips) {
    RemListEnv e;
    e.load();
    const Grid& g = e.f.vsRmdr;
    EXPECT_EQ(g.ColWidth(0), 2020);
    EXPECT_EQ(g.ColWidth(1), 2070);
    EXPECT_EQ(g.ColWidth(2), 900);
    EXPECT_EQ(g.ColWidth(3), 2160);
    EXPECT_EQ(g.ColWidth(4), 1920);
    EXPECT_EQ(g.ColWidth(5), 860);
}

TEST(RemListOpening, ListsTheRemindersOfTheWeekStraightAway) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    e.with_alarm(QDate(2026, 3, 20), QStringLiteral("A2"), QStringLiteral("09:00"),
                 QStringLiteral("Later"));
    e.load();
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("Dentist")});
    EXPECT_EQ(e.f.lblCnt, u"1 reminder ");
}

TEST(RemListOpening, WithNoCalendarOpenTheListIsEmptyAndSilent) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    e.s.cal_path.clear();
    e.load();
    EXPECT_EQ(e.f.vsRmdr.Rows(), 1);
    EXPECT_EQ(e.f.lblCnt, u"0 reminders");
    EXPECT_TRUE(e.m.shown.empty());
}

// --- the rows --------------------------------------------------------------

TEST(RemListRows, EmptyRangeCountsZeroReminders) {
    RemListEnv e;
    e.load();
    e.range(QDate(2026, 7, 1), QDate(2026, 7, 31));
    e.refresh();
    EXPECT_EQ(e.f.vsRmdr.Rows(), 1);
    EXPECT_EQ(e.f.lblCnt, u"0 reminders");
}

TEST(RemListRows, OneRowCountsOneReminderWithItsBlank) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    e.load();
    EXPECT_EQ(e.f.lblCnt, u"1 reminder ");
}

TEST(RemListRows, TwoRowsCountReminders) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    e.with_alarm(mar12, QStringLiteral("A2"), QStringLiteral("11:00"));
    e.load();
    EXPECT_EQ(e.f.lblCnt, u"2 reminders");
}

TEST(RemListRows, EachRowCarriesItsThirteenColumns) {
    RemListEnv e;
    const appt_rec a =
        e.entry(mar10, QStringLiteral("A1"), QStringLiteral("14:00"), QStringLiteral("Dentist"));
    e.alarm(a, QDate(2026, 3, 9), QStringLiteral("13:30"));
    e.load();
    const Grid& g = e.f.vsRmdr;
    ASSERT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.TextMatrix(1, 0), QStringLiteral("Tuesday  ") + RemListEnv::shown(mar10));
    EXPECT_EQ(g.TextMatrix(1, 1), u"02:00 pm - 02:45 pm");
    EXPECT_EQ(g.TextMatrix(1, 2), u" ");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 1, 2).toString(), u"Car");
    EXPECT_EQ(g.Cell(CellSetting::PictureAlignment, 1, 2).toInt(), int(Align::CenterCenter));
    EXPECT_EQ(g.TextMatrix(1, 3), u"Dentist");
    EXPECT_EQ(g.TextMatrix(1, 4),
              RemListEnv::shown(QDate(2026, 3, 9)) + QStringLiteral(" 01:30 pm"));
    EXPECT_EQ(g.TextMatrix(1, 5), u"Active");
    EXPECT_EQ(g.TextMatrix(1, 6), u"260310");
    EXPECT_EQ(g.TextMatrix(1, 7), u"A1          ");
    EXPECT_EQ(g.TextMatrix(1, 8), u"2026-03-10");
    EXPECT_EQ(g.TextMatrix(1, 9), u"14:00");
    EXPECT_EQ(g.TextMatrix(1, 10), u"14:45");
    EXPECT_EQ(g.TextMatrix(1, 11), u"03102026");
    EXPECT_EQ(g.TextMatrix(1, 12), u"03102026");
    for (int r = 0; r < g.Rows(); ++r)
        EXPECT_EQ(g.RowHeight(r), 350) << r;
}

TEST(RemListRows, ADeliveredReminderShowsExpired) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Done"),
                 QStringLiteral("T"));
    e.load();
    EXPECT_EQ(e.column(5), QStringList{QStringLiteral("Expired")});
}

TEST(RemListRows, AReminderWithoutAStickerHasNoPicture) {
    RemListEnv e;
    appt_rec a = e.entry(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    a.appt_type = QString();
    e.alarm(a, mar10);
    e.load();
    ASSERT_EQ(e.f.vsRmdr.Rows(), 2);
    EXPECT_TRUE(e.f.vsRmdr.Cell(CellSetting::Picture, 1, 2).toString().isEmpty());
    EXPECT_EQ(e.f.vsRmdr.TextMatrix(1, 2), u" ");
}

TEST(RemListRows, JanuaryAlarmForAFebruaryEntryIsFoundWithAJanuaryRangeAndSortsAsFebruary) {
    RemListEnv e;
    const appt_rec a = e.entry(QDate(2026, 2, 2), QStringLiteral("F1"), QStringLiteral("09:00"),
                               QStringLiteral("Trip"));
    e.alarm(a, QDate(2026, 1, 30));
    e.load();
    e.range(QDate(2026, 1, 1), QDate(2026, 1, 31));
    e.refresh();
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("Trip")});
    EXPECT_EQ(e.column(6), QStringList{QStringLiteral("260202")});
    EXPECT_EQ(e.column(6).first().left(4), u"2602");
}

TEST(RemListRows, RangeAppliesToTheReminderDayNotTheEntryDay) {
    RemListEnv e;
    const appt_rec a = e.entry(QDate(2026, 2, 2), QStringLiteral("F1"), QStringLiteral("09:00"),
                               QStringLiteral("Trip"));
    e.alarm(a, QDate(2026, 1, 30));
    e.load();
    e.range(QDate(2026, 2, 1), QDate(2026, 2, 28));
    e.refresh();
    EXPECT_EQ(e.f.vsRmdr.Rows(), 1);
    EXPECT_EQ(e.f.lblCnt, u"0 reminders");
}

TEST(RemListRows, AWholeYearReadsTwelveMembersAndPassesMissingOnesSilently) {
    RemListEnv e;
    e.with_alarm(QDate(2026, 1, 5), QStringLiteral("J1"), QStringLiteral("09:00"),
                 QStringLiteral("January"));
    e.with_alarm(QDate(2026, 6, 5), QStringLiteral("J6"), QStringLiteral("09:00"),
                 QStringLiteral("June"));
    e.with_alarm(QDate(2026, 12, 31), QStringLiteral("JC"), QStringLiteral("09:00"),
                 QStringLiteral("December"));
    e.load();
    e.range(QDate(2026, 1, 1), QDate(2026, 12, 31));
    e.refresh();
    EXPECT_EQ(e.f.months_read, 12);
    EXPECT_EQ(e.column(3), (QStringList{QStringLiteral("January"), QStringLiteral("June"),
                                        QStringLiteral("December")}));
    EXPECT_EQ(e.f.lblCnt, u"3 reminders");
    EXPECT_TRUE(e.m.shown.empty());
}

TEST(RemListRows, AReminderOlderThanTheFourLoadedMonthsIsListedActive) {
    RemListEnv e;
    e.with_alarm(QDate(2025, 10, 6), QStringLiteral("OLD"), QStringLiteral("09:00"),
                 QStringLiteral("Forgotten"));
    ASSERT_EQ(load_rmdrs(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    ASSERT_EQ(e.s.rmdr_count, 0) << "October lies before the four months loaded for March";
    e.load();
    e.range(QDate(2025, 10, 1), QDate(2025, 10, 31));
    e.refresh();
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("Forgotten")});
    EXPECT_EQ(e.column(5), QStringList{QStringLiteral("Active")});
}

TEST(RemListRows, FromEqualToToIsAcceptedAndListsThatOneDay) {
    RemListEnv e;
    e.with_alarm(QDate(2026, 3, 9), QStringLiteral("A0"), QStringLiteral("09:00"),
                 QStringLiteral("Before"));
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("That day"));
    e.with_alarm(QDate(2026, 3, 11), QStringLiteral("A2"), QStringLiteral("09:00"),
                 QStringLiteral("After"));
    e.load();
    e.range(mar10, mar10);
    e.refresh();
    EXPECT_TRUE(e.m.shown.empty());
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("That day")});
}

struct OptionCase {
    const char* name;
    int option;
    QStringList shown;
};

class RemListOption : public ::testing::TestWithParam<OptionCase> {};

TEST_P(RemListOption, ShowsTheRemindersOfItsStatus) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Waiting"));
    e.with_alarm(mar12, QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Delivered"),
                 QStringLiteral("T"));
    e.load();
    e.f.optDisplay = GetParam().option;
    e.refresh();
    EXPECT_EQ(e.column(3), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    ThreeOptions, RemListOption,
    ::testing::Values(
        OptionCase{"PendingShowsActiveOnly", 0, {QStringLiteral("Waiting")}},
        OptionCase{"ExpiredShowsExpiredOnly", 1, {QStringLiteral("Delivered")}},
        OptionCase{"AllShowsBoth", 2, {QStringLiteral("Waiting"), QStringLiteral("Delivered")}}),
    [](const ::testing::TestParamInfo<OptionCase>& i) { return std::string(i.param.name); });

TEST(RemListRows, RowsSortByTheEntryDayThenItsStartAcrossMonths) {
    RemListEnv e;
    // February's member holds alarms for March entries, March's for one in
    // February; keys run against the starts so that they cannot decide.
    const appt_rec late = e.entry(QDate(2026, 3, 2), QStringLiteral("A1"), QStringLiteral("14:00"),
                                  QStringLiteral("Mar 2 afternoon"));
    const appt_rec early = e.entry(QDate(2026, 3, 2), QStringLiteral("Z9"), QStringLiteral("08:00"),
                                   QStringLiteral("Mar 2 morning"));
    const appt_rec first = e.entry(QDate(2026, 3, 1), QStringLiteral("M1"), QStringLiteral("10:00"),
                                   QStringLiteral("Mar 1"));
    const appt_rec feb = e.entry(QDate(2026, 2, 20), QStringLiteral("B1"), QStringLiteral("09:00"),
                                 QStringLiteral("Feb 20"));
    e.alarm(late, QDate(2026, 2, 27));
    e.alarm(early, QDate(2026, 3, 1));
    e.alarm(first, QDate(2026, 2, 28));
    e.alarm(feb, QDate(2026, 2, 19));
    e.load();
    e.range(QDate(2026, 2, 1), QDate(2026, 3, 31));
    e.refresh();
    EXPECT_EQ(e.column(3),
              (QStringList{QStringLiteral("Feb 20"), QStringLiteral("Mar 1"),
                           QStringLiteral("Mar 2 morning"), QStringLiteral("Mar 2 afternoon")}));
}

// --- refresh and help ------------------------------------------------------

TEST(RemListRefresh, FromDateAfterToDateIsToldAndNothingElseChanges) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    e.load();
    e.range(QDate(2026, 4, 1), QDate(2026, 3, 1));
    e.f.optDisplay = 1;
    e.refresh();
    ASSERT_EQ(e.m.messages().size(), 1u);
    EXPECT_EQ(e.m.messages()[0], u"From date greater than To date");
    EXPECT_EQ(e.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("Dentist")});
    EXPECT_EQ(e.f.lblCnt, u"1 reminder ");
    EXPECT_FALSE(e.f.busy);
}

TEST(RemListRefresh, RebuildsTheListForTheNewRange) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("This week"));
    e.with_alarm(QDate(2026, 4, 7), QStringLiteral("A2"), QStringLiteral("09:00"),
                 QStringLiteral("April"));
    e.load();
    e.range(QDate(2026, 4, 1), QDate(2026, 4, 30));
    e.refresh();
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("April")});
    EXPECT_EQ(e.f.vsRmdr.Cols(), 13);
    EXPECT_FALSE(e.f.busy);
}

TEST(RemListRefresh, HelpOpensTheHelpViewerAtTheListsTopic) {
    RemListEnv e;
    QString handed;
    e.m.forms[QStringLiteral("frmHelpIdx")] = [&] { handed = e.s.help_topic; };
    Command2_Click(e.s.help());
    ASSERT_NE(e.m.last(u"form"), nullptr);
    EXPECT_EQ(e.m.last(u"form")->text, u"frmHelpIdx");
    EXPECT_EQ(handed, topic_of_form(QStringLiteral("frmRemList")));
    EXPECT_FALSE(handed.isEmpty());
    EXPECT_TRUE(e.s.help_topic.isEmpty());
}

// --- double click ----------------------------------------------------------

TEST(RemListDoubleClick, DayOrTimeGoesToTheDayInTheDayPlanner) {
    for (int col : {0, 1}) {
        RemListEnv e;
        e.with_alarm(QDate(2026, 5, 20), QStringLiteral("M1"), QStringLiteral("11:00"),
                     QStringLiteral("May thing"));
        e.load();
        e.range(QDate(2026, 5, 1), QDate(2026, 5, 31));
        e.refresh();
        e.s.view_day = false;
        e.s.view_month = true;
        vsRmdr_DblClick(e.s, e.f, 1, col);
        EXPECT_EQ(e.s.cur_date, QDate(2026, 5, 20)) << col;
        EXPECT_TRUE(e.s.view_day) << col;
        EXPECT_FALSE(e.s.view_month) << col;
        EXPECT_FALSE(e.s.ctl(QStringLiteral("vsOvervw")).visible) << col;
        ASSERT_EQ(e.s.appt_count, 1) << col;
        EXPECT_EQ(rtrim(e.s.appt_row(1)->appt_text), u"May thing");
        EXPECT_EQ(e.s.rmdr_count, 1) << "the reminders are loaded for the day too";
        EXPECT_EQ(e.m.last(u"form"), nullptr);
    }
}

TEST(RemListDoubleClick, PictureOrSubjectOpensTheEntryInTheEditor) {
    for (int col : {2, 3}) {
        RemListEnv e;
        e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"),
                     QStringLiteral("Dentist"));
        e.with_alarm(mar10, QStringLiteral("A2"), QStringLiteral("11:00"),
                     QStringLiteral("Barber"));
        ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
        e.load();
        QString opened;
        e.m.forms[QStringLiteral("frmAppt1")] = [&] {
            opened = rtrim(e.s.appt_row(e.s.edit_index)->appt_text);
            EXPECT_FALSE(e.s.new_appt);
            EXPECT_EQ(e.s.cur_date, mar10);
            EXPECT_FALSE(e.s.timer1_enabled);
        };
        e.s.timer1_enabled = true;
        vsRmdr_DblClick(e.s, e.f, e.row_of(QStringLiteral("Barber")), col);
        EXPECT_EQ(opened, u"Barber") << col;
        EXPECT_TRUE(e.s.timer1_enabled);
        EXPECT_TRUE(e.m.messages().empty());
    }
}

TEST(RemListDoubleClick, ReminderSetForStatusAndTheHeadingDoNothing) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"));
    e.load();
    for (int col : {4, 5})
        vsRmdr_DblClick(e.s, e.f, 1, col);
    for (int col = 0; col < 6; ++col)
        vsRmdr_DblClick(e.s, e.f, 0, col);
    EXPECT_TRUE(e.m.shown.empty());
    EXPECT_EQ(e.s.cur_date, QDate(2026, 3, 15));
    EXPECT_TRUE(e.s.view_day);
}

TEST(RemListDoubleClick, TheOccurrenceOfASeriesIsFoundByItsDayStartEndAndKey) {
    RemListEnv e;
    // One series: the same key and first day on three days.
    for (int day : {9, 10, 11}) {
        appt_rec a =
            make_appt(QDate(2026, 3, day).toString(QStringLiteral("MMddyyyy")),
                      QStringLiteral("S1"), QStringLiteral("07:00"), QStringLiteral("Swim"));
        a.appt_first_date = QStringLiteral("03092026");
        e.s.occur_count = 1;
        *e.s.occur_row(1) = a;
        ASSERT_EQ(write_occurs(e.s, e.s.cal_path), 0);
        e.alarm(a, QDate(2026, 3, day), QStringLiteral("06:30"));
    }
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    e.load();
    ASSERT_EQ(e.f.vsRmdr.Rows(), 4);
    QString opened;
    e.m.forms[QStringLiteral("frmAppt1")] = [&] {
        opened = e.s.appt_row(e.s.edit_index)->appt_date.str();
    };
    vsRmdr_DblClick(e.s, e.f, 2, 3);
    EXPECT_EQ(opened, u"03102026");
}

TEST(RemListDoubleClick, AnEntryInAnotherMonthIsLoadedForTheEditorAndTheDayComesBack) {
    RemListEnv e;
    e.with_alarm(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"),
                 QStringLiteral("March thing"));
    e.with_alarm(QDate(2026, 5, 20), QStringLiteral("A2"), QStringLiteral("11:00"),
                 QStringLiteral("May thing"));
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    e.load();
    e.range(QDate(2026, 1, 1), QDate(2026, 12, 31));
    e.refresh();
    QString opened;
    e.m.forms[QStringLiteral("frmAppt1")] = [&] {
        opened = rtrim(e.s.appt_row(e.s.edit_index)->appt_text);
        EXPECT_EQ(e.s.cur_date, QDate(2026, 5, 20));
    };
    vsRmdr_DblClick(e.s, e.f, e.row_of(QStringLiteral("May thing")), 3);
    EXPECT_EQ(opened, u"May thing");
    EXPECT_EQ(e.s.cur_date, QDate(2026, 3, 15));
    ASSERT_EQ(e.s.appt_count, 1);
    EXPECT_EQ(rtrim(e.s.appt_row(1)->appt_text), u"March thing");
}

TEST(RemListDoubleClick, AnEntryNoLongerThereIsToldAndCurDateStaysOnTheRowDay) {
    RemListEnv e;
    e.with_alarm(QDate(2026, 5, 20), QStringLiteral("A2"), QStringLiteral("11:00"),
                 QStringLiteral("May thing"));
    e.entry(QDate(2026, 5, 20), QStringLiteral("A3"), QStringLiteral("15:00"),
            QStringLiteral("Other"));
    e.load();
    e.range(QDate(2026, 5, 1), QDate(2026, 5, 31));
    e.refresh();
    // The entry goes; its reminder stays behind.
    ASSERT_EQ(delete_by_key(e.s, e.s.cal_path, MemberKind::appointments, QStringLiteral("2605"),
                            QStringLiteral("A2")),
              0);
    vsRmdr_DblClick(e.s, e.f, 1, 3);
    ASSERT_EQ(e.m.messages().size(), 1u);
    EXPECT_EQ(e.m.messages()[0], u" appointment not found. ");
    EXPECT_EQ(e.m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_EQ(e.m.last(u"form"), nullptr);
    EXPECT_EQ(e.s.cur_date, QDate(2026, 5, 20));
    // The planner is drawn for that day, so its cells match the tables.
    EXPECT_EQ(e.s.day_appts, 1);
    EXPECT_EQ(e.w.long_date, long_date_label(QDate(2026, 5, 20)));
}

TEST(RemListDoubleClick, AnEditorThatRemadeTheRemindersRenewsTheList) {
    RemListEnv e;
    const appt_rec a = e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"),
                                    QStringLiteral("Dentist"));
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    e.load();
    e.s.mark_past = true; // left over from an earlier edit
    e.m.forms[QStringLiteral("frmAppt1")] = [&] {
        EXPECT_FALSE(e.s.mark_past);
        // What a save that changed the text leaves: the reminders made again.
        int kept = 0;
        ASSERT_EQ(delete_by_key(e.s, e.s.cal_path, MemberKind::reminders, QStringLiteral("2603"),
                                QStringLiteral("A1"), &kept),
                  0);
        appt_rec renamed = a;
        renamed.appt_text = QStringLiteral("Orthodontist");
        e.alarm(renamed, mar10);
        e.s.appt_changed = e.s.mark_past = true;
    };
    vsRmdr_DblClick(e.s, e.f, 1, 3);
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("Orthodontist")});
    EXPECT_EQ(e.f.lblCnt, u"1 reminder ");
    // In the same month cur_date stays on the entry's day, and the planner,
    // band included, is drawn for it.
    EXPECT_EQ(e.s.cur_date, mar10);
    EXPECT_EQ(e.s.ctl(QStringLiteral("Label1")).text, long_date_label(mar10));
    EXPECT_EQ(e.w.long_date, long_date_label(mar10));
}

TEST(RemListDoubleClick, ACancelledEditorLeavesTheListAsItWas) {
    RemListEnv e;
    e.with_alarm(mar10, QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist"));
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    e.load();
    e.s.mark_past = true;
    // The file changes behind the list, but the editor says it remade nothing.
    e.m.forms[QStringLiteral("frmAppt1")] = [&] {
        e.with_alarm(mar12, QStringLiteral("A9"), QStringLiteral("09:00"),
                     QStringLiteral("Elsewhere"));
    };
    vsRmdr_DblClick(e.s, e.f, 1, 3);
    EXPECT_EQ(e.column(3), QStringList{QStringLiteral("Dentist")});
}

// --- ways in ---------------------------------------------------------------

TEST(RemListWaysIn, ReminderPictureWithNoCalendarTellsSelectAndOpenFirst) {
    RemListEnv e;
    e.s.cal_path.clear();
    imgRem_Click(e.s);
    ASSERT_EQ(e.m.messages().size(), 1u);
    EXPECT_EQ(e.m.messages()[0], u" Select and Open a Calendar first");
    EXPECT_EQ(e.m.last(u"form"), nullptr);
}

TEST(RemListWaysIn, ReminderPictureWithACalendarOpensTheList) {
    RemListEnv e;
    imgRem_Click(e.s);
    ASSERT_NE(e.m.last(u"form"), nullptr);
    EXPECT_EQ(e.m.last(u"form")->text, u"frmRemList");
    EXPECT_TRUE(e.m.messages().empty());
}

TEST(RemListWaysIn, TrayEntryOpensTheListEvenWithNoCalendar) {
    RemListEnv e;
    e.s.cal_path.clear();
    sysRem_Click();
    ASSERT_NE(e.m.last(u"form"), nullptr);
    EXPECT_EQ(e.m.last(u"form")->text, u"frmRemList");
    EXPECT_TRUE(e.m.messages().empty());
}

// --- resizing --------------------------------------------------------------

TEST(RemListResize, ANarrowWindowIsWidenedAndTheGridFollowsItsHeight) {
    RemListEnv e;
    e.load();
    e.f.width = 6000;
    e.f.height = 8000;
    e.f.grid_top = 1500;
    Form_Resize(e.f);
    EXPECT_EQ(e.f.width, 10170);
    EXPECT_EQ(e.f.vsRmdr.Height(), 8000 - 1500 - 1060);
    EXPECT_EQ(e.f.vsRmdr.ColWidth(2), 900);
}

} // namespace
