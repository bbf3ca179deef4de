#!/usr/bin/env python3
"""Measures how long two large `.reg` files take to be read and compared.

    registry.py VELMORA_CLI [FOLDER]

Makes two files of 100 MB with 500,000 values each in FOLDER (a temporary one without), of which one value in a thousand differs, and
prints the best of five runs of `velmora-cli registry` in seconds.
"""

import pathlib
import subprocess
import sys
import tempfile
import time

VALUES = 500_000
PER_KEY = 10


def entries(changed):
    lines = ["Windows Registry Editor Version 5.00", ""]
    for number in range(VALUES):
        if number % PER_KEY == 0:
            key = number // PER_KEY
            lines += ["", f"[HKEY_LOCAL_MACHINE\\SOFTWARE\\Maker{key // 1000:03}\\Product{key % 1000:03}]"]
        state = "changed" if changed and number % 1000 == 0 else "as it was"
        if number % 3 == 0:
            first = "00," if state == "changed" else ""
            digits = ",".join(f"{(number + k) % 256:02x}" for k in range(26))
            lines.append(f'"Value{number:07}"=hex:{first}{digits}')
        else:
            lines.append(f'"Value{number:07}"="C:\\\\Program Files\\\\Maker\\\\Product\\\\File {number:07}, {state}, and some more letters"')
    return "\r\n".join(lines) + "\r\n"


def measure(program, folder):
    files = []
    for name, changed in (("left.reg", False), ("right.reg", True)):
        path = folder / name
        path.write_bytes(b"\xff\xfe" + entries(changed).encode("utf-16-le"))
        files.append(path)
    print(f"{files[0].stat().st_size / 1e6:.0f} MB, {VALUES} values each")
    best = None
    for _ in range(5):
        start = time.monotonic()
        result = subprocess.run([program, "registry", *files], capture_output=True, text=True)
        taken = time.monotonic() - start
        if result.returncode != 1:
            sys.exit(result.stderr or "no difference found")
        best = taken if best is None else min(best, taken)
    print(result.stdout.strip())
    print(f"both read and compared: {best:.2f} s")


def main():
    if len(sys.argv) > 2:
        measure(sys.argv[1], pathlib.Path(sys.argv[2]))
        return
    with tempfile.TemporaryDirectory() as folder:
        measure(sys.argv[1], pathlib.Path(folder))


if __name__ == "__main__":
    main()
