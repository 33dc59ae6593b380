#pragma once

#include "core/clock.h"
#include "state/app_state.h"
#include "store/archive.h"
#include "views/day_layout.h"

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <QtGlobal>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>

// What the fuzz targets share. Each target is one libFuzzer entry point over
// a real path of the program, headless: no QApplication, the silent modal
// seam that answers No and chooses nothing, a clock that stands still and a
// window port that lays the day page out as the main window would.

namespace orva::fuzz {

// The day the clock stands on: the month the seed inputs are written for.
inline const QDateTime fuzz_now(QDate(2026, 3, 15), QTime(9, 10));

// The main window as the logic sees it, at 96 dpi on a 1920x1040 work area.
// Laying out computes the day page from the frame it was last moved to, held
// to the sizes a real widget can take, and gives the grids their extents.
class FuzzWindow final : public WindowPort {
  public:
    explicit FuzzWindow(PlannerState& view) : view_(view) {}

    QRect work_area() const override { return {0, 0, 1920 * 15, 1040 * 15}; }
    QRect frame() const override { return frame_; }
    void move_to(const QRect& r) override { frame_ = r; }
    int window_state() const override { return state_; }
    void set_window_state(int s) override { state_ = s; }
    bool status_bar_visible() const override { return bar_; }
    void set_status_bar_visible(bool on) override { bar_ = on; }
    double twips_per_pixel_x() const override { return 15; }
    double twips_per_pixel_y() const override { return 15; }
    void layout_view() override {
        // A widget is at most 16777215 pixels either way, whatever it is asked for.
        constexpr int widest = 16777215 * 15;
        const int w = std::clamp(frame_.width(), 0, widest);
        const int h = std::clamp(frame_.height(), 0, widest);
        apply_day_extents(view_, layout_day(w, h));
    }
    void show_day_view() override {}
    void show_long_date(const QString&) override {}
    void set_busy(bool) override {}
    bool hide_to_tray() override { return false; }
    void sync_menus() override {}
    void end_program() override {}

  private:
    PlannerState& view_;
    QRect frame_{0, 0, 11910, 8550};
    int state_ = 0;
    bool bar_ = true;
};

// The program logs every damaged line and member under orvacal.store; a
// fuzzer meets thousands a second, and printing them would be most of its
// work. The messages are still formatted: only the printing is dropped.
inline void quiet_messages(QtMsgType type, const QMessageLogContext&, const QString& msg) {
    if (type == QtFatalMsg) {
        fprintf(stderr, "%s\n", qPrintable(msg));
        abort();
    }
}

// Once per process: the clock stopped and the log quiet.
inline void init_process() {
    static FixedClock clock(fuzz_now);
    install_clock(&clock);
    qInstallMessageHandler(&quiet_messages);
}

// The calendar holds exactly these members afterwards, in one command, so
// that nothing of one input is left for the next.
inline void replace_members(Archive& a, const QString& cal,
                            const std::map<QString, QByteArray>& members) {
    Archive::Command command(a, cal);
    for (const QString& name : a.members(cal))
        if (!members.count(name)) (void)a.drop(cal, name);
    for (const auto& [name, bytes] : members)
        (void)a.put(cal, name, bytes);
    (void)command.finish();
}

// One calendar file for the life of the process, that every input replaces.
struct ScratchFolder {
    QTemporaryDir dir;
    QString cal = dir.filePath(QStringLiteral("calendar.cal"));
};

inline ScratchFolder& scratch_folder() {
    static ScratchFolder f;
    return f;
}

// The bytes libFuzzer hands over, as a QByteArray that owns a copy.
inline QByteArray bytes_of(const uint8_t* data, size_t size) {
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

} // namespace orva::fuzz
