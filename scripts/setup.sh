#!/usr/bin/env bash
# Installs what is missing and builds the library into BUILD (default build/).
# Usage: scripts/setup.sh [extra cmake options...]; prints the build directory.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZEB_BUILD_DIR:-$root/build}
"$root/scripts/install-deps.sh" >&2
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release "$@" >/dev/null
cmake --build "$build" -j "$(nproc)" >&2
echo "$build"
