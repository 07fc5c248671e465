// ZtNamespaceMap and ZtNamespaceManager: prefix bindings by scope.
#include "ztcommon/dom.h"

namespace ZtCommonNS {

ZtNamespaceMap::~ZtNamespaceMap() = default;

UnicodeString ZtNamespaceMap::getTypeName() const {
    return UnicodeString(u"ZtNamespaceMap");
}

ZtName ZtNamespaceMap::getPrefix(int i) const {
    return i >= 0 && i < getCount() ? entries_[static_cast<size_t>(i)].first : ZtName();
}

ZtName ZtNamespaceMap::getUri(int i) const {
    return i >= 0 && i < getCount() ? entries_[static_cast<size_t>(i)].second : ZtName();
}

bool ZtNamespaceMap::find(ZtName prefix, ZtName* uri) const {
    for (const auto& [p, u] : entries_) {
        if (p == prefix) {
            *uri = u;
            return true;
        }
    }
    return false;
}

bool ZtNamespaceMap::findPrefix(ZtName uri, ZtName* prefix) const {
    for (const auto& [p, u] : entries_) {
        if (u == uri) {
            *prefix = p;
            return true;
        }
    }
    return false;
}

void ZtNamespaceMap::bind(ZtName prefix, ZtName uri) {
    for (auto& entry : entries_) {
        if (entry.first == prefix) {
            entry.second = uri;
            return;
        }
    }
    entries_.emplace_back(prefix, uri);
}

ZtNamespaceManager::ZtNamespaceManager() : nameTable_(ZtNameTable::addRefSharedNameTable()) {
    ZtPtr<ZtNamespaceMap> base(new ZtNamespaceMap);
    base->bind(ZtName(NM_xml), ZtName(NM_NS_XML));
    base->bind(ZtName(NM_xmlns), ZtName(NM_NS_XMLNS));
    scopes_.push_back({base, ZtName(), ZtName(), ZtName()});
}

ZtNamespaceManager::~ZtNamespaceManager() {
    scopes_.clear();
    ZtNameTable::releaseSharedNameTable();
    nameTable_ = nullptr;
}

UnicodeString ZtNamespaceManager::getTypeName() const {
    return UnicodeString(u"ZtNamespaceManager");
}

void ZtNamespaceManager::pushScope(ZtName prefix, ZtName local, ZtName uri) {
    scopes_.push_back({ZtPtr<ZtNamespaceMap>(), prefix, local, uri});
}

bool ZtNamespaceManager::popScope() {
    if (scopes_.size() <= 1)
        return false;
    scopes_.pop_back();
    return true;
}

void ZtNamespaceManager::declarePrefix(ZtName prefix, ZtName uri) {
    if (lookupNamespaceUri(prefix) == uri)
        return;
    Scope& scope = scopes_.back();
    if (!scope.map)
        scope.map = ZtPtr<ZtNamespaceMap>(new ZtNamespaceMap);
    scope.map->bind(prefix, uri);
}

// Innermost scope first: the element's own prefix, then the scope's declarations. An empty
// binding of the default namespace is an answer (the default was undeclared there); an empty
// binding of another prefix is passed over.
ZtName ZtNamespaceManager::lookupNamespaceUri(ZtName prefix) const {
    for (auto it = scopes_.rbegin(); it != scopes_.rend(); ++it) {
        if (it->prefix == prefix && !it->uri.isEmpty())
            return it->uri;
        ZtName uri;
        if (it->map && it->map->find(prefix, &uri) && (prefix.isEmpty() || !uri.isEmpty()))
            return uri;
    }
    return ZtName();
}

ZtName ZtNamespaceManager::lookupPrefix(ZtName uri) const {
    for (auto it = scopes_.rbegin(); it != scopes_.rend(); ++it) {
        if (it->uri == uri && !it->prefix.isEmpty())
            return it->prefix;
        ZtName prefix;
        if (it->map && it->map->findPrefix(uri, &prefix))
            return prefix;
    }
    return ZtName();
}

ZtName ZtNamespaceManager::getDefaultNamespace() const {
    return lookupNamespaceUri(ZtName());
}

bool ZtNamespaceManager::isOpenElement(ZtName prefix, ZtName local) const {
    for (auto it = scopes_.rbegin(); it != scopes_.rend(); ++it) {
        if (it->prefix == prefix && it->local == local && it != scopes_.rend() - 1)
            return true;
    }
    return false;
}

ZtNamespaceMap* ZtNamespaceManager::getNamespaceMap(int depth) const {
    if (depth < 0 || depth >= getScopeCount())
        return nullptr;
    return scopes_[static_cast<size_t>(depth)].map.get();
}

int ZtNamespaceManager::getCurrentNamespaceCount() const {
    ZtNamespaceMap* map = getCurrentNamespaceMap();
    return map ? map->getCount() : 0;
}

ZtName ZtNamespaceManager::getCurrentNamespacePrefix(int i) const {
    ZtNamespaceMap* map = getCurrentNamespaceMap();
    return map ? map->getPrefix(i) : ZtName();
}

ZtName ZtNamespaceManager::getCurrentNamespaceUri(int i) const {
    ZtNamespaceMap* map = getCurrentNamespaceMap();
    return map ? map->getUri(i) : ZtName();
}

} // namespace ZtCommonNS
