#!/usr/bin/env python3
"""Measures velmora-cli usage beside ncdu and du on 100,000 files in 8,000 folders, whole process against whole process.

    usage.py [--program FILE] [--folder DIR]

The runs of all programs take turns, so that what else the machine does hits them alike; everything is read from the cache and
written to /dev/null. The best and median time of each are printed as Markdown, with the ratio of velmora-cli's best to the other's.
Exit status 1: velmora-cli took more than 0.9 of one of the others, or did not find the bytes that find sees.
"""

import argparse
import json
import os
import pathlib
import random
import shutil
import statistics
import subprocess
import sys
import time

from text import PROGRAM

DATA = pathlib.Path(__file__).resolve().parent / "data" / "usage"
FOLDERS = 8_000
FILES = 100_000
AIM = 0.9


def make_data():
    """The same tree every time: folders in any earlier one, files in any folder, sizes up to 16 KiB, most of them small."""
    if DATA.is_dir():
        return
    chance = random.Random(7)
    unfinished = DATA.with_name("usage.unfinished")
    shutil.rmtree(unfinished, ignore_errors=True)
    folders = [unfinished]
    unfinished.mkdir(parents=True)
    for number in range(FOLDERS):
        folder = folders[chance.randrange(max(0, len(folders) - 900), len(folders))] / f"folder{number}"
        if len(folder.parts) > 60:
            folder = unfinished / f"folder{number}"
        folder.mkdir()
        folders.append(folder)
    for number in range(FILES):
        (chance.choice(folders) / f"file{number}.txt").write_bytes(b"x" * int(16384 * chance.random() ** 6))
    unfinished.rename(DATA)


def bytes_of(program, folder):
    out = subprocess.run([program, "usage", "--hidden", "--format", "json", folder], check=True, capture_output=True).stdout
    return json.loads(out)["nodes"][0]["size"]


def bytes_of_find(folder):
    found = subprocess.run(["find", folder, "-type", "f", "-printf", "%s\\n"], check=True, capture_output=True, text=True).stdout
    return sum(map(int, found.split()))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE", help="velmora-cli to measure (default: %(default)s)")
    parser.add_argument("--folder", metavar="DIR", help="measure this folder instead of the made one")
    parser.add_argument("--runs", type=int, default=15, metavar="N", help="turns (default: %(default)s)")
    options = parser.parse_args()
    if not os.access(options.program, os.X_OK):
        parser.error(f"no program {options.program}")
    if not options.folder:
        make_data()
    folder = options.folder or str(DATA)
    commands = {
        "velmora-cli usage": [options.program, "usage", "--hidden", folder],
        "velmora-cli usage --files": [options.program, "usage", "--hidden", "--files", folder],
        "ncdu -0 -o": ["ncdu", "-0", "-o", os.devnull, folder],
        "du -a": ["du", "-a", folder],
    }
    times = {name: [] for name in commands if shutil.which(commands[name][0])}
    for turn in range(options.runs + 1):
        for name in times:
            begin = time.perf_counter()
            subprocess.run(commands[name], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
            if turn > 0:  # the first one fills the cache
                times[name].append(time.perf_counter() - begin)

    own = min(times["velmora-cli usage --files"])
    slow = False
    print("| program | best / median | velmora --files / this |")
    print("|---|---|---|")
    for name, taken in times.items():
        ratio = "" if name.startswith("velmora") else f"{own / min(taken):.2f}"
        slow = slow or bool(ratio) and float(ratio) > AIM
        print(f"| {name} | {min(taken) * 1000:.0f} / {statistics.median(taken) * 1000:.0f} ms | {ratio} |")
    same = bytes_of(options.program, folder) == bytes_of_find(folder)
    print("same number of bytes as find" if same else "NOT the bytes that find sees")
    sys.exit(slow or not same)


if __name__ == "__main__":
    main()
