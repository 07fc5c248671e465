// Qualified names: "prefix:local" joined and split as interned names.
#include "dom/qname.h"

#include "ztcommon/util.h"

namespace ZtCommonNS {

namespace {

// The position of the colon that separates prefix and local name, or -1. A colon at either end
// separates nothing: the name is then taken whole as a local name.
int32_t separator(const UnicodeString& text) {
    int32_t colon = text.indexOf(u':');
    if (colon <= 0 || colon == text.length() - 1)
        return -1;
    return colon;
}

} // namespace

bool splitQName(ZtName qname, ZtName* prefix, ZtName* local) {
    const UnicodeString& text = qname.getNameString();
    int32_t colon = separator(text);
    if (colon < 0) {
        *prefix = ZtName();
        *local = qname;
        return false;
    }
    *prefix = ZtName(UnicodeString(text, 0, colon));
    *local = ZtName(UnicodeString(text, colon + 1));
    return true;
}

ZtName ZtXmlUtil::makeQName(ZtName prefix, ZtName local) {
    if (prefix.isEmpty())
        return local;
    UnicodeString text(prefix.getNameString());
    text.append(u':').append(local.getNameString());
    return ZtName(text);
}

ZtName ZtXmlUtil::getPrefixFromQName(ZtName qname) {
    const UnicodeString& text = qname.getNameString();
    int32_t colon = separator(text);
    return colon < 0 ? ZtName() : ZtName(UnicodeString(text, 0, colon));
}

ZtName ZtXmlUtil::getLocalPartFromQName(ZtName qname) {
    const UnicodeString& text = qname.getNameString();
    int32_t colon = separator(text);
    return colon < 0 ? qname : ZtName(UnicodeString(text, colon + 1));
}

} // namespace ZtCommonNS
