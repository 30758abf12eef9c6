"""Turns the comments of a public header into ones for Doxygen, so that the header itself need not be written
for it.

    doc_filter.py HEADER        prints it; Doxygen calls this for each file that it reads

What stands in the headers, and what becomes of it:

- the first comment is the file's;
- "---- Title ----" begins a group of names, and a comment by itself below it is the group's;
- any other comment is for all that is declared between it and the next empty line;
- one behind a field is the field's;
- indented lines of a word, blanks and a text are a list of definitions, other indented lines what they are in
  Markdown: lists and code;
- names of the library (LM...) are links.
"""
import pathlib
import re
import sys

TITLE = re.compile(r"/\* ---- (.*) ---- \*/$")
DEFINITION = re.compile(r"(\S+(?: \S+)*)(?: {2,}(.*))?$")
NAME = re.compile(r"`[^`]*`|(?<![#\w])LM\w+\b(?!\.\w|\.\.\.)")
ASSERTION = re.compile(r"typedef char LMAssert")


def escaped(text):
    """Text in which only the names of the library and what is between backquotes mean something."""
    text = re.sub(r"[\\@<>&]", lambda mark: "\\" + mark[0], text)
    return NAME.sub(lambda name: name[0] if name[0].startswith("`") else "#" + name[0], text)


def indent_of(line):
    return len(line) - len(line.lstrip(" "))


def definitions(lines):
    """A run of indented lines as a list of definitions, with those that stand deeper in it."""
    outer = min(map(indent_of, lines))
    made, rows = ["<dl>"], iter(range(len(lines)))
    for row in rows:
        term, text = DEFINITION.match(lines[row].strip(" ")).groups()
        end = next((n for n in range(row + 1, len(lines)) if indent_of(lines[n]) == outer), len(lines))
        made.append(f"<dt>{escaped(term)}</dt>")
        below = lines[row + 1:end]
        for _ in below:
            next(rows)
        if text is not None:
            made.append(f"<dd>{escaped(text)}")
            made += markdown(below, outer + len(lines[row].strip(" ")) - len(text))
            made.append("</dd>")
    return [*made, "</dl>"]


def markdown(lines, margin=0):
    """The lines of a comment; those that are indented by `margin` or less are prose."""
    made, row = [], 0
    while row < len(lines):
        # Columns may stand right below the text of a definition.
        in_columns = margin > 0 and re.search(r"\S {2,}\S", lines[row])
        end = row
        while end < len(lines) and lines[end] and (in_columns or indent_of(lines[end]) > margin):
            end += 1
        if end == row:
            made.append(escaped(lines[row].strip(" ")))
            row += 1
            continue
        run = lines[row:end]
        is_list = run[0].lstrip(" ").startswith("- ")
        is_code = indent_of(run[0]) >= margin + 4 and row > 0 and not lines[row - 1]
        if is_code:
            made += run
        elif is_list:
            made += ["", *(escaped(line) for line in run)]
        else:
            made += definitions(run)
        row = end
    return made


def text_of(comment):
    """The lines of a comment without its marks."""
    lines = comment.strip().removeprefix("/*").removesuffix("*/").split("\n")
    return [re.sub(r"^ *\* ?", "", line).rstrip(" ") if row else line.strip(" ")
            for row, line in enumerate(lines)]


def documentation(comment, *first):
    return "\n".join(["/**", *first, *markdown(text_of(comment)), "*/"])


def pieces(text):
    """Comments that begin a line, empty lines, and all other lines with the comments behind them."""
    return re.findall(r"^ */\*.*?\*/\n|^[^\n]*?/\*.*?\*/\n|^[^\n]*\n", text, re.DOTALL | re.MULTILINE)


def is_declaration(line):
    return re.match(r"#define \w+[ (]|typedef |\w+\*? LM_CALL |struct ", line) is not None


def fields(line):
    """A line with the comment behind a field as that field's."""
    match = re.match(r"( +[^/]*;) */\*(.*)\*/\n$", line, re.DOTALL)
    if not match:
        return line
    text = re.sub(r"\n *\*? *", " ", match[2].strip())
    return f"{match[1]} /**< {escaped(text)} */\n"


def filtered(text):
    made, comment, in_group, is_first = [], "", False, True
    for piece in pieces(text):
        line = piece.strip("\n")
        if is_first and line.startswith("/*"):
            made.append(documentation(line, "@file"))
            is_first = False
        elif TITLE.match(line):
            made += ["/** @} */"] * in_group + [f"/** @name {TITLE.match(line)[1]}", "*/", "/** @{ */"]
            in_group, comment = True, ""
        elif line.startswith("/*"):
            comment = line
        elif not line:
            if comment and made[-1] == "/** @{ */":
                made[-2:] = [*markdown(text_of(comment)), "*/", "/** @{ */"]
            elif made[-1] != "/** @{ */":
                made.append("")
            comment = ""
        elif ASSERTION.match(line):
            continue
        else:
            if comment and is_declaration(line):
                made.append(documentation(comment))
            made.append(fields(piece).rstrip("\n"))
    return "\n".join(made + ["/** @} */"] * in_group) + "\n"


if __name__ == "__main__":
    sys.stdout.write(filtered(pathlib.Path(sys.argv[1]).read_text()))
