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
    // Hides the window when a tray shows our icon and returns true. Without
    // one it minimises the window instead, which the task bar can bring back,
    // and returns false: a hidden window could not be reached again.
    virtual bool hide_to_tray() = 0;
    // Shows the window again after it was hidden or minimised.
    virtual void show_window() {}
    // True while the window is hidden (not merely minimised).
    virtual bool window_hidden() const { return false; }
    virtual void sync_menus() = 0;  // the menu checks changed
    virtual void end_program() = 0; // closes everything at once
    // The saved skin comes up (the options' own step). The skins live above
    // the options and need the desktop's colours, which the window knows; a
    // window that is not there keeps the colours as they stand.
    virtual void select_skin() {}
};

// A window that is not there: it has no frame (so an options save keeps the
// stored placement), places nothing and shows nothing.
class NoWindow : public WindowPort {
  public:
    QRect work_area() const override { return {}; }
    QRect frame() const override { return {}; }
    void move_to(const QRect&) override {}
    int window_state() const override { return 0; }
    void set_window_state(int) override {}
    bool status_bar_visible() const override { return true; }
    void set_status_bar_visible(bool) override {}
    double twips_per_pixel_x() const override { return 15; }
    double twips_per_pixel_y() const override { return 15; }
    void layout_view() override {}
    void show_day_view() override {}
    void show_long_date(const QString&) override {}
    void set_busy(bool) override {}
    bool hide_to_tray() override { return false; }
    void sync_menus() override {}
    void end_program() override {}
};

inline WindowPort& no_window() {
    static NoWindow w;
    return w;
}

} // namespace orva
