#!/usr/bin/env bash
# Installs the built library into BUILD/stage, compiles every example program
# as a real client (C99 through pkg-config, Fortran through the interface
# module) and compares its output with the expected output beside it.
# Usage: scripts/run-examples.sh BUILD [example-name-filter]
set -euo pipefail
build=$(cd "$1" && pwd)
filter=${2:-}
root=$(cd "$(dirname "$0")/.." && pwd)
stage=$build/stage
cmake --install "$build" --prefix "$stage" >/dev/null
export PKG_CONFIG_PATH=$stage/lib/pkgconfig:$stage/lib/x86_64-linux-gnu/pkgconfig
libdir=$(pkg-config --variable=libdir zeb)
export LD_LIBRARY_PATH=$libdir${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}
out=$build/examples-out
mkdir -p "$out"
pass=0; fail=0
for src in "$root"/examples/*/*.c "$root"/examples/*/*.f90; do
  [ -e "$src" ] || continue
  name=$(basename "$src"); stem=${name%.*}
  [ -z "$filter" ] || [[ $stem == *$filter* ]] || continue
  exe=$out/$stem
  expected=${src%.*}.expected
  case $src in
    *.c) gcc -std=c99 -pedantic -Wall -Wextra -Werror "$src" -o "$exe" $(pkg-config --cflags --libs zeb) -lm ;;
    *.f90) gfortran -Wall -Werror -Wno-unused-dummy-argument -I"$(pkg-config --variable=includedir zeb)" "$src" -o "$exe" \
             -J "$out" $(pkg-config --libs zeb) ;;
  esac
  (cd "$(dirname "$src")" && "$exe" > "$exe.out" 2>&1) || echo "exit status $?" >> "$exe.out"
  if diff -u "$expected" "$exe.out" > "$exe.diff"; then
    pass=$((pass + 1))
  else
    fail=$((fail + 1)); echo "FAILED: $stem"; cat "$exe.diff"
  fi
done
echo "examples: $pass passed, $fail failed"
[ "$fail" -eq 0 ]
