#!/usr/bin/python3
"""Reference values of Gamma(x) and ln Gamma(x) (ln Gamma alone above 171), computed with mpmath at 50
significant digits (Debian's python3-mpmath), for the gamma tests.

Writes tests/data/gamma_ref.txt: lines "range x gamma(x) lngamma(x)", where x
is a binary64 number printed exactly (17 significant digits) and the values
are correctly rounded to 17 digits; "-" marks a value not given
(lngamma for x <= 0, gamma above 171).
Run: /usr/bin/python3 tests/data/gen_gamma_ref.py
"""
import random

import mpmath as mp

mp.mp.dps = 50
rng = random.Random(20261122)


def row(name, x):
    x = float(x)
    xm = mp.mpf(x)
    g = mp.gamma(xm) if x <= 171 else None
    lg = mp.loggamma(xm) if x > 0 else None
    lgs = mp.nstr(lg, 17, strip_zeros=False) if lg is not None else "-"
    gs = mp.nstr(g, 17, strip_zeros=False) if g is not None else "-"
    return f"{name} {x!r} {gs} {lgs}"


def main():
    rows = []
    ranges = [("tiny", 1e-16, 1e-3), ("unit", 1e-3, 1.0), ("small", 1.0, 2.0),
              ("mid", 2.0, 10.0), ("large", 10.0, 170.0), ("neg", -170.0, -1e-3),
              ("huge", 0, 0)]
    for name, lo, hi in ranges:
        for _ in range(400):
            if name == "tiny":
                x = 10 ** rng.uniform(-16, -3)
            elif name == "huge":
                x = 10 ** rng.uniform(2.3, 305)
            else:
                x = rng.uniform(lo, hi)
            if name == "neg" and abs(x - round(x)) < 1e-9:
                continue
            rows.append(row(name, x))
    with open("tests/data/gamma_ref.txt", "w") as f:
        f.write("# Gamma and ln Gamma at random binary64 arguments; mpmath, 50 digits;\n")
        f.write("# made by tests/data/gen_gamma_ref.py. Columns: range x gamma lngamma\n")
        f.write("\n".join(rows) + "\n")


main()
