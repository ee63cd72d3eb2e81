#!/usr/bin/env bash
# Installs the Debian packages the library, its tests, examples and benchmarks need.
# Safe to run again: only missing packages are installed.
set -euo pipefail
pkgs=(
  build-essential cmake pkg-config gfortran
  libopenblas64-dev liblapack64-dev
  coinor-libipopt-dev libmetis-dev libsuitesparse-dev
  libgtest-dev libbenchmark-dev libgsl-dev libboost-math-dev
  python3 python3-mpmath
  clang libclang-rt-dev
)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -ne 0 ]; then
    echo "install-deps: missing packages: ${missing[*]} (run as root to install them)" >&2
    exit 1
  fi
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
