// The test model of CSS counter styles (see css_reference.h).
#include "css_reference.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

#include <unicode/unistr.h>

namespace css_reference {

namespace {

// --- Reading ---

// A CSS token as far as the counter-style sheets need them: kind 's' a string, 'i' an
// identifier (at-keywords included), 'n' an integer, or the delimiter itself: { } ; : ,
struct Token {
    char kind;
    std::u16string text;
    long long number = 0;
};

bool isSpace(char16_t c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isDigit(char16_t c) {
    return c >= '0' && c <= '9';
}

int hexValue(char16_t c) {
    if (isDigit(c))
        return c - '0';
    c |= 0x20;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

std::vector<Token> tokenize(const std::u16string& t) {
    std::vector<Token> out;
    size_t i = 0;
    // The escape whose backslash is at t[i]; a hexadecimal escape swallows one white-space
    // character after it.
    auto escape = [&](std::u16string& to) {
        if (++i >= t.size())
            throw std::runtime_error("escape at end");
        if (hexValue(t[i]) < 0) {
            to += t[i++];
            return;
        }
        char32_t c = 0;
        for (int n = 0; n < 6 && i < t.size() && hexValue(t[i]) >= 0; ++n)
            c = c * 16 + static_cast<char32_t>(hexValue(t[i++]));
        if (i < t.size() && isSpace(t[i]))
            ++i;
        if (c >= 0x10000)
            to += {static_cast<char16_t>(0xD7C0 + (c >> 10)),
                   static_cast<char16_t>(0xDC00 | (c & 0x3FF))};
        else
            to += static_cast<char16_t>(c);
    };
    // A string or an identifier: its characters and escapes up to (not including) a stop.
    auto read = [&](char kind, auto stop) {
        Token token{kind, {}};
        while (i < t.size() && !stop(t[i])) {
            if (t[i] == '\\')
                escape(token.text);
            else
                token.text += t[i++];
        }
        out.push_back(token);
    };
    const std::u16string delimiters = u"{};:,";
    while (i < t.size()) {
        const char16_t c = t[i];
        if (isSpace(c)) {
            ++i;
        } else if (t.compare(i, 2, u"/*") == 0) {
            i = t.find(u"*/", i + 2);
            if (i == std::u16string::npos)
                throw std::runtime_error("open comment");
            i += 2;
        } else if (c == '\'' || c == '"') {
            ++i;
            read('s', [c](char16_t x) { return x == c; });
            if (i++ >= t.size())
                throw std::runtime_error("open string");
        } else if (delimiters.find(c) != std::u16string::npos) {
            out.push_back({static_cast<char>(c), {}});
            ++i;
        } else if (isDigit(c) || (c == '-' && i + 1 < t.size() && isDigit(t[i + 1]))) {
            Token token{'n', {}};
            const bool minus = c == '-';
            for (i += minus ? 1 : 0; i < t.size() && isDigit(t[i]); ++i)
                token.number = token.number * 10 + (t[i] - '0');
            token.number = minus ? -token.number : token.number;
            out.push_back(token);
        } else {
            read('i', [&](char16_t x) {
                return isSpace(x) || x == '\'' || x == '"' ||
                       delimiters.find(x) != std::u16string::npos;
            });
        }
    }
    return out;
}

std::string ascii(const Token& token) {
    return std::string(token.text.begin(), token.text.end());
}

const std::u16string& symbol(const Token& t) {
    if (t.kind != 's' && t.kind != 'i')
        throw std::runtime_error("not a symbol");
    return t.text;
}

void applyDescriptor(Rule& rule, const std::string& name, const std::vector<Token>& v) {
    rule.given.push_back(name);
    if (name == "system") {
        if (ascii(v.at(0)) == "extends")
            rule.extends = ascii(v.at(1));
        else
            rule.system = ascii(v.at(0));
        if (rule.system == "fixed" && v.size() > 1)
            rule.first = v[1].number;
    } else if (name == "symbols") {
        for (const Token& t : v)
            rule.symbols.push_back(symbol(t));
    } else if (name == "additive-symbols") {
        // Tuples "weight symbol", separated by commas, in either order.
        for (size_t k = 0; k < v.size(); k += 3) {
            if (k + 1 >= v.size() || (k + 2 < v.size() && v[k + 2].kind != ','))
                throw std::runtime_error("bad additive tuple");
            const bool weightFirst = v[k].kind == 'n';
            rule.additive.emplace_back(v[weightFirst ? k : k + 1].number,
                                       symbol(v[weightFirst ? k + 1 : k]));
        }
    } else if (name == "negative") {
        rule.negativeBefore = symbol(v.at(0));
        rule.negativeAfter = v.size() > 1 ? symbol(v[1]) : std::u16string();
    } else if (name == "prefix") {
        rule.prefix = symbol(v.at(0));
    } else if (name == "suffix") {
        rule.suffix = symbol(v.at(0));
    } else if (name == "range") {
        rule.ranges.reset();
        if (v.size() == 1 && v[0].text == u"auto")
            return;
        std::vector<long long> bounds;
        for (const Token& t : v) {
            if (t.kind == 'n')
                bounds.push_back(t.number);
            else if (t.kind == 'i') // infinite
                bounds.push_back(bounds.size() % 2 == 0 ? LLONG_MIN : LLONG_MAX);
        }
        rule.ranges.emplace();
        for (size_t k = 0; k + 1 < bounds.size(); k += 2)
            rule.ranges->emplace_back(bounds[k], bounds[k + 1]);
    } else if (name == "pad") {
        for (const Token& t : v) {
            if (t.kind == 'n')
                rule.padLength = t.number;
            else
                rule.padSymbol = symbol(t);
        }
    } else if (name == "fallback") {
        rule.fallback = ascii(v.at(0));
    } else if (name == "zero") {
        rule.zero = symbol(v.at(0));
    }
}

// --- Formatting ---

size_t codePoints(const std::u16string& s) {
    return static_cast<size_t>(
        std::count_if(s.begin(), s.end(), [](char16_t c) { return c < 0xDC00 || c > 0xDFFF; }));
}

bool inRange(const Rule& rule, long long value) {
    if (rule.ranges) {
        return std::any_of(rule.ranges->begin(), rule.ranges->end(),
                           [&](const auto& r) { return value >= r.first && value <= r.second; });
    }
    if (rule.system == "alphabetic" || rule.system == "symbolic")
        return value >= 1;
    return rule.system != "additive" || value >= 0;
}

// The CSS counter algorithms, written for clarity rather than speed: texts are built by
// prepending and repeating, as the CSS text describes them. Sets `negative` when the
// negative sign is to be added.
std::optional<std::u16string> represent(const Rule& rule, long long value, bool& negative) {
    const auto& symbols = rule.symbols;
    const auto count = static_cast<long long>(symbols.size());
    const std::string& system = rule.system;
    auto at = [&](long long index) { return symbols[static_cast<size_t>(index)]; };
    std::u16string s;
    negative = value < 0 && (system == "numeric" || system == "additive");
    long long v = value < 0 ? -value : value;
    if (system == "cyclic") {
        if (count == 0)
            return std::nullopt;
        return at(((value - 1) % count + count) % count);
    }
    if (system == "fixed") {
        if (value < rule.first || value - rule.first >= count)
            return std::nullopt;
        return at(value - rule.first);
    }
    if (system == "symbolic") {
        if (count == 0 || value < 1)
            return std::nullopt;
        for (long long i = 0; i <= (value - 1) / count; ++i)
            s += at((value - 1) % count);
    } else if (system == "alphabetic") {
        if (count < 2 || value < 1)
            return std::nullopt;
        for (; v > 0; v = (v - 1) / count)
            s.insert(0, at((v - 1) % count));
    } else if (system == "numeric") {
        if (count < 2)
            return std::nullopt;
        s = v == 0 ? at(0) : u"";
        for (; v > 0; v /= count)
            s.insert(0, at(v % count));
    } else if (system == "additive") {
        for (const auto& [weight, symbol] : rule.additive) {
            if (value == 0 && weight == 0)
                return symbol;
            for (; weight > 0 && v >= weight; v -= weight)
                s += symbol;
        }
        if (v != 0 || value == 0 || rule.additive.empty())
            return std::nullopt;
    } else {
        return std::nullopt;
    }
    if (s.size() >= 1000)
        return std::nullopt;
    return s;
}

} // namespace

std::string utf8(const std::u16string& text) {
    std::string out;
    return icu::UnicodeString(text.data(), static_cast<int32_t>(text.size())).toUTF8String(out);
}

std::vector<Rule> parseStyleSheet(const std::string& css) {
    const icu::UnicodeString sheet = icu::UnicodeString::fromUTF8(css);
    const std::vector<Token> t =
        tokenize(std::u16string(sheet.getBuffer(), static_cast<size_t>(sheet.length())));
    std::vector<Rule> rules;
    for (size_t i = 0; i < t.size(); ++i) {
        if (t[i].kind != 'i' || t[i].text != u"@counter-style")
            continue;
        Rule rule;
        rule.name = ascii(t.at(i + 1));
        if (t.at(i + 2).kind != '{')
            throw std::runtime_error("rule without body");
        // Declarations "descriptor: tokens" up to a semicolon or the closing brace.
        for (i += 3; t.at(i).kind != '}';) {
            if (t.at(i).kind == ';') {
                ++i;
                continue;
            }
            if (t.at(i + 1).kind != ':')
                throw std::runtime_error("declaration without colon");
            const std::string descriptor = ascii(t[i]);
            std::vector<Token> value;
            for (i += 2; t.at(i).kind != ';' && t[i].kind != '}'; ++i)
                value.push_back(t[i]);
            applyDescriptor(rule, descriptor, value);
        }
        rules.push_back(rule);
    }
    return rules;
}

void StyleSet::add(const std::vector<Rule>& rules) {
    for (const Rule& rule : rules)
        rules_.emplace(rule.name, rule);
    resolved_.clear();
}

const Rule& StyleSet::resolved(const std::string& name) const {
    auto found = resolved_.find(name);
    if (found != resolved_.end())
        return found->second;
    const Rule& rule = rules_.at(name);
    if (rule.extends.empty())
        return resolved_.emplace(name, rule).first->second;
    // The system and its symbols come from the extended style, everything stated here wins.
    Rule base = resolved(rule.extends);
    base.name = rule.name;
    base.given = rule.given;
    for (const std::string& d : rule.given) {
        if (d == "negative") {
            base.negativeBefore = rule.negativeBefore;
            base.negativeAfter = rule.negativeAfter;
        } else if (d == "pad") {
            base.padLength = rule.padLength;
            base.padSymbol = rule.padSymbol;
        }
        base.prefix = d == "prefix" ? rule.prefix : base.prefix;
        base.suffix = d == "suffix" ? rule.suffix : base.suffix;
        base.ranges = d == "range" ? rule.ranges : base.ranges;
        base.fallback = d == "fallback" ? rule.fallback : base.fallback;
    }
    return resolved_.emplace(name, base).first->second;
}

std::u16string StyleSet::formatWith(const Rule& rule, long long value, bool plain,
                                    std::vector<std::string>& busy) const {
    bool negative = false;
    std::optional<std::u16string> text;
    if (inRange(rule, value))
        text = represent(rule, value, negative);
    if (!text) {
        busy.push_back(rule.name);
        std::string fallback = rule.fallback;
        if (!has(fallback) || std::find(busy.begin(), busy.end(), fallback) != busy.end())
            fallback = "decimal";
        text = formatWith(resolved(fallback), value, true, busy);
        busy.pop_back();
    } else {
        // Library rule: pad first, then the negative sign.
        const size_t padUnit = codePoints(rule.padSymbol);
        for (size_t length = codePoints(*text);
             padUnit > 0 && static_cast<long long>(length) < rule.padLength; length += padUnit)
            text->insert(0, rule.padSymbol);
        if (negative)
            text = rule.negativeBefore + *text + rule.negativeAfter;
    }
    return plain ? *text : rule.prefix + *text + rule.suffix;
}

std::u16string StyleSet::format(const std::string& name, long long value, bool plain) const {
    std::vector<std::string> busy;
    return formatWith(resolved(name), value, plain, busy);
}

} // namespace css_reference
