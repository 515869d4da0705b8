"""Unpacks the package and looks whether what it brings is whole. Usage: package_test.py FILE.deb"""

import gzip
import io
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile
import unittest

PACKAGE = pathlib.Path(sys.argv.pop(1))


REPOSITORY = pathlib.Path(__file__).resolve().parents[2]


def run(*arguments, text=True, **options):
    return subprocess.run([str(a) for a in arguments], capture_output=True, text=text, check=False, **options)


def size_of(picture):
    """Width and height of a PNG file."""
    head = picture.read_bytes()[:24]
    return int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big")


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        subprocess.run(["dpkg-deb", "-x", PACKAGE, cls.root], check=True)
        cls.usr = cls.root / "usr"
        cls.programs = sorted((cls.usr / "lib" / "lorebinder").iterdir())

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def man(self, name):
        return gzip.decompress((self.usr / "share/man/man1" / f"{name}.1.gz").read_bytes()).decode()

    def test_every_program_has_a_man_page(self):
        self.assertGreaterEqual(len(self.programs), 3)
        for program in self.programs:
            self.assertIn(".SH SYNOPSIS", self.man(program.name), program.name)

    def test_what_the_shell_finds_is_a_program(self):
        links = sorted((self.usr / "bin").iterdir())
        self.assertEqual(["lorebinder", "lorebinder-cli"], [link.name for link in links])
        for link in links:
            self.assertTrue(link.is_symlink())
            self.assertEqual(link.name, link.resolve(strict=True).name)

    def test_the_man_page_names_every_command(self):
        cli = self.usr / "bin/lorebinder-cli"
        commands = re.findall(r"^  ([a-z]+) ", run(cli, "--help").stdout.split("Subcommands:")[1], re.MULTILINE)
        page = self.man("lorebinder-cli").replace("\\-", "-")
        self.assertGreater(len(commands), 20)
        for command in commands:
            self.assertRegex(page, rf"\b{command}\b")

    def test_a_stranger_makes_the_sample_and_cites_it(self):
        data = self.root / "data"
        cli = self.usr / "bin/lorebinder-cli"
        made = run(cli, "--data", data, "sample")
        self.assertEqual(0, made.returncode, made.stderr)
        out = self.root / "bibliography.pdf"
        written = run(cli, "--data", data, "bibliography", "--out", out)
        self.assertEqual(0, written.returncode, written.stderr)
        self.assertEqual(b"%PDF", out.read_bytes()[:4])

    def test_the_shell_completes_options_archives_and_folders(self):
        (self.root / "words").mkdir()
        for name in ("all notes.lbe", "all.txt"):
            (self.root / "words" / name).touch()
        script = 'source "$1"; COMP_WORDS=("${@:2}"); COMP_CWORD=$(($# - 2)); _lorebinder; printf "%s\n" "${COMPREPLY[@]}"'
        completion = self.usr / "share/bash-completion/completions/lorebinder"
        for words, offered in ((["--cap"], "--capture"), (["words/a"], "words/all notes.lbe"), (["wor"], "words"),
                               (["--data", "wor"], "words"), (["--data", "=", "wor"], "words"), (["--reminder", ""], "")):
            answer = run("bash", "-c", script, "bash", completion, self.usr / "bin/lorebinder", *words, cwd=self.root)
            self.assertEqual((offered, ""), (answer.stdout.strip(), answer.stderr), words)

    def test_windows_start_without_a_display(self):
        """The desktop program finds its libraries and says its version."""
        answer = run(self.usr / "bin/lorebinder", "--version", env={"QT_QPA_PLATFORM": "offscreen"})
        self.assertIn("Lorebinder", answer.stdout, answer.stderr)

    def test_the_agent_comes_along_and_starts_only_where_a_user_wants_it(self):
        agent = self.usr / "lib/lorebinder/LBAgent"
        answer = run(agent, "--version", env={"QT_QPA_PLATFORM": "offscreen"})
        self.assertIn("LBAgent 1.56", answer.stdout, answer.stderr)
        [entry] = self.root.glob("**/autostart/*")
        self.assertEqual("etc/xdg/autostart/LBAgent.desktop", str(entry.relative_to(self.root)))
        self.assertIn("\nHidden=true\n", entry.read_text())
        self.assertTrue((self.root / re.search(r"^TryExec=/(.*)$", entry.read_text(), re.MULTILINE).group(1)).exists())
        conffiles = run("dpkg-deb", "--ctrl-tarfile", PACKAGE, text=False).stdout
        with tarfile.open(fileobj=io.BytesIO(conffiles)) as control:
            self.assertEqual(b"/etc/xdg/autostart/LBAgent.desktop\n", control.extractfile("./conffiles").read())

    def test_words_about_a_program_need_no_display(self):
        for program in self.programs:
            answer = run(program, "--help", env={"QT_QPA_PLATFORM": "xcb"})
            self.assertEqual(0, answer.returncode, answer.stderr)
            self.assertRegex(answer.stdout, f"(?i)usage: .*{program.name}")

    def test_the_screenshots_of_software_centres_are_at_hand(self):
        data = (self.usr / "share/metainfo/com.tannerquayrigging.Lorebinder.metainfo.xml").read_text()
        named = re.findall(r'width="(\d+)" height="(\d+)">https://[^<]*/screenshots/([a-z]+\.png)<', data)
        self.assertEqual(data.count("<screenshot>") + 1, len(named))
        for width, height, name in named:
            self.assertEqual((int(width), int(height)), size_of(REPOSITORY / "docs/screenshots" / name), name)

    def test_the_desktop_finds_what_its_entry_names(self):
        entry = (self.usr / "share/applications/lorebinder.desktop").read_text()
        icon = re.search(r"^Icon=(.*)$", entry, re.MULTILINE).group(1)
        icons = self.usr / "share/icons/hicolor"
        self.assertTrue((icons / "scalable/apps" / f"{icon}.svg").exists())
        self.assertTrue((icons / "symbolic/apps" / f"{icon}-symbolic.svg").exists())
        for size in (16, 22, 24, 32, 48, 64, 128, 256, 512):
            self.assertEqual((size, size), size_of(icons / f"{size}x{size}/apps/{icon}.png"))
        mime = re.search(r"^MimeType=(.*);$", entry, re.MULTILINE).group(1)
        self.assertIn(f'type="{mime}"', (self.usr / "share/mime/packages/lorebinder.xml").read_text())

    def test_the_manual_is_there_in_both_forms(self):
        manual = self.usr / "share/doc/lorebinder"
        html = (manual / "ProUsersManual.html").read_text()
        self.assertIn("<table>", html)
        self.assertNotIn("@MANUAL@", html)
        self.assertGreater((manual / "ProUsersManual.pdf").stat().st_size, 20000)


if __name__ == "__main__":
    unittest.main()
