"""Which tests run which lines, from what lines_of_tests.cpp writes down and what the compiler tells of addresses."""
import bisect
import collections
import pathlib
import re
import struct

import build

NAMES_AT = 8
BLOCKS_AT = 0x100000
IMAGE_START = 0x140000000
TRACE = "__sanitizer_cov_trace_pc"
ROW = re.compile(r"(\S.*?)\s+(\d+|-)\s+(0x[0-9a-f]+|0)\b")


def load_record(path):
    """What was written of a record: its file has room for far more."""
    with path.open("rb") as file:
        blocks, _ = struct.unpack("<II", file.read(8))
        file.seek(0)
        return file.read(BLOCKS_AT + 8 * blocks)


def read_record(content):
    """The pairs of test and offset, and the tests' names."""
    blocks, names_length = struct.unpack_from("<II", content)
    names = content[NAMES_AT:NAMES_AT + names_length].decode().splitlines()
    end = min(len(content), BLOCKS_AT + 8 * blocks)
    return struct.iter_unpack("<II", content[BLOCKS_AT:end]), names


def read_line_table(text, sources):
    """From objdump's decoded line table: the runs of code, each as sorted (address, file, line), the units with code of
    each line, and those whose code is in the program: of an inline function the linker keeps one unit's and drops the
    others', which have no address. `sources` has the files by their last names."""
    runs, units, kept = [], collections.defaultdict(set), collections.defaultdict(set)
    unit = file = None
    rows = []
    last = ""
    for line in text.splitlines():
        if line.startswith("File name"):  # behind the name of the unit's own file
            unit = file = sources.get(last[:-1].rsplit("/", 1)[-1])
        elif line.endswith(":"):
            file = line[2:-1] if line.startswith("./") else None
        elif found := ROW.match(line):
            address = int(found[3], 16)
            if found[2] == "-":
                if rows:
                    runs.append((rows, address))
                rows = []
            else:
                # A unit that begins with another file's code does not say so; long names are cut at their beginning.
                place = file if file and file.endswith(found[1].lstrip(".")) else None
                rows.append((address, place, int(found[2])))
                if unit and place:
                    units[place, int(found[2])].add(unit)
                    if address >= IMAGE_START:
                        kept[place, int(found[2])].add(unit)
        if line:
            last = line
    return runs, units, kept


def call_sites(program):
    """The addresses behind the calls that mark the beginnings of blocks, sorted."""
    symbols = build.must(["x86_64-w64-mingw32-nm", program])
    target = int(next(line.split()[0] for line in symbols.splitlines() if line.endswith(" T " + TRACE)), 16)
    headers = build.must(["x86_64-w64-mingw32-objdump", "-h", program])
    _, _, size, start, _, at = next(line.split()[:6] for line in headers.splitlines() if " .text " in line)
    content = pathlib.Path(program).read_bytes()[int(at, 16):int(at, 16) + int(size, 16)]
    start = int(start, 16)
    sites = []
    for found in re.finditer(rb"\xe8(?=(....))", content, re.DOTALL):
        behind = start + found.start() + 5
        if behind + struct.unpack("<i", found[1])[0] == target:
            sites.append(behind)
    return sites


def lines_of_blocks(runs, sites):
    """The lines of each block, by the address behind the call at its beginning."""
    blocks = {}
    for rows, end in runs:
        if not any(file for _, file, _ in rows):
            continue
        addresses = [address for address, _, _ in rows]
        first = bisect.bisect_left(sites, addresses[0])
        last = bisect.bisect_left(sites, end)
        for at in range(first, last):
            until = sites[at + 1] - 5 if at + 1 < last else end
            begin = bisect.bisect_right(addresses, sites[at] - 5) - 1
            # A row may share the address of the call with one before it.
            while begin > 0 and addresses[begin - 1] == addresses[begin]:
                begin -= 1
            if at == first:  # the beginning of the function
                begin = 0
            blocks[sites[at]] = {(file, line) for address, file, line in rows[max(begin, 0):] if address < until and file}
    return blocks


class Lines:
    """For the product's files: the tests that run a line, and the units that have code of it or give it to a program."""

    def __init__(self):
        self.tests = collections.defaultdict(set)  # (file, line) -> {(program, test)}; test "" for all of a program's
        self.units = collections.defaultdict(set)  # (file, line) -> {source}
        self.kept = collections.defaultdict(set)

    def add(self, program, path, sources, records, product):
        by_last_name = {pathlib.PurePath(name).name: name for name in sources}
        table = build.must(["x86_64-w64-mingw32-objdump", "--dwarf=decodedline", path])
        runs, units, kept = read_line_table(table, by_last_name)
        for ours, theirs in ((self.units, units), (self.kept, kept)):
            for (file, line), names in theirs.items():
                if file in product:
                    ours[file, line] |= names
        blocks = {address: {place for place in places if place[0] in product}
                  for address, places in lines_of_blocks(runs, call_sites(path)).items()}
        for record in records:
            pairs, names = read_record(record)
            for test, offset in pairs:
                for place in blocks.get(IMAGE_START + offset, ()):
                    self.tests[place].add((program, names[test - 1] if test else ""))
