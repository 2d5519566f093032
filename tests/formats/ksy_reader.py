"""Reads files by a description in the .ksy language: as much of the language as is used here.

A key or an expression that is not known is an error, so that nothing in a description is passed
over. Written with no thought of speed.
"""

import operator
import re
import struct
from collections import namedtuple
from functools import partial
from types import SimpleNamespace

import yaml

NUMBERS = {"u1": "B", "u2": "H", "u4": "I", "u8": "Q", "s1": "b", "s2": "h", "s4": "i", "s8": "q"}

OPERATORS = {"==": operator.eq, "!=": operator.ne, "-": operator.sub}

# What may stand where, beside what only people read.
REMARKS = {"doc", "doc-ref", "-orig-id"}
META_KEYS = {"id", "title", "file-extension", "ks-version", "endian"}
TYPE_KEYS = {"seq", "instances"}
ROOT_KEYS = TYPE_KEYS | {"meta", "types", "enums"}
CONTENT_KEYS = {"type", "enum", "contents", "size", "size-eos", "terminator"}
FIELD_KEYS = CONTENT_KEYS | {"id", "if", "repeat", "repeat-expr"}
INSTANCE_KEYS = CONTENT_KEYS | {"value", "io", "pos"}

# A run of bytes that is one value, or padding, or contents that are always the same.
Leaf = namedtuple("Leaf", "start end")


class DescriptionError(Exception):
    """The description is not understood."""


class DataError(Exception):
    """The file is not what the description says."""


class EnumValue(int):
    """A number that a description may have a name for; `original` is what the source calls it."""

    def __new__(cls, number, enum):
        value = super().__new__(cls, number)
        keys = enum.get(number, {})
        value.name = keys.get("id")
        value.original = keys.get("-orig-id")
        return value


class Stream:
    """Some bytes of a file, read from the front."""

    def __init__(self, data, start, end):
        self.data = data
        self.start = start
        self.end = end
        self.position = start

    @property
    def size(self):
        return self.end - self.start

    def take(self, size):
        """The next bytes, as a stream of their own."""
        if size < 0 or size > self.end - self.position:
            raise DataError(f"no {size} bytes at {self.position}")
        self.position += size
        return Stream(self.data, self.position - size, self.position)


class Record(SimpleNamespace):
    """What was read by one type: an attribute for each field and instance.

    An instance that is a value is worked out when it is asked for, which may fail, as the decoding
    of a text does.
    """

    def __getattr__(self, name):
        if name not in self.__dict__.get("_values", {}):
            raise AttributeError(name)
        return self._values[name]()


def check_keys(where, mapping, known):
    unknown = set(mapping) - known - REMARKS
    if unknown:
        raise DescriptionError(f"{where}: {', '.join(map(str, unknown))}")


class Description:
    """A description in the .ksy language."""

    def __init__(self, text):
        root = yaml.safe_load(text)
        check_keys("root", root, ROOT_KEYS)
        check_keys("meta", root["meta"], META_KEYS)
        if root["meta"]["endian"] != "le":
            raise DescriptionError("numbers are little-endian")
        self.types = {"": {key: root[key] for key in TYPE_KEYS & set(root)}, **root["types"]}
        self.enums = root["enums"]
        for name, values in self.enums.items():
            for number, keys in values.items():
                check_keys(f"{name}.{number}", keys, {"id"})
        for name, content in self.types.items():
            check_keys(name, content, TYPE_KEYS)
            for field in content.get("seq", []):
                check_keys(f"{name}.{field['id']}", field, FIELD_KEYS)
            for instance, keys in content.get("instances", {}).items():
                check_keys(f"{name}.{instance}", keys, INSTANCE_KEYS)

    def names(self):
        """All fields and instances, as (type, attribute), and all values, as (enum, name)."""
        for name, content in self.types.items():
            yield from ((name, field["id"]) for field in content.get("seq", []))
            yield from ((name, instance) for instance in content.get("instances", {}))
        for name, values in self.enums.items():
            yield from ((name, keys["id"]) for keys in values.values())


class Reading:
    """One file, read by a description as a whole. Raises DataError where it does not fit.

    root      the record of the file
    leaves    the bytes that were read, in the order of the reading
    occurred  those of the names of the description that occurred
    """

    def __init__(self, description, data):
        self.description = description
        self.leaves = []
        self.occurred = set()
        self.root = None
        self._read_type("", Stream(data, 0, len(data)))

    def _read_type(self, name, stream):
        record = Record(_io=stream, _values={})
        if self.root is None:
            self.root = record
        record._root = self.root
        content = self.description.types[name]
        for field in content.get("seq", []):
            if "if" in field and not self._evaluate(field["if"], record):
                continue
            self.occurred.add((name, field["id"]))
            setattr(record, field["id"], self._read_field(field, record, stream))
        for instance, keys in content.get("instances", {}).items():
            self.occurred.add((name, instance))
            if "value" in keys:
                record._values[instance] = partial(self._evaluate, keys["value"], record)
            else:
                setattr(record, instance, self._read_instance(keys, record))
        return record

    def _read_field(self, field, record, stream):
        if "repeat" not in field:
            return self._read_content(field, record, stream)
        if field["repeat"] != "expr":
            raise DescriptionError(f"repeat: {field['repeat']}")
        count = self._evaluate(field["repeat-expr"], record)
        return [self._read_content(field, record, stream) for _ in range(count)]

    def _read_instance(self, keys, record):
        stream = self._evaluate(keys["io"], record)
        position = stream.start + self._evaluate(keys["pos"], record)
        return self._read_content(keys, record, Stream(stream.data, position, stream.end))

    def _read_content(self, keys, record, stream):
        """One value of a field: its bytes are limited first, if a size is given."""
        if "contents" in keys:
            return self._read_contents(bytes(keys["contents"]), stream)
        kind = keys.get("type")
        if isinstance(kind, dict):
            kind = self._choose(kind, record)
        if kind in NUMBERS:
            return self._read_number(kind, keys.get("enum"), stream)
        if "size" in keys:
            stream = stream.take(self._evaluate(keys["size"], record))
        elif keys.get("size-eos"):
            stream = stream.take(stream.end - stream.position)
        elif kind is None:
            raise DescriptionError("bytes without a size")
        if kind is not None:
            return self._read_type(kind, stream)
        raw = self._leaf(stream)
        return raw.split(bytes([keys["terminator"]]))[0] if "terminator" in keys else raw

    def _choose(self, switch, record):
        check_keys("switch", switch, {"switch-on", "cases"})
        value = self._evaluate(switch["switch-on"], record)
        for case, kind in switch["cases"].items():
            if self._evaluate(case, record) == value:
                return kind
        return None

    def _read_contents(self, expected, stream):
        found = self._leaf(stream.take(len(expected)))
        if found != expected:
            raise DataError(f"{found!r} in place of {expected!r}")
        return found

    def _read_number(self, kind, enum, stream):
        form = struct.Struct("<" + NUMBERS[kind])
        (number,) = form.unpack(self._leaf(stream.take(form.size)))
        if enum is None:
            return number
        value = EnumValue(number, self.description.enums[enum])
        if value.name is not None:
            self.occurred.add((enum, value.name))
        return value

    def _leaf(self, stream):
        self.leaves.append(Leaf(stream.start, stream.end))
        return stream.data[stream.start : stream.end]

    def _evaluate(self, expression, record):
        """Two operands with an operator between them, or one; a number stands for itself."""
        parts = re.split(r" (==|!=|-) ", str(expression))
        values = [self._operand(operand, record) for operand in parts[::2]]
        if len(parts) == 1:
            return values[0]
        if len(parts) != 3:
            raise DescriptionError(expression)
        return OPERATORS[parts[1]](*values)

    def _operand(self, operand, record):
        if re.fullmatch(r"\d+", operand):
            return int(operand)
        if match := re.fullmatch(r"(\w+)::(\w+)", operand):
            enum = self.description.enums[match[1]]
            (number,) = (number for number, keys in enum.items() if keys["id"] == match[2])
            return EnumValue(number, enum)
        if match := re.fullmatch(r'(\w+)\.to_s\("([\w-]+)"\)', operand):
            return getattr(record, match[1]).decode(match[2])
        if not re.fullmatch(r"\w+(\.\w+)*", operand):
            raise DescriptionError(operand)
        value = record
        for name in operand.split("."):
            value = getattr(value, name)
        return value
