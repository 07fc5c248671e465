// Destroying trees: any depth without recursion, and nodes held from outside surviving with
// their subtrees.
#include <atomic>

#include "dom_test_util.h"

using namespace domtest;

namespace {

std::atomic<int> g_deaths{0};

// A document whose text nodes count their own destruction.
class CountingText : public ZtTextNode {
public:
    CountingText(ZtDocument* doc, const UnicodeString& text) : ZtTextNode(doc, text) {}

protected:
    ~CountingText() override { g_deaths.fetch_add(1); }
};

class CountingDocument : public ZtDocument {
public:
    ZtPtr<ZtTextNode> createTextNode(const UnicodeString& text) override {
        return ZtPtr<ZtTextNode>(new CountingText(this, text));
    }
};

} // namespace

TEST(Destruction, AMillionDeepChainIsDestroyedWithoutRecursion) {
    constexpr int kDepth = 1000000, kHeld = 600000;
    ZtPtr<ZtDocument> doc = newDocument();
    ZtName n = name("n");
    ZtNode* tip = doc;
    ZtPtr<ZtNode> middle;
    for (int depth = 1; depth <= kDepth; ++depth) {
        tip = tip->appendChild(doc->createElement(n));
        if (depth == kHeld)
            middle = tip;
    }
    ZtPtr<ZtNode> bottom(tip);
    EXPECT_EQ(bottom->getNodeDepth(), kDepth);
    // A recursive destructor would overflow the stack here; the node held from outside
    // survives, detached, with its chain.
    doc = nullptr;
    EXPECT_EQ(middle->getParentNode(), nullptr);
    EXPECT_EQ(middle->getRefCount(), 1);
    EXPECT_EQ(bottom->getNodeDepth(), kDepth - kHeld);
    EXPECT_TRUE(bottom->isDescendantOf(middle));
    middle = nullptr;
    EXPECT_EQ(bottom->getParentNode(), nullptr);
    EXPECT_EQ(bottom->getRefCount(), 1);
}

TEST(Destruction, SurvivorsKeepSubtreesAndTheRestDies) {
    g_deaths = 0;
    ZtPtr<ZtDocument> doc(new CountingDocument);
    build(doc, "root(a(#1 b(#2 #3) #4) c(#5) #6)");
    ZtNode* root = doc->getFirstChild();
    ZtPtr<ZtNode> b = root->getFirstChild()->getChildNodeByName(name("b"));
    ZtPtr<ZtNode> t5 = root->getChildNodeByName(name("c"))->getFirstChild();
    EXPECT_EQ(describe(root), "a(#1 b(#2 #3) #4) c(#5) #6");
    doc = nullptr;
    // Dead: #1, #4, #6. Alive: b with #2 and #3, and #5 alone.
    EXPECT_EQ(g_deaths, 3);
    EXPECT_EQ(b->getParentNode(), nullptr);
    EXPECT_EQ(b->getNextSibling(), nullptr);
    EXPECT_EQ(describe(b), "#2 #3");
    expectLinksConsistent(b);
    EXPECT_EQ(t5->getParentNode(), nullptr);
    EXPECT_EQ(t5->getRefCount(), 1);
    b = nullptr;
    EXPECT_EQ(g_deaths, 5);
    t5 = nullptr;
    EXPECT_EQ(g_deaths, 6);
}

TEST(Destruction, ALoadingFlagDoesNotLoadDuringDestruction) {
    // A document whose loader would fail the test if it ran.
    class NoLoading : public ZtDocument {
    public:
        int calls = 0;
        ZtNode* loadNextNode() override {
            ++calls;
            return nullptr;
        }
    };
    auto* raw = new NoLoading;
    ZtPtr<ZtDocument> doc(raw);
    ZtPtr<ZtElement> e = doc->createElement(name("e"));
    build(e, "a(b) c");
    for (ZtNode* n : {static_cast<ZtNode*>(e), e->getFirstChildFast(),
                      e->getFirstChildFast()->getFirstChildFast(), e->getLastChildFast()})
        n->setFlag(ZtNode::FLAG_LOADING, true);
    e->getLastChild(); // while loading, the lazy accessors ask the document
    EXPECT_GT(raw->calls, 0);
    raw->calls = 0;
    e = nullptr;
    EXPECT_EQ(raw->calls, 0);
}
