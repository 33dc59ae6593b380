#include "print_fixtures.h"
#include "printing/detail_print.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::PrintTest;

QString repeat(QChar c, int n) {
    return QString(n, c);
}

// --- the lines of a note ----------------------------------------------------

TEST(NotesLines, ANoteWithoutLineEndsOrLengthIsOneLine) {
    EXPECT_EQ(notes_lines(QStringLiteral("Bring the insurance card")),
              QStringList{QStringLiteral("Bring the insurance card")});
    EXPECT_TRUE(notes_lines(QString()).isEmpty());
}

TEST(NotesLines, ALineEndInTheNotesEndsThePrintedLine) {
    EXPECT_EQ(notes_lines(QStringLiteral("Call first\r\nthen go")),
              (QStringList{QStringLiteral("Call first"), QStringLiteral("then go")}));
    // A run of line ends is one end, whichever they are.
    EXPECT_EQ(notes_lines(QStringLiteral("one\r\n\r\ntwo\nthree\rfour\n")),
              (QStringList{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three"),
                           QStringLiteral("four")}));
}

TEST(NotesLines, ALongLineBreaksAtTheFirstBlankAfter60Characters) {
    // Words of nine letters and a blank: blanks stand at 9, 19, .. 59, 69.
    QString text;
    for (int i = 0; i < 12; ++i)
        text += repeat(QChar(u'a' + i), 9) + QLatin1Char(' ');
    text = text.trimmed();
    const QStringList lines = notes_lines(text);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], text.left(69)); // the blank at 59 comes too early
    EXPECT_EQ(lines[1], text.mid(69));  // the blank opens the next line
    EXPECT_EQ(lines.join(QString()), text);
}

TEST(NotesLines, ALineWithNoBlankBreaksAfter85Characters) {
    const QString text = repeat(u'x', 200);
    const QStringList lines = notes_lines(text);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].size(), 86);
    EXPECT_EQ(lines[1].size(), 86);
    EXPECT_EQ(lines[2].size(), 28);
}

TEST(NotesLines, BlanksBefore60DoNotBreakAndALongWordStillBreaksAt85) {
    const QString text = QStringLiteral("short words ") + repeat(u'y', 120);
    const QStringList lines = notes_lines(text);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].size(), 86);
    EXPECT_EQ(lines.join(QString()), text);
}

// --- the print ----------------------------------------------------------------

class DetailPrint : public PrintTest {
  protected:
    // Shows the day's first entry in the pane with `notes`.
    void show(const QString& notes) {
        appt_rec* a = s.appt_row(1);
        ASSERT_NE(a, nullptr);
        a->appt_notes = notes;
        fill_dtl(s.store(), s.view(), s.options(), 1, 20);
    }
    QStringList texts(const Grid& g) {
        QStringList out;
        for (int r = 0; r < g.Rows(); ++r)
            out << g.TextMatrix(r, 1);
        return out;
    }
};

TEST_F(DetailPrint, AnAppointmentWithoutNotesPrintsTheHeadingTheDetailRowsAndNothingAfterNotes) {
    show(QString());
    accept();
    prtdtlImg_Click(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    const Grid& g = printed.copies[0].grid;
    const QStringList t = texts(g);
    ASSERT_EQ(t.size(), 2 + s.vsDtl.Rows() + 3);
    EXPECT_EQ(g.TextMatrix(0, 0), "Appointment Details ");
    EXPECT_EQ(t[0], "Appointment Details ");
    EXPECT_EQ(g.merged_range(0, 0).col2, 1);
    EXPECT_EQ(t[1], " ");
    for (int r = 0; r < s.vsDtl.Rows(); ++r)
        EXPECT_EQ(t[2 + r], s.vsDtl.TextMatrix(r, 1)) << r;
    EXPECT_EQ(t[2 + s.vsDtl.Rows()], "  " + s.ctl(QStringLiteral("Label1")).text.trimmed());
    EXPECT_EQ(t[t.size() - 2], "NOTES:  ");
    EXPECT_EQ(t.last(), " ");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 3, 0).toString(), dtl_picture_keys[0]);
    EXPECT_EQ(printed.copies[0].name,
              "Orva Calendar:  printed on " + QLocale().toString(s.cur_date, QLocale::LongFormat));
    EXPECT_EQ(s.vsPrtGrid.Rows(), 0);
}

TEST_F(DetailPrint, TheNotesAreBrokenIntoTheirPrintedLinesUnderTheHeading) {
    show(QStringLiteral("Call ahead\r\n") + repeat(u'z', 100));
    accept();
    prtdtlImg_Click(s, env.w);
    ASSERT_EQ(printed.copies.size(), 1u);
    const QStringList t = texts(printed.copies[0].grid);
    const int notes = int(t.indexOf(QStringLiteral("NOTES:  ")));
    ASSERT_GT(notes, 0);
    ASSERT_EQ(t.size(), notes + 5);
    EXPECT_EQ(t[notes + 1], "Call ahead");
    EXPECT_EQ(t[notes + 2], repeat(u'z', 86));
    EXPECT_EQ(t[notes + 3], repeat(u'z', 14));
}

TEST_F(DetailPrint, TheTickIsOffWhileTheDialogIsUpAndCancelPrintsNothing) {
    show(QStringLiteral("x"));
    bool ticking = true;
    m.during_print = [&] { ticking = s.timer1_enabled; };
    prtdtlImg_Click(s, env.w);
    EXPECT_FALSE(ticking);
    EXPECT_TRUE(s.timer1_enabled);
    EXPECT_TRUE(printed.copies.empty());
    EXPECT_EQ(s.vsPrtGrid.Rows(), 0);
    EXPECT_FALSE(m.print_presets.at(0).selection_enabled);
}

TEST_F(DetailPrint, TwoCopiesAreTwoCalls) {
    show(QStringLiteral("x"));
    PrintSetup choice;
    choice.output_file = env.dir.filePath(QStringLiteral("d.pdf"));
    choice.copies = 2;
    accept(choice);
    prtdtlImg_Click(s, env.w);
    EXPECT_EQ(printed.copies.size(), 2u);
}

} // namespace
} // namespace orva
