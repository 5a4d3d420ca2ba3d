"""The checks of koru.dll accept the image that was built, and each can fail.

Usage: check_image_test.py SOURCE_FOLDER IMAGE_FOLDER
"""

import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
from unittest import mock

sys.dont_write_bytecode = True
SOURCE, GOOD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
sys.path[:0] = [str(SOURCE / "scripts"), str(SOURCE / "tests" / "image")]

from broken_image import BrokenImage  # noqa: E402
from image_checks import headers, rebuild, tables  # noqa: E402

SCRIPT = SOURCE / "scripts" / "check-image"
loader = importlib.machinery.SourceFileLoader("check_image", str(SCRIPT))
check_image = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_image", loader))
loader.exec_module(check_image)

GOOD_CODE = check_image.Built(GOOD).code
EXPORTS, IMPORTS, RESOURCES, RELOCATIONS = 0, 1, 2, 5
READ, WRITE, EXECUTE = 0x40000000, 0x80000000, 0x20000000
ESCAPE = "koru::DrvEscape("  # 24 bytes of arguments
CHAIN = ("koru::DrvBitBlt(", "koru::DrvCopyBits(", "koru::DrvTextOut(", "koru::DrvLineTo(", "koru::DrvPaint(")


def wide(text):
    return text.encode("utf-16-le")


def refused(*code):
    return lambda b: b.put_code(ESCAPE, bytes(code))


def call_in_a_ring(b):
    b.put_frame(CHAIN[0], 64, CHAIN[1])
    b.put_frame(CHAIN[1], 64, CHAIN[0])


def five_frames_of_a_thousand_bytes(b):
    for start, callee in zip(CHAIN, (*CHAIN[1:], None)):
        b.put_frame(start, 1000, callee)


def take_the_address_of_a_helper(b):
    """The first word that points to an entry point then points to a function that is called by its name alone."""
    at = next(at for at, to in b.good.pointers().items() if to == b.function("koru::DrvEnablePDEV(").address)
    b.put_at("<I", at, b.good.base + b.function("koru::JoinRect(").address)


# Name, check, how the image is broken, what the check says. The checksum is made right again where `seal` is true.
BREAKAGES = [
    ("another machine", "kind", lambda b: b.put("<H", b.header + 4, 0x8664), "for machine 0x8664"),
    ("64 bits", "kind", lambda b: b.put("<H", b.optional, 0x20B), "not a 32-bit image"),
    ("a program", "kind", lambda b: b.put("<H", b.header + 22, 0x0102), "not a 32-bit library"),
    ("the graphical subsystem", "kind", lambda b: b.put("<H", b.optional + 68, 2), "for subsystem 2"),
    ("system 5.1", "versions", lambda b: b.put("<H", b.optional + 42, 1), "wants system version 5.1"),
    ("subsystem 4.0", "versions", lambda b: b.put("<H", b.optional + 48, 4), "wants subsystem version 4.0"),
    ("packed sections", "sections", lambda b: b.put("<I", b.optional + 32, 0x200), "aligned to 0x200"),
    ("a gap", "sections", lambda b: b.put("<I", b.section(".reloc") + 12, 0x80000), ".reloc lies at 0x80000"),
    ("a size too large", "sections", lambda b: b.put("<I", b.optional + 56, 0x80000), "the image's size is 0x80000"),
    ("an end missing", "sections", lambda b: b.put("<I", b.section(".reloc") + 16, 0x80000), ".reloc is cut off"),
    ("writable code", "protection", lambda b: b.section_flags(".text", READ | WRITE | EXECUTE),
     ".text is code that can be written"),
    ("writable constants", "protection", lambda b: b.section_flags(".rdata", READ | WRITE), ".rdata can be written"),
    ("unreadable data", "protection", lambda b: b.section_flags(".data", WRITE), ".data cannot be read"),
    ("data as entry point", "protection", lambda b: b.put("<I", b.optional + 16, b.good.sections[1].address),
     "the entry point lies outside of the code"),
    ("stripped of relocations", "relocations", lambda b: b.put("<H", b.header + 22, 0x2307), "are stripped"),
    ("no relocations", "relocations", lambda b: b.put("<I", b.directory(RELOCATIONS) + 4, 0), "there are no"),
    ("a wild address", "relocations", lambda b: b.put_at("<I", b.good.relocations()[0], 0x7FFFFFFF),
     "points out of the image"),
    ("a time", "determinism", lambda b: b.put("<I", b.header + 8, 1), "the header has a time"),
    ("another link", "determinism", lambda b: b.put("<H", b.optional + 44, 6), "koru.dll comes out differently"),
    ("another library", "imports", lambda b: b.replace(b"win32k.sys", b"ntoskr.exe"), "comes from ntoskr.exe"),
    ("a later service", "imports", lambda b: b.replace(b"EngPaint\0", b"EngPlgBl\0"), "EngPlgBl is not among"),
    ("a second export", "exports", lambda b: b.put_at("<I", b.good.directories[EXPORTS][0] + 20, 2), "exports number"),
    ("a decorated export", "exports",
     lambda b: b.replace(b"koru.dll\0DrvEnableDriver\0", b"koru.dll\0DrvEnableDri@12\0"), "exports DrvEnableDri@12"),
    ("no export", "exports", lambda b: b.put("<I", b.directory(EXPORTS) + 4, 0), "exports nothing"),
    ("another entry point", "exports", lambda b: b.put("<I", b.optional + 16, 0x1000), "is not the entry point"),
    ("no version", "version resource", lambda b: b.put("<I", b.directory(RESOURCES) + 4, 0), "there is none"),
    ("another company", "version resource",
     lambda b: b.replace(wide("CompanyName\0\0Koru\0"), wide("CompanyName\0\0Acme\0")), "CompanyName is 'Acme'"),
    ("one more string", "version resource", lambda b: b.replace(wide("InternalName\0"), wide("Trademarks__\0")),
     "InternalName is missing"),
    ("a library's version", "version resource",
     lambda b: b.replace(bytes((4, 0, 4, 0, 3, 0, 0, 0)), bytes((4, 0, 4, 0, 2, 0, 0, 0))), "not that of a display"),
    ("symbols left", "stripped", lambda b: b.put("<II", b.header + 12, 0x1000, 5), "koru.dll holds symbols"),
    ("debugging left", "stripped", lambda b: b.put("8s", b.section(".reloc"), b".debug_i"), "koru.dll holds .debug_i"),
    ("no symbol file", "symbols", lambda b: (b.folder / "koru.dbg").unlink(), "koru.dbg"),
    ("an empty map", "symbols", lambda b: (b.folder / "koru.map").write_text(""), "koru.map does not know"),
    ("a section of constructors", "constructors", lambda b: b.put("8s", b.section(".bss"), b".CRT$XCU"), ".CRT$XCU"),
    ("a constructor", "constructors", lambda b: b.replace(b"\xFF\xFF\xFF\xFF\0\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0",
                                                         b"\xFF\xFF\xFF\xFF\0\0\1\0\xFF\xFF\xFF\xFF\0\0\0\0"),
     "CTOR_LIST__ is not empty"),
    ("fld1", "instructions", refused(0xD9, 0xE8), "'fld1': floating point"),
    ("fild", "instructions", refused(0xDB, 0x04, 0x24), "'fildl (%esp)': floating point"),
    ("emms", "instructions", refused(0x0F, 0x77), "'emms': MMX"),
    ("movd to mm0", "instructions", refused(0x0F, 0x6E, 0xC0), "'movd %eax,%mm0': MMX"),
    ("xorps", "instructions", refused(0x0F, 0x57, 0xC0), "'xorps %xmm0,%xmm0': SSE"),
    ("prefetchnta", "instructions", refused(0x0F, 0x18, 0x00), "'prefetchnta (%eax)': SSE"),
    ("cmove", "instructions", refused(0x0F, 0x44, 0xC1), "'cmove %ecx,%eax': newer than the Pentium"),
    ("in", "instructions", refused(0xEC), "not a display driver's to execute"),
    ("a hole in the code", "instructions", refused(0xFF, 0xFF), "not an instruction"),
    ("an unlisted pointer call", "calls", refused(0xFF, 0xD0), "calls through a pointer, which 0 rows"),
    ("an unlisted address", "calls", take_the_address_of_a_helper, "the address of JoinRect is taken"),
    ("arguments left", "calls", lambda b: b.put_code(ESCAPE, b"\xC3"), "DrvEscape takes 0 bytes off the stack"),
    ("a push too many", "calls", lambda b: b.put_code(ESCAPE, b"\x50\xC2\x18\x00"), "returns with 4 bytes left"),
    ("a pop too many", "calls", lambda b: b.put_code(ESCAPE, b"\x58\xC2\x18\x00"), "returns with -4 bytes left"),
    ("a moved stack", "calls", lambda b: b.put_code(ESCAPE, b"\x89\xC4\xC2\x18\x00"), "in an unknown way"),
    ("a large frame", "frames", lambda b: b.put_frame(ESCAPE, 1024), "DrvEscape has 1028 bytes"),
    ("a ring", "recursion", call_in_a_ring, "calls itself: Drv"),
    ("five frames", "stack depth", five_frames_of_a_thousand_bytes, "bytes, more than 4096: DrvBitBlt > DrvCopyBits"),
]

# The same for the tables: name, check, table, row, what the check says.
STALE_ROWS = [
    ("an import", "imports", tables.IMPORTS, {"EngNothing": 4}, "nothing needs: EngNothing"),
    ("an import's arguments", "imports", tables.IMPORTS, {"EngPaint": 24}, "not called with 24 bytes of arguments"),
    ("a string", "version resource", tables.VERSION_STRINGS, {"Comments": None}, "Comments is missing"),
]


class CheckImage(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.broken = BrokenImage(GOOD, GOOD_CODE, place.name)

    def failure(self, name):
        """What a check prints, which must be one line that begins with FAILED."""
        checks = [check for check in check_image.CHECKS if check[0] == name]
        self.assertEqual(len(checks), 1, name)
        with contextlib.redirect_stdout(io.StringIO()) as output:
            failed = check_image.run(checks, check_image.Built(self.broken.folder))
        self.assertEqual(failed, 1, output.getvalue())
        self.assertRegex(output.getvalue(), rf"^FAILED  {name}: .*\n$")
        return output.getvalue()

    def test_wrong_checksum(self):
        self.broken.put_at("<B", self.broken.good.sections[1].address, 0xEE)
        self.broken.write()
        self.assertIn("the header has", self.failure("checksum"))

    def test_no_image_at_all(self):
        self.broken.content[:2] = b"ZM"
        self.broken.write()
        self.assertIn("not an image file", self.failure("kind"))

    def test_pointer_call_row_that_nothing_needs(self):
        with mock.patch("image_checks.stack.POINTER_CALLS", tables.POINTER_CALLS + [("Nowhere", 0, None)]):
            self.assertIn("nothing needs: Nowhere", self.failure("calls"))

    def test_rebuild_compares_what_a_build_elsewhere_gives(self):
        def build(command, cwd, **_):
            if "--build" in command:
                shutil.copytree(GOOD, cwd / "build" / "image", ignore=shutil.ignore_patterns("CMakeFiles"))
            return subprocess.CompletedProcess(command, 0, "", "")

        with tempfile.TemporaryDirectory() as source, mock.patch("image_checks.rebuild.subprocess.run", build):
            self.assertIn("the same bytes", rebuild.check_rebuild(self.broken.folder, pathlib.Path(source)))
            (self.broken.folder / "koru.dbg").write_bytes(b"other")
            with self.assertRaisesRegex(headers.CheckError, "^koru.dbg comes out differently"):
                rebuild.check_rebuild(self.broken.folder, pathlib.Path(source))

    def test_rebuild_says_what_does_not_build(self):
        with tempfile.TemporaryDirectory() as nothing:
            with self.assertRaisesRegex(headers.CheckError, "^cmake --preset image failed:"):
                rebuild.check_rebuild(GOOD, pathlib.Path(nothing))

    def test_script_says_what_failed(self):
        def check(*arguments):
            return subprocess.run([sys.executable, SCRIPT, *arguments], capture_output=True, text=True, check=False)

        good = check(GOOD)
        self.assertEqual((good.returncode, good.stderr), (0, ""), good.stdout)
        self.assertEqual(good.stdout.count("ok  "), len(check_image.CHECKS), good.stdout)
        self.broken.put("<H", self.broken.optional + 68, 2)
        self.broken.seal()
        bad = check(self.broken.folder)
        self.assertEqual((bad.returncode, bad.stderr), (1, ""))
        self.assertIn("FAILED  kind: for subsystem 2, not the native one\n", bad.stdout)

    def test_every_check_is_made_to_fail(self):
        made = {check for _, check, *_ in BREAKAGES} | {"checksum"}
        self.assertEqual(made, {name for name, _ in check_image.CHECKS})


def add_test(name, test):
    setattr(CheckImage, "test_" + name.replace(" ", "_"), test)


for breakage in BREAKAGES:
    def breaks(self, breakage=breakage):
        _, check, apply, text = breakage
        apply(self.broken)
        self.broken.seal()
        self.assertIn(text, self.failure(check))
    add_test(breakage[0], breaks)

for stale in STALE_ROWS:
    def has_stale_row(self, stale=stale):
        _, check, table, row, text = stale
        with mock.patch.dict(table, row):
            self.assertIn(text, self.failure(check))
    add_test("stale row for " + stale[0], has_stale_row)

if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
