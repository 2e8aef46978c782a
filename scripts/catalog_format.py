"""Reads message catalogs (.po) and the ICU message patterns in them."""
import ast
import collections
import re

Message = collections.namedtuple("Message", "text line fuzzy")

PLURAL_KEYWORDS = {"zero", "one", "two", "few", "many", "other"}
SIMPLE_TYPES = {"number", "date", "time", "spellout", "ordinal", "duration"}
NAME = re.compile(r"[^\W\d]\w*")
# What stands for arguments in what a pattern shows: characters that no text has.
ARGUMENT, NUMBER = "\ue000", "\ue001"


class FormatError(Exception):
    """What is wrong, and the line of the file where that is known."""

    def __init__(self, reason, line=0):
        super().__init__(reason)
        self.line = line


def read_po(path):
    """Returns {key: Message}, without the header entry. Obsolete entries (#~) count as comments."""
    messages, entry, field, fuzzy = {}, {}, None, False

    def finish():
        if "msgstr" in entry and entry["msgid"]:
            key = entry["msgid"]
            if key in messages:
                raise FormatError(f'"{key}" stands here twice, first in line {messages[key].line}', entry["line"])
            messages[key] = Message(entry["msgstr"], entry["line"], entry["fuzzy"])

    with open(path, encoding="utf-8") as file:
        for number, line in enumerate(map(str.strip, file), 1):
            if line.startswith("#"):
                fuzzy = fuzzy or (line.startswith("#,") and "fuzzy" in line)
                continue
            if not line:
                continue
            match = re.fullmatch(r'(?:(msgid|msgstr)\s+)?("(?:[^"\\]|\\.)*")', line)
            if not match or not (match[1] or field):
                raise FormatError("neither a message nor a comment", number)
            if match[1] == "msgid":
                finish()
                entry, fuzzy = {"line": number, "fuzzy": fuzzy}, False
            field = match[1] or field
            # The escapes of .po strings are those of Python's.
            entry[field] = entry.get(field, "") + ast.literal_eval(match[2])
    finish()
    return messages


class _Pattern:
    """A recursive-descent reader of one pattern; it collects the names of the arguments and what is shown."""

    def __init__(self, text):
        self.text, self.at, self.names, self.shown = text, 0, set(), []

    def peek(self):
        return self.text[self.at:self.at + 1]

    def take(self, expression):
        match = re.compile(expression).match(self.text, self.at)
        if match:
            self.at = match.end()
        return match and match[0]

    def expect(self, expression, what):
        taken = self.take(expression)
        if taken is None:
            raise FormatError(f"{what} expected at character {self.at + 1}")
        return taken

    def message(self, nested, in_plural=False):
        while self.peek():
            if self.peek() == "}":
                if not nested:
                    raise FormatError(f'"}}" without "{{" at character {self.at + 1}')
                return
            if self.peek() == "{":
                self.argument()
            elif self.peek() == "'":
                self.apostrophe(in_plural)
            else:
                self.shown.append(self.peek())
                self.at += 1
        if nested:
            raise FormatError('"{" without "}"')

    def apostrophe(self, in_plural):
        """Two stand for one; one before a character of the syntax quotes up to the next single one."""
        start = self.at
        self.at += 1
        if self.take("'") or self.peek() not in (*"{}", *("#" * in_plural)):
            self.shown.append("'")
            return
        quoted = self.take(r"(?:[^']|'')*'")
        if quoted is None:
            raise FormatError(f"the apostrophe at character {start + 1} opens a quotation that never ends")
        self.shown.append(quoted[:-1].replace("''", "'"))

    def argument(self):
        self.expect(r"\{\s*", '"{"')
        self.names.add(self.expect(NAME, "the name of an argument"))
        if self.take(r"\s*,\s*"):
            kind = self.expect(r"[a-z]+", "the type of the argument")
            if kind in ("plural", "select", "selectordinal"):
                self.expect(r"\s*,\s*", '","')
                self.choices(kind)
            elif kind not in SIMPLE_TYPES:
                raise FormatError(f'no argument type is called "{kind}"')
            elif self.take(r"\s*,"):
                self.expect(r"(?:[^{}']|'[^']*')+", "a style")
            if kind in SIMPLE_TYPES:
                self.shown.append(NUMBER)
        else:
            self.shown.append(ARGUMENT)
        self.expect(r"\s*\}", '"}"')

    def choices(self, kind):
        counts = kind != "select"
        if counts:
            self.take(r"offset:\s*\d+\s*")
        seen = set()
        while self.take(r"\s*(?=[=\w])") is not None:
            selector = self.expect(r"=\d+|\w+" if counts else r"\w+", "a selector")
            if counts and selector[0] != "=" and selector not in PLURAL_KEYWORDS:
                raise FormatError(f'"{selector}" is no plural category')
            if selector in seen:
                raise FormatError(f'"{selector}" stands twice in one {kind}')
            seen.add(selector)
            self.expect(r"\s*\{", '"{"')
            self.shown.append("\n")
            self.message(nested=True, in_plural=counts)
            self.expect(r"\}\s*", '"}"')
        if "other" not in seen:
            raise FormatError(f'{kind} without "other"')
        self.shown.append("\n")


def argument_names(pattern):
    """The names of all arguments of a pattern; FormatError when it is broken."""
    reader = _Pattern(pattern)
    reader.message(nested=False)
    return reader.names


def shown_text(pattern):
    """What a pattern shows, without its syntax: ARGUMENT or NUMBER for each argument, a line for each choice."""
    reader = _Pattern(pattern)
    reader.message(nested=False)
    return "".join(reader.shown)
