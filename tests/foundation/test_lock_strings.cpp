// Locks, guards, the shared string constants and the byte-caching text holders.
#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include <gtest/gtest.h>

#include "ztcommon/foundation.h"

using namespace ZtCommonNS;

namespace {
// Whether another thread can take `lock` right now (it lets it go again at once).
bool freeForOtherThreads(ZtLock& lock) {
    return std::async(std::launch::async,
                      [&] {
                          bool got = lock.tryLock();
                          if (got)
                              lock.unlock();
                          return got;
                      })
        .get();
}
} // namespace

TEST(Lock, RecursiveGuardReentersAndExcludesOtherThreads) {
    ZtLock lock;
    std::atomic<bool> otherGotIt{false};
    std::thread other;
    {
        ZtMutex outer(lock);
        {
            ZtMutex inner(&lock); // would deadlock on a non-recursive lock
            ZtMutex global;
            ZtMutex globalAgain;
        }
        // The inner guard is gone, the outer one still holds the lock.
        other = std::thread([&] {
            ZtMutex guard(lock);
            otherGotIt = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(otherGotIt);
        EXPECT_FALSE(freeForOtherThreads(lock));
    }
    other.join();
    EXPECT_TRUE(otherGotIt);
    EXPECT_TRUE(freeForOtherThreads(ZtLock::getGlobalLock()));
}

TEST(Lock, NullLockGuardIsInert) {
    // Must neither crash nor block, and takes no lock, not even the global one.
    ZtMutex inert(static_cast<ZtLock*>(nullptr));
    EXPECT_TRUE(freeForOtherThreads(ZtLock::getGlobalLock()));
}

TEST(SharedStrings, EmptyAndBogus) {
    EXPECT_TRUE(ZtEmptyString::getEmptyString().isEmpty());
    EXPECT_FALSE(ZtEmptyString::getEmptyString().isBogus());
    EXPECT_TRUE(ZtBogusString::getBogusString().isBogus());
    EXPECT_TRUE(ZtBogusString(ZtBogusString::BOGUS_VALUE).isBogus());
    EXPECT_TRUE(UnicodeString(ZtBogusString::getBogusString()).isBogus());
}

TEST(CStr, BytesAreReusedWhileTextAndCharsetStayAndRebuiltOtherwise) {
    // Invalid UTF-8: decoding replaces it, so a re-encoding could never give these bytes back.
    const std::string bytes("ab\xff\xfe", 4);
    ZtCStr text(bytes, "UTF-8");
    EXPECT_EQ(text, UnicodeString(u"ab\uFFFD\uFFFD"));
    const std::string& first = text.getBytes("UTF-8");
    EXPECT_EQ(first, bytes);
    EXPECT_EQ(&text.getBytes("UTF-8"), &first);
    EXPECT_EQ(text.getBytes("UTF-8"), bytes);
    EXPECT_STREQ(text.getCharset(), "UTF-8");
    // Another charset converts afresh; back to UTF-8 is a real conversion now.
    EXPECT_EQ(text.getBytes("UTF-16BE"), std::string("\0a\0b\xff\xfd\xff\xfd", 8));
    EXPECT_EQ(text.getBytes("UTF-8"), std::string("ab\xef\xbf\xbd\xef\xbf\xbd"));

    // A changed text is converted again, also to the charset it came in.
    ZtCStr latin(std::string("caf\xe9"), "ISO-8859-1");
    EXPECT_EQ(latin.getBytes("ISO-8859-1"), std::string("caf\xe9"));
    latin.append(u'!');
    EXPECT_EQ(latin.getBytes("ISO-8859-1"), std::string("caf\xe9!"));
    EXPECT_EQ(latin.getBytes("UTF-8"), std::string("caf\xc3\xa9!"));
    latin.remove();
    EXPECT_EQ(latin.getBytes("UTF-8"), std::string());
}

TEST(CStr, ConstructorsAndCopies) {
    EXPECT_TRUE(ZtCStr(static_cast<const char*>(nullptr), "UTF-8").isEmpty());
    EXPECT_TRUE(ZtCStr(static_cast<const char16_t*>(nullptr), 5).isEmpty());
    ZtCStr fromUnits(u"x\u00e9z", 3);
    EXPECT_EQ(fromUnits, UnicodeString(u"x\u00e9z"));
    EXPECT_EQ(fromUnits.getCharset(), nullptr);

    // A copy keeps the bytes; changing it leaves the original's alone.
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
    EXPECT_STREQ(utf.c_str(), "\xc3\xa9\xf0\x9f\x98\x80");
}
