#!/usr/bin/env python3
"""Writes the library's Fortran interface from the argument rows of its
Fortran entries.

The rows of a folder's public routines are in its .def files (frame/frame.def,
frame/units.def, special/special.def, ...; the row kinds are described in
frame/layers.hpp).  A .def file holds nothing but comments, `#pragma once`
and definitions

    #define S14AAF_ARGS(A) A(in, double, x) A(res, double, gx) A(ifail, int64_t, ifail)
    #define ZEB_FN_REAL1(A) A(in, double, x) A(res, double, f)

the first describing the Fortran entry s14aaf, the second the abstract
interface zeb_fn_real1 of a user function.  The comment lines right above a
definition become the comment of its interface; the file's first comment
block heads the Fortran file.  From the files of frame/ and of the chapter
folders (ZEB_ALL_CHAPTERS in CMakeLists.txt) it writes

    fortran/<name>.fi        the interfaces of <folder>/<name>.def
    fortran/zeb.f90          the module zeb: the abstract interfaces and the
                             .fi files

and, for the test fortran.calls, a program calls.f90 that calls every entry
through the module with variables of the kinds of its rows (written where
the test asks, never into the tree).

Run from anywhere:
    python3 scripts/gen_fortran.py            write the files
    python3 scripts/gen_fortran.py --check    exit 1 if a file differs
    python3 scripts/gen_fortran.py --calls DIR
                                              the calling program of the
                                              library's rows, into DIR
    python3 scripts/gen_fortran.py --defs F.def ... --out DIR
                                              the interface, module and
                                              calling program of the given
                                              .def files alone, into DIR
                                              (module zebtest), for tests
"""
import argparse
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
ME = "scripts/gen_fortran.py"

# The intent of each kind of row in Fortran (None: none; `val` rows are
# `value`, `fun` rows procedures).  `res` and `shim` rows have no Fortran
# argument of their own.
KINDS = {
    "in": "in", "out": "out", "inout": "inout", "incopy": "in",
    "arr": "inout", "carr": "in", "oarr": "out",
    "chr": "in", "str": "in", "ostr": "inout",
    "val": None, "fun": None, "handle": "in", "ifail": "inout",
    "res": None, "shim": None,
}
ARRAYS = {"arr", "carr", "oarr"}
STRINGS = {"str", "ostr"}
TYPES = {"double": "real(kind=8)", "int64_t": "integer(kind=8)", "void*": "type(c_ptr)"}
# The types a kind allows (None: any C++ type; the Fortran side ignores it).
KIND_TYPES = {
    "chr": {"char"}, "str": {"char"}, "ostr": {"char"}, "handle": {"void*"},
    "ifail": {"int64_t"}, "fun": None, "shim": None, "res": {"double", "int64_t"},
    "arr": {"double", "int64_t"}, "carr": {"double", "int64_t"}, "oarr": {"double", "int64_t"},
}

IDENT = re.compile(r"[A-Za-z_][A-Za-z0-9_]*$")
ENTRY_MACRO = re.compile(r"([A-Z][A-Z0-9]{4,7})_ARGS$")
FN_MACRO = re.compile(r"ZEB_FN_([A-Z0-9_]+)$")


class DefError(Exception):
    pass


class Row:
    def __init__(self, kind, ctype, name, extra):
        self.kind, self.ctype, self.name, self.extra = kind, ctype, name, extra

    @property
    def dims(self):
        """The Fortran dimensions of an array row ([] for a scalar)."""
        if self.kind in ARRAYS:
            return self.extra or ["*"]
        if self.kind in STRINGS:
            return self.extra
        return []

    def ftype(self):
        if self.kind == "chr":
            return "character(len=1)"
        if self.kind in STRINGS:
            return "character(len=*)"
        return TYPES[self.ctype]


class Routine:
    """One definition: an entry (is_fn False) or an abstract interface."""

    def __init__(self, name, rows, doc, is_fn, where):
        self.name, self.rows, self.doc, self.is_fn, self.where = name, rows, doc, is_fn, where

    @property
    def result(self):
        res = [r for r in self.rows if r.kind == "res"]
        return res[0] if res else None

    @property
    def args(self):
        """The rows of the Fortran argument list, in order."""
        return [r for r in self.rows if r.kind not in ("res", "shim")]


def logical_lines(path):
    """(line number, text) of each logical line, continuations joined."""
    with open(path) as f:
        raw = f.read().split("\n")
    out, buf, start = [], None, 0
    for i, line in enumerate(raw, 1):
        if buf is None:
            buf, start = "", i
        if line.endswith("\\"):
            buf += line[:-1] + " "
            continue
        out.append((start, buf + line))
        buf = None
    return out


def parse_rows(text, where):
    rows, pos = [], 0
    pat = re.compile(r"\s*A\(([^()]*)\)")
    while True:
        m = pat.match(text, pos)
        if not m:
            break
        fields = [f.strip() for f in m.group(1).split(",")]
        if len(fields) < 3 or not all(fields[:3]):
            raise DefError(f"{where}: a row needs kind, type and name: A({m.group(1)})")
        kind, ctype, name = fields[:3]
        extra = fields[3:]
        if kind not in KINDS:
            raise DefError(f"{where}: unknown kind '{kind}'")
        if not IDENT.match(name):
            raise DefError(f"{where}: bad argument name '{name}'")
        allowed = KIND_TYPES.get(kind, set(TYPES))
        if allowed is not None and ctype not in allowed:
            raise DefError(f"{where}: type '{ctype}' is not one of {sorted(allowed)} for '{kind}'")
        if extra and not all(extra):
            raise DefError(f"{where}: empty field in A({m.group(1)})")
        if kind in ("fun", "shim") and len(extra) != 1:
            raise DefError(f"{where}: a {kind} row names one function in its fourth field")
        if extra and kind not in ARRAYS | STRINGS | {"fun", "shim"}:
            raise DefError(f"{where}: '{name}' ({kind}) takes no fourth field")
        rows.append(Row(kind, ctype, name, extra))
        pos = m.end()
    if text[pos:].strip():
        raise DefError(f"{where}: not a row: '{text[pos:].strip()}'")
    return rows


def check_routine(r):
    names = [row.name for row in r.rows]
    dup = {n for n in names if names.count(n) > 1}
    if dup:
        raise DefError(f"{r.where}: argument named twice: {sorted(dup)}")
    if len([row for row in r.rows if row.kind == "res"]) > 1:
        raise DefError(f"{r.where}: more than one res row")
    fails = [i for i, row in enumerate(r.rows) if row.kind == "ifail"]
    if fails and (fails != [len(r.rows) - 1] or r.rows[-1].name != "ifail"):
        raise DefError(f"{r.where}: the ifail row comes last and is named ifail")
    if r.is_fn and any(row.kind in ("shim", "ifail", "handle", "incopy") for row in r.rows):
        raise DefError(f"{r.where}: a user function has plain arguments only")
    # Every name in a dimension is an integer scalar input of the routine.
    ints = {row.name for row in r.rows if row.kind in ("in", "val") and row.ctype == "int64_t"}
    for row in r.rows:
        for d in row.dims:
            for tok in re.findall(r"[A-Za-z_][A-Za-z0-9_]*", d):
                if tok not in ints:
                    raise DefError(f"{r.where}: dimension of '{row.name}' uses '{tok}', "
                                   "which is not an integer input")
            if not re.fullmatch(r"[A-Za-z0-9_ +*-]+", d):
                raise DefError(f"{r.where}: bad dimension '{d}' of '{row.name}'")
        if "*" in row.dims[:-1]:
            raise DefError(f"{r.where}: only the last dimension of '{row.name}' may be '*'")


def parse_def(path, rel):
    """The heading and the routines of one .def file."""
    heading, doc, routines = None, [], []
    for line_no, text in logical_lines(path):
        where = f"{rel}:{line_no}"
        s = text.strip()
        if s.startswith("//"):
            c = s[2:]
            doc.append(c[1:] if c.startswith(" ") else c)
            continue
        if not s or s == "#pragma once":
            if heading is None:
                heading = doc
            doc = []
            continue
        m = re.match(r"#define\s+([A-Za-z0-9_]+)\(A\)(.*)$", s)
        if not m:
            raise DefError(f"{where}: expected a comment or #define NAME(A) rows")
        if heading is None:
            heading = []
        macro, body = m.groups()
        if ENTRY_MACRO.match(macro):
            name, is_fn = ENTRY_MACRO.match(macro).group(1).lower(), False
        elif FN_MACRO.match(macro):
            name, is_fn = "zeb_fn_" + FN_MACRO.match(macro).group(1).lower(), True
        else:
            raise DefError(f"{where}: '{macro}' is neither STEM_ARGS nor ZEB_FN_NAME")
        r = Routine(name, parse_rows(body, where), doc, is_fn, where)
        check_routine(r)
        routines.append(r)
        doc = []
    return heading or [], routines


# ---- the Fortran text -----------------------------------------------------

def wrap(head, items, tail, indent):
    """head(items, ...)tail within 100 columns, continued with '&'."""
    one = f"{head}({', '.join(items)}){tail}"
    if len(indent) + len(one) <= 100:
        return [indent + one]
    lines, cur = [], f"{head}("
    cont = " " * len(cur)
    for i, it in enumerate(items):
        piece = it + (", " if i < len(items) - 1 else f"){tail}")
        if len(indent) + len(cur) + len(piece.rstrip()) > 98 and cur.strip() != f"{head}(":
            lines.append(indent + cur.rstrip() + " &")
            cur = cont
        cur += piece
    lines.append(indent + cur)
    return lines


def declaration(row):
    if row.kind == "fun":
        return f"procedure({row.extra[0]}) :: {row.name}"
    attrs = [row.ftype()]
    if row.kind == "val":
        attrs.append("value")
    else:
        attrs.append(f"intent({KINDS[row.kind]})")
    dims = f"({', '.join(row.dims)})" if row.dims else ""
    return f"{', '.join(attrs)} :: {row.name}{dims}"


def declaration_order(args):
    """The arguments in order, except that a dimension is declared before
    the first array that names it."""
    done, order = set(), []
    by_name = {a.name: a for a in args}
    for a in args:
        for d in a.dims:
            for tok in re.findall(r"[A-Za-z_][A-Za-z0-9_]*", d):
                if tok not in done:
                    order.append(by_name[tok])
                    done.add(tok)
        if a.name not in done:
            order.append(a)
            done.add(a.name)
    return order


def interface(r, indent, fns):
    """The interface body of a routine, as lines."""
    res = r.result
    kw = "function" if res else "subroutine"
    args = r.args
    out = [f"{indent}! {d}".rstrip() for d in r.doc]
    out += wrap(f"{kw} {r.name}", [a.name for a in args], "", indent)
    inner = indent + "  "
    if any(row.ctype == "void*" for row in r.rows if row.kind not in ("fun", "shim")):
        out.append(f"{inner}use, intrinsic :: iso_c_binding, only: c_ptr")
    used = sorted({a.extra[0] for a in args if a.kind == "fun"})
    for u in used:
        if u not in fns:
            raise DefError(f"{r.where}: no abstract interface '{u}' (ZEB_FN_{u[7:].upper()})")
    if used:  # one import line per interface keeps every line short
        out += [f"{inner}import :: {u}" for u in used]
    if res:
        out.append(f"{inner}{TYPES[res.ctype]} :: {r.name}")
    out += [inner + declaration(a) for a in declaration_order(args)]
    out.append(f"{indent}end {kw} {r.name}")
    return out


def banner(sources):
    return [f"! Generated by {ME} from {sources}: do not edit."]


def fi_file(rel, heading, routines, fns):
    lines = banner(rel) + [f"! {h}".rstrip() for h in heading] + [""]
    for k, r in enumerate(routines):
        if k:
            lines.append("")
        lines += interface(r, "", fns)
    return "\n".join(lines) + "\n"


def module_file(module, fi_names, fns, sources):
    lines = banner(sources) + [
        f"! The interface module {module} for Fortran programs: explicit interfaces",
        "! of every Fortran entry.  Integers are integer(kind=8) and reals",
        "! real(kind=8) throughout.",
        f"module {module}",
        "  implicit none",
    ]
    if fns:
        lines.append("  abstract interface")
        for k, name in enumerate(sorted(fns)):
            if k:
                lines.append("")
            lines += interface(fns[name], "    ", fns)
        lines.append("  end interface")
    lines.append("  interface")
    lines += [f"    include '{n}.fi'" for n in fi_names]
    lines += ["  end interface", f"end module {module}"]
    return "\n".join(lines) + "\n"


# The calling program: one variable per argument, of the Fortran type of its
# row, an array of the row's rank; a user function of each abstract
# interface; each function result handed to a routine that takes exactly its
# type.
SINKS = {"double": "real", "int64_t": "integer"}


def var_decl(row, var):
    if row.kind == "chr":
        t = "character(len=1)"
    elif row.kind in STRINGS:
        t = "character(len=8)"
    else:
        t = TYPES[row.ctype]
    shape = f"({', '.join(d if d.isdigit() else '4' for d in row.dims)})" if row.dims else ""
    init = " = c_null_ptr" if row.ctype == "void*" else (" = ' '" if row.ctype == "char" else " = 0")
    return f"  {t} :: {var}{shape}{init}"


def user_function(fn):
    """A function with the abstract interface fn, as lines."""
    name = "user_" + fn.name[len("zeb_fn_"):]
    res = fn.result
    kw = "function" if res else "subroutine"
    lines = wrap(f"  {kw} {name}", [a.name for a in fn.args], "", "")
    if res:
        lines.append(f"    {TYPES[res.ctype]} :: {name}")
    lines += ["    " + declaration(a) for a in declaration_order(fn.args)]
    shown = [f"c_associated({a.name})" if a.ctype == "void*"  # a c_ptr cannot be printed
             else a.name + ("(1" + ", 1" * (len(a.dims) - 1) + ")" if a.dims else "")
             for a in fn.args]
    if res:
        lines.append(f"    {name} = 0")
    if shown:
        cur = "    if (.false.) print *, "
        for i, it in enumerate(shown):
            piece = it + (", " if i < len(shown) - 1 else "")
            if len(cur) + len(piece.rstrip()) > 98:
                lines.append(cur.rstrip() + " &")
                cur = "        "
            cur += piece
        lines.append(cur)
    lines.append(f"  end {kw} {name}")
    return lines


def calls_file(module, entries, fns, sources):
    decls, calls, used_fns, sinks = [], [], set(), set()
    for r in entries:
        actual = []
        for a in r.args:
            if a.kind == "fun":
                used_fns.add(a.extra[0])
                actual.append("user_" + a.extra[0][len("zeb_fn_"):])
                continue
            var = f"{r.name}_{a.name}"
            decls.append(var_decl(a, var))
            actual.append(var)
        if r.result:
            sinks.add(r.result.ctype)
            calls += wrap(f"call take_{SINKS[r.result.ctype]}({r.name}", actual, ")", "  ")
        else:
            calls += wrap(f"call {r.name}", actual, "", "  ")
    lines = banner(sources) + [
        "! Calls every Fortran entry through the module with variables of the",
        "! kinds of its argument rows: it compiles only when the module agrees",
        "! with the rows.  Compiled and linked by the tests, never run.",
    ]
    if used_fns:
        lines += ["module calls_user"]
        if any(a.ctype == "void*" for f in used_fns for a in fns[f].args):
            lines.append("  use, intrinsic :: iso_c_binding, only: c_ptr, c_associated")
        lines += ["  implicit none", "contains"]
        for f in sorted(used_fns):
            lines += user_function(fns[f])
        lines.append("end module calls_user")
    lines += ["program calls", f"  use {module}"]
    if used_fns:
        lines.append("  use calls_user")
    if any(d.endswith("c_null_ptr") for d in decls):
        lines.append("  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr")
    lines.append("  implicit none")
    lines += [f"  {TYPES[t]} :: sink_{SINKS[t]} = 0" for t in sorted(sinks)]
    lines += decls + calls
    if sinks:
        lines.append("contains")
    for t in sorted(sinks):
        n = SINKS[t]
        lines += [f"  subroutine take_{n}(v)", f"    {TYPES[t]}, intent(in) :: v",
                  f"    sink_{n} = v", f"  end subroutine take_{n}"]
    lines.append("end program calls")
    return "\n".join(lines) + "\n"


# ---- driver ---------------------------------------------------------------

def library_defs():
    """The .def files of frame/ and of every chapter folder, in order."""
    with open(os.path.join(ROOT, "CMakeLists.txt")) as f:
        m = re.search(r"set\(ZEB_ALL_CHAPTERS([^)]*)\)", f.read())
    if not m:
        raise DefError("CMakeLists.txt: no set(ZEB_ALL_CHAPTERS ...)")
    out = []
    for folder in ["frame"] + m.group(1).split():
        d = os.path.join(ROOT, folder)
        if os.path.isdir(d):
            out += [os.path.join(d, n) for n in sorted(os.listdir(d)) if n.endswith(".def")]
    return out


def generate(def_paths, module, fi_dir, calls_dir):
    """{path: text} of every file written from the given .def files."""
    files, fns, entries, parsed = {}, {}, [], []
    for p in def_paths:
        rel = os.path.relpath(p, ROOT)
        heading, routines = parse_def(p, rel)
        parsed.append((p, rel, heading, routines))
        for r in routines:
            if r.is_fn:
                if r.name in fns:
                    raise DefError(f"{r.where}: {r.name} defined twice")
                fns[r.name] = r
    names = set()
    fi_names = []
    for p, rel, heading, routines in parsed:
        base = os.path.splitext(os.path.basename(p))[0]
        if base in fi_names:
            raise DefError(f"{rel}: a second {base}.def")
        ent = [r for r in routines if not r.is_fn]
        for r in ent:
            if r.name in names:
                raise DefError(f"{r.where}: {r.name} described twice")
            names.add(r.name)
        entries += ent
        fi_names.append(base)
        files[os.path.join(fi_dir, base + ".fi")] = fi_file(rel, heading, ent, fns)
    sources = "the .def files" if len(parsed) > 1 else parsed[0][1]
    files[os.path.join(fi_dir, module + ".f90")] = module_file(module, fi_names, fns, sources)
    if calls_dir:
        files[os.path.join(calls_dir, "calls.f90")] = calls_file(module, entries, fns, sources)
    return files


def main(argv):
    ap = argparse.ArgumentParser(description="Writes the Fortran interface from the rows.")
    ap.add_argument("--check", action="store_true", help="compare, do not write")
    ap.add_argument("--defs", nargs="+", help="these .def files alone (with --out)")
    ap.add_argument("--out", help="the folder for the files of --defs")
    ap.add_argument("--calls", help="write the library's calling program into this folder")
    args = ap.parse_args(argv)
    if bool(args.defs) != bool(args.out):
        ap.error("--defs and --out go together")
    if args.calls and (args.defs or args.check):
        ap.error("--calls goes alone")
    try:
        fi_dir = os.path.join(ROOT, "fortran")
        if args.defs:
            out = os.path.abspath(args.out)
            files = generate([os.path.abspath(d) for d in args.defs], "zebtest", out, out)
        elif args.calls:
            out = os.path.abspath(args.calls)
            files = {p: t for p, t in generate(library_defs(), "zeb", fi_dir, out).items()
                     if p == os.path.join(out, "calls.f90")}
        else:
            files = generate(library_defs(), "zeb", fi_dir, None)
            # A .fi file that no .def file gives any more.
            for n in sorted(os.listdir(fi_dir)):
                if n.endswith(".fi") and os.path.join(fi_dir, n) not in files:
                    files[os.path.join(fi_dir, n)] = None
    except DefError as e:
        print(f"gen_fortran: {e}", file=sys.stderr)
        return 2
    stale = []
    for path, text in files.items():
        old = None
        if os.path.exists(path):
            with open(path) as f:
                old = f.read()
        if old == text:
            continue
        stale.append(os.path.relpath(path, ROOT))
        if args.check:
            continue
        if text is None:
            os.remove(path)
        else:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w") as f:
                f.write(text)
    if args.check:
        for s in stale:
            print(f"gen_fortran: {s} is not what the rows give; run python3 {ME}",
                  file=sys.stderr)
        return 1 if stale else 0
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
