"""Documents of the inspector, held to their JSON Schemas.

usage: schemas_test.py <consolidator> <consolidator-inspect>
"""

import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

import samples

ROOT = pathlib.Path(__file__).resolve().parents[2]

# The schema of a document and the words that make one: FILE and OTHER stand for two files, NEW for
# one that is not there at first.
DOCUMENTS = [
    ("consolidator-inspect-1", ["json", "FILE"]),
    ("consolidator-inspect-1", ["json", "--pretty", "FILE"]),
    ("consolidator-inspect-1", ["json"]),
    ("consolidator-find-1", ["find", "--format", "json", "FILE", "vadd"]),
    ("consolidator-find-1", ["find", "--format", "json", "FILE", "i_reg"]),
    ("consolidator-find-1", ["find", "--format", "json", "FILE", "0x401F82:1952"]),
    ("consolidator-find-1", ["find", "--format", "json", "FILE", "4294967294:4294967295"]),
    ("consolidator-find-1", ["find", "--format", "json", "FILE"]),
    ("consolidator-verify-1", ["verify", "--format", "json", "FILE", "OTHER"]),
    ("consolidator-verify-1", ["verify", "--format", "json", "--strict", "--all", "FILE"]),
    ("consolidator-verify-1", ["verify", "--format", "json"]),
    ("consolidator-diff-1", ["diff", "--format", "json", "--sections", "FILE", "OTHER"]),
    ("consolidator-diff-1", ["diff", "--format", "json", "FILE"]),
    ("consolidator-coverage-1", ["coverage", "--format", "json", "FILE"]),
    ("consolidator-coverage-1", ["coverage", "--format", "json", "--baseline", "OTHER", "FILE"]),
    ("consolidator-coverage-1", ["coverage", "--format", "json"]),
    ("consolidator-explain-1", ["explain", "--format", "json", "--", "-f", "FILE", "-k", "OTHER"]),
    ("consolidator-explain-1", ["explain", "--format", "json", "--strict", "--", "-c", "-f", "FILE",
                                "-h", "first-link.hierarchy", "-k", "vadd.xml", "-l", "design.ll"]),
    ("consolidator-explain-1", ["explain", "--format", "json", "FILE"]),
    ("consolidator-run-1", ["run", "--format", "json", "--", "-f", "FILE", "-k", "OTHER"]),
    ("consolidator-run-1", ["run", "--format", "json", "--", "-c", "-f", "NEW", "-h",
                            "first-link.hierarchy", "-k", "vadd.xml", "-l", "design.ll"]),
    ("consolidator-run-1", ["run", "--format", "json", "--", "-f", "/dev/null", "-k", "vadd.xml"]),
    ("consolidator-run-1", ["run", "--format", "json", "FILE"]),
]

# Their documents have no error for one file.
OF_SEVERAL_FILES = ("consolidator-verify-1", "consolidator-explain-1", "consolidator-run-1")

# A file that cannot be read is no error to a command of several files, but an entry.
COMMON_CODES = (None, "usage")
CODES_OF_ONE_FILE = ("cannot-open", "no-consolidated-file")

# What a document of each of these schemas must not be, so that the schemas can fail.
FAULTS = [
    lambda document: document.pop("format"),
    lambda document: document.update(complete="yes"),
    lambda document: document.update(lossy_texts=-1),
    lambda document: document.update(kernels=[{}]),
]


def write_files(folder, consolidator):
    """Writes files of many kinds and returns their paths."""
    examples = ROOT / "examples"
    example = folder / "example"
    words = ["-h", "first-link.hierarchy", "-h", "second-link.hierarchy", "-k", "vadd.xml", "-s",
             "scale.dbg", "-x", "fir_auxiliary.xml", "-l", "design.ll", "-p", "vector"]
    subprocess.run([consolidator, "-c", "-f", example, *words], cwd=examples, check=True)
    whole = example.read_bytes()
    rare = samples.rare_file()
    contents = {
        "example": whole,
        "rare": rare,
        "far": rare[:16] + samples.u32(7) * 2 + b"\xff" * 8 + rare[32:],
        "cut": whole[:-100],
        "lossy": whole.replace(b"vadd", b"va\xff\""),
        "header": whole[:16],
        "text": b"no consolidated file",
        "empty": b"",
    }
    for name, content in contents.items():
        (folder / name).write_bytes(content)
    return [folder / name for name in contents] + [folder / "missing"]


def strict(text):
    """The document of a text, which must be strict JSON in UTF-8 on whole lines."""

    def refuse(constant):
        raise ValueError(constant)

    assert text.endswith(b"}\n")
    jq = subprocess.run(["jq", "-c", ".format"], input=text, capture_output=True, check=True)
    document = json.loads(text.decode("utf-8"), parse_constant=refuse)
    assert jq.stdout.decode().strip() == json.dumps(document["format"])
    assert next(iter(document)) == "format"
    return document


def check_documents(inspect, validators, files):
    shown = set()
    for schema, words in DOCUMENTS:
        for number, file in enumerate(files):
            names = {"FILE": str(file), "OTHER": str(files[number - 1]),
                     "NEW": str(file) + ".new"}
            arguments = [names.get(word, word) for word in words]
            run = subprocess.run([inspect, *arguments], capture_output=True, check=False,
                                 cwd=ROOT / "examples")
            assert run.returncode in (0, 1, 2), arguments
            document = strict(run.stdout)
            assert document["format"] == schema.replace("-1", "/1"), arguments
            assert ("error" not in document) or run.returncode == 2, arguments
            validators[schema].validate(document)
            shown.add((schema, document.get("error", {}).get("code")))
            if "kernels" in document:
                check_faults(validators[schema], document)
    for schema in validators:
        of_several = schema in OF_SEVERAL_FILES
        for code in COMMON_CODES + (() if of_several else CODES_OF_ONE_FILE):
            assert (schema, code) in shown, (schema, code)


def check_faults(validator, document):
    for fault in FAULTS:
        broken = json.loads(json.dumps(document))
        fault(broken)
        assert not validator.is_valid(broken)


def main():
    consolidator, inspect = (str(pathlib.Path(word).resolve()) for word in sys.argv[1:])
    validators = {}
    for schema in sorted({schema for schema, _ in DOCUMENTS}):
        text = json.loads((ROOT / f"share/schemas/{schema}.schema.json").read_text())
        jsonschema.Draft202012Validator.check_schema(text)
        validators[schema] = jsonschema.Draft202012Validator(text)
    with tempfile.TemporaryDirectory() as name:
        check_documents(inspect, validators, write_files(pathlib.Path(name), consolidator))


main()
