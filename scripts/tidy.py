"""Runs clang-tidy on sources: tidy.py BUILD JOBS FILE...

The tool spends much of its time on headers. Files with the same compile options are therefore joined into one source,
several sources at a time. Files that define the same name cannot be joined; they are tried in smaller groups.
"""
import bisect
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

GROUP = 8
# Limit for the paths that the analyser follows through one function. With its default, four times this number, the
# whole run takes twice as long.
DEPTH = ["-Xclang", "-analyzer-config", "-Xclang", "max-nodes=60000"]


def options_of(entry):
    """Returns the compile options, without compiler, source, object and precompiled header."""
    words = shlex.split(entry["command"])
    words = words[next(i for i, word in enumerate(words) if re.search(r"(\+\+|g\+\+|clang)[^/]*$", word)) + 1:]
    options, skip = [], 0
    for word, following in zip(words, words[1:] + [""]):
        if skip:
            skip -= 1
        elif word in ("-o", "-c", "-include"):
            skip = 1
        elif word not in ("-Winvalid-pch",) and word != entry["file"]:
            options.append(word)
    return tuple(options)


def groups_of(build, wanted):
    by_options, seen = {}, set()
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        file = os.path.relpath(entry["file"])
        if file in wanted and file not in seen:
            seen.add(file)
            by_options.setdefault(options_of(entry), []).append(file)
    for options, files in by_options.items():
        for i in range(0, len(files), GROUP):
            yield options, files[i:i + GROUP]


def join(source, files):
    """Writes the files one after another into `source`, and returns the line at which each begins."""
    begins, lines = [], 0
    with open(source, "w", encoding="utf-8") as out:
        for file in files:
            text = pathlib.Path(file).read_text(encoding="utf-8")
            begins.append(lines)
            lines += text.count("\n")
            out.write(text)
    return begins


def analyse(work, options, files):
    """Returns the messages of the tool about these files, one in each line."""
    source = str(work / (re.sub(r"\W", "_", files[0]) + f"_{len(files)}.cpp"))
    begins = join(source, files)
    options = [*options, *(f"-iquote{directory}" for directory in dict.fromkeys(map(os.path.dirname, files)))]
    if len(files) > 1 and subprocess.run(["clang++", "-fsyntax-only", "-w", *options, source],
                                         capture_output=True).returncode != 0:
        middle = len(files) // 2
        return analyse(work, options, files[:middle]) + analyse(work, options, files[middle:])
    result = subprocess.run(["clang-tidy", "--quiet", source, "--", *options, *DEPTH], capture_output=True, text=True)
    if result.returncode != 0 and not result.stdout:
        return [result.stderr]
    found = re.findall(r"^(.*?):(\d+):(.*(?:error|warning):.*)$", result.stdout, re.M)
    return [place_of(file, int(line), source, files, begins) + text for file, line, text in found]


def place_of(file, line, source, files, begins):
    if os.path.abspath(file) == os.path.abspath(source):
        index = bisect.bisect_left(begins, line) - 1
        file, line = files[index], line - begins[index]
    return f"{os.path.relpath(file)}:{line}:"


def main():
    build, jobs, wanted = pathlib.Path(sys.argv[1]), int(sys.argv[2]), set(sys.argv[3:])
    work = build / "tidy"
    work.mkdir(exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        found = pool.map(lambda group: analyse(work, *group), list(groups_of(build, wanted)))
    lines = sorted({line for part in found for line in part})
    print("\n".join(lines), end="\n" if lines else "")
    sys.exit(1 if lines else 0)


main()
