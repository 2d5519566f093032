"""Consolidated files to read, all of them written by the tool."""

import struct
import subprocess

DWARF = bytes(range(256))


def u32(number):
    return struct.pack("<I", number)


def text(value):
    return u32(len(value)) + value


def items(*encoded):
    return u32(len(encoded)) + b"".join(encoded)


# Of the file that no input gives.
RARE_VERSION = (-2, -3)
RARE_TYPE = 0xF0000007
RARE_KIND = 0xF0000009


def rare_file():
    """A file with what no input gives: bits of variables, BRAMs, numbers without a name and others
    with their highest bit set, and a project name with a zero byte in it."""
    location = struct.pack("<II", 0xFFFFFFFE, 0xFFFFFFFF)
    bits = items(items(location, location), items())
    argument = text(b"gain") + text(b"gain_r") + text(b"double") + bits
    variable = text(b"mark") + text(b"mark_reg") + text(b"unsigned char") + bits
    kernel = (
        text(b"rare")
        + items(text(b"/top/rare_1"))
        + u32(RARE_TYPE)
        + items(argument)
        + items(variable)
        + items(text(b"/top/rare_1/mark_reg") + items(location))
        + items(
            u32(RARE_KIND) + text(b"$i/odd"),
            u32(2) + text(b"$i/even") + u32(0xFFFFFFFF) + text(b"rare.c"),
        )
        + items(text(b"ram_0"), text(b"ram_0"))
    )
    written_in_rtl = text(b"logic") + items() + u32(2) + 5 * items()
    project = b"rare\0not shown"
    records = items(kernel, written_in_rtl)
    offset = 16 + 2 * 24
    return (
        b"\xd4\xda\xef\xbe"
        + struct.pack("<iiI", *RARE_VERSION, 2)
        + struct.pack("<I4xQI4x", 0, offset, len(project))
        + struct.pack("<I4xQI4x", 2, offset + len(project), len(records))
        + project
        + records
    )


def crowded_out_file():
    """A file whose JSON text and kernel records found no place below 2 GiB, without the DWARF that
    took it: their entries are there, all zeros except the kind."""
    entries = b"".join(struct.pack("<I4xQI4x", kind, 0, 0) for kind in (3, 2))
    return b"\xd4\xda\xef\xbe" + struct.pack("<iiI", 1, 1, 2) + entries


class Tool:
    """Runs the executable in a folder."""

    def __init__(self, executable, folder):
        self.executable = executable
        self.folder = folder

    def run(self, *arguments):
        result = subprocess.run(
            [self.executable, *arguments], cwd=self.folder, capture_output=True, check=True
        )
        if result.stdout or result.stderr:
            raise AssertionError(result)

    def write(self, name, content):
        (self.folder / name).write_bytes(content)
        return name

    def consolidate(self, *arguments):
        """The bytes of the file after one more run on it."""
        self.run("-f", "file", *arguments)
        return (self.folder / "file").read_bytes()

    def dump(self, option, data):
        """What the tool dumps of a file with these bytes."""
        self.run("-f", self.write("dumped", data), option, "dump")
        return (self.folder / "dump").read_bytes()


def write_samples(tool, examples):
    """Files of several kinds, each with a name."""
    dwarf = tool.write("dwarf", DWARF)
    words = tool.write(
        "words",
        "version: 1.0\ngröße:\n instance path: /".encode() + b"gr\xf6\xdfe_1\n",
    )
    samples = {"empty": tool.consolidate("--create", "-h", "missing")}
    first = ["-h", examples / "first-link.hierarchy", "-d", dwarf]
    samples["first stage"] = tool.consolidate("--create", "-p", "example", *first)
    inputs = {"-k": "vadd.xml", "-s": "scale.dbg", "-x": "fir_auxiliary.xml", "-l": "design.ll"}
    for option, name in {"-h": "second-link.hierarchy", **inputs, "-r": "design.ram"}.items():
        samples[f"with {name}"] = tool.consolidate("-p", "example", option, examples / name)
    samples["without project"] = tool.consolidate("--create", "-h", words)
    tool.write("file", rare_file())
    samples["rare"] = tool.consolidate("-p", "rare", "-h", words)
    return samples
