#!/usr/bin/env bash
# Installs what is missing, builds, installs the D-Bus service file of the
# automation server for the user (so that a client's first call starts
# it), and runs Aztrue's main job: the fit of the shipped sample
# calibration.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh build
scripts/install-dbus-service.sh build/aztrue
build/aztrue fit data/sample.AZT
