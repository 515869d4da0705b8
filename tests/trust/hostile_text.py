#!/usr/bin/env python3
"""Hostile rich text and hostile record files through the command line: what stands behind the odd part is kept, and the
memory stays below 16 times the file and a fixed part. Tells the speed, and beside it that of pandoc where it is there.

Usage: hostile_text.py LOREBINDER_CLI
LORE_FULL=1: the full sizes (otherwise a hundredth of them); LORE_PANDOC: seconds that pandoc may take for a file (0)."""
import json
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile

CLI = str(pathlib.Path(sys.argv[1]).resolve())
FULL = bool(os.environ.get("LORE_FULL"))
PANDOC = int(os.environ.get("LORE_PANDOC", "0"))
TIMES, FIXED = 16, 64 << 20
LONGEST = 600  # seconds
WANTED = 50  # MB a second


def sized(count):
    return count if FULL else max(count // 100, 1)


def rtf(body):
    return b"{\\rtf1\\ansi " + body + b"}"


def texts():
    """Name, rich text, and what its plain text ends with."""
    deep = sized(10_000_000)
    yield "10,000,000 groups", rtf(b"{" * deep + b"deep" + b"}" * deep + b" end"), "deep end"
    yield "10,000,000 open groups", rtf(b"before " + b"{" * deep + b"deep")[:-1], "before deep"
    yield "groups with formats", rtf(b"{\\b\\i " * (deep // 4) + b"x" + b"}" * (deep // 4) + b" end"), "x end"
    for number in (2 ** 31 - 1, -1, -2 ** 31, 10 ** 30):
        yield f"\\bin{number:g}", rtf(b"{\\pict\\bin%d \xff\xfe}" % number + b" word" * sized(2_000_000)), " word"
    yield "\\bin true", rtf(b"{\\pict\\bin4 {}}{} end" * sized(500_000)), " end"
    yield "\\u out of range", rtf(b"\\u99999999999 ?\\u-70000 ?\\u55296 ?" * sized(400_000) + b" end"), " end"
    fonts = b"".join(b"{\\f%d F;}" % number for number in range(sized(1_000_000)))
    yield "1,000,000 fonts", rtf(b"{\\fonttbl" + fonts + b"}\\f7 end"), "end"
    yield "1,000,000 colours", rtf(b"{\\colortbl;" + b"\\red1\\green2;" * sized(1_000_000) + b"}\\cf9 end"), "end"
    field = b'{\\field{\\*\\fldinst HYPERLINK "a"}{\\fldrslt b}}'
    yield "1,000,000 fields", rtf(field * sized(1_000_000) + b" end"), "b end"
    yield "100,000 cells", rtf(b"\\trowd" + b"\\cellx100" * sized(100_000) + b"\\intbl " + b"a\\cell " * sized(100_000) +
                               b"\\row end"), "end"
    yield "hex picture of odd length", rtf(b"{\\pict\\pngblip " + b"0f" * sized(5_000_000) + b"a} end"), " end"


def documents():
    """Name and a rich text that is all paragraphs, or all runs: an object of JSON for each is printed."""
    yield "400,000 paragraphs", rtf(b"\\par" * 400_000 + b" end")
    yield "400,000 runs", rtf(b"{\\b a}b" * 200_000)
    yield "100,000 links", rtf(b'{\\field{\\*\\fldinst HYPERLINK "a"}{\\fldrslt b}}' * 100_000)


def notes_file(count, body=b""):
    return b"%020.9f%016d" % (11.56, count) + body


def records():
    """Name and a note file. What is in it doesn't count: it must be read or refused within the memory."""
    for number in (2 ** 31 - 1, -1, 10 ** 15):
        yield f"{number} notes", notes_file(number)
        yield f"a text of {number}", notes_file(1, b"%016d%016d%016d" % (1, 0, number) + b"x" * 1000)
    yield "numbers alone", notes_file(10 ** 9, b"%016d" % 1 * sized(3_000_000))
    yield "counts within counts", notes_file(10 ** 9, b"%016d" % 999_999_999 * sized(3_000_000))
    yield "spaces", b" " * sized(50_000_000)
    yield "zeros", bytes(sized(50_000_000))


class Hostile:
    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lore-hostile-"))
        self.faults, self.files, self.slow, self.against = [], 0, 0, 0

    def measured(self, *command, longest=LONGEST, most=None):
        """Status (None: not within the time), output, seconds of processor time and the largest memory in bytes."""
        def limit():
            if most:
                resource.setrlimit(resource.RLIMIT_AS, (most, most))
        out = self.folder / "out"
        with out.open("wb") as file:
            process = subprocess.Popen([*map(str, command)], stdout=file, stderr=subprocess.DEVNULL, preexec_fn=limit)
            # The limit of a stuck one is that of processor time, for the machine may do much else.
            resource.prlimit(process.pid, resource.RLIMIT_CPU, (longest, longest))
            _, status, used = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        return process.returncode, out.read_bytes(), used.ru_utime + used.ru_stime, used.ru_maxrss << 10

    def check(self, name, file, output, peak, end):
        size = file.stat().st_size
        if peak > TIMES * size + FIXED:
            self.faults.append(f"{name}: {peak >> 20} MiB for a file of {size} bytes")
        text = output.decode(errors="replace").rstrip("\n")
        if end is not None and not text.endswith(end):
            self.faults.append(f"{name}: ends with {text[-40:]!r}")

    def text(self, name, content, end):
        file = self.folder / "hostile.rtf"
        file.write_bytes(content)
        status, output, seconds, peak = self.measured(CLI, "text", file)
        self.files += 1
        self.check(name, file, output, peak, end)
        if status != 0:
            self.faults.append(f"{name}: status {status}")
        speed = len(content) / 1e6 / max(seconds, 1e-3)
        self.slow += speed < WANTED
        line = f"{name:26} {len(content) / 1e6:6.1f} MB  {speed:6.0f} MB/s  {peak >> 20:5} MiB {peak / len(content):6.1f} x"
        if PANDOC and shutil.which("pandoc"):
            line += self.beside(file, seconds)
        print(line)

    def beside(self, file, own):
        """Pandoc on the same file: how long it took, or what became of it."""
        status, _, seconds, _ = self.measured("pandoc", "-f", "rtf", "-t", "plain", file, longest=PANDOC, most=8 << 30)
        if status == 0 and seconds < 20 * own:
            self.against += 1
        return f"  pandoc {seconds:5.1f} s ({seconds / max(own, 1e-3):4.0f} x{'' if status == 0 else ', no result'})"

    def document(self, name, content):
        file = self.folder / "hostile.rtf"
        file.write_bytes(content)
        status, output, _, peak = self.measured(CLI, "--json", "text", file)
        self.files += 1
        self.check(f"{name} as JSON", file, output, peak, None)
        printed = json.loads(output) if status == 0 else {"text": "", "paragraphs": []}
        runs = "".join(run["text"] for paragraph in printed["paragraphs"] for run in paragraph["runs"])
        if status != 0 or not runs or runs.rstrip("\n") != printed["text"].rstrip("\n"):
            self.faults.append(f"{name} as JSON: status {status}, {len(runs)} characters in runs")

    def record(self, name, content):
        for file in (self.folder / "DAY01012020.dat", self.folder / "Sources.dat"):
            file.write_bytes(content)
            status, output, _, peak = self.measured(CLI, "--json", "dump", file)
            self.files += 1
            self.check(f"{file.name}, {name}", file, output, peak, None)
            if status not in (0, 1, 3):
                self.faults.append(f"{file.name}, {name}: status {status}")

    def check_itself(self):
        """A text that lacks its end and a memory beyond the limit are found."""
        file = self.folder / "good.rtf"
        file.write_bytes(rtf(b"good end"))
        _, output, _, peak = self.measured(CLI, "text", file)
        self.check("itself", file, output, peak, "good end")
        assert not self.faults, self.faults
        self.check("itself", file, output, peak, "bad end")
        self.check("itself", file, output, FIXED * 2, "good end")
        assert len(self.faults) == 2
        self.faults.clear()

    def work(self):
        self.check_itself()
        for case in texts():
            self.text(*case)
        for case in documents():
            self.document(*case)
        for case in records():
            self.record(*case)
        print(f"{self.files} hostile files; {self.slow} of the texts below {WANTED} MB/s; pandoc within twenty times the "
              f"time: {self.against if PANDOC else 'not asked'}", file=sys.stderr)
        assert not self.faults, "\n".join(self.faults)


def main():
    hostile = Hostile()
    try:
        hostile.work()
    finally:
        shutil.rmtree(hostile.folder, ignore_errors=True)


if __name__ == "__main__":
    main()
