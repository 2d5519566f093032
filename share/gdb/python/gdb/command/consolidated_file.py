"""Commands for consolidated files. GDB imports what is in this folder of its data directory when it
starts; elsewhere, `source` this file."""

import os
import sys

# The package is two folders up, where GDB looks if it has imported this file by itself.
folder = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
if folder not in sys.path:
    sys.path.append(folder)

import consolidated_file

consolidated_file.register_commands()
