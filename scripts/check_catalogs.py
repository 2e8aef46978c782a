#!/usr/bin/env python3
"""Checks message catalogs against each other and against the code and layouts that use them.

usage: check_catalogs.py --catalogs DIR [--also DIR...] [--sources DIR...] [--xrc FILE...]
                         [--functions NAME...] [--users DIR...] [--glossary FILE]

English is the measure: every other language has the same keys, with the same arguments, in the same style. --also names catalogs in
which a used key may be found as well; they are not checked themselves. --functions names further functions whose first
argument is a key. --users names all folders that may use the catalogs: a key that none of their sources and layouts
names is a finding; a literal that ends with a point names all keys that begin with it. --glossary: the words that each
language uses, and those that it does not.
"""
import argparse
import os
import re
import sys

from catalog_format import FormatError, argument_names, read_po
from catalog_style import faults, letters_twice, read_glossary
from source_format import LITERAL, Source, files_below, literals_of, read_xrc, report

KEY = re.compile(r"[a-z0-9_]+(\.[a-z0-9_]+)*")
# Which argument of a function is a key. Of alternatives in one tuple the first that is a literal counts.
KEY_ARGUMENTS = {
    "translate_message": [(0,)],
    "catalog_key": [(0,)],
    "text_of": [(1, 0)],
    "get_message": [(1,)],
    "set_main_message": [(1,)],
    "set_supplemental_message": [(1,)],
    "set_details_message": [(1,)],
    "simple_error_wnd": [(1,), (2,)],
    "simple_warning_wnd": [(1,), (2,)],
    "warning_wnd_with_check": [(1,), (2,)],
}
TEXT_NODES = ("label", "title", "tooltip", "hint", "help")


def read_catalogs(folder, findings):
    """{language: {key: message}} of the .po files of a folder."""
    catalogs = {}
    for path in files_below([folder], ".po"):
        try:
            catalogs[os.path.basename(path)[:-3]] = read_po(path)
        except FormatError as error:
            findings.append((path, error.line, str(error)))
    return catalogs


def names_in(path, message, findings):
    try:
        return argument_names(message.text)
    except FormatError as error:
        findings.append((path, message.line, f"broken pattern: {error}"))
        return None


def check_style(folder, catalogs, glossary, findings):
    """How texts are written; those that compare() finds broken are passed over."""
    for language, messages in catalogs.items():
        path = os.path.join(folder, language + ".po")
        for key in letters_twice(messages):
            findings.append((path, messages[key].line, f'"{key}": another entry of its menu has its letter'))
        for key, message in messages.items():
            english = catalogs.get("en", {}).get(key)
            if not english or not message.text:
                continue
            try:
                for fault in faults(language, key, message.text, english.text, glossary):
                    findings.append((path, message.line, f'"{key}": {fault}'))
            except FormatError:
                pass


def compare(folder, catalogs, findings):
    """Findings about the catalogs alone."""
    english_path = os.path.join(folder, "en.po")
    english = catalogs.get("en")
    if english is None:
        if not findings:
            findings.append((english_path, 1, "there is no English catalog"))
        return
    english_names = {key: names_in(english_path, message, findings) for key, message in english.items()}
    for language, messages in catalogs.items():
        path = os.path.join(folder, language + ".po")
        for key, message in messages.items():
            if not message.text:
                findings.append((path, message.line, f'"{key}" has no text in {language}'))
            if message.fuzzy:
                findings.append((path, message.line, f'"{key}" is marked as fuzzy and would be left out'))
        if language == "en":
            continue
        for key in english.keys() - messages.keys():
            findings.append((english_path, english[key].line, f'"{key}" is missing in {language}'))
        for key, message in messages.items():
            if key not in english:
                findings.append((path, message.line, f'"{key}" is in {language}, but not in English'))
                continue
            names = names_in(path, message, findings)
            if None not in (names, english_names[key]) and names != english_names[key]:
                findings.append((path, message.line, f'"{key}" has the arguments {sorted(names)} in {language}, '
                                                     f'but {sorted(english_names[key])} in English'))


def keys_in_sources(folders, functions):
    """Yields (path, line, key); functions: which of their arguments are keys."""
    for path in files_below(folders, (".cpp", ".h")):
        source = Source(path)
        for match, arguments in source.calls("|".join(functions)):
            name = match[0].rstrip("( \n")
            for positions in functions[name]:
                candidates = [literals_of(arguments[i]) for i in positions if i < len(arguments)]
                for key in next(filter(None, candidates), []):
                    yield path, source.line(match.start()), key


def keys_in_xrc(paths, findings):
    """Yields (path, line, key); a text that is no key is a finding, unless it says translate="0"."""
    for path in paths:
        for node in read_xrc(path).below():
            texts = [child for child in node.children if child.tag in TEXT_NODES and not child.children]
            if node.tag == "content":
                texts += [child for child in node.children if child.tag == "item"]
            for child in texts:
                text = child.text.strip()
                if not text or child.attributes.get("translate") == "0":
                    continue
                if KEY.fullmatch(text):
                    yield path, child.line, text
                else:
                    findings.append((path, child.line, f'text not from the catalog: "{text}"'))


def keys_in_lists(folders):
    """Yields (path, line, key) of the texts in lists of features that look like keys."""
    for path in files_below(folders, ".cfg"):
        with open(path, encoding="utf-8") as file:
            for number, line in enumerate(file, 1):
                for text in re.findall(r">([^<>]+)</string>", line):
                    if "." in text and KEY.fullmatch(text):
                        yield path, number, text


def words_in(folders):
    """(words that stand in sources, layouts and lists of features, those of them that end with a point)"""
    words = set()
    for path in files_below(folders, (".cpp", ".h")):
        words.update(re.findall(LITERAL, Source(path).text))
    for path in files_below(folders, ".xrc"):
        words.update(node.text.strip() for node in read_xrc(path).below())
    for path in files_below(folders, ".cfg"):
        with open(path, encoding="utf-8") as file:
            words.update(re.findall(r">([^<>]+)</string>", file.read()))
    return words, tuple(word for word in words if re.fullmatch(r"([a-z0-9_]+\.)+", word))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--catalogs", required=True)
    parser.add_argument("--also", nargs="*", default=[])
    parser.add_argument("--sources", nargs="*", default=[])
    parser.add_argument("--xrc", nargs="*", default=[])
    parser.add_argument("--functions", nargs="*", default=[])
    parser.add_argument("--users", nargs="*", default=[])
    parser.add_argument("--glossary")
    options = parser.parse_args()

    findings = []
    catalogs = read_catalogs(options.catalogs, findings)
    compare(options.catalogs, catalogs, findings)
    check_style(options.catalogs, catalogs, read_glossary(options.glossary) if options.glossary else {}, findings)
    others = [read_catalogs(folder, findings) for folder in options.also]
    functions = {**{name: [(0,)] for name in options.functions}, **KEY_ARGUMENTS}
    used = [*keys_in_sources(options.sources, functions), *keys_in_xrc(options.xrc, findings),
            *keys_in_lists(options.sources)]
    for path, line, key in used:
        missing = [language for language, messages in catalogs.items()
                   if not any(key in m for m in (messages, *(other.get(language, {}) for other in others)))]
        if missing:
            findings.append((path, line, f'"{key}" has no text in {", ".join(missing)}'))
    if options.users:
        named, beginnings = words_in(options.users)
        for key, message in catalogs.get("en", {}).items():
            if key not in named and not key.startswith(beginnings):
                findings.append((os.path.join(options.catalogs, "en.po"), message.line, f'nobody uses "{key}"'))
    return report(sorted(findings))


if __name__ == "__main__":
    sys.exit(main())
