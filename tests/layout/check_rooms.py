#!/usr/bin/env python3
"""Reads the includes of the sources and tells, with file and line, each one that the plan forbids.

usage: check_rooms.py <project folder>

The plan is docs/architecture.md; the tables below are its machine-readable form.
"""

import fnmatch
import pathlib
import re
import sys

# What a room may include beside itself: rooms, or patterns of single headers.
GROUND = ["value", "platform", "diagnostics"]
ROOMS = {
    "value": [],
    "platform": ["value"],
    "diagnostics": ["value", "platform"],
    "path": ["value", "platform"],
    "framework": GROUND + ["path"],
    "host/interface": ["value"],
    "host": GROUND + ["host/interface", "framework", "path"],
    "model": GROUND,
    "uom_adapter": ["value", "platform", "model/unit_source.h"],
    "mapping": GROUND + ["model", "framework", "path"],
    "semantic": ["value", "diagnostics/memory_guard.h", "framework/iterator.h", "framework/ref.h",
                 "framework/semantic_function.h"],
    "automation": GROUND + ["framework", "mapping", "model", "path"],
    "resources": [],
    "front": None,  # puts the rooms together: everything
}
# Single sources that see more than their room: the evaluation of paths works on iterators.
WIDER = {"src/path/evaluat*": ["framework"]}

# Outside src/: each folder's own headers come with it.
CASEHOST = ["host/interface", "casehost"]
# It can't reach platform/, so what it needs of an operating system has one source for each.
CASEHOST_PLATFORM = ["casehost/files/posix/*.cpp", "casehost/files/windows/*.cpp"]
TOOLS = ["value/fi_value.h", "casehost"]
# The header that clients of the module include; what it includes itself is public too.
PUBLIC = ["src/front/fixtop.h"]

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
    """The room of a path below src/, or None when its first folder is no room."""
    parts = path.split("/")
    for length in (2, 1):
        name = "/".join(parts[:length])
        if len(parts) > length and name in ROOMS:
            return name
    return None


def allows(allowed, target):
    """Whether a list of rooms and single headers holds the included file."""
    room = room_of(target) or target.split("/")[0]
    return room in allowed or matches(target, allowed)


class Tree:
    """The project's sources by their path, as lines."""

    def __init__(self, files):
        self.files = files
        self.public = self._public_headers()

    @classmethod
    def read(cls, root):
        root = pathlib.Path(root)
        files = {}
        for folder in ("src", "casehost", "tools"):
            for path in sorted((root / folder).rglob("*")):
                if path.suffix in SOURCE_SUFFIXES and path.is_file():
                    text = path.read_text(encoding="utf-8", errors="replace")
                    files[path.relative_to(root).as_posix()] = text.splitlines()
        return cls(files)

    def includes(self, name):
        """(line number, quoted, included text, included path below src/ where it is one of ours)"""
        for number, line in enumerate(self.files[name], 1):
            found = INCLUDE.match(line)
            if found:
                quoted, text = found.group(1) == '"', found.group(2)
                yield number, quoted, text, self._resolve(name, text, quoted)

    def _resolve(self, name, text, quoted):
        """An include relative to its file reads as the path that it means."""
        if f"src/{text}" in self.files or not quoted:
            return text
        beside = (pathlib.PurePosixPath(name).parent / text).as_posix()
        parts = []
        for part in beside.split("/"):
            if part == ".." and parts:
                parts.pop()
            else:
                parts.append(part)
        beside = "/".join(parts)
        return beside.removeprefix("src/") if beside in self.files else text

    def _public_headers(self):
        roots = [name for name in self.files if matches(name, PUBLIC)]
        public = set()
        for name in roots:
            public.add(name.removeprefix("src/"))
            public.update(target for _, quoted, _, target in self.includes(name) if quoted)
        return public


def is_os_header(text):
    return matches(text.lower(), OS_HEADERS)


def check_source(tree, name):
    """Complaints about one file below src/."""
    inside = name.removeprefix("src/")
    room = room_of(inside)
    if room is None:
        if inside in tree.public or "/" not in inside:
            return
        yield 1, f"{name.rsplit('/', 1)[0]} is no room of the plan"
        return
    allowed = ROOMS[room]
    for patterns, more in WIDER.items():
        if matches(name, [patterns]) and allowed is not None:
            allowed = allowed + more
    for number, _, text, target in tree.includes(name):
        if room != "platform":
            if is_os_header(text):
                yield number, f"{text}: operating-system headers belong to platform/"
            if text in LIBRARY_HEADERS:
                yield number, f"{text}: is wrapped by platform/"
            if target.startswith(("platform/posix/", "platform/windows/")):
                yield number, f"{target}: is platform/'s own"
        their = room_of(target)
        if their == "host/interface" and room not in ("host/interface", "host", "front"):
            yield number, f"{room}/ includes {target}: only host/ and front/ see host/interface/"
        elif target.startswith("casehost/"):
            yield number, f"{room}/ includes {target}: the case host is outside the module"
        elif their not in (None, room) and allowed is not None and not allows(allowed, target):
            yield number, f"{room}/ must not include {target}"
    # The public header says for each platform how its functions are marked.
    if room != "platform" and not matches(name, PUBLIC):
        for number, line in enumerate(tree.files[name], 1):
            found = OS_MACROS.match(line)
            if found:
                yield number, f"{found.group(1)}: platform differences belong to platform/"


def check_casehost(tree, name):
    for number, quoted, _, target in tree.includes(name):
        if f"casehost/{target}" in tree.files or target in tree.files:
            continue
        ours = f"src/{target}" in tree.files or room_of(target) is not None
        if quoted and ours and not allows(CASEHOST, target):
            yield number, f"casehost/ includes {target}: of src/ it sees host/interface/ alone"
    if matches(name, CASEHOST_PLATFORM):
        return
    for number, quoted, text, _ in tree.includes(name):
        if not quoted and is_os_header(text):
            yield number, f"{text}: operating-system headers belong to casehost/files/<platform>/"
    for number, line in enumerate(tree.files[name], 1):
        found = OS_MACROS.match(line)
        if found:
            yield number, f"{found.group(1)}: the build chooses casehost/files/<platform>/"


def check_tools(tree, name):
    allowed = TOOLS + sorted(tree.public)
    for number, quoted, _, target in tree.includes(name):
        if target.startswith("casehost/") and f"casehost/include/{target}" not in tree.files:
            yield number, f"tools/ includes {target}: only the headers below casehost/include"
        elif target in tree.files or f"tools/{target}" in tree.files:
            continue
        elif quoted and (f"src/{target}" in tree.files or room_of(target) is not None):
            if not allows(allowed, target):
                yield number, f"tools/ includes {target}: only public headers"


CHECKS = {"src": check_source, "casehost": check_casehost, "tools": check_tools}


def complaints(tree):
    """All complaints as `file:line: text`, in the order of files and lines."""
    lines = []
    for name in sorted(tree.files):
        check = CHECKS.get(name.split("/")[0])
        if check:
            lines += [f"{name}:{number}: {text}" for number, text in sorted(check(tree, name))]
    return lines


def main():
    tree = Tree.read(sys.argv[1])
    found = complaints(tree)
    for line in found:
        print(line)
    print(f"{len(tree.files)} files read, {len(found)} includes against the plan")
    return 1 if found or not tree.files else 0


if __name__ == "__main__":
    sys.exit(main())
