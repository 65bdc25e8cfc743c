#!/usr/bin/env bash
# Configures and builds Aztrue into the folder given (default: build),
# with any extra CMake arguments after it.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build}
shift || true
generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi
# Recompiles come from ccache when it is installed (it is optional).
launcher=()
if command -v ccache >/dev/null 2>&1; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
if [ ! -f "$dir/CMakeCache.txt" ]; then
  cmake -S . -B "$dir" "${generator[@]}" "${launcher[@]}" "$@"
fi
cmake --build "$dir" --parallel "$(nproc)"
