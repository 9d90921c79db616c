#include "graphics/image_calibration.h"

#include "graphics/drawing.h"
#include "graphics/editor_picture.h"
#include "project/numtext.h"
#include "project/runtime_error.h"

namespace tobel {

namespace {

void remove_picture(SectionEditor& ed, Port& port)
{
    if (ed.image.loaded)
        port.unload_image(ed.image.handle);
    ed.image.loaded = false;
    ed.image.visible = false;
    ed.image.path.clear();
    ed.unload_image_enabled = false;
}

void show_labels(SectionEditor& ed)
{
    ed.labels_visible = true;
    ed.legend.visible = true;
}

void reopen_scale_form(const Project& p, SectionEditor& ed)
{
    ed.scale = open_scale_form(p);
    ed.legend.visible = false;
    ed.labels_visible = false;
}

std::string point_help(int n, float y, float z)
{
    return "Locate Point " + std::to_string(n) + " at Y = " + str(y) + " and Z = " + str(z) +
           " on image and click.";
}

} // namespace

void load_image(Project& p, SectionEditor& ed, Port& port)
{
    const auto path = port.open_file_dialog(image_file_filter, "");
    if (!path)
        return; // the cancel of the dialog is silent
    const auto handle = port.load_image(*path);
    if (!handle) {
        const RuntimeError e(err_file_not_found, error_description(err_file_not_found), true);
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
        return;
    }
    if (ed.image.loaded)
        port.unload_image(ed.image.handle);
    // The image fills the picture at its present world extents.
    const ZoomWindow& w = ed.window();
    EditorImage& im = ed.image;
    im.loaded = true;
    im.visible = false;
    im.handle = *handle;
    im.path = *path;
    im.left = w.win_left;
    im.top = w.win_top;
    im.width = w.win_right - w.win_left;
    im.height = w.win_bottom - w.win_top; // negative in the y-up window, as ScaleHeight
    im.saved_zoom_level = ed.zoom_level;
    im.image_stage = 0;
    ed.unload_image_enabled = true;
    reopen_scale_form(p, ed);
    draw_editor(p, ed);
}

void rescale_image(Project& p, SectionEditor& ed)
{
    if (!ed.image.loaded)
        return;
    reopen_scale_form(p, ed);
    ed.image.visible = false;
    draw_editor(p, ed);
}

void unload_image(Project& p, SectionEditor& ed, Port& port)
{
    remove_picture(ed, port);
    ed.image.image_stage = 0;
    draw_editor(p, ed);
}

ScaleForm open_scale_form(const Project& p)
{
    ScaleForm f;
    f.open = true;
    f.cells = {general_text(p.image_p1_y), general_text(p.image_p1_z), general_text(p.image_p2_y),
               general_text(p.image_p2_z)};
    return f;
}

void scale_form_select(ScaleForm& form, int row, int col)
{
    if (row >= 1 && row <= 2 && col >= 1 && col <= 2) {
        form.row = row;
        form.col = col;
    }
}

void scale_form_key(ScaleForm& form, FormKey key)
{
    switch (key) {
    case FormKey::up: form.row = 1; break;
    case FormKey::down: form.row = 2; break;
    case FormKey::left: form.col = 1; break;
    case FormKey::right: form.col = 2; break;
    case FormKey::enter:
    case FormKey::tab:
        if (form.col == 1) {
            form.col = 2;
        } else if (form.row == 1) {
            form.row = 2;
            form.col = 1;
        }
        break;
    }
}

bool scale_form_key_accepted(const std::string& text, char key)
{
    if (key == 8 || (key >= '0' && key <= '9'))
        return true;
    if (key == '.')
        return text.find('.') == std::string::npos;
    if (key == '-')
        return text.empty();
    return false;
}

bool scale_form_type(ScaleForm& form, Port& port, char key)
{
    (void)port;
    std::string& cell = form.cells[std::size_t((form.row - 1) * 2 + (form.col - 1))];
    if (!scale_form_key_accepted(cell, key))
        return false;
    if (key == 8) {
        if (!cell.empty())
            cell.pop_back();
    } else {
        cell.push_back(key);
    }
    return true;
}

bool continue_scale_form(Project& p, SectionEditor& ed, Port& port)
{
    const float p1y = float(val(ed.scale.cells[0])), p1z = float(val(ed.scale.cells[1]));
    const float p2y = float(val(ed.scale.cells[2])), p2z = float(val(ed.scale.cells[3]));
    if (!(p2y > p1y) || !(p2z > p1z)) {
        port.message_box("Choice of points is incorrect!", Buttons::ok, Icon::critical, "Error");
        return false;
    }
    p.image_p1_y = p1y;
    p.image_p1_z = p1z;
    p.image_p2_y = p2y;
    p.image_p2_z = p2z;
    ed.image.image_stage = 1;
    ed.scale.open = false;
    ed.image.help_text = point_help(1, p1y, p1z);
    ed.image.help_visible = true;
    draw_editor(p, ed);
    return true;
}

void cancel_scale_form(Project& p, SectionEditor& ed, Port& port)
{
    ed.scale.open = false;
    remove_picture(ed, port);
    ed.image.image_stage = 0;
    ed.legend.visible = true;
    ed.labels_visible = true;
    draw_editor(p, ed);
}

void calibration_click(Project& p, SectionEditor& ed, Port& port, double y, double e)
{
    EditorImage& im = ed.image;
    // 1. Point 1.
    if (im.image_stage == 1) {
        im.image_c1_y = float(y);
        im.image_c1_e = float(e);
        im.image_stage = 2;
        im.help_text = point_help(2, p.image_p2_y, p.image_p2_z);
        im.help_visible = true;
        return;
    }
    if (im.image_stage != 2)
        return;
    // 2. Point 2 must lie right of and above point 1. The box offers Retry
    // and Cancel; the port's OK stands for Retry. The title is the one the
    // program has always shown.
    if (!(float(y) > im.image_c1_y) || !(float(e) > im.image_c1_e)) {
        const Answer a = port.message_box("Point 2 must be above and to the right of Point 1",
                                          Buttons::ok_cancel, Icon::warning, "LAHAR");
        if (a == Answer::ok) {
            im.image_stage = 0;
            reopen_scale_form(p, ed);
        } else {
            im.image_stage = 0;
            im.help_visible = false;
            remove_picture(ed, port);
            show_labels(ed);
            draw_editor(p, ed);
        }
        return;
    }
    // 3. The stretch that takes the two clicks onto the two points.
    im.image_c2_y = float(y);
    im.image_c2_e = float(e);
    im.image_stage = 0;
    im.help_visible = false;
    const float ve = float(drawn_exaggeration(p));
    const float sy = (p.image_p2_y - p.image_p1_y) / (im.image_c2_y - im.image_c1_y);
    const float sz = ((p.image_p2_z - p.image_p1_z) / (im.image_c2_e - im.image_c1_e)) * ve;
    const float L = im.left, T = im.top;
    const float oy = (im.image_c1_y - L) * sy - (p.image_p1_y - L);
    const float oz = (im.image_c1_e - T) * sz - (ve * p.image_p1_z - T);
    im.width = im.width * sy;
    im.height = im.height * sz;
    im.left = L - oy;
    im.top = T - oz;
    im.visible = true;
    show_labels(ed);
    draw_editor(p, ed);
}

} // namespace tobel
