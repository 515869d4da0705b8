#!/usr/bin/env python3
"""The sync at the start: a start that is to sync starts the sync program alone; the restart after it opens the window.

Usage: sync_start_test.py LOREBINDER"""
import pathlib
import shutil
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from process_world import WAIT, ProcessTest

SETTINGS = """[Options]
SyncEngaged=1
SyncAtStart=1
SyncGUID={S}
LocalGUID={L}
MaxNoteID=1041
MaxCategoryID=11
"""
SYNCER = """#!/bin/sh
for text in "$0" "$@"; do printf '%s\\n' "$text"; done > "$(dirname "$0")/started.new"
mv "$(dirname "$0")/started.new" "$(dirname "$0")/started"
"""


class SyncStart(ProcessTest):
    def start(self, *more):
        """Starts the program beside its data folder, which it is given by a relative name."""
        return self.launch(self.program, "--data", "data", "--ready-line", *more)

    def opens(self, *more):
        """The lines that a start writes until its window could be used."""
        process, lines = self.start(*more), []
        while not lines or lines[-1] != "ready\n":
            lines.append(process.stderr.readline())
            self.assertTrue(lines[-1], f"the window doesn't open: {lines}")
        process.kill()
        process.wait()
        return lines

    def test_a_start_syncs_once(self):
        bin_folder, data = self.top / "a bin", self.top.resolve() / "data"
        bin_folder.mkdir()
        data.mkdir()
        self.program = bin_folder / "lorebinder"
        shutil.copy(PROGRAM, self.program)
        syncer, started = bin_folder.resolve() / "syncer", bin_folder.resolve() / "started"
        syncer.write_text(SYNCER)
        syncer.chmod(0o755)
        settings = data / "settings.ini"
        settings.write_text(SETTINGS)

        first = self.start()
        self.assertEqual(first.wait(WAIT), 0)
        self.assertNotIn("ready", first.stderr.read())
        end = time.monotonic() + WAIT
        while not started.exists():
            self.assertLess(time.monotonic(), end, "the sync program wasn't started")
            time.sleep(0.02)
        self.assertEqual(started.read_text().splitlines(), [
            str(syncer), "SYNCOPEN", "{S}", "{L}", str(data / "Data Files"), f"{syncer.parent}/", "1042", "12", "11.56"])
        self.assertEqual(settings.read_text(), SETTINGS)
        self.assertEqual([p.name for p in data.iterdir()], ["settings.ini"], "a start that syncs writes nothing")

        started.unlink()
        self.opens("BypassSync")
        self.assertFalse(started.exists())

        syncer.unlink()
        self.assertTrue(any("could not be started" in line for line in self.opens()))


if __name__ == "__main__":
    PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main()
