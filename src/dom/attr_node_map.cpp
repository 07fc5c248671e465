// AttrNodeMap: an element's attributes on a singly circular list.
#include "dom/attr_node_map.h"

#include "dom/node_links.h"
#include "foundation/raise_error.h"

namespace ZtCommonNS {

namespace {

ZtPtr<ZtAttr> handOver(ZtNode* attr) {
    // The map's reference travels in the returned pointer.
    ZtPtr<ZtAttr> result(static_cast<ZtAttr*>(attr));
    attr->removeRef();
    return result;
}

} // namespace

AttrNodeMap::AttrNodeMap(ZtElement* element) : link_(element) {}

AttrNodeMap::~AttrNodeMap() {
    if (isEmpty())
        return;
    ZtNode* last = link_;
    ZtNode* n = NodeLinks::next(last);
    for (;;) {
        ZtNode* next = NodeLinks::next(n);
        NodeLinks::setNext(n, nullptr);
        NodeLinks::setParent(n, nullptr);
        bool wasLast = n == last;
        NodeLinks::releaseOwned(n);
        if (wasLast)
            break;
        n = next;
    }
}

UnicodeString AttrNodeMap::getTypeName() const {
    return UnicodeString(u"AttrNodeMap");
}

// The link leads back to the element exactly when the element's map is this one.
bool AttrNodeMap::isEmpty() const {
    return !link_ || link_->getAttributes() == this;
}

ZtElement* AttrNodeMap::getOwnerElement() const {
    if (!link_)
        return nullptr;
    if (isEmpty())
        return static_cast<ZtElement*>(link_);
    return static_cast<ZtElement*>(NodeLinks::parent(link_));
}

void AttrNodeMap::elementGone() {
    if (isEmpty()) {
        link_ = nullptr;
        return;
    }
    ZtNode* n = link_;
    do {
        NodeLinks::setParent(n, nullptr);
        n = NodeLinks::next(n);
    } while (n != link_);
}

ZtNode* AttrNodeMap::firstNode() const {
    return isEmpty() ? nullptr : NodeLinks::next(link_);
}

ZtNode* AttrNodeMap::nextNode(const ZtNode* node) const {
    return node == link_ ? nullptr : NodeLinks::next(node);
}

ZtNode* AttrNodeMap::previousNode(const ZtNode* node) const {
    if (isEmpty())
        return nullptr;
    ZtNode* first = NodeLinks::next(link_);
    if (node == first)
        return nullptr;
    for (ZtNode* n = first; n != link_; n = NodeLinks::next(n)) {
        if (NodeLinks::next(n) == node)
            return n;
    }
    return nullptr;
}

ZtAttr* AttrNodeMap::getNamedItem(ZtName name) const {
    for (ZtNode* n = firstNode(); n; n = nextNode(n)) {
        if (n->getNodeName() == name)
            return static_cast<ZtAttr*>(n);
    }
    return nullptr;
}

ZtAttr* AttrNodeMap::getNamedItemNS(ZtName uri, ZtName local) const {
    for (ZtNode* n = firstNode(); n; n = nextNode(n)) {
        if (n->getLocalName() == local && n->getNamespaceUri() == uri)
            return static_cast<ZtAttr*>(n);
    }
    return nullptr;
}

int AttrNodeMap::getNamedItemsLocal(ZtName local, std::vector<ZtAttr*>* found) const {
    int count = 0;
    for (ZtNode* n = firstNode(); n; n = nextNode(n)) {
        if (n->getLocalName() == local) {
            ++count;
            if (found)
                found->push_back(static_cast<ZtAttr*>(n));
        }
    }
    return count;
}

ZtElement* AttrNodeMap::checkSettable(ZtAttr* attr, int sourceId) const {
    if (!attr)
        raiseError(ZtErrc::NullArgument, sourceId);
    ZtElement* element = getOwnerElement();
    if (!element || NodeLinks::owner(attr) != NodeLinks::owner(element))
        raiseError(ZtErrc::WrongDocument, sourceId);
    if (attr->getNodeType() != ZtNode::ATTRIBUTE_NODE)
        raiseError(ZtErrc::NotAnAttr, sourceId);
    // An attached attribute's parent is its element, never the map: attaching an attribute
    // that is already on this very element fails as well.
    ZtNode* parent = NodeLinks::parent(attr);
    if (parent && static_cast<const void*>(parent) != static_cast<const void*>(this))
        raiseError(ZtErrc::AttrInUse, sourceId);
    return element;
}

template <class Same> ZtPtr<ZtAttr> AttrNodeMap::put(ZtAttr* attr, ZtElement* element, Same same) {
    if (!isEmpty()) {
        ZtNode* prev = link_;
        ZtNode* n = NodeLinks::next(link_);
        for (;;) {
            if (same(n)) {
                attr->addRef();
                NodeLinks::setParent(attr, element);
                NodeLinks::setNext(attr, n == prev ? attr : NodeLinks::next(n));
                NodeLinks::setNext(prev, attr);
                if (n == link_)
                    link_ = attr;
                NodeLinks::setNext(n, nullptr);
                NodeLinks::setParent(n, nullptr);
                return handOver(n);
            }
            if (n == link_)
                break;
            prev = n;
            n = NodeLinks::next(n);
        }
    }
    appendNew(attr);
    return ZtPtr<ZtAttr>();
}

void AttrNodeMap::appendNew(ZtAttr* attr) {
    attr->addRef();
    NodeLinks::setParent(attr, getOwnerElement());
    if (isEmpty()) {
        NodeLinks::setNext(attr, attr);
    } else {
        NodeLinks::setNext(attr, NodeLinks::next(link_));
        NodeLinks::setNext(link_, attr);
    }
    link_ = attr;
}

ZtPtr<ZtAttr> AttrNodeMap::setNamedItem(ZtAttr* attr) {
    ZtElement* element = checkSettable(attr, ZtErrSource::AttrMapSetNamedItem);
    ZtName name = attr->getNodeName();
    return put(attr, element, [name](const ZtNode* n) { return n->getNodeName() == name; });
}

ZtPtr<ZtAttr> AttrNodeMap::setNamedItemNS(ZtAttr* attr) {
    ZtElement* element = checkSettable(attr, ZtErrSource::AttrMapSetNamedItemNS);
    ZtName local = attr->getLocalName();
    ZtName uri = attr->getNamespaceUri();
    return put(attr, element, [local, uri](const ZtNode* n) {
        return n->getLocalName() == local && n->getNamespaceUri() == uri;
    });
}

ZtPtr<ZtAttr> AttrNodeMap::unlink(ZtNode* prev, ZtNode* victim) {
    if (prev == victim) { // the only attribute
        link_ = NodeLinks::parent(victim);
    } else {
        NodeLinks::setNext(prev, NodeLinks::next(victim));
        if (victim == link_)
            link_ = prev;
    }
    NodeLinks::setNext(victim, nullptr);
    NodeLinks::setParent(victim, nullptr);
    return handOver(victim);
}

template <class Match> ZtPtr<ZtAttr> AttrNodeMap::removeFirst(Match match) {
    if (isEmpty())
        return ZtPtr<ZtAttr>();
    ZtNode* prev = link_;
    ZtNode* n = NodeLinks::next(link_);
    for (;;) {
        if (match(n))
            return unlink(prev, n);
        if (n == link_)
            return ZtPtr<ZtAttr>();
        prev = n;
        n = NodeLinks::next(n);
    }
}

ZtPtr<ZtAttr> AttrNodeMap::removeNamedItem(ZtName name) {
    return removeFirst([name](const ZtNode* n) { return n->getNodeName() == name; });
}

ZtPtr<ZtAttr> AttrNodeMap::removeNamedItemNS(ZtName uri, ZtName local) {
    return removeFirst([uri, local](const ZtNode* n) {
        return n->getLocalName() == local && n->getNamespaceUri() == uri;
    });
}

ZtPtr<ZtAttr> AttrNodeMap::remove(ZtAttr* attr) {
    return removeFirst([attr](const ZtNode* n) { return n == attr; });
}

} // namespace ZtCommonNS
