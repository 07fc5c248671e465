// The test model of CSS counter styles (see css_reference.h).
#include "css_reference.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

namespace css_reference {

namespace {

// --- Reading ---

std::u32string decodeUtf8(const std::string& bytes) {
    std::u32string out;
    for (size_t i = 0; i < bytes.size();) {
        auto b = static_cast<unsigned char>(bytes[i]);
        int extra = b < 0x80 ? 0 : b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : 1;
        char32_t c = extra == 0   ? b
                     : extra == 1 ? (b & 0x1F)
                     : extra == 2 ? (b & 0x0F)
                                  : (b & 0x07);
        for (int k = 1; k <= extra; ++k)
            c = (c << 6) |
                (static_cast<unsigned char>(bytes.at(i + static_cast<size_t>(k))) & 0x3F);
        out.push_back(c);
        i += static_cast<size_t>(extra) + 1;
    }
    return out;
}

void appendUtf16(std::u16string& out, char32_t c) {
    if (c >= 0x10000) {
        c -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    } else {
        out.push_back(static_cast<char16_t>(c));
    }
}

std::string ascii(const std::u16string& text) {
    std::string out;
    for (char16_t c : text)
        out.push_back(static_cast<char>(c));
    return out;
}

bool isHex(char32_t c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isSpace(char32_t c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

struct Token {
    enum Kind { String, Ident, Integer, Comma } kind;
    std::u16string text;
    long long number = 0;
};

// Reads the escape whose backslash is at `text[i]`, appending its character; returns the
// position after it. A hexadecimal escape swallows one white-space character after it.
size_t readEscape(const std::u32string& text, size_t i, std::u16string& out) {
    size_t j = i + 1;
    if (j >= text.size())
        throw std::runtime_error("escape at end");
    if (!isHex(text[j])) {
        appendUtf16(out, text[j]);
        return j + 1;
    }
    char32_t value = 0;
    size_t digits = 0;
    while (j < text.size() && digits < 6 && isHex(text[j])) {
        char32_t c = text[j];
        value = value * 16 + (c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
        ++j;
        ++digits;
    }
    if (j < text.size() && isSpace(text[j]))
        ++j;
    appendUtf16(out, value);
    return j;
}

std::vector<Token> tokenize(const std::u32string& value) {
    std::vector<Token> tokens;
    size_t i = 0;
    while (i < value.size()) {
        char32_t c = value[i];
        if (isSpace(c)) {
            ++i;
        } else if (c == '\'' || c == '"') {
            Token t{Token::String, {}, 0};
            ++i;
            while (true) {
                if (i >= value.size())
                    throw std::runtime_error("open string");
                if (value[i] == c) {
                    ++i;
                    break;
                }
                if (value[i] == '\\')
                    i = readEscape(value, i, t.text);
                else
                    appendUtf16(t.text, value[i++]);
            }
            tokens.push_back(t);
        } else if (c == ',') {
            tokens.push_back({Token::Comma, u",", 0});
            ++i;
        } else if ((c >= '0' && c <= '9') || (c == '-' && i + 1 < value.size() &&
                                              value[i + 1] >= '0' && value[i + 1] <= '9')) {
            bool minus = c == '-';
            if (minus)
                ++i;
            long long n = 0;
            while (i < value.size() && value[i] >= '0' && value[i] <= '9')
                n = n * 10 + (value[i++] - '0');
            tokens.push_back({Token::Integer, {}, minus ? -n : n});
        } else {
            Token t{Token::Ident, {}, 0};
            while (i < value.size() && !isSpace(value[i]) && value[i] != ',' && value[i] != '\'' &&
                   value[i] != '"') {
                if (value[i] == '\\')
                    i = readEscape(value, i, t.text);
                else
                    appendUtf16(t.text, value[i++]);
            }
            tokens.push_back(t);
        }
    }
    return tokens;
}

std::u16string symbolText(const Token& t) {
    if (t.kind != Token::String && t.kind != Token::Ident)
        throw std::runtime_error("not a symbol");
    return t.text;
}

void applyDescriptor(Rule& rule, const std::string& name, const std::vector<Token>& tokens) {
    rule.given.push_back(name);
    if (name == "system") {
        std::string kind = ascii(tokens.at(0).text);
        if (kind == "extends") {
            rule.extends = ascii(tokens.at(1).text);
        } else {
            rule.system = kind;
            if (kind == "fixed" && tokens.size() > 1)
                rule.first = tokens[1].number;
        }
    } else if (name == "symbols") {
        for (const Token& t : tokens)
            rule.symbols.push_back(symbolText(t));
    } else if (name == "additive-symbols") {
        long long weight = -1;
        std::u16string symbol;
        bool haveSymbol = false;
        auto flush = [&] {
            if (weight < 0 || !haveSymbol)
                throw std::runtime_error("bad additive tuple");
            rule.additive.emplace_back(weight, symbol);
            weight = -1;
            haveSymbol = false;
        };
        for (const Token& t : tokens) {
            if (t.kind == Token::Comma) {
                flush();
            } else if (t.kind == Token::Integer) {
                weight = t.number;
            } else {
                symbol = t.text;
                haveSymbol = true;
            }
        }
        flush();
    } else if (name == "negative") {
        rule.negativeBefore = symbolText(tokens.at(0));
        rule.negativeAfter = tokens.size() > 1 ? symbolText(tokens[1]) : std::u16string();
    } else if (name == "prefix") {
        rule.prefix = symbolText(tokens.at(0));
    } else if (name == "suffix") {
        rule.suffix = symbolText(tokens.at(0));
    } else if (name == "range") {
        if (tokens.size() == 1 && tokens[0].text == u"auto") {
            rule.ranges.reset();
            return;
        }
        std::vector<long long> bounds;
        for (const Token& t : tokens) {
            if (t.kind == Token::Integer)
                bounds.push_back(t.number);
            else if (t.kind == Token::Ident && t.text == u"infinite")
                bounds.push_back(bounds.size() % 2 == 0 ? LLONG_MIN : LLONG_MAX);
        }
        rule.ranges.emplace();
        for (size_t k = 0; k + 1 < bounds.size(); k += 2)
            rule.ranges->emplace_back(bounds[k], bounds[k + 1]);
    } else if (name == "pad") {
        for (const Token& t : tokens) {
            if (t.kind == Token::Integer)
                rule.padLength = t.number;
            else
                rule.padSymbol = symbolText(t);
        }
    } else if (name == "fallback") {
        rule.fallback = ascii(tokens.at(0).text);
    }
}

std::string trim(const std::string& s) {
    size_t a = s.find_first_not_of(" \t\r\n");
    size_t b = s.find_last_not_of(" \t\r\n");
    return a == std::string::npos ? std::string() : s.substr(a, b - a + 1);
}

// Removes /* comments */ outside strings.
std::string withoutComments(const std::string& css) {
    std::string out;
    char quote = 0;
    for (size_t i = 0; i < css.size(); ++i) {
        char c = css[i];
        if (quote) {
            out.push_back(c);
            if (c == '\\' && i + 1 < css.size())
                out.push_back(css[++i]);
            else if (c == quote)
                quote = 0;
        } else if (c == '/' && i + 1 < css.size() && css[i + 1] == '*') {
            size_t end = css.find("*/", i + 2);
            if (end == std::string::npos)
                throw std::runtime_error("open comment");
            i = end + 1;
        } else {
            if (c == '\'' || c == '"')
                quote = c;
            out.push_back(c);
        }
    }
    return out;
}

// --- Formatting ---

size_t codePoints(const std::u16string& s) {
    return static_cast<size_t>(
        std::count_if(s.begin(), s.end(), [](char16_t c) { return c < 0xDC00 || c > 0xDFFF; }));
}

bool inRange(const Rule& rule, long long value) {
    if (rule.ranges) {
        for (const auto& [lower, upper] : *rule.ranges) {
            if (value >= lower && value <= upper)
                return true;
        }
        return false;
    }
    if (rule.system == "alphabetic" || rule.system == "symbolic")
        return value >= 1;
    if (rule.system == "additive")
        return value >= 0;
    return true;
}

} // namespace

std::string utf8(const std::u16string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size())
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (c >> 18)));
            out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

std::vector<Rule> parseStyleSheet(const std::string& css) {
    std::string text = withoutComments(css);
    std::vector<Rule> rules;
    const std::string at = "@counter-style";
    for (size_t pos = text.find(at); pos != std::string::npos; pos = text.find(at, pos)) {
        size_t open = text.find('{', pos);
        size_t close = text.find('}', open);
        if (open == std::string::npos || close == std::string::npos)
            throw std::runtime_error("unterminated rule");
        Rule rule;
        rule.name = trim(text.substr(pos + at.size(), open - pos - at.size()));
        std::string body = text.substr(open + 1, close - open - 1);
        // Declarations end at semicolons outside strings.
        std::string current;
        char quote = 0;
        auto declare = [&rule](const std::string& declaration) {
            size_t colon = declaration.find(':');
            if (trim(declaration).empty())
                return;
            if (colon == std::string::npos)
                throw std::runtime_error("declaration without colon");
            applyDescriptor(rule, trim(declaration.substr(0, colon)),
                            tokenize(decodeUtf8(declaration.substr(colon + 1))));
        };
        for (size_t i = 0; i < body.size(); ++i) {
            char c = body[i];
            if (quote) {
                if (c == '\\' && i + 1 < body.size()) {
                    current.push_back(c);
                    c = body[++i];
                } else if (c == quote) {
                    quote = 0;
                }
            } else if (c == '\'' || c == '"') {
                quote = c;
            } else if (c == ';') {
                declare(current);
                current.clear();
                continue;
            }
            current.push_back(c);
        }
        declare(current);
        rules.push_back(rule);
        pos = close;
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
    Rule base = resolved(rule.extends);
    base.name = rule.name;
    base.given = rule.given;
    for (const std::string& d : rule.given) {
        if (d == "negative") {
            base.negativeBefore = rule.negativeBefore;
            base.negativeAfter = rule.negativeAfter;
        } else if (d == "prefix") {
            base.prefix = rule.prefix;
        } else if (d == "suffix") {
            base.suffix = rule.suffix;
        } else if (d == "range") {
            base.ranges = rule.ranges;
        } else if (d == "pad") {
            base.padLength = rule.padLength;
            base.padSymbol = rule.padSymbol;
        } else if (d == "fallback") {
            base.fallback = rule.fallback;
        }
    }
    return resolved_.emplace(name, base).first->second;
}

// The CSS counter algorithms, written for clarity rather than speed: texts are built by
// prepending and repeating, as the CSS text describes them.
std::optional<std::u16string> StyleSet::represent(const Rule& rule, long long value,
                                                  bool& negative) const {
    negative = false;
    const auto& symbols = rule.symbols;
    const auto count = static_cast<long long>(symbols.size());
    const std::string& system = rule.system;
    std::u16string s;
    if (system == "cyclic") {
        if (count == 0)
            return std::nullopt;
        long long index = (value - 1) % count;
        if (index < 0)
            index += count;
        return symbols[static_cast<size_t>(index)];
    }
    if (system == "fixed") {
        long long index = value - rule.first;
        if (index < 0 || index >= count)
            return std::nullopt;
        return symbols[static_cast<size_t>(index)];
    }
    if (system == "symbolic") {
        if (count == 0 || value < 1)
            return std::nullopt;
        long long k = value - 1;
        for (long long i = 0; i <= k / count; ++i)
            s += symbols[static_cast<size_t>(k % count)];
    } else if (system == "alphabetic") {
        if (count < 2 || value < 1)
            return std::nullopt;
        for (long long v = value; v > 0; v = (v - 1) / count)
            s.insert(0, symbols[static_cast<size_t>((v - 1) % count)]);
    } else if (system == "numeric") {
        if (count < 2)
            return std::nullopt;
        negative = value < 0;
        long long v = value < 0 ? -value : value;
        if (v == 0)
            s = symbols[0];
        for (; v > 0; v /= count)
            s.insert(0, symbols[static_cast<size_t>(v % count)]);
    } else if (system == "additive") {
        if (rule.additive.empty())
            return std::nullopt;
        negative = value < 0;
        long long v = value < 0 ? -value : value;
        if (v == 0) {
            for (const auto& [weight, symbol] : rule.additive) {
                if (weight == 0)
                    return symbol;
            }
            return std::nullopt;
        }
        for (const auto& [weight, symbol] : rule.additive) {
            if (weight == 0 || v < weight)
                continue;
            while (v >= weight) {
                s += symbol;
                v -= weight;
            }
            if (v == 0)
                break;
        }
        if (v != 0)
            return std::nullopt;
    } else {
        return std::nullopt;
    }
    if (s.size() >= 1000)
        return std::nullopt;
    return s;
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
        std::u16string inner = formatWith(resolved(fallback), value, true, busy);
        busy.pop_back();
        return plain ? inner : rule.prefix + inner + rule.suffix;
    }
    std::u16string out = *text;
    // Library rule: pad first, then the negative sign.
    size_t length = codePoints(out);
    size_t padUnit = codePoints(rule.padSymbol);
    if (padUnit > 0) {
        while (static_cast<long long>(length) < rule.padLength) {
            out.insert(0, rule.padSymbol);
            length += padUnit;
        }
    }
    if (negative)
        out = rule.negativeBefore + out + rule.negativeAfter;
    return plain ? out : rule.prefix + out + rule.suffix;
}

std::u16string StyleSet::format(const std::string& name, long long value, bool plain) const {
    std::vector<std::string> busy;
    return formatWith(resolved(name), value, plain, busy);
}

} // namespace css_reference
