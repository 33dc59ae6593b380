#include "core/sound.h"

namespace orva {
namespace {

class SilentSound final : public SoundDevice {
  public:
    WavStart play_wav_file(const QString&) override { return WavStart::failed; }
    void stop_wav() override {}
    int mci_open(const QString&, const QString&) override { return 0; }
    int mci_play(const QString&) override { return 0; }
    void mci_close_all() override {}
    QString mci_error_string(int) const override { return {}; }
};

SilentSound silent;
SoundDevice* current = &silent;

} // namespace

SoundDevice& sound() {
    return *current;
}
void install_sound(SoundDevice* device) {
    current = device ? device : &silent;
}

} // namespace orva
