#!/usr/bin/env python3
"""Renders the icon sources into the files that the program embeds, and lists those in velmora.qrc.

  render.py           render what changed since the last run (needs rsvg-convert)
  render.py --all     render everything again
  render.py --check   say which rendered files are stale; needs no renderer, ends with 1 if any is

Every rendered file is recorded in rendered.sums with the digest of what it was made from (drawing, colours, sizes) and
its own digest, so that a changed drawing and a changed picture are both noticed.
"""

import hashlib
import struct
import subprocess
import sys
from pathlib import Path

ICONS = Path(__file__).resolve().parent
SOURCES = ICONS / "src"
SUMS = ICONS / "rendered.sums"
QRC = ICONS.parent / "velmora.qrc"

# Largest first: whoever reads a single picture of the file gets the best one.
ICO_SIZES = (256, 128, 64, 48, 40, 32, 24, 20, 16)
PICTURE_SIZE = 256

# A tool icon is 20 pixels wide; the others serve screens scaled to 125, 150, 200 and 300 %.
TOOL_SIZES = {"": 20, "-25": 25, "-30": 30, "@2x": 40, "@3x": 60}

# The two colours that a tool icon is drawn with, and what they become in each theme.
INK, ACCENT = "#3f454c", "#2a82da"
THEMES = {"light": {INK: INK, ACCENT: "#1f78d1"}, "dark": {INK: "#d6dade", ACCENT: "#5cabf2"}}

# Looked up without a theme as well.
UNTHEMED_TOOLS = ("drawer", "new")

# Session kinds that have a plain picture; the others have an .ico file.
PICTURE_SESSIONS = ("archive", "checksum", "disk", "duplicate", "env", "git", "services", "sftp", "snapshot", "startup")


def themed(drawing, theme):
    for colour, replacement in THEMES[theme].items():
        drawing = drawing.replace(colour, replacement)
    return drawing


def recipes():
    """Maps every rendered file, relative to this folder, to its drawing and its sizes."""
    result = {}
    app = (ICONS / "app.svg").read_text()
    result["app.png"] = (app, (PICTURE_SIZE,))
    result["app.ico"] = (app, ICO_SIZES)
    for source in sorted((SOURCES / "sessions").glob("*.svg")):
        if source.stem in PICTURE_SESSIONS:
            result[f"sessions/{source.stem}.png"] = (source.read_text(), (PICTURE_SIZE,))
        else:
            result[f"sessions/{source.stem}.ico"] = (source.read_text(), ICO_SIZES)
    for source in sorted((SOURCES / "tools").glob("*.svg")):
        drawing = source.read_text()
        for suffix, size in TOOL_SIZES.items():
            for theme in THEMES:
                result[f"{theme}/{source.stem}{suffix}.png"] = (themed(drawing, theme), (size,))
            if source.stem in UNTHEMED_TOOLS:
                result[f"{source.stem}{suffix}.png"] = (themed(drawing, "light"), (size,))
    return result


def recipe_digest(recipe):
    drawing, sizes = recipe
    return hashlib.sha256(f"{sizes}\n{drawing}".encode()).hexdigest()[:16]


def file_digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()[:16]


def recorded():
    if not SUMS.exists():
        return {}
    rows = (line.split() for line in SUMS.read_text().splitlines())
    return {name: (made_from, content) for made_from, content, name in rows}


def staleness(name, recipe, record):
    """Why a rendered file must be rendered again, or None."""
    if name not in record:
        return "never rendered"
    made_from, content = record[name]
    path = ICONS / name
    if not path.exists():
        return "missing"
    if made_from != recipe_digest(recipe):
        return "drawing changed"
    if content != file_digest(path):
        return "picture changed"
    return None


def rendered_files():
    folders = (ICONS, ICONS / "sessions", *(ICONS / theme for theme in THEMES))
    paths = (path for folder in folders for pattern in ("*.png", "*.ico") for path in folder.glob(pattern))
    return {str(path.relative_to(ICONS)) for path in paths}


def png(drawing, size):
    command = ["rsvg-convert", "--format=png", f"--width={size}", f"--height={size}"]
    return subprocess.run(command, input=drawing.encode(), stdout=subprocess.PIPE, check=True).stdout


def ico(pictures):
    """An icon file with PNG entries; `pictures` maps sizes to PNG data."""
    header = struct.pack("<HHH", 0, 1, len(pictures))
    offset = len(header) + 16 * len(pictures)
    directory = b""
    for size, data in pictures.items():
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return header + directory + b"".join(pictures.values())


def render(name, recipe):
    drawing, sizes = recipe
    path = ICONS / name
    path.parent.mkdir(exist_ok=True)
    if path.suffix == ".ico":
        path.write_bytes(ico({size: png(drawing, size) for size in sizes}))
    else:
        path.write_bytes(png(drawing, sizes[0]))


def resource_list(names):
    lines = "".join(f'        <file alias="icons/{name}">icons/{name}</file>\n' for name in names)
    return f'<RCC>\n    <qresource prefix="/">\n{lines}    </qresource>\n</RCC>\n'


def check(all_recipes, record):
    faults = [f"{name}: {why}" for name, recipe in all_recipes.items() if (why := staleness(name, recipe, record))]
    faults += [f"{name}: has no drawing" for name in sorted(rendered_files() - set(all_recipes))]
    if not QRC.exists() or QRC.read_text() != resource_list(sorted(all_recipes)):
        faults.append(f"{QRC.name}: out of date")
    print("\n".join(faults) if faults else f"{len(all_recipes)} rendered files are up to date")
    return 1 if faults else 0


def main(arguments):
    all_recipes = recipes()
    record = recorded()
    if arguments == ["--check"]:
        return check(all_recipes, record)
    if arguments not in ([], ["--all"]):
        print(__doc__)
        return 2
    stale = [name for name in all_recipes if arguments or staleness(name, all_recipes[name], record)]
    for name in stale:
        render(name, all_recipes[name])
    for name in rendered_files() - set(all_recipes):
        (ICONS / name).unlink()
    SUMS.write_text("".join(
        f"{recipe_digest(recipe)} {file_digest(ICONS / name)} {name}\n" for name, recipe in sorted(all_recipes.items())))
    QRC.write_text(resource_list(sorted(all_recipes)))
    print(f"rendered {len(stale)} of {len(all_recipes)} files")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
