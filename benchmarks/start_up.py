#!/usr/bin/env python3
"""Measures how long the desktop program takes from its start until it answers.

    benchmarks/start_up.py [--program PATH] [--runs N]

The window is shown before the program's event loop runs, so the clock stops when a later start has been heard out: only
the event loop does that. Each run is a process with an empty profile of its own. Measured without a display (the
toolkit's "offscreen" platform) and, where Xvfb is installed, with an X server.
"""

import argparse
import glob
import os
import shutil
import socket
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PATIENCE = 30.0


def heard_out(folder, deadline):
    """Connects to the program's socket below `folder` as a later start does, and waits until it hangs up."""
    while time.monotonic() < deadline:
        for path in glob.glob(os.path.join(folder, "Ostrafen-SingleInstance-*")):
            with socket.socket(socket.AF_UNIX) as client:
                try:
                    client.connect(path)
                    client.sendall(b"velmora\0")
                    client.shutdown(socket.SHUT_WR)
                    client.settimeout(max(deadline - time.monotonic(), 0.001))
                    while client.recv(1):
                        pass
                    return True
                except ConnectionResetError:
                    return True
                except OSError:
                    pass  # not listening yet
        time.sleep(0.001)
    return False


def start_once(program, environment):
    with tempfile.TemporaryDirectory() as home:
        own = dict(environment, HOME=home, TMPDIR=home, USERNAME="benchmark", LANG="C.UTF-8")
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"):
            own[name] = os.path.join(home, name)
            os.mkdir(own[name], 0o700)
        begin = time.monotonic()
        process = subprocess.Popen([program], env=own, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            if not heard_out(home, begin + PATIENCE):
                sys.exit("the program did not answer within %d s" % PATIENCE)
            return time.monotonic() - begin
        finally:
            process.kill()
            process.wait()


def measure(name, program, environment, runs):
    start_once(program, environment)  # reads the program and its libraries into the cache
    times = sorted(start_once(program, environment) for _ in range(runs))
    print("%-10s %4d runs: median %.3f s, fastest %.3f s, slowest %.3f s"
          % (name, runs, statistics.median(times), times[0], times[-1]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=os.path.join(ROOT, "build", "release", "bin", "velmora"))
    parser.add_argument("--runs", type=int, default=10)
    arguments = parser.parse_args()
    if not os.access(arguments.program, os.X_OK):
        sys.exit("there is no program at " + arguments.program)
    measure("offscreen", arguments.program, dict(os.environ, QT_QPA_PLATFORM="offscreen"), arguments.runs)
    if not shutil.which("Xvfb"):
        print("X11        not measured: Xvfb is not installed")
        return
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x900x24"], pass_fds=[write],
                              stderr=subprocess.DEVNULL)
    try:
        display = ":" + os.read(read, 16).decode().strip()
        measure("X11", arguments.program, dict(os.environ, QT_QPA_PLATFORM="xcb", DISPLAY=display), arguments.runs)
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    main()
