#!/usr/bin/env python3
"""Runs clang-tidy on files that a build compiles, and prints what it finds.

A file takes up to a minute, so what was found clean is not looked at again while its text with all
that it includes, the configuration and clang-tidy stay the same.

usage: tidy.py BUILD FILE...      BUILD has compile_commands.json, made for clang
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys


def compile_commands(build: pathlib.Path) -> dict:
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    return {os.path.realpath(os.path.join(entry["directory"], entry["file"])): entry
            for entry in entries}


def preprocessed(entry: dict) -> bytes:
    words = shlex.split(entry["command"])
    place = words.index("-o")
    words[place:place + 2] = []
    words[words.index("-c")] = "-E"
    # As clang-tidy sees it, and with the comments, some of which speak to it.
    return subprocess.run([*words, "-C", "-P", "-D__clang_analyzer__"], cwd=entry["directory"], check=True,
                          stdout=subprocess.PIPE).stdout


def output_of(*command: str) -> bytes:
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def findings(build: pathlib.Path, file: str, entry: dict, version: bytes) -> str:
    settings = output_of("clang-tidy", "-p", str(build), "--dump-config", file)
    key = hashlib.sha256(version + settings + preprocessed(entry)).hexdigest()
    clean = build / "clean" / key
    if clean.exists():
        return ""
    run = subprocess.run(["clang-tidy", "-p", str(build), "--quiet", "--extra-arg=-std=c++17", file],
                         stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    if run.returncode == 0:
        clean.touch()
        return ""
    return f"{file}: clang-tidy ended with {run.returncode}\n{run.stdout}{run.stderr}"


def main() -> int:
    build = pathlib.Path(sys.argv[1])
    (build / "clean").mkdir(exist_ok=True)
    version = output_of("clang-tidy", "--version")
    commands = compile_commands(build)
    files = sys.argv[2:]
    found = 0
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        jobs = [pool.submit(findings, build, file, commands[os.path.realpath(file)], version)
                for file in files]
        for number, job in enumerate(concurrent.futures.as_completed(jobs), 1):
            text = job.result()
            found += bool(text)
            print(f"{text}{number} of {len(files)}", flush=True)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
