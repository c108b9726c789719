# SPDX-License-Identifier: Apache-2.0
"""That the emulator runs none but programs of its system, for it answers 0 to what others do:
check_test_commands.py <ctest> <build folder> <emulator>..."""

import json
import subprocess
import sys


def complaints(tests, emulators):
    for test in tests:
        command = test.get("command", [])
        if command and command[0] in emulators and not command[1].endswith(".exe"):
            yield f"{test['name']}: {command[0]} runs {command[1]}"


def main():
    ctest, folder, *emulators = sys.argv[1:]
    shown = subprocess.run([ctest, "--test-dir", folder, "--show-only=json-v1"], check=True,
                           capture_output=True, text=True)
    tests = json.loads(shown.stdout)["tests"]
    found = list(complaints(tests, emulators))
    print("\n".join(found) or f"{len(tests)} tests")
    return 1 if found or not tests else 0


sys.exit(main())
