#include "../views/main_window_fixture.h"
#include "appearance/skins.h"
#include "appearance/ui/skin_palette.h"
#include "state/options.h"

#include <QAction>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

namespace orva::testing {
namespace {

QColor qt(Color c) {
    return QColor(red_of(c), green_of(c), blue_of(c));
}

Color pixel(QWidget* w, QPoint at) {
    const QImage img = w->grab().toImage();
    return to_color(img.pixelColor(at));
}

// The skin tables as written for the program's users, apart from the code's
// own copy, so that a colour mistyped there shows here.
using Kind = SkinColor::Kind;
constexpr SkinColor F(int r, int g, int b) {
    return {Kind::Fixed, rgb(r, g, b)};
}
constexpr SkinColor U{Kind::Unchanged, 0};
constexpr SkinColor W{Kind::Window, 0};
constexpr SkinColor AB{Kind::ActiveBorder, 0};
constexpr SkinColor M{Kind::Menu, 0};
constexpr SkinColor BT{Kind::ButtonText, 0};

struct TableRow {
    const char* key;
    const char* picture;
    Color band_back, band_text, tool_back, tool_text;
    SkinGridColors sched, cal; // back, outside the cells, fixed back, fore, fixed fore
    SkinColor cal_back_color;
};

const TableRow tables[] = {
    {"mnuBlackWhite",
     "Flag",
     rgb(0, 0, 0),
     rgb(255, 255, 255),
     rgb(98, 98, 98),
     rgb(255, 255, 0),
     {F(255, 255, 255), F(255, 255, 255), F(0, 0, 0), F(255, 255, 255), F(255, 255, 255)},
     {F(255, 255, 255), F(255, 255, 255), F(0, 0, 0), F(0, 0, 0), F(255, 255, 255)},
     F(0, 0, 0)},
    {"mnuCamelion",
     "Ctree",
     rgb(50, 205, 50),
     rgb(255, 255, 0),
     rgb(0, 128, 128),
     rgb(255, 255, 0),
     {F(144, 238, 144), F(0, 0, 0), F(177, 222, 122), U, U},
     {F(255, 255, 0), F(0, 0, 0), F(255, 192, 128), U, U},
     F(255, 255, 0)},
    {"mnuChristmas",
     "Xmasbells",
     rgb(139, 0, 0),
     rgb(192, 192, 192),
     rgb(0, 100, 0),
     rgb(192, 192, 192),
     {F(250, 250, 255), F(0, 0, 0), F(0, 100, 0), U, F(192, 192, 192)},
     {F(250, 250, 255), F(0, 0, 0), F(0, 200, 0), F(200, 0, 0), U},
     F(250, 250, 255)},
    {"mnuValentine",
     "Valentine",
     rgb(255, 0, 0),
     rgb(192, 192, 192),
     rgb(205, 92, 92),
     rgb(192, 192, 192),
     {F(255, 255, 255), F(0, 0, 0), F(255, 182, 193), U, F(255, 255, 255)},
     {F(255, 192, 203), F(0, 0, 0), F(255, 105, 180), F(0, 0, 0), U},
     F(255, 192, 203)},
    {"mnuEaster",
     "Easter_lilly",
     rgb(0, 205, 255),
     rgb(0, 0, 128),
     rgb(0, 122, 220),
     rgb(0, 255, 0),
     {F(255, 255, 255), F(255, 255, 255), F(0, 255, 127), F(255, 0, 0), F(0, 0, 192)},
     {F(152, 251, 152), F(0, 0, 0), F(0, 255, 0), F(0, 0, 255), U},
     F(128, 255, 128)},
    {"mnuForest",
     "Ctree",
     rgb(0, 100, 0),
     rgb(255, 255, 0),
     rgb(98, 98, 98),
     rgb(255, 255, 0),
     {F(152, 251, 152), F(152, 251, 152), F(34, 139, 34), U, F(255, 255, 255)},
     {F(144, 238, 144), F(0, 0, 0), F(255, 192, 128), F(0, 0, 0), U},
     F(144, 238, 144)},
    {"mnuHallo",
     "pumpkin2",
     rgb(0, 0, 0),
     rgb(255, 255, 0),
     rgb(192, 0, 0),
     rgb(255, 255, 0),
     {F(255, 255, 192), F(255, 255, 192), F(255, 128, 0), U, F(0, 0, 0)},
     {F(0, 255, 0), F(0, 0, 0), F(255, 128, 0), F(0, 0, 0), F(0, 0, 0)},
     F(0, 255, 0)},
    {"blueIce",
     "Snowflake",
     rgb(214, 230, 254),
     rgb(0, 0, 128),
     rgb(255, 0, 255),
     rgb(0, 0, 128),
     {F(255, 255, 255), F(255, 255, 255), F(255, 192, 255), U, F(0, 0, 0)},
     {F(166, 211, 217), F(0, 0, 0), F(192, 192, 255), F(0, 0, 255), U},
     F(166, 211, 217)},
    {"mnuNewYear",
     "Snowflake",
     rgb(214, 230, 254),
     rgb(0, 0, 128),
     rgb(255, 0, 255),
     rgb(0, 0, 128),
     {F(255, 255, 255), F(255, 255, 255), F(255, 192, 255), U, F(0, 0, 0)},
     {F(166, 211, 217), F(0, 0, 0), F(192, 192, 255), U, U},
     F(166, 211, 217)},
    {"mnuStdWindows",
     "Globe",
     rgb(0, 128, 128),
     rgb(192, 255, 192),
     rgb(98, 98, 98),
     rgb(0, 255, 0),
     {W, W, AB, F(0, 0, 0), F(0, 0, 0)},
     {W, F(0, 0, 0), M, F(0, 0, 0), U},
     W},
    {"mnuStPat",
     "St_patrick_hat",
     rgb(0, 128, 0),
     rgb(0, 0, 128),
     rgb(0, 102, 0),
     rgb(0, 255, 0),
     {F(255, 255, 255), F(255, 255, 255), F(0, 200, 0), F(255, 0, 0), F(0, 0, 192)},
     {F(128, 255, 128), F(0, 0, 0), F(0, 255, 0), F(0, 0, 255), U},
     F(128, 255, 128)},
    {"mnuSunnyDays",
     "Sun",
     rgb(255, 192, 255),
     rgb(0, 0, 128),
     rgb(98, 98, 98),
     rgb(0, 255, 0),
     {F(255, 255, 192), F(255, 255, 192), F(0, 255, 0), F(255, 0, 0), F(0, 0, 192)},
     {F(128, 255, 128), F(0, 0, 0), F(0, 255, 0), F(0, 0, 255), U},
     F(128, 255, 128)},
    {"mnuThanks",
     "Thanksgiving1",
     rgb(111, 60, 6),
     rgb(0, 255, 0),
     rgb(100, 90, 6),
     rgb(0, 255, 0),
     {F(192, 255, 192), F(192, 255, 192), F(128, 128, 0), F(255, 0, 0), F(0, 0, 0)},
     {F(255, 255, 0), F(0, 0, 0), F(228, 185, 33), F(0, 0, 0), U},
     F(255, 255, 0)},
    {"mnuTransparent",
     "Flag",
     rgb(255, 255, 255),
     rgb(0, 0, 0),
     rgb(98, 98, 98),
     rgb(255, 255, 0),
     {F(255, 255, 255), F(255, 255, 255), F(255, 255, 255), F(255, 255, 255), F(0, 0, 0)},
     {F(255, 255, 255), F(255, 255, 255), F(0, 0, 0), F(0, 0, 0), F(255, 255, 255)},
     F(0, 0, 0)},
    {"usapatriat",
     "Flag",
     rgb(255, 0, 0),
     rgb(255, 255, 0),
     rgb(98, 98, 98),
     rgb(255, 255, 0),
     {F(255, 255, 255), F(255, 255, 255), F(128, 128, 255), F(255, 0, 0), F(0, 0, 0)},
     {F(214, 230, 254), F(0, 0, 0), F(0, 0, 192), F(0, 0, 128), BT},
     F(214, 230, 254)},
};

class SkinWindowTest : public MainWindowTest {
  protected:
    SystemColors desk() const { return system_colors(QApplication::palette()); }
    // Through its menu item when the menu offers one; the others as the
    // program itself runs them (at start, or with no item at all).
    void choose(const QString& key) {
        for (const SkinMenuItem& m : skin_menu())
            if (m.skin_key == key && m.visible && m.enabled) {
                auto* a = find<QAction>(m.name.toLatin1().constData());
                ASSERT_NE(a, nullptr);
                a->trigger();
                QApplication::processEvents();
                return;
            }
        run_skin(key, s().view(), s().options(), desk());
        run->window->sync_controls();
        QApplication::processEvents();
    }
};

struct GridLook {
    Color back, bkg, fixed_back, fore, fixed_fore;
};

GridLook expected(const SkinGridColors& t, const GridLook& before, const SystemColors& sys) {
    return {t.back.resolve(before.back, sys), t.back_bkg.resolve(before.bkg, sys),
            t.back_fixed.resolve(before.fixed_back, sys), t.fore.resolve(before.fore, sys),
            t.fore_fixed.resolve(before.fixed_fore, sys)};
}

GridLook look(const Grid& g, Color bkg) {
    return {g.BackColor(), bkg, g.BackColorFixed(), g.ForeColor(), g.ForeColorFixed()};
}

void expect_look(const GridLook& got, const GridLook& want, const char* grid) {
    EXPECT_EQ(got.back, want.back) << grid << " back";
    EXPECT_EQ(got.bkg, want.bkg) << grid << " back outside the cells";
    EXPECT_EQ(got.fixed_back, want.fixed_back) << grid << " fixed back";
    EXPECT_EQ(got.fore, want.fore) << grid << " fore";
    EXPECT_EQ(got.fixed_fore, want.fixed_fore) << grid << " fixed fore";
}

class EachSkin : public SkinWindowTest, public ::testing::WithParamInterface<size_t> {};

// The skin before this one in the table runs first, so the entries a skin
// leaves unchanged show what that one left.
TEST_P(EachSkin, PaintsTheBandToolBarAndGridsAsItsTablesSay) {
    launch();
    const size_t count = std::size(tables);
    const TableRow& prior = tables[(GetParam() + count - 1) % count];
    const TableRow& k = tables[GetParam()];
    choose(QString::fromLatin1(prior.key));
    const GridLook sched_before = look(s().vsSched, s().skin.sched_back_bkg);
    const GridLook cal_before = look(s().Cal, s().skin.cal_back_bkg);
    choose(QString::fromLatin1(k.key));

    EXPECT_EQ(s().skin_name, QString::fromLatin1(k.key));
    EXPECT_EQ(s().skin.themePic, QString::fromLatin1(k.picture));
    auto* band = find<QLabel>("Label1");
    ASSERT_NE(band, nullptr);
    EXPECT_EQ(pixel(band, QPoint(2, band->height() - 2)), k.band_back);
    auto* pic = find<QLabel>("themePic");
    ASSERT_NE(pic, nullptr);
    EXPECT_FALSE(pic->pixmap().isNull());
    EXPECT_EQ(pixel(pic, QPoint(0, 0)), k.band_back);

    auto* strip = find<QFrame>("Frame3");
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(pixel(strip, QPoint(strip->width() - 3, strip->height() / 2)), k.tool_back);
    auto* day = find<QToolButton>("imageDay");
    auto* skins = find<QToolButton>("imgSkins");
    ASSERT_NE(day, nullptr);
    ASSERT_NE(skins, nullptr);
    EXPECT_EQ(day->palette().color(QPalette::ButtonText), qt(k.tool_text));
    EXPECT_EQ(skins->palette().color(QPalette::ButtonText), qt(k.band_text));

    const SystemColors sys = desk();
    expect_look(look(s().vsSched, s().skin.sched_back_bkg), expected(k.sched, sched_before, sys),
                "vsSched");
    expect_look(look(s().Cal, s().skin.cal_back_bkg), expected(k.cal, cal_before, sys), "Cal");
    EXPECT_EQ(s().cal_back_color, k.cal_back_color.resolve(0, sys));
    EXPECT_EQ(sched()->palette().color(QPalette::Base), qt(s().skin.sched_back_bkg));
    // The navigator's day cells other than today and the selection.
    const Grid& cal = s().Cal;
    for (int r = 1; r < cal.Rows(); ++r)
        for (int c = 0; c < cal.Cols(); ++c) {
            const Color b = Color(cal.Cell(CellSetting::BackColor, r, c).toUInt());
            if (b != rgb(255, 255, 255) && b != s().cal_pick_color) {
                EXPECT_EQ(b, s().cal_back_color) << r << "," << c;
            }
        }
}

std::string skin_test_name(const ::testing::TestParamInfo<size_t>& info) {
    return tables[info.param].key;
}

INSTANTIATE_TEST_SUITE_P(Skins, EachSkin, ::testing::Range<size_t>(0, std::size(tables)),
                         skin_test_name);

TEST_F(SkinWindowTest, TheMenuChecksTheChosenSkinAndHidesWhatTheTableHides) {
    launch();
    for (const char* hidden : {"mnuCamelion", "mnuNewYear", "mnuTrans"}) {
        auto* a = find<QAction>(hidden);
        ASSERT_NE(a, nullptr) << hidden;
        EXPECT_FALSE(a->isVisible()) << hidden;
    }
    EXPECT_FALSE(find<QAction>("mnuTrans")->isEnabled());
    find<QAction>("mnuHallo")->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(find<QAction>("mnuHallo")->isChecked());
    EXPECT_FALSE(find<QAction>("mnuStdWindows")->isChecked());
    find<QAction>("mnuEaster")->trigger();
    QApplication::processEvents();
    for (const SkinMenuItem& m : skin_menu())
        if (auto* a = find<QAction>(m.name.toLatin1().constData()); a && a->isCheckable()) {
            EXPECT_FALSE(a->isChecked()) << m.name.toStdString();
        }
}

TEST_F(SkinWindowTest, TheSkinsPicturePopsTheSkinMenuUp) {
    launch();
    auto* b = find<QToolButton>("imgSkins");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->text(), QStringLiteral("Skins"));
    EXPECT_EQ(b->toolTip(), QStringLiteral("Calendar skins"));
    auto* menu = find<QMenu>("mnuThemes");
    ASSERT_NE(menu, nullptr);
    b->click();
    QApplication::processEvents();
    EXPECT_TRUE(menu->isVisible());
    menu->hide();
}

TEST_F(SkinWindowTest, ARestartBringsBackTheLastSkin) {
    launch();
    EXPECT_EQ(s().skin_name, QStringLiteral("mnuStdWindows"));
    EXPECT_EQ(s().skin.checked_item, QStringLiteral("mnuStdWindows"));
    find<QAction>("mnuForest")->trigger();
    QApplication::processEvents();
    run.reset();

    launch();
    EXPECT_EQ(s().skin_name, QStringLiteral("mnuForest"));
    EXPECT_EQ(s().vsSched.BackColor(), rgb(152, 251, 152));
    EXPECT_EQ(s().cal_back_color, rgb(144, 238, 144));
    EXPECT_TRUE(find<QAction>("mnuForest")->isChecked());
    auto* band = find<QLabel>("Label1");
    EXPECT_EQ(pixel(band, QPoint(2, band->height() - 2)), rgb(0, 100, 0));
}

TEST_F(SkinWindowTest, ASavedBlackWhiteKeepsTheDesignedColoursAtStart) {
    launch();
    run_skin(QStringLiteral("mnuBlackWhite"), s().view(), s().options(), desk());
    save_options(s().store(), s().view(), s().options(), *run->window);
    run.reset();

    launch();
    EXPECT_EQ(s().skin_name, QStringLiteral("mnuBlackWhite"));
    auto* band = find<QLabel>("Label1");
    EXPECT_EQ(pixel(band, QPoint(2, band->height() - 2)), rgb(0, 128, 128));
    for (const SkinMenuItem& m : skin_menu())
        if (auto* a = find<QAction>(m.name.toLatin1().constData()); a && a->isCheckable()) {
            EXPECT_FALSE(a->isChecked()) << m.name.toStdString();
        }
}

} // namespace
} // namespace orva::testing
