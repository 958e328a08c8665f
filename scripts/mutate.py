#!/usr/bin/env python3
"""Asks whether the tests of a room notice a wrong operator or constant.

Changes one place of the room's sources at a time, rebuilds that room's test program and runs it.
A mutant is caught when a test fails, the program crashes or it runs out of time; it has survived
when every test passes. Those that no test can catch, since they change nothing that a host could
see, stand in scripts/equivalent_mutants.txt with the reason.

The tree is never touched: each worker has a copy of its own under build/mutants.

  scripts/mutate.py --list --room matrix             every mutant of a room
  scripts/mutate.py --room matrix                    try all of them
  scripts/mutate.py --room matrix --sample 60        try 60, drawn with --seed
  scripts/mutate.py --room matrix --only 1f0c22ab    try this one again

The exit status is 0 when at least 95 % of the mutants that compile and differ were caught.
"""

import argparse
import collections
import concurrent.futures
import hashlib
import os
import pathlib
import queue
import random
import re
import resource
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutants"
EQUIVALENT = ROOT / "scripts" / "equivalent_mutants.txt"
# What the library and its tests are built from.
COPIED = ["CMakeLists.txt", "LICENSE", "README.md", "cmake", "docs", "scripts", "tests", "tiltpole"]
# A change in the records shows where hosts meet it, in the headings, too.
ROOMS = {
    "records": ["tests_records", "tests_positioning"],
    "matrix": ["tests_matrix"],
    "estimation": ["tests_estimation"],
    "positioning": ["tests_positioning"],
    "calibration": ["tests_calibration"],
    "screening": ["tests_screening"],
    "quality": ["tests_quality"],
}
LEAST_CAUGHT = 0.95
MEMORY_LIMIT = 8 << 30

Mutant = collections.namedtuple("Mutant", "id path line start end new before after")


# --- which mutants there are -------------------------------------------------------------------

NOT_CODE = re.compile(
    r"""//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+'|^[ ]*\#(?:\\\n|[^\n])*"""
    r"""|^[ ]*(?:static_assert|using|namespace)\b[^;{]*""",
    re.S | re.M | re.X,
)
# The formatter puts spaces around binary operators, and none inside of template brackets or
# between a type and its * or &.
BINARY = re.compile(r"(?<= )(\+|-|\*|/|<=|>=|<|>|==|!=|&&|\|\||\+=|-=|\*=|/=)(?=[ \n])")
OTHER_OPERATOR = {
    "+": "-", "-": "+", "*": "/", "/": "*", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
    "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=",
}
NEGATION = re.compile(r"!(?=[\w(:])|(?<=[(\[{])-(?=[\w(:])|(?<=[,=<>?:&|+*/] )-(?=[\w(:])"
                      r"|(?<=return )-(?=[\w(:])")
STEP = re.compile(r"\+\+|--")
OTHER_STEP = {"++": "--", "--": "++"}
WORD = re.compile(r"\b(true|false|std::min|std::max)\b")
OTHER_WORD = {"true": "false", "false": "true", "std::min": "std::max", "std::max": "std::min"}
NUMBER = re.compile(r"(?<![\w.])(\d[\d']*\.\d*(?:[eE][+-]?\d+)?|\d+[eE][+-]?\d+|\d[\d']*)([uUlL]*)"
                    r"(?![\w.])")


def blanked(text):
    """The text with comments, strings and directives overwritten by spaces."""
    return NOT_CODE.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)


def other_numbers(number, suffix):
    if number.isdigit():
        value = int(number)
        return [f"{n}{suffix}" for n in (value + 1, value - 1) if n >= 0]
    value = float(number.replace("'", ""))
    if value == 0.0:
        return ["1.0"]
    return [repr(value * 1.125), repr(value * 0.875)]


def changes(code):
    for m in BINARY.finditer(code):
        yield m.start(1), m.end(1), OTHER_OPERATOR[m.group(1)]
    for m in NEGATION.finditer(code):
        yield m.start(), m.end(), ""
    for m in STEP.finditer(code):
        yield m.start(), m.end(), OTHER_STEP[m.group()]
    for m in WORD.finditer(code):
        yield m.start(), m.end(), OTHER_WORD[m.group()]
    for m in NUMBER.finditer(code):
        for new in other_numbers(*m.groups()):
            yield m.start(), m.end(), new


def mutants_of_file(path):
    text = path.read_text()
    name = str(path.relative_to(ROOT))
    seen = collections.Counter()
    for start, end, new in sorted(changes(blanked(text))):
        first = text.rfind("\n", 0, start) + 1
        last = text.find("\n", start)
        before = text[first:last].strip()
        after = (text[first:start] + new + text[end:last]).strip()
        seen[before, after] += 1
        # Named by what it changes, not by where, so that a name outlives edits above it.
        key = f"{name}\n{before}\n{after}\n{seen[before, after]}"
        ident = hashlib.sha1(key.encode()).hexdigest()[:8]
        yield Mutant(ident, name, text.count("\n", 0, start) + 1, start, end, new, before, after)


def mutants_of_room(room):
    files = sorted(p for p in (ROOT / "tiltpole" / room).rglob("*") if p.suffix in (".h", ".cpp"))
    return [m for path in files for m in mutants_of_file(path)]


def known_equivalents():
    """{id: reason} from lines "id reason"; indented lines show the change and are for readers."""
    known = {}
    if EQUIVALENT.exists():
        for line in EQUIVALENT.read_text().splitlines():
            m = re.match(r"([0-9a-f]{8}) (.+)", line)
            if m:
                known[m.group(1)] = m.group(2)
    return known


# --- trying one --------------------------------------------------------------------------------


def limits(cpu_seconds):
    def apply():
        resource.setrlimit(resource.RLIMIT_CPU, (cpu_seconds, cpu_seconds + 1))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    return apply


class Worker:
    """A copy of the tree and its build."""

    def __init__(self, number, room):
        self.programs = ROOMS[room]
        self.tree = WORK / str(number) / "tree"
        self.build = WORK / str(number) / "build"
        self.cpu_limits = {}

    def prepare(self):
        self.tree.mkdir(parents=True, exist_ok=True)
        for name in COPIED:
            self.copy(ROOT / name, self.tree / name)
        configure = ["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                     "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O1 -w",
                     "-DTILTPOLE_WARNINGS_AS_ERRORS=OFF", "-DTILTPOLE_WINDOWING=none",
                     "-DTILTPOLE_BUILD_APPS=OFF",
                     "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]
        if shutil.which("ccache"):
            configure.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(configure, check=True, stdout=subprocess.DEVNULL)
        if not self.make(*self.programs):
            sys.exit("the unchanged tree does not build")
        for program in self.programs:
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            if self.run(program, 600) != "survived":
                sys.exit(f"{program} fails without any change")
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
            self.cpu_limits[program] = int(4 * used) + 5

    @staticmethod
    def copy(source, target):
        """Overwrites only what differs, so that an unchanged file is not built again."""
        if source.is_dir():
            if target.exists():
                for gone in {p.name for p in target.iterdir()} - {p.name for p in source.iterdir()}:
                    path = target / gone
                    shutil.rmtree(path) if path.is_dir() else path.unlink()
            target.mkdir(exist_ok=True)
            for child in source.iterdir():
                Worker.copy(child, target / child.name)
        elif not target.exists() or target.read_bytes() != source.read_bytes():
            shutil.copy(source, target)

    def make(self, *programs):
        environment = dict(os.environ, CCACHE_BASEDIR=str(self.tree.parent), CCACHE_NOHASHDIR="1")
        return subprocess.run(["ninja", "-C", self.build, "-j1", *programs], env=environment,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def run(self, program, cpu_seconds):
        path = next(p for p in self.build.glob(f"tests/*/{program}") if p.is_file())
        # The same drawn samples for every mutant.
        environment = dict(os.environ, RC_PARAMS="seed=1")
        try:
            status = subprocess.run([path, "--gtest_fail_fast", "--gtest_brief=1"], env=environment,
                                    cwd=self.build, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                    timeout=60 * cpu_seconds,
                                    preexec_fn=limits(cpu_seconds)).returncode
        except subprocess.TimeoutExpired:
            return "timed out"
        # The kernel's signals for a program that used up its processor time.
        if status in (-24, -9):
            return "timed out"
        return "survived" if status == 0 else "caught"

    def outcome(self, mutant):
        path = self.tree / mutant.path
        text = (ROOT / mutant.path).read_text()
        path.write_text(text[:mutant.start] + mutant.new + text[mutant.end:])
        try:
            for program in self.programs:
                if not self.make(program):
                    return "no build"
                result = self.run(program, self.cpu_limits[program])
                if result != "survived":
                    return result
            return "survived"
        finally:
            path.write_text(text)


# --- all of them -------------------------------------------------------------------------------


def show(mutant):
    return f"  {mutant.path}:{mutant.line}\n    - {mutant.before}\n    + {mutant.after}"


def try_all(room, mutants, jobs):
    """Yields (mutant, outcome) as they come."""
    idle = queue.Queue()
    for number in range(jobs):
        worker = Worker(number, room)
        worker.prepare()
        idle.put(worker)

    def try_one(mutant):
        worker = idle.get()
        try:
            return mutant, worker.outcome(mutant)
        finally:
            idle.put(worker)

    pool = concurrent.futures.ThreadPoolExecutor(jobs)
    try:
        for future in concurrent.futures.as_completed([pool.submit(try_one, m) for m in mutants]):
            yield future.result()
    finally:
        pool.shutdown(cancel_futures=True)


def report(room, of, counts, seconds):
    tried = counts["caught"] + counts["timed out"] + counts["survived"]
    share = (counts["caught"] + counts["timed out"]) / tried if tried else 1.0
    print(f"{room}: {of} mutants, {sum(counts.values())} tried, {counts['no build']} did not build, "
          f"{counts['equivalent']} equivalent, {counts['caught']} caught, "
          f"{counts['timed out']} timed out, {counts['survived']} survived: "
          f"{100 * share:.1f} % caught, {seconds:.0f} s", flush=True)
    return share >= LEAST_CAUGHT


def settled(mutant, outcome, known):
    """The outcome in view of the list of equivalent mutants."""
    if mutant.id not in known:
        return outcome
    if outcome == "survived":
        return "equivalent"
    print(f"{mutant.id} is listed as equivalent, but: {outcome}", flush=True)
    return outcome


def run_room(room, options):
    mutants = mutants_of_room(room)
    of = len(mutants)
    if options.only:
        mutants = [m for m in mutants if m.id in options.only]
    if options.sample and options.sample < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.sample)
        # Neighbours share what has to be built again.
        mutants.sort(key=lambda m: (m.path, m.start, m.new))
    if options.list:
        for mutant in mutants:
            print(mutant.id, show(mutant), sep="\n")
        return True
    known = known_equivalents()
    start = time.monotonic()
    counts = collections.Counter()
    try:
        for mutant, outcome in try_all(room, mutants, options.jobs):
            outcome = settled(mutant, outcome, known)
            counts[outcome] += 1
            if outcome == "survived" or options.verbose:
                print(f"{mutant.id} {outcome}\n{show(mutant)}", flush=True)
    except KeyboardInterrupt:
        print("stopped early; so far:")
    return report(room, of, counts, time.monotonic() - start)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--room", action="append", choices=ROOMS, help="default: every room")
    parser.add_argument("--list", action="store_true", help="only show the mutants")
    parser.add_argument("--sample", type=int, metavar="N", help="try N mutants of each room")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="which N (default: 1)")
    parser.add_argument("--only", type=lambda ids: set(ids.split(",")), metavar="ID,ID")
    parser.add_argument("--jobs", type=int, default=1, metavar="N", help="at a time (default: 1)")
    parser.add_argument("--verbose", action="store_true", help="tell of the caught ones, too")
    options = parser.parse_args()
    results = [run_room(room, options) for room in options.room or ROOMS]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
