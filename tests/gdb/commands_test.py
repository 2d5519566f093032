"""Holds the commands that are added to GDB to what they answer.

usage: commands_test.py <consolidator> <consolidator-inspect> <gdb>
"""

import os
import pty
import shutil
import sys
import unittest

from commands_fixture import (
    COMMANDS,
    CommandsTest,
    FIR,
    FULL_FILE,
    GDB,
    NO_FILE,
    SCALE,
    TABLE,
    VADD,
    container,
    kernel,
    location,
    source_line,
    variable,
)
from samples import items, text


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


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
