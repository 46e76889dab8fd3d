"""check.py [--cuts N]: boots the access point with scripts/device and uses it as an administrator does, on the serial
console and by telnet. Then cuts its power N times (40) while it writes, and checks that files and flash hold the old or
the new values. The emulator's memory is a file, so killing the emulator is a power cut. TIMEOUT_FACTOR in the environment
multiplies all time limits."""

import argparse
import os
import random
import re
import signal
import socket
import tempfile
import time
import zlib
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import NamedTuple

import pexpect

CHECKOUT = Path(__file__).resolve().parent.parent.parent
FACTOR = float(os.environ.get("TIMEOUT_FACTOR", "1"))
PATIENCE = 60 * FACTOR  # seconds
SECONDS = 420  # time limit of the default number of cuts
# The prompt is printed again in the same row if the window size of telnet arrives late.
PROMPT = re.compile(r"[\r\n]([\w-]+)  # $")
SYSTEM_PROMPT = re.compile(r"\n# $")
FLASH_START, BIOS_SIZE, FLASH_SIZE, MAC_START = 192 << 20, 0x40000, 0x240000, 0x3FF80
# The watchpoint of a debugger for stores to the flash, at the uncached address that the kernel uses.
STORES = f"2,{0xA0000000 + FLASH_START:x},{FLASH_SIZE:x}"


def say(text):
    print(f"check.py: {text}", flush=True)


def expect(is_so, text):
    if not is_so:
        raise AssertionError(text)


class Terminal:
    """A terminal on the board."""

    def __init__(self, command, environment=None):
        self.child = pexpect.spawn(command[0], command[1:], env=environment, encoding="utf-8", codec_errors="replace",
                                   timeout=PATIENCE, echo=False, dimensions=(50, 200))
        self.child.delaybeforesend = None

    def log_in(self):
        self.child.expect("login: $")
        self.child.send("admin\r")
        self.child.expect(PROMPT)

    def type(self, keys, until=PROMPT):
        """Types a line. Returns the output up to the next prompt, without the line itself."""
        self.child.send(keys)
        self.child.expect(until)
        return self.child.before.replace("\r", "").partition("\n")[2]

    def system(self, command):
        """Runs a command in the board's system shell. Returns its output."""
        self.type("shell\r", SYSTEM_PROMPT)
        shown = self.type(f"{command}\r", SYSTEM_PROMPT)
        self.type("exit\r")
        return shown


class Board(Terminal):
    """The board from power-on to power-off, with a terminal on its serial line."""

    def __init__(self, memory, port):
        self.memory, self.port, self.start = memory, port, time.monotonic()
        self.debugger = memory.with_name("debugger")
        environment = os.environ | {"CLI_BOARD_MEMORY": str(memory), "CLI_BOARD_PORT": str(port),
                                    "CLI_BOARD_DEBUGGER": str(self.debugger)}
        super().__init__([str(CHECKOUT / "scripts/device"), "--built"], environment)
        self.log_in()
        self.seconds = time.monotonic() - self.start

    def telnet(self):
        session = Terminal(["telnet", "127.0.0.1", str(self.port)])
        session.child.expect(PROMPT)
        return session

    def bios(self):
        with self.memory.open("rb") as memory:
            memory.seek(FLASH_START)
            return memory.read(BIOS_SIZE)

    def cut(self):
        self.child.kill(signal.SIGKILL)
        self.child.close()


def check_console(board):
    expect("ac-ctl-port=5246" in board.type("sho\tcw\t\r"), "TAB completes no word")
    expect("ac-ctl-port=5246" in board.type("show cw_conf | grep ac-ctl\r"), "a pipe shows nothing")
    expect("fsm-state" in board.type("get wtp info\r"), "the daemon does not answer")
    expect(re.search("wlan0 +IEEE 802.11.*wlan1 +IEEE 802.11", board.type("iwconfig\r"), re.DOTALL), "no two radios")
    board.child.send("quit\r")
    board.log_in()


def check_flash(board):
    board.type("bios setmac 021a2b3100aa\r")
    tool = f"mtd_debug read /dev/mtd0 {MAC_START} 16 /tmp/slot && hexdump -C /tmp/slot"
    shown = board.system(f"cat /proc/mtd; mtd_debug info /dev/mtd0; {tool}")
    say(f"after setmac the kernel's tools say:\n{shown}")
    expect("|021a2b3100aa....|" in shown, "the kernel reads another address")
    board.type("bios erase\r")
    shown = board.system("hexdump -C /dev/mtd0")
    say(f"after erase:\n{shown}")
    expect(shown.split() == ["00000000", *["ff"] * 16, f"|{'.' * 16}|", "*", "00040000"], "flash is left")
    expect(board.bios() == b"\xff" * BIOS_SIZE, "the memory holds other flash than the kernel shows")
    board.type("bios setdefault\r")
    check_crc(board)


def check_crc(board):
    image = board.bios()
    expect(zlib.crc32(image[:-4]) == int.from_bytes(image[-4:], "little"), "the checksum is not that of the flash")


def check_reboot(board):
    board.type("config capwap proto idle-timeout 400\r")
    board.type("save cw_conf\r")
    board.type("config system hostname ap7\r")
    say(f"after save:\n{board.system('mount | grep cfg; ls -l /cfg; df /cfg')}")
    board.type("config capwap proto idle-timeout 500\r")
    board.child.send("reboot\r")
    board.log_in()
    expect(board.child.match[1] == "ap7", "the host name is lost")
    expect("=400" in board.type("show cw_conf | grep idle-timeout\r"), "the saved value is lost")


def check_telnet(board):
    sessions = [board.telnet() for _ in range(20)]
    for session in sessions:
        session.child.send("show sys_conf | grep baud\r")
    for session in sessions:
        session.child.expect("115200")
        session.child.expect(PROMPT)
    silent = []
    for session in sessions[1:]:
        session.child.send("exit\r")
        session.child.expect(pexpect.EOF)
        silent += [session.child.before] if "Exit." not in session.child.before else []
    # Once in some hundred sessions, the last output is lost between the shell and the telnet client.
    say(f"sessions that ended without \"Exit.\": {silent}")
    expect(len(silent) < 2, "more than one session ended without \"Exit.\"")
    sessions[0].type("config system admin-timeout 1\r")
    sessions[0].child.send("exit\r")
    board.system("echo 3 > /etc/admin-timeout.tmp")
    idle = board.telnet()
    idle.child.expect(pexpect.EOF)
    expect("Timeout\r\nexit\r\n" in idle.child.before, "an idle session does not print its two lines")
    board.system("rm /etc/admin-timeout.tmp")


class Writer(NamedTuple):
    """A command that writes to the flash."""

    file: str
    lines: list  # the typed lines, with a place for a number
    pattern: str  # finds the number in the output of HELD
    stores: int  # approximate number of stores of one write; the cut comes before one of them


FIRST = 5000
WRITERS = {
    "save cw_conf": Writer("/cfg/cw.conf", ["config capwap wtp ac-ctl-port {}", "save cw_conf"],
                           r"ac-ctl-port=(\d+)", 310),
    "config system hostname": Writer("/cfg/sys.conf", ["config system hostname ap{}"], r"hostname=ap(\d+)", 140),
    # The kernel copies the 4096 bytes that contain the checksum. A power cut during this copy damages them, and the
    # shell cannot prevent that. So the power is cut before the first store only.
    "bios setmac": Writer("/dev/mtd0", ["bios setmac 02{:010}"], r"\n02(\d{10})", 1),
}
# Prints both files and the slot. Replaces "#", because a line that begins with "# " looks like a prompt.
HELD = f"sed s/#/=/ /cfg/cw.conf /cfg/sys.conf; dd if=/dev/mtd0 bs=16 skip={MAC_START // 16} count=1 2>/dev/null; echo"


def held(board):
    """The number that each writer has left on the board, or None, and the rest of the output of HELD."""
    rest = board.system(HELD)
    numbers = {}
    for name, writer in WRITERS.items():
        found = re.search(writer.pattern, rest)
        numbers[name] = int(found[1]) if found else None
        rest = rest.replace(found[0], "", 1) if found else rest
    return numbers, rest


def write(board, name, number):
    for line in WRITERS[name].lines:
        board.type(line.format(number) + "\r")


class Debugger:
    """A debugger that is connected to the emulator. The connection stops the emulator."""

    def __init__(self, board):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(PATIENCE / 2)
        self.socket.connect(str(board.debugger))
        self.replies = self.socket.makefile("rb")
        self.wait()

    def wait(self):
        while (byte := self.replies.read(1)) != b"#":
            expect(byte, "the emulator has ended")
        self.replies.read(2)
        self.socket.sendall(b"+")

    def ask(self, text):
        self.socket.sendall(f"${text}#{sum(text.encode()) % 256:02x}".encode())
        self.wait()

    def stop_before_store(self):
        """Continues up to the next store to the flash. A store before which it has stopped is done first."""
        for text in (f"z{STORES}", "s", f"Z{STORES}", "c"):
            self.ask(text)


def cut_before_store(board, seconds, store):
    """Waits for some seconds, and cuts the power before the store to the flash with this number, counted from then."""
    try:
        time.sleep(seconds)
        debugger = Debugger(board)
        for _ in range(store):
            debugger.stop_before_store()
    finally:
        os.kill(board.child.pid, signal.SIGKILL)


def write_until_cut(board, name, number, moment):
    """Writes increasing numbers until the power is cut. Returns the last number whose write was complete."""
    with ThreadPoolExecutor() as threads:
        cut = threads.submit(cut_before_store, board, *moment)
        try:
            while True:
                write(board, name, number + 1)
                number += 1
        except pexpect.EOF:
            cut.result()
    return number


def cut_power(board, cuts, end):
    """Cuts the power and checks the board after each boot. Returns the board of the last boot."""
    for name in WRITERS:
        write(board, name, FIRST)
    numbers, rest = held(board)
    made, halves = dict.fromkeys(WRITERS, 0), 0
    while sum(made.values()) < cuts and time.monotonic() < end:
        name = min(made, key=made.get)
        writer = WRITERS[name]
        moment = random.uniform(0, 0.5) * FACTOR, random.randint(1, writer.stores)
        last = write_until_cut(board, name, numbers[name], moment)
        board.cut()
        made[name] += 1
        board = Board(board.memory, board.port)
        halves += "No such" not in board.system(f"ls {writer.file}.new")
        found = held(board)
        numbers[name] = last + (found[0][name] == last + 1)
        expect(found == (numbers, rest), f"cut {made} in {name} at {moment}: the write of {last} was complete, the "
               f"board holds {found[0]} and, instead of\n{rest}\n{found[1]}")
        check_crc(board)
    say(f"{sum(made.values())} of {cuts} cuts, {made}; {halves} left a temporary file")
    expect(any(made.values()), "the time did not suffice for a cut")
    return board


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--cuts", type=int)
    cuts = arguments.parse_args().cuts
    start = time.monotonic()
    end = start + SECONDS if cuts is None else float("inf")
    with tempfile.TemporaryDirectory(prefix="cli_board_") as folder:
        board = Board(Path(folder) / "memory", free_port())
        try:
            say(f"the first prompt appeared after {board.seconds:.1f} s")
            for check in (check_console, check_flash, check_reboot, check_telnet):
                check(board)
                say(f"{check.__name__}: passed, {time.monotonic() - start:.0f} s")
            board = cut_power(board, 40 if cuts is None else cuts, end)
        finally:
            board.cut()
    say(f"passed after {time.monotonic() - start:.0f} s")


if __name__ == "__main__":
    main()
