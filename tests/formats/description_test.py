"""Reads files that the tool writes by their description in share/, and compares.

usage: description_test.py <executable>
"""

import pathlib
import re
import sys
import tempfile
import unittest

import json_document
import samples
from ksy_reader import DataError, Description, DescriptionError, Reading

PROJECT = pathlib.Path(__file__).resolve().parents[2]
DESCRIPTION = (PROJECT / "share/consolidated_file.ksy").read_text(encoding="utf-8")
EXECUTABLE = pathlib.Path(sys.argv[1]).resolve()


def sections(root, kind):
    return [entry.content for entry in root.section_table if entry.kind.name == kind]


def kernels(root):
    return [kernel for section in sections(root, "kernel_records") for kernel in section.kernels]


def uncounted_bytes(reading, size):
    """Where the leaves leave a gap or overlap, or the file goes on behind them."""
    position = 0
    for leaf in sorted(reading.leaves):
        if leaf.start != position:
            return f"{position} to {leaf.start}"
        position = leaf.end
    return None if position == size else f"{position} to {size}"


class DescriptionTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.temporary.cleanup)
        cls.tool = samples.Tool(EXECUTABLE, pathlib.Path(cls.temporary.name))
        cls.description = Description(DESCRIPTION)
        cls.files = samples.write_samples(cls.tool, PROJECT / "examples")

    def read(self, data):
        return Reading(self.description, data)

    def each_file(self):
        """The bytes of a file and what was read of it, for every file."""
        for name, data in self.files.items():
            yield name, data, self.read(data)

    def expect_unreadable(self, data, damage):
        with self.assertRaises(DataError, msg=damage):
            self.read(bytes(data))

    def test_every_byte_of_a_file_is_read_once(self):
        for name, data, reading in self.each_file():
            self.assertIsNone(uncounted_bytes(reading, len(data)), name)

    def test_a_file_that_is_cut_off_cannot_be_read(self):
        for name, data, reading in self.each_file():
            for leaf in reading.leaves:
                if leaf.end > leaf.start:
                    self.expect_unreadable(data[: leaf.end - 1], f"{name} up to {leaf.end - 1}")
        rare = self.files["rare"]
        for size in range(len(rare)):
            self.expect_unreadable(rare[:size], f"rare up to {size}")

    def test_a_foreign_file_cannot_be_read(self):
        for position in range(4):
            damaged = bytearray(self.files["rare"])
            damaged[position] ^= 1
            self.expect_unreadable(damaged, f"bit 0 at {position}")

    def test_the_header_has_the_version_that_the_tool_writes(self):
        for name, _, reading in self.each_file():
            header = reading.root.header
            expected = samples.RARE_VERSION if name == "rare" else (1, 1)
            self.assertEqual((header.major_version, header.minor_version), expected, name)

    def test_numbers_without_a_name_are_read_as_they_are(self):
        kernel = kernels(self.read(self.files["rare"]).root)[0]
        self.assertEqual(kernel.type, samples.RARE_TYPE)
        self.assertEqual(kernel.breakable_conditions.items[0].kind, samples.RARE_KIND)

    def test_the_kernels_are_those_of_the_json_document(self):
        for name, data, reading in self.each_file():
            dump = self.tool.dump("--dump-json", data)
            (stored,) = sections(reading.root, "json")
            self.assertEqual(stored.document + stored.terminator, dump, name)
            text = stored.document.decode("utf-8", "surrogateescape")
            found = [json_document.as_kernel(kernel) for kernel in kernels(reading.root)]
            self.assertEqual(found, json_document.parse_document(text), name)

    def test_the_dwarf_is_what_was_added(self):
        for name, data, reading in self.each_file():
            found = [dwarf.content for dwarf in sections(reading.root, "dwarf")]
            has_dwarf = name == "first stage" or name.startswith("with ")
            self.assertEqual(found, [samples.DWARF] if has_dwarf else [], name)
            self.assertEqual(b"".join(found), self.tool.dump("--dump-dwarf", data), name)

    def test_each_run_that_names_the_project_adds_a_section(self):
        counts = {}
        for name, data in self.files.items():
            counts[name] = [item.name for item in sections(self.read(data).root, "project_name")]
        example = [name for name in counts if name == "first stage" or name.startswith("with ")]
        self.assertEqual(len(example), 7)
        for count, name in enumerate(example, start=1):
            self.assertEqual(counts.pop(name), [b"example"] * count)
        self.assertEqual(counts, {"empty": [], "without project": [], "rare": [b"rare"] * 2})

    def test_sections_that_found_no_place_are_read_as_empty(self):
        root = self.read(samples.crowded_out_file()).root
        (json,), (records,) = sections(root, "json"), sections(root, "kernel_records")
        for section, field in ((json, "document"), (records, "kernels")):
            self.assertFalse(hasattr(section, field), field)

    def test_a_text_ends_where_the_tool_ends_it(self):
        zero = self.tool.write("zero", b"version: 1.0\nka\0b:\n instance path: /top/ka_1\n")
        first = self.tool.consolidate("--create", "-h", zero)
        self.assertIn(b"\x04\0\0\0ka\0b", first)
        second = self.tool.consolidate("-h", "missing")
        for data in first, second:
            (kernel,) = kernels(self.read(data).root)
            self.assertEqual(kernel.name.bytes, b"ka")
        self.assertIn(b'"Name" : "ka"', second)

    def test_a_project_name_ends_where_the_tool_ends_it(self):
        (project,) = sections(self.read(samples.rare_file()).root, "project_name")
        self.assertEqual(project.name, b"rare")
        self.tool.write("file", samples.rare_file())
        self.tool.consolidate("-p", "rare", "-h", "missing")  # other names are refused

    def test_a_text_in_another_encoding_can_be_read_as_bytes(self):
        (kernel,) = kernels(self.read(self.files["without project"]).root)
        self.assertEqual(kernel.name.utf8, "größe")
        (path,) = kernel.instance_paths.items
        self.assertEqual(path.bytes, b"/gr\xf6\xdfe_1")
        with self.assertRaises(UnicodeDecodeError):
            self.assertIsNone(path.utf8)

    def test_all_that_is_described_occurs_in_a_file(self):
        occurred = set()
        for _, _, reading in self.each_file():
            occurred |= reading.occurred
        self.assertEqual(occurred, set(self.description.names()))

    def test_every_name_is_one_in_the_language(self):
        names = {*self.description.types, *self.description.enums}
        names |= {name for _, name in self.description.names()}
        names.remove("")  # the type of the file as a whole
        self.assertEqual([], [name for name in names if not re.fullmatch("[a-z][a-z0-9_]*", name)])

    def test_the_names_of_the_source_are_right(self):
        source = "\n".join(path.read_text(encoding="utf-8") for path in PROJECT.glob("src/*/*.h"))
        names = re.findall(r"-orig-id: (\w+)", DESCRIPTION)
        self.assertGreater(len(names), 20)
        self.assertEqual([], [name for name in names if not re.search(rf"\b{name}\b", source)])

    def test_nothing_of_the_description_is_passed_over(self):
        for known, unknown in (
            ("    if: kind", "    when: kind"),
            ("repeat: expr", "repeat: eos"),
            ("_io.size - 1", "_io.size * 1"),
            ("endian: le", "endian: be"),
        ):
            self.assertIn(known, DESCRIPTION)
            with self.assertRaises(DescriptionError, msg=unknown):
                Reading(Description(DESCRIPTION.replace(known, unknown)), self.files["rare"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
