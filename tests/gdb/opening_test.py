"""Holds GDB to what it says and keeps when files are opened, read again and refused.

usage: opening_test.py <consolidator> <consolidator-inspect> <gdb>
"""

import os
import subprocess
import sys
import tempfile
import unittest

from commands_fixture import (
    CommandsTest,
    EXAMPLES,
    FIR,
    INFO_COMMANDS,
    INSPECTOR,
    NO_FILE,
    NO_SYMBOLS,
    PROJECT,
    READING,
    SCALE,
    TABLE,
    VADD,
    WITHOUT_DWARF,
    container,
    kernel,
    location,
    source_line,
    variable,
)
from samples import items, text, u32

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
                         + "warning: cut: not complete: "
                         + "The kernel records go beyond the end of the file.\n"
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
