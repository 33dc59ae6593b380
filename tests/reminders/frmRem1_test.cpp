#include "../support/accessible.h"
#include "../support/typing.h"
#include "../views/view_fixtures.h"
#include "core/ui/qt_modal.h"
#include "reminders/ui/frmRem1.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <cstdlib>

namespace orva {
namespace {

using testing::ViewEnv;

struct FrmRem1Dialog : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;
    ApptForm editor;

    // The editor open on a stored entry of 03/20/2026 from 14:30 to 15:00
    // with a reminder of 15 minutes.
    void editing(bool is_new = false) {
        s.new_appt = is_new;
        s.rem_from = QStringLiteral("apptfrm");
        s.appt_count = 1;
        appt_rec& a = *s.appt_row(1);
        a = testing::make_appt(QStringLiteral("03202026"), QStringLiteral("200930000312"),
                               QStringLiteral("14:30"), QStringLiteral("Dentist"));
        s.edit_index = 1;
        editor.Text1 = QStringLiteral("Dentist");
        editor.apptDTPicker = QDate(2026, 3, 20);
        editor.aptTimePick1 = QTime(14, 30);
        editor.aptTimePick2 = QTime(15, 0);
        editor.Check1 = true;
        s.appt_form = &editor;
        s.rem_lead = 15;
        s.rem_unit = 0;
        s.rem_anim = 2;
        s.rem_sound = QStringLiteral("/home/me/ring.wav");
        s.day_filled = true;
        s.anim_speed = 3;
    }
    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    static QStringList items(QComboBox* c) {
        QStringList out;
        for (int i = 0; i < c->count(); ++i)
            out << c->itemText(i);
        return out;
    }
};

TEST_F(FrmRem1Dialog, ControlsAreFoundByTheirNames) {
    editing();
    FrmRem1 dlg(s);
    EXPECT_EQ(dlg.objectName(), "frmRem1");
    const struct {
        const char* name;
        QString spoken; // empty: the control's own text
    } controls[] = {
        {"advComboN", "Reminder lead"},
        {"advComboInt", "Reminder lead unit"},
        {"animateIcombo", "Animated messenger"},
        {"alarmTxt", "Alarm sound file"},
        {"Slider1", "Messenger speed"},
        {"Command5", "Browse"},
        {"prevwCmd0", "Preview"},
        {"prevwCmd1", "Preview"},
        {"Command1", "OK"},
        {"Command2", "Cancel"},
        {"Label10", "Alarm Sounds  "},
        {"lblAppt", {}},
        {"lblRemindMe", {}},
        {"lblNtimes", {}},
        {"Frame1", "Special Effects (Optional):"},
    };
    for (const auto& c : controls) {
        QWidget* w = child<QWidget>(dlg, c.name);
        ASSERT_NE(w, nullptr);
        const QString spoken = c.spoken.isEmpty() ? qobject_cast<QLabel*>(w)->text() : c.spoken;
        EXPECT_EQ(testing::spoken_name(w), spoken) << c.name;
        EXPECT_EQ(testing::spoken_description(w), QString::fromLatin1(c.name));
    }
    EXPECT_FALSE(child<QLabel>(dlg, "lblAppt")->text().isEmpty());
    EXPECT_EQ(testing::spoken_description(&dlg), "frmRem1");
}

TEST_F(FrmRem1Dialog, CaptionsAndToolTipsAreAsTheProgramWritesThem) {
    editing();
    FrmRem1 dlg(s);
    EXPECT_EQ(child<QPushButton>(dlg, "Command5")->text(), "Browse");
    EXPECT_EQ(child<QPushButton>(dlg, "prevwCmd0")->text(), "Preview");
    EXPECT_EQ(child<QPushButton>(dlg, "prevwCmd1")->text(), "Preview");
    EXPECT_EQ(child<QPushButton>(dlg, "prevwCmd1")->toolTip(),
              "Preview selected animated messenger.");
    EXPECT_EQ(child<QPushButton>(dlg, "Command1")->text(), "OK");
    EXPECT_TRUE(child<QPushButton>(dlg, "Command1")->isDefault());
    EXPECT_EQ(child<QPushButton>(dlg, "Command2")->text(), "Cancel");
    EXPECT_EQ(child<QSlider>(dlg, "Slider1")->toolTip(), "Adjust speed of animated messenger");
    EXPECT_EQ(child<QLineEdit>(dlg, "alarmTxt")->toolTip(),
              "The selected wav file will be played when the pop-up reminder is displayed");
    EXPECT_EQ(child<QLabel>(dlg, "Label10")->toolTip(),
              "This sound will play when the pop-up reminder is displayed");
    EXPECT_EQ(child<QLabel>(dlg, "Label10")->text(), "Alarm Sounds  ");
    EXPECT_EQ(child<QComboBox>(dlg, "animateIcombo")->toolTip(),
              "An animated messenger that will play immediately before the pop-up reminder is "
              "displayed");
    QStringList frames;
    for (QGroupBox* g : dlg.findChildren<QGroupBox*>())
        frames << g->title();
    EXPECT_EQ(frames, QStringList{"Special Effects (Optional):"});
    QStringList labels;
    for (QLabel* l : dlg.findChildren<QLabel*>())
        labels << l->text();
    EXPECT_TRUE(labels.contains("Animated messengers:"));
}

TEST_F(FrmRem1Dialog, SoundPreviewWithNoFileChosenWarns) {
    editing(true);
    s.rem_sound.clear();
    FrmRem1 dlg(s);
    QTest::mouseClick(child<QPushButton>(dlg, "prevwCmd0"), Qt::LeftButton);
    ASSERT_NE(env.m.last(u"message"), nullptr);
    EXPECT_EQ(env.m.last(u"message")->text, "You must select a file ");
    EXPECT_EQ(env.m.last(u"message")->style, MsgStyle::Warning);
    EXPECT_EQ(env.m.last(u"form"), nullptr);
}

TEST_F(FrmRem1Dialog, MessengerPreviewFliesTheChosenMessengerThenShowsTheNote) {
    editing();
    FrmRem1 dlg(s);
    auto* list = child<QComboBox>(dlg, "animateIcombo");
    list->setCurrentIndex(2);
    QStringList order;
    env.m.forms["frmAnimate"] = [&] { order << "frmAnimate " + s.msg_anim; };
    env.m.forms["frmRemnote"] = [&] { order << (s.preview_anim ? "preview note" : "note"); };
    QTest::mouseClick(child<QPushButton>(dlg, "prevwCmd1"), Qt::LeftButton);
    EXPECT_EQ(order, (QStringList{"frmAnimate 3", "preview note"}));
}

TEST_F(FrmRem1Dialog, ListsAreFilledAndShowTheWorkingValues) {
    editing();
    FrmRem1 dlg(s);
    auto* amount = child<QComboBox>(dlg, "advComboN");
    auto* unit = child<QComboBox>(dlg, "advComboInt");
    auto* anim = child<QComboBox>(dlg, "animateIcombo");
    ASSERT_TRUE(amount && unit && anim);
    EXPECT_EQ(amount->count(), 60);
    EXPECT_EQ(amount->itemText(59), "59");
    EXPECT_FALSE(amount->isEditable()) << "no amount above 59 can be typed in";
    EXPECT_EQ(amount->currentText(), "15");
    EXPECT_EQ(items(unit), QStringList({"Minutes before", "Hours before", "Days before"}));
    EXPECT_EQ(unit->currentIndex(), 0);
    EXPECT_EQ(items(anim),
              QStringList({" None", " Plane Towing USA Banner", " Plane with no Banner"}));
    EXPECT_EQ(anim->currentIndex(), 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(anim->itemIcon(i).isNull()) << i;
    EXPECT_EQ(anim->itemData(2).toString(), "Plane");
    EXPECT_EQ(child<QSlider>(dlg, "Slider1")->value(), 3);
    EXPECT_EQ(child<QSlider>(dlg, "Slider1")->minimum(), 1);
    EXPECT_EQ(child<QSlider>(dlg, "Slider1")->maximum(), 10);
}

TEST_F(FrmRem1Dialog, TitleAndLabelsComeFromTheEditor) {
    editing();
    FrmRem1 dlg(s);
    EXPECT_EQ(dlg.windowTitle(), "Reminder Setup for - Dentist");
    EXPECT_EQ(child<QLabel>(dlg, "lblAppt")->text(), "  02:30 pm   03/20/2026");
    EXPECT_EQ(child<QLabel>(dlg, "lblRemindMe")->text(), "Remind me: ");
    EXPECT_EQ(child<QLabel>(dlg, "lblNtimes")->text(), "* This reminder has not been shown yet!");
    EXPECT_FALSE(child<QLabel>(dlg, "lblNtimes")->isHidden());
    EXPECT_EQ(child<QLineEdit>(dlg, "alarmTxt")->text(), "/home/me/ring.wav");
}

TEST_F(FrmRem1Dialog, NewAppointmentHidesTheShownCountAndLeavesTheSoundEmpty) {
    editing(true);
    FrmRem1 dlg(s);
    dlg.show();
    EXPECT_TRUE(child<QLabel>(dlg, "lblNtimes")->isHidden());
    EXPECT_EQ(child<QLineEdit>(dlg, "alarmTxt")->text(), "");
}

TEST_F(FrmRem1Dialog, NothingOverlaps) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    QList<QWidget*> shown;
    for (QWidget* w : dlg.findChildren<QWidget*>())
        if (w->isVisible() && w->parentWidget() && !w->objectName().isEmpty() &&
            !qobject_cast<QGroupBox*>(w))
            shown << w;
    for (int i = 0; i < shown.size(); ++i)
        for (int j = i + 1; j < shown.size(); ++j) {
            const QRect a(shown[i]->mapTo(&dlg, QPoint()), shown[i]->size());
            const QRect b(shown[j]->mapTo(&dlg, QPoint()), shown[j]->size());
            if (shown[i]->isAncestorOf(shown[j]) || shown[j]->isAncestorOf(shown[i])) continue;
            EXPECT_FALSE(a.intersects(b)) << shown[i]->objectName().toStdString() << " / "
                                          << shown[j]->objectName().toStdString();
        }
}

TEST_F(FrmRem1Dialog, OkStoresTheChoiceAndMarksTheEditor) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    child<QComboBox>(dlg, "advComboN")->setCurrentIndex(45);
    child<QComboBox>(dlg, "advComboInt")->setCurrentIndex(1);
    child<QComboBox>(dlg, "animateIcombo")->setCurrentIndex(2);
    child<QLineEdit>(dlg, "alarmTxt")->setText(QStringLiteral("/home/me/bell.mp3"));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.rem_lead, 45);
    EXPECT_EQ(s.rem_unit, 1);
    EXPECT_EQ(s.rem_anim, 3);
    EXPECT_EQ(s.rem_sound, "/home/me/bell.mp3");
    EXPECT_EQ(editor.lblRem, " Reminder was changed.");
}

TEST_F(FrmRem1Dialog, ZeroLeadAnsweredNoStaysOpenAndCancelKeepsTheZero) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    child<QComboBox>(dlg, "advComboN")->setCurrentIndex(0);
    child<QComboBox>(dlg, "advComboInt")->setCurrentIndex(2);
    env.m.answers.push_back(Answer::No);
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(dlg.isVisible());
    ASSERT_NE(env.m.last(u"question"), nullptr);
    EXPECT_EQ(env.m.last(u"question")->text,
              " Setting a reminder to zero time will deactivate the reminder.  Do you want to "
              "continue? ");
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_unit, 0);

    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Rejected);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.rem_lead, 0);
    EXPECT_EQ(s.rem_unit, 0);
}

TEST_F(FrmRem1Dialog, BrowseFillsTheSoundBox) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    child<QComboBox>(dlg, "advComboN")->setCurrentIndex(20);
    env.m.file_answers.push_back(QStringLiteral("/home/me/Sounds/chime.wav"));
    QTest::mouseClick(child<QPushButton>(dlg, "Command5"), Qt::LeftButton);
    ASSERT_NE(env.m.last(u"open"), nullptr);
    EXPECT_EQ(env.m.last(u"open")->text, "WAV Files (*.wav)|*.cal|MP3 Files (*.MP3)|*.MP3");
    EXPECT_EQ(env.m.shown.back().preset, "*.wav");
    EXPECT_EQ(child<QLineEdit>(dlg, "alarmTxt")->text(), "/home/me/Sounds/chime.wav");
    EXPECT_EQ(child<QComboBox>(dlg, "advComboN")->currentIndex(), 20)
        << "a browse keeps what was chosen before it";
}

TEST_F(FrmRem1Dialog, Utf8SoundPathTypedInAnyScriptIsKeptAsTyped) {
    for (const QString& text : testing::texts_in_many_scripts()) {
        editing();
        FrmRem1 dlg(s);
        dlg.show();
        auto* sound = child<QLineEdit>(dlg, "alarmTxt");
        ASSERT_TRUE(sound);
        sound->clear();
        testing::type_text(sound, "/home/me/" + text + ".wav");
        QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
        EXPECT_EQ(dlg.result(), QDialog::Accepted);
        EXPECT_EQ(s.rem_sound, "/home/me/" + text + ".wav");
    }
}

TEST_F(FrmRem1Dialog, Utf8SoundPathStopsAtItsHundredAndFiftyBytesBetweenCharacters) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    auto* sound = child<QLineEdit>(dlg, "alarmTxt");
    ASSERT_TRUE(sound);
    // Two bytes a letter: 3 + 146 bytes leave one byte no letter fits in.
    sound->clear();
    testing::type_text(sound, QStringLiteral("/s/") + QString(80, u'Ж'));
    EXPECT_EQ(sound->text(), QStringLiteral("/s/") + QString(73, u'Ж'));

    // A chosen file is cut the same way; the emoji would straddle the end.
    const QString party = QStringLiteral("🎉");
    QString chosen = QStringLiteral("/");
    for (int i = 0; i < 36; ++i)
        chosen += party;
    env.m.file_answers.push_back(chosen + QStringLiteral("abc") + party);
    QTest::mouseClick(child<QPushButton>(dlg, "Command5"), Qt::LeftButton);
    EXPECT_EQ(sound->text(), chosen + QStringLiteral("abc"));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(s.rem_sound, chosen + QStringLiteral("abc"));
    EXPECT_EQ(s.rem_sound.toUtf8().size(), 148);
}

TEST_F(FrmRem1Dialog, ChoosingAMessengerVoidsTheChoiceOfTheNextFlight) {
    editing();
    s.msg_anim = QStringLiteral("3");
    FrmRem1 dlg(s);
    dlg.show();
    EXPECT_EQ(s.msg_anim, "3") << "filling the list is no selection";
    auto* anim = child<QComboBox>(dlg, "animateIcombo");
    anim->setFocus();
    QTest::keyClick(anim, Qt::Key_Down);
    EXPECT_EQ(anim->currentIndex(), 2);
    EXPECT_EQ(s.msg_anim, "Jet Set");
}

TEST_F(FrmRem1Dialog, SliderSetsTheMessengerSpeed) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    EXPECT_EQ(s.anim_speed, 3);
    auto* slider = child<QSlider>(dlg, "Slider1");
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(s.anim_speed, 4);
}

TEST_F(FrmRem1Dialog, EscapeActsAsCancel) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    child<QComboBox>(dlg, "advComboN")->setCurrentIndex(30);
    QTest::keyClick(&dlg, Qt::Key_Escape);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.rem_lead, 15);
}

TEST_F(FrmRem1Dialog, CloseBoxActsAsCancel) {
    editing();
    FrmRem1 dlg(s);
    dlg.show();
    child<QComboBox>(dlg, "advComboN")->setCurrentIndex(30);
    dlg.close();
    EXPECT_EQ(dlg.result(), QDialog::Rejected);
    EXPECT_EQ(s.rem_lead, 15);
}

TEST_F(FrmRem1Dialog, IsCentredOverTheEditor) {
    editing();
    QWidget host;
    host.setGeometry(50, 40, 600, 500);
    host.show();
    FrmRem1 dlg(s, &host);
    const QPoint centre = dlg.frameGeometry().center();
    EXPECT_LE(std::abs(centre.x() - host.frameGeometry().center().x()), 2);
    EXPECT_LE(std::abs(centre.y() - host.frameGeometry().center().y()), 2);
}

// Runs `act` on the modal dialog once it is up; closes any dialog left after
// a few tries so that a failing test cannot hang in exec().
void when_modal(std::function<void(QWidget*)> act, int tries = 50) {
    QTimer::singleShot(10, [act, tries] {
        if (QWidget* w = QApplication::activeModalWidget()) {
            act(w);
            return;
        }
        if (tries > 0) {
            when_modal(act, tries - 1);
            return;
        }
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<QDialog*>(w); d && d->isVisible())
                d->done(QDialog::Rejected);
    });
}

TEST_F(FrmRem1Dialog, OpensThroughTheSeamFromTheEditor) {
    editing();
    QtModal qt;
    register_frmRem1(qt, s);
    testing::ModalGuard guard(&qt);
    QString seen;
    when_modal([&](QWidget* w) {
        seen = w->objectName();
        w->findChild<QComboBox*>(QStringLiteral("advComboInt"))->setCurrentIndex(2);
        QTest::mouseClick(w->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    });
    open_rem_setup(s, QStringLiteral("apptfrm"));
    EXPECT_EQ(seen, "frmRem1");
    EXPECT_EQ(s.rem_unit, 2);
    EXPECT_EQ(s.rem_lead, 15);
}

} // namespace
} // namespace orva
