"""Which branches gcov counts where only an exception leads to.

The compiler clears up behind an exception with code of its own, on the lines of what threw: was
this temporary made yet, is this handler for what was thrown? No test takes both ways of such a
question, and often none asks it. gcov's text and JSON do not tell that code from the rest, but its
notes hold the flow graph: what cannot be reached from the start of a function while its calls
return is reached by what they throw.
"""

import collections
import os
import re
import subprocess

FAKE, FALL_THROUGH = 2, 4  # an arc's flags
ENTRY, EXIT = 0, 1  # blocks


class Function:
    def __init__(self):
        self.arcs = collections.defaultdict(list)  # block: [(block, flags)]
        self.places = {}  # block: (file, line number), of those that begin a line

    def ways_on(self, block):
        return [arc for arc in self.arcs[block] if not arc[1] & FAKE]

    def returns(self, block):
        """Where a block goes on when what it calls does not throw."""
        calls = any(flags & FAKE for _, flags in self.arcs[block])
        return [to for to, flags in self.ways_on(block) if flags & FALL_THROUGH or not calls]

    def reached_by_returns(self):
        reached, left = {ENTRY}, [ENTRY]
        while left:
            for to in self.returns(left.pop()):
                if to not in reached:
                    reached.add(to)
                    left.append(to)
        return reached

    def branching_blocks(self):
        """(place, how many branches gcov lists for it, whether only exceptions lead there)"""
        reached = self.reached_by_returns()
        place = None
        for block in sorted(self.arcs.keys() - {ENTRY, EXIT}):
            # A block that begins no line belongs to that of the block before.
            place = self.places.get(block, place)
            ways = len(self.ways_on(block))
            if ways > 1:
                yield place, ways, block not in reached


def functions(notes):
    """{mangled name: Function}"""
    text = subprocess.run(["gcov-dump", "-l", notes], capture_output=True, text=True,
                          check=True).stdout
    found = {}
    for line in text.splitlines():
        start = re.search(r"FUNCTION .* `(\S+)' ", line)
        if start:
            function = found[start.group(1)] = Function()
            continue
        block = re.search(r"block (\d+): ?(.*)", line)
        if not block:
            continue
        number, rest = int(block.group(1)), block.group(2)
        place = re.match(r"`([^']*)':.*?(\d+)$", rest)
        if place:
            function.places[number] = os.path.basename(place.group(1)), int(place.group(2))
        elif not rest.startswith("`"):
            function.arcs[number] += [(int(to), int(flags, 16)) for to, flags in
                                      re.findall(r"(\d+):([0-9a-f]{4})", rest)]
    return found


class ExceptionPaths:
    """Of one notes file."""

    def __init__(self, notes):
        self.branches = collections.defaultdict(list)
        for name, function in functions(notes).items():
            for place, ways, exceptional in function.branching_blocks():
                self.branches[name, place] += [exceptional] * ways

    def of(self, function, file, line, count):
        """Of each of the branches of a line, whether only an exception leads there.

        Where the notes and gcov's list do not agree, none counts as such.
        """
        found = self.branches.get((function, (os.path.basename(file), line)), [])
        return found if len(found) == count else [False] * count
