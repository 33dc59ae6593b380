#pragma once

#include "appearance/skins.h"

#include <QColor>
#include <QPalette>

namespace orva {

// The palette roles that stand for the desktop colours the skin tables name.
// "Window" there is the back of text areas and lists, which Qt calls Base;
// the active border and the menu are the grey of frames and bars.
inline constexpr QPalette::ColorRole system_window_role = QPalette::Base;
inline constexpr QPalette::ColorRole system_active_border_role = QPalette::Button;
inline constexpr QPalette::ColorRole system_menu_role = QPalette::Window;
inline constexpr QPalette::ColorRole system_button_text_role = QPalette::ButtonText;

// The desktop's colours now, from the application's palette.
SystemColors system_colors(const QPalette& palette);

Color to_color(const QColor& c);

} // namespace orva
