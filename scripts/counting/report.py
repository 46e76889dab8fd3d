"""Prints what was counted: rows of a table, and what the shell spends its instructions on."""

from collections import Counter

TIMES = 10
MOST_FUNCTIONS = 12


def cell_row(ratio, what, shell, beside, unit):
    what = what.replace("|", r"\|")
    print(f"| {ratio:>7} | {what:<66} | {shell:>14} | {beside:>14} | {unit:<12} |", flush=True)


def heading(text):
    cell_row("", f"**{text}**", "", "", "")


def row(what, shell, beside, unit="instructions"):
    cell_row(f"{shell / beside:.3f}" if beside else "", what, f"{shell:.0f}", f"{beside:.0f}", unit)


def moving_row(what, shell, besides, unit="instructions"):
    cell_row("moves", what, f"{shell:.0f}", f"{min(besides):.0f} to {max(besides):.0f}", unit)


def print_table_head():
    cell_row("ratio", "what; beside it", "shell", "beside it", "unit")
    cell_row("------:", "---", "---:", "---:", "---")


def minus(first, second):
    """Both sums of one line of costs."""
    return tuple(Counter({key: a[key] - b[key] for key in a | b}) for a, b in zip(first, second))


def by_library(own, program):
    sums = Counter()
    for (library, _), cost in own.items():
        sums["cli" if library == program else library] += cost
    return sums


def print_spent(machine, what, lines=(), environment=None):
    """Of the lines, once more, or of the start where there are none."""
    def profile(program):
        def count(times):
            return machine.device.count("functions", machine.words(program), [*lines] * times, environment=environment)
        if not lines:
            return count(0)
        return tuple(Counter({key: cost / TIMES for key, cost in sums.items()})
                     for sums in minus(count(TIMES + 1), count(1)))

    own, whole = profile("cli")
    shell, bare = by_library(own, "cli"), by_library(profile("bare_loop")[0], "bare_loop")
    print(f"\n{what}: {sum(shell.values()):.0f}, beside {sum(bare.values()):.0f} of the bare loop")
    for library, cost in sorted((shell | bare).items()):
        print(f"    {shell[library] - bare[library]:+12.0f}  in {library}")
    print("  the shell's functions, with all that they call:")
    functions = Counter({name: cost for (library, name), cost in whole.items() if library == "cli"})
    for name, cost in functions.most_common(MOST_FUNCTIONS):
        print(f"    {cost:12.0f}  {name}")
    print("  all functions, without what they call:")
    for (library, name), cost in own.most_common(MOST_FUNCTIONS):
        print(f"    {cost:12.0f}  {name} ({library})")
