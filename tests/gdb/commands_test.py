"""Holds the commands that are added to GDB to what they print.

usage: commands_test.py <consolidator> <consolidator-inspect> <gdb>
"""

import os
import pathlib
import pty
import shutil
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


class HelpTest(CommandsTest):
    def test_help_begins_with_a_sentence_and_the_usage(self):
        for command in COMMANDS:
            sentence, usage, *_ = self.gdb(f"help {command}").splitlines()
            self.assertRegex(sentence, r"^[A-Z].*\.$")
            self.assertTrue(usage.startswith(f"Usage: {command} "), usage)

    def test_help_fits_on_a_terminal(self):
        for command in COMMANDS:
            for line in self.gdb(f"help {command}").splitlines():
                self.assertLessEqual(len(line), 80)

    def test_names_may_be_abbreviated(self):
        self.assertEqual(self.gdb("consolid", "info kernel-b x"),
                         "No consolidated file now.\n" + NO_FILE)


class AnswersTest(CommandsTest):
    def test_lists_kernels(self):
        self.assertEqual(self.asked(self.consolidate("file"), "info kernels"),
                         TABLE + VADD + SCALE + FIR)

    def test_finds_variables_of_kernels_whose_name_has_colons(self):
        name = self.write("file", container(kernel(b"a::b", [], [variable(b"x", b"r")])))
        self.assertIn('Kernel "a::b", argument x: ', self.asked(name, "info kernel-bits a::b::x"))

    def test_lists_kernels_that_match(self):
        name = self.consolidate("file")
        self.assertEqual(self.asked(name, "info kernels a"), TABLE + VADD + SCALE)
        self.assertEqual(self.asked(name, "info kernels ^f.r$"), TABLE + FIR)
        self.assertEqual(self.asked(name, "info kernels x"), "No kernels matched.\n")
        self.assertEqual(self.asked(self.write("none", container()), "info kernels"),
                         "No kernels in none.\n")

    def test_describes_a_kernel(self):
        self.assertEqual(self.asked(self.consolidate("file"), "info kernel  scale "), """\
Kernel "scale", type C:
  Instances:
    /design/region/scale_1
  No arguments.
  Variables:
    i: int, 32 bits, register i_reg
    product: int, 32 bits, register product_reg
  Conditions:
    kernels.c:11: == 3'b010 $i/state
  No block RAMs.
""")

    def test_describes_all_kernels_of_a_name(self):
        name = self.write("file", container(kernel(b"a b", [b"/1"]), kernel(b"a b", [b"/2"])))
        printed = self.asked(name, "info kernel a b")
        self.assertEqual(printed.count('Kernel "a b"'), 2)
        self.assertLess(printed.index("    /1\n"), printed.index("    /2\n"))

    def test_tells_locations_of_bits(self):
        expected = """\
Kernel "scale", variable product: int, 32 bits, register product_reg:
  In /design/region/scale_1:
    /design/region/scale_1/product_reg:
      bit 0   0x401f80:96
      bit 1   0x401f80:127
      bit 2   0x401f80:159
"""
        name = self.consolidate("file")
        self.assertEqual(self.asked(name, "info kernel-bits product"), expected)
        self.assertEqual(self.asked(name, "info kernel-bits scale::product"), expected)

    def test_tells_instances_without_locations(self):
        self.assertEqual(self.asked(self.consolidate("file"), "info kernel-bits vadd::a"), """\
Kernel "vadd", argument a: int*, 64 bits, register a:
  In /design/region/vadd_1:
    No location is known.
  In /design/region/vadd_2:
    No location is known.
  In /design/region/vadd_3:
    No location is known.
""")

    def test_tells_bits_of_each_instance_and_kernel(self):
        bits = [location(0, 0), location(16, 7)]
        name = self.write("file", container(
            kernel(b"k", [b"/t/k_1", b"/t/k_10"], [variable(b"a", b"r")],
                   registers=[(b"/t/k_10/m/r", bits), (b"/t/k_10/other", bits)]),
            kernel(b"r", [b"/t/r"], registers=[(b"/t/r/a", bits)]),
            kernel(b"k", [], variables=[variable(b"a", b"", b"")]),
        ))
        expected = """\
Kernel "k", argument a: int, 32 bits, register r:
  In /t/k_1:
    /t/k_10/m/r, which may be of another instance:
      bit 0   0x0:0 (or not known)
      bit 1   0x10:7
  In /t/k_10:
    /t/k_10/m/r:
      bit 0   0x0:0 (or not known)
      bit 1   0x10:7
Kernel "k", variable a: 32 bits, register :
  The kernel has no instances.
"""
        self.assertEqual(self.asked(name, "info kernel-bits a"), expected)
        self.assertEqual(self.asked(name, "info kernel-bits k::a"), expected)

    def test_leaves_out_registers_of_other_instances_where_there_is_an_own_one(self):
        registers = [(b"/t/k_1/r", [location(1, 2)]), (b"/t/k_10/r", [location(3, 4)])]
        name = self.write("file", container(
            kernel(b"k", [b"/t/k_1"], [variable(b"a", b"r")], registers=registers)))
        printed = self.asked(name, "info kernel-bits a")
        self.assertIn("0x1:2", printed)
        self.assertNotIn("0x3:4", printed)

    def test_tells_of_instances_that_are_too_many_to_look_at(self):
        paths = [b"/" + b"t" * count for count in range(70)]
        name = self.write("file", container(
            kernel(b"k", paths, [variable(b"a", b"r")], registers=[(paths[-1] + b"/r", [])])))
        printed = self.asked(name, "info kernel-bits a")
        self.assertTrue(printed.endswith("  More instances may have the same registers.\n"))

    def test_tells_bits_that_are_stored_with_the_variable(self):
        stored = items(items(), items(location(5, 6)))
        name = self.write("file", container(
            kernel(b"k", [b"/1", b"/2"], [variable(b"a", b"r", bits=stored)])))
        self.assertEqual(self.asked(name, "info kernel-bits a").partition("\n")[2], """\
  In /1:
    No location is known.
  In /2:
    stored with the variable:
      bit 0   0x5:6
""")

    def test_tells_conditions_of_a_line_in_each_instance(self):
        conditions = [source_line(b"== $i/s && $i/t $i", 7, b"src/k.c"),
                      source_line(b"never", 8, b"src/k.c")]
        name = self.write("file", container(
            kernel(b"k", [b"/1", b"/2"], [variable(b"a", b"a", b"double")], conditions=conditions),
            kernel(b"l", [], conditions=conditions)))
        expected = """\
Kernel "k" is at line 7 of "src/k.c" when:
  == /1/U0/s && /1/U0/t $i
  == /2/U0/s && /2/U0/t $i
Kernel "l" is at line 7 of "src/k.c" when:
  == $i/s && $i/t $i (it has no instances)
"""
        for file in ("src/k.c", "k.c", "/home/user/src/k.c", "./src//k.c", "../src/k.c",
                     "src/below/../k.c"):
            self.assertEqual(self.asked(name, f"info kernel-conditions {file}:7"), expected)
        for file in "other/k.c", "c", "/":
            self.assertEqual(self.asked(name, f"info kernel-conditions {file}:07"),
                             f'No kernel has a condition for line 7 of "{file}".\n')

    def test_reads_every_field(self):
        shutil.copy(FULL_FILE, self.folder / "file")
        kernels = self.gdb("consolidated-file file", "info kernels").partition(TABLE)[2]
        self.assertTrue(kernels)
        for line in kernels.splitlines():
            name = line.split()[-1]
            printed = self.gdb("consolidated-file file", f"info kernel {name}")
            self.assertIn(f'Kernel "{name}", type ', printed)
            for words in "nstances", "rguments", "ariables", "onditions", "lock RAMs":
                self.assertIn(words, printed)


class CompletionTest(CommandsTest):
    def complete(self, name, words):
        return self.asked(name, f"complete {words}").splitlines()

    def test_completes_names(self):
        name = self.consolidate("file")
        for words, expected in {
            "info kernel ": ["fir", "scale", "vadd"],
            "info kernel s": ["scale"],
            "info kernels v": ["vadd"],
            "info kernel-bits p": ["product"],
            "info kernel-bits scale::": ["scale::i", "scale::product"],
            "info kernel-conditions ": ["kernels.c:11"],
            "info kernel-conditions kernels.c:1": ["kernels.c:11"],
            "info kernel none": [],
        }.items():
            command = words[: words.rindex(" ") + 1]
            self.assertEqual(self.complete(name, words), [command + each for each in expected])

    def test_completes_file_names(self):
        name = self.consolidate("a-file")
        self.assertEqual(self.complete(name, "consolidated-file a-"), ["consolidated-file a-file"])

    def test_completes_nothing_without_a_file(self):
        self.assertEqual(self.gdb("complete info kernel ", "complete info kernel-bits "), "")

    def test_leaves_out_names_that_cannot_be_typed(self):
        name = self.write("file", container(kernel(b"a\x1b", []), kernel(b"ab", [])))
        self.assertEqual(self.complete(name, "info kernel a"), ["info kernel ab"])

    def test_leaves_out_names_that_the_command_refuses(self):
        lines = [source_line(b"", line, file)
                 for line, file in enumerate((b"", b"./", b" k.c", b"k.c"))]
        name = self.write("file", container(
            kernel(b" lead", [], [], [variable(text, b"r") for text in (b"", b" v", b"v ", b"v")]),
            kernel(b"trail ", []), kernel(b"", [], conditions=lines)))
        self.assertEqual(self.complete(name, "info kernel "), [])
        self.assertEqual(self.complete(name, "info kernel-bits "), ["info kernel-bits v"])
        self.assertEqual(self.complete(name, "info kernel-conditions "),
                         ["info kernel-conditions k.c:3"])

    def test_completes_names_with_blanks_inside(self):
        name = self.write("file", container(kernel(b"a b", [], [], [variable(b" v", b"r")])))
        self.assertEqual(self.complete(name, "info kernel-bits a"), ["info kernel-bits a b:: v"])
        self.assertIn("variable  v: int", self.asked(name, "info kernel-bits a b:: v"))


# A program whose second thread stops where it is called from another function.
THREADS = """\
#include <pthread.h>
void stop(void) {}
void* run(void* nothing) { stop(); return nothing; }
int main(void) {
  pthread_t thread;
  return pthread_create(&thread, 0, run, 0) || pthread_join(thread, 0);
}
"""


class OpeningTest(CommandsTest):
    def compile(self):
        """DWARF of the example."""
        dwarf = self.folder / "kernels.o"
        subprocess.run(["gcc", "-g", "-c", EXAMPLES / "kernels.c", "-o", dwarf], check=True)
        return dwarf

    def test_reads_dwarf_as_symbols(self):
        name = self.consolidate("file", "-d", self.compile())
        self.assertRegex(self.gdb(f"consolidated-file {name}", "info line scale"),
                         "^Reading kernels from file...\nReading symbols from the DWARF in file...\n"
                         r'Line 9 of ".*kernels\.c" starts at address .*\n$')

    def test_removes_symbols_with_the_file(self):
        name = self.consolidate("file", "-d", self.compile())
        other = self.consolidate("other")
        opening = f"consolidated-file {name}"
        for words in "consolidated-file", f"consolidated-file {other}", "symbol-file":
            printed = self.gdb(opening, words, "info line scale")
            self.assertNotIn("starts at", printed)
            printed = self.gdb(opening, words, opening, "info line scale")
            self.assertIn("starts at", printed)

    def test_removes_symbols_where_the_folder_of_temporary_files_is_a_link(self):
        name = self.consolidate("file", "-d", self.compile())
        (self.folder / "link").symlink_to(self.temporary)
        printed = self.gdb(f"python import os; os.environ['TMPDIR'] = '{self.folder}/link'",
                           f"consolidated-file {name}", "consolidated-file", "info line scale")
        self.assertNotIn("starts at", printed)

    def test_removes_symbols_of_another_inferior(self):
        name = self.consolidate("file", "-d", self.compile())
        printed = self.gdb(f"consolidated-file {name}", "add-inferior", "inferior 2",
                           "consolidated-file", "python print(gdb.selected_inferior().num)",
                           "inferior 1", "info line scale")
        self.assertIn("No consolidated file now.\n2\n", printed)
        self.assertEqual(printed.count("[Switching to "), 2)  # by the commands that say so
        self.assertNotIn("starts at", printed)

    def test_keeps_the_thread_and_frame_that_are_selected(self):
        (self.folder / "threads.c").write_text(THREADS)
        subprocess.run(["gcc", "-g", "-pthread", "threads.c", "-o", "threads"], cwd=self.folder,
                       check=True)
        name = self.consolidate("file", "-d", self.compile())
        opening = f"consolidated-file {name}"
        show = "python print(gdb.selected_thread().num, gdb.selected_frame().name())"
        for start in [("file threads", opening),
                      (opening, "add-inferior -exec threads", "inferior 2")]:
            printed = self.gdb(*start, "break stop", "run", "up", "shell /usr/bin/touch file",
                               "info kernels f", show, "consolidated-file", show)
            self.assertEqual(printed.partition("`file' has changed; reading it again.\n")[2],
                             "Reading kernels from file...\n"
                             "Reading symbols from the DWARF in file...\n" + TABLE + FIR
                             + "2 run\nNo consolidated file now.\n2 run\n")

    def test_keeps_the_file_when_the_commands_are_sourced_again(self):
        name = self.consolidate("file")
        source = PROJECT / "share/gdb/python/gdb/command/consolidated_file.py"
        self.assertEqual(self.asked(name, f"source {source}", "info kernels f"), TABLE + FIR)

    def test_warns_of_dwarf_that_gdb_cannot_read(self):
        dwarf = self.compile()
        rubbish = self.write("rubbish", b"\xff" * 4096)
        subprocess.run(["objcopy", "--update-section", f".debug_info={rubbish}", dwarf],
                       cwd=self.folder, check=True)
        name = self.consolidate("file", "-d", dwarf)
        self.assertRegex(self.gdb(f"consolidated-file {name}"),
                         "\nwarning: (?i:dwarf error): .*file.*\n$")

    def test_keeps_a_copy_of_the_dwarf_while_the_file_is_open(self):
        name = self.consolidate("file", "-d", self.compile())
        opening = f"consolidated-file {name}"
        show = "python print(os.listdir(os.environ['TMPDIR']))"
        printed = self.gdb("python import os", opening, opening, show, "consolidated-file", show)
        self.assertEqual(printed.count("gdb-consolidated-"), 1)
        self.assertTrue(printed.endswith("[]\n"))

    def test_warns_of_dwarf_that_gives_no_symbols(self):
        name = self.consolidate("file", "-d", "kernels.c")
        self.assertEqual(self.gdb(f"consolidated-file {name}", "info kernels f"),
                         NO_SYMBOLS.format(name) + TABLE + FIR)

    def test_takes_names_as_gdb_does(self):
        self.consolidate("a b")
        for words in "a\\ b", "'a b'", '"a b"', "~/a\\ b":
            printed = self.gdb(f"consolidated-file {words}", "info kernels f")
            self.assertEqual(printed.partition(TABLE)[2], FIR)

    def test_refuses_what_is_no_consolidated_file(self):
        os.mkfifo(self.folder / "pipe")
        self.write("text", b"no consolidated file")
        for words, message in {
            "missing": "missing: No such file or directory.\n",
            ".": ".: not a regular file.\n",
            "pipe": "pipe: not a regular file.\n",
            "a b": "Only one file name is allowed.\n",
            '""': "The file name is empty.\n",
            "text": READING.format("text")
            + "text: The file does not begin with the magic of a consolidated file.\n",
        }.items():
            self.assertEqual(self.gdb(f"consolidated-file {words}", "info kernels"),
                             message + NO_FILE)

    def test_refuses_a_relative_name_in_a_folder_that_is_gone(self):
        (self.folder / "gone").mkdir()
        self.assertEqual(self.gdb("cd gone", "shell /bin/rmdir ../gone", "consolidated-file file"),
                         "file: No such file or directory.\n")

    def test_keeps_the_file_when_another_cannot_be_opened(self):
        self.assertEqual(self.asked(self.consolidate("file"), "consolidated-file missing",
                                    "info kernels f"),
                         "missing: No such file or directory.\n" + TABLE + FIR)

    def test_warns_of_a_file_that_is_not_complete(self):
        name = self.consolidate("file")
        cut = self.write("cut", (self.folder / name).read_bytes()[:-1])
        self.assertEqual(self.gdb(f"consolidated-file {cut}", "info kernels"),
                         READING.format(cut)
                         + "warning: cut: not complete; there may have been more kernels\n"
                         + "(No DWARF found in cut)\n" + TABLE + VADD + SCALE)

    def test_warns_of_a_newer_version(self):
        newer = self.write("file", container()[:4] + u32(2) + container()[8:])
        self.assertRegex(self.gdb(f"consolidated-file {newer}"),
                         "^.*\nwarning: file: .*newer version.*\n.*\n$")

    def test_survives_damage(self):
        name = self.consolidate("file", "-d", "kernels.c")
        whole = (self.folder / name).read_bytes()
        commands = [self.write(f"cut{size}", whole[:size]) for size in range(0, len(whole), 97)]
        printed = self.gdb(*(f"consolidated-file {cut}" for cut in commands), "info kernels")
        self.assertNotIn("Python", printed)
        self.assertIn(TABLE, printed)

    def test_reads_a_file_again_that_has_changed(self):
        name = self.consolidate("file")
        self.consolidate("other")
        self.write("other", container(kernel(b"new", [])))
        printed = self.asked(name, "shell /bin/cp other file", "info kernels", "info kernels")
        new = TABLE + "OpenCL           0          0          0           0  new\n"
        self.assertEqual(printed, "`file' has changed; reading it again.\n"
                         + WITHOUT_DWARF.format("file") + new + new)

    def test_reads_a_file_again_from_where_it_was_opened(self):
        name = self.consolidate("file")
        (self.folder / "below").mkdir()
        self.write("below/file", container(kernel(b"other", [])))
        printed = self.asked(name, "cd below", "shell /usr/bin/touch ../file", "info kernels f")
        self.assertEqual(printed.partition("`file' has changed")[2], "; reading it again.\n"
                         + WITHOUT_DWARF.format("file") + TABLE + FIR)

    def test_keeps_a_file_that_is_gone(self):
        name = self.consolidate("file")
        self.assertEqual(self.asked(name, "shell /bin/rm file", "info kernels f"), TABLE + FIR)
        self.assertRegex(self.asked(self.consolidate(name), "shell /bin/rm file",
                                    "info kernel-bits i"), "^file: No such file or directory.?\n$")


class RefusalTest(CommandsTest):
    def test_refuses_questions_without_a_file(self):
        for command in INFO_COMMANDS:
            self.assertEqual(self.gdb(command), NO_FILE)

    def test_refuses_arguments(self):
        name = self.consolidate("file")
        for command, message in {
            "info kernel": "Argument required (kernel name).",
            "info kernel-bits": "Argument required (variable name).",
            "info kernel-conditions": "Argument required (FILE:LINE).",
            "info kernel none": 'No kernel "none" in file.',
            "info kernel-bits none": 'No argument or variable "none" in file.',
            "info kernel-bits vadd::product": 'No argument or variable "vadd::product" in file.',
            "info kernel-conditions 11": '"11" is not of the form FILE:LINE.',
            "info kernel-conditions k.c:": '"k.c:" is not of the form FILE:LINE.',
            "info kernel-conditions k.c:-1": '"k.c:-1" is not of the form FILE:LINE.',
            f"info kernel-conditions k.c:{'1' * 5000}":
                f'"k.c:{"1" * 5000}" is not of the form FILE:LINE.',
            "info kernels [": "Invalid regexp: unterminated character set at position 0.",
            "info kernels [[:alpha:]]": "Invalid regexp: Possible nested set at position 1.",
            "info kernels a{99999999999999999999}":
                "Invalid regexp: the repetition number is too large.",
        }.items():
            self.assertEqual(self.asked(name, command), message + "\n")

    def test_says_that_bits_cannot_be_looked_up(self):
        name = self.write("file", container(
            kernel(b"k", [b"/1"], [variable(b"1:2", b"r"), variable(b"\xff", b"r")])))
        for wanted in "1:2", "\ufffd":
            self.assertEqual(self.asked(name, f"info kernel-bits {wanted}"),
                             f'The bits of "{wanted}" cannot be looked up by its name.\n')

    def test_shows_no_bits_of_another_kernel_whose_name_reads_alike(self):
        kernels = [kernel(name, [b"/1"], [variable(text, b"r")])
                   for name, text in ((b"k1", b"a\xff"), (b"k2", "a\ufffd".encode()))]
        name = self.write("file", container(*kernels))
        self.assertEqual(self.asked(name, "info kernel-bits a\ufffd"),
                         'The bits of "a\ufffd" cannot be looked up by its name.\n')
        self.assertIn('Kernel "k2"', self.asked(name, "info kernel-bits k2::a\ufffd"))

    def test_says_when_the_inspector_is_missing(self):
        name = self.consolidate("file")
        (self.folder / "bin/consolidator-inspect").unlink()
        self.assertEqual(self.gdb(f"consolidated-file {name}"), READING.format(name)
                         + "consolidator-inspect cannot be run: No such file or directory.\n")

    def test_says_when_the_inspector_gives_no_answer(self):
        name = self.consolidate("file")
        for script, message in {
            "echo '{\"format\":\"consolidator-inspect/2\",\"kernels\":[]}'":
                "is of a version that writes no consolidator-inspect/1.",
            "echo '{\"format\":\"consolidator-inspect/1\",\"kernels\":['":
                "gives no answer: .*",
            "echo '{\"format\":\"consolidator-inspect/2\",\"kernels\":[{}]}'":
                "is of a version that writes no consolidator-inspect/1.",
            "echo '{\"format\":\"consolidator-inspect/1\",\"kernels\":[]}'":
                "is of a version that writes no consolidator-inspect/1.",
            "echo '[]'": "gives no answer: it is no object.",
            "echo '[{\"kernels\":[]}]'": "gives no answer: it is no object.",
            "echo '{\"kernels\":[7'; /usr/bin/yes": "gives no answer: a kernel is no object.",
            "exit 0": "gives no answer: .*",
            "exit 3": "ended with status 3.",
            "kill -9 $$": "ended with signal 9.",
            "echo '{\"format\":\"consolidator-inspect/1\",\"error\":{}}'; exit 2":
                "ended with status 2.",
        }.items():
            self.replace_inspector(script)
            self.assertRegex(self.gdb(f"consolidated-file {name}", "info kernels"),
                             f"^{READING.format(name)}consolidator-inspect {message}\n{NO_FILE}$")

    def test_says_what_the_inspector_says_of_its_end(self):
        name = self.consolidate("file", "-d", "kernels.c")
        for end in "exit 2", "exit 127", "kill -9 $$":
            says = f"echo 'consolidator-inspect: no memory' >&2; {end}"
            self.replace_inspector(says)
            self.assertEqual(self.gdb(f"consolidated-file {name}"),
                             READING.format(name) + "file: no memory\n")
            self.replace_inspector(f'case $1 in extract) {says} ;; esac; exec {INSPECTOR} "$@"')
            self.assertIn("warning: file: its DWARF gives no symbols: file: no memory\n",
                          self.gdb(f"consolidated-file {name}"))

    def test_says_when_the_inspector_ends_without_the_dwarf(self):
        name = self.consolidate("file", "-d", "kernels.c")
        for end, how in {"kill -9 $$": "signal 9", "exit 2": "status 2"}.items():
            self.replace_inspector(f'case $1 in extract) {end} ;; esac; exec {INSPECTOR} "$@"')
            self.assertIn("warning: file: its DWARF gives no symbols: "
                          f"consolidator-inspect ended with {how}.\n",
                          self.gdb(f"consolidated-file {name}"))

    def test_says_when_there_is_no_folder_for_temporary_files(self):
        name = self.consolidate("file")
        printed = self.asked(name, "python import tempfile; tempfile.tempdir = '/nowhere'",
                             "info kernel-bits product", f"consolidated-file {name}")
        self.assertEqual(printed, "There is no temporary file: No such file or directory.\n"
                         + READING.format(name)
                         + "There is no temporary file: No such file or directory.\n")


class TerminalTest(CommandsTest):
    def talk(self, commands, answers):
        """What GDB prints to a terminal for commands and what is typed then, each after a text that
        is awaited."""
        controller, terminal = pty.openpty()
        printed, seen = "", 0
        with self.started("-nh", commands, terminal, terminal) as gdb:
            os.close(terminal)
            for awaited, typed in [*answers, ("(gdb) ", "quit\n")]:
                while (found := printed.find(awaited, seen)) < 0:
                    printed += os.read(controller, 4096).decode()
                seen = found + len(awaited)
                os.write(controller, typed.encode())
        os.close(controller)
        self.assertEqual(list(self.temporary.iterdir()), [])
        return printed

    def test_long_answers_go_through_the_pager(self):
        name = self.consolidate("file")
        printed = self.talk([f"consolidated-file {name}", "set height 4", "info kernel vadd"],
                            [("for more", "\n"), ("for more", "q\n"), ("(gdb) ", "info kernels\n"),
                             ("for more", "c\n")])
        self.assertIn("/design/region/vadd_1", printed)
        self.assertNotIn("/design/region/vadd_3", printed)
        self.assertIn(FIR.strip(), printed)
        self.assertNotIn("Python", printed)

    def test_reading_can_be_interrupted(self):
        name = self.consolidate("file")
        self.replace_inspector("kill -INT 0")  # GDB and its own process, as a terminal does
        printed = self.talk([], [("(gdb) ", f"consolidated-file {name}\n"), ("Quit", ""),
                                 ("(gdb) ", "info kernels\n"), (NO_FILE.strip(), "")])
        self.assertNotIn("Python", printed)


class HostileFileTest(CommandsTest):
    def test_shows_control_characters_instead_of_obeying_them(self):
        name = b"\x1b[31m\x07\x7f\xc2\x9b\xe2\x80\xae\""
        evil = name + b"\n"
        file = self.write("file", container(
            kernel(name, [b"/" + evil], [variable(b"a", evil, evil)], [variable(evil, evil)],
                   [(b"/" + evil + b"/" + evil, [location(1, 2)])],
                   [source_line(evil, 3, evil + b"/k.c"), u32(0) + text(evil)])))
        known = '\\x1B[31m\\x07\\x7F\\u{009B}\\u{202E}"'
        shown = known + "\\x0A"
        printed = self.asked(file, "info kernels", "python gdb.execute('info kernel ' + "
                             "'\\x1b[31m\\x07\\x7f\\x9b\\u202e\"')", "info kernel-bits a",
                             "info kernel-conditions k.c:3", "complete info kernel ")
        self.assertEqual(printed, f"""\
{TABLE}OpenCL           1          1          1           2  {known}
Kernel "{known}", type OpenCL:
  Instances:
    /{shown}
  Arguments:
    a: {shown}, 32 bits, register {shown}
  Variables:
    {shown}: int, 32 bits, register {shown}
  Conditions:
    {shown}/k.c:3: {shown}
    start: {shown}
  No block RAMs.
Kernel "{known}", argument a: {shown}, 32 bits, register {shown}:
  In /{shown}:
    /{shown}/{shown}:
      bit 0   0x1:2
Kernel "{known}" is at line 3 of "{shown}/k.c" when:
  {shown}
""")

    def test_shows_control_characters_in_messages(self):
        printed = self.gdb("python gdb.execute('consolidated-file \"\\x1b[31m\"')")
        self.assertIn("\\x1B[31m: No such file or directory.", printed)
        self.assertNotIn("\x1b", printed)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
