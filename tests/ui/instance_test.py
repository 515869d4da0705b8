#!/usr/bin/env python3
"""One instance for each data folder: a second process hands over and ends, and messages of any kind do no harm.

Usage: instance_test.py LOREBINDER [unittest arguments]"""
import os
import pathlib
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from process_world import WAIT, ProcessTest, message

PROGRAM = None
IS_ME, ACTIVATE, DOCUMENT, COMMAND = 1, 2, 100, 0


class Instance(ProcessTest):
    def start(self, *args, data="data"):
        return self.launch(PROGRAM, "--data", self.top / data, "--ready-line", *args)

    def start_ready(self, *args, **options):
        process = self.start(*args, **options)
        self.assertEqual(self.wait_for_line(process), "ready\n")
        return process

    def wait_for_line(self, process):
        while line := process.stderr.readline():
            if line == "ready\n":
                return line
        return ""

    def socket_path(self):
        [path] = self.top.glob("TQRLorebinder-*")
        return path

    def connect(self):
        peer = socket.socket(socket.AF_UNIX)
        peer.settimeout(WAIT)
        peer.connect(str(self.socket_path()))
        self.addCleanup(peer.close)
        return peer

    def ask(self, peer, tag, text=b""):
        peer.sendall(message(tag, text))
        return struct.unpack("<I", peer.recv(4))[0]

    def fingerprint(self):
        return {p: p.read_bytes() for p in sorted((self.top / "data").rglob("*")) if p.is_file()}

    def test_help_and_version_need_no_display(self):
        environment = {key: value for key, value in os.environ.items() if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment["QT_QPA_PLATFORM"] = "xcb"
        for option, word in [("--help", "--ready-line"), ("-h", "FILE"), ("--version", "Lorebinder")]:
            with self.subTest(option=option):
                result = subprocess.run([PROGRAM, option], env=environment, capture_output=True, encoding="utf-8",
                                        timeout=WAIT, check=False)
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assertIn(word, result.stdout)

    def test_wrong_arguments_are_told(self):
        for args, word in ((("--no-such-option",), "no-such-option"), (("a.lbe", "second.lbe"), "second.lbe"),
                           (("--reminder",), "reminder")):
            with self.subTest(args=args):
                process = self.start(*args)
                _, told = process.communicate(timeout=WAIT)
                self.assertEqual(process.returncode, 2)
                self.assertIn(word, told)
        self.assertEqual(self.fingerprint(), {})

    def test_data_folder_that_cant_be_made_is_told(self):
        # A file in the place of the folder, or of the one in it. The box that says so waits for somebody to close it.
        for name, place in (("a", "a"), ("b", "b/Data Files")):
            with self.subTest(place=place):
                blocked = self.top / place
                blocked.parent.mkdir(exist_ok=True)
                blocked.write_text("in the way")
                process = self.launch(PROGRAM, "--data", self.top / name, "--settings", self.top / "settings.ini",
                                      "--ready-line")
                told = ""
                while "lorebinder: " not in told and (line := process.stderr.readline()):
                    told += line
                self.assertIn("the data folder can't be used: " + str(blocked), told)
                self.assertEqual(blocked.read_text(), "in the way")
                self.assertFalse((self.top / "settings.ini").exists(), "nothing was set up")
                process.kill()
                process.wait(WAIT)

    def test_relative_data_folder_is_one_folder_before_and_after_it_stands(self):
        first = self.launch(PROGRAM, "--data", "later", "--ready-line")
        self.assertEqual(self.wait_for_line(first), "ready\n")
        for name in ("later", self.top / "later", "./new/../later"):
            second = self.launch(PROGRAM, "--data", name)
            self.assertEqual(second.wait(WAIT), 0, name)
        self.assertEqual(len(list(self.top.glob("TQRLorebinder-*"))), 1)

    def test_second_process_hands_over_and_writes_nothing(self):
        self.start_ready()
        before = self.fingerprint()
        for args in ((), ("notes.lbe",), ("--capture",)):
            second = self.start(*args)
            self.assertEqual(second.wait(WAIT), 0, args)
        self.assertEqual(self.fingerprint(), before)
        self.assertEqual(self.ask(self.connect(), IS_ME), 1)

    def test_of_starts_at_one_time_the_others_hand_over_to_one(self):
        starts = [self.start("notes.lbe") for _ in range(4)]
        end = time.monotonic() + WAIT
        while sum(start.poll() is None for start in starts) > 1 and time.monotonic() < end:
            time.sleep(0.05)
        self.assertEqual(sorted(str(start.poll()) for start in starts), ["0", "0", "0", "None"])
        self.assertEqual(self.ask(self.connect(), IS_ME), 1)

    def test_instance_that_hangs_is_told(self):
        first = self.start_ready()
        before = self.fingerprint()
        first.send_signal(signal.SIGSTOP)
        second = self.start()
        self.assertIn("doesn't answer", second.stderr.readline())
        self.assertEqual(self.fingerprint(), before)

    def test_other_data_folder_has_an_instance_of_its_own(self):
        self.start_ready()
        self.start_ready(data="other")
        self.assertEqual(len(list(self.top.glob("TQRLorebinder-*"))), 2)

    def test_socket_of_a_killed_process_is_taken_over(self):
        self.start_ready().send_signal(signal.SIGKILL)
        self.started[0].wait(WAIT)
        self.assertTrue(self.socket_path().is_socket())
        self.start_ready()
        self.assertEqual(self.ask(self.connect(), IS_ME), 1)

    def test_socket_is_for_its_user_alone(self):
        self.start_ready()
        self.assertEqual(self.socket_path().stat().st_mode & 0o077, 0)

    def test_hostile_messages_are_refused_and_the_others_answered(self):
        first = self.start_ready()
        for bytes_ in (struct.pack("<II", DOCUMENT, 0xFFFFFFFF), struct.pack("<II", DOCUMENT, 65537) + b"x" * 1000):
            peer = self.connect()
            peer.sendall(bytes_)
            self.assertEqual(peer.recv(4), b"", "the connection is closed")
        slow = self.connect()
        slow.sendall(message(IS_ME)[:5])
        peer = self.connect()
        for tag, text, answer in ((IS_ME, b"", 1), (COMMAND, b"\x00\xff" * 1000, 0), (0xFFFFFFFF, b"x", 0),
                                  (ACTIVATE, b"", 1), (DOCUMENT, b"", 1)):
            self.assertEqual(self.ask(peer, tag, text), answer, (tag, text[:9]))
        peer.sendall(message(IS_ME) * 100)
        answers = b""
        while len(answers) < 400:
            answers += peer.recv(400)
        self.assertEqual(answers, struct.pack("<I", 1) * 100)
        begun = time.monotonic()
        self.assertEqual(slow.recv(4), b"", "who says nothing more is hung up on")
        self.assertLess(time.monotonic() - begun, WAIT)
        self.assertIsNone(first.poll())

    def test_close_command_and_signals_close_the_program(self):
        for order in (None, signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(order=order):
                first = self.start_ready(data=str(order))
                if order:
                    first.send_signal(order)
                else:
                    self.assertEqual(self.ask(self.connect(), COMMAND, b"TQRCLOSELOREBINDER"), 1)
                self.assertEqual(first.wait(WAIT), 0)
                self.assertIn("ZoomLvl", (self.top / str(order) / "settings.ini").read_text())


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve()
    with tempfile.TemporaryDirectory() as alone:  # without the agent, which a first run would start
        PROGRAM = shutil.copy(PROGRAM, alone)
        unittest.main()
