"""Reads what the tests ask of a 64-bit Windows program: header fields, sections, imports and resources."""
import struct
from collections import namedtuple
from pathlib import Path

Section = namedtuple("Section", "name header address offset size flags")

SECTION_RUNS = 0x20000000
SECTION_IS_WRITTEN = 0x80000000

IS_PROGRAM, IS_LIBRARY, RELOCATIONS_STRIPPED = 0x2, 0x2000, 0x1

EXPORTS, _IMPORTS, _RESOURCES, RELOCATIONS, DEBUG = 0, 1, 2, 5, 6
RT_ICON, RT_DIALOG, RT_STRING, RT_ACCELERATOR, RT_GROUP_ICON, RT_VERSION, RT_MANIFEST = 3, 5, 6, 9, 14, 16, 24


class Program:
    def __init__(self, path):
        self.bytes = Path(path).read_bytes()
        self.header = self._number("<I", 0x3C)
        if self.bytes[self.header:self.header + 4] != b"PE\0\0":
            raise ValueError(f"not a Windows program: {path}")
        self.optional_header = self.header + 24
        if self._number("<H", self.optional_header) != 0x20B:
            raise ValueError(f"not a 64-bit program: {path}")
        self.machine = self._number("<H", self.header + 4)
        self.time = self._number("<I", self.header + 8)
        self.symbols = self._number("<I", self.header + 16)
        self.characteristics = self._number("<H", self.header + 22)
        self.system_version = struct.unpack_from("<2H", self.bytes, self.optional_header + 40)
        self.subsystem_version = struct.unpack_from("<2H", self.bytes, self.optional_header + 48)
        self.flags_offset = self.optional_header + 70
        self.flags = self._number("<H", self.flags_offset)  # DllCharacteristics
        self.sections = self._read_sections()

    def _number(self, form, offset):
        return struct.unpack_from(form, self.bytes, offset)[0]

    def _read_sections(self):
        count = self._number("<H", self.header + 6)
        first = self.optional_header + self._number("<H", self.header + 20)
        sections = []
        for header in range(first, first + 40 * count, 40):
            name, _, address, size, offset = struct.unpack_from("<8s4I", self.bytes, header)
            flags = self._number("<I", header + 36)
            sections.append(Section(name.rstrip(b"\0").decode(), header, address, offset, size, flags))
        return sections

    def _directory(self, index):
        return self._number("<I", self.optional_header + 112 + 8 * index)

    def directory_size(self, index):
        return self._number("<I", self.optional_header + 112 + 8 * index + 4)

    def _offset(self, address):
        for section in self.sections:
            if section.address <= address < section.address + section.size:
                return section.offset + address - section.address
        raise ValueError(f"no section holds address {address:#x}")

    def imports(self):
        """The libraries that are loaded with the program, as it writes them."""
        if not self._directory(_IMPORTS):
            return []
        names = []
        entry = self._offset(self._directory(_IMPORTS))
        while name := self._number("<I", entry + 12):
            start = self._offset(name)
            names.append(self.bytes[start:self.bytes.index(0, start)].decode())
            entry += 20
        return names

    def resource_kinds(self):
        return [kind for kind, _ in self._resource_entries(0)]

    def resources(self, kind):
        """{number: bytes} of all resources of a kind; of several languages the first."""
        kinds = dict(self._resource_entries(0))
        return {number: self._resource(entry) for number, entry in self._resource_entries(kinds[kind])}

    def resource_languages(self, kind):
        """{number: languages} of all resources of a kind."""
        kinds = dict(self._resource_entries(0))
        return {number: [language for language, _ in self._resource_entries(entry)]
                for number, entry in self._resource_entries(kinds[kind])}

    def _resource_entries(self, directory):
        base = self._offset(self._directory(_RESOURCES)) + (directory & 0x7FFFFFFF)
        named, numbered = struct.unpack_from("<2H", self.bytes, base + 12)
        return [struct.unpack_from("<2I", self.bytes, base + 16 + 8 * i) for i in range(named + numbered)]

    def _resource(self, entry):
        while entry & 0x80000000:
            entry = self._resource_entries(entry)[0][1]
        leaf = self._offset(self._directory(_RESOURCES)) + entry
        address, size = struct.unpack_from("<2I", self.bytes, leaf)
        return self.bytes[self._offset(address):][:size]


FixedVersion = namedtuple("FixedVersion", "file product flags type languages")


def fixed_version(block):
    """The part of a version resource that is no text: versions as text, flags that count, and pairs of language and
    code page."""
    signature, _, *numbers, mask, flags, _, kind = struct.unpack_from("<10I", block, 40)
    if signature != 0xFEEF04BD:
        raise ValueError("not a version resource")
    key = "Translation\0".encode("utf-16-le")
    languages = (block.index(key) + len(key) + 3) & ~3
    texts = [f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}" for high, low in (numbers[:2], numbers[2:])]
    return FixedVersion(*texts, flags & mask, kind, struct.unpack_from("<2H", block, languages))


def version_strings(block):
    """{language and code page: {name: text}} of a version resource."""
    tables = {}

    def walk(offset, end, path):
        while offset + 6 <= end:
            length, value_length, is_text = struct.unpack_from("<3H", block, offset)
            if not length:
                return
            key_end = offset + 6
            while block[key_end:key_end + 2] != b"\0\0":
                key_end += 2
            key = block[offset + 6:key_end].decode("utf-16-le")
            value = (key_end + 2 + 3) & ~3
            if path[:2] == ("VS_VERSION_INFO", "StringFileInfo") and len(path) == 3:
                text = block[value:value + 2 * value_length].decode("utf-16-le").rstrip("\0")
                tables.setdefault(path[2], {})[key] = text
            else:
                children = value + (0 if is_text else value_length)
                walk((children + 3) & ~3, offset + length, path + (key,))
            offset = (offset + length + 3) & ~3

    walk(0, len(block), ())
    return tables
