#!/usr/bin/env python3
"""windows_test.py ROOT

Each window of the program is pictured by a window test. A picture is where the rules for keyboard, screen readers and
large letters are checked (tests/ui/window_rules.h), so a window without one would escape them."""

import pathlib
import re
import sys

BASES = {"QDialog", "QMainWindow", "DialogFrame", "SourceDialog"}
SHARED = {"DialogFrame", "SourceDialog", "FormDialog"}  # others derive from them, or are shown by the functions around


def windows_of(sources):
    """Names of the window classes in these texts."""
    text = "\n".join(sources)
    derived = re.findall(r"^class (\w+)(?: final)? : public (\w+)", text, re.MULTILINE)
    own = re.findall(r"^(\w+)::\1\([^{]*?: QWidget\([^{]*?\bQt::Window\b", text, re.MULTILINE)
    return sorted({name for name, base in derived if base in BASES and name not in SHARED} | set(own))


def unpictured(windows, tests, headers):
    """The windows that no test with pictures speaks of, itself or in a header of the tests that it includes."""
    pictured = ""
    for text in tests:
        if re.search(r"\b(TakeShot|Shoot)\(", text):
            pictured += text + "".join(headers.get(name, "") for name in re.findall(r'#include "ui/(\w+\.h)"', text))
    return [window for window in windows if not re.search(rf"\b{window}\b", pictured)]


def check_itself():
    planted = windows_of(["class A : public QDialog {", "B::B(int x)\n    : QWidget(nullptr, Qt::Window), x_(x) {",
                          "class C final : public DialogFrame {", "D::D() : QWidget(parent) {"])
    assert planted == ["A", "B", "C"], planted
    tests = ["A dialog; TakeShot(dialog)", '#include "ui/b.h"\nShoot(dialog)', '#include "ui/c.h"\nC dialog;']
    assert unpictured(planted, tests, {"b.h": "B dialog;", "c.h": "C dialog;"}) == ["C"]


def main():
    check_itself()
    root = pathlib.Path(sys.argv[1])

    def read(folder, pattern):
        return [path.read_text() for path in sorted((root / folder).rglob(pattern))]

    headers = {path.name: path.read_text() for path in (root / "tests/ui").glob("*.h")}
    windows = windows_of(read("src", "*.h") + read("src", "*.cpp"))
    missing = unpictured(windows, read("tests/ui", "*_test.cpp"), headers)
    for window in missing:
        print(f"no window test takes a picture of {window}")
    print(f"{len(windows)} windows")
    return 1 if missing or not windows else 0


if __name__ == "__main__":
    sys.exit(main())
