"""A consolidated file as it was when it was opened."""

import os
import stat
from dataclasses import dataclass

from .errors import InspectorError
from .inspector import Inspector


@dataclass(frozen=True, slots=True)
class Variable:
    """An argument or a variable of a kernel."""

    what: str  # "argument" or "variable"
    name: str
    register: str
    c_type: str
    bit_width: int

    @classmethod
    def of(cls, what, item):
        """Of an item of a JSON document."""
        return cls(what, item["name"], item["second"], item["c_type"], item["bit_width"])

    def __str__(self):
        words = [f"{self.bit_width} bits", f"register {self.register}"]
        return f"{self.name}: " + ", ".join(words if not self.c_type else [self.c_type, *words])


@dataclass(frozen=True, slots=True)
class Condition:
    """A condition at which the hardware can be stopped; file and line only for a source line."""

    kind: str
    text: str
    file: str
    line: int

    @classmethod
    def of(cls, item):
        """Of an item of a JSON document."""
        return cls(item["kind"], item["condition"], item.get("file", ""), item.get("line", 0))

    def is_at(self, file, line):
        """Whether it is for a line of a file; of two names, one may lack leading folders."""
        if self.kind != "source_line" or self.line != line:
            return False
        stored, given = _components(self.file), _components(file)
        count = min(len(stored), len(given))
        return count > 0 and stored[-count:] == given[-count:]

    def inside(self, instance):
        """Its text for the path of the module in which an instance has its logic."""
        return self.text.replace("$i/", instance + "/")

    def __str__(self):
        place = f"{self.file}:{self.line}" if self.kind == "source_line" else self.kind
        return f"{place}: {self.text}"


@dataclass(frozen=True, slots=True)
class Kernel:
    """A kernel without its registers, of which there may be too many to keep."""

    name: str
    type: str
    paths: list
    suffix: str
    arguments: list
    variables: list
    conditions: list
    brams: list

    @classmethod
    def of(cls, item):
        """Of an item of a JSON document."""
        return cls(
            name=item["name"],
            type=item["type"],
            paths=item["instance_paths"],
            suffix=item["instance_suffix"],
            arguments=[Variable.of("argument", each) for each in item["arguments"]],
            variables=[Variable.of("variable", each) for each in item["variables"]],
            conditions=[Condition.of(each) for each in item["breakable_conditions"]],
            brams=item["brams"],
        )

    def all_variables(self):
        """Its arguments and variables."""
        return self.arguments + self.variables


def _components(path):
    return [part for part in os.path.normpath(path).split("/") if part not in ("", ".", "..")]


class OpenedFile:
    """The kernels of a file, and whom to ask for more."""

    def __init__(self, name, path=None):
        """Finds the file, which may have an absolute path already. Raises InspectorError if that is
        not possible."""
        self.name = name
        self._path = path or self._absolute()
        self._identity = self._identify()
        self.inspector = Inspector(name, self._path)
        self.kernels = []
        self.warnings = []
        self.has_dwarf = False

    def read(self):
        """Reads the file. Raises InspectorError if it is no consolidated file."""
        answer = self.inspector.everything()
        try:
            self.kernels = [Kernel.of(item) for item in answer.kernels()]
            self.has_dwarf = answer.members["dwarf"] is not None
        except (KeyError, TypeError):
            raise answer.wrong_version() from None
        self.warnings = list(answer.messages)

    def again(self):
        """What has its name by now, wherever GDB's current folder is. Raises InspectorError if that
        is nothing."""
        return OpenedFile(self.name, self._path)

    def has_changed(self):
        """Whether another file has that name by now."""
        try:
            return self._identify() != self._identity
        except InspectorError:
            return False

    def kernels_named(self, name):
        """The kernels of that name, which may be several."""
        return [kernel for kernel in self.kernels if kernel.name == name]

    def _absolute(self):
        try:
            return os.path.abspath(os.path.expanduser(self.name))
        except OSError as error:  # the current folder is gone
            raise InspectorError(f"{self.name}: {error.strerror}.") from None

    def _identify(self):
        """What tells this file from one that is written later. It must be a regular one, which can
        be read as often as something is asked."""
        try:
            status = os.stat(self._path)
        except OSError as error:
            raise InspectorError(f"{self.name}: {error.strerror}.") from None
        if not stat.S_ISREG(status.st_mode):
            raise InspectorError(f"{self.name}: not a regular file.")
        return status.st_dev, status.st_ino, status.st_size, status.st_mtime_ns
