#!/usr/bin/env bash
# Installs what is missing, builds the library, its tests, examples and
# benchmarks, and runs the whole test suite (the examples included).
set -euo pipefail
build=$("$(dirname "$0")/setup.sh" -DZEB_TESTS=ON -DZEB_BENCH=ON)
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" --timeout 1200
