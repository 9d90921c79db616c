// The platform port of the desktop program: message and input boxes, the
// common file dialogs, progress in the status bar, the yield that serves the
// event loop during long runs, the busy pointer, text and picture windows.
// Tests and the screenshot run answer the boxes and dialogs through the
// answer functions instead of showing them.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <memory>

#include "graphics/picture_hooks.h"
#include "project/project.h"
#include "qt/image_store.h"
#include "ui/port.h"

namespace tobel::gui {

class MainWindow;

// "TOBEL-3 Files (*.TOB)|*.TOB" as a Qt name filter: each description with
// its patterns, the lower-case spelling added so that "slope.tob" shows too;
// pairs joined by ";;".
QString qt_file_filter(const std::string& filter);

class QtPort : public Port {
  public:
    QtPort(MainWindow& window, Project& p);

    struct Box {
        std::string text;
        Buttons buttons;
        Icon icon;
        std::string title;
    };
    // When set, these answer instead of the modal box or dialog.
    std::function<Answer(const Box&)> answer_box;
    std::function<std::optional<std::string>(const std::string& filter, bool save)> answer_file;
    std::function<std::optional<std::string>(const std::string& prompt)> answer_input;
    // Called on every yield with its count (tests press buttons from here).
    std::function<void(long)> on_yield;
    // Every box shown or answered, in order.
    std::vector<Box> boxes;

    // The Stop button: the next yield reports it.
    void request_stop() { stop_ = true; }
    long yields() const { return yields_; }
    ImageStore& images() { return images_; }

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
    void beep() override;
    void busy(bool on) override;
    void show_text(const std::string& caption, const std::vector<std::string>& lines) override;
    void show_view(int view_mode, const std::string& caption) override;
    DrawHooks* draw_hooks() override { return &hooks_; }
    std::optional<ImageHandle> load_image(const std::string& path) override { return images_.load(path); }
    void unload_image(const ImageHandle& image) override { images_.unload(image); }

  private:
    MainWindow& window_;
    Project& p_;
    PictureHooks hooks_;
    ImageStore images_;
    bool stop_ = false;
    long yields_ = 0;
    int busy_depth_ = 0;
    QElapsedTimer since_events_, since_repaint_;
};

} // namespace tobel::gui
