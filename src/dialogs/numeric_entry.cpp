#include "dialogs/numeric_entry.h"

#include <algorithm>

namespace tobel {

bool numeric_key_accepted(const std::string& text, char key, int caret)
{
    if (key >= '0' && key <= '9')
        return true;
    if (key == '\b')
        return true;
    if (key == '.')
        return text.find('.') == std::string::npos;
    if (key == '-') {
        const std::size_t at = caret < 0 ? text.size() : std::size_t(caret);
        return at == 0 && text.find('-') == std::string::npos;
    }
    return false;
}

std::size_t caret_at(const std::string& text, int caret)
{
    return caret < 0 ? text.size() : std::min(std::size_t(caret), text.size());
}

void edit_at_caret(std::string& edit, char key, int caret)
{
    const std::size_t at = caret_at(edit, caret);
    if (key == '\b') {
        if (at > 0)
            edit.erase(at - 1, 1);
    } else {
        edit.insert(at, 1, key);
    }
}

} // namespace tobel
