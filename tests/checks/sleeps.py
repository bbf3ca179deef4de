#!/usr/bin/env python3
"""Checks that no test waits by the clock: a test waits for what it expects (QTRY_…, QSignalSpy::wait, a semaphore).

A stand-in for something slow may sleep; its line says so by the comment "waits for nothing".

    sleeps.py TEST_FOLDER
"""

import pathlib
import re
import sys

SLEEP = re.compile(r"\b(qSleep|QThread::[mu]?sleep|sleep_for|sleep_until|usleep|qWait\s*\(\s*(?!0\s*\)))")


def main():
    tests = pathlib.Path(sys.argv[1])
    files = [file for file in sorted(tests.rglob("*")) if file.suffix in (".h", ".cpp")]
    if not files:
        sys.exit(f"no tests in {tests}")
    found = 0
    for file in files:
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            code, _, comment = line.partition("//")
            if SLEEP.search(code) and "waits for nothing" not in comment:
                print(f"{file.relative_to(tests)}:{number}: {line.strip()}")
                found += 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
