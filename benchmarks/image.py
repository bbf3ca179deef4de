#!/usr/bin/env python3
"""The map of a 64 megapixel pair, decoding apart, beside ImageMagick's "compare -metric AE" and the npm package pixelmatch.

    cmake --build --preset release --target benchmark_image_map
    benchmarks/image.py [PROGRAM]

Runs go round in turn, so that whatever else the machine does hits all alike; the best of each counts. ImageMagick reads the pictures
from its own pixel caches, which it maps; what it takes to open both is measured and taken off. pixelmatch gets both as arrays.
Needs imagemagick, node and npm; writes 2 GB below benchmarks/data/image/.
"""

import os
import pathlib
import re
import subprocess
import sys
import time

SIDE = 8000
ROUNDS = 3
HERE = pathlib.Path(__file__).resolve().parent
DATA = HERE / "data" / "image"

PIXELMATCH = """
import fs from 'fs';
import pixelmatch from 'pixelmatch';
const side = %d;
const left = fs.readFileSync('left.rgba'), right = fs.readFileSync('right.rgba');
const map = new Uint8Array(left.length);
const start = process.hrtime.bigint();
const different = pixelmatch(left, right, map, side, side, {threshold: 0, includeAA: true});
console.log(Number(process.hrtime.bigint() - start) / 1e6, different);
"""

# Debian's policy would keep pictures of this size on the disk.
POLICY = "<policymap></policymap>"


def seconds(command, environment):
    start = time.perf_counter()
    subprocess.run(command, cwd=DATA, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.perf_counter() - start


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else str(HERE.parent / "build/release/bin/benchmark_image_map")
    (DATA / "config").mkdir(parents=True, exist_ok=True)
    (DATA / "config" / "policy.xml").write_text(POLICY)
    environment = dict(os.environ, MAGICK_CONFIGURE_PATH=str(DATA / "config"))
    subprocess.run([program, str(SIDE), str(SIDE), "left.rgba", "right.rgba"], cwd=DATA, check=True, stdout=subprocess.DEVNULL)
    for side in ("left", "right"):
        subprocess.run(["convert", "-size", f"{SIDE}x{SIDE}", "-depth", "8", f"rgba:{side}.rgba", f"{side}.mpc"], cwd=DATA,
                       env=environment, check=True)
    if not (DATA / "node_modules" / "pixelmatch").exists():
        subprocess.run(["npm", "install", "--silent", "--prefix", str(DATA), "pixelmatch"], check=True)
    (DATA / "match.mjs").write_text(PIXELMATCH % SIDE)

    times = {"velmora": [], "compare": [], "pixelmatch": []}
    for _ in range(ROUNDS):
        said = subprocess.run([program, str(SIDE), str(SIDE)], check=True, stdout=subprocess.PIPE, text=True).stdout
        times["velmora"].append(float(re.search(r"^map ([\d.]+) ms", said)[1]) / 1000)
        opened = seconds(["identify", "left.mpc", "right.mpc"], environment)
        times["compare"].append(seconds(["compare", "-metric", "AE", "left.mpc", "right.mpc", "null:"], environment) - opened)
        node = subprocess.run(["node", "--max-old-space-size=8192", "match.mjs"], cwd=DATA, check=True, stdout=subprocess.PIPE,
                              text=True).stdout
        times["pixelmatch"].append(float(node.split()[0]) / 1000)
    ours = min(times["velmora"])
    for name, found in times.items():
        print(f"{name:12} {min(found):8.3f} s   velmora takes {ours / min(found):.3f} of it")
    small = subprocess.run([program, "3840", "2160"], check=True, stdout=subprocess.PIPE, text=True).stdout
    print("8 megapixels: " + re.search(r"showing ([\d.]+) ms", small)[0] + " (aim 50 ms)")


if __name__ == "__main__":
    main()
