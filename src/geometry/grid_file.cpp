#include "geometry/grid_file.h"

#include <cstdio>
#include <fstream>
#include <new>

#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/numtext.h"
#include "project/runtime_error.h"

namespace tobel {

namespace {

constexpr long mesh_limit = 3000;

} // namespace

// Seven significant digits do not always bring a single back; take the
// fewest digits, from seven up, that do.
std::string grid_item(float x)
{
    std::string s;
    for (int digits = 7; digits <= 9; ++digits) {
        char buf[48];
        std::snprintf(buf, sizeof buf, "%.*G", digits, double(x));
        s = buf;
        if (float(val(s)) == x)
            break;
    }
    if (s.rfind("0.", 0) == 0)
        s.erase(0, 1);
    else if (s.rfind("-0.", 0) == 0)
        s.erase(1, 1);
    return (s[0] == '-' ? s : " " + s) + " ";
}

static bool ask(Port& port, const std::string& text)
{
    return port.message_box(text, Buttons::yes_no, Icon::question, "") == Answer::yes;
}

// The reading proper; a RuntimeError out of it is a wrong file.
void read_grid(Project& p, const std::string& path, int surface, Port& port)
{
    InputReader in(path);
    in.text_item(); // "DSAA", not compared
    const long nx = in.integer16();
    const long ny = in.integer16();
    const std::string counts_at = in.where();
    const float y_low = in.single();
    const float y_high = in.single();
    const float x_low = in.single();
    const float x_high = in.single();
    in.number(); // the range of z is not used
    in.number();

    if (p.x_min != x_low || p.x_max != x_high || p.num_rows != ny) {
        if (!ask(port, "Grid file uses different grid parameters in the X (transverse) direction.  Do you "
                       "want to continue reading this file?"))
            return;
    }
    if (p.y_min != y_low || p.y_max != y_high || p.num_cols != nx) {
        if (!ask(port, "Grid file uses different grid parameters in the Y (longitudinal) direction.  Do you "
                       "want to continue reading this file?"))
            return;
    }

    // A mesh beyond the limit of 3000 by 3000 is refused before anything
    // changes, naming the count.
    if (ny > mesh_limit || nx > mesh_limit) {
        const bool rows = ny > mesh_limit;
        port.message_box("Incorrect .GRD file (" + counts_at + ": " + std::to_string(rows ? ny : nx) +
                             (rows ? " rows" : " columns") + "; the limit is " + std::to_string(mesh_limit) +
                             ")",
                         Buttons::ok, Icon::none, "");
        return;
    }
    const bool same_size = p.num_rows == ny && p.num_cols == nx;
    p.num_rows = int16(ny);
    p.num_cols = int16(nx);
    if (ny < 2 || nx < 2) {
        // The counts stay as read. Grids smaller than them are sized to
        // them, so that nothing later reads past their end.
        if (p.num_rows > p.col_weight.rows || p.num_cols > p.col_weight.cols || p.num_rows > p.zgrid.rows ||
            p.num_cols > p.zgrid.cols)
            redim_grids(p);
        port.message_box("Incorrect .GRD file", Buttons::ok, Icon::none, "");
        return;
    }
    if (!same_size)
        redim_grids(p);
    if (surface < 1 || surface > p.zgrid.planes)
        throw RuntimeError(err_subscript, in.where());

    p.row_spacing = float((double(x_high) - double(x_low)) / double(p.num_rows - 1));
    p.col_spacing = float((double(y_high) - double(y_low)) / double(p.num_cols - 1));
    p.x_min = x_low;
    p.x_max = x_high;
    p.y_min = y_low;
    p.y_max = y_high;

    for (int i = 1; i <= p.num_rows; ++i) {
        for (int j = 1; j <= p.num_cols; ++j)
            p.zgrid(i, j, surface) = in.single();
        // One more item per row: the empty line that ends a row. A file
        // without those lines loses a value per row, as it always has.
        in.number();
    }

    p.surf_built[std::size_t(surface)] = 1;
}

static float plane_value(const Project& p, int surface, int i, int j)
{
    if (surface == p.sliding_index + 1)
        return p.col_normal(i, j);
    if (surface == p.sliding_index + 2)
        return p.col_fos(i, j);
    return p.zgrid(i, j, surface);
}

void write_grid_file(Project& p, int surface, const std::string& path, Port& port)
{
    if (surface < 1 || surface > p.sliding_index + 2)
        throw RuntimeError(err_subscript, path);
    BusyPointer busy(port);
    std::string out = "DSAA\r\n";
    out += print_item(long(p.num_cols)) + print_item(long(p.num_rows)) + "\r\n";
    // The upper limits follow from the spacings, not from y_max and x_max.
    const float y_high = float(double(p.y_min) + double(p.num_cols - 1) * double(p.col_spacing));
    const float x_high = float(double(p.x_min) + double(p.num_rows - 1) * double(p.row_spacing));
    out += grid_item(p.y_min) + grid_item(y_high) + "\r\n";
    out += grid_item(p.x_min) + grid_item(x_high) + "\r\n";

    float z_min = 10000, z_max = -10000;
    for (int i = 1; i <= p.num_rows; ++i)
        for (int j = 1; j <= p.num_cols; ++j) {
            const float z = plane_value(p, surface, i, j);
            if (z < z_min)
                z_min = z;
            if (z > z_max)
                z_max = z;
        }
    out += grid_item(z_min) + grid_item(z_max) + "\r\n";

    for (int i = 1; i <= p.num_rows; ++i) {
        for (int j = 1; j <= p.num_cols; ++j)
            out += grid_item(plane_value(p, surface, i, j));
        out += "\r\n\r\n";
    }

    std::ofstream f(path, std::ios::binary | std::ios::trunc);
    if (!f)
        throw RuntimeError(err_path_access, path);
    f.write(out.data(), std::streamsize(out.size()));
    f.close();
    if (!f)
        throw RuntimeError(err_path_access, path);
    port.message_box("FILE " + path + " WAS CREATED", Buttons::ok, Icon::none, "");
}

} // namespace tobel
