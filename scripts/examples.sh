#!/usr/bin/env bash
# Installs what is missing, builds the library and runs every example
# program against its expected output.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZEB_BUILD_DIR:-$root/build}
"$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DZEB_TESTS=OFF -DZEB_BENCH=OFF >/dev/null
cmake --build "$build" -j "$(nproc)"
"$root/scripts/run-examples.sh" "$build"
