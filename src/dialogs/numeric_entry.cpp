#include "dialogs/numeric_entry.h"

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

} // namespace tobel
