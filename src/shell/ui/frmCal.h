#pragma once

// The main window and its module map:
//   shell/        frame, start-up and exit (startup), options row (options),
//                 the seams (modal, clock, event_loop), single instance, the
//                 menu bar's table (main_menu), the tool strip (tool_strip),
//                 tray and Hide (tray), the autostart entry (autostart)
//   store/        records and tables, member lines, the archive file, the
//                 calendar-file routines, and the headless Grid
//   views/        the planners: day grid (day_view), its page (day_layout),
//                 navigator, detail pane, status bar
//   appointments/ stickers, quick add and notes (logic and their dialogs)
//   appearance/   skins (band, tool bar, grid colours, corner picture)
// The planners compute into the Grids and Controls of AppState; the widgets
// here only render them and pass events back. The window holds no rule of
// its own: it forwards input to the logic, copies the logic's control states
// onto its widgets (sync_controls) and implements WindowPort.

#include "shell/file_commands.h"
#include "state/app_state.h"

#include <QMainWindow>
#include <QSystemTrayIcon>
#include <functional>
#include <map>
#include <vector>

class QAction;
class QBoxLayout;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QMenu;
class QStatusBar;
class QTabBar;
class QTextEdit;
class QTimer;
class QToolButton;

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

    // Copies the logic's control states, combo lists and status panels onto
    // the widgets. Every forwarded event ends with it.
    void sync_controls();

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
    void show_window() override;
    bool window_hidden() const override;
    void sync_menus() override;
    void end_program() override;
    void select_skin() override;

  signals:
    void programEnded();

  protected:
    void closeEvent(QCloseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void moveEvent(QMoveEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using Commands = std::map<QString, std::function<void()>>;
    void build_page();
    // The tool strip from its table, each picture with the command it runs.
    void build_tools(const Commands& tools);
    // The menu bar from its table; an entry whose command is not in
    // `commands` is left out.
    void build_menus(const Commands& commands);
    // The tray icon with sysmenu as its pop-up, and the tip's clock.
    void build_tray();
    Commands tool_commands();
    Commands menu_commands(const Commands& tools);
    // The lit and pressed looks of the tool pictures, from PlannerState.
    void sync_tools();
    // The tray's tip, rebuilt from the clock and the day's count.
    void refresh_tip();
    // Shows the window where the options place it; the first show of a run.
    void show_placed();
    // Colours of the band, tool bar, corner picture and grid surrounds, and
    // the skin menu's check mark, from PlannerState::skin.
    void sync_skin();
    void connect_day_grid();
    void connect_overview();
    void connect_navigator();
    void connect_pane();
    void mnuExit_Click();
    // Starts Timer1 when the logic switched it on since the last event.
    void sync_timer();
    CalendarHooks calendar_hooks();
    int to_px_x(int twips) const;
    int to_px_y(int twips) const;
    QRect to_px(const QRect& twips) const;
    QToolButton* tool(QWidget* parent, const QString& name, const QString& caption,
                      const QString& tip, const QString& theme_icon, const QString& emoji);
    // Runs a piece of logic for an event and brings the widgets up to date.
    template <typename F> void run(F&& f);

    AppState& s_;
    QWidget* page_ = nullptr;
    QLabel* Label1 = nullptr;
    QFrame* Frame3 = nullptr;
    QBoxLayout* strip_ = nullptr; // Frame3's pictures: a line, upright in the week planner
    GridWidget* vsSched = nullptr;
    GridWidget* vsOvervw = nullptr; // the month and week planners
    GridWidget* Cal = nullptr;
    QComboBox* Combo1 = nullptr;
    QComboBox* Combo2 = nullptr;
    QTabBar* TabStrip1 = nullptr;
    QGroupBox* Frame2 = nullptr;
    QLabel* lblDtlCaption = nullptr; // Frame2's caption
    GridWidget* vsDtl = nullptr;
    QLabel* lblNotes = nullptr;
    QTextEdit* rtNotes = nullptr;
    QStatusBar* StatusBar1 = nullptr;
    std::map<QString, QLabel*> panels_; // by key
    QMenu* mnuEdit = nullptr;
    QMenu* mnuThemes = nullptr;
    QMenu* sysmenu = nullptr;
    QLabel* themePic = nullptr;
    // The menu bar's entries by key, sub-menus by their own actions.
    std::map<QString, QAction*> actions_;
    QAction* action(const QString& key) const;
    QSystemTrayIcon* cSysTray1 = nullptr;
    QTimer* tip_timer_ = nullptr;
    // Pictures that look pressed under the mouse and light their labels;
    // widgets whose hover takes the highlight off.
    std::vector<QToolButton*> pressable_;
    std::vector<QObject*> hover_off_;
    QString edit_before_;   // the cell's text when an edit began
    QString last_key_text_; // what the last key typed into vsSched would insert
    bool ended_ = false;
    bool started_ = false;
    bool hidden_to_tray_ = false;
    bool shown_once_ = false;
    QRect placed_; // the last placement asked for, in twips
    QTimer* Timer1 = nullptr;
    bool timer_was_on_ = false;
};

} // namespace orva
