"""Checks of the instructions that the image holds, and that none runs before its entry point."""

import re

from image_checks.headers import require
from image_checks.tables import REFUSED_INSTRUCTIONS

REFUSED = [(re.compile(pattern), kind) for pattern, kind in REFUSED_INSTRUCTIONS]
BEFORE_MAIN = (".ctors", ".dtors", ".init_array", ".fini_array", ".CRT", ".tls")
EMPTY_LIST = (0xFFFFFFFF, 0)


def check_instructions(code):
    count = 0
    for function, instruction in code.instructions():
        count += 1
        text = f"{instruction.name} {instruction.operands}".strip()
        for pattern, kind in REFUSED:
            require(not pattern.search(text), f"{function.name} at {instruction.address + code.image.base:#x} has "
                    f"'{text}': {kind}")
    require(count > 0, "there is no code")
    return f"{count}, none of floating point, MMX or SSE"


def check_constructors(image, code):
    for section in image.sections:
        require(not section.name.startswith(BEFORE_MAIN), f"there is a section {section.name}")
    require(code.lists, "the lists of constructors cannot be found")
    for symbol, address in code.lists.items():
        require(image.unpack("<II", address) == EMPTY_LIST, f"{symbol.lstrip('_')} is not empty")
    for function in code.functions.values():
        require("_GLOBAL__sub_" not in function.symbol, f"{function.symbol} runs before the entry point")
    return "none"
