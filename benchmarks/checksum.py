#!/usr/bin/env python3
"""Checksums of 2 GiB beside sha256sum, sha1sum, md5sum and crc32 (of libarchive-zip-perl), with warm caches.

    cmake --build --preset release --target velmora-cli benchmark_checksums
    benchmarks/checksum.py [FOLDER OF THE PROGRAMS]

Runs go round in turn, so that whatever else the machine does hits all alike; the best of each counts. Writes 4 GiB below
benchmarks/data/.
"""

import pathlib
import re
import subprocess
import sys
import time

ROUNDS = 3
SIZE = 2048  # MiB
HERE = pathlib.Path(__file__).resolve().parent
RIVALS = {"sha256": ("sha256sum", 1.0), "sha1": ("sha1sum", 1.0), "md5": ("md5sum", 1.0), "crc32": ("crc32", 0.25)}


def seconds(*command):
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def main():
    programs = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE.parent / "build/release/bin"
    data = HERE / "data"
    data.mkdir(exist_ok=True)
    files = [data / "checksum-1.bin", data / "checksum-2.bin"]
    for file in files:
        if not file.exists() or file.stat().st_size != SIZE << 20:
            subprocess.run(["dd", "if=/dev/urandom", f"of={file}", "bs=1M", f"count={SIZE}", "status=none"], check=True)
    failed = False
    for algorithm, (rival, aim) in RIVALS.items():
        found = {"ours": [], "theirs": [], "one": [], "two": []}
        for _ in range(ROUNDS):
            found["ours"].append(seconds(programs / "velmora-cli", "checksum", "--algorithm", algorithm, files[0]))
            found["theirs"].append(seconds(rival, files[0]))
            said = subprocess.run([programs / "benchmark_checksums", algorithm, *files], check=True, stdout=subprocess.PIPE,
                                  text=True).stdout
            for name in ("one", "two"):
                found[name].append(float(re.search(rf"{name} ([\d.]+)", said)[1]))
        ours, theirs, one, two = (min(found[name]) for name in ("ours", "theirs", "one", "two"))
        failed |= ours > aim * theirs or two > 1.15 * one
        print(f"{algorithm:7} {ours:6.2f} s   {rival:10} {theirs:6.2f} s   ratio {ours / theirs:.2f} (aim {aim})   "
              f"two files {two / one:.2f} of one (aim 1.15)")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
