#!/usr/bin/env python3
"""Makes one source file of the C++ blocks in documents, so that what they show compiles.

usage: extract.py OUTPUT DOCUMENT...

A block stands in a function of a host (host.h), which has what examples take for granted; "..." stands for what does
not matter. After ```cpp a word may say where the block stands instead: `page` in a file of its own, `member` in a class.
"""
import os
import re
import sys

BLOCK = re.compile(r"^```cpp(?: (\w+))?\n(.*?)^```", re.DOTALL | re.MULTILINE)
LEFT_OUT = re.compile(r"(?<![\w.(<])\.\.\.(?![\w.)>])")


def main():
    output, documents = sys.argv[1], sys.argv[2:]
    includes, blocks = ['#include "host.h"'], []
    for document in documents:
        with open(document, encoding="utf-8") as file:
            text = file.read()
        for number, block in enumerate(BLOCK.finditer(text)):
            kind, code = block.groups()
            includes += re.findall(r"^#include .*", code, re.MULTILINE)
            # In place of each line that goes one that is empty, so that errors name the document's own lines.
            code = LEFT_OUT.sub(";", re.sub(r"^#include .*", "", code, flags=re.MULTILINE))
            line = text.count("\n", 0, block.start(2)) + 1
            name = re.sub(r"\W", "_", os.path.basename(document)) + f"_{number}"
            before, after = {
                None: (f"struct {name} : host_t {{ void run() {{", "} };"),
                "member": (f"struct {name} : host_t {{", "};"),
                "page": (f"namespace {name} {{", "}"),
            }[kind]
            blocks.append(f'{before}\n#line {line} "{os.path.abspath(document)}"\n{code}{after}\n')
    if not blocks:
        sys.exit("no blocks of C++ were found")
    with open(output, "w", encoding="utf-8") as file:
        file.write("\n".join([*includes, "", *blocks]))


if __name__ == "__main__":
    main()
