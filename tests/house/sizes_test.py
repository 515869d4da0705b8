#!/usr/bin/env python3
"""Sizes of the source: implementation files at most 500 lines, half of them at most 130; headers at most 150; tests a
quarter to a third of all code. Usage: sizes_test.py REPOSITORY."""
import pathlib
import statistics
import sys

LARGEST, MEDIAN, HEADER = 500, 130, 150
CODE = (".cpp", ".h", ".py")


def is_script(path):
    return path.is_file() and path.read_bytes().startswith(b"#!")


def lines(paths):
    return {p: sum(1 for _ in p.open(encoding="utf-8")) for p in paths}


def main(root):
    sources = lines(root.glob("src/**/*.cpp"))
    headers = lines(root.glob("src/**/*.h"))
    tests = lines(p for p in root.glob("tests/**/*") if p.suffix in CODE)
    others = lines(p for folder in ("bench", "fuzz", "packaging", ".ci") for p in root.glob(folder + "/**/*")
                   if p.suffix in CODE or is_script(p))
    bad = [f"{p.relative_to(root)}: {n} lines, at most {LARGEST}" for p, n in sources.items() if n > LARGEST]
    bad += [f"{p.relative_to(root)}: {n} lines, at most {HEADER}" for p, n in headers.items() if n > HEADER]
    median = statistics.median(sources.values())
    if median > MEDIAN:
        bad.append(f"half of the implementation files have more than {median:.0f} lines, at most {MEDIAN}")
    code = sum(sources.values()) + sum(headers.values())
    all_code = code + sum(others.values()) + sum(tests.values())
    share = sum(tests.values()) / all_code
    if not 1 / 4 <= share <= 1 / 3:
        bad.append(f"tests are {share:.1%} of {all_code} lines")
    print("\n".join(bad) or f"{code} lines, median {median:.0f}, tests {share:.1%} of all code")
    return bool(bad)


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
