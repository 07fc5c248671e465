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

// Runs work(t) for t = 0 .. count-1 on threads of their own, all released together.
template <class Work> void onThreads(int count, Work work) {
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    threads.reserve(size_t(count));
    for (int t = 0; t < count; ++t)
        threads.emplace_back([&, t] {
            while (!go.load())
                std::this_thread::yield();
            work(t);
        });
    go = true;
    for (auto& thread : threads)
        thread.join();
}

} // namespace

TEST(RefCount, CountsAreExactAndTheObjectDiesOnce) {
    std::atomic<int> deaths{0};
    auto* raw = new Tracked(&deaths);
    EXPECT_EQ(raw->getRefCount(), 0);
    {
        ZtPtr<Tracked> p(raw);
        EXPECT_EQ(raw->getRefCount(), 1);
        ZtPtr<Tracked> q = p;
        ZtPtr<Tracked>& alias = p;
        p = alias; // self-assignment keeps the count
        ZtPtr<Tracked> moved = std::move(q);
        EXPECT_TRUE(q.isNull()); // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(raw->getRefCount(), 2);
    }
    EXPECT_EQ(deaths, 1);

    // The raw calls return the new count. removeRef and the protected helpers never destroy,
    // even at 0 or below; the next release that leaves the count below 1 does.
    raw = new Tracked(&deaths);
    EXPECT_EQ(raw->addRef(), 1);
    EXPECT_EQ(raw->addRef(), 2);
    EXPECT_EQ(raw->release(), 1);
    EXPECT_EQ(raw->removeRef(), 0);
    EXPECT_EQ(raw->decrement(), -1);
    EXPECT_EQ(deaths, 1);
    raw->clear();
    EXPECT_EQ(raw->getRefCount(), 0);
    EXPECT_EQ(raw->release(), -1);
    EXPECT_EQ(deaths, 2);
}

TEST(RefCount, CheckedDownCastsAndTypeIdentity) {
    std::atomic<int> deaths{0};
    ZtPtr<ZtRCObject> base(new TrackedChild(&deaths));
    ZtPtr<Unrelated> unrelated(new Unrelated);

    ZtPtr<TrackedChild> child;
    child = base.get(); // a TrackedChild seen through its base: accepted
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

    // The isA chain reaches every ancestor, including the fixed identifiers of the roots.
    EXPECT_EQ(base->getTypeID(), 0x11110002u);
    for (unsigned id : {0x11110002u, 0x11110001u, 0xD18D040Au, 0xDF537371u})
        EXPECT_TRUE(base->isA(id)) << id;
    EXPECT_FALSE(base->isA(0x11110003u));
    EXPECT_FALSE(base->isA(ZtTypeId::Node));
    EXPECT_EQ(base->getTypeName(), UnicodeString(u"TrackedChild"));
    tracked = nullptr;
    base = nullptr;
    EXPECT_EQ(deaths, 1);
}

TEST(RefCount, EightThreadsCopyingAndDroppingKeepCountsExact) {
    std::atomic<int> deaths{0};
    ZtPtr<Tracked> shared(new Tracked(&deaths));
    onThreads(8, [&](int) {
        for (int i = 0; i < 20000; ++i) {
            ZtPtr<Tracked> a = shared; // NOLINT(performance-unnecessary-copy-initialization)
            ZtPtr<Tracked> b;
            b = a;
            ZtPtr<ZtRCObject> c(b.get());
            ZtPtr<Tracked> d;
            d = c.get();
        }
    });
    EXPECT_EQ(shared->getRefCount(), 1);
    EXPECT_EQ(deaths, 0);

    // Many holders on many threads, released concurrently: exactly one destruction.
    std::vector<ZtPtr<Tracked>> holders(8, shared);
    shared = nullptr;
    onThreads(8, [&](int t) { holders[size_t(t)] = nullptr; });
    EXPECT_EQ(deaths, 1);

    int counter = 0;
    onThreads(4, [&](int) {
        for (int i = 0; i < 50000; ++i) {
            ZtMutex::interlockedIncrement(counter);
            ZtMutex::interlockedIncrement(counter);
            ZtMutex::interlockedDecrement(counter);
        }
    });
    EXPECT_EQ(ZtMutex::interlockedDecrement(counter), 4 * 50000 - 1);
}
