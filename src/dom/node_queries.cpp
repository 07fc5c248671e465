// The non-virtual helpers of ZtNode: moving runs of children, line-feed text, ancestry and
// document order, counting and searching by name or type.
#include "dom/node_links.h"
#include "foundation/raise_error.h"

namespace ZtCommonNS {

namespace {

bool isXmlWhitespace(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool isEmptyOrWhitespace(const UnicodeString& text) {
    for (int32_t i = 0; i < text.length(); ++i) {
        if (!isXmlWhitespace(text.charAt(i)))
            return false;
    }
    return true;
}

const UnicodeString kLineFeed(u'\n');

// Whether a node is a text node made only of white space; text nodes of the library are read
// in place, other text kinds through getText.
bool isBlankText(const ZtNode* node) {
    if (!node->isText())
        return false;
    if (node->isA(ZtTextNode::getStaticTypeID()))
        return isEmptyOrWhitespace(static_cast<const ZtTextNode*>(node)->getData());
    return isEmptyOrWhitespace(node->getText());
}

int depthToTop(const ZtNode* node) {
    int depth = 0;
    for (const ZtNode* n = node->getParentNodeFast(); n; n = n->getParentNodeFast())
        ++depth;
    return depth;
}

} // namespace

ZtNode* ZtNode::getParentNodeUncomplemental() const {
    ZtNode* n = parent_;
    while (n && n->getFlag(FLAG_COMPLEMENTAL))
        n = n->parent_;
    return n;
}

void ZtNode::appendChildren(ZtNode* first, ZtNode* last) {
    if (!first)
        raiseError(ZtErrc::NullArgument, ZtErrSource::NodeAppendChild, UnicodeString(u"first"));
    // The run is gathered and checked before anything moves.
    std::vector<ZtNode*> run;
    for (ZtNode* n = first; n; n = n->getNextSiblingFast()) {
        run.push_back(n);
        if (n == last)
            break;
    }
    for (ZtNode* n : run)
        NodeLinks::checkInsertable(this, n, ZtErrSource::NodeAppendChild);
    for (ZtNode* n : run)
        appendChild(n);
}

ZtNode* ZtNode::appendChildTextLF() {
    return appendChildText(kLineFeed);
}

ZtNode* ZtNode::insertBeforeTextLF(ZtNode* refChild) {
    ZtPtr<ZtNode> node = ownerDocument_->createTextNodeElement(kLineFeed, this);
    return node ? insertBefore(node, refChild) : nullptr;
}

ZtNode* ZtNode::getNextSiblingOrSelfIgnoreEmptyOrWhitespace() const {
    const ZtNode* n = this;
    while (n && isBlankText(n))
        n = n->getNextSibling();
    return const_cast<ZtNode*>(n);
}

bool ZtNode::isDescendantOf(const ZtNode* other) const {
    if (!other)
        return false;
    for (const ZtNode* n = parent_; n; n = n->parent_) {
        if (n == other)
            return true;
    }
    return false;
}

bool ZtNode::isDescendantOrSelfOf(const ZtNode* other) const {
    return other && (other == this || isDescendantOf(other));
}

// Walks forward: to the next sibling while there is one, else up to the parent. Other comes
// later in document order (and is not inside this node) when a sibling reached that way is
// other or contains it.
bool ZtNode::isPrecedingOf(const ZtNode* other) const {
    if (!other || other == this)
        return false;
    const ZtNode* n = this;
    while (n) {
        ZtNode* next = n->getNextSiblingFast();
        if (!next) {
            n = n->parent_;
            continue;
        }
        if (next == other || other->isDescendantOf(next))
            return true;
        n = next;
    }
    return false;
}

bool ZtNode::isFollowingOf(const ZtNode* other) const {
    return other && other->isPrecedingOf(this);
}

int ZtNode::countPrecedingSiblings() const {
    int count = 0;
    for (const ZtNode* n = getPreviousSibling(); n; n = n->getPreviousSibling())
        ++count;
    return count;
}

int ZtNode::countFollowingSiblings() const {
    int count = 0;
    for (const ZtNode* n = getNextSibling(); n; n = n->getNextSibling())
        ++count;
    return count;
}

int ZtNode::getChildNodeCount() const {
    int count = 0;
    for (const ZtNode* n = getFirstChild(); n; n = n->getNextSibling())
        ++count;
    return count;
}

int ZtNode::getNodeDepth() const {
    int depth = 0;
    for (const ZtNode* n = this; n->parent_ && n->getNodeType() != DOCUMENT_NODE; n = n->parent_)
        ++depth;
    return depth;
}

int ZtNode::getPreviousOrSelfNodeCount(const ZtNode* root) const {
    if (!isDescendantOrSelfOf(root))
        return 0;
    int count = 0;
    ZtTreeIterator walk(root, nullptr, false, ZtTreeIterator::PRE_ORDER);
    while (const ZtNode* n = walk.nextNode()) {
        ++count;
        if (n == this)
            return count;
    }
    return 0;
}

ZtNode* ZtNode::getChildNodeByName(ZtName name, const ZtNode* after) const {
    ZtNode* n =
        after ? (after->parent_ == this ? after->getNextSibling() : nullptr) : getFirstChild();
    for (; n; n = n->getNextSibling()) {
        if (n->getNodeName() == name)
            return n;
    }
    return nullptr;
}

ZtNode* ZtNode::getChildNodeByNameNS(ZtName uri, ZtName local, const ZtNode* after) const {
    ZtNode* n =
        after ? (after->parent_ == this ? after->getNextSibling() : nullptr) : getFirstChild();
    for (; n; n = n->getNextSibling()) {
        if (n->getLocalName() == local && n->getNamespaceUri() == uri)
            return n;
    }
    return nullptr;
}

ZtNode* ZtNode::getChildNodeByTypeID(unsigned int typeId) const {
    for (ZtNode* n = getFirstChild(); n; n = n->getNextSibling()) {
        if (n->isA(typeId))
            return n;
    }
    return nullptr;
}

ZtNode* ZtNode::getAncestorByName(ZtName name) const {
    return parent_ ? parent_->getAncestorOrSelfByName(name) : nullptr;
}

ZtNode* ZtNode::getAncestorOrSelfByName(ZtName name) const {
    for (const ZtNode* n = this; n; n = n->parent_) {
        if (n->getNodeName() == name)
            return const_cast<ZtNode*>(n);
    }
    return nullptr;
}

ZtNode* ZtNode::getAncestorByName2(ZtName name1, ZtName name2) const {
    return parent_ ? parent_->getAncestorOrSelfByName2(name1, name2) : nullptr;
}

ZtNode* ZtNode::getAncestorOrSelfByName2(ZtName name1, ZtName name2) const {
    for (const ZtNode* n = this; n; n = n->parent_) {
        ZtName name = n->getNodeName();
        if (name == name1 || name == name2)
            return const_cast<ZtNode*>(n);
    }
    return nullptr;
}

ZtNode* ZtNode::getAncestorByNameNS(ZtName uri, ZtName local) const {
    for (const ZtNode* n = parent_; n; n = n->parent_) {
        if (n->getLocalName() == local && n->getNamespaceUri() == uri)
            return const_cast<ZtNode*>(n);
    }
    return nullptr;
}

ZtNode* ZtNode::getAncestorByTypeID(unsigned int typeId) const {
    return parent_ ? parent_->getAncestorOrSelfByTypeID(typeId) : nullptr;
}

ZtNode* ZtNode::getAncestorOrSelfByTypeID(unsigned int typeId) const {
    for (const ZtNode* n = this; n; n = n->parent_) {
        if (n->isA(typeId))
            return const_cast<ZtNode*>(n);
    }
    return nullptr;
}

ZtNode* ZtNode::getCommonAncestorOrSelf(const ZtNode* other) const {
    if (!other)
        return nullptr;
    const ZtNode* a = this;
    const ZtNode* b = other;
    int da = depthToTop(a);
    int db = depthToTop(b);
    for (; da > db; --da)
        a = a->parent_;
    for (; db > da; --db)
        b = b->parent_;
    while (a != b) {
        a = a->parent_;
        b = b->parent_;
    }
    return const_cast<ZtNode*>(a);
}

ZtNode* ZtNode::getCommonAncestor(const ZtNode* other) const {
    ZtNode* common = getCommonAncestorOrSelf(other);
    // When one node contains the other, the nearest proper ancestor of both is above it.
    if (common && (common == this || common == other))
        return common->parent_;
    return common;
}

UnicodeString ZtNode::getInnerText() const {
    if (isText())
        return getText();
    UnicodeString text;
    ZtTreeIterator walk(this, nullptr, false, ZtTreeIterator::PRE_ORDER);
    while (const ZtNode* n = walk.nextNode()) {
        if (n == this || !n->isText())
            continue;
        if (n->isA(ZtTextNode::getStaticTypeID()))
            text.append(static_cast<const ZtTextNode*>(n)->getData());
        else
            text.append(n->getText());
    }
    return text;
}

} // namespace ZtCommonNS
