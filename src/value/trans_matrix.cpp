// ZtTransMatrix: products, images of points, the inverse and the angles of the axes.
#include <cfloat>
#include <cmath>
#include <numbers>

#include "ztcommon/writing_mode.h"

namespace ZtCommonNS {

ZtTransMatrix ZtTransMatrix::operator*(const ZtTransMatrix& m) const noexcept {
    return ZtTransMatrix(a * m.a + b * m.c, a * m.b + b * m.d, c * m.a + d * m.c, c * m.b + d * m.d,
                         e * m.a + f * m.c + m.e, e * m.b + f * m.d + m.f);
}

ZtPointF ZtTransMatrix::translate(float x, float y) const noexcept {
    return {a * x + c * y + e, b * x + d * y + f};
}

ZtPointD ZtTransMatrix::translateD(double x, double y) const noexcept {
    return {double(a) * x + double(c) * y + double(e), double(b) * x + double(d) * y + double(f)};
}

ZtPointL ZtTransMatrix::translate(ZtLength x, ZtLength y) const noexcept {
    const ZtPointF p = translate(float(x), float(y));
    return {ZtLength(p.x), ZtLength(p.y)};
}

double ZtTransMatrix::getDeterminant() const noexcept {
    return double(a) * double(d) - double(b) * double(c);
}

namespace {

// The six numbers in double, for the elimination.
struct Affine {
    double a, b, c, d, e, f;
};

// Solves X = a·x + c·y + e, Y = b·x + d·y + f for (x, y) by eliminating x from the second
// equation with the pivot a. False when the system has no unique solution.
bool eliminate(const Affine& m, Affine& inv) {
    if (m.a == 0.0)
        return false; // with c also 0 (see inverse): the first row vanishes
    const double r = m.b / m.a;
    const double p = m.d - r * m.c; // the second pivot; the determinant is a·p
    if (p == 0.0 || !std::isfinite(p))
        return false;
    inv.b = -r / p;
    inv.d = 1.0 / p;
    inv.f = (r * m.e - m.f) / p;
    inv.a = (1.0 - m.c * inv.b) / m.a;
    inv.c = -m.c * inv.d / m.a;
    inv.e = -(m.e + m.c * inv.f) / m.a;
    return true;
}

bool allFinite(const Affine& m) {
    return std::isfinite(m.a) && std::isfinite(m.b) && std::isfinite(m.c) && std::isfinite(m.d) &&
           std::isfinite(m.e) && std::isfinite(m.f);
}

} // namespace

bool ZtTransMatrix::inverse() noexcept {
    Affine m{a, b, c, d, e, f};
    if (!allFinite(m))
        return false;
    // A tiny pivot would blow up the elimination. Applying the quarter turn (0, 1, -1, 0, 0, 0)
    // first exchanges the roles of x and y: the new a is c. It is only worth it when c is the
    // larger of the two. The turn and its undoing are exact (products by 0, 1 and -1).
    const bool turn = !(std::fabs(m.a) > double(FLT_EPSILON)) && std::fabs(m.c) > std::fabs(m.a);
    if (turn)
        m = {m.c, m.d, -m.a, -m.b, m.e, m.f};
    Affine inv{};
    if (!eliminate(m, inv))
        return false;
    if (turn) // the inverse of (turn, then M) is M⁻¹ then the turn back: append the turn
        inv = {-inv.b, inv.a, -inv.d, inv.c, -inv.f, inv.e};
    const Affine rounded{float(inv.a), float(inv.b), float(inv.c),
                         float(inv.d), float(inv.e), float(inv.f)};
    if (!allFinite(rounded))
        return false;
    *this = ZtTransMatrix(float(rounded.a), float(rounded.b), float(rounded.c), float(rounded.d),
                          float(rounded.e), float(rounded.f));
    return true;
}

double ZtTransMatrix::getAngleX() const noexcept {
    return std::atan2(double(b), double(a));
}
double ZtTransMatrix::getAngleY() const noexcept {
    return std::atan2(double(d), double(c));
}

bool ZtTransMatrix::isMirror() const noexcept {
    constexpr double kFullTurn = 2.0 * std::numbers::pi;
    double between = getAngleY() - getAngleX(); // in [-2π, 2π]
    if (between < 0.0)
        between += kFullTurn;
    if (between >= kFullTurn)
        between -= kFullTurn;
    return between >= std::numbers::pi;
}

} // namespace ZtCommonNS
