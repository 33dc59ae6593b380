#include "help/help.h"
#include "help/help_topics.h"
#include "help_fixtures.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::HelpEnv;

// The archive the build packs from data/help, as the program ships it.
struct ShippedHelp : ::testing::Test {
    HelpEnv env;
    HelpForm f;
    QSet<QString> indexed; // the files the outline reaches

    void SetUp() override {
        env.copy_shipped_help();
        Form_Load(f, env.app_path());
        ASSERT_TRUE(env.m.shown.empty()) << env.m.shown.front().text.toStdString();
        for (const HelpLine& line : f.vsHelpIndex)
            indexed.insert(f.vsHelpHold.TextMatrix(line.index_row, help_col::file));
        indexed.remove(help_label);
    }
    QStringList members() {
        Archive a;
        a.set_read_only(true);
        return a.members(env.archive());
    }
};

TEST_F(ShippedHelp, EveryMemberIsReachableFromTheIndex) {
    const QStringList all = members();
    ASSERT_FALSE(all.isEmpty());
    EXPECT_TRUE(all.contains(help_index_member));
    for (const QString& m : all) {
        if (m == help_index_member) continue;
        EXPECT_TRUE(indexed.contains(m)) << m.toStdString() << " is in no line of the outline";
    }
}

TEST_F(ShippedHelp, EveryFileOfTheIndexIsAMemberWithAHeading) {
    const QStringList all = members();
    for (const QString& file : indexed) {
        EXPECT_TRUE(all.contains(file)) << file.toStdString();
        EXPECT_TRUE(file.contains(QLatin1Char('/'))) << file.toStdString();
    }
    for (int r = 0; r < int(f.vsHelpIndex.size()); ++r) {
        const QString file =
            f.vsHelpHold.TextMatrix(f.vsHelpIndex[size_t(r)].index_row, help_col::file);
        vsHelpIndex_Click(f, r);
        if (file == help_label) continue;
        EXPECT_EQ(f.topic_name, file);
        EXPECT_TRUE(f.rtfContents.contains(QStringLiteral("<h1>"))) << file.toStdString();
        EXPECT_FALSE(f.vsHelpIndex[size_t(r)].caption.isEmpty());
    }
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(ShippedHelp, ReadingItLeavesTheFileAsItWasWithNothingBesideIt) {
    QFile file(env.archive());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    file.close();
    // Bytes 18 and 19 of the header: 1 for a rollback journal, 2 for WAL,
    // which would need a log and an index beside the file to be read.
    EXPECT_EQ(bytes.at(18), 1);
    EXPECT_EQ(bytes.at(19), 1);
    const std::string before = env.folder();
    for (int r = 0; r < int(f.vsHelpIndex.size()); ++r)
        vsHelpIndex_Click(f, r);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
    EXPECT_EQ(env.folder(), before);
    EXPECT_EQ(before, "Calendar.hlp1 " + std::to_string(bytes.size()));
}

TEST_F(ShippedHelp, TheFirstLineIsATopicAndHeadingsGroupTheRest) {
    ASSERT_GT(f.vsHelpIndex.size(), 30u);
    EXPECT_EQ(f.vsHelpHold.TextMatrix(1, help_col::file), "topics/welcome.html");
    EXPECT_TRUE(f.rtfContents.contains("Welcome to Orva Calendar"));
    int headings = 0;
    for (const HelpLine& line : f.vsHelpIndex)
        headings += f.vsHelpHold.TextMatrix(line.index_row, help_col::file) == help_label;
    EXPECT_GE(headings, 5);
}

TEST_F(ShippedHelp, EveryCommandHasATopicTheOutlineReaches) {
    ASSERT_FALSE(command_topics().empty());
    for (const auto& [name, topic] : command_topics())
        EXPECT_TRUE(indexed.contains(topic)) << name.toStdString() << " -> " << topic.toStdString();
}

TEST_F(ShippedHelp, EveryFormHasATopicTheOutlineReaches) {
    for (const char* form : {"frmCal", "frmAppt1", "frmQuick", "frmNotes", "frmOccurs", "frmRem1",
                             "frmRemnote", "frmReRmdr", "frmAnimate", "frmRemList", "frmSearch",
                             "frmToDo", "frmTzone", "frmFonts", "frmHelpIdx", "frmAbout"}) {
        const QString topic = topic_of_form(QString::fromLatin1(form));
        EXPECT_TRUE(indexed.contains(topic)) << form << " -> " << topic.toStdString();
    }
}

TEST_F(ShippedHelp, EveryLinkInATopicLeadsToATopicOfTheIndex) {
    static const QRegularExpression href(QStringLiteral("href=\"([^\"]*)\""));
    int links = 0;
    for (const QString& file : indexed) {
        QByteArray bytes;
        ASSERT_EQ(read_help_member(env.app_path(), file, bytes), 0);
        for (auto it = href.globalMatch(QString::fromUtf8(bytes)); it.hasNext(); ++links) {
            const QString to = it.next().captured(1);
            EXPECT_TRUE(indexed.contains(to)) << file.toStdString() << " -> " << to.toStdString();
        }
    }
    EXPECT_GT(links, 50);
}

TEST_F(ShippedHelp, EveryKeyOfTheMenuTableTheToolPicturesAndTheTrayHasATopic) {
    const char* keys[] = {
        "mnuFile", "mnuOpen", "mnuNew", "mnuFileDelCal", "mnuFilePrint", "mnuExit", "mnuEdit",
        "mnuadd", "mnuCopy", "mnuEditA", "mnudelete", "mnuFind", "mnuOpts", "mnuTips",
        "mnuShowTimes", "mnuStat", "mnuStart", "mnuRestore", "mnuView", "mnuPlanners",
        "mnuDplanner", "mnuWplanner", "mnuMplanner", "mnuTlist", "mnuTzone", "mnuRemList",
        "mnuCustom", "mnuColor", "mnuBackc", "mnuColorY", "mnuNoColor", "mnuColorSelect",
        "mnuFonts", "mnuThemes", "blueIce", "mnuCamelion", "mnuForest", "mnuHoliday", "mnuEaster",
        "mnuChristmas", "mnuHallo", "mnuNewYear", "mnuStPat", "mnuSkinVal", "mnuThanks",
        "usapatriat", "mnuTrans", "mnuSunnyDays", "mnuStdWindows", "mnuHelp", "mnuHelpabout",
        "mnuContents", "mnuspacer1", "mnuHide", "mnuRem", "sysmenu",
        // the tool pictures
        "imageDay", "imageWeek", "imageMonth", "imageReminder", "imageClock", "imageFind",
        "imagePrint", "ImageArrow", "imgRem", "imgSkins", "imgTzone", "imgTlist", "Image3",
        "imgPriorMth", "imgNextMth",
        // the tray menu
        "sysAbout", "sysCalender", "sysRem", "sysTlist", "sysTzone", "sysSearch", "sysmnuRestore",
        "sysHelp", "sysExit"};
    for (const char* key : keys) {
        const QString topic = topic_of_command(QString::fromLatin1(key));
        EXPECT_FALSE(topic.isEmpty()) << key << " has no topic";
        EXPECT_TRUE(topic.isEmpty() || indexed.contains(topic))
            << key << " -> " << topic.toStdString();
    }
}

TEST(CommandTopics, NamesWithoutATopicHaveNone) {
    EXPECT_EQ(topic_of_command("mnuOpen"), "topics/calendar_files.html");
    EXPECT_EQ(topic_of_command("Image3"), "topics/help_viewer.html");
    EXPECT_EQ(topic_of_command("sysExit"), "topics/exiting.html");
    EXPECT_TRUE(topic_of_command("noSuchCommand").isEmpty());
    EXPECT_TRUE(topic_of_form("frmNone").isEmpty());
}

} // namespace
} // namespace orva
