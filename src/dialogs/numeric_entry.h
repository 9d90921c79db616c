// The key filter of numeric entry fields, shared by the data-entry forms.
#pragma once

#include <string>

namespace tobel {

// Whether `key` typed into a numeric field holding `text` is let through:
// digits; one decimal point; a minus sign only as the first character, that
// is with the caret at the start of a text without one (`caret` < 0 means
// the end of the text); backspace, which edits rather than enters. Every
// other key, carriage return and tab included, does not enter the text.
bool numeric_key_accepted(const std::string& text, char key, int caret = -1);

} // namespace tobel
