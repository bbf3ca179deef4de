#!/usr/bin/env python3
"""Checks that QLatin1String and QLatin1Char hold ASCII only: of anything else they show the bytes of UTF-8 as letters.

    latin1.py FOLDER...
"""

import pathlib
import re
import sys

LITERAL = re.compile(r'\bQLatin1(?:String|Char)\s*[({]\s*(?:"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)*\')')


def main():
    folders = [pathlib.Path(name) for name in sys.argv[1:]]
    files = [file for folder in folders for file in sorted(folder.rglob("*")) if file.suffix in (".h", ".cpp")]
    if not files:
        sys.exit("no sources")
    found = 0
    for file in files:
        text = file.read_text(encoding="utf-8")
        for literal in LITERAL.finditer(text):
            if not literal.group().isascii():
                print(f"{file}:{text.count(chr(10), 0, literal.start()) + 1}: {literal.group()}")
                found += 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
