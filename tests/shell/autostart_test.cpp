#include "core/clock.h"
#include "shell/autostart.h"
#include "state/options.h"
#include "support/fake_window.h"
#include "support/scripted_modal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <unistd.h>

namespace orva {
namespace {

// The user's configuration folder is a temporary one for each test, and the
// program's path a made-up one: the entry is read back, never run.
class AutostartTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(config.isValid());
        saved_ = qgetenv("XDG_CONFIG_HOME");
        had_ = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
        install_clock(&clk);
        s.app_path = dir.path();
        s.cal_path = dir.filePath(QStringLiteral("calendar.cal"));
    }
    void TearDown() override {
        install_clock(nullptr);
        if (had_)
            qputenv("XDG_CONFIG_HOME", saved_);
        else
            qunsetenv("XDG_CONFIG_HOME");
    }

    QString entry() const { return config.filePath(QStringLiteral("autostart/orvacal.desktop")); }
    QByteArray entry_bytes() const {
        QFile f(entry());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void click() { mnuStart_Click(s.store(), s.view(), s.options(), w, program); }
    // Column 19 of the options row as the calendar file holds it.
    QString stored_check() {
        QByteArray bytes;
        EXPECT_EQ(s.archive.get(s.cal_path, options_member, bytes), 0);
        Grid g;
        EXPECT_TRUE(g.load_bytes(bytes));
        return g.TextMatrix(0, 19);
    }

    QTemporaryDir dir, config;
    QString program = QStringLiteral("/opt/orvacal/bin/orvacal");
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
    testing::FakeWindow w;
    AppState s;

  private:
    QByteArray saved_;
    bool had_ = false;
};

TEST_F(AutostartTest, TheFolderIsAutostartInTheUsersConfigurationFolder) {
    EXPECT_EQ(autostart_folder(), config.path() + QStringLiteral("/autostart"));
    EXPECT_EQ(autostart_entry_path(), entry());
}

TEST_F(AutostartTest, WithoutAnAbsoluteConfigHomeTheFolderIsUnderDotConfig) {
    const QString fallback = QDir::homePath() + QStringLiteral("/.config/autostart");
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(autostart_folder(), fallback);
    qputenv("XDG_CONFIG_HOME", "relative/config");
    EXPECT_EQ(autostart_folder(), fallback);
}

TEST_F(AutostartTest, CheckingWritesAnEntryThatStartsTheProgramWithZero) {
    click();
    EXPECT_TRUE(s.menus.mnuStart);
    EXPECT_TRUE(m.shown.empty());
    EXPECT_EQ(entry_bytes(), QByteArray("[Desktop Entry]\n"
                                        "Type=Application\n"
                                        "Name=Orva Calendar\n"
                                        "Comment=Planner and reminders\n"
                                        "Icon=x-office-calendar\n"
                                        "TryExec=/opt/orvacal/bin/orvacal\n"
                                        "Exec=/opt/orvacal/bin/orvacal 0\n"
                                        "Terminal=false\n"
                                        "X-GNOME-Autostart-enabled=true\n"));
    EXPECT_FALSE(QFile::exists(entry() + QStringLiteral(".part")));
}

TEST_F(AutostartTest, AProgramPathWithBlanksIsQuotedForTheLauncher) {
    const QByteArray text = autostart_entry(QStringLiteral("/home/ann/My Apps/orvacal"));
    EXPECT_TRUE(text.contains("\nExec=\"/home/ann/My Apps/orvacal\" 0\n")) << text.constData();
    EXPECT_TRUE(text.contains("\nTryExec=/home/ann/My Apps/orvacal\n")) << text.constData();
    const QByteArray odd = autostart_entry(QStringLiteral("/opt/100%$x/orvacal"));
    EXPECT_TRUE(odd.contains("\nExec=\"/opt/100%%\\\\$x/orvacal\" 0\n")) << odd.constData();
}

TEST_F(AutostartTest, UncheckingDeletesTheEntry) {
    click();
    ASSERT_TRUE(QFile::exists(entry()));
    click();
    EXPECT_FALSE(s.menus.mnuStart);
    EXPECT_FALSE(QFile::exists(entry()));
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(AutostartTest, AnEntryAlreadyGoneIsNoFailureWhenUnchecking) {
    s.menus.mnuStart = true;
    click();
    EXPECT_FALSE(s.menus.mnuStart);
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(AutostartTest, TheCheckIsSavedInColumnNineteenOfTheOptions) {
    click();
    EXPECT_EQ(stored_check(), QStringLiteral("True"));
    EXPECT_EQ(w.menu_syncs, 1);
    click();
    EXPECT_EQ(stored_check(), QStringLiteral("False"));
}

TEST_F(AutostartTest, AnEntryThatCannotBeWrittenIsToldAndTheMenuIsCheckedAllTheSame) {
    // A plain file where the folder should be: nothing can be made inside.
    QFile blocker(config.filePath(QStringLiteral("autostart")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    click();
    ASSERT_EQ(m.shown.size(), 1u);
    EXPECT_EQ(m.shown[0].text, QStringLiteral("couldn't create start menu link 76"));
    EXPECT_EQ(m.shown[0].style, MsgStyle::Information);
    EXPECT_TRUE(s.menus.mnuStart);
    EXPECT_EQ(stored_check(), QStringLiteral("True"));
}

TEST_F(AutostartTest, AnEntryThatCannotBeDeletedIsToldAndTheMenuIsUnchecked) {
    s.menus.mnuStart = true;
    // A folder of the entry's name, with something in it, is no file to remove.
    ASSERT_TRUE(QDir().mkpath(entry() + QStringLiteral("/inside")));
    click();
    ASSERT_EQ(m.shown.size(), 1u);
    EXPECT_EQ(m.shown[0].text, QStringLiteral("couldn't delete start menu link 75"));
    EXPECT_EQ(m.shown[0].style, MsgStyle::Information);
    EXPECT_FALSE(s.menus.mnuStart);
    EXPECT_EQ(stored_check(), QStringLiteral("False"));
}

TEST_F(AutostartTest, AFolderTheUserMayNotWriteIsToldAsPermissionDenied) {
    if (::geteuid() == 0) GTEST_SKIP() << "the superuser writes any folder";
    ASSERT_TRUE(QDir().mkpath(autostart_folder()));
    QFile::setPermissions(autostart_folder(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    click();
    QFile::setPermissions(autostart_folder(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    ASSERT_EQ(m.shown.size(), 1u);
    EXPECT_EQ(m.shown[0].text, QStringLiteral("couldn't create start menu link 70"));
}

} // namespace
} // namespace orva
