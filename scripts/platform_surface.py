#!/usr/bin/env python3
"""Writes down what commondlg3/ needs of the platform, for products that bring one of their own: each name that the
library's sources use, with the first sentence of its documentation, and each function that the built library calls.

usage: platform_surface.py [--write|--exact] ROOT LIBRARY DOCUMENT

Without --write, compares the document with the sources and the library: what has grown shows, and is decided on. The
sentences count with --exact alone, so that nobody who betters a comment has to write the document before he builds.
"""
import collections
import os
import re
import subprocess
import sys

from source_format import Source, files_below

INTRODUCTION = """# What the library needs of the platform

A product that has its own settings, catalogs, signals and look builds `commondlg3/` against those: it brings the headers
below, by these names, and libraries that hold the functions. This page is written by `scripts/platform_surface.py`, and
a build fails when the library needs more, or less, than it says: a new need is a decision. How such a build is set up
stands at the end.

Each name is followed by what it is expected to be, in one sentence, of which the header in `platform/` has the rest; and
by what the library calls of a class and does not find inline in its header. Where nothing is called, the header is all:
interfaces that a product implements, records, templates.
"""
END = """
## Building against another platform

```sh
cmake -S . -B build -DCOMMONDLG3_PLATFORM_DIR=/opt/product/lib/cmake/product_platform
```

The folder holds a CMake package file `commondlg3_platformConfig.cmake`, which defines a target for each library above
under the name that it has here (`commondlg3::gen_helpers2`, ...), with its headers. `platform/` is then not built, and
neither are the gallery and the tests, which use more of it.
"""
NAME = re.compile(r"(?:class|struct|enum class|enum|union)\s+(?:[A-Z0-9_]+_EXPORT\s+)?(\w+)[^;]*$|using\s+(\w+)\s*=|"
                  r"(?!namespace|using|class|struct|enum|template|extern|friend|static_assert|typedef|public|private|"
                  r"protected|return|\})[\w\[][\w:<>,*&\s~\[\]]*?\b(?!if\b|for\b)(\w+)\s*\(|#define\s+(\w+)")
Declared = collections.namedtuple("Declared", "part header name meaning")


def first_sentence(comments):
    text = []
    for line in comments:
        if not line or line.startswith("\\code"):
            break
        text.append(line)
    return re.split(r"(?<=[.:;])\s", " ".join(text), maxsplit=1)[0].rstrip(".:;")


def declared_in(path, library, header):
    """The names that stand at the level of a namespace, where a line has no indent."""
    comments = []
    with open(path, encoding="utf-8") as file:
        for line in file.read().splitlines():
            if line.startswith("///"):
                comments.append(line[3:].strip().removeprefix("@brief "))
                continue
            if line.startswith("template"):
                continue
            found = NAME.match(line)
            name = found and next((group for group in found.groups() if group), None)
            if name and line[0] != " " and not name.endswith("_EXPORT") and not name.startswith("_") and name != "operator" \
                    and not name.startswith("intrusive_ptr_"):  # of each class that counts, by its own
                yield Declared(library, header, name, first_sentence(comments))
            if line:
                comments = []


def declarations(root):
    for library in sorted(os.listdir(os.path.join(root, "platform"))):
        include = os.path.join(root, "platform", library, "include")
        if os.path.isdir(include):
            for path in files_below([include], ".h"):
                yield from declared_in(path, library, os.path.relpath(path, include))


def called_functions(library):
    """Demangled names of the platform's functions that the built library does not hold itself."""
    table = subprocess.run(["nm", "-DC", "--undefined-only", library], capture_output=True, text=True, check=True).stdout
    for line in table.splitlines():
        name = line.split(" U ", 1)[-1].strip().replace("[abi:cxx11]", "")
        name = name.replace("std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >", "string")
        name = name.replace("std::basic_string_view<char, std::char_traits<char> >", "string_view")
        if re.match(r"(gen_helpers2|wx_helpers1|cfgmgr2|CPIL_2_18|rdmgr2|cctrl2|FF_2_13|vdx\w+|msngr2)::", name):
            yield re.sub(r", std::(allocator|less|default_delete)<[^<>]*(<[^<>]*>)?[^<>]*> ?>", ">", name)


def write(root, library):
    # A macro of the export header is no need of its own; a name counts where a source says it.
    used = set()
    headers = set()
    for path in files_below([os.path.join(root, "commondlg3")], (".h", ".cpp")):
        source = Source(path)
        used.update(re.findall(r"\w+", source.code))
        headers.update(re.findall(r'#include <([\w/]+\.h)>', source.text))
    calls = collections.defaultdict(list)
    for call in called_functions(library):
        parts = [part for part in re.split(r"::|\(", re.sub(r"<.*?>", "", call.split("(", 1)[0])) if part]
        calls[parts[-2] if len(parts) > 1 else ""].append((call, parts[-1]))
    known = [entry for entry in declarations(root) if entry.header in headers and entry.name in used]
    classes = {entry.name for entry in known}
    lines = [INTRODUCTION]
    counts = collections.Counter()
    for name in sorted({entry.part for entry in known}):
        lines.append(f"\n## {name}\n\n| name | header | what it is | what is called of it |\n|---|---|---|---|\n")
        seen = set()
        for entry in (entry for entry in known if entry.part == name):
            if entry.name in seen:
                continue
            seen.add(entry.name)
            counts["names"] += 1
            functions = sorted({short(call) for call, _ in calls.get(entry.name, ())})
            counts["functions"] += len(functions)
            listed = ", ".join(f"`{call}`" for call in functions)
            lines.append(f"| `{entry.name}` | `{entry.header}` | {entry.meaning} | {listed} |\n")
    total = f"{counts['names']} names, and {counts['functions']} functions of classes."
    lines.insert(1, f"\n{total}\n")
    rest = sorted({call for owner, found in calls.items() if owner not in classes
                   for call, last in found if last not in classes})
    if rest:
        lines.append("\n## Functions of classes that no source names\n\n")
        lines.extend(f"- `{call}`\n" for call in rest)
    return "".join(lines) + END


def short(call):
    """Without the namespaces of the owner: the section says them."""
    head, bracket, tail = call.partition("(")
    return head.rsplit("::", 1)[-1] + bracket + tail


def needs(text, exact):
    """The lines of a document that say what is needed; without the sentences, unless they count too."""
    lines = text.splitlines()
    if exact:
        return lines
    return [re.sub(r"^(\| `.*?` \| `.*?` \|).*(\|.*\|)$", r"\1\2", line) for line in lines if line.startswith(("| `", "- `"))]


def main():
    arguments = sys.argv[1:]
    option = arguments.pop(0) if arguments[:1] in (["--write"], ["--exact"]) else ""
    root, library, document = arguments
    now = write(root, library)
    if option == "--write":
        with open(document, "w", encoding="utf-8") as file:
            file.write(now)
        return 0
    before = ""
    if os.path.exists(document):
        with open(document, encoding="utf-8") as file:
            before = file.read()
    before, now = needs(before, option == "--exact"), needs(now, option == "--exact")
    for line in now:
        if line not in before:
            print(f"{document}: is not listed: {line}")
    for line in before:
        if line not in now:
            print(f"{document}: is needed no more: {line}")
    if before != now:
        print("Decide whether the library is to need it of every product's platform; scripts/platform_surface.py --write "
              "writes it down")
    return 1 if before != now else 0


if __name__ == "__main__":
    sys.exit(main())
