// Reference counting and the smart pointer: exact counts, destruction exactly once, checked
// down-casts, and counts that stay exact under concurrent copies.
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ztcommon/foundation.h"

using namespace ZtCommonNS;

namespace {

// Records its own destruction so tests can see when, and how often, it happens.
class Tracked : public ZtRCObject {
    ZT_DECLARE_TYPE(Tracked, ZtRCObject, 0x11110001u)

public:
    explicit Tracked(std::atomic<int>* deaths) : deaths_(deaths) {}
    ~Tracked() override { deaths_->fetch_add(1); }

    // Exposes the protected helpers to the tests.
    void clear() { clearRefCount(); }
    int decrement() { return decrementRefCount(); }

private:
    std::atomic<int>* deaths_;
};

class TrackedChild : public Tracked {
    ZT_DECLARE_TYPE(TrackedChild, Tracked, 0x11110002u)

public:
    using Tracked::Tracked;
};

class Unrelated : public ZtRCObject {
    ZT_DECLARE_TYPE(Unrelated, ZtRCObject, 0x11110003u)
};

} // namespace

TEST(RefCount, FirstPointerTakesTheOnlyReferenceAndLastReleaseDestroys) {
    std::atomic<int> deaths{0};
    auto* raw = new Tracked(&deaths);
    EXPECT_EQ(raw->getRefCount(), 0);
    {
        ZtPtr<Tracked> p(raw);
        EXPECT_EQ(p->getRefCount(), 1);
        ZtPtr<Tracked> q = p;
        EXPECT_EQ(raw->getRefCount(), 2);
        ZtPtr<Tracked>& alias = p;
        p = alias; // self-assignment keeps the count
        EXPECT_EQ(raw->getRefCount(), 2);
        ZtPtr<Tracked> moved = std::move(q);
        EXPECT_TRUE(q.isNull());
        EXPECT_EQ(raw->getRefCount(), 2);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(RefCount, AddRefReleaseAndRemoveRefReturnNewCounts) {
    std::atomic<int> deaths{0};
    auto* raw = new Tracked(&deaths);
    EXPECT_EQ(raw->addRef(), 1);
    EXPECT_EQ(raw->addRef(), 2);
    EXPECT_EQ(raw->release(), 1);
    EXPECT_EQ(deaths, 0);
    // removeRef never destroys, even at 0; the next release (to -1) does.
    EXPECT_EQ(raw->removeRef(), 0);
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(raw->getRefCount(), 0);
    EXPECT_EQ(raw->release(), -1);
    EXPECT_EQ(deaths, 1);
}

TEST(RefCount, ProtectedHelpersChangeCountWithoutDestroying) {
    std::atomic<int> deaths{0};
    auto* raw = new Tracked(&deaths);
    raw->addRef();
    raw->addRef();
    EXPECT_EQ(raw->decrement(), 1);
    EXPECT_EQ(raw->decrement(), 0);
    EXPECT_EQ(raw->decrement(), -1);
    EXPECT_EQ(deaths, 0);
    raw->clear();
    EXPECT_EQ(raw->getRefCount(), 0);
    ZtPtr<Tracked> owner(raw);
    EXPECT_EQ(raw->getRefCount(), 1);
    owner = nullptr;
    EXPECT_EQ(deaths, 1);
}

TEST(RefCount, CheckedDownCastOnRawAssignment) {
    std::atomic<int> deaths{0};
    ZtPtr<ZtRCObject> base(new TrackedChild(&deaths));
    ZtPtr<Unrelated> unrelated(new Unrelated);

    ZtPtr<TrackedChild> child;
    child = base.get(); // a TrackedChild seen through its base: accepted
    ASSERT_FALSE(child.isNull());
    EXPECT_EQ(base->getRefCount(), 2);

    ZtPtr<Tracked> tracked;
    tracked = base.get(); // an ancestor type: accepted
    EXPECT_EQ(base->getRefCount(), 3);

    // A raw pointer of the wrong type leaves the pointer null and releases what it held.
    child = static_cast<ZtRCObject*>(unrelated.get());
    EXPECT_TRUE(child.isNull());
    EXPECT_EQ(base->getRefCount(), 2);
    EXPECT_EQ(unrelated->getRefCount(), 1);

    // Assigning the pointer already held changes nothing.
    tracked = static_cast<ZtRCObject*>(base.get());
    EXPECT_EQ(base->getRefCount(), 2);

    EXPECT_TRUE(ZtPtr<Unrelated>::cast(base).isNull());
    EXPECT_FALSE(ZtPtr<TrackedChild>::cast(base).isNull());
    tracked = nullptr;
    base = nullptr;
    EXPECT_EQ(deaths, 1);
}

TEST(RefCount, TypeIdentityChain) {
    std::atomic<int> deaths{0};
    ZtPtr<TrackedChild> child(new TrackedChild(&deaths));
    EXPECT_EQ(child->getTypeID(), 0x11110002u);
    EXPECT_EQ(TrackedChild::getStaticTypeID(), 0x11110002u);
    EXPECT_TRUE(child->isA(0x11110002u));
    EXPECT_TRUE(child->isA(0x11110001u));
    EXPECT_TRUE(child->isA(0xD18D040Au)); // ZtRCObject
    EXPECT_TRUE(child->isA(0xDF537371u)); // ZtObjectBase
    EXPECT_FALSE(child->isA(0x11110003u));
    EXPECT_FALSE(child->isA(ZtTypeId::Node));
    EXPECT_EQ(child->getTypeName(), UnicodeString(u"TrackedChild"));
    EXPECT_EQ(ZtRCObject::getStaticTypeID(), 0xD18D040Au);
    EXPECT_EQ(ZtObjectBase::getStaticTypeID(), 0xDF537371u);
}

TEST(RefCount, EightThreadsCopyingAndDroppingKeepCountsExact) {
    std::atomic<int> deaths{0};
    ZtPtr<Tracked> shared(new Tracked(&deaths));
    constexpr int kThreads = 8;
    constexpr int kRounds = 20000;
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&] {
            while (!go.load())
                std::this_thread::yield();
            for (int i = 0; i < kRounds; ++i) {
                ZtPtr<Tracked> a = shared;
                ZtPtr<Tracked> b;
                b = a;
                ZtPtr<ZtRCObject> c(b.get());
                ZtPtr<Tracked> d;
                d = c.get();
            }
        });
    }
    go = true;
    for (auto& t : threads)
        t.join();
    EXPECT_EQ(shared->getRefCount(), 1);
    EXPECT_EQ(deaths, 0);

    // Many holders on many threads, released concurrently: exactly one destruction.
    std::vector<ZtPtr<Tracked>> holders(kThreads, shared);
    shared = nullptr;
    threads.clear();
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&holders, t] { holders[static_cast<size_t>(t)] = nullptr; });
    for (auto& t : threads)
        t.join();
    EXPECT_EQ(deaths, 1);
}

TEST(RefCount, InterlockedHelpersAreAtomic) {
    int counter = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&counter] {
            for (int i = 0; i < 50000; ++i) {
                ZtMutex::interlockedIncrement(counter);
                ZtMutex::interlockedIncrement(counter);
                ZtMutex::interlockedDecrement(counter);
            }
        });
    for (auto& t : threads)
        t.join();
    EXPECT_EQ(counter, 4 * 50000);
    EXPECT_EQ(ZtMutex::interlockedDecrement(counter), 4 * 50000 - 1);
}
