"""Does what a page of the documentation tells its reader: follow.py PAGE SOURCES PREFIX

Starts in a folder like that of the sources. Shell blocks run as they stand, with PREFIX for /opt/quillmarsh; a "text"
block behind one is what it prints, and "..." stands for any lines. A block of code is the file whose name stands last
ahead of it: one of the sources, or a file that the reader writes.
"""
import os
import pathlib
import re
import subprocess
import sys

page, sources, prefix = (pathlib.Path(word) for word in sys.argv[1:])
folder = pathlib.Path.cwd()


def fail(message):
    sys.exit(f"{page.name}: {message}")


def run(commands, expected):
    global folder
    # Without an expected output, each command has to succeed.
    script = f"{'set -eo pipefail' if expected is None else ''}\n{commands.replace('/opt/quillmarsh', str(prefix))}"
    place = f"trap 'pwd >{folder}/.place' EXIT\n"
    done = subprocess.run(["bash", "-c", place + script], cwd=folder, stdin=subprocess.DEVNULL, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if expected is None and done.returncode != 0:
        fail(f"exit status {done.returncode} of\n{commands}{done.stdout}")
    if expected is not None:
        pattern = ".*".join(re.escape(part) for part in re.split(r"^\.\.\.\n", expected, flags=re.M))
        if not re.fullmatch(pattern, done.stdout, re.S):
            fail(f"the output of\n{commands}is\n{done.stdout}and not\n{expected}")
    folder = pathlib.Path((folder / ".place").read_text().strip())


def write(name, text):
    if "/" not in name:
        (folder / name).write_text(text)
    elif (sources / name).read_text() != text:
        fail(f"the block is not the file {name}")


text = page.read_text()
blocks = list(re.finditer(r"^```(\w*)\n(.*?)^```", text, re.M | re.S))
for block, following in zip(blocks, [*blocks[1:], None]):
    kind, content = block.groups()
    if kind == "sh":
        run(content, following[2] if following and following[1] == "text" else None)
    elif kind in ("cpp", "cmake"):
        write(re.findall(r"`([\w/.-]+\.(?:cpp|txt))`", text[:block.start()])[-1], content)
    elif kind != "text":
        fail(f"nothing is known about blocks of the kind '{kind}'")
