// ZtValue: constructors, the exact unit sets of the predicates, accessors, rounding and
// clamping, ownership on copy, move and type changes.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <set>

#include "value_test_util.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

namespace {
class Probe : public ZtRCObject {
    ZT_DECLARE_TYPE(Probe, ZtRCObject, 0x7E570101u)
};
} // namespace

TEST(Value, PredicatesForEveryUnitCode) {
    // The relative lengths, written out by hand.
    const std::set<int> relative = {3,  4,  5,  32, 33, 34, 35, 36, 37, 38,
                                    39, 40, 41, 42, 43, 44, 45, 46, 47};
    for (int code = 0; code < 64; ++code) {
        auto unit = static_cast<ZtUnitType>(code);
        for (const ZtValue& v : {ZtValue(7, unit), ZtValue(7.0f, unit)}) {
            SCOPED_TRACE(::testing::Message()
                         << "unit " << code << (v.isReal() ? " real" : " int"));
            EXPECT_EQ(v.getUnitType(), code);
            EXPECT_EQ(v.isAbsoluteLength(), kAbsoluteUnits.count(code) == 1);
            EXPECT_EQ(v.isRelativeLength(), relative.count(code) == 1);
            EXPECT_EQ(v.isAngle(), code >= 13 && code <= 15);
            EXPECT_EQ(v.isNumber(), code == 1);
            EXPECT_EQ(v.isUnitNumber(), code != 1);
            EXPECT_EQ(v.isPercentage(), code == 2);
            EXPECT_EQ(v.isNumberOrPercentage(), code == 1 || code == 2);
            EXPECT_EQ(v.isCharacter(), code == 20 && v.isInteger());
            EXPECT_EQ(v.isNumericalValue(), code != 20);
            EXPECT_FALSE(v.isString() || v.isName() || v.isNull() || v.isEmpty());
        }
    }
    // No unit makes a non-numeric value a length, angle or number.
    for (const ZtValue& v : {ZtValue(), ZtValue(NM_pt), ZtValue(u"12pt", ZT_UNIT_PT)}) {
        EXPECT_FALSE(v.isAbsoluteLength() || v.isRelativeLength() || v.isAngle());
        EXPECT_FALSE(v.isNumber() || v.isUnitNumber() || v.isNumericalValue());
    }
}

TEST(Value, ConstructorsNamesAndStrings) {
    // A length is a real in points (the text forms show its number); auto is NaN.
    EXPECT_TRUE(ZtValue(ZtLength(1, ZT_UNIT_IN)).isReal());
    EXPECT_TRUE(std::isnan(ZtValue(ZtLength()).getRealValue(ZT_UNIT_PT)));
    // Booleans are the names "true" (1517) and "false" (588); only names are true or false.
    EXPECT_EQ(ZtValue(true), ZtValue(static_cast<ZtNameEnum>(1517)));
    EXPECT_EQ(ZtValue(false), ZtValue(static_cast<ZtNameEnum>(588)));
    for (const ZtValue& yes : {ZtValue(true), ZtValue(NM_yes)})
        EXPECT_TRUE(yes.isTrue() && !yes.isFalse());
    for (const ZtValue& no : {ZtValue(false), ZtValue(ZtName(u"no"))})
        EXPECT_TRUE(no.isFalse() && !no.isTrue());
    for (const ZtValue& neither : {ZtValue(NM_auto), ZtValue(1), ZtValue(u"true")})
        EXPECT_FALSE(neither.isTrue() || neither.isFalse());
    EXPECT_TRUE(ZtValue(u"x").isUnknownString() && !ZtValue(u"x").isLiteralString());
    EXPECT_TRUE(ZtValue(UnicodeString(u"a.png"), ZT_UNIT_URI).isUriString());
    for (const ZtValue& v : {ZtValue(static_cast<ZtValueArray*>(nullptr)),
                             ZtValue(static_cast<ZtNamedValueMap*>(nullptr)),
                             ZtValue(static_cast<ZtRCObject*>(nullptr))})
        EXPECT_TRUE(v.isNull());
    // Empty: null, the empty string and the empty name; never a number or a container.
    for (const ZtValue& v : {ZtValue(), ZtValue(UnicodeString()), ZtValue(ZtName())})
        EXPECT_TRUE(v.isEmpty());
    for (const ZtValue& v :
         {ZtValue(u" "), ZtValue(0), ZtValue(NM_none), ZtValue(new ZtValueArray)})
        EXPECT_FALSE(v.isEmpty());
    for (const ZtValue& v : {ZtValue(0), ZtValue(0.0f), ZtValue(-0.0f)})
        EXPECT_TRUE(v.isNumberZero());
    for (const ZtValue& v : {ZtValue(0, ZT_UNIT_PT), ZtValue(1e-30f), ZtValue(NM_EMPTY_NAME)})
        EXPECT_FALSE(v.isNumberZero());

    EXPECT_EQ(utf8(ZtValue(NM_font_size).getStringValue()), "font-size");
    EXPECT_EQ(utf8(ZtValue(u"Hello").getStringValue()), "Hello");
    EXPECT_TRUE(ZtValue(12).getStringValue().isEmpty());
    EXPECT_TRUE(ZtValue(u"Hello").getNameValue().isEmpty());
    EXPECT_EQ(ZtValue(ZtName(u"fontSize")).getLowerNameValue(), ZtName(u"fontsize"));
    EXPECT_EQ(ZtName(ZtValue(NM_bold)), NM_bold);
    EXPECT_EQ(ZtName(ZtValue(u"bold")), NM_bold);
    EXPECT_EQ(ZtName(ZtValue(12, ZT_UNIT_PT)), ZtName(u"12pt"));
    EXPECT_TRUE(ZtName(ZtValue()).isEmpty());
}

TEST(Value, IntegerValueRoundsAndClamps) {
    for (const auto& row : readRows("rounding.tsv", 3, "value")) {
        EXPECT_EQ(ZtValue(toFloat(row[1])).getIntegerValue(), std::stoi(row[2])) << row[1];
        EXPECT_EQ(ZtValue(toFloat(row[1]), ZT_UNIT_PT).getIntegerValue(), std::stoi(row[2]));
    }
    EXPECT_EQ(ZtValue(INT_MIN).getIntegerValue(), INT_MIN);
    EXPECT_EQ(ZtValue(-7, ZT_UNIT_EM).getIntegerValue(), -7);
    for (const ZtValue& other : {ZtValue(NM_auto), ZtValue(u"12"), ZtValue()})
        EXPECT_EQ(other.getIntegerValue(), 0);
}

TEST(Value, RealValueConvertsBetweenLengthsAndBetweenAngles) {
    EXPECT_EQ(ZtValue(1, ZT_UNIT_IN).getRealValue(ZT_UNIT_PT), 72.0f);
    EXPECT_EQ(ZtValue(72.0f, ZT_UNIT_PT).getRealValue(ZT_UNIT_IN), 1.0f);
    EXPECT_NEAR(ZtValue(1, ZT_UNIT_CM).getRealValue(ZT_UNIT_MM), 10.0f, 1e-5f);
    EXPECT_EQ(ZtValue(3, ZT_UNIT_PC).getRealValue(ZT_UNIT_PC2), 3.0f);
    EXPECT_NEAR(ZtValue(180, ZT_UNIT_DEG).getRealValue(ZT_UNIT_RAD), 3.14159265f, 1e-6f);
    EXPECT_NEAR(ZtValue(100, ZT_UNIT_GRAD).getRealValue(ZT_UNIT_DEG), 90.0f, 1e-5f);
    EXPECT_EQ(ZtValue(1.5f, ZT_UNIT_EM).getRealValue(ZT_UNIT_EM), 1.5f);
    EXPECT_EQ(ZtValue(65, ZT_UNIT_CHARACTER).getRealValue(ZT_UNIT_CHARACTER), 65.0f);
    // Between unrelated kinds there is no conversion.
    EXPECT_TRUE(std::isnan(ZtValue(5).getRealValue(ZT_UNIT_PT)));
    EXPECT_TRUE(std::isnan(ZtValue(5, ZT_UNIT_EM).getRealValue(ZT_UNIT_PT)));
    EXPECT_TRUE(std::isnan(ZtValue(5, ZT_UNIT_PT).getRealValue(ZT_UNIT_DEG)));
    EXPECT_TRUE(std::isnan(ZtValue(5, ZT_UNIT_DEG).getRealValue(ZT_UNIT_PERCENT)));
    EXPECT_TRUE(std::isnan(ZtValue(NM_auto).getRealValue(ZT_UNIT_NAME)));
    EXPECT_TRUE(std::isnan(ZtValue(u"5").getRealValue(ZT_UNIT_UNKNOWN)));
}

// Strings are copied with the value; arrays, maps and objects are shared.
TEST(Value, StringCopiesAreIndependentAndContainersShared) {
    auto* source = new ZtValue(u"shared?", ZT_UNIT_LITERAL);
    ZtValue copy(*source);
    ZtValue assigned;
    assigned = *source;
    EXPECT_NE(&copy.getStringValue(), &source->getStringValue());
    copy.setValueType(ZT_VALUE_INTEGER); // drops the copy's text only
    EXPECT_EQ(utf8(source->getStringValue()), "shared?");
    delete source; // the copies must not refer to its text
    EXPECT_EQ(utf8(assigned.getStringValue()), "shared?");
    EXPECT_TRUE(assigned.isLiteralString());

    ZtPtr<ZtValueArray> array(new ZtValueArray);
    ZtValue a(array.get());
    ZtValue b(a);
    b.getValueArray()->append(ZtValue(1));
    EXPECT_EQ(a.getValueArray()->getCount(), 1);
    ZtValue c;
    c = a;
    const ZtValue& same = c;
    c = same; // self-assignment changes nothing
    EXPECT_EQ(array->getRefCount(), 4);
    ZtValue moved(std::move(c));
    EXPECT_TRUE(c.isNull()); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(array->getRefCount(), 4);
    moved.clear();
    b = ZtValue(3);
    EXPECT_EQ(array->getRefCount(), 2);

    ZtPtr<Probe> probe(new Probe);
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    {
        const ZtValue object(probe.get());
        const ZtValue compound(map.get());
        const ZtValue objectCopy = object; // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_TRUE(objectCopy.isObject() && compound.isCompound() && !compound.isArray());
        EXPECT_EQ(objectCopy.getObjectValue(), probe.get());
        EXPECT_EQ(objectCopy.getValueArray(), nullptr);
        EXPECT_EQ(compound.getNamedValueMap(), map.get());
        EXPECT_EQ(compound.getObjectValue(), nullptr);
        EXPECT_EQ(probe->getRefCount(), 3);
        EXPECT_EQ(map->getRefCount(), 2);
    }
    EXPECT_EQ(probe->getRefCount(), 1);
    EXPECT_EQ(map->getRefCount(), 1);

    // Assigning a value from inside the array that the target alone keeps alive.
    ZtValue holder(new ZtValueArray{ZtValue(u"inner"), ZtValue(2)});
    holder = holder.getValueArray()->get(0);
    EXPECT_EQ(utf8(holder.getStringValue()), "inner");
}

TEST(Value, TypeChangesNeverTakeNumbersForPointers) {
    ZtValue number(42);
    number.setValueType(ZT_VALUE_STRING);
    EXPECT_TRUE(number.isString() && number.isEmpty());
    EXPECT_TRUE(ZtValue(number).isEmpty());
    number.setValueType(ZT_VALUE_ARRAY);
    EXPECT_FALSE(number.isArray());
    EXPECT_EQ(number.getValueArray(), nullptr);
    number.setValueUnitType(ZT_VALUE_COMPOUND);
    EXPECT_FALSE(number.isCompound());
    EXPECT_EQ(number.toString(), UnicodeString());

    ZtPtr<ZtValueArray> array(new ZtValueArray);
    ZtValue holder(array.get());
    holder.setValueType(ZT_VALUE_INTEGER); // releases the array
    EXPECT_EQ(array->getRefCount(), 1);
    EXPECT_EQ(holder.getIntegerValue(), 0);

    // Between plain types the payload bits stay; the unit and qualifier fields are separate.
    ZtValue real(1.0f, ZT_UNIT_PT);
    real.setValueType(ZT_VALUE_INTEGER);
    EXPECT_EQ(real.getIntegerValue(), 0x3F800000);
    real.setUnitType(static_cast<ZtUnitType>(64 + 7)); // six bits only
    real.setQualifier(NM_font_size);
    EXPECT_EQ(real.getQualifier(), NM_font_size);
    EXPECT_EQ(real.getUnitType(), ZT_UNIT_MM);
    EXPECT_EQ(real.getValueType(), ZT_VALUE_INTEGER);
    real.setValueUnitType(ZT_VALUE_REAL, ZT_UNIT_CM); // clears the qualifier
    EXPECT_EQ(real.getQualifier(), NM_EMPTY_NAME);
    EXPECT_EQ(real.getRealValue(ZT_UNIT_CM), 1.0f);
    real.clear();
    EXPECT_TRUE(real.isNull());
    EXPECT_EQ(real.getUnitType(), ZT_UNIT_UNKNOWN);
}

TEST(IntAndBool, UndefinedStatesAndWrapAround) {
    EXPECT_EQ(int(ZtInt()), INT_MIN);
    ZtInt n(7);
    n += 5;
    n -= 2;
    n *= 3;
    n /= 4;
    EXPECT_EQ(int(n), 7); // ((7 + 5 - 2) * 3) / 4
    EXPECT_EQ(int(n++), 7);
    EXPECT_EQ(int(--n), 7);
    // 32-bit wrap-around: one past the largest number is the undefined value.
    EXPECT_TRUE((ZtInt(INT_MAX) + 1).isUndef());
    EXPECT_EQ(int(-ZtInt(INT_MIN)), INT_MIN);

    ZtBool undefined;
    EXPECT_TRUE(undefined.isTrue(true) && !undefined.isTrue(false));
    EXPECT_TRUE(ZtBool(true).isTrue(false));
    EXPECT_FALSE(undefined == false || undefined == ZtBool(false));
    EXPECT_FALSE(ZtBool(true) == ZtBool(false));
    ZtBool yes(true);
    yes.setUndef();
    EXPECT_TRUE(yes == undefined);
}
