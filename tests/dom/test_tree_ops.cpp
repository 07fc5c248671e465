// The four operations that change child lists: their links, their reference counts, their
// errors (code, message, source) and the tree left unchanged by every failed call.
#include "dom_test_util.h"

using namespace domtest;

namespace {

struct TreeOps : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtPtr<ZtElement> root = doc->createElement(name("root"));

    ZtNode* child(const char* childName) const { return root->getChildNodeByName(name(childName)); }
};

} // namespace

TEST_F(TreeOps, OneChildIsFirstAndLastWithNoSiblings) {
    ZtPtr<ZtElement> a = doc->createElement(name("a"));
    EXPECT_EQ(root->appendChild(a), a.get());
    EXPECT_EQ(root->getFirstChild(), a.get());
    EXPECT_EQ(root->getLastChild(), a.get());
    EXPECT_EQ(a->getNextSibling(), nullptr);
    EXPECT_EQ(a->getPreviousSibling(), nullptr);
    EXPECT_EQ(a->getParentNode(), root.get());
    EXPECT_EQ(a->getRefCount(), 2); // ours and the tree's
    expectLinksConsistent(root);
}

TEST_F(TreeOps, InsertAndAppendPlaceChildrenWhereAsked) {
    build(root, "b d");
    ZtPtr<ZtElement> a = doc->createElement(name("a"));
    ZtPtr<ZtElement> c = doc->createElement(name("c"));
    ZtPtr<ZtElement> e = doc->createElement(name("e"));
    EXPECT_EQ(root->insertBefore(a, child("b")), a.get()); // before the first
    EXPECT_EQ(root->insertBefore(c, child("d")), c.get()); // in the middle
    EXPECT_EQ(root->insertBefore(e, nullptr), e.get());    // null reference: at the end
    EXPECT_EQ(describe(root), "a b c d e");
    expectLinksConsistent(root);
}

TEST_F(TreeOps, ReplaceAndRemoveHandBackTheTreesReference) {
    build(root, "a b c");
    ZtPtr<ZtElement> x = doc->createElement(name("x"));
    ZtNode* b = child("b");
    b->addRef(); // keep b alive to look at it afterwards
    ZtPtr<ZtNode> old = root->replaceChild(x, b);
    EXPECT_EQ(old.get(), b);
    EXPECT_EQ(b->getRefCount(), 2); // ours and the returned pointer's (the tree's, handed over)
    EXPECT_EQ(b->getParentNode(), nullptr);
    EXPECT_EQ(b->getNextSibling(), nullptr);
    EXPECT_EQ(b->getPreviousSibling(), nullptr);
    EXPECT_EQ(describe(root), "a x c");
    expectLinksConsistent(root);
    old = nullptr;
    EXPECT_EQ(b->getRefCount(), 1);
    b->release();

    // Replacing the last and the only child moves the last-child link.
    ZtPtr<ZtElement> y = doc->createElement(name("y"));
    root->replaceChild(y, child("c"));
    EXPECT_EQ(root->getLastChild(), y.get());
    EXPECT_EQ(describe(root), "a x y");
    ZtPtr<ZtNode> removed = root->removeChild(child("a"));
    ZtPtr<ZtNode> removed2 = root->removeChild(x);
    ZtPtr<ZtElement> z = doc->createElement(name("z"));
    root->replaceChild(z, y);
    EXPECT_EQ(describe(root), "z");
    expectLinksConsistent(root);
    EXPECT_EQ(removed->getRefCount(), 1);
    root->removeChild(z);
    EXPECT_FALSE(root->hasChildNodes());
    expectLinksConsistent(root);
}

TEST_F(TreeOps, SameNodeAsBothArgumentsChangesNothing) {
    build(root, "a b c");
    ZtNode* b = child("b");
    EXPECT_EQ(root->insertBefore(b, b), b);
    EXPECT_EQ(describe(root), "a b c");
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
    ZtPtr<ZtElement> other = doc->createElement(name("other"));
    build(root, "a b c");
    build(other, "x");
    ZtNode* b = child("b");
    EXPECT_EQ(b->getRefCount(), 1);
    other->appendChild(b);
    EXPECT_EQ(b->getRefCount(), 1);
    EXPECT_EQ(describe(root), "a c");
    EXPECT_EQ(describe(other), "x b");
    other->insertBefore(child("c"), other->getFirstChild());
    EXPECT_EQ(describe(other), "c x b");
    root->replaceChild(other->getLastChild(), child("a"));
    EXPECT_EQ(describe(root), "b");
    EXPECT_EQ(describe(other), "c x");
    EXPECT_EQ(child("b")->getRefCount(), 1);
    expectLinksConsistent(root);
    expectLinksConsistent(other);

    // Within one parent: moving to the end, before a neighbour, in place of a neighbour.
    root->removeAllChildNodes();
    build(root, "a b c d");
    root->appendChild(child("a"));
    EXPECT_EQ(describe(root), "b c d a");
    root->insertBefore(child("d"), child("b"));
    EXPECT_EQ(describe(root), "d b c a");
    root->insertBefore(child("b"), child("c")); // already right before it
    EXPECT_EQ(describe(root), "d b c a");
    ZtPtr<ZtNode> out = root->replaceChild(child("c"), child("b"));
    EXPECT_EQ(describe(root), "d c a");
    EXPECT_EQ(utf8(out->getNodeName().getNameString()), "b");
    root->replaceChild(child("a"), child("c")); // the last child takes its neighbour's place
    EXPECT_EQ(describe(root), "d a");
    for (ZtNode* n = root->getFirstChild(); n; n = n->getNextSibling())
        EXPECT_EQ(n->getRefCount(), 1);
    expectLinksConsistent(root);
}

TEST_F(TreeOps, NullArgumentsAreReportedWithTheOperation) {
    build(root, "a");
    ZtNode* a = child("a");
    expectError(raised([&] { root->appendChild(nullptr); }), 3, "SYSTEM ERROR: newChild is null.",
                "ZtCommonNS::ZtNode::appendChild");
    expectError(raised([&] { root->insertBefore(nullptr, a); }), 3,
                "SYSTEM ERROR: newChild is null.", "ZtCommonNS::ZtNode::insertBefore");
    expectError(raised([&] { root->replaceChild(nullptr, a); }), 3,
                "SYSTEM ERROR: newChild is null.", "ZtCommonNS::ZtNode::replaceChild");
    ZtPtr<ZtElement> x = doc->createElement(name("x"));
    expectError(raised([&] { root->replaceChild(x, nullptr); }), 3,
                "SYSTEM ERROR: oldChild is null.", "ZtCommonNS::ZtNode::replaceChild");
    expectError(raised([&] { root->removeChild(nullptr); }), 3, "SYSTEM ERROR: oldChild is null.",
                "ZtCommonNS::ZtNode::removeChild");
    EXPECT_EQ(describe(root), "a");
    EXPECT_EQ(x->getRefCount(), 1);
}

TEST_F(TreeOps, NodesOfAnotherDocumentAreRefusedAndNothingChanges) {
    build(root, "a b");
    ZtPtr<ZtDocument> otherDoc = newDocument();
    ZtPtr<ZtElement> stranger = otherDoc->createElement(name("s"));
    ZtPtr<ZtElement> strangerParent = otherDoc->createElement(name("p"));
    strangerParent->appendChild(stranger);
    const char* message = "SYSTEM ERROR: newChild is created from a different document.";
    expectError(raised([&] { root->appendChild(stranger); }), 6, message,
                "ZtCommonNS::ZtNode::appendChild");
    expectError(raised([&] { root->insertBefore(stranger, child("b")); }), 6, message,
                "ZtCommonNS::ZtNode::insertBefore");
    expectError(raised([&] { root->replaceChild(stranger, child("b")); }), 6, message,
                "ZtCommonNS::ZtNode::replaceChild");
    EXPECT_EQ(describe(root), "a b");
    EXPECT_EQ(stranger->getParentNode(), strangerParent.get());
    EXPECT_EQ(stranger->getRefCount(), 2);
    expectLinksConsistent(root);
    expectLinksConsistent(strangerParent);
}

TEST_F(TreeOps, NodesThatAreNotChildrenAreRefused) {
    build(root, "a b");
    ZtPtr<ZtElement> loose = doc->createElement(name("loose"));
    ZtPtr<ZtElement> x = doc->createElement(name("x"));
    expectError(raised([&] { root->insertBefore(x, loose); }), 9,
                "SYSTEM ERROR: refChild is not a child of this node.",
                "ZtCommonNS::ZtNode::insertBefore");
    expectError(raised([&] { root->replaceChild(x, loose); }), 9,
                "SYSTEM ERROR: oldChild is not a child of this node.",
                "ZtCommonNS::ZtNode::replaceChild");
    expectError(raised([&] { root->removeChild(loose); }), 9,
                "SYSTEM ERROR: oldChild is not a child of this node.",
                "ZtCommonNS::ZtNode::removeChild");
    // A grandchild is not a child either.
    child("a")->appendChild(loose);
    expectError(raised([&] { root->removeChild(loose); }), 9,
                "SYSTEM ERROR: oldChild is not a child of this node.",
                "ZtCommonNS::ZtNode::removeChild");
    // The reference check comes before the same-node shortcut of insertBefore.
    expectError(raised([&] { root->insertBefore(loose, loose); }), 9,
                "SYSTEM ERROR: refChild is not a child of this node.",
                "ZtCommonNS::ZtNode::insertBefore");
    EXPECT_EQ(describe(root), "a(loose) b");
    EXPECT_EQ(x->getRefCount(), 1);
}

TEST_F(TreeOps, ANodeCannotGoInsideItself) {
    build(root, "a(b(c))");
    ZtNode* a = child("a");
    ZtNode* b = a->getFirstChild();
    ZtNode* c = b->getFirstChild();
    const char* message = "SYSTEM ERROR: Argument is out of range.";
    expectError(raised([&] { c->appendChild(a); }), 4, message, "ZtCommonNS::ZtNode::appendChild");
    expectError(raised([&] { a->appendChild(a); }), 4, message, "ZtCommonNS::ZtNode::appendChild");
    expectError(raised([&] { b->insertBefore(a, c); }), 4, message,
                "ZtCommonNS::ZtNode::insertBefore");
    expectError(raised([&] { b->replaceChild(root, c); }), 4, message,
                "ZtCommonNS::ZtNode::replaceChild");
    // Documents are never children, not even of their own nodes.
    expectError(raised([&] { c->appendChild(doc); }), 4, message,
                "ZtCommonNS::ZtNode::appendChild");
    EXPECT_EQ(describe(root), "a(b(c))");
    EXPECT_EQ(doc->getParentNode(), nullptr);
    // Moving a node down into a sibling's subtree is fine.
    build(root, "d");
    c->appendChild(child("d"));
    EXPECT_EQ(describe(root), "a(b(c(d)))");
}

TEST_F(TreeOps, ADocumentTakesItsOwnNodes) {
    ZtPtr<ZtProcessingInstruction> pi = doc->createProcessingInstruction(name("pi"), u"data");
    doc->appendChild(pi);
    doc->appendChild(root);
    EXPECT_EQ(doc->getDocumentElement(), root.get());
    EXPECT_EQ(root->getOwnerDocument(), doc.get());
    EXPECT_EQ(doc->getOwnerDocument(), doc.get());
    EXPECT_EQ(root->getParentNode(), doc.get());
    expectLinksConsistent(doc);
}

TEST_F(TreeOps, ListsAreLiveAndCountByWalking) {
    ZtPtr<ZtNodeList> children = root->getChildNodes();
    EXPECT_EQ(children->getLength(), 0);
    EXPECT_EQ(children->item(0), nullptr);
    EXPECT_EQ(children->firstNode(), nullptr);
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
    root->insertBefore(doc->createElement(name("y")), root->getFirstChild());
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
    EXPECT_TRUE(children->isA(ZtNodeList::getStaticTypeID()));
    EXPECT_TRUE(children->isA(ZtNodeIterable::getStaticTypeID()));
}

TEST_F(TreeOps, NamespaceListMatchesUriAndLocalName) {
    ZtName ns1 = name("urn:one");
    ZtName ns2 = name("urn:two");
    root->appendChild(doc->createElementNS(ns1, name("p"), name("item")));
    root->appendChild(doc->createElementNS(ns2, name("q"), name("item")));
    root->appendChild(doc->createElementNS(ns1, name("r"), name("other")));
    root->getFirstChild()->appendChild(doc->createElementNS(ns1, name("item")));
    ZtPtr<ZtNodeList> items = root->getElementsByTagNameNS(ns1, name("item"));
    ASSERT_EQ(items->getLength(), 2);
    EXPECT_EQ(label(items->item(0)), "p:item");
    EXPECT_EQ(label(items->item(1)), "item");
    EXPECT_EQ(items->item(1)->getParentNode(), root->getFirstChild());
    EXPECT_EQ(root->getElementsByTagName(name("q:item"))->getLength(), 1);
}

TEST_F(TreeOps, RemovingAllChildrenReleasesThem) {
    build(root, "a(b c) d #t");
    ZtNode* a = child("a");
    a->addRef();
    root->removeAllChildNodes();
    EXPECT_FALSE(root->hasChildNodes());
    EXPECT_EQ(a->getRefCount(), 1);
    EXPECT_EQ(a->getParentNode(), nullptr);
    EXPECT_EQ(describe(a), "b c"); // removeAllChildNodes keeps the subtrees of survivors
    a->release();

    build(root, "a(b(c) d) e");
    ZtNode* b = child("a")->getFirstChild();
    b->addRef();
    EXPECT_EQ(root->deleteAllChildNodes(), 5);
    EXPECT_FALSE(root->hasChildNodes());
    // deleteAllChildNodes takes every node apart, survivors included.
    EXPECT_EQ(b->getParentNode(), nullptr);
    EXPECT_FALSE(b->hasChildNodes());
    EXPECT_EQ(b->getRefCount(), 1);
    b->release();
}

TEST_F(TreeOps, AppendChildrenMovesARunOfSiblings) {
    ZtPtr<ZtElement> other = doc->createElement(name("other"));
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
    expectError(raised([&] { root->appendChildren(other->getFirstChild(), nullptr); }), 4,
                "SYSTEM ERROR: Argument is out of range.", "ZtCommonNS::ZtNode::appendChild");
    EXPECT_EQ(describe(other), "p q(root(x b c a d))");
}

TEST_F(TreeOps, LineFeedTextAndAppendChildText) {
    build(root, "a");
    ZtNode* text = root->appendChildText(u"hello");
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isText());
    EXPECT_EQ(root->getLastChild(), text);
    ZtNode* lf = root->appendChildTextLF();
    EXPECT_EQ(lf->getText(), UnicodeString(u"\n"));
    ZtNode* lf2 = root->insertBeforeTextLF(child("a"));
    EXPECT_EQ(root->getFirstChild(), lf2);
    EXPECT_EQ(describe(root), "#\n a #hello #\n");
    EXPECT_EQ(lf2->getNextSiblingOrSelfIgnoreEmptyOrWhitespace(), child("a"));
    EXPECT_EQ(text->getNextSiblingOrSelfIgnoreEmptyOrWhitespace(), text);
    EXPECT_EQ(lf->getNextSiblingOrSelfIgnoreEmptyOrWhitespace(), nullptr);
    EXPECT_EQ(root->getInnerText(), UnicodeString(u"\nhello\n"));
}
