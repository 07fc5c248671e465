// ICU oracles for the counter-style tests (see icu_oracle.h).
#include "icu_oracle.h"

#include <string>

#include <unicode/numsys.h>

namespace icu_oracle {

RuleFormat::RuleFormat(const char* locale, const char* ruleSet) : ruleSet_(ruleSet, -1, US_INV) {
    UErrorCode status = U_ZERO_ERROR;
    bool spellout = locale && *locale;
    auto format = std::make_unique<icu::RuleBasedNumberFormat>(
        spellout ? icu::URBNF_SPELLOUT : icu::URBNF_NUMBERING_SYSTEM,
        icu::Locale(spellout ? locale : "root"), status);
    if (U_SUCCESS(status))
        format_ = std::move(format);
}

icu::UnicodeString RuleFormat::format(long long value) const {
    icu::UnicodeString out;
    icu::FieldPosition position;
    UErrorCode status = U_ZERO_ERROR;
    format_->format(static_cast<int64_t>(value), ruleSet_, out, position, status);
    if (U_FAILURE(status))
        out.setToBogus();
    return out;
}

icu::UnicodeString numberingDigits(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberingSystem> system(
        icu::NumberingSystem::createInstanceByName(name, status));
    if (U_FAILURE(status) || !system || system->isAlgorithmic() || system->getRadix() != 10)
        return {};
    return system->getDescription();
}

icu::UnicodeString withDigits(const icu::UnicodeString& digits, long long value) {
    std::string decimal = std::to_string(value);
    icu::UnicodeString out;
    for (char c : decimal) {
        if (c == '-')
            out.append(u'-');
        else
            out.append(digits.char32At(digits.moveIndex32(0, c - '0')));
    }
    return out;
}

} // namespace icu_oracle

namespace U_ICU_NAMESPACE {
void PrintTo(const UnicodeString& text, std::ostream* out) {
    std::string bytes;
    text.toUTF8String(bytes);
    *out << '"' << bytes << '"';
}
} // namespace U_ICU_NAMESPACE
