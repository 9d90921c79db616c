#include "ui/port.h"

namespace tobel {

// A fixed answer that the buttons do not offer falls back to the first button.
Answer QuietPort::message_box(const std::string&, Buttons buttons, Icon, const std::string&)
{
    switch (buttons) {
    case Buttons::ok: return Answer::ok;
    case Buttons::ok_cancel: return answer_ == Answer::cancel ? Answer::cancel : Answer::ok;
    case Buttons::yes_no: return answer_ == Answer::yes ? Answer::yes : Answer::no;
    case Buttons::yes_no_cancel: return answer_ == Answer::ok ? Answer::yes : answer_;
    }
    return Answer::ok;
}

} // namespace tobel
