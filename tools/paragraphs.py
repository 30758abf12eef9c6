"""Finds the paragraphs in comments, docstrings and Markdown, and fills them to the width of a line.

A paragraph ends at an empty line and at a line that is laid out, which stays as it is: one that is indented,
has a run of blanks, or begins as LAID_OUT says. An item of a list is a paragraph whose further lines are
indented as far as its text. What "clang-format off" encloses, licence texts and Markdown's fenced code stay,
too.
"""
import bisect
import io
import re
import tokenize
from typing import NamedTuple

WIDTH = 110
LAID_OUT = re.compile(r"[-=~_*]{3}|[|>#<]|\[[^]]+\]:|NOLINT|clang-format |shellcheck |noqa|pylint:")
ITEM = re.compile(r" *(?:[-+*]|\d+[.)]) +(?=[^ ])")
GOES_ON = re.compile(r"[\w,][*+] ")  # prose that happens to be broken before one of these
COLUMNS = re.compile(r"[^ ] {2,}[^ ]|[\t\r]")
LICENCE = re.compile(r"SPDX-License|Copyright \(c\)|Permission is hereby granted")
C_TOKEN = re.compile(r"""R"([^\s()\\]*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])*'|\b\d[\w'.]*"""
                     r"""|//[^\n]*|/\*.*?\*/""", re.DOTALL)
DOCSTRING = re.compile(r'[rR]?"""')
HERE_DOCUMENT = re.compile(r"""(?<!<)<<-?["'\\]?([A-Za-z_]\w*)""")
KEPT = "\0"  # a blank at which no line is broken


class Block(NamedTuple):
    """Lines of a file: that at `row` is `head` and the first of `texts`, each further one `margin` and the
    next."""
    row: int
    head: str
    margin: str
    texts: list[str]

    def lines(self, texts):
        lines = [(self.margin if i else self.head) + text for i, text in enumerate(texts)]
        return [line.replace(KEPT, " ") if text else line.rstrip(" ") for line, text in zip(lines, texts)]


def paragraphs(texts):
    """Divides lines into pairs of some lines and how far all but the first are indented; None for one that
    stays."""
    paragraph, indent, fenced = [], 0, False
    for text in texts:
        goes_on = paragraph and not indent and GOES_ON.match(paragraph[-1][-1] + text)
        item = None if goes_on else ITEM.match(text)
        words = text[item.end():] if item else text.lstrip(" ")
        margin = len(text) - len(text.lstrip(" "))
        fence = words.startswith("```")
        fenced ^= fence
        stays = fence or fenced or not words or LAID_OUT.match(text.lstrip(" ")) or COLUMNS.search(words)
        if paragraph and not stays and not item and margin == indent:
            paragraph.append(text)
        else:
            if paragraph:
                yield paragraph, indent
            paragraph, indent = [text], item.end() if item else 0
            if stays or (margin and not item):
                yield [text], None
                paragraph = []
        if paragraph and text.endswith(("  ", "\\")):  # Markdown breaks the line here
            yield paragraph, indent
            paragraph = []
    if paragraph:
        yield paragraph, indent


def words_of(text):
    """The words; what would mean something else at the beginning of a line is one with the word before."""
    words = []
    for word in filter(None, text.split(" ")):
        if words and (LAID_OUT.match(word + " ") or ITEM.match(word + " x")):
            words[-1] += KEPT + word
        else:
            words.append(word)
    return words


def fill(texts, width, taken=0):
    """The lines with their paragraphs filled to `width`, the first line to `taken` columns less."""
    filled = []
    for lines, indent in paragraphs(texts):
        if indent is None:
            filled += lines
            continue
        room = width if filled else width - taken
        words = words_of(" ".join([lines[0][indent:], *lines[1:]]))
        line = lines[0][:indent] + words[0]
        for word in words[1:]:
            if len(line) + 1 + len(word) <= room:
                line += " " + word
            else:
                filled.append(line)
                line, room = " " * indent + word, width
        filled.append(line + ("  " if lines[-1].endswith("  ") else ""))
    return filled


def comment_block(row, column, before, comment):
    """The block of a /* comment */ that has a star before each further line."""
    texts = [text.lstrip(" ")[2:] if i else text[1:] for i, text in enumerate(comment[2:].split("\n"))]
    if texts[-1] == "":  # the line " */"
        texts.pop()
    elif texts[-1].endswith(" */"):
        texts[-1] = texts[-1][:-3].rstrip(" ") + KEPT + "*/"
    return Block(row, before + "/* ", " " * column + " * ", texts)


def docstring_block(row, column, before, docstring):
    quotes = DOCSTRING.match(docstring).group()
    texts = [text[column:] if i else text for i, text in enumerate(docstring[len(quotes):].split("\n"))]
    if texts[-1] == '"""':
        texts.pop()
    return Block(row, before + quotes, " " * column, texts)


def line_blocks(lines, places, marker):
    """The blocks of the comments that `marker` begins, at (row, column). One below another belongs to its
    block when nothing stands before it."""
    found, last = [], None
    for row, column in places:
        before, text = lines[row][:column], lines[row][column + len(marker):]
        if text and not text.startswith(" "):
            continue
        if last != (row - 1, column) or before.strip(" "):
            found.append(Block(row, f"{before}{marker} ", f"{' ' * column}{marker} ", []))
        found[-1].texts.append(text[1:])
        last = (row, column)
    return found


def c_blocks(lines):
    text = "\n".join(lines)
    starts = [0]
    for line in lines:
        starts.append(starts[-1] + len(line) + 1)
    found, places, off = [], [], False
    for token in C_TOKEN.finditer(text):
        comment = token.group()
        if not comment.startswith(("//", "/*")):
            continue
        off = "clang-format off" in comment or (off and "clang-format on" not in comment)
        row = bisect.bisect(starts, token.start()) - 1
        column = token.start() - starts[row]
        if comment.startswith("//") and not off:
            places.append((row, column))
        elif not off:
            found.append(comment_block(row, column, lines[row][:column], comment))
    return found + line_blocks(lines, places, "//")


def python_blocks(lines):
    found, places, before = [], [], tokenize.NEWLINE
    for token in tokenize.generate_tokens(io.StringIO("\n".join(lines)).readline):
        row, column = token.start[0] - 1, token.start[1]
        if token.type == tokenize.COMMENT:
            places.append((row, column))
        elif token.type != tokenize.NL:
            begins = before in (tokenize.NEWLINE, tokenize.INDENT, tokenize.DEDENT)
            if begins and token.type == tokenize.STRING and DOCSTRING.match(token.string):
                found.append(docstring_block(row, column, lines[row][:column], token.string))
            before = token.type
    return found + line_blocks(lines, places, "#")


def script_blocks(lines, marker):
    places, end = [], None
    for row, line in enumerate(lines):
        text = line.lstrip(" ")
        if end:
            end = None if text == end else end
        elif text.startswith(marker):
            places.append((row, len(line) - len(text)))
        elif here := HERE_DOCUMENT.search(line):
            end = here.group(1)
    return line_blocks(lines, places, marker)


def blocks(lines, language):
    if language == "c":
        return c_blocks(lines)
    if language == "python":
        return python_blocks(lines)
    return [Block(0, "", "", lines)] if language == "markdown" else script_blocks(lines, language)


def mend(lines, language):
    """The lines of a file with its paragraphs filled, and the rows of the old ones from which on that changes
    one. `language` is "c", "python", "markdown", or what begins the comments of another language."""
    mended, rows = list(lines), []
    for block in sorted(blocks(lines, language), reverse=True):
        old = lines[block.row:block.row + len(block.texts)]
        alike = [line.lstrip(" ") for line in old] == [line.lstrip(" ") for line in block.lines(block.texts)]
        if not alike or LICENCE.search(" ".join(old)):
            continue  # it has another form, or is not ours to change
        new = block.lines(fill(block.texts, WIDTH - len(block.margin), len(block.head) - len(block.margin)))
        if new != old:
            mended[block.row:block.row + len(old)] = new
            rows.append(block.row + [a == b for a, b in zip(old + [""], new + [""])].index(False))
    return mended, rows[::-1]
