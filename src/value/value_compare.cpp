// The order of values across types and units (see ZtValue in value.h).
#include <cmath>

#include "ztcommon/value.h"

namespace ZtCommonNS {

namespace {

// Deeper nesting (only possible through arrays or maps that contain themselves) is treated as
// equivalent rather than followed further.
constexpr int kMaxDepth = 64;

int rank(ZtValueType type) {
    switch (type) {
    case ZT_VALUE_NULL:
        return 0;
    case ZT_VALUE_INTEGER:
    case ZT_VALUE_REAL:
        return 1; // integers and reals compare with each other
    default:
        return static_cast<int>(type) - 1;
    }
}

std::weak_ordering compareValues(const ZtValue& a, const ZtValue& b, int depth);

// Every int and every float is exact as a double (a float would round large integers).
double exact(const ZtValue& v) {
    if (v.isInteger())
        return static_cast<double>(v.getIntegerValue());
    return static_cast<double>(v.getRealValue(v.getUnitType()));
}

// Numerically, with NaN after every number and equivalent to NaN.
std::weak_ordering compareNumbers(const ZtValue& a, const ZtValue& b) {
    double x = exact(a);
    double y = exact(b);
    if (std::isnan(x) || std::isnan(y))
        return std::isnan(x) <=> std::isnan(y);
    return x < y   ? std::weak_ordering::less
           : x > y ? std::weak_ordering::greater
                   : std::weak_ordering::equivalent;
}

template <class Range, class Compare>
std::weak_ordering lexicographic(const Range* a, const Range* b, Compare compare) {
    if (!a || !b)
        return (a != nullptr) <=> (b != nullptr);
    auto i = a->begin();
    auto j = b->begin();
    for (; i != a->end() && j != b->end(); ++i, ++j)
        if (auto order = compare(*i, *j); std::is_neq(order))
            return order;
    return (i != a->end()) <=> (j != b->end());
}

std::weak_ordering compareSameRank(const ZtValue& a, const ZtValue& b, int depth) {
    switch (a.getValueType()) {
    case ZT_VALUE_NULL:
        return std::weak_ordering::equivalent;
    case ZT_VALUE_INTEGER:
    case ZT_VALUE_REAL:
        if (a.getUnitType() != b.getUnitType())
            return a.getUnitType() <=> b.getUnitType();
        return compareNumbers(a, b);
    case ZT_VALUE_NAME:
        return a.getNameValue() <=> b.getNameValue();
    case ZT_VALUE_STRING:
        if (a.getUnitType() != b.getUnitType())
            return a.getUnitType() <=> b.getUnitType();
        return a.getStringValue().compare(b.getStringValue()) <=> 0;
    case ZT_VALUE_OBJECT:
        return std::compare_three_way()(a.getObjectValue(), b.getObjectValue());
    case ZT_VALUE_ARRAY:
        return lexicographic(
            a.getValueArray(), b.getValueArray(),
            [depth](const ZtValue& x, const ZtValue& y) { return compareValues(x, y, depth + 1); });
    case ZT_VALUE_COMPOUND:
        return lexicographic(a.getNamedValueMap(), b.getNamedValueMap(),
                             [depth](const ZtNamedValue& x, const ZtNamedValue& y) {
                                 if (x.getName() != y.getName())
                                     return std::weak_ordering(x.getName() <=> y.getName());
                                 return compareValues(x.getValue(), y.getValue(), depth + 1);
                             });
    }
    return std::weak_ordering::equivalent;
}

std::weak_ordering compareValues(const ZtValue& a, const ZtValue& b, int depth) {
    if (depth > kMaxDepth)
        return std::weak_ordering::equivalent;
    if (int ra = rank(a.getValueType()), rb = rank(b.getValueType()); ra != rb)
        return ra <=> rb;
    if (auto order = compareSameRank(a, b, depth); std::is_neq(order))
        return order;
    return a.getQualifier() <=> b.getQualifier();
}

} // namespace

std::weak_ordering operator<=>(const ZtValue& a, const ZtValue& b) {
    return compareValues(a, b, 0);
}

} // namespace ZtCommonNS
