"""Where the bits of a variable are."""

import re
from collections import defaultdict

from .opened_file import Variable


class BitsQuery:
    """An argument or variable by its name, in all kernels or in those of a name."""

    def __init__(self, opened, kernel_name, name):
        """Of an opened file; without a name of kernels for all of them."""
        self._opened = opened
        self._kernel_name = kernel_name
        self._name = name

    @classmethod
    def parse(cls, text, opened):
        """Of a text [KERNEL::]VARIABLE; None if the file has no such variable."""
        queries = [cls(opened, None, text)]
        for mark in re.finditer("(?=::)", text):
            queries.append(cls(opened, text[: mark.start()], text[mark.start() + 2 :]))
        return next((query for query in queries if query._kernels()), None)

    def lines(self):
        """Yields the lines that show the bits, which the inspector finds."""
        # Names that are not UTF-8 read alike here, and the inspector tells them apart.
        if "\ufffd" in self._name and sum(1 for _ in self._found()) < len(self._kernels()):
            yield self._refusal()
            return
        is_found = False
        for kernel, found in zip(self._kernels(), self._found()):
            is_found = True
            for item in found["matches"]:
                if self._is_wanted(item):
                    yield from VariableBits(kernel, item, found["matches"]).lines()
        if not is_found:  # a name that has the form of a location
            yield self._refusal()

    def _refusal(self):
        return f'The bits of "{self._name}" cannot be looked up by its name.'

    def _kernels(self):
        return [
            kernel
            for kernel in self._opened.kernels
            if self._kernel_name in (None, kernel.name)
            and any(variable.name == self._name for variable in kernel.all_variables())
        ]

    def _found(self):
        """What is found in these kernels, in their order."""
        for found in self._opened.inspector.find(self._name).kernels():
            if self._kernel_name in (None, found["kernel"]):
                if any(map(self._is_wanted, found["matches"])):
                    yield found

    def _is_wanted(self, item):
        return item["what"] in ("argument", "variable") and item["name"] == self._name


class VariableBits:
    """The bits of one variable in the instances of its kernel."""

    def __init__(self, kernel, item, matches):
        """Of an item among the matches in a kernel, which have its registers, too."""
        self._kernel = kernel
        self._variable = Variable.of(item["what"], item)
        self._stored = item["instance_bits"]
        self._registers = defaultdict(list)  # by the path of the instance
        self._has_more = False
        for register in matches:
            if register["what"] == "hardware_variable":
                self._add(register)

    def _add(self, register):
        if register["register"] != self._variable.register:
            return
        self._has_more |= not register["all_instances"]
        for instance in register["instances"]:
            is_doubtful = instance["belonging"] == "doubtful"
            self._registers[instance["path"]].append((is_doubtful, register))

    def lines(self):
        """Yields the lines that show them."""
        yield f'Kernel "{self._kernel.name}", {self._variable.what} {self._variable}:'
        for number, path in enumerate(self._kernel.paths):
            yield from self._lines_in(path, self._stored[number : number + 1])
        if not self._kernel.paths:
            yield "  The kernel has no instances."
        if self._has_more:
            yield "  More instances may have the same registers."

    def _lines_in(self, path, stored):
        yield f"  In {path}:"
        registers = self._registers[path]
        are_doubtful = all(is_doubtful for is_doubtful, _ in registers)
        for bits in stored:
            yield from _bit_lines("stored with the variable", bits)
        for is_doubtful, register in registers:
            if is_doubtful == are_doubtful:
                doubt = ", which may be of another instance" if is_doubtful else ""
                yield from _bit_lines(register["rtl_name"] + doubt, register["logic_locations"])
        if not registers and not any(stored):
            yield "    No location is known."


def _bit_lines(place, bits):
    if bits:
        yield f"    {place}:"
    for number, (first, second) in enumerate(bits):
        doubt = "" if first or second else " (or not known)"
        yield f"      bit {number:<3} {first:#x}:{second}{doubt}"
