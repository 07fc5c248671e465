// The attribute map of an element.
#pragma once

#include <vector>

#include "ztcommon/dom.h"

namespace ZtCommonNS {

// The attributes of one element in insertion order, as a singly circular list through their
// next-sibling links. The map holds one link: to the last attribute (the first is its next),
// or, while the map is empty, back to its element. It holds one reference to each attribute.
// When the element goes away before the map (the map is held from outside), the attributes
// lose their owner and an empty map links to nothing.
class AttrNodeMap : public ZtNamedNodeMap {
public:
    explicit AttrNodeMap(ZtElement* element);
    UnicodeString getTypeName() const override;

    ZtNode* firstNode() const override;
    ZtNode* lastNode() const override { return isEmpty() ? nullptr : link_; }
    ZtNode* nextNode(const ZtNode* node) const override;
    ZtNode* previousNode(const ZtNode* node) const override;

    ZtAttr* getNamedItem(ZtName name) const override;
    ZtAttr* getNamedItemNS(ZtName uri, ZtName local) const override;
    int getNamedItemsLocal(ZtName local, std::vector<ZtAttr*>* found) const override;
    ZtPtr<ZtAttr> setNamedItem(ZtAttr* attr) override;
    ZtPtr<ZtAttr> setNamedItemNS(ZtAttr* attr) override;
    ZtPtr<ZtAttr> removeNamedItem(ZtName name) override;
    ZtPtr<ZtAttr> removeNamedItemNS(ZtName uri, ZtName local) override;

    bool isEmpty() const;
    // The element the map belongs to; null once that element is gone.
    ZtElement* getOwnerElement() const;
    // Takes `attr` out of the map when it is there, handing back the map's reference.
    ZtPtr<ZtAttr> remove(ZtAttr* attr);
    // Adds a new attribute (detached, of this element's document, with no attribute of the
    // same name in the map) at the end, without the checks and search setNamedItem makes.
    void appendNew(ZtAttr* attr);
    // Called by the element's destructor.
    void elementGone();

protected:
    friend class ZtElement; // destroys a map that it alone holds
    ~AttrNodeMap() override;

private:
    // The checks of setNamedItem; returns the owner element.
    ZtElement* checkSettable(ZtAttr* attr, int sourceId) const;
    // Puts a checked attribute in: in place of the first attribute `same` says matches, or at
    // the end. Returns the attribute replaced.
    template <class Same> ZtPtr<ZtAttr> put(ZtAttr* attr, ZtElement* element, Same same);
    // Unlinks `victim`, whose predecessor on the circle is `prev`.
    ZtPtr<ZtAttr> unlink(ZtNode* prev, ZtNode* victim);
    template <class Match> ZtPtr<ZtAttr> removeFirst(Match match);

    ZtNode* link_;
};

} // namespace ZtCommonNS
