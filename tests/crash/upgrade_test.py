#!/usr/bin/env python3
"""A data folder of an older version, upgraded by a command that writes: killed before each change of a file, and with
each change failing. Whatever happens, each old file stands whole at its old or its new place, and the same command then
finishes.

Usage: upgrade_test.py LOREBINDER_CLI FAULT_SHIM [unittest arguments]"""
import errno
import pathlib
import shutil
import signal
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from book_world import CommandLine, faults

CLI, SHIM = CommandLine(sys.argv[1]), str(pathlib.Path(sys.argv[2]).resolve())
MOST_POINTS = 400


class World:
    """Notes made by the program, then brought to where an older version had them."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-upgrade-"))
        self.base = self.folder / "base"
        for number in range(3):
            text = self.folder / f"note{number}.txt"
            text.write_text(f"Old note {number}\n")
            self.must("add", text, "--category", "1", "/".join(["Lights", "Lenses"][:number + 1]))
        self.must("edit", CLI.answer(self.base, "notes")[0]["id"], "--attach", self.folder / "note1.txt")
        self.old = self.state(self.base)
        root = self.base / "Data Files"
        main = root / "Databases" / "_LBMAIN_"
        for entry in list(main.iterdir()):
            entry.rename(root / entry.name)
        shutil.rmtree(root / "Databases")
        (root / "Events.dat").write_bytes(b"events")
        settings = self.base / "settings.ini"
        lines = [line for line in settings.read_text().splitlines() if not line.startswith("ProgVersion")]
        lines.insert(lines.index("[Options]") + 1, "ProgVersion=9.5")
        settings.write_text("\n".join(lines) + "\n")
        self.new_text = self.folder / "new.txt"
        self.new_text.write_text("The note of the command\n")

    def must(self, *args):
        result = CLI.run(self.base, *args)
        assert result.returncode == 0, f"{args}: {result.returncode} {result.stderr}"

    @staticmethod
    def state(data):
        notes = {}
        for line in CLI.answer(data, "notes"):
            note = CLI.answer(data, "note", line["id"])
            files = [(data / "Data Files/Databases/_LBMAIN_/Attachments" / one["storedFile"]).read_bytes()
                     for one in note["attachments"]]
            notes[note["guid"]] = (note["plainText"], note["categories"], files)
        return notes

    def copy(self):
        target = self.folder / "work"
        shutil.rmtree(target, ignore_errors=True)
        shutil.copytree(self.base, target)
        return target


def setUpModule():
    global WORLD
    WORLD = World()


def tearDownModule():
    shutil.rmtree(WORLD.folder, ignore_errors=True)


class Upgrade(unittest.TestCase):
    def old_files(self, data):
        """The attachments and note files by name, wherever they stand."""
        root = data / "Data Files"
        found = {}
        for file in root.rglob("*"):
            if file.is_file() and file.parent.name in ("Notes", "Attachments"):
                found.setdefault((file.parent.name, file.name), []).append(file)
        return found

    def assert_nothing_lost(self, data, message):
        before, now = self.old_files(WORLD.base), self.old_files(data)
        for name in before:
            self.assertIn(name, now, f"{message}: {name} has gone")
            for file in now[name]:
                self.assertGreater(file.stat().st_size, 0, f"{message}: {file} is empty")
        self.assertTrue((data / "Data Files" / "Events.dat").exists(), message)

    def assert_finishes(self, data, message):
        result = CLI.run(data, "add", WORLD.new_text)
        self.assertEqual(result.returncode, 0, f"{message}: {result.stderr}")
        now = WORLD.state(data)
        for guid, note in WORLD.old.items():
            self.assertEqual(now.get(guid), note, message)
        left = [entry.name for entry in (data / "Data Files").iterdir()]
        self.assertEqual(sorted(left), ["Databases", "Events.dat"], message)
        names = sorted(entry.name for entry in (data / "Data Files" / "Databases").iterdir())
        self.assertEqual([name for name in names if name.startswith("_LBMAIN_")], ["_LBMAIN_"], message)

    def strike(self, number, fault, lasting=False):
        data = WORLD.copy()
        return data, CLI.run(data, "add", WORLD.new_text, **faults(SHIM, data, number, fault, lasting))

    def test_reading_changes_nothing_and_says_so(self):
        data = WORLD.copy()
        before = sorted((str(file), file.stat().st_mtime_ns) for file in data.rglob("*"))
        result = CLI.run(data, "--json", "notes")
        self.assertEqual(result.stdout.strip(), "[]")
        self.assertIn("older version", result.stderr)
        self.assertEqual(before, sorted((str(file), file.stat().st_mtime_ns) for file in data.rglob("*")))

    def test_a_kill_at_any_change_loses_nothing(self):
        for number in range(1, MOST_POINTS):
            data, result = self.strike(number, "KILL")
            if result.returncode == 0:
                print(f"{number - 1} kill points", file=sys.stderr)
                self.assertGreater(number, 20)
                return
            self.assertEqual(result.returncode, -signal.SIGKILL, result.stderr)
            self.assert_nothing_lost(data, f"killed at {number}")
            self.assert_finishes(data, f"killed at {number}")
        self.fail("changes without end")

    def test_a_failure_at_any_change_is_told_and_loses_nothing(self):
        for lasting in (False, True):
            for number in range(1, MOST_POINTS):
                data, result = self.strike(number, errno.ENOSPC, lasting)
                self.assert_nothing_lost(data, f"failed at {number}")
                if result.returncode == 0:
                    probe, log = WORLD.copy(), WORLD.folder / "log"
                    log.unlink(missing_ok=True)
                    CLI.run(probe, "add", WORLD.new_text, **faults(SHIM, probe, LORE_FAULT_LOG=log))
                    if len(log.read_text().splitlines()) < number:
                        break
                else:
                    self.assertEqual(result.returncode, 3, result.stderr)
                    self.assertIn("lorebinder-cli: ", result.stderr)
                if result.returncode == 3:
                    CLI.run(data, "add", WORLD.new_text)
                    now = WORLD.state(data)
                    for guid, note in WORLD.old.items():
                        self.assertEqual(now.get(guid), note, f"failed at {number}: {result.stderr}")
            else:
                self.fail("changes without end")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
