"""Small changes to the product's sources, each of which a test should notice.

A mutant changes one operator, constant, condition, call or statement on one line. Lines that only declare,
include, comment or assert at compile time give none, and a mutant that does not compile is not counted.
"""
import dataclasses
import pathlib
import re


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    line: int  # from 1
    kind: str
    text: str  # the whole new line

    def name(self):
        return f"{self.file}:{self.line} {self.kind}"


# Operators with blanks around them, as the formatter leaves them: templates and pointers do not match.
SWAPS = {
    " == ": " != ",
    " != ": " == ",
    " < ": " <= ",
    " <= ": " < ",
    " > ": " >= ",
    " >= ": " > ",
    " && ": " || ",
    " || ": " && ",
    " + ": " - ",
    " - ": " + ",
    " * ": " / ",
    " / ": " * ",
    " % ": " / ",
    " | ": " & ",
    " & ": " | ",
}
SKIPPED = re.compile(r"^\s*(#|//|using |static_assert|template|namespace|class |struct |friend |extern )|= delete|= default")
CALL = re.compile(r"^(\s+)(?!return\b|const\b|auto\b|if\b|for\b|while\b|case\b|throw\b|else\b|do\b)[\w:.>\-\[\]]+\(.*\);\s*(//.*)?$")
ASSIGNMENT = re.compile(r"^(\s+)[\w.\->\[\]]+(\.\w+)* [-+|&]?= .*;\s*(//.*)?$")
SOLE_IF = re.compile(r"^(\s+)(else )?if \((?!const |auto )(.*)\) (\{|return.*;|continue;|break;|[\w:.>\-]+\(.*\);|[\w]+ .?= .*;)$")
# Names of the value 0: with a 0 in their place nothing is changed.
ZEROS = {"BN_CLICKED", "LVCFMT_LEFT", "MB_OK", "SW_HIDE"}
NUMBER = re.compile(r"(?<![\w.\"'])(\d+)(?![\w.\"'])")


def code_part(line):
    """The line without its comment and with the texts blanked out, same length."""
    out = []
    quote = None
    i = 0
    while i < len(line):
        c = line[i]
        if quote:
            out.append(c if c == quote else "_")
            if c == "\\":
                out.append("_")
                i += 1
            elif c == quote:
                quote = None
        elif c in "\"'" and not (c == "'" and i and line[i - 1].isdigit()):
            quote = c
            out.append(c)
        elif line.startswith("//", i):
            break
        else:
            out.append(c)
        i += 1
    return "".join(out)[: len(line)]


def mutants_of(path, root):
    name = str(path.relative_to(root))
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if SKIPPED.search(line) or not line.strip():
            continue
        code = code_part(line)
        for old, new in SWAPS.items():
            for found in re.finditer(re.escape(old), code):
                at = found.start()
                yield Mutant(name, number, f"{old.strip()} -> {new.strip()}", line[:at] + new + line[at + len(old):])
        for word, other in (("true", "false"), ("false", "true"), ("TRUE", "FALSE"), ("FALSE", "TRUE")):
            for found in re.finditer(rf"\b{word}\b", code):
                yield Mutant(name, number, f"{word} -> {other}", line[: found.start()] + other + line[found.end():])
        for found in NUMBER.finditer(code):
            value = int(found.group(1))
            yield Mutant(name, number, f"{value} -> {value + 1}",
                         line[: found.start()] + str(value + 1) + line[found.end():])
        for found in re.finditer(r'L"(_+)"', code):
            yield Mutant(name, number, "other text", line[: found.end() - 1] + "x" + line[found.end() - 1:])
        for found in re.finditer(r"\b(SW_|MB_|WM_|OFN_|LVIS_|LVIF_|LVM_|LVSCW_|BIF_|CSIDL_|FILE_|OPEN_|GENERIC_|TOKEN_|TTF_|TTS_|LVCF|LVNI_|BN_|EN_)(\w+)\b", code):
            if "case " in code or found.group(0) in ZEROS:
                continue
            yield Mutant(name, number, f"{found.group(0)} -> 0",
                         line[: found.start()] + "0" + line[found.end():])
        if found := SOLE_IF.match(line):
            at, end = found.span(3)
            yield Mutant(name, number, "condition negated", f"{line[:at]}!({line[at:end]}){line[end:]}")
        if CALL.match(code):
            yield Mutant(name, number, "call left out", re.match(r"\s*", line).group(0) + ";")
        elif ASSIGNMENT.match(code):
            yield Mutant(name, number, "assignment left out", re.match(r"\s*", line).group(0) + ";")


def all_mutants(root):
    root = pathlib.Path(root)
    for folder in ("base", "framework", "engine", "log", "ui"):
        for path in sorted((root / folder).rglob("*.cpp")):
            if path.name in ("main.cpp", "fatal.cpp"):  # the entry point and the end: not in the test programs
                continue
            yield from mutants_of(path, root)
        for header in ("base/decimal.h", "log/elapsed_time.h", "base/path_buffer.h", "framework/dialog.h",
                       "framework/window.h", "base/unique_resource.h"):
            if header.startswith(folder + "/"):
                yield from mutants_of(root / header, root)
