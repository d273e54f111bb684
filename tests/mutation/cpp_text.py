"""What the mutants need to know of a C++ source: its tokens, its brackets, its blocks and their statements. By the text
alone, as the formatter leaves it; no more of the language than the product uses."""
import dataclasses
import re

TOKEN = re.compile(r"""
    (?P<space>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*(?:\\\n(?:[^\n\\]|\\.)*)*)
  | (?P<text>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*")
  | (?P<character>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
  | (?P<number>\.?\d(?:'?[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<sign><<=|>>=|\.\.\.|->\*|<=>|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||\+=|-=|\*=|/=|%=|&=|\|=|\^=|.)
""", re.VERBOSE | re.DOTALL | re.MULTILINE)
CLOSING = {"(": ")", "[": "]", "{": "}"}
DECLARING = {"const", "constexpr", "auto", "static", "using", "static_assert", "struct", "class", "enum", "union", "typedef",
             "template", "unsigned", "signed", "int", "long", "short", "char", "bool", "wchar_t", "double", "float", "void",
             "mutable", "volatile", "decltype", "typename", "extern", "friend", "constinit", "inline"}
JUMPS = {"return", "break", "continue", "goto"}


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclasses.dataclass(frozen=True)
class Statement:
    kind: str  # "call", "assignment", "declaration", "jump", "label", "block", or a keyword: "if", "for" ...
    first: int  # its tokens
    last: int
    otherwise: int = 0  # of an "if": the token `else`, or 0


class Source:
    def __init__(self, text):
        self.text = text
        self.tokens = [Token(found.lastgroup, found.group(), found.start(), found.end())
                       for found in TOKEN.finditer(text) if found.lastgroup != "space"]
        self.partner = self._partners()
        self.kind_of_brace = {}
        self.enclosing = [None] * len(self.tokens)  # the brace around each token
        self._classify()

    def _partners(self):
        partner, open_ones = {}, []
        for place, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in CLOSING:
                open_ones.append(place)
            elif token.text in CLOSING.values() and open_ones:
                partner[place] = open_ones[-1]
                partner[open_ones.pop()] = place
        return partner

    def head(self, place):
        """The tokens before a brace that belong to it, without what stands in brackets."""
        words = []
        place -= 1
        while place >= 0:
            text = self.tokens[place].text
            if text in ")]" and place in self.partner:
                words.append("()" if text == ")" else "[]")
                place = self.partner[place] - 1
                continue
            if text == "}" and place in self.partner:
                opening = self.partner[place]
                if self.kind_of_brace.get(opening) != "values":
                    break
                words.append("{}")
                place = opening - 1
                continue
            if text in (";", "{", "(", "["):
                break
            words.append(text)
            place -= 1
        return words[::-1]

    def _classify(self):
        around = []
        for place, token in enumerate(self.tokens):
            if token.text == "}" and around and token.kind == "sign":
                around.pop()
            self.enclosing[place] = around[-1] if around else None
            if token.text == "{" and token.kind == "sign":
                self.kind_of_brace[place] = self._kind_of(place, around)
                around.append(place)

    def _kind_of(self, place, around):
        head = self.head(place)
        before = self.tokens[place - 1].text if place else ""
        in_code = any(self.kind_of_brace[brace] == "block" for brace in around)
        if "namespace" in head or head[:1] == ["extern"] and len(head) == 2:
            return "namespace"
        if "enum" in head:
            return "enum"
        if {"class", "struct", "union"} & set(head) and "()" not in head and "=" not in head:
            return "class"
        if before in (")", "]", "const", "noexcept", "override", "final", "else", "do", "mutable"):
            return "block"
        if in_code:
            if before in (";", "{", "}", ":") or "->" in head and "[]" in head:
                return "block"
            return "values"
        if before == "}" and "()" in head:  # the last member of a constructor's list
            return "block"
        return "values"

    def in_code(self, place):
        """Whether the token stands in the body of a function."""
        brace = self.enclosing[place]
        while brace is not None:
            if self.kind_of_brace[brace] == "block":
                return True
            brace = self.enclosing[brace]
        return False

    def in_enumeration(self, place):
        brace = self.enclosing[place]
        return brace is not None and self.kind_of_brace[brace] == "enum"

    def blocks(self):
        """The statements of each block, one list after another; a block in a block has its own."""
        for brace, kind in self.kind_of_brace.items():
            if kind == "block" and brace in self.partner:
                yield self.statements(brace + 1, self.partner[brace])

    def statements(self, place, end):
        found = []
        while place < end:
            statement = self.statement(place)
            found.append(statement)
            place = statement.last + 1
        return found

    def statement(self, place):
        """The one that begins here."""
        text = self.tokens[place].text
        if text == "{":
            return Statement("block", place, self.partner[place])
        if text in ("case", "default"):
            end = place
            while self.tokens[end].text != ":":
                end = self.partner[end] + 1 if self.tokens[end].text in CLOSING else end + 1
            return Statement("label", place, end)
        if text == "do":
            body = self.statement(place + 1)
            return Statement("do", place, self._end(body.last + 1))
        if text in ("if", "for", "while", "switch"):
            opening = place + 1
            while self.tokens[opening].text != "(":
                opening += 1
            body = self.statement(self.partner[opening] + 1)
            if text == "if" and body.last + 1 < len(self.tokens) and self.tokens[body.last + 1].text == "else":
                branch = self.statement(body.last + 2)
                return Statement("if", place, branch.last, body.last + 1)
            return Statement(text, place, body.last)
        end = self._end(place)
        return Statement(self._simple_kind(place, end), place, end)

    def _end(self, place):
        while place < len(self.tokens) - 1 and self.tokens[place].text != ";":
            place = self.partner[place] + 1 if self.tokens[place].text in CLOSING else place + 1
        return place

    def _simple_kind(self, place, end):
        text = self.tokens[place].text
        if text in JUMPS:
            return "jump"
        if text in DECLARING:
            return "declaration"
        if text in ("++", "--"):
            return "assignment"
        at = place
        depth = 0
        while at < end:
            token = self.tokens[at]
            following = self.tokens[at + 1]
            if token.text in ("(", "["):
                at = self.partner[at] + 1
                continue
            if token.text == "<" and self.tokens[at - 1].end == token.start:
                depth += 1
            elif token.text in (">", ">>") and depth:
                depth -= len(token.text)
            if depth == 0:
                if token.text in ("=", "+=", "-=", "|=", "&=", "*=", "++", "--"):
                    return "assignment"
                # Two names in a row, or a name behind a type's end.
                if following.kind == "name" and (token.kind == "name" or token.text in (">", "&", "*", "&&")):
                    return "declaration"
            at += 1
        return "call"

    def inner_statements(self, statement):
        """The statements that belong to this one without a block of their own: `if (late) return;`."""
        if statement.kind == "block":
            return
        if statement.kind in ("if", "for", "while", "switch"):
            opening = statement.first + 1
            while self.tokens[opening].text != "(":
                opening += 1
            yield from self._inner(self.statement(self.partner[opening] + 1))
            if statement.otherwise:
                yield from self._inner(self.statement(statement.otherwise + 1))
        elif statement.kind == "do":
            yield from self._inner(self.statement(statement.first + 1))

    def _inner(self, body):
        if body.kind != "block":
            yield body
            yield from self.inner_statements(body)

    def condition(self, statement):
        """First and last token of what an `if`, `while` or `do` asks; nothing where it declares a name."""
        if statement.kind == "do":
            closing = statement.last - 1
            first, last = self.partner[closing] + 1, closing - 1
        else:
            opening = statement.first + 1
            while self.tokens[opening].text != "(":
                opening += 1
            first, last = opening + 1, self.partner[opening] - 1
        place = first
        while place <= last:  # what stands before a semicolon only declares
            if self.tokens[place].text == ";":
                first = place + 1
            place = self.partner[place] + 1 if self.tokens[place].text in CLOSING else place + 1
        if any(token.text == "=" for token in self.tokens[first:last + 1]):
            return None
        return first, last

    def elements(self, opening):
        """What commas part between a bracket and its partner: first and last tokens."""
        parts, first, place = [], opening + 1, opening + 1
        end = self.partner[opening]
        while place < end:
            text = self.tokens[place].text
            if text == ",":
                parts.append((first, place - 1))
                first = place + 1
            elif text == "<" and self.tokens[place - 1].end == self.tokens[place].start:
                depth = 0  # a template's arguments
                while place < end:
                    depth += {"<": 1, ">": -1, ">>": -2}.get(self.tokens[place].text, 0)
                    if depth <= 0:
                        break
                    place += 1
            place = self.partner[place] + 1 if self.tokens[place].text in CLOSING else place + 1
        if first < end:
            parts.append((first, end - 1))
        return parts

    def code(self, first, last):
        return self.text[self.tokens[first].start:self.tokens[last].end]

    def line_of(self, position):
        return self.text.count("\n", 0, position) + 1
