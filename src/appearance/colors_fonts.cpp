#include "appearance/colors_fonts.h"

#include "core/modal.h"
#include "state/options.h"
#include "views/day_view.h"
#include "views/month_view.h"
#include "views/week_view.h"

#include <algorithm>
#include <cmath>

namespace orva {
namespace {

void finish_color_command(AppState& s, WindowPort& w) {
    repaint_appt_cells(s.view(), s.options());
    set_color_checks(s.options());
    w.sync_menus();
    save_options(s.store(), s.view(), s.options(), w);
}

// Font name, size, bold and fore colour on every cell of `g`; italic is
// left as the cells have it.
void font_on_all_cells(Grid& g, const OptionsState& options) {
    if (g.Rows() < 1 || g.Cols() < 1) return;
    const int r2 = g.Rows() - 1, c2 = g.Cols() - 1;
    if (!options.grid_font_name.isEmpty())
        g.setCell(CellSetting::FontName, 0, 0, r2, c2, options.grid_font_name);
    g.setCell(CellSetting::FontSize, 0, 0, r2, c2, grid_font_points(options));
    g.setCell(CellSetting::FontBold, 0, 0, r2, c2, options.grid_font_bold);
    if (const auto fore = font_color(options)) g.setCell(CellSetting::ForeColor, 0, 0, r2, c2, *fore);
}

} // namespace

void repaint_appt_cells(PlannerState& view, const OptionsState& options) {
    Grid& g = view.vsSched;
    for (int r = 0; r < g.Rows(); ++r)
        for (int c = 1; c < g.Cols(); ++c) {
            const QString data = g.Cell(CellSetting::Data, r, c).toString();
            if (data.isEmpty() || data == blank_data) continue;
            g.setCell(CellSetting::BackColor, r, c, options.appt_back_color);
        }
}

void set_color_checks(OptionsState& options) {
    MenuChecks& m = options.menus;
    const QString& mode = options.appt_color_mode;
    if (mode != u"1" && mode != u"2" && mode != u"3") return;
    m.mnuColorY = mode == u"1";
    m.mnuColorSelect = mode == u"2";
    m.mnuNoColor = mode == u"3";
}

void mnuColorY_Click(AppState& s, WindowPort& w) {
    s.appt_back_color = default_yellow;
    s.appt_color_mode = QStringLiteral("1");
    finish_color_command(s, w);
}

void mnuNoColor_Click(AppState& s, WindowPort& w) {
    s.appt_back_color = s.vsSched.BackColor();
    s.appt_color_mode = QStringLiteral("3");
    finish_color_command(s, w);
}

void mnuColorSelect_Click(AppState& s, WindowPort& w) {
    quint32 chosen = s.appt_back_color;
    if (!modal().choose_color(chosen)) return;
    s.appt_back_color = chosen & 0xFFFFFF;
    s.appt_color_mode = QStringLiteral("2");
    finish_color_command(s, w);
}

int limit_font_size(double points) {
    if (!std::isfinite(points)) return font_size_min;
    return std::clamp(int(std::lround(points)), font_size_min, font_size_max);
}

void frmFonts_Load(const OptionsState& options, const PlannerState& view, FontsForm& f) {
    f.font_name =
        options.grid_font_name.isEmpty() ? view.vsSched.FontName() : options.grid_font_name;
    bool ok = false;
    const double pt = options.grid_font_size.trimmed().toDouble(&ok);
    f.font_size = limit_font_size(ok && pt > 0 ? pt : view.vsSched.FontSize());
    f.font_bold = options.grid_font_bold;
    f.font_italic = options.grid_font_italic;
    f.font_color = font_color(options).value_or(view.vsSched.ForeColor()) & 0xFFFFFF;
    f.accepted = false;
}

void frmFonts_Color(FontsForm& f) {
    quint32 c = f.font_color;
    if (modal().choose_color(c)) f.font_color = c & 0xFFFFFF;
}

void frmFonts_OK(FontsForm& f) {
    f.font_size = limit_font_size(f.font_size);
    f.accepted = true;
}

void frmFonts_Cancel(FontsForm& f) {
    f.accepted = false;
}

void mnuFonts_Click(AppState& s, WindowPort& w) {
    FontsForm f;
    frmFonts_Load(s.options(), s.view(), f);
    s.fonts_form = &f;
    modal().open_form(QStringLiteral("frmFonts"));
    s.fonts_form = nullptr;
    if (!f.accepted) return;

    s.grid_font_name = f.font_name;
    s.grid_font_size = QString::number(f.font_size);
    s.grid_font_bold = f.font_bold;
    s.grid_font_color = QString::number(f.font_color);

    if (s.view_month) {
        // The month planner keeps the choice in memory only: the next view
        // change or exit stores it.
        set_mth_fonts(s.view(), s.options());
        set_overvw_color(s.view(), s.options());
        resize_mth_grd(s.view(), s.options());
    } else if (s.view_day) {
        // Cells only: the row heights follow the size when build_day_rows
        // next runs, not now.
        font_on_all_cells(s.vsSched, s.options());
        font_on_all_cells(s.vsDtl, s.options());
        save_options(s.store(), s.view(), s.options(), w);
    } else if (s.view_week) {
        imageWeek_Click(s, w);
        save_options(s.store(), s.view(), s.options(), w);
    }
}

} // namespace orva
