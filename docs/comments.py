#!/usr/bin/python3
"""Doxygen's filter of the public headers: turns their plain comments into documentation comments.

A comment's paragraphs stay paragraphs. Indented lines that set a name apart from a text by two blanks or more become
rows of a list, with further paragraphs, rows and formulas inside a text; other indented lines keep their layout, as do
rows of several columns. Names of exports become links. Records are shown as they are declared.
"""

import html
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
EXPORTS = set(re.findall(r"^ +@?(\w+)@\d+$", (ROOT / "exports/tavik.def").read_text(), re.M))
# Exports whose names the texts use as ordinary words.
PLAIN_WORDS = {"modulo"}

COMMENT = re.compile(r"^/\*(.*?)\*/\n(struct \w+ \{\n.*?^\};\n)?", re.M | re.S)
ROW = re.compile(r"(\S.*?) {2,}(\S.*)")
SECTION_END = "/// @}\n"
COLUMNS = re.compile(r"\S {2,}\S")


def inline(text, own_name):
    """A text with Doxygen's characters escaped, `names` as code and names of other exports as links."""

    def link(match):
        name = match.group()
        if name == own_name:
            return "%" + name
        return f'\\ref {name} "{name}"' if name in EXPORTS - PLAIN_WORDS else name

    text = re.sub(r"([\\@#$%]|::|--)", r"\\\1", html.escape(text, quote=False))
    text = re.sub(r"\b\w+\b(?!\*)", link, text)
    return re.sub(r"`([^`]+)`", r"<code>\1</code>", text)


def indent_of(line):
    return len(line) - len(line.lstrip())


def items_of(lines):
    """Indented lines as a list of (name, lines of its text) for rows and of (None, lines) for what keeps its layout."""
    margin = min(indent_of(line) for line in lines)
    lines = [line[margin:] for line in lines]
    rows = [ROW.match(line) for line in lines]
    if any(row and COLUMNS.search(row.group(2)) for row in rows):
        return [(None, lines)]
    items = []
    column = 0
    for line, row in zip(lines, rows):
        if indent_of(line) == 0 and row:
            column = row.start(2)
            items.append((row.group(1), [row.group(2)]))
        elif items and items[-1][0] and indent_of(line) > 0:
            items[-1][1].append(line[min(column, indent_of(line)) :])
        elif items and items[-1][0] is None:
            items[-1][1].append(line)
        else:
            items.append((None, [line]))
    return items


def indented(lines, own_name):
    markup = ""
    in_list = False
    for name, text in items_of(lines):
        if in_list != bool(name):
            markup += "<dl>" if name else "</dl>"
            in_list = bool(name)
        if name:
            markup += f"<dt>{inline(name, own_name)}</dt><dd>{markup_of(text, own_name)}</dd>"
        else:
            markup += "<pre>" + "\n".join(inline(line, own_name) for line in text) + "</pre>"
    return markup + ("</dl>" if in_list else "")


def markup_of(lines, own_name=None):
    """The paragraphs, rows and formulas of a comment's lines."""
    markup = []
    kind_before = None
    run = []
    for line in [*lines, ""]:
        kind = None if not line.strip() else "indented" if line[0] == " " else "prose"
        if kind != kind_before and run:
            markup.append(indented(run, own_name) if kind_before == "indented" else inline(" ".join(run), own_name))
            run = []
        kind_before = kind
        if kind:
            run.append(line)
    return "\n\n".join(markup)


def sentence_case(text):
    return text[:1].upper() + text[1:]


def documentation(text):
    # Doxygen takes a single line for the brief description; an empty one before it makes it the detailed one.
    text = "\n" + text
    return "".join(f"/// {line}\n" for line in text.split("\n"))


class Header:
    """Turns the comments of one header, in their order."""

    def __init__(self, source):
        self.source = source
        self.in_section = False

    def documented(self):
        text = COMMENT.sub(self.comment, self.source)
        return text + (SECTION_END if self.in_section else "")

    def comment(self, match):
        lines = [re.sub(r"^ \* ?", "", line).rstrip() for line in match.group(1).strip().split("\n")]
        declaration = self.source[match.end(1) :]
        if match.start() == 0:
            return self.file_comment(lines)
        if record := match.group(2):
            name = record.split()[1]
            text = f"{markup_of(lines, name)}\n\n<pre>{inline(record.rstrip(), name)}</pre>"
            return documentation(text) + f"struct {name} {{}};\n"
        if declaration.startswith("*/\n\n"):
            return self.section(lines)
        name = re.match(r"\*/\s*\w+\([^)]*\)\s*(\w+)", declaration)
        return documentation(markup_of(lines, name and name.group(1)))

    def file_comment(self, lines):
        """The first sentence, after the family's name, is the brief one."""
        match = re.match(r"\w+: (.*?\.)(?:\s+(.*))?$", "\n".join(lines), re.S)
        if not match:
            sys.exit(f"{sys.argv[1]}: does not begin with its family's name, a colon and a sentence")
        brief, rest = match.group(1).replace("\n", " "), (match.group(2) or "").split("\n")
        return documentation(f"\\file\n\\brief {inline(sentence_case(brief), None)}\n\n{markup_of(rest)}")

    def section(self, lines):
        match = re.match(r"--- ([^:]*?)(?:: (.*?))? ---\n*(.*)$", "\n".join(lines), re.S)
        if not match:
            sys.exit(f"{sys.argv[1]}: a comment before no declaration has no --- title ---: {lines[0]}")
        title, about, rest = match.groups()
        about = sentence_case(about.replace("\n", " ") + ".") if about else ""
        end = SECTION_END if self.in_section else ""
        self.in_section = True
        text = markup_of([about, "", *rest.split("\n")])
        return end + documentation(f"\\name {title}\n\n{text}") + "/// @{\n"


if len(sys.argv) != 2:
    sys.exit("usage: comments.py HEADER")
sys.stdout.write(Header(pathlib.Path(sys.argv[1]).read_text()).documented())
