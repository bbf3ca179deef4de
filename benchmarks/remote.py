#!/usr/bin/env python3
"""Measures comparisons with a folder of a host by contents, by velmora-cli beside rsync over the same ssh.

    remote.py [--program FILE] [--files N] [--runs N]

Starts an sshd of its own on the loopback address, with keys of its own, over two equal trees of N small files (5,000 by default) in a
temporary folder; the times of half of them differ. The runs of both take turns, so that load on the machine hits both; the best of each
counts. Needs sshd, ssh-keygen and rsync. Aim: 2.5.
"""

import argparse
import contextlib
import getpass
import os
import pathlib
import random
import shutil
import socket
import subprocess
import sys
import tempfile
import time

from archive import take_turns
from text import PROGRAM


def make_tree(root, count):
    source = random.Random(9)
    for i in range(count):
        folder = root / f"d{i % 53}" / f"s{i % 7}"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"f{i}.c").write_bytes(source.randbytes(source.randint(20, 9000)))


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


@contextlib.contextmanager
def host(place):
    """An sshd; gives its port and a folder with an ssh that knows it."""
    sshd = shutil.which("sshd", path=os.environ["PATH"] + ":/usr/sbin:/sbin")
    for key in ("host_key", "user_key"):
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", place / key], check=True)
    port = free_port()
    (place / "sshd_config").write_text(
        f"Port {port}\nListenAddress 127.0.0.1\nHostKey {place}/host_key\nPidFile none\nAuthorizedKeysFile {place}/user_key.pub\n"
        "StrictModes no\nUsePAM no\nPasswordAuthentication no\nKbdInteractiveAuthentication no\n"
    )
    words = (place / "host_key.pub").read_text().split()
    (place / "known").write_text(f"[127.0.0.1]:{port} {words[0]} {words[1]}\n")
    (place / "config").write_text(
        f"IdentityFile {place}/user_key\nIdentitiesOnly yes\nIdentityAgent none\nUserKnownHostsFile {place}/known\n"
    )
    client = place / "bin" / "ssh"
    client.parent.mkdir()
    client.write_text(f'#!/bin/sh\nexec {shutil.which("ssh")} -F {place}/config "$@"\n')
    client.chmod(0o700)
    with contextlib.suppress(FileExistsError, PermissionError):
        os.mkdir("/run/sshd")
    server = subprocess.Popen([sshd, "-D", "-e", "-f", place / "sshd_config"], stderr=subprocess.DEVNULL)
    time.sleep(1)
    try:
        yield port, client.parent
    finally:
        server.terminate()
        server.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=str(PROGRAM), metavar="FILE")
    parser.add_argument("--files", type=int, default=5000, metavar="N")
    parser.add_argument("--runs", type=int, default=5, metavar="N")
    options = parser.parse_args()
    for tool in ("ssh", "ssh-keygen", "rsync"):
        if not shutil.which(tool):
            sys.exit(f"{tool} is missing")
    with tempfile.TemporaryDirectory() as folder:
        place = pathlib.Path(folder)
        make_tree(place / "left", options.files)
        subprocess.run(["cp", "-a", place / "left", place / "right"], check=True)
        for changed in list((place / "right").rglob("*.c"))[::2]:
            os.utime(changed, (10**9, 10**9))
        with host(place) as (port, programs):
            environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}

            def run(command, says=""):
                start = time.perf_counter()
                done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
                taken = time.perf_counter() - start
                if done.returncode != 0 or says not in done.stdout or done.stderr:
                    sys.exit(f"{command[0]}: {done.stdout[:200]}{done.stderr[:400]}")
                return taken

            user = getpass.getuser()
            address = f"sftp://{user}@127.0.0.1:{port}{place}/right"
            own = [options.program, "folder", "--read", address, str(place / "left")]
            rival = ["rsync", "-rcn", "-e", f"ssh -p {port}", f"{user}@127.0.0.1:{place}/right/", f"{place}/left/"]
            best, other = take_turns(lambda: run(own, "Different: 0 "), lambda: run(rival), options.runs)
            print("| files | velmora-cli folder --read | rsync -rcn | ratio | aim |\n|---|---|---|---|---|")
            print(f"| {options.files:,} | {best:.2f} s | {other:.2f} s | {best / other:.2f} | 2.5 |")


if __name__ == "__main__":
    main()
