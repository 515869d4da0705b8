#!/usr/bin/env python3
"""Several processes write into one data folder at once, some are killed: each change that a command has reported is in,
any other command has said that another process holds the folder, and readers beside see whole notes.

Usage: writers_test.py LOREBINDER_CLI
LORE_WRITERS and LORE_ROUNDS: how many processes (4), and how often each writes (12)."""
import json
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import threading
import time

CLI = str(pathlib.Path(sys.argv[1]).resolve())
WRITERS = int(os.environ.get("LORE_WRITERS", "4"))
ROUNDS = int(os.environ.get("LORE_ROUNDS", "12"))
HELD = 4
LONGEST_WAIT = 1.0  # seconds until the lock of a killed process is taken over, beside the command itself


class Writers:
    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-writers-"))
        self.data = self.folder / "data"
        self.done, self.held, self.killed = [{} for _ in range(WRITERS)], 0, 0
        self.faults, self.guard = [], threading.Lock()
        text = self.folder / "text.txt"
        text.write_text("A note\n")
        for _ in range(WRITERS):
            assert self.run("add", text).returncode == 0
        self.ids = [note["id"] for note in self.notes()]

    def command(self, *args):
        return [CLI, "--data", str(self.data), *map(str, args)]

    def run(self, *args):
        return subprocess.run(self.command(*args), capture_output=True, text=True, check=False)

    def notes(self):
        return json.loads(self.run("--json", "notes").stdout)

    def write(self, writer):
        """Writes into one note again and again, until each change is in."""
        chance = random.Random(writer)
        for turn in range(ROUNDS):
            words = f"writer {writer} turn {turn}"
            while not self.write_once(writer, words, chance):
                time.sleep(0.002)

    def write_once(self, writer, words, chance):
        process = subprocess.Popen(self.command("edit", self.ids[writer], "--keywords", words), stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, text=True)
        if chance.random() < 0.2:
            time.sleep(chance.random() * 0.05)
            process.kill()
        said = process.communicate()[1]
        with self.guard:
            if process.returncode == 0:
                self.done[writer] = words
                return True
            if process.returncode == HELD and said:
                self.held += 1
            elif process.returncode < 0:
                self.killed += 1
            else:
                self.faults.append(f"status {process.returncode}: {said}")
        return bool(self.faults)

    def read(self, stop):
        while not stop.is_set():
            ids = sorted(note["id"] for note in self.notes())
            if ids != sorted(self.ids):
                self.faults.append(f"a reader saw the notes {ids}")

    def work(self):
        stop = threading.Event()
        reader = threading.Thread(target=self.read, args=(stop,))
        writers = [threading.Thread(target=self.write, args=(writer,)) for writer in range(WRITERS)]
        for thread in [reader, *writers]:
            thread.start()
        for thread in writers:
            thread.join()
        stop.set()
        reader.join()
        assert not self.faults, self.faults
        self.check_what_was_done()
        self.check_a_killed_lock()

    def check_what_was_done(self):
        shown = {note["id"]: note["keyWords"] for note in self.notes()}
        for writer, words in enumerate(self.done):
            assert shown[self.ids[writer]] == words, (shown, self.done)
        assert self.run("check").returncode == 0, self.run("check").stdout

    def check_a_killed_lock(self):
        start = time.monotonic()
        assert self.run("edit", self.ids[0], "--keywords", "alone").returncode == 0
        usual = time.monotonic() - start
        process = subprocess.Popen(self.command("edit", self.ids[0], "--keywords", "killed"))
        time.sleep(usual / 2)
        process.kill()
        process.wait()
        start = time.monotonic()
        assert self.run("edit", self.ids[0], "--keywords", "behind").returncode == 0
        assert time.monotonic() - start < 4 * usual + LONGEST_WAIT


def main():
    writers = Writers()
    try:
        writers.work()
        print(f"{WRITERS * ROUNDS} changes by {WRITERS} processes are in; {writers.held} times another held the folder, "
              f"{writers.killed} were killed", file=sys.stderr)
    finally:
        shutil.rmtree(writers.folder, ignore_errors=True)


if __name__ == "__main__":
    main()
