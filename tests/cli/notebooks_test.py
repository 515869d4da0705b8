#!/usr/bin/env python3
"""Commands on NoteBooks from end to end: create, rename, delete, switch, copy, backup.

Usage: notebooks_test.py LOREBINDER_CLI [unittest arguments]"""
import json
import os
import pathlib
import re
import shutil
import tempfile
import zipfile

from cli_world import CliTest, WALKS, fingerprint, main


class NoteBooks(CliTest):
    def setUp(self):
        self.top = pathlib.Path(tempfile.mkdtemp(dir=self.world.top))
        self.data = self.top / "data"
        shutil.copytree(self.world.data, self.data)
        self.databases = self.data / "Data Files" / "Databases"

    def json(self, *args, **options):
        return super().json(*args, **{"data": self.data, **options})

    def expect(self, *args, **options):
        return super().expect(*args, **{"data": self.data, **options})

    def listed(self):
        return {book["name"]: book for book in self.json("notebooks")}

    def test_create_rename_delete(self):
        made = self.json("notebook", "create", "  Light houses ")
        self.assertEqual((made["name"], made["notes"]), ("Light houses", 0))
        self.assertRegex(made["folder"], r"^DB\d{6}$")
        self.assertTrue((self.databases / made["folder"] / "Notes").is_dir())
        self.assertTrue((self.databases / made["folder"] / "Attachments").is_dir())
        self.assertEqual(self.listed()["Light houses"], made)
        renamed = self.json("notebook", "rename", made["folder"], " Leuchtt\u00fcrme ")
        self.assertEqual([renamed["guid"], renamed["name"]], [made["guid"], " Leuchtt\u00fcrme "])
        self.assertIn(" Leuchtt\u00fcrme ", self.listed())
        other = self.json("notebook", "create", "Fog signals")
        self.assertGreater(other["id"], made["id"])
        before = fingerprint(self.databases / "_LBMAIN_")
        self.assertEqual(self.json("notebook", "delete", WALKS["guid"])["notes"], 2)
        self.assertFalse((self.databases / WALKS["folder"]).exists())
        self.assertEqual(set(self.listed()), {"LorebinderMain", " Leuchtt\u00fcrme ", "Fog signals"})
        self.assertEqual(fingerprint(self.databases / "_LBMAIN_"), before)

    def test_names_are_found_in_either_form_of_their_bytes(self):
        folder = self.json("notebook", "create", "Caf\u00e9 notes")["folder"]
        file = self.databases / "Databases.dat"
        stored = file.read_bytes()
        self.assertIn("Caf\u00e9".encode("cp1252"), stored)
        at = stored.index("Caf\u00e9".encode("cp1252"))
        utf8 = "Caf\u00e9 notes".encode()
        length = stored.rindex(b"10", 0, at)
        file.write_bytes(stored[:length] + b"11" + stored[length + 2:at] + utf8 + stored[at + 10:])
        self.assertEqual(self.listed()["Caf\u00e9 notes"]["folder"], folder)
        self.assertEqual(self.json("notebook", "rename", "Caf\u00e9 notes", "Tea notes")["folder"], folder)
        self.expect(1, "--notebook", "nowhere", "check", says="there is no NoteBook")

    def test_refusals_change_nothing(self):
        before = fingerprint(self.data)
        note = str(self.world.notes[0]["id"])
        refused = [(2, ("notebook", "create", "abcd"), "Database name must be between 5 and 30 characters."),
                   (2, ("notebook", "create", "x" * 31), "Database name must be between 5 and 30 characters."),
                   (2, ("notebook", "delete", "LorebinderMain"), "You can't delete the main database."),
                   (2, ("notebook", "rename", "LorebinderMain", "Other"), "main NoteBook"),
                   (2, ("notebook", "rename", "Shore Walks", ""), "empty name"),
                   (2, ("notebook", "rename", "Shore Walks", " \t "), "empty name"),
                   (1, ("notebook", "delete", "Nowhere"), "Nowhere"),
                   (1, ("notebook", "switch", "Nowhere"), "Nowhere"),
                   (2, ("notebook",), ""), (2, ("notebook", "rename", "Shore Walks"), ""),
                   (1, ("copy", "--to", "Nowhere", "1"), ""), (1, ("copy", "--to", "Shore Walks", "99999999"), ""),
                   (1, ("--notebook", "", "copy", "--to", "Shore Walks", note), "no NoteBook \"\""),
                   (1, ("copy", "--to", "", note), "no NoteBook \"\""),
                   (2, ("copy", "--to", "Shore Walks", "0x3EB"), "0x3EB"),
                   (2, ("backup", "--all", "--out", self.top / "none"), "ending")]
        for status, args, says in refused:
            self.expect(status, *args, says=says)
        self.assertEqual(fingerprint(self.data), {**before, "lorebinder.lock": fingerprint(self.data)["lorebinder.lock"]})

    def test_a_name_that_fits_several_is_refused_with_what_tells_them_apart(self):
        one, two = (self.json("notebook", "create", "Same book") for _ in range(2))
        three = self.json("notebook", "create", one["folder"])
        self.json("notebook", "rename", WALKS["folder"], two["guid"])
        four = self.json("notebook", "create", "LorebinderMain")
        added = self.top / "note.txt"
        added.write_text("A note")
        before = fingerprint(self.data)
        for name, choice in [("Same book", (one["guid"], two["folder"])),
                             (one["folder"], (one["guid"], three["folder"])),
                             (two["guid"], (two["folder"], WALKS["folder"])),
                             ("LorebinderMain", ("_LBMAIN_", four["folder"]))]:
            for args in (["notebook", "delete", name], ["notebook", "rename", name, "Other"],
                         ["notebook", "switch", name], ["copy", "--to", name, str(self.world.notes[0]["id"])],
                         ["--notebook", name, "notes"], ["--notebook", name, "add", added]):
                with self.subTest(args=args):
                    done = self.expect(2, *args, says="may be any of 2 NoteBooks; say which one by its folder or GUID")
                    self.assertEqual(done.stdout, "")
                    for argument in choice:
                        self.assertIn(f'{argument} ("', done.stderr)
                        self.json("--notebook", argument, "notes")
        self.assertEqual(fingerprint(self.data), before)
        self.json("notebook", "delete", one["guid"])
        self.json("notebook", "rename", "Same book", "The other")
        self.assertEqual({book["guid"] for book in self.listed().values()} & {one["guid"], two["guid"], three["guid"]},
                         {two["guid"], three["guid"]})

    def test_no_line_for_a_reader_holds_a_control_character(self):
        odd, shown = "Odd\x1b[31m\n\t\x7f\u009b\x07 one", r"Odd\x1b[31m\x0a\x09\x7f\x9b\x07 one"
        book = self.json("notebook", "create", odd)["folder"]
        fields = {"authors": [{"AuthorID": 1, "last": odd}], "sources": [
            {"FieldTexts": [odd], "AuthorIDs": [1], "SourceType": 1001,
             "CustomTypeCopy": {"GUID": "{T}", "name": odd, "fields": [{"kind": 2, "name": odd}]}}]}
        (self.top / "s.json").write_text(json.dumps(fields))
        there, archive = ("--notebook", book), self.top / "odd.lbe"
        source, = self.json(*there, "source", "add", "--file", self.top / "s.json")
        (self.top / odd).write_text("attached")
        (self.top / "note.rtf").write_text("{\\rtf1 Text \x1b[31m\\par two}")
        note = str(self.json(*there, "add", self.top / "note.rtf", "--keywords", odd, "--category", "1", odd,
                             "--source", str(source))[0])
        self.json(*there, "edit", note, "--attach", self.top / odd)
        self.json(*there, "event", "add", "--label", odd, "--start", "2049-01-01")
        self.json(*there, "export", "--out", archive)
        notebook = self.databases / book
        (notebook / "Sync.dat").write_bytes(b"2112, 77, On\x1b[31m, Main, 01/01/2020 12:00:00 AM, {G},\n")
        (notebook / "Attachments" / "left\x1b[31m\n").write_bytes(b"")
        for args, status, says in [
                (["notebooks"], 0, shown), (["notes"], 0, shown), (["authors"], 0, shown), (["sources"], 0, shown),
                (["note", note], 0, "keyWords: " + shown), (["sourcetypes"], 0, shown), (["cite"], 0, shown),
                (["cite", "--width", "40"], 0, r"Odd\x1b[31m"), (["categories"], 0, shown), (["keywords"], 0, shown),
                (["events"], 0, shown), (["synclog"], 0, r"linked with On\x1b[31m"),
                (["import", archive, "--status"], 0, shown), (["notebook", "switch", book], 0, shown),
                (["check"], 1, r"Attachments/left\x1b[31m\x0a: no note names the file"),
                (["import", self.top / odd], 3, r"Odd\x1b[31m"), (["note", note, "--rtf"], 0, "Text \x1b[31m"),
                (["--notebook", odd + "!", "notes"], 1, shown)]:
            with self.subTest(args=args):
                done = self.expect(status, *([] if "--notebook" in args else there), *args)
                said = done.stdout + done.stderr
                self.assertIn(says, said)
                if "--rtf" not in args:
                    self.assertEqual(re.findall("[\0-\x09\x0b-\x1f\x7f-\x9f]", said.replace("\t", "")), [])
                if args == ["check"]:
                    self.assertEqual(len(said.splitlines()), 1)
                elif args == ["notebooks"]:
                    self.assertEqual(len(said.splitlines()), 3)

    def test_switch_decides_what_opens(self):
        self.json("notebook", "switch", "Shore Walks")
        self.assertEqual([note["id"] for note in self.json("notes")], [7, 8])
        self.json("notebook", "delete", "Shore Walks")
        self.assertEqual(len(self.json("notes")), len(self.world.notes))

    def test_copy_brings_what_a_note_names(self):
        note = next(n for n in self.world.notes if n["sources"] and any(n["categories"]) and
                    any(a["storedFile"] for a in n["attachments"]))
        target = self.json("notebook", "create", "Light houses")
        before = fingerprint(self.databases / "_LBMAIN_")
        made = self.json("copy", "--to", "Light houses", str(note["id"]))
        self.assertEqual(made["copied"], 1)
        self.assertEqual(fingerprint(self.databases / "_LBMAIN_"), before)
        there = ("--notebook", "Light houses")
        copy = self.json(*there, "note", str(made["ids"][0]))
        for key in ("guid", "rtfText", "plainText", "keyWords", "dateEdited", "categories", "borderColor"):
            self.assertEqual(copy[key], note[key], key)
        titles = {s["SourceGUID"]: s["FieldTexts"] for s in self.json("sources")}
        self.assertEqual({s["SourceGUID"]: s["FieldTexts"] for s in self.json(*there, "sources")},
                         {guid: titles[guid] for guid in (s["SourceGUID"] for s in self.json(*there, "sources"))})
        self.assertEqual(len(copy["sources"]), len(note["sources"]))
        for old, new in zip(note["attachments"], copy["attachments"]):
            if old["storedFile"]:
                self.assertEqual((self.databases / target["folder"] / "Attachments" / new["storedFile"]).read_bytes(),
                                 (self.databases / "_LBMAIN_" / "Attachments" / old["storedFile"]).read_bytes())
        self.assertEqual(self.json(*there, "check"), [])
        again = self.json("copy", "--to", "Light houses", str(note["id"]))
        self.assertGreater(again["ids"][0], made["ids"][0])
        self.assertEqual([n["id"] for n in self.json(*there, "notes")], again["ids"])
        self.assertEqual(self.json(*there, "check"), [])
        self.expect(2, "copy", "--to", "LorebinderMain", str(note["id"]), says="already")

    def test_copies_get_ids_above_all_notes_whatever_the_settings_say(self):
        settings = self.data / "settings.ini"
        stored = settings.read_text()
        settings.write_text(re.sub(r"(?m)^MaxNoteID=.*$", "MaxNoteID=1000", stored))
        self.assertNotEqual(settings.read_text(), stored)
        highest = max(note["id"] for note in self.world.notes)
        ids = [str(note["id"]) for note in self.world.notes[:2]]
        self.assertEqual(self.json("copy", "--to", "Shore Walks", *ids)["ids"], [highest + 1, highest + 2])
        self.assertIn(f"MaxNoteID={highest + 2}\n", settings.read_text())

    def test_a_copy_names_its_missing_file_and_no_other_file_takes_its_place(self):
        note = next(n for n in self.world.notes if any(a["storedFile"] for a in n["attachments"]))
        position = next(i for i, a in enumerate(note["attachments"]) if a["storedFile"])
        (self.databases / "_LBMAIN_" / "Attachments" / note["attachments"][position]["storedFile"]).unlink()
        done = self.expect(3, "--json", "copy", "--to", "Shore Walks", str(note["id"]), says="isn't there")
        there, copy = ("--notebook", "Shore Walks"), str(json.loads(done.stdout)["ids"][0])
        name = self.json(*there, "note", copy)["attachments"][position]["storedFile"]
        self.assertTrue(name)
        found = self.json(*there, "check", status=1)
        self.assertTrue(any(f["kind"] == "attachment-missing" and WALKS["folder"] in f["file"] for f in found), found)
        attached = self.top / f"new.{name.rsplit('.', 1)[1]}"
        attached.write_bytes(b"of another note")
        self.json(*there, "edit", copy, "--keywords", "edited")
        self.json(*there, "edit", "7", "--attach", attached)
        self.assertEqual(self.json(*there, "note", copy)["attachments"][position]["storedFile"], name)
        self.assertFalse((self.databases / WALKS["folder"] / "Attachments" / name).exists())

    def test_paths_in_json_are_texts(self):
        place = os.path.join(os.fsencode(self.top), b"\xe9")
        os.mkdir(place)
        for command in ("backup", "export"):
            done = self.world.run("--json", command, "--out", os.path.join(place, b"a.lbe"), data=self.data)
            self.assertEqual(done.returncode, 0, done.stderr)
            shown = json.loads(done.stdout)
            self.assertTrue(shown.get("file", shown.get("files", [""])[0]).endswith("\u00e9/a.lbe"), shown)
        odd = os.path.join(place, b"data")
        shutil.copytree(os.fsencode(self.data), odd)
        notes = next(path for path in pathlib.Path(os.fsdecode(odd)).rglob("Notes/*.dat"))
        notes.write_bytes(notes.read_bytes()[:-20])
        settings = self.data / "settings.ini"  # whose own path has to be UTF-8
        files = [one["file"] for one in self.json("--settings", settings, "check", data=odd, status=1)]
        self.assertTrue(any("\u00e9/data" in file for file in files), files)

    def test_a_notebook_without_a_number_takes_no_copies_and_says_so(self):
        guid = self.json("notebook", "create", "Light houses")["guid"]
        file = self.databases / "Databases.dat"
        stored = file.read_bytes()
        number = stored.index(guid.encode()) - 32
        for damaged in (b"0" * 16, b"-" + b"0" * 14 + b"3"):
            file.write_bytes(stored[:number] + damaged + stored[number + 16:])
            self.expect(3, "copy", "--to", "Light houses", str(self.world.notes[0]["id"]), says="no valid number")

    def test_notes_of_an_old_version_are_copied_both_ways(self):
        made = self.json("--notebook", "Shore Walks", "copy", "--to", "LorebinderMain", "7", "8")
        self.assertEqual(self.json("note", str(made["ids"][0]))["plainText"], "Fog on the caf\u00e9 pier")
        back = self.json("copy", "--to", "Shore Walks", str(self.world.notes[0]["id"]))
        ids = [note["id"] for note in self.json("--notebook", "Shore Walks", "notes")]
        self.assertEqual(sorted(ids), sorted([7, 8, *back["ids"]]))
        self.assertEqual(self.json("--notebook", "Shore Walks", "note", "7")["categories"][0], ["Coast", "South"])

    def test_backup_comes_back_into_an_empty_data_folder(self):
        self.json("notebook", "rename", "Shore Walks", "Shore / Walks")
        done = self.json("backup", "--all", "--out", self.top / "kept.lbe")
        self.assertEqual(done["notes"], len(self.world.notes) + 2)
        names = [pathlib.Path(file).name for file in done["files"]]
        self.assertEqual(names, ["kept[Shore_Walks].lbe", "kept[LorebinderMain].lbe"])
        for file in done["files"]:
            self.assertIsNone(zipfile.ZipFile(file).testzip())
        empty = self.top / "empty"
        self.expect(0, "import", done["files"][1], data=empty)
        self.assertEqual(sorted(note["guid"] for note in self.json("notes", data=empty)),
                         sorted(note["guid"] for note in self.world.notes))
        self.assertEqual(sorted(s["SourceGUID"] for s in self.json("sources", data=empty)),
                         sorted(s["SourceGUID"] for s in self.json("sources")))

    def test_archives_are_written_through_links_and_over_files_alone(self):
        for command in ("backup", "export"):
            real, link, pipe = (self.top / f"{command}.{kind}" for kind in ("lbe", "link", "pipe"))
            link.symlink_to(real.name)
            os.mkfifo(pipe)
            self.expect(0, command, "--out", link)
            real.chmod(0o600)
            self.expect(0, command, "--out", link)
            self.assertTrue(link.is_symlink())
            self.assertIsNone(zipfile.ZipFile(real).testzip())
            self.assertEqual(real.stat().st_mode & 0o777, 0o600)
            self.expect(3, command, "--out", pipe, says="Not a regular file")
            self.assertTrue(pipe.is_fifo())
        self.assertEqual([path.name for path in self.top.iterdir() if path.name.endswith(".tmp")], [])

    def test_no_archive_takes_the_place_of_data(self):
        book, files = self.databases / "_LBMAIN_", self.data / "Data Files"
        note = next((book / "Notes").iterdir())
        (self.top / "lead.lbe").symlink_to(note)
        (self.top / "folder").symlink_to(book / "Notes")
        self.expect(0, "event", "add", "--label", "A", "--start", "2049-01-01")
        before = fingerprint(self.data)
        for command in ("export", "backup"):
            for out in (note, book / "Notes" / "new.lbe", book / "Sources.dat", next((book / "Attachments").iterdir()),
                        files / "Events.dat", self.databases / "all.lbe", self.data / "settings.ini",
                        self.data / "lorebinder.lock", self.top / "lead.lbe", self.top / "folder" / note.name):
                with self.subTest(command=command, out=out):
                    self.expect(2, command, "--out", out, says="belongs to the data folder")
                    self.assertEqual(fingerprint(self.data), before)
            self.expect(0, command, "--out", self.data / "mine.lbe")
            self.expect(0, command, "--out", files / "mine.lbe")
            (self.data / "mine.lbe").unlink()
            (files / "mine.lbe").unlink()

    def test_check_finds_notes_that_no_notebook_names(self):
        lost = self.databases / "lost"
        (lost / "Notes").mkdir(parents=True)
        self.assertEqual(self.json("check"), [])
        shutil.copy(next((self.databases / "_LBMAIN_" / "Notes").iterdir()), lost / "Notes")
        finding, = self.json("check", status=1)
        self.assertEqual((finding["kind"], finding["file"]), ("notebook-unlisted", str(lost)))

    def test_check_finds_notebooks_that_share_a_folder(self):
        made = self.json("notebook", "create", "Light houses")
        twice = self.json("notebook", "create", "Fog signals")
        file = self.databases / "Databases.dat"
        file.write_bytes(file.read_bytes().replace(twice["folder"].encode(), made["folder"].encode()))
        for command in ("check",), ("check", "--repair"):
            found = self.json(*command, status=1)
            self.assertEqual([(one["kind"], one["file"]) for one in found],
                             [("notebook-twice", str(self.databases / made["folder"]))])
            self.assertIn('"Light houses" and "Fog signals"', found[0]["text"])
        self.json("notebook", "delete", twice["guid"])
        self.assertEqual(self.json("check"), [])

    def test_a_folder_beside_the_data_is_told(self):
        for data in (self.top / "nowhere", self.data / "Data Files"):
            for command in (["notes"], ["sources"], ["notebooks"], ["check"]):
                self.expect(0, *command, data=data, says="--data takes the folder that holds it")
        link = self.top / "link"
        link.symlink_to(self.databases)
        for data in link, *(f"{self.data}/Data Files{end}" for end in ("", "/", "/.", "/Databases", "/../Data Files")):
            self.expect(2, "add", __file__, data=data, says="not that folder itself")
        self.assertEqual(len(list(self.data.rglob("Data Files"))), 1)
        self.expect(0, "notebook", "create", "First Steps", data=self.top / "nowhere")

    def test_backup_into_nowhere_is_a_fault(self):
        self.expect(3, "backup", "--out", self.top / "none" / "one.lbe")
        self.expect(1, "--notebook", self.json("notebook", "create", "Empty one")["name"], "backup", "--out",
                    self.top / "one.lbe", says="no notes")
        self.assertEqual([p.name for p in self.top.iterdir() if p.is_file()], [])


if __name__ == "__main__":
    main(__doc__)
