#include "../views/view_fixtures.h"
#include "appearance/colors_fonts.h"
#include "state/options.h"
#include "views/month_view.h"
#include "views/week_view.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using testing::ViewEnv;

// The day planner of Sunday 2026-03-15 with a timed entry at 09:00-10:00
// (rows 19 and 20, column 2) and an untimed one in row 0.
class ColorsFonts : public ::testing::Test {
  protected:
    ViewEnv env;
    AppState& s = env.s;

    void SetUp() override {
        s.vsOvervw.set_extent(15000, 9000);
        env.add(env.entry(QStringLiteral("a1"), QStringLiteral("09:00"), QStringLiteral("10:00"),
                          QStringLiteral("Dentist")));
        env.add(env.entry(QStringLiteral("a2"), QStringLiteral("     "), QStringLiteral("     "),
                          QStringLiteral("Mum's birthday")));
        day();
    }

    void day() { imageDay_Click(s.store(), s.view(), s.options(), s.editing(), env.w); }

    QVariant cell(CellSetting c, int r, int col) const { return s.vsSched.Cell(c, r, col); }
    Color back(int r, int c) const { return Color(cell(CellSetting::BackColor, r, c).toUInt()); }

    // The options row as it stands in the calendar file.
    QStringList stored() {
        Grid g;
        QByteArray bytes;
        EXPECT_EQ(s.archive.get(s.cal_path, options_member, bytes), 0);
        EXPECT_TRUE(g.load_bytes(bytes));
        QStringList row;
        for (int c = 0; c < g.Cols(); ++c)
            row << g.TextMatrix(0, c);
        return row;
    }

    // The font dialog answers with `change` applied to its preset, then OK.
    void answer_fonts(std::function<void(FontsForm&)> change) {
        env.m.forms[QStringLiteral("frmFonts")] = [this, change] {
            ASSERT_NE(s.fonts_form, nullptr);
            change(*s.fonts_form);
            frmFonts_OK(*s.fonts_form);
        };
    }
};

TEST_F(ColorsFonts, AFillPaintsTimedBlocksYellowAndLeavesRowZeroUnpainted) {
    EXPECT_EQ(back(19, 2), default_yellow);
    EXPECT_EQ(back(20, 2), default_yellow);
    EXPECT_FALSE(cell(CellSetting::Data, 0, 2).toString().isEmpty());
    EXPECT_FALSE(s.vsSched.cell_has(CellSetting::BackColor, 0, 2));
}

TEST_F(ColorsFonts, RowZeroEntriesGetABackColourFromTheColourItemsButNotFromAFill) {
    EXPECT_FALSE(s.vsSched.cell_has(CellSetting::BackColor, 0, 2));
    mnuColorY_Click(s, env.w);
    EXPECT_TRUE(s.vsSched.cell_has(CellSetting::BackColor, 0, 2));
    EXPECT_EQ(back(0, 2), default_yellow);

    // The next fill builds the row afresh, unpainted again.
    day();
    EXPECT_FALSE(s.vsSched.cell_has(CellSetting::BackColor, 0, 2));
}

TEST_F(ColorsFonts, ColourItemsPaintOnlyCellsThatCarryAnEntry) {
    env.m.color_answers.push_back(rgb(10, 200, 30));
    mnuColorSelect_Click(s, env.w);
    EXPECT_EQ(back(19, 2), rgb(10, 200, 30));
    // Row 19 is the clock's: its free cells keep the now-marker's colour.
    EXPECT_NE(back(19, 1), rgb(10, 200, 30)); // a spacer: "blank"
    EXPECT_NE(back(19, 3), rgb(10, 200, 30));
    EXPECT_NE(back(19, 0), rgb(10, 200, 30)); // the time labels
    EXPECT_FALSE(s.vsSched.cell_has(CellSetting::BackColor, 5, 2)); // a free cell: ""
    EXPECT_FALSE(s.vsSched.cell_has(CellSetting::BackColor, 5, 1));
}

TEST_F(ColorsFonts, SelectColorTakesTheChosenColourSetsModeTwoAndSaves) {
    env.m.color_answers.push_back(rgb(200, 100, 50));
    mnuColorSelect_Click(s, env.w);

    ASSERT_NE(env.m.last(u"color"), nullptr);
    EXPECT_EQ(s.appt_back_color, rgb(200, 100, 50));
    EXPECT_EQ(s.appt_color_mode, "2");
    EXPECT_EQ(back(19, 2), rgb(200, 100, 50));
    EXPECT_FALSE(s.menus.mnuColorY);
    EXPECT_TRUE(s.menus.mnuColorSelect);
    EXPECT_FALSE(s.menus.mnuNoColor);
    const QStringList row = stored();
    EXPECT_EQ(row[2], QString::number(rgb(200, 100, 50)));
    EXPECT_EQ(row[3], "2");
}

TEST_F(ColorsFonts, CancellingTheColourDialogChangesNeitherTheColourNorTheMode) {
    env.m.color_answers.push_back(rgb(1, 2, 3));
    mnuColorSelect_Click(s, env.w);
    const QStringList before = stored();
    const int syncs = env.w.menu_syncs;

    env.m.color_answers.push_back(std::nullopt);
    mnuColorSelect_Click(s, env.w);

    EXPECT_EQ(s.appt_back_color, rgb(1, 2, 3));
    EXPECT_EQ(s.appt_color_mode, "2");
    EXPECT_TRUE(s.menus.mnuColorSelect);
    EXPECT_EQ(back(19, 2), rgb(1, 2, 3));
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(env.w.menu_syncs, syncs);
}

TEST_F(ColorsFonts, CancelFromYellowLeavesYellowAndItsMark) {
    env.m.color_answers.push_back(std::nullopt);
    mnuColorSelect_Click(s, env.w);
    EXPECT_EQ(s.appt_back_color, default_yellow);
    EXPECT_EQ(s.appt_color_mode, "1");
    EXPECT_TRUE(s.menus.mnuColorY);
    EXPECT_FALSE(s.menus.mnuColorSelect);
}

TEST_F(ColorsFonts, UseDefaultYellowBringsBackYellowAndModeOne) {
    env.m.color_answers.push_back(rgb(0, 0, 255));
    mnuColorSelect_Click(s, env.w);
    mnuColorY_Click(s, env.w);
    EXPECT_EQ(s.appt_back_color, Color(65535));
    EXPECT_EQ(s.appt_color_mode, "1");
    EXPECT_EQ(back(19, 2), Color(65535));
    EXPECT_TRUE(s.menus.mnuColorY);
    EXPECT_FALSE(s.menus.mnuColorSelect);
    EXPECT_FALSE(s.menus.mnuNoColor);
    EXPECT_EQ(stored()[3], "1");
}

TEST_F(ColorsFonts, TransparentUnderAColouredGridPaintsEntriesInTheGridsBackColour) {
    const Color skin = rgb(204, 229, 255);
    s.vsSched.setBackColor(skin);
    day();
    mnuNoColor_Click(s, env.w);

    EXPECT_EQ(s.appt_color_mode, "3");
    EXPECT_EQ(s.appt_back_color, skin);
    EXPECT_EQ(back(19, 2), skin);
    EXPECT_EQ(back(0, 2), skin);
    // Only the block's border still shows the entry.
    EXPECT_EQ(s.vsSched.border(19, 2).color, block_border_color);
    EXPECT_TRUE(s.menus.mnuNoColor);
    EXPECT_FALSE(s.menus.mnuColorY);
    EXPECT_FALSE(s.menus.mnuColorSelect);
    EXPECT_EQ(stored()[3], "3");
}

TEST_F(ColorsFonts, FontSize18GivesRowsOf400TwipsAtTheNextRebuildNotAtOnce) {
    ASSERT_EQ(s.vsSched.RowHeight(19), 270);
    answer_fonts([](FontsForm& f) { f.font_size = 18; });
    mnuFonts_Click(s, env.w);

    EXPECT_EQ(s.grid_font_size, "18");
    EXPECT_EQ(cell(CellSetting::FontSize, 19, 2).toDouble(), 18.0);
    EXPECT_EQ(cell(CellSetting::FontSize, 0, 0).toDouble(), 18.0);
    EXPECT_EQ(s.vsSched.RowHeight(19), 270);

    day();
    EXPECT_EQ(s.vsSched.RowHeight(19), 400);
    EXPECT_EQ(s.vsSched.RowHeight(48), 400);
    EXPECT_EQ(s.vsSched.RowHeight(0), 800);
}

TEST_F(ColorsFonts, FontOkInTheDayPlannerSetsEveryCellOfBothGridsAndSaves) {
    answer_fonts([](FontsForm& f) {
        f.font_name = QStringLiteral("DejaVu Serif");
        f.font_size = 12;
        f.font_bold = true;
        f.font_color = rgb(128, 0, 0);
    });
    mnuFonts_Click(s, env.w);

    EXPECT_EQ(s.grid_font_name, "DejaVu Serif");
    EXPECT_EQ(s.grid_font_size, "12");
    EXPECT_TRUE(s.grid_font_bold);
    EXPECT_EQ(s.grid_font_color, QString::number(rgb(128, 0, 0)));
    for (const Grid* g : {&s.vsSched, &s.vsDtl}) {
        const int r = g->Rows() - 1, c = g->Cols() - 1;
        EXPECT_EQ(g->Cell(CellSetting::FontName, r, c).toString(), "DejaVu Serif");
        EXPECT_EQ(g->Cell(CellSetting::FontSize, r, c).toDouble(), 12.0);
        EXPECT_TRUE(g->Cell(CellSetting::FontBold, r, c).toBool());
        EXPECT_EQ(g->Cell(CellSetting::ForeColor, r, c).toUInt(), rgb(128, 0, 0));
    }
    const QStringList row = stored();
    EXPECT_EQ(row[5], "DejaVu Serif");
    EXPECT_EQ(row[6], "12");
    EXPECT_EQ(row[7], QString::number(rgb(128, 0, 0)));
    EXPECT_EQ(row[8], "True");
}

TEST_F(ColorsFonts, CancellingTheFontDialogChangesNothing) {
    save_options(s.store(), s.view(), s.options(), env.w);
    const QStringList before = stored();
    env.m.forms[QStringLiteral("frmFonts")] = [this] {
        s.fonts_form->font_size = 17;
        s.fonts_form->font_name = QStringLiteral("DejaVu Serif");
        frmFonts_Cancel(*s.fonts_form);
    };
    mnuFonts_Click(s, env.w);

    EXPECT_EQ(s.grid_font_size, "9");
    EXPECT_EQ(s.grid_font_name, "DejaVu Sans");
    EXPECT_EQ(cell(CellSetting::FontSize, 19, 2).toDouble(), 9.0);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(s.fonts_form, nullptr);
}

TEST_F(ColorsFonts, TheFontDialogIsPresetFromTheOptions) {
    s.grid_font_name = QStringLiteral("DejaVu Sans Mono");
    s.grid_font_size = QStringLiteral("11");
    s.grid_font_bold = true;
    s.grid_font_color = QString::number(rgb(0, 0, 128));
    FontsForm f;
    frmFonts_Load(s, s, f);
    EXPECT_EQ(f.font_name, "DejaVu Sans Mono");
    EXPECT_EQ(f.font_size, 11);
    EXPECT_TRUE(f.font_bold);
    EXPECT_EQ(f.font_color, rgb(0, 0, 128));
    EXPECT_FALSE(f.accepted);
}

TEST_F(ColorsFonts, TheFontDialogHoldsTheSizeToEightThroughEighteen) {
    FontsForm f;
    s.grid_font_size = QStringLiteral("24");
    frmFonts_Load(s, s, f);
    EXPECT_EQ(f.font_size, 18);
    s.grid_font_size = QStringLiteral("6");
    frmFonts_Load(s, s, f);
    EXPECT_EQ(f.font_size, 8);

    f.font_size = 40;
    frmFonts_OK(f);
    EXPECT_EQ(f.font_size, 18);
    f.font_size = 2;
    frmFonts_OK(f);
    EXPECT_EQ(f.font_size, 8);

    EXPECT_EQ(limit_font_size(8.25), 8);
    EXPECT_EQ(limit_font_size(13.6), 14);
}

TEST_F(ColorsFonts, TheFontDialogNeverChangesItalic) {
    s.grid_font_italic = true;
    answer_fonts([](FontsForm& f) {
        f.font_size = 14;
        f.font_bold = true;
    });
    mnuFonts_Click(s, env.w);
    EXPECT_TRUE(s.grid_font_italic);
    EXPECT_EQ(stored()[9], "True");

    s.grid_font_italic = false;
    answer_fonts([](FontsForm& f) { f.font_italic = true; });
    mnuFonts_Click(s, env.w);
    EXPECT_FALSE(s.grid_font_italic);
}

TEST_F(ColorsFonts, TheColourButtonOfTheFontDialogGoesThroughTheColourDialog) {
    FontsForm f;
    frmFonts_Load(s, s, f);
    env.m.color_answers.push_back(rgb(0, 128, 0));
    frmFonts_Color(f);
    EXPECT_EQ(f.font_color, rgb(0, 128, 0));
    env.m.color_answers.push_back(std::nullopt);
    frmFonts_Color(f);
    EXPECT_EQ(f.font_color, rgb(0, 128, 0));
}

TEST_F(ColorsFonts, FontInTheMonthPlannerSetsDateRowsTwoPointsLargerAndLeavesTheSaveToLater) {
    imageMonth_Click(s, env.w);
    const QStringList before = stored();
    answer_fonts([](FontsForm& f) {
        f.font_size = 14;
        f.font_color = rgb(0, 0, 160);
    });
    mnuFonts_Click(s, env.w);

    EXPECT_EQ(s.vsOvervw.Cell(CellSetting::FontSize, 1, 0).toDouble(), 16.0);
    EXPECT_TRUE(s.vsOvervw.Cell(CellSetting::FontBold, 1, 0).toBool());
    EXPECT_EQ(s.vsOvervw.Cell(CellSetting::FontSize, 2, 0).toDouble(), 14.0);
    EXPECT_EQ(s.vsOvervw.Cell(CellSetting::ForeColor, 2, 0).toUInt(), rgb(0, 0, 160));
    // Above size 12 the cells keep at least 2240 x 438 twips.
    EXPECT_GE(s.vsOvervw.ColWidth(0), 2240);
    EXPECT_GE(s.vsOvervw.RowHeight(2), 438);
    EXPECT_EQ(stored(), before);
}

TEST_F(ColorsFonts, FontInTheWeekPlannerBuildsTheWeekAgainAndSaves) {
    imageWeek_Click(s, env.w);
    answer_fonts([](FontsForm& f) { f.font_size = 13; });
    mnuFonts_Click(s, env.w);
    EXPECT_TRUE(s.view_week);
    EXPECT_EQ(stored()[6], "13");
    bool found = false;
    for (int r = 0; r < s.vsOvervw.Rows() && !found; ++r)
        for (int c = 0; c < s.vsOvervw.Cols() && !found; ++c)
            if (s.vsOvervw.TextMatrix(r, c).contains(u"Dentist")) {
                found = true;
                EXPECT_EQ(s.vsOvervw.Cell(CellSetting::FontSize, r, c).toDouble(), 13.0);
            }
    EXPECT_TRUE(found);
}

TEST_F(ColorsFonts, TheColourMenuIsDisabledInTheWeekPlannerAndAfterASwitchToTheMonth) {
    EXPECT_TRUE(s.ctl(QStringLiteral("mnuColor")).enabled);
    imageWeek_Click(s, env.w);
    EXPECT_FALSE(s.ctl(QStringLiteral("mnuColor")).enabled);
    day();
    EXPECT_TRUE(s.ctl(QStringLiteral("mnuColor")).enabled);
    imageMonth_Click(s, env.w);
    EXPECT_FALSE(s.ctl(QStringLiteral("mnuColor")).enabled);
    day();
    EXPECT_TRUE(s.ctl(QStringLiteral("mnuColor")).enabled);
}

// A second start on the same calendar: a fresh shared module loads its
// options.
struct Restart {
    AppState s;
    testing::FakeWindow w;
    explicit Restart(const AppState& before) {
        s.app_path = before.app_path;
        s.cal_path = before.cal_path;
        s.vsSched.setBackColor(rgb(250, 240, 230));
        load_options(s.store(), s.view(), s.options(), s.run(), w);
    }
};

TEST_F(ColorsFonts, ARestartBringsBackTheChosenColourItsModeAndTheFont) {
    env.m.color_answers.push_back(rgb(90, 160, 220));
    mnuColorSelect_Click(s, env.w);
    answer_fonts([](FontsForm& f) {
        f.font_name = QStringLiteral("DejaVu Serif");
        f.font_size = 18;
        f.font_bold = true;
        f.font_color = rgb(64, 0, 64);
    });
    mnuFonts_Click(s, env.w);

    Restart again(s);
    EXPECT_EQ(again.s.appt_color_mode, "2");
    EXPECT_EQ(again.s.appt_back_color, rgb(90, 160, 220));
    EXPECT_FALSE(again.s.menus.mnuColorY);
    EXPECT_TRUE(again.s.menus.mnuColorSelect);
    EXPECT_EQ(again.s.grid_font_name, "DejaVu Serif");
    EXPECT_EQ(again.s.grid_font_size, "18");
    EXPECT_TRUE(again.s.grid_font_bold);
    EXPECT_EQ(again.s.grid_font_color, QString::number(rgb(64, 0, 64)));
    EXPECT_EQ(again.s.vsSched.FontName(), "DejaVu Serif");
    EXPECT_EQ(again.s.vsSched.FontSize(), 18.0);

    build_day_rows(again.s.view(), again.s.options());
    EXPECT_EQ(again.s.vsSched.RowHeight(19), 400);
}

TEST_F(ColorsFonts, ARestartInTransparentModeShowsSelectColorCheckedAndTakesTheGridsColour) {
    mnuNoColor_Click(s, env.w);
    Restart again(s);
    EXPECT_EQ(again.s.appt_color_mode, "3");
    EXPECT_FALSE(again.s.menus.mnuColorY);
    EXPECT_TRUE(again.s.menus.mnuColorSelect);
    EXPECT_FALSE(again.s.menus.mnuNoColor);
    EXPECT_EQ(again.s.appt_back_color, rgb(250, 240, 230));
}

} // namespace
} // namespace orva
