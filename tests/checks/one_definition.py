#!/usr/bin/env python3
"""Checks that no two headers define a type of the same name in the same namespace.

    one_definition.py FOLDER...

Such headers need never meet in one source for the program to go wrong: of the code that templates and inline functions
make of both types the linker keeps one, and lists of the other type are then read with the wrong size.
"""

import pathlib
import re
import sys

NAMESPACE = re.compile(r"^namespace ([\w:]+) \{", re.MULTILINE)
TYPE = re.compile(r"^(?:struct|class|union|enum(?: class)?) (?:alignas\([^)]*\) |\[\[\w+\]\] )?(\w+)(?: final)?(?: : [^;{]*)?\s*\{",
                  re.MULTILINE)


def types(file):
    """The types that stand in a namespace of `file`, with its name: as the sources are laid out, without indentation."""
    text = file.read_text(encoding="utf-8")
    spaces = [(space.start(), space[1]) for space in NAMESPACE.finditer(text)]
    for found in TYPE.finditer(text):
        yield "::".join([name for start, name in spaces if start < found.start()][-1:] + [found[1]])


def main():
    folders = [pathlib.Path(name) for name in sys.argv[1:]]
    headers = [file for folder in folders for file in sorted(folder.rglob("*.h"))]
    if not headers:
        sys.exit("no headers")
    owners = {}
    failed = False
    for header in headers:
        for name in types(header):
            other = owners.setdefault(name, header)
            if other != header:
                print(f"{header}: {name} is another type in {other}")
                failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
