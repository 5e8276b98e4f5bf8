#!/usr/bin/env bash
# Runs every example of the man page's EXAMPLES section ("$ command" lines, each
# followed by its output) from the top of the source tree, with the gvtool under
# test first on PATH, and compares what it prints.
# Usage: man_examples.sh GVTOOL MANPAGE SOURCE_DIR
set -u
gvtool=$1 page=$2 source=$3
bin=$(mktemp -d)
trap 'rm -rf "$bin"' EXIT
ln -s "$gvtool" "$bin/gvtool"
cd "$source" || exit 1

# The .nf block after .SH EXAMPLES, with the roff escapes it uses undone.
block=$(sed -n '/^\.SH EXAMPLES/,/^\.SH /p' "$page" | sed -n '/^\.nf/,/^\.fi/p' | sed '1d;$d' |
  sed -e 's/\\-/-/g' -e 's/\\&//g' -e 's/\\e/\\/g')

failures=0 count=0
check() {
  [ -n "$command" ] || return 0
  count=$((count + 1))
  got=$(PATH="$bin:$PATH" bash -c "$command" 2>&1)
  if [ "$got" != "$expected" ]; then
    printf 'example: %s\n--- expected ---\n%s\n--- got ---\n%s\n' "$command" "$expected" "$got"
    failures=$((failures + 1))
  fi
}
command="" expected=""
while IFS= read -r line; do
  if [[ $line == '$ '* ]]; then
    check
    command=${line#\$ } expected=""
  else
    expected+=${expected:+$'\n'}$line
  fi
done <<<"$block"
check
echo "$count examples, $failures failed"
[ "$count" -gt 0 ] && [ "$failures" -eq 0 ]
