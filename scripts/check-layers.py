#!/usr/bin/python3
"""Fails when a source includes a header, or a library links a library, of a
floor above its own, or when the service's code reaches the simulator.

The floors, lowest first: the BMC platform's declarations, the service's
base, the front end's vocabulary, the handler framework, security, the
resources, the service. A folder may use its own floor and those below it.
The simulator implements the platform: it uses only the platform's
declarations, the base and itself, and nothing but the simulator and
executables uses it."""
import pathlib
import re
import sys

SIMULATOR = "platform/sim/"
FLOORS = [
    ("platform/",),
    ("base/",),
    ("frontend/",),
    ("framework/",),
    ("security/",),
    ("resources/", "update/", "tasks/"),
    ("service/",),
]
# What the simulator may use: the platform's declarations and the base.
SIMULATOR_USES = 1
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
LIBRARY = re.compile(r"bmc_library\((\w+)\s+DIRS\s+([^)]*?)(?:\s+LINK\s+([^)]*))?\)")
LINK = re.compile(r"target_link_libraries\((\w+)(?:\$\{variant\})?\s+([^)]*)\)")


def floor_of(path):
    """The floor of a path, "sim" for the simulator, None outside the floors."""
    if path.startswith(SIMULATOR):
        return "sim"
    for level, prefixes in enumerate(FLOORS):
        if path.startswith(prefixes):
            return level
    return None


def may_use(own, used):
    if used is None or used == own:
        return True
    if own == "sim":
        return used <= SIMULATOR_USES
    return used != "sim" and used <= own


def include_violations(root):
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
            if not may_use(own, floor_of(header)):
                yield f"{relative}: includes {header}"


def link_violations(root):
    libraries = {}
    cmakes = [cmake.read_text() for cmake in sorted(root.rglob("CMakeLists.txt"))
              if not cmake.relative_to(root).as_posix().startswith("build")]
    for text in cmakes:
        for name, dirs, links in LIBRARY.findall(text):
            libraries[name] = (floor_of(dirs.split()[0] + "/"), (links or "").split())
    # Links added to a floor's library after its definition.
    for text in cmakes:
        for name, links in LINK.findall(text):
            if name in libraries:
                libraries[name][1].extend(re.sub(r"\$\{variant\}", "", links).split())
    for name, (own, links) in sorted(libraries.items()):
        for linked in links:
            if linked in libraries and not may_use(own, libraries[linked][0]):
                yield f"library {name}: links {linked}"


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    violations = list(include_violations(root)) + list(link_violations(root))
    for line in violations:
        print(line)
    return 1 if violations else 0


if __name__ == "__main__":
    sys.exit(main())
