#!/usr/bin/env python3
"""Makes the wheel, installs it into an empty folder, and runs the package's tests upon that.

usage: install_wheel.py SOURCE PACKAGE_FOLDER
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import zipfile

SOURCE, PACKAGE = map(pathlib.Path, sys.argv[1:])


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, **options)


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    run(sys.executable, SOURCE / "make_wheel.py", PACKAGE, folder)
    (wheel,) = folder.glob("*.whl")
    # For every Python of this platform, of the library's version.
    version = re.search(r'"(.*)"', (PACKAGE / "tiltpole/_version.py").read_text()).group(1)
    assert re.fullmatch(rf"tiltpole-{re.escape(version)}-py3-none-\w+\.whl", wheel.name), wheel.name
    packed = {pathlib.PurePath(entry).name for entry in zipfile.ZipFile(wheel).namelist()}
    assert {"py.typed", "_version.py", "libtiltpole_c.so"} <= packed, packed
    installed = folder / "installed"
    run(sys.executable, "-m", "pip", "--disable-pip-version-check", "install", "--quiet",
        "--no-index", "--no-deps", "--target", installed, wheel)
    # The installed package and nothing of the source tree.
    where = run(sys.executable, "-c", "import tiltpole; print(tiltpole.__file__)", cwd=folder,
                env={**os.environ, "PYTHONPATH": str(installed)}, stdout=subprocess.PIPE,
                text=True).stdout
    assert pathlib.Path(where.strip()).is_relative_to(installed), where
    # It needs nothing of the system but the C library.
    needed = run("objdump", "-p", installed / "tiltpole/libtiltpole_c.so", stdout=subprocess.PIPE,
                 text=True).stdout
    libraries = set(re.findall(r"NEEDED +(\S+)", needed))
    assert all(re.match(r"(libc|libm|ld-linux.*)\.so", library) for library in libraries), libraries
    run(sys.executable, SOURCE / "tests/test_tiltpole.py", cwd=folder,
        env={**os.environ, "PYTHONPATH": str(installed)})
