// ztc tree: builds a document tree from a compact notation through the node factory and walks
// it with a tree iterator, printing each element with the namespace its declarations give it.
//
// Notation: an element is a qualified name, optionally followed by attributes in brackets,
// "name[attr=value,xmlns:p=uri]", and by children in parentheses, separated by spaces; a text
// node is '#' followed by a word or a double-quoted text.
//   ztc tree 'fo:root[xmlns:fo=http://www.w3.org/1999/XSL/Format](fo:block(#"Hello"))'
#include <iostream>
#include <string>

#include "command.h"
#include "ztcommon/dom.h"
#include "ztcommon/util.h"

using namespace ZtCommonNS;

namespace {

struct SyntaxError {
    std::string message;
};

class Builder {
public:
    Builder(const std::string& text, ZtDocument* doc) : text_(text), doc_(doc) {}

    void nodes(ZtNode* parent) {
        for (;;) {
            skipSpace();
            if (atEnd() || peek() == ')')
                return;
            if (peek() == '#') {
                ++pos_;
                parent->appendChildText(UnicodeString::fromUTF8(textWord()));
                continue;
            }
            ZtPtr<ZtElement> element = doc_->createElement(name(word("[( )")));
            parent->appendChild(element);
            if (!atEnd() && peek() == '[')
                attributes(element);
            if (!atEnd() && peek() == '(') {
                ++pos_;
                nodes(element);
                expect(')');
            }
        }
    }

    void finish() {
        skipSpace();
        if (!atEnd())
            throw SyntaxError{"unexpected '" + std::string(1, peek()) + "' at " +
                              std::to_string(pos_)};
    }

private:
    static ZtName name(const std::string& text) { return ZtName(UnicodeString::fromUTF8(text)); }

    void attributes(ZtElement* element) {
        ++pos_;
        while (!atEnd() && peek() != ']') {
            ZtName qname = name(word("=,]"));
            expect('=');
            UnicodeString value = UnicodeString::fromUTF8(word(",]", true));
            ZtName prefix = ZtXmlUtil::getPrefixFromQName(qname);
            ZtName local = ZtXmlUtil::getLocalPartFromQName(qname);
            if (qname == NM_xmlns)
                element->setAttributeXMLNS(ZtName(), ZtName(value));
            else if (prefix == NM_xmlns)
                element->setAttributeXMLNS(local, ZtName(value));
            else // as the loader does: keywords become names, other texts strings
                element->setAttributeEx(ZtName(), prefix, local, value);
            if (!atEnd() && peek() == ',')
                ++pos_;
        }
        expect(']');
    }

    std::string textWord() {
        if (atEnd() || peek() != '"')
            return word("( )");
        ++pos_;
        size_t end = text_.find('"', pos_);
        if (end == std::string::npos)
            throw SyntaxError{"missing closing '\"'"};
        std::string out = text_.substr(pos_, end - pos_);
        pos_ = end + 1;
        return out;
    }

    // Characters up to one of `stops` (or the end). An empty word is an error unless allowed.
    std::string word(const char* stops, bool mayBeEmpty = false) {
        size_t start = pos_;
        while (!atEnd() && std::string(stops).find(peek()) == std::string::npos)
            ++pos_;
        if (pos_ == start && !mayBeEmpty)
            throw SyntaxError{"a name is missing at " + std::to_string(start)};
        return text_.substr(start, pos_ - start);
    }

    void expect(char c) {
        if (atEnd() || peek() != c)
            throw SyntaxError{"'" + std::string(1, c) + "' expected at " + std::to_string(pos_)};
        ++pos_;
    }
    void skipSpace() {
        while (!atEnd() && peek() == ' ')
            ++pos_;
    }
    bool atEnd() const { return pos_ >= text_.size(); }
    char peek() const { return text_[pos_]; }

    const std::string& text_;
    ZtDocument* doc_;
    size_t pos_ = 0;
};

const char* kindOf(const ZtValue& value) {
    if (value.isName())
        return "name";
    if (value.isString())
        return "string";
    return "value";
}

void printElement(const ZtElement* e) {
    std::cout << e->getNodeName();
    ZtName uri = e->getNamespaceUri();
    if (!uri.isEmpty())
        std::cout << "  {" << uri << "}";
    ZtNamedNodeMap* map = e->getAttributes();
    for (ZtNode* a = map->firstNode(); a; a = map->nextNode(a)) {
        ZtValue value = static_cast<const ZtAttr*>(a)->getValue();
        std::cout << "  " << a->getNodeName() << "=\"" << value.toString() << "\" ("
                  << kindOf(value) << ")";
    }
}

int run(const std::vector<std::string>& args) {
    ZtTreeIterator::TraversalOrder order = ZtTreeIterator::PRE_AND_POST_ORDER;
    std::string spec;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--order" && i + 1 < args.size()) {
            const std::string& o = args[++i];
            if (o == "pre")
                order = ZtTreeIterator::PRE_ORDER;
            else if (o == "post")
                order = ZtTreeIterator::POST_ORDER;
            else if (o != "both")
                return ztcUsageError("tree", "--order is pre, post or both");
        } else if (spec.empty()) {
            spec = args[i];
        } else {
            return ztcUsageError("tree", "give one tree (quote it)");
        }
    }
    if (spec.empty())
        return ztcUsageError("tree", "give a tree, such as 'a(b(#text) c)'");

    ZtPtr<ZtDocument> doc(new ZtDocument());
    try {
        Builder builder(spec, doc);
        builder.nodes(doc);
        builder.finish();
    } catch (const SyntaxError& e) {
        return ztcUsageError("tree", e.message);
    } catch (const ZtError& e) {
        std::cerr << "ztc tree: " << e.getMessage() << '\n';
        return 1;
    }

    ZtTreeIterator walk(doc, nullptr, false, order);
    while (ZtNode* node = walk.nextNode()) {
        if (node == doc.get())
            continue;
        std::cout << std::string(static_cast<size_t>(2 * (node->getNodeDepth() - 1)), ' ');
        if (node->isText()) {
            std::cout << "#text \"" << node->getText() << "\"\n";
            continue;
        }
        if (order == ZtTreeIterator::PRE_AND_POST_ORDER)
            std::cout << (walk.atPreVisit() ? "+ " : "- ");
        if (order != ZtTreeIterator::PRE_AND_POST_ORDER || walk.atPreVisit())
            printElement(static_cast<const ZtElement*>(node));
        else
            std::cout << node->getNodeName();
        std::cout << '\n';
    }
    std::cout << doc->getDescendantNodes()->getLength() << " nodes\n";
    return 0;
}

const ZtcCommand command{"tree", "[--order pre|post|both] TREE",
                         "build a document tree from a compact notation and walk it", &run};

} // namespace
