"""The documents that scripts/reference writes, as Markdown and as a manual page, from the paragraphs of its sources."""

import re
import textwrap
from dataclasses import dataclass, field

MAN_WIDTH = 76
MARKDOWN_WIDTH = 120
CODE = re.compile(r"(`+) ?(.+?) ?\1(?!`)")


class Refused(Exception):
    """What the sources lack."""


@dataclass
class Row:
    """A command of the tables."""
    words: str
    is_hidden: bool
    help: str


@dataclass
class Item:
    """A key of the CAPWAP configuration."""
    initial: str
    place: str  # in the file, with the title of its section; nothing: it is not saved
    values: str


@dataclass
class Piece:
    """A paragraph of a source; `rows` are the commands, keys, or lines of it."""
    kind: str
    text: str
    place: str
    rows: list = field(default_factory=list)


def command_rows(piece, commands):
    """The rows of the tables that a piece describes: for each of its lines its names, with arguments, and their rows."""
    found = []
    for line in piece.rows:
        rows = []
        for name in line.split(" = "):
            words = name.split()
            count = len(words)
            while count > 0 and " ".join(words[:count]) not in commands:
                count -= 1
            if count == 0:
                raise Refused(f"{piece.place}: there is no command \"{name}\"")
            rows.append(commands[" ".join(words[:count])])
        if len({row.help for row in rows}) > 1 and all(row.words.count(" ") for row in rows):
            raise Refused(f"{piece.place}: the help texts differ")
        found.append((line.split(" = "), rows))
    return found


def blocks_of(pieces):
    """What stands below each title, and below each command that has none."""
    block = []
    for piece in pieces:
        titled = [other.kind for other in block] == ["subsection"]
        if piece.kind in ("section", "subsection") or (piece.kind == "commands" and not titled):
            yield block
            block = []
        block.append(piece)
    yield block


class Page:
    """What Markdown and the manual page have in common."""

    def __init__(self, commands, items):
        self.commands, self.items, self.lines = commands, items, []

    def default_of(self, row):
        """Of the item that a command sets."""
        item = self.items.get(row.words.split()[-1]) if row.words.startswith("config capwap") else None
        return item.initial if item else ""

    def key_rows(self, piece):
        for row in piece.rows:
            key, meaning = row.split(": ", 1)
            yield key, self.items[key], meaning

    def write(self, pieces):
        for block in blocks_of(pieces):
            for piece in block:
                if piece.kind in ("section", "subsection", "list", "keys"):
                    getattr(self, piece.kind)(piece)
                elif piece.kind == "commands":
                    self.describe(command_rows(piece, self.commands), block[0] is piece)
                elif piece.kind == "example":
                    self.example([line.removeprefix("+") for line in piece.rows])
                elif piece.kind == "text":
                    self.say(piece.text)
                elif piece.kind != "Not run":
                    self.say(piece.text, piece.kind)
        return "\n".join(self.lines).strip("\n") + "\n"


def wrapped(text, width, indent=""):
    return textwrap.wrap(text, width, subsequent_indent=indent, break_long_words=False, break_on_hyphens=False)


class Markdown(Page):
    def add(self, *lines):
        self.lines += [*lines, ""]

    def section(self, piece):
        self.add(f"## {piece.text}")

    def subsection(self, piece):
        self.add(f"### {piece.text}")

    def say(self, text, label=None):
        self.add(*wrapped(f"**{label}:** {text}" if label else text, MARKDOWN_WIDTH))

    def list(self, piece):
        self.add(*(line for row in piece.rows for line in wrapped(f"- {row}", MARKDOWN_WIDTH, "  ")))

    def example(self, lines):
        self.add(*(f"    {line}".rstrip() for line in lines))

    def table(self, *rows):
        self.add(*("| " + " | ".join(cell.replace("|", "\\|") for cell in row) + " |" for row in rows))

    def describe(self, lines, has_title):
        if has_title:
            self.add("### " + ", ".join(f"`{name}`" for names, _ in lines for name in names))
        table = [(f"`{name}`", row.help + " *(hidden)*" * row.is_hidden, self.default_of(row))
                 for names, rows in lines for name, row in zip(names, rows)]
        width = 3 if any(default for *_, default in table) else 2
        if has_title and len(lines) == 1 and width == 2 and len({text for _, text, _ in table}) == 1:
            self.say(table[0][1])
        else:
            self.table(("command", "help", "default")[:width], ("---",) * width, *(row[:width] for row in table))

    def keys(self, piece):
        rows = [(f"`{key}`", item.initial, item.values, meaning)
                for key, item, meaning in self.key_rows(piece)]
        self.table(("key", "default", "values", "meaning"), ("---",) * 4, *rows)


class Manual(Page):
    def section(self, piece):
        parts = CODE.split(piece.text)
        parts[::3] = [part.upper() for part in parts[::3]]
        del parts[1::3]
        self.lines.append(f".SH {literal(''.join(parts))}")

    def subsection(self, piece):
        self.lines.append(f".SS {inline(piece.text)}")

    def fill(self, text):
        """A sentence begins a line."""
        for sentence in re.split(r"(?<=[a-z`).][.:?]) (?=[A-Z`*])", text):
            self.lines += [guarded(line) for line in wrapped(inline(sentence), MAN_WIDTH)]

    def say(self, text, label=None):
        if not self.lines[-1].startswith((".SH", ".SS")):
            self.lines.append(".PP")
        if label:
            self.lines.append(f".I {label}:")
        self.fill(text)

    def tag(self, tag, text):
        self.lines += [".TP", guarded(inline(tag))]
        self.fill(text)

    def list(self, piece):
        for row in piece.rows:
            self.tag(*row.split(": ", 1))

    def example(self, lines):
        self.lines += [".PP", ".RS 4", ".nf", *(guarded(literal(line)) for line in lines), ".fi", ".RE"]

    def describe(self, lines, has_title):
        if has_title:
            self.lines.append(".SS " + literal(", ".join(name for names, _ in lines for name in names)))
        for names, rows in lines:
            for name, row in list(zip(names, rows))[: len({row.help for row in rows})]:
                text = row.help + "." * (not row.help.endswith("."))
                if (default := self.default_of(row)) and "default = " not in row.help:
                    text += f" Default: `{default}`."
                text += " Hidden." * row.is_hidden
                if len(lines) > 1 or not has_title or len({row.help for row in rows}) > 1:
                    self.tag(f"`{name}`", text)
                else:
                    self.say(text)

    def keys(self, piece):
        for key, item, meaning in self.key_rows(piece):
            default = f" Default: `{item.initial}`." if item.initial else ""
            self.tag(f"`{key}`", f"{meaning[0].upper()}{meaning[1:]}. Values: {item.values}.{default}")


def literal(text):
    for sign, name in (("\\", "\\e"), ("-", "\\-"), ("`", "\\(ga"), ("'", "\\(aq"), ("^", "\\(ha"), ("~", "\\(ti"),
                       ('"', "\\(dq")):
        text = text.replace(sign, name)
    return text


def inline(text):
    """Code is bold, a path in italics."""
    parts = CODE.split(text)
    text = ""
    for plain, _, code in zip(parts[::3], parts[1::3] + [""], parts[2::3] + [""]):
        text += plain.replace("\\", "\\e")
        if code:
            text += ("\\fI" if code.startswith(("/", "~/")) else "\\fB") + literal(code) + "\\fR"
    return text


def guarded(line):
    return "\\&" + line if line.startswith((".", "'")) else line
