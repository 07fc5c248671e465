// ZtUnicodeRange: a set of code points held as sorted, merged ranges, read from and written as
// the CSS unicode-range syntax. Included by text.h.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <unicode/unistr.h>

#include "ztcommon/export.h"
#include "ztcommon/value.h"

namespace ZtCommonNS {

// A set of code points, U+0000 to U+10FFFF, as ranges sorted by their first code point that
// neither overlap nor touch.
//
// Text syntax: a comma-separated list of items, each preceded by optional white space (tab,
// line feed, carriage return, space):
//   U+41         one code point (hex digits, any case; "U" must be a capital)
//   U+25-FF      a range, both ends included
//   U+41-        from U+0041 to U+10FFFF
//   U+4??        each "?" stands for any hex digit: U+0400 to U+04FF
//   'AB', "AB"   the characters between the quotes
// Numbers beyond U+10FFFF, and wildcards whose first code point lies beyond it, are errors;
// a wildcard range reaching past U+10FFFF ends there (U+?????? is every code point).
//
// Parsing stops at the first item in error; the items before it stay in the set, and the result
// is true exactly when parsing stopped at the end of the text. An item that fails at the very
// end therefore does not fail the list: the empty text, a trailing comma and a quote that is
// never closed (which adds nothing) all give true. Where parsing stops:
//   - at the character that is not "U", or not "+" after it;
//   - at the first digit of a number beyond U+10FFFF, or of a range end below its start;
//   - at the "?" that takes a wildcard's first code point beyond U+10FFFF;
//   - at a quoted character that is not a code point (wide text only);
//   - after an item, at the first character after white space that is not a comma.
class ZT_EXPORT ZtUnicodeRange {
public:
    // A range of code points, both ends included.
    struct URange {
        int32_t first;
        int32_t last;
        friend bool operator==(const URange&, const URange&) = default;
    };

    ZtUnicodeRange() noexcept = default;
    ZtUnicodeRange(const ZtUnicodeRange& other);
    ZtUnicodeRange(ZtUnicodeRange&& other) noexcept = default;
    ZtUnicodeRange& operator=(const ZtUnicodeRange& other);
    ZtUnicodeRange& operator=(ZtUnicodeRange&& other) noexcept = default;
    ~ZtUnicodeRange();

    // Adds the items of `text` to the set; see above.
    bool parseUnicodeRange(const UnicodeString& text);
    bool parseUnicodeRange(const char16_t* text) { return parseUnicodeRange(UnicodeString(text)); }
    // The same; `stop` (when not null) receives the UTF-16 index where parsing stopped.
    bool parseUnicodeRange(const UnicodeString& text, int32_t* stop);
    // A NUL-terminated wide text (null counts as empty); `end` (when not null) receives the
    // position where parsing stopped.
    bool parseUnicodeRange(const wchar_t* text, const wchar_t** end = nullptr);
    // The name value "all" adds every code point; an array value adds each of its items by this
    // same rule (true when all of them succeed); a string value adds its characters (what its
    // quoted form means); any other value is written with toQuotedString() and parsed as text.
    bool parseUnicodeRange(const ZtValue& value);

    // Adds a range, merging it with those it overlaps or touches. The range is clipped to
    // U+0000..U+10FFFF; a range with first > last, or wholly outside, adds nothing.
    void addRange(const URange& range);
    void addRange(int32_t first, int32_t last) { addRange(URange{first, last}); }
    // The union with `other`.
    void addRange(const ZtUnicodeRange& other);

    bool inRange(int32_t c) const noexcept;
    bool isEmpty() const noexcept { return ranges_ == nullptr || ranges_->empty(); }
    // Exactly one range, from U+0000 to U+10FFFF.
    bool isFullRange() const noexcept;
    // Adds U+0000..U+10FFFF.
    void fullRange();
    // Empties the set.
    void clearRange() noexcept;

    // The ranges in order.
    int getRangeCount() const noexcept {
        return ranges_ == nullptr ? 0 : static_cast<int>(ranges_->size());
    }
    const URange* begin() const noexcept { return ranges_ == nullptr ? nullptr : ranges_->data(); }
    const URange* end() const noexcept { return begin() + getRangeCount(); }

    // The same code points.
    friend ZT_EXPORT bool operator==(const ZtUnicodeRange& a, const ZtUnicodeRange& b) noexcept;

    // The set in its shortest wildcard form, ranges separated by "," without spaces: "U+0041",
    // "U+????" (plane 0), "U+1????" (a whole plane), "U+4???", "U+04??", "U+004?", or else
    // "U+0025-00FF". The empty set gives the empty string.
    UnicodeString toString() const;

private:
    // Null while nothing was ever added.
    std::unique_ptr<std::vector<URange>> ranges_;
};

} // namespace ZtCommonNS
