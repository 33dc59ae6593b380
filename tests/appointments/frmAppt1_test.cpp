#include "../appointments/editor_fixtures.h"
#include "../support/accessible.h"
#include "../support/typing.h"
#include "appointments/ui/frmAppt1.h"
#include "core/ui/qt_modal.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimeEdit>
#include <QTimer>
#include <QToolButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::EditorEnv;

struct FrmAppt1Dialog : ::testing::Test {
    EditorEnv env;
    AppState& s = env.s;

    void hand_over_new(const QString& start) {
        orva::hand_over_new(s.store(), s.editing());
        s.edit_start = start;
    }
    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
};

TEST_F(FrmAppt1Dialog, ControlsCarryTheirNamesCaptionsAndTips) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    EXPECT_EQ(dlg.objectName(), "frmAppt1");
    EXPECT_EQ(dlg.windowTitle(), "New Appointment");
    // Boxes and pickers are spoken by what they are for, buttons by their
    // caption or, with only a picture, their tip; the program name is the
    // description.
    const struct {
        const char* name;
        const char* tip;
        const char* spoken;
    } tips[] = {
        {"Text1", "Appointment description or subject.", "Description"},
        {"typeIcombo", "Appointment Icons", "Sticker"},
        {"apptDTPicker",
         "For single appts this is appt date.  For recurring appts, this is the original appt "
         "date.",
         "Start date"},
        {"aptTimePick1", "Start time", "Start time"},
        {"aptTimePick2", "End Time", "End time"},
        {"Check1", "Appointment has a specific time", "Timed"},
        {"Check2", "All day event ", "All Day"},
        {"txtApptDt", "Actual appointment date.", "Appointment date"},
        {"Command4", "Set recurring appointment", "Set recurring appointment"},
        {"cmdRem", "Add or Edit Reminders", "Add or Edit Reminders"},
        {"Image6", "Edit Notes", "Edit Notes"},
    };
    for (const auto& t : tips) {
        QWidget* w = child<QWidget>(dlg, t.name);
        ASSERT_NE(w, nullptr);
        EXPECT_EQ(w->toolTip(), t.tip) << t.name;
        EXPECT_EQ(testing::spoken_name(w), t.spoken) << t.name;
        EXPECT_EQ(testing::spoken_description(w), t.name);
    }
    EXPECT_EQ(testing::spoken_name(child<QPushButton>(dlg, "Command1")), "OK");
    EXPECT_EQ(testing::spoken_description(child<QPushButton>(dlg, "Command1")), "Command1");
    EXPECT_EQ(testing::spoken_name(child<QLabel>(dlg, "lblDateTime")), "Start Date:");
    EXPECT_EQ(testing::spoken_description(child<QLabel>(dlg, "lblDateTime")), "lblDateTime");
    EXPECT_EQ(testing::spoken_name(&dlg), "New Appointment");
    EXPECT_EQ(testing::spoken_description(&dlg), "frmAppt1");
    EXPECT_EQ(child<QCheckBox>(dlg, "Check1")->text(), "Timed");
    EXPECT_EQ(child<QCheckBox>(dlg, "Check2")->text(), "All Day");
    EXPECT_EQ(child<QPushButton>(dlg, "Command1")->text(), "OK");
    EXPECT_TRUE(child<QPushButton>(dlg, "Command1")->isDefault());
    EXPECT_EQ(child<QPushButton>(dlg, "Command2")->text(), "Cancel");
    EXPECT_EQ(child<QPushButton>(dlg, "delCmd")->text(), "Delete  ");
    EXPECT_EQ(child<QLabel>(dlg, "lblDateTime")->text(), "Start Date:");
    EXPECT_EQ(child<QLabel>(dlg, "lblApptDt")->text(), "Appt Date:");
}

TEST_F(FrmAppt1Dialog, NewEntryShowsThePromptWithDeleteDisabledAndNoOccurrenceDate) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    dlg.show();
    EXPECT_EQ(child<QLineEdit>(dlg, "Text1")->text(), "Type a description into this box...");
    EXPECT_FALSE(child<QPushButton>(dlg, "delCmd")->isEnabled());
    EXPECT_FALSE(child<QLineEdit>(dlg, "txtApptDt")->isVisible());
    EXPECT_EQ(child<QTimeEdit>(dlg, "aptTimePick1")->time(), QTime(9, 30));
    EXPECT_TRUE(child<QCheckBox>(dlg, "Check1")->isChecked());
    EXPECT_EQ(child<QLabel>(dlg, "lblOccur")->text(),
              "Click button to add recurring appointments.");
    EXPECT_EQ(child<QLabel>(dlg, "lblRem")->text(),
              "No reminders for this appointment. Click button to add.");
    EXPECT_EQ(s.appt_form, &dlg.form());
}

TEST_F(FrmAppt1Dialog, ClearingTimedDisablesThePickersAndAllDay) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    dlg.show();
    child<QCheckBox>(dlg, "Check1")->click();
    EXPECT_FALSE(child<QTimeEdit>(dlg, "aptTimePick1")->isEnabled());
    EXPECT_FALSE(child<QTimeEdit>(dlg, "aptTimePick2")->isEnabled());
    EXPECT_FALSE(child<QCheckBox>(dlg, "Check2")->isEnabled());
    EXPECT_EQ(child<QTimeEdit>(dlg, "aptTimePick1")->time(), QTime(0, 0));
}

TEST_F(FrmAppt1Dialog, ChangingTheStartDragsTheEndAlong) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    child<QTimeEdit>(dlg, "aptTimePick1")->setTime(QTime(11, 0));
    EXPECT_EQ(child<QTimeEdit>(dlg, "aptTimePick2")->time(), QTime(11, 0));
}

TEST_F(FrmAppt1Dialog, OkSavesWhatWasTypedAndClosesTheDialog) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    dlg.show();
    auto* text = child<QLineEdit>(dlg, "Text1");
    text->clear();
    QTest::keyClicks(text, "Piano lesson");
    child<QTimeEdit>(dlg, "aptTimePick2")->setTime(QTime(10, 30));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_text.trimmed(), "Piano lesson");
    EXPECT_EQ(rows[0].appt_start.str(), "09:30");
    EXPECT_EQ(rows[0].appt_end.str(), "10:30");
    EXPECT_TRUE(s.timer1_enabled);
}

TEST_F(FrmAppt1Dialog, Utf8TypedDescriptionAndNotesAreSavedAsTyped) {
    const QStringList texts = testing::texts_in_many_scripts();
    for (const QString& typed : texts) {
        hand_over_new(QStringLiteral("09:30"));
        FrmAppt1 dlg(s);
        dlg.show();
        auto* text = child<QLineEdit>(dlg, "Text1");
        auto* notes = child<QLineEdit>(dlg, "Notes");
        ASSERT_TRUE(text && notes);
        text->clear();
        testing::type_text(text, typed);
        notes->clear();
        testing::type_text(notes, typed + " notes");
        EXPECT_EQ(text->text(), typed);
        QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
        EXPECT_EQ(dlg.result(), QDialog::Accepted);
        env.clock.advance_secs(1);
    }
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), size_t(texts.size()));
    for (int i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(QByteArray(rows[i].appt_text.c, 50), texts[i].toUtf8().leftJustified(50, ' '));
        EXPECT_EQ(rows[i].appt_notes.trimmed(), texts[i] + " notes");
    }
}

TEST_F(FrmAppt1Dialog, Utf8DescriptionAndNotesStopAtTheirBytesBetweenCharacters) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    dlg.show();
    auto* text = child<QLineEdit>(dlg, "Text1");
    auto* notes = child<QLineEdit>(dlg, "Notes");
    ASSERT_TRUE(text && notes);

    // Plain letters still stop at fifty.
    text->clear();
    testing::type_text(text, QString(60, u'x'));
    EXPECT_EQ(text->text(), QString(50, u'x'));

    // 26 Greek letters are 52 bytes: the last one finds no room.
    text->clear();
    testing::type_text(text, QStringLiteral("αβγδεζηθικλμνξοπρστυφχψωάέ"));
    EXPECT_EQ(text->text(), QStringLiteral("αβγδεζηθικλμνξοπρστυφχψωά"));

    text->clear();
    testing::type_text(text, QString(47, u'x') + QStringLiteral("🎉"));
    EXPECT_EQ(text->text(), QString(47, u'x'));

    // A paste loses the end of what it brought, not the text after it.
    text->setText(QStringLiteral("abc"));
    text->setCursorPosition(1);
    text->insert(QString(60, u'Ж'));
    EXPECT_EQ(text->text(), QStringLiteral("a") + QString(23, u'Ж') + QStringLiteral("bc"));

    notes->clear();
    testing::type_text(notes, QString(67, u'会'));
    EXPECT_EQ(notes->text(), QString(66, u'会'));

    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    const auto rows = env.all_appts();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].appt_text.str(),
              QStringLiteral("a") + QString(23, u'Ж') + QStringLiteral("bc "));
    EXPECT_EQ(QByteArray(rows[0].appt_notes.c, 200), QString(66, u'会').toUtf8() + "  ");
}

TEST_F(FrmAppt1Dialog, RefusedTimesKeepTheDialogOpen) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    dlg.show();
    child<QTimeEdit>(dlg, "aptTimePick2")->setTime(QTime(8, 0));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(dlg.isVisible());
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "End time is less than Start Time");
    EXPECT_TRUE(env.all_appts().empty());
}

TEST_F(FrmAppt1Dialog, EscapeIsCancelAndLeavesTheTickOff) {
    env.add(env.entry("k1", "10:00", "11:00", "Dentist"));
    s.appt_copy = true;
    s.new_appt = true;
    s.edit_index = env.row_of("k1");
    {
        FrmAppt1 dlg(s);
        dlg.show();
        EXPECT_EQ(dlg.windowTitle(), "Copy Appointment to:");
        QTest::keyClick(&dlg, Qt::Key_Escape);
        EXPECT_EQ(dlg.result(), QDialog::Rejected);
    }
    EXPECT_FALSE(s.appt_copy);
    EXPECT_FALSE(s.timer1_enabled);
    EXPECT_EQ(s.appt_form, nullptr);
    EXPECT_EQ(env.all_appts().size(), 1u);
}

TEST_F(FrmAppt1Dialog, DeleteButtonDeletesAndClosesOnYes) {
    env.add(env.entry("k1", "10:00", "11:00", "Dentist"));
    s.new_appt = false;
    s.edit_index = env.row_of("k1");
    FrmAppt1 dlg(s);
    dlg.show();
    env.m.answers.push_back(Answer::Yes);
    QTest::mouseClick(child<QPushButton>(dlg, "delCmd"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
    EXPECT_TRUE(env.all_appts().empty());
}

TEST_F(FrmAppt1Dialog, RecurrenceButtonShowsWhatTheRuleDialogLeft) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    env.m.forms["frmOccurs"] = [&] { s.appt_form->lblOccur = QStringLiteral("rule set"); };
    QTest::mouseClick(child<QToolButton>(dlg, "Command4"), Qt::LeftButton);
    EXPECT_EQ(child<QLabel>(dlg, "lblOccur")->text(), "rule set");
}

TEST_F(FrmAppt1Dialog, NothingOverlaps) {
    env.add(env.entry("k1", "10:00", "11:00", "Dentist"));
    s.new_appt = false;
    s.edit_index = env.row_of("k1");
    FrmAppt1 dlg(s);
    dlg.show();
    QList<QWidget*> shown;
    for (QWidget* w : dlg.findChildren<QWidget*>())
        if (w->isVisible() && w->parentWidget() == &dlg && !w->objectName().isEmpty() &&
            !w->objectName().startsWith("qt_"))
            shown << w;
    for (int i = 0; i < shown.size(); ++i)
        for (int j = i + 1; j < shown.size(); ++j)
            EXPECT_FALSE(shown[i]->geometry().intersects(shown[j]->geometry()))
                << shown[i]->objectName().toStdString() << " / "
                << shown[j]->objectName().toStdString();
}

TEST_F(FrmAppt1Dialog, OpensThroughTheSeam) {
    QtModal modal;
    register_frmAppt1(modal, s);
    hand_over_new(QStringLiteral("09:30"));
    QString title;
    QTimer::singleShot(0, [&] {
        if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            title = d->windowTitle();
            d->reject();
        }
    });
    modal.open_form("frmAppt1");
    EXPECT_EQ(title, "New Appointment");
}

TEST_F(FrmAppt1Dialog, HelpOpensTheHelpViewerOnTheEditorsTopic) {
    hand_over_new(QStringLiteral("09:30"));
    FrmAppt1 dlg(s);
    dlg.show();
    QString handed;
    env.m.forms[QStringLiteral("frmHelpIdx")] = [&] { handed = s.help_topic; };
    QPushButton* help = child<QPushButton>(dlg, "Command3");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->text(), "Help");
    QTest::mouseClick(help, Qt::LeftButton);
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmHelpIdx");
    EXPECT_EQ(handed, "topics/add_appointment.html");
    EXPECT_TRUE(dlg.isVisible()) << "help leaves the editor open";
}

} // namespace
} // namespace orva
