#!/usr/bin/env bash
# Runs a command and checks its exit status and that its output (stdout and
# stderr together) contains a text ("*": any output). Usage: expect.sh STATUS TEXT COMMAND...
want_status=$1
want_text=$2
shift 2
out=$("$@" 2>&1)
status=$?
if [ "$status" -ne "$want_status" ]; then
  printf 'exit status %s, wanted %s\n--- output ---\n%s\n' "$status" "$want_status" "$out"
  exit 1
fi
if [ "$want_text" != "*" ] && ! grep -qF -- "$want_text" <<<"$out"; then
  printf 'output lacks: %s\n--- output ---\n%s\n' "$want_text" "$out"
  exit 1
fi
exit 0
