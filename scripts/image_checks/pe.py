"""Reads the parts of a 32-bit image file that the checks look at."""

import struct
from collections import namedtuple

EXPORTS, IMPORTS, RESOURCES, RELOCATIONS = 0, 1, 2, 5
EXECUTE, READ, WRITE, DISCARDABLE = 0x20000000, 0x40000000, 0x80000000, 0x02000000
VERSION_RESOURCE = 16
WORD32_RELOCATION = 3

Section = namedtuple("Section", "name virtual_size address file_size file_at flags")
Import = namedtuple("Import", "library name slot")
FIXED_VERSION = struct.Struct("<13I")


class BadImage(Exception):
    pass


class Image:
    """All addresses are relative to the image's base unless said otherwise."""

    def __init__(self, content):
        self.bytes = bytes(content)
        try:
            self._read_headers()
        except struct.error as error:
            raise BadImage(f"cut off in its headers ({error})") from error

    def _read_headers(self):
        (at,) = self._unpack("<I", 0x3C)
        self.header_at = at
        if self.bytes[:2] != b"MZ" or self.bytes[at:at + 4] != b"PE\0\0":
            raise BadImage("not an image file")
        self.machine, count, self.time, _, _, optional_size, self.characteristics = self._unpack("<HHIIIHH", at + 4)
        optional = at + 24
        (self.magic,) = self._unpack("<H", optional)
        (self.entry,) = self._unpack("<I", optional + 16)
        self.base, self.section_alignment, self.file_alignment = self._unpack("<III", optional + 28)
        self.os_version = self._unpack("<HH", optional + 40)
        self.subsystem_version = self._unpack("<HH", optional + 48)
        self.size, self.headers_size = self._unpack("<II", optional + 56)
        self.checksum_at = optional + 64
        self.checksum, self.subsystem = self._unpack("<IH", self.checksum_at)
        (directories,) = self._unpack("<I", optional + 92)
        self.directories = [self._unpack("<II", optional + 96 + 8 * i) for i in range(directories)]
        self.sections = [self._section(optional + optional_size + 40 * i) for i in range(count)]

    def _unpack(self, form, at):
        return struct.unpack_from(form, self.bytes, at)

    def _section(self, at):
        name, *sizes = self._unpack("<8s4I12xI", at)
        return Section(name.rstrip(b"\0").decode("latin-1"), *sizes)

    def right_checksum(self):
        content = bytearray(self.bytes)
        content[self.checksum_at:self.checksum_at + 4] = bytes(4)
        content += bytes(len(content) % 2)
        total = sum(struct.unpack(f"<{len(content) // 2}H", content))
        while total >> 16:
            total = (total & 0xFFFF) + (total >> 16)
        return total + len(self.bytes)

    def file_offset(self, address):
        for section in self.sections:
            if section.address <= address < section.address + section.file_size:
                return section.file_at + address - section.address
        raise BadImage(f"nothing in the file for address {address:#x}")

    def unpack(self, form, address):
        return self._unpack(form, self.file_offset(address))

    def text(self, address):
        at = self.file_offset(address)
        return self.bytes[at:self.bytes.index(0, at)].decode("latin-1")

    def code_sections(self):
        return [section for section in self.sections if section.flags & EXECUTE]

    def is_code(self, address):
        return any(s.address <= address < s.address + s.virtual_size for s in self.code_sections())

    def imports(self):
        found = []
        at, size = self.directories[IMPORTS]
        while size:
            names, _, _, library, slots = self.unpack("<5I", at)
            if not library:
                break
            found += self._imports_of(self.text(library), names or slots, slots)
            at += 20
        return found

    def _imports_of(self, library, names, slots):
        found = []
        while True:
            (name,) = self.unpack("<I", names + 4 * len(found))
            if not name:
                return found
            text = f"number {name & 0xFFFF}" if name >> 31 else self.text(name + 2)
            found.append(Import(library, text, slots + 4 * len(found)))

    def exports(self):
        """Names and addresses; functions that are exported by number alone under their number."""
        at, size = self.directories[EXPORTS]
        if not size:
            return {}
        first, functions, names, table, name_table, ordinals = self.unpack("<6I", at + 16)
        found = {f"number {first + i}": self.unpack("<I", table + 4 * i)[0] for i in range(functions)}
        for i in range(names):
            (ordinal,) = self.unpack("<H", ordinals + 2 * i)
            address = found.pop(f"number {first + ordinal}", None)
            found[self.text(self.unpack("<I", name_table + 4 * i)[0])] = address
        return found

    def relocations(self):
        """The addresses of the words that hold an absolute address."""
        at, size = self.directories[RELOCATIONS]
        end, found = at + size, []
        while at < end:
            page, length = self.unpack("<II", at)
            if length < 8:
                raise BadImage("a relocation block without a size")
            for entry in self.unpack(f"<{(length - 8) // 2}H", at + 8):
                if entry >> 12 not in (0, WORD32_RELOCATION):
                    raise BadImage(f"a relocation of kind {entry >> 12}")
                if entry >> 12:
                    found.append(page + (entry & 0xFFF))
            at += length
        return found

    def pointers(self):
        """Where absolute addresses are kept, and where they point."""
        return {at: self.unpack("<I", at)[0] - self.base for at in self.relocations()}

    def version_resource(self):
        """The bytes of the version resource, or None."""
        root, size = self.directories[RESOURCES]
        if not size:
            return None
        at, wanted = root, VERSION_RESOURCE
        for _ in range(3):  # kind, name, language
            named, numbered = self.unpack("<12xHH", at)
            entries = [self.unpack("<II", at + 16 + 8 * i) for i in range(named + numbered)]
            match = [target for number, target in entries if wanted is None or number == wanted]
            if not match:
                return None
            at, wanted = root + (match[0] & 0x7FFFFFFF), None
        address, length = self.unpack("<II", at)
        offset = self.file_offset(address)
        return self.bytes[offset:offset + length]


def version_strings(resource):
    """The name and value strings of a version resource."""
    strings = {}

    def read(at):
        length, value_length, is_text = struct.unpack_from("<HHH", resource, at)
        end = at + length
        stop = at + 6
        while resource[stop:stop + 2] != b"\0\0":
            stop += 2
        key = resource[at + 6:stop].decode("utf-16-le")
        at = (stop + 2 + 3) & ~3
        if is_text and value_length:
            value = resource[at:min(end, at + 2 * value_length)].decode("utf-16-le")
            strings[key] = value.rstrip("\0")
            return end
        at = (at + value_length + 3) & ~3
        while at < end:
            at = (read(at) + 3) & ~3
        return end

    read(0)
    return strings


def fixed_version(resource):
    """The words of the version resource's fixed part: signature, ..., system (8), kind (9), kind of driver (10)."""
    return FIXED_VERSION.unpack_from(resource, 40)
