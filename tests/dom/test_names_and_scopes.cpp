// Qualified names and the namespace manager's scopes.
#include "dom_test_util.h"
#include "ztcommon/util.h"

using namespace domtest;

TEST(QualifiedNames, JoinAndSplitAtTheFirstColon) {
    EXPECT_EQ(ZtXmlUtil::makeQName(name("fo"), name("block")), name("fo:block"));
    EXPECT_EQ(ZtXmlUtil::makeQName(ZtName(), name("block")), name("block"));
    EXPECT_EQ(ZtXmlUtil::makeQName(ZtName(NM_xml), ZtName(NM_lang)), ZtName(NM_xml_COLON_lang));
    // qualified name, prefix, local part; a colon at either end separates nothing.
    const char* const splits[][3] = {{"xml:lang", "xml", "lang"},
                                     {"a:b:c", "a", "b:c"},
                                     {"plain", "", "plain"},
                                     {"", "", ""},
                                     {":x", "", ":x"},
                                     {"x:", "", "x:"}};
    for (const auto& split : splits) {
        ZtName qname = *split[0] ? name(split[0]) : ZtName();
        EXPECT_EQ(utf8(ZtXmlUtil::getPrefixFromQName(qname).getNameString()), split[1]);
        EXPECT_EQ(utf8(ZtXmlUtil::getLocalPartFromQName(qname).getNameString()), split[2]);
    }
    EXPECT_EQ(ZtXmlUtil::getLocalPartFromQName(ZtName(NM_xml_COLON_lang)), ZtName(NM_lang));

    ZtPtr<ZtDocument> doc = newDocument();
    ZtPtr<ZtElement> e = doc->createElement(name("svg:rect"));
    EXPECT_EQ(e->getPrefix(), ZtName(NM_svg));
    EXPECT_EQ(e->getLocalName(), name("rect"));
    ZtPtr<ZtElement> ns = doc->createElementNS(ZtName(NM_NS_SVG), name("svg:rect"));
    EXPECT_EQ(ns->getPrefix(), ZtName(NM_svg));
    EXPECT_EQ(ns->getNamespaceUri(), ZtName(NM_NS_SVG));
    e->setPrefix(name("s"));
    EXPECT_EQ(e->getNodeName(), name("s:rect"));
}

TEST(NamespaceManager, ScopesNestAndUnwindToTheBase) {
    ZtPtr<ZtNamespaceManager> m(new ZtNamespaceManager);
    ZtName fo(NM_fo), foUri(NM_NS_XSL_FO), svgUri(NM_NS_SVG);
    ZtName a = name("a"), uriA = name("urn:a"), uriA2 = name("urn:a2");
    // The base scope binds xml and xmlns and cannot be popped.
    EXPECT_EQ(m->lookupNamespaceUri(ZtName(NM_xmlns)), ZtName(NM_NS_XMLNS));
    EXPECT_EQ(m->lookupPrefix(ZtName(NM_NS_XML)), ZtName(NM_xml));
    EXPECT_TRUE(m->getDefaultNamespace().isEmpty());
    EXPECT_EQ(m->getTypeName(), UnicodeString(u"ZtNamespaceManager"));

    m->pushScope(fo, name("root"), foUri);
    EXPECT_EQ(m->lookupNamespaceUri(fo), foUri); // the element's own prefix
    EXPECT_EQ(m->lookupPrefix(foUri), fo);
    EXPECT_TRUE(m->isOpenElement(fo, name("root")));
    EXPECT_FALSE(m->isOpenElement(fo, name("block")));
    EXPECT_EQ(m->getCurrentNamespaceMap(), nullptr); // made on the first declaration
    m->declarePrefix(a, uriA);
    m->declarePrefix(ZtName(), svgUri);
    ASSERT_NE(m->getCurrentNamespaceMap(), nullptr);
    EXPECT_EQ(m->getCurrentNamespaceCount(), 2);
    EXPECT_EQ(m->getCurrentNamespacePrefix(0), a);
    EXPECT_EQ(m->getCurrentNamespaceUri(1), svgUri);
    EXPECT_EQ(m->getDefaultNamespace(), svgUri);

    m->pushScope(ZtName(), name("inner"), svgUri);
    m->declarePrefix(a, uriA); // already in effect: nothing is declared
    EXPECT_EQ(m->getCurrentNamespaceCount(), 0);
    m->declarePrefix(a, uriA2);
    m->declarePrefix(a, uriA); // a later declaration in the same scope replaces the earlier
    EXPECT_EQ(m->getCurrentNamespaceCount(), 1);
    m->declarePrefix(a, uriA2);
    EXPECT_EQ(m->lookupNamespaceUri(a), uriA2);
    EXPECT_EQ(m->getCurrentNamespaceCount(), 1);
    // Undeclaring the default namespace ends the search; an empty binding of a prefix does not.
    m->pushScope(name("b"), name("deep"), ZtName());
    EXPECT_EQ(m->getDefaultNamespace(), svgUri);
    m->declarePrefix(ZtName(), ZtName());
    EXPECT_TRUE(m->getDefaultNamespace().isEmpty());
    m->declarePrefix(fo, ZtName());
    EXPECT_EQ(m->lookupNamespaceUri(fo), foUri);
    EXPECT_EQ(m->getScopeCount(), 4);

    EXPECT_TRUE(m->popScope());
    EXPECT_TRUE(m->popScope());
    EXPECT_EQ(m->lookupNamespaceUri(a), uriA);
    EXPECT_EQ(m->getDefaultNamespace(), svgUri);
    EXPECT_TRUE(m->popScope());
    EXPECT_TRUE(m->lookupNamespaceUri(a).isEmpty());
    EXPECT_TRUE(m->lookupNamespaceUri(fo).isEmpty());
    EXPECT_FALSE(m->isOpenElement(fo, name("root")));
    EXPECT_FALSE(m->popScope());
    EXPECT_EQ(m->getScopeCount(), 1);
    EXPECT_EQ(m->lookupNamespaceUri(ZtName(NM_xml)), ZtName(NM_NS_XML));
}
