#!/usr/bin/env python3
"""The reminder agent as a process: what it shows and remembers, what it is told, and that there is one of it.

Usage: agent_run_test.py LBAGENT LOREBINDER [unittest arguments]"""
import datetime
import os
import pathlib
import shutil
import signal
import socket
import struct
import subprocess
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from process_world import WAIT, ProcessTest, message

AGENT = PROGRAM = None
IS_ME, ACTIVATE, COMMAND = 1, 2, 0
ON = 2112


def fixed(number):
    return b"%.16d" % number if number >= 0 else b"-%.15d" % -number


def text(value):
    return fixed(len(value)) + value.encode()


def moment(date):
    return text(date.strftime("%Y-%m-%d-%H-%M-%S"))


def reminder(name, when, kind=0):
    return b"".join([fixed(kind), fixed(0), fixed(-1), fixed(-1), fixed(0), moment(when), moment(when), moment(when),
                     text(name), text(""), text(""), text(""), text(""), text("Bring the map"), text(name),
                     text("")])


class AgentRun(ProcessTest):
    def setUp(self):
        super().setUp()
        self.data = self.top / "data"
        self.files = self.data / "Data Files"
        self.files.mkdir(parents=True)
        self.bin = self.top / "a bin"
        self.bin.mkdir()
        shutil.copy(AGENT, self.bin / "LBAgent")
        for variable in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "DISPLAY", "WAYLAND_DISPLAY"):
            self.environment.pop(variable, None)

    def start(self, program="LBAgent", *more):
        first = ["Lorebinder"] if program == "LBAgent" else []
        return self.launch(self.bin / program, *first, "--data", self.data, "--ready-line", *more)

    def start_ready(self, program="LBAgent", *more):
        process = self.start(program, *more)
        for line in process.stderr:
            if line == "ready\n":
                return process
        self.fail(f"{program} ends before it is ready")

    def put(self, *reminders):
        new = self.files / "Rem.new"
        new.write_bytes(b"%020.9f" % 11.56 + fixed(len(reminders)) + b"".join(reminders))
        new.replace(self.files / "Rem.dat")

    def shown(self):
        try:
            return (self.files / "AgentShown.dat").read_bytes()
        except FileNotFoundError:
            return b""

    def until(self, what, message):
        end = time.monotonic() + WAIT
        while not what():
            self.assertLess(time.monotonic(), end, message)
            time.sleep(0.02)

    def ask(self, tag, words=b"", role="LorebinderAgent"):
        """The answer to a message; nothing where nobody listens."""
        for path in self.top.glob(f"{role}-*"):
            with socket.socket(socket.AF_UNIX) as peer:
                peer.settimeout(WAIT)
                try:
                    peer.connect(str(path))
                    peer.sendall(message(tag, words))
                    answer = peer.recv(4)
                except (ConnectionError, FileNotFoundError):
                    return None
                return struct.unpack("<I", answer)[0] if answer else None
        return None

    def close(self, process):
        self.assertEqual(self.ask(COMMAND, b"TQRAGENTCLOSE"), 1)
        self.assertEqual(process.wait(WAIT), 0)

    def test_what_was_missed_is_shown_once(self):
        now = datetime.datetime.now()
        self.put(reminder("{Old}", now - datetime.timedelta(days=3)), reminder("{Mail}", now, 1),
                 reminder("{Later}", now + datetime.timedelta(days=3)))
        before = (self.files / "Rem.dat").read_bytes()
        self.close(self.start_ready())
        shown = self.shown()
        self.assertIn(b"{Old}", shown)
        self.assertNotIn(b"{Mail}", shown)
        self.assertNotIn(b"{Later}", shown)
        stamp = (self.files / "AgentShown.dat").stat().st_mtime_ns
        self.close(self.start_ready())
        self.assertEqual((self.shown(), (self.files / "AgentShown.dat").stat().st_mtime_ns), (shown, stamp))
        self.assertEqual((self.files / "Rem.dat").read_bytes(), before)

    def test_a_changed_file_is_read_whether_told_or_not(self):
        self.start_ready()
        now = datetime.datetime.now()
        self.put(reminder("{Quiet}", now))
        self.until(lambda: b"{Quiet}" in self.shown(), "a change of the file isn't seen")
        self.put(reminder("{Quiet}", now), reminder("{Told}", now))
        self.assertEqual(self.ask(COMMAND, b"TQRAGENTRELOADREMINDERS"), 1)
        self.until(lambda: b"{Told}" in self.shown(), "a message is not followed")

    def test_a_popup_comes_at_its_time(self):
        self.start_ready()
        when = datetime.datetime.now().replace(microsecond=0) + datetime.timedelta(seconds=4)
        self.put(reminder("{Soon}", when))
        self.until(lambda: b"{Soon}" in self.shown(), "the popup doesn't come")
        late = (datetime.datetime.now() - when).total_seconds()
        self.assertGreaterEqual(late, 0)
        self.assertLess(late, 20)

    def test_there_is_one_agent(self):
        both = [self.start(), self.start(), self.start()]
        self.until(lambda: sum(p.poll() is None for p in both) == 1, "more than one agent stays")
        self.until(lambda: self.ask(IS_ME) == 1, "nobody answers")
        self.assertEqual([p.returncode for p in both if p.poll() is not None], [0, 0])
        self.assertEqual(len(list(self.top.glob("LorebinderAgent-*"))), 1)
        last = next(p for p in both if p.poll() is None)
        last.send_signal(signal.SIGKILL)
        last.wait(WAIT)
        self.close(self.start_ready())

    def test_messages_of_any_kind_do_no_harm(self):
        first = self.start_ready()
        for tag, words, answer in ((IS_ME, b"", 1), (ACTIVATE, b"", 1), (COMMAND, b"\x00\xff" * 900, 0),
                                   (COMMAND, b"TQRAGENTCHECKSETTINGS", 1), (9999, b"TQRAGENTCLOSE", 0)):
            self.assertEqual(self.ask(tag, words), answer, words[:30])
        self.assertEqual(self.ask(IS_ME), 1)
        self.assertIsNone(first.poll())

    def test_words_need_no_display(self):
        self.environment["QT_QPA_PLATFORM"] = "xcb"
        for option, word in (("--help", "Lorebinder"), ("--version", "LBAgent 1.56")):
            result = subprocess.run([self.bin / "LBAgent", option], env=self.environment, capture_output=True,
                                    encoding="utf-8", timeout=WAIT, check=False)
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertIn(word, result.stdout)

    def test_the_program_starts_its_agent_and_takes_it_along(self):
        shutil.copy(PROGRAM, self.bin / "lorebinder")
        settings = self.data / "settings.ini"
        first = self.start_ready("lorebinder")
        self.until(lambda: self.ask(IS_ME) == 1, "a first run starts no agent")
        [entry] = (self.top / ".config/autostart").iterdir()
        self.assertRegex(entry.name, "^LBAgent-[0-9a-f]{16}.desktop$", "it isn't the one of the user's own data")
        self.assertIn(f'Exec="{self.bin}/LBAgent" Lorebinder "--data" "{self.data}"', entry.read_text())
        self.assertEqual(self.ask(COMMAND, b"TQRCLOSELOREBINDER", "TQRLorebinder"), 1)
        # Who reads what the program says, as in `lorebinder | grep`, doesn't wait for the agent.
        first.communicate(timeout=WAIT)
        self.assertEqual(first.returncode, 0)
        self.assertEqual(self.ask(IS_ME), 1, "the agent stays")
        self.assertIn(f"StartupAgent={ON}", settings.read_text())
        self.assertEqual(self.ask(COMMAND, b"TQRAGENTCLOSE"), 1)
        self.until(lambda: self.ask(IS_ME) is None, "the agent stays")

        self.set_option(settings, "RunAgent", ON)
        second = self.start_ready("lorebinder")
        self.until(lambda: self.ask(IS_ME) == 1, "no agent is started")
        self.assertEqual(self.ask(COMMAND, b"TQRCLOSELOREBINDER", "TQRLorebinder"), 1)
        self.assertEqual(second.wait(WAIT), 0)
        self.until(lambda: self.ask(IS_ME) is None, "the agent isn't closed")

    def set_option(self, settings, name, value):
        kept = [line for line in settings.read_text().splitlines() if not line.startswith(name + "=")]
        at = kept.index("[Options]") + 1
        settings.write_text("\n".join([*kept[:at], f"{name}={value}", *kept[at:]]) + "\n")

    def test_the_program_follows_options_that_its_agent_changes(self):
        shutil.copy(PROGRAM, self.bin / "lorebinder")
        settings = self.data / "settings.ini"
        first = self.start_ready("lorebinder")
        self.until(lambda: self.ask(IS_ME) == 1, "a first run starts no agent")
        self.set_option(settings, "RunAgent", ON)
        self.set_option(settings, "StartupAgent", 0)
        self.assertEqual(self.ask(COMMAND, b"TQRCHECKAGENTOPTIONS", "TQRLorebinder"), 1)
        self.assertEqual(self.ask(COMMAND, b"TQRCLOSELOREBINDER", "TQRLorebinder"), 1)
        self.assertEqual(first.wait(WAIT), 0)
        self.until(lambda: self.ask(IS_ME) is None, "the agent isn't closed")
        self.assertIn(f"RunAgent={ON}\n", settings.read_text())
        self.assertIn("StartupAgent=0\n", settings.read_text())

    def open_display(self):
        """A display of this test; gives a function that runs xdotool there."""
        read, write = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-nolisten", "tcp"], pass_fds=[write],
                                  stderr=subprocess.DEVNULL)
        self.addCleanup(lambda: (server.kill(), server.wait()))
        os.close(write)
        with os.fdopen(read) as number:
            self.environment["DISPLAY"] = f":{number.readline().strip()}"
        self.environment["QT_QPA_PLATFORM"] = "xcb"
        return lambda *words: subprocess.run(["xdotool", *words], env=self.environment, capture_output=True, text=True,
                                             check=False).stdout

    @unittest.skipUnless(shutil.which("Xvfb") and shutil.which("xdotool"), "needs Xvfb and xdotool")
    def test_open_leads_to_the_day_of_the_reminder(self):
        xdotool = self.open_display()
        shutil.copy(PROGRAM, self.bin / "lorebinder")
        self.put(reminder("{Now}", datetime.datetime.now()))
        (self.data / "settings.ini").write_text("[Options]\nProgVersion=11.56\n")
        self.start_ready()

        def window(name):
            return xdotool("search", "--onlyvisible", "--name", name).split()

        self.until(lambda: window("^Reminders"), "no window opens")
        xdotool("windowfocus", "--sync", window("^Reminders")[0], "key", "alt+o")
        self.until(lambda: window("Edit Day"), "the day isn't shown")
        self.assertFalse(window("^Reminders"))
        # The program that runs by now is told.
        second = self.start("lorebinder", "--reminder", "{Unknown}")
        self.assertEqual(second.wait(WAIT), 0)

    @unittest.skipUnless(shutil.which("Xvfb") and shutil.which("xdotool"), "needs Xvfb and xdotool")
    def test_the_hot_key_makes_a_note_of_what_is_selected(self):
        xdotool = self.open_display()
        shutil.copy(PROGRAM, self.bin / "lorebinder")
        (self.data / "settings.ini").write_text("[Options]\nProgVersion=11.56\nHotkey=76\nHotkeyMod=6\n")
        self.start_ready()
        self.start_ready("lorebinder")
        window = xdotool("search", "--onlyvisible", "--name", "Lorebinder Premium").split()[0]
        xdotool("windowfocus", "--sync", window)
        xdotool("key", "ctrl+f")
        xdotool("type", "--delay", "30", "lamplight")
        xdotool("key", "ctrl+a")  # the selection of the search box
        time.sleep(0.5)
        xdotool("key", "ctrl+alt+l")

        def drafts():
            return [path for path in self.files.rglob("Drafts/*.draft") if b"lamplight" in path.read_bytes()]

        self.until(drafts, "the selection doesn't come into a note")

    @unittest.skipUnless(shutil.which("Xvfb") and shutil.which("xdotool"), "needs Xvfb and xdotool")
    def test_on_a_display_it_opens_a_window_and_has_a_hot_key(self):
        xdotool = self.open_display()
        (self.bin / "lorebinder").write_text('#!/bin/sh\necho "$@" >> "$(dirname "$0")/started"\n')
        (self.bin / "lorebinder").chmod(0o755)
        settings = self.data / "settings.ini"
        settings.write_text("[Options]\nHotkey=76\nHotkeyMod=6\n")
        self.put(reminder("{Now}", datetime.datetime.now()))
        self.start_ready()
        self.until(lambda: xdotool("search", "--onlyvisible", "--name", "^Reminders"), "no window opens")
        started = self.bin / "started"
        for key, comes in (("ctrl+alt+k", False), ("alt+l", False), ("ctrl+alt+l", True)):
            xdotool("key", key)
            time.sleep(0.5)
            if comes:
                self.until(started.exists, "the hot key does nothing")
            else:
                self.assertFalse(started.exists(), key)
        self.assertEqual(started.read_text().split()[-1], "--capture")
        # Another key takes its place, as the options page would set it.
        started.unlink()
        settings.write_text("[Options]\nHotkey=120\nHotkeyMod=0\n")  # F9
        self.assertEqual(self.ask(COMMAND, b"TQRAGENTCHECKSETTINGS"), 1)
        time.sleep(0.5)
        xdotool("key", "ctrl+alt+l")
        time.sleep(0.5)
        self.assertFalse(started.exists())
        xdotool("key", "F9")
        self.until(started.exists, "the new hot key does nothing")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    AGENT, PROGRAM = (pathlib.Path(sys.argv.pop(1)).resolve() for _ in range(2))
    unittest.main()
