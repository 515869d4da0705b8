#!/usr/bin/env python3
"""Every writing command, killed before each change of a file, and with each change failing.

After a kill the data folder shows each note as it was or as it would have become, and nothing that a note names is
missing. After a failure the same holds, the command has told the failure, and the same command then works.

Usage: crash_test.py LOREBINDER_CLI FAULT_SHIM EDIT_RUN [unittest arguments]"""
import errno
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
import zipfile

CLI, SHIM, EDIT_RUN = (str(pathlib.Path(argument).resolve()) for argument in sys.argv[1:4])
# Before the name of a step that only a dialog offers.
DIALOG = "dialog"
OK_FINDINGS = {"note-twice", "note-in-wrong-file", "attachment-unused"}
TOLD_FINDINGS = OK_FINDINGS | {"attachment-missing"}
BACKUP = "book.lbe"
# Beyond this many changes a command isn't one that a person waits for.
MOST_POINTS = 400


def run(data, *args, **env):
    full = dict(os.environ, **{key: str(value) for key, value in env.items()})
    program = [EDIT_RUN, str(data), *args[1:]] if args[0] == DIALOG else [CLI, "--data", str(data), *map(str, args)]
    return subprocess.run(program, env=full, capture_output=True, text=True,
                          errors="replace", check=False)


def answer(data, *args):
    result = run(data, "--json", *args)
    if not result.stdout:
        raise AssertionError(f"{args}: {result.stderr}")
    return json.loads(result.stdout)


def state(data):
    """What each note of each NoteBook holds, without what differs from run to run."""
    notes = {}
    for book in answer(data, "notebooks"):
        sources = {one["SourceGUID"]: one for one in answer(data, "--notebook", book["guid"], "sources")}
        notes |= {("source", book["name"], one["SourceID"]): [one["FieldTexts"][0], one["SourceType"]]
                  for one in sources.values()}
        for line in answer(data, "--notebook", book["guid"], "notes"):
            note = answer(data, "--notebook", book["guid"], "note", line["id"])
            attachments = [(one["title"], one["type"], content(data, book, one)) for one in note["attachments"]]
            key = book["name"], note["guid"] if note["guid"] in ORIGINAL else note["plainText"][:60]
            # What a note alone knows of its sources; what it knows of one that isn't there shows nowhere.
            remarks = [(sources[guid]["SourceID"], text) for guid, text in note["sourceInfo"] if guid in sources]
            notes[key] = (note["plainText"], remarks, note["keyWords"], len(note["sources"]), note["categories"],
                          note["borderColor"], attachments)
    return notes | calendar(data)


def calendar(data):
    """The events, and the reminders: each alone, for the two files change one after the other."""
    events = {("event", one["Start"], one["End"], one["Label"]): one["RecurrenceEnd"] for one in answer(data, "events")}
    return events | {("reminder", one["SendTime"], one["EventLabel"]): True for one in answer(data, "reminders")}


def content(data, book, attachment):
    if attachment["type"] == 12:
        return attachment["sourceFile"]
    file = data / "Data Files" / "Databases" / book["folder"] / "Attachments" / attachment["storedFile"]
    return hash(file.read_bytes()) if file.is_file() else "missing"


def without_contents(notes):
    return {key: (*note[:-1], [one[:2] for one in note[-1]]) if isinstance(note, tuple) else note
            for key, note in notes.items()}


ORIGINAL = set()


class World:
    """A small NoteBook, a second one, and files to add."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-crash-"))
        self.base = self.folder / "base"
        (self.folder / "one.txt").write_text("The first new note\n")
        (self.folder / "two.html").write_text("<p>The <b>second</b> new note</p>")
        (self.folder / "three.txt").write_text("Another text\n")
        self.must("add", *[self.text(i) for i in range(6)], "--keywords", "lamp, lens", "--category", "1", "Sea/Coast")
        sources = {"authors": [{"AuthorID": 1, "first": "Ada", "last": "Lamp"}],
                   "sources": [{"SourceID": 1, "AuthorIDs": [1], "FieldTexts": ["A Book"]},
                               {"SourceID": 2, "FieldTexts": ["Another Book"]}]}
        (self.folder / "sources.json").write_text(json.dumps(sources))
        self.must("source", "add", "--file", self.folder / "sources.json")
        self.ids = [note["id"] for note in answer(self.base, "notes")]
        self.sources = [source["SourceID"] for source in answer(self.base, "sources")]
        for id in self.ids[:3]:
            self.must("edit", id, "--source", self.sources[0], "--attach", self.folder / "three.txt")
        for id, path in zip(self.ids, ("Sea/Coast", "Land/Hill", "Sky", "Gone/Away")):
            self.must("edit", id, "--category", "2", path)
        self.must(DIALOG, "remark")
        self.must("notebook", "create", "Second Book")
        self.must("export", "--out", self.folder / "all.lbe")
        self.must("event", "add", "--label", "Class", "--start", "2049-01-04T09:00", "--repeat", "daily", "--until",
                  "2049-01-08", "--popup", 10)
        self.events = [event["EventId"] for event in answer(self.base, "events")]
        self.must("backup", "--out", self.base / BACKUP)
        ORIGINAL.update(note["guid"] for note in answer(self.base, "notes"))

    def text(self, number):
        file = self.folder / f"old{number}.txt"
        file.write_text(f"Note number {number} of the old ones\n")
        return file

    def must(self, *args):
        result = run(self.base, *args)
        if result.returncode != 0:
            raise AssertionError(f"{args}: {result.returncode} {result.stderr}")

    def copy(self):
        target = self.folder / "work"
        shutil.rmtree(target, ignore_errors=True)
        shutil.copytree(self.base, target)
        return target


def setUpModule():
    global WORLD
    WORLD = World()


def tearDownModule():
    shutil.rmtree(WORLD.folder, ignore_errors=True)


def flows():
    ids, folder, first, second = WORLD.ids, WORLD.folder, *WORLD.sources[:2]
    every = {
        "add": ["add", folder / "one.txt", folder / "two.html", "--category", "2", "New/Deep/Path"],
        "edit": ["edit", ids[4], "--rtf", folder / "one.txt", "--keywords", "changed"],
        "move": ["edit", ids[0], "--source", second],
        "move to its day": ["edit", ids[1], "--no-sources"],
        "attach": ["edit", ids[5], "--attach", folder / "one.txt", "--attach", folder / "two.html"],
        "delete": ["delete", ids[0], ids[4]],
        "source": ["source", "add", "--file", folder / "sources.json"],
        "create": ["notebook", "create", "Third Book"],
        "rename": ["notebook", "rename", "Second Book", "Other Name"],
        "remove": ["notebook", "delete", "Second Book"],
        "switch": ["notebook", "switch", "Second Book"],
        "copy": ["copy", "--to", "Second Book", ids[0], ids[3]],
        "import": ["--notebook", "Second Book", "import", folder / "all.lbe", "--take", "all"],
        "repair": ["check", "--repair"],
        "backup": ["backup", "--out", folder / "work" / BACKUP],
        "event": ["event", "add", "--label", "New", "--start", "2049-02-01T09:00", "--repeat", "daily", "--until",
                  "2049-02-03", "--popup", 10],
        "schedule": ["event", "edit", WORLD.events[2], "--following", "--start", "2049-01-06T15:00", "--end",
                     "2049-01-06T17:00"],
        "texts": ["event", "edit", WORLD.events[2], "--all", "--label", "Changed", "--popup", 60],
        "title of a source": [DIALOG, "title"],
        "type of a source": [DIALOG, "type"],
        "unused source": [DIALOG, "unused"],
        "category trees": [DIALOG, "trees"],
        "remove events": ["event", "delete", WORLD.events[2], "--following"],
    }
    chosen = os.environ.get("LORE_FLOWS")
    return {name: args for name, args in every.items() if not chosen or name in chosen.split(",")}


class Crash(unittest.TestCase):
    def strike(self, args, data, number, fault, lasting=False):
        env = {"LD_PRELOAD": SHIM, "LORE_FAULT_UNDER": data, "LORE_FAULT_AT": number, "LORE_FAULT": fault}
        if lasting:
            env["LORE_FAULT_LASTING"] = 1
        return run(data, *args, **env)

    def assert_old_or_new(self, data, old, new, message, told=False):
        now = state(data)
        if told:
            # An attachment whose file could not be copied costs nothing else; the command has said so.
            old, new, now = (without_contents(notes) for notes in (old, new, now))
        for key in set(old) | set(new) | set(now):
            wanted = [notes.get(key) for notes in (old, new)]
            self.assertIn(now.get(key), wanted, f"{message}: {key}")
        # The backup of last time, or the new one; in any case a whole one.
        with zipfile.ZipFile(data / BACKUP) as backup:
            self.assertIsNone(backup.testzip(), message)
        for finding in answer(data, "check"):
            self.assertIn(finding["kind"], TOLD_FINDINGS if told else OK_FINDINGS, f"{message}: {finding}")

    def walk(self, name, fault, lasting=False):
        args, old = flows()[name], state(WORLD.base)
        data = WORLD.copy()
        self.assertEqual(run(data, *args).returncode, 0, name)
        new = state(data)
        for number in range(1, MOST_POINTS):
            data = WORLD.copy()
            result = self.strike(args, data, number, fault, lasting)
            if result.returncode == 0 and fault == "KILL":
                return number - 1
            if fault == "KILL":
                self.assertEqual(result.returncode, -signal.SIGKILL, f"{name} {number}: {result.stderr}")
            self.assert_old_or_new(data, old, new, f"{name}, change {number}, {fault}", result.returncode == 3)
            if fault != "KILL" and self.told_all(name, args, data, number, result):
                return number - 1
        self.fail(f"{name} changes files without end")

    def told_all(self, name, args, data, number, result):
        """True once the command has no change of that number any more."""
        log = data.parent / "log"
        log.unlink(missing_ok=True)
        if result.returncode == 0:
            probe = WORLD.copy()
            run(probe, *args, LD_PRELOAD=SHIM, LORE_FAULT_UNDER=probe, LORE_FAULT_LOG=log)
            if len(log.read_text().splitlines()) < number:
                return True
            line = log.read_text().splitlines()[number - 1]
            self.assertTrue(self.is_harmless(line), f"{name}, change {number} failed in silence: {line}")
            return False
        self.assertEqual(result.returncode, 3, f"{name} {number}: {result.stderr}")
        self.assertRegex(result.stderr, "(lorebinder-cli|edit_run): ")
        return False

    @staticmethod
    def is_harmless(line):
        """What may fail without a word: the lock's own file, and the tidying of files that nothing names."""
        name, path = line.split("\t")[:2]
        return ("lock" in pathlib.Path(path).name or name in ("unlink", "mkdir") or "Temp" in path
                or path.endswith(".tmp") and name == "unlink")

    def test_a_killed_command_leaves_each_note_as_it_was_or_as_it_became(self):
        points = 0
        for name in flows():
            with self.subTest(flow=name):
                points += self.walk(name, "KILL")
        print(f"{points} kill points", file=sys.stderr)
        self.assertGreater(points, 10 * len(flows()))

    def test_a_failed_change_is_told_and_loses_nothing(self):
        for name in flows():
            for lasting in (False, True):
                with self.subTest(flow=name, lasting=lasting):
                    self.walk(name, errno.ENOSPC, lasting)

    def test_what_is_written_is_flushed_before_it_takes_its_place(self):
        for name, args in flows().items():
            with self.subTest(flow=name):
                data, log = WORLD.copy(), WORLD.folder / "order"
                log.unlink(missing_ok=True)
                run(data, *args, LD_PRELOAD=SHIM, LORE_FAULT_UNDER=data, LORE_FAULT_LOG=log)
                self.check_order(log.read_text().splitlines())

    def check_order(self, lines):
        unflushed, folders = set(), set()
        for line in lines:
            call, path, second = (line.split("\t") + ["", ""])[:3]
            if call in ("write", "create"):
                unflushed.add(path)
            elif call == "fsync":
                unflushed.discard(path)
                folders.discard(path)
            elif call == "rename":
                self.assertNotIn(path, unflushed, f"{line} before its bytes were on the disk")
                folders.add(str(pathlib.Path(second).parent))
        self.assertFalse(folders, "renamed without a flush of the folder")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
