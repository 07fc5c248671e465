// ZtTransMatrix and ZtPointT: products against hand-multiplied matrices, images of points, the
// inverse of random and awkward matrices, angles and mirrors.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>

#include "ztcommon/writing_mode.h"

using namespace ZtCommonNS;

namespace {

// The largest distance of m's numbers from the identity's, with m computed in double from the
// float matrices p then q.
double distanceFromIdentity(const ZtTransMatrix& p, const ZtTransMatrix& q) {
    const double a = double(p.a) * q.a + double(p.b) * q.c;
    const double b = double(p.a) * q.b + double(p.b) * q.d;
    const double c = double(p.c) * q.a + double(p.d) * q.c;
    const double d = double(p.c) * q.b + double(p.d) * q.d;
    const double e = double(p.e) * q.a + double(p.f) * q.c + q.e;
    const double f = double(p.e) * q.b + double(p.f) * q.d + q.f;
    return std::max({std::fabs(a - 1), std::fabs(b), std::fabs(c), std::fabs(d - 1), std::fabs(e),
                     std::fabs(f)});
}

// Equal bit for bit (NaN included, -0 apart from 0).
bool sameBits(const ZtTransMatrix& m, const ZtTransMatrix& n) {
    using Bits = std::array<std::uint32_t, 6>;
    return std::bit_cast<Bits>(m) == std::bit_cast<Bits>(n);
}

} // namespace

TEST(TransMatrix, IdentityAndEquality) {
    ZtTransMatrix m(1, 2, 3, 4, 5, 6);
    m.zero();
    EXPECT_TRUE(sameBits(m, ZtTransMatrix(0, 0, 0, 0, 0, 0)));
    m.init();
    EXPECT_TRUE(sameBits(m, ZtTransMatrix(1, 0, 0, 1, 0, 0)));
    // Compared as floats: -0 is 0, NaN equals nothing.
    EXPECT_TRUE(ZtTransMatrix(1, -0.0f, 0, 1, -0.0f, 0).isUnitMatrix());
    EXPECT_FALSE(ZtTransMatrix(1, 0, 0, 1, 0, 1e-30f).isUnitMatrix());
    EXPECT_NE(ZtTransMatrix(NAN, 0, 0, 1), ZtTransMatrix(NAN, 0, 0, 1));
}

TEST(TransMatrix, ProductsApplyTheLeftMatrixFirst) {
    const ZtTransMatrix m1(1, 2, 3, 4, 5, 6);
    const ZtTransMatrix m2(7, 8, 9, 10, 11, 12);
    // Multiplied by hand.
    EXPECT_EQ(m1 * m2, ZtTransMatrix(25, 28, 57, 64, 100, 112));
    EXPECT_EQ(m2 * m1, ZtTransMatrix(31, 46, 39, 58, 52, 76));
    EXPECT_EQ(ZtTransMatrix(m1).mulRight(m2), m1 * m2);
    EXPECT_EQ(ZtTransMatrix(m2).mulLeft(m1), m1 * m2);
    // The meaning of the order: the product maps a point as m1, then m2.
    for (float x : {-3.0f, 0.0f, 2.0f}) {
        for (float y : {-1.0f, 5.0f}) {
            EXPECT_EQ((m1 * m2).translate(x, y), m2.translate(m1.translate(x, y)));
            EXPECT_EQ((m2 * m1).translate(x, y), m1.translate(m2.translate(x, y)));
        }
    }
    // Scaling then moving is not moving then scaling.
    const ZtTransMatrix scale(2, 0, 0, 2), move(1, 0, 0, 1, 10, 0);
    EXPECT_EQ((scale * move).translate(1, 1), ZtPointF(12, 2));
    EXPECT_EQ((move * scale).translate(1, 1), ZtPointF(22, 2));
}

TEST(TransMatrix, ImagesOfPoints) {
    const ZtTransMatrix m(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(m.translate(ZtPointF(-1, 2)), ZtPointF(10, 12));
    EXPECT_EQ(m.translateD(1.0, 1.0), ZtPointD(9, 12));
    // translateD keeps what float arithmetic would round away.
    const ZtTransMatrix shift(1, 0, 0, 1, 0.5f, 0);
    EXPECT_EQ(shift.translateD(16777216.0, 0).x, 16777216.5);
    EXPECT_EQ(shift.translate(16777216.0f, 0.0f).x, 16777216.0f);
    EXPECT_EQ(m.translate(ZtLength(1.0f, ZT_UNIT_IN), ZtLength(0)),
              ZtPointL(ZtLength(77), ZtLength(150)));
    // Auto does not turn into a number.
    const ZtPointL unknown = m.translate(ZtPointL(ZtLength(), ZtLength(1)));
    EXPECT_TRUE(unknown.x.isAuto() && unknown.y.isAuto());
}

TEST(TransMatrix, InverseOfHandInvertedMatrices) {
    const std::pair<ZtTransMatrix, ZtTransMatrix> cases[] = {
        {{2, 0, 0, 4, 6, 8}, {0.5f, 0, 0, 0.25f, -3, -2}},
        // A quarter turn and a move: a is 0, so the elimination has to pivot.
        // x' = -y + 3, y' = x + 4  gives  x = y' - 4, y = -x' + 3.
        {{0, 1, -1, 0, 3, 4}, {0, -1, 1, 0, -4, 3}},
        {{0, 1, 1, 0, 0, 0}, {0, 1, 1, 0, 0, 0}}, // swapping the axes undoes itself
    };
    for (const auto& [matrix, inverse] : cases) {
        ZtTransMatrix m = matrix;
        EXPECT_TRUE(m.reverse());
        EXPECT_EQ(m, inverse);
    }
    // Tiny a with c = 0: turning would not help; the matrix is still invertible.
    ZtTransMatrix m(1e-9f, 0, 0, 1);
    EXPECT_TRUE(m.inverse());
    EXPECT_FLOAT_EQ(m.a, 1e9f);
    EXPECT_EQ(m.d, 1.0f);
}

TEST(TransMatrix, RandomMatrixTimesInverseIsTheIdentity) {
    std::mt19937 rng(20240611);
    std::uniform_real_distribution<float> entry(-10.0f, 10.0f);
    int checked = 0;
    for (int round = 0; round < 3000; ++round) {
        ZtTransMatrix m(entry(rng), entry(rng), entry(rng), entry(rng), entry(rng) * 10,
                        entry(rng) * 10);
        if (round % 4 == 1)
            m.a = 0.0f; // the pivot has to come from c
        else if (round % 4 == 2)
            m.a = entry(rng) * 1e-8f; // below FLT_EPSILON
        if (std::fabs(m.getDeterminant()) < 1.0)
            continue; // keep the condition moderate, so float precision bounds the error
        const ZtTransMatrix original = m;
        ASSERT_TRUE(m.inverse()) << round;
        EXPECT_LT(distanceFromIdentity(original, m), 2e-4) << round;
        EXPECT_LT(distanceFromIdentity(m, original), 2e-4) << round;
        ++checked;
    }
    EXPECT_GT(checked, 1500);
}

TEST(TransMatrix, SingularMatricesAreLeftAlone) {
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const ZtTransMatrix singular[] = {
        ZtTransMatrix(1, 2, 2, 4, 5, 6), // parallel columns
        ZtTransMatrix(0, 0, 0, 0, 1, 1), // everything to one point
        ZtTransMatrix(0, 3, 0, 7),       // a = c = 0
        ZtTransMatrix(1, 0, 0, 0),       // a line
        ZtTransMatrix(1e-39f, 0, 0, 1),  // the inverse would overflow float
        ZtTransMatrix(nan, 0, 0, 1),     ZtTransMatrix(1, 0, 0, 1, inf, 0)};
    for (const ZtTransMatrix& original : singular) {
        ZtTransMatrix m = original;
        EXPECT_FALSE(m.inverse());
        EXPECT_TRUE(sameBits(m, original));
    }
}

TEST(TransMatrix, AnglesAndMirrors) {
    EXPECT_EQ(ZtTransMatrix().getAngleX(), 0.0);
    EXPECT_DOUBLE_EQ(ZtTransMatrix().getAngleY(), std::numbers::pi / 2);
    const double turn = std::numbers::pi / 6;
    const ZtTransMatrix rotation(float(std::cos(turn)), float(std::sin(turn)),
                                 float(-std::sin(turn)), float(std::cos(turn)));
    EXPECT_NEAR(rotation.getAngleX(), turn, 1e-6);
    EXPECT_NEAR(rotation.getAngleY(), turn + std::numbers::pi / 2, 1e-6);

    // A half turn and a shear are no mirrors. Flattened onto a line, the y axis pointing back
    // along the x axis is half a turn away ("at least π"); pointing the same way, no turn at all.
    const std::pair<ZtTransMatrix, bool> cases[] = {
        {rotation, false},     {{-1, 0, 0, 1}, true},  {{1, 0, 0, -1}, true},
        {{0, 1, 1, 0}, true},  {{0, 1, -1, 0}, false}, {{-1, 0, 0, -1}, false},
        {{2, 0, 5, 3}, false}, {{1, 0, -1, 0}, true},  {{1, 0, 2, 0}, false}};
    for (const auto& [matrix, mirror] : cases)
        EXPECT_EQ(matrix.isMirror(), mirror) << matrix.a << " " << matrix.b << " " << matrix.c;
    // Random matrices: a mirror exactly when the determinant is negative.
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> entry(-5.0f, 5.0f);
    for (int i = 0; i < 2000; ++i) {
        const ZtTransMatrix m(entry(rng), entry(rng), entry(rng), entry(rng));
        if (std::fabs(m.getDeterminant()) >= 1e-3) {
            EXPECT_EQ(m.isMirror(), m.getDeterminant() < 0) << i;
        }
    }
}
