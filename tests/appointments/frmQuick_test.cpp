#include "../support/accessible.h"
#include "../views/view_fixtures.h"
#include "appointments/ui/frmQuick.h"
#include "core/ui/qt_modal.h"
#include "grid/ui/grid_widget.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimeEdit>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

struct FrmQuickDialog : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;

    appt_rec& typed(const QString& start, const QString& text = QStringLiteral("Call Bob")) {
        s.view_day = true;
        s.appt_count = 1;
        appt_rec& a = *s.appt_row(1);
        a = testing::make_appt(QStringLiteral("03152026"), QStringLiteral("150910000309"), start,
                               text);
        a.appt_start = start;
        a.appt_end = start;
        a.appt_type = QStringLiteral("0");
        s.vsSched = Grid(49, 20);
        s.vsSched.setTextMatrix(21, 2, text);
        s.vsSched.Select(21, 2);
        return a;
    }
    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
};

TEST_F(FrmQuickDialog, ControlsAreFoundByTheirNames) {
    typed(QStringLiteral("10:00"));
    FrmQuick dlg(s);
    EXPECT_EQ(dlg.objectName(), "frmQuick");
    EXPECT_EQ(dlg.windowTitle(), "Call Bob");
    auto* combo = child<QComboBox>(dlg, "typeIcombo");
    auto* picker = child<QTimeEdit>(dlg, "DTPicker1");
    auto* ok = child<QPushButton>(dlg, "Command1");
    auto* cancel = child<QPushButton>(dlg, "Command2");
    ASSERT_TRUE(combo && picker && ok && cancel);
    EXPECT_EQ(testing::spoken_name(combo), "Sticker");
    EXPECT_EQ(testing::spoken_description(combo), "typeIcombo");
    EXPECT_EQ(testing::spoken_name(picker), "End time");
    EXPECT_EQ(testing::spoken_description(picker), "DTPicker1");
    EXPECT_EQ(testing::spoken_name(ok), "OK");
    EXPECT_EQ(testing::spoken_description(ok), "Command1");
    EXPECT_EQ(ok->text(), "OK");
    EXPECT_TRUE(ok->isDefault());
    EXPECT_EQ(cancel->text(), "Cancel");
    QStringList labels;
    for (QLabel* l : dlg.findChildren<QLabel*>())
        labels << l->text();
    EXPECT_TRUE(labels.contains("Sticker"));
    EXPECT_TRUE(labels.contains("End Time"));
}

TEST_F(FrmQuickDialog, Utf8TitleIsTheTypedTextAndOkKeepsIt) {
    for (const QString& text : testing::texts_in_many_scripts()) {
        typed(QStringLiteral("10:00"), text);
        FrmQuick dlg(s);
        dlg.show();
        EXPECT_EQ(dlg.windowTitle(), text);
        QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
        EXPECT_EQ(dlg.result(), QDialog::Accepted);
        EXPECT_EQ(QByteArray(s.appt_row(1)->appt_text.c, 50), text.toUtf8().leftJustified(50, ' '));
    }
}

TEST_F(FrmQuickDialog, ComboShowsStickerPicturesAndCaptions) {
    typed(QStringLiteral("10:00"));
    FrmQuick dlg(s);
    auto* combo = child<QComboBox>(dlg, "typeIcombo");
    ASSERT_TRUE(combo);
    ASSERT_EQ(combo->count(), 74);
    EXPECT_EQ(combo->currentIndex(), 0);
    EXPECT_EQ(combo->itemText(0), " <select a virtual sticker>");
    EXPECT_TRUE(combo->itemIcon(0).isNull());
    EXPECT_EQ(combo->itemText(12), " Bus ");
    EXPECT_EQ(combo->itemData(12).toString(), "Bus");
    EXPECT_FALSE(combo->itemIcon(12).isNull());
}

TEST_F(FrmQuickDialog, PickerShowsTheStartOfATimedEntry) {
    typed(QStringLiteral("10:30"));
    FrmQuick dlg(s);
    auto* picker = child<QTimeEdit>(dlg, "DTPicker1");
    ASSERT_TRUE(picker);
    EXPECT_TRUE(picker->isEnabled());
    EXPECT_EQ(picker->time(), QTime(10, 30));
    EXPECT_EQ(picker->text(), "10:30 AM");
}

TEST_F(FrmQuickDialog, PickerIsDisabledForAnUntimedEntry) {
    typed(QStringLiteral("     "));
    FrmQuick dlg(s);
    auto* picker = child<QTimeEdit>(dlg, "DTPicker1");
    ASSERT_TRUE(picker);
    EXPECT_FALSE(picker->isEnabled());
}

TEST_F(FrmQuickDialog, ClickingOkStoresTheStickerAndTheEnd) {
    appt_rec& a = typed(QStringLiteral("14:00"));
    FrmQuick dlg(s);
    dlg.show();
    auto* combo = child<QComboBox>(dlg, "typeIcombo");
    auto* picker = child<QTimeEdit>(dlg, "DTPicker1");
    ASSERT_TRUE(combo && picker);
    combo->setCurrentIndex(combo->findData(QStringLiteral("Car")));
    picker->setTime(QTime(15, 30));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(a.appt_type.trimmed(), "Car");
    EXPECT_EQ(a.appt_end.str(), "15:30");
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "Call Bob");
}

TEST_F(FrmQuickDialog, EndBeforeStartKeepsTheDialogOpen) {
    appt_rec& a = typed(QStringLiteral("14:00"));
    FrmQuick dlg(s);
    dlg.show();
    auto* picker = child<QTimeEdit>(dlg, "DTPicker1");
    ASSERT_TRUE(picker);
    picker->setTime(QTime(13, 0));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(dlg.isVisible());
    ASSERT_EQ(env.m.messages().size(), 1u);
    EXPECT_EQ(env.m.messages()[0], "End time is less than Start Time");
    EXPECT_EQ(a.appt_end.str(), "14:00");
    EXPECT_EQ(a.appt_type.trimmed(), "0");

    // A second try with a good time goes through.
    picker->setTime(QTime(14, 30));
    QTest::mouseClick(child<QPushButton>(dlg, "Command1"), Qt::LeftButton);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(a.appt_end.str(), "14:30");
}

TEST_F(FrmQuickDialog, ClickingCancelEmptiesTheTypedCell) {
    appt_rec& a = typed(QStringLiteral("10:00"));
    FrmQuick dlg(s);
    dlg.show();
    QTest::mouseClick(child<QPushButton>(dlg, "Command2"), Qt::LeftButton);
    EXPECT_EQ(dlg.result(), QDialog::Rejected);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "");
    EXPECT_EQ(a.appt_type.trimmed(), "0");
    EXPECT_EQ(a.appt_end, a.appt_start);
}

TEST_F(FrmQuickDialog, CloseBoxActsAsCancel) {
    typed(QStringLiteral("10:00"));
    FrmQuick dlg(s);
    dlg.show();
    dlg.close();
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "");
}

TEST_F(FrmQuickDialog, EscapeActsAsCancel) {
    typed(QStringLiteral("10:00"));
    FrmQuick dlg(s);
    dlg.show();
    QTest::keyClick(&dlg, Qt::Key_Escape);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(s.vsSched.TextMatrix(21, 2), "");
}

TEST_F(FrmQuickDialog, IsPlacedBelowTheCellNotedInTwips) {
    typed(QStringLiteral("10:00"));
    QWidget main;
    main.setGeometry(40, 30, 700, 500);
    auto* sched = new QWidget(&main);
    sched->setObjectName(QStringLiteral("vsSched"));
    sched->setGeometry(10, 20, 600, 400);
    main.show();
    s.quick_left = 1440; // one inch
    s.quick_top = 1440;
    FrmQuick dlg(s, &main);
    const int dpi_x = sched->logicalDpiX(), dpi_y = sched->logicalDpiY();
    const QPoint cell = sched->mapToGlobal(QPoint(dpi_x, dpi_y));
    EXPECT_EQ(dlg.pos().x(), cell.x());
    EXPECT_GE(dlg.pos().y(), cell.y());
    EXPECT_LE(dlg.pos().y(), cell.y() + dpi_y / 2);
}

TEST_F(FrmQuickDialog, IsPlacedBelowTheCellTheGridShows) {
    typed(QStringLiteral("10:00"));
    QWidget main;
    main.setGeometry(40, 30, 700, 500);
    auto* sched = new GridWidget(&main);
    sched->setObjectName(QStringLiteral("vsSched"));
    sched->setGeometry(10, 20, 600, 400);
    s.vsSched.Select(3, 2);
    sched->setGrid(&s.vsSched);
    main.show();
    sched->refresh();
    const QRect cell = sched->cell_rect(3, 2);
    ASSERT_FALSE(cell.isEmpty());
    FrmQuick dlg(s, &main);
    EXPECT_EQ(dlg.pos(), sched->mapToGlobal(cell.bottomLeft() + QPoint(0, 1)));
    sched->setGrid(nullptr);
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

TEST_F(FrmQuickDialog, RegisteredFormOpensThroughTheSeam) {
    appt_rec& a = typed(QStringLiteral("10:00"));
    QtModal qt;
    register_frmQuick(qt, s);
    QString seen;
    when_modal([&](QWidget* w) {
        seen = w->objectName();
        auto* combo = w->findChild<QComboBox*>(QStringLiteral("typeIcombo"));
        combo->setCurrentIndex(combo->findData(QStringLiteral("Gift")));
        QTest::mouseClick(w->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    });
    qt.open_form(QStringLiteral("frmQuick"));
    EXPECT_EQ(seen, "frmQuick");
    EXPECT_EQ(a.appt_type.trimmed(), "Gift");
    EXPECT_EQ(a.appt_end.str(), "10:00");
}

} // namespace
} // namespace orva
