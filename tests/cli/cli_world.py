"""What the tests of the command line share: a data folder with the sample NoteBook and one of an old version."""
import functools
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

WALKS = {"id": 2113, "guid": "{11111111-2222-3333-4444-555555555555}", "name": "Shore Walks", "folder": "shorewalks"}


# Record files by hand.

def number(value):
    return b"%016d" % value


def text(value):
    data = value if isinstance(value, bytes) else value.encode()
    return number(len(data)) + data


def version(value):
    return b"%020.9f" % value


def old_note(ident, source, plain, path):
    """A note as the first versions wrote it: one source, no GUID, no colour, no attachments, one path by levels."""
    levels = b"".join(number(level) + text(name) + text(path[level - 1] if level else "")
                      for level, name in enumerate(path))
    return (number(ident) + number(source) + text("2003-04-05-06-07-08") + text("2003-04-05-06-07-09") + text("fog") +
            text("") + text(plain) + text(b"{\\rtf1\\ansi " + plain.encode("cp1252").replace(b"\n", b"\\par ") + b"}") +
            number(len(path)) + levels)


def make_walks(root):
    """A second NoteBook: notes of an old version, neither categories nor sources."""
    folder = root / "Data Files" / "Databases"
    listed = (number(WALKS["id"]) + text(WALKS["guid"]) + text(WALKS["name"]) + text(WALKS["folder"]) + text("") +
              text("2004-01-02-03-04-05"))
    (folder / "Databases.dat").write_bytes(version(11.56) + number(1) + listed)
    notes = folder / WALKS["folder"] / "Notes"
    notes.mkdir(parents=True)
    (folder / WALKS["folder"] / "Attachments").mkdir()
    records = [old_note(7, 0, "Fog on the caf\u00e9 pier", ["Coast", "South"]), old_note(8, 0, "Clear", ["Coast"])]
    (notes / "DAY04052003.dat").write_bytes(version(0.9) + number(2) + b"".join(records))


class World:
    """A data folder for all tests, which only read it."""

    def __init__(self, cli):
        self.cli = pathlib.Path(cli).resolve()

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        self.top = pathlib.Path(self.folder.name)
        self.data = self.top / "data"
        self.environment = dict(os.environ, HOME=self.folder.name, XDG_DATA_HOME=str(self.top / "share"),
                                XDG_CONFIG_HOME=str(self.top / "config"), LC_ALL="C.UTF-8")
        made = self.run("sample", "--json")
        if made.returncode:
            sys.exit(f"no sample NoteBook: {made.stderr}")
        self.sample = json.loads(made.stdout)
        make_walks(self.data)
        return self

    def __exit__(self, *_):
        self.folder.cleanup()

    def run(self, *args, data=None, program=None, **options):
        options = {"capture_output": True, "encoding": "utf-8", **options}
        return subprocess.run([program or self.cli, "--data", data or self.data, *args], env=self.environment,
                              stdin=subprocess.DEVNULL, timeout=120, **options)

    @functools.cached_property
    def notes(self):
        """All notes of the sample as `note` shows them, in the order of `notes`."""
        listed = json.loads(self.run("--json", "notes").stdout)
        return [json.loads(self.run("--json", "note", str(note["id"])).stdout) for note in listed]

    def file(self, *names):
        return self.data.joinpath("Data Files", *names)

    def main(self, *names):
        return self.file("Databases", "_LBMAIN_", *names)


def fingerprint(folder):
    return {str(p.relative_to(folder)): hashlib.sha256(p.read_bytes()).hexdigest()
            for p in sorted(folder.rglob("*")) if p.is_file()}


class CliTest(unittest.TestCase):
    """A test that runs the command line in the world."""
    maxDiff = None
    world = None

    def json(self, *args, status=0, **options):
        done = self.world.run("--json", *args, **options)
        self.assertEqual(done.returncode, status, f"{args}: {done.stderr}")
        return json.loads(done.stdout)

    def expect(self, status, *args, says="", **options):
        done = self.world.run(*args, **options)
        self.assertEqual(done.returncode, status, f"{args}: {done.stdout}{done.stderr}")
        self.assertIn(says, done.stderr)
        return done


class FreshTest(unittest.TestCase):
    """A test that runs the command line on a data folder that isn't there yet."""
    cli = None

    def setUp(self):
        self.top = pathlib.Path(tempfile.mkdtemp(prefix="lore-fresh-"))
        self.addCleanup(shutil.rmtree, self.top, ignore_errors=True)
        self.data = self.top / "data"

    def run_cli(self, *args, status=0):
        done = subprocess.run([self.cli, "--data", self.data, *map(str, args)], capture_output=True, check=False)
        self.assertEqual(done.returncode, status, (args, done.stderr))
        return done

    def json(self, *args, status=0):
        return json.loads(self.run_cli("--json", *args, status=status).stdout)


def main_fresh(usage):
    """Runs the tests of the main module that need no world."""
    if len(sys.argv) < 2:
        sys.exit(usage)
    FreshTest.cli = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main()


def main(usage):
    """Runs the tests of the main module with the program that the command line names."""
    if len(sys.argv) < 2:
        sys.exit(usage)
    with World(sys.argv.pop(1)) as CliTest.world:
        sys.exit(not unittest.main(exit=False).result.wasSuccessful())
