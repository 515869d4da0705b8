#!/usr/bin/env python3
"""Commands that read and commands that write, with one allocation failing, and with all from one on.

Whatever happens, it ends: with a message and status 3, or with a crash, or as if nothing had failed, and then what it
has printed or written is right. The data folder shows each note as it was or as it would have become.

Usage: memory_test.py MEMORY_SHIM LOREBINDER_CLI EDIT_RUN COMMAND_RUN
LORE_STEP: every how many allocations one fails, up to the 20,000th (none: a spread of a few for each command);
LORE_SEED: another spread; LORE_FLOWS: names of commands, between commas."""
import os
import pathlib
import random
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from book_world import Programs, World, digest, tree

SHIM = str(pathlib.Path(sys.argv[1]).resolve())
STEP = int(os.environ.get("LORE_STEP", "0"))
SEED = int(os.environ.get("LORE_SEED", "20261125"))
SPREAD, LAST = 2, 20000
LONGEST = 20  # seconds; a command takes a small part of one
TOLD = 3


class Memory:
    def __init__(self):
        self.programs = Programs(sys.argv[2:5])
        self.world = World(self.programs)
        self.random = random.Random(SEED)
        self.base = digest(tree(self.world.base))
        self.data, self.files = self.world.copy(), None
        self.runs = self.told = self.crashed = self.unharmed = self.longest = 0
        self.faults = []

    def readers(self):
        id, notes = self.world.ids[0], self.world.base / "Data Files/Databases/_LBMAIN_/Notes"
        file = min(notes.iterdir())
        every = {"notebooks": ["notebooks"], "notes": ["notes"], "note": ["note", id], "search": ["search", "note & old"],
                 "sources": ["sources"], "citations": ["cite"], "categories": ["categories"], "key words": ["keywords"],
                 "events of a month": ["events", "--from", "2049-01-01", "--to", "2049-01-31"], "findings": ["check"],
                 "record file": ["dump", file], "comparison": ["import", "--status", self.world.folder / "all.lbe"]}
        chosen = os.environ.get("LORE_FLOWS")
        return {name: ["--json", *args] for name, args in every.items() if not chosen or name in chosen.split(",")}

    def run(self, args, **env):
        """The result of a command on a fresh folder, and what the folder holds after it."""
        if self.files is not None and digest(self.files) != self.base:
            self.data = self.world.copy()
        full = dict(os.environ, LD_PRELOAD=SHIM, **{key: str(value) for key, value in env.items()})
        start = time.monotonic()
        result = subprocess.run(self.programs.command(self.data, *args), env=full, capture_output=True, timeout=LONGEST,
                                check=False)
        self.longest = max(self.longest, time.monotonic() - start)
        self.files = tree(self.data)
        return result

    def numbers(self, count):
        if STEP:
            return range(1, min(count, LAST) + 1, STEP)
        parts = [count * part // SPREAD for part in range(SPREAD + 1)]
        return [self.random.randint(first + 1, last) for first, last in zip(parts, parts[1:])]

    def walk(self, name, args, judge):
        """Every case of one command: each is judged, and what it ends with counted."""
        counted = self.world.folder / "count"
        good = self.run(args, LORE_MEMORY_COUNT=counted)
        judge = judge(good)
        for number in self.numbers(int(counted.read_text())):
            for lasting in ({}, {"LORE_MEMORY_LASTING": 1}):
                where = f"seed {SEED}, {name}, allocation {number}{', lasting' if lasting else ''}"
                try:
                    result = self.run(args, LORE_MEMORY_AT=number, **lasting)
                except subprocess.TimeoutExpired:
                    self.faults.append(f"{where}: it doesn't end")
                    self.files = {}
                    continue
                self.count(result, where, good, judge)

    def count(self, result, where, good, judge):
        self.runs += 1
        self.told += result.returncode == TOLD
        self.crashed += result.returncode < 0
        self.unharmed += result.returncode == good.returncode
        wrong = judge(result)
        if result.returncode == TOLD and not result.stderr:
            wrong = "it ends with status 3 and no word"
        elif result.returncode not in (TOLD, good.returncode) and result.returncode >= 0:
            wrong = "it ends with a status that says something else"
        if wrong:
            self.faults.append(f"{where}: status {result.returncode}, {result.stderr[-300:]}: {wrong}")

    def judge_reader(self, good):
        def judge(result):
            if digest(self.files) != self.base:
                return "a reading command has changed the folder"
            wrong = result.returncode == good.returncode and result.stdout != good.stdout
            return f"it prints {result.stdout[:300]} without a word" if wrong else ""
        return judge

    def judge_writer(self, _):
        old, new = self.world.look(self.world.base)[0], self.world.look(self.data, self.files)[0]

        def judge(result):
            wanted = new if result.returncode == 0 else old
            return self.world.problem(self.data, wanted, new, result.returncode == TOLD, self.files)
        return judge

    def check_itself(self):
        """A command that hasn't done what it says, a folder that lost a note and a printed part are found."""
        judge = self.judge_writer(self.run(self.world.every_flow()["edit"]))
        done = subprocess.CompletedProcess([], 0, b"", b"")
        self.data, self.files = self.world.copy(), None
        self.files = tree(self.data)
        assert judge(done), "an edit that never was"
        notes = self.data / "Data Files/Databases/_LBMAIN_/Notes"
        file = max(notes.iterdir(), key=lambda one: one.stat().st_size)
        file.write_bytes(file.read_bytes()[:-200])
        self.files = tree(self.data)
        assert judge(subprocess.CompletedProcess([], -6, b"", b"")), "a cut file"
        reader = self.judge_reader(subprocess.CompletedProcess([], 0, b"[1, 2]", b""))
        assert reader(done), "a changed folder"
        self.data = self.world.copy()
        self.files = tree(self.data)
        assert reader(done), "an empty answer"

    def work(self):
        self.check_itself()
        for name, args in self.readers().items():
            self.walk(name, args, self.judge_reader)
        for name, args in self.world.flows().items():
            self.walk(name, args, self.judge_writer)
        print(f"{self.runs} commands with failing allocations: {self.told} told, {self.crashed} crashed, {self.unharmed} "
              f"ended as always, the longest took {self.longest:.1f} s; seed {SEED}", file=sys.stderr)
        assert not self.faults, f"{len(self.faults)} faults:\n" + "\n".join(self.faults[:40])
        assert self.told


def main():
    memory = Memory()
    try:
        memory.work()
    finally:
        memory.world.close()
        memory.programs.close()


if __name__ == "__main__":
    main()
