"""Makes the template of a catalog, from which a translation into another language begins: every key with the English
text above it, and the comments of the English catalog.

usage: make_template.py ENGLISH.po OUTPUT.pot
"""
import sys

from catalog_format import read_po

# What tools fill in when a catalog is begun.
UNKNOWN = {"PO-Revision-Date": "YEAR-MO-DA HO:MI+ZONE", "Last-Translator": "FULL NAME <EMAIL@ADDRESS>",
           "Language-Team": "LANGUAGE <LL@li.org>", "Language": ""}


def template(lines, messages):
    in_header = skipping = False
    for line in lines:
        if line.startswith("msgid "):
            key = line[len('msgid "'):line.rindex('"')]
            in_header, skipping = not key, False
            if key:
                yield "#. English: " + messages[key].text.replace("\n", "\\n") + "\n"
        elif line.startswith("msgstr ") and not in_header:
            skipping = True
            yield 'msgstr ""\n'
            continue
        elif line.startswith('"') and in_header:
            name = line[1:].split(":")[0]
            if name == "Plural-Forms":
                continue
            if name in UNKNOWN:
                line = f'"{name}: {UNKNOWN[name]}\\n"\n'
        if not (skipping and line.startswith('"')):
            yield line


def main():
    english, output = sys.argv[1:]
    with open(english, encoding="utf-8") as file, open(output, "w", encoding="utf-8") as out:
        out.writelines(template(file, read_po(english)))


if __name__ == "__main__":
    main()
