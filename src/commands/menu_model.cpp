#include "commands/menu_model.h"

#include <algorithm>

#include "project/numtext.h"

namespace tobel {

namespace {

struct MenuRow {
    const char* menu;
    const char* control;
    const char* caption;
};

// The main menu, in menu order. Top-level menus carry their own name as menu.
constexpr MenuRow menu_table[] = {
    {"File", "File", "&File"},
    {"File", "file_new", "&New"},
    {"File", "File_open", "&Open..."},
    {"File", "File_save", "&Save"},
    {"File", "File_save_as", "Save &As..."},
    {"File", "TODfile", "Open .TOD &File"},
    {"File", "TODfile_Open", "&Open..."},
    {"File", "TODfile_saveas", "&Save As..."},
    {"File", "print", "&Print"},
    {"File", "print_this", "Current &view"},
    {"File", "print_datafile", "&Data file"},
    {"File", "RecentFiles", "Recent Files"},
    {"File", "FileName(0)", ""},
    {"File", "FileName(1)", ""},
    {"File", "FileName(2)", ""},
    {"File", "FileName(3)", ""},
    {"File", "File_exit", "E&xit"},
    {"Edit", "Edit", "&Edit"},
    {"Edit", "Edit_control_parameters", "&Control Parameters..."},
    {"Edit", "Edit_material_properties", "&Material Properties..."},
    {"Edit", "layersurfaces", "Stratigraphic &Layer Surfaces..."},
    {"Edit", "piezometric_surfaces", "&Piezometric Surfaces..."},
    {"Edit", "Edit_crosssection_positions", "C&ross-section Positions..."},
    {"Edit", "Edit_Crosssections", "Cross-&sections"},
    {"Edit", "extforces", "External &Forces..."},
    {"Edit", "tension_crack", "&Tension Crack..."},
    {"Edit", "Edit_GeomOptions", "Geometry &Options"},
    {"Edit", "Edit_GeomOptions_Interp", "&Interpolation..."},
    {"Edit", "Edit_GeomOptions_Mirror", "&Mirror"},
    {"Edit_Sliding_surface", "Edit_Sliding_surface", "Sliding &Surface"},
    {"Edit_Sliding_surface", "ellipsoid", "&Ellipsoid"},
    {"Edit_Sliding_surface", "Edit_Sliding_surface_ellipsoid", "&Single Ellipsoidal Surface"},
    {"Edit_Sliding_surface", "Solve_grid_search", "&Grid Search"},
    {"Edit_Sliding_surface", "Solve_auto_search", "&Auto Search"},
    {"Edit_Sliding_surface", "Edit_Sliding_surface_wedge", "&Wedge"},
    {"Edit_Sliding_surface", "Edit_Sliding_surface_general", "&General"},
    {"Edit_Sliding_surface", "composite", "&Composite-Ellipsoid/Wedge"},
    {"Edit_Sliding_surface", "Edit_Sliding_surface_composite", "&Single Composite Surface"},
    {"Edit_Sliding_surface", "Solve_grid_search_comp", "&Grid Search"},
    {"Edit_Sliding_surface", "Solve_auto_search_comp", "&Auto Search"},
    {"Edit_Sliding_surface", "Edit_Sliding_surface_comp_general", "Co&mposite-General/Wedge"},
    {"Solve", "Solve", "S&olve"},
    {"Solve", "Solve_single_trial", "&Single Trial Surface"},
    {"Solve", "gridsearchsolv", "&Grid Search"},
    {"Solve", "autosearchsolv", "&Auto Search"},
    {"Solve", "Rotation_angle", "&Set Rotation Angle..."},
    {"Results", "Results", "&Results"},
    {"Results", "preview_report", "Pre&view Report"},
    {"Results", "print_report", "&Print Report"},
    {"Results", "save_report", "&Save Report in .txt File..."},
    {"Graphics", "Graphics", "&Graphics"},
    {"Graphics", "Graphics_Isometry", "&Isometry"},
    {"Graphics", "Graphics_Longitudinal_Section", "&Longitudinal Section"},
    {"Graphics", "Graphics_Lateral_Section", "L&ateral Section"},
    {"Graphics", "Graphics_plan", "&Plan"},
    {"Graphics", "xxray", "&X-ray"},
    {"Graphics", "copygraphic", "&Copy to Clipboard"},
    {"Graphics", "Graphics_ExportGRD", "&Export "},
    {"Graphics", "Export_Graphics_Isometry", "&Isometry .GRD File"},
    {"Graphics", "grd_layer1(0)", ""},
    {"Graphics", "Twodfile", "&Two-dimensional TOB File"},
    {"Graphics", "Export_Graphics_Longitudinal_Sections", "&Longitudinal Section .DAT File"},
    {"Graphics", "Export_Graphics_Lateral_Sections", "L&ateral Section .DAT File"},
    {"Graphics", "Graphics_ExportDfx", "Export.&DFX"},
    {"options", "options", "&Options"},
    {"options", "grid", "&Grid"},
    {"options", "Graphics_Options", "&Graphics Options..."},
    {"options", "colors", "Colours..."},
    {"window", "window", "&Window"},
    {"help_screen", "help_screen", "&Help"},
    {"help_screen", "help", "&Help"},
    {"help_screen", "Help_About", "&About"},
};

constexpr const char* method_texts[] = {"", "BISHOP'S SIMPLIFIED METHOD", "JANBU METHOD               ",
                                        "SPENCER'S METHOD        ", "MORGENSTERN-PRICE METHOD  "};

} // namespace

void init_menus(Project& p)
{
    p.menus = Menus{};
    for (const auto& row : menu_table) {
        MenuItem& item = p.menus[row.control];
        item.menu = row.menu;
        item.caption = row.caption;
        p.menus.order.emplace_back(row.control);
    }
    for (int i = 0; i < recent_capacity; ++i)
        p.menus["FileName(" + std::to_string(i) + ")"].visible = false;
}

void open_graphics_menu(Project& p, int checked_item)
{
    // Drop the items of an earlier opening; the stack may have changed since.
    std::vector<std::string> order;
    for (const auto& control : p.menus.order) {
        const bool generated = control.rfind("Graphics_Isometry_Layer(", 0) == 0 ||
                               (control.rfind("grd_layer1(", 0) == 0 && control != "grd_layer1(0)");
        if (generated)
            p.menus.items.erase(control);
        else
            order.push_back(control);
    }
    p.menus.order = order;
    const int last = p.surface_defined ? p.sliding_index : p.num_surfaces;
    auto insert_after = [&p](const std::string& anchor, const std::string& control) {
        auto at = std::find(p.menus.order.begin(), p.menus.order.end(), anchor);
        p.menus.order.insert(at == p.menus.order.end() ? at : at + 1, control);
    };
    std::string iso_anchor = "Graphics_Isometry", grd_anchor = "Export_Graphics_Isometry";
    for (int k = 1; k <= last; ++k) {
        const std::string iso = "Graphics_Isometry_Layer(" + std::to_string(k - 1) + ")";
        const std::string grd = "grd_layer1(" + std::to_string(k - 1) + ")";
        for (const auto& [control, menu] : {std::pair{iso, "Graphics"}, std::pair{grd, "Graphics"}}) {
            MenuItem& item = p.menus[control];
            item.menu = menu;
            item.caption = surface_item_caption(p, k);
            item.visible = item.enabled = true;
            item.checked = false;
        }
        p.menus[iso].checked = k - 1 == checked_item;
        if (k > 1)
            insert_after(grd_anchor, grd);
        insert_after(iso_anchor, iso);
        iso_anchor = iso;
        grd_anchor = grd;
    }
}

void init_method_box(Project& p)
{
    for (int i = 1; i <= 4; ++i)
        p.method_labels[std::size_t(i)] = method_texts[i];
}

// The clicked label swaps its text with the top one; the method follows the
// text now on top.
void click_method_label(Project& p, int label)
{
    if (label < 2 || label > 4)
        return;
    std::swap(p.method_labels[1], p.method_labels[std::size_t(label)]);
    for (int m = 1; m <= 4; ++m)
        if (p.method_labels[1] == method_texts[m])
            p.solution_method = int16(m);
}

} // namespace tobel
