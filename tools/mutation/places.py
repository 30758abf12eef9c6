"""Finds in a source what can be changed, and how, with clang's reading of it."""
import dataclasses
import hashlib
import re
import sys

# Where Debian's package has it, whichever Python this is.
sys.path.append("/usr/lib/python3/dist-packages")
from clang import cindex
from clang.cindex import CursorKind, TypeKind

OTHER_OPERATORS = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    "&&": ("||",), "||": ("&&",), "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",),
    "&": ("|",), "|": ("&",), "^": ("|",), "<<": (">>",), ">>": ("<<",),
    "+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",), "%=": ("*=",), "&=": ("|=",), "|=": ("&=",),
    "^=": ("|=",), "<<=": (">>=",), ">>=": ("<<=",), "++": ("--",), "--": ("++",),
}
COMPARISONS = ("<", "<=", ">", ">=", "==", "!=")
INTEGERS = {TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.CHAR16, TypeKind.CHAR32, TypeKind.USHORT, TypeKind.UINT,
            TypeKind.ULONG, TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.WCHAR,
            TypeKind.SHORT, TypeKind.INT, TypeKind.LONG, TypeKind.LONGLONG}
LITERALS = {CursorKind.INTEGER_LITERAL, CursorKind.CHARACTER_LITERAL}
FUNCTIONS = {CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.FUNCTION_TEMPLATE,
             CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR, CursorKind.CONVERSION_FUNCTION}
WRAPPERS = {CursorKind.UNEXPOSED_EXPR, CursorKind.PAREN_EXPR}
# Nothing below them is run.
NEVER_RUN = {CursorKind.STATIC_ASSERT, CursorKind.CXX_UNARY_EXPR, CursorKind.TYPE_REF,
             CursorKind.TEMPLATE_REF, CursorKind.NAMESPACE_REF, CursorKind.TEMPLATE_NON_TYPE_PARAMETER}
JUMPS = {CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT}
DECLARATIONS = {CursorKind.VAR_DECL, CursorKind.DECL_STMT}
STEPS = {"operator++", "operator--", "operator!"}
# Those of the language, and calls of a class's own.
OPERATIONS = {CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.CALL_EXPR,
              CursorKind.UNEXPOSED_EXPR}
QUOTED_OR_PARENTHESIS = re.compile(rb"'(?:\\.|[^'\\])+'|\"(?:\\.|[^\"\\])*\"|[()]")
NUMBER = re.compile(r"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)[uUlLzZ]*")
NAME = re.compile(r"[A-Za-z_]\w*")
CHARACTER = re.compile(r"(TEXT\()?'(\\.|[^'\\])+'\)?")


@dataclasses.dataclass
class Mutant:
    """One change of one place. `text` takes the place of the source from `begin` to `end`."""
    file: str
    begin: int
    end: int
    # "value": an expression; "removal", "return": a statement with what ends it; "fixed": an expression that
    # takes effect while compiling.
    form: str
    was: str  # what is shown of the place
    becomes: str
    text: str
    line: int = 0
    column: int = 0
    type: str = ""  # of the expression where it has to be kept
    relaxed: str = ""  # the constant that has to be made when the program starts
    in_constant: bool = False  # in a function that the compiler may call
    context: str = ""  # the line, without what may change by itself
    ordinal: int = 1  # among those that say the same of equal lines

    @property
    def key(self):
        return (self.file, self.context, self.what)

    @property
    def what(self):
        return f"{self.was} -> {self.becomes}" + (f" #{self.ordinal}" if self.ordinal > 1 else "")

    @property
    def id(self):
        return hashlib.sha256("\0".join(self.key).encode()).hexdigest()[:10]


LONGEST_SHOWN = 60


def one_line(text):
    return " ".join(text.split())


def shown(text):
    """On one line, and the beginning of what is long."""
    line = one_line(text)
    return line if len(line) <= LONGEST_SHOWN else line[:LONGEST_SHOWN - 3] + "..."


class Reading:
    """The places of one file."""

    def __init__(self, name, path, arguments):
        self.name = name
        self.path = str(path)
        # Offsets are of bytes.
        self.bytes = open(path, "rb").read()
        self.mutants = {}
        self.converted = {}  # what an expression is used as, by where it stands
        self.relaxed = ""
        self.in_constant = False
        self.is_fixed = False
        unit = cindex.Index.create().parse(self.path, args=arguments)
        wrong = [error for error in unit.diagnostics if error.severity >= cindex.Diagnostic.Error]
        if wrong:
            raise ValueError(f"{name} cannot be read: {wrong[0].spelling}")
        for child in unit.cursor.get_children():
            if child.location.file and child.location.file.name == self.path:
                self.visit(child)

    def text(self, begin, end):
        return self.bytes[begin:end].decode()

    @staticmethod
    def extent(cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def of(self, cursor):
        return self.text(cursor.extent.start.offset, cursor.extent.end.offset)

    def add(self, cursor, becomes, text=None, form="value", end=None, type_name=""):
        begin, end = cursor.extent.start.offset, end or cursor.extent.end.offset
        text = becomes if text is None else text
        form = "fixed" if self.is_fixed else form
        key = (begin, end, form, text)
        if key in self.mutants or self.text(begin, end) == text:
            return
        start = cursor.extent.start
        line_begin = self.bytes.rfind(b"\n", 0, begin) + 1
        line_end = self.bytes.find(b"\n", begin)
        self.mutants[key] = Mutant(
            self.name, begin, end, form, shown(self.of(cursor)), shown(becomes), text,
            start.line, start.column, type_name, self.relaxed, self.in_constant,
            one_line(self.text(line_begin, line_end)))

    def found(self):
        """In the order of the source."""
        counted = {}
        for mutant in sorted(self.mutants.values(), key=lambda one: (one.begin, -one.end, one.becomes)):
            key = (mutant.context, mutant.was, mutant.becomes)
            counted[key] = mutant.ordinal = counted.get(key, 0) + 1
            yield mutant

    # The way through the tree.

    def visit(self, cursor):
        kind = cursor.kind
        if kind in NEVER_RUN:
            return
        if kind in FUNCTIONS:
            return self.visit_function(cursor)
        if kind in (CursorKind.VAR_DECL, CursorKind.FIELD_DECL, CursorKind.PARM_DECL):
            return self.visit_variable(cursor)
        children = list(cursor.get_children())
        if kind == CursorKind.UNEXPOSED_EXPR:
            self.converted.setdefault(self.extent(cursor), cursor.type.get_canonical())
        if kind == CursorKind.COMPOUND_STMT:
            return self.visit_statements(children)
        if kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.SWITCH_STMT, CursorKind.FOR_STMT):
            return self.visit_control(cursor, children)
        if kind == CursorKind.CXX_FOR_RANGE_STMT:
            for child in children[:-1]:
                self.visit(child)
            return self.visit_statements(children[-1:])
        if kind == CursorKind.DO_STMT:
            self.visit_statements(children[:1])
            return self.visit_condition(children[-1])
        if kind in (CursorKind.ENUM_CONSTANT_DECL, CursorKind.TYPE_ALIAS_DECL):
            return self.visit_fixed(children)
        if kind in (CursorKind.CASE_STMT, CursorKind.DEFAULT_STMT):
            self.visit_fixed(children[:-1])
            return self.visit_statements(children[-1:])
        if kind == CursorKind.CONDITIONAL_OPERATOR and len(children) == 3:
            self.visit_condition(children[0])
            children = children[1:]
        elif kind == CursorKind.RETURN_STMT:
            return self.visit_return(cursor, children)
        else:
            self.visit_expression(cursor, children)
        for child in children:
            self.visit(child)

    def visit_fixed(self, cursors):
        was_fixed, self.is_fixed = self.is_fixed, True
        for cursor in cursors:
            self.visit(cursor)
        self.is_fixed = was_fixed

    def visit_function(self, cursor):
        body = [child for child in cursor.get_children() if child.kind == CursorKind.COMPOUND_STMT]
        head_end = body[0].extent.start.offset if body else cursor.extent.end.offset
        was_constant = self.in_constant
        self.in_constant = "constexpr" in self.text(cursor.extent.start.offset, head_end).split()
        for child in cursor.get_children():
            self.visit(child)
        self.in_constant = was_constant

    def visit_variable(self, cursor):
        name_end = cursor.location.offset + len(cursor.spelling.encode())
        head = self.text(cursor.extent.start.offset, cursor.location.offset)
        was_relaxed = self.relaxed
        if "constexpr" in head.split():
            if self.relaxed or self.in_constant:
                return
            self.relaxed = f"{cursor.spelling}@{cursor.extent.start.offset}"
        for child in cursor.get_children():
            begin = child.extent.start.offset
            between = self.text(name_end, begin) if begin >= name_end else "["
            # What stands before the name is of the type, and behind it may be the count of an array.
            is_count = "[" in between and "]" not in between
            if not is_count and not self.is_array_of_text(cursor, child):
                self.visit(child)
            else:
                self.visit_fixed([child])
        self.relaxed = was_relaxed

    @staticmethod
    def is_array_of_text(variable, value):
        return (value.kind == CursorKind.STRING_LITERAL
                and variable.type.get_canonical().kind in (TypeKind.CONSTANTARRAY, TypeKind.INCOMPLETEARRAY))

    def visit_statements(self, statements):
        for child in statements:
            self.visit(child)
            bare = child
            while bare.kind == CursorKind.UNEXPOSED_EXPR:
                inner = [one for one in bare.get_children() if one.extent == bare.extent]
                if not inner:
                    break
                bare = inner[0]
            if child.kind.is_expression() or bare.kind in JUMPS:
                self.add_removal(child)

    def add_removal(self, cursor):
        end = self.end_of_statement(cursor)
        if end is not None:
            self.add(cursor, "nothing", "", "removal", end=end)

    def end_of_statement(self, cursor):
        """Behind its semicolon."""
        match = re.compile(rb"\s*;").match(self.bytes, cursor.extent.end.offset)
        return match.end() if match else None

    def visit_control(self, cursor, children):
        """What stands in the parentheses, and what it decides about."""
        begin = cursor.extent.start.offset
        head = self.of(cursor)
        opening = begin + len(head[:head.index("(")].encode())
        closing = self.closing_of(opening)
        inside = [child for child in children if opening < child.extent.start.offset < closing]
        rest = [child for child in children if child.extent.start.offset > closing]
        if cursor.kind == CursorKind.FOR_STMT:
            self.visit_for(inside, opening)
        elif cursor.kind == CursorKind.SWITCH_STMT:
            for child in inside:
                self.visit(child)
        elif not re.match(r"if\s+constexpr\b", head):
            declared = [child for child in inside if child.kind in DECLARATIONS]
            for child in declared:
                self.visit(child)
            conditions = [child for child in inside if child not in declared]
            starts_later = not declared or self.text(
                declared[-1].extent.start.offset, conditions[-1].extent.start.offset).count(";")
            if conditions and starts_later:
                self.visit_condition(conditions[-1])
        self.visit_statements(rest)

    def visit_for(self, inside, opening):
        for child in inside:
            before = self.text(opening, child.extent.start.offset)
            if child.kind != CursorKind.DECL_STMT and self.semicolons(before) == 1:
                self.visit_condition(child)
            else:
                self.visit(child)

    @staticmethod
    def semicolons(text):
        return re.sub(r"'(\\.|[^'])'|\"[^\"]*\"", "", text).count(";")

    def closing_of(self, opening):
        depth = 0
        for match in QUOTED_OR_PARENTHESIS.finditer(self.bytes, opening):
            depth += {b"(": 1, b")": -1}.get(match[0], 0)
            if depth == 0:
                return match.start()
        raise ValueError("a parenthesis is not closed")

    def visit_return(self, cursor, children):
        if not children:
            return self.add_removal(cursor)
        value = children[0]
        kind = value.type.get_canonical().kind
        end = self.end_of_statement(cursor)
        if kind == TypeKind.VOID:
            self.visit(value)
            self.add(cursor, "return;", "return;", "return", end=end)
        elif kind == TypeKind.BOOL:
            self.visit_condition(value)
        else:
            self.visit(value)
            if kind == TypeKind.RECORD and self.of(value) != "{}":
                self.add(cursor, "return {};", "return {};", "return", end=end)
            elif not self.is_constant(value):
                if kind in INTEGERS:
                    self.add(value, "0", type_name=value.type.get_canonical().spelling)
                elif kind == TypeKind.POINTER:
                    self.add(value, "nullptr")

    def is_constant(self, cursor):
        while cursor.kind in WRAPPERS:
            inner = list(cursor.get_children())
            if len(inner) != 1:
                return False
            cursor = inner[0]
        return cursor.kind in LITERALS or cursor.kind == CursorKind.CXX_NULL_PTR_LITERAL_EXPR

    # Conditions and expressions.

    def core_of(self, cursor):
        """Without what is put around it."""
        while cursor.kind in WRAPPERS:
            inner = list(cursor.get_children())
            is_wrapped = cursor.kind == CursorKind.PAREN_EXPR or inner and inner[0].extent == cursor.extent
            if len(inner) != 1 or not is_wrapped:
                break
            cursor = inner[0]
        return cursor

    def visit_condition(self, cursor):
        """Each of its terms as if it were true or false."""
        core = self.core_of(cursor)
        children = list(core.get_children())
        if core.kind == CursorKind.BINARY_OPERATOR and self.operator_of(core, children) in ("&&", "||"):
            return self.visit(cursor)
        place = core if core.extent.end.offset > core.extent.start.offset else cursor
        source = self.of(place)
        if core.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            return self.visit(cursor)
        self.add(place, "true", type_name="bool")
        self.add(place, "false", type_name="bool")
        is_comparison = self.operator_of(core, children) in COMPARISONS
        if not is_comparison and not source.startswith("!"):
            self.add(place, f"!({source})" if not NAME.fullmatch(source) else f"!{source}", f"!({source})",
                     type_name="bool")
        self.visit(cursor)

    def operator_of(self, cursor, children):
        """Of two operands; nothing when there is none or a macro hides it."""
        if len(children) < 2:
            return None
        left, right = children[0], children[-1]
        begin, end = left.extent.end.offset, right.extent.start.offset
        if begin > end or left.extent.start.offset < cursor.extent.start.offset:
            return None
        between = re.sub(r"//[^\n]*|/\*.*?\*/", " ", self.text(begin, end)).strip()
        return between if between in OTHER_OPERATORS or between == "=" else None

    def visit_expression(self, cursor, children):
        kind = cursor.kind
        if kind in LITERALS:
            self.visit_number(cursor)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR and self.of(cursor) in ("true", "false"):
            self.add(cursor, "false" if self.of(cursor) == "true" else "true")
        elif kind == CursorKind.STRING_LITERAL:
            self.visit_string(cursor)
        elif kind == CursorKind.UNARY_OPERATOR or cursor.spelling in STEPS:
            self.visit_unary(cursor, children)
        elif kind in OPERATIONS:
            self.visit_binary(cursor, children)

    def visit_binary(self, cursor, children):
        operator = self.operator_of(cursor, children)
        if operator is None or operator == "=":
            return
        left, right = self.of(children[0]), self.of(children[-1])
        type_name = "bool" if operator in COMPARISONS or operator in ("&&", "||") else ""
        for other in OTHER_OPERATORS[operator]:
            self.add(cursor, f"{left} {other} {right}", f"({left}) {other} ({right})", type_name=type_name)
        if operator in ("&&", "||"):
            self.visit_condition(children[0])
            self.visit_condition(children[-1])

    def visit_unary(self, cursor, children):
        source = self.of(cursor)
        if source.startswith(("++", "--")):
            self.add(cursor, OTHER_OPERATORS[source[:2]][0] + source[2:])
        elif source.endswith(("++", "--")):
            self.add(cursor, source[:-2] + OTHER_OPERATORS[source[-2:]][0])
        elif source[0] in "-~" or (source[0] == "!" and source[1:2] != "="):
            self.add(cursor, source[1:], f"({source[1:]})", type_name="bool" if source[0] == "!" else "")

    def visit_number(self, cursor):
        source = self.of(cursor)
        number = NUMBER.fullmatch(source)
        named = NAME.fullmatch(source)
        if source in ("TRUE", "FALSE"):
            return self.add(cursor, "FALSE" if source == "TRUE" else "TRUE")
        if not (number or named or CHARACTER.fullmatch(source)):
            return
        used_as = self.converted.get(self.extent(cursor), cursor.type.get_canonical())
        if used_as.kind not in INTEGERS:
            return
        type_name = used_as.spelling
        if number:
            digits = number[1].replace("'", "")
            octal = digits.startswith("0") and digits.isdigit()
            value = int(digits, 8) if octal else int(digits, 0)
            hexadecimal = digits.lower().startswith("0x")
            self.add(cursor, f"{value + 1:#x}" if hexadecimal else str(value + 1), f"({source} + 1)",
                     type_name=type_name)
            if value > 0:
                self.add(cursor, f"{value - 1:#x}" if hexadecimal else str(value - 1), f"({source} - 1)",
                         type_name=type_name)
        else:
            self.add(cursor, f"{source} + 1", f"({source} + 1)", type_name=type_name)

    def visit_string(self, cursor):
        source = self.of(cursor)
        for empty in ('TEXT("")', '""'):
            if source.startswith(empty[:-2] if empty != '""' else '"') and source != empty:
                return self.add(cursor, empty)
