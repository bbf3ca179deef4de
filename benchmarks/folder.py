#!/usr/bin/env python3
"""Measures folder comparisons of velmora-cli beside the programs of the system, whole process against whole process.

    folder.py [--program FILE] [CASE...]      cases are listed by --help; generate_folders.py makes their data

Every program reads from the cache and writes to /dev/null. Best and median time of several runs are printed as Markdown, with
the ratio of velmora-cli's best to the other's, and the peak memory of velmora-cli for each entry of either side.
"""

import argparse
import os
import pathlib
import shutil
import sys

from text import PROGRAM, Series

DATA = pathlib.Path(__file__).resolve().parent / "data" / "folders"

GIT = ["git", "-c", "core.pager=cat", "diff", "--no-index", "--no-ext-diff"]


def tree_rivals(left, right):
    return {
        "diff -rq": ["diff", "-rq", left, right],
        "rsync -rcn --delete": ["rsync", "-rcn", "--delete", f"{left}/", f"{right}/"],
        "git diff --stat": GIT + ["--stat", left, right],
        "find -printf": ["find", left, right, "-printf", "%s %T@ %p\\n"],
    }


def pair_rivals(left, right):
    files = [f"{left}/file.bin", f"{right}/file.bin"]
    return {"cmp": ["cmp", "-s", *files], "git diff --quiet": GIT + ["--quiet", *files]}


def crc_rivals(left, right):
    return {"crc32": ["crc32", f"{left}/file.bin", f"{right}/file.bin"]}


# Name: data set, sides, options of velmora-cli, what runs beside it.
CASES = {
    "sources, equal content, other times": ("sources", "left", "right", [], tree_rivals),
    "sources, binary": ("sources", "left", "right", ["--method", "binary"], tree_rivals),
    "sources, CRC": ("sources", "left", "right", ["--method", "crc"], tree_rivals),
    "sources, equal times": ("sources", "left", "twin", [], tree_rivals),
    "small files, other times": ("small", "left", "right", [], tree_rivals),
    "2 GiB, equal": ("large", "left", "right", [], pair_rivals),
    "2 GiB, equal, binary": ("large", "left", "right", ["--method", "binary"], pair_rivals),
    "2 GiB, early difference": ("large", "left", "early", [], pair_rivals),
    "2 GiB, CRC of both": ("large", "left", "right", ["--method", "crc"], crc_rivals),
}


def count_entries(*trees):
    return sum(len(folders) + len(files) for tree in trees for _, folders, files in os.walk(tree))


def measure(case, options):
    data, left_name, right_name, arguments, rivals = CASES[case]
    left, right = (str(DATA / data / side) for side in (left_name, right_name))
    if not os.path.isdir(left):
        sys.exit(f"no data for \"{case}\"; see generate_folders.py")
    entries = count_entries(left, right)
    command = [options.program, "folder", *arguments, left, right]
    Series(command, 1, options.limit)  # fills the cache
    own = Series(command, options.runs, options.limit)
    # The same program on nothing: what it needs before the first entry.
    empty = Series([options.program, "folder", os.devnull + "/.", left], 1, options.limit)
    memory = f"{max(own.peak - empty.peak, 0) / entries:.0f} B" if entries > 100 else "-"
    rows = [[case, "**velmora-cli**", str(own), "", memory]]
    for name, rival in rivals(left, right).items():
        if not shutil.which(rival[0]):
            rows.append([case, name, "not installed", "", ""])
            continue
        series = Series(rival, options.runs, options.limit)
        ratio = "" if own.error or series.error else f"{own.best / series.best:.2f}"
        rows.append([case, name, str(series), ratio, ""])
    return rows


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter,
                                     epilog="cases: " + "; ".join(CASES))
    parser.add_argument("cases", nargs="*", metavar="CASE")
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE", help="velmora-cli to measure (default: %(default)s)")
    parser.add_argument("--runs", type=int, default=5, metavar="N", help="least number of runs (default: %(default)s)")
    parser.add_argument("--limit", type=float, default=60, metavar="SECONDS",
                        help="a run that takes longer is ended (default: %(default)s)")
    options = parser.parse_args()
    if not os.access(options.program, os.X_OK):
        parser.error(f"no program {options.program}")
    for case in options.cases:
        if case not in CASES:
            parser.error(f"no case \"{case}\"")

    print("| case | program | best / median | velmora / this | memory an entry |")
    print("|---|---|---|---|---|")
    for case in options.cases or CASES:
        for row in measure(case, options):
            print("| " + " | ".join(row) + " |", flush=True)


if __name__ == "__main__":
    main()
