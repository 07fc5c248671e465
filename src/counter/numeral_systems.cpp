// Digit algorithms of the counting systems (see numeral_systems.h).
#include "counter/numeral_systems.h"

#include <algorithm>

namespace ZtCommonNS::counter_detail {

namespace {

// Decimal digits of v, least significant first; returns their count (at least 1).
int decimalDigitsReversed(uint64_t v, uint32_t* digits) {
    int n = 0;
    do {
        digits[n++] = static_cast<uint32_t>(v % 10);
        v /= 10;
    } while (v != 0);
    return n;
}

// Decimal digits of v, most significant first.
int decimalDigits(uint64_t v, uint32_t* out) {
    uint32_t reversed[20];
    int n = decimalDigitsReversed(v, reversed);
    for (int i = 0; i < n; ++i)
        out[i] = reversed[n - 1 - i];
    return n;
}

} // namespace

int positionalDigits(uint64_t v, uint64_t base, uint32_t* out) {
    // Division by a variable is slow; base 10 (decimal and the many digit styles of other
    // scripts) divides by a constant, and magnitudes below 2^32 by a 32-bit variable.
    if (base == 10)
        return decimalDigits(v, out);
    int n = 0;
    for (; v > UINT32_MAX; v /= base)
        out[n++] = static_cast<uint32_t>(v % base);
    auto small = static_cast<uint32_t>(v);
    if (base > UINT32_MAX) {
        out[n++] = small;
    } else {
        auto base32 = static_cast<uint32_t>(base);
        do {
            out[n++] = small % base32;
            small /= base32;
        } while (small != 0);
    }
    std::reverse(out, out + n);
    return n;
}

int bijectiveDigits(uint64_t v, uint64_t base, uint32_t* out) {
    int n = 0;
    while (v != 0) {
        --v;
        out[n++] = static_cast<uint32_t>(v % base);
        v /= base;
    }
    std::reverse(out, out + n);
    return n;
}

int chineseIndices(uint64_t v, bool informal, uint32_t* out) {
    if (v == 0) {
        out[0] = 0;
        return 1;
    }
    uint32_t digits[20];
    int count = decimalDigitsReversed(v, digits);
    bool dropTensOne = informal && v >= 10 && v <= 19;
    // Built from the least significant digit backwards, then turned round.
    int n = 0;
    bool written = false;
    bool previousZero = false;
    for (int p = 0; p < count; ++p) {
        uint32_t d = digits[p];
        if (d != 0) {
            if (p > 0)
                out[n++] = static_cast<uint32_t>(p + 9);
            if (!(dropTensOne && p == 1))
                out[n++] = d;
            written = true;
        } else if (written && !previousZero) {
            out[n++] = 0;
        }
        previousZero = d == 0;
    }
    std::reverse(out, out + n);
    return n;
}

int kansujiIndices(uint64_t v, KansujiForm form, uint32_t* out) {
    uint32_t digits[20];
    int count = decimalDigitsReversed(v, digits);
    int n = 0;
    if (form == KansujiForm::Simple || v == 0) {
        for (int p = count - 1; p >= 0; --p)
            out[n++] = digits[p];
        return n;
    }
    int groups = (count + 3) / 4;
    uint32_t groupMarkerBase = form == KansujiForm::Grouping ? 10 : 13;
    for (int g = groups - 1; g >= 0; --g) {
        uint32_t group[4] = {0, 0, 0, 0};
        bool any = false;
        for (int q = 0; q < 4; ++q) {
            int p = g * 4 + q;
            group[q] = p < count ? digits[p] : 0;
            any = any || group[q] != 0;
        }
        if (!any)
            continue;
        if (form == KansujiForm::Grouping) {
            int q = 3;
            while (group[q] == 0)
                --q;
            for (; q >= 0; --q)
                out[n++] = group[q];
        } else {
            for (int q = 3; q >= 0; --q) {
                uint32_t d = group[q];
                if (d == 0)
                    continue;
                if (q == 0 || d != 1)
                    out[n++] = d;
                if (q > 0)
                    out[n++] = static_cast<uint32_t>(9 + q);
            }
        }
        if (g > 0)
            out[n++] = groupMarkerBase + static_cast<uint32_t>(g - 1);
    }
    return n;
}

int ethiopicNumerals(uint64_t v, char16_t* out) {
    constexpr char16_t kOne = 0x1369;     // ፩; units 1 to 9 follow on
    constexpr char16_t kTen = 0x1372;     // ፲; tens 10 to 90 follow on
    constexpr char16_t kHundred = 0x137B; // ፻
    constexpr char16_t kMyriad = 0x137C;  // ፼
    if (v == 1) {
        out[0] = kOne;
        return 1;
    }
    uint32_t pairs[10];
    int count = 0;
    for (; v != 0; v /= 100)
        pairs[count++] = static_cast<uint32_t>(v % 100);
    int n = 0;
    for (int i = count - 1; i >= 0; --i) {
        uint32_t pair = pairs[i];
        bool odd = (i % 2) == 1;
        bool dropDigits = pair == 0 || (pair == 1 && (i == count - 1 || odd));
        if (!dropDigits) {
            if (pair / 10 != 0)
                out[n++] = static_cast<char16_t>(kTen + pair / 10 - 1);
            if (pair % 10 != 0)
                out[n++] = static_cast<char16_t>(kOne + pair % 10 - 1);
        }
        if (odd && pair != 0)
            out[n++] = kHundred;
        else if (!odd && i > 0)
            out[n++] = kMyriad;
    }
    return n;
}

} // namespace ZtCommonNS::counter_detail
