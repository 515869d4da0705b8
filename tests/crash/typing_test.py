#!/usr/bin/env python3
"""An editor window that is killed at any moment while somebody types and saves.

The next start offers, or the NoteBook holds, every word that was typed up to 5 seconds before the kill.

Usage: typing_test.py UI_TYPING_RUN [RUNS]; the environment may give LORE_SEED."""
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
RUNS = int(sys.argv[2]) if len(sys.argv) > 2 else 4
SEED = int(os.environ.get("LORE_SEED", time.time_ns() % 1000000))
BEHIND = 5.0  # seconds
SPARE = 0.5  # for a draft to reach the disk on a busy machine
LONGEST = 16.0


def program(mode, folder, **options):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", HOME=str(folder),
                       QT_LOGGING_RULES="qt.qpa.*=false")
    return subprocess.Popen([PROGRAM, mode, folder / "data"], env=environment, stdout=subprocess.PIPE,
                            encoding="utf-8", **options)


def words_of(line):
    """How many words stand in a text without a gap, from the first one on."""
    words = set(line.split())
    count = 0
    while f"w{count + 1}" in words:
        count += 1
    return count


def one_run(folder, seconds):
    writer = program("write", folder)
    first = writer.stdout.readline()  # the window stands
    assert first, "the editor did not open"
    time.sleep(seconds)
    writer.send_signal(signal.SIGKILL)
    killed = time.monotonic()
    typed = [tuple(map(int, line.split())) for line in [first, *writer.stdout] if line.endswith("\n")]
    writer.wait()
    due = max((number for number, at in typed if at / 1000 < killed - BEHIND - SPARE), default=0)
    reader = program("read", folder)
    texts = reader.stdout.read().splitlines()
    assert reader.wait() == 0, "the next start met a fault"
    kept = max(map(words_of, texts), default=0)
    return due, kept, typed[-1][0]


def main():
    print(f"seed {SEED}")
    generator = random.Random(SEED)
    bad = checked = 0
    for run in range(RUNS):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-typing-"))
        (folder / "data").mkdir()
        try:
            seconds = generator.uniform(0.2, LONGEST) if run else LONGEST
            due, kept, typed = one_run(folder, seconds)
        finally:
            shutil.rmtree(folder, ignore_errors=True)
        checked += due > 0
        if kept < due:
            bad += 1
        print(f"killed after {seconds:5.2f} s: {typed} words typed, {due} due, {kept} kept"
              f"{'  LOST' if kept < due else ''}", flush=True)
    assert checked, "no run was long enough to say anything"
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
