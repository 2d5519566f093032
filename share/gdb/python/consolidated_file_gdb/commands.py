"""The commands, with their help and completion."""

import re
import warnings

import gdb

from .errors import InspectorError
from .output import plain, refusal, say


class Command(gdb.Command):
    """A command about the consolidated file of a session."""

    def __init__(self, name, kind, session, *completion):
        super().__init__(name, kind, *completion)
        self.session = session

    def invoke(self, argument, from_tty):
        """Called by GDB, which prints the messages of its own kind of errors without more."""
        try:
            self.run(argument.strip())
        except InspectorError as error:
            raise refusal(str(error)) from None


class ConsolidatedFileCommand(Command):
    """Use FILE for its kernels and symbols.
    Usage: consolidated-file [FILE]

    FILE is a consolidated file, which holds the debug metadata of an accelerator.
    Its DWARF is read as by "add-symbol-file"; what else is known of its kernels is
    shown by "info kernels", "info kernel", "info kernel-bits" and
    "info kernel-conditions".
    No arg means to have no consolidated file."""

    def __init__(self, session):
        super().__init__("consolidated-file", gdb.COMMAND_FILES, session, gdb.COMPLETE_FILENAME)

    def run(self, argument):
        self.dont_repeat()
        names = gdb.string_to_argv(argument)
        if len(names) > 1:
            raise refusal("Only one file name is allowed.")
        if names == [""]:
            raise refusal("The file name is empty.")
        if names:
            self.session.open(names[0])
        else:
            self.session.close()
            say("No consolidated file now.")


class InfoCommand(Command):
    """A subcommand of "info", whose argument must be there if it is called something."""

    ARGUMENT = None  # what it is called

    def __init__(self, name, session):
        super().__init__(f"info {name}", gdb.COMMAND_STATUS, session)

    def run(self, argument):
        opened = self.session.opened()
        if self.ARGUMENT and not argument:
            raise refusal(f"Argument required ({self.ARGUMENT}).")
        for line in self.lines(opened, argument):
            say(line)

    def complete(self, text, word):
        """Called by GDB for words to put in place of `word`, with which `text` ends."""
        if self.session.known is None:
            return []
        matches = {name for name in self.candidates(self.session.known) if name.startswith(text)}
        start = len(text) - len(word)
        # The command sees what is typed without the blanks around it, and takes no empty name.
        return [name[start:] for name in matches if name and name == plain(name).strip()]

    def candidates(self, known):
        """What the argument may be for a file that is known."""
        return [kernel.name for kernel in known.kernels]


class InfoKernelsCommand(InfoCommand):
    """All kernels in the consolidated file, or those matching REGEXP.
    Usage: info kernels [REGEXP]

    For each kernel its type is shown, and how many instances, arguments, variables
    and conditions it has.  REGEXP is one of Python."""

    def __init__(self, session):
        super().__init__("kernels", session)

    def lines(self, opened, pattern):
        from .reports import kernel_table

        try:
            with warnings.catch_warnings():
                warnings.simplefilter("error")  # such as of classes that Python may know one day
                wanted = re.compile(pattern)
        except (re.error, OverflowError, RecursionError, Warning) as error:
            raise refusal(f"Invalid regexp: {error}.") from None
        kernels = [kernel for kernel in opened.kernels if wanted.search(kernel.name)]
        if not kernels:
            return ["No kernels matched." if pattern else f"No kernels in {opened.name}."]
        return kernel_table(kernels)


class InfoKernelCommand(InfoCommand):
    """Describe kernel NAME.
    Usage: info kernel NAME

    Instances, arguments, variables, conditions and block RAMs are shown.  There
    may be several kernels of a name."""

    ARGUMENT = "kernel name"

    def __init__(self, session):
        super().__init__("kernel", session)

    def lines(self, opened, name):
        from .reports import kernel_lines

        kernels = opened.kernels_named(name)
        if not kernels:
            raise refusal(f'No kernel "{name}" in {opened.name}.')
        for kernel in kernels:
            yield from kernel_lines(kernel)


class InfoKernelBitsCommand(InfoCommand):
    """Describe where the bits of argument or variable VARIABLE are in the device.
    Usage: info kernel-bits [KERNEL::]VARIABLE

    For each instance of a kernel the location of each bit is shown: the two numbers
    that the logic-location file has for it.  Bits without a location are not shown
    if they are above the highest one that has one."""

    ARGUMENT = "variable name"

    def __init__(self, session):
        super().__init__("kernel-bits", session)

    def lines(self, opened, text):
        from .bits import BitsQuery

        query = BitsQuery.parse(text, opened)
        if query is None:
            raise refusal(f'No argument or variable "{text}" in {opened.name}.')
        return query.lines()

    def candidates(self, known):
        for kernel in known.kernels:
            for variable in kernel.all_variables():
                if variable.name:
                    yield variable.name
                    yield f"{kernel.name}::{variable.name}"


class InfoKernelConditionsCommand(InfoCommand):
    """Describe the conditions at which kernels are at line LINE of file FILE.
    Usage: info kernel-conditions FILE:LINE

    Each condition is shown as it is for every instance: the operator first, and
    the signals by their paths in the design.  FILE may lack leading folders."""

    ARGUMENT = "FILE:LINE"

    def __init__(self, session):
        super().__init__("kernel-conditions", session)

    def lines(self, opened, place):
        from .reports import condition_lines

        # Python makes no number of thousands of digits.
        match = re.fullmatch("(.+):([0-9]{1,20})", place, re.DOTALL)
        if match is None:
            raise refusal(f'"{place}" is not of the form FILE:LINE.')
        file, line = match[1], int(match[2])
        lines = [
            shown
            for kernel in opened.kernels
            for condition in kernel.conditions
            if condition.is_at(file, line)
            for shown in condition_lines(kernel, condition)
        ]
        return lines or [f'No kernel has a condition for line {line} of "{file}".']

    def candidates(self, known):
        for kernel in known.kernels:
            for condition in kernel.conditions:
                if condition.is_at(condition.file, condition.line):
                    yield f"{condition.file}:{condition.line}"
