// ZtAttr and its two concrete classes.
#include "ztcommon/dom.h"

namespace ZtCommonNS {

ZtAttr::~ZtAttr() = default;

ZtElement* ZtAttr::getOwnerElement() const {
    return static_cast<ZtElement*>(getParentNodeFast());
}

// An attribute answers with the declarations in scope at its element.
ZtName ZtAttr::lookupNamespaceUri(ZtName prefix) const {
    ZtElement* element = getOwnerElement();
    return element ? element->lookupNamespaceUri(prefix) : ZtName();
}

ZtName ZtAttr::lookupPrefix(ZtName uri) const {
    ZtElement* element = getOwnerElement();
    return element ? element->lookupPrefix(uri) : ZtName();
}

} // namespace ZtCommonNS
