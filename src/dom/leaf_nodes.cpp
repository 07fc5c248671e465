// Text nodes, processing instructions and document fragments.
#include "ztcommon/dom.h"

namespace ZtCommonNS {

ZtTextNode::~ZtTextNode() = default;

ZtName ZtTextNode::getLocalName() const {
    return ZtName(NM_HASH_text);
}

ZtValue ZtTextNode::getNodeValue() const {
    return ZtValue(text_);
}

void ZtTextNode::setNodeValue(const ZtValue& value) {
    text_ = value.toString();
}

ZtPtr<ZtNode> ZtTextNode::cloneNode(bool) const {
    ZtPtr<ZtNode> copy(new ZtTextNode(getOwnerDocument(), UnicodeString()));
    cloneMembers(copy);
    return copy;
}

void ZtTextNode::cloneMembers(ZtNode* target) const {
    if (!target->isA(ZtTextNode::getStaticTypeID()))
        return;
    auto* copy = static_cast<ZtTextNode*>(target);
    copy->text_ = text_;
    copy->bidiLevel_ = bidiLevel_;
}

ZtProcessingInstruction::~ZtProcessingInstruction() = default;

ZtPtr<ZtNode> ZtProcessingInstruction::cloneNode(bool) const {
    return ZtPtr<ZtNode>(new ZtProcessingInstruction(getOwnerDocument(), target_, data_));
}

ZtDocumentFragment::~ZtDocumentFragment() = default;

ZtName ZtDocumentFragment::getLocalName() const {
    return ZtName(NM_HASH_document_fragment);
}

// A fragment is outside every scope of declarations.
ZtName ZtDocumentFragment::lookupNamespaceUri(ZtName) const {
    return ZtName();
}
ZtName ZtDocumentFragment::lookupPrefix(ZtName) const {
    return ZtName();
}

} // namespace ZtCommonNS
