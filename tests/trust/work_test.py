#!/usr/bin/env python3
"""Random real work on three NoteBooks beside a plain model of what they must hold, with kills and failing writes in
between: what a command has reported as done is there, and what was cut off is as it was or as it would have become.

Usage: work_test.py LOREBINDER_CLI FAULT_SHIM
LORE_STEPS: how many commands (120 of them in a test run), LORE_SEED: another row of them."""
import errno
import os
import pathlib
import random
import shutil
import signal
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from book_world import CommandLine, faults

CLI, SHIM = CommandLine(sys.argv[1]), str(pathlib.Path(sys.argv[2]).resolve())
STEPS = int(os.environ.get("LORE_STEPS", "120"))
SEED = int(os.environ.get("LORE_SEED", "20260607"))
BOOKS = ("LorebinderMain", "Second Book", "Third Book")
HARMLESS = {"note-twice", "note-in-wrong-file", "attachment-unused"}
FAULTS = ("KILL", "KILL", errno.ENOSPC, errno.EIO, errno.EDQUOT, errno.EROFS)


class Work:
    def __init__(self):
        self.random = random.Random(SEED)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-work-"))
        self.data = self.folder / "data"
        self.serial = self.done = self.cut = self.failed = 0
        self.archive = self.packed = {}  # what the last export holds, and the one that is made
        self.run("add", self.text("The first note"), "--keywords", self.token())
        for name in BOOKS[1:]:
            self.run("notebook", "create", name)
        self.model = self.state()

    # The program.

    def run(self, *args, **env):
        return CLI.run(self.data, *args, **env)

    def answer(self, *args):
        return CLI.answer(self.data, *args)

    def state(self):
        """(NoteBook, name of the note) -> text, key words, category and attachments; and the events."""
        now, self.twins = {}, set()
        for book in self.answer("notebooks"):
            folder = self.data / "Data Files/Databases" / book["folder"]
            files = {}
            for line in self.answer("--notebook", book["guid"], "notes"):
                if line["file"] not in files:
                    records = self.answer("dump", folder / "Notes" / line["file"])["records"]
                    files[line["file"]] = {record["id"]: record for record in records}
                note = files[line["file"]][line["id"]]
                attached = sorted(self.content(folder, one["storedFile"]) for one in note["attachments"])
                name = note["keyWords"].split(", ")[0]
                if (book["name"], name) in now:
                    self.twins.add((book["name"], name))
                now[book["name"], name] = (note["plainText"].strip(), note["keyWords"], line["categories"][0], attached)
        for event in self.answer("events"):
            now["event", event["Label"], event["Start"]] = ()
        return now

    @staticmethod
    def content(folder, name):
        file = folder / "Attachments" / name
        return file.read_text() if file.is_file() else "missing"

    # Material.

    def token(self):
        self.serial += 1
        return f"note{self.serial}"

    def text(self, words):
        file = self.folder / "text.txt"
        file.write_text(words)
        return file

    def any_note(self, book):
        ids = [(note["id"], note["keyWords"].split(", ")[0]) for note in self.answer("--notebook", book, "notes")]
        return self.random.choice(ids) if ids else (None, None)

    # Work: each gives the command and what it makes of the model.

    def add(self, book, new):
        name, words, path = self.token(), f"Text {self.random.random()}", self.random.choice(["Sea/Coast", "Sky", "Land/Hill/Top"])
        new[book, name] = (words, name + ", fresh", path.split("/"), [])
        return ["add", self.text(words), "--keywords", name + ", fresh", "--category", 1, path]

    def edit(self, book, new):
        number, name = self.any_note(book)
        if number is None:
            return self.add(book, new)
        words, keys = f"Changed {self.random.random()}", f"{name}, word {self.random.randrange(9)}"
        path = self.random.choice(["Sea/Deep", "Sky", "Land/Valley"])
        new[book, name] = (words, keys, path.split("/"), new[book, name][3])
        return ["edit", number, "--rtf", self.rtf(words), "--keywords", keys, "--category", 1, path]

    def rtf(self, words):
        file = self.folder / "text.rtf"
        file.write_text("{\\rtf1\\ansi " + words + "\\par}")
        return file

    def attach(self, book, new):
        number, name = self.any_note(book)
        if number is None:
            return self.add(book, new)
        words, keys, path, attached = new[book, name]
        content = f"attached {self.random.random()}"
        new[book, name] = (words, keys, path, sorted([*attached, content]))
        return ["edit", number, "--attach", self.text(content)]

    def delete(self, book, new):
        number, name = self.any_note(book)
        if number is None:
            return self.add(book, new)
        del new[book, name]
        return ["delete", number]

    def copy(self, book, new):
        number, name = self.any_note(book)
        target = self.random.choice([other for other in BOOKS if other != book])
        if number is None:
            return self.add(book, new)
        new[target, name] = new[book, name]
        return ["copy", "--to", target, number]

    def export(self, book, new):
        packed = {key[1]: note for key, note in self.model.items() if key[0] == book}
        if not packed:
            return self.add(book, new)
        self.packed = packed
        return ["export", "--out", self.folder / "notes.lbe"]

    def take(self, book, new):
        if not self.archive:
            return self.export(book, new)
        for name, note in self.archive.items():
            new.setdefault((book, name), note)
        return ["import", self.folder / "notes.lbe", "--take", "new"]

    def series(self, _, new):
        label, day = f"Class {self.token()}", self.random.randint(10, 20)
        for step in range(3):
            new["event", label, f"2049-01-{day + step}T09:00:00"] = ()
        return ["event", "add", "--label", label, "--start", f"2049-01-{day}T09:00", "--end", f"2049-01-{day}T10:00",
                "--repeat", "daily", "--until", f"2049-01-{day + 2}", "--popup", 10]

    def end_series(self, book, new):
        events = self.answer("events")
        if not events:
            return self.series(book, new)
        event = self.random.choice(events)
        for key in [key for key in new if key[:2] == ("event", event["Label"])]:
            del new[key]
        return ["event", "delete", event["EventId"], "--all"]

    def switch(self, book, _):
        return ["notebook", "switch", book]

    def backup(self, _book, _new):
        return ["backup", "--out", self.folder / "backup.lbe", "--all"]

    # One step.

    def step(self):
        work = self.random.choice([self.add, self.add, self.add, self.edit, self.edit, self.attach, self.delete, self.copy,
                                   self.export, self.take, self.series, self.end_series, self.switch, self.backup])
        book, new = self.random.choice(BOOKS), dict(self.model)
        args = ["--notebook", book, *work(book, new)]
        env = {}
        if self.random.random() < 0.6:
            env = faults(SHIM, self.data, self.random.randint(1, 25), self.random.choice(FAULTS), self.random.choice([0, 1]))
        result = self.run(*args, **env)
        where = f"seed {SEED}, {args}, {env}: {result.returncode} {result.stderr}"
        now = self.state()
        if "export" in args:
            # One that was cut off has left the archive of before or its own: nobody knows.
            self.archive = self.packed if result.returncode == 0 else {}
        if self.twins:
            # A copy that was cut off may leave the note that it replaces beside it; the next try takes that one out.
            assert env and work == self.copy, f"{self.twins} stand twice: {where}"
            result, now = self.run(*args), self.state()
            assert not self.twins and result.returncode == 0, f"{self.twins}: {where}"
        # An import that finds nothing new says so.
        if result.returncode == 0 or result.returncode == 1 and "import" in args:
            self.done += 1
            assert not self.differences(now, new), f"{where}\n{self.differences(now, new)}"
        else:
            assert env, where
            assert result.returncode in (3, -signal.SIGKILL), where
            self.cut += result.returncode < 0
            self.failed += result.returncode == 3
            assert result.returncode < 0 or result.stderr, "a failure that isn't told: " + where
            for key in {*self.model, *new, *now}:
                wanted = self.model.get(key), new.get(key)
                # A file that could not be attached costs the note nothing else; the command has said so.
                told = result.returncode == 3 and key in now and now[key][:-1] in [one and one[:-1] for one in wanted]
                assert told or any(self.is_same(now.get(key), one) for one in wanted), \
                    f"{where}\n{key}: {now.get(key)} is none of {wanted}"
        self.model = now

    @staticmethod
    def is_same(now, wanted):
        """A file that could not be attached is tried again by the next save, with what it holds by then."""
        if now and wanted and "missing" in wanted[-1]:
            return now[:-1] == wanted[:-1] and len(now[-1]) == len(wanted[-1])
        return now == wanted

    def differences(self, now, new):
        return "\n".join(f"{key}: {now.get(key)} instead of {new.get(key)}" for key in {*now, *new}
                         if not self.is_same(now.get(key), new.get(key)))

    def finish(self):
        kinds = {finding["kind"] for finding in self.answer("check")}
        assert kinds <= HARMLESS | {"attachment-missing"}, kinds
        self.run("check", "--repair")
        repaired = self.state()
        assert not self.differences(repaired, self.model), self.differences(repaired, self.model)
        print(f"{self.done} done, {self.cut} killed, {self.failed} failed; seed {SEED}, "
              f"{len(self.model)} notes and events at the end", file=sys.stderr)
        assert self.done and self.cut and self.failed


def main():
    work = Work()
    try:
        for _ in range(STEPS):
            work.step()
        work.finish()
    finally:
        shutil.rmtree(work.folder, ignore_errors=True)


if __name__ == "__main__":
    main()
