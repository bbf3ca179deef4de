#!/usr/bin/env python3
"""Measures velmora-cli merge beside git merge-file: whole processes on texts of a megabyte and more.

    merge.py [--program FILE] [--engine FILE] [--rounds NUMBER] [BASE LEFT RIGHT]...

Without files it makes texts of 70 bytes a line, of which each version has changed one line in a hundred, at places of its own. The
two programs take turns, so that a busy machine slows both alike, and the best of the rounds counts: of the time that passes and of
the processor time, which says more where others run. `--engine` names benchmark_merge_engine, which is run on each triple, too. The
exit status is 1 when velmora-cli takes more than half of git's time. The first line is about the start of both programs.
"""

import argparse
import os
import pathlib
import random
import subprocess
import tempfile
import time

from generate import padded, sentence

HERE = pathlib.Path(__file__).resolve().parent
MEGABYTE = 1_000_000
MOST = 0.5


def edited(lines, rng, remainder):
    """One line in a hundred changed, dropped or with a new line in front; `remainder` keeps versions out of each other's way."""
    for number, line in enumerate(lines):
        kind = rng.randrange(25) if number % 8 == remainder else 25
        if kind == 0:
            yield padded(f"{number:07d} changed {sentence(rng)}")
        elif kind == 1:
            yield padded(f"new {sentence(rng)}")
            yield line
        elif kind != 2:
            yield line


def generated(folder):
    for megabytes in (1, 5, 50):
        rng = random.Random(megabytes)
        base = [padded(f"{number:07d} {sentence(rng)}") for number in range(megabytes * MEGABYTE // 70)]
        files = []
        for name, lines in (("base", base), ("left", edited(base, rng, 1)), ("right", edited(base, rng, 5))):
            files.append(folder / f"{name}-{megabytes}mb")
            files[-1].write_text("".join(lines), encoding="ascii")
        yield f"{megabytes} MB", files


def taken(command):
    """The time that passes, the processor time, both in seconds, and the exit status."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime, process.returncode


def beside(name, rounds, ours, git):
    """Prints how long both take; returns the share of time that passes."""
    found = {"velmora-cli": [], "git": []}
    for _ in range(rounds):
        found["velmora-cli"].append(taken(ours))
        found["git"].append(taken(git))
    passed, used = ({who: min(run[at] for run in runs) for who, runs in found.items()} for at in (0, 1))
    shares = [times["velmora-cli"] / times["git"] for times in (passed, used)]
    print(f"{name}: " + ", ".join(f"{who} {passed[who] * 1000:.1f} ms (processor {used[who] * 1000:.1f} ms, status "
                                  f"{runs[0][2]})" for who, runs in found.items())
          + f"; {shares[0]:.2f} of it, processor {shares[1]:.2f} (at most {MOST})", flush=True)
    return shares[0]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    parser.add_argument("--program", default=HERE.parent / "build/release/bin/velmora-cli")
    parser.add_argument("--engine")
    parser.add_argument("--rounds", type=int, default=15)
    arguments = parser.parse_args()
    failed = False
    beside("--version", arguments.rounds, [arguments.program, "--version"], ["git", "--version"])
    with tempfile.TemporaryDirectory() as work:
        given = [(str(arguments.files[at]), arguments.files[at:at + 3]) for at in range(0, len(arguments.files), 3)]
        for name, files in given or generated(pathlib.Path(work)):
            base, left, right = files
            ours = [arguments.program, "merge", "--style", "diff3", base, left, right]
            git = ["git", "merge-file", "-p", "--diff3", left, base, right]
            failed = beside(name, arguments.rounds, ours, git) > MOST or failed
            if arguments.engine:
                failed = subprocess.run([arguments.engine, base, left, right], check=False).returncode != 0 or failed
    return 1 if failed else 0


if __name__ == "__main__":
    raise SystemExit(main())
