"""Holds what "consolidator-inspect diff" writes against its schema.

usage: diff_document_test.py <executable>
"""

import copy
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from jsonschema import Draft202012Validator

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SCHEMA = json.loads((PROJECT / "share/schemas/consolidator-diff-1.schema.json").read_text())
EXECUTABLE = pathlib.Path(sys.argv[1]).resolve()
FILES = sorted((PROJECT / "fuzz/corpus/Container").iterdir())
FULL_FILE = PROJECT / "fuzz/corpus/Container/every-kind-and-every-field"

# What a document must not lack, nor a change.
DOCUMENT_KEYS = ("format", "equal", "counts", "complete", "lossy_texts")
CHANGE_KEYS = ("what", "kernel", "name", "change", "before", "after")


def refuse(constant):
    raise ValueError(f"not JSON: {constant}")


def diff(before, after, *options):
    """The status of a run and its document."""
    run = subprocess.run(
        [EXECUTABLE, "diff", "--format=json", *options, before, after], capture_output=True, check=False
    )
    return run.returncode, json.loads(run.stdout.decode("utf-8"), parse_constant=refuse)


class DiffDocumentTest(unittest.TestCase):
    validator = Draft202012Validator(SCHEMA)

    def document(self, before, after, *options):
        """A document that is as described."""
        status, document = diff(before, after, *options)
        self.validator.validate(document)
        if "error" in document:
            self.assertEqual(status, 2)
        else:
            self.assertEqual(status, 0 if document["equal"] and document["complete"] else 1)
        return document

    def test_schema_is_sound(self):
        Draft202012Validator.check_schema(SCHEMA)

    def test_documents_are_as_described(self):
        for file in FILES:
            self.document(FILES[0], file, "--exact", "--sections")
            self.document(file, FULL_FILE, "--exact", "--sections")

    def test_documents_of_all_changes_are_as_described(self):
        seen = set()
        intact = FULL_FILE.read_bytes()
        with tempfile.TemporaryDirectory() as folder:
            for position, byte in enumerate(intact):
                damaged = pathlib.Path(folder, "damaged")
                damaged.write_bytes(intact[:position] + bytes([byte ^ 1]) + intact[position + 1 :])
                document = self.document(FULL_FILE, damaged, "--exact", "--sections")
                seen |= {change["what"] for change in document.get("changes", [])}
        everything = {"kernel", "instance_path", "type", "argument", "variable", "section"}
        everything |= {"hardware_variable", "breakable_condition", "bram", "project", "dwarf"}
        self.assertEqual(seen - {"order"}, everything)

    def test_summary_is_as_described(self):
        for file in FILES:
            self.assertNotIn("changes", self.document(FILES[0], file, "--stat"))

    def test_schema_refuses_what_is_not_whole(self):
        for before, after in zip(FILES, FILES[1:]):
            document = self.document(before, after)
            if document.get("changes"):
                break
        for key in DOCUMENT_KEYS:
            damaged = copy.deepcopy(document)
            del damaged[key]
            self.assertFalse(self.validator.is_valid(damaged), key)
        for key in CHANGE_KEYS:
            damaged = copy.deepcopy(document)
            del damaged["changes"][0][key]
            self.assertFalse(self.validator.is_valid(damaged), key)
        damaged = copy.deepcopy(document)
        damaged["changes"][0]["before"] = damaged["changes"][0]["after"] = None
        self.assertFalse(self.validator.is_valid(damaged))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
