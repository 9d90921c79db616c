// A platform port for tests: answers questions from a queue, records every
// box, progress line and beep.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "ui/port.h"

namespace tobel::test {

class ScriptedPort : public Port {
public:
    struct Box {
        std::string text;
        Buttons buttons;
        Icon icon;
        std::string title;
    };
    std::deque<Answer> answers;             // next answers; default below when empty
    Answer default_answer = Answer::no;
    std::deque<std::optional<std::string>> files;   // answers of the file dialogs
    std::deque<std::optional<std::string>> inputs;  // answers of the input boxes
    std::vector<Box> boxes;
    std::vector<std::string> progress_lines;
    std::vector<std::string> dialog_filters;
    int beeps = 0;
    int yields = 0;
    int stop_after_yields = -1;  // yield() reports Stop once this many yields have passed

    Answer message_box(const std::string& text, Buttons b, Icon i, const std::string& title) override
    {
        boxes.push_back({text, b, i, title});
        if (answers.empty()) return b == Buttons::ok ? Answer::ok : default_answer;
        Answer a = answers.front();
        answers.pop_front();
        return a;
    }
    struct InputBox {
        std::string prompt;
        std::string title;
        std::string initial;
    };
    std::vector<InputBox> input_boxes; // every input box asked, in order
    std::optional<std::string> input_box(const std::string& prompt, const std::string& title,
                                         const std::string& initial) override
    {
        input_boxes.push_back({prompt, title, initial});
        if (inputs.empty()) return std::nullopt;
        auto a = inputs.front();
        inputs.pop_front();
        return a;
    }
    std::optional<std::string> open_file_dialog(const std::string& filter, const std::string&) override
    {
        return next_file(filter);
    }
    std::optional<std::string> save_file_dialog(const std::string& filter, const std::string&, bool) override
    {
        return next_file(filter);
    }
    void progress(const std::string& line) override { progress_lines.push_back(line); }
    bool yield() override
    {
        ++yields;
        return stop_after_yields >= 0 && yields > stop_after_yields;
    }
    void beep() override { ++beeps; }
    void busy(bool) override {}
    struct TextWindow {
        std::string caption;
        std::vector<std::string> lines;
    };
    std::vector<TextWindow> texts;
    std::vector<std::pair<int, std::string>> views;
    void show_text(const std::string& caption, const std::vector<std::string>& lines) override
    {
        texts.push_back({caption, lines});
    }
    void show_view(int view_mode, const std::string& caption) override { views.emplace_back(view_mode, caption); }

    // Picture files: a path listed here loads as an image of the given size;
    // any other path fails to load.
    std::vector<std::pair<std::string, ImageHandle>> images;
    std::vector<int> unloaded_images;
    std::optional<ImageHandle> load_image(const std::string& path) override
    {
        for (const auto& [name, image] : images)
            if (name == path) return image;
        return std::nullopt;
    }
    void unload_image(const ImageHandle& image) override { unloaded_images.push_back(image.id); }

private:
    std::optional<std::string> next_file(const std::string& filter)
    {
        dialog_filters.push_back(filter);
        if (files.empty()) return std::nullopt;
        auto a = files.front();
        files.pop_front();
        return a;
    }
};

} // namespace tobel::test
