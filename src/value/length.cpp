// ZtLength and the points-per-unit factors of the absolute length units.
#include <array>
#include <cmath>
#include <limits>

#include "ztcommon/value.h"

namespace ZtCommonNS {

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// The factors are single-precision results of their defining formulas; constant evaluation
// rounds each float operation exactly as the processor would at load.
constexpr std::array<float, ZT_UNIT_LIMIT> makeFactors() {
    std::array<float, ZT_UNIT_LIMIT> f{};
    for (float& factor : f)
        factor = kNaN;
    const float didot = 1.06776f;
    f[ZT_UNIT_CM] = 72.0f / 2.54f;
    f[ZT_UNIT_MM] = 7.2f / 2.54f;
    f[ZT_UNIT_IN] = 72.0f;
    f[ZT_UNIT_PT] = 1.0f;
    f[ZT_UNIT_PC] = 12.0f;
    f[ZT_UNIT_JPT] = 72.0f / 72.2823f; // 72.2823 Japanese points to the inch
    f[ZT_UNIT_Q] = 72.0f / 101.6f;     // 101.6 Q to the inch
    f[ZT_UNIT_DD] = didot;
    f[ZT_UNIT_CC] = 12.0f * didot;
    f[ZT_UNIT_TWIP] = 0.05f;
    f[ZT_UNIT_EMU] = 1.0f / 12700.0f;
    f[ZT_UNIT_PC2] = 12.0f;
    return f;
}

constexpr std::array<float, ZT_UNIT_LIMIT> kFactors = makeFactors();

// What an invalid float-to-integer conversion yields on this processor family; produced
// deliberately here, since the conversion itself would be undefined in C++.
constexpr int kInvalidInteger = INT_MIN;

// Truncation toward zero, with kInvalidInteger for NaN and values beyond the int range.
int truncateOrInvalid(float x) {
    if (!(x >= -2147483648.0f && x < 2147483648.0f))
        return kInvalidInteger;
    return static_cast<int>(x);
}

} // namespace

float ZtLength::getUnitFactor(ZtUnitType unit) noexcept {
    return unit < ZT_UNIT_LIMIT ? kFactors[unit] : kNaN;
}

bool ZtLength::isAbsoluteUnit(ZtUnitType unit) noexcept {
    return !std::isnan(getUnitFactor(unit));
}

ZtLength::ZtLength(float value, ZtUnitType unit) noexcept : points_(value * getUnitFactor(unit)) {}

float ZtLength::getRealValue(ZtUnitType unit) const noexcept {
    return points_ / getUnitFactor(unit);
}

int ZtLength::getIntegerValue(ZtUnitType unit) const noexcept {
    return truncateOrInvalid(getRealValue(unit) + 0.5f);
}

int ZtLength::getPixelCount(float dpi) const noexcept {
    float pixels = dpi * points_ / 72.0f;
    return truncateOrInvalid(pixels >= 0.0f ? pixels + 0.5f : pixels - 0.5f);
}

bool ZtLength::isInvalid() const noexcept {
    constexpr float limit = 100000.0f * kFactors[ZT_UNIT_MM]; // ZtLength(100000, ZT_UNIT_MM)
    return points_ < -limit || points_ > limit;
}

} // namespace ZtCommonNS
