#!/usr/bin/env python3
"""Measures comparisons of archives by velmora-cli beside unpacking both and comparing what comes out.

    archive.py [--program FILE] [--files N] [--runs N]

Makes two archives of each format, of N files (30,000 by default) of which some differ, in a temporary folder. Contents are compared
beside `bsdtar` extracting both and `diff -rq`; zips by their directories alone beside `unzip -Z` listing both. The runs of both take
turns, so that load on the machine hits both; the best of each counts. Aims: 0.6 and 1.2.
"""

import argparse
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

from text import PROGRAM


def make_tree(root, count):
    source = random.Random(5)
    words = [bytes(source.choices(b"abcdefghijklmnop_ ()\n", k=source.randint(3, 12))) for _ in range(4000)]
    for i in range(count):
        folder = root / f"d{i % 97}" / f"s{i % 11}"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"f{i}.c").write_bytes(b" ".join(source.choices(words, k=source.randint(20, 1200))))


def run(command):
    start = time.perf_counter()
    subprocess.run(command, shell=isinstance(command, str), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    return time.perf_counter() - start


def take_turns(own, rival, runs):
    """The best time of each."""
    own()
    times = [(own(), rival()) for _ in range(runs)]
    return min(one for one, _ in times), min(other for _, other in times)


def unpack_and_compare(left, right, folder):
    def once():
        shutil.rmtree(folder, ignore_errors=True)
        for side in ("l", "r"):
            (folder / side).mkdir(parents=True)
        return run(f"bsdtar -C {folder}/l -xf {left}; bsdtar -C {folder}/r -xf {right}; diff -rq {folder}/l {folder}/r")

    return once


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE")
    parser.add_argument("--files", type=int, default=30000, metavar="N")
    parser.add_argument("--runs", type=int, default=3, metavar="N")
    options = parser.parse_args()
    for tool in ("bsdtar", "unzip", "zip"):
        if not shutil.which(tool):
            sys.exit(f"{tool} is missing")
    with tempfile.TemporaryDirectory() as place:
        root = pathlib.Path(place)
        make_tree(root / "left", options.files)
        shutil.copytree(root / "left", root / "right")
        for changed in list((root / "right" / "d5").rglob("*.c"))[:20]:
            changed.write_bytes(changed.read_bytes() + b"x")
        print("| archive | velmora-cli | beside | ratio | aim |\n|---|---|---|---|---|")
        for ending in ("tar.gz", "tar.zst", "zip"):
            sides = [root / f"{side}.{ending}" for side in ("left", "right")]
            for side in sides:
                tree = root / side.name.split(".")[0]
                subprocess.run(["bsdtar", "-C", tree, "-acf", side, "."], check=True)
            command = [options.program, "folder", "--read", *map(str, sides)]
            own, other = take_turns(lambda c=command: run(c), unpack_and_compare(*sides, root / "out"), options.runs)
            print(f"| {ending}, contents | {own:.2f} s | bsdtar, diff -rq {other:.2f} s | {own / other:.2f} | 0.6 |", flush=True)
            if ending == "zip":
                command = [options.program, "folder", "--method", "crc", *map(str, sides)]
                listing = " ; ".join(f"unzip -Z {side}" for side in sides)
                own, other = take_turns(lambda c=command: run(c), lambda c=listing: run(c), options.runs + 4)
                print(f"| zip, directories | {own * 1000:.0f} ms | unzip -Z {other * 1000:.0f} ms | {own / other:.2f} | 1.2 |")


if __name__ == "__main__":
    main()
