#!/usr/bin/env python3
"""No two names in src/ differ in case alone: whoever has read one would write the other. The case of the first letter,
which tells types and functions from values, doesn't count; names all in capitals are left out.

Usage: names_test.py REPOSITORY."""
import pathlib
import re
import sys

NO_NAMES = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|^ *#[^\n]*', re.M | re.S)
OTHERS = "errno filename inline namespace setlocale sizeof timespec typename".split()  # of C++ and its library
BOTH = {"backup", "findbyid", "hotkey", "layout", "setup", "sourceid"}  # noun and verb, or given in both forms


def alike(texts):
    """The groups of names that differ in case alone."""
    forms = {}
    for name in set(re.findall(r"\b[A-Za-z]\w*", "\n".join(NO_NAMES.sub(" ", text) for text in texts))):
        if name not in OTHERS and not name.isupper():
            own = name.rstrip("_")
            forms.setdefault(own.lower(), set()).add(own[0].lower() + own[1:])
    return [" ".join(sorted(group)) for name, group in sorted(forms.items()) if len(group) > 1 and name not in BOTH]


if __name__ == "__main__":
    planted = alike(["int noteID_, NoteId; // noteid", 'Note note; int NOTEID, a; f("A aB"); AB ab', "noteID"])
    assert planted == ["noteID noteId"], planted
    files = [path.read_text(encoding="utf-8") for path in pathlib.Path(sys.argv[1], "src").rglob("*.[ch]*")]
    found = alike(files)
    print("\n".join(found) or f"{len(files)} files")
    sys.exit(bool(found) or not files)
