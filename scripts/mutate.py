#!/usr/bin/env python3
"""Asks whether the tests of a room notice a wrong operator or constant.

Changes one place of the room's sources at a time, makes that room's test program with it and runs
it. A mutant is caught when a test fails, the program crashes or it runs out of time; it has survived
when every test passes. Those that no test can catch, since they change nothing that a host could
see, stand in scripts/equivalent_mutants.txt with the reason.

The tree is never touched: each worker has a copy of its own under build/mutants. The sources that
are changed are read from the tree, though, so leave those alone while it runs.

  scripts/mutate.py --list --room matrix             every mutant of a room
  scripts/mutate.py --room matrix                    try all of them
  scripts/mutate.py --room matrix --sample 60        try 60, drawn with --seed
  scripts/mutate.py --room matrix --only 1f0c22ab    try this one again

The exit status is 0 when at least 95 % of the mutants that compile and differ were caught.
"""

import argparse
import collections
import concurrent.futures
import queue
import random
import re
import sys
import time

from mutation.places import ROOT, mutants_of_room
from mutation.workshop import Workshop

EQUIVALENT = ROOT / "scripts" / "equivalent_mutants.txt"
# A change in the records shows where hosts meet it, in headings and in azimuths, too.
ROOMS = {
    "records": ["tests_records", "tests_positioning", "tests_screening"],
    "matrix": ["tests_matrix"],
    "estimation": ["tests_estimation"],
    "positioning": ["tests_positioning"],
    "calibration": ["tests_calibration"],
    "screening": ["tests_screening"],
    "quality": ["tests_quality"],
}
LEAST_CAUGHT = 0.95


def known_equivalents():
    """{id: reason} from lines "id reason"; indented lines show the change and are for readers."""
    known = {}
    if EQUIVALENT.exists():
        for line in EQUIVALENT.read_text().splitlines():
            m = re.match(r"([0-9a-f]{8}) (.+)", line)
            if m:
                known[m.group(1)] = m.group(2)
    return known


def show(mutant):
    return f"  {mutant.path}:{mutant.line}\n    - {mutant.before}\n    + {mutant.after}"


def try_all(room, mutants, jobs):
    """Yields (mutant, outcome) as they come."""
    idle = queue.Queue()
    for number in range(jobs):
        idle.put(Workshop(number, ROOMS[room]))

    def try_one(mutant):
        workshop = idle.get()
        try:
            return mutant, workshop.outcome(mutant)
        finally:
            idle.put(workshop)

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
          f"{counts['same code']} changed no code, {counts['equivalent']} equivalent, "
          f"{counts['caught']} caught, {counts['timed out']} timed out, "
          f"{counts['survived']} survived: {100 * share:.1f} % caught, {seconds:.0f} s", flush=True)
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
