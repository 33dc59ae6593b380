#include "appearance/skins.h"

#include "state/options.h"
#include "views/month_view.h"

#include <cmath>

namespace orva {

namespace {

using Kind = SkinColor::Kind;

constexpr SkinColor F(int r, int g, int b) {
    return {Kind::Fixed, rgb(r, g, b)};
}
constexpr SkinColor U{Kind::Unchanged, 0};
constexpr SkinColor W{Kind::Window, 0};
constexpr SkinColor AB{Kind::ActiveBorder, 0};
constexpr SkinColor M{Kind::Menu, 0};
constexpr SkinColor BT{Kind::ButtonText, 0};

constexpr Color white = rgb(255, 255, 255);

Skin skin(const char* key, const char* picture, Color band_back, Color band_text, Color tool_back,
          Color tool_text, SkinGridColors sched, SkinGridColors cal, SkinColor cal_back) {
    return {QString::fromLatin1(key),
            QString::fromLatin1(picture),
            band_back,
            band_text,
            tool_back,
            tool_text,
            sched,
            cal,
            cal_back};
}

// The item of the skin menu that apply_skin checks for a skin_name. The
// Easter entry compares "mnueaster", which the Easter skin never writes: its
// item never shows a check, as users of the program have always seen.
// "mnuBlackWhite" and "mnuTransparent" are not here and leave all unchecked.
struct CheckLink {
    const char* key;
    const char* item;
};
constexpr CheckLink check_chain[] = {
    {"blueIce", "blueIce"},           {"mnuCamelion", "mnuCamelion"},
    {"mnuChristmas", "mnuChristmas"}, {"mnuForest", "mnuForest"},
    {"mnuHallo", "mnuHallo"},         {"mnuNewYear", "mnuNewYear"},
    {"mnuThanks", "mnuThanks"},       {"usapatriat", "usapatriat"},
    {"mnuSunnyDays", "mnuSunnyDays"}, {"mnuStdWindows", "mnuStdWindows"},
    {"mnuValentine", "mnuSkinVal"},   {"mnuStPat", "mnuStPat"},
    {"mnueaster", "mnuEaster"},
};

// The skins a saved skin_name brings back at start. "mnuBlackWhite" and
// "mnuTransparent" are missing: a calendar saved with either keeps the
// designed colours until the user picks a skin.
constexpr const char* start_chain[] = {
    "blueIce",      "mnuCamelion", "mnuChristmas", "mnuForest",    "mnuHallo",
    "mnuNewYear",   "mnuThanks",   "usapatriat",   "mnuSunnyDays", "mnuStdWindows",
    "mnuValentine", "mnuEaster",   "mnuStPat",
};

void paint_grid(Grid& g, Color& bkg, const SkinGridColors& c, const SystemColors& sys) {
    g.setBackColor(c.back.resolve(g.BackColor(), sys));
    bkg = c.back_bkg.resolve(bkg, sys);
    g.setBackColorFixed(c.back_fixed.resolve(g.BackColorFixed(), sys));
    g.setForeColor(c.fore.resolve(g.ForeColor(), sys));
    g.setForeColorFixed(c.fore_fixed.resolve(g.ForeColorFixed(), sys));
}

double channel(int v) {
    const double c = v / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(Color c) {
    return 0.2126 * channel(red_of(c)) + 0.7152 * channel(green_of(c)) +
           0.0722 * channel(blue_of(c));
}

} // namespace

Color SkinColor::resolve(Color current, const SystemColors& sys) const {
    switch (kind) {
    case Kind::Fixed:
        return value;
    case Kind::Unchanged:
        return current;
    case Kind::Window:
        return sys.window;
    case Kind::ActiveBorder:
        return sys.active_border;
    case Kind::Menu:
        return sys.menu;
    case Kind::ButtonText:
        return sys.button_text;
    }
    return current;
}

const std::vector<Skin>& skin_table() {
    // vsSched and Cal: back, back outside the cells, fixed back, fore, fixed fore.
    static const std::vector<Skin> table = {
        skin("mnuBlackWhite", "Flag", rgb(0, 0, 0), rgb(255, 255, 255), rgb(98, 98, 98),
             rgb(255, 255, 0),
             {F(255, 255, 255), F(255, 255, 255), F(0, 0, 0), F(255, 255, 255), F(255, 255, 255)},
             {F(255, 255, 255), F(255, 255, 255), F(0, 0, 0), F(0, 0, 0), F(255, 255, 255)},
             F(0, 0, 0)),
        skin("mnuCamelion", "Ctree", rgb(50, 205, 50), rgb(255, 255, 0), rgb(0, 128, 128),
             rgb(255, 255, 0), {F(144, 238, 144), F(0, 0, 0), F(177, 222, 122), U, U},
             {F(255, 255, 0), F(0, 0, 0), F(255, 192, 128), U, U}, F(255, 255, 0)),
        skin("mnuChristmas", "Xmasbells", rgb(139, 0, 0), rgb(192, 192, 192), rgb(0, 100, 0),
             rgb(192, 192, 192), {F(250, 250, 255), F(0, 0, 0), F(0, 100, 0), U, F(192, 192, 192)},
             {F(250, 250, 255), F(0, 0, 0), F(0, 200, 0), F(200, 0, 0), U}, F(250, 250, 255)),
        skin("mnuValentine", "Valentine", rgb(255, 0, 0), rgb(192, 192, 192), rgb(205, 92, 92),
             rgb(192, 192, 192),
             {F(255, 255, 255), F(0, 0, 0), F(255, 182, 193), U, F(255, 255, 255)},
             {F(255, 192, 203), F(0, 0, 0), F(255, 105, 180), F(0, 0, 0), U}, F(255, 192, 203)),
        skin("mnuEaster", "Easter_lilly", rgb(0, 205, 255), rgb(0, 0, 128), rgb(0, 122, 220),
             rgb(0, 255, 0),
             {F(255, 255, 255), F(255, 255, 255), F(0, 255, 127), F(255, 0, 0), F(0, 0, 192)},
             {F(152, 251, 152), F(0, 0, 0), F(0, 255, 0), F(0, 0, 255), U}, F(128, 255, 128)),
        skin("mnuForest", "Ctree", rgb(0, 100, 0), rgb(255, 255, 0), rgb(98, 98, 98),
             rgb(255, 255, 0),
             {F(152, 251, 152), F(152, 251, 152), F(34, 139, 34), U, F(255, 255, 255)},
             {F(144, 238, 144), F(0, 0, 0), F(255, 192, 128), F(0, 0, 0), U}, F(144, 238, 144)),
        skin("mnuHallo", "pumpkin2", rgb(0, 0, 0), rgb(255, 255, 0), rgb(192, 0, 0),
             rgb(255, 255, 0), {F(255, 255, 192), F(255, 255, 192), F(255, 128, 0), U, F(0, 0, 0)},
             {F(0, 255, 0), F(0, 0, 0), F(255, 128, 0), F(0, 0, 0), F(0, 0, 0)}, F(0, 255, 0)),
        skin("blueIce", "Snowflake", rgb(214, 230, 254), rgb(0, 0, 128), rgb(255, 0, 255),
             rgb(0, 0, 128), {F(255, 255, 255), F(255, 255, 255), F(255, 192, 255), U, F(0, 0, 0)},
             {F(166, 211, 217), F(0, 0, 0), F(192, 192, 255), F(0, 0, 255), U}, F(166, 211, 217)),
        skin("mnuNewYear", "Snowflake", rgb(214, 230, 254), rgb(0, 0, 128), rgb(255, 0, 255),
             rgb(0, 0, 128), {F(255, 255, 255), F(255, 255, 255), F(255, 192, 255), U, F(0, 0, 0)},
             {F(166, 211, 217), F(0, 0, 0), F(192, 192, 255), U, U}, F(166, 211, 217)),
        skin("mnuStdWindows", "Globe", rgb(0, 128, 128), rgb(192, 255, 192), rgb(98, 98, 98),
             rgb(0, 255, 0), {W, W, AB, F(0, 0, 0), F(0, 0, 0)}, {W, F(0, 0, 0), M, F(0, 0, 0), U},
             W),
        skin("mnuStPat", "St_patrick_hat", rgb(0, 128, 0), rgb(0, 0, 128), rgb(0, 102, 0),
             rgb(0, 255, 0),
             {F(255, 255, 255), F(255, 255, 255), F(0, 200, 0), F(255, 0, 0), F(0, 0, 192)},
             {F(128, 255, 128), F(0, 0, 0), F(0, 255, 0), F(0, 0, 255), U}, F(128, 255, 128)),
        skin("mnuSunnyDays", "Sun", rgb(255, 192, 255), rgb(0, 0, 128), rgb(98, 98, 98),
             rgb(0, 255, 0),
             {F(255, 255, 192), F(255, 255, 192), F(0, 255, 0), F(255, 0, 0), F(0, 0, 192)},
             {F(128, 255, 128), F(0, 0, 0), F(0, 255, 0), F(0, 0, 255), U}, F(128, 255, 128)),
        skin("mnuThanks", "Thanksgiving1", rgb(111, 60, 6), rgb(0, 255, 0), rgb(100, 90, 6),
             rgb(0, 255, 0),
             {F(192, 255, 192), F(192, 255, 192), F(128, 128, 0), F(255, 0, 0), F(0, 0, 0)},
             {F(255, 255, 0), F(0, 0, 0), F(228, 185, 33), F(0, 0, 0), U}, F(255, 255, 0)),
        skin("mnuTransparent", "Flag", rgb(255, 255, 255), rgb(0, 0, 0), rgb(98, 98, 98),
             rgb(255, 255, 0),
             {F(255, 255, 255), F(255, 255, 255), F(255, 255, 255), F(255, 255, 255), F(0, 0, 0)},
             {F(255, 255, 255), F(255, 255, 255), F(0, 0, 0), F(0, 0, 0), F(255, 255, 255)},
             F(0, 0, 0)),
        skin("usapatriat", "Flag", rgb(255, 0, 0), rgb(255, 255, 0), rgb(98, 98, 98),
             rgb(255, 255, 0),
             {F(255, 255, 255), F(255, 255, 255), F(128, 128, 255), F(255, 0, 0), F(0, 0, 0)},
             {F(214, 230, 254), F(0, 0, 0), F(0, 0, 192), F(0, 0, 128), BT}, F(214, 230, 254)),
    };
    return table;
}

const Skin* find_skin(const QString& key) {
    for (const Skin& s : skin_table())
        if (s.key == key) return &s;
    return nullptr;
}

const std::vector<SkinMenuItem>& skin_menu() {
    static const std::vector<SkinMenuItem> menu = [] {
        const QString themes = QStringLiteral("mnuThemes"), holiday = QStringLiteral("mnuHoliday");
        const auto item = [](const QString& parent, const char* name, const char* caption,
                             const char* key, bool visible = true, bool enabled = true) {
            return SkinMenuItem{QString::fromLatin1(name), parent,  QString::fromUtf8(caption),
                                QString::fromLatin1(key),  visible, enabled};
        };
        // The trailing blanks of "Sunny " and "Std Windows " are the captions'.
        return std::vector<SkinMenuItem>{
            item(themes, "blueIce", "Blue Ice", "blueIce"),
            item(themes, "mnuCamelion", "Camelion", "mnuCamelion", false),
            item(themes, "mnuForest", "Forest", "mnuForest"),
            item(themes, "mnuHoliday", "Holidays", ""),
            item(holiday, "mnuEaster", "Easter", "mnuEaster"),
            item(holiday, "mnuChristmas", "Holiday/Christmas Season", "mnuChristmas"),
            item(holiday, "mnuHallo", "Halloween", "mnuHallo"),
            item(holiday, "mnuNewYear", "New Year", "mnuNewYear", false),
            item(holiday, "mnuStPat", "St Patrick's Day", "mnuStPat"),
            item(holiday, "mnuSkinVal", "Valentine's Day", "mnuValentine"),
            item(holiday, "mnuThanks", "Fall Seasons", "mnuThanks"),
            item(themes, "usapatriat", "Patriotic", "usapatriat"),
            item(themes, "mnuTrans", "Transparent (white)", "mnuTransparent", false, false),
            item(themes, "mnuSunnyDays", "Sunny ", "mnuSunnyDays"),
            item(themes, "mnuStdWindows", "Std Windows ", "mnuStdWindows"),
        };
    }();
    return menu;
}

const std::vector<QString>& band_labels() {
    static const std::vector<QString> names = {
        QStringLiteral("Label8"),  QStringLiteral("label9"),  QStringLiteral("Label10"),
        QStringLiteral("Label11"), QStringLiteral("Label18"), QStringLiteral("Label12")};
    return names;
}

const std::vector<QString>& tool_labels() {
    static const std::vector<QString> names = {
        QStringLiteral("Label2"),  QStringLiteral("Label3"),  QStringLiteral("Label4"),
        QStringLiteral("Label5"),  QStringLiteral("Label7"),  QStringLiteral("Label13"),
        QStringLiteral("Label14"), QStringLiteral("Label15"), QStringLiteral("Label16"),
        QStringLiteral("Label17")};
    return names;
}

void run_skin(const QString& key, PlannerState& view, OptionsState& options,
              const SystemColors& sys) {
    const Skin* s = find_skin(key);
    if (!s) return;
    options.skin_name = s->key;
    paint_grid(view.vsSched, view.skin.sched_back_bkg, s->sched, sys);
    paint_grid(view.Cal, view.skin.cal_back_bkg, s->cal, sys);
    view.cal_back_color = s->cal_back_color.resolve(view.cal_back_color, sys);
    view.skin.themePic = s->picture;
    apply_skin(view, options, s->band_back, s->band_text, s->tool_back, s->tool_text, s->band_back);
}

void apply_skin(PlannerState& view, OptionsState& options, Color band_back, Color band_text,
                Color tool_back, Color tool_text, Color title_back) {
    SkinState& skin = view.skin;
    skin.theme_back = band_back;
    skin.labels[QStringLiteral("Label1")] = {title_back, band_text};
    // The month planner draws its week boxes in the title's colour.
    view.label1_back_color = title_back;
    for (const QString& n : band_labels())
        skin.labels[n] = {band_back, band_text};
    skin.frame3_back = tool_back;
    for (const QString& n : tool_labels())
        skin.labels[n] = {tool_back, tool_text};

    skin.checked_item.clear();
    for (const CheckLink& link : check_chain)
        if (options.skin_name == QLatin1String(link.key))
            skin.checked_item = QString::fromLatin1(link.item);

    // The today cell keeps its white through every skin, and the selection
    // keeps the pick colour. Today is told by white and bold together: a
    // month drawn under the standard skin is white all over, and the first
    // skin chosen after it must colour those days too.
    Grid& cal = view.Cal;
    for (int r = 1; r < cal.Rows(); ++r)
        for (int c = 0; c < cal.Cols(); ++c) {
            const Color back = Color(cal.Cell(CellSetting::BackColor, r, c).toUInt());
            const bool today = back == white && cal.Cell(CellSetting::FontBold, r, c).toBool();
            if (!today && back != view.cal_pick_color)
                cal.setCell(CellSetting::BackColor, r, c, view.cal_back_color);
        }

    if (options.appt_color_mode == u"3") {
        Grid& g = view.vsSched;
        options.appt_back_color = g.BackColor();
        for (int r = 0; r < g.Rows(); ++r)
            for (int c = 0; c < g.Cols(); ++c) {
                const QString data = g.Cell(CellSetting::Data, r, c).toString();
                if (data != u"blank" && !data.isEmpty())
                    g.setCell(CellSetting::BackColor, r, c, options.appt_back_color);
            }
    }
    set_overvw_color(view, options);
}

void skin_menu_click(const QString& item, Shared& store, PlannerState& view, OptionsState& options,
                     WindowPort& w, const SystemColors& sys) {
    for (const SkinMenuItem& m : skin_menu()) {
        if (m.name != item || m.skin_key.isEmpty()) continue;
        run_skin(m.skin_key, view, options, sys);
        save_options(store, view, options, w);
        return;
    }
}

void select_saved_skin(PlannerState& view, OptionsState& options, const SystemColors& sys) {
    for (const char* key : start_chain)
        if (options.skin_name == QLatin1String(key)) {
            run_skin(options.skin_name, view, options, sys);
            return;
        }
}

double contrast_ratio(Color a, Color b) {
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Color readable_text(Color text, Color back, Color fallback) {
    return contrast_ratio(text, back) >= min_text_contrast ? text : fallback;
}

} // namespace orva
