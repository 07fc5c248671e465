#!/usr/bin/env bash
# What `make run` shows: ztc at work on the bundled samples, one family at a time.
set -euo pipefail
ztc=${1:?path of ztc}
cd "$(dirname "$0")/.."

step() { printf '\n$ ztc %s\n' "$*"; "$ztc" "$@"; }

"$ztc" --version
step convert --from ISO-8859-1 samples/latin1.txt
step error 0x0205 0x0380 0x0180 0x0300
step name inherit font-size "xml:lang" my-own-name
step name --id 1 820 2842 0 99999
step char "縦Ａ、ｶ§é"
step char -u 32FF 0661
step writing-mode tb-rl
step writing-mode sideways-lr ltr
step unicode-range "U+0025-00FF, U+4??" "'Ωé'" "U+0400-04FF"
step unicode-range "U+0041, u+0042" || true
step counter lower-roman 1 4
step counter cjk-ideographic 9998 10001
step counter japanese-informal -12
step hash sha256 samples/latin1.txt
step uuid -n 2
step memstream --grow 16 --find 1998 samples/latin1.txt
step tree 'fo:root[xmlns:fo=http://www.w3.org/1999/XSL/Format](fo:block[text-align=center,font-size=12pt](#"Hello, world") p:x[xmlns:p=urn:p])'
step tree --order post 'a(b(#1 c) #2 d)'
