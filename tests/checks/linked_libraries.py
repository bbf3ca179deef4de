#!/usr/bin/env python3
"""Checks that a program needs no Qt library but Core, neither itself nor through another library, and that neither libarchive,
which is loaded when an archive is met, nor TagLib, which velmora-cli-mp3 is for, is among what it is started with.

    linked_libraries.py PROGRAM
"""

import re
import subprocess
import sys


def main():
    run = subprocess.run(["ldd", sys.argv[1]], stdout=subprocess.PIPE, text=True, check=True)
    qt = set(re.findall(r"\blibQt6(\w+)\.so", run.stdout))
    if "Core" not in qt:
        sys.exit(f"{sys.argv[1]} does not even need Qt Core:\n{run.stdout}")
    if qt != {"Core"}:
        print(f"{sys.argv[1]} needs {', '.join(sorted('Qt' + name for name in qt))}")
        return 1
    if "libarchive.so" in run.stdout:
        print(f"{sys.argv[1]} loads libarchive at its start")
        return 1
    if "libtag" in run.stdout:
        print(f"{sys.argv[1]} needs TagLib, which velmora-cli-mp3 is for")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
