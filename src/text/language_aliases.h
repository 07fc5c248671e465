// The process-wide language alias table behind ZtLang (internal).
#pragma once

#include <string>

namespace ZtCommonNS {

// Finds the locale code that stands for `text`; false when the text has no alias. Builds the
// table on first use, under the table's own lock.
bool lookupLanguageAlias(const std::string& text, std::string& code);
// Frees the table; the next lookup builds it again.
void releaseLanguageAliases();
// Whether the table exists now (for tests).
bool languageAliasTableBuilt();

} // namespace ZtCommonNS
