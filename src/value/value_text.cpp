// The text forms of values: plain (toString), with quoted strings (toQuotedString) and CSS
// syntax (toCssText).
#include <charconv>
#include <cmath>
#include <cstdio>

#include "ztcommon/value.h"

namespace ZtCommonNS {

namespace {

enum class Style { Plain, Quoted, Css };

// Deeper nesting (only possible through arrays or maps that contain themselves) is cut short.
constexpr int kMaxDepth = 64;

const char16_t* unitKeyword(ZtUnitType unit) {
    switch (unit) {
    case ZT_UNIT_PERCENT:
        return u"%";
    case ZT_UNIT_EM:
        return u"em";
    case ZT_UNIT_EX:
        return u"ex";
    case ZT_UNIT_PX:
        return u"px";
    case ZT_UNIT_CM:
        return u"cm";
    case ZT_UNIT_MM:
        return u"mm";
    case ZT_UNIT_IN:
        return u"in";
    case ZT_UNIT_PT:
        return u"pt";
    case ZT_UNIT_PC:
    case ZT_UNIT_PC2:
        return u"pc";
    case ZT_UNIT_JPT:
        return u"jpt";
    case ZT_UNIT_Q:
        return u"q";
    case ZT_UNIT_DEG:
        return u"deg";
    case ZT_UNIT_RAD:
        return u"rad";
    case ZT_UNIT_GRAD:
        return u"grad";
    case ZT_UNIT_DD:
        return u"dd";
    case ZT_UNIT_CC:
        return u"cc";
    case ZT_UNIT_TWIP:
        return u"twip";
    case ZT_UNIT_REM:
        return u"rem";
    case ZT_UNIT_CH:
        return u"ch";
    case ZT_UNIT_VW:
        return u"vw";
    case ZT_UNIT_VH:
        return u"vh";
    case ZT_UNIT_VMIN:
        return u"vmin";
    case ZT_UNIT_VMAX:
        return u"vmax";
    case ZT_UNIT_LH:
        return u"lh";
    case ZT_UNIT_RLH:
        return u"rlh";
    case ZT_UNIT_PVW:
        return u"pvw";
    case ZT_UNIT_PVH:
        return u"pvh";
    case ZT_UNIT_PVMIN:
        return u"pvmin";
    case ZT_UNIT_PVMAX:
        return u"pvmax";
    case ZT_UNIT_VI:
        return u"vi";
    case ZT_UNIT_VB:
        return u"vb";
    case ZT_UNIT_IC:
        return u"ic";
    case ZT_UNIT_CAP:
        return u"cap";
    case ZT_UNIT_EMU:
        return u"emu";
    default:
        return u"";
    }
}

void appendAscii(UnicodeString& out, const char* begin, const char* end) {
    out.append(UnicodeString(begin, static_cast<int32_t>(end - begin), US_INV));
}

template <class Number> void appendNumber(UnicodeString& out, Number n) {
    char buffer[48];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, n);
    appendAscii(out, buffer, result.ptr);
}

void appendColor(UnicodeString& out, int color) {
    char buffer[16];
    auto bits = static_cast<unsigned>(color);
    int n = std::snprintf(buffer, sizeof buffer, bits <= 0xFFFFFFu ? "#%06X" : "#%08X", bits);
    appendAscii(out, buffer, buffer + n);
}

// A CSS string in double quotes: quotes and backslashes escaped, control characters as hex
// escapes ended by a space.
void appendCssString(UnicodeString& out, const UnicodeString& text) {
    out.append(u'"');
    for (int32_t i = 0, n = text.length(); i < n; ++i) {
        char16_t c = text.charAt(i);
        if (c == u'"' || c == u'\\') {
            out.append(u'\\').append(c);
        } else if (c < 0x20 || c == 0x7F) {
            char buffer[8];
            int k = std::snprintf(buffer, sizeof buffer, "\\%x ", static_cast<unsigned>(c));
            appendAscii(out, buffer, buffer + k);
        } else {
            out.append(c);
        }
    }
    out.append(u'"');
}

UnicodeString characterText(int codePoint) {
    bool valid = codePoint >= 0 && codePoint <= 0x10FFFF;
    return UnicodeString(static_cast<UChar32>(valid ? codePoint : 0xFFFD));
}

void write(UnicodeString& out, const ZtValue& value, Style style, int depth);

void writeNumber(UnicodeString& out, const ZtValue& value, Style style) {
    ZtUnitType unit = value.getUnitType();
    if (value.isInteger()) {
        int n = value.getIntegerValue();
        if (unit == ZT_UNIT_CHARACTER) {
            if (style == Style::Css)
                appendCssString(out, characterText(n));
            else
                out.append(characterText(n));
            return;
        }
        if (unit == ZT_UNIT_COLOR) {
            appendColor(out, n);
            return;
        }
        appendNumber(out, n);
    } else {
        float x = value.getRealValue(unit);
        if (!std::isfinite(x)) {
            out.append(std::isnan(x) ? u"nan" : x > 0 ? u"inf" : u"-inf");
            return;
        }
        appendNumber(out, x == 0.0f ? 0.0f : x); // no "-0"
    }
    out.append(unitKeyword(unit));
}

void writeString(UnicodeString& out, const ZtValue& value, Style style) {
    const UnicodeString& text = value.getStringValue();
    if (style == Style::Plain) {
        out.append(text);
    } else if (style == Style::Css && value.isUriString()) {
        out.append(u"url(");
        appendCssString(out, text);
        out.append(u')');
    } else {
        appendCssString(out, text);
    }
}

void writeArray(UnicodeString& out, const ZtValueArray* array, Style style, int depth) {
    bool first = true;
    for (const ZtValue& item : *array) {
        if (!first)
            out.append(u' ');
        first = false;
        bool nested = item.isArray();
        if (nested)
            out.append(u'(');
        write(out, item, style, depth + 1);
        if (nested)
            out.append(u')');
    }
}

void writeMap(UnicodeString& out, const ZtNamedValueMap* map, Style style, int depth) {
    out.append(u'{');
    bool first = true;
    for (const ZtNamedValue& entry : *map) {
        if (!first)
            out.append(u"; ");
        first = false;
        out.append(entry.getName().getNameString()).append(u": ");
        write(out, entry.getValue(), style, depth + 1);
    }
    out.append(u'}');
}

void write(UnicodeString& out, const ZtValue& value, Style style, int depth) {
    if (depth > kMaxDepth) {
        out.append(u"...");
        return;
    }
    switch (value.getValueType()) {
    case ZT_VALUE_NULL:
        break;
    case ZT_VALUE_INTEGER:
    case ZT_VALUE_REAL:
        writeNumber(out, value, style);
        break;
    case ZT_VALUE_NAME:
        out.append(value.getNameValue().getNameString());
        break;
    case ZT_VALUE_STRING:
        writeString(out, value, style);
        break;
    case ZT_VALUE_OBJECT:
        if (const ZtRCObject* object = value.getObjectValue())
            out.append(object->getTypeName());
        break;
    case ZT_VALUE_ARRAY:
        if (const ZtValueArray* array = value.getValueArray())
            writeArray(out, array, style, depth);
        break;
    case ZT_VALUE_COMPOUND:
        if (const ZtNamedValueMap* map = value.getNamedValueMap())
            writeMap(out, map, style, depth);
        break;
    }
}

} // namespace

UnicodeString ZtValue::toString(bool quoteStrings) const {
    UnicodeString out;
    write(out, *this, quoteStrings ? Style::Quoted : Style::Plain, 0);
    return out;
}

UnicodeString ZtValue::toCssText() const {
    UnicodeString out;
    write(out, *this, Style::Css, 0);
    return out;
}

} // namespace ZtCommonNS
