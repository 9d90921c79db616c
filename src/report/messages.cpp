#include "report/messages.h"

#include "project/runtime_error.h"

namespace tobel {

void add_message(Project& p, const std::string& text)
{
    if (p.message_count >= message_capacity)
        throw RuntimeError(err_subscript,
                           "message list holds " + std::to_string(message_capacity) + " lines");
    ++p.message_count;
    p.message_text[std::size_t(p.message_count)] = text;
}

std::vector<std::string> trial_messages(const Project& p)
{
    const std::size_t count = p.message_count > 0 ? std::size_t(p.message_count) : 0;
    return std::vector<std::string>(p.message_text.begin() + 1,
                                    p.message_text.begin() + 1 + std::ptrdiff_t(count));
}

std::vector<std::string> input_messages(const Project& p)
{
    std::vector<std::string> lines;
    for (int k = 1; k <= p.check_count && std::size_t(k) < p.check_text.size(); ++k)
        lines.push_back(p.check_text[std::size_t(k)]);
    return lines;
}

} // namespace tobel
