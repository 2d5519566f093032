"""Commands with which GDB knows the kernels, bits and conditions of a consolidated file.

Every session of GDB imports this package, so what it takes to open a file is imported only then.
"""

import functools


@functools.cache
def register_commands():
    """Adds the commands to GDB, once: whoever sources them again keeps the file that is open."""
    from .commands import (
        ConsolidatedFileCommand,
        InfoKernelBitsCommand,
        InfoKernelCommand,
        InfoKernelConditionsCommand,
        InfoKernelsCommand,
    )
    from .session import Session

    session = Session()
    ConsolidatedFileCommand(session)
    InfoKernelsCommand(session)
    InfoKernelCommand(session)
    InfoKernelBitsCommand(session)
    InfoKernelConditionsCommand(session)
