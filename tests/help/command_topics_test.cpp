#include "core/clock.h"
#include "help/help_topics.h"
#include "help_fixtures.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"

#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::HelpEnv;

// The real main window, walked for every command it offers: each must have a
// topic, and that topic must be a line of the shipped help's outline.
struct EveryCommand : ::testing::Test {
    HelpEnv env;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    AppState state;
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<frmCal> window;
    QSet<QString> indexed;

    void SetUp() override {
        install_clock(&clk);
        env.copy_shipped_help();
        HelpForm f;
        Form_Load(f, env.app_path());
        for (const HelpLine& line : f.vsHelpIndex)
            indexed.insert(f.vsHelpHold.TextMatrix(line.index_row, help_col::file));
        state.app_path = env.app_path();
        instance = std::make_unique<SingleInstance>(env.app_path());
        window = std::make_unique<frmCal>(state);
        ASSERT_TRUE(window->start(*instance));
    }
    void TearDown() override {
        window.reset();
        install_clock(nullptr);
    }

    // A menu entry's program name: the action's own, or for a sub-menu the
    // menu's. Separators and blank spacers are no commands.
    static void walk(QMenu* menu, QStringList& names) {
        for (QAction* a : menu->actions()) {
            if (a->isSeparator()) continue;
            QString name = a->objectName();
            if (name.isEmpty() && a->menu()) name = a->menu()->objectName();
            if (!name.isEmpty() && !a->text().isEmpty()) names << name;
            if (a->menu()) walk(a->menu(), names);
        }
    }
    QStringList commands() const {
        QStringList names;
        for (QAction* a : window->menuBar()->actions()) {
            if (a->isSeparator()) continue;
            QString name = a->objectName();
            if (name.isEmpty() && a->menu()) name = a->menu()->objectName();
            if (!name.isEmpty() && !a->text().isEmpty()) names << name;
            if (a->menu()) walk(a->menu(), names);
        }
        // Pop-ups and the tray menu, wherever they hang.
        for (QMenu* m : window->findChildren<QMenu*>())
            walk(m, names);
        // The program's pictures carry their name as their description too;
        // Qt's own buttons (a tab bar's scroll arrows) do not.
        for (QToolButton* b : window->findChildren<QToolButton*>())
            if (!b->objectName().isEmpty() && b->accessibleDescription() == b->objectName())
                names << b->objectName();
        names.removeDuplicates();
        return names;
    }
};

TEST_F(EveryCommand, OfTheMainWindowHasATopicTheHelpOutlineReaches) {
    const QStringList names = commands();
    for (const char* known : {"mnuOpen", "mnuExit", "mnuadd", "mnuTips", "mnuThemes",
                              "mnuStdWindows", "imageDay", "imageFind", "imgTlist", "imgDtlNext"})
        EXPECT_TRUE(names.contains(QString::fromLatin1(known))) << known << " was not found";
    ASSERT_GT(names.size(), 40);
    for (const QString& name : names) {
        const QString topic = topic_of_command(name);
        EXPECT_FALSE(topic.isEmpty()) << name.toStdString() << " has no help topic";
        EXPECT_TRUE(topic.isEmpty() || indexed.contains(topic))
            << name.toStdString() << " -> " << topic.toStdString() << " is not in help.idx";
    }
}

} // namespace
} // namespace orva
