"""Makes a catalog of a language that nobody speaks from the English one: every text in brackets and longer by two
fifths, so that a text that was not translated, or has too little room, shows.

usage: make_pseudo_catalog.py ENGLISH.po LANGUAGE OUTPUT.po

en_XA runs from left to right, ar_XB from right to left.
"""
import sys

from catalog_format import read_po

HEADER = "Language: {}\nMIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\nContent-Transfer-Encoding: 8bit\n"
# Letters in which no text is written, in words, so that a line can break between them.
FILLING = {"en_XA": "\u00fd\u00e9\u00f6 \u00fc\u00ef", "ar_XB": "\u0630\u0638\u063a \u062e\u0634"}
RIGHT_TO_LEFT_MARK = "\u200f"


def quoted(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
    return f'"{escaped}"'


def pseudo(text, language):
    """The pattern as it is, between what is put in front of it and behind it."""
    wanted = max(2, len(text) * 2 // 5)
    filling = (FILLING[language] + " ") * (wanted // len(FILLING[language]) + 1)
    mark = RIGHT_TO_LEFT_MARK if language == "ar_XB" else ""
    return f"{mark}[{text} {filling[:wanted].strip()}]"


def main():
    english, language, output = sys.argv[1:]
    with open(output, "w", encoding="utf-8") as file:
        file.write(f'msgid ""\nmsgstr {quoted(HEADER.format(language))}\n')
        for key, message in read_po(english).items():
            file.write(f"\nmsgid {quoted(key)}\nmsgstr {quoted(pseudo(message.text, language))}\n")


if __name__ == "__main__":
    main()
