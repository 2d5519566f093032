"""The DWARF of a consolidated file as symbols of GDB."""

import os
import re
import tempfile

import gdb

from .errors import InspectorError
from .output import warn

# What GDB prints beside its usual lines.
_PROBLEM = re.compile("^(?:warning: )?(.*dwarf error: .*)$", re.IGNORECASE | re.MULTILINE)


class Symbols:
    """Symbols that were read from a copy of the DWARF, in a folder that is gone when GDB ends."""

    def __init__(self):
        self._folder = None
        self._copy = ""  # by its real name, by which GDB knows it
        self._space = gdb.current_progspace()

    def load(self, opened):
        """Reads those of an opened file that has DWARF. If GDB cannot read it there is a warning."""
        try:
            self._folder = tempfile.TemporaryDirectory(prefix="gdb-consolidated-")
            self._copy = os.path.join(os.path.realpath(self._folder.name), "dwarf")
            opened.inspector.extract("dwarf", self._copy)
            printed = self._execute("add-symbol-file")
        except (InspectorError, gdb.error, OSError, UnicodeError) as error:
            reason = str(error).removeprefix(f"`{self._copy}': ")
            warn(f"{opened.name}: its DWARF gives no symbols: {reason}")
            return
        for problem in _PROBLEM.findall(printed):
            warn(problem.replace(self._copy, opened.name))

    def remove(self):
        """Takes the symbols from GDB again, unless another command already has."""
        if self._folder is None:
            return
        here = gdb.selected_inferior()
        owners = [each for each in gdb.inferiors() if each.progspace == self._space]
        try:
            if owners and here not in owners:
                _select(owners[0])
            self._execute("remove-symbol-file")
        except (gdb.error, UnicodeError):
            pass
        if gdb.selected_inferior() != here:
            _select(here)
        self._folder.cleanup()

    def _execute(self, command):
        """Runs a command of GDB on the copy. Returns what it would print, which names that."""
        quoted = "".join(c if c.isalnum() else "\\" + c for c in self._copy)
        return gdb.execute(f"{command} {quoted}", False, True)


def _select(inferior):
    gdb.execute(f"inferior {inferior.num}", False, True)
