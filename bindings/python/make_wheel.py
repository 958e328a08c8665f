#!/usr/bin/env python3
"""Makes the wheel of a package folder, without asking any network.

usage: make_wheel.py PACKAGE_FOLDER DESTINATION
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile


def main() -> None:
    package, destination = map(pathlib.Path, sys.argv[1:])
    with tempfile.TemporaryDirectory() as folder:
        # A copy, so that nothing of an earlier build is packed.
        copy = pathlib.Path(folder) / "package"
        shutil.copytree(package, copy, ignore=shutil.ignore_patterns("__pycache__", "copied"))
        subprocess.run([sys.executable, "-m", "pip", "--disable-pip-version-check", "wheel",
                        "--quiet", "--no-index", "--no-deps", "--no-build-isolation", "--wheel-dir",
                        str(destination), str(copy)], check=True)


if __name__ == "__main__":
    main()
