"""What is shown of kernels, as lines of text."""


def kernel_table(kernels):
    """Yields the lines of a table with one line for each kernel."""
    yield _row("Type", "Instances", "Arguments", "Variables", "Conditions", "Name")
    for kernel in kernels:
        lists = kernel.paths, kernel.arguments, kernel.variables, kernel.conditions
        yield _row(kernel.type, *map(len, lists), kernel.name)


def _row(kind, instances, arguments, variables, conditions, name):
    counts = f"{instances:>9}  {arguments:>9}  {variables:>9}  {conditions:>10}"
    return f"{kind:<7}  {counts}  {name}"


def kernel_lines(kernel):
    """Yields the lines that describe a kernel."""
    yield f'Kernel "{kernel.name}", type {kernel.type}:'
    yield from _list("instances", kernel.paths)
    yield from _list("arguments", kernel.arguments)
    yield from _list("variables", kernel.variables)
    yield from _list("conditions", kernel.conditions)
    yield from _list("block RAMs", kernel.brams)


def _list(name, items):
    if not items:
        yield f"  No {name}."
        return
    yield f"  {name[0].upper()}{name[1:]}:"
    for item in items:
        yield f"    {item}"


def condition_lines(kernel, condition):
    """Yields the lines that show a condition of a source line in each instance."""
    yield f'Kernel "{kernel.name}" is at line {condition.line} of "{condition.file}" when:'
    for path in kernel.paths:
        yield f"  {condition.inside(path + kernel.suffix)}"
    if not kernel.paths:
        yield f"  {condition.text} (it has no instances)"
