#!/usr/bin/env python3
"""Every writing command, killed before each change of a file, and with each change failing.

After a kill the data folder shows each note as it was or as it would have become, and nothing that a note names is
missing. After a failure the same holds, and the command has told it. In both cases the same command then works.

Usage: crash_test.py FAULT_SHIM LOREBINDER_CLI EDIT_RUN COMMAND_RUN [unittest arguments]
LORE_SEED: the first world, by its number (0). LORE_SEEDS: how many worlds are killed (1), each with other notes.
LORE_FLOWS: names of flows, between commas. LORE_ERRORS: the errors that a change fails with (ENOSPC), between commas.
LORE_READS=1: calls that read fail too. LORE_FULL_DISK=1: also with real disks that are full but for a few blocks, for
which the right to mount is needed."""
import errno
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from book_world import DIALOG, World, faults, module_world

SHIM = str(pathlib.Path(sys.argv[1]).resolve())
SEED = int(os.environ.get("LORE_SEED", "0"))
SEEDS = int(os.environ.get("LORE_SEEDS", "1"))
READS = {"LORE_FAULT_READS": 1} if os.environ.get("LORE_READS") else {}
ERRORS = os.environ.get("LORE_ERRORS", "ENOSPC").split(",")
# Beyond this many changes a command isn't one that a person waits for.
MOST_POINTS = 400


def call_log():
    return WORLD.folder / "log"


def setUpModule():
    global PROGRAMS, WORLD
    PROGRAMS, WORLD = module_world(sys.argv[2:5], SEED)


class Crash(unittest.TestCase):
    def strike(self, args, data, number, fault, lasting=False):
        call_log().unlink(missing_ok=True)
        more = {} if fault == "KILL" else READS | {"LORE_FAULT_LOG": call_log()}
        return PROGRAMS.run(data, *args, **faults(SHIM, data, number, fault, lasting, **more))

    def walk(self, name, fault, lasting=False):
        args, old = WORLD.flows()[name], WORLD.state(WORLD.base)
        new = self.made_by(name)
        for number in range(1, MOST_POINTS):
            data = WORLD.copy()
            result = self.strike(args, data, number, fault, lasting)
            if result.returncode == 0 and fault == "KILL":
                return number - 1
            where = f"{name}, change {number}, {fault}, lasting {lasting}"
            if fault == "KILL":
                self.assertEqual(result.returncode, -signal.SIGKILL, f"{where}: {result.stderr}")
            self.assertEqual(WORLD.problem(data, old, new, result.returncode == 3), "", where)
            if fault != "KILL" and self.told_all(name, data, new, number, result):
                return number - 1
            self.assert_retry_works(args, data, old, new, where)
        self.fail(f"{name} changes files without end")

    def assert_retry_works(self, args, data, old, new, where):
        """The same command does what it was to do, unless a part of it is done already: then only an import goes on.
        (A dialog shows what is there.)"""
        if args[0] != DIALOG and ("import" in args or WORLD.look(data)[0] == old):
            result = PROGRAMS.run(data, *args)
            self.assertEqual(result.returncode, 0, f"{where}, again: {result.stderr}")
            now = WORLD.look(data)[0]
            self.assertEqual({key: now.get(key) for key in new}, new, f"{where}, again")

    def told_all(self, name, data, new, number, result):
        """True once the command has no change of that number any more."""
        failed = [line for line in call_log().read_text().splitlines() if line.startswith("FAILED\t")]
        if not failed:
            return True
        if result.returncode == 0:
            line = failed[0].removeprefix("FAILED\t")
            if line.startswith(("open\t", "read\t")):
                # Nobody misses what wasn't needed.
                self.assertEqual(WORLD.problem(data, new, new), "", f"{name}, change {number}, in silence: {line}")
            else:
                self.assertTrue(self.is_harmless(line), f"{name}, change {number} failed in silence: {line}")
            return False
        self.assertEqual(result.returncode, 3, f"{name} {number}: {result.stderr}")
        self.assertRegex(result.stderr, "(lorebinder-cli|edit_run): ")
        return False

    def test_settings_are_stored_though_the_folder_for_temporary_files_fails(self):
        name, temporary = "add", WORLD.folder / "temporary"
        args, data = WORLD.every_flow()[name], WORLD.copy()
        temporary.mkdir()
        self.assertEqual(PROGRAMS.run(data, *args).returncode, 0)
        wanted = (data / "settings.ini").read_bytes()
        for number in range(1, MOST_POINTS):
            call_log().unlink(missing_ok=True)
            data = WORLD.copy()
            result = PROGRAMS.run(data, *args, TMPDIR=temporary, LORE_FAULT_LOG=call_log(),
                                  **faults(SHIM, temporary, number, errno.ENOSPC))
            self.assertEqual(result.returncode, 0, f"change {number}: {result.stderr}")
            self.assertEqual((data / "settings.ini").read_bytes(), wanted, f"change {number}")
            if "FAILED" not in call_log().read_text():
                self.assertGreater(number, 3)
                return
        self.fail("the settings are written without end")

    @staticmethod
    def is_harmless(line):
        """What may fail without a word: the lock's own file, and the tidying of files that nothing names."""
        name, path = line.split("\t")[:2]
        return ("lock" in pathlib.Path(path).name or name in ("unlink", "mkdir") or "Temp" in path
                or path.endswith(".tmp") and name == "unlink")

    def test_a_killed_command_leaves_each_note_as_it_was_or_as_it_became(self):
        global WORLD
        points, flows = 0, len(WORLD.flows())
        for seed in range(SEED, SEED + SEEDS):
            if seed > SEED:
                WORLD.close()
                WORLD = World(PROGRAMS, seed)
                unittest.addModuleCleanup(WORLD.close)
            for name in WORLD.flows():
                with self.subTest(flow=name, seed=seed):
                    points += self.walk(name, "KILL")
            print(f"{points} kill points, seeds {SEED} to {seed}", file=sys.stderr)
        self.assertGreater(points, 10 * flows * SEEDS)

    def test_a_failed_change_is_told_and_loses_nothing(self):
        points = 0
        for name in WORLD.flows():
            for error in ERRORS:
                for lasting in (False, True):
                    with self.subTest(flow=name, error=error, lasting=lasting):
                        points += self.walk(name, getattr(errno, error), lasting)
        print(f"{points} failures: {', '.join(ERRORS)}, each once and from then on", file=sys.stderr)
        self.assertGreater(points, 10 * len(WORLD.flows()))

    @unittest.skipUnless(os.environ.get("LORE_FULL_DISK"), "only when LORE_FULL_DISK asks for it")
    def test_a_full_disk_is_told_and_loses_nothing(self):
        runs = told = 0
        old, made = WORLD.state(WORLD.base), {name: self.made_by(name) for name in WORLD.flows()}
        disk = WORLD.copy()
        if not self.mount(disk, "size=1m"):
            self.skipTest("a file system can't be mounted here")
        self.addCleanup(subprocess.run, ["umount", str(disk)], check=False)
        for name, args in WORLD.flows().items():
            for blocks in (0, 1, 2, 3, 4, 6, 8, 12, 16):
                self.fill(disk, blocks)
                result, where = PROGRAMS.run(disk, *args), f"{name}, {blocks} blocks left"
                runs, told = runs + 1, told + (result.returncode == 3)
                (disk / "ballast").unlink()
                self.assertIn(result.returncode, (0, 3), f"{where}: {result.stderr}")
                wanted = made[name] if result.returncode == 0 else old
                self.assertEqual(WORLD.problem(disk, wanted, made[name], result.returncode == 3), "", where)
                if result.returncode == 3:
                    self.assertTrue(result.stderr, where)
                    self.mount(disk, "remount,size=64m")
                    self.assert_retry_works(args, disk, old, made[name], where)
        print(f"{runs} commands on a full disk, {told} told", file=sys.stderr)
        self.assertGreater(told, len(WORLD.flows()))

    def made_by(self, name):
        data = WORLD.copy()
        self.assertEqual(PROGRAMS.run(data, *WORLD.flows()[name]).returncode, 0, name)
        return WORLD.state(data)

    @staticmethod
    def mount(disk, options):
        return subprocess.run(["mount", "-t", "tmpfs", "-o", options, "lore", str(disk)], capture_output=True,
                              check=False).returncode == 0

    def fill(self, disk, blocks):
        """The data folder anew on a disk of 1 MB, and so much beside it that only a few blocks are left."""
        for entry in disk.iterdir():
            shutil.rmtree(entry) if entry.is_dir() else entry.unlink()
        self.mount(disk, "remount,size=1m")
        shutil.copytree(WORLD.base, disk, dirs_exist_ok=True)
        space = os.statvfs(disk)
        with (disk / "ballast").open("wb") as ballast:
            ballast.write(bytes(max(space.f_bfree - blocks, 0) * space.f_frsize))

    def test_what_is_written_is_flushed_before_it_takes_its_place(self):
        for name, args in WORLD.flows().items():
            with self.subTest(flow=name):
                data, log = WORLD.copy(), WORLD.folder / "order"
                log.unlink(missing_ok=True)
                PROGRAMS.run(data, *args, **faults(SHIM, data, LORE_FAULT_LOG=log))
                self.check_order(log.read_text().splitlines())

    def check_order(self, lines):
        unflushed, folders = set(), set()
        for line in lines:
            call, path, second = (line.split("\t") + ["", ""])[:3]
            if call in ("write", "truncate", "create"):
                unflushed.add(path)
            elif call == "fsync":
                unflushed.discard(path)
                folders.discard(path)
            elif call == "rename":
                self.assertNotIn(path, unflushed, f"{line} before its bytes were on the disk")
                unflushed.discard(second)
                folders.add(str(pathlib.Path(second).parent))
        self.assertFalse(folders, "renamed without a flush of the folder")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[5:])
