// The live node lists behind ZtNode::getChildNodes and the descendant queries. Neither holds a
// reference to its node: like the W3C lists they are views, valid while the node lives.
#pragma once

#include "ztcommon/dom.h"

namespace ZtCommonNS {

// The children of a node, through its (lazily loading) child accessors.
class ChildNodeList : public ZtNodeList {
public:
    explicit ChildNodeList(const ZtNode* node) : node_(const_cast<ZtNode*>(node)) {}
    UnicodeString getTypeName() const override;

    ZtNode* firstNode() const override { return node_->getFirstChild(); }
    ZtNode* lastNode() const override { return node_->getLastChild(); }
    ZtNode* nextNode(const ZtNode* node) const override { return node->getNextSibling(); }
    ZtNode* previousNode(const ZtNode* node) const override { return node->getPreviousSibling(); }

protected:
    ~ChildNodeList() override;

private:
    ZtNode* node_;
};

// The descendants of a root in document order (the root excluded): all of them, the elements
// of a node name, or the elements of a namespace URI and local name.
class TreeNodeList : public ZtNodeList {
public:
    enum Mode : int { ALL_NODES = 0, ELEMENTS_BY_NAME = 1, ELEMENTS_BY_NAME_NS = 2 };

    TreeNodeList(const ZtNode* root, Mode mode, ZtName name)
        : root_(const_cast<ZtNode*>(root)), mode_(mode), name_(name) {}
    TreeNodeList(const ZtNode* root, ZtName uri, ZtName local)
        : root_(const_cast<ZtNode*>(root)), mode_(ELEMENTS_BY_NAME_NS), name_(local), uri_(uri) {}
    UnicodeString getTypeName() const override;

    ZtNode* firstNode() const override { return nextNode(root_); }
    ZtNode* lastNode() const override;
    ZtNode* nextNode(const ZtNode* node) const override;
    ZtNode* previousNode(const ZtNode* node) const override;

protected:
    ~TreeNodeList() override;

private:
    bool matches(const ZtNode* node) const;

    ZtNode* root_;
    int mode_;
    ZtName name_;
    ZtName uri_;
};

} // namespace ZtCommonNS
