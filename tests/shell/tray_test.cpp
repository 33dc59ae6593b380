#include "core/clock.h"
#include "shell/single_instance.h"
#include "shell/startup.h"
#include "shell/tool_strip.h"
#include "shell/tray.h"
#include "support/fake_window.h"
#include "support/scripted_modal.h"
#include "views/day_view.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orva {
namespace {

class TrayTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        install_clock(&clk);
        s.app_path = dir.path();
        s.cal_path = dir.filePath(QStringLiteral("calendar.cal"));
    }
    void TearDown() override { install_clock(nullptr); }

    QTemporaryDir dir;
    FixedClock clk{QDateTime(QDate(2026, 11, 21), QTime(10, 5, 7))};
    testing::ScriptedModal m;
    testing::ModalGuard guard{&m};
    testing::FakeWindow w;
    AppState s;
};

TEST_F(TrayTest, TipReadsTheNameTodayTheTimeAndTheDayGridsCount) {
    s.day_appts = 3;
    EXPECT_EQ(tray_tip_text(s),
              QStringLiteral("Orva Calendar   21 Nov 2026  10:05:07 am    3 appointments today"));
}

TEST_F(TrayTest, TipShowsTheDayGridCountEvenWhileAnotherDateIsInView) {
    s.cur_date = QDate(2026, 12, 24);
    s.day_appts = 5;
    clk.set(QDateTime(QDate(2026, 11, 21), QTime(23, 59, 59)));
    EXPECT_EQ(tray_tip_text(s),
              QStringLiteral("Orva Calendar   21 Nov 2026  11:59:59 pm    5 appointments today"));
}

struct ClockCase {
    const char* name;
    QTime time;
    const char* text;
};

class TipTime : public ::testing::TestWithParam<ClockCase> {};

TEST_P(TipTime, HasTwoDigitsEachAndALowerCaseHalfOfTheDay) {
    EXPECT_EQ(format_hh_mm_ss_ampm(GetParam().time), QString::fromLatin1(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Hours, TipTime,
    ::testing::Values(ClockCase{"Midnight", QTime(0, 0, 0), "12:00:00 am"},
                      ClockCase{"EarlyMorning", QTime(1, 2, 3), "01:02:03 am"},
                      ClockCase{"Noon", QTime(12, 0, 5), "12:00:05 pm"},
                      ClockCase{"Afternoon", QTime(13, 30, 0), "01:30:00 pm"},
                      ClockCase{"LastSecond", QTime(23, 59, 59), "11:59:59 pm"}),
    [](const ::testing::TestParamInfo<ClockCase>& info) { return std::string(info.param.name); });

TEST_F(TrayTest, LeftButtonHidesAShownWindowAndShowsAHiddenOne) {
    w.tray = true;
    s.sysCalender_enabled = false;
    cSysTray1_MouseUp(s, w, 1);
    EXPECT_TRUE(w.hidden);
    EXPECT_TRUE(s.sysCalender_enabled);
    cSysTray1_MouseUp(s, w, 1);
    EXPECT_FALSE(w.hidden);
    EXPECT_FALSE(s.sysCalender_enabled);
    cSysTray1_MouseUp(s, w, 1);
    EXPECT_TRUE(w.hidden);
    EXPECT_TRUE(s.sysCalender_enabled);
}

TEST_F(TrayTest, RightButtonDisablesSysCalenderWhileTheWindowShows) {
    w.tray = true;
    s.sysCalender_enabled = true;
    cSysTray1_MouseUp(s, w, 2);
    EXPECT_FALSE(s.sysCalender_enabled);
    EXPECT_FALSE(w.hidden) << "the right button changes nothing else";
}

TEST_F(TrayTest, RightButtonLeavesSysCalenderOnWhileTheWindowIsHidden) {
    w.tray = true;
    mnuHide_Click(s, w);
    cSysTray1_MouseUp(s, w, 2);
    EXPECT_TRUE(s.sysCalender_enabled);
    EXPECT_TRUE(w.hidden);
}

TEST_F(TrayTest, HideWithATrayHidesTheWindowAndEnablesSysCalender) {
    w.tray = true;
    mnuHide_Click(s, w);
    EXPECT_TRUE(w.hidden);
    EXPECT_EQ(w.state, 0);
    EXPECT_TRUE(s.sysCalender_enabled);
}

TEST_F(TrayTest, HideWithoutATrayMinimisesTheWindowAndLeavesSysCalenderOff) {
    w.tray = false;
    s.sysCalender_enabled = false;
    mnuHide_Click(s, w);
    EXPECT_FALSE(w.hidden);
    EXPECT_EQ(w.state, 1);
    EXPECT_FALSE(s.sysCalender_enabled);
}

TEST_F(TrayTest, SysCalenderShowsTheWindowAndDisablesItself) {
    w.tray = true;
    mnuHide_Click(s, w);
    sysCalender_Click(s, w);
    EXPECT_FALSE(w.hidden);
    EXPECT_FALSE(s.sysCalender_enabled);
}

TEST_F(TrayTest, SysCalenderIsDisabledAfterANormalStartAndEnabledAfterHide) {
    w.tray = true;
    SingleInstance inst(dir.path());
    ASSERT_TRUE(Form_Load(s, w, inst));
    EXPECT_FALSE(w.hidden);
    EXPECT_FALSE(s.sysCalender_enabled);
    mnuHide_Click(s, w);
    EXPECT_TRUE(s.sysCalender_enabled);
}

TEST_F(TrayTest, AStartWithAutostartCheckedHidesTheWindowWhereATrayIs) {
    w.tray = true;
    s.menus.mnuStart = true;
    // The check comes from the options row, so the calendar carries it.
    {
        SingleInstance first(dir.path());
        ASSERT_TRUE(Form_Load(s, w, first));
    }
    AppState next;
    next.app_path = dir.path();
    testing::FakeWindow win;
    win.tray = true;
    SingleInstance inst(dir.path());
    ASSERT_TRUE(Form_Load(next, win, inst));
    EXPECT_TRUE(next.menus.mnuStart);
    EXPECT_TRUE(win.hidden);
    EXPECT_TRUE(next.sysCalender_enabled);
}

TEST_F(TrayTest, AStartWithAutostartCheckedMinimisesTheWindowWhereNoTrayIs) {
    s.menus.mnuStart = true;
    {
        SingleInstance first(dir.path());
        ASSERT_TRUE(Form_Load(s, w, first));
    }
    AppState next;
    next.app_path = dir.path();
    testing::FakeWindow win;
    win.tray = false;
    SingleInstance inst(dir.path());
    ASSERT_TRUE(Form_Load(next, win, inst));
    EXPECT_FALSE(win.hidden);
    EXPECT_EQ(win.state, 1);
    EXPECT_FALSE(next.sysCalender_enabled);
}

TEST_F(TrayTest, WithNoCalendarOpenTheMenusWaysToAToolShowTheGuardAndNoForm) {
    s.cal_path.clear();
    for (const char* form : {"frmToDo", "frmTzone", "frmSearch"})
        open_with_calendar(s, QString::fromLatin1(form));
    ASSERT_EQ(m.shown.size(), 3u);
    for (const auto& shown : m.shown) {
        EXPECT_EQ(shown.kind, QStringLiteral("message"));
        EXPECT_EQ(shown.text, no_calendar_text);
        EXPECT_EQ(shown.style, MsgStyle::Information);
    }
}

TEST_F(TrayTest, WithACalendarOpenTheMenusWaysToAToolOpenIt) {
    open_with_calendar(s, QStringLiteral("frmTzone"));
    ASSERT_EQ(m.shown.size(), 1u);
    EXPECT_EQ(m.shown[0].kind, QStringLiteral("form"));
    EXPECT_EQ(m.shown[0].text, QStringLiteral("frmTzone"));
}

// --- the tool strip's looks ----------------------------------------------

TEST(ToolStripLooks, HoverLightsThePicturesLabelOnce) {
    PlannerState v;
    EXPECT_TRUE(tool_hover(v, QStringLiteral("imageDay")));
    EXPECT_FALSE(tool_hover(v, QStringLiteral("imageDay")));
    EXPECT_EQ(v.tools_lit, std::set<QString>{QStringLiteral("Label15")});
}

TEST(ToolStripLooks, AMonthButtonHasNoLabelToLight) {
    PlannerState v;
    EXPECT_FALSE(tool_hover(v, QStringLiteral("imgPriorMth")));
    EXPECT_TRUE(v.tools_lit.empty());
}

TEST(ToolStripLooks, PressAndReleaseDrawAndTakeOffThePressedLook) {
    PlannerState v;
    EXPECT_TRUE(tool_press(v, QStringLiteral("imgNextMth"), true));
    EXPECT_EQ(v.tools_pressed, std::set<QString>{QStringLiteral("imgNextMth")});
    EXPECT_TRUE(tool_press(v, QStringLiteral("imgNextMth"), false));
    EXPECT_TRUE(v.tools_pressed.empty());
}

TEST(ToolStripLooks, HoverOffClearsEveryLitLabelAndUnpressesItsPicture) {
    PlannerState v;
    tool_hover(v, QStringLiteral("imageDay"));
    tool_hover(v, QStringLiteral("imgTlist"));
    tool_press(v, QStringLiteral("imageDay"), true);
    tool_press(v, QStringLiteral("imgNextMth"), true);
    EXPECT_TRUE(tool_hover_off(v));
    EXPECT_TRUE(v.tools_lit.empty());
    // A picture whose label was not lit keeps its look.
    EXPECT_EQ(v.tools_pressed, std::set<QString>{QStringLiteral("imgNextMth")});
    EXPECT_FALSE(tool_hover_off(v)) << "nothing lit, nothing to do";
}

TEST(ToolStripLooks, TheCrossedNamesAddAndDelete) {
    const auto find = [](const char* key) {
        for (const ToolPicture& t : tool_pictures())
            if (t.key == QLatin1String(key)) return t;
        return ToolPicture{};
    };
    EXPECT_EQ(find("imageReminder").caption, QStringLiteral("Add"));
    EXPECT_EQ(find("imageReminder").label, QStringLiteral("Label3"));
    EXPECT_EQ(find("imageClock").caption, QStringLiteral("Delete"));
    EXPECT_EQ(find("imageClock").label, QStringLiteral("Label2"));
}

} // namespace
} // namespace orva
