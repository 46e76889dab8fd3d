#!/usr/bin/env python3
"""play_sessions.py [--vendor] PROGRAM SESSION...: types the sessions into the shell and compares what is shown.

A session reads like a terminal. A line with a prompt is typed, "^D" ends the input; a line that begins with "$ " is run
by the system shell in the device's folder; everything else is what they show, control characters as "^M", and a shell
that ends with another status than 0 as "[1]". With UPDATE_SESSIONS=1 in the environment a session that differs is
written anew. The device is small, its tools write their calls to "tmp/calls"; for a session in a folder "access_point"
it is the simulated one, with the daemon that stands beside PROGRAM. With --vendor it is the root of the file system.
"""

import difflib
import os
import re
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parent.parent
PATIENCE = 30  # seconds
PROMPT = re.compile(rb"[^\n]*  # \Z")
TOOLS = """brctl cw_debug cw_diag diag_debug_crashlog flash hostname ifconfig ip iwconfig iwpriv kill killall lldpctl
    passwd ping pkill ps qln-get-status qln-set-hostname reboot restore route sptest tftp top udhcpc""".split()
# What a "$" line may use besides the system's tools.
FUNCTIONS = """
plant() { printf '#!/bin/sh\\n%s\\n' "$2" >"tools/$1" && chmod +x "tools/$1"; }
calls() { cat tmp/calls 2>/dev/null; rm -f tmp/calls; }
await() { for _ in $(seq 1000); do eval "$1" >/dev/null 2>&1 && return; sleep 0.01; done; echo "not so: $1"; }
"""


def visible(output):
    return re.sub(rb"[\x00-\x08\x0b-\x1f]", lambda control: b"^%c" % (control[0][0] + 64), output)


class Device:
    """A device for one session, the shell on it, and the transcript of both."""

    def __init__(self, root, program, session, vendor):
        self.root, self.shell, self.pending, self.transcript, self.changes = Path(root), None, b"", b"", 0
        environment = {"TERM": "dumb", "COLUMNS": "500", "LINES": "50", "TZ": "UTC"}
        self.command, self.daemon = shlex.split(program), None
        self.command[-1] = str(Path(self.command[-1]).resolve())
        daemon = Path(self.command[-1]).with_name("cwWtpd")
        self.environment = environment | {"PATH": f"{root}/tools:{os.environ['PATH']}", "CLI_SIM_ROOT": root}
        self.environment["lay_out"] = str(CHECKOUT / "platform/simulation/lay_out")
        self.environment["cwWtpd"] = shlex.join([*self.command[:-1], str(daemon)])
        if vendor:
            kit = CHECKOUT / "platform/vendor/device.sh"
            subprocess.run(["bash", "-c", f'. "$0" && make_device "$1" "$2"', kit, root, program], check=True)
            words = [f"{name}={value}" for name, value in environment.items()]
            self.command = ["chroot", root, "/usr/bin/env", "-i", "PATH=/tools", "CLI_SIM_ROOT=/cfg", *words, "/cli"]
        self.environment["cli"] = shlex.join(self.command)
        for folder in "cfg etc dev proc tmp bin tools".split():
            (self.root / folder).mkdir(exist_ok=True)
        for tool in TOOLS:
            self.plant(tool, f'echo "{tool} $*" >>"{root if not vendor else ""}/tmp/calls"')
        if session.parent.name == "access_point":
            subprocess.run([CHECKOUT / "platform/simulation/lay_out", root], check=True)
            self.start_daemon(daemon)
        else:
            (self.root / "cfg/sys.conf").write_text("hostname=ap\nbaudrate=115200\nadmin-timeout=5\n")
            factory = (CHECKOUT / "platform/simulation/factory/cw.conf").read_bytes()
            for folder in "cfg etc".split():
                (self.root / folder / "cw.conf").write_bytes(factory)

    def plant(self, tool, script):
        file = self.root / "tools" / tool
        file.write_text(f"#!/bin/sh\n{script}\n")
        file.chmod(0o755)

    def start_daemon(self, program):
        self.daemon = subprocess.Popen([*self.command[:-1], program], env=self.environment, stderr=subprocess.DEVNULL)
        end = time.monotonic() + PATIENCE
        while not (self.root / "tmp/cwWtpd.sock").exists() and time.monotonic() < end:
            time.sleep(0.01)

    def age_files(self):
        """A change of a file is not of the moment, nor of the second of an earlier one."""
        for file in (self.root / "cfg").glob("*"):
            if file.stat().st_mtime > time.time() - 1800:
                self.changes += 1
                os.utime(file, (time.time() - 7200 + self.changes,) * 2)

    def run(self, command):
        """Runs a line of the system shell."""
        script = FUNCTIONS + command
        result = subprocess.run(["sh", "-c", script], cwd=self.root, env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=PATIENCE)
        self.transcript += b"$ " + command.encode() + b"\n" + visible(result.stdout)
        self.age_files()

    def type(self, line):
        if self.shell is None:
            self.age_files()
            self.shell = subprocess.Popen(self.command, env=self.environment, stdin=subprocess.PIPE,
                                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            self.read_to_prompt(b"")
        if self.shell is None:
            return
        if line == b"^D":
            self.pending += line
            self.shell.stdin.close()
        else:
            self.shell.stdin.write(line + b"\n")
            self.shell.stdin.flush()
        self.read_to_prompt(b"\n")

    def read_to_prompt(self, first):
        """Keeps the prompt for the next line: what comes in between is shown before it."""
        output, echo = self.pending, len(self.pending)
        while first not in output[echo:] or not PROMPT.search(output[echo:]):
            signal.alarm(PATIENCE)
            piece = os.read(self.shell.stdout.fileno(), 65536)
            signal.alarm(0)
            output += piece
            if not piece:
                status = self.shell.wait()
                end = b"\n" if output[-1:] not in (b"", b"\n") else b""
                self.transcript += visible(output) + end + (b"[%d]\n" % status if status != 0 else b"")
                self.shell, self.pending = None, b""
                return
        self.pending = PROMPT.search(output)[0]
        self.transcript += visible(output[: -len(self.pending)])

    def end(self):
        for process in (self.shell, self.daemon):
            if process is not None:
                process.terminate()
                process.wait()


def play(program, session, vendor):
    """Whether the session goes as it is written."""
    written = session.read_bytes()
    with tempfile.TemporaryDirectory(prefix="cli_session_") as root:
        device = Device(root, program, session, vendor)
        try:
            for line in written.splitlines():
                typed = re.match(rb"[^ ]+  # (.*)", line)
                if line.startswith(b"$ "):
                    device.run(line[2:].decode())
                elif typed:
                    device.type(typed[1])
        except (TimeoutError, subprocess.TimeoutExpired):
            device.transcript += b"[no prompt]\n"
        finally:
            device.end()
            if vendor:
                subprocess.run(["umount", "-R", "-l", root], check=True)
    if device.transcript == written:
        return True
    if os.environ.get("UPDATE_SESSIONS"):
        session.write_bytes(device.transcript)
    lines = [text.decode(errors="replace").splitlines() for text in (written, device.transcript)]
    print("\n".join(difflib.unified_diff(*lines, str(session), "shown", lineterm="")))
    return False


def hang(*_):
    raise TimeoutError


def main(words):
    vendor = words[:1] == ["--vendor"]
    program, *sessions = words[1:] if vendor else words
    signal.signal(signal.SIGALRM, hang)
    results = [play(program, Path(session).resolve(), vendor) for session in sessions]
    print(f"{sum(results)} of {len(results)} sessions go as they are written")
    return 0 if results and all(results) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
