#!/usr/bin/env python3
"""Checks that every file of src/ includes only what its floor may see.

    layers.py SOURCE_FOLDER QT_HEADER_FOLDER

The linker cannot tell: all libraries share one include path, and an inline header of a higher floor links anywhere.
"""

import pathlib
import re
import sys

# From the ground up. A folder sees itself and the floors under it; a neighbour of the same floor only as listed below. So a
# session uses the kits of session/ and never another session, and a kit knows neither a session nor another kit.
FLOORS = [
    r"platform",
    r"core",
    r"settings/options|vfs",
    r"(.*/)?engine|text/syntax",
    r"folder/operations",
    r"cli",
    r"session",
    r"session/(frame|list|pane)",
    r"session/(document|fields|find)",
    r"settings/dialogs",
    r"text(/edit)?|merge|system|settings|(folder|filetypes)(/\w+)?",
    r"app",
]
QT_CORE_ONLY = FLOORS[:6]
NEIGHBOURS = {
    ("merge/engine", "text/engine"),
    ("filetypes/table/engine", "text/engine"),
    ("folder/sftp/engine", "folder/engine"),
    ("folder/sftp/engine", "filetypes/checksum/engine"),
    ("folder/browse", "folder/actions"),
    ("folder/compare", "folder/actions"),
    ("folder/duplicates", "folder/actions"),
    ("folder/git", "folder/actions"),
    ("folder/merge", "folder/actions"),
    ("folder/sftp", "folder/actions"),
    ("folder/snapshot", "folder/actions"),
    ("folder/sync", "folder/actions"),
    ("folder/usage", "folder/actions"),
    ("session/pane", "session/frame"),
}
# What else of Qt these may see: native windows, and images as values.
ALSO_GUI = re.compile(r"platform/window_\w+\.(h|cpp)|filetypes/image/engine/.*|cli/image_main\.cpp")

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<(Q[^>]+|q\w+\.h)>)', re.MULTILINE)
PLATFORM_CONDITION = re.compile(r"^\s*#\s*(?:el)?if.*\b(Q_OS_\w+|_WIN32|WIN32|__linux__|__unix__|__APPLE__)", re.MULTILINE)
PLATFORM_FILE = re.compile(r"platform/\w+_(win|unix)\.cpp")


def room(path):
    """The folder that counts as one for a file: the whole of a session, its engine apart."""
    parts = path.split("/")[:-1]
    if "engine" in parts:
        return "/".join(parts[: parts.index("engine") + 1])
    if parts[:2] in (["text", "syntax"], ["text", "edit"]):
        return "/".join(parts[:2])
    return "/".join(parts[: 2 if parts and parts[0] in ("session", "settings", "folder", "filetypes") else 1])


def floor(name):
    for number, pattern in enumerate(FLOORS):
        if re.fullmatch(pattern, name):
            return number
    return None


def complaints(source, qt_headers):
    for file in sorted(source.rglob("*")):
        path = file.relative_to(source).as_posix()
        if file.suffix not in (".h", ".cpp") or "/" not in path:
            continue
        own = room(path)
        height = floor(own)
        if height is None:
            yield f"{path}: the folder {own} is on no floor; add it to FLOORS"
            continue
        text = file.read_text(encoding="utf-8")
        for match in INCLUDE.finditer(text):
            line = text.count("\n", 0, match.start(1) if match[1] else match.start(2)) + 1
            included, qt = match.groups()
            if qt:
                core = (qt_headers / "QtCore" / qt.removeprefix("QtCore/")).exists()
                if FLOORS[height] in QT_CORE_ONLY and not core and not ALSO_GUI.fullmatch(path):
                    yield f"{path}:{line}: <{qt}> is not of Qt Core"
            elif (source / included).exists() and "/" in included:
                theirs = room(included)
                if theirs == own or (own, theirs) in NEIGHBOURS:
                    continue
                other = floor(theirs)
                if other is None or other >= height or (FLOORS[other] == "cli"):
                    yield f"{path}:{line}: {own} may not include {included}"
        if not PLATFORM_FILE.fullmatch(path):
            for match in PLATFORM_CONDITION.finditer(text):
                line = text.count("\n", 0, match.start(1)) + 1
                yield f"{path}:{line}: {match[1]} belongs into src/platform/*_win.cpp or *_unix.cpp"


def main():
    source, qt_headers = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    if not (qt_headers / "QtCore" / "QString").exists() or not (source / "core").is_dir():
        sys.exit(f"not the folders expected: {source}, {qt_headers}")
    found = list(complaints(source, qt_headers))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
