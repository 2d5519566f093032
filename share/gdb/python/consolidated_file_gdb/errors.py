"""What ends a command."""


class InspectorError(Exception):
    """A file that cannot be read, or asked about; the message says why."""
