#!/usr/bin/env python3
"""Holds the documents to what the programs do.

usage: documents_test.py code SOURCE
           every block of code in a document is, to the letter, the file (or its marked part) that
           the comment above it names; those files are compiled and run by other tests
       documents_test.py commands SOURCE PROGRAMS
           every block of shell commands under a "run" comment works, one after the other
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import textwrap

BLOCK = re.compile(r"(?:<!-- (.*?) -->\n)?```(\w+)\n(.*?)```", re.DOTALL)
CODE = {"cpp", "c", "python", "cmake"}


def documents(source):
    return [source / "README.md", *sorted((source / "docs").glob("*.md")),
            *sorted((source / "bindings").rglob("*.md"))]


def blocks(source):
    for document in documents(source):
        for comment, language, text in BLOCK.findall(document.read_text(encoding="utf-8")):
            yield document, comment, language, text


def part_of(source, name):
    file, _, part = name.partition(" ")
    text = (source / file).read_text(encoding="utf-8")
    if not part:
        return text
    pieces = re.split(r"^\s*(?://|#) \[%s\]\n" % re.escape(part), text, flags=re.MULTILINE)
    assert len(pieces) == 3, f"{file} has no part [{part}]"
    return textwrap.dedent(pieces[1])


def check_code(source):
    wrong = 0
    seen = 0
    for document, comment, language, text in blocks(source):
        if language not in CODE:
            continue
        seen += 1
        if not comment:
            print(f"{document}: a block of {language} does not say which file it is from:\n{text}")
            wrong += 1
        elif part_of(source, comment) != text:
            print(f"{document}: the block from {comment} differs from the file")
            wrong += 1
    assert seen, "found no block of code at all"
    return wrong


def check_commands(source, programs):
    seen = 0
    with tempfile.TemporaryDirectory() as folder:
        environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}")
        for document, comment, language, text in blocks(source):
            if language != "sh" or comment != "run":
                continue
            seen += 1
            print(f"{document}:\n{text}", flush=True)
            subprocess.run(["bash", "-eu", "-c", text], cwd=folder, env=environment, check=True)
    assert seen, "found no commands at all"
    return 0


def main():
    source = pathlib.Path(sys.argv[2])
    return check_code(source) if sys.argv[1] == "code" else check_commands(source, sys.argv[3])


sys.exit(main())
