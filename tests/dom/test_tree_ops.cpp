// The operations that change child lists: their links, their reference counts, their errors
// (code, message, source) and the tree left unchanged by every failed call.
#include "dom_test_util.h"

using namespace domtest;

namespace {

struct TreeOps : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtPtr<ZtElement> root = doc->createElement(name("root"));

    ZtNode* child(const char* childName) const { return root->getChildNodeByName(name(childName)); }
    ZtPtr<ZtElement> element(const char* elementName) const {
        return doc->createElement(name(elementName));
    }
};

} // namespace

// Placement and moves in general are checked against a model in test_tree_random.cpp; here
// the one-child case and the references handed back.
TEST_F(TreeOps, OneChildAndTheReferencesHandedBack) {
    ZtPtr<ZtElement> b = element("b");
    EXPECT_EQ(root->appendChild(b), b.get());
    expectLinksConsistent(root);    // one child: first and last, no siblings
    EXPECT_EQ(b->getRefCount(), 2); // ours and the tree's
    build(root, "c");
    for (bool replacing : {true, false}) {
        ZtPtr<ZtNode> old = replacing ? root->replaceChild(element("x"), b) : root->removeChild(b);
        EXPECT_EQ(old.get(), b.get());
        EXPECT_EQ(b->getRefCount(), 2); // ours and the tree's, handed over
        EXPECT_EQ(b->getParentNode(), nullptr);
        EXPECT_EQ(b->getNextSibling(), nullptr);
        EXPECT_EQ(b->getPreviousSibling(), nullptr);
        old = nullptr;
        EXPECT_EQ(b->getRefCount(), 1);
        root->insertBefore(b, root->getFirstChild());
    }
    EXPECT_EQ(describe(root), "b x c");
    expectLinksConsistent(root);
}

TEST_F(TreeOps, SameNodeAsBothArgumentsChangesNothing) {
    build(root, "a b c");
    ZtNode* b = child("b");
    EXPECT_EQ(root->insertBefore(b, b), b);
    EXPECT_EQ(b->getRefCount(), 1);
    {
        ZtPtr<ZtNode> same = root->replaceChild(b, b);
        EXPECT_EQ(same.get(), b);
        EXPECT_EQ(b->getRefCount(), 2); // an extra reference, the tree keeps its own
    }
    EXPECT_EQ(b->getRefCount(), 1);
    EXPECT_EQ(describe(root), "a b c");
    expectLinksConsistent(root);
}

TEST_F(TreeOps, MovingBetweenParentsKeepsTheCount) {
    ZtPtr<ZtElement> other = element("other");
    build(root, "a b c");
    build(other, "x");
    other->appendChild(child("b"));
    other->insertBefore(child("c"), other->getFirstChild());
    root->replaceChild(other->getLastChild(), child("a"));
    EXPECT_EQ(describe(root), "b");
    EXPECT_EQ(describe(other), "c x");
    for (const ZtNode* n : Nodes{root->getFirstChild(), other->getFirstChild()})
        EXPECT_EQ(n->getRefCount(), 1);
    expectLinksConsistent(root);
    expectLinksConsistent(other);
}

TEST_F(TreeOps, EveryFailedCallRaisesItsErrorAndChangesNothing) {
    build(root, "a(b(c)) d");
    ZtNode* a = child("a");
    ZtNode* b = a->getFirstChild();
    ZtNode* c = b->getFirstChild();
    ZtNode* d = child("d");
    ZtPtr<ZtElement> loose = element("loose"), x = element("x");
    ZtPtr<ZtDocumentFragment> fragment = doc->createDocumentFragment();
    ZtPtr<ZtDocument> otherDoc = newDocument();
    ZtPtr<ZtElement> strangerParent = otherDoc->createElement(name("p"));
    ZtNode* stranger = strangerParent->appendChild(otherDoc->createElement(name("s")));
    const char* notChild = "oldChild is not a child of this node.";
    const char* refNotChild = "refChild is not a child of this node.";
    const char* foreign = "newChild is created from a different document.";
    const char* range = "Argument is out of range.";
    const std::string append = "ZtNode::appendChild", insert = "ZtNode::insertBefore",
                      replace = "ZtNode::replaceChild", remove = "ZtNode::removeChild";
    const ErrorCase cases[] = {
        {3, "newChild is null.", append, [&] { root->appendChild(nullptr); }},
        {3, "newChild is null.", insert, [&] { root->insertBefore(nullptr, a); }},
        {3, "newChild is null.", replace, [&] { root->replaceChild(nullptr, a); }},
        {3, "oldChild is null.", replace, [&] { root->replaceChild(x, nullptr); }},
        {3, "oldChild is null.", remove, [&] { root->removeChild(nullptr); }},
        {6, foreign, append, [&] { root->appendChild(stranger); }},
        {6, foreign, insert, [&] { root->insertBefore(stranger, d); }},
        {6, foreign, replace, [&] { root->replaceChild(stranger, d); }},
        {9, refNotChild, insert, [&] { root->insertBefore(x, loose); }},
        {9, notChild, replace, [&] { root->replaceChild(x, loose); }},
        {9, notChild, remove, [&] { root->removeChild(loose); }},
        {9, notChild, remove, [&] { root->removeChild(c); }}, // a grandchild
        // The reference check comes before the same-node shortcut of insertBefore.
        {9, refNotChild, insert, [&] { root->insertBefore(loose, loose); }},
        {4, range, append, [&] { c->appendChild(a); }},
        {4, range, append, [&] { a->appendChild(a); }},
        {4, range, insert, [&] { b->insertBefore(a, c); }},
        {4, range, replace, [&] { b->replaceChild(root, c); }},
        {4, range, append, [&] { c->appendChild(doc); }}, // documents are never children
        {11, "Cannot set a value on node type: 1", "ZtNode::setNodeValue",
         [&] { a->setNodeValue(ZtValue(1)); }},
        {11, "Cannot set a value on node type: 11", "ZtNode::setNodeValue",
         [&] { fragment->setNodeValue(ZtValue()); }},
    };
    for (const ErrorCase& k : cases) {
        expectError(k.call, k.code, k.message, k.source);
        EXPECT_EQ(describe(root), "a(b(c)) d");
        for (const ZtNode* n : Nodes{root, a, b, c, strangerParent})
            expectLinksConsistent(n);
        for (const ZtNode* n : Nodes{a, b, c, d, stranger, loose, x})
            EXPECT_EQ(n->getRefCount(), 1) << label(n);
        EXPECT_EQ(stranger->getParentNode(), strangerParent.get());
        EXPECT_EQ(doc->getParentNode(), nullptr);
    }
    EXPECT_TRUE(a->getNodeValue().isNull());
    c->appendChild(d); // moving a node down into a sibling's subtree is fine
    EXPECT_EQ(describe(root), "a(b(c(d)))");
}

TEST_F(TreeOps, ListsAreLiveAndCountByWalking) {
    ZtPtr<ZtNodeList> children = root->getChildNodes();
    EXPECT_EQ(children->getLength(), 0);
    EXPECT_EQ(children->item(0), nullptr);
    build(root, "a(x y) b");
    EXPECT_EQ(children->getLength(), 2);
    EXPECT_EQ(label(children->item(1)), "b");
    EXPECT_EQ(children->item(2), nullptr); // item(getLength()) is null
    EXPECT_EQ(children->item(-1), nullptr);
    ZtPtr<ZtNodeList> all = root->getDescendantNodes();
    ZtPtr<ZtNodeList> ys = root->getElementsByTagName(name("y"));
    EXPECT_EQ(all->getLength(), 4);
    EXPECT_EQ(ys->getLength(), 1);
    build(root->getFirstChild(), "y");
    root->insertBefore(element("y"), root->getFirstChild());
    EXPECT_EQ(children->getLength(), 3);
    EXPECT_EQ(label(children->item(0)), "y");
    EXPECT_EQ(all->getLength(), 6);
    EXPECT_EQ(ys->getLength(), 3);
    root->removeChild(root->getFirstChild());
    EXPECT_EQ(ys->getLength(), 2);
    EXPECT_EQ(label(all->lastNode()), "b");
    EXPECT_EQ(label(ys->lastNode()), "y");
    EXPECT_EQ(ys->getTypeName(), UnicodeString(u"TreeNodeList"));
    EXPECT_EQ(children->getTypeName(), UnicodeString(u"ChildNodeList"));
    EXPECT_TRUE(children->isA(ZtNodeIterable::getStaticTypeID()));

    // The namespace form matches namespace URI and local name.
    ZtName ns1 = name("urn:one"), ns2 = name("urn:two");
    ZtNode* p = root->appendChild(doc->createElementNS(ns1, name("p"), name("item")));
    root->appendChild(doc->createElementNS(ns2, name("q"), name("item")));
    root->appendChild(doc->createElementNS(ns1, name("r"), name("other")));
    p->appendChild(doc->createElementNS(ns1, name("item")));
    ZtPtr<ZtNodeList> items = root->getElementsByTagNameNS(ns1, name("item"));
    ASSERT_EQ(items->getLength(), 2);
    EXPECT_EQ(items->item(0), p);
    EXPECT_EQ(items->item(1), p->getFirstChild());
    EXPECT_EQ(root->getElementsByTagName(name("q:item"))->getLength(), 1);
}

TEST_F(TreeOps, RemovingAllChildrenReleasesThem) {
    build(root, "a(b c) d #t");
    ZtPtr<ZtNode> a(child("a"));
    root->removeAllChildNodes();
    EXPECT_FALSE(root->hasChildNodes());
    EXPECT_EQ(a->getRefCount(), 1);
    EXPECT_EQ(a->getParentNode(), nullptr);
    EXPECT_EQ(describe(a), "b c"); // removeAllChildNodes keeps the subtrees of survivors

    build(root, "a(b(c) d) e");
    ZtPtr<ZtNode> b(child("a")->getFirstChild());
    EXPECT_EQ(root->deleteAllChildNodes(), 5);
    EXPECT_FALSE(root->hasChildNodes());
    // deleteAllChildNodes takes every node apart, survivors included.
    EXPECT_EQ(b->getParentNode(), nullptr);
    EXPECT_FALSE(b->hasChildNodes());
    EXPECT_EQ(b->getRefCount(), 1);
}

TEST_F(TreeOps, AppendChildrenMovesARunOfSiblings) {
    ZtPtr<ZtElement> other = element("other");
    build(other, "a b c d");
    build(root, "x");
    root->appendChildren(other->getChildNodeByName(name("b")),
                         other->getChildNodeByName(name("c")));
    EXPECT_EQ(describe(root), "x b c");
    EXPECT_EQ(describe(other), "a d");
    root->appendChildren(other->getFirstChild(), nullptr); // to the end of the siblings
    EXPECT_EQ(describe(root), "x b c a d");
    EXPECT_FALSE(other->hasChildNodes());
    expectLinksConsistent(root);
    // A run that would put root inside itself is refused before anything moves.
    build(other, "p q");
    other->getLastChild()->appendChild(root);
    expectError([&] { root->appendChildren(other->getFirstChild(), nullptr); }, 4,
                "Argument is out of range.", "ZtNode::appendChild");
    EXPECT_EQ(describe(other), "p q(root(x b c a d))");
}

TEST_F(TreeOps, LineFeedTextAndAppendChildText) {
    build(root, "a");
    ZtNode* text = root->appendChildText(u"hello");
    ZtNode* lf = root->appendChildTextLF();
    ZtNode* lf2 = root->insertBeforeTextLF(child("a"));
    EXPECT_EQ(describe(root), "#\n a #hello #\n");
    EXPECT_EQ(lf2->getNextSiblingOrSelfIgnoreEmptyOrWhitespace(), child("a"));
    EXPECT_EQ(text->getNextSiblingOrSelfIgnoreEmptyOrWhitespace(), text);
    EXPECT_EQ(lf->getNextSiblingOrSelfIgnoreEmptyOrWhitespace(), nullptr);
    EXPECT_EQ(root->getInnerText(), UnicodeString(u"\nhello\n"));
}
