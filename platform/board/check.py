"""check.py [--cuts N]: boots the access point with scripts/device and uses it as an administrator does, on the serial
console and by telnet; then cuts its power N times, 40 unless told, while it writes, and looks whether files and flash
hold what they held before or what was written. The emulator's memory is a file, so that its end by SIGKILL is a power
cut. TIMEOUT_FACTOR in the environment multiplies all times that are waited for."""

import argparse
import os
import random
import re
import signal
import socket
import tempfile
import threading
import time
import zlib
from pathlib import Path

import pexpect

CHECKOUT = Path(__file__).resolve().parent.parent.parent
FACTOR = float(os.environ.get("TIMEOUT_FACTOR", "1"))
PATIENCE = 60 * FACTOR  # seconds
SECONDS = 500  # for the default count of cuts
PROMPT = re.compile(r"\n([\w-]+)  # $")
SYSTEM_PROMPT = re.compile(r"\n# $")
FLASH_START, FLASH_SIZE, MAC_START = 192 << 20, 0x40000, 0x3FF80


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
        """What is shown until the next prompt, without the line itself."""
        self.child.send(keys)
        self.child.expect(until)
        return self.child.before.replace("\r", "").partition("\n")[2]

    def system(self, command):
        """What the board's own tools say."""
        self.type("shell\r", SYSTEM_PROMPT)
        shown = self.type(f"{command}\r", SYSTEM_PROMPT)
        self.type("exit\r")
        return shown


class Board(Terminal):
    """The board from one power-on to the next, with a terminal at its serial line."""

    def __init__(self, memory, port):
        self.memory, self.port, self.start = memory, port, time.monotonic()
        environment = os.environ | {"CLI_BOARD_MEMORY": str(memory), "CLI_BOARD_PORT": str(port)}
        super().__init__([str(CHECKOUT / "scripts/device"), "--built"], environment)
        self.log_in()
        self.seconds = time.monotonic() - self.start

    def telnet(self):
        session = Terminal(["telnet", "127.0.0.1", str(self.port)])
        session.child.expect(PROMPT)
        return session

    def flash(self):
        with self.memory.open("rb") as memory:
            memory.seek(FLASH_START)
            return memory.read(FLASH_SIZE)

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
    expect(board.flash() == b"\xff" * FLASH_SIZE, "the memory holds other flash than the kernel shows")
    board.type("bios setdefault\r")
    check_crc(board)


def check_crc(board):
    image = board.flash()
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
    for session in sessions[1:]:
        session.child.send("exit\r")
        session.child.expect(pexpect.EOF)
        expect("Exit." in session.child.before, "a session does not say that it ends")
    sessions[0].type("config system admin-timeout 1\r")
    sessions[0].child.send("exit\r")
    board.system("echo 3 > /etc/admin-timeout.tmp")
    idle = board.telnet()
    idle.child.expect(pexpect.EOF)
    expect("Timeout\r\nexit\r\n" in idle.child.before, "an idle session does not end with its two lines")
    board.system("rm /etc/admin-timeout.tmp")


# What is written: lines that take the number, how the board shows what it holds, and how the number stands in that.
FIRST = 5000
WRITERS = {
    "save cw_conf": (["config capwap wtp ac-ctl-port {}", "save cw_conf"],
                     "sed s/^ac-ctl-port=.*// /cfg/cw.conf | md5sum; grep ^ac-ctl-port= /cfg/cw.conf",
                     r"ac-ctl-port=(\d+)"),
    "config system hostname": (["config system hostname ap{}"],
                               "sed s/^hostname=.*// /cfg/sys.conf | md5sum; grep ^hostname= /cfg/sys.conf",
                               r"hostname=ap(\d+)"),
    "bios setmac": (["bios setmac 02{:010}"], f"dd if=/dev/mtd0 bs=16 skip={MAC_START // 16} count=1 2>/dev/null; echo",
                    r"02(\d{10})"),
}


def held(board, writer):
    """The number that the board holds, and all else that its file holds."""
    shown = board.system(WRITERS[writer][1])
    found = re.search(WRITERS[writer][2], shown)
    expect(found, f"{writer}: there is no value in:\n{shown}")
    return int(found[1]), re.sub(WRITERS[writer][2], "", shown)


def write(board, writer, number):
    for line in WRITERS[writer][0]:
        board.type(line.format(number) + "\r")


def write_until_cut(board, writer, number, moment):
    """Writes higher and higher numbers; the last that was written to its end."""
    timer = threading.Timer(moment, os.kill, (board.child.pid, signal.SIGKILL))
    timer.start()
    try:
        while True:
            write(board, writer, number + 1)
            number += 1
    except pexpect.EOF:
        return number
    finally:
        timer.cancel()


def cut_power(board, cuts, end):
    """The board of the last boot."""
    seed = random.randrange(1 << 32)
    moments = random.Random(seed)
    say(f"cutting the power, seed {seed}")
    for writer in WRITERS:
        write(board, writer, FIRST)
    values = {writer: held(board, writer) for writer in WRITERS}
    made, news = dict.fromkeys(WRITERS, 0), 0
    while sum(made.values()) < cuts and time.monotonic() < end:
        writer = min(made, key=made.get)
        number, rest = values[writer]
        last = write_until_cut(board, writer, number, moments.uniform(0.1, 1.5) * FACTOR)
        board.cut()
        made[writer] += 1
        board = Board(board.memory, board.port)
        found = {other: held(board, other) for other in WRITERS}
        news += found[writer] == (last + 1, rest)
        values[writer] = found[writer] if found[writer] == (last + 1, rest) else (last, rest)
        expect(found == values, f"cut {made} in {writer}: {last} was written, the board holds {found} and not {values}")
        check_crc(board)
    say(f"{sum(made.values())} of {cuts} cuts, of which {news} found the new value: {made}")
    expect(any(made.values()), "there was no time for a cut")
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
            say(f"the prompt is there after {board.seconds:.1f} s")
            for check in (check_console, check_flash, check_reboot, check_telnet):
                check(board)
                say(f"{check.__name__}: as it should be, {time.monotonic() - start:.0f} s")
            board = cut_power(board, 40 if cuts is None else cuts, end)
        finally:
            board.cut()
    say(f"all is as it should be after {time.monotonic() - start:.0f} s")


if __name__ == "__main__":
    main()
