// The library-internal raising routine and the numbers it is called with.
#pragma once

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

// Error codes raised by the library's own code (the XML parser has its own set).
namespace ZtErrc {
enum : int {
    OutOfMemory = 1,
    CppException = 2,
    NullArgument = 3,
    OutOfRange = 4,
    WrongDocument = 6,
    NotAnAttr = 7,
    AttrInUse = 8,
    NotAChild = 9,
    CannotSetValue = 11,
    StartDocumentOrder = 12,
    AttributeOrder = 13,
    UnexpectedEndTag = 14,
    EndTagMismatch = 15,
    UnexpectedDocdecl = 16,
    UnsupportedNodeType = 18,
    UnexpectedEndOfInput = 67,
    UnexpectedEndOfInputAlt = 68,
    NoOutputStream = 69,
    InputStreamError = 70,
    OutputStreamError = 71,
    CannotRemoveTempFile = 77,
    CannotCreateTempFile = 78,
    CannotOpenFile = 517,
    ParseAbandoned = 128,
};
} // namespace ZtErrc

// Operations named as the source of a raised error.
namespace ZtErrSource {
enum : int {
    DocumentLoadNextNode = 0,
    DocumentDoSave = 1,
    AttrMapSetNamedItem = 2,
    AttrMapSetNamedItemNS = 3,
    ElementRemoveAttributeNode = 4,
    NodeSetNodeValue = 5,
    NodeInsertBefore = 6,
    NodeReplaceChild = 7,
    NodeRemoveChild = 8,
    NodeAppendChild = 9,
    ParserCheckStream = 10,
    ParserPushStream = 11,
    ParserSetInput = 12,
    ParserIsWhitespace = 13,
    ParserIsEmptyElementTag = 14,
    ParserGetAttributeNamespace = 15,
    ParserGetAttributeName = 16,
    ParserGetAttributePrefix = 17,
    ParserGetAttributeValue = 18,
    SerializerSetOutput = 19,
    SerializerStartDocument = 20,
    SerializerAttribute = 21,
    SerializerEndTag = 22,
    SerializerDocdecl = 23,
    SerializerCheckStream = 24,
    MSXmlParser = 25,
    TempFile = 26,
};
} // namespace ZtErrSource

// Builds the fully worded error for `code` raised by operation `sourceId` and throws it.
// arg1 names the argument (or the URI, file name, tag, as the code requires); arg2 is the
// second text some messages need.
[[noreturn]] void raiseError(int code, int sourceId,
                             const UnicodeString& arg1 = ZtEmptyString::getEmptyString(),
                             const UnicodeString& arg2 = ZtEmptyString::getEmptyString());

// The error raiseError would throw, without throwing it.
ZtError makeRaisedError(int code, int sourceId, const UnicodeString& arg1,
                        const UnicodeString& arg2);

// Inside a catch block at the library's boundary: turns the exception being handled into a
// ZtError (out of memory gives code 1, another standard exception code 2) and throws it.
// A ZtError passes through unchanged.
[[noreturn]] void rethrowAsZtError(const UnicodeString& source);

} // namespace ZtCommonNS
