#include "cli_port.h"

#include <csignal>
#include <ostream>

namespace tobel::cli {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void on_interrupt(int)
{
    interrupted = 1;
}

const char* answer_name(Answer a)
{
    switch (a) {
    case Answer::ok: return "OK";
    case Answer::cancel: return "Cancel";
    case Answer::yes: return "Yes";
    case Answer::no: return "No";
    }
    return "";
}

// The policy answer that the buttons offer.
Answer offered(Answer wanted, Buttons b)
{
    switch (b) {
    case Buttons::ok: return Answer::ok;
    case Buttons::ok_cancel:
        return wanted == Answer::yes || wanted == Answer::ok ? Answer::ok : Answer::cancel;
    case Buttons::yes_no: return wanted == Answer::yes || wanted == Answer::ok ? Answer::yes : Answer::no;
    case Buttons::yes_no_cancel: return wanted == Answer::ok ? Answer::yes : wanted;
    }
    return Answer::ok;
}

} // namespace

void install_interrupt_handler()
{
    std::signal(SIGINT, on_interrupt);
}

bool interrupt_requested()
{
    return interrupted != 0;
}

Answer CliPort::message_box(const std::string& text, Buttons buttons, Icon icon, const std::string& title)
{
    if (icon == Icon::critical)
        ++error_boxes;
    Answer a = Answer::ok;
    if (buttons != Buttons::ok) {
        Answer wanted = policy;
        if (!answers.empty()) {
            wanted = answers.front();
            answers.pop_front();
        }
        a = offered(wanted, buttons);
    }
    std::string shown = text;
    for (auto& c : shown)
        if (c == '\n' || c == '\r')
            c = ' ';
    out_ << (title.empty() ? "" : "[" + title + "] ") << shown;
    if (buttons != Buttons::ok)
        out_ << " -> " << answer_name(a);
    out_ << "\n";
    return a;
}

std::optional<std::string> CliPort::input_box(const std::string& prompt, const std::string&,
                                              const std::string&)
{
    std::optional<std::string> a;
    if (!inputs.empty()) {
        a = inputs.front();
        inputs.pop_front();
    }
    out_ << prompt << " -> " << (a ? *a : std::string("Cancel")) << "\n";
    return a;
}

std::optional<std::string> CliPort::next_file(const std::string& what, const std::string& filter)
{
    std::optional<std::string> a;
    if (!files.empty()) {
        a = files.front();
        files.pop_front();
    }
    out_ << what << " (" << filter << ") -> " << (a ? *a : std::string("Cancel")) << "\n";
    return a;
}

std::optional<std::string> CliPort::open_file_dialog(const std::string& filter, const std::string&)
{
    return next_file("Open", filter);
}

std::optional<std::string> CliPort::save_file_dialog(const std::string& filter, const std::string&, bool)
{
    return next_file("Save As", filter);
}

void CliPort::progress(const std::string& line)
{
    if (show_progress)
        out_ << line << "\n";
}

bool CliPort::yield()
{
    if (!interrupted)
        return false;
    interrupted = 0;
    stopped = true;
    return true;
}

void CliPort::show_text(const std::string& caption, const std::vector<std::string>& lines)
{
    last_texts_caption.push_back(caption);
    const bool printout =
        caption == "LATERAL EQUILIBRIUM ESTABLISHED" || caption == "SOLUTION ACCEPTABILITY INDICES";
    if (!show_windows || (printout && !show_printout))
        return;
    out_ << "== " << caption << "\n";
    for (const auto& l : lines)
        out_ << l << "\n";
}

void CliPort::show_view(int, const std::string&) {}

} // namespace tobel::cli
