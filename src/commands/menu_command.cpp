#include "commands/menu_command.h"

#include <map>

#include "commands/commands.h"
#include "commands/graphics_commands.h"
#include "commands/menu_model.h"
#include "commands/search_commands.h"
#include "commands/surface_commands.h"
#include "graphics/picture.h"
#include "project/exports.h"
#include "solver/checks.h"

namespace tobel {

namespace {

// The submenus and the items they hold; every other item sits in its
// top-level menu. The Export.DFX item stands in the Graphics menu itself,
// after the Export submenu (its caption names the export on its own).
const std::map<std::string, std::string, std::less<>>& submenu_of()
{
    static const std::map<std::string, std::string, std::less<>> parents = {
        {"TODfile_Open", "TODfile"},
        {"TODfile_saveas", "TODfile"},
        {"print_this", "print"},
        {"print_datafile", "print"},
        {"Edit_GeomOptions_Interp", "Edit_GeomOptions"},
        {"Edit_GeomOptions_Mirror", "Edit_GeomOptions"},
        {"Edit_Sliding_surface_ellipsoid", "ellipsoid"},
        {"Solve_grid_search", "ellipsoid"},
        {"Solve_auto_search", "ellipsoid"},
        {"Edit_Sliding_surface_composite", "composite"},
        {"Solve_grid_search_comp", "composite"},
        {"Solve_auto_search_comp", "composite"},
        {"Export_Graphics_Isometry", "Graphics_ExportGRD"},
        {"Twodfile", "Graphics_ExportGRD"},
        {"Export_Graphics_Longitudinal_Sections", "Graphics_ExportGRD"},
        {"Export_Graphics_Lateral_Sections", "Graphics_ExportGRD"},
    };
    return parents;
}

// The arrays of the menu and the submenu that holds their items.
constexpr std::pair<const char*, const char*> menu_arrays[] = {
    {"FileName", "RecentFiles"},
    {"Graphics_Isometry_Layer", "Graphics_Isometry"},
    {"grd_layer1", "Export_Graphics_Isometry"},
};

bool is_array(std::string_view control)
{
    for (const auto& [name, parent] : menu_arrays)
        if (control == name)
            return true;
    return false;
}

// The items that have no action attached: selecting them does nothing.
bool without_action(std::string_view c)
{
    return c == "print_datafile" || c == "Graphics_ExportDfx";
}

// A port that passes everything on and notes whether Open went past its
// save prompt and its file dialog, the point where the windows close.
class OpenWatch : public Port {
  public:
    explicit OpenWatch(Port& inner) : inner_(inner) {}
    bool prompt_cancelled = false;
    bool file_chosen = false;

    Answer message_box(const std::string& text, Buttons b, Icon i, const std::string& title) override
    {
        const Answer a = inner_.message_box(text, b, i, title);
        if (b == Buttons::yes_no_cancel && a == Answer::cancel)
            prompt_cancelled = true;
        return a;
    }
    std::optional<std::string> input_box(const std::string& prompt, const std::string& title,
                                         const std::string& initial) override
    {
        return inner_.input_box(prompt, title, initial);
    }
    std::optional<std::string> open_file_dialog(const std::string& filter,
                                                const std::string& initial) override
    {
        auto chosen = inner_.open_file_dialog(filter, initial);
        file_chosen = file_chosen || chosen.has_value();
        return chosen;
    }
    std::optional<std::string> save_file_dialog(const std::string& filter, const std::string& initial,
                                                bool overwrite_prompt) override
    {
        return inner_.save_file_dialog(filter, initial, overwrite_prompt);
    }
    void progress(const std::string& line) override { inner_.progress(line); }
    bool yield() override { return inner_.yield(); }
    void beep() override { inner_.beep(); }
    void busy(bool on) override { inner_.busy(on); }
    void show_text(const std::string& caption, const std::vector<std::string>& lines) override
    {
        inner_.show_text(caption, lines);
    }
    void show_view(int view_mode, const std::string& caption) override
    {
        inner_.show_view(view_mode, caption);
    }
    DrawHooks* draw_hooks() override { return inner_.draw_hooks(); }
    std::optional<ImageHandle> load_image(const std::string& path) override
    {
        return inner_.load_image(path);
    }
    void unload_image(const ImageHandle& image) override { inner_.unload_image(image); }

  private:
    Port& inner_;
};

// Open, Open legacy and a recent file: the windows of the old project close
// once the command is past its save prompt and its file dialog.
template <class F> void open_closing_windows(Project& p, Port& port, bool with_dialog, F&& open)
{
    OpenWatch watch(port);
    // Windows close before the reader runs; the reader's own pictures
    // (the view of a finished load) come up afterwards, so the windows are
    // closed first and the ones drawn again are brought up again.
    Pictures before = p.pictures;
    close_picture_windows(p);
    open(watch);
    const bool went_on = !watch.prompt_cancelled && (!with_dialog || watch.file_chosen);
    if (!went_on)
        p.pictures = std::move(before);
}

int checked_isometry_item(const Project& p)
{
    for (int i = 0; i <= surface_capacity; ++i) {
        const auto it = p.menus.items.find("Graphics_Isometry_Layer(" + std::to_string(i) + ")");
        if (it == p.menus.items.end())
            break;
        if (it->second.checked)
            return i;
    }
    return -1;
}

// Clears the long-run flag however the command ends.
struct RunGuard {
    bool& flag;
    explicit RunGuard(bool& f) : flag(f) { flag = true; }
    ~RunGuard() { flag = false; }
    RunGuard(const RunGuard&) = delete;
    RunGuard& operator=(const RunGuard&) = delete;
};

} // namespace

std::string menu_item_name(std::string_view control, int index)
{
    if (is_array(control))
        return std::string(control) + "(" + std::to_string(index) + ")";
    return std::string(control);
}

std::string menu_parent(const Project& p, const std::string& item)
{
    const auto open = item.find('(');
    if (open != std::string::npos) {
        const std::string_view name(item.data(), open);
        for (const auto& [array, parent] : menu_arrays)
            if (name == array)
                return parent;
    }
    if (auto it = submenu_of().find(item); it != submenu_of().end())
        return it->second;
    const auto it = p.menus.items.find(item);
    if (it == p.menus.items.end() || it->second.menu == item)
        return {};
    return it->second.menu;
}

bool menu_item_available(const Project& p, const std::string& item)
{
    for (std::string at = item; !at.empty(); at = menu_parent(p, at)) {
        const auto it = p.menus.items.find(at);
        if (it == p.menus.items.end() || !it->second.visible || !it->second.enabled)
            return false;
    }
    return true;
}

bool is_long_run(std::string_view control)
{
    return control == "Solve_single_trial" || control == "gridsearchsolv" || control == "autosearchsolv";
}

ReportContext report_context_of(const Project& p)
{
    ReportContext ctx;
    ctx.date = report_date_text();
    // New and Open close the solution window with the others (report_kind 0).
    ctx.solution_window = p.report_kind != 0;
    ctx.solve = p.report_kind == 2   ? ReportSolve::grid_search
                : p.report_kind == 3 ? ReportSolve::auto_search
                                     : ReportSolve::single_trial;
    return ctx;
}

void close_picture_windows(Project& p)
{
    for (PictureWindow* w :
         {&p.pictures.section, &p.pictures.isometry, &p.pictures.search, &p.pictures.plan_active,
          &p.pictures.xray, &p.pictures.result, &p.pictures.editor}) {
        w->exists = false;
        w->picture.clear();
        w->text_lines.clear();
        w->text_visible = false;
    }
    p.pictures.xray_state = XrayState{};
    // The solution window is among them: a report has no solution until the next solve.
    p.report_kind = 0;
}

void open_surface_form(Project& p, Port& port, DialogSession& s, std::string_view c)
{
    if (c == "Edit_Sliding_surface_ellipsoid")
        open_dialog(p, port, s, DialogKind::ellipsoid);
    else if (c == "Edit_Sliding_surface_wedge")
        open_surface_dialog(p, port, s, SurfaceCommand::wedge);
    else if (c == "Edit_Sliding_surface_general")
        open_surface_dialog(p, port, s, SurfaceCommand::general);
    else if (c == "Edit_Sliding_surface_composite")
        open_surface_dialog(p, port, s, SurfaceCommand::composite);
    else if (c == "Edit_Sliding_surface_comp_general")
        open_surface_dialog(p, port, s, SurfaceCommand::general_wedge);
    else if (c == "Solve_grid_search" || c == "Solve_auto_search" || c == "Solve_grid_search_comp" ||
             c == "Solve_auto_search_comp")
        open_search_dialog(p, port, s, c.find("grid") != std::string_view::npos,
                           c.find("_comp") != std::string_view::npos);
}

MenuResult run_menu_command(Project& p, Port& port, MenuContext& ctx, std::string_view c, int index)
{
    // A long run serves the interface while it runs; nothing else may start.
    if (ctx.running)
        return MenuResult::busy;
    DialogSession& s = ctx.session;

    // The method box: a click on label 2, 3 or 4.
    if (c == "meth" || c == "meth2" || c == "meth3" || c == "meth4" || c == "currentmeth") {
        const int label = c == "meth" ? index : c == "currentmeth" ? 1 : c.back() - '0';
        if (label < 2 || label > 4)
            return MenuResult::no_action;
        click_method_label(p, label);
        return MenuResult::done;
    }
    if (is_array(c) && (index < 0 || index > surface_capacity))
        return MenuResult::unknown;
    const std::string item = menu_item_name(c, index);
    const auto found = p.menus.items.find(item);
    if (found == p.menus.items.end())
        return MenuResult::unknown;
    if (!menu_item_available(p, item))
        return MenuResult::refused;
    // The Graphics menu on opening rebuilds its arrays.
    if (c == "Graphics") {
        open_graphics_menu(p, checked_isometry_item(p));
        return MenuResult::done;
    }
    if (without_action(c) || menu_parent(p, item).empty() || c == "TODfile" || c == "print" ||
        c == "RecentFiles" || c == "Edit_GeomOptions" || c == "ellipsoid" || c == "composite" ||
        c == "Graphics_Isometry" || c == "Graphics_ExportGRD" || c == "Export_Graphics_Isometry")
        return MenuResult::no_action;

    // File
    if (c == "file_new") {
        new_project(p, port, s);
        // The chain's first form opens only when the save prompt let New go on.
        if (dialog_open(s))
            close_picture_windows(p);
    } else if (c == "File_open") {
        open_closing_windows(p, port, !p.open_recent_pending, [&](Port& w) { file_open(p, w); });
    } else if (c == "TODfile_Open") {
        open_closing_windows(p, port, true, [&](Port& w) { file_open_legacy(p, w); });
    } else if (c == "FileName") {
        open_closing_windows(p, port, false, [&](Port& w) { file_open_recent(p, w, index); });
    } else if (c == "File_save") {
        file_save(p, port);
    } else if (c == "File_save_as") {
        file_save_as(p, port);
    } else if (c == "TODfile_saveas") {
        file_save_as_tod(p, port);
    } else if (c == "print_this") {
        if (ctx.host)
            ctx.host->print_view(p, port);
    } else if (c == "File_exit") {
        // 1. The search information window closes first.
        p.search.panel_open = 0;
        if (main_query_unload(p, port) && ctx.host)
            ctx.host->end_program(p);
    }
    // Edit
    else if (c == "Edit_control_parameters") {
        open_dialog(p, port, s, DialogKind::control);
    } else if (c == "Edit_material_properties") {
        open_dialog(p, port, s, DialogKind::materials);
    } else if (c == "layersurfaces") {
        open_dialog(p, port, s, DialogKind::layers);
    } else if (c == "piezometric_surfaces") {
        open_dialog(p, port, s, DialogKind::piezos);
    } else if (c == "Edit_crosssection_positions") {
        open_dialog(p, port, s, DialogKind::positions);
    } else if (c == "Edit_Crosssections") {
        open_dialog(p, port, s, DialogKind::sections);
    } else if (c == "extforces") {
        open_dialog(p, port, s, DialogKind::forces);
    } else if (c == "tension_crack") {
        open_dialog(p, port, s, DialogKind::crack);
    } else if (c == "Edit_GeomOptions_Interp") {
        open_dialog(p, port, s, DialogKind::interpolation);
    } else if (c == "Edit_GeomOptions_Mirror") {
        mirror_command(p, port);
    }
    // Sliding Surface
    else if (found->second.menu == "Edit_Sliding_surface") {
        open_surface_form(p, port, s, c);
    }
    // Solve
    else if (is_long_run(c)) {
        RunGuard guard(ctx.running);
        if (c == "Solve_single_trial")
            solve_single_trial(p, port);
        else if (c == "gridsearchsolv")
            solve_grid_search(p, port);
        else
            solve_auto_search(p, port);
    } else if (c == "Rotation_angle") {
        open_dialog(p, port, s, DialogKind::rotation);
    }
    // Results
    else if (c == "preview_report" || c == "print_report") {
        if (ctx.host)
            ctx.host->report(p, port, c == "preview_report" ? 0 : 1, report_context_of(p));
    } else if (c == "save_report") {
        file_save_report(p, port, report_context_of(p));
    }
    // Graphics
    else if (c == "Graphics_Isometry_Layer") {
        graphics_isometry_item(p, port, index);
    } else if (c == "Graphics_Longitudinal_Section") {
        graphics_longitudinal_section(p, port);
    } else if (c == "Graphics_Lateral_Section") {
        graphics_lateral_section(p, port);
    } else if (c == "Graphics_plan") {
        graphics_plan(p, port);
    } else if (c == "xxray") {
        graphics_xray(p, port);
    } else if (c == "copygraphic") {
        if (ctx.host)
            ctx.host->copy_picture(p, port);
    } else if (c == "grd_layer1") {
        export_grid_item(p, port, index);
    } else if (c == "Twodfile") {
        export_two_d_file(p, port);
    } else if (c == "Export_Graphics_Longitudinal_Sections") {
        export_longitudinal_dat(p, port);
    } else if (c == "Export_Graphics_Lateral_Sections") {
        export_lateral_dat(p, port);
    }
    // Options
    else if (c == "grid") {
        found->second.checked = !found->second.checked;
    } else if (c == "Graphics_Options") {
        open_dialog(p, port, s, DialogKind::graphics_options);
    } else if (c == "colors") {
        open_dialog(p, port, s, DialogKind::colours);
    }
    // Help
    else if (c == "help") {
        if (ctx.host)
            ctx.host->show_help(p, port);
    } else if (c == "Help_About") {
        help_about(p, port);
    } else {
        return MenuResult::no_action;
    }
    return MenuResult::done;
}

} // namespace tobel
