#pragma once

#include "reminders/messenger.h"

#include <QDialog>
#include <QPixmap>
#include <array>
#include <functional>

class QLabel;
class QTimer;

namespace orva {

class QtModal;
struct AppState;

// ImageList1's picture `index` (1 plane towing, 2 and 3 the banner's two
// frames, 4 the plane alone) in a transparent px x px square, drawn from the
// colour emoji font at `dpr` device pixels per pixel. The planes face right,
// the way they fly; the towing one trails a rope to the square's left edge,
// where the banner hangs. Null for any other index or a size below 1.
QPixmap messenger_picture(int index, int px, qreal dpr = 1.0);

// What the screen shows in `area` (device-independent pixels); null where
// the desktop gives no picture of it.
using ScreenCapture = std::function<QPixmap(const QRect& area)>;
// Replaces the grab of the screen; an empty function puts it back. Tests
// hand in a picture of their own, as no test screen shows anything.
void install_screen_capture(ScreenCapture c);

// "Messenger": a plane that crosses a band at the top of the screen before a
// reminder shows. A frameless window that stays on top, sized in twips from
// the screen's logical DPI, over a capture of what the screen shows beneath
// so that it looks transparent; where the desktop allows no capture it is
// translucent instead. The flight is the logic's (run_flight); this window
// shows each step, runs pending events and keeps the pace watchable.
class FrmAnimate : public QDialog {
    Q_OBJECT
  public:
    // Loads the messenger from msg_anim and the flight sound from app_path.
    explicit FrmAnimate(AppState& s, QWidget* parent = nullptr);

    const Flight& flight() const { return f_; }
    // False when the messenger flies nothing: exec() then closes the window
    // at once without showing it.
    bool flies() const;
    // True where the window shows the screen's capture, false where it is
    // translucent. Set when it is placed, before it shows.
    bool captured() const { return captured_; }
    // Twips to device-independent pixels on this window's screen.
    int to_px_x(int twips) const;
    int to_px_y(int twips) const;

    // Places the window over its capture, shows it modally and flies; returns
    // when the window closes.
    int exec() override;

    // While the plane flies the window cannot be closed: the flight is short
    // and ends by closing it. After a fault it closes on Escape or a click.
    void reject() override;

  protected:
    void showEvent(QShowEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;

  private:
    void place();
    void show_sprites();
    void Timer1_Timer();

    AppState& s_;
    Flight f_;
    bool captured_ = false;
    bool flying_ = false;
    qreal dpi_x_ = 96, dpi_y_ = 96;
    std::array<QPixmap, 5> ImageList1_; // by picture index; 0 unused
    QLabel* Picture1_ = nullptr;
    QLabel* Image1_ = nullptr;
    QLabel* Imagesuffix_ = nullptr;
    QTimer* Timer1_ = nullptr;
};

// Registers "frmAnimate" (the messenger) with the seam: made afresh each
// time, shown with exec().
void register_frmAnimate(QtModal& m, AppState& s);

} // namespace orva
