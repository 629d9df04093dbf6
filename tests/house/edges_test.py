"""Compares the table of allowed edges with the graph that CMake exports, and every include with that graph.

Usage: edges_test.py SOURCE_DIR BUILD_DIR
"""

import pathlib
import re
import subprocess
import sys
import tempfile

PREFIX = "orvane_"
ORPHANS = {"orvane_flags"}
# What Qt makes beside a library that has data compiled in.
RESOURCES = re.compile(r"_resources_\d+$")


def read_table(path):
    table = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        line = line.split("#")[0].strip()
        if line:
            name, uses = line.split(":")
            table[name.strip()] = set(uses.split())
    return table


def export_graph(build):
    with tempfile.TemporaryDirectory() as folder:
        dot = pathlib.Path(folder) / "graph.dot"
        subprocess.run(["cmake", f"--graphviz={dot}", str(build)], check=True, capture_output=True)
        return dot.read_text(encoding="utf-8")


def read_graph(text):
    names = dict(re.findall(r'"(node\d+)" \[ label = "([^"\\]+)', text))
    graph = {name: set() for name in names.values()}
    for user, used in re.findall(r'"(node\d+)" -> "(node\d+)"', text):
        graph[names[user]].add(names[used])
    return graph


def is_ours(name):
    return name.startswith(PREFIX) and name not in ORPHANS and "_test" not in name and not RESOURCES.search(name)


def edge_breaches(table, graph, shipped):
    for name in sorted(shipped - set(table)):
        yield f"{name} stands in no line of the table"
    for name in sorted(set(table) - shipped):
        yield f"{name} stands in the table but not in the build"
    for name in sorted(shipped & set(table)):
        uses = {used for used in graph[name] if is_ours(used)}
        for used in sorted(uses - table[name]):
            yield f"{name} uses {used}, which the table does not allow"
        for used in sorted(table[name] - uses):
            yield f"the table lets {name} use {used}, but it does not"


def reach(graph, name):
    seen, open_names = set(), [name]
    while open_names:
        current = open_names.pop()
        if current not in seen:
            seen.add(current)
            open_names.extend(graph.get(current, ()))
    return seen


def target_sources(source, build):
    """From source file to the targets that compile it, as the build itself tells."""
    owners = {}
    ninja = (build / "build.ninja").read_text(encoding="utf-8", errors="replace")
    for target, path in re.findall(r"^build \S*CMakeFiles/(\w+)\.dir/\S+\.o: CXX_COMPILER__\S+ (\S+\.cpp)", ninja, re.M):
        owners.setdefault(pathlib.Path(path).resolve(), set()).add(target)
    return {path: targets for path, targets in owners.items() if source in path.parents and build not in path.parents}


def header_owners(source, owners):
    """A header belongs to the target of the source beside it of the same name, else to the targets of its folder."""
    by_folder = {}
    for path, targets in owners.items():
        by_folder.setdefault(path.parent, set()).update(targets)
    result = {}
    for header in (source / "src").rglob("*.h"):
        beside = header.with_suffix(".cpp")
        result[header] = owners.get(beside) or by_folder.get(header.parent, set())
    return result


def shipped_targets(source, graph, owners):
    """Targets of the product, the demonstration and the laboratory: all but those of which every source is a test's,
    a benchmark's or a fuzzer's."""
    aside = {source / folder for folder in ("tests", "benchmarks", "fuzz")}
    apart = set()
    for path, targets in owners.items():
        if aside & set(path.parents):
            apart |= targets
    return {name for name in graph if is_ours(name)} - apart


def include_breaches(source, graph, owners):
    headers = header_owners(source, owners)
    for path, targets in sorted(owners.items()):
        if source / "src" not in path.parents:
            continue
        for included in re.findall(r'^#include "([^"]+)"', path.read_text(encoding="utf-8"), re.M):
            header = source / "src" / included
            wanted = {target for target in headers.get(header, set()) if is_ours(target)}
            for target in targets:
                if wanted and not wanted & reach(graph, target):
                    yield f"{path.relative_to(source)} includes {included}, of a target that {target} does not use"


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    graph = read_graph(export_graph(build))
    owners = target_sources(source, build)
    table = read_table(source / "cmake" / "edges.txt")
    breaches = list(edge_breaches(table, graph, shipped_targets(source, graph, owners)))
    breaches += include_breaches(source, graph, owners)
    for breach in breaches:
        print(breach)
    print(f"{sum(len(uses) for uses in graph.values())} edges read, {len(breaches)} breaches")
    return 1 if breaches or not graph else 0


sys.exit(main())
