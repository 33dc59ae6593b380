#include "search_fixtures.h"

#include <gtest/gtest.h>

using namespace orva;
using namespace orva::testing;

namespace {

const QDate mar1(2026, 3, 1), mar31(2026, 3, 31);

TEST(StringMatcher, CountsEveryOccurrenceAndHonoursCase) {
    StringMatcher m;
    m.set_text(QStringLiteral("Lunch, then lunch again"));
    m.set_pattern(QStringLiteral("lunch"));
    EXPECT_EQ(m.matches(), 2);
    m.set_case_sensitive(true);
    EXPECT_EQ(m.matches(), 1);
    m.set_pattern(QStringLiteral("dinner"));
    EXPECT_EQ(m.matches(), 0);
}

TEST(StringMatcher, SpecialCharactersArePlainText) {
    StringMatcher m;
    m.set_text(QStringLiteral("Pay bill (gas) [50%]"));
    m.set_pattern(QStringLiteral("(gas) [50%"));
    EXPECT_EQ(m.matches(), 1);
    m.set_pattern(QStringLiteral("g.s"));
    EXPECT_EQ(m.matches(), 0);
}

TEST(SearchForm, LoadHidesTheListAndSetsTodayAndTheFirstSticker) {
    SearchEnv e;
    for (const char* n : {"srchGrid", "stopCmd", "lblResults", "imgPrint"})
        EXPECT_FALSE(e.f.ctl(QString::fromLatin1(n)).visible) << n;
    EXPECT_EQ(e.f.srch_type, u"1");
    EXPECT_EQ(e.f.srchDTPicker1, QDate(2026, 3, 15));
    EXPECT_EQ(e.f.srchDTPicker2, QDate(2026, 3, 15));
    EXPECT_EQ(e.f.height, 4280);
    ASSERT_FALSE(e.f.typeIcombo.items.empty());
    EXPECT_EQ(e.f.typeIcombo.list_index, 0);
    // The search's list has the one special row only.
    EXPECT_EQ(e.f.typeIcombo.items.size(), sticker_table().size() + 1);
}

TEST(SearchForm, SearchGrowsTheFormAndShowsTheList) {
    SearchEnv e;
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("x"));
    EXPECT_EQ(e.f.height, 7680);
    for (const char* n : {"srchGrid", "lblResults", "imgPrint"})
        EXPECT_TRUE(e.f.ctl(QString::fromLatin1(n)).visible) << n;
    EXPECT_FALSE(e.f.ctl(QStringLiteral("stopCmd")).enabled);
    EXPECT_FALSE(e.f.busy);
    EXPECT_FALSE(e.f.srch_stop);
}

TEST(SearchForm, ATallerFormKeepsItsHeight) {
    SearchEnv e;
    e.f.height = 9000;
    e.find_text(QStringLiteral("x"));
    EXPECT_EQ(e.f.height, 9000);
}

TEST(Search, OneHitInAOneMonthRangeTakesTheSingularLine) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Dentist"));
    EXPECT_EQ(e.f.srch_hits, 1);
    EXPECT_EQ(e.f.lblHits, QStringLiteral("1  Appointment found for date range ") + SearchEnv::shown(mar1) +
                               QStringLiteral(" - ") + SearchEnv::shown(mar31));
}

TEST(Search, ZeroHitsTakeThePluralLine) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Barber"));
    EXPECT_EQ(e.f.srch_hits, 0);
    EXPECT_EQ(e.f.srchGrid.Rows(), 1);
    EXPECT_EQ(e.f.lblHits, QStringLiteral("0  Appointments found for date range ") +
                               SearchEnv::shown(mar1) + QStringLiteral(" - ") + SearchEnv::shown(mar31));
    EXPECT_TRUE(e.m.shown.empty()) << "no message beyond the line";
}

TEST(Search, TwoHitsTakeThePluralLine) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.put(e.on(QDate(2026, 3, 11), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Dentist"));
    EXPECT_TRUE(e.f.lblHits.startsWith(QStringLiteral("2  Appointments found for date range ")));
}

TEST(Search, CaseIsIgnoredByDefaultSoLowerCaseFindsCapitals) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("DENTIST visit")));
    e.range(mar1, mar31);
    e.f.Check1 = false;
    e.find_text(QStringLiteral("dentist"));
    EXPECT_EQ(e.column(0), QStringList{QStringLiteral("DENTIST visit")});
}

TEST(Search, CaseSensitiveTickedLowerCaseDoesNotFindCapitals) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("DENTIST visit")));
    e.range(mar1, mar31);
    e.f.Check1 = true;
    e.find_text(QStringLiteral("dentist"));
    EXPECT_EQ(e.f.srch_hits, 0);
    e.find_text(QStringLiteral("DENTIST"));
    EXPECT_EQ(e.f.srch_hits, 1);
}

TEST(Search, SeriesYieldsOneRowPerOccurrenceInRangeWithTheSameKey) {
    SearchEnv e;
    for (int day : {27, 28})
        e.put(e.on(QDate(2026, 2, day), QStringLiteral("S1"), QStringLiteral("07:00"), QStringLiteral("Swim")));
    for (int day : {1, 2, 3})
        e.put(e.on(QDate(2026, 3, day), QStringLiteral("S1"), QStringLiteral("07:00"), QStringLiteral("Swim")));
    e.range(QDate(2026, 2, 28), QDate(2026, 3, 2));
    e.find_text(QStringLiteral("swim"));
    EXPECT_EQ(e.column(6), (QStringList{QStringLiteral("02282026"), QStringLiteral("03012026"),
                                        QStringLiteral("03022026")}));
    EXPECT_EQ(e.column(9), QStringList(3, QStringLiteral("S1          ")));
}

TEST(Search, ReversedRangeReadsOneMonthThatOfTheFirstDateAndFindsNothing) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.put(e.on(QDate(2026, 1, 10), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(QDate(2026, 3, 31), QDate(2026, 1, 1));
    e.find_text(QStringLiteral("Dentist"));
    EXPECT_EQ(e.f.months_read, 1);
    EXPECT_EQ(e.f.srch_hits, 0);
    EXPECT_TRUE(e.f.lblHits.startsWith(QStringLiteral("0  Appointments found")));
}

TEST(Search, OneBlankSearchesWithAnEmptyPatternAndListsTheWholeRange) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.put(e.on(QDate(2026, 3, 12), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Barber")));
    e.put(e.on(QDate(2026, 4, 2), QStringLiteral("A3"), QStringLiteral("09:00"), QStringLiteral("Outside")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral(" "));
    EXPECT_EQ(e.column(0), (QStringList{QStringLiteral("Dentist"), QStringLiteral("Barber")}));
}

TEST(Search, LeadingBlanksOfThePatternAreCut) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("   Dent"));
    EXPECT_EQ(e.f.srch_hits, 1);
}

TEST(Search, StopKeepsTheHitsSoFarSortedAndSearchAfterItStartsClean) {
    SearchEnv e;
    for (int day = 1; day <= 20; ++day)
        e.put(e.on(QDate(2026, 3, 21 - day), QStringLiteral("A%1").arg(day), QStringLiteral("09:00"),
                   QStringLiteral("Walk")));
    e.range(mar1, mar31);
    int lines = 0;
    install_yield_hook([&] {
        if (++lines == 5) stopCmd_Click(e.f);
    });
    e.find_text(QStringLiteral("walk"));
    EXPECT_EQ(e.f.srch_hits, 5);
    const QStringList stopped = e.column(6);
    QStringList sorted = stopped;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(stopped, sorted);
    EXPECT_FALSE(e.f.srch_stop);

    install_yield_hook({});
    e.find_text(QStringLiteral("walk"));
    EXPECT_EQ(e.f.srch_hits, 20);
    EXPECT_EQ(e.f.srchGrid.Rows(), 21);
    EXPECT_FALSE(e.f.srch_stop);
}

TEST(Search, ASecondSearchDuringARunTakesOverTheList) {
    SearchEnv e;
    for (int day = 1; day <= 10; ++day)
        e.put(e.on(QDate(2026, 3, day), QStringLiteral("A%1").arg(day), QStringLiteral("09:00"),
                   QStringLiteral("Walk")));
    e.range(mar1, mar31);
    int lines = 0;
    install_yield_hook([&] {
        if (++lines == 3) e.find_text(QStringLiteral("walk"));
    });
    e.find_text(QStringLiteral("walk"));
    EXPECT_EQ(e.f.srch_hits, 10);
    EXPECT_EQ(e.f.srchGrid.Rows(), 11);
    EXPECT_TRUE(e.f.lblHits.startsWith(QStringLiteral("10  Appointments")));
}

TEST(Search, RowsAreSortedByDateThenStartThenEnd) {
    SearchEnv e;
    auto late = e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("14:00"), QStringLiteral("Tea"));
    auto early_long = e.on(QDate(2026, 3, 10), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Tea"));
    early_long.appt_end = QStringLiteral("11:00");
    auto early_short = e.on(QDate(2026, 3, 10), QStringLiteral("A3"), QStringLiteral("09:00"), QStringLiteral("Tea"));
    early_short.appt_end = QStringLiteral("09:30");
    auto untimed = e.on(QDate(2026, 3, 10), QStringLiteral("A4"), QStringLiteral("     "), QStringLiteral("Tea"));
    auto before = e.on(QDate(2026, 3, 2), QStringLiteral("A5"), QStringLiteral("18:00"), QStringLiteral("Tea"));
    for (const auto& r : {late, early_long, early_short, untimed, before})
        e.put(r);
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("tea"));
    EXPECT_EQ(e.column(9), (QStringList{QStringLiteral("A5          "), QStringLiteral("A4          "),
                                        QStringLiteral("A3          "), QStringLiteral("A2          "),
                                        QStringLiteral("A1          ")}));
}

TEST(Search, NotesAreSearchedWithTheSecondOption) {
    SearchEnv e;
    auto r = e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist"));
    r.appt_notes = QStringLiteral("Bring the insurance card");
    e.put(r);
    e.put(e.on(QDate(2026, 3, 11), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("insurance call")));
    e.range(mar1, mar31);
    e.f.srch_kind = 1;
    e.f.apptText = QStringLiteral("insurance");
    Command1_Click(e.s, e.f);
    EXPECT_EQ(e.column(9), QStringList{QStringLiteral("A1          ")});
    EXPECT_EQ(e.column(4), QStringList{QStringLiteral("Bring the insurance card")});
}

TEST(Search, StickerSearchFindsTheChosenKey) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Drive"), QStringLiteral("Car")));
    e.put(e.on(QDate(2026, 3, 11), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Meet"), QStringLiteral("Meeting")));
    e.range(mar1, mar31);
    e.f.srch_kind = 2;
    e.f.typeIcombo.select_type(QStringLiteral("Car"));
    Command1_Click(e.s, e.f);
    EXPECT_EQ(e.f.srch_type, u"Car");
    EXPECT_EQ(e.column(0), QStringList{QStringLiteral("Drive")});
    EXPECT_EQ(e.f.srchGrid.Cell(CellSetting::Picture, 1, 0).toString(), u"Car");
    EXPECT_EQ(e.f.srchGrid.Cell(CellSetting::PictureAlignment, 1, 0).toInt(), int(Align::LeftCenter));
}

TEST(Search, StickerSearchOnTheFirstRowFindsBlankStickersButNotZero) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Blank"), QStringLiteral("")));
    e.put(e.on(QDate(2026, 3, 11), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Quick"), QStringLiteral("0")));
    e.put(e.on(QDate(2026, 3, 12), QStringLiteral("A3"), QStringLiteral("09:00"), QStringLiteral("Drive"), QStringLiteral("Car")));
    e.range(mar1, mar31);
    e.f.srch_kind = 2;
    e.f.typeIcombo.list_index = 0;
    Command1_Click(e.s, e.f);
    EXPECT_EQ(e.column(0), QStringList{QStringLiteral("Blank")});
    EXPECT_TRUE(e.f.srchGrid.Cell(CellSetting::Picture, 1, 0).toString().isEmpty());
}

TEST(Search, DateRangeAloneListsEveryLineBetweenTheDaysInclusive) {
    SearchEnv e;
    for (int day : {1, 2, 30, 31})
        e.put(e.on(QDate(2026, 3, day), QStringLiteral("D%1").arg(day), QStringLiteral("09:00"), QStringLiteral("Any")));
    e.range(QDate(2026, 3, 2), QDate(2026, 3, 30));
    e.f.srch_kind = 3;
    Command1_Click(e.s, e.f);
    EXPECT_EQ(e.column(6), (QStringList{QStringLiteral("03022026"), QStringLiteral("03302026")}));
}

TEST(Search, ARangeOfMonthsReadsEachMemberOnceAndSkipsMissingMonthsInSilence) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 1, 5), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Any")));
    e.put(e.on(QDate(2026, 6, 5), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Any")));
    e.range(QDate(2026, 1, 1), QDate(2026, 12, 31));
    e.f.srch_kind = 3;
    Command1_Click(e.s, e.f);
    EXPECT_EQ(e.f.months_read, 2);
    EXPECT_EQ(e.f.srch_hits, 2);
    EXPECT_TRUE(e.m.shown.empty());
}

TEST(Search, ARangeAcrossTheNewYearFindsBothYears) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 12, 30), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Party")));
    e.put(e.on(QDate(2027, 1, 2), QStringLiteral("A2"), QStringLiteral("09:00"), QStringLiteral("Party")));
    e.range(QDate(2026, 12, 1), QDate(2027, 1, 31));
    e.find_text(QStringLiteral("party"));
    EXPECT_EQ(e.column(6), (QStringList{QStringLiteral("12302026"), QStringLiteral("01022027")}));
}

TEST(Search, EachRowCarriesTheWholeRecordInItsHiddenColumns) {
    SearchEnv e;
    auto r = e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist"));
    r.appt_end = QStringLiteral("10:30");
    r.appt_notes = QStringLiteral("Bring card");
    r.appt_rem_lead = QStringLiteral("15");
    e.put(r);
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Dentist"));
    const Grid& g = e.f.srchGrid;
    ASSERT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.Cols(), 24);
    EXPECT_EQ(g.TextMatrix(0, 0), u"Description");
    EXPECT_EQ(g.TextMatrix(0, 1), u"Date");
    EXPECT_EQ(g.TextMatrix(1, 1), SearchEnv::shown(QDate(2026, 3, 10)));
    EXPECT_EQ(g.TextMatrix(1, 2), u"9:00 am");
    EXPECT_EQ(g.TextMatrix(1, 3), u"10:30 am");
    EXPECT_EQ(g.TextMatrix(1, 4), u"Bring card");
    EXPECT_EQ(g.TextMatrix(1, 6), u"03102026");
    EXPECT_EQ(g.TextMatrix(1, 7), u"09:00");
    EXPECT_EQ(g.TextMatrix(1, 8), u"10:30");
    EXPECT_EQ(g.TextMatrix(1, 10), r.appt_text.str());
    EXPECT_EQ(g.TextMatrix(1, 16), u"15");
    EXPECT_EQ(g.TextMatrix(1, 20), r.appt_notes.str());
    EXPECT_EQ(g.TextMatrix(1, 21), u"260310");
    for (int c = 0; c < 5; ++c)
        EXPECT_FALSE(g.ColHidden(c)) << c;
    for (int c = 5; c < 24; ++c)
        EXPECT_TRUE(g.ColHidden(c)) << c;
}

TEST(Search, ShownColumnsTakeThirtyTwentyTenTenThirtyPercent) {
    SearchEnv e;
    e.f.width = 10270 + e.f.grid_left;
    e.find_text(QStringLiteral("x"));
    const Grid& g = e.f.srchGrid;
    EXPECT_EQ(g.Width(), 10000);
    EXPECT_EQ(g.ColWidth(0), 3000);
    EXPECT_EQ(g.ColWidth(1), 2000);
    EXPECT_EQ(g.ColWidth(2), 1000);
    EXPECT_EQ(g.ColWidth(3), 1000);
    EXPECT_EQ(g.ColWidth(4), 3000);
}

TEST(Search, ClearEmptiesTheListAndPutsTheFormBack) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.f.typeIcombo.select_type(QStringLiteral("Car"));
    e.find_text(QStringLiteral("Dentist"));
    ClearCmd_Click(e.f);
    EXPECT_EQ(e.f.srchGrid.Rows(), 1);
    EXPECT_EQ(e.f.apptText, u" ");
    EXPECT_EQ(e.f.typeIcombo.list_index, 0);
    EXPECT_TRUE(e.f.lblHits.isEmpty());
    EXPECT_EQ(e.f.srch_type, u"1");
    EXPECT_FALSE(e.f.ctl(QStringLiteral("stopCmd")).enabled);
}

TEST(SearchHits, ClickInColumnZeroOpensTheEntryInTheEditor) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A2"), QStringLiteral("11:00"), QStringLiteral("Barber")));
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Barber"));
    QString opened;
    e.m.forms[QStringLiteral("frmAppt1")] = [&] {
        opened = rtrim(e.s.appt_row(e.s.edit_index)->appt_text);
        EXPECT_FALSE(e.s.new_appt);
        EXPECT_FALSE(e.s.appt_from_planner);
        EXPECT_EQ(e.s.cur_date, QDate(2026, 3, 10));
        EXPECT_FALSE(e.s.timer1_enabled);
    };
    e.s.timer1_enabled = true;
    srchGrid_Click(e.s, e.f, 1, 0);
    EXPECT_EQ(opened, u"Barber");
    EXPECT_TRUE(e.s.timer1_enabled);
    EXPECT_FALSE(e.f.unload);
}

TEST(SearchHits, EntryInAnotherMonthIsLoadedForTheEditorAndThePlannerComesBack) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("March thing")));
    e.put(e.on(QDate(2026, 5, 20), QStringLiteral("A2"), QStringLiteral("11:00"), QStringLiteral("May thing")));
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    e.range(QDate(2026, 1, 1), QDate(2026, 12, 31));
    e.find_text(QStringLiteral("May"));
    QString opened;
    e.m.forms[QStringLiteral("frmAppt1")] = [&] {
        opened = rtrim(e.s.appt_row(e.s.edit_index)->appt_text);
    };
    srchGrid_Click(e.s, e.f, 1, 0);
    EXPECT_EQ(opened, u"May thing");
    EXPECT_EQ(e.s.cur_date, QDate(2026, 3, 15));
    ASSERT_EQ(e.s.appt_count, 1);
    EXPECT_EQ(rtrim(e.s.appt_row(1)->appt_text), u"March thing");
}

TEST(SearchHits, AnEntryGoneSinceTheSearchIsToldAndNoEditorOpens) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Dentist"));
    int kept = 0;
    ASSERT_EQ(delete_by_key(e.s, e.s.cal_path, MemberKind::appointments, QStringLiteral("2603"),
                            QStringLiteral("A1"), &kept),
              0);
    ASSERT_EQ(load_appts(e.s, e.s.cur_date, e.s.cal_path, 0), 0);
    srchGrid_Click(e.s, e.f, 1, 0);
    ASSERT_EQ(e.m.messages().size(), 1u);
    EXPECT_EQ(e.m.messages()[0], hit_gone_msg);
    EXPECT_EQ(e.m.last(u"form"), nullptr);
    EXPECT_EQ(e.s.cur_date, QDate(2026, 3, 15));
}

TEST(SearchHits, ClickInColumnOneShowsTheDayAndClosesTheForm) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 5, 20), QStringLiteral("A2"), QStringLiteral("11:00"), QStringLiteral("May thing")));
    e.range(QDate(2026, 1, 1), QDate(2026, 12, 31));
    e.find_text(QStringLiteral("May"));
    e.s.view_day = false;
    e.s.view_month = true;
    srchGrid_Click(e.s, e.f, 1, 1);
    EXPECT_TRUE(e.f.unload);
    EXPECT_EQ(e.s.cur_date, QDate(2026, 5, 20));
    EXPECT_TRUE(e.s.view_day);
    EXPECT_FALSE(e.s.view_month);
    EXPECT_FALSE(e.s.ctl(QStringLiteral("vsOvervw")).visible);
    ASSERT_EQ(e.s.appt_count, 1);
    EXPECT_EQ(rtrim(e.s.appt_row(1)->appt_text), u"May thing");
    EXPECT_EQ(e.m.last(u"form"), nullptr);
}

TEST(SearchHits, OtherColumnsAndTheHeadingDoNothing) {
    SearchEnv e;
    e.put(e.on(QDate(2026, 3, 10), QStringLiteral("A1"), QStringLiteral("09:00"), QStringLiteral("Dentist")));
    e.range(mar1, mar31);
    e.find_text(QStringLiteral("Dentist"));
    for (int col : {2, 3, 4})
        srchGrid_Click(e.s, e.f, 1, col);
    srchGrid_Click(e.s, e.f, 0, 0);
    srchGrid_Click(e.s, e.f, 0, 1);
    EXPECT_TRUE(e.m.shown.empty());
    EXPECT_FALSE(e.f.unload);
    EXPECT_EQ(e.s.cur_date, QDate(2026, 3, 15));
}

TEST(Search, PrintTitleIsTheHitLineAndTheLongDate) {
    SearchEnv e;
    e.f.lblHits = QStringLiteral("0  Appointments found for date range x - y");
    EXPECT_EQ(print_title(e.f), e.f.lblHits + QStringLiteral(" printed on ") +
                                    QLocale().toString(QDate(2026, 3, 15), QLocale::LongFormat));
}

} // namespace
