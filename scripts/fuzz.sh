#!/usr/bin/env bash
# Builds the fuzz targets of fuzz/ with clang (libFuzzer, AddressSanitizer,
# UndefinedBehaviorSanitizer) into build-fuzz/ and runs all of them at once,
# each for SECONDS seconds of wall time (default 60); names of targets after
# SECONDS run only those.
#
#   scripts/fuzz.sh [SECONDS [NAME...]]
#
# Each target starts from its seed corpus (made from files of the
# repository as fuzz/targets.txt says) and from what earlier runs found,
# kept in build-fuzz/corpus/NAME. An input that breaks a target is kept as
# build-fuzz/artifacts/NAME-crash-...; replay it with build-fuzz/NAME FILE.
# Exits 1 when a target failed, after printing the end of its log.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
only=" $* "
dir=build-fuzz

cxx=$(command -v clang++-14 || command -v clang++ || true)
if [ -z "$cxx" ]; then
  echo "fuzz: no clang++; scripts/install-deps.sh installs it" >&2
  exit 1
fi
if [ ! -f "$dir/CMakeCache.txt" ]; then
  generator=()
  if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi
  launcher=()
  if command -v ccache >/dev/null 2>&1; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
  cmake -S fuzz -B "$dir" "${generator[@]}" "${launcher[@]}" -DCMAKE_CXX_COMPILER="$cxx"
fi
cmake --build "$dir" --parallel "$(nproc)"

# The targets write their scratch files to memory where they can.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
mkdir -p "$dir/artifacts"
names=()
pids=()
while read -r name mode globs; do
  if [ "$only" != "  " ] && [[ "$only" != *" $name "* ]]; then continue; fi
  corpus=$dir/corpus/$name
  mkdir -p "$corpus"
  # shellcheck disable=SC2086  # the globs are meant to expand
  for file in $globs; do
    [ -f "$file" ] || continue
    if [ "$mode" = files ]; then
      cp "$file" "$corpus/seed-$(basename "$file")"
    else
      tr -d '\r' < "$file" | sort -u | split -l 1 -a 4 - "$corpus/seed-$(basename "$file")-"
    fi
  done
  "$dir/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$dir/artifacts/$name-" -print_final_stats=1 "$corpus" \
    > "$dir/$name.log" 2>&1 &
  names+=("$name")
  pids+=($!)
done < <(grep -E '^[A-Za-z]' fuzz/targets.txt)

failed=0
passed=0
for i in "${!names[@]}"; do
  if wait "${pids[$i]}"; then
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$dir/${names[$i]}.log" | grep -o '[0-9]*$' || echo "?")
    echo "fuzz: ${names[$i]} ran clean for ${seconds} s ($runs inputs)"
    passed=$((passed + 1))
  else
    echo "fuzz: ${names[$i]} FAILED; end of $dir/${names[$i]}.log:" >&2
    tail -n 40 "$dir/${names[$i]}.log" >&2
    failed=$((failed + 1))
  fi
done
if [ "${#names[@]}" -eq 0 ]; then
  echo "fuzz: no target named$only in fuzz/targets.txt" >&2
  exit 1
fi
echo "fuzz: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
