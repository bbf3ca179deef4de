#!/usr/bin/env python3
"""Has clang-tidy look at sources, each by itself and without the precompiled header: what one uses, it has to include.

    lint.py CLANG_TIDY BUILD_FOLDER [--all | --since COMMIT | FILE…]

.clang-tidy has the list of findings that count. It takes seconds for each source, so without an option only those count that have
changed lately: what is not committed, then the last commits, back to as many as LATELY. A header is looked at through a source that
includes it. The build folder must hold a finished build.
"""

import argparse
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

VERSION = "14"
SKIPPED = 77
LATELY = 20
SOURCE = pathlib.Path(__file__).resolve().parents[2]


def git(*arguments):
    return subprocess.run(["git", *arguments], cwd=SOURCE, stdout=subprocess.PIPE, text=True, check=True).stdout


def compile_commands(build):
    """By path within SOURCE, without what makes and uses the precompiled header; clang has warnings of its own, which are no errors."""
    commands = {}
    for command in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        path = pathlib.Path(command["file"])
        if path.is_relative_to(build) or not path.is_relative_to(SOURCE) or not path.exists():
            continue
        words = re.sub(r"-include \S*/cmake_pch\.hxx", "", command["command"])
        command["command"] = shlex.join(word for word in shlex.split(words)
                                        if word not in ("-Winvalid-pch", "-fpch-preprocess", "-Werror"))
        commands[path.relative_to(SOURCE).as_posix()] = command
    return commands


def source_of(path, commands):
    """The source to look at for a changed file: itself, or what is compiled and includes it, its namesake first."""
    if not path.endswith(".h") or not (SOURCE / path).exists():
        return path if path in commands else None
    namesake = path[:-1] + "cpp"
    if namesake in commands:
        return namesake
    line = f'#include "{path.partition("/")[2]}"'
    return next((name for name in commands if line in (SOURCE / name).read_text(encoding="utf-8")), None)


def sources_of(paths, commands, most=None):
    sources = {}
    for path in paths:
        if len(sources) == most:
            break
        if source := source_of(path, commands):
            sources[source] = True
    return list(sources)


def changed(since):
    uncommitted = git("diff", "--name-only", "HEAD") + git("ls-files", "--others", "--exclude-standard")
    if since:
        return (uncommitted + git("diff", "--name-only", f"{since}...HEAD")).split()
    return (uncommitted + git("log", "-200", "--no-merges", "--format=", "--name-only")).split()


def reason_to_skip(arguments):
    if not arguments.program or arguments.program.endswith("-NOTFOUND"):
        return f"clang-tidy {VERSION} is not installed"
    version = subprocess.run([arguments.program, "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
    if not re.search(rf"version {VERSION}\.", version):
        return f"clang-tidy {VERSION} is needed, this is another"
    if arguments.all or arguments.files:
        return None
    if not shutil.which("git"):
        return "there is no git to tell what has changed"
    shallow = subprocess.run(["git", "rev-parse", "--is-shallow-repository"], cwd=SOURCE, capture_output=True, text=True)
    if shallow.stdout.strip() != "false":
        return "there is no history here that tells what has changed"
    return None


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("build", type=lambda name: pathlib.Path(name).resolve())
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--since")
    parser.add_argument("files", nargs="*")
    arguments = parser.parse_args()
    reason = reason_to_skip(arguments)
    if reason:
        print(f"skipped: {reason}")
        return SKIPPED

    commands = compile_commands(arguments.build)
    if not commands:
        sys.exit(f"{arguments.build} compiles nothing of {SOURCE}")
    if arguments.all:
        sources = list(commands)
    elif arguments.files:
        sources = sources_of([os.path.relpath(file, SOURCE) for file in arguments.files], commands)
    else:
        sources = sources_of(changed(arguments.since), commands, None if arguments.since else LATELY)
    failed = 0
    with tempfile.TemporaryDirectory() as database:
        pathlib.Path(database, "compile_commands.json").write_text(json.dumps(list(commands.values())), encoding="utf-8")
        for source in sources:
            run = subprocess.run([arguments.program, "--quiet", "-p", database, SOURCE / source],
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            if run.returncode:
                print(run.stdout or run.stderr, flush=True)
                failed += 1
    print(f"{failed} of {len(sources)} sources are not as they should be")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
