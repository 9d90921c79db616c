#include "forms/form_view.h"

#include "graphics/image_calibration.h"
#include "graphics/section_editor.h"
#include "project/numtext.h"

namespace tobel::gui {

namespace {

QString q(const std::string& s)
{
    return QString::fromStdString(s);
}

// The caption of a button without the access key's ampersand is what a
// test or a user reads; the ampersand stays for the key.
FormButton button(const char* label, const char* name, int arg = 0, bool enabled = true)
{
    return {QString::fromUtf8(label), name, arg, enabled};
}

// A column of labelled cells (one value a row).
void column_of(FormView& v, const std::vector<std::string>& labels, const std::vector<std::string>& texts)
{
    for (std::size_t i = 0; i < labels.size(); ++i) {
        v.row_titles << q(labels[i]);
        v.cells.push_back({q(i < texts.size() ? texts[i] : std::string())});
    }
}

// The text of a number cell: the session's edit text in the current cell.
std::string number_text(const DialogSession& s, int row, int col, float value)
{
    if (row == s.row && col == s.col)
        return s.edit;
    return general_text(value);
}

void describe(FormView&, const Project&, const DialogSession&, const std::monostate&) {}

void describe(FormView& v, const Project&, const DialogSession&, const ControlForm& f)
{
    std::vector<std::string> labels(control_cell_labels.begin(), control_cell_labels.end());
    std::vector<std::string> texts;
    for (int c = 1; c <= control_cells; ++c)
        texts.push_back(c == f.cell ? f.edit : f.text(c));
    column_of(v, labels, texts);
    v.current_row = f.cell;
    v.current_col = 1;
    v.notes << control_grid_note << control_column_note;
    if (control_two_d_note_visible(f))
        v.notes << QString(control_two_d_note) + control_two_d_hint;
    v.options_title = control_water_label;
    for (int i = 0; i < 2; ++i)
        v.options.push_back({control_water_entries[std::size_t(i)], i, f.water_index == i});
    v.buttons.push_back({q(f.command1_caption), "2d-3d"});
}

void describe(FormView& v, const Project&, const DialogSession&, const InterpolationForm& f)
{
    static const char* names[] = {"Orthogonal", "Oblique", "Axisymmetric"};
    for (int m = 1; m <= 3; ++m)
        v.options.push_back({names[m - 1], m, f.method == m});
    if (f.method == 3) {
        v.notes << "Coordinates of the vertical axis of rotation:";
        column_of(v, {"X-coordinate", "Y-coordinate"}, {f.axis_x_text, f.axis_y_text});
    }
}

void describe(FormView& v, const Project& p, const DialogSession&, const MaterialForm& f)
{
    v.notes << material_form_note;
    for (const char* l : material_row_labels)
        v.row_titles << l;
    for (int slot = 1; slot <= material_slots; ++slot)
        v.column_titles << q(material_slot_heading(p, f, slot));
    for (int r = 1; r <= material_rows; ++r) {
        std::vector<QString> row;
        for (int slot = 1; slot <= material_slots; ++slot) {
            const int e = f.entry_at(slot);
            row.push_back(
                q(r == f.row && slot == f.slot ? f.edit : (e <= material_table_entries ? f.cell(r, e) : "")));
        }
        v.cells.push_back(row);
    }
    v.current_row = f.row;
    v.current_col = f.slot;
    v.options_title = material_type_label;
    for (int t = 1; t <= 5; ++t)
        v.options.push_back({material_type_names[std::size_t(t - 1)], t, false});
    v.buttons.push_back(button(material_add_caption, "add-discontinuity"));
    v.buttons.push_back(button(material_delete_caption, "delete-discontinuity"));
}

// The layer and piezo forms: the rows in view of their surfaces.
void surface_table(FormView& v, const std::vector<SurfaceRow>& rows, const SurfaceCursor& f, bool with_name)
{
    v.first_row = f.top_row;
    int r = f.top_row;
    for (const SurfaceRow& row : rows) {
        if (!row.shown)
            continue;
        v.row_titles << q(row.caption);
        const auto taken = [&](int cell, const std::string& text) {
            return q(r == f.row && cell == f.cell && (cell == surface_cell_name || cell == surface_cell_depth)
                         ? f.edit_text
                         : text);
        };
        std::vector<QString> cells;
        if (with_name)
            cells.push_back(taken(surface_cell_name, row.material));
        cells.push_back(q(row.method_text));
        cells.push_back(q(row.file_active ? row.file : ""));
        cells.push_back(taken(surface_cell_depth, row.depth_active ? row.depth : ""));
        v.cells.push_back(cells);
        ++r;
    }
    v.current_row = f.row;
    v.options_title = "Surface Input Method:";
    for (int m = 0; m < 3; ++m)
        v.options.push_back({surface_method_texts[std::size_t(m)], m, false});
    v.buttons.push_back(button(surface_add_caption, "add"));
    v.buttons.push_back(button(surface_insert_caption, "insert"));
    v.buttons.push_back(button(surface_delete_caption, "delete"));
    v.buttons.push_back(button(surface_change_caption, "change"));
}

void describe(FormView& v, const Project& p, const DialogSession&, const LayerForm& f)
{
    v.notes << layer_form_note;
    for (std::size_t i = 1; i < layer_column_titles.size(); ++i)
        v.column_titles << layer_column_titles[i];
    surface_table(v, layer_form_rows(p, f), f, true);
    v.first_col = 1; // name, method, file, depth
    v.current_col = f.cell;
}

void describe(FormView& v, const Project& p, const DialogSession&, const PiezoForm& f)
{
    v.notes << piezo_form_note;
    for (std::size_t i = 1; i < piezo_column_titles.size(); ++i)
        v.column_titles << piezo_column_titles[i];
    surface_table(v, piezo_form_rows(p, f), f, false);
    v.first_col = surface_cell_method; // method, file, thickness
    v.current_col = f.cell;
}

void describe(FormView& v, const Project& p, const DialogSession&, const PositionsForm& f)
{
    v.notes << q(positions_note(p));
    v.column_titles << positions_column_title;
    for (int r = 1; r <= f.count; ++r) {
        v.row_titles << QString::number(r);
        v.cells.push_back({q(r == f.row ? f.edit : general_text(f.x[std::size_t(r)]))});
    }
    v.current_row = f.row;
    v.current_col = 1;
    v.buttons.push_back(button(positions_add_caption, "add-section"));
    v.buttons.push_back(button(positions_insert_caption, "insert-section"));
    v.buttons.push_back(button(positions_delete_caption, "delete-section"));
}

void describe(FormView& v, const Project& p, const DialogSession&, const SectionEditor& ed)
{
    v.picture = &p.pictures.editor.picture;
    if (ed.scale.open) {
        // The point table over the editor: the world coordinates of the two
        // known points of the background image.
        for (const char* t : scale_form_texts)
            v.notes << t;
        for (const char* t : scale_form_columns)
            v.column_titles << t;
        for (const char* t : scale_form_rows)
            v.row_titles << t;
        for (int r = 0; r < 2; ++r)
            v.cells.push_back(
                {q(ed.scale.cells[std::size_t(r * 2)]), q(ed.scale.cells[std::size_t(r * 2 + 1)])});
        v.current_row = ed.scale.row;
        v.current_col = ed.scale.col;
        return;
    }
    // Every line keeps its place, blank while hidden: a label that comes and
    // goes during a drag must not change the picture's size under the pointer.
    v.notes << q(ed.long_label + "   " + ed.section_label);
    v.notes << (ed.labels_visible ? q(ed.y_label + "   " + ed.z_label) : QString());
    v.notes << (ed.slope_visible ? q(ed.slope_label) : QString());
    v.notes << (ed.legend.visible ? q(ed.legend.hint) : QString());
    v.notes << (ed.image.help_visible ? q(ed.image.help_text) : QString());
    v.column_titles << "Y"
                    << "Z";
    for (int r = 1; r <= ed.table_rows; ++r) {
        v.row_titles << QString::number(r + ed.table_first - 1);
        std::vector<QString> row;
        for (int c = 1; c <= ed.table_cols; ++c)
            row.push_back(q(r == ed.table_row && c == ed.table_col && ed.cell_typed
                                ? ed.cell_text
                                : table_cell_text(ed, r, c)));
        v.cells.push_back(row);
    }
    v.current_row = ed.table_row;
    v.current_col = ed.table_col;
    v.table_scroll = true;
    v.table_scroll_max = table_scroll_max(p, ed);
    v.table_scroll_value = ed.table_first;
    if (ed.toggle_line_offered)
        v.buttons.push_back(button("Next &Line", "toggle-line"));
    v.buttons.push_back(button("Next &Section", "toggle-section"));
    if (ed.copy_above_offered)
        v.buttons.push_back(button("Copy Above", "copy-above"));
    if (ed.copy_below_offered)
        v.buttons.push_back(button("Copy Below", "copy-below"));
    v.buttons.push_back(button("&Insert Point", "insert-point"));
    v.buttons.push_back(button("&Delete Point", "delete-point"));
    v.buttons.push_back(button("Zoom &In", "zoom-in", 0, ed.zoom_in_enabled));
    v.buttons.push_back(button("Zoom &Out", "zoom-out", 0, ed.zoom_out_enabled));
    v.buttons.push_back(button("&Fit to Screen", "fit"));
    if (ed.clusters_offered)
        v.buttons.push_back({q(ed.clusters_caption), "clusters"});
    v.buttons.push_back({q(ed.snap_caption), "snapping"});
    v.buttons.push_back(button("Load Image...", "load-image"));
    v.buttons.push_back(button("Rescale Image", "rescale-image", 0, ed.image.loaded));
    v.buttons.push_back(button("Unload Image", "unload-image", 0, ed.unload_image_enabled));
    const auto menu = [&](const char* label, const char* name, const std::vector<EditorMenuItem>& items,
                          bool offered) {
        if (!offered)
            return;
        FormMenu m{label, name, {}};
        for (const EditorMenuItem& it : items)
            if (it.visible)
                m.items.push_back({q(it.caption), it.target});
        if (!m.items.empty())
            v.menus.push_back(m);
    };
    menu("Go To Section", "goto-section", ed.goto_section_items, true);
    menu("Go To Line", "goto-line", ed.goto_line_items, ed.goto_line_offered);
    menu("Copy Section", "copy-section", ed.copy_section_items, true);
    menu("Copy Layer", "copy-layer", ed.copy_layer_items, ed.copy_layer_offered);
}

void describe(FormView& v, const Project&, const DialogSession& s, const ForceForm& f)
{
    v.notes << QString(force_components_title) + "   " + force_point_title;
    for (const char* t : force_column_titles)
        v.column_titles << t;
    for (int r = 1; r <= f.count(); ++r) {
        v.row_titles << QString::number(r);
        std::vector<QString> row;
        for (int c = 1; c <= force_columns; ++c)
            row.push_back(q(number_text(s, r, c, f.cell(r, c))));
        v.cells.push_back(row);
    }
    v.current_row = s.row;
    v.current_col = s.col;
    v.notes << force_footnote;
    v.buttons.push_back(button(force_add_caption, "add"));
    v.buttons.push_back(button(force_delete_caption, "delete"));
}

void describe(FormView& v, const Project& p, const DialogSession& s, const CrackForm& f)
{
    for (int m = 0; m < 3; ++m)
        v.options.push_back({crack_option_captions[std::size_t(m)], m, p.crack_mode == m});
    for (int c = 1; c <= crack_cells; ++c) {
        v.row_titles << q(crack_cell_label(p, c));
        v.cells.push_back({q(crack_cell_visible(p, c) ? number_text(s, c, 1, f.value(c)) : "")});
    }
    v.current_row = s.row;
    v.current_col = 1;
}

void describe(FormView& v, const Project& p, const DialogSession& s, const EllipsoidForm& f)
{
    v.notes << ellipsoid_form_heading;
    for (int i = 1; i <= 5; ++i) {
        v.row_titles << ellipsoid_field_labels[std::size_t(i - 1)];
        v.cells.push_back({q(number_text(s, i, 1, f.value(i)))});
    }
    v.current_row = s.row;
    v.current_col = 1;
    v.buttons.push_back(button("Zoom &In", "zoom-in", 0, f.zoom_in_enabled));
    v.buttons.push_back(button("Zoom &Out", "zoom-out", 0, f.zoom_out_enabled));
    v.picture = &p.pictures.search.picture;
}

void describe(FormView& v, const Project&, const DialogSession& s, const RotationForm& f)
{
    v.picture = &f.arrow;
    v.picture_fixed = true;
    for (const char* line : rotation_explanation)
        v.notes << line;
    v.notes << QString(rotation_limitations_title) + rotation_limitations_text;
    v.row_titles << rotation_limits_text;
    v.cells.push_back({q(s.edit)});
    v.current_row = 1;
    v.current_col = 1;
    v.scroll = true;
    v.scroll_min = rotation_scroll_min;
    v.scroll_max = rotation_scroll_max;
    v.scroll_value = f.scroll;
}

void describe(FormView& v, const Project& p, const DialogSession&, const GraphicsOptionsForm& f)
{
    column_of(v, {exaggeration_label, rotation_label}, {f.text1, f.text2});
    v.current_row = f.field;
    v.current_col = 1;
    v.options_title = fill_frame;
    for (int i = 0; i < 3; ++i)
        v.options.push_back({fill_option_captions[std::size_t(i)], i, p.view.fill_style == i});
    v.buttons.push_back(button(graphics_default_caption, "default"));
}

void describe(FormView& v, const Project&, const DialogSession&, const ColourForm& f)
{
    v.notes << colour_help_1 << colour_help_2;
    v.row_titles << layer_boxes_label << piezo_boxes_label << sliding_box_label << selected_box_label;
    for (int r = 1; r <= 4; ++r) {
        const int n = r <= 2 ? colour_boxes : 1;
        v.cells.push_back(std::vector<QString>(std::size_t(n)));
        std::vector<int> colours;
        for (int c = 1; c <= n; ++c) {
            colours.push_back(r == 1   ? f.layer_boxes[std::size_t(c)]
                              : r == 2 ? f.piezo_boxes[std::size_t(c)]
                              : r == 3 ? f.sliding_box
                                       : f.selected_box);
        }
        v.colours.push_back(colours);
    }
    v.scroll = true;
    v.scroll_min = blue_scroll_min;
    v.scroll_max = blue_scroll_max;
    v.scroll_value = f.hscroll1;
    v.scroll_label = blue_scroll_label;
    v.swatch = f.swatch;
    v.picture = &f.sampler;
    v.picture_fixed = true;
    v.continue_label = save_and_exit_caption;
    v.cancel_label = "Cancel";
    v.buttons.push_back(button(revert_caption, "revert"));
}

void describe(FormView& v, const Project&, const DialogSession& s, const WedgeForm& f)
{
    for (const char* t : wedge_column_titles)
        v.column_titles << t;
    for (int r = 1; r <= f.count(); ++r) {
        v.row_titles << QString(wedge_row_title) + QString::number(r);
        std::vector<QString> row;
        for (int c = 1; c <= wedge_columns; ++c)
            row.push_back(q(number_text(s, r, c, f.cell(r, c))));
        v.cells.push_back(row);
    }
    v.current_row = s.row;
    v.current_col = s.col;
    v.notes << wedge_dipdir_note;
    v.buttons.push_back(button("&Add", "add"));
    v.buttons.push_back(button("&Delete", "delete"));
    if (f.count() > wedge_visible_rows) {
        v.scroll = true;
        v.scroll_min = 1;
        v.scroll_max = f.count() - wedge_visible_rows + 1;
        v.scroll_value = f.top_row;
    }
}

void describe(FormView& v, const Project&, const DialogSession&, const GeneralSurfaceForm& f)
{
    v.column_titles << "Surface Input Method:"
                    << "*.GRD File:";
    v.row_titles << general_form_row_title;
    v.cells.push_back({general_method_texts[std::size_t(f.method)], q(f.file_enabled() ? f.grd_file : "")});
    v.options_title = "Surface Input Method:";
    for (int m = 0; m < 2; ++m)
        v.options.push_back({general_method_texts[std::size_t(m)], m, f.method == m});
    v.buttons.push_back(button("*.GRD File...", "file", 0, f.file_enabled()));
    v.buttons.push_back(button("Field", "field"));
    v.buttons.push_back(button(surface_add_caption, "add-surface"));
    v.buttons.push_back(button("&Delete Surface", "delete-surface"));
    v.buttons.push_back(button(surface_change_caption, "change"));
}

void describe(FormView& v, const Project&, const DialogSession& s, const FieldForm& f)
{
    v.notes << field_form_explanation;
    for (int r = 1; r <= field_rows; ++r) {
        v.row_titles << field_row_labels[std::size_t(r - 1)];
        v.cells.push_back({q(number_text(s, r, 1, f.value(r)))});
    }
    v.current_row = s.row;
    v.current_col = 1;
}

// The search forms: a column of fields, the block relabelled by the option.
void search_column(FormView& v, const DialogSession& s, const std::vector<std::string>& labels,
                   const std::vector<float>& values)
{
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const int r = int(i) + 1;
        v.row_titles << q(labels[i]);
        v.cells.push_back({q(number_text(s, r, 1, values[i]))});
    }
    v.current_row = s.row;
    v.current_col = 1;
}

void describe(FormView& v, const Project& p, const DialogSession& s, const GridSearchForm& f)
{
    const SearchBlockCaptions b = search_block_captions(f.common_point);
    v.notes << q(search_mesh_x_line(p));
    GridSearchForm g = f;
    std::vector<float> values;
    for (int c = 1; c <= grid_form_cells; ++c)
        values.push_back(grid_form_cell(g, c));
    // The form's own labels are not given; these name the record's fields.
    search_column(v, s,
                  {"Section X:", "Upper Left Centre Y:", "Upper Left Centre Z:", "Lower Right Centre Y:",
                   "Lower Right Centre Z:", "Centres along Y:", "Centres along Z:", b.heading + " " + b.first,
                   b.heading + " " + b.second, "Ellipsoid Aspect Ratio:"},
                  values);
    v.buttons.push_back({q(b.command), "common"});
    v.picture = &p.pictures.search.picture;
}

void describe(FormView& v, const Project& p, const DialogSession& s, const AutoSearchForm& f)
{
    const SearchBlockCaptions b = search_block_captions(f.common_point);
    v.notes << q(search_mesh_x_line(p));
    AutoSearchForm a = f;
    std::vector<float> values;
    for (int c = 1; c <= auto_form_cells; ++c)
        values.push_back(auto_form_cell(a, c));
    search_column(v, s,
                  {"Section X:", "Starting Centre Y:", "Starting Centre Z:", "Step:",
                   b.heading + " " + b.first, b.heading + " " + b.second, "Ellipsoid Aspect Ratio:"},
                  values);
    v.buttons.push_back({q(b.command), "common"});
    v.picture = &p.pictures.search.picture;
}

} // namespace

FormView describe_form(const Project& p, const DialogSession& s)
{
    FormView v;
    std::visit([&](const auto& f) { describe(v, p, s, f); }, s.form);
    return v;
}

} // namespace tobel::gui
