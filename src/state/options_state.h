#pragma once

#include "core/controls.h"
#include "grid/grid.h"

#include <QString>
#include <optional>

namespace orva {

struct FontsForm;

// The options of the open calendar: the row of 20 columns in vsSettings, the
// variables it is read into and written from, and the menu checks it carries.
struct OptionsState {
    Grid vsSettings; // one row of 20 columns, stored as "Calopt.tmp"
    MenuChecks menus;

    QString skin_name = QStringLiteral("mnuStdWindows");
    qint16 anim_speed = 1;
    Color appt_back_color = 65535;
    QString appt_color_mode = QStringLiteral("1");           // "1" yellow, "2" chosen, "3" none
    QString grid_font_name, grid_font_size, grid_font_color; // size and colour as text
    bool grid_font_bold = false, grid_font_italic = false;
    QString start_view = QStringLiteral("dayvw"); // "mthvw", "weekvw" or "dayvw"
    QString show_times = QStringLiteral("T");
    QString last_used_date; // "mmddyyyy"; read once at start-up
    int form_height = 0, form_width = 0, form_top = 0, form_left = 0; // twips
    int form_state = 0;           // 0 normal, 1 minimised, 2 maximised
    QString work_start, work_end; // "8:00:00 AM", "5:00:00 PM"
    // The font dialog while it is open, so the form shown through the modal
    // seam works on the command's copy; null when it is not.
    FontsForm* fonts_form = nullptr;
};

// The options' font colour; none when its text is no number.
inline std::optional<Color> font_color(const OptionsState& options) {
    bool ok = false;
    const qulonglong c = options.grid_font_color.trimmed().toULongLong(&ok);
    if (!ok) return std::nullopt;
    return Color(c);
}

} // namespace orva
