"""The host in a Windows console, which Wine shows in a terminal: lines, their editing, interrupts and dialogs.

usage: console_wine.py WINE HOST"""
import os
import pty
import re
import select
import signal
import sys
import termios
import time


class Console:
    """A process in a terminal, and its output without the escape sequences."""

    def __init__(self, *command):
        self.shown = ""
        self.seen = 0
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.environ["TERM"] = "xterm"
            os.execvp(command[0], command)

    def read_more(self):
        ready, _, _ = select.select([self.terminal], [], [], 20)
        try:
            got = os.read(self.terminal, 4096).decode("utf-8", "replace") if ready else ""
        except OSError:
            got = ""
        self.shown += got
        return got != ""

    def plain(self):
        # Space up to the next text is skipped, not written.
        text = re.sub(r"\x1b\[(\d+)C", lambda match: " " * int(match[1]), self.shown)
        return re.sub(r"\x1b\[[?\d;]*[A-Za-z]|\r", "", text)

    def expect(self, text):
        end = time.monotonic() + 20
        while (found := self.plain().find(text, self.seen)) < 0:
            if time.monotonic() > end or not self.read_more():
                sys.exit(f"{text!r} is not shown in:\n{self.plain()}\nas it came: {self.shown!r}")
        self.seen = found + len(text)

    def send(self, keys):
        # Before a program reads, the terminal edits lines by itself.
        end = time.monotonic() + 20
        while termios.tcgetattr(self.terminal)[3] & termios.ICANON and time.monotonic() < end:
            time.sleep(0.01)
        os.write(self.terminal, keys.encode())

    def expect_exit(self, expected):
        while self.read_more():
            pass
        end = time.monotonic() + 20
        while (ended := os.waitpid(self.process, os.WNOHANG)) == (0, 0) and time.monotonic() < end:
            time.sleep(0.01)
        if ended == (0, 0):
            os.kill(self.process, signal.SIGKILL)
            sys.exit(f"does not end, and shows:\n{self.plain()}")
        status = os.waitstatus_to_exitcode(ended[1])
        if status != expected:
            sys.exit(f"exit status {status}, and shown:\n{self.plain()}")


def play(command, *steps):
    """Sends the keys of each step, waits for its texts one after another, and for the end of the program."""
    console = Console(*command)
    console.expect(PROMPT)
    for keys, *texts in steps:
        console.send(keys)
        for text in texts:
            console.expect(text)
    console.expect_exit(0)


PROMPT = "workbench> "
HELLO = "Hello from the workbench"
AGAIN = "Interrupt again to exit."
host = sys.argv[1:] + ["--video", "none"]
play(host, ("grxet\x7f\x7f\x7feet\r", HELLO + "!", PROMPT), ("greet -to=J\u00fcrgen\r", HELLO + ", J\u00fcrgen!", PROMPT),
     ("exit\r",))
play(host, ("gre\t-t\tyou\r", HELLO + ", you!", PROMPT), ("h\t", "help", "Print help for any command", PROMPT + "h"),
     ("elp li\t\r", "TargetCommand: ", PROMPT), ("\x03", AGAIN, PROMPT), ("exit\r",))
play(host, ("gre\x03", AGAIN, PROMPT), ("greet\r", HELLO + "!", PROMPT), ("\x03", AGAIN), ("\x03",))
play(host + ["--developer-mode"], ("crash -assert\r", "! Forced assert by crash-command.", "or Enter for Abort? "),
     ("i\r", PROMPT), ("exit\r",))
