#include "print_fixtures.h"
#include "printing/planner_print.h"
#include "views/month_view.h"
#include "views/week_view.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::PrintTest;

QString long_date(const QDate& d) {
    return QLocale().toString(d, QLocale::LongFormat);
}

int shown_rows(const Grid& g) {
    int n = 0;
    for (int r = 0; r < g.Rows(); ++r)
        n += g.RowHidden(r) ? 0 : 1;
    return n;
}

// --- the day -----------------------------------------------------------------

TEST_F(PrintTest, CancellingTheDialogSwitchesTheTickOnAgainAndEmptiesThePrintGridWithoutPrinting) {
    bool ticking = true;
    int rows_behind = 0;
    m.during_print = [&] {
        ticking = s.timer1_enabled;
        rows_behind = s.vsPrtgrd.Rows();
    };
    prt_day(s, env.w);
    ASSERT_NE(m.last(u"print"), nullptr);
    EXPECT_FALSE(ticking);
    EXPECT_EQ(rows_behind, day_rows + 1); // the title row on top
    EXPECT_TRUE(s.print_cancel);
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(s.vsPrtgrd.Rows(), 0);
    EXPECT_EQ(s.vsPrtgrd.Cols(), 0);
    EXPECT_TRUE(printed.copies.empty());
    EXPECT_TRUE(m.messages().empty());
}

TEST_F(PrintTest, WithOneCellSelectedTheWholeDayPrints) {
    s.sel_row1 = s.sel_row2 = 20;
    s.sel_col1 = s.sel_col2 = 2;
    PrintSetup choice;
    choice.output_file = env.dir.filePath(QStringLiteral("day.pdf"));
    choice.selection = true; // offered or not, a lone cell is no range
    accept(choice);
    prt_day(s, env.w);
    ASSERT_EQ(m.print_presets.size(), 1u);
    EXPECT_FALSE(m.print_presets[0].selection_enabled);
    EXPECT_FALSE(s.print_selection);
    ASSERT_EQ(printed.copies.size(), 1u);
    EXPECT_EQ(shown_rows(printed.copies[0].grid), day_rows + 1);
    EXPECT_EQ(s.sel_row1, -1);
    EXPECT_EQ(s.sel_col2, -1);
}

TEST_F(PrintTest, ARangeSelectedPrintsAloneWhenTheUserChoosesTheSelection) {
    s.sel_row1 = 22;
    s.sel_row2 = 19;
    s.sel_col1 = s.sel_col2 = 2;
    PrintSetup choice;
    choice.output_file = env.dir.filePath(QStringLiteral("day.pdf"));
    choice.selection = true;
    accept(choice);
    prt_day(s, env.w);
    ASSERT_TRUE(m.print_presets.at(0).selection_enabled);
    ASSERT_EQ(printed.copies.size(), 1u);
    const Grid& g = printed.copies[0].grid;
    EXPECT_FALSE(g.RowHidden(0)); // the title
    for (int r = 1; r < g.Rows(); ++r)
        EXPECT_EQ(g.RowHidden(r), r - 1 < 19 || r - 1 > 22) << r;
    EXPECT_TRUE(g.TextMatrix(20, 2).endsWith("Dentist"));

    s.sel_row1 = 19;
    s.sel_row2 = 22;
    s.sel_col1 = s.sel_col2 = 2;
    choice.selection = false;
    accept(choice);
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 2u);
    EXPECT_EQ(shown_rows(printed.copies[1].grid), day_rows + 1);
}

TEST_F(PrintTest, ThreeCopiesAreThreePrintGridCallsOfOneCopyEach) {
    PrintSetup choice;
    choice.output_file = env.dir.filePath(QStringLiteral("day.pdf"));
    choice.copies = 3;
    accept(choice);
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 3u);
    for (const auto& c : printed.copies) {
        EXPECT_EQ(c.setup.copies, 1);
        EXPECT_FALSE(c.ticking);
    }
    EXPECT_EQ(m.print_presets.at(0).copies, 1);
    EXPECT_TRUE(s.timer1_enabled);
}

TEST_F(PrintTest, TheClocksColouredRowDoesNotAppearOnPaper) {
    bool marked = false;
    for (int c = 1; c < s.vsSched.Cols(); ++c)
        marked |= s.vsSched.Cell(CellSetting::BackColor, s.now_row, c).toUInt() == s.now_color;
    ASSERT_TRUE(marked);
    accept();
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    const Grid& g = printed.copies[0].grid;
    for (int r = 0; r < g.Rows(); ++r)
        for (int c = 0; c < g.Cols(); ++c)
            EXPECT_NE(g.Cell(CellSetting::BackColor, r, c).toUInt(), s.now_color) << r << "," << c;
    EXPECT_EQ(g.Cell(CellSetting::BackColor, s.now_row + 1, 4).toUInt(), s.vsSched.BackColor());
    // The screen keeps its mark.
    EXPECT_EQ(s.vsSched.Cell(CellSetting::BackColor, s.now_row, 4).toUInt(), s.now_color);
}

TEST_F(PrintTest, TheDayCarriesTheBandsCaptionOnTopAndPrintedOnAtTheFoot) {
    accept();
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    const auto& c = printed.copies[0];
    const Grid& g = c.grid;
    const QString caption = s.ctl(QStringLiteral("Label1")).text;
    ASSERT_FALSE(caption.trimmed().isEmpty());
    for (int col = 0; col < day_cols; ++col)
        EXPECT_EQ(g.TextMatrix(0, col), caption) << col;
    EXPECT_TRUE(g.MergeRow(0));
    EXPECT_EQ(g.merged_range(0, 0).col2, day_cols - 1);
    EXPECT_TRUE(g.Cell(CellSetting::FontBold, 0, 0).toBool());
    EXPECT_EQ(g.Cell(CellSetting::FontSize, 0, 0).toDouble(), 16.0);
    EXPECT_EQ(g.Cell(CellSetting::BackColor, 0, 0).toUInt(), s.label1_back_color);
    EXPECT_EQ(g.Cell(CellSetting::ForeColor, 0, 0).toUInt(), rgb(192, 255, 192));
    EXPECT_EQ(g.TextMatrix(1, 2).trimmed(), "Mum's birthday");
    EXPECT_TRUE(g.TextMatrix(20, 2).endsWith("Dentist"));
    EXPECT_EQ(g.FixedRows(), 0);
    EXPECT_EQ(g.FixedCols(), 0);
    EXPECT_EQ(c.name, "Orva Calendar:  printed on " + long_date(QDate(2026, 3, 15)));
    EXPECT_EQ(c.margin_lr, 720);
    EXPECT_EQ(c.margin_tb, 720);
    EXPECT_EQ(m.print_presets.at(0).orientation, 1);
}

TEST_F(PrintTest, TheDaysColumnsShareThePortraitWidthAndTheThinOnesStayThin) {
    accept();
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    const Grid& g = printed.copies[0].grid;
    EXPECT_EQ(printed.copies[0].width, 10080);
    EXPECT_EQ(g.ColWidth(0), 1080);
    EXPECT_EQ(g.RowHeight(g.Rows() - 1), 245);
    int thin = 0, total = g.ColWidth(0), normal_width = -1;
    for (int c = 1; c < g.Cols(); ++c) {
        if (g.ColHidden(c)) continue;
        total += g.ColWidth(c);
        if (g.ColWidth(c) == s.blankColWidth) {
            ++thin;
            continue;
        }
        if (normal_width < 0) normal_width = g.ColWidth(c);
        EXPECT_EQ(g.ColWidth(c), normal_width) << c;
    }
    EXPECT_GE(thin, 1);
    EXPECT_LE(10080 - total, 4); // what the even shares leave over
    EXPECT_LE(total, 10080);
}

TEST_F(PrintTest, ALandscapeDayWidensItsColumnsForTheLongerPage) {
    PrintSetup choice;
    choice.output_file = env.dir.filePath(QStringLiteral("day.pdf"));
    choice.orientation = 2;
    accept(choice);
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    const Grid& g = printed.copies[0].grid;
    EXPECT_EQ(printed.copies[0].width, 13680);
    int normal = 0;
    for (int c = 2; c < g.Cols(); c += 2)
        normal += g.ColHidden(c) ? 0 : 1;
    ASSERT_GT(normal, 0);
    for (int c = 2; c < g.Cols(); c += 2) {
        if (g.ColHidden(c)) continue;
        EXPECT_EQ(g.ColWidth(c), (15840 - 1080) / normal) << c;
    }
    EXPECT_EQ(printed.copies[0].setup.orientation, 2);
}

TEST_F(PrintTest, TheGridFileIsGoneDuringTheDialogAndAfterSuccessCancelAndFailure) {
    bool present_behind_dialog = true;
    m.during_print = [&] { present_behind_dialog = copy_file_left(); };
    prt_day(s, env.w); // cancelled
    EXPECT_FALSE(present_behind_dialog);
    EXPECT_FALSE(copy_file_left());

    accept();
    prt_day(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    EXPECT_FALSE(printed.copies[0].copy_file_present);
    EXPECT_FALSE(copy_file_left());

    printed.ok = false;
    accept();
    prt_day(s, env.w);
    EXPECT_FALSE(copy_file_left());
    EXPECT_TRUE(QDir(s.app_path).entryList({QStringLiteral("*.grd")}).isEmpty());
}

TEST_F(PrintTest, APrintThatFailsIsToldAndTheOtherCopiesAreNotTried) {
    printed.ok = false;
    PrintSetup choice;
    choice.output_file = env.dir.filePath(QStringLiteral("day.pdf"));
    choice.copies = 3;
    accept(choice);
    prt_day(s, env.w);
    EXPECT_EQ(printed.copies.size(), 1u);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], print_failed_msg);
    EXPECT_EQ(m.last(u"message")->style, MsgStyle::Critical);
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(s.vsPrtgrd.Rows(), 0);
}

TEST_F(PrintTest, ACopyTheDataFolderRefusesIsToldAndNoDialogShows) {
    s.app_path = env.dir.filePath(QStringLiteral("no/such/folder"));
    prt_day(s, env.w);
    EXPECT_EQ(m.last(u"print"), nullptr);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], print_copy_failed_msg);
    EXPECT_TRUE(printed.copies.empty());
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_FALSE(QDir(env.dir.path()).exists(print_copy_file));
}

TEST_F(PrintTest, WithoutAPrinterInstalledEveryJobIsToldAsFailed) {
    s.print_grid = nullptr;
    accept();
    prt_day(s, env.w);
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], print_failed_msg);
}

TEST_F(PrintTest, TheNextDialogStartsFromThePrinterTheLastOneSettled) {
    PrintSetup choice;
    choice.printer_name = QStringLiteral("Office");
    choice.page_width = 11906;
    choice.page_height = 16838;
    accept(choice);
    prt_day(s, env.w);
    prt_day(s, env.w); // cancelled
    ASSERT_EQ(m.print_presets.size(), 2u);
    EXPECT_EQ(m.print_presets[1].printer_name, "Office");
    EXPECT_EQ(m.print_presets[1].page_width, 11906);
    EXPECT_EQ(m.print_presets[1].copies, 1);
}

// --- the week ------------------------------------------------------------------

TEST_F(PrintTest, TheWeekIsPresetLandscapeWithItsTitleRowOverTheSevenDays) {
    s.vsOvervw.set_extent(11000, 7000);
    imageWeek_Click(s, env.w);
    accept();
    prt_week(s, env.w);
    ASSERT_EQ(m.print_presets.size(), 1u);
    EXPECT_EQ(m.print_presets[0].orientation, 2);
    EXPECT_FALSE(m.print_presets[0].selection_enabled);
    ASSERT_EQ(printed.copies.size(), 1u);
    const Grid& g = printed.copies[0].grid;
    EXPECT_EQ(g.Rows(), week_rows + 1);
    const QString caption = s.ctl(QStringLiteral("Label1")).text;
    for (int c = 0; c < week_cols; ++c)
        EXPECT_EQ(g.TextMatrix(0, c), caption);
    EXPECT_EQ(g.merged_range(0, 0).col2, week_cols - 1);
    // Landscape letter is lower than letter: the page less 1440 each way.
    EXPECT_EQ(printed.copies[0].width, 14400);
    EXPECT_EQ(printed.copies[0].height, 10800);
    EXPECT_EQ(g.RowHeight(0), 1080);
    EXPECT_EQ(g.RowHeight(1), (10800 - 1080) / week_rows);
    EXPECT_EQ(g.ColWidth(2), 14400 / 3);
    QStringList headers;
    for (int d = 0; d < 7; ++d)
        headers << week_header_text(s.week_start.addDays(d));
    for (const QString& h : headers) {
        bool found = false;
        for (int r = 0; r < g.Rows() && !found; ++r)
            for (int c = 0; c < g.Cols(); ++c)
                found |= g.TextMatrix(r, c) == h;
        EXPECT_TRUE(found) << h.toStdString();
    }
}

TEST_F(PrintTest, TheWeekOnPortraitLetterIs10800By14400) {
    Grid g(week_rows + 1, week_cols);
    pSet_wk(g, QSize(12240, 15840));
    EXPECT_EQ(g.Width(), 10800);
    EXPECT_EQ(g.Height(), 14400);
    EXPECT_EQ(g.RowHeight(0), 1440);
    EXPECT_EQ(g.RowHeight(week_rows), (14400 - 1440) / week_rows);
    EXPECT_EQ(g.ColWidth(0), 3600);
}

// --- the month -----------------------------------------------------------------

class MonthPrint : public PrintTest {
  protected:
    void SetUp() override {
        PrintTest::SetUp();
        s.vsOvervw.set_extent(15000, 9000);
    }
    const Grid& print_month_of(const QDate& d, const PrintSetup& choice) {
        s.cur_date = d;
        imageMonth_Click(s, env.w);
        accept(choice);
        prt_month(s, env.w);
        EXPECT_FALSE(printed.copies.empty());
        return printed.copies.back().grid;
    }
    static PrintSetup paper(int width, int height) {
        PrintSetup p;
        p.output_file = QStringLiteral("/tmp/unused.pdf");
        p.page_width = width;
        p.page_height = height;
        return p;
    }
};

TEST_F(MonthPrint, LetterPaperKeeps10800By14400) {
    EXPECT_EQ(pSet_size(QSize(12240, 15840)), QSize(10800, 14400));
    const Grid& g = print_month_of(QDate(2026, 3, 15), paper(12240, 15840));
    EXPECT_EQ(printed.copies.back().width, 10800);
    EXPECT_EQ(printed.copies.back().height, 14400);
    EXPECT_EQ(g.ColWidth(0), 1530); // 10800 / 7 rounded down to whole pixels
}

TEST_F(MonthPrint, A4PaperBelow12240WideMakesTheGridThePageLess1440EachWay) {
    EXPECT_EQ(pSet_size(QSize(11906, 16838)), QSize(10466, 15398));
    const Grid& g = print_month_of(QDate(2026, 3, 15), paper(11906, 16838));
    EXPECT_EQ(printed.copies.back().width, 10466);
    EXPECT_EQ(printed.copies.back().height, 15398);
    EXPECT_EQ(g.ColWidth(0), 1485);
}

TEST_F(MonthPrint, SixWeeksAndFourWeeksShareTheHeightByTheRowsThereAre) {
    // February 2026 starts on a Sunday and takes four weeks; August 2026
    // starts on a Saturday with 31 days and takes six.
    const Grid four = print_month_of(QDate(2026, 2, 10), paper(12240, 15840));
    const Grid six = print_month_of(QDate(2026, 8, 10), paper(12240, 15840));
    ASSERT_EQ(four.Rows(), 22);
    ASSERT_EQ(six.Rows(), 32);
    EXPECT_EQ(four.RowHeight(0), 860);
    EXPECT_EQ(six.RowHeight(0), 860);
    EXPECT_EQ(four.RowHeight(1), (14400 - 860) / 21 / 15 * 15);
    EXPECT_EQ(six.RowHeight(1), (14400 - 860) / 31 / 15 * 15);
    EXPECT_GT(four.RowHeight(5), six.RowHeight(5));
    for (const Grid* g : {&four, &six}) {
        int total = 0;
        for (int r = 0; r < g->Rows(); ++r)
            total += g->RowHeight(r);
        EXPECT_LE(total, 14400);
        EXPECT_GT(total, 14400 - g->Rows() * 15);
    }
}

TEST_F(MonthPrint, TheTitleRowIsTheBandsCaptionAndEveryDayHasItsBox) {
    const Grid& g = print_month_of(QDate(2026, 3, 15), paper(12240, 15840));
    const QString caption = QLocale().monthName(3) + "   2026";
    for (int c = 0; c < 7; ++c)
        EXPECT_EQ(g.TextMatrix(0, c), caption);
    EXPECT_EQ(g.merged_range(0, 3).col1, 0);
    EXPECT_EQ(g.merged_range(0, 3).col2, 6);
    EXPECT_EQ(g.TextMatrix(1, 0), "Sunday");
    EXPECT_EQ(g.TextMatrix(2, 0), " 1"); // March 2026 starts on a Sunday
    const CellBorderSpec top = g.border(2, 3), bottom = g.border(6, 3), middle = g.border(4, 3);
    EXPECT_EQ(top.top, 1);
    EXPECT_EQ(top.left, 1);
    EXPECT_EQ(top.right, 1);
    EXPECT_EQ(bottom.bottom, 1);
    EXPECT_EQ(middle.left, 1);
    EXPECT_EQ(middle.top, 0);
    EXPECT_EQ(top.color, s.label1_back_color);
    EXPECT_EQ(m.print_presets.at(0).orientation, 1);
    EXPECT_FALSE(m.print_presets.at(0).selection_enabled);
}

TEST_F(MonthPrint, CancelledTheMonthIsNotPrintedAndTheTickRunsAgain) {
    s.cur_date = QDate(2026, 3, 15);
    imageMonth_Click(s, env.w);
    prt_month(s, env.w);
    EXPECT_TRUE(printed.copies.empty());
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_EQ(s.vsPrtgrd.Rows(), 0);
    EXPECT_FALSE(copy_file_left());
}

// --- the ways in ---------------------------------------------------------------

TEST_F(PrintTest, PrintChoosesTheJobByThePlannerThatIsUp) {
    s.vsOvervw.set_extent(15000, 9000);
    accept();
    imagePrint_Click(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    EXPECT_EQ(printed.copies.back().grid.Cols(), day_cols);

    imageWeek_Click(s, env.w);
    ASSERT_TRUE(s.view_week);
    accept();
    mnuFilePrint_Click(s, env.w);
    ASSERT_EQ(printed.copies.size(), 2u);
    EXPECT_EQ(printed.copies.back().grid.Cols(), week_cols);

    imageMonth_Click(s, env.w);
    ASSERT_TRUE(s.view_month);
    accept();
    imagePrint_Click(s, env.w);
    ASSERT_EQ(printed.copies.size(), 3u);
    EXPECT_EQ(printed.copies.back().grid.Cols(), 7);
    EXPECT_EQ(printed.copies.back().grid.RowHeight(0), 860);
}

} // namespace
} // namespace orva
