"""Finds in C++ sources the texts that are looked up before they are shown.

A text is an argument of TranslationCatalogue::Translate, or of a function that passes this parameter on to
it, through however many functions. An argument is followed to its literals: over named constants, both sides
of a choice (a ? b : c), conversions and the parameters of the function around it. What cannot be followed is
a Mistake, so that no text is forgotten; so is a name that may mean several things, since scopes are not told
apart.

Functions are told apart by their names and numbers of parameters, and those that only one file knows by the
file.
"""
import dataclasses
import re

LOOKUP = "TranslationCatalogue::Translate"
FORMAT_CHECK = "ReadsArgumentsOf"  # is asked of every text whose placeholders are filled in
TITLE_SETTER = "SetMessageBoxCaption"

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
CONVERSIONS = {"WideString", "WideStringView"}
CHANGES = {"append", "assign", "clear", "erase", "insert", "pop_back", "push_back", "remove_prefix",
           "remove_suffix", "replace", "resize", "swap"}
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
    begin: int  # its tokens, from behind the parameters
    end: int
    is_local: bool  # no other file knows it
    shown: set = dataclasses.field(default_factory=set)  # indices of parameters that are looked up
    formats: set = dataclasses.field(default_factory=set)  # indices of those that are filled in

    @property
    def last_name(self):
        return self.name.rpartition("::")[2]


@dataclasses.dataclass
class Found:
    text: str
    is_format: bool
    is_title: bool
    file: str
    line: int  # of the literal


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
            has_mark(parameters[-1], "..."), head + close_at, end, is_local))
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


def parameter_name(tokens):
    names = [token.value for _, token in flat(split(tokens, "=")[0]) if token.kind == "name"]
    return names[-1] if names else ""


class Search:
    """`sources`: all files; `handing_on`: names of the functions that look up what is no text of the sources,
    each with the reason."""

    def __init__(self, sources, handing_on):
        self.sources = sources
        self.handing_on = handing_on
        self.functions = [function for source in sources for function in source.functions]
        self.locals = {(source.path, function.last_name): [] for source in sources
                       for function in source.functions if function.is_local}
        for source in sources:
            for function in source.functions:
                if function.is_local:
                    self.locals[source.path, function.last_name].append(function)
        self.with_defaults = {token.value for source in sources
                              for index, token in enumerate(source.tokens[:-1])
                              if token.kind == "name" and source.tokens[index + 1].value == "("
                              and any(has_mark(each, "=") for each in source.arguments(index))}

    def run(self):
        """The texts in the order of files and of calls."""
        self.begin_at(LOOKUP, "shown")
        self.begin_at(FORMAT_CHECK, "formats")
        self.follow_parameters()
        self.refuse_what_hides_calls()
        found = []
        for source in self.sources:
            for index, around, called, position in self.shown_arguments(source):
                argument = self.argument_at(source, index, position)
                literals, _ = self.follow(source, around, argument, not self.does_hand_on(around))
                is_title = self.is_title(source, index)
                found += [Found(text, position in called.formats, is_title, file, line)
                          for text, file, line in literals]
        return found

    def begin_at(self, name, kind):
        functions = [function for function in self.functions if function.name == name]
        for function in functions:
            getattr(function, kind).add(0)
        if not functions:
            raise Mistake("translation/texts/source_texts.py",
                          f"no source defines {name}, where the search begins")
        for name_in_use in self.handing_on:
            if not any(function.name == name_in_use for function in self.functions):
                raise Mistake("translation/texts/find_texts.py", f"no source defines {name_in_use} any more")

    def called(self, source, index, count):
        """The functions that a call with `count` arguments may mean."""
        name = source.tokens[index].value
        functions = self.locals.get((source.path, name), [])
        if not functions or source.tokens[index - 1].value in (".", "->"):
            functions = functions + [function for function in self.functions
                                     if function.last_name == name and not function.is_local]
        exact = [function for function in functions if count == len(function.parameters)
                 or (function.takes_more and count > len(function.parameters))
                 or (name in self.with_defaults and count < len(function.parameters))]
        return exact or functions

    def passed(self, source, kind):
        """(index of the call, function around, function called, position) for each argument that goes to a
        parameter of that kind."""
        for index, around in source.calls:
            seen = set()
            for function in self.called(source, index, len(source.arguments(index))):
                for position in sorted(getattr(function, kind) - seen):
                    seen.add(position)
                    yield index, around, function, position

    def does_hand_on(self, function):
        return function is not None and function.name in self.handing_on

    def shown_arguments(self, source):
        return self.passed(source, "shown")

    def argument_at(self, source, index, position):
        arguments = source.arguments(index)
        if position >= len(arguments):
            raise Mistake(source.place(source.tokens[index].line),
                          f"{source.tokens[index].value} is called without the text that it shows")
        return arguments[position]

    def follow_parameters(self):
        """Marks the parameters that reach the lookup or the check of formats, until there are no more."""
        size = -1
        while size != sum(len(function.shown) + len(function.formats) for function in self.functions):
            size = sum(len(function.shown) + len(function.formats) for function in self.functions)
            for source in self.sources:
                for kind in ("shown", "formats"):
                    for index, around, _, position in self.passed(source, kind):
                        if around is None or self.does_hand_on(around):
                            continue
                        argument = self.argument_at(source, index, position)
                        _, parameters = self.follow(source, around, argument, kind == "shown")
                        getattr(around, kind).update(map(around.parameters.index, parameters))

    def refuse_what_hides_calls(self):
        """Macros, constructors and names of functions that are not called."""
        showing = {function.last_name for function in self.functions if function.shown}
        classes = set().union(*(source.classes for source in self.sources))
        for source in self.sources:
            for directive in source.directives:
                for name in showing.intersection(re.findall(r"\w+", directive.value)):
                    if directive.value.split()[0] == "#define":
                        raise Mistake(source.place(directive.line),
                                      f"a macro hides a call of {name}, which shows a text")
            for function in source.functions:
                if function.shown and (function.last_name in classes):
                    raise Mistake(source.place(source.tokens[function.begin].line),
                                  f"a constructor, {function.last_name}, shows its argument; let a function")
                if function.shown and function.last_name == "operator":
                    raise Mistake(source.place(source.tokens[function.begin].line),
                                  "an operator shows its argument; let a function that has a name")
            for index, token in enumerate(source.tokens):
                if token.kind != "name" or token.value not in showing:
                    continue
                if not self.called(source, index, 1) or source.tokens[index + 1].value == "(":
                    continue
                if source.statement_before(index)[:1] and source.statement_before(index)[0].value == "using":
                    continue
                if any(function.shown for function in self.called(source, index, 1)):
                    raise Mistake(source.place(token.line),
                                  f"{token.value}, which shows a text, is not called but handed on")

    def is_title(self, source, index):
        """Whether the lookup at `index` is the argument of the function that sets the title."""
        begin = index
        while begin >= 2 and source.tokens[begin - 1].value in (".", "->", "::"):
            begin -= 2
        return (begin >= 2 and source.tokens[begin - 1].value == "("
                and source.tokens[begin - 2].value == TITLE_SETTER)

    def follow(self, source, around, tokens, must_be_known=True):
        """The literals (text, file, line) and the parameters of `around` that an expression may be."""
        tokens = plain_expression(tokens)
        if has_mark(tokens, "?"):
            _, _, branches = partition_choice(tokens)
            literals, parameters = [], []
            for branch in branches:
                more_literals, more_parameters = self.follow(source, around, branch, must_be_known)
                literals += more_literals
                parameters += more_parameters
            return literals, parameters
        if tokens and all(token.kind == "text" for token in tokens):
            return [("".join(map(literal_text, tokens)), source.path, tokens[0].line)], []
        name = variable_name(tokens)
        if name and around is not None and name in around.parameters:
            if must_be_known:
                refuse_other_values(source, around, name, tokens[0].line)
            return [], [name]
        constant = name and self.constant(source, around, name)
        if constant:
            return self.follow(*constant, must_be_known)
        if not must_be_known:
            return [], []
        words = "".join(token.value for token in tokens) or "nothing"
        line = tokens[0].line if tokens else source.tokens[around.begin].line if around else 1
        raise Mistake(source.place(line), f"the text that is shown cannot be followed from '{words}' to a "
                      "literal; write a literal, a constant or a choice of them")

    def constant(self, source, around, name):
        """The one constant of this name, of the function or else of the file and all headers: its file, the
        function around it, and the tokens of its value. None: there is none, or another variable has the
        name, too."""
        declared = [(source, index) for index in source.declarations(name, around)] if around else []
        if not declared:
            files = [source] + [other for other in self.sources
                                if other.path.endswith(".h") and other is not source]
            declared = [(file, index) for file in files for index in file.declarations(name, None)]
        if len(declared) != 1:
            return None
        file, index = declared[0]
        value = constant_value(file.tokens, index, file.is_member(index))
        return (file, file.function_at(index), value) if value else None


def plain_expression(tokens):
    """Without parentheses around it, TEXT(), conversions between types of text, and .c_str()."""
    while True:
        before = tokens
        if len(tokens) > 4 and [token.value for token in tokens[-4:]] in (
                [".", "c_str", "(", ")"], [".", "data", "(", ")"]):
            tokens = tokens[:-4]
        if tokens and tokens[0].value in ("(", "{") and closing(tokens, 0) == len(tokens) - 1:
            tokens = tokens[1:-1]
        if (len(tokens) > 3 and tokens[0].value in CONVERSIONS and tokens[1].value in ("(", "{")
                and closing(tokens, 1) == len(tokens) - 1 and len(split(tokens[2:-1], ",")) == 1):
            tokens = tokens[2:-1]
        tokens = without_text_macro(tokens)
        if tokens == before:
            return tokens


def without_text_macro(tokens):
    if not any(token.value == "TEXT" for token in tokens):
        return tokens
    plain, index = [], 0
    while index < len(tokens):
        if tokens[index].value == "TEXT" and index + 1 < len(tokens) and tokens[index + 1].value == "(":
            end = closing(tokens, index + 1)
            plain += tokens[index + 2:end]
            index = end
        else:
            plain.append(tokens[index])
        index += 1
    return plain


def partition_choice(tokens):
    """Condition, ?, and the two branches of a choice, the second of which may be another choice."""
    pieces = split(tokens, "?")
    behind = tokens[len(pieces[0]) + 1:]
    depth = 0
    for index, token in flat(behind):
        if token.kind == "mark" and token.value == "?":
            depth += 1
        elif token.kind == "mark" and token.value == ":":
            if depth == 0:
                return pieces[0], "?", [behind[:index], behind[index + 1:]]
            depth -= 1
    return pieces[0], "?", [behind]


def variable_name(tokens):
    """The name of a variable that is all of the expression, or nothing."""
    values = [token.value for token in tokens]
    if len(values) % 2 == 0 or any(value != "::" for value in values[1::2]):
        return ""
    return values[-1] if all(token.kind == "name" for token in tokens[::2]) else ""


def constant_value(tokens, index, is_member):
    """The tokens behind the = of the constant that is declared with the name at `index`. A member that is not
    static may have another value, which a constructor gives it."""
    head = index
    while head > 0 and tokens[head - 1].value not in (";", "{", "}", "(", ","):
        head -= 1
    words = {token.value for token in tokens[head:index]}
    begin = index + 1
    if tokens[begin].value == "[":
        begin = closing(tokens, begin) + 1
    is_constant = "constexpr" in words or ("const" in words and tokens[index - 1].value != "*"
                                           and ("static" in words or not is_member))
    if not is_constant or tokens[begin].value not in ("=", "{"):
        return None
    end = begin
    while end < len(tokens) and tokens[end].value != ";":
        end = closing(tokens, end) + 1 if tokens[end].value in CLOSING else end + 1
    return tokens[begin + (tokens[begin].value == "="):end]


def refuse_other_values(source, function, name, line):
    """A parameter that is changed, or whose name another variable has, too, may be another text."""
    tokens = source.tokens
    for index in range(function.begin, function.end):
        value = tokens[index].value
        if value == name and tokens[index - 1].value not in (".", "->") and is_changed(tokens, index):
            raise Mistake(source.place(line), f"'{name}', which is shown, is given another value at line "
                          f"{tokens[index].line}")
        if value == "(" and tokens[index - 1].value == "]" and index > function.begin:
            inside = tokens[index + 1:closing(tokens, index)]
            if any(parameter_name(parameter) == name for parameter in split(inside, ",")):
                raise Mistake(source.place(line), f"'{name}', which is shown, may be the parameter of the "
                              f"lambda at line {tokens[index].line}; give it a name of its own")
    for index in source.declarations(name, function):
        raise Mistake(source.place(line), f"'{name}', which is shown, may be the variable at line "
                      f"{tokens[index].line}; give it a name of its own")


def is_changed(tokens, index):
    """Whether the variable whose name is at `index` is assigned to or changed there."""
    before = [token.value for token in tokens[index - 2:index]]
    behind = [token.value for token in tokens[index + 1:index + 3]]
    return ((behind[0] == "=" and behind[1] != "=") or behind in (["+", "="], ["+", "+"], ["-", "-"])
            or before in (["+", "+"], ["-", "-"]) or (behind[0] == "." and behind[1] in CHANGES))
