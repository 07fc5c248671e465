// The attribute operations of ZtElement, over its AttrNodeMap.
#include "dom/attr_node_map.h"
#include "dom/node_links.h"
#include "dom/qname.h"
#include "foundation/raise_error.h"

namespace ZtCommonNS {

namespace {

// A factory result that can join the map without setNamedItem's checks and search: a new,
// detached attribute of the element's document. Derived documents may hand back anything.
bool isFreshAttribute(const ZtAttr* attr, const ZtElement* element) {
    return attr && !NodeLinks::parent(attr) &&
           NodeLinks::owner(attr) == NodeLinks::owner(element) &&
           attr->getNodeType() == ZtNode::ATTRIBUTE_NODE;
}

ZtName declarationLocal(ZtName prefix) {
    return prefix.isEmpty() ? ZtName(NM_xmlns) : prefix;
}

} // namespace

ZtValue ZtElement::getAttribute(ZtName name) const {
    ZtAttr* attr = attributes_->getNamedItem(name);
    return attr ? attr->getValue() : ZtValue();
}

ZtValue ZtElement::getAttributeNS(ZtName uri, ZtName local) const {
    ZtAttr* attr = attributes_->getNamedItemNS(uri, local);
    return attr ? attr->getValue() : ZtValue();
}

void ZtElement::setAttribute(ZtName name, const ZtValue& value) {
    ZtAttr* attr = attributes_->getNamedItem(name);
    if (attr) {
        attr->setValue(value);
        return;
    }
    ZtPtr<ZtAttr> made = getOwnerDocument()->createAttribute(name);
    if (isFreshAttribute(made, this) && made->getNodeName() == name)
        attributes_->appendNew(made);
    else
        attributes_->setNamedItem(made);
    made->setValue(value);
}

void ZtElement::setAttributeNS(ZtName uri, ZtName prefix, ZtName local, const ZtValue& value) {
    ZtAttr* attr = attributes_->getNamedItemNS(uri, local);
    if (attr) {
        attr->setValue(value);
        return;
    }
    ZtPtr<ZtAttr> made = getOwnerDocument()->createAttributeNS(uri, prefix, local);
    if (isFreshAttribute(made, this) && made->getLocalName() == local &&
        made->getNamespaceUri() == uri)
        attributes_->appendNew(made);
    else
        attributes_->setNamedItemNS(made);
    made->setValue(value);
}

void ZtElement::setAttributeNS(ZtName uri, ZtName qname, const ZtValue& value) {
    ZtName prefix;
    ZtName local;
    splitQName(qname, &prefix, &local);
    setAttributeNS(uri, prefix, local, value);
}

void ZtElement::removeAttribute(ZtName name) {
    attributes_->removeNamedItem(name);
}

void ZtElement::removeAttributeNS(ZtName uri, ZtName local) {
    attributes_->removeNamedItemNS(uri, local);
}

ZtAttr* ZtElement::getAttributeNode(ZtName name) const {
    return attributes_->getNamedItem(name);
}

ZtAttr* ZtElement::getAttributeNodeNS(ZtName uri, ZtName local) const {
    return attributes_->getNamedItemNS(uri, local);
}

int ZtElement::getAttributeNodeLocal(ZtName local, std::vector<ZtPtr<ZtAttr>>* found) const {
    int count = 0;
    for (ZtNode* n = attributes_->firstNode(); n; n = attributes_->nextNode(n)) {
        if (n->getLocalName() == local) {
            ++count;
            if (found)
                found->emplace_back(static_cast<ZtAttr*>(n));
        }
    }
    return count;
}

int ZtElement::getAttributeLocal(ZtName local, std::vector<ZtValue>* found) const {
    int count = 0;
    for (ZtNode* n = attributes_->firstNode(); n; n = attributes_->nextNode(n)) {
        if (n->getLocalName() == local) {
            ++count;
            if (found)
                found->push_back(static_cast<ZtAttr*>(n)->getValue());
        }
    }
    return count;
}

ZtPtr<ZtAttr> ZtElement::setAttributeNode(ZtAttr* attr) {
    return attributes_->setNamedItem(attr);
}

ZtPtr<ZtAttr> ZtElement::setAttributeNodeNS(ZtAttr* attr) {
    return attributes_->setNamedItemNS(attr);
}

ZtPtr<ZtAttr> ZtElement::removeAttributeNode(ZtAttr* oldAttr) {
    if (!oldAttr)
        raiseError(ZtErrc::NullArgument, ZtErrSource::ElementRemoveAttributeNode,
                   UnicodeString(u"oldAttr"));
    if (NodeLinks::parent(oldAttr) != this)
        raiseError(ZtErrc::NotAChild, ZtErrSource::ElementRemoveAttributeNode,
                   UnicodeString(u"oldAttr"));
    return attributes_->remove(oldAttr);
}

bool ZtElement::hasAttribute(ZtName name) const {
    return attributes_->getNamedItem(name) != nullptr;
}

bool ZtElement::hasAttributeNS(ZtName uri, ZtName local) const {
    return attributes_->getNamedItemNS(uri, local) != nullptr;
}

bool ZtElement::hasAttributeLocal(ZtName local) const {
    return attributes_->getNamedItemsLocal(local, nullptr) > 0;
}

void ZtElement::setAttributeEx(ZtName uri, ZtName prefix, ZtName local, const UnicodeString& text) {
    if (uri == NM_NS_XMLNS) {
        setAttributeNS(uri, prefix, local, ZtValue(ZtName(text)));
        return;
    }
    ZtNameEnum keyword = ZtNameTable::getBuiltinNameEnum(text);
    if (keyword != NM_EMPTY_NAME)
        setAttributeNS(uri, prefix, local, ZtValue(keyword));
    else
        setAttributeNS(uri, prefix, local, ZtValue(text));
}

ZtName ZtElement::getAttributeXMLNS(ZtName prefix) const {
    ZtAttr* attr = attributes_->getNamedItemNS(ZtName(NM_NS_XMLNS), declarationLocal(prefix));
    return attr ? ZtName(attr->getValue()) : ZtName();
}

void ZtElement::setAttributeXMLNS(ZtName prefix, ZtName uri) {
    setAttributeNS(ZtName(NM_NS_XMLNS), prefix.isEmpty() ? ZtName() : ZtName(NM_xmlns),
                   declarationLocal(prefix), ZtValue(uri));
}

void ZtElement::removeAttributeXMLNS(ZtName prefix) {
    attributes_->removeNamedItemNS(ZtName(NM_NS_XMLNS), declarationLocal(prefix));
}

} // namespace ZtCommonNS
