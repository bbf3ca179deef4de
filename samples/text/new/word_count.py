"""Counts the words of text files and prints the most frequent ones."""

import argparse
import re
import sys
from collections import Counter
from pathlib import Path

WORD = re.compile(r"[^\W\d_]+(?:'[^\W\d_]+)?")
IGNORED = {"the", "a", "an", "and", "or", "of", "to", "in", "is", "it"}


class WordCounter:
    def __init__(self, ignored=IGNORED):
        self.words = Counter()
        self.ignored = ignored
        self.files = 0

    def add_file(self, path):
        text = Path(path).read_text(encoding="utf-8")
        self.add_text(text)
        self.files += 1

    def add_text(self, text):
        for word in WORD.findall(text):
            word = word.lower()
            if word in self.ignored:
                continue
            self.words[word] += 1

    def most_common(self, number):
        # Words that are equally frequent stand in the order of the alphabet.
        pairs = sorted(self.words.items(), key=lambda pair: (-pair[1], pair[0]))
        return pairs[:number]


def print_summary(counter):
    total = sum(counter.words.values())
    print("files:   ", counter.files)
    print("words:   ", total)
    print("distinct:", len(counter.words))


def print_table(counter, number):
    for word, count in counter.most_common(number):
        print(f"{count:8} {word}")


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("files", nargs="+", metavar="FILE")
    parser.add_argument("-n", "--number", type=int, default=20, help="how many words to print")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    counter = WordCounter()
    for path in arguments.files:
        try:
            counter.add_file(path)
        except OSError as error:
            print(f"{path}: {error.strerror}", file=sys.stderr)
    print_table(counter, arguments.number)
    print_summary(counter)


if __name__ == "__main__":
    main()
