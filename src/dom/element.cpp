// ZtElement, Element and ElementNS: names, source position, the attribute map and copying.
#include "dom/attr_node_map.h"
#include "dom/node_links.h"

namespace ZtCommonNS {

ZtElement::ZtElement(ZtDocument* ownerDocument)
    : ZtNode(ownerDocument), attributes_(new AttrNodeMap(this)) {}

// A map held from outside outlives the element: its attributes must not name a dead owner.
ZtElement::~ZtElement() {
    AttrNodeMap* map = attributes_.get();
    if (map->getRefCount() > 1) {
        map->elementGone();
        return; // the pointer member releases it
    }
    // Nothing else holds the map (see NodeLinks::releaseOwned). It is deleted while the member
    // still names it: an empty map recognises itself through this element's getAttributes.
    delete map;
    attributes_.detach();
}

ZtNamedNodeMap* ZtElement::getAttributes() const {
    return attributes_.get();
}

bool ZtElement::hasAttributes() const {
    return !attributes_->isEmpty();
}

int ZtElement::getSourceLineNumber() const {
    return line_ != -1 ? line_ : ZtNode::getSourceLineNumber();
}

int ZtElement::getSourceColumnNumber() const {
    return column_ != -1 ? column_ : ZtNode::getSourceColumnNumber();
}

// Copies the source position and every attribute, in order.
void ZtElement::cloneMembers(ZtNode* target) const {
    if (!target->isA(ZtElement::getStaticTypeID()))
        return;
    auto* copy = static_cast<ZtElement*>(target);
    copy->line_ = line_;
    copy->column_ = column_;
    for (ZtNode* n = attributes_->firstNode(); n; n = attributes_->nextNode(n)) {
        ZtPtr<ZtNode> attr = n->cloneNode(true);
        if (attr)
            copy->attributes_->appendNew(static_cast<ZtAttr*>(attr.get()));
    }
}

// Copies the subtree without recursion: a walk over the original that enters and leaves
// nodes, appending each copy to the copy of its parent.
ZtPtr<ZtNode> ZtElement::finishClone(ZtElement* copy, bool deep) const {
    ZtPtr<ZtNode> result(copy);
    cloneMembers(copy);
    if (!deep || !hasChildNodes())
        return result;
    ZtNode* copyParent = copy;
    ZtTreeIterator walk(this, this, false, ZtTreeIterator::PRE_AND_POST_ORDER);
    while (ZtNode* node = walk.nextNode()) {
        if (node == this)
            break;
        if (walk.atPostVisit()) {
            if (node->hasChildNodesFast())
                copyParent = copyParent->getParentNodeFast();
            continue;
        }
        ZtPtr<ZtNode> nodeCopy = node->cloneNode(false);
        if (!nodeCopy) { // a kind that cannot be copied is left out with its subtree
            walk.setCurrentNode(node, true);
            continue;
        }
        copyParent->appendChild(nodeCopy);
        if (node->hasChildNodes())
            copyParent = nodeCopy;
    }
    return result;
}

Element::~Element() = default;

UnicodeString Element::getTypeName() const {
    return UnicodeString(u"Element");
}

ZtPtr<ZtNode> Element::cloneNode(bool deep) const {
    return finishClone(new Element(getOwnerDocument(), prefix_, local_), deep);
}

ElementNS::~ElementNS() = default;

UnicodeString ElementNS::getTypeName() const {
    return UnicodeString(u"ElementNS");
}

ZtPtr<ZtNode> ElementNS::cloneNode(bool deep) const {
    return finishClone(new ElementNS(getOwnerDocument(), uri_, prefix_, local_), deep);
}

} // namespace ZtCommonNS
