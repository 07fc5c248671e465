// raiseError: composes the wording of the library's own errors from a code, the raising
// operation and up to two texts.
#include <array>
#include <string_view>

#include "foundation/raise_error.h"

namespace ZtCommonNS {

namespace {

// Source names by id. Several are cut short and are kept exactly so: host programs match them.
constexpr std::array<std::u16string_view, 27> kSourceNames = {
    u"ZtDocument::loadNextNode",
    u"ZtDocument::doSave",
    u"AttrNodeMap::setNamedItem",
    u"AttrNodeMap::setNamedItemNS",
    u"ZtElement::removeAttributeNode",
    u"ZtNode::setNodeValue",
    u"ZtNode::insertBefore",
    u"ZtNode::replaceChild",
    u"ZtNode::removeChild",
    u"ZtNode::appendChild",
    u"ZtXmlParserImpl::checkStream",
    u"ZtXmlParserImpl::pushStream",
    u"ZtXmlParserImpl::setInput",
    u"ZtXmlParserImpl::isWhitespace",
    u"ZtXmlParserImpl::isEmptyElementTag",
    u"ZtXmlParserImpl::getAttributeNamespace",
    u"ZtXmlParserImpl::getAttributeName",
    u"ZtXmlParserImpl::getAttributePrefix",
    u"ZtXmlParserImpl::getAttributeValue",
    u"ZtXmlSerializerImpl::setOutput",
    u"ZtXmlSerializerImpl::startDocumen",
    u"ZtXmlSerializerImpl::attributeSub",
    u"ZtXmlSerializerImpl::endTagt",
    u"", // the serializer's docdecl check raises without a source
    u"ZtXmlSerializerImpl::checkStream",
    u"ZtMSXmlParser",
    u"ZtTempFile",
};

UnicodeString text(std::u16string_view s) {
    return UnicodeString(s.data(), static_cast<int32_t>(s.size()));
}

UnicodeString sourceName(int sourceId) {
    if (sourceId < 0 || sourceId >= static_cast<int>(kSourceNames.size()) ||
        kSourceNames[static_cast<size_t>(sourceId)].empty())
        return UnicodeString();
    return UnicodeString(u"ZtCommonNS::") + text(kSourceNames[static_cast<size_t>(sourceId)]);
}

} // namespace

ZtError makeRaisedError(int code, int sourceId, const UnicodeString& arg1,
                        const UnicodeString& arg2) {
    const UnicodeString a = arg1.isEmpty() ? UnicodeString(u"arg") : arg1;
    UnicodeString message(u"SYSTEM ERROR: ");
    UnicodeString uri;

    switch (code) {
    case ZtErrc::NullArgument:
        message += a + u" is null.";
        break;
    case ZtErrc::OutOfRange:
        message += u"Argument is out of range.";
        break;
    case ZtErrc::WrongDocument:
        message += a + u" is created from a different document.";
        break;
    case ZtErrc::NotAnAttr:
        message += a + u" is not an ZtAttr object.";
        break;
    case ZtErrc::AttrInUse:
        message += a + u" is an ZtAttr that is already an attribute of another ZtElement object.";
        break;
    case ZtErrc::NotAChild:
        message += a + u" is not a child of this node.";
        break;
    case ZtErrc::CannotSetValue:
        message += u"Cannot set a value on node type";
        message += arg1.isEmpty() ? UnicodeString(u".") : UnicodeString(u": ") + arg1;
        break;
    case ZtErrc::StartDocumentOrder:
        message += u"startDocument() must be called just after setOutput().";
        break;
    case ZtErrc::AttributeOrder:
        message += u"attribute() must be called just after startTag().";
        break;
    case ZtErrc::UnexpectedEndTag:
        message += u"Unexpected endTag().";
        break;
    case ZtErrc::EndTagMismatch:
        message += u"End tag '" + a + u"' does not match the start tag '" + arg2 + u"'.";
        break;
    case ZtErrc::UnexpectedDocdecl:
        message += u"Unexpected docdecl().";
        break;
    case ZtErrc::UnsupportedNodeType:
        message += u"Unsupported node type.";
        break;
    // From here on the message replaces the "SYSTEM ERROR: " start.
    case ZtErrc::UnexpectedEndOfInput:
    case ZtErrc::UnexpectedEndOfInputAlt:
        message = u"Unexpected end of input stream.";
        uri = arg1;
        break;
    case ZtErrc::NoOutputStream:
        message = u"Output stream is not set.";
        break;
    case ZtErrc::InputStreamError:
        message = u"Input stream error.";
        uri = arg1;
        break;
    case ZtErrc::OutputStreamError:
        message = u"Output stream error.";
        break;
    case ZtErrc::CannotRemoveTempFile:
        message = UnicodeString(u"Cannot remove temporary file: ") + a;
        break;
    case ZtErrc::CannotCreateTempFile:
        message = UnicodeString(u"Cannot create temporary file: ") + a;
        break;
    case ZtErrc::CannotOpenFile:
        message = u"Cannot open file.";
        uri = arg1;
        break;
    default:
        message += u"ZtErrorCodeCOMMON";
        break;
    }
    return ZtError(static_cast<unsigned short>(code), message, sourceName(sourceId), -1, -1, uri);
}

void raiseError(int code, int sourceId, const UnicodeString& arg1, const UnicodeString& arg2) {
    throw makeRaisedError(code, sourceId, arg1, arg2);
}

void rethrowAsZtError(const UnicodeString& source) {
    try {
        throw;
    } catch (ZtError&) {
        throw;
    } catch (std::bad_alloc& e) {
        throw ZtError(e, source);
    } catch (std::exception& e) {
        throw ZtError(e, source);
    }
}

} // namespace ZtCommonNS
