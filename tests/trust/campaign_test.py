#!/usr/bin/env python3
"""The counts of a long fuzzing run, with programs that only say that they have fuzzed: none is left out, further goes
add to what former ones have counted, and a program that stops is told until its input has been taken away.

Usage: campaign_test.py REPOSITORY"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

CAMPAIGN = os.path.join(sys.argv.pop(1), "fuzz/campaign.py")
FUZZER = "#!/bin/sh\necho 'stat::number_of_executed_units: 100' >&2\n"
STOPS = FUZZER + 'for a; do case $a in -artifact_prefix=*) touch "${a#*=}crash";; esac; done\nexit 77\n'


class Campaign(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        self.folder = pathlib.Path(self.scratch.name, "campaign")
        self.programs = pathlib.Path(self.scratch.name, "bin")
        self.programs.mkdir()

    def put(self, name, text):
        program = self.programs / (name + "_fuzz")
        program.write_text(text)
        program.chmod(0o755)

    def go(self, seconds):
        run = subprocess.run([sys.executable, CAMPAIGN, "--minutes", str(seconds / 60), "--turn", "1", "--jobs", "2",
                              "--folder", self.folder, "--programs", self.programs], capture_output=True, text=True)
        totals = self.folder / "totals.json"
        return run, json.loads(totals.read_text()) if totals.exists() else {}

    def test_goes_add_up_and_no_program_is_left_out(self):
        for name in "abc":
            self.put(name, FUZZER)
        first, before = self.go(3)
        self.assertEqual((first.returncode, sorted(before)), (0, ["a", "b", "c"]))
        self.assertTrue(all(total["inputs"] == 100 * total["turns"] > 0 for total in before.values()), before)
        second, after = self.go(3)
        self.assertTrue(all(after[name]["turns"] > before[name]["turns"] for name in "abc"), (before, after))
        total = sum(total["inputs"] for total in after.values())
        self.assertIn(f"{total:,} of 1,000,000,000 inputs", second.stdout)

    def test_a_program_that_stops_is_told_until_its_input_is_gone(self):
        self.put("a", STOPS)
        self.put("b", FUZZER)
        run, totals = self.go(2)
        self.assertEqual(run.returncode, 1, run.stdout + run.stderr)
        self.assertIn("a: stopped with status 77", run.stdout)
        self.assertEqual((totals["a"]["turns"], totals["a"]["inputs"]), (1, 100))
        self.assertGreater(totals["b"]["turns"], 1)
        self.assertEqual(len(list((self.folder / "found").iterdir())), 2)
        self.put("a", FUZZER)
        self.assertEqual(self.go(2)[0].returncode, 1)
        for file in (self.folder / "found").iterdir():
            file.unlink()
        self.assertEqual(self.go(2)[0].returncode, 0)

    def test_without_programs_it_says_what_to_build(self):
        run, _ = self.go(2)
        self.assertEqual(run.returncode, 1)
        self.assertIn("fuzz-long", run.stderr)


if __name__ == "__main__":
    unittest.main()
