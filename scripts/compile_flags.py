#!/usr/bin/env python3
"""Prints with what include folders and definitions the sources of a target are compiled.

usage: compile_flags.py BUILD_FOLDER TARGET
"""
import json
import os
import shlex
import sys


def flags_of(build, target):
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        commands = json.load(file)
    for command in commands:
        if f"CMakeFiles/{target}.dir/" in command["command"]:
            words = shlex.split(command["command"])
            kept, take_next = [], False
            for word in words:
                if take_next:
                    kept.append(os.path.join(command["directory"], word))
                    take_next = False
                elif word == "-isystem":
                    kept.append(word)
                    take_next = True
                elif word.startswith("-I"):
                    kept.append("-I" + os.path.join(command["directory"], word[2:]))
                elif word.startswith(("-D", "-std")):
                    kept.append(word)
            return kept
    raise SystemExit(f"{target} is not built in {build}")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    print(*flags_of(*sys.argv[1:]))
