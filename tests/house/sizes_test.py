#!/usr/bin/env python3
"""Sizes of the source: implementation files at most 500 lines, half of them at most 130; headers at most 150; tests a
quarter to 35 hundredths of all code. Usage: sizes_test.py REPOSITORY."""
import pathlib
import statistics
import sys

LARGEST, MEDIAN, HEADER = 500, 130, 150


def lines(paths):
    return {p: sum(1 for _ in p.open(encoding="utf-8")) for p in paths}


def main(root):
    sources = lines(root.glob("src/**/*.cpp"))
    headers = lines(root.glob("src/**/*.h"))
    tests = lines(p for p in root.glob("tests/**/*") if p.suffix in (".cpp", ".h", ".py"))
    bad = [f"{p.relative_to(root)}: {n} lines, at most {LARGEST}" for p, n in sources.items() if n > LARGEST]
    bad += [f"{p.relative_to(root)}: {n} lines, at most {HEADER}" for p, n in headers.items() if n > HEADER]
    median = statistics.median(sources.values())
    if median > MEDIAN:
        bad.append(f"half of the implementation files have more than {median:.0f} lines, at most {MEDIAN}")
    code = sum(sources.values()) + sum(headers.values())
    share = sum(tests.values()) / (code + sum(tests.values()))
    if not 0.25 <= share <= 0.35:
        bad.append(f"tests are {share:.0%} of the code")
    print("\n".join(bad) or f"{code} lines, median {median:.0f}, tests {share:.0%}")
    return bool(bad)


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
