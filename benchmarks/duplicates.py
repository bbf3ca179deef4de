#!/usr/bin/env python3
"""Measures velmora-cli duplicates on 60,000 files, or any number, beside jdupes, rdfind and rmlint, with warm caches.

    duplicates.py [--program FILE] [--runs N] [--data FOLDER] [--files N]

With another number of files (--files 500000) give a folder for them, too: the data are made where there are none.

Runs of all programs take turns, so that whatever else the machine does hits them alike; the best time of each counts. The
files are like those of a home folder: most are small, sizes repeat, one in three has copies, some of equal size differ in
their middle only. The exit status is 1 when an aim is missed or the numbers of groups do not agree.
"""

import argparse
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

from text import DATA, PROGRAM

AIMS = {"jdupes -Q -r": 0.7, "rdfind": 0.7, "rmlint": 0.7}
BYTES_PER_FILE = 300


def contents(source, size, distinct):
    """Of one size there are `distinct` contents; large ones differ in the middle."""
    block = random.Random(size).randbytes(min(size, 65536))
    bytes_ = bytearray((block * (size // max(len(block), 1) + 1))[:size])
    mark = source.randrange(distinct).to_bytes(4, "little")
    at = max(size // 2 - 2, 0)
    bytes_[at:at + 4] = mark[:max(size - at, 0)]
    return bytes_[:size]


def make(folder, files):
    source = random.Random(60)
    sizes = [int(2 ** source.uniform(5, 15)) for _ in range(12_000)] + [4096] * 200 + [1 << 20, 3 << 20]
    for number in range(files):
        place = folder / f"{number % 40}" / f"{number % 1600 // 40}"
        place.mkdir(parents=True, exist_ok=True)
        size = source.choice(sizes) if number % 500 else source.choice([1 << 20, 3 << 20])
        (place / f"file {number}.dat").write_bytes(contents(source, size, 8))


def seconds(command):
    with tempfile.TemporaryDirectory() as here:  # some leave reports where they are
        start = time.perf_counter()
        done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=here, check=False)
        took = time.perf_counter() - start
    if done.returncode not in (0, 1):
        raise SystemExit(f"{command}: exit status {done.returncode}")
    return took


def peak(command):
    # A process counts what the one that started it had in memory: that has to be a small one.
    starter = ("import os, subprocess, sys\n"
               "child = subprocess.Popen(sys.argv[1:], stdout=subprocess.DEVNULL)\n"
               "print(os.wait4(child.pid, 0)[2].ru_maxrss)")
    said = subprocess.run([sys.executable, "-c", starter, *command], stdout=subprocess.PIPE, check=True).stdout
    return int(said) * 1024


def groups_of(program, folder):
    said = subprocess.run([program, "duplicates", "--format", "json", folder], stdout=subprocess.PIPE, check=False)
    ours = len(json.loads(said.stdout)["groups"])
    said = subprocess.run(["jdupes", "-q", "-r", folder], stdout=subprocess.PIPE, check=False)
    theirs = said.stdout.count(b"\n\n")
    return ours, theirs


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(PROGRAM))
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--data", default=str(DATA / "duplicates"))
    parser.add_argument("--files", type=int, default=60_000)
    options = parser.parse_args()
    options.program = str(pathlib.Path(options.program).resolve())
    folder = pathlib.Path(options.data).resolve()
    if not folder.exists():
        make(folder, options.files)
    commands = {
        "velmora-cli": [options.program, "duplicates", folder],
        "jdupes -Q -r": ["jdupes", "-q", "-Q", "-r", folder],
        "rdfind": ["rdfind", "-dryrun", "true", "-makeresultsfile", "false", folder],
        "rmlint": ["rmlint", "-T", "df", "-o", "summary:stdout", folder],
    }
    ours, theirs = groups_of(options.program, folder)
    times = {name: [] for name in commands}
    for _ in range(options.runs):
        for name, command in commands.items():
            times[name].append(seconds(command))
    best = {name: min(found) for name, found in times.items()}
    missed = ours != theirs
    print(f"{ours} groups, jdupes {theirs}; velmora-cli {best['velmora-cli']:.2f} s")
    for name, aim in AIMS.items():
        ratio = best["velmora-cli"] / best[name]
        missed |= ratio > aim
        print(f"{name:14} {best[name]:6.2f} s   velmora-cli takes {ratio:.2f} of it (aim {aim})")
    with tempfile.TemporaryDirectory() as empty:
        base = peak([options.program, "duplicates", empty])
    names = sum(2 * (len(file) + 1) for _, _, files in os.walk(folder) for file in files)
    each = (peak(commands["velmora-cli"]) - base - names) / options.files
    missed |= each > BYTES_PER_FILE
    print(f"memory: {each:.0f} bytes a file and its name (aim {BYTES_PER_FILE})")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
