#!/usr/bin/env python3
"""Measures `velmora-cli git` beside `git diff --raw -M` on two releases of a made repository.

    git.py VELMORA_CLI [FILES] [ROUNDS]

The runs are interleaved, so that what else the machine does hits both alike, and the best of each counts. The second release
changes one file in ten, moves one in two hundred (half of them with changes), adds one in two hundred and deletes one in two
hundred, so that Git looks for renames in full. Both tell of the same number of files.
"""

import pathlib
import random
import subprocess
import sys
import tempfile
import time


def content(seed, lines=40):
    source = random.Random(seed)
    return "".join(f"{source.getrandbits(64):016x} line {seed} {i}\n" for i in range(lines)).encode()


def path_of(number):
    return f"part{number % 40:02}/module{number // 40 % 60:02}/source_{number:06}.c"


def releases(files):
    """The files of both releases: path -> seeds of the content, of which the second is appended."""
    first = {path_of(n): (n, 0) for n in range(files)}
    second = dict(first)
    for number in range(files):
        path = path_of(number)
        if number % 10 == 0:
            second[path] = (number, number + 1)
        elif number % 200 == 1:
            second[path.replace("source_", "moved_")] = (number, number + 1 if number % 400 == 1 else 0)
            del second[path]
        elif number % 200 == 2:
            del second[path]
        elif number % 200 == 3:
            second[path.replace("source_", "new_")] = (files + number, 0)
    return first, second


def write_commit(stream, mark, files, parent):
    stream.write(f"commit refs/heads/main\nmark :{mark}\ncommitter A <a@b.c> {1700000000 + mark} +0000\n".encode())
    stream.write(b"data 1\nx\n" + (f"from :{parent}\n".encode() if parent else b"") + b"deleteall\n")
    for path, (seed, more) in files.items():
        data = content(seed) + (content(more, 3) if more else b"")
        stream.write(f"M 100644 inline {path}\ndata {len(data)}\n".encode() + data + b"\n")


def make_repository(folder, files):
    subprocess.run(["git", "init", "-q", "-b", "main", folder], check=True)
    importer = subprocess.Popen(["git", "-C", folder, "fast-import", "--quiet"], stdin=subprocess.PIPE)
    first, second = releases(files)
    write_commit(importer.stdin, 1, first, None)
    write_commit(importer.stdin, 2, second, 1)
    importer.stdin.close()
    if importer.wait() != 0:
        sys.exit("git fast-import failed")


def timed(command):
    start = time.perf_counter()
    output = subprocess.run(command, stdout=subprocess.PIPE, check=False).stdout
    return time.perf_counter() - start, output.count(b"\n")


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    files = int(sys.argv[2]) if len(sys.argv) > 2 else 70000
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 9
    with tempfile.TemporaryDirectory() as folder:
        make_repository(folder, files)
        commands = {
            "git diff --raw -M": ["git", "-C", folder, "diff", "--raw", "-M", "HEAD~1", "HEAD"],
            "velmora-cli git": [program, "git", folder, "HEAD~1", "HEAD", "--format", "list"],
        }
        best = {}
        for _ in range(rounds):
            for name, command in commands.items():
                seconds, lines = timed(command)
                best[name] = min(best.get(name, (seconds, lines)), (seconds, lines))
        for name, (seconds, lines) in best.items():
            print(f"{name:20} {seconds:.3f} s, {lines} files")
        print(f"ratio {best['velmora-cli git'][0] / best['git diff --raw -M'][0]:.2f} (aim 1.3)")


if __name__ == "__main__":
    main()
