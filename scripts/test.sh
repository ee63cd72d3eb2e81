#!/usr/bin/env bash
# Installs what is missing, builds the library, its tests, examples and
# benchmarks, and runs the whole test suite (the examples included).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZEB_BUILD_DIR:-$root/build}
"$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DZEB_TESTS=ON -DZEB_BENCH=ON >/dev/null
cmake --build "$build" -j "$(nproc)"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" --timeout 1200
