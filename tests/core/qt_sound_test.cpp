#include "core/ui/qt_sound.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

namespace orva {
namespace {

// The real device on whatever this machine has: usually no audio output at
// all, where every call must still come back and say what it would say.
struct QtSound : ::testing::Test {
    static void SetUpTestSuite() { prefer_ffmpeg_backend(); }

    QTemporaryDir dir;
    QtSoundDevice device;

    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return path;
    }
    // A few MPEG-1 Layer III frames at 128 kbit/s, 44.1 kHz: headers and
    // empty side information, which decode to silence.
    QString silent_mp3(const QString& name) {
        QByteArray frame(417, '\0');
        frame[0] = char(0xFF);
        frame[1] = char(0xFB);
        frame[2] = char(0x90);
        frame[3] = char(0x44);
        return write(name, frame.repeated(40));
    }
    // Lets queued work (loading, deletions) run for a moment.
    static void settle() {
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
};

TEST_F(QtSound, MissingWavFailsSilently) {
    EXPECT_EQ(device.play_wav_file(dir.filePath(QStringLiteral("airp-tdc10.wav"))),
              WavStart::failed);
}

TEST_F(QtSound, EmptyPathFails) {
    EXPECT_EQ(device.play_wav_file(QString()), WavStart::failed);
}

TEST_F(QtSound, FileThatIsNoWavFails) {
    const QString path = write(QStringLiteral("notes.wav"), "just some words, no sound");
    EXPECT_EQ(device.play_wav_file(path), WavStart::failed);
}

TEST_F(QtSound, ShippedWavStartsOrFailsAndNeverHangs) {
    const QString path = QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/airp-tdc10.wav");
    const WavStart start = device.play_wav_file(path);
    if (QtSoundDevice::has_output())
        EXPECT_EQ(start, WavStart::playing);
    else
        EXPECT_EQ(start, WavStart::failed);
    settle();
    device.play_wav_file(path);
    device.stop_wav();
    device.stop_wav();
    settle();
}

TEST_F(QtSound, MissingMp3GivesACodeWithWords) {
    const int code =
        device.mci_open(dir.filePath(QStringLiteral("gone.mp3")), QStringLiteral("MP3_Device1"));
    EXPECT_NE(code, 0);
    EXPECT_FALSE(device.mci_error_string(code).isEmpty());
    // Nothing was opened, so nothing plays.
    EXPECT_NE(device.mci_play(QStringLiteral("MP3_Device1")), 0);
}

TEST_F(QtSound, FolderIsNoMp3) {
    EXPECT_EQ(device.mci_open(dir.path(), QStringLiteral("MP3_Device1")),
              QtSoundDevice::file_not_found);
}

TEST_F(QtSound, Mp3WithBlanksInItsPathOpensPlaysAndClosesWithoutHanging) {
    ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("My Songs")));
    const QString path = silent_mp3(QStringLiteral("My Songs/wake up.mp3"));
    EXPECT_EQ(device.mci_open(path, QStringLiteral("MP3_Device1")), 0);
    EXPECT_EQ(device.mci_play(QStringLiteral("MP3_Device1")), 0);
    settle();
    device.mci_close_all();
    settle();
}

TEST_F(QtSound, AnOpenAliasIsRefusedUntilCloseAll) {
    const QString path = silent_mp3(QStringLiteral("a.mp3"));
    ASSERT_EQ(device.mci_open(path, QStringLiteral("MP3_Device1")), 0);
    const int again = device.mci_open(path, QStringLiteral("MP3_Device1"));
    EXPECT_EQ(again, QtSoundDevice::alias_in_use);
    EXPECT_FALSE(device.mci_error_string(again).isEmpty());
    device.mci_close_all();
    EXPECT_EQ(device.mci_open(path, QStringLiteral("MP3_Device1")), 0);
}

TEST_F(QtSound, PlayOfAnAliasNeverOpenedIsRefused) {
    EXPECT_EQ(device.mci_play(QStringLiteral("MP3_Device1")), QtSoundDevice::alias_not_open);
}

TEST_F(QtSound, UnknownCodeHasNoWords) {
    EXPECT_EQ(device.mci_error_string(12345), QString());
    EXPECT_EQ(device.mci_error_string(0), QString());
}

TEST_F(QtSound, DeviceGoneWhilePlayingLeavesNothingBehind) {
    auto other = std::make_unique<QtSoundDevice>();
    other->play_wav_file(QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/airp-tdc10.wav"));
    const QString mp3 = silent_mp3(QStringLiteral("b.mp3"));
    ASSERT_EQ(other->mci_open(mp3, QStringLiteral("MP3_Device1")), 0);
    other->mci_play(QStringLiteral("MP3_Device1"));
    other.reset();
    settle();
}

} // namespace
} // namespace orva
