#!/usr/bin/env python3
"""Makes airp-tdc10.wav, the sound of the messenger's flight: a plane passing
by, its engine drone falling in pitch as it goes (the Doppler shift) over the
rush of air, faded in and out.

Only the standard library and a fixed seed, so the file comes out byte for
byte the same on every run:

    python3 data/make_flight_sound.py [out.wav]
"""

import math
import random
import struct
import sys
import wave

RATE = 22050          # samples per second, mono, 16-bit
SECONDS = 2.6
SOUND_SPEED = 343.0   # m/s
PLANE_SPEED = 70.0    # m/s: a small plane low overhead
NEAREST = 40.0        # m from the listener when it passes
PASS_AT = 1.35        # s into the sound the plane is nearest
ENGINE_HZ = 92.0      # the drone's fundamental as the pilot hears it
HARMONICS = [(1, 1.0), (2, 0.55), (3, 0.35), (4, 0.22), (6, 0.12), (8, 0.06)]
FADE = 0.35           # s of fade at each end
PEAK = 0.8            # of full scale


def envelope(t):
    """Loudness from distance, with the ends faded so the sound starts and
    stops without a click."""
    x = PLANE_SPEED * (t - PASS_AT)
    near = NEAREST / math.hypot(x, NEAREST)
    fade = min(1.0, t / FADE, (SECONDS - t) / FADE)
    return near * max(0.0, fade)


def pitch(t):
    """The drone's frequency heard at t: higher while the plane comes, lower
    once it has gone by."""
    x = PLANE_SPEED * (t - PASS_AT)
    towards = -x / math.hypot(x, NEAREST)  # share of its speed coming our way
    return ENGINE_HZ * SOUND_SPEED / (SOUND_SPEED - PLANE_SPEED * towards)


def samples():
    rng = random.Random(10)
    n = int(RATE * SECONDS)
    phase = 0.0
    low = 0.0   # the air's rush: white noise through two one-pole filters
    lower = 0.0
    wobble = 0.0
    out = []
    for i in range(n):
        t = i / RATE
        phase += 2.0 * math.pi * pitch(t) / RATE
        # The propeller's beat makes the drone throb a little.
        throb = 1.0 + 0.15 * math.sin(2.0 * math.pi * 11.0 * t)
        drone = sum(a * math.sin(k * phase) for k, a in HARMONICS) * throb
        white = rng.uniform(-1.0, 1.0)
        low += 0.08 * (white - low)
        lower += 0.3 * (low - lower)
        wobble += 0.002 * (rng.uniform(-1.0, 1.0) - wobble)
        air = lower * (3.5 + 20.0 * wobble)
        out.append(envelope(t) * (0.55 * drone / 2.3 + 0.45 * air))
    top = max(abs(v) for v in out) or 1.0
    return [int(round(v / top * PEAK * 32767)) for v in out]


def main():
    path = sys.argv[1] if len(sys.argv) > 1 else "airp-tdc10.wav"
    data = samples()
    with wave.open(path, "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(2)
        w.setframerate(RATE)
        w.writeframes(struct.pack("<%dh" % len(data), *data))


if __name__ == "__main__":
    main()
