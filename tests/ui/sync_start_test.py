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
    """Starts the program beside its data folder, which it is given by a relative name."""
    environment = dict(os.environ, HOME=str(data), XDG_RUNTIME_DIR=str(data.parent), QT_QPA_PLATFORM="offscreen",
                       LC_ALL="C.UTF-8")
    return subprocess.Popen([program, "--data", data.name, "--ready-line", *more], env=environment, text=True,
                            cwd=data.parent, stderr=subprocess.PIPE)


def wait_for(path):
    end = time.monotonic() + 20
    while not path.exists():
        assert time.monotonic() < end, f"{path} doesn't come"
        time.sleep(0.02)


def opens(process):
    """The lines that the program has written until its window could be used."""
    lines = []
    try:
        while not lines or lines[-1] != "ready\n":
            lines.append(process.stderr.readline())
            assert lines[-1], f"the window doesn't open: {lines}"
    finally:
        process.kill()
        process.wait()
    return lines


def main():
    with tempfile.TemporaryDirectory() as folder:
        top = pathlib.Path(folder).resolve()
        bin_folder, data = top / "a bin", top / "data"
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
        opens(start(program, data, "BypassSync"))
        assert not started.exists()

        syncer.unlink()
        assert any("could not be started" in line for line in opens(start(program, data)))
    print("a start syncs once")


if __name__ == "__main__":
    main()
