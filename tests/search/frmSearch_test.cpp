#include "../support/accessible.h"
#include "search_fixtures.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_printer.h"
#include "grid/ui/grid_widget.h"
#include "search/ui/frmSearch.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::SearchEnv;

struct FrmSearchDialog : ::testing::Test {
    SearchEnv env;
    AppState& s = env.s;

    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    // A fixture calendar: three dentist visits in three months and one other
    // entry, found by typing and pressing Search over the year.
    void fill() {
        env.put(env.on(QDate(2026, 5, 4), QStringLiteral("D2"), QStringLiteral("14:00"), QStringLiteral("Dentist check")));
        env.put(env.on(QDate(2026, 2, 9), QStringLiteral("D1"), QStringLiteral("08:30"), QStringLiteral("dentist cleaning")));
        env.put(env.on(QDate(2026, 5, 4), QStringLiteral("D3"), QStringLiteral("09:00"), QStringLiteral("Call the DENTIST")));
        env.put(env.on(QDate(2026, 3, 20), QStringLiteral("X1"), QStringLiteral("10:00"), QStringLiteral("Haircut")));
        ASSERT_EQ(load_appts(s, s.cur_date, s.cal_path, 0), 0);
    }
    void search(FrmSearch& dlg, const QString& text) {
        child<QDateEdit>(dlg, "srchDTPicker1")->setDate(QDate(2026, 1, 1));
        child<QDateEdit>(dlg, "srchDTPicker2")->setDate(QDate(2026, 12, 31));
        QLineEdit* edit = child<QLineEdit>(dlg, "apptText");
        edit->clear();
        QTest::keyClicks(edit, text);
        QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    }
    static void click_cell(FrmSearch& dlg, int row, int col) {
        auto* grid = dlg.findChild<GridWidget*>(QStringLiteral("srchGrid"));
        ASSERT_NE(grid, nullptr);
        grid->refresh();
        const QRect r = grid->cell_rect(row, col);
        ASSERT_FALSE(r.isEmpty()) << row << "," << col;
        const QPoint at = grid->viewport()->mapFrom(grid, r.center());
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
    }
};

TEST_F(FrmSearchDialog, ControlsCarryTheirNamesAndCaptions) {
    FrmSearch dlg(s);
    EXPECT_EQ(dlg.windowTitle(), "Find Appointments");
    EXPECT_EQ(child<QRadioButton>(dlg, "SrchOpt0")->text(), "Find Appt Containing Text:");
    EXPECT_EQ(child<QRadioButton>(dlg, "SrchOpt1")->text(), "Find Notes containing Text:");
    EXPECT_EQ(child<QRadioButton>(dlg, "SrchOpt2")->text(), "Find Appointments by ICON:");
    EXPECT_EQ(child<QRadioButton>(dlg, "SrchOpt3")->text(), "Find all appointments within date range");
    EXPECT_EQ(child<QCheckBox>(dlg, "Check1")->text(), "Case Sensitive");
    EXPECT_EQ(child<QPushButton>(dlg, "Command1")->text(), "Search");
    EXPECT_EQ(child<QPushButton>(dlg, "ClearCmd")->text(), "Clear");
    EXPECT_EQ(child<QLabel>(dlg, "lblResults")->text(), "Search Results:");
    auto* grid = child<GridWidget>(dlg, "srchGrid");
    EXPECT_EQ(testing::spoken_name(grid), "Search results");
    EXPECT_EQ(testing::spoken_description(grid), "srchGrid");
    dlg.show();
    EXPECT_FALSE(grid->isVisible());
    EXPECT_FALSE(child<QPushButton>(dlg, "stopCmd")->isVisible());
    EXPECT_FALSE(child<QToolButton>(dlg, "imgPrint")->isVisible());
}

TEST_F(FrmSearchDialog, SearchListsTheHitsInDateAndTimeOrder) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    auto* grid = child<GridWidget>(dlg, "srchGrid");
    EXPECT_TRUE(grid->isVisible());
    const Grid& g = dlg.form().srchGrid;
    ASSERT_EQ(g.Rows(), 4);
    EXPECT_EQ(g.TextMatrix(1, 0), "dentist cleaning");
    EXPECT_EQ(g.TextMatrix(2, 0), "Call the DENTIST");
    EXPECT_EQ(g.TextMatrix(3, 0), "Dentist check");
    EXPECT_EQ(g.TextMatrix(2, 2), "9:00 am");
    EXPECT_TRUE(child<QLabel>(dlg, "lblHits")->text().startsWith("3  Appointments found for date range "));
    // The table the screen reader walks holds the same rows.
    EXPECT_EQ(grid->model()->rowCount(), 3);
    EXPECT_FALSE(child<QPushButton>(dlg, "stopCmd")->isEnabled());
    EXPECT_GE(dlg.height(), 7680 * dlg.logicalDpiY() / 1440 - 1);
}

TEST_F(FrmSearchDialog, ClickInColumnZeroOpensTheRightEntry) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    QString opened;
    env.m.forms[QStringLiteral("frmAppt1")] = [&] {
        opened = s.appt_row(s.edit_index)->appt_id.trimmed();
    };
    click_cell(dlg, 3, 0);
    EXPECT_EQ(opened, "D2");
    EXPECT_TRUE(dlg.isVisible());
}

TEST_F(FrmSearchDialog, ClickInColumnOneShowsItsDayAndClosesTheForm) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    click_cell(dlg, 1, 1);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(dlg.result(), int(QDialog::Accepted));
    EXPECT_EQ(s.cur_date, QDate(2026, 2, 9));
    EXPECT_TRUE(s.view_day);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(FrmSearchDialog, ClickInOtherColumnsDoesNothing) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    click_cell(dlg, 1, 2);
    click_cell(dlg, 1, 4);
    EXPECT_TRUE(dlg.isVisible());
    EXPECT_TRUE(env.m.shown.empty());
    EXPECT_EQ(s.cur_date, QDate(2026, 3, 15));
}

TEST_F(FrmSearchDialog, StopPressedDuringTheRunEndsItWithTheHitsSoFar) {
    for (int day = 1; day <= 28; ++day)
        env.put(env.on(QDate(2026, 2, day), QStringLiteral("W%1").arg(day), QStringLiteral("07:00"), QStringLiteral("Walk")));
    FrmSearch dlg(s);
    dlg.show();
    int lines = 0;
    install_yield_hook([&] {
        QApplication::processEvents();
        if (++lines == 4) {
            auto* stop = dlg.findChild<QPushButton*>(QStringLiteral("stopCmd"));
            ASSERT_TRUE(stop->isVisible());
            ASSERT_TRUE(stop->isEnabled());
            QTest::mouseClick(stop, Qt::LeftButton);
        }
    });
    search(dlg, QStringLiteral("walk"));
    install_yield_hook({});
    EXPECT_EQ(dlg.form().srch_hits, 4);
    EXPECT_TRUE(child<QLabel>(dlg, "lblHits")->text().startsWith("4  Appointments found"));
    search(dlg, QStringLiteral("walk"));
    EXPECT_EQ(dlg.form().srch_hits, 28);
}

TEST_F(FrmSearchDialog, ClearEmptiesTheListAndTheText) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    QTest::mouseClick(child<QPushButton>(dlg, "ClearCmd"), Qt::LeftButton);
    EXPECT_EQ(dlg.form().srchGrid.Rows(), 1);
    EXPECT_EQ(child<QLineEdit>(dlg, "apptText")->text(), " ");
    EXPECT_TRUE(child<QLabel>(dlg, "lblHits")->text().isEmpty());
}

TEST_F(FrmSearchDialog, PrintPictureSendsTheListToTheChosenFileWithItsTitle) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    PrintSetup to_pdf;
    to_pdf.output_file = env.dir.filePath(QStringLiteral("hits.pdf"));
    to_pdf.copies = 2;
    env.m.print_answers.push_back(to_pdf);
    s.timer1_enabled = true;
    bool ticking_during = true;
    env.m.during_print = [&] { ticking_during = s.timer1_enabled; };
    QTest::mouseClick(child<QToolButton>(dlg, "imgPrint"), Qt::LeftButton);
    ASSERT_NE(env.m.last(u"print"), nullptr);
    EXPECT_FALSE(ticking_during);
    EXPECT_TRUE(s.timer1_enabled);
    QFile pdf(to_pdf.output_file);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5).startsWith("%PDF"));
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(FrmSearchDialog, CancelledPrintDialogPrintsNothing) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    QTest::mouseClick(child<QToolButton>(dlg, "imgPrint"), Qt::LeftButton);
    ASSERT_NE(env.m.last(u"print"), nullptr);
    EXPECT_TRUE(QDir(env.dir.path()).entryList({QStringLiteral("*.pdf")}).isEmpty());
}

TEST_F(FrmSearchDialog, APrintThatCannotBeWrittenIsTold) {
    fill();
    FrmSearch dlg(s);
    dlg.show();
    search(dlg, QStringLiteral("dentist"));
    PrintSetup nowhere;
    nowhere.output_file = env.dir.filePath(QStringLiteral("no/such/folder/hits.pdf"));
    env.m.print_answers.push_back(nowhere);
    QTest::mouseClick(child<QToolButton>(dlg, "imgPrint"), Qt::LeftButton);
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], print_failed_msg);
}

TEST_F(FrmSearchDialog, HelpOpensTheHelpViewerOnTheFindTopic) {
    FrmSearch dlg(s);
    QString handed;
    env.m.forms[QStringLiteral("frmHelpIdx")] = [&] { handed = s.help_topic; };
    QPushButton* help = child<QPushButton>(dlg, "hlpCmd");
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(help->text(), "Help");
    QTest::mouseClick(help, Qt::LeftButton);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmHelpIdx");
    EXPECT_EQ(handed, "topics/find.html");
    EXPECT_TRUE(s.help_topic.isEmpty());
}

} // namespace
} // namespace orva
