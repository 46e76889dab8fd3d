#!/usr/bin/env python3
"""rows.py ROOT GROUP...: counts on the device in the folder ROOT, and prints the groups of rows as one table."""

import random
import signal
import sys

from counters import Device
from report import heading, moving_row, print_spent, print_table_head, row

SYS_CONF = "hostname=vendor-ap\nbaudrate=115200\nadmin-timeout=5\n"
PROFILE = "alias lan='ifconfig eth0'\nalias br='brctl show'\n"
FLASH_SIZE = 262144

LINES = ("hide-hiden", "config capwap wtp multicast-ttl 7", "get radio info", "show sys_conf", "help")
# Another program at a terminal, a line for it, and the shell's line beside that.
OTHERS = (
    ("busybox ash", ("busybox", "ash"), ": hide-hid", "hide-hiden"),
    ("bash", ("bash", "--norc", "--noprofile"), ": hide-hid", "hide-hiden"),
    ("birdc", ("birdc", "-s", "/bird/socket"), "show status", "show sys_conf"),
)
# Its line costs what the pieces say in which the daemon's answer comes.
MOVING = ("birdc",)
PIPED = (
    ("show sys_conf | grep host", "cat sys.conf | grep host"),
    ("ifconfig | grep eth", "ifconfig | grep eth"),
)
LISTS = (
    ("383 stations", "get wtp stations", "STATIONS", 383),
    ("8 networks", "get vap cfg-info", "VAPS", 8),
    ("2 radios", "get radio info", "RADIOS", 2),
)
DUMPS = (("xxd -g 1", ("xxd", "-g", "1")), ("busybox hexdump -C", ("busybox", "hexdump", "-C")))
STARTING = (
    ("show sys_conf", "true"),
    ("show sys_conf | grep host", "cat sys.conf | grep host"),
    ("ifconfig", "ifconfig"),
    ("ifconfig | grep eth", "ifconfig | grep eth"),
)


class Machine:
    """A processor: its counter, and where its programs are."""

    def __init__(self, device, name, own, system):
        self.device, self.name = device, name
        self.programs = {program: f"{own}/{program}" for program in ("cli", "bare_loop", "plain_work")}
        self.programs |= {name: system[0] + path for name, path in (
            ("busybox", "/bin/busybox"), ("bash", "/bin/bash"), ("xxd", "/usr/bin/xxd"))}
        self.programs["birdc"] = f"{system[1]}/usr/sbin/birdc"

    def words(self, program, *rest):
        return [self.programs[program], *rest]

    def count(self, program, *rest, **how):
        return self.device.count(self.name, self.words(program, *rest), **how)

    def line(self, program, line, *rest, **how):
        return self.device.per_line(self.name, self.words(program, *rest), line, **how)

    def plain(self, work, argument, times=20):
        return self.device.per_time(self.name, self.words("plain_work", work, argument), times)


def configure(device):
    device.clear()
    device.write("/cfg/sys.conf", SYS_CONF)
    device.write("/cfg/cw.conf", device.path("/prepared/cw.conf").read_bytes())
    device.write("/etc/profile", PROFILE)


def start_rows(machine, typed):
    device = machine.device
    device.clear()
    way, times = ("typed", 20) if typed else ("piped", 200)
    heading(f"start and end, and each of {times} lines {way}; bare loop")
    row("start, empty device", machine.count("cli", typed=typed), machine.count("bare_loop", typed=typed))
    configure(device)
    row("start, configured device", machine.count("cli", typed=typed), machine.count("bare_loop", typed=typed))
    for line in LINES:
        row(f"`{line}`", *(machine.line(name, line, times=times, typed=typed) for name in ("cli", "bare_loop")))


def other_rows(machine):
    heading("the same, typed; other programs that read lines")
    for name, words, line, own in OTHERS:
        row(f"start, configured device; {name}", machine.count("cli", typed=True), machine.count(*words, typed=True))
        what = f"`{own}`; `{line}` of {name}"
        shell = machine.line("cli", own, typed=True)
        if name in MOVING:
            others = [machine.line(words[0], line, *words[1:], fresh=True, typed=True) for _ in range(3)]
            moving_row(what, shell, others)
        else:
            row(what, shell, machine.line(words[0], line, *words[1:], typed=True))


def start_group(machine):
    start_rows(machine, True)
    start_rows(machine, False)
    other_rows(machine)


def pipe_group(machine):
    configure(machine.device)
    heading("a piped line, all its processes; the system shell's")
    for line, beside in PIPED:
        row(f"`{line}`; `sh -c '{beside}'`",
            machine.device.per_line("pc, with children", machine.words("cli"), line, times=5),
            machine.device.count("pc, with children", ["/bin/sh", "-c", f"cd /prepared; {beside}"]))


def shown(device, line, environment):
    """What a line shows, on either machine."""
    output = device.output(["/pc/cli"], [line], environment)
    return output[output.index(b"\n") + 1:output.rindex(b"\n") + 1]


def list_group(machine):
    configure(machine.device)
    heading("lists at their longest; bare loop's line and the same text")
    for what, line, variable, most in LISTS:
        environment = {variable: str(most)}
        text = shown(machine.device, line, environment)
        machine.device.write("/prepared/text", text)
        cost = machine.line("cli", line, times=4, environment=environment)
        bare = machine.line("bare_loop", line)
        row(f"`{line}`, {what}; finished text by fputs", cost, bare + machine.plain("copy", "/prepared/text"))
        if variable == "STATIONS":
            row(f"`{line}`, {what}; fields by printf", cost, bare + machine.plain("stations", str(most), times=4))


def calls_to_show(device, line, environment=None):
    """What a line asks of the kernel that shows much at a terminal."""
    device.write("/prepared/text", shown(device, line, environment))
    device.write("/prepared/nothing", "")
    whole, empty = (device.count("system calls", ["/bin/cat", f"/prepared/{name}"]) for name in ("text", "nothing"))
    shell, bare = (device.per_line("system calls", [program], line, times=4, typed=True, environment=environment)
                   for program in ("/pc/cli", "/pc/bare_loop"))
    row(f"`{line}`, typed; and `cat` of its text", shell, bare + whole - empty, "system calls")


def flash_group(machine):
    device = machine.device
    configure(device)
    device.write("/dev/mtdblock0", random.Random(1).randbytes(FLASH_SIZE))
    device.write("/prepared/nothing", "")
    heading("the flash's 262144 bytes in hexadecimal; other dumps")
    dump = machine.line("cli", "bios dumpflash", times=1)
    for name, words in DUMPS:
        whole = machine.count(*words, "/dev/mtdblock0")
        row(f"`bios dumpflash`; `{name}`", dump, whole - machine.count(*words, "/prepared/nothing"))


def saves():
    """Lines that go together: two changes, each saved."""
    return [line for value in (7, 8) for line in (f"config capwap wtp multicast-ttl {value}", "save cw_conf")]


def file_group(machine):
    device = machine.device
    device.clear()
    heading("configuration files; reading and replacing the same lines")
    files = (("/cfg/sys.conf", SYS_CONF), ("/cfg/cw.conf", device.path("/prepared/cw.conf").read_bytes()),
             ("/etc/profile", PROFILE))
    for name, content in files:
        costs = []
        for text in (content, ""):
            device.write(name, text)
            costs.append((machine.count("cli"), machine.plain("load", name)))
        row(f"start: the {len(content.splitlines())} lines of {name}", *(whole - empty for whole, empty in zip(*costs)))
        device.write(name, content)
    bare = machine.line("bare_loop", "save cw_conf")
    row("`save cw_conf` after a change", (machine.line("cli", saves()) - machine.line("cli", saves()[::2])) / 2,
        bare + machine.plain("save", "/prepared/cw.conf"))
    names = [f"config system hostname ap{number}" for number in (7, 8)]
    row("`config system hostname ap7`", machine.line("cli", names) / 2,
        machine.line("bare_loop", names[0]) + machine.plain("save", "/prepared/sys.conf"))


def scale(what, cost, most):
    """The cost of an item where there are `most`, beside that where there is one."""
    none = cost(0)
    row(f"{what}, of {most}; of one", (cost(most) - none) / most, cost(1) - none)


def scaling_group(machine):
    device = machine.device
    configure(device)
    heading("an item's cost among the most; its cost alone")
    for what, line, variable, most in LISTS[:2]:
        scale(f"`{line}`: {what.split()[1][:-1]}",
              lambda count: machine.line("cli", line, times=4, environment={variable: str(count)}), most)

    def word_cost(count):
        return machine.line("cli", "hide-hiden" + " abc" * count)

    def start_cost(name, item, head):
        def cost(count):
            device.write(name, head + item * count)
            return machine.count("cli")
        return cost

    scale("a line: word of three letters", word_cost, 250)
    scale("start: line of cw.conf", start_cost("/cfg/cw.conf", "multicast-ttl=7\n", "#\n"), 1000)
    scale("start: alias", start_cost("/etc/profile", "alias lan='ifconfig eth0'\n", "#\n"), 100)
    configure(device)

    def late_line(program, before):
        few, more = (machine.count(program, lines=["hide-hiden"] * count) for count in (before, before + 20))
        return (more - few) / 20

    late = late_line("cli", 1100)
    row("`hide-hiden` behind 1100 lines; behind one", late, late_line("cli", 1))
    row("`hide-hiden` behind 1100 lines; the bare loop", late, late_line("bare_loop", 1100))


def memory_group(machine):
    configure(machine.device)
    heading("memory at the prompt; the bare loop's")
    sizes = (machine.device.memory(machine.words(name)) for name in ("cli", "bare_loop"))
    for what, shell, bare in zip(("resident", "private", "private, of no file"), *sizes):
        row(what, shell, bare, "KB")


def system_group(machine):
    device = machine.device
    configure(device)
    heading("what the kernel is asked for; by the bare loop")
    cli, bare = (machine.words(name) for name in ("cli", "bare_loop"))
    row("start, configured device", *(device.count("system calls", words, typed=True) for words in (cli, bare)),
        "system calls")
    for line in LINES:
        row(f"`{line}`, typed", *(device.per_line("system calls", words, line, typed=True) for words in (cli, bare)),
            "system calls")
    device.write("/dev/mtdblock0", random.Random(1).randbytes(FLASH_SIZE))
    for _, line, variable, most in LISTS:
        calls_to_show(device, line, {variable: str(most)})
    calls_to_show(device, "bios dumpflash")
    heading("programs that a line starts; a system shell and what it starts")
    for line, beside in STARTING:
        row(f"`{line}`; `sh -c '{beside}'`",
            device.count("programs", cli, [line]) - device.count("programs", cli),
            device.count("programs", ["/bin/sh", "-c", f"cd /prepared; {beside}"]), "programs")


def target_group(machine):
    target = Machine(machine.device, "target", "/target", ("/sysroot", "/sysroot"))
    heading("ON THE DEVICE'S PROCESSOR, emulated, built for size")
    for name in ("start", "lists", "flash", "files"):
        run(name, target)


def spent_group(machine):
    configure(machine.device)
    print_spent(machine, "start, configured device")
    for line in LINES:
        print_spent(machine, line, [line])
    for what, line, variable, most in LISTS:
        print_spent(machine, f"{line}, {what}", [line], {variable: str(most)})
    print_spent(machine, "save cw_conf, behind a change", saves())


# How often a figure is counted: the terminal's library looks at the clock, and does a little less when the second is
# still that of its last look, which is much beside the cost of a line.
GROUPS = {
    "start": (start_group, 1),
    "pipe": (pipe_group, 1),
    "lists": (list_group, 1),
    "flash": (flash_group, 1),
    "files": (file_group, 3),
    "scaling": (scaling_group, 3),
    "memory": (memory_group, 1),
    "system": (system_group, 1),
    "target": (target_group, 1),
    "spent": (spent_group, 1),
}


def run(name, machine):
    group, machine.device.tries = GROUPS[name]
    group(machine)


def prepare(machine):
    """The files that the device is configured with, as the shell itself writes them."""
    device = machine.device
    device.clear()
    device.write("/cfg/sys.conf", SYS_CONF)
    lists = [f"config capwap wtp {list} add {entry}" for number in (1, 2, 3)
             for list, entry in (("ac-ip-addr", f"10.0.0.{number}"), ("ac-hostname", f"ac{number}.example.net"))]
    device.output(machine.words("cli"), [*lists, "config capwap wtp multicast-ttl 7", "save cw_conf"])
    device.write("/prepared/cw.conf", device.path("/cfg/cw.conf").read_bytes())
    device.write("/prepared/sys.conf", SYS_CONF)


def stop(*_):
    raise TimeoutError("no prompt")


def main(root, *groups):
    signal.signal(signal.SIGALRM, stop)
    machine = Machine(Device(root), "pc", "/pc", ("", "/bird"))
    prepare(machine)
    if groups != ("spent",):
        print_table_head()
    for group in groups:
        run(group, machine)


if __name__ == "__main__":
    main(*sys.argv[1:])
