#include "appearance/ui/skin_palette.h"

namespace orva {

Color to_color(const QColor& c) {
    return rgb(c.red(), c.green(), c.blue());
}

SystemColors system_colors(const QPalette& palette) {
    return {to_color(palette.color(QPalette::Active, system_window_role)),
            to_color(palette.color(QPalette::Active, system_active_border_role)),
            to_color(palette.color(QPalette::Active, system_menu_role)),
            to_color(palette.color(QPalette::Active, system_button_text_role))};
}

} // namespace orva
