#pragma once

#include "store/grid.h"
#include "store/shared.h"

#include <QRect>
#include <QString>

namespace orva {

// Check marks of the main menu that the options row carries. The window
// mirrors them onto its actions; the logic reads and writes only these.
struct MenuChecks {
    bool mnuColorY = true;       // appointment cells yellow
    bool mnuColorSelect = false; // appointment cells in the chosen colour
    bool mnuTips = true;         // "Tooltips"
    bool mnuShowTimes = true;    // "Show Times in appointment text"
    bool mnuStat = true;         // "Show status bar"; the bar follows it
    bool mnuStart = false;       // "Start when computer starts"
};

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
    QString options_path; // app_path + "/Calopt.tmp", the loose copy
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
};

// What the shell's logic needs of the main window. Geometry is in twips.
class WindowPort {
  public:
    virtual ~WindowPort() = default;
    virtual QRect work_area() const = 0; // the screen less the panels
    virtual QRect frame() const = 0;     // left, top, width, height now
    virtual void move_to(const QRect& r) = 0;
    virtual int window_state() const = 0;
    virtual void set_window_state(int state) = 0;
    virtual bool status_bar_visible() const = 0;
    virtual void set_status_bar_visible(bool on) = 0;
    virtual double twips_per_pixel_x() const = 0;
    virtual double twips_per_pixel_y() const = 0;
    // Lays out the planner that is current (week, else month, else day).
    virtual void layout_view() = 0;
    // Puts the day planner up after a load (the view's own steps).
    virtual void show_day_view() = 0;
    virtual void show_long_date(const QString& text) = 0;
    virtual void set_busy(bool busy) = 0; // the hourglass
    // Hides to the tray when there is one; false when there is none.
    virtual bool hide_to_tray() = 0;
    virtual void sync_menus() = 0;  // the menu checks changed
    virtual void end_program() = 0; // closes everything at once
};

} // namespace orva
