// ICU's rule-based number formats as test oracles for the counting systems: the Chinese and
// Japanese spell-out rules ("hans", "hant", "jpan" numbering systems and their financial
// forms) and the algorithmic numbering systems (Ethiopic, Greek, Armenian, Georgian, Roman).
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include <unicode/rbnf.h>
#include <unicode/unistr.h>

namespace icu_oracle {

class RuleFormat {
public:
    // `locale` empty: the numbering-system rules of the root locale.
    RuleFormat(const char* locale, const char* ruleSet);
    bool ok() const { return format_ != nullptr; }
    icu::UnicodeString format(long long value) const;

private:
    std::unique_ptr<icu::RuleBasedNumberFormat> format_;
    icu::UnicodeString ruleSet_;
};

// The ten digits of a decimal numbering system ("hanidec", "arab", ...), or empty.
icu::UnicodeString numberingDigits(const char* name);

// `value` written with the ten `digits` (one code point each), with "-" for negatives.
icu::UnicodeString withDigits(const icu::UnicodeString& digits, long long value);

} // namespace icu_oracle

// Lets GoogleTest print UnicodeString values as UTF-8.
namespace U_ICU_NAMESPACE {
void PrintTo(const UnicodeString& text, std::ostream* out);
} // namespace U_ICU_NAMESPACE
