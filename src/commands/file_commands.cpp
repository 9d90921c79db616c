#include <algorithm>
#include <cctype>
#include <new>

#include "commands/commands.h"
#include "commands/menu_model.h"
#include "commands/open_project.h"
#include "geometry/surface_stack.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/legacy_file.h"
#include "project/runtime_error.h"
#include "project/settings.h"
#include "solver/checks.h"

namespace tobel {

namespace {

constexpr const char* tob_filter = "TOBEL-3 Files (*.TOB)|*.TOB";
constexpr const char* tod_filter = "TOBEL Files (*.TOD)|*.TOD";

bool has_extension(const std::string& path, const char* ext)
{
    if (path.size() < 4)
        return false;
    std::string tail = path.substr(path.size() - 4);
    std::transform(tail.begin(), tail.end(), tail.begin(),
                   [](unsigned char c) { return char(std::toupper(c)); });
    return tail == ext;
}

std::string with_extension(const std::string& path, const char* from, const char* to)
{
    return has_extension(path, from) ? path.substr(0, path.size() - 4) + to : path;
}

void show_error(Port& port, const RuntimeError& e)
{
    port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
}

// Runs a file operation and turns what the runtime can throw into its error.
template <class F> void trapped(F&& f)
{
    try {
        f();
    } catch (const RuntimeError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw RuntimeError(err_out_of_memory, std::string());
    } catch (const std::exception& e) {
        throw RuntimeError(err_io, e.what(), true);
    }
}

// Save As and Save As .TOD differ only in the extensions, the filter and
// whether a failure is remembered for Exit.
void save_as_generic(Project& p, Port& port, const char* from, const char* to, const char* filter,
                     bool remember_cancel)
{
    const std::string old_path = p.data_file_path;
    p.data_file_path = with_extension(p.data_file_path, from, to);
    auto chosen = port.save_file_dialog(filter, p.data_file_path, true);
    if (!chosen) {
        p.data_file_path = old_path;
        if (remember_cancel)
            p.save_cancelled = -1;
        return;
    }
    p.data_file_path = *chosen;
    try {
        trapped([&] { write_data_file(p, p.data_file_path); });
        set_main_caption(p);
    } catch (const RuntimeError&) {
        p.data_file_path = old_path;
        if (remember_cancel)
            p.save_cancelled = -1;
    }
}

void close_child_windows(Project& p)
{
    p.keep_window = 0;
}

} // namespace

// Asks to save, saves on Yes, and gives the answer.
static Answer ask_and_save(Project& p, Port& port)
{
    const Answer a = port.message_box("Do you want to save changes to: " + p.data_file_path + "?",
                                      Buttons::yes_no_cancel, Icon::question, "TOBEL-3");
    if (a == Answer::yes) {
        if (p.data_file_path.empty())
            file_save_as(p, port);
        else
            file_save(p, port);
    }
    return a;
}

// A Save As cancelled here does not stop the command that asked.
bool save_prompt(Project& p, Port& port)
{
    return !p.dirty_flag || ask_and_save(p, port) != Answer::cancel;
}

bool file_new(Project& p, Port& port)
{
    if (!save_prompt(p, port))
        return false;
    p.form_mode = 2;
    p.work_drive.clear();
    p.data_file_path.clear();
    reset_project(p);
    close_child_windows(p);
    set_main_caption(p);
    return true;
}

void file_save(Project& p, Port& port)
{
    p.data_file_path = with_extension(p.data_file_path, ".TOD", ".TOB");
    try {
        trapped([&] { write_data_file(p, p.data_file_path); });
        set_main_caption(p);
    } catch (const RuntimeError& e) {
        if (e.number() == err_path_access)
            port.message_box("No file loaded.", Buttons::ok, Icon::warning, "TOBEL-3");
        else
            show_error(port, e);
    }
}

void file_save_as(Project& p, Port& port)
{
    save_as_generic(p, port, ".TOD", ".TOB", tob_filter, true);
}

// Writes the .TOB layout into a file with the other extension, deliberately.
void file_save_as_tod(Project& p, Port& port)
{
    save_as_generic(p, port, ".TOB", ".TOD", tod_filter, false);
}

// Open and Open legacy share every step but the dialog's filter, the recent
// file case, the reader and the recent list.
static void open_project(Project& p, Port& port, bool legacy)
{
    // 1.
    if (!save_prompt(p, port))
        return;
    // 2.
    if (!legacy && p.open_recent_pending) {
        p.open_recent_pending = 0;
    } else {
        auto chosen = port.open_file_dialog(legacy ? tod_filter : tob_filter, p.data_file_path);
        if (!chosen)
            return;
        p.data_file_path = *chosen;
    }
    try {
        trapped([&] {
            // 3. and 4.
            close_child_windows(p);
            reset_project(p);
            // 5.
            if (legacy) {
                read_legacy_file(p, p.data_file_path, port);
            } else {
                read_data_file(p, p.data_file_path, port);
                update_recent_files(p);
            }
            set_main_caption(p);
            // 6.
            reset_forces(p);
            rebuild_surfaces(p, port);
            p.view_mode = 5;
            // 7.
            show_finished_load_view(p, port);
            p.dirty_flag = -1;
        });
    } catch (const RuntimeError& e) {
        port.busy(false);
        show_error(port, e);
    }
}

void file_open(Project& p, Port& port)
{
    open_project(p, port, false);
}

void file_open_legacy(Project& p, Port& port)
{
    open_project(p, port, true);
}

void file_save_report(Project& p, Port& port, const ReportContext& context)
{
    auto chosen = port.save_file_dialog("Text Files (*.txt)|*.txt", "", true);
    if (!chosen)
        return;
    try {
        BusyPointer busy(port);
        trapped([&] { write_report_text(p, *chosen, context); });
    } catch (const RuntimeError& e) {
        show_error(port, e);
    }
}

void file_open_recent(Project& p, Port& port, int item)
{
    if (item < 0 || item >= recent_capacity)
        return;
    p.data_file_path = p.recent_file[std::size_t(recent_capacity - item)];
    p.open_recent_pending = -1;
    file_open(p, port);
}

bool main_query_unload(Project& p, Port& port)
{
    // 2. The settings are written whatever comes later.
    if (!p.settings_path.empty()) {
        try {
            write_settings(p, p.settings_path);
        } catch (const RuntimeError& e) {
            port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
        }
    }
    // 3.
    if (p.dirty_flag) {
        const Answer a = ask_and_save(p, port);
        if (a == Answer::cancel)
            return false;
        if (a == Answer::yes && p.save_cancelled) {
            p.save_cancelled = 0;
            return false;
        }
        return true;
    }
    // 4.
    return port.message_box("Do you wish to exit TOBEL?", Buttons::ok_cancel, Icon::question, "TOBEL-3") ==
           Answer::ok;
}

void mirror_command(Project& p, Port& port)
{
    mirror_model(p, port);
    p.view_mode = 5;
    show_finished_load_view(p, port);
}

} // namespace tobel
