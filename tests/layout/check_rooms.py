#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Reads the includes of the sources and tells, with file and line, each one that the plan forbids.

usage: check_rooms.py <project folder>

The plan is docs/architecture.md; the tables below are its machine-readable form.
"""

import collections
import fnmatch
import pathlib
import posixpath
import re
import sys

# What a room may include beside itself: rooms, or patterns of single headers. The public headers
# are rooms too: fixtop, and what a host implements.
GROUND = ["value", "fixtop/value.h", "platform", "diagnostics"]
TREE = ["fixtop", "path", "framework"]
ROOMS = {
    "fixtop": [],
    "fixtop/host": [],
    "fixtop/client": ["fixtop"],
    "value": ["fixtop/value.h", "fixtop/near_names.h"],
    "platform": ["value", "fixtop/value.h"],
    "diagnostics": ["value", "fixtop/value.h", "platform"],
    "xml": GROUND,
    "path": ["value", "fixtop/value.h", "platform"],
    "framework": GROUND + ["fixtop", "path"],
    "collection": GROUND + TREE + ["xml"],
    "host_base": ["fixtop/host"],
    "host": GROUND + TREE + ["fixtop/host", "collection"],
    "model": GROUND + ["xml"],
    "uom_adapter": ["value", "fixtop/value.h", "platform", "model/unit_source.h"],
    "mapping": GROUND + TREE + ["xml", "model"],
    "semantic": ["fixtop/value.h", "fixtop/iterator.h", "fixtop/ref.h",
                 "fixtop/semantic_function.h", "fixtop/semantic_functions.h",
                 "fixtop/semantic_function_list.h",
                 "diagnostics/memory_guard.h"],
    "automation": GROUND + TREE + ["collection", "model", "mapping"],
    "resources": [],
    "front": None,  # puts the rooms together: everything
}
# Headers that stand above their room and include all of it.
UMBRELLAS = {"fixtop/client.h": "fixtop/client/client.h"}
# Where the headers of rooms lie, and the folders that hold sources.
ROOM_FOLDERS = ["src/", "include/"]
FOLDERS = ["src", "include", "casehost", "client", "tools", "python", "bench", "examples", "tests/client"]
# Sources in one folder, headers apart.
MOST_SOURCES = 25

# The case host's own rooms, by the folder below casehost/, and what each may include beside itself;
# include/ is what others see of it. All but files/ may include that and what a host implements.
CASEHOST_ROOMS = {
    "include": [],
    "files": ["include"],
    "units": ["include"],
    "naming": ["include"],
    "json": ["include", "naming"],
    "live": ["include", "naming"],
    "process": ["include"],
    "importer": ["include", "naming"],
    "standard": ["include", "json", "live", "process", "importer"],
}
CASEHOST_LIBRARIES = {"unzip.h": "importer", "zlib.h": "importer", "expat.h": "importer", "pugixml.hpp": "importer",
                      "nlohmann/*": "json"}
# What of client/ reads and writes files.
FILE_SOURCES = ["client/built_in_host.cpp", "client/saved_text.cpp"]
# It can't reach platform/, so what it needs of an operating system has one source for each.
CASEHOST_PLATFORM = ["casehost/files/posix/*.cpp", "casehost/files/windows/*.cpp"]
# The headers that say for each platform how the exports are marked, and how automation members are
# called.
PLATFORM_MARKS = ["include/fixtop/fixtop.h", "include/fixtop/automation/unknown.h"]
# What of the automation objects is the system's: it sees the system's headers, and how platform/
# reaches the system.
SYSTEM_SIDE = ["src/automation/com/*_windows.cpp", "src/automation/com/*_windows.h"]

OS_HEADERS = [
    "windows.h", "win*.h", "ole*.h", "obj*.h", "oaidl.h", "msxml*.h", "comdef.h", "shl*.h",
    "initguid.h", "unknwn.h", "io.h", "direct.h", "process.h",
    "unistd.h", "dlfcn.h", "fcntl.h", "dirent.h", "pthread.h", "glob.h", "fnmatch.h", "netdb.h",
    "poll.h", "spawn.h", "sched.h", "termios.h", "sys/*", "mach/*", "linux/*",
]
LIBRARY_HEADERS = ["expat.h"]
OS_MACROS = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(_WIN32|_WIN64|WIN32|__linux__|__unix__|"
                       r"__MINGW32__|__MINGW64__|_MSC_VER)\b")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
SOURCE_SUFFIXES = {".h", ".cpp", ".hpp", ".cc", ".inc", ".c"}


def matches(path, patterns):
    return any(fnmatch.fnmatch(path, pattern) for pattern in patterns)


def room_of(path):
    """The room of a path as it is included, or None when its first folder is no room."""
    parts = UMBRELLAS.get(path, path).split("/")
    for length in (2, 1):
        name = "/".join(parts[:length])
        if len(parts) > length and name in ROOMS:
            return name
    return None


def allows(allowed, target):
    """Whether a list of rooms and single headers holds the included file."""
    return room_of(target) in allowed or matches(target, allowed)


class Tree:
    """The project's sources by their path, as lines."""

    def __init__(self, files):
        self.files = files

    @classmethod
    def read(cls, root):
        root = pathlib.Path(root)
        files = {}
        for folder in FOLDERS:
            for path in sorted((root / folder).rglob("*")):
                if path.suffix in SOURCE_SUFFIXES and path.is_file():
                    text = path.read_text(encoding="utf-8", errors="replace")
                    files[path.relative_to(root).as_posix()] = text.splitlines()
        return cls(files)

    def includes(self, name):
        """(line number, quoted, included text, path by which it is one of ours)"""
        for number, line in enumerate(self.files[name], 1):
            found = INCLUDE.match(line)
            if found:
                quoted, text = found.group(1) == '"', found.group(2)
                yield number, quoted, text, self._resolve(name, text, quoted)

    def _resolve(self, name, text, quoted):
        """An include relative to its file reads as the path that it means."""
        if not quoted or any(folder + text in self.files for folder in ROOM_FOLDERS):
            return text
        beside = posixpath.normpath(posixpath.join(posixpath.dirname(name), text))
        return inside_of(beside) if beside in self.files else text


def inside_of(name):
    """The path by which sources include a file of a room."""
    for folder in ROOM_FOLDERS:
        name = name.removeprefix(folder)
    return name


def is_os_header(text):
    return matches(text.lower(), OS_HEADERS)


def check_source(tree, name):
    """Complaints about one file of a room."""
    room = room_of(inside_of(name))
    if room is None:
        yield 1, f"{name.rsplit('/', 1)[0]} is no room of the plan"
        return
    allowed = ROOMS[room]
    for number, _, text, target in tree.includes(name):
        if room != "platform":
            if is_os_header(text) and not matches(name, SYSTEM_SIDE):
                yield number, f"{text}: operating-system headers belong to platform/"
            if text in LIBRARY_HEADERS:
                yield number, f"{text}: is wrapped by platform/"
            if (target.startswith(("platform/posix/", "platform/windows/"))
                    and not matches(name, SYSTEM_SIDE)):
                yield number, f"{target}: is platform/'s own"
        their = room_of(target)
        if their == "fixtop/host" and room not in ("fixtop/host", "host_base", "host", "front"):
            yield number, f"{room}/ includes {target}: only host/ and front/ see fixtop/host/"
        elif target.startswith("casehost/"):
            yield number, f"{room}/ includes {target}: the case host is outside the module"
        elif their not in (None, room) and allowed is not None and not allows(allowed, target):
            yield number, f"{room}/ must not include {target}"
    if room != "platform" and not matches(name, PLATFORM_MARKS):
        for number, line in enumerate(tree.files[name], 1):
            found = OS_MACROS.match(line)
            if found:
                yield number, f"{found.group(1)}: platform differences belong to platform/"


def casehost_room(tree, target):
    """The case host's room of an included file, None when it is no file of the case host."""
    for place in (target, f"casehost/{target}", f"casehost/include/{target}"):
        if place in tree.files and place.startswith("casehost/"):
            return place.split("/")[1]
    return None


def check_casehost(tree, name):
    own = name.split("/")[1]
    if own not in CASEHOST_ROOMS:
        yield 1, f"casehost/{own} is no room of the plan"
        return
    for number, quoted, text, target in tree.includes(name):
        their = casehost_room(tree, target)
        if their is not None:
            if their != own and their not in CASEHOST_ROOMS[own]:
                yield number, f"casehost/{own}/ must not include {target}"
            continue
        room = room_of(target)
        if quoted and room is not None and room != "fixtop/host":
            yield number, f"casehost/ includes {target}: of the module it sees fixtop/host/ alone"
        elif room is not None and own == "files":
            yield number, f"casehost/files/ must not include {target}"
        for library, owner in CASEHOST_LIBRARIES.items():
            if fnmatch.fnmatch(text, library) and own != owner:
                yield number, f"{text}: is for {owner}"
        if not quoted and is_os_header(text) and not matches(name, CASEHOST_PLATFORM):
            yield number, f"{text}: operating-system headers belong to casehost/files/<platform>/"
    if matches(name, CASEHOST_PLATFORM):
        return
    for number, line in enumerate(tree.files[name], 1):
        found = OS_MACROS.match(line)
        if found:
            yield number, f"{found.group(1)}: the build chooses casehost/files/<platform>/"


def check_client(tree, name):
    """What opens files sees the case host, and that alone."""
    for number, quoted, _, target in tree.includes(name):
        if target.startswith("casehost/"):
            if f"casehost/include/{target}" not in tree.files:
                yield number, f"client/ includes {target}: only the headers below casehost/include"
            elif name not in FILE_SOURCES:
                yield number, f"{target}: belongs to {' or '.join(FILE_SOURCES)}"
        elif quoted and room_of(target) not in (None, "fixtop", "fixtop/client"):
            yield number, f"client/ includes {target}: only public headers"


def check_tools(tree, name):
    folder = name.split("/")[0]
    for number, quoted, _, target in tree.includes(name):
        if target.startswith("casehost/"):
            yield number, f"{folder}/ includes {target}: cases are opened by client/"
        elif quoted and room_of(target) not in (None, "fixtop", "fixtop/client"):
            yield number, f"{folder}/ includes {target}: only public headers"


def check_consumer(tree, name):
    """What stands for a program of others includes what is installed, and its own files."""
    for number, quoted, _, target in tree.includes(name):
        their = room_of(target)
        if quoted and their is not None and not their.startswith("fixtop"):
            yield number, f"{name.split('/')[0]}/ includes {target}: only public headers"
        elif target.startswith("casehost/") and f"casehost/include/{target}" not in tree.files:
            yield number, f"{target}: only the headers below casehost/include"


CHECKS = {"src": check_source, "include": check_source, "casehost": check_casehost,
          "client": check_client, "tools": check_tools, "python": check_tools, "bench": check_consumer,
          "examples": check_consumer, "tests": check_consumer}


def full_folders(tree):
    """Complaints about folders in which nobody finds anything."""
    counts = collections.Counter(posixpath.dirname(name) for name in tree.files
                                 if name.endswith(".cpp"))
    for folder, count in sorted(counts.items()):
        if count > MOST_SOURCES:
            yield f"{folder}:1: {count} sources, more than {MOST_SOURCES}"


def circles(tree):
    """Complaints about headers that include each other, by whatever roads."""
    by_include = {inside_of(name): name for name in tree.files}
    done, road = set(), []

    def visit(name):
        if name in road:
            yield f"{name}:1: includes itself by " + ", ".join(road[road.index(name) + 1:] + [name])
        if name in done or name in road:
            return
        road.append(name)
        for _, _, _, target in tree.includes(name):
            beside = posixpath.join(posixpath.dirname(name), target)
            for other in (by_include.get(target), beside if beside in tree.files else None):
                if other and other != name:
                    yield from visit(other)
                    break
        road.pop()
        done.add(name)

    for name in sorted(tree.files):
        yield from visit(name)


def complaints(tree):
    """All complaints as `file:line: text`, in the order of files and lines."""
    lines = []
    for name in sorted(tree.files):
        check = CHECKS.get(name.split("/")[0])
        if check:
            lines += [f"{name}:{number}: {text}" for number, text in sorted(check(tree, name))]
    return lines + list(full_folders(tree)) + list(circles(tree))


def main():
    tree = Tree.read(sys.argv[1])
    found = complaints(tree)
    for line in found:
        print(line)
    print(f"{len(tree.files)} files read, {len(found)} includes against the plan")
    return 1 if found or not tree.files else 0


if __name__ == "__main__":
    sys.exit(main())
