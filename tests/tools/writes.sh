#!/usr/bin/env bash
# gvtool never loses output silently: every writing command on a full device
# fails with the reason, a write that fails part way leaves the target as it
# was, and standard input and output work as "-".
# Usage: writes.sh GVTOOL EXAMPLES_DIR WORK_DIR
set -u
g=$1 examples=$2 work=$3/writes
names=$examples/saved/names.txt
rm -rf "$work" && mkdir -p "$work" || exit 1
fail() { echo "FAILED: $*"; status=1; }
status=0

commands=("dump $names" "dump --json $names" "sort $examples/names.list" "path name a" "url host http://h/"
  "date week 2024 3 5" "money 1" "--version" "--help" "convert $names - --to archive")
for c in "${commands[@]}"; do
  # shellcheck disable=SC2086
  $g $c >/dev/full 2>"$work/err"
  code=$?
  [ $code -eq 1 ] && grep -q "No space left on device" "$work/err" || fail "$c > /dev/full: exit $code, $(cat "$work/err")"
done
$g convert "$names" /dev/full 2>/dev/null; [ $? -eq 1 ] || fail "convert to /dev/full"

# A file size limit makes the write fail part way through a 3 kB archive.
{ printf 'T3000 '; head -c 3000 /dev/zero | tr '\0' a; printf ' '; } >"$work/big.txt"
cp "$examples/saved/names.bin" "$work/target.bin"
(trap '' XFSZ; ulimit -f 2; exec "$g" convert "$work/big.txt" "$work/target.bin") 2>/dev/null
[ $? -eq 1 ] || fail "convert past the file size limit"
cmp -s "$work/target.bin" "$examples/saved/names.bin" || fail "the target changed"
[ "$(ls -A "$work" | wc -l)" -eq 3 ] || fail "a temporary file was left: $(ls -A "$work")"

# A good conversion replaces the target whole and keeps its mode.
echo old >"$work/target.bin" && chmod 640 "$work/target.bin"
$g convert "$names" "$work/target.bin" && cmp -s "$work/target.bin" "$examples/saved/names.bin" ||
  fail "convert over an existing file"
[ "$(ls -A "$work" | wc -l)" -eq 3 ] || fail "a temporary file was left: $(ls -A "$work")"
[ "$(stat -c %a "$work/target.bin")" = 640 ] || fail "the target's mode changed"

# "-" both ways, and input whose form cannot be told.
$g convert - - <"$names" | cmp -s - "$examples/saved/names.bin" || fail "convert - -"
$g dump - <"$names" | grep -q '\[6\] "zara"' || fail "dump -"
printf 'T\0\0\0' | $g convert - - 2>&1 | grep -q "give --from" || fail "an ambiguous form"
printf 'T\0\0\0' | $g convert --from archive --class long - - | grep -q '^U84 $' || fail "convert --from archive"
exit $status
