#include "report/message_list_form.h"

#include <algorithm>

#include "geometry/input_checks.h"
#include "project/numtext.h"
#include "report/messages.h"

namespace tobel {

int message_list_count(const Project& p, int mode)
{
    if (mode == 0)
        return std::max(0, int(p.message_count));
    return std::max(0, std::min(int(p.check_count), int(p.check_text.size()) - 1));
}

static const std::string& list_line(const Project& p, int mode, int line)
{
    return mode == 0 ? p.message_text[std::size_t(line)] : p.check_text[std::size_t(line)];
}

static int last_top(int count)
{
    return std::max(1, count - message_list_visible_rows + 1);
}

MessageListForm open_message_list(const Project& p, int mode)
{
    MessageListForm form;
    form.mode = mode;
    form.top = 1;
    form.current = message_list_count(p, mode) > 0 ? 1 : 0;
    return form;
}

std::string message_list_caption(const Project& p, int mode)
{
    if (mode == 0)
        return str(long(p.message_count)) + " warnings and errors issued for this trial surface";
    return str(long(p.check_count)) + " data input errors were found";
}

std::vector<std::string> message_list_rows(const Project& p, const MessageListForm& form)
{
    const int count = message_list_count(p, form.mode);
    std::vector<std::string> rows;
    for (int line = form.top; line <= count && line < form.top + message_list_visible_rows; ++line) {
        if (line < 1)
            continue;
        rows.push_back(str(long(line)) + "\t" + list_line(p, form.mode, line));
    }
    return rows;
}

void message_list_key(const Project& p, MessageListForm& form, int key_code)
{
    const int count = message_list_count(p, form.mode);
    if (key_code == key_down) {
        if (form.current + 1 > count)
            return;
        ++form.current;
        if (form.current > form.top + message_list_visible_rows - 1)
            ++form.top;
    } else if (key_code == key_up) {
        if (form.current - 1 < 1)
            return;
        --form.current;
        if (form.current < form.top)
            --form.top;
    }
}

void message_list_scroll(const Project& p, MessageListForm& form, int top_line)
{
    const int count = message_list_count(p, form.mode);
    const int row = form.current - form.top;
    form.top = std::clamp(top_line, 1, last_top(count));
    form.current = count > 0 ? std::min(form.top + row, count) : 0;
}

bool run_input_checks_for_solve(Project& p, Port& port)
{
    check_input(p);
    if (p.check_count > 0) {
        p.error_list_mode = -1;
        port.show_text(message_list_caption(p, -1), input_messages(p));
    }
    return p.check_fatal == 0;
}

void show_trial_messages(Project& p, Port& port)
{
    if (p.message_count <= 0)
        return;
    p.error_list_mode = 0;
    port.show_text(message_list_caption(p, 0), trial_messages(p));
}

} // namespace tobel
