"""The JSON documents of consolidator-inspect, read piece by piece."""

import json


class KernelDocument:
    """A document of one object, in which "kernels" is a list that may be long.

    No more than one kernel is in memory at a time, and of that not its registers, which are most of
    a large file. Any other text than such a document raises ValueError, as does one that ends too
    early.
    """

    # Where quotes are within a text, a backslash is in front of them: none of these can be in one.
    _LIST = '"kernels":['
    _REGISTERS = "hardware_variables"
    _AFTER_REGISTERS = '],"breakable_conditions":'
    _BLOCK = 65536

    def __init__(self, stream):
        """Of a stream of text."""
        self._stream = stream
        self._decoder = json.JSONDecoder()
        self._text = ""
        self._position = 0
        self.members = {}

    def kernels(self):
        """Yields the kernels. After the last one, `members` has all of the document but them."""
        head = self._take_through(self._LIST)
        if head is None:
            self.members = _object(self._text)
            return
        while not self._skip("]"):
            self._skip(",")
            yield self._take_kernel()
        self.members = _object(f"{head}]{self._text[self._position :]}{self._stream.read()}")

    def _take_kernel(self):
        if not self._skip("{"):
            raise ValueError("a kernel is no object")
        kernel = {}
        while not self._skip("}"):
            self._skip(",")
            key = self._take_value()
            self._skip(":")
            if key == self._REGISTERS:
                self._take_through(self._AFTER_REGISTERS)
                key = "breakable_conditions"
            kernel[key] = self._take_value()
        return kernel

    def _take_value(self):
        while True:
            try:
                value, end = self._decoder.raw_decode(self._text, self._position)
                if end < len(self._text):  # else more of a number may follow
                    self._position = end
                    return value
            except json.JSONDecodeError:
                pass
            except RecursionError:
                raise _too_deep() from None
            self._need_more()

    def _take_through(self, mark):
        """The text up to the end of a mark, or None if there is none."""
        while (found := self._text.find(mark, self._position)) < 0:
            if not self._read_more():
                return None
        start = self._position
        self._position = found + len(mark)
        return self._text[start : self._position]

    def _skip(self, character):
        """Whether the next character is this one, which then is left out."""
        if self._position == len(self._text):
            self._need_more()
        is_next = self._text[self._position] == character
        self._position += is_next
        return is_next

    def _need_more(self):
        if not self._read_more():
            raise ValueError("it ends too early")

    def _read_more(self):
        """Reads at least as much as is waiting already, so that looking again at a value until it
        is whole takes linear time. Returns whether there was anything."""
        self._text = self._text[self._position :]
        self._position = 0
        more = self._stream.read(max(len(self._text), self._BLOCK))
        self._text += more
        return bool(more)


def _too_deep():
    return ValueError("it is nested too deeply")


def _object(text):
    try:
        members = json.loads(text)
    except RecursionError:
        raise _too_deep() from None
    if not isinstance(members, dict):
        raise ValueError("it is no object")
    return members
