#!/usr/bin/env bash
# Installs what is missing, builds, and runs the whole test suite: first the
# optimised build, then a Debug build with AddressSanitizer and
# UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
jobs=$(nproc)

scripts/build.sh build
(cd build && ctest --output-on-failure --parallel "$jobs")

scripts/build.sh build-asan -DCMAKE_BUILD_TYPE=Debug -DAZTRUE_SANITIZE=ON -DAZTRUE_BUILD_BENCHMARKS=OFF
(cd build-asan && ctest --output-on-failure --parallel "$jobs")
