"""Writes a guide that is in Markdown as plain text, for a reader who opens it in Notepad.

    plain_text.py VERSION <LISEZMOI.md >LISEZMOI.txt

The first heading gets the version, pictures are left out, and each row of a table becomes a term with its explanation
below. Only what the guide has of Markdown is known here; anything else is an error, not a surprise for the reader.
"""
import re
import sys
import textwrap

WIDTH = 76  # fits into the window of Notepad as it opens
KEPT_BLANK = "\u00a0"  # a blank where no line may end


def fail(line):
    sys.exit(f"plain_text: this cannot be written as plain text: {line}")


def plain(text):
    """The words of a line without its marks, with blanks that hold together what belongs together."""
    text = re.sub(r"`([^`]+)`", lambda code: code[1].replace(" ", KEPT_BLANK), text)
    if re.search(r"`|\]\(|\*\*\w|<\w", text):
        fail(text)
    text = re.sub(r"« [^»]{1,24} »", lambda label: label[0].replace(" ", KEPT_BLANK), text)
    text = text.replace("« ", "«" + KEPT_BLANK)
    text = re.sub(r" (?=[»:;!?%])", KEPT_BLANK, text)
    return re.sub(r"(?<=\d) (?=\w)", KEPT_BLANK, text)


def wrapped(text, first="", others=""):
    lines = textwrap.wrap(plain(text), WIDTH, initial_indent=first, subsequent_indent=others,
                          break_long_words=False, break_on_hyphens=False)
    return "\n".join(lines).replace(KEPT_BLANK, " ")


def heading(text, version):
    level, _, words = text.partition(" ")
    if level == "#":
        name, _, rest = words.partition(", ")
        title = f"{name.upper()} {version}"
        return f"{title}\n{'=' * len(title)}\n\n{rest[:1].upper()}{rest[1:]}"
    if level == "##":
        title = plain(words).upper()
        return f"\n{title}\n{'-' * len(title)}".replace(KEPT_BLANK, " ")
    return fail(text)


def table(lines):
    rows = [[cell.strip() for cell in line.strip("|").split("|")] for line in lines]
    if len(rows) < 3 or set("".join(rows[1])) != {"-"} or len({len(row) for row in rows}) != 1:
        fail(lines[0])
    texts = []
    for term, *between, explanation in rows[2:]:
        term = f"{term:<28}{' '.join(between)}".strip() if between else term
        texts.append(f"{wrapped(term)}\n{wrapped(explanation, '    ', '    ')}")
    return "\n\n".join(texts)


def numbered_or_not(lines):
    """A list: each entry begins at the left, its other lines are indented."""
    entries = []
    for line in lines:
        if line.startswith(" ") and entries:
            entries[-1] += " " + line.strip()
        elif re.match(r"(-|\d+\.) ", line):
            entries.append(line)
        else:
            fail(line)
    texts = []
    for entry in entries:
        mark, _, words = entry.partition(" ")
        texts.append(wrapped(words, mark + " ", " " * (len(mark) + 1)))
    return ("\n" if lines[0].startswith("-") else "\n\n").join(texts)


def block(text, version):
    lines = text.split("\n")
    if re.fullmatch(r"!\[[^\]]*\]\([^)]*\)", text):
        return None
    if text.startswith("#") and len(lines) == 1:
        return heading(text, version)
    if text.startswith("|"):
        return table(lines)
    if re.match(r"(-|\d+\.) ", text):
        return numbered_or_not(lines)
    if re.match(r"[\s>#=!*+~-]", text):
        fail(lines[0])
    return wrapped(" ".join(lines))


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    guide = sys.stdin.buffer.read().decode("utf-8").strip("\n")
    blocks = [block(text, sys.argv[1]) for text in re.split(r"\n{2,}", guide)]
    text = "\n\n".join(part for part in blocks if part is not None) + "\n"
    sys.stdout.buffer.write(text.encode("utf-8"))


if __name__ == "__main__":
    main()
