#include "reminders/ui/frmAnimate.h"

#include "core/ui/form_helpers.h"
#include "core/ui/qt_modal.h"
#include "core/ui/tool_icons.h"
#include "state/app_state.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QTransform>
#include <cmath>

namespace orva {
namespace {

// The least wall time of one step. Without it a fast machine would cross the
// band before anyone looks: at speed 1 the 7245 steps take about two seconds.
constexpr qint64 step_nsecs = 250'000;

// The glyph drawn large enough to turn and shrink without losing detail.
constexpr int source_px = 109;

// The emoji turned clockwise by `degrees`, cut to what it colours.
QImage turned(const QString& emoji, qreal degrees) {
    const QImage g = emoji_pixmap(emoji, source_px)
                         .toImage()
                         .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (g.isNull()) return {};
    // Faint edges of the smoothing are not part of the picture.
    return opaque_part(g.transformed(QTransform().rotate(degrees), Qt::SmoothTransformation), 16);
}

// `img` scaled to fit `room`, centred in it.
void draw_fitted(QPainter& p, const QImage& img, const QRectF& room) {
    if (img.isNull()) return;
    const QSizeF size = QSizeF(img.size()).scaled(room.size(), Qt::KeepAspectRatio);
    const QRectF at(room.center() - QPointF(size.width() / 2, size.height() / 2), size);
    p.drawImage(at, img);
}

QPen rope_pen(qreal side) {
    QPen pen(QColor(70, 60, 50));
    pen.setWidthF(std::max(1.0, side / 28));
    pen.setCapStyle(Qt::RoundCap);
    return pen;
}

// The flag waves from the rope at its right edge: the far end swings most,
// and the two frames swing opposite ways so that the flap shows.
void draw_banner(QPainter& p, qreal side, bool second) {
    const QImage flag = turned(QStringLiteral("\U0001F1FA\U0001F1F8"), 0);
    if (flag.isNull()) return;
    const qreal rope = side * 0.12;
    const qreal w = side - rope;
    const qreal h = std::min(side * 0.62, w * flag.height() / flag.width());
    const qreal amp = side * 0.09;
    const qreal phase = second ? M_PI : 0.0;
    const int columns = std::max(1, int(std::ceil(w)));
    for (int c = 0; c < columns; ++c) {
        const qreal x = c * w / columns;
        const qreal loose = 1.0 - x / w; // 1 at the free end, 0 at the rope
        const qreal dy = amp * loose * std::sin(phase + 2 * M_PI * x / w);
        const qreal sx = x / w * flag.width();
        p.drawImage(QRectF(x, (side - h) / 2 + dy, w / columns + 0.5, h), flag,
                    QRectF(sx, 0, flag.width() / qreal(columns) + 0.5, flag.height()));
    }
    p.setPen(rope_pen(side));
    p.drawLine(QPointF(w, side / 2), QPointF(side, side / 2));
}

} // namespace

QPixmap messenger_picture(int index, int px, qreal dpr) {
    if (index < plane_towing || index > plane_alone || px < 1) return QPixmap();
    const qreal side = px * dpr;
    QImage img(int(std::ceil(side)), int(std::ceil(side)), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        switch (index) {
        case plane_towing: {
            // The airliner glyph points up and to the right; a quarter turn
            // of it clockwise flies it level.
            const QRectF room(side * 0.28, side * 0.06, side * 0.72, side * 0.88);
            p.setPen(rope_pen(side));
            p.drawLine(QPointF(0, side / 2), QPointF(side * 0.36, side / 2));
            draw_fitted(p, turned(QStringLiteral("\u2708\uFE0F"), 45), room);
            break;
        }
        case banner_first:
        case banner_second:
            draw_banner(p, side, index == banner_second);
            break;
        case plane_alone:
            // The small plane glyph dives to the right; turned back, it flies
            // level.
            draw_fitted(p, turned(QStringLiteral("\U0001F6E9\uFE0F"), -32),
                        QRectF(side * 0.04, side * 0.04, side * 0.92, side * 0.92));
            break;
        }
    }
    QPixmap pm = QPixmap::fromImage(img);
    pm.setDevicePixelRatio(dpr);
    return pm;
}

namespace {

// The screen the window opens on: the one holding the desktop's corner.
QScreen* corner_screen() {
    if (QScreen* s = QGuiApplication::screenAt(QPoint(0, 0))) return s;
    return QGuiApplication::primaryScreen();
}

ScreenCapture capture;

// What the screen shows in `area`. The platforms without a screen to show
// answer with pictures of nothing (offscreen hands back whatever memory it
// had), so they are not asked.
QPixmap grab_screen(const QRect& area) {
    const QString platform = QGuiApplication::platformName();
    if (platform == u"offscreen" || platform == u"minimal") return {};
    QScreen* screen = corner_screen();
    if (!screen) return {};
    const QPoint at = area.topLeft() - screen->geometry().topLeft();
    return screen->grabWindow(0, at.x(), at.y(), area.width(), area.height());
}

// Some desktops give no picture of the screen: a null one, or (Wayland
// through X) one that is black all over. A screen truly black
// there loses nothing when the window is translucent instead.
bool shows_nothing(const QPixmap& shot) {
    if (shot.isNull() || shot.size().isEmpty()) return true;
    const QImage img = shot.toImage().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < img.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        for (int x = 0; x < img.width(); ++x)
            if (qRgb(qRed(line[x]), qGreen(line[x]), qBlue(line[x])) != qRgb(0, 0, 0)) return false;
    }
    return true;
}

QLabel* make_sprite(QWidget* parent, const QString& name, const QString& spoken) {
    auto* l = new QLabel(parent);
    name_control(l, name, spoken);
    l->setAttribute(Qt::WA_TransparentForMouseEvents);
    return l;
}

} // namespace

void install_screen_capture(ScreenCapture c) {
    capture = std::move(c);
}

FrmAnimate::FrmAnimate(AppState& s, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), s_(s) {
    setObjectName(QStringLiteral("frmAnimate"));
    setAccessibleDescription(QStringLiteral("frmAnimate"));
    setAccessibleName(QStringLiteral("Messenger"));
    setWindowTitle(QStringLiteral("Messenger"));
    setModal(true);
    // A style sheet of the window beneath (a skin) would otherwise give the
    // pictures its backgrounds and padding.
    setStyleSheet(QStringLiteral("QLabel { background: transparent; border: none; padding: 0; "
                                 "margin: 0; }"));

    if (QScreen* screen = corner_screen()) {
        dpi_x_ = screen->logicalDotsPerInchX();
        dpi_y_ = screen->logicalDotsPerInchY();
    }

    // Made in this order so that the plane flies over its banner and both
    // over the backdrop.
    Picture1_ = make_sprite(this, QStringLiteral("Picture1"), QStringLiteral("Messenger backdrop"));
    Imagesuffix_ = make_sprite(this, QStringLiteral("Imagesuffix"), QStringLiteral("Banner"));
    Image1_ = make_sprite(this, QStringLiteral("Image1"), QStringLiteral("Plane"));
    Timer1_ = new QTimer(this);
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setSingleShot(true);
    connect(Timer1_, &QTimer::timeout, this, &FrmAnimate::Timer1_Timer);

    frmAnimate_Load(f_, s_, s_.app_path);
    Timer1_->setInterval(f_.Timer1_interval);
    setFixedSize(to_px_x(f_.width), to_px_y(f_.height));

    const qreal dpr = corner_screen() ? corner_screen()->devicePixelRatio() : 1.0;
    for (int i = plane_towing; i <= plane_alone; ++i)
        ImageList1_[i] = messenger_picture(i, to_px_x(f_.Image1.width), dpr);
    show_sprites();
}

bool FrmAnimate::flies() const {
    return f_.msg_anim == u"2" || f_.msg_anim == u"3";
}

int FrmAnimate::to_px_x(int twips) const {
    return qRound(twips * dpi_x_ / 1440.0);
}
int FrmAnimate::to_px_y(int twips) const {
    return qRound(twips * dpi_y_ / 1440.0);
}

int FrmAnimate::exec() {
    if (!flies()) {
        // Its flight would skip straight to closing: do that without a
        // window ever showing.
        Timer1_Timer();
        return result();
    }
    place();
    return QDialog::exec();
}

void FrmAnimate::place() {
    frmAnimate_Paint(f_);
    move(to_px_x(f_.left), to_px_y(f_.top));
    Picture1_->setGeometry(to_px_x(f_.Picture1.left), to_px_y(f_.Picture1.top),
                           to_px_x(f_.Picture1.width), to_px_y(f_.Picture1.height));
    const QPixmap shot = capture ? capture(geometry()) : grab_screen(geometry());
    captured_ = !shows_nothing(shot);
    if (captured_) {
        Picture1_->setPixmap(shot);
    } else {
        // A black band would hide what the window is meant to show through.
        Picture1_->clear();
        setAttribute(Qt::WA_TranslucentBackground);
    }
}

void FrmAnimate::show_sprites() {
    const auto put = [this](QLabel* l, const Sprite& sp) {
        const bool has = sp.picture >= plane_towing && sp.picture <= plane_alone;
        if (has && l->pixmap().cacheKey() != ImageList1_[sp.picture].cacheKey())
            l->setPixmap(ImageList1_[sp.picture]);
        if (!has && !l->pixmap().isNull()) l->clear();
        l->setGeometry(to_px_x(sp.left), to_px_y(sp.top), to_px_x(sp.width), to_px_y(sp.height));
        l->setVisible(sp.visible && has);
    };
    put(Imagesuffix_, f_.Imagesuffix);
    put(Image1_, f_.Image1);
}

void FrmAnimate::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    if (f_.Timer1_enabled && !flying_ && !f_.closed) Timer1_->start();
}

void FrmAnimate::Timer1_Timer() {
    Timer1_->stop();
    QPointer<FrmAnimate> self(this);
    // The pass works on a copy: should the window go while events run, the
    // flight still has something to end in.
    Flight f = f_;
    QElapsedTimer since;
    since.start();
    flying_ = true;
    run_flight(f, flight_speed(s_), [&self, &since](const Flight& now) {
        if (!self) return false;
        self->f_ = now;
        self->show_sprites();
        QCoreApplication::processEvents();
        if (!self) return false;
        if (const qint64 left = step_nsecs - since.nsecsElapsed(); left > 0)
            QThread::usleep(static_cast<unsigned long>(left / 1000));
        since.restart();
        return true;
    });
    if (!self) return;
    flying_ = false;
    f_ = f;
    show_sprites();
    if (f_.closed) accept();
}

void FrmAnimate::reject() {
    if (flying_) return;
    QDialog::reject();
}

void FrmAnimate::closeEvent(QCloseEvent* e) {
    if (flying_) {
        e->ignore();
        return;
    }
    QDialog::closeEvent(e);
}

void FrmAnimate::mousePressEvent(QMouseEvent* e) {
    // A frameless window has no close box: after a fault a click puts it away.
    if (!flying_ && !f_.Timer1_enabled) {
        reject();
        return;
    }
    QDialog::mousePressEvent(e);
}

void register_frmAnimate(QtModal& m, AppState& s) {
    m.register_form(QStringLiteral("frmAnimate"), [&s](QWidget* parent) {
        FrmAnimate form(s, parent);
        form.exec();
    });
}

} // namespace orva
