"""Small changes to the product's sources, each of which a test should notice.

A mutant changes one operator, constant, number, text, condition, call or statement. What only declares, includes,
comments or asserts at compile time gives none; no two give the same text.
"""
import collections
import dataclasses
import hashlib
import re

import cpp_text


# Of these two values the result is the same in either order.
COMMUTATIVE = re.compile(r"std::(min|max)(<\w+>)?$")


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    start: int  # in the file's text
    end: int
    new: str
    change: str
    line: int  # from 1
    last_line: int
    reached_from: int  # the first line whose tests can notice it
    line_text: str

    def name(self):
        return f"{self.file}:{self.line}: {self.change}"

    def key(self):
        """What it is called in the ledger. The number of its line is not part of it."""
        return self.file, self.line_text, self.change

    def applied(self, text):
        return text[:self.start] + self.new + text[self.end:]


# Operators with blanks around them, as the formatter leaves them: templates, references and pointers do not match.
SWAPS = {
    "==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&", "+": "-", "-": "+",
    "*": "/", "/": "*", "%": "/", "|": "&", "&": "|", "<<": ">>", ">>": "<<", "+=": "-=", "-=": "+=", "*=": "/=",
    "|=": "&=", "&=": "|=",
}
STEPS = {"++": "--", "--": "++"}
WORDS = {"true": "false", "false": "true", "TRUE": "FALSE", "FALSE": "TRUE"}
NUMBER = re.compile(r"(?P<digits>0[xX][0-9A-Fa-f']+|\d[\d']*)(?P<suffix>[uUlLzZ]*)$")
# A constant of the system or of resource.h; what its name begins with says what it is one of.
CONSTANT = re.compile(r"(?P<group>[A-Z][A-Z0-9]*_|ID(?=[A-Z]+$))[A-Z0-9_]+$")
FLAGS = re.compile(r"(SW|MB|WM|OFN|LVIS|LVIF|LVM|LVSCW|BIF|CSIDL|FILE|OPEN|GENERIC|TOKEN|TTF|TTS|LVCF|LVNI|BN|EN)_")
# Names of the value 0: with a 0 in their place nothing is changed.
ZEROS = {"BN_CLICKED", "LVCFMT_LEFT", "MB_OK", "SW_HIDE"}
NO_STATEMENTS = {"using", "static_assert", "friend", "template", "namespace", "extern"}


class Names:
    """What the product declares, as far as a change may put one name in the place of another."""

    def __init__(self, sources):
        groups = collections.defaultdict(list)  # of names that can take each other's place
        self.enumerators = collections.defaultdict(list)
        self.constants = collections.defaultdict(list)
        for file, source in sources.items():
            for brace, kind in source.kind_of_brace.items():
                if brace not in source.partner:
                    continue
                if kind == "enum":
                    name = self._name_of(source, brace)
                    self.enumerators[name] += [source.tokens[first].text for first, _ in source.elements(brace)]
                elif kind == "class":
                    for type_, name in self._members(source, brace):
                        groups["member", self._name_of(source, brace), type_].append(name)
            for place, token in enumerate(source.tokens):
                if re.match(r"k[A-Z]\w*$", token.text) and place and source.tokens[place - 1].kind in ("name", "sign"):
                    following = source.tokens[place + 1].text
                    if following == "=" and not token.text.endswith("Id"):
                        groups["constant", file, source.tokens[place - 1].text].append(token.text)
                found = CONSTANT.match(token.text)
                if token.kind == "name" and found and source.tokens[place + 1].text != "(":
                    self.constants[file, found["group"]].append(token.text)
                    self.constants["", found["group"]].append(token.text)
        self.next_name = {}
        owners = collections.Counter(name for names in groups.values() for name in set(names))
        for names in groups.values():
            names = list(dict.fromkeys(names))
            for place, name in enumerate(names):
                if len(names) > 1 and owners[name] == 1:  # elsewhere it may be another thing of the same name
                    self.next_name[name] = names[(place + 1) % len(names)]

    @staticmethod
    def _name_of(source, brace):
        head = source.head(brace)
        head = head[:head.index(":")] if ":" in head else head
        names = [word for word in head if re.match(r"[A-Za-z_]\w*$", word) and word != "final"]
        return names[-1] if names else ""

    @staticmethod
    def _members(source, brace):
        place, end = brace + 1, source.partner[brace]
        while place < end:
            first = place
            while place < end and source.tokens[place].text not in (";", "{", "(", ":"):
                place += 1
            text = source.tokens[place].text
            name = place - 1
            for at in range(first, place):
                if source.tokens[at].text == "=":
                    name = at - 1
                    break
            if text in (";", "{") and name > first and source.tokens[name].kind == "name" and \
                    not {"using", "class", "struct", "enum", "static"} & {t.text for t in source.tokens[first:name]}:
                yield source.code(first, name - 1), source.tokens[name].text
            while place < end and source.tokens[place].text in ("(", "{"):
                was_brace = source.tokens[place].text == "{"
                place = source.partner[place] + 1
                if was_brace and source.tokens[place].text != ";":
                    break  # the body of a function
                while place < end and source.tokens[place].text not in (";", "{", "("):
                    place += 1
            if place < end and source.tokens[place].text in (";", ":"):
                place += 1

    def other(self, file, source, place):
        """The name that takes this one's place; nothing where there is none of the same kind."""
        name = source.tokens[place].text
        if source.tokens[place - 1].text == "::" and source.tokens[place - 2].text in self.enumerators:
            names = self.enumerators[source.tokens[place - 2].text]
            return names[(names.index(name) + 1) % len(names)] if name in names else None
        if name in self.next_name:
            # Without m_, only what stands behind an object is surely a member.
            if re.match(r"m_|k[A-Z]", name) or source.tokens[place - 1].text in (".", "->"):
                return self.next_name[name]
            return None
        if found := CONSTANT.match(name):
            for where in (file, ""):
                names = list(dict.fromkeys(self.constants[where, found["group"]]))
                if name in names and len(names) > 1:
                    return names[(names.index(name) + 1) % len(names)]
        return None


class Changes:
    """All changes of one file, as (first position, position behind the last, new text, what it is)."""

    def __init__(self, file, source, names):
        self.file = file
        self.source = source
        self.tokens = source.tokens
        self.names = names
        self.untouched = self._untouched()

    def _untouched(self):
        """The tokens of what no run of the program can tell apart, or what is no code."""
        places = set()
        for place, token in enumerate(self.tokens):
            if token.text == "case":
                label = self.source.statement(place)
                places.update(range(label.first, label.last + 1))
            elif token.text in NO_STATEMENTS:
                end = place
                while end < len(self.tokens) - 1 and self.tokens[end].text not in (";", "{", ">"):
                    end += 1
                places.update(range(place, end + 1))
            elif self.source.in_enumeration(place):
                places.add(place)
        return places

    def span(self, first, last, new, what, reached_from=None):
        """`reached_from`: the first token whose tests can notice it, if that is not the first that changes."""
        start = self.tokens[first].start
        return start, self.tokens[last].end, new, what, start if reached_from is None else self.tokens[reached_from].start

    def all(self):
        for place in range(len(self.tokens)):
            if place not in self.untouched:
                yield from self.of_token(place)
                yield from self.of_arguments(place)
                yield from self.of_choice(place)
        for statements in self.source.blocks():
            for place, statement in enumerate(statements):
                yield from self.of_statement(statement)
                for inner in self.source.inner_statements(statement):
                    yield from self.of_statement(inner)
                if place + 1 < len(statements):
                    yield from self.of_neighbours(statement, statements[place + 1])

    def of_token(self, place):
        token = self.tokens[place]
        text = token.text
        if token.kind == "sign":
            blanks = self.source.text[token.start - 1:token.start] + self.source.text[token.end:token.end + 1]
            if text in SWAPS and blanks[:1].isspace() and blanks[1:].isspace():
                yield self.span(place, place, SWAPS[text], f"{text} -> {SWAPS[text]}")
            elif text in STEPS:
                yield self.span(place, place, STEPS[text], f"{text} -> {STEPS[text]}")
            elif text == "!":
                yield self.span(place, place, "", f"! before {self.tokens[place + 1].text} left out")
        elif token.kind == "number":
            yield from self.of_number(place)
        elif token.kind == "text":
            yield self.span(place, place, text[:-1] + 'x"', f"x behind {text}")
        elif token.kind == "character":
            found = re.fullmatch(r"(.*')([^\\'])'", text)
            other = f"{found[1]}{chr(ord(found[2]) + 1)}'" if found else "L'x'"
            yield self.span(place, place, other, f"{text} -> {other}")
        elif text in WORDS:
            yield self.span(place, place, WORDS[text], f"{text} -> {WORDS[text]}")
        elif token.kind == "name":
            if FLAGS.match(text) and text not in ZEROS:
                yield self.span(place, place, "0", f"{text} -> 0")
            if place and (self.source.in_code(place) or self.tokens[place - 1].text in ("(", "=", ",", "|")):
                other = self.names.other(self.file, self.source, place)
                if other and self.tokens[place + 1].text != "(":
                    yield self.span(place, place, other, f"{text} -> {other}")

    def of_number(self, place):
        found = NUMBER.match(self.tokens[place].text)
        before = [token.text for token in self.tokens[max(0, place - 2):place]]
        # Numbers that are names for something, and the 0 of a function that is only declared.
        if not found or before[-1:] == ["="] and re.search(r"(Id|Section\w*)$", before[0]) or \
                before[-1:] == ["="] and before[:1] in (["const"], [")"], ["noexcept"], ["override"]):
            return
        value = int(found["digits"].replace("'", ""), 0)
        for other in (value + 1, value - 1):
            if other >= 0:
                new = (hex(other) if found["digits"][:2] in ("0x", "0X") else str(other)) + found["suffix"]
                yield self.span(place, place, new, f"{self.tokens[place].text} -> {new}")

    def of_arguments(self, place):
        """Neighbours in a list of arguments or of values in each other's place."""
        text = self.tokens[place].text
        if text not in ("(", "{") or place not in self.source.partner or not self.source.in_code(place):
            return
        if text == "{" and self.source.kind_of_brace.get(place) != "values":
            return
        if text == "(":
            before = self.tokens[place - 1]
            # A call; not the parameters of a lambda, nor what stands behind `if`.
            if before.text not in (">",) and before.kind != "name" or before.text in ("if", "for", "while", "switch"):
                return
            if COMMUTATIVE.search(self.source.text, max(0, self.tokens[place].start - 40), self.tokens[place].start):
                return
        parts = self.source.elements(place)
        for left, right in zip(parts, parts[1:]):
            one, other = self.source.code(*left), self.source.code(*right)
            if one != other:
                between = self.source.text[self.tokens[left[1]].end:self.tokens[right[0]].start]
                yield self.span(left[0], right[1], other + between + one, f"swapped: {flat(one)}, {flat(other)}")

    def of_choice(self, place):
        """The two values of `? :` in each other's place."""
        if self.tokens[place].text != "?" or self.tokens[place].kind != "sign":
            return
        colon = end = place + 1
        while self.tokens[colon].text != ":":
            colon = self.source.partner[colon] + 1 if self.tokens[colon].text in cpp_text.CLOSING else colon + 1
        end = colon + 1
        while self.tokens[end].text not in (";", ",", ")", "}", "]", ":"):
            end = self.source.partner[end] + 1 if self.tokens[end].text in cpp_text.CLOSING else end + 1
        one, other = self.source.code(place + 1, colon - 1), self.source.code(colon + 1, end - 1)
        if one != other:
            yield self.span(place + 1, end - 1, f"{other} : {one}", f"swapped: {flat(one)} : {flat(other)}")

    def of_statement(self, statement):
        first, last = statement.first, statement.last
        if statement.kind in ("if", "while", "do"):
            asked = self.source.condition(statement)
            if asked and not self.is_turned_by_its_sign(*asked):
                yield self.span(*asked, f"!({self.source.code(*asked)})", f"negated: {flat(self.source.code(*asked))}")
        if statement.otherwise:
            branch = flat(self.source.code(statement.otherwise, last))
            yield self.span(statement.otherwise, last, "", f"left out: {branch}")
            # Whoever takes the branch above goes on into this one.
            yield self.span(statement.otherwise, statement.otherwise, "", "else left out before its branch", first)
        if statement.kind in ("call", "assignment") or \
                statement.kind == "jump" and (last == first + 1 or self.tokens[first].text != "return"):
            yield self.span(first, last, ";", f"left out: {flat(self.source.code(first, last))}")

    def is_turned_by_its_sign(self, first, last):
        """Whether the change of == or the loss of ! is the same as the negation of the whole."""
        texts = [token.text for token in self.tokens[first:last + 1]]
        place = first
        outside = []  # of brackets
        while place <= last:
            outside.append(self.tokens[place].text)
            place = self.source.partner[place] + 1 if self.tokens[place].text in cpp_text.CLOSING else place + 1
        joined = {"&&", "||", "?"} & set(outside)
        return not joined and (len({"==", "!="} & set(outside)) == 1 or texts[0] == "!")

    def of_neighbours(self, one, other):
        if one.last + 1 != other.first or not self.order_matters(one, other):
            return
        first, second = self.source.code(one.first, one.last), self.source.code(other.first, other.last)
        between = self.source.text[self.tokens[one.last].end:self.tokens[other.first].start]
        if "//" in between:  # would comment away what follows it
            between = "\n"
        yield self.span(one.first, other.last, second + between + first,
                        f"swapped with the statement behind it: {flat(second)}")

    def order_matters(self, one, other):
        """Not for sure, but where it does not, this says so in nearly all cases."""
        plain = ("call", "assignment", "declaration", "if", "for", "while", "do", "switch", "block")
        if one.kind not in plain or other.kind not in plain:
            return False
        for this, that in ((one, other), (other, one)):
            if self.calls(this):
                continue
            if this.kind == "declaration":
                return False  # either the other needs it, or nothing can be seen of the order
            if this.kind == "assignment" and self.calls(that):
                if not self.needs(that, next(at for at in range(this.first, this.last) if self.tokens[at].kind == "name")):
                    return False
            elif this.kind == "assignment":
                sides = re.split(r" [-+|&*]?= ", self.source.code(this.first, this.last))
                if sides[0] not in self.source.code(that.first, that.last):
                    return False
        return True

    def needs(self, statement, target):
        """Whether it may use what is written to the variable, or the field of one, at this token. A member may be used by
        all that is called."""
        name = self.tokens[target].text
        if name.startswith("m_"):
            return True
        field = [token.text for token in self.tokens[target + 1:target + 3]]
        for place in range(statement.first, statement.last + 1):
            if self.tokens[place].text == name:
                following = [token.text for token in self.tokens[place + 1:place + 3]]
                if field[0] != "." or following[0] != "." or following == field:
                    return True
        return False

    def calls(self, statement):
        """Whether it calls anything but casts."""
        for place in range(statement.first, statement.last):
            if self.tokens[place + 1].text == "(" and self.tokens[place].kind == "name" and \
                    self.tokens[place].text not in ("if", "for", "while", "switch", "sizeof", "MAKEINTRESOURCEW"):
                return True
        return False


def flat(code):
    return re.sub(r"\s+", " ", code)


def mutants_of(file, source, names):
    lines = source.text.split("\n")
    texts = {source.text}
    changes = collections.Counter()
    found = []
    for start, end, new, what, reached in sorted(Changes(file, source, names).all(), key=lambda change: change[:2]):
        text = source.text[:start] + new + source.text[end:]
        digest = hashlib.sha256(text.encode()).digest()
        if digest in texts or text == source.text:
            continue
        texts.add(digest)
        line = source.line_of(start)
        line_text = lines[line - 1].strip()
        changes[line_text, what] += 1
        if changes[line_text, what] > 1:  # the same once more, in this line or in one that reads the same
            what += f" (no. {changes[line_text, what]})"
        lines_of_it = line, source.line_of(end), source.line_of(reached)
        found.append(Mutant(file, start, end, new, what, *lines_of_it, line_text))
    return found


def all_mutants(texts):
    """`texts`: the product's files, by name."""
    sources = {file: cpp_text.Source(text) for file, text in sorted(texts.items())}
    names = Names(sources)
    return [mutant for file, source in sources.items() for mutant in mutants_of(file, source, names)]


def order_of_sample(mutants):
    """As if shuffled, but the same whenever a mutant is the same: its place depends on nothing but itself."""
    return sorted(mutants, key=lambda mutant: hashlib.sha256("\0".join(mutant.key()).encode()).digest())
