// A platform port for the form tests: records every message box, answers
// questions and file dialogs from queues, and loads pictures into a store.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "qt/image_store.h"
#include "ui/port.h"

namespace tobel::test {

class RecordingPort : public Port {
  public:
    std::vector<std::string> boxes;
    std::deque<Answer> answers;
    std::deque<std::optional<std::string>> files;
    int beeps = 0;
    ImageStore images;

    Answer message_box(const std::string& text, Buttons b, Icon, const std::string&) override
    {
        boxes.push_back(text);
        if (answers.empty())
            return b == Buttons::ok || b == Buttons::ok_cancel ? Answer::ok : Answer::no;
        const Answer a = answers.front();
        answers.pop_front();
        return a;
    }
    std::optional<std::string> input_box(const std::string&, const std::string&, const std::string&) override
    {
        return std::nullopt;
    }
    std::optional<std::string> open_file_dialog(const std::string&, const std::string&) override
    {
        return next_file();
    }
    std::optional<std::string> save_file_dialog(const std::string&, const std::string&, bool) override
    {
        return next_file();
    }
    void progress(const std::string&) override {}
    bool yield() override { return false; }
    void beep() override { ++beeps; }
    void busy(bool) override {}
    void show_text(const std::string&, const std::vector<std::string>&) override {}
    void show_view(int, const std::string&) override {}
    std::optional<ImageHandle> load_image(const std::string& path) override { return images.load(path); }
    void unload_image(const ImageHandle& image) override { images.unload(image); }

  private:
    std::optional<std::string> next_file()
    {
        if (files.empty())
            return std::nullopt;
        auto f = files.front();
        files.pop_front();
        return f;
    }
};

inline std::string example(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/examples/" + name;
}

} // namespace tobel::test
