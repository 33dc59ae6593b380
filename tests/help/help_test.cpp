#include "help/about.h"
#include "help/help.h"
#include "help_fixtures.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::HelpEnv;
using testing::shows;

struct HelpBook : ::testing::Test {
    HelpEnv env;
    HelpForm f;

    void open(const QString& topic = {}) { Form_Load(f, env.app_path(), topic); }
    QString reading_box(int e) const {
        return QStringLiteral("Error reading help file; ") + QString::number(e) +
               QStringLiteral("  File ") + env.archive() + QStringLiteral(" archive ") +
               env.app_path() + QStringLiteral("/help.idx");
    }
    QString loading_box(int e) const {
        return QStringLiteral("Error loading help file; ") + QString::number(e) +
               QStringLiteral("  File ") + env.archive() + QStringLiteral(" archive ") +
               env.app_path() + QStringLiteral("/help.idx");
    }
};

// --- opening ------------------------------------------------------------

TEST_F(HelpBook, OpeningShowsTheFirstTopicWithLineZeroLitAndPriorOff) {
    env.write_small_book();
    open();
    EXPECT_TRUE(shows(f, "Welcome"));
    ASSERT_EQ(f.vsHelpIndex.size(), 5u);
    EXPECT_TRUE(f.vsHelpIndex[0].lit);
    EXPECT_FALSE(f.vsHelpIndex[0].open_book) << "only a click opens the book";
    EXPECT_EQ(f.cur_topic_row, 0);
    EXPECT_EQ(f.cursor, 0);
    EXPECT_TRUE(f.list_shown);
    EXPECT_FALSE(f.priorCmd_enabled);
    EXPECT_TRUE(f.nextCmd_enabled);
    EXPECT_EQ(f.hlpCmd_caption, "Hide Help Content Topics");
    EXPECT_EQ(f.hlp_path, env.archive());
    EXPECT_EQ(f.idx_path, env.app_path() + "/help.idx");
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(HelpBook, TheOutlineHasALinePerIndexRowWithItsCaptionDataAndLevel) {
    env.write_small_book();
    open();
    const std::vector<std::pair<QString, int>> want{
        {"Welcome", 1}, {"Planners", 1}, {"Day planner", 2}, {"Week planner", 2}, {"Keys", 1}};
    ASSERT_EQ(f.vsHelpIndex.size(), want.size());
    for (size_t r = 0; r < want.size(); ++r) {
        EXPECT_EQ(f.vsHelpIndex[r].caption, want[r].first);
        EXPECT_EQ(f.vsHelpIndex[r].level, want[r].second);
        EXPECT_EQ(f.vsHelpIndex[r].index_row, int(r) + 1);
        EXPECT_FALSE(f.vsHelpIndex[r].open_book);
    }
    EXPECT_EQ(f.vsHelpHold.TextMatrix(0, 1), "File") << "row 0 is the heading";
}

TEST_F(HelpBook, AMissingArchiveShowsBothBoxesAndTheViewerOpensEmpty) {
    const std::string before = env.folder();
    open();
    EXPECT_EQ(env.m.messages(), (std::vector<QString>{reading_box(53), loading_box(53)}));
    EXPECT_EQ(env.m.shown[0].style, MsgStyle::Critical);
    EXPECT_TRUE(f.vsHelpIndex.empty());
    EXPECT_TRUE(f.rtfContents.isEmpty());
    EXPECT_EQ(f.cursor, -1);
    EXPECT_FALSE(f.nextCmd_enabled);
    EXPECT_FALSE(f.priorCmd_enabled);
    EXPECT_EQ(env.folder(), before) << "looking for the archive makes none";
}

TEST_F(HelpBook, AFileThatIsNoArchiveShowsBothBoxes) {
    QFile junk(env.archive());
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("not a help file at all");
    junk.close();
    open();
    ASSERT_EQ(env.m.messages().size(), 2u);
    EXPECT_TRUE(env.m.messages()[0].startsWith("Error reading help file; "));
    EXPECT_FALSE(env.m.messages()[0].startsWith("Error reading help file; 0 "));
    EXPECT_TRUE(env.m.messages()[0].endsWith(env.app_path() + "/help.idx"));
    EXPECT_EQ(env.m.messages()[1], loading_box(53));
    EXPECT_TRUE(f.vsHelpIndex.empty());
}

TEST_F(HelpBook, ADamagedIndexShowsOnlyTheLoadingBox) {
    {
        Archive a;
        Archive::Command command(a, env.archive());
        ASSERT_EQ(a.put(env.archive(), help_index_member, QByteArray("garbage, not a grid")), 0);
        ASSERT_EQ(command.finish(), 0);
    }
    open();
    EXPECT_EQ(env.m.messages(), std::vector<QString>{loading_box(75)});
    EXPECT_TRUE(f.vsHelpIndex.empty());
}

TEST_F(HelpBook, ReadingLeavesTheArchiveAsItWasWithNothingBesideIt) {
    env.write_small_book();
    QFile file(env.archive());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    file.close();
    const std::string before = env.folder();

    open();
    vsHelpIndex_Click(f, 2);
    vsHelpIndex_Click(f, 4);
    ASSERT_TRUE(shows(f, "Keys"));

    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
    EXPECT_EQ(env.folder(), before) << "no copy of a member, no log, no lock";
}

TEST_F(HelpBook, ACopyOfTheArchiveThatMayNotBeWrittenIsReadAllTheSame) {
    env.write_small_book();
    ASSERT_TRUE(QFile::setPermissions(env.archive(), QFile::ReadOwner));
    open();
    EXPECT_TRUE(env.m.shown.empty());
    EXPECT_TRUE(shows(f, "Welcome"));
}

// --- clicking and stepping ------------------------------------------------

TEST_F(HelpBook, AClickOnATopicMovesTheOpenBookAndTheLightAndShowsIt) {
    env.write_small_book();
    open();
    vsHelpIndex_Click(f, 2);
    EXPECT_TRUE(shows(f, "Day planner"));
    EXPECT_EQ(f.topic_name, "topics/b.html");
    EXPECT_EQ(f.cur_topic_row, 2);
    EXPECT_EQ(f.cursor, 2);
    EXPECT_TRUE(f.vsHelpIndex[2].lit);
    EXPECT_TRUE(f.vsHelpIndex[2].open_book);
    EXPECT_FALSE(f.vsHelpIndex[0].lit);
    EXPECT_TRUE(f.nextCmd_enabled);
    EXPECT_TRUE(f.priorCmd_enabled);

    vsHelpIndex_Click(f, 3);
    EXPECT_FALSE(f.vsHelpIndex[2].lit);
    EXPECT_FALSE(f.vsHelpIndex[2].open_book);
    EXPECT_TRUE(f.vsHelpIndex[3].open_book);
}

TEST_F(HelpBook, AClickOnALabelHeadingChangesNoPage) {
    env.write_small_book();
    open();
    vsHelpIndex_Click(f, 2);
    const HelpForm before = f;
    vsHelpIndex_Click(f, 1);
    EXPECT_EQ(f.rtfContents, before.rtfContents);
    EXPECT_EQ(f.topic_name, before.topic_name);
    EXPECT_EQ(f.cur_topic_row, 2);
    EXPECT_TRUE(f.vsHelpIndex[2].lit);
    EXPECT_FALSE(f.vsHelpIndex[1].lit);
    EXPECT_FALSE(f.vsHelpIndex[1].open_book);
    EXPECT_EQ(f.nextCmd_enabled, before.nextCmd_enabled);
    EXPECT_EQ(f.priorCmd_enabled, before.priorCmd_enabled);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(HelpBook, NextIsDisabledAtTheLastLine) {
    env.write_small_book();
    open();
    vsHelpIndex_Click(f, 3);
    nextCmd_Click(f);
    EXPECT_TRUE(shows(f, "Keys"));
    EXPECT_EQ(f.cur_topic_row, 4);
    EXPECT_FALSE(f.nextCmd_enabled);
    EXPECT_TRUE(f.priorCmd_enabled);
    nextCmd_Click(f);
    EXPECT_TRUE(shows(f, "Keys"));
    EXPECT_FALSE(f.nextCmd_enabled);
}

TEST_F(HelpBook, PriorIsDisabledAtTheFirstLine) {
    env.write_small_book();
    open();
    vsHelpIndex_Click(f, 2);
    priorCmd_Click(f); // onto the heading: no page, the cursor moves
    EXPECT_EQ(f.cursor, 1);
    EXPECT_TRUE(shows(f, "Day planner"));
    priorCmd_Click(f);
    EXPECT_TRUE(shows(f, "Welcome"));
    EXPECT_EQ(f.cur_topic_row, 0);
    EXPECT_FALSE(f.priorCmd_enabled);
    EXPECT_TRUE(f.nextCmd_enabled);
}

TEST_F(HelpBook, NextWalksEveryTopicInOrderAndPassesHeadingsByTheCursor) {
    env.write_small_book();
    open();
    QStringList seen{f.rtfContents};
    for (int i = 0; i < 6; ++i) {
        nextCmd_Click(f);
        if (seen.last() != f.rtfContents) seen << f.rtfContents;
    }
    ASSERT_EQ(seen.size(), 4);
    EXPECT_TRUE(seen[1].contains("<h1>Day planner</h1>"));
    EXPECT_TRUE(seen[2].contains("<h1>Week planner</h1>"));
    EXPECT_TRUE(seen[3].contains("<h1>Keys</h1>"));
}

TEST_F(HelpBook, HidingTheListTogglesTheButtonsWords) {
    env.write_small_book();
    open();
    hlpCmd_Click(f);
    EXPECT_FALSE(f.list_shown);
    EXPECT_EQ(f.hlpCmd_caption, "Show Help Content Topics");
    hlpCmd_Click(f);
    EXPECT_TRUE(f.list_shown);
    EXPECT_EQ(f.hlpCmd_caption, "Hide Help Content Topics");
}

TEST_F(HelpBook, ALinkToATopicOfTheIndexShowsItAndMovesTheLight) {
    env.write_small_book();
    open();
    EXPECT_TRUE(follow_link(f, "topics/d.html"));
    EXPECT_TRUE(shows(f, "Keys"));
    EXPECT_EQ(f.cur_topic_row, 4);
    EXPECT_FALSE(follow_link(f, "topics/none.html"));
    EXPECT_TRUE(shows(f, "Keys"));
    EXPECT_TRUE(env.m.shown.empty());
}

// --- topics that cannot be shown --------------------------------------------

TEST_F(HelpBook, APathWithoutASeparatorShowsErrorReadingHelpFile) {
    env.write_help({{1, QStringLiteral("welcome.html"), QStringLiteral("Welcome")}},
                   {{QStringLiteral("welcome.html"), HelpEnv::page("Welcome")}});
    open();
    EXPECT_EQ(env.m.messages(), std::vector<QString>{"Error reading help file."});
    EXPECT_TRUE(f.rtfContents.isEmpty()) << "nothing is loaded";
}

TEST_F(HelpBook, AMissingTopicShowsError2ExtractingAndKeepsThePage) {
    env.write_help({{1, QStringLiteral("topics/a.html"), QStringLiteral("Welcome")},
                    {1, QStringLiteral("topics/gone.html"), QStringLiteral("Gone")}},
                   {{QStringLiteral("topics/a.html"), HelpEnv::page("Welcome")}});
    open();
    vsHelpIndex_Click(f, 1);
    EXPECT_EQ(env.m.messages(), std::vector<QString>{"Error 2 extracting help file"});
    EXPECT_TRUE(shows(f, "Welcome"));
}

// --- opening on a topic ------------------------------------------------------

TEST_F(HelpBook, OpeningOnAGivenTopicShowsItInsteadOfTheFirst) {
    env.write_small_book();
    open(QStringLiteral("topics/c.html"));
    EXPECT_TRUE(shows(f, "Week planner"));
    EXPECT_EQ(f.cur_topic_row, 3);
    EXPECT_EQ(f.cursor, 3);
    EXPECT_TRUE(f.vsHelpIndex[3].lit);
    EXPECT_TRUE(f.vsHelpIndex[3].open_book);
    EXPECT_FALSE(f.vsHelpIndex[0].lit);
    EXPECT_TRUE(f.priorCmd_enabled);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(HelpBook, OpeningOnATopicTheIndexLacksShowsTheFirst) {
    env.write_small_book();
    open(QStringLiteral("topics/none.html"));
    EXPECT_TRUE(shows(f, "Welcome"));
    EXPECT_EQ(f.cur_topic_row, 0);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(HelpBook, ShowHelpHandsTheTopicToTheViewerAndTakesItBack) {
    HelpState h;
    QString handed;
    env.m.forms[QStringLiteral("frmHelpIdx")] = [&] { handed = h.help_topic; };
    show_help(h, QStringLiteral("topics/find.html"));
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmHelpIdx");
    EXPECT_EQ(handed, "topics/find.html");
    EXPECT_TRUE(h.help_topic.isEmpty()) << "the next opening starts at the top";
    show_help(h);
    EXPECT_TRUE(handed.isEmpty());
}

// --- printing ---------------------------------------------------------------

TEST_F(HelpBook, PrintOffersTheSelectionOnlyWhenTextIsSelected) {
    env.write_small_book();
    open();
    EXPECT_FALSE(prtCmd_Click(f, false));
    EXPECT_FALSE(prtCmd_Click(f, true));
    ASSERT_EQ(env.m.print_presets.size(), 2u);
    EXPECT_FALSE(env.m.print_presets[0].selection_enabled);
    EXPECT_FALSE(env.m.print_presets[0].selection);
    EXPECT_TRUE(env.m.print_presets[1].selection_enabled);
    EXPECT_TRUE(env.m.print_presets[1].selection);

    PrintSetup to_file;
    to_file.output_file = env.app_path() + "/out.pdf";
    to_file.selection = true;
    env.m.print_answers.push_back(to_file);
    EXPECT_TRUE(prtCmd_Click(f, true));
    EXPECT_TRUE(f.print_setup.selection);
    EXPECT_EQ(f.print_setup.output_file, to_file.output_file);
}

TEST_F(HelpBook, PrintAllGivesEveryTopicInOutlineOrderWithoutTheHeadings) {
    env.write_small_book();
    open();
    vsHelpIndex_Click(f, 2);
    env.m.print_answers.push_back(PrintSetup{});
    const std::vector<QString> pages = Command1_Click(f);
    ASSERT_EQ(pages.size(), 4u);
    EXPECT_TRUE(pages[0].contains("<h1>Welcome</h1>"));
    EXPECT_TRUE(pages[1].contains("<h1>Day planner</h1>"));
    EXPECT_TRUE(pages[2].contains("<h1>Week planner</h1>"));
    EXPECT_TRUE(pages[3].contains("<h1>Keys</h1>"));
    EXPECT_FALSE(env.m.print_presets[0].selection_enabled) << "all topics have no selection";
    EXPECT_FALSE(env.m.print_presets[0].selection);
    EXPECT_EQ(f.cursor, 2) << "the cursor returns to the topic shown";
    EXPECT_TRUE(shows(f, "Day planner"));
}

TEST_F(HelpBook, CancelledPrintAllGivesNothing) {
    env.write_small_book();
    open();
    EXPECT_TRUE(Command1_Click(f).empty());
    EXPECT_NE(env.m.last(u"print"), nullptr);
}

// --- about -------------------------------------------------------------------

TEST(AboutBox, NamesTheProgramAndItsVersionFromTheBuild) {
    const AboutText t = about_text();
    EXPECT_EQ(t.title, "About OrvaCal");
    EXPECT_EQ(t.version, "Version " ORVACAL_TEST_VERSION);
    EXPECT_TRUE(QRegularExpression("^Version \\d+\\.\\d+\\.\\d+$").match(t.version).hasMatch());
}

} // namespace
} // namespace orva
