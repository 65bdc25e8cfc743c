#!/usr/bin/env bash
# Installs, by Debian package name, everything Aztrue needs to build, test and
# run: compiler and build tools, GoogleTest, Google Benchmark, Qt 6 (Widgets,
# DBus), the D-Bus daemon for the automation tests, Xvfb for windows under a
# virtual display, python3-dbus for the example client, gdbus for
# calling the server by hand, and clang with libFuzzer for the fuzz targets
# (libclang-rt-14-dev holds libFuzzer for clang 14, the clang of Debian 12).
# Does nothing when all of it is present; uses sudo when not run as root.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev qt6-base-dev-tools libgl-dev
  dbus dbus-x11 xvfb xauth libglib2.0-bin
  python3 python3-dbus locales
  clang-14 libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
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
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
