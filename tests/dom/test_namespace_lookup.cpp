// Namespace look-ups through declarations on the node and its ancestors, for every node kind.
#include "dom_test_util.h"

using namespace domtest;

namespace {

struct Lookup : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtName uriP = name("urn:p"), uriQ = name("urn:q"), uriD = name("urn:default");
    ZtElement *top = nullptr, *middle = nullptr, *bottom = nullptr;

    // <top xmlns="urn:default" xmlns:p="urn:p"><middle xmlns:q="urn:q"><p:bottom/>...
    void SetUp() override {
        build(doc, "top(middle(p:bottom))");
        top = static_cast<ZtElement*>(doc->getFirstChild());
        middle = static_cast<ZtElement*>(top->getFirstChild());
        bottom = static_cast<ZtElement*>(middle->getFirstChild());
        top->setAttributeXMLNS(ZtName(), uriD);
        top->setAttributeXMLNS(name("p"), uriP);
        middle->setAttributeXMLNS(name("q"), uriQ);
    }
};

} // namespace

TEST_F(Lookup, PlainElementsFindTheirNamespaceFromDeclarations) {
    EXPECT_EQ(bottom->getNamespaceUri(), uriP); // declared on the grandparent
    EXPECT_EQ(middle->getNamespaceUri(), uriD); // the default namespace
    EXPECT_EQ(bottom->lookupNamespaceUri(name("q")), uriQ);
    EXPECT_EQ(bottom->lookupNamespaceUri(ZtName()), uriD);
    EXPECT_TRUE(bottom->lookupNamespaceUri(name("zz")).isEmpty());
    EXPECT_TRUE(top->lookupNamespaceUri(name("q")).isEmpty()); // declared below, not above
    // Without a declaration a prefixed plain element has no namespace.
    ZtPtr<ZtElement> loose = doc->createElement(name("p:loose"));
    EXPECT_TRUE(loose->getNamespaceUri().isEmpty());
    middle->appendChild(loose);
    EXPECT_EQ(loose->getNamespaceUri(), uriP);
    // A nearer declaration wins.
    middle->setAttributeXMLNS(name("p"), name("urn:p-inner"));
    EXPECT_EQ(bottom->getNamespaceUri(), name("urn:p-inner"));
    // An empty default declaration undeclares the default namespace below it.
    middle->setAttributeXMLNS(ZtName(), ZtName());
    EXPECT_TRUE(bottom->lookupNamespaceUri(ZtName()).isEmpty());
    EXPECT_TRUE(middle->getNamespaceUri().isEmpty());
}

TEST_F(Lookup, ElementsWithTheirOwnNamespaceAnswerFirst) {
    ZtPtr<ZtElement> ns = doc->createElementNS(name("urn:own"), name("p"), name("x"));
    middle->appendChild(ns);
    EXPECT_EQ(ns->lookupNamespaceUri(name("p")), name("urn:own"));
    EXPECT_EQ(ns->getNamespaceUri(), name("urn:own"));
    EXPECT_EQ(ns->lookupPrefix(name("urn:own")), name("p"));
    ZtPtr<ZtElement> child = doc->createElement(name("p:child"));
    ns->appendChild(child);
    EXPECT_EQ(child->getNamespaceUri(), name("urn:own"));
    // An element in no namespace passes the question up.
    ZtPtr<ZtElement> none = doc->createElementNS(ZtName(), ZtName(), name("none"));
    middle->appendChild(none);
    EXPECT_EQ(none->lookupNamespaceUri(ZtName()), uriD);
}

TEST_F(Lookup, EveryKindOfNodeAsks) {
    ZtNode* text = bottom->appendChildText(u"t");
    EXPECT_EQ(text->lookupNamespaceUri(name("q")), uriQ);
    ZtPtr<ZtProcessingInstruction> pi = doc->createProcessingInstruction(name("pi"), u"");
    bottom->appendChild(pi);
    EXPECT_EQ(pi->lookupNamespaceUri(name("p")), uriP);
    EXPECT_EQ(doc->lookupNamespaceUri(name("p")), uriP); // through the document element
    bottom->setAttribute(name("attr"), ZtValue(1));
    ZtAttr* attr = bottom->getAttributeNode(name("attr"));
    EXPECT_EQ(attr->lookupNamespaceUri(name("q")), uriQ);
    ZtPtr<ZtAttr> detached = doc->createAttribute(name("d"));
    EXPECT_TRUE(detached->lookupNamespaceUri(name("q")).isEmpty());
    ZtPtr<ZtDocumentFragment> fragment = doc->createDocumentFragment();
    ZtPtr<ZtElement> inFragment = doc->createElement(name("x"));
    fragment->appendChild(inFragment);
    EXPECT_TRUE(fragment->lookupNamespaceUri(name("p")).isEmpty());
    ZtPtr<ZtTextNode> loose = doc->createTextNode(u"loose");
    EXPECT_TRUE(loose->lookupNamespaceUri(name("p")).isEmpty());
    // The document element's parent is the document: the walk stops there.
    ZtPtr<ZtDocument> empty = newDocument();
    EXPECT_TRUE(empty->lookupNamespaceUri(name("p")).isEmpty());
}

TEST_F(Lookup, PrefixesAndTheDefaultNamespace) {
    EXPECT_EQ(bottom->lookupPrefix(uriQ), name("q"));
    EXPECT_EQ(bottom->lookupPrefix(uriP), name("p"));
    EXPECT_TRUE(bottom->lookupPrefix(uriD).isEmpty()); // the default has no prefix
    EXPECT_TRUE(bottom->lookupPrefix(ZtName()).isEmpty());
    EXPECT_EQ(doc->lookupPrefix(uriP), name("p"));
    EXPECT_TRUE(bottom->isDefaultNamespace(uriD));
    EXPECT_FALSE(bottom->isDefaultNamespace(uriP));
    ZtNode* text = middle->appendChildText(u"t");
    EXPECT_TRUE(text->isDefaultNamespace(uriD));
    EXPECT_EQ(text->lookupPrefix(uriQ), name("q"));
}

TEST_F(Lookup, DeepTreesAreWalkedWithoutRecursion) {
    ZtNode* tip = bottom;
    for (int i = 0; i < 100000; ++i)
        tip = tip->appendChild(doc->createElement(name("deep")));
    EXPECT_EQ(tip->lookupNamespaceUri(name("p")), uriP);
    EXPECT_EQ(tip->lookupPrefix(uriP), name("p"));
}
