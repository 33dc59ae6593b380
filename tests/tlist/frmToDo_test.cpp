#include "../support/accessible.h"
#include "grid/ui/grid_widget.h"
#include "tlist/ui/frmToDo.h"
#include "tlist_fixtures.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolBar>
#include <QToolButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ToDoEnv;
using namespace todo_col;

struct FrmToDoDialog : ::testing::Test {
    ToDoEnv env;
    AppState& s() { return env.s(); }

    std::unique_ptr<FrmToDo> open() {
        auto dlg = std::make_unique<FrmToDo>(s());
        dlg->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dlg.get()));
        dlg->grid_widget()->refresh();
        return dlg;
    }
    template <class W> static W* child(QWidget& dlg, const char* name) {
        W* w = dlg.findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    static QPoint at(GridWidget* w, int row, int col) {
        return w->viewport()->mapFrom(w, w->cell_rect(row, col).center());
    }
    static void click(GridWidget* w, int row, int col) {
        w->refresh();
        QTest::mouseClick(w->viewport(), Qt::LeftButton, Qt::NoModifier, at(w, row, col));
        w->refresh();
    }
    // The open cell editor; closed ones linger hidden until deleted.
    static QLineEdit* editor_of(GridWidget* w) {
        for (QLineEdit* e : w->findChildren<QLineEdit*>())
            if (!e->isHidden()) return e;
        return nullptr;
    }
    // Types a line into a row's text cell with the keyboard and ends the
    // edit with Return.
    static void type_line(GridWidget* w, int row, const QString& text) {
        click(w, row, todo_col::text);
        w->setFocus();
        QTest::keyClick(w, Qt::Key_F2);
        QLineEdit* editor = editor_of(w);
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents(); // the editor commits on the next turn
        ASSERT_FALSE(w->is_editing());
        w->refresh();
    }
    static void trigger(FrmToDo& dlg, const char* key) {
        QAction* a = dlg.tool(QString::fromLatin1(key));
        ASSERT_NE(a, nullptr) << key;
        a->trigger();
        dlg.grid_widget()->refresh();
    }
};

TEST_F(FrmToDoDialog, ControlsAreFoundByTheirNames) {
    auto dlg = open();
    EXPECT_EQ(dlg->objectName(), "frmToDo");
    EXPECT_EQ(dlg->windowTitle(), "T-List");
    auto* label = child<QLabel>(*dlg, "Label2");
    auto* grid = child<GridWidget>(*dlg, "vsToDo");
    auto* combo = child<QComboBox>(*dlg, "typeIcombo");
    auto* image = child<QToolButton>(*dlg, "Image1");
    auto* ok = child<QPushButton>(*dlg, "Command1");
    auto* cancel = child<QPushButton>(*dlg, "Command2");
    auto* bar = child<QToolBar>(*dlg, "Toolbar1");
    ASSERT_TRUE(label && grid && combo && image && ok && cancel && bar);
    EXPECT_EQ(label->text(), " My \"To Do\" list:");
    EXPECT_EQ(grid->grid(), &dlg->form().vsToDo);
    EXPECT_EQ(ok->text(), "OK");
    EXPECT_EQ(cancel->text(), "Cancel");
    EXPECT_EQ(testing::spoken_description(grid), "vsToDo");
    EXPECT_EQ(testing::spoken_name(ok), "OK");
    EXPECT_FALSE(testing::spoken_name(image).isEmpty());
    ASSERT_EQ(combo->count(), 75);
    EXPECT_EQ(combo->currentIndex(), 0);
    EXPECT_EQ(combo->itemText(2), " Airplane");
    EXPECT_FALSE(combo->itemIcon(2).isNull());
    QStringList keys;
    for (QAction* a : bar->actions())
        if (!a->isSeparator()) keys << a->text();
    EXPECT_EQ(keys, QStringList({"Copy", "Cut", "Paste", "Color", "Italics", "Bold", "Font Size",
                                 "Insert", "Tab Right", "Tab Left", "Timestamp", "Checkmark",
                                 "Delete", "Print", "Help"}));
    for (QAction* a : bar->actions()) {
        if (a->isSeparator()) continue;
        EXPECT_EQ(a->toolTip(), a->text());
        EXPECT_FALSE(a->icon().isNull()) << a->text().toStdString();
        QWidget* button = bar->widgetForAction(a);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(testing::spoken_name(button), a->text());
    }
}

TEST_F(FrmToDoDialog, ANewSheetShowsItsFirstSentenceAndTheMenuEntryIsOffWhileOpen) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    EXPECT_EQ(w->model()->rowCount(), 50);
    EXPECT_EQ(w->model()->index(1, text).data().toString(), "BEGIN BY ENTERING YOUR LIST HERE!");
    EXPECT_TRUE(w->isColumnHidden(picture));
    EXPECT_FALSE(s().ctl(QStringLiteral("mnuTlist")).enabled);
    child<QPushButton>(*dlg, "Command2")->click();
    EXPECT_TRUE(s().ctl(QStringLiteral("mnuTlist")).enabled);
}

TEST_F(FrmToDoDialog, AClickInTheCheckOrIconColumnPutsTheCursorInTheText) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    for (int col : {check, icon}) {
        click(w, 6, col);
        EXPECT_EQ(dlg->form().vsToDo.Row(), 6);
        EXPECT_EQ(dlg->form().vsToDo.Col(), text) << col;
        EXPECT_EQ(w->currentIndex().column(), text) << col;
        EXPECT_EQ(dlg->form().row_now, 6);
    }
}

TEST_F(FrmToDoDialog, ARightPressIsCancelled) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    click(w, 3, text);
    QSignalSpy down(w, &GridWidget::mouseDown);
    QSignalSpy right(w, &GridWidget::rightClicked);
    QTest::mousePress(w->viewport(), Qt::RightButton, Qt::NoModifier, at(w, 8, stamp));
    QTest::mouseRelease(w->viewport(), Qt::RightButton, Qt::NoModifier, at(w, 8, stamp));
    w->refresh();
    EXPECT_EQ(down.count(), 0);
    EXPECT_EQ(right.count(), 0);
    EXPECT_EQ(dlg->form().vsToDo.Row(), 3);
    EXPECT_EQ(dlg->form().vsToDo.Col(), text);
}

TEST_F(FrmToDoDialog, ABoxPutByCheckmarkIsTickedByAClickAndTheRowStamped) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    const Grid& g = dlg->form().vsToDo;
    click(w, 4, text);
    trigger(*dlg, "Checkmark");
    EXPECT_EQ(g.CellChecked(4, check), CheckBox::Unchecked);
    EXPECT_EQ(g.TextMatrix(4, stamp), "");
    click(w, 4, check);
    EXPECT_EQ(g.CellChecked(4, check), CheckBox::Checked);
    EXPECT_EQ(g.TextMatrix(4, check), "-1");
    EXPECT_EQ(g.TextMatrix(4, stamp), todo_stamp());
    EXPECT_EQ(g.Col(), text);
    click(w, 5, check); // no box there
    EXPECT_EQ(g.CellChecked(5, check), CheckBox::None);
}

TEST_F(FrmToDoDialog, TypingALineStampsItAndFitsTheColumns) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    const Grid& g = dlg->form().vsToDo;
    const int width = g.ColWidth(text);
    type_line(w, 2, QString(90, u'W'));
    EXPECT_EQ(g.TextMatrix(2, text), QString(90, u'W'));
    EXPECT_EQ(g.TextMatrix(2, stamp), todo_stamp());
    EXPECT_GT(g.ColWidth(text), width);
}

TEST_F(FrmToDoDialog, CopyCutAndPasteGoThroughTheClipboard) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    Grid& g = dlg->form().vsToDo;
    g.setTextMatrix(3, text, QStringLiteral("Milk"));
    g.setTextMatrix(4, text, QStringLiteral("Eggs"));
    g.Select(3, text, 4, text);
    w->refresh();
    QClipboard* board = QGuiApplication::clipboard();
    board->setText(QStringLiteral("before"));
    trigger(*dlg, "Copy");
    EXPECT_EQ(board->text(), "Milk\nEggs");
    trigger(*dlg, "Cut");
    EXPECT_EQ(board->text(), "Milk\nEggs");
    EXPECT_EQ(g.TextMatrix(3, text), "");
    g.Select(10, text);
    w->refresh();
    trigger(*dlg, "Paste");
    EXPECT_EQ(g.TextMatrix(10, text), "Milk");
    EXPECT_EQ(g.TextMatrix(11, text), "Eggs");
}

TEST_F(FrmToDoDialog, Image1AddsALineAtTheEndAndShowsIt) {
    auto dlg = open();
    child<QToolButton>(*dlg, "Image1")->click();
    GridWidget* w = dlg->grid_widget();
    w->refresh();
    EXPECT_EQ(w->model()->rowCount(), 51);
    EXPECT_EQ(w->currentIndex().row(), 50);
    EXPECT_FALSE(w->cell_rect(50, text).isEmpty());
    EXPECT_TRUE(w->viewport()->rect().intersects(
        QRect(w->viewport()->mapFrom(w, w->cell_rect(50, text).topLeft()),
              w->cell_rect(50, text).size())));
}

TEST_F(FrmToDoDialog, OkSavesTheSheet) {
    auto dlg = open();
    type_line(dlg->grid_widget(), 0, QStringLiteral("Saved by OK"));
    child<QPushButton>(*dlg, "Command1")->click();
    EXPECT_FALSE(dlg->isVisible());
    Grid saved;
    ASSERT_TRUE(saved.load_bytes(env.member()));
    EXPECT_EQ(saved.TextMatrix(0, text), "Saved by OK");
}

TEST_F(FrmToDoDialog, TheCloseBoxSavesEvenALineStillBeingTyped) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    type_line(w, 0, QStringLiteral("First"));
    click(w, 1, text);
    w->setFocus();
    QTest::keyClick(w, Qt::Key_F2);
    QLineEdit* editor = editor_of(w);
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Second"));
    dlg->close();
    EXPECT_FALSE(dlg->isVisible());
    Grid saved;
    ASSERT_TRUE(saved.load_bytes(env.member()));
    EXPECT_EQ(saved.TextMatrix(0, text), "First");
    EXPECT_EQ(saved.TextMatrix(1, text), "Second");
    EXPECT_EQ(saved.TextMatrix(1, stamp), todo_stamp());
}

TEST_F(FrmToDoDialog, CancelLosesEveryEditSinceOpening) {
    {
        auto dlg = open();
        type_line(dlg->grid_widget(), 0, QStringLiteral("Kept"));
        child<QPushButton>(*dlg, "Command1")->click();
    }
    const QByteArray kept = env.member();
    auto dlg = open();
    type_line(dlg->grid_widget(), 0, QStringLiteral("Lost"));
    child<QToolButton>(*dlg, "Image1")->click();
    trigger(*dlg, "Checkmark");
    child<QPushButton>(*dlg, "Command2")->click();
    EXPECT_FALSE(dlg->isVisible());
    EXPECT_TRUE(dlg->form().cancelled);
    EXPECT_EQ(env.member(), kept);
}

TEST_F(FrmToDoDialog, ColorWithCancelChangesNothing) {
    auto dlg = open();
    click(dlg->grid_widget(), 2, text);
    const QByteArray before = dlg->form().vsToDo.save_bytes();
    env.m.color_answers.push_back(std::nullopt);
    trigger(*dlg, "Color");
    EXPECT_NE(env.m.last(u"color"), nullptr);
    EXPECT_EQ(dlg->form().vsToDo.save_bytes(), before);
}

TEST_F(FrmToDoDialog, PrintShowsTheHeadingBehindTheDialogAndLeavesNoTrace) {
    auto dlg = open();
    GridWidget* w = dlg->grid_widget();
    Grid& g = dlg->form().vsToDo;
    type_line(w, 3, QStringLiteral("Print me"));
    const QByteArray before = g.save_bytes();
    const QString pdf = env.dir.filePath(QStringLiteral("list.pdf"));
    PrintSetup setup;
    setup.output_file = pdf;
    env.m.print_answers.push_back(setup);
    bool seen = false;
    env.m.during_print = [&] {
        seen = true;
        EXPECT_EQ(g.TextMatrix(0, text), " My \"To Do\" list:");
        EXPECT_EQ(g.FixedRows(), 1);
        EXPECT_TRUE(g.Cell(CellSetting::FontBold, 0, text).toBool());
        EXPECT_GE(g.Cell(CellSetting::FontSize, 0, text).toDouble(), 14.0);
        EXPECT_TRUE(g.RowHidden(2));
        EXPECT_FALSE(g.RowHidden(5)); // "Print me", two rows down
        EXPECT_FALSE(w->updatesEnabled());
    };
    trigger(*dlg, "Print");
    EXPECT_TRUE(seen);
    EXPECT_TRUE(w->updatesEnabled());
    EXPECT_GT(QFileInfo(pdf).size(), 0);
    EXPECT_TRUE(env.m.messages().empty());
    EXPECT_EQ(g.save_bytes(), before);
    EXPECT_EQ(w->model()->rowCount(), 50);
    EXPECT_EQ(w->model()->index(0, text).data().toString(), "");
    child<QPushButton>(*dlg, "Command1")->click();
    EXPECT_EQ(env.member(), before);
    EXPECT_FALSE(env.member().contains("To Do"));
}

// A T-List edited through the dialog, saved, and opened again by a program
// started anew on the same calendar file.
TEST_F(FrmToDoDialog, ASheetEditedSavedAndReopenedAfterARestartIsTheSame) {
    QString stamp_of_milk;
    {
        auto dlg = open();
        GridWidget* w = dlg->grid_widget();
        const Grid& g = dlg->form().vsToDo;
        type_line(w, 0, QStringLiteral("Groceries"));
        type_line(w, 1, QStringLiteral("Milk"));
        type_line(w, 2, QStringLiteral("Call the plumber"));
        click(w, 1, text);
        trigger(*dlg, "Tab Right");
        trigger(*dlg, "Checkmark");
        env.clock.advance_secs(3600);
        click(w, 1, check);
        stamp_of_milk = g.TextMatrix(1, stamp);
        EXPECT_EQ(stamp_of_milk, todo_stamp());
        auto* combo = child<QComboBox>(*dlg, "typeIcombo");
        combo->setCurrentIndex(2 + 13); // " Candle"
        emit combo->activated(combo->currentIndex());
        click(w, 0, text);
        trigger(*dlg, "Bold");
        click(w, 2, text);
        env.m.color_answers.push_back(rgb(200, 0, 0));
        trigger(*dlg, "Color");
        trigger(*dlg, "Italics");
        EXPECT_EQ(w->model()->index(1, text).data().toString(), "    Milk");
        child<QPushButton>(*dlg, "Command1")->click();
    }

    env.fresh_state();
    auto dlg = open();
    const Grid& h = dlg->form().vsToDo;
    GridWidget* w = dlg->grid_widget();
    EXPECT_EQ(h.Rows(), 50);
    EXPECT_EQ(h.TextMatrix(0, text), "Groceries");
    EXPECT_EQ(h.TextMatrix(1, text), "    Milk");
    EXPECT_EQ(h.TextMatrix(2, text), "Call the plumber");
    EXPECT_EQ(h.CellChecked(1, check), CheckBox::Checked);
    EXPECT_EQ(h.CellChecked(0, check), CheckBox::None);
    EXPECT_EQ(h.TextMatrix(1, stamp), stamp_of_milk);
    EXPECT_FALSE(h.TextMatrix(0, stamp).isEmpty());
    EXPECT_EQ(h.TextMatrix(1, picture), "13");
    EXPECT_EQ(h.Cell(CellSetting::Picture, 1, icon).toString(), "Candle");
    EXPECT_TRUE(h.Cell(CellSetting::FontBold, 0, text).toBool());
    EXPECT_FALSE(h.Cell(CellSetting::FontBold, 1, text).toBool());
    EXPECT_EQ(h.Cell(CellSetting::ForeColor, 2, text).toUInt(), rgb(200, 0, 0));
    EXPECT_TRUE(h.Cell(CellSetting::FontItalic, 2, text).toBool());
    // And the screen shows it so.
    const QModelIndex milk_box = w->model()->index(1, check);
    EXPECT_EQ(milk_box.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    EXPECT_EQ(w->model()->index(1, icon).data(GridModel::PictureKeyRole).toString(), "Candle");
    EXPECT_TRUE(w->model()->index(0, text).data(Qt::FontRole).value<QFont>().bold());
}

} // namespace
} // namespace orva
