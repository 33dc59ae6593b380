#!/usr/bin/env bash
# Installs the Debian 12 packages OrvaCal needs to build, run and test,
# asking apt only for what is missing. Uses sudo when not run as root.
set -euo pipefail

packages=(
  g++ cmake make pkg-config
  qt6-base-dev qt6-multimedia-dev qt6-svg-dev libqt6svg6 qt6-qpa-plugins libgl-dev
  libsqlite3-dev sqlite3 zlib1g-dev
  libgtest-dev googletest
  fonts-noto-color-emoji
  # Sound: Qt Multimedia with its FFmpeg backend plug-in, which brings the
  # FFmpeg decoders for WAV and MP3 (libavcodec59, libavformat59) and the
  # PulseAudio client; the desktop's sound server (PipeWire or PulseAudio)
  # does the rest. Without one the program plays nothing.
  libqt6multimedia6 libavcodec59 libavformat59 libswresample4 libpulse0
  xvfb xauth
  # A tray host for the tray test under Xvfb; the test skips without it.
  trayer
  dbus-daemon
  # The tests read printed pages back from PDF files (pdftotext, pdfinfo).
  poppler-utils
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
  sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update
"${sudo_cmd[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
