#!/usr/bin/python3
"""Reference values of the random-number tests, computed independently of
the library:

random_mrg32k3a.txt   MRG32k3a with the six seeds 12345, from L'Ecuyer's
                      recurrences in exact integer arithmetic; u = z/(m1+1).
random_normal.txt     the normal quantile at uniforms the basic generator can
                      produce, u = 1 - X/2^60 for X = 2 mod 4, evaluated as the
                      library's double u and then with mpmath at 40 digits.
random_wh_whole.txt   Wichmann-Hill states whose next double sum
                      x1/m1 + ... + x4/m4 (added in that order) is a whole
                      number, found by search; the exact deviate from the
                      rational sum (1 - fraction for set 1 of Wichmann-Hill I,
                      the fraction for Wichmann-Hill II).
random_acorn.txt      ACORN of order k with m digits from full seeds (word j,
                      from 0: 1 + j * 2654435761 mod (2^30 - 1)): Y_0 the
                      first seed word made odd, Y_1 .. Y_k the seed words in
                      m-digit groups, least significant digit first; each
                      step Y_j += Y_{j-1} mod 2^(30m) for j = 1..k; output
                      Y_k / 2^(30m), exact.

Run: /usr/bin/python3 random_reference.py   (writes both files here)
"""
import random
from fractions import Fraction

import mpmath

mpmath.mp.dps = 40


def mrg32k3a():
    m1, m2 = 4294967087, 4294944443
    x1, x2 = [12345] * 3, [12345] * 3
    out = []
    for _ in range(20):
        p1 = (1403580 * x1[1] - 810728 * x1[0]) % m1
        p2 = (527612 * x2[2] - 1370589 * x2[0]) % m2
        x1 = [x1[1], x1[2], p1]
        x2 = [x2[1], x2[2], p2]
        z = p1 - p2 if p1 > p2 else p1 - p2 + m1
        out.append(mpmath.mpf(z) / (m1 + 1))
    with open("random_mrg32k3a.txt", "w") as f:
        f.write("# MRG32k3a, seeds 12345 x 6: the first 20 uniforms z/(m1+1)\n")
        f.write("# (exact integer recurrences; written by random_reference.py)\n")
        for u in out:
            f.write(mpmath.nstr(u, 25) + "\n")


def basic_u(x):
    # the library's double: 1 - (H 2^-30 + L 2^-60), H, L the halves of X
    h, l = x >> 30, x & ((1 << 30) - 1)
    return 1.0 - (float(h) * 2.0 ** -30 + float(l) * 2.0 ** -60)


def normal():
    targets = []
    for k in range(1, 100):
        targets.append(k / 100.0)
    for e in range(2, 18):
        for m in (1.0, 3.0, 7.0):
            targets.append(m * 10.0 ** -e)
            targets.append(1.0 - m * 10.0 ** -e)
    targets += [0.425 + 0.5, 0.5 - 0.425, 2.0 ** -59, 1.0 - 2.0 ** -40]
    rows = []
    for t in targets:
        x = int(round((1.0 - t) * 2.0 ** 60))
        x = max(2, min(x - x % 4 + 2, (1 << 60) - 2))
        u = basic_u(x)
        if not 0.0 < u < 1.0:
            continue
        z = mpmath.sqrt(2) * mpmath.erfinv(2 * mpmath.mpf(u) - 1)
        rows.append((x, u, z))
    with open("random_normal.txt", "w") as f:
        f.write("# Normal quantile at u = 1 - X/2^60 (the basic generator's double for X)\n")
        f.write("# columns: X, u (as the library forms it), z = sqrt(2) erfinv(2u - 1) by mpmath,\n")
        f.write("# 40 digits; written by random_reference.py\n")
        for x, u, z in rows:
            f.write("%d %r %s\n" % (x, u, mpmath.nstr(z, 30)))


def wh_whole():
    gens = [
        ("wh1", (125, 117, 127, 126), (16770647, 16770643, 16770623, 16770617), True),
        ("wh2", (11600, 47003, 23000, 33000),
         (2147483579, 2147483543, 2147483423, 2147483123), False),
    ]
    rng = random.Random(20261122)
    rows = []
    for name, a, m, reflect in gens:
        found = 0
        while found < 3:
            x = [0, 0, rng.randrange(1, m[2]), rng.randrange(1, m[3])]
            c = Fraction(x[2], m[2]) + Fraction(x[3], m[3])
            big = m[0] * m[1]
            k = int(c) + rng.choice((1, 2))
            n = round((k - c) * big)  # x1 m2 + x2 m1 = n
            x[0] = n * pow(m[1], -1, m[0]) % m[0]
            if (n - x[0] * m[1]) % m[0]:
                continue
            x[1] = (n - x[0] * m[1]) // m[0]
            if not (0 < x[0] < m[0] and 0 < x[1] < m[1]):
                continue
            s = 0.0
            for j in range(4):
                s += x[j] / m[j]
            if s != int(s):
                continue
            exact = sum(Fraction(x[j], m[j]) for j in range(4))
            frac = exact - int(exact)
            u = 1 - frac if reflect else frac
            pre = [x[j] * pow(a[j], -1, m[j]) % m[j] for j in range(4)]
            rows.append((name, pre, u))
            found += 1
    with open("random_wh_whole.txt", "w") as f:
        f.write("# Wichmann-Hill states (words 5-8) whose next double sum is a whole number\n")
        f.write("# columns: generator (wh1: set 1), x1..x4 before the step, the exact deviate\n")
        f.write("# of the rational sum (25 digits); written by random_reference.py\n")
        for name, pre, u in rows:
            v = mpmath.mpf(u.numerator) / u.denominator
            f.write("%s %s %s\n" % (name, " ".join(map(str, pre)), mpmath.nstr(v, 25)))


def acorn():
    rows = []
    for subid in (0, 10, 1000, 2005):
        k, m = (subid % 1000 + 1, subid // 1000 + 1) if subid > 0 else (11, 2)
        seed = [1 + j * 2654435761 % (2 ** 30 - 1) for j in range(m * k)]
        big = 2 ** (30 * m)
        y = [seed[0] | 1] + [sum(seed[j * m + d] << (30 * d) for d in range(m)) for j in range(k)]
        for i in range(12):
            for j in range(1, k + 1):
                y[j] = (y[j] + y[j - 1]) % big
            rows.append((subid, i, mpmath.mpf(y[k]) / big))
    with open("random_acorn.txt", "w") as f:
        f.write("# ACORN from full seeds: subid, draw number (from 0), deviate (25 digits);\n")
        f.write("# seed word j = 1 + j * 2654435761 mod (2^30 - 1); written by random_reference.py\n")
        for subid, i, u in rows:
            f.write("%d %d %s\n" % (subid, i, mpmath.nstr(u, 25)))


mrg32k3a()
normal()
wh_whole()
acorn()
