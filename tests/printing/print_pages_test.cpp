#include "printing/detail_print.h"
#include "printing/print_setup.h"
#include "support/pdf_text.h"
#include "views/main_window_fixture.h"
#include "views/week_view.h"

#include <QAction>
#include <QDir>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::pdf_lines;
using testing::pdf_page_size;
using testing::pdf_pages;
using testing::pdf_text;

// The main window's planners printed to PDF files and read back: Saturday
// 2026-11-21 with its morning of entries, the clock at 09:40.
class PrintedPages : public testing::MainWindowTest {
  protected:
    QString pdf(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }
    void click(const char* tool) {
        auto* b = find<QToolButton>(tool);
        ASSERT_NE(b, nullptr) << tool;
        ASSERT_TRUE(b->isEnabled()) << tool;
        QTest::mouseClick(b, Qt::LeftButton);
        QApplication::processEvents();
    }
    // Prints what is up with the Print tool picture into `file`, the dialog
    // accepted as preset.
    QString print_to(const char* file) {
        m.print_to_pdf.push_back(pdf(file));
        click("imagePrint");
        return pdf(file);
    }
    bool copy_file_left() const { return QDir(dir.path()).exists(print_copy_file); }
    // Clicks the cell of vsSched whose text ends with `text`.
    void click_entry(const QString& text) {
        Grid& g = s().vsSched;
        for (int r = 0; r < g.Rows(); ++r)
            for (int c = 2; c < g.Cols(); c += 2)
                if (g.TextMatrix(r, c).endsWith(text)) {
                    g.ShowCell(r, c);
                    sched()->refresh();
                    const QRect rect = sched()->cell_rect(r, c);
                    ASSERT_FALSE(rect.isEmpty());
                    QTest::mouseClick(sched()->viewport(), Qt::LeftButton, {},
                                      sched()->viewport()->mapFrom(sched(), rect.center()));
                    QApplication::processEvents();
                    return;
                }
        FAIL() << "no entry " << text.toStdString();
    }
};

TEST_F(PrintedPages, TheDayPageHoldsTheDaysEntriesAndItsTitleOnOnePage) {
    launch();
    const QString file = print_to("day.pdf");
    const QString text = pdf_text(file);
    for (const char* entry : {"Dentist", "Team meeting", "Mum's birthday", "Hike up the hill"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(entry))) << entry;
    EXPECT_TRUE(text.contains(QLocale().toString(QDate(2026, 11, 21), QLocale::LongFormat)));
    EXPECT_TRUE(text.contains(" 09:00 am"));
    EXPECT_TRUE(text.contains(" 11:30 pm")); // the whole day, not what the screen scrolled to
    EXPECT_TRUE(text.simplified().contains("Orva Calendar: printed on"));
    EXPECT_EQ(pdf_pages(file), 1);
    EXPECT_EQ(pdf_page_size(file), "612 x 792");
    EXPECT_TRUE(m.messages().empty());
    EXPECT_FALSE(copy_file_left());
    EXPECT_TRUE(s().timer1_enabled);
    EXPECT_TRUE(find<QTimer>("Timer1")->isActive());
}

TEST_F(PrintedPages, ALandscapeDayRunsOnToASecondPageWithTheFootOnEach) {
    launch();
    PrintSetup landscape;
    landscape.output_file = pdf("wide.pdf");
    landscape.orientation = 2;
    m.print_answers.push_back(landscape);
    click("imagePrint");
    EXPECT_EQ(pdf_pages(landscape.output_file), 2);
    const QString text = pdf_text(landscape.output_file);
    EXPECT_EQ(text.count("printed on"), 2);
    // The page numbers at the foot; pdftotext closes up their blanks.
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("1 ?/ ?2"))));
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("2 ?/ ?2"))));
    EXPECT_EQ(pdf_page_size(landscape.output_file), "792 x 612");
}

TEST_F(PrintedPages, TheWeekPageHoldsAllSevenHeaders) {
    launch();
    click("imageWeek");
    ASSERT_TRUE(s().view_week);
    const QString file = print_to("week.pdf");
    const QString text = pdf_text(file).simplified();
    for (int d = 0; d < 7; ++d) {
        const QString header = week_header_text(QDate(2026, 11, 16).addDays(d)).simplified();
        EXPECT_TRUE(text.contains(header)) << header.toStdString();
    }
    EXPECT_TRUE(text.contains("Dentist"));
    EXPECT_EQ(pdf_pages(file), 1);
    EXPECT_EQ(m.print_presets.back().orientation, 2);
    EXPECT_EQ(pdf_page_size(file), "792 x 612");
}

TEST_F(PrintedPages, TheMonthPageHoldsEveryDateNumber) {
    launch();
    click("imageMonth");
    ASSERT_TRUE(s().view_month);
    const QString file = print_to("month.pdf");
    const QString text = pdf_text(file);
    const QStringList words =
        text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    for (int d = 1; d <= 30; ++d)
        EXPECT_TRUE(words.contains(QString::number(d))) << d;
    for (int wd = 1; wd <= 7; ++wd)
        EXPECT_TRUE(words.contains(QLocale().standaloneDayName(wd))) << wd;
    EXPECT_TRUE(text.simplified().contains(QLocale().monthName(11) + " 2026"));
    EXPECT_TRUE(text.contains("Dentist"));
    EXPECT_EQ(pdf_pages(file), 1);
    EXPECT_FALSE(copy_file_left());
}

TEST_F(PrintedPages, TheDetailPageHoldsTheNotesBrokenAsTold) {
    const QString notes = QStringLiteral(
        "Call first.\r\nAsk for the forms that list the insurance numbers and bring both signed "
        "copies.\r\nRef:ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
        "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    ASSERT_LE(notes.toUtf8().size(), 200);
    {
        Shared seed;
        seed.app_path = dir.path();
        seed.cal_path = dir.filePath("calendar.cal");
        appt_rec r = testing::make_appt("11212026", "216", "18:00", "Insurance papers");
        r.appt_end = QStringLiteral("18:30");
        r.appt_notes = notes;
        seed.occur_count = 1;
        *seed.occur_row(1) = r;
        ASSERT_EQ(write_occurs(seed, seed.cal_path), 0);
    }
    launch();
    click_entry(QStringLiteral("Insurance papers"));
    const QString file = pdf("detail.pdf");
    m.print_to_pdf.push_back(file);
    click("prtdtlImg");
    const QStringList lines = pdf_lines(pdf_text(file));
    const QStringList expected = notes_lines(notes);
    // The second line breaks at its first blank after 60 characters, the
    // reference, with no blank, after 86.
    ASSERT_EQ(expected.size(), 5);
    int at = int(lines.indexOf(QStringLiteral("NOTES:")));
    ASSERT_GE(at, 0) << lines.join('\n').toStdString();
    for (const QString& line : expected)
        EXPECT_EQ(lines.value(++at), line.simplified());
    EXPECT_TRUE(lines.contains(QStringLiteral("Appointment Details")));
    EXPECT_TRUE(pdf_text(file).contains("Insurance papers"));
    EXPECT_EQ(pdf_pages(file), 1);
}

TEST_F(PrintedPages, APrintThatCannotBeWrittenIsToldAndLeavesNoFileBehind) {
    launch();
    PrintSetup nowhere;
    nowhere.output_file = dir.filePath("no/such/folder/day.pdf");
    m.print_answers.push_back(nowhere);
    click("imagePrint");
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], print_failed_msg);
    EXPECT_FALSE(copy_file_left());
    EXPECT_FALSE(QFile::exists(nowhere.output_file));
    EXPECT_TRUE(s().timer1_enabled);
}

TEST_F(PrintedPages, PrintStandsInTheFileMenuOnTheToolStripAndInThePane) {
    launch();
    auto* print = find<QAction>("mnuFilePrint");
    ASSERT_NE(print, nullptr);
    EXPECT_EQ(print->text(), "Print  ");
    EXPECT_EQ(print->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_P));
    auto* file_menu = find<QMenu>("mnuFile");
    ASSERT_NE(file_menu, nullptr);
    const QList<QAction*> entries = file_menu->actions();
    const qsizetype at = entries.indexOf(print);
    EXPECT_GT(at, entries.indexOf(find<QAction>("mnuFileDelCal")));
    EXPECT_LT(at, entries.indexOf(find<QAction>("mnuExit")));
    auto* tool = find<QToolButton>("imagePrint");
    ASSERT_NE(tool, nullptr);
    EXPECT_EQ(tool->text(), "Print");
    EXPECT_EQ(tool->toolTip(), "Print");
    EXPECT_NE(find<QToolButton>("prtdtlImg"), nullptr);

    print->trigger();
    EXPECT_NE(m.last(u"print"), nullptr);
    EXPECT_EQ(m.print_presets.back().orientation, 1);
}

} // namespace
} // namespace orva
