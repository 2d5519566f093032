"""Where the fields of a file stand, by a reader that was compiled to note it."""

from collections import namedtuple
from enum import Enum

from kaitaistruct import KaitaiStruct

from with_positions.consolidated_file import ConsolidatedFile

# A run of bytes that is one value, or padding, or contents that are always the same.
Leaf = namedtuple("Leaf", "start end")


class Reading:
    """One file, read as a whole.

    leaves    the bytes that were read, in the order of the reading
    occurred  the fields, as (type, name), and the members of enumerations that were in it
    """

    def __init__(self, data):
        self.leaves = []
        self.occurred = set()
        root = ConsolidatedFile.from_bytes(data)
        root._read()
        self._walk(root, 0)
        for entry in root.section_table:
            self._walk(entry.content, entry.offset)

    def _walk(self, record, base):
        """A record, whose positions count from the base."""
        for field in filter(record._debug.__contains__, record.SEQ_FIELDS):
            self.occurred.add((type(record).__name__, field))
            value, noted = getattr(record, field), record._debug[field]
            values = value if isinstance(value, list) else [value]
            for item, place in zip(values, noted.get("arr", [noted])):
                if isinstance(item, KaitaiStruct):
                    self._walk(item, base)
                    continue
                self.leaves.append(Leaf(base + place["start"], base + place["end"]))
                if isinstance(item, Enum):
                    self.occurred.add(item)


def described():
    """What may be in Reading.occurred."""
    kinds = [ConsolidatedFile, *vars(ConsolidatedFile).values()]
    kinds = [kind for kind in kinds if isinstance(kind, type)]
    for kind in kinds:
        if issubclass(kind, Enum):
            yield from kind
        else:
            yield from ((kind.__name__, field) for field in kind.SEQ_FIELDS)
