#!/usr/bin/env bash
# Configures and builds Aztrue into the folder given (default: build),
# with any extra CMake arguments after it.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build}
shift || true
generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi
if [ ! -f "$dir/CMakeCache.txt" ]; then
  cmake -S . -B "$dir" "${generator[@]}" "$@"
fi
cmake --build "$dir" --parallel "$(nproc)"
