#!/usr/bin/env python3
"""Measures velmora-cli sync and merge-folders on the trees "sources" of generate_folders.py, beside rsync and md5sum.

    folder_runs.py [--program FILE] [--runs N] [--fsync-runs N] [--target FOLDER]

Rounds of all programs take turns, so that what else the machine does hits them alike; the best time of each is printed as
Markdown, with the ratio of velmora-cli's to the other's and the aim for it. Copies go to folders beside the data or in FOLDER, on the
same volume for all, and what was written before is on the disk before the clock starts. Every copy gets a folder of its own, and all
are removed at the end: ext4 looks for free inodes past all those that were freed in the last seconds, so that a copy that follows a
removal takes up to ten times as long, whoever makes it. For each round that is 700 MB. `rsync -a --fsync` waits for the disk
after each file, which may take minutes: it takes part in the first rounds only (--fsync-runs). Memory is that beyond what the same
command needs for empty folders, for each file and folder of all trees. The exit status is 1 when an aim is missed.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import time

from text import DATA, PROGRAM, duration

TREES = DATA / "folders" / "sources"
AIMS = {"rsync -rcn --delete": 0.7, "rsync -a": 1.2, "rsync -a --fsync": 0.8, "md5sum": 0.5}
BYTES_PER_ENTRY = 1024


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


def best_of(commands, runs, home):
    best = {}
    for _ in range(runs):
        for name, command in commands.items():
            took = seconds(command, home)
            best[name] = min(took, best.get(name, took))
    return best


def best_copies(program, runs, fsync_runs, home, place):
    """Each copy goes to a new folder in `place`."""
    best = {}
    for turn in range(runs):
        for name in copying(program, ""):
            if "--fsync" in name and turn >= fsync_runs:
                continue
            target = tempfile.mkdtemp(dir=place)
            took = seconds(copying(program, target)[name], home)
            best[name] = min(took, best.get(name, took))
    return best


def report(case, best):
    """Prints the rows of a case; whether every aim is reached."""
    own = next(iter(best.values()))
    for name, took in best.items():
        print(f"| {case} | {name} | {duration(took)} | {own / took:.2f} | {AIMS.get(name, '')} |", flush=True)
    return all(own / took <= AIMS.get(name, 1) for name, took in best.items())


def peak(command, home):
    # A process counts what the one that started it had in memory: that has to be a small one.
    starter = ("import os, subprocess, sys\n"
               "child = subprocess.Popen(sys.argv[1:], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)\n"
               "print(os.wait4(child.pid, 0)[2].ru_maxrss)")
    said = subprocess.run([sys.executable, "-c", starter, *command], stdout=subprocess.PIPE, env={**os.environ, "HOME": home}, check=True)
    return int(said.stdout) * 1024


def entries(trees):
    """How many files and folders there are in the trees."""
    return sum(len(folders) + len(files) for tree in trees for _, folders, files in os.walk(tree))


def memory(program, home, target):
    """Prints the memory of each command; whether every one is within the aim."""
    left, right, twin = (str(TREES / side) for side in ("left", "right", "twin"))
    empty = [os.path.join(home, "empty", side) for side in ("left", "right", "twin")]
    for folder in [*empty, target]:
        os.makedirs(folder, exist_ok=True)
    cases = [(["sync"], [left, right]), (["merge-folders"], [left, right, twin]), (["sync", "--run"], [left, target])]
    reached = True
    for command, trees in cases:
        count = entries(trees)
        most = peak([program, *command, *trees], home)
        each = (most - peak([program, *command, *empty[:len(trees)]], home)) / count
        print(f"velmora-cli {' '.join(command)}: {each:.0f} bytes of memory an entry of {count:,} (aim {BYTES_PER_ENTRY})")
        reached = reached and each <= BYTES_PER_ENTRY
    return reached


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE")
    parser.add_argument("--runs", type=int, default=5, metavar="N")
    parser.add_argument("--fsync-runs", type=int, default=1, metavar="N")
    parser.add_argument("--target", default=str(TREES), metavar="FOLDER", help="where copies go (default: beside the data)")
    options = parser.parse_args()
    options.program = os.path.abspath(options.program)
    files = sum(len(names) for _, _, names in os.walk(TREES / "left"))
    if not files:
        parser.error("no data; see generate_folders.py")
    print(f"{files} files a tree\n\n| case | program | best | velmora / this | aim |\n|---|---|---|---|---|")
    with tempfile.TemporaryDirectory(dir=options.target) as folder:
        home = os.path.join(folder, "home")
        os.mkdir(home)
        target = os.path.join(folder, "target")
        reached = [
            report("analysis", best_of(analysis(options.program), options.runs, home)),
            report("three trees", best_of(classification(options.program), options.runs, home)),
            report("copying", best_copies(options.program, options.runs, options.fsync_runs, home, folder)),
        ]
        print()
        reached.append(memory(options.program, home, target))
    return 0 if all(reached) else 1


if __name__ == "__main__":
    sys.exit(main())
