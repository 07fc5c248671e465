// ZtLength: the unit factors against their defining formulas, rounding, the deliberate
// -2147483648 results, auto and the invalid range.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "value_test_util.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

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

} // namespace

TEST(Length, FactorsFollowTheirFormulasInSinglePrecision) {
    const struct {
        ZtUnitType unit;
        float factor;   // single-precision formula
        double printed; // the published rounded factor
    } expected[] = {{ZT_UNIT_CM, divide(72.0f, 2.54f), 28.346457},
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
                    {ZT_UNIT_PC2, 12.0f, 12.0}};
    for (const auto& e : expected) {
        SCOPED_TRACE(int(e.unit));
        EXPECT_EQ(ZtLength::getUnitFactor(e.unit), e.factor);
        EXPECT_NEAR(e.factor, e.printed, e.printed * 1e-7);
        // value × factor, then back
        EXPECT_EQ(static_cast<float>(ZtLength(3.5f, e.unit)), multiply(3.5f, e.factor));
        EXPECT_EQ(ZtLength(7.0f).getRealValue(e.unit), divide(7.0f, e.factor));
    }
    // Every other code, also beyond the 64 codes, is no length.
    for (int code = 0; code < 256; ++code) {
        const auto unit = static_cast<ZtUnitType>(code);
        const bool absolute = kAbsoluteUnits.count(code) != 0;
        EXPECT_EQ(ZtLength::isAbsoluteUnit(unit), absolute) << code;
        EXPECT_EQ(ZtLength(5.0f, unit).isAuto(), !absolute) << code;
        EXPECT_EQ(std::isnan(ZtLength(72.0f).getRealValue(unit)), !absolute) << code;
        if (!absolute) {
            EXPECT_EQ(ZtLength(72.0f).getIntegerValue(unit), INT_MIN) << code;
        }
    }
    // Facts about the units themselves.
    EXPECT_NEAR(ZtLength(1, ZT_UNIT_IN).getRealValue(ZT_UNIT_CM), 2.54f, 1e-6f);
    EXPECT_EQ(static_cast<float>(ZtLength(20, ZT_UNIT_TWIP)), 1.0f);
    EXPECT_NEAR(static_cast<float>(ZtLength(12700, ZT_UNIT_EMU)), 1.0f, 1e-6f);
    EXPECT_NEAR(float(ZtLength(4, ZT_UNIT_Q)), float(ZtLength(1, ZT_UNIT_MM)), 1e-6f);
    EXPECT_EQ(ZtLength(1, ZT_UNIT_IN).getIntegerValue(ZT_UNIT_PC), 6);
}

TEST(Length, IntegerValueAndPixelCountRoundOrGiveIntMin) {
    for (const auto& row : readRows("rounding.tsv", 3, "length"))
        EXPECT_EQ(ZtLength(toFloat(row[1])).getIntegerValue(ZT_UNIT_PT), std::stoi(row[2]))
            << row[1];
    for (const auto& row : readRows("rounding.tsv", 4, "pixels"))
        EXPECT_EQ(ZtLength(toFloat(row[1])).getPixelCount(toFloat(row[2])), std::stoi(row[3]))
            << row[1] << " at " << row[2];
    EXPECT_EQ(ZtLength(5, ZT_UNIT_PERCENT).getIntegerValue(ZT_UNIT_PT), INT_MIN);
    EXPECT_EQ(ZtLength(10, ZT_UNIT_MM).getIntegerValue(ZT_UNIT_MM), 10);
}

TEST(Length, AutoAbsorbsArithmeticAndEqualsOnlyAuto) {
    ZtLength length;
    length += 10.0f;
    length *= 2.0f;
    EXPECT_TRUE(length.isAuto());
    ZtLength real(10.0f);
    real += ZtLength(5.0f);
    real -= 3.0f;
    real *= 2.0f;
    real /= 8.0f;
    EXPECT_EQ(static_cast<float>(real), 3.0f);
    real += ZtLength(); // the sum is NaN
    EXPECT_TRUE(real.isAuto());
    EXPECT_TRUE((ZtLength() + 1.0f).isAuto());
    EXPECT_EQ(static_cast<float>(-ZtLength(3.0f) / 2 - 2L), -3.5f);

    // The tolerances include their bounds; auto is none of these and equals only auto.
    EXPECT_TRUE(ZtLength(-0.01f).isAlmostZero(0.01f));
    EXPECT_FALSE(ZtLength(0.02f).isAlmostZero(0.01f));
    EXPECT_TRUE(ZtLength(-0.01f).isAlmostZeroOrPositive(0.01f));
    EXPECT_FALSE(ZtLength(0.02f).isAlmostZeroOrNegative(0.01f));
    EXPECT_TRUE(ZtLength(10.0f).isAlmostEqual(ZtLength(10.5f), 0.5f));
    EXPECT_FALSE(ZtLength(10.0f).isAlmostEqual(ZtLength(10.75f), 0.5f));
    const ZtLength none;
    EXPECT_FALSE(none.isZero() || none.isPositive() || none.isNegative());
    EXPECT_FALSE(none.isAlmostZero(1.0f) || none.isAlmostEqual(ZtLength(), 1.0f));
    EXPECT_TRUE(none.eq(ZtLength::autoLength()));
    EXPECT_FALSE(none.eq(ZtLength(0.0f)) || ZtLength(0.0f).eq(none));
    EXPECT_TRUE(ZtLength(12.0f).eq(ZtLength(1, ZT_UNIT_PC)));
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
    EXPECT_EQ(static_cast<float>(ZtLength(ZtValue(0))), 0.0f);
    // A plain number other than 0 is no length here, nor is a relative length or a name.
    for (const ZtValue& v : {ZtValue(5), ZtValue(5, ZT_UNIT_PERCENT), ZtValue(2, ZT_UNIT_EM),
                             ZtValue(NM_auto), ZtValue()})
        EXPECT_TRUE(ZtLength(v).isAuto()) << utf8(v.toString());
    EXPECT_EQ(static_cast<float>(ZtValue(5).getLengthValue(true)), 5.0f);
    EXPECT_EQ(static_cast<float>(ZtValue(1.5f, ZT_UNIT_PC).getLengthValue(false)), 18.0f);
}
