#!/usr/bin/env python3
"""Reads the includes of src/: folders reach only folders above them, the core knows no Qt, and neither units nor
folders form a circle.

Usage: layers_test.py SOURCE_ROOT. Also checks itself on trees with a planted fault."""
import pathlib
import re
import sys
import tempfile

ORDER = ("base ports settings rtf bibliography classify notes edit sources exchange notebooks calendar online app "
         "platform ui cli agent printsave").split()
FIRST_WITH_QT = ORDER.index("platform")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)


def includes(root):
    """Yields (file, quote, included) for every include of a source file, the file relative to the root."""
    for path in sorted(root.rglob("*")):
        if path.suffix in (".h", ".cpp"):
            for quote, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
                yield path.relative_to(root).as_posix(), quote, name


def unit(name):
    """A header with its source; "x_impl.h" is the private half of the unit x."""
    return name.rsplit(".", 1)[0].removesuffix("_impl")


def wrong_arrows(found):
    for file, quote, name in found:
        here = ORDER.index(file.split("/")[0])
        if quote == '"':
            folder = name.split("/")[0]
            if "/" in name and folder in ORDER and ORDER.index(folder) > here:
                yield f"{file} includes {name}, which lies below it"
            elif folder not in ORDER:
                yield f'{file} includes "{name}" by a path that does not begin at src/'
        elif here < FIRST_WITH_QT and re.match(r"Q[A-Z]|Qt", name):
            yield f"{file} includes {name}, but the core knows no Qt"


def folder_of(name):
    return name.rpartition("/")[0]


def circles(found, part):
    """Parts (units, or folders with their files) that reach themselves through includes of other parts."""
    graph = {}
    for file, quote, name in found:
        if quote == '"' and part(name) != part(file):
            graph.setdefault(part(file), set()).add(part(name))
    state = {}

    def walk(start):
        stack = [(start, iter(sorted(graph.get(start, ()))))]
        state[start] = "open"
        path = [start]
        while stack:
            node, rest = stack[-1]
            for nxt in rest:
                if state.get(nxt) == "open":
                    yield " -> ".join(path[path.index(nxt):] + [nxt])
                elif nxt not in state:
                    state[nxt] = "open"
                    path.append(nxt)
                    stack.append((nxt, iter(sorted(graph.get(nxt, ())))))
                    break
            else:
                state[node] = "done"
                stack.pop()
                path.pop()

    for node in sorted(graph):
        if node not in state:
            yield from walk(node)


def faults(root):
    found = list(includes(root))
    unknown = {f.split("/")[0] for f, _, _ in found} - set(ORDER)
    if unknown:
        return [f"src/{folder} has no place in the order of folders" for folder in sorted(unknown)]
    return list(wrong_arrows(found)) + ["circle: " + c for c in [*circles(found, unit), *circles(found, folder_of)]]


def check_on_planted_faults():
    planted = {
        "an upward arrow": {"base/a.h": '#include "notes/b.h"\n', "notes/b.h": ""},
        "Qt in the core": {"notes/a.cpp": "#include <QString>\n"},
        "a circle of units": {"base/a.h": '#include "base/b.h"\n', "base/b.cpp": '#include "base/c.h"\n',
                              "base/b.h": "", "base/c.h": '#include "base/a.h"\n'},
        "a circle of folders": {"ui/a/x.h": '#include "ui/b/y.h"\n', "ui/b/y.h": "",
                                "ui/b/z.h": '#include "ui/a/w.h"\n', "ui/a/w.h": ""},
        "an unknown folder": {"util/a.cpp": '#include "base/b.h"\n'},
        "a path that is not from the root": {"base/a.cpp": '#include "b.h"\n'},
    }
    for what, files in planted.items():
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                path = pathlib.Path(folder, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            if not faults(pathlib.Path(folder)):
                sys.exit(f"the check does not see {what}")


if __name__ == "__main__":
    check_on_planted_faults()
    bad = faults(pathlib.Path(sys.argv[1]))
    print("\n".join(bad) or "the folders stand in order")
    sys.exit(bool(bad))
