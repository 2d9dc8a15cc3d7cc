"""What the tests of the morvane command have in common: each runs the command in a folder of its own.

A file of tests is run as test_NAME.py TOOL [EMULATOR...].
"""

import errno
import hashlib
import os
import subprocess
import sys
import tempfile
import unittest

GOOD, MISMATCH, USAGE, INPUT_OUTPUT, FAILED_SELF_TEST = range(5)

if len(sys.argv) < 2:
    sys.exit(f"usage: {sys.argv[0]} TOOL [EMULATOR...]")
COMMAND = sys.argv[2:] + [os.path.abspath(sys.argv[1])]
IS_WINDOWS = sys.argv[1].endswith(".exe")  # Wine is slow to start: fewer rows of the long tables

VECTORS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "vectors")
TEXT = bytes(range(0x30, 0x45))


def lines_of(name):
    """Those of a file of vectors, without comments."""
    with open(os.path.join(VECTORS, name), encoding="ascii") as file:
        return [line.rstrip("\n") for line in file if line.strip() and line[0] != "#"]


def key_of(size):
    return bytes((i * 37 + 1) & 255 for i in range(size))


def iv_of(name):
    return bytes(range(0xa0, 0xb0 if name.startswith("seed") else 0xa8))


def sha1(data):
    return hashlib.sha1(data).hexdigest()


def read_terminal(terminal, count):
    """The first octets written to a terminal, or all when it has been closed; they may come in any number of pieces."""
    shown = b""
    try:
        while len(shown) < count and (piece := os.read(terminal, count - len(shown))):
            shown += piece
    except OSError as error:
        if error.errno != errno.EIO:
            raise
    os.close(terminal)
    return shown


class ToolTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir="/tmp", prefix="morvane-tool-")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)

    def write(self, name, data):
        with open(name, "wb") as file:
            file.write(data)

    def read(self, name):
        with open(name, "rb") as file:
            return file.read()

    def write_zeros(self, name, size):
        with open(name, "wb") as file:
            file.truncate(size)

    def run_tool(self, *arguments, code=GOOD, stdin=b"", **streams):
        """Returns standard output and standard error; checks the exit code and that every error is explained."""
        streams = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams}
        done = subprocess.run([*COMMAND, *arguments], input=stdin, timeout=120, **streams)
        self.assertEqual(done.returncode, code, (arguments, done))
        if code in (USAGE, INPUT_OUTPUT):
            self.assertRegex(done.stderr, rb"^morvane: \S")
        elif code == GOOD and done.stderr is not None:
            self.assertEqual(done.stderr, b"")
        return done.stdout, done.stderr

    def openssl(self, *arguments, code=0):
        done = subprocess.run(["openssl", *arguments], capture_output=True, timeout=120)
        self.assertEqual(done.returncode, code, (arguments, done))
        return done.stdout
