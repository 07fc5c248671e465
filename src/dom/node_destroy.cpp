// Taking trees apart without recursion, so that the depth of a tree never limits its
// destruction.
#include "dom/node_links.h"

namespace ZtCommonNS {

// Walks the subtree entering and leaving nodes. A node held only by its parent is entered and
// its children are dealt with first; when the walk leaves a node, all of its children have
// already lost their own children, so releasing them destroys nothing below and never
// recurses. A node also held from outside (count above 1) is marked as left at once: its
// subtree stays intact and it survives, detached, when its parent lets it go.
void NodeLinks::destroySubtree(ZtNode* root) {
    if (!root->lastChild_)
        return;
    ZtTreeIterator walk(root, nullptr, false, ZtTreeIterator::PRE_AND_POST_ORDER);
    while (ZtNode* node = walk.nextNode()) {
        if (walk.atPreVisit()) {
            // No more input for a tree going away: the walk must not make the loader run.
            clearLoading(node);
            if (node != root && node->getRefCount() > 1)
                walk.setCurrentNode(node, true);
        } else {
            releaseChildren(node);
        }
    }
}

ZtNode::~ZtNode() {
    NodeLinks::destroySubtree(this);
}

void ZtNode::removeAllChildNodes() {
    NodeLinks::releaseChildren(this);
}

// Takes the subtree apart from the bottom: always descending into the last child, and
// detaching and releasing a node once it has no children left.
long ZtNode::deleteAllChildNodes() {
    long count = 0;
    ZtNode* node = this;
    for (;;) {
        if (ZtNode* last = node->lastChild_) {
            node = last;
            continue;
        }
        if (node == this)
            return count;
        ZtNode* parent = node->parent_;
        NodeLinks::unlink(parent, node);
        NodeLinks::releaseOwned(node);
        ++count;
        node = parent;
    }
}

} // namespace ZtCommonNS
