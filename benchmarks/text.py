#!/usr/bin/env python3
"""Measures text comparisons of velmora-cli beside GNU diff and git diff, whole process against whole process.

    text.py [--program FILE] [PAIR...]      pairs are folders of benchmarks/data/ (see fetch.sh and generate.py)

Every program reads both files from the cache and writes to /dev/null. For each pair the best and the median time of several
runs are printed as Markdown, with the ratio to the fastest of the others and the peak memory as a multiple of both files.
"""

import argparse
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import threading
import time

HERE = pathlib.Path(__file__).resolve().parent
DATA = HERE / "data"
PROGRAM = HERE.parent / "build" / "release" / "bin" / "velmora-cli"

GIT = ["git", "-c", "core.pager=cat", "diff", "--no-index", "--no-ext-diff", "--no-color"]


def contestants(program):
    """Column title and command of each; the first one is judged, the second is shown beside it."""
    text = [program, "text", "--format", "summary"]
    return {
        "velmora strict": text + ["--preset", "strict"],
        "velmora default": text,
        "diff": ["diff"],
        "git myers": GIT + ["--diff-algorithm=myers"],
        "git histogram": GIT + ["--diff-algorithm=histogram"],
        "git patience": GIT + ["--diff-algorithm=patience"],
    }


class Run:
    """One run of a command: seconds and peak bytes, or why there are none."""

    def __init__(self, command, limit):
        self.error = None
        start = time.perf_counter()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, close_fds=False)
        timer = threading.Timer(limit, process.send_signal, [signal.SIGKILL])
        timer.start()
        _, status, usage = os.wait4(process.pid, 0)
        self.seconds = time.perf_counter() - start
        timer.cancel()
        process.returncode = os.waitstatus_to_exitcode(status)
        # Of the child alone, but at least what this program itself used when it started the child.
        self.peak = usage.ru_maxrss * (1 if sys.platform == "darwin" else 1024)
        if process.returncode == -signal.SIGKILL and self.seconds >= limit:
            self.error = f"over {limit:g} s"
        elif process.returncode not in (0, 1):
            self.error = f"status {process.returncode}"


class Series:
    """Several runs of one command: at least `least`, more while they are short."""

    def __init__(self, command, least, limit):
        self.runs = []
        while len(self.runs) < least or (len(self.runs) < 40 and sum(run.seconds for run in self.runs) < 1.0):
            self.runs.append(Run(command, limit))
            if self.runs[-1].error:
                break
        self.error = self.runs[-1].error

    @property
    def best(self):
        return min(run.seconds for run in self.runs)

    @property
    def median(self):
        return statistics.median(run.seconds for run in self.runs)

    @property
    def peak(self):
        return max(run.peak for run in self.runs)

    def __str__(self):
        return self.error or f"{duration(self.best)} / {duration(self.median)}"


def duration(seconds):
    return f"{seconds:.2f} s" if seconds >= 1 else f"{seconds * 1000:.1f} ms"


def lines(path):
    count = 0
    with open(path, "rb") as file:
        while block := file.read(1 << 20):
            count += block.count(b"\n")
    return count


def measure(pair, commands, options):
    left, right = (DATA / pair / f"{side}.txt" for side in ("left", "right"))
    size = left.stat().st_size + right.stat().st_size
    cells = [pair, f"{lines(left):,}", f"{size / 2e6:.2f}"]  # reading them also fills the cache
    series = {name: Series(command + [left, right], options.runs, options.limit) for name, command in commands.items()}
    cells += [str(one) for one in series.values()]

    own, _, *others = series.values()
    rivals = [one.best for one in others if not one.error]
    if own.error or not rivals:
        cells += ["-", "-"]
    else:
        cells += [f"{own.best / min(rivals):.2f}", f"{own.peak / 1e6:.0f} MB, ×{own.peak / size:.1f}"]
    return cells


def pairs_by_size(names):
    found = [path.parent.name for path in DATA.glob("*/left.txt")]
    unknown = set(names) - set(found)
    if unknown:
        sys.exit(f"no data for {', '.join(sorted(unknown))}; see fetch.sh and generate.py")
    return sorted(names or found, key=lambda name: (name.startswith("hostile"), (DATA / name / "left.txt").stat().st_size))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("pairs", nargs="*", metavar="PAIR")
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE", help="velmora-cli to measure (default: %(default)s)")
    parser.add_argument("--runs", type=int, default=5, metavar="N", help="least number of runs (default: %(default)s)")
    parser.add_argument("--limit", type=float, default=60, metavar="SECONDS",
                        help="a run that takes longer is ended (default: %(default)s)")
    options = parser.parse_args()
    if not os.access(options.program, os.X_OK):
        parser.error(f"no program {options.program}")
    commands = contestants(options.program)

    titles = ["pair", "lines", "MB each", *commands, "strict / fastest other", "peak memory, × both files"]
    print("| " + " | ".join(titles) + " |")
    print("|---" * len(titles) + "|")
    for pair in pairs_by_size(options.pairs):
        print("| " + " | ".join(measure(pair, commands, options)) + " |", flush=True)


if __name__ == "__main__":
    main()
