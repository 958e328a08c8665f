#!/usr/bin/env python3
"""Takes the library along in one way, as a project of somebody else's would.

usage: packaging_test.py TEST SOURCE BUILD CMAKE COMPILER WINDOWING [EMULATOR...]
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import zipfile

TEST, SOURCE, BUILD, CMAKE, COMPILER, WINDOWING, *EMULATOR = sys.argv[1:]
SOURCE = pathlib.Path(SOURCE)
BUILD = pathlib.Path(BUILD)
WORK = BUILD / "packaging"
OUTSIDE = SOURCE / "tests/packaging/outside"
SHARED = WORK / "shared-build"


def run(*command, **options):
    print("+", *command, flush=True)
    return subprocess.run([str(word) for word in command], check=True, **options)


# For builds of the library that are made for one test alone: they take half the time.
UNOPTIMISED = "-DCMAKE_BUILD_TYPE=Debug"
# For those in which no test looks at a program or at the library for C.
LIBRARY_ALONE = ["-DTILTPOLE_BUILD_APPS=OFF", "-DTILTPOLE_BUILD_C_LIBRARY=OFF"]


def fresh(folder):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    return folder


def configure(source, build, *settings, **options):
    launcher = shutil.which("ccache")
    with_launcher = [f"-DCMAKE_CXX_COMPILER_LAUNCHER={launcher}"] if launcher else []
    run(CMAKE, "-G", "Ninja", "-S", source, "-B", build, "-DCMAKE_BUILD_TYPE=Release",
        f"-DCMAKE_CXX_COMPILER={COMPILER}", *with_launcher, *settings, **options)


def configure_outside(how, *settings, **options):
    build = fresh(WORK / f"{TEST}-outside")
    configure(OUTSIDE, build, f"-DHOW={how}", *settings, **options)
    return build


def build_and_run_outside(how, *settings, with_controls=False, library_path=None):
    build = configure_outside(how, *settings)
    run(CMAKE, "--build", build)
    environment = dict(os.environ)
    if library_path:
        environment["LD_LIBRARY_PATH"] = str(library_path)
    program = build / "outside"
    said = run(program, env=environment, stdout=subprocess.PIPE, text=True).stdout
    assert re.match(r"tiltpole \d+\.\d+\.\d+: the tip of a plumb pole lies 2.0 below", said), said
    controls = build / "outside_controls"
    assert controls.exists() == with_controls, controls
    if with_controls:
        run(controls, env=environment)
    return build


def install(build, *arguments):
    prefix = fresh(WORK / f"{TEST}-prefix")
    run(CMAKE, "--install", build, "--prefix", prefix, *arguments)
    return prefix


def library_folder(prefix):
    return next(prefix.rglob("libtiltpole.*")).parent


def outside_finds(prefix):
    path = f"-DCMAKE_PREFIX_PATH={prefix}"
    with_controls = WINDOWING != "none"
    build_and_run_outside("find_package", path, with_controls=with_controls)
    build_and_run_outside("find_package", path, "-DCOMPONENTS=core")
    if with_controls:
        build_and_run_outside("find_package", path, "-DCOMPONENTS=controls", with_controls=True)
    outside_finds_without_qt(prefix)


def outside_finds_without_qt(prefix):
    """On a machine for hosts without windows, with or without the controls' library."""
    settings = [f"-DCMAKE_PREFIX_PATH={prefix}", "-DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON"]
    build_and_run_outside("find_package", *settings)
    try:
        configure_outside("find_package", *settings, "-DCOMPONENTS=controls",
                          stderr=subprocess.PIPE, text=True)
    except subprocess.CalledProcessError as error:
        assert "no controls" in error.stderr, error.stderr
    else:
        raise AssertionError("the controls are found without Qt")


def installed_headers(prefix):
    return {file.relative_to(prefix / "include").as_posix()
            for file in prefix.glob("include/tiltpole/**/*.h")}


def offered_to_hosts(header):
    folder, name = header.rsplit("/", 1)
    return name in ("tiltpole.h", "tiltpole_c.h") or folder == "tiltpole/controls"


def only_headers_that_hosts_reach(prefix):
    installed = installed_headers(prefix)
    reached = set()
    ahead = {header for header in installed if offered_to_hosts(header)}
    while ahead:
        reached |= ahead
        text = "".join((prefix / "include" / header).read_text() for header in ahead)
        # Of the windowing systems one is installed.
        ahead = set(re.findall('#include "(.+?)"', text)) & installed - reached
    assert "tiltpole/tiltpole.h" in reached, installed
    assert installed == reached, f"no host reaches {sorted(installed - reached)}"


def every_header_compiles_alone(prefix):
    headers = ";".join(sorted(installed_headers(prefix)))
    build = configure_outside("find_package", f"-DCMAKE_PREFIX_PATH={prefix}",
                              f"-DHEADERS={headers}")
    run(CMAKE, "--build", build, "--target", "headers_alone")


def static_headers():
    prefix = install(BUILD)
    only_headers_that_hosts_reach(prefix)
    every_header_compiles_alone(prefix)


def find_package(build):
    outside_finds(install(build))


def outside_asks_pkg_config(folder):
    os.environ["PKG_CONFIG_PATH"] = str(folder / "pkgconfig")
    build_and_run_outside("pkg_config", with_controls=WINDOWING != "none", library_path=folder)


def pkg_config(build):
    outside_asks_pkg_config(library_folder(install(build)))


def static_find_package():
    find_package(BUILD)


def static_pkg_config():
    pkg_config(BUILD)


def pkg_config_in_folders_of_their_own():
    """Folders that do not move with the prefix; headers must lie outside the source tree."""
    build = fresh(WORK / f"{TEST}-build")
    with tempfile.TemporaryDirectory() as folders:
        configure(SOURCE, build, UNOPTIMISED, f"-DTILTPOLE_WINDOWING={WINDOWING}",
                  "-DTILTPOLE_BUILD_TESTS=OFF", *LIBRARY_ALONE,
                  f"-DCMAKE_INSTALL_LIBDIR={folders}/libraries",
                  f"-DCMAKE_INSTALL_INCLUDEDIR={folders}/headers")
        run(CMAKE, "--build", build)
        install(build)
        outside_asks_pkg_config(pathlib.Path(folders) / "libraries")


def add_subdirectory():
    settings = (UNOPTIMISED, f"-DTILTPOLE_SOURCE={SOURCE}")
    build = build_and_run_outside("add_subdirectory", *settings)
    assert not list(install(build).iterdir()), "the library is installed with the host"
    if WINDOWING != "none":
        build_and_run_outside("add_subdirectory", *settings,
                              f"-DTILTPOLE_WINDOWING={WINDOWING}", with_controls=True)


def build_shared(*settings):
    configure(SOURCE, SHARED, "-DBUILD_SHARED_LIBS=ON", f"-DTILTPOLE_WINDOWING={WINDOWING}",
              "-DTILTPOLE_BUILD_TESTS=OFF", "-DCMAKE_INSTALL_PREFIX=/usr", *settings)
    run(CMAKE, "--build", SHARED)


def shared_build():
    build_shared(*LIBRARY_ALONE)


def shared_build_with_programs():
    build_shared()


def shared_find_package():
    find_package(SHARED)


def shared_pkg_config():
    pkg_config(SHARED)


def exported_symbols(library):
    listed = run("nm", "-D", "--defined-only", "-C", library, stdout=subprocess.PIPE, text=True)
    names = set()
    for line in listed.stdout.splitlines():
        kind, name = line.split(" ", 2)[1:]
        # What a compiler and a linker emit beside the functions, and instances of templates of the
        # standard library, which vary from one compiler version to the next.
        if kind in "Vvw" or name.startswith(("std::", "vtable ", "typeinfo ", "void std::")):
            continue
        if name in ("__bss_start", "_edata", "_end"):
            continue
        names.add(name)
    return names


def exports_only(library, symbols):
    found = exported_symbols(library)
    listed = SOURCE / "tests/packaging" / symbols
    if os.environ.get("TILTPOLE_UPDATE_SYMBOLS"):
        listed.write_text("".join(f"{name}\n" for name in sorted(found)))
        return
    expected = set(listed.read_text().splitlines())
    for name in sorted(found - expected):
        print(f"exported, but not in {symbols}:", name)
    for name in sorted(expected - found):
        print(f"in {symbols}, but no longer exported:", name)
    assert found == expected


def shared_exports_only_the_public_interface():
    exports_only(SHARED / "tiltpole/libtiltpole.so", "symbols.txt")


def shared_controls_export_only_the_public_interface():
    exports_only(SHARED / "tiltpole/controls/libtiltpole_controls.so", "symbols_controls.txt")


def c_library_exports_only_the_public_interface():
    exports_only(BUILD / "tiltpole/c/libtiltpole_c.so", "symbols_c.txt")


def packages(generator, pattern, build=SHARED):
    folder = fresh(WORK / f"{TEST}-packages")
    run("cpack", "-G", generator, "-B", folder, cwd=build)
    found = sorted(folder.glob(pattern))
    assert found, f"cpack made no {pattern}"
    return found


def install_packages(root, files):
    # Their dependencies are this machine's own packages, which an empty root does not list.
    run("dpkg", f"--root={root}", "--force-depends", "--force-not-root",
        "--force-script-chrootless", "--log=/dev/null", "-i", *files)


def dependencies(package):
    listed = run("dpkg-deb", "-f", package, "Depends", stdout=subprocess.PIPE, text=True).stdout
    return {word.split()[0] for word in re.split("[,|]", listed)}


def debian_packages():
    made = packages("DEB", "*.deb")
    depends = {file.name.split("_")[0]: dependencies(file) for file in made}
    assert depends["libtiltpole-dev"] == {"libtiltpole1"}, depends
    assert "libtiltpole1" in depends["tiltpole-tools"], depends
    if WINDOWING == "qt":
        assert depends["libtiltpole-controls-dev"] == {
            "libtiltpole-dev", "libtiltpole-controls1", "qt6-base-dev"}, depends
    root = fresh(WORK / "deb-root")
    admin = root / "var/lib/dpkg"
    (admin / "updates").mkdir(parents=True)
    (admin / "info").mkdir()
    (admin / "status").touch()
    core = [file for file in made if "controls" not in file.name and "tools" not in file.name]
    install_packages(root, core)
    outside_finds_without_qt(root / "usr")
    install_packages(root, made)
    outside_finds(root / "usr")
    use_command_line(root / "usr/bin/tiltpole")


def tar_gz():
    (archive,) = packages("TGZ", "*.tar.gz")
    folder = fresh(WORK / "tar-root")
    with tarfile.open(archive) as packed:
        packed.extractall(folder)
    (prefix,) = folder.iterdir()
    outside_finds(prefix)
    outside_asks_pkg_config(library_folder(prefix))
    use_command_line(prefix / "bin/tiltpole")


def windows_zip():
    (archive,) = packages("ZIP", "*.zip", BUILD)
    folder = fresh(WORK / "zip-root")
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(folder)
    (prefix,) = folder.iterdir()
    only_headers_that_hosts_reach(prefix)
    use_command_line(prefix / "bin/tiltpole.exe")


def use_command_line(program):
    said = run(*EMULATOR, program, "--version", stdout=subprocess.PIPE, text=True).stdout
    assert re.search(r"\d+\.\d+\.\d+", said), said


globals()[TEST]()
