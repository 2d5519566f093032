"""The JSON document of a consolidated file, and what kernel records that were read must give."""

import json
import re


# What the document calls the types of kernels; others are "Unknown" there.
TYPES = {"opencl": "OpenCL", "c": "C", "rtl": "RTL", "hls": "HLS"}


def parse_document(text):
    """The kernels of a document as lists and dictionaries.

    What is not JSON is made JSON: a place of a bit that is written as { 1, 2}, and the texts, in
    which nothing is escaped. A text must not hold a double quote.
    """

    def repair(match):
        if match["text"] is not None:
            return json.dumps(match["text"])
        return f"[{match['first']}, {match['second']}]"

    repaired = re.sub(r'"(?P<text>[^"]*)"|\{ (?P<first>\d+), (?P<second>\d+)\}', repair, text)
    return json.loads(repaired)["Kernels"]


def decode(text):
    return text.bytes.decode("utf-8", "surrogateescape")


def name_of(number):
    """The name of a number in the description, if it has one."""
    return getattr(number, "name", None)


def as_texts(texts):
    return [decode(item) for item in texts.items]


def as_locations(locations):
    return [[location.first, location.second] for location in locations.items]


def bit_width(c_type):
    if "*" in c_type:
        return 64
    return 8 if "char" in c_type else 32


def as_variable(variable):
    c_type = decode(variable.c_type)
    fields = [decode(variable.name), decode(variable.second), c_type, bit_width(c_type)]
    if variable.instance_bits:
        fields.append(
            [
                {"Instance": instance, "Bits": as_locations(bits)}
                for instance, bits in enumerate(variable.instance_bits)
            ]
        )
    return fields


def as_condition(condition):
    kind = name_of(condition.kind)
    if kind == "source_line":
        fields = {"File": decode(condition.file), "Line": condition.line}
    elif kind is None:
        fields = {"Error": 1}
    else:
        fields = {kind.capitalize(): True}
    return {**fields, "Cond": decode(condition.condition)}


def as_kernel(record):
    """What the document must have for a kernel record."""
    c_types = [decode(argument.c_type) for argument in record.arguments.items]
    is_float = any("float" in c_type or "double" in c_type for c_type in c_types)
    suffix = "/U0" if is_float else "/inst"
    kernel = {
        "Name": decode(record.name),
        "Instance Paths": [path + suffix for path in as_texts(record.instance_paths)],
        "Type": TYPES.get(name_of(record.type), "Unknown"),
        "Arguments": [as_variable(argument) for argument in record.arguments.items],
        "Variables": [as_variable(variable) for variable in record.variables.items],
        "Breakable Conditions": [as_condition(item) for item in record.breakable_conditions.items],
    }
    if record.hardware_variables.items:
        kernel["Hardware Variables"] = [
            {
                "RTLName": decode(variable.rtl_name),
                "Logic Locations": as_locations(variable.logic_locations),
            }
            for variable in record.hardware_variables.items
        ]
    if record.brams.items:
        kernel["BRAMs"] = as_texts(record.brams)
    return kernel
