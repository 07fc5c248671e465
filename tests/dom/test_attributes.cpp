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
        for (ZtNode* n = map->firstNode(); n; n = map->nextNode(n)) {
            if (!out.empty())
                out += ' ';
            out += utf8(n->getNodeName().getNameString()) + "=" + utf8(n->getText());
        }
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
    ASSERT_NE(map, nullptr);
    EXPECT_FALSE(e->hasAttributes());
    EXPECT_EQ(map->getLength(), 0);
    EXPECT_EQ(map->firstNode(), nullptr);
    EXPECT_EQ(map->lastNode(), nullptr);
    EXPECT_EQ(map->item(0), nullptr);
    EXPECT_TRUE(e->getAttribute(name("x")).isNull());
    EXPECT_EQ(map->getTypeName(), UnicodeString(u"AttrNodeMap"));
    EXPECT_TRUE(map->isA(ZtNamedNodeMap::getStaticTypeID()));
    EXPECT_TRUE(map->isA(ZtNodeIterable::getStaticTypeID()));
    EXPECT_FALSE(map->isA(ZtNodeList::getStaticTypeID())); // its chain skips the list class
    EXPECT_EQ(map->getTypeID(), 0xDE19E4A4u);
}

TEST_F(Attributes, SettingKeepsInsertionOrderAndReplacesInPlace) {
    e->setAttribute(name("a"), ZtValue(1));
    e->setAttribute(name("b"), ZtValue(u"two"));
    e->setAttribute(name("c"), ZtValue(ZtName(NM_auto)));
    EXPECT_EQ(list(e), "a=1 b=two c=auto");
    EXPECT_TRUE(e->hasAttributes());
    e->setAttribute(name("b"), ZtValue(22)); // the same attribute node gets the new value
    EXPECT_EQ(list(e), "a=1 b=22 c=auto");
    EXPECT_EQ(e->getAttribute(name("b")).getIntegerValue(), 22);

    // A new node of an existing name takes the old node's place; the old one comes back.
    ZtPtr<ZtAttr> a2 = doc->createAttribute(name("a"));
    a2->setValue(ZtValue(u"new"));
    ZtAttr* a1 = e->getAttributeNode(name("a"));
    ZtPtr<ZtAttr> old = e->setAttributeNode(a2);
    EXPECT_EQ(old.get(), a1);
    EXPECT_EQ(old->getRefCount(), 1); // the map's reference, handed over
    EXPECT_EQ(old->getOwnerElement(), nullptr);
    EXPECT_EQ(list(e), "a=new b=22 c=auto");
    EXPECT_EQ(a2->getOwnerElement(), e.get());
    EXPECT_EQ(a2->getRefCount(), 2);
    // Replacing the last one moves the map's link.
    ZtPtr<ZtAttr> c2 = doc->createAttribute(name("c"));
    e->setAttributeNode(c2);
    EXPECT_EQ(e->getAttributes()->lastNode(), c2.get());
    EXPECT_EQ(list(e), "a=new b=22 c=");
    ZtNamedNodeMap* map = e->getAttributes();
    EXPECT_EQ(map->getLength(), 3);
    EXPECT_EQ(label(map->item(1)), "b");
    EXPECT_EQ(map->item(3), nullptr);
    EXPECT_EQ(map->previousNode(c2), map->item(1));
    EXPECT_EQ(map->previousNode(map->firstNode()), nullptr);
    ZtNodeIterator it = map->getIterator();
    EXPECT_EQ(label(it.nextNode()), "a");
    it.setToEnd();
    EXPECT_EQ(label(it.previousNode()), "c");
}

TEST_F(Attributes, RemovingAttributes) {
    e->setAttribute(name("a"), ZtValue(1));
    e->setAttribute(name("b"), ZtValue(2));
    e->setAttribute(name("c"), ZtValue(3));
    e->removeAttribute(name("b"));
    EXPECT_EQ(list(e), "a=1 c=3");
    e->removeAttribute(name("zz")); // nothing to remove
    ZtNamedNodeMap* map = e->getAttributes();
    EXPECT_EQ(map->removeNamedItem(name("zz")), nullptr);
    ZtPtr<ZtAttr> c = map->removeNamedItem(name("c")); // the last one
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->getRefCount(), 1);
    EXPECT_EQ(c->getOwnerElement(), nullptr);
    EXPECT_EQ(list(e), "a=1");
    EXPECT_EQ(map->lastNode(), map->firstNode());
    ZtPtr<ZtAttr> a = e->removeAttributeNode(e->getAttributeNode(name("a")));
    EXPECT_EQ(utf8(a->getText()), "1");
    EXPECT_FALSE(e->hasAttributes());
    EXPECT_EQ(map->firstNode(), nullptr);
    // A detached attribute can be attached again, here or elsewhere.
    e->setAttributeNode(a);
    EXPECT_EQ(list(e), "a=1");
}

TEST_F(Attributes, MapErrorsWithWordingAndSource) {
    e->setAttribute(name("a"), ZtValue(1));
    ZtNamedNodeMap* map = e->getAttributes();
    ZtPtr<ZtElement> other = doc->createElement(name("other"));
    other->setAttribute(name("b"), ZtValue(2));
    ZtAttr* attached = other->getAttributeNode(name("b"));
    ZtPtr<ZtDocument> doc2 = newDocument();
    ZtPtr<ZtAttr> stranger = doc2->createAttribute(name("s"));
    ZtPtr<ZtAttr> liar(new NotReallyAnAttr(doc));

    const char* set = "ZtCommonNS::AttrNodeMap::setNamedItem";
    const char* setNS = "ZtCommonNS::AttrNodeMap::setNamedItemNS";
    expectError(raised([&] { map->setNamedItem(nullptr); }), 3, "SYSTEM ERROR: arg is null.", set);
    expectError(raised([&] { map->setNamedItemNS(nullptr); }), 3, "SYSTEM ERROR: arg is null.",
                setNS);
    expectError(raised([&] { map->setNamedItem(stranger); }), 6,
                "SYSTEM ERROR: arg is created from a different document.", set);
    expectError(raised([&] { e->setAttributeNodeNS(stranger); }), 6,
                "SYSTEM ERROR: arg is created from a different document.", setNS);
    expectError(raised([&] { map->setNamedItem(liar); }), 7,
                "SYSTEM ERROR: arg is not an ZtAttr object.", set);
    expectError(raised([&] { map->setNamedItemNS(liar); }), 7,
                "SYSTEM ERROR: arg is not an ZtAttr object.", setNS);
    const char* inUse =
        "SYSTEM ERROR: arg is an ZtAttr that is already an attribute of another ZtElement object.";
    expectError(raised([&] { map->setNamedItem(attached); }), 8, inUse, set);
    expectError(raised([&] { e->setAttributeNodeNS(attached); }), 8, inUse, setNS);
    // Even an attribute already on this very element.
    expectError(raised([&] { e->setAttributeNode(e->getAttributeNode(name("a"))); }), 8, inUse,
                set);
    const char* remove = "ZtCommonNS::ZtElement::removeAttributeNode";
    expectError(raised([&] { e->removeAttributeNode(nullptr); }), 3,
                "SYSTEM ERROR: oldAttr is null.", remove);
    expectError(raised([&] { e->removeAttributeNode(attached); }), 9,
                "SYSTEM ERROR: oldAttr is not a child of this node.", remove);
    expectError(raised([&] { e->removeAttributeNode(stranger); }), 9,
                "SYSTEM ERROR: oldAttr is not a child of this node.", remove);

    // Nothing changed anywhere.
    EXPECT_EQ(list(e), "a=1");
    EXPECT_EQ(list(other), "b=2");
    EXPECT_EQ(attached->getOwnerElement(), other.get());
    EXPECT_EQ(attached->getRefCount(), 1);
    EXPECT_EQ(stranger->getRefCount(), 1);
    EXPECT_EQ(stranger->getOwnerElement(), nullptr);
}

TEST_F(Attributes, NamespaceQualifiedAttributes) {
    ZtName ns1 = name("urn:1");
    ZtName ns2 = name("urn:2");
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
    std::vector<ZtPtr<ZtAttr>> nodes;
    EXPECT_EQ(e->getAttributeNodeLocal(name("x"), &nodes), 3);
    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(nodes[1]->getNamespaceUri(), ns2);
    EXPECT_EQ(nodes[1]->getRefCount(), 2);
    std::vector<ZtValue> values;
    EXPECT_EQ(e->getAttributeLocal(name("x"), &values), 3);
    EXPECT_EQ(values[2].getIntegerValue(), 3);
    std::vector<ZtAttr*> raw;
    EXPECT_EQ(e->getAttributes()->getNamedItemsLocal(name("x"), &raw), 3);
    // setAttributeNS on an existing (uri, local) changes the value in place.
    e->setAttributeNS(ns1, name("other"), name("x"), ZtValue(11));
    EXPECT_EQ(list(e), "p:x=11 q:x=2 x=3");
    // setNamedItemNS replaces by namespace and local name, whatever the prefix.
    ZtPtr<ZtAttr> r = doc->createAttributeNS(ns2, name("r"), name("x"));
    ZtPtr<ZtAttr> old = e->setAttributeNodeNS(r);
    EXPECT_EQ(utf8(old->getNodeName().getNameString()), "q:x");
    EXPECT_EQ(list(e), "p:x=11 r:x= x=3");
    e->removeAttributeNS(ns1, name("x"));
    EXPECT_EQ(list(e), "r:x= x=3");
    EXPECT_EQ(e->getAttributes()->removeNamedItemNS(ns1, name("x")), nullptr);
}

TEST_F(Attributes, TheFactoryPicksClassAndNamespaceFromTheName) {
    ZtPtr<ZtAttr> plain = doc->createAttribute(name("width"));
    EXPECT_EQ(plain->getTypeName(), UnicodeString(u"ZtAttr"));
    EXPECT_EQ(plain->getNodeType(), ZtNode::ATTRIBUTE_NODE);
    EXPECT_TRUE(plain->getPrefix().isEmpty());
    EXPECT_TRUE(plain->getNamespaceUri().isEmpty());
    plain->setPrefix(name("ignored"));
    EXPECT_TRUE(plain->getPrefix().isEmpty());
    EXPECT_EQ(plain->getRefCount(), 1);
    EXPECT_EQ(plain->getOwnerDocument(), doc.get());
    EXPECT_TRUE(plain->getValue().isNull());

    ZtPtr<ZtAttr> lang = doc->createAttribute(ZtName(NM_xml_COLON_lang));
    EXPECT_EQ(lang->getTypeName(), UnicodeString(u"AttrNS"));
    EXPECT_EQ(lang->getPrefix(), ZtName(NM_xml));
    EXPECT_EQ(lang->getLocalName(), ZtName(NM_lang));
    EXPECT_EQ(lang->getNamespaceUri(), ZtName(NM_NS_XML));
    EXPECT_EQ(lang->getNodeName(), ZtName(NM_xml_COLON_lang));

    ZtPtr<ZtAttr> xmlns = doc->createAttribute(ZtName(NM_xmlns));
    EXPECT_EQ(xmlns->getNamespaceUri(), ZtName(NM_NS_XMLNS));
    EXPECT_TRUE(xmlns->getPrefix().isEmpty());
    EXPECT_EQ(xmlns->getLocalName(), ZtName(NM_xmlns));
    ZtPtr<ZtAttr> decl = doc->createAttribute(name("xmlns:fo"));
    EXPECT_EQ(decl->getNamespaceUri(), ZtName(NM_NS_XMLNS));
    ZtPtr<ZtAttr> href = doc->createAttribute(name("xlink:href"));
    EXPECT_EQ(href->getNamespaceUri(), ZtName(NM_NS_XLink));

    // Any other prefix: no namespace until declarations in scope give one.
    ZtPtr<ZtAttr> other = doc->createAttribute(name("my:attr"));
    EXPECT_EQ(other->getPrefix(), name("my"));
    EXPECT_TRUE(other->getNamespaceUri().isEmpty());
    e->setAttributeXMLNS(name("my"), name("urn:my"));
    e->setAttributeNode(other);
    EXPECT_EQ(other->getNamespaceUri(), name("urn:my"));

    ZtPtr<ZtAttr> ns = doc->createAttributeNS(name("urn:n"), name("n:v"));
    EXPECT_EQ(ns->getPrefix(), name("n"));
    EXPECT_EQ(ns->getLocalName(), name("v"));
    EXPECT_EQ(ns->getNamespaceUri(), name("urn:n"));
}

TEST_F(Attributes, ValuesAndText) {
    e->setAttribute(name("size"), ZtValue(12, ZT_UNIT_PT));
    ZtAttr* size = e->getAttributeNode(name("size"));
    EXPECT_EQ(utf8(size->getText()), "12pt");
    EXPECT_EQ(size->getNodeValue(), ZtValue(12, ZT_UNIT_PT));
    size->setText(u"1em");
    EXPECT_TRUE(size->getValue().isString());
    EXPECT_EQ(utf8(e->getAttribute(name("size")).getStringValue()), "1em");
    size->setNodeValue(ZtValue(ZtName(NM_auto)));
    EXPECT_EQ(e->getAttribute(name("size")).getNameValue(), ZtName(NM_auto));

    // The loader's entry keeps the text exactly; keywords and declarations become names.
    e->setAttributeEx(ZtName(), ZtName(), name("id"), u" x1 ");
    EXPECT_TRUE(e->getAttribute(name("id")).isString());
    EXPECT_EQ(utf8(e->getAttribute(name("id")).getStringValue()), " x1 ");
    e->setAttributeEx(ZtName(), ZtName(), ZtName(NM_text_align), u"center");
    ZtValue align = e->getAttribute(ZtName(NM_text_align));
    EXPECT_EQ(align.getNameValue(), ZtName(NM_center));
    EXPECT_EQ(utf8(align.getStringValue()), "center");
    e->setAttributeEx(ZtName(), ZtName(), ZtName(NM_text_align), u"Center"); // not a keyword
    EXPECT_TRUE(e->getAttribute(ZtName(NM_text_align)).isString());
    e->setAttributeEx(ZtName(), ZtName(), name("empty"), u"");
    EXPECT_TRUE(e->getAttribute(name("empty")).isString());
    EXPECT_TRUE(e->getAttribute(name("empty")).getStringValue().isEmpty());
    e->setAttributeEx(ZtName(NM_NS_XMLNS), ZtName(NM_xmlns), ZtName(NM_fo),
                      UnicodeString(u"http://www.w3.org/1999/XSL/Format"));
    ZtValue decl = e->getAttributeNS(ZtName(NM_NS_XMLNS), ZtName(NM_fo));
    EXPECT_TRUE(decl.isName());
    EXPECT_EQ(decl.getNameValue(), ZtName(NM_NS_XSL_FO));
    EXPECT_EQ(e->getAttributeXMLNS(ZtName(NM_fo)), ZtName(NM_NS_XSL_FO));

    // Element values cannot be set; text values take the text form of any value.
    expectError(raised([&] { e->setNodeValue(ZtValue(1)); }), 11,
                "SYSTEM ERROR: Cannot set a value on node type: 1",
                "ZtCommonNS::ZtNode::setNodeValue");
    EXPECT_TRUE(e->getNodeValue().isNull());
    ZtPtr<ZtDocumentFragment> fragment = doc->createDocumentFragment();
    expectError(raised([&] { fragment->setNodeValue(ZtValue()); }), 11,
                "SYSTEM ERROR: Cannot set a value on node type: 11",
                "ZtCommonNS::ZtNode::setNodeValue");
    ZtPtr<ZtTextNode> text = doc->createTextNode(u"abc");
    EXPECT_EQ(utf8(text->getNodeValue().getStringValue()), "abc");
    text->setNodeValue(ZtValue(50, ZT_UNIT_PERCENT));
    EXPECT_EQ(utf8(text->getData()), "50%");
}

TEST_F(Attributes, NamespaceDeclarationsOnTheElement) {
    e->setAttributeXMLNS(ZtName(), name("urn:default"));
    e->setAttributeXMLNS(name("p"), name("urn:p"));
    EXPECT_EQ(list(e), "xmlns=urn:default xmlns:p=urn:p");
    EXPECT_EQ(e->getAttributeXMLNS(ZtName()), name("urn:default"));
    EXPECT_EQ(e->getAttributeXMLNS(name("p")), name("urn:p"));
    EXPECT_TRUE(e->getAttributeXMLNS(name("q")).isEmpty());
    e->setAttributeXMLNS(name("p"), name("urn:p2"));
    EXPECT_EQ(list(e), "xmlns=urn:default xmlns:p=urn:p2");
    e->removeAttributeXMLNS(ZtName());
    EXPECT_EQ(list(e), "xmlns:p=urn:p2");
    EXPECT_TRUE(e->getAttributeXMLNS(ZtName()).isEmpty());
}

TEST_F(Attributes, CopiesCarryTheirAttributes) {
    ZtPtr<ZtElement> ns = doc->createElementNS(name("urn:x"), name("x"), name("e"));
    ns->setAttribute(name("a"), ZtValue(u"one"));
    ns->setAttributeNS(name("urn:y"), name("y:b"), ZtValue(2));
    build(ns, "c(#t)");
    ZtPtr<ZtElement> c;
    c = ns->getFirstChild();
    c->setAttribute(name("inner"), ZtValue(3));

    ZtPtr<ZtElement> copy;
    copy = ns->cloneNode(true);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getTypeName(), UnicodeString(u"ElementNS"));
    EXPECT_EQ(copy->getNamespaceUri(), name("urn:x"));
    EXPECT_EQ(list(copy), "a=one y:b=2");
    EXPECT_EQ(copy->getAttributeNS(name("urn:y"), name("b")).getIntegerValue(), 2);
    ZtAttr* copiedA = copy->getAttributeNode(name("a"));
    EXPECT_NE(copiedA, ns->getAttributeNode(name("a")));
    EXPECT_EQ(copiedA->getOwnerElement(), copy.get());
    EXPECT_EQ(describe(copy), "c(#t)");
    ZtPtr<ZtElement> copiedC;
    copiedC = copy->getFirstChild();
    EXPECT_EQ(list(copiedC), "inner=3");
    copiedA->setValue(ZtValue(u"changed"));
    EXPECT_EQ(list(ns), "a=one y:b=2");
    ZtPtr<ZtElement> shallow;
    shallow = ns->cloneNode(false);
    EXPECT_EQ(list(shallow), "a=one y:b=2");
    EXPECT_FALSE(shallow->hasChildNodes());
}

TEST_F(Attributes, AMapOutlivingItsElement) {
    e->setAttribute(name("a"), ZtValue(1));
    e->setAttribute(name("b"), ZtValue(2));
    ZtPtr<ZtNamedNodeMap> map(e->getAttributes());
    ZtPtr<ZtAttr> a(map->getNamedItem(name("a")));
    EXPECT_EQ(a->getOwnerElement(), e.get());
    e = nullptr;
    EXPECT_EQ(a->getOwnerElement(), nullptr); // no link to a dead element
    EXPECT_EQ(map->getLength(), 2);
    EXPECT_EQ(map->getNamedItem(name("b"))->getText(), UnicodeString(u"2"));
    ZtPtr<ZtAttr> c = doc->createAttribute(name("c"));
    EXPECT_EQ(raised([&] { map->setNamedItem(c); }).getErrorCode(), 6);
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
