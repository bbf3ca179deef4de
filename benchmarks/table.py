#!/usr/bin/env python3
"""Measures `velmora-cli table` beside `sort | diff` and daff, whole process against whole process.

    table.py [--program FILE] [--daff DAFF] [--rounds N]

Makes its tables in benchmarks/data/table/ (about 1 GB, the same bytes everywhere). All contestants of a case run in turn, round after
round, so that what else the machine does hits them alike; the best time of each counts. sort and diff run in the C locale. daff is the npm
package (npm install --prefix benchmarks/data daff); without it its column stays empty. Exits with 1 when an aim is missed.
"""

import argparse
import multiprocessing
import pathlib
import random
import sys

from text import DATA, PROGRAM, Run

TABLES = DATA / "table"
DAFF = DATA / "node_modules" / "daff" / "bin" / "daff.js"


def keyed_rows(rows, columns, seed, share):
    """A table and one with a share of its rows changed, removed or added, in another order by blocks."""
    chance = random.Random(seed)
    header = ",".join(["id"] + [f"c{k}" for k in range(1, columns)])
    left = [[f"{row:08d}"] + [str(chance.randrange(10 ** 7)) for _ in range(columns - 1)] for row in range(rows)]
    right = []
    for row in left:
        chosen = chance.random()
        if chosen < share * 0.8:
            row = row[:]
            row[chance.randrange(1, columns)] = "changed"
        elif chosen < share * 0.9:
            continue
        right.append(row)
        if share * 0.9 <= chosen < share:
            right.append([row[0] + "n"] + row[1:])
    return ("\n".join([header] + [",".join(row) for row in table]) + "\n" for table in (left, right))


def hostile():
    size = 50_000_000
    plain = "".join(f"{k:07d},a,b,c\n" for k in range(size // 14))
    wide = "1234567," * (size // 8)
    texts = {
        "plain 50 MB": plain,
        "one row of 50 MB": wide,
        "one field of 50 MB": "id,text\n1," + "x" * size,
        "5 million empty lines": "\n" * 5_000_000,
        "a quote never closed": 'id,text\n1,"' + plain,
        "all keys equal": "".join(f"1234567,{k % 10},b,c\n" for k in range(size // 14)),
    }
    for name, text in texts.items():
        yield name, text, text[: len(text) // 2] + "Z" + text[len(text) // 2 + 1:]


def prepare():
    """Has a process of its own make the tables: a contestant counts as peak what this one has used when it starts it."""
    if (TABLES / "made").exists():
        return
    maker = multiprocessing.get_context("spawn").Process(target=make_tables)
    maker.start()
    maker.join()
    if maker.exitcode:
        sys.exit("the tables cannot be made")


def make_tables():
    TABLES.mkdir(parents=True, exist_ok=True)
    made = TABLES / "made"
    for name, rows, columns in (("200000x12", 200_000, 12), ("1000000x9", 1_000_000, 9)):
        for side, text in zip("lr", keyed_rows(rows, columns, 1, 0.01)):
            (TABLES / f"{name}-{side}.csv").write_text(text)
    for name, *texts in hostile():
        for side, text in zip("lr", texts):
            (TABLES / f"{name}-{side}.csv").write_text(text)
    made.touch()


def pair(name):
    return [str(TABLES / f"{name}-{side}.csv") for side in "lr"]


def measure(contestants, rounds):
    """The best time of each, and the peak memory of that run."""
    best = {}
    for _ in range(rounds):
        for name, command in contestants.items():
            run = Run(command, 600)
            if run.error:
                sys.exit(f"{name}: {run.error}")
            if name not in best or run.seconds < best[name].seconds:
                best[name] = run
    return best


def shown(case, what, value, aim):
    missed = value > aim
    print(f"| {case} | {what} | {value:.3g} | {aim:g} |{' **missed**' if missed else ''}")
    return missed


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--program", default=str(PROGRAM))
    options.add_argument("--daff", default=str(DAFF))
    options.add_argument("--rounds", type=int, default=5)
    options = options.parse_args()
    prepare()
    table = [options.program, "table"]
    missed = False
    print("| case | what | measured | aim |\n|---|---|---|---|")

    files = pair("200000x12")
    sorting = 'export LC_ALL=C; sort "$0" > "$0.sorted"; sort "$1" > "$1.sorted"; diff "$0.sorted" "$1.sorted"'
    best = measure({"keyed": table + ["--key", "id"] + files, "sort": ["sh", "-c", sorting] + files,
                    "ordered": table + files, "text": [options.program, "text", "--preset", "strict"] + files},
                   options.rounds)
    for name, run in best.items():
        print(f"| 200,000 x 12 | {name}, s | {run.seconds:.3f} | |")
    missed |= shown("200,000 x 12", "keyed / sort and diff", best["keyed"].seconds / best["sort"].seconds, 0.7)
    missed |= shown("200,000 x 12", "ordered / velmora-cli text", best["ordered"].seconds / best["text"].seconds, 1.5)
    if pathlib.Path(options.daff).exists():
        daff = measure({"daff": ["node", options.daff, "--id", "id", "--output", "/dev/null"] + files}, 1)["daff"]
        print(f"| 200,000 x 12 | daff, s | {daff.seconds:.2f} | |")
        missed |= shown("200,000 x 12", "keyed / daff", best["keyed"].seconds / daff.seconds, 0.05)

    files = pair("1000000x9")
    size = sum(pathlib.Path(file).stat().st_size for file in files)
    run = measure({"keyed": table + ["--key", "id"] + files}, options.rounds)["keyed"]
    missed |= shown("1,000,000 x 9", "keyed, s", run.seconds, 1.2)
    missed |= shown("1,000,000 x 9", "memory / both files", run.peak / size, 6)
    rules = ["--ignore-case", "c1", "--tolerance", "c2=0.5", "--leave-out", "c3"]
    best = measure({"keyed": table + ["--key", "id"] + files, "rules": table + ["--key", "id"] + rules + files},
                   options.rounds)
    print(f"| 1,000,000 x 9 | keyed with three rules / keyed | {best['rules'].seconds / best['keyed'].seconds:.3g} | |")

    for way in ([], ["--key", "1"]):
        best = measure({name: table + way + pair(name) for name, *_ in hostile_names()}, max(2, options.rounds // 2))
        plain = best["plain 50 MB"].seconds
        for name, run in best.items():
            missed |= shown(name, f"{'keyed' if way else 'ordered'} / plain", run.seconds / plain, 5)
    sys.exit(missed)


def hostile_names():
    return [(path.name.removesuffix("-l.csv"),) for path in sorted(TABLES.glob("*-l.csv"))
            if not path.name[0].isdigit() or path.name.startswith("5 ")]


if __name__ == "__main__":
    main()
