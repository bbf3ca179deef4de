"""Starts the project's scripts on a made-up machine that lacks a package, with a sudo that refuses, and configures it plainly.

What gets installed is said before a password is asked for, the line to run as root is told, and a plain build is optimised.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

PROJECT = pathlib.Path(sys.argv[1])
CMAKE = sys.argv[2]


def fake(folder, name, script):
    program = folder / name
    program.write_text("#!/bin/sh\n" + script + "\n")
    program.chmod(0o755)


def install(sudo, apt="exit 0"):
    """What need_packages says for two packages, one of which is missing, and whether it succeeded."""
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        folder.chmod(0o755)
        fake(folder, "dpkg-query", 'case "$3" in *wanted) exit 1;; *) printf installed;; esac')
        fake(folder, "apt-get", apt)
        fake(folder, "apt-cache", "exit 0")
        if sudo:
            fake(folder, "sudo", sudo)
        for name in ("bash", "env", "sh", "mktemp", "cat", "rm", "grep", "awk", "sort", "head", "id"):
            (folder / name).symlink_to(subprocess.check_output(["sh", "-c", "command -v " + name], text=True).strip())
        ordinary = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}
        # Read here: an ordinary user may not get at the project.
        source = (PROJECT / "scripts/setup.sh").read_text()
        done = subprocess.run(
            [folder / "bash", "-c", "set -euo pipefail\n" + source + "\nneed_packages present wanted"],
            env={"PATH": str(folder)}, cwd="/", capture_output=True, text=True, timeout=60, **ordinary)
        return done.stderr, done.returncode == 0


def problems_of_installing():
    root_line = "apt-get install --no-install-recommends wanted"
    said, succeeded = install("echo 'user is not in the sudoers file' >&2; exit 1")
    if succeeded or not 0 <= said.find(": wanted\n") < said.find("not in the sudoers file") < said.find(root_line):
        yield "a sudo that refuses", said
    said, succeeded = install(None)
    if succeeded or root_line not in said:
        yield "no sudo", said
    said, succeeded = install('exec "$@"', 'echo "E: nothing there" >&2; exit 100')
    if succeeded or not 0 <= said.find("E: nothing there") < said.find(root_line):
        yield "an apt-get that fails", said
    said, succeeded = install('exec "$@"', 'echo "pmstatus:wanted:42.1:Unpacking wanted"')
    if not succeeded or " 42 % Unpacking wanted\n" not in said or root_line in said:
        yield "progress", said


def problems_of_configuring():
    for option, with_tests in ([], True), (["-DBUILD_TESTING=OFF"], False):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([CMAKE, "-S", PROJECT, "-B", folder, *option], check=True, capture_output=True, timeout=60)
            if "CMAKE_BUILD_TYPE:STRING=Release\n" not in pathlib.Path(folder, "CMakeCache.txt").read_text():
                yield "a build of no kind named is not optimised", ""
            if pathlib.Path(folder, "tests").exists() != with_tests:
                yield f"with {option} tests are built: {not with_tests}", ""


found = [*problems_of_installing(), *problems_of_configuring()]
for what, said in found:
    print(f"{what}:\n{said}")
sys.exit(1 if found else 0)
