#pragma once

#include <QString>

namespace orva {

// What happened to a request to start a WAV file.
enum class WavStart {
    playing, // started; returns at once, the sound goes on by itself
    failed,  // nothing is heard (missing, unreadable, not a sound, no device); no error
    error,   // the sound system itself faulted: the caller tells the user
};

// The one way to the speakers. WAV files play through a simple call that
// returns at once; MP3 files through a device opened by alias, played without
// waiting and closed all together, as the note's OK does. The program installs
// a Qt Multimedia device; tests install one that records what was asked.
class SoundDevice {
  public:
    virtual ~SoundDevice() = default;

    // Starts `path` and returns at once; whatever played before stops.
    virtual WavStart play_wav_file(const QString& path) = 0;
    // Stops a playing WAV file; nothing when none plays.
    virtual void stop_wav() = 0;

    // Opens `path` under `alias` and waits until it is ready. 0 or an error
    // code, which mci_error_string() may put in words.
    virtual int mci_open(const QString& path, const QString& alias) = 0;
    // Plays the device opened as `alias` without waiting. 0 or an error code.
    virtual int mci_play(const QString& alias) = 0;
    // Closes every open device; a playing MP3 stops.
    virtual void mci_close_all() = 0;
    // The system's words for an error code; empty when it has none.
    virtual QString mci_error_string(int code) const = 0;
};

// The installed device. Before anything is installed a silent one plays
// nothing and reports every WAV as failed, so headless code makes no sound.
SoundDevice& sound();
void install_sound(SoundDevice* device);

} // namespace orva
