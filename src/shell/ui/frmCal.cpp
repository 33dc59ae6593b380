#include "shell/ui/frmCal.h"

#include "appearance/colors_fonts.h"
#include "appearance/skins.h"
#include "appearance/ui/skin_palette.h"
#include "appointments/delete_copy.h"
#include "appointments/stickers.h"
#include "appointments/ui/sticker_pictures.h"
#include "core/modal.h"
#include "core/ui/form_helpers.h"
#include "core/ui/tool_icons.h"
#include "grid/ui/grid_widget.h"
#include "reminders/rem_list.h"
#include "shell/startup.h"
#include "shell/tick.h"
#include "state/options.h"
#include "views/day_layout.h"
#include "views/day_view.h"
#include "views/detail_pane.h"
#include "views/month_view.h"
#include "views/navigator.h"
#include "views/overview_layout.h"
#include "views/status.h"
#include "views/week_view.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QCursor>
#include <QDropEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

// Resources of a static library are registered by hand.
static void init_resources() {
    Q_INIT_RESOURCE(orvacal);
}

namespace orva {
namespace {

QScreen* screen_of(const QWidget* w) {
    if (QScreen* sc = w->screen()) return sc;
    return QGuiApplication::primaryScreen();
}

QString css(Color c) {
    return QStringLiteral("rgb(%1,%2,%3)").arg(red_of(c)).arg(green_of(c)).arg(blue_of(c));
}

// The designed colours of the page, those of the standard skin: a teal band
// (PlannerState::label1_back_color) with pale green text over a grey tool
// strip.
constexpr Color band_text = rgb(192, 255, 192);
constexpr Color strip_back = rgb(98, 98, 98);
constexpr Color strip_text = rgb(0, 255, 0);

// Status-bar keys and the object names of their labels ("nbrAppts " keeps its
// blank as a key, which an object name should not).
const std::pair<QString, QString> panel_names[] = {
    {panel_count, QStringLiteral("nbrAppts")},
    {panel_file, QStringLiteral("cFile")},
    {panel_year_pos, QStringLiteral("yrDay")},
    {panel_left, QStringLiteral("daysLeft")},
};

} // namespace

template <typename F> void frmCal::run(F&& f) {
    f();
    sync_controls();
    sync_timer();
    // What the store noted during the command, told once it is over.
    report_store_notices(s_);
}

frmCal::frmCal(AppState& state, QWidget* parent) : QMainWindow(parent), s_(state) {
    init_resources();
    s_.window = this;
    // The month and week grid is hidden until one of them is chosen.
    s_.ctl(QStringLiteral("vsOvervw")).visible = false;
    setObjectName(QStringLiteral("frmCal"));
    setAccessibleDescription(QStringLiteral("frmCal"));
    setWindowTitle(QStringLiteral("Orva Calendar"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("x-office-calendar"),
                                   QIcon(QStringLiteral(":/orvacal.svg"))));
    build_page();
    build_menus();
    build_skin_menu();
    connect_day_grid();
    connect_overview();
    connect_navigator();
    connect_pane();

    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(timer1_interval_ms);
    connect(Timer1, &QTimer::timeout, this, [this] {
        // Off is off at once, also inside a modal form opened by a command
        // still running: the switch is read at every beat.
        if (!s_.timer1_enabled) return;
        run([this] { Timer1_Timer(s_, *this); });
    });
}

void frmCal::sync_timer() {
    // Switched on again, it counts its six seconds afresh.
    if (s_.timer1_enabled && !timer_was_on_) Timer1->start();
    timer_was_on_ = s_.timer1_enabled;
}

frmCal::~frmCal() {
    // The grids belong to the shared module, which may outlive the window.
    for (GridWidget* g : {vsSched, vsOvervw, Cal, vsDtl})
        if (g) g->setGrid(nullptr);
    if (s_.window == this) s_.window = nullptr;
}

QToolButton* frmCal::tool(QWidget* parent, const QString& n, const QString& caption,
                          const QString& tip, const QString& theme_icon, const QString& emoji) {
    auto* b = new QToolButton(parent);
    name_control(b, n);
    b->setText(caption);
    b->setToolTip(tip);
    b->setIcon(tool_icon(theme_icon, emoji));
    b->setIconSize(QSize(20, 20));
    b->setAutoRaise(true);
    b->setToolButtonStyle(caption.isEmpty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
    return b;
}

void frmCal::build_page() {
    page_ = new QWidget(this);
    page_->setObjectName(QStringLiteral("page"));
    setCentralWidget(page_);

    Label1 = new QLabel(page_);
    name_control(Label1, QStringLiteral("Label1"));
    QFont big = Label1->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    Label1->setFont(big);
    Label1->setAutoFillBackground(true);
    Label1->setStyleSheet(
        QStringLiteral("QLabel#Label1 { background: %1; color: %2; padding-left: 8px; }")
            .arg(css(s_.label1_back_color), css(band_text)));

    // The skin's picture stands at the band's right end, whatever the band's
    // width in the planner shown.
    themePic = new QLabel(Label1);
    name_control(themePic, QStringLiteral("themePic"), QStringLiteral("Skin picture"));
    themePic->setAutoFillBackground(true);
    themePic->setAlignment(Qt::AlignCenter);
    auto* band = new QHBoxLayout(Label1);
    band->setContentsMargins(0, 0, 6, 0);
    band->addStretch(1);
    band->addWidget(themePic);

    Frame3 = new QFrame(page_);
    name_control(Frame3, QStringLiteral("Frame3"), QStringLiteral("Tools"));
    Frame3->setStyleSheet(
        QStringLiteral("QFrame#Frame3 { background: %1; } QToolButton { color: %2; }")
            .arg(css(strip_back), css(strip_text)));
    auto* strip = new QBoxLayout(QBoxLayout::LeftToRight, Frame3);
    strip_ = strip;
    strip->setContentsMargins(6, 0, 6, 0);
    strip->setSpacing(2);
    strip->addWidget(tool(Frame3, QStringLiteral("imageDay"), QStringLiteral("Day"),
                          QStringLiteral("Daily planner"), QStringLiteral("view-calendar-day"),
                          QStringLiteral("\U0001F4C5")));
    strip->addWidget(tool(Frame3, QStringLiteral("imageWeek"), QStringLiteral("Wk"),
                          QStringLiteral("weekly planner"), QStringLiteral("view-calendar-week"),
                          QStringLiteral("\U0001F5D3\uFE0F")));
    // "montly" is the tool-tip as the program always had it.
    strip->addWidget(tool(Frame3, QStringLiteral("imageMonth"), QStringLiteral("Mth"),
                          QStringLiteral("montly calendar"), QStringLiteral("view-calendar-month"),
                          QStringLiteral("\U0001F4C6")));
    // The two names are crossed with what they do: imageReminder adds,
    // imageClock deletes.
    strip->addWidget(tool(Frame3, QStringLiteral("imageReminder"), QStringLiteral("Add"),
                          QStringLiteral("Add an appointment"), QStringLiteral("appointment-new"),
                          QStringLiteral("\U0001F195")));
    strip->addWidget(tool(Frame3, QStringLiteral("imageClock"), QStringLiteral("Delete"),
                          QStringLiteral("Delete Appointment"), QStringLiteral("edit-delete"),
                          QStringLiteral("\U0001F5D1\uFE0F")));
    strip->addWidget(tool(Frame3, QStringLiteral("imageFind"), QStringLiteral("Find"),
                          QStringLiteral("Find appointments"), QStringLiteral("edit-find"),
                          QStringLiteral("\U0001F50D")));
    strip->addSpacing(12);
    strip->addWidget(tool(Frame3, QStringLiteral("ImageArrow0"), QStringLiteral("Prior"),
                          QStringLiteral("Prior Day"), QStringLiteral("go-previous"),
                          QStringLiteral("\u25C0\uFE0F")));
    strip->addWidget(tool(Frame3, QStringLiteral("ImageArrow1"), QStringLiteral("Next"),
                          QStringLiteral("Next day"), QStringLiteral("go-next"),
                          QStringLiteral("\u25B6\uFE0F")));
    strip->addSpacing(12);
    strip->addWidget(tool(Frame3, QStringLiteral("imgRem"), QStringLiteral("Reminders"),
                          QStringLiteral("List of reminders"), QStringLiteral("appointment-soon"),
                          QStringLiteral("\u23F0")));
    strip->addWidget(tool(Frame3, QStringLiteral("imgTzone"), QStringLiteral("T- Zone"),
                          QStringLiteral("Time Zones"), QStringLiteral("preferences-system-time"),
                          QStringLiteral("\U0001F30D")));
    strip->addWidget(tool(Frame3, QStringLiteral("imgTlist"), QStringLiteral("T- List"),
                          QStringLiteral("To Do list"), QStringLiteral("view-task"),
                          QStringLiteral("\U0001F4DD")));
    strip->addWidget(tool(Frame3, QStringLiteral("imgSkins"), QStringLiteral("Skins"),
                          QStringLiteral("Calendar skins"),
                          QStringLiteral("preferences-desktop-theme"),
                          QStringLiteral("\U0001F3A8")));
    strip->addStretch(1);

    vsSched = new GridWidget(page_);
    name_control(vsSched, QStringLiteral("vsSched"), QStringLiteral("Day planner"));
    vsSched->setGrid(&s_.vsSched);
    vsSched->set_picture_provider(planner_pictures());

    vsOvervw = new GridWidget(page_);
    name_control(vsOvervw, QStringLiteral("vsOvervw"), QStringLiteral("Month planner"));
    vsOvervw->setGrid(&s_.vsOvervw);
    vsOvervw->set_picture_provider(planner_pictures());
    vsOvervw->hide();

    tool(page_, QStringLiteral("imgPriorMth"), QString(), QStringLiteral("Prior Month"),
         QStringLiteral("go-previous"), QStringLiteral("\u23EA"));
    tool(page_, QStringLiteral("imgNextMth"), QString(), QStringLiteral("Next Month"),
         QStringLiteral("go-next"), QStringLiteral("\u23E9"));
    Combo1 = new QComboBox(page_);
    name_control(Combo1, QStringLiteral("Combo1"), QStringLiteral("Month"));
    Combo2 = new QComboBox(page_);
    name_control(Combo2, QStringLiteral("Combo2"), QStringLiteral("Year"));

    Cal = new GridWidget(page_);
    name_control(Cal, QStringLiteral("Cal"), QStringLiteral("Navigator calendar"));
    Cal->setGrid(&s_.Cal);
    Cal->set_picture_provider(planner_pictures());
    Cal->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Cal->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A sticker dropped on a day decorates it until the next refill.
    Cal->setAcceptDrops(true);
    Cal->viewport()->setAcceptDrops(true);
    Cal->viewport()->installEventFilter(this);

    TabStrip1 = new QTabBar(page_);
    // Qt speaks a tab strip by its selected tab's caption, which is what shows.
    name_control(TabStrip1, QStringLiteral("TabStrip1"));
    const int tab = TabStrip1->addTab(QStringLiteral("Appointment Details"));
    TabStrip1->setTabData(tab, QStringLiteral("appt"));
    TabStrip1->setExpanding(false);

    Frame2 = new QGroupBox(page_);
    name_control(Frame2, QStringLiteral("Frame2"), QStringLiteral("Detail pane"));
    // Frame2's caption is a label of its own rather than the box's title: a
    // title is one line over the frame's edge, where a long text is cut and
    // the pictures below would cover it.
    lblDtlCaption = new QLabel(Frame2);
    name_control(lblDtlCaption, QStringLiteral("lblDtlCaption"));
    lblDtlCaption->setTextFormat(Qt::PlainText); // an entry's text, never markup
    lblDtlCaption->setWordWrap(true);
    lblDtlCaption->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QFont caption_font = lblDtlCaption->font();
    caption_font.setBold(true);
    lblDtlCaption->setFont(caption_font);
    tool(Frame2, QStringLiteral("imgDtlAppt"), QString(), QStringLiteral("Edit Appointment"),
         QStringLiteral("document-edit"), QStringLiteral("\u270F\uFE0F"));
    tool(Frame2, QStringLiteral("imgDtlNote"), QString(),
         QStringLiteral("Click to edit current note"), QStringLiteral("accessories-text-editor"),
         QStringLiteral("\U0001F4DD"));
    tool(Frame2, QStringLiteral("imgDtlPrior"), QString(), QStringLiteral("Prior appointment"),
         QStringLiteral("go-up"), QStringLiteral("\U0001F53C"));
    tool(Frame2, QStringLiteral("imgDtlNext"), QString(), QStringLiteral("Next appointment"),
         QStringLiteral("go-down"), QStringLiteral("\U0001F53D"));
    vsDtl = new GridWidget(Frame2);
    name_control(vsDtl, QStringLiteral("vsDtl"), QStringLiteral("Appointment details"));
    vsDtl->setGrid(&s_.vsDtl);
    vsDtl->set_picture_provider(planner_pictures());
    vsDtl->setToolTip(QStringLiteral("Details for selected appointment"));
    lblNotes = new QLabel(QStringLiteral("Appointment Notes:"), Frame2);
    name_control(lblNotes, QStringLiteral("lblNotes"));
    rtNotes = new QTextEdit(Frame2);
    name_control(rtNotes, QStringLiteral("rtNotes"), QStringLiteral("Appointment notes"));
    rtNotes->setReadOnly(true);
    rtNotes->setToolTip(QStringLiteral("Click to edit current note"));
    rtNotes->viewport()->installEventFilter(this);
    rtNotes->installEventFilter(this);

    StatusBar1 = new QStatusBar(this);
    name_control(StatusBar1, QStringLiteral("StatusBar1"), QStringLiteral("Status bar"));
    StatusBar1->setSizeGripEnabled(true);
    for (const auto& [key, object] : panel_names) {
        auto* l = new QLabel(StatusBar1);
        name_control(l, object);
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setMouseTracking(true);
        l->installEventFilter(this);
        StatusBar1->addWidget(l, key == panel_file ? 3 : 1);
        panels_[key] = l;
    }
    StatusBar1->setMouseTracking(true);
    StatusBar1->installEventFilter(this);
    setStatusBar(StatusBar1);
}

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

    connect(mnuNew, &QAction::triggered, this,
            [this] { run([this] { new_calendar(s_, calendar_hooks()); }); });
    connect(mnuOpen, &QAction::triggered, this,
            [this] { run([this] { open_calendar(s_, calendar_hooks()); }); });
    connect(mnuDelete, &QAction::triggered, this,
            [this] { run([this] { delete_calendar(s_, calendar_hooks()); }); });
    connect(mnuExit, &QAction::triggered, this, &frmCal::mnuExit_Click);

    // The Edit menu is also the day grid's pop-up.
    mnuEdit = menuBar()->addMenu(tr("&Edit"));
    mnuEdit->setObjectName(QStringLiteral("mnuEdit"));
    const auto edit_entry = [this](const char* name, const char* theme, const QString& caption,
                                   Qt::Key key, void (*command)(AppState&)) {
        QAction* a = mnuEdit->addAction(QIcon::fromTheme(QString::fromLatin1(theme)), caption);
        a->setObjectName(QString::fromLatin1(name));
        a->setShortcut(QKeySequence(Qt::CTRL | key));
        connect(a, &QAction::triggered, this, [this, command] { run([&] { command(s_); }); });
        return a;
    };
    mnuadd = edit_entry("mnuadd", "appointment-new", QStringLiteral("Add appointment"), Qt::Key_A,
                        imageReminder_Click);
    mnuCopy = edit_entry("mnuCopy", "edit-copy", QStringLiteral("Copy appointment"), Qt::Key_C,
                         mnuCopy_Click);
    mnuEditA = edit_entry("mnuEditA", "document-edit", QStringLiteral("Edit Appointment"),
                          Qt::Key_E, mnuEditA_Click);
    mnudelete = edit_entry("mnudelete", "edit-delete", QStringLiteral("Delete Appointment"),
                           Qt::Key_D, imageClock_Click);

    QMenu* opts = menuBar()->addMenu(tr("&Options"));
    opts->setObjectName(QStringLiteral("mnuOpts"));
    mnuTips = opts->addAction(QStringLiteral("Tooltips"));
    mnuTips->setObjectName(QStringLiteral("mnuTips"));
    mnuTips->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
    mnuShowTimes = opts->addAction(QStringLiteral("Show Times in appointment text"));
    mnuShowTimes->setObjectName(QStringLiteral("mnuShowTimes"));
    mnuShowTimes->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    mnuStat = opts->addAction(QStringLiteral("Show status bar"));
    mnuStat->setObjectName(QStringLiteral("mnuStat"));
    for (QAction* a : {mnuTips, mnuShowTimes, mnuStat})
        a->setCheckable(true);
    sync_menus();

    connect(mnuTips, &QAction::triggered, this, [this] {
        run([this] {
            s_.menus.mnuTips = !s_.menus.mnuTips;
            if (!s_.menus.mnuTips) {
                s_.vsSched.setToolTipText(QString());
                s_.vsOvervw.setToolTipText(QString());
            }
            save_options(s_.store(), s_.view(), s_.options(), *this);
        });
        sync_menus();
    });
    connect(mnuShowTimes, &QAction::triggered, this, [this] {
        run([this] {
            s_.menus.mnuShowTimes = !s_.menus.mnuShowTimes;
            if (s_.view_month || s_.view_week)
                refill_overview(s_, *this);
            else if (s_.view_day)
                imageDay_Click(s_.store(), s_.view(), s_.options(), s_.editing(), *this);
        });
        sync_menus();
    });
    connect(mnuStat, &QAction::triggered, this, [this] {
        run([this] {
            mnuStat_Click(s_, *this);
            save_options(s_.store(), s_.view(), s_.options(), *this);
        });
        sync_menus();
    });

    QMenu* custom = menuBar()->addMenu(tr("&Customize"));
    custom->setObjectName(QStringLiteral("mnuCustom"));
    // The sub-menus' own actions carry the program names: the logic enables
    // mnuColor by name, and a QMenu widget of that name would be shown, not
    // enabled.
    QMenu* color = custom->addMenu(QStringLiteral("Color"));
    color->menuAction()->setObjectName(QStringLiteral("mnuColor"));
    QMenu* backc = color->addMenu(QStringLiteral("Appointment Background (applies to all appts)"));
    backc->menuAction()->setObjectName(QStringLiteral("mnuBackc"));
    const auto color_entry = [this, backc](const char* name, const QString& caption,
                                           void (*command)(AppState&, WindowPort&)) {
        QAction* a = backc->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        a->setCheckable(true);
        connect(a, &QAction::triggered, this, [this, command] {
            run([&] { command(s_, *this); });
            sync_menus();
        });
    };
    color_entry("mnuColorY", QStringLiteral("Use Default Yellow"), mnuColorY_Click);
    color_entry("mnuNoColor", QStringLiteral("Transparent"), mnuNoColor_Click);
    color_entry("mnuColorSelect", QStringLiteral("Select Color"), mnuColorSelect_Click);
    QAction* fonts = custom->addAction(QStringLiteral("Fonts"));
    fonts->setObjectName(QStringLiteral("mnuFonts"));
    connect(fonts, &QAction::triggered, this, [this] {
        run([this] { mnuFonts_Click(s_, *this); });
        vsSched->refresh();
        vsDtl->refresh();
    });
    sync_menus();
}

void frmCal::connect_day_grid() {
    connect(vsSched, &GridWidget::cellClicked, this, [this](int r, int c) {
        run([&] { vsSched_Click(s_.store(), s_.view(), s_.options(), s_.editing(), r, c); });
    });
    connect(vsSched, &GridWidget::cellDoubleClicked, this, [this](int r, int c) {
        run([&] { vsSched_DblClick(s_.store(), s_.view(), s_.editing(), s_.run(), r, c); });
    });
    connect(vsSched, &GridWidget::beforeEdit, this, [this](int r, int c, bool* cancel) {
        const int row0 = s_.vsSched.Row(), col0 = s_.vsSched.Col();
        edit_before_ = s_.vsSched.TextMatrix(r, c);
        run([&] { *cancel = vsSched_BeforeEdit(s_, r, c); });
        // Typing that began on a spacer goes on in the column the logic opened.
        if (*cancel && (s_.vsSched.Row() != row0 || s_.vsSched.Col() != col0)) {
            const QString typed = last_key_text_;
            QTimer::singleShot(0, this, [this, typed] {
                vsSched->refresh();
                static_cast<QAbstractItemView*>(vsSched)->edit(vsSched->currentIndex());
                if (auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget()))
                    if (!typed.isEmpty()) line->setText(typed);
            });
        }
    });
    connect(vsSched, &GridWidget::afterEdit, this, [this](int r, int c, const QString&) {
        const QString before = edit_before_;
        run([&] { vsSched_AfterEdit(s_, *this, r, c, before); });
    });
    connect(vsSched, &GridWidget::keyDown, this,
            [this](int, int, int key, Qt::KeyboardModifiers, bool* swallow) {
                run([&] { *swallow = vsSched_KeyDown(s_, key); });
            });
    connect(vsSched, &GridWidget::keyDownEdit, this,
            [this](int, int, int key, Qt::KeyboardModifiers) { s_.last_edit_key = key; });
    connect(vsSched, &GridWidget::mouseDown, this,
            [this](int r, int c, Qt::MouseButton b, Qt::KeyboardModifiers) {
                vsSched_MouseDown(s_, b == Qt::LeftButton ? 1 : 2, r, c);
            });
    connect(vsSched, &GridWidget::mouseUp, this,
            [this](int, int, Qt::MouseButton, Qt::KeyboardModifiers) { vsSched_MouseUp(s_); });
    connect(vsSched, &GridWidget::mouseMoved, this,
            [this](int r, int c, Qt::MouseButtons b, Qt::KeyboardModifiers) {
                vsSched_MouseMove(s_.store(), s_.view(), s_.options(), int(b), r, c);
            });
    connect(vsSched, &GridWidget::rightClicked, this,
            [this](int, int, const QPoint& at) { mnuEdit->popup(at); });
    vsSched->installEventFilter(this);
}

void frmCal::connect_overview() {
    connect(vsOvervw, &GridWidget::cellClicked, this,
            [this](int r, int c) { run([&] { vsOvervw_Click(s_, *this, r, c); }); });
    connect(vsOvervw, &GridWidget::cellDoubleClicked, this,
            [this](int r, int c) { run([&] { vsOvervw_DblClick(s_, r, c); }); });
    connect(vsOvervw, &GridWidget::beforeEdit, this, [this](int r, int c, bool* cancel) {
        run([&] { *cancel = vsOvervw_BeforeEdit(s_, r, c); });
    });
    connect(vsOvervw, &GridWidget::afterEdit, this, [this](int r, int c, const QString&) {
        run([&] { vsOvervw_AfterEdit(s_, *this, r, c); });
    });
    connect(vsOvervw, &GridWidget::keyDown, this,
            [this](int, int, int key, Qt::KeyboardModifiers, bool* swallow) {
                if (key != Qt::Key_Delete) return;
                run([&] { *swallow = vsOvervw_KeyDown(s_, key); });
            });
    connect(vsOvervw, &GridWidget::mouseMoved, this,
            [this](int r, int c, Qt::MouseButtons b, Qt::KeyboardModifiers) {
                vsOvervw_MouseMove(s_.store(), s_.view(), s_.options(), int(b), r, c);
                vsOvervw->setToolTip(s_.vsOvervw.ToolTipText());
            });
    connect(vsOvervw, &GridWidget::rightClicked, this, [this](int r, int c, const QPoint& at) {
        // The pop-up's commands act on the line it was opened on.
        run([&] { vsOvervw_RightClick(s_, r, c); });
        mnuEdit->popup(at);
    });
}

void frmCal::connect_navigator() {
    const auto clicked = [this](const char* n, auto f) {
        if (auto* b = findChild<QToolButton*>(QString::fromLatin1(n)))
            connect(b, &QToolButton::clicked, this, [this, f] { run([&] { f(); }); });
    };
    clicked("imageDay",
            [this] { imageDay_Click(s_.store(), s_.view(), s_.options(), s_.editing(), *this); });
    clicked("imageWeek", [this] { imageWeek_Click(s_, *this); });
    clicked("imageMonth", [this] { imageMonth_Click(s_, *this); });
    clicked("imageReminder", [this] { imageReminder_Click(s_); });
    clicked("imageClock", [this] { imageClock_Click(s_); });
    // The tools open with no test for a calendar; a T-List without one is
    // a sheet whose save fails without a word.
    clicked("imageFind", [] { modal().open_form(QStringLiteral("frmSearch")); });
    clicked("imgTzone", [] { modal().open_form(QStringLiteral("frmTzone")); });
    clicked("imgTlist", [] { modal().open_form(QStringLiteral("frmToDo")); });
    // Unlike the tools above, the reminder list wants a calendar.
    clicked("imgRem", [this] { imgRem_Click(s_); });
    clicked("imgSkins", [this] { mnuThemes->popup(QCursor::pos()); });
    clicked("ImageArrow0", [this] { ImageArrow_Click(s_, *this, 0); });
    clicked("ImageArrow1", [this] { ImageArrow_Click(s_, *this, 1); });
    clicked("imgPriorMth", [this] { imgPriorMth_Click(s_, *this); });
    clicked("imgNextMth", [this] { imgNextMth_Click(s_, *this); });
    for (const char* n : {"ImageArrow0", "ImageArrow1"})
        if (auto* b = findChild<QToolButton*>(QString::fromLatin1(n))) b->installEventFilter(this);

    const auto picked = [this](QComboBox* box, ComboList& list) {
        connect(box, &QComboBox::activated, this, [this, &list](int i) {
            run([&] {
                list.list_index = i;
                if (!s_.combo_lock) month_changed(s_, *this);
            });
        });
    };
    picked(Combo1, s_.Combo1);
    picked(Combo2, s_.Combo2);

    connect(Cal, &GridWidget::cellClicked, this,
            [this](int r, int c) { run([&] { Cal_Click(s_, *this, r, c); }); });
    connect(Cal, &GridWidget::cellDoubleClicked, this, [this](int r, int c) {
        run([&] { Cal_DblClick(s_.store(), s_.view(), s_.editing(), s_.run(), r, c); });
    });
    connect(Cal, &GridWidget::keyDown, this,
            [this](int, int, int key, Qt::KeyboardModifiers mods, bool* swallow) {
                const bool back = key == Qt::Key_Backtab;
                if (key != Qt::Key_Tab && !back) return;
                run([&] {
                    *swallow =
                        Cal_KeyDown(s_, *this, Qt::Key_Tab, back || (mods & Qt::ShiftModifier));
                });
            });
}

void frmCal::connect_pane() {
    connect(TabStrip1, &QTabBar::currentChanged, this, [this](int i) {
        run([&] {
            s_.tab_key = TabStrip1->tabData(i).toString();
            TabStrip1_Click(s_);
        });
    });
    const auto clicked = [this](const char* n, auto f) {
        if (auto* b = findChild<QToolButton*>(QString::fromLatin1(n)))
            connect(b, &QToolButton::clicked, this, [this, f] { run([&] { f(); }); });
    };
    clicked("imgDtlAppt",
            [this] { imgDtlAppt_Click(s_.store(), s_.view(), s_.editing(), s_.run()); });
    clicked("imgDtlNote", [this] { imgDtlNote_Click(s_); });
    clicked("imgDtlPrior",
            [this] { imgDtlPrior_Click(s_.store(), s_.view(), s_.options(), s_.editing()); });
    clicked("imgDtlNext",
            [this] { imgDtlNext_Click(s_.store(), s_.view(), s_.options(), s_.editing()); });
    connect(vsDtl, &GridWidget::cellDoubleClicked, this, [this](int, int) {
        run([this] { vsDtl_DblClick(s_.store(), s_.view(), s_.editing(), s_.run()); });
    });
    connect(vsDtl, &GridWidget::keyDown, this,
            [this](int, int, int key, Qt::KeyboardModifiers, bool* swallow) {
                // Moving about the facts is reading; anything else would be editing.
                if (key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Up ||
                    key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right)
                    return;
                *swallow = true;
                run([this] { vsDtl_KeyDown(); });
            });
}

bool frmCal::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Cal->viewport() &&
        (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove ||
         event->type() == QEvent::Drop)) {
        auto* de = static_cast<QDropEvent*>(event);
        const QString key = de->mimeData()->text().trimmed();
        if (picture_emoji(key).isEmpty()) return false;
        de->acceptProposedAction();
        if (event->type() == QEvent::Drop) {
            const auto cell = Cal->cell_at(Cal->viewport()->mapTo(Cal, de->position().toPoint()));
            run([&] { Cal_DragDrop(s_, cell.row, cell.col, key); });
        }
        return true;
    }
    if (watched == vsSched && event->type() == QEvent::KeyPress)
        last_key_text_ = static_cast<QKeyEvent*>(event)->text();
    if ((watched == rtNotes || watched == rtNotes->viewport()) &&
        (event->type() == QEvent::MouseButtonDblClick ||
         (event->type() == QEvent::KeyPress && watched == rtNotes &&
          !static_cast<QKeyEvent*>(event)->text().isEmpty()))) {
        run([this] { rtNotes_DblClick(s_); });
        return true;
    }
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::Enter) {
        if (watched == StatusBar1 ||
            (qobject_cast<QLabel*>(watched) && watched->parent() == StatusBar1))
            run([this] { StatusBar1_MouseMove(s_); });
        if (watched->objectName().startsWith(QStringLiteral("ImageArrow")))
            run([this] { ImageArrow_MouseMove(s_); });
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmCal::sync_controls() {
    for (const auto& [n, c] : s_.controls) {
        if (QWidget* w = n == u"Frame2" ? Frame2 : findChild<QWidget*>(n)) {
            w->setEnabled(c.enabled);
            w->setVisible(c.visible);
            if (!c.tip.isEmpty()) w->setToolTip(c.tip);
            if (w == Label1)
                Label1->setText(c.text);
            else if (w == Frame2)
                lblDtlCaption->setText(c.text);
            else if (w == rtNotes && rtNotes->toPlainText() != c.text)
                rtNotes->setPlainText(c.text);
        } else if (QAction* a = findChild<QAction*>(n)) {
            a->setEnabled(c.enabled);
        }
    }
    for (const auto& [key, label] : panels_) {
        const auto it = s_.status_panels.find(key);
        if (it == s_.status_panels.end()) continue;
        label->setText(it->second.text);
        label->setToolTip(it->second.tip);
    }
    // The notes box has no font of its own in the logic: it shows the
    // planners' shared one, colour included.
    QFont notes(s_.grid_font_name.isEmpty() ? rtNotes->font().family() : s_.grid_font_name);
    notes.setPointSizeF(grid_font_points(s_));
    notes.setBold(s_.grid_font_bold);
    notes.setItalic(s_.grid_font_italic);
    if (rtNotes->font() != notes) rtNotes->setFont(notes);
    if (const auto fore = font_color(s_)) {
        QPalette p = rtNotes->palette();
        const QColor c(red_of(*fore), green_of(*fore), blue_of(*fore));
        if (p.color(QPalette::Text) != c) {
            p.setColor(QPalette::Text, c);
            rtNotes->setPalette(p);
        }
    }
    show_combo_list(Combo1, s_.Combo1);
    show_combo_list(Combo2, s_.Combo2);
    sync_skin();
    for (GridWidget* g : {vsSched, vsOvervw, Cal})
        g->setToolTip(g->grid() ? g->grid()->ToolTipText() : QString());
    const QString planner =
        s_.view_week ? QStringLiteral("Week planner") : QStringLiteral("Month planner");
    if (vsOvervw->accessibleName() != planner) vsOvervw->setAccessibleName(planner);
}

CalendarHooks frmCal::calendar_hooks() {
    CalendarHooks h;
    h.load_options = [this] { load_options(s_.store(), s_.view(), s_.options(), s_.run(), *this); };
    h.rebuild_view = [this] {
        // After File Open the new calendar's options have cleared the view
        // flags: the view they name comes up.
        const bool named = !s_.view_day && !s_.view_month && !s_.view_week;
        const bool month = s_.view_month || (named && s_.start_view == u"mthvw");
        const bool week = s_.view_week || (named && !month && s_.start_view == u"weekvw");
        if (month || week) {
            s_.vsOvervw.setRows(0);
            s_.vsSortGrid.setRows(0);
            if (month)
                imageMonth_Click(s_, *this);
            else
                imageWeek_Click(s_, *this);
            return;
        }
        if (s_.view_day || named)
            imageDay_Click(s_.store(), s_.view(), s_.options(), s_.editing(), *this);
        layout_view();
        save_options(s_.store(), s_.view(), s_.options(), *this);
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
    sync_controls();
    sync_timer();
    if (!hidden_to_tray_) {
        // The stored numbers describe the outer frame, whose margins are known
        // only once the window is on screen: place it again after showing.
        const bool was_moving = s_.startup_move;
        s_.startup_move = true;
        show();
        if (window_state() == 0 && placed_.isValid()) move_to(placed_);
        s_.startup_move = was_moving;
        layout_view();
    }
    return true;
}

void frmCal::mnuExit_Click() {
    s_.stay_open = false;
    confirm_exit(s_.store(), s_.view(), s_.options(), s_.run(), *this);
    if (!s_.stay_open) close();
}

void frmCal::closeEvent(QCloseEvent* e) {
    if (ended_ || !started_) {
        e->accept();
        return;
    }
    if (Form_Unload(s_.store(), s_.view(), s_.options(), s_.run(), *this))
        e->ignore();
    else
        e->accept();
}

void frmCal::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    if (started_ && isVisible()) Form_Resize(s_.store(), s_.view(), s_.options(), s_.run(), *this);
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
QRect frmCal::to_px(const QRect& t) const {
    return QRect(to_px_x(t.left()), to_px_y(t.top()), to_px_x(t.width()), to_px_y(t.height()));
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
    if (!page_) return;
    const double tx = twips_per_pixel_x(), ty = twips_per_pixel_y();
    const QSize area = page_->size();
    const int width = qRound(area.width() * tx), height = qRound(area.height() * ty);
    if (s_.view_month || s_.view_week) {
        const Placement p = s_.view_week ? layout_week(width, height) : layout_month(width, height);
        strip_->setDirection(s_.view_week ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        strip_->setContentsMargins(6, s_.view_week ? 6 : 0, 6, 0);
        for (const auto& [n, r] : p)
            if (QWidget* w = findChild<QWidget*>(n)) w->setGeometry(to_px(r));
        // The planners keep an allowance off the grid's size for its frame
        // and scroll bars; the widget's inner size has them off already, so
        // the allowance is given back and the cells fill the page. A few
        // twips a row and column are kept, so cells rounded to pixels still
        // fit.
        const int frame_px = 2 * vsOvervw->frameWidth();
        const int bar = qRound(
            vsOvervw->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, vsOvervw) * tx);
        const int inner_w = qRound((vsOvervw->width() - frame_px) * tx);
        const int inner_h = qRound((vsOvervw->height() - frame_px) * ty);
        const int rows = std::max(s_.vsOvervw.Rows(), 1);
        const int cols = std::max(s_.vsOvervw.Cols(), 1);
        Placement extents = p;
        QRect& e = extents[QStringLiteral("vsOvervw")];
        e.setWidth(inner_w - cols * 8 + overvw_allowance);
        e.setHeight(inner_h - rows * 8 + (s_.view_week ? 0 : overvw_allowance));
        apply_overview_extents(s_, s_, extents);
        int rows_height = 0;
        for (int r = 0; r < s_.vsOvervw.Rows(); ++r)
            rows_height += s_.vsOvervw.RowHeight(r);
        if (rows_height > inner_h) {
            // Rows at their least height run past the page: the columns
            // stand beside the vertical scroll bar.
            e.setWidth(inner_w - cols * 8 + overvw_allowance - bar);
            apply_overview_extents(s_, s_, extents);
        }
        vsOvervw->refresh();
        return;
    }
    strip_->setDirection(QBoxLayout::LeftToRight);
    strip_->setContentsMargins(6, 0, 6, 0);
    const Placement p = layout_day(width, height);
    for (const auto& [n, r] : p) {
        QWidget* w = n == u"Frame2" ? Frame2 : findChild<QWidget*>(n);
        if (w) w->setGeometry(to_px(r));
    }
    // The day grid's columns are sized against the width they can fill, not
    // the control's outer width: its frame and vertical scroll bar would
    // push the last column under a horizontal scroll bar.
    Placement extents = p;
    extents[QStringLiteral("vsSched")].setWidth(qRound(vsSched->columns_room() * tx));
    apply_day_extents(s_, extents);
    // Twips are rounded to pixels, so the navigator's cells are fitted to the
    // pixels the widget really has.
    vsSched->refresh();
    Cal->refresh();
    vsDtl->refresh();
}

void frmCal::show_day_view() {
    for (QWidget* w : {static_cast<QWidget*>(vsSched), static_cast<QWidget*>(Cal),
                       static_cast<QWidget*>(TabStrip1)})
        w->setVisible(true);
    sync_controls();
}

void frmCal::show_long_date(const QString& text) {
    s_.ctl(QStringLiteral("Label1")).text = text;
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
    mnuTips->setChecked(s_.menus.mnuTips);
    mnuShowTimes->setChecked(s_.menus.mnuShowTimes);
    mnuStat->setChecked(s_.menus.mnuStat);
    const std::pair<const char*, bool> color_checks[] = {
        {"mnuColorY", s_.menus.mnuColorY},
        {"mnuNoColor", s_.menus.mnuNoColor},
        {"mnuColorSelect", s_.menus.mnuColorSelect}};
    for (const auto& [name, on] : color_checks)
        if (QAction* a = findChild<QAction*>(QString::fromLatin1(name))) a->setChecked(on);
}

void frmCal::end_program() {
    ended_ = true;
    emit programEnded();
    QCoreApplication::quit();
}

// --- skins -----------------------------------------------------------------

namespace {

// Each tool picture shows its label as its own caption.
const std::pair<const char*, const char*> tool_of_label[] = {
    {"Label15", "imageDay"},     {"Label16", "imageWeek"},  {"Label17", "imageMonth"},
    {"Label3", "imageReminder"}, {"Label2", "imageClock"},  {"Label13", "imageFind"},
    {"Label7", "imagePrint"},    {"Label4", "ImageArrow0"}, {"Label5", "ImageArrow1"},
    {"Label18", "imgRem"},       {"Label11", "imgSkins"},   {"Label12", "imgTzone"},
    {"Label10", "imgTlist"},     {"Label14", "Image3"},
};

constexpr int theme_pic_px = 28;

void set_base(QWidget* w, Color c) {
    const QColor q(red_of(c), green_of(c), blue_of(c));
    QPalette p = w->palette();
    if (p.color(QPalette::Base) == q) return;
    p.setColor(QPalette::Base, q);
    w->setPalette(p);
}

} // namespace

void frmCal::build_skin_menu() {
    mnuThemes = menuBar()->addMenu(QStringLiteral("&Skins"));
    mnuThemes->setObjectName(QStringLiteral("mnuThemes"));
    QMenu* holiday = mnuThemes;
    for (const SkinMenuItem& m : skin_menu()) {
        QMenu* parent = m.parent == u"mnuHoliday" ? holiday : mnuThemes;
        if (m.skin_key.isEmpty()) {
            holiday = parent->addMenu(m.caption);
            holiday->menuAction()->setObjectName(m.name);
            continue;
        }
        QAction* a = parent->addAction(m.caption);
        a->setObjectName(m.name);
        a->setCheckable(true);
        a->setVisible(m.visible);
        a->setEnabled(m.enabled);
        const QString item = m.name;
        connect(a, &QAction::triggered, this, [this, item] {
            // The desktop's colours are read at the click, so the standard
            // skin follows a palette changed while the program runs.
            run([&] {
                skin_menu_click(item, s_.store(), s_.view(), s_.options(), *this,
                                system_colors(QApplication::palette()));
            });
            for (GridWidget* g : {vsSched, vsOvervw, Cal})
                g->refresh();
        });
    }
}

void frmCal::select_skin() {
    select_saved_skin(s_.view(), s_.options(), system_colors(QApplication::palette()));
}

void frmCal::sync_skin() {
    const SkinState& k = s_.skin;
    const auto colors_of = [&](const char* label, LabelColors design) {
        const auto it = k.labels.find(QString::fromLatin1(label));
        return it == k.labels.end() ? design : it->second;
    };
    const Color palette_text = to_color(palette().color(QPalette::WindowText));

    const LabelColors title = colors_of("Label1", {s_.label1_back_color, band_text});
    const QString label1_css =
        QStringLiteral("QLabel#Label1 { background: %1; color: %2; padding-left: 8px; }")
            .arg(css(title.back), css(title.text));
    if (Label1->styleSheet() != label1_css) Label1->setStyleSheet(label1_css);

    // Tools whose label the skins do not name still sit on the tool bar's
    // colour: their captions keep the bar's text colour while it reads there.
    const LabelColors strip = colors_of("Label15", {strip_back, strip_text});
    QString strip_css =
        QStringLiteral("QFrame#Frame3 { background: %1; }"
                       " QToolButton { color: %2; border: none; border-radius: 3px;"
                       " padding: 1px 3px; background: transparent; }"
                       " QToolButton:hover { background: rgba(255,255,255,56); }"
                       " QToolButton:pressed { background: rgba(0,0,0,56); }")
            .arg(css(k.frame3_back), css(readable_text(strip.text, k.frame3_back, palette_text)));
    for (const auto& [label, tool_name] : tool_of_label) {
        const auto it = k.labels.find(QString::fromLatin1(label));
        if (it == k.labels.end()) continue;
        strip_css +=
            QStringLiteral(" QToolButton#%1 { color: %2; background: %3; }")
                .arg(QString::fromLatin1(tool_name), css(it->second.text), css(it->second.back));
    }
    if (Frame3->styleSheet() != strip_css) Frame3->setStyleSheet(strip_css);

    const QString pic_css =
        QStringLiteral("QLabel#themePic { background: %1; }").arg(css(k.theme_back));
    if (themePic->styleSheet() != pic_css) themePic->setStyleSheet(pic_css);
    if (themePic->property("key").toString() != k.themePic) {
        themePic->setProperty("key", k.themePic);
        themePic->setPixmap(sticker_picture(k.themePic, theme_pic_px));
        themePic->setToolTip(k.themePic);
    }

    set_base(vsSched, k.sched_back_bkg);
    set_base(Cal, k.cal_back_bkg);

    for (const SkinMenuItem& m : skin_menu())
        if (QAction* a = findChild<QAction*>(m.name); a && a->isCheckable())
            a->setChecked(m.name == k.checked_item);
}

} // namespace orva
