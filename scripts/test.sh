#!/usr/bin/env bash
# Installs what is missing, builds, and runs the whole test suite: first the
# optimised build, then a Debug build with AddressSanitizer and
# UndefinedBehaviorSanitizer, then every fuzz target for 20 seconds where
# clang can link libFuzzer.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
jobs=$(nproc)

scripts/build.sh build
(cd build && ctest --output-on-failure --parallel "$jobs")

scripts/build.sh build-asan -DCMAKE_BUILD_TYPE=Debug -DAZTRUE_SANITIZE=ON -DAZTRUE_BUILD_BENCHMARKS=OFF
(cd build-asan && ctest --output-on-failure --parallel "$jobs")

probe='extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }'
clang=$(command -v clang++-14 || command -v clang++ || echo false)
if echo "$probe" | "$clang" -x c++ -fsanitize=fuzzer -o /dev/null - 2>/dev/null; then
  scripts/fuzz.sh 20
else
  echo "test.sh: fuzz targets skipped: no clang with libFuzzer (scripts/install-deps.sh installs them)"
fi
