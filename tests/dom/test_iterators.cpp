// Tree and list iterators against sequences written out by hand for a small tree.
#include "dom_test_util.h"

using namespace domtest;

namespace {

using Order = ZtTreeIterator::TraversalOrder;

// Labels of a walk; in order 3 each node carries '+' when entered and '-' when left.
std::string walk(ZtTreeIterator it, bool forward) {
    std::string out;
    while (ZtNode* n = forward ? it.nextNode() : it.previousNode()) {
        out += (out.empty() ? "" : " ") + label(n);
        if (it.getTraversalOrder() == ZtTreeIterator::PRE_AND_POST_ORDER)
            out += it.atPreVisit() ? '+' : '-';
    }
    return out;
}

// Labels of a node iterator's walk, forwards or backwards, from where it stands.
std::string walkList(ZtNodeIterator& it, bool forward) {
    std::string out;
    while (ZtNode* n = forward ? it.nextNode() : it.previousNode())
        out += (out.empty() ? "" : " ") + label(n);
    return out;
}

struct Iterators : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtPtr<ZtElement> r = doc->createElement(name("r"));
    void SetUp() override { build(r, "a(#1 b) #2 c(d)"); }
    ZtTreeIterator fromStart(Order order) const { return ZtTreeIterator(r, nullptr, false, order); }
    ZtTreeIterator fromEnd(Order order) const { return ZtTreeIterator(r, nullptr, true, order); }
};

} // namespace

TEST_F(Iterators, TreeIteratorInEachOrderBothWays) {
    EXPECT_EQ(walk(fromStart(ZtTreeIterator::PRE_ORDER), true), "r a #1 b #2 c d");
    EXPECT_EQ(walk(fromStart(ZtTreeIterator::POST_ORDER), true), "#1 b a #2 d c r");
    EXPECT_EQ(walk(fromStart(ZtTreeIterator::PRE_AND_POST_ORDER), true),
              "r+ a+ #1+ b+ b- a- #2+ c+ d+ d- c- r-");
    EXPECT_EQ(walk(fromEnd(ZtTreeIterator::PRE_ORDER), false), "d c #2 b #1 a r");
    EXPECT_EQ(walk(fromEnd(ZtTreeIterator::POST_ORDER), false), "r c d #2 a b #1");
    EXPECT_EQ(walk(fromEnd(ZtTreeIterator::PRE_AND_POST_ORDER), false),
              "r- c- d- d+ c+ #2- a- b- b+ #1- a+ r+"); // text is met once, when walking back in
    // Order 3 over an element with one text child: entered, the text, left.
    ZtPtr<ZtElement> e = doc->createElement(name("e"));
    build(e, "#x");
    EXPECT_EQ(walk(ZtTreeIterator(e, nullptr, false, ZtTreeIterator::PRE_AND_POST_ORDER), true),
              "e+ #x+ e-");
    // Order 1 over a childless root: the root once.
    ZtPtr<ZtElement> lone = doc->createElement(name("lone"));
    EXPECT_EQ(walk(ZtTreeIterator(lone, nullptr, false, ZtTreeIterator::PRE_ORDER), true), "lone");
}

TEST_F(Iterators, WalksTurnAroundAndStopAtTheEnds) {
    ZtTreeIterator it = fromStart(ZtTreeIterator::PRE_ORDER);
    std::string steps;
    for (bool forward : {true, true, true, false, false, false, true})
        steps += label(forward ? it.nextNode() : it.previousNode()) + " ";
    // A walk that ran off the start begins again.
    EXPECT_EQ(steps, "r a #1 a r null r ");
    EXPECT_FALSE(it.hasPreviousNode());

    // After the end nextNode keeps answering null; setToStart begins again at the root,
    // which counts as visited.
    while (it.nextNode()) {
    }
    EXPECT_EQ(it.nextNode(), nullptr);
    EXPECT_FALSE(it.hasNextNode());
    it.setToStart();
    EXPECT_EQ(it.getCurrentNode(), r.get());
    EXPECT_EQ(label(it.nextNode()), "a");
    it.setToEnd();
    EXPECT_EQ(label(it.previousNode()), "d");
}

TEST_F(Iterators, HasNextAndHasPreviousForetellEveryStep) {
    // Trees with an empty element root, a text-only leaf root, and the fixture's tree.
    ZtPtr<ZtElement> lone = doc->createElement(name("lone"));
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"t");
    for (const ZtNode* root : Nodes{r, lone, text}) {
        for (Order order : {ZtTreeIterator::PRE_ORDER, ZtTreeIterator::POST_ORDER,
                            ZtTreeIterator::PRE_AND_POST_ORDER}) {
            for (bool forward : {true, false}) {
                ZtTreeIterator it(root, nullptr, !forward, order);
                for (int steps = 0;; ++steps) {
                    // Both directions from here: the promise matches the step.
                    ZtTreeIterator ahead = it, back = it;
                    bool promised = forward ? it.hasNextNode() : it.hasPreviousNode();
                    bool backPromised = forward ? it.hasPreviousNode() : it.hasNextNode();
                    ZtNode* n = forward ? ahead.nextNode() : ahead.previousNode();
                    ZtNode* b = forward ? back.previousNode() : back.nextNode();
                    EXPECT_EQ(promised, n != nullptr) << label(root) << order << forward << steps;
                    EXPECT_EQ(backPromised, b != nullptr) << label(root) << order << steps;
                    if (!n)
                        break;
                    it = ahead;
                    ASSERT_LT(steps, 100);
                }
            }
        }
    }
}

TEST_F(Iterators, DefaultIteratorAndEquality) {
    ZtTreeIterator none;
    EXPECT_EQ(none.nextNode(), nullptr);
    EXPECT_EQ(none.previousNode(), nullptr);
    EXPECT_FALSE(none.hasNextNode());
    EXPECT_TRUE(none.atPostVisit());
    EXPECT_EQ(none.getTraversalOrder(), ZtTreeIterator::PRE_AND_POST_ORDER);
    // Equality compares root, position, visit and order.
    ZtTreeIterator a = fromStart(ZtTreeIterator::PRE_ORDER);
    ZtTreeIterator b = fromStart(ZtTreeIterator::PRE_ORDER);
    EXPECT_TRUE(a == b);
    b.nextNode();
    EXPECT_TRUE(a != b);
    a.nextNode();
    EXPECT_TRUE(a == b);
    a.setTraversalOrder(ZtTreeIterator::POST_ORDER);
    EXPECT_TRUE(a != b);
}

TEST_F(Iterators, NodeIteratorOverChildrenAndDescendants) {
    ZtNodeIterator children = r->getChildNodes()->getIterator();
    EXPECT_EQ(walkList(children, true), "a #2 c");
    EXPECT_FALSE(children.hasNextNode());
    EXPECT_TRUE(children.hasPreviousNode());
    EXPECT_EQ(label(children.previousNode()), "c");
    EXPECT_EQ(label(children.previousNode()), "#2");
    EXPECT_EQ(label(children.nextNode()), "#2");
    children.setToStart();
    EXPECT_FALSE(children.hasPreviousNode());
    EXPECT_EQ(children.previousNode(), nullptr); // at the start the cursor stays
    EXPECT_EQ(label(children.nextNode()), "a");

    ZtNodeIterator all = r->getIterator();
    EXPECT_EQ(walkList(all, true), "a #1 b #2 c d");
    EXPECT_EQ(walkList(all, false), "d c #2 b #1 a");

    // Continuing after a given descendant; copies share the list and move independently.
    ZtNodeIterator after(r, r->getFirstChild()->getLastChild());
    EXPECT_EQ(label(after.nextNode()), "#2");
    ZtNodeIterator copy = after;
    EXPECT_EQ(label(copy.nextNode()), "c");
    EXPECT_EQ(label(after.nextNode()), "c");
}

TEST_F(Iterators, NodeIteratorOverEmptyListsAndRemovedCursor) {
    ZtPtr<ZtElement> empty = doc->createElement(name("empty"));
    ZtNodeIterator none = empty->getChildNodes()->getIterator();
    EXPECT_EQ(none.previousNode(), nullptr);
    EXPECT_EQ(none.nextNode(), nullptr);
    EXPECT_FALSE(none.hasPreviousNode());
    ZtNodeIterator nothing(static_cast<const ZtNodeIterable*>(nullptr));
    EXPECT_EQ(nothing.nextNode(), nullptr);

    // The node at the cursor is removed: it is still returned once, then the walk ends.
    ZtNodeIterator it = r->getChildNodes()->getIterator();
    EXPECT_EQ(label(it.nextNode()), "a");
    ZtPtr<ZtNode> removed = r->removeChild(r->getChildNodeByName(name("#text")));
    EXPECT_EQ(walkList(it, true), "#2");
}
