// Helpers of the tree tests: building small trees from a compact notation, describing trees
// back as text, checking every link of a child list, and catching raised errors.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include "../foundation/caught_error.h"
#include "ztcommon/dom.h"

namespace domtest {

using namespace ZtCommonNS;

// A few nodes of any classes to loop over.
using Nodes = std::initializer_list<const ZtNode*>;

inline std::string utf8(const UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

inline ZtName name(const char* text) {
    return ZtName(UnicodeString::fromUTF8(text));
}

inline ZtPtr<ZtDocument> newDocument() {
    return ZtPtr<ZtDocument>(new ZtDocument());
}

// A node as one word: an element by its node name, a text node as '#' and its text.
inline std::string label(const ZtNode* node) {
    if (!node)
        return "null";
    if (node->isText())
        return "#" + utf8(node->getText());
    return utf8(node->getNodeName().getNameString());
}

// Builds children under `parent` from a notation such as "a(#x b) c": names are elements,
// '#' and a word a text node, parentheses hold children.
void build(ZtNode* parent, const std::string& notation);

// The subtree below `node` in the same notation (children only), read with the fast links.
std::string describe(const ZtNode* node);

// Checks every link of node's child list both ways: the circle through the last child, null
// at both ends of the public accessors, parents, and the counts of the public accessors.
void expectLinksConsistent(const ZtNode* node);

// The ZtError an action throws (a test failure when it throws none).
using ZtCommonNS::test::caught;

// Runs `action` and checks the error it raises: code, raw message ("SYSTEM ERROR: " and
// `message`), source ("ZtCommonNS::" and `source`) and no position.
void expectError(const std::function<void()>& action, int code, const std::string& message,
                 const std::string& source);

// A call that must fail, with the error expected of it (as for expectError).
struct ErrorCase {
    int code;
    const char* message;
    std::string source;
    std::function<void()> call;
};

} // namespace domtest
