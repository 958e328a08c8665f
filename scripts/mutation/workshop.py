"""A copy of the tree and its build, in which one mutant after the other is tried.

Of a mutant only those sources are compiled that its change reaches; their objects are linked in
front of the unchanged ones, which are left out of the archive then. After a change in a header the
objects of the tests are made again only when the mutant survives without: code that a test took
inline from the header is the unchanged one until then. A mutant of which the compiler makes the same
objects, byte by byte, is none: the place is compiled on other targets only, or means the same.

The library's objects are compiled with checks that stop a mutant where it reaches beyond a vector or
an array, as the sanitizers would stop it in the suite.
"""

import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import sys

from mutation.places import ROOT

WORK = ROOT / "build" / "mutants"
# What the library and its tests are built from.
COPIED = ["CMakeLists.txt", "LICENSE", "README.md", "cmake", "docs", "fuzz", "scripts", "tests",
          "tiltpole"]
MEMORY_LIMIT = 4 << 30
CHECKED = ["-D_GLIBCXX_ASSERTIONS", "-fsanitize=bounds", "-fsanitize-undefined-trap-on-error"]
# As in the presets for targets, so that a compiler cache knows the unchanged objects already.
CONFIGURATION = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O2",
                 "-DTILTPOLE_WINDOWING=none", "-DTILTPOLE_BUILD_APPS=OFF",
                 "-DTILTPOLE_BUILD_C_LIBRARY=OFF", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                 "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]


def limits(cpu_seconds):
    def apply():
        resource.setrlimit(resource.RLIMIT_CPU, (cpu_seconds, cpu_seconds + 1))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    return apply


def copy(source, target):
    """Overwrites only what differs, so that an unchanged file is not built again."""
    if source.is_dir():
        target.mkdir(parents=True, exist_ok=True)
        for gone in {p.name for p in target.iterdir()} - {p.name for p in source.iterdir()}:
            path = target / gone
            shutil.rmtree(path) if path.is_dir() else path.unlink()
        for child in source.iterdir():
            copy(child, target / child.name)
    elif not target.exists() or target.read_bytes() != source.read_bytes():
        shutil.copy(source, target)


class Program:
    """A room's test program: how it is linked, what of the library it takes, how long it runs."""

    def __init__(self, workshop, name):
        command = workshop.ninja("-t", "commands", name).splitlines()[-1]
        self.link = shlex.split(command.removeprefix(": && ").split(" && ")[0])
        if shutil.which("ld.lld"):
            self.link.append("-fuse-ld=lld")
        self.output = self.link.index("-o") + 1
        self.path = workshop.build / self.link[self.output]
        self.tests = {word for word in self.link if word.startswith("tests/")
                      and word.endswith(".o")}
        trace = subprocess.run([*self.link, "-Wl,--trace"], cwd=workshop.build, text=True,
                               check=True, stdout=subprocess.PIPE).stdout
        self.members = set(re.findall(r"\(([^()]+\.o)\)", trace))
        self.cpu_seconds = 600
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        if self.run(self.path) != "survived":
            sys.exit(f"{name} fails without any change")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        self.cpu_seconds = int(4 * used) + 3

    def takes(self, target):
        return target in self.tests or target.rsplit("/")[-1] in self.members

    def run(self, path):
        # The same drawn samples for every mutant.
        environment = dict(os.environ, RC_PARAMS="seed=1")
        try:
            status = subprocess.run([path, "--gtest_fail_fast", "--gtest_brief=1"], env=environment,
                                    cwd=self.path.parent, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                    timeout=60 * self.cpu_seconds,
                                    preexec_fn=limits(self.cpu_seconds)).returncode
        except subprocess.TimeoutExpired:
            return "timed out"
        # The kernel's signals for a program that used up its processor time.
        if status in (-24, -9):
            return "timed out"
        return "survived" if status == 0 else "caught"

    def linked_with(self, objects, path):
        command = [word for word in self.link if word not in objects]
        command[command.index("-o") + 1] = path
        return [command[0], *objects.values(), *command[1:]]


class Workshop:
    def __init__(self, number, programs):
        self.tree = WORK / str(number)
        self.build = self.tree / "build" / "release"
        self.scratch = self.tree / "build" / "mutant"
        self.kept = self.tree / "build" / "unchanged"
        self.unchanged = {}
        self.kept.mkdir(parents=True, exist_ok=True)
        for name in COPIED:
            copy(ROOT / name, self.tree / name)
        configure = ["cmake", "-S", self.tree, "-B", self.build, *CONFIGURATION]
        if shutil.which("ccache"):
            configure.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        subprocess.run(configure, check=True, stdout=subprocess.DEVNULL)
        self.ninja("-j1", *programs)
        self.compile_commands = self.read_compile_commands()
        self.reached_from = self.read_dependencies()
        self.programs = [Program(self, name) for name in programs]

    def ninja(self, *arguments):
        environment = {"CCACHE_BASEDIR": str(self.tree), "CCACHE_NOHASHDIR": "1", **os.environ}
        done = subprocess.run(["ninja", "-C", self.build, "--quiet", *arguments], env=environment,
                              stdout=subprocess.PIPE, text=True)
        if done.returncode != 0:
            sys.exit("the unchanged tree does not build:\n" + done.stdout)
        return done.stdout

    def read_compile_commands(self):
        """{object: words of its command}, without a cache, which would only fill up."""
        commands = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            words = [w for w in words if os.path.basename(w) != "ccache"]
            commands[words[words.index("-o") + 1]] = words
        return commands

    def read_dependencies(self):
        """{source or header: the objects made from it}"""
        reached = {}
        target = None
        for line in self.ninja("-t", "deps").splitlines():
            if not line.startswith(" "):
                target = line.split(":")[0]
            elif line:
                path = os.path.normpath(os.path.join(self.build, line.strip()))
                reached.setdefault(path, []).append(target)
        return reached

    def compile(self, target, folder):
        """The path of the object, or None."""
        words = list(self.compile_commands[target])
        path = folder / target.replace("/", "_")
        words[words.index("-o") + 1] = path
        if target.startswith("tiltpole/"):
            words += CHECKED
        return path if self.quiet([*words, "-w"]) else None

    def keep_unchanged(self, targets):
        """The objects to compare with, in the unchanged tree."""
        for target in targets:
            if target in self.unchanged or not any(p.takes(target) for p in self.programs):
                continue
            made = target.startswith("tiltpole/")
            path = self.compile(target, self.kept) if made else self.build / target
            self.unchanged[target] = path.read_bytes()

    def quiet(self, command):
        return subprocess.run(command, cwd=self.build, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def outcome(self, mutant):
        path = self.tree / mutant.path
        text = (ROOT / mutant.path).read_text()
        reached = self.reached_from.get(str(path), [])
        self.keep_unchanged(reached)
        path.write_text(text[:mutant.start] + mutant.new + text[mutant.end:])
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir()
        try:
            return self.try_in_all(reached)
        finally:
            path.write_text(text)

    def try_in_all(self, reached):
        objects = {}
        outcomes = []
        for of_tests in (False, True):
            for program in self.programs:
                targets = [t for t in reached
                           if program.takes(t) and (of_tests or t not in program.tests)]
                if of_tests and not program.tests.intersection(targets):
                    continue
                outcomes.append(self.try_in(program, targets, objects))
                if outcomes[-1] not in ("same code", "survived"):
                    return outcomes[-1]
        return "survived" if "survived" in outcomes or not objects else "same code"

    def try_in(self, program, targets, objects):
        for target in targets:
            if target not in objects:
                objects[target] = self.compile(target, self.scratch)
            if objects[target] is None:
                return "no build"
        changed = {t: objects[t] for t in targets
                   if objects[t].read_bytes() != self.unchanged[t]}
        if not changed:
            return "same code"
        mutated = self.scratch / program.path.name
        if not self.quiet(program.linked_with(changed, mutated)):
            return "no build"
        return program.run(mutated)
