#include "../views/main_window_fixture.h"
#include "appearance/colors_fonts.h"
#include "appearance/ui/frmFonts.h"
#include "support/scripted_modal.h"

#include <QAction>
#include <QCheckBox>
#include <QFontComboBox>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ModalGuard;
using testing::ScriptedModal;

class FontDialog : public ::testing::Test {
  protected:
    void SetUp() override {
        s.grid_font_name = QStringLiteral("DejaVu Sans");
        s.grid_font_size = QStringLiteral("10");
        s.grid_font_color = QString::number(rgb(0, 0, 128));
        s.grid_font_italic = true;
        frmFonts_Load(s, s, f);
        s.fonts_form = &f;
    }
    AppState s;
    FontsForm f;
    ScriptedModal m;
    ModalGuard guard{&m};
};

TEST_F(FontDialog, OffersSizesFromEightToEighteenAndNoItalic) {
    FrmFonts form(s);
    auto* size = form.findChild<QSpinBox*>(QStringLiteral("spnFontSize"));
    ASSERT_NE(size, nullptr);
    EXPECT_EQ(size->minimum(), 8);
    EXPECT_EQ(size->maximum(), 18);
    EXPECT_EQ(size->value(), 10);
    size->setValue(30);
    EXPECT_EQ(size->value(), 18);
    size->setValue(3);
    EXPECT_EQ(size->value(), 8);
    for (auto* box : form.findChildren<QCheckBox*>())
        EXPECT_FALSE(box->text().contains(u"Italic", Qt::CaseInsensitive));
    EXPECT_NE(form.findChild<QCheckBox*>(QStringLiteral("chkBold")), nullptr);
    EXPECT_NE(form.findChild<QPushButton*>(QStringLiteral("cmdColor")), nullptr);
    EXPECT_NE(form.findChild<QFontComboBox*>(QStringLiteral("cboFontName")), nullptr);
}

TEST_F(FontDialog, OkHandsTheChoiceToTheCommandAndKeepsItalic) {
    FrmFonts form(s);
    form.findChild<QSpinBox*>(QStringLiteral("spnFontSize"))->setValue(16);
    form.findChild<QCheckBox*>(QStringLiteral("chkBold"))->setChecked(true);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_TRUE(f.accepted);
    EXPECT_EQ(f.font_size, 16);
    EXPECT_TRUE(f.font_bold);
    EXPECT_TRUE(f.font_italic);
}

TEST_F(FontDialog, CancelLeavesTheChoiceUnaccepted) {
    FrmFonts form(s);
    form.findChild<QSpinBox*>(QStringLiteral("spnFontSize"))->setValue(16);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("Command2")), Qt::LeftButton);
    EXPECT_EQ(form.result(), QDialog::Rejected);
    EXPECT_FALSE(f.accepted);
}

TEST_F(FontDialog, TheColourButtonGoesThroughTheColourDialog) {
    FrmFonts form(s);
    m.color_answers.push_back(rgb(160, 0, 0));
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdColor")), Qt::LeftButton);
    ASSERT_NE(m.last(u"color"), nullptr);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    EXPECT_EQ(f.font_color, rgb(160, 0, 0));
}

// The colour and font entries through the real main window.
class ColorsFontsWindow : public testing::MainWindowTest {
  protected:
    QAction* action(const char* name) { return find<QAction>(name); }
    void click(const char* tool) {
        auto* b = find<QToolButton>(tool);
        ASSERT_NE(b, nullptr) << tool;
        QTest::mouseClick(b, Qt::LeftButton);
        QApplication::processEvents();
    }
    // The real dialog answers: the size set, then OK.
    void answer_fonts_with_size(int size) {
        m.forms[QStringLiteral("frmFonts")] = [this, size] {
            FrmFonts form(s(), run->window.get());
            form.findChild<QSpinBox*>(QStringLiteral("spnFontSize"))->setValue(size);
            form.accept();
        };
    }
    Color back(int r, int c) { return Color(s().vsSched.Cell(CellSetting::BackColor, r, c).toUInt()); }
};

TEST_F(ColorsFontsWindow, TheCustomizeMenuHoldsTheColourItemsAndFonts) {
    launch();
    ASSERT_NE(action("mnuColor"), nullptr);
    EXPECT_EQ(action("mnuColor")->text(), "Color");
    EXPECT_EQ(action("mnuBackc")->text(), "Appointment Background (applies to all appts)");
    EXPECT_EQ(action("mnuColorY")->text(), "Use Default Yellow");
    EXPECT_EQ(action("mnuNoColor")->text(), "Transparent");
    EXPECT_EQ(action("mnuColorSelect")->text(), "Select Color");
    EXPECT_EQ(action("mnuFonts")->text(), "Fonts");
    EXPECT_TRUE(action("mnuColorY")->isChecked());
    EXPECT_FALSE(action("mnuColorSelect")->isChecked());
    EXPECT_TRUE(action("mnuColor")->isEnabled());
}

TEST_F(ColorsFontsWindow, SelectColorPaintsTheEntriesAndMovesTheCheckMark) {
    launch();
    m.color_answers.push_back(rgb(120, 200, 120));
    action("mnuColorSelect")->trigger();
    EXPECT_EQ(back(19, 2), rgb(120, 200, 120));
    EXPECT_FALSE(action("mnuColorY")->isChecked());
    EXPECT_TRUE(action("mnuColorSelect")->isChecked());

    m.color_answers.push_back(std::nullopt);
    action("mnuColorSelect")->trigger();
    EXPECT_EQ(back(19, 2), rgb(120, 200, 120));
    EXPECT_EQ(s().appt_color_mode, "2");

    action("mnuNoColor")->trigger();
    EXPECT_TRUE(action("mnuNoColor")->isChecked());
    EXPECT_FALSE(action("mnuColorSelect")->isChecked());
    EXPECT_EQ(back(19, 2), s().vsSched.BackColor());
}

TEST_F(ColorsFontsWindow, ColorIsDisabledInTheWeekPlannerAndAfterASwitchToTheMonth) {
    launch();
    click("imageWeek");
    EXPECT_FALSE(action("mnuColor")->isEnabled());
    click("imageDay");
    EXPECT_TRUE(action("mnuColor")->isEnabled());
    click("imageMonth");
    EXPECT_FALSE(action("mnuColor")->isEnabled());
    EXPECT_TRUE(action("mnuFonts")->isEnabled());
    click("imageDay");
    EXPECT_TRUE(action("mnuColor")->isEnabled());
}

TEST_F(ColorsFontsWindow, Size18FromTheFontsEntryGivesTallRowsOnlyAtTheNextRebuild) {
    launch();
    ASSERT_EQ(s().vsSched.RowHeight(19), 270);
    answer_fonts_with_size(18);
    action("mnuFonts")->trigger();
    EXPECT_EQ(s().grid_font_size, "18");
    EXPECT_EQ(s().vsSched.Cell(CellSetting::FontSize, 19, 2).toDouble(), 18.0);
    EXPECT_EQ(s().vsSched.RowHeight(19), 270);
    EXPECT_EQ(find<QTextEdit>("rtNotes")->font().pointSizeF(), 18.0);

    click("imageDay");
    EXPECT_EQ(s().vsSched.RowHeight(19), 400);
}

TEST_F(ColorsFontsWindow, ARestartBringsBackTheColourModeTheColourAndTheFont) {
    launch();
    m.color_answers.push_back(rgb(30, 60, 200));
    action("mnuColorSelect")->trigger();
    answer_fonts_with_size(14);
    action("mnuFonts")->trigger();
    run->window->close();
    run.reset();

    launch();
    EXPECT_EQ(s().appt_color_mode, "2");
    EXPECT_EQ(s().appt_back_color, rgb(30, 60, 200));
    EXPECT_TRUE(action("mnuColorSelect")->isChecked());
    EXPECT_FALSE(action("mnuColorY")->isChecked());
    EXPECT_EQ(back(19, 2), rgb(30, 60, 200));
    EXPECT_EQ(s().grid_font_size, "14");
    EXPECT_EQ(s().vsSched.Cell(CellSetting::FontSize, 19, 2).toDouble(), 14.0);
    EXPECT_EQ(s().vsSched.RowHeight(19), 400);
}

TEST_F(ColorsFontsWindow, TooltipsTogglesAndIsSaved) {
    launch();
    const bool was = s().menus.mnuTips;
    action("mnuTips")->trigger();
    EXPECT_EQ(s().menus.mnuTips, !was);
    EXPECT_EQ(action("mnuTips")->isChecked(), !was);
    EXPECT_EQ(s().vsSettings.TextMatrix(0, 4), was ? "False" : "True");
}

TEST_F(ColorsFontsWindow, ShowTimesTogglesAndRefillsTheDayPlanner) {
    launch();
    ASSERT_TRUE(s().menus.mnuShowTimes);
    EXPECT_EQ(s().vsSched.TextMatrix(19, 2), "9:00 am   Dentist");
    action("mnuShowTimes")->trigger();
    EXPECT_FALSE(action("mnuShowTimes")->isChecked());
    EXPECT_EQ(s().vsSched.TextMatrix(19, 2), "Dentist");
    action("mnuShowTimes")->trigger();
    EXPECT_EQ(s().vsSched.TextMatrix(19, 2), "9:00 am   Dentist");
}

} // namespace
} // namespace orva
