#!/usr/bin/env bash
# Builds and runs every benchmark: the fit, the sky chain, the server's calls
# and the files in process, then the automation server over a private D-Bus
# session bus. Medians of five runs.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh build
build/bench/aztrue_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"
dbus-run-session -- build/bench/dbus_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
