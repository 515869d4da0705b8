"""Unpacks the package and looks whether what it brings is whole. Usage: package_test.py FILE.deb"""

import gzip
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PACKAGE = pathlib.Path(sys.argv.pop(1))


def run(*arguments, **options):
    return subprocess.run([str(a) for a in arguments], capture_output=True, text=True, check=False, **options)


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

    def test_windows_start_without_a_display(self):
        """The desktop program finds its libraries and says its version."""
        answer = run(self.usr / "bin/lorebinder", "--version", env={"QT_QPA_PLATFORM": "offscreen"})
        self.assertIn("Lorebinder", answer.stdout, answer.stderr)

    def test_the_agent_comes_along_and_starts_only_where_a_user_wants_it(self):
        agent = self.usr / "lib/lorebinder/LBAgent"
        answer = run(agent, "--version", env={"QT_QPA_PLATFORM": "offscreen"})
        self.assertIn("LBAgent 1.56", answer.stdout, answer.stderr)
        self.assertEqual([], list(self.root.glob("**/autostart/*")))

    def test_the_desktop_finds_what_its_entry_names(self):
        entry = (self.usr / "share/applications/lorebinder.desktop").read_text()
        icon = re.search(r"^Icon=(.*)$", entry, re.MULTILINE).group(1)
        icons = self.usr / "share/icons/hicolor"
        self.assertTrue((icons / "scalable/apps" / f"{icon}.svg").exists())
        self.assertTrue((icons / "symbolic/apps" / f"{icon}-symbolic.svg").exists())
        for size in (16, 22, 24, 32, 48, 64, 128, 256, 512):
            head = (icons / f"{size}x{size}/apps/{icon}.png").read_bytes()[:24]
            self.assertEqual((size, size), (int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big")))
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
