"""Counts the words of text files."""

import sys
import re

WORD = re.compile("[A-Za-z]+")
IGNORED = ["the", "a", "an", "and", "or", "of", "to", "in"]


class Counter:
    def __init__(self):
        self.words = {}
        self.files = 0

    def add_file(self, path):
        f = open(path)
        text = f.read()
        f.close()
        self.add_text(text)
        self.files = self.files + 1

    def add_text(self, text):
        for word in WORD.findall(text):
            word = word.lower()
            if word in IGNORED:
                continue
            if word in self.words:
                self.words[word] = self.words[word] + 1
            else:
                self.words[word] = 1

    def most_common(self, number):
        pairs = list(self.words.items())
        pairs.sort(key=lambda pair: pair[1], reverse=True)
        return pairs[:number]


def print_table(counter, number):
    for word, count in counter.most_common(number):
        print(word, count)


def print_summary(counter):
    total = sum(counter.words.values())
    print("files:", counter.files)
    print("words:", total)
    print("distinct:", len(counter.words))


def usage():
    print("usage: word_count.py FILE...")
    sys.exit(1)


def main():
    if len(sys.argv) < 2:
        usage()
    counter = Counter()
    for path in sys.argv[1:]:
        counter.add_file(path)
    print_table(counter, 20)
    print_summary(counter)


main()
