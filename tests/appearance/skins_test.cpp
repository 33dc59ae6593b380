#include "../views/view_fixtures.h"
#include "appearance/skins.h"
#include "appointments/stickers.h"
#include "state/options.h"
#include "views/navigator.h"

#include <gtest/gtest.h>

namespace orva::testing {
namespace {

// Desktop colours no skin table uses, so a test sees where they went.
const SystemColors desk{rgb(250, 251, 252), rgb(201, 202, 203), rgb(211, 212, 213),
                        rgb(21, 22, 23)};

struct SkinEnv : ViewEnv {
    SkinEnv() {
        s.Cal.set_extent(3600, 2400);
        fill_cal(s.store(), s.view(), s.cur_date);
    }
    void skin(const char* key) { run_skin(QString::fromLatin1(key), s.view(), s.options(), desk); }
    // The day grid with one untimed entry, its cells in appt_back_color.
    void day_with_entry() {
        add(entry(QStringLiteral("501"), QStringLiteral("10:00"), QStringLiteral("11:00"),
                  QStringLiteral("Piano lesson")));
        rebuild(s);
    }
    // A cell of the day grid that carries an entry's row as its data.
    std::pair<int, int> appt_cell() const {
        const Grid& g = s.vsSched;
        for (int r = 0; r < g.Rows(); ++r)
            for (int c = 0; c < g.Cols(); ++c) {
                const QString d = g.Cell(CellSetting::Data, r, c).toString();
                if (!d.isEmpty() && d != u"blank") return {r, c};
            }
        return {-1, -1};
    }
    Color back(const Grid& g, int r, int c) const {
        return Color(g.Cell(CellSetting::BackColor, r, c).toUInt());
    }
};

TEST(Skins, ChangingTheSkinWithYellowOrChosenColourKeepsApptBackColor) {
    for (const char* mode : {"1", "2"}) {
        SkinEnv e;
        e.s.appt_color_mode = QString::fromLatin1(mode);
        e.s.appt_back_color = rgb(12, 34, 56);
        e.day_with_entry();
        const auto [r, c] = e.appt_cell();
        ASSERT_GE(r, 0) << mode;
        e.skin("mnuForest");
        EXPECT_EQ(e.s.appt_back_color, rgb(12, 34, 56)) << mode;
        EXPECT_EQ(e.back(e.s.vsSched, r, c), rgb(12, 34, 56)) << mode;
    }
}

TEST(Skins, WithNoColourTheAppointmentCellsTakeTheGridsNewBackColour) {
    SkinEnv e;
    e.s.appt_color_mode = QStringLiteral("3");
    e.s.appt_back_color = rgb(255, 255, 255);
    e.day_with_entry();
    const auto [r, c] = e.appt_cell();
    ASSERT_GE(r, 0);
    e.skin("mnuHallo");
    EXPECT_EQ(e.s.vsSched.BackColor(), rgb(255, 255, 192));
    EXPECT_EQ(e.s.appt_back_color, rgb(255, 255, 192));
    EXPECT_EQ(e.back(e.s.vsSched, r, c), rgb(255, 255, 192));
    e.skin("mnuThanks");
    EXPECT_EQ(e.back(e.s.vsSched, r, c), rgb(192, 255, 192));
}

TEST(Skins, SpacerAndEmptyCellsKeepTheirColourWithNoAppointmentColour) {
    SkinEnv e;
    e.s.appt_color_mode = QStringLiteral("3");
    e.day_with_entry();
    Grid& g = e.s.vsSched;
    g.setCell(CellSetting::BackColor, 1, 1, rgb(1, 2, 3));
    g.setCell(CellSetting::Data, 1, 1, QStringLiteral("blank"));
    g.setCell(CellSetting::BackColor, 2, 1, rgb(4, 5, 6));
    g.setCell(CellSetting::Data, 2, 1, QString());
    e.skin("mnuHallo");
    EXPECT_EQ(e.back(g, 1, 1), rgb(1, 2, 3));
    EXPECT_EQ(e.back(g, 2, 1), rgb(4, 5, 6));
}

TEST(Skins, AnUnchangedForeColourKeepsTheTextColourOfTheSkinBefore) {
    SkinEnv a, b;
    a.skin("mnuEaster"); // red text
    a.skin("mnuForest");
    b.skin("mnuBlackWhite"); // white text
    b.skin("mnuForest");
    EXPECT_EQ(a.s.vsSched.ForeColor(), rgb(255, 0, 0));
    EXPECT_EQ(b.s.vsSched.ForeColor(), rgb(255, 255, 255));
    // Camelion leaves both the navigator's text colours as they stood.
    a.skin("mnuHallo");
    a.skin("mnuCamelion");
    EXPECT_EQ(a.s.Cal.ForeColor(), rgb(0, 0, 0));
    EXPECT_EQ(a.s.Cal.ForeColorFixed(), rgb(0, 0, 0));
    EXPECT_EQ(a.s.vsSched.ForeColorFixed(), rgb(0, 0, 0));
}

TEST(Skins, TheSelectedNavigatorCellKeepsThePickColourAndTodayStaysWhite) {
    SkinEnv e;
    // The month is drawn in the skin's colour, as at start, where the skin
    // comes before the navigator's first fill.
    e.skin("mnuForest");
    fill_cal(e.s.store(), e.s.view(), e.s.cur_date);
    const int today_row = e.s.cal_row, today_col = e.s.cal_col;
    // Another day than today: the 20th.
    int sel_row = -1, sel_col = -1;
    for (int r = 1; r < e.s.Cal.Rows(); ++r)
        for (int c = 0; c < e.s.Cal.Cols(); ++c)
            if (e.s.Cal.TextMatrix(r, c) == u" 20") sel_row = r, sel_col = c;
    ASSERT_GE(sel_row, 1);
    mark_cal_day(e.s.view(), sel_row, sel_col);
    ASSERT_EQ(e.back(e.s.Cal, sel_row, sel_col), e.s.cal_pick_color);

    e.skin("mnuHallo");
    EXPECT_EQ(e.back(e.s.Cal, sel_row, sel_col), e.s.cal_pick_color);
    EXPECT_EQ(e.back(e.s.Cal, today_row, today_col), white);
    EXPECT_EQ(e.back(e.s.Cal, sel_row == 1 ? 2 : 1, 3), rgb(0, 255, 0));
    EXPECT_EQ(e.s.cal_back_color, rgb(0, 255, 0));

    // A later mark gives the old selection the new skin's colour.
    mark_cal_day(e.s.view(), today_row, today_col);
    EXPECT_EQ(e.back(e.s.Cal, sel_row, sel_col), rgb(0, 255, 0));
    EXPECT_EQ(e.back(e.s.Cal, today_row, today_col), white);
}

TEST(Skins, AMonthDrawnUnderTheWhiteStandardSkinTakesTheNextSkinsColourButToday) {
    SkinEnv e;
    // White, as the standard skin draws it on a desktop with white windows.
    e.s.cal_back_color = white;
    fill_cal(e.s.store(), e.s.view(), e.s.cur_date);
    const int today_row = e.s.cal_row, today_col = e.s.cal_col;
    const int other_row = today_row == 1 ? 2 : 1, other_col = 3;
    ASSERT_EQ(e.back(e.s.Cal, other_row, other_col), white);

    e.skin("mnuForest");
    EXPECT_EQ(e.back(e.s.Cal, other_row, other_col), rgb(144, 238, 144));
    EXPECT_EQ(e.back(e.s.Cal, today_row, today_col), white);
}

TEST(Skins, TheFixedRowOfTheNavigatorIsNotRepainted) {
    SkinEnv e;
    e.s.Cal.setCell(CellSetting::BackColor, 0, 2, rgb(9, 9, 9));
    e.skin("mnuThanks");
    EXPECT_EQ(e.back(e.s.Cal, 0, 2), rgb(9, 9, 9));
}

TEST(Skins, EachSkinGivesTheBandAndToolBarItsColours) {
    SkinEnv e;
    e.skin("mnuThanks");
    const SkinState& k = e.s.skin;
    EXPECT_EQ(k.labels.at(QStringLiteral("Label1")),
              (LabelColors{rgb(111, 60, 6), rgb(0, 255, 0)}));
    EXPECT_EQ(e.s.label1_back_color, rgb(111, 60, 6));
    for (const QString& n : band_labels())
        EXPECT_EQ(k.labels.at(n), (LabelColors{rgb(111, 60, 6), rgb(0, 255, 0)}))
            << n.toStdString();
    for (const QString& n : tool_labels())
        EXPECT_EQ(k.labels.at(n), (LabelColors{rgb(100, 90, 6), rgb(0, 255, 0)}))
            << n.toStdString();
    EXPECT_EQ(k.frame3_back, rgb(100, 90, 6));
    EXPECT_EQ(k.theme_back, rgb(111, 60, 6));
    EXPECT_EQ(k.themePic, QStringLiteral("Thanksgiving1"));
    EXPECT_EQ(e.s.skin_name, QStringLiteral("mnuThanks"));
}

TEST(Skins, TheStandardSkinTakesTheDesktopsColours) {
    SkinEnv e;
    e.skin("mnuStdWindows");
    EXPECT_EQ(e.s.vsSched.BackColor(), desk.window);
    EXPECT_EQ(e.s.skin.sched_back_bkg, desk.window);
    EXPECT_EQ(e.s.vsSched.BackColorFixed(), desk.active_border);
    EXPECT_EQ(e.s.Cal.BackColor(), desk.window);
    EXPECT_EQ(e.s.Cal.BackColorFixed(), desk.menu);
    EXPECT_EQ(e.s.cal_back_color, desk.window);
    EXPECT_EQ(e.s.skin.cal_back_bkg, rgb(0, 0, 0));
    e.skin("usapatriat");
    EXPECT_EQ(e.s.Cal.ForeColorFixed(), desk.button_text);
}

TEST(Skins, OnlyTheSkinOfTheSkinNameIsChecked) {
    SkinEnv e;
    e.skin("mnuValentine");
    EXPECT_EQ(e.s.skin.checked_item, QStringLiteral("mnuSkinVal"));
    e.skin("blueIce");
    EXPECT_EQ(e.s.skin.checked_item, QStringLiteral("blueIce"));
}

TEST(Skins, TheEasterSkinShowsNoCheckMark) {
    SkinEnv e;
    e.skin("blueIce");
    e.skin("mnuEaster");
    EXPECT_EQ(e.s.skin_name, QStringLiteral("mnuEaster"));
    EXPECT_EQ(e.s.skin.checked_item, QString());
}

TEST(Skins, BlackWhiteAndTransparentLeaveEveryItemUnchecked) {
    for (const char* key : {"mnuBlackWhite", "mnuTransparent"}) {
        SkinEnv e;
        e.skin("mnuForest");
        e.skin(key);
        EXPECT_EQ(e.s.skin.checked_item, QString()) << key;
        EXPECT_EQ(e.s.skin_name, QString::fromLatin1(key));
    }
}

TEST(Skins, AnUnknownKeyChangesNothing) {
    SkinEnv e;
    e.skin("mnuForest");
    e.skin("mnuforest");
    EXPECT_EQ(e.s.skin_name, QStringLiteral("mnuForest"));
    EXPECT_EQ(e.s.vsSched.BackColor(), rgb(152, 251, 152));
}

TEST(Skins, TheMenuOffersOnlyTheSkinsItShows) {
    QStringList shown, hidden;
    for (const SkinMenuItem& m : skin_menu()) {
        if (m.skin_key.isEmpty()) continue;
        ASSERT_NE(find_skin(m.skin_key), nullptr) << m.name.toStdString();
        (m.visible && m.enabled ? shown : hidden) << m.name;
    }
    EXPECT_EQ(hidden, QStringList({"mnuCamelion", "mnuNewYear", "mnuTrans"}));
    EXPECT_EQ(shown.size(), 11);
    EXPECT_FALSE(shown.contains(QStringLiteral("mnuBlackWhite")));
    const auto trans = std::find_if(skin_menu().begin(), skin_menu().end(),
                                    [](const SkinMenuItem& m) { return m.name == u"mnuTrans"; });
    ASSERT_NE(trans, skin_menu().end());
    EXPECT_FALSE(trans->enabled);
    EXPECT_EQ(skin_table().size(), 15u);
}

TEST(Skins, TheCaptionsKeepTheirBlanks) {
    QStringList captions;
    for (const SkinMenuItem& m : skin_menu())
        captions << m.caption;
    EXPECT_TRUE(captions.contains(QStringLiteral("Sunny ")));
    EXPECT_TRUE(captions.contains(QStringLiteral("Std Windows ")));
    EXPECT_TRUE(captions.contains(QStringLiteral("Holiday/Christmas Season")));
}

TEST(Skins, AMenuClickSavesTheSkinWithTheOptions) {
    SkinEnv e;
    skin_menu_click(QStringLiteral("mnuSkinVal"), e.s.store(), e.s.view(), e.s.options(), e.w,
                    desk);
    EXPECT_EQ(e.s.skin_name, QStringLiteral("mnuValentine"));
    QByteArray bytes;
    ASSERT_EQ(e.s.archive.get(e.s.cal_path, options_member, bytes), 0);
    Grid row;
    row.load_bytes(bytes);
    EXPECT_EQ(row.TextMatrix(0, 0), QStringLiteral("mnuValentine"));
    // The sub-menu's own entry has no skin and saves nothing.
    skin_menu_click(QStringLiteral("mnuHoliday"), e.s.store(), e.s.view(), e.s.options(), e.w,
                    desk);
    EXPECT_EQ(e.s.skin_name, QStringLiteral("mnuValentine"));
}

TEST(Skins, TheSavedSkinComesBackAtStartWithoutASave) {
    SkinEnv e;
    e.s.skin_name = QStringLiteral("mnuSunnyDays");
    select_saved_skin(e.s.view(), e.s.options(), desk);
    EXPECT_EQ(e.s.vsSched.BackColor(), rgb(255, 255, 192));
    EXPECT_EQ(e.s.skin.labels.at(QStringLiteral("Label1")).back, rgb(255, 192, 255));
    QByteArray row;
    EXPECT_NE(e.s.archive.get(e.s.cal_path, options_member, row), 0);
}

TEST(Skins, ASavedBlackWhiteOrTransparentIsNotRestored) {
    for (const char* key : {"mnuBlackWhite", "mnuTransparent"}) {
        SkinEnv e;
        const Color before = e.s.vsSched.BackColor();
        e.s.skin_name = QString::fromLatin1(key);
        select_saved_skin(e.s.view(), e.s.options(), desk);
        EXPECT_EQ(e.s.vsSched.BackColor(), before) << key;
        EXPECT_TRUE(e.s.skin.labels.empty()) << key;
        EXPECT_EQ(e.s.skin_name, QString::fromLatin1(key));
    }
}

TEST(Skins, EveryCornerPictureIsDrawnFromAnEmoji) {
    for (const Skin& k : skin_table())
        EXPECT_FALSE(picture_emoji(k.picture).isEmpty()) << k.picture.toStdString();
}

TEST(Skins, TextThatDoesNotReadFallsBackToThePalettes) {
    EXPECT_NEAR(contrast_ratio(rgb(0, 0, 0), rgb(255, 255, 255)), 21.0, 0.01);
    EXPECT_EQ(readable_text(rgb(255, 255, 0), rgb(98, 98, 98), rgb(1, 1, 1)), rgb(255, 255, 0));
    EXPECT_EQ(readable_text(rgb(255, 255, 0), rgb(255, 255, 255), rgb(1, 1, 1)), rgb(1, 1, 1));
}

} // namespace
} // namespace orva::testing
