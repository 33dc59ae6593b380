#include "core/ui/qt_sound.h"

#include "core/logging.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QUrl>

namespace orva {
namespace {

// A WAV file is a RIFF file of form WAVE; anything else the WAV route cannot
// play, whatever its name says.
bool is_wav(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QByteArray head = f.read(12);
    return head.size() == 12 && head.startsWith("RIFF") && head.mid(8, 4) == "WAVE";
}

} // namespace

void prefer_ffmpeg_backend() {
    if (qEnvironmentVariableIsEmpty("QT_MEDIA_BACKEND")) qputenv("QT_MEDIA_BACKEND", "ffmpeg");
}

QtSoundDevice::QtSoundDevice(QObject* parent) : QObject(parent) {}

QtSoundDevice::~QtSoundDevice() {
    stop_wav();
    mci_close_all();
}

bool QtSoundDevice::has_output() {
    return !QMediaDevices::audioOutputs().isEmpty();
}

QMediaPlayer* QtSoundDevice::make_player(const QString& what) {
    auto* player = new QMediaPlayer(this);
    // Owned by the player, so dropping the player drops it too.
    auto* out = new QAudioOutput(QMediaDevices::defaultAudioOutput(), player);
    player->setAudioOutput(out);
    connect(player, &QMediaPlayer::errorOccurred, this,
            [what](QMediaPlayer::Error, const QString& words) {
                qCWarning(lcSound) << "cannot play" << what << ":" << words;
            });
    return player;
}

void QtSoundDevice::drop(QMediaPlayer* player) {
    if (!player) return;
    player->stop();
    // Later, not now: a signal of this player may be on its way to us.
    player->deleteLater();
}

WavStart QtSoundDevice::play_wav_file(const QString& path) {
    stop_wav();
    const QFileInfo info(path);
    if (!info.isFile() || !is_wav(path)) {
        qCInfo(lcSound) << "no WAV file to play:" << path;
        return WavStart::failed;
    }
    if (!has_output()) {
        qCInfo(lcSound) << "no audio output for" << path;
        return WavStart::failed;
    }
    wav_ = make_player(path);
    if (!wav_->isAvailable()) {
        qCWarning(lcSound) << "Qt Multimedia has no backend to play" << path;
        drop(wav_);
        wav_ = nullptr;
        return WavStart::error;
    }
    wav_->setSource(QUrl::fromLocalFile(info.absoluteFilePath()));
    wav_->play();
    return WavStart::playing;
}

void QtSoundDevice::stop_wav() {
    drop(wav_);
    wav_ = nullptr;
}

int QtSoundDevice::mci_open(const QString& path, const QString& alias) {
    if (opened_.count(alias)) return alias_in_use;
    const QFileInfo info(path);
    if (!info.exists() || info.isDir()) return file_not_found;
    QFile probe(path);
    if (!probe.open(QIODevice::ReadOnly)) return file_unreadable;
    probe.close();

    Opened o;
    o.path = info.absoluteFilePath();
    if (has_output()) {
        o.player = make_player(path);
        o.player->setSource(QUrl::fromLocalFile(o.path));
    } else {
        qCInfo(lcSound) << "no audio output for" << path;
    }
    opened_.emplace(alias, o);
    return 0;
}

int QtSoundDevice::mci_play(const QString& alias) {
    const auto it = opened_.find(alias);
    if (it == opened_.end()) return alias_not_open;
    if (it->second.player) it->second.player->play();
    return 0;
}

void QtSoundDevice::mci_close_all() {
    for (auto& [alias, o] : opened_)
        drop(o.player);
    opened_.clear();
}

QString QtSoundDevice::mci_error_string(int code) const {
    switch (code) {
    case file_not_found:
        return QStringLiteral("The sound file cannot be found. Make sure the path and file name "
                              "are correct.");
    case file_unreadable:
        return QStringLiteral("The sound file cannot be read. Make sure you may open it.");
    case alias_in_use:
        return QStringLiteral("A sound is already open under this name. It must be closed "
                              "before another opens.");
    case alias_not_open:
        return QStringLiteral("No sound is open under this name.");
    }
    return {};
}

} // namespace orva
