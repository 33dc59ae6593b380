// The tray on a real X server: a private Xvfb, bare or with the trayer tray
// host on it. The program's window and icon run in this process on that
// server, so Qt's own tray code is what is tried. Each test skips when Xvfb
// or trayer is not installed.

#include "core/clock.h"
#include "shell/single_instance.h"
#include "shell/tray.h"
#include "shell/ui/frmCal.h"
#include "state/options.h"
#include "support/scripted_modal.h"

#include <QApplication>
#include <QMenu>
#include <QProcess>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orva {
namespace {

bool have_x = false;

// Xvfb on the first free display, which it names on a pipe once it is ready.
class XServer {
  public:
    bool start() {
        int fds[2];
        if (::pipe(fds) != 0) return false;
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(fds[0]);
            const std::string fd = std::to_string(fds[1]);
            ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1024x768x24",
                     "-nolisten", "tcp", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(fds[1]);
        if (pid_ < 0) {
            ::close(fds[0]);
            return false;
        }
        std::string number;
        pollfd p{fds[0], POLLIN, 0};
        char c = 0;
        while (::poll(&p, 1, 15000) > 0 && ::read(fds[0], &c, 1) == 1 && c != '\n')
            number += c;
        ::close(fds[0]);
        if (number.empty()) return false;
        display_ = ":" + number;
        return true;
    }
    ~XServer() {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    const std::string& display() const { return display_; }

  private:
    pid_t pid_ = -1;
    std::string display_;
};

template <typename F> bool wait_for(F&& ready, int ms = 10000) {
    for (int waited = 0; waited < ms; waited += 50) {
        if (ready()) return true;
        QTest::qWait(50);
    }
    return ready();
}

// The widget Qt embeds in the tray host for the icon.
QWidget* icon_widget() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (QByteArray(w->metaObject()->className()) == "QSystemTrayIconSys") return w;
    return nullptr;
}

class TrayOnAnXServer : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!have_x) GTEST_SKIP() << "Xvfb is not installed";
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
    }
    void TearDown() override {
        run.reset();
        if (trayer.state() != QProcess::NotRunning) {
            trayer.terminate();
            if (!trayer.waitForFinished(5000)) trayer.kill();
        }
        install_clock(nullptr);
    }

    struct Run {
        AppState state;
        std::unique_ptr<SingleInstance> instance;
        std::unique_ptr<frmCal> window;
    };
    void launch() {
        run = std::make_unique<Run>();
        run->state.app_path = dir.path();
        run->instance = std::make_unique<SingleInstance>(dir.path());
        run->window = std::make_unique<frmCal>(run->state);
        ASSERT_TRUE(run->window->start(*run->instance));
        QTest::qWait(200);
    }
    QAction* act(const char* key) { return run->window->findChild<QAction*>(key); }
    void start_trayer() {
        if (QStandardPaths::findExecutable(QStringLiteral("trayer")).isEmpty())
            GTEST_SKIP() << "trayer is not installed";
        trayer.start(QStringLiteral("trayer"),
                     {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"),
                      QStringLiteral("right"), QStringLiteral("--widthtype"),
                      QStringLiteral("pixel"), QStringLiteral("--width"), QStringLiteral("120"),
                      QStringLiteral("--height"), QStringLiteral("28")});
        ASSERT_TRUE(trayer.waitForStarted(5000));
        ASSERT_TRUE(wait_for([] { return QSystemTrayIcon::isSystemTrayAvailable(); }))
            << "trayer never took the tray";
    }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(14, 30, 15))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
    QProcess trayer;
    std::unique_ptr<Run> run;
};

TEST_F(TrayOnAnXServer, WithoutATrayHostHideAndAnAutostartStartMinimiseTheWindow) {
    ASSERT_FALSE(QSystemTrayIcon::isSystemTrayAvailable());
    launch();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(run->window.get()));
    act("mnuHide")->trigger();
    EXPECT_TRUE(wait_for([this] { return run->window->isMinimized(); }));
    EXPECT_FALSE(run->window->isHidden());
    EXPECT_FALSE(act("sysCalender")->isEnabled());

    run->state.menus.mnuStart = true;
    save_options(run->state.store(), run->state.view(), run->state.options(), *run->window);
    run->window->close();
    ASSERT_TRUE(run->window->ended());
    launch();
    EXPECT_TRUE(run->window->isMinimized());
    EXPECT_TRUE(run->window->isVisible());
}

TEST_F(TrayOnAnXServer, WithTrayerTheIconShowsItsTipAndHideAndTheLeftButtonToggleTheWindow) {
    start_trayer();
    launch();
    ASSERT_TRUE(wait_for([] { return icon_widget() && icon_widget()->isVisible(); }))
        << "no icon in the tray";
    EXPECT_TRUE(run->window->isVisible());
    EXPECT_EQ(icon_widget()->toolTip(),
              QStringLiteral("Orva Calendar   21 Nov 2026  02:30:15 pm    0 appointments today"));

    act("mnuHide")->trigger();
    EXPECT_TRUE(wait_for([this] { return run->window->isHidden(); }));
    EXPECT_TRUE(act("sysCalender")->isEnabled());
    EXPECT_TRUE(icon_widget()->isVisible());

    QTest::mouseClick(icon_widget(), Qt::LeftButton);
    EXPECT_TRUE(wait_for([this] { return run->window->isVisible(); }));
    EXPECT_FALSE(act("sysCalender")->isEnabled());
    QTest::mouseClick(icon_widget(), Qt::LeftButton);
    EXPECT_TRUE(wait_for([this] { return run->window->isHidden(); }));

    QTest::mouseClick(icon_widget(), Qt::RightButton);
    auto* menu = run->window->findChild<QMenu*>(QStringLiteral("sysmenu"));
    EXPECT_TRUE(wait_for([menu] { return menu->isVisible(); }));
    EXPECT_TRUE(act("sysCalender")->isEnabled()) << "hidden: Calendar brings it back";
    act("sysCalender")->trigger();
    menu->hide();
    EXPECT_TRUE(wait_for([this] { return run->window->isVisible(); }));
}

TEST_F(TrayOnAnXServer, WithTrayerAnAutostartStartLeavesOnlyTheIcon) {
    start_trayer();
    launch();
    run->state.menus.mnuStart = true;
    save_options(run->state.store(), run->state.view(), run->state.options(), *run->window);
    run->window->close();
    ASSERT_TRUE(run->window->ended());
    launch();
    ASSERT_TRUE(wait_for([] { return icon_widget() && icon_widget()->isVisible(); }));
    EXPECT_TRUE(run->window->isHidden());
    EXPECT_TRUE(act("sysCalender")->isEnabled());
}

} // namespace
} // namespace orva

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    orva::XServer x;
    std::unique_ptr<QApplication> app;
    if (x.start()) {
        qputenv("DISPLAY", QByteArray::fromStdString(x.display()));
        qputenv("QT_QPA_PLATFORM", "xcb");
        // No session bus: the icon goes to the X tray, not to a desktop
        // service that may happen to run on the machine.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        app = std::make_unique<QApplication>(argc, argv);
        orva::have_x = true;
    }
    const int rc = RUN_ALL_TESTS();
    app.reset();
    return rc;
}
