// The query helpers of ZtNode: ancestry, document order, counts, searches, flags, positions.
#include "dom_test_util.h"

using namespace domtest;

namespace {

struct Queries : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtNode *r = nullptr, *a = nullptr, *b = nullptr, *c = nullptr, *d = nullptr, *e = nullptr;
    // The nodes in document order, and the index of each one's parent in that order.
    std::vector<ZtNode*> nodes;
    const int parent[7] = {-1, 0, 1, 2, 2, 4, 1};

    void SetUp() override {
        build(doc, "r(a(b c(d)) e)");
        r = doc->getFirstChild();
        a = r->getFirstChild();
        b = a->getFirstChild();
        c = a->getLastChild();
        d = c->getFirstChild();
        e = r->getLastChild();
        nodes = {doc.get(), r, a, b, c, d, e};
    }
    // Whether node x is a proper ancestor of node y, by the parent table.
    bool above(int x, int y) const {
        for (int n = parent[y]; n >= 0; n = parent[n]) {
            if (n == x)
                return true;
        }
        return false;
    }
};

} // namespace

TEST_F(Queries, AncestryOrderAndCountsMatchTheParentTable) {
    const int n = static_cast<int>(nodes.size());
    for (int i = 0; i < n; ++i) {
        const ZtNode* x = nodes[static_cast<size_t>(i)];
        int depth = 0, children = 0, before = 0, after = 0;
        for (int k = 0; k < n; ++k) {
            depth += above(k, i) ? 1 : 0;
            children += parent[k] == i ? 1 : 0;
            bool sibling = k != i && parent[k] == parent[i];
            (k < i ? before : after) += sibling ? 1 : 0;
        }
        EXPECT_EQ(x->getNodeDepth(), depth) << label(x);
        EXPECT_EQ(x->getChildNodeCount(), children) << label(x);
        EXPECT_EQ(x->countPrecedingSiblings(), before) << label(x);
        EXPECT_EQ(x->countFollowingSiblings(), after) << label(x);
        for (int j = 0; j < n; ++j) {
            const ZtNode* y = nodes[static_cast<size_t>(j)];
            SCOPED_TRACE(label(x) + " and " + label(y));
            EXPECT_EQ(x->isDescendantOf(y), above(j, i));
            EXPECT_EQ(x->isDescendantOrSelfOf(y), i == j || above(j, i));
            // Preceding: later in document order and not inside.
            EXPECT_EQ(x->isPrecedingOf(y), j > i && !above(i, j));
            EXPECT_EQ(y->isFollowingOf(x), j > i && !above(i, j));
            EXPECT_EQ(x->getPreviousOrSelfNodeCount(y), i == j || above(j, i) ? i - j + 1 : 0);
            // The deepest common ancestor comes last in document order.
            int common = -1, commonOrSelf = -1;
            for (int k = 0; k < n; ++k) {
                if (above(k, i) && above(k, j))
                    common = k;
                if ((k == i || above(k, i)) && (k == j || above(k, j)))
                    commonOrSelf = k;
            }
            EXPECT_EQ(x->getCommonAncestor(y),
                      common < 0 ? nullptr : nodes[static_cast<size_t>(common)]);
            EXPECT_EQ(x->getCommonAncestorOrSelf(y), nodes[static_cast<size_t>(commonOrSelf)]);
        }
    }
    ZtPtr<ZtElement> loose = doc->createElement(name("loose"));
    EXPECT_EQ(d->getCommonAncestorOrSelf(loose), nullptr);
    EXPECT_FALSE(d->isDescendantOf(nullptr));
    EXPECT_FALSE(b->isPrecedingOf(nullptr));
}

TEST_F(Queries, SearchesByNameAndType) {
    build(a, "b #t b"); // a(b c b #t b)
    ZtNode* second = a->getChildNodeByName(name("b"), b);
    EXPECT_EQ(a->getChildNodeByName(name("b")), b);
    EXPECT_EQ(second->getPreviousSibling(), c);
    ZtNode* third = a->getChildNodeByName(name("b"), second);
    EXPECT_EQ(third, a->getLastChild());
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
    ZtNode* q = d->appendChild(doc->createElementNS(ns, name("p"), name("q")));
    q->appendChild(doc->createElement(name("leaf")));
    EXPECT_EQ(d->getChildNodeByNameNS(ns, name("q")), q);
    EXPECT_EQ(d->getChildNodeByNameNS(ZtName(), name("q")), nullptr);
    EXPECT_EQ(q->getFirstChild()->getAncestorByNameNS(ns, name("q")), q);
    EXPECT_EQ(d->getChildNodeByName(name("p:q")), q);
}

TEST_F(Queries, FlagsAndComplementalParents) {
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
