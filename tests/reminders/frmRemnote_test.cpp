#include "../support/accessible.h"
#include "../support/recording_sound.h"
#include "../views/view_fixtures.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_widget.h"
#include "reminders/dispatch.h"
#include "reminders/ui/frmRemnote.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

struct NoteWindow : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;
    testing::RecordingSound speakers;
    testing::SoundGuard sound_guard{&speakers};

    // One delivered row in the note, as the scan leaves it.
    void one_row(const QString& text = QStringLiteral("Dentist")) {
        s.rmdr_count = 1;
        rmdr_rec& r = *s.rmdr_row(1);
        r = testing::make_rmdr(QStringLiteral("03/15/26"), QStringLiteral("A"), "08:00");
        r.rmdr_text = text;
        add_to_note(s, s, 1);
        s.note.caption = QStringLiteral("Sunday, 15 March 2026");
    }
    template <class W> static W* child(QWidget& w, const char* name) {
        W* found = w.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
};

TEST_F(NoteWindow, StaysOnTopWithItsTitleGridAndControls) {
    one_row();
    FrmRemnote note(s);
    note.show();
    EXPECT_TRUE(note.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(note.windowTitle(), "Sunday, 15 March 2026");
    EXPECT_EQ(child<QCheckBox>(note, "Check1")->text(), "Remind me again");
    EXPECT_TRUE(child<QCheckBox>(note, "Check1")->isVisible());
    EXPECT_EQ(child<QPushButton>(note, "Command1")->text(), "OK");
    auto* grid = child<GridWidget>(note, "gRmdr");
    EXPECT_EQ(testing::spoken_name(grid), "Due reminders");
    EXPECT_EQ(testing::spoken_description(grid), "gRmdr");
    EXPECT_TRUE(grid->isColumnHidden(2));
    EXPECT_TRUE(grid->isColumnHidden(3));
    QStringList cells;
    for (int r = 0; r < grid->model()->rowCount(); ++r)
        cells << grid->model()->index(r, 1).data().toString();
    EXPECT_TRUE(cells.contains("Dentist")) << cells.join(", ").toStdString();
}

TEST_F(NoteWindow, FirstColumnKeepsItsShareOfTheWidth) {
    one_row();
    FrmRemnote note(s);
    note.show();
    note.resize(900, 300);
    QApplication::processEvents();
    const Grid& g = s.note.gRmdr;
    ASSERT_GT(g.Width(), 0);
    EXPECT_EQ(g.ColWidth(0), int(g.Width() * 0.35));
    EXPECT_EQ(g.ColWidth(0) + g.ColWidth(1), g.Width());
}

TEST_F(NoteWindow, TwoRowsHideRemindMeAgain) {
    one_row();
    s.rmdr_count = 2;
    *s.rmdr_row(2) = *s.rmdr_row(1);
    add_to_note(s, s, 2);
    s.note.Check1_visible = s.note.Check1_enabled = s.note.gRmdr.Rows() < 3;
    FrmRemnote note(s);
    note.show();
    EXPECT_FALSE(child<QCheckBox>(note, "Check1")->isVisible());
}

TEST_F(NoteWindow, OkClosesTheNoteStopsTheSoundAndEmptiesIt) {
    one_row();
    FrmRemnote note(s);
    note.show();
    QTest::mouseClick(child<QPushButton>(note, "Command1"), Qt::LeftButton);
    EXPECT_FALSE(note.isVisible());
    EXPECT_EQ(speakers.calls, (QStringList{"stop", "close all"}));
    EXPECT_EQ(s.note.gRmdr.Rows(), 1);
}

TEST_F(NoteWindow, PreviewShowsItsSentenceOverTheWholeGridWithRemindAgainDisabled) {
    s.preview_sound = true;
    FrmRemnote note(s);
    note.show();
    note.resize(700, 260);
    QApplication::processEvents();
    EXPECT_EQ(note.windowTitle(), "Reminder Preview");
    EXPECT_FALSE(child<QCheckBox>(note, "Check1")->isEnabled());
    const Grid& g = s.note.gRmdr;
    ASSERT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.TextMatrix(1, 1), sound_preview_text);
    EXPECT_GE(g.RowHeight(0) + g.RowHeight(1), g.Height() - Grid::default_row_height);
}

TEST_F(NoteWindow, SecondReminderOffersMinutesAndArmsTheRow) {
    one_row();
    FrmReRmdr again(s);
    again.show();
    EXPECT_EQ(again.windowTitle(), "Second Reminder");
    EXPECT_TRUE(again.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    auto* minutes = child<QComboBox>(again, "comboReRmdr");
    EXPECT_EQ(minutes->count(), 59);
    EXPECT_EQ(minutes->currentText(), "1");
    QStringList labels;
    for (QLabel* l : again.findChildren<QLabel*>())
        labels << l->text();
    EXPECT_TRUE(labels.contains("Remind me again in:"));
    EXPECT_TRUE(labels.contains("Minutes"));
    minutes->setCurrentIndex(29);
    QTest::mouseClick(child<QPushButton>(again, "Command1"), Qt::LeftButton);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_time.str(), "08:30");
    EXPECT_EQ(s.rmdr_row(1)->rmdr_fired.str(), "F");
}

TEST_F(NoteWindow, SecondReminderCancelChangesNothing) {
    one_row();
    FrmReRmdr again(s);
    again.show();
    QTest::mouseClick(child<QPushButton>(again, "Command2"), Qt::LeftButton);
    EXPECT_EQ(s.rmdr_row(1)->rmdr_time.str(), "08:00");
    EXPECT_EQ(s.rmdr_row(1)->rmdr_fired.str(), "T");
}

TEST_F(NoteWindow, OpensThroughTheSeamOverAHiddenMainWindow) {
    QtModal qt;
    testing::ModalGuard seam{&qt};
    QWidget main_window;
    main_window.hide();
    qt.set_parent(&main_window);
    register_frmRemnote(qt, s);
    one_row();
    bool shown = false;
    QTimer::singleShot(0, [&] {
        auto* note = qobject_cast<FrmRemnote*>(QApplication::activeModalWidget());
        shown = note && note->isVisible();
        if (note) note->accept();
    });
    qt.open_form(QStringLiteral("frmRemnote"));
    EXPECT_TRUE(shown);
}

} // namespace
} // namespace orva
