#!/usr/bin/env python3
"""The bibliography command from end to end: each of its six forms opened by a reader of that form.

Usage: bibliography_output_test.py LOREBINDER_CLI [unittest arguments]"""
import html.parser
import pathlib
import re
import shutil
import subprocess
import tempfile
import xml.etree.ElementTree as xml
import zipfile

from cli_world import CliTest, fingerprint, main, number


class PageText(html.parser.HTMLParser):
    """The paragraphs of a page, and what they emphasise and link."""

    def __init__(self, page):
        super().__init__()
        self.open, self.paragraphs, self.emphasis, self.links = [], [], [], []
        self.feed(page)
        self.close()

    def handle_starttag(self, tag, attributes):
        if tag not in ("meta", "!doctype"):
            self.open.append(tag)
        if tag == "p":
            self.paragraphs.append("")
        self.links += [value for name, value in attributes if name == "href"]

    def handle_endtag(self, tag):
        assert self.open.pop() == tag, f"</{tag}> closes another tag"

    def handle_data(self, data):
        if "p" in self.open:
            self.paragraphs[-1] += data
        if {"em", "strong", "u"} & set(self.open):
            self.emphasis.append(data)


class Bibliography(CliTest):
    def setUp(self):
        self.out = pathlib.Path(tempfile.mkdtemp(dir=self.world.top))
        self.texts = {c["SourceID"]: " ".join(c["FormattedText"].split(" ")).strip() for c in self.json("cite")}
        self.sorted = self.json("sources", "--sorted")

    def write(self, ending, *args):
        file = self.out / f"Bib.{ending}"
        self.expect(0, "bibliography", "--out", file, *args)
        self.assertEqual([p.name for p in self.out.iterdir()], [file.name])
        return file

    def entries(self):
        return [self.texts[i] for i in self.sorted]

    def test_record_file_holds_the_sources_as_they_are_cited(self):
        file = self.write("dat")
        records = self.json("dump", file)["records"]
        self.assertEqual([r["SourceID"] for r in records], self.sorted)
        cited = {c["SourceID"]: c["FormattedText"] for c in self.json("cite")}
        self.assertEqual([r["FormattedText"] for r in records], [cited[i] for i in self.sorted])
        file.write_bytes(file.read_bytes().replace(number(self.sorted[0]), number(0), 1))
        self.assertEqual([r["SourceID"] for r in self.json("dump", file)["records"]], self.sorted[1:])

    def test_values_are_set_for_all_and_held_to_their_limits(self):
        before = fingerprint(self.world.data)
        keys = ("FormatStyle", "IndentSpaces", "AuthorsBeforeEtAl")
        for record in self.json("dump", self.write("dat", "--style", "9", "--indent", "4", "--et-al", "99"))["records"]:
            self.assertEqual([record[k] for k in keys], [9, 4, 15])
        self.assertEqual(fingerprint(self.world.data), before)

    def test_order_is_sorted_or_as_given(self):
        for args, wanted in [(["1013", "99999", "1011", "1013", "--unsorted"], [1013, 1011]),
                             (["1013", "1011"], [i for i in self.sorted if i in (1011, 1013)]),
                             (["--unsorted"], [s["SourceID"] for s in self.json("sources")]), ([], self.sorted)]:
            printed = self.json("bibliography", "--out", self.out / "Bib.dat", *args)
            self.assertEqual(printed["sources"], wanted)
            records = self.json("dump", self.out / "Bib.dat")["records"]
            self.assertEqual([r["SourceID"] for r in records], wanted)

    def test_numbers_that_no_source_has_are_named(self):
        for args, absent in [(["1013", "99999", "-4", "1011", "99999"], ["99999", "-4"]), (["1013"], []), ([], [])]:
            done = self.expect(0, "bibliography", "--out", self.out / "Bib.txt", "--", *args)
            self.assertEqual(re.findall(r"there is no source (\S+) in this NoteBook\n", done.stderr), absent)
            self.assertEqual(done.stderr.count("\n"), len(absent))

    def test_text_wraps_at_80_characters(self):
        written = self.write("txt", "--indent", "5").read_text(encoding="utf-8")
        self.assertTrue(all(len(line) <= 80 for line in written.split("\n")))
        self.assertIn("\n     ", written)
        letters = ["".join(entry.split()) for entry in written.split("\n\n")]
        self.assertEqual(letters, ["".join(entry.split()) for entry in self.entries()])

    def test_page_holds_entries_emphasis_and_links(self):
        page = PageText(self.write("html").read_text(encoding="utf-8"))
        self.assertEqual((page.paragraphs, page.open), (self.entries(), []))
        spans = [c["FormattedText"][start:end + 1] for c in self.json("cite", *map(str, self.sorted))
                 for _, start, end in c["spans"]]
        self.assertEqual("".join(page.emphasis), "".join(spans))
        self.assertEqual(page.links, re.findall(r"https?://\S+", " ".join(self.entries())))

    def test_rich_text_reads_back(self):
        file = self.write("rtf")
        self.assertEqual(self.world.run("text", file).stdout.rstrip("\n").split("\n"), self.entries())
        runs = [run for p in self.json("text", file)["paragraphs"] for run in p["runs"]]
        self.assertTrue(any(run.get("italic") for run in runs))
        self.assertTrue(any("link" in run for run in runs))

    def test_open_document_is_one(self):
        file = self.write("odt")
        with zipfile.ZipFile(file) as odt:
            self.assertIsNone(odt.testzip())
            first = odt.infolist()[0]
            self.assertEqual((first.filename, first.compress_type, first.extra), ("mimetype", zipfile.ZIP_STORED, b""))
            self.assertEqual(odt.read("mimetype"), b"application/vnd.oasis.opendocument.text")
            manifest = xml.fromstring(odt.read("META-INF/manifest.xml"))
            named = {value for e in manifest for key, value in e.attrib.items() if key.endswith("full-path")}
            self.assertEqual(named, {"/", *odt.namelist()} - {"mimetype", "META-INF/manifest.xml"})
            content = xml.fromstring(odt.read("content.xml"))
            xml.fromstring(odt.read("styles.xml"))
        space = "{urn:oasis:names:tc:opendocument:xmlns:text:1.0}"
        for blank in content.iter(f"{space}s"):
            blank.text = " "
        paragraphs = list(content.iter(f"{space}p"))
        self.assertEqual(["".join(p.itertext()) for p in paragraphs], self.entries())
        styles = {value for e in content.iter() for key, value in e.attrib.items() if key.endswith("}name")}
        used = {e.get(f"{space}style-name") for e in content.iter() if e.get(f"{space}style-name")}
        self.assertLessEqual(used, styles)

    def test_pdf_holds_the_text(self):
        if not (self.world.cli.parent / "lorebinder-pdf").exists():
            self.skipTest("built without lorebinder-pdf")
        file = self.write("pdf")
        pdf = file.read_bytes()
        self.assertTrue(pdf.startswith(b"%PDF-"))
        self.assertIn(b"%%EOF", pdf[-32:])
        self.assertIn(b"FontFile", pdf)
        self.assertIn(b"/URI", pdf)
        if shutil.which("pdftotext"):
            shown = subprocess.run(["pdftotext", file, "-"], capture_output=True, encoding="utf-8", check=True).stdout
            for word in ("Smeaton", "Gr\u00e9millon", "Edystone"):
                self.assertIn(word, shown)
            boxes = subprocess.run(["pdftotext", "-bbox", file, "-"], capture_output=True, encoding="utf-8", check=True)
            begins = [float(x) for x in re.findall(r'<word xMin="([\d.]+)"', boxes.stdout)]
            hanging = [x for x in begins if abs(x - min(begins) - 18) < 0.5]
            self.assertGreater(len(hanging), 10, "second lines begin a quarter of an inch further in")
        self.expect(3, "bibliography", "--out", "/no/such/folder/x.pdf", says="PDF file could not be made")

    def test_a_missing_companion_is_told_and_leaves_the_file(self):
        alone = self.out / "lorebinder-cli"
        shutil.copy2(self.world.cli, alone)
        file = self.out / "old.pdf"
        file.write_bytes(b"as it was")
        self.expect(3, "bibliography", "--out", file, program=alone, says="lorebinder-pdf")
        self.assertEqual(file.read_bytes(), b"as it was")


if __name__ == "__main__":
    main(__doc__)
