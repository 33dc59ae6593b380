#pragma once

#include "state/app_state.h"

#include <QString>
#include <vector>

namespace orva {

// The fifteen skins: colours of the band, the tool bar, the day grid and the
// navigator, and the corner picture, chosen by key from the skin menu and
// kept in skin_name with the options.

// The desktop's own colours that the tables name, taken live by the window
// each time a skin applies, so that the standard skin follows the desktop.
struct SystemColors {
    Color window = rgb(255, 255, 255);
    Color active_border = rgb(212, 208, 200);
    Color menu = rgb(212, 208, 200);
    Color button_text = rgb(0, 0, 0);
};

// One entry of a skin table.
struct SkinColor {
    enum class Kind { Fixed, Unchanged, Window, ActiveBorder, Menu, ButtonText };
    Kind kind = Kind::Unchanged;
    Color value = 0; // Fixed only
    // The colour to set, or `current` when the table leaves it unchanged.
    Color resolve(Color current, const SystemColors& sys) const;
};

// The five colours a skin gives vsSched and Cal.
struct SkinGridColors {
    SkinColor back, back_bkg, back_fixed, fore, fore_fixed;
};

struct Skin {
    QString key;                                      // as skin_name keeps it
    QString picture;                                  // key of the themePic picture
    Color band_back, band_text, tool_back, tool_text; // the title's back is band_back
    SkinGridColors sched, cal;
    SkinColor cal_back_color;
};

// The fifteen, in the order of the tables; "mnuBlackWhite" has no menu item.
const std::vector<Skin>& skin_table();
// nullptr for a key no skin has; the comparison is exact.
const Skin* find_skin(const QString& key);

// An entry of the skin menu, in menu order. `parent` is "mnuThemes" or
// "mnuHoliday"; the "mnuHoliday" entry itself opens the sub-menu and has no
// skin. Hidden entries (and "mnuTrans", also disabled) cannot be chosen.
struct SkinMenuItem {
    QString name, parent, caption;
    QString skin_key; // "" for the sub-menu
    bool visible = true;
    bool enabled = true;
};
const std::vector<SkinMenuItem>& skin_menu();

// The skin operation of `key`: skin_name, the grids' colours, cal_back_color,
// themePic, then apply_skin. A key of no skin changes nothing. Saves nothing.
void run_skin(const QString& key, PlannerState& view, OptionsState& options,
              const SystemColors& sys);

// The common tail of every skin: band, tool bar and title colours onto the
// labels, the check mark of the skin menu, the navigator repainted in
// cal_back_color (the white today cell and the selection excepted), the
// appointment cells when they take the grid's colour (appt_color_mode "3"),
// and vsOvervw's colours.
void apply_skin(PlannerState& view, OptionsState& options, Color band_back, Color band_text,
                Color tool_back, Color tool_text, Color title_back);

// The click of a skin menu item by its name: its skin, then the options are
// saved. An item without a skin does nothing.
void skin_menu_click(const QString& item, Shared& store, PlannerState& view, OptionsState& options,
                     WindowPort& w, const SystemColors& sys);

// At start and at open: the saved skin_name runs its skin, saving nothing.
// "mnuBlackWhite", "mnuTransparent" and unknown keys leave the colours as
// they stand.
void select_saved_skin(PlannerState& view, OptionsState& options, const SystemColors& sys);

// The labels apply_skin colours, by name: the band's and the tool bar's.
const std::vector<QString>& band_labels();
const std::vector<QString>& tool_labels();

// WCAG contrast ratio of two colours, 1 (none) to 21 (black on white).
double contrast_ratio(Color a, Color b);
// `text` when it reads on `back`, else `fallback`: the palette's own text
// colour for widgets that the skins do not colour but sit on their colours.
Color readable_text(Color text, Color back, Color fallback);
inline constexpr double min_text_contrast = 3.0;

} // namespace orva
