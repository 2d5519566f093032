"""The consolidated file of a session of GDB."""

from .output import refusal, say, warn


class Session:
    """At most one file that is open, with the symbols of its DWARF."""

    def __init__(self):
        self.known = None  # the file as it was read last, or None
        self._symbols = None

    def open(self, name):
        """Opens a file in place of the one before, which stays if that fails."""
        from .opened_file import OpenedFile

        self._use(OpenedFile(name))

    def _use(self, opened):
        say(f"Reading kernels from {opened.name}...")
        opened.read()
        self.close()
        self.known = opened
        for warning in opened.warnings:
            warn(warning)
        self._read_symbols()

    def close(self):
        """Forgets the file, if there is one."""
        if self._symbols:
            self._symbols.remove()
        self._symbols = None
        self.known = None

    def opened(self):
        """The file that is open, read again if it has changed."""
        if self.known is None:
            raise refusal('No consolidated file is open.  Use the "consolidated-file" command.')
        if self.known.has_changed():
            say(f"`{self.known.name}' has changed; reading it again.")
            self._use(self.known.again())
        return self.known

    def _read_symbols(self):
        from .symbols import Symbols

        if self.known.has_dwarf:
            say(f"Reading symbols from the DWARF in {self.known.name}...")
            self._symbols = Symbols()
            self._symbols.load(self.known)
        else:
            say(f"(No DWARF found in {self.known.name})")
