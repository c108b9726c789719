# SPDX-License-Identifier: Apache-2.0
"""Every source says under which licence it is: check_licence.py ROOT [--add].

With --add the line is written into the files that lack it."""

import pathlib
import subprocess
import sys

LINE = "SPDX-License-Identifier: Apache-2.0"
SLASHES = {".h", ".cpp"}
HASHES = {".py", ".cmake", ".sh", ".bash", ".yml"}
NAMES = {"CMakeLists.txt", "go", "run", "_fixtop"}
# Read by their interpreters as the first line.
FIRST = ("#!", "#compdef")


def mark(path):
    """What a comment begins with; None for files that are no sources."""
    if path.suffix in SLASHES:
        return "// "
    return "# " if path.suffix in HASHES or path.name in NAMES else None


def sources(root):
    names = subprocess.run(["git", "-C", root, "ls-files", "-z", "--cached", "--others",
                            "--exclude-standard"], capture_output=True, check=True).stdout
    paths = [root / name for name in names.decode().split("\0") if name]
    return [path for path in paths if path.is_file() and mark(path)]


def lacks(path):
    return not any(LINE in line for line in path.read_text(encoding="utf-8").split("\n")[:3])


def add(path):
    lines = path.read_text(encoding="utf-8").split("\n")
    lines.insert(1 if lines[0].startswith(FIRST) else 0, mark(path) + LINE)
    path.write_text("\n".join(lines), encoding="utf-8")


def main(root, *options):
    lacking = [path for path in sources(pathlib.Path(root)) if lacks(path)]
    for path in lacking:
        if "--add" in options:
            add(path)
        else:
            print(f"{path}: no licence; check_licence.py --add writes it")
    return 1 if lacking and "--add" not in options else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
