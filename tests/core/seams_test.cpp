#include "core/clock.h"
#include "core/event_loop.h"
#include "core/modal.h"
#include "support/scripted_modal.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(ClockSeam, InstalledClockDecidesTodayAndNow) {
    FixedClock fixed(QDateTime(QDate(2026, 2, 28), QTime(23, 59)));
    install_clock(&fixed);
    EXPECT_EQ(clock().today(), QDate(2026, 2, 28));
    fixed.advance_secs(60);
    EXPECT_EQ(clock().today(), QDate(2026, 3, 1));
    EXPECT_EQ(clock().now().time(), QTime(0, 0));
    install_clock(nullptr);
    EXPECT_NE(&clock(), &fixed);
}

TEST(ModalSeam, WithNothingInstalledQuestionsAnswerNoAndDialogsChooseNothing) {
    install_modal(nullptr);
    EXPECT_EQ(modal().ask_yes_no(QStringLiteral("Sure?"), MsgStyle::Question), Answer::No);
    EXPECT_EQ(modal().open_file_dialog(QStringLiteral("cal Files (*.cal)|*.cal")), QString());
}

TEST(ModalSeam, ScriptedSeamRecordsTextsAndGivesQueuedAnswers) {
    testing::ScriptedModal m;
    testing::ModalGuard guard(&m);
    m.answers.push_back(Answer::Yes);
    m.file_answers.push_back(QStringLiteral("/tmp/x.cal"));
    bool form_ran = false;
    m.forms[QStringLiteral("frmNotes")] = [&] { form_ran = true; };

    modal().message(QStringLiteral(" Select and Open a Calendar first"), MsgStyle::Information);
    EXPECT_EQ(modal().ask_yes_no(QStringLiteral("Delete?"), MsgStyle::Question), Answer::Yes);
    EXPECT_EQ(modal().ask_yes_no(QStringLiteral("Again?"), MsgStyle::Question), Answer::No);
    EXPECT_EQ(modal().save_file_dialog(QStringLiteral("cal Files (*.cal)|*.cal")),
              QStringLiteral("/tmp/x.cal"));
    modal().open_form(QStringLiteral("frmNotes"));

    ASSERT_EQ(m.shown.size(), 5u);
    EXPECT_EQ(m.shown[0].text, QStringLiteral(" Select and Open a Calendar first"));
    EXPECT_EQ(m.shown[0].style, MsgStyle::Information);
    EXPECT_EQ(m.shown[3].kind, QStringLiteral("save"));
    EXPECT_TRUE(form_ran);
}

TEST(ModalSeam, FilterTurnsIntoQtFormKeepingThePatternAsWritten) {
    EXPECT_EQ(to_qt_filter(QStringLiteral("cal Files (*.CAL)|*.cal")),
              QStringLiteral("cal Files (*.cal)"));
    EXPECT_EQ(to_qt_filter(QStringLiteral("Sounds|*.wav;*.mp3|All|*.*")),
              QStringLiteral("Sounds (*.wav *.mp3);;All (*.*)"));
}

TEST(YieldSeam, RunsTheInstalledHookAndNothingWithout) {
    int calls = 0;
    install_yield_hook([&] { ++calls; });
    yield_events();
    yield_events();
    install_yield_hook(nullptr);
    yield_events();
    EXPECT_EQ(calls, 2);
}

} // namespace
} // namespace orva
