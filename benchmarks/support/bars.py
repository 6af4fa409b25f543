"""Runs the benchmark cases that the bars name, and prints one line for each bar.

usage: bars.py PROGRAM BARS.json [FILTER] [--json FILE]
"""
import argparse
import json
import operator
import re
import subprocess
import sys

COMPARE = {"<=": operator.le, ">=": operator.ge}


def run_cases(program, names):
    """Medians of the named cases: {name: {"time": nanoseconds, counter: value, ...}}."""
    pattern = "^(" + "|".join(re.escape(name) for name in sorted(names)) + ")(/real_time|/iterations:[0-9]+)*$"
    command = [program, "--benchmark_filter=" + pattern, "--benchmark_format=json", "--benchmark_repetitions=7",
               "--benchmark_min_time=0.1", "--benchmark_report_aggregates_only=true",
               "--benchmark_enable_random_interleaving=true"]
    done = subprocess.run(command, stdout=subprocess.PIPE, check=True)
    scale = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
    medians = {}
    for run in json.loads(done.stdout)["benchmarks"]:
        if run.get("aggregate_name") != "median":
            continue
        name = re.sub(r"(/real_time|/iterations:[0-9]+)+$", "", run["run_name"])
        figures = {key: value for key, value in run.items() if isinstance(value, (int, float))}
        figures["time"] = run["cpu_time"] * scale[run["time_unit"]]
        medians[name] = figures
    return medians


def measure(bar, medians):
    case = medians[bar["case"]]
    kind = bar["measure"]
    if kind.startswith("counter:"):
        return case[kind.removeprefix("counter:")]
    limit = medians[bar["limit"]]
    if kind == "time_ratio":
        return case["time"] / limit["time"]
    if kind == "speed_ratio":
        return limit["time"] / case["time"]
    raise ValueError(f"{bar['name']}: unknown measure {kind}")


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench")
    parser.add_argument("program", help=argparse.SUPPRESS)
    parser.add_argument("bars", help=argparse.SUPPRESS)
    parser.add_argument("filter", nargs="?", default="", help="part of the names of the bars wanted")
    parser.add_argument("--json", metavar="FILE", help="write the figures there as well")
    arguments = parser.parse_args()

    with open(arguments.bars, encoding="utf-8") as file:
        bars = [bar for bar in json.load(file)["bars"] if arguments.filter in bar["name"]]
    if not bars:
        sys.exit(f"No bar has \"{arguments.filter}\" in its name.")
    medians = run_cases(arguments.program, {name for bar in bars for name in (bar["case"], bar.get("limit")) if name})

    rows = []
    for bar in bars:
        absent = [name for name in (bar["case"], bar.get("limit")) if name and name not in medians]
        if absent:
            sys.exit(f"{bar['name']}: the program has no case {absent[0]}")
        figure = measure(bar, medians)
        sign, bound = bar["wanted"].split()
        verdict = "ok" if COMPARE[sign](figure, float(bound)) else "short"
        rows.append({"name": bar["name"], "ratio": figure, "wanted": bar["wanted"], "verdict": verdict})
    width = max(len(row["name"]) for row in rows)
    for row in rows:
        print(f"{row['name']:<{width}}  {row['ratio']:>12.6g}  {row['wanted']:>12}  {row['verdict']}")
    if arguments.json:
        with open(arguments.json, "w", encoding="utf-8") as file:
            json.dump({"bars": rows}, file, indent=2)
            file.write("\n")
    sys.exit(any(row["verdict"] == "short" for row in rows))


if __name__ == "__main__":
    main()
