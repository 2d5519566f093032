"""Questions to consolidator-inspect, which alone reads consolidated files and knows their rules."""

import os
import subprocess
import tempfile

from .errors import InspectorError
from .kernel_document import KernelDocument

PROGRAM = "consolidator-inspect"


class Inspector:
    """Asks the program, which is found by the path, about one file."""

    def __init__(self, name, path):
        """Of a file that is called by its name in messages, and found by an absolute path."""
        self._name = name
        self._path = path

    def everything(self):
        """The answer with all that is in the file."""
        return self._ask("consolidator-inspect/1", "json", "--", self._path)

    def find(self, name):
        """The answer where the variables, registers and kernels of a name are."""
        words = ["find", "--format", "json", "--", self._path, name]
        return self._ask("consolidator-find/1", *words)

    def extract(self, section, target):
        """Writes the bytes of a section to a file, as many as there are."""
        with _started(["extract", self._path, section, "-o", target], subprocess.PIPE) as process:
            _, messages = process.communicate()
        if process.returncode not in (0, 1) or not os.path.exists(target):
            raise _failure(self._named(messages), process.returncode)

    def _ask(self, document_format, *words):
        return Answer(document_format, words, self._named)

    def _named(self, messages):
        """The program's messages, each with the name of the file in place of the path."""
        lines = (line.removeprefix(f"{PROGRAM}: ") for line in messages.splitlines())
        return [f"{self._name}: " + line.removeprefix(f"{self._path}: ") for line in lines]


class Answer:
    """What the program says about a file, read while it says it."""

    def __init__(self, document_format, words, named):
        """Of a run with these words, whose messages are `named`."""
        self._format = document_format
        self._words = words
        self._named = named
        self.members = {}  # all of the document but the kernels, known after the last of them
        self.messages = []  # what the program said beside it, likewise

    def kernels(self):
        """Yields the kernels of the document."""
        fault = None
        with _text_file() as messages:
            with _started(self._words, messages) as process:
                document = KernelDocument(process.stdout)
                try:
                    yield from document.kernels()
                except ValueError as error:
                    fault = InspectorError(f"{PROGRAM} gives no answer: {error}.")
                has_ended = not process.stdout.read(1)  # before its pipe is closed
            messages.seek(0)
            self.messages = self._named(messages.read())
        if fault:
            has_failed = has_ended and process.returncode != 0
            raise _failure(self.messages, process.returncode) if has_failed else fault
        self.members = document.members
        self._check(process.returncode)

    def wrong_version(self):
        """The error that another document than the one asked for has come."""
        return InspectorError(f"{PROGRAM} is of a version that writes no {self._format}.")

    def _check(self, status):
        if self.members.get("format") != self._format:
            raise self.wrong_version()
        if "error" in self.members:
            raise _failure(self.messages, status)


def _failure(messages, status):
    """The error that the program failed: what it said about that, or else how it ended."""
    end = f"status {status}" if status >= 0 else f"signal {-status}"
    return InspectorError("; ".join(messages) or f"{PROGRAM} ended with {end}.")


def _text_file():
    try:
        return tempfile.TemporaryFile("w+", encoding="utf-8", errors="replace")
    except OSError as error:
        raise InspectorError(f"There is no temporary file: {error.strerror}.") from None


def _started(words, messages):
    try:
        return subprocess.Popen(
            [PROGRAM, *words],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=messages,
            encoding="utf-8",
            errors="replace",
        )
    except OSError as error:
        raise InspectorError(f"{PROGRAM} cannot be run: {error.strerror}.") from None
