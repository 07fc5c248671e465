// ZtValue: constructors, the exact unit sets of the predicates, accessors, rounding and
// clamping, ownership on copy, move and type changes.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <set>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

// The unit sets, written out by hand.
const std::set<int> kAbsolute = {6, 7, 8, 9, 10, 11, 12, 26, 27, 29, 50, 51};
const std::set<int> kRelative = {3,  4,  5,  32, 33, 34, 35, 36, 37, 38,
                                 39, 40, 41, 42, 43, 44, 45, 46, 47};
const std::set<int> kAngle = {13, 14, 15};

class Probe : public ZtRCObject {
    ZT_DECLARE_TYPE(Probe, ZtRCObject, 0x7E570101u)
};

} // namespace

TEST(Value, IsSixteenBytes) {
    EXPECT_EQ(sizeof(ZtValue), 16u);
}

TEST(Value, PredicatesForEveryUnitCode) {
    for (int code = 0; code < 64; ++code) {
        auto unit = static_cast<ZtUnitType>(code);
        for (const ZtValue& v : {ZtValue(7, unit), ZtValue(7.0f, unit)}) {
            SCOPED_TRACE(::testing::Message()
                         << "unit " << code << (v.isReal() ? " real" : " int"));
            EXPECT_TRUE(v.isNumeric());
            EXPECT_EQ(v.getUnitType(), code);
            EXPECT_EQ(v.isAbsoluteLength(), kAbsolute.count(code) == 1);
            EXPECT_EQ(v.isRelativeLength(), kRelative.count(code) == 1);
            EXPECT_EQ(v.isAngle(), kAngle.count(code) == 1);
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

TEST(Value, Constructors) {
    ZtValue none;
    EXPECT_TRUE(none.isNull());
    EXPECT_EQ(none.getValueType(), ZT_VALUE_NULL);
    EXPECT_EQ(ZtValue(5).getUnitType(), ZT_UNIT_NUMBER);
    EXPECT_TRUE(ZtValue(5).isNumber());
    EXPECT_FALSE(ZtValue(5).isPercentage());
    EXPECT_TRUE(ZtValue(50, ZT_UNIT_PERCENT).isPercentage());
    EXPECT_EQ(ZtValue(2.5).getRealValue(ZT_UNIT_NUMBER), 2.5f); // double narrowed
    EXPECT_TRUE(ZtValue(2.5).isReal());

    ZtValue length{ZtLength(1, ZT_UNIT_IN)};
    EXPECT_TRUE(length.isReal());
    EXPECT_EQ(length.getUnitType(), ZT_UNIT_PT);
    EXPECT_EQ(length.getRealValue(ZT_UNIT_PT), 72.0f);
    EXPECT_TRUE(std::isnan(ZtValue(ZtLength()).getRealValue(ZT_UNIT_PT)));

    ZtValue yes(true);
    EXPECT_TRUE(yes.isName());
    EXPECT_EQ(yes.getUnitType(), ZT_UNIT_NAME);
    EXPECT_EQ(yes.getNameValue(), NM_true);
    EXPECT_EQ(yes.getNameValue().getNameEnum(), 1517);
    EXPECT_TRUE(yes.isTrue());
    EXPECT_FALSE(yes.isFalse());
    EXPECT_EQ(ZtValue(false).getNameValue().getNameEnum(), 588);
    EXPECT_TRUE(ZtValue(false).isFalse());
    EXPECT_TRUE(ZtValue(NM_yes).isTrue());
    EXPECT_TRUE(ZtValue(ZtName(u"no")).isFalse());
    EXPECT_FALSE(ZtValue(NM_auto).isTrue() || ZtValue(NM_auto).isFalse());
    EXPECT_FALSE(ZtValue(1).isTrue()); // only names are true or false
    EXPECT_TRUE(ZtValue::isTrue(NM_yes));
    EXPECT_FALSE(ZtValue::isTrue(NM_no));

    EXPECT_TRUE(ZtValue(u"x").isUnknownString());
    EXPECT_TRUE(ZtValue(u"x", ZT_UNIT_LITERAL).isLiteralString());
    EXPECT_TRUE(ZtValue(UnicodeString(u"a.png"), ZT_UNIT_URI).isUriString());
    EXPECT_FALSE(ZtValue(u"x").isLiteralString());

    EXPECT_TRUE(ZtValue(static_cast<ZtValueArray*>(nullptr)).isNull());
    EXPECT_TRUE(ZtValue(static_cast<ZtNamedValueMap*>(nullptr)).isNull());
    EXPECT_TRUE(ZtValue(static_cast<ZtRCObject*>(nullptr)).isNull());
    EXPECT_TRUE(ZtValue(nullptr).isNull());
}

TEST(Value, Emptiness) {
    EXPECT_TRUE(ZtValue().isEmpty());
    EXPECT_TRUE(ZtValue(UnicodeString(u""), ZT_UNIT_UNKNOWN).isEmpty());
    EXPECT_TRUE(ZtValue(ZtName()).isEmpty());
    EXPECT_FALSE(ZtValue(u" ").isEmpty());
    EXPECT_FALSE(ZtValue(0).isEmpty());
    EXPECT_FALSE(ZtValue(NM_none).isEmpty());
    ZtPtr<ZtValueArray> array(new ZtValueArray);
    EXPECT_FALSE(ZtValue(array.get()).isEmpty()); // an empty array is still a value
}

TEST(Value, IntegerValueRoundsAndClamps) {
    EXPECT_EQ(ZtValue(2.5f, ZT_UNIT_NUMBER).getIntegerValue(), 3);
    EXPECT_EQ(ZtValue(-2.5f, ZT_UNIT_NUMBER).getIntegerValue(), -2);
    EXPECT_EQ(ZtValue(-2.51f, ZT_UNIT_NUMBER).getIntegerValue(), -3);
    EXPECT_EQ(ZtValue(-0.5f, ZT_UNIT_NUMBER).getIntegerValue(), 0);
    EXPECT_EQ(ZtValue(0.49999997f, ZT_UNIT_NUMBER).getIntegerValue(), 0); // no float rounding up
    EXPECT_EQ(ZtValue(3.0e10f, ZT_UNIT_NUMBER).getIntegerValue(), INT_MAX);
    EXPECT_EQ(ZtValue(-3.0e10f, ZT_UNIT_NUMBER).getIntegerValue(), INT_MIN);
    EXPECT_EQ(ZtValue(2147483648.0f, ZT_UNIT_NUMBER).getIntegerValue(), INT_MAX);
    EXPECT_EQ(ZtValue(2147483520.0f, ZT_UNIT_NUMBER).getIntegerValue(), 2147483520);
    EXPECT_EQ(ZtValue(-2147483648.0f, ZT_UNIT_NUMBER).getIntegerValue(), INT_MIN);
    EXPECT_EQ(ZtValue(-2147483520.0f, ZT_UNIT_NUMBER).getIntegerValue(), -2147483520);
    EXPECT_EQ(ZtValue(INFINITY, ZT_UNIT_NUMBER).getIntegerValue(), INT_MAX);
    EXPECT_EQ(ZtValue(-INFINITY, ZT_UNIT_NUMBER).getIntegerValue(), INT_MIN);
    EXPECT_EQ(ZtValue(NAN, ZT_UNIT_NUMBER).getIntegerValue(), INT_MIN);
    EXPECT_EQ(ZtValue(12.4f, ZT_UNIT_PT).getIntegerValue(), 12); // any unit
    EXPECT_EQ(ZtValue(INT_MIN).getIntegerValue(), INT_MIN);
    EXPECT_EQ(ZtValue(-7, ZT_UNIT_EM).getIntegerValue(), -7);
    EXPECT_EQ(ZtValue(NM_auto).getIntegerValue(), 0);
    EXPECT_EQ(ZtValue(u"12").getIntegerValue(), 0);
    EXPECT_EQ(ZtValue().getIntegerValue(), 0);
}

TEST(Value, RealValueConversions) {
    EXPECT_EQ(ZtValue(1, ZT_UNIT_IN).getRealValue(ZT_UNIT_PT), 72.0f);
    EXPECT_EQ(ZtValue(72.0f, ZT_UNIT_PT).getRealValue(ZT_UNIT_IN), 1.0f);
    EXPECT_NEAR(ZtValue(1, ZT_UNIT_CM).getRealValue(ZT_UNIT_MM), 10.0f, 1e-5f);
    EXPECT_EQ(ZtValue(3, ZT_UNIT_PC).getRealValue(ZT_UNIT_PC2), 3.0f);
    EXPECT_NEAR(ZtValue(180, ZT_UNIT_DEG).getRealValue(ZT_UNIT_RAD), 3.14159265f, 1e-6f);
    EXPECT_NEAR(ZtValue(100, ZT_UNIT_GRAD).getRealValue(ZT_UNIT_DEG), 90.0f, 1e-5f);
    EXPECT_EQ(ZtValue(50, ZT_UNIT_PERCENT).getRealValue(ZT_UNIT_PERCENT), 50.0f);
    EXPECT_EQ(ZtValue(1.5f, ZT_UNIT_EM).getRealValue(ZT_UNIT_EM), 1.5f);
    EXPECT_EQ(ZtValue(65, ZT_UNIT_CHARACTER).getRealValue(ZT_UNIT_CHARACTER), 65.0f);
    // Between unrelated kinds there is no conversion.
    EXPECT_TRUE(std::isnan(ZtValue(5).getRealValue(ZT_UNIT_PT)));
    EXPECT_TRUE(std::isnan(ZtValue(5, ZT_UNIT_EM).getRealValue(ZT_UNIT_PT)));
    EXPECT_TRUE(std::isnan(ZtValue(5, ZT_UNIT_PT).getRealValue(ZT_UNIT_DEG)));
    EXPECT_TRUE(std::isnan(ZtValue(5, ZT_UNIT_DEG).getRealValue(ZT_UNIT_PERCENT)));
    EXPECT_TRUE(std::isnan(ZtValue(NM_auto).getRealValue(ZT_UNIT_NAME)));
    EXPECT_TRUE(std::isnan(ZtValue(u"5").getRealValue(ZT_UNIT_UNKNOWN)));
    EXPECT_TRUE(std::isnan(ZtValue().getRealValue(ZT_UNIT_NUMBER)));
}

TEST(Value, NumberZero) {
    EXPECT_TRUE(ZtValue(0).isNumberZero());
    EXPECT_TRUE(ZtValue(0.0f).isNumberZero());
    EXPECT_TRUE(ZtValue(-0.0f).isNumberZero());
    EXPECT_FALSE(ZtValue(0, ZT_UNIT_PT).isNumberZero());
    EXPECT_FALSE(ZtValue(1e-30f).isNumberZero());
    EXPECT_FALSE(ZtValue(NM_EMPTY_NAME).isNumberZero());
}

TEST(Value, NamesAndStrings) {
    EXPECT_EQ(utf8(ZtValue(NM_font_size).getStringValue()), "font-size");
    EXPECT_EQ(utf8(ZtValue(u"Hello").getStringValue()), "Hello");
    EXPECT_TRUE(ZtValue(12).getStringValue().isEmpty());
    EXPECT_TRUE(ZtValue(u"Hello").getNameValue().isEmpty());
    EXPECT_EQ(ZtValue(ZtName(u"fontSize")).getLowerNameValue(), ZtName(u"fontsize"));
    EXPECT_TRUE(ZtValue(5).getLowerNameValue().isEmpty());
    // Names made from values.
    EXPECT_EQ(ZtName(ZtValue(NM_bold)), NM_bold);
    EXPECT_EQ(ZtName(ZtValue(u"bold")), NM_bold);
    EXPECT_EQ(ZtName(ZtValue(12, ZT_UNIT_PT)), ZtName(u"12pt"));
    EXPECT_TRUE(ZtName(ZtValue()).isEmpty());
}

TEST(Value, StringCopiesAreIndependent) {
    auto* source = new ZtValue(u"shared?", ZT_UNIT_LITERAL);
    ZtValue copy(*source);
    EXPECT_NE(&copy.getStringValue(), &source->getStringValue());
    ZtValue assigned;
    assigned = *source;
    EXPECT_NE(&assigned.getStringValue(), &source->getStringValue());
    copy.setValueType(ZT_VALUE_INTEGER); // drops the copy's text only
    EXPECT_EQ(utf8(source->getStringValue()), "shared?");
    delete source; // the copies must not refer to its text
    EXPECT_EQ(utf8(assigned.getStringValue()), "shared?");
    EXPECT_TRUE(assigned.isLiteralString());
}

TEST(Value, ArrayCopiesShare) {
    ZtPtr<ZtValueArray> array(new ZtValueArray);
    ZtValue a(array.get());
    EXPECT_EQ(array->getRefCount(), 2);
    ZtValue b(a);
    EXPECT_EQ(array->getRefCount(), 3);
    EXPECT_EQ(b.getValueArray(), array.get());
    b.getValueArray()->append(ZtValue(1));
    EXPECT_EQ(a.getValueArray()->getCount(), 1);
    ZtValue c;
    c = a;
    EXPECT_EQ(array->getRefCount(), 4);
    const ZtValue& same = c;
    c = same; // self-assignment changes nothing
    EXPECT_EQ(array->getRefCount(), 4);
    ZtValue moved(std::move(c));
    EXPECT_TRUE(c.isNull()); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(array->getRefCount(), 4);
    moved.clear();
    b = ZtValue(3);
    EXPECT_EQ(array->getRefCount(), 2);
}

TEST(Value, ObjectsAndMapsAreShared) {
    ZtPtr<Probe> probe(new Probe);
    {
        ZtValue object(probe.get());
        EXPECT_TRUE(object.isObject());
        EXPECT_EQ(object.getObjectValue(), probe.get());
        EXPECT_EQ(probe->getRefCount(), 2);
        ZtValue copy = object; // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(probe->getRefCount(), 3);
        EXPECT_EQ(copy.getValueArray(), nullptr);
        EXPECT_EQ(copy.getNamedValueMap(), nullptr);
    }
    EXPECT_EQ(probe->getRefCount(), 1);
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    ZtValue compound(map.get());
    EXPECT_TRUE(compound.isCompound());
    EXPECT_FALSE(compound.isArray());
    EXPECT_EQ(compound.getNamedValueMap(), map.get());
    EXPECT_EQ(compound.getObjectValue(), nullptr);
    EXPECT_EQ(map->getRefCount(), 2);
}

// Assigning a value from inside the array that the target alone keeps alive.
TEST(Value, AssignmentFromInsideWhatIsReplaced) {
    ZtValue holder;
    {
        ZtPtr<ZtValueArray> array(new ZtValueArray{ZtValue(u"inner"), ZtValue(2)});
        holder = ZtValue(array.get());
    }
    const ZtValue& inner = holder.getValueArray()->get(0);
    holder = inner;
    EXPECT_EQ(utf8(holder.getStringValue()), "inner");
}

TEST(Value, TypeChangesNeverTakeNumbersForPointers) {
    ZtValue number(42);
    number.setValueType(ZT_VALUE_STRING);
    EXPECT_TRUE(number.isString());
    EXPECT_TRUE(number.isEmpty());
    EXPECT_TRUE(number.getStringValue().isEmpty());
    ZtValue copy(number);
    EXPECT_TRUE(copy.isEmpty());
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

    // Between plain types the payload bits stay.
    ZtValue real(1.0f, ZT_UNIT_PT);
    real.setValueType(ZT_VALUE_INTEGER);
    EXPECT_EQ(real.getIntegerValue(), 0x3F800000);
    EXPECT_EQ(real.getUnitType(), ZT_UNIT_PT);
    real.setValueUnitType(ZT_VALUE_REAL, ZT_UNIT_MM);
    EXPECT_EQ(real.getRealValue(ZT_UNIT_MM), 1.0f);
}

TEST(Value, WordFields) {
    ZtValue v(3, ZT_UNIT_PT);
    v.setUnitType(ZT_UNIT_CM);
    EXPECT_EQ(v.getUnitType(), ZT_UNIT_CM);
    EXPECT_EQ(v.getValueType(), ZT_VALUE_INTEGER);
    v.setUnitType(static_cast<ZtUnitType>(64 + 7)); // six bits only
    EXPECT_EQ(v.getUnitType(), ZT_UNIT_MM);
    EXPECT_EQ(v.getQualifier(), NM_EMPTY_NAME);
    v.setQualifier(NM_font_size);
    EXPECT_EQ(v.getQualifier(), NM_font_size);
    EXPECT_EQ(v.getUnitType(), ZT_UNIT_MM);
    EXPECT_EQ(v.getIntegerValue(), 3);
    v.setValueUnitType(ZT_VALUE_INTEGER, ZT_UNIT_PX);
    EXPECT_EQ(v.getQualifier(), NM_EMPTY_NAME);
    EXPECT_EQ(v.getUnitType(), ZT_UNIT_PX);
    EXPECT_EQ(v.getIntegerValue(), 3);
    v.clear();
    EXPECT_TRUE(v.isNull());
    EXPECT_EQ(v.getUnitType(), ZT_UNIT_UNKNOWN);
}

TEST(IntAndBool, ZtInt) {
    ZtInt undefined;
    EXPECT_TRUE(undefined.isUndef());
    EXPECT_EQ(int(undefined), INT_MIN);
    ZtInt n(7);
    EXPECT_FALSE(n.isUndef());
    n += 5;
    n -= 2;
    n *= 3;
    n /= 4;
    EXPECT_EQ(int(n), 7); // ((7 + 5 - 2) * 3) / 4
    EXPECT_EQ(int(n + 1), 8);
    EXPECT_EQ(int(n - 10), -3);
    EXPECT_EQ(int(n * -2), -14);
    EXPECT_EQ(int(n / 2), 3);
    EXPECT_EQ(int(-n), -7);
    EXPECT_EQ(int(+n), 7);
    EXPECT_EQ(int(n++), 7);
    EXPECT_EQ(int(n), 8);
    EXPECT_EQ(int(++n), 9);
    EXPECT_EQ(int(n--), 9);
    EXPECT_EQ(int(--n), 7);
    // 32-bit wrap-around: one past the largest number is the undefined value.
    ZtInt top(INT_MAX);
    ++top;
    EXPECT_TRUE(top.isUndef());
    EXPECT_EQ(int(-ZtInt(INT_MIN)), INT_MIN);
    n.setUndef();
    EXPECT_TRUE(n.isUndef());
}

TEST(IntAndBool, ZtBool) {
    ZtBool undefined;
    EXPECT_TRUE(undefined.isUndef());
    EXPECT_TRUE(undefined.isTrue(true));
    EXPECT_FALSE(undefined.isTrue(false));
    ZtBool yes(true);
    ZtBool no(false);
    EXPECT_FALSE(yes.isUndef());
    EXPECT_TRUE(yes.isTrue(false));
    EXPECT_FALSE(no.isTrue(true));
    EXPECT_TRUE(yes == true);
    EXPECT_TRUE(no == false);
    EXPECT_FALSE(undefined == false);
    EXPECT_TRUE(undefined == ZtBool());
    EXPECT_FALSE(undefined == no);
    EXPECT_TRUE(yes == ZtBool(true));
    EXPECT_FALSE(yes == no);
    yes.setUndef();
    EXPECT_TRUE(yes.isUndef());
    EXPECT_TRUE(yes == undefined);
    EXPECT_EQ(sizeof(ZtBool), 2u);
}
