// An independent, deliberately plain model of CSS @counter-style rules for the tests: a
// reader of the published style sheets and the CSS algorithm that turns a value into its
// representation. It shares no code with the library (which compiles its table with a
// Python generator and formats with its own digit routines), so agreement between the two
// is evidence, not a tautology.
//
// Where the library deliberately differs from CSS, this model follows the
// library, and says so:
//  - the pad is applied to the representation before the negative sign is added (CSS counts
//    the sign into the padded length);
//  - a value outside the style's range, or one its system cannot represent, is formatted by
//    the fallback style in plain form and wrapped in this style's own prefix and suffix; a
//    fallback that leads back to a style already falling back ends in "decimal";
//  - representations of 1000 UTF-16 code units or more fall back.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace css_reference {

struct Rule {
    std::string name;
    std::string system = "symbolic"; // CSS initial value
    std::string extends;             // non-empty for "system: extends NAME"
    long long first = 1;
    std::vector<std::u16string> symbols;
    std::vector<std::pair<long long, std::u16string>> additive;
    std::u16string negativeBefore = u"-";
    std::u16string negativeAfter;
    std::u16string prefix;
    std::u16string suffix = u". ";
    std::optional<std::vector<std::pair<long long, long long>>> ranges; // none: auto
    long long padLength = 0;
    std::u16string padSymbol;
    std::string fallback = "decimal";
    std::vector<std::string> given; // descriptors the rule states
    std::u16string zero;            // not CSS: the library's zero symbol, for hand-made test styles
};

// Reads every @counter-style rule of a style sheet, in order. Throws std::runtime_error on
// text it cannot read.
std::vector<Rule> parseStyleSheet(const std::string& css);

// A set of rules, first definition of a name wins, with "extends" resolved.
class StyleSet {
public:
    void add(const std::vector<Rule>& rules);
    bool has(const std::string& name) const { return rules_.count(name) != 0; }
    // The rule with its extends resolved (kept once resolved).
    const Rule& resolved(const std::string& name) const;
    // The marker text of `value` in style `name` (see the notes above).
    std::u16string format(const std::string& name, long long value, bool plain) const;

private:
    std::u16string formatWith(const Rule& rule, long long value, bool plain,
                              std::vector<std::string>& busy) const;

    std::map<std::string, Rule> rules_;
    mutable std::map<std::string, Rule> resolved_;
};

// UTF-8 of a UTF-16 text, for messages.
std::string utf8(const std::u16string& text);

} // namespace css_reference
