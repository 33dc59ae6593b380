#include "../support/accessible.h"
#include "help/about.h"
#include "help/ui/frmAbout.h"
#include "help/ui/frmHelpIdx.h"
#include "help_fixtures.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTextEdit>
#include <QTreeWidget>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::HelpEnv;

struct HelpViewer : ::testing::Test {
    HelpEnv env;
    HelpState help;

    std::unique_ptr<FrmHelpIdx> open() {
        auto dlg = std::make_unique<FrmHelpIdx>(env.app_path(), help);
        dlg->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dlg.get()));
        return dlg;
    }
    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    static QTreeWidget* outline(QWidget& dlg) { return child<QTreeWidget>(dlg, "vsHelpIndex"); }
    static QTreeWidgetItem* item(QWidget& dlg, int line) {
        QTreeWidget* tree = outline(dlg);
        for (QTreeWidgetItemIterator it(tree); *it; ++it)
            if ((*it)->data(0, Qt::UserRole).toInt() == line) return *it;
        ADD_FAILURE() << "no line " << line;
        return nullptr;
    }
    // A click on the line as the user makes it: on its text, which must be
    // in view.
    static void click_line(QWidget& dlg, int line) {
        QTreeWidget* tree = outline(dlg);
        QTreeWidgetItem* it = item(dlg, line);
        ASSERT_NE(it, nullptr);
        ASSERT_FALSE(it->isHidden());
        for (QTreeWidgetItem* up = it->parent(); up; up = up->parent())
            ASSERT_TRUE(up->isExpanded()) << "line " << line << " is folded away";
        tree->scrollToItem(it);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(it).center());
    }
    static void press(QWidget& dlg, const char* button) {
        QPushButton* b = child<QPushButton>(dlg, button);
        ASSERT_NE(b, nullptr);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    static QString page(QWidget& dlg) {
        return child<QTextBrowser>(dlg, "rtfContents")->toPlainText();
    }
    static QRect in_dialog(QWidget& dlg, QWidget* w) {
        return QRect(w->mapTo(&dlg, QPoint(0, 0)), w->size());
    }
    static int pdf_pages(const QString& path) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) return -1;
        const QString bytes = QString::fromLatin1(f.readAll());
        static const QRegularExpression one_page(QStringLiteral("/Type\\s*/Page(?!s)"));
        return int(bytes.count(one_page));
    }
    PrintSetup to_pdf(const char* name) const {
        PrintSetup s;
        s.output_file = env.dir.filePath(QString::fromLatin1(name));
        return s;
    }
};

TEST_F(HelpViewer, ControlsCarryTheirNamesAndSpeakWhatTheyShow) {
    env.write_small_book();
    auto dlg = open();
    EXPECT_EQ(dlg->objectName(), "frmHelpIdx");
    EXPECT_EQ(dlg->windowTitle(), "Orva Calendar Help ");
    EXPECT_TRUE(dlg->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(testing::spoken_description(dlg.get()), "frmHelpIdx");

    const struct {
        const char* name;
        const char* caption;
    } buttons[] = {{"hlpCmd", "Hide Help Content Topics"},
                   {"priorCmd", "Prior"},
                   {"nextCmd", "Next"},
                   {"prtCmd", "Print"},
                   {"Command1", "Print All"}};
    for (const auto& b : buttons) {
        QPushButton* w = child<QPushButton>(*dlg, b.name);
        ASSERT_NE(w, nullptr);
        EXPECT_EQ(w->text(), b.caption);
        EXPECT_EQ(testing::spoken_name(w), b.caption);
        EXPECT_EQ(testing::spoken_description(w), b.name);
    }
    QTreeWidget* tree = outline(*dlg);
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(testing::spoken_name(tree), "Help topics");
    EXPECT_EQ(testing::spoken_description(tree), "vsHelpIndex");
    auto* text = child<QTextBrowser>(*dlg, "rtfContents");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(testing::spoken_description(text), "rtfContents");
    EXPECT_FALSE(testing::spoken_name(text).isEmpty());
    auto* strip = child<QTabWidget>(*dlg, "TabStrip1");
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->tabText(0), "Contents");
    auto* hidden = child<QTextEdit>(*dlg, "rtfPrint");
    ASSERT_NE(hidden, nullptr);
    EXPECT_FALSE(hidden->isVisible());
    for (const char* picture : {"imgOpenbook", "imgClosebook"}) {
        QLabel* l = child<QLabel>(*dlg, picture);
        ASSERT_NE(l, nullptr);
        EXPECT_FALSE(l->pixmap().isNull()) << picture;
    }
    // Lines at least 400 twips high.
    const int least = 400 * dlg->logicalDpiY() / 1440;
    EXPECT_GE(tree->visualItemRect(item(*dlg, 0)).height(), least);
}

TEST_F(HelpViewer, OpensCollapsedOnTheFirstTopicWithItsLineLit) {
    env.write_small_book();
    auto dlg = open();
    QTreeWidget* tree = outline(*dlg);
    EXPECT_EQ(tree->topLevelItemCount(), 3);
    EXPECT_FALSE(item(*dlg, 1)->isExpanded());
    EXPECT_TRUE(page(*dlg).contains("About Welcome."));
    EXPECT_EQ(tree->currentItem(), item(*dlg, 0));
    EXPECT_EQ(item(*dlg, 0)->background(0).color(), dlg->palette().color(QPalette::Button));
    EXPECT_EQ(item(*dlg, 4)->background(0).color(), dlg->palette().color(QPalette::Base));
    EXPECT_FALSE(child<QPushButton>(*dlg, "priorCmd")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(*dlg, "nextCmd")->isEnabled());
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(HelpViewer, NextIsDisabledAtTheLastLine) {
    env.write_small_book();
    auto dlg = open();
    click_line(*dlg, 1); // the heading opens its group
    click_line(*dlg, 3);
    EXPECT_TRUE(page(*dlg).contains("About Week planner."));
    EXPECT_TRUE(child<QPushButton>(*dlg, "nextCmd")->isEnabled());
    press(*dlg, "nextCmd");
    EXPECT_TRUE(page(*dlg).contains("About Keys."));
    EXPECT_EQ(outline(*dlg)->currentItem(), item(*dlg, 4));
    EXPECT_FALSE(child<QPushButton>(*dlg, "nextCmd")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(*dlg, "priorCmd")->isEnabled());
}

TEST_F(HelpViewer, PriorIsDisabledAtTheFirstLine) {
    env.write_small_book();
    auto dlg = open();
    click_line(*dlg, 4);
    EXPECT_TRUE(child<QPushButton>(*dlg, "priorCmd")->isEnabled());
    press(*dlg, "priorCmd");
    EXPECT_TRUE(page(*dlg).contains("About Week planner."));
    EXPECT_TRUE(item(*dlg, 1)->isExpanded()) << "stepping into a group opens it";
    press(*dlg, "priorCmd");
    press(*dlg, "priorCmd"); // the heading: no page
    EXPECT_TRUE(page(*dlg).contains("About Day planner."));
    EXPECT_TRUE(child<QPushButton>(*dlg, "priorCmd")->isEnabled());
    press(*dlg, "priorCmd");
    EXPECT_TRUE(page(*dlg).contains("About Welcome."));
    EXPECT_FALSE(child<QPushButton>(*dlg, "priorCmd")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(*dlg, "nextCmd")->isEnabled());
}

TEST_F(HelpViewer, AClickOnALabelHeadingChangesNoPage) {
    env.write_small_book();
    auto dlg = open();
    click_line(*dlg, 4);
    const QString before = child<QTextBrowser>(*dlg, "rtfContents")->toHtml();
    click_line(*dlg, 1);
    EXPECT_EQ(child<QTextBrowser>(*dlg, "rtfContents")->toHtml(), before);
    EXPECT_EQ(dlg->form().cur_topic_row, 4);
    EXPECT_EQ(item(*dlg, 4)->background(0).color(), dlg->palette().color(QPalette::Button));
    EXPECT_EQ(item(*dlg, 1)->background(0).color(), dlg->palette().color(QPalette::Base));
    EXPECT_TRUE(item(*dlg, 1)->isExpanded()) << "the heading opened its group instead";
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(HelpViewer, WithTheListHiddenTheTopicFillsTheWindow) {
    env.write_small_book();
    auto dlg = open();
    QWidget* strip = child<QTabWidget>(*dlg, "TabStrip1");
    QWidget* text = child<QTextBrowser>(*dlg, "rtfContents");
    const QRect list_at = in_dialog(*dlg, strip);
    const QRect text_at = in_dialog(*dlg, text);
    ASSERT_GT(text_at.left(), list_at.right()) << "the topic stands right of the list";

    press(*dlg, "hlpCmd");
    QApplication::processEvents();
    EXPECT_FALSE(strip->isVisible());
    EXPECT_FALSE(outline(*dlg)->isVisible());
    EXPECT_EQ(child<QPushButton>(*dlg, "hlpCmd")->text(), "Show Help Content Topics");
    const QRect filled = in_dialog(*dlg, text);
    EXPECT_EQ(filled.left(), list_at.left()) << "the topic takes the list's left";
    EXPECT_EQ(filled.right(), text_at.right());
    EXPECT_EQ(filled.width(), child<QSplitter>(*dlg, "helpSplit")->width());
    EXPECT_EQ(filled.height(), text_at.height());
}

TEST_F(HelpViewer, ShowHelpContentTopicsReturnsToTheEarlierLayout) {
    env.write_small_book();
    auto dlg = open();
    QWidget* strip = child<QTabWidget>(*dlg, "TabStrip1");
    QWidget* text = child<QTextBrowser>(*dlg, "rtfContents");
    const QRect list_at = in_dialog(*dlg, strip);
    const QRect text_at = in_dialog(*dlg, text);

    press(*dlg, "hlpCmd");
    QApplication::processEvents();
    press(*dlg, "hlpCmd");
    QApplication::processEvents();
    EXPECT_TRUE(strip->isVisible());
    EXPECT_EQ(child<QPushButton>(*dlg, "hlpCmd")->text(), "Hide Help Content Topics");
    EXPECT_EQ(in_dialog(*dlg, strip), list_at);
    EXPECT_EQ(in_dialog(*dlg, text), text_at);
}

TEST_F(HelpViewer, CancellingThePrintDialogPrintsNothingAndLeavesNoTemporaryFile) {
    env.write_small_book();
    auto dlg = open();
    click_line(*dlg, 4);
    // Where a print that went ahead all the same would land.
    dlg->form().print_setup = to_pdf("out.pdf");
    const std::string before = env.folder();

    press(*dlg, "prtCmd");
    press(*dlg, "Command1");
    ASSERT_EQ(env.m.print_presets.size(), 2u);
    EXPECT_FALSE(QFile::exists(env.dir.filePath("out.pdf")));
    EXPECT_EQ(env.folder(), before);
    EXPECT_TRUE(env.m.messages().empty());
    EXPECT_TRUE(page(*dlg).contains("About Keys."));
    EXPECT_EQ(outline(*dlg)->currentItem(), item(*dlg, 4));
}

TEST_F(HelpViewer, PrintWritesTheTopicShownToAPdfFile) {
    env.write_small_book();
    auto dlg = open();
    click_line(*dlg, 4);
    env.m.print_answers.push_back(to_pdf("keys.pdf"));
    press(*dlg, "prtCmd");
    ASSERT_EQ(env.m.print_presets.size(), 1u);
    EXPECT_FALSE(env.m.print_presets[0].selection);
    QFile pdf(env.dir.filePath("keys.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
    EXPECT_GT(pdf.size(), 500);
    EXPECT_EQ(pdf_pages(pdf.fileName()), 1);
    EXPECT_TRUE(env.m.messages().empty());
}

TEST_F(HelpViewer, PrintWithTextSelectedOffersTheSelectionAndPrintsIt) {
    env.write_small_book();
    auto dlg = open();
    auto* text = child<QTextBrowser>(*dlg, "rtfContents");
    QTextCursor c = text->document()->find(QStringLiteral("About Welcome."));
    ASSERT_FALSE(c.isNull());
    text->setTextCursor(c);
    PrintSetup selected = to_pdf("part.pdf");
    selected.selection = true;
    env.m.print_answers.push_back(selected);
    press(*dlg, "prtCmd");
    ASSERT_EQ(env.m.print_presets.size(), 1u);
    EXPECT_TRUE(env.m.print_presets[0].selection_enabled) << "the selection is offered";
    EXPECT_TRUE(env.m.print_presets[0].selection) << "and preselected";
    EXPECT_EQ(pdf_pages(env.dir.filePath("part.pdf")), 1);
}

TEST_F(HelpViewer, PrintAllPrintsEveryTopicOnPagesOfItsOwn) {
    env.write_small_book();
    auto dlg = open();
    click_line(*dlg, 4);
    env.m.print_answers.push_back(to_pdf("all.pdf"));
    press(*dlg, "Command1");
    EXPECT_EQ(pdf_pages(env.dir.filePath("all.pdf")), 4) << "four topics, the heading has none";
    EXPECT_EQ(outline(*dlg)->currentItem(), item(*dlg, 4)) << "the cursor comes back";
    EXPECT_TRUE(page(*dlg).contains("About Keys."));
}

TEST_F(HelpViewer, AMissingArchiveOpensTheViewerEmptyAfterBothBoxes) {
    auto dlg = open();
    ASSERT_EQ(env.m.messages().size(), 2u);
    EXPECT_TRUE(env.m.messages()[0].startsWith("Error reading help file; 53  File "));
    EXPECT_TRUE(env.m.messages()[1].startsWith("Error loading help file; 53  File "));
    EXPECT_EQ(outline(*dlg)->topLevelItemCount(), 0);
    EXPECT_TRUE(page(*dlg).isEmpty());
    EXPECT_FALSE(child<QPushButton>(*dlg, "nextCmd")->isEnabled());
    EXPECT_FALSE(child<QPushButton>(*dlg, "priorCmd")->isEnabled());
    press(*dlg, "nextCmd");
    EXPECT_EQ(env.m.messages().size(), 2u);
}

TEST_F(HelpViewer, ShowHelpOpensTheViewerOnTheGivenTopic) {
    env.write_small_book();
    QString shown;
    bool group_open = false, current = false;
    env.m.forms[QStringLiteral("frmHelpIdx")] = [&] {
        FrmHelpIdx dlg(env.app_path(), help);
        shown = page(dlg);
        group_open = item(dlg, 1)->isExpanded();
        current = outline(dlg)->currentItem() == item(dlg, 3);
    };
    show_help(help, QStringLiteral("topics/c.html"));
    EXPECT_TRUE(shown.contains("About Week planner."));
    EXPECT_TRUE(group_open);
    EXPECT_TRUE(current);
    EXPECT_TRUE(help.help_topic.isEmpty());

    show_help(help);
    EXPECT_TRUE(shown.contains("About Welcome."));
}

TEST_F(HelpViewer, KeysMoveTheCursorAndEnterShowsTheTopic) {
    env.write_small_book();
    auto dlg = open();
    QTreeWidget* tree = outline(*dlg);
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_EQ(tree->currentItem(), item(*dlg, 1));
    QTest::keyClick(tree, Qt::Key_Return); // a heading: its group opens
    EXPECT_TRUE(item(*dlg, 1)->isExpanded());
    EXPECT_TRUE(page(*dlg).contains("About Welcome."));
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_TRUE(page(*dlg).contains("About Welcome.")) << "moving shows nothing yet";
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_TRUE(page(*dlg).contains("About Day planner."));
    press(*dlg, "nextCmd");
    EXPECT_TRUE(page(*dlg).contains("About Week planner."));
}

TEST_F(HelpViewer, ALinkInATopicShowsTheTopicItNames) {
    env.write_small_book();
    help.help_topic = QStringLiteral("topics/c.html");
    auto dlg = open();
    auto* text = child<QTextBrowser>(*dlg, "rtfContents");
    const QTextCursor link = text->document()->find(QStringLiteral("the keys"));
    ASSERT_FALSE(link.isNull());
    QTextCursor middle(text->document());
    middle.setPosition((link.selectionStart() + link.selectionEnd()) / 2);
    const QPoint at = text->cursorRect(middle).center();
    QTest::mouseClick(text->viewport(), Qt::LeftButton, {}, at);
    EXPECT_TRUE(page(*dlg).contains("About Keys."));
    EXPECT_EQ(outline(*dlg)->currentItem(), item(*dlg, 4));
}

TEST_F(HelpViewer, TheShippedHelpOpensOnItsWelcomeAndPrintsAllItsTopics) {
    env.copy_shipped_help();
    auto dlg = open();
    EXPECT_TRUE(env.m.shown.empty());
    EXPECT_TRUE(page(*dlg).contains("Welcome to Orva Calendar"));
    int topics = 0;
    for (const HelpLine& line : dlg->form().vsHelpIndex)
        topics += dlg->form().vsHelpHold.TextMatrix(line.index_row, help_col::file) != help_label;
    ASSERT_GT(topics, 30);
    env.m.print_answers.push_back(to_pdf("book.pdf"));
    press(*dlg, "Command1");
    EXPECT_GE(pdf_pages(env.dir.filePath("book.pdf")), topics);
    EXPECT_TRUE(env.m.messages().empty());
}

TEST(AboutDialog, ShowsTheNameTheVersionAndOK) {
    FrmAbout box;
    EXPECT_EQ(box.objectName(), "frmAbout");
    EXPECT_EQ(box.windowTitle(), "About OrvaCal");
    auto* name = box.findChild<QLabel*>(QStringLiteral("lblName"));
    auto* version = box.findChild<QLabel*>(QStringLiteral("lblVersion"));
    auto* ok = box.findChild<QPushButton*>(QStringLiteral("cmdOK"));
    ASSERT_NE(name, nullptr);
    ASSERT_NE(version, nullptr);
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(name->text(), "About OrvaCal");
    EXPECT_EQ(version->text(), "Version " ORVACAL_TEST_VERSION);
    EXPECT_EQ(testing::spoken_name(version), version->text());
    EXPECT_EQ(testing::spoken_name(ok), "OK");
    EXPECT_EQ(testing::spoken_description(ok), "cmdOK");
    box.show();
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_FALSE(box.isVisible());
    EXPECT_EQ(box.result(), QDialog::Accepted);
}

} // namespace
} // namespace orva
