#!/usr/bin/env bash
# Installs the built library into a fresh prefix and builds and runs a user's
# CMake project against it.  Usage: tests/package/check.sh BUILD
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
prefix=$build/package-test/prefix
rm -rf "$build/package-test"
cmake --install "$build" --prefix "$prefix" >/dev/null
cmake -S "$here" -B "$build/package-test/build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$build/package-test/build" >/dev/null
out=$(LD_LIBRARY_PATH=$prefix/lib "$build/package-test/build/consumer")
[ "$out" = "11.631728 0" ] || { echo "unexpected output: $out"; exit 1; }
echo "package: found, built and ran"
