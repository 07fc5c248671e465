// Attributes and the attribute map: order, replacement, every error of the map with its exact
// wording and source, the map unchanged after each failed call, and maps that outlive their
// element.
#include <vector>

#include "dom_test_util.h"

using namespace domtest;

namespace {

struct Attributes : ::testing::Test {
    ZtPtr<ZtDocument> doc = newDocument();
    ZtPtr<ZtElement> e = doc->createElement(name("e"));

    // The attributes in map order as "name=value".
    static std::string list(const ZtElement* element) {
        std::string out;
        ZtNamedNodeMap* map = element->getAttributes();
        for (ZtNode* n = map->firstNode(); n; n = map->nextNode(n))
            out += (out.empty() ? "" : " ") + label(n) + "=" + utf8(n->getText());
        return out;
    }
};

// An attribute class that claims another node type.
class NotReallyAnAttr : public ZtAttr {
public:
    explicit NotReallyAnAttr(ZtDocument* doc) : ZtAttr(doc) {}
    ZtName getLocalName() const override { return ZtName(NM_id); }
    ZtNodeType getNodeType() const override { return TEXT_NODE; }
    ZtValue getValue() const override { return ZtValue(); }
    void setValue(const ZtValue&) override {}
};

} // namespace

TEST_F(Attributes, AnElementWithoutAttributes) {
    ZtNamedNodeMap* map = e->getAttributes();
    EXPECT_FALSE(e->hasAttributes());
    EXPECT_EQ(map->getLength(), 0);
    EXPECT_EQ(map->firstNode(), nullptr);
    EXPECT_EQ(map->lastNode(), nullptr);
    EXPECT_EQ(map->item(0), nullptr);
    EXPECT_TRUE(e->getAttribute(name("x")).isNull());
    EXPECT_EQ(map->getTypeName(), UnicodeString(u"AttrNodeMap"));
    EXPECT_TRUE(map->isA(ZtNodeIterable::getStaticTypeID()));
    EXPECT_FALSE(map->isA(ZtNodeList::getStaticTypeID())); // its chain skips the list class
    EXPECT_EQ(map->getTypeID(), 0xDE19E4A4u);
}

TEST_F(Attributes, SettingKeepsInsertionOrderAndReplacesInPlace) {
    e->setAttribute(name("a"), ZtValue(1));
    e->setAttribute(name("b"), ZtValue(u"two"));
    e->setAttribute(name("c"), ZtValue(ZtName(NM_auto)));
    ZtAttr* b = e->getAttributeNode(name("b"));
    e->setAttribute(name("b"), ZtValue(22)); // the same attribute node gets the new value
    EXPECT_EQ(e->getAttributeNode(name("b")), b);
    EXPECT_EQ(list(e), "a=1 b=22 c=auto");

    // A new node of an existing name takes the old node's place; the old one comes back.
    for (const char* replaced : {"a", "b", "c"}) {
        ZtPtr<ZtAttr> fresh = doc->createAttribute(name(replaced));
        fresh->setValue(ZtValue(u"new"));
        ZtAttr* before = e->getAttributeNode(name(replaced));
        ZtPtr<ZtAttr> old = e->setAttributeNode(fresh);
        EXPECT_EQ(old.get(), before);
        EXPECT_EQ(old->getRefCount(), 1); // the map's reference, handed over
        EXPECT_EQ(old->getOwnerElement(), nullptr);
        EXPECT_EQ(old->getNextSibling(), nullptr);
        EXPECT_EQ(fresh->getOwnerElement(), e.get());
        EXPECT_EQ(fresh->getRefCount(), 2);
    }
    EXPECT_EQ(list(e), "a=new b=new c=new");
    ZtNamedNodeMap* map = e->getAttributes();
    EXPECT_EQ(map->lastNode(), e->getAttributeNode(name("c"))); // the map's link moved
    EXPECT_EQ(map->getLength(), 3);
    EXPECT_EQ(label(map->item(1)), "b");
    EXPECT_EQ(map->item(3), nullptr);
    EXPECT_EQ(map->previousNode(map->lastNode()), map->item(1));
    EXPECT_EQ(map->previousNode(map->firstNode()), nullptr);
    ZtNodeIterator it = map->getIterator();
    EXPECT_EQ(label(it.nextNode()), "a");
    it.setToEnd();
    EXPECT_EQ(label(it.previousNode()), "c");
}

TEST_F(Attributes, RemovingAttributes) {
    for (const char* n : {"a", "b", "c"})
        e->setAttribute(name(n), ZtValue(n[0] - 'a' + 1));
    e->removeAttribute(name("b"));
    e->removeAttribute(name("zz")); // nothing to remove
    EXPECT_EQ(list(e), "a=1 c=3");
    ZtNamedNodeMap* map = e->getAttributes();
    EXPECT_EQ(map->removeNamedItem(name("zz")), nullptr);
    ZtPtr<ZtAttr> c = map->removeNamedItem(name("c")); // the last one
    EXPECT_EQ(c->getRefCount(), 1);
    EXPECT_EQ(c->getOwnerElement(), nullptr);
    EXPECT_EQ(map->lastNode(), map->firstNode());
    ZtPtr<ZtAttr> a = e->removeAttributeNode(e->getAttributeNode(name("a")));
    EXPECT_EQ(utf8(a->getText()), "1");
    EXPECT_FALSE(e->hasAttributes());
    EXPECT_EQ(map->firstNode(), nullptr);
    e->setAttributeNode(a); // a detached attribute can be attached again
    EXPECT_EQ(list(e), "a=1");
}

TEST_F(Attributes, MapErrorsWithWordingAndSourceChangeNothing) {
    e->setAttribute(name("a"), ZtValue(1));
    ZtNamedNodeMap* map = e->getAttributes();
    ZtPtr<ZtElement> other = doc->createElement(name("other"));
    other->setAttribute(name("b"), ZtValue(2));
    ZtAttr* attached = other->getAttributeNode(name("b"));
    ZtPtr<ZtDocument> doc2 = newDocument();
    ZtPtr<ZtAttr> stranger = doc2->createAttribute(name("s"));
    ZtPtr<ZtAttr> liar(new NotReallyAnAttr(doc));
    const std::string set = "AttrNodeMap::setNamedItem", setNS = "AttrNodeMap::setNamedItemNS",
                      remove = "ZtElement::removeAttributeNode";
    const char* foreign = "arg is created from a different document.";
    const char* notAttr = "arg is not an ZtAttr object.";
    const char* inUse =
        "arg is an ZtAttr that is already an attribute of another ZtElement object.";
    const char* notHere = "oldAttr is not a child of this node.";
    const ErrorCase cases[] = {
        {3, "arg is null.", set, [&] { map->setNamedItem(nullptr); }},
        {3, "arg is null.", setNS, [&] { map->setNamedItemNS(nullptr); }},
        {6, foreign, set, [&] { map->setNamedItem(stranger); }},
        {6, foreign, setNS, [&] { e->setAttributeNodeNS(stranger); }},
        {7, notAttr, set, [&] { map->setNamedItem(liar); }},
        {7, notAttr, setNS, [&] { map->setNamedItemNS(liar); }},
        {8, inUse, set, [&] { map->setNamedItem(attached); }},
        {8, inUse, setNS, [&] { e->setAttributeNodeNS(attached); }},
        // Even an attribute already on this very element.
        {8, inUse, set, [&] { e->setAttributeNode(e->getAttributeNode(name("a"))); }},
        {3, "oldAttr is null.", remove, [&] { e->removeAttributeNode(nullptr); }},
        {9, notHere, remove, [&] { e->removeAttributeNode(attached); }},
        {9, notHere, remove, [&] { e->removeAttributeNode(stranger); }},
    };
    for (const ErrorCase& k : cases) {
        expectError(k.call, k.code, k.message, k.source);
        EXPECT_EQ(list(e), "a=1");
        EXPECT_EQ(list(other), "b=2");
        EXPECT_EQ(attached->getOwnerElement(), other.get());
        EXPECT_EQ(stranger->getOwnerElement(), nullptr);
        for (const ZtNode* n : Nodes{e->getAttributeNode(name("a")), attached, stranger, liar})
            EXPECT_EQ(n->getRefCount(), 1);
    }
}

TEST_F(Attributes, NamespaceQualifiedAttributes) {
    ZtName ns1 = name("urn:1"), ns2 = name("urn:2");
    e->setAttributeNS(ns1, name("p"), name("x"), ZtValue(1));
    e->setAttributeNS(ns2, name("q:x"), ZtValue(2));
    e->setAttribute(name("x"), ZtValue(3));
    EXPECT_EQ(list(e), "p:x=1 q:x=2 x=3");
    EXPECT_EQ(e->getAttributeNS(ns2, name("x")).getIntegerValue(), 2);
    EXPECT_EQ(e->getAttribute(name("p:x")).getIntegerValue(), 1);
    EXPECT_TRUE(e->hasAttributeNS(ns1, name("x")));
    EXPECT_FALSE(e->hasAttributeNS(ns1, name("p:x")));
    EXPECT_TRUE(e->hasAttributeLocal(name("x")));
    EXPECT_FALSE(e->hasAttributeLocal(name("y")));
    // Every attribute of a local name, whatever its namespace, in order.
    std::vector<ZtPtr<ZtAttr>> nodes;
    std::vector<ZtValue> values;
    std::vector<ZtAttr*> raw;
    EXPECT_EQ(e->getAttributeNodeLocal(name("x"), &nodes), 3);
    EXPECT_EQ(e->getAttributeLocal(name("x"), &values), 3);
    EXPECT_EQ(e->getAttributes()->getNamedItemsLocal(name("x"), &raw), 3);
    ASSERT_EQ(nodes.size() + values.size() + raw.size(), 9u);
    EXPECT_EQ(nodes[1]->getNamespaceUri(), ns2);
    EXPECT_EQ(nodes[1]->getRefCount(), 2);
    EXPECT_EQ(values[2].getIntegerValue(), 3);
    EXPECT_EQ(raw[0], e->getAttributeNodeNS(ns1, name("x")));
    // setAttributeNS on an existing (uri, local) changes the value in place.
    e->setAttributeNS(ns1, name("other"), name("x"), ZtValue(11));
    EXPECT_EQ(list(e), "p:x=11 q:x=2 x=3");
    // setNamedItemNS replaces by namespace and local name, whatever the prefix.
    ZtPtr<ZtAttr> old = e->setAttributeNodeNS(doc->createAttributeNS(ns2, name("r"), name("x")));
    EXPECT_EQ(label(old), "q:x");
    EXPECT_EQ(list(e), "p:x=11 r:x= x=3");
    e->removeAttributeNS(ns1, name("x"));
    EXPECT_EQ(list(e), "r:x= x=3");
    EXPECT_EQ(e->getAttributes()->removeNamedItemNS(ns1, name("x")), nullptr);
}

TEST_F(Attributes, TheFactoryPicksClassAndNamespaceFromTheName) {
    // Qualified name, class, prefix, local name, namespace URI. Any other prefix than the
    // predefined ones: no namespace until declarations in scope give one.
    const char* const cases[][5] = {
        {"width", "ZtAttr", "", "width", ""},
        {"xml:lang", "AttrNS", "xml", "lang", "http://www.w3.org/XML/1998/namespace"},
        {"xmlns", "AttrNS", "", "xmlns", "http://www.w3.org/2000/xmlns/"},
        {"xmlns:fo", "AttrNS", "xmlns", "fo", "http://www.w3.org/2000/xmlns/"},
        {"xlink:href", "AttrNS", "xlink", "href", "http://www.w3.org/1999/xlink"},
        {"my:attr", "AttrNS", "my", "attr", ""}};
    for (const auto& k : cases) {
        ZtPtr<ZtAttr> a = doc->createAttribute(name(k[0]));
        SCOPED_TRACE(k[0]);
        EXPECT_EQ(label(a), k[0]);
        EXPECT_EQ(utf8(a->getTypeName()), k[1]);
        EXPECT_EQ(utf8(a->getPrefix().getNameString()), k[2]);
        EXPECT_EQ(utf8(a->getLocalName().getNameString()), k[3]);
        EXPECT_EQ(utf8(a->getNamespaceUri().getNameString()), k[4]);
        EXPECT_EQ(a->getNodeType(), ZtNode::ATTRIBUTE_NODE);
        EXPECT_TRUE(a->getValue().isNull());
    }
    ZtPtr<ZtAttr> plain = doc->createAttribute(name("width"));
    plain->setPrefix(name("ignored"));
    EXPECT_TRUE(plain->getPrefix().isEmpty());
    ZtPtr<ZtAttr> mine = doc->createAttribute(name("my:attr"));
    e->setAttributeXMLNS(name("my"), name("urn:my"));
    e->setAttributeNode(mine);
    EXPECT_EQ(mine->getNamespaceUri(), name("urn:my"));
    ZtPtr<ZtAttr> ns = doc->createAttributeNS(name("urn:n"), name("n:v"));
    EXPECT_EQ(ns->getPrefix(), name("n"));
    EXPECT_EQ(ns->getLocalName(), name("v"));
    EXPECT_EQ(ns->getNamespaceUri(), name("urn:n"));
}

TEST_F(Attributes, ValuesAndText) {
    e->setAttribute(name("size"), ZtValue(12, ZT_UNIT_PT));
    ZtAttr* size = e->getAttributeNode(name("size"));
    EXPECT_EQ(utf8(size->getText()), "12pt");
    size->setText(u"1em");
    EXPECT_TRUE(size->getValue().isString());
    EXPECT_EQ(utf8(e->getAttribute(name("size")).getStringValue()), "1em");
    size->setNodeValue(ZtValue(ZtName(NM_auto)));
    EXPECT_EQ(e->getAttribute(name("size")).getNameValue(), ZtName(NM_auto));

    // The loader's entry keeps the text exactly; keywords and declarations become names.
    for (const char* text : {" x1 ", "Center", ""}) {
        e->setAttributeEx(ZtName(), ZtName(), name("t"), UnicodeString::fromUTF8(text));
        EXPECT_TRUE(e->getAttribute(name("t")).isString());
        EXPECT_EQ(utf8(e->getAttribute(name("t")).getStringValue()), text);
    }
    e->setAttributeEx(ZtName(), ZtName(), ZtName(NM_text_align), u"center");
    ZtValue align = e->getAttribute(ZtName(NM_text_align));
    EXPECT_EQ(align.getNameValue(), ZtName(NM_center));
    EXPECT_EQ(utf8(align.getStringValue()), "center");
    e->setAttributeEx(ZtName(NM_NS_XMLNS), ZtName(NM_xmlns), ZtName(NM_fo),
                      UnicodeString(u"http://www.w3.org/1999/XSL/Format"));
    EXPECT_EQ(e->getAttributeNS(ZtName(NM_NS_XMLNS), ZtName(NM_fo)).getNameValue(),
              ZtName(NM_NS_XSL_FO));
    EXPECT_EQ(e->getAttributeXMLNS(ZtName(NM_fo)), ZtName(NM_NS_XSL_FO));

    // Text nodes take the text form of any value.
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"abc");
    EXPECT_EQ(utf8(text->getNodeValue().getStringValue()), "abc");
    text->setNodeValue(ZtValue(50, ZT_UNIT_PERCENT));
    EXPECT_EQ(utf8(text->getData()), "50%");
}

TEST_F(Attributes, NamespaceDeclarationsOnTheElement) {
    e->setAttributeXMLNS(ZtName(), name("urn:default"));
    e->setAttributeXMLNS(name("p"), name("urn:p"));
    EXPECT_EQ(e->getAttributeXMLNS(ZtName()), name("urn:default"));
    EXPECT_TRUE(e->getAttributeXMLNS(name("q")).isEmpty());
    e->setAttributeXMLNS(name("p"), name("urn:p2"));
    EXPECT_EQ(list(e), "xmlns=urn:default xmlns:p=urn:p2");
    e->removeAttributeXMLNS(ZtName());
    EXPECT_EQ(list(e), "xmlns:p=urn:p2");
    EXPECT_TRUE(e->getAttributeXMLNS(ZtName()).isEmpty());
}

TEST_F(Attributes, CopiesCarryAttributesAndSubtrees) {
    ZtPtr<ZtElement> ns = doc->createElementNS(name("urn:x"), name("x"), name("e"));
    ns->setAttribute(name("a"), ZtValue(u"one"));
    ns->setAttributeNS(name("urn:y"), name("y:b"), ZtValue(2));
    ns->setSourceLineNumber(7);
    build(ns, "c(#t) d(#x y(#z))");
    static_cast<ZtElement*>(ns->getFirstChild())->setAttribute(name("inner"), ZtValue(3));
    for (bool deep : {true, false}) {
        ZtPtr<ZtElement> copy;
        copy = ns->cloneNode(deep);
        EXPECT_EQ(copy->getTypeName(), UnicodeString(u"ElementNS"));
        EXPECT_EQ(copy->getNamespaceUri(), name("urn:x"));
        EXPECT_EQ(copy->getSourceLineNumber(), 7);
        EXPECT_EQ(copy->getRefCount(), 1);
        EXPECT_EQ(copy->getParentNode(), nullptr);
        EXPECT_EQ(list(copy), "a=one y:b=2");
        EXPECT_EQ(copy->getAttributeNS(name("urn:y"), name("b")).getIntegerValue(), 2);
        ZtAttr* copiedA = copy->getAttributeNode(name("a"));
        EXPECT_EQ(copiedA->getOwnerElement(), copy.get());
        copiedA->setValue(ZtValue(u"changed"));
        EXPECT_EQ(list(ns), "a=one y:b=2");
        EXPECT_EQ(describe(copy), deep ? "c(#t) d(#x y(#z))" : "");
        if (deep) {
            expectLinksConsistent(copy->getLastChild());
            EXPECT_EQ(list(static_cast<ZtElement*>(copy->getFirstChild())), "inner=3");
            copy->getFirstChild()->appendChild(doc->createElement(name("new")));
            EXPECT_EQ(describe(ns), "c(#t) d(#x y(#z))"); // the copy is independent
        }
    }
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"abc");
    text->bidiDone(2);
    ZtPtr<ZtNode> textCopy = text->cloneNode(false);
    EXPECT_EQ(label(textCopy), "#abc");
    EXPECT_TRUE(textCopy->isBidiDone());
    EXPECT_EQ(textCopy->getRefCount(), 1);
}

TEST_F(Attributes, AMapOutlivingItsElement) {
    e->setAttribute(name("a"), ZtValue(1));
    e->setAttribute(name("b"), ZtValue(2));
    ZtPtr<ZtNamedNodeMap> map(e->getAttributes());
    ZtPtr<ZtAttr> a(map->getNamedItem(name("a")));
    e = nullptr;
    EXPECT_EQ(a->getOwnerElement(), nullptr); // no link to a dead element
    EXPECT_EQ(map->getLength(), 2);
    EXPECT_EQ(map->getNamedItem(name("b"))->getText(), UnicodeString(u"2"));
    ZtPtr<ZtAttr> c = doc->createAttribute(name("c"));
    EXPECT_EQ(caught([&] { map->setNamedItem(c); }).getErrorCode(), 6);
    ZtPtr<ZtAttr> b = map->removeNamedItem(name("b"));
    EXPECT_EQ(map->getLength(), 1);
    EXPECT_EQ(b->getRefCount(), 1);
    map = nullptr;
    EXPECT_EQ(a->getRefCount(), 1);
    EXPECT_EQ(a->getNextSibling(), nullptr);

    // And an empty map outliving its element.
    ZtPtr<ZtElement> f = doc->createElement(name("f"));
    ZtPtr<ZtNamedNodeMap> empty(f->getAttributes());
    f = nullptr;
    EXPECT_EQ(empty->getLength(), 0);
    EXPECT_EQ(empty->firstNode(), nullptr);
}
