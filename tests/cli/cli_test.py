#!/usr/bin/env python3
"""The reading commands of the command line from end to end, on the sample NoteBook and on files made by hand.

Usage: cli_test.py LOREBINDER_CLI [unittest arguments]"""
import fcntl
import json
import pathlib
import re
import shutil
import subprocess

from cli_world import WALKS, CliTest, fingerprint, main, number, old_note, version

COMPLETION = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "linux" / "completions" / "lorebinder-cli"

KEYS = {
    "author": "AuthorID first middle last reserved1 reserved2",
    "type": "GUID name date fields",
    "source": "SourceGUID SourceID AuthorText FormatStyle SourceType IndentSpaces AuthorsBeforeEtAl AuthorIDs "
              "FieldTexts YearOnly HasDate SourceDate ModifiedDate UseDateText DateText CustomTypeCopy",
    "event": "BarColor AllDay Recurring RecurrenceType Start End RecurrenceStart RecurrenceEnd DailyPattern "
             "WeeklyPattern MonthlyPattern YearlyPattern EventId SeriesId Label Description",
    "reminder": "Type PriorMinutes ServerId ProviderIndex ServerDone ServerSendTime SendTime EventStart ReminderId "
                "SendTo EmailAddress PhoneNumber EventId Message EventLabel EventDescription",
    "note": "id guid dateCreated dateEdited keyWords borderColor sources categories",
    "body": "plainText rtfText spellCheck sourceInfo attachments reserved",
}
DATE = re.compile(r"^(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d|invalid)$")


class Shapes(CliTest):
    def assert_keys(self, record, *kinds):
        wanted = " ".join(KEYS.get(kind, kind) for kind in kinds).split()
        self.assertLessEqual(set(wanted), set(record))
        for key, value in record.items():
            if key in ("dateCreated", "dateEdited", "SourceDate", "ModifiedDate", "Start", "End", "SendTime", "date"):
                self.assertRegex(value, DATE, key)
            if key in ("HasDate", "ServerDone", "show", "spellCheck", "bold", "underline", "italics"):
                self.assertIsInstance(value, bool, key)

    def test_lists_of_records_have_the_keys_of_the_contract(self):
        for args, kinds, count in [
                (["notebooks"], ["id guid name folder created notes"], 2),
                (["notes"], ["note", "file"], self.world.sample["notes"]),
                (["authors"], ["author"], self.world.sample["authors"]),
                (["sources"], ["source"], self.world.sample["sources"]),
                (["sourcetypes"], ["type"], self.world.sample["types"]),
                (["cite"], ["SourceID FormattedText AuthorText spans"], self.world.sample["sources"]),
                (["cite", "--width", "50"], ["wrapped wrappedSpans spans"], self.world.sample["sources"]),
                (["categories"], ["id parentID name notes1 notes2 notes3 children"], None),
                (["categories", "--set", "2"], ["id parentID name notes2 children"], None),
                (["keywords"], ["name notes"], None),
                (["colors"], ["id color notes"], None),
                (["events"], ["event"], self.world.sample["events"]),
                (["reminders"], ["reminder"], self.world.sample["reminders"]),
                (["expand", self.world.file("Events.dat")], ["EventId SeriesId occurrences"], None)]:
            with self.subTest(args=args):
                records = self.json(*args)
                self.assertTrue(records)
                if count is not None:
                    self.assertEqual(len(records), count)
                for record in records:
                    self.assert_keys(record, *kinds)

    def test_documents_have_the_keys_of_the_contract(self):
        notes = self.world.notes
        for note in notes:
            self.assert_keys(note, "note", "body", "file")
            self.assertEqual(len(note["categories"]), 3)
        attachments = [attachment for note in notes for attachment in note["attachments"]]
        self.assertEqual(len(attachments), self.world.sample["attachments"])
        for attachment in attachments:
            self.assert_keys(attachment, "shift zoom title storedFile sourceFile type show")
        self.assertEqual(self.json("synclog"), {"head": None, "records": []})
        self.assertEqual(self.json("lastview"), [note["id"] for note in sorted(notes, key=lambda n: n["id"])])
        for kind in self.json("sourcetypes"):
            for field in kind["fields"]:
                self.assert_keys(field, "kind end name value underline italics bold")

    def test_text_and_runs_hold_the_same_characters(self):
        file = self.world.top / "note.rtf"
        for note in self.world.notes:
            file.write_text(note["rtfText"], encoding="ascii", newline="")
            printed = self.world.run("--json", "text", file).stdout
            document = json.loads(printed)
            self.assertEqual(printed, json.dumps(document, ensure_ascii=False, separators=(",", ":")) + "\n")
            runs = "".join(run["text"] for p in document["paragraphs"] for run in p["runs"])
            self.assertEqual(runs.rstrip("\n"), document["text"].rstrip("\n"))
            self.assertEqual(document["text"], note["plainText"].replace("\r\n", "\n"))

    def test_bare_texts_are_those_of_the_note(self):
        note = self.world.notes[0]
        shown = self.world.run("note", str(note["id"]), "--text", encoding=None).stdout.decode()
        self.assertEqual(shown.rstrip("\n"), note["plainText"])
        rtf = self.world.run("note", str(note["id"]), "--rtf", encoding=None).stdout
        self.assertEqual(rtf.decode("ascii"), note["rtfText"])
        file = self.world.top / "bare.rtf"
        file.write_bytes(rtf)
        self.assertEqual(self.world.run("text", file).stdout.rstrip("\n"), self.json("text", file)["text"].rstrip("\n"))


class Reading(CliTest):
    def test_changes_no_byte_of_the_data_folder(self):
        dat = [self.world.file("Events.dat"), self.world.main("Sources.dat"), *self.world.main("Notes").glob("*.dat")]
        commands = ["notebooks", "notes", "notes --sort 702", "note 1003", "note 1003 --rtf", "search lens --marked",
                    "search lens --ids 1003,1002", "authors", "sources", "sources --sorted", "sourcetypes", "cite",
                    "cite --style 9 --width 40", "categories", "keywords", "colors", "lastview", "events", "reminders",
                    "events --from 2020-01-01 --to 2030-01-01", "synclog", "check", "note 99999", "bogus"]
        before = fingerprint(self.world.data)
        for notebook in (WALKS["name"], "_LBMAIN_"):
            for command in commands:
                for form in ([], ["--json"]):
                    self.world.run("--notebook", notebook, *form, *command.split())
        for file in dat:
            self.assertTrue(self.json("dump", file)["records"], file)
        for ending in ("txt", "pdf"):
            self.world.run("bibliography", "--out", self.world.top / f"unchanged.{ending}")
        self.assertEqual(fingerprint(self.world.data), before)

    def test_opens_the_notebook_that_the_settings_name(self):
        settings = self.world.top / "other.ini"
        settings.write_text(f"[Options]\nDatabase={WALKS['guid']}\n")
        self.assertEqual(len(self.json("--settings", settings, "notes")), 2)

    def test_reads_notes_and_paths_of_the_first_versions(self):
        walks = ["--notebook", WALKS["folder"]]
        note = self.json(*walks, "note", "7")
        self.assertEqual(note["categories"], [["Coast", "South"], [], []])
        self.assertEqual(note["plainText"], "Fog on the caf\u00e9 pier")
        self.assertEqual((note["borderColor"], note["sources"], note["attachments"]), ([0, 0, 0], [], []))
        self.assertTrue(note["spellCheck"] and note["guid"])
        dump = self.json("dump", self.world.file("Databases", WALKS["folder"], "Notes", "DAY04052003.dat"))
        self.assertEqual((dump["version"], len(dump["records"])), (0.9, 2))
        self.assertEqual(dump["records"][0]["categories"][0]["children"][0]["name"], "South")
        coast = next(root for root in self.json(*walks, "categories") if root["name"] == "Coast")
        self.assertEqual((coast["notes1"], coast["children"][0]["notes1"]), (2, 1))
        self.assertEqual([r["id"] for r in self.json(*walks, "search", "caf\u00c9")["results"]], [7])

    def test_keeps_the_order_of_ids_and_takes_each_once(self):
        listed = self.json("notes", "--ids", "1005,1001,99999,1003,1001")
        self.assertEqual([n["id"] for n in listed], [1005, 1001, 1003])
        found = self.json("search", "SHOWALL", "--ids", "1005,1001", status=1)
        self.assertEqual(found["results"], [])
        cited = self.json("cite", "1013", "99999", "1011")
        self.assertEqual([c["SourceID"] for c in cited], [1013, 1011])

    def test_sorts_by_the_order_that_is_named(self):
        files = [note["file"] for note in self.json("notes")]
        self.assertEqual(files, sorted(files))
        for order, downwards in (("701", False), ("801", True)):
            dates = [note["dateCreated"] for note in self.json("notes", "--sort", order)]
            self.assertEqual(dates, sorted(dates, reverse=downwards))


class Search(CliTest):
    @classmethod
    def setUpClass(cls):
        cls.texts = {note["id"]: note["plainText"].replace("\r\n", "\n") for note in cls.world.notes}

    def found(self, term, *args):
        done = self.world.run("--json", "search", term, *args)
        document = json.loads(done.stdout)
        self.assertEqual(done.returncode, 0 if document["results"] else 1)
        return document

    def test_hits_are_the_terms_in_the_plain_text(self):
        for term in ("lens", "LIGHT", "\u03c6", "\u706f", "Dal\u00e9n", "no such words here"):
            wanted = {i: [m.start() for m in re.finditer(f"(?={re.escape(term)})", t, re.I)]
                      for i, t in self.texts.items()}
            document = self.found(term)
            results = {r["id"]: [hit[0] for hit in r["hits"]] for r in document["results"]}
            self.assertEqual(document["searchTerms"], [term])
            self.assertEqual(results, {i: starts for i, starts in wanted.items() if starts}, term)
            for result in document["results"]:
                for start, end in result["hits"]:
                    self.assertEqual(self.texts[result["id"]][start:end].lower(), term.lower())

    def test_marked_text_is_the_text_of_the_note(self):
        for result in self.found("keeper", "--marked")["results"]:
            marked = self.world.top / "marked.rtf"
            marked.write_text(result["displayRtf"], encoding="ascii", newline="")
            document = self.json("text", marked)
            self.assertEqual(document["text"], self.texts[result["id"]])
            runs = [(run["text"], "background" in run) for p in document["paragraphs"] for run in p["runs"]]
            self.assertIn("keeper", "".join(t for t, is_marked in runs if is_marked).lower())


class Citations(CliTest):
    def test_sources_of_a_file_are_cited_as_those_of_the_notebook(self):
        file = self.world.top / "sources.json"
        file.write_text(json.dumps({"authors": self.json("authors"), "sources": self.json("sources")}))
        for style in ("3", "9"):
            self.assertEqual(self.json("cite", "--file", file, "--style", style), self.json("cite", "--style", style))
        for style in ("14", "99", "-1"):
            self.expect(2, "cite", "--style", style)
        # What can't be taken is told, and the rest is cited.
        file.write_text(json.dumps({"authors": [{"AuthorID": 1, "first": None, "last": 5}],
                                    "sources": [{"SourceID": 1, "AuthorIDs": [1], "FieldTexts": ["A Title"]}]}))
        done = self.expect(3, "--json", "cite", "--file", file, says='author 1: "first" is left out: it must be a text')
        self.assertEqual([cited["FormattedText"] for cited in json.loads(done.stdout)], ["5. A Title. "])

    def test_a_number_that_is_not_whole_is_never_that_of_another_author(self):
        file = self.world.top / "authors.json"
        for one, two, cited, *told in [
                (2 ** 31 - 1, -2 ** 31, ["Ann", "Carl"]), (3.0, 4, ["Ann", "Carl"]),
                (1732809600001, 1732809600002, ["", ""], "author 1", "author 2", "source 1", "source 2"),
                (1.2, 1.7, ["", ""], "author 1", "author 2", "source 1", "source 2"),
                (1, 2 ** 64 + 1, ["Ann", ""], "author 2", "source 2"), (True, 1, ["", "Carl"], "author 1", "source 1")]:
            file.write_text(json.dumps({
                "authors": [{"AuthorID": one, "first": "Ann"}, {"AuthorID": two, "first": "Carl"}],
                "sources": [{"AuthorIDs": [author], "FieldTexts": ["A Title"]} for author in (one, two)]}))
            done = self.expect(3 if told else 0, "--json", "cite", "--file", file)
            self.assertEqual([source["AuthorText"].rstrip(".") for source in json.loads(done.stdout)], cited)
            lines = done.stderr.splitlines()
            self.assertEqual(len(lines), len(told), lines)
            for line, record in zip(lines, told):
                self.assertRegex(line, record + ': .*"AuthorIDs?" is left out: it must be a whole number')

    def test_positions_count_characters_also_behind_line_breaks(self):
        file = self.world.top / "wide.json"
        author = {"AuthorID": 1, "first": "Zo\u00eb", "last": "M\u00fcller"}
        for title, indent, spans, wrapped, moved in [
                ("\u706f\u53f0", 2, [[1, 10, 11]], "M\u00fcller\n  Z.\n  \u706f\u53f0.\n  ", [[1, 14, 15]]),
                ("\u706f", 2, [], "M\u00fcller\n  Z. \u706f.\n  ", []),
                ("\u706f  \u53f0", 0, [[1, 10, 13]], "M\u00fcller\nZ. \u706f\n\u53f0.\n", [[1, 10, 13]]),
                ("\u706f  \u53f0 \u706f", 1, [[1, 10, 15]], "M\u00fcller\n Z. \u706f\n \u53f0 \u706f.\n ", [[1, 11, 17]])]:
            source = {"SourceID": 1, "AuthorIDs": [1], "FieldTexts": [title], "IndentSpaces": indent}
            file.write_text(json.dumps({"authors": [author], "sources": [source]}))
            cited, = self.json("cite", "--file", file, "--width", "7")
            self.assertEqual(cited["AuthorText"], "M\u00fcller Z.")
            self.assertEqual(cited["FormattedText"], f"M\u00fcller Z. {title}. ")
            self.assertEqual([cited["spans"], cited["wrapped"], cited["wrappedSpans"]], [spans, wrapped, moved])

    def test_sorted_ids_are_in_the_order_of_the_citations(self):
        texts = {c["SourceID"]: c["FormattedText"].lower() for c in self.json("cite")}
        ids = self.json("sources", "--sorted")
        self.assertEqual(sorted(ids), sorted(texts))
        self.assertEqual([texts[i] for i in ids], sorted(texts.values(), key=lambda t: t.encode()))


class Dumps(CliTest):
    def test_every_record_file_of_the_folder_shows_all_its_records(self):
        files = sorted(p for p in self.world.data.rglob("*.dat"))
        counts = {"Authors.dat": "authors", "Sources.dat": "sources", "SourceTypes.dat": "types",
                  "Events.dat": "events", "Rem.dat": "reminders", "LastViewList.dat": "notes"}
        notes = []
        for file in files:
            dump = self.json("dump", file)
            old = WALKS["folder"] in file.parts
            self.assertEqual(dump["version"], None if file.name == "LastViewList.dat" else 0.9 if old else 11.56)
            if file.name in counts:
                self.assertEqual(len(dump["records"]), self.world.sample[counts[file.name]], file.name)
            if file.parent == self.world.main("Notes"):
                notes += dump["records"]
        self.assertEqual(sorted(n["id"] for n in notes), sorted(n["id"] for n in self.json("notes")))
        self.assertEqual(self.json("dump", self.world.main("Authors.dat"))["records"], self.json("authors"))
        self.assertEqual(self.json("dump", self.world.main("Sources.dat"))["records"], self.json("sources"))
        self.assertEqual(self.json("dump", self.world.file("Events.dat"))["records"], self.json("events"))


class Statuses(CliTest):
    def test_tell_how_a_command_ended(self):
        folder = self.world.top / "folder.rtf"
        folder.mkdir(exist_ok=True)
        for status, args, says in [
                (1, ["note", "99999"], "99999"), (1, ["cite", "99999"], "none of these sources"),
                (1, ["--notebook", "No Such", "notes"], "No Such"), (1, ["search", "qqqqqq"], ""),
                (1, ["dump", "/no/such/file.dat"], "No such file"),
                (1, ["bibliography", "--out", "x.txt", "99999"], "none"),
                (1, ["--notebook", WALKS["name"], "bibliography", "--out", "x.txt"], "no sources"),
                (2, [], ""), (2, ["frobnicate", "x"], 'no command "frobnicate"'), (2, ["notes", "--bogus"], "--bogus"), (2, ["note"], "ID"),
                (2, ["note", "abc"], "abc"), (2, ["notes", "--ids", "1,x"], "1,x"),
                (2, ["search", "a AND b OR c"], "one type"),
                *((2, ["events", "--to", date], "YYYY-MM-DD")
                  for date in ("yesterday", " 2024-01-02", "2024- 1-+2T 3:04", "2024-01-02T", "2024-01-02x03:04", "")),
                (2, ["bibliography"], "--out"),
                (2, ["bibliography", "--out", "x.doc"], ".odt"), (2, ["bibliography", "--out", "txt"], ".odt"),
                (2, ["bibliography", "--out", "x.txt", "--style", "14"], "--style"),
                (2, ["bibliography", "--out", self.world.main("Sources.dat")], "belongs to the data folder"),
                (3, ["text", "/no/such/file.rtf"], "No such file"), (3, ["text", folder], "folder.rtf"),
                (3, ["bibliography", "--out", "/no/such/folder/x.odt"], "No such file"),
                (3, ["bibliography", "--out", "/no/such/folder/Bib.dat"], "No such file"),
                (0, ["--help"], ""), (0, ["cite", "--help"], ""), (0, ["--version"], "")]:
            with self.subTest(args=args):
                self.expect(status, *args, says=says)

    def test_numbers_are_decimal_wherever_they_stand(self):
        note, source = str(self.world.notes[0]["id"]), str(self.json("sources")[0]["SourceID"])
        for args in (["note", "0{}"], ["note", "+{}"], ["notes", "--ids", "00{},+{}"]):
            shown = self.json(*(arg.format(note, note) for arg in args))
            self.assertEqual((shown[0] if isinstance(shown, list) else shown)["id"], int(note), args)
        self.assertEqual([c["SourceID"] for c in self.json("cite", "000" + source)], [int(source)])
        self.assertEqual(self.json("notes", "--sort", "0701"), self.json("notes", "--sort", "701"))
        self.assertEqual(self.json("cite", "--style", "010"), self.json("cite", "--style", "10"))
        self.assertEqual(self.json("categories", "--set", "03"), self.json("categories", "--set", "3"))
        event = ["event", "add", "--label", "x", "--start", "2026-01-01"]
        for place in (["note", "{}"], ["notes", "--sort", "{}"], ["notes", "--ids", "{}"], ["search", "x", "--ids", "{}"],
                      ["cite", "{}"], ["cite", "--style", "{}"], ["cite", "--width", "{}"], ["categories", "--set", "{}"],
                      ["bibliography", "--out", "x.txt", "{}"], ["bibliography", "--out", "x.txt", "--style", "{}"],
                      ["bibliography", "--out", "x.txt", "--indent", "{}"],
                      ["bibliography", "--out", "x.txt", "--et-al", "{}"], ["edit", "{}"], ["delete", "{}"],
                      ["edit", note, "--source", "{}"], ["edit", note, "--category", "{}", "Sea"],
                      ["copy", "--to", "Shore Walks", "{}"], ["export", "--out", "x.lbe", "{}"],
                      [*event, "--color", "{}"], [*event, "--popup", "{}"], [*event, "--every", "{}"]):
            for wrong in ("0x3E9", "", "1e3", "2147483648", "9" * 30, "1.0", "+-1"):
                args = [arg.format(wrong) for arg in place]
                with self.subTest(args=args):
                    self.expect(2, *args, says=f'not "{wrong}"')

    def test_an_option_without_a_text_names_nothing(self):
        self.expect(1, "--notebook", "", "notes", says='no NoteBook ""')
        self.expect(2, "--settings", "", "notes", says="--settings")
        done = subprocess.run([self.world.cli, "--data", "", "notes"], capture_output=True, encoding="utf-8", check=False)
        self.assertEqual(done.returncode, 2, done.stderr)
        self.expect(2, "--settings=", "--json", "notes", says="--settings")
        self.expect(1, "--notebook=", "--json", "notes", says='no NoteBook ""')

    def copied(self, *names):
        """A copy of the data folder, and a place of the main NoteBook in it."""
        copy = self.world.top / "copy"
        shutil.copytree(self.world.data, copy)
        self.addCleanup(shutil.rmtree, copy)
        return copy, copy / self.world.main(*names).relative_to(self.world.data)

    def without(self, name):
        """A copy with a folder in the place of a file."""
        copy, file = self.copied(name)
        file.unlink()
        file.mkdir()
        return copy

    def test_sources_as_records_need_no_authors(self):
        broken = self.without("Authors.dat")
        self.assertEqual(self.json("sources", data=broken), self.json("sources"))
        for args in (["sources"], ["sources", "--sorted", "--json"], ["cite"]):
            self.expect(3, *args, data=broken, says="Authors.dat")

    def test_a_file_name_keeps_its_backslash(self):
        odd, notes = self.copied("Notes")
        next(notes.iterdir()).rename(notes / "a\\b.dat")
        shown = [note for note in self.json("notes", data=odd) if note["file"] == "a\\b.dat"]
        self.assertTrue(shown)
        self.assertEqual(self.json("note", str(shown[0]["id"]), data=odd)["file"], "a\\b.dat")

    def test_of_notes_of_one_number_in_a_file_the_first_shows(self):
        def note(day, words):
            return old_note(7, 0, words, ["Coast"]).replace(b"2003-04-05-06-07-09", day)

        twice, _ = self.copied()
        file = twice / "Data Files" / "Databases" / WALKS["folder"] / "Notes" / "DAY04052003.dat"
        for days in ((b"2003-04-05-06-07-09", b"2013-04-05-06-07-09"), (b"2013-04-05-06-07-09", b"2003-04-05-06-07-09")):
            file.write_bytes(version(0.9) + number(2) + note(days[0], "First") + note(days[1], "Second"))
            self.assertEqual(len(self.json("--notebook", WALKS["name"], "notes", data=twice)), 1)
            self.assertEqual(self.json("--notebook", WALKS["name"], "note", "7", data=twice)["plainText"], "First")

    def test_a_file_that_cannot_be_read_is_a_fault_and_the_rest_is_shown(self):
        done = self.expect(3, "--json", "cite", data=self.without("SourceTypes.dat"), says="SourceTypes.dat")
        self.assertEqual(len(json.loads(done.stdout)), self.world.sample["sources"])

    def test_output_that_cannot_be_written_is_a_fault(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            done = self.world.run("authors", capture_output=False, stdout=full, stderr=subprocess.PIPE)
            self.assertEqual(done.returncode, 3, done.stderr)
            for words in ("--help", "--version"):
                done = subprocess.run([self.world.cli, words], stdout=full, stderr=subprocess.PIPE, check=False)
                self.assertEqual(done.returncode, 3, words)

    def test_a_folder_that_another_process_holds_is_left_alone(self):
        with open(self.world.data / "lorebinder.lock", "a", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            before = fingerprint(self.world.data)
            self.expect(4, "sample", says="another process")
            self.assertEqual(self.json("notebooks")[0]["notes"], self.world.sample["notes"])
            self.assertEqual(fingerprint(self.world.data), before)


class Completion(CliTest):
    def offered(self, *words):
        script = ('source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _lorebinder_cli; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        done = subprocess.run(["bash", "-c", script, COMPLETION, self.world.cli, *words], check=True,
                              env=self.world.environment, cwd=self.world.top, capture_output=True, encoding="utf-8")
        self.assertEqual(done.stderr, "")
        return done.stdout.split("\n")[:-1]

    def test_offers_commands_options_notebooks_and_files(self):
        data = str(self.world.data)
        (self.world.top / "with blank.rtf").write_text("{\\rtf1 a}")
        for words, some, none in [
                (["no"], {"note", "notes", "notebooks"}, {"cite"}),
                (["--data", "data", "se"], {"search"}, set()),
                (["--"], {"--data", "--settings", "--notebook", "--json"}, {"--style"}),
                (["cite", "--"], {"--style", "--width", "--file", "--json"}, {"--sorted"}),
                (["bibliography", "--"], {"--out", "--style", "--indent", "--et-al", "--unsorted"}, {"--width"}),
                (["--data", data, "--notebook", ""], {"LorebinderMain", "Shore\\ Walks"}, {"notes"}),
                (["--data", "=", data, "--notebook", "=", "Sh"], {"Shore\\ Walks"}, {"LorebinderMain"}),
                (["--data", data, "--notebook", '"Shore W'], {"Shore Walks"}, {"Shore\\ Walks"}),
                (["--data", data, "--notebook", "'Sh"], {"Shore Walks"}, set()),
                (["text", "with"], {"with blank.rtf"}, {"data"}),
                (["--data", "da"], {"data"}, {"with blank.rtf"}),
                (["bibliography", "--out", "with"], {"with blank.rtf"}, set()),
                (["notebook", ""], {"create", "rename", "delete", "switch"}, {"cite"}),
                (["--data", data, "notebook", "delete", "Sh"], {"Shore\\ Walks"}, {"LorebinderMain"}),
                (["--data", data, "copy", "--to", "Sh"], {"Shore\\ Walks"}, {"LorebinderMain"}),
                (["cite", "--style", ""], {""}, {"data"})]:
            with self.subTest(words=words):
                offered = set(self.offered(*words))
                self.assertLessEqual(some, offered)
                self.assertFalse(none & offered)

    def test_knows_every_command_and_option_of_the_program(self):
        listed = re.search(r"Subcommands:\n(.*)", self.world.run("--help").stdout, re.S).group(1)
        commands = re.findall(r"^  ([a-z]+)", listed, re.M)
        self.assertEqual(set(self.offered("")), set(commands))
        for command in commands:
            options = re.findall(r"^ +(?:-\w,)?(--[a-z-]+)", self.world.run(command, "--help").stdout, re.M)
            self.assertLessEqual(set(options), set(self.offered(command, "--")), command)


if __name__ == "__main__":
    main(__doc__)
