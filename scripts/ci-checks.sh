#!/usr/bin/env bash
# The checks CI runs after the test suite, each in a build of its own:
#   asan   the whole suite under AddressSanitizer (leaks included) and
#          UndefinedBehaviorSanitizer;
#   ubsan  the test that needs the BLAS loaded with RTLD_DEEPBIND (an LU and
#          an Ipopt solve in one process), which the address and thread
#          sanitizers' runtimes cannot host, under UndefinedBehaviorSanitizer;
#   tsan   every chapter from eight threads under ThreadSanitizer;
#   fuzz   each libFuzzer target for a bounded number of inputs (clang).
# Usage: scripts/ci-checks.sh [stage...]   (default: all four)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
base=${ZEB_CHECKS_DIR:-$root/build-checks}
"$root/scripts/install-deps.sh" >&2
stages=("$@")
[ ${#stages[@]} -gt 0 ] || stages=(asan ubsan tsan fuzz)
# Tests that are no library code under a sanitizer: the examples and the
# package (clients built outside the tree), generated-file and compile
# checks.
not_here='^(examples|package|regenerate|fortran\.|frame\.MessageCounts)'
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1
export OPENBLAS_NUM_THREADS=1  # the BLAS's own threads are not instrumented

configure() {  # dir, extra cmake options...
  local dir=$1; shift
  cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZEB_BENCH=OFF "$@" >/dev/null
}

for stage in "${stages[@]}"; do
  start=$(date +%s)
  echo "== $stage"
  case $stage in
    asan)
      configure "$base/asan" -DZEB_SANITIZE=address,undefined
      cmake --build "$base/asan" -j "$(nproc)" >/dev/null
      ctest --test-dir "$base/asan" -j "$(nproc)" --output-on-failure \
        -E "$not_here|^linalg\.Coexistence" ;;
    ubsan)
      configure "$base/ubsan" -DZEB_SANITIZE=undefined
      cmake --build "$base/ubsan" -j "$(nproc)" --target test_linalg >/dev/null
      ctest --test-dir "$base/ubsan" --output-on-failure -R '^linalg\.Coexistence' ;;
    tsan)
      configure "$base/tsan" -DZEB_SANITIZE=thread
      cmake --build "$base/tsan" -j "$(nproc)" --target test_concurrency >/dev/null
      TSAN_OPTIONS=halt_on_error=1 ctest --test-dir "$base/tsan" --output-on-failure \
        -R '^concurrency\.' ;;
    fuzz)
      CC=clang CXX=clang++ configure "$base/fuzz" -DZEB_TESTS=OFF -DZEB_FUZZ=ON \
        -DZEB_SANITIZE=fuzzer-no-link,address,undefined
      cmake --build "$base/fuzz" -j "$(nproc)" --target fuzz_targets >/dev/null
      pass=0
      for f in "$base"/fuzz/fuzz/*_fuzz; do
        "$f" -runs="${ZEB_FUZZ_RUNS:-100000}" -max_total_time=120 -max_len=4096 \
          >"$f.log" 2>&1 || { tail -n 40 "$f.log"; echo "fuzz: $(basename "$f") failed"; exit 1; }
        echo "$(basename "$f"): $(grep -o 'Done [0-9]* runs in [0-9]* second(s)' "$f.log" || echo 'stopped at its time limit')"
        pass=$((pass + 1))
      done
      echo "fuzz: $pass passed, 0 failed" ;;
    *) echo "ci-checks: unknown stage $stage" >&2; exit 2 ;;
  esac
  echo "-- $stage: $(( $(date +%s) - start )) s"
done
