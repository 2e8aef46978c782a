#!/usr/bin/env python3
"""Checks that code and resources name the same things.

usage: check_resources.py [--sources DIR...] [--xrc FILE...] [--image-loader FILE.cpp --images FILE.xrc]

Layouts: a class that calls set_resource_object("dlg.name") belongs to that object; each lookup<T>(..., "m_name") in its
methods, by whatever name the function has, names a window below it whose class is T. A lookup elsewhere, and each
XRCID("m_name"), names a window of some layout; nothing but from_xrc() itself asks the toolkit. Pictures: each name in the image loader's tables is in the image
resource; each file that this resource names exists, and each picture beside them is named.
"""
import argparse
import os
import re
import sys

from source_format import LITERAL, Source, files_below, literals_of, read_xrc, report

CONTROLS = ("wxButton wxBitmapButton wxToggleButton wxTextCtrl wxStaticText wxStaticBitmap wxStaticLine wxStaticBox "
            "wxCheckBox wxRadioButton wxRadioBox wxChoice wxComboBox wxListBox wxListCtrl wxTreeCtrl wxSearchCtrl "
            "wxSpinCtrl wxSlider wxGauge wxHyperlinkCtrl wxNotebook wxAnimationCtrl").split()
# Further types under which a window of a class may be looked up; wxWindow takes them all.
BASES = {**{control: {"wxControl"} for control in CONTROLS},
         "wxBitmapButton": {"wxControl", "wxButton"}, "wxSearchCtrl": {"wxControl", "wxTextCtrl"},
         "wxDialog": {"wxTopLevelWindow"}, "wxFrame": {"wxTopLevelWindow"}, "wxScrolledWindow": {"wxPanel"}}
NOT_WINDOWS = re.compile(r"wx\w*Sizer|sizeritem|spacer|notebookpage|wxMenu\w*|separator|tool|wxBitmap|wxIcon")

CLASS = re.compile(r"(?<!enum )\b(?:class|struct)\s+(?:\w+_EXPORT\s+)?(\w+)\s*(?:final\s*)?(?::[^{;()]*)?\{")
METHOD = re.compile(r"\b(\w+)\s*(?:<[^<>;{}]*>)?\s*::\s*~?\w+\s*\(")


def body_of_function(source, opening):
    """Where the body begins that follows the parameters at `opening`; None for a call or a declaration."""
    def skip(expression, position):
        return re.compile(expression).match(source.code, position).end()

    at = skip(r"(?:\s|\bconst\b|\bnoexcept\b|\boverride\b|\btry\b)*", source.closing(opening) + 1)
    if source.code[at:at + 1] == ":" and source.code[at:at + 2] != "::":
        while True:
            member = re.compile(r"[:,]\s*[\w:]+\s*(?:<[^(){}]*>)?\s*[({]").match(source.code, at)
            if not member:
                return None
            at = skip(r"\s*", source.closing(member.end() - 1) + 1)
            if source.code[at:at + 1] != ",":
                break
    return at if source.code[at:at + 1] == "{" else None


def class_regions(source):
    """(begin, end, class) of the class definitions and of the methods defined outside of them."""
    for match in CLASS.finditer(source.code):
        yield match.end() - 1, source.closing(match.end() - 1), match[1]
    for match in METHOD.finditer(source.code):
        body = body_of_function(source, match.end() - 1)
        if body is not None:
            yield body, source.closing(body), match[1]


def owner(regions, position):
    inside = [region for region in regions if region[0] <= position <= region[1]]
    return max(inside)[2] if inside else None


def value_of(source, argument):
    """The string of a literal, or of a constant of the same file."""
    literal = literals_of(argument)
    if not literal and re.fullmatch(r"\w+", argument):
        literal = re.findall(rf"\b{argument}(?:\[\])?\s*(?:=\s*|\{{\s*){LITERAL}", source.text)
    return literal[0] if literal else None


def read_code(folders, findings):
    """({class: [(path, line, object)]}, [(path, line, class, type, control)])"""
    objects, lookups = {}, []
    for path in files_below(folders, (".cpp", ".h")):
        source = Source(path)
        regions = list(class_regions(source))
        for match, arguments in source.calls("set_resource_object"):
            name, cls = value_of(source, arguments[0]), owner(regions, match.start())
            if name and cls:
                objects.setdefault(cls, []).append((path, source.line(match.start()), name))
        for match, arguments in source.calls(r"\w+\s*<\s*[\w:]+\s*>"):
            name = value_of(source, arguments[-1]) if arguments else None
            if name and len(arguments) == 2 and ("from_xrc" in match[0] or name.startswith("m_")):
                wanted = re.search(r"<\s*(?:\w*::)*(\w+)", match[0])[1]
                lookups.append((path, source.line(match.start()), owner(regions, match.start()), wanted, name))
        for match, arguments in source.calls("XRCID"):
            lookups.append((path, source.line(match.start()), None, "wxWindow", value_of(source, arguments[0])))
        for match, arguments in source.calls("GetXRCID"):
            if os.path.basename(path) != "resources.h":
                findings.append((path, source.line(match.start()), "controls are looked up by from_xrc()"))
    return objects, lookups


def read_layouts(paths, findings):
    """{name of a top-level object: node}; names that stand twice are findings."""
    layouts = {}
    for path in paths:
        for top in filter(lambda node: node.is_object(), read_xrc(path).children):
            if top.name in layouts:
                findings.append((path, top.line, f'a second object "{top.name}"'))
            layouts.setdefault(top.name, top)
            seen = {}
            for node in top.below():
                if node.is_object() and node.name:
                    if node.name in seen:
                        findings.append((path, node.line, f'"{node.name}" is in "{top.name}" twice, '
                                                          f'first in line {seen[node.name]}'))
                    seen.setdefault(node.name, node.line)
    return layouts


def accepts(node, wanted):
    own, subclass = node.attributes.get("class", ""), node.attributes.get("subclass", "")
    if own == "unknown":
        return True
    if NOT_WINDOWS.fullmatch(own):
        return False
    return wanted in {"wxWindow", own, subclass.split("::")[-1]} | BASES.get(own, set())


def check_layouts(sources, xrc, findings):
    layouts = read_layouts(xrc, findings)
    objects, lookups = read_code(sources, findings)
    for cls, places in objects.items():
        for path, line, name in places:
            if name not in layouts:
                findings.append((path, line, f'{cls}: no resource has an object "{name}"'))
    for path, line, cls, wanted, name in lookups:
        own = [layouts[object_name] for _, _, object_name in objects.get(cls, []) if object_name in layouts]
        tops = own or list(layouts.values())
        named = [node for top in tops for node in top.below() if node.is_object() and node.name == name]
        places = ", ".join(f'"{top.name}"' for top in own) or "any layout"
        if not named:
            findings.append((path, line, f'{cls}: "{name}" is not below {places}'))
        elif named and not any(accepts(node, wanted) for node in named):
            findings.append((path, line, f'{cls}: "{name}" of {places} is a {named[0].attributes.get("class")}, '
                                         f'not a {wanted}'))


def names_in_function(source, function):
    """(line, string) of the literals in a function's body; None when the file has no such function."""
    for match, _ in source.calls(function):
        body = body_of_function(source, match.end() - 1)
        if body is not None:
            strings = re.compile(LITERAL).finditer(source.text, body, source.closing(body))
            return [(source.line(string.start()), string[1]) for string in strings]
    return None


def check_images(loader, images, findings):
    source = Source(loader)
    nodes = [node for node in read_xrc(images).children if node.is_object()]
    for function, kind in (("create_image_names_map", "wxBitmap"), ("create_animation_names_map", "wxAnimation")):
        present = {node.name for node in nodes if node.attributes.get("class") == kind}
        names = names_in_function(source, function)
        if not names:
            findings.append((loader, 1, f"{function}() is missing, or names nothing"))
        for line, name in names or []:
            if name not in present:
                findings.append((loader, line, f'no {kind} is called "{name}" in {os.path.basename(images)}'))
    check_files(images, nodes, findings)


def check_files(images, nodes, findings):
    folder = os.path.dirname(images)
    named, seen = set(), set()
    for node in nodes:
        if node.name in seen:
            findings.append((images, node.line, f'a second picture "{node.name}"'))
        seen.add(node.name)
        for part in [child for child in node.children if child.tag == "frame"] or [node]:
            file = part.text.strip()
            named.add(os.path.normpath(os.path.join(folder, file)))
            if not os.path.isfile(os.path.join(folder, file)):
                findings.append((images, part.line, f'"{node.name}": there is no file "{file}"'))
    for path in files_below([os.path.join(folder, "pictures")], ".svg"):
        if os.path.normpath(path) not in named:
            findings.append((path, 1, f"{os.path.basename(images)} does not name this picture"))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sources", nargs="*", default=[])
    parser.add_argument("--xrc", nargs="*", default=[])
    parser.add_argument("--image-loader")
    parser.add_argument("--images")
    options = parser.parse_args()
    if bool(options.image_loader) != bool(options.images):
        parser.error("--image-loader and --images go together")

    findings = []
    check_layouts(options.sources, options.xrc, findings)
    if options.images:
        check_images(options.image_loader, options.images, findings)
    return report(sorted(findings))


if __name__ == "__main__":
    sys.exit(main())
