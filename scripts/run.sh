#!/usr/bin/env bash
# Installs what is missing, builds, installs the D-Bus service file of the
# automation server for the user (so that a client's first call starts
# it), and runs Aztrue's main job on the shipped sample calibration: the
# main window when a display is available, else the fit report.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh build
scripts/install-dbus-service.sh build/aztrue
if [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; then
    exec build/aztrue data/sample.AZT
fi
build/aztrue fit data/sample.AZT
