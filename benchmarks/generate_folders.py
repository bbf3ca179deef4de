#!/usr/bin/env python3
"""Makes the folder trees and large files for folder.py in benchmarks/data/folders/ (about 9 GB), or of them the sets that are named.

    generate_folders.py [--files N] [SET ...]

sources     N real source files (30,000 unless told otherwise) out of /usr/include, the Python libraries and /usr/share of this
            machine, with their folders: "left"; a copy with other times: "right"; a copy with equal times: "twin"
small       100,000 files of 0 to 400 bytes in 8,000 folders, "left" and "right" with other times; one in a thousand differs
large       files of 2 GiB: "left" and "right" equal, "early" with another byte 5,000 bytes from its begin
"""

import argparse
import os
import pathlib
import random
import shutil
import sys
import sysconfig

DATA = pathlib.Path(__file__).resolve().parent / "data" / "folders"
LARGE = 2 << 30
LARGEST_SOURCE = 2_000_000


def source_files():
    roots = ["/usr/include", sysconfig.get_paths()["stdlib"], "/usr/lib/python3", "/usr/share", sys.prefix]
    seen = set()
    for root in roots:
        for folder, names, files in os.walk(root):
            names[:] = sorted(name for name in names if not name.startswith("."))
            if "/." in folder[len(root):] or folder in seen:
                continue
            seen.add(folder)
            for name in sorted(files):
                path = os.path.join(folder, name)
                if not name.startswith(".") and not os.path.islink(path) and os.path.getsize(path) <= LARGEST_SOURCE:
                    yield path


def later(tree):
    """Moves the times of all files an hour on."""
    for folder, _, files in os.walk(tree):
        for name in files:
            path = os.path.join(folder, name)
            status = os.stat(path)
            os.utime(path, ns=(status.st_atime_ns, status.st_mtime_ns + 3600 * 10**9))


def make_sources(base, count):
    taken = 0
    for path in source_files():
        # Folders with a dot in front would not be compared.
        target = base / "left" / path.lstrip("/").replace("/.", "/dot-")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(path, target)
        taken += 1
        if taken == count:
            break
    else:
        print(f"only {taken} files found", file=sys.stderr)
    shutil.copytree(base / "left", base / "twin")
    shutil.copytree(base / "left", base / "right")
    later(base / "right")


def make_small(base, rng):
    files = 100_000
    folders = [f"{number % 80:02d}/{number // 80:02d}" for number in range(8_000)]
    for folder in folders:
        (base / "left" / folder).mkdir(parents=True)
    for number in range(files):
        (base / "left" / folders[number % len(folders)] / f"file-{number}.txt").write_bytes(rng.randbytes(rng.randrange(400)))
    shutil.copytree(base / "left", base / "right")
    for number in range(0, files, 1000):
        (base / "right" / folders[number % len(folders)] / f"file-{number}.txt").write_bytes(b"another")
    later(base / "right")


def make_large(base, rng):
    block = rng.randbytes(1 << 20)
    for side in ("left", "right", "early"):
        (base / side).mkdir(parents=True)
        with open(base / side / "file.bin", "wb") as file:
            for number in range(LARGE >> 20):
                piece = bytearray(block)
                piece[:8] = number.to_bytes(8, "little")
                if side == "early" and number == 0:
                    piece[5000] ^= 1
                file.write(piece)
    later(base / "right")
    later(base / "early")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--files", type=int, default=30_000, metavar="N", help="source files (default: %(default)s)")
    parser.add_argument("sets", nargs="*", metavar="SET", help="sources, small, large (default: all)")
    options = parser.parse_args()
    makers = {
        "sources": lambda base: make_sources(base, options.files),
        "small": lambda base: make_small(base, random.Random("small")),
        "large": lambda base: make_large(base, random.Random("large")),
    }
    unknown = set(options.sets) - set(makers)
    if unknown:
        parser.error(f"no such set: {', '.join(sorted(unknown))}")
    for name in options.sets or makers:
        shutil.rmtree(DATA / name, ignore_errors=True)
        makers[name](DATA / name)
        print(name)


if __name__ == "__main__":
    main()
