#include "appearance/skins.h"
#include "core/errors.h"
#include "core/ui/tray_probe.h"
#include "shell/startup.h"
#include "state/options.h"
#include "support/accessible.h"
#include "tlist/tlist.h"
#include "views/day_view.h"
#include "views/main_window_fixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QSystemTrayIcon>
#include <QToolButton>
#include <functional>
#include <map>

namespace orva {
namespace {

// The menu bar as it is designed, in order, each entry after its parent.
// `later` marks a command whose form is not written yet, with the dash that
// stands only beside it: the window leaves both out. No entry waits so now.
// `checked` is the check after a first start, which the default options give.
struct Designed {
    const char* key;
    const char* parent;
    const char* caption; // nullptr for a dash
    const char* shortcut = "";
    bool visible = true;
    bool enabled = true;
    bool checkable = false;
    bool checked = false;
    bool later = false;
};

Designed dash(const char* key, const char* parent, bool later = false) {
    return {key, parent, nullptr, "", true, true, false, false, later};
}
Designed check(const char* key, const char* parent, const char* caption, bool on,
               const char* shortcut = "") {
    return {key, parent, caption, shortcut, true, true, true, on};
}
Designed skin(const char* key, const char* parent, const char* caption, bool on = false) {
    return check(key, parent, caption, on);
}

const std::vector<Designed>& designed_menu() {
    static const std::vector<Designed> table{
        {"mnuFile", "", "File"},
        {"mnuOpen", "mnuFile", "Open", "Ctrl+O"},
        {"mnuNew", "mnuFile", "New Calendar", "Ctrl+N"},
        {"mnuFileDelCal", "mnuFile", "Delete Calendar", "Ctrl+R"},
        dash("mnuFileDash1", "mnuFile"),
        {"mnuFilePrint", "mnuFile", "Print  ", "Ctrl+P"},
        dash("mnuFileDash2", "mnuFile"),
        {"mnuExit", "mnuFile", "Exit", "Ctrl+X"},
        {"mnuEdit", "", "Edit"},
        {"mnuadd", "mnuEdit", "Add appointment", "Ctrl+A"},
        {"mnuCopy", "mnuEdit", "Copy appointment", "Ctrl+C"},
        {"mnuEditA", "mnuEdit", "Edit Appointment", "Ctrl+E"},
        {"mnudelete", "mnuEdit", "Delete Appointment", "Ctrl+D"},
        dash("mnudash1", "mnuEdit"),
        {"mnuFind", "mnuEdit", "Find", "Ctrl+F"},
        {"mnuOpts", "", "Options"},
        check("mnuTips", "mnuOpts", "Tooltips", true, "Ctrl+T"),
        check("mnuShowTimes", "mnuOpts", "Show Times in appointment text", true, "Ctrl+S"),
        check("mnuStat", "mnuOpts", "Show status bar", true),
        dash("mnuOptsDash1", "mnuOpts"),
        check("mnuStart", "mnuOpts", "Start when computer starts", false),
        dash("mnuOptsDash2", "mnuOpts"),
        {"mnuRestore", "mnuOpts", "Restore defaults"},
        {"mnuView", "", "View"},
        {"mnuPlanners", "mnuView", "Planners"},
        {"mnuDplanner", "mnuPlanners", "Daily"},
        {"mnuWplanner", "mnuPlanners", "Weekly"},
        {"mnuMplanner", "mnuPlanners", "Monthly"},
        dash("mnuViewDash1", "mnuView"),
        {"mnuTlist", "mnuView", "T-List (To do list)"},
        {"mnuTzone", "mnuView", "T-Zone (World Time zones)"},
        {"mnuRemList", "mnuView", "Reminders"},
        {"mnuCustom", "", "Customize"},
        {"mnuColor", "mnuCustom", "Color"},
        {"mnuBackc", "mnuColor", "Appointment Background (applies to all appts)"},
        check("mnuColorY", "mnuBackc", "Use Default Yellow", true),
        check("mnuNoColor", "mnuBackc", "Transparent", false),
        check("mnuColorSelect", "mnuBackc", "Select Color", false),
        {"mnuFonts", "mnuCustom", "Fonts"},
        {"mnuThemes", "", "Skins"},
        skin("blueIce", "mnuThemes", "Blue Ice"),
        {"mnuCamelion", "mnuThemes", "Camelion", "", false, true, true},
        skin("mnuForest", "mnuThemes", "Forest"),
        {"mnuHoliday", "mnuThemes", "Holidays"},
        skin("mnuEaster", "mnuHoliday", "Easter"),
        skin("mnuChristmas", "mnuHoliday", "Holiday/Christmas Season"),
        skin("mnuHallo", "mnuHoliday", "Halloween"),
        {"mnuNewYear", "mnuHoliday", "New Year", "", false, true, true},
        skin("mnuStPat", "mnuHoliday", "St Patrick's Day"),
        skin("mnuSkinVal", "mnuHoliday", "Valentine's Day"),
        skin("mnuThanks", "mnuHoliday", "Fall Seasons"),
        skin("usapatriat", "mnuThemes", "Patriotic"),
        {"mnuTrans", "mnuThemes", "Transparent (white)", "", false, false, true},
        skin("mnuSunnyDays", "mnuThemes", "Sunny "),
        skin("mnuStdWindows", "mnuThemes", "Std Windows ", true),
        {"mnuHelp", "", "Help"},
        {"mnuHelpabout", "mnuHelp", "About"},
        {"mnuContents", "mnuHelp", "Contents"},
        {"mnuspacer1", "", ""},
        {"mnuHide", "", "Hide"},
        {"mnuRem", "", "Reminders", "", false, false},
        {"sysmenu", "", "SysMenu", "", false},
        {"sysAbout", "sysmenu", "About"},
        // Off while the window shows.
        {"sysCalender", "sysmenu", "Calendar", "", true, false},
        dash("sysdash1", "sysmenu"),
        {"sysRem", "sysmenu", "Reminders"},
        {"sysTlist", "sysmenu", "T-List   (To Do list)"},
        {"sysTzone", "sysmenu", "T-Zone   (Time Zones)"},
        {"sysSearch", "sysmenu", "Search"},
        dash("sysdash2", "sysmenu"),
        {"sysmnuRestore", "sysmenu", "Restore defaults"},
        dash("sysdash3", "sysmenu"),
        {"sysHelp", "sysmenu", "Help"},
        dash("sysdash4", "sysmenu"),
        {"sysExit", "sysmenu", "Exit"},
    };
    return table;
}

// The tool strip as designed, in order; `later` as above.
struct DesignedTool {
    const char* key;
    const char* caption;
    const char* tip;
    bool later = false;
};

const std::vector<DesignedTool>& designed_tools() {
    static const std::vector<DesignedTool> table{
        {"imageDay", "Day", "Daily planner"},
        {"imageWeek", "Wk", "weekly planner"},
        {"imageMonth", "Mth", "montly calendar"},
        {"imageReminder", "Add", "Add an appointment"},
        {"imageClock", "Delete", "Delete Appointment"},
        {"imageFind", "Find", "Find appointments"},
        {"imagePrint", "Print", "Print"},
        {"ImageArrow0", "Prior", "Prior Day"},
        {"ImageArrow1", "Next", "Next day"},
        {"imgRem", "Reminders", "List of reminders"},
        {"imgSkins", "Skins", "Calendar skins"},
        {"imgTzone", "T- Zone", "Time Zones"},
        {"imgTlist", "T- List", "To Do list"},
        {"Image3", "Help", ""},
    };
    return table;
}

// One entry of the menu bar as the window shows it.
struct Shown {
    QString key, parent, caption, shortcut;
    bool dash = false, visible = true, enabled = true, checkable = false, checked = false;
    QString spoken; // what a screen reader is told
};

void walk(const QList<QAction*>& actions, QAccessibleInterface* container, const QString& parent,
          std::vector<Shown>& out) {
    for (int i = 0; i < actions.size(); ++i) {
        QAction* a = actions[i];
        Shown s;
        s.key = a->objectName();
        s.parent = parent;
        s.caption = a->text();
        s.shortcut = a->shortcut().toString(QKeySequence::PortableText);
        s.dash = a->isSeparator();
        s.visible = a->isVisible();
        s.enabled = a->isEnabled();
        s.checkable = a->isCheckable();
        s.checked = a->isChecked();
        if (container && i < container->childCount())
            s.spoken = container->child(i)->text(QAccessible::Name);
        out.push_back(s);
        if (QMenu* m = a->menu())
            walk(m->actions(), QAccessible::queryAccessibleInterface(m), s.key, out);
    }
}

class MainMenuTest : public testing::MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        ASSERT_TRUE(config.isValid());
        saved_config_ = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
    }
    void TearDown() override {
        MainWindowTest::TearDown();
        install_tray_probe({});
        qputenv("XDG_CONFIG_HOME", saved_config_);
    }

    std::vector<Shown> shown_menu() {
        std::vector<Shown> out;
        QMenuBar* bar = run->window->menuBar();
        walk(bar->actions(), QAccessible::queryAccessibleInterface(bar), QString(), out);
        return out;
    }
    QAction* act(const char* key) { return find<QAction>(key); }
    QSystemTrayIcon* tray() { return find<QSystemTrayIcon>("cSysTray1"); }
    // A reminder due today and not delivered, so that leaving asks first.
    void add_today_reminder() {
        EXPECT_EQ(append_rmdr_line(s(), s().cal_path,
                                   testing::make_rmdr(QStringLiteral("11/21/26"),
                                                      QStringLiteral("211000009999"))),
                  0);
    }
    // Starts the program with nothing waited for: a start with the system
    // may leave the window hidden or minimised.
    void launch_quietly() {
        run = std::make_unique<Run>();
        run->state.app_path = dir.path();
        run->instance = std::make_unique<SingleInstance>(dir.path());
        run->window = std::make_unique<frmCal>(run->state);
        ASSERT_TRUE(run->window->start(*run->instance));
        QApplication::processEvents();
    }
    // The options of the calendar ask for a start with the system.
    void check_autostart_and_close() {
        launch();
        s().menus.mnuStart = true;
        save_options(s().store(), s().view(), s().options(), *run->window);
        run->window->close();
        ASSERT_TRUE(run->window->ended());
        run.reset();
    }
    size_t forms_opened(const char* name) {
        size_t n = 0;
        for (const auto& x : m.shown)
            if (x.kind == u"form" && x.text == QLatin1String(name)) ++n;
        return n;
    }

    QTemporaryDir config;
    QByteArray saved_config_;
};

TEST_F(MainMenuTest, EveryEntryStandsAsDesignedInOrderWithItsDashes) {
    launch();
    std::vector<Shown> expected;
    for (const Designed& d : designed_menu()) {
        if (d.later) continue;
        Shown e;
        e.key = QString::fromLatin1(d.key);
        e.parent = QString::fromLatin1(d.parent);
        e.dash = d.caption == nullptr;
        e.caption = e.dash ? QString() : QString::fromLatin1(d.caption);
        e.shortcut = QString::fromLatin1(d.shortcut);
        e.visible = d.visible;
        // Qt disables what it hides: a hidden entry cannot be reached at all.
        e.enabled = d.enabled && d.visible;
        e.checkable = d.checkable;
        e.checked = d.checked;
        expected.push_back(e);
    }
    const std::vector<Shown> got = shown_menu();
    ASSERT_EQ(got.size(), expected.size());
    for (size_t i = 0; i < got.size(); ++i) {
        const Shown& g = got[i];
        const Shown& e = expected[i];
        const std::string at = "entry " + std::to_string(i) + " " + e.key.toStdString();
        EXPECT_EQ(g.key, e.key) << at;
        EXPECT_EQ(g.parent, e.parent) << at;
        EXPECT_EQ(g.dash, e.dash) << at;
        EXPECT_EQ(g.caption, e.caption) << at;
        EXPECT_EQ(g.shortcut, e.shortcut) << at;
        EXPECT_EQ(g.visible, e.visible) << at;
        EXPECT_EQ(g.enabled, e.enabled) << at;
        EXPECT_EQ(g.checkable, e.checkable) << at;
        EXPECT_EQ(g.checked, e.checked) << at;
        // A screen reader is told what a sighted user reads.
        if (!g.dash) {
            EXPECT_EQ(g.spoken, g.caption) << at;
        }
    }
}

TEST_F(MainMenuTest, CommandsWhoseFormsAreNotWrittenAreLeftOutNotDead) {
    launch();
    for (const Designed& d : designed_menu())
        if (d.later) {
            EXPECT_EQ(act(d.key), nullptr) << d.key;
        }
    for (const DesignedTool& t : designed_tools())
        if (t.later) {
            EXPECT_EQ(find<QToolButton>(t.key), nullptr) << t.key;
        }
}

TEST_F(MainMenuTest, MnuRemIsNeverSeen) {
    launch();
    QAction* rem = act("mnuRem");
    ASSERT_NE(rem, nullptr);
    EXPECT_FALSE(rem->isVisible());
    EXPECT_FALSE(rem->isEnabled());
    EXPECT_TRUE(rem->shortcut().isEmpty());
    // Even pushed from inside, a disabled entry runs nothing.
    rem->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(m.shown.empty());
    for (QAction* a : run->window->menuBar()->actions())
        if (a->isVisible()) {
            EXPECT_NE(a->objectName(), QStringLiteral("mnuRem"));
        }
}

TEST_F(MainMenuTest, EachEnabledEntryReachesItsCommand) {
    install_tray_probe([] { return true; });
    launch();
    using Check = std::function<void(size_t before)>;
    const auto form = [&](const char* name) {
        return Check([this, name](size_t before) {
            ASSERT_GT(m.shown.size(), before);
            EXPECT_EQ(m.shown.back().kind, QStringLiteral("form"));
            EXPECT_EQ(m.shown.back().text, QLatin1String(name));
        });
    };
    const auto asked = [&](const char* kind) {
        return Check([this, kind](size_t before) {
            ASSERT_GT(m.shown.size(), before);
            EXPECT_EQ(m.shown.back().kind, QLatin1String(kind));
        });
    };
    const auto toggles = [&](const char* key) {
        const bool was = act(key)->isChecked();
        return Check([this, key, was](size_t) { EXPECT_NE(act(key)->isChecked(), was) << key; });
    };
    const auto view = [&](bool AppState::*flag) {
        return Check([this, flag](size_t) { EXPECT_TRUE(s().*flag); });
    };
    const auto restored = Check([this](size_t) {
        // The defaults are saved at once; the window stays as it is.
        EXPECT_TRUE(s().startup_move);
        EXPECT_EQ(s().vsSettings.TextMatrix(0, 0), QStringLiteral("mnuStdWindows"));
    });
    std::map<QString, Check> effect{
        {"mnuOpen", asked("open")},
        {"mnuNew", asked("save")},
        {"mnuFileDelCal", asked("question")},
        {"mnuFilePrint", asked("print")},
        {"mnuadd", form("frmAppt1")},
        {"mnuCopy", form("frmAppt1")},
        {"mnuEditA", form("frmAppt1")},
        {"mnudelete", asked("question")},
        {"mnuFind", form("frmSearch")},
        {"mnuTips", toggles("mnuTips")},
        {"mnuShowTimes", toggles("mnuShowTimes")},
        {"mnuStat", Check([this](size_t) {
             EXPECT_FALSE(act("mnuStat")->isChecked());
             EXPECT_TRUE(find<QStatusBar>("StatusBar1")->isHidden());
         })},
        {"mnuStart", Check([this](size_t) {
             EXPECT_TRUE(act("mnuStart")->isChecked());
             EXPECT_TRUE(QFile::exists(config.filePath("autostart/orvacal.desktop")));
         })},
        {"mnuRestore", restored},
        {"mnuDplanner", view(&AppState::view_day)},
        {"mnuWplanner", view(&AppState::view_week)},
        {"mnuMplanner", view(&AppState::view_month)},
        {"mnuTlist", form("frmToDo")},
        {"mnuTzone", form("frmTzone")},
        {"mnuRemList", form("frmRemList")},
        {"mnuColorY", Check([this](size_t) { EXPECT_EQ(s().appt_color_mode, "1"); })},
        {"mnuNoColor", Check([this](size_t) { EXPECT_EQ(s().appt_color_mode, "3"); })},
        {"mnuColorSelect", asked("color")},
        {"mnuFonts", form("frmFonts")},
        {"mnuHelpabout", form("frmAbout")},
        {"mnuContents", form("frmHelpIdx")},
        {"mnuspacer1", Check([this](size_t before) { EXPECT_EQ(m.shown.size(), before); })},
        {"mnuHide", Check([this](size_t) {
             EXPECT_TRUE(run->window->isHidden());
             EXPECT_TRUE(act("sysCalender")->isEnabled());
         })},
        {"sysAbout", form("frmAbout")},
        {"sysCalender", Check([this](size_t) {
             EXPECT_TRUE(run->window->isVisible());
             EXPECT_FALSE(act("sysCalender")->isEnabled());
         })},
        {"sysTlist", form("frmToDo")},
        {"sysTzone", form("frmTzone")},
        {"sysRem", form("frmRemList")},
        {"sysSearch", form("frmSearch")},
        {"sysmnuRestore", restored},
        {"sysHelp", form("frmHelpIdx")},
    };
    for (const SkinMenuItem& item : skin_menu()) {
        if (item.skin_key.isEmpty() || !item.enabled || !item.visible) continue;
        const QString skin = item.skin_key;
        effect[item.name] = Check([this, skin](size_t) { EXPECT_EQ(s().skin_name, skin); });
    }

    int reached = 0;
    for (const Designed& d : designed_menu()) {
        const QString key = QString::fromLatin1(d.key);
        // sysCalender is off while the window shows; it is tried after Hide.
        if (d.later || d.caption == nullptr || !d.visible) continue;
        if (!d.enabled && key != u"sysCalender") continue;
        if (key == u"mnuExit" || key == u"sysExit") continue; // each ends the run: below
        QAction* a = act(d.key);
        ASSERT_NE(a, nullptr) << d.key;
        if (a->menu()) continue;
        const auto it = effect.find(key);
        ASSERT_NE(it, effect.end()) << "no effect known for " << d.key;
        // The Edit commands act on the selected entry: the Dentist at 09:00.
        s().vsSched.Select(19, 2);
        if (key == u"sysCalender") act("mnuHide")->trigger();
        s().stay_open = false;
        const size_t before = m.shown.size();
        a->trigger();
        QApplication::processEvents();
        it->second(before);
        ++reached;
    }
    EXPECT_EQ(reached, int(effect.size()));

    act("mnuExit")->trigger();
    EXPECT_TRUE(run->window->ended());
    run.reset();
    launch_quietly();
    act("sysExit")->trigger();
    EXPECT_TRUE(run->window->ended());
}

TEST_F(MainMenuTest, CtrlXLeavesThroughConfirmExitInEveryView) {
    launch();
    add_today_reminder();
    const auto questions = [this] {
        int n = 0;
        for (const auto& x : m.shown)
            if (x.kind == u"question" && x.text == exit_question_text) ++n;
        return n;
    };
    const auto press_ctrl_x = [this] {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClick(focus, Qt::Key_X, Qt::ControlModifier);
        QApplication::processEvents();
    };
    int asked = 0;
    for (const char* view : {"imageDay", "imageWeek", "imageMonth"}) {
        QTest::mouseClick(find<QToolButton>(view), Qt::LeftButton);
        QApplication::processEvents();
        QWidget* grid = std::string(view) == "imageDay" ? static_cast<QWidget*>(sched())
                                                        : find<GridWidget>("vsOvervw");
        grid->setFocus();
        m.answers.push_back(Answer::No);
        press_ctrl_x();
        EXPECT_EQ(questions(), ++asked) << view;
        EXPECT_FALSE(run->window->ended()) << view;
    }

    // Typing in a cell of the day planner: still Exit, and nothing is cut.
    QTest::mouseClick(find<QToolButton>("imageDay"), Qt::LeftButton);
    s().vsSched.Select(3, 2);
    sched()->refresh();
    static_cast<QAbstractItemView*>(sched())->edit(sched()->currentIndex());
    QApplication::processEvents();
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    editor->setText(QStringLiteral("Lunch"));
    editor->selectAll();
    m.answers.push_back(Answer::No);
    press_ctrl_x();
    EXPECT_EQ(questions(), ++asked);
    EXPECT_EQ(editor->text(), QStringLiteral("Lunch"));

    m.answers.push_back(Answer::Yes);
    sched()->setFocus();
    press_ctrl_x();
    EXPECT_TRUE(run->window->ended());
}

TEST_F(MainMenuTest, WithNoCalendarOpenTrayToolsShowTheGuardAndNoForm) {
    install_tray_probe([] { return true; });
    launch();
    s().cal_path.clear();
    for (const char* key :
         {"sysTlist", "sysTzone", "sysSearch", "mnuTlist", "mnuTzone", "mnuRemList"}) {
        const size_t before = m.shown.size();
        act(key)->trigger();
        ASSERT_EQ(m.shown.size(), before + 1) << key;
        EXPECT_EQ(m.shown.back().kind, QStringLiteral("message")) << key;
        EXPECT_EQ(m.shown.back().text, no_calendar_text) << key;
    }
    EXPECT_EQ(m.last(u"form"), nullptr);
    // The pictures open their tools with no such test...
    QTest::mouseClick(find<QToolButton>("imgTzone"), Qt::LeftButton);
    EXPECT_EQ(forms_opened("frmTzone"), 1u);
    // ...but for the reminder list's, which asks as its menu entry does.
    size_t before = m.shown.size();
    QTest::mouseClick(find<QToolButton>("imgRem"), Qt::LeftButton);
    ASSERT_EQ(m.shown.size(), before + 1);
    EXPECT_EQ(m.shown.back().kind, QStringLiteral("message"));
    EXPECT_EQ(m.shown.back().text, no_calendar_text);
    EXPECT_EQ(forms_opened("frmRemList"), 0u);
    // From the tray the list opens all the same.
    before = m.shown.size();
    act("sysRem")->trigger();
    ASSERT_EQ(m.shown.size(), before + 1);
    EXPECT_EQ(forms_opened("frmRemList"), 1u);
}

TEST_F(MainMenuTest, ImgTlistWithNoCalendarOpensASheetWhoseSaveFailsSilently) {
    launch();
    s().cal_path.clear();
    const QString cal = dir.filePath("calendar.cal");
    ASSERT_TRUE(QFile::remove(cal));
    int saved = -1;
    m.forms[QStringLiteral("frmToDo")] = [&] {
        ToDoForm f;
        frmToDo_Load(s().store(), s().view(), s().options(), f);
        f.vsToDo.setTextMatrix(0, todo_col::text, QStringLiteral("Buy stamps"));
        Command1_Click(f);
        saved = frmToDo_Unload(s().store(), s().view(), f);
    };
    QTest::mouseClick(find<QToolButton>("imgTlist"), Qt::LeftButton);
    EXPECT_EQ(forms_opened("frmToDo"), 1u);
    EXPECT_EQ(saved, err::not_found);
    EXPECT_TRUE(m.messages().empty());
    EXPECT_FALSE(QFile::exists(cal));
}

TEST_F(MainMenuTest, HelpEntriesOpenTheHelpForms) {
    launch();
    QTest::mouseClick(find<QToolButton>("Image3"), Qt::LeftButton);
    act("mnuContents")->trigger();
    act("mnuHelpabout")->trigger();
    EXPECT_EQ(forms_opened("frmHelpIdx"), 2u);
    EXPECT_EQ(forms_opened("frmAbout"), 1u);
}

// --- tool strip ------------------------------------------------------------

TEST_F(MainMenuTest, EveryToolPictureShowsItsCaptionTipAndNameInOrder) {
    launch();
    auto* strip = find<QFrame>("Frame3");
    std::vector<QString> order;
    for (QToolButton* b : strip->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly))
        order.push_back(b->objectName());
    std::sort(order.begin(), order.end(), [&](const QString& a, const QString& b) {
        return find<QToolButton>(a.toLatin1().constData())->x() <
               find<QToolButton>(b.toLatin1().constData())->x();
    });
    std::vector<QString> expected;
    for (const DesignedTool& t : designed_tools()) {
        if (t.later) continue;
        expected.push_back(QString::fromLatin1(t.key));
        auto* b = find<QToolButton>(t.key);
        ASSERT_NE(b, nullptr) << t.key;
        EXPECT_TRUE(b->isVisible()) << t.key;
        EXPECT_EQ(b->text(), QString::fromLatin1(t.caption)) << t.key;
        EXPECT_EQ(b->toolTip(), QString::fromLatin1(t.tip)) << t.key;
        EXPECT_EQ(testing::spoken_name(b), QString::fromLatin1(t.caption)) << t.key;
        EXPECT_EQ(testing::spoken_description(b), QString::fromLatin1(t.key)) << t.key;
        // Our own picture stands in where the desktop has no icon theme.
        EXPECT_FALSE(b->icon().pixmap(20, 20).isNull()) << t.key;
    }
    EXPECT_EQ(order, expected);
}

TEST_F(MainMenuTest, AToolPictureLooksPressedWhileTheButtonIsDown) {
    launch();
    auto* day = find<QToolButton>("imageWeek");
    QTest::mousePress(day, Qt::LeftButton);
    EXPECT_TRUE(day->property("pressed").toBool());
    EXPECT_TRUE(s().tools_pressed.count(QStringLiteral("imageWeek")));
    QTest::mouseRelease(day, Qt::LeftButton);
    EXPECT_FALSE(day->property("pressed").toBool());
    EXPECT_TRUE(s().view_week) << "the click still runs";
    auto* next = find<QToolButton>("imgNextMth");
    QTest::mousePress(next, Qt::LeftButton);
    EXPECT_TRUE(next->property("pressed").toBool());
    QTest::mouseRelease(next, Qt::LeftButton);
    EXPECT_FALSE(next->property("pressed").toBool());
}

TEST_F(MainMenuTest, HoverLightsTheLabelUntilTheMouseCrossesTheBandOrAPlanner) {
    launch();
    auto* find_tool = find<QToolButton>("imageFind");
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(find_tool, &enter);
    EXPECT_TRUE(find_tool->property("lit").toBool());
    EXPECT_TRUE(find_tool->font().underline());
    EXPECT_TRUE(s().tools_lit.count(QStringLiteral("Label13")));
    // Another picture lights up beside it; only the band or a grid clears.
    auto* tlist = find<QToolButton>("imgTlist");
    QApplication::sendEvent(tlist, &enter);
    EXPECT_TRUE(find_tool->property("lit").toBool());
    for (QWidget* off :
         {static_cast<QWidget*>(find<QLabel>("Label1")), sched()->viewport(),
          static_cast<QWidget*>(find<QFrame>("Frame3")), find<GridWidget>("Cal")->viewport()}) {
        QApplication::sendEvent(find_tool, &enter);
        QTest::mouseMove(off, QPoint(5, 5));
        QApplication::sendEvent(off, &enter);
        EXPECT_FALSE(find_tool->property("lit").toBool()) << off->objectName().toStdString();
        EXPECT_FALSE(find_tool->font().underline());
        EXPECT_TRUE(s().tools_lit.empty());
    }
}

TEST_F(MainMenuTest, HoverOffAlsoTakesThePressedLookOffTheLitPicture) {
    launch();
    auto* prior = find<QToolButton>("ImageArrow0");
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(prior, &enter);
    s().tools_pressed.insert(QStringLiteral("ImageArrow0"));
    run->window->sync_controls();
    EXPECT_TRUE(prior->property("pressed").toBool());
    QApplication::sendEvent(find<QLabel>("Label1"), &enter);
    EXPECT_FALSE(prior->property("pressed").toBool());
    EXPECT_FALSE(prior->property("lit").toBool());
}

// --- tray, Hide and autostart --------------------------------------------

TEST_F(MainMenuTest, TipShowsTheDayGridCountEvenWhileAnotherDateIsInView) {
    launch();
    ASSERT_NE(tray(), nullptr);
    EXPECT_EQ(tray()->toolTip(),
              QStringLiteral("Orva Calendar   21 Nov 2026  09:40:00 am    4 appointments today"));
    QTest::mouseClick(find<QToolButton>("ImageArrow1"), Qt::LeftButton);
    ASSERT_EQ(s().cur_date, QDate(2026, 11, 22));
    EXPECT_EQ(tray()->toolTip(),
              QStringLiteral("Orva Calendar   21 Nov 2026  09:40:00 am    0 appointments today"));
}

TEST_F(MainMenuTest, TheTipIsRefreshedEverySecond) {
    launch();
    clk.advance_secs(3);
    QTest::qWait(1300);
    EXPECT_EQ(tray()->toolTip(),
              QStringLiteral("Orva Calendar   21 Nov 2026  09:40:03 am    4 appointments today"));
}

TEST_F(MainMenuTest, SysCalenderIsDisabledAfterANormalStartAndEnabledAfterHide) {
    install_tray_probe([] { return true; });
    launch();
    EXPECT_FALSE(act("sysCalender")->isEnabled());
    act("mnuHide")->trigger();
    EXPECT_TRUE(act("sysCalender")->isEnabled());
    EXPECT_TRUE(run->window->isHidden());
    EXPECT_TRUE(tray()->isVisible()) << "the icon stays while the window is hidden";
}

TEST_F(MainMenuTest, TheLeftButtonOnTheIconTogglesTheWindow) {
    install_tray_probe([] { return true; });
    launch();
    emit tray()->activated(QSystemTrayIcon::Trigger);
    EXPECT_TRUE(run->window->isHidden());
    EXPECT_TRUE(act("sysCalender")->isEnabled());
    emit tray()->activated(QSystemTrayIcon::Trigger);
    EXPECT_TRUE(run->window->isVisible());
    EXPECT_FALSE(run->window->isMinimized());
    EXPECT_FALSE(act("sysCalender")->isEnabled());
    emit tray()->activated(QSystemTrayIcon::DoubleClick);
    EXPECT_TRUE(run->window->isVisible()) << "only the single click toggles";
}

TEST_F(MainMenuTest, TheRightButtonDisablesSysCalenderWhileTheWindowShows) {
    install_tray_probe([] { return true; });
    launch();
    EXPECT_EQ(tray()->contextMenu(), find<QMenu>("sysmenu"));
    s().sysCalender_enabled = true;
    run->window->sync_menus();
    ASSERT_TRUE(act("sysCalender")->isEnabled());
    emit tray()->activated(QSystemTrayIcon::Context);
    EXPECT_FALSE(act("sysCalender")->isEnabled());

    // The pop-up opened by the desktop itself applies the same rule.
    s().sysCalender_enabled = true;
    run->window->sync_menus();
    QMenu* menu = find<QMenu>("sysmenu");
    menu->popup(QPoint(10, 10));
    QApplication::processEvents();
    EXPECT_FALSE(act("sysCalender")->isEnabled());
    menu->hide();
}

TEST_F(MainMenuTest, WithoutATrayHideMinimisesTheWindowInstead) {
    install_tray_probe([] { return false; });
    launch();
    act("mnuHide")->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(run->window->isVisible());
    EXPECT_TRUE(run->window->isMinimized());
    EXPECT_FALSE(act("sysCalender")->isEnabled());
}

TEST_F(MainMenuTest, WithATrayAStartWithAutostartCheckedIsHidden) {
    check_autostart_and_close();
    install_tray_probe([] { return true; });
    launch_quietly();
    EXPECT_TRUE(s().menus.mnuStart);
    EXPECT_TRUE(act("mnuStart")->isChecked());
    EXPECT_TRUE(run->window->isHidden());
    EXPECT_TRUE(act("sysCalender")->isEnabled());
    // Shown from the tray, it comes up placed and laid out.
    act("sysCalender")->trigger();
    EXPECT_TRUE(run->window->isVisible());
    EXPECT_GT(sched()->width(), 100);
}

TEST_F(MainMenuTest, WithoutATrayAStartWithAutostartCheckedIsMinimised) {
    check_autostart_and_close();
    install_tray_probe([] { return false; });
    launch_quietly();
    EXPECT_TRUE(run->window->isVisible());
    EXPECT_TRUE(run->window->isMinimized());
    EXPECT_FALSE(act("sysCalender")->isEnabled());
}

TEST_F(MainMenuTest, StartWhenComputerStartsWritesAndDeletesTheEntry) {
    launch();
    const QString entry = config.filePath("autostart/orvacal.desktop");
    act("mnuStart")->trigger();
    EXPECT_TRUE(act("mnuStart")->isChecked());
    ASSERT_TRUE(QFile::exists(entry));
    QFile f(entry);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().contains("\nExec=" + QCoreApplication::applicationFilePath().toUtf8() +
                                     " 0\n"));
    act("mnuStart")->trigger();
    EXPECT_FALSE(act("mnuStart")->isChecked());
    EXPECT_FALSE(QFile::exists(entry));
    EXPECT_TRUE(m.messages().empty());
}

} // namespace
} // namespace orva
