#!/usr/bin/env python3
"""Every writing command, and a power cut after each of its calls: what was not flushed by then is lost, comes in another
order, or is there in part. The data folder shows each note as it was or as it would have become; and once the command
has reported that it is done, as it would have become.

Usage: power_test.py FAULT_SHIM LOREBINDER_CLI EDIT_RUN COMMAND_RUN [unittest arguments]
LORE_ALL_CUTS=1: every state that a cut may leave (otherwise a part of them); LORE_SEED: another world and part;
LORE_FLOWS: names of flows, between commas."""
import os
import pathlib
import random
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from book_world import digest, faults, module_world, tree
from lost_writes import LostWrites

SHIM = str(pathlib.Path(sys.argv[1]).resolve())
SEED = int(os.environ.get("LORE_SEED", "0"))
ALL = bool(os.environ.get("LORE_ALL_CUTS"))
PART = 12  # states of a flow in the short form, beside the last
# Bytes of a file that come to the disk unflushed: none, the first piece, all, or only their number.
KEPT = (0, 512, 1 << 60, -1)


def setUpModule():
    global PROGRAMS, WORLD
    PROGRAMS, WORLD = module_world(sys.argv[2:5], SEED)


class PowerCut(unittest.TestCase):
    def setUp(self):
        self.base, self.data, self.there = tree(WORLD.base), WORLD.copy(), None
        self.old = WORLD.look(WORLD.base, self.base)[0]

    def recorded(self, name):
        """The calls of a flow, and what it makes of the folder."""
        log = WORLD.folder / "calls"
        log.unlink(missing_ok=True)
        self.data = WORLD.copy()
        result = PROGRAMS.run(self.data, *WORLD.flows()[name],
                              **faults(SHIM, self.data, LORE_FAULT_LOG=log, LORE_FAULT_BYTES=1))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.there = tree(self.data)
        return log.read_text().splitlines(), WORLD.look(self.data, self.there)[0], self.there

    def show(self, files):
        """Makes the folder hold these files."""
        for path in sorted(set(self.there) - set(files), reverse=True):
            (self.data / path).rmdir() if self.there[path] is None else (self.data / path).unlink()
        for path in sorted(files):
            if path in self.there and self.there[path] == files[path]:
                continue
            if files[path] is None:
                (self.data / path).mkdir()
            else:
                (self.data / path).write_bytes(files[path])
        self.there = files

    def states(self, lines):
        """Every different state that a cut after one of the calls may leave: digest -> (call, files)."""
        disk, found = LostWrites(self.data, self.base), {}
        for number, line in enumerate(lines):
            disk.play(line)
            for arrived in disk.arrivals():
                for kept in KEPT:
                    files = disk.left(arrived, kept)
                    found.setdefault(digest(files), (number + 1, line, files))
        return disk, list(found.values())

    def bad(self, name, lines, new, part):
        """The states that show neither, with what is wrong; and how many were looked at."""
        disk, states = self.states(lines)
        if part:
            states = random.Random(f"{SEED} {name}").sample(states, min(PART, len(states)))
        bad = []
        for number, line, files in states:
            self.show(files)
            problem = WORLD.problem(self.data, self.old, new, files=files)
            if problem:
                bad.append(f"seed {SEED}, {name}, cut after call {number}, {line[:200]}: {problem}")
        return disk, bad, len(states)

    def test_a_power_cut_leaves_each_note_as_it_was_or_as_it_became(self):
        total = calls = 0
        for name in WORLD.flows():
            with self.subTest(flow=name):
                lines, new, files = self.recorded(name)
                disk, bad, count = self.bad(name, lines, new, not ALL)
                total, calls = total + count, calls + len(lines)
                self.assertEqual(disk.seen(), files, "the log lacks a call")
                self.assertEqual(bad[:5], [], f"{len(bad)} of {count}")
                last = disk.left(set(), 0)
                self.show(last)
                self.assertEqual(WORLD.problem(self.data, new, new, files=last), "", f"{name}, done, then cut")
        print(f"{total} states after {calls} calls of {len(WORLD.flows())} flows, seed {SEED}", file=sys.stderr)
        self.assertGreater(total, 3 * len(WORLD.flows()))

    def test_a_missing_flush_is_found(self):
        for flow, left_out in (("edit", "file"), ("move", "folder")):
            lines, new, _ = self.recorded(flow)
            lines = [line for line in lines if not line.startswith("fsync\t") or
                     (pathlib.Path(line.split("\t")[1]).suffix != "") != (left_out == "file")]
            self.assertTrue(self.bad(flow, lines, new, False)[1], f"{flow} without the flush of a {left_out}")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[5:])
