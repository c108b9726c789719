#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a Windows test program with its output in files, which are shown when it has ended: what Wine
# starts beside it gets the same output, and would keep a pipe of ctest's open for as long as it
# lives.
out=$(mktemp) && err=$(mktemp) || exit
trap 'rm -f "$out" "$err"' EXIT
wine "$@" >"$out" 2>"$err"
code=$?
cat "$out"
cat "$err" >&2
exit $code
