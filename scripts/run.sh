#!/usr/bin/env bash
# Installs what is missing, builds, and runs Aztrue's main job.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh build
build/aztrue --version
