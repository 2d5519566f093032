"""Texts on their way to the terminal, where those of a file must not control anything."""

import re

import gdb

_HIDDEN = re.compile(
    "[\x00-\x1f\x7f-\x9f\u061c\u200b-\u200f\u2028-\u202e\u2060-\u206f\ufeff\U000e0000-\U000e007f"
    "\ud800-\udfff]"
)


def _visible(match):
    code = ord(match.group())
    if 0xD800 <= code <= 0xDFFF:
        return "\ufffd"
    return f"\\x{code:02X}" if code <= 0x7F else f"\\u{{{code:04X}}}"


def plain(text):
    """The text with everything in it visible: control characters, marks of writing direction and
    the like are shown as consolidator-inspect shows them."""
    return _HIDDEN.sub(_visible, text)


def say(line):
    """Prints one line of an answer."""
    gdb.write(plain(line) + "\n")


def warn(message):
    """Prints a warning as GDB prints its own."""
    gdb.flush(gdb.STDOUT)
    gdb.write(f"warning: {plain(message)}\n", gdb.STDERR)


def refusal(message):
    """The error that ends a command with this message."""
    return gdb.GdbError(plain(message))
