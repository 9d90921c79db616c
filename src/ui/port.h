// What a window system gives the program: modal message and input boxes, the
// common file dialogs, progress, a yield to the interface during long runs, a
// beep and the busy pointer. The command line, the desktop program and the
// tests each implement it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ui/draw_hooks.h"

namespace tobel {

enum class Buttons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class Answer { ok, cancel, yes, no };
enum class Icon { none, information, warning, critical, question };

// A picture file loaded by the window system (the background of the section
// editor): the core knows it only by its handle and its size in pixels.
struct ImageHandle {
    int id = 0;
    int width = 0;
    int height = 0;
};

class Port {
  public:
    virtual ~Port() = default;

    virtual Answer message_box(const std::string& text, Buttons buttons, Icon icon,
                               const std::string& title) = 0;
    // Empty optional when the user cancels.
    virtual std::optional<std::string> input_box(const std::string& prompt, const std::string& title,
                                                 const std::string& initial) = 0;
    // `filter` in the form "TOBEL-3 Files (*.TOB)|*.TOB". Empty optional on cancel.
    virtual std::optional<std::string> open_file_dialog(const std::string& filter,
                                                        const std::string& initial) = 0;
    virtual std::optional<std::string> save_file_dialog(const std::string& filter, const std::string& initial,
                                                        bool overwrite_prompt) = 0;
    // A line of the progress box of a long run.
    virtual void progress(const std::string& line) = 0;
    // Lets the interface process its events. Returns true when the user has
    // pressed Stop since the last call.
    virtual bool yield() = 0;
    virtual void beep() = 0;
    virtual void busy(bool on) = 0;
    // A window of plain text lines: the result panel, the message lists, the
    // solution printout.
    virtual void show_text(const std::string& caption, const std::vector<std::string>& lines) = 0;
    // A drawing window is brought up with this caption; `view_mode` says what it shows.
    virtual void show_view(int view_mode, const std::string& caption) = 0;
    // The pictures that follow a solve or a search. A port that returns
    // hooks takes pictures; none by default, so a batch run draws nothing
    // it was not asked for.
    virtual DrawHooks* draw_hooks() { return nullptr; }
    // Loads a picture file (BMP, GIF, TIF, JPG). Empty optional when the file
    // cannot be read; a port without images reads none.
    virtual std::optional<ImageHandle> load_image(const std::string& path)
    {
        (void)path;
        return std::nullopt;
    }
    // The picture is no longer needed.
    virtual void unload_image(const ImageHandle& image) { (void)image; }
};

// The busy pointer for the life of a scope.
struct BusyPointer {
    Port& port;
    explicit BusyPointer(Port& p) : port(p) { port.busy(true); }
    ~BusyPointer() { port.busy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

// A port that answers every question with a fixed answer and shows nothing:
// for batch runs and searches.
class QuietPort : public Port {
  public:
    explicit QuietPort(Answer answer = Answer::no) : answer_(answer) {}
    Answer message_box(const std::string&, Buttons buttons, Icon, const std::string&) override;
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
    bool yield() override { return false; }
    void beep() override {}
    void busy(bool) override {}
    void show_text(const std::string&, const std::vector<std::string>&) override {}
    void show_view(int, const std::string&) override {}

  private:
    Answer answer_;
};

} // namespace tobel
