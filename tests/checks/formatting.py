#!/usr/bin/env python3
"""Checks that the sources are as clang-format leaves them; other versions than the project's decide differently.

    formatting.py CLANG_FORMAT FOLDER…
"""

import pathlib
import re
import subprocess
import sys

VERSION = "14"
SKIPPED = 77


def main():
    program = sys.argv[1]
    if not program or program.endswith("-NOTFOUND"):
        print(f"skipped: clang-format {VERSION} is not installed")
        return SKIPPED
    version = subprocess.run([program, "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
    if not re.search(rf"version {VERSION}\.", version):
        print(f"skipped: clang-format {VERSION} is needed, this is {version.strip()}")
        return SKIPPED
    files = [file for folder in sys.argv[2:] for file in sorted(pathlib.Path(folder).rglob("*"))
             if file.suffix in (".h", ".cpp")]
    run = subprocess.run([program, "--dry-run", "--Werror", *files], stderr=subprocess.PIPE, text=True)
    print("\n".join(sorted({line.split(":")[0] for line in run.stderr.splitlines() if "[-Wclang-format" in line})))
    return 1 if run.returncode else 0


if __name__ == "__main__":
    sys.exit(main())
