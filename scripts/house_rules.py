"""Rules of the house that no compiler knows. Prints each breach as path:line: rule and exits 1 if there is any."""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

SOURCES = ("src/", "tests/", "demonstration/", "laboratory/", "benchmarks/", "fuzz/")


def tracked_files():
    listing = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, check=True, capture_output=True, text=True)
    return [line for line in listing.stdout.splitlines() if (ROOT / line).is_file()]


def statement_from(text, start):
    """The text from `start` to the semicolon or the bracket that ends the awaited expression."""
    depth = 0
    for index in range(start, len(text)):
        character = text[index]
        if character in "([{":
            depth += 1
        elif character in ")]}":
            if depth == 0:
                return text[start:index]
            depth -= 1
        elif character in ";," and depth == 0:
            return text[start:index]
    return text[start:]


def rich_awaits(path, text):
    """g++ 12 miscompiles lambdas, braces and conditionals inside an awaited expression."""
    for match in re.finditer(r"\bco_await\b", text):
        line_start = text.rfind("\n", 0, match.start()) + 1
        if "//" in text[line_start:match.start()]:
            continue
        expression = statement_from(text, match.end())
        if re.search(r"[{?]|\[[^\]]*\]\s*[({]", expression):
            yield match.start(), "an awaited expression holds only names, calls and constructor calls"


def pattern_rule(pattern, message, applies):
    compiled = re.compile(pattern)

    def rule(path, text):
        if applies(path):
            for match in compiled.finditer(text):
                yield match.start(), message
    return rule


def is_source(path):
    return path.startswith(SOURCES) and path.endswith((".cpp", ".h"))


RULES = [
    lambda path, text: rich_awaits(path, text) if is_source(path) else (),
    pattern_rule(r"(?i)\bsuno\.(com|ai)\b", "only Endpoints names a host of the service",
                 lambda path: path.startswith("src/") and is_source(path) and path != "src/main/App/Endpoints.cpp"),
    pattern_rule(r"\b(QThread::(m|u)?sleep|sleep_for|sleep_until|qWait\(|usleep\()", "no test waits on the wall clock",
                 lambda path: path.startswith("tests/") and is_source(path)),
    pattern_rule(r"\b(TODO|FIXME|XXX|HACK)\b|GTEST_SKIP|QSKIP|DISABLED_", "nothing is left undone or switched off",
                 lambda path: is_source(path) and "lint" not in path),
    pattern_rule(r"#\s*include\s*<Q(Widget|PushButton|Label|Dialog|MainWindow|Application)>",
                 "logic shows no window; views live in a view folder, main/Chrome or main/Window",
                 lambda path: path.startswith("src/") and not re.match(
                     r"src/(main/(Chrome|Window|Program|Plasma|Cursor)|platform/web|[a-z]+/view)/", path)),
    pattern_rule(r"using namespace", "no using-directive in a header", lambda path: path.endswith(".h")),
]


def main():
    breaches = 0
    for path in tracked_files():
        try:
            text = (ROOT / path).read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue
        for rule in RULES:
            for offset, message in rule(path, text):
                breaches += 1
                print(f"{path}:{text.count(chr(10), 0, offset) + 1}: {message}")
    return 1 if breaches else 0


sys.exit(main())
