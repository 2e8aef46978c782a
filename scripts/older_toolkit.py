#!/usr/bin/env python3
"""Says what stands in the way of an older toolkit: which sources do not compile with its headers, and why.

usage: older_toolkit.py [--all] BUILD_FOLDER WX_INCLUDE_FOLDER SETUP_INCLUDE_FOLDER

The headers need not be installed: a package that was unpacked is enough. BUILD_FOLDER holds compile_commands.json. What
is wrong in sources of this tree is told, grouped by what is named; --all tells each place.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import re
import subprocess
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
ERROR = re.compile(r"^(\S+?):(\d+):\d+: (?:fatal )?error: (.*)", re.MULTILINE)


def flags_of(command, old):
    """The command without its output and the newer toolkit, and with the older one before everything else."""
    kept = [option for folder in old for option in ("-isystem", folder)]
    words = command.split()
    for word, following in zip(words, words[1:]):
        if word == "-isystem" and "/wx" not in following:
            kept += [word, following]
        elif word.startswith(("-I", "-D", "-std")):
            kept.append(word)
    return kept


def errors_of(source, flags):
    """A header that is missing ends a compilation: an empty one takes its place, for what comes after."""
    missing = []
    with tempfile.TemporaryDirectory() as stubs:
        while True:
            done = subprocess.run(["c++", "-fsyntax-only", "-w", "-I", stubs, *flags, source], capture_output=True, text=True,
                                  env={**os.environ, "LC_ALL": "C"}, check=False)
            # Errors in the toolkit's own headers come after one in ours.
            found = [(os.path.basename(path), int(line), text) for path, line, text in ERROR.findall(done.stderr)
                     if path.startswith(ROOT) or "No such file" in text]
            header = found and re.fullmatch(r"(wx/\S+): No such file or directory", found[-1][2])
            if not header:
                return missing + found
            missing.append(found[-1])
            os.makedirs(os.path.join(stubs, "wx"), exist_ok=True)
            with open(os.path.join(stubs, header[1]), "w", encoding="utf-8"):
                pass


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--all", action="store_true")
    parser.add_argument("build")
    parser.add_argument("include", nargs=2)
    options = parser.parse_args()
    with open(os.path.join(options.build, "compile_commands.json"), encoding="utf-8") as file:
        commands = json.load(file)
    # Units that hold a dozen sources would stop at what the first of them lacks.
    flags = {}
    for entry in commands:
        if library := re.search(r"(?:platform/)?(\w+)/CMakeFiles/\1\.dir/", entry["command"]):
            flags[library[1]] = flags_of(entry["command"], options.include)
    sources = []
    for library, known in sorted(flags.items()):
        for folder in (f"{ROOT}/platform/{library}/src", f"{ROOT}/{library}/src"):
            sources.extend((os.path.join(path, name), known) for path, _, names in os.walk(folder)
                           for name in sorted(names) if name.endswith(".cpp") and library != "gallery")
    found = collections.defaultdict(list)
    clean = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for (source, _), errors in zip(sources, pool.map(lambda work: errors_of(*work), sources)):
            clean += not errors
            for name, line, text in errors:
                quoted = re.findall(r"[‘'](.*?)[’']", text)
                found[quoted[0].split("(")[0] if quoted else text].append((os.path.relpath(source, ROOT), name, line, text))
    for what, places in sorted(found.items(), key=lambda item: -len({place[0] for place in item[1]})):
        files = {place[0] for place in places}
        print(f"{len(files):4} {what}: {places[0][3]} ({places[0][1]}:{places[0][2]})")
        if options.all:
            print("".join(f"       {source} {name}:{line} {text}\n" for source, name, line, text in places), end="")
    print(f"{clean} of {len(sources)} sources compile")


if __name__ == "__main__":
    main()
