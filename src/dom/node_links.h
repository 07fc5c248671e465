// Direct access to the links of a node for the tree's own code (lists, maps, destruction).
#pragma once

#include "ztcommon/dom.h"

namespace ZtCommonNS {

struct NodeLinks {
    static ZtNode* parent(const ZtNode* n) { return n->parent_; }
    static ZtNode* next(const ZtNode* n) { return n->next_; }
    static ZtNode* prev(const ZtNode* n) { return n->prev_; }
    static ZtNode* lastChild(const ZtNode* n) { return n->lastChild_; }
    static ZtDocument* owner(const ZtNode* n) { return n->ownerDocument_; }
    static void setParent(ZtNode* n, ZtNode* parent) { n->parent_ = parent; }
    static void setNext(ZtNode* n, ZtNode* next) { n->next_ = next; }

    // The checks shared by the insertion operations (owner document, no attribute or document
    // as a child, no node inside itself); they raise with `sourceId`.
    static void checkInsertable(const ZtNode* parent, ZtNode* newChild, int sourceId);

    // Asks the owner document to build the next node; null when there is none.
    static ZtNode* loadMore(const ZtNode* n);

    // Links a detached child, whose reference the caller hands over, after the last child.
    static void linkLast(ZtNode* parent, ZtNode* child) {
        ZtNode* last = parent->lastChild_;
        if (last) {
            child->prev_ = last;
            child->next_ = last->next_;
            last->next_ = child;
        } else {
            child->prev_ = nullptr;
            child->next_ = child;
        }
        parent->lastChild_ = child;
        child->parent_ = parent;
    }

    // Links a detached child before refChild, a child of parent.
    static void linkBefore(ZtNode* parent, ZtNode* child, ZtNode* refChild) {
        ZtNode* before = refChild->prev_;
        child->prev_ = before;
        child->next_ = refChild;
        refChild->prev_ = child;
        // The node before refChild, or (refChild being first) the last child closing the circle.
        (before ? before : parent->lastChild_)->next_ = child;
        child->parent_ = parent;
    }

    // Takes child out of parent's list and clears its parent and sibling links. The tree's
    // reference is not released: it now belongs to the caller.
    static void unlink(ZtNode* parent, ZtNode* child) {
        ZtNode* next = child->next_;
        ZtNode* prev = child->prev_;
        if (parent->lastChild_ == child) {
            parent->lastChild_ = prev;
            if (prev)
                prev->next_ = next; // next is the first child
        } else {
            next->prev_ = prev;
            (prev ? prev : parent->lastChild_)->next_ = next;
        }
        child->parent_ = child->next_ = child->prev_ = nullptr;
    }

    // Puts newChild, detached, into oldChild's place; oldChild leaves with its links cleared.
    static void replace(ZtNode* parent, ZtNode* newChild, ZtNode* oldChild) {
        ZtNode* next = oldChild->next_;
        ZtNode* prev = oldChild->prev_;
        newChild->parent_ = parent;
        if (next == oldChild) { // the only child
            newChild->next_ = newChild;
            newChild->prev_ = nullptr;
            parent->lastChild_ = newChild;
        } else {
            newChild->next_ = next;
            newChild->prev_ = prev;
            if (parent->lastChild_ == oldChild)
                parent->lastChild_ = newChild; // next is the first child; its prev stays null
            else
                next->prev_ = newChild;
            (prev ? prev : parent->lastChild_)->next_ = newChild;
        }
        oldChild->parent_ = oldChild->next_ = oldChild->prev_ = nullptr;
    }

    // Drops the tree's reference to a node just taken out of it. A node that nothing else
    // holds is destroyed at once, without the atomic decrement: no other thread can be taking
    // a reference to it, since it would need one already (trees are used by one thread at a
    // time outside lazy loading).
    static void releaseOwned(ZtNode* n) {
        if (n->getRefCount() == 1)
            delete n;
        else
            n->release();
    }

    // Detaches every child of n, from the last backwards, releasing the tree's reference to
    // each. Returns the number of children released.
    static long releaseChildren(ZtNode* n) {
        long count = 0;
        while (ZtNode* child = n->lastChild_) {
            unlink(n, child);
            releaseOwned(child);
            ++count;
        }
        return count;
    }

    static void clearLoading(ZtNode* n) {
        n->flags_ &= ~static_cast<uint32_t>(ZtNode::FLAG_LOADING);
    }

    // Releases the subtree of `root` without recursion, keeping the subtrees of descendants
    // that are held from outside (see node_destroy.cpp).
    static void destroySubtree(ZtNode* root);
};

} // namespace ZtCommonNS
