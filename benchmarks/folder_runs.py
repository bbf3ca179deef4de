#!/usr/bin/env python3
"""Measures velmora-cli sync and merge-folders on the trees "sources" of generate_folders.py, beside rsync and md5sum.

    folder_runs.py [--program FILE] [--runs N]

Rounds of all programs take turns, so that what else the machine does hits them alike; the best time of each is printed as
Markdown, with the ratio of velmora-cli's to the other's. Copies go to a new folder beside the data, on the same volume, and what
was written before is on the disk before the clock starts.
"""

import argparse
import os
import pathlib
import resource
import shutil
import subprocess
import tempfile
import time

from text import DATA, PROGRAM, duration

TREES = DATA / "folders" / "sources"


def seconds(command, home):
    os.sync()
    start = time.monotonic()
    done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, env={**os.environ, "HOME": home}, check=False)
    took = time.monotonic() - start
    if done.returncode > 1:
        raise SystemExit(f"{command}: {done.stderr.decode()[:300]}")
    return took


def analysis(program):
    left, right = (str(TREES / side) for side in ("left", "right"))
    return {
        "velmora-cli sync": [program, "sync", left, right],
        "rsync -rcn --delete": ["rsync", "-rcn", "--delete", left + "/", right + "/"],
    }


def copying(program, target):
    left = str(TREES / "left")
    return {
        "velmora-cli sync --run": [program, "sync", "--run", left, target],
        "rsync -a": ["rsync", "-a", left + "/", target + "/"],
        "rsync -a --fsync": ["rsync", "-a", "--fsync", left + "/", target + "/"],
    }


def classification(program):
    trees = [str(TREES / side) for side in ("left", "right", "twin")]
    return {
        "velmora-cli merge-folders": [program, "merge-folders", *trees],
        "md5sum": ["sh", "-c", 'find "$@" -type f -print0 | xargs -0 md5sum', "sh", *trees],
    }


def best_of(commands, runs, home, target=None):
    best = {}
    for _ in range(runs):
        for name, command in commands.items():
            if target:
                shutil.rmtree(target, ignore_errors=True)
                os.mkdir(target)
            took = seconds(command, home)
            best[name] = min(took, best.get(name, took))
    return best


def report(case, best):
    own = next(iter(best.values()))
    for name, took in best.items():
        print(f"| {case} | {name} | {duration(took)} | {own / took:.2f} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE")
    parser.add_argument("--runs", type=int, default=5, metavar="N")
    options = parser.parse_args()
    files = sum(len(names) for _, _, names in os.walk(TREES / "left"))
    if not files:
        parser.error("no data; see generate_folders.py")
    print(f"{files} files a tree\n\n| case | program | best | velmora / this |\n|---|---|---|---|")
    with tempfile.TemporaryDirectory(dir=TREES) as folder:
        home = os.path.join(folder, "home")
        os.mkdir(home)
        target = os.path.join(folder, "target")
        report("analysis", best_of(analysis(options.program), options.runs, home))
        report("copying", best_of(copying(options.program, target), options.runs, home, target))
        report("three trees", best_of(classification(options.program), options.runs, home))
    print(f"\npeak memory of any of these: {resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024} MB")


if __name__ == "__main__":
    main()
