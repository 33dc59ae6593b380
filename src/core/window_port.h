#pragma once

#include <QRect>
#include <QString>

namespace orva {

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
