// The abstract lists and the two live lists of the tree.
#include "dom/list_classes.h"
#include "dom/node_memory.h"

namespace ZtCommonNS {

ZtNodeIterable::~ZtNodeIterable() = default;

ZtNodeIterator ZtNodeIterable::getIterator() const {
    return ZtNodeIterator(this);
}

ZtNodeList::~ZtNodeList() = default;

void* ZtNodeList::operator new(std::size_t size) {
    return NodeMemory::allocate(size);
}

void ZtNodeList::operator delete(void* block, std::size_t size) noexcept {
    NodeMemory::deallocate(block, size);
}

int ZtNodeList::getLength() const {
    int length = 0;
    for (ZtNode* n = firstNode(); n; n = nextNode(n))
        ++length;
    return length;
}

ZtNode* ZtNodeList::item(int index) const {
    if (index < 0)
        return nullptr;
    ZtNode* n = firstNode();
    for (; n && index > 0; --index)
        n = nextNode(n);
    return n;
}

ZtNamedNodeMap::~ZtNamedNodeMap() = default;

UnicodeString ZtNamedNodeMap::getTypeName() const {
    return UnicodeString(u"ZtNamedNodeMap");
}

ChildNodeList::~ChildNodeList() = default;

UnicodeString ChildNodeList::getTypeName() const {
    return UnicodeString(u"ChildNodeList");
}

TreeNodeList::~TreeNodeList() = default;

UnicodeString TreeNodeList::getTypeName() const {
    return UnicodeString(u"TreeNodeList");
}

bool TreeNodeList::matches(const ZtNode* node) const {
    switch (mode_) {
    case ELEMENTS_BY_NAME:
        return node->isElementNode() && node->getNodeName() == name_;
    case ELEMENTS_BY_NAME_NS:
        return node->isElementNode() && node->getLocalName() == name_ &&
               node->getNamespaceUri() == uri_;
    default:
        return true;
    }
}

// Document order within the root: first child, else the next sibling of the nearest node on
// the way up that has one. A node no longer under the root ends the walk where its own
// ancestors end.
ZtNode* TreeNodeList::nextNode(const ZtNode* node) const {
    const ZtNode* n = node;
    for (;;) {
        ZtNode* next = n->getFirstChild();
        if (!next) {
            while (n != root_) {
                next = n->getNextSibling();
                if (next)
                    break;
                n = n->getParentNode();
                if (!n)
                    return nullptr;
            }
        }
        if (!next)
            return nullptr;
        if (matches(next))
            return next;
        n = next;
    }
}

// Reverse document order: the deepest last descendant of the previous sibling, else the
// parent (the root itself is never part of the list).
ZtNode* TreeNodeList::previousNode(const ZtNode* node) const {
    const ZtNode* n = node;
    for (;;) {
        if (n == root_)
            return nullptr;
        ZtNode* prev = n->getPreviousSibling();
        if (prev) {
            while (ZtNode* last = prev->getLastChild())
                prev = last;
        } else {
            prev = n->getParentNode();
            if (!prev || prev == root_)
                return nullptr;
        }
        if (matches(prev))
            return prev;
        n = prev;
    }
}

ZtNode* TreeNodeList::lastNode() const {
    ZtNode* n = root_->getLastChild();
    if (!n)
        return nullptr;
    while (ZtNode* last = n->getLastChild())
        n = last;
    return matches(n) ? n : previousNode(n);
}

} // namespace ZtCommonNS
