#!/usr/bin/env python3
"""Turns src/value/builtin_names.txt into C++.

The data file holds the built-in names in number order, one a line (line k is name number k).
A line in square brackets stands for a namespace URI: "[XSL-FO namespace URI]" names a standard
namespace (see STANDARD_NAMESPACES), "[extension namespace URI, path /names/X]" one of the
library's own, EXTENSION_NAMESPACE_BASE followed by the path.

Outputs (both checked in; `--check` fails when they differ from what the data would give):
  include/ztcommon/value_names.h      the ZtNameEnum enumeration of every built-in number
  src/value/builtin_names_table.inc   the string pool and a minimal perfect hash over it

Enumerator spelling: "NM_" followed by the name where letters and digits stay as they are,
a hyphen between two letters or digits becomes "_", and every other character becomes a word
of its own (HYPHEN, UNDERSCORE, DOT, COLON, SLASH, PLUS, SPACE, HASH, PERCENT) joined to its
neighbours by "_": "font-size" is NM_font_size, "SHIFT_JIS" NM_SHIFT_UNDERSCORE_JIS, "#CMYK"
NM_HASH_CMYK, "xml:lang" NM_xml_COLON_lang, "-zt-" NM_HYPHEN_zt_HYPHEN. Namespace URIs are
NM_NS_ and the standard's label ("NM_NS_XSL_FO") or NM_NS_EXT_ and the path after /names/
("NM_NS_EXT_XSL_Extensions"). The generator refuses to write a table in which two names would
share a spelling.
"""
import argparse
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DATA = ROOT / "src/value/builtin_names.txt"
OUT_HEADER = ROOT / "include/ztcommon/value_names.h"
OUT_TABLE = ROOT / "src/value/builtin_names_table.inc"

EXPECTED_COUNT = 2842

# The one place the base of the library's own namespaces is written down.
EXTENSION_NAMESPACE_BASE = "http://www.tessaly.example"

STANDARD_NAMESPACES = {
    "MathML": "http://www.w3.org/1998/Math/MathML",
    "XSL-FO": "http://www.w3.org/1999/XSL/Format",
    "XSLT": "http://www.w3.org/1999/XSL/Transform",
    "SVG": "http://www.w3.org/2000/svg",
    "XMLNS": "http://www.w3.org/2000/xmlns/",
    "XML": "http://www.w3.org/XML/1998/namespace",
    "WordprocessingML 2003": "http://schemas.microsoft.com/office/word/2003/wordml",
    "DrawingML chart": "http://schemas.openxmlformats.org/drawingml/2006/chart",
    "XHTML": "http://www.w3.org/1999/xhtml",
    "XLink": "http://www.w3.org/1999/xlink",
    "RDF syntax": "http://www.w3.org/1999/02/22-rdf-syntax-ns#",
    "XInclude": "http://www.w3.org/2001/XInclude",
}

SYMBOL_WORDS = {
    "-": "HYPHEN",
    "_": "UNDERSCORE",
    ".": "DOT",
    ":": "COLON",
    "/": "SLASH",
    "+": "PLUS",
    " ": "SPACE",
    "#": "HASH",
    "%": "PERCENT",
}

# Enumerators that are not names; no name may be spelled like them.
EXTRA_ENUMERATORS = {
    "NM_EMPTY_NAME": 0,
    "NM_LAST_BUILTIN": EXPECTED_COUNT,
    "NM_FIRST_RUNTIME": EXPECTED_COUNT + 1,
}

# Hash constants; hash_units below and hashUnits in src/value/name_hash.h must agree.
M64 = (1 << 64) - 1
MUL_LENGTH = 0x9E3779B97F4A7C15
MUL_BLOCK = 0xBF58476D1CE4E5B9
MUL_FINAL = 0x94D049BB133111EB
MUL_DISPLACE = 0xD6E8FEB86659FD93
BUILTIN_SEED = 0x5A7C0DE1B0A7F00D
BUCKET_BITS = 10
SLOT_BITS = 12


def hash_units(units, seed):
    """64-bit hash of UTF-16 code units, four units a block."""
    n = len(units)
    h = (seed ^ (n * MUL_LENGTH)) & M64
    i = 0
    while i < n:
        block = 0
        for k, u in enumerate(units[i:i + 4]):
            block |= u << (16 * k)
        h = fold((h ^ block) * MUL_BLOCK)
        i += 4
    return fold(h * MUL_FINAL)


def fold(product):
    """The two halves of a 128-bit product, xored."""
    return (product & M64) ^ (product >> 64)


def slot_of(h, displacement):
    return (((h ^ ((displacement * MUL_DISPLACE) & M64)) * MUL_BLOCK) & M64) >> (64 - SLOT_BITS)


def build_perfect_hash(keys):
    """Hash and displace: keys fall into buckets by the top bits of their hash; each bucket gets
    the smallest displacement that sends all its keys to free slots. Returns (displacements,
    slots) where slots[s] is the 1-based key number or 0."""
    buckets = [[] for _ in range(1 << BUCKET_BITS)]
    for number, key in enumerate(keys, 1):
        h = hash_units(key, BUILTIN_SEED)
        buckets[h >> (64 - BUCKET_BITS)].append((number, h))
    displacements = [0] * len(buckets)
    slots = [0] * (1 << SLOT_BITS)
    order = sorted(range(len(buckets)), key=lambda b: -len(buckets[b]))
    for b in order:
        members = buckets[b]
        if not members:
            continue
        for d in range(1 << 16):
            wanted = [slot_of(h, d) for _, h in members]
            if len(set(wanted)) == len(wanted) and all(slots[s] == 0 for s in wanted):
                displacements[b] = d
                for (number, _), s in zip(members, wanted):
                    slots[s] = number
                break
        else:
            sys.exit(f"no displacement found for bucket {b}")
    return displacements, slots


def utf16_units(text):
    data = text.encode("utf-16-le")
    return [data[i] | (data[i + 1] << 8) for i in range(0, len(data), 2)]


def resolve(entry):
    """The name a data line stands for, and the enumerator for it."""
    m = re.fullmatch(r"\[extension namespace URI, path (/names/[A-Za-z0-9/]+)\]", entry)
    if m:
        path = m.group(1)
        return EXTENSION_NAMESPACE_BASE + path, "NM_NS_EXT_" + path[len("/names/"):].replace("/", "_")
    m = re.fullmatch(r"\[(.+) namespace URI\]", entry)
    if m:
        label = m.group(1)
        if label not in STANDARD_NAMESPACES:
            sys.exit(f"unknown namespace {entry!r}")
        return STANDARD_NAMESPACES[label], "NM_NS_" + re.sub(r"[- ]", "_", label)
    if entry.startswith("["):
        sys.exit(f"unrecognised bracketed entry {entry!r}")
    return entry, enumerator_for(entry)


def enumerator_for(name):
    tokens = []
    for i, c in enumerate(name):
        if c.isascii() and c.isalnum():
            if tokens and tokens[-1][0] == "word" and name[i - 1] != "-":
                tokens[-1] = ("word", tokens[-1][1] + c)
            else:
                tokens.append(("word", c))
            continue
        inner_hyphen = (c == "-" and 0 < i < len(name) - 1 and name[i - 1].isalnum()
                        and name[i + 1].isalnum())
        if inner_hyphen:
            continue  # the joining "_" stands for it
        if c not in SYMBOL_WORDS:
            sys.exit(f"no spelling for character {c!r} in {name!r}")
        tokens.append(("symbol", SYMBOL_WORDS[c]))
    return "NM_" + "_".join(text for _, text in tokens)


def load():
    lines = DATA.read_text(encoding="ascii").split("\n")
    if lines[-1] != "":
        sys.exit("the data file must end with a line feed")
    entries = lines[:-1]
    if len(entries) != EXPECTED_COUNT:
        sys.exit(f"expected {EXPECTED_COUNT} names, found {len(entries)}")
    names, enumerators = [], []
    for entry in entries:
        if not entry or entry != entry.strip():
            sys.exit(f"empty or padded line {entry!r}")
        name, enumerator = resolve(entry)
        names.append(name)
        enumerators.append(enumerator)
    if len(set(names)) != len(names):
        sys.exit("duplicate names")
    taken = set(EXTRA_ENUMERATORS)
    for name, enumerator in zip(names, enumerators):
        if not re.fullmatch(r"NM_[A-Za-z0-9]+(_[A-Za-z0-9]+)*", enumerator):
            sys.exit(f"bad enumerator {enumerator!r} for {name!r}")
        if enumerator in taken:
            sys.exit(f"two names spelled {enumerator}")
        taken.add(enumerator)
    return names, enumerators


def cxx_literal(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def render_header(names, enumerators):
    out = [
        "// Generated by scripts/gen_builtin_names.py from src/value/builtin_names.txt; do not edit.",
        "// clang-format off",
        "#pragma once",
        "",
        "#include <cstdint>",
        "",
        "namespace ZtCommonNS {",
        "",
        "// Base of the library's own namespace URIs (NM_NS_EXT_...).",
        f"inline constexpr char16_t ZtExtensionNamespaceBase[] = u{cxx_literal(EXTENSION_NAMESPACE_BASE)};",
        "",
        "// Name numbers: 0 the empty name, 1 to 2842 the built-in names below, 2843 and up the names",
        "// interned at run time. Spelling of the enumerators: \"NM_\" and the name, letters and digits",
        "// kept, a hyphen between letters or digits written \"_\", every other character as a word",
        "// (HYPHEN, UNDERSCORE, DOT, COLON, SLASH, PLUS, SPACE, HASH, PERCENT) between \"_\";",
        "// namespace URIs are NM_NS_ and their standard, or NM_NS_EXT_ and the path after /names/.",
        "enum ZtNameEnum : std::int32_t {",
        "    NM_EMPTY_NAME = 0,",
    ]
    for number, (name, enumerator) in enumerate(zip(names, enumerators), 1):
        out.append(f"    {enumerator} = {number}, // {name}")
    out += [
        f"    NM_LAST_BUILTIN = {EXPECTED_COUNT},",
        f"    NM_FIRST_RUNTIME = {EXPECTED_COUNT + 1},",
        "};",
        "",
        "} // namespace ZtCommonNS",
        "",
    ]
    return "\n".join(out)


def render_table(names):
    units = [utf16_units(n) for n in names]
    displacements, slots = build_perfect_hash(units)
    pool_length = sum(len(u) for u in units)
    if pool_length >= 65536:
        sys.exit("the pool no longer fits 16-bit offsets")
    max_length = max(len(u) for u in units)
    if max_length > 255:
        sys.exit("a name is longer than 255 units")
    out = [
        "// Generated by scripts/gen_builtin_names.py from src/value/builtin_names.txt; do not edit.",
        "// clang-format off",
        "// Included by builtin_names.cpp only.",
        "",
        f"constexpr int kBuiltinCount = {len(names)};",
        f"constexpr int kBuiltinMaxLength = {max_length};",
        f"constexpr std::uint64_t kBuiltinSeed = 0x{BUILTIN_SEED:016X}u;",
        f"constexpr int kBucketBits = {BUCKET_BITS};",
        f"constexpr int kSlotBits = {SLOT_BITS};",
        "",
        "// Every built-in name, one after the other, without terminators.",
        "constexpr char16_t kPool[] =",
    ]
    for number, name in enumerate(names, 1):
        out.append(f"    u{cxx_literal(name)} // {number}")
    out[-1] = out[-1].replace(" //", "; //", 1)
    out += ["", "// Offset of name k in kPool, at index k (index 0: the empty name)."]
    offsets, lengths, offset = [0], [0], 0
    for u in units:
        offsets.append(offset)
        lengths.append(len(u))
        offset += len(u)
    out += emit_array("std::uint16_t", "kOffset", offsets)
    out += ["", "// Length of name k in UTF-16 units."]
    out += emit_array("std::uint8_t", "kLength", lengths)
    out += ["", "// Displacement of each bucket (bucket: the top bits of the hash)."]
    out += emit_array("std::uint16_t", "kDisplacement", displacements)
    out += ["", "// Name number held by each slot, 0 for a free slot."]
    out += emit_array("std::uint16_t", "kSlotName", slots)
    out.append("")
    return "\n".join(out)


def emit_array(ctype, name, values):
    out = [f"constexpr {ctype} {name}[{len(values)}] = {{"]
    for i in range(0, len(values), 16):
        out.append("    " + ", ".join(str(v) for v in values[i:i + 16]) + ",")
    out.append("};")
    return out


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--check", action="store_true",
                        help="fail when the checked-in outputs differ from the data")
    args = parser.parse_args()
    names, enumerators = load()
    outputs = {OUT_HEADER: render_header(names, enumerators), OUT_TABLE: render_table(names)}
    stale = []
    for path, text in outputs.items():
        current = path.read_text(encoding="utf-8") if path.exists() else None
        if current == text:
            continue
        if args.check:
            stale.append(str(path.relative_to(ROOT)))
        else:
            path.write_text(text, encoding="utf-8")
            print(f"wrote {path.relative_to(ROOT)}")
    if stale:
        sys.exit("out of date, run scripts/gen_builtin_names.py: " + ", ".join(stale))


if __name__ == "__main__":
    main()
