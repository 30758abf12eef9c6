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

from cpp_source import CLOSING, Mistake, closing, flat, has_mark, literal_text, parameter_name, split

LOOKUP = "TranslationCatalogue::Translate"
FORMAT_CHECK = "ReadsArgumentsOf"  # is asked of every text whose placeholders are filled in
TITLE_SETTER = "SetMessageBoxCaption"
CONVERSIONS = {"WideString", "WideStringView"}
CHANGES = {"append", "assign", "clear", "erase", "insert", "pop_back", "push_back", "remove_prefix",
           "remove_suffix", "replace", "resize", "swap"}


@dataclasses.dataclass
class Found:
    text: str
    is_format: bool
    is_title: bool
    file: str
    line: int  # of the literal


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
                if function.has_pack and len(function.parameters) - 1 in function.shown:
                    raise Mistake(source.place(source.tokens[function.begin].line),
                                  f"{function.last_name} shows a pack of arguments; let it have one text")
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
