#!/usr/bin/env python3
"""Compares what velmora-cli merge makes of real texts with what git merge-file makes of them.

    merge_beside_git.py [--program FILE] [--style NAME] [--keep FOLDER] RELEASES...

Each of RELEASES is a folder with three releases of a package, as folders beside one another. Every file that stands in all three, and
is not the same in two of them, gives triples: the releases take turns as base, left and right. Long files are cut at random places,
too. A triple agrees when both programs find conflicts, or both find none and the results have the same bytes. Prints every
triple that does not, and the counts.
"""

import argparse
import collections
import os
import pathlib
import random
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
LONG = 400  # lines from which on a file is also cut


def releases_of(folder):
    releases = sorted(path for path in folder.iterdir() if path.is_dir())
    if len(releases) != 3:
        raise SystemExit(f"{folder}: not three releases but {len(releases)}")
    return releases


def cuts(texts, chance):
    """The whole texts, and the same part of long ones, roughly: its first and last line are found in each."""
    yield "", texts
    lines = [text.splitlines(keepends=True) for text in texts]
    if min(map(len, lines)) < LONG:
        return
    for _ in range(3):
        at = chance.randrange(min(map(len, lines)) - LONG // 2)
        length = chance.randrange(20, LONG // 2)
        yield f" from line {at + 1} on", [b"".join(text[at:at + length]) for text in lines]


def triples(folders):
    chance = random.Random(4)
    for folder in folders:
        releases = releases_of(folder)
        for first in sorted(releases[0].rglob("*")):
            name = first.relative_to(releases[0])
            files = [release / name for release in releases]
            if not first.is_file() or not all(file.is_file() for file in files):
                continue
            texts = [file.read_bytes() for file in files]
            if len(set(texts)) < 3 or any(b"\0" in text for text in texts):
                continue
            for place, parts in cuts(texts, chance):
                if len(set(parts)) < 3:
                    continue
                for base, left, right in ((0, 1, 2), (1, 0, 2), (2, 1, 0)):
                    shown = ",".join(releases[index].name for index in (base, left, right))
                    yield f"{folder.name}/{name}{place} ({shown})", parts[base], parts[left], parts[right]


def run(command):
    process = subprocess.run(command, capture_output=True, check=False)
    return process.returncode, process.stdout


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("releases", nargs="+", type=pathlib.Path)
    parser.add_argument("--program", default=HERE.parent / "build/release/bin/velmora-cli")
    parser.add_argument("--style", default="diff3", choices=["merge", "diff3", "zdiff3"])
    parser.add_argument("--keep", type=pathlib.Path, help="where to keep the triples that do not agree")
    arguments = parser.parse_args()
    git_style = [] if arguments.style == "merge" else ["--" + arguments.style]
    counts = collections.Counter()
    with tempfile.TemporaryDirectory() as work:
        os.chdir(work)
        for name, *texts in triples([path.resolve() for path in arguments.releases]):
            for file, text in zip(("base", "left", "right"), texts):
                pathlib.Path(file).write_bytes(text)
            git, expected = run(["git", "merge-file", "-p", *git_style, "left", "base", "right"])
            ours, result = run([arguments.program, "merge", "--style", arguments.style, "base", "left", "right"])
            counts["triples"] += 1
            counts["clean" if git == 0 else "conflicts"] += 1
            counts["same text with its conflicts"] += git > 0 and result == expected
            agrees = bool(git) == bool(ours) and (git or result == expected)
            counts["agree"] += bool(agrees)
            if not agrees:
                print(f"{name}: git {git}, ours {ours}")
                if arguments.keep:
                    place = arguments.keep / str(counts["triples"])
                    place.mkdir(parents=True, exist_ok=True)
                    for file, text in zip(("base", "left", "right", "git", "ours"), (*texts, expected, result)):
                        (place / file).write_bytes(text)
    print(", ".join(f"{name} {count}" for name, count in counts.items()))
    return 0 if counts["agree"] == counts["triples"] else 1


if __name__ == "__main__":
    raise SystemExit(main())
