#pragma once

#include "core/controls.h"
#include "core/window_port.h"
#include "grid/grid.h"
#include "store/shared.h"

#include <QString>
#include <map>

namespace orva {

struct ApptForm;

// The whole shared module: the store's tables and files plus the main form's
// grids, flags and option variables. One instance for the process; tests
// make their own.
struct AppState : Shared {
    // Grids of the main form. The logic computes into them; widgets render.
    Grid vsSched, Cal, vsOvervw, vsDtl, vsSortGrid, vsSettings, vsPrtgrd, vsPrtGrid;

    MenuChecks menus;

    // Which planner shows; at most one is true.
    bool view_day = false, view_week = false, view_month = false;
    bool startup_move = false; // the window is being placed: resizing stands aside
    bool stay_open = false;    // the user declined to leave
    int cur_day = 0;           // day of the month of today
    int months_back = 0;       // months since the calendar was last used
    int sel_row1 = -1, sel_col1 = -1, sel_row2 = -1, sel_col2 = -1; // print range
    bool delete_enabled = true;                                     // File > Delete
    bool sysCalender_enabled = true;                                // tray menu's "show calendar"

    // Screen twips per pixel, noted at start-up; their product is the width the
    // day grid gives its thin divider columns.
    double twips_per_pixel_x = 15, twips_per_pixel_y = 15;
    double twips_product = 225;

    // --- option variables (one row of 20 columns in vsSettings) ---------
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

    // --- controls of the main form other than grids, by object name -----
    // Missing names are made on first use with their design state (enabled,
    // visible, no text).
    std::map<QString, Control> controls;
    Control& ctl(const QString& name) { return controls[name]; }
    // Status-bar panels by key: "nbrAppts " (with its blank), "cFile",
    // "yrDay", "daysLeft".
    std::map<QString, StatusPanel> status_panels;
    QString tab_key = QStringLiteral("appt"); // key of the selected tab of TabStrip1

    // The main tick's switch; stopped around modal forms and date changes so
    // that a tick cannot refill a planner in the middle of a rebuild.
    bool timer1_enabled = false;

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

    // --- hand-over to the editor ----------------------------------------
    bool new_appt = false;
    int edit_index = 0; // row of appt_tbl
    QDate edit_date;
    QString edit_start; // the row's time label, " " for untimed
    bool appt_from_planner = false;
    bool appt_copy = false;

    // --- the rule and the reminder in force in the editor ----------------
    qint16 occ_period = 0;  // 0 once, 1 daily, 2 weekly, 3 monthly, 4 yearly
    qint16 occ_every = 0;   // interval row (step - 1); the weekday under the second option
    qint16 occ_ordinal = 0; // 0 first .. 4 last
    qint16 occ_weekday = 0; // 0 Sunday .. 6 Saturday
    qint16 occ_month = 0;   // 0 every month, 1 January .. 12 December
    QString occ_until;      // "mm/dd/yy"
    bool occ_by_period = true, occ_by_weekday = false; // exactly one is true
    qint16 rem_lead = 0, rem_unit = 0, rem_anim = 1;
    QString rem_sound; // path of the alarm sound, or empty
    qint16 old_lead = 0, old_unit = 0, old_anim = 1;
    QString old_sound;
    QString msg_anim; // the messenger of the next flight ("2", "3"); anything else flies none
    QString rem_from; // who opened the reminder setup: "apptfrm" or "CalDtlRem"
    int rem_row = 0;  // the row of appt_tbl of a "CalDtlRem" setup
    bool day_filled = false; // the day view has been filled once in this run
    // Set by an edit's change check: reminders to rebuild (past ones written
    // as delivered), the record to rewrite, the sticker changed.
    bool mark_past = false, appt_changed = false, type_changed = false;
    // The editor while it is loaded, so the dialogs it opens can read and set
    // its controls; null when it is not.
    ApptForm* appt_form = nullptr;

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

    // --- notes ------------------------------------------------------------
    QString notes_text;  // in and out of frmNotes
    QString notes_shown; // what frmNotes opened with
    bool notes_dirty = false;
    QString caller_form; // "apptfrm" or "dtlfrm"
};

} // namespace orva
