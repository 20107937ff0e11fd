"""Where a source can be changed, and into what: found in what Clang has parsed of it."""
import re

from clang import cindex
from clang.cindex import CursorKind as Kind

SWAPS = {
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "==": ["!="],
    "!=": ["=="],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
    "%": ["*"],
    "&": ["|"],
    "|": ["&"],
    "+=": ["-="],
    "-=": ["+="],
    "*=": ["+="],
    "/=": ["*="],
    "|=": ["&="],
    "&=": ["|="],
}
COMPARING = {"<", "<=", ">", ">=", "==", "!="}
COUNTING = {"++": "--", "--": "++"}
FUNCTIONS = {
    Kind.FUNCTION_DECL,
    Kind.CXX_METHOD,
    Kind.CONSTRUCTOR,
    Kind.DESTRUCTOR,
    Kind.FUNCTION_TEMPLATE,
    Kind.CONVERSION_FUNCTION,
}
# What has no value that could be another one.
PASSED_OVER = {
    Kind.TYPE_ALIAS_DECL,
    Kind.TYPEDEF_DECL,
    Kind.STATIC_ASSERT,
    Kind.USING_DECLARATION,
    Kind.TYPE_REF,
    Kind.TEMPLATE_REF,
    Kind.TEMPLATE_TYPE_PARAMETER,
    Kind.TEMPLATE_NON_TYPE_PARAMETER,
}
STATEMENTS = {
    Kind.CALL_EXPR,
    Kind.BINARY_OPERATOR,
    Kind.COMPOUND_ASSIGNMENT_OPERATOR,
    Kind.UNARY_OPERATOR,
    Kind.UNEXPOSED_EXPR,
    Kind.CXX_DELETE_EXPR,
}


class Site:
    """One change: p_iStart to p_iEnd of a file (in bytes) becomes `new`."""

    def __init__(self, path, start, end, old, new, how, function, fixed):
        self.path = path
        self.start = start
        self.end = end
        self.old = old
        self.new = new
        self.how = how  # "value", "row", "negate", "drop" (an expression), "skip" (a statement)
        self.function = function
        self.fixed = fixed  # stands where only the compiler can choose
        self.number = 0
        self.key = ""
        self.line = 0

    def text(self):
        """What stands there instead when nothing but this is changed."""
        if self.how == "negate":
            return f"(!static_cast<bool>({self.new}))"
        return {"drop": "static_cast<void>(0)", "skip": ""}.get(self.how, f"({self.new})"
                                                                if self.how == "value" else self.new)


class Finder:
    def __init__(self, path, source, unit, room):
        self.path = path
        self.source = source
        self.unit = unit
        self.room = room
        self.sites = []
        self.constants = []  # of each "constexpr" that can become "const": where it stands

    def find(self):
        for child in self.unit.cursor.get_children():
            if child.location.file and child.location.file.name == self.path:
                self.visit(child, "", False, None)
        seen = {}
        for site in sorted(self.sites, key=lambda s: (s.start, -s.end, s.how, s.new)):
            label = f"{self.room} | {site.function or '-'} | {tell(site)}"
            seen[label] = seen.get(label, 0) + 1
            site.key = label + (f" #{seen[label]}" if seen[label] > 1 else "")
            site.line = self.source.count(b"\n", 0, site.start) + 1
        return self.sites

    def bytes_of(self, cursor):
        return self.source[cursor.extent.start.offset:cursor.extent.end.offset].decode()

    def add(self, cursor, new, how, function, fixed):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if cursor.extent.start.file is None or cursor.extent.start.file.name != self.path or end <= start:
            return
        self.sites.append(Site(self.path, start, end, self.bytes_of(cursor), flat(new), how, function, fixed))

    def visit(self, cursor, function, fixed, table):
        kind = cursor.kind
        if kind in PASSED_OVER:
            return
        if kind in FUNCTIONS:
            function = f"{cursor.semantic_parent.spelling}::{cursor.spelling}" \
                if kind != Kind.FUNCTION_DECL and cursor.semantic_parent.spelling else cursor.spelling
            if cursor.is_definition():
                self.note_constant(cursor, "inline")
        if kind in (Kind.VAR_DECL, Kind.FIELD_DECL, Kind.PARM_DECL):
            self.visit_variable(cursor, function, fixed)
            return
        if kind == Kind.ENUM_CONSTANT_DECL:
            fixed = True
        self.visit_value(cursor, function, fixed)
        self.visit_statement(cursor, function, fixed)
        if kind == Kind.INIT_LIST_EXPR and table is not None:
            self.visit_rows(cursor, function, fixed, table)
        for index, child in enumerate(cursor.get_children()):
            self.visit(child, function, fixed or (kind == Kind.CASE_STMT and index == 0), table)

    def visit_variable(self, cursor, function, fixed):
        declaration = self.bytes_of(cursor)
        self.note_constant(cursor, "static inline const"
                           if cursor.semantic_parent.kind in (Kind.CLASS_DECL, Kind.STRUCT_DECL) else "const")
        function = function or cursor.spelling
        match = re.search(r"std::(?:array|vector)<\s*([\w:]+)", declaration)
        table = match.group(1) if match else ""
        for child in cursor.get_children():
            if child.extent.end.offset > cursor.location.offset + len(cursor.spelling):
                self.visit(child, function, fixed, table)

    def note_constant(self, cursor, instead):
        """A constexpr cannot read at run time which change is on."""
        start = cursor.extent.start.offset
        head = self.source[start:cursor.location.offset]
        match = re.search(rb"(?:static )?\bconstexpr\b", head)
        if match:
            if match.group(0).startswith(b"static ") and not instead.startswith("static"):
                instead = "static " + instead
            if instead.startswith("static") and not match.group(0).startswith(b"static"):
                return
            self.constants.append((start + match.start(), start + match.end(), instead,
                                   start, cursor.extent.end.offset))

    def operator(self, cursor):
        """The operator between the two operands of an expression, with its place; nothing if it has none."""
        operands = [c for c in cursor.get_children() if c.extent.end.offset > c.extent.start.offset]
        if len(operands) < 2:
            return None
        first = min(operands, key=lambda c: c.extent.start.offset)
        last = max(operands, key=lambda c: c.extent.end.offset)
        start, end = first.extent.end.offset, last.extent.start.offset
        between = self.source[start:end]
        text = re.sub(rb"//[^\n]*|/\*.*?\*/", lambda m: b" " * len(m.group(0)), between, flags=re.S)
        token = text.strip().decode()
        if token not in SWAPS:
            return None
        at = start + text.index(token.encode())
        return token, at, at + len(token)

    def visit_value(self, cursor, function, fixed):
        kind = cursor.kind
        text = self.bytes_of(cursor)
        if kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR) or (
                kind == Kind.CALL_EXPR and cursor.spelling.startswith("operator")):
            found = self.operator(cursor)
            if found and (kind != Kind.CALL_EXPR or found[0] in COMPARING):
                token, start, end = found
                before = self.source[cursor.extent.start.offset:start].decode()
                behind = self.source[end:cursor.extent.end.offset].decode()
                for other in SWAPS[token]:
                    self.add(cursor, before + other + behind, "value", function, fixed)
        elif kind == Kind.UNARY_OPERATOR:
            for token, other in COUNTING.items():
                if text.startswith(token):
                    self.add(cursor, other + text[2:], "value", function, fixed)
            if text.startswith("!"):
                self.add(cursor, f"static_cast<bool>({text[1:]})", "value", function, fixed)
            if text.startswith("-") and not text.startswith("--"):
                self.add(cursor, text[1:], "value", function, fixed)
        elif kind == Kind.INTEGER_LITERAL:
            self.add(cursor, f"{text} + 1", "value", function, fixed)
        elif kind == Kind.FLOATING_LITERAL:
            self.add(cursor, f"{text} * 2 + 1", "value", function, fixed)
        elif kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.add(cursor, "false" if text == "true" else "true", "value", function, fixed)
        elif kind == Kind.CHARACTER_LITERAL:
            self.add(cursor, "'?'" if text == "'!'" else "'!'", "value", function, fixed)
        elif kind == Kind.STRING_LITERAL:
            body = text[text.index('"') + 1:]
            keeps = not body.startswith(("\\", '"', "!"))
            self.add(cursor, '"!' + (body[1:] if keeps else body), "value", function, fixed)

    def visit_statement(self, cursor, function, fixed):
        kind = cursor.kind
        children = list(cursor.get_children())
        if kind in (Kind.IF_STMT, Kind.WHILE_STMT, Kind.CONDITIONAL_OPERATOR) and children:
            self.negate(children[0], function)
        elif kind == Kind.RETURN_STMT and children and \
                children[0].type.get_canonical().kind == cindex.TypeKind.BOOL:
            self.negate(children[0], function)
        if kind in (Kind.COMPOUND_STMT, Kind.CASE_STMT, Kind.DEFAULT_STMT):
            for child in children:
                if child.kind in STATEMENTS and not (kind == Kind.CASE_STMT and child == children[0]):
                    self.add(child, self.bytes_of(child), "drop", function, fixed)
                elif child.kind in (Kind.BREAK_STMT, Kind.CONTINUE_STMT) or (
                        child.kind == Kind.RETURN_STMT and not list(child.get_children())):
                    self.add(child, self.bytes_of(child), "skip", function, fixed)

    def negate(self, cursor, function):
        text = self.bytes_of(cursor)
        found = self.operator(cursor)
        told = (found and found[0] in ("==", "!=")) or text.startswith("!") and not found
        if cursor.kind.is_expression() and not told and text not in ("true", "false"):
            self.add(cursor, text, "negate", function, False)

    def visit_rows(self, cursor, function, fixed, table):
        rows = [c for c in cursor.get_children() if c.extent.end.offset > c.extent.start.offset]
        texts = [self.bytes_of(row) for row in rows]
        if len(rows) < 3:
            return
        braced = all(t.startswith("{") for t in texts) and table
        if not braced and not all(re.match(r"&?[A-Za-z_]\w*(::\w+)*$", t) for t in texts):
            return
        for index, row in enumerate(rows):
            other = texts[index + 1] if index + 1 < len(rows) else texts[index - 1]
            self.add(row, (table if braced else "") + other, "row", function, fixed)
            if self.sites and braced:
                self.sites[-1].table = table


def flat(text):
    """On one line, without comments: lines stay where they are in what is made of it."""
    pieces = re.split(r'("(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\')', text)
    for index in range(0, len(pieces), 2):
        piece = re.sub(r"//[^\n]*", " ", pieces[index])
        pieces[index] = re.sub(r"\s+", " ", re.sub(r"/\*.*?\*/", " ", piece, flags=re.S))
    return "".join(pieces)


def short(text, other=""):
    """A text, or of a long one what is about the place where it is not the other."""
    text, other = flat(text).strip(), flat(other).strip()
    if len(text) <= 90:
        return text
    if not other:
        return text[:60] + " ... " + text[-25:]
    first = next((i for i, (a, b) in enumerate(zip(text, other)) if a != b), 0)
    last = next((i for i, (a, b) in enumerate(zip(reversed(text), reversed(other))) if a != b), 0)
    start, end = max(0, first - 40), min(len(text), max(len(text) - last, first) + 40)
    return ("... " if start else "") + text[start:end] + (" ..." if end < len(text) else "")


def tell(site):
    old = short(site.old, site.new if site.how == "value" else "")
    if site.how == "drop" or site.how == "skip":
        return f"{old} => (removed)"
    if site.how == "negate":
        return f"{old} => (negated)"
    if site.how == "row":
        return f"row {old} => {short(site.new)}"
    return f"{old} => {short(site.new, site.old)}"
