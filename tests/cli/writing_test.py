#!/usr/bin/env python3
"""The commands that write notes and sources, from end to end on a fresh data folder.

Usage: writing_test.py LOREBINDER_CLI [unittest arguments]"""
import fcntl
import json

from cli_world import FreshTest, main_fresh


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
                ("f.txt", b"cut\x1aby\x00nothing", "cutbynothing"),
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
        # A category takes its set and its path alone, wherever the files stand.
        files = [self.file(name, name) for name in ("a.txt", "b.txt")]
        made = self.json("add", "--category", "1", "Sea", files[0], "--category", "2", "Sky", files[1])
        self.assertEqual([self.json("note", id)["categories"] for id in made], 2 * [[["Sea"], ["Sky"], []]])
        self.assertEqual(self.json("check"), [])

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
                (["edit", 999], 1, b"no note 999"),
                (["edit", note, "--rtf", self.top / "none.rtf"], 3, b"none.rtf"),
                (["edit", note, "--attach", self.top / "none.pdf"], 3, b"File is already attached, or it is an invalid"),
                (["delete", 999], 1, b"no note 999"),
                (["source", "add", "--file", self.file("s.json", "[]")], 3, b"s.json")]:
            with self.subTest(args=args):
                self.assertIn(words, self.run_cli(*args, status=status).stderr)
                self.assertEqual(self.run_cli("--json", "notes").stdout, before)

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

    def test_an_attachment_never_takes_the_place_of_a_file(self):
        note = self.add("One")
        attachments = self.book / "Attachments"
        self.run_cli("edit", note, "--attach", self.file("a.txt", "first"))
        # A number beyond the highest isn't counted; the name that would come next is taken.
        (attachments / "0000002.txt").symlink_to("gone")
        self.run_cli("edit", note, "--attach", self.file("b.txt", "second"))
        self.assertEqual(sorted(one.read_text() for one in attachments.iterdir() if one.exists()), ["first", "second"])

    def test_a_damaged_list_is_kept_beside_before_sources_are_added(self):
        file = self.file("s.json", json.dumps({"sources": [{"FieldTexts": ["A Book"]}, {"FieldTexts": ["Other"]}]}))
        self.json("source", "add", "--file", file)
        stored = self.book / "Sources.dat"
        damaged = stored.read_bytes()[:-40]
        stored.write_bytes(damaged)
        self.json("source", "add", "--file", file)
        self.assertEqual(stored.with_name("Sources.dat.kept").read_bytes(), damaged)
        self.assertGreaterEqual(len(self.json("sources")), 3)

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

    def test_an_edit_changes_what_it_names_and_moves_the_note_with_its_first_source(self):
        sources = self.file("s.json", json.dumps({
            "authors": [{"AuthorID": 5, "first": "Ada", "last": "Lamp"}],
            "sources": [{"SourceID": 9, "AuthorIDs": [5], "FieldTexts": ["A Book"]}, {"FieldTexts": ["Other"]}]}))
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

    def test_a_second_writer_waits_its_turn(self):
        note = self.add()
        lock = next(path for path in self.data.rglob("*") if "lock" in path.name.lower())
        with open(lock, "r+b") as held:
            fcntl.flock(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
            for args in (["edit", note, "--keywords", "x"], ["delete", note], ["check", "--repair"]):
                self.assertIn(b"another process holds the data folder", self.run_cli(*args, status=4).stderr)
        self.assertEqual(self.json("note", note)["keyWords"], "")


if __name__ == "__main__":
    main_fresh(__doc__)
