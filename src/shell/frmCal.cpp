#include "shell/frmCal.h"

#include "shell/options.h"
#include "shell/startup.h"
#include "store/grid_widget.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>
#include <QWindow>

// Resources of a static library are registered by hand.
static void init_resources() {
    Q_INIT_RESOURCE(orvacal);
}

namespace orva {
namespace {

void name(QWidget* w, const QString& n) {
    w->setObjectName(n);
    w->setAccessibleName(n);
}

QScreen* screen_of(const QWidget* w) {
    if (QScreen* sc = w->screen()) return sc;
    return QGuiApplication::primaryScreen();
}

} // namespace

frmCal::frmCal(AppState& state, QWidget* parent) : QMainWindow(parent), s_(state) {
    init_resources();
    setObjectName(QStringLiteral("frmCal"));
    setWindowTitle(QStringLiteral("Orva Calendar"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("x-office-calendar"),
                                   QIcon(QStringLiteral(":/orvacal.svg"))));

    auto* central = new QWidget(this);
    auto* box = new QVBoxLayout(central);
    box->setContentsMargins(6, 6, 6, 6);
    Label1 = new QLabel(central);
    name(Label1, QStringLiteral("Label1"));
    QFont big = Label1->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    Label1->setFont(big);
    box->addWidget(Label1);
    vsSched = new GridWidget(central);
    name(vsSched, QStringLiteral("vsSched"));
    vsSched->setGrid(&s_.vsSched);
    box->addWidget(vsSched, 1);
    setCentralWidget(central);

    StatusBar1 = new QStatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->setAccessibleName(QStringLiteral("StatusBar1"));
    setStatusBar(StatusBar1);

    build_menus();
}

frmCal::~frmCal() = default;

void frmCal::build_menus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    mnuNew = file->addAction(QIcon::fromTheme(QStringLiteral("document-new")), tr("&New..."));
    mnuNew->setObjectName(QStringLiteral("mnuNew"));
    mnuOpen = file->addAction(QIcon::fromTheme(QStringLiteral("document-open")), tr("&Open..."));
    mnuOpen->setObjectName(QStringLiteral("mnuOpen"));
    mnuDelete = file->addAction(QIcon::fromTheme(QStringLiteral("edit-delete")), tr("&Delete"));
    mnuDelete->setObjectName(QStringLiteral("mnuDelete"));
    file->addSeparator();
    mnuExit = file->addAction(QIcon::fromTheme(QStringLiteral("application-exit")), tr("E&xit"));
    mnuExit->setObjectName(QStringLiteral("mnuExit"));
    mnuExit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_X));
    mnuExit->setShortcutContext(Qt::ApplicationShortcut);

    connect(mnuNew, &QAction::triggered, this, [this] { new_calendar(s_, calendar_hooks()); });
    connect(mnuOpen, &QAction::triggered, this, [this] { open_calendar(s_, calendar_hooks()); });
    connect(mnuDelete, &QAction::triggered, this,
            [this] { delete_calendar(s_, calendar_hooks()); });
    connect(mnuExit, &QAction::triggered, this, &frmCal::mnuExit_Click);
}

CalendarHooks frmCal::calendar_hooks() {
    CalendarHooks h;
    h.load_options = [this] { load_options(s_, *this); };
    h.rebuild_view = [this] {
        if (s_.view_day) show_day_view();
        layout_view();
        save_options(s_, *this);
    };
    h.enable_delete = [this](bool on) {
        s_.delete_enabled = on;
        mnuDelete->setEnabled(on);
    };
    return h;
}

bool frmCal::start(SingleInstance& instance) {
    if (!Form_Load(s_, *this, instance)) return false;
    started_ = true;
    if (!hidden_to_tray_) {
        // The stored numbers describe the outer frame, whose margins are known
        // only once the window is on screen: place it again after showing.
        const bool was_moving = s_.startup_move;
        s_.startup_move = true;
        show();
        if (window_state() == 0 && placed_.isValid()) move_to(placed_);
        s_.startup_move = was_moving;
    }
    return true;
}

void frmCal::mnuExit_Click() {
    s_.stay_open = false;
    confirm_exit(s_, *this);
    if (!s_.stay_open) close();
}

void frmCal::closeEvent(QCloseEvent* e) {
    if (ended_ || !started_) {
        e->accept();
        return;
    }
    if (Form_Unload(s_, *this))
        e->ignore();
    else
        e->accept();
}

void frmCal::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    if (started_ && isVisible()) Form_Resize(s_, *this);
}

void frmCal::moveEvent(QMoveEvent* e) {
    QMainWindow::moveEvent(e);
    // The placement variables follow the window as the user moves it, so a
    // later resize keeps it where it stands instead of where it was saved.
    if (started_ && !s_.startup_move) {
        const QRect f = frame();
        s_.form_left = f.left();
        s_.form_top = f.top();
    }
}

// --- WindowPort -------------------------------------------------------------

double frmCal::twips_per_pixel_x() const {
    return 1440.0 / screen_of(this)->logicalDotsPerInchX();
}
double frmCal::twips_per_pixel_y() const {
    return 1440.0 / screen_of(this)->logicalDotsPerInchY();
}
int frmCal::to_px_x(int twips) const {
    return qRound(twips / twips_per_pixel_x());
}
int frmCal::to_px_y(int twips) const {
    return qRound(twips / twips_per_pixel_y());
}

QRect frmCal::work_area() const {
    const QRect a = screen_of(this)->availableGeometry();
    const double tx = twips_per_pixel_x(), ty = twips_per_pixel_y();
    return QRect(qRound(a.left() * tx), qRound(a.top() * ty), qRound(a.width() * tx),
                 qRound(a.height() * ty));
}

QRect frmCal::frame() const {
    const QRect f = frameGeometry();
    const double tx = twips_per_pixel_x(), ty = twips_per_pixel_y();
    return QRect(qRound(f.left() * tx), qRound(f.top() * ty), qRound(f.width() * tx),
                 qRound(f.height() * ty));
}

void frmCal::move_to(const QRect& r) {
    placed_ = r;
    // The numbers describe the outer frame; Qt sizes the inside.
    const QSize extra = frameGeometry().size() - geometry().size();
    move(to_px_x(r.left()), to_px_y(r.top()));
    resize(qMax(200, to_px_x(r.width()) - extra.width()),
           qMax(150, to_px_y(r.height()) - extra.height()));
}

int frmCal::window_state() const {
    if (windowState() & Qt::WindowMinimized) return 1;
    if (windowState() & Qt::WindowMaximized) return 2;
    return 0;
}

void frmCal::set_window_state(int state) {
    setWindowState(state == 1   ? Qt::WindowMinimized
                   : state == 2 ? Qt::WindowMaximized
                                : Qt::WindowNoState);
}

bool frmCal::status_bar_visible() const {
    return !StatusBar1->isHidden();
}
void frmCal::set_status_bar_visible(bool on) {
    StatusBar1->setVisible(on);
}

void frmCal::layout_view() {
    // The planners lay themselves out inside the central area; the window's
    // own layout already follows the size.
}

void frmCal::show_day_view() {
    vsSched->setVisible(true);
}

void frmCal::show_long_date(const QString& text) {
    Label1->setText(text);
}

void frmCal::set_busy(bool busy) {
    if (busy) {
        if (!QApplication::overrideCursor()) QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        while (QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
    }
}

bool frmCal::hide_to_tray() {
    // Without a tray icon a hidden window could not be reached again.
    hidden_to_tray_ = false;
    return hidden_to_tray_;
}

void frmCal::sync_menus() {
    mnuDelete->setEnabled(s_.delete_enabled);
}

void frmCal::end_program() {
    ended_ = true;
    emit programEnded();
    QCoreApplication::quit();
}

} // namespace orva
