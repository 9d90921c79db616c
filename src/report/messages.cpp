#include "report/messages.h"

#include "project/runtime_error.h"

namespace tobel {

void add_message(Project& p, const std::string& text)
{
    if (p.message_count >= message_capacity)
        throw RuntimeError(err_subscript, "message list holds " + std::to_string(message_capacity) + " lines");
    ++p.message_count;
    p.message_text[std::size_t(p.message_count)] = text;
}

} // namespace tobel
