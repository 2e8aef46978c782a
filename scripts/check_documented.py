#!/usr/bin/env python3
"""Reads what Doxygen warned of, and says which public names have no words. A name needs none where one of these rules
says so; everything else in a public header does, and any other warning is a finding as it stands.

usage: check_documented.py FILE_OF_WARNINGS

  overrides     what overrides a documented operation, or one of the toolkit's, says nothing new
  given         destructors, comparisons, conversions, friends, what is defaulted or deleted
  constructors  of a documented class, whose example shows one
  enumerators   those of a documented enumeration (Doxygen asks for none; give words to all of them, or to none)
  members       data of a documented struct or class, which its comment explains as a whole
  asks          what answers what its name says (get_x(), is_x(), has_x(), size()) and takes nothing
  pairs         set_x() beside a documented get_x(), is_x() or m_x, and the other way round
  overloads     those of an operation that is documented in the same header
  aliases       they say themselves what they stand for
  counting      add_ref() and release(), and what calls them for the pointer
  special       the forms of a documented template for one type
  handlers      what takes an event of the toolkit and is named after it
"""
import re
import sys

WARNING = re.compile(r"(?P<file>[^:]+):(?P<line>\d+): warning: (?P<text>.*)")
MEMBER = re.compile(r"Member (?P<name>.*) \((?P<kind>[a-z ]+)\) of (?P<of>\w+) (?P<owner>.+) is not documented\.")
ASKS = re.compile(r"((get|is|has|can)_\w+|(Get|Is|Has)[A-Z]\w*|size|empty|begin|end|c_str|name|type)"
                  r"\(\)( const)?( noexcept)?( =0)?")
GIVEN = re.compile(r"~|operator\b|= (default|delete)\b|\bfriend\b")


def read(file, kept={}):
    if file not in kept:
        with open(file, encoding="utf-8") as source:
            kept[file] = source.read().split("\n")
    return kept[file]


def declaration(file, line):
    """The declaration that begins at a line, to its end."""
    lines = []
    for text in read(file)[line - 1:line + 8]:
        lines.append(text.split("//")[0])
        if ";" in text or "{" in text:
            break
    return " ".join(lines)


def is_beside(names, file):
    """Whether one of these names has words of its own in the file."""
    lines = read(file)
    for number, text in enumerate(lines):
        code = text.split("//")[0]
        if any(re.search(rf"\b{name}\(", code) for name in names) and (
                "///<" in text or lines[number - 1].lstrip().startswith("///")):
            return True
    return False


def excuse(member, file, line):
    """Whether a rule says that this name, which is declared there, needs no words."""
    text = declaration(file, line)
    kind = member["kind"]
    name = re.sub(r"[(<].*", "", member["name"])
    if kind == "friend" or GIVEN.search(member["name"]) or GIVEN.search(text):
        return True
    if text.startswith("template <>") or text.startswith("extern template"):
        return True
    if kind == "variable" and member["of"] in ("struct", "class"):
        return True
    if kind == "typedef":
        return True
    if kind != "function":
        return False
    if re.match(r"(intrusive_ptr_)?(add_ref|release)\b", name):
        return True
    if re.search(r"\b(override|final)\b", text):
        return True
    if re.search(r"\(\s*wx\w*Event\s*&", member["name"]):
        return True
    if name == re.sub("<.*", "", member["owner"]).split("::")[-1]:
        return True
    if ASKS.fullmatch(member["name"]):
        return True
    word = re.fullmatch("(?:set|get|is|can|has|Set|Get|Is)_?(.*)", name)
    if word and is_beside([f"(?:set|get|is|can|has|Set|Get|Is)_?{word[1]}"], file):
        return True
    if is_beside([name], file):
        return True
    return False


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        warnings = file.read().splitlines()
    findings = {}
    for line in warnings:
        warning = WARNING.match(line)
        member = warning and MEMBER.match(warning["text"])
        if not member:
            findings[line] = line
            continue
        # A name that others inherit is warned of once for each of them.
        place = warning["file"], int(warning["line"])
        if not excuse(member, *place):
            findings.setdefault(place, line)
    for finding in findings.values():
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
