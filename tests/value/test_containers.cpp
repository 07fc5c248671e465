// ZtValueArray and ZtNamedValueMap.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "value_test_util.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

namespace {
std::vector<int> integers(const ZtValueArray& array) {
    std::vector<int> out;
    for (const ZtValue& v : array)
        out.push_back(v.getIntegerValue());
    return out;
}
} // namespace

TEST(ValueArray, EditingAndBounds) {
    ZtPtr<ZtValueArray> array(new ZtValueArray);
    array->append(ZtValue(1));
    array->append(ZtValue(3));
    array->insert(1, ZtValue(2));
    array->insert(3, ZtValue(4)); // at the end
    array->insert(0, ZtValue(0));
    array->set(4, ZtValue(40));
    array->remove(0);
    EXPECT_EQ(integers(*array), (std::vector<int>{1, 2, 3, 40}));
    EXPECT_EQ(array->indexOf(ZtValue(3.0f)), 2);
    EXPECT_EQ(array->indexOf(ZtValue(99)), -1);
    EXPECT_TRUE(array->get(4).isNull());
    EXPECT_TRUE(array->get(-1).isNull());

    // Writing outside raises code 4 naming the operation and changes nothing.
    const std::pair<std::function<void()>, const char*> outside[] = {
        {[&] { array->set(4, ZtValue(0)); }, "set"},
        {[&] { array->set(-1, ZtValue(0)); }, "set"},
        {[&] { array->insert(5, ZtValue(0)); }, "insert"},
        {[&] { array->insert(-1, ZtValue(0)); }, "insert"},
        {[&] { array->remove(4); }, "remove"},
        {[] { ZtValueArray().remove(0); }, "remove"}};
    for (const auto& [operation, name] : outside) {
        ZtError e = caught(operation);
        EXPECT_EQ(e.getErrorCode(), 4) << name;
        EXPECT_EQ(utf8(e.getSource()), std::string("ZtCommonNS::ZtValueArray::") + name);
    }
    EXPECT_EQ(integers(*array), (std::vector<int>{1, 2, 3, 40}));

    for (ZtValue& v : *array)
        v = ZtValue(v.getIntegerValue() * 2);
    EXPECT_EQ(integers(*array), (std::vector<int>{2, 4, 6, 80}));
    array->clear();
    EXPECT_TRUE(array->isEmpty());
    EXPECT_EQ(integers(ZtValueArray(3)), (std::vector<int>{0, 0, 0}));
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
    EXPECT_TRUE(copy->isA(ZtTypeId::ValueArray));
}

TEST(NamedValueMap, SetGetRemoveAndClone) {
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    map->setValue(NM_width, ZtValue(10, ZT_UNIT_PT));
    map->setValue(ZtName(u"zz-custom"), ZtValue(u"mine"));
    map->setValue(NM_color, ZtValue(NM_red));
    map->setValue(NM_width, ZtValue(20, ZT_UNIT_PT)); // replaces
    EXPECT_EQ(map->getValue(NM_width), ZtValue(20, ZT_UNIT_PT));
    EXPECT_FALSE(map->hasValue(NM_height));
    EXPECT_TRUE(map->getValue(NM_height).isNull());
    // Walked in the order of the name numbers, whatever the order of insertion.
    std::vector<ZtNameEnum> order;
    for (const ZtNamedValue& entry : *map)
        order.push_back(entry.getName().getNameEnum());
    EXPECT_EQ(order,
              (std::vector<ZtNameEnum>{NM_color, NM_width, ZtName(u"zz-custom").getNameEnum()}));

    ZtPtr<ZtNamedValueMap> copy = map->clone();
    EXPECT_EQ(ZtValue(copy.get()), ZtValue(map.get()));
    copy->setValue(NM_width, ZtValue(1));
    EXPECT_TRUE(copy->removeValue(NM_color));
    EXPECT_FALSE(copy->removeValue(NM_color));
    EXPECT_EQ(copy->getCount(), 2);
    EXPECT_EQ(map->getCount(), 3);
    EXPECT_EQ(map->getValue(NM_width), ZtValue(20, ZT_UNIT_PT));
    EXPECT_TRUE(copy->isA(ZtTypeId::NamedValueMap));
    map->clear();
    EXPECT_TRUE(map->isEmpty());
}
