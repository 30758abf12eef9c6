"""What C++ sources consist of, as far as it matters for finding texts: tokens, functions with their
parameters and calls, and what is declared in them. No preprocessor is needed, and no compiler.
"""
import dataclasses
import re

TOKEN = re.compile(r"""
    (?P<space> \s+ | //[^\n]* | /\*.*?\*/ )
  | (?P<directive> \#(?: \\\n | /\*.*?\*/ | [^\n] )* )
  | (?P<raw> (?:u8|[LuU])?R"(?P<mark_of_raw>[^(\s]*)\(.*?\)(?P=mark_of_raw)" )
  | (?P<text> (?:u8|[LuU])?"(?: \\. | [^"\\\n] )*" )
  | (?P<unit> (?:u8|[LuU])?'(?: \\. | [^'\\\n] )*' )
  | (?P<number> \.?\d(?: '?[\w.] )* )
  | (?P<name> [A-Za-z_]\w* )
  | (?P<mark> :: | -> | \.\.\. | . )
""", re.VERBOSE | re.DOTALL)
ESCAPE = re.compile(r"\\(x[0-9A-Fa-f]+|u[0-9A-Fa-f]{4}|U[0-9A-Fa-f]{8}|[0-7]{1,3}|.)", re.DOTALL)
MEANINGS = {"n": "\n", "t": "\t", "r": "\r", "a": "\a", "b": "\b", "f": "\f", "v": "\v",
            '"': '"', "'": "'", "\\": "\\", "?": "?", "\n": ""}
CLOSING = {"(": ")", "[": "]", "{": "}"}
AFTER_PARAMETERS = {"const", "noexcept", "override", "final", "mutable", "try"}
NO_FUNCTIONS = {"alignas", "decltype", "__attribute__", "noexcept"}
BEFORE_EXPRESSIONS = {"and", "case", "co_return", "else", "goto", "not", "or", "return", "throw"}


class Mistake(Exception):
    """Stops the search: FILE:LINE: error: SENTENCE."""

    def __init__(self, place, sentence):
        super().__init__(f"{place}: error: {sentence}")


@dataclasses.dataclass
class Token:
    kind: str
    value: str
    line: int


@dataclasses.dataclass(eq=False)
class Function:
    name: str  # with its class when it is defined outside of it
    parameters: list
    takes_more: bool  # ...
    has_pack: bool  # ... with a name
    begin: int  # its tokens, from behind the parameters
    end: int
    is_local: bool  # no other file knows it
    shown: set = dataclasses.field(default_factory=set)  # indices of parameters that are looked up
    formats: set = dataclasses.field(default_factory=set)  # indices of those that are filled in

    @property
    def last_name(self):
        return self.name.rpartition("::")[2]


def meaning(escape):
    digits = escape.group(1)
    if digits[0] in "xuU" and len(digits) > 1:
        return chr(int(digits[1:], 16))
    if digits[0] in "01234567":
        return chr(int(digits, 8))
    return MEANINGS[digits]


def literal_text(token):
    return ESCAPE.sub(meaning, token.value[token.value.index('"') + 1:-1])


def closing(tokens, at):
    """The index of the token that closes the bracket at `at`."""
    waiting = []
    for index in range(at, len(tokens)):
        value = tokens[index].value if tokens[index].kind == "mark" else ""
        if value in CLOSING:
            waiting.append(CLOSING[value])
        elif waiting and value == waiting[-1]:
            waiting.pop()
            if not waiting:
                return index
    return len(tokens) - 1


def split(tokens, mark):
    """`tokens` in pieces between the marks that are in no bracket."""
    pieces, index = [[]], 0
    while index < len(tokens):
        token = tokens[index]
        if token.kind == "mark" and token.value in CLOSING:
            end = closing(tokens, index)
            pieces[-1] += tokens[index:end + 1]
            index = end
        elif token.kind == "mark" and token.value == mark:
            pieces.append([])
        else:
            pieces[-1].append(token)
        index += 1
    return pieces


def flat(tokens):
    """The tokens that are in no bracket, and the brackets' first ones."""
    index = 0
    while index < len(tokens):
        yield index, tokens[index]
        if tokens[index].kind == "mark" and tokens[index].value in CLOSING:
            index = closing(tokens, index)
        index += 1


def has_mark(tokens, mark):
    return any(token.kind == "mark" and token.value == mark for _, token in flat(tokens))


class Source:
    """One file: its tokens, and the functions that it defines."""

    def __init__(self, path, text):
        self.path = path
        self.tokens = []
        self.directives = []
        self.classes = set()
        self.class_ranges = []  # indices of the brackets around them, here and below
        self.value_ranges = []  # of { } that is neither a scope nor a function's body
        self.functions = []
        self.read_tokens(text)
        self.read_scopes()
        self.calls = list(self.find_calls())

    def place(self, line):
        return f"{self.path}:{line}"

    def read_tokens(self, text):
        line = 1
        for match in TOKEN.finditer(text):
            token = Token(match.lastgroup if match.lastgroup != "mark_of_raw" else "raw", match.group(), line)
            line += token.value.count("\n")
            if token.kind == "raw":
                raise Mistake(self.place(token.line), "a raw string cannot be read here")
            if token.kind == "directive":
                self.directives.append(token)
            elif token.kind != "space":
                self.tokens.append(token)

    def read_scopes(self):
        """Walks over the file as far as it is in no function."""
        scopes, head, index = [], 0, 0
        while index < len(self.tokens):
            token = self.tokens[index]
            if token.kind != "mark":
                pass
            elif token.value == "(":
                index = closing(self.tokens, index)
            elif token.value == "{":
                begin = index
                kind, index = self.open_scope(head, index, scopes)
                if kind == "value":
                    self.value_ranges.append((begin, index))
                elif kind == "class":
                    self.class_ranges.append((begin, closing(self.tokens, begin)))
                if kind in ("namespace", "anonymous", "class"):
                    scopes.append(kind)
                if kind != "value":
                    head = index + 1
            elif token.value in ";}":
                if token.value == "}" and scopes:
                    scopes.pop()
                head = index + 1
            elif token.value == ":" and self.tokens[index - 1].value in ("public", "private", "protected"):
                head = index + 1
            index += 1

    def open_scope(self, head, index, scopes):
        """What the { at `index` begins, and where to go on: behind it, or at the end of a thing that is
        read."""
        tokens = self.tokens[head:index]
        words = {token.value for _, token in flat(tokens) if token.kind == "name"}
        end = closing(self.tokens, index)
        if "namespace" in words:
            return ("anonymous" if tokens[-1].value == "namespace" else "namespace"), index
        if words == {"extern"}:
            return "namespace", index
        declared = declared_name(tokens)
        if declared is None:
            if words & {"class", "struct", "union"} and not has_mark(tokens, "="):
                self.classes |= {token.value for token in tokens if token.kind == "name"}
                return "class", index
            return "value", end
        open_at, name = declared
        close_at = closing(tokens, open_at)
        is_member_value = (has_mark(tokens[close_at:], ":") and tokens[-1].kind == "name"
                           and tokens[-1].value not in AFTER_PARAMETERS)
        if is_member_value:
            return "value", end
        is_local = "anonymous" in scopes or ("static" in words and "class" not in scopes)
        parameters = split(tokens[open_at + 1:close_at], ",")
        self.functions.append(Function(
            name, [parameter_name(parameter) for parameter in parameters if parameter_name(parameter)],
            has_mark(parameters[-1], "..."), is_pack(parameters[-1]), head + close_at, end, is_local))
        return "function", end

    def function_at(self, index):
        return next((function for function in self.functions if function.begin < index < function.end), None)

    def is_declared_at(self, index):
        """Whether the name at `index`, which is in no function, is declared there and not called."""
        if any(begin < index < end for begin, end in self.value_ranges):
            return False
        before = self.statement_before(index)
        return not is_open(before) and not has_mark(before, "=")

    def statement_before(self, index):
        head = index
        while head > 0 and self.tokens[head - 1].value not in (";", "{", "}"):
            head -= 1
        return self.tokens[head:index]

    def declarations(self, name, function):
        """Indices of the name where it is declared as a variable: in the function, or in none."""
        begin, end = (function.begin, function.end) if function else (0, len(self.tokens) - 1)
        for index in range(begin, end):
            if self.tokens[index].value != name or not is_declaration(self.tokens, index):
                continue
            if function or (self.function_at(index) is None and not is_open(self.statement_before(index))
                            and self.tokens[index + 1].value != "("):
                yield index

    def is_member(self, index):
        return (self.function_at(index) is None
                and any(begin < index < end for begin, end in self.class_ranges))

    def find_calls(self):
        """(index of the name, the function around it or None), for each call."""
        for index, token in enumerate(self.tokens[:-1]):
            if token.kind != "name" or self.tokens[index + 1].value != "(":
                continue
            function = self.function_at(index)
            if function is not None or not self.is_declared_at(index):
                yield index, function

    def arguments(self, index):
        """Those of the call whose name is at `index`, each as its tokens."""
        inside = self.tokens[index + 2:closing(self.tokens, index + 1)]
        return split(inside, ",") if inside else []


def is_open(tokens):
    """Whether the last of them is within parentheses."""
    return sum(token.value == "(" for token in tokens) > sum(token.value == ")" for token in tokens)


def is_declaration(tokens, index):
    """Whether the name at `index` is declared there, as a variable or parameter: behind its type, or in the
    brackets behind auto."""
    if tokens[index + 1].value not in ("=", "{", "[", ";", ":", ",", ")", "(", "]"):
        return False
    head = index - 1
    for mark in "&*":
        while head > 0 and (tokens[head].value == mark or tokens[head].value == "const"):
            head -= 1
    before = tokens[head]
    if before.kind == "name":
        return before.value not in BEFORE_EXPRESSIONS
    if before.value in ("[", ","):
        while head > 0 and (tokens[head].kind == "name" or tokens[head].value == ","):
            head -= 1
        return tokens[head].value == "[" and "auto" in (tokens[head - 1].value, tokens[head - 2].value)
    return before.value == ">" or (head < index - 1 and tokens[head + 1].value == "const")


def declared_name(tokens):
    """Index of the ( of the parameters in a function's head, and the function's name; None: no function."""
    for index, token in flat(tokens):
        is_operator = any(each.value == "operator" for each in tokens[:index])
        before = tokens[index - 1].value if index > 0 else ""
        if token.kind != "mark" or (token.value == "(" and before in NO_FUNCTIONS):
            continue
        if token.value == "=" and not is_operator:
            return None
        if token.value == "(" and is_operator:
            return index, "operator"
        if token.value == "(" and index > 0 and tokens[index - 1].kind == "name":
            begin = index - 1
            while begin >= 2 and tokens[begin - 1].value == "::" and tokens[begin - 2].kind == "name":
                begin -= 2
            return index, "".join(each.value for each in tokens[begin:index])
    return None


def is_pack(tokens):
    return has_mark(tokens, "...") and parameter_name(tokens) != ""


def parameter_name(tokens):
    names = [token.value for _, token in flat(split(tokens, "=")[0]) if token.kind == "name"]
    return names[-1] if names else ""
