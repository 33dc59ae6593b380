#include "tlist_fixtures.h"

#include "appointments/appt_editor.h"
#include "store/backups.h"
#include "support/io_shim.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ToDoEnv;
using namespace todo_col;

struct ToDoSheet : ::testing::Test {
    ToDoEnv env;
    AppState& s() { return env.s(); }
    ClipText clip;

    void key(ToDoForm& f, const char* k) {
        Toolbar1_ButtonClick(f, s().options(), s().help(), QString::fromLatin1(k), clip);
    }
    // A user's edit of a line's text, as the grid reports it.
    static void type(ToDoForm& f, int row, const QString& text) {
        bool cancel = false;
        vsToDo_BeforeEdit(f, row, todo_col::text, cancel);
        ASSERT_FALSE(cancel);
        f.vsToDo.setTextMatrix(row, todo_col::text, text);
        vsToDo_AfterEdit(f, row, todo_col::text);
    }
    static void select_rows(ToDoForm& f, int first, int last) {
        f.vsToDo.Select(first, todo_col::text, last, todo_col::text);
        vsToDo_EnterCell(f);
    }
};

// --- opening ------------------------------------------------------------

TEST_F(ToDoSheet, ANewSheetHasFiftyRowsAndItsFirstSentenceInUpperCase) {
    auto f = env.open();
    EXPECT_EQ(f->vsToDo.Rows(), 50);
    EXPECT_EQ(f->vsToDo.TextMatrix(1, text), "BEGIN BY ENTERING YOUR LIST HERE!");
    int filled = 0;
    for (int r = 0; r < 50; ++r)
        for (int c = 0; c < count; ++c)
            filled += !f->vsToDo.TextMatrix(r, c).isEmpty();
    EXPECT_EQ(filled, 1);
}

TEST_F(ToDoSheet, OpeningSetsUpTheColumnsTheTypesAndTheCursor) {
    auto f = env.open();
    const Grid& g = f->vsToDo;
    EXPECT_EQ(g.Cols(), 5);
    EXPECT_EQ(g.FixedRows(), 0);
    EXPECT_EQ(g.FixedCols(), 0);
    EXPECT_EQ(g.BackColor(), rgb(255, 255, 255));
    EXPECT_EQ(g.ColDataType(check), ColType::Boolean);
    EXPECT_EQ(g.ColDataType(text), ColType::Text);
    EXPECT_EQ(g.ColWidth(check), 400);
    EXPECT_EQ(g.ColWidth(icon), 400);
    EXPECT_EQ(g.ColWidth(text), todo_grid_width / 2 + 200);
    EXPECT_EQ(g.ColWidth(stamp), 2400);
    EXPECT_FALSE(g.ColHidden(stamp));
    EXPECT_TRUE(g.ColHidden(picture));
    EXPECT_EQ(g.RowHeightMin(), 350);
    EXPECT_GE(g.RowHeight(30), 350);
    EXPECT_TRUE(g.Editable());
    EXPECT_EQ(g.Row(), 0);
    EXPECT_EQ(g.Col(), text);
    EXPECT_EQ(f->row_now, 0);
    EXPECT_EQ(f->col_now, text);
    EXPECT_EQ(g.Cell(CellSetting::FontName, 7, text).toString(), "DejaVu Sans");
    EXPECT_EQ(g.Cell(CellSetting::FontSize, 7, stamp).toDouble(), 9.0);
    ASSERT_EQ(f->typeIcombo.items.size(), 75u);
    EXPECT_EQ(f->typeIcombo.list_index, 0);
    EXPECT_EQ(f->typeIcombo.items[1].caption, sticker_delete_caption);
    EXPECT_EQ(f->Label2, " My \"To Do\" list:");
}

TEST_F(ToDoSheet, TheTextColumnTakesHalfTheGridsWidthAndTwoHundred) {
    ToDoForm f;
    f.vsToDo.set_extent(12000, 6000);
    frmToDo_Load(s().store(), s().view(), s().options(), f);
    EXPECT_EQ(f.vsToDo.ColWidth(text), 6200);
}

TEST_F(ToDoSheet, TheMenuEntryIsDisabledWhileTheSheetIsOpen) {
    auto f = env.open();
    EXPECT_FALSE(s().ctl(QStringLiteral("mnuTlist")).enabled);
    frmToDo_Unload(s().store(), s().view(), *f);
    EXPECT_TRUE(s().ctl(QStringLiteral("mnuTlist")).enabled);
}

TEST_F(ToDoSheet, ADamagedMemberOpensAsANewSheet) {
    ASSERT_EQ(s().archive.put(env.cal(), todo_member, QByteArray("not a grid")), 0);
    auto f = env.open();
    EXPECT_EQ(f->vsToDo.Rows(), 50);
    EXPECT_EQ(f->vsToDo.TextMatrix(1, text), todo_first_line);
    EXPECT_TRUE(env.m.shown.empty());
}

// --- levels ---------------------------------------------------------------

TEST_F(ToDoSheet, TabRightPutsFourBlanksBeforeEachSelectedLine) {
    auto f = env.open();
    f->vsToDo.setTextMatrix(3, text, QStringLiteral("Milk"));
    f->vsToDo.setTextMatrix(4, text, QStringLiteral("  Eggs"));
    select_rows(*f, 4, 3);
    key(*f, "Tab Right");
    EXPECT_EQ(f->vsToDo.TextMatrix(3, text), "    Milk");
    EXPECT_EQ(f->vsToDo.TextMatrix(4, text), "      Eggs");
    EXPECT_EQ(f->vsToDo.TextMatrix(5, text), "");
    EXPECT_EQ(f->vsToDo.TextMatrix(2, text), "");
}

TEST_F(ToDoSheet, TabLeftOnTwelveLeadingBlanksLeavesNone) {
    auto f = env.open();
    f->vsToDo.setTextMatrix(3, text, QString(12, u' ') + QStringLiteral("Call  the bank "));
    select_rows(*f, 3, 3);
    key(*f, "Tab Left");
    EXPECT_EQ(f->vsToDo.TextMatrix(3, text), "Call  the bank ");
}

TEST_F(ToDoSheet, TabLeftOnALineWithoutLeadingBlanksLeavesItUnchanged) {
    auto f = env.open();
    f->vsToDo.setTextMatrix(3, text, QStringLiteral("Call the bank   "));
    select_rows(*f, 3, 3);
    key(*f, "Tab Left");
    EXPECT_EQ(f->vsToDo.TextMatrix(3, text), "Call the bank   ");
}

// --- rows -------------------------------------------------------------------

TEST_F(ToDoSheet, DeleteOfThreeRowsInASheetOfFiftyLeavesFiftyRowsTheLastThreeBlank) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    for (int r = 0; r < 50; ++r)
        g.setTextMatrix(r, text, QStringLiteral("line %1").arg(r));
    select_rows(*f, 10, 12);
    key(*f, "Delete");
    ASSERT_EQ(g.Rows(), 50);
    EXPECT_EQ(g.TextMatrix(9, text), "line 9");
    EXPECT_EQ(g.TextMatrix(10, text), "line 13");
    EXPECT_EQ(g.TextMatrix(46, text), "line 49");
    for (int r = 47; r < 50; ++r) {
        EXPECT_EQ(g.TextMatrix(r, check), " ") << r;
        EXPECT_EQ(g.TextMatrix(r, icon), " ") << r;
        EXPECT_EQ(g.TextMatrix(r, text), "") << r;
        EXPECT_EQ(g.TextMatrix(r, stamp), "") << r;
        EXPECT_EQ(g.CellChecked(r, check), CheckBox::None) << r;
    }
}

TEST_F(ToDoSheet, InsertPutsARowOfOneBlankBelowTheCurrentRow) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    g.setTextMatrix(4, text, QStringLiteral("Four"));
    g.setTextMatrix(5, text, QStringLiteral("Five"));
    select_rows(*f, 4, 4);
    key(*f, "Insert");
    ASSERT_EQ(g.Rows(), 51);
    EXPECT_EQ(g.TextMatrix(4, text), "Four");
    EXPECT_EQ(g.TextMatrix(5, check), " ");
    EXPECT_EQ(g.TextMatrix(5, text), "");
    EXPECT_EQ(g.TextMatrix(6, text), "Five");
    EXPECT_EQ(g.Cell(CellSetting::PictureAlignment, 5, icon).toInt(), int(Align::RightCenter));
    EXPECT_TRUE(g.cell_has(CellSetting::FontName, 5, text));
    EXPECT_EQ(g.Cell(CellSetting::FontSize, 5, stamp).toDouble(), 9.0);
}

TEST_F(ToDoSheet, Image1AddsASelectedRowOfOneBlankAtTheEnd) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    Image1_Click(*f, s().options());
    ASSERT_EQ(g.Rows(), 51);
    EXPECT_EQ(g.TextMatrix(50, check), " ");
    EXPECT_EQ(g.TextMatrix(50, text), "");
    EXPECT_EQ(g.CellChecked(50, check), CheckBox::None);
    EXPECT_EQ(g.Row(), 50);
    EXPECT_EQ(g.Col(), text);
    EXPECT_EQ(f->row_now, 50);
    EXPECT_EQ(g.RowHeight(50), 350);
    EXPECT_EQ(g.Cell(CellSetting::FontName, 50, text).toString(), "DejaVu Sans");
    EXPECT_TRUE(g.cell_has(CellSetting::FontSize, 50, text));
    EXPECT_EQ(g.shown_row(), 50);
}

// --- stamps -----------------------------------------------------------------

TEST_F(ToDoSheet, TheStampIsTheShortDateAndTheTimeWithAmOrPm) {
    EXPECT_EQ(todo_stamp(), short_date_text(QDate(2026, 3, 15)) + " 09:10 AM");
    env.clock.set(QDateTime(QDate(2026, 3, 16), QTime(14, 5)));
    EXPECT_EQ(todo_stamp(), short_date_text(QDate(2026, 3, 16)) + " 02:05 PM");
}

TEST_F(ToDoSheet, ALineEditedAgainShowsTheNewStamp) {
    auto f = env.open();
    type(*f, 3, QStringLiteral("Buy stamps"));
    const QString first = f->vsToDo.TextMatrix(3, stamp);
    EXPECT_EQ(first, todo_stamp());
    env.clock.set(QDateTime(QDate(2026, 3, 17), QTime(16, 45)));
    type(*f, 3, QStringLiteral("Buy stamps and envelopes"));
    EXPECT_EQ(f->vsToDo.TextMatrix(3, stamp), short_date_text(QDate(2026, 3, 17)) + " 04:45 PM");
    EXPECT_NE(f->vsToDo.TextMatrix(3, stamp), first);
    EXPECT_EQ(f->vsToDo.TextMatrix(4, stamp), "");
}

TEST_F(ToDoSheet, StylingCommandsLeaveTheStampAlone) {
    auto f = env.open();
    type(*f, 3, QStringLiteral("Buy stamps"));
    const QString first = f->vsToDo.TextMatrix(3, stamp);
    env.clock.set(QDateTime(QDate(2026, 3, 17), QTime(16, 45)));
    select_rows(*f, 3, 3);
    env.m.color_answers.push_back(rgb(200, 0, 0));
    for (const char* k : {"Bold", "Italics", "Color", "Font Size", "Tab Right", "Tab Left",
                          "Checkmark", "Timestamp"})
        key(*f, k);
    EXPECT_EQ(f->vsToDo.TextMatrix(3, stamp), first);
}

TEST_F(ToDoSheet, TimestampHidesAndShowsTheStampColumn) {
    auto f = env.open();
    key(*f, "Timestamp");
    EXPECT_TRUE(f->vsToDo.ColHidden(stamp));
    key(*f, "Timestamp");
    EXPECT_FALSE(f->vsToDo.ColHidden(stamp));
}

TEST_F(ToDoSheet, AnEditFitsTheTextColumnToALongLine) {
    auto f = env.open();
    const int before = f->vsToDo.ColWidth(text);
    type(*f, 2, QString(120, u'W'));
    EXPECT_GT(f->vsToDo.ColWidth(text), before);
    type(*f, 2, QStringLiteral("short"));
    EXPECT_EQ(f->vsToDo.ColWidth(text), before);
}

// --- check boxes ------------------------------------------------------------

TEST_F(ToDoSheet, CheckmarkPutsAnEmptyBoxOnTheCurrentRow) {
    auto f = env.open();
    select_rows(*f, 6, 6);
    key(*f, "Checkmark");
    EXPECT_EQ(f->vsToDo.TextMatrix(6, check), "0");
    EXPECT_EQ(f->vsToDo.CellChecked(6, check), CheckBox::Unchecked);
    EXPECT_EQ(f->vsToDo.CellChecked(5, check), CheckBox::None);
}

TEST_F(ToDoSheet, ATickedBoxRemovedByCheckmarkLosesItsTickAndASecondCheckmarkBringsBackAnEmptyBox) {
    auto f = env.open();
    select_rows(*f, 6, 6);
    key(*f, "Checkmark");
    f->vsToDo.setCellChecked(6, check, CheckBox::Checked); // the user's tick
    ASSERT_EQ(f->vsToDo.TextMatrix(6, check), "-1");
    key(*f, "Checkmark");
    EXPECT_EQ(f->vsToDo.TextMatrix(6, check), "");
    EXPECT_EQ(f->vsToDo.CellChecked(6, check), CheckBox::None);
    key(*f, "Checkmark");
    EXPECT_EQ(f->vsToDo.TextMatrix(6, check), "0");
    EXPECT_EQ(f->vsToDo.CellChecked(6, check), CheckBox::Unchecked);
}

TEST_F(ToDoSheet, CheckmarkOnABlankRowPutsABox) {
    auto f = env.open();
    Image1_Click(*f, s().options());
    key(*f, "Checkmark");
    EXPECT_EQ(f->vsToDo.CellChecked(50, check), CheckBox::Unchecked);
}

TEST_F(ToDoSheet, ATickIsAnEditThatStampsItsRowAndLeavesTheCursorInTheText) {
    auto f = env.open();
    select_rows(*f, 6, 6);
    key(*f, "Checkmark");
    select_rows(*f, 1, 1);
    bool cancel = false;
    vsToDo_BeforeEdit(*f, 6, check, cancel);
    EXPECT_FALSE(cancel);
    EXPECT_EQ(f->vsToDo.Row(), 6);
    EXPECT_EQ(f->vsToDo.Col(), text);
    f->vsToDo.setCellChecked(6, check, CheckBox::Checked);
    vsToDo_AfterEdit(*f, 6, check);
    EXPECT_EQ(f->vsToDo.TextMatrix(6, stamp), todo_stamp());
}

// --- the cursor and the mouse -------------------------------------------------

TEST_F(ToDoSheet, TheCursorMovesOutOfTheCheckAndIconColumns) {
    auto f = env.open();
    for (int col : {check, icon}) {
        f->vsToDo.Select(7, col);
        vsToDo_EnterCell(*f);
        EXPECT_EQ(f->vsToDo.Row(), 7);
        EXPECT_EQ(f->vsToDo.Col(), text) << col;
        EXPECT_EQ(f->row_now, 7);
        EXPECT_EQ(f->col_now, text);
    }
    f->vsToDo.Select(8, stamp);
    vsToDo_EnterCell(*f);
    EXPECT_EQ(f->vsToDo.Col(), stamp);
    EXPECT_EQ(f->col_now, stamp);
}

TEST_F(ToDoSheet, MovingOutOfTheCheckColumnKeepsTheSelectedRows) {
    auto f = env.open();
    f->vsToDo.Select(9, check, 4, text);
    vsToDo_EnterCell(*f);
    EXPECT_EQ(f->vsToDo.Row(), 9);
    EXPECT_EQ(f->vsToDo.Col(), text);
    EXPECT_EQ(f->vsToDo.RowSel(), 4);
}

TEST_F(ToDoSheet, AnEditOfTheIconColumnIsCancelledAndTheCursorGoesToTheText) {
    auto f = env.open();
    bool cancel = false;
    vsToDo_BeforeEdit(*f, 5, icon, cancel);
    EXPECT_TRUE(cancel);
    EXPECT_EQ(f->vsToDo.Row(), 5);
    EXPECT_EQ(f->vsToDo.Col(), text);
    cancel = false;
    vsToDo_BeforeEdit(*f, 5, text, cancel);
    EXPECT_FALSE(cancel);
}

TEST_F(ToDoSheet, ARightMousePressIsCancelled) {
    auto f = env.open();
    bool cancel = false;
    vsToDo_BeforeMouseDown(*f, Qt::LeftButton, cancel);
    EXPECT_FALSE(cancel);
    vsToDo_BeforeMouseDown(*f, Qt::RightButton, cancel);
    EXPECT_TRUE(cancel);
}

// --- styling ---------------------------------------------------------------

TEST_F(ToDoSheet, BoldTogglesByTheTopLeftCellOverTheSelection) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    g.setCell(CellSetting::FontBold, 4, text, true);
    f->vsToDo.Select(6, stamp, 4, text); // chosen upwards: the top-left is (4, 2)
    key(*f, "Bold");
    for (int r = 4; r <= 6; ++r)
        for (int c = text; c <= stamp; ++c)
            EXPECT_FALSE(g.Cell(CellSetting::FontBold, r, c).toBool()) << r << "," << c;
    key(*f, "Bold");
    for (int r = 4; r <= 6; ++r)
        for (int c = text; c <= stamp; ++c)
            EXPECT_TRUE(g.Cell(CellSetting::FontBold, r, c).toBool()) << r << "," << c;
    EXPECT_FALSE(g.Cell(CellSetting::FontBold, 7, text).toBool());
    EXPECT_FALSE(g.Cell(CellSetting::FontBold, 3, text).toBool());
}

TEST_F(ToDoSheet, ItalicsTogglesByTheTopLeftCellOverTheSelection) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    g.setCell(CellSetting::FontItalic, 5, text, true); // not the top-left one
    select_rows(*f, 4, 5);
    key(*f, "Italics");
    EXPECT_TRUE(g.Cell(CellSetting::FontItalic, 4, text).toBool());
    EXPECT_TRUE(g.Cell(CellSetting::FontItalic, 5, text).toBool());
    key(*f, "Italics");
    EXPECT_FALSE(g.Cell(CellSetting::FontItalic, 4, text).toBool());
    EXPECT_FALSE(g.Cell(CellSetting::FontItalic, 5, text).toBool());
}

TEST_F(ToDoSheet, ColorGoesToTheTextOfTheCurrentCell) {
    auto f = env.open();
    select_rows(*f, 3, 5);
    env.m.color_answers.push_back(rgb(0, 128, 0));
    key(*f, "Color");
    ASSERT_NE(env.m.last(u"color"), nullptr);
    EXPECT_EQ(f->vsToDo.Cell(CellSetting::ForeColor, 3, text).toUInt(), rgb(0, 128, 0));
    EXPECT_FALSE(f->vsToDo.cell_has(CellSetting::ForeColor, 4, text));
}

TEST_F(ToDoSheet, ColorWithCancelChangesNothing) {
    auto f = env.open();
    select_rows(*f, 3, 3);
    const QByteArray before = f->vsToDo.save_bytes();
    env.m.color_answers.push_back(std::nullopt);
    key(*f, "Color");
    EXPECT_NE(env.m.last(u"color"), nullptr);
    EXPECT_FALSE(f->vsToDo.cell_has(CellSetting::ForeColor, 3, text));
    EXPECT_EQ(f->vsToDo.save_bytes(), before);
}

TEST_F(ToDoSheet, FontSizeDoesNothing) {
    auto f = env.open();
    select_rows(*f, 1, 3);
    const QByteArray before = f->vsToDo.save_bytes();
    key(*f, "Font Size");
    EXPECT_EQ(f->vsToDo.save_bytes(), before);
    EXPECT_TRUE(env.m.shown.empty());
}

TEST_F(ToDoSheet, HelpOpensTheHelpViewerOnTheSheetsTopic) {
    auto f = env.open();
    QString handed;
    env.m.forms[QStringLiteral("frmHelpIdx")] = [&] { handed = s().help_topic; };
    key(*f, "Help");
    ASSERT_NE(env.m.last(u"form"), nullptr);
    EXPECT_EQ(env.m.last(u"form")->text, "frmHelpIdx");
    EXPECT_EQ(handed, "topics/tlist.html");
    EXPECT_TRUE(s().help_topic.isEmpty());
}

// --- clipboard --------------------------------------------------------------

TEST_F(ToDoSheet, CopyPutsTheSelectionOnTheClipboardAsTabbedLines) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    g.setTextMatrix(3, text, QStringLiteral("Milk"));
    g.setTextMatrix(3, stamp, QStringLiteral("stamp 3"));
    g.setTextMatrix(4, text, QStringLiteral("Eggs"));
    g.Select(3, text, 4, stamp);
    clip.text = QStringLiteral("old");
    key(*f, "Copy");
    EXPECT_TRUE(clip.changed);
    EXPECT_EQ(clip.text, "Milk\tstamp 3\nEggs\t");
    EXPECT_EQ(g.TextMatrix(3, text), "Milk");
}

TEST_F(ToDoSheet, CutAlsoEmptiesTheSelectedCells) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    g.setTextMatrix(3, text, QStringLiteral("Milk"));
    g.setTextMatrix(4, text, QStringLiteral("Eggs"));
    g.setTextMatrix(5, text, QStringLiteral("Bread"));
    select_rows(*f, 3, 4);
    key(*f, "Cut");
    EXPECT_EQ(clip.text, "Milk\nEggs");
    EXPECT_EQ(g.TextMatrix(3, text), "");
    EXPECT_EQ(g.TextMatrix(4, text), "");
    EXPECT_EQ(g.TextMatrix(5, text), "Bread");
}

TEST_F(ToDoSheet, PasteWritesTheClipboardFromTheCursorOn) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    select_rows(*f, 7, 7);
    clip.text = QStringLiteral("Milk\nEggs\n");
    key(*f, "Paste");
    EXPECT_FALSE(clip.changed);
    EXPECT_EQ(g.TextMatrix(7, text), "Milk");
    EXPECT_EQ(g.TextMatrix(8, text), "Eggs");
    EXPECT_EQ(g.TextMatrix(9, text), "");
}

TEST_F(ToDoSheet, PasteOfAnEmptyClipboardChangesNothing) {
    auto f = env.open();
    select_rows(*f, 1, 1);
    clip.text.clear();
    key(*f, "Paste");
    EXPECT_EQ(f->vsToDo.TextMatrix(1, text), todo_first_line);
}

// --- types ------------------------------------------------------------------

TEST_F(ToDoSheet, TheTypesNumberIsItsPlaceInTheStickerTableLessOne) {
    EXPECT_EQ(todo_picture_number(QStringLiteral("Airplane")), 1);
    EXPECT_EQ(todo_picture_number(QStringLiteral("Speaker")), int(sticker_table().size()));
    EXPECT_EQ(todo_picture_number(QString()), 0);
    EXPECT_EQ(todo_picture_number(QStringLiteral("Nonsense")), 0);
    EXPECT_EQ(todo_picture_key(QStringLiteral("0")), "Airplane");
    EXPECT_EQ(todo_picture_key(QStringLiteral("11")), "Bus");
    EXPECT_EQ(todo_picture_key(QStringLiteral("-1")), "");
    EXPECT_EQ(todo_picture_key(QStringLiteral("73")), "");
    EXPECT_EQ(todo_picture_key(QStringLiteral("x")), "");
    EXPECT_EQ(todo_picture_key(QString()), "");
}

TEST_F(ToDoSheet, ChoosingATypePutsItsPictureAndNumberOnTheCurrentRow) {
    auto f = env.open();
    select_rows(*f, 4, 4);
    f->typeIcombo.list_index = 2 + 11; // " Bus "
    typeIcombo_Click(*f);
    const Grid& g = f->vsToDo;
    EXPECT_EQ(g.TextMatrix(4, picture), "11");
    EXPECT_EQ(g.Cell(CellSetting::Picture, 4, icon).toString(), "Bus");
    EXPECT_EQ(g.Cell(CellSetting::PictureAlignment, 4, icon).toInt(), 7);
    EXPECT_EQ(g.TextMatrix(4, stamp), "");
}

TEST_F(ToDoSheet, ARowWithoutAKeyTakesThePictureAway) {
    auto f = env.open();
    select_rows(*f, 4, 4);
    f->typeIcombo.list_index = 2;
    typeIcombo_Click(*f);
    for (int special : {1, 0}) {
        f->typeIcombo.list_index = 2;
        typeIcombo_Click(*f);
        f->typeIcombo.list_index = special;
        typeIcombo_Click(*f);
        EXPECT_EQ(f->vsToDo.TextMatrix(4, picture), "") << special;
        EXPECT_EQ(f->vsToDo.Cell(CellSetting::Picture, 4, icon).toString(), "") << special;
    }
}

TEST_F(ToDoSheet, OpeningPutsTheIconsBackFromTheirNumbers) {
    auto f = env.open();
    f->vsToDo.setTextMatrix(2, picture, QStringLiteral("0"));
    f->vsToDo.setTextMatrix(3, picture, QStringLiteral("99"));
    ASSERT_EQ(save_todo(s().store(), f->vsToDo), 0);
    auto again = env.open();
    EXPECT_EQ(again->vsToDo.Cell(CellSetting::Picture, 2, icon).toString(), "Airplane");
    EXPECT_EQ(again->vsToDo.Cell(CellSetting::PictureAlignment, 2, icon).toInt(), 7);
    EXPECT_EQ(again->vsToDo.Cell(CellSetting::Picture, 3, icon).toString(), "");
}

// --- print ------------------------------------------------------------------

TEST_F(ToDoSheet, PrintHidesEmptyLinesAndPutsTheHeadingOnTopWhileTheDialogIsUp) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    type(*f, 3, QStringLiteral("Milk"));
    bool seen = false;
    env.m.during_print = [&] {
        seen = true;
        EXPECT_EQ(g.Redraw(), 0);
        EXPECT_EQ(g.Rows(), 52);
        EXPECT_EQ(g.FixedRows(), 1);
        EXPECT_EQ(g.TextMatrix(0, text), " My \"To Do\" list:");
        for (int c = 0; c < g.Cols(); ++c) {
            EXPECT_TRUE(g.Cell(CellSetting::FontBold, 0, c).toBool()) << c;
            EXPECT_GE(g.Cell(CellSetting::FontSize, 0, c).toDouble(), 14.0) << c;
        }
        EXPECT_FALSE(g.RowHidden(0));
        EXPECT_FALSE(g.RowHidden(1));
        EXPECT_EQ(g.TextMatrix(1, text), "");
        // Rows 1 and 3 of the sheet are rows 3 and 5 now.
        EXPECT_FALSE(g.RowHidden(3));
        EXPECT_FALSE(g.RowHidden(5));
        int hidden = 0;
        for (int r = 2; r < g.Rows(); ++r)
            hidden += g.RowHidden(r);
        EXPECT_EQ(hidden, 48);
    };
    key(*f, "Print");
    EXPECT_TRUE(seen);
}

TEST_F(ToDoSheet, AnAcceptedPrintDialogPrintsTheSheetWithItsChoice) {
    auto f = env.open();
    int printed = 0;
    f->print = [&](const Grid& sheet, const PrintSetup& setup) {
        ++printed;
        EXPECT_EQ(&sheet, &f->vsToDo);
        EXPECT_EQ(sheet.TextMatrix(0, text), f->Label2);
        EXPECT_EQ(setup.output_file, "/tmp/list.pdf");
    };
    key(*f, "Print");
    EXPECT_EQ(printed, 0);
    PrintSetup pdf;
    pdf.output_file = QStringLiteral("/tmp/list.pdf");
    env.m.print_answers.push_back(pdf);
    key(*f, "Print");
    EXPECT_EQ(printed, 1);
    EXPECT_EQ(f->print_setup.output_file, "/tmp/list.pdf");
}

TEST_F(ToDoSheet, PrintLeavesNoTraceOfItsHeadingInTheSavedMember) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    type(*f, 3, QStringLiteral("Milk"));
    g.Select(5, text, 3, stamp);
    const QByteArray before = g.save_bytes();
    PrintSetup pdf;
    pdf.output_file = env.dir.filePath(QStringLiteral("list.pdf"));
    env.m.print_answers.push_back(pdf);
    env.m.print_answers.push_back(std::nullopt);
    key(*f, "Print");
    key(*f, "Print");
    EXPECT_EQ(g.Redraw(), 2);
    EXPECT_EQ(g.save_bytes(), before);
    Command1_Click(*f);
    ASSERT_EQ(frmToDo_Unload(s().store(), s().view(), *f), 0);
    const QByteArray member = env.member();
    EXPECT_EQ(member, before);
    EXPECT_FALSE(member.contains("To Do"));
    Grid saved;
    ASSERT_TRUE(saved.load_bytes(member));
    EXPECT_EQ(saved.Rows(), 50);
    EXPECT_EQ(saved.FixedRows(), 0);
    for (int r = 0; r < saved.Rows(); ++r)
        EXPECT_FALSE(saved.RowHidden(r)) << r;
}

// --- closing ----------------------------------------------------------------

TEST_F(ToDoSheet, OkSavesTheSheetAndItOpensAgainAsItWasLeft) {
    auto f = env.open();
    Grid& g = f->vsToDo;
    type(*f, 0, QStringLiteral("Groceries"));
    type(*f, 1, QStringLiteral("    Milk"));
    select_rows(*f, 1, 1);
    key(*f, "Checkmark");
    g.setCellChecked(1, check, CheckBox::Checked);
    f->typeIcombo.list_index = 2 + 18; // " Coffee"
    typeIcombo_Click(*f);
    select_rows(*f, 0, 0);
    key(*f, "Bold");
    env.m.color_answers.push_back(rgb(0, 0, 200));
    key(*f, "Color");
    key(*f, "Timestamp");
    Command1_Click(*f);
    ASSERT_EQ(frmToDo_Unload(s().store(), s().view(), *f), 0);

    env.fresh_state();
    auto again = env.open();
    const Grid& h = again->vsToDo;
    EXPECT_EQ(h.Rows(), 50);
    EXPECT_EQ(h.TextMatrix(0, text), "Groceries");
    EXPECT_EQ(h.TextMatrix(1, text), "    Milk");
    EXPECT_EQ(h.CellChecked(1, check), CheckBox::Checked);
    EXPECT_EQ(h.CellChecked(0, check), CheckBox::None);
    EXPECT_EQ(h.TextMatrix(1, stamp), todo_stamp());
    EXPECT_EQ(h.Cell(CellSetting::Picture, 1, icon).toString(), "Coffee");
    EXPECT_EQ(h.TextMatrix(1, picture), "18");
    EXPECT_TRUE(h.Cell(CellSetting::FontBold, 0, text).toBool());
    EXPECT_FALSE(h.Cell(CellSetting::FontBold, 1, text).toBool());
    EXPECT_EQ(h.Cell(CellSetting::ForeColor, 0, text).toUInt(), rgb(0, 0, 200));
    EXPECT_TRUE(h.ColHidden(stamp));
}

TEST_F(ToDoSheet, CancelLosesEveryEditSinceOpening) {
    auto f = env.open();
    type(*f, 0, QStringLiteral("Kept"));
    ASSERT_EQ(frmToDo_Unload(s().store(), s().view(), *f), 0);
    const QByteArray saved = env.member();
    ASSERT_FALSE(saved.isEmpty());

    auto g = env.open();
    type(*g, 0, QStringLiteral("Lost"));
    Image1_Click(*g, s().options());
    Command2_Click(*g);
    EXPECT_TRUE(g->cancelled);
    EXPECT_EQ(frmToDo_Unload(s().store(), s().view(), *g), 0);
    EXPECT_TRUE(s().ctl(QStringLiteral("mnuTlist")).enabled);
    EXPECT_EQ(env.member(), saved);
    EXPECT_EQ(env.open()->vsToDo.TextMatrix(0, text), "Kept");
}

TEST_F(ToDoSheet, CancelOnTheFirstOpeningWritesNoMember) {
    auto f = env.open();
    Command2_Click(*f);
    frmToDo_Unload(s().store(), s().view(), *f);
    EXPECT_TRUE(env.member().isEmpty());
}

TEST_F(ToDoSheet, ASaveWithNoCalendarOpenFailsWithoutAWord) {
    s().cal_path.clear();
    auto f = env.open();
    EXPECT_EQ(f->vsToDo.Rows(), 50);
    type(*f, 0, QStringLiteral("Nowhere to go"));
    Command1_Click(*f);
    EXPECT_EQ(frmToDo_Unload(s().store(), s().view(), *f), err::not_found);
    EXPECT_TRUE(env.m.shown.empty());
    EXPECT_TRUE(s().ctl(QStringLiteral("mnuTlist")).enabled);
    EXPECT_FALSE(QFile::exists(env.cal()));
}

TEST_F(ToDoSheet, TheMemberIsTheGridLayersSaveFormat) {
    auto f = env.open();
    ASSERT_EQ(save_todo(s().store(), f->vsToDo), 0);
    const QJsonObject root = QJsonDocument::fromJson(env.member()).object();
    EXPECT_EQ(root.value("format").toString(), "orvacal-grid");
    EXPECT_EQ(root.value("rows").toInt(), 50);
    EXPECT_EQ(root.value("cols").toInt(), 5);
}

// Every I/O call of the save fails in turn: the file must then hold what it
// held before, byte for byte, and nobody is told.
TEST_F(ToDoSheet, ASaveTheFileRefusesLeavesTheFileAsItWas) {
    auto first = env.open();
    type(*first, 0, QStringLiteral("Before"));
    ASSERT_EQ(save_todo(s().store(), first->vsToDo), 0);
    // The day's backup is taken by the first change of a file that exists;
    // a failure there lets the change go ahead, which is not this test's.
    type(*first, 1, QStringLiteral("Backed up"));
    ASSERT_EQ(save_todo(s().store(), first->vsToDo), 0);
    ASSERT_TRUE(has_backup_on(env.cal(), env.clock.today()));
    const testing::Snapshot before = testing::snapshot(env.cal());

    testing::IoShim& io = testing::IoShim::install();
    int failures = 0;
    for (long nth = 1; nth < 400; ++nth) {
        auto f = env.open();
        type(*f, 0, QStringLiteral("After"));
        f->vsToDo.setTextMatrix(20, text, QStringLiteral("More"));
        s().archive.close(env.cal());
        io.reset_counts();
        io.fail_call(nth, SQLITE_FULL);
        const int e = save_todo(s().store(), f->vsToDo);
        const bool fired = io.fired();
        const std::string kind = io.fired_kind().toStdString();
        io.fail_call(0, SQLITE_FULL);
        s().archive.close(env.cal());
        if (!fired) {
            EXPECT_EQ(e, 0);
            break;
        }
        ++failures;
        EXPECT_NE(e, 0) << "call " << nth << " " << kind;
        EXPECT_TRUE(testing::quick_check_ok(env.cal())) << "call " << nth << " " << kind;
        EXPECT_TRUE(testing::snapshot(env.cal()) == before) << "call " << nth << " " << kind;
        EXPECT_TRUE(env.m.shown.empty());
    }
    EXPECT_GT(failures, 3);
}

} // namespace
} // namespace orva
