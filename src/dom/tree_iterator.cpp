// ZtTreeIterator: depth-first walks that report nodes when entered, when left, or both.
#include "ztcommon/dom.h"

namespace ZtCommonNS {

ZtTreeIterator::ZtTreeIterator(const ZtNode* root, const ZtNode* current, bool postVisit,
                               TraversalOrder order)
    : root_(const_cast<ZtNode*>(root)), current_(const_cast<ZtNode*>(current)),
      postVisit_(postVisit), order_(order) {}

void ZtTreeIterator::setCurrentNode(const ZtNode* node, bool postVisit) {
    current_ = const_cast<ZtNode*>(node);
    postVisit_ = postVisit;
}

void ZtTreeIterator::setToStart() {
    current_ = root_;
    postVisit_ = false;
}

void ZtTreeIterator::setToEnd() {
    current_ = root_;
    postVisit_ = true;
}

ZtNode* ZtTreeIterator::nextNode() {
    if (!current_) {
        if (!root_ || postVisit_)
            return nullptr;
        current_ = root_;
        postVisit_ = false;
        if (order_ != POST_ORDER)
            return current_;
    }
    for (;;) {
        if (!postVisit_) {
            if (ZtNode* child = current_->getFirstChild()) {
                current_ = child;
                if (order_ != POST_ORDER)
                    return child;
                continue;
            }
            // A leaf is left at once: reported here in post-order, and in the combined order
            // when it is an element, so that an empty element is seen entered and left.
            postVisit_ = true;
            if (order_ == POST_ORDER || (order_ == PRE_AND_POST_ORDER && current_->isElementNode()))
                return current_;
            continue;
        }
        if (current_ == root_) {
            current_ = nullptr;
            return nullptr;
        }
        if (ZtNode* sibling = current_->getNextSibling()) {
            current_ = sibling;
            postVisit_ = false;
            if (order_ != POST_ORDER)
                return sibling;
            continue;
        }
        current_ = current_->getParentNode();
        if (!current_) // the walk stood on a node that was taken out of the subtree
            return nullptr;
        if (order_ != PRE_ORDER)
            return current_;
    }
}

// The mirror of nextNode: last children instead of first, previous siblings instead of next,
// and the two single-visit orders exchanged.
ZtNode* ZtTreeIterator::previousNode() {
    if (!current_) {
        if (!root_ || !postVisit_)
            return nullptr;
        current_ = root_;
        postVisit_ = true;
        if (order_ != PRE_ORDER)
            return current_;
    }
    for (;;) {
        if (postVisit_) {
            if (ZtNode* child = current_->getLastChild()) {
                current_ = child;
                if (order_ != PRE_ORDER)
                    return child;
                continue;
            }
            postVisit_ = false;
            if (order_ == PRE_ORDER || (order_ == PRE_AND_POST_ORDER && current_->isElementNode()))
                return current_;
            continue;
        }
        if (current_ == root_) {
            current_ = nullptr;
            return nullptr;
        }
        if (ZtNode* sibling = current_->getPreviousSibling()) {
            current_ = sibling;
            postVisit_ = true;
            if (order_ != PRE_ORDER)
                return sibling;
            continue;
        }
        current_ = current_->getParentNode();
        if (!current_)
            return nullptr;
        if (order_ != POST_ORDER)
            return current_;
    }
}

// True exactly when nextNode would return a node.
bool ZtTreeIterator::hasNextNode() const {
    if (!root_)
        return false;
    if (!current_)
        return !postVisit_;
    if (current_ == root_) {
        if (postVisit_)
            return false;
        return root_->hasChildNodes() || order_ == POST_ORDER ||
               (order_ == PRE_AND_POST_ORDER && root_->isElementNode());
    }
    if (order_ != PRE_ORDER)
        return true;
    if (!postVisit_ && current_->hasChildNodes())
        return true;
    for (const ZtNode* n = current_; n && n != root_; n = n->getParentNode()) {
        if (n->getNextSibling())
            return true;
    }
    return false;
}

// True exactly when previousNode would return a node.
bool ZtTreeIterator::hasPreviousNode() const {
    if (!root_)
        return false;
    if (!current_)
        return postVisit_;
    if (current_ == root_) {
        if (!postVisit_)
            return false;
        return root_->hasChildNodes() || order_ == PRE_ORDER ||
               (order_ == PRE_AND_POST_ORDER && root_->isElementNode());
    }
    if (order_ != POST_ORDER)
        return true;
    if (postVisit_ && current_->hasChildNodes())
        return true;
    for (const ZtNode* n = current_; n && n != root_; n = n->getParentNode()) {
        if (n->getPreviousSibling())
            return true;
    }
    return false;
}

} // namespace ZtCommonNS
