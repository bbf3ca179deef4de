#!/usr/bin/env python3
"""Hex comparisons of large files beside cmp, cmp -l and git diff --no-index --quiet.

Makes the files in a folder, 2 GiB each unless told otherwise, then runs the programs by turns, so that what else the
machine does hits all alike, and tells the best time of each and the most memory that it took."""

import argparse
import os
import pathlib
import random
import shutil
import subprocess
import sys
import threading
import time

CHUNK = 1 << 20


def write(path, size, chunks):
    if path.exists() and path.stat().st_size == size:
        return
    with open(path, "wb") as file:
        for chunk in chunks:
            file.write(chunk)


def altered(source, size, step, rng):
    """The bytes of a file with one byte changed in every `step`."""
    with open(source, "rb") as file:
        for at in range(0, size, CHUNK):
            chunk = bytearray(file.read(CHUNK))
            for place in range((step // 2 - at) % step, len(chunk), step):
                chunk[place] ^= rng.randrange(1, 256)
            yield bytes(chunk)


def make_files(folder, size):
    rng = random.Random(1)
    names = {name: folder / name for name in ("base", "same", "sparse", "dense", "other", "inserted")}
    write(names["base"], size, (rng.randbytes(CHUNK) for _ in range(0, size, CHUNK)))
    write(names["same"], size, altered(names["base"], size, 2 * size, rng))
    write(names["sparse"], size, altered(names["base"], size, 16 * CHUNK, rng))
    write(names["dense"], size, altered(names["base"], size, 4096, rng))
    write(names["other"], size, (rng.randbytes(CHUNK) for _ in range(0, size, CHUNK)))
    if not names["inserted"].exists():
        with open(names["inserted"], "wb") as file, open(names["base"], "rb") as base:
            file.write(rng.randbytes(CHUNK))
            shutil.copyfileobj(base, file, CHUNK)
    for name in ("hole1", "hole2"):
        names[name] = folder / name
        with open(names[name], "wb") as file:
            file.truncate(100 << 30)
            file.seek(50 << 30)
            file.write(name.encode())
    return names


def run(command, limit):
    """Seconds and the most resident memory in MB, which is never told as less than that of this program."""
    # Into a pipe: cmp does not compare to the end when it sees that nobody reads.
    sink = subprocess.Popen(["cat"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=sink.stdin, stderr=subprocess.DEVNULL)
    timer = threading.Timer(limit, process.kill)
    timer.start()
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    timer.cancel()
    sink.stdin.close()
    sink.wait()
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in (0, 1) and seconds < limit:
        sys.exit(f"{' '.join(map(str, command))}: status {process.returncode}")
    return seconds, usage.ru_maxrss / 1024


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=pathlib.Path, help="velmora-cli")
    parser.add_argument("folder", type=pathlib.Path, help="where the files are, or are made (13 GiB)")
    parser.add_argument("--size", type=int, default=2 << 30)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--limit", type=float, default=30, help="seconds after which a run is given up")
    arguments = parser.parse_args()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    files = make_files(arguments.folder, arguments.size)

    own = [arguments.program, "binary"]
    git = ["git", "diff", "--no-index", "--quiet"]
    runs = []
    for name in ("same", "sparse", "dense", "other"):
        pair = [files["base"], files[name]]
        runs.append((f"velmora-cli binary, {name}", own + pair))
        if name == "same":
            runs.append((f"cmp, {name}", ["cmp"] + pair))
        runs.append((f"cmp -l, {name}", ["cmp", "-l"] + pair))
        runs.append((f"git diff --no-index --quiet, {name}", git + pair))
        runs.append((f"velmora-cli binary --align, {name}", own + ["--align"] + pair))
    runs.append(("velmora-cli binary --align, 1 MiB inserted", own + ["--align", files["base"], files["inserted"]]))
    runs.append(("velmora-cli binary, 100 GiB of holes", own + [files["hole1"], files["hole2"]]))

    best = {}
    for _ in range(arguments.rounds):
        for name, command in runs:
            # What lists every byte takes minutes.
            if name in best and best[name][0] >= arguments.limit:
                continue
            seconds, memory = run(command, arguments.limit)
            known = best.get(name, (seconds, memory))
            best[name] = (min(seconds, known[0]), max(memory, known[1]))
    for name, (seconds, memory) in best.items():
        over = "over " if seconds >= arguments.limit else ""
        print(f"{name:48} {over + f'{seconds:.3f}':>14} s {memory:8.1f} MB", flush=True)
    plain = best["velmora-cli binary, same"][0]
    print(f"equal pair beside cmp: {plain / best['cmp, same'][0]:.2f}")
    print(f"all different beside equal: {best['velmora-cli binary, other'][0] / plain:.2f}")
    print(f"aligned behind 1 MiB beside equal: {best['velmora-cli binary --align, 1 MiB inserted'][0] / plain:.2f}")


if __name__ == "__main__":
    main()
