#include "graphics/setup_handles.h"

#include <cmath>

#include "graphics/drawing.h"
#include "graphics/picture.h"
#include "graphics/section_views.h"
#include "project/numtext.h"

namespace tobel {

namespace {

// The value at index i, 0 when the array is too short.
double value_of(const SetupParameters& set, int i)
{
    return i >= 0 && std::size_t(i) < set.values.size() ? double(set.values[std::size_t(i)]) : 0.0;
}

void set_value(const SetupParameters& set, std::vector<SetupEdit>& edits, int i, double v)
{
    if (i < 0 || std::size_t(i) >= set.values.size())
        return;
    set.values[std::size_t(i)] = float(v);
    edits.push_back({i, format(set.values[std::size_t(i)], "####0.00")});
}

// The indices of Y and Z that a handle carries (-1 for none).
struct Carried {
    int y = -1, z = -1;
};

Carried carried(const SetupParameters& set, HandleRole role)
{
    switch (set.mode) {
    case 3:
        if (role == HandleRole::centre)
            return {ell_value_y, ell_value_z};
        if (role == HandleRole::tangent)
            return {-1, ell_value_tangent};
        break;
    case 7:
        if (role == HandleRole::corner_upper)
            return {grid_value_y1, grid_value_z_top};
        if (role == HandleRole::corner_lower)
            return {grid_value_y2, grid_value_z_bottom};
        if (role == HandleRole::tangent)
            return {-1, grid_value_tangent};
        if (role == HandleRole::common_point)
            return {grid_value_point_y, grid_value_point_z};
        break;
    case 8:
        if (role == HandleRole::centre)
            return {auto_value_y, auto_value_z};
        if (role == HandleRole::tangent)
            return {-1, auto_value_tangent};
        if (role == HandleRole::common_point)
            return {auto_value_point_y, auto_value_point_z};
        break;
    default: break;
    }
    return {};
}

void frame_box(DrawSurface& s, double y1, double e1, double y2, double e2)
{
    s.Line(y1, e1, y2, e1, black);
    s.LineTo(y2, e2, black);
    s.LineTo(y1, e2, black);
    s.LineTo(y1, e1, black);
}

// A search's tangent plane runs across the picture.
void tangent_across(DrawSurface& s, double e)
{
    s.Line(s.ScaleLeft(), e, double(s.ScaleLeft()) + double(s.ScaleWidth()), e, black);
}

} // namespace

std::vector<SetupHandle> setup_handles(const SetupParameters& set)
{
    std::vector<SetupHandle> h;
    switch (set.mode) {
    case 3:
        h.push_back({HandleRole::centre, value_of(set, ell_value_y), value_of(set, ell_value_z)});
        h.push_back({HandleRole::tangent, value_of(set, ell_value_y), value_of(set, ell_value_tangent)});
        break;
    case 7: {
        const double y1 = value_of(set, grid_value_y1), y2 = value_of(set, grid_value_y2);
        h.push_back({HandleRole::corner_upper, y1, value_of(set, grid_value_z_top)});
        h.push_back({HandleRole::corner_lower, y2, value_of(set, grid_value_z_bottom)});
        if (set.common_point)
            h.push_back({HandleRole::common_point, value_of(set, grid_value_point_y),
                         value_of(set, grid_value_point_z)});
        else
            h.push_back({HandleRole::tangent, (y1 + y2) / 2, value_of(set, grid_value_tangent)});
        break;
    }
    case 8: {
        const double y = value_of(set, auto_value_y), z = value_of(set, auto_value_z);
        h.push_back({HandleRole::centre, y, z});
        h.push_back({HandleRole::step, y + value_of(set, auto_value_step), z});
        if (set.common_point)
            h.push_back({HandleRole::common_point, value_of(set, auto_value_point_y),
                         value_of(set, auto_value_point_z)});
        else
            h.push_back({HandleRole::tangent, y, value_of(set, auto_value_tangent)});
        break;
    }
    default: break;
    }
    return h;
}

double handle_size(const DrawSurface& s)
{
    return std::abs(double(s.ScaleWidth())) / 55;
}

void draw_setup_frames(const Project& p, DrawSurface& s, const SetupParameters& set)
{
    const double ve = drawn_exaggeration(p);
    s.DrawWidth(1);
    switch (set.mode) {
    case 3: {
        // The ellipsoid's section through its centre: radius Z - tangent.
        const double y = value_of(set, ell_value_y), z = value_of(set, ell_value_z);
        const double r = z - value_of(set, ell_value_tangent);
        if (r > 0) {
            constexpr int arc_steps = 36;
            for (int i = 0; i <= arc_steps; ++i) {
                const double t = (double(i) / arc_steps - 0.5) * std::acos(-1.0);
                const double py = y + r * std::sin(t), pe = (z - r * std::cos(t)) * ve;
                if (i == 0)
                    s.PSet(py, pe);
                else
                    s.LineTo(py, pe, p.sliding_colour);
            }
            s.Line(y - r, (z - r) * ve, y + r, (z - r) * ve, black);
        }
        break;
    }
    case 7:
        frame_box(s, value_of(set, grid_value_y1), value_of(set, grid_value_z_top) * ve,
                  value_of(set, grid_value_y2), value_of(set, grid_value_z_bottom) * ve);
        if (!set.common_point)
            tangent_across(s, value_of(set, grid_value_tangent) * ve);
        break;
    case 8: {
        const double y = value_of(set, auto_value_y), z = value_of(set, auto_value_z);
        const double step = std::abs(value_of(set, auto_value_step));
        frame_box(s, y - step, (z + step) * ve, y + step, (z - step) * ve);
        if (!set.common_point)
            tangent_across(s, value_of(set, auto_value_tangent) * ve);
        break;
    }
    default: return;
    }
    const double half = handle_size(s) / 2;
    for (const SetupHandle& h : setup_handles(set))
        s.fill_box(h.y - half, h.z * ve - half, h.y + half, h.z * ve + half, p.selected_colour);
}

void show_setup(Project& p, Port& port, const SetupParameters& set)
{
    draw_search_section(p, port);
    RecordingSurface s = picture_surface(p, p.pictures.search);
    resume_picture(p, s);
    draw_setup_frames(p, s, set);
}

int setup_handle_at(const Project& p, const SetupParameters& set, double y, double e)
{
    const double ve = drawn_exaggeration(p);
    const double pick = p.view.pick_unit;
    const double z = e / ve;
    const std::vector<SetupHandle> handles = setup_handles(set);
    for (std::size_t i = 0; i < handles.size(); ++i)
        if (std::abs(y - handles[i].y) < pick && std::abs(z - handles[i].z) < pick / ve)
            return int(i);
    return -1;
}

int setup_pointer_down(const Project& p, const SetupParameters& set, SetupDrag& drag, double y, double e)
{
    drag.handle = setup_handle_at(p, set, y, e);
    return drag.handle;
}

std::vector<SetupEdit> setup_pointer_move(const Project& p, const SetupParameters& set, SetupDrag& drag,
                                          double y, double e)
{
    std::vector<SetupEdit> edits;
    const std::vector<SetupHandle> handles = setup_handles(set);
    if (drag.handle < 0 || std::size_t(drag.handle) >= handles.size())
        return edits;
    const double z = e / drawn_exaggeration(p);
    const HandleRole role = handles[std::size_t(drag.handle)].role;
    if (role == HandleRole::step) {
        // The step is a distance, whichever side of the centre the pointer is.
        set_value(set, edits, auto_value_step, std::abs(y - value_of(set, auto_value_y)));
        return edits;
    }
    const Carried c = carried(set, role);
    set_value(set, edits, c.y, y);
    set_value(set, edits, c.z, z);
    return edits;
}

void setup_pointer_up(SetupDrag& drag)
{
    drag.handle = -1;
}

SetupDialog search_picture_click(const Project& p)
{
    switch (p.view_mode) {
    case 3: return SetupDialog::ellipsoid;
    case 7: return SetupDialog::grid_search;
    case 8: return SetupDialog::auto_search;
    case 10: return SetupDialog::search_information;
    default: return SetupDialog::none;
    }
}

void search_picture_activated(Project& p)
{
    set_main_title(p, "");
}

} // namespace tobel
