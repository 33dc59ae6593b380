#pragma once

#include "core/sound.h"

#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <deque>
#include <map>

namespace orva::testing {

// The sound seam as a test drives it: every call is recorded in order as a
// line of text, and what the speakers answer is scripted ahead.
//
//   "wav <path>"              play_wav_file
//   "stop"                    stop_wav
//   "open <path> <alias>"     mci_open
//   "play <alias>"            mci_play
//   "close all"               mci_close_all
//
// Error strings are looked up without being recorded: they only read.
class RecordingSound final : public SoundDevice {
  public:
    QStringList calls;

    // Answers taken in turn; when a queue is empty the default answers.
    std::deque<WavStart> wav_results;
    WavStart wav_default = WavStart::playing;
    // As the speakers do: a WAV file that is not there answers failed,
    // whatever is queued.
    bool missing_files_fail = false;
    std::deque<int> open_results;
    int open_default = 0;
    std::deque<int> play_results;
    int play_default = 0;
    // The device's words by code; a code missing here has none.
    std::map<int, QString> error_strings;

    WavStart play_wav_file(const QString& path) override {
        calls << QStringLiteral("wav ") + path;
        if (missing_files_fail && !QFileInfo(path).isFile()) return WavStart::failed;
        return take(wav_results, wav_default);
    }
    void stop_wav() override { calls << QStringLiteral("stop"); }
    int mci_open(const QString& path, const QString& alias) override {
        calls << QStringLiteral("open ") + path + u' ' + alias;
        return take(open_results, open_default);
    }
    int mci_play(const QString& alias) override {
        calls << QStringLiteral("play ") + alias;
        return take(play_results, play_default);
    }
    void mci_close_all() override { calls << QStringLiteral("close all"); }
    QString mci_error_string(int code) const override {
        const auto it = error_strings.find(code);
        return it == error_strings.end() ? QString() : it->second;
    }

  private:
    template <class T> static T take(std::deque<T>& queue, T fallback) {
        if (queue.empty()) return fallback;
        T v = queue.front();
        queue.pop_front();
        return v;
    }
};

// Installs a device for the life of a test and puts the silent one back after.
class SoundGuard {
  public:
    explicit SoundGuard(SoundDevice* d) { install_sound(d); }
    ~SoundGuard() { install_sound(nullptr); }
};

} // namespace orva::testing
