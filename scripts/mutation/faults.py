"""Finds the places where a fault can be made in C++ files, and says what each one would be.

libclang says what is a statement, a condition or a value, so that faults are made in the bodies of
functions only: never in comments, texts, tables of constants or static assertions."""

import dataclasses
import hashlib
import re

from clang import cindex
from clang.cindex import CursorKind, TokenKind, TypeKind

# Written with a space on both sides these are operators, in files that clang-format has laid out.
COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
LOGICAL = {"&&": "||", "||": "&&"}
# Of built-in types only: texts are joined with + and lack the rest.
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "|": "&", "&": "|", "^": "|",
              "<<": ">>", ">>": "<<", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|="}
STEPS = {"++": "--", "--": "++"}

FUNCTIONS = {CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR,
             CursorKind.CONVERSION_FUNCTION, CursorKind.FUNCTION_TEMPLATE}
SCOPES = {CursorKind.NAMESPACE, CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL, CursorKind.CLASS_TEMPLATE,
          CursorKind.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION, CursorKind.LINKAGE_SPEC, CursorKind.UNEXPOSED_DECL}
WHOLE_NUMBERS = {TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG,
                 TypeKind.ULONGLONG, TypeKind.SHORT, TypeKind.USHORT, TypeKind.DOUBLE, TypeKind.FLOAT}


@dataclasses.dataclass(frozen=True)
class Fault:
    file: str  # from the root of the sources
    kind: str
    start: int  # in bytes
    end: int
    text: str  # what stands there instead
    line: int
    function: tuple  # the first and the last line of the function around it

    def apply(self, source: bytes) -> bytes:
        return source[: self.start] + self.text.encode() + source[self.end:]

    def name(self, source: bytes) -> str:
        """The same as long as the file is the same."""
        key = f"{self.file} {self.start} {self.end} {self.text} ".encode() + source
        return hashlib.sha256(key).hexdigest()[:24]

    def lines(self, source: bytes) -> tuple:
        """The first line that differs, before and after, without indentation."""
        before = source.split(b"\n")
        after = self.apply(source).split(b"\n")
        for old, new in zip(before, after):
            if old != new:
                return tuple(" ".join(text.decode().split()) for text in (old, new))
        return "", ""


class Finder:
    """Collects the faults of one file, whose functions may be seen in several units."""

    def __init__(self, file, source):
        self.file = file
        self.source = source
        self.found = {}

    def add(self, kind, start, end, text, function):
        old = self.source[start:end].decode()
        if old == text or start >= end + (kind == "removed statement"):
            return
        line = self.source.count(b"\n", 0, start) + 1
        # The same text at the same place is one fault, whatever it was made as.
        self.found.setdefault((start, end, text), Fault(self.file, kind, start, end, text, line, function))

    def text(self, cursor):
        return self.source[cursor.extent.start.offset:cursor.extent.end.offset].decode(errors="replace")

    # --- A function ---------------------------------------------------------------------------------

    def function(self, cursor):
        lines = (cursor.extent.start.line, cursor.extent.end.line)
        body = [child for child in cursor.get_children() if child.kind == CursorKind.COMPOUND_STMT]
        if not body:
            return
        constants = []
        operators = set()
        for child in cursor.get_children():
            if child.kind in (CursorKind.COMPOUND_STMT,) or child.kind.is_expression():
                self.walk(child, cursor, lines, constants, operators)
        start = body[0].extent.start.offset
        self.tokens(cursor.translation_unit, body[0].extent, lines, operators)
        for first, last in constants:
            self.found = {key: fault for key, fault in self.found.items()
                          if not (first <= key[0] and key[1] <= last and key[0] >= start)}

    def walk(self, top, function, lines, constants, operators):
        # Not recursive: expressions that join many texts nest deeper than Python calls.
        waiting = [(top, None)]
        while waiting:
            cursor, parent = waiting.pop()
            where = cursor.extent.start
            if where.file is None or where.file.name != self.path:
                continue
            self.one(cursor, parent, function, lines, constants, operators)
            if cursor.kind.name != "STATIC_ASSERT":
                waiting.extend((child, cursor) for child in cursor.get_children())

    def one(self, cursor, parent, function, lines, constants, operators):
        kind = cursor.kind
        first, last = cursor.extent.start.offset, cursor.extent.end.offset
        if kind == CursorKind.VAR_DECL and re.match(r"(static )?constexpr |static const ", self.text(parent)):
            constants.append((first, last))
        elif kind == CursorKind.COMPOUND_STMT:
            for child in cursor.get_children():
                self.statement(child, lines)
        elif kind == CursorKind.RETURN_STMT:
            for child in cursor.get_children():
                self.returned(child, function, lines)
        elif kind in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR):
            sides = list(cursor.get_children())
            if len(sides) == 2:
                between = self.source[sides[0].extent.end.offset:sides[1].extent.start.offset].decode()
                if between.strip() in ARITHMETIC:
                    operators.add(sides[0].extent.end.offset + len(between) - len(between.lstrip()))
        elif kind == CursorKind.CONDITIONAL_OPERATOR:
            self.negated(*self.span(next(cursor.get_children())), lines)
        elif kind == CursorKind.INTEGER_LITERAL:
            self.number(cursor, lines)
        elif kind == CursorKind.CHARACTER_LITERAL:
            self.character(cursor, lines)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            self.add("truth", first, last, {"true": "false", "false": "true"}.get(self.text(cursor), ""), lines)
        elif kind == CursorKind.CALL_EXPR:
            self.arguments(cursor, lines)

    def span(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def statement(self, cursor, lines):
        text = self.text(cursor)
        plain = cursor.kind in (CursorKind.CONTINUE_STMT, CursorKind.BREAK_STMT) or text == "return"
        if plain or (cursor.kind.is_expression() and not text.startswith(("assert", "static_assert"))):
            start, end = self.span(cursor)
            if self.source[end:end + 1] == b";":
                self.add("removed statement", start, end, "", lines)

    def returned(self, cursor, function, lines):
        start, end = self.span(cursor)
        text = self.text(cursor)
        of = cursor.type.get_canonical().kind
        if function.result_type.kind == TypeKind.LVALUEREFERENCE and cursor.kind != CursorKind.LAMBDA_EXPR:
            return
        if of == TypeKind.BOOL:
            if text in ("true", "false"):
                self.add("return value", start, end, "false" if text == "true" else "true", lines)
            elif not re.search(r" (==|!=|&&|\|\|) ", text):
                self.add("return value", start, end, f"!({text})", lines)
        elif of in WHOLE_NUMBERS:
            if not re.fullmatch(r"[-\w.']+", text) or not text[-1].isdigit():
                self.add("return value", start, end, f"({text}) + 1", lines)
        elif of == TypeKind.POINTER:
            self.add("return value", start, end, "nullptr", lines)
        elif text.strip() not in ("{}", "nullptr", "std::nullopt") and not text.endswith("{}"):
            self.add("return value", start, end, "{}", lines)

    def negated(self, start, end, lines):
        text = self.source[start:end].decode().strip()
        # A comparison for equality is turned around as such.
        simple = len(re.findall(r" (==|!=|&&|\|\||<|>|<=|>=) ", text)) == 1 and re.search(r" (==|!=) ", text)
        if text and not simple and not re.match(r"(const )?(auto|[\w:]+(<.*>)?)[*&]* [*&]?\w+ = ", text):
            self.add("negated condition", start, end, f"!({text})", lines)

    def number(self, cursor, lines):
        text = self.text(cursor)
        match = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[0-9']+)([uUlLzZ]*)", text)
        if match:
            value = int(match[1].replace("'", ""), 0 if match[1][:2].lower() == "0x" else 10)
            start, end = self.span(cursor)
            value += -1 if value > 0 and start % 2 else 1
            self.add("constant", start, end, f"{value}{match[2]}", lines)

    def character(self, cursor, lines):
        match = re.fullmatch(r"(L|u8|u|U)?'(.|\\.+)'", self.text(cursor))
        if match:
            plain = len(match[2]) == 1 and 32 <= ord(match[2]) < 126
            other = chr(ord(match[2]) + 1) if plain else "Z"
            other = "Z" if other in "'\\" else other
            self.add("constant", *self.span(cursor), f"{match[1] or ''}'{other}'", lines)

    def arguments(self, cursor, lines):
        given = list(cursor.get_arguments())
        for one, other in zip(given, given[1:]):
            (start, middle), (middle2, end) = self.span(one), self.span(other)
            kinds = [side.type.get_canonical().spelling.replace("const ", "") for side in (one, other)]
            if start < middle < middle2 < end and kinds[0] == kinds[1] != "":
                between = self.source[middle:middle2].decode()
                if between.strip() == "," and self.text(one) != self.text(other):
                    self.add("swapped arguments", start, end, self.text(other) + between + self.text(one), lines)
                    return

    # --- What is plainer in tokens --------------------------------------------------------------------

    def tokens(self, unit, extent, lines, operators):
        tokens = list(unit.get_tokens(extent=extent))
        for index, token in enumerate(tokens):
            start, end = token.extent.start.offset, token.extent.end.offset
            spelling = token.spelling
            if token.kind == TokenKind.KEYWORD and spelling in ("if", "while", "for"):
                self.head(tokens, index, lines)
            elif token.kind == TokenKind.PUNCTUATION:
                spaced = self.source[start - 1:start].isspace() and self.source[end:end + 1].isspace()
                if spaced and spelling in COMPARISONS:
                    self.add("comparison", start, end, COMPARISONS[spelling], lines)
                elif spaced and spelling in LOGICAL:
                    self.add("logical", start, end, LOGICAL[spelling], lines)
                elif start in operators and spelling in ARITHMETIC:
                    self.add("arithmetic", start, end, ARITHMETIC[spelling], lines)
                elif spelling in STEPS:
                    self.add("arithmetic", start, end, STEPS[spelling], lines)

    def head(self, tokens, index, lines):
        """The condition of an if or a loop."""
        if index + 1 >= len(tokens) or tokens[index + 1].spelling != "(":
            return
        depth = 0
        parts = [tokens[index + 1].extent.end.offset]
        for token in tokens[index + 1:]:
            depth += (token.spelling in "([{") - (token.spelling in ")]}")
            if depth == 0:
                parts.append(token.extent.start.offset)
                break
            if depth == 1 and token.spelling == ";":
                parts.append(token.extent.start.offset)
                parts.append(token.extent.end.offset)
        pairs = list(zip(parts[::2], parts[1::2]))
        if tokens[index].spelling == "for":
            pairs = pairs[1:2] if len(pairs) == 3 else []
        for start, end in pairs[-1:]:
            text = self.source[start:end]
            self.negated(start + len(text) - len(text.lstrip()), end, lines)


def find(source_root, unit_file, arguments, wanted):
    """The faults of the files of one unit that are in `wanted`, by file."""
    index = cindex.Index.create()
    unit = index.parse(f"{source_root}/{unit_file}", args=arguments)
    finders = {}
    for file in wanted:
        with open(f"{source_root}/{file}", "rb") as stream:
            finders[f"{source_root}/{file}"] = Finder(file, stream.read())
    for path, finder in finders.items():
        finder.path = path
    waiting = [unit.cursor]
    while waiting:
        for cursor in waiting.pop().get_children():
            where = cursor.location.file
            if where is None or where.name not in finders:
                continue
            if cursor.kind in FUNCTIONS:
                if cursor.is_definition():
                    finders[where.name].function(cursor)
            elif cursor.kind in SCOPES:
                waiting.append(cursor)
    return {finder.file: sorted(finder.found.values(), key=lambda fault: (fault.start, fault.end, fault.text))
            for finder in finders.values()}
