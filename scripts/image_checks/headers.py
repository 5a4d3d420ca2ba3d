"""Checks of what the image's headers and tables say, and of the files beside it."""

import struct

from image_checks import pe
from image_checks.tables import EXPORT, IMPORTS, LIBRARY, VERSION_STRINGS

I386, PE32, NATIVE = 0x14C, 0x10B, 1
RELOCATIONS_STRIPPED, EXECUTABLE, IS_32_BIT, DLL = 0x0001, 0x0002, 0x0100, 0x2000
PAGE = 0x1000
VERSION_SIGNATURE, NT_32_BIT, KIND_DRIVER, DISPLAY_DRIVER = 0xFEEF04BD, 0x00040004, 3, 4


class CheckError(Exception):
    pass


def require(condition, text):
    if not condition:
        raise CheckError(text)


def check_kind(image):
    require(image.machine == I386, f"for machine {image.machine:#x}, not the i386")
    require(image.magic == PE32, "not a 32-bit image")
    wanted = EXECUTABLE | IS_32_BIT | DLL
    require(image.characteristics & wanted == wanted, f"not a 32-bit library: flags {image.characteristics:#x}")
    require(image.subsystem == NATIVE, f"for subsystem {image.subsystem}, not the native one")
    return "a 32-bit i386 library for the native subsystem"


def check_versions(image):
    for name, version in (("system", image.os_version), ("subsystem", image.subsystem_version)):
        require(version == (5, 0), f"wants {name} version {version[0]}.{version[1]}, not 5.0")
    return "system and subsystem 5.0"


def check_sections(image):
    require(image.section_alignment == PAGE, f"sections are aligned to {image.section_alignment:#x}, not to pages")
    end = image.headers_size
    for section in image.sections:
        expected = (end + PAGE - 1) & -PAGE
        require(section.address == expected, f"{section.name} lies at {section.address:#x}, not at {expected:#x}")
        require(section.file_at + section.file_size <= len(image.bytes), f"{section.name} is cut off")
        end = section.address + max(section.virtual_size, 1)
    require(image.size == (end + PAGE - 1) & -PAGE, f"the image's size is {image.size:#x}")
    return f"{len(image.sections)} sections, each on pages of its own: {' '.join(s.name for s in image.sections)}"


def check_protection(image):
    for section in image.sections:
        both = pe.EXECUTE | pe.WRITE
        require(section.flags & both != both, f"{section.name} is code that can be written")
        require(section.flags & pe.READ, f"{section.name} cannot be read")
        constant = section.name in (".text", ".rdata", ".edata", ".reloc")
        require(not (constant and section.flags & pe.WRITE), f"{section.name} can be written")
    require(image.is_code(image.entry), "the entry point lies outside of the code")
    return "code and constants cannot be written"


def check_relocations(image):
    require(not image.characteristics & RELOCATIONS_STRIPPED, "the relocations are stripped")
    pointers = image.pointers()
    require(pointers, "there are no relocations")
    for at, to in pointers.items():
        require(0 <= to < image.size, f"the address at {at:#x} points out of the image")
    return f"{len(pointers)} addresses"


def check_checksum(image):
    right = image.right_checksum()
    require(image.checksum == right, f"the header has {image.checksum:#x}, the file {right:#x}")
    return f"{right:#x}"


def check_imports(image, symbols):
    imports = image.imports()
    for entry in imports:
        require(entry.library.lower() == LIBRARY, f"{entry.name} comes from {entry.library}")
        require(entry.name in IMPORTS, f"{entry.name} is not among the services that every engine has")
        symbol = f"_{entry.name}@{IMPORTS[entry.name]}"
        require(symbol in symbols, f"{entry.name} is not called with {IMPORTS[entry.name]} bytes of arguments")
    unused = set(IMPORTS) - {entry.name for entry in imports}
    require(not unused, f"a row of the table that nothing needs: {min(unused, default='')}")
    return f"{len(imports)} services of {LIBRARY}"


def check_exports(image):
    exports = image.exports()
    require(list(exports) == [EXPORT], f"exports {', '.join(exports) or 'nothing'}")
    require(exports[EXPORT] == image.entry, f"{EXPORT} is not the entry point")
    return EXPORT


def check_version_resource(image):
    resource = image.version_resource()
    require(resource is not None, "there is none")
    try:
        fixed, strings = pe.fixed_version(resource), pe.version_strings(resource)
    except (struct.error, UnicodeDecodeError) as error:
        raise CheckError(f"it cannot be read ({error})") from error
    require(fixed[0] == VERSION_SIGNATURE, "it has no fixed part")
    require((fixed[8], fixed[9], fixed[10]) == (NT_32_BIT, KIND_DRIVER, DISPLAY_DRIVER), "not that of a display driver")
    for name in sorted(strings.keys() | VERSION_STRINGS.keys()):
        require(name in VERSION_STRINGS, f"{name} does not belong there")
        require(name in strings, f"{name} is missing")
        wanted = VERSION_STRINGS[name]
        require(wanted in (None, strings[name]), f"{name} is '{strings[name]}', not '{wanted}'")
    return f"{strings['ProductName']} {strings['ProductVersion']}"


def check_determinism(image, built, relinked):
    require(image.time == 0, f"the header has a time, {image.time:#x}")
    for name in ("koru.dll", "koru.dbg"):
        same = (built / name).read_bytes() == (relinked / name).read_bytes()
        require(same, f"{name} comes out differently when linked again")
    return "linked again, the same bytes"


def check_stripped(image):
    at, count = struct.unpack_from("<II", image.bytes, image.header_at + 12)
    require(at == 0 and count == 0, "koru.dll holds symbols")
    debug = [s.name for s in image.sections if s.name.startswith((".debug", "/"))]
    require(not debug, f"koru.dll holds {', '.join(debug)}")
    return f"{len(image.bytes)} bytes without symbols"


def check_symbols(built, symbols):
    require("_DrvEnableDriver@12" in symbols, "koru.dbg does not know DrvEnableDriver")
    content = (built / "koru.dbg").read_bytes()
    require(b".debug_info" in content and b".debug_line" in content, "koru.dbg does not know the sources")
    require("DrvEnableDriver@12" in (built / "koru.map").read_text(), "koru.map does not know DrvEnableDriver")
    return f"{len(symbols)} functions in koru.map and koru.dbg"
