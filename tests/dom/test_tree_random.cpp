// Thousands of random insertions, replacements and removals, each checked against a plain
// model of the tree (a vector of children per node): structure, links both ways, reference
// counts, and the error (and the unchanged tree) for every call the model says must fail.
#include <algorithm>
#include <random>
#include <vector>

#include "dom_test_util.h"

using namespace domtest;

namespace {

constexpr int kNodes = 24; // node 0 is the document

struct Model {
    std::vector<std::vector<int>> children = std::vector<std::vector<int>>(kNodes);
    std::vector<int> parent = std::vector<int>(kNodes, -1);

    bool isAncestorOrSelf(int a, int node) const {
        for (int n = node; n >= 0; n = parent[static_cast<size_t>(n)]) {
            if (n == a)
                return true;
        }
        return false;
    }
    std::vector<int>& childrenOf(int p) { return children[static_cast<size_t>(p)]; }
    void detach(int c) {
        int& p = parent[static_cast<size_t>(c)];
        if (p >= 0)
            childrenOf(p).erase(std::find(childrenOf(p).begin(), childrenOf(p).end(), c));
        p = -1;
    }
    // Puts c before `before` (at the end for -1), or in place of `old` when replacing.
    void insert(int p, int c, int before, bool replacing) {
        detach(c);
        auto& list = childrenOf(p);
        auto at = before < 0 ? list.end() : std::find(list.begin(), list.end(), before);
        if (replacing) {
            *at = c;
            parent[static_cast<size_t>(before)] = -1;
        } else {
            list.insert(at, c);
        }
        parent[static_cast<size_t>(c)] = p;
    }
};

} // namespace

TEST(RandomTree, MatchesAPlainModelThroughThousandsOfOperations) {
    ZtPtr<ZtDocument> doc = newDocument();
    std::vector<ZtPtr<ZtNode>> nodes{ZtPtr<ZtNode>(doc.get())};
    for (int i = 1; i < kNodes; ++i) {
        if (i % 5 == 0)
            nodes.emplace_back(doc->createTextNode(UnicodeString::fromUTF8(std::to_string(i))));
        else
            nodes.emplace_back(doc->createElement(name(("e" + std::to_string(i)).c_str())));
    }
    auto node = [&](int i) { return i < 0 ? nullptr : nodes[static_cast<size_t>(i)].get(); };
    auto indexOf = [&](const ZtNode* n) {
        auto at = std::find_if(nodes.begin(), nodes.end(), [&](auto& k) { return k.get() == n; });
        return static_cast<int>(at - nodes.begin());
    };
    Model model;
    std::mt19937 random(20240611);
    auto pick = [&](int from) {
        return std::uniform_int_distribution<int>(from, kNodes - 1)(random);
    };
    int failures = 0;
    for (int step = 0; step < 6000 && !::testing::Test::HasFailure(); ++step) {
        // 0 appendChild, 1 insertBefore, 2 replaceChild, 3 removeChild.
        int op = static_cast<int>(random() % 4);
        int p = pick(0);
        int c = pick(1);
        // The reference or old child: mostly a child of p, sometimes any node, and for
        // insertBefore sometimes null.
        const auto& list = model.childrenOf(p);
        int ref = !list.empty() && random() % 4 != 0 ? list[random() % list.size()] : pick(1);
        if (op == 1 && random() % 5 == 0)
            ref = -1;
        // What the model expects: an error code, -1 for a call that changes nothing, else 0.
        int expected = 0;
        if (op != 0 && ref >= 0 && model.parent[static_cast<size_t>(ref)] != p)
            expected = 9;
        else if ((op == 1 || op == 2) && ref == c)
            expected = -1;
        else if (op != 3 && model.isAncestorOrSelf(c, p))
            expected = 4;
        ZtNode* parent = node(p);
        auto call = [&]() -> ZtNode* {
            switch (op) {
            case 0:
                return parent->appendChild(node(c));
            case 1:
                return parent->insertBefore(node(c), node(ref));
            case 2:
                return parent->replaceChild(node(c), node(ref)).get();
            default:
                return parent->removeChild(node(ref)).get();
            }
        };
        if (expected > 0) {
            EXPECT_EQ(caught([&] { call(); }).getErrorCode(), expected);
            ++failures;
        } else {
            EXPECT_EQ(call(), node(op < 2 ? c : ref));
        }
        if (expected == 0 && op == 3)
            model.detach(ref);
        else if (expected == 0)
            model.insert(p, c, op == 0 ? -1 : ref, op == 2);

        for (int i = 0; i < kNodes; ++i) {
            const ZtNode* n = node(i);
            expectLinksConsistent(n);
            std::vector<int> actual;
            for (const ZtNode* k = n->getFirstChildFast(); k && actual.size() < 100u;
                 k = k->getNextSiblingFast())
                actual.push_back(indexOf(k));
            int mp = model.parent[static_cast<size_t>(i)];
            EXPECT_EQ(actual, model.childrenOf(i)) << "children of " << i;
            EXPECT_EQ(n->getParentNode(), node(mp));
            EXPECT_TRUE(mp >= 0 || (!n->getNextSiblingFast() && !n->getPreviousSibling()))
                << "sibling links left on detached " << i;
            // Ours, plus the parent's when attached (the document: the test's and ours).
            EXPECT_EQ(n->getRefCount(), i == 0 || mp >= 0 ? 2 : 1) << "count of " << i;
        }
        if (::testing::Test::HasFailure())
            ADD_FAILURE() << "at step " << step << " op " << op << " parent " << p << " child " << c
                          << " reference " << ref;
    }
    // Both kinds of outcome were exercised in quantity.
    EXPECT_GT(failures, 500);
    EXPECT_LT(failures, 4000);
}
