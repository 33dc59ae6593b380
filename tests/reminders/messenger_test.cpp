#include "reminders/messenger.h"
#include "state/options_state.h"
#include "state/reminder_state.h"
#include "support/recording_sound.h"
#include "support/scripted_modal.h"

#include <QTemporaryDir>
#include <cctype>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orva {
namespace {

using testing::RecordingSound;
using testing::ScriptedModal;

struct SoundTest : ::testing::Test {
    RecordingSound speakers;
    ScriptedModal m;
    testing::SoundGuard sound_guard{&speakers};
    testing::ModalGuard modal_guard{&m};
};

// --- WAV --------------------------------------------------------------------

using PlayWav = SoundTest;

TEST_F(PlayWav, ABlankStopsWhateverPlays) {
    play_wav(QStringLiteral(" "));
    EXPECT_EQ(speakers.calls, QStringList{QStringLiteral("stop")});
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(PlayWav, StartsTheFileAndReturnsWithoutAMessage) {
    play_wav(QStringLiteral("/home/me/ring.wav"));
    EXPECT_EQ(speakers.calls, QStringList{QStringLiteral("wav /home/me/ring.wav")});
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(PlayWav, CouldNotPlayShowsOnlyWhenTheSoundSystemFaults) {
    speakers.wav_results = {WavStart::playing, WavStart::failed, WavStart::error};
    play_wav(QStringLiteral("/a.wav"));
    play_wav(QStringLiteral("/missing.wav"));
    EXPECT_TRUE(m.shown.empty());
    play_wav(QStringLiteral("/b.wav"));
    ASSERT_EQ(m.shown.size(), 1u);
    EXPECT_EQ(m.shown[0].text, QStringLiteral("Could not play WAV file."));
    EXPECT_EQ(m.shown[0].style, MsgStyle::Critical);
}

// --- MP3 --------------------------------------------------------------------

using PlayMp3 = SoundTest;

TEST_F(PlayMp3, OpensAsTheAliasAndPlays) {
    play_mp3(QStringLiteral("/music/wake.mp3"));
    EXPECT_EQ(speakers.calls, (QStringList{QStringLiteral("open /music/wake.mp3 MP3_Device1"),
                                           QStringLiteral("play MP3_Device1")}));
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(PlayMp3, APathWithBlanksIsPassedWhole) {
    const QString path = QStringLiteral("/home/me/My Songs/wake  up .mp3");
    EXPECT_EQ(short_path(path), path);
    play_mp3(path);
    ASSERT_EQ(speakers.calls.size(), 2);
    EXPECT_EQ(speakers.calls[0], QStringLiteral("open ") + path + QStringLiteral(" MP3_Device1"));
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(PlayMp3, OpenCommandNamesTypeAliasAndWait) {
    EXPECT_EQ(mp3_open_command(QStringLiteral("/m/a b.mp3")),
              QStringLiteral("open /m/a b.mp3 type MPEGVideo alias MP3_Device1 wait"));
}

TEST_F(PlayMp3, PlayIsNotSentWhenOpenFails) {
    speakers.open_results = {275};
    play_mp3(QStringLiteral("/gone.mp3"));
    EXPECT_EQ(speakers.calls, QStringList{QStringLiteral("open /gone.mp3 MP3_Device1")});
}

TEST_F(PlayMp3, OpenFailureShowsTheDevicesWords) {
    speakers.open_results = {275};
    speakers.error_strings[275] = QStringLiteral("Cannot find the specified file.");
    play_mp3(QStringLiteral("/gone.mp3"));
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QStringLiteral("Cannot find the specified file."));
    EXPECT_EQ(m.shown[0].style, MsgStyle::Critical);
}

TEST_F(PlayMp3, TheDevicesWordsAreCutAtTheirFirstNul) {
    speakers.open_results = {275};
    speakers.error_strings[275] = QStringLiteral("No such file.") + QString(5, QChar(u'\0'));
    play_mp3(QStringLiteral("/gone.mp3"));
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QStringLiteral("No such file."));
}

TEST_F(PlayMp3, OpenFailureWithoutWordsShowsUnknownMciError) {
    speakers.open_results = {999};
    play_mp3(QStringLiteral("/odd.mp3"));
    ASSERT_EQ(m.messages().size(), 1u);
    EXPECT_EQ(m.messages()[0], QStringLiteral("An unknown MCI error occurred."));
}

TEST_F(PlayMp3, WordsOfNothingButNulsCountAsNone) {
    speakers.error_strings[7] = QString(3, QChar(u'\0'));
    EXPECT_EQ(mci_error_text(7), QStringLiteral("An unknown MCI error occurred."));
}

TEST_F(PlayMp3, PlayFailureShowsItsWords) {
    speakers.play_results = {282};
    speakers.error_strings[282] = QStringLiteral("The device is busy.");
    play_mp3(QStringLiteral("/a.mp3"));
    EXPECT_EQ(m.messages(), std::vector<QString>{QStringLiteral("The device is busy.")});
}

TEST_F(PlayMp3, CloseAllStopsTheWavAndClosesEveryDevice) {
    close_all_sound();
    EXPECT_EQ(speakers.calls, (QStringList{QStringLiteral("stop"), QStringLiteral("close all")}));
}

struct NulCase {
    const char* name;
    QString text;
    QString expected;
};

class CutAtNul : public ::testing::TestWithParam<NulCase> {};

TEST_P(CutAtNul, KeepsTheTextUpToItsFirstNul) {
    EXPECT_EQ(cut_at_nul(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CutAtNul,
    ::testing::Values(NulCase{"no_nul_keeps_all", QStringLiteral("Disk full"),
                              QStringLiteral("Disk full")},
                      NulCase{"empty", QString(), QString()},
                      NulCase{"nul_first", QString(QChar(u'\0')) + QStringLiteral("x"), QString()},
                      NulCase{"padding_cut", QStringLiteral("Busy") + QString(4, QChar(u'\0')),
                              QStringLiteral("Busy")},
                      NulCase{"text_after_nul_dropped",
                              QStringLiteral("One") + QChar(u'\0') + QStringLiteral("Two"),
                              QStringLiteral("One")}),
    [](const auto& info) { return std::string(info.param.name); });

// --- The flight -------------------------------------------------------------

struct FlightTest : SoundTest {
    QTemporaryDir dir;
    ReminderState reminders;
    Flight f;
    // What the window saw at each step.
    std::vector<Flight> steps;

    void load(const QString& messenger) {
        reminders.msg_anim = messenger;
        frmAnimate_Load(f, reminders, dir.path());
        frmAnimate_Paint(f);
    }
    FlightEnd fly(int speed) {
        return run_flight(f, speed, [this](const Flight& now) {
            steps.push_back(now);
            return true;
        });
    }
    // The Image1 left of each step where the banner changed its picture,
    // with the picture it took.
    std::vector<std::pair<int, int>> flaps() const {
        std::vector<std::pair<int, int>> out;
        int shown = banner_first;
        for (const Flight& s : steps)
            if (s.Imagesuffix.picture != shown) {
                shown = s.Imagesuffix.picture;
                out.emplace_back(s.Image1.left, shown);
            }
        return out;
    }
    QString flight_sound() const { return dir.filePath(QStringLiteral("airp-tdc10.wav")); }
};

using FrmAnimate = FlightTest;

TEST_F(FrmAnimate, TowingMessengerShowsThePlaneTowingAndSetsTheFlight) {
    load(QStringLiteral("2"));
    EXPECT_TRUE(f.Image1.visible);
    EXPECT_EQ(f.Image1.picture, plane_towing);
    EXPECT_EQ(f.fly_end, 8445 - 480 + 0);
    EXPECT_EQ(f.fly_x, 480 + 240);
    EXPECT_EQ(f.Timer1_tag, flight_sound());
    EXPECT_TRUE(f.topmost);
}

TEST_F(FrmAnimate, PlaneAloneTakesPictureFour) {
    load(QStringLiteral("3"));
    EXPECT_TRUE(f.Image1.visible);
    EXPECT_EQ(f.Image1.picture, plane_alone);
    EXPECT_EQ(f.Timer1_tag, flight_sound());
}

TEST_F(FrmAnimate, FlyEndCountsTheWindowsLeftAtLoad) {
    f.left = 300;
    reminders.msg_anim = QStringLiteral("3");
    frmAnimate_Load(f, reminders, dir.path());
    EXPECT_EQ(f.fly_end, 8445 - 480 + 300);
}

TEST_F(FrmAnimate, BeforeItsFirstPaintTheWindowSitsInTheCornerOverACapture) {
    f.left = 700;
    f.top = 90;
    load(QStringLiteral("2"));
    EXPECT_EQ(f.left, 0);
    EXPECT_EQ(f.top, 0);
    EXPECT_EQ(f.Picture1.left, 0);
    EXPECT_EQ(f.Picture1.top, 0);
    EXPECT_EQ(f.Picture1.width, 8445);
    EXPECT_EQ(f.Picture1.height, 1200);
    EXPECT_TRUE(f.captured);
}

TEST_F(FrmAnimate, FlightSoundPlaysThenStopsAndTheWindowCloses) {
    load(QStringLiteral("3"));
    EXPECT_EQ(fly(50), FlightEnd::closed);
    EXPECT_EQ(speakers.calls,
              (QStringList{QStringLiteral("wav ") + flight_sound(), QStringLiteral("stop")}));
    EXPECT_FALSE(f.Timer1_enabled);
    EXPECT_TRUE(f.closed);
    EXPECT_TRUE(m.shown.empty());
}

TEST_F(FrmAnimate, FlightSoundMissingIsSilentAndNoMessageComes) {
    speakers.missing_files_fail = true;
    speakers.wav_default = WavStart::error; // would speak up if the file were there
    load(QStringLiteral("2"));
    EXPECT_EQ(fly(10), FlightEnd::closed);
    EXPECT_TRUE(m.shown.empty());
    EXPECT_TRUE(f.closed);
    EXPECT_FALSE(steps.empty());
}

TEST_F(FrmAnimate, PlaneAloneFliesToTheEndWithPictureFour) {
    load(QStringLiteral("3"));
    fly(7);
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(steps.front().Image1.left, 720);
    for (const Flight& s : steps) {
        EXPECT_EQ(s.Image1.picture, plane_alone);
        EXPECT_EQ(s.Imagesuffix.picture, 0);
    }
    EXPECT_GE(f.fly_x, f.fly_end);
    EXPECT_EQ(steps.size(), size_t((7965 - 720 + 6) / 7));
}

TEST_F(FrmAnimate, BannerTrailsThePlane) {
    load(QStringLiteral("2"));
    fly(3);
    ASSERT_FALSE(steps.empty());
    for (const Flight& s : steps) {
        EXPECT_EQ(s.Image1.picture, plane_towing);
        EXPECT_EQ(s.Imagesuffix.left, s.Image1.left - 480);
        EXPECT_EQ(s.Imagesuffix.top, s.Image1.top);
    }
}

TEST_F(FrmAnimate, SpeedOneWithMessengerTwoFlapsEvery1500Twips) {
    load(QStringLiteral("2"));
    fly(1);
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(steps.front().Imagesuffix.picture, banner_first);
    // The plane starts at 720 and flies to 7964: 7245 steps, a flap at every
    // 1500th, turning between pictures 3 and 4.
    const std::vector<std::pair<int, int>> expected{
        {720 + 1499, 3}, {720 + 2999, 4}, {720 + 4499, 3}, {720 + 5999, 4}};
    EXPECT_EQ(flaps(), expected);
    EXPECT_EQ(steps.back().Image1.left, 7964);
}

class NeverFlap : public FlightTest, public ::testing::WithParamInterface<int> {};

TEST_P(NeverFlap, SpeedThatMisses1500NeverFlaps) {
    load(QStringLiteral("2"));
    fly(GetParam());
    ASSERT_FALSE(steps.empty());
    EXPECT_TRUE(flaps().empty());
    EXPECT_EQ(f.Imagesuffix.picture, banner_first);
    EXPECT_TRUE(f.closed);
}

INSTANTIATE_TEST_SUITE_P(Speeds, NeverFlap, ::testing::Values(7, 8, 9),
                         [](const auto& info) { return "speed_" + std::to_string(info.param); });

TEST_F(FrmAnimate, SpeedsThatDivide1500FlapAtEachMultiple) {
    load(QStringLiteral("2"));
    fly(10);
    const std::vector<std::pair<int, int>> expected{
        {720 + 1490, 3}, {720 + 2990, 4}, {720 + 4490, 3}, {720 + 5990, 4}};
    EXPECT_EQ(flaps(), expected);
}

TEST_F(FrmAnimate, WindowWiderScreenKeepsTheDesignedSizeAndTheFlightEndsAtItsRightEdge) {
    // Nothing of the screen reaches the logic: on any screen the window is
    // the width it was designed with.
    load(QStringLiteral("3"));
    fly(9);
    EXPECT_EQ(f.width, 8445);
    EXPECT_EQ(f.height, 1200);
    const Sprite& last = steps.back().Image1;
    EXPECT_LE(last.left + last.width, f.width);
    EXPECT_GE(last.left + last.width, f.width - 9);
}

struct OtherMessenger : FlightTest, ::testing::WithParamInterface<const char*> {};

TEST_P(OtherMessenger, FliesNothing) {
    load(QString::fromUtf8(GetParam()));
    EXPECT_FALSE(f.Image1.visible);
    EXPECT_EQ(f.Timer1_tag, QString());
    EXPECT_TRUE(f.topmost);
    EXPECT_EQ(fly(1), FlightEnd::closed);
    EXPECT_TRUE(steps.empty());
    EXPECT_TRUE(f.closed);
    EXPECT_FALSE(f.Timer1_enabled);
    // No tag: the empty path asks for nothing audible, then the stop.
    EXPECT_EQ(speakers.calls, (QStringList{QStringLiteral("wav "), QStringLiteral("stop")}));
    EXPECT_TRUE(m.shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Messengers, OtherMessenger,
                         ::testing::Values("1", "", "Jet Set", " 2", "22", "4"),
                         [](const auto& info) {
                             std::string n;
                             for (const char* c = info.param; *c; ++c)
                                 n += std::isalnum(static_cast<unsigned char>(*c)) ? *c : '_';
                             return "text_" + n;
                         });

TEST_F(FrmAnimate, FaultDuringTheFlightShowsAnimationErrorDisablesTheTimerAndLeavesTheWindowOpen) {
    load(QStringLiteral("2"));
    int n = 0;
    const FlightEnd end = run_flight(f, 1, [&n](const Flight&) { return ++n < 10; });
    EXPECT_EQ(end, FlightEnd::fault);
    EXPECT_EQ(n, 10);
    EXPECT_EQ(m.messages(), std::vector<QString>{QStringLiteral("Animation Error")});
    EXPECT_EQ(m.shown[0].style, MsgStyle::Critical);
    EXPECT_FALSE(f.Timer1_enabled);
    EXPECT_FALSE(f.closed);
    // The plane stays where the fault found it.
    EXPECT_EQ(f.Image1.left, 720 + 9);
    EXPECT_FALSE(speakers.calls.contains(QStringLiteral("stop")));
}

TEST_F(FrmAnimate, SpeedZeroFliesAsOne) {
    load(QStringLiteral("3"));
    fly(0);
    ASSERT_GE(steps.size(), 2u);
    EXPECT_EQ(steps[1].Image1.left - steps[0].Image1.left, 1);
    EXPECT_TRUE(f.closed);
}

TEST_F(FrmAnimate, NegativeSpeedIsAFaultBeforeAnyStep) {
    load(QStringLiteral("3"));
    EXPECT_EQ(fly(-5), FlightEnd::fault);
    EXPECT_TRUE(steps.empty());
    EXPECT_EQ(m.messages(), std::vector<QString>{QStringLiteral("Animation Error")});
    EXPECT_FALSE(f.closed);
}

TEST(FlightSpeed, ZeroIsReadAsOneAndStoredBack) {
    OptionsState options;
    options.anim_speed = 0;
    EXPECT_EQ(flight_speed(options), 1);
    EXPECT_EQ(options.anim_speed, 1);
    options.anim_speed = 6;
    EXPECT_EQ(flight_speed(options), 6);
}

} // namespace
} // namespace orva
