// Reading the unicode-range syntax into a ZtUnicodeRange, from UTF-16 and from wide texts.
#include <algorithm>
#include <cwchar>

#include <unicode/utf16.h>

#include "text/hex_number.h"
#include "ztcommon/text.h"

namespace ZtCommonNS {

namespace {

// The text between [begin, limit) holds code units of CharT: UTF-16 for char16_t, code points
// for wchar_t. Every position handed out lies in [begin, limit].
template <typename CharT> class RangeParser {
public:
    RangeParser(ZtUnicodeRange& set, const CharT* begin, const CharT* limit)
        : set_(set), limit_(limit), pos_(begin) {}

    // Parses the list; returns the position where parsing stopped.
    const CharT* parseList() {
        while (parseItem()) {
            skipWhitespace();
            if (pos_ == limit_ || *pos_ != CharT(','))
                break;
            ++pos_;
        }
        return pos_;
    }

private:
    bool at(char16_t ch) const { return pos_ != limit_ && *pos_ == CharT(ch); }

    void skipWhitespace() {
        while (pos_ != limit_ && (*pos_ == CharT('\t') || *pos_ == CharT('\n') ||
                                  *pos_ == CharT('\r') || *pos_ == CharT(' ')))
            ++pos_;
    }

    // One item; on failure pos_ is left where the item went wrong.
    bool parseItem() {
        skipWhitespace();
        if (at(u'"') || at(u'\''))
            return parseQuoted();
        if (!at(u'U'))
            return false;
        ++pos_;
        if (!at(u'+'))
            return false;
        ++pos_;
        int32_t first = 0;
        if (!readHexNumber(pos_, limit_, first) && !at(u'?'))
            return false; // no digit, or a number beyond U+10FFFF (pos_ on its first digit)
        int32_t last = first;
        if (at(u'-')) {
            ++pos_;
            if (pos_ == limit_ || hexDigitValue(*pos_) < 0) {
                last = kMaxCodePoint; // an open range runs to the end of Unicode
            } else {
                const CharT* lastDigits = pos_;
                if (!readHexNumber(pos_, limit_, last))
                    return false;
                if (first > last) {
                    pos_ = lastDigits;
                    return false;
                }
            }
        } else if (at(u'?')) {
            int32_t mask = 0;
            while (at(u'?')) {
                if (first > kMaxCodePoint / 16)
                    return false; // this "?" would start the range beyond U+10FFFF
                first *= 16;
                mask = std::min(mask * 16 + 15, 0xFFFFFF);
                ++pos_;
            }
            last = std::min(first | mask, kMaxCodePoint);
        }
        set_.addRange(first, last);
        return true;
    }

    // A quoted run of literal characters; an empty pair adds nothing.
    bool parseQuoted() {
        const CharT quote = *pos_;
        const CharT* close = std::find(pos_ + 1, limit_, quote);
        if (close == limit_) {
            pos_ = limit_;
            return false;
        }
        ++pos_;
        while (pos_ != close) {
            const CharT* here = pos_;
            const int32_t c = nextCodePoint(close);
            if (c < 0 || c > kMaxCodePoint) {
                pos_ = here;
                return false;
            }
            set_.addRange(c, c);
        }
        pos_ = close + 1;
        return true;
    }

    // The code point at pos_, moving past it; a surrogate pair of UTF-16 is one code point, a
    // lone surrogate stands for itself.
    int32_t nextCodePoint(const CharT* end) {
        if constexpr (sizeof(CharT) == 2) {
            const char16_t lead = *pos_++;
            if (U16_IS_LEAD(lead) && pos_ != end && U16_IS_TRAIL(*pos_))
                return U16_GET_SUPPLEMENTARY(lead, *pos_++);
            return lead;
        } else {
            return static_cast<int32_t>(*pos_++);
        }
    }

    ZtUnicodeRange& set_;
    const CharT* limit_;
    const CharT* pos_;
};

} // namespace

bool ZtUnicodeRange::parseUnicodeRange(const UnicodeString& text) {
    return parseUnicodeRange(text, nullptr);
}

bool ZtUnicodeRange::parseUnicodeRange(const UnicodeString& text, int32_t* stop) {
    const char16_t* begin = text.getBuffer();
    if (begin == nullptr) { // a bogus string: nothing to read
        if (stop != nullptr)
            *stop = 0;
        return true;
    }
    const char16_t* limit = begin + text.length();
    const char16_t* end = RangeParser<char16_t>(*this, begin, limit).parseList();
    if (stop != nullptr)
        *stop = static_cast<int32_t>(end - begin);
    return end == limit;
}

bool ZtUnicodeRange::parseUnicodeRange(const wchar_t* text, const wchar_t** end) {
    if (text == nullptr) {
        if (end != nullptr)
            *end = nullptr;
        return true;
    }
    const wchar_t* limit = text + std::wcslen(text);
    const wchar_t* stop = RangeParser<wchar_t>(*this, text, limit).parseList();
    if (end != nullptr)
        *end = stop;
    return stop == limit;
}

bool ZtUnicodeRange::parseUnicodeRange(const ZtValue& value) {
    if (value.isName() && value.getNameValue() == NM_all) {
        fullRange();
        return true;
    }
    if (value.isArray()) {
        bool all = true;
        for (const ZtValue& item : *value.getValueArray())
            all = parseUnicodeRange(item) && all;
        return all;
    }
    if (value.isString()) {
        // The characters themselves: what the quoted form stands for, without the escapes
        // that quoting adds for quotes and backslashes.
        const UnicodeString& text = value.getStringValue();
        for (int32_t i = 0; i < text.length();) {
            const UChar32 c = text.char32At(i);
            addRange(c, c);
            i += U16_LENGTH(c);
        }
        return true;
    }
    return parseUnicodeRange(value.toQuotedString());
}

} // namespace ZtCommonNS
