#!/bin/sh
# Doxygen input filter: in comment lines, a backslash is a Windows path
# delimiter (C:\dir\a.txt), not a Doxygen command, so it is doubled there.
exec sed -e '/^[[:space:]]*\/\//s/\\/\\\\/g' "$1"
