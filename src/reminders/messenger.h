#pragma once

#include <QString>
#include <functional>

namespace orva {

struct OptionsState;
struct ReminderState;

inline const QString wav_error_text = QStringLiteral("Could not play WAV file.");
inline const QString mci_unknown_error_text = QStringLiteral("An unknown MCI error occurred.");
inline const QString animation_error_text = QStringLiteral("Animation Error");
// The one alias MP3 files are opened under; "close all" closes it.
inline const QString mp3_alias = QStringLiteral("MP3_Device1");
// Played while the messenger flies; it ships with the program and lives in
// the data folder.
inline const QString flight_sound_name = QStringLiteral("airp-tdc10.wav");
// The path that silences a playing WAV file instead of starting one.
inline const QString stop_sound_path = QStringLiteral(" ");

// --- Sound ------------------------------------------------------------------

// Starts a WAV file and returns at once; " " stops whatever plays. A file
// that cannot be heard (missing, not a sound, no speakers) stays silent; only
// a fault of the sound system shows wav_error_text.
void play_wav(const QString& path);

// The form of a path that a command line of words can carry. There is no
// short form here and none is needed: the device takes the path as one
// argument, never as words split at blanks, so "/home/me/My Songs/a.mp3"
// arrives whole. The path comes back unchanged.
QString short_path(const QString& path);

// What the program would send to open an MP3 file: "open " + path +
// " type MPEGVideo alias MP3_Device1 wait". Logged, never parsed.
QString mp3_open_command(const QString& path);

// Opens `path` as mp3_alias, waiting until it is ready, and plays it without
// waiting. A failed open sends no play; a failure of either shows
// mci_error_text. The device stays open until close_all_sound().
void play_mp3(const QString& path);

// Silences everything: a playing WAV file and every open device. The
// reminder note's OK calls it.
void close_all_sound();

// The device's words for an error code, cut at the first NUL, or
// mci_unknown_error_text when it has none.
QString mci_error_text(int code);

// The text up to its first NUL character; the whole text when it has none.
QString cut_at_nul(const QString& text);

// --- The messenger's flight -------------------------------------------------

// An Image or PictureBox of frmAnimate, in twips from the window's client
// corner.
struct Sprite {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int picture = 0; // 1-based index into ImageList1; 0 shows nothing
    bool visible = true;
};

// ImageList1's pictures, by index.
enum FlightPicture : int {
    plane_towing = 1,
    banner_first = 2,
    banner_second = 3,
    plane_alone = 4,
};

// frmAnimate as the logic sees it. Positions are twips; the window's own
// left and top are on the screen. The window keeps its designed size on any
// screen, so the flight always ends at its right edge.
struct Flight {
    int left = 0;
    int top = 0;
    int width = 8445;
    int height = 1200;
    bool topmost = false;
    bool closed = false;
    QString msg_anim; // the messenger chosen when the window loaded

    // The backdrop; `captured` asks the window to fill it with what the
    // screen shows beneath, so the window looks transparent.
    Sprite Picture1{0, 0, 8445, 1200, 0, true};
    bool captured = false;
    Sprite Image1{240, 120, 480, 480, 0, false};
    Sprite Imagesuffix{-240, 120, 480, 480, 0, true};

    bool Timer1_enabled = true;
    int Timer1_interval = 5; // milliseconds until the flight starts
    QString Timer1_tag;      // the flight sound's path; empty plays nothing

    int fly_end = 0; // the plane flies while fly_x is below this
    int fly_x = 0;   // where the plane's left edge goes next
    int frame = 3;   // the picture the banner takes at its next flap
    int counter = 0; // twips flown since the last flap
};

// Twips the banner flies between flaps. Only an exact hit flaps: a speed
// that does not divide it steps over it and the banner never flaps.
inline constexpr int flap_twips = 1500;

// Form_Load: with messenger "2" (picture 1, towing) or "3" (picture 4, alone)
// shows Image1, sets fly_end, fly_x and the flight sound (app_path +
// "/airp-tdc10.wav") as Timer1's tag. Any other messenger sets nothing up.
// The window is made topmost either way.
void frmAnimate_Load(Flight& f, const ReminderState& reminders, const QString& app_path);

// Before the first paint: the window moves to the screen's corner and the
// backdrop takes its whole area and a capture of the screen beneath.
void frmAnimate_Paint(Flight& f);

// The messenger's speed in twips per step. 0 is read as 1 and stored back.
int flight_speed(OptionsState& options);

// Called after every move of the flight. The window shows the new positions,
// runs pending events and returns false when it can go on no longer (it was
// destroyed, say): the flight then stops as on any fault.
using FlightStep = std::function<bool(const Flight&)>;

enum class FlightEnd {
    closed, // flown (or nothing to fly): sound stopped, window closed
    fault,  // "Animation Error" shown, Timer1 off, the window left open
};

// Timer1's first tick: the whole flight in one pass, `speed` twips per step.
// Plays Timer1's tag, flies the messenger chosen at load and ends by stopping
// the sound and closing the window. A fault stops it where it is: the message
// shows, Timer1 is disabled and the window stays until the user closes it.
// A speed of 0 flies as 1; a negative one would carry the plane away from its
// end for ever and counts as a fault at once.
FlightEnd run_flight(Flight& f, int speed, const FlightStep& step);

} // namespace orva
