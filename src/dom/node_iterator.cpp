// ZtNodeIterator: a cursor over a node list.
#include "ztcommon/dom.h"

namespace ZtCommonNS {

namespace {

// Attribute maps are lists too, although their isA chain leaves ZtNodeList out.
const ZtNodeList* asList(const ZtNodeIterable* iterable) {
    if (iterable && (iterable->isA(ZtNodeList::getStaticTypeID()) ||
                     iterable->isA(ZtNamedNodeMap::getStaticTypeID())))
        return static_cast<const ZtNodeList*>(iterable);
    return nullptr;
}

} // namespace

ZtNodeIterator::ZtNodeIterator(const ZtNodeIterable* iterable)
    : iterable_(const_cast<ZtNodeIterable*>(iterable)), list_(asList(iterable)),
      next_(list_ ? list_->firstNode() : nullptr) {}

ZtNodeIterator::ZtNodeIterator(const ZtNode* node, ZtNode* after) {
    if (!node)
        return;
    ZtPtr<ZtNodeList> list = node->getDescendantNodes();
    list_ = list.get();
    iterable_ = ZtPtr<ZtNodeIterable>(std::move(list));
    if (list_)
        next_ = after ? list_->nextNode(after) : list_->firstNode();
}

ZtNodeIterator::ZtNodeIterator(const ZtNodeIterator& other) = default;
ZtNodeIterator& ZtNodeIterator::operator=(const ZtNodeIterator& other) = default;
ZtNodeIterator::~ZtNodeIterator() = default;

ZtNode* ZtNodeIterator::nextNode() {
    ZtNode* node = next_;
    if (node)
        next_ = list_->nextNode(node);
    return node;
}

ZtNode* ZtNodeIterator::previousNode() {
    if (!list_)
        return nullptr;
    if (!next_) {
        next_ = list_->lastNode();
        return next_;
    }
    ZtNode* prev = list_->previousNode(next_);
    if (prev)
        next_ = prev;
    return prev;
}

bool ZtNodeIterator::hasPreviousNode() const {
    return list_ && next_ != list_->firstNode();
}

void ZtNodeIterator::setToStart() {
    next_ = list_ ? list_->firstNode() : nullptr;
}

} // namespace ZtCommonNS
