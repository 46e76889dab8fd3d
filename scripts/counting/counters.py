"""Runs programs on the device of a benchmark, and counts what they do."""

import fcntl
import os
import pty
import re
import shutil
import signal
import struct
import subprocess
import termios
from collections import Counter
from pathlib import Path

PATIENCE = 120  # seconds for a prompt
PROMPT = rb"[#>] (\x1b\[6n)?$"
ENVIRONMENT = {
    "PATH": "/tools",
    "TERM": "xterm",
    "PS1": "# ",
    "HISTFILE": "/dev/null",
    # An instruction that repeats itself would count once for each byte: the C library takes others.
    "GLIBC_TUNABLES": "glibc.cpu.x86_rep_movsb_threshold=100000000:glibc.cpu.x86_rep_stosb_threshold=100000000",
}
CALLGRIND = ["/usr/bin/valgrind", "--tool=callgrind", "--vgdb=no"]
NO_PROFILE = "--callgrind-out-file=/dev/null"


def spent_by_function(profiles):
    """Of callgrind's profile: the instructions of each function, by its program or library and its name, without those
    of the functions that it calls and with them."""
    names, own, whole = {}, Counter(), Counter()
    place, called = {}, False
    for line in b"".join(profiles).decode().splitlines():
        if match := re.match(r"(ob|fn)=(\(\d+\))(?: (.*))?", line):
            kind, number, name = match.groups()
            place[kind] = names.setdefault((kind, number), name)
        elif match := re.match(r"c(ob|fn)=(\(\d+\)) (.*)", line):
            names.setdefault(match.groups()[:2], match[3])
        elif line.startswith("calls="):
            called = True
        elif match := re.match(r"[+\-*\d]\S* (\d+)$", line):
            function = Path(place.get("ob") or "").name, place.get("fn")
            whole[function] += int(match[1])
            if not called:
                own[function] += int(match[1])
            called = False
    return own, whole


# What counts: the words in front of a program, and what finds the figures in what these leave in the folder "counts".
CALLED = (rb"Collected : (\d+)", lambda figures: sum(map(int, figures)))
COUNTERS = {
    "pc": ([*CALLGRIND, NO_PROFILE, "--log-file=/counts/%p"], *CALLED),
    "pc, with children": ([*CALLGRIND, NO_PROFILE, "--trace-children=yes", "--log-file=/counts/%p"], *CALLED),
    "functions": ([*CALLGRIND, "--callgrind-out-file=/counts/profile"], rb"(?s).*\S.*", spent_by_function),
    "target": (["/usr/bin/qemu-mipsel", "-L", "/sysroot", "-plugin", "/target/count.so,out=/counts/own"], *CALLED),
    "system calls": (["/usr/bin/strace", "-o", "/counts/calls"], rb"(?m)^\w+\(", len),
    "programs": (["/usr/bin/strace", "-f", "-e", "trace=execve", "-o", "/counts/calls"], rb"execve.* = 0\n", len),
}


class Terminal:
    """A program at a terminal of its own, on which a person types: the next key when the last one has shown."""

    def __init__(self, words):
        self.master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 80, 0, 0))
        self.process = subprocess.Popen(words, stdin=slave, stdout=slave, stderr=slave, start_new_session=True,
                                        preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
        os.close(slave)
        self.shown = b""
        self.show_until(lambda: re.search(PROMPT, self.shown))

    def show_until(self, done):
        signal.alarm(PATIENCE)
        while not done():
            self.shown += os.read(self.master, 65536)
        signal.alarm(0)

    def type(self, line):
        for key in line.encode():
            self.shown = b""
            os.write(self.master, bytes([key]))
            self.show_until(lambda: self.shown)
        self.shown = b""
        os.write(self.master, b"\r")
        self.show_until(lambda: b"\n" in self.shown and re.search(PROMPT, self.shown))

    def leave(self):
        os.write(self.master, b"\x04")
        signal.alarm(PATIENCE)
        try:
            while os.read(self.master, 65536):
                pass
        except OSError:  # the program has left the terminal
            pass
        self.process.wait()
        signal.alarm(0)
        os.close(self.master)


class Device:
    """The device's file system, with the programs of both machines."""

    def __init__(self, root):
        self.root = Path(root)
        self.known = {}
        self.tries = 1

    def path(self, name):
        return self.root / name.lstrip("/")

    def write(self, name, content):
        """A file as it was long ago: what is written and read within a second is read again."""
        path = self.path(name)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        os.utime(path, (1700000000, 1700000000))
        self.known.clear()

    def clear(self):
        for name in ("cfg", "etc", "tmp"):
            for path in self.path(name).iterdir():
                path.unlink()
        self.known.clear()

    def words(self, program, environment=None):
        settings = [f"{name}={value}" for name, value in (ENVIRONMENT | (environment or {})).items()]
        return ["chroot", str(self.root), "/usr/bin/env", "-i", *settings, *program]

    def output(self, program, lines=(), environment=None):
        return subprocess.run(self.words(program, environment), input="".join(f"{line}\n" for line in lines).encode(),
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False, timeout=PATIENCE).stdout

    def count(self, counter, program, lines=(), typed=False, environment=None, fresh=False):
        """What the program does while it reads the lines, from a person or else from a pipe, and their end: what it did
        mostly, of as many tries as told. It is known from the last time unless it shall be counted afresh."""
        key = (counter, *program, None, *lines, typed, *(environment or {}).items())
        if fresh or key not in self.known:
            tries = [self.count_once(counter, program, lines, typed, environment) for _ in range(self.tries)]
            self.known[key] = sorted(tries)[self.tries // 2]
        return self.known[key]

    def count_once(self, counter, program, lines, typed, environment):
        prefix, pattern, figure = COUNTERS[counter]
        shutil.rmtree(self.path("counts"), ignore_errors=True)
        self.path("counts").mkdir()
        if typed:
            terminal = Terminal(self.words([*prefix, *program], environment))
            for line in lines:
                terminal.type(line)
            terminal.leave()
        else:
            self.output([*prefix, *program], lines, environment)
        left = b"".join(path.read_bytes() for path in sorted(self.path("counts").iterdir()))
        return figure(re.findall(pattern, left))

    def per_line(self, counter, program, line, times=20, **how):
        """What one more line costs; a line may be several that go together."""
        block = [line] if isinstance(line, str) else line
        more = self.count(counter, program, block * (times + 1), **how)
        return (more - self.count(counter, program, block, **how)) / times

    def per_time(self, counter, program, times=20):
        """What doing it once more costs a program whose last word says how often to do it."""
        more = self.count(counter, [*program, str(times + 1)])
        return (more - self.count(counter, [*program, "1"])) / times

    def memory(self, program):
        """KB of the process at the prompt: resident, those of no other process, and those of no file. Which pages are
        mapped at once depends on addresses, so these are always the same."""
        terminal = Terminal(self.words(["/usr/bin/setarch", "-R", *program], {"LD_LIBRARY_PATH": "/lone"}))
        report = Path(f"/proc/{terminal.process.pid}/smaps_rollup").read_text()
        terminal.leave()
        sizes = {name: int(size) for name, size in re.findall(r"(?m)^(\w+): +(\d+) kB", report)}
        return sizes["Rss"], sizes["Private_Clean"] + sizes["Private_Dirty"], sizes["Anonymous"]
