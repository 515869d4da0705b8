#!/usr/bin/env python3
"""Export and import from end to end: round trips, options, hostile archives.

Usage: exchange_test.py LOREBINDER_CLI [unittest arguments]"""
import json
import pathlib
import resource
import shutil
import subprocess
import tempfile
import time
import zipfile

from cli_world import CliTest, fingerprint, main, number, text, version
from hostile_archives import RECORDS, hostile

MOST_MEMORY = 64 << 20


class ExchangeTest(CliTest):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name)
        self.data = self.top / "data"
        self.archive = self.top / "a.lbe"

    def copy(self, name="copy"):
        shutil.copytree(self.world.data, self.top / name)
        return self.top / name

    def export(self, *ids, data=None):
        return self.json("export", "--out", str(self.archive), *map(str, ids), data=data or self.copy("source"))

    def note(self, ident, data):
        """A note without what belongs to one NoteBook."""
        note = self.json("note", str(ident), data=data)
        titles = {s["SourceID"]: s["SourceGUID"] for s in self.json("sources", data=data)}
        note["sources"] = [titles[source] for source in note["sources"]]
        for attachment in note["attachments"]:
            name = attachment["storedFile"]
            if name:
                attachment["storedFile"] = (data / "Data Files/Databases/_LBMAIN_/Attachments" / name).read_bytes()
        del note["id"], note["file"]
        return note

    def notes(self, data):
        return {note["guid"]: note["id"] for note in self.json("notes", data=data)}


class RoundTrip(ExchangeTest):
    def test_an_empty_data_folder_gets_the_same_notes(self):
        source = self.copy("source")
        exported = self.export(data=source)
        self.assertEqual(exported["notes"], self.world.sample["notes"])
        for check in (["unzip", "-tq"], ["python3", "-m", "zipfile", "-t"]):
            self.assertEqual(subprocess.run([*check, self.archive], capture_output=True).returncode, 0, check)
        with zipfile.ZipFile(self.archive) as archive:
            self.assertEqual(archive.namelist()[0], RECORDS)
            self.assertFalse([name for name in archive.namelist() if "/" in name])
        imported = self.json("import", str(self.archive), data=self.data)
        self.assertEqual(imported["imported"], exported["notes"])
        before, after = self.notes(source), self.notes(self.data)
        self.assertEqual(set(before), set(after))
        for guid, ident in before.items():
            self.assertEqual(self.note(ident, source), self.note(after[guid], self.data), guid)
        cited = [[s["FormattedText"] for s in self.json("cite", data=data)] for data in (source, self.data)]
        self.assertLessEqual(set(cited[1]), set(cited[0]))
        self.expect(0, "check", data=self.data)

    def test_export_takes_the_notes_given_in_their_order(self):
        ids = [note["id"] for note in self.world.notes][:3]
        self.assertEqual(self.export(ids[2], ids[0])["notes"], 2)
        rows = self.json("import", str(self.archive), "--status", data=self.world.data)
        guids = {note["id"]: note["guid"] for note in self.world.notes}
        self.assertEqual([row["guid"] for row in rows], [guids[ids[2]], guids[ids[0]]])
        self.assertTrue(all(set(row) >= {"row", "guid", "status", "title"} for row in rows))


class Choice(ExchangeTest):
    def test_take_and_only_choose_the_rows(self):
        source = self.copy("source")
        older, newer, gone = sorted(self.notes(source).items())[:3]
        target = self.copy("target")
        self.expect(0, "edit", str(newer[1]), "--keywords", "from the archive", data=source)
        self.expect(0, "delete", str(gone[1]), data=target)
        time.sleep(1.1)
        self.expect(0, "edit", str(older[1]), "--keywords", "from here", data=target)
        self.export(data=source)
        rows = {row["guid"]: row["status"] for row in self.json("import", str(self.archive), "--status", data=target)}
        self.assertEqual([rows.pop(pair[0]) for pair in (older, newer, gone)], ["older", "newer", "new"])
        self.assertEqual(set(rows.values()), {"same"})
        others = len(rows)
        for options, count in [([], 2), (["--take", "new"], 1), (["--take", "newer"], 1), (["--take", "changed"], 2),
                               (["--take", "all"], others + 3), (["--only", older[0]], 0),
                               (["--only", next(iter(rows))], 0), (["--take", "all", "--only", older[0]], 1),
                               (["--only", f"{gone[0]}, {newer[0]},{older[0]},"], 2),
                               (["--take", "new", "--only", newer[0]], 0)]:
            with self.subTest(options=options):
                copy = self.top / "work"
                shutil.rmtree(copy, ignore_errors=True)
                shutil.copytree(target, copy)
                done = self.json("import", str(self.archive), *options, data=copy, status=0 if count else 1)
                self.assertEqual(done["imported"], count)
        self.expect(1, "import", str(self.archive), "--only", "{none}", data=target, says="with the guid {none}")
        done = self.expect(0, "--json", "import", str(self.archive), "--status", "--only", f"{newer[0]},{{none}}",
                           data=target, says="with the guid {none}")
        self.assertEqual([(row["guid"], row["status"]) for row in json.loads(done.stdout)], [(newer[0], "newer")])
        self.assertEqual(self.json("import", str(self.archive), "--status", "--only", "{none}", data=target, status=1), [])
        for options, says in [(["--take", "some"], "--take is"), (["--take", ""], "--take is"),
                              (["--only", " "], "--only takes"), (["--take", "all", "--only", ","], "--only takes")]:
            self.expect(2, "import", str(self.archive), *options, says=says, data=target)

    def test_what_an_import_numbers_gets_no_number_of_another_notebook(self):
        self.export()
        self.json("notebook", "create", "Second one", data=self.data)
        self.json("import", str(self.archive), data=self.data)
        second = ["--notebook", "Second one"]
        (self.top / "note.txt").write_text("A note")
        (self.top / "authors.json").write_text('{"authors": [{"last": "Lamp"}]}')
        self.json(*second, "add", str(self.top / "note.txt"), "--category", "1", "New/Newer", data=self.data)
        self.json(*second, "source", "add", "--file", str(self.top / "authors.json"), data=self.data)

        def numbers(nodes):
            return {n["id"] for n in nodes if n["name"] != "<UNASSIGNED>"}.union(*(numbers(n["children"]) for n in nodes))

        for command, ids in [(["categories"], numbers), (["notes"], lambda notes: {note["id"] for note in notes}),
                             (["authors"], lambda authors: {author["AuthorID"] for author in authors})]:
            with self.subTest(command=command):
                first, other = (ids(self.json(*book, *command, data=self.data)) for book in ([], second))
                self.assertGreater(min(other), max(first))

    def test_wrong_calls_say_what_is_wrong(self):
        data = self.copy()
        self.expect(1, "export", "--out", str(self.archive), "999999", says="no note 999999", data=data)
        self.expect(2, "export", data=data)
        self.expect(3, "export", "--out", str(self.top / "none" / "x.lbe"), says="No such file", data=data)
        before = fingerprint(data / "Data Files" / "Databases")
        for target, says in [("..", "Is a directory"), ("../..", "Is a directory"),
                             (f"{self.top}/none/..", "the name of a file")]:
            self.expect(3, "export", "--out", target, says=says, data=data)
            self.assertEqual(fingerprint(data / "Data Files" / "Databases"), before)
        self.expect(3, "import", str(self.top / "gone.lbe"), says="can't be imported", data=data)
        self.assertFalse(self.archive.exists())


def plain_note(ident, source=None):
    """A note record as it stands in a note file."""
    sources = [] if source is None else [source]
    path = number(-1) + number(-1) + text("") + number(0)
    return (number(ident) + number(len(sources)) + b"".join(map(number, sources)) + number(0) +
            text("2020-01-02-03-04-05") * 2 + text(f"{{PLAIN {ident}}}") + text("fog") + text("") + number(2112) +
            number(0) * 4 + text("Plain") + text("{\\rtf1 Plain}") + path * 3)


def sources_note():
    return plain_note(-2112, 77).replace(text("{PLAIN -2112}"), text("TEMP_SOURCES_NOTE"))


class PlainRecords(ExchangeTest):
    def write(self, records):
        self.dumped = self.top / RECORDS
        self.dumped.write_bytes(version(11.56) + text("2026-01-02-03-04-05") + records)
        with zipfile.ZipFile(self.archive, "w") as archive:
            archive.write(self.dumped, RECORDS)

    def test_archives_of_plain_note_records_are_read(self):
        notes = plain_note(5) + plain_note(6)
        for name, records in [("none", number(2) + notes), ("before", sources_note() + number(2) + notes),
                              ("counted", number(3) + sources_note() + notes)]:
            with self.subTest(sources_note=name):
                self.write(records)
                shutil.rmtree(self.data, ignore_errors=True)
                self.assertEqual(self.json("import", str(self.archive), data=self.data)["imported"], 2)
                self.expect(0, "check", data=self.data)
                done = self.expect(0, "--json", "dump", self.dumped)
                self.assertEqual(done.stderr, "")
                dump = json.loads(done.stdout)
                self.assertEqual([record["id"] for record in dump["records"]], [5, 6])
                self.assertEqual("sourcesNote" in dump, name != "none")

    def test_records_behind_those_announced_are_told(self):
        self.write(number(1) + plain_note(5) + number(0) + plain_note(6) + number(0))
        for options in ([], ["--status"]):
            self.expect(3, "import", str(self.archive), *options, data=self.data,
                        says="The archive announces 1 notes; what stands after them was not taken")

    def test_sources_that_the_archive_lacks_are_told(self):
        self.write(number(1) + plain_note(5, 77))
        self.expect(3, "import", str(self.archive), says="1 notes of the archive come without sources", data=self.data)
        self.assertEqual([note["sources"] for note in self.json("notes", data=self.data)], [[]])

    def test_a_dump_tells_that_a_file_is_not_whole(self):
        self.write(number(3) + plain_note(5) + plain_note(6))
        self.expect(0, "dump", self.dumped, says="was not read whole: it breaks off")
        for file in (self.world.main("Authors.dat"), next(self.world.main("Notes").iterdir())):
            self.assertEqual(self.expect(0, "dump", file).stderr, "")
            cut = self.top / file.name
            cut.write_bytes(file.read_bytes()[:-1])
            self.expect(0, "dump", cut, says="was not read whole: it ")


class Hostile(ExchangeTest):
    def test_no_archive_writes_outside_or_leaves_anything_behind(self):
        note = next(n for n in self.world.notes if not n["attachments"])
        self.export(note["id"])
        with zipfile.ZipFile(self.archive) as archive:
            records = archive.read(RECORDS)
        self.copy("data")
        self.expect(0, "delete", str(note["id"]), data=self.data)
        self.expect(1, "import", str(self.archive), "--only", "{NONE}", data=self.data)
        before = fingerprint(self.top / "data" / "Data Files")
        for name, content, may_take in hostile(records):
            with self.subTest(name=name):
                self.archive.write_bytes(content)
                start = time.monotonic()
                done = self.world.run("import", str(self.archive), "--status", data=self.data)
                self.assertLess(time.monotonic() - start, 5)
                self.assertIn(done.returncode, (0, 3))
                self.assertTrue(done.returncode == 3 or may_take, done.stdout)
                if not may_take:
                    self.assertIn("can't be imported", done.stderr)
                    taken = self.world.run("import", str(self.archive), data=self.data)
                    self.assertEqual(taken.returncode, 3)
                self.assertEqual(fingerprint(self.top / "data" / "Data Files"), before)
        self.assertEqual(sorted(p.name for p in self.top.iterdir()), ["a.lbe", "data", "source"])
        self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024, MOST_MEMORY)


if __name__ == "__main__":
    main(__doc__)
