#include "../support/accessible.h"
#include "../views/view_fixtures.h"
#include "appointments/ui/frmOccurs.h"
#include "core/ui/qt_modal.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

// The editor as a new entry on Sunday 2026-03-15 leaves it: the dialog reads
// the first date and its limit through AppState::appt_form.
struct FrmOccursDialog : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;
    ApptForm editor;

    FrmOccursDialog() {
        editor.apptDTPicker = env.clock.today();
        editor.apptDTPicker_min = QDate(2000, 1, 1);
        editor.apptDTPicker_max = env.clock.today().addYears(15);
        editor.lblOccur = QStringLiteral("Click button to add recurring appointments.");
        s.new_appt = true;
        s.occ_by_period = true;
        s.occ_by_weekday = false;
        s.occ_until = QStringLiteral("03/15/26");
        s.appt_form = &editor;
    }

    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    static QStringList items(QComboBox* box) {
        QStringList out;
        for (int i = 0; i < box->count(); ++i)
            out << box->itemText(i);
        return out;
    }
    // What a user's choice of row `row` does: the list moves, then tells.
    static void choose(QComboBox* box, int row) {
        box->setCurrentIndex(row);
        emit box->activated(row);
    }
};

TEST_F(FrmOccursDialog, ControlsAreFoundByTheirNames) {
    FrmOccurs dlg(s, editor);
    EXPECT_EQ(dlg.objectName(), "frmOccurs");
    EXPECT_EQ(dlg.windowTitle(), "Recurring Appointment");
    for (const char* name : {"Option1", "Option2"}) {
        auto* w = child<QRadioButton>(dlg, name);
        ASSERT_TRUE(w);
        EXPECT_FALSE(w->text().isEmpty());
        EXPECT_EQ(testing::spoken_name(w), w->text());
        EXPECT_EQ(testing::spoken_description(w), name);
    }
    const struct {
        const char* name;
        const char* spoken;
    } lists[] = {{"occursCombo", "How often"},
                 {"EveryCombo", "Interval"},
                 {"occursWCombo", "Week of the month"},
                 {"everyWkDCombo", "Weekday"},
                 {"mthCombo", "Month"}};
    for (const auto& l : lists) {
        auto* w = child<QComboBox>(dlg, l.name);
        ASSERT_TRUE(w);
        EXPECT_EQ(testing::spoken_name(w), l.spoken);
        EXPECT_EQ(testing::spoken_description(w), l.name);
    }
    auto* until = child<QDateEdit>(dlg, "untilDTPicker");
    auto* label = child<QLabel>(dlg, "Label1");
    auto* ok = child<QPushButton>(dlg, "Command2");
    auto* cancel = child<QPushButton>(dlg, "Command1");
    ASSERT_TRUE(until && label && ok && cancel);
    EXPECT_EQ(testing::spoken_name(until), "End date");
    EXPECT_EQ(testing::spoken_description(until), "untilDTPicker");
    EXPECT_TRUE(until->calendarPopup());
    EXPECT_EQ(testing::spoken_name(label), label->text());
    EXPECT_EQ(testing::spoken_description(label), "Label1");
    EXPECT_EQ(testing::spoken_name(ok), "OK");
    EXPECT_EQ(testing::spoken_description(ok), "Command2");
    EXPECT_EQ(ok->text(), "OK");
    EXPECT_TRUE(ok->isDefault());
    EXPECT_EQ(cancel->text(), "Cancel");
    QLabel* end_label = nullptr;
    for (QLabel* l : dlg.findChildren<QLabel*>())
        if (l->text() == u"End Date:") end_label = l;
    ASSERT_NE(end_label, nullptr);
    EXPECT_EQ(end_label->buddy(), until);
}

TEST_F(FrmOccursDialog, ListsHoldTheirRows) {
    FrmOccurs dlg(s, editor);
    EXPECT_EQ(items(child<QComboBox>(dlg, "occursCombo")),
              QStringList({"once", "daily", "weekly", "monthly", "yearly"}));
    EXPECT_EQ(items(child<QComboBox>(dlg, "occursWCombo")),
              QStringList({"First", "Second", "Third", "Fourth", "Last"}));
    EXPECT_EQ(items(child<QComboBox>(dlg, "everyWkDCombo")),
              QStringList(
                  {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"}));
    EXPECT_EQ(items(child<QComboBox>(dlg, "mthCombo")),
              QStringList({"Every month", "January", "February", "March", "April", "May", "June",
                           "July", "August", "September", "October", "November", "December"}));
}

TEST_F(FrmOccursDialog, NewEntryOpensOnceByPeriodWithTheWeekdayListsOff) {
    FrmOccurs dlg(s, editor);
    EXPECT_TRUE(child<QRadioButton>(dlg, "Option1")->isChecked());
    EXPECT_FALSE(child<QRadioButton>(dlg, "Option2")->isChecked());
    EXPECT_EQ(child<QComboBox>(dlg, "occursCombo")->currentText(), "once");
    EXPECT_EQ(items(child<QComboBox>(dlg, "EveryCombo")), QStringList({" "}));
    EXPECT_TRUE(child<QComboBox>(dlg, "occursCombo")->isEnabled());
    EXPECT_TRUE(child<QComboBox>(dlg, "EveryCombo")->isEnabled());
    EXPECT_FALSE(child<QComboBox>(dlg, "occursWCombo")->isEnabled());
    EXPECT_FALSE(child<QComboBox>(dlg, "everyWkDCombo")->isEnabled());
    EXPECT_FALSE(child<QComboBox>(dlg, "mthCombo")->isEnabled());
    EXPECT_FALSE(child<QDateEdit>(dlg, "untilDTPicker")->isEnabled());
    EXPECT_EQ(child<QLabel>(dlg, "Label1")->text(), "");
}

TEST_F(FrmOccursDialog, EndDateKeepsTheLimitsOfTheFirstDateAndFifteenYears) {
    editor.apptDTPicker = QDate(2026, 4, 2);
    FrmOccurs dlg(s, editor);
    auto* until = child<QDateEdit>(dlg, "untilDTPicker");
    ASSERT_TRUE(until);
    EXPECT_EQ(until->minimumDate(), QDate(2026, 4, 2));
    EXPECT_EQ(until->maximumDate(), QDate(2041, 3, 15));
}

TEST_F(FrmOccursDialog, CalendarTakesTheDayGridsBackColour) {
    s.vsSched.setBackColor(rgb(200, 220, 240));
    FrmOccurs dlg(s, editor);
    auto* until = child<QDateEdit>(dlg, "untilDTPicker");
    ASSERT_TRUE(until && until->calendarWidget());
    EXPECT_EQ(until->calendarWidget()->palette().color(QPalette::Base), QColor(200, 220, 240));
}

TEST_F(FrmOccursDialog, ChoosingMonthlyFillsTheIntervalsAndOffersDecember) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    auto* every = child<QComboBox>(dlg, "EveryCombo");
    choose(child<QComboBox>(dlg, "occursCombo"), 3);
    EXPECT_EQ(every->count(), 11);
    EXPECT_EQ(every->itemText(0), "once monthly");
    EXPECT_EQ(every->itemText(1), "every 2  months");
    EXPECT_EQ(every->currentIndex(), 0);
    EXPECT_TRUE(every->isEnabled());
    EXPECT_EQ(child<QLabel>(dlg, "Label1")->text(), "on day 15");
    auto* until = child<QDateEdit>(dlg, "untilDTPicker");
    EXPECT_TRUE(until->isEnabled());
    EXPECT_EQ(until->date(), QDate(2026, 12, 15));
}

TEST_F(FrmOccursDialog, ChoosingWeeklyNamesTheWeekdayAndOffersTheMonthEnd) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    choose(child<QComboBox>(dlg, "occursCombo"), 2);
    EXPECT_EQ(child<QLabel>(dlg, "Label1")->text(), "on  Sunday");
    // A screen reader hears the label's new words.
    EXPECT_EQ(testing::spoken_name(child<QLabel>(dlg, "Label1")), "on  Sunday");
    EXPECT_EQ(child<QDateEdit>(dlg, "untilDTPicker")->date(), QDate(2026, 3, 31));
    EXPECT_EQ(items(child<QComboBox>(dlg, "EveryCombo")),
              QStringList({"once weekly", "every 2 weeks", "every 3 weeks"}));
}

TEST_F(FrmOccursDialog, ClickingOption2EnablesTheWeekdayListsAndAddsAYear) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    choose(child<QComboBox>(dlg, "occursCombo"), 4);
    ASSERT_EQ(child<QLabel>(dlg, "Label1")->text(), "on  March 15");
    QTest::mouseClick(child<QRadioButton>(dlg, "Option2"), Qt::LeftButton);
    EXPECT_TRUE(child<QRadioButton>(dlg, "Option2")->isChecked());
    EXPECT_FALSE(child<QRadioButton>(dlg, "Option1")->isChecked());
    EXPECT_TRUE(child<QComboBox>(dlg, "occursWCombo")->isEnabled());
    EXPECT_TRUE(child<QComboBox>(dlg, "everyWkDCombo")->isEnabled());
    EXPECT_TRUE(child<QComboBox>(dlg, "mthCombo")->isEnabled());
    EXPECT_TRUE(child<QDateEdit>(dlg, "untilDTPicker")->isEnabled());
    EXPECT_FALSE(child<QComboBox>(dlg, "occursCombo")->isEnabled());
    EXPECT_FALSE(child<QComboBox>(dlg, "EveryCombo")->isEnabled());
    EXPECT_EQ(child<QComboBox>(dlg, "occursCombo")->currentIndex(), 0);
    EXPECT_EQ(child<QLabel>(dlg, "Label1")->text(), "");
    EXPECT_EQ(child<QDateEdit>(dlg, "untilDTPicker")->date(), QDate(2027, 3, 15));
    EXPECT_FALSE(s.occ_by_period);
    EXPECT_TRUE(s.occ_by_weekday);

    QTest::mouseClick(child<QRadioButton>(dlg, "Option1"), Qt::LeftButton);
    EXPECT_TRUE(s.occ_by_period);
    EXPECT_FALSE(child<QComboBox>(dlg, "mthCombo")->isEnabled());
    EXPECT_EQ(child<QComboBox>(dlg, "occursCombo")->currentText(), "once");
}

TEST_F(FrmOccursDialog, NewEntryChoosingAMonthGetsTheLastDayOfTheMonthBeforeNextYear) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    QTest::mouseClick(child<QRadioButton>(dlg, "Option2"), Qt::LeftButton);
    choose(child<QComboBox>(dlg, "mthCombo"), 7);
    EXPECT_EQ(child<QDateEdit>(dlg, "untilDTPicker")->date(), QDate(2027, 2, 28));
}

TEST_F(FrmOccursDialog, ClickingOkStoresThePeriodRuleAndTheCaption) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    choose(child<QComboBox>(dlg, "occursCombo"), 1);
    child<QComboBox>(dlg, "EveryCombo")->setCurrentIndex(2);
    child<QDateEdit>(dlg, "untilDTPicker")->setDate(QDate(2026, 4, 10));
    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.occ_period, 1);
    EXPECT_EQ(s.occ_every, 2);
    EXPECT_EQ(s.occ_until, "04/10/26");
    EXPECT_TRUE(s.occ_by_period);
    EXPECT_EQ(editor.lblOccur,
              "This appointment occurs every 3 days until " + short_date_text(QDate(2026, 4, 10)));
}

TEST_F(FrmOccursDialog, ClickingOkStoresTheWeekdayRuleAndTheCaption) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    QTest::mouseClick(child<QRadioButton>(dlg, "Option2"), Qt::LeftButton);
    child<QComboBox>(dlg, "occursWCombo")->setCurrentIndex(4);
    child<QComboBox>(dlg, "everyWkDCombo")->setCurrentIndex(5);
    child<QComboBox>(dlg, "mthCombo")->setCurrentIndex(0);
    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    EXPECT_EQ(s.occ_ordinal, 4);
    EXPECT_EQ(s.occ_weekday, 5);
    EXPECT_EQ(s.occ_every, 5);
    EXPECT_EQ(s.occ_month, 0);
    EXPECT_EQ(s.occ_until, "03/15/27");
    EXPECT_FALSE(s.occ_by_period);
    EXPECT_EQ(editor.lblOccur, "This appointment occurs on the last Friday of every month until " +
                                   short_date_text(QDate(2027, 3, 15)));
}

TEST_F(FrmOccursDialog, ReopenedSeriesShowsTheFirstIntervalAndOkStoresIt) {
    s.new_appt = false;
    s.occ_period = 2;
    s.occ_every = 1;
    s.occ_until = QStringLiteral("06/30/26");
    FrmOccurs dlg(s, editor);
    dlg.show();
    EXPECT_EQ(child<QComboBox>(dlg, "occursCombo")->currentText(), "weekly");
    EXPECT_EQ(child<QComboBox>(dlg, "EveryCombo")->currentText(), "once weekly");
    EXPECT_EQ(child<QDateEdit>(dlg, "untilDTPicker")->date(), QDate(2026, 6, 30));
    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    EXPECT_EQ(s.occ_every, 0);
}

TEST_F(FrmOccursDialog, ClickingCancelKeepsTheRuleAndTheCaption) {
    s.new_appt = false;
    s.occ_period = 3;
    s.occ_every = 2;
    s.occ_until = QStringLiteral("12/15/26");
    FrmOccurs dlg(s, editor);
    dlg.show();
    QTest::mouseClick(child<QRadioButton>(dlg, "Option2"), Qt::LeftButton);
    child<QComboBox>(dlg, "occursWCombo")->setCurrentIndex(3);
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Rejected);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.occ_period, 3);
    EXPECT_EQ(s.occ_every, 2);
    EXPECT_EQ(s.occ_ordinal, 0);
    EXPECT_EQ(s.occ_until, "12/15/26");
    EXPECT_EQ(editor.lblOccur, "Click button to add recurring appointments.");
    // The option flags change at the click, not at OK.
    EXPECT_FALSE(s.occ_by_period);
}

TEST_F(FrmOccursDialog, EscapeActsAsCancel) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    choose(child<QComboBox>(dlg, "occursCombo"), 1);
    QTest::keyClick(&dlg, Qt::Key_Escape);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.occ_period, 0);
    EXPECT_EQ(s.occ_until, "03/15/26");
}

TEST_F(FrmOccursDialog, CloseBoxActsAsCancel) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    choose(child<QComboBox>(dlg, "occursCombo"), 1);
    dlg.close();
    EXPECT_EQ(dlg.result(), QDialog::Rejected);
    EXPECT_EQ(s.occ_period, 0);
    EXPECT_EQ(editor.lblOccur, "Click button to add recurring appointments.");
}

TEST_F(FrmOccursDialog, ControlsDoNotOverlap) {
    FrmOccurs dlg(s, editor);
    dlg.show();
    QList<QWidget*> controls;
    for (QWidget* w : dlg.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (w->isVisible()) controls << w;
    ASSERT_GE(controls.size(), 12);
    for (int i = 0; i < controls.size(); ++i)
        for (int j = i + 1; j < controls.size(); ++j)
            EXPECT_FALSE(controls[i]->geometry().intersects(controls[j]->geometry()))
                << controls[i]->objectName().toStdString() << " and "
                << controls[j]->objectName().toStdString();
}

TEST_F(FrmOccursDialog, OpensBesideTheEditorCorner) {
    QDialog editor_window;
    editor_window.setObjectName(QStringLiteral("frmAppt1"));
    editor_window.setGeometry(30, 40, 400, 300);
    editor_window.show();
    FrmOccurs dlg(s, editor, &editor_window);
    const QPoint expected =
        editor_window.frameGeometry().topLeft() +
        QPoint(3600 * editor_window.logicalDpiX() / 1440, 400 * editor_window.logicalDpiY() / 1440);
    EXPECT_EQ(dlg.pos(), expected);
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

TEST_F(FrmOccursDialog, RegisteredFormOpensThroughTheSeam) {
    QtModal qt;
    register_frmOccurs(qt, s);
    QString seen;
    when_modal([&](QWidget* w) {
        seen = w->objectName();
        auto* combo = w->findChild<QComboBox*>(QStringLiteral("occursCombo"));
        combo->setCurrentIndex(3);
        emit combo->activated(3);
        QTest::mouseClick(w->findChild<QPushButton*>(QStringLiteral("Command2")), Qt::LeftButton);
    });
    qt.open_form(QStringLiteral("frmOccurs"));
    EXPECT_EQ(seen, "frmOccurs");
    EXPECT_EQ(s.occ_period, 3);
    EXPECT_EQ(s.occ_until, "12/15/26");
    EXPECT_EQ(editor.lblOccur,
              "This appointment occurs once monthly until " + short_date_text(QDate(2026, 12, 15)));
}

TEST_F(FrmOccursDialog, WithNoEditorLoadedNothingOpens) {
    s.appt_form = nullptr;
    QtModal qt;
    register_frmOccurs(qt, s);
    bool opened = false;
    when_modal(
        [&](QWidget* w) {
            opened = true;
            if (auto* d = qobject_cast<QDialog*>(w)) d->done(QDialog::Rejected);
        },
        5);
    qt.open_form(QStringLiteral("frmOccurs"));
    QTest::qWait(120);
    EXPECT_FALSE(opened);
    EXPECT_EQ(s.occ_period, 0);
}

} // namespace
} // namespace orva
