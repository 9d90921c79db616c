// The command line's platform port: questions are answered by the --yes/--no
// policy or by a script's queued answers, and echoed with the answer taken.
#pragma once

#include <deque>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "ui/port.h"

namespace tobel::cli {

class CliPort : public Port {
  public:
    explicit CliPort(std::ostream& out) : out_(out) {}

    Answer policy = Answer::no;                    // answer to questions when no queued one
    std::deque<Answer> answers;                    // queued answers (scripts)
    std::deque<std::optional<std::string>> files;  // queued file dialog answers
    std::deque<std::optional<std::string>> inputs; // queued input box answers
    bool show_windows = true;                      // print text windows
    bool show_printout = true;                     // print the solution printout window
    bool show_progress = false;
    int error_boxes = 0;  // critical boxes shown, i.e. failed commands
    bool stopped = false; // Ctrl-C was taken as the Stop button
    std::vector<std::string> last_texts_caption;

    Answer message_box(const std::string& text, Buttons buttons, Icon icon,
                       const std::string& title) override;
    std::optional<std::string> input_box(const std::string& prompt, const std::string& title,
                                         const std::string& initial) override;
    std::optional<std::string> open_file_dialog(const std::string& filter,
                                                const std::string& initial) override;
    std::optional<std::string> save_file_dialog(const std::string& filter, const std::string& initial,
                                                bool overwrite_prompt) override;
    void progress(const std::string& line) override;
    bool yield() override;
    void beep() override {}
    void busy(bool) override {}
    void show_text(const std::string& caption, const std::vector<std::string>& lines) override;
    void show_view(int view_mode, const std::string& caption) override;
    // Pictures are drawn when a command wants one (draw, --plot).
    DrawHooks* hooks = nullptr;
    DrawHooks* draw_hooks() override { return hooks; }

  private:
    std::optional<std::string> next_file(const std::string& what, const std::string& filter);
    std::ostream& out_;
};

// Set by Ctrl-C; the port reports it as the Stop button.
void install_interrupt_handler();
// Whether Ctrl-C was pressed, without taking the press: searches running
// side by side all see it. Safe from any thread.
bool interrupt_requested();

} // namespace tobel::cli
