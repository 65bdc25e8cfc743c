#!/usr/bin/env bash
# Installs what is missing, builds, and runs Aztrue's main job: the fit of the
# shipped sample calibration.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh build
build/aztrue fit data/sample.AZT
