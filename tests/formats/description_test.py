"""Holds the readers that are compiled from the description of the file against the tool.

usage: description_test.py <executable>
"""

import pathlib
import re
import resource
import sys
import tempfile
import unittest

from kaitaistruct import ValidationNotEqualError

import json_document
import samples
from plain.consolidated_file import ConsolidatedFile
from positions import Reading, described

PROJECT = pathlib.Path(__file__).resolve().parents[2]
DESCRIPTION = (PROJECT / "share/consolidated_file.ksy").read_text(encoding="utf-8")
EXECUTABLE = pathlib.Path(sys.argv[1]).resolve()

SectionKind = ConsolidatedFile.SectionKind

# What a reader says of a file that is not as described; the last one, of offsets that no file has.
DATA_ERRORS = (EOFError, ValidationNotEqualError, OverflowError)


def read(data):
    """The record of a file, all sections of which were read."""
    root = ConsolidatedFile.from_bytes(bytes(data))
    for entry in root.section_table:
        _ = entry.content  # is read when it is asked for
    return root


def entries(root, kind):
    return [entry for entry in root.section_table if entry.kind == SectionKind[kind]]


def sections(root, kind):
    return [entry.content for entry in entries(root, kind)]


def kernels(root):
    return [kernel for section in sections(root, "kernel_records") for kernel in section.kernels]


def without_conditions(documents):
    """Kernels of a JSON document without the texts that each save may change."""
    for kernel in documents:
        for condition in kernel["Breakable Conditions"]:
            del condition["Cond"]
        yield kernel


def uncounted_bytes(reading, size):
    """Where the leaves leave a gap or overlap, or the file goes on after them."""
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
        resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30))
        cls.temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.temporary.cleanup)
        cls.tool = samples.Tool(EXECUTABLE, pathlib.Path(cls.temporary.name))
        cls.files = samples.write_samples(cls.tool, PROJECT / "examples")

    def each_file(self):
        """The bytes of a file and what was read of it, for every file."""
        for name, data in self.files.items():
            yield name, data, read(data)

    def expect_unreadable(self, data, damage):
        with self.assertRaises(DATA_ERRORS, msg=damage):
            read(data)

    def test_every_byte_of_a_file_is_read_once(self):
        for name, data in self.files.items():
            self.assertIsNone(uncounted_bytes(Reading(data), len(data)), name)

    def test_a_file_that_is_cut_off_cannot_be_read(self):
        for name, data in self.files.items():
            for leaf in Reading(data).leaves:
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

    def test_every_file_of_the_corpus_is_read_or_refused(self):
        refused = set()
        for path in (PROJECT / "fuzz/corpus/Container").iterdir():
            try:
                read(path.read_bytes())
            except DATA_ERRORS:
                refused.add(path.name)
        self.assertIn("records-count-all-ones", refused)
        self.assertNotIn("project-and-json", refused)

    def test_a_wrong_number_is_read_or_refused_with_little_memory(self):
        extremes = (0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF)
        data = self.files["rare"]
        refused = set()
        for start, end in Reading(data).leaves:
            for number in extremes if end - start in (4, 8) else ():
                damaged = bytearray(data)
                damaged[start:end] = number.to_bytes(4, "little") * ((end - start) // 4)
                try:
                    read(damaged)
                except DATA_ERRORS:
                    refused.add(start)
        self.assertGreater(len(refused), 40)

    def test_damaged_records_are_read_as_the_tool_reads_them(self):
        data = self.files["rare"]
        (entry,) = entries(read(data), "kernel_records")
        readable = 0
        for position in range(entry.offset, entry.offset + entry.size):
            damaged = bytearray(data)
            damaged[position] ^= 1 << position % 8
            try:
                found = map(json_document.as_kernel, kernels(read(damaged)))
            except DATA_ERRORS:
                continue
            self.tool.write("file", damaged)
            (stored,) = sections(read(self.tool.consolidate("-h", "missing")), "json")
            text = stored.document.decode("utf-8", "surrogateescape")
            expected = json_document.parse_document(text)
            self.assertEqual(
                list(without_conditions(found)), list(without_conditions(expected)), position
            )
            readable += 1
        self.assertGreater(readable, 100)

    def test_the_header_has_the_version_that_the_tool_writes(self):
        for name, _, root in self.each_file():
            header = root.header
            expected = samples.RARE_VERSION if name == "rare" else (1, 1)
            self.assertEqual((header.major_version, header.minor_version), expected, name)

    def test_numbers_without_a_name_are_read_as_they_are(self):
        kernel = kernels(read(self.files["rare"]))[0]
        self.assertEqual(kernel.type, samples.RARE_TYPE)
        self.assertEqual(kernel.breakable_conditions.items[0].kind, samples.RARE_KIND)

    def test_the_kernels_are_those_of_the_json_document(self):
        for name, data, root in self.each_file():
            dump = self.tool.dump("--dump-json", data)
            (stored,) = sections(root, "json")
            self.assertEqual(stored.document + stored.terminator, dump, name)
            text = stored.document.decode("utf-8", "surrogateescape")
            found = [json_document.as_kernel(kernel) for kernel in kernels(root)]
            self.assertEqual(found, json_document.parse_document(text), name)

    def test_the_dwarf_is_what_was_added(self):
        for name, data, root in self.each_file():
            found = [dwarf.content for dwarf in sections(root, "dwarf")]
            has_dwarf = name == "first stage" or name.startswith("with ")
            self.assertEqual(found, [samples.DWARF] if has_dwarf else [], name)
            self.assertEqual(b"".join(found), self.tool.dump("--dump-dwarf", data), name)

    def test_each_run_that_names_the_project_adds_a_section(self):
        counts = {}
        for name, data in self.files.items():
            counts[name] = [item.name for item in sections(read(data), "project_name")]
        example = [name for name in counts if name == "first stage" or name.startswith("with ")]
        self.assertEqual(len(example), 7)
        for count, name in enumerate(example, start=1):
            self.assertEqual(counts.pop(name), [b"example"] * count)
        self.assertEqual(counts, {"empty": [], "without project": [], "rare": [b"rare"] * 2})

    def test_sections_that_found_no_place_are_read_as_empty(self):
        root = read(samples.crowded_out_file())
        (json,), (records,) = sections(root, "json"), sections(root, "kernel_records")
        for section, field in ((json, "document"), (records, "kernels")):
            self.assertFalse(hasattr(section, field), field)

    def test_a_text_ends_where_the_tool_ends_it(self):
        zero = self.tool.write("zero", b"version: 1.0\nka\0b:\n instance path: /top/ka_1\n")
        first = self.tool.consolidate("--create", "-h", zero)
        self.assertIn(b"\x04\0\0\0ka\0b", first)
        second = self.tool.consolidate("-h", "missing")
        for data in first, second:
            (kernel,) = kernels(read(data))
            self.assertEqual(kernel.name.bytes, b"ka")
        self.assertIn(b'"Name" : "ka"', second)

    def test_a_project_name_ends_where_the_tool_ends_it(self):
        (project,) = sections(read(samples.rare_file()), "project_name")
        self.assertEqual(project.name, b"rare")
        self.tool.write("file", samples.rare_file())
        self.tool.consolidate("-p", "rare", "-h", "missing")  # other names are refused

    def test_a_text_in_another_encoding_can_be_read_as_bytes(self):
        (kernel,) = kernels(read(self.files["without project"]))
        self.assertEqual(kernel.name.utf8, "größe")
        (path,) = kernel.instance_paths.items
        self.assertEqual(path.bytes, b"/gr\xf6\xdfe_1")
        with self.assertRaises(UnicodeDecodeError):
            self.assertIsNone(path.utf8)

    def test_all_that_is_described_occurs_in_a_file(self):
        occurred = set().union(*(Reading(data).occurred for data in self.files.values()))
        self.assertEqual(occurred, set(described()))

    def test_the_names_of_the_source_are_right(self):
        source = "\n".join(path.read_text(encoding="utf-8") for path in PROJECT.glob("src/*/*.h"))
        names = re.findall(r"-orig-id: (\w+)", DESCRIPTION)
        self.assertGreater(len(names), 20)
        self.assertEqual([], [name for name in names if not re.search(rf"\b{name}\b", source)])

    def test_the_lock_file_holds_for_every_registry(self):
        lock = (PROJECT / "examples/python/package-lock.json").read_text(encoding="utf-8")
        self.assertEqual(lock.count('"integrity"'), 2)
        self.assertNotIn('"resolved"', lock)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
