"""Looks at the functions of the objects that are compiled for wider vectors than every processor has.

Of an inline function that several objects define, the linker keeps one copy for the whole program.
So these objects may define such functions for vectors of their own width alone.

Usage: wide_objects.py <nm> <object>...
"""

import re
import subprocess
import sys

LANES = {"conic_sums_avx2": 4, "conic_sums_avx512": 8}


def shared_functions(nm, path):
    lines = subprocess.run([nm, path], check=True, capture_output=True, text=True).stdout.splitlines()
    return [line.split()[-1] for line in lines if re.search(r" [uVvWw] ", line)]


def main(nm, *objects):
    strangers = []
    for name, lanes in LANES.items():
        path = next(path for path in objects if f"{name}.cpp" in path)
        # A vector of so many doubles or whole numbers, or a template of that number.
        own = re.compile(rf"Dv{lanes}_|ILm{lanes}E")
        functions = shared_functions(nm, path)
        if not functions:
            sys.exit(f"{path} defines no inline function: is it still the one to look at?")
        strangers += [f"{path}: {name}" for name in functions if not own.search(name)]
    if strangers:
        sys.exit("inline functions not of the object's own width:\n" + "\n".join(strangers))


main(*sys.argv[1:])
