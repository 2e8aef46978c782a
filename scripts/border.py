#!/usr/bin/env python3
"""Compares the border of built libraries, what programs that were built against them rely on, with that of the last
version in CHANGELOG.md: functions, and the layout of types that public headers show.

usage: border.py [--write] BUILT_TREE
       border.py --names PACKAGE_FOLDER SYMBOLS_FILE VERSION

BUILT_TREE holds the sources and obj-*/, built with full debug information, as scripts/package.sh does it. --write keeps
the border as that of the version, when it is released. A version that is not released yet says so in its heading in
CHANGELOG.md: "## 3.2.0 (not released)".

--names brings the symbols file of the Debian package up to what its folder holds: new names are of VERSION, those that are
gone go.

packaging/border/accepted.ini names changes that break nobody, with the reason of each.
"""
import argparse
import glob
import lzma
import os
import re
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BORDER = os.path.join(ROOT, "packaging", "border")
# What other libraries' headers bring is theirs to keep.
FOREIGN = "[suppress_type]\nsource_location_not_regexp = (commondlg3|platform)/\ndrop = yes\n"


def last_version():
    with open(os.path.join(ROOT, "CHANGELOG.md"), encoding="utf-8") as changes:
        for line in changes:
            if found := re.match(r"## (\d+\.\d+\.\d+)$", line.rstrip()):
                return found[1]
    sys.exit("CHANGELOG.md names no version that was released")


def built_libraries(tree):
    """Name without version, and path, of each library that was built."""
    found = {}
    for path in glob.glob(os.path.join(tree, "obj-*", "**", "lib*.so.*.*.*"), recursive=True):
        found[os.path.basename(path).split(".")[0]] = path
    if not found:
        sys.exit(f"{tree}: no libraries")
    return found


def soname(library):
    dynamic = subprocess.run(["readelf", "-d", library], capture_output=True, text=True, check=True).stdout
    return re.search(r"SONAME.*\[(.*)\]", dynamic)[1]


def describe(library, tree, folder):
    """The description of a library's border, as a file in this folder."""
    foreign = os.path.join(folder, "foreign.ini")
    with open(foreign, "w", encoding="utf-8") as file:
        file.write(FOREIGN)
    headers = [option for place in glob.glob(f"{tree}/commondlg3/include") + glob.glob(f"{tree}/platform/*/include")
               for option in ("--headers-dir", place)]
    out = os.path.join(folder, os.path.basename(library) + ".abi")
    subprocess.run(["abidw", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs", "--drop-private-types", *headers,
                    "--suppressions", foreign, "--out-file", out, library], check=True)
    return out


def compare(name, version, library, now, folder):
    """Whether programs built against that version run with the library as it is; says what they would miss."""
    kept = os.path.join(BORDER, version, f"{name}.abi.xz")
    if not os.path.exists(kept):
        print(f"{name}: no border of {version} is kept; border.py --write keeps it when the version is released")
        return False
    before = os.path.join(folder, f"{name}.before.abi")
    with lzma.open(kept) as packed, open(before, "wb") as file:
        text = packed.read()
        file.write(text)
    if re.search(rb"soname='([^']*)'", text)[1].decode() != soname(library):
        print(f"{name}: another SONAME than in {version}: anything may change")
        return True
    done = subprocess.run(["abidiff", "--no-added-syms", "--suppressions", os.path.join(BORDER, "accepted.ini"), before,
                           now], capture_output=True, text=True, check=False)
    if done.returncode:
        print(f"{name}: breaks programs that were built against {version}\n{done.stdout}{done.stderr}")
    return done.returncode == 0


def write_names(folder, path, version):
    """Names as people write them: several that the compiler makes of one function are one line."""
    since = {}
    if os.path.exists(path):
        with open(path, encoding="utf-8") as file:
            since = {line.rsplit(" ", 1)[0]: line.rsplit(" ", 1)[1] for line in file if line.startswith(" ")}
    lines = []
    for library in sorted(glob.glob(os.path.join(folder, "usr", "lib", "*", "lib*.so.*.*.*"))):
        names = subprocess.run(["nm", "-DC", "--defined-only", library], capture_output=True, text=True, check=True).stdout
        lines.append(f"{soname(library)} {os.path.basename(folder)} #MINVER#\n")
        for name in sorted({line.split(" ", 2)[2] for line in names.splitlines()}):
            entry = f' (c++)"{name}@Base"'
            lines.append(f"{entry} {since.get(entry, version).strip()}\n")
    with open(path, "w", encoding="utf-8") as file:
        file.writelines(lines)
    print(f"{path}: {len(lines)} lines")


def main():
    if sys.argv[1:2] == ["--names"]:
        write_names(*sys.argv[2:5])
        return
    parser = argparse.ArgumentParser()
    parser.add_argument("--write", action="store_true")
    parser.add_argument("tree")
    options = parser.parse_args()
    version = last_version()
    libraries = built_libraries(options.tree)
    good = True
    with tempfile.TemporaryDirectory() as folder:
        if not options.write:
            missing = {os.path.basename(kept).split(".")[0] for kept in glob.glob(f"{BORDER}/{version}/*.abi.xz")}
            for name in sorted(missing - set(libraries)):
                print(f"{name}: was in {version}, and is not built")
                good = False
        for name, library in sorted(libraries.items()):
            now = describe(library, options.tree, folder)
            if options.write:
                os.makedirs(os.path.join(BORDER, version), exist_ok=True)
                with open(now, "rb") as text, lzma.open(f"{BORDER}/{version}/{name}.abi.xz", "wb", preset=9) as kept:
                    kept.write(text.read())
            else:
                good = compare(name, version, library, now, folder) and good
    if good:
        print(f"{len(libraries)} libraries, " + ("kept" if options.write else "as wide as") + f" {version}")
    sys.exit(0 if good else 1)


if __name__ == "__main__":
    main()
