#!/usr/bin/env bash
# ztc memstream against coreutils: byte count (wc), MD5 (md5sum), non-empty lines (grep) and the
# offset of a text (grep -b), over a file of many blocks.
set -euo pipefail
ztc=${1:?path of ztc}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
file=$work/numbers.txt
{ seq 1 20000; printf '\n\nlast line without end'; } > "$file"

out=$("$ztc" memstream --grow 100 --find 12345 "$file")
expect() {
    if ! grep -qxF "$1" <<<"$out"; then
        printf 'expected line: %s\ngot:\n%s\n' "$1" "$out" >&2
        exit 1
    fi
}
expect "bytes:            $(wc -c < "$file")"
expect "MD5:              $(md5sum < "$file" | cut -d' ' -f1)"
expect "text lines:       $(grep -c . "$file") (empty lines not counted)"
expect "first '12345': at byte $(grep -bo 12345 "$file" | head -1 | cut -d: -f1)"
echo "ztc memstream agrees with wc, md5sum and grep"
