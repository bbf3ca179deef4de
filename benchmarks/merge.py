#!/usr/bin/env python3
"""Measures velmora-cli merge beside git merge-file: whole processes on texts of a megabyte and more.

    merge.py [--program FILE] [--engine FILE] [--rounds NUMBER] [BASE LEFT RIGHT]...

Without files it makes texts of 70 bytes a line, of which each version has changed one line in a hundred, at places of its own. The
two programs take turns, so that a busy machine slows both alike, and the best of the rounds counts. `--engine` names
benchmark_merge_engine, which is run on each triple, too. The exit status is 1 when velmora-cli takes more than half of git's time.
"""

import argparse
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
    start = time.perf_counter()
    process = subprocess.run(command, stdout=subprocess.DEVNULL, check=False)
    return time.perf_counter() - start, process.returncode


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    parser.add_argument("--program", default=HERE.parent / "build/release/bin/velmora-cli")
    parser.add_argument("--engine")
    parser.add_argument("--rounds", type=int, default=15)
    arguments = parser.parse_args()
    failed = False
    with tempfile.TemporaryDirectory() as work:
        given = [(str(arguments.files[at]), arguments.files[at:at + 3]) for at in range(0, len(arguments.files), 3)]
        for name, files in given or generated(pathlib.Path(work)):
            base, left, right = files
            ours = [arguments.program, "merge", "--style", "diff3", base, left, right]
            git = ["git", "merge-file", "-p", "--diff3", left, base, right]
            best = {"ours": (1e9, 0), "git": (1e9, 0)}
            for _ in range(arguments.rounds):
                for who, command in (("ours", ours), ("git", git)):
                    best[who] = min(best[who], taken(command))
            share = best["ours"][0] / best["git"][0]
            failed = failed or share > MOST
            print(f"{name}: velmora-cli {best['ours'][0] * 1000:.1f} ms, git {best['git'][0] * 1000:.1f} ms, "
                  f"{share:.2f} of it (at most {MOST}); status {best['ours'][1]} and {best['git'][1]}", flush=True)
            if arguments.engine:
                failed = subprocess.run([arguments.engine, base, left, right], check=False).returncode != 0 or failed
    return 1 if failed else 0


if __name__ == "__main__":
    raise SystemExit(main())
