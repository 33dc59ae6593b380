#include "reminders/messenger.h"

#include "core/logging.h"
#include "core/modal.h"
#include "core/sound.h"
#include "state/options_state.h"
#include "state/reminder_state.h"

#include <QDir>

namespace orva {

void play_wav(const QString& path) {
    if (path == stop_sound_path) {
        sound().stop_wav();
        return;
    }
    switch (sound().play_wav_file(path)) {
    case WavStart::playing:
        break;
    case WavStart::failed:
        // A reminder whose sound file went missing still shows; the user
        // notices the silence, a message would only stand in the way.
        qCInfo(lcSound) << "WAV file not played:" << path;
        break;
    case WavStart::error:
        modal().message(wav_error_text, MsgStyle::Critical);
        break;
    }
}

QString short_path(const QString& path) {
    return path;
}

QString mp3_open_command(const QString& path) {
    return QStringLiteral("open ") + path + QStringLiteral(" type MPEGVideo alias ") + mp3_alias +
           QStringLiteral(" wait");
}

void play_mp3(const QString& path) {
    const QString p = short_path(path);
    qCDebug(lcSound) << mp3_open_command(p);
    int code = sound().mci_open(p, mp3_alias);
    if (code == 0) code = sound().mci_play(mp3_alias);
    if (code != 0) {
        qCWarning(lcSound) << "MP3 file not played:" << p << "code" << code;
        modal().message(mci_error_text(code), MsgStyle::Critical);
    }
}

void close_all_sound() {
    play_wav(stop_sound_path);
    sound().mci_close_all();
}

QString mci_error_text(int code) {
    const QString words = cut_at_nul(sound().mci_error_string(code));
    return words.isEmpty() ? mci_unknown_error_text : words;
}

QString cut_at_nul(const QString& text) {
    const qsizetype nul = text.indexOf(QChar(u'\0'));
    return nul < 0 ? text : text.left(nul);
}

void frmAnimate_Load(Flight& f, const ReminderState& reminders, const QString& app_path) {
    f.msg_anim = reminders.msg_anim;
    if (f.msg_anim == u"2" || f.msg_anim == u"3") {
        f.Image1.visible = true;
        f.Image1.picture = f.msg_anim == u"2" ? plane_towing : plane_alone;
        f.fly_end = f.width - f.Image1.width + f.left;
        f.fly_x = f.Image1.width + f.Image1.left;
        f.Timer1_tag = QDir(app_path).filePath(flight_sound_name);
    }
    f.topmost = true;
}

void frmAnimate_Paint(Flight& f) {
    f.left = 0;
    f.top = 0;
    f.Picture1.left = 0;
    f.Picture1.top = 0;
    f.Picture1.width = f.width;
    f.Picture1.height = f.height;
    f.captured = true;
}

int flight_speed(OptionsState& options) {
    if (options.anim_speed == 0) options.anim_speed = 1;
    return options.anim_speed;
}

namespace {

FlightEnd fault(Flight& f) {
    modal().message(animation_error_text, MsgStyle::Critical);
    f.Timer1_enabled = false;
    return FlightEnd::fault;
}

} // namespace

FlightEnd run_flight(Flight& f, int speed, const FlightStep& step) {
    if (speed == 0) speed = 1;
    if (speed < 0) return fault(f);

    play_wav(f.Timer1_tag);
    if (f.msg_anim == u"3") {
        f.Image1.picture = plane_alone;
        while (f.fly_x < f.fly_end) {
            f.Image1.left = f.fly_x;
            f.fly_x += speed;
            if (!step(f)) return fault(f);
        }
    } else if (f.msg_anim == u"2") {
        f.Imagesuffix.picture = banner_first;
        f.frame = 3;
        f.counter = 0;
        while (f.fly_x < f.fly_end) {
            f.counter += speed;
            f.Image1.left = f.fly_x;
            if (f.counter == flap_twips) {
                f.Imagesuffix.picture = f.frame;
                // 3 turns to 4 and anything else to 3, so the banner's place
                // shows picture 4, the plane alone, at every other flap: two
                // planes in line until the next flap brings the banner back.
                f.frame = f.frame == 3 ? 4 : 3;
                f.counter = 0;
            }
            f.Imagesuffix.left = f.Image1.left - f.Imagesuffix.width;
            f.Imagesuffix.top = f.Image1.top;
            f.fly_x += speed;
            if (!step(f)) return fault(f);
        }
    }
    f.Timer1_enabled = false;
    play_wav(stop_sound_path);
    f.closed = true;
    return FlightEnd::closed;
}

} // namespace orva
