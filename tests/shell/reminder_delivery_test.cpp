#include "appointments/ui/frmAppt1.h"
#include "core/clock.h"
#include "reminders/ui/frmRem1.h"
#include "reminders/ui/frmRemnote.h"
#include "shell/single_instance.h"
#include "shell/ui/frmCal.h"
#include "store/calendar_file.h"
#include "store/store_fixtures.h"
#include "support/scripted_modal.h"
#include "views/day_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orva {
namespace {

rmdr_rec testing_rmdr(const QString& date, const QString& time, const QString& text) {
    rmdr_rec r = testing::make_rmdr(date, QStringLiteral("211000001111"), time);
    r.rmdr_text = text;
    r.rmdr_appt_date = QStringLiteral("11212026");
    return r;
}

// The whole road of a reminder through the real main window: made in the
// editor, noticed by Timer1 as the clock moves, shown in the note, and its
// state written to the calendar file.
class ReminderRoad : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
        state.app_path = dir.path();
        instance = std::make_unique<SingleInstance>(dir.path());
        window = std::make_unique<frmCal>(state);
        ASSERT_TRUE(window->start(*instance));
    }
    void TearDown() override {
        window.reset();
        install_clock(nullptr);
    }

    template <class W> static W* child(QWidget& w, const char* name) {
        W* found = w.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QTimer* timer() { return window->findChild<QTimer*>(QStringLiteral("Timer1")); }
    // One beat of Timer1, as its six seconds running out would give it.
    void beat() { ASSERT_TRUE(QMetaObject::invokeMethod(timer(), "timeout")); }

    // The reminder lines of a month: "flag date time again text".
    QStringList on_file(const QString& member) {
        QByteArray bytes;
        if (state.archive.get(state.cal_path, member, bytes) != 0) return {};
        QStringList out;
        for (const QString& l : QString::fromLatin1(bytes).split("\r\n", Qt::SkipEmptyParts))
            out << l.mid(116, 1) + " " + l.mid(103, 8) + " " + l.mid(111, 5) + " " +
                       l.mid(269, 2).trimmed() + " " + l.mid(30, 50).trimmed();
        return out;
    }
    int notes() const {
        int n = 0;
        for (const auto& shown : m.shown)
            if (shown.kind == u"form" && shown.text == u"frmRemnote") ++n;
        return n;
    }

    // The editor and its reminder setup as a user fills them: a text and a
    // lead of `lead` minutes.
    void script_editor(const QString& text, int lead) {
        m.forms["frmAppt1"] = [this, text] {
            FrmAppt1 dlg(state, window.get());
            dlg.show();
            auto* t = child<QLineEdit>(dlg, "Text1");
            t->clear();
            QTest::keyClicks(t, text);
            QTest::mouseClick(child<QToolButton>(dlg, "cmdRem"), Qt::LeftButton);
            QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
        };
        m.forms["frmRem1"] = [this, lead] {
            FrmRem1 dlg(state, window.get());
            dlg.show();
            child<QComboBox>(dlg, "advComboN")->setCurrentIndex(lead);
            child<QComboBox>(dlg, "advComboInt")->setCurrentIndex(0);
            QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
        };
    }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
    AppState state;
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<frmCal> window;
};

TEST_F(ReminderRoad, Timer1BeatsEverySixSecondsOnceStarted) {
    ASSERT_NE(timer(), nullptr);
    EXPECT_EQ(timer()->interval(), 6000);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(state.timer1_enabled);
}

TEST_F(ReminderRoad, EntryMadeInTheEditorIsRemindedAndCanBeArmedAgain) {
    script_editor("Call the plumber", 5);
    const int row = start_slot("10:30");
    auto* sched = child<QWidget>(*window, "vsSched");
    QMetaObject::invokeMethod(sched, "cellDoubleClicked", Q_ARG(int, row), Q_ARG(int, 2));
    ASSERT_EQ(on_file("r2611.rmd"), QStringList{"F 11/21/26 10:25 1 Call the plumber"});

    beat();
    EXPECT_EQ(notes(), 0);

    QStringList shown;
    m.forms["frmRemnote"] = [this, &shown] {
        FrmRemnote note(state, window.get());
        note.show();
        const Grid& g = state.note.gRmdr;
        for (int r = 1; r < g.Rows(); ++r) shown << g.TextMatrix(r, 1);
        QTest::mouseClick(child<QPushButton>(note, "Command1"), Qt::LeftButton);
    };
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(10, 25, 4)));
    beat();
    EXPECT_EQ(shown, QStringList{"Call the plumber"});
    EXPECT_EQ(on_file("r2611.rmd"), QStringList{"T 11/21/26 10:25 1 Call the plumber"});

    // Armed again: the next due beat brings it back.
    script_editor("Water the plants", 5);
    QMetaObject::invokeMethod(sched, "cellDoubleClicked", Q_ARG(int, start_slot("11:00")),
                              Q_ARG(int, 2));
    m.forms["frmRemnote"] = [this] {
        FrmRemnote note(state, window.get());
        note.show();
        QTest::mouseClick(child<QCheckBox>(note, "Check1"), Qt::LeftButton);
        QTest::mouseClick(child<QPushButton>(note, "Command1"), Qt::LeftButton);
    };
    m.forms["frmReRmdr"] = [this] {
        FrmReRmdr again(state, window.get());
        again.show();
        child<QComboBox>(again, "comboReRmdr")->setCurrentIndex(14);
        QTest::mouseClick(child<QPushButton>(again, "Command1"), Qt::LeftButton);
    };
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(10, 55, 2)));
    beat();
    EXPECT_EQ(on_file("r2611.rmd"), (QStringList{"T 11/21/26 10:25 1 Call the plumber",
                                                 "F 11/21/26 11:10 2 Water the plants"}));
    m.forms.erase("frmRemnote");
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(11, 9, 58)));
    beat();
    EXPECT_EQ(notes(), 2);
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(11, 10, 1)));
    beat();
    EXPECT_EQ(notes(), 3);
    EXPECT_EQ(on_file("r2611.rmd"), (QStringList{"T 11/21/26 10:25 1 Call the plumber",
                                                 "T 11/21/26 11:10 2 Water the plants"}));
}

TEST_F(ReminderRoad, HiddenWindowStillDeliversAndTheNoteShowsOnTop) {
    ASSERT_EQ(append_rmdr_line(state, state.cal_path,
                               testing_rmdr("11/21/26", "10:01", "Take the pills")),
              0);
    ASSERT_EQ(load_rmdrs(state, state.cur_date, state.cal_path, 0), 0);
    window->hide();
    bool visible = false, on_top = false;
    m.forms["frmRemnote"] = [&] {
        FrmRemnote note(state, window.get());
        note.show();
        visible = note.isVisible();
        on_top = note.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
        note.accept();
    };
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(10, 1, 3)));
    beat();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(visible);
    EXPECT_TRUE(on_top);
    EXPECT_EQ(on_file("r2611.rmd"), QStringList{"T 11/21/26 10:01 1 Take the pills"});
}

TEST_F(ReminderRoad, TickSwitchedOffDeliversNothingUntilSwitchedOn) {
    ASSERT_EQ(append_rmdr_line(state, state.cal_path,
                               testing_rmdr("11/21/26", "10:01", "Take the pills")),
              0);
    ASSERT_EQ(load_rmdrs(state, state.cur_date, state.cal_path, 0), 0);
    state.timer1_enabled = false; // as the editor's Cancel leaves it
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(10, 1, 3)));
    beat();
    EXPECT_EQ(notes(), 0);
    state.timer1_enabled = true;
    beat();
    EXPECT_EQ(notes(), 1);
}

TEST_F(ReminderRoad, EditorCancelLeavesTheTickOff) {
    m.forms["frmAppt1"] = [this] {
        FrmAppt1 dlg(state, window.get());
        dlg.show();
        QTest::keyClick(&dlg, Qt::Key_Escape);
    };
    QMetaObject::invokeMethod(child<QWidget>(*window, "vsSched"), "cellDoubleClicked",
                              Q_ARG(int, start_slot("10:30")), Q_ARG(int, 2));
    EXPECT_FALSE(state.timer1_enabled);
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(23, 59)));
    ASSERT_EQ(append_rmdr_line(state, state.cal_path,
                               testing_rmdr("11/21/26", "10:01", "Take the pills")),
              0);
    ASSERT_EQ(load_rmdrs(state, state.cur_date, state.cal_path, 0), 0);
    beat();
    EXPECT_EQ(notes(), 0);
}

} // namespace
} // namespace orva
