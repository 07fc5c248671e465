// Thousands of random insertions, replacements and removals, each checked against a plain
// model of the tree (a vector of children per node): structure, links both ways, reference
// counts, and the error (and the unchanged tree) for every call the model says must fail.
#include <algorithm>
#include <random>
#include <vector>

#include "dom_test_util.h"

using namespace domtest;

namespace {

struct Model {
    std::vector<std::vector<int>> children;
    std::vector<int> parent;

    explicit Model(int n) : children(static_cast<size_t>(n)), parent(static_cast<size_t>(n), -1) {}

    bool isAncestorOrSelf(int a, int node) const {
        for (int n = node; n >= 0; n = parent[static_cast<size_t>(n)]) {
            if (n == a)
                return true;
        }
        return false;
    }
    void detach(int c) {
        int p = parent[static_cast<size_t>(c)];
        if (p < 0)
            return;
        auto& list = children[static_cast<size_t>(p)];
        list.erase(std::find(list.begin(), list.end(), c));
        parent[static_cast<size_t>(c)] = -1;
    }
    void insert(int p, int c, int before) {
        detach(c);
        auto& list = children[static_cast<size_t>(p)];
        auto at = before < 0 ? list.end() : std::find(list.begin(), list.end(), before);
        list.insert(at, c);
        parent[static_cast<size_t>(c)] = p;
    }
    void replace(int p, int c, int old) {
        detach(c);
        auto& list = children[static_cast<size_t>(p)];
        *std::find(list.begin(), list.end(), old) = c;
        parent[static_cast<size_t>(c)] = p;
        parent[static_cast<size_t>(old)] = -1;
    }
};

class RandomTree : public ::testing::Test {
protected:
    static constexpr int kNodes = 24; // node 0 is the document
    ZtPtr<ZtDocument> doc = newDocument();
    std::vector<ZtPtr<ZtNode>> nodes;
    Model model{kNodes};

    void SetUp() override {
        nodes.emplace_back(doc.get());
        for (int i = 1; i < kNodes; ++i) {
            if (i % 5 == 0)
                nodes.emplace_back(doc->createTextNode(UnicodeString::fromUTF8(std::to_string(i))));
            else
                nodes.emplace_back(doc->createElement(name(("e" + std::to_string(i)).c_str())));
        }
    }

    int indexOf(const ZtNode* n) const {
        for (size_t i = 0; i < nodes.size(); ++i) {
            if (nodes[i].get() == n)
                return static_cast<int>(i);
        }
        return -2;
    }

    void compareWithModel() {
        for (int i = 0; i < kNodes; ++i) {
            const ZtNode* n = nodes[static_cast<size_t>(i)];
            std::vector<int> actual;
            for (const ZtNode* c = n->getFirstChild(); c; c = c->getNextSibling()) {
                actual.push_back(indexOf(c));
                ASSERT_LE(actual.size(), static_cast<size_t>(kNodes));
            }
            ASSERT_EQ(actual, model.children[static_cast<size_t>(i)]) << "children of " << i;
            std::vector<int> backward;
            for (const ZtNode* c = n->getLastChild(); c; c = c->getPreviousSibling())
                backward.insert(backward.begin(), indexOf(c));
            ASSERT_EQ(backward, actual) << "previous links of " << i;
            expectLinksConsistent(n);
            int p = model.parent[static_cast<size_t>(i)];
            EXPECT_EQ(n->getParentNode(), p < 0 ? nullptr : nodes[static_cast<size_t>(p)].get());
            // Ours, plus the parent's when attached (the document: the fixture's and ours).
            EXPECT_EQ(n->getRefCount(), i == 0 ? 2 : (p < 0 ? 1 : 2)) << "count of " << i;
        }
    }
};

} // namespace

TEST_F(RandomTree, MatchesAPlainModelThroughThousandsOfOperations) {
    std::mt19937 random(20240611);
    auto pick = [&](int from) {
        return std::uniform_int_distribution<int>(from, kNodes - 1)(random);
    };
    // A random child of p in the model, or sometimes any node (which may not be a child).
    auto pickChildOr = [&](int p) {
        const auto& list = model.children[static_cast<size_t>(p)];
        if (!list.empty() && random() % 4 != 0)
            return list[random() % list.size()];
        return pick(1);
    };
    int failures = 0;
    for (int step = 0; step < 6000; ++step) {
        int op = static_cast<int>(random() % 4);
        int p = pick(0);
        int c = pick(1);
        ZtNode* parent = nodes[static_cast<size_t>(p)];
        ZtNode* child = nodes[static_cast<size_t>(c)];
        int expectedCode = 0;
        switch (op) {
        case 0: { // appendChild
            if (model.isAncestorOrSelf(c, p))
                expectedCode = 4;
            if (expectedCode == 0) {
                EXPECT_EQ(parent->appendChild(child), child);
                model.insert(p, c, -1);
            } else {
                EXPECT_EQ(raised([&] { parent->appendChild(child); }).getErrorCode(), 4);
            }
            break;
        }
        case 1: { // insertBefore, sometimes with a null reference
            int ref = random() % 5 == 0 ? -1 : pickChildOr(p);
            ZtNode* refNode = ref < 0 ? nullptr : nodes[static_cast<size_t>(ref)].get();
            if (ref >= 0 && model.parent[static_cast<size_t>(ref)] != p)
                expectedCode = 9;
            else if (ref == c)
                expectedCode = -1; // nothing happens
            else if (model.isAncestorOrSelf(c, p))
                expectedCode = 4;
            if (expectedCode <= 0) {
                EXPECT_EQ(parent->insertBefore(child, refNode), child);
                if (expectedCode == 0)
                    model.insert(p, c, ref);
            } else {
                EXPECT_EQ(raised([&] { parent->insertBefore(child, refNode); }).getErrorCode(),
                          expectedCode);
            }
            break;
        }
        case 2: { // replaceChild
            int old = pickChildOr(p);
            ZtNode* oldNode = nodes[static_cast<size_t>(old)];
            if (model.parent[static_cast<size_t>(old)] != p)
                expectedCode = 9;
            else if (old == c)
                expectedCode = -1;
            else if (model.isAncestorOrSelf(c, p))
                expectedCode = 4;
            if (expectedCode <= 0) {
                ZtPtr<ZtNode> out = parent->replaceChild(child, oldNode);
                EXPECT_EQ(out.get(), oldNode);
                if (expectedCode == 0)
                    model.replace(p, c, old);
            } else {
                EXPECT_EQ(raised([&] { parent->replaceChild(child, oldNode); }).getErrorCode(),
                          expectedCode);
            }
            break;
        }
        default: { // removeChild
            int victim = pickChildOr(p);
            ZtNode* victimNode = nodes[static_cast<size_t>(victim)];
            if (model.parent[static_cast<size_t>(victim)] != p) {
                expectedCode = 9;
                EXPECT_EQ(raised([&] { parent->removeChild(victimNode); }).getErrorCode(), 9);
            } else {
                EXPECT_EQ(parent->removeChild(victimNode).get(), victimNode);
                model.detach(victim);
            }
            break;
        }
        }
        if (expectedCode > 0)
            ++failures;
        compareWithModel();
        if (HasFailure()) {
            ADD_FAILURE() << "at step " << step << " op " << op << " parent " << p << " child "
                          << c;
            return;
        }
    }
    // Both kinds of outcome were exercised in quantity.
    EXPECT_GT(failures, 500);
    EXPECT_LT(failures, 4000);
}
