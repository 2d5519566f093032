"""The DWARF of a consolidated file as symbols of GDB."""

import os
import tempfile

import gdb

from .errors import InspectorError
from .output import warn


class Symbols:
    """Symbols that were read from a copy of the DWARF, in a folder that is gone when GDB ends."""

    def __init__(self, opened):
        """Of an opened file that has DWARF. If GDB cannot read it there is a warning."""
        self._folder = tempfile.TemporaryDirectory(prefix="gdb-consolidated-")
        self._copy = os.path.join(self._folder.name, "dwarf")
        try:
            opened.inspector.extract("dwarf", self._copy)
            self._execute("add-symbol-file")
        except (InspectorError, gdb.error) as error:
            reason = str(error).removeprefix(f"`{self._copy}': ")
            warn(f"{opened.name}: its DWARF gives no symbols: {reason}")

    def remove(self):
        """Takes the symbols from GDB again, unless another command already has."""
        try:
            self._execute("remove-symbol-file")
        except gdb.error:
            pass
        self._folder.cleanup()

    def _execute(self, command):
        """Runs a command of GDB on the copy. What it prints would name that."""
        quoted = "".join(c if c.isalnum() else "\\" + c for c in self._copy)
        gdb.execute(f"{command} {quoted}", False, True)
