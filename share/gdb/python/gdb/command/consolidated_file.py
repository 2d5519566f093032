"""Commands for consolidated files. GDB imports what is in this folder of its data directory when it
starts; elsewhere, `source` this file."""

import os
import sys

# The package is two folders up, where GDB looks if it has imported this file by itself.
_folder = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
if _folder not in sys.path:
    sys.path.append(_folder)

import consolidated_file_gdb

consolidated_file_gdb.register_commands()
