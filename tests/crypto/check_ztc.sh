#!/usr/bin/env bash
# ztc hash and ztc uuid as a user runs them: the hash lines must be those of coreutils'
# md5sum, sha1sum, sha256sum, sha384sum and sha512sum (and pass their -c check), for an empty
# file, a short one, one of several 1 MiB reading pieces, names that need escaping, and
# standard input. Usage: check_ztc.sh PATH-OF-ZTC
set -euo pipefail
ztc=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

: > empty
printf 'abc' > abc
head -c $((3 * 1048576 + 5)) /dev/urandom > big
printf 'x' > 'back\slash'
printf 'y' > 'line
feed'
files=(empty abc big 'back\slash' 'line
feed')

fail() { echo "FAIL: $*" >&2; exit 1; }

for algo in md5 sha1 sha256 sha384 sha512; do
    "$ztc" hash "$algo" "${files[@]}" > ours
    "${algo}sum" "${files[@]}" > theirs
    cmp -s ours theirs || { diff ours theirs >&2; fail "$algo lines differ from ${algo}sum"; }
    "${algo}sum" --quiet -c ours || fail "${algo}sum -c rejects our output"
    [[ "$("$ztc" hash "$algo" < big)" == "$("${algo}sum" < big)" ]] || fail "$algo of standard input"
    [[ "$("$ztc" hash "$algo" - < abc)" == "$("${algo}sum" - < abc)" ]] || fail "$algo of '-'"
done

# A missing file is reported, the others are still digested, and the exit status is 1.
set +e
"$ztc" hash sha256 abc missing-file empty > out 2> err
status=$?
set -e
[[ $status -eq 1 ]] || fail "missing file: exit status $status"
grep -q 'missing-file: No such file or directory' err || fail "missing file: message $(cat err)"
[[ $(wc -l < out) -eq 2 ]] || fail "missing file: the other files were not digested"
set +e
"$ztc" hash sha3 abc 2> /dev/null
[[ $? -eq 2 ]] || fail "an unknown algorithm is a usage error"
"$ztc" uuid -n 0 2> /dev/null
[[ $? -eq 2 ]] || fail "uuid -n 0 is a usage error"
set -e

# uuid: N distinct lines of the version-4 form in memory order (version nibble in byte 7).
"$ztc" uuid -n 200 > uuids
[[ $(wc -l < uuids) -eq 200 ]] || fail "uuid -n 200 printed $(wc -l < uuids) lines"
[[ $(sort -u uuids | wc -l) -eq 200 ]] || fail "uuid: repeated values"
grep -Eqv '^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{2}4[0-9A-F]-[89AB][0-9A-F]{3}-[0-9A-F]{12}$' uuids &&
    fail "uuid: a line of the wrong form: $(grep -Ev '^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{2}4[0-9A-F]-[89AB][0-9A-F]{3}-[0-9A-F]{12}$' uuids | head -1)"
[[ $("$ztc" uuid --no-dashes | tr -d '\n' | wc -c) -eq 32 ]] || fail "uuid --no-dashes"
echo "ztc hash and uuid: all checks passed"
