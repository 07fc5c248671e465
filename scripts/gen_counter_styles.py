#!/usr/bin/env python3
"""Compiles the predefined counter styles into a C++ table.

Input: the list of predefined style names and CSS files of @counter-style rules, given in
order of precedence (a name defined in several files is taken from the first file that
defines it). Output: one C++ source with a constant table that src/counter/predefined.cpp
turns into CounterStyle objects. Names (of the styles, their systems and fallbacks) are
written as the built-in name constants (NM_...), so a name that is not built in does not
compile.

Usage: gen_counter_styles.py NAMES_FILE OUTPUT.cpp STYLESHEET...

The CSS reader understands what @counter-style rules need: comments, quoted strings and
identifiers with CSS escapes, integers, commas and the descriptors system (with "fixed N" and
"extends NAME"), symbols, additive-symbols, negative, prefix, suffix, range, pad and fallback.
Descriptors it does not use (speak-as) are skipped.
"""

import re
import sys

KNOWN_SYSTEMS = {
    "cyclic", "fixed", "symbolic", "alphabetic", "numeric", "additive", "ethiopic-numeric",
    "kansuji", "simp-chinese-formal", "simp-chinese-informal", "trad-chinese-formal",
    "trad-chinese-informal",
}
INT64_MIN = -(2**63)
INT64_MAX = 2**63 - 1


class CssError(Exception):
    pass


def read_escape(text, i):
    """Reads the escape that starts after the backslash at text[i - 1]; returns (char, next)."""
    m = re.compile(r"[0-9A-Fa-f]{1,6}").match(text, i)
    if not m:
        if i >= len(text) or text[i] == "\n":
            raise CssError("bad escape")
        return text[i], i + 1
    code = int(m.group(0), 16)
    j = m.end()
    if j < len(text) and text[j] in " \t\n":
        j += 1  # one white-space character ends a hexadecimal escape and is part of it
    if code == 0 or 0xD800 <= code <= 0xDFFF or code > 0x10FFFF:
        code = 0xFFFD
    return chr(code), j


def tokenize(value):
    """Splits a descriptor value into ('str', text), ('ident', text), ('int', n), (',', ',')."""
    tokens = []
    i = 0
    n = len(value)
    while i < n:
        c = value[i]
        if c in " \t\r\n":
            i += 1
        elif c in "'\"":
            out = []
            i += 1
            while True:
                if i >= n:
                    raise CssError("unterminated string")
                d = value[i]
                if d == c:
                    i += 1
                    break
                if d == "\\":
                    if i + 1 < n and value[i + 1] == "\n":
                        i += 2
                        continue
                    ch, i = read_escape(value, i + 1)
                    out.append(ch)
                else:
                    out.append(d)
                    i += 1
            tokens.append(("str", "".join(out)))
        elif c == ",":
            tokens.append((",", ","))
            i += 1
        elif re.match(r"[+-]?[0-9]", value[i:i + 2]):
            m = re.compile(r"[+-]?[0-9]+").match(value, i)
            tokens.append(("int", int(m.group(0))))
            i = m.end()
        else:
            out = []
            while i < n and value[i] not in " \t\r\n,'\"":
                if value[i] == "\\":
                    ch, i = read_escape(value, i + 1)
                    out.append(ch)
                else:
                    out.append(value[i])
                    i += 1
            tokens.append(("ident", "".join(out)))
    return tokens


# A quoted CSS string, escapes included.
STRING = r"'(?:\\.|[^'\\])*'|\"(?:\\.|[^\"\\])*\""


def split_declarations(body):
    """Splits a rule body at semicolons outside strings; returns (name, value) pairs."""
    declarations = []
    for part in re.findall(r"(?:%s|[^;'\"])+" % STRING, body):
        if not part.strip():
            continue
        name, sep, value = part.partition(":")
        if not sep:
            raise CssError("declaration without a colon: " + part.strip())
        declarations.append((name.strip().lower(), value.strip()))
    return declarations


def strip_comments(css):
    """Removes /* comments */ outside strings."""
    text = re.sub(r"(%s)|/\*.*?\*/" % STRING, lambda m: m.group(1) or "", css, flags=re.S)
    if "/*" in re.sub(STRING, "", text):
        raise CssError("unterminated comment")
    return text


def parse_rules(css):
    """Returns the @counter-style rules of a style sheet as (name, [(descriptor, tokens)])."""
    css = strip_comments(css)
    rules = []
    for m in re.finditer(r"@counter-style\s+([^\s{]+)\s*\{((?:%s|[^}'\"])*)\}" % STRING, css):
        name = m.group(1)
        rules.append((name, [(d, tokenize(v)) for d, v in split_declarations(m.group(2))]))
    return rules


def symbol_of(token):
    kind, text = token
    if kind not in ("str", "ident"):
        raise CssError("expected a symbol, found %r" % (text,))
    return text


class Style:
    def __init__(self, name):
        self.name = name
        self.system = "symbolic"
        self.first = 1
        self.extends = None
        self.symbols = None
        self.additive = None
        self.negative = ("-", "")
        self.prefix = ""
        self.suffix = ". "
        self.ranges = None
        self.pad = (0, "")
        self.fallback = "decimal"
        self.given = set()


def build_style(name, declarations):
    style = Style(name)
    for descriptor, tokens in declarations:
        style.given.add(descriptor)
        if descriptor == "system":
            if not tokens or tokens[0][0] != "ident":
                raise CssError("bad system")
            system = tokens[0][1]
            if system == "extends":
                if len(tokens) != 2 or tokens[1][0] != "ident":
                    raise CssError("bad extends")
                style.extends = tokens[1][1]
            elif system == "fixed" and len(tokens) == 2 and tokens[1][0] == "int":
                style.system = system
                style.first = tokens[1][1]
            elif len(tokens) == 1 and system in KNOWN_SYSTEMS:
                style.system = system
            else:
                raise CssError("unknown system %r" % system)
        elif descriptor == "symbols":
            style.symbols = [symbol_of(t) for t in tokens]
        elif descriptor == "additive-symbols":
            pairs = []
            groups = [[]]
            for t in tokens:
                if t[0] == ",":
                    groups.append([])
                else:
                    groups[-1].append(t)
            for g in groups:
                ints = [t[1] for t in g if t[0] == "int"]
                syms = [symbol_of(t) for t in g if t[0] != "int"]
                if len(ints) != 1 or len(syms) != 1 or ints[0] < 0:
                    raise CssError("bad additive tuple in " + name)
                pairs.append((ints[0], syms[0]))
            for a, b in zip(pairs, pairs[1:]):
                if a[0] <= b[0]:
                    raise CssError("additive weights must fall in " + name)
            style.additive = pairs
        elif descriptor == "negative":
            syms = [symbol_of(t) for t in tokens]
            if len(syms) not in (1, 2):
                raise CssError("bad negative")
            style.negative = (syms[0], syms[1] if len(syms) == 2 else "")
        elif descriptor in ("prefix", "suffix"):
            if len(tokens) != 1:
                raise CssError("bad " + descriptor)
            setattr(style, descriptor, symbol_of(tokens[0]))
        elif descriptor == "range":
            if len(tokens) == 1 and tokens[0] == ("ident", "auto"):
                style.ranges = None
                continue
            bounds = []
            for t in tokens:
                if t[0] == ",":
                    continue
                if t[0] == "int":
                    bounds.append(t[1])
                elif t == ("ident", "infinite"):
                    bounds.append(INT64_MIN if len(bounds) % 2 == 0 else INT64_MAX)
                else:
                    raise CssError("bad range")
            if len(bounds) % 2:
                raise CssError("odd range")
            style.ranges = list(zip(bounds[0::2], bounds[1::2]))
        elif descriptor == "pad":
            ints = [t[1] for t in tokens if t[0] == "int"]
            syms = [symbol_of(t) for t in tokens if t[0] != "int"]
            if len(ints) != 1 or len(syms) != 1 or ints[0] < 0:
                raise CssError("bad pad")
            style.pad = (ints[0], syms[0])
        elif descriptor == "fallback":
            if len(tokens) != 1 or tokens[0][0] != "ident":
                raise CssError("bad fallback")
            style.fallback = tokens[0][1]
        elif descriptor == "speak-as":
            pass
        else:
            raise CssError("unknown descriptor %r in %s" % (descriptor, name))
    return style


def resolve_extends(style, lookup, seen=()):
    """Copies the algorithm of the extended style; the rule's own descriptors stay."""
    if style.extends is None:
        return style
    if style.name in seen:
        raise CssError("extends loop at " + style.name)
    base = resolve_extends(lookup(style.extends), lookup, seen + (style.name,))
    merged = Style(style.name)
    for attr in ("system", "first", "symbols", "additive", "negative", "prefix", "suffix",
                 "ranges", "pad", "fallback"):
        setattr(merged, attr, getattr(base, attr))
    # The extending rule may not carry symbols; everything else it gives replaces the base.
    for descriptor, attr in (("negative", "negative"), ("prefix", "prefix"),
                             ("suffix", "suffix"), ("range", "ranges"), ("pad", "pad"),
                             ("fallback", "fallback")):
        if descriptor in style.given:
            setattr(merged, attr, getattr(style, attr))
    return merged


MINIMUM_SYMBOLS = {
    "cyclic": 1, "fixed": 1, "symbolic": 1, "alphabetic": 2, "numeric": 2, "kansuji": 10,
    "simp-chinese-formal": 13, "simp-chinese-informal": 13, "trad-chinese-formal": 13,
    "trad-chinese-informal": 13,
}


def check_style(style):
    """A predefined style must be able to represent the values of its range."""
    s = style.system
    if s == "additive" and not style.additive:
        raise CssError(style.name + ": additive without additive-symbols")
    if len(style.symbols or []) < MINIMUM_SYMBOLS.get(s, 0):
        raise CssError(style.name + ": too few symbols for " + s)


def cxx_string(text):
    out = ['u"']
    for ch in text:
        code = ord(ch)
        if 0x20 <= code < 0x7F and ch not in '\\"?':
            out.append(ch)
        elif code <= 0xFFFF:
            out.append("\\u%04X" % code)
        else:
            out.append("\\U%08X" % code)
    out.append('"')
    return "".join(out)


def cxx_name(name):
    """The ZtNameEnum constant of a built-in name made of letters, digits and hyphens."""
    if not re.fullmatch(r"[A-Za-z0-9]+(-[A-Za-z0-9]+)*", name):
        raise CssError("no name constant for %r" % name)
    return "NM_" + name.replace("-", "_")


def cxx_int64(value):
    if value == INT64_MIN:
        return "INT64_MIN"
    if value == INT64_MAX:
        return "INT64_MAX"
    return "INT64_C(%d)" % value


def generate(names, styles, sources):
    lines = [
        "// Generated by scripts/gen_counter_styles.py from the style sheets in",
        "// src/counter/styles; do not edit.",
        '#include "counter/predefined_data.h"',
        "",
        "#include <cstdint>",
        "",
        "namespace ZtCommonNS::counter_detail {",
        "",
        "namespace {",
    ]
    entries = []
    for index, name in enumerate(names):
        st = styles[name]
        ident = "s%d" % index
        symbols = "nullptr"
        additive = "nullptr"
        ranges = "nullptr"
        if st.symbols:
            lines.append("// %s (%s)" % (name, sources[name]))
            lines.append("const char16_t* const %s_symbols[] = {%s};" %
                         (ident, ", ".join(cxx_string(s) for s in st.symbols)))
            symbols = ident + "_symbols"
        if st.additive:
            if not st.symbols:
                lines.append("// %s (%s)" % (name, sources[name]))
            lines.append("const PredefinedAdditive %s_additive[] = {%s};" % (
                ident, ", ".join("{%d, %s}" % (w, cxx_string(s)) for w, s in st.additive)))
            additive = ident + "_additive"
        if st.ranges is not None:
            lines.append("const PredefinedRange %s_ranges[] = {%s};" % (
                ident, ", ".join("{%s, %s}" % (cxx_int64(a), cxx_int64(b))
                                 for a, b in st.ranges)))
            ranges = ident + "_ranges"
        entries.append(
            "    {%s, %s, %d, %s, %d, %s, %d, %s, %d, %s, %s, %s, %s, %d, %s, %s}," % (
                cxx_name(name), cxx_name(st.system), st.first, symbols,
                len(st.symbols or []), additive, len(st.additive or []), ranges,
                -1 if st.ranges is None else len(st.ranges), cxx_string(st.negative[0]),
                cxx_string(st.negative[1]), cxx_string(st.prefix), cxx_string(st.suffix),
                st.pad[0], cxx_string(st.pad[1]), cxx_name(st.fallback)))
    lines.append("} // namespace")
    lines.append("")
    lines.append("const PredefinedStyleData kPredefinedStyles[] = {")
    lines.extend(entries)
    lines.append("};")
    lines.append("const int kPredefinedStyleCount = %d;" % len(names))
    lines.append("")
    lines.append("} // namespace ZtCommonNS::counter_detail")
    return "\n".join(lines) + "\n"


def main(argv):
    if len(argv) < 4:
        sys.stderr.write(__doc__)
        return 2
    names_file, output = argv[1], argv[2]
    names = []
    with open(names_file, encoding="utf-8") as f:
        for line in f:
            line = line.split("#", 1)[0].strip()
            if line:
                names.append(line)
    if len(set(names)) != len(names):
        raise CssError("duplicate names in " + names_file)

    # Every rule of every sheet, first definition of a name wins.
    raw = {}
    sources = {}
    for path in argv[3:]:
        with open(path, encoding="utf-8") as f:
            for name, declarations in parse_rules(f.read()):
                if name not in raw:
                    raw[name] = build_style(name, declarations)
                    sources[name] = path.rsplit("/", 1)[-1]

    def lookup(name):
        if name not in raw:
            raise CssError("extends unknown style " + name)
        return raw[name]

    styles = {}
    for name in names:
        if name not in raw:
            raise CssError("no rule for predefined style " + name)
        styles[name] = resolve_extends(raw[name], lookup)
        check_style(styles[name])
        if styles[name].fallback not in names:
            raise CssError(name + " falls back to a style that is not predefined")

    text = generate(names, styles, sources)
    with open(output, "w", encoding="utf-8") as f:
        f.write(text)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv))
    except CssError as e:
        sys.stderr.write("gen_counter_styles: %s\n" % e)
        sys.exit(1)
