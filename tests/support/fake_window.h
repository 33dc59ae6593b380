#pragma once

#include "state/app_state.h"

namespace orva::testing {

// The main window as the shell's logic sees it, with a 1920x1040 work area at
// 96 dpi (15 twips a pixel) and counters for what the logic asked of it.
class FakeWindow final : public WindowPort {
  public:
    QRect area{0, 0, 1920 * 15, 1040 * 15};
    QRect geometry{0, 0, 11910, 8550};
    int state = 0;
    bool status_bar = true;
    int layouts = 0, moves = 0, day_views = 0, menu_syncs = 0, ends = 0;
    QString long_date;
    // Whether a tray shows the icon; the window hidden, or minimised instead.
    bool tray = false, hidden = false;

    QRect work_area() const override { return area; }
    QRect frame() const override { return geometry; }
    void move_to(const QRect& r) override {
        geometry = r;
        ++moves;
    }
    int window_state() const override { return state; }
    void set_window_state(int s) override { state = s; }
    bool status_bar_visible() const override { return status_bar; }
    void set_status_bar_visible(bool on) override { status_bar = on; }
    double twips_per_pixel_x() const override { return 15; }
    double twips_per_pixel_y() const override { return 15; }
    void layout_view() override { ++layouts; }
    void show_day_view() override { ++day_views; }
    void show_long_date(const QString& text) override { long_date = text; }
    void set_busy(bool) override {}
    bool hide_to_tray() override {
        hidden = tray;
        if (!tray) state = 1;
        return tray;
    }
    void show_window() override {
        hidden = false;
        if (state == 1) state = 0;
    }
    bool window_hidden() const override { return hidden; }
    void sync_menus() override { ++menu_syncs; }
    void end_program() override { ++ends; }
};

} // namespace orva::testing
