"""Measures the bars, case and limit in turns, and prints one line for each.

usage: bars.py PROGRAM BARS.json [FILTER] [--target NAME] [--json FILE]

A line has the median, the spread (the range without the lowest and the highest figure), the wanted figure and a verdict:

    ok      the median reaches the wanted figure
    unsure  the median does not reach it, but the wanted figure lies within the spread, even after MAX_TURNS turns
    short   no figure of the spread reaches the wanted figure
"""
import argparse
import functools
import json
import operator
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

TURNS = 7
MAX_TURNS = 21  # while the spread leaves the verdict open
MIN_TIME = 0.05  # seconds of one run
STARTS = 20  # of a program, for one figure
PICTURES = 32  # that qmdp converts
COMPARE = {"<=": operator.le, ">=": operator.ge}

# Instructions that other libraries must not use, so that they have the same instructions as the kernels.
NO_AVX3 = ["AVX512F", "AVX512BW", "AVX512CD", "AVX512DQ", "AVX512IFMA", "AVX512VBMI", "AVX512VL",
           "AVX512-COMMON", "AVX512-SKX", "AVX512-CNL", "AVX512-CLX", "AVX512-ICL", "AVX512VBMI2", "AVX512VNNI",
           "AVX512BITALG", "AVX512VPOPCNTDQ"]
NO_AVX2 = NO_AVX3 + ["AVX2", "FMA3", "AVX"]
DISABLED = {"AVX2": NO_AVX3, "SSE4": NO_AVX2, "SSSE3": NO_AVX2 + ["SSE4.1", "SSE4.2"]}


def name_processor():
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as file:
            return re.search(r"^model name\s*:\s*(.*)$", file.read(), re.MULTILINE).group(1)
    except (OSError, AttributeError):
        return "unknown"


class Program:
    """The benchmark program, which runs cases on request."""

    def __init__(self, path, target):
        self.folder = os.path.dirname(os.path.abspath(path))
        environment = dict(os.environ)
        arguments = [path, "--by_request", f"--benchmark_min_time={MIN_TIME}"]
        if target:
            arguments.append(f"--target={target}")
            environment["OPENCV_CPU_DISABLE"] = ",".join(DISABLED.get(target, []))
        self.process = subprocess.Popen(arguments, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        env=environment)
        self.kernels = self.read_line()

    def read_line(self):
        line = self.process.stdout.readline()
        if not line:
            sys.exit("The benchmark program ended early.")
        return line.strip()

    def run(self, case):
        """Returns the figures of one run of a case: {"time": nanoseconds, counter: value, ...}."""
        self.process.stdin.write("^" + re.escape(case) + "(/real_time|/manual_time|/iterations:[0-9]+)*$\n")
        self.process.stdin.flush()
        line = self.read_line()
        if not line:
            sys.exit(f"The program has no figures for {case}.")
        return {name: float(value) for name, value in (word.split("=") for word in line.split())}

    def close(self):
        self.process.stdin.close()
        self.process.wait()


def start(command, environment=None):
    """Runs a program to its end, and returns the milliseconds of processor time that it took."""
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               env=environment)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(command)} ended with status {process.returncode}.")
    return 1000 * (usage.ru_utime + usage.ru_stime)


def count_libraries(command):
    """Returns the number of shared libraries that a program loads in a run, at its start or later."""
    with tempfile.TemporaryDirectory() as folder:
        start(command, {**os.environ, "LD_DEBUG": "files", "LD_DEBUG_OUTPUT": os.path.join(folder, "loads")})
        text = "".join(open(os.path.join(folder, name), encoding="utf-8", errors="replace").read()
                       for name in os.listdir(folder))
    return len(set(re.findall(r"calling init: (.*)", text)))


@functools.cache
def make_pictures(tool, size):
    """Makes equal pictures of a size. Returns their folder, which is removed with the object, and their names."""
    folder = tempfile.TemporaryDirectory()
    names = [os.path.join(folder.name, f"{i}.jpg") for i in range(PICTURES)]
    source = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../examples/picture.png")
    start([tool, "convert", "--quiet", "--size", size, "--filter", "lanczos", "--quality", "90", source, names[0]])
    for name in names[1:]:
        shutil.copy(names[0], name)
    return folder, names


def compare_jobs(tool, bar, is_odd):
    """Returns how many times as fast two jobs of qmdp convert pictures as one job."""
    _, names = make_pictures(tool, bar["pictures"])
    seconds = {}
    for jobs in (1, 2) if is_odd else (2, 1):
        with tempfile.TemporaryDirectory() as output:
            begin = time.perf_counter()
            start([tool, "convert", "--quiet", "--jobs", str(jobs), *bar["convert"], *names, output])
            seconds[jobs] = time.perf_counter() - begin
    return seconds[1] / seconds[2]


def take_turn(program, bar, is_odd):
    """Measures one figure of a bar. Case and limit take turns at being first."""
    kind = bar["measure"]
    if "start" in bar:
        command = [os.path.join(program.folder, bar["start"][0]), *bar["start"][1:]]
        if kind == "libraries":
            return count_libraries(command)
        return statistics.median(start(command) for _ in range(STARTS))
    if "convert" in bar:
        return compare_jobs(os.path.join(program.folder, "qmdp"), bar, is_odd)
    if kind.startswith("counter:"):
        return program.run(bar["case"])[kind.removeprefix("counter:")]
    names = [bar["case"], bar["limit"]]
    times = {name: program.run(name)["time"] for name in (reversed(names) if is_odd else names)}
    case, limit = (times[name] for name in names)
    return {"time_ratio": case / limit, "speed_ratio": limit / case}[kind]


def spread_of(figures):
    ordered = sorted(figures)
    return ordered[1], ordered[-2]


def judge(figures, wanted):
    sign, bound = wanted.split()
    meets = COMPARE[sign]
    if meets(statistics.median(figures), float(bound)):
        return "ok"
    return "unsure" if any(meets(end, float(bound)) for end in spread_of(figures)) else "short"


def measure(program, bar):
    figures = []
    while True:
        figures += [take_turn(program, bar, i % 2 == 1) for i in range(TURNS)]
        verdict = judge(figures, bar["wanted"])
        if verdict != "unsure" or len(figures) >= MAX_TURNS:
            break
    low, high = spread_of(figures)
    return {"name": bar["name"], "figure": statistics.median(figures), "low": low, "high": high,
            "turns": len(figures), "wanted": bar["wanted"], "verdict": verdict}


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench")
    parser.add_argument("program", help=argparse.SUPPRESS)
    parser.add_argument("bars", help=argparse.SUPPRESS)
    parser.add_argument("filter", nargs="?", default="", help="part of the names of the bars wanted")
    parser.add_argument("--target", metavar="NAME",
                        help="use the kernels for a smaller set of vector instructions: AVX2, SSE4 or SSSE3")
    parser.add_argument("--json", metavar="FILE", help="write the figures there as well")
    arguments = parser.parse_args()

    with open(arguments.bars, encoding="utf-8") as file:
        bars = [bar for bar in json.load(file)["bars"] if arguments.filter in bar["name"]]
    if not bars:
        sys.exit(f"No bar has \"{arguments.filter}\" in its name.")
    program = Program(arguments.program, arguments.target)
    machine = {"processor": name_processor(), "kernels": program.kernels}
    print(f"{machine['processor']}, kernels for {machine['kernels']}")

    width = max(len(bar["name"]) for bar in bars)
    rows = []
    for bar in bars:
        row = measure(program, bar)
        rows.append(row)
        spread = f"{row['low']:.4g} to {row['high']:.4g}"
        print(f"{row['name']:<{width}}  {row['figure']:>10.4g}  {spread:>22}  {row['wanted']:>10}  {row['verdict']}",
              flush=True)
    program.close()
    if arguments.json:
        with open(arguments.json, "w", encoding="utf-8") as file:
            json.dump({**machine, "bars": rows}, file, indent=2)
            file.write("\n")
    sys.exit(any(row["verdict"] == "short" for row in rows))


if __name__ == "__main__":
    main()
