// ZtNode: names, links with lazy loading, and the four operations that change a child list.
#include <string>

#include "dom/list_classes.h"
#include "dom/node_links.h"
#include "dom/node_memory.h"
#include "foundation/raise_error.h"
#include "ztcommon/util.h"

namespace ZtCommonNS {

namespace {

const UnicodeString kNewChild(u"newChild");
const UnicodeString kOldChild(u"oldChild");
const UnicodeString kRefChild(u"refChild");

// An attribute's parent link names its element, but it is not one of its children.
bool isChildOf(const ZtNode* node, const ZtNode* parent) {
    return NodeLinks::parent(node) == parent && node->getNodeType() != ZtNode::ATTRIBUTE_NODE;
}

// Takes a reference for the tree and takes `child` from its old parent. The old parent's
// reference, returned by its removeChild, becomes the new parent's.
void adopt(ZtNode* child) {
    ZtNode* oldParent = NodeLinks::parent(child);
    if (!oldParent) {
        child->addRef();
        return;
    }
    ZtPtr<ZtNode> held = oldParent->removeChild(child);
    ZtNode* raw = held.detach();
    if (raw != child) { // a removeChild that did not hand back the child
        child->addRef();
        if (raw)
            raw->release();
    }
}

} // namespace

ZtNode* NodeLinks::loadMore(const ZtNode* n) {
    ZtDocument* document = n->ownerDocument_;
    return document ? document->loadNextNode() : nullptr;
}

void* ZtNode::operator new(std::size_t size) {
    return NodeMemory::allocate(size);
}

void ZtNode::operator delete(void* block, std::size_t size) noexcept {
    NodeMemory::deallocate(block, size);
}

// The checks every insertion shares, in the order they are made: the owner document, then the
// shape of the tree (no attribute or document among children, no node inside itself).
void NodeLinks::checkInsertable(const ZtNode* parent, ZtNode* newChild, int sourceId) {
    ZtDocument* owner = newChild->ownerDocument_;
    if (owner != parent->ownerDocument_ && owner != parent)
        raiseError(ZtErrc::WrongDocument, sourceId, kNewChild);
    ZtNode::ZtNodeType type = newChild->getNodeType();
    if (type == ZtNode::ATTRIBUTE_NODE || type == ZtNode::DOCUMENT_NODE || newChild == parent)
        raiseError(ZtErrc::OutOfRange, sourceId, kNewChild);
    // Only a node with children can be an ancestor of the parent.
    if (newChild->lastChild_ && parent->isDescendantOf(newChild))
        raiseError(ZtErrc::OutOfRange, sourceId, kNewChild);
}

ZtName ZtNode::getNodeName() const {
    return ZtXmlUtil::makeQName(getPrefix(), getLocalName());
}
ZtName ZtNode::getFOName() const {
    return ZtName();
}
ZtName ZtNode::getNamespaceUri() const {
    return ZtName();
}
ZtName ZtNode::getPrefix() const {
    return ZtName();
}
void ZtNode::setPrefix(ZtName) {}

ZtValue ZtNode::getNodeValue() const {
    return ZtValue();
}

void ZtNode::setNodeValue(const ZtValue&) {
    raiseError(ZtErrc::CannotSetValue, ZtErrSource::NodeSetNodeValue,
               UnicodeString::fromUTF8(std::to_string(getNodeType())));
}

ZtNode* ZtNode::getParentNode() const {
    return parent_;
}

bool ZtNode::hasChildNodes() const {
    if (!lastChild_ && isLoading())
        NodeLinks::loadMore(this);
    return lastChild_ != nullptr;
}

ZtPtr<ZtNodeList> ZtNode::getChildNodes() const {
    return ZtPtr<ZtNodeList>(new ChildNodeList(this));
}

ZtNode* ZtNode::getFirstChild() const {
    if (!lastChild_ && isLoading())
        NodeLinks::loadMore(this);
    return lastChild_ ? lastChild_->next_ : nullptr;
}

ZtNode* ZtNode::getLastChild() const {
    while (isLoading() && NodeLinks::loadMore(this)) {
    }
    return lastChild_;
}

ZtNode* ZtNode::getPreviousSibling() const {
    return prev_;
}

ZtNode* ZtNode::getNextSibling() const {
    if (!parent_)
        return nullptr;
    if (parent_->lastChild_ != this)
        return next_;
    // The last child so far: finish loading this node, then give the parent one chance to
    // bring a following sibling.
    while (isLoading() && NodeLinks::loadMore(this)) {
    }
    if (parent_ && parent_->isLoading())
        NodeLinks::loadMore(parent_);
    return parent_ && parent_->lastChild_ != this ? next_ : nullptr;
}

ZtDocument* ZtNode::getOwnerDocument() const {
    return ownerDocument_;
}

ZtNode* ZtNode::appendChild(ZtNode* newChild) {
    if (!newChild)
        raiseError(ZtErrc::NullArgument, ZtErrSource::NodeAppendChild, kNewChild);
    NodeLinks::checkInsertable(this, newChild, ZtErrSource::NodeAppendChild);
    adopt(newChild);
    NodeLinks::linkLast(this, newChild);
    return newChild;
}

ZtNode* ZtNode::insertBefore(ZtNode* newChild, ZtNode* refChild) {
    if (!newChild)
        raiseError(ZtErrc::NullArgument, ZtErrSource::NodeInsertBefore, kNewChild);
    if (!refChild)
        return appendChild(newChild);
    if (!isChildOf(refChild, this))
        raiseError(ZtErrc::NotAChild, ZtErrSource::NodeInsertBefore, kRefChild);
    if (newChild == refChild)
        return newChild;
    NodeLinks::checkInsertable(this, newChild, ZtErrSource::NodeInsertBefore);
    adopt(newChild);
    NodeLinks::linkBefore(this, newChild, refChild);
    return newChild;
}

ZtPtr<ZtNode> ZtNode::replaceChild(ZtNode* newChild, ZtNode* oldChild) {
    if (!newChild)
        raiseError(ZtErrc::NullArgument, ZtErrSource::NodeReplaceChild, kNewChild);
    if (!oldChild)
        raiseError(ZtErrc::NullArgument, ZtErrSource::NodeReplaceChild, kOldChild);
    if (!isChildOf(oldChild, this))
        raiseError(ZtErrc::NotAChild, ZtErrSource::NodeReplaceChild, kOldChild);
    if (newChild == oldChild)
        return ZtPtr<ZtNode>(oldChild);
    NodeLinks::checkInsertable(this, newChild, ZtErrSource::NodeReplaceChild);
    adopt(newChild); // may change oldChild's neighbours, never oldChild itself
    NodeLinks::replace(this, newChild, oldChild);
    ZtPtr<ZtNode> result(oldChild);
    oldChild->removeRef(); // the tree's reference now travels in `result`
    return result;
}

ZtPtr<ZtNode> ZtNode::removeChild(ZtNode* oldChild) {
    if (!oldChild)
        raiseError(ZtErrc::NullArgument, ZtErrSource::NodeRemoveChild, kOldChild);
    if (!isChildOf(oldChild, this))
        raiseError(ZtErrc::NotAChild, ZtErrSource::NodeRemoveChild, kOldChild);
    NodeLinks::unlink(this, oldChild);
    ZtPtr<ZtNode> result(oldChild);
    oldChild->removeRef();
    return result;
}

ZtNamedNodeMap* ZtNode::getAttributes() const {
    return nullptr;
}
bool ZtNode::hasAttributes() const {
    return false;
}
ZtPtr<ZtNode> ZtNode::cloneNode(bool) const {
    return ZtPtr<ZtNode>();
}
void ZtNode::cloneMembers(ZtNode*) const {}
void ZtNode::finishAttributes() {}

bool ZtNode::isElementNode() const {
    return false;
}
bool ZtNode::isProcessingInstruction() const {
    return false;
}
bool ZtNode::isText() const {
    return false;
}
bool ZtNode::isPKWO() const {
    return false;
}
bool ZtNode::isArea() const {
    return false;
}
bool ZtNode::isBidiOverride() const {
    return false;
}
bool ZtNode::isBlock() const {
    return false;
}
bool ZtNode::isBlockOrBdo(bool) const {
    return false;
}
bool ZtNode::isCSS() const {
    return false;
}
bool ZtNode::isFO() const {
    return false;
}
bool ZtNode::isHTML() const {
    return false;
}
bool ZtNode::isInline() const {
    return false;
}
bool ZtNode::isInlineBlock() const {
    return false;
}
bool ZtNode::isNeutral() const {
    return false;
}
bool ZtNode::isOutOfLine() const {
    return false;
}
bool ZtNode::isXML() const {
    return false;
}
bool ZtNode::saveTextTag() const {
    return false;
}
bool ZtNode::isHTMLSyntax() const {
    return false;
}
bool ZtNode::isXHTMLSyntax() const {
    return false;
}
bool ZtNode::isBidiDone() const {
    return false;
}
void ZtNode::bidiDone(int) {}

UnicodeString ZtNode::getText() const {
    return UnicodeString();
}
void ZtNode::setText(const UnicodeString&) {}

ZtPtr<ZtNodeList> ZtNode::getElementsByTagName(ZtName name) const {
    return ZtPtr<ZtNodeList>(new TreeNodeList(this, TreeNodeList::ELEMENTS_BY_NAME, name));
}

ZtPtr<ZtNodeList> ZtNode::getElementsByTagNameNS(ZtName uri, ZtName local) const {
    return ZtPtr<ZtNodeList>(new TreeNodeList(this, uri, local));
}

ZtPtr<ZtNodeList> ZtNode::getDescendantNodes() const {
    return ZtPtr<ZtNodeList>(new TreeNodeList(this, TreeNodeList::ALL_NODES, ZtName()));
}

ZtNodeIterator ZtNode::getIterator() const {
    return ZtNodeIterator(this, nullptr);
}

ZtNode* ZtNode::appendChildEx(ZtNode* newChild) {
    return appendChild(newChild);
}

ZtNode* ZtNode::appendChildText(const UnicodeString& text) {
    ZtPtr<ZtNode> node = ownerDocument_->createTextNodeElement(text, this);
    return node ? appendChild(node) : nullptr;
}

UnicodeString ZtNode::getBaseUri() const {
    return parent_ ? parent_->getBaseUri() : UnicodeString();
}

int ZtNode::getSourceLineNumber() const {
    return parent_ ? parent_->getSourceLineNumber() : -1;
}
void ZtNode::setSourceLineNumber(int) {}
int ZtNode::getSourceColumnNumber() const {
    return parent_ ? parent_->getSourceColumnNumber() : -1;
}
void ZtNode::setSourceColumnNumber(int) {}

// Namespace look-ups of nodes that hold no declarations: the parent element answers.
ZtName ZtNode::lookupNamespaceUri(ZtName prefix) const {
    return parent_ && parent_->isElementNode() ? parent_->lookupNamespaceUri(prefix) : ZtName();
}

ZtName ZtNode::lookupPrefix(ZtName uri) const {
    return parent_ && parent_->isElementNode() ? parent_->lookupPrefix(uri) : ZtName();
}

bool ZtNode::isDefaultNamespace(ZtName uri) const {
    return lookupNamespaceUri(ZtName()) == uri;
}

} // namespace ZtCommonNS
