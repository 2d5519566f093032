"""Holds the reading of JSON documents piece by piece against reading them at once."""

import io
import json
import pathlib
import sys
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(PROJECT / "share/gdb/python"))

from consolidated_file_gdb.kernel_document import KernelDocument

# A name that could be mistaken for what ends a list.
NAME = '],"breakable_conditions":[}],"kernels":['
KERNELS = [
    {
        "name": NAME,
        "type_number": 12,
        "hardware_variables": [{"rtl_name": NAME, "logic_locations": [[1, 2]]}],
        "breakable_conditions": [{"line": 34, "condition": "{"}],
        "brams": [],
    },
    {"name": "", "hardware_variables": [], "breakable_conditions": [], "added_later": 5},
    {"kernel": "without registers", "matches": [{"offset": 6}, 7]},
    {},
]


def compact(document):
    return json.dumps(document, separators=(",", ":")) + "\n"


def document_of(kernels):
    return {"format": "some/1", "project": NAME, "kernels": kernels, "complete": True}


class Trickle(io.StringIO):
    """A stream that gives one character at a time."""

    def read(self, size=-1):
        return super().read(size if size < 0 else 1)


def read(stream):
    """The kernels of a document, and the rest of it."""
    document = KernelDocument(stream)
    return list(document.kernels()), document.members


class KernelDocumentTest(unittest.TestCase):
    def test_gives_kernels_without_registers_and_the_rest(self):
        without = [
            {key: value for key, value in kernel.items() if key != "hardware_variables"}
            for kernel in KERNELS
        ]
        for count in range(len(KERNELS) + 1):
            text = compact(document_of(KERNELS[:count]))
            for stream in io.StringIO(text), Trickle(text):
                self.assertEqual(read(stream), (without[:count], document_of([])))

    def test_gives_a_document_without_a_list_as_it_is(self):
        document = {"format": "some/1", "error": {"code": "usage", "message": NAME}}
        self.assertEqual(read(Trickle(compact(document))), ([], document))

    def test_refuses_what_ends_too_early(self):
        text = compact(document_of(KERNELS)).rstrip()
        for size in range(len(text)):
            with self.assertRaises(ValueError, msg=text[:size]):
                read(io.StringIO(text[:size]))

    def test_refuses_other_texts(self):
        for text in "", "no JSON", '{"kernels":[7]}', '{"kernels":[{"name" "x"}]}', "[]x":
            with self.assertRaises(ValueError, msg=text):
                read(io.StringIO(text))

    def test_refuses_what_is_nested_too_deeply(self):
        deep = "[" * 100000
        for text in deep, '{"kernels":[{"brams":' + deep, '{"kernels":[],"brams":' + deep:
            with self.assertRaisesRegex(ValueError, "^it is nested too deeply$"):
                read(io.StringIO(text))

    def test_reads_a_large_kernel_in_linear_time(self):
        kernel = {"brams": ["a name"] * 300000}
        reads = []
        text = compact(document_of([kernel]))
        stream = io.StringIO(text)
        plain_read = stream.read
        stream.read = lambda size=-1: reads.append(size) or plain_read(size)
        self.assertEqual(read(stream)[0], [kernel])
        self.assertLess(len(reads), 12)


if __name__ == "__main__":
    unittest.main()
