#!/usr/bin/env python3
"""Changes one line of the core at a time and asks whether the tests of its folder notice.

    tests/trust/mutants.py [--count 240] [--seed 1] [--minutes M] [--build build/mutants] [folder...]

The changes are chosen by rule from the sources as they are, the same ones for the same seed: comparisons turned or
moved by one, "and" for "or", a condition without its "not", a constant changed, a statement dropped. A change is
compiled beside the tree and linked in front of its library, so that nothing but one object is built for it. It checks
the bounds of its lists. What can't be compiled doesn't count; what changes nothing that a program could tell stands in
mutants_equal.txt with the reason.
Ends with status 1 below the goal.
"""

import argparse
import json
import os
import random
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time

GOAL = 85
SLOW_MS = 700
FOLDERS = ("base", "rtf", "notes", "exchange")
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
EQUAL = os.path.join(ROOT, "tests/trust/mutants_equal.txt")

# What may become what. Operators stand between blanks, so that templates and pointers are left alone.
CHANGES = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "), (r" == ", " != "), (r" != ", " == "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" \+ 1\b", ""), (r" - 1\b", ""), (r"\+\+(?=\w)", "--"),
    (r"(?<=[(\s])!(?=\w)", ""), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r" \+= ", " -= "),
    (r"std::min\(", "std::max("), (r"std::max\(", "std::min("), (r"\bcontinue;", "break;"),
]
CONSTANT = re.compile(r"^(\s*(?:static )?constexpr \w[\w:]* \w+ = )(\d+)(;.*)$")
# A call or an assignment that fills its line.
STATEMENT = re.compile(r"^\s+(?!return\b|using\b|delete\b|case\b|default\b|break\b|continue\b|else\b|throw\b)"
                       r"[\w.:>\[\]-]+(?:\([^;]*\)|(?: [+|&-]?= [^;]+))(?:\.\w+\([^;]*\))*;$")


def source_lines(path):
    """The lines of a file that hold code."""
    for number, line in enumerate(open(path, encoding="utf-8")):
        text = line.rstrip("\n")
        if text.strip() and not re.match(r"\s*(//|#|template|static_assert|\{\")", text):
            yield number, text


def changes_of(text):
    for old, new in CHANGES:
        code = text.split("//")[0]
        for match in re.finditer(old, code):
            if code[:match.start()].count('"') % 2 == 0:
                yield text[:match.start()] + new + text[match.end():]
    if constant := CONSTANT.match(text):
        yield constant[1] + str(int(constant[2]) + 1) + constant[3]
    # Room that isn't made in advance is made later.
    if STATEMENT.match(text) and ".reserve(" not in text and "->reserve(" not in text:
        yield re.sub(r"\S.*", ";", text)


def mutants_of(folder, rng):
    """One change of each line that has any, in an order of its own."""
    found = []
    directory = os.path.join(ROOT, "src", folder)
    for name in sorted(n for n in os.listdir(directory) if n.endswith(".cpp")):
        path = os.path.join("src", folder, name)
        for number, text in source_lines(os.path.join(ROOT, path)):
            if choices := list(changes_of(text)):
                found.append((path, number, text, rng.choice(choices)))
    rng.shuffle(found)
    return found


def equal_changes():
    """(path, line, changed line), without the blanks around."""
    equal = set()
    for line in open(EQUAL, encoding="utf-8"):
        if line.strip() and not line.startswith("#"):
            path, old, new, reason = (part.strip() for part in line.split(" | "))
            assert reason
            equal.add((path, old, new))
    return equal


class Bench:
    """Compiles changed files and runs the tests of a folder with them."""

    def __init__(self, build):
        self.build = os.path.abspath(build)
        self.folder = tempfile.mkdtemp(prefix="mutants-")
        if not os.path.exists(os.path.join(self.build, "build.ninja")):
            linker = next(name for name in ("mold", "lld", "bfd") if shutil.which("ld." + name))
            subprocess.run(["cmake", "-S", ROOT, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-Wno-dev",
                            "-DCMAKE_CXX_FLAGS_DEBUG=-O0", f"-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld={linker}",
                            "-DLORE_DESKTOP=OFF"], check=True, stdout=subprocess.DEVNULL)
        commands = json.load(open(os.path.join(self.build, "compile_commands.json"), encoding="utf-8"))
        self.compiles = {os.path.realpath(os.path.join(c["directory"], c["file"])): c["command"] for c in commands}

    def prepare(self, folder):
        """Builds the tests of a folder, and measures them."""
        program = "test_" + folder
        subprocess.run(["ninja", "-C", self.build, program], check=True, stdout=subprocess.DEVNULL)
        listed = subprocess.run(["ninja", "-C", self.build, "-t", "commands", program], check=True, text=True,
                                capture_output=True).stdout.strip().splitlines()
        self.link = next(line for line in reversed(listed) if f" -o bin/{program} " in line)
        self.link = self.link.split("&& ", 1)[1].rsplit(" && :", 1)[0]
        run = subprocess.run([os.path.join(self.build, "bin", program)], text=True, capture_output=True, cwd=self.folder)
        took = [(name, int(ms)) for name, ms in re.findall(r"^\[ +OK \] (\S+) \((\d+) ms\)", run.stdout, re.M)]
        if run.returncode != 0 or not took:
            sys.exit(f"{program} fails without a change")
        # The quick tests first: nearly all changes are noticed by them.
        slow = ":".join(name for name, ms in took if ms > SLOW_MS)
        self.rounds = [("-" + slow, sum(ms for _, ms in took if ms <= SLOW_MS) / 1000)]
        if slow:
            self.rounds.append((slow, sum(ms for _, ms in took if ms > SLOW_MS) / 1000))

    def tests_pass(self, program, only, limit):
        # One process and its children end when the time is over.
        quick = subprocess.Popen([program, "--gtest_brief=1", "--gtest_fail_fast", "--gtest_filter=" + only],
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=self.folder)
        try:
            return quick.wait(limit) == 0
        except subprocess.TimeoutExpired:
            quick.kill()
            quick.wait()
            return False

    def survives(self, folder, path, lines):
        """True, False, or None for what can't be compiled."""
        source = os.path.join(self.folder, os.path.basename(path))
        with open(source, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")
        command = self.compiles[os.path.join(ROOT, path)]
        compiled = shlex.split(command.split("ccache ", 1)[-1] if "ccache" in command else command)
        at = compiled.index("-o")
        compiled[at + 1] = os.path.join(self.folder, "changed.o")
        compiled[compiled.index("-c") + 1] = source
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "cwd": self.build}
        # A parameter that is used no more is no fault of the tests; what the sanitizers find in CI is found here too.
        if subprocess.run(compiled + ["-w", "-D_GLIBCXX_ASSERTIONS"], **quiet).returncode != 0:
            return None
        program = os.path.join(self.folder, "test_" + folder)
        link = shlex.split(self.link)
        at = link.index("-o")
        link[at + 1:at + 2] = [program, os.path.join(self.folder, "changed.o")]
        if subprocess.run(link, **quiet).returncode != 0:
            return None
        return all(self.tests_pass(program, only, seconds * 4 + 20) for only, seconds in self.rounds)


def check_itself(bench, folder):
    """A file that is as it was survives, one that ends the program doesn't: so the changed object is what runs."""
    path = next(p for p, *_ in mutants_of(folder, random.Random(0)))
    lines = open(os.path.join(ROOT, path), encoding="utf-8").read().splitlines()
    planted = lines + ["__attribute__((constructor)) static void EndTheProgram() { __builtin_trap(); }"]
    if bench.survives(folder, path, lines) is not True or bench.survives(folder, path, planted) is not False:
        sys.exit(f"the planted fault in {path} isn't found, or an unchanged file fails")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folders", nargs="*", default=FOLDERS)
    parser.add_argument("--count", type=int, default=240)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--minutes", type=float, default=24 * 60)
    parser.add_argument("--build", default=os.path.join(ROOT, "build/mutants"))
    options = parser.parse_args()
    bench = Bench(options.build)
    equal = equal_changes()
    killed = survived = 0
    for number, folder in enumerate(options.folders):
        end = time.monotonic() + options.minutes * 60 / len(options.folders)
        bench.prepare(folder)
        check_itself(bench, folder)
        mutants = mutants_of(folder, random.Random(options.seed + number))
        here = {True: 0, False: 0}
        for path, at, old, new in mutants:
            change = (path, old.strip(), new.strip())
            if change in equal:
                continue
            if sum(here.values()) >= options.count / len(options.folders) or time.monotonic() > end:
                break
            lines = open(os.path.join(ROOT, path), encoding="utf-8").read().splitlines()
            lines[at] = new
            result = bench.survives(folder, path, lines)
            if result is None:
                continue
            here[result] += 1
            print(("SURVIVES " if result else "killed   ") + " | ".join(change), flush=True)
        if sum(here.values()):
            print(f"== {folder}: {here[False]} of {sum(here.values())} killed", flush=True)
        killed, survived = killed + here[False], survived + here[True]
    share = 100 * killed / max(1, killed + survived)
    print(f"== seed {options.seed}: {killed} of {killed + survived} killed, {share:.1f} %, goal {GOAL} %")
    sys.exit(0 if share >= GOAL else 1)


if __name__ == "__main__":
    main()
