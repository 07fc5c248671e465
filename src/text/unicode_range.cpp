// ZtUnicodeRange: the set operations and the shortest text form.
#include <algorithm>

#include "text/hex_number.h"
#include "ztcommon/text.h"

namespace ZtCommonNS {

ZtUnicodeRange::ZtUnicodeRange(const ZtUnicodeRange& other)
    : ranges_(other.isEmpty() ? nullptr : std::make_unique<std::vector<URange>>(*other.ranges_)) {}

ZtUnicodeRange& ZtUnicodeRange::operator=(const ZtUnicodeRange& other) {
    if (this == &other)
        return *this;
    if (other.isEmpty())
        clearRange();
    else if (ranges_ == nullptr)
        ranges_ = std::make_unique<std::vector<URange>>(*other.ranges_);
    else
        *ranges_ = *other.ranges_;
    return *this;
}

ZtUnicodeRange::~ZtUnicodeRange() = default;

void ZtUnicodeRange::addRange(const URange& range) {
    const int32_t first = std::max(range.first, 0);
    const int32_t last = std::min(range.last, kMaxCodePoint);
    if (first > last)
        return;
    if (ranges_ == nullptr)
        ranges_ = std::make_unique<std::vector<URange>>();
    std::vector<URange>& v = *ranges_;
    // The first range that overlaps or touches the new one from below: its last reaches
    // first - 1. Everything before it stays apart.
    auto from = std::lower_bound(v.begin(), v.end(), first,
                                 [](const URange& r, int32_t value) { return r.last + 1 < value; });
    // One past the last range that overlaps or touches it from above: its first is at most
    // last + 1.
    auto to = std::upper_bound(from, v.end(), last,
                               [](int32_t value, const URange& r) { return value + 1 < r.first; });
    if (from == to) {
        v.insert(from, URange{first, last});
        return;
    }
    // [from, to) merge with the new range into one; the others in between are swallowed.
    from->first = std::min(from->first, first);
    from->last = std::max((to - 1)->last, last);
    v.erase(from + 1, to);
}

void ZtUnicodeRange::addRange(const ZtUnicodeRange& other) {
    if (this == &other || other.isEmpty())
        return;
    if (isEmpty()) {
        *this = other;
        return;
    }
    // Both sides are sorted: merge them in one pass rather than inserting one by one.
    std::vector<URange> merged;
    merged.reserve(ranges_->size() + other.ranges_->size());
    auto a = ranges_->begin();
    auto b = other.ranges_->begin();
    while (a != ranges_->end() || b != other.ranges_->end()) {
        const bool takeA =
            b == other.ranges_->end() || (a != ranges_->end() && a->first < b->first);
        const URange next = takeA ? *a++ : *b++;
        if (!merged.empty() && merged.back().last + 1 >= next.first)
            merged.back().last = std::max(merged.back().last, next.last);
        else
            merged.push_back(next);
    }
    *ranges_ = std::move(merged);
}

bool ZtUnicodeRange::inRange(int32_t c) const noexcept {
    if (isEmpty())
        return false;
    // Binary search for the last range starting at or before c, written without branches on
    // the comparisons (the halving compiles to conditional moves): code points of real text
    // jump between ranges unpredictably, and mispredicted branches would dominate.
    const URange* base = ranges_->data();
    size_t count = ranges_->size();
    while (count > 1) {
        const size_t half = count / 2;
        base = base[half].first <= c ? base + half : base;
        count -= half;
    }
    return base->first <= c && c <= base->last;
}

bool ZtUnicodeRange::isFullRange() const noexcept {
    return getRangeCount() == 1 && (*ranges_)[0].first == 0 && (*ranges_)[0].last >= kMaxCodePoint;
}

void ZtUnicodeRange::fullRange() {
    addRange(URange{0, kMaxCodePoint});
}

void ZtUnicodeRange::clearRange() noexcept {
    if (ranges_ != nullptr)
        ranges_->clear();
}

bool operator==(const ZtUnicodeRange& a, const ZtUnicodeRange& b) noexcept {
    if (a.isEmpty() || b.isEmpty())
        return a.isEmpty() == b.isEmpty();
    return *a.ranges_ == *b.ranges_;
}

namespace {

// Appends `value` in upper-case hex with at least `digits` digits.
void appendHex(UnicodeString& out, int32_t value, int digits) {
    char16_t buffer[8];
    int n = 0;
    auto rest = static_cast<uint32_t>(value);
    do {
        buffer[n++] = u"0123456789ABCDEF"[rest & 15];
        rest >>= 4;
    } while (rest != 0 || n < digits);
    while (n > 0)
        out.append(buffer[--n]);
}

// Whether [first, last] is exactly the block of code points sharing everything above the low
// `bits` bits.
bool isAlignedBlock(int32_t first, int32_t last, int bits) {
    const int32_t low = (int32_t(1) << bits) - 1;
    return (first & low) == 0 && (last & low) == low && (first >> bits) == (last >> bits);
}

void appendRange(UnicodeString& out, int32_t first, int32_t last) {
    out.append(u"U+");
    if (first == last) {
        appendHex(out, first, 4);
    } else if (isAlignedBlock(first, last, 16)) {
        if (first != 0)
            appendHex(out, first >> 16, 1);
        out.append(u"????");
    } else if (isAlignedBlock(first, last, 12)) {
        appendHex(out, first >> 12, 1);
        out.append(u"???");
    } else if (isAlignedBlock(first, last, 8)) {
        appendHex(out, first >> 8, 2);
        out.append(u"??");
    } else if (isAlignedBlock(first, last, 4)) {
        appendHex(out, first >> 4, 3);
        out.append(u'?');
    } else {
        appendHex(out, first, 4);
        out.append(u'-');
        appendHex(out, last, 4);
    }
}

} // namespace

UnicodeString ZtUnicodeRange::toString() const {
    UnicodeString out;
    for (const URange& r : *this) {
        if (!out.isEmpty())
            out.append(u',');
        appendRange(out, r.first, r.last);
    }
    return out;
}

} // namespace ZtCommonNS
