#!/usr/bin/env python3
"""Checks that rendered icons belong to their drawings, and that every icon the sources name is there in each theme.

    icons.py RESOURCE_FOLDER SOURCE_FOLDER
"""

import pathlib
import re
import subprocess
import sys

NAME = re.compile(r'"(?::/)?(?:icons/)?((?:sessions/)?[A-Za-z0-9_]+\.(?:png|ico))"')


def missing(icons, name):
    if (icons / name).exists():
        return []
    return [theme for theme in ("light", "dark") if not (icons / theme / name).exists()]


def main():
    resources, sources = map(pathlib.Path, sys.argv[1:3])
    files = [file for file in sorted(sources.rglob("*")) if file.suffix in (".h", ".cpp")]
    named = [(file, name) for file in files for name in NAME.findall(file.read_text(encoding="utf-8"))]
    if not named:
        sys.exit(f"no icon is named in {sources}")
    found = 0
    for file, name in named:
        for theme in missing(resources / "icons", name):
            print(f"{file.relative_to(sources)}: no {theme} icon {name}")
            found += 1
    rendered = subprocess.run([sys.executable, resources / "icons" / "render.py", "--check"], check=False)
    return 1 if found or rendered.returncode else 0


if __name__ == "__main__":
    sys.exit(main())
