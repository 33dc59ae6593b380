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
#include "core/ui/tray_probe.h"
#include "grid/ui/grid_printer.h"
#include "grid/ui/grid_widget.h"
#include "printing/detail_print.h"
#include "printing/planner_print.h"
#include "reminders/rem_list.h"
#include "shell/autostart.h"
#include "shell/main_menu.h"
#include "shell/startup.h"
#include "shell/tick.h"
#include "shell/tool_strip.h"
#include "shell/tray.h"
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
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QTabBar>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QWindow>
#include <algorithm>

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

// Ctrl+X is Exit in every view, never Cut: a cell editor or text box with
// the focus would otherwise claim the key before the menu sees it.
class ExitKeyFilter final : public QObject {
  public:
    explicit ExitKeyFilter(QWidget* window) : QObject(window), window_(window) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ShortcutOverride) return false;
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->keyCombination() != QKeyCombination(Qt::ControlModifier, Qt::Key_X)) return false;
        auto* w = qobject_cast<QWidget*>(watched);
        if (!w || w->window() != window_) return false;
        key->ignore();
        return true;
    }

  private:
    QWidget* window_;
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
    const Commands tools = tool_commands();
    build_tools(tools);
    build_menus(menu_commands(tools));
    build_tray();
    qApp->installEventFilter(new ExitKeyFilter(this));
    connect_day_grid();
    connect_overview();
    connect_navigator();
    connect_pane();
    // Print jobs put their grids on paper through the grid layer.
    s_.print_grid = [](const Grid& g, const PrintSetup& setup, const QString& name, int lr,
                       int tb) { return PrintGrid(g, setup, name, lr, tb, planner_pictures()); };

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
    tool(Frame2, QStringLiteral("prtdtlImg"), QString(),
         QStringLiteral("Print appointment details"), QStringLiteral("document-print"),
         QStringLiteral("\U0001F5A8\uFE0F"));
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

QAction* frmCal::action(const QString& key) const {
    const auto it = actions_.find(key);
    return it == actions_.end() ? nullptr : it->second;
}

frmCal::Commands frmCal::tool_commands() {
    // Each command runs inside run(), which brings the widgets up to date.
    const auto cmd = [this](auto f) { return std::function<void()>([this, f] { run(f); }); };
    Commands c;
    c[QStringLiteral("imageDay")] =
        cmd([this] { imageDay_Click(s_.store(), s_.view(), s_.options(), s_.editing(), *this); });
    c[QStringLiteral("imageWeek")] = cmd([this] { imageWeek_Click(s_, *this); });
    c[QStringLiteral("imageMonth")] = cmd([this] { imageMonth_Click(s_, *this); });
    c[QStringLiteral("imageReminder")] = cmd([this] { imageReminder_Click(s_); });
    c[QStringLiteral("imageClock")] = cmd([this] { imageClock_Click(s_); });
    // The pictures open their tools with no test for a calendar; a T-List
    // without one is a sheet whose save fails without a word.
    c[QStringLiteral("imageFind")] = cmd([] { modal().open_form(QStringLiteral("frmSearch")); });
    c[QStringLiteral("imagePrint")] = cmd([this] { imagePrint_Click(s_, *this); });
    c[QStringLiteral("ImageArrow0")] = cmd([this] { ImageArrow_Click(s_, *this, 0); });
    c[QStringLiteral("ImageArrow1")] = cmd([this] { ImageArrow_Click(s_, *this, 1); });
    // Unlike the other pictures' tools, the reminder list asks for a
    // calendar first.
    c[QStringLiteral("imgRem")] = cmd([this] { imgRem_Click(s_); });
    c[QStringLiteral("imgSkins")] = [this] { mnuThemes->popup(QCursor::pos()); };
    c[QStringLiteral("imgTzone")] = cmd([] { modal().open_form(QStringLiteral("frmTzone")); });
    c[QStringLiteral("imgTlist")] = cmd([] { modal().open_form(QStringLiteral("frmToDo")); });
    c[QStringLiteral("Image3")] = cmd([] { modal().open_form(QStringLiteral("frmHelpIdx")); });
    return c;
}

frmCal::Commands frmCal::menu_commands(const Commands& tools) {
    const auto cmd = [this](auto f) { return std::function<void()>([this, f] { run(f); }); };
    // A command that changes a check mark shows it afterwards.
    const auto checked = [this](auto f) {
        return std::function<void()>([this, f] {
            run(f);
            sync_menus();
        });
    };
    const auto tool = [&tools](const char* name) { return tools.at(QString::fromLatin1(name)); };
    Commands c;

    c[QStringLiteral("mnuOpen")] = cmd([this] { open_calendar(s_, calendar_hooks()); });
    c[QStringLiteral("mnuNew")] = cmd([this] { new_calendar(s_, calendar_hooks()); });
    c[QStringLiteral("mnuFileDelCal")] = cmd([this] { delete_calendar(s_, calendar_hooks()); });
    c[QStringLiteral("mnuFilePrint")] = cmd([this] { mnuFilePrint_Click(s_, *this); });
    c[QStringLiteral("mnuExit")] = [this] { mnuExit_Click(); };

    c[QStringLiteral("mnuadd")] = tool("imageReminder");
    c[QStringLiteral("mnuCopy")] = cmd([this] { mnuCopy_Click(s_); });
    c[QStringLiteral("mnuEditA")] = cmd([this] { mnuEditA_Click(s_); });
    c[QStringLiteral("mnudelete")] = tool("imageClock");
    c[QStringLiteral("mnuFind")] = tool("imageFind");

    c[QStringLiteral("mnuTips")] = checked([this] {
        s_.menus.mnuTips = !s_.menus.mnuTips;
        if (!s_.menus.mnuTips) {
            s_.vsSched.setToolTipText(QString());
            s_.vsOvervw.setToolTipText(QString());
        }
        save_options(s_.store(), s_.view(), s_.options(), *this);
    });
    c[QStringLiteral("mnuShowTimes")] = checked([this] {
        s_.menus.mnuShowTimes = !s_.menus.mnuShowTimes;
        if (s_.view_month || s_.view_week)
            refill_overview(s_, *this);
        else if (s_.view_day)
            imageDay_Click(s_.store(), s_.view(), s_.options(), s_.editing(), *this);
    });
    c[QStringLiteral("mnuStat")] = checked([this] {
        mnuStat_Click(s_, *this);
        save_options(s_.store(), s_.view(), s_.options(), *this);
    });
    c[QStringLiteral("mnuStart")] = checked([this] {
        mnuStart_Click(s_.store(), s_.view(), s_.options(), *this,
                       QCoreApplication::applicationFilePath());
    });
    const auto restore =
        checked([this] { default_options(s_.store(), s_.view(), s_.options(), s_.run(), *this); });
    c[QStringLiteral("mnuRestore")] = restore;

    c[QStringLiteral("mnuDplanner")] = tool("imageDay");
    c[QStringLiteral("mnuWplanner")] = tool("imageWeek");
    c[QStringLiteral("mnuMplanner")] = tool("imageMonth");
    c[QStringLiteral("mnuTlist")] =
        cmd([this] { open_with_calendar(s_, QStringLiteral("frmToDo")); });
    c[QStringLiteral("mnuTzone")] =
        cmd([this] { open_with_calendar(s_, QStringLiteral("frmTzone")); });
    c[QStringLiteral("mnuRemList")] = tool("imgRem");

    const auto color = [&](const char* name, void (*command)(AppState&, WindowPort&)) {
        c[QString::fromLatin1(name)] = checked([this, command] { command(s_, *this); });
    };
    color("mnuColorY", mnuColorY_Click);
    color("mnuNoColor", mnuNoColor_Click);
    color("mnuColorSelect", mnuColorSelect_Click);
    c[QStringLiteral("mnuFonts")] = [this] {
        run([this] { mnuFonts_Click(s_, *this); });
        vsSched->refresh();
        vsDtl->refresh();
    };

    for (const SkinMenuItem& m : skin_menu()) {
        if (m.skin_key.isEmpty()) continue;
        const QString item = m.name;
        c[item] = [this, item] {
            // The desktop's colours are read at the click, so the standard
            // skin follows a palette changed while the program runs.
            run([&] {
                skin_menu_click(item, s_.store(), s_.view(), s_.options(), *this,
                                system_colors(QApplication::palette()));
            });
            for (GridWidget* g : {vsSched, vsOvervw, Cal})
                g->refresh();
        };
    }

    c[QStringLiteral("mnuHelpabout")] = cmd([] { modal().open_form(QStringLiteral("frmAbout")); });
    c[QStringLiteral("mnuContents")] = tool("Image3");
    c[QStringLiteral("mnuHide")] = checked([this] { mnuHide_Click(s_, *this); });
    c[QStringLiteral("mnuRem")] =
        cmd([] { modal().message(future_enhancement_text, MsgStyle::Information); });

    c[QStringLiteral("sysAbout")] = c[QStringLiteral("mnuHelpabout")];
    c[QStringLiteral("sysCalender")] = checked([this] { sysCalender_Click(s_, *this); });
    // From the tray the list opens as it is, with no test for a calendar.
    c[QStringLiteral("sysRem")] = cmd([] { sysRem_Click(); });
    c[QStringLiteral("sysTlist")] = c[QStringLiteral("mnuTlist")];
    c[QStringLiteral("sysTzone")] = c[QStringLiteral("mnuTzone")];
    c[QStringLiteral("sysSearch")] =
        cmd([this] { open_with_calendar(s_, QStringLiteral("frmSearch")); });
    c[QStringLiteral("sysmnuRestore")] = restore;
    c[QStringLiteral("sysHelp")] = tool("Image3");
    c[QStringLiteral("sysExit")] = [this] { mnuExit_Click(); };
    return c;
}

void frmCal::build_tools(const Commands& tools) {
    bool gap = false;
    for (const ToolPicture& t : tool_pictures()) {
        gap = gap || t.gap_before;
        const auto it = tools.find(t.key);
        if (it == tools.end()) continue;
        if (gap && strip_->count() > 0) strip_->addSpacing(12);
        gap = false;
        QToolButton* b = tool(Frame3, t.key, t.caption, t.tip, t.icon, t.emoji);
        strip_->addWidget(b);
        connect(b, &QToolButton::clicked, this, it->second);
        pressable_.push_back(b);
    }
    strip_->addStretch(1);
}

void frmCal::build_menus(const Commands& commands) {
    using Kind = MenuEntry::Kind;
    std::map<QString, QMenu*> menus;
    for (const MenuEntry& e : main_menu()) {
        QMenu* parent = nullptr;
        if (!e.parent.isEmpty()) {
            const auto p = menus.find(e.parent);
            if (p == menus.end()) continue;
            parent = p->second;
        }
        QAction* a = nullptr;
        switch (e.kind) {
        case Kind::Menu: {
            QMenu* m = parent ? parent->addMenu(e.caption) : menuBar()->addMenu(e.caption);
            // The menu's own action carries the name too: the logic enables
            // a sub-menu by its name, which must not show the menu itself.
            m->setObjectName(e.key);
            menus[e.key] = m;
            a = m->menuAction();
            break;
        }
        case Kind::Dash: {
            // A dash whose group is not built would stand beside another.
            const QList<QAction*> before = parent ? parent->actions() : QList<QAction*>();
            if (before.isEmpty() || before.last()->isSeparator()) continue;
            a = parent->addSeparator();
            break;
        }
        case Kind::Spacer: {
            // The bar draws an entry's picture in place of its caption; a
            // clear one leaves a gap of its width.
            QPixmap blank(16, 16);
            blank.fill(Qt::transparent);
            a = menuBar()->addAction(QIcon(blank), e.caption);
            break;
        }
        case Kind::Command: {
            const auto cmd = commands.find(e.key);
            if (cmd == commands.end()) continue;
            const QIcon icon = e.icon.isEmpty() ? QIcon() : QIcon::fromTheme(e.icon);
            a = parent ? parent->addAction(icon, e.caption) : menuBar()->addAction(icon, e.caption);
            if (!e.shortcut.isEmpty())
                a->setShortcut(QKeySequence(e.shortcut, QKeySequence::PortableText));
            a->setCheckable(e.checkable);
            a->setChecked(e.checked);
            connect(a, &QAction::triggered, this, cmd->second);
            break;
        }
        }
        a->setObjectName(e.key);
        a->setVisible(e.visible);
        a->setEnabled(e.enabled);
        actions_[e.key] = a;
    }
    mnuEdit = menus.at(QStringLiteral("mnuEdit"));
    mnuThemes = menus.at(QStringLiteral("mnuThemes"));
    sysmenu = menus.at(QStringLiteral("sysmenu"));
    // Leaving is one key in every view, whatever window of the program has
    // the focus.
    action(QStringLiteral("mnuExit"))->setShortcutContext(Qt::ApplicationShortcut);
    sync_menus();
}

void frmCal::build_tray() {
    cSysTray1 = new QSystemTrayIcon(windowIcon(), this);
    cSysTray1->setObjectName(QStringLiteral("cSysTray1"));
    cSysTray1->setContextMenu(sysmenu);
    connect(cSysTray1, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason why) {
                const int button = why == QSystemTrayIcon::Trigger   ? 1
                                   : why == QSystemTrayIcon::Context ? 2
                                                                     : 0;
                if (button == 0) return;
                run([&] { cSysTray1_MouseUp(s_, *this, button); });
            });
    // The desktop may open the pop-up without telling the icon first; the
    // right button's rule runs as it opens either way.
    connect(sysmenu, &QMenu::aboutToShow, this,
            [this] { run([this] { cSysTray1_MouseUp(s_, *this, 2); }); });
    // The desktop reports no hover over a tray icon, so the tip is kept
    // fresh instead: every second, and after every event.
    tip_timer_ = new QTimer(this);
    tip_timer_->setInterval(1000);
    connect(tip_timer_, &QTimer::timeout, this, &frmCal::refresh_tip);
}

void frmCal::refresh_tip() {
    const QString tip = tray_tip_text(s_);
    if (cSysTray1->toolTip() != tip) cSysTray1->setToolTip(tip);
}

void frmCal::sync_tools() {
    for (QToolButton* b : pressable_) {
        const QString label = label_of_tool(b->objectName());
        const bool lit = !label.isEmpty() && s_.tools_lit.count(label);
        const bool pressed = s_.tools_pressed.count(b->objectName()) > 0;
        if (b->property("lit").toBool() == lit && b->property("pressed").toBool() == pressed)
            continue;
        b->setProperty("lit", lit);
        b->setProperty("pressed", pressed);
        QFont f = b->font();
        f.setUnderline(lit);
        b->setFont(f);
        // Style sheets read dynamic properties only when polished.
        b->style()->unpolish(b);
        b->style()->polish(b);
        b->update();
    }
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
    clicked("imgPriorMth", [this] { imgPriorMth_Click(s_, *this); });
    clicked("imgNextMth", [this] { imgNextMth_Click(s_, *this); });

    // The month buttons look pressed under the mouse as the strip's
    // pictures do; their own sheet draws it, since they stand on the page.
    for (const char* n : {"imgPriorMth", "imgNextMth"})
        if (auto* b = findChild<QToolButton*>(QString::fromLatin1(n))) {
            b->setStyleSheet(QStringLiteral(
                "QToolButton { border: 1px solid transparent; border-radius: 3px;"
                " background: transparent; }"
                " QToolButton[pressed=\"true\"] { border-color: palette(shadow); }"));
            pressable_.push_back(b);
        }
    for (QToolButton* b : pressable_)
        b->installEventFilter(this);
    // Moving over the band, the frames or a planner takes the highlight off.
    for (QWidget* w : {static_cast<QWidget*>(Label1), static_cast<QWidget*>(Frame2),
                       static_cast<QWidget*>(Frame3), Cal->viewport(), vsSched->viewport(),
                       vsOvervw->viewport()}) {
        w->setMouseTracking(true);
        w->installEventFilter(this);
        hover_off_.push_back(w);
    }

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
    clicked("prtdtlImg", [this] { prtdtlImg_Click(s_, *this); });
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
    const QEvent::Type type = event->type();
    if (type == QEvent::Enter || type == QEvent::MouseMove || type == QEvent::MouseButtonPress ||
        type == QEvent::MouseButtonDblClick || type == QEvent::MouseButtonRelease) {
        const auto tool = std::find(pressable_.begin(), pressable_.end(), watched);
        if (tool != pressable_.end()) {
            const QString name = (*tool)->objectName();
            bool changed = false;
            if (type == QEvent::Enter || type == QEvent::MouseMove)
                changed = tool_hover(s_, name);
            else if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
                changed = tool_press(s_, name, type != QEvent::MouseButtonRelease);
            if (changed) sync_tools();
        } else if ((type == QEvent::Enter || type == QEvent::MouseMove) &&
                   std::find(hover_off_.begin(), hover_off_.end(), watched) != hover_off_.end() &&
                   tool_hover_off(s_)) {
            sync_tools();
        }
    }
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
        if (QAction* a = action(n)) {
            a->setEnabled(c.enabled);
        } else if (QWidget* w = n == u"Frame2" ? Frame2 : findChild<QWidget*>(n)) {
            w->setEnabled(c.enabled);
            w->setVisible(c.visible);
            if (!c.tip.isEmpty()) w->setToolTip(c.tip);
            if (w == Label1)
                Label1->setText(c.text);
            else if (w == Frame2)
                lblDtlCaption->setText(c.text);
            else if (w == rtNotes && rtNotes->toPlainText() != c.text)
                rtNotes->setPlainText(c.text);
        }
    }
    action(QStringLiteral("sysCalender"))->setEnabled(s_.sysCalender_enabled);
    refresh_tip();
    sync_tools();
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
        action(QStringLiteral("mnuFileDelCal"))->setEnabled(on);
    };
    return h;
}

bool frmCal::start(SingleInstance& instance) {
    // The icon is there for the whole run, before a start with the system
    // hides the window.
    cSysTray1->show();
    if (!Form_Load(s_, *this, instance)) {
        cSysTray1->hide();
        return false;
    }
    started_ = true;
    sync_controls();
    sync_timer();
    tip_timer_->start();
    if (!hidden_to_tray_) show_placed();
    return true;
}

void frmCal::show_placed() {
    // The stored numbers describe the outer frame, whose margins are known
    // only once the window is on screen: place it again after showing.
    const bool was_moving = s_.startup_move;
    s_.startup_move = true;
    show();
    shown_once_ = true;
    if (window_state() == 0 && placed_.isValid()) move_to(placed_);
    s_.startup_move = was_moving;
    layout_view();
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
    if (system_tray_available()) {
        cSysTray1->show();
        hidden_to_tray_ = true;
        hide();
        return true;
    }
    // Nothing would show a hidden window again: the task bar keeps a
    // minimised one within reach.
    setWindowState(windowState() | Qt::WindowMinimized);
    return false;
}

void frmCal::show_window() {
    hidden_to_tray_ = false;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    if (shown_once_)
        show();
    else
        show_placed();
    raise();
    activateWindow();
}

bool frmCal::window_hidden() const {
    return isHidden();
}

void frmCal::sync_menus() {
    action(QStringLiteral("mnuFileDelCal"))->setEnabled(s_.delete_enabled);
    action(QStringLiteral("sysCalender"))->setEnabled(s_.sysCalender_enabled);
    const std::pair<const char*, bool> checks[] = {{"mnuTips", s_.menus.mnuTips},
                                                   {"mnuShowTimes", s_.menus.mnuShowTimes},
                                                   {"mnuStat", s_.menus.mnuStat},
                                                   {"mnuStart", s_.menus.mnuStart},
                                                   {"mnuColorY", s_.menus.mnuColorY},
                                                   {"mnuNoColor", s_.menus.mnuNoColor},
                                                   {"mnuColorSelect", s_.menus.mnuColorSelect}};
    for (const auto& [name, on] : checks)
        if (QAction* a = action(QString::fromLatin1(name))) a->setChecked(on);
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
                       " QToolButton { color: %2; border: 1px solid transparent;"
                       " border-radius: 3px; padding: 0px 2px; background: transparent; }"
                       " QToolButton[pressed=\"true\"] { border-color: %2; }")
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
