// Namespace look-ups of elements: the element's own namespace, then the declarations on it and
// on its ancestor elements, walked without recursion.
#include "dom/attr_node_map.h"

namespace ZtCommonNS {

namespace {

// The next element up whose declarations count: the parent when it is a ZtElement. A parent
// that is some other kind of element answers for itself (set in `other`).
const ZtElement* parentElement(const ZtElement* element, const ZtNode** other) {
    ZtNode* parent = element->getParentNodeFast();
    if (!parent || !parent->isElementNode())
        return nullptr;
    if (!parent->isA(ZtElement::getStaticTypeID())) {
        *other = parent;
        return nullptr;
    }
    return static_cast<const ZtElement*>(parent);
}

} // namespace

ZtName ZtElement::getOwnNamespaceUri() const {
    return getNamespaceUri();
}

ZtName ZtElement::lookupNamespaceUri(ZtName prefix) const {
    const ZtNode* other = nullptr;
    for (const ZtElement* e = this; e; e = parentElement(e, &other)) {
        ZtName own = e->getOwnNamespaceUri();
        if (!own.isEmpty() && e->getPrefix() == prefix)
            return own;
        const AttrNodeMap* map = e->attributes_.get();
        for (ZtNode* a = map->firstNode(); a; a = map->nextNode(a)) {
            ZtName local = a->getLocalName();
            if ((a->getPrefix() == NM_xmlns && local == prefix) ||
                (local == NM_xmlns && prefix.isEmpty()))
                return ZtName(static_cast<const ZtAttr*>(a)->getValue());
        }
    }
    return other ? other->lookupNamespaceUri(prefix) : ZtName();
}

ZtName ZtElement::lookupPrefix(ZtName uri) const {
    if (uri.isEmpty())
        return ZtName();
    const ZtNode* other = nullptr;
    for (const ZtElement* e = this; e; e = parentElement(e, &other)) {
        ZtName prefix = e->getPrefix();
        if (!prefix.isEmpty() && e->getOwnNamespaceUri() == uri)
            return prefix;
        const AttrNodeMap* map = e->attributes_.get();
        for (ZtNode* a = map->firstNode(); a; a = map->nextNode(a)) {
            if (a->getPrefix() == NM_xmlns &&
                ZtName(static_cast<const ZtAttr*>(a)->getValue()) == uri)
                return a->getLocalName();
        }
    }
    return other ? other->lookupPrefix(uri) : ZtName();
}

} // namespace ZtCommonNS
