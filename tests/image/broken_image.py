"""A copy of the built image, to be broken in one place."""

import pathlib
import shutil
import struct

from image_checks.pe import Image

ADD_STACK, SUBTRACT_STACK = b"\x81\xC4", b"\x81\xEC"
CALL, RETURN_TAKING = b"\xE8", b"\xC2"


class BrokenImage:
    def __init__(self, good, good_code, folder):
        self.folder = pathlib.Path(folder)
        shutil.copytree(good / "relinked", self.folder / "relinked")
        for name in ("koru.dll", "koru.dbg", "koru.map"):
            shutil.copy(good / name, self.folder / name)
        self.good = good_code.image
        self._functions = good_code.functions.values()
        self.content = bytearray(self.good.bytes)

    def seal(self):
        """Makes the checksum right and writes the file."""
        right = Image(self.content).right_checksum() if self.content[:2] == b"MZ" else 0
        self.put("<I", self.good.checksum_at, right)
        self.write()

    def write(self):
        (self.folder / "koru.dll").write_bytes(self.content)

    def put(self, form, at, *values):
        """Into the file."""
        struct.pack_into(form, self.content, at, *values)

    def put_at(self, form, address, *values):
        self.put(form, self.good.file_offset(address), *values)

    def replace(self, old, new):
        """The only place where the file holds `old`."""
        assert len(old) == len(new) and self.content.count(old) == 1, (old, self.content.count(old))
        at = self.content.index(old)
        self.content[at:at + len(old)] = new

    # Places in the headers, counted from the file's start.
    @property
    def header(self):
        return self.good.header_at

    @property
    def optional(self):
        return self.header + 24

    def directory(self, index):
        return self.optional + 96 + 8 * index

    def section(self, name):
        index = [section.name for section in self.good.sections].index(name)
        return self.optional + 224 + 40 * index

    def section_flags(self, name, flags):
        self.put("<I", self.section(name) + 36, flags)

    def function(self, start):
        """The one function whose name starts so."""
        found = [f for f in self._functions if f.name.startswith(start)]
        assert len(found) == 1, (start, [f.name for f in found])
        return found[0]

    def put_code(self, start, code, at=0):
        """Over the first instructions of a function, which must have the room."""
        function = self.function(start)
        assert at + len(code) <= function.body[-1].address - function.address, (start, len(code))
        offset = self.good.file_offset(function.address + at)
        self.content[offset:offset + len(code)] = code

    def put_frame(self, start, size, callee=None):
        """Makes a function one that only has a frame of this size, and calls another with what lies in it."""
        code, left = SUBTRACT_STACK + struct.pack("<I", size), size
        if callee:
            here = self.function(start).address + len(code) + 5
            code += CALL + struct.pack("<i", self.function(callee).address - here)
            left -= self.taking(callee)
        code += ADD_STACK + struct.pack("<I", left) + RETURN_TAKING + struct.pack("<H", self.taking(start))
        self.put_code(start, code)

    def taking(self, start):
        """The bytes of arguments that an entry point takes off the stack."""
        return int(self.function(start).name.rsplit("@", 1)[1])
