"""What a machine can see of the catalogs' style: the signs and blanks of each language, and the words that are not used.

The words are those of the tables in a glossary: a heading of two hashes and a language begins its part, a row says words
of English, the language's own words for them, and those that are not used in their place.
"""
import re

from catalog_format import ARGUMENT, NUMBER, shown_text

FIRST_ISOLATE, POP_ISOLATE = "\u2068", "\u2069"
ARABIC = "[\u0621-\u064a]"
JAPANESE = f"[\u3001-\u30ff\u3400-\u9fff\uff01-\uffef{ARGUMENT}{NUMBER}]"
# (what must not stand in a text as it is shown, what is said about it); "" stands for every language.
SIGNS = {
    "": [
        (f'''(?<=[\\w.,!?{ARGUMENT}{NUMBER}])["']|["'](?=[\\w{ARGUMENT}{NUMBER}])''',
         "a quotation mark or an apostrophe of the typewriter"),
        (r"\.\.\.", "three points where … belongs"),
        (r"\S[ \u00a0]{2,}\S", "two blanks"),
    ],
    "en": [(r"[„«»「」]", "quotation marks of another language"),
           (r"\d (?=%|[kKMG]B\b)", "a common blank between a number and its unit")],
    "de": [(r"[”«»「」]", "quotation marks of another language"),
           (f"[\\d{ARGUMENT}{NUMBER}](?: (?=%|[kKMG]B\\b)|(?=%))", "no no-break space between a number and its unit")],
    "ja": [
        (r"[“”„«»]", "quotation marks of another language"),
        (f"(?<![:–\\s]) (?={JAPANESE})|(?<={JAPANESE}) (?![–\\s]|$)", "a blank beside Japanese"),
        (f"(?<={JAPANESE})[?!,.]", "a half-width sign behind Japanese"),
        (f"{JAPANESE}.*\\((?!&)|\\((?!&).*{JAPANESE}", "half-width parentheses"),
    ],
    "ar": [
        (r"[“”„「」]", "quotation marks of another language"),
        ("[\u200e\u200f]", "a mark of direction where isolates belong"),
        (f"(?<={ARABIC})[?,;%]", "a sign of Latin behind Arabic"),
        (ARGUMENT, "an argument outside of isolates"),
    ],
}
ANY = "(any)"


def read_glossary(path):
    """{language: [(English words, own words, words not used)]}"""
    glossary, language = {}, None
    with open(path, encoding="utf-8") as file:
        for line in file:
            if line.startswith("## "):
                language = line[3:].strip()
            cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
            if language and line.startswith("|") and len(cells) == 3 and cells[0] not in ("English", "---"):
                row = [[word.strip() for word in cell.split(",") if word.strip()] for cell in cells]
                glossary.setdefault(language, []).append(row)
    return glossary


def _has_word(text, words, language):
    """The first of the words that is in a text; in Latin letters at the beginning of a word."""
    start = r"(?<!\w)" if language not in ("ja", "ar") else ""
    return next((word for word in words if re.search(start + re.escape(word), text, re.IGNORECASE)), None)


def _unused_words(language, shown, english, rows):
    english_words = [(words, own) for words, own, _ in rows
                     if language == "en" or words == [ANY] or _has_word(english, words, "en")]
    # What one row rules out is right where another, whose English is there as well, asks for it.
    for word in sorted((word for _, own in english_words for word in own), key=len, reverse=True):
        shown = re.sub(re.escape(word), "", shown, flags=re.IGNORECASE)
    for words, own, unused in rows:
        if (words, own) in english_words:
            found = _has_word(shown, unused, language)
            if found:
                yield f'"{found}" is not used' + (f' for "{words[0]}": {", ".join(own)}' if own else "")


def _letter(text):
    """The letter behind &, by which a control is reached; that of an escaped sign is none."""
    match = re.search(r"&(\w)(?!\w+;)", text)
    return match and match[1].lower()


def letters_twice(messages):
    """Yields the keys of entries whose letter another entry of their menu has: those called "….menu_…" are one menu."""
    seen = set()
    for key, message in messages.items():
        menu, letter = re.match(r".*\.menu_", key), _letter(message.text)
        if menu and letter:
            if (menu[0], letter) in seen:
                yield key
            seen.add((menu[0], letter))


def faults(language, key, pattern, english, glossary):
    """Yields what is wrong with a pattern of a language. English: its text in that language."""
    shown = shown_text(pattern)
    english_shown = shown_text(english)
    # A chooser's filter is names and patterns of files by turns.
    if "|*" in shown:
        shown = "\n".join(shown.split("|")[::2])
    outside = re.sub(f"{FIRST_ISOLATE}[^{FIRST_ISOLATE}{POP_ISOLATE}]*{POP_ISOLATE}", "\ufffc", shown)
    if shown.count(FIRST_ISOLATE) != shown.count(POP_ISOLATE) or re.search(f"[{FIRST_ISOLATE}{POP_ISOLATE}]", outside):
        yield "an isolate that is not closed, or not opened"
    base = language.split("_")[0]
    for expression, what in SIGNS[""] + SIGNS.get(base, []):
        if re.search(expression, outside):
            yield what
    if base == "ar" and re.search(ARABIC, shown) and re.search(r"[A-Za-z0-9]", outside):
        yield "Latin letters or digits outside of isolates"
    if base == "de" and shown.count("„") != shown.count("“"):
        yield "„ and “ do not come in pairs"
    for sign in ":…":
        if shown.rstrip().endswith(sign) != english_shown.rstrip().endswith(sign):
            yield f"“{sign}” at the end of one of English and {language}, and not of the other"
    if bool(_letter(shown)) != bool(_letter(english_shown)):
        yield f"a letter behind & in one of English and {language}, and not in the other"
    if not key.endswith(".words"):
        yield from _unused_words(base, shown, english_shown, glossary.get(base, []))
