#!/usr/bin/env python3
"""Snapshots of a folder beside find and sha256sum, with warm caches.

    cmake --build --preset release --target velmora-cli
    benchmarks/snapshot.py [FOLDER OF THE PROGRAMS [FOLDER TO RECORD]]

Runs go round in turn, so that whatever else the machine does hits all alike; the best of each counts. Without a folder to record,
60,000 files of 0 to 64 KiB in 1,000 folders are made below benchmarks/data/ (2 GiB).
"""

import pathlib
import random
import resource
import subprocess
import sys
import time

ROUNDS = 7
FOLDERS, FILES, LARGEST = 1000, 60, 64 * 1024
HERE = pathlib.Path(__file__).resolve().parent


def make(root):
    if (root / "whole").exists():
        return
    chance = random.Random(19)
    block = chance.randbytes(2 * LARGEST)
    for number in range(FOLDERS):
        folder = root / f"{number % 10}" / f"folder{number}"
        folder.mkdir(parents=True, exist_ok=True)
        for file in range(FILES):
            start, length = chance.randrange(LARGEST), chance.randrange(LARGEST)
            (folder / f"file{file}.bin").write_bytes(block[start : start + length])
    (root / "whole").touch()


def seconds(*command):
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def main():
    programs = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE.parent / "build/release/bin"
    root = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else HERE / "data/snapshot"
    if len(sys.argv) <= 2:
        root.mkdir(parents=True, exist_ok=True)
        make(root)
    cli = programs / "velmora-cli"
    pairs = [
        ("without digests", 1.3, (cli, "snapshot", "create", root),
         ("find", root, "-type", "f", "-printf", r"%P\t%s\t%T@\n")),
        ("with digests", 1.0, (cli, "snapshot", "create", "--digests", root),
         ("sh", "-c", 'find "$0" -type f -print0 | xargs -0 -P2 -n 64 sha256sum', root)),
    ]
    failed = False
    for name, aim, ours, theirs in pairs:
        times = ([], [])
        for _ in range(ROUNDS):
            times[0].append(seconds(*ours))
            times[1].append(seconds(*theirs))
        best = [min(one) for one in times]
        failed |= best[0] > aim * best[1]
        print(f"{name:16} {best[0]:7.3f} s   {theirs[0]:5} {best[1]:7.3f} s   ratio {best[0] / best[1]:.2f} (aim {aim})")
    memory = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
    print(f"largest memory of a run {memory / 1024:.0f} MiB")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
