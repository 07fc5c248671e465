// ZtUtil::parseHexNum for UTF-16, wide and ICU texts.
#include "text/hex_number.h"

#include "ztcommon/util.h"

namespace ZtCommonNS {

bool ZtUtil::parseHexNum(const char16_t*& pos, const char16_t* limit, int32_t& value) noexcept {
    if (pos == nullptr || pos == limit)
        return false;
    return readHexNumber(pos, limit, value);
}

bool ZtUtil::parseHexNum(const wchar_t*& pos, int32_t& value) noexcept {
    if (pos == nullptr)
        return false;
    return readHexNumber<wchar_t>(pos, nullptr, value);
}

bool ZtUtil::parseHexNum(const UnicodeString& text, int32_t& index, int32_t& value) noexcept {
    if (index < 0 || index >= text.length())
        return false;
    const char16_t* begin = text.getBuffer();
    const char16_t* pos = begin + index;
    if (!readHexNumber(pos, begin + text.length(), value))
        return false;
    index = static_cast<int32_t>(pos - begin);
    return true;
}

} // namespace ZtCommonNS
