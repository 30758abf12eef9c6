"""What a page of the documents tells its reader to do, in its order, to be done by a test.

Indented blocks are commands of a shell. What stands in a block with a fence is looked at when a comment of
HTML before it says what it is:

    <!-- prints -->                     all that the command above prints; it ends with the exit code 0
    <!-- prints, exit code 1 -->        the same with another
    <!-- prints among others -->        lines of it
    <!-- in: FILE -->                   lines that follow each other in a file
    <!-- files in: FOLDER -->           all files of a folder, in the order of their names
    <!-- edit: FILE -->                 lines of a table, each in the place of that of the same text
"""
import re
from typing import NamedTuple

import documents

MARK = re.compile(r"<!-- (?:(prints)( among others)?(?:, exit code (\d+))?|(in|files in|edit): (\S+)) -->$")


class Step(NamedTuple):
    row: int        # of the document, from 1
    section: str    # its heading
    kind: str       # command, or the first words of the comment
    lines: list
    file: str = ""
    is_part: bool = False
    code: int = 0   # the exit code that a command is to end with


def commands_of(block, section):
    row = block.row + 1
    for logical in re.split(r"(?<!\\)\n", "\n".join(block.lines)):
        if logical.strip():
            yield Step(row, section, "command", [logical])
        row += logical.count("\n") + 1


def marked_step(block, lines, section):
    comment = lines[block.row - 2].strip() if block.row >= 2 else ""
    if not comment.startswith("<!--"):
        return
    mark = MARK.match(comment)
    if not mark:
        raise ValueError(f"line {block.row - 1}: nobody knows what is meant by '{comment}'")
    yield Step(block.row + 1, section, mark[1] or mark[4], block.lines, mark[5] or "", bool(mark[2]),
               int(mark[3] or 0))


def steps_of(text):
    """The steps of a document. An exit code is moved to the command that it belongs to."""
    lines = text.split("\n")
    headings = [(row, line.strip("# ")) for row, line in documents.prose(lines) if line.startswith("#")]
    steps = []
    for block in documents.blocks(lines):
        section = [heading for row, heading in headings if row < block.row][-1]
        if block.language == "sh":
            steps += commands_of(block, section)
        else:
            steps += marked_step(block, lines, section)
    for at, step in enumerate(steps):
        if step.kind == "prints" and at and steps[at - 1].kind == "command":
            steps[at - 1] = steps[at - 1]._replace(code=step.code)
    return steps
