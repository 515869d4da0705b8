#!/usr/bin/env python3
"""The sync at the start: a start that is to sync starts the sync program alone; the restart behind it opens the window.

Usage: sync_start_test.py LOREBINDER"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

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


def start(program, data, *more):
    environment = dict(os.environ, HOME=str(data), XDG_RUNTIME_DIR=str(data.parent), QT_QPA_PLATFORM="offscreen",
                       LC_ALL="C.UTF-8")
    return subprocess.Popen([program, "--data", data, "--ready-line", *more], env=environment, text=True,
                            stderr=subprocess.PIPE)


def wait_for(path):
    end = time.monotonic() + 20
    while not path.exists():
        assert time.monotonic() < end, f"{path} doesn't come"
        time.sleep(0.02)


def main():
    with tempfile.TemporaryDirectory() as folder:
        bin_folder, data = pathlib.Path(folder, "a bin"), pathlib.Path(folder, "data")
        bin_folder.mkdir()
        data.mkdir()
        program = bin_folder / "lorebinder"
        shutil.copy(sys.argv[1], program)
        syncer, started = bin_folder / "syncer", bin_folder / "started"
        syncer.write_text(SYNCER)
        syncer.chmod(0o755)
        settings = data / "settings.ini"
        settings.write_text(SETTINGS)

        first = start(program, data)
        assert first.wait(60) == 0 and "ready" not in first.stderr.read()
        wait_for(started)
        assert started.read_text().splitlines() == [
            str(syncer), "SYNCOPEN", "{S}", "{L}", str(data / "Data Files"), f"{bin_folder}/", "1042", "12", "11.56"
        ], started.read_text()
        assert settings.read_text() == SETTINGS
        assert [p.name for p in data.iterdir()] == ["settings.ini"], "a start that syncs writes nothing"

        started.unlink()
        restarted = start(program, data, "BypassSync")
        try:
            line = restarted.stderr.readline()
            while line and line != "ready\n":
                line = restarted.stderr.readline()
            assert line == "ready\n", "the restart doesn't open"
            assert not started.exists()
        finally:
            restarted.kill()
            restarted.wait()

        syncer.unlink()
        without = start(program, data)
        assert without.wait(60) == 0
        assert "could not be started" in without.stderr.read()
    print("a start syncs once")


if __name__ == "__main__":
    main()
