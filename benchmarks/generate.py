#!/usr/bin/env python3
"""Makes the large and the hostile text pairs for text.py, the same bytes on every machine.

    generate.py [NAME...]      into benchmarks/data/; all pairs, or the named ones

Lines are about 70 bytes long, as those of logs and sources are, except where a pair says otherwise.
"""

import argparse
import pathlib
import random

DATA = pathlib.Path(__file__).resolve().parent / "data"
SIZE = 50_000_000  # bytes of each side of a large pair
WIDTH = 70         # bytes of an ordinary line, its line feed included
LINES = SIZE // WIDTH

WORDS = (
    "alpha beta gamma delta epsilon zeta eta theta iota kappa lambda mu nu xi omicron pi rho sigma tau upsilon phi chi "
    "psi omega request response session worker thread queue cache index offset buffer stream reader writer parser token "
    "value field record table column row page block file folder path name size time error warning info debug open close"
).split()


def padded(text, width=WIDTH):
    """`text` as a line of `width` bytes."""
    return text[: width - 1].ljust(width - 1, ".") + "\n"


def sentence(rng):
    return " ".join(rng.choice(WORDS) for _ in range(9))


def one_percent(rng):
    """A large file and an edited copy: one line in a hundred was changed, dropped or has a new line in front of it."""
    left = [padded(f"{number:07d} {sentence(rng)}") for number in range(723_000)]
    right = []
    for line in left:
        kind = rng.randrange(400) if rng.randrange(100) == 0 else 400
        if kind < 200:
            right.append(padded(line[:40] + f" edited {rng.randrange(10**6)}"))
        elif kind < 300:
            right.append(padded(f"new {sentence(rng)}"))
            right.append(line)
        elif kind >= 400:
            right.append(line)
    return left, right


def repeated_log(rng, lines=500_000, edits=5_000):
    """Half a million lines of which only 34 are distinct, as from a program that says the same over and over."""
    messages = [padded(f"{WORDS[number]}: {sentence(rng)}") for number in range(34)]
    left = [messages[min(int(rng.expovariate(0.15)), 33)] for _ in range(lines)]
    right = list(left)
    for _ in range(edits):
        place = rng.randrange(len(right))
        right[place : place + 1] = [messages[rng.randrange(34)]] * rng.randrange(3)
    return left, right


def scattered_log(rng):
    """The same with so many scattered changes that every sixth row differs."""
    return repeated_log(rng, edits=62_000)


def scattered_short_log(rng):
    """The same in 200 KB."""
    return repeated_log(rng, lines=200_000 // WIDTH, edits=62_000 * 200_000 // WIDTH // 500_000)


def one_value(rng):
    """One line over and over, with a few strangers in between on the right side."""
    line = padded("the same line over and over")
    left = [line] * LINES
    right = list(left)
    for number in range(100):
        right[rng.randrange(LINES)] = padded(f"stranger {number}")
    return left, right


def periodic(rng):
    """A thousand lines that come again and again; the right side starts in the middle of them."""
    period = [padded(f"{number:04d} {sentence(rng)}") for number in range(1000)]
    left = (period * (LINES // 1000 + 1))[:LINES]
    return left, left[337:] + left[:337]


def fibonacci(rng):
    """The Fibonacci word over two lines, the worst case of much that compares repetitions."""
    a, b = padded("a line of the one kind"), padded("a line of the other kind")
    word, following = [a], [a, b]
    while len(following) < LINES:
        word, following = following, following + word
    left = following[:LINES]
    return left, left[1:] + [b]


def small_alphabet(rng):
    """Both sides at random from the same four lines."""
    letters = [padded(f"letter {name} {sentence(rng)}") for name in "abcd"]
    return rng.choices(letters, k=LINES), rng.choices(letters, k=LINES)


def all_different(rng):
    """No line of one side is on the other."""
    left = [padded(f"left {number:07d} {sentence(rng)}") for number in range(LINES)]
    right = [padded(f"right {number:07d} {sentence(rng)}") for number in range(LINES)]
    return left, right


def short_lines(rng):
    """Twenty-five million lines of one letter: next to nothing but line ends."""
    letters = [chr(ord("a") + number) + "\n" for number in range(26)]
    left = rng.choices(letters, k=SIZE // 2)
    right = list(left)
    for _ in range(2_500):
        right[rng.randrange(len(right))] = rng.choice(letters)
    return left, right


PAIRS = {
    "50mb-1-percent": one_percent,
    "log-34-lines": repeated_log,
    "log-34-lines-scattered": scattered_log,
    "log-34-lines-scattered-200kb": scattered_short_log,
    "hostile-one-value": one_value,
    "hostile-periodic": periodic,
    "hostile-fibonacci": fibonacci,
    "hostile-small-alphabet": small_alphabet,
    "hostile-all-different": all_different,
    "hostile-short-lines": short_lines,
}


def write(path, lines):
    with open(path, "w", encoding="ascii", newline="") as file:
        file.writelines(lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("names", nargs="*", metavar="NAME", help=", ".join(PAIRS))
    names = parser.parse_args().names or list(PAIRS)
    for name in names:
        if name not in PAIRS:
            parser.error(f"no pair {name}")
        folder = DATA / name
        folder.mkdir(parents=True, exist_ok=True)
        left, right = PAIRS[name](random.Random(name))
        write(folder / "left.txt", left)
        write(folder / "right.txt", right)
        print(f"{name}: {len(left)} and {len(right)} lines")


if __name__ == "__main__":
    main()
