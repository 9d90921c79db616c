// The key filter of numeric entry fields, shared by the data-entry forms.
#pragma once

#include <cstddef>
#include <string>

namespace tobel {

// Whether `key` typed into a numeric field holding `text` is let through:
// digits; one decimal point; a minus sign only as the first character, that
// is with the caret at the start of a text without one (`caret` < 0 means
// the end of the text); backspace, which edits rather than enters. Every
// other key, carriage return and tab included, does not enter the text.
bool numeric_key_accepted(const std::string& text, char key, int caret = -1);

// The place of a caret in `text`: the end for a negative caret, and never
// past the end.
std::size_t caret_at(const std::string& text, int caret);

// An accepted key applied to the edit text at the caret: backspace removes
// the character before it, any other key goes in there.
void edit_at_caret(std::string& edit, char key, int caret);

} // namespace tobel
