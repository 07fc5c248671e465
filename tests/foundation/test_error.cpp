// ZtError, error levels, the raising routine's exact wording and sources, and ZtMessage.
#include <cerrno>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <curl/curl.h>
#include <gtest/gtest.h>

#include "caught_error.h"
#include "foundation/raise_error.h"
#include "ztcommon/foundation.h"

using namespace ZtCommonNS;
using ZtCommonNS::test::caught;

namespace {
std::string utf8(const UnicodeString& s) {
    std::string out;
    return s.toUTF8String(out);
}
} // namespace

TEST(ErrorLevel, FourLevelsFromTheCodeBits) {
    // 0x80 only matters once the non-fatal and lower bits are set; the category bits never do.
    const std::pair<unsigned short, int> cases[] = {
        {0x0000, 0},     {0x0180, 0},     {0xFD7F, 0},     {0x0205, 0x200}, {0x027F, 0x200},
        {0x02FF, 0x200}, {0x0300, 0x300}, {0xFF7F, 0x300}, {0x0380, 0x380}, {0xFFFF, 0x380}};
    for (const auto& [code, level] : cases)
        EXPECT_EQ(getErrorLevel(code), level) << code;
    EXPECT_EQ(ZtError(0xFC85, u"x").getErrorCategory(), 0xFC00);
    EXPECT_EQ(ZtError(0x0385, u"").getErrorCategory(), ZtErrorCodeCOMMON);
}

TEST(Error, MessageAndPositionDescription) {
    ZtError none;
    EXPECT_EQ(none.getErrorCode(), 0);
    EXPECT_EQ(none.getLineNumber(), -1);
    EXPECT_EQ(none.getColumnNumber(), -1);
    EXPECT_TRUE(none.getMessage().isEmpty());

    ZtError full(0x81, u"bad", u"src", 12, 5, u"file:///a.xml");
    EXPECT_EQ(full.getMessage(), UnicodeString(u"bad\nLine 12, Col 5, file:///a.xml"));
    EXPECT_STREQ(full.what(), "bad\nLine 12, Col 5, file:///a.xml");
    // Line and column appear only when positive; the URI always ends the description.
    EXPECT_EQ(ZtError(5, u"m", u"", 0, 7, u"f.xml").getPositionDescription(),
              UnicodeString(u"Col 7, f.xml"));
    EXPECT_EQ(ZtError(5, u"m", u"", 3, 0, u"").getPositionDescription(),
              UnicodeString(u"Line 3, "));
    EXPECT_EQ(ZtError(5, u"m", u"", -1, -1, u"f").getMessage(), UnicodeString(u"m\nf"));
    EXPECT_EQ(ZtError(5, u"m").getMessage(), UnicodeString(u"m"));

    // Copies are independent, and an assigned error describes its new position.
    ZtError copy(full);
    copy.setRawMessage(u"changed");
    copy.setLineNumber(0);
    copy.setColumnNumber(7);
    copy.setUri(u"u");
    EXPECT_EQ(full.getRawMessage(), UnicodeString(u"bad"));
    ZtError assigned;
    assigned = copy;
    EXPECT_EQ(assigned.getMessage(), UnicodeString(u"changed\nCol 7, u"));
    EXPECT_STREQ(assigned.what(), "changed\nCol 7, u");
}

TEST(Error, SetMessageOfGetMessageKeepsOnePositionAndAppendAddsLines) {
    ZtError e(0x81, u"Not well-formed.", u"", 4, 2, u"doc.xml");
    UnicodeString shown = e.getMessage();
    e.setMessage(shown);
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"Not well-formed."));
    EXPECT_EQ(e.getMessage(), shown);
    // Text ending with another position is stored as it is; without a position nothing is cut.
    e.setMessage(u"Other\nLine 9, Col 2, doc.xml");
    EXPECT_EQ(e.getRawMessage(), UnicodeString(u"Other\nLine 9, Col 2, doc.xml"));
    ZtError plain(1, u"");
    plain.setMessage(u"a\n");
    EXPECT_EQ(plain.getRawMessage(), UnicodeString(u"a\n"));

    ZtError lines;
    for (const char16_t* line : {u"", u"first", u"", u"second"})
        lines.appendMessage(line);
    EXPECT_EQ(lines.getRawMessage(), UnicodeString(u"first\nsecond"));
}

TEST(Error, ThrowFatalErrorOnlyForFatalCodes) {
    EXPECT_NO_THROW(ZtError().throwFatalError());
    EXPECT_NO_THROW(ZtError(0x0205, u"w").throwFatalError());
    EXPECT_NO_THROW(ZtError(0x0380, u"w").throwFatalError());
    ZtError e = caught([] { ZtError(0x0081, u"fatal", u"s", 1, 2, u"u").throwFatalError(); });
    EXPECT_EQ(e.getErrorCode(), 0x81);
    EXPECT_EQ(e.getMessage(), UnicodeString(u"fatal\nLine 1, Col 2, u"));
}

TEST(RaiseError, EveryCodeAndSourceHasItsExactWording) {
    std::ifstream in(ZT_SOURCE_DIR "/tests/foundation/data/raised_errors.tsv");
    ASSERT_TRUE(in);
    std::set<int> sources;
    for (std::string line; std::getline(in, line);) {
        if (line[0] == '#')
            continue;
        std::istringstream cells(line);
        std::vector<std::string> c;
        for (std::string cell; std::getline(cells, cell, '\t');)
            c.push_back(cell);
        c.resize(7); // trailing empty cells
        const int code = std::stoi(c[0]);
        const int source = std::stoi(c[1]);
        SCOPED_TRACE(::testing::Message() << "code " << code << " source " << source);
        ZtError e = caught([&] {
            raiseError(code, source, UnicodeString::fromUTF8(c[2]), UnicodeString::fromUTF8(c[3]));
        });
        EXPECT_EQ(e.getErrorCode(), code);
        EXPECT_EQ(utf8(e.getRawMessage()), c[4]);
        EXPECT_EQ(utf8(e.getUri()), c[5]);
        EXPECT_EQ(utf8(e.getSource()), c[6]);
        EXPECT_EQ(e.getLineNumber(), -1);
        EXPECT_EQ(e.getColumnNumber(), -1);
        sources.insert(source);
    }
    for (int id = -1; id <= 27; ++id)
        EXPECT_EQ(sources.count(id), 1u) << "no row for source " << id;
}

TEST(RaiseError, BoundaryTurnsStandardExceptionsIntoErrors) {
    const auto rethrown = [](auto thrower) {
        return caught([&] {
            try {
                thrower();
            } catch (...) {
                rethrowAsZtError(u"ZtCommonNS::Boundary");
            }
        });
    };
    ZtError oom = rethrown([] { throw std::bad_alloc(); });
    EXPECT_EQ(oom.getErrorCode(), 1);
    EXPECT_EQ(oom.getRawMessage(), UnicodeString(u"SYSTEM ERROR: Out of memory."));
    EXPECT_EQ(oom.getSource(), UnicodeString(u"ZtCommonNS::Boundary"));
    ZtError std = rethrown([] { throw std::out_of_range("caf\xc3\xa9 9"); });
    EXPECT_EQ(std.getErrorCode(), 2);
    EXPECT_EQ(std.getRawMessage(), UnicodeString(u"SYSTEM ERROR: C++ exception: caf\u00e9 9"));
    EXPECT_EQ(std.getSource(), UnicodeString(u"ZtCommonNS::Boundary"));
    ZtError own = rethrown([] { raiseError(9, 8, u"refChild"); });
    EXPECT_EQ(own.getErrorCode(), 9);
    EXPECT_EQ(own.getSource(), UnicodeString(u"ZtCommonNS::ZtNode::removeChild"));
}

TEST(LastErrorMessage, SystemAndCurlTexts) {
    char buffer[256];
    EXPECT_EQ(utf8(ZtError::getLastErrorMessage(ENOENT, nullptr)),
              std::string(strerror_r(ENOENT, buffer, sizeof buffer)));
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
    // A broken pattern yields no exception; the text is whatever the formatter made of it.
    EXPECT_NO_THROW(ZtMessage("unclosed {0", u"a"));
}
