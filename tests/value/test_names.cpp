// Run-time names, the shared table, ZtName's operations and the name lists.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

#include "ztcommon/util.h"
#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

UnicodeString text(const std::string& s) {
    return UnicodeString::fromUTF8(s);
}

// A local table that is released at the end of the scope.
struct LocalTable {
    ZtPtr<ZtNameTable> table{new ZtNameTable};
    ZtNameTable* operator->() const { return table.get(); }
};

// 0 to count-1 in an order of its own for each seed.
std::vector<int> shuffledIndexes(int count, unsigned seed) {
    std::vector<int> order(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        order[static_cast<size_t>(i)] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(seed));
    return order;
}

// Runs work(0) to work(3) on four threads at once.
template <class Work> void onFourThreads(Work work) {
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int k = 0; k < 4; ++k)
        threads.emplace_back(work, k);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST(NameTable, RunTimeNumbersFollowTheBuiltinOnes) {
    LocalTable t;
    EXPECT_EQ(t->getNameLast(), 2842);
    EXPECT_EQ(t->getNameEnum(u"zz-first"), 2843);
    EXPECT_EQ(t->getNameEnum(u"zz-second"), 2844);
    EXPECT_EQ(t->getNameEnum(u"zz-first"), 2843);
    EXPECT_EQ(t->getNameLast(), 2844);
    // Built-in names and the empty text never enter the table.
    EXPECT_EQ(t->getNameEnum(u"inherit"), 820);
    EXPECT_EQ(t->getNameEnum(UnicodeString()), 0);
    EXPECT_EQ(t->getNameLast(), 2844);
    EXPECT_EQ(utf8(t->getNameString(static_cast<ZtNameEnum>(2843))), "zz-first");
    EXPECT_EQ(utf8(t->getNameString(static_cast<ZtNameEnum>(2844))), "zz-second");
    EXPECT_EQ(utf8(t->getNameString(NM_inherit)), "inherit");
    for (int number : {0, -5, 2845, 999999})
        EXPECT_TRUE(t->getNameString(static_cast<ZtNameEnum>(number)).isEmpty()) << number;
}

TEST(NameTable, LookupNeverInterns) {
    LocalTable t;
    EXPECT_EQ(t->lookupName(u"zz-unknown"), 0);
    EXPECT_EQ(t->getNameLast(), 2842);
    EXPECT_EQ(t->lookupName(u"default"), 1816);
    EXPECT_EQ(t->getNameEnum(u"zz-known"), 2843);
    EXPECT_EQ(t->lookupName(u"zz-known"), 2843);
    EXPECT_EQ(t->lookupName(UnicodeString()), 0);
}

TEST(NameTable, TablesNumberIndependently) {
    LocalTable a;
    LocalTable b;
    EXPECT_EQ(a->getNameEnum(u"zz-a"), 2843);
    EXPECT_EQ(b->getNameEnum(u"zz-b"), 2843);
    EXPECT_EQ(a->lookupName(u"zz-b"), 0);
    EXPECT_EQ(utf8(b->getNameString(static_cast<ZtNameEnum>(2843))), "zz-b");
    EXPECT_TRUE(a->isA(ZtTypeId::NameTable));
    EXPECT_TRUE(a->isA(ZtTypeId::RCObject));
    EXPECT_EQ(a->getTypeID(), 0xDF2E12FAu);
    EXPECT_EQ(utf8(a->getTypeName()), "ZtNameTable");
}

// Many names force the slots to be rebuilt and the string storage to grow; strings handed out
// earlier must neither move nor change.
TEST(NameTable, ManyNamesKeepNumbersAndStrings) {
    LocalTable t;
    const UnicodeString& first = t->getNameString(t->getNameEnum(u"zz-name-0"));
    const UnicodeString* firstAddress = &first;
    const int count = 20000;
    for (int i = 1; i < count; ++i)
        ASSERT_EQ(t->getNameEnum(text("zz-name-" + std::to_string(i))), 2843 + i);
    for (int i = 0; i < count; i += 7) {
        std::string name = "zz-name-" + std::to_string(i);
        EXPECT_EQ(t->lookupName(text(name)), 2843 + i);
        EXPECT_EQ(utf8(t->getNameString(static_cast<ZtNameEnum>(2843 + i))), name);
    }
    EXPECT_EQ(&t->getNameString(static_cast<ZtNameEnum>(2843)), firstAddress);
    EXPECT_EQ(utf8(first), "zz-name-0");
    EXPECT_EQ(t->getNameLast(), 2842 + count);
}

// Texts that differ only slightly, or are long, or hold any code unit, are told apart.
TEST(NameTable, ArbitraryTextsAreToldApart) {
    LocalTable t;
    std::mt19937 random(12345);
    std::map<std::u16string, int> expected;
    for (int i = 0; i < 3000; ++i) {
        std::u16string s(random() % 70 + 1, u'\0');
        for (char16_t& c : s)
            c = static_cast<char16_t>(random() % 4 == 0 ? random() % 0x10000 : u'a' + random() % 3);
        UnicodeString u(s.data(), static_cast<int32_t>(s.size()));
        ZtNameEnum builtin = ZtNameTable::getBuiltinNameEnum(u);
        ZtNameEnum number = t->getNameEnum(u);
        if (builtin != 0) {
            EXPECT_EQ(number, builtin);
            continue;
        }
        auto [at, inserted] = expected.emplace(s, number);
        if (!inserted) {
            EXPECT_EQ(at->second, number);
        }
    }
    std::unordered_set<int> numbers;
    for (const auto& [s, number] : expected) {
        numbers.insert(number);
        const UnicodeString& back = t->getNameString(static_cast<ZtNameEnum>(number));
        EXPECT_EQ(std::u16string(back.getBuffer(), static_cast<size_t>(back.length())), s);
    }
    EXPECT_EQ(numbers.size(), expected.size());
    EXPECT_EQ(t->getNameLast(), 2842 + static_cast<int>(expected.size()));
}

TEST(NameTable, FourThreadsInterningTheSameNamesAgree) {
    LocalTable t;
    const int count = 2000;
    std::vector<std::vector<ZtNameEnum>> results(4, std::vector<ZtNameEnum>(count));
    onFourThreads([&](int k) {
        for (int i : shuffledIndexes(count, static_cast<unsigned>(k)))
            results[static_cast<size_t>(k)][static_cast<size_t>(i)] =
                t->getNameEnum(text("zz-thread-" + std::to_string(i)));
    });
    std::unordered_set<int> distinct;
    for (int i = 0; i < count; ++i) {
        ZtNameEnum number = results[0][static_cast<size_t>(i)];
        for (int k = 1; k < 4; ++k)
            EXPECT_EQ(results[static_cast<size_t>(k)][static_cast<size_t>(i)], number) << i;
        EXPECT_GE(number, 2843);
        EXPECT_LE(number, 2842 + count);
        distinct.insert(number);
    }
    EXPECT_EQ(distinct.size(), static_cast<size_t>(count));
    EXPECT_EQ(t->getNameLast(), 2842 + count);
}

TEST(NameTable, SharedTableFromFourThreads) {
    const int count = 500;
    std::vector<std::vector<ZtName>> results(4, std::vector<ZtName>(count));
    onFourThreads([&](int k) {
        for (int i : shuffledIndexes(count, static_cast<unsigned>(k + 10)))
            results[static_cast<size_t>(k)][static_cast<size_t>(i)] =
                ZtName(text("zz-shared-thread-" + std::to_string(i)));
    });
    std::unordered_set<ZtName> distinct;
    for (int i = 0; i < count; ++i) {
        const ZtName& first = results[0][static_cast<size_t>(i)];
        for (int k = 1; k < 4; ++k)
            EXPECT_EQ(results[static_cast<size_t>(k)][static_cast<size_t>(i)], first);
        EXPECT_EQ(utf8(first), "zz-shared-thread-" + std::to_string(i));
        distinct.insert(first);
    }
    EXPECT_EQ(distinct.size(), static_cast<size_t>(count));
}

TEST(SharedNames, NumbersWithoutANameGiveTheEmptyString) {
    EXPECT_TRUE(ZtNameTable::getSharedNameString(static_cast<ZtNameEnum>(-5)).isEmpty());
    EXPECT_TRUE(ZtNameTable::getSharedNameString(static_cast<ZtNameEnum>(999999)).isEmpty());
    EXPECT_TRUE(ZtNameTable::getSharedNameString(NM_EMPTY_NAME).isEmpty());
    ZtName beyond(static_cast<ZtNameEnum>(ZtNameTable::getSharedNameTable()->getNameLast() + 1));
    EXPECT_TRUE(static_cast<const UnicodeString&>(beyond).isEmpty());
}

TEST(SharedNames, EmptyAndBuiltinNames) {
    ZtName empty{UnicodeString()};
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_TRUE(empty.isBuiltin());
    EXPECT_EQ(empty, ZtName());
    ZtName inherit(u"inherit");
    EXPECT_EQ(inherit, NM_inherit);
    EXPECT_EQ(inherit.getNameEnum(), 820);
    EXPECT_EQ(utf8(inherit), "inherit");
    EXPECT_TRUE(ZtName::isInheritEtc(inherit));
    EXPECT_TRUE(ZtName::isInheritEtc(ZtName(u"default")));
    EXPECT_TRUE(ZtName::isInheritEtc(ZtName(u"initial")));
    for (const char16_t* other :
         {u"inherited-property-value", u"initial-page-number", u"auto", u"Inherit", u""})
        EXPECT_FALSE(ZtName::isInheritEtc(ZtName(UnicodeString(other)))) << utf8(other);
}

TEST(SharedNames, InterningIsStableAndComparesByNumber) {
    ZtName a(u"zz-shared-stable");
    ZtName b(u"zz-shared-stable");
    EXPECT_EQ(a, b);
    EXPECT_GE(a.getNameEnum(), 2843);
    EXPECT_FALSE(a.isBuiltin());
    EXPECT_EQ(utf8(a), "zz-shared-stable");
    EXPECT_EQ(ZtNameTable::getSharedNameEnum(u"zz-shared-stable"), a.getNameEnum());
    // Ordered by number, not by text: "true" (1517) comes before "yes" (1628), and a text
    // interned at run time comes after every built-in name whatever its letters.
    EXPECT_LT(ZtName(NM_true), ZtName(NM_yes));
    EXPECT_LT(ZtName(NM_yemsa), ZtName(u"AAAA-runtime"));
    EXPECT_GT(ZtName(u"AAAA-runtime"), ZtName(u"ANSI_X3.4"));
    EXPECT_NE(a, NM_inherit);
    EXPECT_TRUE(NM_inherit == ZtName(u"inherit"));
}

TEST(SharedNames, LowerCase) {
    EXPECT_TRUE(ZtName(u"font-size").isLowerName());
    EXPECT_FALSE(ZtName(u"fontSize").isLowerName());
    EXPECT_EQ(ZtName(u"fontSize").lowerName(), ZtName(u"fontsize"));
    EXPECT_EQ(utf8(ZtName(u"fontSize").lowerName()), "fontsize");
    EXPECT_EQ(ZtName(u"font-size").lowerName(), NM_font_size);
    EXPECT_EQ(ZtName(u"SYSTEM").lowerName(), NM_system); // a built-in name to a built-in name
    EXPECT_TRUE(ZtName().isLowerName());
    // Boundaries of the accepted ranges U+0020..U+0040 and U+005B..U+007E.
    for (char16_t c : {u' ', u'@', u'[', u'~', u'0', u'-', u'_', u'a', u'z'})
        EXPECT_TRUE(ZtName(UnicodeString(u"x") + c).isLowerName()) << int(c);
    for (char16_t c : {u'\x1f', u'A', u'Z', u'\x7f', u'\u00e9', u'\t', u'\u3042'})
        EXPECT_FALSE(ZtName(UnicodeString(u"x") + c).isLowerName()) << int(c);
    EXPECT_EQ(utf8(ZtName(u"\u00c9T\u00c9").toLowerString()), "\u00e9t\u00e9");
    EXPECT_EQ(utf8(ZtName(u"\u00c9T\u00c9").lowerName()), "\u00e9t\u00e9");
    // Characters without a lower case keep the name as it is, but it is still re-interned.
    ZtName kana(u"\u3042");
    EXPECT_EQ(kana.lowerName(), kana);
}

TEST(SharedNames, GenerateId) {
    int last = ZtNameTable::getSharedNameTable()->getNameLast();
    ZtName id = ZtName::generateID(u"id");
    EXPECT_EQ(utf8(id), "-id" + std::to_string(last + 1));
    EXPECT_EQ(id.getNameEnum(), last + 1);
    ZtName n = ZtName::generateID();
    EXPECT_EQ(utf8(n), "-N" + std::to_string(last + 2));
    EXPECT_NE(n, id);
    // A text someone interned already is never handed out as a fresh one.
    int next = ZtNameTable::getSharedNameTable()->getNameLast() + 1;
    ZtName taken(text("-X" + std::to_string(next + 1)));
    EXPECT_EQ(taken.getNameEnum(), next);
    ZtName fresh = ZtName::generateID(u"X");
    EXPECT_NE(fresh, taken);
    EXPECT_EQ(utf8(fresh), "-X" + std::to_string(next + 2));
}

TEST(SharedNames, ReleasingAndCleanup) {
    ZtName before(u"zz-before-cleanup");
    ZtNameTable* table = ZtNameTable::addRefSharedNameTable();
    EXPECT_EQ(table, ZtNameTable::getSharedNameTable());
    EXPECT_GE(table->getRefCount(), 1);
    ZtNameTable::releaseSharedNameTable(); // count 0: destroyed
    EXPECT_TRUE(ZtNameTable::getSharedNameString(before.getNameEnum()).isEmpty());
    // The next table starts again after the built-in names.
    EXPECT_EQ(ZtName(u"zz-after-release").getNameEnum(), 2843);
    EXPECT_EQ(ZtName(u"inherit"), NM_inherit);

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

TEST(NameList, Views) {
    const ZtNameEnum items[] = {NM_auto, NM_inherit, NM_none, NM_EMPTY_NAME, NM_yes};
    ZtNameList terminated(items);
    EXPECT_EQ(terminated.getCount(), 3);
    EXPECT_EQ(terminated.indexOf(NM_none), 2);
    EXPECT_EQ(terminated.indexOf(NM_yes), -1); // after the terminator
    EXPECT_EQ(terminated.indexOf(NM_bold), -1);
    EXPECT_TRUE(terminated.hasItem(NM_inherit));
    EXPECT_EQ(terminated.getItem(0), NM_auto);
    EXPECT_TRUE(terminated.getItem(3).isEmpty());
    EXPECT_TRUE(terminated.getItem(-1).isEmpty());

    ZtNameList counted(items, 5);
    EXPECT_EQ(counted.getCount(), 5);
    EXPECT_EQ(counted.indexOf(NM_yes), 4);
    EXPECT_EQ(counted.indexOf(NM_EMPTY_NAME), 3);

    EXPECT_EQ(ZtNameList(nullptr, 4).getCount(), 0);
    EXPECT_EQ(ZtNameList(items, -2).getCount(), 0);
    EXPECT_EQ(ZtNameList(static_cast<const ZtNameEnum*>(nullptr)).getCount(), 0);
    ZtNameList empty;
    EXPECT_EQ(empty.indexOf(NM_EMPTY_NAME), -1);
    EXPECT_FALSE(empty.hasItem(NM_auto));
    empty = counted;
    EXPECT_EQ(empty.getCount(), 5);
    int seen = 0;
    for (ZtNameEnum item : counted)
        seen += item == NM_inherit;
    EXPECT_EQ(seen, 1);
}

TEST(NameList, Instance) {
    ZtNameListInstance list(3);
    EXPECT_EQ(list.getCount(), 3);
    EXPECT_FALSE(list.hasItem(NM_bold));
    EXPECT_TRUE(list.hasItem(NM_EMPTY_NAME)); // fresh items are empty names
    list.setItem(NM_bold, 2);
    list.setItem(ZtName(u"zz-list-item"), 0);
    EXPECT_EQ(list.indexOf(NM_bold), 2);
    EXPECT_TRUE(list.hasItem(ZtName(u"zz-list-item")));
    try {
        list.setItem(NM_auto, 3);
        FAIL() << "no error";
    } catch (const ZtError& e) {
        EXPECT_EQ(e.getErrorCode(), 4);
        EXPECT_EQ(utf8(e.getRawMessage()), "SYSTEM ERROR: Argument is out of range.");
    }
    EXPECT_THROW(list.setItem(NM_auto, -1), ZtError);
    EXPECT_FALSE(list.hasItem(NM_auto));
    EXPECT_EQ(ZtNameListInstance(0).getCount(), 0);
    EXPECT_EQ(ZtNameListInstance(-3).getCount(), 0);
    EXPECT_THROW(ZtNameListInstance(0).setItem(NM_auto, 0), ZtError);
}
