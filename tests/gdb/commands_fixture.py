"""What the tests of the commands that are added to GDB have in common: the programs, which are the
arguments <consolidator> <consolidator-inspect> <gdb>, files for them, and GDB in a folder."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(PROJECT / "tests/formats"))

from samples import items, text, u32  # encoders of the format

CONSOLIDATOR, INSPECTOR, GDB = (os.path.abspath(word) for word in sys.argv[1:])
EXAMPLES = PROJECT / "examples"
FULL_FILE = PROJECT / "fuzz/corpus/Container/every-kind-and-every-field"
INPUTS = ["-h", "first-link.hierarchy", "-h", "second-link.hierarchy", "-k", "vadd.xml", "-s",
          "scale.dbg", "-x", "fir_auxiliary.xml", "-l", "design.ll"]
COMMANDS = ["consolidated-file", "info kernels", "info kernel", "info kernel-bits",
            "info kernel-conditions"]
INFO_COMMANDS = COMMANDS[1:]
NO_FILE = 'No consolidated file is open.  Use the "consolidated-file" command.\n'
READING = "Reading kernels from {0}...\n"
WITHOUT_DWARF = READING + "(No DWARF found in {0})\n"
NO_SYMBOLS = (
    READING
    + "Reading symbols from the DWARF in {0}...\n"
    + "warning: {0}: its DWARF gives no symbols: can't read symbols: file format not recognized.\n"
)
TABLE = "Type     Instances  Arguments  Variables  Conditions  Name\n"
VADD = "OpenCL           3          4          0           2  vadd\n"
SCALE = "C                1          0          2           1  scale\n"
FIR = "HLS              1          3          0           0  fir\n"


def location(first, second):
    return u32(first) + u32(second)


def variable(name, register, c_type=b"int", bits=items()):
    return text(name) + text(register) + text(c_type) + bits


def kernel(name, paths, arguments=(), variables=(), registers=(), conditions=()):
    """The record of an OpenCL kernel."""
    return (
        text(name)
        + items(*map(text, paths))
        + u32(0)
        + items(*arguments)
        + items(*variables)
        + items(*(text(rtl_name) + items(*bits) for rtl_name, bits in registers))
        + items(*conditions)
        + items()
    )


def source_line(condition, line, file):
    return u32(2) + text(condition) + u32(line) + text(file)


def container(*kernels):
    """A consolidated file of nothing but kernels."""
    records = items(*kernels)
    entry = u32(2) + u32(0) + u32(40) + u32(0) + u32(len(records)) + u32(0)
    return b"\xd4\xda\xef\xbe" + u32(1) + u32(1) + u32(1) + entry + records


class CommandsTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.temporary = self.folder / "a folder's"  # a name that must be quoted
        self.temporary.mkdir()
        (self.folder / "bin").mkdir()
        (self.folder / "bin/consolidator-inspect").symlink_to(INSPECTOR)

    def write(self, name, content):
        (self.folder / name).write_bytes(content)
        return name

    def consolidate(self, name, *words):
        """Makes a file of the inputs of the example and more, and returns its name."""
        inputs = [CONSOLIDATOR, "-c", "-f", self.folder / name, *INPUTS, *words]
        subprocess.run(inputs, cwd=EXAMPLES, check=True)
        return name

    def gdb(self, *commands):
        """What GDB prints for commands, messages included."""
        with self.started("-batch", commands, subprocess.DEVNULL, subprocess.PIPE) as gdb:
            printed, _ = gdb.communicate()
        self.assertEqual(list(self.temporary.iterdir()), [])
        return printed.decode()

    def started(self, option, commands, stdin, stdout):
        """A process of GDB that runs commands."""
        words = [word for command in commands for word in ("-ex", command)]
        environment = {"PATH": str(self.folder / "bin"), "HOME": str(self.folder), "TERM": "dumb",
                       "TMPDIR": str(self.temporary), "LC_ALL": "C.UTF-8"}
        return subprocess.Popen([GDB, "-q", option, *words], cwd=self.folder, env=environment,
                                stdin=stdin, stdout=stdout, stderr=subprocess.STDOUT,
                                start_new_session=True)

    def asked(self, name, *commands):
        """What GDB prints for commands about a file that it opens without a warning."""
        printed = self.gdb(f"consolidated-file {name}", *commands)
        opened = WITHOUT_DWARF.format(name)
        self.assertEqual(printed[: len(opened)], opened)
        return printed[len(opened) :]

    def replace_inspector(self, script):
        program = self.folder / "bin/consolidator-inspect"
        program.unlink()
        program.write_text(f"#!/bin/sh\n{script}\n")
        program.chmod(0o755)
