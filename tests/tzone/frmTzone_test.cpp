#include "../support/accessible.h"
#include "core/ui/qt_modal.h"
#include "state/app_state.h"
#include "tzone/ui/frmTzone.h"
#include "tzone_fixtures.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::TzoneEnv;

struct FrmTzoneDialog : ::testing::Test {
    TzoneEnv env;

    FrmTzoneDialog() { testing::write_zone_table(env.app_path(), testing::small_world()); }

    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    static QString text(QWidget& dlg, const char* name) {
        if (auto* e = dlg.findChild<QLineEdit*>(QString::fromLatin1(name))) return e->text();
        if (auto* l = dlg.findChild<QLabel*>(QString::fromLatin1(name))) return l->text();
        ADD_FAILURE() << "no control " << name;
        return {};
    }
    // Clicks the item with that name, as the user picks a zone.
    static void pick(QListWidget* list, const QString& name) {
        const QList<QListWidgetItem*> found = list->findItems(name, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << name.toStdString();
        list->scrollToItem(found[0]);
        const QRect cell = list->visualItemRect(found[0]);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell.center());
        ASSERT_EQ(list->currentItem(), found[0]);
    }
};

TEST_F(FrmTzoneDialog, ControlsAreFoundByTheirNames) {
    FrmTzone dlg(env.app_path());
    EXPECT_EQ(dlg.objectName(), "frmTzone");
    EXPECT_EQ(dlg.windowTitle(), "Tzone - Find dates and times around the World");
    for (const char* name : {"List1", "List2"})
        ASSERT_TRUE(child<QListWidget>(dlg, name));
    for (const char* name : {"Text1", "Text2", "Text3", "Text4"})
        ASSERT_TRUE(child<QLineEdit>(dlg, name));
    for (const char* name : {"Label2", "lblTz24", "Label3", "Label4", "zone124Lbl", "zone224lbl"})
        ASSERT_TRUE(child<QLabel>(dlg, name));
    for (const char* name : {"mnuExit", "mnuAbout", "mnuContent"})
        EXPECT_NE(dlg.findChild<QAction*>(QString::fromLatin1(name)), nullptr) << name;
    auto* calc = child<QPushButton>(dlg, "Command1");
    ASSERT_TRUE(calc);
    EXPECT_EQ(calc->text(), "Calculate Time Difference");
    EXPECT_EQ(testing::spoken_description(calc), "Command1");
    EXPECT_EQ(testing::spoken_name(child<QListWidget>(dlg, "List1")), "Time zone 1");
    EXPECT_EQ(testing::spoken_description(child<QListWidget>(dlg, "List2")), "List2");
    QStringList labels;
    for (QLabel* l : dlg.findChildren<QLabel*>())
        labels << l->text();
    for (const char* caption :
         {"Time Zone 1:", "Time Zone 2 :", "Current Time Zone:", "What Time is it in:"})
        EXPECT_TRUE(labels.contains(QString::fromLatin1(caption))) << caption;
}

TEST_F(FrmTzoneDialog, ShowsTheLocalTimeAndTheSortedZones) {
    FrmTzone dlg(env.app_path());
    EXPECT_EQ(text(dlg, "lblTz24"), "14:05:09  (24 hour)");
    EXPECT_TRUE(text(dlg, "Label2").startsWith("02:05 PM  "));
    EXPECT_EQ(text(dlg, "Text2"), dlg.form().Text2);
    EXPECT_FALSE(text(dlg, "Text2").isEmpty());
    auto* list1 = child<QListWidget>(dlg, "List1");
    ASSERT_TRUE(list1);
    ASSERT_EQ(list1->count(), 4);
    EXPECT_EQ(list1->item(0)->text(), "Berlin, Germany");
    EXPECT_EQ(list1->item(3)->text(), "New York, United States");
    EXPECT_EQ(list1->currentRow(), -1);
}

TEST_F(FrmTzoneDialog, PickingTwoZonesAndCalculatingShowsTheSentence) {
    FrmTzone dlg(env.app_path());
    dlg.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dlg));
    pick(child<QListWidget>(dlg, "List1"), "Colombo, Sri Lanka");
    EXPECT_EQ(text(dlg, "zone124Lbl"), "07/15/26  19:35:09 (24 hour)");
    EXPECT_EQ(text(dlg, "Text3"), " ");
    pick(child<QListWidget>(dlg, "List2"), "Berlin, Germany");
    EXPECT_EQ(text(dlg, "zone224lbl"), "07/15/26  16:05:09 (24 hour)");

    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(text(dlg, "Text1"), "Colombo, Sri Lanka");
    EXPECT_EQ(text(dlg, "Text3"), "is 3.5 Hour Later than");
    EXPECT_EQ(text(dlg, "Text4"), "Berlin, Germany");
    EXPECT_TRUE(env.m.shown.empty());

    pick(child<QListWidget>(dlg, "List2"), "GMT");
    EXPECT_EQ(text(dlg, "Text1"), " ") << "a click blanks the sentence";
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(text(dlg, "Text3"), "is 5.5 Hour Later than");
    EXPECT_EQ(text(dlg, "Text4"), "GMT");
}

TEST_F(FrmTzoneDialog, CalculateWithoutZonesWarnsAndShowsNoSentence) {
    FrmTzone dlg(env.app_path());
    dlg.show();
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(env.m.messages(), std::vector<QString>{"Select from Time Zone 1"});
    pick(child<QListWidget>(dlg, "List1"), "GMT");
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(env.m.messages(),
              (std::vector<QString>{"Select from Time Zone 1", "Select from Time Zone 2"}));
    EXPECT_EQ(text(dlg, "Text1"), " ");
    EXPECT_EQ(text(dlg, "Text3"), " ");
}

TEST_F(FrmTzoneDialog, MissingTableSaysSoAndLeavesTheListsEmpty) {
    QTemporaryDir empty;
    FrmTzone dlg(empty.path());
    EXPECT_EQ(env.m.messages(),
              std::vector<QString>{"File not found: " + empty.path() + "/Tzones.ach"});
    EXPECT_EQ(child<QListWidget>(dlg, "List1")->count(), 0);
    EXPECT_EQ(child<QListWidget>(dlg, "List2")->count(), 0);
}

TEST_F(FrmTzoneDialog, HelpButtonAndContentsShowTheHelpAndAboutTheProductLine) {
    FrmTzone dlg(env.app_path());
    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    dlg.findChild<QAction*>("mnuContent")->trigger();
    dlg.findChild<QAction*>("mnuAbout")->trigger();
    const std::vector<QString> shown = env.m.messages();
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[0], tzone_help_text);
    EXPECT_EQ(shown[1], tzone_help_text);
    EXPECT_EQ(shown[2], "Orva Calendar - Tzone");
}

TEST_F(FrmTzoneDialog, ExitClosesTheWindow) {
    FrmTzone dlg(env.app_path());
    dlg.show();
    ASSERT_TRUE(dlg.isVisible());
    dlg.findChild<QAction*>("mnuExit")->trigger();
    EXPECT_FALSE(dlg.isVisible());
}

TEST_F(FrmTzoneDialog, OpensThroughTheSeamByItsName) {
    QtModal qt;
    testing::ModalGuard seam{&qt};
    AppState s;
    s.app_path = env.app_path();
    register_frmTzone(qt, s);
    int zones = -1;
    QString title;
    QTimer::singleShot(0, [&] {
        auto* form = qobject_cast<FrmTzone*>(QApplication::activeModalWidget());
        if (!form) return;
        title = form->windowTitle();
        zones = form->findChild<QListWidget*>("List1")->count();
        form->reject();
    });
    qt.open_form(QStringLiteral("frmTzone"));
    EXPECT_EQ(title, "Tzone - Find dates and times around the World");
    EXPECT_EQ(zones, 4);
}

} // namespace
} // namespace orva
