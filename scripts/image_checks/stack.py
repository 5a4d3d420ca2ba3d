"""Follows the stack pointer through every function: frames, depths, and who takes arguments off the stack."""

import re
from collections import namedtuple

from image_checks.headers import CheckError, require
from image_checks.tables import DEPTH_LIMIT, FRAME_LIMIT, IMPORTS, POINTER_CALLS, RECURSION_BOUNDS

RETURN_ADDRESS = 4
IMMEDIATE = re.compile(r"^\$(0x[0-9a-f]+),%esp$")
DIRECT = re.compile(r"^0x([0-9a-f]+)")
SLOT = re.compile(r"^\*0x([0-9a-f]+)$")
LOAD = re.compile(r"^(-?0x[0-9a-f]+|)\(%(esp|ebp)\),%esp$")
ALIGNED = re.compile(r"^\$0xfffffff[08],%esp$")
ENTRY_POINT = re.compile(r"^(?:koru::|_)Drv\w+(?:\(.*\))?@(\d+)$")
READ_ONLY = ("cmp", "cmpl", "test", "testl", "push", "pushl")

Call = namedtuple("Call", "address depth popped targets")  # targets: functions of the driver; none for one outside
State = namedtuple("State", "depth base")  # bytes on the stack; the same where %ebp points, or None


def short(function):
    """A name that fits on a line."""
    name = function.name.replace("koru::", "", 1)
    return re.sub(r"FunctionRef<[^:]*FunctionRef<koru::(\w+)\(.*", r"lambda of \1", name).split("(")[0]


class Walk:
    """One function, all of its paths."""

    def __init__(self, stacks, function):
        self.stacks, self.function = stacks, function
        self.by_address = {instruction.address: i for i, instruction in enumerate(function.body)}
        self.frame, self.popped, self.calls = RETURN_ADDRESS, None, []
        self.pointer_calls = stacks.pointer_calls(function)
        seen, waiting = {}, [(function.address, State(RETURN_ADDRESS, None))]
        while waiting:
            address, state = waiting.pop()
            if address in seen:
                if seen[address].depth != state.depth:
                    self.fail(address, f"the stack holds {seen[address].depth} or {state.depth} bytes")
                continue
            seen[address] = state
            self.frame = max(self.frame, state.depth)
            if address not in self.by_address:
                self.fail(address, "the code runs out of the function")
            waiting += self.step(function.body[self.by_address[address]], state)

    def fail(self, address, text):
        raise CheckError(f"{short(self.function)} at {address + self.stacks.image.base:#x}: {text}")

    def step(self, instruction, state):
        """The addresses that run next, with the state there."""
        address, name, operands = instruction
        if name == "ret":
            self.leave(address, state, int(operands[1:], 16) if operands else 0)
            return []
        if name == "jmp":
            return self.jump(instruction, state)
        following = self.next_address(address)
        if name.startswith("j") or name.startswith("loop"):
            return [(following, state), *self.jump(instruction, state)]
        if name == "call":
            popped, targets = self.callee(instruction)
            self.calls.append(Call(address, state.depth, popped, targets))
            self.frame = max(self.frame, state.depth + RETURN_ADDRESS)
            state = state._replace(depth=state.depth - popped)
        else:
            state = self.moved(instruction, state)
        return [(following, state)]

    def next_address(self, address):
        following = self.by_address[address] + 1
        if following == len(self.function.body):
            self.fail(address, "the code runs out of the function")
        return self.function.body[following].address

    def jump(self, instruction, state):
        match = DIRECT.match(instruction.operands)
        target = int(match[1], 16) - self.stacks.image.base if match else None
        if target in self.by_address and target != self.function.address:
            return [(target, state)]
        popped, targets = self.callee(instruction)  # the callee returns to our caller
        self.leave(instruction.address, state, popped)
        self.calls.append(Call(instruction.address, state.depth - RETURN_ADDRESS, popped, targets))
        return []

    def leave(self, address, state, popped):
        if state.depth != RETURN_ADDRESS:
            self.fail(address, f"returns with {state.depth - RETURN_ADDRESS} bytes left on the stack")
        if self.popped not in (None, popped):
            self.fail(address, f"takes {self.popped} or {popped} bytes of arguments off the stack")
        self.popped = popped

    def callee(self, instruction):
        """The bytes that a callee takes off the stack, and the functions of the driver that it may be."""
        direct, slot = DIRECT.match(instruction.operands), SLOT.match(instruction.operands)
        if direct:
            address = int(direct[1], 16) - self.stacks.image.base
            if address not in self.stacks.code.functions:
                self.fail(instruction.address, "calls into the middle of a function")
            return self.stacks.popped(address), [address]
        imported = slot and self.stacks.imports.get(int(slot[1], 16) - self.stacks.image.base)
        if imported:
            return IMPORTS.get(imported, 0), []
        if not self.pointer_calls:
            self.fail(instruction.address, "a call through a pointer that no row of the table tells of")
        return self.pointer_calls

    def moved(self, instruction, state):
        address, name, operands = instruction
        if name in ("push", "pushl", "pushf"):
            return state._replace(depth=state.depth + 4)
        if name in ("pop", "popl", "popf"):
            return State(state.depth - 4, None if operands == "%ebp" else state.base)
        if name == "leave":
            return State(self.base(address, state) - 4, None)
        if name == "mov" and operands == "%esp,%ebp":
            return state._replace(base=state.depth)
        if operands.endswith(",%ebp") and name not in READ_ONLY:
            return state._replace(base=None)
        if not (operands.endswith(",%esp") or operands == "%esp") or name in READ_ONLY:
            return state
        return state._replace(depth=self.set_pointer(instruction, state))

    def set_pointer(self, instruction, state):
        address, name, operands = instruction
        immediate, load = IMMEDIATE.match(operands), LOAD.match(operands)
        if immediate and name in ("add", "sub"):
            value = int(immediate[1], 16)
            value -= (value >> 31) << 32
            return state.depth + (value if name == "sub" else -value)
        if load and name == "lea":
            offset = int(load[1] or "0", 16)
            return (state.depth if load[2] == "esp" else self.base(address, state)) - offset
        if name == "mov" and operands == "%ebp,%esp":
            return self.base(address, state)
        if name == "and" and ALIGNED.match(operands):
            return state.depth + 12
        return self.fail(address, f"moves the stack pointer in an unknown way: {name} {operands}")

    def base(self, address, state):
        if state.base is None:
            self.fail(address, "the frame pointer is not known")
        return state.base


class Stacks:
    def __init__(self, image, code):
        self.image, self.code = image, code
        self.imports = {entry.slot: entry.name for entry in image.imports()}
        self.taken = {to for to in image.pointers().values() if to in code.functions}
        self.rows_used, self.reached_by_pointer = set(), set()
        self.walks, self.depths, self.pops = {}, {}, {}
        for address, function in code.functions.items():
            self.walks[address] = Walk(self, function)

    def pointer_calls(self, function):
        """If a function calls through pointers, the bytes that the callee takes off the stack, and who it may be."""
        calls = any(i.name in ("call", "jmp") and i.operands.startswith("*") and not self.is_import(i.operands)
                    for i in function.body)
        if not calls:
            return None
        rows = [row for row in POINTER_CALLS if re.match(r"(\w+ )*koru::" + row[0], function.name)]
        if len(rows) != 1:
            raise CheckError(f"{short(function)} calls through a pointer, which {len(rows)} rows of the table tell of")
        pattern, popped, targets = rows[0]
        self.rows_used.add(pattern)
        candidates = self.candidates(targets)
        if targets and not candidates:
            raise CheckError(f"{short(function)} has no one to call")
        self.reached_by_pointer.update(candidates)
        return popped, candidates

    def is_import(self, operands):
        match = SLOT.match(operands)
        return match and int(match[1], 16) - self.image.base in self.imports

    def candidates(self, pattern):
        if pattern is None:
            return []
        matcher = re.compile(r"(\w+ )*koru::" + pattern)
        return sorted(address for address in self.taken if matcher.match(self.code.functions[address].name))

    def popped(self, address):
        """What a function takes off the stack: as its first return, or the function that it ends in, says."""
        if address not in self.pops:
            self.pops[address] = 0
            function = self.code.functions[address]
            for instruction in function.body:
                direct = DIRECT.match(instruction.operands)
                if instruction.name == "ret":
                    self.pops[address] = int(instruction.operands[1:], 16) if instruction.operands else 0
                    break
                if instruction.name == "jmp" and SLOT.match(instruction.operands):
                    slot = int(SLOT.match(instruction.operands)[1], 16) - self.image.base
                    self.pops[address] = IMPORTS.get(self.imports.get(slot), 0)
                    break
                target = int(direct[1], 16) - self.image.base if direct else None
                if instruction.name == "jmp" and target in self.code.functions and target != address:
                    self.pops[address] = self.popped(target)
                    break
        return self.pops[address]

    def entry_points(self):
        named = [f.address for f in self.code.functions.values() if f.address in self.taken | {self.image.entry}]
        return [address for address in named if address not in self.reached_by_pointer]

    def depth(self, address, above=()):
        """The deepest that the stack gets in a function and all that it calls, and the functions on the way there."""
        if above.count(address) > RECURSION_BOUNDS.get(self.code.functions[address].symbol, 0):
            ring = above[above.index(address):] + (address,)
            raise CheckError("calls itself: " + " > ".join(short(self.code.functions[a]) for a in ring))
        if address in self.depths:
            return self.depths[address]
        walk = self.walks[address]
        deepest, path = walk.frame, (address,)
        for call in walk.calls:
            for target in call.targets:
                below, way = self.depth(target, above + (address,))
                if call.depth + below > deepest:
                    deepest, path = call.depth + below, (address, *way)
        self.depths[address] = deepest, path
        return self.depths[address]


def check_calls(stacks):
    unused = [row[0] for row in POINTER_CALLS if row[0] not in stacks.rows_used]
    require(not unused, f"a row of the table that nothing needs: {min(unused, default='')}")
    for address in stacks.entry_points():
        function = stacks.code.functions[address]
        entry_point = ENTRY_POINT.match(function.name)
        require(entry_point, f"the address of {short(function)} is taken, and no row of the table tells who calls it")
        popped = stacks.walks[address].popped
        require(popped == int(entry_point[1]), f"{short(function)} takes {popped} bytes off the stack")
    calls = sum(len(walk.calls) for walk in stacks.walks.values())
    return f"{calls}, each leaves the stack as caller and callee expect"


def check_frames(stacks):
    largest = max(stacks.walks.values(), key=lambda walk: walk.frame)
    name = short(largest.function)
    require(largest.frame <= FRAME_LIMIT, f"that of {name} has {largest.frame} bytes, more than {FRAME_LIMIT}")
    return f"{len(stacks.walks)} functions, the largest, {name}, has {largest.frame} bytes"


def check_recursion(stacks):
    for address in stacks.code.functions:
        stacks.depth(address)
    return "none" if not RECURSION_BOUNDS else f"{len(RECURSION_BOUNDS)} functions, each with a bound"


def check_depths(stacks):
    depths = {address: stacks.depth(address) for address in stacks.entry_points()}
    deepest = max(depths, key=lambda address: depths[address][0])
    depth, path = depths[deepest]
    way = " > ".join(short(stacks.code.functions[address]) for address in path)
    require(depth <= DEPTH_LIMIT, f"{depth} bytes, more than {DEPTH_LIMIT}: {way}")
    return f"{len(depths)} entry points, the deepest, {short(stacks.code.functions[deepest])}, uses {depth} bytes"
