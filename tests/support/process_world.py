"""What the tests of whole programs with windows share: programs that end with the test, and messages to them."""
import os
import pathlib
import struct
import subprocess
import tempfile
import unittest

WAIT = 60  # seconds, for machines that do much else


def message(tag, text=b""):
    """A message as it goes over the socket of an instance."""
    return struct.pack("<II", tag, len(text)) + text


class ProcessTest(unittest.TestCase):
    """A folder of its own, which is the home of the programs that a test starts there."""

    def setUp(self):
        # A short name: the path of a socket below it has a limit.
        self.folder = tempfile.TemporaryDirectory(prefix="l")
        self.addCleanup(self.folder.cleanup)
        self.top = pathlib.Path(self.folder.name)
        self.environment = dict(os.environ, HOME=self.folder.name, XDG_RUNTIME_DIR=self.folder.name,
                                QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
        self.started = []
        self.addCleanup(self.end_all)

    def end_all(self):
        for process in self.started:
            process.kill()
            process.wait()
            process.stdout.close()
            process.stderr.close()

    def launch(self, *command):
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8", cwd=self.top)
        self.started.append(process)
        return process
