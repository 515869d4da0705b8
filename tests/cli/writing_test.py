#!/usr/bin/env python3
"""The commands that write notes and sources, from end to end on a fresh data folder.

Usage: writing_test.py LOREBINDER_CLI [unittest arguments]"""
import fcntl
import json
import os
import pathlib
import subprocess

from cli_world import FreshTest, fingerprint, main_fresh, number, text, version


class Writing(FreshTest):
    @property
    def book(self):
        return self.data / "Data Files" / "Databases" / "_LBMAIN_"

    def file(self, name, content):
        path = self.top / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def add(self, text="A note", *args):
        return self.json("add", self.file("note.txt", text), *args)[0]

    def test_each_kind_of_file_becomes_the_text_that_it_shows(self):
        rtf = b"{\\rtf1\\ansi Stored {\\b as} it stands\\par two}"
        for name, content, plain in [
                ("a.txt", "One\nTwo\n", "One\r\nTwo"),
                ("b.md", "# Left *alone*", "# Left *alone*"),
                ("c.txt", "\ufeffWith a mark\r\nand CR LF\r\n", "With a mark\r\nand CR LF"),
                ("d.txt", "Caf\u00e9".encode("cp1252"), "Caf\u00e9"),
                ("e.txt", "\u0395\u03bb \u4e2d \u0440\u0443", "\u0395\u03bb \u4e2d \u0440\u0443"),
                ("cr.txt", b"first line\rsecond line\r", "first line\r\nsecond line"),
                ("breaks.md", b"page\fnext\vline\r\n\rend\n", "page\r\nnext\r\nline\r\n\r\nend"),
                ("f.txt", b"cut\x1aby\x00nothing", "cutbynothing"),
                ("j.txt", "Caf\u00e9 \U0001f600\r\ntwo\r\n".encode("utf-16"), "Caf\u00e9 \U0001f600\r\ntwo"),
                ("k.htm", "\ufeff<html><p>&#147;Caf&eacute&#148;".encode("utf-16-be"), "\u201cCaf\u00e9\u201d"),
                ("g.rtf", rtf, "Stored as it stands\r\ntwo"),
                ("h.html", "<h1>Head</h1><p>a <b>b</b>\n c<br>d<script>no()</script>", "Head\r\na b c\r\nd"),
                ("i.html", "<table><tr><td>1<td>2<tr><td>3<td>4</table>", "1\t2\t\r\n3\t4\t\r\n")]:
            with self.subTest(file=name):
                note = self.json("note", self.json("add", self.file(name, content))[0])
                self.assertEqual(note["plainText"], plain)
                if name.endswith(".rtf"):
                    self.assertEqual(note["rtfText"], rtf.decode())

    def test_a_new_note_carries_what_was_given(self):
        first = self.add("A note", "--keywords", " fog, lamp ", "--category", "1", "Sea/Coast", "--category", "3", "X",
                         "--color", "10,20,30")
        note = self.json("note", first)
        self.assertEqual([note[key] for key in ("keyWords", "categories", "borderColor", "sources")],
                         ["fog, lamp", [["Sea", "Coast"], [], ["X"]], [10, 20, 30], []])
        self.assertEqual(note["file"], f"DAY{note['dateCreated'][5:7]}{note['dateCreated'][8:10]}"
                                       f"{note['dateCreated'][:4]}.dat")
        second = self.add("Another", "--category", "1", "Sea/Deep")
        self.assertGreater(second, first)
        roots = {root["name"]: root for root in self.json("categories")}
        self.assertEqual([child["name"] for child in roots["Sea"]["children"]], ["Coast", "Deep"])
        self.assertEqual(roots["Sea"]["notes1"], 2)
        odd = self.add("Odd", "--keywords", "a,,b")
        self.assertEqual([word["name"] for word in self.json("keywords") if odd in word["notes"]], ["", "a", "b"])
        # A category takes its set and its path alone, wherever the files stand.
        files = [self.file(name, name) for name in ("a.txt", "b.txt")]
        made = self.json("add", "--category", "1", "Sea", files[0], "--category", "2", "Sky", files[1])
        self.assertEqual([self.json("note", id)["categories"] for id in made], 2 * [[["Sea"], ["Sky"], []]])
        self.assertEqual(self.json("check"), [])

    def test_a_note_counts_as_unassigned_if_it_is_so_in_each_set_that_is_asked_for(self):
        for sets in ((), (), (1,), (1, 2), (1, 2, 3)):
            self.add("A note", *(word for number in sets for word in ("--category", str(number), "Sea")))
        for chosen, unassigned, sea in (("", 2, 3), ("--set 1", 2, 3), ("--set 2", 3, 2), ("--set 3", 4, 1)):
            with self.subTest(set=chosen):
                shown = self.run_cli("categories", *chosen.split()).stdout.decode().splitlines()
                self.assertCountEqual(shown, [f"<UNASSIGNED>  ({unassigned})", f"Sea  ({sea})"])

    def test_only_a_note_that_is_saved_makes_its_categories(self):
        note = self.add("One", "--category", "1", "Sea/Coast")
        before = self.json("categories")
        big = self.file("big.txt", "x" * 600000)
        self.run_cli("add", big, "--category", "1", "Sea/Deep", "--category", "2", "Sky", status=1)
        self.run_cli("edit", note, "--rtf", big, "--category", "3", "Sky", status=1)
        self.assertEqual(self.json("categories"), before)
        self.run_cli("edit", note, "--category", "1", "sea / coast", "--category", "2", "Sea/Deep", "--category", "3",
                     "Sea/Deep/Trench")
        self.assertEqual(self.json("note", note)["categories"],
                         [["Sea", "Coast"], ["Sea", "Deep"], ["Sea", "Deep", "Trench"]])
        [sea] = [root for root in self.json("categories") if root["name"] == "Sea"]
        self.assertEqual([child["name"] for child in sea["children"]], ["Coast", "Deep"])
        for number, name in (("1", "<UNASSIGNED>"), ("2", "<unassigned>")):
            self.run_cli("edit", note, "--category", number, name)
            self.assertEqual(self.json("note", note)["categories"][int(number) - 1], [])

    def test_a_category_of_exactly_the_name_goes_before_one_that_differs_in_case(self):
        def node(ident, name, *children):
            return number(ident) + number(-1) + text(name) + number(len(children)) + b"".join(children)

        note = self.add()
        (self.book / "Categories.dat").write_bytes(version(11.56) + number(2) + node(5, "Alpha") +
                                                   node(6, "alpha", node(8, "sub"), node(9, "Sub"), node(10, "Low")))
        for path, names in [("alpha/Sub", ["alpha", "Sub"]), ("alpha/SUB", ["alpha", "sub"]),
                            ("alpha/low", ["alpha", "Low"]), ("Alpha", ["Alpha"]), ("ALPHA", ["Alpha"])]:
            with self.subTest(path=path):
                self.run_cli("edit", note, "--category", "1", path)
                self.assertEqual(self.json("note", note)["categories"][0], names)
        roots = {root["name"]: [child["id"] for child in root["children"]] for root in self.json("categories")}
        self.assertEqual([roots["Alpha"], roots["alpha"]], [[], [8, 9, 10]])

    def test_each_file_of_an_add_stands_for_itself(self):
        first = self.add("First")
        (self.book / "Sync.dat").write_bytes(b"2112, 77, Online, Main, 01/01/2020 12:00:00 AM, {G},\n")
        files = [self.file(f"{place}.txt", words) for place, words in enumerate(("One", "", "Two"))]
        made = self.run_cli("add", files[0], self.top / "none.txt", files[1], files[2], "--category", "1", "Sea",
                            status=3)
        ids = list(map(int, made.stdout.split()))
        self.assertEqual([self.json("note", ident)["plainText"] for ident in ids], ["One", "Two"])
        self.assertTrue(first < ids[0] < ids[1])
        self.assertEqual([line["id"] for line in self.json("notes")], [first, *ids])
        self.assertEqual([record["NoteId"] for record in self.json("synclog")["records"]], ids)
        self.assertEqual([root["notes1"] for root in self.json("categories") if root["name"] == "Sea"], [2])
        for said in ("none.txt", f"no note was made from {files[1]}"):
            self.assertIn(said, made.stderr.decode())
        self.assertEqual(self.json("check"), [])
        # More than is held at a time, and notes that can't be written.
        large = [self.file(f"large{place}.txt", f"{place} " + "x" * 490000) for place in range(40)]
        added = self.json("add", *large)
        self.assertEqual(len(set(added)), 40)
        self.assertEqual([self.json("note", ident)["plainText"].split()[0] for ident in (added[0], added[-1])], ["0", "39"])
        day, = (self.book / "Notes").iterdir()
        day.unlink()
        day.mkdir()
        refused = self.run_cli("add", files[0], files[2], status=3)
        self.assertEqual(refused.stdout, b"")
        for file in (files[0], files[2]):
            self.assertIn(f"no note was made from {file}", refused.stderr.decode())

    def test_what_cannot_be_done_is_said_and_changes_nothing(self):
        note = self.add()
        big = self.file("big.txt", "x" * 600000)
        before = self.run_cli("--json", "notes").stdout
        for args, status, words in [
                (["add", self.top / "none.txt"], 3, b"none.txt"),
                (["add", self.file("empty.txt", "")], 1, b"Note must contain some text."),
                (["add", big], 1, b"600"),
                (["add", big, "--color", "1,2"], 2, b"--color"),
                (["edit", note, "--source", "77"], 1, b"no source 77"),
                (["edit", note, "--category", "4", "A"], 2, b"set from 1 to 3"),
                (["edit", note, "--category", "1", "A", "--category", "2", "B", "--category", "1", "A"], 2, b"for set 1"),
                (["edit", note, "--category", "1", "/".join("a" * 1001)], 2, b"at most 1000"),
                (["edit", note, "--link", ""], 2, b"--link"),
                (["edit", note, "--attach", big, "--link", "https://a.example/", "--link", " \t"], 2, b"--link"),
                (["edit", 999], 1, b"no note 999"),
                (["edit", note, "--rtf", self.top / "none.rtf"], 3, b"none.rtf"),
                (["edit", note, "--attach", self.top / "none.pdf"], 3, b"File is already attached, or it is an invalid"),
                (["delete", 999], 1, b"no note 999"),
                (["source", "add", "--file", self.file("s.json", "[]")], 3, b"s.json"),
                *((["source", "add", "--file", self.file(f"s{number}.json", json.dumps(content))], 3, words)
                  for number, (content, words) in enumerate([
                      ({"sources": {}}, b"is not of the form"),
                      ({"sources": [{"FieldTexts": ["A Book"]}, 5]}, b'element 2 of "sources" is not an object'),
                      ({"authors": ["Lamp"]}, b'element 1 of "authors" is not an object'),
                      ({"sources": [{"FieldTexts": ["A Book"]}, {"FieldTexts": [" ", "x"]}]},
                       b"source 2: Source must have a title."),
                      *(({"sources": [{"FieldTexts": ["A Book"]}, {"FieldTexts": ["Other"], **wrong}]}, words)
                        for wrong, words in [({"SourceType": 0}, b"source 2: SourceType is 0; it must be 1 to 7"),
                                             ({"SourceType": 8}, b"SourceType is 8"),
                                             ({"SourceType": 1001}, b"a CustomTypeCopy that has a GUID"),
                                             ({"FormatStyle": 14}, b"FormatStyle is 14; it must be 0 to 13"),
                                             ({"FormatStyle": -1}, b"FormatStyle is -1")]),
                      ({"sources": [{"FieldTexts": ["A Book", "x" * 500001]}]},
                       b"source 1: the field FieldTexts holds a text of 500001 bytes, over the limit of 500000"),
                      ({"authors": [{"last": "Lamp"}, {"last": "x" * 500001}],
                        "sources": [{"FieldTexts": ["A Book"]}]}, b"author 2: the field last"),
                      *(({"authors": [{"last": "Lamp"}], "sources": [
                          {"FieldTexts": ["A Book"]}, {"FieldTexts": ["Other"], "HasDate": True, "SourceDate": date}]},
                         b"source 2: HasDate is true, but SourceDate isn't a date that exists")
                        for date in ("2011-02-30T00:00:00", "2011-01-01T24:00:00", "2011", "invalid", "", None, 2011))
                  ]))]:
            with self.subTest(args=args):
                self.assertIn(words, self.run_cli(*args, status=status).stderr)
                self.assertEqual(self.run_cli("--json", "notes").stdout, before)
        self.assertEqual([self.json("sources"), self.json("authors")], [[], []])
        self.assertEqual([self.json("note", note)["attachments"], *(self.book / "Attachments").iterdir()], [[]])

    def test_a_folder_of_notes_that_cannot_be_read_is_not_an_empty_notebook(self):
        note, backup, added = self.add("Kept"), self.top / "old.lbe", self.file("new.txt", "New")
        self.run_cli("backup", "--out", backup)
        notes, kept = self.book / "Notes", self.top / "kept"
        notes.rename(kept)
        notes.symlink_to(notes)
        before = (self.book / "Categories.dat").read_bytes(), backup.read_bytes()
        for args in (["notes"], ["note", note], ["search", "Kept"], ["keywords"], ["check"], ["add", added],
                     ["edit", note, "--keywords", "k"], ["delete", note], ["check", "--repair"], ["backup", "--out", backup],
                     ["export", "--out", backup]):
            said = self.run_cli(*args, status=3).stderr.decode()
            self.assertIn("could not be", said, args)
            readings = 2 if "--repair" in args else 1  # a check follows the repair
            self.assertLessEqual(said.count("The folder of the notes could not be read"), readings, args)
        self.assertEqual(((self.book / "Categories.dat").read_bytes(), backup.read_bytes()), before)
        notes.unlink()
        kept.rename(notes)
        self.assertEqual(self.run_cli("note", note, "--text").stdout.strip(), b"Kept")

    def test_without_its_settings_nothing_is_written(self):
        note, settings = self.add("Kept"), self.data / "settings.ini"
        stored = settings.read_bytes()
        before = fingerprint(self.data / "Data Files")
        settings.unlink()
        for make, words in ((settings.mkdir, b"Is a directory"), (lambda: os.mkfifo(settings), b"Not a regular file")):
            make()
            for args in (["notes"], ["add", self.file("new.txt", "New")], ["delete", note], ["check", "--repair"],
                         ["notebook", "create", "Second Book"]):
                said = self.run_cli(*args, status=3).stderr
                self.assertIn(b"settings could not be read", said, args)
                self.assertIn(words, said, args)
            settings.rmdir() if settings.is_dir() else settings.unlink()
        settings.write_bytes(stored)
        self.assertEqual(fingerprint(self.data / "Data Files"), before)
        self.data = pathlib.Path(os.fsdecode(os.fsencode(self.data) + b"\xff"))
        self.assertIn(b"UTF-8", self.run_cli("add", self.file("new.txt", "New"), status=3).stderr)
        self.assertFalse(self.data.exists())
        self.data = ""
        self.assertIn(b"--data", self.run_cli("notes", status=2).stderr)

    def test_pipes_and_devices_in_place_of_files_are_told_and_left(self):
        note = self.add("Kept", "--category", "1", "Sea")
        for path in (self.book / "Sources.dat", self.book / "Notes" / "x.dat", self.book / "Categories.dat",
                     self.data / "Data Files" / "Databases" / "Databases.dat"):
            kept = path.read_bytes() if path.exists() else None
            for make in (os.mkfifo, lambda place: place.symlink_to("/dev/zero")):
                path.unlink(missing_ok=True)
                make(path)
                kind = path.lstat().st_mode
                for args in (["check"], ["edit", note, "--keywords", "k"], ["add", self.file("new.txt", "New")]):
                    done = subprocess.run([self.cli, "--data", self.data, *map(str, args)], capture_output=True,
                                          check=False, timeout=60)
                    self.assertIn(done.returncode, (0, 1, 3), (path, args, done.stderr))
                self.assertEqual(path.lstat().st_mode, kind)
            path.unlink()
            if kept is not None:
                path.write_bytes(kept)
        self.assertEqual(self.json("note", note)["keyWords"], "k")

    def test_a_closed_standard_stream_gets_no_file_in_its_place(self):
        self.add("First")
        for closed, status in (("<&-", 0), (">&-", 3), ("2>&-", 0), ("<&- >&- 2>&-", 3)):
            subprocess.run(["sh", "-c", f'exec "$0" "$@" {closed}', self.cli, "--data", self.data, "add",
                            self.file("new.txt", closed)], check=False, timeout=60)
            for path in self.data.rglob("*"):
                self.assertFalse(path.name.endswith(".lock") and path.read_bytes(), (path, closed))
            done = subprocess.run(["sh", "-c", f'exec "$0" "$@" {closed}', self.cli, "--data", self.data, "notes"],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False, timeout=60)
            self.assertEqual(done.returncode, status, closed)
        self.assertEqual(len(self.json("notes")), 5)

    def test_a_limit_for_the_size_of_files_is_told(self):
        self.add("First")
        before = fingerprint(self.data)
        done = subprocess.run(["sh", "-c", 'ulimit -f 1; exec "$0" "$@"', self.cli, "--data", self.data, "add",
                               self.file("new.txt", "long " * 5000)], capture_output=True, check=False)
        self.assertEqual(done.returncode, 3, done.stderr)
        self.assertIn(b"File too large", done.stderr)
        self.assertEqual(fingerprint(self.book / "Notes"), {
            pathlib.Path(name).name: content for name, content in before.items() if "/Notes/" in name})

    def test_repair_removes_what_killed_writers_have_left(self):
        self.add("First")
        places = [self.data, self.data / "Data Files" / "Databases", self.book, self.book / "Notes",
                  self.book / "Attachments", self.book / "Drafts", self.book / "Drafts" / "G-1"]
        (self.book / "Drafts" / "G-1").mkdir(parents=True)
        old, new, other = ".a.dat.77-3.tmp", ".a.dat.77-4.tmp", "mine.tmp"
        for place in places:
            for name in (old, new, other):
                (place / name).write_bytes(b"x")
                if name != new:
                    os.utime(place / name, (0, 0))
        said = json.loads(self.run_cli("--json", "check", "--repair", status=1).stdout)
        mended = [one["file"] for one in said if one["kind"] == "mended"]
        self.assertEqual(sorted(mended), sorted(str(place / old) for place in places))
        for place in places:
            self.assertEqual([(place / name).exists() for name in (old, new, other)], [False, True, True], place)

    def test_an_attachment_never_takes_the_place_of_a_file(self):
        note = self.add("One")
        attachments = self.book / "Attachments"
        self.run_cli("edit", note, "--attach", self.file("a.txt", "first"))
        # A number beyond the highest isn't counted; the name that would come next is taken.
        (attachments / "0000002.txt").symlink_to("gone")
        self.run_cli("edit", note, "--attach", self.file("b.txt", "second"))
        self.assertEqual(sorted(one.read_text() for one in attachments.iterdir() if one.exists()), ["first", "second"])

    def test_a_list_of_sources_that_was_not_read_whole_costs_no_note_its_sources(self):
        titles = self.file("s.json", json.dumps({"sources": [{"FieldTexts": [title]} for title in "ABC"]}))
        one, two, three = self.json("source", "add", "--file", titles)
        notes = {}
        for sources in ([two], [one, three], [two, one]):
            notes[self.add("Text", *(part for source in sources for part in ("--source", source)))] = sources
        stored = self.book / "Sources.dat"
        whole = stored.read_bytes()
        guid = self.json("sources")[1]["SourceGUID"].encode()
        cut = whole[:whole.index(guid) - 16]
        kept = {note: [self.json("note", note)[key] for key in ("sources", "file")] for note in notes}

        stored.unlink()
        stored.mkdir()
        for note in notes:
            self.run_cli("edit", note, "--keywords", "unread", status=3)
        stored.rmdir()
        stored.write_bytes(cut)
        for words in ("unread", "cut"):
            for note, before in kept.items():
                found = self.json("note", note)
                self.assertEqual([[found[key] for key in ("sources", "file")], found["keyWords"]], [before, words])
                self.run_cli("edit", note, "--keywords", "cut")
        first = next(iter(notes))
        self.run_cli("edit", first, "--source", one)
        self.assertEqual(self.json("note", first)["sources"], [one, two])
        self.run_cli("edit", first, "--no-sources")
        self.assertEqual(self.json("note", first)["sources"], [])
        self.assertEqual(self.json("source", "add", "--file", titles, status=3), [three + 1, three + 2, three + 3])
        stored.write_bytes(whole)
        self.assertEqual(self.json("check"), [])

    def test_a_bibliography_takes_no_place_of_the_data_folder_but_its_own(self):
        self.json("source", "add", "--file", self.file("s.json", json.dumps({"sources": [{"FieldTexts": ["A Book"]}]})))
        files = self.data / "Data Files"
        (self.top / "link").symlink_to(self.book / "Notes")
        (self.top / "lead.dat").symlink_to(self.book / "Sources.dat")
        (self.book / "Notes" / "away.dat").symlink_to(self.top / "away.dat")
        before = fingerprint(self.data)
        for out in (self.book / "Notes" / "new.dat", self.top / "link" / "new.dat", files / "Events.dat",
                    self.top / "lead.dat", self.book / "Notes" / "away.dat", self.book / "Bib.dat", files / "new.DAT",
                    self.book / "Attachments" / "0000001.txt", files / "Databases" / "new.html"):
            self.assertIn(b"belongs to the data folder", self.run_cli("bibliography", "--out", out, status=2).stderr)
            self.assertEqual(fingerprint(self.data), before, out)
        for out in (files / "Bib.dat", self.top / "out.dat", self.data / "out.dat"):
            self.run_cli("bibliography", "--out", out)
            self.assertTrue(out.exists(), out)

    def test_a_line_joins_texts_of_both_forms(self):
        fields = [{"kind": 2, "name": "Title"}]
        self.json("source", "add", "--file", self.file("s.json", json.dumps({"sources": [
            {"FieldTexts": ["\u0410\u0444"], "SourceType": 1001,
             "CustomTypeCopy": {"GUID": "{T}", "name": "R\u00e9sum\u00e9", "fields": fields}}]})))
        line = self.run_cli("sources").stdout.decode()
        self.assertIn("R\u00e9sum\u00e9  \u0410\u0444", line)

    def test_authors_of_a_file_come_in_its_order_with_or_without_sources(self):
        file = self.file("s.json", json.dumps({
            "authors": [{"AuthorID": 8, "last": "Beam"}, {"AuthorID": 5, "first": "Ada", "last": "Lamp"},
                        {"last": "Alone"}, {"last": "Other"}, {"AuthorID": 9, "last": "Lamp", "first": "Ada"},
                        {"AuthorID": 6, "first": " ", "middle": "Q"}],
            "sources": [{"AuthorIDs": [5, 8, 9, 77], "FieldTexts": ["A Book"]}]}))
        self.json("source", "add", "--file", file)
        names = {author["AuthorID"]: author["last"] for author in self.json("authors")}
        self.assertEqual(list(names.values()), ["Beam", "Lamp", "Alone", "Other"])
        self.assertEqual([names[number] for number in self.json("sources")[0]["AuthorIDs"]], ["Lamp", "Beam", "Lamp"])
        self.json("source", "add", "--file", self.file("more.json", json.dumps({"authors": [{"last": "Alone"}]})))
        self.assertEqual(len(self.json("authors")), 4)

    def test_an_author_without_a_name_is_told_and_comes_with_no_source(self):
        for name in ({}, {"first": " ", "last": ""}, {"middle": "Q", "last": "\t"}):
            with self.subTest(name=name):
                told = self.run_cli("source", "add", "--file", self.file("s.json", json.dumps({
                    "authors": [{"AuthorID": 2, "last": "Lamp"}, {"AuthorID": 1, **name}],
                    "sources": [{"AuthorIDs": [1, 2], "FieldTexts": ["A Book"]}]}))).stderr
                self.assertIn(b"source 1 loses author 1, which has no name", told)
                self.assertIn(b"author 2 is left out", told)
                author, = self.json("authors")
                self.assertEqual(author["last"], "Lamp")
                self.assertEqual(self.json("sources")[-1]["AuthorIDs"], [author["AuthorID"]])

    def test_what_a_source_cannot_take_is_told_and_all_else_of_it_is_added(self):
        rest, slots = [""] * 14, ["", *"cdefghijklmn"]
        typed = {"GUID": "{T}", "name": "Map", "fields": [{"name": "Scale"}]}
        for given, stored, *told in [
                ({"FieldTexts": ["T", "P", "", 12, "4-5", -3, 1.5]},
                 {"FieldTexts": ["T", "P", "", "12", "4-5", "-3", "1.5", *rest[6:]]}),
                ({"FieldTexts": ["T", *rest, "", ""]}, {"FieldTexts": ["T", *rest]}),
                ({"DateText": 1999, "YearOnly": True, "HasDate": 1},
                 {"DateText": "1999", "YearOnly": 1, "HasDate": True}),
                ({"HasDate": True, "SourceDate": "2012-02-29"}, {"HasDate": True, "SourceDate": "2012-02-29T00:00:00"}),
                ({"FieldTexts": ["T", "a", *slots, "", "p", 7]}, {"FieldTexts": ["T", "a", *slots]},
                 'element 17 of "FieldTexts" is left out: only 15', 'element 18 of "FieldTexts" is left out: only 15'),
                ({"FieldTexts": ["T", ["P"], False, "4"]}, {"FieldTexts": ["T", "", "", "4", *rest[3:]]},
                 'element 2 of "FieldTexts"', 'element 3 of "FieldTexts"'),
                ({"SourceType": "Book", "DateText": "May", "IndentSpaces": 4},
                 {"SourceType": 1, "DateText": "May", "IndentSpaces": 4},
                 '"SourceType" is left out: it must be a number'),
                ({"AuthorIDs": ["1", 1, None], "DateText": {}}, {"AuthorIDs": ["Lamp"], "DateText": ""},
                 'element 1 of "AuthorIDs"', 'element 3 of "AuthorIDs"', '"DateText" is left out: it must be a text'),
                ({"AuthorIDs": [1.5, 1.0, 2 ** 32 + 1, -2 ** 31 - 1, 2 ** 64 + 1]}, {"AuthorIDs": ["Lamp"]},
                 *(f'element {at} of "AuthorIDs" is left out: it must be a whole number from -2147483648 to 2147483647'
                   for at in (1, 3, 4, 5))),
                ({"AuthorIDs": 1, "HasDate": "yes"}, {"AuthorIDs": [], "HasDate": False},
                 '"AuthorIDs" is left out: it must be a list', '"HasDate" is left out: it must be true or false'),
                ({"IndentSpaces": 2 * 10 ** 9, "AuthorsBeforeEtAl": 0, "YearOnly": 2112, "UseDateText": -1, "FormatStyle": 13},
                 {"IndentSpaces": 10, "AuthorsBeforeEtAl": 1, "YearOnly": 0, "UseDateText": 0, "FormatStyle": 13},
                 "IndentSpaces is 2000000000 and becomes 10", "AuthorsBeforeEtAl is 0 and becomes 1",
                 "YearOnly is 2112 and becomes 0", "UseDateText is -1 and becomes 0"),
                ({"SourceDate": "2011-02-30", "DateText": "May"}, {"HasDate": False, "DateText": "May"},
                 '"SourceDate" is left out: it must be a date that exists'),
                ({"CustomTypeCopy": "Map", "AuthorIDs": [1]}, {"AuthorIDs": ["Lamp"]}, '"CustomTypeCopy" is left out'),
                ({"SourceType": 1001, "CustomTypeCopy": {**typed, "fields": [5, *typed["fields"]]}}, {},
                 'element 1 of "fields" is left out: it must be an object'),
                ({"SourceType": 1001, "CustomTypeCopy": {**typed, "fields": [{"name": "Scale", "kind": "x"}]}}, {},
                 'element 1 of "fields": "kind" is left out')]:
            with self.subTest(given=given):
                file = self.file("s.json", json.dumps({"authors": [{"AuthorID": 1, "last": "Lamp"}], "sources": [
                    {"FieldTexts": ["First"]}, {"FieldTexts": ["T"], **given}]}))
                done = self.run_cli("--json", "source", "add", "--file", file, status=3 if told else 0)
                source = next(one for one in self.json("sources") if one["SourceID"] == json.loads(done.stdout)[1])
                names = {author["AuthorID"]: author["last"] for author in self.json("authors")}
                source["AuthorIDs"] = [names[author] for author in source["AuthorIDs"]]
                self.assertEqual({key: source[key] for key in stored}, stored)
                if "SourceType" in given and "CustomTypeCopy" in given:
                    fields = source["CustomTypeCopy"]["fields"]
                    self.assertEqual([[field[key] for key in ("name", "kind")] for field in fields], [["Scale", 0]])
                lines = done.stderr.decode().splitlines()
                self.assertEqual(len(lines), len(told), lines)
                for line, words in zip(lines, told):
                    self.assertIn("s.json: source 2", line)
                    self.assertIn(words, line)

    def test_texts_are_trimmed_as_the_source_editor_trims_them(self):
        author = {"first": "Ann", "middle": "Q", "last": "Lee"}
        typed = {"GUID": "{T}", "name": "Map", "fields": [{"kind": 2, "name": "Title"}, {"name": " Scale "}]}
        typed["fields"][1]["value"] = "\t1:500 "
        for blanks in ("", " ", "\n \t"):
            names = {key: blanks + name + blanks for key, name in author.items()}
            self.json("source", "add", "--file", self.file("s.json", json.dumps({
                "authors": [{"AuthorID": 1, **names}],
                "sources": [{"AuthorIDs": [1], "FieldTexts": [" A Title ", "\tPress\n", "", " a  b "],
                             "DateText": blanks + "May" + blanks, "SourceType": 1001, "CustomTypeCopy": typed}]})))
        self.assertEqual([{key: one[key] for key in author} for one in self.json("authors")], [author])
        for source in self.json("sources"):
            self.assertEqual([source["FieldTexts"][:4], source["DateText"]], [["A Title", "Press", "", "a  b"], "May"])
            self.assertEqual([source["CustomTypeCopy"]["fields"][1][key] for key in ("name", "value")],
                             [" Scale ", "1:500"])

    def test_a_dump_gives_the_spans_of_a_bibliography_in_characters(self):
        titles = ["Plain", "Caf\u00e9", "\u706f\u53f0 \u706f", "\u706f\u53f0"]
        self.json("source", "add", "--file", self.file("s.json", json.dumps({
            "authors": [{"AuthorID": 1, "first": "Zo\u00eb", "last": "\u041c\u0430\u044f\u043a"}],
            "sources": [{"AuthorIDs": [1], "FieldTexts": [title]} for title in titles]})))
        out = self.top / "Bib.dat"
        self.run_cli("bibliography", "--unsorted", "--out", out)
        records, cited = self.json("dump", out)["records"], self.json("cite")
        spans = [[list(span) for span in zip(*(record[key] for key in ("SpanKinds", "SpanStarts", "SpanEnds")))]
                 for record in records]
        self.assertEqual(spans, [cite["spans"] for cite in cited])
        self.assertEqual([[record["FormattedText"][start:end + 1] for _, start, end in own]
                          for record, own in zip(records, spans)], [[title] for title in titles])
        # Positions outside of the text, as damage leaves them, stay as far outside.
        first = records[-2]
        size = len(first["FormattedText"])
        beyond = len(first["FormattedText"].encode()) + 5
        whole = out.read_bytes()
        end = whole.rindex(b"%016d" % 1, 0, whole.index(records[-1]["SourceGUID"].encode())) + 16
        for start, shown in ((beyond, size + 5), (-3, -3), (2_147_483_647, 2_147_483_647 - beyond + size + 5)):
            for key, at in (("SpanEnds", end), ("SpanStarts", end - 32)):
                out.write_bytes(whole[:at] + b"%016d" % start + whole[at + 16:])
                self.assertEqual(self.json("dump", out)["records"][-2][key], [shown], (key, start))

    def test_an_edit_changes_what_it_names_and_moves_the_note_with_its_first_source(self):
        sources = self.file("s.json", json.dumps({
            "authors": [{"AuthorID": 5, "first": "Ada", "last": "Lamp"}],
            "sources": [{"SourceID": 9, "AuthorIDs": [5], "FieldTexts": ["A Book", *"abcdefghijklmn"]},
                        {"FieldTexts": ["Other"]}]}))
        one, two = self.json("source", "add", "--file", sources)
        self.assertEqual([self.json("authors")[0]["last"], len(self.json("sources"))], ["Lamp", 2])
        note = self.add("Text", "--keywords", "a")
        stored = self.json("note", note)
        self.assertEqual(len(self.json("sources")[0]["FieldTexts"]), 15)
        self.assertEqual(self.json("edit", note, "--source", one, "--source", two), {"id": note})
        moved = self.json("note", note)
        self.assertEqual([moved["sources"], moved["file"]], [[one, two], f"SRC{one:010d}.dat"])
        self.assertEqual([moved[key] for key in ("rtfText", "keyWords", "guid", "dateCreated")],
                         [stored[key] for key in ("rtfText", "keyWords", "guid", "dateCreated")])
        self.run_cli("edit", note, "--source", two)
        self.assertEqual(self.json("note", note)["file"], f"SRC{two:010d}.dat")
        self.run_cli("edit", note, "--no-sources", "--rtf", self.file("n.txt", "New"), "--keywords", "")
        last = self.json("note", note)
        self.assertEqual([last["file"], last["plainText"], last["keyWords"]], [stored["file"], "New", ""])
        self.assertEqual([line["id"] for line in self.json("notes")], [note])
        self.assertEqual(self.json("check"), [])

    def test_attachments_are_copied_in_and_go_with_the_note(self):
        note, other = self.add(), self.add("Other")
        pdf = self.file("Scan.PDF", b"%PDF")
        self.run_cli("edit", note, "--attach", pdf, "--attach", self.file("bare", "x"), "--link", "https://a.example/")
        self.run_cli("edit", other, "--attach", pdf)
        files = self.json("note", note)["attachments"]
        self.assertEqual([(one["title"], one["storedFile"], one["sourceFile"], one["type"]) for one in files],
                         [("Scan.PDF", "0000001.PDF", "", 4), ("bare", "0000002.", "", 10),
                          ("https://a.example/", "", "https://a.example/", 12)])
        self.assertEqual(sorted(path.name for path in (self.book / "Attachments").iterdir()),
                         ["0000001.PDF", "0000002.", "0000003.PDF"])
        self.assertEqual(self.json("delete", note), {"deleted": [note]})
        self.assertEqual([path.name for path in (self.book / "Attachments").iterdir()], ["0000003.PDF"])
        self.assertEqual([line["id"] for line in self.json("notes")], [other])
        self.assertEqual(self.json("check"), [])

    def test_a_note_that_stands_twice_in_its_file_is_deleted_once(self):
        note = self.add()
        day = next((self.book / "Notes").iterdir())
        whole = day.read_bytes()
        day.write_bytes(whole[:20] + b"%016d" % 2 + whole[36:] * 2)
        self.assertEqual(self.json("delete", note), {"deleted": [note]})
        self.assertEqual(self.json("notes"), [])

    def test_repair_mends_without_losing_anything(self):
        notes = [self.add(f"Note {number}", "--category", "1", "Sea/Coast") for number in range(3)]
        day = next((self.book / "Notes").iterdir())
        whole = day.read_bytes()
        (self.book / "Notes" / "DAY01011999.dat").write_bytes(whole)
        (self.book / "Categories.dat").write_bytes(b"%020.9f%016d" % (11.56, 0))
        day.write_bytes(whole[:-150])
        self.assertEqual(self.run_cli("check", status=1).stderr, b"")
        mended = self.run_cli("check", "--repair", status=0).stdout.decode()
        self.assertIn(f"{day}: mended:", mended)
        self.assertEqual(sorted(line["id"] for line in self.json("notes")), notes)
        self.assertEqual([line["categories"][0] for line in self.json("notes")], [["Sea", "Coast"]] * 3)
        kept = [path.read_bytes() for path in (self.book / "Notes").iterdir() if path.name.endswith(".kept")]
        self.assertIn(whole[:-150], kept)

    def test_an_emptied_value_is_none_of_the_words_behind_it(self):
        note = self.add("Words", "--keywords", "wind")
        self.run_cli("edit", note, "--keywords=", "--color", "1,2,3")
        self.assertEqual(self.json("note", note)["keyWords"], "")
        self.run_cli("backup", "--out=", "--all", status=2)

    def test_a_second_writer_waits_its_turn(self):
        note = self.add()
        lock = next(path for path in self.data.rglob("*") if "lock" in path.name.lower())
        with open(lock, "r+b") as held:
            fcntl.flock(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
            for args in (["edit", note, "--keywords", "x"], ["delete", note], ["check", "--repair"],
                         ["event", "add", "--label", "A", "--start", "2049-01-01"]):
                self.assertIn(b"another process holds the data folder", self.run_cli(*args, status=4).stderr)
        self.assertEqual(self.json("note", note)["keyWords"], "")


if __name__ == "__main__":
    main_fresh(__doc__)
