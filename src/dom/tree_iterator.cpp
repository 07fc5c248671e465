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

// One step of the walk. Forward, a node is entered at its pre-visit and left at its post-visit,
// and the walk goes down through first children and on through next siblings; backward is the
// exact mirror (entered at the post-visit, down through last children, on through previous
// siblings), the two single-visit orders exchanging their roles.
template <bool Forward> ZtNode* ZtTreeIterator::step() {
    // The order that reports a node only where it is entered, and the one only where it is left.
    const TraversalOrder enterOnly = Forward ? PRE_ORDER : POST_ORDER;
    const TraversalOrder leaveOnly = Forward ? POST_ORDER : PRE_ORDER;
    const bool entered = !Forward; // the value of postVisit_ where a node is entered
    if (!current_) {
        if (!root_ || postVisit_ != entered) // no tree, or already past its far end
            return nullptr;
        current_ = root_;
        if (order_ != leaveOnly)
            return current_;
    }
    for (;;) {
        if (postVisit_ == entered) {
            if (ZtNode* child = Forward ? current_->getFirstChild() : current_->getLastChild()) {
                current_ = child;
                if (order_ != leaveOnly)
                    return child;
                continue;
            }
            // A leaf is left at once: reported here in the leaving order, and in the combined
            // order when it is an element, so that an empty element is seen entered and left.
            postVisit_ = !entered;
            if (order_ == leaveOnly || (order_ == PRE_AND_POST_ORDER && current_->isElementNode()))
                return current_;
            continue;
        }
        if (current_ == root_) {
            current_ = nullptr;
            return nullptr;
        }
        if (ZtNode* sibling =
                Forward ? current_->getNextSibling() : current_->getPreviousSibling()) {
            current_ = sibling;
            postVisit_ = entered;
            if (order_ != leaveOnly)
                return sibling;
            continue;
        }
        current_ = current_->getParentNode();
        if (!current_) // the walk stood on a node that was taken out of the subtree
            return nullptr;
        if (order_ != enterOnly)
            return current_;
    }
}

// True exactly when step<Forward> would return a node.
template <bool Forward> bool ZtTreeIterator::canStep() const {
    const TraversalOrder enterOnly = Forward ? PRE_ORDER : POST_ORDER;
    const TraversalOrder leaveOnly = Forward ? POST_ORDER : PRE_ORDER;
    const bool entered = !Forward;
    if (!root_)
        return false;
    if (!current_)
        return postVisit_ == entered;
    if (current_ == root_) {
        if (postVisit_ != entered)
            return false;
        return root_->hasChildNodes() || order_ == leaveOnly ||
               (order_ == PRE_AND_POST_ORDER && root_->isElementNode());
    }
    if (order_ != enterOnly)
        return true;
    if (postVisit_ == entered && current_->hasChildNodes())
        return true;
    for (const ZtNode* n = current_; n && n != root_; n = n->getParentNode()) {
        if (Forward ? n->getNextSibling() : n->getPreviousSibling())
            return true;
    }
    return false;
}

ZtNode* ZtTreeIterator::nextNode() {
    return step<true>();
}
ZtNode* ZtTreeIterator::previousNode() {
    return step<false>();
}
bool ZtTreeIterator::hasNextNode() const {
    return canStep<true>();
}
bool ZtTreeIterator::hasPreviousNode() const {
    return canStep<false>();
}

} // namespace ZtCommonNS
