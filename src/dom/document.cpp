// ZtDocument: the owner and factory of nodes, its URIs and the loader's state.
#include "dom/node_links.h"
#include "dom/qname.h"

namespace ZtCommonNS {

ZtDocument::ZtDocument() : ZtNode(this), nameTable_(ZtNameTable::addRefSharedNameTable()) {}

ZtDocument::~ZtDocument() {
    // The tree goes while the document is still whole: its nodes name it as their owner.
    NodeLinks::destroySubtree(this);
    ZtNameTable::releaseSharedNameTable();
    nameTable_ = nullptr;
}

ZtName ZtDocument::getLocalName() const {
    return ZtName(NM_HASH_document);
}

ZtDocument* ZtDocument::getOwnerDocument() const {
    return const_cast<ZtDocument*>(this);
}

ZtElement* ZtDocument::getDocumentElement() const {
    for (ZtNode* n = getFirstChild(); n; n = n->getNextSibling()) {
        if (n->getNodeType() == ELEMENT_NODE && n->isA(ZtElement::getStaticTypeID()))
            return static_cast<ZtElement*>(n);
    }
    return nullptr;
}

ZtName ZtDocument::lookupNamespaceUri(ZtName prefix) const {
    ZtElement* root = getDocumentElement();
    return root ? root->lookupNamespaceUri(prefix) : ZtName();
}

ZtName ZtDocument::lookupPrefix(ZtName uri) const {
    ZtElement* root = getDocumentElement();
    return root ? root->lookupPrefix(uri) : ZtName();
}

ZtPtr<ZtElement> ZtDocument::createElement(ZtName qname) {
    ZtName prefix;
    ZtName local;
    splitQName(qname, &prefix, &local);
    return ZtPtr<ZtElement>(new Element(this, prefix, local));
}

ZtPtr<ZtElement> ZtDocument::createElementNS(ZtName uri, ZtName prefix, ZtName local) {
    return ZtPtr<ZtElement>(new ElementNS(this, uri, prefix, local));
}

ZtPtr<ZtElement> ZtDocument::createElementNS(ZtName uri, ZtName qname) {
    ZtName prefix;
    ZtName local;
    splitQName(qname, &prefix, &local);
    return createElementNS(uri, prefix, local);
}

ZtPtr<ZtTextNode> ZtDocument::createTextNode(const UnicodeString& text) {
    return ZtPtr<ZtTextNode>(new ZtTextNode(this, text));
}

ZtPtr<ZtProcessingInstruction> ZtDocument::createProcessingInstruction(ZtName target,
                                                                       const UnicodeString& data) {
    return ZtPtr<ZtProcessingInstruction>(new ZtProcessingInstruction(this, target, data));
}

ZtPtr<ZtDocumentFragment> ZtDocument::createDocumentFragment() {
    return ZtPtr<ZtDocumentFragment>(new ZtDocumentFragment(this));
}

ZtPtr<ZtAttr> ZtDocument::createAttribute(ZtName qname) {
    if (qname == NM_xmlns)
        return ZtPtr<ZtAttr>(new AttrNS(this, ZtName(NM_NS_XMLNS), ZtName(), qname));
    ZtName prefix;
    ZtName local;
    if (!splitQName(qname, &prefix, &local))
        return ZtPtr<ZtAttr>(new Attr(this, qname));
    ZtName uri;
    switch (prefix.getNameEnum()) {
    case NM_xml:
        uri = ZtName(NM_NS_XML);
        break;
    case NM_xmlns:
        uri = ZtName(NM_NS_XMLNS);
        break;
    case NM_xlink:
        uri = ZtName(NM_NS_XLink);
        break;
    default: // looked up from the declarations in scope once the attribute is on an element
        break;
    }
    return ZtPtr<ZtAttr>(new AttrNS(this, uri, prefix, local));
}

ZtPtr<ZtAttr> ZtDocument::createAttributeNS(ZtName uri, ZtName prefix, ZtName local) {
    return ZtPtr<ZtAttr>(new AttrNS(this, uri, prefix, local));
}

ZtPtr<ZtAttr> ZtDocument::createAttributeNS(ZtName uri, ZtName qname) {
    ZtName prefix;
    ZtName local;
    splitQName(qname, &prefix, &local);
    return createAttributeNS(uri, prefix, local);
}

ZtPtr<ZtNode> ZtDocument::createTextNodeElement(const UnicodeString& text, ZtNode*) {
    return createTextNode(text);
}

UnicodeString ZtDocument::getBaseUri() const {
    return baseUri_.isEmpty() ? documentUri_ : baseUri_;
}

// The text is stored as given: it becomes a canonical URI once the URI family is linked in.
void ZtDocument::setBaseUri(const UnicodeString& uri) {
    baseUri_ = uri;
}

UnicodeString ZtDocument::getDocumentUri() const {
    return documentUri_.isEmpty() ? baseUri_ : documentUri_;
}

void ZtDocument::abort() {
    ZtMutex guard(lock_);
    lastLoadingNode_ = nullptr;
    skipDepth_ = 0;
}

void ZtDocument::closeDocumentElement() {
    ZtMutex guard(lock_);
    ZtNode* n = lastLoadingNode_;
    if (n && (n->isText() || n->isProcessingInstruction()))
        n = n->getParentNodeFast();
    for (; n; n = n->getParentNodeFast())
        n->setLoadDone();
    lastLoadingNode_ = nullptr;
    skipDepth_ = 0;
}

// Loading reads the events of the document's parser, which the XML family provides; until a
// load has been started there is nothing to build.
ZtNode* ZtDocument::loadNextNode() {
    ZtMutex guard(lock_);
    return nullptr;
}

} // namespace ZtCommonNS
