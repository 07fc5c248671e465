// Run-time names, the shared table, ZtName's operations and the name lists.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "value_test_util.h"
#include "ztcommon/util.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

namespace {
UnicodeString units(const std::u16string& s) {
    return UnicodeString(s.data(), static_cast<int32_t>(s.size()));
}
} // namespace

TEST(NameTable, RunTimeNumbersFollowTheBuiltinOnesAndLookupNeverInterns) {
    ZtPtr<ZtNameTable> t(new ZtNameTable);
    ZtPtr<ZtNameTable> other(new ZtNameTable);
    EXPECT_EQ(t->lookupName(u"zz-first"), 0);
    EXPECT_EQ(t->getNameLast(), 2842);
    EXPECT_EQ(t->getNameEnum(u"zz-first"), 2843);
    EXPECT_EQ(t->getNameEnum(u"zz-second"), 2844);
    EXPECT_EQ(t->getNameEnum(u"zz-first"), 2843);
    EXPECT_EQ(t->lookupName(u"zz-second"), 2844);
    // Built-in names and the empty text never enter the table.
    EXPECT_EQ(t->getNameEnum(u"inherit"), 820);
    EXPECT_EQ(t->lookupName(u"default"), 1816);
    EXPECT_EQ(t->getNameEnum(UnicodeString()), 0);
    EXPECT_EQ(t->lookupName(UnicodeString()), 0);
    EXPECT_EQ(t->getNameLast(), 2844);
    EXPECT_EQ(utf8(t->getNameString(static_cast<ZtNameEnum>(2844))), "zz-second");
    EXPECT_EQ(utf8(t->getNameString(NM_inherit)), "inherit");
    for (int number : {0, -5, 2845, 999999})
        EXPECT_TRUE(t->getNameString(static_cast<ZtNameEnum>(number)).isEmpty()) << number;
    // Each table numbers on its own.
    EXPECT_EQ(other->getNameEnum(u"zz-other"), 2843);
    EXPECT_EQ(t->lookupName(u"zz-other"), 0);
}

// Many names force the slots to be rebuilt and the string storage to grow; random texts that
// differ slightly, are long or hold any code unit must be told apart. Strings handed out earlier
// neither move nor change.
TEST(NameTable, ManyAndArbitraryTextsKeepTheirNumbersAndStrings) {
    ZtPtr<ZtNameTable> t(new ZtNameTable);
    const UnicodeString* first = &t->getNameString(t->getNameEnum(u"zz-name-0"));
    std::map<std::u16string, int> model{{u"zz-name-0", 2843}};
    for (int i = 1; i < 20000; ++i) {
        const std::string name = "zz-name-" + std::to_string(i);
        ASSERT_EQ(t->getNameEnum(text(name)), 2843 + i);
        model.emplace(std::u16string(name.begin(), name.end()), 2843 + i);
    }
    std::mt19937 random(12345);
    for (int i = 0; i < 3000; ++i) {
        std::u16string s(random() % 70 + 1, u'\0');
        for (char16_t& c : s)
            c = static_cast<char16_t>(random() % 4 == 0 ? random() % 0x10000 : u'a' + random() % 3);
        const ZtNameEnum builtin = ZtNameTable::getBuiltinNameEnum(units(s));
        const ZtNameEnum number = t->getNameEnum(units(s));
        if (builtin != 0) {
            EXPECT_EQ(number, builtin);
            continue;
        }
        // A new text takes the next number; a repeated one gets its number again.
        auto [at, inserted] = model.emplace(s, 2842 + int(model.size()) + 1);
        EXPECT_EQ(number, at->second) << (inserted ? "new" : "repeated");
    }
    EXPECT_EQ(t->getNameLast(), 2842 + int(model.size()));
    for (const auto& [s, number] : model) {
        EXPECT_EQ(t->lookupName(units(s)), number);
        EXPECT_EQ(t->getNameString(static_cast<ZtNameEnum>(number)), units(s));
    }
    EXPECT_EQ(&t->getNameString(static_cast<ZtNameEnum>(2843)), first);
    EXPECT_EQ(utf8(*first), "zz-name-0");
}

// Four threads intern the same new names in orders of their own, in a table of their own and
// in the shared one: every name gets one number, the same for all threads.
TEST(NameTable, FourThreadsInterningTheSameNamesAgree) {
    ZtPtr<ZtNameTable> t(new ZtNameTable);
    const int count = 2000;
    std::vector<std::vector<int>> local(4, std::vector<int>(count));
    std::vector<std::vector<int>> shared = local;
    std::vector<std::thread> threads;
    for (size_t k = 0; k < 4; ++k)
        threads.emplace_back([&, k] {
            std::vector<int> order(count);
            std::iota(order.begin(), order.end(), 0);
            std::shuffle(order.begin(), order.end(), std::mt19937(unsigned(k)));
            for (int i : order) {
                const UnicodeString name = text("zz-thread-" + std::to_string(i));
                local[k][size_t(i)] = t->getNameEnum(name);
                shared[k][size_t(i)] = ZtName(name).getNameEnum();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    for (size_t k = 1; k < 4; ++k) {
        EXPECT_EQ(local[k], local[0]) << k;
        EXPECT_EQ(shared[k], shared[0]) << k;
    }
    const std::set<int> distinct(local[0].begin(), local[0].end());
    EXPECT_EQ(distinct.size(), size_t(count));
    EXPECT_EQ(*distinct.begin(), 2843);
    EXPECT_EQ(*distinct.rbegin(), 2842 + count);
    EXPECT_EQ(std::set<int>(shared[0].begin(), shared[0].end()).size(), size_t(count));
    for (int i = 0; i < count; i += 97)
        EXPECT_EQ(utf8(ZtName(ZtNameEnum(shared[0][size_t(i)]))), "zz-thread-" + std::to_string(i));
}

TEST(SharedNames, EmptyBuiltinRunTimeAndUnknownNumbers) {
    ZtName empty{UnicodeString()};
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty, ZtName(static_cast<const char16_t*>(nullptr)));
    EXPECT_EQ(ZtName(u"inherit").getNameEnum(), 820);
    for (const char16_t* name : {u"inherit", u"default", u"initial"})
        EXPECT_TRUE(ZtName::isInheritEtc(ZtName(name))) << utf8(name);
    for (const char16_t* other : {u"inherited-property-value", u"auto", u"Inherit", u""})
        EXPECT_FALSE(ZtName::isInheritEtc(ZtName(UnicodeString(other)))) << utf8(other);

    ZtName a(u"zz-shared-stable");
    EXPECT_EQ(a, ZtName(UnicodeString(u"zz-shared-stable")));
    EXPECT_GE(a.getNameEnum(), 2843);
    EXPECT_EQ(utf8(a), "zz-shared-stable");
    // Ordered by number, not by text: a run-time name comes after every built-in one.
    EXPECT_LT(ZtName(NM_true), ZtName(NM_yes));
    EXPECT_LT(ZtName(NM_yemsa), ZtName(u"AAAA-runtime"));

    const int last = ZtNameTable::getSharedNameTable()->getNameLast();
    for (int number : {-5, 0, last + 1, 999999})
        EXPECT_TRUE(ZtNameTable::getSharedNameString(ZtNameEnum(number)).isEmpty()) << number;
}

TEST(SharedNames, LowerCase) {
    EXPECT_EQ(ZtName(u"fontSize").lowerName(), ZtName(u"fontsize"));
    EXPECT_EQ(ZtName(u"SYSTEM").lowerName(), NM_system); // a built-in name to a built-in name
    EXPECT_TRUE(ZtName().isLowerName());
    // Boundaries of the accepted ranges U+0020..U+0040 and U+005B..U+007E.
    for (char16_t c : {u' ', u'@', u'[', u'~', u'0', u'-', u'_', u'a', u'z'})
        EXPECT_TRUE(ZtName(UnicodeString(u"x") + c).isLowerName()) << int(c);
    for (char16_t c : {u'\x1f', u'A', u'Z', u'\x7f', u'\u00e9', u'\t', u'\u3042'})
        EXPECT_FALSE(ZtName(UnicodeString(u"x") + c).isLowerName()) << int(c);
    EXPECT_EQ(utf8(ZtName(u"\u00c9T\u00c9").lowerName()), "\u00e9t\u00e9");
    // Characters without a lower case keep the name as it is.
    EXPECT_EQ(ZtName(u"\u3042").lowerName(), ZtName(u"\u3042"));
}

TEST(SharedNames, GenerateId) {
    int last = ZtNameTable::getSharedNameTable()->getNameLast();
    ZtName id = ZtName::generateID(u"id");
    EXPECT_EQ(utf8(id), "-id" + std::to_string(last + 1));
    EXPECT_EQ(id.getNameEnum(), last + 1);
    EXPECT_EQ(utf8(ZtName::generateID()), "-N" + std::to_string(last + 2));
    // A text someone interned already is never handed out as a fresh one.
    int next = last + 3;
    ZtName taken(text("-X" + std::to_string(next + 1)));
    EXPECT_EQ(taken.getNameEnum(), next);
    EXPECT_EQ(utf8(ZtName::generateID(u"X")), "-X" + std::to_string(next + 2));
}

TEST(SharedNames, ReleasingAndCleanup) {
    ZtName before(u"zz-before-cleanup");
    ZtNameTable* table = ZtNameTable::addRefSharedNameTable();
    EXPECT_EQ(table, ZtNameTable::getSharedNameTable());
    ZtNameTable::releaseSharedNameTable(); // count 0: destroyed
    EXPECT_TRUE(ZtNameTable::getSharedNameString(before.getNameEnum()).isEmpty());
    // The next table starts again after the built-in names.
    EXPECT_EQ(ZtName(u"zz-after-release").getNameEnum(), 2843);

    ZtNameTable::addRefSharedNameTable();
    ZtNameTable::addRefSharedNameTable();
    ZtNameTable::cleanup(); // whatever the count
    EXPECT_TRUE(ZtNameTable::getSharedNameString(static_cast<ZtNameEnum>(2843)).isEmpty());
    EXPECT_EQ(ZtName(u"zz-after-cleanup").getNameEnum(), 2843);

    ZtUtil::cleanup(); // registered too
    EXPECT_TRUE(ZtNameTable::getSharedNameString(static_cast<ZtNameEnum>(2843)).isEmpty());
    ZtNameTable::releaseSharedNameTable(); // no table: nothing happens
    EXPECT_EQ(ZtName(u"zz-after-util-cleanup").getNameEnum(), 2843);
}

TEST(NameList, ViewsAndInstances) {
    const ZtNameEnum items[] = {NM_auto, NM_inherit, NM_none, NM_EMPTY_NAME, NM_yes};
    ZtNameList terminated(items);
    EXPECT_EQ(terminated.getCount(), 3);
    EXPECT_EQ(terminated.indexOf(NM_none), 2);
    EXPECT_EQ(terminated.indexOf(NM_yes), -1); // after the terminator
    EXPECT_EQ(terminated.getItem(0), NM_auto);
    EXPECT_TRUE(terminated.getItem(3).isEmpty());
    EXPECT_TRUE(terminated.getItem(-1).isEmpty());
    ZtNameList counted(items, 5);
    EXPECT_EQ(counted.indexOf(NM_yes), 4);
    EXPECT_EQ(counted.indexOf(NM_EMPTY_NAME), 3);
    EXPECT_EQ(std::count(counted.begin(), counted.end(), NM_inherit), 1);
    EXPECT_EQ(ZtNameList(nullptr, 4).getCount(), 0);
    EXPECT_EQ(ZtNameList(items, -2).getCount(), 0);
    EXPECT_EQ(ZtNameList(static_cast<const ZtNameEnum*>(nullptr)).getCount(), 0);
    EXPECT_FALSE(ZtNameList().hasItem(NM_EMPTY_NAME));

    ZtNameListInstance list(3);
    EXPECT_TRUE(list.hasItem(NM_EMPTY_NAME)); // fresh items are empty names
    list.setItem(NM_bold, 2);
    EXPECT_EQ(list.indexOf(NM_bold), 2);
    for (int index : {3, -1}) {
        ZtError e = caught([&] { list.setItem(NM_auto, index); });
        EXPECT_EQ(e.getErrorCode(), 4);
        EXPECT_EQ(utf8(e.getRawMessage()), "SYSTEM ERROR: Argument is out of range.");
    }
    EXPECT_FALSE(list.hasItem(NM_auto));
    EXPECT_EQ(ZtNameListInstance(-3).getCount(), 0);
    EXPECT_THROW(ZtNameListInstance(0).setItem(NM_auto, 0), ZtError);
}
