#include "dom_test_util.h"

namespace domtest {

namespace {

struct Parser {
    const std::string& text;
    size_t pos = 0;

    void skipSpace() {
        while (pos < text.size() && text[pos] == ' ')
            ++pos;
    }
    std::string word() {
        size_t start = pos;
        while (pos < text.size() && text[pos] != ' ' && text[pos] != '(' && text[pos] != ')')
            ++pos;
        return text.substr(start, pos - start);
    }
    void children(ZtNode* parent) {
        ZtDocument* doc = parent->getOwnerDocument();
        for (;;) {
            skipSpace();
            if (pos >= text.size() || text[pos] == ')')
                return;
            std::string w = word();
            ASSERT_FALSE(w.empty()) << "bad tree notation at " << pos << ": " << text;
            ZtPtr<ZtNode> node;
            if (w[0] == '#')
                node = doc->createTextNode(UnicodeString::fromUTF8(w.substr(1)));
            else
                node = doc->createElement(name(w.c_str()));
            parent->appendChild(node);
            if (pos < text.size() && text[pos] == '(') {
                ++pos;
                children(node);
                ASSERT_LT(pos, text.size()) << "missing ')' in " << text;
                ++pos;
            }
        }
    }
};

} // namespace

void build(ZtNode* parent, const std::string& spec) {
    Parser parser{spec};
    parser.children(parent);
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
    const ZtNode* last = node->getLastChildFast();
    if (!last) {
        EXPECT_EQ(node->getFirstChildFast(), nullptr);
        EXPECT_EQ(node->getFirstChild(), nullptr);
        EXPECT_FALSE(node->hasChildNodes());
        EXPECT_EQ(node->getChildNodeCount(), 0);
        return;
    }
    const ZtNode* first = node->getFirstChildFast();
    EXPECT_EQ(node->getFirstChild(), first);
    EXPECT_EQ(node->getLastChild(), last);
    EXPECT_EQ(first->getPreviousSibling(), nullptr) << "the first child's previous is null";
    EXPECT_EQ(last->getNextSibling(), nullptr) << "the last child's next sibling is null";
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

ZtError raised(const std::function<void()>& action) {
    try {
        action();
    } catch (const ZtError& e) {
        return e;
    }
    ADD_FAILURE() << "no ZtError was raised";
    return ZtError();
}

void expectError(const ZtError& error, int code, const char* message, const char* source) {
    EXPECT_EQ(error.getErrorCode(), code);
    EXPECT_EQ(utf8(error.getRawMessage()), message);
    EXPECT_EQ(utf8(error.getSource()), source);
    EXPECT_EQ(error.getLineNumber(), -1);
    EXPECT_EQ(error.getColumnNumber(), -1);
    EXPECT_TRUE(error.getUri().isEmpty());
}

} // namespace domtest
