"""Reads C++ sources and XRC files just far enough to check them, and keeps the line of everything."""
import os
import re
import xml.parsers.expat

TOKEN = re.compile(r"""
    //[^\n]* | /\*.*?\*/
    | R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)"
    | "(?:\\.|[^"\\\n])*"
    | (?<!\w)'(?:\\.|[^'\\\n])*'
    """, re.DOTALL | re.VERBOSE)
LITERAL = r'"((?:\\.|[^"\\\n])*)"'
BLANK = re.compile(r"[^\n]")


def files_below(folders, endings):
    for folder in folders:
        if not os.path.isdir(folder):
            raise SystemExit(f"{folder}: no such folder")
        for path, folders_here, names in os.walk(folder):
            folders_here.sort()
            yield from (os.path.join(path, name) for name in sorted(names) if name.endswith(endings))


class Source:
    """A C++ file. `text` is without comments, `code` without the contents of literals too; positions stay the same."""

    def __init__(self, path):
        self.path = path
        with open(path, encoding="utf-8") as file:
            whole = file.read()
        self.text = TOKEN.sub(lambda m: BLANK.sub(" ", m[0]) if m[0][0] == "/" else m[0], whole)
        self.code = TOKEN.sub(lambda m: m[0][0] + BLANK.sub(" ", m[0][1:-1]) + m[0][-1], self.text)

    def line(self, position):
        return self.text.count("\n", 0, position) + 1

    def closing(self, opening):
        """The position of the bracket that closes the one at `opening`."""
        depth = 0
        for match in re.compile(r"[\[({})\]]").finditer(self.code, opening):
            depth += 1 if match[0] in "[({" else -1
            if depth == 0:
                return match.start()
        return len(self.code)

    def calls(self, name):
        """Yields (match, arguments as text) for each place where the expression `name` stands before a "("."""
        for match in re.finditer(r"\b(?:" + name + r")\s*\(", self.code):
            yield match, self.arguments(match.end() - 1)

    def arguments(self, opening):
        found, start, at, end = [], opening + 1, opening + 1, self.closing(opening)
        while at < end:
            if self.code[at] in "[({":
                at = self.closing(at)
            elif self.code[at] == ",":
                found.append(self.text[start:at].strip())
                start = at + 1
            at += 1
        return found + [self.text[start:end].strip()]


def literals_of(argument):
    """The strings that an argument can be: of a literal, or of a choice between two."""
    match = re.fullmatch(rf'{LITERAL}|[^"]*\?\s*{LITERAL}\s*:\s*{LITERAL}', argument)
    return [text for text in match.groups() if text is not None] if match else []


class Node:
    """An element of an XRC file."""

    def __init__(self, tag, attributes, line):
        self.tag, self.attributes, self.line = tag, attributes, line
        self.text, self.children = "", []

    def below(self):
        for child in self.children:
            yield child
            yield from child.below()

    def is_object(self):
        return self.tag in ("object", "object_ref")

    @property
    def name(self):
        return self.attributes.get("name", "")


def read_xrc(path):
    """The root element; SystemExit with the line when the file is no XML."""
    parser = xml.parsers.expat.ParserCreate()
    parser.buffer_text = True
    root = Node("", {}, 0)
    open_nodes = [root]

    def start(tag, attributes):
        node = Node(tag, attributes, parser.CurrentLineNumber)
        open_nodes[-1].children.append(node)
        open_nodes.append(node)

    def text(data):
        open_nodes[-1].text += data

    parser.StartElementHandler = start
    parser.EndElementHandler = lambda tag: open_nodes.pop()
    parser.CharacterDataHandler = text
    try:
        with open(path, "rb") as file:
            parser.ParseFile(file)
    except xml.parsers.expat.ExpatError as error:
        raise SystemExit(f"{path}:{error.lineno}: {error}") from error
    return root.children[0]


def report(findings):
    """Prints (path, line, message) and gives the exit code."""
    for path, line, message in findings:
        print(f"{path}:{line}: {message}")
    return 1 if findings else 0
