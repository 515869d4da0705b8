#!/usr/bin/env python3
"""Lengths of the functions in src/, each from its signature to its last brace. Relies on clang-format: a blank stands
before the brace of a body, none before that of a value. Usage: functions_test.py REPOSITORY."""
import pathlib
import re
import sys

LIMITS = {25: 0.1, 60: 0.02, 100: 0}  # lines, and the share of the functions that may have more
NO_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\])+\'|'
                     r"^ *#(?:[^\n]*\\\n)*[^\n]*|^ *(?:public|protected|private|signals)(?: slots)?:$|^ *Q_OBJECT$|"
                     r"^ *template <[^\n]*>$|\boperator[^\w\s(]+", re.M | re.S)
SCOPE = re.compile(r"\s*(?:inline )?(?:namespace|class|struct|union|enum|extern)\b")


def kind_of(head):
    """What a brace after this text opens, outside of functions: a "body", a "scope" or a "value"."""
    bare, before = head, None
    while bare != before:
        bare, before = re.sub(r"\([^(){}]*\)|{[^(){}]*}", "", bare), bare
    if "(" in head and head[-1].isspace() and not re.search("[=()]", bare):
        return "body"
    return "scope" if SCOPE.match(head) else "value"


def functions(text):
    """Yields the first line and the number of lines of each; a lambda belongs to what stands around it."""
    text = NO_CODE.sub(lambda found: "\n" * found[0].count("\n"), text)
    opened, begin = [], 0  # for each open brace its kind, and where what it belongs to begins
    for mark in re.finditer("[{};]", text):
        is_inside = any(kind != "scope" for kind, _ in opened)
        kind = None
        if mark[0] == "{":
            head = text[begin:mark.start()]
            kind = "value" if is_inside else kind_of(head)
            opened.append((kind, mark.start() - len(head.lstrip())))
        elif mark[0] == "}":
            kind, start = opened.pop()
            is_inside = any(kind != "scope" for kind, _ in opened)
            if kind == "body":
                yield text.count("\n", 0, start) + 1, text.count("\n", start, mark.start()) + 1
        if not is_inside and kind != "value" and not (kind == "body" and mark[0] == "{"):
            begin = mark.end()


def check_itself():
    planted = "void First() {\n" + "    Work();\n" * 118 + """}
namespace lore {
constexpr int kTable[] = {1, 2};
class A {
    int One() const { return 1; }
};
A::A(int x)
    : world_{.book = x, .store = [&x] { Store(x); }},
      y_{} {
    Work();
}
B::B() : world_{.book = 1} {}
bool B::operator()(int) {
    auto f = [] { return "}"; };
    return f();
}
}
"""
    found = list(functions(planted))
    assert found == [(1, 120), (124, 1), (126, 5), (131, 1), (132, 4)], found


if __name__ == "__main__":
    check_itself()
    lengths = {f"{path}:{line}": length for path in pathlib.Path(sys.argv[1], "src").rglob("*.[ch]*")
               for line, length in functions(path.read_text(encoding="utf-8"))}
    if not lengths:
        sys.exit("no functions found")
    for limit, share in LIMITS.items():
        over = [place for place, length in lengths.items() if length > limit]
        if len(over) > share * len(lengths):
            sys.exit(f"{len(over)} of {len(lengths)} functions have more than {limit} lines, one is {over[0]}")
