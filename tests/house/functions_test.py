#!/usr/bin/env python3
"""Lengths of the functions in src/, each from its signature to its last brace. Relies on clang-format: a blank stands
before the brace of a body, none before that of a value. Usage: functions_test.py REPOSITORY."""
import functools
import pathlib
import re
import sys

LIMITS = {25: 0.1, 60: 0.02, 100: 0}  # lines, and the share of the functions that may have more
NO_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\])+\'|'
                     r"^ *#(?:[^\n]*\\\n)*[^\n]*|^ *(?:public|protected|private|signals)(?: slots)?:$|^ *Q_OBJECT$|"
                     r"^ *template <[^\n]*>$|\boperator[^\w\s(]+", re.M | re.S)
SCOPE = re.compile(r"\s*(?:inline )?(?:namespace|class|struct|union|enum|extern)\b")


def functions(text):
    """Yields the first line and the number of lines of each; a lambda belongs to what stands around it."""
    text = NO_CODE.sub(lambda found: "\n" * found[0].count("\n"), text)
    opened, begin = [], 0  # for each open brace where the function begins, 0 for a scope, -1 for others
    for mark in re.finditer("[{};]", text):
        head, closed = text[begin:mark.start()], opened.pop() if mark[0] == "}" else 0
        if mark[0] == "{":
            bare = functools.reduce(lambda rest, _: re.sub(r"\([^()]*\)", "", rest), range(9), head)
            is_body = bare != head and head[-1].isspace() and not re.search("[=()]", bare)
            start = mark.start() - len(head.lstrip())
            opened.append(-1 if any(opened) else start if is_body else 0 if SCOPE.match(head) else -1)
        elif closed > 0:
            yield text.count("\n", 0, closed) + 1, text.count("\n", closed, mark.start()) + 1
        if closed >= 0 and not any(opened):
            begin = mark.end()


if __name__ == "__main__":
    lengths = {f"{path}:{line}": length for path in pathlib.Path(sys.argv[1], "src").rglob("*.[ch]*")
               for line, length in functions(path.read_text(encoding="utf-8"))}
    for limit, share in LIMITS.items():
        over = [place for place, length in lengths.items() if length > limit]
        if len(over) > share * len(lengths):
            sys.exit(f"{len(over)} of {len(lengths)} functions have more than {limit} lines, one is {over[0]}")
