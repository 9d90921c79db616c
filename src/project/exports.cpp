#include "project/exports.h"

#include <algorithm>

#include "project/data_file.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "project/safe_save.h"

namespace tobel {

static constexpr const char* dat_filter = "Grid Files (*.DAT)|*.DAT";

int export_row_of(const Project& p, double x)
{
    return int(std::clamp<long>(cint(x / double(p.row_spacing) + 1.0), 1, std::max<long>(p.num_rows, 1)));
}

int export_col_of(const Project& p, double y)
{
    return int(std::clamp<long>(cint(y / double(p.col_spacing) + 1.0), 1, std::max<long>(p.num_cols, 1)));
}

std::string two_d_file_name(double x)
{
    return "Section" + str(x) + ".tob";
}

std::string longitudinal_dat_name(double x)
{
    return "CY" + general_text_double(x) + ".DAT";
}

std::string lateral_dat_name(double y)
{
    return "CX" + general_text_double(y) + ".DAT";
}

void write_two_d_file(Project& p, double x, const std::string& path)
{
    const SectionCut cut{export_row_of(p, x), general_text_double(x)};
    write_file_safely(path, data_file_text(p, &cut));
}

// A .DAT line: the coordinate, then three blanks before each elevation, all in
// the number form of print statements without zones.
static std::string dat_line(const Project& p, float coordinate, int i, int j)
{
    std::string line = print_item(coordinate);
    for (int k = 1; k <= p.sliding_index; ++k)
        line += "   " + print_item(p.zgrid(i, j, k));
    return line + "\r\n";
}

void write_longitudinal_dat(const Project& p, double x, const std::string& path)
{
    const int r = export_row_of(p, x);
    std::string out;
    for (int j = 1; j <= p.num_cols; ++j)
        out += dat_line(p, float(double(p.y_min) + double(j - 1) * double(p.col_spacing)), r, j);
    write_file_safely(path, out);
}

void write_lateral_dat(const Project& p, double y, const std::string& path)
{
    const int c = export_col_of(p, y);
    std::string out;
    for (int i = 1; i <= p.num_rows; ++i)
        out += dat_line(p, float(double(p.row_spacing) * double(i - 1)), i, c);
    write_file_safely(path, out);
}

// The coordinate typed in an input box; empty when the user gives none.
static bool ask_coordinate(Port& port, const char* prompt, double& value)
{
    const auto answer = port.input_box(prompt, "TOBEL-3", "0");
    if (!answer || answer->empty())
        return false;
    value = val(*answer);
    return true;
}

static void show_error(Port& port, const RuntimeError& e)
{
    port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
}

void export_two_d_file(Project& p, Port& port)
{
    double x = 0;
    if (!ask_coordinate(port, "ENTER X COORDINATE", x))
        return;
    const std::string name = two_d_file_name(x);
    try {
        {
            BusyPointer busy(port);
            write_two_d_file(p, x, name);
        }
        port.message_box("FILE " + name + " WAS CREATED", Buttons::ok, Icon::none, "TOBEL-3");
    } catch (const RuntimeError& e) {
        show_error(port, e);
    }
}

void export_longitudinal_dat(Project& p, Port& port)
{
    double x = p.x_min;
    if (p.num_rows != 1 && !ask_coordinate(port, "ENTER X COORDINATE", x))
        return;
    const auto chosen = port.save_file_dialog(dat_filter, longitudinal_dat_name(x), true);
    if (!chosen)
        return;
    try {
        write_longitudinal_dat(p, x, *chosen);
    } catch (const RuntimeError& e) {
        show_error(port, e);
    }
}

void export_lateral_dat(Project& p, Port& port)
{
    if (p.num_rows < 2)
        return;
    double y = 0;
    if (!ask_coordinate(port, "ENTER Y COORDINATE", y))
        return;
    const auto chosen = port.save_file_dialog(dat_filter, lateral_dat_name(y), true);
    if (!chosen)
        return;
    try {
        write_lateral_dat(p, y, *chosen);
    } catch (const RuntimeError& e) {
        show_error(port, e);
    }
}

} // namespace tobel
