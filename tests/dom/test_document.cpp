// The document: factory results, the document element, URIs, the loader's state, and the lazy
// accessors driven by a document whose loadNextNode delivers nodes one at a time.
#include <deque>
#include <tuple>
#include <utility>

#include "dom_test_util.h"

using namespace domtest;

namespace {

// A document fed from a script of (parent, node) pairs; each loadNextNode appends the next
// node, and an entry with a null node marks its parent as loaded.
class ScriptedDocument : public ZtDocument {
public:
    std::deque<std::pair<ZtNode*, ZtPtr<ZtNode>>> script;
    int calls = 0;

    ZtNode* loadNextNode() override {
        ++calls;
        while (!script.empty()) {
            auto [parent, node] = std::move(script.front());
            script.pop_front();
            if (!node) {
                parent->setLoadDone();
                continue;
            }
            node->setFlag(ZtNode::FLAG_LOADING, node->isElementNode());
            return parent->appendChild(node);
        }
        return nullptr;
    }
};

} // namespace

TEST(Document, FactoryResultsByKind) {
    ZtPtr<ZtDocument> doc = newDocument();
    EXPECT_EQ(doc->getRefCount(), 1);
    ZtPtr<ZtElement> e = doc->createElement(name("a:b"));
    ZtPtr<ZtElement> ns = doc->createElementNS(name("urn:x"), name("p"), name("l"));
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"abc");
    ZtPtr<ZtProcessingInstruction> pi = doc->createProcessingInstruction(name("target"), u"x=1");
    ZtPtr<ZtDocumentFragment> fragment = doc->createDocumentFragment();
    ZtPtr<ZtAttr> attr = doc->createAttribute(name("x"));
    ZtPtr<ZtNode> viaHook = doc->createTextNodeElement(u"hook", e);
    const std::tuple<const ZtNode*, ZtNode::ZtNodeType, const char*, const char*> cases[] = {
        {e, ZtNode::ELEMENT_NODE, "a:b", "Element"},
        {ns, ZtNode::ELEMENT_NODE, "p:l", "ElementNS"},
        {text, ZtNode::TEXT_NODE, "#text", "ZtTextNode"},
        {viaHook, ZtNode::TEXT_NODE, "#text", "ZtTextNode"},
        {pi, ZtNode::PROCESSING_INSTRUCTION_NODE, "target", "ZtProcessingInstruction"},
        {fragment, ZtNode::DOCUMENT_FRAGMENT_NODE, "#document-fragment", "ZtDocumentFragment"},
        {attr, ZtNode::ATTRIBUTE_NODE, "x", "ZtAttr"},
        {doc, ZtNode::DOCUMENT_NODE, "#document", "ZtDocument"}};
    for (const auto& [node, type, nodeName, typeName] : cases) {
        SCOPED_TRACE(typeName);
        EXPECT_EQ(node->getNodeType(), type);
        EXPECT_EQ(utf8(node->getNodeName().getNameString()), nodeName);
        EXPECT_EQ(utf8(node->getTypeName()), typeName);
        EXPECT_EQ(node->isElementNode(), type == ZtNode::ELEMENT_NODE);
        EXPECT_EQ(node->isText(), type == ZtNode::TEXT_NODE);
        EXPECT_EQ(node->isProcessingInstruction(), type == ZtNode::PROCESSING_INSTRUCTION_NODE);
        EXPECT_TRUE(node->isA(ZtNode::getStaticTypeID()));
        EXPECT_EQ(node->getRefCount(), 1);
        EXPECT_EQ(node->getOwnerDocument(), doc.get());
        EXPECT_EQ(node->getParentNode(), nullptr);
        EXPECT_FALSE(node->hasChildNodes());
    }
    EXPECT_EQ(viaHook->getText(), UnicodeString(u"hook"));
    EXPECT_EQ(pi->getText(), UnicodeString(u"x=1"));
    EXPECT_EQ(text->getLength(), 3);
    EXPECT_FALSE(text->isBidiDone());
    text->bidiDone(0);
    EXPECT_TRUE(text->isBidiDone());
    EXPECT_TRUE(e->isA(0x9B60777Du));
    EXPECT_FALSE(e->isA(ZtTextNode::getStaticTypeID()));
    EXPECT_EQ(fragment->cloneNode(true), nullptr);
    EXPECT_EQ(doc->cloneNode(true), nullptr);
}

TEST(Document, TheDocumentElementIsTheFirstElementChild) {
    ZtPtr<ZtDocument> doc = newDocument();
    EXPECT_EQ(doc->getDocumentElement(), nullptr);
    doc->appendChild(doc->createProcessingInstruction(name("xml-stylesheet"), u"href='a'"));
    doc->appendChild(doc->createProcessingInstruction(name("other"), u""));
    EXPECT_EQ(doc->getDocumentElement(), nullptr);
    ZtPtr<ZtElement> root = doc->createElement(name("root"));
    doc->appendChild(root);
    doc->appendChild(doc->createElement(name("second")));
    EXPECT_EQ(doc->getDocumentElement(), root.get());
    EXPECT_EQ(root->getParentNode(), doc.get()); // a document takes its own nodes
    expectLinksConsistent(doc);
}

TEST(Document, BaseAndDocumentUris) {
    ZtPtr<ZtDocument> doc = newDocument();
    EXPECT_FALSE(doc->isBaseUriSpecified());
    EXPECT_TRUE(doc->getBaseUri().isEmpty());
    EXPECT_TRUE(doc->getDocumentUri().isEmpty());
    doc->setBaseUri(u"file:///base/doc.xml");
    EXPECT_TRUE(doc->isBaseUriSpecified());
    EXPECT_EQ(doc->getDocumentUri(), UnicodeString(u"file:///base/doc.xml"));
    // Nodes ask their parents, up to the document.
    ZtPtr<ZtElement> e = doc->createElement(name("e"));
    doc->appendChild(e);
    EXPECT_EQ(e->appendChildText(u"t")->getBaseUri(), UnicodeString(u"file:///base/doc.xml"));
    EXPECT_TRUE(doc->createElement(name("loose"))->getBaseUri().isEmpty());
}

TEST(Document, LoaderStateWithoutALoad) {
    ZtPtr<ZtDocument> doc = newDocument();
    EXPECT_FALSE(doc->getPullMode());
    EXPECT_EQ(doc->getLastLoadingNode(), nullptr);
    EXPECT_FALSE(doc->hasXInclude());
    EXPECT_EQ(doc->loadNextNode(), nullptr);
    doc->abort();
    EXPECT_EQ(doc->loadNextNode(), nullptr);
    doc->closeDocumentElement();
    // A node flagged as loading asks the document, which has nothing to give.
    ZtPtr<ZtElement> e = doc->createElement(name("e"));
    e->setFlag(ZtNode::FLAG_LOADING, true);
    EXPECT_FALSE(e->hasChildNodes());
    EXPECT_EQ(e->getLastChild(), nullptr);
}

TEST(Document, LazyAccessorsLoadAsTheyAreDefined) {
    auto* raw = new ScriptedDocument;
    ZtPtr<ZtDocument> doc(raw);
    ZtPtr<ZtElement> root = doc->createElement(name("root"));
    doc->appendChild(root);
    root->setFlag(ZtNode::FLAG_LOADING, true);
    ZtPtr<ZtElement> a = doc->createElement(name("a"));
    ZtPtr<ZtElement> b = doc->createElement(name("b"));
    raw->script.emplace_back(root.get(), a);
    raw->script.emplace_back(a.get(), doc->createTextNode(u"in a"));
    raw->script.emplace_back(a.get(), nullptr); // end of a
    raw->script.emplace_back(root.get(), b);
    raw->script.emplace_back(b.get(), nullptr);
    raw->script.emplace_back(root.get(), nullptr); // end of root

    // The fast accessors never load.
    EXPECT_FALSE(root->hasChildNodesFast());
    EXPECT_EQ(raw->calls, 0);
    // getFirstChild loads once when there is no child yet.
    EXPECT_EQ(root->getFirstChild(), a.get());
    EXPECT_EQ(raw->calls, 1);
    EXPECT_EQ(root->getFirstChild(), a.get()); // children present: no more loading
    EXPECT_EQ(raw->calls, 1);
    // The next sibling of a last child: a is finished first, then the parent once.
    EXPECT_EQ(a->getNextSibling(), b.get());
    EXPECT_EQ(describe(a), "#in a");
    EXPECT_TRUE(a->isLoaded());
    EXPECT_FALSE(a->isLoading());
    // (The parent's one call also met the ends of b and of root.)
    EXPECT_FALSE(root->isLoading());
    EXPECT_TRUE(raw->script.empty());
    EXPECT_EQ(b->getNextSibling(), nullptr);
    EXPECT_EQ(describe(root), "a(#in a) b");

    // getLastChild loads for as long as the node is loading and nodes come.
    ZtPtr<ZtElement> d = doc->createElement(name("d"));
    d->setFlag(ZtNode::FLAG_LOADING, true);
    raw->script.emplace_back(d.get(), doc->createElement(name("x")));
    raw->script.emplace_back(d.get(), doc->createElement(name("y")));
    raw->script.emplace_back(d.get(), nullptr);
    raw->script.emplace_back(root.get(), doc->createElement(name("after")));
    int before = raw->calls;
    EXPECT_EQ(label(d->getLastChild()), "y");
    EXPECT_EQ(raw->calls - before, 3); // x, y, then the end of d (which also built "after")
    EXPECT_FALSE(d->isLoading());
    EXPECT_EQ(describe(root), "a(#in a) b after");
    raw->script.clear();

    // hasChildNodes loads once, and a live list sees what arrives.
    ZtPtr<ZtElement> c = doc->createElement(name("c"));
    c->setFlag(ZtNode::FLAG_LOADING, true);
    raw->script.emplace_back(c.get(), doc->createTextNode(u"1"));
    raw->script.emplace_back(c.get(), doc->createTextNode(u"2"));
    raw->script.emplace_back(c.get(), nullptr);
    ZtPtr<ZtNodeList> list = c->getChildNodes();
    EXPECT_TRUE(c->hasChildNodes());
    EXPECT_EQ(c->getChildNodeCount(), 1 + 1); // counting walks to the end, loading the rest
    EXPECT_EQ(list->getLength(), 2);
    EXPECT_FALSE(c->isLoading());
}
