#!/usr/bin/env bash
# Installs what is missing, builds the library and runs every example
# program against its expected output.
set -euo pipefail
here=$(dirname "$0")
build=$("$here/setup.sh" -DZEB_TESTS=OFF -DZEB_BENCH=OFF)
"$here/run-examples.sh" "$build"
