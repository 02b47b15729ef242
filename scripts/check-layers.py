#!/usr/bin/python3
"""Fails when a source includes a header of a floor above its own.

The floors, lowest first: the platform (and its simulator), the front end's
vocabulary, the handler framework, security, the resources, the service.
A folder may include its own floor and those below it."""
import pathlib
import re
import sys

FLOORS = [
    ("platform/",),
    ("frontend/",),
    ("framework/",),
    ("security/",),
    ("resources/", "update/", "tasks/"),
    ("service/",),
]
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def floor_of(path):
    for level, prefixes in enumerate(FLOORS):
        if path.startswith(prefixes):
            return level
    return None


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    violations = []
    for source in sorted(root.rglob("*")):
        relative = source.relative_to(root).as_posix()
        # Tools are executables beside a floor and may link any library.
        if (source.suffix not in (".cpp", ".h") or relative.startswith(("build", "tests/"))
                or "/tools/" in relative):
            continue
        own = floor_of(relative)
        if own is None:
            continue
        for header in INCLUDE.findall(source.read_text()):
            floor = floor_of(header)
            if floor is not None and floor > own:
                violations.append(f"{relative}: includes {header}")
    for line in violations:
        print(line)
    return 1 if violations else 0


if __name__ == "__main__":
    sys.exit(main())
