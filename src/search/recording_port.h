// The port a centre's evaluation talks to: it never reaches the user. Its
// message boxes are recorded with the centre's outcome and shown when the
// outcome is replayed; its yield reports the search's cancel flag, and on the
// thread of the user's port (a search on one thread) it also asks that port.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <vector>

#include "search/centre_outcome.h"
#include "ui/port.h"

namespace tobel {

class RecordingPort : public Port {
  public:
    RecordingPort(std::atomic<bool>& cancel, Port* poll) : cancel_(cancel), poll_(poll) {}
    std::vector<CentreEvent>* events = nullptr; // where boxes go; none: dropped

    Answer message_box(const std::string& text, Buttons buttons, Icon icon, const std::string& title) override
    {
        if (events != nullptr) {
            CentreEvent e;
            e.is_box = true;
            e.box = {text, title, buttons, icon};
            events->push_back(std::move(e));
        }
        return buttons == Buttons::ok ? Answer::ok : Answer::cancel;
    }
    std::optional<std::string> input_box(const std::string&, const std::string&, const std::string&) override
    {
        return std::nullopt;
    }
    std::optional<std::string> open_file_dialog(const std::string&, const std::string&) override
    {
        return std::nullopt;
    }
    std::optional<std::string> save_file_dialog(const std::string&, const std::string&, bool) override
    {
        return std::nullopt;
    }
    void progress(const std::string&) override {}
    bool yield() override
    {
        if (poll_ != nullptr && !cancel_.load() && poll_->yield())
            cancel_.store(true);
        return cancel_.load();
    }
    void beep() override {}
    void busy(bool) override {}
    void show_text(const std::string&, const std::vector<std::string>&) override {}
    void show_view(int, const std::string&) override {}
    bool cancelled() const { return cancel_.load(); }

  private:
    std::atomic<bool>& cancel_;
    Port* poll_;
};

} // namespace tobel
