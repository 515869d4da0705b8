"""What the tests with kills, failing calls and lost writes share: a small world of two NoteBooks, every command that
writes into it, and the judgement that a data folder shows each thing as it was or as it would have become."""
import functools
import hashlib
import json
import os
import pathlib
import random
import shutil
import subprocess
import tempfile
import unittest
import zipfile

# Before the name of a step that only a dialog offers.
DIALOG = "dialog"
OK_FINDINGS = {"note-twice", "note-in-wrong-file", "attachment-unused"}
TOLD_FINDINGS = OK_FINDINGS | {"attachment-missing"}
BACKUP = "book.lbe"
WORDS = "amber brine cliff dune ebb fog gale harbour island jetty keel lamp mast north ocean pier quay reef sail tide".split()


def faults(shim, under, at=0, fault="", lasting=False, **more):
    """The environment in which a call for files below a folder fails, or is the last one."""
    return {"LD_PRELOAD": shim, "LORE_FAULT_UNDER": under, "LORE_FAULT_AT": at, "LORE_FAULT": fault,
            **({"LORE_FAULT_LASTING": 1} if lasting else {}), **more}


class CommandLine:
    """lorebinder-cli on one data folder or another."""

    def __init__(self, program):
        self.cli = str(pathlib.Path(program).resolve())

    def command(self, data, *args):
        return [self.cli, "--data", str(data), *map(str, args)]

    def run(self, data, *args, **env):
        full = dict(os.environ, **{key: str(value) for key, value in env.items()})
        return subprocess.run(self.command(data, *args), env=full, capture_output=True, text=True, errors="replace",
                              check=False)

    def answer(self, data, *args):
        result = self.run(data, "--json", *args)
        assert result.stdout, (args, result.stderr)
        return json.loads(result.stdout)


class Programs(CommandLine):
    """The programs under test, in the order of the arguments."""

    def __init__(self, arguments):
        super().__init__(arguments[0])
        self.edit_run, self.command_run = (str(pathlib.Path(one).resolve()) for one in arguments[1:3])
        self.answering = None

    def command(self, data, *args):
        return [self.edit_run, str(data), *args[1:]] if args[0] == DIALOG else super().command(data, *args)

    def answer(self, data, *args):
        """What a reading command prints, asked of a process that answers many."""
        if not self.answering:
            self.answering = subprocess.Popen([self.command_run], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                              stderr=subprocess.DEVNULL)
        self.answering.stdin.write("\t".join(["--data", str(data), "--json", *map(str, args)]).encode() + b"\n")
        self.answering.stdin.flush()
        head = self.answering.stdout.readline().split()
        if not head:
            raise AssertionError(f"{args}: ended with {self.answering.wait()}")
        return json.loads(self.answering.stdout.read(int(head[1])))

    def close(self):
        if self.answering:
            self.answering.communicate()
            self.answering = None


def tree(folder):
    """Every file and folder below a folder: path -> bytes, None for a folder."""
    found = {}
    for top, folders, files in os.walk(folder):
        for name in folders:
            found[os.path.relpath(os.path.join(top, name), folder)] = None
        for name in files:
            with open(os.path.join(top, name), "rb") as file:
                found[os.path.relpath(os.path.join(top, name), folder)] = file.read()
    return found


def digest(files):
    total = hashlib.sha256()
    for path in sorted(files):
        content = files[path]
        total.update(f"{path}\0{-1 if content is None else len(content)}\0".encode())
        total.update(content or b"")
    return total.digest()


def without_contents(notes):
    return {key: (*note[:-1], [one[:2] for one in note[-1]]) if isinstance(note, tuple) else note
            for key, note in notes.items()}


class World:
    """A small NoteBook, a second one, and files to add. Another seed is another number, length and order of notes."""

    def __init__(self, programs, seed=0):
        self.programs, self.random = programs, random.Random(seed)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-world-"))
        self.base, self.original, self.seen = self.folder / "base", set(), {}
        (self.folder / "one.txt").write_text("The first new note\n")
        (self.folder / "two.html").write_text("<p>The <b>second</b> new note</p>")
        (self.folder / "three.txt").write_text("Another text\n")
        texts = [self.text(number, seed) for number in range(6 if seed == 0 else self.random.randint(6, 11))]
        self.must("add", *texts, "--keywords", "lamp, lens", "--category", "1", "Sea/Coast")
        sources = {"authors": [{"AuthorID": 1, "first": "Ada", "last": "Lamp"}],
                   "sources": [{"SourceID": 1, "AuthorIDs": [1], "FieldTexts": ["A Book"]},
                               {"SourceID": 2, "FieldTexts": ["Another Book"]}]}
        (self.folder / "sources.json").write_text(json.dumps(sources))
        self.must("source", "add", "--file", self.folder / "sources.json")
        self.ids = [note["id"] for note in programs.answer(self.base, "notes")]
        if seed:
            self.random.shuffle(self.ids)
        self.sources = [source["SourceID"] for source in programs.answer(self.base, "sources")]
        for id in self.ids[:3]:
            self.must("edit", id, "--source", self.sources[0], "--attach", self.folder / "three.txt")
        for id, path in zip(self.ids, ("Sea/Coast", "Land/Hill", "Sky", "Gone/Away")):
            self.must("edit", id, "--category", "2", path)
        self.must(DIALOG, "remark")
        self.must("notebook", "create", "Second Book")
        self.must("export", "--out", self.folder / "all.lbe")
        self.must("event", "add", "--label", "Class", "--start", "2049-01-04T09:00", "--repeat", "daily", "--until",
                  "2049-01-08", "--popup", 10)
        self.events = [event["EventId"] for event in programs.answer(self.base, "events")]
        self.must("backup", "--out", self.base / BACKUP)
        self.original = {note["guid"] for note in programs.answer(self.base, "notes")}

    def close(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def text(self, number, seed):
        file = self.folder / f"old{number}.txt"
        more = " ".join(self.random.choices(WORDS, k=self.random.randint(0, 900))) if seed else ""
        file.write_text(f"Note number {number} of the old ones {more}\n")
        return file

    def must(self, *args):
        result = self.programs.run(self.base, *args)
        if result.returncode != 0:
            raise AssertionError(f"{args}: {result.returncode} {result.stderr}")

    def copy(self):
        target = self.folder / "work"
        shutil.rmtree(target, ignore_errors=True)
        shutil.copytree(self.base, target)
        return target

    def flows(self):
        """Those that LORE_FLOWS names, or every one."""
        chosen = os.environ.get("LORE_FLOWS")
        return {name: args for name, args in self.every_flow().items() if not chosen or name in chosen.split(",")}

    def every_flow(self):
        """Every command that writes, and what the dialogs save."""
        ids, folder, first, second = self.ids, self.folder, *self.sources[:2]
        return {
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
            "import over": ["import", folder / "all.lbe", "--take", "all"],
            "repair": ["check", "--repair"],
            "backup": ["backup", "--out", folder / "work" / BACKUP],
            "event": ["event", "add", "--label", "New", "--start", "2049-02-01T09:00", "--repeat", "daily", "--until",
                      "2049-02-03", "--popup", 10],
            "schedule": ["event", "edit", self.events[2], "--following", "--start", "2049-01-06T15:00", "--end",
                         "2049-01-06T17:00"],
            "texts": ["event", "edit", self.events[2], "--all", "--label", "Changed", "--popup", 60],
            "title of a source": [DIALOG, "title"],
            "type of a source": [DIALOG, "type"],
            "unused source": [DIALOG, "unused"],
            "category trees": [DIALOG, "trees"],
            "remove events": ["event", "delete", self.events[2], "--following"],
        }

    # What a data folder shows.

    def state(self, data):
        """The NoteBooks, and what each note of each holds, without what differs from run to run."""
        notes = {}
        for book in self.programs.answer(data, "notebooks"):
            notes |= {("notebook", book["name"]): True} | self.book_state(data, book)
        return notes | self.calendar(data)

    def book_state(self, data, book):
        ask = functools.partial(self.programs.answer, data, "--notebook", book["guid"])
        sources = {one["SourceGUID"]: one for one in ask("sources")}
        notes = {("source", book["name"], one["SourceID"]): [one["FieldTexts"][0], one["SourceType"]]
                 for one in sources.values()}
        for line in ask("notes"):
            note = ask("note", line["id"])
            attachments = [(one["title"], one["type"], self.content(data, book, one)) for one in note["attachments"]]
            key = book["name"], note["guid"] if note["guid"] in self.original else note["plainText"][:60]
            # What a note alone knows of its sources; what it knows of one that isn't there shows nowhere.
            remarks = [(sources[guid]["SourceID"], text) for guid, text in note["sourceInfo"] if guid in sources]
            notes[key] = (note["plainText"], remarks, note["keyWords"], len(note["sources"]), note["categories"],
                          note["borderColor"], attachments)
        return notes

    def calendar(self, data):
        """The events, and the reminders: each alone, for the two files change one after the other."""
        events = {("event", one["Start"], one["End"], one["Label"]): one["RecurrenceEnd"]
                  for one in self.programs.answer(data, "events")}
        return events | {("reminder", one["SendTime"], one["EventLabel"]): True
                         for one in self.programs.answer(data, "reminders")}

    @staticmethod
    def content(data, book, attachment):
        if attachment["type"] == 12:
            return attachment["sourceFile"]
        file = data / "Data Files" / "Databases" / book["folder"] / "Attachments" / attachment["storedFile"]
        return hashlib.sha256(file.read_bytes()).digest() if file.is_file() else "missing"

    def look(self, data, files=None):
        """The state and the findings of "check". Folders with the same bytes show the same: one look for all."""
        key = digest(tree(data) if files is None else files)
        if key not in self.seen:
            findings = [(one["kind"], str(one)) for one in self.programs.answer(data, "check")]
            self.seen[key] = (self.state(data), findings)
        return self.seen[key]

    def problem(self, data, old, new, told=False, files=None):
        """What is wrong with a folder that may show `old` or `new`, each thing for itself; empty if nothing is."""
        try:
            now, findings = self.look(data, files)
        except Exception as fault:  # pylint: disable=broad-except
            return f"it can't be read: {fault}"
        if told:
            # An attachment whose file could not be copied costs nothing else; the command has said so.
            old, new, now = (without_contents(notes) for notes in (old, new, now))
        for key in set(old) | set(new) | set(now):
            if now.get(key) not in (old.get(key), new.get(key)):
                return f"{key}: {now.get(key)} is neither {old.get(key)} nor {new.get(key)}"
        # The backup of last time, or the new one; in any case a whole one.
        try:
            with zipfile.ZipFile(data / BACKUP) as backup:
                if backup.testzip():
                    return "the backup is damaged"
        except (OSError, zipfile.BadZipFile) as fault:
            return f"the backup: {fault}"
        bad = [text for kind, text in findings if kind not in (TOLD_FINDINGS if told else OK_FINDINGS)]
        return f"check: {bad[0]}" if bad else ""


def module_world(arguments, seed):
    """The programs and a world for all tests of the module that is being set up; its end closes both."""
    programs = Programs(arguments)
    unittest.addModuleCleanup(programs.close)
    world = World(programs, seed)
    unittest.addModuleCleanup(world.close)
    return programs, world
