"""The code of an image: its functions and their instructions, as the disassembler reads them."""

import re
import subprocess
from collections import namedtuple

TOOLS = "i686-w64-mingw32-"
LINE = re.compile(r"^\s*([0-9a-f]+):\t(.*)$")
SYMBOL = re.compile(r"^([0-9a-f]+) [tT] (\S+)$")
LISTS = ("___CTOR_LIST__", "__CTOR_LIST__", "___DTOR_LIST__", "__DTOR_LIST__")

Instruction = namedtuple("Instruction", "address name operands")
Function = namedtuple("Function", "address symbol name body")


def run(tool, *arguments, given=None):
    result = subprocess.run([TOOLS + tool, *arguments], input=given, capture_output=True, text=True, check=True)
    return result.stdout


class Code:
    """All addresses are relative to the image's base."""

    def __init__(self, image, image_file, symbol_file):
        self.image = image
        self.lists, symbols = {}, {}
        for line in run("nm", symbol_file).splitlines():
            match = SYMBOL.match(line)
            if not match:
                continue
            address, symbol = int(match[1], 16) - image.base, match[2]
            if symbol in LISTS:
                self.lists[symbol] = address
            elif not symbol.startswith(".text"):
                symbols.setdefault(address, symbol)
        end = min(self.lists.values(), default=max((s.address + s.virtual_size for s in image.code_sections()),
                                                   default=0))
        self.functions = self._functions(symbols, disassemble(image, image_file), end)

    def _functions(self, symbols, instructions, end):
        names = run("c++filt", given="\n".join(symbols.values())).splitlines()
        bodies = {address: [] for address in symbols}
        current = None
        for instruction in instructions:
            current = bodies.get(instruction.address, current)
            if instruction.address >= end:
                break
            if current is not None:
                current.append(instruction)
        return {address: Function(address, symbol, name.replace("(anonymous namespace)::", ""), bodies[address])
                for (address, symbol), name in zip(symbols.items(), names)}

    def instructions(self):
        return ((function, instruction) for function in self.functions.values() for instruction in function.body)


def disassemble(image, image_file):
    instructions = []
    for line in run("objdump", "-d", "--no-show-raw-insn", "-w", image_file).splitlines():
        match = LINE.match(line)
        if not match:
            continue
        words = match[2].split("#")[0].split(None, 1)
        while len(words) == 2 and words[0] in ("rep", "repz", "repnz", "lock", "notrack", "data16", "cs", "ds"):
            words = words[1].split(None, 1)
        instructions.append(Instruction(int(match[1], 16) - image.base, words[0] if words else "",
                                        words[1].strip() if len(words) == 2 else ""))
    return instructions
