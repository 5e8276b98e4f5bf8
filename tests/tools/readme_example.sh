#!/usr/bin/env bash
# Compiles the README's C++ example exactly as printed against the build tree,
# runs it in an empty directory and checks what it saved.
# Usage: readme_example.sh CXX INCLUDE_DIR LIBRARY_DIR README
set -eu
cxx=$1 include=$2 libdir=$3 readme=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sed -n '/^```cpp$/,/^```$/p' "$readme" | sed '1d;$d' >"$work/example.cpp"
[ -s "$work/example.cpp" ] || { echo "no C++ block in the README"; exit 1; }
"$cxx" -std=c++17 -Wall -Wextra -Werror -I"$include" "$work/example.cpp" -L"$libdir" -lgvlib -o "$work/example"
cd "$work"
LD_LIBRARY_PATH="$libdir" ./example
printf 'XU2 T4 coop T5 co-op ' | cmp - names.txt
