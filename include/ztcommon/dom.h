// The document tree of ZtCommon: nodes and their live lists, elements, attributes and
// namespaces, the document that owns and makes every node, and the iterators that walk a tree.
//
// Ownership: a parent holds the one reference to each child, an element's attribute map holds
// one to each attribute; parent, sibling and owner-document links hold none. Operations that
// take a node out of a tree hand that reference to the caller in a ZtPtr<ZtNode>. Failures are
// thrown as ZtError, and no operation changes the tree before its checks have passed.
#pragma once

#include <cstdint>
#include <vector>

#include "ztcommon/foundation.h"
#include "ztcommon/value.h"

namespace ZtCommonNS {

class ZtNode;
class ZtDocument;
class ZtElement;
class ZtAttr;
class ZtTextNode;
class ZtProcessingInstruction;
class ZtDocumentFragment;
class ZtNodeList;
class ZtNamedNodeMap;
class ZtNodeIterator;
class AttrNodeMap;

// Something whose nodes can be walked with a ZtNodeIterator.
class ZT_EXPORT ZtNodeIterable : public ZtRCObject {
    ZT_DECLARE_TYPE(ZtNodeIterable, ZtRCObject, ZtTypeId::NodeIterable)

public:
    virtual ZtNodeIterator getIterator() const;

protected:
    ZtNodeIterable() = default;
    ~ZtNodeIterable() override;
};

// An ordered list of nodes, walked from either end. Lists of the tree are live: they store no
// nodes and no count, and answer every question by walking the tree as it is now.
class ZT_EXPORT ZtNodeList : public ZtNodeIterable {
    ZT_DECLARE_TYPE(ZtNodeList, ZtNodeIterable, ZtTypeId::NodeList)

public:
    virtual ZtNode* firstNode() const = 0;
    virtual ZtNode* lastNode() const = 0;
    // The node after (before) `node`, which must be on the list; null at the end.
    virtual ZtNode* nextNode(const ZtNode* node) const = 0;
    virtual ZtNode* previousNode(const ZtNode* node) const = 0;
    // Counted by walking from firstNode.
    virtual int getLength() const;
    // The node `index` steps from firstNode; null when index is negative or at the end.
    virtual ZtNode* item(int index) const;

    // Tree nodes come from the node allocator.
    static void* operator new(std::size_t size);
    static void operator delete(void* block, std::size_t size) noexcept;

protected:
    ZtNodeList() = default;
    ~ZtNodeList() override;
};

// The attributes of an element, by name and in insertion order. Its place in the isA chain is
// directly under ZtNodeIterable (a map does not answer isA(ZtNodeList)), although it offers
// the list operations.
class ZT_EXPORT ZtNamedNodeMap : public ZtNodeList {
public:
    static constexpr unsigned int getStaticTypeID() { return ZtTypeId::NamedNodeMap; }
    bool isA(unsigned int id) const override {
        // Deliberately past ZtNodeList: a map's chain goes straight to ZtNodeIterable.
        // NOLINTNEXTLINE(bugprone-parent-virtual-call)
        return id == ZtTypeId::NamedNodeMap || ZtNodeIterable::isA(id);
    }
    unsigned int getTypeID() const override { return ZtTypeId::NamedNodeMap; }
    UnicodeString getTypeName() const override;

    // The first attribute whose node name is `name`; null when there is none.
    virtual ZtAttr* getNamedItem(ZtName name) const = 0;
    // The first attribute of this local name and namespace URI.
    virtual ZtAttr* getNamedItemNS(ZtName uri, ZtName local) const = 0;
    // Appends to `found` (when not null) every attribute of this local name, whatever its
    // namespace, and returns how many there are.
    virtual int getNamedItemsLocal(ZtName local, std::vector<ZtAttr*>* found) const = 0;
    // Adds `attr`, in place of the attribute of the same node name (setNamedItemNS: of the same
    // local name and namespace URI) when there is one, which is returned; else at the end.
    virtual ZtPtr<ZtAttr> setNamedItem(ZtAttr* attr) = 0;
    virtual ZtPtr<ZtAttr> setNamedItemNS(ZtAttr* attr) = 0;
    // Takes out the first matching attribute and returns it; null when nothing matches.
    virtual ZtPtr<ZtAttr> removeNamedItem(ZtName name) = 0;
    virtual ZtPtr<ZtAttr> removeNamedItemNS(ZtName uri, ZtName local) = 0;

protected:
    ZtNamedNodeMap() = default;
    ~ZtNamedNodeMap() override;
};

// A cursor over a list (children, descendants, attributes). It holds a reference to the list,
// none to the nodes, and stays usable while the tree changes: it only remembers the node that
// nextNode will return.
class ZT_EXPORT ZtNodeIterator {
public:
    ZtNodeIterator() = default;
    // Over `iterable` from its first node; an empty walk for null or for an iterable that is
    // not a list.
    explicit ZtNodeIterator(const ZtNodeIterable* iterable);
    // Over the descendants of `node` in document order, starting after the descendant `after`
    // (from the first when null).
    ZtNodeIterator(const ZtNode* node, ZtNode* after);
    ZtNodeIterator(const ZtNodeIterator& other);
    ZtNodeIterator& operator=(const ZtNodeIterator& other);
    ~ZtNodeIterator();

    // The node at the cursor, which moves on; null at the end (the cursor stays there).
    ZtNode* nextNode();
    // Moves the cursor back and returns the node now at it (the one nextNode returns next).
    // At the start it returns null and the cursor stays.
    ZtNode* previousNode();
    bool hasNextNode() const { return next_ != nullptr; }
    bool hasPreviousNode() const;
    void setToStart();
    void setToEnd() { next_ = nullptr; }

private:
    ZtPtr<ZtNodeIterable> iterable_;
    const ZtNodeList* list_ = nullptr; // iterable_ seen as a list
    ZtNode* next_ = nullptr;
};

// A depth-first walk of a subtree that can report each node when it is entered (pre-visit) and
// when it is left (post-visit). It keeps no state in the tree.
class ZT_EXPORT ZtTreeIterator {
public:
    enum TraversalOrder : int32_t {
        PRE_ORDER = 1,          // each node once, when entered
        POST_ORDER = 2,         // each node once, when left
        PRE_AND_POST_ORDER = 3, // elements when entered and when left, other nodes once
    };

    ZtTreeIterator() = default;
    // A walk of the subtree of `root` standing at `current` (null: before the start when
    // postVisit is false, after the end when it is true).
    ZtTreeIterator(const ZtNode* root, const ZtNode* current, bool postVisit, TraversalOrder order);
    ZtTreeIterator(const ZtTreeIterator&) = default;
    ZtTreeIterator& operator=(const ZtTreeIterator&) = default;
    ~ZtTreeIterator() = default;

    ZtNode* nextNode();
    ZtNode* previousNode();
    // Whether nextNode (previousNode) would return a node.
    bool hasNextNode() const;
    bool hasPreviousNode() const;

    bool atPreVisit() const { return !postVisit_; }
    bool atPostVisit() const { return postVisit_; }
    void setAtPreVisit(bool pre) { postVisit_ = !pre; }
    void setAtPostVisit(bool post) { postVisit_ = post; }
    ZtNode* getCurrentNode() const { return current_; }
    void setCurrentNode(const ZtNode* node, bool postVisit);
    ZtNode* getRootNode() const { return root_; }
    TraversalOrder getTraversalOrder() const { return order_; }
    void setTraversalOrder(TraversalOrder order) { order_ = order; }
    // Stands at the root, entering it (leaving it).
    void setToStart();
    void setToEnd();

    bool operator==(const ZtTreeIterator& other) const {
        return root_ == other.root_ && current_ == other.current_ && order_ == other.order_ &&
               postVisit_ == other.postVisit_;
    }
    bool operator!=(const ZtTreeIterator& other) const { return !(*this == other); }

private:
    template <bool Forward> ZtNode* step();
    template <bool Forward> bool canStep() const;

    ZtNode* root_ = nullptr;
    ZtNode* current_ = nullptr;
    bool postVisit_ = true;
    TraversalOrder order_ = PRE_AND_POST_ORDER;
};

// Base of every node. The children of a node form a circular list reached through its last
// child: the first child is the last child's next sibling, and the first child's previous
// sibling is null. A node that is still being loaded (pull mode) asks its document for more
// input when it is asked for children it does not have yet; the ...Fast accessors never do.
class ZT_EXPORT ZtNode : public ZtRCObject {
    ZT_DECLARE_TYPE(ZtNode, ZtRCObject, ZtTypeId::Node)

public:
    // Node type numbers of the W3C DOM.
    enum ZtNodeType : int32_t {
        ELEMENT_NODE = 1,
        ATTRIBUTE_NODE = 2,
        TEXT_NODE = 3,
        ENTITY_NODE = 6,
        PROCESSING_INSTRUCTION_NODE = 7,
        DOCUMENT_NODE = 9,
        DOCUMENT_TYPE_NODE = 10,
        DOCUMENT_FRAGMENT_NODE = 11,
        NOTATION_NODE = 12,
    };
    // Flag bits of the library; other bits are free for derived classes.
    enum : int {
        FLAG_LOADING = 1,      // more children may still arrive from the loader
        FLAG_LOADED = 2,       // loading has finished
        FLAG_COMPLEMENTAL = 4, // inserted by the program, not present in the source
    };

    ZtNode(const ZtNode&) = delete;
    ZtNode& operator=(const ZtNode&) = delete;

    // makeQName(getPrefix(), getLocalName()).
    virtual ZtName getNodeName() const;
    virtual ZtName getLocalName() const = 0;
    virtual ZtName getFOName() const;
    virtual ZtName getNamespaceUri() const;
    virtual ZtName getPrefix() const;
    virtual void setPrefix(ZtName prefix);
    // The null value here; text nodes and attributes have values.
    virtual ZtValue getNodeValue() const;
    // Here fails with error 11 (a node of this type holds no value).
    virtual void setNodeValue(const ZtValue& value);
    virtual ZtNodeType getNodeType() const = 0;

    virtual ZtNode* getParentNode() const;
    virtual bool hasChildNodes() const;
    // A new live list of the children.
    virtual ZtPtr<ZtNodeList> getChildNodes() const;
    virtual ZtNode* getFirstChild() const;
    virtual ZtNode* getLastChild() const;
    virtual ZtNode* getPreviousSibling() const;
    virtual ZtNode* getNextSibling() const;
    virtual ZtDocument* getOwnerDocument() const;

    // Inserts newChild before refChild (at the end when refChild is null), first taking it
    // from its old parent. insertBefore(x, x) changes nothing.
    virtual ZtNode* insertBefore(ZtNode* newChild, ZtNode* refChild);
    // Puts newChild in oldChild's place and returns oldChild with the reference the tree held.
    virtual ZtPtr<ZtNode> replaceChild(ZtNode* newChild, ZtNode* oldChild);
    // Takes oldChild out and returns it with the reference the tree held.
    virtual ZtPtr<ZtNode> removeChild(ZtNode* oldChild);
    virtual ZtNode* appendChild(ZtNode* newChild);

    virtual ZtNamedNodeMap* getAttributes() const;
    virtual bool hasAttributes() const;

    // A copy of this node (with its subtree when deep), owned by the same document and
    // detached; null for node kinds that cannot be copied.
    virtual ZtPtr<ZtNode> cloneNode(bool deep) const;
    // Copies the members of this node's own class into `target`, a node of the same class.
    virtual void cloneMembers(ZtNode* target) const;

    // Namespace look-ups through the declarations on this node and its ancestors.
    virtual ZtName lookupPrefix(ZtName uri) const;
    virtual bool isDefaultNamespace(ZtName uri) const;
    virtual ZtName lookupNamespaceUri(ZtName prefix) const;

    // Called when every attribute of a start tag has been set.
    virtual void finishAttributes();

    virtual bool isElementNode() const;
    virtual bool isProcessingInstruction() const;
    virtual bool isText() const;
    // Kinds that formatting programs built on the library give meaning to; false here.
    virtual bool isPKWO() const;
    virtual bool isArea() const;
    virtual bool isBidiOverride() const;
    virtual bool isBlock() const;
    virtual bool isBlockOrBdo(bool includeBdo) const;
    virtual bool isCSS() const;
    virtual bool isFO() const;
    virtual bool isHTML() const;
    virtual bool isInline() const;
    virtual bool isInlineBlock() const;
    virtual bool isNeutral() const;
    virtual bool isOutOfLine() const;
    virtual bool isXML() const;
    virtual bool saveTextTag() const;

    virtual UnicodeString getText() const;
    virtual void setText(const UnicodeString& text);

    // New live lists of descendants in document order: elements of a name, elements of a
    // namespace and local name, every descendant.
    virtual ZtPtr<ZtNodeList> getElementsByTagName(ZtName name) const;
    virtual ZtPtr<ZtNodeList> getElementsByTagNameNS(ZtName uri, ZtName local) const;
    virtual ZtPtr<ZtNodeList> getDescendantNodes() const;
    // A walk over every descendant in document order.
    virtual ZtNodeIterator getIterator() const;

    // The loader's way of adding a child; here appendChild. Null means the node was refused.
    virtual ZtNode* appendChildEx(ZtNode* newChild);
    // Appends the text node the owner document makes for `text` (createTextNodeElement) and
    // returns it.
    virtual ZtNode* appendChildText(const UnicodeString& text);

    // Here the parent's answers (empty, -1 without a parent); elements keep their own position.
    virtual UnicodeString getBaseUri() const;
    virtual int getSourceLineNumber() const;
    virtual void setSourceLineNumber(int line);
    virtual int getSourceColumnNumber() const;
    virtual void setSourceColumnNumber(int column);

    virtual bool isHTMLSyntax() const;
    virtual bool isXHTMLSyntax() const;
    // Whether the bidirectional level of this node has been decided (text nodes keep it).
    virtual bool isBidiDone() const;
    virtual void bidiDone(int level);

    bool getFlag(int mask) const { return (flags_ & static_cast<uint32_t>(mask)) != 0; }
    void setFlag(int mask, bool on) {
        if (on)
            flags_ |= static_cast<uint32_t>(mask);
        else
            flags_ &= ~static_cast<uint32_t>(mask);
    }
    bool isLoading() const { return getFlag(FLAG_LOADING); }
    bool isLoaded() const { return getFlag(FLAG_LOADING | FLAG_LOADED); }
    void setLoadDone() {
        if (isLoading())
            flags_ = (flags_ & ~static_cast<uint32_t>(FLAG_LOADING)) | FLAG_LOADED;
    }

    // The links as they are, without loading anything.
    ZtNode* getParentNodeFast() const { return parent_; }
    bool hasChildNodesFast() const { return lastChild_ != nullptr; }
    ZtNode* getFirstChildFast() const { return lastChild_ ? lastChild_->next_ : nullptr; }
    ZtNode* getLastChildFast() const { return lastChild_; }
    ZtNode* getNextSiblingFast() const {
        return parent_ && parent_->lastChild_ != this ? next_ : nullptr;
    }
    ZtNode* getPreviousSiblingFast() const { return prev_; }

    // The nearest ancestor that was not inserted by the program (FLAG_COMPLEMENTAL clear).
    ZtNode* getParentNodeUncomplemental() const;
    // Detaches every child, releasing the tree's reference to each.
    void removeAllChildNodes();
    // Takes the whole subtree apart, every node's links cleared before it is released, and
    // returns the number of nodes released.
    long deleteAllChildNodes();
    // Moves the siblings from `first` to `last` (to the end of first's siblings when null) to
    // the end of this node's children, in order.
    void appendChildren(ZtNode* first, ZtNode* last);
    // Appends (inserts before `refChild`) a text node holding one line feed and returns it.
    ZtNode* appendChildTextLF();
    ZtNode* insertBeforeTextLF(ZtNode* refChild);
    // This node or the first following sibling that is not a text node made only of XML white
    // space (or empty).
    ZtNode* getNextSiblingOrSelfIgnoreEmptyOrWhitespace() const;

    bool isDescendantOf(const ZtNode* other) const;
    bool isDescendantOrSelfOf(const ZtNode* other) const;
    // Document order: whether `other` comes after this node and is not inside it.
    bool isPrecedingOf(const ZtNode* other) const;
    bool isFollowingOf(const ZtNode* other) const;
    int countPrecedingSiblings() const;
    int countFollowingSiblings() const;
    int getChildNodeCount() const;
    // The number of parents up to the document (or the root of a detached tree).
    int getNodeDepth() const;
    // The 1-based position of this node in a document-order walk of the subtree of `root`
    // (root first); 0 when this node is not in that subtree.
    int getPreviousOrSelfNodeCount(const ZtNode* root) const;

    // The first child whose node name is `name`, after the child `after` when given.
    ZtNode* getChildNodeByName(ZtName name, const ZtNode* after = nullptr) const;
    ZtNode* getChildNodeByNameNS(ZtName uri, ZtName local, const ZtNode* after = nullptr) const;
    ZtNode* getChildNodeByTypeID(unsigned int typeId) const;
    ZtNode* getAncestorByName(ZtName name) const;
    ZtNode* getAncestorByName2(ZtName name1, ZtName name2) const;
    ZtNode* getAncestorOrSelfByName(ZtName name) const;
    ZtNode* getAncestorOrSelfByName2(ZtName name1, ZtName name2) const;
    ZtNode* getAncestorByNameNS(ZtName uri, ZtName local) const;
    ZtNode* getAncestorByTypeID(unsigned int typeId) const;
    ZtNode* getAncestorOrSelfByTypeID(unsigned int typeId) const;
    // The nearest node that is a proper ancestor of both nodes (OrSelf: ancestor or self).
    ZtNode* getCommonAncestor(const ZtNode* other) const;
    ZtNode* getCommonAncestorOrSelf(const ZtNode* other) const;
    // The text of every text node of the subtree in document order.
    UnicodeString getInnerText() const;

    // Nodes come from the node allocator (size classes over large chunks), not one malloc each.
    static void* operator new(std::size_t size);
    static void operator delete(void* block, std::size_t size) noexcept;
    static void* operator new(std::size_t, void* where) noexcept { return where; }
    static void operator delete(void*, void*) noexcept {}

protected:
    explicit ZtNode(ZtDocument* ownerDocument) : ownerDocument_(ownerDocument) {}
    // Destroys the subtree without recursion (see node_destroy.cpp); children held from
    // outside survive, detached, with their own subtrees.
    ~ZtNode() override;

private:
    friend struct NodeLinks;
    friend class ZtDocument;

    // Layout: the flags share the word after the reference count.
    uint32_t flags_ = 0;
    ZtNode* parent_ = nullptr;
    ZtNode* next_ = nullptr;
    ZtNode* prev_ = nullptr;
    ZtNode* lastChild_ = nullptr;
    ZtDocument* ownerDocument_;
};

// Base of element nodes: the attribute map (one per element, made with it) and the position of
// the start tag in the source.
class ZT_EXPORT ZtElement : public ZtNode {
    ZT_DECLARE_TYPE(ZtElement, ZtNode, ZtTypeId::Element)

public:
    ZtNodeType getNodeType() const override { return ELEMENT_NODE; }
    bool isElementNode() const override { return true; }
    // Through the element's own namespace and the declarations (xmlns and xmlns:prefix
    // attributes) on it and its ancestor elements, innermost first.
    ZtName lookupPrefix(ZtName uri) const override;
    ZtName lookupNamespaceUri(ZtName prefix) const override;
    ZtNamedNodeMap* getAttributes() const override;
    bool hasAttributes() const override;
    void cloneMembers(ZtNode* target) const override;
    int getSourceLineNumber() const override;
    void setSourceLineNumber(int line) override { line_ = line; }
    int getSourceColumnNumber() const override;
    void setSourceColumnNumber(int column) override { column_ = column; }

    // The value of the attribute of this node name (of this namespace URI and local name); the
    // null value when there is none.
    virtual ZtValue getAttribute(ZtName name) const;
    virtual ZtValue getAttributeNS(ZtName uri, ZtName local) const;
    // Sets the value of the attribute of this name, making the attribute through the owner
    // document's factory when there is none yet.
    virtual void setAttribute(ZtName name, const ZtValue& value);
    virtual void setAttributeNS(ZtName uri, ZtName prefix, ZtName local, const ZtValue& value);
    virtual void setAttributeNS(ZtName uri, ZtName qname, const ZtValue& value);
    virtual void removeAttribute(ZtName name);
    virtual void removeAttributeNS(ZtName uri, ZtName local);
    virtual ZtAttr* getAttributeNode(ZtName name) const;
    virtual ZtAttr* getAttributeNodeNS(ZtName uri, ZtName local) const;
    // Appends to `found` (when not null) every attribute of this local name, whatever its
    // namespace; returns how many there are.
    virtual int getAttributeNodeLocal(ZtName local, std::vector<ZtPtr<ZtAttr>>* found) const;
    // Attach an attribute node (see ZtNamedNodeMap::setNamedItem) and return the one replaced.
    virtual ZtPtr<ZtAttr> setAttributeNode(ZtAttr* attr);
    virtual ZtPtr<ZtAttr> setAttributeNodeNS(ZtAttr* attr);
    // Takes an attribute of this element out and returns it. Null: error 3; an attribute that
    // is not on this element: error 9.
    virtual ZtPtr<ZtAttr> removeAttributeNode(ZtAttr* oldAttr);
    virtual bool hasAttribute(ZtName name) const;
    virtual bool hasAttributeNS(ZtName uri, ZtName local) const;
    virtual bool hasAttributeLocal(ZtName local) const;
    // The loader's entry: an attribute from its source text. A text that is one of the
    // built-in names (a keyword such as "center" or "always") becomes that name value, which
    // costs no allocation and gives the same text through getStringValue and toString; so do
    // namespace declarations (attributes in the xmlns namespace), since namespace URIs are names
    // throughout the library. Any other text becomes a string value holding it exactly.
    virtual void setAttributeEx(ZtName uri, ZtName prefix, ZtName local, const UnicodeString& text);

    // Appends to `found` (when not null) the values of every attribute of this local name;
    // returns how many there are.
    int getAttributeLocal(ZtName local, std::vector<ZtValue>* found) const;
    // The namespace declared on this element for `prefix` (the default namespace for the empty
    // prefix), adding, replacing or removing that declaration.
    ZtName getAttributeXMLNS(ZtName prefix) const;
    void setAttributeXMLNS(ZtName prefix, ZtName uri);
    void removeAttributeXMLNS(ZtName prefix);

protected:
    explicit ZtElement(ZtDocument* ownerDocument);
    ~ZtElement() override;

    // Completes a cloneNode: `copy` is a new element of this element's class; this copies the
    // members into it (cloneMembers) and, when deep, copies of the whole subtree.
    ZtPtr<ZtNode> finishClone(ZtElement* copy, bool deep) const;
    // The namespace URI the element carries itself, without looking at declarations (empty for
    // an element that only has a prefix). Here getNamespaceUri().
    virtual ZtName getOwnNamespaceUri() const;

private:
    friend class AttrNodeMap;

    ZtPtr<AttrNodeMap> attributes_;
    int32_t line_ = -1;
    int32_t column_ = -1;
};

// Base of attribute nodes. While attached, an attribute's parent link names its owner element;
// it is never one of that element's children.
class ZT_EXPORT ZtAttr : public ZtNode {
    ZT_DECLARE_TYPE(ZtAttr, ZtNode, ZtTypeId::Attr)

public:
    ZtNodeType getNodeType() const override { return ATTRIBUTE_NODE; }
    ZtName lookupNamespaceUri(ZtName prefix) const override;
    ZtName lookupPrefix(ZtName uri) const override;
    ZtValue getNodeValue() const override { return getValue(); }
    void setNodeValue(const ZtValue& value) override { setValue(value); }
    // The value as text (its text form), and a new string value holding `text`.
    UnicodeString getText() const override;
    void setText(const UnicodeString& text) override;

    virtual ZtValue getValue() const = 0;
    virtual void setValue(const ZtValue& value) = 0;
    // The element the attribute belongs to, or null.
    virtual ZtElement* getOwnerElement() const;

protected:
    explicit ZtAttr(ZtDocument* ownerDocument) : ZtNode(ownerDocument) {}
    ~ZtAttr() override;
};

// An attribute without a namespace: its local name and value kept together in one named value.
class ZT_EXPORT Attr : public ZtAttr {
public:
    ZtName getLocalName() const override { return named_.getName(); }
    ZtName getNodeName() const override { return named_.getName(); }
    ZtValue getValue() const override { return named_.getValue(); }
    void setValue(const ZtValue& value) override { named_ = ZtNamedValue(named_.getName(), value); }
    ZtPtr<ZtNode> cloneNode(bool deep) const override;

    // The value without a copy.
    const ZtValue& getValueRef() const { return named_.getValue(); }

protected:
    friend class ZtDocument;
    Attr(ZtDocument* ownerDocument, ZtName local, const ZtValue& value = ZtValue())
        : ZtAttr(ownerDocument), named_(local, value) {}
    ~Attr() override;

private:
    ZtNamedValue named_;
};

// An attribute with a namespace URI and a prefix. When no URI was given but a prefix was, the
// URI is looked up from the declarations in scope at its element.
class ZT_EXPORT AttrNS : public Attr {
public:
    UnicodeString getTypeName() const override;
    ZtName getNodeName() const override;
    ZtName getPrefix() const override { return prefix_; }
    void setPrefix(ZtName prefix) override { prefix_ = prefix; }
    ZtName getNamespaceUri() const override;
    ZtPtr<ZtNode> cloneNode(bool deep) const override;

protected:
    friend class ZtDocument;
    AttrNS(ZtDocument* ownerDocument, ZtName uri, ZtName prefix, ZtName local,
           const ZtValue& value = ZtValue())
        : Attr(ownerDocument, local, value), uri_(uri), prefix_(prefix) {}
    ~AttrNS() override;

private:
    ZtName uri_;
    ZtName prefix_;
};

// An element with a prefix and a local name; its namespace URI is looked up from the
// declarations in scope each time it is asked for.
class ZT_EXPORT Element : public ZtElement {
public:
    UnicodeString getTypeName() const override;
    ZtName getLocalName() const override { return local_; }
    ZtName getPrefix() const override { return prefix_; }
    void setPrefix(ZtName prefix) override { prefix_ = prefix; }
    ZtName getNamespaceUri() const override { return lookupNamespaceUri(prefix_); }
    ZtPtr<ZtNode> cloneNode(bool deep) const override;

protected:
    friend class ZtDocument;
    Element(ZtDocument* ownerDocument, ZtName prefix, ZtName local)
        : ZtElement(ownerDocument), prefix_(prefix), local_(local) {}
    ~Element() override;
    ZtName getOwnNamespaceUri() const override { return ZtName(); }

    ZtName prefix_;
    ZtName local_;
};

// An element that stores its namespace URI.
class ZT_EXPORT ElementNS : public Element {
public:
    UnicodeString getTypeName() const override;
    ZtName getNamespaceUri() const override { return uri_; }
    ZtPtr<ZtNode> cloneNode(bool deep) const override;

protected:
    friend class ZtDocument;
    ElementNS(ZtDocument* ownerDocument, ZtName uri, ZtName prefix, ZtName local)
        : Element(ownerDocument, prefix, local), uri_(uri) {}
    ~ElementNS() override;
    ZtName getOwnNamespaceUri() const override { return uri_; }

    ZtName uri_;
};

// A text node: its text and its bidirectional level (-1 until decided).
class ZT_EXPORT ZtTextNode : public ZtNode {
    ZT_DECLARE_TYPE(ZtTextNode, ZtNode, ZtTypeId::TextNode)

public:
    ZtName getLocalName() const override;
    ZtNodeType getNodeType() const override { return TEXT_NODE; }
    bool isText() const override { return true; }
    ZtPtr<ZtNode> cloneNode(bool deep) const override;
    void cloneMembers(ZtNode* target) const override;
    UnicodeString getText() const override { return text_; }
    void setText(const UnicodeString& text) override { text_ = text; }
    // The text as a string value; a value given is stored as its text form.
    ZtValue getNodeValue() const override;
    void setNodeValue(const ZtValue& value) override;
    bool isBidiDone() const override { return bidiLevel_ >= 0; }
    void bidiDone(int level) override { bidiLevel_ = level; }

    // The length of the text in UTF-16 units.
    int getLength() const { return text_.length(); }
    const UnicodeString& getData() const { return text_; }
    void setData(const UnicodeString& text) { text_ = text; }
    int getBidiLevel() const { return bidiLevel_; }

protected:
    friend class ZtDocument;
    ZtTextNode(ZtDocument* ownerDocument, const UnicodeString& text)
        : ZtNode(ownerDocument), text_(text) {}
    ~ZtTextNode() override;

private:
    UnicodeString text_;
    int32_t bidiLevel_ = -1;
};

// A processing instruction: its target (the local name) and its data (the text).
class ZT_EXPORT ZtProcessingInstruction : public ZtNode {
    ZT_DECLARE_TYPE(ZtProcessingInstruction, ZtNode, ZtTypeId::ProcessingInstruction)

public:
    ZtName getLocalName() const override { return target_; }
    ZtNodeType getNodeType() const override { return PROCESSING_INSTRUCTION_NODE; }
    bool isProcessingInstruction() const override { return true; }
    ZtPtr<ZtNode> cloneNode(bool deep) const override;
    UnicodeString getText() const override { return data_; }
    void setText(const UnicodeString& data) override { data_ = data; }

    ZtName getTarget() const { return target_; }
    const UnicodeString& getData() const { return data_; }

protected:
    friend class ZtDocument;
    ZtProcessingInstruction(ZtDocument* ownerDocument, ZtName target, const UnicodeString& data)
        : ZtNode(ownerDocument), target_(target), data_(data) {}
    ~ZtProcessingInstruction() override;

private:
    ZtName target_;
    UnicodeString data_;
};

// A node that only gathers children; it cannot be copied (cloneNode gives null).
class ZT_EXPORT ZtDocumentFragment : public ZtNode {
    ZT_DECLARE_TYPE(ZtDocumentFragment, ZtNode, ZtTypeId::DocumentFragment)

public:
    ZtName getLocalName() const override;
    ZtNodeType getNodeType() const override { return DOCUMENT_FRAGMENT_NODE; }
    ZtName lookupNamespaceUri(ZtName prefix) const override;
    ZtName lookupPrefix(ZtName uri) const override;

protected:
    friend class ZtDocument;
    explicit ZtDocumentFragment(ZtDocument* ownerDocument) : ZtNode(ownerDocument) {}
    ~ZtDocumentFragment() override;
};

// The root of a tree and the factory of all its nodes. Made with its public default
// constructor and held in a ZtPtr<ZtDocument>; every node it makes belongs to it for life.
//
// Loading (building a tree from a parser, at once or lazily in pull mode) and saving come with
// the XML parser and serializer: the document keeps the loader's state here (the lock taken by
// loadNextNode, the last loading node, the skip depth, pull mode), and the accessors of every
// node call loadNextNode when a node still loading is asked for children it does not have.
class ZT_EXPORT ZtDocument : public ZtNode {
    ZT_DECLARE_TYPE(ZtDocument, ZtNode, ZtTypeId::Document)

public:
    ZtDocument();

    ZtName getLocalName() const override;
    ZtNodeType getNodeType() const override { return DOCUMENT_NODE; }
    ZtDocument* getOwnerDocument() const override;
    ZtName lookupNamespaceUri(ZtName prefix) const override;
    ZtName lookupPrefix(ZtName uri) const override;
    UnicodeString getBaseUri() const override;

    // The first child that is an element, or null.
    virtual ZtElement* getDocumentElement() const;
    // An Element whose prefix and local name are split from `qname`.
    virtual ZtPtr<ZtElement> createElement(ZtName qname);
    virtual ZtPtr<ZtElement> createElementNS(ZtName uri, ZtName prefix, ZtName local);
    virtual ZtPtr<ZtElement> createElementNS(ZtName uri, ZtName qname);
    virtual ZtPtr<ZtTextNode> createTextNode(const UnicodeString& text);
    virtual ZtPtr<ZtProcessingInstruction> createProcessingInstruction(ZtName target,
                                                                       const UnicodeString& data);
    virtual ZtPtr<ZtDocumentFragment> createDocumentFragment();
    // "xmlns" gives an attribute in the xmlns namespace; a name without a prefix a plain
    // attribute; a prefixed name an attribute whose namespace follows from the prefix for the
    // predefined prefixes "xml", "xmlns" and "xlink", and is left empty (to be looked up from
    // the declarations in scope) for any other prefix.
    virtual ZtPtr<ZtAttr> createAttribute(ZtName qname);
    virtual ZtPtr<ZtAttr> createAttributeNS(ZtName uri, ZtName prefix, ZtName local);
    virtual ZtPtr<ZtAttr> createAttributeNS(ZtName uri, ZtName qname);
    // The text node appendChildText adds to `parent`; documents of formatting programs
    // override it to wrap text in an element of their own.
    virtual ZtPtr<ZtNode> createTextNodeElement(const UnicodeString& text, ZtNode* parent);

    // The base URI when one is set, else the document URI.
    void setBaseUri(const UnicodeString& uri);
    bool isBaseUriSpecified() const { return !baseUri_.isEmpty(); }
    // The URI the document was loaded from when known, else the base URI.
    UnicodeString getDocumentUri() const;

    bool getPullMode() const { return pullMode_; }
    void setPullMode(bool pull) { pullMode_ = pull; }
    ZtNode* getLastLoadingNode() const { return lastLoadingNode_; }
    bool hasXInclude() const { return hasXInclude_; }
    // Ends a load: loadNextNode returns null from now on; the nodes built so far stay.
    void abort();
    // Marks the nodes still open in a load (the last loading node's element and its ancestors)
    // as loaded and ends the load.
    void closeDocumentElement();
    // Builds the next node from the loader's input under the document's lock; null when no
    // load is under way or the input is exhausted.
    virtual ZtNode* loadNextNode();

protected:
    ~ZtDocument() override;

private:
    ZtLock lock_;
    ZtNameTable* nameTable_;
    UnicodeString baseUri_;
    UnicodeString documentUri_;
    ZtNode* lastLoadingNode_ = nullptr;
    int32_t skipDepth_ = 0;
    bool pullMode_ = false;
    bool hasXInclude_ = false;
};

// Prefix-to-namespace bindings of one scope, in the order they were declared.
// It has no type identifier of its own.
class ZT_EXPORT ZtNamespaceMap : public ZtRCObject {
public:
    ZtNamespaceMap() = default;
    unsigned int getTypeID() const override { return ZtTypeId::RCObject; }
    UnicodeString getTypeName() const override;

    int getCount() const { return static_cast<int>(entries_.size()); }
    // The i-th binding; the empty name outside 0..getCount()-1.
    ZtName getPrefix(int i) const;
    ZtName getUri(int i) const;
    // Whether `prefix` is bound here; its URI in `uri` when it is.
    bool find(ZtName prefix, ZtName* uri) const;
    // The first prefix bound to `uri`, in `prefix`.
    bool findPrefix(ZtName uri, ZtName* prefix) const;
    // Binds prefix to uri, replacing an earlier binding of the same prefix in place.
    void bind(ZtName prefix, ZtName uri);

protected:
    ~ZtNamespaceMap() override;

private:
    std::vector<std::pair<ZtName, ZtName>> entries_;
};

// Prefix bindings by scope while a document is read or written: one scope per open element,
// innermost last. The base scope binds "xml" and "xmlns" and is never removed. It has no type
// identifier of its own.
class ZT_EXPORT ZtNamespaceManager : public ZtRCObject {
public:
    ZtNamespaceManager();
    ZtNamespaceManager(const ZtNamespaceManager&) = delete;
    ZtNamespaceManager& operator=(const ZtNamespaceManager&) = delete;
    unsigned int getTypeID() const override { return ZtTypeId::RCObject; }
    UnicodeString getTypeName() const override;

    // Opens the scope of an element with these names.
    void pushScope(ZtName prefix, ZtName local, ZtName uri);
    // Closes the innermost scope; false (and nothing changes) when only the base is left.
    bool popScope();
    // Binds prefix to uri in the innermost scope unless that binding is already in effect.
    void declarePrefix(ZtName prefix, ZtName uri);
    ZtName lookupNamespaceUri(ZtName prefix) const;
    ZtName lookupPrefix(ZtName uri) const;
    ZtName getDefaultNamespace() const;
    // Whether a scope of an element with this prefix and local name is open.
    bool isOpenElement(ZtName prefix, ZtName local) const;

    // Open scopes, the base included (1 when no element is open).
    int getScopeCount() const { return static_cast<int>(scopes_.size()); }
    // The bindings declared in the innermost scope (null when it declared none), and in the
    // scope `depth` (0 is the base).
    ZtNamespaceMap* getCurrentNamespaceMap() const { return scopes_.back().map.get(); }
    ZtNamespaceMap* getNamespaceMap(int depth) const;
    int getCurrentNamespaceCount() const;
    ZtName getCurrentNamespacePrefix(int i) const;
    ZtName getCurrentNamespaceUri(int i) const;

protected:
    ~ZtNamespaceManager() override;

private:
    struct Scope {
        ZtPtr<ZtNamespaceMap> map;
        ZtName prefix;
        ZtName local;
        ZtName uri;
    };
    std::vector<Scope> scopes_;
    ZtNameTable* nameTable_;
};

} // namespace ZtCommonNS
