#!/usr/bin/env python3
"""Checks that no layer includes what stands above it, or a library that is not its own to use.

usage: check_layers.py ROOT
"""
import collections
import os
import re
import sys

from source_format import Source, files_below, report

Layer = collections.namedtuple("Layer", "name folder only never")

# From the bottom up: a layer may include itself and those before it, and libraries: those in `only`, or, where that is
# None, all but those in `never`.
TOOLKIT = {"wx", "gtk", "gdk", "pango"}
LAYERS = [
    Layer("gen_helpers2", "platform/gen_helpers2", None, TOOLKIT),
    Layer("cpil", "platform/cpil", None, TOOLKIT),
    Layer("cfgmgr2", "platform/cfgmgr2", None, TOOLKIT),
    Layer("msngr2", "platform/msngr2", None, TOOLKIT),
    Layer("rdmgr2", "platform/rdmgr2", None, TOOLKIT),
    Layer("cctrl2", "platform/cctrl2", None, TOOLKIT),
    Layer("ff", "platform/ff", None, TOOLKIT),
    Layer("wx_helpers1", "platform/wx_helpers1", None, set()),
    Layer("vdx", "platform/vdx", None, set()),
    Layer("vdxpropgrid2", "platform/vdxpropgrid2", None, set()),
    Layer("commondlg3", "commondlg3", {"wx", "boost", "log4cplus"}, set()),
    Layer("gallery", "gallery", {"wx", "nlohmann"}, set()),
]
# Headers of the system that have an ending; those of the C++ library have none.
SYSTEM = {"dirent", "dlfcn", "errno", "fcntl", "limits", "locale", "pthread", "signal", "stdint", "stdlib", "string",
          "sys", "time", "unistd"}
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"\n]+)[>"]', re.MULTILINE)


def fault(layer, below, own_folders, quoted, header):
    """What is wrong with an include directive; None when nothing is."""
    top = header.split("/")[0]
    library = top[:-2] if top.endswith(".h") else top
    if top == "..":
        return f"{header} leaves the folder"
    if top == layer.name or top in below:
        return None
    if top in {other.name for other in LAYERS}:
        return f"{layer.name} stands below {top} and may not include {header}"
    if quoted and any(os.path.isfile(os.path.join(folder, header)) for folder in own_folders):
        return None
    if layer.only is None:
        allowed = library not in layer.never
    else:
        allowed = library in layer.only | SYSTEM or "/" not in header and not header.endswith(".h")
    return None if allowed else f"{layer.name} may not include {header}"


def check(root):
    findings = []
    for position, layer in enumerate(LAYERS):
        below = {other.name for other in LAYERS[:position]}
        folder = os.path.join(root, layer.folder)
        for path in files_below([folder], (".cpp", ".h")):
            source = Source(path)
            for match in INCLUDE.finditer(source.text):
                own_folders = (os.path.dirname(path), os.path.join(folder, "src"))
                message = fault(layer, below, own_folders, match[1] == '"', match[2])
                if message:
                    findings.append((path, source.line(match.start(1)), message))
    return findings


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(report(check(sys.argv[1])))
