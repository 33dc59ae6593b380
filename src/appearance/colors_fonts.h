#pragma once

#include "state/app_state.h"

#include <QString>

namespace orva {

// The two choices that run through all planners: the back colour of
// appointment cells in the day grid (appt_color_mode, appt_back_color) and
// the one font shared by vsSched, vsOvervw, vsDtl and rtNotes. Both are
// options of the calendar and travel with its options row.

// appt_back_color of "Use Default Yellow", RGB(255,255,0).
inline constexpr Color default_yellow = 65535;

// Every cell of vsSched in columns from 1 whose data is neither "blank" nor
// "" takes appt_back_color. Row 0 is painted too, though a fill leaves its
// entries unpainted: the loop looks only at the data.
void repaint_appt_cells(PlannerState& view, const OptionsState& options);
// The check marks of mnuColorY, mnuNoColor and mnuColorSelect as the mode
// says; any other mode leaves them alone.
void set_color_checks(OptionsState& options);

// The items of Color > "Appointment Background (applies to all appts)". Each
// repaints the appointment cells, sets the check marks and saves the options.
// "Use Default Yellow": mode "1", yellow.
void mnuColorY_Click(AppState& s, WindowPort& w);
// "Transparent": mode "3", the back colour of vsSched itself, so only the
// block's border shows an entry.
void mnuNoColor_Click(AppState& s, WindowPort& w);
// "Select Color": the colour dialog through the modal seam, preset with
// appt_back_color; OK gives mode "2" and the chosen colour, Cancel leaves
// everything as it was.
void mnuColorSelect_Click(AppState& s, WindowPort& w);

// The font dialog (frmFonts) as the logic sees it. It never offers italic:
// grid_font_italic is read and kept, but no choice of the user changes it.
struct FontsForm {
    QString font_name;
    int font_size = 9; // points, font_size_min .. font_size_max
    bool font_bold = false;
    bool font_italic = false; // shown in the sample only
    Color font_color = 0;
    bool accepted = false; // OK was pressed
};

inline constexpr int font_size_min = 8;
inline constexpr int font_size_max = 18;

// A size in points held to what the dialog offers, rounded to whole points.
int limit_font_size(double points);

// Presets the dialog from the options' name, size, bold and colour; where an
// option is empty or no number, from vsSched.
void frmFonts_Load(const OptionsState& options, const PlannerState& view, FontsForm& f);
// The colour button: the colour dialog through the modal seam, preset with
// the form's colour. Cancel keeps it.
void frmFonts_Color(FontsForm& f);
void frmFonts_OK(FontsForm& f);
void frmFonts_Cancel(FontsForm& f);

// "Fonts": opens frmFonts through the modal seam; on OK the options take its
// name, size, bold and colour and the planner in view takes them: the month
// planner its fonts, colours and cell sizes; the day planner every cell of
// vsSched and vsDtl (row heights stay until build_day_rows next runs, so a
// size above 10 gives 400-twip rows only then), and the options are saved;
// the week planner is built again, and the options are saved. Cancel
// changes nothing.
void mnuFonts_Click(AppState& s, WindowPort& w);

} // namespace orva
