// ZtLength: the unit factors against their defining formulas, rounding, the deliberate
// -2147483648 results, auto and the invalid range.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <set>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

// Computed at run time in single precision, independently of the library's table.
float divide(float a, float b) {
    volatile float x = a;
    volatile float y = b;
    return x / y;
}
float multiply(float a, float b) {
    volatile float x = a;
    volatile float y = b;
    return x * y;
}

const std::set<int> kAbsolute = {6, 7, 8, 9, 10, 11, 12, 26, 27, 29, 50, 51};

} // namespace

TEST(Length, FactorsFollowTheirFormulasInSinglePrecision) {
    const struct {
        ZtUnitType unit;
        float factor;   // single-precision formula
        double printed; // the published rounded factor
    } expected[] = {
        {ZT_UNIT_CM, divide(72.0f, 2.54f), 28.346457},
        {ZT_UNIT_MM, divide(7.2f, 2.54f), 2.8346457},
        {ZT_UNIT_IN, 72.0f, 72.0},
        {ZT_UNIT_PT, 1.0f, 1.0},
        {ZT_UNIT_PC, 12.0f, 12.0},
        {ZT_UNIT_JPT, divide(72.0f, 72.2823f), 0.99609447},
        {ZT_UNIT_Q, divide(72.0f, 101.6f), 0.70866144},
        {ZT_UNIT_DD, 1.06776f, 1.06776},
        {ZT_UNIT_CC, multiply(12.0f, 1.06776f), 12.81312},
        {ZT_UNIT_TWIP, 0.05f, 0.05},
        {ZT_UNIT_EMU, divide(1.0f, 12700.0f), 0.000078740159},
        {ZT_UNIT_PC2, 12.0f, 12.0},
    };
    for (const auto& e : expected) {
        EXPECT_EQ(ZtLength::getUnitFactor(e.unit), e.factor) << int(e.unit);
        EXPECT_EQ(static_cast<float>(ZtLength(1.0f, e.unit)), e.factor) << int(e.unit);
        EXPECT_NEAR(e.factor, e.printed, e.printed * 1e-7) << int(e.unit);
        // value × factor, then back
        EXPECT_EQ(static_cast<float>(ZtLength(3.5f, e.unit)), multiply(3.5f, e.factor));
        EXPECT_EQ(ZtLength(7.0f).getRealValue(e.unit), divide(7.0f, e.factor)) << int(e.unit);
    }
}

TEST(Length, OnlyAbsoluteUnitsConvert) {
    for (int code = 0; code < 64; ++code) {
        auto unit = static_cast<ZtUnitType>(code);
        bool absolute = kAbsolute.count(code) != 0;
        EXPECT_EQ(ZtLength::isAbsoluteUnit(unit), absolute) << code;
        EXPECT_EQ(ZtLength(5.0f, unit).isAuto(), !absolute) << code;
        EXPECT_EQ(std::isnan(ZtLength(72.0f).getRealValue(unit)), !absolute) << code;
        if (!absolute) {
            EXPECT_EQ(ZtLength(72.0f).getIntegerValue(unit), INT_MIN) << code;
        }
    }
    for (int code : {64, 100, 255}) {
        EXPECT_TRUE(ZtLength(5.0f, static_cast<ZtUnitType>(code)).isAuto());
        EXPECT_EQ(ZtLength(5.0f).getIntegerValue(static_cast<ZtUnitType>(code)), INT_MIN);
    }
}

TEST(Length, KnownConversions) {
    EXPECT_EQ(static_cast<float>(ZtLength(1, ZT_UNIT_IN)), 72.0f);
    EXPECT_NEAR(ZtLength(1, ZT_UNIT_IN).getRealValue(ZT_UNIT_CM), 2.54f, 1e-6f);
    EXPECT_NEAR(ZtLength(1, ZT_UNIT_IN).getRealValue(ZT_UNIT_MM), 25.4f, 1e-5f);
    EXPECT_EQ(static_cast<float>(ZtLength(1, ZT_UNIT_CC)),
              12.0f * static_cast<float>(ZtLength(1, ZT_UNIT_DD)));
    EXPECT_EQ(static_cast<float>(ZtLength(1, ZT_UNIT_PC)),
              static_cast<float>(ZtLength(1, ZT_UNIT_PC2)));
    EXPECT_EQ(static_cast<float>(ZtLength(20, ZT_UNIT_TWIP)), 1.0f);
    EXPECT_NEAR(static_cast<float>(ZtLength(12700, ZT_UNIT_EMU)), 1.0f, 1e-6f);
    EXPECT_NEAR(static_cast<float>(ZtLength(4, ZT_UNIT_Q)),
                static_cast<float>(ZtLength(1, ZT_UNIT_MM)), 1e-6f);
    EXPECT_EQ(ZtLength(10, ZT_UNIT_MM).getIntegerValue(ZT_UNIT_MM), 10);
    EXPECT_EQ(ZtLength(1, ZT_UNIT_IN).getIntegerValue(ZT_UNIT_PC), 6);
}

TEST(Length, IntegerValueRoundsHalfUpThenTruncates) {
    EXPECT_EQ(ZtLength(2.5f).getIntegerValue(ZT_UNIT_PT), 3);
    EXPECT_EQ(ZtLength(2.4f).getIntegerValue(ZT_UNIT_PT), 2);
    EXPECT_EQ(ZtLength(-2.5f).getIntegerValue(ZT_UNIT_PT), -2); // toward zero
    EXPECT_EQ(ZtLength(-2.6f).getIntegerValue(ZT_UNIT_PT), -2);
    EXPECT_EQ(ZtLength(-3.7f).getIntegerValue(ZT_UNIT_PT), -3);
    EXPECT_EQ(ZtLength(-0.4f).getIntegerValue(ZT_UNIT_PT), 0);
    EXPECT_EQ(ZtLength(2147483520.0f).getIntegerValue(ZT_UNIT_PT), 2147483520);
    // Auto, other units and results beyond the int range give the invalid-conversion integer.
    EXPECT_EQ(ZtLength().getIntegerValue(ZT_UNIT_PT), INT_MIN);
    EXPECT_EQ(ZtLength(5, ZT_UNIT_PERCENT).getIntegerValue(ZT_UNIT_PT), INT_MIN);
    EXPECT_EQ(ZtLength(10.0f).getIntegerValue(ZT_UNIT_PERCENT), INT_MIN);
    EXPECT_EQ(ZtLength(3.0e9f).getIntegerValue(ZT_UNIT_PT), INT_MIN);
    EXPECT_EQ(ZtLength(-3.0e9f).getIntegerValue(ZT_UNIT_PT), INT_MIN);
    EXPECT_EQ(ZtLength(INFINITY).getIntegerValue(ZT_UNIT_PT), INT_MIN);
}

TEST(Length, PixelCount) {
    EXPECT_EQ(ZtLength(0.5f).getPixelCount(72), 1);
    EXPECT_EQ(ZtLength(-0.5f).getPixelCount(72), -1);
    EXPECT_EQ(ZtLength(0.4f).getPixelCount(72), 0);
    EXPECT_EQ(ZtLength(-0.4f).getPixelCount(72), 0);
    EXPECT_EQ(ZtLength(72.0f).getPixelCount(96), 96);
    EXPECT_EQ(ZtLength(1, ZT_UNIT_IN).getPixelCount(300), 300);
    EXPECT_EQ(ZtLength(0.6f).getPixelCount(120), 1); // 0.6 × 120 / 72 = 1.0
    EXPECT_EQ(ZtLength().getPixelCount(72), INT_MIN);
}

TEST(Length, AutoAbsorbsCompoundArithmetic) {
    ZtLength length;
    EXPECT_TRUE(length.isAuto());
    length += 10.0f;
    length += ZtLength(3.0f);
    length -= 1.0f;
    length *= 2.0f;
    length /= 4.0f;
    EXPECT_TRUE(length.isAuto());
    ZtLength real(10.0f);
    real += ZtLength(5.0f);
    real -= 3.0f;
    real *= 2.0f;
    real /= 8.0f;
    EXPECT_EQ(static_cast<float>(real), 3.0f);
    // The binary operators compute on the float as it is.
    EXPECT_TRUE((ZtLength() + 1.0f).isAuto());
    EXPECT_EQ(static_cast<float>(ZtLength(1.5f) + 2), 3.5f);
    EXPECT_EQ(static_cast<float>(ZtLength(1.5f) - 2L), -0.5f);
    EXPECT_EQ(static_cast<float>(ZtLength(1.5f) * 2.0), 3.0f);
    EXPECT_EQ(static_cast<float>(ZtLength(3.0f) / 2), 1.5f);
    EXPECT_EQ(static_cast<float>(-ZtLength(3.0f)), -3.0f);
    // Adding auto to a length through += gives auto (the sum is NaN).
    ZtLength sum(4.0f);
    sum += ZtLength();
    EXPECT_TRUE(sum.isAuto());
}

TEST(Length, Predicates) {
    EXPECT_TRUE(ZtLength(0.0f).isZero());
    EXPECT_TRUE(ZtLength(-0.0f).isZero());
    EXPECT_FALSE(ZtLength().isZero());
    EXPECT_TRUE(ZtLength(1e-30f).isPositive());
    EXPECT_FALSE(ZtLength(0.0f).isPositive());
    EXPECT_TRUE(ZtLength(-1e-30f).isNegative());
    EXPECT_FALSE(ZtLength().isPositive());
    EXPECT_FALSE(ZtLength().isNegative());
    EXPECT_TRUE(ZtLength(0.01f).isAlmostZero(0.01f));
    EXPECT_TRUE(ZtLength(-0.01f).isAlmostZero(0.01f));
    EXPECT_FALSE(ZtLength(0.02f).isAlmostZero(0.01f));
    EXPECT_FALSE(ZtLength().isAlmostZero(1.0f));
    EXPECT_TRUE(ZtLength(-0.01f).isAlmostZeroOrPositive(0.01f));
    EXPECT_FALSE(ZtLength(-0.02f).isAlmostZeroOrPositive(0.01f));
    EXPECT_TRUE(ZtLength(0.01f).isAlmostZeroOrNegative(0.01f));
    EXPECT_FALSE(ZtLength(0.02f).isAlmostZeroOrNegative(0.01f));
    EXPECT_TRUE(ZtLength(10.0f).isAlmostEqual(ZtLength(10.5f), 0.5f));
    EXPECT_FALSE(ZtLength(10.0f).isAlmostEqual(ZtLength(10.75f), 0.5f));
    EXPECT_FALSE(ZtLength().isAlmostEqual(ZtLength(), 1.0f));
}

TEST(Length, AutoAndEquality) {
    EXPECT_TRUE(ZtLength().eq(ZtLength::autoLength()));
    EXPECT_FALSE(ZtLength().eq(ZtLength(0.0f)));
    EXPECT_FALSE(ZtLength(0.0f).eq(ZtLength()));
    EXPECT_TRUE(ZtLength(12.0f).eq(ZtLength(1, ZT_UNIT_PC)));
    EXPECT_FALSE(ZtLength(12.0f).eq(ZtLength(12.5f)));
    EXPECT_TRUE(ZtLength(std::nanf("")).isAuto());
}

TEST(Length, InvalidBeyondAHundredMetres) {
    EXPECT_TRUE(ZtLength(100001, ZT_UNIT_MM).isInvalid());
    EXPECT_FALSE(ZtLength(100000, ZT_UNIT_MM).isInvalid());
    EXPECT_TRUE(ZtLength(-100001, ZT_UNIT_MM).isInvalid());
    EXPECT_FALSE(ZtLength(-100000, ZT_UNIT_MM).isInvalid());
    float limit = multiply(100000.0f, divide(7.2f, 2.54f));
    EXPECT_NEAR(limit, 283464.57f, 0.01f);
    EXPECT_FALSE(ZtLength(limit).isInvalid());
    EXPECT_TRUE(ZtLength(std::nextafter(limit, INFINITY)).isInvalid());
    EXPECT_TRUE(ZtLength(-std::nextafter(limit, INFINITY)).isInvalid());
    EXPECT_FALSE(ZtLength().isInvalid());
}

TEST(Length, FromValues) {
    EXPECT_EQ(static_cast<float>(ZtLength(ZtValue(2, ZT_UNIT_IN))), 144.0f);
    EXPECT_EQ(static_cast<float>(ZtLength(ZtValue(ZtLength(7.5f)))), 7.5f);
    EXPECT_EQ(static_cast<float>(ZtLength(ZtValue(0))), 0.0f);
    EXPECT_TRUE(ZtLength(ZtValue(5)).isAuto()); // a plain number is not a length here
    EXPECT_TRUE(ZtLength(ZtValue(5, ZT_UNIT_PERCENT)).isAuto());
    EXPECT_TRUE(ZtLength(ZtValue(2, ZT_UNIT_EM)).isAuto());
    EXPECT_TRUE(ZtLength(ZtValue(NM_auto)).isAuto());
    EXPECT_TRUE(ZtLength(ZtValue()).isAuto());
    EXPECT_EQ(static_cast<float>(ZtValue(5).getLengthValue(true)), 5.0f);
    EXPECT_EQ(static_cast<float>(ZtValue(1.5f, ZT_UNIT_PC).getLengthValue(false)), 18.0f);
}
