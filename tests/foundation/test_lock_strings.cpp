// Locks, guards, the shared string constants and the byte-caching text holders.
#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include <gtest/gtest.h>

#include "ztcommon/foundation.h"

using namespace ZtCommonNS;

TEST(Lock, RecursiveGuardsReenterOnOneThread) {
    ZtLock lock;
    {
        ZtMutex outer(lock);
        ZtMutex inner(lock); // would deadlock on a non-recursive lock
        ZtMutex global;
        ZtMutex globalAgain;
        SUCCEED();
    }
    // Released: another thread can take it now.
    std::atomic<bool> taken{false};
    std::thread([&] {
        ZtMutex guard(lock);
        taken = true;
    }).join();
    EXPECT_TRUE(taken);
}

TEST(Lock, GuardExcludesOtherThreadsForItsScope) {
    ZtLock lock;
    std::atomic<bool> otherGotIt{false};
    std::thread other;
    {
        ZtMutex guard(&lock);
        other = std::thread([&] {
            ZtMutex g(lock);
            otherGotIt = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(otherGotIt);
        EXPECT_FALSE(std::async(std::launch::async, [&] { return lock.tryLock(); }).get());
    }
    other.join();
    EXPECT_TRUE(otherGotIt);
}

TEST(Lock, NullLockGuardIsInert) {
    // Must neither crash nor block; the global lock stays free for another thread.
    ZtMutex inert(static_cast<ZtLock*>(nullptr));
    bool free = std::async(std::launch::async, [] {
                    bool got = ZtLock::getGlobalLock().tryLock();
                    if (got)
                        ZtLock::getGlobalLock().unlock();
                    return got;
                }).get();
    EXPECT_TRUE(free);
}

TEST(SharedStrings, EmptyAndBogus) {
    const UnicodeString& empty = ZtEmptyString::getEmptyString();
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_FALSE(empty.isBogus());
    EXPECT_EQ(&empty, &ZtEmptyString::EMPTY_VALUE);

    const UnicodeString& bogus = ZtBogusString::getBogusString();
    EXPECT_TRUE(bogus.isBogus());
    EXPECT_EQ(&bogus, &ZtBogusString::BOGUS_VALUE);
    ZtBogusString copy(ZtBogusString::BOGUS_VALUE);
    EXPECT_TRUE(copy.isBogus());
    UnicodeString plainCopy(bogus);
    EXPECT_TRUE(plainCopy.isBogus());
}

TEST(CStr, BytesGivenAtConstructionAreReturnedWithoutConversion) {
    // Invalid UTF-8: decoding replaces it, so a re-encoding could never give these bytes back.
    const std::string bytes("ab\xff\xfe", 4);
    ZtCStr text(bytes, "UTF-8");
    EXPECT_EQ(text, UnicodeString(u"ab\uFFFD\uFFFD"));
    const std::string& first = text.getBytes("UTF-8");
    EXPECT_EQ(first, bytes);
    EXPECT_EQ(&text.getBytes("UTF-8"), &first);
    EXPECT_EQ(text.getBytes("UTF-8"), bytes);
    EXPECT_STREQ(text.getCharset(), "UTF-8");

    // Another charset converts afresh.
    EXPECT_EQ(text.getBytes("UTF-16BE"), std::string("\0a\0b\xff\xfd\xff\xfd", 8));
    // Back to UTF-8: now a real conversion, so the replacement characters are encoded.
    EXPECT_EQ(text.getBytes("UTF-8"), std::string("ab\xef\xbf\xbd\xef\xbf\xbd"));
}

TEST(CStr, ChangedTextIsConvertedAgain) {
    ZtCStr text(std::string("caf\xe9"), "ISO-8859-1");
    EXPECT_EQ(text, UnicodeString(u"caf\u00e9"));
    EXPECT_EQ(text.getBytes("ISO-8859-1"), std::string("caf\xe9"));
    EXPECT_EQ(text.getBytes("UTF-8"), std::string("caf\xc3\xa9"));
    text.append(u'!');
    EXPECT_EQ(text.getBytes("UTF-8"), std::string("caf\xc3\xa9!"));
    text.remove();
    EXPECT_EQ(text.getBytes("UTF-8"), std::string());
    EXPECT_EQ(text.getBytes("UTF-16LE"), std::string());
}

TEST(CStr, ConstructorsAndCopies) {
    ZtCStr fromNull(static_cast<const char*>(nullptr), "UTF-8");
    EXPECT_TRUE(fromNull.isEmpty());
    ZtCStr fromUnits(u"x\u00e9z", 3);
    EXPECT_EQ(fromUnits, UnicodeString(u"x\u00e9z"));
    EXPECT_EQ(fromUnits.getCharset(), nullptr);
    ZtCStr fromNullUnits(static_cast<const char16_t*>(nullptr), 5);
    EXPECT_TRUE(fromNullUnits.isEmpty());

    ZtCStr original(std::string("\x81\x40", 2), "Shift_JIS"); // ideographic space
    EXPECT_EQ(original, UnicodeString(u"\u3000"));
    ZtCStr copy(original);
    EXPECT_EQ(copy.getBytes("Shift_JIS"), std::string("\x81\x40", 2));
    copy.append(u'a');
    EXPECT_EQ(original.getBytes("Shift_JIS"), std::string("\x81\x40", 2));
    EXPECT_EQ(copy.getBytes("UTF-8"), std::string("\xe3\x80\x80"
                                                  "a"));
    copy = original;
    EXPECT_EQ(copy, original);
    EXPECT_STREQ(copy.getCharset(), "Shift_JIS");

    ZtUtfStr utf(UnicodeString(u"\u00e9\U0001F600"));
    EXPECT_EQ(utf.getBytes(), std::string("\xc3\xa9\xf0\x9f\x98\x80"));
    EXPECT_STREQ(utf.c_str(), "\xc3\xa9\xf0\x9f\x98\x80");
}
