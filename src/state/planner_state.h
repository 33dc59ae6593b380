#pragma once

#include "core/controls.h"
#include "grid/grid.h"
#include "state/skin_state.h"

#include <QDate>
#include <QString>
#include <array>
#include <map>
#include <set>

namespace orva {

// What the planners own: the main form's grids, which planner shows, the
// controls other than grids, the status bar, and the working variables of
// the day grid and the navigator. The logic computes into these; the window
// renders them.
struct PlannerState {
    // Grids of the main form. vsSettings, the options row, belongs to the
    // options (OptionsState).
    Grid vsSched, Cal, vsOvervw, vsDtl, vsSortGrid, vsPrtgrd, vsPrtGrid;

    // Which planner shows; at most one is true.
    bool view_day = false, view_week = false, view_month = false;
    int cur_day = 0;                                                // day of the month of today
    int sel_row1 = -1, sel_col1 = -1, sel_row2 = -1, sel_col2 = -1; // print range

    // Screen twips per pixel, noted at start-up; their product is the width the
    // day grid gives its thin divider columns.
    double twips_per_pixel_x = 15, twips_per_pixel_y = 15;
    double twips_product = 225;

    // --- controls of the main form other than grids, by object name -----
    // Missing names are made on first use with their design state (enabled,
    // visible, no text).
    std::map<QString, Control> controls;
    Control& ctl(const QString& name) { return controls[name]; }
    // Status-bar panels by key: "nbrAppts " (with its blank), "cFile",
    // "yrDay", "daysLeft".
    std::map<QString, StatusPanel> status_panels;
    // Back colour of the band behind the title (Label1); the month planner
    // draws its week boxes in it.
    Color label1_back_color = rgb(0, 128, 128);
    QString tab_key = QStringLiteral("appt"); // key of the selected tab of TabStrip1
    SkinState skin; // band, tool bar and corner picture of the skin in force
    // The tool strip's looks: labels lit by the mouse (by label name) and
    // pictures drawn pressed (by picture name).
    std::set<QString> tools_lit, tools_pressed;

    // --- day planner ------------------------------------------------------
    qint16 day_appts = 0;            // entries laid on the day grid
    qint16 week_appts = 0;           // entries in the week planner
    qint16 month_appts = 0;          // entries in the month planner
    qint16 cur_row = 0, cur_col = 0; // the block last placed or clicked
    QString first_row, first_col;    // first block of a fill; "" until one is placed
    qint16 slot_row = 0,
           slot_col = 0; // column search; slot_col keeps its value when nothing is free
    qint16 now_row_old = 0, now_row = 0;
    Color now_color = 15000061;        // RGB(253,225,228)
    int blankColWidth = 45;            // spacer width in twips: 3 pixels, fixed at start
    int mouse_col_noted = 0;           // column of the last left press on vsSched; decides the tips
    int last_edit_key = 0;             // last key typed into a cell editor (Qt::Key)
    int quick_left = 0, quick_top = 0; // twips: where the cell of a quick entry lies on vsSched
    bool day_filled = false;           // the day view has been filled once in this run

    // --- navigator --------------------------------------------------------
    int today_day = 0; // day number drawn white and bold in any month shown
    qint16 cal_row = 0, cal_col = 0;
    qint16 cal_sel_row = 0, cal_sel_col = 0;   // row 0: nothing selected
    Color cal_pick_color = 8454143;            // RGB(255,255,128)
    Color cal_back_color = rgb(255, 255, 255); // the skin's; white until one applies
    bool combo_lock = false;
    QDate first_day, next_first_day;
    int month_days = 0;
    int first_wday = 0;       // 0 Sunday .. 6 Saturday
    ComboList Combo1, Combo2; // month names; years 2001 .. today + 15

    // --- month and week planners (vsOvervw) -------------------------------
    // month_list(day, position): the appt_tbl row of a day's entry in the
    // order of the day, 0 for none; days 0 to 32, at most 101 entries a day.
    struct MonthEntry {
        qint16 day = 0;
        qint16 index = 0;
    };
    static constexpr int month_list_days = 33;
    static constexpr int month_list_slots = 101;
    std::array<std::array<MonthEntry, month_list_slots>, month_list_days> month_list{};
    bool FiveWeeks = false;
    long sel_mth_row = 0, sel_mth_col = 0; // the date cell of cur_date
    // Results of extract_ptr: where the row number starts in a cell's data
    // (1-based), its length, and whether there is one.
    qint16 ptrPos = 0, ptr_len = 0;
    bool ptr_found = false;
    QDate week_start, week_end;       // Monday and Sunday of the week shown
    std::array<qint16, 8> week_row{}; // last row used, by weekday number 1 (Sunday) .. 7
    int srtwkday = 0;                 // weekday number of the line in hand
};

} // namespace orva
