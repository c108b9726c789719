# SPDX-License-Identifier: Apache-2.0
"""What a program writes."""

import subprocess
import tempfile


def captured(command, text=False, **more):
    """The ended program, with its output by way of files: what an emulator starts beside a program
    gets the same output, and would keep a pipe open for as long as it lives."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        done = subprocess.run(command, stdout=more.pop("stdout", out), stderr=err,
                              check=more.pop("check", False), **more)
        done.stdout, done.stderr = (read_whole(file, text) for file in (out, err))
    return done


def read_whole(file, text):
    file.seek(0)
    whole = file.read()
    return whole.decode().replace("\r\n", "\n") if text else whole
