// ZtAttr and its two concrete classes.
#include "ztcommon/dom.h"
#include "ztcommon/util.h"

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

UnicodeString ZtAttr::getText() const {
    return getValue().toString();
}

void ZtAttr::setText(const UnicodeString& text) {
    setValue(ZtValue(text));
}

Attr::~Attr() = default;

ZtPtr<ZtNode> Attr::cloneNode(bool) const {
    return ZtPtr<ZtNode>(new Attr(getOwnerDocument(), named_.getName(), named_.getValue()));
}

AttrNS::~AttrNS() = default;

UnicodeString AttrNS::getTypeName() const {
    return UnicodeString(u"AttrNS");
}

ZtName AttrNS::getNodeName() const {
    return ZtXmlUtil::makeQName(prefix_, getLocalName());
}

ZtName AttrNS::getNamespaceUri() const {
    if (uri_.isEmpty() && !prefix_.isEmpty())
        return lookupNamespaceUri(prefix_);
    return uri_;
}

ZtPtr<ZtNode> AttrNS::cloneNode(bool) const {
    return ZtPtr<ZtNode>(
        new AttrNS(getOwnerDocument(), uri_, prefix_, getLocalName(), getValueRef()));
}

} // namespace ZtCommonNS
