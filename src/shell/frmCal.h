#pragma once

// The main window and its module map:
//   shell/        frame, start-up and exit (startup), options row (options),
//                 the seams (modal, clock, event_loop), single instance
//   store/        records and tables, member lines, the archive file, the
//                 calendar-file routines, and the headless Grid
//   views/ ...    the planners compute into the Grids of AppState; the
//                 GridWidgets here only render them and pass events back.
// The window holds no rule of its own: it forwards input to the logic and
// implements WindowPort, through which the logic moves and reads it.

#include "shell/app_state.h"
#include "store/calendar_file.h"

#include <QMainWindow>

class QAction;
class QLabel;
class QStatusBar;

namespace orva {

class GridWidget;
class SingleInstance;

class frmCal final : public QMainWindow, public WindowPort {
    Q_OBJECT
  public:
    explicit frmCal(AppState& state, QWidget* parent = nullptr);
    ~frmCal() override;

    // Runs the start-up. False when another instance runs: the caller ends.
    bool start(SingleInstance& instance);

    AppState& state() { return s_; }
    bool ended() const { return ended_; }

    // WindowPort
    QRect work_area() const override;
    QRect frame() const override;
    void move_to(const QRect& r) override;
    int window_state() const override;
    void set_window_state(int state) override;
    bool status_bar_visible() const override;
    void set_status_bar_visible(bool on) override;
    double twips_per_pixel_x() const override;
    double twips_per_pixel_y() const override;
    void layout_view() override;
    void show_day_view() override;
    void show_long_date(const QString& text) override;
    void set_busy(bool busy) override;
    bool hide_to_tray() override;
    void sync_menus() override;
    void end_program() override;

  signals:
    void programEnded();

  protected:
    void closeEvent(QCloseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void moveEvent(QMoveEvent* e) override;

  private:
    void build_menus();
    void mnuExit_Click();
    CalendarHooks calendar_hooks();
    int to_px_x(int twips) const;
    int to_px_y(int twips) const;

    AppState& s_;
    QLabel* Label1 = nullptr;
    GridWidget* vsSched = nullptr;
    QStatusBar* StatusBar1 = nullptr;
    QAction* mnuNew = nullptr;
    QAction* mnuOpen = nullptr;
    QAction* mnuDelete = nullptr;
    QAction* mnuExit = nullptr;
    bool ended_ = false;
    bool started_ = false;
    bool hidden_to_tray_ = false;
    QRect placed_; // the last placement asked for, in twips
};

} // namespace orva
