// Writing modes, reference orientations, points and 2-D affine transforms: what layout code needs
// to map the abstract directions of formatting objects (before, after, start, end) onto the page.
#pragma once

#include <cstdint>

#include "ztcommon/value.h"

namespace ZtCommonNS {

// A reference orientation: 0, 90, 180 or 270 degrees (counter-clockwise, as in XSL).
class ZT_EXPORT ZtOrientation {
public:
    constexpr ZtOrientation() noexcept = default;
    // Rounds to the nearest quarter turn (halves away from zero) and reduces it to 0..270:
    // 44 gives 0, 45 gives 90, -45 gives 270, -90 gives 270, 360 gives 0.
    constexpr ZtOrientation(int degrees) noexcept : degrees_(normalize(degrees)) {}
    // From the value's getIntegerValue().
    explicit ZtOrientation(const ZtValue& value) noexcept
        : ZtOrientation(value.getIntegerValue()) {}

    constexpr int getDegrees() const noexcept { return degrees_; }
    constexpr bool isPerpendicular() const noexcept { return degrees_ == 90 || degrees_ == 270; }
    // The degrees as an integer value.
    operator ZtValue() const noexcept { return ZtValue(degrees_); }

    friend constexpr bool operator==(ZtOrientation a, ZtOrientation b) noexcept {
        return a.degrees_ == b.degrees_;
    }

private:
    static constexpr int normalize(int degrees) noexcept {
        // In 64 bits, so that the extremes of int round like everything else.
        const std::int64_t shifted =
            degrees < 0 ? std::int64_t(degrees) - 45 : std::int64_t(degrees) + 45;
        return static_cast<int>((shifted / 90) & 3) * 90;
    }

    int degrees_ = 0;
};

// A writing mode as one code from 0 to 7 whose bits carry meaning:
//   bit 0  the inline progression runs right-to-left or bottom-to-top,
//   bit 1  vertical text,
//   bit 2  the block progression runs bottom-to-top or left-to-right.
//
//   code  keyword  inline         block          shift          paging
//   0     lr-tb    left-to-right  top-to-bottom  bottom-to-top  left-to-right
//   1     rl-tb    right-to-left  top-to-bottom  bottom-to-top  right-to-left
//   2     tb-rl    top-to-bottom  right-to-left  left-to-right  right-to-left
//   3     bt-rl    bottom-to-top  right-to-left  left-to-right  right-to-left
//   4     lr-bt    left-to-right  bottom-to-top  bottom-to-top  left-to-right
//   5     rl-bt    right-to-left  bottom-to-top  bottom-to-top  right-to-left
//   6     tb-lr    top-to-bottom  left-to-right  right-to-left  left-to-right
//   7     bt-lr    bottom-to-top  left-to-right  right-to-left  left-to-right
//
// From one keyword: the eight keywords above give their codes, "rl" gives 1 and "tb" gives 2;
// every other name gives 0 ("lr" among them: the asymmetry is deliberate, "lr" and "lr-tb" are
// simply the default).
//
// From a writing-mode keyword and a direction keyword (the XSL writing-mode and direction
// properties, or CSS writing-mode and direction), the first name decides the block progression
// and the axis of the inline progression, the second the sense of the inline progression:
//   first name                                          block  inline when the direction is
//                                                               ltr            rtl
//   lr-tb, lr, rl-tb, rl, horizontal-tb, top-to-bottom,   tb    left-to-right  right-to-left
//     lr-alternating-rl-tb, lr-inverting-rl-tb
//   lr-bt, rl-bt, bottom-to-top,                          bt    left-to-right  right-to-left
//     lr-alternating-rl-bt, lr-inverting-rl-bt
//   tb-rl, tb, bt-rl, vertical-rl, sideways-rl,           rl    top-to-bottom  bottom-to-top
//     right-to-left
//   tb-lr, bt-lr, vertical-lr, tb-lr-in-lr-pairs,         lr    top-to-bottom  bottom-to-top
//     left-to-right
//   sideways-lr                                           lr    bottom-to-top  top-to-bottom
// A block-progression keyword (top-to-bottom, ...) stands for the horizontal or vertical mode
// with that block progression. "sideways-lr" sets text turned counter-clockwise, so its "ltr"
// runs upwards, as in CSS. The direction may also be an inline-progression keyword along the
// mode's inline axis ("left-to-right" or "right-to-left" for horizontal modes, "top-to-bottom"
// or "bottom-to-top" for vertical ones). Any other direction (empty, "inherit", a keyword of the
// other axis) keeps the inline progression the first name spells (so "bt-rl" alone stays 3 and
// "rl-tb" stays 1). A first name not listed gives 0 whatever the direction.
class ZT_EXPORT ZtWritingMode {
public:
    enum Code : int {
        LR_TB = 0,
        RL_TB = 1,
        TB_RL = 2,
        BT_RL = 3,
        LR_BT = 4,
        RL_BT = 5,
        TB_LR = 6,
        BT_LR = 7,
    };

    // lr-tb.
    constexpr ZtWritingMode() noexcept = default;
    explicit ZtWritingMode(ZtNameEnum keyword) noexcept;
    explicit ZtWritingMode(ZtName keyword) noexcept : ZtWritingMode(keyword.getNameEnum()) {}
    // A writing-mode keyword combined with a direction keyword, see above.
    ZtWritingMode(ZtName mode, ZtName direction);
    // The keyword of a name value; lr-tb for any other value.
    explicit ZtWritingMode(const ZtValue& value) noexcept;
    // The mode of a code; only its three low bits count.
    static constexpr ZtWritingMode fromCode(int code) noexcept {
        ZtWritingMode mode;
        mode.code_ = code & 7;
        return mode;
    }

    constexpr int getCode() const noexcept { return code_; }
    // The keyword of the code (first column of the table).
    ZtName getName() const noexcept;
    operator ZtNameEnum() const noexcept { return getName().getNameEnum(); }
    // The name value of getName().
    operator ZtValue() const noexcept { return ZtValue(getName()); }

    // The columns of the table, as the names "left-to-right", "right-to-left", "top-to-bottom"
    // and "bottom-to-top".
    ZtName getIPDirection() const noexcept;
    ZtName getBPDirection() const noexcept;
    ZtName getShiftDirection() const noexcept;
    ZtName getPagingDirection() const noexcept;
    // "rtl" when the inline progression is reversed (bit 0), else "ltr".
    ZtName getDirectionName() const noexcept;
    // "tb", "rl", "bt" or "lr": the block progression in short.
    ZtName getBlockProgressionName() const noexcept;

    constexpr bool isLTR() const noexcept { return code_ == LR_TB || code_ == LR_BT; }
    constexpr bool isRTL() const noexcept { return code_ == RL_TB || code_ == RL_BT; }
    constexpr bool isTTB() const noexcept { return code_ == TB_RL || code_ == TB_LR; }
    constexpr bool isBTT() const noexcept { return code_ == BT_RL || code_ == BT_LR; }
    constexpr bool isRtlOrBtt() const noexcept { return (code_ & 1) != 0; }
    constexpr bool isVerticalText() const noexcept { return (code_ & 2) != 0; }
    constexpr bool isBPDirLtrOrBtt() const noexcept { return (code_ & 4) != 0; }
    // The block progression runs right-to-left or bottom-to-top.
    constexpr bool isBPDirRtlOrBtt() const noexcept {
        return ((code_ >> 2) & 1) != ((code_ >> 1) & 1);
    }

    // Page sides: with a right-to-left paging direction (codes 1, 2, 3, 5) the first page, an
    // odd one, lies on the left; otherwise on the right. Names other than "left" and "right"
    // (or "odd" and "even") come back unchanged.
    ZtName leftRight2oddEven(ZtName side) const noexcept;
    ZtName oddEven2leftRight(ZtName side) const noexcept;

    // Abstract edges to absolute ones: "before", "after", "start" and "end" become "top",
    // "bottom", "left" or "right" (before is where the block progression begins, start where
    // the inline progression begins). Other names come back unchanged.
    ZtName relative2absolute(ZtName side) const noexcept;
    // The inverse: "top", "bottom", "left" and "right" to "before", "after", "start" or "end".
    ZtName absolute2relative(ZtName side) const noexcept;

    // Whether `other`, in a reference area turned by `orientation`, has its lines across ours:
    // for a quarter turn when both are vertical or both horizontal, for 0 or 180 degrees when
    // exactly one of them is vertical.
    bool isPerpendicularTo(ZtWritingMode other, ZtOrientation orientation) const noexcept;

    friend constexpr bool operator==(ZtWritingMode a, ZtWritingMode b) noexcept {
        return a.code_ == b.code_;
    }

private:
    int code_ = LR_TB;
};

// A point of two coordinates: float, double or ZtLength (for which the default is auto).
template <typename T> struct ZtPointT {
    T x{};
    T y{};

    constexpr ZtPointT() = default;
    constexpr ZtPointT(T px, T py) : x(px), y(py) {}

    // Coordinates compared as numbers (so a point holding NaN or auto equals nothing).
    friend constexpr bool operator==(const ZtPointT& p, const ZtPointT& q) {
        return static_cast<double>(p.x) == static_cast<double>(q.x) &&
               static_cast<double>(p.y) == static_cast<double>(q.y);
    }
};

using ZtPointF = ZtPointT<float>;
using ZtPointD = ZtPointT<double>;
using ZtPointL = ZtPointT<ZtLength>;

// A 2-D affine transform of six floats: (x, y) maps to (a·x + c·y + e, b·x + d·y + f). Products
// read in the order of application: m1 * m2 applies m1 first, then m2.
class ZT_EXPORT ZtTransMatrix {
public:
    float a = 1.0f;
    float b = 0.0f;
    float c = 0.0f;
    float d = 1.0f;
    float e = 0.0f;
    float f = 0.0f;

    // The identity.
    constexpr ZtTransMatrix() noexcept = default;
    constexpr ZtTransMatrix(float ma, float mb, float mc, float md) noexcept
        : a(ma), b(mb), c(mc), d(md) {}
    constexpr ZtTransMatrix(float ma, float mb, float mc, float md, float me, float mf) noexcept
        : a(ma), b(mb), c(mc), d(md), e(me), f(mf) {}

    // The identity.
    void init() noexcept { *this = ZtTransMatrix(); }
    // All six numbers 0.
    void zero() noexcept { *this = ZtTransMatrix(0, 0, 0, 0, 0, 0); }

    // This transform first, then `m`.
    ZtTransMatrix operator*(const ZtTransMatrix& m) const noexcept;
    // This becomes `m` first, then this.
    ZtTransMatrix& mulLeft(const ZtTransMatrix& m) noexcept { return *this = m * *this; }
    // This becomes this first, then `m`.
    ZtTransMatrix& mulRight(const ZtTransMatrix& m) noexcept { return *this = *this * m; }

    // The image of a point, in float arithmetic (translateD computes in double).
    ZtPointF translate(float x, float y) const noexcept;
    ZtPointF translate(const ZtPointF& p) const noexcept { return translate(p.x, p.y); }
    ZtPointD translateD(double x, double y) const noexcept;
    ZtPointL translate(ZtLength x, ZtLength y) const noexcept;
    ZtPointL translate(const ZtPointL& p) const noexcept { return translate(p.x, p.y); }

    // Replaces the matrix by its inverse and returns true. The elimination runs in double and
    // pivots on a; when |a| is not above FLT_EPSILON (and |c| is larger), the matrix is first
    // multiplied on the left by the quarter turn (0, 1, -1, 0, 0, 0), which makes c the pivot,
    // and the turn is undone afterwards, so the result is still the inverse of the matrix as it
    // was. A singular matrix (its linear part has no inverse, or the inverse overflows float)
    // or one holding NaN or infinity is left unchanged and gives false.
    bool inverse() noexcept;
    bool reverse() noexcept { return inverse(); }
    // a·d − b·c, in double.
    double getDeterminant() const noexcept;

    // The directions of the images of the x and y axes, in radians: atan2(b, a), atan2(d, c).
    double getAngleX() const noexcept;
    double getAngleY() const noexcept;
    // The transform flips orientation: the angle from the image of the x axis to that of the
    // y axis, taken in [0, 2π), is at least π.
    bool isMirror() const noexcept;
    // Exactly the identity.
    bool isUnitMatrix() const noexcept { return *this == ZtTransMatrix(); }

    // All six floats equal (as floats: -0 equals 0, NaN equals nothing).
    friend bool operator==(const ZtTransMatrix& m, const ZtTransMatrix& n) noexcept {
        return m.a == n.a && m.b == n.b && m.c == n.c && m.d == n.d && m.e == n.e && m.f == n.f;
    }
};

} // namespace ZtCommonNS
