#!/usr/bin/env python3
"""Unpacks the packages that scripts/package made, as a user would, and builds and runs programs with them.

usage: test_packages.py FOLDER PRESET...
"""

import glob
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile

SOURCE = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))
CONSUMER = os.path.join(SOURCE, "tests", "install", "consumer")
WINE = os.path.join(SOURCE, "scripts", "wine-run.sh")
sys.path[:0] = [os.path.join(SOURCE, "tests", "exports"), os.path.join(SOURCE, "scripts")]
import exports  # noqa: E402
import check_library  # noqa: E402
from check_library import DLLS, needed  # noqa: E402

SHA0_OF_ABC = "0164b8a914cd2a5e74c4f7ff082c4d97f1edf880"
PLATFORMS = {  # compiler, its flags, what configures CMake for it, what runs its programs
    "linux-x64": ("cc", [], [], []),
    "linux-x86": ("cc", ["-m32"], ["-DCMAKE_C_FLAGS=-m32", "-DCMAKE_LIBRARY_ARCHITECTURE=i386-linux-gnu"], []),
    "windows-x86": ("i686-w64-mingw32-gcc-posix", [],
                    ["-DCMAKE_SYSTEM_NAME=Windows", "-DCMAKE_C_COMPILER=i686-w64-mingw32-gcc-posix"], [WINE]),
}


def run(*command, **options):
    done = subprocess.run(command, capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"failed: {' '.join(command)}\n{done.stdout}{done.stderr}")
    return done.stdout.replace("\r", "")


def expect(condition, what):
    if not condition:
        sys.exit(f"failed: {what}")


def version():
    header = open(os.path.join(SOURCE, "include/morvane/version.h"), encoding="ascii").read()
    found = re.search(r'MORVANE_VERSION +"(.*)"', header)[1]
    parts = re.findall(r"VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header)
    expect(".".join(parts) == found, f"version.h says {found} and {parts}")
    changes = open(os.path.join(SOURCE, "CHANGELOG.md"), encoding="utf-8").read()
    expect(re.search(r"^## (\S+)", changes, re.M)[1] == found, f"the first entry of CHANGELOG.md is that of {found}")
    return found


def check_sums(folder):
    lines = open(os.path.join(folder, "SHA256SUMS"), encoding="utf-8").read().splitlines()
    sums = dict(reversed(line.split("  ", 1)) for line in lines)
    files = {os.path.relpath(os.path.join(place, name), folder)
             for place, _, names in os.walk(folder) for name in names} - {"SHA256SUMS"}
    expect(set(sums) == files, f"SHA256SUMS names every file of {folder}: {set(sums) ^ files}")
    for name, value in sums.items():
        with open(os.path.join(folder, name), "rb") as file:
            expect(hashlib.sha256(file.read()).hexdigest() == value, f"sum of {name}")


def check_runs(program, emulator, shared):
    libraries = {name for name in needed(program) if "morvane" in name.lower()}
    expect(bool(libraries) == shared, f"{program} needs {libraries or 'no library of ours'}")
    if program.endswith(".exe"):
        expect({name.lower() for name in needed(program)} <= DLLS | {"morvanecrypto.dll"}, f"{program} needs other DLLs")
    expect(run(*emulator, program) == f"{SHA0_OF_ABC} {version()}\n", f"output of {program}")


def check_consumers(preset, prefix, libraries, work):
    """Programs built with what lies in prefix: by CMake and by pkg-config, shared and static."""
    compiler, flags, configuration, emulator = PLATFORMS[preset]
    suffix = ".exe" if emulator else ""
    build = os.path.join(work, "build")
    run("cmake", "-S", CONSUMER, "-B", build, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DWANTED_VERSION={version()}", *configuration)
    run("cmake", "--build", build)
    programs = os.path.join(build, "bin")
    environment = dict(os.environ, PKG_CONFIG_LIBDIR=os.path.join(libraries, "pkgconfig"))
    expect(run("pkg-config", "--modversion", "morvanecrypto", env=environment) == version() + "\n", "version of the .pc file")
    for name, options, extra in (("shared", [], [] if emulator else [f"-Wl,-rpath,{libraries}"]),
                                 ("static", ["--static"], ["-static"])):
        words = run("pkg-config", *options, "--cflags", "--libs", "morvanecrypto", env=environment).split()
        run(compiler, *flags, os.path.join(CONSUMER, "client.c"), "-o", os.path.join(programs, f"pc_{name}{suffix}"), *extra,
            *words)
    if emulator:
        for dll in glob.glob(os.path.join(prefix, "bin", "*.dll")):
            shutil.copy(dll, programs)
    for name in ("cmake_shared", "cmake_static", "pc_shared", "pc_static"):
        check_runs(os.path.join(programs, name + suffix), emulator, name.endswith("shared"))


def check_microsoft(prefix, work):
    """The .def files name what the DLLs export; a program of Microsoft's ABI runs with the import library."""
    for library in ("MorvaneCrypto", "MorvaneCommon"):
        with open(os.path.join(prefix, "lib", library + ".def"), encoding="ascii") as file:
            head, _, *names = file.read().split()[1:]
        found = exports.names_in_library(os.path.join(prefix, "bin", library + ".dll"))
        expect(head == library + ".dll" and set(names) == set(found), f"{library}.def has the names of the DLL")
    client = os.path.join(prefix, "bin", "msvc_client.exe")
    run("clang", "--target=i686-pc-windows-msvc", "-ffreestanding", "-O1", f"-I{prefix}/include", "-c",
        f"{SOURCE}/tests/exports/msvc_client.c", "-o", f"{work}/client.obj")
    run("lld-link", "/nologo", "/nodefaultlib", "/entry:start", "/subsystem:console", f"/out:{client}",
        f"{work}/client.obj", f"{prefix}/lib/MorvaneCrypto.lib")
    run(WINE, client)


def follow_readme(prefix, libraries, work):
    """The commands of README.md, as they stand there."""
    folder = os.path.join(work, "readme")
    os.mkdir(folder)
    shutil.copy(os.path.join(SOURCE, "README.md"), folder)
    shutil.copy(os.path.join(SOURCE, "examples", "hello.c"), folder)
    os.symlink(os.path.join(prefix, "bin", "morvane"), os.path.join(folder, "run"))
    with open(os.path.join(SOURCE, "README.md"), encoding="utf-8") as file:
        commands = re.findall(r"^    ((?:\./run|cc) .*)$", file.read(), re.M)
    expect(len(commands) > 4, "README.md has commands")
    environment = dict(os.environ, PKG_CONFIG_LIBDIR=os.path.join(libraries, "pkgconfig"), LD_LIBRARY_PATH=libraries)
    for command in commands:
        run("sh", "-c", command, cwd=folder, env=environment)


def check_tree(preset, prefix, libraries, work):
    emulator = PLATFORMS[preset][3]
    command = os.path.join(prefix, "bin", "morvane.exe" if emulator else "morvane")
    environment = dict(os.environ, LD_LIBRARY_PATH=libraries) if "/usr/" in libraries else os.environ
    expect(run(*emulator, command, "version", env=environment) == f"morvane {version()}\n", "version of the command")
    for library in glob.glob(os.path.join(prefix, "bin", "*.dll")) or glob.glob(os.path.join(libraries, "*.so.*.*.*")):
        expect(check_library.main(library) == 0, f"{library} asks for what it should")
    for program in glob.glob(os.path.join(prefix, "bin", "*.exe")) + glob.glob(os.path.join(prefix, "bin", "*.dll")):
        expect({name.lower() for name in needed(program)} <= DLLS | {"morvanecrypto.dll"}, f"{program} needs other DLLs")
    check_consumers(preset, prefix, libraries, work)
    if preset == "linux-x64":
        follow_readme(prefix, libraries, work)
    if emulator:
        check_microsoft(prefix, work)


def unpack_debian(folder, architecture, work):
    """The three packages in one tree; each asks for a C library that is new enough for what it holds."""
    root = os.path.join(work, "root")
    packages = glob.glob(os.path.join(folder, f"*_{architecture}.deb"))
    expect(len(packages) == 3, f"there are three packages for {architecture}")
    for package in packages:
        alone = os.path.join(work, os.path.basename(package))
        for place in (alone, root):
            run("dpkg-deb", "-x", package, place)
        programs = glob.glob(alone + "/usr/bin/*") + glob.glob(alone + "/usr/lib/*/*.so.*.*")
        wanted = [(int(major), int(minor)) for program in programs
                  for major, minor in re.findall(r"GLIBC_(\d+)\.(\d+)", run("objdump", "-T", program))]
        given = re.search(r"libc6 \(>= (\d+)\.(\d+)\)", run("dpkg-deb", "-f", package, "Depends"))
        expect(not wanted or (given and (int(given[1]), int(given[2])) >= max(wanted)), f"{package} needs glibc {wanted}")
    return root


def main(folder, *presets):
    run("sha256sum", "--check", "SHA256SUMS", cwd=folder)
    for preset in presets:
        with tempfile.TemporaryDirectory() as work:
            archive, = glob.glob(os.path.join(folder, f"*-{preset}.[zt]*"))
            shutil.unpack_archive(archive, os.path.join(work, "archive"))
            prefix, = glob.glob(os.path.join(work, "archive", "*"))
            check_sums(prefix)
            for file in glob.glob(os.path.join(prefix, "bin", "*")):
                os.chmod(file, 0o755)
            check_tree(preset, prefix, os.path.join(prefix, "lib"), work)
        if preset.startswith("linux"):
            architecture, triplet = {"linux-x64": ("amd64", "x86_64"), "linux-x86": ("i386", "i386")}[preset]
            with tempfile.TemporaryDirectory() as work:
                root = unpack_debian(folder, architecture, work)
                check_tree(preset, os.path.join(root, "usr"), f"{root}/usr/lib/{triplet}-linux-gnu", work)
        print(f"{preset}: the packages are good")


if __name__ == "__main__":
    main(*sys.argv[1:])
