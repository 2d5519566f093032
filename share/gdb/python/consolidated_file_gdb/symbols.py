"""The DWARF of a consolidated file as symbols of GDB."""

import contextlib
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
            with _selection_kept():
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
        owners = [each for each in gdb.inferiors() if each.progspace == self._space]
        with _selection_kept(), contextlib.suppress(gdb.error, OSError, UnicodeError):
            if owners and gdb.selected_inferior() not in owners:
                _select(owners[0])
            self._execute("remove-symbol-file")
        self._folder.cleanup()

    def _execute(self, command):
        """Runs a command of GDB on the copy. Returns what it would print, which names that."""
        quoted = "".join(c if c.isalnum() else "\\" + c for c in self._copy)
        return gdb.execute(f"{command} {quoted}", False, True)


def _select(inferior):
    """Selects an inferior, which GDB tells even if it is asked to return what it would print."""
    gdb.execute(f"with suppress-cli-notifications on -- inferior {inferior.num}", False, True)


@contextlib.contextmanager
def _selection_kept():
    """Selects the inferior, thread and frame again that are selected now."""
    inferior, thread, level = gdb.selected_inferior(), gdb.selected_thread(), _frame_level()
    try:
        yield
    finally:
        with contextlib.suppress(gdb.error):
            if thread:
                thread.switch()
                _select_frame(level)
            elif gdb.selected_inferior() != inferior:
                _select(inferior)


def _frame_level():
    try:
        return gdb.selected_frame().level()
    except gdb.error:  # there is none
        return 0


def _select_frame(level):
    """Selects a frame by its level, since objects of frames end when symbols change."""
    frame = gdb.newest_frame()
    for _ in range(level):
        frame = frame.older() or frame
    frame.select()
