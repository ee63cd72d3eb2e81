#!/usr/bin/env bash
# The Fortran interface against its argument rows, compiled with warnings as
# errors; the programs are never run.
#   check.sh calls FC WORK MODDIR LIBDIR
#       a program that calls every entry through the module zeb in MODDIR,
#       written into WORK by scripts/gen_fortran.py from the library's rows,
#       compiled and linked with the library in LIBDIR
#   check.sh kinds FC WORK
#       the interface and calling program of tests/frame/kinds.def (a row of
#       every kind), written into WORK by scripts/gen_fortran.py, compiled
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
mode=$1 fc=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cd "$work"
case $mode in
  calls)
    "$here/../../scripts/gen_fortran.py" --calls .
    "$fc" -Wall -Werror -I"$4" calls.f90 -L"$5" -lzeb -o calls ;;
  kinds)
    "$here/../../scripts/gen_fortran.py" --defs "$here/../frame/kinds.def" --out .
    "$fc" -Wall -Werror -c zebtest.f90
    "$fc" -Wall -Werror -c calls.f90 ;;
  *) echo "check.sh: unknown mode $mode" >&2; exit 2 ;;
esac
