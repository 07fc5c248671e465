#include "dom_test_util.h"

namespace domtest {

namespace {

void buildFrom(ZtNode* parent, const std::string& text, size_t& pos) {
    ZtDocument* doc = parent->getOwnerDocument();
    while (pos < text.size() && text[pos] != ')') {
        if (text[pos] == ' ') {
            ++pos;
            continue;
        }
        size_t end = text.find_first_of(" ()", pos);
        std::string word = text.substr(pos, end == std::string::npos ? end : end - pos);
        pos += word.size();
        ZtPtr<ZtNode> made;
        if (word[0] == '#')
            made = doc->createTextNode(UnicodeString::fromUTF8(word.substr(1)));
        else
            made = doc->createElement(name(word.c_str()));
        ZtNode* node = parent->appendChild(made);
        if (pos < text.size() && text[pos] == '(') {
            buildFrom(node, text, ++pos);
            ASSERT_LT(pos, text.size()) << "missing ')' in " << text;
            ++pos;
        }
    }
}

} // namespace

void build(ZtNode* parent, const std::string& notation) {
    size_t pos = 0;
    buildFrom(parent, notation, pos);
}

std::string describe(const ZtNode* node) {
    std::string out;
    // Walks with the links alone, so that deep trees need no stack.
    const ZtNode* child = node->getFirstChildFast();
    const ZtNode* parent = node;
    while (child || parent != node) {
        if (!child) {
            out += ')';
            child = parent->getNextSiblingFast();
            parent = parent->getParentNodeFast();
            continue;
        }
        if (!out.empty() && out.back() != '(')
            out += ' ';
        out += label(child);
        if (child->hasChildNodesFast()) {
            out += '(';
            parent = child;
            child = child->getFirstChildFast();
        } else {
            child = child->getNextSiblingFast();
        }
    }
    return out;
}

void expectLinksConsistent(const ZtNode* node) {
    const ZtNode* first = node->getFirstChildFast();
    const ZtNode* last = node->getLastChildFast();
    EXPECT_EQ(node->getFirstChild(), first);
    EXPECT_EQ(node->getLastChild(), last);
    EXPECT_EQ(node->hasChildNodes(), last != nullptr);
    EXPECT_EQ(first == nullptr, last == nullptr);
    EXPECT_EQ(first ? first->getPreviousSibling() : nullptr, nullptr);
    int forward = 0;
    const ZtNode* prev = nullptr;
    for (const ZtNode* c = first; c; c = c->getNextSibling()) {
        EXPECT_EQ(c->getParentNode(), node);
        EXPECT_EQ(c->getPreviousSibling(), prev);
        prev = c;
        ASSERT_LT(++forward, 1000000) << "child list does not end";
    }
    EXPECT_EQ(prev, last);
    int backward = 0;
    for (const ZtNode* c = last; c; c = c->getPreviousSibling())
        ++backward;
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(node->getChildNodeCount(), forward);
}

void expectError(const std::function<void()>& action, int code, const std::string& message,
                 const std::string& source) {
    ZtError error = caught(action);
    EXPECT_EQ(error.getErrorCode(), code) << message;
    EXPECT_EQ(utf8(error.getRawMessage()), "SYSTEM ERROR: " + message);
    EXPECT_EQ(utf8(error.getSource()), "ZtCommonNS::" + source);
    EXPECT_EQ(error.getLineNumber(), -1);
    EXPECT_EQ(error.getColumnNumber(), -1);
    EXPECT_TRUE(error.getUri().isEmpty());
}

} // namespace domtest
