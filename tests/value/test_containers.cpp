// ZtValueArray and ZtNamedValueMap.
#include <gtest/gtest.h>

#include <vector>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

// Runs `operation` and checks it raises ZtError code 4 from the named source.
template <class Operation> void expectOutOfRange(Operation operation, const char* source) {
    try {
        operation();
        ADD_FAILURE() << "no error from " << source;
    } catch (const ZtError& e) {
        EXPECT_EQ(e.getErrorCode(), 4);
        EXPECT_EQ(utf8(e.getSource()), std::string("ZtCommonNS::ZtValueArray::") + source);
    }
}

std::vector<int> integers(const ZtValueArray& array) {
    std::vector<int> out;
    for (const ZtValue& v : array)
        out.push_back(v.getIntegerValue());
    return out;
}

} // namespace

TEST(ValueArray, EditingAndBounds) {
    ZtPtr<ZtValueArray> array(new ZtValueArray);
    EXPECT_TRUE(array->isEmpty());
    array->append(ZtValue(1));
    array->append(ZtValue(3));
    array->insert(1, ZtValue(2));
    array->insert(3, ZtValue(4)); // at the end
    array->insert(0, ZtValue(0));
    EXPECT_EQ(integers(*array), (std::vector<int>{0, 1, 2, 3, 4}));
    array->set(4, ZtValue(40));
    array->remove(0);
    EXPECT_EQ(integers(*array), (std::vector<int>{1, 2, 3, 40}));
    EXPECT_EQ(array->size(), 4);
    EXPECT_EQ(array->indexOf(ZtValue(3.0f)), 2);
    EXPECT_EQ(array->indexOf(ZtValue(99)), -1);
    EXPECT_TRUE(array->get(4).isNull());
    EXPECT_TRUE(array->get(-1).isNull());
    EXPECT_EQ((*array)[3].getIntegerValue(), 40);

    expectOutOfRange([&] { array->set(4, ZtValue(0)); }, "set");
    expectOutOfRange([&] { array->set(-1, ZtValue(0)); }, "set");
    expectOutOfRange([&] { array->insert(5, ZtValue(0)); }, "insert");
    expectOutOfRange([&] { array->insert(-1, ZtValue(0)); }, "insert");
    expectOutOfRange([&] { array->remove(4); }, "remove");
    expectOutOfRange([&] { ZtValueArray().remove(0); }, "remove");
    EXPECT_EQ(integers(*array), (std::vector<int>{1, 2, 3, 40})); // nothing changed

    for (ZtValue& v : *array)
        v = ZtValue(v.getIntegerValue() * 2);
    EXPECT_EQ(integers(*array), (std::vector<int>{2, 4, 6, 80}));
    array->clear();
    EXPECT_EQ(array->getCount(), 0);
    EXPECT_EQ(ZtValueArray(3).getCount(), 3);
    EXPECT_TRUE(ZtValueArray(3).get(2).isNull());
    EXPECT_EQ(ZtValueArray(-2).getCount(), 0);
}

TEST(ValueArray, CloneCopiesValuesAndSharesWhatValuesShare) {
    ZtPtr<ZtValueArray> nested(new ZtValueArray{ZtValue(7)});
    ZtPtr<ZtValueArray> array(new ZtValueArray{ZtValue(u"text"), ZtValue(nested.get())});
    ZtPtr<ZtValueArray> copy = array->clone();
    EXPECT_NE(copy.get(), array.get());
    EXPECT_EQ(copy->getRefCount(), 1);
    EXPECT_EQ(ZtValue(copy.get()), ZtValue(array.get()));
    copy->set(0, ZtValue(u"changed"));
    copy->append(ZtValue(1));
    EXPECT_EQ(utf8(array->get(0).getStringValue()), "text");
    EXPECT_EQ(array->getCount(), 2);
    EXPECT_EQ(copy->get(1).getValueArray(), nested.get()); // shared, as value copies are
    EXPECT_EQ(nested->getRefCount(), 3);
    EXPECT_EQ(utf8(copy->getTypeName()), "ZtValueArray");
    EXPECT_TRUE(copy->isA(ZtTypeId::ValueArray));
    EXPECT_EQ(copy->getTypeID(), 0x5B81E171u);
}

TEST(NamedValueMap, SetGetRemove) {
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    EXPECT_TRUE(map->isEmpty());
    map->setValue(NM_width, ZtValue(10, ZT_UNIT_PT));
    map->setValue(ZtName(u"zz-custom"), ZtValue(u"mine"));
    map->setValue(NM_color, ZtValue(NM_red));
    map->setValue(NM_width, ZtValue(20, ZT_UNIT_PT)); // replaces
    EXPECT_EQ(map->getCount(), 3);
    EXPECT_EQ(map->getValue(NM_width), ZtValue(20, ZT_UNIT_PT));
    EXPECT_TRUE(map->hasValue(NM_color));
    EXPECT_FALSE(map->hasValue(NM_height));
    EXPECT_TRUE(map->getValue(NM_height).isNull());
    // Walked in the order of the name numbers, whatever the order of insertion.
    std::vector<ZtNameEnum> order;
    for (const ZtNamedValue& entry : *map)
        order.push_back(entry.getName().getNameEnum());
    ASSERT_EQ(order.size(), 3u);
    EXPECT_EQ(order[0], NM_color);
    EXPECT_EQ(order[1], NM_width);
    EXPECT_EQ(order[2], ZtName(u"zz-custom").getNameEnum());
    EXPECT_TRUE(map->removeValue(NM_color));
    EXPECT_FALSE(map->removeValue(NM_color));
    EXPECT_EQ(map->getCount(), 2);
    map->clear();
    EXPECT_TRUE(map->isEmpty());
}

TEST(NamedValueMap, Clone) {
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    map->setValue(NM_content, ZtValue(u"text"));
    ZtPtr<ZtNamedValueMap> copy = map->clone();
    EXPECT_EQ(ZtValue(copy.get()), ZtValue(map.get()));
    copy->setValue(NM_content, ZtValue(u"other"));
    copy->setValue(NM_width, ZtValue(1));
    EXPECT_EQ(utf8(map->getValue(NM_content).getStringValue()), "text");
    EXPECT_EQ(map->getCount(), 1);
    EXPECT_EQ(copy->getTypeID(), 0x2D6DF390u);
    EXPECT_EQ(utf8(copy->getTypeName()), "ZtNamedValueMap");
}
