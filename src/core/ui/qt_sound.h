#pragma once

#include "core/sound.h"

#include <QObject>
#include <QString>
#include <map>

class QAudioOutput;
class QMediaPlayer;

namespace orva {

// Asks Qt Multimedia for its FFmpeg backend, which decodes WAV and MP3 with
// the libraries libqt6multimedia6 brings; the GStreamer one would need
// plug-in packages a desktop may lack. A backend the user chose in
// QT_MEDIA_BACKEND stays. Call before the first QApplication.
void prefer_ffmpeg_backend();

// The sound seam on Qt Multimedia: one player for WAV files, one per open
// alias. Everything is asynchronous; nothing here waits for the speakers or
// a decoder, so a machine without an audio output (a server, CI, a desktop
// whose sound server is down) hears nothing and never hangs. Decoding faults
// found later are logged under orvacal.sound.
class QtSoundDevice final : public QObject, public SoundDevice {
    Q_OBJECT
  public:
    // Error codes of mci_open and mci_play; mci_error_string words them.
    enum Code : int {
        file_not_found = 275,
        file_unreadable = 276,
        alias_in_use = 289,
        alias_not_open = 263,
    };

    explicit QtSoundDevice(QObject* parent = nullptr);
    ~QtSoundDevice() override;

    // failed for a file that is missing, unreadable or no RIFF/WAVE file,
    // and on a machine with no audio output; error only when Qt has no
    // multimedia backend to play with.
    WavStart play_wav_file(const QString& path) override;
    void stop_wav() override;

    // The file must exist and be readable; it then loads in the background
    // and 0 comes back at once. Without an audio output the alias still
    // opens, silent, so the caller's open/play/close runs as anywhere else.
    // An alias already open is refused until "close all".
    int mci_open(const QString& path, const QString& alias) override;
    int mci_play(const QString& alias) override;
    void mci_close_all() override;
    QString mci_error_string(int code) const override;

    // Whether the system offers an audio output now.
    static bool has_output();

  private:
    struct Opened {
        QMediaPlayer* player = nullptr; // null where there is no output
        QString path;
    };
    // A player bound to the default output, reporting its faults to the log.
    QMediaPlayer* make_player(const QString& what);
    static void drop(QMediaPlayer* player);

    QMediaPlayer* wav_ = nullptr;
    std::map<QString, Opened> opened_;
};

} // namespace orva
