#!/usr/bin/env python3
"""Several processes write into one data folder at once, some are killed: each change that a command has reported is in,
any other command has said that another process holds the folder, and readers beside see each note as one command has
written it, and never an older one again. The lock of a killed process is free at once.

Usage: writers_test.py LOREBINDER_CLI
LORE_WRITERS and LORE_ROUNDS: how many processes (4), and how often each writes (12). LORE_SEED: other kills."""
import fcntl
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

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from book_world import CommandLine

CLI = CommandLine(sys.argv[1])
WRITERS = int(os.environ.get("LORE_WRITERS", "4"))
ROUNDS = int(os.environ.get("LORE_ROUNDS", "12"))
HELD = 4
LONGEST_WAIT = 1.0  # seconds until the lock of a killed process is taken over
LOCK_KILLS = 10
SEED = int(os.environ.get("LORE_SEED", "20261125"))


class Writers:
    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-writers-"))
        self.data = self.folder / "data"
        self.done, self.held, self.killed, self.reads = [{} for _ in range(WRITERS)], 0, 0, 0
        self.faults, self.guard = [], threading.Lock()
        for writer in range(WRITERS):
            words = self.words(writer, -1)
            assert self.run("add", self.text(writer, words), "--keywords", words).returncode == 0
        self.ids = [note["id"] for note in self.notes()]

    @staticmethod
    def words(writer, turn):
        return f"writer {writer} turn {turn}"

    def text(self, writer, words):
        file = self.folder / f"text{writer}.txt"
        file.write_text(words + "\n" + "and more of it\n" * 200)
        return file

    def command(self, *args):
        return CLI.command(self.data, *args)

    def run(self, *args):
        return CLI.run(self.data, *args)

    def notes(self):
        return CLI.answer(self.data, "notes")

    def write(self, writer):
        """Writes into one note again and again, until each change is in."""
        chance = random.Random(f"{SEED} {writer}")
        for turn in range(ROUNDS):
            words = self.words(writer, turn)
            self.text(writer, words)
            while not self.write_once(writer, words, chance):
                time.sleep(0.002)

    def write_once(self, writer, words, chance):
        process = subprocess.Popen(self.command("edit", self.ids[writer], "--keywords", words, "--rtf",
                                                self.folder / f"text{writer}.txt"), stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
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
        latest = {id: -1 for id in self.ids}
        notes = self.data / "Data Files/Databases/_LBMAIN_/Notes"
        while not stop.is_set() and not self.faults:
            for file in notes.glob("*.dat"):
                result = self.run("--json", "dump", file)
                records = json.loads(result.stdout)["records"] if result.returncode == 0 else []
                self.faults += self.wrong_in(records, latest)
                self.reads += 1

    def wrong_in(self, records, latest):
        """What no command has written: notes that are missing, words that aren't those of the text, older ones."""
        if sorted(note["id"] for note in records) != sorted(self.ids):
            return [f"a reader saw the notes {[note['id'] for note in records]}"]
        wrong = []
        for note in records:
            turn = int(note["keyWords"].split()[-1])
            if not note["plainText"].startswith(note["keyWords"] + "\r\n") or note["plainText"].count("more") != 200:
                wrong.append(f"a reader saw {note['keyWords']} with {note['plainText'][:40]!r}")
            if turn < latest[note["id"]]:
                wrong.append(f"a reader saw turn {turn} after {latest[note['id']]}")
            latest[note["id"]] = turn
        return wrong

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
        longest, kills = 0, 0
        with (self.data / "lorebinder.lock").open() as lock:
            while kills < LOCK_KILLS:
                process = subprocess.Popen(self.command("edit", self.ids[0], "--keywords", "killed"))
                while process.poll() is None and self.is_free(lock):
                    pass
                process.kill()
                kills += process.wait() < 0
                start = time.monotonic()
                while not self.is_free(lock):
                    assert time.monotonic() - start < 10 * LONGEST_WAIT, "the lock outlives its process"
                longest = max(longest, time.monotonic() - start)
                assert self.run("edit", self.ids[0], "--keywords", "behind").returncode == 0
        assert longest <= LONGEST_WAIT, longest
        self.longest = longest

    @staticmethod
    def is_free(lock):
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            return False
        fcntl.flock(lock, fcntl.LOCK_UN)
        return True

    def check_itself(self):
        """A mixed note, an older one and a missing one are found."""
        good = [{"id": id, "keyWords": self.words(0, 3), "plainText": self.words(0, 3) + "\r\n" + "more" * 200}
                for id in self.ids]
        latest = {id: 0 for id in self.ids}
        assert not self.wrong_in(good, latest)
        assert self.wrong_in([good[0] | {"keyWords": self.words(0, 4)}, *good[1:]], dict(latest)), "a mixture"
        assert self.wrong_in(good, {id: 5 for id in self.ids}), "an older one"
        assert self.wrong_in(good[1:], latest), "a missing one"


def main():
    writers = Writers()
    try:
        writers.check_itself()
        writers.work()
        print(f"{WRITERS * ROUNDS} changes by {WRITERS} processes are in; {writers.held} times another held the folder, "
              f"{writers.killed} were killed, {writers.reads} reads beside; the lock of a killed one was free after "
              f"{writers.longest * 1000:.0f} ms at most; seed {SEED}", file=sys.stderr)
        assert writers.reads
    finally:
        shutil.rmtree(writers.folder, ignore_errors=True)


if __name__ == "__main__":
    main()
