// The query helpers of ZtNode: ancestry, document order, counts, searches, flags, positions.
#include "dom_test_util.h"

using namespace domtest;

namespace {

struct Queries : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtNode* r = nullptr;
    ZtNode* a = nullptr;
    ZtNode* b = nullptr;
    ZtNode* c = nullptr;
    ZtNode* d = nullptr;
    ZtNode* e = nullptr;

    // r(a(b c(d)) e)
    void SetUp() override {
        build(doc, "r(a(b c(d)) e)");
        r = doc->getFirstChild();
        a = r->getFirstChild();
        b = a->getFirstChild();
        c = a->getLastChild();
        d = c->getFirstChild();
        e = r->getLastChild();
    }
};

} // namespace

TEST_F(Queries, AncestryAndDepth) {
    EXPECT_TRUE(d->isDescendantOf(a));
    EXPECT_TRUE(d->isDescendantOf(doc));
    EXPECT_FALSE(d->isDescendantOf(d));
    EXPECT_TRUE(d->isDescendantOrSelfOf(d));
    EXPECT_FALSE(a->isDescendantOf(d));
    EXPECT_FALSE(e->isDescendantOf(a));
    EXPECT_FALSE(d->isDescendantOf(nullptr));
    EXPECT_EQ(doc->getNodeDepth(), 0);
    EXPECT_EQ(r->getNodeDepth(), 1);
    EXPECT_EQ(d->getNodeDepth(), 4);
    EXPECT_EQ(label(d->getCommonAncestor(b)), "a");
    EXPECT_EQ(label(d->getCommonAncestorOrSelf(c)), "c");
    EXPECT_EQ(label(d->getCommonAncestor(c)), "a"); // proper ancestor of both
    EXPECT_EQ(label(b->getCommonAncestor(e)), "r");
    ZtPtr<ZtElement> loose = doc->createElement(name("loose"));
    EXPECT_EQ(d->getCommonAncestorOrSelf(loose), nullptr);
}

TEST_F(Queries, DocumentOrder) {
    // Document order: r a b c d e.
    EXPECT_TRUE(b->isPrecedingOf(c));
    EXPECT_TRUE(b->isPrecedingOf(d)); // inside a following sibling
    EXPECT_TRUE(d->isPrecedingOf(e));
    EXPECT_TRUE(b->isPrecedingOf(e));
    EXPECT_FALSE(e->isPrecedingOf(b));
    EXPECT_FALSE(c->isPrecedingOf(b));
    EXPECT_FALSE(a->isPrecedingOf(d)); // descendants are inside, not after
    EXPECT_FALSE(d->isPrecedingOf(a)); // nor are ancestors
    EXPECT_FALSE(b->isPrecedingOf(b));
    EXPECT_TRUE(e->isFollowingOf(b));
    EXPECT_FALSE(b->isFollowingOf(e));
    EXPECT_FALSE(b->isPrecedingOf(nullptr));
}

TEST_F(Queries, CountsAndPositions) {
    EXPECT_EQ(a->getChildNodeCount(), 2);
    EXPECT_EQ(b->countPrecedingSiblings(), 0);
    EXPECT_EQ(b->countFollowingSiblings(), 1);
    EXPECT_EQ(e->countPrecedingSiblings(), 1);
    EXPECT_EQ(d->getPreviousOrSelfNodeCount(r), 5); // r a b c d
    EXPECT_EQ(r->getPreviousOrSelfNodeCount(r), 1);
    EXPECT_EQ(e->getPreviousOrSelfNodeCount(a), 0); // not under a
    EXPECT_EQ(e->getPreviousOrSelfNodeCount(doc), 7);
}

TEST_F(Queries, SearchesByNameAndType) {
    build(a, "b #t b"); // a(b c b #t b)
    EXPECT_EQ(a->getChildNodeByName(name("b")), b);
    ZtNode* second = a->getChildNodeByName(name("b"), b);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->getPreviousSibling(), c);
    ZtNode* third = a->getChildNodeByName(name("b"), second);
    EXPECT_EQ(third, a->getLastChild());
    EXPECT_EQ(label(third->getPreviousSibling()), "#t");
    EXPECT_EQ(a->getChildNodeByName(name("b"), third), nullptr);
    EXPECT_EQ(a->getChildNodeByName(name("b"), d), nullptr); // `after` is not a child
    EXPECT_EQ(label(a->getChildNodeByTypeID(ZtTextNode::getStaticTypeID())), "#t");
    EXPECT_EQ(a->getChildNodeByTypeID(ZtDocument::getStaticTypeID()), nullptr);

    EXPECT_EQ(d->getAncestorByName(name("a")), a);
    EXPECT_EQ(d->getAncestorByName(name("d")), nullptr);
    EXPECT_EQ(d->getAncestorOrSelfByName(name("d")), d);
    EXPECT_EQ(d->getAncestorByName2(name("zz"), name("r")), r);
    EXPECT_EQ(d->getAncestorOrSelfByName2(name("d"), name("r")), d);
    EXPECT_EQ(d->getAncestorByTypeID(ZtDocument::getStaticTypeID()), doc.get());
    EXPECT_EQ(d->getAncestorByTypeID(ZtElement::getStaticTypeID()), c);
    EXPECT_EQ(d->getAncestorOrSelfByTypeID(ZtElement::getStaticTypeID()), d);

    ZtName ns = name("urn:q");
    ZtPtr<ZtElement> q = doc->createElementNS(ns, name("p"), name("q"));
    d->appendChild(q);
    q->appendChild(doc->createElement(name("leaf")));
    EXPECT_EQ(d->getChildNodeByNameNS(ns, name("q")), q.get());
    EXPECT_EQ(d->getChildNodeByNameNS(ZtName(), name("q")), nullptr);
    EXPECT_EQ(q->getFirstChild()->getAncestorByNameNS(ns, name("q")), q.get());
    EXPECT_EQ(d->getChildNodeByName(name("p:q")), q.get());
}

TEST_F(Queries, FlagsAndComplementalParents) {
    EXPECT_FALSE(c->isLoading());
    EXPECT_FALSE(c->isLoaded());
    c->setLoadDone(); // not loading: nothing happens
    EXPECT_FALSE(c->isLoaded());
    c->setFlag(ZtNode::FLAG_LOADING, true);
    EXPECT_TRUE(c->isLoading());
    EXPECT_TRUE(c->isLoaded());
    c->setLoadDone();
    EXPECT_FALSE(c->isLoading());
    EXPECT_TRUE(c->getFlag(ZtNode::FLAG_LOADED));
    c->setFlag(0x100, true); // a bit of a derived class
    EXPECT_TRUE(c->getFlag(0x100 | ZtNode::FLAG_COMPLEMENTAL));
    EXPECT_FALSE(c->getFlag(ZtNode::FLAG_COMPLEMENTAL));

    c->setFlag(ZtNode::FLAG_COMPLEMENTAL, true);
    a->setFlag(ZtNode::FLAG_COMPLEMENTAL, true);
    EXPECT_EQ(d->getParentNodeUncomplemental(), r);
    EXPECT_EQ(b->getParentNodeUncomplemental(), r);
    EXPECT_EQ(r->getParentNodeUncomplemental(), doc.get());
}

TEST_F(Queries, SourcePositionsComeFromTheNearestElementThatHasOne) {
    EXPECT_EQ(d->getSourceLineNumber(), -1);
    a->setSourceLineNumber(12);
    a->setSourceColumnNumber(5);
    EXPECT_EQ(d->getSourceLineNumber(), 12);
    EXPECT_EQ(d->getSourceColumnNumber(), 5);
    c->setSourceLineNumber(14);
    EXPECT_EQ(d->getSourceLineNumber(), 14);
    EXPECT_EQ(d->getSourceColumnNumber(), 5);
    ZtNode* text = d->appendChildText(u"x");
    text->setSourceLineNumber(99); // text nodes keep none of their own
    EXPECT_EQ(text->getSourceLineNumber(), 14);
}

TEST_F(Queries, KindPredicatesAndNames) {
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"abc");
    ZtPtr<ZtProcessingInstruction> pi = doc->createProcessingInstruction(name("target"), u"x=1");
    ZtPtr<ZtDocumentFragment> fragment = doc->createDocumentFragment();
    EXPECT_TRUE(a->isElementNode());
    EXPECT_FALSE(a->isText());
    EXPECT_TRUE(text->isText());
    EXPECT_TRUE(pi->isProcessingInstruction());
    EXPECT_FALSE(fragment->isElementNode() || fragment->isText() ||
                 fragment->isProcessingInstruction());
    EXPECT_EQ(text->getNodeType(), ZtNode::TEXT_NODE);
    EXPECT_EQ(pi->getNodeType(), ZtNode::PROCESSING_INSTRUCTION_NODE);
    EXPECT_EQ(fragment->getNodeType(), ZtNode::DOCUMENT_FRAGMENT_NODE);
    EXPECT_EQ(doc->getNodeType(), ZtNode::DOCUMENT_NODE);
    EXPECT_EQ(utf8(text->getNodeName().getNameString()), "#text");
    EXPECT_EQ(utf8(fragment->getNodeName().getNameString()), "#document-fragment");
    EXPECT_EQ(utf8(doc->getNodeName().getNameString()), "#document");
    EXPECT_EQ(utf8(pi->getNodeName().getNameString()), "target");
    EXPECT_EQ(pi->getText(), UnicodeString(u"x=1"));
    EXPECT_EQ(text->getLength(), 3);
    EXPECT_FALSE(text->isBidiDone());
    text->bidiDone(0);
    EXPECT_TRUE(text->isBidiDone());
    EXPECT_EQ(doc->getTypeName(), UnicodeString(u"ZtDocument"));
    EXPECT_EQ(text->getTypeName(), UnicodeString(u"ZtTextNode"));
    EXPECT_EQ(pi->getTypeName(), UnicodeString(u"ZtProcessingInstruction"));
    EXPECT_EQ(fragment->getTypeName(), UnicodeString(u"ZtDocumentFragment"));
    EXPECT_EQ(a->getTypeName(), UnicodeString(u"Element"));
    EXPECT_EQ(doc->createElementNS(ZtName(), name("x"))->getTypeName(),
              UnicodeString(u"ElementNS"));
    EXPECT_TRUE(text->isA(ZtNode::getStaticTypeID()));
    EXPECT_TRUE(a->isA(0x9B60777Du));
    EXPECT_FALSE(a->isA(ZtTextNode::getStaticTypeID()));
    EXPECT_EQ(fragment->cloneNode(true), nullptr);
    EXPECT_EQ(doc->cloneNode(true), nullptr);
}

TEST_F(Queries, CopiesOfLeavesAndDeepCopiesOfElements) {
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"abc");
    text->bidiDone(2);
    ZtPtr<ZtNode> textCopy = text->cloneNode(false);
    EXPECT_EQ(textCopy->getText(), UnicodeString(u"abc"));
    EXPECT_TRUE(textCopy->isBidiDone());
    EXPECT_EQ(textCopy->getRefCount(), 1);

    a->setSourceLineNumber(7);
    build(c, "#x y(#z)");
    ZtPtr<ZtNode> shallow = a->cloneNode(false);
    EXPECT_FALSE(shallow->hasChildNodes());
    EXPECT_EQ(shallow->getSourceLineNumber(), 7);
    ZtPtr<ZtNode> deep = a->cloneNode(true);
    EXPECT_EQ(describe(deep), "b c(d #x y(#z))");
    EXPECT_EQ(deep->getParentNode(), nullptr);
    EXPECT_EQ(deep->getOwnerDocument(), doc.get());
    expectLinksConsistent(deep);
    // The copy is independent of the original.
    deep->getFirstChild()->appendChild(doc->createElement(name("new")));
    EXPECT_EQ(describe(a), "b c(d #x y(#z))");
}
