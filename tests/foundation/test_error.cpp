// ZtError, error levels, the raising routine's exact wording and sources, and ZtMessage.
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <curl/curl.h>
#include <gtest/gtest.h>

#include "foundation/raise_error.h"
#include "ztcommon/foundation.h"

using namespace ZtCommonNS;

namespace {
std::string utf8(const UnicodeString& s) {
    std::string out;
    return s.toUTF8String(out);
}

ZtError raised(int code, int source, const UnicodeString& a1 = UnicodeString(),
               const UnicodeString& a2 = UnicodeString()) {
    try {
        raiseError(code, source, a1, a2);
    } catch (const ZtError& e) {
        return e;
    }
    ADD_FAILURE() << "raiseError returned";
    return ZtError();
}
} // namespace

TEST(ErrorLevel, FourLevelsFromTheCodeBits) {
    EXPECT_EQ(getErrorLevel(0x0205), 0x200);
    EXPECT_EQ(getErrorLevel(0x0380), 0x380);
    EXPECT_EQ(getErrorLevel(0x0180), 0);
    EXPECT_EQ(getErrorLevel(0x0300), 0x300);
    EXPECT_EQ(getErrorLevel(0x0000), 0);
    EXPECT_EQ(getErrorLevel(0x027F), 0x200);
    EXPECT_EQ(getErrorLevel(0x02FF), 0x200); // 0x80 only matters below 0x100
    EXPECT_EQ(getErrorLevel(0xFFFF), 0x380);
    EXPECT_EQ(getErrorLevel(0xFF7F), 0x300);
    EXPECT_EQ(getErrorLevel(0xFD7F), 0); // category bits set, non-fatal bit clear
    ZtError e(0xFC85, u"x");
    EXPECT_EQ(e.getErrorCategory(), 0xFC00);
    EXPECT_EQ(ZtError(0x0385, u"").getErrorCategory(), ZtErrorCodeCOMMON);
}

TEST(Error, ConstructorsAndAccessors) {
    ZtError none;
    EXPECT_EQ(none.getErrorCode(), 0);
    EXPECT_TRUE(none.getRawMessage().isEmpty());
    EXPECT_EQ(none.getLineNumber(), -1);
    EXPECT_EQ(none.getColumnNumber(), -1);
    EXPECT_TRUE(none.getPositionDescription().isEmpty());

    ZtError full(0x81, u"bad", u"src", 12, 5, u"file:///a.xml");
    EXPECT_EQ(full.getErrorCode(), 0x81);
    EXPECT_EQ(full.getSource(), UnicodeString(u"src"));
    EXPECT_EQ(full.getPositionDescription(), UnicodeString(u"Line 12, Col 5, file:///a.xml"));
    EXPECT_EQ(full.getMessage(), UnicodeString(u"bad\nLine 12, Col 5, file:///a.xml"));
    EXPECT_STREQ(full.what(), "bad\nLine 12, Col 5, file:///a.xml");

    ZtError copy(full);
    copy.setRawMessage(u"changed");
    copy.setLineNumber(0);
    copy.setColumnNumber(7);
    copy.setUri(u"u");
    copy.setErrorCode(3);
    copy.setSource(u"s2");
    EXPECT_EQ(full.getRawMessage(), UnicodeString(u"bad"));
    EXPECT_EQ(copy.getPositionDescription(), UnicodeString(u"Col 7, u"));
    EXPECT_EQ(copy.getErrorCode(), 3);
    ZtError assigned;
    assigned = copy;
    EXPECT_EQ(assigned.getMessage(), UnicodeString(u"changed\nCol 7, u"));

    std::bad_alloc oom;
    ZtError fromOom(oom, u"ZtCommonNS::Somewhere");
    EXPECT_EQ(fromOom.getErrorCode(), 1);
    EXPECT_EQ(fromOom.getRawMessage(), UnicodeString(u"SYSTEM ERROR: Out of memory."));
    EXPECT_EQ(fromOom.getSource(), UnicodeString(u"ZtCommonNS::Somewhere"));
    EXPECT_EQ(fromOom.getLineNumber(), -1);

    std::runtime_error std("caf\xc3\xa9 broke");
    ZtError fromStd(std, u"here");
    EXPECT_EQ(fromStd.getErrorCode(), 2);
    EXPECT_EQ(fromStd.getRawMessage(),
              UnicodeString(u"SYSTEM ERROR: C++ exception: caf\u00e9 broke"));
}

TEST(Error, PositionDescriptionRules) {
    EXPECT_EQ(ZtError(5, u"m", u"", 0, 7, u"f.xml").getPositionDescription(),
              UnicodeString(u"Col 7, f.xml"));
    EXPECT_EQ(ZtError(5, u"m", u"", 3, -1, u"").getPositionDescription(),
              UnicodeString(u"Line 3, "));
    EXPECT_EQ(ZtError(5, u"m", u"", -1, -1, u"f").getMessage(), UnicodeString(u"m\nf"));
    EXPECT_EQ(ZtError(5, u"m").getMessage(), UnicodeString(u"m"));
}

TEST(Error, SetMessageDoesNotRepeatThePosition) {
    ZtError e(0x81, u"Not well-formed.", u"", 4, 2, u"doc.xml");
    UnicodeString shown = e.getMessage();
    e.setMessage(shown);
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"Not well-formed."));
    EXPECT_EQ(e.getMessage(), shown);

    // Text that does not end with the position is stored as it is.
    e.setMessage(u"Other\nLine 9, Col 2, doc.xml");
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"Other\nLine 9, Col 2, doc.xml"));
    // Without a position nothing is cut.
    ZtError plain(1, u"");
    plain.setMessage(u"a\n");
    EXPECT_EQ(plain.getRawMessage(), UnicodeString(u"a\n"));
}

TEST(Error, AppendMessage) {
    ZtError e;
    e.appendMessage(u"");
    EXPECT_TRUE(e.getRawMessage().isEmpty());
    e.appendMessage(u"first");
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"first"));
    e.appendMessage(u"second");
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"first\nsecond"));
    e.appendMessage(u"");
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"first\nsecond"));
}

TEST(Error, ThrowFatalErrorOnlyForFatalCodes) {
    EXPECT_NO_THROW(ZtError().throwFatalError());
    EXPECT_NO_THROW(ZtError(0x0205, u"w").throwFatalError());
    EXPECT_NO_THROW(ZtError(0x0380, u"w").throwFatalError());
    try {
        ZtError(0x0081, u"fatal", u"s", 1, 2, u"u").throwFatalError();
        FAIL() << "no exception";
    } catch (const ZtError& e) {
        EXPECT_EQ(e.getErrorCode(), 0x81);
        EXPECT_EQ(e.getMessage(), UnicodeString(u"fatal\nLine 1, Col 2, u"));
    }
}

TEST(RaiseError, EveryCodeHasItsExactMessageUriAndSource) {
    struct Case {
        int code;
        int source;
        const char16_t* a1;
        const char16_t* a2;
        const char16_t* message;
        const char16_t* uri;
        const char16_t* sourceName;
    };
    const Case cases[] = {
        {3, 3, u"newAttr", u"", u"SYSTEM ERROR: newAttr is null.", u"",
         u"ZtCommonNS::AttrNodeMap::setNamedItemNS"},
        {3, 3, u"", u"", u"SYSTEM ERROR: arg is null.", u"",
         u"ZtCommonNS::AttrNodeMap::setNamedItemNS"},
        {4, 15, u"", u"", u"SYSTEM ERROR: Argument is out of range.", u"",
         u"ZtCommonNS::ZtXmlParserImpl::getAttributeNamespace"},
        {4, 25, u"x", u"", u"SYSTEM ERROR: Argument is out of range.", u"",
         u"ZtCommonNS::ZtMSXmlParser"},
        {6, 9, u"newChild", u"", u"SYSTEM ERROR: newChild is created from a different document.",
         u"", u"ZtCommonNS::ZtNode::appendChild"},
        {7, 2, u"arg", u"", u"SYSTEM ERROR: arg is not an ZtAttr object.", u"",
         u"ZtCommonNS::AttrNodeMap::setNamedItem"},
        {8, 2, u"newAttr", u"",
         u"SYSTEM ERROR: newAttr is an ZtAttr that is already an attribute of another ZtElement "
         u"object.",
         u"", u"ZtCommonNS::AttrNodeMap::setNamedItem"},
        {9, 8, u"oldChild", u"", u"SYSTEM ERROR: oldChild is not a child of this node.", u"",
         u"ZtCommonNS::ZtNode::removeChild"},
        {11, 5, u"", u"", u"SYSTEM ERROR: Cannot set a value on node type.", u"",
         u"ZtCommonNS::ZtNode::setNodeValue"},
        {11, 0, u"1", u"", u"SYSTEM ERROR: Cannot set a value on node type: 1", u"",
         u"ZtCommonNS::ZtDocument::loadNextNode"},
        {12, 20, u"", u"", u"SYSTEM ERROR: startDocument() must be called just after setOutput().",
         u"", u"ZtCommonNS::ZtXmlSerializerImpl::startDocumen"},
        {13, 21, u"", u"", u"SYSTEM ERROR: attribute() must be called just after startTag().", u"",
         u"ZtCommonNS::ZtXmlSerializerImpl::attributeSub"},
        {14, 22, u"", u"", u"SYSTEM ERROR: Unexpected endTag().", u"",
         u"ZtCommonNS::ZtXmlSerializerImpl::endTagt"},
        {15, 22, u"b", u"a", u"SYSTEM ERROR: End tag 'b' does not match the start tag 'a'.", u"",
         u"ZtCommonNS::ZtXmlSerializerImpl::endTagt"},
        {16, 23, u"", u"", u"SYSTEM ERROR: Unexpected docdecl().", u"", u""},
        {18, 1, u"", u"", u"SYSTEM ERROR: Unsupported node type.", u"",
         u"ZtCommonNS::ZtDocument::doSave"},
        {67, 11, u"file:///x.dtd", u"", u"Unexpected end of input stream.", u"file:///x.dtd",
         u"ZtCommonNS::ZtXmlParserImpl::pushStream"},
        {67, 19, u"", u"", u"Unexpected end of input stream.", u"",
         u"ZtCommonNS::ZtXmlSerializerImpl::setOutput"},
        {68, 11, u"u", u"", u"Unexpected end of input stream.", u"u",
         u"ZtCommonNS::ZtXmlParserImpl::pushStream"},
        {69, 24, u"", u"", u"Output stream is not set.", u"",
         u"ZtCommonNS::ZtXmlSerializerImpl::checkStream"},
        {70, 10, u"in.xml", u"", u"Input stream error.", u"in.xml",
         u"ZtCommonNS::ZtXmlParserImpl::checkStream"},
        {71, 24, u"", u"", u"Output stream error.", u"",
         u"ZtCommonNS::ZtXmlSerializerImpl::checkStream"},
        {77, 26, u"/tmp/a", u"", u"Cannot remove temporary file: /tmp/a", u"",
         u"ZtCommonNS::ZtTempFile"},
        {78, 26, u"/tmp/b", u"", u"Cannot create temporary file: /tmp/b", u"",
         u"ZtCommonNS::ZtTempFile"},
        {517, 12, u"file:///gone.xml", u"", u"Cannot open file.", u"file:///gone.xml",
         u"ZtCommonNS::ZtXmlParserImpl::setInput"},
        {5, 4, u"", u"", u"SYSTEM ERROR: ZtErrorCodeCOMMON", u"",
         u"ZtCommonNS::ZtElement::removeAttributeNode"},
        {999, 27, u"x", u"y", u"SYSTEM ERROR: ZtErrorCodeCOMMON", u"", u""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << "code " << c.code << " source " << c.source);
        ZtError e = raised(c.code, c.source, c.a1, c.a2);
        EXPECT_EQ(e.getErrorCode(), static_cast<unsigned short>(c.code));
        EXPECT_EQ(utf8(e.getRawMessage()), utf8(UnicodeString(c.message)));
        EXPECT_EQ(utf8(e.getUri()), utf8(UnicodeString(c.uri)));
        EXPECT_EQ(utf8(e.getSource()), utf8(UnicodeString(c.sourceName)));
        EXPECT_EQ(e.getLineNumber(), -1);
        EXPECT_EQ(e.getColumnNumber(), -1);
    }
    EXPECT_EQ(getErrorLevel(raised(517, 12).getErrorCode()), ZT_ERROR_LEVEL_ERROR);
}

TEST(RaiseError, SourceTableIncludingCutNames) {
    const char16_t* expected[] = {
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
        nullptr,
        u"ZtXmlSerializerImpl::checkStream",
        u"ZtMSXmlParser",
        u"ZtTempFile",
    };
    for (int id = 0; id < 27; ++id) {
        UnicodeString want =
            expected[id] ? UnicodeString(u"ZtCommonNS::") + expected[id] : UnicodeString();
        EXPECT_EQ(utf8(raised(3, id).getSource()), utf8(want)) << "source id " << id;
    }
    EXPECT_TRUE(raised(3, 27).getSource().isEmpty());
    EXPECT_TRUE(raised(3, -1).getSource().isEmpty());
    EXPECT_TRUE(raised(3, 1000).getSource().isEmpty());
}

TEST(RaiseError, BoundaryConversionOfStandardExceptions) {
    auto convert = [](auto thrower) -> ZtError {
        try {
            try {
                thrower();
            } catch (...) {
                rethrowAsZtError(u"ZtCommonNS::Boundary");
            }
        } catch (const ZtError& e) {
            return e;
        }
        return ZtError();
    };
    ZtError oom = convert([] { throw std::bad_alloc(); });
    EXPECT_EQ(oom.getErrorCode(), 1);
    EXPECT_EQ(oom.getSource(), UnicodeString(u"ZtCommonNS::Boundary"));
    ZtError std = convert([] { throw std::out_of_range("index 9"); });
    EXPECT_EQ(std.getErrorCode(), 2);
    EXPECT_EQ(std.getRawMessage(), UnicodeString(u"SYSTEM ERROR: C++ exception: index 9"));
    ZtError own = convert([] { raiseError(9, 8, u"refChild"); });
    EXPECT_EQ(own.getErrorCode(), 9);
    EXPECT_EQ(own.getSource(), UnicodeString(u"ZtCommonNS::ZtNode::removeChild"));
}

TEST(LastErrorMessage, SystemAndCurlTexts) {
    char buffer[256];
    const char* expected = strerror_r(ENOENT, buffer, sizeof buffer);
    EXPECT_EQ(utf8(ZtError::getLastErrorMessage(ENOENT, nullptr)), std::string(expected));
    EXPECT_FALSE(ZtError::getLastErrorMessage(EACCES, nullptr).isEmpty());
    EXPECT_TRUE(ZtError::getLastErrorMessage(987654, nullptr).isEmpty());
    EXPECT_EQ(utf8(ZtError::getLastErrorMessage(CURLE_COULDNT_RESOLVE_HOST, ZtError::CURL_MODULE)),
              std::string(curl_easy_strerror(CURLE_COULDNT_RESOLVE_HOST)));
    int unknownModule = 0;
    EXPECT_TRUE(ZtError::getLastErrorMessage(ENOENT, &unknownModule).isEmpty());
}

TEST(Message, FormatsFiveStringArguments) {
    ZtMessage m(u"{0} at {1}: {2}{3}{4}", u"Error", u"line 3", u"bad", u"", u"!");
    EXPECT_EQ(m.toString(), UnicodeString(u"Error at line 3: bad!"));
    ZtMessage bytes("Caf\xc3\xa9 {1} '{'{0}'}'", u"x", u"y");
    EXPECT_EQ(static_cast<const UnicodeString&>(bytes), UnicodeString(u"Caf\u00e9 y {x}"));
    ZtMessage copy(bytes);
    EXPECT_EQ(copy.toString(), bytes.toString());
    // A broken pattern yields no exception; the text is whatever the formatter made of it.
    EXPECT_NO_THROW(ZtMessage("unclosed {0", u"a"));
}
