#include "../support/accessible.h"
#include "../support/typing.h"
#include "../views/view_fixtures.h"
#include "appointments/ui/frmNotes.h"
#include "core/ui/qt_modal.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

QString padded(const QString& text) {
    return text.leftJustified(notes_limit, QLatin1Char(' '));
}

struct FrmNotesDialog : ::testing::Test {
    ViewEnv env;
    AppState& s = env.s;

    FrmNotesDialog() {
        s.caller_form = QStringLiteral("dtlfrm");
        s.notes_text = padded(QStringLiteral("Bring the forms"));
    }
    static QPlainTextEdit* box(QWidget& dlg) {
        auto* w = dlg.findChild<QPlainTextEdit*>(QStringLiteral("rtNotes"));
        EXPECT_NE(w, nullptr);
        return w;
    }
    static QPushButton* button(QWidget& dlg, const char* name) {
        auto* w = dlg.findChild<QPushButton*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
};

TEST_F(FrmNotesDialog, ControlsAreFoundByTheirNames) {
    FrmNotes dlg(s);
    EXPECT_EQ(dlg.objectName(), "frmNotes");
    EXPECT_EQ(dlg.windowTitle(), "Notes");
    ASSERT_TRUE(box(dlg));
    EXPECT_EQ(testing::spoken_name(box(dlg)), "Notes");
    EXPECT_EQ(testing::spoken_description(box(dlg)), "rtNotes");
    ASSERT_TRUE(button(dlg, "Command1") && button(dlg, "Command2"));
    EXPECT_EQ(button(dlg, "Command1")->text(), "OK");
    EXPECT_EQ(button(dlg, "Command2")->text(), "Cancel");
    EXPECT_EQ(testing::spoken_name(button(dlg, "Command2")), "Cancel");
    EXPECT_EQ(testing::spoken_description(button(dlg, "Command2")), "Command2");
    EXPECT_EQ(testing::spoken_name(&dlg), "Notes");
    EXPECT_EQ(testing::spoken_description(&dlg), "frmNotes");
}

TEST_F(FrmNotesDialog, ShowsTheNotesInTheOptionsFontWithTheCursorAtTheEnd) {
    s.grid_font_size = QStringLiteral("12");
    s.grid_font_bold = true;
    FrmNotes dlg(s);
    QPlainTextEdit* t = box(dlg);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->toPlainText(), "Bring the forms");
    EXPECT_EQ(t->textCursor().position(), 15);
    EXPECT_TRUE(t->font().bold());
    EXPECT_DOUBLE_EQ(t->font().pointSizeF(), 12.0);
}

TEST_F(FrmNotesDialog, BlankNotesShowAnEmptyBox) {
    s.notes_text = padded(QString());
    FrmNotes dlg(s);
    ASSERT_TRUE(box(dlg));
    EXPECT_EQ(box(dlg)->toPlainText(), "");
}

TEST_F(FrmNotesDialog, TypingStopsAtTwoHundredCharacters) {
    s.notes_text = padded(QString());
    FrmNotes dlg(s);
    dlg.show();
    QPlainTextEdit* t = box(dlg);
    ASSERT_TRUE(t);
    QTest::keyClicks(t, QString(210, QLatin1Char('x')));
    EXPECT_EQ(t->toPlainText(), QString(200, QLatin1Char('x')));
}

TEST_F(FrmNotesDialog, PastedExcessIsCutFromWhatArrived) {
    s.notes_text = padded(QStringLiteral("abc"));
    FrmNotes dlg(s);
    QPlainTextEdit* t = box(dlg);
    ASSERT_TRUE(t);
    QTextCursor c = t->textCursor();
    c.setPosition(0);
    t->setTextCursor(c);
    t->insertPlainText(QString(250, QLatin1Char('x')));
    EXPECT_EQ(t->toPlainText(), QString(197, QLatin1Char('x')) + QStringLiteral("abc"));
}

TEST_F(FrmNotesDialog, Utf8TypingStopsAtTwoHundredBytesBetweenCharacters) {
    s.notes_text = padded(QString());
    FrmNotes dlg(s);
    dlg.show();
    QPlainTextEdit* t = box(dlg);
    ASSERT_TRUE(t);
    // Three bytes each: the 67th would make 201.
    testing::type_text(t, QString(67, u'会'));
    EXPECT_EQ(t->toPlainText(), QString(66, u'会'));
    testing::type_text(t, QStringLiteral("ab"));
    EXPECT_EQ(t->toPlainText(), QString(66, u'会') + QStringLiteral("ab"));
    testing::type_text(t, QStringLiteral("🎉"));
    EXPECT_EQ(t->toPlainText(), QString(66, u'会') + QStringLiteral("ab"));
}

TEST_F(FrmNotesDialog, Utf8PastedExcessIsCutFromWhatArrivedBetweenCharacters) {
    s.notes_text = padded(QStringLiteral("abc"));
    FrmNotes dlg(s);
    QPlainTextEdit* t = box(dlg);
    ASSERT_TRUE(t);
    QTextCursor c = t->textCursor();
    c.setPosition(0);
    t->setTextCursor(c);
    t->insertPlainText(QString(120, u'Ж'));
    EXPECT_EQ(t->toPlainText(), QString(98, u'Ж') + QStringLiteral("abc"));
}

TEST_F(FrmNotesDialog, Utf8NotesInAnyScriptShowAndComeBackFromOk) {
    for (const QString& text : testing::texts_in_many_scripts()) {
        // As the detail pane hands a field over: blanks to its width in bytes.
        s.notes_text = Fixed<200>(text).str();
        FrmNotes dlg(s);
        dlg.show();
        ASSERT_TRUE(box(dlg));
        EXPECT_EQ(box(dlg)->toPlainText(), text);
        testing::type_text(box(dlg), QStringLiteral(" Встреча"));
        QTest::mouseClick(button(dlg, "Command1"), Qt::LeftButton);
        EXPECT_EQ(s.notes_text, text + QStringLiteral(" Встреча"));
        EXPECT_TRUE(s.notes_dirty);
    }
}

TEST_F(FrmNotesDialog, OkWithChangedTextSetsDirty) {
    FrmNotes dlg(s);
    dlg.show();
    ASSERT_TRUE(box(dlg));
    QTest::keyClicks(box(dlg), QStringLiteral(" today"));
    QTest::mouseClick(button(dlg, "Command1"), Qt::LeftButton);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(dlg.result(), QDialog::Accepted);
    EXPECT_TRUE(s.notes_dirty);
    EXPECT_EQ(s.notes_text, "Bring the forms today");
}

TEST_F(FrmNotesDialog, OkWithUnchangedTextIsNoChange) {
    FrmNotes dlg(s);
    dlg.show();
    QTest::mouseClick(button(dlg, "Command1"), Qt::LeftButton);
    EXPECT_FALSE(s.notes_dirty);
    EXPECT_EQ(s.notes_text, "Bring the forms");
}

TEST_F(FrmNotesDialog, CancelClearsDirtyAndKeepsTheNotes) {
    s.notes_dirty = true;
    FrmNotes dlg(s);
    dlg.show();
    QTest::keyClicks(box(dlg), QStringLiteral(" today"));
    QTest::mouseClick(button(dlg, "Command2"), Qt::LeftButton);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_FALSE(s.notes_dirty);
    EXPECT_EQ(s.notes_text, padded(QStringLiteral("Bring the forms")));
}

TEST_F(FrmNotesDialog, CloseBoxActsAsCancel) {
    s.notes_dirty = true;
    FrmNotes dlg(s);
    dlg.show();
    dlg.close();
    EXPECT_FALSE(s.notes_dirty);
}

TEST_F(FrmNotesDialog, OpensBesideTheDetailPane) {
    QWidget main;
    main.setGeometry(50, 60, 700, 500);
    auto* pane = new QWidget(&main);
    pane->setObjectName(QStringLiteral("Frame2"));
    pane->setGeometry(20, 30, 300, 200);
    main.show();
    FrmNotes dlg(s, &main);
    const QPoint expected = pane->mapToGlobal(QPoint()) + QPoint(1800 * pane->logicalDpiX() / 1440,
                                                                 200 * pane->logicalDpiY() / 1440);
    EXPECT_EQ(dlg.pos(), expected);
}

TEST_F(FrmNotesDialog, OpensBesideTheEditorCorner) {
    s.caller_form = QStringLiteral("apptfrm");
    QWidget main;
    main.setGeometry(10, 10, 700, 500);
    QDialog editor(&main);
    editor.setObjectName(QStringLiteral("frmAppt1"));
    editor.setGeometry(30, 40, 400, 300);
    main.show();
    editor.show();
    FrmNotes dlg(s, &main);
    const QPoint expected =
        editor.frameGeometry().topLeft() +
        QPoint(2400 * editor.logicalDpiX() / 1440, 200 * editor.logicalDpiY() / 1440);
    EXPECT_EQ(dlg.pos(), expected);
}

TEST_F(FrmNotesDialog, WithoutItsAnchorOpensCentredOnTheWindow) {
    QWidget main;
    main.setGeometry(50, 60, 700, 500);
    main.show();
    FrmNotes dlg(s, &main);
    const QPoint centre = dlg.frameGeometry().center();
    EXPECT_NEAR(centre.x(), main.frameGeometry().center().x(), 2);
    EXPECT_NEAR(centre.y(), main.frameGeometry().center().y(), 2);
}

TEST_F(FrmNotesDialog, RegisteredFormOpensThroughTheSeam) {
    QtModal qt;
    register_frmNotes(qt, s);
    QString seen;
    std::function<void(int)> poll = [&](int tries) {
        QTimer::singleShot(10, [&, tries] {
            if (QWidget* w = QApplication::activeModalWidget()) {
                seen = w->objectName();
                auto* t = w->findChild<QPlainTextEdit*>(QStringLiteral("rtNotes"));
                t->setPlainText(QStringLiteral("New notes"));
                QTest::mouseClick(w->findChild<QPushButton*>(QStringLiteral("Command1")),
                                  Qt::LeftButton);
            } else if (tries > 0) {
                poll(tries - 1);
            } else {
                for (QWidget* w : QApplication::topLevelWidgets())
                    if (auto* d = qobject_cast<QDialog*>(w); d && d->isVisible())
                        d->done(QDialog::Rejected);
            }
        });
    };
    poll(50);
    qt.open_form(QStringLiteral("frmNotes"));
    EXPECT_EQ(seen, "frmNotes");
    EXPECT_EQ(s.notes_text, "New notes");
    EXPECT_TRUE(s.notes_dirty);
}

} // namespace
} // namespace orva
